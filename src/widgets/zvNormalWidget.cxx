#include "zvNormalWidget.h"

#include "zvDrag.h"
#include "zvEvents.h"
#include "zvFourViews.h"
#include "zvImageViewerWidget.h"
#include "zvNumbers.h"
#include "zvObservedSubjects.h"
#include "zvViewLookup.h"
#include "zvViewPicker.h"

#include "vtkActor.h"
#include "vtkCellPicker.h"
#include "vtkConeSource.h"
#include "vtkLineSource.h"
#include "vtkMath.h"
#include "vtkObjectFactory.h"
#include "vtkPolyDataMapper.h"
#include "vtkPropCollection.h"
#include "vtkProperty.h"
#include "vtkRenderWindow.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkSmartPointer.h"

#include <algorithm>
#include <string>

vtkObjectFactoryNewMacro(zvNormalWidget);
vtkStandardNewMacro(zvViewerWidgetCallback);

vtkObject* vtkInstantiatorzvNormalWidgetNew()
{
  return zvNormalWidget::New();
}

namespace
{
constexpr double PickTolerance = 0.005; // of the window's diagonal
constexpr double LineWidth = 2.0;       // in pixels
constexpr int ConeResolution = 12;
constexpr double ConeAngle = 25.0;  // in degrees
constexpr double SizeFactor = 3.0;  // of the handles
constexpr float ViewerPriority = 0; // the viewers have no observers of their own to come before

// The items in the picker's list before each point.
constexpr int BeforeFirstPoint = 1;
constexpr int BeforeSecondPoint = 2;

constexpr std::array<unsigned long, 3> ViewerEvents = { { vtkCommand::LeftButtonPressEvent,
  vtkCommand::LeftButtonReleaseEvent, vtkCommand::MouseMoveEvent } };

constexpr const char* ViewNames[] = { "ViewerWidgetX", "ViewerWidgetY", "ViewerWidgetZ",
  "Renderer3D" };

vtkRenderWindowInteractor* InteractorOf(zvImageViewerWidget* viewer)
{
  vtkRenderer* renderer = viewer ? viewer->GetCurrentRenderer() : nullptr;
  return zvViewLookup::IsShown(renderer) ? renderer->GetRenderWindow()->GetInteractor() : nullptr;
}
}

//------------------------------------------------------------------------------
void zvViewerWidgetCallback::Execute(vtkObject* caller, unsigned long event, void* callData)
{
  // An observer may release the widget.
  const vtkSmartPointer<zvNormalWidget> widget =
    static_cast<zvNormalWidget*>(this->GetClientData());
  if (!widget)
  {
    return;
  }
  auto* viewer = zvImageViewerWidget::SafeDownCast(caller);
  if (InteractorOf(viewer))
  {
    widget->SetViewerWidgetCurrent(viewer);
  }
  this->Superclass::Execute(caller, event, callData);
}

//------------------------------------------------------------------------------
const std::array<zvNormalWidget::Viewer, 3> zvNormalWidget::Viewers = {
  { &zvNormalWidget::ViewerWidgetX, &zvNormalWidget::ViewerWidgetY, &zvNormalWidget::ViewerWidgetZ }
};

// Deliberate: no callback for EventCallbackCommand. With Interaction on it is attached to the
// interactor, whose events the viewers hand on already; answering both would do everything twice.
zvNormalWidget::zvNormalWidget()
  : HandlePicker(vtkSmartPointer<zvViewPicker>::New())
{
  std::fill_n(this->LastPickPosition, 3, 0.0);
  this->NormalProperty->SetColor(1.0, 1.0, 1.0);
  this->NormalProperty->SetLineWidth(LineWidth);
  this->SelectedNormalProperty->SetColor(1.0, 0.0, 0.0);
  this->SelectedNormalProperty->SetLineWidth(LineWidth);
  this->BuildLine();
  this->BuildCone(this->Cone1Source, this->Cone1Mapper, this->Cone1Actor);
  this->BuildCone(this->Cone2Source, this->Cone2Mapper, this->Cone2Actor);
  // Deliberate: it does not keep to its list yet. A click hits whatever the view shows.
  this->HandlePicker->SetTolerance(PickTolerance);
  this->HandlePicker->AddPickList(this->LineActor);
  this->ViewerCallback->SetClientData(this);
  this->ViewerCallback->SetCallback(zvNormalWidget::ProcessEvents);
  this->InitialLength = 1.0;
  this->HandleSize = 1.0;
}

