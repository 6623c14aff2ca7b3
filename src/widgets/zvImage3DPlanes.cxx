#include "zvImage3DPlanes.h"

#include "zvEvents.h"
#include "zvImageGrid.h"
#include "zvImagePlaneWidget.h"
#include "zvMessages.h"
#include "zvViewLookup.h"

#include "vtkAlgorithm.h"
#include "vtkAlgorithmOutput.h"
#include "vtkCallbackCommand.h"
#include "vtkCamera.h"
#include "vtkImageData.h"
#include "vtkLODActor.h"
#include "vtkMath.h"
#include "vtkOutlineFilter.h"
#include "vtkPolyDataMapper.h"
#include "vtkProperty.h"
#include "vtkRenderWindow.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

#include <algorithm>
#include <cstddef>

namespace
{
// A plane further from the camera than the root of this does not take a press from no plane; only
// the first plane, which is not compared, does.
const double FarthestDistance2 = 10000000.0;

const double White[3] = { 1.0, 1.0, 1.0 };
const double Red[3] = { 1.0, 0.0, 0.0 };
const double Green[3] = { 0.0, 1.0, 0.0 };
const double Blue[3] = { 0.0, 0.0, 1.0 };
const double Orange[3] = { 1.0, 0.5, 0.0 };

bool IsZero(const double* values, int count)
{
  return std::all_of(values, values + count, [](double value) { return value == 0.0; });
}
}

//------------------------------------------------------------------------------------------------
// Making

zvImage3DPlanes::zvImage3DPlanes()
  : PlaneX(vtkSmartPointer<zvImagePlaneWidget>::Take(new zvImagePlaneWidget))
  , PlaneY(vtkSmartPointer<zvImagePlaneWidget>::Take(new zvImagePlaneWidget))
  , PlaneZ(vtkSmartPointer<zvImagePlaneWidget>::Take(new zvImagePlaneWidget))
  , OutlineActor(vtkSmartPointer<vtkLODActor>::New())
  , OutlineFilter(vtkSmartPointer<vtkOutlineFilter>::New())
  , OutlineMapper(vtkSmartPointer<vtkPolyDataMapper>::New())
{
  this->EventCallbackCommand->SetCallback(zvImage3DPlanes::ProcessEvents);
  this->Interactor = nullptr;
}

zvImage3DPlanes::~zvImage3DPlanes()
{
  this->Enable3DPlanes(false);
  // A plane in the middle of an event outlives this object until the event is over.
  for (zvImagePlaneWidget* plane : this->GetPlanes())
  {
    plane->SetInteractor(nullptr);
  }
  this->RemoveAllObservers();
  this->SetInteractor(nullptr);
  // The class is released by delete as well as by Delete.
  this->SetReferenceCount(0);
}

std::array<zvImagePlaneWidget*, 3> zvImage3DPlanes::GetPlanes()
{
  return { { this->PlaneX, this->PlaneY, this->PlaneZ } };
}

//------------------------------------------------------------------------------------------------
// Image

void zvImage3DPlanes::SetImage(vtkImageData* image)
{
  // Held, as the connection may be all that keeps the image.
  const vtkSmartPointer<vtkImageData> hold = image;
  this->ImagePort = nullptr;
  this->vtk3DWidget::SetInputConnection(nullptr);
  this->Image = image;
  this->ReadImage();
}

void zvImage3DPlanes::SetImageConnection(vtkAlgorithmOutput* port)
{
  this->SetInputConnection(port);
}

void zvImage3DPlanes::SetInputConnection(vtkAlgorithmOutput* port)
{
  if (!port)
  {
    this->SetImage(nullptr);
    return;
  }
  // Held, as the old connection may be all that keeps the port's producer.
  const vtkSmartPointer<vtkAlgorithmOutput> hold = port;
  this->vtk3DWidget::SetInputConnection(port);
  this->ImagePort = port;
  this->RefreshImage();
  if (!this->Image)
  {
    this->SetImage(nullptr);
    return;
  }
  this->ReadImage();
}

