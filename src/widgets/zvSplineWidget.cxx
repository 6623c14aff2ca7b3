#include "zvSplineWidget.h"

#include "zvCurveParts.h"
#include "zvDispatch.h"
#include "zvDrag.h"
#include "zvEvents.h"
#include "zvHandleCurve.h"
#include "zvMessages.h"
#include "zvParametricSpline.h"
#include "zvPick.h"
#include "zvViewLookup.h"

#include "vtkActor.h"
#include "vtkCallbackCommand.h"
#include "vtkCamera.h"
#include "vtkCellArray.h"
#include "vtkCellPicker.h"
#include "vtkDoubleArray.h"
#include "vtkMath.h"
#include "vtkObjectFactory.h"
#include "vtkParametricFunctionSource.h"
#include "vtkPlaneSource.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"
#include "vtkPolyDataMapper.h"
#include "vtkProperty.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkTransform.h"

#include <algorithm>
#include <cmath>

namespace
{
using zvHandleCurve::Position;
using zvHandleCurve::Positions;
}

#define zvCurve zvSplineWidget
#include "zvCurveAccessors.inl"
#undef zvCurve

vtkObjectFactoryNewMacro(zvSplineWidget);

vtkObject* vtkInstantiatorzvSplineWidgetNew()
{
  return zvSplineWidget::New();
}

zvSplineWidget::zvSplineWidget()
  : ParametricSpline(vtkSmartPointer<zvParametricSpline>::New())
{
  this->EventCallbackCommand->SetCallback(zvSplineWidget::ProcessEvents);
  std::fill_n(this->LastPickPosition, 3, 0.0); // the depth of a drag before the line is picked

  zvCurveParts::BuildLine(
    this->ParametricSpline, this->ParametricFunctionSource, this->LineActor, this->Resolution);
  auto handleMapper = zvCurveParts::MakeMapper();
  handleMapper->SetInputData(this->HandlePolyData);
  this->HandleActor->SetMapper(handleMapper);
  this->LinePicker = zvCurveParts::MakePicker();
  this->LinePicker->AddPickList(this->LineActor);
  this->HandlePicker = zvCurveParts::MakePicker();
  this->HandlePicker->AddPickList(this->HandleActor);
  this->CreateDefaultProperties();

  this->PlaceFactor = 1.0;
  double bounds[6] = { -0.5, 0.5, -0.5, 0.5, -0.5, 0.5 };
  this->zvSplineWidget::PlaceWidget(bounds);
}

zvSplineWidget::~zvSplineWidget()
{
  if (this->Interactor)
  {
    this->zvSplineWidget::SetEnabled(0);
  }
  this->HideCurve(); // AddHandle shows the curve of a widget that is not enabled, too
}

void zvSplineWidget::PrintSelf(ostream& os, vtkIndent indent)
{
  this->Superclass::PrintSelf(os, indent);
  zvCurveParts::Print(os, indent,
    { { { "Handle Property", this->HandleProperty },
        { "Selected Handle Property", this->SelectedHandleProperty },
        { "Line Property", this->LineProperty },
        { "Selected Line Property", this->SelectedLineProperty },
        { "ParametricSpline", this->ParametricSpline } },
      this->ProjectToPlane, this->ProjectionNormal, this->ProjectionPosition, this->Resolution,
      this->NumberOfHandles, this->Closed });
}

void zvSplineWidget::CollectRevisions(ostream& os)
{
  this->Superclass::CollectRevisions(os);
  os << "zvSplineWidget $Revision: 1.2 $\n";
}

