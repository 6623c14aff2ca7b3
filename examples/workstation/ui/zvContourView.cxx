#include "zvContourView.h"

#include "zvInstanceManager.h"
#include "zvSliceView.h"
#include "zvSnakeWidget.h"
#include "zvVolumeSnakeWidget.h"

#include <QMouseEvent>

#include "vtkCamera.h"
#include "vtkCommand.h"
#include "vtkImageData.h"
#include "vtkMath.h"
#include "vtkPolyData.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr float Priority = 1.0F; // before the slice viewer
constexpr double ContourLift = 1.0;
constexpr double PreviousLift = 0.75;
constexpr double EdgePointSize = 2.0;

vtkSmartPointer<vtkPolyData> Nothing()
{
  return vtkSmartPointer<vtkPolyData>::New();
}
}

zvContourView::zvContourView(zvSliceView* view, vtkRenderer* renderer3D)
  : View(view)
  , SliceWidget(vtkSmartPointer<zvSnakeWidget>::Take(zvSnakeWidget::New()))
  , VolumeWidget(vtkSmartPointer<zvVolumeSnakeWidget>::Take(zvVolumeSnakeWidget::New()))
  , Edges(Nothing())
{
  this->Prepare(this->SliceWidget);
  this->Prepare(this->VolumeWidget);
  this->SliceWidget->SetRenderer3D(renderer3D);
  this->SliceWidget->SetGradientPointSize(EdgePointSize);
  this->VolumeWidget->SetRenderer3D(renderer3D);
  this->VolumeWidget->SetGradientPointSize(EdgePointSize);
  this->VolumeWidget->SphereHandleVisibilityOff();
  // These come after the widgets have had the event.
  connect(view, &zvQVTKWidget::mouseEvent, this, &zvContourView::HandleMouse);
}

zvContourView::~zvContourView()
{
  // The widgets may be held by somebody else, too.
  for (zvWidgets* widget :
    { static_cast<zvWidgets*>(this->SliceWidget), static_cast<zvWidgets*>(this->VolumeWidget) })
  {
    widget->vtkObject::RemoveObservers(vtkCommand::InteractionEvent);
    widget->vtkObject::RemoveObservers(vtkCommand::EndInteractionEvent);
  }
}

void zvContourView::Prepare(zvWidgets* widget)
{
  widget->SetInteractor(this->View->interactor());
  widget->SetCurrentRenderer(this->View->GetRenderer());
  widget->SetPriority(Priority);
  widget->KeyPressActivationOff();
  widget->AddObserver(vtkCommand::InteractionEvent, this, &zvContourView::HandleMoved);
  widget->AddObserver(vtkCommand::EndInteractionEvent, this, &zvContourView::HandleMoved);
}

zvSnakeWidget* zvContourView::GetSliceWidget() const
{
  return this->SliceWidget;
}

zvVolumeSnakeWidget* zvContourView::GetVolumeWidget() const
{
  return this->VolumeWidget;
}

zvWidgets* zvContourView::GetWidget() const
{
  return this->InVolume ? static_cast<zvWidgets*>(this->VolumeWidget)
                        : static_cast<zvWidgets*>(this->SliceWidget);
}

void zvContourView::SetInVolume(bool isInVolume)
{
  if (isInVolume == this->InVolume)
  {
    return;
  }
  const zvContour contour = this->ReadContour();
  const bool wasVisible = this->Visible;
  this->SetVisible(false);
  this->InVolume = isInVolume;
  this->ShowContour(contour);
  this->SetVisible(wasVisible);
}

void zvContourView::SetVisible(bool isVisible)
{
  if (isVisible != this->Visible)
  {
    this->Visible = isVisible;
    this->ApplyState();
  }
}

void zvContourView::SetInHand(bool isInHand)
{
  this->InHand = isInHand;
  this->ApplyState();
}

