// The lasso widget under the user's hand: what each event does, what is seen, and how it ends.
#include "zvLassoFixture.h"

#include "zvEvents.h"

#include "vtkPropCollection.h"

#include <cmath>

using zvtest::World;

namespace
{
class LassoWidgetMouse : public zvtest::LassoTest
{
};
}

// ---- Its own ways

TEST_F(LassoWidgetMouse, ALeftPressOnAHandleSelectsItAndShowsAll)
{
  this->Show(Square());
  this->Curve->SetHandleVisibility(0);
  this->Scene.Render();
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 6, 6, 0 } }));
  EXPECT_EQ(this->Curve->GetState(), zvLassoWidget::Moving);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, 2);
  EXPECT_EQ(this->Curve->CurrentHandle.Get(), this->Curve->Handle[2].Get());
  EXPECT_EQ(this->Curve->Handle[2]->GetProperty(), this->Curve->GetSelectedHandleProperty());
  for (int i : { 0, 1, 3 })
  {
    EXPECT_EQ(this->Curve->Handle[i]->GetProperty(), this->Curve->GetHandleProperty());
  }
  EXPECT_EQ(this->Curve->ValidPick, 1);
  EXPECT_NEAR(this->Curve->LastPickPosition[0], 6.0, this->PixelSize());
  EXPECT_NEAR(this->Curve->LastPickPosition[1], 6.0, this->PixelSize());
  EXPECT_EQ(this->Curve->GetClosed(), 0);
  // The press itself is aborted: nobody behind the widget sees it.
  EXPECT_EQ(recorder.Names(), (Names{ "StartInteractionEvent", "RenderEvent" }));
  EXPECT_FALSE(recorder.Events().front().HasData);
}

TEST_F(LassoWidgetMouse, ALeftReleaseFadesTheHandlesWhichCanStillBePicked)
{
  this->Draw(Square(), true);
  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 6, 6, 0 } }));
  EXPECT_TRUE(this->Scene.Look().HasNear(Red, this->Scene.At({ { 6, -6, 0 } }), 1, 60));
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
  this->Pointer.Release(zvtest::Left);
  EXPECT_EQ(this->Curve->GetState(), zvLassoWidget::Start);
  EXPECT_EQ(this->Curve->CurrentHandle, nullptr);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, 2); // for the next press to replace
  EXPECT_EQ(recorder.Names(), (Names{ "EndInteractionEvent", "RenderEvent" }));
  EXPECT_TRUE(this->AllHandlesHave(this->Curve->GetClosedHandleProperty()));
  EXPECT_EQ(this->Scene.Look().Count(Red, 60), 0);
  EXPECT_GT(this->Scene.Look().Count(Cyan), 300);

  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 6, -6, 0 } }));
  EXPECT_EQ(this->Curve->CurrentHandleIndex, 1);
  EXPECT_GT(this->Scene.Look().Count(Red, 60), 0);
}

TEST_F(LassoWidgetMouse, APressOnTheLineInsertsAHandleAndDragsIt)
{
  this->Show(Square(), true);
  this->Curve->SetHandleVisibility(0);
  this->Scene.Render();
  const World onLine = this->OnLine(0.375); // between handles 1 and 2
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
  this->Pointer.Press(zvtest::Left, this->Pointer.At(onLine));
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 5);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, 2);
  EXPECT_EQ(this->Curve->CurrentHandle.Get(), this->Curve->Handle[2].Get());
  EXPECT_EQ(this->Curve->GetState(), zvLassoWidget::Moving);
  // Before the insertion, in it, and at the end.
  EXPECT_EQ(recorder.Names(),
    (Names{ "RenderEvent", "RenderEvent", "StartInteractionEvent", "RenderEvent" }));
  EXPECT_EQ(this->Curve->Handle[0]->GetProperty(), this->Curve->GetHandleProperty());
  const zvtest::Display to{ { 200, 200 } };
  this->Pointer.MoveTo(to);
  EXPECT_NEAR(this->Scene.At(this->HandleAt(2))[0], to[0], 2);
  EXPECT_NEAR(this->Scene.At(this->HandleAt(2))[1], to[1], 2);
}

