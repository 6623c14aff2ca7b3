#include "WorkstationContourBodies.h"

#include "zvContourSmoother.h"
#include "zvContourStack.h"

#include "zvDice.h"
#include "zvQuietTest.h"
#include "zvUtils.h"

#include "vtkCellArray.h"
#include "vtkDataArray.h"
#include "vtkIdList.h"
#include "vtkMath.h"
#include "vtkNew.h"
#include "vtkPointData.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"

#include <gmock/gmock.h>

using namespace contourtest;
using testing::ElementsAre;

//------------------------------------------------------------------------------
class ContourMath : public zvtest::QuietTest
{
};

TEST_F(ContourMath, RingIsACircleOnce)
{
  const zvContour ring = zvContourMath::MakeRing({ { 3.0, -2.0 } }, 5.0, 8);
  ASSERT_EQ(ring.size(), 8U);
  EXPECT_NEAR(ring[0][0], 8.0, 1e-12);
  EXPECT_NEAR(ring[0][1], -2.0, 1e-12);
  EXPECT_NEAR(ring[2][0], 3.0, 1e-12);
  EXPECT_NEAR(ring[2][1], 3.0, 1e-12);
  for (const zvContourPoint& point : ring)
  {
    EXPECT_NEAR(std::hypot(point[0] - 3.0, point[1] + 2.0), 5.0, 1e-12);
  }
}

TEST_F(ContourMath, AreaTellsTheSenseOfRotation)
{
  const zvContour square{ { { 1, 1 } }, { { 4, 1 } }, { { 4, 3 } }, { { 1, 3 } } };
  EXPECT_DOUBLE_EQ(zvContourMath::GetArea(square), 6.0);
  EXPECT_DOUBLE_EQ(zvContourMath::GetArea(Reversed(square)), -6.0);
  EXPECT_DOUBLE_EQ(zvContourMath::GetLength(square), 10.0);
  const zvContourPoint centre = zvContourMath::GetCentre(square);
  EXPECT_DOUBLE_EQ(centre[0], 2.5);
  EXPECT_DOUBLE_EQ(centre[1], 2.0);
}

TEST_F(ContourMath, NothingHasNoMeasures)
{
  EXPECT_EQ(zvContourMath::GetArea({}), 0.0);
  EXPECT_EQ(zvContourMath::GetLength({}), 0.0);
  EXPECT_EQ(zvContourMath::GetCentre({}), (zvContourPoint{ { 0.0, 0.0 } }));
  EXPECT_TRUE(zvContourMath::Resample({}, 10).empty());
  EXPECT_TRUE(zvContourMath::Resample({ { { 1, 1 } }, { { 1, 1 } } }, 10).empty());
  EXPECT_TRUE(zvContourMath::Resample({ { { NaN, 1 } }, { { 1, 1 } } }, 10).empty());
  EXPECT_EQ(zvContourMath::GetMeanDistance({}, {}), 0.0);
  EXPECT_FALSE(zvContourMath::Contains({}, { { 0, 0 } }));
  zvContour none;
  EXPECT_EQ(zvContourMath::CutLoops(none), 0);
}

TEST_F(ContourMath, ResampledPointsLieEvenlyOnTheContour)
{
  const zvContour uneven{ { { 0, 0 } }, { { 1, 0 } }, { { 1, 0 } }, { { 8, 0 } }, { { 8, 4 } },
    { { 0, 4 } } };
  const zvContour even = zvContourMath::Resample(uneven, 48);
  ASSERT_EQ(even.size(), 48U);
  EXPECT_EQ(even[0], uneven[0]);
  for (std::size_t i = 0; i < even.size(); ++i)
  {
    const zvContourPoint& next = even[(i + 1) % even.size()];
    // Half a millimetre, also round the corners, since these lie at multiples of it.
    EXPECT_NEAR(std::hypot(next[0] - even[i][0], next[1] - even[i][1]), 0.5, 1e-12);
  }
  EXPECT_NEAR(zvContourMath::GetMeanDistance(even, uneven), 0.0, 1e-12);
  EXPECT_NEAR(zvContourMath::GetArea(even), 32.0, 1e-9);
}

