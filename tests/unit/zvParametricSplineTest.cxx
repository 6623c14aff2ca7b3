#include "zvParametricSpline.h"
#include "zvDice.h"
#include "zvTestKit.h"

#include "vtkCellArray.h"
#include "vtkMath.h"
#include "vtkNew.h"
#include "vtkParametricFunctionSource.h"
#include "vtkParametricSpline.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"
#include "vtkSmartPointer.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <sstream>
#include <vector>

namespace
{
using Point = std::array<double, 3>;
using Points = std::vector<Point>;
const double NaN = std::numeric_limits<double>::quiet_NaN();
const double Infinity = std::numeric_limits<double>::infinity();

vtkSmartPointer<vtkPoints> MakePoints(const Points& points)
{
  auto made = vtkSmartPointer<vtkPoints>::New();
  made->SetDataTypeToDouble();
  for (const Point& point : points)
  {
    made->InsertNextPoint(point.data());
  }
  return made;
}

Points RandomPoints(zvtest::Dice& dice, int count)
{
  Points points(count);
  for (Point& point : points)
  {
    point = { dice.Real(-90.0, 90.0), dice.Real(-90.0, 90.0), dice.Real(-90.0, 90.0) };
  }
  return points;
}

// Handles as they are drawn: each a step of its own size away from the one before.
Points RandomPath(zvtest::Dice& dice, int count)
{
  Points points = RandomPoints(dice, 1);
  while (static_cast<int>(points.size()) < count)
  {
    const double step = std::pow(10.0, dice.Real(-3.0, 1.0));
    Point next = points.back();
    for (double& x : next)
    {
      x += step * dice.Real(-1.0, 1.0);
    }
    points.push_back(next);
  }
  return points;
}

// Some of the handles are there twice or three times in a row.
Points WithDoubledHandles(zvtest::Dice& dice, const Points& points)
{
  Points doubled;
  for (const Point& point : points)
  {
    doubled.insert(doubled.end(), dice.Chance(0.2) ? dice.Int(2, 3) : 1, point);
  }
  return doubled;
}

double Distance(const Point& a, const Point& b)
{
  return std::sqrt(vtkMath::Distance2BetweenPoints(a.data(), b.data()));
}

Point Evaluate(vtkParametricFunction* curve, double u)
{
  double uvw[3] = { u, 0.0, 0.0 };
  double derivatives[9];
  Point point = { -1.0, -2.0, -3.0 };
  curve->Evaluate(uvw, point.data(), derivatives);
  return point;
}

// The parameters of the handles: the summed chords, of the whole. Closed, it ends with 1.
std::vector<double> HandleParameters(const Points& points, bool closed)
{
  std::vector<double> sums = { 0.0 };
  const std::size_t chords = closed ? points.size() : points.size() - 1;
  for (std::size_t i = 0; i < chords; ++i)
  {
    sums.push_back(sums.back() + Distance(points[i], points[(i + 1) % points.size()]));
  }
  const double total = sums.back();
  for (double& sum : sums)
  {
    sum /= total;
  }
  return sums;
}

// The length up to the end of each segment, by many short chords of the stock curve.
std::vector<double> LengthsByChords(const Points& points, bool closed, int chords)
{
  auto handles = MakePoints(points);
  vtkNew<vtkParametricSpline> stock;
  stock->SetPoints(handles);
  stock->SetClosed(closed);
  const std::vector<double> u = HandleParameters(points, closed);
  std::vector<double> lengths = { 0.0 };
  Point last = Evaluate(stock, 0.0);
  for (std::size_t i = 1; i < u.size(); ++i)
  {
    double length = lengths.back();
    for (int j = 1; j <= chords; ++j)
    {
      const Point next = Evaluate(stock, u[i - 1] + (u[i] - u[i - 1]) * j / chords);
      length += Distance(last, next);
      last = next;
    }
    lengths.push_back(length);
  }
  return lengths;
}

class ParametricSpline : public zvtest::QuietTest
{
protected:
  void Use(const Points& points, bool closed)
  {
    Spline->SetPoints(MakePoints(points));
    Spline->SetClosed(closed);
  }

