// The ruler under the user's hand: what each press, drag and turn of the wheel does and draws.
#include "zvRulerFixture.h"

#include "vtkNew.h"

#include <cmath>
#include <cstdio>
#include <functional>
#include <string>
#include <utility>
#include <vector>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zvtest::ColorOf;
using zvtest::Display;
using zvtest::MouseEvents;
using zvtest::OpenRuler;
using zvtest::World;

namespace
{
const zvtest::Color Red{ 255, 0, 0 };

class RulerWidgetMouse : public zvtest::RulerTest
{
};

enum class Place
{
  End1,
  End2,
  Line,
  Beside
};

struct PressRow
{
  const char* Name;
  zvtest::Button Button;
  Place Where;
  int State;
};

class RulerWidgetMousePress
  : public RulerWidgetMouse
  , public ::testing::WithParamInterface<PressRow>
{
protected:
  Display At() const
  {
    switch (GetParam().Where)
    {
      case Place::End1:
        return this->OnEnd1();
      case Place::End2:
        return this->OnEnd2();
      case Place::Line:
        return this->OnLine();
      default:
        return this->Beside();
    }
  }
  bool IsHit() const { return GetParam().State != zvRulerWidget::Outside; }
};
}

INSTANTIATE_TEST_SUITE_P(RulerWidgetMouse, RulerWidgetMousePress,
  ::testing::Values(
    PressRow{ "LeftOnEnd1", zvtest::Left, Place::End1, zvRulerWidget::MovingHandle },
    PressRow{ "LeftOnEnd2", zvtest::Left, Place::End2, zvRulerWidget::MovingHandle },
    PressRow{ "LeftOnTheLine", zvtest::Left, Place::Line, zvRulerWidget::MovingLine },
    PressRow{ "LeftBeside", zvtest::Left, Place::Beside, zvRulerWidget::Outside },
    PressRow{ "MiddleOnEnd1", zvtest::Middle, Place::End1, zvRulerWidget::MovingLine },
    PressRow{ "MiddleOnEnd2", zvtest::Middle, Place::End2, zvRulerWidget::MovingLine },
    PressRow{ "MiddleOnTheLine", zvtest::Middle, Place::Line, zvRulerWidget::MovingLine },
    PressRow{ "MiddleBeside", zvtest::Middle, Place::Beside, zvRulerWidget::Outside }),
  [](const auto& row) { return row.param.Name; });

TEST_P(RulerWidgetMousePress, TakesTheEventOnTheRulerAndPassesItOnBeside)
{
  this->Enable();
  this->Watch();
  this->Pointer.Press(GetParam().Button, this->At());
  EXPECT_EQ(this->Ruler->State, GetParam().State);
  if (this->IsHit())
  {
    EXPECT_THAT(this->Told.Names(), ElementsAre("StartInteractionEvent"));
    EXPECT_FALSE(this->Told.Events().front().HasData);
    EXPECT_THAT(this->Behind.Events(), IsEmpty());
    EXPECT_EQ(this->Ruler->ValidPick, 1);
  }
  else
  {
    EXPECT_THAT(this->Told.Events(), IsEmpty());
    EXPECT_EQ(this->Behind.Events().size(), 1u);
    EXPECT_THAT(this->Renders.Events(), IsEmpty());
  }
}

TEST_P(RulerWidgetMousePress, MoveTellsRendersOnceAndShowsWhatItDid)
{
  this->Ruler->SetHandleSize(0.02); // a label to look at
  this->Enable();
  this->Pointer.Press(GetParam().Button, this->At());
  this->Watch();
  for (int step = 1; step <= 3; ++step)
  {
    this->ForgetWhatWasTold();
    this->Pointer.MoveTo(Plus(this->At(), 9 * step, -13 * step));
    EXPECT_EQ(this->Ruler->State, GetParam().State);
    if (this->IsHit())
    {
      EXPECT_THAT(this->Told.Names(), ElementsAre("InteractionEvent"));
      EXPECT_FALSE(this->Told.Events().front().HasData);
      EXPECT_THAT(this->Behind.Events(), IsEmpty());
      EXPECT_EQ(this->Renders.Events().size(), 1u);
      this->ExpectTheScreenIsCurrent();
    }
    else
    {
      EXPECT_THAT(this->Told.Events(), IsEmpty());
      EXPECT_EQ(this->Behind.Events().size(), 1u);
      EXPECT_THAT(this->Renders.Events(), IsEmpty());
    }
  }
}

