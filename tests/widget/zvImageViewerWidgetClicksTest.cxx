// What a press on the slice view leaves behind in every view: the point that was hit, the tool that
// it places, the lasso that it chooses, the voxels that it fills.

#include "zvImageViewerMouseFixture.h"

#include "vtkFollower.h"
#include "vtkPropCollection.h"

using zvtest::Left;
using zvtest::Right;
using zvtest::Shift;
using zvtest::World;

namespace
{
const World Untouched{ { 77.0, 77.0, 77.0 } };

class ImageViewerClicks : public ImageViewerMouse
{
protected:
  // The slice at the far face of another side of the cube.
  void ShowSide(int orientation)
  {
    this->Viewer->SetPlaneOrientation(orientation);
    this->Viewer->UpdatePlane();
    this->LookAlongNormal(orientation == 0 || orientation == 2 ? orientation : 1);
    this->Scene.Render();
  }

  // A place on that slice, off both lines.
  static World OnSide(int orientation)
  {
    World at{ { 5.0, 5.0, 5.0 } };
    at[orientation] = 19.0;
    return at;
  }

  void ForgetPoints()
  {
    std::copy_n(Untouched.data(), 3, this->Viewer->PointClicked);
    std::copy_n(Untouched.data(), 3, this->Viewer->LastPickPosition);
  }

  void SetViewport(double left) { this->Scene.Renderer()->SetViewport(left, 0.0, 1.0, 1.0); }

  double At(int i, int j) { return this->Volume->GetScalarComponentAsDouble(i, j, 19, 0); }
};
}

//------------------------------------------------------------------------------
// The point

TEST_F(ImageViewerClicks, APressLeavesThePointThatItHit)
{
  const double* clicked = this->Viewer->PointClicked;
  const double* picked = this->Viewer->LastPickPosition;
  struct Row
  {
    const char* Name;
    zvtest::Display At;
    World Point;
  };
  for (const Row& row : { Row{ "line 1", this->OnLine1(), { { 9.5, 15.0, 19.0 } } },
         Row{ "line 2", this->On(4.0, 9.5), { { 4.0, 9.5, 19.0 } } },
         Row{ "the slice", this->OffTheLines(), { { 4.0, 15.0, 19.0 } } } })
  {
    SCOPED_TRACE(row.Name);
    this->Viewer->SetPlaneOrientation(2);
    this->Viewer->UpdatePlane();
    this->ForgetPoints();
    this->Press(row.At);
    EXPECT_TRUE(IsPoint(clicked, row.Point, 0.2));
    EXPECT_TRUE(IsPoint(picked, ToWorld(clicked), 0));
    this->Mouse.Release(Left, row.At);
  }
  this->Viewer->SetPickPointModeC(true);
  this->ForgetPoints();
  this->Press(this->OffTheLines());
  EXPECT_TRUE(IsPoint(clicked, { { 4.0, 15.0, 19.0 } }, 0.1));
  EXPECT_TRUE(IsPoint(picked, ToWorld(clicked), 0));
}

TEST_F(ImageViewerClicks, APressBesideTheSliceLeavesOnlyThePointUnderThePointer)
{
  for (const bool inPointMode : { false, true })
  {
    this->Viewer->SetPickPointModeA(inPointMode);
    this->ForgetPoints();
    this->Press(this->Beside());
    EXPECT_TRUE(IsPoint(
      this->Viewer->PointClicked, ToWorld(this->Viewer->PlanePicker->GetPickPosition()), 0));
    EXPECT_LT(this->Viewer->PointClicked[0], 0.0);
    EXPECT_TRUE(IsPoint(this->Viewer->LastPickPosition, Untouched, 0));
  }
}

TEST_F(ImageViewerClicks, APressOutsideTheViewportLeavesNoPoint)
{
  this->SetViewport(0.5);
  this->ForgetPoints();
  this->Press(this->Beside());
  EXPECT_TRUE(IsPoint(this->Viewer->PointClicked, Untouched, 0));
  EXPECT_TRUE(IsPoint(this->Viewer->LastPickPosition, Untouched, 0));
}