  Point At(double u) { return Evaluate(Spline, u); }

  void ExpectEverywhere(const Point& point)
  {
    for (const double u : { 0.0, 0.25, 0.5, 1.0, -1.0, 2.0, NaN, Infinity, -Infinity })
    {
      EXPECT_EQ(At(u), point) << "at " << u;
    }
  }

  void ExpectSameCurve(vtkParametricFunction* other, double tolerance)
  {
    for (int i = 0; i <= 250; ++i)
    {
      ASSERT_LE(Distance(At(i / 250.0), Evaluate(other, i / 250.0)), tolerance) << "sample " << i;
    }
  }

  // At places all along the curve, at every handle and beside it.
  void ExpectStockCurve(zvtest::Dice& dice, const Points& points, bool closed)
  {
    Use(points, closed);
    auto handles = MakePoints(points);
    vtkNew<vtkParametricSpline> stock;
    stock->SetPoints(handles);
    stock->SetClosed(closed);
    std::vector<double> parameters = HandleParameters(points, closed);
    for (int i = 0; i < 100; ++i)
    {
      parameters.push_back(dice.Real(0.0, 1.0));
      parameters.push_back(dice.Pick(parameters) + dice.Real(-1e-6, 1e-6));
    }
    double largest = 0.0;
    for (const double u : parameters)
    {
      largest = std::max(largest, Distance(At(u), Evaluate(stock, u)));
    }
    EXPECT_LE(largest, 1e-12);
  }

  vtkNew<zvParametricSpline> Spline;
};
}

TEST_F(ParametricSpline, StartsOpenAndWithoutHandles)
{
  EXPECT_EQ(Spline->GetReferenceCount(), 1);
  EXPECT_EQ(Spline->GetPoints(), nullptr);
  EXPECT_EQ(Spline->GetClosed(), 0);
  EXPECT_EQ(Spline->GetDimension(), 1);
  EXPECT_EQ(Spline->GetDerivativesAvailable(), 0);
  EXPECT_TRUE(Spline->IsA("vtkParametricFunction"));
  EXPECT_STREQ(Spline->GetClassName(), "zvParametricSpline");
}

TEST_F(ParametricSpline, HoldsThePointsItWasGiven)
{
  auto points = MakePoints({ { 1, 2, 3 } });
  vtkPoints* raw = points;
  Spline->SetPoints(points);
  EXPECT_EQ(points->GetReferenceCount(), 2);
  points = nullptr;
  ASSERT_EQ(Spline->GetPoints(), raw);
  EXPECT_EQ(Spline->GetPoints()->GetPoint(0)[2], 3.0);
  Spline->SetPoints(nullptr);
  EXPECT_EQ(Spline->GetPoints(), nullptr);
}

TEST_F(ParametricSpline, IsModifiedByAnotherListAndAnotherState)
{
  auto points = MakePoints({ { 1, 2, 3 } });
  vtkMTimeType last = Spline->GetMTime();
  Spline->SetPoints(points);
  EXPECT_GT(Spline->GetMTime(), last);
  Spline->SetClosed(7);
  EXPECT_EQ(Spline->GetClosed(), 1);
  last = Spline->GetMTime();
  Spline->SetPoints(points);
  Spline->SetClosed(1);
  Spline->ClosedOn();
  EXPECT_EQ(Spline->GetMTime(), last);
  Spline->ClosedOff();
  EXPECT_EQ(Spline->GetClosed(), 0);
  EXPECT_GT(Spline->GetMTime(), last);
}

TEST_F(ParametricSpline, WithoutHandlesEveryPointIsTheOriginSilently)
{
  for (const int closed : { 0, 1 })
  {
    Spline->SetClosed(closed);
    Spline->SetPoints(nullptr);
    ExpectEverywhere({ 0, 0, 0 });
    EXPECT_EQ(Spline->GetClosedLength(), 0.0);
    EXPECT_EQ(Spline->GetIndex(1, 0.0), -1);
    Spline->SetPoints(MakePoints({}));
    ExpectEverywhere({ 0, 0, 0 });
    EXPECT_EQ(Spline->GetClosedLength(), 0.0);
    EXPECT_EQ(Spline->GetIndex(1, 0.0), -1);
  }
}

