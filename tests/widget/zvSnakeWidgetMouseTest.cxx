#include "zvSnakeFixture.h"

#include "vtkFollower.h"
#include "vtkPropCollection.h"
#include "vtkProperty.h"
#include "vtkVectorText.h"
#include "vtkWeakPointer.h"

#include <gmock/gmock.h>

#include <functional>

using ::testing::IsEmpty;
using zvtest::World;

namespace
{
constexpr char InteractorError[] = "The interactor must be set prior to enabling/disabling widget";
constexpr char Untouched[] = "untouched";

class SnakeWidgetMouse : public zvtest::SnakeTest<zvtest::OpenSnake>
{
protected:
  /// Let it be seen whether the label is refreshed.
  void MarkLabel() { this->Snake->AreaText->SetText(Untouched); }
  std::string Label() { return this->Snake->AreaText->GetText(); }

  /// In and off the bounding box of the ring of radius 5 about the origin, and in the 3D view.
  zvtest::Display OnRing() { return this->At({ { 2, 1, 0 } }); }
  zvtest::Display OffRing() { return this->At({ { 9, 9, 0 } }); }
  static zvtest::Display OtherView() { return { { 600, 200 } }; }

  void ExpectShown(bool shown)
  {
    EXPECT_EQ(this->IsShown(this->Snake->SnakeActor), shown);
    EXPECT_EQ(this->IsShown(this->Snake->GradientActor), shown);
    EXPECT_EQ(this->IsShown(this->Snake->AreaActor), shown);
    EXPECT_EQ(this->IsShown(this->Snake->Snakes3DActor, 1), shown);
    EXPECT_EQ(this->IsObserved(), shown);
  }
};
}

// ---- Enabling

TEST_F(SnakeWidgetMouse, CannotBeEnabledOrDisabledWithoutAnInteractor)
{
  vtkNew<zvSnakeWidget> lonely;
  for (int enabling : { 1, 0 })
  {
    lonely->SetEnabled(enabling);
    this->ExpectVtkError("zvSnakeWidget", "zvSnakeWidget", lonely.Get(), InteractorError);
    EXPECT_EQ(lonely->GetEnabled(), 0);
  }
}

TEST_F(SnakeWidgetMouse, EnablingTellsTwiceAndShowsBetweenByDesign)
{
  this->Snake->CreateInitialSnake();
  std::vector<bool> shown;
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Snake, { vtkCommand::EnableEvent },
    [this, &shown](const zvtest::RecordedEvent& event)
    {
      EXPECT_FALSE(event.HasData);
      EXPECT_EQ(this->Snake->GetEnabled(), 1);
      EXPECT_TRUE(this->IsObserved());
      shown.push_back(this->IsShown(this->Snake->AreaActor));
    });
  recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  this->Snake->SetEnabled(1);
  EXPECT_EQ(recorder.Names(), (Names{ "EnableEvent", "EnableEvent", "RenderEvent" }));
  EXPECT_EQ(shown, (std::vector<bool>{ false, true }));
  this->ExpectShown(true);
  EXPECT_EQ(this->Snake->AreaActor->GetCamera(), this->Scene.Renderer(0)->GetActiveCamera());
  this->Snake->SetEnabled(1);
  EXPECT_EQ(recorder.Events().size(), 3u);
}

TEST_F(SnakeWidgetMouse, DisablingTakesItOutTellsAndKeepsTheRenderer)
{
  this->Show();
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Snake, { vtkCommand::EnableEvent, vtkCommand::DisableEvent },
    [this](const zvtest::RecordedEvent& event)
    {
      EXPECT_FALSE(event.HasData);
      EXPECT_EQ(this->Snake->GetEnabled(), 0);
      this->ExpectShown(false);
    });
  recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  this->Snake->SetEnabled(0);
  EXPECT_EQ(recorder.Names(), (Names{ "DisableEvent", "RenderEvent" }));
  this->ExpectShown(false);
  EXPECT_EQ(this->Snake->GetCurrentRender(), this->Scene.Renderer(0));
  this->Snake->SetEnabled(0);
  EXPECT_EQ(recorder.Events().size(), 2u);
  recorder.Clear();
  this->Pointer.Drag(zvtest::Left, this->OnRing(), this->OffRing());
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(SnakeWidgetMouse, EnablingTakesTheRendererUnderTheLastEvent)
{
  vtkNew<zvSnakeWidget> snake;
  snake->SetInteractor(this->Scene.Interactor());
  snake->SetRenderer3D(this->Scene.Renderer(0));
  this->Pointer.MoveTo(OtherView());
  this->Pointer.MoveTo({ { 100, 100 } });
  snake->SetEnabled(1);
  EXPECT_EQ(snake->GetCurrentRender(), this->Scene.Renderer(1));
}

