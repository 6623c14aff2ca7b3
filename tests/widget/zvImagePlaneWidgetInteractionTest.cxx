#include "zvImagePlaneFixture.h"

#include "vtkInteractorStyleUser.h"
#include "vtkObjectFactory.h"
#include "vtkPolyDataMapper.h"

#include <cstring>
#include <string>
#include <vector>

namespace
{
using Widget = zvImagePlaneWidget;

/// Counts the characters that reach it.
class CountingStyle : public vtkInteractorStyleUser
{
public:
  static CountingStyle* New();
  vtkTypeMacro(CountingStyle, vtkInteractorStyleUser)
  void OnChar() override { ++this->Characters; }
  int Characters = 0;
};
vtkStandardNewMacro(CountingStyle)

  /// A plane across z of a cube from 0 to 10, seen from above.
  class ImagePlaneInteraction : public ImagePlaneViewTest
{
protected:
  void SetUp() override
  {
    this->Show(this->Cube(11), 2, 2);
    this->Events.Watch(this->Widget.get(), zvtest::WidgetEvents);
  }

  /// The display position of a point of the plane.
  zvtest::Display On(double x, double y) { return this->Mouse.At({ { x, y, 10 } }); }
  zvtest::Display Middle() { return this->On(5, 5); }
  static zvtest::Display Beside() { return { { 3, 3 } }; }
  static zvtest::Display OutOfView() { return { { 500, 200 } }; }

  /// Look down at the plane at an angle, so that a drag up or down moves along its normal too.
  void LookAtAnAngle()
  {
    this->Scene.LookAlong({ { 0, 1, -1 } }, { { 0, 0, 1 } });
    this->Scene.Render();
  }

  /// Where a motion along z by that many units, seen at an angle, takes the mouse.
  zvtest::Display Lifted(const zvtest::Display& from, double motion)
  {
    const zvtest::World start = this->Scene.WorldAt(from, { { 5, 5, 10 } });
    // Across the view, upwards, is (0, 1, 1).
    return this->Mouse.At({ { start[0], start[1] + motion, start[2] + motion } });
  }

  std::vector<std::string> TakeEvents()
  {
    std::vector<std::string> names = this->Events.Names();
    this->Events.Clear();
    return names;
  }

  void ExpectCallData(double window, double level)
  {
    ASSERT_FALSE(this->Events.Events().empty());
    const zvtest::RecordedEvent& event = this->Events.Events().back();
    ASSERT_EQ(event.Values.size(), 2u);
    EXPECT_NEAR(event.Values[0], window, 1e-9);
    EXPECT_NEAR(event.Values[1], level, 1e-9);
  }

  bool IsHighlighted()
  {
    return this->Widget->PlaneOutlineActor->GetProperty() ==
      this->Widget->GetSelectedPlaneProperty();
  }

  using Names = std::vector<std::string>;
  zvtest::EventRecorder Events;
};
}

// ---- presses ----

TEST_F(ImagePlaneInteraction, APlainPressInTheMiddlePushes)
{
  this->Widget->SetLeftButtonAction(2);
  this->Mouse.Press(zvtest::Left, this->Middle());
  EXPECT_EQ(this->Widget->GetState(), Widget::Pushing);
  EXPECT_EQ(this->Widget->GetLeftButtonAction(), Widget::SliceMotionAction);
  EXPECT_EQ(this->Widget->MarginSelectMode, 8);
  EXPECT_EQ(this->Events.Names(), (Names{ "StartInteractionEvent" }));
  EXPECT_FALSE(this->Events.Events()[0].HasData);
  EXPECT_TRUE(this->IsHighlighted());
  EXPECT_EQ(this->Widget->MarginActor->GetVisibility(), 1);
  EXPECT_NEAR(this->Widget->LastPickPosition[0], 5.0, 0.1);
  EXPECT_NEAR(this->Widget->LastPickPosition[1], 5.0, 0.1);
  EXPECT_NEAR(this->Widget->LastPickPosition[2], 10.0, 1e-3);
  this->Mouse.Release(zvtest::Left);
  EXPECT_EQ(this->Widget->GetState(), Widget::Start);
  EXPECT_EQ(this->TakeEvents(), (Names{ "StartInteractionEvent", "EndInteractionEvent" }));
  EXPECT_FALSE(this->IsHighlighted());
  EXPECT_EQ(this->Widget->MarginActor->GetVisibility(), 0);
}

TEST_F(ImagePlaneInteraction, EachRegionPressedHasItsState)
{
  struct Row
  {
    double X, Y;
    int Mode, State;
  };
  const Row rows[] = { { 0.5, 0.5, 0, Widget::Spinning }, { 9.5, 0.5, 1, Widget::Spinning },
    { 9.5, 9.5, 2, Widget::Spinning }, { 0.5, 9.5, 3, Widget::Spinning },
    { 0.5, 5, 4, Widget::Rotating }, { 9.5, 5, 5, Widget::Rotating },
    { 5, 0.5, 6, Widget::Rotating }, { 5, 9.5, 7, Widget::Rotating },
    { 2, 8, 8, Widget::Pushing } };
  for (const Row& row : rows)
  {
    SCOPED_TRACE(row.Mode);
    this->Mouse.Press(zvtest::Left, this->On(row.X, row.Y));
    EXPECT_EQ(this->Widget->MarginSelectMode, row.Mode);
    EXPECT_EQ(this->Widget->GetState(), row.State);
    this->Mouse.Release(zvtest::Left);
    EXPECT_EQ(this->Widget->GetState(), Widget::Start);
  }
}

TEST_F(ImagePlaneInteraction, ADragOfTheMarginTellsAndMovesNothing)
{
  this->LookAtAnAngle();
  for (const zvtest::Display& place : { this->On(0.5, 5), this->On(0.5, 0.5) })
  {
    this->Mouse.Press(zvtest::Left, place);
    this->Mouse.MoveTo(this->Lifted(place, -3.0));
    EXPECT_TRUE(this->PlaneIs({ { 0, 0, 10 } }, { { 10, 0, 10 } }, { { 0, 10, 10 } }));
    this->Mouse.Release(zvtest::Left);
    EXPECT_EQ(this->TakeEvents(),
      (Names{ "StartInteractionEvent", "InteractionEvent", "EndInteractionEvent" }));
  }
}

TEST_F(ImagePlaneInteraction, APressWithAModifierReadsTheImage)
{
  for (int modifier :
    std::vector<int>{ zvtest::Shift, zvtest::Control, zvtest::Shift | zvtest::Control })
  {
    SCOPED_TRACE(modifier);
    this->Mouse.Press(zvtest::Left, this->On(2.1, 3.9), modifier);
    EXPECT_EQ(this->Widget->GetState(), Widget::Cursoring);
    EXPECT_EQ(this->Widget->GetLeftButtonAction(), Widget::CursorAction);
    EXPECT_TRUE(this->IsHighlighted());
    EXPECT_EQ(this->Widget->CursorActor->GetVisibility(), 1);
    EXPECT_EQ(this->Widget->GetCursorDataStatus(), 1);
    double data[4] = { 0, 0, 0, 0 };
    EXPECT_EQ(this->Widget->GetCursorData(data), 1);
    EXPECT_TRUE(IsPoint(data, 2, 4, 10));
    EXPECT_EQ(data[3], 2 + 30 * 4 + 900 * 10);
    EXPECT_EQ(this->Widget->GetCurrentImageValue(), data[3]);
    this->Mouse.Release(zvtest::Left, modifier);
    EXPECT_EQ(this->Widget->GetState(), Widget::Start);
    EXPECT_EQ(this->Widget->CursorActor->GetVisibility(), 0);
    EXPECT_FALSE(this->IsHighlighted());
    EXPECT_EQ(this->TakeEvents(), (Names{ "StartInteractionEvent", "EndInteractionEvent" }));
  }
}

