#include "zvViewLookup.h"

#include "zvTestKit.h"

#include "vtkActor.h"
#include "vtkCamera.h"
#include "vtkNew.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkSmartPointer.h"
#include "vtkWeakPointer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace
{
class ViewLookup : public zvtest::QuietTest
{
protected:
  static zvtest::SceneOptions TwoViews()
  {
    zvtest::SceneOptions options;
    options.Viewports = 2;
    return options;
  }

  // The last position is that of the event before.
  void PointAt(int x, int y)
  {
    this->Scene.Interactor()->SetEventInformation(x, y);
    this->Scene.Interactor()->SetEventInformation(x, y);
  }

  zvtest::Scene Scene{ TwoViews() };
};
}

TEST_F(ViewLookup, FindsTheRendererUnderTheLastEventPosition)
{
  this->PointAt(100, 200);
  EXPECT_EQ(zvViewLookup::Choose(nullptr, this->Scene.Interactor()), this->Scene.Renderer(0));
  this->Scene.Interactor()->SetEventInformation(300, 200);
  EXPECT_EQ(zvViewLookup::Choose(nullptr, this->Scene.Interactor()), this->Scene.Renderer(0));
  this->Scene.Interactor()->SetEventInformation(300, 200);
  EXPECT_EQ(zvViewLookup::Choose(nullptr, this->Scene.Interactor()), this->Scene.Renderer(1));
}

TEST_F(ViewLookup, FindsNoRendererWithoutAnInteractorAWindowOrARenderer)
{
  EXPECT_EQ(zvViewLookup::Choose(nullptr, nullptr), nullptr);
  vtkNew<vtkRenderWindowInteractor> windowless;
  EXPECT_EQ(zvViewLookup::Choose(nullptr, windowless), nullptr);
  this->Scene.DropRenderers();
  EXPECT_EQ(zvViewLookup::Choose(nullptr, this->Scene.Interactor()), nullptr);
}

TEST_F(ViewLookup, KeepsTheRendererThatThereIs)
{
  this->PointAt(100, 200);
  EXPECT_EQ(zvViewLookup::Choose(this->Scene.Renderer(1), this->Scene.Interactor()),
    this->Scene.Renderer(1));
  EXPECT_EQ(zvViewLookup::Choose(this->Scene.Renderer(1), nullptr), this->Scene.Renderer(1));
}

TEST_F(ViewLookup, KnowsWhetherARendererIsInAWindow)
{
  vtkSmartPointer<vtkRenderer> renderer = this->Scene.Renderer(0);
  EXPECT_TRUE(zvViewLookup::IsShown(renderer));
  this->Scene.DropRenderers();
  EXPECT_FALSE(zvViewLookup::IsShown(renderer));
  EXPECT_FALSE(zvViewLookup::IsShown(nullptr));
}

TEST_F(ViewLookup, KnowsWhichViewThePointerIsIn)
{
  this->PointAt(100, 200);
  EXPECT_TRUE(zvViewLookup::HasPointer(this->Scene.Renderer(0), this->Scene.Interactor()));
  EXPECT_FALSE(zvViewLookup::HasPointer(this->Scene.Renderer(1), this->Scene.Interactor()));
  this->PointAt(100, 401);
  EXPECT_FALSE(zvViewLookup::HasPointer(this->Scene.Renderer(0), this->Scene.Interactor()));
}

TEST_F(ViewLookup, ThePointerIsInNoViewThatIsNotThere)
{
  this->PointAt(100, 200);
  vtkSmartPointer<vtkRenderer> renderer = this->Scene.Renderer(0);
  EXPECT_FALSE(zvViewLookup::HasPointer(nullptr, this->Scene.Interactor()));
  EXPECT_FALSE(zvViewLookup::HasPointer(renderer, nullptr));
  this->Scene.DropRenderers();
  EXPECT_FALSE(zvViewLookup::HasPointer(renderer, this->Scene.Interactor()));
}

TEST_F(ViewLookup, RendersTheWindowOfAnInteractorThatIsThere)
{
  zvtest::EventRecorder events;
  events.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  zvViewLookup::Render(nullptr);
  EXPECT_EQ(events.Count(vtkCommand::RenderEvent), 0);
  zvViewLookup::Render(this->Scene.Interactor());
  EXPECT_EQ(events.Count(vtkCommand::RenderEvent), 1);
}

