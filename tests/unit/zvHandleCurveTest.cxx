#include "zvHandleCurve.h"

#include "zvParametricSpline.h"
#include "zvTestKit.h"

#include "vtkCellArray.h"
#include "vtkNew.h"
#include "vtkParametricFunctionSource.h"
#include "vtkPlaneSource.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"
#include "vtkTransform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace zvHandleCurve;
using ::testing::ElementsAre;

namespace
{
const double NaN = std::numeric_limits<double>::quiet_NaN();

class HandleCurve : public zvtest::QuietTest
{
};

void ExpectNear(const Positions& actual, const Positions& expected)
{
  ASSERT_EQ(actual.size(), expected.size());
  for (std::size_t i = 0; i < actual.size(); ++i)
  {
    for (int axis = 0; axis < 3; ++axis)
    {
      EXPECT_NEAR(actual[i][axis], expected[i][axis], 1e-12) << "handle " << i << " axis " << axis;
    }
  }
}

vtkSmartPointer<vtkPolyData> MakeLine(
  const Positions& positions, std::initializer_list<vtkIdType> ids)
{
  auto line = vtkSmartPointer<vtkPolyData>::New();
  line->SetPoints(MakePoints(positions));
  vtkNew<vtkCellArray> cells;
  cells->InsertNextCell(ids);
  line->SetLines(cells);
  return line;
}
}

TEST_F(HandleCurve, ReadsWhatWasWritten)
{
  const Positions positions = { { { 1, 2, 3 } }, { { 4, 5, 6 } }, { { 7, 8, 9 } } };
  auto points = MakePoints(positions);
  EXPECT_EQ(points->GetDataType(), VTK_DOUBLE);
  EXPECT_EQ(points->GetData()->GetNumberOfComponents(), 3);
  EXPECT_EQ(Read(points), positions);
}

TEST_F(HandleCurve, ReadsPointsOfSinglePrecision)
{
  vtkNew<vtkPoints> points;
  points->InsertNextPoint(0.5, 0.25, -8.0);
  EXPECT_THAT(Read(points), ElementsAre(Position{ { 0.5, 0.25, -8.0 } }));
}

TEST_F(HandleCurve, ReadsNoMoreThanAsked)
{
  auto points = MakePoints({ { { 1, 2, 3 } }, { { 4, 5, 6 } } });
  EXPECT_THAT(Read(points, 1), ElementsAre(Position{ { 1, 2, 3 } }));
  EXPECT_EQ(Read(points, 5).size(), 2u);
  EXPECT_TRUE(Read(points, 0).empty());
  EXPECT_TRUE(Read(points, -1).empty());
  EXPECT_TRUE(Read(nullptr).empty());
}

TEST_F(HandleCurve, WritingLeavesLaterPointsAndMarksThePoints)
{
  for (int type : { VTK_DOUBLE, VTK_FLOAT })
  {
    vtkNew<vtkPoints> points;
    points->SetDataType(type);
    points->InsertNextPoint(0.0, 0.0, 0.0);
    points->InsertNextPoint(1.0, 1.0, 1.0);
    const vtkMTimeType before = points->GetMTime();
    Write({ { { 5, 6, 7 } } }, points);
    EXPECT_GT(points->GetMTime(), before);
    EXPECT_THAT(Read(points), ElementsAre(Position{ { 5, 6, 7 } }, Position{ { 1.0, 1.0, 1.0 } }));
  }
}

TEST_F(HandleCurve, MakesAVertexCellForEachHandle)
{
  auto vertices = MakeVertices(3);
  ASSERT_EQ(vertices->GetNumberOfCells(), 3);
  for (vtkIdType i = 0; i < 3; ++i)
  {
    vtkIdType size = 0;
    const vtkIdType* ids = nullptr;
    vertices->GetCellAtId(i, size, ids);
    ASSERT_EQ(size, 1);
    EXPECT_EQ(ids[0], i);
  }
  EXPECT_EQ(MakeVertices(0)->GetNumberOfCells(), 0);
}

