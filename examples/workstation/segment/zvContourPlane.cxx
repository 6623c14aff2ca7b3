#include "zvContourPlane.h"

#include "vtkCellArray.h"
#include "vtkIdList.h"
#include "vtkImageData.h"
#include "vtkNew.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"

#include <algorithm>

namespace
{
constexpr vtkIdType None = -1;

// The point that follows each one; empty if the lines do not lead from every point to one other.
std::vector<vtkIdType> FindFollowers(vtkCellArray* lines, vtkIdType count)
{
  std::vector<vtkIdType> followers(static_cast<std::size_t>(count), None);
  vtkNew<vtkIdList> ids;
  for (vtkIdType i = 0; i < lines->GetNumberOfCells(); ++i)
  {
    lines->GetCellAtId(i, ids);
    if (ids->GetNumberOfIds() != 2 || ids->GetId(0) < 0 || ids->GetId(0) >= count ||
      ids->GetId(1) < 0 || ids->GetId(1) >= count)
    {
      return {};
    }
    followers[static_cast<std::size_t>(ids->GetId(0))] = ids->GetId(1);
  }
  return followers;
}
}

zvContourPlane::zvContourPlane(vtkImageData* volume, int axis, int slice)
  : Axis(axis)
  , Slice(slice)
  , Position(volume->GetOrigin()[axis] + slice * volume->GetSpacing()[axis])
{
}

std::array<double, 3> zvContourPlane::ToWorld(const zvContourPoint& point) const
{
  std::array<double, 3> world;
  world[static_cast<std::size_t>(this->Axis)] = this->Position;
  world[static_cast<std::size_t>(this->GetFirstAxis())] = point[0];
  world[static_cast<std::size_t>(this->GetSecondAxis())] = point[1];
  return world;
}

zvContourPoint zvContourPlane::FromWorld(const double world[3]) const
{
  return { { world[this->GetFirstAxis()], world[this->GetSecondAxis()] } };
}

vtkSmartPointer<vtkPolyData> zvContourPlane::ToPolyData(const zvContour& contour, double lift) const
{
  vtkNew<vtkPoints> points;
  points->SetDataTypeToDouble();
  vtkNew<vtkCellArray> lines;
  const auto count = static_cast<vtkIdType>(contour.size());
  for (vtkIdType i = 0; i < count; ++i)
  {
    std::array<double, 3> world = this->ToWorld(contour[static_cast<std::size_t>(i)]);
    world[static_cast<std::size_t>(this->Axis)] += lift;
    points->InsertNextPoint(world.data());
    lines->InsertNextCell({ i, (i + 1) % count });
  }
  auto ring = vtkSmartPointer<vtkPolyData>::New();
  ring->SetPoints(points);
  ring->SetLines(lines);
  return ring;
}

zvContour zvContourPlane::FromPolyData(vtkPolyData* ring) const
{
  const vtkIdType count = ring != nullptr ? ring->GetNumberOfPoints() : 0;
  if (count < 3)
  {
    return {};
  }
  const std::vector<vtkIdType> followers = FindFollowers(ring->GetLines(), count);
  zvContour contour;
  vtkIdType id = 0;
  do
  {
    contour.push_back(this->FromWorld(ring->GetPoint(id)));
    id = followers.empty() ? None : followers[static_cast<std::size_t>(id)];
  } while (id > 0 && static_cast<vtkIdType>(contour.size()) < count);
  if (id != 0 || contour.size() < 3 || !zvContourMath::IsFinite(contour))
  {
    return {};
  }
  if (zvContourMath::GetArea(contour) < 0.0)
  {
    std::reverse(contour.begin() + 1, contour.end());
  }
  return contour;
}