void zvSplineWidget::SetEnabled(int enabling)
{
  if (!this->Interactor)
  {
    vtkErrorMacro("The interactor must be set prior to enabling/disabling widget");
    return;
  }
  // An observer may release the widget. In the destructor there is nothing to hold any more.
  const vtkSmartPointer<zvSplineWidget> self = this->GetReferenceCount() > 0 ? this : nullptr;
  if (enabling && !this->Enabled && this->TakePokedRenderer())
  {
    this->Enabled = 1;
    this->AddObservers();
    this->ShowActor(this->LineActor, this->LineProperty);
    this->ShowActor(this->HandleActor, this->HandleProperty);
    this->BuildRepresentation();
    this->SizeHandles();
    this->InvokeEvent(vtkCommand::EnableEvent, nullptr);
    zvViewLookup::Render(this->Interactor);
  }
  else if (!enabling && this->Enabled)
  {
    this->Enabled = 0;
    this->RemoveObservers();
    this->HideCurve();
    this->InvokeEvent(vtkCommand::DisableEvent, nullptr);
    if (!this->Enabled) // an observer may have enabled it again
    {
      this->SetCurrentRenderer(nullptr);
    }
    zvViewLookup::Render(this->Interactor);
  }
}

void zvSplineWidget::PlaceWidget(double bounds[6])
{
  if (zvRequireMacro(bounds, zvCurveParts::NoBounds))
  {
    this->PlaceHandles(bounds);
  }
}

void zvSplineWidget::AddObservers()
{
  if (this->Interactor)
  {
    zvEvents::Observe(
      this->Interactor, zvEvents::Handle, this->EventCallbackCommand, this->Priority);
  }
}

void zvSplineWidget::SetProjectionPosition(double position)
{
  this->ProjectionPosition = position;
  this->FollowMotion();
}

void zvSplineWidget::SetPlaneSource(vtkPlaneSource* plane)
{
  this->PlaneSource = plane;
}

void zvSplineWidget::SetNumberOfHandles(int count)
{
  count = std::max(count, 0);
  if (count == this->NumberOfHandles)
  {
    return;
  }
  this->Initialize();
  this->NumberOfHandles = count;
  // Deliberate: the list takes the actor once more at each change, nothing takes it out again.
  this->HandlePicker->AddPickList(this->HandleActor);
}

void zvSplineWidget::SetResolution(int resolution)
{
  this->TakeResolution(resolution);
}

void zvSplineWidget::SetParametricSpline(zvParametricSpline* spline)
{
  this->TakeSpline(spline);
}

void zvSplineWidget::SetClosed(int closed)
{
  this->TakeClosed(closed);
}

void zvSplineWidget::SetHandlePosition(int handle, double x, double y, double z)
{
  if (handle < 0 || handle >= this->NumberOfHandles)
  {
    vtkErrorMacro("zvSplineWidget: handle index out of range.");
    return;
  }
  const Position position{ { x, y, z } };
  Positions handles = this->ReadHandles();
  // Handles before this one that were never given a position start where this one is.
  handles.resize(std::max(handles.size(), static_cast<std::size_t>(handle) + 1), position);
  handles[handle] = position;
  this->WriteHandles(handles);
  if (this->ProjectToPlane)
  {
    this->ProjectPointsToPlane();
  }
  this->BuildRepresentation();
}

void zvSplineWidget::SetHandlePosition(int handle, double xyz[3])
{
  if (!zvRequireMacro(xyz, zvCurveParts::NoPosition))
  {
    return;
  }
  this->SetHandlePosition(handle, xyz[0], xyz[1], xyz[2]);
}

void zvSplineWidget::GetHandlePosition(int handle, double xyz[3])
{
  if (!zvRequireMacro(xyz, zvCurveParts::NoRoom))
  {
    return;
  }
  if (const double* position = this->GetHandlePosition(handle))
  {
    std::copy_n(position, 3, xyz);
  }
}

double* zvSplineWidget::GetHandlePosition(int handle)
{
  vtkPoints* points = this->HandlePolyData->GetPoints();
  if (handle < 0 || handle >= this->NumberOfHandles || !points ||
    handle >= points->GetNumberOfPoints())
  {
    vtkErrorMacro("zvSplineWidget: handle index out of range.");
    return nullptr;
  }
  // Not the array's own scratch tuple, so that a caller can hold two of them.
  return vtkDoubleArray::SafeDownCast(points->GetData())->GetPointer(3 * handle);
}

