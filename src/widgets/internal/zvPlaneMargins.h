#ifndef zvPlaneMargins_h
#define zvPlaneMargins_h

#include "zvReslicePlane.h"

#include <array>

/// The nine regions of a plane: four corners, four edges and the centre, which margins along its
/// sides cut out of it, and what a drag from each of them moves.
namespace zvPlaneMargins
{
/// Regions, as x along the plane's first axis and y along its second:
///   y above the far margin    3  7  2
///   between                   4  8  5
///   y below the margin        0  6  1
enum Region
{
  LowLow = 0,
  HighLow = 1,
  HighHigh = 2,
  LowHigh = 3,
  LowX = 4,
  HighX = 5,
  LowY = 6,
  HighY = 7,
  Centre = 8
};

/// The region at (x, y) millimetres from the origin of a plane of \a width by \a height, with
/// margins of these fractions of them. A point on a margin's line is not in the margin.
int RegionAt(double x, double y, double width, double height, double marginX, double marginY);

bool IsCorner(int region);

/// The directions in the plane for a drag from \a region, along and across the edge that turns.
/// \a axis1 and \a axis2 are the plane's unit axes.
void GetDragAxes(int region, const double axis1[3], const double axis2[3], double rotateAxis[3],
  double radiusVector[3]);

/// The plane with its region \a region moved by \a motion: the whole plane from the centre, an edge
/// along \a radiusVector, a corner along both directions.
zvReslicePlane::Corners Moved(const zvReslicePlane::Corners& plane, int region,
  const double motion[3], const double rotateAxis[3], const double radiusVector[3]);

/// End points of the four margin lines, two by two: far and near margin along the second axis, then
/// near and far margin along the first. \a marginX and \a marginY are fractions.
std::array<std::array<double, 3>, 8> Lines(
  const zvReslicePlane::Corners& plane, double marginX, double marginY);
}

#endif