TEST_F(ContourMath, ResamplingAgainMovesNothing)
{
  const zvContour ring = zvContourMath::MakeRing({ { 0, 0 } }, 10.0, Count);
  const zvContour again = zvContourMath::Resample(ring, Count);
  for (std::size_t i = 0; i < Count; ++i)
  {
    EXPECT_NEAR(again[i][0], ring[i][0], 1e-9);
    EXPECT_NEAR(again[i][1], ring[i][1], 1e-9);
  }
}

TEST_F(ContourMath, DistanceIsMeasuredFromTheLineAndNotFromItsPoints)
{
  const zvContour square{ { { 0, 0 } }, { { 10, 0 } }, { { 10, 10 } }, { { 0, 10 } } };
  EXPECT_DOUBLE_EQ(zvContourMath::GetMeanDistance({ { { 5, 2 } }, { { 13, 14 } } }, square), 3.5);
}

TEST_F(ContourMath, InsideIsTold)
{
  const zvContour hook{ { { 0, 0 } }, { { 6, 0 } }, { { 6, 6 } }, { { 4, 6 } }, { { 4, 2 } },
    { { 0, 2 } } };
  EXPECT_TRUE(zvContourMath::Contains(hook, { { 1, 1 } }));
  EXPECT_TRUE(zvContourMath::Contains(hook, { { 5, 5 } }));
  EXPECT_FALSE(zvContourMath::Contains(hook, { { 2, 4 } }));
  EXPECT_FALSE(zvContourMath::Contains(hook, { { 7, 1 } }));
}

TEST_F(ContourMath, AContourThatDoesNotCrossItselfKeepsAllPoints)
{
  zvContour ring = zvContourMath::MakeRing({ { 0, 0 } }, 10.0, 31);
  const zvContour before = ring;
  EXPECT_EQ(zvContourMath::CutLoops(ring), 0);
  EXPECT_EQ(ring, before);
}

TEST_F(ContourMath, ALoopIsCutOff)
{
  // The tip of the last side has swung across the first one.
  zvContour knot{ { { 0, 0 } }, { { 10, 0 } }, { { 10, 10 } }, { { 4, 10 } }, { { 4, -1 } },
    { { 2, -1 } }, { { 0, 1 } } };
  const double sum = zvContourMath::GetArea(knot);
  EXPECT_EQ(zvContourMath::CutLoops(knot), 1);
  EXPECT_GT(zvContourMath::GetArea(knot), sum);
  EXPECT_DOUBLE_EQ(zvContourMath::GetArea(knot), 60.0);
  zvContour clean = knot;
  EXPECT_EQ(zvContourMath::CutLoops(clean), 0);
}

TEST_F(ContourMath, OfAFigureOfEightTheLargerHalfIsLeft)
{
  zvContour eight{ { { 0, 0 } }, { { 6, 6 } }, { { 6, 0 } }, { { 0, 6 } }, { { -9, 3 } } };
  EXPECT_EQ(zvContourMath::CutLoops(eight), 1);
  for (const zvContourPoint& point : eight)
  {
    EXPECT_LE(point[0], 3.0);
  }
}

TEST_F(ContourMath, DrawnKnotsComeOutSimple)
{
  zvtest::Dice dice(20);
  for (int draw = 0; draw < 300; ++draw)
  {
    zvContour knot;
    for (int i = dice.Int(3, 25); i > 0; --i)
    {
      knot.push_back({ { dice.Real(-10, 10), dice.Real(-10, 10) } });
    }
    zvContourMath::CutLoops(knot);
    zvContour again = knot;
    EXPECT_EQ(zvContourMath::CutLoops(again), 0);
    EXPECT_GE(knot.size(), 3U);
    EXPECT_TRUE(zvContourMath::IsFinite(knot));
  }
}

//------------------------------------------------------------------------------
class ContourPlane : public zvtest::QuietTest
{
protected:
  vtkSmartPointer<vtkImageData> Volume = MakeEllipsoid();
};