TEST_F(ParametricSpline, OneHandleIsTheWholeCurve)
{
  for (const bool closed : { false, true })
  {
    Use({ { 4, 5, 6 } }, closed);
    ExpectEverywhere({ 4, 5, 6 });
    EXPECT_EQ(Spline->GetClosedLength(), 0.0);
    EXPECT_EQ(Spline->GetIndex(2, 0.0), -1);
  }
}

TEST_F(ParametricSpline, HandlesAtOnePlaceAreTheWholeCurve)
{
  for (const bool closed : { false, true })
  {
    Use({ { 4, 5, 6 }, { 4, 5, 6 }, { 4, 5, 6 } }, closed);
    ExpectEverywhere({ 4, 5, 6 });
    EXPECT_EQ(Spline->GetClosedLength(), 0.0);
    EXPECT_EQ(Spline->GetIndex(4, 0.0), -1);
  }
}

TEST_F(ParametricSpline, TwoHandlesAreAStraightLine)
{
  Use({ { 0, 0, 1 }, { 8, 0, 1 } }, false);
  double last = 0.0;
  for (int i = 1; i <= 100; ++i)
  {
    const Point point = At(i / 100.0);
    EXPECT_GT(point[0], last);
    EXPECT_EQ(point[1], 0.0);
    EXPECT_EQ(point[2], 1.0);
    last = point[0];
  }
  EXPECT_LE(Distance(At(0.5), { 4, 0, 1 }), 1e-14);
  EXPECT_LE(Distance(At(1.0), { 8, 0, 1 }), 1e-14);
}

TEST_F(ParametricSpline, TwoHandlesClosedGoThereAndBack)
{
  Use({ { 0, 0, 1 }, { 8, 0, 1 } }, true);
  EXPECT_LE(Distance(At(0.25), { 4, 0, 1 }), 1e-14);
  EXPECT_LE(Distance(At(0.5), { 8, 0, 1 }), 1e-14);
  EXPECT_LE(Distance(At(0.75), { 4, 0, 1 }), 1e-14);
  EXPECT_NEAR(Spline->GetClosedLength(), 16.0, 1.6e-9);
}

TEST_F(ParametricSpline, IsTheCurveOfTheStockSpline)
{
  zvtest::Dice dice(21);
  for (int i = 0; i < 200; ++i)
  {
    const bool closed = dice.Chance(0.5);
    const Points points = RandomPoints(dice, dice.Int(2, 40));
    Use(points, closed);
    auto handles = MakePoints(points);
    vtkNew<vtkParametricSpline> stock;
    stock->SetPoints(handles);
    stock->SetClosed(closed);
    ExpectSameCurve(stock, 1e-11);
  }
}

TEST_F(ParametricSpline, IsTheStockCurveToTheLastDigitsForHandleListsOfAllSizes)
{
  zvtest::Dice dice(32);
  for (int i = 0; i < 3000; ++i)
  {
    const bool closed = dice.Chance(0.5);
    const int count = static_cast<int>(std::pow(10.0, dice.Real(std::log10(2.0), 3.0)) + 0.5);
    const Points handles = dice.Chance(0.5) ? RandomPoints(dice, count) : RandomPath(dice, count);
    const Points points = WithDoubledHandles(dice, handles);
    ExpectStockCurve(dice, points, closed);
    ASSERT_FALSE(HasFailure()) << "list " << i << " of " << points.size() << ", closed " << closed;
  }
}

TEST_F(ParametricSpline, IsTheStockCurveForAThousandHandles)
{
  zvtest::Dice dice(33);
  for (const bool closed : { false, true })
  {
    ExpectStockCurve(dice, RandomPoints(dice, 1000), closed);
    ExpectStockCurve(dice, RandomPath(dice, 1000), closed);
    ExpectStockCurve(dice, WithDoubledHandles(dice, RandomPath(dice, 1000)), closed);
  }
}