TEST_P(RulerWidgetMousePress, ReleaseEndsTheDragOrLeavesOutsideInPlace)
{
  for (zvtest::Button released : { zvtest::Left, zvtest::Middle })
  {
    SCOPED_TRACE(released);
    this->Ruler->SetEnabled(0);
    this->Enable();
    this->Pointer.Press(GetParam().Button, this->At());
    zvtest::EventRecorder told;
    zvtest::EventRecorder behind;
    told.Watch(this->Ruler, zvtest::WidgetEvents);
    behind.WatchAll(this->Scene.Interactor(), 0.1f);
    this->Pointer.Release(released);
    if (this->IsHit())
    {
      EXPECT_EQ(this->Ruler->State, zvRulerWidget::Start);
      EXPECT_THAT(told.Names(), ElementsAre("EndInteractionEvent"));
      EXPECT_EQ(behind.Count(vtkCommand::LeftButtonReleaseEvent), 0);
      EXPECT_EQ(behind.Count(vtkCommand::MiddleButtonReleaseEvent), 0);
      EXPECT_EQ(this->Ruler->LineActor->GetProperty(), this->Ruler->GetLineProperty());
      EXPECT_EQ(this->Ruler->PointWidget->GetEnabled(), 0);
      EXPECT_EQ(this->Ruler->PointWidget1->GetEnabled(), 1);
      EXPECT_EQ(this->Ruler->PointWidget2->GetEnabled(), 1);
      EXPECT_EQ(this->Ruler->CurrentPointWidget, nullptr);
      this->ExpectTheScreenIsCurrent();
    }
    else
    {
      EXPECT_EQ(this->Ruler->State, zvRulerWidget::Outside);
      EXPECT_THAT(told.Events(), IsEmpty());
      EXPECT_EQ(behind.Count(vtkCommand::LeftButtonReleaseEvent) +
          behind.Count(vtkCommand::MiddleButtonReleaseEvent),
        1);
    }
  }
}

TEST_P(RulerWidgetMousePress, ADragAsksForQuickPictures)
{
  vtkRenderWindowInteractor* interactor = this->Scene.Interactor();
  vtkRenderWindow* window = this->Scene.Window();
  ASSERT_NE(interactor->GetDesiredUpdateRate(), interactor->GetStillUpdateRate());
  this->Enable();
  window->SetDesiredUpdateRate(0.5);
  this->Pointer.Press(GetParam().Button, this->At());
  EXPECT_EQ(
    window->GetDesiredUpdateRate(), this->IsHit() ? interactor->GetDesiredUpdateRate() : 0.5);
  this->Pointer.Release(GetParam().Button);
  EXPECT_EQ(window->GetDesiredUpdateRate(), this->IsHit() ? interactor->GetStillUpdateRate() : 0.5);
}

namespace
{
/// What an event brings about in a state.
struct Answer
{
  int Next; // the state, or AsBefore
  std::vector<std::string> Told;
  bool IsAborted; // nobody behind the ruler sees the event
  int Renders;    // 0, 1 for one or more, or AnyNumber
};

constexpr int AsBefore = -1;
constexpr int AnyNumber = -1;
}

TEST_F(RulerWidgetMouse, AnswersEachEventInEachStateAsTheTableSays)
{
  struct Row
  {
    const char* Event;
    std::function<void()> Do;
    Answer InADrag;
    Answer Otherwise;
  };
  this->Scene.Renderer()->SetViewport(0.0, 0.0, 0.9, 1.0);
  this->Scene.Render();
  const Display out{ { 380, 200 } };
  const Answer grabsEnd{ zvRulerWidget::MovingHandle, { "StartInteractionEvent" }, true, 1 };
  const Answer grabsLine{ zvRulerWidget::MovingLine, { "StartInteractionEvent" }, true, 1 };
  const Answer misses{ zvRulerWidget::Outside, {}, false, 0 };
  const Answer ends{ zvRulerWidget::Start, { "EndInteractionEvent" }, true, 1 };
  const Answer moves{ AsBefore, { "InteractionEvent" }, true, 1 };
  const Answer leftToOthers{ AsBefore, {}, false, 0 };
  const Answer renders{ AsBefore, {}, false, 1 };
  // A left press leaves the render to the cross, which may be at an end that was grabbed before.
  Answer grabsEndAgain = grabsEnd;
  Answer grabsLineAgain = grabsLine;
  grabsEndAgain.Renders = AnyNumber;
  grabsLineAgain.Renders = AnyNumber;
  const auto press = [this](zvtest::Button button, const Display& at)
  { return [this, button, at] { this->Pointer.Press(button, at); }; };
  const auto release = [this](zvtest::Button button)
  { return [this, button] { this->Pointer.Release(button, this->OnLine()); }; };
  const Row rows[] = {
    { "left press on an end", press(zvtest::Left, this->OnEnd2()), grabsEndAgain, grabsEnd },
    { "left press on the line", press(zvtest::Left, this->OnLine()), grabsLineAgain, grabsLine },
    { "left press beside", press(zvtest::Left, this->Beside()), misses, misses },
    { "left press outside", press(zvtest::Left, out), misses, misses },
    { "middle press on an end", press(zvtest::Middle, this->OnEnd2()), grabsLine, grabsLine },
    { "middle press on the line", press(zvtest::Middle, this->OnLine()), grabsLine, grabsLine },
    { "middle press beside", press(zvtest::Middle, this->Beside()), misses, misses },
    { "middle press outside", press(zvtest::Middle, out), misses, misses },
    { "right press", press(zvtest::Right, this->OnEnd2()), leftToOthers, leftToOthers },
    { "left release", release(zvtest::Left), ends, leftToOthers },
    { "middle release", release(zvtest::Middle), ends, leftToOthers },
    { "right release", release(zvtest::Right), leftToOthers, leftToOthers },
    { "wheel forward", [this] { this->Pointer.WheelForward(this->OnLine()); }, renders, renders },
    { "wheel backward", [this] { this->Pointer.WheelBackward(this->OnLine()); }, renders, renders },
    { "move", [this] { this->Pointer.MoveTo(Plus(this->OnLine(), 12, 7)); }, moves, leftToOthers },
  };
  // How each state is come to.
  const std::vector<std::pair<int, std::function<void()>>> states = {
    { zvRulerWidget::Start, [] {} },
    { zvRulerWidget::MovingHandle, press(zvtest::Left, this->OnEnd1()) },
    { zvRulerWidget::MovingLine, press(zvtest::Left, this->OnLine()) },
    { zvRulerWidget::Scaling, [this] { this->Ruler->State = zvRulerWidget::Scaling; } },
    { zvRulerWidget::Outside, press(zvtest::Middle, this->Beside()) },
  };
  for (const auto& [state, comeTo] : states)
  {
    for (const Row& row : rows)
    {
      SCOPED_TRACE(std::string(row.Event) + " in state " + std::to_string(state));
      this->Ruler = vtkSmartPointer<OpenRuler>::New();
      this->Ruler->SetInteractor(this->Scene.Interactor());
      this->Ruler->SetPoint1(-5, 0, 0);
      this->Ruler->SetPoint2(5, 0, 0);
      this->Enable();
      comeTo();
      ASSERT_EQ(this->Ruler->State, state);
      zvtest::EventRecorder told;
      zvtest::EventRecorder behind;
      zvtest::EventRecorder frames;
      told.Watch(this->Ruler, zvtest::WidgetEvents);
      behind.Watch(this->Scene.Interactor(), MouseEvents, 0.1f);
      frames.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
      row.Do();
      const bool isIdle = state == zvRulerWidget::Start || state == zvRulerWidget::Outside;
      const Answer& answer = isIdle ? row.Otherwise : row.InADrag;
      EXPECT_EQ(this->Ruler->State, answer.Next == AsBefore ? state : answer.Next);
      EXPECT_EQ(told.Names(), answer.Told);
      EXPECT_EQ(behind.Events().empty(), answer.IsAborted);
      if (answer.Renders != AnyNumber)
      {
        EXPECT_EQ(frames.Events().empty() ? 0 : 1, answer.Renders);
      }
    }
  }
}

