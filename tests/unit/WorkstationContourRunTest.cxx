#include "WorkstationContourBodies.h"

#include "zvActiveContour.h"
#include "zvContourWalk.h"
#include "zvHeadPhantom.h"
#include "zvLoadProgress.h"
#include "zvVolumeReader.h"

#include "zvDice.h"
#include "zvQuietTest.h"

#include "vtkMath.h"

#include <gmock/gmock.h>

#include <thread>

using namespace contourtest;
using State = zvActiveContour::State;
using Event = zvContourWalk::Event;
using testing::ElementsAre;

namespace
{
State RunToEnd(zvActiveContour& contour)
{
  while (contour.Step() == State::Moving)
  {
  }
  return contour.GetState();
}

// The end of a walk, with a bound on how long it may take.
bool RunToEnd(zvContourWalk& walk)
{
  for (int step = 0; step < 200000; ++step)
  {
    const Event event = walk.Step();
    if (event == Event::Ended)
    {
      return true;
    }
    if (event == Event::Waiting)
    {
      std::this_thread::yield();
      --step;
    }
  }
  return false;
}
}

//------------------------------------------------------------------------------
class ActiveContour : public zvtest::QuietTest
{
protected:
  // The contour in the slice through the middle of the ellipsoid.
  State Begin(int axis, const zvContour& contour, const zvContourParameters& parameters = {})
  {
    this->Plane = MiddlePlane(this->Volume, axis);
    this->Contour.SetParameters(parameters);
    return this->Contour.Begin(ForcesOf(this->Volume, this->Plane), contour);
  }

  zvContour RingAround(int axis, double radius, std::size_t count = Count)
  {
    return zvContourMath::MakeRing(
      MiddlePlane(this->Volume, axis).FromWorld(Middle.data()), radius, count);
  }

  double GetDice()
  {
    const Body body = Ellipsoid(Middle, HalfAxes);
    return DiceOf(this->Contour.GetContour(), this->Volume, this->Plane,
      [&](int i, int j, int k) {
        return body(zvtest::CenterOfVoxel(this->Volume, { { i, j, k } }));
      });
  }

  vtkSmartPointer<vtkImageData> Volume = MakeEllipsoid();
  zvContourPlane Plane;
  zvActiveContour Contour;
};

TEST_F(ActiveContour, GrowsToTheOutlineAcrossEveryAxis)
{
  for (int axis = 0; axis < 3; ++axis)
  {
    ASSERT_EQ(this->Begin(axis, this->RingAround(axis, 6.0)), State::Moving);
    EXPECT_EQ(RunToEnd(this->Contour), State::Settled);
    EXPECT_GE(this->GetDice(), 0.98) << "axis " << axis;
    EXPECT_EQ(this->Contour.GetMessage(), "");
  }
}

TEST_F(ActiveContour, ShrinksToTheOutlineAcrossEveryAxis)
{
  zvContourParameters parameters;
  parameters.Balloon = -1.0;
  for (int axis = 0; axis < 3; ++axis)
  {
    ASSERT_EQ(this->Begin(axis, this->RingAround(axis, 44.0), parameters), State::Moving);
    EXPECT_EQ(RunToEnd(this->Contour), State::Settled);
    EXPECT_GE(this->GetDice(), 0.98) << "axis " << axis;
  }
}

TEST_F(ActiveContour, WithoutABalloonItGoesToTheEdgeThatItFeels)
{
  zvContourParameters parameters;
  parameters.Balloon = 0.0;
  zvContour near = this->RingAround(2, 1.0);
  for (zvContourPoint& point : near)
  {
    point = { { Middle[0] + (point[0] - Middle[0]) * (HalfAxes[0] - 2.0),
      Middle[1] + (point[1] - Middle[1]) * (HalfAxes[1] + 2.0) } };
  }
  ASSERT_EQ(this->Begin(2, near, parameters), State::Moving);
  EXPECT_EQ(RunToEnd(this->Contour), State::Settled);
  EXPECT_GE(this->GetDice(), 0.98);
}

