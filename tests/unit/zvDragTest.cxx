#include "zvDrag.h"

#include "zvTestKit.h"

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