TEST_F(RulerWidgetMouse, AMissWithTheLeftButtonLetsAnEndGoAndWithTheMiddleKeepsItByDesign)
{
  this->Enable();
  this->Pointer.Press(zvtest::Left, this->OnEnd1());
  this->Pointer.Press(zvtest::Middle, this->Beside());
  EXPECT_EQ(this->Ruler->State, zvRulerWidget::Outside);
  EXPECT_EQ(this->Ruler->CurrentHandle, this->Ruler->Handle[0].Get());
  EXPECT_EQ(this->Ruler->Handle[0]->GetProperty(), this->Ruler->GetSelectedHandleProperty());
  this->Pointer.Press(zvtest::Left, this->Beside());
  EXPECT_EQ(this->Ruler->CurrentHandle, nullptr);
  EXPECT_EQ(this->Ruler->Handle[0]->GetProperty(), this->Ruler->GetHandleProperty());
}

TEST_F(RulerWidgetMouse, MovesAndReleasesAtRestDoNothing)
{
  this->Enable();
  this->Watch();
  this->Pointer.MoveTo(this->OnEnd1());
  this->Pointer.Release(zvtest::Left);
  this->Pointer.Release(zvtest::Middle);
  EXPECT_EQ(this->Ruler->State, zvRulerWidget::Start);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  EXPECT_EQ(this->Behind.Events().size(), 3u);
  EXPECT_THAT(this->Renders.Events(), IsEmpty());
}

TEST_F(RulerWidgetMouse, ThePressIsToldBeforeTheStateChangesAndTheCrossIsGrabbed)
{
  this->Enable();
  std::vector<std::string> order;
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Ruler, { vtkCommand::StartInteractionEvent },
    [&](const auto&) { order.push_back("ruler in state " + std::to_string(this->Ruler->State)); });
  recorder.Watch(this->Ruler->PointWidget2, { vtkCommand::StartInteractionEvent },
    [&](const auto&)
    { order.push_back("cross, ruler in state " + std::to_string(this->Ruler->State)); });
  recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent },
    [&](const auto&) { order.emplace_back("render"); });
  this->Pointer.Press(zvtest::Left, this->OnEnd2());
  EXPECT_THAT(order, ElementsAre("ruler in state 0", "cross, ruler in state 1", "render"));
}