TEST_F(ActiveContour, WithoutATissueTheEdgeAloneHoldsTheBalloon)
{
  zvContourParameters parameters;
  parameters.TissueRange = 0.0;
  ASSERT_EQ(this->Begin(2, this->RingAround(2, 6.0), parameters), State::Moving);
  EXPECT_EQ(this->Contour.GetTissue().Reach, 0.0);
  EXPECT_EQ(RunToEnd(this->Contour), State::Settled);
  EXPECT_GE(this->GetDice(), 0.98);
}

TEST_F(ActiveContour, FindsTheOutlineAmongNoise)
{
  zvtest::Dice dice(11);
  for (vtkIdType i = 0; i < this->Volume->GetNumberOfPoints(); ++i)
  {
    auto* value = static_cast<short*>(this->Volume->GetScalarPointer()) + i;
    *value = static_cast<short>(*value + dice.Int(-60, 60));
  }
  for (const auto& [balloon, radius] : { std::pair(1.0, 8.0), std::pair(-1.0, 44.0) })
  {
    zvContourParameters parameters;
    parameters.Balloon = balloon;
    ASSERT_EQ(this->Begin(2, this->RingAround(2, radius), parameters), State::Moving);
    RunToEnd(this->Contour);
    EXPECT_GE(this->GetDice(), 0.96) << balloon;
  }
}

TEST_F(ActiveContour, TheNumberOfPointsStays)
{
  for (const std::size_t count : { std::size_t(8), std::size_t(50), std::size_t(333) })
  {
    ASSERT_EQ(this->Begin(2, this->RingAround(2, 6.0, count)), State::Moving);
    for (int step = 0; step < 30; ++step)
    {
      this->Contour.Step();
      EXPECT_EQ(this->Contour.GetContour().size(), count);
    }
    EXPECT_EQ(this->Contour.GetStepCount(), 30);
  }
}

TEST_F(ActiveContour, AStepMovesNoPointFurtherThanItMay)
{
  zvContourParameters parameters;
  parameters.StepLength = 0.25;
  parameters.Balloon = 50.0;
  parameters.EdgePull = 50.0;
  ASSERT_EQ(this->Begin(2, this->RingAround(2, 20.0), parameters), State::Moving);
  for (int step = 0; step < 40; ++step)
  {
    const zvContour before = this->Contour.GetContour();
    this->Contour.Step();
    for (const zvContourPoint& point : this->Contour.GetContour())
    {
      EXPECT_LT(zvContourMath::GetMeanDistance({ point }, before), 0.26);
    }
  }
}

TEST_F(ActiveContour, AClockwiseOrKnottedBeginningIsPutInOrder)
{
  ASSERT_EQ(this->Begin(2, Reversed(this->RingAround(2, 6.0))), State::Moving);
  EXPECT_GT(zvContourMath::GetArea(this->Contour.GetContour()), 0.0);
  EXPECT_EQ(RunToEnd(this->Contour), State::Settled);
  EXPECT_GE(this->GetDice(), 0.98);

  zvContour knot = this->RingAround(2, 9.0);
  std::swap(knot[10], knot[30]);
  ASSERT_EQ(this->Begin(2, knot), State::Moving);
  zvContour clean = this->Contour.GetContour();
  EXPECT_EQ(zvContourMath::CutLoops(clean), 0);
  EXPECT_EQ(RunToEnd(this->Contour), State::Settled);
  EXPECT_GE(this->GetDice(), 0.98);
}

TEST_F(ActiveContour, NeverCrossesItself)
{
  // Two bodies close together, from a ring round one of them: the contour has to go round corners.
  this->Volume = MakeBody(
    Anisotropic(),
    [](const std::array<double, 3>& world)
    {
      return Ellipsoid({ { 10, 75, 53 } }, { { 24, 20, 40 } })(world) ||
        Ellipsoid({ { 50, 75, 53 } }, { { 24, 30, 40 } })(world);
    },
    300.0, 100.0);
  zvContourParameters parameters;
  parameters.Elasticity = parameters.Stiffness = 0.0;
  parameters.StepLength = 2.0;
  ASSERT_EQ(
    this->Begin(2, zvContourMath::MakeRing({ { 8, 75 } }, 5.0, Count), parameters), State::Moving);
  while (this->Contour.Step() == State::Moving)
  {
    zvContour now = this->Contour.GetContour();
    ASSERT_EQ(now.size(), Count);
    ASSERT_GT(zvContourMath::GetArea(now), 0.0);
  }
  EXPECT_GT(zvContourMath::GetArea(this->Contour.GetContour()), 3000.0);
}

