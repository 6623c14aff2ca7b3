#include "zvImagePlaneFixture.h"

#include "vtkPointData.h"
#include "vtkPoints.h"

#include <array>
#include <vector>

namespace
{
class ImagePlaneGeometry : public ImagePlaneTest
{
protected:
  // The plane's height along z, as pushed along its normal.
  double Height() { return this->Widget->PlaneSource->GetOrigin()[2]; }

  // Move by a motion along z.
  void PushBy(double motion)
  {
    double from[3] = { 1.0, 2.0, 3.0 };
    double to[3] = { 1.0, 2.0, 3.0 + motion };
    this->Widget->Push(from, to);
  }

  // Put the plane at a height that need not be a slice, outline and reslice included.
  void PutAt(double height)
  {
    this->Widget->PlaneSource->Push(height - this->Height());
    this->Refresh();
    this->Widget->BuildRepresentation();
  }

  // A plane square to y that counts as oblique, at a given y.
  void PutObliqueAt(double y)
  {
    this->Widget->SetPlaneOrientation(3);
    this->Widget->PlaneSource->Push(y - this->Widget->PlaneSource->GetOrigin()[1]);
    this->Refresh();
    this->Widget->BuildRepresentation();
  }

  double ResliceHeight() { return this->Widget->ResliceAxes->GetElement(2, 3); }
};

const double Half = 0.5 * 9.0 * std::sqrt(3.0); // half the diagonal of the cube of ten
}

// ---- placement ----

TEST_F(ImagePlaneGeometry, AcrossZThePlaneLiesAtTheUpperBound)
{
  this->Place(zvtest::UnequalVolume(), 2);
  EXPECT_TRUE(this->PlaneIs({ { -2, 4.5, 19 } }, { { 1.5, 4.5, 19 } }, { { -2, 10.75, 19 } }));
  EXPECT_TRUE(IsPoint(this->Widget->PlaneSource->GetNormal(), 0, 0, 1));
  EXPECT_EQ(this->Widget->Dimensions[0], 7);
  EXPECT_EQ(this->Widget->Dimensions[1], 5);
  EXPECT_EQ(this->Widget->GetPlaneOrientation(), 2);
  EXPECT_EQ(this->Widget->SliceAxis, 2);
  EXPECT_EQ(this->Widget->GetNumberOfSlices(), 4);
  EXPECT_TRUE(IsPoint(this->Widget->RotationCenter, -0.25, 7.625, 19));
}

TEST_F(ImagePlaneGeometry, AcrossXThePlaneLiesAtTheUpperBound)
{
  this->Place(zvtest::UnequalVolume(), 0);
  EXPECT_TRUE(this->PlaneIs({ { 1.5, 4.5, 10 } }, { { 1.5, 10.75, 10 } }, { { 1.5, 4.5, 19 } }));
  EXPECT_TRUE(IsPoint(this->Widget->PlaneSource->GetNormal(), 1, 0, 0));
  EXPECT_EQ(this->Widget->Dimensions[0], 5);
  EXPECT_EQ(this->Widget->Dimensions[1], 3);
  EXPECT_EQ(this->Widget->SliceAxis, 0);
  EXPECT_EQ(this->Widget->GetNumberOfSlices(), 8);
  EXPECT_TRUE(IsPoint(this->Widget->RotationCenter, 1.5, 7.625, 14.5));
}

TEST_F(ImagePlaneGeometry, AcrossYThePlaneLiesAtTheUpperBound)
{
  this->Place(zvtest::UnequalVolume(), 1);
  EXPECT_TRUE(this->PlaneIs({ { -2, 10.75, 10 } }, { { -2, 10.75, 19 } }, { { 1.5, 10.75, 10 } }));
  EXPECT_TRUE(IsPoint(this->Widget->PlaneSource->GetNormal(), 0, 1, 0));
  EXPECT_EQ(this->Widget->Dimensions[0], 3);
  EXPECT_EQ(this->Widget->Dimensions[1], 7);
  EXPECT_EQ(this->Widget->SliceAxis, 1);
  EXPECT_EQ(this->Widget->GetNumberOfSlices(), 6);
  EXPECT_TRUE(IsPoint(this->Widget->RotationCenter, -0.25, 10.75, 14.5));
}

TEST_F(ImagePlaneGeometry, AnyOtherOrientationIsPlacedAcrossY)
{
  this->SetVolume(zvtest::UnequalVolume());
  for (int orientation : { 3, 7, -1 })
  {
    SCOPED_TRACE(orientation);
    this->Widget->SetPlaneOrientation(orientation);
    EXPECT_EQ(this->Widget->GetPlaneOrientation(), orientation);
    EXPECT_EQ(this->Widget->SliceAxis, orientation);
    EXPECT_TRUE(
      this->PlaneIs({ { -2, 10.75, 10 } }, { { -2, 10.75, 19 } }, { { 1.5, 10.75, 10 } }));
    EXPECT_EQ(this->Widget->Dimensions[0], 3);
    EXPECT_EQ(this->Widget->Dimensions[1], 7);
  }
}

TEST_F(ImagePlaneGeometry, AShiftedExtentIsPlacedByItsWorldPosition)
{
  this->Place(zvtest::ShiftedExtentVolume(), 2);
  EXPECT_TRUE(this->PlaneIs({ { -0.5, 2, 52 } }, { { 3, 2, 52 } }, { { -0.5, 8.25, 52 } }));
  EXPECT_EQ(this->Widget->GetNumberOfSlices(), 4);
  EXPECT_EQ(this->Widget->GetSliceIndex(), 3);
  EXPECT_EQ(this->Widget->Dimensions[0], 7);
}

TEST_F(ImagePlaneGeometry, ANegativeSpacingSwapsStartAndStopOfItsAxis)
{
  // x runs from -2 down to -5.5, y from 4.5 down to -1.75, z from 10 down to 1.
  this->Place(zvtest::NegativeSpacingVolume({ 0, 1, 2 }), 2);
  EXPECT_TRUE(this->PlaneIs({ { -5.5, -1.75, 10 } }, { { -2, -1.75, 10 } }, { { -5.5, 4.5, 10 } }));
  EXPECT_TRUE(IsPoint(this->Widget->PlaneSource->GetNormal(), 0, 0, 1));
  this->Widget->SetPlaneOrientation(0);
  EXPECT_TRUE(this->PlaneIs({ { -2, -1.75, 1 } }, { { -2, 4.5, 1 } }, { { -2, -1.75, 10 } }));
  this->Widget->SetPlaneOrientation(1);
  EXPECT_TRUE(this->PlaneIs({ { -5.5, 4.5, 1 } }, { { -5.5, 4.5, 10 } }, { { -2, 4.5, 1 } }));
}

TEST_F(ImagePlaneGeometry, OnlyTheAxisOfNegativeSpacingIsSwapped)
{
  this->Place(zvtest::NegativeSpacingVolume({ 1 }), 2);
  EXPECT_TRUE(this->PlaneIs({ { -2, -1.75, 19 } }, { { 1.5, -1.75, 19 } }, { { -2, 4.5, 19 } }));
}

TEST_F(ImagePlaneGeometry, OrientationWithoutInputIsAnErrorThatStillStoresIt)
{
  this->Widget->SetPlaneOrientation(1);
  this->ExpectVtkError("zvImagePlaneWidget", "vtkPolyDataSourceWidget", this->Widget.get(),
    "SetInput() before setting plane orientation.");
  EXPECT_EQ(this->Widget->GetPlaneOrientation(), 1);
  EXPECT_EQ(this->Widget->SliceAxis, 1);
  EXPECT_EQ(this->Widget->ImageData, nullptr);
}

