#include "zvPointTree.h"

#include "zvTestKit.h"

#include "vtkCellArray.h"
#include "vtkDoubleArray.h"
#include "vtkIdList.h"
#include "vtkNew.h"
#include "vtkPointData.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"

#include <gtest/gtest.h>

#include <array>
#include <utility>
#include <vector>

namespace
{
using Segments = std::vector<std::pair<int, int>>;

class PointTree : public zvtest::QuietTest
{
protected:
  PointTree()
  {
    zvPointTree::MakePoints(this->Points);
    zvPointTree::MakeSegments(this->Lines);
  }

  // As a widget grows it: a point in both, and the segment that ends in it.
  void Grow(const std::array<double, 3>& position, int parent)
  {
    const vtkIdType id = zvPointTree::AppendPoint(this->Points, position.data());
    zvPointTree::Finish(this->Points);
    this->Lines->GetPoints()->InsertNextPoint(position.data());
    if (id > 0)
    {
      zvPointTree::AppendSegment(this->Lines, { parent, id });
    }
    zvPointTree::Finish(this->Lines);
  }

  void GrowBranches()
  {
    this->Grow({ { 0, 0, 0 } }, -1);
    this->Grow({ { 1, 0, 0 } }, 0);
    this->Grow({ { 2, 0, 0 } }, 1);
    this->Grow({ { 1, 2, 0 } }, 1);
  }

  static Segments SegmentsOf(vtkPolyData* data)
  {
    Segments segments;
    zvPointTree::Segment segment;
    for (vtkIdType i = 0; zvPointTree::FindSegment(data, i, segment); ++i)
    {
      segments.emplace_back(static_cast<int>(segment.Parent), static_cast<int>(segment.Child));
    }
    return segments;
  }

  vtkNew<vtkPolyData> Points;
  vtkNew<vtkPolyData> Lines;
};

struct RefusedRow
{
  const char* Name;
  int Points;
  std::vector<std::vector<vtkIdType>> Lines;
};

class RefusedTree
  : public zvtest::QuietTest
  , public ::testing::WithParamInterface<RefusedRow>
{
};
}

TEST_F(PointTree, StartsEmptyAndIsATree)
{
  for (vtkPolyData* data : { this->Points.Get(), this->Lines.Get() })
  {
    zvPointTree::Finish(data);
    ASSERT_NE(data->GetPoints(), nullptr);
    EXPECT_EQ(data->GetNumberOfPoints(), 0);
    EXPECT_EQ(data->GetNumberOfCells(), 0);
    EXPECT_TRUE(zvPointTree::IsTree(data));
  }
}

TEST_F(PointTree, GrowsAPointAVertexAndASegmentAtATime)
{
  this->GrowBranches();
  EXPECT_EQ(this->Points->GetNumberOfPoints(), 4);
  ASSERT_EQ(this->Points->GetNumberOfCells(), 4);
  for (vtkIdType id = 0; id < 4; ++id)
  {
    EXPECT_EQ(this->Points->GetCellType(id), VTK_VERTEX);
    vtkNew<vtkIdList> ids;
    this->Points->GetCellPoints(id, ids);
    ASSERT_EQ(ids->GetNumberOfIds(), 1);
    EXPECT_EQ(ids->GetId(0), id);
  }
  EXPECT_EQ(SegmentsOf(this->Lines), (Segments{ { 0, 1 }, { 1, 2 }, { 1, 3 } }));
  EXPECT_TRUE(zvPointTree::IsTree(this->Lines));
}

TEST_F(PointTree, LinksKnowTheSegmentsOfEachPoint)
{
  this->GrowBranches();
  vtkNew<vtkIdList> cells;
  this->Lines->GetPointCells(1, cells);
  EXPECT_EQ(cells->GetNumberOfIds(), 3);
  this->Lines->GetPointCells(3, cells);
  ASSERT_EQ(cells->GetNumberOfIds(), 1);
  EXPECT_EQ(cells->GetId(0), 2);
}