TEST_F(SnakeWidgetMouse, WithoutARendererEnablingGivesUpSilently)
{
  this->Snake = nullptr;
  this->Scene.DropRenderers();
  vtkNew<zvSnakeWidget> snake;
  snake->SetInteractor(this->Scene.Interactor());
  snake->SetEnabled(1);
  EXPECT_EQ(snake->GetEnabled(), 0);
  EXPECT_EQ(snake->GetCurrentRender(), nullptr);
  this->ExpectNoMessage();
}

TEST_F(SnakeWidgetMouse, WithoutA3DRendererEnablingSaysSoAndChangesNothing)
{
  vtkNew<zvtest::OpenSnake> snake;
  snake->SetInteractor(this->Scene.Interactor());
  zvtest::EventRecorder recorder;
  recorder.Watch(snake, zvtest::WidgetEvents);
  recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  snake->SetEnabled(1);
  this->ExpectGenericWarning("zvSnakeWidget", "set the 3D renderer before enabling...");
  EXPECT_EQ(snake->GetEnabled(), 0);
  EXPECT_EQ(snake->GetCurrentRender(), nullptr);
  EXPECT_THAT(recorder.Names(), IsEmpty());
  EXPECT_FALSE(this->IsShown(snake->SnakeActor));
  snake->SetRenderer3D(this->Scene.Renderer(1));
  snake->SetEnabled(1);
  EXPECT_EQ(snake->GetEnabled(), 1);
}

TEST_F(SnakeWidgetMouse, A3DRendererThatIsTakenAwayOrDiesIsNotNeededToDisable)
{
  for (bool dies : { false, true })
  {
    auto other = vtkSmartPointer<vtkRenderer>::New();
    this->Snake->SetRenderer3D(other);
    EXPECT_EQ(other->GetReferenceCount(), 1);
    this->Show();
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

TEST_F(SnakeWidgetMouse, AddObserversAttachesTheNineEventsAndTells)
{
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Snake->AddObservers();
  EXPECT_TRUE(this->IsObserved());
  EXPECT_EQ(recorder.Names(), (Names{ "EnableEvent" }));
  EXPECT_FALSE(this->Scene.Interactor()->HasObserver(
    vtkCommand::CharEvent, this->Snake->EventCallbackCommand));
  vtkNew<zvSnakeWidget> lonely;
  recorder.Clear();
  recorder.Watch(lonely, zvtest::WidgetEvents);
  lonely->AddObservers();
  this->ExpectGenericWarning("zvSnakeWidget", "set interactor before adding observers...");
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(SnakeWidgetMouse, InteractionOnTellsOnceMore)
{
  this->Show();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Snake->SetInteraction(false);
  EXPECT_FALSE(this->IsObserved());
  EXPECT_THAT(recorder.Names(), IsEmpty());
  this->Snake->SetInteraction(true);
  EXPECT_TRUE(this->IsObserved());
  EXPECT_EQ(recorder.Names(), (Names{ "EnableEvent" }));
}

// ---- A renderer that is written

TEST_F(SnakeWidgetMouse, SetCurrentRenderWritesRendererAndInteractorWithoutAReference)
{
  vtkNew<zvSnakeWidget> snake;
  vtkRenderer* renderer = this->Scene.Renderer(0);
  const int references = renderer->GetReferenceCount();
  const vtkMTimeType modified = snake->GetMTime();
  snake->SetCurrentRender(renderer);
  EXPECT_EQ(snake->GetCurrentRender(), renderer);
  EXPECT_EQ(snake->GetInteractor(), this->Scene.Interactor());
  EXPECT_EQ(renderer->GetReferenceCount(), references);
  EXPECT_EQ(snake->GetMTime(), modified);
  vtkNew<vtkRenderer> windowless;
  snake->SetCurrentRender(windowless);
  this->ExpectGenericWarning("zvSnakeWidget", "set a renderer that is in a render window...");
  EXPECT_EQ(snake->GetCurrentRender(), renderer);
  snake->SetCurrentRenderer(renderer);
  EXPECT_EQ(renderer->GetReferenceCount(), references + 1);
  snake->SetCurrentRender(renderer);
  EXPECT_EQ(renderer->GetReferenceCount(), references);
}

TEST_F(SnakeWidgetMouse, AWrittenViewWorksAndMayDieFirst)
{
  vtkNew<zvtest::OpenSnake> snake;
  {
    class zvtest::Scene other(TwoViews());
    snake->SetCurrentRender(other.Renderer(0));
    snake->SetRenderer3D(other.Renderer(1));
    snake->CreateInitialSnake();
    snake->ViewAreaOn();
    snake->SetEnabled(1);
    EXPECT_EQ(snake->GetEnabled(), 1);
    zvtest::Mouse mouse(other);
    mouse.Press(zvtest::Middle, { { 100, 100 } });
    EXPECT_EQ(snake->GetState(), zvSnakeWidget::Scaling);
  }
  EXPECT_EQ(snake->GetCurrentRender(), nullptr);
  EXPECT_EQ(snake->GetInteractor(), nullptr);
  snake->OnMouseMove();
  snake->OnLeftButtonUp();
  snake->OnLeftButtonDown();
  EXPECT_EQ(snake->GetState(), zvSnakeWidget::Outside);
  snake->OnMiddleButtonDown();
  EXPECT_EQ(snake->GetState(), zvSnakeWidget::Outside);
  EXPECT_EQ(snake->IsClicked(), 0);
  this->ExpectNoMessage();
}

TEST_F(SnakeWidgetMouse, GoesToAnotherViewWithoutLeavingAnythingInTheFirst)
{
  this->Show();
  this->Snake->ViewAreaOn();
  class zvtest::Scene other(TwoViews());
  this->Snake->SetCurrentRender(other.Renderer(0));
  this->Snake->SetRenderer3D(other.Renderer(1));
  EXPECT_TRUE(this->IsShown(this->Snake->SnakeActor)); // until it is disabled
  this->Snake->SetEnabled(0);
  EXPECT_EQ(this->Scene.Renderer(0)->GetViewProps()->GetNumberOfItems(), 0);
  EXPECT_EQ(this->Scene.Renderer(1)->GetViewProps()->GetNumberOfItems(), 0);
  EXPECT_FALSE(this->IsObserved());
  this->Snake->SetEnabled(1);
  EXPECT_TRUE(other.Renderer(0)->HasViewProp(this->Snake->SnakeActor));
  this->Snake = nullptr;
  EXPECT_EQ(other.Renderer(0)->GetViewProps()->GetNumberOfItems(), 0);
}

// ---- The buttons

TEST_F(SnakeWidgetMouse, ALeftPressOnTheContourTakesItAndRefreshesTheLabelLast)
{
  this->Show();
  this->Snake->ViewAreaOn();
  this->MarkLabel();
  std::vector<std::string> labels;
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Snake, zvtest::WidgetEvents);
  recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent },
    [this, &labels](const zvtest::RecordedEvent&) { labels.push_back(this->Label()); });
  recorder.Watch(this->Scene.Interactor(), zvtest::ButtonEvents);
  this->Pointer.Press(zvtest::Left, this->OnRing());
  EXPECT_EQ(this->Snake->GetState(), zvSnakeWidget::Moving);
  EXPECT_EQ(recorder.Names(), (Names{ "StartInteractionEvent", "RenderEvent" }));
  EXPECT_FALSE(recorder.Events().front().HasData);
  EXPECT_EQ(labels, (Names{ Untouched }));
  EXPECT_NE(this->Label(), Untouched);
}

