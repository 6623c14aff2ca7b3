#include "zvOutlineCut.h"

#include "vtkCellArray.h"
#include "vtkPolyData.h"

#include <algorithm>

namespace
{
using Point = std::array<double, 3>;

struct End
{
  Point Place;
  double Side; // negative below the plane
};

End MakeEnd(vtkPolyData* outline, vtkIdType id, const double origin[3], const double normal[3])
{
  End end;
  outline->GetPoint(id, end.Place.data());
  end.Side = 0.0;
  for (int axis = 0; axis < 3; ++axis)
  {
    end.Side += normal[axis] * (end.Place[axis] - origin[axis]);
  }
  return end;
}

// From the lower end, as the stock class does: the other way rounds differently.
Point Cross(const End& lower, const End& upper)
{
  const double t = (0.0 - lower.Side) / (upper.Side - lower.Side);
  Point point;
  for (int axis = 0; axis < 3; ++axis)
  {
    point[axis] = lower.Place[axis] + t * (upper.Place[axis] - lower.Place[axis]);
  }
  return point;
}
}

//------------------------------------------------------------------------------
std::vector<std::array<double, 3>> zvOutlineCut::FindPoints(
  vtkPolyData* outline, const double origin[3], const double normal[3])
{
  std::vector<Point> points;
  vtkCellArray* lines = outline ? outline->GetLines() : nullptr;
  const vtkIdType count = lines ? lines->GetNumberOfCells() : 0;
  for (vtkIdType line = 0; line < count; ++line)
  {
    vtkIdType size = 0;
    const vtkIdType* ids = nullptr;
    lines->GetCellAtId(line, size, ids);
    if (size != 2)
    {
      continue;
    }
    const End first = MakeEnd(outline, ids[0], origin, normal);
    const End second = MakeEnd(outline, ids[1], origin, normal);
    if ((first.Side >= 0.0) == (second.Side >= 0.0))
    {
      continue;
    }
    const Point point = first.Side >= 0.0 ? Cross(second, first) : Cross(first, second);
    if (std::find(points.begin(), points.end(), point) == points.end())
    {
      points.push_back(point);
    }
  }
  return points;
}