// Bring the image of a connection up to date, which may be another object then.
void zvImage3DPlanes::RefreshImage()
{
  if (!this->ImagePort)
  {
    return;
  }
  if (vtkAlgorithm* producer = this->ImagePort->GetProducer())
  {
    producer->Update(this->ImagePort->GetIndex());
  }
  this->Image = vtkImageData::SafeDownCast(this->GetInput());
}

bool zvImage3DPlanes::CanShowImage()
{
  this->RefreshImage();
  if (!this->Image)
  {
    return false;
  }
  if (!zvImageGrid::HasIdentityDirection(this->Image))
  {
    vtkErrorMacro(<< zvImageGrid::DirectionText("image", "the planes do not show it"));
    return false;
  }
  return true;
}

void zvImage3DPlanes::ReadImage()
{
  if (this->Image)
  {
    this->Image->GetDimensions(this->Dimension);
    this->Image->GetSpacing(this->Spacing);
    this->Image->GetExtent(this->Extent);
  }
}

void zvImage3DPlanes::ReadSliceCounts()
{
  const auto planes = this->GetPlanes();
  for (std::size_t i = 0; i < planes.size(); ++i)
  {
    this->Dimension[i] = planes[i]->GetNumberOfSlices();
  }
}

void zvImage3DPlanes::GetDimension(int* dimension)
{
  this->ReadSliceCounts();
  std::copy_n(this->Dimension, 3, dimension);
}

void zvImage3DPlanes::GetSpacing(double* spacing)
{
  std::copy_n(this->Spacing, 3, spacing);
}

void zvImage3DPlanes::GetExtent(int* extent)
{
  std::copy_n(this->Extent, 6, extent);
}

//------------------------------------------------------------------------------------------------
// View

void zvImage3DPlanes::SetRender(vtkRenderer* renderer)
{
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  if (renderer != this->Renderer)
  {
    this->Enable3DPlanes(false);
  }
  this->Renderer = renderer;
  this->RenderWindow = renderer ? renderer->GetRenderWindow() : nullptr;
  this->UseInteractor(this->RenderWindow ? this->RenderWindow->GetInteractor() : nullptr);
}

// The base would also attach to the interactor's characters, and then keep some from the planes.
// It is only asked to watch for the interactor's end.
void zvImage3DPlanes::UseInteractor(vtkRenderWindowInteractor* interactor)
{
  // Attached once and for all, since the press has to come here before it comes to the planes.
  if (interactor && interactor == this->Interactor &&
    interactor->HasObserver(vtkCommand::LeftButtonPressEvent, this->EventCallbackCommand))
  {
    return;
  }
  this->SetInteractor(nullptr);
  this->Interactor = interactor;
  if (interactor)
  {
    this->DeleteObserverTag = interactor->AddObserver(
      vtkCommand::DeleteEvent, this->KeyPressCallbackCommand, this->Priority);
  }
  this->AddObservers();
}

void zvImage3DPlanes::SetInteractor(vtkRenderWindowInteractor* interactor)
{
  if (this->Interactor && interactor != this->Interactor)
  {
    this->Interactor->RemoveObserver(this->EventCallbackCommand);
  }
  this->vtk3DWidget::SetInteractor(interactor);
}

vtkRenderWindow* zvImage3DPlanes::GetRenderWindow()
{
  return this->RenderWindow;
}

void zvImage3DPlanes::RenderView()
{
  vtkRenderWindowInteractor* interactor =
    this->RenderWindow ? this->RenderWindow->GetInteractor() : nullptr;
  zvViewLookup::Render(interactor);
}

void zvImage3DPlanes::InitializeRenderConfiguration()
{
  vtkCamera* camera = this->Renderer->GetActiveCamera();
  camera->SetViewUp(0.0, -1.0, 0.0);
  camera->SetPosition(0.0, 0.0, -1.0);
  camera->SetFocalPoint(0.0, 0.0, 0.0);
  camera->ComputeViewPlaneNormal();
  camera->Dolly(1.5);
  this->Renderer->ResetCameraClippingRange();
  if (this->Image)
  {
    this->Renderer->ResetCamera(this->Image->GetBounds());
  }
  if (this->RenderWindow)
  {
    this->RenderWindow->Render();
  }
}