TEST_F(ImagePlaneInteraction, ARightPressStartsWindowAndLevel)
{
  this->Widget->SetWindowLevel(100.0, 40.0);
  this->Mouse.Press(zvtest::Right, this->Middle());
  EXPECT_EQ(this->Widget->GetState(), Widget::WindowLevelling);
  EXPECT_TRUE(this->IsHighlighted());
  EXPECT_EQ(this->Widget->InitialWindow, 100.0);
  EXPECT_EQ(this->Widget->InitialLevel, 40.0);
  EXPECT_EQ(this->Widget->StartWindowLevelPositionX, this->Middle()[0]);
  EXPECT_EQ(this->Widget->StartWindowLevelPositionY, this->Middle()[1]);
  this->ExpectCallData(100.0, 40.0);
  this->Mouse.Release(zvtest::Right);
  this->ExpectCallData(100.0, 40.0);
  EXPECT_EQ(this->Widget->GetState(), Widget::Start);
  EXPECT_FALSE(this->IsHighlighted());
  EXPECT_EQ(this->TakeEvents(), (Names{ "StartWindowLevelEvent", "EndWindowLevelEvent" }));
}

TEST_F(ImagePlaneInteraction, AMiddlePressDoesNothing)
{
  this->Mouse.Press(zvtest::Middle, this->Middle());
  EXPECT_EQ(this->Widget->GetState(), Widget::Start);
  this->Mouse.MoveTo(this->On(6, 6));
  this->Mouse.Release(zvtest::Middle);
  EXPECT_TRUE(this->TakeEvents().empty());
}

TEST_F(ImagePlaneInteraction, TheMiddleHandlersRunTheirActionForACaller)
{
  this->Mouse.MoveTo(this->Middle());
  this->Widget->OnMiddleButtonDown();
  EXPECT_EQ(this->Widget->GetState(), Widget::Pushing);
  this->Widget->OnMiddleButtonUp();
  EXPECT_EQ(this->Widget->GetState(), Widget::Start);
  this->Widget->SetMiddleButtonAction(0);
  this->Widget->OnMiddleButtonDown();
  EXPECT_EQ(this->Widget->GetState(), Widget::Cursoring);
  this->Widget->OnMiddleButtonUp();
  this->Widget->SetMiddleButtonAction(2);
  this->Widget->OnMiddleButtonDown();
  EXPECT_EQ(this->Widget->GetState(), Widget::WindowLevelling);
  this->Widget->OnMiddleButtonUp();
  EXPECT_EQ(this->TakeEvents(),
    (Names{ "StartInteractionEvent", "EndInteractionEvent", "StartInteractionEvent",
      "EndInteractionEvent", "StartWindowLevelEvent", "EndWindowLevelEvent" }));
  EXPECT_EQ(this->Widget->GetLeftButtonAction(), Widget::CursorAction) << "as it was";
}

TEST_F(ImagePlaneInteraction, APressBesideThePlaneIsOutside)
{
  struct Row
  {
    zvtest::Button Button;
    int Modifiers, RightAction;
  };
  const Row rows[] = { { zvtest::Left, 0, 2 }, { zvtest::Left, zvtest::Shift, 2 },
    { zvtest::Right, 0, 2 }, { zvtest::Right, 0, 0 }, { zvtest::Right, 0, 1 } };
  for (const Row& row : rows)
  {
    for (const zvtest::Display& place : { this->Beside(), this->OutOfView() })
    {
      SCOPED_TRACE(::testing::Message() << row.Button << " at " << place[0]);
      this->Widget->SetRightButtonAction(row.RightAction);
      this->Widget->State = Widget::Start;
      this->Mouse.Press(row.Button, place, row.Modifiers);
      EXPECT_EQ(this->Widget->GetState(), Widget::Outside);
      this->Mouse.MoveTo(this->Middle(), row.Modifiers);
      EXPECT_EQ(this->Widget->GetState(), Widget::Outside);
      this->Mouse.Release(row.Button, row.Modifiers);
      EXPECT_EQ(this->Widget->GetState(), Widget::Outside) << "until the next press";
      EXPECT_TRUE(this->TakeEvents().empty());
    }
  }
  this->Mouse.Press(zvtest::Left, this->Middle());
  EXPECT_EQ(this->Widget->GetState(), Widget::Pushing);
}

TEST_F(ImagePlaneInteraction, AMissBesideThePlaneHidesWhatWasActive)
{
  OpenImagePlane* w = this->Widget.get();
  w->DisplayTextOn();
  const auto raise = [w]
  {
    w->CursorActor->VisibilityOn();
    w->MarginActor->VisibilityOn();
    w->TextActor->VisibilityOn();
    w->HighlightPlane(1);
  };
  raise();
  this->Mouse.Press(zvtest::Left, this->Beside(), zvtest::Shift);
  EXPECT_EQ(w->CursorActor->GetVisibility(), 0);
  EXPECT_EQ(w->TextActor->GetVisibility(), 0);
  EXPECT_EQ(w->MarginActor->GetVisibility(), 1);
  EXPECT_FALSE(this->IsHighlighted());
  raise();
  this->Mouse.Press(zvtest::Left, this->Beside());
  EXPECT_EQ(w->CursorActor->GetVisibility(), 1);
  EXPECT_EQ(w->TextActor->GetVisibility(), 1);
  EXPECT_EQ(w->MarginActor->GetVisibility(), 0);
  EXPECT_FALSE(this->IsHighlighted());
  raise();
  this->Mouse.Press(zvtest::Right, this->Beside());
  EXPECT_EQ(w->CursorActor->GetVisibility(), 1);
  EXPECT_EQ(w->TextActor->GetVisibility(), 0);
  EXPECT_EQ(w->MarginActor->GetVisibility(), 1);
  EXPECT_FALSE(this->IsHighlighted());
  raise();
  this->Mouse.Press(zvtest::Right, this->OutOfView());
  EXPECT_EQ(w->TextActor->GetVisibility(), 1) << "off the view nothing is touched";
  EXPECT_TRUE(this->IsHighlighted());
}

TEST_F(ImagePlaneInteraction, AMissTakesTheInitialWindowOnlyInTheView)
{
  this->Widget->SetWindowLevel(100.0, 40.0);
  this->Mouse.Press(zvtest::Right, this->Beside());
  EXPECT_EQ(this->Widget->InitialWindow, 100.0);
  EXPECT_EQ(this->Widget->InitialLevel, 40.0);
  this->Widget->SetWindowLevel(7.0, 8.0);
  this->Mouse.Press(zvtest::Right, this->OutOfView());
  EXPECT_EQ(this->Widget->InitialWindow, 100.0);
}

TEST_F(ImagePlaneInteraction, APropInFrontDoesNotHideThePlane)
{
  vtkNew<vtkCubeSource> cube;
  cube->SetBounds(4, 6, 4, 6, 11, 12);
  vtkNew<vtkPolyDataMapper> mapper;
  mapper->SetInputConnection(cube->GetOutputPort());
  vtkNew<vtkActor> actor;
  actor->SetMapper(mapper);
  this->Scene.Renderer()->AddActor(actor);
  this->Mouse.Press(zvtest::Left, this->Middle());
  EXPECT_EQ(this->Widget->GetState(), Widget::Pushing);
}

TEST_F(ImagePlaneInteraction, ShiftOnTheRightChangesTheLeftActionByDesign)
{
  this->Mouse.Press(zvtest::Right, this->Middle(), zvtest::Shift);
  EXPECT_EQ(this->Widget->GetLeftButtonAction(), Widget::WindowLevelAction);
  EXPECT_EQ(this->Widget->GetRightButtonAction(), Widget::WindowLevelAction);
  EXPECT_EQ(this->Widget->GetState(), Widget::WindowLevelling);
  this->Mouse.Release(zvtest::Right);
  this->Mouse.Press(zvtest::Left, this->Middle());
  EXPECT_EQ(this->Widget->GetLeftButtonAction(), Widget::SliceMotionAction);
  this->Mouse.Release(zvtest::Left);
  this->Mouse.Press(zvtest::Right, this->Middle(), zvtest::Control);
  EXPECT_EQ(this->Widget->GetLeftButtonAction(), Widget::SliceMotionAction);
}