TEST_F(ContourPlane, LiesWhereTheSliceIs)
{
  constexpr int axes[3][2] = { { 1, 2 }, { 0, 2 }, { 0, 1 } };
  for (int axis = 0; axis < 3; ++axis)
  {
    const zvContourPlane plane(this->Volume, axis, 7);
    EXPECT_EQ(plane.GetAxis(), axis);
    EXPECT_EQ(plane.GetSlice(), 7);
    EXPECT_EQ(plane.GetFirstAxis(), axes[axis][0]);
    EXPECT_EQ(plane.GetSecondAxis(), axes[axis][1]);
    EXPECT_DOUBLE_EQ(
      plane.GetPosition(), this->Volume->GetOrigin()[axis] + 7 * this->Volume->GetSpacing()[axis]);
    const std::array<double, 3> world = plane.ToWorld({ { 1.5, 2.5 } });
    EXPECT_DOUBLE_EQ(world[At(axis)], plane.GetPosition());
    EXPECT_DOUBLE_EQ(world[At(axes[axis][0])], 1.5);
    EXPECT_DOUBLE_EQ(world[At(axes[axis][1])], 2.5);
    EXPECT_EQ(plane.FromWorld(world.data()), (zvContourPoint{ { 1.5, 2.5 } }));
  }
}

TEST_F(ContourPlane, AContourGoesThroughPolyDataUnchanged)
{
  const zvContour ring = zvContourMath::MakeRing({ { 3.0, 4.0 } }, 2.0, 9);
  for (int axis = 0; axis < 3; ++axis)
  {
    const zvContourPlane plane(this->Volume, axis, 4);
    const auto lines = plane.ToPolyData(ring, 0.75);
    EXPECT_EQ(lines->GetNumberOfPoints(), 9);
    EXPECT_EQ(lines->GetNumberOfCells(), 9);
    EXPECT_DOUBLE_EQ(lines->GetPoint(5)[axis], plane.GetPosition() + 0.75);
    EXPECT_EQ(plane.FromPolyData(lines), ring);
    // What the library measures is the same ring.
    EXPECT_NEAR(zvUtils::CalculateArea(lines), zvContourMath::GetArea(ring), 1e-9);
  }
}

TEST_F(ContourPlane, TheLinesAndNotThePointsTellTheOrder)
{
  vtkNew<vtkPoints> points;
  const zvContour places{ { { 0, 0 } }, { { 4, 3 } }, { { 4, 0 } }, { { 0, 3 } } };
  for (const zvContourPoint& place : places)
  {
    points->InsertNextPoint(place[0], place[1], 0.0);
  }
  vtkNew<vtkCellArray> lines;
  lines->InsertNextCell({ 1, 3 });
  lines->InsertNextCell({ 0, 2 });
  lines->InsertNextCell({ 3, 0 });
  lines->InsertNextCell({ 2, 1 });
  vtkNew<vtkPolyData> ring;
  ring->SetPoints(points);
  ring->SetLines(lines);
  const zvContour contour = zvContourPlane(this->Volume, 2, 0).FromPolyData(ring);
  EXPECT_THAT(contour,
    ElementsAre(zvContourPoint{ { 0, 0 } }, zvContourPoint{ { 4, 0 } }, zvContourPoint{ { 4, 3 } },
      zvContourPoint{ { 0, 3 } }));
}

TEST_F(ContourPlane, AClockwiseRingIsTurned)
{
  const zvContourPlane plane(this->Volume, 1, 3);
  const zvContour ring = zvContourMath::MakeRing({ { 0, 0 } }, 2.0, 12);
  const zvContour contour = plane.FromPolyData(plane.ToPolyData(Reversed(ring)));
  EXPECT_NEAR(zvContourMath::GetArea(contour), zvContourMath::GetArea(ring), 1e-12);
  EXPECT_EQ(contour[0], ring.back());
}

