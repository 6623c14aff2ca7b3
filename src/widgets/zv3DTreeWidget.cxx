#include "zv3DTreeWidget.h"

#include "zvDispatch.h"
#include "zvEvents.h"
#include "zvFourViews.h"
#include "zvLengthLabel.h"
#include "zvMarkerParts.h"
#include "zvMessages.h"
#include "zvObservedSubjects.h"
#include "zvPointTree.h"
#include "zvPolyDataActor.h"
#include "zvRawView.h"
#include "zvViewLookup.h"

#include "vtkActor.h"
#include "vtkCallbackCommand.h"
#include "vtkCellPicker.h"
#include "vtkFollower.h"
#include "vtkLineSource.h"
#include "vtkObjectFactory.h"
#include "vtkPlaneSource.h"
#include "vtkPolyData.h"
#include "vtkProperty.h"
#include "vtkRenderWindow.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkSphereSource.h"
#include "vtkVectorText.h"

#include <algorithm>

namespace
{
constexpr double PointTolerance = 0.02; // of the window's diagonal
constexpr double LineTolerance = 0.005;

vtkSmartPointer<vtkActor> MakeActor(vtkPolyData* data)
{
  auto actor = vtkSmartPointer<vtkActor>::New();
  zvPolyDataActor::Draw(actor, data);
  return actor;
}
}

#define zvMarker zv3DTreeWidget
#include "zvMarkerAccessors.inl"
#undef zvMarker

vtkObjectFactoryNewMacro(zv3DTreeWidget);

vtkObject* vtkInstantiatorzv3DTreeWidgetNew()
{
  return zv3DTreeWidget::New();
}

zv3DTreeWidget::zv3DTreeWidget()
  : PointPicker(zvMarkerParts::MakePicker(PointTolerance))
  , LinePicker(zvMarkerParts::MakePicker(LineTolerance))
  , RawView(std::make_unique<zvRawView>(this,
      zvRawView::Fields{
        this->CurrentRenderer, this->Interactor, this->CharObserverTag, this->DeleteObserverTag }))
{
  this->EventCallbackCommand->SetCallback(zv3DTreeWidget::ProcessEvents);
  zvEvents::HoldDuringKeys(this->KeyPressCallbackCommand);
  std::fill_n(this->LastPickPosition, 3, 0.0); // the depth of a drag
  std::fill_n(this->InitialBounds, 6, 0.0);    // a tree is never placed
  this->InitialLength = 1.0;
  this->PlaceFactor = 1.0;

  this->CreateDefaultProperties();
  this->BuildPoints();
  this->BuildLines();
  this->PointPicker->AddPickList(this->PointsActor);
  this->LinePicker->AddPickList(this->LinesActor);

  zvLengthLabel::Build(this->TextSource, this->TextActor); // of the size of a new actor
  this->TextActor->GetProperty()->SetColor(1.0, 0.0, 0.0);
}

zv3DTreeWidget::~zv3DTreeWidget()
{
  zvTraceMacro("zv3DTreeWidget::~zv3DTreeWidget()");
  this->zv3DTreeWidget::SetEnabled(0);
  zvObservedSubjects::Release(this->Observed, this->EventCallbackCommand);
  this->TakeOutOfAllViews(); // selecting shows something when the widget is not enabled, too
  zvViewLookup::TakeOut(this->TextActor);
}

void zv3DTreeWidget::PrintSelf(ostream& os, vtkIndent indent)
{
  zvTraceMacro("zv3DTreeWidget::PrintSelf(ostream& os, vtkIndent indent)");
  this->Superclass::PrintSelf(os, indent);
  zvMarkerParts::Print(os, indent,
    { this->HandleProperty, this->SelectedHandleProperty, this->ProjectToPlane,
      this->ProjectionNormal, this->ProjectionPosition });
}

void zv3DTreeWidget::CollectRevisions(ostream& os)
{
  os << "zv3DTreeWidget $Revision: 1.2 $\n";
}