TEST_F(SnakeWidgetMouse, ALeftPressOffTheContourOrOutOfTheViewIsLeftToOthers)
{
  this->Show();
  for (const zvtest::Display& at : { this->OffRing(), OtherView() })
  {
    this->Snake->State = zvSnakeWidget::Moving;
    this->MarkLabel();
    zvtest::EventRecorder recorder;
    this->Record(recorder);
    this->Pointer.Press(zvtest::Left, at);
    EXPECT_EQ(this->Snake->GetState(), zvSnakeWidget::Outside);
    EXPECT_EQ(recorder.Names(), (Names{ "LeftButtonPressEvent" }));
    EXPECT_EQ(this->Label(), Untouched);
  }
}

TEST_F(SnakeWidgetMouse, AnEmptyContourIsNeverHit)
{
  this->Snake->SetEnabled(1);
  vtkNew<vtkPolyData> empty;
  for (int set = 0; set < 2; ++set)
  {
    for (const World& place : { World{ { 0, 0, 0 } }, World{ { 0.5, 0.5, 0 } } })
    {
      this->Pointer.Press(zvtest::Left, this->At(place));
      EXPECT_EQ(this->Snake->GetState(), zvSnakeWidget::Outside);
      EXPECT_EQ(this->Snake->IsClicked(), 0);
    }
    this->Snake->SetSnake(empty); // now with a mapper
  }
  this->ExpectNoMessage();
}

TEST_F(SnakeWidgetMouse, AMiddlePressAnywhereInTheViewResizesByDesign)
{
  this->Show();
  for (const zvtest::Display& at : { this->OnRing(), this->OffRing() })
  {
    this->MarkLabel();
    zvtest::EventRecorder recorder;
    this->Record(recorder);
    this->Pointer.Press(zvtest::Middle, at);
    EXPECT_EQ(this->Snake->GetState(), zvSnakeWidget::Scaling);
    EXPECT_EQ(recorder.Names(), (Names{ "StartInteractionEvent", "RenderEvent" }));
    EXPECT_EQ(this->Label(), " ");
    this->Pointer.Release(zvtest::Middle);
  }
}