TEST_F(ActiveContour, OneThatShrinksToNothingIsBackAtItsBeginning)
{
  zvContourParameters parameters;
  parameters.Balloon = -1.0;
  parameters.TissueRange = 0.0;
  const zvContour ring = this->RingAround(2, 6.0);
  ASSERT_EQ(this->Begin(2, ring, parameters), State::Moving);
  EXPECT_EQ(RunToEnd(this->Contour), State::Vanished);
  EXPECT_EQ(this->Contour.GetMessage(), "The contour shrank to nothing.");
  EXPECT_NEAR(zvContourMath::GetMeanDistance(this->Contour.GetContour(), ring), 0.0, 1e-6);
  EXPECT_EQ(this->Contour.GetContour().size(), Count);
}

TEST_F(ActiveContour, OneThatRunsToTheBorderStaysInTheSlice)
{
  zvContourParameters parameters;
  parameters.TissueRange = 0.0;
  parameters.EdgePull = 0.0;
  parameters.Forces.EdgeContrast = 1e6;
  this->Plane = MiddlePlane(this->Volume, 2);
  const auto forces = ForcesOf(this->Volume, this->Plane, parameters.Forces);
  this->Contour.SetParameters(parameters);
  ASSERT_EQ(this->Contour.Begin(forces, this->RingAround(2, 6.0)), State::Moving);
  EXPECT_EQ(RunToEnd(this->Contour), State::AtBorder);
  EXPECT_EQ(this->Contour.GetMessage(), "The contour ran to the border of the slice.");
  for (const zvContourPoint& point : this->Contour.GetContour())
  {
    for (std::size_t a = 0; a < 2; ++a)
    {
      EXPECT_GE(point[a], forces->GetLow()[a]);
      EXPECT_LE(point[a], forces->GetHigh()[a]);
    }
  }
}

TEST_F(ActiveContour, OneThatDoesNotComeToRestSaysSo)
{
  zvContourParameters parameters;
  parameters.MostSteps = 12;
  ASSERT_EQ(this->Begin(2, this->RingAround(2, 6.0), parameters), State::Moving);
  EXPECT_EQ(RunToEnd(this->Contour), State::OutOfSteps);
  EXPECT_EQ(this->Contour.GetStepCount(), 12);
  EXPECT_EQ(this->Contour.GetMessage(), "The contour has not come to rest.");
  EXPECT_GT(zvContourMath::GetArea(this->Contour.GetContour()), 150.0);
}

TEST_F(ActiveContour, AtItsEndAStepDoesNothing)
{
  EXPECT_EQ(this->Contour.Step(), State::Idle);
  ASSERT_EQ(this->Begin(2, this->RingAround(2, 30.0)), State::Moving);
  RunToEnd(this->Contour);
  const zvContour end = this->Contour.GetContour();
  const int steps = this->Contour.GetStepCount();
  EXPECT_EQ(this->Contour.Step(), State::Settled);
  EXPECT_EQ(this->Contour.GetContour(), end);
  EXPECT_EQ(this->Contour.GetStepCount(), steps);
}

TEST_F(ActiveContour, GoesOnFromAContourThatWasChanged)
{
  ASSERT_EQ(this->Begin(2, this->RingAround(2, 30.0)), State::Moving);
  const double middle = this->Contour.GetTissue().Middle;
  RunToEnd(this->Contour);
  EXPECT_EQ(this->Contour.Take(this->RingAround(2, 8.0)), State::Moving);
  EXPECT_EQ(this->Contour.GetStepCount(), 0);
  EXPECT_EQ(this->Contour.GetTissue().Middle, middle);
  EXPECT_EQ(RunToEnd(this->Contour), State::Settled);
  EXPECT_GE(this->GetDice(), 0.98);
}

