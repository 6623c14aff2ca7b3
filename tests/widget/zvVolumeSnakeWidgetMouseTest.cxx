#include "zvVolumeSnakeFixture.h"

#include "vtkPropCollection.h"
#include "vtkProperty.h"
#include "vtkWeakPointer.h"

#include <gmock/gmock.h>

#include <functional>

using ::testing::IsEmpty;
using zvtest::World;

namespace
{
constexpr char InteractorError[] = "The interactor must be set prior to enabling/disabling widget";

class VolumeSnakeWidgetMouse : public zvtest::VolumeSnakeTest
{
protected:
  /// On and off the square of side 10 about the origin, and in the 3D view.
  zvtest::Display OnContour() { return this->At({ { 5, 1, 0 } }); }
  zvtest::Display OffContour() { return this->At({ { 14, 14, 0 } }); }
  static zvtest::Display OtherView() { return { { 600, 200 } }; }

  /// Two handles of the spline, beside the contour.
  void GiveHandles()
  {
    vtkNew<vtkPoints> handles;
    handles->SetDataTypeToDouble();
    handles->InsertNextPoint(-15.0, 15.0, 2.0);
    handles->InsertNextPoint(-12.0, -15.0, 0.0);
    this->Snake->InitializeHandles(handles);
  }

  /// What is shown of contours and gradient, and whether the mouse is answered.
  void ExpectShown(bool shown)
  {
    EXPECT_EQ(this->IsShown(this->Snake->SnakeActor), shown);
    EXPECT_EQ(this->IsShown(this->Snake->PrevSnakeActor), shown);
    EXPECT_EQ(this->IsShown(this->Snake->FreezeGradientActor), shown);
    EXPECT_EQ(this->IsShown(this->Snake->Snakes3DActor, 1), shown);
    EXPECT_EQ(this->IsObserved(), shown);
  }
};
}

// ---- Enabling

TEST_F(VolumeSnakeWidgetMouse, CannotBeEnabledOrDisabledWithoutAnInteractor)
{
  vtkNew<zvVolumeSnakeWidget> lonely;
  for (int enabling : { 1, 0 })
  {
    lonely->SetEnabled(enabling);
    this->ExpectVtkError(
      "zvVolumeSnakeWidget", "zvVolumeSnakeWidget", lonely.Get(), InteractorError);
    EXPECT_EQ(lonely->GetEnabled(), 0);
  }
}

TEST_F(VolumeSnakeWidgetMouse, EnablingShowsAndAttachesItAndTellsBeforeItRenders)
{
  this->Snake->CreateInitialSnake();
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Snake, zvtest::WidgetEvents,
    [this](const zvtest::RecordedEvent& event)
    {
      EXPECT_FALSE(event.HasData);
      this->ExpectShown(true);
      EXPECT_TRUE(this->IsShown(this->Snake->LineActor));
      EXPECT_TRUE(this->IsShown(this->Snake->HandleActor));
    });
  recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  this->Snake->SetEnabled(1);
  EXPECT_EQ(recorder.Names(), (Names{ "EnableEvent", "RenderEvent" }));
  EXPECT_EQ(this->Snake->LineActor->GetProperty(), this->Snake->GetLineProperty());
  EXPECT_EQ(this->Snake->HandleActor->GetProperty(), this->Snake->GetHandleProperty());
  EXPECT_TRUE(this->Snake->GetInteraction());
  this->Snake->SetEnabled(1);
  EXPECT_EQ(recorder.Events().size(), 2u);
}

TEST_F(VolumeSnakeWidgetMouse, EnablingAttachesOnceWhateverInteractionWas)
{
  this->Snake->SetEnabled(1);
  this->Snake->SetInteraction(false);
  this->Snake->SetEnabled(0);
  EXPECT_FALSE(this->Snake->GetInteraction());
  this->Snake->SetCurrentRenderer(this->Scene.Renderer(0));
  this->ShowSquare();
  EXPECT_TRUE(this->Snake->GetInteraction());
  EXPECT_TRUE(this->IsObserved());
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Pointer.WheelForward(this->OnContour());
  EXPECT_EQ(recorder.Names(), (Names{ "RenderEvent", "MouseWheelForwardEvent" }));
}

TEST_F(VolumeSnakeWidgetMouse, HandlesAreShownAsTheirVisibilitySaidWhenItWasEnabled)
{
  this->Snake->SphereHandleVisibilityOff();
  this->Snake->SetEnabled(1);
  EXPECT_FALSE(this->IsShown(this->Snake->HandleActor));
  EXPECT_TRUE(this->IsShown(this->Snake->LineActor));
  this->Snake->SphereHandleVisibilityOn();
  EXPECT_FALSE(this->IsShown(this->Snake->HandleActor));
}

