#ifndef zvPolygonCut_h
#define zvPolygonCut_h

#include <array>
#include <vector>

class vtkPlaneCollection;

/// Cuts a textured convex polygon.
namespace zvPolygonCut
{
struct Corner
{
  std::array<double, 3> Point; // world millimetres
  std::array<double, 2> TexturePoint;
};
using Polygon = std::vector<Corner>;

/// What of \a polygon lies on none of the planes' negative sides, with its corners in the same
/// order. Corners that stay are the same to the bit, and a polygon that no plane cuts is returned
/// as it is. Fewer than three corners are left of one that lies outside.
Polygon Keep(const Polygon& polygon, vtkPlaneCollection* planes);
}

#endif
