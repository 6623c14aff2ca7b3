#include "zvPlaneMargins.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{
using zvReslicePlane::Corners;

const double X[3] = { 1.0, 0.0, 0.0 };
const double Y[3] = { 0.0, 1.0, 0.0 };
const Corners Plane = { { 0.0, 0.0, 0.0 }, { 10.0, 0.0, 0.0 }, { 0.0, 20.0, 0.0 } };

struct Motion
{
  double Origin[2];
  double Point1[2];
  double Point2[2];
};

// Region, its axes, and what a motion of (3, 5, 7) adds to the three points in x and y.
struct RegionRow
{
  int Region;
  double RotateAxis[2];
  double RadiusVector[2];
  Motion Moved;
};

const RegionRow Regions[] = {
  { 0, { 0, -1 }, { -1, 0 }, { { 3, 5 }, { 0, 5 }, { 3, 0 } } },
  { 1, { 0, -1 }, { 1, 0 }, { { 0, 5 }, { 3, 5 }, { 0, 0 } } },
  { 2, { 0, 1 }, { 1, 0 }, { { 0, 0 }, { 3, 0 }, { 0, 5 } } },
  { 3, { 0, 1 }, { -1, 0 }, { { 3, 0 }, { 0, 0 }, { 3, 5 } } },
  { 4, { 0, 1 }, { -1, 0 }, { { 3, 0 }, { 0, 0 }, { 3, 0 } } },
  { 5, { 0, 1 }, { 1, 0 }, { { 0, 0 }, { 3, 0 }, { 0, 0 } } },
  { 6, { 1, 0 }, { 0, -1 }, { { 0, 5 }, { 0, 5 }, { 0, 0 } } },
  { 7, { 1, 0 }, { 0, 1 }, { { 0, 0 }, { 0, 0 }, { 0, 5 } } },
};

void ExpectShift(const double* moved, const double* from, const double* shift, double z)
{
  EXPECT_NEAR(moved[0], from[0] + shift[0], 1e-12);
  EXPECT_NEAR(moved[1], from[1] + shift[1], 1e-12);
  EXPECT_NEAR(moved[2], from[2] + z, 1e-12);
}
}

TEST(PlaneMargins, TheRegionIsThatOfThePoint)
{
  struct
  {
    double X, Y;
    int Region;
  } const rows[] = { { 0.5, 0.5, 0 }, { 9.5, 0.5, 1 }, { 9.5, 19.5, 2 }, { 0.5, 19.5, 3 },
    { 0.5, 10.0, 4 }, { 9.5, 10.0, 5 }, { 5.0, 0.5, 6 }, { 5.0, 19.5, 7 }, { 5.0, 10.0, 8 } };
  for (const auto& row : rows)
  {
    EXPECT_EQ(zvPlaneMargins::RegionAt(row.X, row.Y, 10.0, 20.0, 0.1, 0.1), row.Region);
  }
}

TEST(PlaneMargins, TheLineOfAMarginIsNotInTheMargin)
{
  EXPECT_EQ(zvPlaneMargins::RegionAt(1.0, 10.0, 10.0, 20.0, 0.1, 0.1), zvPlaneMargins::Centre);
  EXPECT_EQ(zvPlaneMargins::RegionAt(9.0, 10.0, 10.0, 20.0, 0.1, 0.1), zvPlaneMargins::Centre);
  EXPECT_EQ(zvPlaneMargins::RegionAt(5.0, 2.0, 10.0, 20.0, 0.1, 0.1), zvPlaneMargins::Centre);
  EXPECT_EQ(zvPlaneMargins::RegionAt(5.0, 18.0, 10.0, 20.0, 0.1, 0.1), zvPlaneMargins::Centre);
}