TEST_F(SnakeWidgetMouse, AMiddlePressOutOfTheViewIsLeftToOthers)
{
  this->Show();
  this->Snake->State = zvSnakeWidget::Scaling;
  this->MarkLabel();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Pointer.Press(zvtest::Middle, OtherView());
  EXPECT_EQ(this->Snake->GetState(), zvSnakeWidget::Outside);
  EXPECT_EQ(recorder.Names(), (Names{ "MiddleButtonPressEvent" }));
  EXPECT_EQ(this->Label(), Untouched);
}

TEST_F(SnakeWidgetMouse, EitherReleaseEndsEitherDrag)
{
  this->Show();
  for (int state : { zvSnakeWidget::Moving, zvSnakeWidget::Scaling })
  {
    for (zvtest::Button button : { zvtest::Left, zvtest::Middle })
    {
      this->Snake->State = state;
      this->MarkLabel();
      zvtest::EventRecorder recorder;
      this->Record(recorder);
      this->Pointer.Release(button, this->OffRing());
      EXPECT_EQ(this->Snake->GetState(), zvSnakeWidget::Start);
      EXPECT_EQ(recorder.Names(), (Names{ "EndInteractionEvent", "RenderEvent" }));
      EXPECT_FALSE(recorder.Events().front().HasData);
      EXPECT_EQ(this->Label(), " ");
    }
  }
}

TEST_F(SnakeWidgetMouse, ReleasesAndMovesInStartAndOutsideAreLeftToOthers)
{
  this->Show();
  for (int state : { zvSnakeWidget::Start, zvSnakeWidget::Outside })
  {
    this->Snake->State = state;
    this->MarkLabel();
    zvtest::EventRecorder recorder;
    this->Record(recorder);
    this->Pointer.Release(zvtest::Left, this->OnRing());
    this->Pointer.Release(zvtest::Middle, this->OnRing());
    this->Pointer.MoveTo(this->OffRing());
    EXPECT_EQ(this->Snake->GetState(), state);
    EXPECT_EQ(recorder.Names(),
      (Names{ "LeftButtonReleaseEvent", "MiddleButtonReleaseEvent", "MouseMoveEvent" }));
    EXPECT_EQ(this->Label(), Untouched);
    this->ExpectCircle({ { 0, 0, 0 } }, 5.0);
  }
}

TEST_F(SnakeWidgetMouse, TheRightButtonDoesNothing)
{
  this->Show();
  for (int state :
    { zvSnakeWidget::Start, zvSnakeWidget::Moving, zvSnakeWidget::Scaling, zvSnakeWidget::Outside })
  {
    this->Snake->State = state;
    this->MarkLabel();
    zvtest::EventRecorder recorder;
    this->Record(recorder);
    this->Pointer.Press(zvtest::Right, this->OnRing());
    this->Pointer.Release(zvtest::Right);
    EXPECT_EQ(this->Snake->GetState(), state);
    EXPECT_EQ(recorder.Names(), (Names{ "RightButtonPressEvent", "RightButtonReleaseEvent" }));
    EXPECT_EQ(this->Label(), Untouched);
  }
}

TEST_F(SnakeWidgetMouse, TheWheelRefreshesTheLabelAndRendersNothing)
{
  this->Show();
  this->Snake->ViewAreaOn();
  const double scale = this->Snake->AreaActor->GetScale()[0];
  this->Scene.Renderer(0)->GetActiveCamera()->Zoom(2.0);
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Pointer.WheelForward(this->OnRing());
  EXPECT_NEAR(this->Snake->AreaActor->GetScale()[0], 0.5 * scale, 1e-6);
  this->Scene.Renderer(0)->GetActiveCamera()->Zoom(0.25);
  this->Pointer.WheelBackward(this->OnRing());
  EXPECT_NEAR(this->Snake->AreaActor->GetScale()[0], 2.0 * scale, 1e-6);
  EXPECT_EQ(recorder.Names(), (Names{ "MouseWheelForwardEvent", "MouseWheelBackwardEvent" }));
  EXPECT_EQ(this->Snake->GetState(), zvSnakeWidget::Start);
}

TEST_F(SnakeWidgetMouse, WithInteractionOffEventsThatArriveOnlyRefreshTheLabel)
{
  this->Show();
  this->Snake->ViewAreaOn();
  this->Snake->SetInteraction(false);
  this->Snake->AddObservers(); // Interaction stays off
  for (int state :
    { zvSnakeWidget::Start, zvSnakeWidget::Moving, zvSnakeWidget::Scaling, zvSnakeWidget::Outside })
  {
    this->Snake->State = state;
    zvtest::EventRecorder recorder;
    this->Record(recorder);
    const std::vector<std::function<void()>> events = {
      [this] { this->Pointer.Press(zvtest::Left, this->OnRing()); },
      [this] { this->Pointer.MoveTo(this->OffRing()); },
      [this] { this->Pointer.Release(zvtest::Left); },
      [this] { this->Pointer.Press(zvtest::Middle, OtherView()); },
      [this] { this->Pointer.Release(zvtest::Middle); },
      [this] { this->Pointer.WheelForward(OtherView()); },
      [this] { this->Pointer.WheelBackward(OtherView()); },
    };
    for (const auto& event : events)
    {
      this->MarkLabel();
      event();
      EXPECT_NE(this->Label(), Untouched);
    }
    EXPECT_EQ(this->Snake->GetState(), state);
    EXPECT_EQ(recorder.Names(),
      (Names{ "LeftButtonPressEvent", "MouseMoveEvent", "LeftButtonReleaseEvent",
        "MiddleButtonPressEvent", "MiddleButtonReleaseEvent", "MouseWheelForwardEvent",
        "MouseWheelBackwardEvent" }));
    this->ExpectCircle({ { 0, 0, 0 } }, 5.0);
  }
}