TEST_F(ActiveContour, WhatIsNoContourIsRefused)
{
  const std::string none = "There is no contour to begin with.";
  const std::string small = "The contour is too small, or lies beside the slice.";
  zvContour lost = this->RingAround(2, 6.0);
  lost[3][1] = NaN;
  EXPECT_EQ(this->Begin(2, {}), State::Refused);
  EXPECT_EQ(this->Contour.GetMessage(), none);
  EXPECT_EQ(this->Begin(2, lost), State::Refused);
  EXPECT_EQ(this->Contour.GetMessage(), none);
  EXPECT_EQ(this->Begin(2, this->RingAround(2, 20.0, 7)), State::Refused);
  EXPECT_EQ(this->Contour.GetMessage(), none);
  EXPECT_EQ(this->Begin(2, this->RingAround(2, 0.5)), State::Refused);
  EXPECT_EQ(this->Contour.GetMessage(), small);
  const zvContour beside = zvContourMath::MakeRing({ { 500.0, 70.0 } }, 20.0, Count);
  EXPECT_EQ(this->Begin(2, beside), State::Refused);
  EXPECT_EQ(this->Contour.GetMessage(), small);
  EXPECT_EQ(this->Contour.GetContour(), beside);
  EXPECT_EQ(this->Contour.Step(), State::Refused);
  EXPECT_EQ(zvActiveContour().Take(this->RingAround(2, 6.0)), State::Refused);
}

TEST_F(ActiveContour, ASliceWithoutAnEdgeIsRefused)
{
  const zvContour ring = this->RingAround(2, 6.0);
  this->Volume = zvtest::MakeConstantVolume(40.0, Anisotropic());
  EXPECT_EQ(this->Begin(2, ring), State::Refused);
  EXPECT_EQ(this->Contour.GetMessage(), "The slice is even: there is no edge to go to.");
  EXPECT_EQ(this->Contour.GetContour(), ring);
  this->Volume = zvtest::MakeConstantVolume(NaN, Anisotropic(VTK_FLOAT));
  EXPECT_EQ(this->Begin(2, ring), State::Refused);
  EXPECT_EQ(this->Contour.GetMessage(), "The slice has no values.");
  EXPECT_EQ(this->Contour.Begin(nullptr, ring), State::Refused);
  EXPECT_EQ(this->Contour.GetMessage(), "The slice has no values.");
}

TEST_F(ActiveContour, HolesInTheVoxelsDoNotStopIt)
{
  this->Volume = MakeEllipsoid(VTK_FLOAT);
  zvtest::Dice dice(5);
  for (vtkIdType i = 0; i < this->Volume->GetNumberOfPoints(); ++i)
  {
    if (dice.Chance(0.1))
    {
      static_cast<float*>(this->Volume->GetScalarPointer())[i] = static_cast<float>(NaN);
    }
  }
  ASSERT_EQ(this->Begin(2, this->RingAround(2, 6.0)), State::Moving);
  EXPECT_EQ(RunToEnd(this->Contour), State::Settled);
  EXPECT_GE(this->GetDice(), 0.97);
}

TEST_F(ActiveContour, ParametersThatAreNoNumbersBreakNothing)
{
  zvContourParameters parameters;
  parameters.StepLength = NaN;
  ASSERT_EQ(this->Begin(2, this->RingAround(2, 6.0), parameters), State::Moving);
  const zvContour before = this->Contour.GetContour();
  EXPECT_EQ(this->Contour.Step(), State::Broken);
  EXPECT_EQ(this->Contour.GetMessage(), "The contour could not be moved any further.");
  EXPECT_EQ(this->Contour.GetContour(), before);
}

//------------------------------------------------------------------------------
class ContourWalk : public zvtest::QuietTest
{
protected:
  void Begin(int axis, double radius = 10.0)
  {
    const zvContourPlane plane = MiddlePlane(this->Volume, axis);
    if (this->IsWhole)
    {
      this->Parameters.First = 0;
      this->Parameters.Last = this->Volume->GetDimensions()[axis] - 1;
    }
    this->Walk.Begin(this->Volume, plane,
      zvContourMath::MakeRing(plane.FromWorld(Middle.data()), radius, Count), this->Parameters);
  }

