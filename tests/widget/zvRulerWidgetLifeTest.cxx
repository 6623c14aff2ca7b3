// How a ruler bears that parts of its view are missing or go, and observers that disable or release
// it.
#include "zvRulerFixture.h"

#include "zvEvents.h"

#include "vtkNew.h"
#include "vtkWeakPointer.h"

#include <initializer_list>

using zvtest::Display;
using zvtest::OpenRuler;
using zvtest::World;

namespace
{
class RulerWidgetLife : public zvtest::RulerTest
{
};
}

TEST_F(RulerWidgetLife, HandlersAreHarmlessWithoutAnInteractorOrARenderer)
{
  vtkNew<OpenRuler> lone;
  World x{ { 1, 2, 3 } };
  for (int i = 0; i < 2; ++i)
  {
    for (unsigned long event : zvEvents::Handle)
    {
      for (int state : { zvRulerWidget::MovingHandle, zvRulerWidget::MovingLine,
             zvRulerWidget::Scaling, zvRulerWidget::Outside })
      {
        lone->State = state;
        zvRulerWidget::ProcessEvents(nullptr, event, lone.Get(), nullptr);
      }
    }
    lone->EnablePointWidget();
    lone->DisablePointWidget();
    lone->HighlightLine(1);
    lone->HighlightHandles(1);
    lone->Scale(x.data(), x.data(), 0, 0);
    lone->SetInteractor(this->Scene.Interactor());
  }
  EXPECT_EQ(lone->CurrentPointWidget, nullptr);
  EXPECT_EQ(lone->GetEnabled(), 0);
}

TEST_F(RulerWidgetLife, ADragThatDisablingCutsOffIsOver)
{
  for (const Display& position : { this->OnEnd1(), this->OnLine() })
  {
    this->Enable();
    this->Pointer.Press(zvtest::Left, position);
    this->Ruler->SetEnabled(0);
    this->Enable();
    this->Pointer.MoveTo(this->Beside());
    this->ExpectEnds({ { -5, 0, 0 } }, { { 5, 0, 0 } });
    EXPECT_EQ(this->Ruler->State, zvRulerWidget::Start);
  }
}

TEST_F(RulerWidgetLife, MovesToAnotherInteractorWithItsCrosses)
{
  zvtest::Scene other;
  this->Enable();
  this->Ruler->SetInteractor(other.Interactor());
  EXPECT_EQ(this->Ruler->GetEnabled(), 0);
  EXPECT_EQ(this->PropsInView(), 0);
  this->Enable();
  EXPECT_EQ(other.Renderer()->GetViewProps()->GetNumberOfItems(), 4);
  EXPECT_EQ(this->Ruler->PointWidget1->GetInteractor(), other.Interactor());
  this->Ruler->SetEnabled(0);
}

namespace
{
const std::initializer_list<unsigned long> AllOfADrag = { vtkCommand::EnableEvent,
  vtkCommand::StartInteractionEvent, vtkCommand::InteractionEvent, vtkCommand::EndInteractionEvent,
  vtkCommand::DisableEvent };
}

TEST_F(RulerWidgetLife, MayBeReleasedFromItsOwnEvents)
{
  this->Ruler = nullptr;
  for (unsigned long event : AllOfADrag)
  {
    for (const Display& position : { this->OnEnd1(), this->OnLine() })
    {
      SCOPED_TRACE(vtkCommand::GetStringFromEventId(event));
      zvRulerWidget* ruler = zvRulerWidget::New();
      vtkWeakPointer<zvRulerWidget> alive = ruler;
      ruler->SetInteractor(this->Scene.Interactor());
      ruler->SetPoint1(-5, 0, 0);
      ruler->SetPoint2(5, 0, 0);
      zvtest::EventRecorder recorder;
      recorder.Watch(ruler, { event }, [&](const zvtest::RecordedEvent&) { ruler->Delete(); });
      ruler->SetEnabled(1);
      this->Pointer.Drag(zvtest::Left, position, Plus(position, 10, 10));
      if (alive)
      {
        ruler->SetEnabled(0);
      }
      EXPECT_EQ(alive, nullptr);
      EXPECT_EQ(this->PropsInView(), 0);
    }
  }
}

