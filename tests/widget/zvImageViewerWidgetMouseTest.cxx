// How the slice view answers the mouse, and who owns its tools.

#include "zvImageViewerMouseFixture.h"

using zvtest::Left;
using zvtest::Middle;
using zvtest::NoModifier;
using zvtest::Right;
using zvtest::Shift;

//------------------------------------------------------------------------------
// Presses, by who takes them

TEST_F(ImageViewerMouse, APressOutsideTheViewportIsIgnored)
{
  zvtest::EventRecorder events;
  this->Watch(events);
  this->Scene.Renderer()->SetViewport(0.5, 0.0, 1.0, 1.0);
  zvtest::EventRecorder renders;
  renders.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  this->Press(this->Beside());
  EXPECT_EQ(this->Viewer->State, StateOutside);
  EXPECT_TRUE(this->Viewer->LeftButtonHeld);
  EXPECT_TRUE(events.Names().empty());
  EXPECT_TRUE(renders.Events().empty());
}

TEST_F(ImageViewerMouse, EachPointModeRecordsThePressAndStops)
{
  bool OpenViewer::*const modes[] = { &OpenViewer::PickPointModeA, &OpenViewer::PickPointModeB,
    &OpenViewer::PickPointModeC, &OpenViewer::PickPointModeD };
  for (auto mode : modes)
  {
    (*this->Viewer).*mode = true;
    zvtest::EventRecorder events;
    this->Watch(events);
    this->Viewer->State = StatePushing;
    this->Press(this->On(4.0, 15.0));
    EXPECT_EQ(this->Viewer->State, StateStart);
    EXPECT_TRUE(IsPoint(this->Viewer->GetPointClicked(), { { 4.0, 15.0, 19.0 } }, 0.1));
    EXPECT_TRUE(events.Names().empty());
    (*this->Viewer).*mode = false;
  }
}

TEST_F(ImageViewerMouse, APointModeRecordsAPressBesideTheSliceAndKeepsTheState)
{
  this->Viewer->SetPickPointModeB(true);
  this->Viewer->State = StateCursoring;
  this->Viewer->PointClicked[0] = 1e6;
  this->Press(this->Beside());
  EXPECT_EQ(this->Viewer->State, StateCursoring);
  EXPECT_LT(this->Viewer->PointClicked[0], 1e5);
}

TEST_F(ImageViewerMouse, APressOnALineStartsARotation)
{
  zvtest::EventRecorder events;
  this->Watch(events);
  this->Viewer->LastDegree = 33.0;
  this->Press(this->OnLine1());
  EXPECT_EQ(this->Viewer->State, StateRotating);
  EXPECT_EQ(this->Viewer->GetLastDegree(), 0.0);
  EXPECT_TRUE(IsPoint(this->Viewer->GetPointClicked(), { { 9.5, 15.0, 19.0 } }, 0.2));
  EXPECT_EQ(
    events.Names(), (std::vector<std::string>{ "LeftButtonPressEvent", "StartInteractionEvent" }));
}

TEST_F(ImageViewerMouse, AShiftPressOnALineMovesTheCrossToTheMouse)
{
  this->Press(this->On(9.5, 15.0), Shift);
  EXPECT_EQ(this->Viewer->State, StatePushing);
  EXPECT_TRUE(this->CrossIndexIs(9, 14));
}

TEST_F(ImageViewerMouse, APlainPressMovesTheCross)
{
  zvtest::EventRecorder events;
  this->Watch(events);
  this->Press(this->On(4.0, 15.0));
  EXPECT_EQ(this->Viewer->State, StatePushing);
  EXPECT_EQ(
    events.Names(), (std::vector<std::string>{ "LeftButtonPressEvent", "StartInteractionEvent" }));
  EXPECT_TRUE(this->MovementIs(-5, 5));
  EXPECT_TRUE(this->CrossIndexIs(4, 14));
}

TEST_F(ImageViewerMouse, ThePressIsToldBeforeTheCrossMoves)
{
  std::vector<int> seen;
  zvtest::EventRecorder events;
  events.Watch(this->Viewer, { vtkCommand::LeftButtonPressEvent },
    [&](const zvtest::RecordedEvent&) { seen.push_back(this->Viewer->CrossIndex[0]); });
  this->Press(this->On(4.0, 15.0));
  EXPECT_EQ(seen, (std::vector<int>{ 9 }));
  EXPECT_EQ(this->Viewer->CrossIndex[0], 4);
}

