#include "zvImageViewerFixture.h"

#include "vtkAssemblyPath.h"
#include "vtkPropCollection.h"

#include <limits>

using zvtest::World;

class ImageViewerCross : public ImageViewerViewTest
{
protected:
  // Show a slice that is not the first or the last.
  void ShowInside(const zvtest::VolumeOptions& options, int orientation)
  {
    this->Show(options, orientation);
    this->Viewer->SetSliceIndex(1);
    this->Scene.Render();
  }

  void AdjustTo(const World& position)
  {
    const zvtest::Display at = this->Scene.At(position);
    this->Viewer->AdjustCross(at[0], at[1]);
  }

  // A world position in the plane, in voxel steps along its two axes from its origin.
  World InPlane(double first, double second)
  {
    const PlanePoints plane = this->Plane();
    const double* spacing = this->Volume->GetSpacing();
    return plane.Origin +
      Unit(plane.Point1 - plane.Origin) * (first * std::abs(spacing[this->Viewer->FirstAxis])) +
      Unit(plane.Point2 - plane.Origin) * (second * std::abs(spacing[this->Viewer->SecondAxis]));
  }

  // Where the cross is in the plane, in millimetres along its two axes from its origin.
  double CrossAlong(int axis)
  {
    const PlanePoints plane = this->Plane();
    const World direction = Unit((axis == 0 ? plane.Point1 : plane.Point2) - plane.Origin);
    return Dot(ToWorld(this->Viewer->RotationCenter) - plane.Origin, direction);
  }

  // Whether the index is in the range and both lines cross at the rotation centre.
  ::testing::AssertionResult CrossIsConsistent()
  {
    for (int k : { 0, 1 })
    {
      if (this->Viewer->CrossIndex[k] < 0 ||
        this->Viewer->CrossIndex[k] > this->Viewer->Dimensions[k])
      {
        return ::testing::AssertionFailure()
          << "index " << k << " is " << this->Viewer->CrossIndex[k] << " of "
          << this->Viewer->Dimensions[k];
      }
    }
    const World center = ToWorld(this->Viewer->RotationCenter);
    for (int line : { 1, 2 })
    {
      const LineEnds ends = this->Line(line);
      const World direction = Unit(ends.Point2 - ends.Point1);
      const World off = center - ends.Point1;
      const World foot = ends.Point1 + direction * Dot(off, direction);
      const auto result = IsPoint(foot.data(), center, 1e-9);
      if (!result)
      {
        return ::testing::AssertionFailure() << result.message() << " (on line " << line << ")";
      }
    }
    return ::testing::AssertionSuccess();
  }
};

// ---- the voxel under the mouse ----

TEST_F(ImageViewerCross, TheCursorTellsTheVoxelUnderTheMouse)
{
  for (const auto& options : { zvtest::UnequalVolume(), zvtest::NegativeSpacingVolume({ 0, 2 }),
         zvtest::ShiftedExtentVolume() })
  {
    for (int orientation : { 0, 1, 2 })
    {
      this->ShowInside(options, orientation);
      zvtest::Index index = options.First;
      for (int a = 0; a < 3; ++a)
      {
        index[a] += a == 0 ? 2 : 1;
      }
      index[orientation] = options.First[orientation] + 1;
      const World center = zvtest::CenterOfVoxel(this->Volume, index);
      World beside = center;
      for (int a = 0; a < 3; ++a)
      {
        beside[a] += a == orientation ? 0.0 : 0.3 * std::abs(options.Spacing[a]);
      }
      this->Viewer->SetUserControlledLookupTable(0);
      this->Viewer->UseContinuousCursor = 1;
      this->Viewer->CursorActor->VisibilityOff();
      const zvtest::Display at = this->Scene.At(beside);
      this->Viewer->UpdateCursor(at[0], at[1]);
      for (int a = 0; a < 3; ++a)
      {
        EXPECT_EQ(this->Viewer->CurrentCursorPosition[a], index[a]) << orientation << ", " << a;
      }
      EXPECT_EQ(this->Viewer->CurrentImageValue, zvtest::IndexValue(this->Volume, index));
      EXPECT_EQ(this->Viewer->CursorActor->GetVisibility(), 1);
      EXPECT_EQ(this->Viewer->UseContinuousCursor, 0);
      this->Viewer->SetEnabled(0);
    }
  }
}

