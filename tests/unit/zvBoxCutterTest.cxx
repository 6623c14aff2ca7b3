// The quick cutter promises the output of the stock class to the last bit. The tests draw many
// boxes and planes from a fixed seed, run both classes and compare all that they give.
#include "zvBoxCutter.h"
#include "zvDice.h"
#include "zvTestKit.h"

#include <vtkAlgorithm.h>
#include <vtkCallbackCommand.h>
#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkCommand.h>
#include <vtkCubeSource.h>
#include <vtkCutter.h>
#include <vtkDataArray.h>
#include <vtkNew.h>
#include <vtkPlane.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkSphere.h>
#include <vtkSphereSource.h>
#include <vtkTransform.h>

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <functional>
#include <limits>

namespace
{
bool AreSame(vtkDataArray* a, vtkDataArray* b)
{
  const char* const nameA = a->GetName() ? a->GetName() : "";
  const char* const nameB = b->GetName() ? b->GetName() : "";
  const vtkIdType bytes = a->GetDataTypeSize() * a->GetNumberOfValues();
  return std::strcmp(nameA, nameB) == 0 && a->GetDataType() == b->GetDataType() &&
    a->GetNumberOfComponents() == b->GetNumberOfComponents() &&
    a->GetNumberOfTuples() == b->GetNumberOfTuples() &&
    (bytes == 0 || std::memcmp(a->GetVoidPointer(0), b->GetVoidPointer(0), bytes) == 0);
}

bool AreSame(vtkDataSetAttributes* a, vtkDataSetAttributes* b)
{
  bool same = a->GetNumberOfArrays() == b->GetNumberOfArrays();
  for (int i = 0; same && i < a->GetNumberOfArrays(); ++i)
  {
    same = AreSame(a->GetArray(i), b->GetArray(i)) &&
      a->IsArrayAnAttribute(i) == b->IsArrayAnAttribute(i);
  }
  return same;
}

bool AreSame(vtkCellArray* a, vtkCellArray* b)
{
  return a->GetNumberOfCells() == b->GetNumberOfCells() &&
    a->IsStorage64Bit() == b->IsStorage64Bit() &&
    AreSame(a->GetOffsetsArray(), b->GetOffsetsArray()) &&
    AreSame(a->GetConnectivityArray(), b->GetConnectivityArray());
}

bool AreSame(vtkPolyData* a, vtkPolyData* b)
{
  const bool hasPoints = a->GetPoints() != nullptr;
  return hasPoints == (b->GetPoints() != nullptr) &&
    (!hasPoints || AreSame(a->GetPoints()->GetData(), b->GetPoints()->GetData())) &&
    AreSame(a->GetVerts(), b->GetVerts()) && AreSame(a->GetLines(), b->GetLines()) &&
    AreSame(a->GetPolys(), b->GetPolys()) && AreSame(a->GetStrips(), b->GetStrips()) &&
    AreSame(a->GetPointData(), b->GetPointData()) && AreSame(a->GetCellData(), b->GetCellData());
}

class BoxCutter : public zvtest::QuietTest
{
protected:
  BoxCutter()
  {
    for (vtkCutter* cutter : this->Cutters())
    {
      cutter->SetInputConnection(this->Cube->GetOutputPort());
      cutter->SetCutFunction(this->Plane);
    }
    this->Plane->SetNormal(0.3, 0.5, 1.0);
  }

  std::array<vtkCutter*, 2> Cutters() { return { this->Quick, this->Stock }; }

  bool GiveTheSame()
  {
    for (vtkCutter* cutter : this->Cutters())
    {
      cutter->Update();
    }
    return AreSame(this->Quick->GetOutput(), this->Stock->GetOutput());
  }

  void DrawBox(zvtest::Dice& dice);

  vtkNew<vtkCubeSource> Cube;
  vtkNew<vtkPlane> Plane;
  vtkNew<zvBoxCutter> Quick;
  vtkNew<vtkCutter> Stock;
};

void BoxCutter::DrawBox(zvtest::Dice& dice)
{
  double bounds[6];
  double origin[3];
  double normal[3];
  for (int axis = 0; axis < 3; ++axis)
  {
    double* const low = bounds + 2 * axis;
    low[0] = dice.Chance(0.5) ? dice.Int(-9, 9) : dice.Real(-200.0, 200.0);
    low[1] = low[0] + (dice.Chance(0.1) ? 0.0 : dice.Real(0.0, 1.0) * dice.Int(1, 400));
    origin[axis] = dice.Pick<double>({ 0.5 * (low[0] + low[1]), low[0], low[1],
      dice.Real(-250.0, 250.0), dice.Real(low[0], low[1] + 1e-9) });
    normal[axis] = dice.Chance(0.4) ? dice.Int(-1, 1) : dice.Real(-1.0, 1.0);
  }
  this->Cube->SetBounds(bounds);
  this->Cube->SetOutputPointsPrecision(
    dice.Chance(0.8) ? vtkAlgorithm::DOUBLE_PRECISION : vtkAlgorithm::SINGLE_PRECISION);
  this->Plane->SetOrigin(origin);
  this->Plane->SetNormal(normal);
}
}

