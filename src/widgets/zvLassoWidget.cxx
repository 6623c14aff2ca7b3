#include "zvLassoWidget.h"

#include "zvCurveParts.h"
#include "zvEvents.h"
#include "zvHandleCurve.h"
#include "zvMessages.h"
#include "zvObservedSubjects.h"
#include "zvParametricSpline.h"
#include "zvPick.h"
#include "zvViewLookup.h"

#include "vtkActor.h"
#include "vtkCallbackCommand.h"
#include "vtkCamera.h"
#include "vtkCellPicker.h"
#include "vtkMath.h"
#include "vtkObjectFactory.h"
#include "vtkParametricFunctionSource.h"
#include "vtkPlaneSource.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"
#include "vtkPolyDataMapper.h"
#include "vtkProperty.h"
#include "vtkRenderWindow.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkSphereSource.h"
#include "vtkTransform.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{
using zvHandleCurve::Position;
using zvHandleCurve::Positions;

constexpr double HandleSizeFactor = 0.7;    // of the size that vtk3DWidget gives handles
constexpr double NewHandleSizeFactor = 0.5; // until they are in a view
constexpr int ThetaResolution = 16;
constexpr int PhiResolution = 8;
constexpr double FadedOpacity = 0.01; // hardly seen; at 0 it could not be picked

Position CenterOf(vtkSphereSource* sphere)
{
  Position center;
  sphere->GetCenter(center.data());
  return center;
}

void MoveTo(vtkSphereSource* sphere, const Position& center)
{
  const vtkMTimeType before = sphere->GetMTime();
  sphere->SetCenter(center[0], center[1], center[2]);
  if (sphere->GetMTime() != before) // most handles stay where they are
  {
    sphere->Update();
  }
}
}

#define zvCurve zvLassoWidget
#include "zvCurveAccessors.inl"
#undef zvCurve

vtkObjectFactoryNewMacro(zvLassoWidget);

vtkObject* vtkInstantiatorzvLassoWidgetNew()
{
  return zvLassoWidget::New();
}

zvLassoWidget::zvLassoWidget()
  : ParametricSpline(vtkSmartPointer<zvParametricSpline>::New())
{
  this->EventCallbackCommand->SetCallback(zvLassoWidget::ProcessEvents);
  zvEvents::HoldDuringKeys(this->KeyPressCallbackCommand);
  std::fill_n(this->LastPickPosition, 3, 0.0); // the depth of a drag before anything is picked

  zvCurveParts::BuildLine(
    this->ParametricSpline, this->ParametricFunctionSource, this->LineActor, this->Resolution);
  this->HandlePicker = zvCurveParts::MakePicker();
  this->LinePicker = zvCurveParts::MakePicker();
  this->LinePicker->AddPickList(this->LineActor);
  this->CreateDefaultProperties();

  this->PlaceFactor = 1.0;
  double bounds[6] = { -0.5, 0.5, -0.5, 0.5, -0.5, 0.5 };
  this->zvLassoWidget::PlaceWidget(bounds);
}

zvLassoWidget::~zvLassoWidget()
{
  zvTraceMacro("zvLassoWidget::~zvLassoWidget()");
  if (this->Interactor)
  {
    this->zvLassoWidget::SetEnabled(0);
  }
  zvObservedSubjects::Release(this->Observed, this->EventCallbackCommand);
  this->HideCurve(); // AddHandle shows the lasso when it is not enabled, too
}

void zvLassoWidget::PrintSelf(ostream& os, vtkIndent indent)
{
  zvTraceMacro("zvLassoWidget::PrintSelf(ostream& os, vtkIndent indent)");
  this->Superclass::PrintSelf(os, indent);
  zvCurveParts::Print(os, indent,
    { { { "Handle Property", this->HandleProperty },
        { "Selected Handle Property", this->SelectedHandleProperty },
        // Deliberate: hosts that read the print know the label as it is spelled.
        { "Closeed Handle Property", this->ClosedHandleProperty },
        { "Line Property", this->LineProperty },
        { "Selected Line Property", this->SelectedLineProperty },
        { "ParametricSpline", this->ParametricSpline } },
      this->ProjectToPlane, this->ProjectionNormal, this->ProjectionPosition, this->Resolution,
      this->NumberOfHandles, this->Closed });
}

