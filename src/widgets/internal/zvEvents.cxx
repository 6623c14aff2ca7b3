#include "zvEvents.h"

#include "vtkObject.h"

void zvEvents::Observe(vtkObject* subject, const unsigned long* events, std::size_t count,
  vtkCommand* command, float priority)
{
  for (std::size_t i = 0; i < count; ++i)
  {
    subject->AddObserver(events[i], command, priority);
  }
}

vtkSmartPointer<vtkObject> zvEvents::Hold(vtkObject* widget)
{
  return widget->GetReferenceCount() > 0 ? widget : nullptr;
}