// A widget is always disabled with its interaction on, since enabling attaches it to the mouse.
void zvContourView::ApplyState()
{
  zvWidgets* widget = this->GetWidget();
  if (this->Visible)
  {
    widget->SetCurrentRenderer(this->View->GetRenderer());
    widget->SetEnabled(1);
    widget->SetInteraction(this->InHand);
  }
  else if (widget->GetEnabled())
  {
    widget->SetInteraction(true);
    widget->SetEnabled(0);
  }
}

void zvContourView::SetRing(double radius, int count)
{
  this->RingRadius = radius;
  this->RingCount = count;
  this->SliceWidget->SetResolution(count);
  this->VolumeWidget->SetResolution(count);
}

std::size_t zvContourView::GetResolution() const
{
  return static_cast<std::size_t>(
    this->InVolume ? this->VolumeWidget->GetResolution() : this->SliceWidget->GetResolution());
}

double zvContourView::GetLift(double millimetres) const
{
  vtkCamera* camera = this->View->GetRenderer()->GetActiveCamera();
  const int axis = this->Plane.GetAxis();
  return camera->GetPosition()[axis] > camera->GetFocalPoint()[axis] ? millimetres : -millimetres;
}

zvContour zvContourView::ReadContour() const
{
  return this->Plane.FromPolyData(
    this->InVolume ? this->VolumeWidget->GetSnake() : this->SliceWidget->GetSnake());
}

void zvContourView::ShowContour(const zvContour& contour)
{
  this->HasContour = !contour.empty();
  this->PassMeasures(contour);
  const auto ring = this->Plane.ToPolyData(contour, this->GetLift(ContourLift));
  if (this->InVolume)
  {
    this->VolumeWidget->SetSnake(ring);
  }
  else
  {
    this->SliceWidget->SetSnake(ring);
  }
}

// The circle that a drag begins with lies where the contour lies, and is about as large.
void zvContourView::PassMeasures(const zvContour& contour)
{
  if (contour.empty())
  {
    return;
  }
  auto centre = this->Plane.ToWorld(zvContourMath::GetCentre(contour));
  centre[static_cast<std::size_t>(this->Plane.GetAxis())] += this->GetLift(ContourLift);
  const double radius = std::sqrt(std::abs(zvContourMath::GetArea(contour)) / vtkMath::Pi());
  this->SliceWidget->SetCenter(centre.data());
  this->SliceWidget->SetRadius(radius);
  this->VolumeWidget->SetCenter(centre.data());
  this->VolumeWidget->SetRadius(radius);
}

void zvContourView::ShowPrevious(const zvContour& contour)
{
  this->VolumeWidget->SetPrevSnake(this->Plane.ToPolyData(contour, this->GetLift(PreviousLift)));
}

void zvContourView::ShowEdges(vtkPolyData* ofSlice)
{
  this->Edges->DeepCopy(ofSlice);
  this->VolumeWidget->SetFreezeGradient(this->Edges);
  this->SetGradient(this->ShownGradient);
}

void zvContourView::ShowEdgesAtContour(vtkPolyData* atContour)
{
  this->VolumeWidget->SetGradient(atContour);
}

// The slice's widget has one display of the gradient, which is emptied rather than hidden.
void zvContourView::SetGradient(Gradient gradient)
{
  this->ShownGradient = gradient;
  this->SliceWidget->SetGradient(gradient == Gradient::OfSlice ? this->Edges : Nothing());
  constexpr int none = 0, live = 1, frozen = 2;
  const int shown = gradient == Gradient::None ? none
    : gradient == Gradient::AtContour          ? live
                                               : frozen;
  this->VolumeWidget->SetViewGradient(shown);
  // That speaks to the view at once, also of a widget that is not shown in it.
  if (!this->VolumeWidget->GetEnabled())
  {
    this->VolumeWidget->EnableViewGradient(false);
  }
}

void zvContourView::ShowStack(vtkPolyData* rings)
{
  if (this->InVolume)
  {
    this->VolumeWidget->SetSnakes3D(rings);
  }
  else
  {
    this->SliceWidget->SetSnakes3D(rings);
  }
}