TEST_F(RulerWidgetMouse, TheStepsOfADragComeInThisOrder)
{
  struct Row
  {
    Display From;
    zvPointWidget* Cross;
    std::vector<std::string> Order;
  };
  this->Enable();
  const Row rows[] = {
    { this->OnEnd2(), this->Ruler->PointWidget2,
      { "ruler StartInteractionEvent", "cross StartInteractionEvent", "render",
        "cross InteractionEvent", "render", "ruler InteractionEvent", "cross EndInteractionEvent",
        "render", "ruler EndInteractionEvent" } },
    // The body's cross comes and goes with the drag.
    { this->OnLine(), this->Ruler->PointWidget,
      { "ruler StartInteractionEvent", "cross EnableEvent", "render", "cross StartInteractionEvent",
        "render", "cross InteractionEvent", "render", "ruler InteractionEvent",
        "cross EndInteractionEvent", "render", "cross DisableEvent", "render",
        "ruler EndInteractionEvent" } },
  };
  for (const Row& row : rows)
  {
    this->Ruler->SetPoint1(-5, 0, 0);
    this->Ruler->SetPoint2(5, 0, 0);
    std::vector<std::string> order;
    zvtest::EventRecorder recorder;
    recorder.Watch(this->Ruler, zvtest::WidgetEvents,
      [&](const zvtest::RecordedEvent& event)
      {
        order.push_back("ruler " + event.Name);
        if (event.Id == vtkCommand::EndInteractionEvent)
        {
          EXPECT_EQ(this->Ruler->State, zvRulerWidget::Start);
          EXPECT_EQ(this->Ruler->CurrentHandle, nullptr);
          EXPECT_EQ(this->Ruler->CurrentPointWidget, nullptr);
          EXPECT_EQ(this->Ruler->LineActor->GetProperty(), this->Ruler->GetLineProperty());
        }
      });
    recorder.Watch(row.Cross, zvtest::WidgetEvents,
      [&](const zvtest::RecordedEvent& event) { order.push_back("cross " + event.Name); });
    recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent },
      [&](const zvtest::RecordedEvent&) { order.emplace_back("render"); });
    this->Pointer.Drag(zvtest::Left, row.From, Plus(row.From, 8, 6));
    EXPECT_EQ(order, row.Order);
  }
}

TEST_F(RulerWidgetMouse, ObserversOfACrossSeeTheRulerFollowAtPriorityZero)
{
  this->Enable();
  std::vector<double> seen;
  zvtest::EventRecorder recorder;
  const auto look = [&](const zvtest::RecordedEvent&) { seen.push_back(this->End2()[1]); };
  recorder.Watch(this->Ruler->PointWidget2, { vtkCommand::InteractionEvent }, look, 0.1f);
  recorder.Watch(this->Ruler->PointWidget2, { vtkCommand::InteractionEvent }, look, -0.1f);
  this->Pointer.Drag(zvtest::Left, this->OnEnd2(), Plus(this->OnEnd2(), 0, 30));
  ASSERT_EQ(seen.size(), 2u);
  EXPECT_EQ(seen[0], 0.0);
  EXPECT_GT(seen[1], 2.0);
}

TEST_F(RulerWidgetMouse, AnEndIsDraggedWithTheMouse)
{
  this->Enable();
  const Display to = Plus(this->OnEnd1(), 30, 60);
  this->Pointer.Press(zvtest::Left, this->OnEnd1());
  EXPECT_EQ(this->Ruler->CurrentHandle, this->Ruler->Handle[0].Get());
  EXPECT_EQ(this->Ruler->CurrentPointWidget, this->Ruler->PointWidget1);
  EXPECT_EQ(this->Ruler->Handle[0]->GetProperty(), this->Ruler->GetSelectedHandleProperty());
  EXPECT_EQ(this->Ruler->PointWidget->GetEnabled(), 0);
  const Display from = this->Pointer.Position();
  this->Pointer.MoveTo(to);
  this->ExpectEnds(Sum({ { -5, 0, 0 } }, this->MotionOf(from, to)), { { 5, 0, 0 } });
  this->Pointer.Release(zvtest::Left);
  EXPECT_EQ(this->Ruler->CurrentHandle, nullptr);
  EXPECT_EQ(this->Ruler->Handle[0]->GetProperty(), this->Ruler->GetHandleProperty());
}

TEST_F(RulerWidgetMouse, ADraggedEndItsLineAndItsLabelAreOnScreenInTheNewPlace)
{
  this->Ruler->SetHandleSize(0.02);
  this->Enable();
  this->Pointer.Press(zvtest::Left, this->OnEnd2());
  const Display to = this->Pointer.At({ { 2, 6, 0 } });
  this->Pointer.MoveTo(to);
  const zvtest::Picture picture = this->Scene.Look();
  const World end = this->End2();
  const double half = WidthOf(this->Ruler->PointWidget2) / 2.0;
  EXPECT_TRUE(picture.HasNear(Red, this->Pointer.At({ { end[0], end[1] + 0.8 * half, 0 } }), 1));
  EXPECT_TRUE(picture.HasNear(Red, this->Pointer.At({ { end[0] + 0.8 * half, end[1], 0 } }), 1));
  EXPECT_TRUE(picture.HasNear(Red, this->Pointer.At({ { (end[0] - 5) / 2, end[1] / 2, 0 } }), 1));
  EXPECT_EQ(picture.Count(Red, zvtest::Region::Around(this->OnEnd2(), 15)), 0);
  // The first digit is some blanks away from the end.
  const Display label = this->Pointer.At(end);
  EXPECT_GT(picture.Count(Red, { Plus(label, 22, 0), Plus(label, 90, 14) }), 40);
}