TEST_F(ContourPlane, WhatIsNoRingGivesNoContour)
{
  const zvContourPlane plane(this->Volume, 2, 0);
  const zvContour ring = zvContourMath::MakeRing({ { 0, 0 } }, 2.0, 6);
  EXPECT_TRUE(plane.FromPolyData(nullptr).empty());
  EXPECT_TRUE(plane.FromPolyData(vtkNew<vtkPolyData>()).empty());
  EXPECT_TRUE(plane.FromPolyData(plane.ToPolyData({ { { 0, 0 } }, { { 1, 1 } } })).empty());

  auto gap = plane.ToPolyData(ring);
  vtkNew<vtkCellArray> open;
  open->InsertNextCell({ 0, 1 });
  open->InsertNextCell({ 1, 2 });
  gap->SetLines(open);
  EXPECT_TRUE(plane.FromPolyData(gap).empty());

  auto astray = plane.ToPolyData(ring);
  vtkNew<vtkCellArray> wild;
  wild->InsertNextCell({ 0, 77 });
  astray->SetLines(wild);
  EXPECT_TRUE(plane.FromPolyData(astray).empty());

  auto tail = plane.ToPolyData(ring); // runs into a circle that does not lead back
  vtkNew<vtkCellArray> circle;
  circle->InsertNextCell({ 0, 1 });
  circle->InsertNextCell({ 1, 2 });
  circle->InsertNextCell({ 2, 1 });
  tail->SetLines(circle);
  EXPECT_TRUE(plane.FromPolyData(tail).empty());

  auto lost = plane.ToPolyData(ring);
  lost->GetPoints()->SetPoint(2, NaN, 0.0, 0.0);
  EXPECT_TRUE(plane.FromPolyData(lost).empty());
}

//------------------------------------------------------------------------------
class ContourSmoother : public zvtest::QuietTest
{
};

TEST_F(ContourSmoother, SolvesTheEquationOfTheInternalForces)
{
  zvtest::Dice dice(7);
  constexpr double elasticity = 0.7, stiffness = 2.5;
  for (const std::size_t count : { std::size_t(8), std::size_t(9), std::size_t(100) })
  {
    zvContour contour;
    for (std::size_t i = 0; i < count; ++i)
    {
      contour.push_back({ { dice.Real(-5, 5), dice.Real(-5, 5) } });
    }
    const zvContour smooth = zvContourSmoother(count, elasticity, stiffness).Smooth(contour);
    ASSERT_EQ(smooth.size(), count);
    for (std::size_t i = 0; i < count; ++i)
    {
      for (std::size_t a = 0; a < 2; ++a)
      {
        const auto at = [&](std::size_t steps) { return smooth[(i + steps) % count][a]; };
        const double second = at(count - 1) - 2.0 * at(0) + at(1);
        const double fourth =
          at(count - 2) - 4.0 * at(count - 1) + 6.0 * at(0) - 4.0 * at(1) + at(2);
        EXPECT_NEAR(at(0) - elasticity * second + stiffness * fourth, contour[i][a], 1e-9);
      }
    }
  }
}

TEST_F(ContourSmoother, WithoutForcesNothingMoves)
{
  const zvContour ring = zvContourMath::MakeRing({ { 50, -20 } }, 3.0, 20);
  for (const double strength : { 0.0, -4.0 })
  {
    const zvContour smooth = zvContourSmoother(20, strength, strength).Smooth(ring);
    for (std::size_t i = 0; i < ring.size(); ++i)
    {
      EXPECT_NEAR(smooth[i][0], ring[i][0], 1e-9);
      EXPECT_NEAR(smooth[i][1], ring[i][1], 1e-9);
    }
  }
}

TEST_F(ContourSmoother, StrongForcesKeepTheCentreAndDoNotOvershoot)
{
  zvContour ring = zvContourMath::MakeRing({ { 50, -20 } }, 3.0, 20);
  ring = zvContourSmoother(20, 1000.0, 0.0).Smooth(ring);
  const zvContourPoint centre = zvContourMath::GetCentre(ring);
  EXPECT_NEAR(centre[0], 50.0, 1e-9);
  EXPECT_NEAR(centre[1], -20.0, 1e-9);
  EXPECT_GT(zvContourMath::GetArea(ring), 0.0);
  EXPECT_LT(zvContourMath::GetArea(ring), 1.0);
}

