#include "zvContourSmoother.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double FullCircle = 6.283185307179586;

double CosineOf(std::size_t part, std::size_t count)
{
  return std::cos(FullCircle * static_cast<double>(part % count) / static_cast<double>(count));
}

// By how much a wave of so many turns round the contour is left after a step.
double GetDamping(std::size_t turns, std::size_t count, double elasticity, double stiffness)
{
  const double difference = 2.0 - 2.0 * CosineOf(turns, count);
  return 1.0 / (1.0 + elasticity * difference + stiffness * difference * difference);
}
}

zvContourSmoother::zvContourSmoother(std::size_t count, double elasticity, double stiffness)
  : Weights(count, 0.0)
{
  std::vector<double> cosines(count);
  for (std::size_t i = 0; i < count; ++i)
  {
    cosines[i] = CosineOf(i, count);
  }
  for (std::size_t turns = 0; turns < count; ++turns)
  {
    const double damping =
      GetDamping(turns, count, std::max(elasticity, 0.0), std::max(stiffness, 0.0));
    for (std::size_t i = 0; i < count; ++i)
    {
      this->Weights[i] += damping * cosines[turns * i % count] / static_cast<double>(count);
    }
  }
}

zvContour zvContourSmoother::Smooth(const zvContour& contour) const
{
  const std::size_t count = this->Weights.size();
  zvContour smooth(count, { { 0.0, 0.0 } });
  for (std::size_t i = 0; i < count; ++i)
  {
    std::size_t neighbour = i;
    for (const double weight : this->Weights)
    {
      smooth[i][0] += weight * contour[neighbour][0];
      smooth[i][1] += weight * contour[neighbour][1];
      neighbour = neighbour + 1 < count ? neighbour + 1 : 0;
    }
  }
  return smooth;
}
