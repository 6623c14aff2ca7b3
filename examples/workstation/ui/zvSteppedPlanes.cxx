#include "zvSteppedPlanes.h"

#include "zvImagePlaneWidget.h"

#include "vtkMath.h"

namespace
{
constexpr int Tilted = 3;       // the orientation of a plane that was turned
constexpr int PlacesBeyond = 2; // that the planes do not count
}

zvImagePlaneWidget* zvSteppedPlanes::GetPlane(int axis) const
{
  return axis == 0 ? this->PlaneX : axis == 1 ? this->PlaneY : this->PlaneZ;
}

void zvSteppedPlanes::MovePlane(int axis, double distance)
{
  zvImagePlaneWidget* plane = this->GetPlane(axis);
  double way[3], origin[3], point1[3], point2[3];
  plane->GetNormal(way);
  plane->GetOrigin(origin);
  plane->GetPoint1(point1);
  plane->GetPoint2(point2);
  vtkMath::MultiplyScalar(way, distance);
  for (double* point : { origin, point1, point2 })
  {
    vtkMath::Add(point, way, point);
  }
  plane->SetOrigin(origin);
  plane->SetPoint1(point1);
  plane->SetPoint2(point2);
  plane->UpdatePlacement();
}

int zvSteppedPlanes::CountSlices(int axis)
{
  int counts[3];
  this->GetDimension(counts);
  return counts[axis] + (this->GetPlane(axis)->GetPlaneOrientation() == Tilted ? PlacesBeyond : 0);
}
