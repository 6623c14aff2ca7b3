#include "zvVolumeView.h"

#include "zvCameraStyle.h"
#include "zvSteppedPlanes.h"

#include <QMouseEvent>
#include <QWheelEvent>

#include "vtkCamera.h"
#include "vtkCommand.h"
#include "vtkGenericOpenGLRenderWindow.h"
#include "vtkImageData.h"
#include "vtkMath.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double BackgroundBottom[3] = { 0.05, 0.06, 0.08 };
constexpr double BackgroundTop[3] = { 0.13, 0.15, 0.19 };

// Seen from the front, the left and above: each plane shows a good part of itself.
constexpr double CameraDirection[3] = { 0.75, -1.0, 0.6 };
// A far eye, so that the volume keeps its proportions.
constexpr double CameraAngle = 18.0;

}

zvVolumeView::zvVolumeView(std::shared_ptr<zvRenderGroup> group)
  : Group(std::move(group))
{
  this->setMode3D(true);
  this->setMinimumSize(160, 120);
  this->Renderer->SetBackground(BackgroundBottom[0], BackgroundBottom[1], BackgroundBottom[2]);
  this->Renderer->SetBackground2(BackgroundTop[0], BackgroundTop[1], BackgroundTop[2]);
  this->Renderer->GradientBackgroundOn();
  this->renderWindow()->AddRenderer(this->Renderer);
  this->interactor()->SetInteractorStyle(vtkNew<zvCameraStyle>());
  this->Renderer->AddObserver(
    vtkCommand::ResetCameraClippingRangeEvent, this, &zvVolumeView::FitClippingRange);
  this->Letters.AddTo(this->Renderer);
  this->Letters.SetVisible(false);
  this->Group->Add(this);
  // These come after the toolkit has had the event.
  connect(this, &zvQVTKWidget::mouseEvent, this, &zvVolumeView::HandleMouse);
  connect(this, &zvQVTKWidget::mouseWheelEvent, this, &zvVolumeView::HandleWheel);
}

zvVolumeView::~zvVolumeView()
{
  // The renderer may outlive the view by a reference of somebody else.
  this->Renderer->RemoveObservers(vtkCommand::ResetCameraClippingRangeEvent);
  this->ReleasePlanes();
}

void zvVolumeView::ReleasePlanes()
{
  if (this->Planes != nullptr)
  {
    this->Planes->Delete();
    this->Planes = nullptr;
  }
}

void zvVolumeView::ShowVolume(const zvVolume& volume, const zvWindowValues& value)
{
  {
    const zvOneRender render(this->Group);
    this->ReleasePlanes();
    this->Volume = volume;
    this->Drag.End();
    this->Planes = new zvSteppedPlanes;
    this->Planes->SetImage(volume.Image);
    this->Planes->SetRender(this->Renderer);
    this->Planes->Create();
    this->Planes->Show();
    this->Planes->AddObserver(vtkCommand::StartInteractionEvent, this, &zvVolumeView::HandleVoxel);
    this->Letters.Place(volume.Image->GetBounds());
    this->Letters.SetVisible(volume.IsOrientationKnown);
    this->PlaceCamera();
    this->interactor()->Render();
  }
  this->SetWindowLevel(value);
  this->ToldSlices.fill(-1);
  this->TellSlices();
}

// Whatever an event changes, here or in the other views, it is rendered once at the end.
bool zvVolumeView::event(QEvent* event)
{
  const zvOneRender render(this->Group, event);
  return this->zvQVTKWidget::event(event);
}

void zvVolumeView::mouseDoubleClickEvent(QMouseEvent* event)
{
  if (event->button() == Qt::LeftButton)
  {
    emit maximised();
    return;
  }
  this->zvQVTKWidget::mouseDoubleClickEvent(event);
}

