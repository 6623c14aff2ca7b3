#include "zvSeedWidget.h"

#include "zvCollections.h"
#include "zvDispatch.h"
#include "zvDrag.h"
#include "zvEvents.h"
#include "zvFourViews.h"
#include "zvInstanceManager.h"
#include "zvMarkerParts.h"
#include "zvMessages.h"
#include "zvObservedSubjects.h"
#include "zvRawView.h"
#include "zvViewLookup.h"
#include "zvViewPicker.h"

#include "vtkActor.h"
#include "vtkCallbackCommand.h"
#include "vtkCellPicker.h"
#include "vtkImageData.h"
#include "vtkMath.h"
#include "vtkObjectFactory.h"
#include "vtkPlaneSource.h"
#include "vtkProperty.h"
#include "vtkRenderWindow.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkSphereSource.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double PickTolerance = 0.005; // of the window's diagonal
}

#define zvMarker zvSeedWidget
#include "zvMarkerAccessors.inl"
#undef zvMarker

vtkObjectFactoryNewMacro(zvSeedWidget);

vtkObject* vtkInstantiatorzvSeedWidgetNew()
{
  return zvSeedWidget::New();
}

zvSeedWidget::zvSeedWidget()
  : HandlePicker(zvMarkerParts::MakePicker(PickTolerance))
  , RawView(std::make_unique<zvRawView>(this,
      zvRawView::Fields{
        this->CurrentRenderer, this->Interactor, this->CharObserverTag, this->DeleteObserverTag }))
{
  this->EventCallbackCommand->SetCallback(zvSeedWidget::ProcessEvents);
  zvEvents::HoldDuringKeys(this->KeyPressCallbackCommand);
  std::fill_n(this->LastPickPosition, 3, 0.0); // the depth of a drag before anything is picked

  this->PlaceFactor = 1.0;
  double bounds[6] = { -0.5, 0.5, -0.5, 0.5, -0.5, 0.5 };
  this->zvSeedWidget::PlaceWidget(bounds);
  this->CreateDefaultProperties();
}

zvSeedWidget::~zvSeedWidget()
{
  zvTraceMacro("zvSeedWidget::~zvSeedWidget()");
  this->zvSeedWidget::SetEnabled(0);
  zvObservedSubjects::Release(this->Observed, this->EventCallbackCommand);
  // AddHandle shows seeds when the widget is not enabled, too, and some may be in views of before.
  zvMarkerParts::TakeOut(this->HandleActors);
  zvMarkerParts::TakeOut(this->HandleActors3D);
}

void zvSeedWidget::PrintSelf(ostream& os, vtkIndent indent)
{
  zvTraceMacro("zvSeedWidget::PrintSelf(ostream& os, vtkIndent indent)");
  this->Superclass::PrintSelf(os, indent);
  zvMarkerParts::Print(os, indent,
    { this->HandleProperty, this->SelectedHandleProperty, this->ProjectToPlane,
      this->ProjectionNormal, this->ProjectionPosition });
}

void zvSeedWidget::CollectRevisions(ostream& os)
{
  os << "zvSeedWidget $Revision: 1.2 $\n";
}

void zvSeedWidget::SetEnabled(int enabling)
{
  zvTraceMacro("void zvSeedWidget::SetEnabled(int enabling)");
  const vtkSmartPointer<vtkObject> self = zvEvents::Hold(this);
  if (enabling && !this->Enabled)
  {
    this->Show();
  }
  else if (!enabling && this->Enabled)
  {
    this->Hide();
  }
}

void zvSeedWidget::PlaceWidget(double* bds)
{
  zvTraceMacro("zvSeedWidget::PlaceWidget(double bds[6])");
  if (!bds)
  {
    vtkGenericWarningMacro("give bounds to place the seeds in...");
    return;
  }
  double bounds[6];
  double center[3];
  this->AdjustBounds(bds, bounds, center);
  if (this->ProjectToPlane)
  {
    this->ProjectPointsToPlane();
  }
  else
  {
    // Deliberate: not the spheres of the 3D view.
    zvMarkerParts::Spread(this->HandleSources, bounds);
  }
  std::copy_n(bounds, 6, this->InitialBounds);
  const double low[3] = { bounds[0], bounds[2], bounds[4] };
  const double high[3] = { bounds[1], bounds[3], bounds[5] };
  this->InitialLength = std::sqrt(vtkMath::Distance2BetweenPoints(low, high));
  this->SizeHandles();
}

