#include "zvObliqueSlices.h"

#include "zvNumbers.h"

#include "vtkMath.h"
#include "vtkNew.h"
#include "vtkPlanesIntersection.h"
#include "vtkPoints.h"

#include <algorithm>
#include <cmath>
#include <vector>

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

double Project(const std::array<double, 3>& point, const double axis[3])
{
  return vtkMath::Dot(point.data(), axis);
}

/// How far polygon and box are apart along a direction of any length, in units of that length;
/// negative by how much they overlap.
double GapAlong(const Polygon& polygon, const double bounds[6], const double axis[3])
{
  double low = Project(polygon[0], axis);
  double high = low;
  for (const auto& corner : polygon)
  {
    low = std::min(low, Project(corner, axis));
    high = std::max(high, Project(corner, axis));
  }
  double boxLow = 0.0;
  double boxHigh = 0.0;
  for (int i = 0; i < 3; ++i)
  {
    boxLow += std::min(bounds[2 * i] * axis[i], bounds[2 * i + 1] * axis[i]);
    boxHigh += std::max(bounds[2 * i] * axis[i], bounds[2 * i + 1] * axis[i]);
  }
  return std::max(low - boxHigh, boxLow - high);
}

/// The unit directions along which a polygon and a box can be apart while overlapping along all
/// others: first the normals of their faces, then what is at right angles to an edge of each.
struct SeparatingAxes
{
  std::vector<std::array<double, 3>> Normals;
  std::vector<std::array<double, 3>> Crossed;
};

void AddCross(const double* a, const double* b, std::vector<std::array<double, 3>>& axes)
{
  std::array<double, 3> axis;
  vtkMath::Cross(a, b, axis.data());
  // Of parallel directions there is none, of nearly parallel ones it would be noise.
  if (vtkMath::Normalize(axis.data()) > 1e-6)
  {
    axes.push_back(axis);
  }
}

SeparatingAxes ListSeparatingAxes(const Polygon& polygon)
{
  SeparatingAxes axes;
  axes.Normals = { { 1.0, 0.0, 0.0 }, { 0.0, 1.0, 0.0 }, { 0.0, 0.0, 1.0 } };
  std::array<double, 3> edges[4];
  for (int i = 0; i < 4; ++i)
  {
    vtkMath::Subtract(polygon[(i + 1) % 4].data(), polygon[i].data(), edges[i].data());
    vtkMath::Normalize(edges[i].data());
    for (int j = 0; j < 3; ++j)
    {
      AddCross(axes.Normals[j].data(), edges[i].data(), axes.Crossed);
    }
  }
  AddCross(edges[0].data(), edges[1].data(), axes.Normals);
  return axes;
}

double LargestGap(
  const Polygon& polygon, const double bounds[6], const std::vector<std::array<double, 3>>& axes)
{
  double gap = -VTK_DOUBLE_MAX;
  for (const auto& axis : axes)
  {
    gap = std::max(gap, GapAlong(polygon, bounds, axis.data()));
  }
  return gap;
}

/// What single precision makes of a millimetre here, with a wide margin.
double Uncertainty(const Polygon& polygon, const double bounds[6])
{
  double largest = 0.0;
  for (int i = 0; i < 6; ++i)
  {
    largest = std::max(largest, std::fabs(bounds[i]));
  }
  for (const auto& corner : polygon)
  {
    for (const double value : corner)
    {
      largest = std::max(largest, std::fabs(value));
    }
  }
  return 1e-4 * largest;
}

bool AskToolkit(const Polygon& polygon, const double bounds[6])
{
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
  // The toolkit's answer is what counts: it has rules of its own at a face, and takes some polygons
  // for touching that pass a corner of the box. It needs a tenth of a millisecond, so it is asked
  // only where its answer is not plain.
  const SeparatingAxes axes = ListSeparatingAxes(polygon);
  const double uncertainty = Uncertainty(polygon, bounds);
  const double normalGap = LargestGap(polygon, bounds, axes.Normals);
  if (normalGap > uncertainty)
  {
    return false;
  }
  const bool hasArea = axes.Normals.size() == 4;
  if (hasArea && std::max(normalGap, LargestGap(polygon, bounds, axes.Crossed)) < -uncertainty)
  {
    return true;
  }
  return AskToolkit(polygon, bounds);
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
