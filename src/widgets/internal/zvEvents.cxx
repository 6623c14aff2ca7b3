#include "zvEvents.h"

#include "vtkCallbackCommand.h"
#include "vtkInteractorObserver.h"
#include "vtkObject.h"

namespace
{
// Opens what the stock class does for a key, which is protected. No object of it is ever made.
class Keys : public vtkInteractorObserver
{
public:
  static void Process(vtkObject* object, unsigned long event, void* clientdata, void* calldata)
  {
    const auto hold = zvEvents::Hold(static_cast<vtkObject*>(clientdata));
    vtkInteractorObserver::ProcessEvents(object, event, clientdata, calldata);
  }
};
}

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

void zvEvents::HoldDuringKeys(vtkCallbackCommand* keyCommand)
{
  keyCommand->SetCallback(Keys::Process);
}
