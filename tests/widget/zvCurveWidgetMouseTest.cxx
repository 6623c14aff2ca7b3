// The widgets that draw a curve under the user's hand: what all of them do with each event, what is
// seen, and how they end.
#include "zvCurveKinds.h"

#include "zvEvents.h"
#include "zvParametricSpline.h"

#include "vtkMath.h"
#include "vtkPlaneSource.h"
#include "vtkPropCollection.h"

#include <gmock/gmock.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <vector>

using ::testing::ElementsAre;
using zvtest::World;

namespace
{
using Names = std::vector<std::string>;

const double NaN = std::numeric_limits<double>::quiet_NaN();

template <class Widget>
class CurveWidgetMouse : public zvtest::CurveWidgetTest<Widget>
{
};

TYPED_TEST_SUITE(CurveWidgetMouse, zvtest::AllCurves, );

/// Of the widgets to which a left press on nothing adds a handle.
template <class Widget>
class DrawnCurveWidgetMouse : public CurveWidgetMouse<Widget>
{
};

TYPED_TEST_SUITE(DrawnCurveWidgetMouse, zvtest::CurvesDrawnByPresses, );
}

// ---- What each event does

TYPED_TEST(CurveWidgetMouse, APressOutOfTheViewportLeavesTheEventToOthers)
{
  zvtest::SceneOptions options;
  options.Viewports = 2;
  class zvtest::Scene scene(options);
  zvtest::Mouse mouse(scene);
  this->Curve->SetInteractor(scene.Interactor());
  this->Curve->SetCurrentRenderer(scene.Renderer(0));
  this->Show(this->Square());
  std::vector<int> states{ TypeParam::Start, TypeParam::Moving, TypeParam::Scaling,
    TypeParam::Spinning, TypeParam::Placing, TypeParam::Outside };
  if (TestFixture::Kind::CanBeLocked)
  {
    states.push_back(zvLassoWidget::Locked);
  }
  for (const int state : states)
  {
    for (zvtest::Button button : { zvtest::Left, zvtest::Middle })
    {
      this->Curve->SetState(state);
      zvtest::EventRecorder recorder;
      recorder.Watch(this->Curve, zvtest::WidgetEvents);
      recorder.Watch(scene.Interactor(), zvtest::MouseEvents);
      recorder.Watch(scene.Interactor(), { vtkCommand::RenderEvent });
      mouse.Press(button, { { 300, 100 } });
      const bool isNotRead = state == zvLassoWidget::Locked && button == zvtest::Left;
      EXPECT_EQ(this->Curve->GetState(), isNotRead ? state : int(TypeParam::Outside)) << state;
      EXPECT_EQ(recorder.Events().size(), 1u) << state; // the press itself
    }
  }
  this->Curve->SetInteractor(nullptr);
}

TYPED_TEST(DrawnCurveWidgetMouse, APressOnTheFirstHandleOfAnOpenCurveClosesItAndDragsIt)
{
  this->Show(this->Square());
  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { -6, -6, 0 } }));
  EXPECT_EQ(this->Curve->GetClosed(), 1);
  EXPECT_EQ(this->Curve->IsClosed(), 1);
  EXPECT_EQ(this->Curve->GetState(), TypeParam::Moving);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, 0);
  this->Pointer.MoveTo(this->Pointer.At({ { -4, -4, 0 } }));
  EXPECT_NEAR(this->HandleAt(0)[0], -4.0, 2.0 * this->PixelSize());
  this->Pointer.Release(zvtest::Left);
  EXPECT_EQ(this->Curve->GetClosed(), 1);
}

TYPED_TEST(CurveWidgetMouse, APressOnTheFirstHandleOfAClosedCurveMovesIt)
{
  this->Show(this->Square(), true);
  this->Pointer.Drag(
    zvtest::Left, this->Pointer.At({ { -6, -6, 0 } }), this->Pointer.At({ { -3, -5, 0 } }));
  EXPECT_EQ(this->Curve->GetClosed(), 1);
  EXPECT_NEAR(this->HandleAt(0)[0], -3.0, 2.0 * this->PixelSize());
  EXPECT_NEAR(this->HandleAt(0)[1], -5.0, 2.0 * this->PixelSize());
}

TYPED_TEST(CurveWidgetMouse, APressOnTheLineWhoseHandleIsNotFoundAgainLeavesTheState)
{
  this->Show(this->Square());
  this->Curve->SetState(TypeParam::Placing);
  // The render in the middle of the press turns the view away.
  bool done = false;
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent },
    [this, &done](const zvtest::RecordedEvent&)
    {
      if (!done)
      {
        this->Scene.Renderer()->GetActiveCamera()->Pitch(40.0);
        this->Scene.Renderer()->GetActiveCamera()->Zoom(4.0);
        done = true;
      }
    });
  this->Pointer.Press(zvtest::Left, this->Pointer.At(this->OnLine(0.5)));
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 5);
  EXPECT_EQ(this->Curve->GetState(), TypeParam::Placing);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, -1);
}