TEST_F(ImagePlaneGeometry, APlacementAfterAnUpdateWaitsForTheNextUpdate)
{
  this->Place(zvtest::UnequalVolume(), 2);
  this->Widget->UpdatePlane();
  this->Widget->SetPlaneOrientation(0);
  EXPECT_EQ(this->Widget->ResliceAxes->GetElement(2, 2), 1.0);
  // The cut plane has the image's centre and the orientation's normal until then.
  EXPECT_TRUE(IsPoint(this->Widget->CutPlane->GetOrigin(), -0.25, 7.625, 14.5));
  EXPECT_TRUE(IsPoint(this->Widget->CutPlane->GetNormal(), 1, 0, 0));
  this->Widget->UpdatePlane();
  EXPECT_EQ(this->Widget->ResliceAxes->GetElement(0, 2), 1.0);
  EXPECT_TRUE(IsPoint(this->Widget->CutPlane->GetOrigin(), 1.5, 7.625, 14.5));
}

TEST_F(ImagePlaneGeometry, TheCutPlaneHasTheNormalOfEachOrientation)
{
  this->SetVolume(zvtest::UnequalVolume());
  for (int orientation : { 0, 1, 2 })
  {
    SCOPED_TRACE(orientation);
    this->Refresh();
    this->Widget->SetPlaneOrientation(orientation);
    EXPECT_TRUE(IsPoint(
      this->Widget->CutPlane->GetNormal(), orientation == 0, orientation == 1, orientation == 2));
    EXPECT_TRUE(IsPoint(this->Widget->CutPlane->GetOrigin(), -0.25, 7.625, 14.5));
  }
}

TEST_F(ImagePlaneGeometry, PlacingBuildsTheOutline)
{
  this->Place(zvtest::UnequalVolume(), 2);
  vtkPoints* points = this->Widget->PlaneOutlinePolyData->GetPoints();
  EXPECT_TRUE(IsPoint(points->GetPoint(0), -2, 4.5, 19));
  EXPECT_TRUE(IsPoint(points->GetPoint(1), 1.5, 4.5, 19));
  EXPECT_TRUE(IsPoint(points->GetPoint(2), 1.5, 10.75, 19));
  EXPECT_TRUE(IsPoint(points->GetPoint(3), -2, 10.75, 19));
}

TEST_F(ImagePlaneGeometry, PlaceWidgetPutsThePlaneIntoTheMiddleOfABox)
{
  struct Row
  {
    int Orientation;
    zvtest::World Origin, Point1, Point2;
  };
  const Row rows[] = {
    { 0, { { 2, 10, 100 } }, { { 2, 16, 100 } }, { { 2, 10, 108 } } },
    { 1, { { 0, 13, 100 } }, { { 4, 13, 100 } }, { { 0, 13, 108 } } },
    { 2, { { 0, 10, 104 } }, { { 4, 10, 104 } }, { { 0, 16, 104 } } },
    { 3, { { 2, 10, 100 } }, { { 2, 16, 100 } }, { { 2, 10, 108 } } },
    { -4, { { 2, 10, 100 } }, { { 2, 16, 100 } }, { { 2, 10, 108 } } },
  };
  double box[6] = { 0, 4, 10, 16, 100, 108 };
  for (const Row& row : rows)
  {
    SCOPED_TRACE(row.Orientation);
    this->Widget->PlaneOrientation = row.Orientation;
    this->Widget->PlaceWidget(box);
    EXPECT_TRUE(this->PlaneIs(row.Origin, row.Point1, row.Point2));
    EXPECT_DOUBLE_EQ(this->Widget->InitialLength, std::sqrt(16.0 + 36.0 + 64.0));
    EXPECT_TRUE(IsPoint(this->Widget->PlaneOutlinePolyData->GetPoint(0), row.Origin[0],
      row.Origin[1], row.Origin[2]));
  }
}

TEST_F(ImagePlaneGeometry, PlaceWidgetHeedsThePlaceFactor)
{
  this->Widget->SetPlaceFactor(0.5);
  this->Widget->PlaneOrientation = 2;
  this->Widget->PlaceWidget(0, 4, 10, 16, 100, 108);
  EXPECT_TRUE(this->PlaneIs({ { 1, 11.5, 104 } }, { { 3, 11.5, 104 } }, { { 1, 14.5, 104 } }));
}

TEST_F(ImagePlaneGeometry, PlaceWidgetWithoutArgumentsTakesTheInputsBox)
{
  this->Place(zvtest::UnequalVolume(), 2);
  this->Widget->PlaceWidget();
  EXPECT_TRUE(
    this->PlaneIs({ { -2, 4.5, 14.5 } }, { { 1.5, 4.5, 14.5 } }, { { -2, 10.75, 14.5 } }));
}

TEST_F(ImagePlaneGeometry, PlaceWidgetUpdatesThePlaneIfAnythingHasChanged)
{
  this->Place(zvtest::UnequalVolume(), 2);
  this->Widget->UpdatePlane();
  this->Widget->PlaceWidget();
  EXPECT_EQ(this->ResliceHeight(), 19.0);
  this->Widget->Modified();
  this->Widget->PlaceWidget();
  EXPECT_EQ(this->ResliceHeight(), 14.5);
}

TEST_F(ImagePlaneGeometry, UpdatePlacementBringsEverythingUpToDate)
{
  this->Place(this->Cube(10), 2);
  this->Widget->UpdatePlane();
  this->Widget->PlaneSource->Push(-4.0);
  const vtkMTimeType before = this->Widget->GetMTime();
  this->Widget->UpdatePlacement();
  EXPECT_GT(this->Widget->GetMTime(), before);
  EXPECT_EQ(this->ResliceHeight(), 5.0);
  EXPECT_EQ(this->Widget->PlaneOutlinePolyData->GetPoint(0)[2], 5.0);
  EXPECT_EQ(this->Widget->MarginPolyData->GetPoint(0)[2], 5.0);
}

TEST_F(ImagePlaneGeometry, MarginsLieAtTheirFractionsOfThePlane)
{
  this->Place(zvtest::UnequalVolume(), 2); // 3.5 by 6.25 from (-2, 4.5, 19)
  this->Widget->SetMarginSizeX(0.1);
  this->Widget->SetMarginSizeY(0.2);
  this->Widget->UpdateMargins();
  const zvtest::World wanted[8] = { { { -2, 9.5, 19 } }, { { 1.5, 9.5, 19 } }, { { -2, 5.75, 19 } },
    { { 1.5, 5.75, 19 } }, { { -1.65, 4.5, 19 } }, { { -1.65, 10.75, 19 } }, { { 1.15, 4.5, 19 } },
    { { 1.15, 10.75, 19 } } };
  for (int i = 0; i < 8; ++i)
  {
    SCOPED_TRACE(i);
    EXPECT_TRUE(
      IsPoint(this->Widget->MarginPolyData->GetPoint(i), wanted[i][0], wanted[i][1], wanted[i][2]));
  }
}

TEST_F(ImagePlaneGeometry, NewMarginsMarkTheirDataAsChanged)
{
  this->Place(zvtest::UnequalVolume(), 2);
  const vtkMTimeType before = this->Widget->MarginPolyData->GetMTime();
  this->Widget->UpdateMargins();
  EXPECT_GT(this->Widget->MarginPolyData->GetMTime(), before);
}

// ---- slice index and position ----