TEST_F(ImageViewerClicks, OnAnObliquePlaneBoundsReplaceNoDepth)
{
  World axis{ { 0, 0, 1 } };
  World center{ { 9.5, 9.5, 19.0 } };
  this->Viewer->Rotate(10.0, axis.data(), center.data());
  ASSERT_EQ(this->Viewer->GetPlaneOrientation(), 3);
  for (const auto set :
    { &zvImageViewerWidget::SetPickPointBoundMode, &zvImageViewerWidget::SetAddText })
  {
    (this->Viewer->*set)(true);
    this->Click(this->OffTheLines());
    EXPECT_TRUE(IsPoint(this->Viewer->PointClicked, { { 4.0, 15.0, 19.0 } }, 0.1));
    (this->Viewer->*set)(false);
  }
}

TEST_F(ImageViewerClicks, TheBoundOfTheYViewReplacesNoDepth)
{
  this->ShowSide(1);
  this->Viewer->SetPickPointBoundMode(true);
  this->Click(this->Mouse.At(OnSide(1)));
  EXPECT_TRUE(IsPoint(this->Viewer->PointClicked, OnSide(1), 0.1));
}

//------------------------------------------------------------------------------
// Rulers and contours

TEST_F(ImageViewerClicks, RulersAndContoursStandBeforeTheSliceOfEveryView)
{
  for (const int orientation : { 0, 1, 2 })
  {
    SCOPED_TRACE(orientation);
    this->ShowSide(orientation);
    World expected = OnSide(orientation);
    expected[orientation] = 20.0;

    this->Viewer->AddRulerWidget(nullptr);
    this->Click(this->Mouse.At(OnSide(orientation)));
    EXPECT_TRUE(IsPoint(this->Viewer->PointClicked, expected, 0.1));
    vtkNew<vtkPolyData> line;
    this->Ruler()->GetPolyData(line);
    double bounds[6];
    line->GetBounds(bounds);
    for (int i = 0; i < 6; ++i)
    {
      EXPECT_NEAR(bounds[i], this->Viewer->PointClicked[i / 2], 1e-5) << i;
    }

    this->Viewer->EnableAreaWidget();
    this->Click(this->Mouse.At(OnSide(orientation)));
    zvAreaWidget* area = this->Viewer->CurrentAreaWidget;
    ASSERT_NE(area, nullptr);
    EXPECT_EQ(area->GetProjectionNormal(), orientation);
    double handle[3];
    area->GetHandlePosition(0, handle);
    EXPECT_TRUE(IsPoint(handle, expected, 0.1));
    this->Viewer->DeleteWidget();
  }
}

TEST_F(ImageViewerClicks, AContourOfAnOddOrientationKeepsItsNormal)
{
  this->ShowSide(7);
  this->Viewer->AddAreaWidget(nullptr);
  zvAreaWidget* area = this->Viewer->CurrentAreaWidget;
  area->SetProjectionNormal(2);
  this->Click(this->Mouse.At(OnSide(1)));
  EXPECT_EQ(area->GetNumberOfHandles(), 1);
  EXPECT_EQ(area->GetProjectionNormal(), 2);
}

TEST_F(ImageViewerClicks, TheLiftIsAgainstTheDirectionOfTheCamera)
{
  this->LookAlong({ { -1.0, 0.5, -2.0 } }, { { 0, 1, 0 } });
  this->Scene.Render();
  double direction[3];
  this->Scene.Renderer()->GetActiveCamera()->GetDirectionOfProjection(direction);
  ASSERT_LT(direction[0], -0.3);
  for (const bool isRuler : { true, false })
  {
    if (isRuler)
    {
      this->Viewer->AddRulerWidget(nullptr);
    }
    else
    {
      this->Viewer->AddAreaWidget(nullptr);
    }
    this->Click(this->OffTheLines());
    EXPECT_TRUE(IsPoint(this->Viewer->LastPickPosition, { { 4.0, 15.0, 19.0 } }, 0.2));
    EXPECT_TRUE(IsPoint(this->Viewer->PointClicked,
      ToWorld(this->Viewer->LastPickPosition) - ToWorld(direction), 1e-9));
  }
}