TYPED_TEST(CurveWidgetMouse, APressOnNothingOfAClosedCurveIsLeftToOthers)
{
  this->Show(this->Square(), true);
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 0, 0, 0 } }));
  EXPECT_EQ(this->Curve->GetState(), TypeParam::Outside);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, -1);
  EXPECT_EQ(recorder.Names(), (Names{ "LeftButtonPressEvent" }));
}

TYPED_TEST(CurveWidgetMouse, AMiddlePressGrabsTheCurve)
{
  for (const bool onHandle : { true, false })
  {
    this->Show(this->Square(), true);
    this->Scene.Render();
    zvtest::EventRecorder recorder;
    this->RecordWithRenders(recorder);
    recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
    const World at = onHandle ? this->Square()[1] : this->OnLine(0.4);
    this->Pointer.Press(zvtest::Middle, this->Pointer.At(at));
    EXPECT_EQ(this->Curve->GetState(), TypeParam::Moving);
    EXPECT_TRUE(this->Curve->CurveGrabbed);
    EXPECT_EQ(this->Curve->ValidPick, 1);
    EXPECT_EQ(this->Curve->LineActor->GetProperty(), this->Curve->GetSelectedLineProperty());
    EXPECT_EQ(recorder.Names(), (Names{ "StartInteractionEvent", "RenderEvent" }));
    if (!onHandle)
    {
      EXPECT_NEAR(this->Curve->LastPickPosition[0], at[0], 3.0 * this->PixelSize());
      EXPECT_NEAR(this->Curve->LastPickPosition[1], at[1], 3.0 * this->PixelSize());
    }
    this->Pointer.Release(zvtest::Middle);
    EXPECT_EQ(this->Curve->GetState(), TypeParam::Start);
    EXPECT_FALSE(this->Curve->CurveGrabbed);
    EXPECT_EQ(this->Curve->LineActor->GetProperty(), this->Curve->GetLineProperty());
    EXPECT_EQ(recorder.Names(),
      (Names{ "StartInteractionEvent", "RenderEvent", "EndInteractionEvent", "RenderEvent" }));
  }
}

TYPED_TEST(CurveWidgetMouse, ADragAsksForQuickPictures)
{
  vtkRenderWindowInteractor* interactor = this->Scene.Interactor();
  ASSERT_NE(interactor->GetDesiredUpdateRate(), interactor->GetStillUpdateRate());
  this->Show(this->Square(), true);
  for (zvtest::Button button : { zvtest::Left, zvtest::Middle })
  {
    this->Pointer.Press(button, this->Pointer.At({ { 6, 6, 0 } }));
    EXPECT_EQ(this->Scene.Window()->GetDesiredUpdateRate(), interactor->GetDesiredUpdateRate());
    this->Pointer.Release(button);
    EXPECT_EQ(this->Scene.Window()->GetDesiredUpdateRate(), interactor->GetStillUpdateRate());
  }
}

TYPED_TEST(CurveWidgetMouse, ALeftPressAnywhereLetsTheGrabbedCurveGo)
{
  this->Show(this->Square(), true);
  for (const World& at : { World{ { 6, 6, 0 } }, World{ { 0, 0, 0 } } })
  {
    this->Curve->CurveGrabbed = true;
    this->Pointer.Press(zvtest::Left, this->Pointer.At(at));
    EXPECT_FALSE(this->Curve->CurveGrabbed);
    this->Pointer.Release(zvtest::Left);
  }
}

TYPED_TEST(CurveWidgetMouse, AMiddlePressOnAHandleTakesItsDepthFromTheLastPickOfTheLineByDesign)
{
  this->Show(this->Square(), true);
  this->Scene.Render();
  const World onLine = this->OnLine(0.4);
  const zvtest::Display at = this->Pointer.At(onLine);
  this->Scene.Interactor()->SetEventPosition(at[0], at[1]);
  EXPECT_EQ(this->Curve->IsClicked(), 1);
  EXPECT_THAT(this->Curve->LastPickPosition, ElementsAre(0.0, 0.0, 0.0)); // not by this
  this->Pointer.Press(zvtest::Middle, this->Pointer.At({ { 6, 6, 0 } }));
  EXPECT_NEAR(this->Curve->LastPickPosition[0], onLine[0], 3.0 * this->PixelSize());
  EXPECT_NEAR(this->Curve->LastPickPosition[1], onLine[1], 3.0 * this->PixelSize());
}

