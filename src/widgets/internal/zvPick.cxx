#include "zvPick.h"

#include "vtkAbstractPropPicker.h"
#include "vtkAssemblyNode.h"
#include "vtkAssemblyPath.h"
#include "vtkProp.h"
#include "vtkRenderer.h"

int zvPick::At(vtkAbstractPropPicker* picker, int x, int y, vtkRenderer* renderer)
{
  if (!picker || !renderer || !renderer->GetRenderWindow())
  {
    return 0;
  }
  return picker->Pick(x, y, 0.0, renderer);
}

bool zvPick::WasHit(vtkAbstractPropPicker* picker, vtkProp* prop)
{
  vtkAssemblyPath* path = picker ? picker->GetPath() : nullptr;
  if (!path || !prop)
  {
    return false;
  }
  vtkCollectionSimpleIterator position;
  path->InitTraversal(position);
  while (vtkAssemblyNode* node = path->GetNextNode(position))
  {
    if (node->GetViewProp() == prop)
    {
      return true;
    }
  }
  return false;
}

bool zvPick::Hits(vtkAbstractPropPicker* picker, int x, int y, vtkRenderer* renderer, vtkProp* prop)
{
  // Without a pick the path would be that of an older one.
  return At(picker, x, y, renderer) != 0 && WasHit(picker, prop);
}