TEST_F(RulerWidgetLife, MayBeDisabledOrLoseItsInteractorInItsOwnEvents)
{
  for (unsigned long event : { vtkCommand::EnableEvent, vtkCommand::StartInteractionEvent,
         vtkCommand::InteractionEvent, vtkCommand::EndInteractionEvent })
  {
    for (bool takeInteractor : { false, true })
    {
      for (zvtest::Button button : { zvtest::Left, zvtest::Middle })
      {
        for (const Display& position : { this->OnEnd1(), this->OnLine() })
        {
          SCOPED_TRACE(vtkCommand::GetStringFromEventId(event));
          vtkNew<OpenRuler> ruler;
          ruler->SetInteractor(this->Scene.Interactor());
          ruler->SetPoint1(-5, 0, 0);
          ruler->SetPoint2(5, 0, 0);
          zvtest::EventRecorder recorder;
          recorder.Watch(ruler, { event },
            [&](const zvtest::RecordedEvent&)
            { takeInteractor ? ruler->SetInteractor(nullptr) : ruler->SetEnabled(0); });
          ruler->SetEnabled(1);
          this->Pointer.Drag(button, position, Plus(position, 10, 10));
          EXPECT_EQ(recorder.Count(event), 1);
          EXPECT_EQ(ruler->GetEnabled(), 0);
          EXPECT_EQ(ruler->State, zvRulerWidget::Start);
          EXPECT_EQ(this->PropsInView(), 0);
        }
      }
    }
  }
}

TEST_F(RulerWidgetLife, MayBeDisabledOrReleasedInAnyOfItsRenders)
{
  this->Ruler = nullptr;
  for (bool release : { false, true })
  {
    for (const Display& position : { this->OnEnd1(), this->OnLine() })
    {
      int victim = 0;
      for (bool reached = true; reached; ++victim)
      {
        SCOPED_TRACE(victim);
        zvRulerWidget* ruler = zvRulerWidget::New();
        vtkWeakPointer<zvRulerWidget> alive = ruler;
        ruler->SetInteractor(this->Scene.Interactor());
        ruler->SetPoint1(-5, 0, 0);
        ruler->SetPoint2(5, 0, 0);
        zvtest::EventRecorder recorder;
        int count = 0;
        recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent },
          [&](const zvtest::RecordedEvent&)
          {
            if (count++ == victim)
            {
              release ? ruler->Delete() : ruler->SetEnabled(0);
            }
          });
        ruler->SetEnabled(1);
        this->Pointer.Drag(zvtest::Left, position, Plus(position, 10, 10));
        reached = count > victim;
        count = victim + 1; // nothing more from the observer
        if (reached)
        {
          EXPECT_EQ(this->PropsInView(), 0);
        }
        if (reached && !release)
        {
          EXPECT_EQ(ruler->GetEnabled(), 0);
        }
        if (!reached || !release)
        {
          ruler->Delete();
        }
        EXPECT_EQ(alive, nullptr);
      }
      EXPECT_GE(victim, 6);
    }
  }
}

TEST_F(RulerWidgetLife, MayBeEnabledAgainWhileItIsDisabled)
{
  int victim = -1; // the event at first, then each render
  for (bool reached = true; reached; ++victim)
  {
    SCOPED_TRACE(victim);
    this->Enable();
    this->Pointer.Press(zvtest::Left, this->OnLine());
    zvtest::EventRecorder recorder;
    int renders = 0;
    bool done = false;
    const auto enableAgain = [&](const zvtest::RecordedEvent& event)
    {
      if (!done && (event.Id == vtkCommand::DisableEvent ? victim < 0 : renders++ == victim))
      {
        done = true;
        this->Enable();
      }
    };
    recorder.Watch(this->Ruler, { vtkCommand::DisableEvent }, enableAgain);
    recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent }, enableAgain);
    this->Ruler->SetEnabled(0);
    reached = done;
    EXPECT_EQ(this->Ruler->GetEnabled(), done ? 1 : 0);
    if (done)
    {
      EXPECT_GE(this->PropsInView(), 4);
      EXPECT_EQ(this->Ruler->PointWidget1->GetEnabled(), 1);
      EXPECT_EQ(this->Ruler->PointWidget2->GetEnabled(), 1);
      this->Pointer.Press(zvtest::Left, this->OnEnd2());
      EXPECT_EQ(this->Ruler->State, zvRulerWidget::MovingHandle);
      this->Pointer.Release(zvtest::Left);
    }
    done = true;
    this->Ruler->SetEnabled(0);
    EXPECT_EQ(this->PropsInView(), 0);
  }
  EXPECT_GE(victim, 4);
}