TEST_F(ImageViewerCross, BesideTheSliceThereIsNoVoxel)
{
  this->ShowInside(this->Cube(5), 2);
  this->Viewer->UpdateCursor(200, 200);
  const World before = ToWorld(this->Viewer->CurrentCursorPosition);
  this->Viewer->UpdateCursor(2, 2);
  EXPECT_EQ(this->Viewer->CurrentImageValue, 1e299);
  EXPECT_EQ(this->Viewer->CursorActor->GetVisibility(), 0);
  EXPECT_TRUE(IsPoint(this->Viewer->CurrentCursorPosition, before, 0));
}

TEST_F(ImageViewerCross, WithoutAnImageOrAViewTheCursorIsHarmless)
{
  this->Place(this->Cube(5), 2);
  this->Viewer->UpdateCursor(200, 200);
  this->Viewer->AdjustCross(200, 200);
  EXPECT_TRUE(this->CrossIndexIs(2, 2));
  this->Enable();
  this->Viewer->SetInput(nullptr);
  this->Viewer->UpdateCursor(200, 200);
  this->Viewer->AdjustCross(200, 200);
  EXPECT_EQ(this->Viewer->ImageData, nullptr);
  EXPECT_TRUE(this->CrossIndexIs(2, 2));
}

// ---- the cross moved to a display position ----

TEST_F(ImageViewerCross, MovesToTheVoxelUnderTheMouse)
{
  for (const auto& options : { zvtest::UnequalVolume(), zvtest::ShiftedExtentVolume() })
  {
    for (int orientation : { 0, 1, 2 })
    {
      SCOPED_TRACE(orientation);
      this->ShowInside(options, orientation);
      const double spacing[2] = { options.Spacing[this->Viewer->FirstAxis],
        options.Spacing[this->Viewer->SecondAxis] };
      const PlanePoints plane = this->Plane();
      const World axis1 = Unit(plane.Point1 - plane.Origin);
      const World axis2 = Unit(plane.Point2 - plane.Origin);
      for (const auto& target :
        std::vector<std::array<int, 2>>{ { { 1, 1 } }, { { 2, 2 } }, { { 1, 2 } }, { { 2, 1 } } })
      {
        const LineEnds line1 = this->Line(1);
        const LineEnds line2 = this->Line(2);
        const World center = ToWorld(this->Viewer->RotationCenter);
        int steps[2];
        int index[2];
        this->Viewer->GetCrossIndex(index);
        for (int k : { 0, 1 })
        {
          steps[k] = static_cast<int>((target[k] * spacing[k] - this->CrossAlong(k)) / spacing[k]);
        }
        this->AdjustTo(this->InPlane(target[0] + 0.2, target[1] - 0.2));
        EXPECT_TRUE(this->MovementIs(steps[0], steps[1]));
        EXPECT_TRUE(this->CrossIndexIs(index[0] + steps[0], index[1] + steps[1]));
        // Line 1 goes along the first axis, line 2 along the second, the centre along both.
        const World by1 = axis1 * (steps[0] * spacing[0]);
        const World by2 = axis2 * (steps[1] * spacing[1]);
        EXPECT_TRUE(this->LineIs(1, { line1.Point1 + by1, line1.Point2 + by1 }));
        EXPECT_TRUE(this->LineIs(2, { line2.Point1 + by2, line2.Point2 + by2 }));
        EXPECT_TRUE(this->CenterIs(center + by1 + by2));
      }
      this->Viewer->SetEnabled(0);
    }
  }
}