void zvSplineWidget::GetPolyData(vtkPolyData* pd)
{
  if (pd)
  {
    pd->ShallowCopy(this->ParametricFunctionSource->GetOutput());
  }
}

double zvSplineWidget::GetSummedLength()
{
  vtkPolyData* line = this->ParametricFunctionSource->GetOutput();
  return zvHandleCurve::SummedLength(zvHandleCurve::Read(line->GetPoints()));
}

void zvSplineWidget::CalculateCentroid()
{
  std::copy_n(zvHandleCurve::Centroid(this->ReadHandles()).data(), 3, this->Centroid);
}

void zvSplineWidget::InitializeHandles(vtkPoints* points)
{
  if (!points)
  {
    return;
  }
  // Taken out first: the points may be those of the handles themselves.
  const Positions positions = zvHandleCurve::Read(points);
  this->SetNumberOfHandles(static_cast<int>(positions.size()));
  if (this->HandlePolyData->GetNumberOfPoints() < this->NumberOfHandles)
  {
    this->WriteHandles(positions);
  }
  int handle = 0;
  for (const Position& position : positions)
  {
    this->SetHandlePosition(handle++, position[0], position[1], position[2]);
  }
}

void zvSplineWidget::EraseHandle(const int& index)
{
  if (this->NumberOfHandles < 3 || index < 0 || index >= this->NumberOfHandles)
  {
    return;
  }
  const Positions handles = this->ReadHandles();
  if (static_cast<std::size_t>(index) < handles.size())
  {
    // Deliberate: the points and cells of the handles keep their number, hosts reckon with the old
    // last point until they add a handle.
    this->InitializeHandles(zvHandleCurve::MakePoints(zvHandleCurve::Erased(handles, index)));
  }
}

void zvSplineWidget::InsertHandleOnLine(double* pos)
{
  if (!zvRequireMacro(pos, zvCurveParts::NoPosition))
  {
    return;
  }
  if (this->NumberOfHandles < 2 || this->LinePicker->GetCellId() == -1)
  {
    return;
  }
  const Positions handles = this->ReadHandles();
  const int after = zvHandleCurve::FindInsertion(this->ParametricSpline,
    static_cast<int>(handles.size()), this->LinePicker->GetSubId(), this->Resolution);
  this->SetHandlePoints(zvHandleCurve::Inserted(handles, after, { { pos[0], pos[1], pos[2] } }));
  this->InitializeHandles(this->HandlePolyData->GetPoints());
}

int zvSplineWidget::IsClosed()
{
  if (this->NumberOfHandles < 2 || !this->Closed)
  {
    return 0;
  }
  const auto closure = zvHandleCurve::TestClosure(this->ParametricFunctionSource->GetOutput());
  if (closure == zvHandleCurve::Closure::NoLine)
  {
    vtkErrorMacro("No line data to query geometric closure");
  }
  return closure == zvHandleCurve::Closure::Closed ? 1 : 0;
}

int zvSplineWidget::IsClicked()
{
  return this->Pick(this->HandlePicker) || this->Pick(this->LinePicker) ? 1 : 0;
}

int zvSplineWidget::GetState()
{
  return this->State;
}

void zvSplineWidget::SetState(int state)
{
  this->State = state;
}

void zvSplineWidget::AddHandle(double* pos)
{
  if (!zvRequireMacro(pos, zvCurveParts::NoPosition))
  {
    return;
  }
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  if (this->NumberOfHandles > 1 && this->Pick(this->HandlePicker))
  {
    this->CurrentHandleIndex = this->HighlightHandle();
    if (this->CurrentHandleIndex == 0)
    {
      this->ClosedOn();
      this->State = Start;
      this->SetEnabled(1);
    }
    this->CurrentHandleIndex = -1;
    return;
  }
  this->AppendHandle(pos);
  this->State = Placing;
  this->HighlightHandle();
  zvViewLookup::Render(this->Interactor);
}

void zvSplineWidget::Initialize()
{
  this->NumberOfHandles = 0;
}

