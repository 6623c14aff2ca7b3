#ifndef zvInteraction_h
#define zvInteraction_h

#include "zvEvents.h"
#include "zvViewLookup.h"

#include "vtkCallbackCommand.h"
#include "vtkCommand.h"
#include "vtkObject.h"
#include "vtkRenderWindowInteractor.h"

/// How a handler of a widget ends that takes a mouse event: nobody behind the widget sees the
/// event, observers of the widget are told, and the view is rendered.
namespace zvInteraction
{
/// Set the abort flag of \a command, let the window change its rate by \a changeRate if there is
/// one, invoke \a event on \a widget and render. \a interactor is the widget's field: an observer
/// may disable the widget, take its interactor away or release it.
template <typename ChangeRate>
void Tell(vtkObject* widget, vtkCallbackCommand* command,
  vtkRenderWindowInteractor* const& interactor, unsigned long event, const ChangeRate& changeRate)
{
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(widget);
  command->SetAbortFlag(1);
  if (interactor && interactor->GetRenderWindow())
  {
    changeRate();
  }
  widget->InvokeEvent(event, nullptr);
  zvViewLookup::Render(interactor);
}

/// The same without a change of the rate.
inline void Tell(vtkObject* widget, vtkCallbackCommand* command,
  vtkRenderWindowInteractor* const& interactor, unsigned long event)
{
  Tell(widget, command, interactor, event, [] {});
}
}

#endif