//------------------------------------------------------------------------------------------------
// Creating and showing

bool zvImage3DPlanes::Create()
{
  if (this->Created)
  {
    return true;
  }
  if (!this->Interactor)
  {
    zvPlainWarningMacro("zvImage3DPlanes::Create -> Interactor not set");
    return false;
  }
  if (!this->CanShowImage())
  {
    if (!this->Image)
    {
      vtkGenericWarningMacro("set image before creating the planes...");
    }
    return false;
  }
  this->Image->GetDimensions(this->Dimension);
  this->ShowOutline(true);
  this->OutlineFilter->Update();
  this->OutlineActor->GetProperty()->SetColor(White[0], White[1], White[2]);
  this->CreateXPlane();
  this->CreateYPlane();
  this->CreateZPlane();
  this->Created = true;
  return true;
}

bool zvImage3DPlanes::isCreated()
{
  return this->Created;
}

void zvImage3DPlanes::CreateXPlane()
{
  this->CreatePlane(this->PlaneX, Red, 0);
}

void zvImage3DPlanes::CreateYPlane()
{
  this->CreatePlane(this->PlaneY, Green, 1);
}

void zvImage3DPlanes::CreateZPlane()
{
  this->CreatePlane(this->PlaneZ, Blue, 2);
}

void zvImage3DPlanes::CreatePlane(zvImagePlaneWidget* plane, const double color[3], int orientation)
{
  plane->SetInteractor(this->Interactor);
  this->GiveImage(plane, true);
  plane->GetPlaneProperty()->SetColor(color[0], color[1], color[2]);
  plane->TextureInterpolateOn();
  plane->SetResliceInterpolate(1);
  plane->SetPlaneOrientation(orientation);
  plane->SetTextureVisibility(1);
  plane->DisplayTextOn();
  plane->SetRightButtonAction(zvImagePlaneWidget::CursorAction);
  plane->GetSelectedPlaneProperty()->SetColor(Orange[0], Orange[1], Orange[2]);
  plane->GetCursorProperty()->SetColor(Orange[0], Orange[1], Orange[2]);
  plane->RestrictPlaneToVolumeOff();
}

void zvImage3DPlanes::GiveImage(zvImagePlaneWidget* plane, bool shown)
{
  if (shown && this->ImagePort)
  {
    plane->SetInputConnection(this->ImagePort);
  }
  else
  {
    plane->SetInput(shown ? this->Image : nullptr);
  }
}

// An outline that is not shown may be without input, and is not asked for it.
void zvImage3DPlanes::ShowOutline(bool shown)
{
  this->OutlineActor->SetVisibility(shown);
  if (!shown)
  {
    this->OutlineFilter->SetInputConnection(nullptr);
    return;
  }
  if (this->ImagePort)
  {
    this->OutlineFilter->SetInputConnection(this->ImagePort);
  }
  else
  {
    this->OutlineFilter->SetInputData(this->Image);
  }
  this->OutlineMapper->SetInputConnection(this->OutlineFilter->GetOutputPort());
  if (this->OutlineActor->GetMapper() != this->OutlineMapper)
  {
    this->OutlineActor->SetMapper(this->OutlineMapper);
    // Or the actor would build levels of detail of its own.
    this->OutlineActor->AddLODMapper(this->OutlineMapper);
  }
}

void zvImage3DPlanes::Show()
{
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  const vtkSmartPointer<vtkRenderer> renderer = this->Renderer.Get();
  if (!this->Interactor || !renderer)
  {
    vtkGenericWarningMacro("set render before showing the planes...");
    return;
  }
  this->Interactor->Enable();
  this->InitializeRenderConfiguration();
  const auto planes = this->GetPlanes();
  for (std::size_t i = 0; i < planes.size(); ++i)
  {
    planes[i]->SetSliceIndex(this->Dimension[i] / 2 - 1);
    planes[i]->SetInteractor(this->Interactor);
    this->EnablePlane(planes[i], true);
  }
  this->AddOutline(renderer);
}