TEST_F(ImageViewerMouse, AnObserverCancelsTheMoveOfTheCross)
{
  for (int idle : { StateStart, StateOutside })
  {
    zvtest::EventRecorder events;
    events.Watch(this->Viewer, { vtkCommand::LeftButtonPressEvent },
      [&](const zvtest::RecordedEvent&) { this->Viewer->State = idle; });
    this->Press(this->On(4.0, 15.0));
    EXPECT_EQ(this->Viewer->State, idle);
    EXPECT_TRUE(this->CrossIndexIs(9, 9));
    this->Press(this->OnLine1());
    EXPECT_EQ(this->Viewer->State, idle);
  }
}

TEST_F(ImageViewerMouse, APressBesideTheSliceKeepsTheState)
{
  zvtest::EventRecorder events;
  this->Watch(events);
  this->Viewer->State = StateRotating;
  this->Viewer->LastDegree = 5.0;
  this->Press(this->Beside());
  EXPECT_EQ(this->Viewer->State, StateRotating);
  EXPECT_EQ(this->Viewer->GetLastDegree(), 0.0);
  EXPECT_TRUE(events.Names().empty());
}

TEST_F(ImageViewerMouse, HiddenLinesAreNotGrabbed)
{
  this->Viewer->SetLinesEnabled(0);
  this->Press(this->OnLine1());
  EXPECT_EQ(this->Viewer->State, StatePushing);
}

//------------------------------------------------------------------------------
// Modes on the slice, in the order in which they take a press

TEST_F(ImageViewerMouse, TheModesTakeAPressInTheirOrder)
{
  // All at once: the ruler comes first and clears its flag, then the contour and so on.
  this->Viewer->AddRulerWidget(nullptr);
  this->Viewer->AddAreaMode = true;
  this->Viewer->SetAddLassoMode(true);
  this->Viewer->SetPickPointBoundMode(true);
  this->Viewer->SetAddText(true);
  this->Viewer->SetPaintMode(true);

  this->Click(this->On(4.0, 15.0));
  EXPECT_FALSE(this->Viewer->AddRulerMode);
  EXPECT_EQ(this->Viewer->AreaWidgets->GetNumberOfItems(), 0);

  this->Click(this->On(4.0, 15.0));
  EXPECT_EQ(this->Viewer->AreaWidgets->GetNumberOfItems(), 1);
  EXPECT_EQ(this->Viewer->LassoWidgets->GetNumberOfItems(), 0);
  this->Viewer->AddAreaMode = false;

  this->Click(this->On(4.0, 4.0));
  EXPECT_EQ(this->Viewer->LassoWidgets->GetNumberOfItems(), 1);
  EXPECT_NEAR(this->Viewer->PointClicked[2], 19.0, 1e-3);
  this->Viewer->SetAddLassoMode(false);

  this->Click(this->On(15.0, 4.0));
  EXPECT_EQ(this->Viewer->PointClicked[2], this->Viewer->Bounds[4]);
  this->Viewer->SetPickPointBoundMode(false);

  this->Click(this->On(15.0, 4.0));
  EXPECT_EQ(this->Viewer->PointClicked[2], this->Viewer->Bounds[4]);
  this->Viewer->SetAddText(false);

  zvtest::EventRecorder events;
  this->Watch(events);
  this->Press(this->On(15.0, 4.0));
  EXPECT_EQ(events.Names(), (std::vector<std::string>{ "StartInteractionEvent" }));
  EXPECT_EQ(this->Viewer->State, StateCursoring);
}

TEST_F(ImageViewerMouse, ARulerIsPlacedWithBothEndsOneMillimetreBeforeTheSlice)
{
  this->Viewer->AddRulerWidget(nullptr);
  ASSERT_TRUE(this->Viewer->AddRulerMode);
  zvtest::EventRecorder events;
  this->Watch(events);
  this->Press(this->On(4.0, 15.0));
  EXPECT_FALSE(this->Viewer->AddRulerMode);
  EXPECT_EQ(this->Viewer->State, StateCursoring);
  EXPECT_TRUE(IsPoint(this->Viewer->GetPointClicked(), { { 4.0, 15.0, 20.0 } }, 0.1));
  EXPECT_TRUE(events.Names().empty());
}