//------------------------------------------------------------------------------
class ContourForces : public zvtest::QuietTest
{
protected:
  // 100 on the lower side of an edge across the first axis, 300 from there on.
  static vtkSmartPointer<vtkImageData> MakeStep(double place, double height = 200.0)
  {
    return MakeBody(
      Anisotropic(VTK_FLOAT), [=](const std::array<double, 3>& world) { return world[0] > place; },
      100.0 + height, 100.0);
  }
};

TEST_F(ContourForces, ASliceIsCutAcrossEveryAxis)
{
  const auto volume = zvtest::MakeIndexVolume(zvtest::UnequalVolume());
  const int* size = volume->GetDimensions();
  for (int axis = 0; axis < 3; ++axis)
  {
    const zvContourPlane plane(volume, axis, 2);
    const auto slice = zvContourForces::CutSlice(volume, plane);
    ASSERT_EQ(slice->GetScalarType(), VTK_FLOAT);
    ASSERT_EQ(slice->GetDimensions()[0], size[plane.GetFirstAxis()]);
    ASSERT_EQ(slice->GetDimensions()[1], size[plane.GetSecondAxis()]);
    ASSERT_EQ(slice->GetDimensions()[2], 1);
    EXPECT_DOUBLE_EQ(slice->GetSpacing()[1], volume->GetSpacing()[plane.GetSecondAxis()]);
    EXPECT_DOUBLE_EQ(slice->GetOrigin()[0], volume->GetOrigin()[plane.GetFirstAxis()]);
    for (int j = 0; j < slice->GetDimensions()[1]; ++j)
    {
      for (int i = 0; i < slice->GetDimensions()[0]; ++i)
      {
        zvtest::Index index;
        index[At(axis)] = 2;
        index[At(plane.GetFirstAxis())] = i;
        index[At(plane.GetSecondAxis())] = j;
        EXPECT_EQ(slice->GetScalarComponentAsDouble(i, j, 0, 0), zvtest::IndexValue(volume, index));
      }
    }
  }
}

TEST_F(ContourForces, EverySortOfScalarsIsTaken)
{
  for (const int type : zvtest::AllScalarTypes())
  {
    const auto volume = zvtest::MakeIndexVolume(zvtest::VolumeOfType(type));
    const auto forces = ForcesOf(volume, zvContourPlane(volume, 2, 1), { 0.0, 0.2 });
    EXPECT_TRUE(forces->HasEdges()) << zvtest::ScalarTypeName(type);
    EXPECT_FLOAT_EQ(static_cast<float>(forces->At({ { 2.0, 1.0 } }).Value),
      static_cast<float>(zvtest::IndexValue(volume, { { 2, 1, 1 } })))
      << zvtest::ScalarTypeName(type);
  }
}

TEST_F(ContourForces, EdgesPullFromBothSidesAlike)
{
  const auto volume = MakeStep(20.5 - 1e-6);
  for (const double smoothing : { 1.0, 2.0 })
  {
    const zvForceParameters parameters{ smoothing, 0.02 };
    const auto forces = ForcesOf(volume, zvContourPlane(volume, 2, 20), parameters);
    const double deviation = smoothing * 1.5; // of the larger side of a voxel
    const zvContourForces::Sample on = forces->At({ { 20.5, 70.0 } });
    EXPECT_NEAR(on.Value, 200.0, 1.0);
    EXPECT_NEAR(on.Pull[0], 0.0, 0.02);
    EXPECT_GT(on.Edge, 0.99);
    const zvContourForces::Sample below = forces->At({ { 20.5 - deviation, 70.0 } });
    const zvContourForces::Sample above = forces->At({ { 20.5 + deviation, 70.0 } });
    EXPECT_NEAR(below.Pull[0], 1.0, 0.15);
    EXPECT_NEAR(above.Pull[0], -below.Pull[0], 0.02);
    EXPECT_NEAR(below.Pull[1], 0.0, 1e-3);
    const zvContourForces::Sample far = forces->At({ { 50.0, 70.0 } });
    EXPECT_NEAR(far.Edge, 0.0, 1e-3);
    EXPECT_NEAR(far.Pull[0], 0.0, 1e-3);
    EXPECT_NEAR(far.Value, 300.0, 1e-3);
  }
}

