#include "zv3DRulerWidget.h"

#include "zvCollections.h"
#include "zvDispatch.h"
#include "zvEvents.h"
#include "zvFourViews.h"
#include "zvLengthLabel.h"
#include "zvMarkerParts.h"
#include "zvMessages.h"
#include "zvObservedSubjects.h"
#include "zvRawView.h"
#include "zvViewLookup.h"

#include "vtkActor.h"
#include "vtkCallbackCommand.h"
#include "vtkCellPicker.h"
#include "vtkFollower.h"
#include "vtkMath.h"
#include "vtkObjectFactory.h"
#include "vtkPlaneSource.h"
#include "vtkProperty.h"
#include "vtkRenderWindow.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkVectorText.h"

#include <algorithm>
#include <cmath>

namespace
{
// Parts of the window's diagonal.
constexpr double PointTolerance = 0.005;
constexpr double LineTolerance = 0.01;

constexpr double LineWidth = 2.0; // pixels

vtkSmartPointer<vtkProperty> MakeLineProperty(double red, double green, double blue)
{
  auto property = zvMarkerParts::MakeProperty(red, green, blue);
  property->SetLineWidth(LineWidth);
  return property;
}
}

#define zvMarker zv3DRulerWidget
#include "zvMarkerAccessors.inl"
#undef zvMarker

vtkObjectFactoryNewMacro(zv3DRulerWidget);

vtkObject* vtkInstantiatorzv3DRulerWidgetNew()
{
  return zv3DRulerWidget::New();
}

zv3DRulerWidget::zv3DRulerWidget()
  : PointPicker(zvMarkerParts::MakePicker(PointTolerance))
  , LinePicker(zvMarkerParts::MakePicker(LineTolerance))
  , RawView(std::make_unique<zvRawView>(this,
      zvRawView::Fields{
        this->CurrentRenderer, this->Interactor, this->CharObserverTag, this->DeleteObserverTag }))
{
  this->EventCallbackCommand->SetCallback(zv3DRulerWidget::ProcessEvents);
  zvEvents::HoldDuringKeys(this->KeyPressCallbackCommand);
  std::fill_n(this->LastPickPosition, 3, 0.0); // the depth of a drag before anything is picked

  this->PlaceFactor = 1.0;
  double bounds[6] = { -0.5, 0.5, -0.5, 0.5, -0.5, 0.5 };
  this->zv3DRulerWidget::PlaceWidget(bounds);
  this->CreateDefaultProperties();

  zvLengthLabel::Build(this->TextSource, this->TextActor);
  this->TextActor->GetProperty()->SetColor(1.0, 0.0, 0.0);
  zvLengthLabel::SetSize(this->TextActor, this->GetSize(zvMarkerParts::LabelSize));
}

zv3DRulerWidget::~zv3DRulerWidget()
{
  zvTraceMacro("zv3DRulerWidget::~zv3DRulerWidget()");
  this->zv3DRulerWidget::SetEnabled(0);
  zvObservedSubjects::Release(this->Observed, this->EventCallbackCommand);
  // AddHandle shows it when the widget is not enabled, too, and some may be in views of before.
  zvMarkerParts::TakeOut(this->HandleActors);
  zvMarkerParts::TakeOut(this->LineActors);
  zvViewLookup::TakeOut(this->TextActor);
}

void zv3DRulerWidget::PrintSelf(ostream& os, vtkIndent indent)
{
  zvTraceMacro("zv3DRulerWidget::PrintSelf(ostream& os, vtkIndent indent)");
  this->Superclass::PrintSelf(os, indent);
  zvMarkerParts::Print(os, indent,
    { this->HandleProperty, this->SelectedHandleProperty, this->ProjectToPlane,
      this->ProjectionNormal, this->ProjectionPosition });
}

void zv3DRulerWidget::CollectRevisions(ostream& os)
{
  os << "zv3DRulerWidget $Revision: 1.2 $\n";
}

