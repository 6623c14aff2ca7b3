#include "zvObliqueSlices.h"

#include "zvNumbers.h"

#include "vtkMath.h"
#include "vtkNew.h"
#include "vtkPlanesIntersection.h"
#include "vtkPoints.h"

#include <algorithm>
#include <cmath>

namespace
{
using zvObliqueSlices::Polygon;

void MoveBy(const double step[3], Polygon& polygon)
{
  for (auto& corner : polygon)
  {
    vtkMath::Add(corner.data(), step, corner.data());
  }
}

bool AreCornersFinite(const Polygon& polygon)
{
  return std::all_of(polygon.begin(), polygon.end(),
    [](const std::array<double, 3>& corner) { return zvNumbers::AreFinite(corner.data()); });
}

/// The steps after which the polygon is past the box for certain: its rearmost corner beyond the
/// box's foremost one, seen along the step. One more for the corners' rounding.
int StepsPast(const Polygon& polygon, const double step[3], const double bounds[6])
{
  double rear = vtkMath::Dot(polygon[0].data(), step);
  for (const auto& corner : polygon)
  {
    rear = std::min(rear, vtkMath::Dot(corner.data(), step));
  }
  double front = 0.0;
  for (int axis = 0; axis < 3; ++axis)
  {
    front += std::max(bounds[2 * axis] * step[axis], bounds[2 * axis + 1] * step[axis]);
  }
  const int steps = zvNumbers::Truncate(std::ceil((front - rear) / vtkMath::Dot(step, step)));
  return std::min(std::max(steps, 0), zvObliqueSlices::MaximumSteps - 2) + 2;
}
}

Polygon zvObliqueSlices::Read(vtkPoints* points)
{
  Polygon polygon;
  for (vtkIdType i = 0; i < 4; ++i)
  {
    points->GetPoint(i, polygon[i].data());
  }
  return polygon;
}

bool zvObliqueSlices::IsStep(const double step[3])
{
  const double length2 = vtkMath::Dot(step, step);
  return std::isfinite(length2) && length2 > 0.0;
}

Polygon zvObliqueSlices::Moved(const Polygon& polygon, const double step[3])
{
  Polygon moved = polygon;
  MoveBy(step, moved);
  return moved;
}

bool zvObliqueSlices::Touches(const Polygon& polygon, const double bounds[6])
{
  if (!AreCornersFinite(polygon))
  {
    return false;
  }
  vtkNew<vtkPoints> points;
  points->SetNumberOfPoints(4);
  for (vtkIdType i = 0; i < 4; ++i)
  {
    points->SetPoint(i, polygon[i].data());
  }
  double box[6];
  std::copy_n(bounds, 6, box);
  return vtkPlanesIntersection::PolygonIntersectsBBox(box, points) != 0;
}

int zvObliqueSlices::StepsUntilClear(
  const Polygon& polygon, const double step[3], const double bounds[6])
{
  if (!IsStep(step) || !AreCornersFinite(polygon))
  {
    return 0;
  }
  const int limit = StepsPast(polygon, step, bounds);
  Polygon moving = polygon;
  int steps = 0;
  do
  {
    ++steps;
    MoveBy(step, moving);
  } while (steps < limit && Touches(moving, bounds));
  return steps;
}

int zvObliqueSlices::StepsOfMotion(double distance)
{
  if (distance > 0.0)
  {
    return zvNumbers::Truncate(1.0 + distance);
  }
  return distance < 0.0 ? zvNumbers::Truncate(distance - 1.0) : 0;
}