TEST_F(ViewLookup, MeasuresTheDiagonalOfAViewportAtADepth)
{
  // Each view is 200 by 400 pixels.
  vtkCamera* camera = this->Scene.Renderer(1)->GetActiveCamera();
  camera->SetPosition(0.0, 0.0, 100.0);
  camera->SetFocalPoint(0.0, 0.0, 0.0);
  camera->SetClippingRange(1.0, 200.0);
  camera->ParallelProjectionOn();
  camera->SetParallelScale(8.0);
  const double near[3] = { 1.0, 2.0, 50.0 };
  const double far[3] = { 0.0, 0.0, 0.0 };
  vtkRenderer* view = this->Scene.Renderer(1);
  EXPECT_NEAR(zvViewLookup::DiagonalAt(view, near), std::hypot(8.0, 16.0), 1e-9);
  EXPECT_NEAR(zvViewLookup::DiagonalAt(view, far), std::hypot(8.0, 16.0), 1e-9);
  camera->ParallelProjectionOff();
  camera->SetViewAngle(90.0);
  EXPECT_NEAR(zvViewLookup::DiagonalAt(view, near), std::hypot(50.0, 100.0), 1e-6);
  EXPECT_NEAR(zvViewLookup::DiagonalAt(view, far), std::hypot(100.0, 200.0), 1e-6);
}

TEST_F(ViewLookup, AViewThatIsNotShownHasNoDiagonal)
{
  const double point[3] = { 0.0, 0.0, 0.0 };
  EXPECT_EQ(zvViewLookup::DiagonalAt(nullptr, point), 0.0);
  vtkNew<vtkRenderer> windowless;
  EXPECT_EQ(zvViewLookup::DiagonalAt(windowless, point), 0.0);
}

TEST_F(ViewLookup, TakesAPropOutOfEveryViewThatIsThere)
{
  vtkNew<vtkActor> actor;
  vtkNew<vtkActor> other;
  auto windowless = vtkSmartPointer<vtkRenderer>::New();
  for (vtkRenderer* view : { this->Scene.Renderer(0), this->Scene.Renderer(1), windowless.Get() })
  {
    view->AddViewProp(actor);
    view->AddViewProp(other);
  }
  windowless = nullptr;
  zvViewLookup::TakeOut(actor);
  zvViewLookup::TakeOut(actor);
  for (int i : { 0, 1 })
  {
    EXPECT_FALSE(this->Scene.Renderer(i)->HasViewProp(actor));
    EXPECT_TRUE(this->Scene.Renderer(i)->HasViewProp(other));
  }
  EXPECT_EQ(actor->GetReferenceCount(), 1);
}

TEST_F(ViewLookup, APropThatOnlyItsViewHoldsCanBeTakenOut)
{
  vtkWeakPointer<vtkActor> actor;
  {
    vtkNew<vtkActor> made;
    this->Scene.Renderer(0)->AddViewProp(made);
    actor = made.Get();
  }
  ASSERT_NE(actor, nullptr);
  zvViewLookup::TakeOut(actor);
  EXPECT_EQ(actor, nullptr);
}

// The toolkit forgets a removal in a render in the middle of an event, and then goes on with an
// observer that is gone.
TEST_F(ViewLookup, AnObserverOfTheRenderMayRemoveThoseThatTheEventHasStillToComeTo)
{
  vtkRenderWindowInteractor* interactor = this->Scene.Interactor();
  zvtest::EventRecorder rendering;
  zvtest::EventRecorder staying;
  auto going = std::make_unique<zvtest::EventRecorder>();
  rendering.Watch(
    interactor, { vtkCommand::MouseMoveEvent },
    [&](const zvtest::RecordedEvent&) { zvViewLookup::Render(interactor); }, 2.0f);
  going->Watch(interactor, { vtkCommand::MouseMoveEvent }, 1.0f);
  staying.Watch(interactor, { vtkCommand::MouseMoveEvent }, 0.5f);
  zvtest::EventRecorder renders;
  renders.Watch(
    interactor, { vtkCommand::RenderEvent }, [&](const zvtest::RecordedEvent&) { going.reset(); });
  interactor->InvokeEvent(vtkCommand::MouseMoveEvent);
  EXPECT_EQ(renders.Events().size(), 1u);
  EXPECT_EQ(rendering.Events().size(), 1u);
  EXPECT_EQ(staying.Events().size(), 1u) << "each observer sees the event once";
}

TEST_F(ViewLookup, AnObserverOfTheRenderMayReleaseTheInteractor)
{
  auto interactor = vtkSmartPointer<vtkRenderWindowInteractor>::New();
  zvtest::EventRecorder renders;
  vtkRenderWindowInteractor* raw = interactor;
  renders.Watch(
    raw, { vtkCommand::RenderEvent }, [&](const zvtest::RecordedEvent&) { interactor = nullptr; });
  zvViewLookup::Render(raw);
  EXPECT_EQ(renders.Events().size(), 1u);
  EXPECT_EQ(interactor, nullptr);
}