TEST_F(PointTree, FinishMakesThePointsKnownToo)
{
  this->GrowBranches();
  const vtkMTimeType points = this->Points->GetPoints()->GetMTime();
  const vtkMTimeType data = this->Points->GetMTime();
  zvPointTree::Finish(this->Points);
  EXPECT_GT(this->Points->GetPoints()->GetMTime(), points);
  EXPECT_GT(this->Points->GetMTime(), data);
}

TEST_F(PointTree, FindsNoSegmentAndNoPointOutOfRange)
{
  this->GrowBranches();
  zvPointTree::Segment segment{ 7, 8 };
  for (vtkIdType index : { vtkIdType(-1), vtkIdType(3), VTK_ID_MAX, VTK_ID_MIN })
  {
    EXPECT_FALSE(zvPointTree::FindSegment(this->Lines, index, segment));
    EXPECT_EQ(segment.Parent, 7);
    EXPECT_EQ(segment.Child, 8);
  }
  EXPECT_TRUE(zvPointTree::HasPoint(this->Lines, 0));
  EXPECT_TRUE(zvPointTree::HasPoint(this->Lines, 3));
  for (vtkIdType id : { vtkIdType(-1), vtkIdType(4), VTK_ID_MAX, VTK_ID_MIN })
  {
    EXPECT_FALSE(zvPointTree::HasPoint(this->Lines, id));
  }
}

TEST_F(PointTree, ACopySharesNothing)
{
  this->GrowBranches();
  vtkNew<vtkPolyData> copy;
  zvPointTree::CopySegments(this->Lines, copy);
  EXPECT_EQ(SegmentsOf(copy), SegmentsOf(this->Lines));
  EXPECT_EQ(copy->GetPoints()->GetDataType(), VTK_FLOAT);
  this->Lines->GetPoints()->SetPoint(3, 9, 9, 9);
  this->Grow({ { 5, 5, 5 } }, 0);
  ASSERT_EQ(copy->GetNumberOfPoints(), 4);
  EXPECT_EQ(copy->GetPoint(3)[1], 2.0);
  EXPECT_EQ(SegmentsOf(copy).size(), 3u);
}

TEST_F(PointTree, ACopyOfItselfKeepsTheTree)
{
  this->GrowBranches();
  zvPointTree::CopySegments(this->Lines, this->Lines);
  EXPECT_EQ(this->Lines->GetNumberOfPoints(), 4);
  EXPECT_EQ(SegmentsOf(this->Lines), (Segments{ { 0, 1 }, { 1, 2 }, { 1, 3 } }));
}

TEST_F(PointTree, ACopyCanGrowOn)
{
  this->GrowBranches();
  vtkNew<vtkPolyData> copy;
  zvPointTree::CopySegments(this->Lines, copy);
  copy->GetPoints()->InsertNextPoint(4, 4, 4);
  zvPointTree::AppendSegment(copy, { 0, 4 });
  zvPointTree::Finish(copy);
  EXPECT_EQ(SegmentsOf(copy), (Segments{ { 0, 1 }, { 1, 2 }, { 1, 3 }, { 0, 4 } }));
}

TEST_F(PointTree, ACopyLeavesOtherCellsAndAttributesBehind)
{
  this->GrowBranches();
  vtkNew<vtkCellArray> vertices;
  vertices->InsertNextCell({ 2 });
  this->Lines->SetVerts(vertices);
  vtkNew<vtkDoubleArray> radius;
  radius->SetNumberOfTuples(4);
  this->Lines->GetPointData()->SetScalars(radius);
  EXPECT_TRUE(zvPointTree::IsTree(this->Lines));
  vtkNew<vtkPolyData> copy;
  copy->SetVerts(vertices);
  zvPointTree::CopySegments(this->Lines, copy);
  EXPECT_EQ(copy->GetNumberOfCells(), 3);
  EXPECT_EQ(copy->GetPointData()->GetScalars(), nullptr);
  EXPECT_EQ(SegmentsOf(copy), SegmentsOf(this->Lines));
}

TEST_F(PointTree, ACopyOfNothingIsEmpty)
{
  this->GrowBranches();
  vtkNew<vtkPolyData> nothing;
  zvPointTree::CopySegments(nothing, this->Lines);
  ASSERT_NE(this->Lines->GetPoints(), nullptr);
  EXPECT_EQ(this->Lines->GetNumberOfPoints(), 0);
  EXPECT_EQ(this->Lines->GetNumberOfCells(), 0);
}