// ---- Drags

TEST_F(SnakeWidgetMouse, ALeftDragMovesTheRingWithThePointer)
{
  this->Show();
  const zvtest::Display from = this->OnRing();
  this->Pointer.Press(zvtest::Left, from);
  this->Pointer.MoveTo({ { from[0] + 30, from[1] - 20 } });
  this->ExpectNear(this->Center(), { { 3, -2, 0 } });
  this->ExpectCircle({ { 3, -2, 0 } }, 5.0);
  this->Pointer.MoveTo({ { from[0] + 40, from[1] - 20 } });
  this->ExpectCircle({ { 4, -2, 0 } }, 5.0);
  this->Pointer.Release(zvtest::Left);
  this->ExpectCircle({ { 4, -2, 0 } }, 5.0);
}

TEST_F(SnakeWidgetMouse, EachMoveOfADragTellsRendersAndRefreshesTheLabel)
{
  this->Show();
  for (zvtest::Button button : { zvtest::Left, zvtest::Middle })
  {
    this->Pointer.Press(button, this->OnRing());
    this->MarkLabel();
    zvtest::EventRecorder recorder;
    this->Record(recorder);
    this->Pointer.MoveTo(this->At({ { 2, 2, 0 } }));
    EXPECT_EQ(recorder.Names(), (Names{ "InteractionEvent", "RenderEvent" }));
    EXPECT_FALSE(recorder.Events().front().HasData);
    EXPECT_EQ(this->Label(), " ");
    this->Pointer.Release(button);
  }
}

TEST_F(SnakeWidgetMouse, ADragPastTheImageStopsTheCenterNotTheRing)
{
  this->Show();
  const zvtest::Display from = this->OnRing();
  this->Pointer.Press(zvtest::Left, from);
  this->Pointer.MoveTo({ { from[0], from[1] + 170 } });
  this->ExpectNear(this->Center(), { { 0, 15, 0 } });
  double bounds[6];
  this->Snake->GetSnake()->GetBounds(bounds);
  EXPECT_NEAR(bounds[3], 20.0, 1e-3); // sticks out by its radius
  // The way that was cut off is not remembered.
  this->Pointer.MoveTo({ { from[0], from[1] + 160 } });
  this->ExpectNear(this->Center(), { { 0, 14, 0 } });
}

TEST_F(SnakeWidgetMouse, ADragMakesADeformedContourACircleAgain)
{
  this->Show();
  this->Snake->SetSnake(Square());
  const zvtest::Display from = this->OnRing();
  this->Pointer.Drag(zvtest::Left, from, { { from[0] + 10, from[1] } });
  this->ExpectCircle({ { 1, 0, 0 } }, 5.0);
  this->Snake->SetSnake(Square());
  this->Pointer.Drag(zvtest::Middle, from, { { from[0], from[1] + 10 } });
  this->ExpectCircle({ { 1, 0, 0 } }, 6.0);
}

TEST_F(SnakeWidgetMouse, AMiddleDragUpGrowsAndDownOrAcrossShrinks)
{
  this->Show();
  const zvtest::Display from = this->OffRing();
  this->Pointer.Press(zvtest::Middle, from);
  this->Pointer.MoveTo({ { from[0], from[1] + 20 } });
  this->ExpectCircle({ { 0, 0, 0 } }, 7.0);
  this->Pointer.MoveTo({ { from[0], from[1] + 10 } });
  this->ExpectCircle({ { 0, 0, 0 } }, 6.0);
  this->Pointer.MoveTo({ { from[0] + 10, from[1] + 10 } });
  this->ExpectCircle({ { 0, 0, 0 } }, 5.0);
}

TEST_F(SnakeWidgetMouse, AMiddleDragDownPastTheRadiusLeavesAThousandthOfTheSmallerSide)
{
  this->Show();
  const zvtest::Display from = this->OffRing();
  this->Pointer.Press(zvtest::Middle, from);
  this->Pointer.MoveTo({ { from[0], from[1] - 60 } });
  EXPECT_DOUBLE_EQ(this->Snake->GetRadius(), 0.03);
  this->Pointer.MoveTo({ { from[0], from[1] - 50 } });
  EXPECT_NEAR(this->Snake->GetRadius(), 1.03, 1e-6);
}