TEST_F(ImagePlaneGeometry, AfterPlacingThePlaneIsTheLastOfItsSlices)
{
  this->Place(this->Cube(10), 2);
  EXPECT_EQ(this->Height(), this->Volume->GetBounds()[5]);
  EXPECT_EQ(this->Widget->GetSliceIndex(), 9);
  EXPECT_EQ(this->Widget->GetNumberOfSlices(), 10);
}

TEST_F(ImagePlaneGeometry, SliceIndexIsClampedToTheSlices)
{
  this->Place(this->Cube(10), 2);
  this->Widget->SetSliceIndex(3);
  this->Widget->SetSliceIndex(100);
  EXPECT_EQ(this->Widget->GetSliceIndex(), 9);
  EXPECT_EQ(this->Widget->ObliqueSliceIndex, 9);
  this->Widget->SetSliceIndex(-4);
  EXPECT_EQ(this->Widget->GetSliceIndex(), 0);
  EXPECT_EQ(this->Widget->ObliqueSliceIndex, 0);
  EXPECT_EQ(this->Height(), 0.0);
}

TEST_F(ImagePlaneGeometry, SliceIndexMovesByTheSpacingOfEachAxis)
{
  this->SetVolume(zvtest::UnequalVolume());
  const double wanted[3] = { -2.0 + 2 * 0.5, 4.5 + 2 * 1.25, 10.0 + 2 * 3.0 };
  for (int axis = 0; axis < 3; ++axis)
  {
    SCOPED_TRACE(axis);
    this->Widget->SetPlaneOrientation(axis);
    this->Widget->SetSliceIndex(2);
    EXPECT_EQ(this->Widget->GetSliceIndex(), 2);
    EXPECT_DOUBLE_EQ(this->Widget->PlaneSource->GetOrigin()[axis], wanted[axis]);
    EXPECT_DOUBLE_EQ(this->Widget->RotationCenter[axis], wanted[axis]);
    EXPECT_DOUBLE_EQ(this->Widget->GetSlicePosition(), wanted[axis]);
    EXPECT_DOUBLE_EQ(this->Widget->ResliceAxes->GetElement(axis, 3), wanted[axis]);
    EXPECT_DOUBLE_EQ(this->Widget->PlaneOutlinePolyData->GetPoint(2)[axis], wanted[axis]);
    EXPECT_DOUBLE_EQ(this->Widget->MarginPolyData->GetPoint(2)[axis], wanted[axis]);
  }
}

TEST_F(ImagePlaneGeometry, EverySliceIsReachedAndFoundAgain)
{
  for (const auto& options : { zvtest::UnequalVolume(), zvtest::ShiftedExtentVolume() })
  {
    this->SetVolume(options);
    for (int axis = 0; axis < 3; ++axis)
    {
      this->Widget->SetPlaneOrientation(axis);
      for (int index = 0; index < options.Dimensions[axis]; ++index)
      {
        this->Widget->SetSliceIndex(index);
        EXPECT_EQ(this->Widget->GetSliceIndex(), index) << "axis " << axis;
      }
    }
  }
}

TEST_F(ImagePlaneGeometry, ThePresentIndexChangesNothingButTheRememberedOne)
{
  this->Place(this->Cube(10), 2);
  this->Widget->SetSliceIndex(4);
  this->Widget->ObliqueSliceIndex = -7;
  const vtkMTimeType before = this->Widget->GetMTime();
  this->Widget->SetSliceIndex(4);
  EXPECT_EQ(this->Widget->GetMTime(), before);
  EXPECT_EQ(this->Height(), 4.0);
  EXPECT_EQ(this->Widget->RotationCenter[2], 4.0);
  EXPECT_EQ(this->Widget->ObliqueSliceIndex, 4);
}

TEST_F(ImagePlaneGeometry, APlaneAboveTheImageIsBroughtBackAndAnswersOnceFromOutside)
{
  this->Place(this->Cube(10), 2);
  this->Widget->PlaneSource->Push(3.0);
  EXPECT_EQ(this->Widget->GetSliceIndex(), 12);
  EXPECT_EQ(this->Height(), 9.0);
  EXPECT_EQ(this->Widget->GetSliceIndex(), 9);
}

TEST_F(ImagePlaneGeometry, APlaneBelowTheImageIsBroughtBackAndAnswersOnceFromOutside)
{
  this->SetVolume(this->Cube(10));
  for (int axis = 0; axis < 3; ++axis)
  {
    SCOPED_TRACE(axis);
    this->Widget->SetPlaneOrientation(axis);
    this->Widget->PlaneSource->Push(-11.0);
    EXPECT_EQ(this->Widget->GetSliceIndex(), -2);
    EXPECT_EQ(this->Widget->PlaneSource->GetOrigin()[axis], 0.0);
    EXPECT_EQ(this->Widget->GetSliceIndex(), 0);
  }
}

TEST_F(ImagePlaneGeometry, HalfwayBetweenSlicesRoundsAwayFromZero)
{
  this->Place(this->Cube(10), 2);
  this->PutAt(2.5);
  EXPECT_EQ(this->Widget->GetSliceIndex(), 3);
  this->PutAt(2.25);
  EXPECT_EQ(this->Widget->GetSliceIndex(), 2);
  zvtest::VolumeOptions negative = this->Cube(10);
  negative.Spacing[2] = -1.0; // z from 0 down to -9
  this->Place(negative, 2);
  this->PutAt(-6.5);
  EXPECT_EQ(this->Widget->GetSliceIndex(), -3);
  this->PutAt(-6.75);
  EXPECT_EQ(this->Widget->GetSliceIndex(), -2);
}

TEST_F(ImagePlaneGeometry, WithoutInputThereIsNoSliceIndex)
{
  EXPECT_EQ(this->Widget->GetSliceIndex(), 0);
  const vtkMTimeType before = this->Widget->GetMTime();
  this->Widget->SetSliceIndex(3);
  EXPECT_EQ(this->Widget->GetMTime(), before);
  EXPECT_EQ(this->Widget->ObliqueSliceIndex, 0);
}

TEST_F(ImagePlaneGeometry, SlicePositionIsAWorldPosition)
{
  this->SetVolume(zvtest::UnequalVolume());
  const double positions[3] = { 0.25, 6.0, 12.5 };
  for (int axis = 0; axis < 3; ++axis)
  {
    SCOPED_TRACE(axis);
    this->Widget->SetPlaneOrientation(axis);
    const vtkMTimeType before = this->Widget->GetMTime();
    this->Widget->SetSlicePosition(positions[axis]);
    EXPECT_DOUBLE_EQ(this->Widget->GetSlicePosition(), positions[axis]);
    EXPECT_DOUBLE_EQ(this->Widget->PlaneSource->GetPoint1()[axis], positions[axis]);
    EXPECT_DOUBLE_EQ(this->Widget->PlaneOutlinePolyData->GetPoint(2)[axis], positions[axis]);
    EXPECT_GT(this->Widget->GetMTime(), before);
  }
}

TEST_F(ImagePlaneGeometry, ASlicePositionAfterAnUpdateWaitsForTheNextUpdate)
{
  this->Place(this->Cube(10), 2);
  this->Widget->UpdatePlane();
  this->Widget->SetSlicePosition(4.0);
  EXPECT_EQ(this->ResliceHeight(), 9.0);
  this->Widget->UpdatePlane();
  EXPECT_EQ(this->ResliceHeight(), 4.0);
}