TEST_F(ImagePlaneInteraction, TheRightButtonRunsItsAction)
{
  this->Widget->SetRightButtonAction(1);
  this->Mouse.Press(zvtest::Right, this->Middle(), zvtest::Control);
  EXPECT_EQ(this->Widget->GetState(), Widget::Moving);
  this->Mouse.Release(zvtest::Right);
  this->Mouse.Press(zvtest::Right, this->Middle(), zvtest::Shift);
  EXPECT_EQ(this->Widget->GetState(), Widget::Scaling);
  this->Mouse.Release(zvtest::Right);
  this->Widget->SetRightButtonAutoModifier(2);
  this->Mouse.Press(zvtest::Right, this->Middle());
  EXPECT_EQ(this->Widget->GetState(), Widget::Moving);
  this->Mouse.Release(zvtest::Right);
  this->Widget->SetRightButtonAction(0);
  this->Mouse.Press(zvtest::Right, this->Middle());
  EXPECT_EQ(this->Widget->GetState(), Widget::Cursoring);
}

TEST_F(ImagePlaneInteraction, TheLeftAutoModifierScalesOrMovesAndStaysInert)
{
  this->LookAtAnAngle();
  const zvtest::Display middle = this->Middle();
  this->Widget->SetLeftButtonAutoModifier(1);
  this->Mouse.Press(zvtest::Left, middle);
  EXPECT_EQ(this->Widget->GetState(), Widget::Scaling);
  this->Mouse.MoveTo(this->Lifted(middle, -3));
  this->Mouse.Release(zvtest::Left);
  this->Widget->SetLeftButtonAutoModifier(2);
  this->Mouse.Press(zvtest::Left, middle);
  EXPECT_EQ(this->Widget->GetState(), Widget::Moving);
  this->Mouse.MoveTo(this->Lifted(middle, -3));
  this->Mouse.Release(zvtest::Left);
  EXPECT_TRUE(this->PlaneIs({ { 0, 0, 10 } }, { { 10, 0, 10 } }, { { 0, 10, 10 } }));
  EXPECT_EQ(this->Events.Count(vtkCommand::InteractionEvent), 2);
}

TEST_F(ImagePlaneInteraction, AnyStopEndsAnyState)
{
  const int states[] = { Widget::Cursoring, Widget::WindowLevelling, Widget::Pushing,
    Widget::Spinning, Widget::Rotating, Widget::Moving, Widget::Scaling };
  for (int state : states)
  {
    SCOPED_TRACE(state);
    this->Widget->State = state;
    this->Widget->StopCursor();
    EXPECT_EQ(this->Widget->GetState(), Widget::Start);
    this->Widget->State = state;
    this->Widget->StopSliceMotion();
    EXPECT_EQ(this->Widget->GetState(), Widget::Start);
    this->Widget->State = state;
    this->Widget->StopWindowLevel();
    EXPECT_EQ(this->Widget->GetState(), Widget::Start);
    EXPECT_EQ(this->TakeEvents(),
      (Names{ "EndInteractionEvent", "EndInteractionEvent", "EndWindowLevelEvent" }));
  }
  for (int state : { Widget::Start, Widget::Outside })
  {
    this->Widget->State = state;
    this->Widget->StopCursor();
    this->Widget->StopSliceMotion();
    this->Widget->StopWindowLevel();
    EXPECT_EQ(this->Widget->GetState(), state);
  }
  EXPECT_TRUE(this->TakeEvents().empty());
}

TEST_F(ImagePlaneInteraction, StopsHideOnlyTheirOwnHelpers)
{
  OpenImagePlane* w = this->Widget.get();
  w->DisplayTextOn();
  using Stop = void (OpenImagePlane::*)();
  struct Row
  {
    const char* Name;
    Stop Run;
    int Cursor, Margins, Text;
  };
  const Row rows[] = { { "cursor", &OpenImagePlane::StopCursor, 0, 1, 0 },
    { "motion", &OpenImagePlane::StopSliceMotion, 1, 0, 1 },
    { "window", &OpenImagePlane::StopWindowLevel, 1, 1, 0 } };
  for (const Row& row : rows)
  {
    SCOPED_TRACE(row.Name);
    w->State = Widget::Pushing;
    w->CursorActor->VisibilityOn();
    w->MarginActor->VisibilityOn();
    w->TextActor->VisibilityOn();
    (w->*row.Run)();
    EXPECT_EQ(w->CursorActor->GetVisibility(), row.Cursor);
    EXPECT_EQ(w->MarginActor->GetVisibility(), row.Margins);
    EXPECT_EQ(w->TextActor->GetVisibility(), row.Text);
  }
}

// ---- what others are told ----

TEST_F(ImagePlaneInteraction, AnEventThatIsUsedGoesNoFurther)
{
  zvtest::EventRecorder others;
  others.Watch(this->Scene.Interactor(),
    { vtkCommand::LeftButtonPressEvent, vtkCommand::LeftButtonReleaseEvent,
      vtkCommand::RightButtonPressEvent, vtkCommand::RightButtonReleaseEvent,
      vtkCommand::MouseMoveEvent },
    -1.0f);
  this->Mouse.MoveTo(this->Middle());
  EXPECT_EQ(others.Count(vtkCommand::MouseMoveEvent), 1) << "nothing is held";
  others.Clear();
  this->Mouse.Drag(zvtest::Left, this->Middle(), this->On(6, 6));
  this->Mouse.Drag(zvtest::Left, this->Middle(), this->On(6, 6), zvtest::Shift);
  this->Mouse.Drag(zvtest::Right, this->Middle(), this->On(6, 6));
  EXPECT_TRUE(others.Names().empty());
  this->Mouse.Drag(zvtest::Left, this->Beside(), this->On(6, 6));
  this->Mouse.Drag(zvtest::Right, this->Beside(), this->On(6, 6));
  EXPECT_EQ(others.Names(),
    (Names{ "LeftButtonPressEvent", "MouseMoveEvent", "LeftButtonReleaseEvent",
      "RightButtonPressEvent", "MouseMoveEvent", "RightButtonReleaseEvent" }));
}

TEST_F(ImagePlaneInteraction, EachStepRendersOnceAfterItsEvent)
{
  this->Events.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  this->Mouse.Press(zvtest::Left, this->Middle());
  EXPECT_EQ(this->TakeEvents(), (Names{ "StartInteractionEvent", "RenderEvent" }));
  this->Mouse.MoveTo(this->On(6, 6));
  EXPECT_EQ(this->TakeEvents(), (Names{ "InteractionEvent", "RenderEvent" }));
  this->Mouse.Release(zvtest::Left);
  EXPECT_EQ(this->TakeEvents(), (Names{ "EndInteractionEvent", "RenderEvent" }));
  this->Mouse.Press(zvtest::Left, this->Middle(), zvtest::Shift);
  EXPECT_EQ(this->TakeEvents(), (Names{ "StartInteractionEvent", "RenderEvent" }));
  this->Mouse.MoveTo(this->On(6, 6), zvtest::Shift);
  EXPECT_EQ(this->TakeEvents(), (Names{ "InteractionEvent", "RenderEvent" }));
  this->Mouse.Release(zvtest::Left);
  EXPECT_EQ(this->TakeEvents(), (Names{ "EndInteractionEvent", "RenderEvent" }));
  this->Mouse.Press(zvtest::Right, this->Middle());
  EXPECT_EQ(this->TakeEvents(), (Names{ "StartWindowLevelEvent", "RenderEvent" }));
  this->Mouse.MoveTo(this->On(6, 6));
  EXPECT_EQ(this->TakeEvents(), (Names{ "WindowLevelEvent", "RenderEvent" }));
  this->Mouse.Release(zvtest::Right);
  EXPECT_EQ(this->TakeEvents(), (Names{ "EndWindowLevelEvent", "RenderEvent" }));
  this->Mouse.Drag(zvtest::Left, this->Beside(), this->Middle());
  EXPECT_TRUE(this->TakeEvents().empty());
}

