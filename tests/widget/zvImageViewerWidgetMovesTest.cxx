// What a move over the slice view does beside the state: what it remembers, what it draws, what is
// sampled anew and what is not; and turns and drags at the edge of what a plane can be.

#include "zvImageViewerMouseFixture.h"

#include "vtkFollower.h"
#include "vtkPropCollection.h"

#include <limits>

using zvtest::Left;
using zvtest::Right;
using zvtest::World;

namespace
{
class ImageViewerMoves : public ImageViewerMouse
{
protected:
  ImageViewerMoves() { this->Renders.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent }); }

  int SamplesAcross() const { return this->Viewer->Reslice->GetOutputExtent()[1] + 1; }

  zvtest::EventRecorder Renders;
};
}

//------------------------------------------------------------------------------

TEST_F(ImageViewerMoves, EachRemembersWhatIsUnderThePointerHitOrNot)
{
  double* last = this->Viewer->LastPickPosition;
  this->Mouse.MoveTo(this->On(4.0, 15.0));
  EXPECT_TRUE(IsPoint(last, { { 4.0, 15.0, 19.0 } }, 0.1));
  this->Mouse.MoveTo(this->Beside());
  EXPECT_TRUE(IsPoint(last, ToWorld(this->Viewer->PlanePicker->GetPickPosition()), 0));
  EXPECT_LT(last[0], 0.0);
  // Without tracking it is what was picked last.
  this->Viewer->SetQuickApply(true);
  const World before = ToWorld(last);
  last[0] = 77.0;
  this->Mouse.MoveTo(this->On(12.0, 15.0));
  EXPECT_TRUE(IsPoint(last, before, 0));
}

TEST_F(ImageViewerMoves, EachRendersOnceForEveryRulerAndFitsItsLabel)
{
  this->PlaceRuler();
  zvRulerWidget* second = this->PlaceRuler();
  second->SetPoint1(3.0, 17.0, 20.0);
  second->SetPoint2(15.0, 17.0, 20.0);
  this->Viewer->AddRulerWidget(nullptr); // one that waits has no view yet
  this->Viewer->AddRulerMode = false;
  this->Mouse.MoveTo(this->On(4.0, 12.0));
  std::vector<vtkFollower*> labels;
  vtkPropCollection* props = this->Scene.Renderer()->GetViewProps();
  for (int i = 0; i < props->GetNumberOfItems(); ++i)
  {
    if (auto* follower = vtkFollower::SafeDownCast(props->GetItemAsObject(i)))
    {
      labels.push_back(follower);
    }
  }
  ASSERT_EQ(labels.size(), 2u);
  const double scales[2] = { labels[0]->GetScale()[0], labels[1]->GetScale()[0] };
  for (vtkFollower* label : labels)
  {
    label->SetScale(99.0);
  }
  this->Renders.Clear();
  this->Mouse.MoveTo(this->On(4.5, 12.0));
  EXPECT_EQ(this->Renders.Events().size(), 2u) << "and none of the idle view itself";
  for (int i : { 0, 1 })
  {
    EXPECT_EQ(labels[i]->GetScale()[0], scales[i]) << i;
  }
}

TEST_F(ImageViewerMoves, EachSetsTheCameraUpright)
{
  vtkCamera* camera = this->Scene.Renderer()->GetActiveCamera();
  camera->SetViewUp(0.2, 0.8, 0.5);
  this->Mouse.MoveTo(this->On(4.0, 15.0));
  EXPECT_NEAR(
    Dot(ToWorld(camera->GetViewUp()), ToWorld(camera->GetDirectionOfProjection())), 0.0, 1e-9);
  EXPECT_TRUE(IsPoint(camera->GetViewPlaneNormal(), { { 0, 0, 1 } }));
}

TEST_F(ImageViewerMoves, ADragOfTheCrossSamplesNothingAnew)
{
  this->Viewer->UpdatePlane(); // enabling marks the view modified
  this->Press(this->OffTheLines());
  ASSERT_EQ(this->SamplesAcross(), 32);
  const auto resliceTime = this->Viewer->Reslice->GetMTime();
  const auto time = this->Viewer->GetMTime();
  const auto updated = this->Viewer->LastUpdateMTime;
  for (const double x : { 5.0, 7.0, 12.0 })
  {
    this->Mouse.MoveTo(this->On(x, 13.0));
    EXPECT_EQ(this->Viewer->GetImageResolutionFactor(), 4);
    EXPECT_EQ(this->SamplesAcross(), 32) << "nothing has marked the view modified";
    EXPECT_EQ(this->Viewer->Reslice->GetMTime(), resliceTime);
    EXPECT_EQ(this->Viewer->GetMTime(), time);
    EXPECT_EQ(this->Viewer->LastUpdateMTime, updated);
  }
  EXPECT_TRUE(this->CrossIndexIs(11, 13));
  this->Mouse.Release(Left);
  EXPECT_EQ(this->SamplesAcross(), 32);
  EXPECT_GT(this->Viewer->LastUpdateMTime, updated);
}