  // Of the whole volume.
  double GetDice()
  {
    const auto mask = this->Walk.GetStack().MakeMask(this->Volume);
    double ours = 0.0, theirs = 0.0, both = 0.0;
    for (vtkIdType i = 0; i < this->Volume->GetNumberOfPoints(); ++i)
    {
      const bool isOurs =
        mask != nullptr && static_cast<unsigned char*>(mask->GetScalarPointer())[i] == 0;
      const bool isTheirs = this->IsInBody(i);
      ours += isOurs ? 1.0 : 0.0;
      theirs += isTheirs ? 1.0 : 0.0;
      both += isOurs && isTheirs ? 1.0 : 0.0;
    }
    return 2.0 * both / (ours + theirs);
  }

  bool IsInBody(vtkIdType id)
  {
    std::array<double, 3> world;
    this->Volume->GetPoint(id, world.data());
    return Ellipsoid(Middle, HalfAxes)(world);
  }

  bool IsWhole = true;
  vtkSmartPointer<vtkImageData> Volume = MakeEllipsoid();
  zvWalkParameters Parameters;
  zvContourWalk Walk;
};

TEST_F(ContourWalk, FindsABodyAcrossEveryAxis)
{
  for (int axis = 0; axis < 3; ++axis)
  {
    this->Begin(axis);
    EXPECT_TRUE(this->Walk.IsUnderWay());
    ASSERT_TRUE(RunToEnd(this->Walk));
    EXPECT_FALSE(this->Walk.IsUnderWay());
    EXPECT_GE(this->GetDice(), 0.97) << "axis " << axis;
    EXPECT_EQ(this->Walk.GetProgress(), 1.0);
    EXPECT_EQ(this->Walk.Step(), Event::Idle);
    // Above and below the body it ends by itself.
    const auto notes = this->Walk.GetNotes();
    ASSERT_EQ(notes.size(), 2U) << "axis " << axis;
    for (const std::string& note : notes)
    {
      EXPECT_THAT(note,
        testing::AnyOf(testing::EndsWith(": The contour shrank to nothing."),
          testing::EndsWith(": The slice is even: there is no edge to go to.")));
    }
  }
}

TEST_F(ContourWalk, TheBackgroundFindsTheSame)
{
  this->Begin(2);
  ASSERT_TRUE(RunToEnd(this->Walk));
  zvContourWalk other;
  other.SetInBackground(true);
  const zvContourPlane plane = MiddlePlane(this->Volume, 2);
  other.Begin(this->Volume, plane,
    zvContourMath::MakeRing(plane.FromWorld(Middle.data()), 10.0, Count), this->Parameters);
  ASSERT_TRUE(RunToEnd(other));
  EXPECT_EQ(other.GetStack().GetContours(), this->Walk.GetStack().GetContours());
  EXPECT_EQ(other.GetNotes(), this->Walk.GetNotes());
}

TEST_F(ContourWalk, EventsTellTheWay)
{
  this->IsWhole = false;
  this->Begin(2);
  const int start = this->Walk.GetPlane().GetSlice();
  this->Parameters.First = start - 1;
  this->Parameters.Last = start + 1;
  const zvContourPlane plane = this->Walk.GetPlane();
  this->Walk.Begin(this->Volume, plane,
    zvContourMath::MakeRing(plane.FromWorld(Middle.data()), 10.0, Count), this->Parameters);
  std::vector<std::pair<Event, int>> told;
  double progress = 0.0;
  for (Event event = Event::Waiting; event != Event::Ended;)
  {
    const int slice = this->Walk.GetPlane().GetSlice();
    const bool isFirst = this->Walk.GetPrevious().empty();
    EXPECT_EQ(isFirst, slice == start);
    event = this->Walk.Step();
    EXPECT_GE(this->Walk.GetProgress(), progress);
    progress = this->Walk.GetProgress();
    if (event != Event::Moved)
    {
      told.emplace_back(event, slice);
    }
    if (event == Event::Entered && !isFirst)
    {
      // Each slice begins with the contour of the one before.
      EXPECT_EQ(this->Walk.GetContour(), this->Walk.GetPrevious());
    }
  }
  EXPECT_THAT(told,
    ElementsAre(std::pair(Event::Entered, start), std::pair(Event::Kept, start),
      std::pair(Event::Entered, start + 1), std::pair(Event::Kept, start + 1),
      std::pair(Event::Entered, start - 1), std::pair(Event::Ended, start - 1)));
  EXPECT_EQ(this->Walk.GetStack().GetCount(), 3);
  EXPECT_TRUE(this->Walk.GetNotes().empty());
  EXPECT_EQ(progress, 1.0);
}