void zvImage3DPlanes::ResetPlanes()
{
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  if (!this->Created || !this->Image || !this->Renderer)
  {
    vtkGenericWarningMacro("create the planes before resetting them...");
    return;
  }
  this->InitializeRenderConfiguration();
  if (!this->Image)
  {
    return; // an observer of the render has taken it away
  }
  const auto planes = this->GetPlanes();
  for (std::size_t i = 0; i < planes.size(); ++i)
  {
    planes[i]->SetPlaneOrientation(static_cast<int>(i));
  }
  this->Image->GetDimensions(this->Dimension);
  for (std::size_t i = 0; i < planes.size(); ++i)
  {
    planes[i]->SetSliceIndex(this->Dimension[i] / 2 - 1);
  }
}

// Unless an observer of what came before has moved the planes to another view.
void zvImage3DPlanes::AddOutline(vtkRenderer* renderer)
{
  if (this->Renderer == renderer)
  {
    renderer->AddActor(this->OutlineActor);
  }
}

// In the renderer that was set: a plane by itself would take the one under the mouse.
void zvImage3DPlanes::EnablePlane(zvImagePlaneWidget* plane, bool on)
{
  if (!on && !plane->GetEnabled())
  {
    return;
  }
  plane->SetDefaultRenderer(this->Renderer);
  plane->SetEnabled(on);
  plane->SetDefaultRenderer(nullptr);
}

void zvImage3DPlanes::Enable3DPlanes(bool on)
{
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  // Held, as the planes may be all that keeps it.
  const vtkSmartPointer<vtkRenderer> renderer = this->Renderer.Get();
  if (!renderer)
  {
    return;
  }
  for (zvImagePlaneWidget* plane : this->GetPlanes())
  {
    this->EnablePlane(plane, on);
  }
  if (on)
  {
    this->AddOutline(renderer);
  }
  else
  {
    renderer->RemoveActor(this->OutlineActor);
  }
  this->RenderView();
}

void zvImage3DPlanes::EnableXPlane(bool on)
{
  this->EnableOnePlane(this->PlaneX, on);
}

void zvImage3DPlanes::EnableYPlane(bool on)
{
  this->EnableOnePlane(this->PlaneY, on);
}

void zvImage3DPlanes::EnableZPlane(bool on)
{
  this->EnableOnePlane(this->PlaneZ, on);
}

void zvImage3DPlanes::EnableOnePlane(zvImagePlaneWidget* plane, bool on)
{
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  const vtkSmartPointer<vtkRenderer> renderer = this->Renderer.Get();
  if (!renderer)
  {
    return;
  }
  this->EnablePlane(plane, on);
  // Again, so that it is drawn last.
  renderer->RemoveActor(this->OutlineActor);
  this->AddOutline(renderer);
  this->RenderView();
}

//------------------------------------------------------------------------------------------------
// Another image

void zvImage3DPlanes::UpdatePlaneX()
{
  this->UpdatePlane(this->PlaneX, this->CanShowImage());
}

void zvImage3DPlanes::UpdatePlaneY()
{
  this->UpdatePlane(this->PlaneY, this->CanShowImage());
}

void zvImage3DPlanes::UpdatePlaneZ()
{
  this->UpdatePlane(this->PlaneZ, this->CanShowImage());
}

void zvImage3DPlanes::UpdatePlane(zvImagePlaneWidget* plane, bool shown)
{
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  double wl[2];
  plane->GetWindowLevel(wl);
  plane->SetInteractor(this->Interactor);
  this->GiveImage(plane, shown);
  plane->SetWindowLevel(wl[0], wl[1], 0);
  plane->UpdatePlacement();
  plane->UpdateNumberOfSlices();
}

