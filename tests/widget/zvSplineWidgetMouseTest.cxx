// The spline widget under the user's hand: what each event does, what is seen, and how it ends.
#include "zvSplineWidget.h"

#include "zvCurveFixture.h"

#include "vtkPropCollection.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using zvtest::World;

namespace
{
class SplineWidgetMouse : public zvtest::CurveTest<zvSplineWidget>
{
};
}

// ---- The mouse: what each press does

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

TEST_F(SplineWidgetMouse, APressOnTheLineInsertsAHandleAndDragsIt)
{
  this->Show(Square());
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
  const World onLine = this->OnLine(0.5);
  this->Pointer.Press(zvtest::Left, this->Pointer.At(onLine));
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 5);
  EXPECT_EQ(this->Curve->HandlePolyData->GetNumberOfPoints(), 5);
  EXPECT_EQ(this->Curve->HandlePolyData->GetNumberOfVerts(), 5);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, 2);
  EXPECT_EQ(this->Curve->GetState(), zvSplineWidget::Moving);
  EXPECT_EQ(recorder.Names(), (Names{ "RenderEvent", "StartInteractionEvent", "RenderEvent" }));
  const World before = this->HandleAt(2);
  this->Pointer.MoveTo({ { 200, 200 } });
  EXPECT_NE(this->HandleAt(2), before);
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

// ---- AddHandle

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

// ---- Life and death

TEST_F(SplineWidgetMouse, DeletedBeforeItIsEnabledTakesTheLineOfAddHandleWithIt)
{
  double position[3] = { 2, 2, 0 };
  this->Curve->AddHandle(position);
  const int props = this->Scene.Renderer()->GetViewProps()->GetNumberOfItems();
  this->Curve = nullptr;
  EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), props - 1);
}