TEST_F(ImageViewerMoves, ATurnIsSampledCoarselyUntilTheRelease)
{
  this->Press(this->OnLine1());
  this->Mouse.MoveTo(this->On(9.5, 15.0));
  this->Mouse.MoveTo(this->On(8.5, 15.0));
  const int coarse = this->SamplesAcross();
  const double spacing = this->Viewer->Reslice->GetOutputSpacing()[0];
  ASSERT_GT(coarse, 4);
  this->Mouse.Release(Left);
  EXPECT_EQ(this->SamplesAcross(), 4 * coarse);
  EXPECT_NEAR(this->Viewer->Reslice->GetOutputSpacing()[0], spacing / 4, 1e-9);
}

TEST_F(ImageViewerMoves, ATurnIsAboutTheDepthOfWhatIsUnderThePointer)
{
  const World center = ToWorld(this->Viewer->RotationCenter);
  const zvtest::Display from = this->OnLine1();
  const zvtest::Display to = this->On(8.5, 15.0);
  this->Press(from);
  this->Mouse.MoveTo(from); // so that the last position is known
  this->Mouse.MoveTo(to);
  const World p1 = this->Scene.WorldAt(from, { { 0, 0, 19 } });
  const World p2 = this->Scene.WorldAt(to, { { 0, 0, 19 } });
  const World axis = Cross({ { 0, 0, 1 } }, Unit(p2 - center));
  const double angle = Dot(p2 - p1, axis) / Length(p2 - center) * 57.29577951308232;
  EXPECT_GT(angle, 5.0);
  EXPECT_NEAR(this->Viewer->GetLastDegree(), angle, 1e-3);
  EXPECT_TRUE(IsPoint(this->Viewer->RotateAxis, axis, 1e-4));
}

TEST_F(ImageViewerMoves, AWindowLevelDragTellsTheValuesInForce)
{
  zvtest::EventRecorder events;
  events.Watch(this->Viewer, { vtkCommand::WindowLevelEvent });
  this->Viewer->SetRightButtonAction(2);
  this->Mouse.Press(Right, this->OffTheLines());
  zvtest::Display to = this->OffTheLines();
  for (int move : { 1, 2 })
  {
    to[0] += 20;
    to[1] -= 30;
    this->Mouse.MoveTo(to);
    ASSERT_EQ(events.Events().size(), static_cast<std::size_t>(move));
    EXPECT_EQ(events.Events().back().Values,
      (std::vector<double>{ this->Viewer->GetWindow(), this->Viewer->GetLevel() }));
  }
}

//------------------------------------------------------------------------------
// Margins

namespace
{
class ImageViewerMargins : public ImageViewerMoves
{
protected:
  // Whether every point of the margins lies on two edges or margins of the plane as it stands.
  ::testing::AssertionResult AreOnThePlane()
  {
    const PlanePoints plane = this->Plane();
    const World axis1 = plane.Point1 - plane.Origin;
    const World axis2 = plane.Point2 - plane.Origin;
    vtkPoints* points = this->Viewer->MarginPolyData->GetPoints();
    for (vtkIdType i = 0; i < points->GetNumberOfPoints(); ++i)
    {
      const World at = ToWorld(points->GetPoint(i)) - plane.Origin;
      const double a = Dot(at, axis1) / Dot(axis1, axis1);
      const double b = Dot(at, axis2) / Dot(axis2, axis2);
      const World off = at - axis1 * a - axis2 * b;
      const bool isOnEdge = std::abs(a * (1.0 - a)) < 1e-6 || std::abs(b * (1.0 - b)) < 1e-6;
      if (Length(off) > 1e-5 || !isOnEdge)
      {
        return ::testing::AssertionFailure() << "point " << i << " is at " << a << ", " << b;
      }
    }
    return points->GetNumberOfPoints() == 8 ? ::testing::AssertionSuccess()
                                            : ::testing::AssertionFailure() << "there are not 8";
  }
};
}