TEST_F(ImageViewerCross, AMoveOfLessThanAVoxelMovesNothing)
{
  this->ShowInside(this->Cube(9), 2);
  this->AdjustTo(this->InPlane(5, 3));
  EXPECT_TRUE(this->CrossIndexIs(5, 3));
  const LineEnds line1 = this->Line(1);
  const LineEnds line2 = this->Line(2);
  const World center = ToWorld(this->Viewer->RotationCenter);
  for (const World& at :
    { this->InPlane(5.3, 3.1), this->InPlane(4.7, 2.7), this->InPlane(5.4, 3.4) })
  {
    this->AdjustTo(at);
    EXPECT_TRUE(this->MovementIs(0, 0));
    EXPECT_TRUE(this->CrossIndexIs(5, 3));
    EXPECT_TRUE(this->LineIs(1, line1, 0));
    EXPECT_TRUE(this->LineIs(2, line2, 0));
    EXPECT_TRUE(this->CenterIs(center, 0));
  }
}

TEST_F(ImageViewerCross, PastTheFarEdgeItStopsAtTheLastIndex)
{
  for (int orientation : { 0, 1, 2 })
  {
    SCOPED_TRACE(orientation);
    this->ShowInside(this->Cube(9), orientation); // at 4, 4 of 8
    this->AdjustTo(this->InPlane(9.5, 6.3));
    EXPECT_TRUE(this->MovementIs(4, 2));
    EXPECT_TRUE(this->CrossIndexIs(8, 6));
    EXPECT_NEAR(this->CrossAlong(0), 8.0, 1e-9);
    this->AdjustTo(this->InPlane(2.7, 9.5));
    EXPECT_TRUE(this->MovementIs(-5, 2));
    EXPECT_TRUE(this->CrossIndexIs(3, 8));
    this->AdjustTo(this->InPlane(9.5, 9.5));
    EXPECT_TRUE(this->MovementIs(5, 0));
    this->Viewer->SetEnabled(0);
  }
}

TEST_F(ImageViewerCross, PastTheNearEdgeItGoesToIndexZero)
{
  for (int orientation : { 0, 1, 2 })
  {
    SCOPED_TRACE(orientation);
    this->ShowInside(this->Cube(9), orientation);
    this->AdjustTo(this->InPlane(-1.5, 6.3));
    EXPECT_TRUE(this->MovementIs(-4, 2));
    EXPECT_TRUE(this->CrossIndexIs(0, 6));
    EXPECT_NEAR(this->CrossAlong(0), 0.0, 1e-9);
    this->AdjustTo(this->InPlane(3.3, -1.5));
    EXPECT_TRUE(this->MovementIs(3, -6));
    EXPECT_TRUE(this->CrossIndexIs(3, 0));
    EXPECT_NEAR(this->CrossAlong(1), 0.0, 1e-9);
    this->AdjustTo(this->InPlane(-1.5, -1.5));
    EXPECT_TRUE(this->MovementIs(-3, 0));
    EXPECT_TRUE(this->CrossIndexIs(0, 0));
    this->Viewer->SetEnabled(0);
  }
}

TEST_F(ImageViewerCross, NeitherRendersNorMarksTheWidgetModified)
{
  this->ShowInside(this->Cube(9), 2);
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Scene.Window(), { vtkCommand::StartEvent });
  const auto before = this->Viewer->GetMTime();
  this->AdjustTo(this->InPlane(6, 6));
  EXPECT_TRUE(this->CrossIndexIs(6, 6));
  this->Viewer->SetSliceCross(-1, -1);
  int index[2] = { 2, 2 };
  this->Viewer->SetCrossIndex(index);
  EXPECT_EQ(this->Viewer->GetMTime(), before);
  EXPECT_TRUE(recorder.Events().empty());
}