void zvLassoWidget::CollectRevisions(ostream& os)
{
  os << "zvLassoWidget $Revision: 1.2 $\n";
}

void zvLassoWidget::SetEnabled(int enabling)
{
  zvTraceMacro("zvLassoWidget::SetEnabled(int enabling)");
  if (!this->Interactor)
  {
    vtkErrorMacro("The interactor must be set prior to enabling/disabling widget");
    return;
  }
  // An observer may release the widget. In the destructor there is nothing to hold any more.
  const vtkSmartPointer<zvLassoWidget> self = this->GetReferenceCount() > 0 ? this : nullptr;
  if (enabling && !this->Enabled && this->TakePokedRenderer())
  {
    this->Enabled = 1;
    this->AddObservers();
    this->ShowCurve();
    this->BuildRepresentation();
    this->SizeHandles();
    this->InvokeEvent(vtkCommand::EnableEvent, nullptr);
    zvViewLookup::Render(this->Interactor);
  }
  else if (!enabling && this->Enabled)
  {
    this->Enabled = 0;
    this->Interactor->RemoveObserver(this->EventCallbackCommand);
    this->HideCurve();
    this->CurrentHandle = nullptr;
    this->InvokeEvent(vtkCommand::DisableEvent, nullptr);
    if (!this->Enabled) // an observer may have enabled it again
    {
      this->SetCurrentRenderer(nullptr);
    }
    zvViewLookup::Render(this->Interactor);
  }
}

void zvLassoWidget::SetInteractor(vtkRenderWindowInteractor* interactor)
{
  // An observer may release the widget or change its interactor, too.
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  if (this->Interactor && this->Enabled && interactor != this->Interactor)
  {
    this->SetEnabled(0);
  }
  this->vtk3DWidget::SetInteractor(interactor);
}

void zvLassoWidget::PlaceWidget(double bounds[6])
{
  zvTraceMacro("zvLassoWidget::PlaceWidget(double bds[6])");
  if (zvRequireMacro(bounds, zvCurveParts::NoBounds))
  {
    this->PlaceHandles(bounds);
  }
}

void zvLassoWidget::AddObservers()
{
  zvTraceMacro("zvLassoWidget::AddObservers(void)");
  if (this->Interactor)
  {
    zvEvents::Observe(
      this->Interactor, zvEvents::Handle, this->EventCallbackCommand, this->Priority);
    zvObservedSubjects::Add(this->Observed, this->Interactor);
  }
}

void zvLassoWidget::SetProjectionPosition(double position)
{
  zvTraceMacro("zvLassoWidget::SetProjectionPosition(double position)");
  this->ProjectionPosition = position;
  this->FollowMotion();
}

void zvLassoWidget::SetPlaneSource(vtkPlaneSource* plane)
{
  zvTraceMacro("zvLassoWidget::SetPlaneSource(vtkPlaneSource* plane)");
  this->PlaneSource = plane;
}

void zvLassoWidget::SetClosedHandleProperty(vtkProperty* property)
{
  this->ReplaceProperty(this->ClosedHandleProperty, property);
}

vtkProperty* zvLassoWidget::GetClosedHandleProperty()
{
  return this->ClosedHandleProperty;
}

void zvLassoWidget::SetHandleVisibility(int visibility)
{
  zvTraceMacro("zvLassoWidget::SetHandleVisibility(int visibility)");
  this->ApplyToHandles(visibility == 1 ? this->HandleProperty : this->ClosedHandleProperty);
}

void zvLassoWidget::SetNumberOfHandles(int count)
{
  zvTraceMacro("zvLassoWidget::SetNumberOfHandles(int npts)");
  count = std::max(count, 0);
  if (count == this->NumberOfHandles)
  {
    return;
  }
  const double radius = this->FindHandleRadius(NewHandleSizeFactor);
  const Positions centers = this->FindStarts(count);
  this->StowHandles();
  this->NumberOfHandles = count;
  this->TakeHandlesFor(centers, radius);
  this->DropStowedHandles();
  if (this->Interactor)
  {
    this->TakePokedRenderer();
    for (vtkActor* handle : this->Handle)
    {
      this->ShowActor(handle, this->HandleProperty);
    }
    this->SizeHandles();
    zvViewLookup::Render(this->Interactor);
  }
}

void zvLassoWidget::SetResolution(int resolution)
{
  zvTraceMacro("zvLassoWidget::SetResolution(int resolution)");
  this->TakeResolution(resolution);
}

