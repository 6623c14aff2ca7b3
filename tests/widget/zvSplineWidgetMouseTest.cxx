// The spline widget under the user's hand: what each event does, what is seen, and how it ends.
#include "zvSplineWidget.h"

#include "zvCurveFixture.h"
#include "zvEvents.h"
#include "zvParametricSpline.h"

#include "vtkMath.h"
#include "vtkPlaneSource.h"
#include "vtkPropCollection.h"

#include <gmock/gmock.h>

#include <cmath>
#include <functional>
#include <limits>

using ::testing::ElementsAre;
using zvtest::World;

namespace
{
const double NaN = std::numeric_limits<double>::quiet_NaN();

class SplineWidgetMouse : public zvtest::CurveTest<zvSplineWidget>
{
};

constexpr char PlaneWarning[] = "Set the plane source for oblique projections...";
}

// ---- The mouse: what each press does

TEST_F(SplineWidgetMouse, ALeftPressOutOfTheViewportLeavesTheEventToOthers)
{
  zvtest::SceneOptions options;
  options.Viewports = 2;
  class zvtest::Scene scene(options);
  zvtest::Mouse mouse(scene);
  this->Curve->SetInteractor(scene.Interactor());
  this->Curve->SetCurrentRenderer(scene.Renderer(0));
  this->Show(Square());
  for (zvtest::Button button : { zvtest::Left, zvtest::Middle })
  {
    this->Curve->SetState(zvSplineWidget::Moving);
    zvtest::EventRecorder recorder;
    recorder.Watch(this->Curve, zvtest::WidgetEvents);
    recorder.Watch(scene.Interactor(), zvtest::MouseEvents);
    recorder.Watch(scene.Interactor(), { vtkCommand::RenderEvent });
    mouse.Press(button, { { 300, 100 } });
    EXPECT_EQ(this->Curve->GetState(), zvSplineWidget::Outside);
    EXPECT_EQ(recorder.Events().size(), 1u); // the press itself
  }
  this->Curve->SetInteractor(nullptr);
}

TEST_F(SplineWidgetMouse, ALeftPressOnAHandleTakesIt)
{
  this->Show(Square());
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 6, 6, 0 } }));
  EXPECT_EQ(this->Curve->GetState(), zvSplineWidget::Moving);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, 2);
  EXPECT_EQ(this->Curve->ValidPick, 1);
  EXPECT_EQ(this->Curve->GetClosed(), 0);
  // The press itself is aborted: nobody behind the widget sees it.
  EXPECT_EQ(recorder.Names(), (Names{ "StartInteractionEvent", "RenderEvent" }));
  EXPECT_FALSE(recorder.Events().front().HasData);
  EXPECT_THAT(this->Curve->LastPickPosition, ElementsAre(0.0, 0.0, 0.0));
}

TEST_F(SplineWidgetMouse, APressOnTheFirstHandleOfAnOpenCurveClosesItAndDragsIt)
{
  this->Show(Square());
  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { -6, -6, 0 } }));
  EXPECT_EQ(this->Curve->GetClosed(), 1);
  EXPECT_EQ(this->Curve->IsClosed(), 1);
  EXPECT_EQ(this->Curve->GetState(), zvSplineWidget::Moving);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, 0);
  this->Pointer.MoveTo(this->Pointer.At({ { -4, -4, 0 } }));
  EXPECT_NEAR(this->HandleAt(0)[0], -4.0, 2.0 * this->PixelSize());
  this->Pointer.Release(zvtest::Left);
  EXPECT_EQ(this->Curve->GetClosed(), 1);
}

TEST_F(SplineWidgetMouse, APressOnTheFirstHandleOfAClosedCurveMovesIt)
{
  this->Show(Square(), true);
  this->Pointer.Drag(
    zvtest::Left, this->Pointer.At({ { -6, -6, 0 } }), this->Pointer.At({ { -3, -5, 0 } }));
  EXPECT_EQ(this->Curve->GetClosed(), 1);
  EXPECT_NEAR(this->HandleAt(0)[0], -3.0, 2.0 * this->PixelSize());
  EXPECT_NEAR(this->HandleAt(0)[1], -5.0, 2.0 * this->PixelSize());
}

