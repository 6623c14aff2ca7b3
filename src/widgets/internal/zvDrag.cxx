#include "zvDrag.h"

#include "vtkInteractorObserver.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

#include <algorithm>

namespace
{
bool HasView(vtkRenderWindowInteractor* interactor, vtkRenderer* renderer)
{
  return interactor && renderer && renderer->GetRenderWindow() && renderer->GetActiveCamera();
}
}

bool zvDrag::GetMotion(vtkRenderWindowInteractor* interactor, vtkRenderer* renderer,
  const double depthPoint[3], double previous[3], double current[3])
{
  if (!HasView(interactor, renderer))
  {
    return false;
  }
  double display[3];
  vtkInteractorObserver::ComputeWorldToDisplay(
    renderer, depthPoint[0], depthPoint[1], depthPoint[2], display);
  return GetMotionAtDepth(interactor, renderer, display[2], previous, current);
}

bool zvDrag::GetMotionAtDepth(vtkRenderWindowInteractor* interactor, vtkRenderer* renderer,
  double depth, double previous[3], double current[3])
{
  if (!HasView(interactor, renderer))
  {
    return false;
  }
  const int* last = interactor->GetLastEventPosition();
  const int* now = interactor->GetEventPosition();
  double world[4];
  vtkInteractorObserver::ComputeDisplayToWorld(renderer, last[0], last[1], depth, world);
  std::copy_n(world, 3, previous);
  vtkInteractorObserver::ComputeDisplayToWorld(renderer, now[0], now[1], depth, world);
  std::copy_n(world, 3, current);
  return true;
}
