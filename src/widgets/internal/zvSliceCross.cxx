#include "zvSliceCross.h"

#include "zvNumbers.h"

#include <algorithm>
#include <limits>

namespace
{
using Wide = long long; // sums of two ints fit

int ToInt(Wide value)
{
  return static_cast<int>(
    std::clamp<Wide>(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}
}

int zvSliceCross::WholeSteps(double targetDistance, double currentDistance, double spacing)
{
  return spacing == 0.0 ? 0 : zvNumbers::Truncate((targetDistance - currentDistance) / spacing);
}

zvSliceCross::Move zvSliceCross::Drag(int index, int steps, int last)
{
  Wide taken = steps;
  if (index + taken > last)
  {
    taken = static_cast<Wide>(last) - index;
  }
  if (index + taken < 0)
  {
    taken = -static_cast<Wide>(index);
  }
  return { ToInt(taken), ToInt(index + taken) };
}

zvSliceCross::Move zvSliceCross::Shift(int index, int steps, int last)
{
  Wide taken = steps;
  Wide target = index + taken;
  if (target > last)
  {
    taken = target - last;
    target = index + taken;
  }
  if (target < 1)
  {
    taken = -static_cast<Wide>(index);
  }
  return { ToInt(taken), ToInt(index + taken) };
}

double zvSliceCross::FootParameter(const double q[3], const double origin[3], const double axis[3])
{
  double along = 0.0;
  double length2 = 0.0;
  for (int i = 0; i < 3; ++i)
  {
    along += (q[i] - origin[i]) * axis[i];
    length2 += axis[i] * axis[i];
  }
  return length2 > 0.0 ? along / length2 : 0.0;
}