void zvSeedWidget::SizeHandles()
{
  zvTraceMacro("zvSeedWidget::SizeHandles()");
  const double radius = this->GetRadius();
  zvMarkerParts::SetRadius(this->HandleSources, radius);
  zvMarkerParts::SetRadius(this->HandleSources3D, radius);
}

void zvSeedWidget::SetProjectionPosition(double position)
{
  zvTraceMacro("zvSeedWidget::SetProjectionPosition(double position))");
  this->ProjectionPosition = position;
  if (this->ProjectToPlane)
  {
    this->ProjectPointsToPlane();
  }
}

void zvSeedWidget::SetPlaneSource(vtkPlaneSource* plane)
{
  zvTraceMacro("zvSeedWidget::SetPlaneSource(vtkPlaneSource *plane)");
  this->PlaneSource = plane;
}

void zvSeedWidget::SetRendererX(vtkRenderer* render)
{
  zvTraceMacro("zvSeedWidget::SetRendererX(vtkRenderer *render)");
  this->StoreView("RendererX", render, this->RendererX, this->InteractorX);
}

void zvSeedWidget::SetRendererY(vtkRenderer* render)
{
  zvTraceMacro("zvSeedWidget::SetRendererY(vtkRenderer *render)");
  this->StoreView("RendererY", render, this->RendererY, this->InteractorY);
}

void zvSeedWidget::SetRendererZ(vtkRenderer* render)
{
  zvTraceMacro("zvSeedWidget::SetRendererZ(vtkRenderer *render)");
  this->StoreView("RendererZ", render, this->RendererZ, this->InteractorZ);
}

void zvSeedWidget::Set3DRender(vtkRenderer* render)
{
  zvTraceMacro("zvSeedWidget::Set3DRender(vtkRenderer *render)");
  this->StoreView("Renderer3D", render, this->Renderer3D, this->Interactor3D);
}

void zvSeedWidget::SetCurrentRender(vtkRenderer* render)
{
  zvTraceMacro("zvSeedWidget::SetCurrentRender(vtkRenderer *render)");
  if (!this->RawView->Write(render))
  {
    vtkGenericWarningMacro("set a renderer that is in a render window for CurrentRenderer...");
  }
}

void zvSeedWidget::AddHandle(double* x, int)
{
  zvTraceMacro("zvSeedWidget::AddHandle(double x[3])");
  if (!this->HasViews("adding a seed"))
  {
    return;
  }
  if (!x)
  {
    vtkGenericWarningMacro("give the seed a position...");
    return;
  }
  this->State = Start;
  const double radius = this->GetRadius();
  const auto source = zvMarkerParts::MakeSphere(x, radius);
  const auto source3D = zvMarkerParts::MakeSphere(x, radius);
  this->HandleSources->AddItem(source);
  this->HandleSources3D->AddItem(source3D);
  const auto actor = zvMarkerParts::MakeActor(source, this->SelectedHandleProperty);
  const auto actor3D = zvMarkerParts::MakeActor(source3D, this->SelectedHandleProperty);
  this->HandleActors->AddItem(actor);
  this->HandleActors3D->AddItem(actor3D);
  zvFourViews::Add({ this->Renderer3D }, actor3D);
  zvFourViews::Add({ this->RendererX, this->RendererY, this->RendererZ }, actor);
  this->HandlePicker->AddPickList(actor);
  this->CurrentActorIndex = this->HighlightHandle(actor);
  this->RenderViews();
}

void zvSeedWidget::EraseHandle()
{
  zvTraceMacro("zvSeedWidget::EraseHandle()");
  if (!this->CurrentHandle)
  {
    zvPlainErrorMacro(
      "In file zvSeedWidget at method EraseHandle() >> No seed selected to delete!");
  }
  else
  {
    // Deliberate: the selected index stays as it is.
    this->EraseSeed(this->CurrentHandle);
    this->CurrentHandle = nullptr;
  }
  this->RenderViews();
}

void zvSeedWidget::Clear()
{
  zvTraceMacro("zvSeedWidget::Initialize(void)");
  if (this->Interactor)
  {
    if (!this->CurrentRenderer)
    {
      this->SetCurrentRenderer(zvViewLookup::Choose(nullptr, this->Interactor));
    }
    if (this->CurrentRenderer)
    {
      this->RemoveSeedsFromViews();
    }
  }
  // Deliberate: the selection stays, and the actors stay in the list of the picker.
  this->HandleSources->RemoveAllItems();
  this->HandleActors->RemoveAllItems();
  this->HandleSources3D->RemoveAllItems();
  this->HandleActors3D->RemoveAllItems();
  this->RenderViews();
}

