#include "zvHandleCurve.h"

#include "zvParametricSpline.h"

#include "vtkCellArray.h"
#include "vtkDoubleArray.h"
#include "vtkMath.h"
#include "vtkPlaneSource.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"
#include "vtkTransform.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace
{
using zvHandleCurve::Position;
using zvHandleCurve::Positions;

double* DoublesOf(vtkPoints* points)
{
  vtkDoubleArray* array = vtkDoubleArray::FastDownCast(points->GetData());
  return array ? array->GetPointer(0) : nullptr;
}

Position Difference(const Position& a, const Position& b)
{
  return { { a[0] - b[0], a[1] - b[1], a[2] - b[2] } };
}

double Dot(const Position& a, const Position& b)
{
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Position UnitOrZero(Position vector)
{
  vtkMath::Normalize(vector.data()); // leaves a zero vector as it is
  return vector;
}
}

namespace zvHandleCurve
{
Positions Read(vtkPoints* points)
{
  return Read(points, VTK_ID_MAX);
}

Positions Read(vtkPoints* points, vtkIdType limit)
{
  if (!points)
  {
    return {};
  }
  const vtkIdType count = std::max<vtkIdType>(0, std::min(limit, points->GetNumberOfPoints()));
  Positions positions(static_cast<std::size_t>(count));
  if (const double* doubles = count > 0 ? DoublesOf(points) : nullptr)
  {
    std::copy_n(doubles, 3 * count, positions.front().data());
    return positions;
  }
  for (vtkIdType i = 0; i < count; ++i)
  {
    points->GetPoint(i, positions[i].data());
  }
  return positions;
}

void Write(const Positions& positions, vtkPoints* points)
{
  double* doubles = positions.empty() ? nullptr : DoublesOf(points);
  if (doubles)
  {
    std::copy_n(positions.front().data(), 3 * positions.size(), doubles);
  }
  else
  {
    for (std::size_t i = 0; i < positions.size(); ++i)
    {
      points->SetPoint(static_cast<vtkIdType>(i), positions[i].data());
    }
  }
  points->Modified();
}

vtkSmartPointer<vtkPoints> MakePoints(const Positions& positions)
{
  auto points = vtkSmartPointer<vtkPoints>::New();
  points->SetDataTypeToDouble();
  points->SetNumberOfPoints(static_cast<vtkIdType>(positions.size()));
  Write(positions, points);
  return points;
}

vtkSmartPointer<vtkCellArray> MakeVertices(vtkIdType count)
{
  auto vertices = vtkSmartPointer<vtkCellArray>::New();
  vertices->AllocateEstimate(count, 1);
  for (vtkIdType i = 0; i < count; ++i)
  {
    vertices->InsertNextCell(1, &i);
  }
  return vertices;
}

Positions OnDiagonal(const double bounds[6], int count)
{
  Positions positions(static_cast<std::size_t>(std::max(count, 0)));
  for (int i = 0; i < count; ++i)
  {
    const double u = count > 1 ? i / (count - 1.0) : 0.0;
    for (int axis = 0; axis < 3; ++axis)
    {
      positions[i][axis] = (1.0 - u) * bounds[2 * axis] + u * bounds[2 * axis + 1];
    }
  }
  return positions;
}

void ProjectToOrthoPlane(Positions& positions, int axis, double coordinate)
{
  for (Position& position : positions)
  {
    position[axis] = coordinate;
  }
}

void ProjectToObliquePlane(Positions& positions, vtkPlaneSource* plane)
{
  Position origin;
  Position point1;
  Position point2;
  plane->GetOrigin(origin.data());
  plane->GetPoint1(point1.data());
  plane->GetPoint2(point2.data());
  const Position u = UnitOrZero(Difference(point1, origin));
  const Position v = UnitOrZero(Difference(point2, origin));
  for (Position& position : positions)
  {
    const double s = Dot(position, u) - Dot(origin, u);
    const double t = Dot(position, v) - Dot(origin, v);
    for (int axis = 0; axis < 3; ++axis)
    {
      position[axis] = origin[axis] + s * u[axis] + t * v[axis];
    }
  }
}

void Translate(Positions& positions, const Position& motion)
{
  for (Position& position : positions)
  {
    vtkMath::Add(position.data(), motion.data(), position.data());
  }
}

void ScaleAbout(Positions& positions, const Position& center, double factor)
{
  for (Position& position : positions)
  {
    for (int axis = 0; axis < 3; ++axis)
    {
      position[axis] = factor * (position[axis] - center[axis]) + center[axis];
    }
  }
}

void Scale(Positions& positions, double distance, bool shrink)
{
  // Deliberate: the length is divided by the count of handles, not of segments. The speed with
  // which a curve follows the mouse depends on it.
  const double average = SummedLength(positions) / static_cast<double>(positions.size());
  const double step = distance / average;
  if (std::isfinite(step))
  {
    ScaleAbout(positions, Centroid(positions), shrink ? 1.0 - step : 1.0 + step);
  }
}

bool FindFreeSpinAxis(const Position& motion, const double viewPlaneNormal[3], Position& axis)
{
  vtkMath::Cross(viewPlaneNormal, motion.data(), axis.data());
  return vtkMath::Normalize(axis.data()) != 0.0;
}

bool FindPlanarSpinAxis(int normal, vtkPlaneSource* plane, Position& axis)
{
  axis = { { 0.0, 0.0, 0.0 } };
  if (normal != Oblique)
  {
    axis[normal] = 1.0;
    return true;
  }
  if (!plane)
  {
    return false;
  }
  plane->GetNormal(axis.data());
  axis = UnitOrZero(axis);
  return true;
}

void Spin(Positions& positions, const Position& from, const Position& to, const Position& center,
  const Position& axis, vtkTransform* scratch)
{
  const Position motion = Difference(to, from);
  const Position reach = Difference(to, center);
  const double radius = std::sqrt(Dot(reach, reach));
  const Position direction = UnitOrZero(reach);
  Position tangent;
  vtkMath::Cross(axis.data(), direction.data(), tangent.data());
  const double degrees = 360.0 * Dot(motion, tangent) / radius;
  if (!std::isfinite(degrees))
  {
    return;
  }
  scratch->Identity();
  scratch->Translate(center.data());
  scratch->RotateWXYZ(degrees, axis.data());
  scratch->Translate(-center[0], -center[1], -center[2]);
  for (Position& position : positions)
  {
    scratch->TransformPoint(position.data(), position.data());
  }
}

Position Centroid(const Positions& positions)
{
  Position sum{ { 0.0, 0.0, 0.0 } };
  for (const Position& position : positions)
  {
    vtkMath::Add(sum.data(), position.data(), sum.data());
  }
  if (!positions.empty())
  {
    const double count = static_cast<double>(positions.size());
    sum = { { sum[0] / count, sum[1] / count, sum[2] / count } };
  }
  return sum;
}

double SummedLength(const Positions& positions)
{
  double length = 0.0;
  for (std::size_t i = 1; i < positions.size(); ++i)
  {
    const Position step = Difference(positions[i], positions[i - 1]);
    length += std::sqrt(Dot(step, step));
  }
  return length;
}

Closure TestClosure(vtkPolyData* line)
{
  vtkPoints* points = line ? line->GetPoints() : nullptr;
  if (!points)
  {
    return Closure::NoLine;
  }
  const vtkIdType count = points->GetNumberOfPoints();
  if (count < 2)
  {
    return Closure::Open;
  }
  Position first;
  Position last;
  points->GetPoint(0, first.data());
  points->GetPoint(count - 1, last.data());
  // Entries are the cells' point ids and one number more for each cell.
  const vtkIdType entries = line->GetLines()->GetNumberOfConnectivityEntries();
  return first == last || entries - count == 2 ? Closure::Closed : Closure::Open;
}

int FindInsertion(zvParametricSpline* spline, int count, vtkIdType sample, int resolution)
{
  const double fraction = resolution > 0 ? static_cast<double>(sample) / resolution : 0.0;
  const int index = spline ? spline->GetIndex(count + 1, spline->GetClosedLength() * fraction) : -1;
  return std::max(-1, std::min(index, count - 1));
}

Positions Inserted(const Positions& positions, int after, const Position& added)
{
  Positions result(positions);
  result.insert(std::next(result.begin(), after + 1), added);
  return result;
}

Positions Erased(const Positions& positions, int erased)
{
  Positions result(positions);
  result.erase(std::next(result.begin(), erased));
  return result;
}
}