TEST_F(HandleCurve, SpreadsHandlesOnTheDiagonal)
{
  const double bounds[6] = { 0, 4, -2, 2, 10, 30 };
  ExpectNear(OnDiagonal(bounds, 5),
    { { { 0, -2, 10 } }, { { 1, -1, 15 } }, { { 2, 0, 20 } }, { { 3, 1, 25 } }, { { 4, 2, 30 } } });
  ExpectNear(OnDiagonal(bounds, 1), { { { 0, -2, 10 } } });
  EXPECT_TRUE(OnDiagonal(bounds, 0).empty());
  EXPECT_TRUE(OnDiagonal(bounds, -2).empty());
}

TEST_F(HandleCurve, ProjectionAlongAnAxisSetsThatCoordinate)
{
  const Positions start = { { { 1, 2, 3 } }, { { -4, 5, -6 } } };
  const Positions expected[3] = { { { { 9, 2, 3 } }, { { 9, 5, -6 } } },
    { { { 1, 9, 3 } }, { { -4, 9, -6 } } }, { { { 1, 2, 9 } }, { { -4, 5, 9 } } } };
  for (int axis = 0; axis < 3; ++axis)
  {
    Positions positions = start;
    ProjectToOrthoPlane(positions, axis, 9.0);
    EXPECT_EQ(positions, expected[axis]);
  }
}

TEST_F(HandleCurve, ObliqueProjectionDropsAlongThePlanesNormal)
{
  // The plane through the y axis that climbs at 45 degrees in x and z.
  vtkNew<vtkPlaneSource> plane;
  plane->SetOrigin(1.0, 0.0, 1.0);
  plane->SetPoint1(4.0, 0.0, 4.0);
  plane->SetPoint2(1.0, 7.0, 1.0);
  Positions positions = { { { 2, 3, 0 } }, { { 5, -1, 5 } }, { { 0, 0, 1 } } };
  ProjectToObliquePlane(positions, plane);
  ExpectNear(positions, { { { 1, 3, 1 } }, { { 5, -1, 5 } }, { { 0.5, 0, 0.5 } } });
}

TEST_F(HandleCurve, ObliqueProjectionDoesNotStraightenThePlanesAxes)
{
  // U is x, V half way between x and y: (1, 0, 0) has s = 1 and t = sqrt(1/2).
  vtkNew<vtkPlaneSource> plane;
  plane->SetOrigin(0.0, 0.0, 0.0);
  plane->SetPoint1(2.0, 0.0, 0.0);
  plane->SetPoint2(1.0, 1.0, 0.0);
  Positions positions = { { { 1, 0, 8 } } };
  ProjectToObliquePlane(positions, plane);
  ExpectNear(positions, { { { 1.5, 0.5, 0 } } });
}

TEST_F(HandleCurve, ObliqueProjectionOnACollapsedPlaneEndsInItsOrigin)
{
  // A plane that a host has not laid out yet: both axes have no length.
  vtkNew<vtkPlaneSource> plane;
  double origin[3] = { 3, 4, 5 };
  plane->SetPoint1(origin);
  plane->SetPoint2(origin);
  plane->SetOrigin(origin);
  Positions positions = { { { 1, 2, 3 } } };
  ProjectToObliquePlane(positions, plane);
  ExpectNear(positions, { { { 3, 4, 5 } } });
}

TEST_F(HandleCurve, TranslateAddsTheMotionToEveryHandle)
{
  Positions positions = { { { 1, 2, 3 } }, { { 0, 0, 0 } } };
  Translate(positions, { { 10, -1, 0.5 } });
  EXPECT_THAT(positions, ElementsAre(Position{ { 11, 1, 3.5 } }, Position{ { 10, -1, 0.5 } }));
}

TEST_F(HandleCurve, ScaleAboutKeepsTheCenter)
{
  Positions positions = { { { 1, 1, 1 } }, { { 3, 1, 0 } } };
  ScaleAbout(positions, { { 1, 1, 1 } }, 3.0);
  EXPECT_THAT(positions, ElementsAre(Position{ { 1, 1, 1 } }, Position{ { 7, 1, -2 } }));
}

