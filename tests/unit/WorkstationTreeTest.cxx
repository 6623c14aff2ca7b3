#include "zvMarkNumbers.h"
#include "zvTreeBranch.h"

#include "vtkCellArray.h"
#include "vtkIdList.h"
#include "vtkNew.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"

#include <gtest/gtest.h>

namespace
{
// 0 - 1 - 2, and from 1 also 3 - 4; 5 hangs on the root.
class Branch : public ::testing::Test
{
protected:
  Branch()
  {
    const int parents[] = { 0, 1, 1, 3, 0 };
    vtkNew<vtkPoints> points;
    vtkNew<vtkCellArray> lines;
    points->InsertNextPoint(0.0, 0.0, 0.0);
    for (int i = 1; i < 6; ++i)
    {
      points->InsertNextPoint(3.0 * i, 4.0 * i, 0.0);
      const vtkIdType ends[2] = { parents[i - 1], i };
      lines->InsertNextCell(2, ends);
    }
    this->Tree->SetPoints(points);
    this->Tree->SetLines(lines);
  }

  vtkNew<vtkPolyData> Tree;
};
}

TEST_F(Branch, KnowsTheParentOfEachPoint)
{
  const int parents[] = { -1, 0, 1, 1, 3, 0 };
  for (int i = 0; i < 6; ++i)
  {
    EXPECT_EQ(zvTreeBranch::FindParent(this->Tree, i), parents[i]) << i;
  }
  EXPECT_EQ(zvTreeBranch::FindParent(this->Tree, 6), -1);
  EXPECT_EQ(zvTreeBranch::FindParent(this->Tree, -1), -1);
}

TEST_F(Branch, MeasuresSegments)
{
  EXPECT_EQ(zvTreeBranch::GetLength(this->Tree, 0), 0.0);
  EXPECT_DOUBLE_EQ(zvTreeBranch::GetLength(this->Tree, 1), 5.0);
  EXPECT_DOUBLE_EQ(zvTreeBranch::GetLength(this->Tree, 3), 10.0);
  EXPECT_DOUBLE_EQ(zvTreeBranch::GetLength(this->Tree, 5), 25.0);
}

TEST_F(Branch, IsCutOffWithAllThatGrowsFromIt)
{
  using List = std::vector<int>;
  EXPECT_EQ(zvTreeBranch::ListWithout(this->Tree, 0), List());
  EXPECT_EQ(zvTreeBranch::ListWithout(this->Tree, 1), (List{ 0, 5 }));
  EXPECT_EQ(zvTreeBranch::ListWithout(this->Tree, 2), (List{ 0, 1, 3, 4, 5 }));
  EXPECT_EQ(zvTreeBranch::ListWithout(this->Tree, 3), (List{ 0, 1, 2, 5 }));
  EXPECT_EQ(zvTreeBranch::ListWithout(this->Tree, 9), (List{ 0, 1, 2, 3, 4, 5 }));
}

TEST_F(Branch, WhatIsLeftIsATreeAgain)
{
  const auto left = zvTreeBranch::Keep(this->Tree, { 0, 1, 3, 4, 5 });
  ASSERT_EQ(left->GetNumberOfPoints(), 5);
  ASSERT_EQ(left->GetNumberOfLines(), 4);
  const int parents[] = { -1, 0, 1, 2, 0 };
  for (int i = 0; i < 5; ++i)
  {
    EXPECT_EQ(zvTreeBranch::FindParent(left, i), parents[i]) << i;
  }
  EXPECT_EQ(left->GetPoint(3)[0], 12.0);
}

TEST_F(Branch, NothingIsLeftOfATreeWithoutItsRoot)
{
  const auto left = zvTreeBranch::Keep(this->Tree, {});
  EXPECT_EQ(left->GetNumberOfPoints(), 0);
  EXPECT_EQ(left->GetNumberOfLines(), 0);
}

TEST(MarkNumbers, StayWithTheirMarks)
{
  zvMarkNumbers numbers;
  EXPECT_EQ(numbers.Append(), 1);
  EXPECT_EQ(numbers.Append(), 2);
  EXPECT_EQ(numbers.InsertAt(1), 3);
  EXPECT_EQ(numbers.Append(), 4);
  EXPECT_EQ(numbers.Find(3), 1);
  EXPECT_EQ(numbers.Find(2), 2);
  numbers.RemoveAt(0);
  EXPECT_EQ(numbers.Find(1), -1);
  EXPECT_EQ(numbers.GetId(0), 3);
  numbers.Keep({ 0, 2 });
  EXPECT_EQ(numbers.GetCount(), 2);
  EXPECT_EQ(numbers.Find(4), 1);
  numbers.Clear();
  EXPECT_EQ(numbers.Append(), 5);
}