TEST_F(LassoWidgetMouse, APressOnNothingAppendsToAnOpenCurve)
{
  this->Show(Square());
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 0, 0, 0 } }));
  EXPECT_EQ(this->Curve->GetState(), zvLassoWidget::Placing);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, -1);
  EXPECT_EQ(this->Curve->CurrentHandle, nullptr);
  std::vector<World> expected = Square();
  expected.push_back({ { 0, 0, 0 } });
  this->ExpectHandles(expected, 2.0 * this->PixelSize());
  EXPECT_TRUE(this->AllHandlesHave(this->Curve->GetHandleProperty()));
  // Before the handle, when all are remade, when it is shown, and at the end.
  EXPECT_EQ(recorder.Names(),
    (Names{ "RenderEvent", "RenderEvent", "RenderEvent", "StartInteractionEvent", "RenderEvent" }));
}

TEST_F(LassoWidgetMouse, GrowsFromNothingByPressesAndIsClosedOnTheFirstHandle)
{
  this->Curve->SetEnabled(1);
  for (const World& handle : Square())
  {
    this->Pointer.Press(zvtest::Left, this->Pointer.At(handle));
    this->Pointer.Release(zvtest::Left);
  }
  this->ExpectHandles(Square(), 2.0 * this->PixelSize());
  EXPECT_EQ(this->Curve->IsClosed(), 0);
  this->Pointer.Press(zvtest::Left, this->Pointer.At(this->HandleAt(0)));
  EXPECT_EQ(this->Curve->GetClosed(), 1);
  EXPECT_EQ(this->Curve->IsClosed(), 1);
}

TEST_F(LassoWidgetMouse, LockedItLeavesTheLeftButtonAndMotionToOthers)
{
  this->Show(Square());
  this->Curve->CurveGrabbed = true;
  this->Curve->SetState(zvLassoWidget::Locked);
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
  for (const World& at : { World{ { 6, 6, 0 } }, this->OnLine(0.5), World{ { 0, 0, 0 } } })
  {
    this->Pointer.Drag(zvtest::Left, this->Pointer.At(at), { { 150, 150 } });
    EXPECT_EQ(recorder.Names(),
      (Names{ "LeftButtonPressEvent", "MouseMoveEvent", "LeftButtonReleaseEvent" }));
    recorder.Clear();
  }
  EXPECT_EQ(this->Curve->GetState(), zvLassoWidget::Locked);
  EXPECT_TRUE(this->Curve->CurveGrabbed); // not even read
  this->ExpectHandles(Square());
}

TEST_F(LassoWidgetMouse, LockedItStillTakesTheMiddleButtonByDesign)
{
  this->Show(Square(), true);
  this->Curve->SetState(zvLassoWidget::Locked);
  const zvtest::Display from = this->Pointer.At({ { 6, -6, 0 } });
  this->Pointer.Press(zvtest::Middle, from);
  EXPECT_EQ(this->Curve->GetState(), zvLassoWidget::Moving);
  this->Pointer.MoveTo({ { from[0] - 20, from[1] + 10 } });
  std::vector<World> expected = Square();
  for (World& handle : expected)
  {
    handle[0] -= 20.0 * this->PixelSize();
    handle[1] += 10.0 * this->PixelSize();
  }
  this->ExpectHandles(expected, 1e-6);
  this->Pointer.Release(zvtest::Middle);
  EXPECT_EQ(this->Curve->GetState(), zvLassoWidget::Start);
}