TEST_F(VolumeSnakeWidgetMouse, DisablingLeavesLineAndHandlesInTheViewByDesign)
{
  this->ShowSquare();
  this->Snake->SetViewGradient(1);
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Snake, zvtest::WidgetEvents,
    [this](const zvtest::RecordedEvent& event)
    {
      EXPECT_FALSE(event.HasData);
      this->ExpectShown(false);
      EXPECT_FALSE(this->IsShown(this->Snake->GradientActor));
      EXPECT_EQ(this->Snake->GetCurrentRenderer(), this->Scene.Renderer(0)); // cleared after
    });
  recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  this->Snake->SetEnabled(0);
  EXPECT_EQ(recorder.Names(), (Names{ "DisableEvent", "RenderEvent" }));
  EXPECT_TRUE(this->IsShown(this->Snake->LineActor));
  EXPECT_TRUE(this->IsShown(this->Snake->HandleActor));
  EXPECT_EQ(this->Snake->GetCurrentRenderer(), nullptr);
  EXPECT_EQ(this->Snake->GetViewGradient(), 1);
  this->Snake->SetEnabled(0);
  EXPECT_EQ(recorder.Events().size(), 2u);
  this->Snake = nullptr;
  EXPECT_EQ(this->Scene.Renderer(0)->GetViewProps()->GetNumberOfItems(), 0);
}

TEST_F(VolumeSnakeWidgetMouse, EnablingTakesTheRendererUnderTheLastEvent)
{
  this->Snake->SetCurrentRenderer(nullptr);
  this->Pointer.MoveTo(OtherView());
  this->Pointer.MoveTo({ { 100, 100 } });
  this->Snake->SetEnabled(1);
  EXPECT_EQ(this->Snake->GetCurrentRenderer(), this->Scene.Renderer(1));
}

TEST_F(VolumeSnakeWidgetMouse, WithoutA3DRendererEnablingSaysSoAndChangesNothing)
{
  this->Snake->SetCurrentRenderer(nullptr);
  this->Snake->SetRenderer3D(nullptr);
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Snake->SetEnabled(1);
  this->ExpectGenericWarning("zvVolumeSnakeWidget", "set the 3D renderer before enabling...");
  EXPECT_EQ(this->Snake->GetEnabled(), 0);
  EXPECT_EQ(this->Snake->GetCurrentRenderer(), nullptr);
  EXPECT_THAT(recorder.Names(), IsEmpty());
  EXPECT_EQ(this->Scene.Renderer(0)->GetViewProps()->GetNumberOfItems(), 0);
}

TEST_F(VolumeSnakeWidgetMouse, A3DRendererThatIsTakenAwayOrDiesIsNotNeededToDisable)
{
  for (bool dies : { false, true })
  {
    auto other = vtkSmartPointer<vtkRenderer>::New();
    this->Snake->SetRenderer3D(other);
    EXPECT_EQ(other->GetReferenceCount(), 1);
    this->ShowSquare();
    EXPECT_TRUE(other->HasViewProp(this->Snake->Snakes3DActor));
    if (dies)
    {
      other = nullptr;
      EXPECT_EQ(this->Snake->GetRenderer3D(), nullptr);
    }
    else
    {
      this->Snake->SetRenderer3D(nullptr);
    }
    this->Snake->SetEnabled(0);
    EXPECT_EQ(this->Snake->GetEnabled(), 0);
    if (other)
    {
      EXPECT_FALSE(other->HasViewProp(this->Snake->Snakes3DActor));
    }
  }
  this->ExpectNoMessage();
}

TEST_F(VolumeSnakeWidgetMouse, AddObserversAttachesTheNineEventsAndTellsNothing)
{
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Snake->AddObservers();
  EXPECT_TRUE(this->IsObserved());
  EXPECT_THAT(recorder.Names(), IsEmpty());
  EXPECT_FALSE(this->Scene.Interactor()->HasObserver(
    vtkCommand::CharEvent, this->Snake->EventCallbackCommand));
}

// ---- The first press

TEST_F(VolumeSnakeWidgetMouse, TheFirstPressMakesARingWhereItIsAndLeavesTheRestToTheHost)
{
  zvtest::VolumeOptions options;
  options.Spacing = { { 0.5, 1.25, 9.0 } };
  zvInstanceManager::Instance()->SetCurrentOutput(zvtest::MakeConstantVolume(0.0, options));
  this->Snake->SetEnabled(1);
  this->Snake->SetState(zvVolumeSnakeWidget::Moving);
  this->Snake->CurveGrabbed = true;
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Pointer.Press(zvtest::Left, this->At({ { 3, 4, 0 } }));
  EXPECT_EQ(this->Snake->GetState(), zvVolumeSnakeWidget::Start);
  EXPECT_FALSE(this->Snake->CurveGrabbed);
  EXPECT_EQ(recorder.Names(), (Names{ "LeftButtonPressEvent" }));
  EXPECT_EQ(this->Snake->GetRadius(), 1.75);
  const World center = this->Center();
  ExpectNear(center, { { 3, 4, 0 } }, Pixel);
  this->ExpectCircle(center, 1.75);
  EXPECT_EQ(this->Snake->GetPrevSnake()->GetNumberOfPoints(), 100);
  // What follows moves nothing, up to the next press.
  this->Pointer.MoveTo(this->At({ { 8, 8, 0 } }));
  this->Pointer.Release(zvtest::Left);
  this->ExpectCircle(center, 1.75);
}

