// What the widgets that draw a curve through handles have word for word in common: operations that
// read or write one field, or call another, and what the others do after their traces and checks.
// There is no base class that could hold them: one of the widgets builds on zvWidgets, the other on
// vtk3DWidget itself.
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

void zvCurve::PlaceHandles(double bounds[6])
{
  double adjusted[6];
  double center[3];
  this->AdjustBounds(bounds, adjusted, center);
  if (this->ProjectToPlane)
  {
    this->ProjectPointsToPlane();
  }
  else
  {
    this->WriteHandles(zvHandleCurve::OnDiagonal(adjusted, this->NumberOfHandles));
  }
  std::copy_n(adjusted, 6, this->InitialBounds);
  const double low[3] = { adjusted[0], adjusted[2], adjusted[4] };
  const double high[3] = { adjusted[1], adjusted[3], adjusted[5] };
  this->InitialLength = std::sqrt(vtkMath::Distance2BetweenPoints(low, high));
  // Deliberate: the line is not rebuilt. Hosts place first and give handles afterwards.
  this->SizeHandles();
}

void zvCurve::TakeResolution(int resolution)
{
  if (resolution == this->Resolution || resolution < this->NumberOfHandles - 1)
  {
    return;
  }
  this->Resolution = resolution;
  this->ParametricFunctionSource->SetUResolution(resolution);
  this->ParametricFunctionSource->Modified();
}

void zvCurve::TakeSpline(zvParametricSpline* spline)
{
  if (spline == this->ParametricSpline)
  {
    return;
  }
  this->ParametricSpline = spline;
  if (spline)
  {
    this->ParametricFunctionSource->SetParametricFunction(spline);
  }
}

void zvCurve::TakeClosed(int closed)
{
  if (closed == this->Closed)
  {
    return;
  }
  this->Closed = closed;
  if (this->ParametricSpline)
  {
    this->ParametricSpline->SetClosed(closed);
  }
  this->BuildRepresentation();
}

bool zvCurve::MoveCurrentHandle(const double* from, const double* to)
{
  zvHandleCurve::Positions handles = this->ReadHandles();
  if (this->CurrentHandleIndex < 0 ||
    static_cast<std::size_t>(this->CurrentHandleIndex) >= handles.size())
  {
    return false;
  }
  zvHandleCurve::Positions moved(1, handles[this->CurrentHandleIndex]);
  zvHandleCurve::Translate(moved, zvCurveParts::MotionBetween(from, to));
  handles[this->CurrentHandleIndex] = moved.front();
  this->WriteHandles(handles);
  return true;
}

void zvCurve::TranslateHandles(const double* from, const double* to)
{
  zvHandleCurve::Positions handles = this->ReadHandles();
  zvHandleCurve::Translate(handles, zvCurveParts::MotionBetween(from, to));
  this->WriteHandles(handles);
}

void zvCurve::ScaleHandles(const double* from, const double* to, int y)
{
  if (!this->Interactor)
  {
    return;
  }
  zvHandleCurve::Positions handles = this->ReadHandles();
  const bool shrink = this->Interactor->GetLastEventPosition()[1] >= y;
  zvHandleCurve::Scale(handles, std::sqrt(vtkMath::Distance2BetweenPoints(from, to)), shrink);
  this->WriteHandles(handles);
}

void zvCurve::SpinHandles(const double* from, const double* to, const double* viewPlaneNormal)
{
  zvHandleCurve::Position axis;
  const bool canSpin = this->ProjectToPlane
    ? zvHandleCurve::FindPlanarSpinAxis(this->ProjectionNormal, this->PlaneSource, axis)
    : zvHandleCurve::FindFreeSpinAxis(zvCurveParts::MotionBetween(from, to), viewPlaneNormal, axis);
  if (!canSpin)
  {
    return;
  }
  const zvHandleCurve::Position start{ { from[0], from[1], from[2] } };
  const zvHandleCurve::Position end{ { to[0], to[1], to[2] } };
  const zvHandleCurve::Position center{ { this->Centroid[0], this->Centroid[1],
    this->Centroid[2] } };
  zvHandleCurve::Positions handles = this->ReadHandles();
  zvHandleCurve::Spin(handles, start, end, center, axis, this->Transform);
  this->WriteHandles(handles);
}

void zvCurve::ShowLineAs(bool isGrabbed)
{
  if (isGrabbed)
  {
    this->ValidPick = 1;
    this->LinePicker->GetPickPosition(this->LastPickPosition);
  }
  this->LineActor->SetProperty(isGrabbed ? this->SelectedLineProperty : this->LineProperty);
}

void zvCurve::GrabCurve()
{
  if (!zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor))
  {
    this->State = Outside;
    return;
  }
  this->State = Moving;
  if (!this->Pick(this->HandlePicker) && !this->Pick(this->LinePicker))
  {
    this->State = Outside;
    this->HighlightLine(0);
    this->CurveGrabbed = false;
    return;
  }
  this->HighlightLine(1);
  this->CurveGrabbed = true;
  this->BeginInteraction();
}

void zvCurve::LetCurveGo()
{
  if (this->State == Start || this->State == Outside)
  {
    return;
  }
  this->State = Start;
  this->HighlightLine(0);
  this->CurveGrabbed = false;
  this->SizeHandles();
  this->FinishInteraction();
}

void zvCurve::AppendHandleUnderPointer()
{
  // A picker that misses puts its position under the pointer, at the depth of the focal point.
  double position[3];
  this->LinePicker->GetPickPosition(position);
  zvViewLookup::Render(this->Interactor);
  this->AddHandle(position);
  this->State = Placing;
}

void zvCurve::MoveWithPointer(double previous[3], double current[3])
{
  const int* position = this->Interactor->GetEventPosition();
  switch (this->State)
  {
    case Moving:
      this->HoldsHandle() ? this->MovePoint(previous, current) : this->Translate(previous, current);
      break;
    case Scaling:
      this->Scale(previous, current, position[0], position[1]);
      break;
    case Spinning:
      this->Spin(previous, current, this->CurrentRenderer->GetActiveCamera()->GetViewPlaneNormal());
      break;
    default:
      break;
  }
}

void zvCurve::ShowActor(vtkActor* actor, vtkProperty* property)
{
  if (this->CurrentRenderer)
  {
    this->CurrentRenderer->AddViewProp(actor);
  }
  actor->SetProperty(property);
}