TEST_F(ImageViewerCross, StaysConsistentOverAThousandRandomDrags)
{
  zvtest::Dice dice(31);
  for (const auto& options : { zvtest::UnequalVolume(), zvtest::ShiftedExtentVolume(),
         zvtest::NegativeSpacingVolume({ 0, 2 }) })
  {
    for (int orientation : { 0, 1, 2 })
    {
      SCOPED_TRACE(orientation);
      this->ShowInside(options, orientation);
      const double spacing[2] = { options.Spacing[this->Viewer->FirstAxis],
        options.Spacing[this->Viewer->SecondAxis] };
      double offset[2];
      for (int k : { 0, 1 })
      {
        offset[k] = this->CrossAlong(k) - this->Viewer->CrossIndex[k] * spacing[k];
      }
      int moved = 0;
      for (int n = 0; n < 1000; ++n)
      {
        int before[2];
        this->Viewer->GetCrossIndex(before);
        this->Viewer->AdjustCross(dice.Int(-20, 419), dice.Int(-20, 419));
        int steps[2];
        this->Viewer->GetSlicesMovement(steps);
        ASSERT_TRUE(this->CrossIndexIs(before[0] + steps[0], before[1] + steps[1])) << n;
        ASSERT_TRUE(this->CrossIsConsistent()) << n;
        for (int k : { 0, 1 })
        {
          ASSERT_NEAR(
            this->CrossAlong(k), this->Viewer->CrossIndex[k] * spacing[k] + offset[k], 1e-9)
            << n;
        }
        moved += steps[0] != 0 || steps[1] != 0;
        if (dice.Chance(0.1))
        {
          this->Refresh();
          // A centre half a voxel past the edge is off the plane: the lines stay then.
          const PlanePoints plane = this->Plane();
          if (this->CrossAlong(0) < Length(plane.Point1 - plane.Origin) &&
            this->CrossAlong(1) < Length(plane.Point2 - plane.Origin) &&
            this->CrossAlong(0) > 1e-6 && this->CrossAlong(1) > 1e-6)
          {
            ASSERT_TRUE(this->LinesSpanThePlane()) << n;
          }
        }
      }
      EXPECT_GT(moved, 300);
      this->Viewer->SetEnabled(0);
    }
  }
}

TEST_F(ImageViewerCross, StaysConsistentOnAnObliquePlane)
{
  zvtest::Dice dice(32);
  this->Show(this->Cube(9), 2);
  this->Viewer->SetSliceIndex(4);
  World axis{ { 0.4, -0.2, 0.9 } };
  World center = ToWorld(this->Viewer->RotationCenter);
  this->Viewer->Rotate(25.0, axis.data(), center.data());
  this->LookAtPlane();
  this->Scene.Render();
  const World normal = ToWorld(this->Viewer->PlaneSource->GetNormal());
  const double depth = Dot(normal, center);
  int moved = 0;
  for (int n = 0; n < 1000; ++n)
  {
    int before[2];
    this->Viewer->GetCrossIndex(before);
    this->Viewer->AdjustCross(dice.Int(-20, 419), dice.Int(-20, 419));
    int steps[2];
    this->Viewer->GetSlicesMovement(steps);
    ASSERT_TRUE(this->CrossIndexIs(before[0] + steps[0], before[1] + steps[1])) << n;
    ASSERT_TRUE(this->CrossIsConsistent()) << n;
    ASSERT_NEAR(Dot(normal, ToWorld(this->Viewer->RotationCenter)), depth, 1e-9) << n;
    const LineEnds line1 = this->Line(1);
    const LineEnds line2 = this->Line(2);
    ASSERT_NEAR(
      Dot(Unit(line1.Point2 - line1.Point1), Unit(line2.Point2 - line2.Point1)), 0.0, 1e-9);
    moved += steps[0] != 0 || steps[1] != 0;
    if (n % 10 == 0)
    {
      this->Refresh();
      ASSERT_TRUE(this->LinesSpanThePlane()) << n;
    }
  }
  EXPECT_GT(moved, 100);
}

// ---- the cross moved by the host ----