TEST_F(VolumeSnakeWidgetMouse, TheFirstPressOnAHandlePutsTheRingAtItsDepth)
{
  this->GiveHandles();
  this->Snake->SetEnabled(1);
  this->Pointer.Press(zvtest::Left, this->At({ { -15, 15, 2 } }));
  ExpectNear(this->Center(), { { -15, 15, 2 } }, Pixel);
}

TEST_F(VolumeSnakeWidgetMouse, TheFirstPressWithoutACurrentImageSaysSo)
{
  zvInstanceManager::Instance()->SetCurrentOutput(nullptr);
  this->Snake->SetEnabled(1);
  this->Snake->SetState(zvVolumeSnakeWidget::Scaling);
  this->Pointer.Press(zvtest::Left, this->At({ { 3, 4, 0 } }));
  this->ExpectGenericWarning(
    "zvVolumeSnakeWidget", "set the current image before starting a contour...");
  EXPECT_EQ(this->Snake->GetState(), zvVolumeSnakeWidget::Start);
  EXPECT_EQ(this->Snake->GetRadius(), 0.5);
  ExpectNear(this->Center(), { { 0, 0, 0 } }, 0.0);
  EXPECT_EQ(this->Snake->GetSnake()->GetNumberOfPoints(), 0);
}

TEST_F(VolumeSnakeWidgetMouse, AfterAResetTheNextPressStartsAnew)
{
  this->ShowSquare();
  this->Snake->Reset();
  this->Pointer.Press(zvtest::Left, this->At({ { 3, 4, 0 } }));
  EXPECT_EQ(this->Snake->GetSnake()->GetNumberOfPoints(), 0); // disabled
  this->Snake->SetCurrentRenderer(this->Scene.Renderer(0));
  this->Snake->SetEnabled(1);
  this->Pointer.Press(zvtest::Left, this->At({ { 3, 4, 0 } }));
  EXPECT_EQ(this->Snake->GetSnake()->GetNumberOfPoints(), 4);
  EXPECT_EQ(this->Snake->GetRadius(), 2.0);
}

// ---- The buttons

TEST_F(VolumeSnakeWidgetMouse, ALeftPressOnTheContourTakesItAndAMiddlePressScalesIt)
{
  this->ShowSquare();
  struct Row
  {
    zvtest::Button Button;
    int State;
  };
  for (const Row& row : { Row{ zvtest::Left, zvVolumeSnakeWidget::Moving },
         Row{ zvtest::Middle, zvVolumeSnakeWidget::Scaling } })
  {
    zvtest::EventRecorder recorder;
    this->Record(recorder);
    this->Pointer.Press(row.Button, this->OnContour());
    EXPECT_EQ(this->Snake->GetState(), row.State);
    EXPECT_EQ(recorder.Names(), (Names{ "StartInteractionEvent", "RenderEvent" }));
    EXPECT_FALSE(recorder.Events().front().HasData);
    this->Pointer.Release(row.Button);
  }
}

TEST_F(VolumeSnakeWidgetMouse, TheContourIsCaughtFromAWay)
{
  // A twentieth of the window's diagonal is 44 pixels.
  this->ShowSquare();
  this->Pointer.Press(zvtest::Left, this->At({ { 7.5, 1, 0 } }));
  EXPECT_EQ(this->Snake->GetState(), zvVolumeSnakeWidget::Moving);
}

TEST_F(VolumeSnakeWidgetMouse, PressesOffTheContourAreLeftToOthers)
{
  this->ShowSquare();
  struct Row
  {
    zvtest::Button Button;
    const char* Name;
  };
  for (const Row& row : { Row{ zvtest::Left, "LeftButtonPressEvent" },
         Row{ zvtest::Middle, "MiddleButtonPressEvent" } })
  {
    for (const zvtest::Display& at : { this->OffContour(), OtherView() })
    {
      this->Snake->SetState(zvVolumeSnakeWidget::Moving);
      zvtest::EventRecorder recorder;
      this->Record(recorder);
      this->Pointer.Press(row.Button, at);
      EXPECT_EQ(this->Snake->GetState(), zvVolumeSnakeWidget::Outside);
      EXPECT_EQ(recorder.Names(), (Names{ row.Name }));
    }
  }
  this->ExpectPoints(SquarePlaces());
}

TEST_F(VolumeSnakeWidgetMouse, AMiddlePressOffTheContourLetsTheLineGo)
{
  this->ShowSquare();
  this->Snake->HighlightLine(1);
  this->Snake->CurveGrabbed = true;
  this->Pointer.Press(zvtest::Middle, this->OffContour());
  EXPECT_EQ(this->Snake->LineActor->GetProperty(), this->Snake->GetLineProperty());
  EXPECT_FALSE(this->Snake->CurveGrabbed);
}

TEST_F(VolumeSnakeWidgetMouse, AMiddlePressOnAnEmptyContourHitsNothing)
{
  this->Snake->SetEnabled(1);
  vtkNew<vtkPolyData> empty;
  for (int set = 0; set < 2; ++set)
  {
    this->Pointer.Press(zvtest::Middle, this->At({ { 0, 0, 0 } }));
    EXPECT_EQ(this->Snake->GetState(), zvVolumeSnakeWidget::Outside);
    this->Snake->SetSnake(empty); // now with a mapper
  }
}

