#include "zvDrag.h"

#include "zvTestKit.h"

#include "vtkCamera.h"

#include <cmath>

class Drag : public zvtest::QuietTest
{
protected:
  bool GetMotion(vtkRenderWindowInteractor* interactor, vtkRenderer* renderer)
  {
    return zvDrag::GetMotion(
      interactor, renderer, this->Depth.data(), this->Previous.data(), this->Current.data());
  }

  void ExpectNear(const zvtest::World& actual, const zvtest::World& expected)
  {
    for (int i = 0; i < 3; ++i)
    {
      EXPECT_NEAR(actual[i], expected[i], 0.05) << i;
    }
  }

  zvtest::World Depth{ { 0, 0, 4 } };
  zvtest::World Previous{ { 7, 7, 7 } };
  zvtest::World Current{ { 7, 7, 7 } };
};

TEST_F(Drag, ThePointsLieUnderTheLastAndTheCurrentPositionAtTheDepth)
{
  zvtest::SceneOptions options;
  for (const bool parallel : { true, false })
  {
    SCOPED_TRACE(parallel);
    options.ParallelProjection = parallel;
    zvtest::Scene scene(options);
    const double bounds[6] = { -5, 5, -5, 5, 0, 8 };
    scene.ResetCamera(bounds);
    scene.Render();
    zvtest::Mouse mouse(scene);
    const zvtest::World from = { { -2, 1, 4 } };
    const zvtest::World to = { { 3, -1, 4 } };
    mouse.MoveTo(mouse.At(from));
    mouse.MoveTo(mouse.At(to));
    ASSERT_TRUE(this->GetMotion(scene.Interactor(), scene.Renderer()));
    this->ExpectNear(this->Previous, from);
    this->ExpectNear(this->Current, to);
  }
}

TEST_F(Drag, WithoutAViewThereIsNoMotion)
{
  zvtest::Scene scene;
  EXPECT_FALSE(this->GetMotion(nullptr, scene.Renderer()));
  EXPECT_FALSE(this->GetMotion(scene.Interactor(), nullptr));
  vtkNew<vtkRenderer> windowless;
  EXPECT_FALSE(this->GetMotion(scene.Interactor(), windowless));
  EXPECT_EQ(this->Previous[0], 7);
  EXPECT_EQ(this->Current[0], 7);
}

TEST_F(Drag, AtADisplayDepthThePointsLieOnThatPlaneOfTheView)
{
  zvtest::SceneOptions options;
  for (const bool parallel : { true, false })
  {
    options.ParallelProjection = parallel;
    zvtest::Scene scene(options);
    const double bounds[6] = { -5, 5, -5, 5, 0, 8 };
    scene.ResetCamera(bounds);
    scene.Render();
    zvtest::Mouse mouse(scene);
    mouse.MoveTo({ { 100, 120 } });
    mouse.MoveTo({ { 300, 310 } });
    vtkCamera* camera = scene.Renderer()->GetActiveCamera();
    for (const double depth : { 0.0, 1.0 })
    {
      ASSERT_TRUE(zvDrag::GetMotionAtDepth(
        scene.Interactor(), scene.Renderer(), depth, this->Previous.data(), this->Current.data()));
      const double distance = camera->GetPosition()[2] - camera->GetClippingRange()[depth > 0.0];
      EXPECT_NEAR(this->Previous[2], distance, 1e-3);
      EXPECT_NEAR(this->Current[2], distance, 1e-3);
      EXPECT_NEAR(scene.At(this->Previous)[0], 100, 1);
      EXPECT_NEAR(scene.At(this->Previous)[1], 120, 1);
      EXPECT_NEAR(scene.At(this->Current)[0], 300, 1);
      EXPECT_NEAR(scene.At(this->Current)[1], 310, 1);
    }
  }
}

TEST_F(Drag, WithoutAViewThereIsNoMotionAtADepthEither)
{
  zvtest::Scene scene;
  EXPECT_FALSE(zvDrag::GetMotionAtDepth(
    nullptr, scene.Renderer(), 0.0, this->Previous.data(), this->Current.data()));
  EXPECT_FALSE(zvDrag::GetMotionAtDepth(
    scene.Interactor(), nullptr, 0.0, this->Previous.data(), this->Current.data()));
  EXPECT_EQ(this->Previous[0], 7);
  EXPECT_EQ(this->Current[0], 7);
}
