#include "zvFourViews.h"

#include "zvEvents.h"
#include "zvObservedSubjects.h"
#include "zvViewLookup.h"

#include "vtkCommand.h"
#include "vtkDataSet.h"
#include "vtkMath.h"
#include "vtkProp.h"
#include "vtkRenderWindow.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

#include <algorithm>

namespace
{
struct PartNames
{
  const char* Renderer;
  const char* Interactor;
};
constexpr std::array<PartNames, 4> Names = { { { "RendererX", "InteractorX" },
  { "RendererY", "InteractorY" }, { "RendererZ", "InteractorZ" },
  { "Renderer3D", "Interactor3D" } } };
}

bool zvFourViews::Set(vtkRenderer* view, vtkWeakPointer<vtkRenderer>& renderer,
  vtkWeakPointer<vtkRenderWindowInteractor>& interactor)
{
  if (!zvViewLookup::IsShown(view))
  {
    return false;
  }
  renderer = view;
  interactor = view->GetRenderWindow()->GetInteractor();
  return true;
}

const char* zvFourViews::FindMissing(const Renderers& renderers, const Interactors& interactors)
{
  for (std::size_t view = 0; view < Names.size(); ++view)
  {
    if (!renderers[view])
    {
      return Names[view].Renderer;
    }
    if (!interactors[view])
    {
      return Names[view].Interactor;
    }
  }
  return nullptr;
}

void zvFourViews::Add(const Renderers& renderers, vtkProp* prop)
{
  for (vtkRenderer* renderer : renderers)
  {
    if (renderer)
    {
      renderer->AddActor(prop);
    }
  }
}

void zvFourViews::Remove(const Renderers& renderers, vtkProp* prop)
{
  for (vtkRenderer* renderer : renderers)
  {
    if (renderer)
    {
      renderer->RemoveActor(prop);
    }
  }
}

void zvFourViews::Render(const Interactors& interactors)
{
  std::array<vtkWeakPointer<vtkRenderWindowInteractor>, 4> present;
  std::copy(interactors.begin(), interactors.end(), present.begin());
  for (const auto& interactor : present)
  {
    zvViewLookup::Render(interactor);
  }
}

void zvFourViews::Observe(const Interactors& interactors, vtkCommand* command, float priority,
  std::vector<vtkWeakPointer<vtkObject>>& observed)
{
  for (vtkRenderWindowInteractor* interactor : interactors)
  {
    if (interactor)
    {
      zvEvents::Observe(interactor, zvEvents::Handle, command, priority);
      zvObservedSubjects::Add(observed, interactor);
    }
  }
}

void zvFourViews::Unobserve(const Interactors& interactors, vtkCommand* command)
{
  for (vtkRenderWindowInteractor* interactor : interactors)
  {
    if (interactor)
    {
      interactor->RemoveObserver(command);
    }
  }
}

bool zvFourViews::GetBounds(vtkDataSet* data, double bounds[6])
{
  if (!data || !vtkMath::AreBoundsInitialized(data->GetBounds()))
  {
    return false;
  }
  data->GetBounds(bounds);
  return true;
}

void zvFourViews::Clamp(const double bounds[6], double position[3])
{
  for (int axis = 0; axis < 3; ++axis)
  {
    if (position[axis] > bounds[2 * axis + 1])
    {
      position[axis] = bounds[2 * axis + 1];
    }
    else if (position[axis] < bounds[2 * axis])
    {
      position[axis] = bounds[2 * axis];
    }
  }
}

void zvFourViews::MoveWithin(
  const double bounds[6], const double from[3], const double to[3], double position[3])
{
  for (int axis = 0; axis < 3; ++axis)
  {
    position[axis] += to[axis] - from[axis];
  }
  Clamp(bounds, position);
}