TEST_F(ImagePlaneInteraction, ADragAsksForQuickPictures)
{
  vtkRenderWindowInteractor* interactor = this->Scene.Interactor();
  this->Mouse.Press(zvtest::Left, this->Middle());
  EXPECT_EQ(this->Scene.Window()->GetDesiredUpdateRate(), interactor->GetDesiredUpdateRate());
  this->Mouse.Release(zvtest::Left);
  EXPECT_EQ(this->Scene.Window()->GetDesiredUpdateRate(), interactor->GetStillUpdateRate());
}

TEST_F(ImagePlaneInteraction, TheObserverSeesTheStateOfItsEvent)
{
  std::vector<int> states;
  zvtest::EventRecorder watcher;
  watcher.Watch(this->Widget.get(),
    { vtkCommand::StartInteractionEvent, vtkCommand::InteractionEvent,
      vtkCommand::EndInteractionEvent },
    [&](const zvtest::RecordedEvent&) { states.push_back(this->Widget->GetState()); });
  this->Mouse.Drag(zvtest::Left, this->On(5, 0.5), this->On(6, 6));
  EXPECT_EQ(states, (std::vector<int>{ Widget::Rotating, Widget::Rotating, Widget::Start }));
}

TEST_F(ImagePlaneInteraction, TheButtonIsForgottenWithEveryEvent)
{
  this->Mouse.Press(zvtest::Left, this->Middle());
  EXPECT_EQ(this->Widget->LastButtonPressed, 1);
  this->Mouse.MoveTo(this->On(6, 6));
  EXPECT_EQ(this->Widget->LastButtonPressed, 0);
  this->Mouse.Release(zvtest::Left);
  EXPECT_EQ(this->Widget->LastButtonPressed, 1);
  this->Mouse.Press(zvtest::Right, this->Middle());
  EXPECT_EQ(this->Widget->LastButtonPressed, 3);
  this->Mouse.MoveTo(this->On(6, 6));
  this->Mouse.Release(zvtest::Right);
  EXPECT_EQ(this->Widget->LastButtonPressed, 3);
  this->Mouse.Type('x');
  EXPECT_EQ(this->Widget->LastButtonPressed, 0);
  this->Widget->LastButtonPressed = 2;
  OpenImagePlane::ProcessEvents(nullptr, vtkCommand::TimerEvent, this->Widget.get(), nullptr);
  EXPECT_EQ(this->Widget->LastButtonPressed, 0) << "by an event that it does not know, too";
  EXPECT_EQ(this->Widget->GetState(), Widget::Start);
}

// ---- drags through the image ----

TEST_F(ImagePlaneInteraction, ADragMovesTheSliceAndThePictureAtOnce)
{
  zvtest::VolumeOptions options = this->Cube(11);
  options.ScalarType = VTK_UNSIGNED_CHAR;
  this->Volume = zvtest::MakeVolume(options, [](int, int, int k, int) { return 20.0 * k; });
  this->Widget->SetInput(this->Volume);
  this->Widget->SetPlaneOrientation(2);
  this->Widget->SetWindowLevel(255.0, 127.5);
  this->LookAtAnAngle();
  EXPECT_TRUE(ShowsEntry(this->Scene.ColorAt({ { 5, 5, 10 } }), 200));
  const zvtest::Display middle = this->Middle();
  this->Mouse.Press(zvtest::Left, middle);
  EXPECT_EQ(this->Widget->GetSliceIndex(), 10);
  this->Mouse.MoveTo(this->Lifted(middle, -3.5)); // four slices
  EXPECT_EQ(this->Widget->GetSliceIndex(), 6);
  EXPECT_EQ(this->Widget->PlaneOutlinePolyData->GetPoint(0)[2], 6.0);
  EXPECT_EQ(this->Widget->MarginPolyData->GetPoint(0)[2], 6.0);
  EXPECT_TRUE(ShowsEntry(this->Scene.ColorAt({ { 5, 5, 6 } }), 120));
  EXPECT_TRUE(this->Scene.Look().HasNear({ 255, 255, 255 }, this->Scene.At({ { 5, 0, 6 } }), 3))
    << "the outline came along";
  EXPECT_FALSE(this->Scene.Look().HasNear({ 255, 255, 255 }, this->Scene.At({ { 5, 10, 10 } }), 3));
  this->Mouse.MoveTo(this->Lifted(middle, -1.0)); // back by 2.5: three slices
  EXPECT_EQ(this->Widget->GetSliceIndex(), 9);
  EXPECT_TRUE(ShowsEntry(this->Scene.ColorAt({ { 5, 5, 9 } }), 180));
  this->Mouse.Release(zvtest::Left);
  EXPECT_EQ(this->Widget->GetSliceIndex(), 9);
  EXPECT_EQ(this->TakeEvents(),
    (Names{
      "StartInteractionEvent", "InteractionEvent", "InteractionEvent", "EndInteractionEvent" }));
}

TEST_F(ImagePlaneInteraction, DragPastTheLastSliceStaysThere)
{
  this->LookAtAnAngle();
  const zvtest::Display middle = this->Middle();
  this->Mouse.Press(zvtest::Left, middle);
  this->Mouse.MoveTo(this->Lifted(middle, 3.0));
  EXPECT_EQ(this->Widget->GetSliceIndex(), 10);
  EXPECT_EQ(this->Widget->PlaneSource->GetOrigin()[2], 10.0);
  EXPECT_EQ(this->Events.Count(vtkCommand::InteractionEvent), 1) << "it is told all the same";
}

TEST_F(ImagePlaneInteraction, DragPastTheFirstSliceStopsThere)
{
  this->LookAtAnAngle();
  const zvtest::Display middle = this->Middle();
  this->Mouse.Press(zvtest::Left, middle);
  this->Mouse.MoveTo(this->Lifted(middle, -25.0));
  EXPECT_EQ(this->Widget->GetSliceIndex(), 0);
  EXPECT_EQ(this->Widget->PlaneSource->GetOrigin()[2], 0.0);
}

TEST_F(ImagePlaneInteraction, ADragAlongThePlaneMovesNothing)
{
  this->Mouse.Drag(zvtest::Left, this->Middle(), this->On(8, 2));
  EXPECT_EQ(this->Widget->GetSliceIndex(), 10);
  EXPECT_EQ(this->Events.Count(vtkCommand::InteractionEvent), 1);
}

TEST_F(ImagePlaneInteraction, ADragInPerspectiveFollowsTheDepthOfThePick)
{
  zvtest::SceneOptions perspective;
  perspective.ParallelProjection = false;
  zvtest::Scene scene(perspective);
  zvtest::Mouse mouse(scene);
  this->Widget->SetInteractor(scene.Interactor());
  this->Widget->SetEnabled(1);
  scene.LookAlong({ { 0, 1, -1 } }, { { 0, 0, 1 } });
  scene.Render();
  const zvtest::Display middle = mouse.At({ { 5, 5, 10 } });
  mouse.Press(zvtest::Left, middle);
  ASSERT_EQ(this->Widget->GetState(), Widget::Pushing);
  mouse.MoveTo(mouse.At({ { 5, 1.5, 6.5 } })); // 3.5 down across the view: four slices
  EXPECT_EQ(this->Widget->GetSliceIndex(), 6);
  this->Widget.reset();
}