TEST_F(ParametricSpline, IsTheSameCurveInWhateverOrderItIsAsked)
{
  zvtest::Dice dice(34);
  for (int i = 0; i < 200; ++i)
  {
    Use(RandomPath(dice, dice.Int(2, 60)), dice.Chance(0.5));
    std::vector<double> parameters(50);
    std::vector<Point> forwards;
    for (std::size_t j = 0; j < parameters.size(); ++j)
    {
      parameters[j] = (j + dice.Real(0.0, 1.0)) / parameters.size();
      forwards.push_back(At(parameters[j]));
    }
    for (std::size_t j = parameters.size(); j-- > 0;)
    {
      EXPECT_EQ(At(parameters[j]), forwards[j]);
      const std::size_t other = dice.Int(0, static_cast<int>(parameters.size()) - 1);
      EXPECT_EQ(At(parameters[other]), forwards[other]);
    }
  }
}

TEST_F(ParametricSpline, PassesThroughItsHandlesInProportionToTheChords)
{
  zvtest::Dice dice(22);
  for (const bool closed : { false, true })
  {
    const Points points = RandomPoints(dice, 12);
    Use(points, closed);
    const std::vector<double> u = HandleParameters(points, closed);
    for (std::size_t i = 0; i < points.size(); ++i)
    {
      EXPECT_LE(Distance(At(u[i]), points[i]), 1e-11) << "handle " << i;
    }
  }
}

TEST_F(ParametricSpline, TakesPointsInSinglePrecision)
{
  vtkNew<vtkPoints> points; // float
  points->InsertNextPoint(0.5, 0.0, 0.0);
  points->InsertNextPoint(2.5, 0.0, 0.0);
  Spline->SetPoints(points);
  EXPECT_LE(Distance(At(0.5), { 1.5, 0, 0 }), 1e-14);
}

TEST_F(ParametricSpline, ReadsItsHandlesOnlyAfterModified)
{
  Use({ { 0, 0, 0 }, { 8, 0, 0 } }, false);
  EXPECT_LE(Distance(At(0.5), { 4, 0, 0 }), 1e-14);
  EXPECT_NEAR(Spline->GetClosedLength(), 16.0, 1e-8);
  Spline->GetPoints()->SetPoint(1, 0.0, 4.0, 0.0);
  EXPECT_LE(Distance(At(0.5), { 4, 0, 0 }), 1e-14);
  EXPECT_NEAR(Spline->GetClosedLength(), 16.0, 1e-8);
  Spline->Modified();
  EXPECT_LE(Distance(At(0.5), { 0, 2, 0 }), 1e-14);
  EXPECT_NEAR(Spline->GetClosedLength(), 8.0, 1e-8);
}

TEST_F(ParametricSpline, FollowsPointsThatAreResizedInPlace)
{
  Use({ { 0, 0, 0 }, { 8, 0, 0 } }, false);
  At(0.5);
  Spline->GetPoints()->GetData()->SetNumberOfComponents(3);
  Spline->GetPoints()->GetData()->SetNumberOfTuples(3);
  const Points points = { { 0, 0, 0 }, { 1, 0, 0 }, { 2, 0, 0 } };
  for (int i = 0; i < 3; ++i)
  {
    Spline->GetPoints()->GetData()->SetTuple(i, points[i].data());
  }
  Spline->Modified();
  EXPECT_LE(Distance(At(1.0), { 2, 0, 0 }), 1e-14);
  EXPECT_EQ(Spline->GetIndex(4, 0.75 * Spline->GetClosedLength()), 1);
}