TYPED_TEST(CurveWidgetMouse, AMiddlePressOnNothingIsLeftToOthers)
{
  this->Show(this->Square());
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
  this->Curve->CurveGrabbed = true;
  this->Curve->HighlightLine(1);
  this->Pointer.Press(zvtest::Middle, this->Pointer.At({ { 0, 0, 0 } }));
  EXPECT_EQ(this->Curve->GetState(), TypeParam::Outside);
  EXPECT_FALSE(this->Curve->CurveGrabbed);
  EXPECT_EQ(this->Curve->LineActor->GetProperty(), this->Curve->GetLineProperty());
  EXPECT_EQ(recorder.Names(), (Names{ "MiddleButtonPressEvent" }));
}

TYPED_TEST(CurveWidgetMouse, AMiddleDragMovesTheWholeCurve)
{
  this->Show(this->Square(), true);
  const zvtest::Display from = this->Pointer.At({ { 6, -6, 0 } });
  this->Pointer.Drag(zvtest::Middle, from, { { from[0] - 20, from[1] + 10 } });
  const double pixel = this->PixelSize();
  std::vector<World> expected = this->Square();
  for (World& handle : expected)
  {
    handle[0] -= 20.0 * pixel;
    handle[1] += 10.0 * pixel;
  }
  this->ExpectHandles(expected, 1e-6);
}

TYPED_TEST(CurveWidgetMouse, InPerspectiveAGrabbedLineStaysUnderThePointer)
{
  zvtest::SceneOptions options;
  options.ParallelProjection = false;
  class zvtest::Scene scene(options);
  scene.LookAlong(2);
  const double bounds[6] = { -10, 10, -10, 10, -10, 10 };
  scene.ResetCamera(bounds);
  scene.Render();
  zvtest::Mouse mouse(scene);
  this->Curve->SetInteractor(scene.Interactor());
  this->Show({ { { -6, -6, 7 } }, { { 6, -6, 7 } }, { { 6, 6, 7 } } });
  const World grabbed = this->OnLine(0.4);
  const zvtest::Display from = mouse.At(grabbed);
  mouse.Press(zvtest::Middle, from);
  EXPECT_NEAR(this->Curve->LastPickPosition[2], 7.0, 0.1);
  mouse.MoveTo({ { from[0] - 50, from[1] + 40 } });
  const zvtest::Display to = mouse.At(this->OnLine(0.4));
  EXPECT_NEAR(to[0], from[0] - 50, 1);
  EXPECT_NEAR(to[1], from[1] + 40, 1);
  this->Curve->SetInteractor(nullptr);
}

TYPED_TEST(CurveWidgetMouse, ReleasesInStartAndOutsideAreLeftToOthers)
{
  this->Show(this->Square());
  for (int state : { TypeParam::Start, TypeParam::Outside })
  {
    this->Curve->SetState(state);
    zvtest::EventRecorder recorder;
    this->RecordWithRenders(recorder);
    recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
    this->Pointer.Release(zvtest::Left);
    this->Pointer.Release(zvtest::Middle);
    this->Pointer.MoveTo({ { 150, 150 } });
    EXPECT_EQ(this->Curve->GetState(), state);
    EXPECT_EQ(recorder.Names(),
      (Names{ "LeftButtonReleaseEvent", "MiddleButtonReleaseEvent", "MouseMoveEvent" }));
  }
  this->ExpectHandles(this->Square());
}

TYPED_TEST(DrawnCurveWidgetMouse, TheRightButtonAndTheWheelAreLeftToOthers)
{
  this->Show(this->Square());
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
  const zvtest::Display corner = this->Pointer.At({ { 6, 6, 0 } });
  this->Pointer.Press(zvtest::Right, corner);
  this->Pointer.Release(zvtest::Right);
  EXPECT_EQ(recorder.Names(), (Names{ "RightButtonPressEvent", "RightButtonReleaseEvent" }));
  recorder.Clear();
  this->Pointer.WheelForward(corner);
  this->Pointer.WheelBackward(corner);
  EXPECT_EQ(recorder.Names(),
    (Names{ "RenderEvent", "MouseWheelForwardEvent", "RenderEvent", "MouseWheelBackwardEvent" }));
  EXPECT_EQ(this->Curve->GetState(), TypeParam::Start);
}

TYPED_TEST(CurveWidgetMouse, EachMoveOfADragTellsThenRenders)
{
  for (int state :
    { TypeParam::Moving, TypeParam::Scaling, TypeParam::Spinning, TypeParam::Placing })
  {
    this->Show(this->Square());
    this->Curve->SetState(state);
    const vtkMTimeType spline = this->Curve->GetParametricSpline()->GetMTime();
    zvtest::EventRecorder recorder;
    this->RecordWithRenders(recorder);
    recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
    this->Pointer.MoveTo({ { 170, 160 } });
    EXPECT_EQ(recorder.Names(), (Names{ "InteractionEvent", "RenderEvent" }));
    EXPECT_EQ(this->Curve->GetState(), state);
    EXPECT_GT(this->Curve->GetParametricSpline()->GetMTime(), spline);
  }
}

