#include "zvPolygonCut.h"

#include "vtkPlane.h"
#include "vtkPlaneCollection.h"

namespace
{
using zvPolygonCut::Corner;
using zvPolygonCut::Polygon;

template <std::size_t N>
std::array<double, N> Between(
  const std::array<double, N>& from, const std::array<double, N>& to, double part)
{
  std::array<double, N> point;
  for (std::size_t i = 0; i < N; ++i)
  {
    point[i] = from[i] + part * (to[i] - from[i]);
  }
  return point;
}

double SideOf(const Corner& corner, vtkPlane* plane)
{
  std::array<double, 3> point = corner.Point;
  return plane->EvaluateFunction(point.data());
}

Polygon KeepBy(const Polygon& polygon, vtkPlane* plane)
{
  Polygon kept;
  for (std::size_t i = 0; i < polygon.size(); ++i)
  {
    const Corner& from = polygon[i];
    const Corner& to = polygon[(i + 1) % polygon.size()];
    const double fromSide = SideOf(from, plane);
    const double toSide = SideOf(to, plane);
    if (fromSide >= 0.0)
    {
      kept.push_back(from);
    }
    if ((fromSide < 0.0) != (toSide < 0.0))
    {
      const double part = fromSide / (fromSide - toSide);
      kept.push_back(
        { Between(from.Point, to.Point, part), Between(from.TexturePoint, to.TexturePoint, part) });
    }
  }
  return kept;
}
}

zvPolygonCut::Polygon zvPolygonCut::Keep(const Polygon& polygon, vtkPlaneCollection* planes)
{
  Polygon kept = polygon;
  vtkCollectionSimpleIterator at;
  planes->InitTraversal(at);
  while (vtkPlane* const plane = planes->GetNextPlane(at))
  {
    kept = KeepBy(kept, plane);
  }
  return kept;
}
