#include "zvReslicePlane.h"

#include "vtkImageReslice.h"
#include "vtkMath.h"
#include "vtkMatrix4x4.h"
#include "vtkNew.h"
#include "vtkPlaneSource.h"
#include "vtkTransform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace
{
using zvReslicePlane::Corners;

void ExpectPoint(const double* actual, double x, double y, double z)
{
  EXPECT_NEAR(actual[0], x, 1e-12);
  EXPECT_NEAR(actual[1], y, 1e-12);
  EXPECT_NEAR(actual[2], z, 1e-12);
}

const double Starts[3] = { 1.0, 2.0, 3.0 };
const double Stops[3] = { 10.0, 20.0, 30.0 };
}

TEST(ReslicePlane, OrientationsOutOfRangeCountAsY)
{
  EXPECT_EQ(zvReslicePlane::NormalAxis(0), 0);
  EXPECT_EQ(zvReslicePlane::NormalAxis(1), 1);
  EXPECT_EQ(zvReslicePlane::NormalAxis(2), 2);
  EXPECT_EQ(zvReslicePlane::NormalAxis(3), 1);
  EXPECT_EQ(zvReslicePlane::NormalAxis(-7), 1);
}

TEST(ReslicePlane, TheCornersOfASourceAreReadAndWritten)
{
  const Corners plane = zvReslicePlane::Across(2, Starts, Stops, 5.0);
  vtkNew<vtkPlaneSource> source;
  zvReslicePlane::WriteCorners(plane, source.Get());
  ExpectPoint(source->GetOrigin(), 1.0, 2.0, 5.0);
  ExpectPoint(source->GetPoint1(), 10.0, 2.0, 5.0);
  ExpectPoint(source->GetPoint2(), 1.0, 20.0, 5.0);
  const Corners read = zvReslicePlane::ReadCorners(source.Get());
  ExpectPoint(read.Origin, 1.0, 2.0, 5.0);
  ExpectPoint(read.Point1, 10.0, 2.0, 5.0);
  ExpectPoint(read.Point2, 1.0, 20.0, 5.0);
}

TEST(ReslicePlane, AnUpperEndOfAThousandIsTooLargeToBeEnlarged)
{
  const int most[6] = { 0, 999, -5000, 999, 0, 999 };
  EXPECT_TRUE(zvReslicePlane::MayBeEnlarged(most));
  for (int axis = 0; axis < 3; ++axis)
  {
    int tooLarge[6];
    std::copy_n(most, 6, tooLarge);
    tooLarge[2 * axis + 1] = 1000;
    EXPECT_FALSE(zvReslicePlane::MayBeEnlarged(tooLarge)) << axis;
  }
}

TEST(ReslicePlane, APlaneAcrossXRunsAlongYAndZ)
{
  const Corners plane = zvReslicePlane::Across(0, Starts, Stops, 5.0);
  ExpectPoint(plane.Origin, 5.0, 2.0, 3.0);
  ExpectPoint(plane.Point1, 5.0, 20.0, 3.0);
  ExpectPoint(plane.Point2, 5.0, 2.0, 30.0);
}

TEST(ReslicePlane, APlaneAcrossYRunsAlongZAndX)
{
  const Corners plane = zvReslicePlane::Across(1, Starts, Stops, 5.0);
  ExpectPoint(plane.Origin, 1.0, 5.0, 3.0);
  ExpectPoint(plane.Point1, 1.0, 5.0, 30.0);
  ExpectPoint(plane.Point2, 10.0, 5.0, 3.0);
}

TEST(ReslicePlane, APlaneAcrossZRunsAlongXAndY)
{
  const Corners plane = zvReslicePlane::Across(2, Starts, Stops, 5.0);
  ExpectPoint(plane.Origin, 1.0, 2.0, 5.0);
  ExpectPoint(plane.Point1, 10.0, 2.0, 5.0);
  ExpectPoint(plane.Point2, 1.0, 20.0, 5.0);
}