TEST_F(VolumeSnakeWidgetMouse, ARightPressScalesFromAnywhereInTheView)
{
  this->ShowSquare();
  for (const zvtest::Display& at : { this->OnContour(), this->OffContour() })
  {
    this->Snake->SetState(zvVolumeSnakeWidget::Outside);
    zvtest::EventRecorder recorder;
    this->Record(recorder);
    this->Pointer.Press(zvtest::Right, at);
    EXPECT_EQ(this->Snake->GetState(), zvVolumeSnakeWidget::Scaling);
    EXPECT_EQ(recorder.Names(), (Names{ "StartInteractionEvent", "RenderEvent" }));
  }
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Pointer.Press(zvtest::Right, OtherView());
  EXPECT_EQ(this->Snake->GetState(), zvVolumeSnakeWidget::Outside);
  EXPECT_EQ(recorder.Names(), (Names{ "RightButtonPressEvent" }));
}

TEST_F(VolumeSnakeWidgetMouse, AfterARightDragScalingGoesOnUntilAnotherReleaseByDesign)
{
  this->ShowSquare();
  const zvtest::Display at = this->OffContour();
  this->Pointer.Press(zvtest::Right, at);
  this->Pointer.MoveTo({ { at[0], at[1] + 10 } });
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Pointer.Release(zvtest::Right);
  EXPECT_EQ(recorder.Names(), (Names{ "RightButtonReleaseEvent" }));
  EXPECT_EQ(this->Snake->GetState(), zvVolumeSnakeWidget::Scaling);
  const double before = this->Points()[2][0];
  this->Pointer.MoveTo({ { at[0], at[1] + 20 } });
  EXPECT_GT(this->Points()[2][0], before + 0.5);
  this->Pointer.Release(zvtest::Middle);
  EXPECT_EQ(this->Snake->GetState(), zvVolumeSnakeWidget::Start);
}

TEST_F(VolumeSnakeWidgetMouse, EitherReleaseEndsADragInEveryStateButStartAndOutside)
{
  this->ShowSquare();
  for (zvtest::Button button : { zvtest::Left, zvtest::Middle })
  {
    for (int state : { zvVolumeSnakeWidget::Moving, zvVolumeSnakeWidget::Scaling,
           zvVolumeSnakeWidget::Spinning, zvVolumeSnakeWidget::Placing })
    {
      this->Snake->SetState(state);
      zvtest::EventRecorder recorder;
      this->Record(recorder);
      this->Pointer.Release(button, this->OffContour());
      EXPECT_EQ(this->Snake->GetState(), zvVolumeSnakeWidget::Start);
      EXPECT_EQ(recorder.Names(), (Names{ "EndInteractionEvent", "RenderEvent" }));
    }
    for (int state : { zvVolumeSnakeWidget::Start, zvVolumeSnakeWidget::Outside })
    {
      this->Snake->SetState(state);
      zvtest::EventRecorder recorder;
      this->Record(recorder);
      this->Pointer.Release(button, this->OffContour());
      EXPECT_EQ(this->Snake->GetState(), state);
      EXPECT_EQ(recorder.Events().size(), 1u); // the release itself
    }
  }
}

TEST_F(VolumeSnakeWidgetMouse, TheWheelRendersAndIsLeftToOthers)
{
  this->ShowSquare();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Pointer.WheelForward(this->OnContour());
  this->Pointer.WheelBackward(this->OnContour());
  EXPECT_EQ(recorder.Names(),
    (Names{ "RenderEvent", "MouseWheelForwardEvent", "RenderEvent", "MouseWheelBackwardEvent" }));
}

TEST_F(VolumeSnakeWidgetMouse, WithInteractionOffPressesAndMovesDoNothingAndReleasesReturnToStart)
{
  this->ShowSquare();
  this->Snake->SetInteraction(false);
  this->Snake->AddObservers(); // Interaction stays off
  this->Snake->SetState(zvVolumeSnakeWidget::Scaling);
  this->Snake->CurveGrabbed = true;
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  for (zvtest::Button button : { zvtest::Left, zvtest::Middle, zvtest::Right })
  {
    for (const zvtest::Display& at : { this->OnContour(), OtherView() })
    {
      this->Pointer.Press(button, at);
      this->Pointer.MoveTo(this->OffContour());
    }
  }
  EXPECT_EQ(this->Snake->GetState(), zvVolumeSnakeWidget::Scaling);
  EXPECT_TRUE(this->Snake->CurveGrabbed);
  this->ExpectPoints(SquarePlaces());
  EXPECT_EQ(recorder.Events().size(), 12u); // the mouse's own, aborted by nobody
  for (zvtest::Button button : { zvtest::Left, zvtest::Middle })
  {
    this->Snake->SetState(zvVolumeSnakeWidget::Moving);
    recorder.Clear();
    this->Pointer.Release(button);
    EXPECT_EQ(this->Snake->GetState(), zvVolumeSnakeWidget::Start);
    EXPECT_EQ(recorder.Names(), (Names{ "EndInteractionEvent", "RenderEvent" }));
  }
  vtkNew<vtkPolyData> empty;
  this->Snake->SetSnake(empty);
  this->Pointer.Press(zvtest::Left, this->OnContour());
  EXPECT_EQ(this->Snake->GetSnake()->GetNumberOfPoints(), 0);
}