TEST_F(ImagePlaneInteraction, MovesWithoutAPressDoNothing)
{
  this->LookAtAnAngle();
  this->Mouse.MoveTo(this->Middle());
  this->Mouse.MoveTo(this->Lifted(this->Middle(), -4.0));
  EXPECT_EQ(this->Widget->GetSliceIndex(), 10);
  EXPECT_TRUE(this->TakeEvents().empty());
}

// ---- reading values ----

TEST_F(ImagePlaneInteraction, TheCursorFollowsTheMouseFromVoxelToVoxel)
{
  this->Mouse.Press(zvtest::Left, this->On(2.1, 3.9), zvtest::Shift);
  vtkPolyData* cursor = this->Widget->CursorPolyData;
  EXPECT_TRUE(IsPoint(cursor->GetPoint(0), 0, 4, 10));
  EXPECT_TRUE(IsPoint(cursor->GetPoint(1), 10, 4, 10));
  EXPECT_TRUE(IsPoint(cursor->GetPoint(2), 2, 0, 10));
  EXPECT_TRUE(IsPoint(cursor->GetPoint(3), 2, 10, 10));
  const vtkMTimeType before = cursor->GetMTime();
  this->Mouse.MoveTo(this->On(6.8, 1.2), zvtest::Shift);
  EXPECT_TRUE(IsPoint(cursor->GetPoint(0), 0, 1, 10));
  EXPECT_TRUE(IsPoint(cursor->GetPoint(2), 7, 0, 10));
  EXPECT_GT(cursor->GetMTime(), before);
  EXPECT_TRUE(IsPoint(this->Widget->GetCurrentCursorPosition(), 7, 1, 10));
  EXPECT_EQ(this->Widget->GetCurrentImageValue(), 7 + 30 * 1 + 900 * 10);
  EXPECT_EQ(this->Widget->GetState(), Widget::Cursoring);
  EXPECT_EQ(this->TakeEvents(), (Names{ "StartInteractionEvent", "InteractionEvent" }));
}

TEST_F(ImagePlaneInteraction, TheContinuousCursorReadsBetweenTheVoxels)
{
  zvtest::VolumeOptions options = this->Cube(11);
  options.ScalarType = VTK_DOUBLE;
  this->Place(options, 2);
  this->Widget->UseContinuousCursorOn();
  const zvtest::Display place = this->On(2.4, 3.3);
  const zvtest::World at = this->Scene.WorldAt(place, { { 0, 0, 10 } });
  this->Mouse.Press(zvtest::Left, place, zvtest::Shift);
  EXPECT_TRUE(IsPoint(this->Widget->GetCurrentCursorPosition(), at[0], at[1], 10, 1e-3));
  EXPECT_NEAR(this->Widget->GetCurrentImageValue(), at[0] + 100 * at[1] + 100000, 0.5);
  EXPECT_TRUE(IsPoint(this->Widget->CursorPolyData->GetPoint(0), 0, at[1], 10, 1e-3));
}

TEST_F(ImagePlaneInteraction, OffTheImageTheCursorHasNoValue)
{
  this->Mouse.Press(zvtest::Left, this->Middle(), zvtest::Shift);
  this->Mouse.MoveTo(this->Beside(), zvtest::Shift);
  EXPECT_EQ(this->Widget->GetState(), Widget::Cursoring);
  EXPECT_EQ(this->Widget->GetCurrentImageValue(), 1e299);
  EXPECT_EQ(this->Widget->CursorActor->GetVisibility(), 1);
  double data[4] = { -1, -1, -1, -1 };
  EXPECT_EQ(this->Widget->GetCursorData(data), 0);
  EXPECT_EQ(data[3], -1.0);
  EXPECT_EQ(this->Widget->GetCursorDataStatus(), 0);
  this->Mouse.MoveTo(this->Middle(), zvtest::Shift);
  EXPECT_EQ(this->Widget->GetCursorDataStatus(), 1);
}

TEST_F(ImagePlaneInteraction, CursorDataIsGivenWhileReadingOnly)
{
  double data[4] = { -1, -1, -1, -1 };
  this->Widget->CurrentImageValue = 5.0;
  for (int state = Widget::Start; state <= Widget::Outside; ++state)
  {
    this->Widget->State = state;
    EXPECT_EQ(this->Widget->GetCursorData(data), state == Widget::Cursoring ? 1 : 0);
    EXPECT_EQ(this->Widget->GetCursorDataStatus(), state == Widget::Cursoring ? 1 : 0);
  }
  EXPECT_EQ(data[3], 5.0);
}

TEST_F(ImagePlaneInteraction, TheDiscreteCursorTakesTheNearestVoxel)
{
  this->Place(zvtest::NegativeSpacingVolume({ 1 }), 2); // y from 4.5 down to -1.75
  double q[3] = { -1.3, 2.1, 13.9 };
  EXPECT_EQ(this->Widget->UpdateDiscreteCursor(q), 1);
  EXPECT_TRUE(IsPoint(this->Widget->GetCurrentCursorPosition(), 1, 2, 1));
  EXPECT_TRUE(IsPoint(q, -1.5, 2, 13));
  EXPECT_EQ(this->Widget->GetCurrentImageValue(), 10201.0);
  double outside[3] = { 40, 2, 13 };
  EXPECT_EQ(this->Widget->UpdateDiscreteCursor(outside), 0);
  EXPECT_TRUE(IsPoint(outside, 40, 2, 13));
  EXPECT_EQ(this->Widget->GetCurrentImageValue(), 10201.0);
}

TEST_F(ImagePlaneInteraction, TheDiscreteCursorTellsAbsoluteIndices)
{
  this->Place(zvtest::ShiftedExtentVolume(), 2); // from 3, -2, 11 at (-0.5, 2, 43)
  double q[3] = { 0.1, 3.1, 46.2 };
  EXPECT_EQ(this->Widget->UpdateDiscreteCursor(q), 1);
  EXPECT_TRUE(IsPoint(this->Widget->GetCurrentCursorPosition(), 4, -1, 12));
  EXPECT_EQ(this->Widget->GetCurrentImageValue(), 10101.0);
}

TEST_F(ImagePlaneInteraction, TheContinuousCursorKeepsItsPointAndInterpolates)
{
  zvtest::VolumeOptions options = this->Cube(11);
  options.ScalarType = VTK_DOUBLE;
  this->Place(options, 2);
  double q[3] = { 2.5, 3.25, 9.5 };
  EXPECT_EQ(this->Widget->UpdateContinuousCursor(q), 1);
  EXPECT_TRUE(IsPoint(this->Widget->GetCurrentCursorPosition(), 2.5, 3.25, 9.5));
  EXPECT_NEAR(this->Widget->GetCurrentImageValue(), 2.5 + 325 + 95000, 1e-6);
  double outside[3] = { -7, 3, 5 };
  EXPECT_EQ(this->Widget->UpdateContinuousCursor(outside), 0);
  EXPECT_TRUE(IsPoint(this->Widget->GetCurrentCursorPosition(), -7, 3, 5));
  EXPECT_NEAR(this->Widget->GetCurrentImageValue(), 2.5 + 325 + 95000, 1e-6);
}

TEST_F(ImagePlaneInteraction, BothCursorsReadASingleSlice)
{
  this->Place(zvtest::OneVoxelThickVolume(2), 2);
  double q[3] = { -1.5, 7.0, 10.0 };
  EXPECT_EQ(this->Widget->UpdateDiscreteCursor(q), 1);
  EXPECT_EQ(this->Widget->GetCurrentImageValue(), 201.0);
  EXPECT_EQ(this->Widget->UpdateContinuousCursor(q), 1);
  EXPECT_EQ(this->Widget->GetCurrentImageValue(), 201.0);
}

// ---- window and level ----

