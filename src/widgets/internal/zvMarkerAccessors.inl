// What the markers in four views have word for word in common: operations that read or write one
// field or call another, and how a handler ends that takes a mouse event. There is no base class
// that could hold them: each of the widgets builds on vtk3DWidget itself.
//
// A source defines zvMarker as its class, includes this once and undefines zvMarker. Nothing in
// here writes a message or a trace, which would name this file.

void zvMarker::PlaceWidget()
{
  this->Superclass::PlaceWidget();
}

void zvMarker::PlaceWidget(
  double xmin, double xmax, double ymin, double ymax, double zmin, double zmax)
{
  this->Superclass::PlaceWidget(xmin, xmax, ymin, ymax, zmin, zmax);
}

void zvMarker::SetInteractor(vtkRenderWindowInteractor* interactor)
{
  // An observer may release the widget or change its interactor, too.
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  if (this->Interactor && this->Enabled && interactor != this->Interactor)
  {
    this->SetEnabled(0);
  }
  this->vtk3DWidget::SetInteractor(interactor);
}

void zvMarker::SetCurrentRenderer(vtkRenderer* renderer)
{
  this->RawView->ReleaseRenderer();
  this->Superclass::SetCurrentRenderer(renderer);
}

void zvMarker::SetProjectToPlane(int on)
{
  if (on != this->ProjectToPlane)
  {
    this->ProjectToPlane = on;
    this->Modified();
  }
}

int zvMarker::GetProjectToPlane()
{
  return this->ProjectToPlane;
}

void zvMarker::ProjectToPlaneOn()
{
  this->SetProjectToPlane(1);
}

void zvMarker::ProjectToPlaneOff()
{
  this->SetProjectToPlane(0);
}

// Deliberate: the only normal is 0.
void zvMarker::SetProjectionNormal(int vtkNotUsed(normal))
{
  if (this->ProjectionNormal != 0)
  {
    this->ProjectionNormal = 0;
    this->Modified();
  }
}

int zvMarker::GetProjectionNormalMinValue()
{
  return 0;
}

int zvMarker::GetProjectionNormalMaxValue()
{
  return 0;
}

int zvMarker::GetProjectionNormal()
{
  return this->ProjectionNormal;
}

double zvMarker::GetProjectionPosition()
{
  return this->ProjectionPosition;
}

void zvMarker::SetHandleProperty(vtkProperty* property)
{
  this->ReplaceProperty(this->HandleProperty, property);
}

vtkProperty* zvMarker::GetHandleProperty()
{
  return this->HandleProperty;
}

void zvMarker::SetSelectedHandleProperty(vtkProperty* property)
{
  this->ReplaceProperty(this->SelectedHandleProperty, property);
}

vtkProperty* zvMarker::GetSelectedHandleProperty()
{
  return this->SelectedHandleProperty;
}

void zvMarker::ReplaceProperty(vtkSmartPointer<vtkProperty>& field, vtkProperty* property)
{
  if (field != property)
  {
    field = property;
    this->Modified();
  }
}

void zvMarker::ProcessEvents(
  vtkObject* vtkNotUsed(object), unsigned long event, void* clientdata, void* vtkNotUsed(calldata))
{
  // An observer may release the widget while its handler runs.
  const vtkSmartPointer<zvMarker> self = static_cast<zvMarker*>(clientdata);
  zvDispatch::ToHandler(self.GetPointer(), event);
}

void zvMarker::RenderViews()
{
  zvFourViews::Render(
    { this->InteractorX, this->InteractorY, this->InteractorZ, this->Interactor3D });
}

// Whoever is told, here and below, may release the widget; hosts call handlers, too.
void zvMarker::BeginInteraction()
{
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  this->EventCallbackCommand->SetAbortFlag(1);
  if (this->Interactor && this->Interactor->GetRenderWindow())
  {
    this->StartInteraction();
  }
  this->InvokeEvent(vtkCommand::StartInteractionEvent, nullptr);
  this->RenderViews();
}

void zvMarker::TellMotion()
{
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  this->EventCallbackCommand->SetAbortFlag(1);
  this->InvokeEvent(vtkCommand::InteractionEvent, nullptr);
  this->RenderViews();
}

void zvMarker::FinishInteraction()
{
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  this->EventCallbackCommand->SetAbortFlag(1);
  if (this->Interactor && this->Interactor->GetRenderWindow())
  {
    this->EndInteraction();
  }
  this->InvokeEvent(vtkCommand::EndInteractionEvent, nullptr);
  this->RenderViews();
}