TEST_F(ContourForces, TheGradientIsInValuesPerMillimetre)
{
  zvtest::VolumeOptions options = Anisotropic(VTK_DOUBLE);
  const auto ramp = zvtest::MakeVolume(options,
    [&](int i, int j, int, int)
    { return 3.0 * i * options.Spacing[0] + 4.0 * j * options.Spacing[1]; });
  const auto forces = ForcesOf(ramp, zvContourPlane(ramp, 2, 3), { 0.0, 0.2 });
  EXPECT_NEAR(forces->At({ { 20.0, 70.0 } }).Gradient, 5.0, 1e-3);
  EXPECT_DOUBLE_EQ(forces->GetFineSpacing(), 1.0);
  EXPECT_DOUBLE_EQ(forces->GetCoarseSpacing(), 1.5);
}

TEST_F(ContourForces, WeakEdgesPullAsFarAsTheirContrastAllows)
{
  const auto weak = MakeStep(20.5, 20.0);
  const auto strong = MakeStep(20.5, 2000.0);
  const zvContourPoint place{ { 19.0, 70.0 } };
  const auto atWeak = ForcesOf(weak, zvContourPlane(weak, 2, 20))->At(place);
  const auto atStrong = ForcesOf(strong, zvContourPlane(strong, 2, 20))->At(place);
  EXPECT_NEAR(atWeak.Pull[0], atStrong.Pull[0], 1e-3);
  EXPECT_NEAR(atWeak.Edge, atStrong.Edge, 1e-3);
}

TEST_F(ContourForces, BesideTheSliceTheNearestPointSpeaks)
{
  const auto volume = MakeStep(20.5);
  const auto forces = ForcesOf(volume, zvContourPlane(volume, 2, 20));
  EXPECT_EQ(forces->At({ { -500.0, 70.0 } }).Value, forces->At({ { -20.0, 70.0 } }).Value);
  EXPECT_EQ(forces->At({ { 500.0, 1e9 } }).Value, forces->At(forces->GetHigh()).Value);
  EXPECT_EQ(forces->GetLow(), (zvContourPoint{ { -20.0, 30.0 } }));
  EXPECT_EQ(forces->GetHigh(), (zvContourPoint{ { 79.0, 118.5 } }));
}

TEST_F(ContourForces, AnEvenSliceHasNoEdges)
{
  for (const double value : { 0.0, 1000.0, -3.3e7 })
  {
    const auto volume = zvtest::MakeConstantVolume(value, Anisotropic(VTK_DOUBLE));
    const zvContourPlane plane(volume, 2, 3);
    const auto forces = ForcesOf(volume, plane);
    EXPECT_FALSE(forces->HasEdges());
    EXPECT_FALSE(forces->IsEmpty());
    const auto sample = forces->At({ { 20.0, 70.0 } });
    EXPECT_EQ(sample.Edge, 0.0);
    EXPECT_EQ(sample.Pull, (zvContourPoint{ { 0.0, 0.0 } }));
    EXPECT_EQ(forces->MakeEdgePoints(plane, 100)->GetNumberOfPoints(), 0);
  }
}

TEST_F(ContourForces, VoxelsWithoutAValueTakeThatOfTheirNeighbours)
{
  const auto whole = MakeStep(20.5);
  auto torn = vtkSmartPointer<vtkImageData>::New();
  torn->DeepCopy(whole);
  int count = 0;
  for (int j = 20; j < 27; ++j)
  {
    for (int i = 70; i < 77; ++i)
    {
      torn->SetScalarComponentFromDouble(
        i, j, 20, 0, i % 2 != 0 ? NaN : std::numeric_limits<double>::infinity());
      ++count;
    }
  }
  const zvContourPlane plane(whole, 2, 20);
  const auto forces = ForcesOf(torn, plane);
  EXPECT_EQ(forces->GetHoleCount(), count);
  const auto before = ForcesOf(whole, plane);
  EXPECT_EQ(before->GetHoleCount(), 0);
  // The hole lies in even tissue: it is as if it had not been there.
  for (double u = -20.0; u < 80.0; u += 3.7)
  {
    for (double v = 30.0; v < 118.0; v += 3.7)
    {
      EXPECT_NEAR(forces->At({ { u, v } }).Value, before->At({ { u, v } }).Value, 1e-3);
    }
  }
}