TEST(PlaneMargins, WithoutMarginsAllIsCentre)
{
  EXPECT_EQ(zvPlaneMargins::RegionAt(0.0, 0.0, 10.0, 20.0, 0.0, 0.0), zvPlaneMargins::Centre);
  EXPECT_EQ(zvPlaneMargins::RegionAt(10.0, 20.0, 10.0, 20.0, 0.0, 0.0), zvPlaneMargins::Centre);
}

TEST(PlaneMargins, TheFirstFourRegionsAreCorners)
{
  for (int region = 0; region < 9; ++region)
  {
    EXPECT_EQ(zvPlaneMargins::IsCorner(region), region < 4) << region;
  }
}

TEST(PlaneMargins, EachRegionHasItsAxes)
{
  for (const RegionRow& row : Regions)
  {
    SCOPED_TRACE(row.Region);
    double rotateAxis[3];
    double radiusVector[3];
    zvPlaneMargins::GetDragAxes(row.Region, X, Y, rotateAxis, radiusVector);
    const double zero[3] = { 0.0, 0.0, 0.0 };
    ExpectShift(rotateAxis, zero, row.RotateAxis, 0.0);
    ExpectShift(radiusVector, zero, row.RadiusVector, 0.0);
  }
  double rotateAxis[3];
  double radiusVector[3];
  zvPlaneMargins::GetDragAxes(zvPlaneMargins::Centre, X, Y, rotateAxis, radiusVector);
  EXPECT_EQ(rotateAxis[0], 1.0);
  EXPECT_EQ(radiusVector[1], 1.0);
}

TEST(PlaneMargins, EachEdgeAndCornerMovesItsPointsWithinThePlane)
{
  const double motion[3] = { 3.0, 5.0, 7.0 };
  for (const RegionRow& row : Regions)
  {
    SCOPED_TRACE(row.Region);
    double rotateAxis[3];
    double radiusVector[3];
    zvPlaneMargins::GetDragAxes(row.Region, X, Y, rotateAxis, radiusVector);
    const Corners moved =
      zvPlaneMargins::Moved(Plane, row.Region, motion, rotateAxis, radiusVector);
    ExpectShift(moved.Origin, Plane.Origin, row.Moved.Origin, 0.0);
    ExpectShift(moved.Point1, Plane.Point1, row.Moved.Point1, 0.0);
    ExpectShift(moved.Point2, Plane.Point2, row.Moved.Point2, 0.0);
  }
}

TEST(PlaneMargins, TheCentreMovesThePlaneByTheWholeMotion)
{
  const double motion[3] = { 3.0, 5.0, 7.0 };
  const Corners moved = zvPlaneMargins::Moved(Plane, zvPlaneMargins::Centre, motion, X, Y);
  ExpectShift(moved.Origin, Plane.Origin, motion, 7.0);
  ExpectShift(moved.Point1, Plane.Point1, motion, 7.0);
  ExpectShift(moved.Point2, Plane.Point2, motion, 7.0);
}

TEST(PlaneMargins, ARegionOutOfRangeMovesNothing)
{
  const double motion[3] = { 3.0, 5.0, 7.0 };
  const double nothing[2] = { 0.0, 0.0 };
  for (const int region : { -1, 9 })
  {
    ExpectShift(
      zvPlaneMargins::Moved(Plane, region, motion, X, Y).Origin, Plane.Origin, nothing, 0.0);
  }
}

TEST(PlaneMargins, TheLinesRunAcrossThePlaneAtTheMargins)
{
  const auto lines = zvPlaneMargins::Lines(Plane, 0.1, 0.2);
  const double expected[8][2] = { { 0, 16 }, { 10, 16 }, { 0, 4 }, { 10, 4 }, { 1, 0 }, { 1, 20 },
    { 9, 0 }, { 9, 20 } };
  const double zero[3] = { 0.0, 0.0, 0.0 };
  for (int i = 0; i < 8; ++i)
  {
    SCOPED_TRACE(i);
    ExpectShift(lines[i].data(), zero, expected[i], 0.0);
  }
}