TEST_F(ImagePlaneGeometry, AnObliquePlaneHasNoSlicePosition)
{
  const char* warning = "only works for ortho planes: set plane orientation first";
  this->Place(zvtest::UnequalVolume(), 3);
  const vtkMTimeType before = this->Widget->GetMTime();
  EXPECT_EQ(this->Widget->GetSlicePosition(), 0.0);
  this->ExpectGenericWarning("zvImagePlaneWidget", warning);
  this->Widget->SetSlicePosition(6.0);
  this->ExpectGenericWarning("zvImagePlaneWidget", warning);
  EXPECT_EQ(this->Widget->PlaneSource->GetOrigin()[1], 10.75);
  EXPECT_EQ(this->Widget->GetMTime(), before);
}

// ---- oblique slices ----

TEST_F(ImagePlaneGeometry, TheIndexOfAnObliquePlaneCountsThePlanesBehindIt)
{
  this->SetVolume(this->Cube(10)); // 0 to 9
  this->PutObliqueAt(4.5);         // 3.5, 2.5, 1.5, 0.5 are inside, -0.5 is not: 1 + 5
  EXPECT_EQ(this->Widget->GetSliceIndex(), 6);
  EXPECT_EQ(this->Widget->ObliqueSliceIndex, 6);
  this->PutObliqueAt(8.5);
  EXPECT_EQ(this->Widget->GetSliceIndex(), 10);
  this->PutObliqueAt(0.5);
  EXPECT_EQ(this->Widget->GetSliceIndex(), 2);
}

TEST_F(ImagePlaneGeometry, TheNumberOfObliqueSlicesCountsBothWays)
{
  this->SetVolume(this->Cube(10));
  this->PutObliqueAt(4.5); // ahead 6.5, 7.5, 8.5 and 9.5, behind 2.5, 1.5, 0.5 and -0.5: 1 + 8
  this->Widget->UpdateNumberOfSlices();
  EXPECT_EQ(this->Widget->GetNumberOfSlices(), 9);
  this->PutObliqueAt(8.5); // ahead 10.5, behind 6.5 to 0.5 and -0.5: 1 + 1 + 8
  this->Widget->UpdateNumberOfSlices();
  EXPECT_EQ(this->Widget->GetNumberOfSlices(), 10);
}

TEST_F(ImagePlaneGeometry, ObliqueStepsAreThoseOfTheLastAxisPlacedOn)
{
  this->Place(zvtest::UnequalVolume(), 2); // steps of 3
  double axis[3] = { 0, 0, 1 }, center[3] = { -0.25, 7.625, 14.5 };
  this->Widget->SetSlicePosition(14.5);
  this->Widget->Rotate(0.0, axis, center);
  EXPECT_EQ(this->Widget->GetPlaneOrientation(), 3);
  EXPECT_EQ(this->Widget->SliceAxis, 2);
  // Behind 14.5: 11.5 is inside, 8.5 is not. Ahead, from the second step: 20.5 is not.
  EXPECT_EQ(this->Widget->GetSliceIndex(), 3);
  EXPECT_EQ(this->Widget->GetNumberOfSlices(), 3);
}

TEST_F(ImagePlaneGeometry, AnObliquePlaneOffTheImageKeepsItsCounts)
{
  this->SetVolume(this->Cube(10));
  this->PutObliqueAt(4.5);
  this->Widget->UpdateNumberOfSlices();
  EXPECT_EQ(this->Widget->GetSliceIndex(), 6);
  this->PutObliqueAt(30.0);
  this->Widget->NumberOfSlices = 77;
  this->Widget->UpdateNumberOfSlices();
  EXPECT_EQ(this->Widget->GetNumberOfSlices(), 77);
  EXPECT_EQ(this->Widget->GetSliceIndex(), 6);
}

TEST_F(ImagePlaneGeometry, ObliqueSliceIndexMovesAlongTheNormal)
{
  this->SetVolume(this->Cube(10));
  this->PutObliqueAt(4.5);
  this->Widget->UpdateNumberOfSlices(); // 9, the plane has index 6
  this->Widget->SetSliceIndex(8);
  EXPECT_EQ(this->Widget->ObliqueSliceIndex, 8);
  EXPECT_DOUBLE_EQ(this->Widget->PlaneSource->GetOrigin()[1], 6.5);
  this->Widget->SetSliceIndex(20); // becomes 8, which it has
  EXPECT_DOUBLE_EQ(this->Widget->PlaneSource->GetOrigin()[1], 6.5);
}

TEST_F(ImagePlaneGeometry, ASliceAxisWithoutSpacingCountsAndEnds)
{
  this->SetVolume(this->Cube(10));
  for (int orientation : { 3, 100, -1 })
  {
    this->Widget->SetPlaneOrientation(orientation);
    EXPECT_GT(this->Widget->GetNumberOfSlices(), 0) << orientation;
    EXPECT_GT(this->Widget->GetSliceIndex(), 0) << orientation;
    this->Widget->SetSliceIndex(2);
    this->Widget->Push(1);
    this->PushBy(1.0);
  }
}

// ---- push ----

TEST_F(ImagePlaneGeometry, AMotionMovesBySlicesAndAtLeastByOne)
{
  struct Row
  {
    double Motion, Height;
  };
  const Row rows[] = { { 2.5, 6 }, { 0.2, 4 }, { 0.0, 3 }, { -0.2, 2 }, { -1.5, 1 }, { 1.0, 5 },
    { 1.999, 5 }, { 2.999, 6 } };
  this->Place(this->Cube(10), 2);
  for (const Row& row : rows)
  {
    SCOPED_TRACE(row.Motion);
    this->Widget->SetSliceIndex(3);
    this->PushBy(row.Motion);
    EXPECT_EQ(this->Height(), row.Height);
  }
}

TEST_F(ImagePlaneGeometry, OnlyTheMotionAlongTheNormalCounts)
{
  this->Place(this->Cube(10), 2);
  this->Widget->SetSliceIndex(3);
  double from[3] = { 0, 0, 0 }, to[3] = { 5, -7, 0 };
  this->Widget->Push(from, to);
  EXPECT_EQ(this->Height(), 3.0);
  to[2] = 1.5;
  this->Widget->Push(from, to);
  EXPECT_EQ(this->Height(), 5.0);
}

TEST_F(ImagePlaneGeometry, AMotionMovesByTheSpacing)
{
  this->Place(zvtest::UnequalVolume(), 2); // 10, 13, 16, 19
  this->Widget->SetSliceIndex(0);
  this->PushBy(0.5); // one slice
  EXPECT_EQ(this->Height(), 13.0);
  EXPECT_EQ(this->ResliceHeight(), 13.0);
}

TEST_F(ImagePlaneGeometry, AMotionThatEndsInsideUpdatesEverything)
{
  this->Place(this->Cube(10), 2);
  this->Widget->SetSliceIndex(3);
  const vtkMTimeType before = this->Widget->GetMTime();
  this->PushBy(1.5);
  EXPECT_GT(this->Widget->GetMTime(), before);
  EXPECT_EQ(this->ResliceHeight(), 5.0);
  EXPECT_EQ(this->Widget->PlaneOutlinePolyData->GetPoint(1)[2], 5.0);
  EXPECT_EQ(this->Widget->MarginPolyData->GetPoint(1)[2], 5.0);
}

TEST_F(ImagePlaneGeometry, AMotionPastTheLastSliceStopsThereWithoutAnUpdateByDesign)
{
  this->Place(this->Cube(10), 2);
  this->Widget->SetSliceIndex(7);
  const vtkMTimeType before = this->Widget->GetMTime();
  this->PushBy(8.0);
  EXPECT_EQ(this->Height(), 9.0);
  EXPECT_EQ(this->Widget->GetMTime(), before);
  EXPECT_EQ(this->ResliceHeight(), 7.0);
  EXPECT_EQ(this->Widget->PlaneOutlinePolyData->GetPoint(1)[2], 7.0);
}