TEST_F(SplineWidgetMouse, APressOnTheLineInsertsAHandleAndDragsIt)
{
  this->Show(Square());
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
  const World onLine = this->OnLine(0.5);
  this->Pointer.Press(zvtest::Left, this->Pointer.At(onLine));
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 5);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, 2);
  EXPECT_EQ(this->Curve->GetState(), zvSplineWidget::Moving);
  EXPECT_EQ(recorder.Names(), (Names{ "RenderEvent", "StartInteractionEvent", "RenderEvent" }));
  const World before = this->HandleAt(2);
  this->Pointer.MoveTo({ { 200, 200 } });
  EXPECT_NE(this->HandleAt(2), before);
}

TEST_F(SplineWidgetMouse, APressOnTheLineWhoseHandleIsNotFoundAgainLeavesTheState)
{
  this->Show(Square());
  this->Curve->SetState(zvSplineWidget::Placing);
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
  EXPECT_EQ(this->Curve->GetState(), zvSplineWidget::Placing);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, -1);
}

TEST_F(SplineWidgetMouse, APressOnNothingAppendsToAnOpenCurve)
{
  this->Show(Square());
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 0, 0, 0 } }));
  EXPECT_EQ(this->Curve->GetState(), zvSplineWidget::Placing);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, -1);
  std::vector<World> expected = Square();
  expected.push_back({ { 0, 0, 0 } });
  this->ExpectHandles(expected, 2.0 * this->PixelSize());
  EXPECT_EQ(recorder.Names(),
    (Names{ "RenderEvent", "RenderEvent", "StartInteractionEvent", "RenderEvent" }));
}

TEST_F(SplineWidgetMouse, GrowsFromNothingByPresses)
{
  this->Curve->SetEnabled(1);
  for (const World& handle : Square())
  {
    this->Pointer.Press(zvtest::Left, this->Pointer.At(handle));
    this->Pointer.Release(zvtest::Left);
  }
  this->ExpectHandles(Square(), 2.0 * this->PixelSize());
  EXPECT_EQ(this->Curve->HandlePolyData->GetNumberOfVerts(), 4);
  this->Pointer.Press(zvtest::Left, this->Pointer.At(this->HandleAt(0)));
  EXPECT_EQ(this->Curve->GetClosed(), 1);
}

TEST_F(SplineWidgetMouse, APressOnNothingOfAClosedCurveIsLeftToOthers)
{
  this->Show(Square(), true);
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 0, 0, 0 } }));
  EXPECT_EQ(this->Curve->GetState(), zvSplineWidget::Outside);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, -1);
  EXPECT_EQ(recorder.Names(), (Names{ "LeftButtonPressEvent" }));
}

TEST_F(SplineWidgetMouse, AMiddlePressGrabsTheCurve)
{
  for (const bool onHandle : { true, false })
  {
    this->Show(Square(), true);
    this->Scene.Render();
    zvtest::EventRecorder recorder;
    this->RecordWithRenders(recorder);
    recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
    const World at = onHandle ? Square()[1] : this->OnLine(0.4);
    this->Pointer.Press(zvtest::Middle, this->Pointer.At(at));
    EXPECT_EQ(this->Curve->GetState(), zvSplineWidget::Moving);
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
    EXPECT_EQ(this->Curve->GetState(), zvSplineWidget::Start);
    EXPECT_FALSE(this->Curve->CurveGrabbed);
    EXPECT_EQ(this->Curve->LineActor->GetProperty(), this->Curve->GetLineProperty());
    EXPECT_EQ(recorder.Names(),
      (Names{ "StartInteractionEvent", "RenderEvent", "EndInteractionEvent", "RenderEvent" }));
  }
}