void zvSplineWidget::ProjectPointsToPlane()
{
  if (this->ProjectionNormal == zvHandleCurve::Oblique)
  {
    this->ProjectPointsToObliquePlane();
  }
  else
  {
    this->ProjectPointsToOrthoPlane();
  }
}

void zvSplineWidget::ProjectPointsToOrthoPlane()
{
  if (this->ProjectionNormal != zvHandleCurve::Oblique)
  {
    Positions handles = this->ReadHandles();
    zvHandleCurve::ProjectToOrthoPlane(handles, this->ProjectionNormal, this->ProjectionPosition);
    this->WriteHandles(handles);
  }
}

void zvSplineWidget::ProjectPointsToObliquePlane()
{
  if (!this->PlaneSource)
  {
    vtkGenericWarningMacro("Set the plane source for oblique projections...");
    return;
  }
  Positions handles = this->ReadHandles();
  zvHandleCurve::ProjectToObliquePlane(handles, this->PlaneSource);
  this->WriteHandles(handles);
}

void zvSplineWidget::MovePoint(double* p1, double* p2)
{
  if (zvRequireMacro(p1 && p2, zvCurveParts::NoMotion) && !this->MoveCurrentHandle(p1, p2))
  {
    vtkGenericWarningMacro("Spline handle index out of range.");
  }
}

void zvSplineWidget::Translate(double* p1, double* p2)
{
  if (zvRequireMacro(p1 && p2, zvCurveParts::NoMotion))
  {
    this->TranslateHandles(p1, p2);
  }
}

void zvSplineWidget::Scale(double* p1, double* p2, int vtkNotUsed(X), int Y)
{
  if (zvRequireMacro(p1 && p2, zvCurveParts::NoMotion))
  {
    this->ScaleHandles(p1, p2, Y);
  }
}

void zvSplineWidget::Spin(double* p1, double* p2, double* vpn)
{
  if (zvRequireMacro(p1 && p2, zvCurveParts::NoMotion) &&
    zvRequireMacro(vpn || this->ProjectToPlane, zvCurveParts::NoViewNormal))
  {
    this->SpinHandles(p1, p2, vpn);
  }
}

int zvSplineWidget::HighlightHandle()
{
  const int handle = static_cast<int>(this->HandlePicker->GetPointId());
  if (handle != -1)
  {
    this->ValidPick = 1;
  }
  return handle;
}

void zvSplineWidget::HighlightLine(int highlight)
{
  this->ShowLineAs(highlight != 0);
}

void zvSplineWidget::OnLeftButtonDown()
{
  this->CurveGrabbed = false;
  if (!zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor))
  {
    this->State = Outside;
    return;
  }
  const bool onHandle = this->Pick(this->HandlePicker);
  this->CurrentHandleIndex = this->HighlightHandle();
  if (onHandle)
  {
    if (this->CurrentHandleIndex == 0 && !this->Closed)
    {
      this->ClosedOn();
    }
    this->State = Moving;
  }
  else if (this->Pick(this->LinePicker))
  {
    this->InsertHandleUnderPointer();
  }
  else if (this->Closed)
  {
    this->State = Outside;
    return;
  }
  else
  {
    this->AppendHandleUnderPointer();
  }
  this->BeginInteraction();
}

void zvSplineWidget::OnLeftButtonUp()
{
  if (this->State == Start || this->State == Outside)
  {
    return;
  }
  this->State = Start;
  this->HighlightLine(0);
  this->CurveGrabbed = false;
  this->HighlightHandle();
  this->SizeHandles();
  this->FinishInteraction();
}

void zvSplineWidget::OnMiddleButtonDown()
{
  // Deliberate: the handle that the last left press took stays the one that is moved.
  this->GrabCurve();
}

void zvSplineWidget::OnMiddleButtonUp()
{
  this->LetCurveGo();
}

// Deliberately empty: the right button is the host's, for its menu.
void zvSplineWidget::OnRightButtonDown() {}

