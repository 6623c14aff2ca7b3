#include "zvViewPicker.h"

#include "zvPick.h"

#include "vtkAssemblyNode.h"
#include "vtkAssemblyPath.h"
#include "vtkObjectFactory.h"
#include "vtkProp3D.h"
#include "vtkRenderer.h"

vtkStandardNewMacro(zvViewPicker);

zvViewPicker::zvViewPicker() = default;

zvViewPicker::~zvViewPicker() = default;

vtkProp* zvViewPicker::PickProp(vtkCellPicker* picker, int x, int y, vtkRenderer* renderer)
{
  if (!zvPick::At(picker, x, y, renderer) || !picker->GetPath())
  {
    return nullptr;
  }
  return picker->GetPath()->GetFirstNode()->GetViewProp();
}

double zvViewPicker::IntersectWithLine(const double p1[3], const double p2[3], double tol,
  vtkAssemblyPath* path, vtkProp3D* prop, vtkAbstractMapper3D* mapper)
{
  vtkProp* root = path ? path->GetFirstNode()->GetViewProp() : prop;
  if (!this->Renderer || !this->Renderer->HasViewProp(root))
  {
    return VTK_DOUBLE_MAX;
  }
  return this->Superclass::IntersectWithLine(p1, p2, tol, path, prop, mapper);
}