TEST_F(ParametricSpline, NoParameterAndLowOnesAreTheFirstHandle)
{
  const Points points = { { 1, 2, 3 }, { 5, 5, 5 }, { 7, -3, 2 } };
  for (const bool closed : { false, true })
  {
    Use(points, closed);
    for (const double u : { 0.0, -0.0, -1e-300, -5.0, -Infinity, NaN })
    {
      EXPECT_EQ(At(u), points[0]) << "at " << u;
    }
  }
}

TEST_F(ParametricSpline, HighParametersAreTheLastHandleWhenOpen)
{
  Use({ { 1, 2, 3 }, { 5, 5, 5 }, { 7, -3, 2 } }, false);
  for (const double u : { 1.0, 1.0 + 1e-9, 20.0, Infinity })
  {
    EXPECT_LE(Distance(At(u), { 7, -3, 2 }), 1e-13) << "at " << u;
  }
}

TEST_F(ParametricSpline, HighParametersAreTheFirstHandleWhenClosed)
{
  Use({ { 1, 2, 3 }, { 5, 5, 5 }, { 7, -3, 2 } }, true);
  for (const double u : { 1.0, 1.0 + 1e-9, 20.0, Infinity })
  {
    EXPECT_EQ(At(u), (Point{ 1, 2, 3 })) << "at " << u;
  }
}

TEST_F(ParametricSpline, AClosedCurveEndsWhereItBeginsToTheLastBit)
{
  zvtest::Dice dice(23);
  for (int i = 0; i < 300; ++i)
  {
    Points points = RandomPoints(dice, dice.Int(1, 12));
    if (dice.Chance(0.3))
    {
      points[0][dice.Int(0, 2)] = 0.0;
    }
    if (dice.Chance(0.3))
    {
      points.push_back(points[0]);
    }
    Use(points, true);
    EXPECT_EQ(At(0.0), points[0]);
    EXPECT_EQ(At(1.0), points[0]);
    EXPECT_LE(Distance(At(1.0 - 1e-14), points[0]), 1e-9);
  }
}

TEST_F(ParametricSpline, ASampledClosedCurveIsOnePolylineOnWhichTheEndsAgree)
{
  zvtest::Dice dice(24);
  vtkNew<vtkParametricFunctionSource> source;
  source->SetParametricFunction(Spline);
  source->SetScalarModeToNone();
  source->GenerateTextureCoordinatesOff();
  source->SetUResolution(500);
  for (int i = 0; i < 100; ++i)
  {
    source->SetOutputPointsPrecision(i % 2);
    Points points = RandomPoints(dice, dice.Int(0, 9));
    Use(points, true);
    source->Update();
    vtkPolyData* output = source->GetOutput();
    ASSERT_EQ(output->GetNumberOfPoints(), 501);
    ASSERT_EQ(output->GetNumberOfCells(), 1);
    Point first, last;
    output->GetPoint(0, first.data());
    output->GetPoint(500, last.data());
    EXPECT_EQ(first, last);
  }
}

TEST_F(ParametricSpline, ItsSourceSamplesAgainAfterModified)
{
  Use({ { 0, 0, 0 }, { 8, 0, 0 } }, false);
  vtkNew<vtkParametricFunctionSource> source;
  source->SetParametricFunction(Spline);
  source->SetUResolution(4);
  source->Update();
  EXPECT_EQ(source->GetOutput()->GetPoint(4)[0], 8.0);
  Spline->GetPoints()->SetPoint(1, 12.0, 0.0, 0.0);
  source->Update();
  EXPECT_EQ(source->GetOutput()->GetPoint(4)[0], 8.0);
  Spline->Modified();
  source->Update();
  EXPECT_EQ(source->GetOutput()->GetPoint(4)[0], 12.0);
}

TEST_F(ParametricSpline, NeighboursAtOnePlaceCountOnce)
{
  const Points points = { { 1, 2, 3 }, { 5, 5, 5 }, { 7, -3, 2 }, { 0, -8, 1 } };
  Points doubled;
  for (const Point& point : points)
  {
    doubled.insert(doubled.end(), 3, point);
  }
  for (const bool closed : { false, true })
  {
    vtkNew<zvParametricSpline> plain;
    plain->SetPoints(MakePoints(points));
    plain->SetClosed(closed);
    Use(doubled, closed);
    ExpectSameCurve(plain, 0.0);
    EXPECT_EQ(Spline->GetClosedLength(), plain->GetClosedLength());
  }
}