TEST_F(SnakeWidgetMouse, InPerspectiveTheMotionIsThatOfTheNearPlaneByDesign)
{
  vtkCamera* camera = this->Scene.Renderer(0)->GetActiveCamera();
  camera->ParallelProjectionOff();
  camera->SetViewAngle(30.0);
  this->Scene.ResetCamera(0);
  this->Show();
  const zvtest::Display from = this->OnRing();
  const zvtest::Display to = { { from[0] + 50, from[1] + 30 } };
  this->Pointer.Press(zvtest::Left, from);
  double before[4];
  double after[4];
  vtkRenderer* view = this->Scene.Renderer(0);
  vtkInteractorObserver::ComputeDisplayToWorld(view, from[0], from[1], 0.0, before);
  vtkInteractorObserver::ComputeDisplayToWorld(view, to[0], to[1], 0.0, after);
  this->Pointer.MoveTo(to);
  this->ExpectNear(
    this->Center(), { { after[0] - before[0], after[1] - before[1], after[2] - before[2] } }, 1e-9);
  const World onSlice = this->Scene.WorldAt(to, { { 0, 0, 0 } });
  const World start = this->Scene.WorldAt(from, { { 0, 0, 0 } });
  EXPECT_GT(onSlice[0] - start[0], 1.05 * this->Center()[0]);
}

TEST_F(SnakeWidgetMouse, InAnotherMotionModeALeftDragMovesNothing)
{
  this->Show();
  this->Snake->MotionMode = 1;
  zvtest::EventRecorder recorder;
  this->Pointer.Press(zvtest::Left, this->OnRing());
  this->Record(recorder);
  this->Pointer.MoveTo(this->OffRing());
  EXPECT_EQ(recorder.Names(), (Names{ "InteractionEvent", "RenderEvent" }));
  this->ExpectCircle({ { 0, 0, 0 } }, 5.0);
}

TEST_F(SnakeWidgetMouse, ADragWithoutACurrentImageSaysSoAtEachMove)
{
  this->Show();
  zvInstanceManager::Instance()->SetCurrentOutput(nullptr);
  this->Pointer.Press(zvtest::Left, this->OnRing());
  this->Pointer.MoveTo(this->OffRing());
  this->ExpectGenericWarning("zvSnakeWidget", "set the current image before moving the snake...");
  this->Pointer.Release(zvtest::Left);
  this->ExpectCircle({ { 0, 0, 0 } }, 5.0);
}

TEST_F(SnakeWidgetMouse, IsClickedInTheBoxOfTheContourAndChangesNoState)
{
  this->Show();
  const auto clickedAt = [this](const zvtest::Display& at)
  {
    this->Scene.Interactor()->SetEventPosition(at[0], at[1]);
    return this->Snake->IsClicked();
  };
  EXPECT_EQ(clickedAt(this->OnRing()), 1);
  EXPECT_EQ(clickedAt(this->At({ { 4.7, 4.7, 0 } })), 1); // off the ring, in its box
  EXPECT_EQ(clickedAt(this->At({ { 5.5, 0, 0 } })), 0);
  EXPECT_EQ(this->Snake->GetState(), zvSnakeWidget::Start);
  vtkNew<zvSnakeWidget> lonely;
  lonely->CreateInitialSnake();
  EXPECT_EQ(lonely->IsClicked(), 0);
  lonely->SetInteractor(this->Scene.Interactor());
  EXPECT_EQ(lonely->IsClicked(), 0); // no renderer
}

// ---- What is seen

TEST_F(SnakeWidgetMouse, ColoursBeyondOneAreSeenAsPureColours)
{
  this->Show();
  this->Snake->SetGradientPointSize(6.0);
  this->Snake->SetGradient(
    CloudOfValues({ { { 12, 0, 0 } }, { { -12, 0, 0 } }, { { 0, 12, 0 } } }, { 0.0f, 0.5f, 1.0f }));
  this->Snake->SetSnakes3D(this->Snake->GetSnake());
  zvtest::Picture picture = this->Scene.RenderAndLook();
  const zvtest::Region slice{ { { 0, 0 } }, { { 399, 399 } } };
  const zvtest::Region stack{ { { 400, 0 } }, { { 799, 399 } } };
  EXPECT_GT(picture.Count(Green, slice, 0), 250); // a line of a pixel round a circle of 314
  EXPECT_GT(picture.Count(Green, stack, 0), 250);
  for (const World& place : { World{ { 5, 0, 0 } }, World{ { 0, -5, 0 } } })
  {
    EXPECT_TRUE(picture.HasNear(Green, this->At(place), 1, 0));
  }
  // Blue whatever values the points carry, at the asked size.
  EXPECT_NEAR(picture.Count(Blue, slice, 0), 3 * 36, 20);
  EXPECT_TRUE(picture.HasNear(Blue, this->At({ { 0, 12, 0 } }), 1, 0));
  EXPECT_EQ(picture.CountOther(Black, slice, 0),
    picture.Count(Green, slice, 0) + picture.Count(Blue, slice, 0)); // and nothing between

  this->Snake->SetColor(255.0, 0.0, 255.0);
  picture = this->Scene.RenderAndLook();
  EXPECT_GT(picture.Count(Magenta, slice, 0), 250);
  EXPECT_EQ(picture.Count(Green, slice, 0), 0);
  EXPECT_GT(picture.Count(Green, stack, 0), 250); // when it is set again
}