// ---- Drags

TEST_F(VolumeSnakeWidgetMouse, ALeftDragMovesTheContourAsItIsPastTheImage)
{
  this->ShowSquare();
  const zvtest::Display from = this->OnContour();
  this->Pointer.Press(zvtest::Left, from);
  this->Pointer.MoveTo({ { from[0] + 30, from[1] - 20 } });
  this->ExpectPoints(Moved(SquarePlaces(), { { 3, -2, 0 } }), 1e-6);
  ExpectNear(this->Center(), { { 3, -2, 0 } });
  this->Pointer.MoveTo({ { from[0] - 270, from[1] - 20 } });
  this->ExpectPoints(Moved(SquarePlaces(), { { -27, -2, 0 } }), 1e-6);
  this->Pointer.Release(zvtest::Left);
}

TEST_F(VolumeSnakeWidgetMouse, ALeftDragNeverMovesAHandle)
{
  this->GiveHandles();
  this->ShowSquare();
  this->Snake->CurrentHandleIndex = 1;
  const zvtest::Display from = this->OnContour();
  this->Pointer.Drag(zvtest::Left, from, { { from[0] + 30, from[1] } });
  this->ExpectPoints(Moved(SquarePlaces(), { { 3, 0, 0 } }), 1e-6);
  EXPECT_EQ(this->Snake->GetHandlePosition(1)[0], -12.0);
}

TEST_F(VolumeSnakeWidgetMouse, AMiddleDragScalesAboutTheMiddleByTheMotion)
{
  this->ShowSquare();
  const zvtest::Display from = this->OnContour();
  const double reach = std::sqrt(50.0);
  this->Pointer.Press(zvtest::Middle, from);
  this->Pointer.MoveTo({ { from[0], from[1] + 20 } });
  this->ExpectPoints(Scaled(SquarePlaces(), 1.0 + 2.0 / reach), 1e-6);
  EXPECT_NEAR(this->Snake->GetRadius(), reach, 1e-6); // of the contour before
  ExpectNear(this->Center(), { { 0, 0, 0 } }, 0.0);
  this->Pointer.MoveTo({ { from[0], from[1] } });
  const double factor = (1.0 + 2.0 / reach) * (1.0 - 2.0 / (reach + 2.0));
  this->ExpectPoints(Scaled(SquarePlaces(), factor), 1e-6);
  this->Pointer.MoveTo({ { from[0] + 10, from[1] } }); // across: shrinks
  EXPECT_LT(this->Points()[2][0], 5.0 * factor - 0.3);
}

TEST_F(VolumeSnakeWidgetMouse, EachMoveTellsAndRendersInEveryDraggingState)
{
  this->GiveHandles();
  this->ShowSquare();
  for (int state : { zvVolumeSnakeWidget::Moving, zvVolumeSnakeWidget::Scaling,
         zvVolumeSnakeWidget::Spinning, zvVolumeSnakeWidget::Placing })
  {
    this->Snake->SetSnake(Square());
    this->Pointer.MoveTo(this->At({ { 3, 3, 0 } }));
    this->Snake->SetState(state);
    zvtest::EventRecorder recorder;
    this->Record(recorder);
    this->Pointer.MoveTo(this->At({ { 3, 6, 0 } }));
    EXPECT_EQ(recorder.Names(), (Names{ "InteractionEvent", "RenderEvent" }));
    EXPECT_FALSE(recorder.Events().front().HasData);
    const bool contourMoved = state <= zvVolumeSnakeWidget::Scaling;
    EXPECT_EQ(this->Points()[0][1] != -5.0, contourMoved) << state;
    this->Snake->SetState(zvVolumeSnakeWidget::Start);
  }
}

TEST_F(VolumeSnakeWidgetMouse, SpinningTurnsTheHandlesAndNotTheContour)
{
  this->GiveHandles();
  this->ShowSquare();
  this->Snake->ProjectToPlaneOn();
  this->Snake->SetProjectionNormal(2);
  this->Pointer.MoveTo(this->At({ { 5, 0, 0 } }));
  this->Snake->SetState(zvVolumeSnakeWidget::Spinning);
  this->Pointer.MoveTo(this->At({ { 5, 2, 0 } }));
  this->ExpectPoints(SquarePlaces());
  EXPECT_GT(std::abs(this->Snake->GetHandlePosition(0)[0] + 15.0), 1.0);
  EXPECT_EQ(this->Snake->GetHandlePosition(0)[2], 0.0); // and they end on the plane
}

TEST_F(VolumeSnakeWidgetMouse, MovesInStartAndOutsideAreLeftToOthers)
{
  this->ShowSquare();
  for (int state : { zvVolumeSnakeWidget::Start, zvVolumeSnakeWidget::Outside })
  {
    this->Snake->SetState(state);
    zvtest::EventRecorder recorder;
    this->Record(recorder);
    this->Pointer.MoveTo(this->OnContour());
    EXPECT_EQ(recorder.Names(), (Names{ "MouseMoveEvent" }));
  }
  this->ExpectPoints(SquarePlaces());
}