TEST_F(ImageViewerClicks, ContoursAndLassosAreAddedWhateverWaits)
{
  this->Viewer->AddRulerWidget(nullptr);
  this->Viewer->AddAreaWidget(nullptr);
  const vtkSmartPointer<zvAreaWidget> first = this->Viewer->CurrentAreaWidget.Get();
  this->Viewer->AddAreaWidget(nullptr);
  EXPECT_EQ(this->Viewer->AreaWidgets->GetNumberOfItems(), 2);
  EXPECT_NE(this->Viewer->CurrentAreaWidget, first.Get());
  EXPECT_EQ(this->Viewer->CurrentAreaWidget, this->Viewer->AreaWidgets->GetItemAsObject(1));
  this->Viewer->SetAddLassoMode(true);
  this->Viewer->AddLassoWidget(nullptr);
  this->Viewer->AddLassoWidget(nullptr);
  EXPECT_EQ(this->Viewer->LassoWidgets->GetNumberOfItems(), 2);
  EXPECT_EQ(this->Viewer->CurrentLassoWidget, this->Viewer->LassoWidgets->GetItemAsObject(1));
  EXPECT_TRUE(this->Viewer->AddRulerMode);
}

TEST_F(ImageViewerClicks, EnablingTheContourGivesItTheInteractor)
{
  this->Viewer->AddAreaWidget(nullptr);
  zvAreaWidget* area = this->Viewer->CurrentAreaWidget;
  area->SetInteractor(nullptr);
  this->Viewer->AddAreaMode = false;
  this->Viewer->EnableAreaWidget();
  EXPECT_EQ(area->GetInteractor(), this->Scene.Interactor());
  EXPECT_TRUE(this->Viewer->AddAreaMode);
  EXPECT_EQ(area->GetEnabled(), 0) << "it is enabled when it closes";
}

TEST_F(ImageViewerClicks, DeletingTheToolsRendersOnce)
{
  this->Viewer->AddRulerWidget(nullptr);
  zvtest::EventRecorder renders;
  renders.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  this->Viewer->DeleteWidget();
  EXPECT_EQ(renders.Events().size(), 1u);
}

//------------------------------------------------------------------------------
// Notes

namespace
{
class ImageViewerNotes : public ImageViewerClicks
{
protected:
  // The text of the only note.
  vtkFollower* Text()
  {
    vtkPropCollection* props = this->Scene.Renderer()->GetViewProps();
    for (int i = 0; i < props->GetNumberOfItems(); ++i)
    {
      if (auto* follower = vtkFollower::SafeDownCast(props->GetItemAsObject(i)))
      {
        return follower;
      }
    }
    return nullptr;
  }

  void SetPointClicked(const World& at) { std::copy_n(at.data(), 3, this->Viewer->PointClicked); }

  double Color[3] = { 0.0, 1.0, 0.0 };
};
}

TEST_F(ImageViewerNotes, StandOneMillimetreOnFromThePointAlongEachAxis)
{
  this->SetPointClicked({ { 3.25, 12.5, 19.75 } });
  this->Viewer->AddTextNoteWidget("note", 2, this->Color, 2.0);
  ASSERT_NE(this->Text(), nullptr);
  EXPECT_TRUE(IsPoint(this->Text()->GetPosition(), { { 4.25, 13.5, 20.75 } }, 0));
  EXPECT_EQ(this->Viewer->CurrentTextNoteWidget->GetEnabled(), 1);
  EXPECT_EQ(this->Viewer->CurrentTextNoteWidget->GetInteractor(), this->Scene.Interactor());
}