TEST_F(ImageViewerCross, StepsTakeTheOvershootPastTheEndByDesign)
{
  struct Row
  {
    int Index;
    int Steps;
    int Taken;
  };
  // Of 8 steps along both axes.
  const Row rows[] = { { 4, 2, 2 }, { 4, -3, -3 }, { 4, 4, 4 }, { 6, 5, 3 }, { 8, 1, 1 },
    { 4, -4, -4 }, { 4, -9, -4 }, { 0, 9, 1 }, { 0, -1, 0 }, { 7, 20, 19 }, { 9, 0, 1 },
    { 9, -1, -1 }, { 20, -25, -20 }, { -5, 14, 5 }, { -5, 2, 5 } };
  for (int axis : { 0, 1 })
  {
    for (const Row& row : rows)
    {
      SCOPED_TRACE(testing::Message()
        << "axis " << axis << ", index " << row.Index << ", steps " << row.Steps);
      this->Place(this->Cube(9), 2);
      this->Refresh();
      this->Viewer->CrossIndex[axis] = row.Index;
      const LineEnds line1 = this->Line(1);
      const LineEnds line2 = this->Line(2);
      const World center = ToWorld(this->Viewer->RotationCenter);
      this->Viewer->SetSliceCross(axis == 0 ? row.Steps : 0, axis == 1 ? row.Steps : 0);
      World by{ { 0, 0, 0 } };
      by[axis] = row.Taken;
      const World none{ { 0, 0, 0 } };
      const World by1 = axis == 0 ? by : none;
      const World by2 = axis == 1 ? by : none;
      EXPECT_EQ(this->Viewer->CrossIndex[axis], row.Index + row.Taken);
      EXPECT_EQ(this->Viewer->CrossIndex[1 - axis], 4);
      EXPECT_TRUE(this->LineIs(1, { line1.Point1 + by1, line1.Point2 + by1 }));
      EXPECT_TRUE(this->LineIs(2, { line2.Point1 + by2, line2.Point2 + by2 }));
      EXPECT_TRUE(this->CenterIs(center + by));
      EXPECT_TRUE(this->MovementIs(0, 0)) << "only a drag tells its steps";
    }
  }
}

TEST_F(ImageViewerCross, StepsAreAlongTheOtherLineInItsSpacing)
{
  for (const auto& options : { zvtest::UnequalVolume(), zvtest::NegativeSpacingVolume({ 0, 1 }) })
  {
    for (int orientation : { 0, 1, 2 })
    {
      this->Place(options, orientation);
      this->Refresh();
      const World center = ToWorld(this->Viewer->RotationCenter);
      const LineEnds line1 = this->Line(1);
      const LineEnds line2 = this->Line(2);
      World by1{ { 0, 0, 0 } };
      World by2{ { 0, 0, 0 } };
      const int first = (orientation + 1) % 3;
      const int second = (orientation + 2) % 3;
      by1[first] = -options.Spacing[first];
      by2[second] = options.Spacing[second];
      this->Viewer->SetSliceCross(-1, 1);
      EXPECT_TRUE(this->LineIs(1, { line1.Point1 + by1, line1.Point2 + by1 })) << orientation;
      EXPECT_TRUE(this->LineIs(2, { line2.Point1 + by2, line2.Point2 + by2 })) << orientation;
      EXPECT_TRUE(this->CenterIs(center + by1 + by2)) << orientation;
    }
  }
}

TEST_F(ImageViewerCross, StepsOnAnObliquePlaneStayInIt)
{
  this->Place(this->Cube(9), 1);
  this->Refresh();
  this->Viewer->SetSliceIndex(4);
  World axis{ { 0.5, 0.1, -0.3 } };
  World center = ToWorld(this->Viewer->RotationCenter);
  this->Viewer->Rotate(33.0, axis.data(), center.data());
  const LineEnds line1 = this->Line(1);
  const LineEnds line2 = this->Line(2);
  this->Viewer->SetSliceCross(2, -3);
  const World by1 = Unit(line2.Point2 - line2.Point1) * 2.0;
  const World by2 = Unit(line1.Point2 - line1.Point1) * -3.0;
  EXPECT_TRUE(this->LineIs(1, { line1.Point1 + by1, line1.Point2 + by1 }));
  EXPECT_TRUE(this->LineIs(2, { line2.Point1 + by2, line2.Point2 + by2 }));
  EXPECT_TRUE(this->CenterIs(center + by1 + by2));
}