TEST_F(ImageViewerMouse, ARulerIsNotPlacedBesideTheSlice)
{
  this->Viewer->AddRulerWidget(nullptr);
  this->Press(this->Beside());
  EXPECT_TRUE(this->Viewer->AddRulerMode);
}

TEST_F(ImageViewerMouse, ASecondRulerWaitsUntilTheFirstIsPlaced)
{
  this->Viewer->AddRulerWidget(nullptr);
  this->Viewer->AddRulerWidget(nullptr);
  EXPECT_EQ(this->Viewer->RulerWidgets->GetNumberOfItems(), 1);
  this->Viewer->AddRulerMode = false;
  this->Viewer->AddAreaMode = true;
  this->Viewer->AddRulerWidget(nullptr);
  this->Viewer->AddAreaMode = false;
  this->Viewer->SetAddLassoMode(true);
  this->Viewer->AddRulerWidget(nullptr);
  EXPECT_EQ(this->Viewer->RulerWidgets->GetNumberOfItems(), 1);
}

TEST_F(ImageViewerMouse, AContourIsDrawnByClicksAndClosedByItsFirstHandle)
{
  const vtkSmartPointer<zvAreaWidget> area =
    this->DrawArea({ { { 3, 3, 0 } }, { { 15, 3, 0 } }, { { 15, 15, 0 } }, { { 3, 15, 0 } } });
  EXPECT_EQ(area->GetNumberOfHandles(), 4);
  EXPECT_EQ(area->IsClosed(), 1);
  EXPECT_EQ(area->GetProjectionNormal(), 2);
  EXPECT_EQ(this->Viewer->CurrentAreaWidget, nullptr);
  double first[3];
  area->GetHandlePosition(0, first);
  EXPECT_TRUE(IsPoint(first, { { 3, 3, 20 } }, 0.1));
}

TEST_F(ImageViewerMouse, ClicksInAreaModeMakeAContourWhenThereIsNone)
{
  this->Viewer->EnableAreaWidget();
  EXPECT_TRUE(this->Viewer->AddAreaMode);
  this->Click(this->OffTheLines());
  ASSERT_EQ(this->Viewer->AreaWidgets->GetNumberOfItems(), 1);
  EXPECT_EQ(this->Viewer->CurrentAreaWidget->GetNumberOfHandles(), 1);
  EXPECT_EQ(this->Viewer->CurrentAreaWidget->GetInteractor(), this->Scene.Interactor());
}

TEST_F(ImageViewerMouse, LassosAreDrawnOneAfterTheOtherInFiveColours)
{
  const std::vector<std::array<double, 3>> colors = { { { 1.0, 0.0, 0.0 } }, { { 0.0, 1.0, 0.4 } },
    { { 0.0, 0.0, 1.0 } }, { { 1.0, 1.0, 0.0 } }, { { 0.35, 0.12, 0.0 } }, { { 1.0, 0.0, 0.0 } } };
  for (const auto& color : colors)
  {
    this->Viewer->AddLassoWidget(nullptr);
    double actual[3];
    this->Viewer->CurrentLassoWidget->GetLineProperty()->GetColor(actual);
    EXPECT_EQ(ToWorld(actual), color);
    EXPECT_EQ(this->Viewer->CurrentLassoWidget->GetInteractor(), this->Scene.Interactor());
  }
  EXPECT_FALSE(this->Viewer->GetAddLassoMode());
  this->Viewer->DeleteWidget();
  this->Viewer->AddLassoWidget(nullptr);
  double first[3];
  this->Viewer->CurrentLassoWidget->GetLineProperty()->GetColor(first);
  EXPECT_EQ(ToWorld(first), colors[0]);
}