TEST_F(ParametricSpline, ALastHandleOnTheFirstCountsOnceWhenClosed)
{
  const Points points = { { 1, 2, 3 }, { 5, 5, 5 }, { 7, -3, 2 } };
  Points back = points;
  back.insert(back.end(), 2, points[0]);
  vtkNew<zvParametricSpline> plain;
  plain->SetPoints(MakePoints(points));
  plain->SetClosed(1);
  Use(back, true);
  ExpectSameCurve(plain, 0.0);
  EXPECT_EQ(Spline->GetClosedLength(), plain->GetClosedLength());
}

TEST_F(ParametricSpline, ALastHandleOnTheFirstStaysWhenOpen)
{
  Use({ { 1, 2, 3 }, { 5, 5, 5 }, { 7, -3, 2 }, { 1, 2, 3 } }, false);
  EXPECT_LE(Distance(At(1.0), { 1, 2, 3 }), 1e-13);
  EXPECT_GT(Distance(At(0.9), { 1, 2, 3 }), 0.5);
}

TEST_F(ParametricSpline, HandlesTooCloseToTellApartDoNoHarm)
{
  const double tiny = std::numeric_limits<double>::denorm_min();
  for (const bool closed : { false, true })
  {
    Use({ { 0, 0, 0 }, { tiny, 0, 0 }, { 8, 0, 0 }, { std::nextafter(8.0, 9.0), 0, 0 }, { 9, 4, 0 },
          { tiny, 0, -tiny } },
      closed);
    for (int i = 0; i <= 100; ++i)
    {
      const Point point = At(i / 100.0);
      EXPECT_TRUE(std::isfinite(point[0] + point[1] + point[2])) << "sample " << i;
      EXPECT_LE(Distance(point, { 0, 0, 0 }), 20.0) << "sample " << i;
    }
    EXPECT_GT(Spline->GetClosedLength(), 18.0);
    EXPECT_LT(Spline->GetClosedLength(), 30.0);
  }
}

TEST_F(ParametricSpline, HandlesWithoutAPlaceTakeNoPart)
{
  const Points points = { { 1, 2, 3 }, { 5, 5, 5 }, { 7, -3, 2 } };
  for (const bool closed : { false, true })
  {
    vtkNew<zvParametricSpline> plain;
    plain->SetPoints(MakePoints(points));
    plain->SetClosed(closed);
    Use({ { NaN, 0, 0 }, points[0], { 0, Infinity, 0 }, points[1], { 1, 1, 1e299 }, points[2],
          { NaN, NaN, NaN } },
      closed);
    ExpectSameCurve(plain, 0.0);
    EXPECT_EQ(Spline->GetClosedLength(), plain->GetClosedLength());
  }
}

TEST_F(ParametricSpline, WithoutAnyPlacedHandleNothingIsDrawnAtTheOrigin)
{
  Use({ { NaN, NaN, NaN }, { NaN, 1, 1 } }, true);
  EXPECT_TRUE(std::isnan(At(0.5)[0]));
  EXPECT_EQ(Spline->GetClosedLength(), 0.0);
  EXPECT_EQ(Spline->GetIndex(3, 0.0), -1);
}

TEST_F(ParametricSpline, AListThatBecomesEmptyLeavesNothingBehind)
{
  Use({ { 1, 2, 3 }, { 5, 5, 5 } }, true);
  At(0.5);
  EXPECT_GT(Spline->GetClosedLength(), 0.0);
  Spline->GetPoints()->Reset();
  Spline->Modified();
  ExpectEverywhere({ 0, 0, 0 });
  EXPECT_EQ(Spline->GetClosedLength(), 0.0);
}