TEST_F(ImageViewerCross, AnIndexIsStoredAsItIsAndTheLinesGoThroughTheCentre)
{
  for (int orientation : { 0, 1, 2 })
  {
    this->Place(zvtest::UnequalVolume(), orientation);
    this->Refresh();
    const PlanePoints plane = this->Plane();
    const World axis1 = plane.Point1 - plane.Origin;
    const World axis2 = plane.Point2 - plane.Origin;
    World center = plane.Origin + axis1 * 0.375 + axis2 * 0.875;
    this->Viewer->SetRotationCenter(center.data());
    int index[2] = { 1234, -77 };
    this->Viewer->SetCrossIndex(index);
    EXPECT_TRUE(this->CrossIndexIs(1234, -77));
    EXPECT_TRUE(this->CenterIs(center, 0));
    EXPECT_TRUE(this->LineIs(1, { plane.Origin + axis1 * 0.375, plane.Point2 + axis1 * 0.375 }));
    EXPECT_TRUE(this->LineIs(2, { plane.Origin + axis2 * 0.875, plane.Point1 + axis2 * 0.875 }));
    EXPECT_TRUE(this->LinesSpanThePlane());
  }
}

TEST_F(ImageViewerCross, AnExtremeIndexIsHarmless)
{
  this->Show(this->Cube(9), 2);
  for (int extreme : { std::numeric_limits<int>::max(), std::numeric_limits<int>::min() })
  {
    int index[2] = { extreme, extreme };
    this->Viewer->SetCrossIndex(index);
    this->Viewer->SetSliceCross(extreme, extreme);
    this->Viewer->SetSliceCross(-1, 1);
    this->Viewer->AdjustCross(200, 200);
    this->Viewer->PushCross(extreme);
    this->Viewer->SetSliceIndex(extreme);
    this->Viewer->SetNumberOfSlices(extreme);
    this->Viewer->SetSliceIndex(extreme);
    this->Viewer->SetDimensions(extreme, extreme);
    this->Viewer->floodFill(2, 2, extreme);
    this->Viewer->SetSliceCross(1, 1);
    EXPECT_TRUE(std::isfinite(this->Viewer->RotationCenter[0]));
    this->Place(this->Cube(9), 2);
    this->Refresh();
  }
}

TEST_F(ImageViewerCross, TheResolutionIsThatOfTheLines)
{
  this->Place(zvtest::UnequalVolume(), 2);
  const auto before = this->Viewer->GetMTime();
  int resolution[2] = { 12, 34 };
  this->Viewer->SetCrossResolution(resolution);
  EXPECT_EQ(this->Viewer->SliceLine1Source->GetResolution(), 12);
  EXPECT_EQ(this->Viewer->SliceLine2Source->GetResolution(), 34);
  EXPECT_EQ(this->Viewer->GetMTime(), before);
  EXPECT_TRUE(this->CrossIndexIs(3, 2));
}

// ---- showing and hiding ----

class ImageViewerLines : public ImageViewerCross
{
protected:
  // Whether a line can be grabbed a quarter of the way along it.
  bool CanBeGrabbed(int line)
  {
    const LineEnds ends = this->Line(line);
    const zvtest::Display at = this->Scene.At(ends.Point1 + (ends.Point2 - ends.Point1) * 0.25);
    vtkCellPicker* picker =
      line == 1 ? this->Viewer->SliceLine1Picker : this->Viewer->SliceLine2Picker;
    picker->Pick(at[0], at[1], 0.0, this->Scene.Renderer());
    return picker->GetPath() != nullptr;
  }

  bool IsShown(vtkActor* actor) { return this->Scene.Renderer()->HasViewProp(actor) != 0; }
};

TEST_F(ImageViewerLines, CanBeGrabbedWhereTheyAre)
{
  this->ShowInside(this->Cube(9), 2);
  EXPECT_TRUE(this->CanBeGrabbed(1));
  EXPECT_TRUE(this->CanBeGrabbed(2));
  this->Viewer->SliceLine1Picker->Pick(this->Scene.At(this->InPlane(2, 2))[0],
    this->Scene.At(this->InPlane(2, 2))[1], 0.0, this->Scene.Renderer());
  EXPECT_EQ(this->Viewer->SliceLine1Picker->GetPath(), nullptr);
}