TEST_F(SplineWidgetMouse, AMiddlePressOnAHandleTakesItsDepthFromTheLastPickOfTheLineByDesign)
{
  this->Show(Square(), true);
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

TEST_F(SplineWidgetMouse, AMiddlePressOnNothingIsLeftToOthers)
{
  this->Show(Square());
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
  this->Curve->CurveGrabbed = true;
  this->Curve->HighlightLine(1);
  this->Pointer.Press(zvtest::Middle, this->Pointer.At({ { 0, 0, 0 } }));
  EXPECT_EQ(this->Curve->GetState(), zvSplineWidget::Outside);
  EXPECT_FALSE(this->Curve->CurveGrabbed);
  EXPECT_EQ(this->Curve->LineActor->GetProperty(), this->Curve->GetLineProperty());
  EXPECT_EQ(recorder.Names(), (Names{ "MiddleButtonPressEvent" }));
}

TEST_F(SplineWidgetMouse, AMiddleDragMovesTheWholeCurve)
{
  this->Show(Square(), true);
  const zvtest::Display from = this->Pointer.At({ { 6, -6, 0 } });
  this->Pointer.Drag(zvtest::Middle, from, { { from[0] - 20, from[1] + 10 } });
  const double pixel = this->PixelSize();
  std::vector<World> expected = Square();
  for (World& handle : expected)
  {
    handle[0] -= 20.0 * pixel;
    handle[1] += 10.0 * pixel;
  }
  this->ExpectHandles(expected, 1e-6);
}

TEST_F(SplineWidgetMouse, InPerspectiveAGrabbedLineStaysUnderThePointer)
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

TEST_F(SplineWidgetMouse, AMiddleDragAfterALeftPressMovesThatHandleByDesign)
{
  this->Show(Square(), true);
  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 6, 6, 0 } }));
  this->Pointer.Release(zvtest::Left);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, 2);
  const zvtest::Display from = this->Pointer.At({ { 6, -6, 0 } });
  this->Pointer.Drag(zvtest::Middle, from, { { from[0], from[1] + 10 } });
  std::vector<World> expected = Square();
  expected[2][1] += 10.0 * this->PixelSize();
  this->ExpectHandles(expected, 1e-6);
}

TEST_F(SplineWidgetMouse, ReleasesEndADragInEveryStateButStartAndOutside)
{
  for (zvtest::Button button : { zvtest::Left, zvtest::Middle })
  {
    for (int state : { zvSplineWidget::Moving, zvSplineWidget::Scaling, zvSplineWidget::Spinning,
           zvSplineWidget::Placing })
    {
      this->Show(Square());
      this->Curve->SetState(state);
      this->Curve->CurrentHandleIndex = 3;
      this->Curve->CurveGrabbed = true;
      this->Curve->HighlightLine(1);
      zvtest::EventRecorder recorder;
      this->RecordWithRenders(recorder);
      recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
      this->Pointer.Release(button);
      EXPECT_EQ(this->Curve->GetState(), zvSplineWidget::Start);
      EXPECT_FALSE(this->Curve->CurveGrabbed);
      EXPECT_EQ(this->Curve->CurrentHandleIndex, 3);
      EXPECT_EQ(this->Curve->LineActor->GetProperty(), this->Curve->GetLineProperty());
      EXPECT_EQ(recorder.Names(), (Names{ "EndInteractionEvent", "RenderEvent" }));
    }
  }
}

TEST_F(SplineWidgetMouse, OnlyALeftReleaseAsksForTheHandleOfTheLastPick)
{
  this->Show(Square());
  for (zvtest::Button button : { zvtest::Left, zvtest::Middle })
  {
    this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 6, 6, 0 } }));
    this->Curve->ValidPick = 0;
    this->Pointer.Release(button);
    EXPECT_EQ(this->Curve->ValidPick, button == zvtest::Left ? 1 : 0);
  }
}