TEST_F(LassoWidgetMouse, LockedAMiddleReleaseUnlocksIt)
{
  this->Show(Square());
  this->Curve->SetState(zvLassoWidget::Locked);
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
  this->Pointer.Release(zvtest::Middle);
  EXPECT_EQ(this->Curve->GetState(), zvLassoWidget::Start);
  EXPECT_EQ(recorder.Names(), (Names{ "EndInteractionEvent", "RenderEvent" }));
}

TEST_F(LassoWidgetMouse, LockedAMiddlePressOnNothingPutsItOutside)
{
  this->Show(Square());
  this->Curve->SetState(zvLassoWidget::Locked);
  this->Pointer.Press(zvtest::Middle, this->Pointer.At({ { 0, 0, 0 } }));
  EXPECT_EQ(this->Curve->GetState(), zvLassoWidget::Outside);
}

TEST_F(LassoWidgetMouse, AMiddleDragAfterALeftDragMovesTheWholeLasso)
{
  this->Show(Square(), true);
  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 6, 6, 0 } }));
  this->Pointer.Release(zvtest::Left);
  const zvtest::Display from = this->Pointer.At({ { 6, -6, 0 } });
  this->Pointer.Drag(zvtest::Middle, from, { { from[0], from[1] + 10 } });
  std::vector<World> expected = Square();
  for (World& handle : expected)
  {
    handle[1] += 10.0 * this->PixelSize();
  }
  this->ExpectHandles(expected, 1e-6);
}

TEST_F(LassoWidgetMouse, ReleasesEndADragInEveryStateButStartAndOutside)
{
  for (zvtest::Button button : { zvtest::Left, zvtest::Middle })
  {
    for (int state : { zvLassoWidget::Moving, zvLassoWidget::Scaling, zvLassoWidget::Spinning,
           zvLassoWidget::Placing })
    {
      this->Show(Square());
      this->Curve->SetHandleVisibility(1);
      this->Curve->SetState(state);
      this->Curve->CurrentHandleIndex = 3;
      this->Curve->CurveGrabbed = true;
      this->Curve->HighlightLine(1);
      zvtest::EventRecorder recorder;
      this->RecordWithRenders(recorder);
      recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
      this->Pointer.Release(button);
      EXPECT_EQ(this->Curve->GetState(), zvLassoWidget::Start);
      EXPECT_FALSE(this->Curve->CurveGrabbed);
      EXPECT_EQ(this->Curve->CurrentHandleIndex, 3);
      EXPECT_EQ(this->Curve->LineActor->GetProperty(), this->Curve->GetLineProperty());
      EXPECT_TRUE(
        this->AllHandlesHave(button == zvtest::Left ? this->Curve->GetClosedHandleProperty()
                                                    : this->Curve->GetHandleProperty()));
      EXPECT_EQ(recorder.Names(), (Names{ "EndInteractionEvent", "RenderEvent" }));
    }
  }
}

TEST_F(LassoWidgetMouse, TheHandlesKeepTheirSizeOnTheScreenWhenTheViewZooms)
{
  this->Show(Square());
  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 6, 6, 0 } })); // takes the depth
  this->Pointer.Release(zvtest::Left);
  const double before = this->RadiusOf(0) / this->PixelSize();
  for (bool forward : { true, false })
  {
    this->Scene.Renderer()->GetActiveCamera()->Zoom(forward ? 3.0 : 0.5);
    EXPECT_GT(std::abs(this->RadiusOf(0) / this->PixelSize() - before), 0.3 * before);
    forward ? this->Pointer.WheelForward({ { 100, 100 } })
            : this->Pointer.WheelBackward({ { 100, 100 } });
    for (int i = 0; i < 4; ++i)
    {
      EXPECT_NEAR(this->RadiusOf(i) / this->PixelSize(), before, 1e-3 * before);
    }
  }
  this->Scene.Renderer()->GetActiveCamera()->Zoom(2.0);
  this->Pointer.Release(zvtest::Right);
  EXPECT_NEAR(this->RadiusOf(0) / this->PixelSize(), before, 1e-3 * before);
}