TEST_F(ImagePlaneGeometry, AMotionPastTheFirstSliceStopsThere)
{
  this->Place(this->Cube(10), 2);
  this->Widget->SetSliceIndex(2);
  this->PushBy(-8.0);
  EXPECT_EQ(this->Height(), 0.0);
}

TEST_F(ImagePlaneGeometry, AtTheLastSliceAForwardMotionMovesNothing)
{
  this->Place(this->Cube(10), 2);
  const vtkMTimeType before = this->Widget->GetMTime();
  this->PushBy(3.0);
  EXPECT_EQ(this->Height(), 9.0);
  EXPECT_EQ(this->Widget->GetMTime(), before);
}

TEST_F(ImagePlaneGeometry, AMotionStopsAtTheNumberOfSlices)
{
  this->Place(this->Cube(10), 2);
  this->Widget->SetSliceIndex(2);
  this->Widget->NumberOfSlices = 5;
  this->PushBy(6.0);
  EXPECT_EQ(this->Height(), 4.0);
}

TEST_F(ImagePlaneGeometry, AMotionStopsAtTheFirstSliceWhateverTheOutline)
{
  this->Place(this->Cube(10), 2);
  this->Widget->SetSliceIndex(5);
  this->Widget->PlaneSource->Push(-5.0); // the outline still says 5
  this->PushBy(-2.0);
  EXPECT_EQ(this->Height(), 0.0);
}

TEST_F(ImagePlaneGeometry, PushByACountGoesForwardOneMoreThanAskedByDesign)
{
  this->Place(this->Cube(10), 2);
  for (int count : { 2, -2 })
  {
    SCOPED_TRACE(count);
    this->Widget->SetSliceIndex(3);
    const vtkMTimeType before = this->Widget->GetMTime();
    this->Widget->Push(count);
    EXPECT_EQ(this->Height(), 6.0);
    EXPECT_EQ(this->Widget->GetMTime(), before);
    EXPECT_EQ(this->ResliceHeight(), 3.0);
    EXPECT_EQ(this->Widget->PlaneOutlinePolyData->GetPoint(1)[2], 6.0);
    EXPECT_EQ(this->Widget->MarginPolyData->GetPoint(1)[2], 6.0);
  }
}

TEST_F(ImagePlaneGeometry, APlaneFartherOutThanIndicesReachIsBroughtBackAndNotPushed)
{
  this->Place(this->Cube(10), 2);
  this->Widget->SetOrigin(0, 0, 1e12);
  this->Widget->SetPoint1(9, 0, 1e12);
  this->Widget->SetPoint2(0, 9, 1e12);
  double from[3] = { 0, 0, 0 }, to[3] = { 0, 0, 1 };
  // Its outline still touches the image, so nothing but its index holds it back.
  this->Widget->PlaneOutlinePolyData->GetPoints()->SetPoint(0, 0, 0, 5);
  this->Widget->Push(from, to);
  EXPECT_EQ(this->Height(), 9.0);
}

TEST_F(ImagePlaneGeometry, PushByACountStopsAtTheEnd)
{
  this->Place(this->Cube(10), 2);
  this->Widget->SetSliceIndex(7);
  this->Widget->Push(0);
  EXPECT_EQ(this->Height(), 7.0);
  this->Widget->Push(20);
  EXPECT_EQ(this->Height(), 9.0);
  this->Widget->BuildRepresentation();
  this->Widget->Push(1);
  EXPECT_EQ(this->Height(), 9.0);
}

// ---- rotation ----

TEST_F(ImagePlaneGeometry, TheFirstRotationEnlargesThePlaneToTheDiagonal)
{
  double axis[3] = { 0, 0, 1 }, center[3] = { 4.5, 4.5, 4.5 };
  const double low = 4.5 - Half, high = 4.5 + Half;
  this->Place(this->Cube(10), 2);
  this->Widget->Rotate(0.0, axis, center);
  EXPECT_TRUE(this->PlaneIs({ { low, low, 9 } }, { { high, low, 9 } }, { { low, high, 9 } }));
  this->Widget->SetPlaneOrientation(0);
  this->Widget->Rotate(0.0, axis, center);
  EXPECT_TRUE(this->PlaneIs({ { 9, low, low } }, { { 9, high, low } }, { { 9, low, high } }));
  this->Widget->SetPlaneOrientation(1);
  this->Widget->Rotate(0.0, axis, center);
  EXPECT_TRUE(this->PlaneIs({ { low, 9, low } }, { { low, 9, high } }, { { high, 9, low } }));
}

TEST_F(ImagePlaneGeometry, RotatingTurnsThePlaneAboutTheGivenAxis)
{
  this->Place(this->Cube(10), 2);
  double axis[3] = { 1, 0, 0 }, center[3] = { 4.5, 4.5, 4.5 };
  const vtkMTimeType before = this->Widget->GetMTime();
  this->Widget->Rotate(90.0, axis, center);
  const double low = 4.5 - Half, high = 4.5 + Half;
  EXPECT_TRUE(this->PlaneIs({ { low, 0, low } }, { { high, 0, low } }, { { low, 0, high } }));
  EXPECT_TRUE(IsPoint(this->Widget->PlaneSource->GetNormal(), 0, -1, 0));
  EXPECT_EQ(this->Widget->GetPlaneOrientation(), 3);
  EXPECT_EQ(this->Widget->SliceAxis, 2);
  EXPECT_TRUE(IsPoint(this->Widget->RotationCenter, 4.5, 4.5, 4.5));
  EXPECT_GT(this->Widget->GetMTime(), before);
  EXPECT_NEAR(this->Widget->ResliceAxes->GetElement(1, 2), -1.0, 1e-12);
  EXPECT_NEAR(this->Widget->PlaneOutlinePolyData->GetPoint(0)[0], low, 1e-9);
  EXPECT_NEAR(this->Widget->MarginPolyData->GetPoint(0)[0], low, 1e-9);
}

TEST_F(ImagePlaneGeometry, ASecondRotationDoesNotEnlargeAgain)
{
  this->Place(this->Cube(10), 2);
  this->Widget->SetSlicePosition(4.5);
  double axis[3] = { 0, 0, 1 }, center[3] = { 4.5, 4.5, 4.5 };
  this->Widget->Rotate(0.0, axis, center);
  // Smaller than the diagonal, so that enlarging would show.
  this->Widget->SetOrigin(2.5, 2.5, 4.5);
  this->Widget->SetPoint1(6.5, 2.5, 4.5);
  this->Widget->SetPoint2(2.5, 6.5, 4.5);
  this->Widget->Rotate(0.0, axis, center);
  EXPECT_TRUE(this->PlaneIs({ { 2.5, 2.5, 4.5 } }, { { 6.5, 2.5, 4.5 } }, { { 2.5, 6.5, 4.5 } }));
}

TEST_F(ImagePlaneGeometry, ALargeHeadIsStillEnlarged)
{
  vtkNew<vtkImageData> head;
  head->SetDimensions(512, 512, 200);
  head->AllocateScalars(VTK_UNSIGNED_CHAR, 1);
  std::fill_n(static_cast<unsigned char*>(head->GetScalarPointer()), head->GetNumberOfPoints(),
    static_cast<unsigned char>(1));
  this->Widget->SetInput(head);
  this->Widget->SetPlaneOrientation(2);
  double axis[3] = { 1, 0, 0 }, center[3] = { 255.5, 255.5, 99.5 };
  this->Widget->Rotate(45.0, axis, center);
  double side[3];
  this->Widget->GetVector1(side);
  EXPECT_NEAR(std::sqrt(side[0] * side[0] + side[1] * side[1] + side[2] * side[2]),
    std::sqrt(511.0 * 511 + 511.0 * 511 + 199.0 * 199), 1e-6);
}