TEST_F(ContourForces, ASliceWithoutAnyValueIsEmpty)
{
  const auto volume = zvtest::MakeConstantVolume(NaN, Anisotropic(VTK_FLOAT));
  const zvContourPlane plane(volume, 0, 3);
  const auto forces = ForcesOf(volume, plane);
  EXPECT_TRUE(forces->IsEmpty());
  EXPECT_FALSE(forces->HasEdges());
  EXPECT_EQ(forces->At({ { 50.0, 20.0 } }).Value, 0.0);
  EXPECT_EQ(forces->MakeEdgePoints(plane, 100)->GetNumberOfPoints(), 0);
}

TEST_F(ContourForces, EdgePointsLieOnTheEdge)
{
  const auto volume = MakeEllipsoid();
  for (int axis = 0; axis < 3; ++axis)
  {
    const zvContourPlane plane = MiddlePlane(volume, axis);
    const auto forces = ForcesOf(volume, plane);
    const auto edges = forces->MakeEdgePoints(plane, 100000, 0.5);
    ASSERT_GT(edges->GetNumberOfPoints(), 100);
    EXPECT_EQ(edges->GetNumberOfCells(), edges->GetNumberOfPoints()); // they are drawn
    ASSERT_NE(edges->GetPointData()->GetScalars(), nullptr);
    EXPECT_GT(edges->GetPointData()->GetScalars()->GetRange()[0], 0.0);
    for (vtkIdType i = 0; i < edges->GetNumberOfPoints(); ++i)
    {
      double place[3], sum = 0.0;
      edges->GetPoint(i, place);
      EXPECT_NEAR(place[axis], plane.GetPosition() + 0.5, 1e-9);
      for (const int a : { plane.GetFirstAxis(), plane.GetSecondAxis() })
      {
        sum += std::pow((place[a] - Middle[At(a)]) / HalfAxes[At(a)], 2);
      }
      EXPECT_NEAR(std::sqrt(sum), 1.0, 0.2);
    }
    EXPECT_LE(forces->MakeEdgePoints(plane, 50)->GetNumberOfPoints(), 50);
    EXPECT_EQ(forces->MakeEdgePoints(plane, 0)->GetNumberOfPoints(), 0);
  }
}

TEST_F(ContourForces, ASliceOfOneRowIsTaken)
{
  zvtest::VolumeOptions options = Anisotropic();
  options.Dimensions = { { 30, 1, 20 } };
  const auto volume = MakeBody(
    options, [](const std::array<double, 3>& world) { return world[0] > 0.0; }, 9.0, 0.0);
  const auto forces = ForcesOf(volume, zvContourPlane(volume, 2, 4));
  EXPECT_TRUE(forces->HasEdges());
  EXPECT_NEAR(forces->At({ { 9.0, 30.0 } }).Value, 9.0, 1e-4);
}

//------------------------------------------------------------------------------
class ContourStack : public zvtest::QuietTest
{
};

TEST_F(ContourStack, KeepsOneContourASlice)
{
  zvContourStack stack(1);
  const zvContour ring = zvContourMath::MakeRing({ { 0, 0 } }, 2.0, 6);
  EXPECT_EQ(stack.GetAxis(), 1);
  EXPECT_TRUE(stack.IsEmpty());
  EXPECT_EQ(stack.Find(3), nullptr);
  stack.Set(3, ring);
  stack.Set(3, Reversed(ring));
  stack.Set(5, ring);
  EXPECT_EQ(stack.GetCount(), 2);
  ASSERT_NE(stack.Find(3), nullptr);
  EXPECT_EQ(*stack.Find(3), Reversed(ring));
  stack.Set(3, {});
  EXPECT_EQ(stack.Find(3), nullptr);
  stack.Clear();
  EXPECT_TRUE(stack.IsEmpty());
}