TEST_F(SplineWidgetMouse, ALeftPressAnywhereLetsTheGrabbedCurveGo)
{
  this->Show(Square(), true);
  for (const World& at : { World{ { 6, 6, 0 } }, World{ { 0, 0, 0 } } })
  {
    this->Curve->CurveGrabbed = true;
    this->Pointer.Press(zvtest::Left, this->Pointer.At(at));
    EXPECT_FALSE(this->Curve->CurveGrabbed);
    this->Pointer.Release(zvtest::Left);
  }
}

TEST_F(SplineWidgetMouse, SubclassesMaySizeTheirHandlesWhereverTheViewMayHaveChanged)
{
  class Sized : public zvtest::Open<zvSplineWidget>
  {
  public:
    void SizeHandles() override { ++this->Times; }
    int Times = 0;
  };
  auto curve = vtkSmartPointer<Sized>::Take(new Sized);
  const auto times = [&curve]
  {
    const int result = curve->Times;
    curve->Times = 0;
    return result;
  };
  double bounds[6] = { -6, 6, -6, 6, 0, 0 };
  curve->SetNumberOfHandles(2);
  EXPECT_EQ(times(), 0);
  curve->PlaceWidget(bounds);
  EXPECT_EQ(times(), 1);
  curve->SetInteractor(this->Scene.Interactor());
  curve->SetEnabled(1);
  EXPECT_EQ(times(), 1);
  const zvtest::Display corner = this->Pointer.At({ { 6, 6, 0 } });
  this->Pointer.Press(zvtest::Left, corner);
  this->Pointer.MoveTo({ { corner[0] - 5, corner[1] } });
  EXPECT_EQ(times(), 0);
  this->Pointer.Release(zvtest::Left);
  EXPECT_EQ(times(), 1);
  this->Pointer.Press(zvtest::Middle, { { corner[0] - 5, corner[1] } });
  EXPECT_EQ(times(), 0);
  this->Pointer.Release(zvtest::Middle);
  EXPECT_EQ(times(), 1);
  this->Pointer.Release(zvtest::Middle); // in Start
  this->Pointer.Press(zvtest::Right, corner);
  EXPECT_EQ(times(), 0);
  this->Pointer.Release(zvtest::Right);
  EXPECT_EQ(times(), 1);
  this->Pointer.WheelForward(corner);
  EXPECT_EQ(times(), 1);
  this->Pointer.WheelBackward(corner);
  EXPECT_EQ(times(), 1);
  curve->SetEnabled(0);
  EXPECT_EQ(times(), 0);
}

TEST_F(SplineWidgetMouse, ReleasesInStartAndOutsideAreLeftToOthers)
{
  this->Show(Square());
  for (int state : { zvSplineWidget::Start, zvSplineWidget::Outside })
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
  this->ExpectHandles(Square());
}

TEST_F(SplineWidgetMouse, TheRightButtonAndTheWheelAreLeftToOthers)
{
  this->Show(Square());
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
  EXPECT_EQ(this->Curve->GetState(), zvSplineWidget::Start);
}