TEST_F(SnakeWidgetMouse, TheLabelIsSeenInTheContoursColourRightOfTheCenter)
{
  this->Show({ { -8, 3, 0 } }, 2.0);
  const int ring = this->Scene.RenderAndLook().Count(Green);
  this->Snake->ViewAreaOn();
  const zvtest::Picture picture = this->Scene.RenderAndLook();
  const zvtest::Display at = this->At({ { -8, 3, 0 } });
  const zvtest::Region beside{ { { at[0], at[1] - 8 } }, { { at[0] + 160, at[1] + 24 } } };
  EXPECT_GT(picture.Count(Green, beside), 150);
  EXPECT_EQ(picture.Count(Yellow), 0); // set on the way, and set again
  this->Snake->ViewAreaOff();
  EXPECT_EQ(this->Scene.RenderAndLook().Count(Green), ring);
}

TEST_F(SnakeWidgetMouse, TheRingIsSeenInTheNewPlaceAtEachMoveAndTheLabelWithTheNext)
{
  this->Show();
  const zvtest::Display from = this->OnRing();
  this->Pointer.Press(zvtest::Left, from);
  this->Pointer.MoveTo({ { from[0] - 60, from[1] + 40 } });
  const zvtest::Picture picture = this->Scene.Look(); // what the handler itself drew
  for (const World& place :
    { World{ { -1, 4, 0 } }, World{ { -11, 4, 0 } }, World{ { -6, 9, 0 } } })
  {
    EXPECT_TRUE(picture.HasNear(Green, this->At(place), 1));
  }
  EXPECT_FALSE(picture.HasNear(Green, this->At({ { 5, 0, 0 } }), 3));
}

TEST_F(SnakeWidgetMouse, DisabledNothingOfItIsSeen)
{
  const zvtest::Picture empty = this->Scene.RenderAndLook();
  this->Snake->SetSnakes3D(Square());
  this->Snake->SetGradient(Cloud({ { { 9, 9, 0 } } }));
  this->Show();
  this->Snake->ViewAreaOn();
  EXPECT_GT(this->Scene.RenderAndLook().CountDifferent(empty), 100);
  this->Snake->SetEnabled(0);
  EXPECT_EQ(this->Scene.Look().CountDifferent(empty), 0);
}

// ---- Life and death

