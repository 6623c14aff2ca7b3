#include "zvPointTree.h"

#include "vtkCellArray.h"
#include "vtkNew.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"

#include <algorithm>

namespace
{
// Forget the cells that were built from the lists; the points stay.
void DropCells(vtkPolyData* data)
{
  data->DeleteLinks();
  data->DeleteCells();
}
}

void zvPointTree::MakePoints(vtkPolyData* data)
{
  vtkNew<vtkPoints> points;
  vtkNew<vtkCellArray> vertices;
  data->SetPoints(points);
  data->SetVerts(vertices);
}

void zvPointTree::MakeSegments(vtkPolyData* data)
{
  vtkNew<vtkPoints> points;
  vtkNew<vtkCellArray> lines;
  data->SetPoints(points);
  data->SetLines(lines);
}

vtkIdType zvPointTree::AppendPoint(vtkPolyData* points, const double position[3])
{
  const vtkIdType id = points->GetPoints()->InsertNextPoint(position);
  points->InsertNextCell(VTK_VERTEX, 1, &id);
  return id;
}

void zvPointTree::AppendSegment(vtkPolyData* segments, const Segment& segment)
{
  const vtkIdType ids[2] = { segment.Parent, segment.Child };
  segments->InsertNextCell(VTK_LINE, 2, ids);
}

void zvPointTree::Finish(vtkPolyData* data)
{
  DropCells(data);
  data->BuildCells();
  data->BuildLinks(0);
  data->GetPoints()->Modified();
  data->Modified();
}

bool zvPointTree::HasPoint(vtkPolyData* data, vtkIdType id)
{
  return id >= 0 && id < data->GetNumberOfPoints();
}

bool zvPointTree::FindSegment(vtkPolyData* segments, vtkIdType index, Segment& segment)
{
  if (index < 0 || index >= segments->GetNumberOfLines())
  {
    return false;
  }
  vtkIdType count = 0;
  const vtkIdType* ids = nullptr;
  segments->GetLines()->GetCellAtId(index, count, ids);
  if (count != 2 || !HasPoint(segments, ids[0]) || !HasPoint(segments, ids[1]))
  {
    return false;
  }
  segment.Parent = ids[0];
  segment.Child = ids[1];
  return true;
}

bool zvPointTree::FindEnds(
  vtkPolyData* segments, vtkIdType index, double parent[3], double child[3])
{
  Segment segment;
  if (!FindSegment(segments, index, segment))
  {
    return false;
  }
  segments->GetPoint(segment.Parent, parent);
  segments->GetPoint(segment.Child, child);
  return true;
}

bool zvPointTree::IsTree(vtkPolyData* data)
{
  const vtkIdType count = data->GetNumberOfLines();
  if (count != std::max<vtkIdType>(data->GetNumberOfPoints() - 1, 0))
  {
    return false;
  }
  for (vtkIdType index = 0; index < count; ++index)
  {
    Segment segment;
    if (!FindSegment(data, index, segment) || segment.Child != index + 1 || segment.Parent > index)
    {
      return false;
    }
  }
  return true;
}

void zvPointTree::CopySegments(vtkPolyData* tree, vtkPolyData* copy)
{
  vtkNew<vtkPoints> points;
  vtkNew<vtkCellArray> lines;
  if (tree->GetPoints())
  {
    // Whole numbers would not take a drag.
    points->SetDataType(tree->GetPoints()->GetDataType() == VTK_FLOAT ? VTK_FLOAT : VTK_DOUBLE);
    points->DeepCopy(tree->GetPoints());
    lines->DeepCopy(tree->GetLines());
  }
  copy->Initialize();
  copy->SetPoints(points);
  copy->SetLines(lines);
  Finish(copy);
}

void zvPointTree::ReplaceVertices(vtkPolyData* points, vtkPolyData* tree)
{
  DropCells(points);
  points->GetVerts()->Reset();
  const vtkIdType count = tree->GetNumberOfPoints();
  for (vtkIdType id = 0; id < count; ++id)
  {
    double position[3];
    tree->GetPoint(id, position);
    AppendPoint(points, position);
  }
  Finish(points);
}