TEST_F(ImageViewerMouse, ALassoIsLockedWhenItCloses)
{
  this->Viewer->SetAddLassoMode(true);
  for (const auto& at : std::vector<std::array<double, 2>>{
         { { 3, 3 } }, { { 7, 3 } }, { { 7, 7 } }, { { 3, 7 } }, { { 3, 3 } } })
  {
    this->Click(this->On(at[0], at[1]));
  }
  ASSERT_EQ(this->Viewer->LassoWidgets->GetNumberOfItems(), 1);
  auto* lasso = zvLassoWidget::SafeDownCast(this->Viewer->LassoWidgets->GetItemAsObject(0));
  EXPECT_EQ(lasso->IsClosed(), 1);
  EXPECT_EQ(lasso->GetState(), 7);
  EXPECT_EQ(this->Viewer->CurrentLassoWidget, nullptr);
  EXPECT_EQ(this->Viewer->State, StateStart);

  this->Click(this->On(14.0, 14.0));
  EXPECT_EQ(this->Viewer->LassoWidgets->GetNumberOfItems(), 2);
  EXPECT_EQ(this->Viewer->LassoCount, 2);
}

TEST_F(ImageViewerMouse, TextTakesTheDepthOfEachView)
{
  this->Viewer->SetAddText(true);
  const double* bounds = this->Viewer->Bounds;
  const double depths[3] = { bounds[1], bounds[2] - 1.0, bounds[4] };
  for (int orientation : { 0, 1, 2 })
  {
    this->Viewer->SetPlaneOrientation(orientation);
    this->Viewer->UpdatePlane();
    this->LookAlongNormal(orientation);
    this->Scene.Render();
    zvtest::World at = { { 5.0, 5.0, 5.0 } };
    at[orientation] = 19.0;
    this->Click(this->Mouse.At(at));
    EXPECT_EQ(this->Viewer->PointClicked[orientation], depths[orientation]) << orientation;
  }
}

TEST_F(ImageViewerMouse, BoundModeReplacesTheDepthInTheZViewOnly)
{
  this->Viewer->SetPickPointBoundMode(true);
  this->Click(this->OffTheLines());
  EXPECT_EQ(this->Viewer->PointClicked[2], this->Viewer->Bounds[4]);
  this->Viewer->SetPlaneOrientation(0);
  this->Viewer->UpdatePlane();
  this->LookAlongNormal(0);
  this->Scene.Render();
  this->Click(this->Mouse.At({ { 19.0, 5.0, 5.0 } }));
  EXPECT_NEAR(this->Viewer->PointClicked[0], 19.0, 1e-3);
  EXPECT_NEAR(this->Viewer->PointClicked[2], 5.0, 0.1);
}

//------------------------------------------------------------------------------
// Clicks on tools

TEST_F(ImageViewerMouse, AClickOnARulerSelectsItAndMovesNoCross)
{
  vtkSmartPointer<zvRulerWidget> ruler = this->PlaceRuler();
  this->Viewer->CurrentRulerWidget = nullptr;
  zvtest::EventRecorder events;
  this->Watch(events);
  this->Press(this->On(15.0, 3.0));
  EXPECT_EQ(this->Viewer->CurrentRulerWidget, ruler.Get());
  EXPECT_EQ(this->Viewer->State, StateCursoring);
  EXPECT_TRUE(this->CrossIndexIs(9, 9));
  EXPECT_EQ(events.Count(vtkCommand::StartInteractionEvent), 0);
  this->Mouse.Release(Left);
}

TEST_F(ImageViewerMouse, ARulerClickedBeforeKeepsContoursFromBeingSelected)
{
  this->DrawArea({ { { 3, 3, 0 } }, { { 15, 3, 0 } }, { { 15, 15, 0 } }, { { 3, 15, 0 } } });
  this->Click(this->On(15.0, 15.0));
  this->Press(this->On(15.0, 15.0));
  EXPECT_NE(this->Viewer->CurrentAreaWidget, nullptr);
  this->Mouse.Release(Left);
  EXPECT_EQ(this->Viewer->CurrentAreaWidget, nullptr); // a closed contour is let go of

  this->Viewer->AddRulerWidget(nullptr);
  this->Viewer->AddRulerMode = false;
  this->Press(this->On(15.0, 15.0));
  EXPECT_EQ(this->Viewer->CurrentAreaWidget, nullptr);
}

