#include "zvUtils.h"
#include "zvDice.h"
#include "zvParametricSpline.h"
#include "zvTestKit.h"

#include "vtkCellArray.h"
#include "vtkMath.h"
#include "vtkNew.h"
#include "vtkParametricFunctionSource.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"
#include "vtkSmartPointer.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace
{
using Point = std::array<double, 3>;
using Points = std::vector<Point>;
using Cells = std::vector<std::vector<vtkIdType>>;
const double NaN = std::numeric_limits<double>::quiet_NaN();
const char* const Speaker = "src/companions/zvUtils";

vtkSmartPointer<vtkPolyData> MakeContour(const Points& points, const Cells& cells)
{
  vtkNew<vtkPoints> places;
  places->SetDataTypeToDouble();
  for (const Point& point : points)
  {
    places->InsertNextPoint(point.data());
  }
  vtkNew<vtkCellArray> lines;
  for (const std::vector<vtkIdType>& cell : cells)
  {
    lines->InsertNextCell(static_cast<vtkIdType>(cell.size()), cell.data());
  }
  auto contour = vtkSmartPointer<vtkPolyData>::New();
  contour->SetPoints(places);
  contour->SetLines(lines);
  return contour;
}

// Two-point cells from each of the points to the next, the last to the first.
Cells Ring(vtkIdType first, vtkIdType count)
{
  Cells cells;
  for (vtkIdType i = 0; i < count; ++i)
  {
    cells.push_back({ first + i, first + (i + 1) % count });
  }
  return cells;
}

Cells Joined(Cells a, const Cells& b)
{
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

double AreaOf(const Points& points, const Cells& cells)
{
  return zvUtils::CalculateArea(MakeContour(points, cells));
}

// A star about the origin of the plane z = 0: never convex, never crossing itself.
Points RandomStar(zvtest::Dice& dice, int count)
{
  Points star;
  for (int i = 0; i < count; ++i)
  {
    const double angle = 2.0 * vtkMath::Pi() * i / count;
    const double radius = dice.Real(2.0, 60.0);
    star.push_back({ radius * std::cos(angle), radius * std::sin(angle), 0.0 });
  }
  return star;
}

// Of a polygon in the plane z = 0, by its trapezoids.
double FlatArea(const Points& points)
{
  double sum = 0.0;
  for (std::size_t i = 0; i < points.size(); ++i)
  {
    const Point& p = points[i];
    const Point& q = points[(i + 1) % points.size()];
    sum += 0.5 * (q[0] - p[0]) * (q[1] + p[1]);
  }
  return std::abs(sum);
}

Points Moved(Points points, zvtest::Dice& dice, double reach)
{
  double rotation[4] = { dice.Real(0.0, 6.3), dice.Real(-1.0, 1.0), dice.Real(-1.0, 1.0), 0.3 };
  vtkMath::Normalize(rotation + 1);
  const Point shift = { dice.Real(-reach, reach), dice.Real(-reach, reach),
    dice.Real(-reach, reach) };
  for (Point& point : points)
  {
    double turned[3];
    vtkMath::RotateVectorByWXYZ(point.data(), rotation, turned);
    vtkMath::Add(turned, shift.data(), point.data());
  }
  return points;
}

Cells Shuffled(Cells cells, zvtest::Dice& dice)
{
  for (std::size_t i = cells.size(); i > 1; --i)
  {
    std::swap(cells[i - 1], cells[dice.Int(0, static_cast<int>(i) - 1)]);
  }
  for (std::vector<vtkIdType>& cell : cells)
  {
    if (dice.Chance(0.5))
    {
      std::reverse(cell.begin(), cell.end());
    }
  }
  return cells;
}

// Renumbers the points at random, the cells with them.
void Renumber(Points& points, Cells& cells, zvtest::Dice& dice)
{
  std::vector<vtkIdType> newIds(points.size());
  for (std::size_t i = 0; i < newIds.size(); ++i)
  {
    newIds[i] = static_cast<vtkIdType>(i);
    std::swap(newIds[i], newIds[dice.Int(0, static_cast<int>(i))]);
  }
  Points renumbered(points.size());
  for (std::size_t i = 0; i < points.size(); ++i)
  {
    renumbered[newIds[i]] = points[i];
  }
  points = renumbered;
  for (std::vector<vtkIdType>& cell : cells)
  {
    for (vtkIdType& id : cell)
    {
      id = newIds[id];
    }
  }
}

const Points Square = { { 0, 0, 0 }, { 2, 0, 0 }, { 2, 2, 0 }, { 0, 2, 0 } };

class Utils : public zvtest::QuietTest
{
protected:
  void ExpectNoArea(vtkPolyData* contour, const char* why, int line = __builtin_LINE())
  {
    EXPECT_EQ(zvUtils::CalculateArea(contour), 0.0) << "line " << line;
    ExpectGenericWarning(Speaker, why, __FILE__, line);
  }
};

class SampledSpline
{
public:
  SampledSpline(const Points& handles, bool closed, int resolution)
  {
    vtkNew<vtkPoints> points;
    points->SetDataTypeToDouble();
    for (const Point& handle : handles)
    {
      points->InsertNextPoint(handle.data());
    }
    vtkNew<zvParametricSpline> spline;
    spline->SetPoints(points);
    spline->SetClosed(closed);
    this->Source->SetParametricFunction(spline);
    this->Source->SetScalarModeToNone();
    this->Source->GenerateTextureCoordinatesOff();
    this->Source->SetUResolution(resolution);
    this->Source->Update();
  }

  vtkPolyData* Output() { return this->Source->GetOutput(); }

private:
  vtkNew<vtkParametricFunctionSource> Source;
};
}

TEST_F(Utils, AreaOfARingOfTwoPointCells)
{
  EXPECT_DOUBLE_EQ(AreaOf(Square, Ring(0, 4)), 4.0);
}

TEST_F(Utils, AreaDoesNotDependOnTheDirection)
{
  EXPECT_DOUBLE_EQ(AreaOf(Square, { { 0, 3 }, { 3, 2 }, { 2, 1 }, { 1, 0 } }), 4.0);
}

TEST_F(Utils, AreaDoesNotDependOnOrderAndDirectionOfTheCells)
{
  EXPECT_DOUBLE_EQ(AreaOf(Square, { { 2, 3 }, { 1, 0 }, { 2, 1 }, { 0, 3 } }), 4.0);
}

TEST_F(Utils, AreaOfAnyStarInAnyPlaneWithShuffledCells)
{
  zvtest::Dice dice(41);
  for (int i = 0; i < 300; ++i)
  {
    const Points star = RandomStar(dice, dice.Int(3, 60));
    Points points = Moved(star, dice, 200.0);
    Cells cells = Shuffled(Ring(0, static_cast<vtkIdType>(points.size())), dice);
    Renumber(points, cells, dice);
    const double expected = FlatArea(star);
    EXPECT_NEAR(AreaOf(points, cells), expected, 1e-10 * expected);
  }
}

TEST_F(Utils, AreaKeepsItsDigitsFarFromTheOrigin)
{
  const double far = 1048576.0;
  Points points = Square;
  for (Point& point : points)
  {
    point = { point[0] / 1024 + far, point[1] / 1024 - far, far };
  }
  EXPECT_DOUBLE_EQ(AreaOf(points, Ring(0, 4)), 4.0 / 1048576);
}

TEST_F(Utils, AreaOfAPolylineThatEndsAtItsFirstPoint)
{
  EXPECT_DOUBLE_EQ(AreaOf(Square, { { 0, 1, 2, 3, 0 } }), 4.0);
}

TEST_F(Utils, AreaOfAPolylineWhoseLastPointIsAtTheFirst)
{
  Points points = Square;
  points.push_back(Square[0]);
  EXPECT_DOUBLE_EQ(AreaOf(points, { { 0, 1, 2, 3, 4 } }), 4.0);
}

TEST_F(Utils, AreaOfTwoPointCellsWhoseLastPointIsAtTheFirst)
{
  Points points = Square;
  points.push_back(Square[0]);
  EXPECT_DOUBLE_EQ(AreaOf(points, { { 3, 4 }, { 2, 1 }, { 1, 0 }, { 2, 3 } }), 4.0);
}

TEST_F(Utils, AreaOfPolylinesThatMeetAtTheirEnds)
{
  EXPECT_DOUBLE_EQ(AreaOf(Square, { { 2, 1, 0 }, { 2, 3 }, { 0, 3 } }), 4.0);
}

TEST_F(Utils, AreaOfCellsThatShareNoPointButTheirPlaces)
{
  zvtest::Dice dice(42);
  for (int i = 0; i < 50; ++i)
  {
    const Points star = RandomStar(dice, dice.Int(3, 30));
    const Points ring = Moved(star, dice, 50.0);
    Points points;
    Cells cells;
    for (std::size_t j = 0; j < ring.size(); ++j)
    {
      const vtkIdType id = static_cast<vtkIdType>(points.size());
      points.push_back(ring[j]);
      points.push_back(ring[(j + 1) % ring.size()]);
      cells.push_back({ id, id + 1 });
    }
    EXPECT_NEAR(AreaOf(points, Shuffled(cells, dice)), FlatArea(star), 1e-10 * FlatArea(star));
  }
}

TEST_F(Utils, AreaTakesNoNoticeOfOtherPoints)
{
  Points points = { { 7, 7, 7 }, { NaN, NaN, NaN } };
  points.insert(points.end(), Square.begin(), Square.end());
  EXPECT_DOUBLE_EQ(AreaOf(points, Ring(2, 4)), 4.0);
}

TEST_F(Utils, AreaTakesNoNoticeOfRepeatedPointsAndLinesOfNoLength)
{
  const Points points = { { 0, 0, 0 }, { 2, 0, 0 }, { 2, 0, 0 }, { 2, 2, 0 }, { 0, 2, 0 } };
  EXPECT_DOUBLE_EQ(AreaOf(points, Ring(0, 5)), 4.0);
  EXPECT_DOUBLE_EQ(AreaOf(Square, Joined(Ring(0, 4), { { 1, 1 }, { 2 }, {} })), 4.0);
}

TEST_F(Utils, AreaOfASampledClosedSplineIsThatOfItsSamples)
{
  const double radius = 30.0;
  Points handles;
  for (int i = 0; i < 12; ++i)
  {
    const double angle = 2.0 * vtkMath::Pi() * i / 12;
    handles.push_back({ 5.0, radius * std::cos(angle), -7.0 + radius * std::sin(angle) });
  }
  SampledSpline circle(handles, true, 500);
  const double area = vtkMath::Pi() * radius * radius;
  EXPECT_NEAR(zvUtils::CalculateArea(circle.Output()), area, 1e-3 * area);
}

TEST_F(Utils, AreaOfASplineThatGoesThereAndBackIsNoneSilently)
{
  SampledSpline line({ { 0, 0, 0 }, { 8, 0, 0 } }, true, 500);
  EXPECT_NEAR(zvUtils::CalculateArea(line.Output()), 0.0, 1e-9);
}

TEST_F(Utils, AreaOfASplineWithoutHandlesIsNoneSilently)
{
  SampledSpline point({}, true, 500);
  EXPECT_EQ(zvUtils::CalculateArea(point.Output()), 0.0);
}

TEST_F(Utils, SeparateRingsAddUp)
{
  Points points = Square;
  for (const Point& p : Square)
  {
    points.push_back({ 10.0 + p[0], 3.0 * p[1], 5.0 });
  }
  const Cells clockwise = { { 4, 7 }, { 7, 6 }, { 6, 5 }, { 5, 4 } };
  EXPECT_DOUBLE_EQ(AreaOf(points, Joined(Ring(0, 4), clockwise)), 16.0);
}

TEST_F(Utils, RingsThatTouchAtAPointAddUp)
{
  zvtest::Dice dice(43);
  // Two squares that share point 2, and a triangle that shares it as well.
  const Points points = { { 0, 0, 0 }, { 2, 0, 0 }, { 2, 2, 0 }, { 0, 2, 0 }, { 4, 2, 0 },
    { 4, 4, 0 }, { 2, 4, 0 }, { 0, 4, 0 }, { 0, 6, 0 } };
  const Cells cells = Joined(Joined(Ring(0, 4), { { 2, 4 }, { 4, 5 }, { 5, 6 }, { 6, 2 } }),
    { { 2, 7 }, { 7, 8 }, { 8, 2 } });
  for (int i = 0; i < 50; ++i)
  {
    EXPECT_DOUBLE_EQ(AreaOf(points, Shuffled(cells, dice)), 10.0);
  }
}

TEST_F(Utils, LoopsThatACurveRunsRoundInOppositeDirectionsCountAgainstEachOther)
{
  // An eight that crosses between its points; its loops are triangles of areas 1 and 4.
  const Points points = { { 0, -1, 0 }, { 0, 1, 0 }, { 3, -2, 0 }, { 3, 2, 0 } };
  EXPECT_NEAR(AreaOf(points, Ring(0, 4)), 3.0, 1e-14);
}

TEST_F(Utils, AreaDoesNotJumpWhenACurveHappensToMeetItselfAtAPlace)
{
  // An eight that crosses at points 0 and 3, which are two points at one place; areas 1 and 9.
  const Points points = { { 0, 0, 0 }, { -1, 1, 0 }, { -1, -1, 0 }, { 0, 0, 0 }, { 3, 3, 0 },
    { 3, -3, 0 } };
  EXPECT_DOUBLE_EQ(AreaOf(points, Ring(0, 6)), 8.0);
  EXPECT_DOUBLE_EQ(AreaOf(points, { { 0, 1, 2, 3, 4, 5, 0 } }), 8.0);
  Points apart = points;
  apart[3][0] = 1e-9;
  EXPECT_NEAR(AreaOf(apart, Ring(0, 6)), 8.0, 1e-7);
}

TEST_F(Utils, AreaOfABentContourIsThatOfItsProjection)
{
  const Points saddle = { { 0, 0, 1 }, { 2, 0, -1 }, { 2, 2, 1 }, { 0, 2, -1 } };
  EXPECT_DOUBLE_EQ(AreaOf(saddle, Ring(0, 4)), 4.0);
}

TEST_F(Utils, AreaOfAVeryLongContourIsQuicklyDone)
{
  zvtest::Dice dice(44);
  Points points = RandomStar(dice, 200000);
  Cells cells = Shuffled(Ring(0, 200000), dice);
  const double expected = FlatArea(points);
  Renumber(points, cells, dice);
  EXPECT_NEAR(AreaOf(points, cells), expected, 1e-9 * expected);
}

TEST_F(Utils, AreaLeavesItsArgumentAlone)
{
  auto contour = MakeContour(Square, Ring(0, 4));
  const vtkMTimeType before = contour->GetMTime();
  zvUtils::CalculateArea(contour);
  EXPECT_EQ(contour->GetMTime(), before);
  EXPECT_EQ(contour->GetNumberOfCells(), 4);
}

TEST_F(Utils, AnOpenContourHasNoArea)
{
  const char* const open = "CalculateArea: the contour is not closed";
  ExpectNoArea(MakeContour(Square, { { 0, 1 }, { 1, 2 }, { 2, 3 } }), open);
  ExpectNoArea(MakeContour(Square, { { 0, 1, 2, 3 } }), open);
  ExpectNoArea(MakeContour(Square, {}), open);
  // A closed ring with a tail.
  ExpectNoArea(MakeContour(Square, { { 0, 1 }, { 1, 2 }, { 2, 0 }, { 2, 3 } }), open);
  // A ring that ends close to its beginning, not at it.
  Points points = Square;
  points.push_back({ 1e-9, 0, 0 });
  ExpectNoArea(MakeContour(points, { { 0, 1, 2, 3, 4 } }), open);
}

TEST_F(Utils, AnOpenSplineHasNoArea)
{
  SampledSpline spline({ { 0, 0, 0 }, { 8, 0, 0 }, { 8, 8, 0 } }, false, 500);
  ExpectNoArea(spline.Output(), "CalculateArea: the contour is not closed");
}

TEST_F(Utils, AnEvenNumberOfLinesThatIsNotARingHasNoArea)
{
  // Ends meet in pairs nowhere: three lines at each of two points.
  ExpectNoArea(MakeContour(Square, { { 0, 1 }, { 0, 2, 1 }, { 0, 3, 1 } }),
    "CalculateArea: the contour is not closed");
}

TEST_F(Utils, NoContourHasNoArea)
{
  ExpectNoArea(nullptr, "CalculateArea: there is no contour");
}

TEST_F(Utils, FewerThanThreePointsHaveNoArea)
{
  const char* const few = "CalculateArea: a contour needs three points";
  vtkNew<vtkPolyData> fresh;
  ExpectNoArea(fresh, few);
  vtkNew<vtkParametricFunctionSource> neverUpdated;
  ExpectNoArea(neverUpdated->GetOutput(), few);
  ExpectNoArea(MakeContour({}, {}), few);
  ExpectNoArea(MakeContour({ { 1, 1, 1 }, { 2, 2, 2 } }, { { 0, 1 }, { 1, 0 } }), few);
}

TEST_F(Utils, PointsWithoutLinesHaveNoArea)
{
  auto contour = MakeContour(Square, {});
  contour->SetLines(nullptr);
  ExpectNoArea(contour, "CalculateArea: the contour is not closed");
}

TEST_F(Utils, ALineToAMissingPointHasNoArea)
{
  const char* const missing = "CalculateArea: a line of the contour refers to a missing point";
  ExpectNoArea(MakeContour(Square, { { 0, 1 }, { 1, 4 }, { 4, 0 } }), missing);
  ExpectNoArea(MakeContour(Square, { { 0, 1 }, { 1, -1 }, { -1, 0 } }), missing);
  ExpectNoArea(MakeContour(Square, { { 0, 1, 99, 2, 0 } }), missing);
}

TEST_F(Utils, APointWithoutAPlaceHasNoArea)
{
  Points points = Square;
  points[2][1] = NaN;
  ExpectNoArea(
    MakeContour(points, Ring(0, 4)), "CalculateArea: a point of the contour is not finite");
  points[2][1] = std::numeric_limits<double>::infinity();
  ExpectNoArea(
    MakeContour(points, Ring(0, 4)), "CalculateArea: a point of the contour is not finite");
}

TEST_F(Utils, CentroidIsTheMeanOfThePoints)
{
  double centroid[3] = { -1.0, -1.0, -1.0 };
  zvUtils::CalculateCentroid(
    MakeContour({ { 0, 0, 3 }, { 2, 0, 4 }, { 2, 2, 5 }, { 0, 6, 8 } }, Ring(0, 3)), centroid);
  EXPECT_THAT(centroid, ::testing::ElementsAre(1.0, 2.0, 5.0));
}

TEST_F(Utils, CentroidOfOnePointIsThatPoint)
{
  double centroid[3];
  zvUtils::CalculateCentroid(MakeContour({ { 1.5, -2.5, 3.5 } }, {}), centroid);
  EXPECT_THAT(centroid, ::testing::ElementsAre(1.5, -2.5, 3.5));
}

TEST_F(Utils, CentroidOfNoPointsIsTheOriginWithAWarning)
{
  vtkNew<vtkPolyData> fresh;
  const auto empty = MakeContour({}, {});
  for (vtkPolyData* contour : { static_cast<vtkPolyData*>(nullptr), fresh.Get(), empty.Get() })
  {
    double centroid[3] = { 1.0, 2.0, 3.0 };
    zvUtils::CalculateCentroid(contour, centroid);
    EXPECT_THAT(centroid, ::testing::ElementsAre(0.0, 0.0, 0.0));
    ExpectGenericWarning(Speaker, "CalculateCentroid: there are no points");
  }
}

TEST_F(Utils, CentroidWithoutAPlaceToPutItDoesNothing)
{
  zvUtils::CalculateCentroid(MakeContour(Square, Ring(0, 4)), nullptr);
  ExpectNoMessage();
}