TEST_F(SnakeWidgetMouse, DeletedWhileEnabledLeavesNothingBehind)
{
  const zvtest::Picture empty = this->Scene.RenderAndLook();
  this->Snake->SetSnakes3D(Square());
  this->Show();
  this->Snake->ViewAreaOn();
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

TEST_F(SnakeWidgetMouse, AttachedWithoutBeingEnabledItIsOffEveryInteractorWhenDeleted)
{
  vtkSmartPointer<vtkCommand> command = this->Snake->EventCallbackCommand;
  class zvtest::Scene other(TwoViews());
  this->Snake->AddObservers();
  this->Snake->SetCurrentRender(other.Renderer(0)); // moves no observer
  EXPECT_TRUE(this->Scene.Interactor()->HasObserver(vtkCommand::MouseMoveEvent, command));
  this->Snake->AddObservers();
  this->Snake = nullptr;
  EXPECT_FALSE(this->Scene.Interactor()->HasObserver(vtkCommand::MouseMoveEvent, command));
  EXPECT_FALSE(other.Interactor()->HasObserver(vtkCommand::MouseMoveEvent, command));
}

TEST_F(SnakeWidgetMouse, OutlivesWhatItWasShownIn)
{
  this->Show();
  this->Snake->ViewAreaOn();
  const zvtest::Display on = this->OnRing();
  this->Pointer.Press(zvtest::Middle, on);
  this->Scene.DropRenderers();
  this->Pointer.MoveTo({ { 10, 10 } });
  this->Pointer.Release(zvtest::Middle);
  this->Pointer.Press(zvtest::Left, on);
  EXPECT_EQ(this->Snake->GetState(), zvSnakeWidget::Outside);
  this->Pointer.WheelForward(on);
  this->Scene.DropInteractor();
  this->Scene.DropWindow();
  EXPECT_EQ(this->Snake->GetInteractor(), nullptr);
  EXPECT_EQ(this->Snake->GetEnabled(), 0);
  this->Snake->OnLeftButtonDown();
  this->Snake->OnMiddleButtonDown();
  this->Snake->State = zvSnakeWidget::Scaling;
  this->Snake->OnMouseMove();
  this->Snake->OnMiddleButtonUp();
  EXPECT_EQ(this->Snake->GetState(), zvSnakeWidget::Start);
  this->Snake->OnMouseWheelBackward();
  this->Snake->CreateInitialSnake();
}

TEST_F(SnakeWidgetMouse, SurvivesObserversThatDisableOrCutOffOrReleaseIt)
{
  using Action = std::function<void()>;
  const Action actions[] = { [this] { this->Snake->SetEnabled(0); },
    [this] { this->Snake->SetInteractor(nullptr); }, [this] { this->Snake = nullptr; } };
  for (const Action& action : actions)
  {
    for (unsigned long event :
      { vtkCommand::EnableEvent, vtkCommand::DisableEvent, vtkCommand::StartInteractionEvent,
        vtkCommand::InteractionEvent, vtkCommand::EndInteractionEvent })
    {
      this->MakeSnake();
      this->Snake->CreateInitialSnake();
      this->Snake->SetRadius(5.0);
      this->Snake->CreateInitialSnake();
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
      zvSnakeWidget* widget = this->Snake;
      widget->SetEnabled(1);
      this->Pointer.Drag(zvtest::Left, this->OnRing(), this->OffRing());
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

TEST_F(SnakeWidgetMouse, MayBeReleasedInAnOperationThatAHostCalls)
{
  struct Row
  {
    unsigned long Event;
    std::function<void(zvSnakeWidget*)> Handler;
  };
  const Row rows[] = {
    { vtkCommand::StartInteractionEvent, [](zvSnakeWidget* snake) { snake->OnLeftButtonDown(); } },
    { vtkCommand::StartInteractionEvent,
      [](zvSnakeWidget* snake) { snake->OnMiddleButtonDown(); } },
    { vtkCommand::InteractionEvent, [](zvSnakeWidget* snake) { snake->OnMouseMove(); } },
    { vtkCommand::EndInteractionEvent, [](zvSnakeWidget* snake) { snake->OnLeftButtonUp(); } },
    { vtkCommand::EndInteractionEvent, [](zvSnakeWidget* snake) { snake->OnMiddleButtonUp(); } },
    { vtkCommand::EnableEvent, [](zvSnakeWidget* snake) { snake->AddObservers(); } },
  };
  for (const Row& row : rows)
  {
    this->MakeSnake();
    this->Show();
    this->Pointer.MoveTo(this->OnRing());
    this->Snake->State = zvSnakeWidget::Moving;
    const vtkWeakPointer<zvSnakeWidget> alive = this->Snake.Get();
    zvtest::EventRecorder recorder;
    recorder.Watch(
      this->Snake, { row.Event }, [this](const zvtest::RecordedEvent&) { this->Snake = nullptr; });
    row.Handler(alive);
    EXPECT_EQ(alive, nullptr);
    EXPECT_EQ(this->Scene.Renderer(0)->GetViewProps()->GetNumberOfItems(), 0);
    EXPECT_EQ(this->Scene.Renderer(1)->GetViewProps()->GetNumberOfItems(), 0);
  }
}

TEST_F(SnakeWidgetMouse, DisabledFromAnObserverItsLabelDoesNotComeBack)
{
  for (unsigned long event : { vtkCommand::StartInteractionEvent, vtkCommand::InteractionEvent,
         vtkCommand::EndInteractionEvent })
  {
    this->MakeSnake();
    this->Show();
    this->Snake->ViewAreaOn();
    zvtest::EventRecorder recorder;
    recorder.Watch(
      this->Snake, { event }, [this](const zvtest::RecordedEvent&) { this->Snake->SetEnabled(0); });
    this->Pointer.Drag(zvtest::Left, this->OnRing(), this->At({ { 3, 3, 0 } }));
    EXPECT_EQ(this->Snake->GetEnabled(), 0);
    this->ExpectShown(false);
  }
}

TEST_F(SnakeWidgetMouse, TheObserverOfTheFirstEnableEventMayCloseAView)
{
  auto other = vtkSmartPointer<vtkRenderer>::New();
  this->Snake->SetRenderer3D(other);
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Snake, { vtkCommand::EnableEvent },
    [this, &other](const zvtest::RecordedEvent&)
    {
      other = nullptr;
      this->Snake->SetCurrentRenderer(nullptr);
    });
  this->Show();
  EXPECT_EQ(recorder.Count(vtkCommand::EnableEvent), 2);
  this->Snake->SetEnabled(0);
  EXPECT_EQ(this->Snake->GetEnabled(), 0);
}