TYPED_TEST(CurveWidgetMouse, ScalingFollowsTheMouse)
{
  this->Show(this->Square());
  this->Pointer.MoveTo({ { 200, 200 } });
  this->Curve->SetState(TypeParam::Scaling);
  this->Pointer.MoveTo({ { 200, 220 } });
  // 20 pixels over the mean length 9, upwards.
  const double corner = 6.0 * (1.0 + 20.0 * this->PixelSize() / 9.0);
  EXPECT_NEAR(this->HandleAt(2)[0], corner, 1e-6);
  EXPECT_NEAR(this->HandleAt(2)[1], corner, 1e-6);
}

TYPED_TEST(CurveWidgetMouse, SpinningFollowsTheMouse)
{
  this->Show(this->Square());
  this->Curve->SetProjectionNormal(2);
  this->Curve->ProjectToPlaneOn();
  const double pixel = this->PixelSize();
  const zvtest::Display center = this->Pointer.At({ { 0, 0, 0 } });
  this->Pointer.MoveTo({ { center[0] + 100, center[1] - 5 } });
  this->Curve->SetState(TypeParam::Spinning);
  this->Pointer.MoveTo({ { center[0] + 100, center[1] } });
  const World to = this->Scene.WorldAt({ { center[0] + 100, center[1] } }, { { 0, 0, 0 } });
  const double radius = std::hypot(to[0], to[1]);
  const double turn = 2.0 * vtkMath::Pi() * 5.0 * pixel * to[0] / (radius * radius);
  EXPECT_NEAR(this->HandleAt(2)[0], 6.0 * (std::cos(turn) - std::sin(turn)), 1e-6);
  EXPECT_NEAR(this->HandleAt(2)[1], 6.0 * (std::cos(turn) + std::sin(turn)), 1e-6);
}

TYPED_TEST(CurveWidgetMouse, PlacingMovesNothing)
{
  this->Show(this->Square());
  this->Curve->SetState(TypeParam::Placing);
  this->Pointer.MoveTo({ { 100, 300 } });
  this->ExpectHandles(this->Square());
}

TYPED_TEST(CurveWidgetMouse, ADragEndsOnThePlane)
{
  vtkNew<vtkPlaneSource> plane;
  plane->SetOrigin(0.0, 0.0, 0.0);
  plane->SetPoint1(1.0, 0.0, 1.0);
  plane->SetPoint2(0.0, 1.0, 0.0);
  this->Curve->SetPlaneSource(plane);
  this->Curve->SetProjectionNormal(3);
  this->Curve->ProjectToPlaneOn();
  this->Show(this->Square(), true);
  this->Pointer.Drag(
    zvtest::Left, this->Pointer.At(this->HandleAt(2)), { { 250, 210 } }, zvtest::NoModifier, 4);
  for (int i = 0; i < 4; ++i)
  {
    EXPECT_NEAR(this->HandleAt(i)[0], this->HandleAt(i)[2], 1e-9);
  }
}

TYPED_TEST(CurveWidgetMouse, SpinningOnAnObliquePlaneThatIsMissingWarnsAndTurnsNothing)
{
  this->Show(this->Square());
  this->Curve->SetProjectionNormal(3);
  this->Curve->ProjectToPlaneOn();
  this->Curve->SetState(TypeParam::Spinning);
  this->Pointer.MoveTo({ { 250, 210 } });
  this->ExpectGenericWarning(TestFixture::Kind::File, this->PlaneWarning); // of the projection
  this->ExpectHandles(this->Square());
}

// ---- What a host asks and adds

TYPED_TEST(CurveWidgetMouse, IsClickedOnHandlesAndLineAndChangesNoState)
{
  this->Show(this->Square());
  this->Curve->SetState(TypeParam::Placing);
  const World onLine = this->OnLine(0.5);
  struct Row
  {
    World At;
    int Clicked;
  };
  for (const Row& row : { Row{ { { 6, 6, 0 } }, 1 }, Row{ onLine, 1 }, Row{ { { 0, 0, 0 } }, 0 } })
  {
    const zvtest::Display at = this->Pointer.At(row.At);
    this->Scene.Interactor()->SetEventPosition(at[0], at[1]);
    EXPECT_EQ(this->Curve->IsClicked(), row.Clicked);
  }
  EXPECT_EQ(this->Curve->GetState(), TypeParam::Placing);
  this->Curve->SetEnabled(0);
  EXPECT_EQ(this->Curve->IsClicked(), 0);
  vtkNew<TypeParam> lonely;
  EXPECT_EQ(lonely->IsClicked(), 0);
}