TEST(ReslicePlane, AnEnlargedPlaneSpansItsHalfWidthsAndKeepsItsPlaceAlongTheNormal)
{
  const double center[3] = { 5.0, 6.0, 7.0 };
  const double halfWidth[3] = { 10.0, 20.0, 30.0 };
  Corners plane = { { 1.0, 1.5, 0.0 }, { 2.0, 2.5, 0.0 }, { 3.0, 3.5, 0.0 } };
  const Corners acrossY = zvReslicePlane::Enlarged(plane, 1, center, halfWidth);
  ExpectPoint(acrossY.Origin, -5.0, 1.5, -23.0);
  ExpectPoint(acrossY.Point1, -5.0, 2.5, 37.0);
  ExpectPoint(acrossY.Point2, 15.0, 3.5, -23.0);
  const Corners acrossX = zvReslicePlane::Enlarged(plane, 0, center, halfWidth);
  ExpectPoint(acrossX.Origin, 1.0, -14.0, -23.0);
  ExpectPoint(acrossX.Point1, 2.0, 26.0, -23.0);
  ExpectPoint(acrossX.Point2, 3.0, -14.0, 37.0);
}

TEST(ReslicePlane, ResizingMovesEachSideByHalfTheStepsInWholeMillimetres)
{
  const Corners plane = zvReslicePlane::Across(2, Starts, Stops, 5.0);
  const int from[2] = { 10, 10 };
  const int to[2] = { 17, 5 }; // 3 steps more, 2 steps less a side
  const double spacing[2] = { 0.7, 1.5 };
  const Corners resized = zvReslicePlane::Resized(plane, from, to, spacing);
  ExpectPoint(resized.Origin, -1.0, 5.0, 5.0); // 3 * 0.7 is 2 whole millimetres, 2 * 1.5 is 3
  ExpectPoint(resized.Point1, 12.0, 5.0, 5.0);
  ExpectPoint(resized.Point2, -1.0, 17.0, 5.0);
}

TEST(ReslicePlane, ASmallChangeOfSizeMovesNothing)
{
  const Corners plane = zvReslicePlane::Across(2, Starts, Stops, 5.0);
  const int from[2] = { 10, 10 };
  const int to[2] = { 11, 12 };
  const double spacing[2] = { 5.0, 0.9 };
  const Corners resized = zvReslicePlane::Resized(plane, from, to, spacing);
  ExpectPoint(resized.Origin, 1.0, 2.0, 5.0);
  ExpectPoint(resized.Point1, 10.0, 2.0, 5.0);
  ExpectPoint(resized.Point2, 1.0, 20.0, 5.0);
}

TEST(ReslicePlane, APlaneOfNoSizeIsResizedToNothing)
{
  const Corners plane = { { 1.0, 1.0, 1.0 }, { 1.0, 1.0, 1.0 }, { 1.0, 1.0, 1.0 } };
  const int from[2] = { 0, 0 };
  const int to[2] = { 100, 100 };
  const double spacing[2] = { 1.0, 1.0 };
  ExpectPoint(zvReslicePlane::Resized(plane, from, to, spacing).Point1, 1.0, 1.0, 1.0);
}

TEST(ReslicePlane, AllThreePointsTurn)
{
  vtkNew<vtkTransform> transform;
  transform->RotateZ(90.0);
  const Corners plane = zvReslicePlane::Across(2, Starts, Stops, 5.0);
  const Corners turned = zvReslicePlane::Turned(plane, transform);
  ExpectPoint(turned.Origin, -2.0, 1.0, 5.0);
  ExpectPoint(turned.Point1, -2.0, 10.0, 5.0);
  ExpectPoint(turned.Point2, -20.0, 1.0, 5.0);
}

TEST(ReslicePlane, TheAxesTakePlaneCoordinatesToTheWorld)
{
  const double s = std::sqrt(0.5);
  const double axis1[3] = { s, s, 0.0 };
  const double axis2[3] = { 0.0, 0.0, 1.0 };
  const double normal[3] = { s, -s, 0.0 };
  const double origin[3] = { 3.0, -4.0, 5.0 };
  vtkNew<vtkMatrix4x4> axes;
  zvReslicePlane::SetResliceAxes(axis1, axis2, normal, origin, axes);
  const double inPlane[4] = { 2.0, 3.0, 0.0, 1.0 };
  double world[4];
  axes->MultiplyPoint(inPlane, world);
  ExpectPoint(world, 3.0 + 2.0 * s, -4.0 + 2.0 * s, 8.0);
  EXPECT_EQ(axes->GetElement(3, 3), 1.0);
}

TEST(ReslicePlane, SettingTheSameAxesMarksTheMatrixModified)
{
  const double x[3] = { 1.0, 0.0, 0.0 };
  const double y[3] = { 0.0, 1.0, 0.0 };
  const double z[3] = { 0.0, 0.0, 1.0 };
  vtkNew<vtkMatrix4x4> axes;
  zvReslicePlane::SetResliceAxes(x, y, z, x, axes);
  const vtkMTimeType before = axes->GetMTime();
  zvReslicePlane::SetResliceAxes(x, y, z, x, axes);
  EXPECT_GT(axes->GetMTime(), before);
}