TEST_F(ImageViewerMargins, FollowThePlane)
{
  this->Viewer->PlaneSource->Push(-3.0);
  EXPECT_FALSE(this->AreOnThePlane());
  this->Viewer->UpdatePlacement();
  EXPECT_TRUE(this->AreOnThePlane());
  this->Viewer->SetSliceIndex(5);
  EXPECT_TRUE(this->AreOnThePlane());
  World axis{ { 0.3, 0.2, 0.9 } };
  World center{ { 9.5, 9.5, 5.0 } };
  this->Viewer->Rotate(20.0, axis.data(), center.data());
  EXPECT_TRUE(this->AreOnThePlane());
  World from = center + World{ { 3, 0, 0 } };
  World to = center + World{ { 3, 1, 0 } };
  this->Viewer->Rotate(0, 0, from.data(), to.data(), to.data());
  EXPECT_TRUE(this->AreOnThePlane());
}

//------------------------------------------------------------------------------
// Drags of the cross, on a plane as it was placed and on one that was turned

namespace
{
class ImageViewerDrags : public ImageViewerViewTest
{
protected:
  // The centre of the nearest voxel under a pixel, or the point itself beside the volume.
  World VoxelUnder(int X, int Y)
  {
    this->Viewer->PlanePicker->Pick(X, Y, 0.0, this->Scene.Renderer());
    World q = ToWorld(this->Viewer->PlanePicker->GetPickPosition());
    const vtkIdType voxel = this->Volume->FindPoint(q.data());
    if (voxel >= 0)
    {
      this->Volume->GetPoint(voxel, q.data());
    }
    return q;
  }

  // Whether a plane through q cuts the volume's box.
  bool CutsTheBox(const World& q, const World& normal)
  {
    const double* b = this->Volume->GetBounds();
    bool isAbove = false;
    bool isBelow = false;
    for (int corner = 0; corner < 8; ++corner)
    {
      const World at{ { b[corner & 1], b[2 + (corner >> 1 & 1)], b[4 + (corner >> 2)] } };
      (Dot(normal, at - q) >= 0.0 ? isAbove : isBelow) = true;
    }
    return isAbove && isBelow;
  }

  // The steps that one line takes to q: along the plane's axis to end, by index.
  int StepsTo(const World& q, int line, const World& end, const World& normal, double spacing)
  {
    const World origin = this->Plane().Origin;
    const World axis = end - origin;
    const World foot = origin + axis * (Dot(q - origin, axis) / Dot(axis, axis));
    const int index = this->Viewer->CrossIndex[line];
    int steps = static_cast<int>(
      (Length(origin - foot) - Length(origin - this->Line(line + 1).Point1)) / spacing);
    if (!this->CutsTheBox(q, normal) && Length(foot - origin) < Length(end - foot))
    {
      steps = -index;
    }
    steps = std::min(steps, this->Viewer->Dimensions[line] - index);
    return std::max(steps, -index);
  }

  // Drag to a pixel and compare with what the steps should be.
  void DragTo(int X, int Y)
  {
    const double spacing[2] = { this->Volume->GetSpacing()[this->Viewer->FirstAxis],
      this->Volume->GetSpacing()[this->Viewer->SecondAxis] };
    const World q = this->VoxelUnder(X, Y);
    const int first =
      this->StepsTo(q, 0, this->Plane().Point1, ToWorld(this->Viewer->LineNormal1), spacing[0]);
    const int second =
      this->StepsTo(q, 1, this->Plane().Point2, ToWorld(this->Viewer->LineNormal2), spacing[1]);
    const World before = ToWorld(this->Viewer->RotationCenter);
    const World along1 = Unit(this->Line(2).Point2 - this->Line(2).Point1);
    const World along2 = Unit(this->Line(1).Point2 - this->Line(1).Point1);
    this->Viewer->AdjustCross(X, Y);
    ASSERT_TRUE(this->MovementIs(first, second));
    ASSERT_TRUE(
      this->CenterIs(before + along1 * (first * spacing[0]) + along2 * (second * spacing[1])));
    this->Moved += first != 0 || second != 0;
  }