zvNormalWidget::~zvNormalWidget()
{
  zvObservedSubjects::Release(this->ObservedViewers, this->ViewerCallback);
  this->ViewerCallback->SetClientData(nullptr); // somebody may keep it
  this->TakeOutAll();
}

void zvNormalWidget::BuildLine()
{
  this->LineSource->SetResolution(1);
  this->LineMapper->SetInputConnection(this->LineSource->GetOutputPort());
  this->LineActor->SetMapper(this->LineMapper);
}

void zvNormalWidget::BuildCone(vtkConeSource* source, vtkPolyDataMapper* mapper, vtkActor* actor)
{
  source->SetResolution(ConeResolution);
  source->SetAngle(ConeAngle);
  mapper->SetInputConnection(source->GetOutputPort());
  actor->SetMapper(mapper);
}

void zvNormalWidget::CollectRevisions(ostream& os)
{
  this->Superclass::CollectRevisions(os);
  os << "zvNormalWidget $Revision:$\n";
}

//------------------------------------------------------------------------------
void zvNormalWidget::SetEnabled(int enabling)
{
  if (!this->Interactor)
  {
    vtkErrorMacro("The interactor must be set prior to enabling/disabling widget");
    return;
  }
  // An observer may release the widget.
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  if (enabling && !this->Enabled)
  {
    this->Show();
  }
  else if (!enabling && this->Enabled)
  {
    this->Hide();
  }
}

void zvNormalWidget::Show()
{
  vtkRenderer* renderer = zvViewLookup::Choose(this->CurrentRenderer, this->Interactor);
  if (!renderer || this->WarnOfMissingView("enabling the widget"))
  {
    return;
  }
  this->SetCurrentRenderer(renderer);
  this->Enabled = 1;
  if (this->Interaction)
  {
    this->AddObservers();
    if (!this->Enabled) // its event may have led to that
    {
      return;
    }
  }
  for (vtkActor* part : this->GetParts())
  {
    this->AddActorInRenderers(part);
  }
  this->SizeHandles();
  this->InvokeEvent(vtkCommand::EnableEvent, nullptr);
  zvViewLookup::Render(this->Interactor);
}

void zvNormalWidget::Hide()
{
  this->Enabled = 0;
  this->Interactor->RemoveObserver(this->EventCallbackCommand);
  this->TakeOutAll();
  this->InvokeEvent(vtkCommand::DisableEvent, nullptr);
  if (!this->Enabled) // an observer may have enabled it again
  {
    this->SetCurrentRenderer(nullptr);
  }
  zvViewLookup::Render(this->Interactor);
}

void zvNormalWidget::PlaceWidget(double bounds[6])
{
  if (bounds)
  {
    double adjusted[6];
    double center[3];
    this->AdjustBounds(bounds, adjusted, center);
  }
}

void zvNormalWidget::PlaceWidget()
{
  this->vtk3DWidget::PlaceWidget();
}

void zvNormalWidget::PlaceWidget(
  double xmin, double xmax, double ymin, double ymax, double zmin, double zmax)
{
  this->vtk3DWidget::PlaceWidget(xmin, xmax, ymin, ymax, zmin, zmax);
}

//------------------------------------------------------------------------------
void zvNormalWidget::SetViewerWidgetX(zvImageViewerWidget* viewer)
{
  this->SetViewer(ViewX, viewer);
}

void zvNormalWidget::SetViewerWidgetY(zvImageViewerWidget* viewer)
{
  this->SetViewer(ViewY, viewer);
}

void zvNormalWidget::SetViewerWidgetZ(zvImageViewerWidget* viewer)
{
  this->SetViewer(ViewZ, viewer);
}

void zvNormalWidget::SetViewer(View view, zvImageViewerWidget* viewer)
{
  zvImageViewerWidget* former = this->*Viewers[view];
  this->*Viewers[view] = viewer;
  this->IsSet[view] = viewer != nullptr;
  const bool isUsed = std::any_of(Viewers.begin(), Viewers.end(),
    [this, former](Viewer other) { return this->*other == former; });
  if (former && !isUsed)
  {
    former->RemoveObserver(this->ViewerCallback);
  }
  this->AddObserversToViewer(viewer);
}

zvImageViewerWidget* zvNormalWidget::GetViewerWidgetX()
{
  return this->ViewerWidgetX;
}

zvImageViewerWidget* zvNormalWidget::GetViewerWidgetY()
{
  return this->ViewerWidgetY;
}

zvImageViewerWidget* zvNormalWidget::GetViewerWidgetZ()
{
  return this->ViewerWidgetZ;
}

void zvNormalWidget::SetRenderer3D(vtkRenderer* renderer)
{
  this->Renderer3D = renderer;
  this->IsSet[View3D] = renderer != nullptr;
}