TEST_F(HandleCurve, ScaleDividesByTheNumberOfHandlesNotOfSegments)
{
  // Mean (2, 2, 0), length 4 + 4 + 4 over 4 handles is 3, distance 1.5 over 3 is a half.
  const Positions square = { { { 0, 0, 0 } }, { { 4, 0, 0 } }, { { 4, 4, 0 } }, { { 0, 4, 0 } } };
  Positions shrunk = square;
  Scale(shrunk, 1.5, true);
  ExpectNear(shrunk, { { { 1, 1, 0 } }, { { 3, 1, 0 } }, { { 3, 3, 0 } }, { { 1, 3, 0 } } });
  Positions grown = square;
  Scale(grown, 1.5, false);
  ExpectNear(grown, { { { -1, -1, 0 } }, { { 5, -1, 0 } }, { { 5, 5, 0 } }, { { -1, 5, 0 } } });
}

TEST_F(HandleCurve, ScaleOfACurveWithoutLengthMovesNothing)
{
  for (const Positions& start : { Positions{}, Positions{ { { 1, 2, 3 } } },
         Positions{ { { 1, 2, 3 } }, { { 1, 2, 3 } }, { { 1, 2, 3 } } } })
  {
    for (double distance : { 0.0, 2.0, NaN })
    {
      Positions positions = start;
      Scale(positions, distance, false);
      EXPECT_EQ(positions, start);
    }
  }
}

TEST_F(HandleCurve, ScaleKeepsWhatIsStillANumber)
{
  Positions positions = { { { 1, 2, 3 } }, { { NaN, 0, 0 } }, { { 4, 5, 6 } } };
  Scale(positions, 1.0, true);
  EXPECT_EQ(positions[0], (Position{ { 1, 2, 3 } }));
  EXPECT_EQ(positions[2], (Position{ { 4, 5, 6 } }));
}

TEST_F(HandleCurve, AFreeSpinTurnsAcrossTheMotion)
{
  Position axis;
  const double normal[3] = { 0, 0, 2 };
  EXPECT_TRUE(FindFreeSpinAxis({ { 3, 0, 0 } }, normal, axis));
  EXPECT_EQ(axis, (Position{ { 0, 1, 0 } }));
  EXPECT_FALSE(FindFreeSpinAxis({ { 0, 0, 0 } }, normal, axis));
  EXPECT_FALSE(FindFreeSpinAxis({ { 0, 0, 5 } }, normal, axis));
}

TEST_F(HandleCurve, ASpinOnAPlaneTurnsAboutItsNormal)
{
  vtkNew<vtkPlaneSource> plane;
  plane->SetNormal(0.0, 3.0, 4.0);
  Position axis;
  for (int normal = AlongX; normal <= AlongZ; ++normal)
  {
    EXPECT_TRUE(FindPlanarSpinAxis(normal, plane, axis));
    for (int i = 0; i < 3; ++i)
    {
      EXPECT_EQ(axis[i], i == normal ? 1.0 : 0.0);
    }
  }
  EXPECT_TRUE(FindPlanarSpinAxis(Oblique, plane, axis));
  ExpectNear({ axis }, { { { 0.0, 0.6, 0.8 } } });
  EXPECT_FALSE(FindPlanarSpinAxis(Oblique, nullptr, axis));
}

TEST_F(HandleCurve, SpinTurnsAFullCircleForAMotionOfOneRadius)
{
  // Round (1, 0, 0): the motion ends 2 mm off and is 0.5 mm long, a quarter of the radius.
  vtkNew<vtkTransform> scratch;
  Positions positions = { { { 2, 0, 0 } }, { { 1, 3, 7 } } };
  Spin(positions, { { 3, -0.5, 0 } }, { { 3, 0, 0 } }, { { 1, 0, 0 } }, { { 0, 0, 1 } }, scratch);
  ExpectNear(positions, { { { 1, 1, 0 } }, { { -2, 0, 7 } } });
}

TEST_F(HandleCurve, SpinTakesOnlyTheMotionRoundTheAxis)
{
  vtkNew<vtkTransform> scratch;
  Positions positions = { { { 2, 0, 0 } } };
  Spin(positions, { { 1, 0, 0 } }, { { 3, 0, 0 } }, { { 0, 0, 0 } }, { { 0, 0, 1 } }, scratch);
  ExpectNear(positions, { { { 2, 0, 0 } } });
}