TEST_F(BoxCutter, CutsBoxesLikeTheStockClassToTheLastBit)
{
  zvtest::Dice dice(20);
  int cuts = 0;
  for (int i = 0; i < 10000; ++i)
  {
    this->DrawBox(dice);
    ASSERT_TRUE(this->GiveTheSame()) << "case " << i;
    cuts += this->Quick->GetOutput()->GetNumberOfLines() > 0 ? 1 : 0;
  }
  EXPECT_GT(cuts, 2500);
}

TEST_F(BoxCutter, WhatIsNotAPlainCutOfABoxIsThatOfTheStockClass)
{
  vtkNew<vtkSphere> sphere;
  vtkNew<vtkTransform> turn;
  turn->RotateX(20.0);
  vtkNew<vtkSphereSource> ball;
  const std::function<void(vtkCutter*)> specials[] = {
    [](vtkCutter* cutter) { cutter->SetValue(0, 0.2); },
    [](vtkCutter* cutter) { cutter->GenerateValues(3, -0.2, 0.2); },
    [](vtkCutter* cutter) { cutter->GenerateCutScalarsOn(); },
    [](vtkCutter* cutter) { cutter->SetOutputPointsPrecision(vtkAlgorithm::SINGLE_PRECISION); },
    [](vtkCutter* cutter) { cutter->SetSortByToSortByCell(); },
    [&](vtkCutter*) { this->Plane->SetTransform(turn); },
    [&](vtkCutter* cutter) { cutter->SetInputConnection(ball->GetOutputPort()); },
    [&](vtkCutter* cutter) { cutter->SetCutFunction(sphere); },
  };
  int i = 0;
  for (const auto& special : specials)
  {
    for (vtkCutter* cutter : this->Cutters())
    {
      special(cutter);
    }
    EXPECT_TRUE(this->GiveTheSame()) << "special " << i++;
    EXPECT_GT(this->Quick->GetOutput()->GetNumberOfPoints(), 0);
  }
}

TEST_F(BoxCutter, CutsACubeAtOnceAsAnUpdateWould)
{
  zvtest::Dice dice(21);
  int cuts = 0;
  for (int i = 0; i < 5000; ++i)
  {
    this->DrawBox(dice);
    const bool isPlain = this->Cube->GetOutputPointsPrecision() == vtkAlgorithm::DOUBLE_PRECISION;
    ASSERT_EQ(this->Quick->CutCube(), isPlain) << "case " << i;
    this->Stock->Update();
    if (isPlain)
    {
      ASSERT_TRUE(AreSame(this->Quick->GetOutput(), this->Stock->GetOutput())) << "case " << i;
      cuts += this->Quick->GetOutput()->GetNumberOfPoints() > 0 ? 1 : 0;
    }
    if (dice.Chance(0.3))
    {
      // An update in between changes nothing.
      ASSERT_TRUE(this->GiveTheSame()) << "case " << i;
    }
  }
  EXPECT_GT(cuts, 1500);
}

TEST_F(BoxCutter, LeavesWhatIsNotAPlainCutOfACubeToAnUpdate)
{
  vtkNew<vtkSphereSource> ball;
  this->Quick->SetInputConnection(ball->GetOutputPort());
  EXPECT_FALSE(this->Quick->CutCube());
  EXPECT_EQ(this->Quick->GetOutput()->GetNumberOfPoints(), 0);
  this->Quick->RemoveAllInputConnections(0);
  EXPECT_FALSE(this->Quick->CutCube());
}

TEST_F(BoxCutter, APlaneThatIsNowhereCutsNothing)
{
  this->Plane->SetOrigin(std::numeric_limits<double>::quiet_NaN(), 0.0, 0.0);
  EXPECT_TRUE(this->GiveTheSame());
  EXPECT_EQ(this->Quick->GetOutput()->GetNumberOfPoints(), 0);
}

TEST_F(BoxCutter, AnObserverOfProgressHearsOfIt)
{
  int calls = 0;
  vtkNew<vtkCallbackCommand> count;
  count->SetClientData(&calls);
  count->SetCallback(
    [](vtkObject*, unsigned long, void* data, void*) { ++*static_cast<int*>(data); });
  this->Quick->AddObserver(vtkCommand::ProgressEvent, count);
  this->Quick->Update();
  EXPECT_GT(calls, 0);
}