TYPED_TEST(CurveWidgetMouse, AddHandleOnTheFirstHandleClosesAndEnables)
{
  this->Curve->InitializeHandles(this->PointsOf(this->Square()));
  this->Curve->SetCurrentRenderer(this->Scene.Renderer());
  this->Curve->SetState(TypeParam::Moving);
  const zvtest::Display first = this->Pointer.At({ { -6, -6, 0 } });
  this->Scene.Interactor()->SetEventPosition(first[0], first[1]);
  double position[3] = { -6, -6, 0 };
  this->Curve->AddHandle(position);
  EXPECT_EQ(this->Curve->GetEnabled(), 1);
  EXPECT_EQ(this->Curve->GetClosed(), 1);
  EXPECT_EQ(this->Curve->GetState(), TypeParam::Start);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, -1);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 4);
}

TYPED_TEST(CurveWidgetMouse, AddHandleOnAnotherHandleAddsNothing)
{
  this->Show(this->Square());
  this->Curve->SetState(TypeParam::Moving);
  const zvtest::Display second = this->Pointer.At({ { 6, -6, 0 } });
  this->Scene.Interactor()->SetEventPosition(second[0], second[1]);
  double position[3] = { 6, -6, 0 };
  this->Curve->CurrentHandleIndex = 3;
  this->Curve->AddHandle(position);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 4);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, -1);
  EXPECT_EQ(this->Curve->GetClosed(), 0);
  EXPECT_EQ(this->Curve->GetState(), TypeParam::Moving);
}

TYPED_TEST(CurveWidgetMouse, AddHandleWithOneHandleNeverCloses)
{
  this->Show({ { { 2, 2, 0 } } });
  const zvtest::Display at = this->Pointer.At({ { 2, 2, 0 } });
  this->Scene.Interactor()->SetEventPosition(at[0], at[1]);
  double position[3] = { 2, 2, 0 };
  this->Curve->AddHandle(position);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 2);
  EXPECT_EQ(this->Curve->GetClosed(), 0);
}

TYPED_TEST(CurveWidgetMouse, AddHandleNeedsNoView)
{
  vtkNew<TypeParam> widget;
  double position[3] = { 2, 2, 0 };
  for (int i = 0; i < 3; ++i)
  {
    widget->AddHandle(position);
  }
  EXPECT_EQ(widget->GetNumberOfHandles(), 3);
}

// ---- What is seen

TYPED_TEST(CurveWidgetMouse, HandlesAndLineAreSeenInTheirColours)
{
  this->Draw(this->Square());
  const zvtest::Picture picture = this->Scene.Look();
  for (const World& handle : this->Square())
  {
    EXPECT_TRUE(picture.HasNear(this->Red, this->Scene.At(handle), 1, 60));
  }
  EXPECT_TRUE(picture.HasNear(this->Cyan, this->Scene.At(this->OnLine(0.5)), 2));
  EXPECT_GT(picture.Count(this->Cyan), 300);
}

TYPED_TEST(CurveWidgetMouse, ADraggedHandleAndItsLineAreSeenInTheNewPlaceAtEachMove)
{
  this->Draw(this->Square());
  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 6, 6, 0 } }));
  World before{ { 6, 6, 0 } };
  for (const World& to : { World{ { 3, 4, 0 } }, World{ { 0, 0, 0 } }, World{ { 7, 2, 0 } } })
  {
    const World lineBefore = this->OnLine(0.5);
    this->Pointer.MoveTo(this->Pointer.At(to));
    const zvtest::Picture picture = this->Scene.Look(); // what the handler itself drew
    EXPECT_TRUE(picture.HasNear(this->Red, this->Scene.At(to), 1));
    EXPECT_FALSE(picture.HasNear(this->Red, this->Scene.At(before), 4, 60));
    EXPECT_TRUE(picture.HasNear(this->Cyan, this->Scene.At(this->OnLine(0.5)), 2));
    EXPECT_NE(this->OnLine(0.5), lineBefore);
    before = to;
  }
}

TYPED_TEST(CurveWidgetMouse, AfterEachEventOfADragTheScreenIsCurrent)
{
  this->Draw(this->Square(), true);
  const auto expectCurrent = [this](const char* event)
  {
    const zvtest::Picture drawn = this->Scene.Look(); // what the handler itself drew
    EXPECT_EQ(drawn.CountDifferent(this->Scene.RenderAndLook()), 0) << event;
  };
  for (zvtest::Button button : { zvtest::Left, zvtest::Middle })
  {
    for (const bool onHandle : { true, false })
    {
      SCOPED_TRACE(button);
      SCOPED_TRACE(onHandle);
      const zvtest::Display from =
        this->Pointer.At(onHandle ? this->HandleAt(2) : this->OnLine(0.375));
      this->Pointer.Press(button, from);
      expectCurrent("press");
      for (int step : { 1, 2 })
      {
        const zvtest::Picture before = this->Scene.Look();
        this->Pointer.MoveTo({ { from[0] - 15 * step, from[1] - 9 * step } });
        EXPECT_GT(before.CountDifferent(this->Scene.Look()), 0);
        expectCurrent("move");
      }
      this->Pointer.Release(button);
      expectCurrent("release");
    }
  }
}

