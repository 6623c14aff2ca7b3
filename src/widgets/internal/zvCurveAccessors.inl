// What the widgets that draw a curve through handles have word for word in common: operations that
// read or write one field, or call another. There is no base class that could hold them: one of the
// widgets builds on zvWidgets, the other on vtk3DWidget itself.
//
// A source defines zvCurve as its class, includes this once and undefines zvCurve. Nothing in here
// writes a message or a trace, which would name this file.

void zvCurve::PlaceWidget()
{
  this->Superclass::PlaceWidget();
}

void zvCurve::PlaceWidget(
  double xmin, double xmax, double ymin, double ymax, double zmin, double zmax)
{
  this->Superclass::PlaceWidget(xmin, xmax, ymin, ymax, zmin, zmax);
}

void zvCurve::SetProjectToPlane(int project)
{
  this->ProjectToPlane = project;
  this->Modified();
}

int zvCurve::GetProjectToPlane()
{
  return this->ProjectToPlane;
}

void zvCurve::ProjectToPlaneOn()
{
  this->SetProjectToPlane(1);
}

void zvCurve::ProjectToPlaneOff()
{
  this->SetProjectToPlane(0);
}

void zvCurve::SetProjectionNormal(int normal)
{
  const int clamped = std::max(
    this->GetProjectionNormalMinValue(), std::min(normal, this->GetProjectionNormalMaxValue()));
  if (clamped != this->ProjectionNormal)
  {
    this->ProjectionNormal = clamped;
    this->Modified();
  }
}

int zvCurve::GetProjectionNormalMinValue()
{
  return zvHandleCurve::AlongX;
}

int zvCurve::GetProjectionNormalMaxValue()
{
  return zvHandleCurve::Oblique;
}

int zvCurve::GetProjectionNormal()
{
  return this->ProjectionNormal;
}

double zvCurve::GetProjectionPosition()
{
  return this->ProjectionPosition;
}

void zvCurve::SetHandleProperty(vtkProperty* property)
{
  this->ReplaceProperty(this->HandleProperty, property);
}

vtkProperty* zvCurve::GetHandleProperty()
{
  return this->HandleProperty;
}

void zvCurve::SetSelectedHandleProperty(vtkProperty* property)
{
  this->ReplaceProperty(this->SelectedHandleProperty, property);
}

vtkProperty* zvCurve::GetSelectedHandleProperty()
{
  return this->SelectedHandleProperty;
}

void zvCurve::SetLineProperty(vtkProperty* property)
{
  this->ReplaceProperty(this->LineProperty, property);
}

vtkProperty* zvCurve::GetLineProperty()
{
  return this->LineProperty;
}

void zvCurve::SetSelectedLineProperty(vtkProperty* property)
{
  this->ReplaceProperty(this->SelectedLineProperty, property);
}

vtkProperty* zvCurve::GetSelectedLineProperty()
{
  return this->SelectedLineProperty;
}

void zvCurve::ReplaceProperty(vtkSmartPointer<vtkProperty>& field, vtkProperty* property)
{
  if (field != property)
  {
    field = property;
    this->Modified();
  }
}

int zvCurve::GetNumberOfHandles()
{
  return this->NumberOfHandles;
}

int zvCurve::GetResolution()
{
  return this->Resolution;
}

zvParametricSpline* zvCurve::GetParametricSpline()
{
  return this->ParametricSpline;
}

int zvCurve::GetClosed()
{
  return this->Closed;
}

void zvCurve::ClosedOn()
{
  this->SetClosed(1);
}

void zvCurve::ClosedOff()
{
  this->SetClosed(0);
}

void zvCurve::BuildRepresentation()
{
  zvCurveParts::FollowHandles(this->ReadHandles(), this->ParametricSpline, this->LineActor);
}

bool zvCurve::TakePokedRenderer()
{
  vtkRenderer* renderer = zvViewLookup::Choose(this->CurrentRenderer, this->Interactor);
  if (renderer != this->CurrentRenderer)
  {
    this->SetCurrentRenderer(renderer);
  }
  return this->CurrentRenderer != nullptr;
}

bool zvCurve::Pick(vtkCellPicker* picker)
{
  if (!this->Interactor)
  {
    return false;
  }
  const int* position = this->Interactor->GetEventPosition();
  return zvPick::At(picker, position[0], position[1], this->CurrentRenderer) != 0;
}

void zvCurve::FollowMotion()
{
  if (this->ProjectToPlane)
  {
    this->ProjectPointsToPlane();
  }
  this->BuildRepresentation();
}