vtkRenderer* zvNormalWidget::GetRenderer3D()
{
  return this->Renderer3D;
}

void zvNormalWidget::AddObserversToViewer(zvImageViewerWidget* viewer)
{
  if (viewer && !viewer->HasObserver(ViewerEvents.front(), this->ViewerCallback))
  {
    zvEvents::Observe(viewer, ViewerEvents, this->ViewerCallback, ViewerPriority);
    zvObservedSubjects::Add(this->ObservedViewers, viewer);
  }
}

void zvNormalWidget::SetViewerWidgetCurrent(zvImageViewerWidget* viewer)
{
  vtkRenderWindowInteractor* interactor = InteractorOf(viewer);
  if (!interactor)
  {
    vtkGenericWarningMacro(
      "set a viewer whose renderer is in a window with an interactor for ViewerWidgetCurrent...");
    return;
  }
  this->ViewerWidgetCurrent = viewer;
  if (interactor != this->Interactor)
  {
    this->MoveTo(interactor);
  }
  this->SetCurrentRenderer(viewer->GetCurrentRenderer());
}

// A change of interactor disables a widget, which would hide it in all four views whenever the
// mouse comes to another of them. For a way between its own viewers it must stay.
void zvNormalWidget::MoveTo(vtkRenderWindowInteractor* interactor)
{
  const int wasEnabled = this->Enabled;
  this->Enabled = 0;
  this->SetInteractor(interactor);
  this->Enabled = wasEnabled;
  if (this->Enabled && this->Interaction)
  {
    zvEvents::Observe(interactor, zvEvents::Handle, this->EventCallbackCommand, this->Priority);
  }
}

zvImageViewerWidget* zvNormalWidget::GetViewerWidgetCurrent()
{
  return this->ViewerWidgetCurrent;
}

std::array<vtkRenderer*, 4> zvNormalWidget::GetViews()
{
  std::array<vtkRenderer*, 4> views{};
  for (std::size_t i = 0; i < Viewers.size(); ++i)
  {
    zvImageViewerWidget* viewer = this->*Viewers[i];
    views[i] = viewer ? viewer->GetCurrentRenderer() : nullptr;
  }
  views[View3D] = this->Renderer3D;
  return views;
}

// True, with a warning, if one was never set or a viewer shows nothing. A view that is gone is not
// missed.
bool zvNormalWidget::WarnOfMissingView(const char* before)
{
  const std::array<vtkRenderer*, 4> views = this->GetViews();
  for (std::size_t i = 0; i < views.size(); ++i)
  {
    const bool hasLostRenderer = i < Viewers.size() && this->*Viewers[i] && !views[i];
    if (!this->IsSet[i] || hasLostRenderer)
    {
      const char* const part = this->IsSet[i] ? "the renderer of " : "";
      vtkGenericWarningMacro("set " << part << ViewNames[i] << " before " << before << "...");
      return true;
    }
  }
  return false;
}

void zvNormalWidget::RenderesUpdate()
{
  // An observer of a render may release the widget or one of the views.
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  this->WarnOfMissingView("rendering the views");
  for (Viewer viewer : Viewers)
  {
    zvViewLookup::Render(InteractorOf(this->*viewer));
  }
  if (zvViewLookup::IsShown(this->Renderer3D))
  {
    this->Renderer3D->GetRenderWindow()->Render();
  }
}

void zvNormalWidget::AddActorInRenderers(vtkProp* prop)
{
  if (!prop || this->WarnOfMissingView("showing a prop"))
  {
    return;
  }
  zvFourViews::Add(this->GetViews(), prop);
}

void zvNormalWidget::RemoveActorOfRenderers(vtkProp* prop)
{
  if (!prop)
  {
    return;
  }
  this->WarnOfMissingView("hiding a prop");
  zvFourViews::Remove(this->GetViews(), prop);
  const std::array<vtkActor*, 3> parts = this->GetParts();
  if (std::find(parts.begin(), parts.end(), prop) != parts.end())
  {
    zvViewLookup::TakeOut(prop);
  }
}

void zvNormalWidget::RemoveAllActorsOfRenderers()
{
  this->WarnOfMissingView("hiding the parts");
  this->TakeOutAll();
}

// Also of views that are no longer the widget's, or whose viewer has let go of its renderer.
void zvNormalWidget::TakeOutAll()
{
  for (vtkActor* part : this->GetParts())
  {
    zvViewLookup::TakeOut(part);
  }
}

std::array<vtkActor*, 3> zvNormalWidget::GetParts()
{
  return { { this->LineActor, this->Cone1Actor, this->Cone2Actor } };
}

