#include "zvReslicePlane.h"

#include "zvNumbers.h"

#include "vtkImageReslice.h"
#include "vtkLinearTransform.h"
#include "vtkMath.h"
#include "vtkMatrix4x4.h"
#include "vtkTransform.h"

#include <algorithm>
#include <cmath>

int zvReslicePlane::NormalAxis(int orientation)
{
  return orientation == 0 || orientation == 2 ? orientation : 1;
}

int zvReslicePlane::FirstAxis(int normalAxis)
{
  return (normalAxis + 1) % 3;
}

int zvReslicePlane::SecondAxis(int normalAxis)
{
  return (normalAxis + 2) % 3;
}

zvReslicePlane::Corners zvReslicePlane::Across(
  int normalAxis, const double starts[3], const double stops[3], double position)
{
  const int first = FirstAxis(normalAxis);
  const int second = SecondAxis(normalAxis);
  Corners plane;
  for (double* point : { plane.Origin, plane.Point1, plane.Point2 })
  {
    std::copy_n(starts, 3, point);
    point[normalAxis] = position;
  }
  plane.Point1[first] = stops[first];
  plane.Point2[second] = stops[second];
  return plane;
}

bool zvReslicePlane::MayBeEnlarged(const int extent[6])
{
  constexpr int limit = 1000;
  return extent[1] < limit && extent[3] < limit && extent[5] < limit;
}

zvReslicePlane::Corners zvReslicePlane::Enlarged(
  const Corners& plane, int normalAxis, const double center[3], const double halfWidth[3])
{
  double starts[3];
  double stops[3];
  for (int axis = 0; axis < 3; ++axis)
  {
    starts[axis] = center[axis] - halfWidth[axis];
    stops[axis] = center[axis] + halfWidth[axis];
  }
  Corners enlarged = Across(normalAxis, starts, stops, plane.Origin[normalAxis]);
  enlarged.Point1[normalAxis] = plane.Point1[normalAxis];
  enlarged.Point2[normalAxis] = plane.Point2[normalAxis];
  return enlarged;
}

zvReslicePlane::Corners zvReslicePlane::Resized(
  const Corners& plane, const int from[2], const int to[2], const double spacing[2])
{
  double growth[2];
  for (int i = 0; i < 2; ++i)
  {
    const long long steps = (static_cast<long long>(to[i]) - from[i]) / 2;
    growth[i] = zvNumbers::Truncate(static_cast<double>(steps) * spacing[i]);
  }
  double axis1[3];
  double axis2[3];
  vtkMath::Subtract(plane.Point1, plane.Origin, axis1);
  vtkMath::Subtract(plane.Point2, plane.Origin, axis2);
  vtkMath::Normalize(axis1);
  vtkMath::Normalize(axis2);
  Corners resized = plane;
  for (int i = 0; i < 3; ++i)
  {
    const double x = growth[0] * axis1[i];
    const double y = growth[1] * axis2[i];
    resized.Origin[i] = plane.Origin[i] - x - y;
    resized.Point1[i] = plane.Point1[i] + x - y;
    resized.Point2[i] = plane.Point2[i] - x + y;
  }
  return resized;
}

void zvReslicePlane::SetTurn(
  const double center[3], double degrees, const double axis[3], vtkTransform* transform)
{
  transform->Identity();
  transform->Translate(center[0], center[1], center[2]);
  transform->RotateWXYZ(degrees, axis);
  transform->Translate(-center[0], -center[1], -center[2]);
}

zvReslicePlane::Corners zvReslicePlane::Turned(const Corners& plane, vtkLinearTransform* transform)
{
  Corners turned;
  transform->TransformPoint(plane.Point1, turned.Point1);
  transform->TransformPoint(plane.Point2, turned.Point2);
  transform->TransformPoint(plane.Origin, turned.Origin);
  return turned;
}

void zvReslicePlane::SetResliceAxes(const double axis1[3], const double axis2[3],
  const double normal[3], const double origin[3], vtkMatrix4x4* axes)
{
  axes->Identity();
  for (int i = 0; i < 3; ++i)
  {
    axes->SetElement(0, i, axis1[i]);
    axes->SetElement(1, i, axis2[i]);
    axes->SetElement(2, i, normal[i]);
  }
  const double world[4] = { origin[0], origin[1], origin[2], 1.0 };
  double inPlane[4];
  axes->MultiplyPoint(world, inPlane);
  axes->Transpose();
  double shift[4];
  axes->MultiplyPoint(inPlane, shift);
  for (int i = 0; i < 3; ++i)
  {
    axes->SetElement(i, 3, shift[i]);
  }
}

zvReslicePlane::Sampling zvReslicePlane::SampleAlong(
  const double unitAxis[3], double size, const double spacing[3])
{
  const double step = std::fabs(unitAxis[0] * spacing[0]) + std::fabs(unitAxis[1] * spacing[1]) +
    std::fabs(unitAxis[2] * spacing[2]);
  Sampling sampling{ step == 0.0 ? 2147483647.0 : size / step, 0, 1.0 };
  // Asked this way round, so that a size that is not a number counts as too many as well.
  if (!(sampling.Voxels <= 1073741823.0))
  {
    return sampling;
  }
  sampling.Extent = 1;
  while (sampling.Extent < sampling.Voxels)
  {
    sampling.Extent *= 2;
  }
  if (size != 0.0)
  {
    sampling.Spacing = size / sampling.Extent;
  }
  return sampling;
}

void zvReslicePlane::SetOutput(
  const Sampling& x, const Sampling& y, int factor, vtkImageReslice* reslice)
{
  reslice->SetOutputSpacing(x.Spacing * factor, y.Spacing * factor, 1.0);
  reslice->SetOutputOrigin(0.0, 0.0, 0.0);
  reslice->SetOutputExtent(0, x.Extent / factor - 1, 0, y.Extent / factor - 1, 0, 0);
}