TEST_F(ImageViewerLines, HiddenCannotBeGrabbed)
{
  this->ShowInside(this->Cube(9), 2);
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  // Also after they were shown more than once.
  this->Viewer->SetLinesEnabled(1);
  EXPECT_EQ(recorder.Count(vtkCommand::RenderEvent), 1);
  this->Viewer->SetLinesEnabled(1);
  this->Viewer->SetLinesEnabled(0);
  EXPECT_EQ(recorder.Count(vtkCommand::RenderEvent), 3);
  EXPECT_FALSE(this->IsShown(this->Viewer->SliceLine1Actor));
  EXPECT_FALSE(this->IsShown(this->Viewer->SliceLine2Actor));
  EXPECT_FALSE(this->CanBeGrabbed(1));
  EXPECT_FALSE(this->CanBeGrabbed(2));
  // The place belongs to the slice now.
  const zvtest::Display at = this->Scene.At(this->Line(1).Point1 + World{ { 0, 2, 0 } });
  this->Viewer->PlanePicker->Pick(at[0], at[1], 0.0, this->Scene.Renderer());
  EXPECT_NE(this->Viewer->PlanePicker->GetPath(), nullptr);
  this->Viewer->SetLinesEnabled(0);
  this->Viewer->SetLinesEnabled(1);
  EXPECT_TRUE(this->CanBeGrabbed(1));
  EXPECT_TRUE(this->CanBeGrabbed(2));
  EXPECT_TRUE(this->IsShown(this->Viewer->SliceLine1Actor));
  EXPECT_TRUE(this->IsShown(this->Viewer->SliceLine2Actor));
  EXPECT_EQ(this->Viewer->SliceLine1Picker->GetPickFromList(), 1);
  EXPECT_EQ(this->Viewer->SliceLine2Picker->GetPickFromList(), 1);
}

TEST_F(ImageViewerLines, AreShownWithTheirProperties)
{
  this->ShowInside(this->Cube(9), 2);
  this->Viewer->SetLinesEnabled(0);
  vtkNew<vtkProperty> other;
  this->Viewer->SliceLine1Actor->SetProperty(other);
  this->Viewer->SetLinesEnabled(1);
  EXPECT_EQ(this->Viewer->SliceLine1Actor->GetProperty(), this->Viewer->SliceLine1Property.Get());
}

TEST_F(ImageViewerLines, HideAndShowInThePicture)
{
  const zvtest::Color red{ 255, 0, 0 }, green{ 0, 255, 0 };
  this->ShowInside(this->Cube(9), 2);
  EXPECT_GT(this->Scene.Look().Count(red), 50);
  EXPECT_GT(this->Scene.Look().Count(green), 50);
  this->Viewer->SetLinesEnabled(0);
  EXPECT_EQ(this->Scene.Look().Count(red), 0);
  EXPECT_EQ(this->Scene.Look().Count(green), 0);
  this->Viewer->SetLinesEnabled(1);
  EXPECT_GT(this->Scene.Look().Count(red), 50);
}

TEST_F(ImageViewerLines, FollowTheCrossInThePicture)
{
  const zvtest::Color red{ 255, 0, 0 }, green{ 0, 255, 0 };
  this->ShowInside(this->Cube(9), 2);
  this->AdjustTo(this->InPlane(6, 2));
  const zvtest::Picture picture = this->Scene.RenderAndLook();
  EXPECT_TRUE(picture.HasNear(red, this->Scene.At(this->InPlane(6, 5)), 1));
  EXPECT_FALSE(picture.HasNear(red, this->Scene.At(this->InPlane(4, 5)), 3, 60));
  EXPECT_TRUE(picture.HasNear(green, this->Scene.At(this->InPlane(3, 2)), 1));
  EXPECT_FALSE(picture.HasNear(green, this->Scene.At(this->InPlane(3, 4)), 3, 60));
}

// ---- the crossing of two segments ----

class ImageViewerIntersection : public ImageViewerTest
{
protected:
  int Meet(World p1, World p2, World a1, World a2)
  {
    this->X = { { 77, 77, 77 } };
    this->T = this->U = 77;
    return this->Viewer->Intersection(p1.data(), p2.data(), a1.data(), a2.data(), this->X.data(),
      this->Tolerance, this->T, this->U);
  }