TEST_F(RulerWidgetMouse, TheLabelShowsTheLengthFromTheFirstMoveOn)
{
  this->Enable();
  EXPECT_EQ(this->Label(), " ");
  this->Pointer.Press(zvtest::Left, this->OnEnd2());
  EXPECT_EQ(this->Label(), " ");
  this->Pointer.MoveTo(this->OnEnd2()); // where it is
  EXPECT_EQ(this->Label(), "     10.00 mm");
  EXPECT_THAT(ColorOf(this->Ruler->ScaleFollower->GetPosition()), ElementsAre(5, 0, 0));
  this->Pointer.MoveTo(Plus(this->OnEnd2(), -40, 7));
  const World end = this->End2();
  char text[32];
  std::snprintf(text, sizeof(text), "%10.2f mm", std::hypot(end[0] + 5, end[1]));
  EXPECT_EQ(this->Label(), text);
  EXPECT_NE(this->Label(), "     10.00 mm");
  EXPECT_THAT(
    ColorOf(this->Ruler->ScaleFollower->GetPosition()), ElementsAre(end[0], end[1], end[2]));
  this->Pointer.Release(zvtest::Left);
  // As large as the ends are caught, in single precision.
  const double size = static_cast<float>(this->Ruler->HandleGeometry[0]->GetRadius());
  EXPECT_THAT(ColorOf(this->Ruler->ScaleFollower->GetScale()), ElementsAre(size, size, size));
  this->Ruler->SetPoint1(0, 0, 0);
  EXPECT_EQ(this->Label(), text);
}

TEST_F(RulerWidgetMouse, TheLabelRoundsToHundredthsInTenColumns)
{
  struct Row
  {
    World End2;
    const char* Text;
  };
  const Row rows[] = { { { { 7.3456, 0, 0 } }, "     12.35 mm" },
    { { { -5, 0, 0 } }, "      0.00 mm" }, { { { 12345673.5, 0, 0 } }, "12345678.50 mm" } };
  for (const Row& row : rows)
  {
    this->Ruler->SetEnabled(0);
    this->Ruler->SetPoint2(row.End2[0], row.End2[1], row.End2[2]);
    this->Enable();
    this->Pointer.Press(zvtest::Left, this->OnEnd1());
    this->Pointer.MoveTo(this->OnEnd1());
    this->Pointer.Release(zvtest::Left);
    EXPECT_EQ(this->Label(), row.Text);
  }
}

TEST_F(RulerWidgetMouse, ALabelThatWasTakenOutComesBackWithTheDrag)
{
  this->Enable();
  this->Scene.Renderer()->RemoveActor(this->Ruler->ScaleFollower);
  this->Pointer.Press(zvtest::Left, this->OnEnd2());
  this->Pointer.MoveTo(Plus(this->OnEnd2(), 3, 3));
  EXPECT_TRUE(this->Scene.Renderer()->HasViewProp(this->Ruler->ScaleFollower));
  this->ExpectTheScreenIsCurrent();
}

TEST_F(RulerWidgetMouse, TheBodyMovesBothEnds)
{
  for (zvtest::Button button : { zvtest::Left, zvtest::Middle })
  {
    SCOPED_TRACE(button);
    this->Ruler->SetPoint1(-5, 0, 0);
    this->Ruler->SetPoint2(5, 0, 0);
    this->Enable();
    const Display from = this->OnLine();
    const Display to = Plus(from, -20, 45);
    this->Pointer.Press(button, from);
    EXPECT_EQ(this->Ruler->LineActor->GetProperty(), this->Ruler->GetSelectedLineProperty());
    EXPECT_EQ(this->Ruler->CurrentPointWidget, this->Ruler->PointWidget);
    EXPECT_EQ(this->Ruler->PointWidget->GetEnabled(), 1);
    EXPECT_EQ(this->PropsInView(), 5);
    this->Pointer.MoveTo(to);
    const World motion = this->MotionOf(from, to);
    this->ExpectEnds(Sum({ { -5, 0, 0 } }, motion), Sum({ { 5, 0, 0 } }, motion));
    ExpectNear(PositionOf(this->Ruler->PointWidget),
      { { this->Ruler->LastPosition[0], this->Ruler->LastPosition[1],
        this->Ruler->LastPosition[2] } });
    this->Pointer.Release(button);
    EXPECT_EQ(this->PropsInView(), 4);
  }
}

TEST_F(RulerWidgetMouse, TheMiddleButtonMovesTheWholeLineByAnEndToo)
{
  this->Enable();
  for (int round = 0; round < 2; ++round)
  {
    const World end1 = this->End1();
    const World end2 = this->End2();
    const Display from = this->Pointer.At(end2);
    const Display to = Plus(from, -25, 30);
    this->Pointer.Press(zvtest::Middle, from);
    EXPECT_EQ(this->Ruler->CurrentHandle, nullptr);
    EXPECT_EQ(this->Ruler->Handle[0]->GetProperty(), this->Ruler->GetSelectedHandleProperty());
    EXPECT_EQ(this->Ruler->Handle[1]->GetProperty(), this->Ruler->GetSelectedHandleProperty());
    this->Pointer.MoveTo(to);
    const World motion = this->MotionOf(from, to);
    this->ExpectEnds(Sum(end1, motion), Sum(end2, motion), 1e-6);
    this->Pointer.Release(zvtest::Middle);
    EXPECT_EQ(this->Ruler->Handle[0]->GetProperty(), this->Ruler->GetHandleProperty());
    EXPECT_EQ(this->Ruler->Handle[1]->GetProperty(), this->Ruler->GetHandleProperty());
  }
}

