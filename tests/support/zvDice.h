#ifndef zvDice_h
#define zvDice_h

#include <random>
#include <vector>

namespace zvtest
{
/// Numbers drawn from a fixed seed, so that a failure among thousands of drawn cases can be
/// repeated.
class Dice
{
public:
  explicit Dice(unsigned int seed)
    : Engine(seed)
  {
  }

  /// A whole number from low to high, both included.
  int Int(int low, int high) { return std::uniform_int_distribution<int>(low, high)(this->Engine); }

  /// A number from low on and below high.
  double Real(double low, double high)
  {
    return std::uniform_real_distribution<double>(low, high)(this->Engine);
  }

  /// True with the given probability.
  bool Chance(double probability) { return this->Real(0.0, 1.0) < probability; }

  /// One of the choices, which must not be empty.
  template <typename T>
  T Pick(const std::vector<T>& choices)
  {
    return choices[this->Int(0, static_cast<int>(choices.size()) - 1)];
  }

private:
  std::mt19937 Engine;
};
}

#endif
