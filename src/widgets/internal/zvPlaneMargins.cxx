#include "zvPlaneMargins.h"

#include "vtkMath.h"

namespace
{
using zvReslicePlane::Corners;

// What a drag moves by the motion along the radius and along the axis of rotation: 1 where the
// point takes that part.
struct Share
{
  int Radius;
  int Axis;
};

struct RegionRow
{
  int RotateAxis; // 1 or 2 stands for the plane's first or second axis, negative for its opposite
  int RadiusVector;
  Share Origin;
  Share Point1;
  Share Point2;
};

// By region. The centre moves as a whole and takes no share of it. Deliberate: the corners do not
// move alike, region 2 moves point 2 along one direction only and region 3 moves it along both;
// hosts draw their own handles by these rules.
const RegionRow Rows[9] = {
  { -2, -1, { 1, 1 }, { 0, 1 }, { 1, 0 } },
  { -2, 1, { 0, 1 }, { 1, 1 }, { 0, 0 } },
  { 2, 1, { 0, 0 }, { 1, 0 }, { 0, 1 } },
  { 2, -1, { 1, 0 }, { 0, 0 }, { 1, 1 } },
  { 2, -1, { 1, 0 }, { 0, 0 }, { 1, 0 } },
  { 2, 1, { 0, 0 }, { 1, 0 }, { 0, 0 } },
  { 1, -2, { 1, 0 }, { 1, 0 }, { 0, 0 } },
  { 1, 2, { 0, 0 }, { 0, 0 }, { 1, 0 } },
  { 1, 2, { 0, 0 }, { 0, 0 }, { 0, 0 } },
};

void TakeAxis(int which, const double axis1[3], const double axis2[3], double result[3])
{
  const double* axis = which == 1 || which == -1 ? axis1 : axis2;
  for (int i = 0; i < 3; ++i)
  {
    result[i] = which < 0 ? -axis[i] : axis[i];
  }
}

void MovePoint(
  const Share& share, const double alongRadius[3], const double alongAxis[3], double point[3])
{
  for (int i = 0; i < 3; ++i)
  {
    point[i] += share.Radius * alongRadius[i] + share.Axis * alongAxis[i];
  }
}

const RegionRow& RowOf(int region)
{
  return Rows[region >= 0 && region <= zvPlaneMargins::Centre ? region : zvPlaneMargins::Centre];
}
}

int zvPlaneMargins::RegionAt(
  double x, double y, double width, double height, double marginX, double marginY)
{
  static const int regions[3][3] = { { LowLow, LowY, HighLow }, { LowX, Centre, HighX },
    { LowHigh, HighY, HighHigh } };
  const double borderX = marginX * width;
  const double borderY = marginY * height;
  const int column = x < borderX ? 0 : (x > width - borderX ? 2 : 1);
  const int row = y < borderY ? 0 : (y > height - borderY ? 2 : 1);
  return regions[row][column];
}

bool zvPlaneMargins::IsCorner(int region)
{
  return region < LowX;
}

void zvPlaneMargins::GetDragAxes(int region, const double axis1[3], const double axis2[3],
  double rotateAxis[3], double radiusVector[3])
{
  const RegionRow& row = RowOf(region);
  TakeAxis(row.RotateAxis, axis1, axis2, rotateAxis);
  TakeAxis(row.RadiusVector, axis1, axis2, radiusVector);
}

Corners zvPlaneMargins::Moved(const Corners& plane, int region, const double motion[3],
  const double rotateAxis[3], const double radiusVector[3])
{
  const RegionRow& row = RowOf(region);
  Corners moved = plane;
  if (region == Centre)
  {
    for (double* point : { moved.Origin, moved.Point1, moved.Point2 })
    {
      vtkMath::Add(point, motion, point);
    }
    return moved;
  }
  double alongRadius[3] = { radiusVector[0], radiusVector[1], radiusVector[2] };
  double alongAxis[3] = { rotateAxis[0], rotateAxis[1], rotateAxis[2] };
  vtkMath::MultiplyScalar(alongRadius, vtkMath::Dot(motion, radiusVector));
  vtkMath::MultiplyScalar(alongAxis, vtkMath::Dot(motion, rotateAxis));
  MovePoint(row.Origin, alongRadius, alongAxis, moved.Origin);
  MovePoint(row.Point1, alongRadius, alongAxis, moved.Point1);
  MovePoint(row.Point2, alongRadius, alongAxis, moved.Point2);
  return moved;
}

std::array<std::array<double, 3>, 8> zvPlaneMargins::Lines(
  const Corners& plane, double marginX, double marginY)
{
  std::array<std::array<double, 3>, 8> points;
  for (int i = 0; i < 3; ++i)
  {
    const double vector1 = plane.Point1[i] - plane.Origin[i];
    const double vector2 = plane.Point2[i] - plane.Origin[i];
    points[0][i] = plane.Origin[i] + (1.0 - marginY) * vector2;
    points[1][i] = plane.Point1[i] + (1.0 - marginY) * vector2;
    points[2][i] = plane.Origin[i] + marginY * vector2;
    points[3][i] = plane.Point1[i] + marginY * vector2;
    points[4][i] = plane.Origin[i] + marginX * vector1;
    points[5][i] = plane.Point2[i] + marginX * vector1;
    points[6][i] = plane.Origin[i] + (1.0 - marginX) * vector1;
    points[7][i] = plane.Point2[i] + (1.0 - marginX) * vector1;
  }
  return points;
}