TEST_F(SplineWidgetMouse, EachMoveOfADragTellsThenRenders)
{
  for (int state : { zvSplineWidget::Moving, zvSplineWidget::Scaling, zvSplineWidget::Spinning,
         zvSplineWidget::Placing })
  {
    this->Show(Square());
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

TEST_F(SplineWidgetMouse, ScalingFollowsTheMouse)
{
  this->Show(Square());
  this->Pointer.MoveTo({ { 200, 200 } });
  this->Curve->SetState(zvSplineWidget::Scaling);
  this->Pointer.MoveTo({ { 200, 220 } });
  // 20 pixels over the mean length 9, upwards.
  const double corner = 6.0 * (1.0 + 20.0 * this->PixelSize() / 9.0);
  EXPECT_NEAR(this->HandleAt(2)[0], corner, 1e-6);
  EXPECT_NEAR(this->HandleAt(2)[1], corner, 1e-6);
}

TEST_F(SplineWidgetMouse, SpinningFollowsTheMouse)
{
  this->Show(Square());
  this->Curve->SetProjectionNormal(2);
  this->Curve->ProjectToPlaneOn();
  const double pixel = this->PixelSize();
  const zvtest::Display center = this->Pointer.At({ { 0, 0, 0 } });
  this->Pointer.MoveTo({ { center[0] + 100, center[1] - 5 } });
  this->Curve->SetState(zvSplineWidget::Spinning);
  this->Pointer.MoveTo({ { center[0] + 100, center[1] } });
  const World to = this->Scene.WorldAt({ { center[0] + 100, center[1] } }, { { 0, 0, 0 } });
  const double radius = std::hypot(to[0], to[1]);
  const double turn = 2.0 * vtkMath::Pi() * 5.0 * pixel * to[0] / (radius * radius);
  EXPECT_NEAR(this->HandleAt(2)[0], 6.0 * (std::cos(turn) - std::sin(turn)), 1e-6);
  EXPECT_NEAR(this->HandleAt(2)[1], 6.0 * (std::cos(turn) + std::sin(turn)), 1e-6);
}

TEST_F(SplineWidgetMouse, PlacingMovesNothing)
{
  this->Show(Square());
  this->Curve->SetState(zvSplineWidget::Placing);
  this->Pointer.MoveTo({ { 100, 300 } });
  this->ExpectHandles(Square());
}

TEST_F(SplineWidgetMouse, ADragEndsOnThePlane)
{
  vtkNew<vtkPlaneSource> plane;
  plane->SetOrigin(0.0, 0.0, 0.0);
  plane->SetPoint1(1.0, 0.0, 1.0);
  plane->SetPoint2(0.0, 1.0, 0.0);
  this->Curve->SetPlaneSource(plane);
  this->Curve->SetProjectionNormal(3);
  this->Curve->ProjectToPlaneOn();
  this->Show(Square(), true);
  this->Pointer.Drag(
    zvtest::Left, this->Pointer.At(this->HandleAt(2)), { { 250, 210 } }, zvtest::NoModifier, 4);
  for (int i = 0; i < 4; ++i)
  {
    EXPECT_NEAR(this->HandleAt(i)[0], this->HandleAt(i)[2], 1e-9);
  }
}

TEST_F(SplineWidgetMouse, SpinningOnAnObliquePlaneThatIsMissingWarnsAndTurnsNothing)
{
  this->Show(Square());
  this->Curve->SetProjectionNormal(3);
  this->Curve->ProjectToPlaneOn();
  this->Curve->SetState(zvSplineWidget::Spinning);
  this->Pointer.MoveTo({ { 250, 210 } });
  this->ExpectGenericWarning("zvSplineWidget", PlaneWarning); // of the projection
  this->ExpectHandles(Square());
}

TEST_F(SplineWidgetMouse, IsClickedOnHandlesAndLineAndChangesNoState)
{
  this->Show(Square());
  this->Curve->SetState(zvSplineWidget::Placing);
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
  EXPECT_EQ(this->Curve->GetState(), zvSplineWidget::Placing);
  this->Curve->SetEnabled(0);
  EXPECT_EQ(this->Curve->IsClicked(), 0);
  vtkNew<zvSplineWidget> lonely;
  EXPECT_EQ(lonely->IsClicked(), 0);
}

// ---- AddHandle

TEST_F(SplineWidgetMouse, AddHandleOnTheFirstHandleClosesAndEnables)
{
  this->Curve->InitializeHandles(PointsOf(Square()));
  this->Curve->SetCurrentRenderer(this->Scene.Renderer());
  this->Curve->SetState(zvSplineWidget::Moving);
  const zvtest::Display first = this->Pointer.At({ { -6, -6, 0 } });
  this->Scene.Interactor()->SetEventPosition(first[0], first[1]);
  double position[3] = { -6, -6, 0 };
  this->Curve->AddHandle(position);
  EXPECT_EQ(this->Curve->GetEnabled(), 1);
  EXPECT_EQ(this->Curve->GetClosed(), 1);
  EXPECT_EQ(this->Curve->GetState(), zvSplineWidget::Start);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, -1);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 4);
}