void zvLassoWidget::SetParametricSpline(zvParametricSpline* spline)
{
  zvTraceMacro("zvLassoWidget::SetParametricSpline(zvParametricSpline* spline)");
  this->TakeSpline(spline);
}

void zvLassoWidget::SetClosed(int closed)
{
  zvTraceMacro("zvLassoWidget::SetClosed(int closed)");
  this->TakeClosed(closed);
}

void zvLassoWidget::SetHandlePosition(int handle, double x, double y, double z)
{
  if (this->PlaceHandle(handle, { { x, y, z } }))
  {
    this->BuildRepresentation();
  }
}

void zvLassoWidget::SetHandlePosition(int handle, double xyz[3])
{
  zvTraceMacro("zvLassoWidget::SetHandlePosition(int handle, double xyz[3])");
  if (!zvRequireMacro(xyz, zvCurveParts::NoPosition))
  {
    return;
  }
  this->SetHandlePosition(handle, xyz[0], xyz[1], xyz[2]);
}

void zvLassoWidget::GetHandlePosition(int handle, double xyz[3])
{
  zvTraceMacro("zvLassoWidget::GetHandlePosition(int handle, double xyz[3])");
  if (!zvRequireMacro(xyz, zvCurveParts::NoRoom))
  {
    return;
  }
  if (this->HasHandle(handle))
  {
    this->HandleGeometry[handle]->GetCenter(xyz);
  }
}

double* zvLassoWidget::GetHandlePosition(int handle)
{
  zvTraceMacro("zvLassoWidget::GetHandlePosition(int handle)");
  return this->HasHandle(handle) ? this->HandleGeometry[handle]->GetCenter() : nullptr;
}

void zvLassoWidget::GetPolyData(vtkPolyData* pd)
{
  zvTraceMacro("zvLassoWidget::GetPolyData(vtkPolyData *pd)");
  if (pd)
  {
    pd->ShallowCopy(this->ParametricFunctionSource->GetOutput());
  }
}

double zvLassoWidget::GetSummedLength()
{
  zvTraceMacro("zvLassoWidget::GetSummedLength()");
  vtkPolyData* line = this->ParametricFunctionSource->GetOutput();
  return zvHandleCurve::SummedLength(zvHandleCurve::Read(line->GetPoints()));
}

void zvLassoWidget::CalculateCentroid()
{
  zvTraceMacro("zvLassoWidget::CalculateCentroid()");
  std::copy_n(zvHandleCurve::Centroid(this->ReadHandles()).data(), 3, this->Centroid);
}

void zvLassoWidget::InitializeHandles(vtkPoints* points)
{
  zvTraceMacro("zvLassoWidget::InitializeHandles(vtkPoints* points)");
  if (!points)
  {
    return;
  }
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  const Positions positions = zvHandleCurve::Read(points);
  this->ComingHandles = &positions;
  this->SetNumberOfHandles(static_cast<int>(positions.size()));
  this->ComingHandles = nullptr;
  bool isPlaced = false;
  for (std::size_t i = 0; i < positions.size(); ++i)
  {
    isPlaced = this->PlaceHandle(static_cast<int>(i), positions[i]) || isPlaced;
  }
  if (isPlaced)
  {
    this->BuildRepresentation();
  }
}

void zvLassoWidget::EraseHandle(const int& index)
{
  zvTraceMacro("zvLassoWidget::EraseHandle(const int& index)");
  if (this->NumberOfHandles >= 3 && index >= 0 && index < this->NumberOfHandles)
  {
    this->InitializeHandles(
      zvHandleCurve::MakePoints(zvHandleCurve::Erased(this->ReadHandles(), index)));
  }
}

void zvLassoWidget::InsertHandleOnLine(double* pos)
{
  zvTraceMacro("zvLassoWidget::InsertHandleOnLine(double* pos)");
  if (!zvRequireMacro(pos, zvCurveParts::NoPosition))
  {
    return;
  }
  if (this->NumberOfHandles < 2 || this->LinePicker->GetCellId() == -1)
  {
    return;
  }
  const Positions handles = this->ReadHandles();
  const int after = zvHandleCurve::FindInsertion(
    this->ParametricSpline, this->NumberOfHandles, this->LinePicker->GetSubId(), this->Resolution);
  this->InitializeHandles(zvHandleCurve::MakePoints(
    zvHandleCurve::Inserted(handles, after, { { pos[0], pos[1], pos[2] } })));
}

