#include "zvSliceCross.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

namespace
{
void ExpectMove(const zvSliceCross::Move& move, int steps, int index)
{
  EXPECT_EQ(move.Steps, steps);
  EXPECT_EQ(move.Index, index);
}
}

TEST(SliceCross, StepsAreTruncatedTowardZero)
{
  EXPECT_EQ(zvSliceCross::WholeSteps(10.9, 5.0, 2.0), 2);
  EXPECT_EQ(zvSliceCross::WholeSteps(5.0, 10.9, 2.0), -2);
  EXPECT_EQ(zvSliceCross::WholeSteps(5.9, 5.0, 1.0), 0);
  EXPECT_EQ(zvSliceCross::WholeSteps(4.1, 5.0, 1.0), 0);
}

TEST(SliceCross, ANegativeSpacingTurnsTheStepsRound)
{
  EXPECT_EQ(zvSliceCross::WholeSteps(9.0, 5.0, -2.0), -2);
}

TEST(SliceCross, StepsOfNothingSensibleAreNone)
{
  EXPECT_EQ(zvSliceCross::WholeSteps(9.0, 5.0, 0.0), 0);
  EXPECT_EQ(zvSliceCross::WholeSteps(std::nan(""), 5.0, 1.0), 0);
  EXPECT_EQ(zvSliceCross::WholeSteps(9.0, 5.0, std::nan("")), 0);
  EXPECT_EQ(zvSliceCross::WholeSteps(1e30, 0.0, 1.0), INT_MAX);
  EXPECT_EQ(zvSliceCross::WholeSteps(-std::numeric_limits<double>::infinity(), 0.0, 1.0), INT_MIN);
}

TEST(SliceCross, ADragStopsAtBothEndsAndTellsTheStepsTaken)
{
  ExpectMove(zvSliceCross::Drag(4, 3, 9), 3, 7);
  ExpectMove(zvSliceCross::Drag(4, 30, 9), 5, 9);
  ExpectMove(zvSliceCross::Drag(4, -30, 9), -4, 0);
  ExpectMove(zvSliceCross::Drag(0, 0, 9), 0, 0);
  ExpectMove(zvSliceCross::Drag(5, INT_MAX, 9), 4, 9);
  ExpectMove(zvSliceCross::Drag(5, INT_MIN, 9), -5, 0);
}

TEST(SliceCross, AShiftWithinTheRangeTakesItsSteps)
{
  ExpectMove(zvSliceCross::Shift(4, 3, 9), 3, 7);
  ExpectMove(zvSliceCross::Shift(4, 5, 9), 5, 9);
  ExpectMove(zvSliceCross::Shift(4, -3, 9), -3, 1);
}

TEST(SliceCross, AShiftBeyondTheEndTakesTheOvershootByDesign)
{
  ExpectMove(zvSliceCross::Shift(7, 5, 9), 3, 10);
  ExpectMove(zvSliceCross::Shift(9, 1, 9), 1, 10);
}

TEST(SliceCross, AShiftBelowOneGoesToZero)
{
  ExpectMove(zvSliceCross::Shift(4, -4, 9), -4, 0);
  ExpectMove(zvSliceCross::Shift(4, -40, 9), -4, 0);
  ExpectMove(zvSliceCross::Shift(0, 0, 9), 0, 0);
  ExpectMove(zvSliceCross::Shift(5, INT_MIN, 9), -5, 0);
}

TEST(SliceCross, TheFootIsAFractionOfTheAxis)
{
  const double origin[3] = { 1, 2, 3 }, axis[3] = { 0, 4, 0 }, q[3] = { 7, 3, -5 };
  EXPECT_DOUBLE_EQ(zvSliceCross::FootParameter(q, origin, axis), 0.25);
}

TEST(SliceCross, TheFootOnAnAxisOfNoLengthIsItsStart)
{
  const double origin[3] = { 1, 2, 3 }, axis[3] = { 0, 0, 0 }, q[3] = { 7, 3, -5 };
  EXPECT_EQ(zvSliceCross::FootParameter(q, origin, axis), 0.0);
}
