#include "zvViewLookup.h"

#include "zvTestKit.h"

#include "vtkNew.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkSmartPointer.h"

#include <gtest/gtest.h>

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