void zvVolumeView::TellSlices()
{
  this->KnownSlices = this->GetSlices();
  std::array<int, 6> slices;
  for (int axis = 0; axis < 3; ++axis)
  {
    slices[static_cast<std::size_t>(axis)] = this->GetSlice(axis);
    slices[static_cast<std::size_t>(axis + 3)] = this->GetSliceCount(axis);
  }
  if (slices != this->ToldSlices)
  {
    this->ToldSlices = slices;
    emit slicesChanged();
  }
}

void zvVolumeView::PlaceCamera()
{
  vtkCamera* camera = this->Renderer->GetActiveCamera();
  camera->SetFocalPoint(0.0, 0.0, 0.0);
  camera->SetPosition(CameraDirection);
  camera->SetViewUp(0.0, 0.0, 1.0);
  this->Renderer->ResetCamera(this->Volume.Image->GetBounds());
  // That has set the renderer's usual angle; go back so far that the volume fills the view as
  // before.
  const double usual = vtkMath::RadiansFromDegrees(0.5 * camera->GetViewAngle());
  camera->SetViewAngle(CameraAngle);
  camera->Dolly(std::sin(vtkMath::RadiansFromDegrees(0.5 * CameraAngle)) / std::sin(usual));
  this->Renderer->ResetCameraClippingRange();
}

// Planes that were turned reach far beyond the volume, though they are drawn only inside it. A
// range that takes them in begins just before the eye, and then lines behind a plane shine through
// it.
void zvVolumeView::FitClippingRange()
{
  if (!this->HasVolume() || this->IsFitting)
  {
    return;
  }
  constexpr double margin = 0.15; // a part of the volume's length, for the letters
  double bounds[6];
  this->Volume.Image->GetBounds(bounds);
  for (int a = 0; a < 3; ++a)
  {
    const double room = margin * (bounds[2 * a + 1] - bounds[2 * a]);
    bounds[2 * a] -= room;
    bounds[2 * a + 1] += room;
  }
  this->IsFitting = true;
  this->Renderer->ResetCameraClippingRange(bounds);
  this->IsFitting = false;
}

int zvVolumeView::GetSlice(int axis) const
{
  return this->GetSlices()[static_cast<std::size_t>(axis)];
}

std::array<int, 3> zvVolumeView::GetSlices() const
{
  if (!this->HasVolume())
  {
    return { { 0, 0, 0 } };
  }
  return { { this->Planes->GetSliceX(), this->Planes->GetSliceY(), this->Planes->GetSliceZ() } };
}

int zvVolumeView::GetSliceCount(int axis) const
{
  return this->HasVolume() ? this->Planes->CountSlices(axis) : 0;
}

zvImage3DPlanes* zvVolumeView::GetPlanes() const
{
  return this->Planes;
}

void zvVolumeView::MovePlane(int axis, double distance)
{
  if (this->HasVolume())
  {
    this->Planes->MovePlane(axis, distance);
    this->KnownSlices = this->GetSlices();
    this->interactor()->Render();
  }
}

void zvVolumeView::SetSlice(int axis, int index)
{
  if (!this->HasVolume())
  {
    return;
  }
  switch (axis)
  {
    case 0:
      this->Planes->SetSliceX(index);
      break;
    case 1:
      this->Planes->SetSliceY(index);
      break;
    default:
      this->Planes->SetSliceZ(index);
      break;
  }
  this->KnownSlices = this->GetSlices();
  this->interactor()->Render();
}

void zvVolumeView::SetWindowLevel(const zvWindowValues& value)
{
  if (!this->HasVolume())
  {
    return;
  }
  {
    const zvOneRender render(this->Group);
    this->Value = value;
    this->Planes->SetWindowLevel(value.Window, value.Level);
  }
  emit windowLevelChanged();
}

double zvVolumeView::GetFullWindow() const
{
  if (!this->HasVolume())
  {
    return 1.0;
  }
  const double* range = this->Volume.Image->GetScalarRange();
  return range[1] > range[0] ? range[1] - range[0] : 1.0;
}

void zvVolumeView::TurnPlanes(double degrees, const Vector& direction, const Vector& center)
{
  if (!this->HasVolume())
  {
    return;
  }
  Vector axis = direction, middle = center;
  this->Planes->Rotate(degrees, axis.data(), middle.data());
  this->interactor()->Render();
  this->TellSlices();
}

