#include "zvPick.h"

#include "zvTestKit.h"

#include "vtkActor.h"
#include "vtkAssembly.h"
#include "vtkCellPicker.h"
#include "vtkNew.h"
#include "vtkPlaneSource.h"
#include "vtkPolyDataMapper.h"

class Pick : public zvtest::QuietTest
{
protected:
  Pick()
  {
    vtkNew<vtkPlaneSource> plane;
    vtkNew<vtkPolyDataMapper> mapper;
    mapper->SetInputConnection(plane->GetOutputPort());
    this->Actor->SetMapper(mapper);
  }

  void Look()
  {
    const double bounds[6] = { -2, 2, -2, 2, -1, 1 };
    this->Scene.ResetCamera(bounds);
    this->Scene.Render();
  }

  bool Hits(const zvtest::World& at, vtkProp* prop)
  {
    const zvtest::Display position = this->Scene.At(at);
    return zvPick::Hits(this->Picker, position[0], position[1], this->Scene.Renderer(), prop);
  }

  zvtest::Scene Scene;
  vtkNew<vtkCellPicker> Picker;
  vtkNew<vtkActor> Actor;
};

TEST_F(Pick, APropIsHitWhereItIsSeen)
{
  this->Scene.Renderer()->AddViewProp(this->Actor);
  this->Look();
  EXPECT_TRUE(this->Hits({ { 0.2, 0.1, 0 } }, this->Actor));
  EXPECT_FALSE(this->Hits({ { 1.5, 0.1, 0 } }, this->Actor));
}

TEST_F(Pick, AnotherPropInThePlaceIsNotTheOneAskedFor)
{
  this->Scene.Renderer()->AddViewProp(this->Actor);
  this->Look();
  vtkNew<vtkActor> other;
  EXPECT_FALSE(this->Hits({ { 0, 0, 0 } }, other));
  EXPECT_FALSE(this->Hits({ { 0, 0, 0 } }, nullptr));
  EXPECT_TRUE(zvPick::WasHit(this->Picker, this->Actor));
}

TEST_F(Pick, AllPropsOnThePathCount)
{
  vtkNew<vtkAssembly> assembly;
  assembly->AddPart(this->Actor);
  this->Scene.Renderer()->AddViewProp(assembly);
  this->Look();
  EXPECT_TRUE(this->Hits({ { 0, 0, 0 } }, assembly));
  EXPECT_TRUE(this->Hits({ { 0, 0, 0 } }, this->Actor));
}

TEST_F(Pick, WithoutAViewNothingIsPicked)
{
  this->Scene.Renderer()->AddViewProp(this->Actor);
  this->Look();
  ASSERT_TRUE(this->Hits({ { 0, 0, 0 } }, this->Actor));
  EXPECT_EQ(zvPick::At(this->Picker, 200, 200, nullptr), 0);
  EXPECT_FALSE(zvPick::Hits(this->Picker, 200, 200, nullptr, this->Actor));
  EXPECT_EQ(zvPick::At(nullptr, 200, 200, this->Scene.Renderer()), 0);
  EXPECT_FALSE(zvPick::WasHit(nullptr, this->Actor));
  vtkNew<vtkRenderer> windowless;
  EXPECT_EQ(zvPick::At(this->Picker, 200, 200, windowless), 0);
}