TEST_F(VolumeSnakeWidgetMouse, InPerspectiveTheDepthOfADragIsThatOfTheLastPickPosition)
{
  vtkCamera* camera = this->Scene.Renderer(0)->GetActiveCamera();
  camera->ParallelProjectionOff();
  camera->SetViewAngle(30.0);
  const double bounds[6] = { -20, 20, -20, 20, -20, 20 };
  this->Scene.ResetCamera(bounds, 0);
  this->ShowSquare();
  for (double z : { 0.0, 10.0 })
  {
    this->Snake->SetSnake(Square());
    this->Snake->LastPickPosition[2] = z;
    const zvtest::Display from = this->OnContour();
    const zvtest::Display to = { { from[0] + 60, from[1] } };
    const double motion =
      this->Scene.WorldAt(to, { { 0, 0, z } })[0] - this->Scene.WorldAt(from, { { 0, 0, z } })[0];
    this->Pointer.Drag(zvtest::Left, from, to);
    this->ExpectPoints(Moved(SquarePlaces(), { { motion, 0, 0 } }), 1e-5);
  }
}

TEST_F(VolumeSnakeWidgetMouse, ARightDragOnAnEmptyContourIsHarmless)
{
  this->Snake->SetEnabled(1);
  this->Pointer.Drag(zvtest::Right, this->OnContour(), this->OffContour());
  this->Pointer.Release(zvtest::Left);
  EXPECT_EQ(this->Snake->GetSnake()->GetNumberOfPoints(), 0);
  this->ExpectNoMessage();
}

// ---- Handles of the spline

TEST_F(VolumeSnakeWidgetMouse, AddHandleAppendsShowsTheLineAndLeavesTheState)
{
  double position[3] = { 1.0, 2.0, 3.0 };
  for (int state : { zvVolumeSnakeWidget::Start, zvVolumeSnakeWidget::Scaling })
  {
    this->Snake->SetState(state);
    zvtest::EventRecorder recorder;
    this->Record(recorder);
    this->Snake->AddHandle(position);
    EXPECT_EQ(this->Snake->GetState(), state);
    EXPECT_EQ(recorder.Names(), (Names{ "RenderEvent" }));
  }
  EXPECT_EQ(this->Snake->GetNumberOfHandles(), 2);
  EXPECT_EQ(this->Snake->GetHandlePosition(1)[2], 3.0);
  EXPECT_TRUE(this->IsShown(this->Snake->LineActor));
  EXPECT_EQ(this->Snake->GetEnabled(), 0);
}

TEST_F(VolumeSnakeWidgetMouse, AddHandleOnTheFirstHandleClosesAndEnables)
{
  this->GiveHandles();
  this->Snake->SetState(zvVolumeSnakeWidget::Moving);
  const zvtest::Display at = this->At({ { -15, 15, 2 } });
  this->Scene.Interactor()->SetEventPosition(at[0], at[1]);
  double position[3] = { 1.0, 2.0, 3.0 };
  this->Snake->AddHandle(position);
  EXPECT_EQ(this->Snake->GetNumberOfHandles(), 2);
  EXPECT_EQ(this->Snake->GetClosed(), 1);
  EXPECT_EQ(this->Snake->GetState(), zvVolumeSnakeWidget::Start);
  EXPECT_EQ(this->Snake->GetEnabled(), 1);
  EXPECT_EQ(this->Snake->CurrentHandleIndex, 0); // kept, unlike the parent's
}

TEST_F(VolumeSnakeWidgetMouse, MayBeReleasedWhenAHandleClosesAndEnablesIt)
{
  this->GiveHandles();
  const zvtest::Display at = this->At({ { -15, 15, 2 } });
  this->Scene.Interactor()->SetEventPosition(at[0], at[1]);
  const vtkWeakPointer<zvVolumeSnakeWidget> alive = this->Snake.Get();
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Snake, { vtkCommand::EnableEvent },
    [this](const zvtest::RecordedEvent&) { this->Snake = nullptr; });
  double position[3] = { 1.0, 2.0, 3.0 };
  alive->AddHandle(position);
  EXPECT_EQ(recorder.Count(vtkCommand::EnableEvent), 1);
  EXPECT_EQ(alive, nullptr);
  EXPECT_EQ(this->Scene.Renderer(0)->GetViewProps()->GetNumberOfItems(), 0);
}

TEST_F(VolumeSnakeWidgetMouse, AddHandleOnAnotherHandleAddsNothingAndKeepsIt)
{
  this->GiveHandles();
  this->Snake->SetState(zvVolumeSnakeWidget::Moving);
  const zvtest::Display at = this->At({ { -12, -15, 0 } });
  this->Scene.Interactor()->SetEventPosition(at[0], at[1]);
  double position[3] = { 1.0, 2.0, 3.0 };
  this->Snake->AddHandle(position);
  EXPECT_EQ(this->Snake->GetNumberOfHandles(), 2);
  EXPECT_EQ(this->Snake->GetClosed(), 0);
  EXPECT_EQ(this->Snake->GetState(), zvVolumeSnakeWidget::Moving);
  EXPECT_EQ(this->Snake->GetEnabled(), 0);
  EXPECT_EQ(this->Snake->CurrentHandleIndex, 1);
}