void zvVolumeView::TurnPlane(
  int axis, double degrees, const Vector& direction, const Vector& center)
{
  if (!this->HasVolume())
  {
    return;
  }
  Vector about = direction, middle = center;
  switch (axis)
  {
    case 0:
      this->Planes->RotateX(degrees, about.data(), middle.data());
      break;
    case 1:
      this->Planes->RotateY(degrees, about.data(), middle.data());
      break;
    default:
      this->Planes->RotateZ(degrees, about.data(), middle.data());
      break;
  }
  this->interactor()->Render();
}

void zvVolumeView::StraightenPlanes()
{
  if (!this->HasVolume())
  {
    return;
  }
  {
    const zvOneRender render(this->Group);
    vtkNew<vtkCamera> camera;
    camera->DeepCopy(this->Renderer->GetActiveCamera());
    this->Planes->ResetPlanes();
    this->Renderer->GetActiveCamera()->DeepCopy(camera);
    this->interactor()->Render();
  }
  this->TellSlices();
}

void zvVolumeView::ResetCamera()
{
  if (this->HasVolume())
  {
    this->PlaceCamera();
    this->interactor()->Render();
  }
}

void zvVolumeView::HandleMouse(QMouseEvent* event)
{
  if (!this->HasVolume())
  {
    return;
  }
  this->DragWindowLevel(event);
  const std::array<int, 3> before = this->KnownSlices;
  const std::array<int, 3> slices = this->KnownSlices = this->GetSlices();
  for (int axis = 0; axis < 3; ++axis)
  {
    const int steps =
      slices[static_cast<std::size_t>(axis)] - before[static_cast<std::size_t>(axis)];
    if (steps != 0)
    {
      emit planeDragged(axis, steps);
    }
  }
  this->TellSlices();
}

// The right button stays out of the toolkit as long as Shift is up, so it is the program's.
void zvVolumeView::DragWindowLevel(QMouseEvent* event)
{
  switch (event->type())
  {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      if (event->button() == Qt::RightButton && !(event->modifiers() & Qt::ShiftModifier))
      {
        this->Drag.Begin(event->pos(), this->Value, this->GetFullWindow());
      }
      break;
    case QEvent::MouseMove:
      if (this->Drag.IsRunning())
      {
        this->SetWindowLevel(this->Drag.MoveTo(event->pos(), this->size()));
      }
      break;
    case QEvent::MouseButtonRelease:
      if (event->button() == Qt::RightButton)
      {
        this->Drag.End();
      }
      break;
    default:
      break;
  }
}

void zvVolumeView::HandleWheel(QWheelEvent* event)
{
  if (!this->HasVolume())
  {
    return;
  }
  constexpr double perNotch = 1.1, unitsPerNotch = 120.0;
  const double notches = event->angleDelta().y() / unitsPerNotch;
  this->Renderer->GetActiveCamera()->Dolly(std::pow(perNotch, notches));
  this->Renderer->ResetCameraClippingRange();
  this->interactor()->Render();
}

// The widget tells a release after every left drag; before the first voxel is read it has none.
void zvVolumeView::HandleVoxel()
{
  const double index[3] = { this->Planes->GetXOfLastClickedVoxel(),
    this->Planes->GetYOfLastClickedVoxel(), this->Planes->GetZOfLastClickedVoxel() };
  if (index[0] == 0.0 && index[1] == 0.0 && index[2] == 0.0)
  {
    return;
  }
  zvVoxel voxel;
  for (int a = 0; a < 3; ++a)
  {
    voxel.Index[a] = static_cast<int>(std::lround(index[a]));
    voxel.Position[a] =
      this->Volume.Image->GetOrigin()[a] + voxel.Index[a] * this->Volume.Image->GetSpacing()[a];
  }
  voxel.Value = this->Planes->GetIntensityOfLastClickedVoxel();
  emit voxelRead(voxel);
}