TYPED_TEST(CurveWidgetMouse, HandlesMovedByTheHostAreSeenAndPickedAtTheNextRender)
{
  this->Draw(this->Square());
  this->Curve->SetHandlePosition(2, 1.0, 1.0, 0.0);
  EXPECT_TRUE(
    this->Scene.RenderAndLook().HasNear(this->Red, this->Scene.At({ { 1, 1, 0 } }), 2, 60));
  double from[3] = { 0, 0, 0 };
  double to[3] = { 2, 0, 0 };
  this->Curve->Translate(from, to);
  EXPECT_TRUE(
    this->Scene.RenderAndLook().HasNear(this->Red, this->Scene.At({ { 3, 1, 0 } }), 2, 60));
  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 3, 1, 0 } }));
  EXPECT_EQ(this->Curve->CurrentHandleIndex, 2);
}

TYPED_TEST(CurveWidgetMouse, AGrabbedCurveIsGreenAndFollows)
{
  this->Draw(this->Square(), true);
  const zvtest::Display from = this->Pointer.At({ { 6, -6, 0 } });
  this->Pointer.Press(zvtest::Middle, from);
  EXPECT_GT(this->Scene.Look().Count(this->Green), 300);
  EXPECT_EQ(this->Scene.Look().Count(this->Cyan), 0);
  this->Pointer.MoveTo({ { from[0] - 30, from[1] + 30 } });
  const zvtest::Picture picture = this->Scene.Look();
  EXPECT_TRUE(picture.HasNear(this->Red, { { from[0] - 30, from[1] + 30 } }, 2, 60));
  EXPECT_TRUE(picture.HasNear(this->Green, this->Scene.At(this->OnLine(0.4)), 2));
  EXPECT_FALSE(picture.HasNear(this->Red, from, 4, 60));
  this->Pointer.Release(zvtest::Middle);
  EXPECT_EQ(this->Scene.Look().Count(this->Green), 0);
}

TYPED_TEST(CurveWidgetMouse, DisabledNothingOfItIsSeen)
{
  const zvtest::Picture empty = this->Scene.RenderAndLook();
  this->Show(this->Square());
  EXPECT_GT(this->Scene.Look().CountDifferent(empty), 0);
  this->Curve->SetEnabled(0);
  EXPECT_EQ(this->Scene.Look().CountDifferent(empty), 0);
}

// ---- Curves that are hardly any

TYPED_TEST(CurveWidgetMouse, DegenerateCurvesBearEverything)
{
  const std::vector<std::vector<World>> curves = { {}, { { { 1, 2, 0 } } },
    { { { 1, 2, 0 } }, { { 4, 2, 0 } } }, std::vector<World>(2, { { 1, 2, 0 } }),
    std::vector<World>(7, { { 1, 2, 0 } }), std::vector<World>(3, { { NaN, NaN, NaN } }),
    { { { 1, 2, 0 } }, { { NaN, 0, 0 } }, { { 4, 5, 0 } } } };
  for (const auto& handles : curves)
  {
    for (bool closed : { false, true })
    {
      this->Curve =
        vtkSmartPointer<typename TestFixture::OpenWidget>::Take(TestFixture::OpenWidget::New());
      this->Curve->SetInteractor(this->Scene.Interactor());
      this->Show(handles, closed);
      this->Curve->GetSummedLength();
      this->Curve->CalculateCentroid();
      this->Curve->IsClosed();
      for (int state = TypeParam::Moving; state <= TypeParam::Placing; ++state)
      {
        this->Curve->SetState(state);
        this->Pointer.MoveTo({ { 180, 190 } });
        this->Pointer.MoveTo({ { 190, 190 } });
      }
      for (std::size_t i = 0; i < handles.size(); ++i)
      {
        EXPECT_EQ(
          std::isfinite(this->HandleAt(static_cast<int>(i))[0]), std::isfinite(handles[i][0]));
      }
      // Nothing runs across the view.
      EXPECT_EQ(this->Scene.RenderAndLook().Count({ 0, 0, 0 }, { { { 0, 0 } }, { { 99, 399 } } }),
        100 * 400);
      this->Pointer.Release(zvtest::Left);
      this->Pointer.Drag(zvtest::Left, { { 10, 10 } }, { { 30, 20 } });
      this->Pointer.Drag(zvtest::Middle, this->Pointer.At({ { 1, 2, 0 } }), { { 30, 20 } });
    }
  }
}