// ---- What is seen

TEST_F(VolumeSnakeWidgetMouse, ColoursBeyondOneAreSeenAsPureColours)
{
  this->ShowSquare();
  this->Snake->SetPrevSnake(
    Contour({ { { -9, -9, 0 } }, { { 9, -9, 0 } }, { { 9, 9, 0 } }, { { -9, 9, 0 } } }));
  this->Snake->SetSnakes3D(Square());
  this->Snake->SetGradientPointSize(6.0);
  const std::vector<World> places = { { { 12, 0, 0 } }, { { -12, 0, 0 } } };
  this->Snake->SetFreezeGradient(CloudOfValues(places, { 0.0f, 1.0f }));
  this->Snake->SetGradient(CloudOfValues(places, { 0.0f, 1.0f }));
  zvtest::Picture picture = this->Scene.RenderAndLook();
  const zvtest::Region slice{ { { 0, 0 } }, { { 399, 399 } } };
  const zvtest::Region stack{ { { 400, 0 } }, { { 799, 399 } } };
  EXPECT_NEAR(picture.Count(Green, slice, 0), 400, 8);
  EXPECT_NEAR(picture.Count(Green, stack, 0), 400, 8);
  EXPECT_NEAR(picture.Count(Yellow, slice, 0), 720, 8);
  EXPECT_NEAR(picture.Count(Blue, slice, 0), 2 * 36, 16);
  EXPECT_EQ(picture.CountOther(Black, slice, 0),
    picture.Count(Green, slice, 0) + picture.Count(Yellow, slice, 0) +
      picture.Count(Blue, slice, 0));

  this->Snake->SetViewGradient(1);
  picture = this->Scene.RenderAndLook();
  EXPECT_TRUE(picture.HasNear(Blue, this->At(places[0]), 1, 4));
  EXPECT_TRUE(picture.HasNear(Red, this->At(places[1]), 1, 0));
  this->Snake->SetViewGradient(0);
  picture = this->Scene.RenderAndLook();
  EXPECT_FALSE(picture.HasNear(Blue, this->At(places[0]), 6, 4));
  this->Snake->SetColor(255.0, 0.0, 255.0);
  picture = this->Scene.RenderAndLook();
  EXPECT_NEAR(picture.Count(Magenta, slice, 0), 400, 8);
  EXPECT_EQ(picture.Count(Green, slice, 0), 0);
  EXPECT_NEAR(picture.Count(Green, stack, 0), 400, 8); // when it is set again
}

TEST_F(VolumeSnakeWidgetMouse, TheContourIsSeenAndCaughtInTheNewPlaceAtEachMove)
{
  this->ShowSquare();
  this->Snake->SetPrevSnake(this->Snake->GetSnake());
  this->Scene.Render();
  const zvtest::Display from = this->OnContour();
  this->Pointer.Press(zvtest::Left, from);
  this->Pointer.MoveTo({ { from[0] - 120, from[1] + 40 } });
  zvtest::Picture picture = this->Scene.Look(); // what the handler itself drew
  EXPECT_TRUE(picture.HasNear(Green, this->At({ { -7, 2, 0 } }), 1));
  EXPECT_TRUE(picture.HasNear(Green, this->At({ { -17, 6, 0 } }), 1));
  EXPECT_TRUE(picture.HasNear(Yellow, this->At({ { 5, 0, 0 } }), 1)); // the previous one stays
  this->Pointer.Release(zvtest::Left);
  this->Pointer.Press(zvtest::Left, from);
  EXPECT_EQ(this->Snake->GetState(), zvVolumeSnakeWidget::Outside);
  const zvtest::Display moved = this->At({ { -7, 4, 0 } });
  this->Pointer.Press(zvtest::Middle, moved);
  EXPECT_EQ(this->Snake->GetState(), zvVolumeSnakeWidget::Scaling);
  this->Pointer.MoveTo({ { moved[0], moved[1] + 40 } });
  picture = this->Scene.Look();
  const double reach = 5.0 * (1.0 + 4.0 / std::sqrt(50.0));
  EXPECT_TRUE(picture.HasNear(Green, this->At({ { -12 + reach, 4, 0 } }), 1));
  EXPECT_TRUE(picture.HasNear(Green, this->At({ { -12, 4 - reach, 0 } }), 1));
}

TEST_F(VolumeSnakeWidgetMouse, DisabledNothingOfTheContoursIsSeen)
{
  const zvtest::Picture empty = this->Scene.RenderAndLook();
  this->Snake->SetSnakes3D(Square());
  this->Snake->SetFreezeGradient(Cloud({ { { 9, 9, 0 } } }));
  this->Show();
  EXPECT_GT(this->Scene.RenderAndLook().CountDifferent(empty), 100);
  this->Snake->SetEnabled(0);
  EXPECT_EQ(this->Scene.Look().CountDifferent(empty), 0);
}

// ---- Life and death

