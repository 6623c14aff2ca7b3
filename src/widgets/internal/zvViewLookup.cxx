#include "zvViewLookup.h"

#include "vtkCommand.h"
#include "vtkInteractorObserver.h"
#include "vtkMath.h"
#include "vtkProp.h"
#include "vtkRenderWindow.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkSmartPointer.h"

#include <cmath>

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
  if (!interactor)
  {
    return;
  }
  const vtkSmartPointer<vtkRenderWindowInteractor> hold = interactor;
  const bool isObserved = interactor->HasObserver(vtkCommand::RenderEvent) != 0;
  interactor->Render();
  if (isObserved)
  {
    // An event within an event: when it ends, the toolkit forgets that observers were removed in
    // it, and goes on with one that is gone. Removing one that is not there reminds it.
    interactor->RemoveObserver(0UL);
  }
}

double zvViewLookup::DiagonalAt(vtkRenderer* renderer, const double depthPoint[3])
{
  if (!IsShown(renderer))
  {
    return 0.0;
  }
  const double* viewport = renderer->GetViewport();
  const int* size = renderer->GetRenderWindow()->GetSize();
  double display[3];
  double low[4];
  double high[4];
  vtkInteractorObserver::ComputeWorldToDisplay(
    renderer, depthPoint[0], depthPoint[1], depthPoint[2], display);
  vtkInteractorObserver::ComputeDisplayToWorld(
    renderer, size[0] * viewport[0], size[1] * viewport[1], display[2], low);
  vtkInteractorObserver::ComputeDisplayToWorld(
    renderer, size[0] * viewport[2], size[1] * viewport[3], display[2], high);
  return std::sqrt(vtkMath::Distance2BetweenPoints(low, high));
}

void zvViewLookup::TakeOut(vtkProp* prop)
{
  const vtkSmartPointer<vtkProp> held = prop;
  for (int i = prop->GetNumberOfConsumers() - 1; i >= 0; --i)
  {
    if (auto* viewport = vtkViewport::SafeDownCast(prop->GetConsumer(i)))
    {
      viewport->RemoveViewProp(prop);
    }
  }
}