TEST_F(SplineWidgetMouse, AddHandleOnAnotherHandleAddsNothing)
{
  this->Show(Square());
  this->Curve->SetState(zvSplineWidget::Moving);
  const zvtest::Display second = this->Pointer.At({ { 6, -6, 0 } });
  this->Scene.Interactor()->SetEventPosition(second[0], second[1]);
  double position[3] = { 6, -6, 0 };
  this->Curve->CurrentHandleIndex = 3;
  this->Curve->AddHandle(position);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 4);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, -1);
  EXPECT_EQ(this->Curve->GetClosed(), 0);
  EXPECT_EQ(this->Curve->GetState(), zvSplineWidget::Moving);
}

TEST_F(SplineWidgetMouse, AddHandleWithOneHandleNeverCloses)
{
  this->Show({ { { 2, 2, 0 } } });
  const zvtest::Display at = this->Pointer.At({ { 2, 2, 0 } });
  this->Scene.Interactor()->SetEventPosition(at[0], at[1]);
  double position[3] = { 2, 2, 0 };
  this->Curve->AddHandle(position);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 2);
  EXPECT_EQ(this->Curve->GetClosed(), 0);
}

TEST_F(SplineWidgetMouse, AddHandleShowsTheLineAndLeavesItPlacing)
{
  double position[3] = { 2, 2, 0 };
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  this->Curve->AddHandle(position);
  EXPECT_EQ(this->Curve->GetState(), zvSplineWidget::Placing);
  EXPECT_EQ(this->Curve->GetEnabled(), 0);
  EXPECT_EQ(this->Curve->GetCurrentRenderer(), this->Scene.Renderer());
  EXPECT_TRUE(this->IsShown(this->Curve->LineActor));
  EXPECT_FALSE(this->IsShown(this->Curve->HandleActor));
  EXPECT_EQ(this->Curve->LineActor->GetProperty(), this->Curve->GetLineProperty());
  EXPECT_EQ(recorder.Names(), (Names{ "RenderEvent" }));
  this->ExpectHandles({ { { 2, 2, 0 } } });
}

TEST_F(SplineWidgetMouse, AddHandleNeedsNoView)
{
  vtkNew<zvSplineWidget> widget;
  double position[3] = { 2, 2, 0 };
  for (int i = 0; i < 3; ++i)
  {
    widget->AddHandle(position);
  }
  EXPECT_EQ(widget->GetNumberOfHandles(), 3);
}

// ---- What is seen

TEST_F(SplineWidgetMouse, HandlesAndLineAreSeenInTheirColours)
{
  this->Show(Square());
  const zvtest::Picture picture = this->Scene.Look();
  for (const World& handle : Square())
  {
    EXPECT_TRUE(picture.HasNear(Red, this->Scene.At(handle), 2));
  }
  EXPECT_TRUE(picture.HasNear(Cyan, this->Scene.At(this->OnLine(0.5)), 2));
  EXPECT_GT(picture.Count(Cyan), 300);
}

TEST_F(SplineWidgetMouse, ADraggedHandleAndItsLineAreSeenInTheNewPlaceAtEachMove)
{
  this->Show(Square());
  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 6, 6, 0 } }));
  World before{ { 6, 6, 0 } };
  for (const World& to : { World{ { 3, 4, 0 } }, World{ { 0, 0, 0 } }, World{ { 7, 2, 0 } } })
  {
    const World lineBefore = this->OnLine(0.5);
    this->Pointer.MoveTo(this->Pointer.At(to));
    const zvtest::Picture picture = this->Scene.Look(); // what the handler itself drew
    EXPECT_TRUE(picture.HasNear(Red, this->Scene.At(to), 2));
    EXPECT_FALSE(picture.HasNear(Red, this->Scene.At(before), 4));
    EXPECT_TRUE(picture.HasNear(Cyan, this->Scene.At(this->OnLine(0.5)), 2));
    EXPECT_NE(this->OnLine(0.5), lineBefore);
    before = to;
  }
}

