#include "zvViewPicker.h"

#include "zvFourViewsFixture.h"

#include "vtkActor.h"
#include "vtkNew.h"
#include "vtkPolyDataMapper.h"
#include "vtkSphereSource.h"

#include <gtest/gtest.h>

using zvtest::ThreeD;
using zvtest::Z;

namespace
{
class ViewPicker : public zvtest::FourViews
{
protected:
  ViewPicker()
  {
    this->Picker->PickFromListOn();
    this->Picker->SetTolerance(0.005);
  }

  vtkSmartPointer<vtkActor> MakeBall(double z)
  {
    vtkNew<vtkSphereSource> ball;
    ball->SetCenter(0, 0, z);
    ball->SetRadius(2);
    vtkNew<vtkPolyDataMapper> mapper;
    mapper->SetInputConnection(ball->GetOutputPort());
    auto actor = vtkSmartPointer<vtkActor>::New();
    actor->SetMapper(mapper);
    this->Picker->AddPickList(actor);
    return actor;
  }

  vtkProp* PickMiddle(zvtest::View view)
  {
    return zvViewPicker::PickProp(this->Picker, 100, 100, this->Renderer(view));
  }

  vtkNew<zvViewPicker> Picker;
};
}

TEST_F(ViewPicker, HitsAPropOfItsListOnlyInAViewThatHasIt)
{
  auto ball = this->MakeBall(0.0);
  EXPECT_EQ(this->PickMiddle(Z), nullptr);
  this->Renderer(Z)->AddActor(ball);
  EXPECT_EQ(this->PickMiddle(Z), ball);
  EXPECT_EQ(this->PickMiddle(ThreeD), nullptr);
  this->Renderer(Z)->RemoveActor(ball);
  EXPECT_EQ(this->PickMiddle(Z), nullptr);
}

TEST_F(ViewPicker, APropThatWasTakenOutHidesNothing)
{
  auto behind = this->MakeBall(-5.0);
  auto before = this->MakeBall(5.0);
  this->Renderer(Z)->AddActor(behind);
  this->Renderer(Z)->AddActor(before);
  EXPECT_EQ(this->PickMiddle(Z), before);
  EXPECT_NEAR(this->Picker->GetPickPosition()[2], 7.0, 0.1);
  this->Renderer(Z)->RemoveActor(before);
  EXPECT_EQ(this->PickMiddle(Z), behind);
  EXPECT_NEAR(this->Picker->GetPickPosition()[2], -3.0, 0.1);
}

TEST_F(ViewPicker, WithoutAViewNothingIsHit)
{
  auto ball = this->MakeBall(0.0);
  this->Renderer(Z)->AddActor(ball);
  ASSERT_EQ(this->PickMiddle(Z), ball);
  EXPECT_EQ(zvViewPicker::PickProp(this->Picker, 100, 100, nullptr), nullptr);
  vtkNew<vtkRenderer> windowless;
  windowless->AddActor(ball);
  EXPECT_EQ(zvViewPicker::PickProp(this->Picker, 100, 100, windowless), nullptr);
}