TEST_F(ImageViewerNotes, ThatAreSelectedChangeTheirTextAndKeepPlaceAndPlane)
{
  this->SetPointClicked({ { 3.0, 12.0, 19.0 } });
  this->Viewer->AddTextNoteWidget("note", 0, this->Color, 2.0);
  this->SetPointClicked({ { 1.0, 1.0, 1.0 } });
  double red[3] = { 1.0, 0.0, 0.0 };
  this->Viewer->AddTextNoteWidget("other", 2, red, 1.5);
  EXPECT_EQ(this->Viewer->TextNoteWidgets->GetNumberOfItems(), 1);
  EXPECT_STREQ(this->Viewer->GetCurrentSelectedText(), "other");
  EXPECT_EQ(ToWorld(this->Viewer->GetCurrentTextColor()), ToWorld(red));
  EXPECT_EQ(this->Viewer->GetCurrentTextSize(), 1);
  EXPECT_TRUE(IsPoint(this->Text()->GetPosition(), { { 4.0, 13.0, 20.0 } }, 0));

  // In a plane across x a drag leaves x as it is.
  this->Scene.Render();
  this->Mouse.Drag(Left, this->On(5.0, 13.6), this->On(12.0, 5.0));
  EXPECT_EQ(this->Text()->GetPosition()[0], 4.0);
  EXPECT_NEAR(this->Text()->GetPosition()[1], 5.0, 0.1);
}

TEST_F(ImageViewerNotes, WithoutATextOrAnInteractorSaySo)
{
  this->Viewer->AddTextNoteWidget(nullptr, 2, this->Color, 2.0);
  this->ExpectGenericWarning("zvTextNoteWidget", "set a text and a colour for the note...");
  this->Click(this->OffTheLines());
  EXPECT_FALSE(this->Viewer->TextSelected());
  this->Viewer->DeleteAllTextNoteWidgets();
  this->Viewer->SetInteractor(nullptr);
  this->Viewer->AddTextNoteWidget("note", 2, this->Color, 2.0);
  this->ExpectGenericWarning("zvTextNoteWidget", "set interactor before adding observers...");
  EXPECT_EQ(this->Viewer->CurrentTextNoteWidget->GetEnabled(), 0);
  EXPECT_STREQ(this->Viewer->GetCurrentSelectedText(), "note");
}

//------------------------------------------------------------------------------
// Lassos

namespace
{
// Two lassos that are closed, each with four handles.
class ImageViewerLassos : public ImageViewerClicks
{
protected:
  ImageViewerLassos()
  {
    this->Viewer->SetAddLassoMode(true);
    this->DrawClosed(3.0, 3.0);
    this->DrawClosed(13.0, 13.0);
  }

  void DrawClosed(double x, double y)
  {
    for (const auto& at : std::vector<std::array<double, 2>>{ { { x, y } }, { { x + 4.0, y } },
           { { x + 4.0, y + 4.0 } }, { { x, y + 4.0 } }, { { x, y } } })
    {
      this->Click(this->On(at[0], at[1]));
    }
  }

  int Count() const { return this->Viewer->LassoWidgets->GetNumberOfItems(); }
  zvLassoWidget* Lasso(int number) const
  {
    return zvLassoWidget::SafeDownCast(this->Viewer->LassoWidgets->GetItemAsObject(number));
  }
  World Handle(int lasso, int handle) const
  {
    World at;
    this->Lasso(lasso)->GetHandlePosition(handle, at.data());
    return at;
  }

  // How many handles of a lasso are faded.
  int FadedHandles(int lasso) const
  {
    int faded = 0;
    vtkPropCollection* props = this->Scene.Renderer()->GetViewProps();
    for (int i = 0; i < props->GetNumberOfItems(); ++i)
    {
      auto* actor = vtkActor::SafeDownCast(props->GetItemAsObject(i));
      faded += actor && actor->GetProperty() == this->Lasso(lasso)->GetClosedHandleProperty();
    }
    return faded;
  }
};
}