TEST_F(ContourWalk, WithOneSliceItStaysThere)
{
  this->IsWhole = false;
  this->Begin(2);
  ASSERT_TRUE(RunToEnd(this->Walk));
  EXPECT_EQ(this->Walk.GetStack().GetCount(), 1);
  EXPECT_NE(this->Walk.GetStack().Find(MiddlePlane(this->Volume, 2).GetSlice()), nullptr);
  EXPECT_TRUE(this->Walk.GetNotes().empty());
  EXPECT_TRUE(this->Walk.GetPrevious().empty());
}

TEST_F(ContourWalk, InOneSliceItTellsWhyItStopped)
{
  this->IsWhole = false;
  this->Parameters.Contour.Balloon = -1.0;
  this->Parameters.Contour.TissueRange = 0.0;
  this->Begin(2);
  ASSERT_TRUE(RunToEnd(this->Walk));
  EXPECT_TRUE(this->Walk.GetStack().IsEmpty());
  EXPECT_THAT(this->Walk.GetNotes(), ElementsAre("The contour shrank to nothing."));
  // Nothing is lost: the ring is there again.
  EXPECT_NEAR(zvContourMath::GetArea(this->Walk.GetContour()), 100.0 * vtkMath::Pi(), 1.0);

  this->Parameters = {};
  this->Parameters.Contour.MostSteps = 5;
  this->Begin(2);
  ASSERT_TRUE(RunToEnd(this->Walk));
  EXPECT_EQ(this->Walk.GetStack().GetCount(), 1);
  EXPECT_THAT(this->Walk.GetNotes(), ElementsAre("The contour has not come to rest."));
}

TEST_F(ContourWalk, SlicesInWhichItDoesNotRestAreCounted)
{
  this->Parameters.Contour.MostSteps = 5;
  this->IsWhole = false;
  const int start = MiddlePlane(this->Volume, 2).GetSlice();
  this->Parameters.First = start - 2;
  this->Begin(2, 10.0);
  ASSERT_TRUE(RunToEnd(this->Walk));
  EXPECT_EQ(this->Walk.GetStack().GetCount(), 3);
  EXPECT_THAT(
    this->Walk.GetNotes(), ElementsAre("Slices in which the contour did not come to rest: 3."));
}

TEST_F(ContourWalk, ALeakEndsADirection)
{
  // From one slice on the inside is everywhere.
  const int start = MiddlePlane(this->Volume, 2).GetSlice();
  for (int k = start + 3; k < 40; ++k)
  {
    for (int j = 1; j < 59; ++j)
    {
      for (int i = 1; i < 99; ++i)
      {
        this->Volume->SetScalarComponentFromDouble(i, j, k, 0, 300.0);
      }
    }
  }
  this->Begin(2);
  ASSERT_TRUE(RunToEnd(this->Walk));
  EXPECT_EQ(this->Walk.GetStack().Find(start + 3), nullptr);
  EXPECT_NE(this->Walk.GetStack().Find(start + 2), nullptr);
  EXPECT_NE(this->Walk.GetStack().Find(start - 5), nullptr);
  EXPECT_EQ(this->Walk.GetNotes().at(0),
    "Slice " + std::to_string(start + 3) + ": The contour leaked into its surroundings.");

  this->Parameters.MostGrowth = 0.0;
  this->Begin(2);
  ASSERT_TRUE(RunToEnd(this->Walk));
  EXPECT_NE(this->Walk.GetStack().Find(start + 3), nullptr);
}