  void DragALot(const zvtest::VolumeOptions& options, int orientation, bool isTurned)
  {
    this->Show(options, orientation);
    this->Viewer->SetSliceIndex(1);
    if (isTurned)
    {
      const double width = Length(this->Plane().Point1 - this->Plane().Origin);
      World axis{ { 0.4, -0.2, 0.9 } };
      World center = ToWorld(this->Viewer->RotationCenter);
      this->Viewer->Rotate(25.0, axis.data(), center.data());
      EXPECT_GT(Length(this->Plane().Point1 - this->Plane().Origin), width);
      this->LookAtPlane();
    }
    this->Scene.Render();
    for (int n = 0; n < 100 && !this->HasFatalFailure(); ++n)
    {
      SCOPED_TRACE(testing::Message() << "drag " << n);
      this->DragTo(this->Dice.Int(-20, 419), this->Dice.Int(-20, 419));
    }
    this->Viewer->SetEnabled(0);
  }

  zvtest::Dice Dice{ 91 };
  int Moved = 0;
};
}

TEST_F(ImageViewerDrags, CountWholeVoxelsFromThePlanesOrigin)
{
  for (const auto& options : { this->Cube(9), zvtest::UnequalVolume(),
         zvtest::NegativeSpacingVolume({ 0, 2 }), zvtest::ShiftedExtentVolume() })
  {
    for (const int orientation : { 0, 1, 2 })
    {
      for (const bool isTurned : { false, true })
      {
        SCOPED_TRACE(testing::Message()
          << "spacing " << options.Spacing[0] << ", dimension " << options.Dimensions[0]
          << ", orientation " << orientation << ", turned " << isTurned);
        this->DragALot(options, orientation, isTurned);
        ASSERT_FALSE(this->HasFatalFailure());
      }
    }
  }
  EXPECT_GT(this->Moved, 500);
}

//------------------------------------------------------------------------------
// Turns of what can hardly be turned

class ImageViewerOddTurns : public ImageViewerViewTest
{
};

TEST_F(ImageViewerOddTurns, ALineOfNoLengthHasNoDirection)
{
  this->Place(zvtest::OneVoxelThickVolume(0), 2);
  World axis{ { 0, 0, 1 } };
  World center = ToWorld(this->Viewer->RotationCenter);
  this->Viewer->Rotate(30.0, axis.data(), center.data());
  EXPECT_TRUE(IsPoint(this->Viewer->LineNormal1, { { 0, 0, 0 } }, 0));
  EXPECT_NEAR(Length(ToWorld(this->Viewer->LineNormal2)), 1.0, 1e-9);
  this->ExpectVtkError(
    "zvImageViewerWidget", "zvImageViewerWidget", this->Viewer, "Invalid X extent: 2.14748e+09");
}

TEST_F(ImageViewerOddTurns, ATurnByNoNumberIsHarmlessAndUndoneByAPlacement)
{
  const double lost = std::numeric_limits<double>::quiet_NaN();
  const double endless = std::numeric_limits<double>::infinity();
  const World x{ { 1, 0, 0 } };
  struct Row
  {
    double Angle;
    World Axis;
    World Center;
  };
  for (const Row& row : { Row{ lost, x, x }, Row{ endless, x, x }, Row{ 10, { { lost, 0, 1 } }, x },
         Row{ 10, x, { { 0, lost, 0 } } }, Row{ 10, x, { { 0, 0, endless } } } })
  {
    this->Show(this->Cube(9), 2);
    World axis = row.Axis;
    World center = row.Center;
    this->Viewer->Rotate(row.Angle, axis.data(), center.data());
    this->Viewer->Rotate(0, 0, axis.data(), center.data(), axis.data());
    this->Viewer->GetSliceIndex();
    this->Viewer->SetSliceIndex(2);
    this->Viewer->UpdateCursor(200, 200);
    this->Viewer->AdjustCross(150, 220);
    this->Viewer->SetSliceCross(1, -1);
    int index[2] = { 1, 2 };
    this->Viewer->SetCrossIndex(index);
    this->Viewer->SetDimensions(20, 20);
    this->Mouse.Drag(Left, { { 150, 250 } }, { { 250, 150 } });
    this->Scene.Render();
    this->TakeMessages(); // that so many samples cannot be made
    this->Viewer->SetPlaneOrientation(2);
    this->Refresh();
    EXPECT_TRUE(this->LinesSpanThePlane());
    EXPECT_EQ(this->Viewer->GetSliceIndex(), 8);
    this->ExpectNoMessage();
    this->Viewer->SetEnabled(0);
  }
}