TEST_F(ImageViewerMouse, AnOpenContourIsNotSelected)
{
  this->Viewer->AddAreaWidget(nullptr);
  this->Click(this->On(4.0, 15.0));
  this->Click(this->On(4.0, 4.0));
  this->Viewer->AddAreaMode = false;
  this->Viewer->CurrentAreaWidget = nullptr;
  this->Press(this->On(4.0, 15.0));
  EXPECT_EQ(this->Viewer->CurrentAreaWidget, nullptr);
}

TEST_F(ImageViewerMouse, ANoteIsPlacedSelectedChangedAndDeleted)
{
  this->Viewer->SetAddText(true);
  this->Click(this->On(4.0, 12.0));
  this->Viewer->SetAddText(false);
  this->Viewer->PointClicked[2] = 20.0;
  double color[3] = { 0.0, 1.0, 0.0 };
  this->Viewer->AddTextNoteWidget("lesion", 2, color, 2.0);
  ASSERT_EQ(this->Viewer->TextNoteWidgets->GetNumberOfItems(), 1);
  EXPECT_STREQ(this->Viewer->GetCurrentSelectedText(), "lesion");
  EXPECT_EQ(ToWorld(this->Viewer->GetCurrentTextColor()), (zvtest::World{ { 0.0, 1.0, 0.0 } }));
  EXPECT_EQ(this->Viewer->GetCurrentTextSize(), 2);

  double red[3] = { 1.0, 0.0, 0.0 };
  this->Viewer->AddTextNoteWidget("changed", 2, red, 3.0);
  EXPECT_EQ(this->Viewer->TextNoteWidgets->GetNumberOfItems(), 1);
  EXPECT_STREQ(this->Viewer->GetCurrentSelectedText(), "changed");

  this->Click(this->On(16.0, 3.0));
  EXPECT_EQ(this->Viewer->GetCurrentSelectedText(), nullptr);
  EXPECT_EQ(this->Viewer->GetCurrentTextColor(), nullptr);
  EXPECT_EQ(this->Viewer->GetCurrentTextSize(), 0);
  EXPECT_FALSE(this->Viewer->TextSelected());

  this->Press(this->On(6.5, 14.0));
  EXPECT_STREQ(this->Viewer->GetCurrentSelectedText(), "changed");
  EXPECT_TRUE(this->Viewer->TextSelected());
  this->Mouse.Release(Left);
  this->Viewer->DeleteCurrentTextNoteWidget();
  EXPECT_EQ(this->Viewer->TextNoteWidgets->GetNumberOfItems(), 0);
  EXPECT_EQ(this->Viewer->GetCurrentSelectedText(), nullptr);
}

TEST_F(ImageViewerMouse, DeletingWhatIsNotThereSaysSo)
{
  this->Viewer->DeleteCurrentTextNoteWidget();
  this->ExpectGenericWarning("zvImageViewerWidget", "there is no current text note");
  this->Viewer->EnableLassoWidget(true);
  this->ExpectGenericWarning("zvImageViewerWidget", "there is no current lasso");
}

TEST_F(ImageViewerMouse, DeleteWidgetLeavesTheNotesAndTheModesOfTheTools)
{
  this->PlaceRuler();
  this->Viewer->AddAreaWidget(nullptr);
  this->Viewer->AddLassoWidget(nullptr);
  this->Viewer->SetAddLassoMode(true);
  double color[3] = { 1.0, 1.0, 1.0 };
  this->Viewer->AddTextNoteWidget("stays", 2, color, 2.0);
  this->Viewer->DeleteWidget();
  EXPECT_EQ(this->Viewer->RulerWidgets->GetNumberOfItems(), 0);
  EXPECT_EQ(this->Viewer->AreaWidgets->GetNumberOfItems(), 0);
  EXPECT_EQ(this->Viewer->LassoWidgets->GetNumberOfItems(), 0);
  EXPECT_EQ(this->Viewer->TextNoteWidgets->GetNumberOfItems(), 1);
  EXPECT_EQ(this->Viewer->LassoCount, 0);
  EXPECT_FALSE(this->Viewer->AddRulerMode);
  EXPECT_FALSE(this->Viewer->AddAreaMode);
  EXPECT_FALSE(this->Viewer->AddLassoMode);
  EXPECT_EQ(this->Viewer->CurrentRulerWidget, nullptr);
  this->Viewer->DeleteAllTextNoteWidgets();
  EXPECT_EQ(this->Viewer->TextNoteWidgets->GetNumberOfItems(), 0);
}