TEST_F(LassoWidgetMouse, AddHandleShowsLineAndHandlesAndLeavesItPlacing)
{
  double position[3] = { 2, 2, 0 };
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  this->Curve->AddHandle(position);
  EXPECT_EQ(this->Curve->GetState(), zvLassoWidget::Placing);
  EXPECT_EQ(this->Curve->GetEnabled(), 0);
  EXPECT_EQ(this->Curve->GetCurrentRenderer(), this->Scene.Renderer());
  EXPECT_TRUE(this->IsShown(this->Curve->LineActor));
  EXPECT_TRUE(this->IsShown(this->Curve->Handle[0]));
  EXPECT_EQ(this->Curve->LineActor->GetProperty(), this->Curve->GetLineProperty());
  EXPECT_TRUE(this->AllHandlesHave(this->Curve->GetHandleProperty()));
  EXPECT_EQ(this->Curve->CurrentHandle, nullptr);
  EXPECT_EQ(this->Curve->ValidPick, 1);
  EXPECT_EQ(recorder.Names(), (Names{ "RenderEvent", "RenderEvent" }));
  this->ExpectHandles({ { { 2, 2, 0 } } });
  EXPECT_TRUE(this->Scene.Look().HasNear(Red, this->Scene.At({ { 2, 2, 0 } }), 1, 60));
}

// A host that draws: it locks all lassos, asks which is under the mouse, and adds to the newest.
TEST_F(LassoWidgetMouse, AHostDrawsALassoClickByClickUntilItIsClosed)
{
  const std::vector<World> clicks = { { { -6, -6, 0 } }, { { 6, -6, 0 } }, { { 6, 6, 0 } },
    { { -6, -6, 0 } } };
  for (const World& click : clicks)
  {
    const zvtest::Display at = this->Pointer.At(click);
    this->Scene.Interactor()->SetEventPosition(at[0], at[1]);
    this->Curve->SetState(zvLassoWidget::Locked);
    if (this->Curve->IsClicked())
    {
      this->Curve->SetState(zvLassoWidget::Outside);
    }
    World position = click;
    this->Curve->AddHandle(position.data());
  }
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 3);
  EXPECT_EQ(this->Curve->GetEnabled(), 1);
  EXPECT_EQ(this->Curve->IsClosed(), 1);
  EXPECT_EQ(this->Curve->GetState(), zvLassoWidget::Start);
  this->Curve->SetHandleVisibility(0);
  EXPECT_EQ(this->Scene.RenderAndLook().Count(Red, 60), 0);
  EXPECT_GT(this->Scene.Look().Count(Cyan), 200);
}

// ---- Life and death of its own

TEST_F(LassoWidgetMouse, DeletedBeforeItIsEnabledTakesWhatAddHandleShowedWithIt)
{
  double position[3] = { 2, 2, 0 };
  this->Curve->AddHandle(position);
  const int props = this->Scene.Renderer()->GetViewProps()->GetNumberOfItems();
  this->Curve = nullptr;
  EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), props - 2);
}

TEST_F(LassoWidgetMouse, DeletedAfterItsInteractorChangedItIsOffBoth)
{
  class zvtest::Scene other;
  this->Curve->AddObservers(); // not enabled: a change of the interactor leaves the command there
  this->Curve->SetInteractor(other.Interactor());
  this->Curve->AddObservers();
  vtkSmartPointer<vtkCommand> command = this->Curve->EventCallbackCommand;
  this->Curve = nullptr;
  for (unsigned long event : zvEvents::Handle)
  {
    EXPECT_FALSE(this->Scene.Interactor()->HasObserver(event, command));
    EXPECT_FALSE(other.Interactor()->HasObserver(event, command));
  }
  this->Pointer.Drag(zvtest::Left, { { 100, 100 } }, { { 200, 200 } });
}