int zvLassoWidget::IsClosed()
{
  zvTraceMacro("zvLassoWidget::IsClosed()");
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

int zvLassoWidget::GetState()
{
  zvTraceMacro("zvLassoWidget::GetState()");
  return this->State;
}

void zvLassoWidget::SetState(int state)
{
  zvTraceMacro("zvLassoWidget::SetState(int state)");
  this->State = state;
}

void zvLassoWidget::AddHandle(double* pos)
{
  zvTraceMacro("zvLassoWidget::AddHandle(double x[3])");
  if (!zvRequireMacro(pos, zvCurveParts::NoPosition))
  {
    return;
  }
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  if (this->NumberOfHandles > 1 && this->Pick(this->HandlePicker))
  {
    this->CurrentHandleIndex = this->HighlightHandle(this->PickedHandle());
    if (this->CurrentHandleIndex == 0)
    {
      this->ClosedOn();
      this->State = Start;
      this->SetEnabled(1);
    }
    this->CurrentHandleIndex = this->HighlightHandle(nullptr);
    return;
  }
  Positions handles = this->ReadHandles();
  handles.push_back({ { pos[0], pos[1], pos[2] } });
  this->InitializeHandles(zvHandleCurve::MakePoints(handles));
  this->TakePokedRenderer();
  this->ShowCurve();
  this->State = Placing;
  // A handle that is taken for a moment brings its depth, which the size of all goes by.
  this->HighlightHandle(this->Handle.empty() ? nullptr : this->Handle.front().Get());
  this->SizeHandles();
  this->HighlightHandle(nullptr);
  zvViewLookup::Render(this->Interactor);
}

void zvLassoWidget::Initialize()
{
  this->StowHandles();
  this->DropStowedHandles();
}

void zvLassoWidget::ProjectPointsToPlane()
{
  zvTraceMacro("zvLassoWidget::ProjectPointsToPlane()");
  if (this->ProjectionNormal == zvHandleCurve::Oblique)
  {
    this->ProjectPointsToObliquePlane();
  }
  else
  {
    this->ProjectPointsToOrthoPlane();
  }
}

void zvLassoWidget::ProjectPointsToOrthoPlane()
{
  zvTraceMacro("zvLassoWidget::ProjectPointsToOrthoPlane()");
  if (this->ProjectionNormal != zvHandleCurve::Oblique)
  {
    Positions handles = this->ReadHandles();
    zvHandleCurve::ProjectToOrthoPlane(handles, this->ProjectionNormal, this->ProjectionPosition);
    this->WriteHandles(handles);
  }
}

void zvLassoWidget::ProjectPointsToObliquePlane()
{
  zvTraceMacro("zvLassoWidget::ProjectPointsToObliquePlane()");
  if (!this->PlaneSource)
  {
    vtkGenericWarningMacro("Set the plane source for oblique projections...");
    return;
  }
  Positions handles = this->ReadHandles();
  zvHandleCurve::ProjectToObliquePlane(handles, this->PlaneSource);
  this->WriteHandles(handles);
}

void zvLassoWidget::MovePoint(double* p1, double* p2)
{
  zvTraceMacro("zvLassoWidget::MovePoint(double *p1, double *p2)");
  if (zvRequireMacro(p1 && p2, zvCurveParts::NoMotion) && !this->MoveCurrentHandle(p1, p2))
  {
    vtkGenericWarningMacro("Spline handle index out of range.");
  }
}

void zvLassoWidget::Translate(double* p1, double* p2)
{
  zvTraceMacro("zvLassoWidget::Translate(double *p1, double *p2)");
  if (zvRequireMacro(p1 && p2, zvCurveParts::NoMotion))
  {
    this->TranslateHandles(p1, p2);
  }
}

void zvLassoWidget::Scale(double* p1, double* p2, int vtkNotUsed(X), int Y)
{
  zvTraceMacro("zvLassoWidget::Scale(double *p1, double *p2, int vtkNotUsed(X), int Y)");
  if (zvRequireMacro(p1 && p2, zvCurveParts::NoMotion))
  {
    this->ScaleHandles(p1, p2, Y);
  }
}

void zvLassoWidget::Spin(double* p1, double* p2, double* vpn)
{
  zvTraceMacro("zvLassoWidget::Spin(double *p1, double *p2, double *vpn)");
  if (zvRequireMacro(p1 && p2, zvCurveParts::NoMotion) &&
    zvRequireMacro(vpn || this->ProjectToPlane, zvCurveParts::NoViewNormal))
  {
    this->SpinHandles(p1, p2, vpn);
  }
}

int zvLassoWidget::HighlightHandle(vtkProp* prop)
{
  zvTraceMacro("zvLassoWidget::HighlightHandle(vtkProp *prop)");
  if (this->CurrentHandle)
  {
    this->CurrentHandle->SetProperty(this->HandleProperty);
  }
  this->CurrentHandle = vtkActor::SafeDownCast(prop);
  const int index = this->FindHandle(this->CurrentHandle);
  if (index == -1)
  {
    return -1;
  }
  this->ValidPick = 1;
  this->HandlePicker->GetPickPosition(this->LastPickPosition);
  this->CurrentHandle->SetProperty(this->SelectedHandleProperty);
  return index;
}

void zvLassoWidget::HighlightLine(int highlight)
{
  zvTraceMacro("zvLassoWidget::HighlightLine(int highlight)");
  this->ShowLineAs(highlight != 0);
}

void zvLassoWidget::SizeHandles()
{
  zvTraceMacro("zvLassoWidget::SizeHandles()");
  const double radius = this->FindHandleRadius(HandleSizeFactor);
  for (vtkSphereSource* sphere : this->HandleGeometry)
  {
    sphere->SetRadius(radius);
  }
}

void zvLassoWidget::CreateDefaultProperties()
{
  zvTraceMacro("zvLassoWidget::CreateDefaultProperties()");
  if (!this->HandleProperty)
  {
    this->HandleProperty = vtkSmartPointer<vtkProperty>::New();
    this->HandleProperty->SetColor(1.0, 0.0, 0.0);
  }
  if (!this->SelectedHandleProperty)
  {
    this->SelectedHandleProperty = zvCurveParts::MakeSelectedHandleProperty();
  }
  if (!this->ClosedHandleProperty)
  {
    this->ClosedHandleProperty = vtkSmartPointer<vtkProperty>::New();
    this->ClosedHandleProperty->SetOpacity(FadedOpacity);
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

Positions zvLassoWidget::ReadHandles()
{
  Positions positions(this->HandleGeometry.size());
  for (std::size_t i = 0; i < positions.size(); ++i)
  {
    this->HandleGeometry[i]->GetCenter(positions[i].data());
  }
  return positions;
}

void zvLassoWidget::WriteHandles(const Positions& positions)
{
  for (std::size_t i = 0; i < positions.size() && i < this->HandleGeometry.size(); ++i)
  {
    MoveTo(this->HandleGeometry[i], positions[i]);
  }
}

bool zvLassoWidget::HasHandle(int handle)
{
  const bool isOne = handle >= 0 && handle < this->NumberOfHandles;
  if (!isOne)
  {
    vtkErrorMacro("zvLassoWidget: handle index out of range.");
  }
  return isOne;
}

bool zvLassoWidget::PlaceHandle(int handle, const Position& position)
{
  zvTraceMacro("zvLassoWidget::SetHandlePosition(int handle, double x, double y, double z)");
  if (!this->HasHandle(handle))
  {
    return false;
  }
  MoveTo(this->HandleGeometry[handle], position);
  if (this->ProjectToPlane)
  {
    this->ProjectPointsToPlane();
  }
  return true;
}

void zvLassoWidget::StowHandles()
{
  zvTraceMacro("zvLassoWidget::Initialize(void)"); // which is done in either case
  this->TakePokedRenderer();
  for (vtkActor* handle : this->Handle)
  {
    this->HandlePicker->DeletePickList(handle);
  }
  if (this->FindHandle(this->CurrentHandle) != -1)
  {
    this->CurrentHandle = nullptr;
  }
  this->StowedGeometry.swap(this->HandleGeometry);
  this->StowedHandle.swap(this->Handle);
  this->NumberOfHandles = 0;
}

void zvLassoWidget::TakeHandlesFor(const Positions& centers, double radius)
{
  // To make a handle anew, or to take it out of the view and bring it back, costs far more than all
  // else that is done with it: what stays where it is stays as it is.
  const std::size_t stowed = this->StowedHandle.size();
  const std::size_t most = std::min(stowed, centers.size());
  const auto stays = [this, &centers](std::size_t from, std::size_t to)
  { return CenterOf(this->StowedGeometry[from]) == centers[to]; };
  std::size_t ahead = 0;
  while (ahead < most && stays(ahead, ahead))
  {
    ++ahead;
  }
  std::size_t behind = 0;
  while (behind < most - ahead && stays(stowed - 1 - behind, centers.size() - 1 - behind))
  {
    ++behind;
  }
  for (std::size_t i = 0; i < centers.size(); ++i)
  {
    const bool isBehind = i >= centers.size() - behind;
    const std::size_t from = isBehind ? i + stowed - centers.size() : i;
    this->AppendHandle(isBehind || from < stowed - behind ? from : stowed, centers[i], radius);
  }
}

void zvLassoWidget::AppendHandle(std::size_t stowed, const Position& center, double radius)
{
  if (stowed < this->StowedHandle.size())
  {
    this->HandleGeometry.push_back(std::move(this->StowedGeometry[stowed]));
    this->Handle.push_back(std::move(this->StowedHandle[stowed]));
  }
  else
  {
    auto made = vtkSmartPointer<vtkSphereSource>::New();
    made->SetThetaResolution(ThetaResolution);
    made->SetPhiResolution(PhiResolution);
    made->SetRadius(radius);
    vtkNew<vtkPolyDataMapper> mapper;
    mapper->SetInputConnection(made->GetOutputPort());
    this->HandleGeometry.push_back(std::move(made));
    this->Handle.push_back(vtkSmartPointer<vtkActor>::New());
    this->Handle.back()->SetMapper(mapper);
  }
  vtkSphereSource* sphere = this->HandleGeometry.back();
  sphere->SetCenter(center[0], center[1], center[2]);
  if (!this->Interactor) // else all get the size that they have in the view
  {
    sphere->SetRadius(radius);
  }
  this->Handle.back()->SetProperty(this->HandleProperty);
  this->HandlePicker->AddPickList(this->Handle.back());
}

void zvLassoWidget::DropStowedHandles()
{
  for (vtkActor* handle : this->StowedHandle)
  {
    if (handle) // else it is in use again
    {
      zvViewLookup::TakeOut(handle);
    }
  }
  this->StowedHandle.clear();
  this->StowedGeometry.clear();
}

int zvLassoWidget::FindHandle(vtkActor* actor)
{
  const auto found = std::find(this->Handle.begin(), this->Handle.end(), actor);
  return actor && found != this->Handle.end() ? static_cast<int>(found - this->Handle.begin()) : -1;
}

Positions zvLassoWidget::FindStarts(int count)
{
  const Positions* coming = std::exchange(this->ComingHandles, nullptr);
  if (coming && coming->size() == static_cast<std::size_t>(count))
  {
    return *coming;
  }
  Positions starts(static_cast<std::size_t>(count), { { 0.0, 0.0, 0.0 } });
  for (int i = 0; i < count && this->ParametricSpline; ++i)
  {
    double u[3] = { count > 1 ? i / (count - 1.0) : 0.0, 0.0, 0.0 };
    double derivatives[9];
    this->ParametricSpline->Evaluate(u, starts[i].data(), derivatives);
  }
  return starts;
}

double zvLassoWidget::FindHandleRadius(double factor)
{
  // A renderer that has left its window has no size to go by.
  return this->CurrentRenderer && !zvViewLookup::IsShown(this->CurrentRenderer)
    ? this->HandleSize * factor * this->InitialLength
    : this->vtk3DWidget::SizeHandles(factor);
}

void zvLassoWidget::ApplyToHandles(vtkProperty* property)
{
  for (vtkActor* handle : this->Handle)
  {
    handle->SetProperty(property);
  }
}

void zvLassoWidget::ShowCurve()
{
  this->ShowActor(this->LineActor, this->LineProperty);
  for (vtkActor* handle : this->Handle)
  {
    this->ShowActor(handle, this->HandleProperty);
  }
}

void zvLassoWidget::HideCurve()
{
  // The current renderer may have been taken away.
  zvViewLookup::TakeOut(this->LineActor);
  for (vtkActor* handle : this->Handle)
  {
    zvViewLookup::TakeOut(handle);
  }
}