TEST_F(ImageViewerMouse, ARulersInteractorComesWithItsEnabling)
{
  this->Viewer->AddLassoWidget(nullptr);
  this->Viewer->AddRulerWidget(nullptr);
  EXPECT_EQ(this->Ruler()->GetInteractor(), nullptr);
  this->Viewer->EnableRulerWidget();
  EXPECT_EQ(this->Ruler()->GetInteractor(), this->Scene.Interactor());
  EXPECT_EQ(this->Ruler()->GetEnabled(), 1);
  EXPECT_EQ(this->Viewer->CurrentLassoWidget->GetState(), 7);
  this->Viewer->EnableLassoWidget(false);
  EXPECT_EQ(this->Viewer->CurrentLassoWidget->GetInteractor(), nullptr);
  this->Viewer->EnableLassoWidget(true);
  EXPECT_EQ(this->Viewer->CurrentLassoWidget->GetInteractor(), this->Scene.Interactor());
}

TEST_F(ImageViewerMouse, ToolsGoWithTheViewWhateverIsHeld)
{
  vtkSmartPointer<zvRulerWidget> ruler = this->PlaceRuler();
  this->Viewer->AddAreaWidget(nullptr);
  vtkSmartPointer<zvAreaWidget> area = this->Viewer->CurrentAreaWidget.Get();
  EXPECT_EQ(ruler->GetReferenceCount(), 3); // made, listed, held here
  this->Mouse.Press(Left, this->On(15.0, 3.0));
  this->Release();
  EXPECT_EQ(ruler->GetReferenceCount(), 1);
  EXPECT_EQ(area->GetReferenceCount(), 1);
  this->Mouse.MoveTo(this->On(12.0, 5.0));
  this->Mouse.Release(Left);
}

TEST_F(ImageViewerMouse, ResetModeClearsEveryFlag)
{
  bool OpenViewer::*const flags[] = { &OpenViewer::AddRulerMode, &OpenViewer::AddAreaMode,
    &OpenViewer::AddLassoMode, &OpenViewer::PickPointModeA, &OpenViewer::PickPointModeB,
    &OpenViewer::QuickApply, &OpenViewer::AddText, &OpenViewer::PickPointModeC,
    &OpenViewer::PickPointModeD, &OpenViewer::PickPointBoundMode, &OpenViewer::PaintMode,
    &OpenViewer::LeftButtonHeld, &OpenViewer::FillMode };
  for (auto flag : flags)
  {
    (*this->Viewer).*flag = true;
  }
  this->Viewer->SetModeResetMarker(false);
  const vtkMTimeType before = this->Viewer->GetMTime();
  this->Viewer->ResetMode();
  for (auto flag : flags)
  {
    EXPECT_FALSE((*this->Viewer).*flag);
  }
  EXPECT_TRUE(this->Viewer->GetModeResetMarker());
  EXPECT_EQ(this->Viewer->GetMTime(), before);
}

//------------------------------------------------------------------------------
// Moves and releases

TEST_F(ImageViewerMouse, AMoveIsToldInEveryStateAndRendersOnlyInADrag)
{
  zvtest::EventRecorder events;
  this->Watch(events);
  zvtest::EventRecorder renders;
  renders.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  this->Mouse.MoveTo(this->OffTheLines());
  EXPECT_EQ(events.Names(), (std::vector<std::string>{ "MouseMoveEvent" }));
  EXPECT_TRUE(renders.Events().empty());
  this->Press(this->OffTheLines());
  renders.Clear();
  this->Mouse.MoveTo(this->On(6.0, 13.0));
  EXPECT_EQ(renders.Events().size(), 1u);
}