TEST_F(ParametricSpline, LeavesItsArgumentsAlone)
{
  Use({ { 1, 2, 3 }, { 5, 5, 5 } }, false);
  double uvw[3] = { 0.5, 7.0, 8.0 };
  double derivatives[9] = { 1, 2, 3, 4, 5, 6, 7, 8, 9 };
  double point[3];
  Spline->Evaluate(uvw, point, derivatives);
  EXPECT_THAT(uvw, ::testing::ElementsAre(0.5, 7.0, 8.0));
  EXPECT_THAT(derivatives, ::testing::ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9));
  double again[3];
  Spline->Evaluate(uvw, again, nullptr);
  EXPECT_THAT(again, ::testing::ElementsAreArray(point));
}

TEST_F(ParametricSpline, ItsScalarIsTheParameter)
{
  double uvw[3] = { 0.375, 0.0, 0.0 };
  EXPECT_EQ(Spline->EvaluateScalar(uvw, nullptr, nullptr), 0.375);
}

TEST_F(ParametricSpline, ClosedLengthIsThatOfManyShortChords)
{
  zvtest::Dice dice(25);
  for (int i = 0; i < 60; ++i)
  {
    const Points points = RandomPoints(dice, dice.Int(2, 15));
    const double expected = LengthsByChords(points, true, 4000).back();
    Use(points, dice.Chance(0.5));
    EXPECT_NEAR(Spline->GetClosedLength(), expected, 1e-6 * expected);
  }
}

TEST_F(ParametricSpline, ClosedLengthHoldsForUnevenlySpacedHandlesFarAway)
{
  zvtest::Dice dice(26);
  for (int i = 0; i < 30; ++i)
  {
    Points points = { { 5000, -7000, 9000 } };
    for (int j = dice.Int(2, 12); j > 0; --j)
    {
      const double step = std::pow(10.0, dice.Real(-4.0, 2.0));
      Point next = points.back();
      for (double& x : next)
      {
        x += step * dice.Real(-1.0, 1.0);
      }
      points.push_back(next);
    }
    const double expected = LengthsByChords(points, true, 8000).back();
    Use(points, false);
    EXPECT_NEAR(Spline->GetClosedLength(), expected, 1e-6 * expected);
  }
}

TEST_F(ParametricSpline, ClosedLengthOfHandlesOnACircleIsItsCircumference)
{
  Points points;
  for (int i = 0; i < 200; ++i)
  {
    const double angle = 2.0 * vtkMath::Pi() * i / 200;
    points.push_back({ 30.0 * std::cos(angle), 7.0, 30.0 * std::sin(angle) });
  }
  Use(points, true);
  EXPECT_NEAR(Spline->GetClosedLength(), 60.0 * vtkMath::Pi(), 1e-6);
}

TEST_F(ParametricSpline, ClosedLengthDoesNotDependOnTheState)
{
  zvtest::Dice dice(27);
  Use(RandomPoints(dice, 9), false);
  const double length = Spline->GetClosedLength();
  Spline->ClosedOn();
  EXPECT_EQ(Spline->GetClosedLength(), length);
  Spline->ClosedOff();
  EXPECT_EQ(Spline->GetClosedLength(), length);
}

TEST_F(ParametricSpline, ALengthOnAClosedCurveFallsIntoItsSegment)
{
  zvtest::Dice dice(28);
  for (int i = 0; i < 40; ++i)
  {
    const Points points = RandomPoints(dice, dice.Int(2, 12));
    const int count = static_cast<int>(points.size());
    const std::vector<double> lengths = LengthsByChords(points, true, 4000);
    const double margin = 1e-6 * lengths.back();
    Use(points, true);
    for (int segment = 0; segment < count; ++segment)
    {
      EXPECT_EQ(Spline->GetIndex(count + 1, lengths[segment] + margin), segment);
      EXPECT_EQ(Spline->GetIndex(count + 1, lengths[segment + 1] - margin), segment);
    }
  }
}

