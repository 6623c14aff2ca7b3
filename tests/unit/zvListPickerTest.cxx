#include "zvListPicker.h"

#include "zvHandleCurve.h"
#include "zvTestKit.h"

#include "vtkActor.h"
#include "vtkAssembly.h"
#include "vtkNew.h"
#include "vtkPolyData.h"
#include "vtkPolyDataMapper.h"

#include <gtest/gtest.h>

namespace
{
// Counts how often it really looks at cells.
class CountingPicker : public zvListPicker
{
public:
  static CountingPicker* New() { return new CountingPicker; }
  int Tests = 0;

protected:
  bool IntersectDataSetWithLine(vtkDataSet* data, const double p1[3], const double p2[3], double t1,
    double t2, double tolerance, vtkAbstractCellLocator*& locator, vtkIdType& cell, int& sub,
    double& t, double& distance, double position[3], double parametric[3]) override
  {
    ++this->Tests;
    return this->zvListPicker::IntersectDataSetWithLine(
      data, p1, p2, t1, t2, tolerance, locator, cell, sub, t, distance, position, parametric);
  }
};

class ListPicker : public zvtest::QuietTest
{
protected:
  ListPicker()
  {
    this->Scene.LookAlong(2);
    const double bounds[6] = { -10, 10, -10, 10, -10, 10 };
    this->Scene.ResetCamera(bounds);
    this->Scene.Render();
  }

  // A grid of handles three millimetres apart, at a depth of its own.
  static vtkSmartPointer<vtkActor> MakeHandles(double z)
  {
    zvHandleCurve::Positions positions;
    for (int i = -9; i <= 9; i += 3)
    {
      for (int j = -9; j <= 9; j += 3)
      {
        positions.push_back({ { i + 0.1 * z, 1.0 * j, z } });
      }
    }
    vtkNew<vtkPolyData> data;
    data->SetPoints(zvHandleCurve::MakePoints(positions));
    data->SetVerts(zvHandleCurve::MakeVertices(static_cast<vtkIdType>(positions.size())));
    vtkNew<vtkPolyDataMapper> mapper;
    mapper->SetInputData(data);
    auto actor = vtkSmartPointer<vtkActor>::New();
    actor->SetMapper(mapper);
    return actor;
  }

  class zvtest::Scene Scene;
};
}

TEST_F(ListPicker, TestsEachPropOnce)
{
  auto handles = MakeHandles(0.0);
  vtkNew<CountingPicker> picker;
  picker->SetTolerance(0.005);
  picker->PickFromListOn();
  for (int i = 0; i < 100; ++i)
  {
    picker->AddPickList(handles);
  }
  const zvtest::Display at = this->Scene.At({ { 3, 6, 0 } });
  EXPECT_EQ(picker->Pick(at[0], at[1], 0.0, this->Scene.Renderer()), 1);
  EXPECT_EQ(picker->Tests, 1);
  EXPECT_EQ(picker->Pick(at[0], at[1], 0.0, this->Scene.Renderer()), 1);
  EXPECT_EQ(picker->Tests, 2); // each pick anew: the handles may have moved
}

TEST_F(ListPicker, AnswersAsTheStockPickerDoes)
{
  vtkNew<zvListPicker> ours;
  vtkNew<vtkCellPicker> stock;
  for (vtkCellPicker* picker : { static_cast<vtkCellPicker*>(ours), stock.Get() })
  {
    picker->SetTolerance(0.005);
    picker->PickFromListOn();
  }
  for (double z : { 0.0, 4.0, 0.0, -5.0 })
  {
    auto handles = MakeHandles(z);
    for (vtkCellPicker* picker : { static_cast<vtkCellPicker*>(ours), stock.Get() })
    {
      picker->AddPickList(handles);
      picker->AddPickList(handles);
    }
  }
  int hits = 0;
  for (int x = 0; x < 400; x += 7)
  {
    for (int y = 0; y < 400; y += 3)
    {
      const int hit = stock->Pick(x, y, 0.0, this->Scene.Renderer());
      ASSERT_EQ(ours->Pick(x, y, 0.0, this->Scene.Renderer()), hit);
      ASSERT_EQ(ours->GetPointId(), stock->GetPointId());
      ASSERT_EQ(ours->GetCellId(), stock->GetCellId());
      ASSERT_EQ(ours->GetSubId(), stock->GetSubId());
      ASSERT_EQ(ours->GetViewProp(), stock->GetViewProp());
      ASSERT_EQ(ours->GetPath() != nullptr, stock->GetPath() != nullptr);
      for (int axis = 0; axis < 3; ++axis)
      {
        ASSERT_EQ(ours->GetPickPosition()[axis], stock->GetPickPosition()[axis]);
      }
      hits += hit;
    }
  }
  EXPECT_GT(hits, 50);
}

TEST_F(ListPicker, APartOfAnAssemblyIsFoundInEachOfItsPlaces)
{
  auto handles = MakeHandles(0.0);
  vtkNew<vtkAssembly> here;
  here->AddPart(handles);
  vtkNew<vtkAssembly> there;
  there->AddPart(handles);
  there->SetPosition(1.0, 1.0, 0.0);
  vtkNew<zvListPicker> picker;
  picker->SetTolerance(0.005);
  picker->PickFromListOn();
  picker->AddPickList(here);
  picker->AddPickList(there);
  for (const zvtest::World& position :
    { zvtest::World{ { 3, 6, 0 } }, zvtest::World{ { 4, 7, 0 } } })
  {
    const zvtest::Display at = this->Scene.At(position);
    EXPECT_EQ(picker->Pick(at[0], at[1], 0.0, this->Scene.Renderer()), 1);
  }
}