TEST_F(ImageViewerMouse, AMoveTracksTheVoxelUnlessQuickApplyIsOn)
{
  this->Mouse.MoveTo(this->On(4.0, 15.0));
  EXPECT_TRUE(IsPoint(this->Viewer->CurrentCursorPosition, { { 4, 15, 19 } }));
  EXPECT_EQ(
    this->Viewer->GetCurrentImageValue(), zvtest::IndexValue(this->Volume, { { 4, 15, 19 } }));
  this->Viewer->SetQuickApply(true);
  this->Mouse.MoveTo(this->On(12.0, 15.0));
  EXPECT_TRUE(IsPoint(this->Viewer->CurrentCursorPosition, { { 4, 15, 19 } }));
}

TEST_F(ImageViewerMouse, ADragOfTheCrossIsCoarseUntilTheRelease)
{
  this->Press(this->OffTheLines());
  this->Mouse.MoveTo(this->On(6.0, 13.0));
  EXPECT_EQ(this->Viewer->GetImageResolutionFactor(), 4);
  // The lines stand between voxels, at 4.5 and 14.5, and move by whole steps.
  EXPECT_TRUE(this->CrossIndexIs(5, 13));
  zvtest::EventRecorder events;
  this->Watch(events);
  this->Mouse.Release(Left);
  EXPECT_EQ(this->Viewer->GetImageResolutionFactor(), 1);
  EXPECT_EQ(this->Viewer->State, StateStart);
  EXPECT_FALSE(this->Viewer->LeftButtonHeld);
  EXPECT_EQ(events.Names(), (std::vector<std::string>{ "LeftButtonReleaseEvent" }));
  EXPECT_TRUE(this->LinesSpanThePlane(1e-4));
}

TEST_F(ImageViewerMouse, ADragOfALineTurnsThePlaneAboutTheCross)
{
  this->Press(this->OnLine1());
  this->Mouse.MoveTo(this->On(9.5, 15.0));
  this->Mouse.MoveTo(this->On(8.5, 15.0));
  EXPECT_EQ(this->Viewer->GetPlaneOrientation(), 3);
  EXPECT_EQ(this->Viewer->GetViewOrientation(), 2);
  EXPECT_NE(this->Viewer->GetLastDegree(), 0.0);
  EXPECT_TRUE(this->CenterIs({ { 9.5, 9.5, 19.0 } }, 1e-6));
  this->Mouse.Release(Left);
  EXPECT_EQ(this->Viewer->State, StateStart);
}

TEST_F(ImageViewerMouse, AReleaseOutsideTheViewportLeavesTheViewOutside)
{
  this->Press(this->OffTheLines());
  this->Scene.Renderer()->SetViewport(0.5, 0.0, 1.0, 1.0);
  zvtest::EventRecorder events;
  this->Watch(events);
  this->Mouse.Release(Left, this->Beside());
  EXPECT_EQ(this->Viewer->State, StateOutside);
  EXPECT_EQ(events.Names(), (std::vector<std::string>{ "LeftButtonReleaseEvent" }));
}

TEST_F(ImageViewerMouse, TheMiddleButtonIsLeftToTheStyle)
{
  zvtest::EventRecorder behind;
  behind.Watch(this->Scene.Interactor(), { vtkCommand::MiddleButtonPressEvent }, -1.0f);
  this->Mouse.Press(Middle, this->OffTheLines());
  this->Mouse.Release(Middle);
  EXPECT_EQ(behind.Events().size(), 1u);
  EXPECT_EQ(this->Viewer->State, StateStart);
}

TEST_F(ImageViewerMouse, TheRightButtonDragsWindowAndLevel)
{
  zvtest::EventRecorder events;
  this->Watch(events);
  this->Viewer->SetRightButtonAction(2);
  this->Mouse.Press(Right, this->OffTheLines());
  EXPECT_EQ(this->Viewer->State, StateWindowLevelling);
  const double before = this->Viewer->GetWindow();
  zvtest::Display to = this->OffTheLines();
  to[0] += 40;
  this->Mouse.MoveTo(to);
  EXPECT_GT(this->Viewer->GetWindow(), before);
  EXPECT_EQ(events.Count(vtkCommand::WindowLevelEvent), 1);
  this->Mouse.Release(Right);
  EXPECT_EQ(this->Viewer->State, StateStart);
}