TEST_F(ContourStack, AllRingsComeIntoOnePolyData)
{
  const auto volume = MakeEllipsoid();
  for (int axis = 0; axis < 3; ++axis)
  {
    zvContourStack stack(axis);
    stack.Set(4, zvContourMath::MakeRing({ { 10, 20 } }, 6.0, 10));
    stack.Set(9, zvContourMath::MakeRing({ { 10, 20 } }, 3.0, 7));
    const auto rings = stack.ToPolyData(volume);
    EXPECT_EQ(rings->GetNumberOfPoints(), 17);
    EXPECT_EQ(rings->GetNumberOfCells(), 17);
    EXPECT_DOUBLE_EQ(rings->GetPoint(3)[axis], zvContourPlane(volume, axis, 4).GetPosition());
    EXPECT_DOUBLE_EQ(rings->GetPoint(12)[axis], zvContourPlane(volume, axis, 9).GetPosition());
    vtkNew<vtkIdList> ids;
    rings->GetCellPoints(9, ids);
    EXPECT_EQ(ids->GetId(1), 0);
    rings->GetCellPoints(16, ids);
    EXPECT_EQ(ids->GetId(1), 10);
  }
  EXPECT_EQ(zvContourStack().ToPolyData(volume)->GetNumberOfPoints(), 0);
}

TEST_F(ContourStack, TheMaskHoldsTheVoxelsWithinTheContours)
{
  const auto volume = MakeEllipsoid();
  const int* size = volume->GetDimensions();
  zvtest::Dice dice(3);
  for (int axis = 0; axis < 3; ++axis)
  {
    zvContourStack stack(axis);
    const zvContourPlane plane = MiddlePlane(volume, axis);
    const zvContourPoint centre = plane.FromWorld(Middle.data());
    for (const int slice : { 0, 7, 8, size[axis] - 1 })
    {
      // Odd sides: no voxel's centre lies on one.
      zvContour drawn;
      for (int i = 0; i < 24; ++i)
      {
        const double angle = 2.0 * vtkMath::Pi() * i / 24.0, reach = dice.Real(8.0, 60.0);
        drawn.push_back(
          { { centre[0] + reach * std::cos(angle), centre[1] + reach * std::sin(angle) } });
      }
      stack.Set(slice, drawn);
    }
    const auto mask = stack.MakeMask(volume);
    ASSERT_NE(mask, nullptr);
    EXPECT_EQ(mask->GetScalarType(), VTK_UNSIGNED_CHAR);
    int misses = 0, inside = 0;
    for (int k = 0; k < size[2]; ++k)
    {
      for (int j = 0; j < size[1]; ++j)
      {
        for (int i = 0; i < size[0]; ++i)
        {
          const int index[3] = { i, j, k };
          const zvtest::World world = zvtest::CenterOfVoxel(volume, { { i, j, k } });
          ASSERT_EQ(zvtest::CenterOfVoxel(mask, { { i, j, k } }), world);
          const zvContour* contour = stack.Find(index[axis]);
          const bool isInside =
            contour != nullptr && zvContourMath::Contains(*contour, plane.FromWorld(world.data()));
          inside += isInside ? 1 : 0;
          misses += (mask->GetScalarComponentAsDouble(i, j, k, 0) == 0.0) != isInside ? 1 : 0;
        }
      }
    }
    EXPECT_GT(inside, 1000);
    EXPECT_EQ(misses, 0) << "axis " << axis;
  }
}

TEST_F(ContourStack, WithoutAContourThereIsNoMask)
{
  EXPECT_EQ(zvContourStack().MakeMask(MakeEllipsoid()), nullptr);
}

TEST_F(ContourStack, AContourBesideTheVolumeMasksNothing)
{
  const auto volume = MakeEllipsoid();
  zvContourStack stack;
  stack.Set(4, zvContourMath::MakeRing({ { 1000, 20 } }, 6.0, 10));
  stack.Set(400, zvContourMath::MakeRing({ { 30, 75 } }, 6.0, 10));
  const auto mask = stack.MakeMask(volume);
  EXPECT_EQ(mask->GetScalarRange()[0], 1.0);
}