void zv3DRulerWidget::SetEnabled(int enabling)
{
  zvTraceMacro("void zv3DRulerWidget::SetEnabled(int enabling)");
  if (!this->Interactor)
  {
    return;
  }
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

void zv3DRulerWidget::PlaceWidget(double* bds)
{
  zvTraceMacro("zv3DRulerWidget::PlaceWidget(double bds[6])");
  if (!bds)
  {
    vtkGenericWarningMacro("give bounds to place the points in...");
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
    // Deliberate: not the segments.
    zvMarkerParts::Spread(this->HandleSources, bounds);
  }
  std::copy_n(bounds, 6, this->InitialBounds);
  const double low[3] = { bounds[0], bounds[2], bounds[4] };
  const double high[3] = { bounds[1], bounds[3], bounds[5] };
  this->InitialLength = std::sqrt(vtkMath::Distance2BetweenPoints(low, high));
  this->SizeHandles();
}

void zv3DRulerWidget::SizeHandles()
{
  zvTraceMacro("zv3DRulerWidget::SizeHandles()");
  zvMarkerParts::SetRadius(this->HandleSources, this->GetSize(zvMarkerParts::SphereSize));
}

void zv3DRulerWidget::SetProjectionPosition(double position)
{
  zvTraceMacro("zv3DRulerWidget::SetProjectionPosition(double position))");
  this->ProjectionPosition = position;
  if (this->ProjectToPlane)
  {
    this->ProjectPointsToPlane();
  }
}

void zv3DRulerWidget::SetPlaneSource(vtkPlaneSource* plane)
{
  zvTraceMacro("zv3DRulerWidget::SetPlaneSource(vtkPlaneSource *plane)");
  this->PlaneSource = plane;
}

void zv3DRulerWidget::SetRendererX(vtkRenderer* render)
{
  zvTraceMacro("zv3DRulerWidget::SetRendererX(vtkRenderer *render)");
  this->StoreView("RendererX", render, this->RendererX, this->InteractorX);
}

void zv3DRulerWidget::SetRendererY(vtkRenderer* render)
{
  zvTraceMacro("zv3DRulerWidget::SetRendererY(vtkRenderer *render)");
  this->StoreView("RendererY", render, this->RendererY, this->InteractorY);
}

void zv3DRulerWidget::SetRendererZ(vtkRenderer* render)
{
  zvTraceMacro("zv3DRulerWidget::SetRendererZ(vtkRenderer *render)");
  this->StoreView("RendererZ", render, this->RendererZ, this->InteractorZ);
}

void zv3DRulerWidget::SetRenderer3D(vtkRenderer* render)
{
  zvTraceMacro("zv3DRulerWidget::Set3DRender(vtkRenderer *render)");
  this->StoreView("Renderer3D", render, this->Renderer3D, this->Interactor3D);
}

void zv3DRulerWidget::SetCurrentRender(vtkRenderer* render)
{
  zvTraceMacro("zv3DRulerWidget::SetCurrentRender(vtkRenderer *render)");
  if (!this->RawView->Write(render))
  {
    vtkGenericWarningMacro("set a renderer that is in a render window for CurrentRenderer...");
  }
}

int zv3DRulerWidget::GetState()
{
  zvTraceMacro("zv3DRulerWidget::GetState()");
  return this->State;
}

void zv3DRulerWidget::SetState(int state)
{
  zvTraceMacro("zv3DRulerWidget::SetState(int state)");
  this->State = state;
}

void zv3DRulerWidget::ProjectPointsToPlane()
{
  zvTraceMacro("zv3DRulerWidget::ProjectPointsToPlane()");
  this->ProjectPointsToOrthoPlane();
}

// Deliberately empty but for the trace: a point belongs to all views, no plane is its own.
void zv3DRulerWidget::ProjectPointsToOrthoPlane()
{
  zvTraceMacro("zv3DRulerWidget::ProjectPointsToOrthoPlane()");
}

void zv3DRulerWidget::AddObservers()
{
  zvTraceMacro("zv3DRulerWidget::AddObservers(void)");
  zvFourViews::Observe(
    { this->Interactor, this->InteractorX, this->InteractorY, this->InteractorZ },
    this->EventCallbackCommand, this->Priority, this->Observed);
}

void zv3DRulerWidget::CreateDefaultProperties()
{
  zvTraceMacro("zv3DRulerWidget::CreateDefaultProperties()");
  if (!this->HandleProperty)
  {
    this->HandleProperty = zvMarkerParts::MakeProperty(1.0, 0.0, 0.0);
  }
  if (!this->SelectedHandleProperty)
  {
    this->SelectedHandleProperty = zvMarkerParts::MakeProperty(0.0, 1.0, 1.0);
  }
  if (!this->LineProperty)
  {
    this->LineProperty = MakeLineProperty(1.0, 1.0, 0.0);
  }
  if (!this->SelectedLineProperty)
  {
    this->SelectedLineProperty = MakeLineProperty(0.0, 1.0, 0.2);
  }
}

void zv3DRulerWidget::Show()
{
  if (!this->HasViews("enabling the widget"))
  {
    return;
  }
  this->Enabled = 1;
  this->AddObservers();
  for (const auto& actor : zvCollections::ItemsOf<vtkActor>(this->HandleActors))
  {
    zvFourViews::Add(
      { this->RendererX, this->RendererY, this->RendererZ, this->Renderer3D }, actor);
    actor->SetProperty(this->HandleProperty);
  }
  this->SizeHandles();
  for (const auto& actor : zvCollections::ItemsOf<vtkActor>(this->LineActors))
  {
    zvFourViews::Add(
      { this->RendererX, this->RendererY, this->RendererZ, this->Renderer3D }, actor);
    actor->SetProperty(this->LineProperty);
  }
  this->TextActor->VisibilityOn();
  this->InvokeEvent(vtkCommand::EnableEvent, nullptr);
  this->RenderViews();
}

void zv3DRulerWidget::Hide()
{
  this->Enabled = 0;
  zvFourViews::Unobserve(
    { this->Interactor, this->InteractorX, this->InteractorY, this->InteractorZ },
    this->EventCallbackCommand);
  this->RemoveChainFromViews();
  this->TextActor->VisibilityOff();
  this->CurrentHandle = nullptr;
  this->InvokeEvent(vtkCommand::DisableEvent, nullptr);
  this->RenderViews();
}

void zv3DRulerWidget::AddToViews(vtkProp* prop)
{
  zvFourViews::Add({ this->Renderer3D, this->RendererX, this->RendererY, this->RendererZ }, prop);
}

void zv3DRulerWidget::RemoveFromViews(vtkProp* prop)
{
  zvFourViews::Remove(
    { this->RendererX, this->RendererY, this->RendererZ, this->Renderer3D }, prop);
}

void zv3DRulerWidget::StoreView(const char* name, vtkRenderer* render,
  vtkWeakPointer<vtkRenderer>& renderer, vtkWeakPointer<vtkRenderWindowInteractor>& interactor)
{
  if (!zvFourViews::Set(render, renderer, interactor))
  {
    vtkGenericWarningMacro("set a renderer that is in a render window for " << name << "...");
  }
}

bool zv3DRulerWidget::HasViews(const char* before)
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

double zv3DRulerWidget::GetSize(double factor)
{
  if (this->CurrentRenderer && !zvViewLookup::IsShown(this->CurrentRenderer))
  {
    return factor * this->HandleSize * this->InitialLength; // no window to measure any more
  }
  return this->vtk3DWidget::SizeHandles(factor);
}