TEST_F(ImagePlaneInteraction, ADragAcrossTheViewChangesTheWindowFourfold)
{
  this->Widget->SetWindowLevel(100.0, 40.0);
  const zvtest::Display middle = this->Middle();
  this->Mouse.Press(zvtest::Right, middle);
  this->Mouse.MoveTo({ { middle[0] + 50, middle[1] } });
  this->ExpectCallData(150.0, 40.0); // 4 * 50 / 400 of 100 more
  this->Mouse.MoveTo({ { middle[0] + 50, middle[1] + 25 } });
  this->ExpectCallData(150.0, 50.0); // 4 * 25 / 400 of 40 more
  double values[2];
  this->Widget->GetWindowLevel(values);
  EXPECT_EQ(values[0], 150.0);
  EXPECT_EQ(values[1], 50.0);
  EXPECT_NEAR(this->Widget->LookupTable->GetTableRange()[0], -25.0, 1e-9);
  EXPECT_NEAR(this->Widget->LookupTable->GetTableRange()[1], 125.0, 1e-9);
  this->Mouse.Release(zvtest::Right);
  this->ExpectCallData(150.0, 50.0);
  EXPECT_EQ(this->TakeEvents(),
    (Names{
      "StartWindowLevelEvent", "WindowLevelEvent", "WindowLevelEvent", "EndWindowLevelEvent" }));
}

TEST_F(ImagePlaneInteraction, WindowAndLevelFollowTheDragRule)
{
  struct Row
  {
    const char* Name;
    double Window, Level;
    int X, Y; // how far the mouse went, of 400
    double NewWindow, NewLevel;
  };
  const Row rows[] = {
    { "right", 100, 40, 100, 0, 200, 40 },
    { "left past zero", 100, 40, -150, 0, -50, 40 },
    { "up", 100, 40, 0, 100, 100, 80 },
    { "down past zero", 100, 40, 0, -200, 100, -40 },
    // a negative window: -100 * 1, and turned: 100 more
    { "negative window", -100, 40, 50, 0, -50, 40 },
    { "negative level", 100, -40, 0, 50, 100, -20 },
    // what is near zero moves as if it were 0.01
    { "tiny window", 0.004, 40, 100, 0, 0.014, 40 },
    { "tiny negative window", -0.004, 40, -100, 0, -0.014, 40 },
    { "tiny level", 100, 0.002, 0, 100, 100, 0.012 },
    // and never comes nearer than 0.01
    { "small motion", 0.004, 40, 10, 0, 0.01, 40 },
    { "small negative motion", -0.004, 40, 10, 0, -0.01, 40 },
    { "small level", 100, 0.004, 0, 1, 100, 0.01 },
    { "small negative level", 100, -0.004, 0, 1, 100, -0.01 },
    { "to zero", 100, 40, -100, -100, 0.01, 0.01 },
  };
  OpenImagePlane* w = this->Widget.get();
  w->StartWindowLevelPositionX = 200;
  w->StartWindowLevelPositionY = 200;
  for (const Row& row : rows)
  {
    SCOPED_TRACE(row.Name);
    w->InitialWindow = row.Window;
    w->InitialLevel = row.Level;
    w->CurrentWindow = row.Window;
    const double first = w->LookupTable->GetTableValue(0)[0];
    w->WindowLevel(200 + row.X, 200 + row.Y);
    EXPECT_NEAR(w->CurrentWindow, row.NewWindow, 1e-9);
    EXPECT_NEAR(w->CurrentLevel, row.NewLevel, 1e-9);
    const double half = 0.5 * std::abs(row.NewWindow);
    EXPECT_NEAR(w->LookupTable->GetTableRange()[0], row.NewLevel - half, 1e-9);
    EXPECT_NEAR(w->LookupTable->GetTableRange()[1], row.NewLevel + half, 1e-9);
    const bool inverted = w->LookupTable->GetTableValue(0)[0] != first;
    EXPECT_EQ(inverted, row.Window * row.NewWindow < 0.0);
  }
}

TEST_F(ImagePlaneInteraction, AUserControlledTableIsLeftAloneByDrags)
{
  this->Widget->UserControlledLookupTableOn();
  this->Widget->SetWindowLevel(100.0, 40.0);
  const double low = this->Widget->LookupTable->GetTableRange()[0];
  const double high = this->Widget->LookupTable->GetTableRange()[1];
  const double first = this->Widget->LookupTable->GetTableValue(0)[0];
  const zvtest::Display middle = this->Middle();
  this->Mouse.Drag(zvtest::Right, middle, { { middle[0] - 150, middle[1] } });
  double values[2];
  this->Widget->GetWindowLevel(values);
  EXPECT_EQ(values[0], -50.0);
  EXPECT_EQ(this->Widget->LookupTable->GetTableRange()[0], low);
  EXPECT_EQ(this->Widget->LookupTable->GetTableRange()[1], high);
  EXPECT_EQ(this->Widget->LookupTable->GetTableValue(0)[0], first);
}

TEST_F(ImagePlaneInteraction, AWindowDragShowsAtOnce)
{
  zvtest::VolumeOptions options = this->Cube(11);
  options.ScalarType = VTK_UNSIGNED_CHAR;
  this->Widget->SetInput(zvtest::MakeConstantVolume(100.0, options));
  this->Widget->SetPlaneOrientation(2);
  this->Widget->SetWindowLevel(200.0, 100.0);
  EXPECT_TRUE(ShowsEntry(this->Scene.ColorAt({ { 5, 5, 10 } }), 128));
  const zvtest::Display middle = this->Middle();
  this->Mouse.Press(zvtest::Right, middle);
  this->Mouse.MoveTo({ { middle[0], middle[1] + 25 } }); // level 125: 100 is a quarter down
  EXPECT_TRUE(ShowsEntry(this->Scene.ColorAt({ { 5, 5, 10 } }), 96));
}

// ---- keys ----

TEST_F(ImagePlaneInteraction, ResetKeysBringTheOriginalWindowBack)
{
  const double window = this->Widget->OriginalWindow, level = this->Widget->OriginalLevel;
  for (char key : { 'r', 'R' })
  {
    for (int modifier : { zvtest::Shift, zvtest::Control })
    {
      SCOPED_TRACE(::testing::Message() << key << modifier);
      this->Widget->SetWindowLevel(-7.0, 3.0);
      this->Mouse.Type(key, modifier);
      double values[2];
      this->Widget->GetWindowLevel(values);
      EXPECT_EQ(values[0], window);
      EXPECT_EQ(values[1], level);
      this->ExpectCallData(window, level);
      // The key reaches the widget as a key and as an event.
      EXPECT_EQ(this->TakeEvents(), (Names{ "ResetWindowLevelEvent", "ResetWindowLevelEvent" }));
    }
  }
}

TEST_F(ImagePlaneInteraction, AResetByTheHandlerIsToldOnce)
{
  this->Widget->SetWindowLevel(7.0, 3.0);
  this->Scene.Interactor()->SetEventInformation(10, 10, 0, 1, 'r');
  this->Widget->OnChar();
  this->ExpectCallData(this->Widget->OriginalWindow, this->Widget->OriginalLevel);
  EXPECT_EQ(this->TakeEvents(), (Names{ "ResetWindowLevelEvent" }));
}

TEST_F(ImagePlaneInteraction, OtherKeysReachTheInteractorStyle)
{
  vtkNew<CountingStyle> style;
  this->Scene.Interactor()->SetInteractorStyle(style);
  this->Widget->SetWindowLevel(7.0, 3.0);
  const auto handledBy = [&](char key, int control, int shift)
  {
    this->Scene.Interactor()->SetEventInformation(10, 10, control, shift, key);
    style->Characters = 0;
    this->Widget->OnChar();
    return style->Characters;
  };
  EXPECT_EQ(handledBy('r', 0, 0), 1);
  EXPECT_EQ(handledBy('R', 0, 0), 1);
  EXPECT_EQ(handledBy('i', 0, 0), 1);
  EXPECT_EQ(handledBy('x', 1, 1), 1);
  EXPECT_TRUE(this->TakeEvents().empty());
  EXPECT_EQ(this->Widget->GetEnabled(), 1);
  EXPECT_EQ(handledBy('r', 0, 1), 0);
  EXPECT_EQ(handledBy('R', 1, 0), 0);
  style->Characters = 0;
  this->Mouse.Type('r');
  EXPECT_GE(style->Characters, 2) << "its own event, and what the widget hands on";
  style->Characters = 0;
  this->Mouse.Type('r', zvtest::Shift);
  EXPECT_EQ(style->Characters, 0) << "the reset keeps the event";
}