void zv3DTreeWidget::SetEnabled(int enabling)
{
  zvTraceMacro("void zv3DTreeWidget::SetEnabled(int enabling)");
  if (!this->Interactor)
  {
    return;
  }
  const auto self = zvEvents::Hold(this);
  if (enabling && !this->Enabled && this->HasViews("enabling the widget"))
  {
    this->Show();
  }
  else if (!enabling && this->Enabled)
  {
    this->Hide();
  }
}

// Deliberately empty: a tree is where its points are.
void zv3DTreeWidget::PlaceWidget(double vtkNotUsed(bounds)[6]) {}

void zv3DTreeWidget::SetRendererX(vtkRenderer* render)
{
  zvTraceMacro("zv3DTreeWidget::SetRendererX(vtkRenderer *render)");
  this->StoreView("RendererX", render, this->RendererX, this->InteractorX);
}

void zv3DTreeWidget::SetRendererY(vtkRenderer* render)
{
  zvTraceMacro("zv3DTreeWidget::SetRendererY(vtkRenderer *render)");
  this->StoreView("RendererY", render, this->RendererY, this->InteractorY);
}

void zv3DTreeWidget::SetRendererZ(vtkRenderer* render)
{
  zvTraceMacro("zv3DTreeWidget::SetRendererZ(vtkRenderer *render)");
  this->StoreView("RendererZ", render, this->RendererZ, this->InteractorZ);
}

void zv3DTreeWidget::SetRenderer3D(vtkRenderer* render)
{
  // Deliberate: the text has the name that other markers give to this operation.
  zvTraceMacro("zv3DTreeWidget::Set3DRender(vtkRenderer *render)");
  this->StoreView("Renderer3D", render, this->Renderer3D, this->Interactor3D);
}

void zv3DTreeWidget::SetCurrentRender(vtkRenderer* render)
{
  zvTraceMacro("zv3DTreeWidget::SetCurrentRender(vtkRenderer *render)");
  if (!this->RawView->Write(render))
  {
    vtkGenericWarningMacro("set a renderer that is in a render window for CurrentRenderer...");
  }
}

void zv3DTreeWidget::AddObservers()
{
  zvTraceMacro("zv3DTreeWidget::AddObservers(void)");
  zvFourViews::Observe(
    { this->Interactor, this->InteractorX, this->InteractorY, this->InteractorZ },
    this->EventCallbackCommand, this->Priority, this->Observed);
}

int zv3DTreeWidget::IsLine()
{
  zvTraceMacro("zv3DTreeWidget::IsLine()");
  return 0;
}

int zv3DTreeWidget::GetState()
{
  zvTraceMacro("zv3DTreeWidget::GetState()");
  return this->State;
}

void zv3DTreeWidget::SetState(int state)
{
  zvTraceMacro("zv3DTreeWidget::SetState(int state)");
  this->State = state;
}

void zv3DTreeWidget::StopInteraction(int stop)
{
  zvTraceMacro("zv3DTreeWidget::StopInteraction(int stop)");
  this->State = stop ? Inactive : Start;
}

bool zv3DTreeWidget::IsInactive()
{
  zvTraceMacro("zv3DTreeWidget::IsInactive()");
  return this->State == Inactive;
}

bool zv3DTreeWidget::IsEnabled()
{
  zvTraceMacro("zv3DTreeWidget::IsEnabled()");
  return this->Enabled != 0;
}

double* zv3DTreeWidget::GetHandlePosition(int handle)
{
  zvTraceMacro("zv3DTreeWidget::GetHandlePosition(int handle)");
  return this->AcceptsHandle(handle) ? this->SelectedPointSource->GetCenter() : nullptr;
}

void zv3DTreeWidget::GetHandlePosition(int handle, double vtkNotUsed(xyz)[3])
{
  zvTraceMacro("zv3DTreeWidget::GetHandlePosition(int handle, double xyz[3])");
  this->AcceptsHandle(handle);
}