TEST_F(ImageViewerLassos, OneThatIsClickedIsMovedAndNoneIsBegun)
{
  ASSERT_EQ(this->Count(), 2);
  ASSERT_EQ(this->Viewer->CurrentLassoWidget, nullptr);
  const World other = this->Handle(1, 1);
  this->Press(this->On(7.0, 3.0));
  EXPECT_EQ(this->Viewer->State, StateCursoring);
  EXPECT_EQ(this->Viewer->CurrentLassoWidget, this->Lasso(0));
  EXPECT_EQ(this->Lasso(0)->GetState(), zvLassoWidget::Moving);
  EXPECT_EQ(this->Lasso(1)->GetState(), zvLassoWidget::Locked);
  EXPECT_EQ(this->Count(), 2);
  EXPECT_EQ(this->Lasso(0)->GetNumberOfHandles(), 4);
  this->Mouse.MoveTo(this->On(8.0, 2.0));
  this->Mouse.Release(Left);
  EXPECT_TRUE(IsPoint(this->Handle(0, 1).data(), { { 8.0, 2.0, 19.0 } }, 0.3));
  EXPECT_EQ(this->Handle(1, 1), other);
}

TEST_F(ImageViewerLassos, OneThatIsClickedWhileAnotherIsDrawnGivesItItsHandle)
{
  this->Click(this->On(14.0, 5.0));
  ASSERT_EQ(this->Count(), 3);
  const World before = this->Handle(0, 1);
  this->Press(this->On(7.0, 3.0));
  EXPECT_EQ(this->Count(), 3);
  EXPECT_EQ(this->Viewer->CurrentLassoWidget, this->Lasso(2));
  EXPECT_EQ(this->Lasso(2)->GetNumberOfHandles(), 2);
  EXPECT_TRUE(IsPoint(this->Handle(2, 1).data(), { { 7.0, 3.0, 19.0 } }, 0.3));
  EXPECT_EQ(this->Lasso(0)->GetState(), zvLassoWidget::Locked);
  this->Mouse.MoveTo(this->On(8.0, 2.0));
  this->Mouse.Release(Left);
  EXPECT_EQ(this->Handle(0, 1), before) << "it is locked";
}

TEST_F(ImageViewerLassos, OneThatIsDrawnStandsStillWhenItIsClicked)
{
  this->Click(this->On(14.0, 5.0));
  this->Click(this->On(17.0, 5.0));
  this->Click(this->On(17.0, 2.0));
  ASSERT_EQ(this->Lasso(2)->GetNumberOfHandles(), 3);
  this->Press(this->On(17.0, 5.0));
  EXPECT_EQ(this->Lasso(2)->GetState(), zvLassoWidget::Outside);
  EXPECT_EQ(this->Lasso(2)->GetNumberOfHandles(), 3);
  EXPECT_EQ(this->Lasso(2)->IsClosed(), 0);
  EXPECT_EQ(this->Viewer->CurrentLassoWidget, this->Lasso(2));
  EXPECT_EQ(this->Count(), 3);
}

TEST_F(ImageViewerLassos, AClickElsewhereBeginsAnotherAndLocksAll)
{
  for (const int lasso : { 0, 1 })
  {
    this->Lasso(lasso)->SetState(zvLassoWidget::Start);
  }
  this->Press(this->On(14.0, 5.0));
  EXPECT_EQ(this->Count(), 3);
  EXPECT_EQ(this->Viewer->CurrentLassoWidget, this->Lasso(2));
  EXPECT_EQ(this->Lasso(2)->GetNumberOfHandles(), 1);
  EXPECT_EQ(this->Lasso(0)->GetState(), zvLassoWidget::Locked);
  EXPECT_EQ(this->Lasso(1)->GetState(), zvLassoWidget::Locked);
}

TEST_F(ImageViewerLassos, OneThatClosesFadesAndLocksTheHandlesOfAll)
{
  this->Click(this->On(14.0, 5.0));
  this->Click(this->On(17.0, 5.0));
  this->Click(this->On(17.0, 2.0));
  this->Lasso(0)->SetHandleVisibility(1);
  ASSERT_EQ(this->FadedHandles(0), 0);
  this->Press(this->On(14.0, 5.0));
  EXPECT_EQ(this->Lasso(2)->IsClosed(), 1);
  for (const int lasso : { 0, 1, 2 })
  {
    EXPECT_EQ(this->FadedHandles(lasso), this->Lasso(lasso)->GetNumberOfHandles()) << lasso;
    EXPECT_EQ(this->Lasso(lasso)->GetState(), zvLassoWidget::Locked) << lasso;
  }
  EXPECT_EQ(this->Viewer->State, StateStart);
  EXPECT_EQ(this->Viewer->CurrentLassoWidget, nullptr);
}