TYPED_TEST(CurveWidgetMouse, PlacedInNoBoundsItIsNeitherSeenNorComplainedAbout)
{
  const zvtest::Picture empty = this->Scene.RenderAndLook();
  this->Curve->SetNumberOfHandles(3);
  this->Curve->PlaceWidget(NaN, NaN, NaN, NaN, NaN, NaN);
  this->Curve->ClosedOn();
  this->Curve->SetEnabled(1);
  this->Pointer.WheelForward({ { 200, 200 } });
  this->Curve->SetState(TypeParam::Moving);
  this->Pointer.MoveTo({ { 210, 200 } });
  EXPECT_EQ(this->Scene.RenderAndLook().CountDifferent(empty), 0);
  this->ExpectNoMessage();
  this->Curve->PlaceWidget(-6, 6, -6, 6, 0, 0);
  this->Curve->InitializeHandles(this->PointsOf(this->Square()));
  EXPECT_GT(this->Scene.RenderAndLook().Count(this->Cyan), 300);
}

TYPED_TEST(DrawnCurveWidgetMouse, WithoutHandlesThereIsNothingToSeeOrToHit)
{
  const zvtest::Picture empty = this->Scene.RenderAndLook();
  const zvtest::Display origin = this->Pointer.At({ { 0, 0, 0 } });
  this->Scene.Interactor()->SetEventPosition(origin[0], origin[1]);
  this->Curve->SetCurrentRenderer(this->Scene.Renderer());
  EXPECT_EQ(this->Curve->IsClicked(), 0); // nor before it is enabled
  this->Curve->SetEnabled(1);
  EXPECT_EQ(this->Scene.Look().CountDifferent(empty), 0);
  this->Scene.Interactor()->SetEventPosition(origin[0], origin[1]);
  EXPECT_EQ(this->Curve->IsClicked(), 0);
  this->Pointer.Press(zvtest::Left, origin);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 1);
}

// ---- Life and death

TYPED_TEST(CurveWidgetMouse, DeletedWhileEnabledLeavesNothingBehind)
{
  const zvtest::Picture empty = this->Scene.RenderAndLook();
  const int props = this->Scene.Renderer()->GetViewProps()->GetNumberOfItems();
  this->Show(this->Square());
  vtkSmartPointer<vtkCommand> command = this->Curve->EventCallbackCommand;
  this->Curve = nullptr;
  EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), props);
  EXPECT_EQ(this->Scene.Look().CountDifferent(empty), 0);
  for (unsigned long event : zvEvents::Handle)
  {
    EXPECT_FALSE(this->Scene.Interactor()->HasObserver(event, command));
  }
  this->Pointer.Drag(zvtest::Left, { { 100, 100 } }, { { 200, 200 } });
}

TYPED_TEST(CurveWidgetMouse, DeletedInMidDrag)
{
  this->Show(this->Square());
  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 6, 6, 0 } }));
  this->Curve = nullptr;
  this->Pointer.MoveTo({ { 200, 200 } });
  this->Pointer.Release(zvtest::Left);
}

TYPED_TEST(CurveWidgetMouse, OutlivesWhatItWasShownIn)
{
  this->Show(this->Square());
  const zvtest::Display corner = this->Pointer.At({ { 6, 6, 0 } });
  this->Scene.DropRenderers();
  this->Pointer.Drag(zvtest::Left, corner, { { 200, 200 } });
  this->Pointer.Drag(zvtest::Middle, corner, { { 200, 200 } });
  this->Curve->SetState(TypeParam::Moving);
  this->Pointer.MoveTo({ { 210, 200 } });
  this->Scene.DropInteractor();
  this->Scene.DropWindow();
  EXPECT_EQ(this->Curve->GetInteractor(), nullptr);
  EXPECT_EQ(this->Curve->GetEnabled(), 0);
  this->Curve->OnLeftButtonDown();
  EXPECT_EQ(this->Curve->GetState(), TypeParam::Outside);
  for (int state : { TypeParam::Moving, TypeParam::Scaling })
  {
    this->Curve->SetState(state);
    this->Curve->OnMouseMove();
    this->Curve->OnLeftButtonUp();
    this->Curve->SetState(state);
    this->Curve->OnMiddleButtonUp();
  }
  this->Curve->OnMiddleButtonDown();
  this->Curve->OnRightButtonDown();
  this->Curve->OnRightButtonUp();
  this->Curve->OnMouseWheelForward();
  this->Curve->OnMouseWheelBackward();
  this->ExpectHandles(this->Square()); // without a view nothing moves
}