TEST_F(ParametricSpline, ALengthOnAnOpenCurveFallsIntoItsSegmentInProportion)
{
  zvtest::Dice dice(29);
  for (int i = 0; i < 40; ++i)
  {
    const Points points = RandomPoints(dice, dice.Int(2, 12));
    const int count = static_cast<int>(points.size());
    const std::vector<double> lengths = LengthsByChords(points, false, 4000);
    Use(points, false);
    const double closedLength = Spline->GetClosedLength();
    for (int segment = 0; segment < count - 1; ++segment)
    {
      const double begin = lengths[segment] / lengths.back() + 1e-6;
      const double end = lengths[segment + 1] / lengths.back() - 1e-6;
      EXPECT_EQ(Spline->GetIndex(count + 1, closedLength * begin), segment);
      EXPECT_EQ(Spline->GetIndex(count + 1, closedLength * end), segment);
    }
  }
}

TEST_F(ParametricSpline, TheEndsOfTheCurveBelongToTheFirstAndTheLastSegment)
{
  zvtest::Dice dice(30);
  const Points points = RandomPoints(dice, 6);
  Use(points, true);
  EXPECT_EQ(Spline->GetIndex(7, 0.0), 0);
  EXPECT_EQ(Spline->GetIndex(7, Spline->GetClosedLength()), 5);
  Use(points, false);
  EXPECT_EQ(Spline->GetIndex(7, 0.0), 0);
  EXPECT_EQ(Spline->GetIndex(7, Spline->GetClosedLength()), 4);
}

TEST_F(ParametricSpline, ThereIsNoSegmentBeyondTheEnds)
{
  zvtest::Dice dice(31);
  for (const bool closed : { false, true })
  {
    Use(RandomPoints(dice, 6), closed);
    const double length = Spline->GetClosedLength();
    for (const double place : { -1e-9, -length, 1.001 * length, NaN, Infinity, -Infinity })
    {
      EXPECT_EQ(Spline->GetIndex(7, place), -1) << "at " << place;
    }
  }
}

TEST_F(ParametricSpline, ThereIsNoSegmentBeyondTheHandlesOfTheCaller)
{
  Use({ { 0, 0, 0 }, { 1, 0, 0 }, { 2, 0, 0 }, { 3, 0, 0 }, { 4, 0, 0 } }, false);
  const double place = 0.6 * Spline->GetClosedLength(); // behind handle 2
  EXPECT_EQ(Spline->GetIndex(6, place), 2);
  EXPECT_EQ(Spline->GetIndex(100, place), 2);
  EXPECT_EQ(Spline->GetIndex(4, place), 2);
  EXPECT_EQ(Spline->GetIndex(3, place), -1);
  EXPECT_EQ(Spline->GetIndex(0, place), -1);
  EXPECT_EQ(Spline->GetIndex(-7, place), -1);
}

TEST_F(ParametricSpline, BehindHandlesAtOnePlaceTheLastOfThemIsMeant)
{
  Use({ { 0, 0, 0 }, { 0, 0, 0 }, { 1, 0, 0 }, { NaN, 0, 0 }, { 1, 0, 0 }, { 2, 0, 0 } }, false);
  EXPECT_EQ(Spline->GetIndex(7, 0.25 * Spline->GetClosedLength()), 1);
  EXPECT_EQ(Spline->GetIndex(7, 0.75 * Spline->GetClosedLength()), 4);
}

TEST_F(ParametricSpline, ManyHandlesAtOnePlaceAreQuicklyDone)
{
  Points points(200000, { 1, 2, 3 });
  points[100000] = { 4, 5, 6 };
  Use(points, true);
  EXPECT_LE(Distance(At(0.5), { 4, 5, 6 }), 1e-13);
  EXPECT_EQ(Spline->GetIndex(200001, 0.25 * Spline->GetClosedLength()), 99999);
}

TEST_F(ParametricSpline, PrintsWhatItIs)
{
  std::ostringstream text;
  Spline->ClosedOn();
  Spline->PrintSelf(text, vtkIndent(2));
  EXPECT_THAT(text.str(), ::testing::EndsWith("  Points: 0\n  Closed: On\n"));
}