void zvImage3DPlanes::Update()
{
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  const bool shown = this->CanShowImage();
  const int slices[3] = { this->GetSliceX(), this->GetSliceY(), this->GetSliceZ() };
  for (zvImagePlaneWidget* plane : this->GetPlanes())
  {
    this->UpdatePlane(plane, shown);
  }
  this->ReadSliceCounts();
  this->SetSliceX(slices[0]);
  this->SetSliceY(slices[1]);
  this->SetSliceZ(slices[2]);
  this->PlaneZ->SetDimensions(this->Dimension[0], this->Dimension[1]);
  this->PlaneX->SetDimensions(this->Dimension[1], this->Dimension[2]);
  this->PlaneY->SetDimensions(this->Dimension[2], this->Dimension[0]);
  // An observer of a render may have taken the image away.
  this->ShowOutline(shown && this->Image);
  if (this->RenderWindow)
  {
    this->RenderWindow->Render();
  }
}

void zvImage3DPlanes::SetWindowLevel(double window, double level)
{
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  for (zvImagePlaneWidget* plane : this->GetPlanes())
  {
    plane->SetWindowLevel(window, level, 0);
  }
}

//------------------------------------------------------------------------------------------------
// Moving the planes

void zvImage3DPlanes::Rotate(double angle, double* axis, double* center)
{
  this->RotateX(angle, axis, center);
  this->RotateY(angle, axis, center);
  this->RotateZ(angle, axis, center);
  // Read anew each time, as a change of one plane's size may change its count.
  this->PlaneX->SetDimensions(this->PlaneY->GetNumberOfSlices(), this->PlaneZ->GetNumberOfSlices());
  this->PlaneY->SetDimensions(this->PlaneZ->GetNumberOfSlices(), this->PlaneX->GetNumberOfSlices());
  this->PlaneZ->SetDimensions(this->PlaneX->GetNumberOfSlices(), this->PlaneY->GetNumberOfSlices());
}

void zvImage3DPlanes::RotateX(double angle, double* axis, double* center)
{
  this->PlaneX->Rotate(angle, axis, center);
}

void zvImage3DPlanes::RotateY(double angle, double* axis, double* center)
{
  this->PlaneY->Rotate(angle, axis, center);
}

void zvImage3DPlanes::RotateZ(double angle, double* axis, double* center)
{
  this->PlaneZ->Rotate(angle, axis, center);
}

void zvImage3DPlanes::SetSliceX(int slice)
{
  this->PlaneX->SetSliceIndex(slice);
}

void zvImage3DPlanes::SetSliceY(int slice)
{
  this->PlaneY->SetSliceIndex(slice);
}

void zvImage3DPlanes::SetSliceZ(int slice)
{
  this->PlaneZ->SetSliceIndex(slice);
}

int zvImage3DPlanes::GetSliceX()
{
  return this->PlaneX->GetSliceIndex();
}

int zvImage3DPlanes::GetSliceY()
{
  return this->PlaneY->GetSliceIndex();
}

int zvImage3DPlanes::GetSliceZ()
{
  return this->PlaneZ->GetSliceIndex();
}

vtkImageData* zvImage3DPlanes::GetSliceImageX()
{
  return this->PlaneX->GetResliceOutput();
}

vtkImageData* zvImage3DPlanes::GetSliceImageY()
{
  return this->PlaneY->GetResliceOutput();
}

vtkImageData* zvImage3DPlanes::GetSliceImageZ()
{
  return this->PlaneZ->GetResliceOutput();
}

void zvImage3DPlanes::PlaceWidget(double bounds[6])
{
  for (zvImagePlaneWidget* plane : this->GetPlanes())
  {
    plane->PlaceWidget(bounds);
  }
}

//------------------------------------------------------------------------------------------------
// Events

void zvImage3DPlanes::AddObservers()
{
  if (this->Interactor)
  {
    zvEvents::Observe(
      this->Interactor, zvEvents::ThreePlanes, this->EventCallbackCommand, this->Priority);
  }
}

void zvImage3DPlanes::ProcessEvents(
  vtkObject* vtkNotUsed(object), unsigned long event, void* clientdata, void* vtkNotUsed(calldata))
{
  // Held, as an observer of what follows may release the object.
  const vtkSmartPointer<zvImage3DPlanes> self = static_cast<zvImage3DPlanes*>(clientdata);
  switch (event)
  {
    case vtkCommand::MouseMoveEvent:
      self->OnMouseMoveEvent();
      break;
    case vtkCommand::LeftButtonPressEvent:
      self->OnLeftButtonPressEvent();
      break;
    case vtkCommand::LeftButtonReleaseEvent:
      self->OnLeftButtonReleaseEvent();
      break;
    case vtkCommand::RightButtonReleaseEvent:
      self->OnRightButtonReleaseEvent();
      break;
    default:
      break;
  }
}