  World X;
  double Tolerance = 0.5;
  double T = 0;
  double U = 0;
};

TEST_F(ImageViewerIntersection, OfCrossingSegmentsIsTheirPoint)
{
  EXPECT_EQ(this->Meet({ { 0, 0, 0 } }, { { 4, 0, 0 } }, { { 1, -2, 0 } }, { { 1, 6, 0 } }), 1);
  EXPECT_NEAR(this->T, 0.25, 1e-12);
  EXPECT_NEAR(this->U, 0.25, 1e-12);
  EXPECT_TRUE(IsPoint(this->X.data(), { { 1, 0, 0 } }));
  EXPECT_EQ(this->Tolerance, 0.5);
}

TEST_F(ImageViewerIntersection, BeyondAnEndCountsWithinTheTolerance)
{
  // The carriers cross 1 before the first segment's start, which is sqrt(1/2) from the second.
  const World a1{ { -2, -1, 0 } }, a2{ { 2, 3, 0 } };
  this->Tolerance = 0.8;
  EXPECT_EQ(this->Meet({ { 0, 0, 0 } }, { { 4, 0, 0 } }, a1, a2), 1);
  EXPECT_NEAR(this->T, -0.25, 1e-12);
  this->Tolerance = 0.6;
  EXPECT_EQ(this->Meet({ { 0, 0, 0 } }, { { 4, 0, 0 } }, a1, a2), 0);
  // And behind its end.
  this->Tolerance = 0.8;
  EXPECT_EQ(this->Meet({ { -8, 0, 0 } }, { { -2, 0, 0 } }, a1, a2), 1);
  EXPECT_GT(this->T, 1.0);
  this->Tolerance = 0.6;
  EXPECT_EQ(this->Meet({ { -8, 0, 0 } }, { { -2, 0, 0 } }, a1, a2), 0);
}

TEST_F(ImageViewerIntersection, AToleranceOutOfRangeIsClampedAndMeasuresTheSecondSegmentsEnds)
{
  const World p1{ { 0, 0, 0 } }, p2{ { 4, 0, 0 } };
  this->Tolerance = -0.5;
  EXPECT_EQ(this->Meet(p1, p2, { { 1, 0, 0 } }, { { 1, -3, 0 } }), 1) << "they do cross";
  EXPECT_EQ(this->Tolerance, -0.5);
  EXPECT_EQ(this->Meet(p1, p2, { { 1, 0.1, 0 } }, { { 1, 3, 0 } }), 0);
  EXPECT_EQ(this->Tolerance, 0.0);
  this->Tolerance = 2.0;
  EXPECT_EQ(this->Meet(p1, p2, { { 1, 9, 0 } }, { { 1, 0.9, 0 } }), 1);
  EXPECT_EQ(this->Tolerance, 1.0);
  this->Tolerance = 2.0;
  EXPECT_EQ(this->Meet(p1, p2, { { 1, 9, 0 } }, { { 1, 1.1, 0 } }), 0);
  EXPECT_EQ(this->Tolerance, 1.0);
}

TEST_F(ImageViewerIntersection, OnlyTheSecondBeyondItsEndIsNone)
{
  EXPECT_EQ(this->Meet({ { 0, 0, 0 } }, { { 4, 0, 0 } }, { { 1, 0.1, 0 } }, { { 1, 3, 0 } }), 0);
  EXPECT_NEAR(this->T, 0.25, 1e-12);
  EXPECT_LT(this->U, 0.0);
}

TEST_F(ImageViewerIntersection, OfParallelOrEmptySegmentsIsHarmless)
{
  this->Meet({ { 0, 0, 0 } }, { { 4, 0, 0 } }, { { 0, 1, 0 } }, { { 4, 1, 0 } });
  EXPECT_TRUE(std::isfinite(this->T));
  EXPECT_TRUE(std::isfinite(this->U));
  this->Meet({ { 0, 0, 0 } }, { { 0, 0, 0 } }, { { 0, 1, 0 } }, { { 0, 1, 0 } });
  EXPECT_TRUE(std::isfinite(this->T));
  EXPECT_TRUE(std::isfinite(this->U));
}