void zvSplineWidget::OnRightButtonUp()
{
  this->SizeHandles();
}

void zvSplineWidget::OnMouseMove()
{
  double previous[3];
  double current[3];
  if (this->State == Start || this->State == Outside ||
    !zvDrag::GetMotion(
      this->Interactor, this->CurrentRenderer, this->LastPickPosition, previous, current))
  {
    return;
  }
  this->MoveWithPointer(previous, current);
  this->FollowMotion();
  this->TellMotion();
}

void zvSplineWidget::OnMouseWheelForward()
{
  this->SizeHandles();
  zvViewLookup::Render(this->Interactor);
}

void zvSplineWidget::OnMouseWheelBackward()
{
  this->SizeHandles();
  zvViewLookup::Render(this->Interactor);
}

void zvSplineWidget::ProcessEvents(
  vtkObject* vtkNotUsed(object), unsigned long event, void* clientdata, void* vtkNotUsed(calldata))
{
  // An observer may release the widget while its handler runs.
  const vtkSmartPointer<zvSplineWidget> self = static_cast<zvSplineWidget*>(clientdata);
  zvDispatch::ToHandler(self.GetPointer(), event);
}

void zvSplineWidget::CreateDefaultProperties()
{
  if (!this->HandleProperty)
  {
    this->HandleProperty = vtkSmartPointer<vtkProperty>::New();
    this->HandleProperty->SetColor(1.0, 0.0, 0.0);
    this->HandleProperty->SetPointSize(7.5);
  }
  if (!this->SelectedHandleProperty)
  {
    this->SelectedHandleProperty = zvCurveParts::MakeSelectedHandleProperty();
  }
  if (!this->LineProperty)
  {
    this->LineProperty = zvCurveParts::MakeLineProperty();
  }
  if (!this->SelectedLineProperty)
  {
    this->SelectedLineProperty = zvCurveParts::MakeSelectedLineProperty();
  }
}

Positions zvSplineWidget::ReadHandles()
{
  return zvHandleCurve::Read(this->HandlePolyData->GetPoints(), this->NumberOfHandles);
}

void zvSplineWidget::WriteHandles(const Positions& positions)
{
  const auto count = static_cast<vtkIdType>(positions.size());
  if (this->HandlePolyData->GetNumberOfPoints() < count)
  {
    this->SetHandlePoints(positions);
  }
  else if (count > 0)
  {
    zvHandleCurve::Write(positions, this->HandlePolyData->GetPoints());
  }
}

void zvSplineWidget::SetHandlePoints(const Positions& positions)
{
  this->HandlePolyData->SetPoints(zvHandleCurve::MakePoints(positions));
  this->HandlePolyData->SetVerts(
    zvHandleCurve::MakeVertices(static_cast<vtkIdType>(positions.size())));
  this->HandlePolyData->Modified();
  this->HandlePolyData->BuildCells();
  this->HandlePolyData->BuildLinks(0);
}

void zvSplineWidget::AppendHandle(const double* pos)
{
  Positions handles = this->ReadHandles();
  handles.push_back({ { pos[0], pos[1], pos[2] } });
  this->InitializeHandles(zvHandleCurve::MakePoints(handles));
  this->TakePokedRenderer();
  this->ShowActor(this->LineActor, this->LineProperty);
}

void zvSplineWidget::InsertHandleUnderPointer()
{
  double position[3];
  this->LinePicker->GetPickPosition(position);
  zvViewLookup::Render(this->Interactor);
  this->InsertHandleOnLine(position);
  if (this->Pick(this->HandlePicker))
  {
    this->CurrentHandleIndex = this->HighlightHandle();
    this->State = Moving;
  }
}

bool zvSplineWidget::HoldsHandle()
{
  return this->CurrentHandleIndex != -1;
}

void zvSplineWidget::HideCurve()
{
  // The current renderer may have been taken away.
  zvViewLookup::TakeOut(this->LineActor);
  zvViewLookup::TakeOut(this->HandleActor);
}