void zvImage3DPlanes::OnMouseMoveEvent()
{
  this->ReadSliceCounts();
}

void zvImage3DPlanes::OnLeftButtonPressEvent()
{
  for (zvImagePlaneWidget* plane : this->GetPlanes())
  {
    // A plane that is hidden, or a press in another viewport, picks nothing and would keep the
    // click that it had.
    plane->SetClicked(0);
    plane->UpdatePointClicked();
  }
  this->PlaneSelected = NoPlane;
  const int nearest = this->FindNearestClickedPlane();
  if (nearest == NoPlane)
  {
    return;
  }
  this->PlaneSelected = nearest;
  this->PlaneX->SetInteraction(nearest == XPlane);
  this->PlaneY->SetInteraction(nearest == YPlane);
  this->PlaneZ->SetInteraction(nearest == ZPlane);
}

int zvImage3DPlanes::FindNearestClickedPlane()
{
  if (!this->Renderer)
  {
    return NoPlane;
  }
  double camera[3];
  this->Renderer->GetActiveCamera()->GetPosition(camera);
  int nearest = NoPlane;
  double best = FarthestDistance2;
  int number = NoPlane;
  for (zvImagePlaneWidget* plane : this->GetPlanes())
  {
    ++number;
    if (!plane->GetClicked())
    {
      continue;
    }
    const double distance2 = vtkMath::Distance2BetweenPoints(plane->GetPointClicked(), camera);
    // Deliberate: the first plane counts from any distance. Of two at one place, the earlier wins.
    if (number == XPlane || best > distance2)
    {
      nearest = number;
      best = distance2;
    }
  }
  return nearest;
}

void zvImage3DPlanes::OnLeftButtonReleaseEvent()
{
  for (zvImagePlaneWidget* plane : this->GetPlanes())
  {
    plane->SetInteraction(1);
  }
  // Deliberate: not cleared between the planes, so a clicked plane that reads nothing repeats the
  // reading of the one before it.
  double reading[4] = { 0.0, 0.0, 0.0, 0.0 };
  for (zvImagePlaneWidget* plane : this->GetPlanes())
  {
    if (!plane->GetClicked())
    {
      continue;
    }
    plane->GetCursorData(reading);
    if (!IsZero(reading, 4))
    {
      std::copy_n(reading, 4, this->LastClickedVoxel);
    }
  }
  if (IsZero(this->LastClickedVoxel, 3))
  {
    this->LastClickedVoxel[3] = 0.0;
  }
  this->ReadSliceCounts();
  if (this->Interactor && this->Interactor->GetRenderWindow())
  {
    this->StartInteraction();
  }
  this->InvokeEvent(vtkCommand::StartInteractionEvent, nullptr);
}

void zvImage3DPlanes::OnRightButtonReleaseEvent()
{
  this->SizeHandles();
}

double zvImage3DPlanes::GetXOfLastClickedVoxel()
{
  return this->LastClickedVoxel[0];
}

double zvImage3DPlanes::GetYOfLastClickedVoxel()
{
  return this->LastClickedVoxel[1];
}

double zvImage3DPlanes::GetZOfLastClickedVoxel()
{
  return this->LastClickedVoxel[2];
}

double zvImage3DPlanes::GetIntensityOfLastClickedVoxel()
{
  return this->LastClickedVoxel[3];
}

int zvImage3DPlanes::GetPlaneSelected()
{
  return this->PlaneSelected;
}

int zvImage3DPlanes::GetState()
{
  const auto planes = this->GetPlanes();
  this->State = this->PlaneSelected == NoPlane ? 0 : planes.at(this->PlaneSelected - 1)->GetState();
  return this->State;
}