TEST_F(ImagePlaneGeometry, OnlyImagesUpToTheLimitAreEnlarged)
{
  double about[3] = { 0, 0, 1 }, center[3] = { 1, 1, 1 };
  for (int axis = 0; axis < 3; ++axis)
  {
    for (int upper : { 999, 1000 })
    {
      SCOPED_TRACE(std::to_string(axis) + " " + std::to_string(upper));
      zvtest::VolumeOptions options;
      options.Dimensions = { { 3, 3, 3 } };
      options.First[axis] = upper - 2;
      this->Place(options, 2);
      this->Widget->Rotate(0.0, about, center);
      double side[3];
      this->Widget->GetVector1(side);
      EXPECT_NEAR(side[0], upper == 999 ? std::sqrt(12.0) : 2.0, 1e-9);
      EXPECT_EQ(this->Widget->GetPlaneOrientation(), 3);
    }
  }
}

TEST_F(ImagePlaneGeometry, APlaneThroughTheBoxStaysCentredOnItsCut)
{
  this->Place(this->Cube(10), 2);
  this->Widget->SetSlicePosition(4.5);
  double axis[3] = { 1, 0, 0 }, center[3] = { 4.5, 4.5, 4.5 };
  this->Widget->Rotate(30.0, axis, center);
  EXPECT_TRUE(IsPoint(this->Widget->PlaneSource->GetCenter(), 4.5, 4.5, 4.5, 1e-5));
  double elsewhere[3] = { 6.5, 4.5, 4.5 };
  this->Widget->PlaneSource->SetCenter(elsewhere);
  this->Refresh();
  EXPECT_TRUE(IsPoint(this->Widget->PlaneSource->GetCenter(), 4.5, 4.5, 4.5, 1e-5));
}

TEST_F(ImagePlaneGeometry, AMotionRotatesByItsLengthAlongTheRadius)
{
  this->Place(this->Cube(10), 2);
  double axis[3] = { 0, 0, 1 }, center[3] = { 4.5, 4.5, 4.5 };
  this->Widget->SetSlicePosition(4.5);
  this->Widget->Rotate(0.0, axis, center);
  const double low = 4.5 - Half, high = 4.5 + Half;
  this->Widget->RotateAxis[0] = 1;
  this->Widget->RotateAxis[1] = this->Widget->RotateAxis[2] = 0;
  this->Widget->RadiusVector[1] = 1;
  this->Widget->RadiusVector[0] = this->Widget->RadiusVector[2] = 0;
  this->Widget->UpdatePlane();
  const vtkMTimeType before = this->Widget->GetMTime();
  double from[3] = { 0, 0, 0 }, to[3] = { 50, -90, 60 }, unused[3] = { 0, 0, 1 };
  this->Widget->Rotate(from, to, unused); // by 90 degrees
  EXPECT_TRUE(this->PlaneIs({ { low, 4.5, low } }, { { high, 4.5, low } }, { { low, 4.5, high } }));
  double degree[3];
  this->Widget->GetDegree(degree);
  EXPECT_TRUE(IsPoint(degree, 90, 0, 0));
  EXPECT_GT(this->Widget->GetMTime(), before);
  EXPECT_EQ(this->Widget->ResliceAxes->GetElement(2, 2), 1.0) << "it does not update the plane";
}

TEST_F(ImagePlaneGeometry, AMotionEnlargesAnOrthogonalPlaneFirst)
{
  this->Place(this->Cube(10), 2);
  for (int i = 0; i < 3; ++i)
  {
    this->Widget->RotateAxis[i] = i == 2;
    this->Widget->RadiusVector[i] = i == 0;
  }
  double from[3] = { 0, 0, 0 }, to[3] = { 0, 5, 0 }, unused[3] = { 0, 0, 1 };
  this->Widget->Rotate(from, to, unused);
  const double low = 4.5 - Half, high = 4.5 + Half;
  EXPECT_TRUE(this->PlaneIs({ { low, low, 9 } }, { { high, low, 9 } }, { { low, high, 9 } }));
  EXPECT_EQ(this->Widget->GetPlaneOrientation(), 3);
}

TEST_F(ImagePlaneGeometry, DegreesAreWrappedOnce)
{
  struct Row
  {
    double Motion, Degree;
  };
  const Row rows[] = { { 400, -40 }, { -400, 40 }, { 360, -360 }, { -800, 440 }, { 800, -440 },
    { 10, -10 } };
  this->Place(this->Cube(10), 2);
  for (const Row& row : rows)
  {
    SCOPED_TRACE(row.Motion);
    for (int i = 0; i < 3; ++i)
    {
      this->Widget->RotateAxis[i] = i == 1;
      this->Widget->RadiusVector[i] = i == 0;
    }
    double from[3] = { 0, 0, 0 }, to[3] = { row.Motion, 0, 0 }, unused[3] = { 0, 0, 1 };
    this->Widget->Rotate(from, to, unused);
    EXPECT_NEAR(this->Widget->Degree[1], row.Degree, 1e-9);
    EXPECT_EQ(this->Widget->Degree[0], 0.0);
  }
}

TEST_F(ImagePlaneGeometry, SpinningTurnsThePlaneInItself)
{
  this->Place(this->Cube(11), 2); // 0 to 10 at 10, centre (5, 5, 10)
  double from[3] = { 7, 4.9, 10 }, to[3] = { 7, 5, 10 };
  this->Widget->Spin(from, to); // 0.1 across at radius 2: 0.05 rad
  const double c = std::cos(0.05), s = std::sin(0.05);
  EXPECT_TRUE(this->PlaneIs({ { 5 - 5 * c + 5 * s, 5 - 5 * s - 5 * c, 10 } },
    { { 5 + 5 * c + 5 * s, 5 + 5 * s - 5 * c, 10 } },
    { { 5 - 5 * c - 5 * s, 5 - 5 * s + 5 * c, 10 } }));
  EXPECT_EQ(this->Widget->GetPlaneOrientation(), 3);
}

TEST_F(ImagePlaneGeometry, SpinningAboutTheCentreItselfIsHarmless)
{
  this->Place(this->Cube(11), 2);
  double from[3] = { 7, 4.9, 10 }, to[3] = { 5, 5, 10 };
  this->Widget->Spin(from, to);
  for (int i = 0; i < 3; ++i)
  {
    EXPECT_TRUE(std::isfinite(this->Widget->PlaneSource->GetOrigin()[i]));
    EXPECT_TRUE(std::isfinite(this->Widget->PlaneSource->GetPoint1()[i]));
  }
}

TEST_F(ImagePlaneGeometry, RotationCenterIsCopiedWithoutAnUpdate)
{
  const vtkMTimeType before = this->Widget->GetMTime();
  double center[3] = { 1, 2, 3 }, back[3] = { 0, 0, 0 };
  this->Widget->SetRotationCenter(center);
  this->Widget->GetRotationCenter(back);
  EXPECT_TRUE(IsPoint(back, 1, 2, 3));
  EXPECT_EQ(this->Widget->GetMTime(), before);
}

// ---- translation and scale ----