//------------------------------------------------------------------------------
// Fill and paint

namespace
{
// A volume of unequal axes that holds 7 but for one voxel, with that one under the pointer.
class ImageViewerOddVoxel : public ImageViewerViewTest
{
protected:
  void PointAtOddVoxel(int orientation)
  {
    this->Show(zvtest::MakeVolume(zvtest::UnequalVolume(),
                 [](int i, int j, int k, int) {
                   return zvtest::Index{ { i, j, k } } == Odd ? 3.0 : 7.0;
                 }),
      orientation);
    this->Viewer->SetLinesEnabled(0);
    this->Viewer->SetSliceIndex(Odd[orientation]);
    this->Scene.Render();
    this->At = this->Mouse.At(zvtest::CenterOfVoxel(this->Volume, Odd));
    this->Mouse.MoveTo(this->At);
  }

  double OddValue() const
  {
    return this->Volume->GetScalarComponentAsDouble(Odd[0], Odd[1], Odd[2], 0);
  }

  int CountOf(double value) const
  {
    int count = 0;
    const auto* voxels = static_cast<const int*>(this->Volume->GetScalarPointer());
    for (vtkIdType i = 0; i < this->Volume->GetNumberOfPoints(); ++i)
    {
      count += voxels[i] == value;
    }
    return count;
  }

  static constexpr zvtest::Index Odd{ { 2, 3, 1 } };
  zvtest::Display At;
};
}

TEST_F(ImageViewerOddVoxel, IsWhereAFillStartsInEveryView)
{
  for (const int orientation : { 0, 1, 2 })
  {
    SCOPED_TRACE(orientation);
    this->PointAtOddVoxel(orientation);
    this->Viewer->SetFillMode(true);
    this->Viewer->SetFillValue(7);
    this->Mouse.Press(Left, this->At);
    EXPECT_EQ(this->OddValue(), 7.0);
    ASSERT_EQ(this->Viewer->FilledPoints->GetNumberOfPoints(), 1);
    EXPECT_TRUE(IsPoint(this->Viewer->FilledPoints->GetPoint(0), { { 2, 3, 1 } }, 0));
    EXPECT_EQ(this->Viewer->FillOldValue, 3);
    this->Mouse.Release(Left);
    this->Viewer->SetEnabled(0);
  }
}

TEST_F(ImageViewerOddVoxel, IsTheOnlyOneThatIsPaintedInEveryView)
{
  for (const int orientation : { 0, 1, 2 })
  {
    SCOPED_TRACE(orientation);
    this->PointAtOddVoxel(orientation);
    this->Viewer->SetPaintMode(true);
    this->Viewer->SetFillValue(9);
    this->Mouse.Press(Left, this->At);
    EXPECT_EQ(this->OddValue(), 3.0) << "a press paints nothing";
    this->Mouse.MoveTo(this->At);
    this->Mouse.Release(Left);
    EXPECT_EQ(this->OddValue(), 9.0);
    EXPECT_EQ(this->CountOf(9.0), 1);
    this->Viewer->SetEnabled(0);
  }
}

TEST_F(ImageViewerClicks, AFillComesBeforeAnybodyIsAsked)
{
  this->Viewer->SetFillMode(true);
  this->Viewer->SetFillValue(1000);
  this->Mouse.MoveTo(this->OffTheLines());
  this->SetViewport(0.5);
  this->Press(this->Beside());
  EXPECT_EQ(this->Viewer->State, StateOutside);
  EXPECT_EQ(this->Viewer->FilledPoints->GetNumberOfPoints(), 19 * 19);
  EXPECT_EQ(this->At(4, 15), 1000.0);
  this->Mouse.Release(Left);
  this->SetViewport(0.0);

  this->Viewer->SetFillValue(2000);
  this->Press(this->OnLine1());
  EXPECT_EQ(this->Viewer->State, StateRotating);
  EXPECT_EQ(this->At(4, 15), 2000.0);
  this->Mouse.Release(Left);
}