void zv3DTreeWidget::SetHandlePosition(
  int handle, double vtkNotUsed(x), double vtkNotUsed(y), double vtkNotUsed(z))
{
  zvTraceMacro("zv3DTreeWidget::SetHandlePosition(int handle, double x, double y, double z)");
  if (this->AcceptsHandle(handle) && this->ProjectToPlane)
  {
    this->ProjectPointsToPlane();
  }
}

void zv3DTreeWidget::SetHandlePosition(int handle, double vtkNotUsed(xyz)[3])
{
  zvTraceMacro("zv3DTreeWidget::SetHandlePosition(int handle, double xyz[3])");
  if (this->AcceptsHandle(handle) && this->ProjectToPlane)
  {
    this->ProjectPointsToPlane();
  }
}

// Deliberately empty, these three: hosts call them on every marker alike.
void zv3DTreeWidget::RemovePointSelected() {}

void zv3DTreeWidget::InsertHandleOnLine(double* vtkNotUsed(coord)) {}

void zv3DTreeWidget::UpdateScaleLabel() {}

void zv3DTreeWidget::SetProjectionPosition(double position)
{
  // Deliberate: hosts know the text as it is.
  zvTraceMacro("zv3DTreeWidget::SetProjectionPosition(double position))");
  this->ProjectionPosition = position;
  if (this->ProjectToPlane)
  {
    this->ProjectPointsToPlane();
  }
}

void zv3DTreeWidget::SetPlaneSource(vtkPlaneSource* plane)
{
  zvTraceMacro("zv3DTreeWidget::SetPlaneSource(vtkPlaneSource *plane)");
  this->PlaneSource = plane;
}

void zv3DTreeWidget::ProjectPointsToPlane()
{
  zvTraceMacro("zv3DTreeWidget::ProjectPointsToPlane()");
  this->ProjectPointsToOrthoPlane();
}

// Deliberately empty but for the trace: a tree keeps its depth.
void zv3DTreeWidget::ProjectPointsToOrthoPlane()
{
  zvTraceMacro("zv3DTreeWidget::ProjectPointsToOrthoPlane()");
}

void zv3DTreeWidget::SizeHandles()
{
  zvTraceMacro("zv3DTreeWidget::SizeHandles()");
}

void zv3DTreeWidget::CreateDefaultProperties()
{
  zvTraceMacro("zv3DTreeWidget::CreateDefaultProperties()");
  if (!this->HandleProperty)
  {
    this->HandleProperty = zvMarkerParts::MakeProperty(1.0, 0.0, 0.0);
    this->HandleProperty->SetPointSize(5.0f);
  }
  if (!this->SelectedHandleProperty)
  {
    this->SelectedHandleProperty = zvMarkerParts::MakeProperty(0.0, 1.0, 1.0);
    this->SelectedHandleProperty->SetPointSize(6.0f);
  }
  if (!this->LineProperty)
  {
    this->LineProperty = zvMarkerParts::MakeProperty(1.0, 1.0, 0.0);
    this->LineProperty->SetLineWidth(2.0f);
  }
  if (!this->SelectedLineProperty)
  {
    this->SelectedLineProperty = zvMarkerParts::MakeProperty(0.0, 1.0, 0.2);
    this->SelectedLineProperty->SetLineWidth(2.0f);
  }
}

void zv3DTreeWidget::BuildPoints()
{
  this->TreePoints = vtkSmartPointer<vtkPolyData>::New();
  zvPointTree::MakePoints(this->TreePoints);
  this->PointsActor = MakeActor(this->TreePoints);
  this->SelectedPointSource = vtkSmartPointer<vtkSphereSource>::New();
  this->SelectedPointActor =
    zvMarkerParts::MakeActor(this->SelectedPointSource, this->SelectedHandleProperty);
}

void zv3DTreeWidget::BuildLines()
{
  this->TreeLines = vtkSmartPointer<vtkPolyData>::New();
  zvPointTree::MakeSegments(this->TreeLines);
  this->LinesActor = MakeActor(this->TreeLines);
  this->SelectedLineSource = vtkSmartPointer<vtkLineSource>::New();
  this->SelectedLineActor =
    zvMarkerParts::MakeActor(this->SelectedLineSource, this->SelectedLineProperty);
}