//------------------------------------------------------------------------------
void zvNormalWidget::AddHandle(double* x)
{
  const int items = this->HandlePicker->GetPickList()->GetNumberOfItems();
  if (items != BeforeFirstPoint && items != BeforeSecondPoint)
  {
    return;
  }
  if (!x || !zvNumbers::AreFinite(x))
  {
    vtkGenericWarningMacro("give the handle a finite position...");
    return;
  }
  if (this->WarnOfMissingView("placing a handle"))
  {
    return;
  }
  if (items == BeforeFirstPoint)
  {
    this->PlaceFirst(x);
  }
  else
  {
    this->PlaceSecond(x);
  }
  this->RenderesUpdate();
}

void zvNormalWidget::PlaceFirst(double* x)
{
  this->Cone1Source->SetCenter(x);
  this->LineSource->SetPoint1(x);
  this->LineSource->SetPoint2(x);
  this->HandlePicker->AddPickList(this->Cone1Actor);
  this->AddActorInRenderers(this->Cone1Actor);
  this->SizeHandles();
}

void zvNormalWidget::PlaceSecond(double* x)
{
  this->Cone2Source->SetCenter(x);
  this->LineSource->SetPoint2(x);
  double direction[3];
  vtkMath::Subtract(x, this->Cone1Source->GetCenter(), direction);
  vtkMath::Normalize(direction); // zero stays zero
  this->Cone1Source->SetDirection(direction);
  this->Cone2Source->SetDirection(direction);
  this->HandlePicker->AddPickList(this->Cone2Actor);
  this->HandlePicker->PickFromListOff();
  this->HandlePicker->PickFromListOn();
  this->State = Start;
  this->SizeHandles();
  this->AddActorInRenderers(this->LineActor);
  this->AddActorInRenderers(this->Cone2Actor);
}

void zvNormalWidget::GetNormal(double* normal)
{
  if (normal)
  {
    vtkMath::Subtract(this->LineSource->GetPoint2(), this->LineSource->GetPoint1(), normal);
    vtkMath::Normalize(normal); // zero stays zero
  }
}

void zvNormalWidget::SetPoint1(double x, double y, double z)
{
  this->LineSource->SetPoint1(x, y, z);
  this->Cone1Source->SetCenter(x, y, z);
  this->SetDirections(this->Cone1Source, this->Cone2Source);
}

void zvNormalWidget::SetPoint2(double x, double y, double z)
{
  this->LineSource->SetPoint2(x, y, z);
  this->Cone2Source->SetCenter(x, y, z);
  this->SetDirections(this->Cone2Source, this->Cone1Source);
}

void zvNormalWidget::SetDirections(vtkConeSource* first, vtkConeSource* second)
{
  double normal[3];
  this->GetNormal(normal);
  first->SetDirection(normal);
  second->SetDirection(normal);
}

void zvNormalWidget::GetPoint1(double point[3])
{
  if (point)
  {
    this->LineSource->GetPoint1(point);
  }
}

void zvNormalWidget::GetPoint2(double point[3])
{
  if (point)
  {
    this->LineSource->GetPoint2(point);
  }
}

void zvNormalWidget::MoveHandle(double* p1, double* p2)
{
  if (!p1 || !p2)
  {
    vtkGenericWarningMacro("give both ends of the motion before moving a handle...");
    return;
  }
  if (!this->CurrentHandle)
  {
    vtkGenericWarningMacro("there is no current handle");
    return;
  }
  double center[3];
  double motion[3];
  vtkMath::Subtract(p2, p1, motion);
  vtkMath::Add(this->CurrentHandle->GetCenter(), motion, center);
  if (this->CurrentHandle == this->Cone1Source)
  {
    this->SetPoint1(center[0], center[1], center[2]);
  }
  else
  {
    this->SetPoint2(center[0], center[1], center[2]);
  }
}

void zvNormalWidget::Translate(double* p1, double* p2)
{
  if (!p1 || !p2)
  {
    vtkGenericWarningMacro("give both ends of the motion before moving the normal...");
    return;
  }
  double motion[3];
  double point1[3];
  double point2[3];
  vtkMath::Subtract(p2, p1, motion);
  vtkMath::Add(this->LineSource->GetPoint1(), motion, point1);
  vtkMath::Add(this->LineSource->GetPoint2(), motion, point2);
  this->SetPoint1(point1[0], point1[1], point1[2]);
  this->SetPoint2(point2[0], point2[1], point2[2]);
}