TEST_F(HandleCurve, AMotionThatEndsInTheCenterTurnsNothing)
{
  vtkNew<vtkTransform> scratch;
  Positions positions = { { { 2, 0, 0 } } };
  Spin(positions, { { 1, 0, 0 } }, { { 0, 0, 0 } }, { { 0, 0, 0 } }, { { 0, 0, 1 } }, scratch);
  ExpectNear(positions, { { { 2, 0, 0 } } });
  Spin(positions, { { 1, 0, 0 } }, { { NaN, 0, 0 } }, { { 0, 0, 0 } }, { { 0, 0, 1 } }, scratch);
  ExpectNear(positions, { { { 2, 0, 0 } } });
}

TEST_F(HandleCurve, TheCentroidIsTheMean)
{
  EXPECT_EQ(Centroid({ { { 1, 2, 3 } }, { { 3, 6, -3 } } }), (Position{ { 2, 4, 0 } }));
  EXPECT_EQ(Centroid({ { { 1, 2, 3 } } }), (Position{ { 1, 2, 3 } }));
  EXPECT_EQ(Centroid({}), (Position{ { 0, 0, 0 } }));
}

TEST_F(HandleCurve, TheSummedLengthHasNoClosingSegment)
{
  EXPECT_DOUBLE_EQ(SummedLength({ { { 0, 0, 0 } }, { { 3, 4, 0 } }, { { 3, 4, 12 } } }), 17.0);
  EXPECT_EQ(SummedLength({ { { 3, 4, 0 } } }), 0.0);
  EXPECT_EQ(SummedLength({}), 0.0);
}

TEST_F(HandleCurve, ALineIsClosedIfItsEndsAreExactlyEqual)
{
  const Positions ring = { { { 0, 0, 0 } }, { { 1, 0, 0 } }, { { 1, 1, 0 } }, { { 0, 0, 0 } } };
  EXPECT_EQ(TestClosure(MakeLine(ring, { 0, 1, 2, 3 })), Closure::Closed);
  Positions nearly = ring;
  nearly[3][2] = 1e-300;
  EXPECT_EQ(TestClosure(MakeLine(nearly, { 0, 1, 2, 3 })), Closure::Open);
}

TEST_F(HandleCurve, ALineIsClosedIfItRepeatsItsFirstPoint)
{
  const Positions corners = { { { 0, 0, 0 } }, { { 1, 0, 0 } }, { { 1, 1, 0 } } };
  EXPECT_EQ(TestClosure(MakeLine(corners, { 0, 1, 2, 0 })), Closure::Closed);
  EXPECT_EQ(TestClosure(MakeLine(corners, { 0, 1, 2 })), Closure::Open);
}

TEST_F(HandleCurve, ALineWithoutEnoughPointsIsNotClosed)
{
  vtkNew<vtkPolyData> empty;
  EXPECT_EQ(TestClosure(nullptr), Closure::NoLine);
  EXPECT_EQ(TestClosure(empty), Closure::NoLine);
  EXPECT_EQ(TestClosure(MakeLine({}, {})), Closure::Open);
  EXPECT_EQ(TestClosure(MakeLine({ { { 1, 2, 3 } } }, { 0, 0 })), Closure::Open);
  EXPECT_EQ(
    TestClosure(MakeLine({ { { NaN, 0, 0 } }, { { NaN, 0, 0 } } }, { 0, 1 })), Closure::Open);
}

TEST_F(HandleCurve, TheHandleBeforeAnInsertionIsFoundByLength)
{
  // Handles on a straight line at 0, 1, 2 and 10: the second half of the line is all in the last
  // segment, which a count of handles would not see.
  vtkNew<zvParametricSpline> spline;
  spline->SetPoints(
    MakePoints({ { { 0, 0, 0 } }, { { 1, 0, 0 } }, { { 2, 0, 0 } }, { { 10, 0, 0 } } }));
  EXPECT_EQ(FindInsertion(spline, 4, 0, 500), 0);
  EXPECT_EQ(FindInsertion(spline, 4, 40, 500), 0);
  EXPECT_EQ(FindInsertion(spline, 4, 75, 500), 1);
  EXPECT_EQ(FindInsertion(spline, 4, 250, 500), 2);
  EXPECT_EQ(FindInsertion(spline, 4, 499, 500), 2);
}