TEST_F(ImagePlaneInteraction, AKeyWithoutAStyleIsHarmless)
{
  this->Scene.Interactor()->SetInteractorStyle(nullptr);
  this->Scene.Interactor()->SetEventInformation(10, 10, 0, 0, 'x');
  this->Widget->OnChar();
  EXPECT_EQ(this->Widget->GetEnabled(), 1);
}

// ---- text ----

TEST_F(ImagePlaneInteraction, TheTextTellsVoxelAndValue)
{
  this->Widget->DisplayTextOn();
  this->Mouse.Press(zvtest::Left, this->On(2.1, 3.9), zvtest::Shift);
  EXPECT_STREQ(this->Widget->TextActor->GetInput(), "( 2, 4, 10 ): 9122");
  EXPECT_STREQ(this->Widget->TextBuff, "( 2, 4, 10 ): 9122");
  EXPECT_EQ(this->Widget->TextActor->GetVisibility(), 1);
  this->Mouse.MoveTo(this->On(7.1, 0.9), zvtest::Shift);
  EXPECT_STREQ(this->Widget->TextActor->GetInput(), "( 7, 1, 10 ): 9037");
  this->Mouse.MoveTo(this->Beside(), zvtest::Shift);
  EXPECT_STREQ(this->Widget->TextActor->GetInput(), "Off Image");
  this->Mouse.Release(zvtest::Left);
  EXPECT_EQ(this->Widget->TextActor->GetVisibility(), 0);
}

TEST_F(ImagePlaneInteraction, TheTextTellsWindowAndLevel)
{
  this->Widget->DisplayTextOn();
  this->Widget->SetWindowLevel(100.0, 40.0);
  const zvtest::Display middle = this->Middle();
  this->Mouse.Press(zvtest::Right, middle);
  EXPECT_STREQ(this->Widget->TextActor->GetInput(), "Window, Level: ( 100, 40 )");
  EXPECT_EQ(this->Widget->TextActor->GetVisibility(), 1);
  this->Mouse.MoveTo({ { middle[0] + 1, middle[1] } });
  EXPECT_STREQ(this->Widget->TextActor->GetInput(), "Window, Level: ( 101, 40 )");
  this->Mouse.Release(zvtest::Right);
  EXPECT_EQ(this->Widget->TextActor->GetVisibility(), 0);
}

TEST_F(ImagePlaneInteraction, NumbersInTheTextAreShort)
{
  this->Widget->DisplayTextOn();
  this->Widget->State = Widget::WindowLevelling;
  this->Widget->CurrentWindow = 1.0 / 3.0;
  this->Widget->CurrentLevel = 1e10;
  this->Widget->ManageTextDisplay();
  EXPECT_STREQ(this->Widget->TextBuff, "Window, Level: ( 0.333333, 1e+10 )");
  this->Widget->State = Widget::Cursoring;
  this->Widget->CurrentImageValue = -2.5;
  this->Widget->CurrentCursorPosition[0] = 0.5;
  this->Widget->CurrentCursorPosition[1] = -1;
  this->Widget->CurrentCursorPosition[2] = 1e-7;
  this->Widget->ManageTextDisplay();
  EXPECT_STREQ(this->Widget->TextBuff, "( 0.5, -1, 1e-07 ): -2.5");
}

TEST_F(ImagePlaneInteraction, InOtherStatesTheTextStaysAndIsShownWhole)
{
  this->Widget->DisplayTextOn();
  std::string longest(127, 'x');
  std::memcpy(this->Widget->TextBuff, longest.c_str(), 128);
  for (int state : { Widget::Start, Widget::Pushing, Widget::Spinning, Widget::Rotating,
         Widget::Moving, Widget::Scaling, Widget::Outside })
  {
    this->Widget->State = state;
    const vtkMTimeType before = this->Widget->TextActor->GetMTime();
    this->Widget->ManageTextDisplay();
    EXPECT_EQ(this->Widget->TextActor->GetInput(), longest);
    EXPECT_GT(this->Widget->TextActor->GetMTime(), before);
  }
}

TEST_F(ImagePlaneInteraction, WithTextOffNothingIsWrittenOrShown)
{
  this->Mouse.Press(zvtest::Left, this->Middle(), zvtest::Shift);
  EXPECT_STREQ(this->Widget->TextBuff, "NA");
  EXPECT_EQ(this->Widget->TextActor->GetVisibility(), 0);
  this->Mouse.Release(zvtest::Left);
  this->Mouse.Press(zvtest::Right, this->Middle());
  EXPECT_STREQ(this->Widget->TextBuff, "NA");
  EXPECT_EQ(this->Widget->TextActor->GetVisibility(), 0);
}

TEST_F(ImagePlaneInteraction, TheTextIsSeenWhileReading)
{
  this->Widget->DisplayTextOn();
  this->Widget->SetWindowLevel(1000.0, 100000.0); // a black slice
  this->Widget->GetPlaneProperty()->SetColor(1, 0, 0);
  const zvtest::Region corner{ { { 0, 0 } }, { { 250, 30 } } };
  const zvtest::Color white{ 255, 255, 255 };
  EXPECT_EQ(this->Scene.RenderAndLook().Count(white, corner, 60), 0);
  this->Mouse.Press(zvtest::Left, this->Middle(), zvtest::Shift);
  EXPECT_GT(this->Scene.Look().Count(white, corner, 60), 40);
  this->Mouse.Release(zvtest::Left);
  EXPECT_EQ(this->Scene.Look().Count(white, corner, 60), 0);
}

// ---- clicked points ----

TEST_F(ImagePlaneInteraction, ThePointClickedIsWhereThePlaneWasHit)
{
  this->Mouse.MoveTo(this->On(2, 8));
  this->Widget->UpdatePointClicked();
  EXPECT_EQ(this->Widget->GetClicked(), 1);
  EXPECT_TRUE(IsPoint(this->Widget->GetPointClicked(), 2, 8, 10, 0.06));
  EXPECT_EQ(this->Widget->GetState(), Widget::Start);
  this->Mouse.MoveTo(this->Beside());
  this->Widget->UpdatePointClicked();
  EXPECT_EQ(this->Widget->GetClicked(), 0);
  this->Mouse.MoveTo(this->OutOfView());
  this->Widget->SetClicked(1);
  this->Widget->UpdatePointClicked();
  EXPECT_EQ(this->Widget->GetClicked(), 1) << "off the view nothing is picked";
  EXPECT_EQ(this->Widget->GetState(), Widget::Outside);
  EXPECT_TRUE(this->TakeEvents().empty());
}

TEST_F(ImagePlaneInteraction, ALeftReleaseForgetsTheClick)
{
  this->Mouse.MoveTo(this->On(2, 8));
  this->Widget->UpdatePointClicked();
  this->Mouse.Release(zvtest::Right);
  EXPECT_EQ(this->Widget->GetClicked(), 1);
  this->Mouse.Release(zvtest::Left);
  EXPECT_EQ(this->Widget->GetClicked(), 0);
  EXPECT_TRUE(IsPoint(this->Widget->GetPointClicked(), 0, 0, 0, 0.0));
}

TEST_F(ImagePlaneInteraction, TheLastPointClickedIsThatOfThePickBefore)
{
  this->Mouse.Press(zvtest::Left, this->On(2, 8));
  EXPECT_TRUE(IsPoint(this->Widget->GetLastPointClicked(), 0, 0, 0, 0.0));
  this->Mouse.Release(zvtest::Left);
  this->Mouse.Press(zvtest::Left, this->Middle());
  EXPECT_TRUE(IsPoint(this->Widget->GetLastPointClicked(), 0.2, 0.8, 0, 0.01));
}