void zvContourView::Clear()
{
  this->HasContour = false;
  this->Edges->Initialize();
  const bool wasVisible = this->Visible;
  this->SetVisible(false);
  this->VolumeWidget->Reset();
  const auto nothing = Nothing();
  this->SliceWidget->SetSnake(nothing);
  this->SliceWidget->SetGradient(nothing);
  this->SliceWidget->SetSnakes3D(nothing);
  this->SetVisible(wasVisible);
}

//------------------------------------------------------------------------------
// Before the widget renders what it has done.
void zvContourView::HandleMoved()
{
  if (!this->InVolume)
  {
    this->PutIntoPlane();
  }
  emit changed();
}

// The slice's widget makes its circle anew wherever it is moved to, across z and within the sides
// that it knows of, x and y.
void zvContourView::PutIntoPlane()
{
  if (this->Plane.GetAxis() == 2)
  {
    return;
  }
  zvContourPoint centre = this->Plane.FromWorld(this->SliceWidget->GetCenter());
  if (vtkImageData* image = zvInstanceManager::Instance()->GetCurrentOutput())
  {
    const double* bounds = image->GetBounds();
    const int axes[2] = { this->Plane.GetFirstAxis(), this->Plane.GetSecondAxis() };
    for (std::size_t a = 0; a < 2; ++a)
    {
      const double *low = bounds + 2 * axes[a], *high = low + 1;
      centre[a] = std::min(std::max(centre[a], *low), *high);
    }
  }
  this->ShowContour(zvContourMath::MakeRing(centre, this->SliceWidget->GetRadius(),
    static_cast<std::size_t>(this->SliceWidget->GetResolution())));
}

void zvContourView::HandleMouse(QMouseEvent* event)
{
  const bool isPress =
    event->type() == QEvent::MouseButtonPress && event->button() == Qt::LeftButton;
  if (!isPress || !this->InHand || !this->Visible || this->HasContour)
  {
    return;
  }
  // Through the volume, the widget has placed a ring by itself, of its own size.
  const zvContourPoint centre = this->InVolume
    ? this->Plane.FromWorld(this->VolumeWidget->GetCenter())
    : this->GetPointUnderMouse();
  if (!this->IsInSlice(centre))
  {
    this->ShowContour({});
    this->ShowPrevious({});
    return;
  }
  this->PlaceRing(centre);
  this->View->interactor()->Render();
  emit changed();
}

zvContourPoint zvContourView::GetPointUnderMouse() const
{
  const int* place = this->View->interactor()->GetEventPosition();
  vtkRenderer* renderer = this->View->GetRenderer();
  renderer->SetDisplayPoint(place[0], place[1], 0.0);
  renderer->DisplayToWorld();
  // Seen square to the slice, all places under the mouse are one in it.
  const double* world = renderer->GetWorldPoint();
  return this->Plane.FromWorld(world);
}

bool zvContourView::IsInSlice(const zvContourPoint& point) const
{
  vtkImageData* image = zvInstanceManager::Instance()->GetCurrentOutput();
  if (image == nullptr)
  {
    return false;
  }
  const double* bounds = image->GetBounds();
  const int first = 2 * this->Plane.GetFirstAxis(), second = 2 * this->Plane.GetSecondAxis();
  return point[0] >= bounds[first] && point[0] <= bounds[first + 1] && point[1] >= bounds[second] &&
    point[1] <= bounds[second + 1];
}

void zvContourView::PlaceRing(const zvContourPoint& centre)
{
  this->PassMeasures(
    zvContourMath::MakeRing(centre, this->RingRadius, static_cast<std::size_t>(this->RingCount)));
  this->SliceWidget->SetRadius(this->RingRadius);
  this->VolumeWidget->SetRadius(this->RingRadius);
  if (this->InVolume)
  {
    this->VolumeWidget->CreateInitialSnake();
  }
  else
  {
    this->SliceWidget->CreateInitialSnake();
  }
  this->ShowPrevious({});
  if (this->Plane.GetAxis() == 2)
  {
    this->HasContour = true;
    return;
  }
  this->ShowContour(
    zvContourMath::MakeRing(centre, this->RingRadius, static_cast<std::size_t>(this->RingCount)));
}
