#include "zvObliqueSlices.h"

#include "vtkNew.h"
#include "vtkPoints.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

namespace
{
using zvObliqueSlices::Polygon;

const double Box[6] = { 0.0, 9.0, 0.0, 9.0, 0.0, 9.0 };

// A square across z that is larger than the box.
Polygon Across(double z)
{
  return { { { { -5.0, -5.0, z } }, { { 15.0, -5.0, z } }, { { 15.0, 15.0, z } },
    { { -5.0, 15.0, z } } } };
}

// A square that contains the x axis and rises by 45 degrees along y.
Polygon Tilted(double shift)
{
  return { { { { -20.0, -20.0, -20.0 + shift } }, { { 20.0, -20.0, -20.0 + shift } },
    { { 20.0, 20.0, 20.0 + shift } }, { { -20.0, 20.0, 20.0 + shift } } } };
}

int Count(const Polygon& polygon, double x, double y, double z)
{
  const double step[3] = { x, y, z };
  return zvObliqueSlices::StepsUntilClear(polygon, step, Box);
}
}

TEST(ObliqueSlices, FourPointsMakeThePolygon)
{
  vtkNew<vtkPoints> points;
  points->SetDataTypeToDouble();
  for (int i = 0; i < 4; ++i)
  {
    points->InsertNextPoint(i, 10.0 * i, 0.1 * i);
  }
  const Polygon polygon = zvObliqueSlices::Read(points);
  for (int i = 0; i < 4; ++i)
  {
    EXPECT_EQ(polygon[i][0], i);
    EXPECT_EQ(polygon[i][1], 10.0 * i);
    EXPECT_EQ(polygon[i][2], 0.1 * i);
  }
}

TEST(ObliqueSlices, APolygonTouchesTheBoxFromFaceToFace)
{
  EXPECT_TRUE(zvObliqueSlices::Touches(Across(0.5), Box));
  EXPECT_TRUE(zvObliqueSlices::Touches(Across(9.0), Box));
  EXPECT_FALSE(zvObliqueSlices::Touches(Across(9.1), Box));
  EXPECT_FALSE(zvObliqueSlices::Touches(Across(-0.1), Box));
  EXPECT_TRUE(zvObliqueSlices::Touches(Tilted(0.0), Box));
  EXPECT_FALSE(zvObliqueSlices::Touches(Tilted(9.5), Box));
}

TEST(ObliqueSlices, APolygonThatIsNoneTouchesNothing)
{
  Polygon polygon = Across(4.5);
  polygon[2][1] = std::nan("");
  EXPECT_FALSE(zvObliqueSlices::Touches(polygon, Box));
  polygon[2][1] = std::numeric_limits<double>::infinity();
  EXPECT_FALSE(zvObliqueSlices::Touches(polygon, Box));
}

TEST(ObliqueSlices, StepsAreCountedUntilTheFirstBesideTheBox)
{
  EXPECT_EQ(Count(Across(4.5), 0.0, 0.0, 1.0), 5); // 5.5 6.5 7.5 8.5 touch no more at 9.5
  EXPECT_EQ(Count(Across(4.5), 0.0, 0.0, -1.0), 5);
  EXPECT_EQ(Count(Across(4.5), 0.0, 0.0, 10.0), 1);
  EXPECT_EQ(Count(Across(4.5), 0.0, 0.0, 0.25), 19);
}

TEST(ObliqueSlices, WhereThePolygonStandsAtFirstIsNotTested)
{
  EXPECT_EQ(Count(Across(-0.5), 0.0, 0.0, 1.0), 10);
  EXPECT_EQ(Count(Across(20.0), 0.0, 0.0, 1.0), 1);
}

TEST(ObliqueSlices, ATiltedPolygonLeavesByTheEdgeOfTheBox)
{
  const double half = std::sqrt(0.5);
  // The box reaches 9 / sqrt(2) = 6.36 to either side of the polygon.
  EXPECT_EQ(Count(Tilted(0.0), 0.0, -half, half), 7);
  EXPECT_EQ(Count(Tilted(0.0), 0.0, half, -half), 7);
}

TEST(ObliqueSlices, AStepThatMovesNothingEndsTheCountAtOnce)
{
  EXPECT_EQ(Count(Across(4.5), 0.0, 0.0, 0.0), 0);
  EXPECT_EQ(Count(Across(4.5), 0.0, 0.0, std::nan("")), 0);
  EXPECT_EQ(Count(Across(4.5), std::numeric_limits<double>::infinity(), 0.0, 0.0), 0);
  EXPECT_EQ(Count(Across(4.5), 0.0, 0.0, 1e-300), 0);
  const double nothing[3] = { 0.0, 0.0, 0.0 };
  EXPECT_FALSE(zvObliqueSlices::IsStep(nothing));
  const double something[3] = { 0.0, -0.1, 0.0 };
  EXPECT_TRUE(zvObliqueSlices::IsStep(something));
}

TEST(ObliqueSlices, StepsTooSmallToMoveACornerStillEnd)
{
  const double step[3] = { 0.0, 0.0, 1e-18 };
  const double thin[6] = { 0.0, 9.0, 0.0, 9.0, 4.4, 4.5 + 1e-15 };
  EXPECT_LT(zvObliqueSlices::StepsUntilClear(Across(4.5), step, thin), 2000);
  EXPECT_LE(zvObliqueSlices::StepsUntilClear(Across(20.0), step, Box), 2);
}

TEST(ObliqueSlices, NoCountIsLongerThanADragCanWaitFor)
{
  EXPECT_EQ(Count(Across(0.0), 0.0, 0.0, 1e-3), 9001);
  EXPECT_EQ(Count(Across(0.0), 0.0, 0.0, 1e-9), 100000);
}

TEST(ObliqueSlices, APolygonOrABoxThatIsNoneEndsTheCount)
{
  Polygon polygon = Across(4.5);
  polygon[0][0] = std::nan("");
  EXPECT_EQ(Count(polygon, 0.0, 0.0, 1.0), 0);
  const double step[3] = { 0.0, 0.0, 1.0 };
  const double lost[6] = { 0.0, 9.0, 0.0, 9.0, 0.0, std::nan("") };
  EXPECT_LE(zvObliqueSlices::StepsUntilClear(Across(4.5), step, lost), 20);
}

TEST(ObliqueSlices, AMotionIsAStepAMillimetreAndAtLeastOne)
{
  EXPECT_EQ(zvObliqueSlices::StepsOfMotion(2.5), 3);
  EXPECT_EQ(zvObliqueSlices::StepsOfMotion(0.2), 1);
  EXPECT_EQ(zvObliqueSlices::StepsOfMotion(0.0), 0);
  EXPECT_EQ(zvObliqueSlices::StepsOfMotion(-0.2), -1);
  EXPECT_EQ(zvObliqueSlices::StepsOfMotion(-2.5), -3);
  EXPECT_EQ(zvObliqueSlices::StepsOfMotion(3.0), 4);
  EXPECT_EQ(zvObliqueSlices::StepsOfMotion(std::nan("")), 0);
  EXPECT_EQ(zvObliqueSlices::StepsOfMotion(1e300), INT_MAX);
}