void zvNormalWidget::HighlightNormal(int highlight)
{
  vtkProperty* property = highlight ? this->SelectedNormalProperty : this->NormalProperty;
  for (vtkActor* part : this->GetParts())
  {
    part->SetProperty(property);
  }
  if (!highlight)
  {
    this->CurrentHandle = nullptr;
  }
}

void zvNormalWidget::SizeHandles()
{
  const double radius = this->vtk3DWidget::SizeHandles(SizeFactor);
  for (vtkConeSource* cone : { this->Cone1Source.Get(), this->Cone2Source.Get() })
  {
    cone->SetHeight(2.0 * radius);
    cone->SetRadius(radius);
  }
}

//------------------------------------------------------------------------------
void zvNormalWidget::OnLeftButtonDown()
{
  if (!zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor))
  {
    this->State = Outside;
    return;
  }
  vtkProp* part = this->PickPart();
  if (this->State == Adding)
  {
    this->AddHandle(this->LastPickPosition);
    this->TakePressFromViewer();
    return;
  }
  if (!part)
  {
    this->State = Start;
  }
  else if (part == this->Cone1Actor)
  {
    this->GrabCone(this->Cone1Source, this->Cone1Actor);
  }
  else if (part == this->Cone2Actor)
  {
    this->GrabCone(this->Cone2Source, this->Cone2Actor);
  }
  else if (part == this->LineActor)
  {
    this->TakePressFromViewer();
    this->State = Translating;
    this->HighlightNormal(1);
  }
  else
  {
    this->State = Start;
    this->HighlightNormal(0);
  }
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this); // hosts call handlers, too
  this->EventCallbackCommand->SetAbortFlag(1);
  if (this->Interactor->GetRenderWindow())
  {
    this->StartInteraction();
  }
  this->InvokeEvent(vtkCommand::StartInteractionEvent, nullptr);
  this->RenderesUpdate();
}

// What the mouse is on. Where comes to the last pick position, on a miss at the depth of the
// camera's focal point.
vtkProp* zvNormalWidget::PickPart()
{
  const int* position = this->Interactor->GetEventPosition();
  vtkProp* part =
    zvViewPicker::PickProp(this->HandlePicker, position[0], position[1], this->CurrentRenderer);
  this->HandlePicker->GetPickPosition(this->LastPickPosition);
  return part;
}

void zvNormalWidget::GrabCone(vtkConeSource* source, vtkActor* actor)
{
  this->CurrentHandle = source;
  actor->SetProperty(this->SelectedNormalProperty);
  this->TakePressFromViewer();
  this->State = MovingHandle;
}

void zvNormalWidget::TakePressFromViewer()
{
  if (this->ViewerWidgetCurrent)
  {
    this->ViewerWidgetCurrent->State = zvImageViewerWidget::Start;
  }
}

void zvNormalWidget::OnMouseMove()
{
  double previous[3];
  double current[3];
  if ((this->State != MovingHandle && this->State != Translating) ||
    !zvDrag::GetMotion(
      this->Interactor, this->CurrentRenderer, this->LastPickPosition, previous, current))
  {
    return;
  }
  if (this->State == Translating)
  {
    this->Translate(previous, current);
  }
  else if (this->CurrentHandle) // the host may have made it let go
  {
    this->MoveHandle(previous, current);
  }
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  this->EventCallbackCommand->SetAbortFlag(1);
  this->InvokeEvent(vtkCommand::InteractionEvent, nullptr);
}

void zvNormalWidget::OnLeftButtonUp()
{
  if (this->State != Adding)
  {
    this->State = Start;
  }
  this->HighlightNormal(0);
  this->SizeHandles();
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  this->EventCallbackCommand->SetAbortFlag(1);
  if (this->Interactor && this->Interactor->GetRenderWindow())
  {
    this->EndInteraction();
  }
  this->InvokeEvent(vtkCommand::EndInteractionEvent, nullptr);
  this->RenderesUpdate();
}

void zvNormalWidget::ProcessEvents(
  vtkObject* vtkNotUsed(object), unsigned long event, void* clientdata, void* vtkNotUsed(calldata))
{
  // An observer may release the widget while its handler runs.
  const vtkSmartPointer<zvNormalWidget> self = static_cast<zvNormalWidget*>(clientdata);
  switch (event)
  {
    case vtkCommand::LeftButtonReleaseEvent:
      self->OnLeftButtonUp();
      break;
    case vtkCommand::MouseMoveEvent:
      self->OnMouseMove();
      break;
    case vtkCommand::LeftButtonPressEvent:
      self->OnLeftButtonDown();
      break;
    default:
      break;
  }
}