TEST_F(RulerWidgetMouse, TheMiddlePressReachesTheCrossAsALeftOneByDesign)
{
  class NotingCross : public zvPointWidget
  {
  public:
    void OnLeftButtonDown() override { ++this->LeftPresses; }
    void OnMiddleButtonDown() override { ++this->MiddlePresses; }
    void OnLeftButtonUp() override { ++this->LeftReleases; }
    void OnMiddleButtonUp() override { ++this->MiddleReleases; }
    int LeftPresses = 0;
    int MiddlePresses = 0;
    int LeftReleases = 0;
    int MiddleReleases = 0;
  };
  auto cross = vtkSmartPointer<NotingCross>::Take(new NotingCross);
  this->Ruler->PointWidget->RemoveObserver(this->Ruler->PWCallback);
  this->Ruler->PointWidget = cross;
  this->Ruler->PWCallback->PointWidget = cross;
  this->Enable();
  this->Watch();
  this->Pointer.Press(zvtest::Middle, this->OnLine());
  EXPECT_EQ(cross->LeftPresses, 1);
  // The cross shows itself once and would render once more; the ruler renders in any case.
  EXPECT_EQ(this->Renders.Events().size(), 2u);
  this->Pointer.Release(zvtest::Middle);
  EXPECT_EQ(cross->LeftReleases, 1);
  EXPECT_EQ(cross->MiddlePresses + cross->MiddleReleases, 0);
}

TEST_F(RulerWidgetMouse, TheRightButtonIsLeftToTheHost)
{
  this->Enable();
  this->Watch();
  for (const Display& position : { this->OnEnd1(), this->OnEnd2(), this->OnLine() })
  {
    this->ForgetWhatWasTold();
    this->Pointer.Press(zvtest::Right, position);
    this->Pointer.MoveTo(Plus(position, 20, 20));
    this->Pointer.Release(zvtest::Right);
    EXPECT_EQ(this->Ruler->State, zvRulerWidget::Start);
    EXPECT_THAT(this->Told.Events(), IsEmpty());
    EXPECT_EQ(this->Behind.Events().size(), 3u);
    EXPECT_THAT(this->Renders.Events(), IsEmpty());
  }
  this->ExpectEnds({ { -5, 0, 0 } }, { { 5, 0, 0 } });
}

TEST_F(RulerWidgetMouse, TheRightButtonDoesNotDisturbADrag)
{
  this->Enable();
  this->Pointer.Press(zvtest::Left, this->OnEnd2());
  const Display from = this->Pointer.Position();
  this->Pointer.Press(zvtest::Right, from);
  this->Pointer.Release(zvtest::Right);
  this->Pointer.MoveTo(Plus(from, 10, 30));
  this->ExpectEnds(
    { { -5, 0, 0 } }, Sum({ { 5, 0, 0 } }, this->MotionOf(from, Plus(from, 10, 30))));
}

TEST_F(RulerWidgetMouse, TheWheelSizesTheRulerAndIsLeftToTheHost)
{
  this->EnableAndClick();
  this->Watch();
  const double width = WidthOf(this->Ruler->PointWidget1);
  for (bool forward : { true, false })
  {
    this->ForgetWhatWasTold();
    this->Scene.Renderer()->GetActiveCamera()->Zoom(2.0);
    forward ? this->Pointer.WheelForward(this->Beside())
            : this->Pointer.WheelBackward(this->Beside());
    EXPECT_THAT(this->Told.Events(), IsEmpty());
    EXPECT_EQ(this->Behind.Events().size(), 1u);
    EXPECT_EQ(this->Renders.Events().size(), 2u);
    this->ExpectTheScreenIsCurrent();
  }
  EXPECT_NEAR(WidthOf(this->Ruler->PointWidget1), width / 4, 1e-9);
  EXPECT_NEAR(WidthOf(this->Ruler->PointWidget2), width / 4, 1e-9);
  EXPECT_NEAR(this->Ruler->HandleGeometry[0]->GetRadius(), width / 8, 1e-9);
  EXPECT_NEAR(this->Ruler->HandleGeometry[1]->GetRadius(), width / 8, 1e-9);
}

TEST_F(RulerWidgetMouse, CrossesKeepTheirSizeOnScreenThroughZoom)
{
  this->Ruler->SetHandleSize(0.03);
  this->Ruler->SetPoint1(-3, 0, 0);
  this->Ruler->SetPoint2(3, 0, 0);
  this->Enable();
  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { -3, 0, 0 } }));
  this->Pointer.Release(zvtest::Left);
  const auto heightOfCross = [this]()
  {
    const zvtest::Picture picture = this->Scene.Look();
    const Display center = this->Pointer.At({ { 3, 0, 0 } });
    int height = 0;
    for (int y = -40; y <= 40; ++y)
    {
      height += picture.HasNear(Red, Plus(center, 0, y), 1) ? 1 : 0;
    }
    return height;
  };
  const int height = heightOfCross();
  EXPECT_NEAR(height, 2 * 0.03 * std::sqrt(2.0) * 400, 5);
  for (double factor : { 1.5, 1.2, 0.5, 0.4 })
  {
    this->Scene.Renderer()->GetActiveCamera()->Zoom(factor);
    this->Ruler->UpdateScaleLabel();
    EXPECT_NEAR(heightOfCross(), height, 2) << factor;
  }
}