TEST_F(ImageViewerMouse, ARightPressBesideTheSliceIsOutside)
{
  this->Viewer->SetRightButtonAction(2);
  this->Mouse.Press(Right, this->Beside());
  EXPECT_EQ(this->Viewer->State, StateOutside);
}

TEST_F(ImageViewerMouse, AShiftRightPressLeavesTheButtonOnWindowAndLevel)
{
  this->Viewer->SetRightButtonAction(0);
  this->Mouse.Press(Right, this->OffTheLines(), Shift);
  this->Mouse.Release(Right);
  EXPECT_EQ(this->Viewer->GetRightButtonAction(), 2);
  this->Mouse.Press(Right, this->OffTheLines());
  EXPECT_EQ(this->Viewer->State, StateWindowLevelling);
}

TEST_F(ImageViewerMouse, OtherRightActionsReadAndMove)
{
  this->Viewer->SetRightButtonAction(0);
  this->Mouse.Press(Right, this->OffTheLines());
  EXPECT_EQ(this->Viewer->State, StateCursoring);
  this->Mouse.Release(Right);
  EXPECT_EQ(this->Viewer->State, StateStart);
  this->Viewer->SetRightButtonAction(1);
  this->Mouse.Press(Right, this->OffTheLines());
  EXPECT_NE(this->Viewer->State, StateStart);
  this->Mouse.Release(Right);
  EXPECT_EQ(this->Viewer->State, StateStart);
}

//------------------------------------------------------------------------------
// Paint and fill

TEST_F(ImageViewerMouse, PaintWritesTheVoxelsUnderTheDraggedMouse)
{
  this->Viewer->SetPaintMode(true);
  this->Viewer->SetFillValue(7);
  this->Press(this->On(4.0, 15.0));
  EXPECT_TRUE(this->CrossIndexIs(9, 9));
  this->Mouse.MoveTo(this->On(5.0, 15.0));
  this->Mouse.MoveTo(this->On(6.0, 14.0));
  this->Mouse.Release(Left);
  EXPECT_EQ(this->Volume->GetScalarComponentAsDouble(5, 15, 19, 0), 7.0);
  EXPECT_EQ(this->Volume->GetScalarComponentAsDouble(6, 14, 19, 0), 7.0);
  EXPECT_NE(this->Volume->GetScalarComponentAsDouble(4, 15, 19, 0), 7.0);
  this->Mouse.MoveTo(this->On(10.0, 4.0));
  EXPECT_NE(this->Volume->GetScalarComponentAsDouble(10, 4, 19, 0), 7.0);
  EXPECT_EQ(this->Viewer->FilledPoints->GetNumberOfPoints(), 0);
}

TEST_F(ImageViewerMouse, FillStartsAtTheCursorAndIsTakenBack)
{
  this->Viewer->SetFillMode(true);
  this->Viewer->SetFillValue(1000);
  this->Mouse.MoveTo(this->On(4.0, 15.0));
  this->Click(this->On(4.0, 15.0));
  EXPECT_EQ(this->Viewer->FilledPoints->GetNumberOfPoints(), 19 * 19);
  EXPECT_EQ(this->Volume->GetScalarComponentAsDouble(18, 18, 19, 0), 1000.0);
  EXPECT_NE(this->Volume->GetScalarComponentAsDouble(19, 19, 19, 0), 1000.0);
  this->Viewer->UndoFill();
  EXPECT_EQ(this->Viewer->FilledPoints->GetNumberOfPoints(), 0);
  EXPECT_EQ(this->Volume->GetScalarComponentAsDouble(18, 18, 19, 0), this->Viewer->FillOldValue);
}

TEST_F(ImageViewerMouse, EachPressForgetsTheFillBefore)
{
  this->Viewer->SetFillMode(true);
  this->Viewer->SetFillValue(1000);
  this->Mouse.MoveTo(this->On(4.0, 15.0));
  this->Click(this->On(4.0, 15.0));
  this->Viewer->SetFillMode(false);
  this->Press(this->Beside());
  EXPECT_EQ(this->Viewer->FilledPoints->GetNumberOfPoints(), 0);
}