void zvSeedWidget::SetHandlePosition(int handle, double x, double y, double z)
{
  zvTraceMacro("zvSeedWidget::SetHandlePosition(int handle, double x, double y, double z)");
  if (handle < 0)
  {
    vtkErrorMacro("zvSeedWidget: handle index out of range.");
    return;
  }
  if (!this->HasSeed(handle))
  {
    return;
  }
  const double center[3] = { x, y, z };
  this->MoveSeed(handle, center);
  if (this->ProjectToPlane)
  {
    this->ProjectPointsToPlane();
  }
}

void zvSeedWidget::SetHandlePosition(int handle, double xyz[3])
{
  zvTraceMacro("zvSeedWidget::SetHandlePosition(int handle, double xyz[3])");
  if (!xyz)
  {
    vtkGenericWarningMacro("give the seed a position...");
    return;
  }
  this->SetHandlePosition(handle, xyz[0], xyz[1], xyz[2]);
}

void zvSeedWidget::GetHandlePosition(int handle, double xyz[3])
{
  zvTraceMacro("zvSeedWidget::GetHandlePosition(int handle, double xyz[3])");
  if (!xyz)
  {
    vtkGenericWarningMacro("give room for the position of the seed...");
    return;
  }
  if (const double* center = this->GetHandlePosition(handle))
  {
    std::copy_n(center, 3, xyz);
  }
}

double* zvSeedWidget::GetHandlePosition(int handle)
{
  zvTraceMacro("zvSeedWidget::GetHandlePosition(int handle)");
  if (handle < 0)
  {
    vtkErrorMacro("zvSeedWidget: handle index out of range.");
    return nullptr;
  }
  if (!this->HasSeed(handle))
  {
    return nullptr;
  }
  return zvCollections::ItemAt<vtkSphereSource>(this->HandleSources, handle)->GetCenter();
}

int zvSeedWidget::HighlightHandle(vtkProp* prop)
{
  zvTraceMacro("zvSeedWidget::HighlightHandle(vtkProp *prop)");
  this->CurrentHandle = prop;
  if (!prop || this->HandleActors->GetNumberOfItems() == 0)
  {
    return -1;
  }
  return this->HighlightSeed(zvCollections::IndexOf(this->HandleActors, prop));
}

int zvSeedWidget::HighlightHandle(int index)
{
  zvTraceMacro("zvSeedWidget::HighlightHandle(int index)");
  this->CurrentHandle = zvCollections::ItemAt<vtkActor>(this->HandleActors, index);
  if (!this->CurrentHandle)
  {
    return -1;
  }
  return this->HighlightSeed(index);
}

void zvSeedWidget::SetCurrentActorIndex(int index)
{
  zvTraceMacro("zvSeedWidget::SetCurrentActorIndex(int index)");
  if (index == -1)
  {
    return;
  }
  this->CurrentActorIndex = this->HighlightHandle(index);
  this->RenderViews();
}

int zvSeedWidget::IsClicked()
{
  zvTraceMacro("zvSeedWidget::IsClicked()");
  return this->CurrentActorIndex != -1 && this->PickSeed() ? 1 : 0;
}

int zvSeedWidget::GetState()
{
  zvTraceMacro("zvSeedWidget::GetState()");
  return this->State;
}

void zvSeedWidget::SetState(int state)
{
  zvTraceMacro("zvSeedWidget::SetState(int state)");
  this->State = state;
}

void zvSeedWidget::MovePoint(double* p1, double* p2)
{
  zvTraceMacro("zvSeedWidget::MovePoint(double *p1, double *p2)");
  if (!p1 || !p2)
  {
    vtkGenericWarningMacro("give both ends of the motion before moving a seed...");
    return;
  }
  if (!this->HasSeed(this->CurrentActorIndex))
  {
    return;
  }
  double bounds[6];
  if (!zvFourViews::GetBounds(zvInstanceManager::Instance()->GetCurrentOutput(), bounds))
  {
    vtkGenericWarningMacro("set the current image before moving a seed...");
    return;
  }
  double center[3];
  zvCollections::ItemAt<vtkSphereSource>(this->HandleSources, this->CurrentActorIndex)
    ->GetCenter(center);
  zvFourViews::MoveWithin(bounds, p1, p2, center);
  this->MoveSeed(this->CurrentActorIndex, center);
}

void zvSeedWidget::ProjectPointsToPlane()
{
  zvTraceMacro("zvSeedWidget::ProjectPointsToPlane()");
  this->ProjectPointsToOrthoPlane();
}