TEST_F(RulerWidgetMouse, UpdatingTheScaleLeavesTextAndEndsAndRendersOnce)
{
  this->EnableAndClick();
  this->Pointer.Press(zvtest::Left, this->OnEnd2());
  this->Pointer.MoveTo(this->OnEnd2());
  this->Pointer.Release(zvtest::Left);
  this->Ruler->SetPoint2(4, 0, 0);
  this->Watch();
  this->Scene.Renderer()->GetActiveCamera()->Zoom(3.0);
  this->Ruler->UpdateScaleLabel();
  EXPECT_EQ(this->Renders.Events().size(), 1u);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  EXPECT_EQ(this->Label(), "     10.00 mm");
  EXPECT_THAT(ColorOf(this->Ruler->ScaleFollower->GetPosition()), ElementsAre(5, 0, 0));
  // A hundredth of the diagonal of 565.7 pixels at 11.5 * 3 pixels a millimetre.
  const double size = 5.657 / (3 * 400 / (2 * std::sqrt(300.0)));
  EXPECT_NEAR(this->Ruler->LabelScale, size, 1e-4);
  EXPECT_DOUBLE_EQ(this->Ruler->ScaleFollower->GetScale()[0], this->Ruler->LabelScale);
  EXPECT_NEAR(WidthOf(this->Ruler->PointWidget2), 2 * size, 2e-4);
  this->ExpectEnds({ { -5, 0, 0 } }, { { 4, 0, 0 } });
}

TEST_F(RulerWidgetMouse, BeforeTheFirstPressSizesComeFromThePlacedBounds)
{
  this->Ruler->PlaceWidget(-50, 50, -50, 50, -50, 50);
  this->Enable();
  this->Ruler->UpdateScaleLabel();
  EXPECT_NEAR(this->Ruler->LabelScale, 0.01 * std::sqrt(30000.0), 1e-9);
  EXPECT_NEAR(WidthOf(this->Ruler->PointWidget1), 0.02 * std::sqrt(30000.0), 1e-9);
}

TEST_F(RulerWidgetMouse, TheScaleIsUpdatedWithoutAnInteractor)
{
  vtkNew<OpenRuler> lone;
  lone->SetPoint1(30, 40, 50);
  lone->UpdateScaleLabel();
  EXPECT_NEAR(lone->LabelScale, 0.01 * std::sqrt(3.0), 1e-12);
  ExpectNear(PositionOf(lone->PointWidget1), { { 30, 40, 50 } });
  EXPECT_NEAR(WidthOf(lone->PointWidget1), 0.02 * std::sqrt(3.0), 1e-12);
}

TEST_F(RulerWidgetMouse, AClampedBodyDragLeavesTheLineAndSnapsItsCrossBack)
{
  this->Ruler->PlaceWidget(-6, 6, -6, 6, -6, 6);
  this->Ruler->ClampToBoundsOn();
  this->Enable();
  const Display from = this->OnLine();
  this->Pointer.Press(zvtest::Left, from);
  const World start = PositionOf(this->Ruler->PointWidget);
  this->Pointer.MoveTo(Plus(from, 20, 0)); // 1.7 mm, one too far
  this->ExpectEnds({ { -5, 0, 0 } }, { { 5, 0, 0 } });
  ExpectNear(PositionOf(this->Ruler->PointWidget), start);
  this->ExpectTheScreenIsCurrent();
  this->Pointer.MoveTo(Plus(from, 15, 5)); // from there back and up
  const World motion = this->MotionOf(Plus(from, 20, 0), Plus(from, 15, 5));
  this->ExpectEnds(Sum({ { -5, 0, 0 } }, motion), Sum({ { 5, 0, 0 } }, motion));
  this->Ruler->ClampToBoundsOff();
  this->Pointer.MoveTo(Plus(from, 100, 5));
  EXPECT_GT(this->End2()[0], 6.0);
}

TEST_F(RulerWidgetMouse, EndsAreNeverClamped)
{
  this->Ruler->PlaceWidget(-6, 6, -6, 6, -6, 6);
  this->Ruler->ClampToBoundsOn();
  this->Enable();
  this->Pointer.Drag(zvtest::Left, this->OnEnd2(), Plus(this->OnEnd2(), 40, 0));
  EXPECT_GT(this->End2()[0], 8.0);
}

TEST_F(RulerWidgetMouse, SetLinePositionCountsFromTheLastOne)
{
  World x{ { 1, 2, 3 } };
  this->Ruler->SetLinePosition(x.data());
  this->ExpectEnds({ { -4, 2, 3 } }, { { 6, 2, 3 } });
  x = { { 1, 0, 3 } };
  this->Ruler->SetLinePosition(x.data());
  this->ExpectEnds({ { -4, 0, 3 } }, { { 6, 0, 3 } });
  ExpectNear({ { this->Ruler->LastPosition[0], this->Ruler->LastPosition[1],
               this->Ruler->LastPosition[2] } },
    x);
}