TEST_F(ImageViewerClicks, PaintNeedsAStateThatIsNotIdle)
{
  this->Viewer->SetPaintMode(true);
  this->Viewer->SetFillValue(1000);
  this->Viewer->SetPickPointModeA(true);
  this->Press(this->On(4.0, 15.0));
  ASSERT_EQ(this->Viewer->State, StateStart);
  this->Mouse.MoveTo(this->On(5.0, 15.0));
  EXPECT_NE(this->At(5, 15), 1000.0);
  this->Mouse.Release(Left);
  this->Viewer->SetPickPointModeA(false);

  this->SetViewport(0.5);
  this->Press(this->Beside());
  ASSERT_EQ(this->Viewer->State, StateOutside);
  this->SetViewport(0.0);
  this->Mouse.MoveTo(this->On(5.0, 15.0));
  EXPECT_NE(this->At(5, 15), 1000.0);
}

TEST_F(ImageViewerClicks, PaintGoesOnWhileALineIsDragged)
{
  this->Viewer->SetPaintMode(true);
  this->Viewer->SetFillValue(1000);
  this->Press(this->OnLine1(), Shift);
  ASSERT_EQ(this->Viewer->State, StatePushing);
  this->Mouse.MoveTo(this->On(12.0, 5.0), Shift);
  EXPECT_TRUE(this->CrossIndexIs(11, 5)); // whole steps, from between two voxels
  EXPECT_EQ(this->At(12, 5), 1000.0);
  this->Mouse.Release(Left);

  this->Press(this->On(4.0, this->Line(2).Point1[1]));
  ASSERT_EQ(this->Viewer->State, StateRotating);
  this->Mouse.MoveTo(this->On(4.0, 7.0));
  EXPECT_EQ(this->Viewer->GetPlaneOrientation(), 3);
  EXPECT_EQ(this->At(4, 7), 1000.0);
}

TEST_F(ImageViewerClicks, PaintWithoutTrackingStaysAtTheVoxelTrackedLast)
{
  this->Mouse.MoveTo(this->On(4.0, 15.0));
  this->Viewer->SetPaintMode(true);
  this->Viewer->SetQuickApply(true);
  this->Viewer->SetFillValue(1000);
  this->Press(this->On(12.0, 4.0));
  this->Mouse.MoveTo(this->On(13.0, 4.0));
  EXPECT_EQ(this->At(4, 15), 1000.0);
  EXPECT_NE(this->At(13, 4), 1000.0);
}

TEST_F(ImageViewerOddVoxel, TakesAPaintThatItCannotHoldAsTheScalarsDo)
{
  zvtest::VolumeOptions options = zvtest::UnequalVolume();
  options.ScalarType = VTK_UNSIGNED_CHAR;
  this->Show(zvtest::MakeConstantVolume(1.0, options), 2);
  this->Viewer->SetLinesEnabled(0);
  this->Viewer->SetPaintMode(true);
  this->Viewer->SetFillValue(300);
  const zvtest::Display at = this->Mouse.At(zvtest::CenterOfVoxel(this->Volume, { { 2, 3, 3 } }));
  this->Mouse.Press(Left, at);
  this->Mouse.MoveTo(at);
  EXPECT_EQ(this->Volume->GetScalarComponentAsDouble(2, 3, 3, 0), 44.0);
}

//------------------------------------------------------------------------------
// The right button

TEST_F(ImageViewerClicks, ARightActionThatIsNoneDoesNothing)
{
  zvtest::EventRecorder events;
  this->Watch(events);
  zvtest::EventRecorder renders;
  renders.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  for (const int action : { -1, 3, 7 })
  {
    this->Viewer->RightButtonAction = action;
    this->Viewer->State = StatePushing;
    this->Mouse.Press(Right, this->OffTheLines());
    this->Mouse.Release(Right);
    EXPECT_EQ(this->Viewer->State, StatePushing);
  }
  EXPECT_TRUE(events.Events().empty());
  EXPECT_TRUE(renders.Events().empty());
}
