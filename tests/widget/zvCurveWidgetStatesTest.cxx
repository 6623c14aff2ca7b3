// The table of states and events of the widgets that draw a curve, driven by the interactor's
// events.
#include "zvCurveKinds.h"

#include <string>
#include <vector>

using zvtest::World;

namespace
{
using Names = std::vector<std::string>;

/// What a gesture brings about, in a state in which the widget takes it.
struct Answer
{
  int Next;       // the state, or AsBefore
  Names Told;     // to observers of the widget, in order
  bool IsAborted; // nobody behind the widget sees the event
  int Renders;    // at least
};

constexpr int AsBefore = -1;

enum class Gesture
{
  LeftOnHandle,
  LeftOnLine,
  LeftOnNothing,
  LeftOnNothingOfClosed,
  MiddleOnHandle,
  MiddleOnLine,
  MiddleOnNothing,
  LeftRelease,
  MiddleRelease,
  RightPress,
  RightRelease,
  WheelForward,
  WheelBackward,
  Move
};

/// The table of states and events.
template <class Kind>
Answer AnswerTo(Gesture gesture, int state)
{
  using Widget = zvLassoWidget; // the numbers of the states are the same for all
  const Answer leftToOthers{ AsBefore, {}, false, 0 };
  const bool isLocked = Kind::CanBeLocked && state == Widget::Locked;
  const bool isIdle = state == Widget::Start || state == Widget::Outside;
  switch (gesture)
  {
    case Gesture::LeftOnHandle:
    case Gesture::LeftOnLine:
      return isLocked ? leftToOthers
                      : Answer{ Widget::Moving, { "StartInteractionEvent" }, true, 1 };
    case Gesture::LeftOnNothing:
      if (!isLocked && Kind::IsDrawnByPresses)
      {
        return { Widget::Placing, { "StartInteractionEvent" }, true, 2 };
      }
      return isLocked ? leftToOthers : Answer{ Widget::Outside, {}, false, 0 };
    case Gesture::LeftOnNothingOfClosed:
      return isLocked ? leftToOthers : Answer{ Widget::Outside, {}, false, 0 };
    case Gesture::MiddleOnHandle:
    case Gesture::MiddleOnLine:
      return { Widget::Moving, { "StartInteractionEvent" }, true, 1 };
    case Gesture::MiddleOnNothing:
      return { Widget::Outside, {}, false, 0 };
    case Gesture::LeftRelease:
      return isIdle || isLocked ? leftToOthers
                                : Answer{ Widget::Start, { "EndInteractionEvent" }, true, 1 };
    case Gesture::MiddleRelease:
      return isIdle ? leftToOthers : Answer{ Widget::Start, { "EndInteractionEvent" }, true, 1 };
    case Gesture::Move:
      return isIdle || isLocked ? leftToOthers
                                : Answer{ AsBefore, { "InteractionEvent" }, true, 1 };
    case Gesture::WheelForward:
    case Gesture::WheelBackward:
      return { AsBefore, {}, false, Kind::RendersPerTurnOfTheWheel };
    default:
      return leftToOthers;
  }
}

void Do(Gesture gesture, zvtest::Mouse& mouse, const World& handle, const World& onLine)
{
  const zvtest::Display nothing = mouse.At({ { 0, 0, 0 } });
  switch (gesture)
  {
    case Gesture::LeftOnHandle:
      return mouse.Press(zvtest::Left, mouse.At(handle));
    case Gesture::LeftOnLine:
      return mouse.Press(zvtest::Left, mouse.At(onLine));
    case Gesture::LeftOnNothing:
    case Gesture::LeftOnNothingOfClosed:
      return mouse.Press(zvtest::Left, nothing);
    case Gesture::MiddleOnHandle:
      return mouse.Press(zvtest::Middle, mouse.At(handle));
    case Gesture::MiddleOnLine:
      return mouse.Press(zvtest::Middle, mouse.At(onLine));
    case Gesture::MiddleOnNothing:
      return mouse.Press(zvtest::Middle, nothing);
    case Gesture::LeftRelease:
      return mouse.Release(zvtest::Left, nothing);
    case Gesture::MiddleRelease:
      return mouse.Release(zvtest::Middle, nothing);
    case Gesture::RightPress:
      return mouse.Press(zvtest::Right, mouse.At(handle));
    case Gesture::RightRelease:
      return mouse.Release(zvtest::Right, mouse.At(handle));
    case Gesture::WheelForward:
      return mouse.WheelForward(mouse.At(handle));
    case Gesture::WheelBackward:
      return mouse.WheelBackward(mouse.At(handle));
    case Gesture::Move:
      return mouse.MoveTo({ { 180, 210 } });
  }
}

template <class Widget>
class CurveWidgetStates : public zvtest::CurveWidgetTest<Widget>
{
};

TYPED_TEST_SUITE(CurveWidgetStates, zvtest::AllCurves, );
}

TYPED_TEST(CurveWidgetStates, AnswersEachGestureInEachStateAsTheTableSays)
{
  std::vector<int> states{ TypeParam::Start, TypeParam::Moving, TypeParam::Scaling,
    TypeParam::Spinning, TypeParam::Placing, TypeParam::Outside };
  if (TestFixture::Kind::CanBeLocked)
  {
    states.push_back(zvLassoWidget::Locked);
  }
  for (const int state : states)
  {
    for (int i = 0; i <= static_cast<int>(Gesture::Move); ++i)
    {
      const auto gesture = static_cast<Gesture>(i);
      const bool isClosed = gesture == Gesture::LeftOnNothingOfClosed;
      this->Curve =
        vtkSmartPointer<typename TestFixture::OpenWidget>::Take(TestFixture::OpenWidget::New());
      this->Curve->SetInteractor(this->Scene.Interactor());
      this->Show(this->Square(), isClosed);
      const World onLine = this->OnLine(0.5);
      this->Curve->SetState(state);
      zvtest::EventRecorder told;
      told.Watch(this->Curve, zvtest::WidgetEvents);
      zvtest::EventRecorder seenBehind;
      seenBehind.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
      zvtest::EventRecorder frames;
      frames.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });

      Do(gesture, this->Pointer, this->Square()[1], onLine);

      const Answer answer = AnswerTo<typename TestFixture::Kind>(gesture, state);
      const std::string where = "state " + std::to_string(state) + ", gesture " + std::to_string(i);
      EXPECT_EQ(this->Curve->GetState(), answer.Next == AsBefore ? state : answer.Next) << where;
      EXPECT_EQ(told.Names(), answer.Told) << where;
      EXPECT_EQ(seenBehind.Events().empty(), answer.IsAborted) << where;
      const int rendered = static_cast<int>(frames.Events().size());
      EXPECT_TRUE(answer.Renders == 0 ? rendered == 0 : rendered >= answer.Renders) << where;
      EXPECT_EQ(this->Curve->GetClosed(), isClosed ? 1 : 0) << where;
    }
  }
}
