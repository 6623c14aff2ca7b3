#include "zvListPicker.h"

#include "vtkAssemblyPath.h"
#include "vtkObjectFactory.h"
#include "vtkProp3D.h"

vtkStandardNewMacro(zvListPicker);

zvListPicker::zvListPicker() = default;

zvListPicker::~zvListPicker() = default;

void zvListPicker::Initialize()
{
  this->Superclass::Initialize();
  this->Tested.clear();
}

double zvListPicker::IntersectWithLine(const double p1[3], const double p2[3], double tol,
  vtkAssemblyPath* path, vtkProp3D* prop, vtkAbstractMapper3D* mapper)
{
  // As a part of an assembly a prop can be in several places.
  if (!path || path->GetNumberOfItems() != 1)
  {
    return this->Superclass::IntersectWithLine(p1, p2, tol, path, prop, mapper);
  }
  const auto tested = this->Tested.find(prop);
  if (tested != this->Tested.end())
  {
    return tested->second;
  }
  const double hit = this->Superclass::IntersectWithLine(p1, p2, tol, path, prop, mapper);
  this->Tested.emplace(prop, hit);
  return hit;
}