TYPED_TEST(CurveWidgetMouse, LosesItsRendererAndIsStillTakenOutOfTheView)
{
  const int props = this->Scene.Renderer()->GetViewProps()->GetNumberOfItems();
  for (const bool isDeleted : { false, true })
  {
    this->Show(this->Square());
    this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 6, 6, 0 } }));
    this->Curve->SetCurrentRenderer(nullptr);
    this->Pointer.MoveTo({ { 200, 200 } });
    this->ExpectHandles(this->Square());
    this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 6, 6, 0 } }));
    EXPECT_EQ(this->Curve->GetState(), TypeParam::Outside);
    if (isDeleted)
    {
      this->Curve = nullptr;
    }
    else
    {
      this->Curve->SetEnabled(0);
      EXPECT_EQ(this->Curve->GetEnabled(), 0);
    }
    EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), props);
  }
}

TYPED_TEST(CurveWidgetMouse, SurvivesObserversThatDisableOrCutOffOrReleaseIt)
{
  using Action = std::function<void()>;
  const Action actions[] = { [this] { this->Curve->SetEnabled(0); },
    [this] { this->Curve->SetInteractor(nullptr); }, [this] { this->Curve = nullptr; } };
  for (const Action& action : actions)
  {
    for (unsigned long event :
      { vtkCommand::EnableEvent, vtkCommand::DisableEvent, vtkCommand::StartInteractionEvent,
        vtkCommand::InteractionEvent, vtkCommand::EndInteractionEvent })
    {
      this->Curve =
        vtkSmartPointer<typename TestFixture::OpenWidget>::Take(TestFixture::OpenWidget::New());
      this->Curve->SetInteractor(this->Scene.Interactor());
      this->Curve->InitializeHandles(this->PointsOf(this->Square()));
      zvtest::EventRecorder recorder;
      recorder.Watch(this->Curve, { event }, [&action](const zvtest::RecordedEvent&) { action(); });
      TypeParam* widget = this->Curve;
      widget->SetEnabled(1);
      this->Pointer.Drag(
        zvtest::Left, this->Pointer.At({ { 6, 6, 0 } }), this->Pointer.At({ { 4, 4, 0 } }));
      if (this->Curve && this->Curve->GetInteractor())
      {
        widget->SetEnabled(0);
      }
      EXPECT_EQ(recorder.Count(event), 1) << vtkCommand::GetStringFromEventId(event);
      this->Curve = nullptr;
    }
  }
}

TYPED_TEST(CurveWidgetMouse, SurvivesAnObserverThatReleasesItWhileItsHostClosesIt)
{
  this->Curve->InitializeHandles(this->PointsOf(this->Square()));
  this->Curve->SetCurrentRenderer(this->Scene.Renderer());
  const zvtest::Display first = this->Pointer.At({ { -6, -6, 0 } });
  this->Scene.Interactor()->SetEventPosition(first[0], first[1]);
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Curve, { vtkCommand::EnableEvent },
    [this](const zvtest::RecordedEvent&) { this->Curve = nullptr; });
  TypeParam* widget = this->Curve;
  double position[3] = { -6, -6, 0 };
  widget->AddHandle(position);
  EXPECT_EQ(recorder.Count(vtkCommand::EnableEvent), 1);
  EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
}

TYPED_TEST(CurveWidgetMouse, SurvivesAFrameThatReleasesItWhileItsHostAddsAHandle)
{
  this->Draw(this->Square());
  this->Scene.Interactor()->SetEventPosition(10, 10);
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent },
    [this](const zvtest::RecordedEvent&) { this->Curve = nullptr; });
  TypeParam* widget = this->Curve;
  double position[3] = { 0, 0, 0 };
  widget->AddHandle(position);
  EXPECT_EQ(this->Curve, nullptr);
  EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
}

TYPED_TEST(CurveWidgetMouse, SurvivesARenderThatDisablesItInTheMiddleOfAPress)
{
  for (const bool onLine : { true, false })
  {
    this->Show(this->Square());
    const World pressed = onLine ? this->OnLine(0.5) : World{ { 0, 0, 0 } };
    bool isRendered = false;
    zvtest::EventRecorder recorder;
    recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent },
      [this, &isRendered](const zvtest::RecordedEvent&)
      {
        isRendered = true;
        if (this->Curve->GetEnabled())
        {
          this->Curve->SetEnabled(0);
        }
      });
    this->Pointer.Press(zvtest::Left, this->Pointer.At(pressed));
    EXPECT_EQ(isRendered, onLine || TestFixture::Kind::IsDrawnByPresses);
    EXPECT_EQ(this->Curve->GetEnabled(), isRendered ? 0 : 1);
  }
}

TYPED_TEST(CurveWidgetMouse, MovesToAnotherView)
{
  class zvtest::Scene other;
  this->Show(this->Square());
  this->Curve->SetInteractor(other.Interactor());
  EXPECT_EQ(this->Curve->GetEnabled(), 0);
  EXPECT_FALSE(this->IsShown(this->Curve->LineActor));
  this->Curve->SetEnabled(1);
  EXPECT_EQ(this->Curve->GetCurrentRenderer(), other.Renderer());
  this->Curve->SetInteractor(nullptr);
}
