#include "zvViewLookup.h"

#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

vtkRenderer* zvViewLookup::Choose(vtkRenderer* current, vtkRenderWindowInteractor* interactor)
{
  if (current || !interactor)
  {
    return current;
  }
  const int* position = interactor->GetLastEventPosition();
  return interactor->FindPokedRenderer(position[0], position[1]);
}

bool zvViewLookup::IsShown(vtkRenderer* renderer)
{
  return renderer && renderer->GetRenderWindow();
}

bool zvViewLookup::HasPointer(vtkRenderer* renderer, vtkRenderWindowInteractor* interactor)
{
  if (!interactor || !IsShown(renderer))
  {
    return false;
  }
  const int* position = interactor->GetEventPosition();
  return renderer->IsInViewport(position[0], position[1]) != 0;
}

void zvViewLookup::Render(vtkRenderWindowInteractor* interactor)
{
  if (interactor)
  {
    interactor->Render();
  }
}