TEST_F(SplineWidgetMouse, AGrabbedCurveIsGreenAndFollows)
{
  this->Show(Square(), true);
  const zvtest::Display from = this->Pointer.At({ { 6, -6, 0 } });
  this->Pointer.Press(zvtest::Middle, from);
  EXPECT_GT(this->Scene.Look().Count(Green), 300);
  EXPECT_EQ(this->Scene.Look().Count(Cyan), 0);
  this->Pointer.MoveTo({ { from[0] - 30, from[1] + 30 } });
  const zvtest::Picture picture = this->Scene.Look();
  EXPECT_TRUE(picture.HasNear(Red, { { from[0] - 30, from[1] + 30 } }, 2));
  EXPECT_TRUE(picture.HasNear(Green, this->Scene.At(this->OnLine(0.4)), 2));
  EXPECT_FALSE(picture.HasNear(Red, from, 4));
  this->Pointer.Release(zvtest::Middle);
  EXPECT_EQ(this->Scene.Look().Count(Green), 0);
}

TEST_F(SplineWidgetMouse, HandlesMovedByTheHostAreSeenAndPickedAtTheNextRender)
{
  this->Show(Square());
  this->Curve->SetHandlePosition(2, 1.0, 1.0, 0.0);
  EXPECT_TRUE(this->Scene.RenderAndLook().HasNear(Red, this->Scene.At({ { 1, 1, 0 } }), 2));
  double from[3] = { 0, 0, 0 };
  double to[3] = { 2, 0, 0 };
  this->Curve->Translate(from, to);
  EXPECT_TRUE(this->Scene.RenderAndLook().HasNear(Red, this->Scene.At({ { 3, 1, 0 } }), 2));
  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 3, 1, 0 } }));
  EXPECT_EQ(this->Curve->CurrentHandleIndex, 2);
}

TEST_F(SplineWidgetMouse, DisabledNothingOfItIsSeen)
{
  const zvtest::Picture empty = this->Scene.RenderAndLook();
  this->Show(Square());
  EXPECT_GT(this->Scene.Look().CountDifferent(empty), 0);
  this->Curve->SetEnabled(0);
  EXPECT_EQ(this->Scene.Look().CountDifferent(empty), 0);
}

// ---- Curves that are hardly any

TEST_F(SplineWidgetMouse, DegenerateCurvesBearEverything)
{
  const std::vector<std::vector<World>> curves = { {}, { { { 1, 2, 0 } } },
    { { { 1, 2, 0 } }, { { 4, 2, 0 } } }, std::vector<World>(2, { { 1, 2, 0 } }),
    std::vector<World>(7, { { 1, 2, 0 } }), std::vector<World>(3, { { NaN, NaN, NaN } }),
    { { { 1, 2, 0 } }, { { NaN, 0, 0 } }, { { 4, 5, 0 } } } };
  for (const auto& handles : curves)
  {
    for (bool closed : { false, true })
    {
      this->Curve = vtkSmartPointer<OpenWidget>::Take(OpenWidget::New());
      this->Curve->SetInteractor(this->Scene.Interactor());
      this->Show(handles, closed);
      this->Curve->GetSummedLength();
      this->Curve->CalculateCentroid();
      this->Curve->IsClosed();
      for (int state = zvSplineWidget::Moving; state <= zvSplineWidget::Placing; ++state)
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

TEST_F(SplineWidgetMouse, WithoutHandlesThereIsNothingToSeeOrToHit)
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

TEST_F(SplineWidgetMouse, DeletedWhileEnabledLeavesNothingBehind)
{
  const zvtest::Picture empty = this->Scene.RenderAndLook();
  const int props = this->Scene.Renderer()->GetViewProps()->GetNumberOfItems();
  this->Show(Square());
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

TEST_F(SplineWidgetMouse, DeletedBeforeItIsEnabledTakesTheLineOfAddHandleWithIt)
{
  double position[3] = { 2, 2, 0 };
  this->Curve->AddHandle(position);
  const int props = this->Scene.Renderer()->GetViewProps()->GetNumberOfItems();
  this->Curve = nullptr;
  EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), props - 1);
}

TEST_F(SplineWidgetMouse, DeletedInMidDrag)
{
  this->Show(Square());
  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 6, 6, 0 } }));
  this->Curve = nullptr;
  this->Pointer.MoveTo({ { 200, 200 } });
  this->Pointer.Release(zvtest::Left);
}