TEST_F(ImagePlaneGeometry, TranslationMovesThePointsOfItsRegion)
{
  struct Row
  {
    int Mode;
    zvtest::World Origin, Point1, Point2; // what each gets
  };
  const zvtest::World none{ { 0, 0, 0 } }, radius{ { 3, 0, 0 } }, axis{ { 0, 5, 0 } },
    both{ { 3, 5, 0 } }, all{ { 3, 5, 7 } };
  const Row rows[] = { { 8, all, all, all }, { 4, radius, none, radius }, { 5, none, radius, none },
    { 6, radius, radius, none }, { 7, none, none, radius }, { 3, radius, none, both },
    { 0, both, axis, radius }, { 2, none, radius, axis }, { 1, axis, both, none } };
  this->SetVolume(this->Cube(11));
  const auto plus = [](double x, double y, double z, const zvtest::World& by) {
    return zvtest::World{ { x + by[0], y + by[1], z + by[2] } };
  };
  for (const Row& row : rows)
  {
    SCOPED_TRACE(row.Mode);
    this->Widget->SetPlaneOrientation(2);
    this->Widget->MarginSelectMode = row.Mode;
    for (int i = 0; i < 3; ++i)
    {
      this->Widget->RadiusVector[i] = i == 0;
      this->Widget->RotateAxis[i] = i == 1;
    }
    double from[3] = { 1, 1, 1 }, to[3] = { 4, 6, 8 };
    this->Widget->Translate(from, to);
    EXPECT_TRUE(this->PlaneIs(
      plus(0, 0, 10, row.Origin), plus(10, 0, 10, row.Point1), plus(0, 10, 10, row.Point2)));
  }
}

TEST_F(ImagePlaneGeometry, ScalingGrowsUpwardsAndShrinksOtherwise)
{
  this->SetVolume(this->Cube(11));
  zvtest::Scene scene;
  this->Widget->SetInteractor(scene.Interactor());
  scene.Interactor()->SetEventInformation(50, 60, 0, 0);
  scene.Interactor()->SetEventInformation(50, 90, 0, 0); // the last position is 60
  double from[3] = { 1, 1, 1 }, to[3] = { 2, 2, 1 };     // a tenth of the diagonal
  this->Widget->SetPlaneOrientation(2);
  this->Widget->Scale(from, to, 50, 61);
  EXPECT_TRUE(
    this->PlaneIs({ { -0.5, -0.5, 10 } }, { { 10.5, -0.5, 10 } }, { { -0.5, 10.5, 10 } }));
  for (int y : { 60, 59 })
  {
    this->Widget->SetPlaneOrientation(2);
    this->Widget->Scale(from, to, 50, y);
    EXPECT_TRUE(this->PlaneIs({ { 0.5, 0.5, 10 } }, { { 9.5, 0.5, 10 } }, { { 0.5, 9.5, 10 } }));
  }
}

// ---- adjusting the state ----

namespace
{
struct RegionRow
{
  double X, Y;
  int Mode;
};
// On the plane from 0 to 10 with margins of 1 and 2.
const RegionRow Regions[] = { { 0.5, 0.5, 0 }, { 9.5, 0.5, 1 }, { 9.5, 9.5, 2 }, { 0.5, 9.5, 3 },
  { 0.5, 5, 4 }, { 9.5, 5, 5 }, { 5, 1.5, 6 }, { 5, 8.5, 7 }, { 5, 5, 8 },
  // on a limit is between
  { 1, 2, 8 }, { 9, 8, 8 }, { 1, 0, 6 }, { 0, 8, 4 },
  // beyond the plane counts as on its edge
  { -3, -3, 0 }, { 13, 5, 5 }, { 5, 13, 7 } };
}

class ImagePlaneState : public ImagePlaneViewTest
{
protected:
  void SetUp() override
  {
    this->Place(this->Cube(11), 2);
    this->Widget->SetInteractor(this->Scene.Interactor());
    this->Widget->SetMarginSizeX(0.1);
    this->Widget->SetMarginSizeY(0.2);
  }

  void AdjustAt(double x, double y, int modifiers = zvtest::NoModifier)
  {
    this->Scene.Interactor()->SetEventInformation(
      0, 0, modifiers & zvtest::Control ? 1 : 0, modifiers & zvtest::Shift ? 1 : 0);
    this->Widget->LastPickPosition[0] = x;
    this->Widget->LastPickPosition[1] = y;
    this->Widget->LastPickPosition[2] = 10.0;
    this->Widget->State = zvImagePlaneWidget::Start;
    this->Widget->AdjustState();
  }
};

TEST_F(ImagePlaneState, EachRegionHasItsModeAndState)
{
  for (const RegionRow& row : Regions)
  {
    SCOPED_TRACE(::testing::Message() << row.X << ", " << row.Y);
    this->AdjustAt(row.X, row.Y);
    EXPECT_EQ(this->Widget->MarginSelectMode, row.Mode);
    const int wanted = row.Mode < 4 ? zvImagePlaneWidget::Spinning
      : row.Mode == 8               ? zvImagePlaneWidget::Pushing
                                    : zvImagePlaneWidget::Rotating;
    EXPECT_EQ(this->Widget->GetState(), wanted);
  }
}

TEST_F(ImagePlaneState, EachModeHasItsAxisAndRadius)
{
  struct Row
  {
    zvtest::World Axis, Radius;
  };
  const zvtest::World x{ { 1, 0, 0 } }, y{ { 0, 1, 0 } }, minusX{ { -1, 0, 0 } },
    minusY{ { 0, -1, 0 } };
  const Row rows[9] = { { minusY, minusX }, { minusY, x }, { y, x }, { y, minusX }, { y, minusX },
    { y, x }, { x, minusY }, { x, y }, { x, y } };
  for (int i = 0; i < 9; ++i)
  {
    const RegionRow& region = Regions[i];
    SCOPED_TRACE(region.Mode);
    this->AdjustAt(region.X, region.Y, zvtest::Control);
    EXPECT_EQ(this->Widget->GetState(), zvImagePlaneWidget::Moving);
    EXPECT_EQ(this->Widget->MarginSelectMode, region.Mode);
    const Row& row = rows[region.Mode];
    EXPECT_TRUE(IsPoint(this->Widget->RotateAxis, row.Axis[0], row.Axis[1], row.Axis[2]));
    EXPECT_TRUE(IsPoint(this->Widget->RadiusVector, row.Radius[0], row.Radius[1], row.Radius[2]));
  }
}

TEST_F(ImagePlaneState, AnEdgeSetsAxisAndRadiusToo)
{
  this->AdjustAt(0.5, 5);
  EXPECT_EQ(this->Widget->GetState(), zvImagePlaneWidget::Rotating);
  EXPECT_TRUE(IsPoint(this->Widget->RotateAxis, 0, 1, 0));
  EXPECT_TRUE(IsPoint(this->Widget->RadiusVector, -1, 0, 0));
}

TEST_F(ImagePlaneState, ACornerAndTheMiddleLeaveAxisAndRadiusAlone)
{
  this->AdjustAt(0.5, 5);
  this->AdjustAt(0.5, 0.5);
  this->AdjustAt(5, 5);
  EXPECT_TRUE(IsPoint(this->Widget->RotateAxis, 0, 1, 0));
  EXPECT_TRUE(IsPoint(this->Widget->RadiusVector, -1, 0, 0));
}

