#include "zvPolyDataActor.h"

#include "zvTestKit.h"

#include "vtkActor.h"
#include "vtkCellArray.h"
#include "vtkMapper.h"
#include "vtkNew.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"
#include "vtkProperty.h"

#include <gtest/gtest.h>

namespace
{
class PolyDataActor : public zvtest::QuietTest
{
protected:
  PolyDataActor()
  {
    vtkNew<vtkPoints> points;
    points->InsertNextPoint(1.0, 2.0, 3.0);
    points->InsertNextPoint(4.0, 5.0, 6.0);
    vtkNew<vtkCellArray> lines;
    lines->InsertNextCell({ 0, 1 });
    this->Given->SetPoints(points);
    this->Given->SetLines(lines);
  }

  vtkNew<vtkPolyData> Given;
  vtkNew<vtkPolyData> Own;
  vtkNew<vtkActor> Actor;
};
}

TEST_F(PolyDataActor, CopiesDeeply)
{
  zvPolyDataActor::Copy(this->Own, this->Given);
  this->Given->GetPoints()->SetPoint(1, 0.0, 0.0, 0.0);
  ASSERT_EQ(this->Own->GetNumberOfPoints(), 2);
  EXPECT_EQ(this->Own->GetPoint(1)[0], 4.0);
  EXPECT_EQ(this->Own->GetNumberOfLines(), 1);
}

TEST_F(PolyDataActor, ACopyOfNothingIsEmpty)
{
  vtkNew<vtkPolyData> empty;
  zvPolyDataActor::Copy(this->Given, empty);
  EXPECT_EQ(this->Given->GetNumberOfPoints(), 0);
  EXPECT_EQ(this->Given->GetNumberOfCells(), 0);
}

TEST_F(PolyDataActor, PolyDataGivenToItselfKeepsItsCells)
{
  zvPolyDataActor::Copy(this->Given, this->Given);
  EXPECT_EQ(this->Given->GetNumberOfPoints(), 2);
  EXPECT_EQ(this->Given->GetNumberOfLines(), 1);
}

TEST_F(PolyDataActor, DrawsByANewMapperEachTime)
{
  zvPolyDataActor::Draw(this->Actor, this->Given);
  const vtkSmartPointer<vtkMapper> first = this->Actor->GetMapper();
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first->GetInput(), this->Given);
  zvPolyDataActor::Draw(this->Actor, this->Own);
  EXPECT_NE(this->Actor->GetMapper(), first);
  EXPECT_EQ(this->Actor->GetMapper()->GetInput(), this->Own);
}

TEST_F(PolyDataActor, ColoursAreStoredAsTheyAreInANewProperty)
{
  const double color[3] = { 255.0, 0.5, 0.0 };
  const vtkSmartPointer<vtkProperty> before = this->Actor->GetProperty();
  zvPolyDataActor::SetColor(this->Actor, color);
  EXPECT_NE(this->Actor->GetProperty(), before);
  EXPECT_EQ(this->Actor->GetProperty()->GetReferenceCount(), 1);
  for (int i = 0; i < 3; ++i)
  {
    EXPECT_EQ(this->Actor->GetProperty()->GetColor()[i], color[i]);
  }
  EXPECT_EQ(this->Actor->GetProperty()->GetPointSize(), 1.0f);
  zvPolyDataActor::SetColor(this->Actor, color, 2.7);
  EXPECT_EQ(this->Actor->GetProperty()->GetPointSize(), 2.7f);
  EXPECT_EQ(this->Actor->GetProperty()->GetColor()[0], 255.0);
}
