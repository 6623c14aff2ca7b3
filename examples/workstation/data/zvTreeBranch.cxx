#include "zvTreeBranch.h"

#include "vtkCellArray.h"
#include "vtkIdList.h"
#include "vtkMath.h"
#include "vtkNew.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"

#include <algorithm>
#include <cmath>

namespace zvTreeBranch
{
int FindParent(vtkPolyData* tree, int point)
{
  if (point < 1 || point > tree->GetLines()->GetNumberOfCells())
  {
    return -1;
  }
  vtkNew<vtkIdList> ends;
  tree->GetLines()->GetCellAtId(point - 1, ends);
  return static_cast<int>(ends->GetId(0));
}

double GetLength(vtkPolyData* tree, int point)
{
  const int parent = FindParent(tree, point);
  if (parent < 0)
  {
    return 0.0;
  }
  double from[3], to[3];
  tree->GetPoint(parent, from);
  tree->GetPoint(point, to);
  return std::sqrt(vtkMath::Distance2BetweenPoints(from, to));
}

// A child comes behind its parent, so one walk finds all that hangs on the point.
std::vector<int> ListWithout(vtkPolyData* tree, int point)
{
  const int count = static_cast<int>(tree->GetNumberOfPoints());
  std::vector<bool> isCut(static_cast<std::size_t>(count), false);
  std::vector<int> left;
  for (int i = 0; i < count; ++i)
  {
    const int parent = FindParent(tree, i);
    const bool hangsOnCut = parent >= 0 && isCut[static_cast<std::size_t>(parent)];
    isCut[static_cast<std::size_t>(i)] = i == point || hangsOnCut;
    if (!isCut[static_cast<std::size_t>(i)])
    {
      left.push_back(i);
    }
  }
  return left;
}

vtkSmartPointer<vtkPolyData> Keep(vtkPolyData* tree, const std::vector<int>& points)
{
  vtkNew<vtkPoints> kept;
  vtkNew<vtkCellArray> lines;
  for (std::size_t i = 0; i < points.size(); ++i)
  {
    kept->InsertNextPoint(tree->GetPoint(points[i]));
    const auto parent = std::find(points.begin(), points.end(), FindParent(tree, points[i]));
    if (parent != points.end())
    {
      const vtkIdType ends[2] = { parent - points.begin(), static_cast<vtkIdType>(i) };
      lines->InsertNextCell(2, ends);
    }
  }
  auto result = vtkSmartPointer<vtkPolyData>::New();
  result->SetPoints(kept);
  result->SetLines(lines);
  return result;
}
}