TEST_F(RulerWidgetMouse, APressInTheSphereButOffTheCrossTellsAndMovesNothing)
{
  this->EnableAndClick();
  const Display off = Plus(this->OnEnd2(), 10, 10);
  this->Watch();
  this->Pointer.Press(zvtest::Left, off);
  EXPECT_EQ(this->Ruler->State, zvRulerWidget::MovingHandle);
  this->Pointer.MoveTo(Plus(off, 20, 20));
  EXPECT_THAT(this->Told.Names(), ElementsAre("StartInteractionEvent", "InteractionEvent"));
  EXPECT_THAT(this->Renders.Events(), IsEmpty());
  EXPECT_EQ(this->Label(), "     10.00 mm");
  this->ExpectEnds({ { -5, 0, 0 } }, { { 5, 0, 0 } });
  this->Pointer.Release(zvtest::Left);
  EXPECT_EQ(this->Ruler->State, zvRulerWidget::Start);
}

TEST_F(RulerWidgetMouse, AnArmThatReachesOutOfTheSphereIsTheCrossesOwnByDesign)
{
  this->Enable();
  vtkCamera* camera = this->Scene.Renderer()->GetActiveCamera();
  camera->SetPosition(5, 0, camera->GetPosition()[2]);
  camera->SetFocalPoint(5, 0, 0);
  camera->Zoom(6.0); // a cross has 1 mm to each side as long as nobody updates the scale
  this->Scene.Render();
  const Display onArm = this->Pointer.At({ { 5, 0.7, 0 } });
  this->Watch();
  this->Pointer.Press(zvtest::Left, onArm);
  EXPECT_EQ(this->Ruler->State, zvRulerWidget::Outside);
  this->Pointer.MoveTo(Plus(onArm, 30, 20));
  this->Pointer.Release(zvtest::Left);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  EXPECT_THAT(this->Behind.Events(), IsEmpty());
  this->ExpectEnds(
    { { -5, 0, 0 } }, Sum({ { 5, 0, 0 } }, this->MotionOf(onArm, Plus(onArm, 30, 20))));
  EXPECT_EQ(this->Label(), " ");
}

TEST_F(RulerWidgetMouse, ShiftKeepsADragOnOneAxis)
{
  this->Enable();
  this->Pointer.Press(zvtest::Left, this->OnEnd2(), zvtest::Shift);
  for (int step = 1; step <= 8; ++step)
  {
    this->Pointer.MoveTo(Plus(this->OnEnd2(), step * 2, step * 6), zvtest::Shift);
    if (step <= 4)
    {
      this->ExpectEnds({ { -5, 0, 0 } }, { { 5, 0, 0 } });
    }
  }
  EXPECT_DOUBLE_EQ(this->End2()[0], 5.0);
  EXPECT_GT(this->End2()[1], 1.5);
}

TEST_F(RulerWidgetMouse, ScalingIsForSubclasses)
{
  this->Enable();
  this->Ruler->State = zvRulerWidget::Scaling;
  this->Pointer.MoveTo({ { 200, 200 } });
  this->Ruler->SetPoint1(-5, 0, 0);
  this->Ruler->SetPoint2(5, 0, 0);
  this->Watch();
  const Display from = this->Pointer.Position();
  const Display up = Plus(from, 0, 20);
  this->Pointer.MoveTo(up);
  const double grown = 5 * (1 + this->MotionOf(from, up)[1] / 10);
  this->ExpectEnds({ { -grown, 0, 0 } }, { { grown, 0, 0 } });
  EXPECT_THAT(this->Told.Names(), ElementsAre("InteractionEvent"));
  EXPECT_THAT(this->Behind.Events(), IsEmpty());
  EXPECT_EQ(this->Renders.Events().size(), 1u);
  this->ExpectTheScreenIsCurrent();
  const Display down = Plus(up, 15, 0);
  this->Pointer.MoveTo(down);
  const double shrunk = grown * (1 - this->MotionOf(up, down)[0] / (2 * grown));
  this->ExpectEnds({ { -shrunk, 0, 0 } }, { { shrunk, 0, 0 } });
}

TEST_F(RulerWidgetMouse, ALineWithoutLengthIsNotScaled)
{
  this->Ruler->SetPoint2(-5, 0, 0);
  World from{ { 0, 0, 0 } };
  World to{ { 1, 0, 0 } };
  this->Ruler->Scale(from.data(), to.data(), 0, 100);
  this->ExpectEnds({ { -5, 0, 0 } }, { { -5, 0, 0 } });
}

TEST_F(RulerWidgetMouse, ARulerJustPlacedByAClickIsPulledOutByItsEnd1)
{
  this->Ruler->SetPoint1(2, 3, 0);
  this->Ruler->SetPoint2(2, 3, 0);
  this->Enable();
  const Display from = this->Pointer.At({ { 2, 3, 0 } });
  this->Pointer.Drag(zvtest::Left, from, Plus(from, 50, 0));
  ExpectNear(this->End2(), { { 2, 3, 0 } });
  EXPECT_GT(this->End1()[0], 6.0);
  EXPECT_NE(this->Label(), " ");
}

TEST_F(RulerWidgetMouse, WorksInPerspective)
{
  this->Scene.Renderer()->GetActiveCamera()->ParallelProjectionOff();
  this->Scene.Render();
  this->Enable();
  const Display from = this->OnEnd1();
  const Display to = Plus(from, -10, 40);
  this->Pointer.Press(zvtest::Left, from);
  this->Pointer.MoveTo(to);
  EXPECT_LT(std::abs(this->Pointer.At(this->End1())[1] - to[1]), 3);
  this->ExpectTheScreenIsCurrent();
  this->Pointer.Release(zvtest::Left);
}