TEST_F(HandleCurve, OnTheClosingSegmentAnInsertionComesLast)
{
  vtkNew<zvParametricSpline> spline;
  spline->SetPoints(
    MakePoints({ { { 0, 0, 0 } }, { { 4, 0, 0 } }, { { 4, 4, 0 } }, { { 0, 4, 0 } } }));
  spline->ClosedOn();
  for (int segment = 0; segment < 4; ++segment)
  {
    EXPECT_EQ(FindInsertion(spline, 4, 125 * segment + 60, 500), segment);
  }
}

TEST_F(HandleCurve, AnInsertionThatCannotBeFoundStaysInTheList)
{
  vtkNew<zvParametricSpline> spline;
  spline->SetPoints(MakePoints({ { { 1, 1, 1 } }, { { 1, 1, 1 } } }));
  EXPECT_EQ(FindInsertion(spline, 2, 250, 500), -1);
  EXPECT_EQ(FindInsertion(nullptr, 2, 250, 500), -1);
  spline->SetPoints(MakePoints({ { { 0, 0, 0 } }, { { 1, 0, 0 } } }));
  EXPECT_EQ(FindInsertion(spline, 2, 3, 0), 0);
  EXPECT_LE(FindInsertion(spline, 2, 1000, 500), 1);
  EXPECT_GE(FindInsertion(spline, 2, -1000, 500), -1);
}

TEST_F(HandleCurve, InsertsAfterAnIndex)
{
  const Position a{ { 1, 0, 0 } };
  const Position b{ { 2, 0, 0 } };
  const Position added{ { 9, 9, 9 } };
  EXPECT_THAT(Inserted({ a, b }, 0, added), ElementsAre(a, added, b));
  EXPECT_THAT(Inserted({ a, b }, 1, added), ElementsAre(a, b, added));
  EXPECT_THAT(Inserted({ a, b }, -1, added), ElementsAre(added, a, b));
  EXPECT_THAT(Inserted({}, -1, added), ElementsAre(added));
}

TEST_F(HandleCurve, ErasesAnIndex)
{
  const Position a{ { 1, 0, 0 } };
  const Position b{ { 2, 0, 0 } };
  const Position c{ { 3, 0, 0 } };
  EXPECT_THAT(Erased({ a, b, c }, 0), ElementsAre(b, c));
  EXPECT_THAT(Erased({ a, b, c }, 1), ElementsAre(a, c));
  EXPECT_THAT(Erased({ a, b, c }, 2), ElementsAre(a, b));
}

// Random curves against the definitions, worked out here in another way.
TEST_F(HandleCurve, AgreesWithTheDefinitionsOnRandomCurves)
{
  vtkNew<vtkTransform> scratch;
  unsigned int seed = 7;
  const auto next = [&seed]
  {
    seed = seed * 1664525u + 1013904223u;
    return (seed >> 8) / 16777216.0 * 200.0 - 100.0;
  };
  for (int round = 0; round < 200; ++round)
  {
    Positions positions(2 + round % 30);
    for (Position& position : positions)
    {
      position = { { next(), next(), next() } };
    }
    const Position center = Centroid(positions);
    const double length = SummedLength(positions);

    Positions turned = positions;
    Spin(turned, { { next(), next(), 0 } }, { { next(), next(), 0 } }, center, { { 0, 0, 1 } },
      scratch);
    for (std::size_t i = 0; i < positions.size(); ++i)
    {
      EXPECT_NEAR(std::hypot(turned[i][0] - center[0], turned[i][1] - center[1]),
        std::hypot(positions[i][0] - center[0], positions[i][1] - center[1]), 1e-9);
      EXPECT_NEAR(turned[i][2], positions[i][2], 1e-9);
    }
    EXPECT_NEAR(SummedLength(turned), length, 1e-8 * length);

    Positions scaled = positions;
    Scale(scaled, 0.25 * length / positions.size(), true);
    EXPECT_NEAR(SummedLength(scaled), 0.75 * length, 1e-9 * length);
    EXPECT_NEAR(Centroid(scaled)[0], center[0], 1e-9);
  }
}