TEST_F(VolumeSnakeWidgetMouse, DeletedWhileEnabledLeavesNothingBehind)
{
  const zvtest::Picture empty = this->Scene.RenderAndLook();
  this->GiveHandles();
  this->Snake->SetSnakes3D(Square());
  this->Show();
  vtkSmartPointer<vtkCommand> command = this->Snake->EventCallbackCommand;
  this->Snake = nullptr;
  EXPECT_EQ(this->Scene.Renderer(0)->GetViewProps()->GetNumberOfItems(), 0);
  EXPECT_EQ(this->Scene.Renderer(1)->GetViewProps()->GetNumberOfItems(), 0);
  EXPECT_EQ(this->Scene.Look().CountDifferent(empty), 0);
  for (unsigned long event : zvtest::ButtonEvents)
  {
    EXPECT_FALSE(this->Scene.Interactor()->HasObserver(event, command));
  }
  this->Pointer.Drag(zvtest::Left, { { 100, 100 } }, { { 200, 200 } });
}

TEST_F(VolumeSnakeWidgetMouse, OutlivesWhatItWasShownIn)
{
  this->ShowSquare();
  const zvtest::Display on = this->OnContour();
  this->Pointer.Press(zvtest::Left, on);
  this->Scene.DropRenderers();
  this->Pointer.MoveTo({ { 10, 10 } });
  this->Pointer.Release(zvtest::Left);
  this->Pointer.Press(zvtest::Right, on);
  EXPECT_EQ(this->Snake->GetState(), zvVolumeSnakeWidget::Outside);
  this->Scene.DropInteractor();
  this->Scene.DropWindow();
  EXPECT_EQ(this->Snake->GetInteractor(), nullptr);
  EXPECT_EQ(this->Snake->GetEnabled(), 0);
  this->Snake->OnLeftButtonDown();
  this->Snake->OnMiddleButtonDown();
  this->Snake->OnRightButtonDown();
  EXPECT_EQ(this->Snake->GetState(), zvVolumeSnakeWidget::Outside);
  this->Snake->SetState(zvVolumeSnakeWidget::Scaling);
  this->Snake->OnMouseMove();
  this->Snake->OnMiddleButtonUp();
  EXPECT_EQ(this->Snake->GetState(), zvVolumeSnakeWidget::Start);
  this->Snake->OnMouseWheelBackward();
  this->Snake->OnRightButtonUp();
  double position[3] = { 1.0, 2.0, 3.0 };
  this->Snake->AddHandle(position);
  EXPECT_EQ(this->Snake->GetNumberOfHandles(), 1);
}

TEST_F(VolumeSnakeWidgetMouse, SurvivesObserversThatDisableOrCutOffOrReleaseIt)
{
  using Action = std::function<void()>;
  const Action actions[] = { [this] { this->Snake->SetEnabled(0); },
    [this] { this->Snake->SetInteractor(nullptr); }, [this] { this->Snake->Reset(); },
    [this] { this->Snake = nullptr; } };
  for (const Action& action : actions)
  {
    for (unsigned long event :
      { vtkCommand::EnableEvent, vtkCommand::DisableEvent, vtkCommand::StartInteractionEvent,
        vtkCommand::InteractionEvent, vtkCommand::EndInteractionEvent })
    {
      this->MakeSnake();
      this->Snake->SetSnake(Square());
      bool done = false;
      zvtest::EventRecorder recorder;
      recorder.Watch(this->Snake, { event },
        [&action, &done](const zvtest::RecordedEvent&)
        {
          if (!done)
          {
            done = true;
            action();
          }
        });
      zvVolumeSnakeWidget* widget = this->Snake;
      widget->SetEnabled(1);
      this->Pointer.Drag(zvtest::Left, this->OnContour(), this->OffContour());
      if (this->Snake && this->Snake->GetInteractor())
      {
        widget->SetEnabled(0);
      }
      EXPECT_TRUE(done) << vtkCommand::GetStringFromEventId(event);
      this->Snake = nullptr;
      EXPECT_EQ(this->Scene.Renderer(0)->GetViewProps()->GetNumberOfItems(), 0);
      EXPECT_EQ(this->Scene.Renderer(1)->GetViewProps()->GetNumberOfItems(), 0);
    }
  }
}

TEST_F(VolumeSnakeWidgetMouse, GoesToAnotherViewWithoutItsContourInTheFirst)
{
  this->ShowSquare();
  class zvtest::Scene other(TwoViews());
  this->Snake->SetInteractor(other.Interactor());
  EXPECT_EQ(this->Snake->GetEnabled(), 0);
  this->ExpectShown(false);
  this->Snake->SetRenderer3D(other.Renderer(1));
  this->Snake->SetCurrentRenderer(other.Renderer(0));
  this->Snake->SetEnabled(1);
  EXPECT_TRUE(other.Renderer(0)->HasViewProp(this->Snake->SnakeActor));
  this->Snake = nullptr;
  EXPECT_EQ(this->Scene.Renderer(0)->GetViewProps()->GetNumberOfItems(), 0);
  EXPECT_EQ(other.Renderer(0)->GetViewProps()->GetNumberOfItems(), 0);
}