bool zv3DTreeWidget::AcceptsHandle(int handle)
{
  if (handle < 0)
  {
    vtkErrorMacro("zv3DTreeWidget: handle index out of range.");
    return false;
  }
  return true;
}

void zv3DTreeWidget::StoreView(const char* name, vtkRenderer* render,
  vtkWeakPointer<vtkRenderer>& renderer, vtkWeakPointer<vtkRenderWindowInteractor>& interactor)
{
  if (!zvFourViews::Set(render, renderer, interactor))
  {
    vtkGenericWarningMacro("set a renderer that is in a render window for " << name << "...");
  }
}

bool zv3DTreeWidget::HasViews(const char* before)
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

bool zv3DTreeWidget::HasCurrentView(const char* before)
{
  const bool isThere = zvViewLookup::IsShown(this->CurrentRenderer);
  if (!isThere)
  {
    vtkGenericWarningMacro("set CurrentRenderer before " << before << "...");
  }
  return isThere;
}

bool zv3DTreeWidget::TakePokedRenderer()
{
  vtkRenderer* renderer = zvViewLookup::Choose(this->CurrentRenderer, this->Interactor);
  if (renderer != this->CurrentRenderer)
  {
    this->SetCurrentRenderer(renderer);
  }
  return this->CurrentRenderer != nullptr;
}

void zv3DTreeWidget::ShowInViews(vtkProp* prop)
{
  zvFourViews::Add({ this->RendererX, this->RendererY, this->RendererZ, this->Renderer3D }, prop);
}

void zv3DTreeWidget::HideInViews(vtkProp* prop)
{
  zvFourViews::Remove(
    { this->RendererX, this->RendererY, this->RendererZ, this->Renderer3D }, prop);
}

void zv3DTreeWidget::HideTree()
{
  this->HideInViews(this->PointsActor);
  this->HideInViews(this->SelectedPointActor);
  this->HideInViews(this->LinesActor);
  this->HideInViews(this->SelectedLineActor);
}

void zv3DTreeWidget::TakeOutOfAllViews()
{
  zvViewLookup::TakeOut(this->PointsActor);
  zvViewLookup::TakeOut(this->SelectedPointActor);
  zvViewLookup::TakeOut(this->LinesActor);
  zvViewLookup::TakeOut(this->SelectedLineActor);
}

void zv3DTreeWidget::Show()
{
  this->Enabled = 1;
  this->AddObservers();
  this->ShowInViews(this->LinesActor);
  this->LinesActor->SetProperty(this->LineProperty);
  this->ShowInViews(this->SelectedLineActor);
  this->SelectedLineActor->SetProperty(this->SelectedLineProperty);
  this->LinePicker->AddPickList(this->LinesActor);
  this->ShowInViews(this->PointsActor);
  this->PointsActor->SetProperty(this->HandleProperty);
  this->ShowInViews(this->SelectedPointActor);
  this->SelectedPointActor->SetProperty(this->SelectedHandleProperty);
  this->PointPicker->AddPickList(this->PointsActor);
  this->TextActor->VisibilityOn();
  this->InvokeEvent(vtkCommand::EnableEvent, nullptr);
  this->RenderViews();
}

void zv3DTreeWidget::Hide()
{
  this->Enabled = 0;
  zvFourViews::Unobserve(
    { this->Interactor, this->InteractorX, this->InteractorY, this->InteractorZ },
    this->EventCallbackCommand);
  this->HideTree();
  this->TextActor->VisibilityOff();
  this->PointPicker->DeletePickList(this->PointsActor);
  this->LinePicker->DeletePickList(this->LinesActor);
  this->CurrentHandle = nullptr;
  this->InvokeEvent(vtkCommand::DisableEvent, nullptr);
  this->RenderViews();
}