TEST_F(SplineWidgetMouse, OutlivesWhatItWasShownIn)
{
  this->Show(Square());
  const zvtest::Display corner = this->Pointer.At({ { 6, 6, 0 } });
  this->Scene.DropRenderers();
  this->Pointer.Drag(zvtest::Left, corner, { { 200, 200 } });
  this->Pointer.Drag(zvtest::Middle, corner, { { 200, 200 } });
  this->Curve->SetState(zvSplineWidget::Moving);
  this->Pointer.MoveTo({ { 210, 200 } });
  this->Scene.DropInteractor();
  this->Scene.DropWindow();
  EXPECT_EQ(this->Curve->GetInteractor(), nullptr);
  EXPECT_EQ(this->Curve->GetEnabled(), 0);
  this->Curve->OnLeftButtonDown();
  EXPECT_EQ(this->Curve->GetState(), zvSplineWidget::Outside);
  for (int state : { zvSplineWidget::Moving, zvSplineWidget::Scaling })
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
  this->ExpectHandles(Square()); // without a view nothing moves
}

TEST_F(SplineWidgetMouse, SurvivesObserversThatDisableOrCutOffOrReleaseIt)
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
      this->Curve = vtkSmartPointer<OpenWidget>::Take(OpenWidget::New());
      this->Curve->SetInteractor(this->Scene.Interactor());
      this->Curve->InitializeHandles(PointsOf(Square()));
      zvtest::EventRecorder recorder;
      recorder.Watch(this->Curve, { event }, [&action](const zvtest::RecordedEvent&) { action(); });
      zvSplineWidget* widget = this->Curve;
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

TEST_F(SplineWidgetMouse, SurvivesARenderThatDisablesItInTheMiddleOfAPress)
{
  for (const World& at : { World{ { 0, 0, 0 } }, World{ { 0, -6, 0 } } })
  {
    this->Show(Square());
    const World pressed = at[1] == 0.0 ? at : this->OnLine(0.5);
    zvtest::EventRecorder recorder;
    recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent },
      [this](const zvtest::RecordedEvent&)
      {
        if (this->Curve->GetEnabled())
        {
          this->Curve->SetEnabled(0);
        }
      });
    this->Pointer.Press(zvtest::Left, this->Pointer.At(pressed));
    EXPECT_EQ(this->Curve->GetEnabled(), 0);
  }
}

TEST_F(SplineWidgetMouse, MovesToAnotherView)
{
  class zvtest::Scene other;
  this->Show(Square());
  this->Curve->SetInteractor(other.Interactor());
  EXPECT_EQ(this->Curve->GetEnabled(), 0);
  EXPECT_FALSE(this->IsShown(this->Curve->LineActor));
  this->Curve->SetEnabled(1);
  EXPECT_EQ(this->Curve->GetCurrentRenderer(), other.Renderer());
  this->Curve->SetInteractor(nullptr);
}