// Deliberately empty but for the trace: a seed belongs to all views, no plane is its own.
void zvSeedWidget::ProjectPointsToOrthoPlane()
{
  zvTraceMacro("zvSeedWidget::ProjectPointsToOrthoPlane()");
}

void zvSeedWidget::AddObservers()
{
  zvTraceMacro("zvSeedWidget::AddObservers(void)");
  zvFourViews::Observe(
    { this->Interactor, this->InteractorX, this->InteractorY, this->InteractorZ },
    this->EventCallbackCommand, this->Priority, this->Observed);
}

void zvSeedWidget::CreateDefaultProperties()
{
  zvTraceMacro("zvSeedWidget::CreateDefaultProperties()");
  if (!this->HandleProperty)
  {
    this->HandleProperty = zvMarkerParts::MakeProperty(1.0, 0.0, 0.0);
  }
  if (!this->SelectedHandleProperty)
  {
    this->SelectedHandleProperty = zvMarkerParts::MakeProperty(0.0, 1.0, 1.0);
  }
}

void zvSeedWidget::OnLeftButtonDown()
{
  zvTraceMacro("zvSeedWidget::OnLeftButtonDown()");
  vtkProp* hit =
    zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor) ? this->PickSeed() : nullptr;
  if (!hit)
  {
    this->State = Outside;
    return;
  }
  this->CurrentActorIndex = this->HighlightHandle(hit);
  this->State = Moving;
  this->BeginInteraction();
}

void zvSeedWidget::OnLeftButtonUp()
{
  zvTraceMacro("zvSeedWidget::OnLeftButtonUp()");
  if (this->State == Start || this->State == Outside)
  {
    return;
  }
  this->State = Start;
  this->HighlightHandle(this->CurrentHandle);
  this->SizeHandles();
  this->FinishInteraction();
}

// Deliberately empty but for their traces: the host's, for its camera and its menu.
void zvSeedWidget::OnMiddleButtonDown()
{
  zvTraceMacro("zvSeedWidget::OnMiddleButtonDown()");
}

void zvSeedWidget::OnMiddleButtonUp()
{
  zvTraceMacro("zvSeedWidget::OnMiddleButtonUp()");
}

void zvSeedWidget::OnRightButtonDown()
{
  zvTraceMacro("zvSeedWidget::OnRightButtonDown()");
}

void zvSeedWidget::OnRightButtonUp()
{
  zvTraceMacro("zvSeedWidget::OnRightButtonUp()");
  this->SizeHandles();
  this->RenderViews();
}

void zvSeedWidget::OnMouseMove()
{
  double previous[3];
  double pick[3];
  if (this->State == Start || this->State == Outside ||
    !zvDrag::GetMotion(
      this->Interactor, this->CurrentRenderer, this->LastPickPosition, previous, pick))
  {
    return;
  }
  if (this->State == Moving && this->CurrentHandle)
  {
    this->MovePoint(previous, pick);
  }
  if (this->ProjectToPlane)
  {
    this->ProjectPointsToPlane();
  }
  this->TellMotion();
}

void zvSeedWidget::OnMouseWheelForward()
{
  zvTraceMacro("zvSeedWidget::OnMouseWheelForward()");
  this->SizeHandles();
  this->RenderViews();
}

void zvSeedWidget::OnMouseWheelBackward()
{
  zvTraceMacro("zvSeedWidget::OnMouseWheelBackward()");
  this->SizeHandles();
  this->RenderViews();
}

void zvSeedWidget::Show()
{
  if (!this->HasViews("enabling the widget"))
  {
    return;
  }
  if (!this->CurrentRenderer && !this->Interactor)
  {
    vtkGenericWarningMacro("set CurrentRenderer before enabling the widget...");
    return;
  }
  if (!this->CurrentRenderer)
  {
    this->SetCurrentRenderer(zvViewLookup::Choose(nullptr, this->Interactor));
  }
  this->Enabled = 1;
  this->AddObservers();
  this->AddSeedsToViews();
  this->SizeHandles();
  this->InvokeEvent(vtkCommand::EnableEvent, nullptr);
  this->RenderViews();
}

void zvSeedWidget::Hide()
{
  this->Enabled = 0;
  zvFourViews::Unobserve(
    { this->Interactor, this->InteractorX, this->InteractorY, this->InteractorZ },
    this->EventCallbackCommand);
  this->RemoveSeedsFromViews();
  this->CurrentHandle = nullptr;
  this->InvokeEvent(vtkCommand::DisableEvent, nullptr);
  this->RenderViews();
}