TEST_F(ImagePlaneInteraction, HighlightingTakesThePickPosition)
{
  this->Mouse.MoveTo(this->On(2, 8));
  this->Widget->UpdatePointClicked();
  this->Widget->HighlightPlane(0);
  EXPECT_FALSE(this->IsHighlighted());
  this->Widget->HighlightPlane(1);
  EXPECT_TRUE(this->IsHighlighted());
  EXPECT_TRUE(IsPoint(this->Widget->LastPickPosition, 2, 8, 10, 0.06));
}

// ---- hosts that change things in an observer ----

TEST_F(ImagePlaneInteraction, DeletedInMidDragItLeavesTheView)
{
  for (int button : { zvtest::Left, zvtest::Right })
  {
    OpenImagePlane* widget = new OpenImagePlane;
    widget->SetInput(this->Volume);
    widget->SetPlaneOrientation(2);
    this->Widget->SetEnabled(0);
    widget->SetInteractor(this->Scene.Interactor());
    widget->SetEnabled(1);
    this->Mouse.Press(static_cast<zvtest::Button>(button), this->Middle());
    EXPECT_NE(widget->GetState(), Widget::Start);
    widget->Delete();
    this->Mouse.MoveTo(this->On(6, 6));
    this->Mouse.Release(static_cast<zvtest::Button>(button));
    EXPECT_EQ(this->Scene.RenderAndLook().CountOther(
                { 0, 0, 0 }, zvtest::Region::Around(this->Middle(), 20)),
      0);
  }
}

namespace
{
struct GestureRow
{
  const char* Name;
  unsigned long Event;
  zvtest::Button Button;
  int Modifiers;
};
std::ostream& operator<<(std::ostream& os, const GestureRow& row)
{
  return os << row.Name;
}

/// Every event that a gesture invokes, with an observer that pulls the rug away.
class ImagePlaneRug
  : public ImagePlaneInteraction
  , public ::testing::WithParamInterface<GestureRow>
{
protected:
  void Gesture()
  {
    const GestureRow& row = this->GetParam();
    if (row.Event == vtkCommand::ResetWindowLevelEvent)
    {
      this->Mouse.Type('r', zvtest::Shift);
      return;
    }
    this->Mouse.Drag(row.Button, this->Middle(), this->On(6, 6), row.Modifiers, 2);
  }
  zvtest::EventRecorder Rug;
};
}

TEST_P(ImagePlaneRug, TheObserverMayDeleteTheWidget)
{
  bool gone = false;
  this->Widget->Gone = &gone;
  this->Rug.Watch(this->Widget.get(), { this->GetParam().Event },
    [&](const zvtest::RecordedEvent&) { this->Widget.reset(); });
  this->Gesture();
  EXPECT_TRUE(gone);
  EXPECT_EQ(this->Rug.Count(this->GetParam().Event), 1);
  EXPECT_EQ(
    this->Scene.RenderAndLook().CountOther({ 0, 0, 0 }, zvtest::Region::Around(this->Middle(), 20)),
    0);
}

TEST_P(ImagePlaneRug, TheObserverMayDisableTheWidget)
{
  this->Rug.Watch(this->Widget.get(), { this->GetParam().Event },
    [&](const zvtest::RecordedEvent&) { this->Widget->SetEnabled(0); });
  this->Gesture();
  EXPECT_EQ(this->Widget->GetEnabled(), 0);
  EXPECT_EQ(this->Widget->GetCurrentRenderer(), nullptr);
  this->Widget->SetEnabled(1);
  EXPECT_EQ(this->Widget->GetEnabled(), 1);
}

TEST_P(ImagePlaneRug, TheObserverMayTakeTheInteractorAway)
{
  this->Rug.Watch(this->Widget.get(), { this->GetParam().Event },
    [&](const zvtest::RecordedEvent&) { this->Widget->SetInteractor(nullptr); });
  this->Gesture();
  EXPECT_EQ(this->Widget->GetInteractor(), nullptr);
  EXPECT_EQ(this->Widget->GetEnabled(), 0);
}

TEST_P(ImagePlaneRug, TheObserverMayDetachTheInput)
{
  this->Rug.Watch(this->Widget.get(), { this->GetParam().Event },
    [&](const zvtest::RecordedEvent&) { this->Widget->SetInput(nullptr); });
  this->Gesture();
  EXPECT_EQ(this->Widget->ImageData, nullptr);
  this->Gesture();
  this->Scene.Render();
}

INSTANTIATE_TEST_SUITE_P(Events, ImagePlaneRug,
  ::testing::Values(GestureRow{ "SliceStart", vtkCommand::StartInteractionEvent, zvtest::Left, 0 },
    GestureRow{ "SliceMove", vtkCommand::InteractionEvent, zvtest::Left, 0 },
    GestureRow{ "SliceEnd", vtkCommand::EndInteractionEvent, zvtest::Left, 0 },
    GestureRow{ "CursorStart", vtkCommand::StartInteractionEvent, zvtest::Left, zvtest::Shift },
    GestureRow{ "CursorMove", vtkCommand::InteractionEvent, zvtest::Left, zvtest::Shift },
    GestureRow{ "CursorEnd", vtkCommand::EndInteractionEvent, zvtest::Left, zvtest::Shift },
    GestureRow{ "WindowStart", vtkCommand::StartWindowLevelEvent, zvtest::Right, 0 },
    GestureRow{ "WindowMove", vtkCommand::WindowLevelEvent, zvtest::Right, 0 },
    GestureRow{ "WindowEnd", vtkCommand::EndWindowLevelEvent, zvtest::Right, 0 },
    GestureRow{ "Reset", vtkCommand::ResetWindowLevelEvent, zvtest::Left, 0 }),
  [](const ::testing::TestParamInfo<GestureRow>& row) { return std::string(row.param.Name); });

// ---- nothing to stand on ----

TEST_F(ImagePlaneInteraction, WithoutInputNothingIsHit)
{
  this->Widget->SetInput(nullptr);
  for (zvtest::Button button : { zvtest::Left, zvtest::Right })
  {
    for (int modifier : { zvtest::NoModifier, zvtest::Shift })
    {
      this->Mouse.Press(button, this->Middle(), modifier);
      EXPECT_EQ(this->Widget->GetState(), Widget::Outside);
      this->Mouse.MoveTo(this->On(6, 6), modifier);
      this->Mouse.Release(button, modifier);
    }
  }
  EXPECT_TRUE(this->TakeEvents().empty());
}

TEST_F(ImagePlaneInteraction, WithoutAViewNoHandlerCrashes)
{
  OpenImagePlane* w = this->Widget.get();
  w->SetInteractor(nullptr);
  const auto callAll = [w]
  {
    w->OnLeftButtonDown();
    w->OnLeftButtonUp();
    w->OnMiddleButtonDown();
    w->OnMiddleButtonUp();
    w->OnRightButtonDown();
    w->OnRightButtonUp();
    w->OnChar();
    w->UpdatePointClicked();
    w->UpdateCursor(10, 10);
    w->WindowLevel(10, 10);
    w->ManageTextDisplay();
    w->HighlightPlane(1);
    w->HighlightPlane(0);
    for (int state = Widget::Start; state <= Widget::Outside; ++state)
    {
      w->State = state;
      w->OnMouseMove();
      w->State = state;
      w->StopCursor();
      w->State = state;
      w->StopSliceMotion();
      w->State = state;
      w->StopWindowLevel();
    }
  };
  callAll();
  w->SetInteractor(this->Scene.Interactor()); // not enabled: no renderer
  callAll();
  EXPECT_EQ(w->GetEnabled(), 0);
}
