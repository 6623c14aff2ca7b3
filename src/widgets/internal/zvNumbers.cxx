#include "zvNumbers.h"

#include <cmath>
#include <limits>

int zvNumbers::Truncate(double value)
{
  if (std::isnan(value))
  {
    return 0;
  }
  if (value >= static_cast<double>(std::numeric_limits<int>::max()))
  {
    return std::numeric_limits<int>::max();
  }
  if (value <= static_cast<double>(std::numeric_limits<int>::min()))
  {
    return std::numeric_limits<int>::min();
  }
  return static_cast<int>(value);
}

int zvNumbers::Round(double value)
{
  return Truncate(value < 0.0 ? value - 0.5 : value + 0.5);
}

double zvNumbers::ToSinglePrecision(double value)
{
  // Stored and read again. Of casts alone, gcc 12 vectorises two neighbours without the rounding.
  volatile float narrowed = static_cast<float>(value);
  return narrowed;
}

bool zvNumbers::AreFinite(const double xyz[3])
{
  return std::isfinite(xyz[0]) && std::isfinite(xyz[1]) && std::isfinite(xyz[2]);
}