TEST_F(ContourWalk, ASliceThatIsNoGoodEndsADirection)
{
  this->Volume = MakeEllipsoid(VTK_FLOAT);
  const int start = MiddlePlane(this->Volume, 2).GetSlice();
  for (int j = 0; j < 60; ++j)
  {
    for (int i = 0; i < 100; ++i)
    {
      this->Volume->SetScalarComponentFromDouble(i, j, start + 2, 0, NaN);
      this->Volume->SetScalarComponentFromDouble(i, j, start - 3, 0, 5.0);
    }
  }
  this->Begin(2);
  ASSERT_TRUE(RunToEnd(this->Walk));
  EXPECT_EQ(this->Walk.GetStack().GetCount(), 4);
  EXPECT_THAT(this->Walk.GetNotes(),
    ElementsAre("Slice " + std::to_string(start + 2) + ": The slice has no values.",
      "Slice " + std::to_string(start - 3) + ": The slice is even: there is no edge to go to.",
      "Voxels without a value, taken as their neighbours: 6000."));
}

TEST_F(ContourWalk, ABeginningThatIsNoGoodEndsIt)
{
  this->Begin(2, 0.1);
  ASSERT_TRUE(RunToEnd(this->Walk));
  EXPECT_TRUE(this->Walk.GetStack().IsEmpty());
  EXPECT_EQ(this->Walk.GetContour().size(), Count);
  EXPECT_THAT(this->Walk.GetNotes(),
    ElementsAre("Slice " + std::to_string(MiddlePlane(this->Volume, 2).GetSlice()) +
      ": The contour is too small, or lies beside the slice."));
}

TEST_F(ContourWalk, GoesOnWithAContourThatWasChanged)
{
  this->IsWhole = false;
  this->Begin(2);
  for (int step = 0; step < 12; ++step)
  {
    this->Walk.Step();
  }
  const zvContourPlane plane = this->Walk.GetPlane();
  const zvContour changed = zvContourMath::MakeRing(plane.FromWorld(Middle.data()), 20.0, 60);
  this->Parameters.Contour.StepLength = 0.25;
  this->Walk.Resume(changed, this->Parameters);
  EXPECT_EQ(this->Walk.GetContour(), changed);
  ASSERT_EQ(this->Walk.Step(), Event::Moved);
  EXPECT_EQ(this->Walk.GetContour().size(), 60U);
  EXPECT_EQ(this->Walk.GetStepCount(), 1);
  EXPECT_LT(zvContourMath::GetMeanDistance(this->Walk.GetContour(), changed), 0.26);
  ASSERT_TRUE(RunToEnd(this->Walk));
  EXPECT_EQ(this->Walk.GetStack().GetCount(), 1);
}

TEST_F(ContourWalk, GoesOnCountingWithAContourThatWasLeftAlone)
{
  this->IsWhole = false;
  this->Begin(2);
  for (int step = 0; step < 12; ++step)
  {
    this->Walk.Step();
  }
  const int count = this->Walk.GetStepCount();
  this->Parameters.Contour.Balloon = -1.0;
  const double area = zvContourMath::GetArea(this->Walk.GetContour());
  this->Walk.Resume(this->Walk.GetContour(), this->Parameters);
  EXPECT_EQ(this->Walk.GetStepCount(), count);
  ASSERT_EQ(this->Walk.Step(), Event::Moved);
  EXPECT_EQ(this->Walk.GetStepCount(), count + 1);
  EXPECT_LT(zvContourMath::GetArea(this->Walk.GetContour()), area); // the new parameters act
}

TEST_F(ContourWalk, IsForgottenInTheMiddleOfItsWay)
{
  this->Walk.SetInBackground(true);
  this->Begin(2);
  this->Walk.Step();
  this->Walk.Clear();
  EXPECT_FALSE(this->Walk.IsUnderWay());
  EXPECT_EQ(this->Walk.Step(), Event::Idle);
  EXPECT_TRUE(this->Walk.GetContour().empty());
  EXPECT_EQ(this->Walk.GetForces(), nullptr);
  EXPECT_EQ(this->Walk.GetProgress(), 0.0);
  this->Begin(2); // and left alone while it runs
}