void zvSeedWidget::AddSeedsToViews()
{
  for (const auto& actor : zvCollections::ItemsOf<vtkActor>(this->HandleActors))
  {
    zvFourViews::Add({ this->RendererX, this->RendererY, this->RendererZ }, actor);
    actor->SetProperty(this->HandleProperty);
  }
  for (const auto& actor : zvCollections::ItemsOf<vtkActor>(this->HandleActors3D))
  {
    zvFourViews::Add({ this->Renderer3D }, actor);
    actor->SetProperty(this->HandleProperty);
  }
}

void zvSeedWidget::RemoveSeedsFromViews()
{
  for (const auto& actor : zvCollections::ItemsOf<vtkActor>(this->HandleActors))
  {
    zvFourViews::Remove({ this->RendererX, this->RendererY, this->RendererZ }, actor);
  }
  for (const auto& actor : zvCollections::ItemsOf<vtkActor>(this->HandleActors3D))
  {
    zvFourViews::Remove({ this->Renderer3D }, actor);
  }
}

void zvSeedWidget::EraseSeed(vtkProp* sliceActor)
{
  const int index = zvCollections::IndexOf(this->HandleActors, sliceActor);
  if (index < 0)
  {
    return;
  }
  vtkProp* const actor3D = zvCollections::ItemAt<vtkProp>(this->HandleActors3D, index);
  zvFourViews::Remove({ this->RendererX, this->RendererY, this->RendererZ }, sliceActor);
  zvFourViews::Remove({ this->Renderer3D }, actor3D);
  this->HandlePicker->DeletePickList(sliceActor);
  this->HandleActors->RemoveItem(index);
  this->HandleSources->RemoveItem(index);
  this->HandleActors3D->RemoveItem(index);
  this->HandleSources3D->RemoveItem(index);
}

void zvSeedWidget::StoreView(const char* name, vtkRenderer* render,
  vtkWeakPointer<vtkRenderer>& renderer, vtkWeakPointer<vtkRenderWindowInteractor>& interactor)
{
  if (!zvFourViews::Set(render, renderer, interactor))
  {
    vtkGenericWarningMacro("set a renderer that is in a render window for " << name << "...");
  }
}

bool zvSeedWidget::HasViews(const char* before)
{
  const char* const missing = zvFourViews::FindMissing(
    { this->RendererX, this->RendererY, this->RendererZ, this->Renderer3D },
    { this->InteractorX, this->InteractorY, this->InteractorZ, this->Interactor3D });
  if (missing)
  {
    vtkGenericWarningMacro("set " << missing << " before " << before << "...");
  }
  return !missing;
}

bool zvSeedWidget::HasSeed(int index)
{
  const bool isThere = index >= 0 && index < this->HandleSources->GetNumberOfItems();
  if (!isThere)
  {
    vtkGenericWarningMacro("there is no seed of index " << index << "...");
  }
  return isThere;
}

void zvSeedWidget::MoveSeed(int index, const double center[3])
{
  for (vtkCollection* sources : { this->HandleSources.Get(), this->HandleSources3D.Get() })
  {
    auto* const sphere = zvCollections::ItemAt<vtkSphereSource>(sources, index);
    sphere->SetCenter(center[0], center[1], center[2]);
    sphere->Update();
  }
}

double zvSeedWidget::GetRadius()
{
  if (this->CurrentRenderer && !zvViewLookup::IsShown(this->CurrentRenderer))
  {
    // no window to measure any more
    return zvMarkerParts::SphereSize * this->HandleSize * this->InitialLength;
  }
  return this->vtk3DWidget::SizeHandles(zvMarkerParts::SphereSize);
}

// An index that is not there makes all look unselected.
int zvSeedWidget::HighlightSeed(int index)
{
  if (index >= 0)
  {
    this->ValidPick = 1;
    // Deliberate: that of the last pick, also if this seed was not picked.
    this->HandlePicker->GetPickPosition(this->LastPickPosition);
  }
  zvMarkerParts::Highlight(
    this->HandleActors, index, this->HandleProperty, this->SelectedHandleProperty);
  zvMarkerParts::Highlight(
    this->HandleActors3D, index, this->HandleProperty, this->SelectedHandleProperty);
  return index;
}

vtkProp* zvSeedWidget::PickSeed()
{
  if (!this->Interactor)
  {
    return nullptr;
  }
  const int* position = this->Interactor->GetEventPosition();
  return zvViewPicker::PickProp(
    this->HandlePicker, position[0], position[1], this->CurrentRenderer);
}