TEST_F(PointTree, ACopyOfWholeNumbersTakesFractions)
{
  vtkNew<vtkPolyData> whole;
  vtkNew<vtkPoints> points;
  points->SetDataTypeToInt();
  points->InsertNextPoint(1, 2, 3);
  whole->SetPoints(points);
  zvPointTree::CopySegments(whole, this->Lines);
  EXPECT_EQ(this->Lines->GetPoint(0)[2], 3.0);
  this->Lines->GetPoints()->SetPoint(0, 0.25, 0.5, 0.75);
  EXPECT_EQ(this->Lines->GetPoint(0)[0], 0.25);
}

TEST_F(PointTree, VerticesFollowATree)
{
  this->GrowBranches();
  vtkNew<vtkPolyData> vertices;
  zvPointTree::MakePoints(vertices);
  zvPointTree::ReplaceVertices(vertices, this->Lines);
  EXPECT_EQ(vertices->GetNumberOfPoints(), 4);
  EXPECT_EQ(vertices->GetNumberOfVerts(), 4);
  EXPECT_EQ(vertices->GetPoint(3)[1], 2.0);
}

TEST_F(PointTree, ReplacedVerticesKeepThePointsByDesign)
{
  this->GrowBranches();
  vtkNew<vtkPolyData> other;
  zvPointTree::MakeSegments(other);
  other->GetPoints()->InsertNextPoint(7, 7, 7);
  zvPointTree::ReplaceVertices(this->Points, other);
  EXPECT_EQ(this->Points->GetNumberOfPoints(), 5);
  ASSERT_EQ(this->Points->GetNumberOfCells(), 1);
  vtkNew<vtkIdList> ids;
  this->Points->GetCellPoints(0, ids);
  ASSERT_EQ(ids->GetNumberOfIds(), 1);
  EXPECT_EQ(ids->GetId(0), 4);
}

TEST_F(PointTree, ASinglePointIsATree)
{
  this->Grow({ { 1, 1, 1 } }, -1);
  EXPECT_TRUE(zvPointTree::IsTree(this->Lines));
}

TEST_P(RefusedTree, IsNone)
{
  vtkNew<vtkPolyData> data;
  if (this->GetParam().Points > 0)
  {
    vtkNew<vtkPoints> points;
    points->SetNumberOfPoints(this->GetParam().Points);
    data->SetPoints(points);
  }
  vtkNew<vtkCellArray> lines;
  for (const std::vector<vtkIdType>& ids : this->GetParam().Lines)
  {
    lines->InsertNextCell(static_cast<vtkIdType>(ids.size()), ids.data());
  }
  data->SetLines(lines);
  EXPECT_FALSE(zvPointTree::IsTree(data));
}

INSTANTIATE_TEST_SUITE_P(PointTree, RefusedTree,
  ::testing::Values(RefusedRow{ "PointsWithoutLines", 3, {} },
    RefusedRow{ "ALineWithoutPoints", 0, { { 0, 1 } } },
    RefusedRow{ "ALineTooFew", 3, { { 0, 1 } } },
    RefusedRow{ "ALineTooMany", 2, { { 0, 1 }, { 0, 1 } } },
    RefusedRow{ "APolyline", 3, { { 0, 1, 2 }, { 1, 2 } } },
    RefusedRow{ "ALineOfOnePoint", 2, { { 1 } } },
    RefusedRow{ "AParentOutOfRange", 2, { { -1, 1 } } },
    RefusedRow{ "AChildOutOfRange", 2, { { 0, 2 } } },
    RefusedRow{ "ChildrenInAnotherOrder", 3, { { 0, 2 }, { 0, 1 } } },
    RefusedRow{ "AParentBehindItsChild", 3, { { 2, 1 }, { 0, 2 } } },
    RefusedRow{ "APointThatIsItsOwnParent", 2, { { 1, 1 } } }),
  [](const auto& row) { return row.param.Name; });
