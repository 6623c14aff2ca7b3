#include "zvDrag.h"

#include "vtkInteractorObserver.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

#include <algorithm>

bool zvDrag::GetMotion(vtkRenderWindowInteractor* interactor, vtkRenderer* renderer,
  const double depthPoint[3], double previous[3], double current[3])
{
  if (!interactor || !renderer || !renderer->GetRenderWindow() || !renderer->GetActiveCamera())
  {
    return false;
  }
  double display[3];
  vtkInteractorObserver::ComputeWorldToDisplay(
    renderer, depthPoint[0], depthPoint[1], depthPoint[2], display);
  const int* last = interactor->GetLastEventPosition();
  const int* now = interactor->GetEventPosition();
  double world[4];
  vtkInteractorObserver::ComputeDisplayToWorld(renderer, last[0], last[1], display[2], world);
  std::copy_n(world, 3, previous);
  vtkInteractorObserver::ComputeDisplayToWorld(renderer, now[0], now[1], display[2], world);
  std::copy_n(world, 3, current);
  return true;
}