TEST(ReslicePlane, SamplesAreAPowerOfTwoThatCoversTheVoxels)
{
  const double axis[3] = { 0.0, 1.0, 0.0 };
  const double spacing[3] = { 9.0, -0.5, 9.0 };
  struct
  {
    double Size;
    int Extent;
  } const rows[] = { { 0.1, 1 }, { 0.5, 1 }, { 0.6, 2 }, { 1.0, 2 }, { 1.1, 4 }, { 128.0, 256 },
    { 128.1, 512 } };
  for (const auto& row : rows)
  {
    SCOPED_TRACE(row.Size);
    const zvReslicePlane::Sampling sampling = zvReslicePlane::SampleAlong(axis, row.Size, spacing);
    EXPECT_EQ(sampling.Extent, row.Extent);
    EXPECT_DOUBLE_EQ(sampling.Voxels, row.Size / 0.5);
    EXPECT_DOUBLE_EQ(sampling.Spacing, row.Size / row.Extent);
  }
}

TEST(ReslicePlane, AlongADiagonalTheSpacingsAddUp)
{
  const double axis[3] = { 0.6, 0.0, -0.8 };
  const double spacing[3] = { 1.0, 7.0, 2.0 };
  EXPECT_DOUBLE_EQ(zvReslicePlane::SampleAlong(axis, 22.0, spacing).Voxels, 10.0);
}

TEST(ReslicePlane, APlaneOfNoWidthHasOneSampleAMillimetreWide)
{
  const double axis[3] = { 1.0, 0.0, 0.0 };
  const double spacing[3] = { 2.0, 2.0, 2.0 };
  const zvReslicePlane::Sampling sampling = zvReslicePlane::SampleAlong(axis, 0.0, spacing);
  EXPECT_EQ(sampling.Extent, 1);
  EXPECT_EQ(sampling.Spacing, 1.0);
}

TEST(ReslicePlane, TooManyVoxelsOrNoNumberOfThemGiveNoSamples)
{
  const double axis[3] = { 1.0, 0.0, 0.0 };
  const double ones[3] = { 1.0, 1.0, 1.0 };
  const double zeros[3] = { 0.0, 0.0, 0.0 };
  EXPECT_EQ(zvReslicePlane::SampleAlong(axis, 1073741823.0, ones).Extent, 1073741824);
  EXPECT_EQ(zvReslicePlane::SampleAlong(axis, 1073741824.0, ones).Extent, 0);
  const zvReslicePlane::Sampling without = zvReslicePlane::SampleAlong(axis, 5.0, zeros);
  EXPECT_EQ(without.Voxels, 2147483647.0);
  EXPECT_EQ(without.Extent, 0);
  const zvReslicePlane::Sampling lost = zvReslicePlane::SampleAlong(axis, std::nan(""), ones);
  EXPECT_EQ(lost.Extent, 0);
  EXPECT_EQ(lost.Spacing, 1.0);
}

TEST(ReslicePlane, ATurnKeepsItsCentre)
{
  const double center[3] = { 1.0, 2.0, 3.0 };
  const double axis[3] = { 0.0, 0.0, 2.0 };
  vtkNew<vtkTransform> transform;
  transform->Scale(5.0, 5.0, 5.0); // what was there does not count
  zvReslicePlane::SetTurn(center, 90.0, axis, transform);
  ExpectPoint(transform->TransformDoublePoint(1.0, 2.0, 3.0), 1.0, 2.0, 3.0);
  ExpectPoint(transform->TransformDoublePoint(2.0, 2.0, 7.0), 1.0, 3.0, 7.0);
}

TEST(ReslicePlane, EveryFactorthSampleIsMade)
{
  const zvReslicePlane::Sampling x{ 400.0, 512, 0.5 };
  const zvReslicePlane::Sampling y{ 2.0, 2, 3.0 };
  vtkNew<vtkImageReslice> reslice;
  zvReslicePlane::SetOutput(x, y, 4, reslice);
  ExpectPoint(reslice->GetOutputSpacing(), 2.0, 12.0, 1.0);
  ExpectPoint(reslice->GetOutputOrigin(), 0.0, 0.0, 0.0);
  const int expected[6] = { 0, 127, 0, -1, 0, 0 };
  EXPECT_TRUE(std::equal(expected, expected + 6, reslice->GetOutputExtent()));
}