//------------------------------------------------------------------------------
// The real thing: the built-in head, and the head of an MRI beside its brain.
class ContourOnHeads : public zvtest::QuietTest
{
protected:
  // The Dice of a ring that has come to rest in the phantom's middle slice with one of its
  // ellipses, given in half sides of the cube with y to the front.
  double FindEllipse(const zvContourPoint& centre, const zvContourPoint& halfAxes,
    const zvContourPoint& ringCentre, double ringRadius, const zvContourParameters& parameters)
  {
    zvLoadProgress progress;
    const auto image = zvHeadPhantom::Make(zvHeadPhantom::UsualSide, progress).Image;
    const zvContourPlane plane(image, 2, zvHeadPhantom::UsualSide / 2);
    zvActiveContour contour;
    contour.SetParameters(parameters);
    EXPECT_EQ(contour.Begin(ForcesOf(image, plane, parameters.Forces),
                zvContourMath::MakeRing(ringCentre, ringRadius, Count)),
      State::Moving);
    EXPECT_EQ(RunToEnd(contour), State::Settled);
    constexpr double half = 128.0; // millimetres
    return DiceOf(contour.GetContour(), image, plane,
      [&](int i, int j, int)
      {
        const double x = image->GetOrigin()[0] + i * image->GetSpacing()[0];
        const double y = -(image->GetOrigin()[1] + j * image->GetSpacing()[1]);
        return std::pow((x - half * centre[0]) / (half * halfAxes[0]), 2) +
          std::pow((y - half * centre[1]) / (half * halfAxes[1]), 2) <=
          1.0;
      });
  }

  void Report(const std::string& what, double dice)
  {
    this->RecordProperty(what, std::to_string(dice));
  }
};

TEST_F(ContourOnHeads, ARingRoundThePhantomShrinksToItsSkin)
{
  zvContourParameters parameters;
  parameters.Balloon = -1.0;
  const double dice =
    this->FindEllipse({ { 0, 0 } }, { { 0.69, 0.92 } }, { { 0, 0 } }, 125.0, parameters);
  this->Report("PhantomSkin", dice);
  EXPECT_GE(dice, 0.97);
}

TEST_F(ContourOnHeads, ARingInThePhantomGrowsToItsBrain)
{
  const double dice =
    this->FindEllipse({ { 0, -0.0184 } }, { { 0.6624, 0.874 } }, { { 0, 0 } }, 70.0, {});
  this->Report("PhantomBrain", dice);
  EXPECT_GE(dice, 0.97);
}

TEST_F(ContourOnHeads, ARingInTheMriGrowsToItsBrain)
{
  const std::string head = zvVolumeReader::FindExampleVolume();
  ASSERT_FALSE(head.empty()) << "the example of packages.txt is not installed";
  const std::string folder = head.substr(0, head.rfind('/') + 1);
  zvLoadProgress progress;
  const auto image = zvVolumeReader::Read(head, progress).Volume.Image;
  const auto brain = zvVolumeReader::Read(folder + "ch2bet.nii.gz", progress).Volume.Image;
  ASSERT_NE(image, nullptr);
  ASSERT_NE(brain, nullptr);
  ASSERT_EQ(brain->GetNumberOfPoints(), image->GetNumberOfPoints());
  const zvContourPlane plane(image, 2, image->GetDimensions()[2] / 2);
  zvActiveContour contour;
  double centre[3];
  image->GetCenter(centre);
  ASSERT_EQ(contour.Begin(ForcesOf(image, plane),
              zvContourMath::MakeRing(plane.FromWorld(centre), 30.0, Count)),
    State::Moving);
  EXPECT_EQ(RunToEnd(contour), State::Settled);
  const double dice = DiceOf(contour.GetContour(), image, plane,
    [&](int i, int j, int k) { return brain->GetScalarComponentAsDouble(i, j, k, 0) > 0.0; });
  this->Report("MriBrain", dice);
  EXPECT_GE(dice, 0.95);
}
