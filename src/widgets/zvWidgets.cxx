#include "zvWidgets.h"

#include "zvEvents.h"
#include "zvInteraction.h"
#include "zvMessages.h"
#include "zvViewLookup.h"

#include "vtkCallbackCommand.h"
#include "vtkObjectFactory.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkSmartPointer.h"

vtkObjectFactoryNewMacro(zvWidgets);

vtkObject* vtkInstantiatorzvWidgetsNew()
{
  return zvWidgets::New();
}

zvWidgets::zvWidgets()
{
  zvEvents::HoldDuringKeys(this->KeyPressCallbackCommand);
}

zvWidgets::~zvWidgets()
{
  // The command holds this object as its client data and may outlive it on the interactor's list.
  this->RemoveObservers();
}

void zvWidgets::PrintSelf(ostream& os, vtkIndent indent)
{
  this->Superclass::PrintSelf(os, indent);
  os << indent << "Interaction: " << (this->Interaction ? "On\n" : "Off\n");
  os << indent << "DebugMode: " << (this->DebugMode ? "On\n" : "Off\n");
}

void zvWidgets::CollectRevisions(ostream& os)
{
  os << "zvWidgets $Revision: 1.2 $\n";
}

void zvWidgets::SetInteractor(vtkRenderWindowInteractor* interactor)
{
  if (interactor == this->Interactor)
  {
    return;
  }
  // An observer may release the widget or change its interactor, too.
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  if (this->Interactor && this->Enabled)
  {
    this->SetEnabled(0);
  }
  // A widget that was attached without being enabled would be left behind there.
  this->RemoveObservers();
  this->Superclass::SetInteractor(interactor);
}

// Deliberately empty: where a widget with handles goes is its subclass's business.
void zvWidgets::PlaceWidget(double vtkNotUsed(bounds)[6]) {}

void zvWidgets::PlaceWidget()
{
  this->vtk3DWidget::PlaceWidget();
}

void zvWidgets::PlaceWidget(
  double xmin, double xmax, double ymin, double ymax, double zmin, double zmax)
{
  this->vtk3DWidget::PlaceWidget(xmin, xmax, ymin, ymax, zmin, zmax);
}

void zvWidgets::AddObservers()
{
  zvTraceMacro("zvWidgets::AddObservers(void)");
  if (!this->Interactor)
  {
    vtkGenericWarningMacro("set interactor before adding observers...");
    return;
  }
  zvEvents::Observe(this->Interactor, zvEvents::Handle, this->EventCallbackCommand, this->Priority);
  // Held, as an observer may release the widget.
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  this->InvokeEvent(vtkCommand::EnableEvent, nullptr);
}

void zvWidgets::RemoveObservers()
{
  if (this->Interactor)
  {
    this->Interactor->RemoveObserver(this->EventCallbackCommand);
  }
}

void zvWidgets::SetInteraction(bool arg)
{
  zvTraceMacro("void zvWidgets::SetInteraction(bool arg)");
  if (!this->Interactor || !this->Enabled)
  {
    vtkGenericWarningMacro("set interactor and Enabled before changing interaction...");
    return;
  }
  if (arg == this->Interaction)
  {
    return;
  }
  // Held, as an observer of EnableEvent may release the widget.
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  if (arg)
  {
    this->AddObservers();
  }
  else
  {
    this->Interactor->RemoveObserver(this->EventCallbackCommand);
  }
  this->Interaction = arg;
}

bool zvWidgets::GetInteraction()
{
  zvTraceMacro("bool zvWidgets::GetInteraction()");
  return this->Interaction;
}

void zvWidgets::BeginInteraction()
{
  zvInteraction::Tell(this, this->EventCallbackCommand, this->Interactor,
    vtkCommand::StartInteractionEvent, [this] { this->StartInteraction(); });
}

void zvWidgets::TellMotion()
{
  zvInteraction::Tell(
    this, this->EventCallbackCommand, this->Interactor, vtkCommand::InteractionEvent);
}

void zvWidgets::FinishInteraction()
{
  zvInteraction::Tell(this, this->EventCallbackCommand, this->Interactor,
    vtkCommand::EndInteractionEvent, [this] { this->EndInteraction(); });
}