TEST_F(RulerWidgetLife, DeletedWhileGrabbedLeavesNothingBehind)
{
  for (const Display& position : { this->OnEnd1(), this->OnLine() })
  {
    this->Ruler = vtkSmartPointer<OpenRuler>::New();
    this->Ruler->SetInteractor(this->Scene.Interactor());
    this->Ruler->SetPoint1(-5, 0, 0);
    this->Ruler->SetPoint2(5, 0, 0);
    this->Enable();
    this->Pointer.Press(zvtest::Left, position);
    EXPECT_NE(this->Ruler->State, zvRulerWidget::Start);
    vtkSmartPointer<vtkCommand> command = this->Ruler->EventCallbackCommand;
    this->Ruler = nullptr;
    for (unsigned long event : zvEvents::Handle)
    {
      EXPECT_FALSE(this->Scene.Interactor()->HasObserver(event, command));
    }
    EXPECT_EQ(this->PropsInView(), 0);
    this->Pointer.MoveTo(this->Beside());
    this->Pointer.Release(zvtest::Left);
  }
}

TEST_F(RulerWidgetLife, OutlivesItsRenderersInMidDrag)
{
  for (const Display& position : { this->OnEnd1(), this->OnLine() })
  {
    zvtest::Scene scene;
    this->PutInto(scene);
    this->Enable();
    zvtest::Mouse mouse(scene);
    mouse.Press(zvtest::Left, position);
    EXPECT_NE(this->Ruler->State, zvRulerWidget::Outside);
    scene.DropRenderers();
    mouse.MoveTo({ { 20, 30 } });
    mouse.WheelForward({ { 20, 30 } });
    this->ExpectEnds({ { -5, 0, 0 } }, { { 5, 0, 0 } });
    mouse.Release(zvtest::Left);
    mouse.Press(zvtest::Left, position);
    EXPECT_EQ(this->Ruler->State, zvRulerWidget::Outside);
    EXPECT_FALSE(this->Ruler->IsClicked());
    this->Ruler->SetEnabled(0);
    EXPECT_EQ(this->Ruler->GetEnabled(), 0);
  }
}

TEST_F(RulerWidgetLife, LosesItsRendererAndIsStillDisabledWithoutATrace)
{
  this->Enable();
  this->Pointer.Press(zvtest::Left, this->OnEnd1());
  this->Ruler->SetCurrentRenderer(nullptr);
  this->Pointer.MoveTo(this->Beside());
  this->Pointer.Press(zvtest::Left, this->OnEnd1());
  EXPECT_EQ(this->Ruler->State, zvRulerWidget::Outside);
  this->Ruler->SetEnabled(0);
  EXPECT_EQ(this->Ruler->GetEnabled(), 0);
  EXPECT_EQ(this->PropsInView(), 0);
}

TEST_F(RulerWidgetLife, OutlivesItsView)
{
  for (const Display& position : { this->OnEnd1(), this->OnLine() })
  {
    zvtest::Scene scene;
    this->PutInto(scene);
    this->Enable();
    zvtest::Mouse(scene).Press(zvtest::Left, position);
    scene.DropRenderers();
    scene.DropInteractor();
    scene.DropWindow();
    EXPECT_EQ(this->Ruler->GetInteractor(), nullptr);
    EXPECT_EQ(this->Ruler->GetEnabled(), 0);
    this->Ruler->UpdateScaleLabel();
  }
}