TEST_F(ImagePlaneState, ShiftScalesAndLeavesTheRegionAlone)
{
  this->AdjustAt(0.5, 5);
  this->AdjustAt(5, 5, zvtest::Shift);
  EXPECT_EQ(this->Widget->GetState(), zvImagePlaneWidget::Scaling);
  EXPECT_EQ(this->Widget->MarginSelectMode, 4);
  this->AdjustAt(5, 5, zvtest::Shift | zvtest::Control);
  EXPECT_EQ(this->Widget->GetState(), zvImagePlaneWidget::Scaling);
}

TEST_F(ImagePlaneState, TheModifierOfTheButtonPressedActsLikeTheKey)
{
  struct Row
  {
    int Button, Left, Middle, Right, State;
  };
  const Row rows[] = { { 1, 1, 0, 0, zvImagePlaneWidget::Scaling },
    { 1, 2, 0, 0, zvImagePlaneWidget::Moving }, { 1, 0, 1, 2, zvImagePlaneWidget::Pushing },
    { 2, 0, 1, 0, zvImagePlaneWidget::Scaling }, { 2, 1, 2, 1, zvImagePlaneWidget::Moving },
    { 3, 0, 0, 1, zvImagePlaneWidget::Scaling }, { 3, 1, 1, 2, zvImagePlaneWidget::Moving },
    { 0, 1, 1, 1, zvImagePlaneWidget::Pushing } };
  for (const Row& row : rows)
  {
    SCOPED_TRACE(::testing::Message() << row.Button << " " << row.State);
    this->Widget->LastButtonPressed = row.Button;
    this->Widget->SetLeftButtonAutoModifier(row.Left);
    this->Widget->SetMiddleButtonAutoModifier(row.Middle);
    this->Widget->SetRightButtonAutoModifier(row.Right);
    this->AdjustAt(5, 5);
    EXPECT_EQ(this->Widget->GetState(), row.State);
  }
}

TEST_F(ImagePlaneState, StatesHaveTheirNumbers)
{
  const int states[] = { zvImagePlaneWidget::Start, zvImagePlaneWidget::Cursoring,
    zvImagePlaneWidget::WindowLevelling, zvImagePlaneWidget::Pushing, zvImagePlaneWidget::Spinning,
    zvImagePlaneWidget::Rotating, zvImagePlaneWidget::Moving, zvImagePlaneWidget::Scaling,
    zvImagePlaneWidget::Outside };
  for (int i = 0; i < 9; ++i)
  {
    EXPECT_EQ(states[i], i);
  }
}

// ---- dimensions ----

TEST_F(ImagePlaneGeometry, DimensionsGrowThePlaneAboutItsCentre)
{
  struct Row
  {
    int Axis, X, Y;
    zvtest::World Origin, Point1, Point2;
  };
  // Steps of 0.5, 1.25 and 3; the plane's first vector runs along x, y, z for the axes 2, 0, 1.
  const Row rows[] = {
    // (17 - 7) / 2 = 5 of 0.5: 2; (11 - 5) / 2 = 3 of 1.25: 3
    { 2, 17, 11, { { -4, 1.5, 19 } }, { { 3.5, 1.5, 19 } }, { { -4, 13.75, 19 } } },
    // (2 - 7) / 2 = -2 of 0.5: -1; (5 - 5) / 2 = 0
    { 2, 2, 5, { { -1, 4.5, 19 } }, { { 0.5, 4.5, 19 } }, { { -1, 10.75, 19 } } },
    // (8 - 7) / 2 = 0; (8 - 5) / 2 = 1 of 1.25: 1
    { 2, 8, 8, { { -2, 3.5, 19 } }, { { 1.5, 3.5, 19 } }, { { -2, 11.75, 19 } } },
    // one step of 0.5 is less than a unit
    { 2, 9, 5, { { -2, 4.5, 19 } }, { { 1.5, 4.5, 19 } }, { { -2, 10.75, 19 } } },
    // (9 - 5) / 2 = 2 of 1.25: 2; (5 - 3) / 2 = 1 of 3: 3
    { 0, 9, 5, { { 1.5, 2.5, 7 } }, { { 1.5, 12.75, 7 } }, { { 1.5, 2.5, 22 } } },
    // (5 - 3) / 2 = 1 of 3: 3; (17 - 7) / 2 = 5 of 0.5: 2
    { 1, 5, 17, { { -4, 10.75, 7 } }, { { -4, 10.75, 22 } }, { { 3.5, 10.75, 7 } } },
  };
  this->SetVolume(zvtest::UnequalVolume());
  for (const Row& row : rows)
  {
    SCOPED_TRACE(::testing::Message() << row.Axis << ": " << row.X << ", " << row.Y);
    this->Widget->SetPlaneOrientation(row.Axis);
    this->Widget->SetDimensions(row.X, row.Y);
    EXPECT_TRUE(this->PlaneIs(row.Origin, row.Point1, row.Point2));
    EXPECT_EQ(this->Widget->Dimensions[0], row.X);
    EXPECT_EQ(this->Widget->Dimensions[1], row.Y);
    EXPECT_TRUE(IsPoint(this->Widget->PlaneOutlinePolyData->GetPoint(0), row.Origin[0],
      row.Origin[1], row.Origin[2]));
  }
}

TEST_F(ImagePlaneGeometry, ThePresentDimensionsMoveNothingAndStillUpdate)
{
  this->Place(zvtest::UnequalVolume(), 2);
  this->Widget->UpdatePlane();
  this->Widget->PlaneSource->Push(-3.0);
  const vtkMTimeType before = this->Widget->GetMTime();
  int same[2] = { 7, 5 };
  this->Widget->SetDimensions(same);
  EXPECT_TRUE(this->PlaneIs({ { -2, 4.5, 16 } }, { { 1.5, 4.5, 16 } }, { { -2, 10.75, 16 } }));
  EXPECT_GT(this->Widget->GetMTime(), before);
  EXPECT_EQ(this->ResliceHeight(), 16.0);
  EXPECT_EQ(this->Widget->MarginPolyData->GetPoint(0)[2], 16.0);
}

TEST_F(ImagePlaneGeometry, DimensionsOfAnAxisWithoutSpacingMoveNothing)
{
  this->Place(zvtest::UnequalVolume(), 3);
  this->Widget->SetDimensions(50, 50);
  EXPECT_TRUE(this->PlaneIs({ { -2, 10.75, 10 } }, { { -2, 10.75, 19 } }, { { 1.5, 10.75, 10 } }));
  EXPECT_EQ(this->Widget->Dimensions[0], 50);
}

// ---- without input ----

TEST_F(ImagePlaneGeometry, WithoutInputNoOperationCrashes)
{
  double a[3] = { 0, 0, 0 }, b[3] = { 1, 1, 1 }, axis[3] = { 1, 0, 0 };
  const auto callAll = [&]
  {
    this->Widget->Push(1);
    this->Widget->Push(a, b);
    this->Widget->Spin(a, b);
    this->Widget->Rotate(10.0, axis, a);
    this->Widget->Rotate(a, b, axis);
    this->Widget->Translate(a, b);
    this->Widget->Scale(a, b, 1, 1);
    this->Widget->AdjustState();
    this->Widget->UpdateMargins();
    this->Widget->UpdateNumberOfSlices();
    this->Widget->UpdatePlacement();
    this->Widget->SetDimensions(5, 5);
    this->Widget->GetSliceIndex();
    this->Widget->SetSliceIndex(3);
  };
  callAll();
  this->TakeMessages();
  this->Place(this->Cube(5), 2);
  this->Widget->SetInput(nullptr);
  callAll();
  this->TakeMessages();
  EXPECT_EQ(this->Widget->ImageData, nullptr);
  EXPECT_EQ(this->Widget->GetSliceIndex(), 0);
}
