#include "zvViewLink.h"

#include "zvVolumeView.h"

#include "vtkCommand.h"
#include "vtkImageData.h"
#include "vtkMath.h"
#include "vtkNew.h"
#include "vtkTransform.h"

#include <algorithm>
#include <cmath>

namespace
{
// Which planes the two lines of a viewer stand for.
constexpr int LineAxes[3][2] = { { 1, 2 }, { 2, 0 }, { 0, 1 } };

constexpr unsigned long Watched[] = { vtkCommand::LeftButtonPressEvent,
  vtkCommand::LeftButtonReleaseEvent, vtkCommand::MouseMoveEvent };

// Less is rounding: the direction of a plane is read from its corners.
constexpr double LeastTurn = 1.0e-9; // radians

constexpr int TurningResolution = 4; // as the viewers have it while they turn

void TurnVector(double degrees, const double axis[3], double vector[3])
{
  vtkNew<vtkTransform> turn;
  turn->RotateWXYZ(degrees, axis);
  turn->TransformVector(vector, vector);
}

std::size_t At(int index)
{
  return static_cast<std::size_t>(index);
}
}

zvViewLink::zvViewLink(const std::array<zvImageViewerWidget*, 3>& viewers, zvVolumeView* volumeView)
  : VolumeView(volumeView)
{
  for (std::size_t view = 0; view < viewers.size(); ++view)
  {
    this->Viewers[view] = viewers[view];
    for (unsigned long event : Watched)
    {
      viewers[view]->AddObserver(event, this, &zvViewLink::HandleViewer);
    }
  }
  connect(volumeView, &zvVolumeView::planeDragged, this, &zvViewLink::HandlePlaneDragged);
}

zvViewLink::~zvViewLink()
{
  for (const auto& viewer : this->Viewers)
  {
    if (viewer)
    {
      for (unsigned long event : Watched)
      {
        viewer->RemoveObservers(event);
      }
    }
  }
}

void zvViewLink::Start(vtkImageData* image)
{
  this->Image = image;
  this->PutPlanesUpright();
  emit moved();
}

// The viewers' planes where the 3D view has its own, all along the axes.
void zvViewLink::PutPlanesUpright()
{
  for (int axis = 0; axis < 3; ++axis)
  {
    const int slice = this->VolumeView->GetSlice(axis);
    this->CrossSteps[At(axis)] = slice;
    this->Cross[At(axis)] = this->Image->GetBounds()[2 * axis] + slice * this->GetStepLength(axis);
  }
  for (int view = 0; view < 3; ++view)
  {
    zvImageViewerWidget* viewer = this->Viewers[At(view)];
    viewer->SetImageResolutionFactor(1);
    viewer->SetPlaneOrientation(view);
    viewer->UpdatePlane();
    viewer->SetSliceIndex(this->CrossSteps[At(view)]);
    this->Ups[At(view)] = GetUprightUp(view);
  }
  this->ShowCross();
  this->RememberDirections();
}

int zvViewLink::FindView(vtkObject* viewer) const
{
  for (int view = 0; view < 3; ++view)
  {
    if (this->Viewers[At(view)] == viewer)
    {
      return view;
    }
  }
  return -1;
}

void zvViewLink::HandleViewer(vtkObject* caller, unsigned long event, void*)
{
  const int view = this->FindView(caller);
  if (view < 0 || !this->IsStarted())
  {
    return;
  }
  this->Settle(view);
  if (event == vtkCommand::LeftButtonReleaseEvent)
  {
    this->SetResolutionOfOthers(view, 1);
  }
}

void zvViewLink::Settle(int view)
{
  if (!this->IsStarted())
  {
    return;
  }
  const bool hasTurned = this->TakeTurn(view);
  const bool hasMoved = this->TakeSteps(view);
  if (hasTurned || hasMoved)
  {
    emit moved();
  }
}

bool zvViewLink::TakeSteps(int view)
{
  zvImageViewerWidget* viewer = this->Viewers[At(view)];
  const int* axes = LineAxes[view];
  int index[2], steps[2];
  viewer->GetCrossIndex(index);
  viewer->GetSlicesMovement(steps);
  bool isNew = false;
  for (int line = 0; line < 2; ++line)
  {
    const int axis = axes[line];
    const int unread = index[line] - this->CrossSteps[At(axis)];
    if (unread == 0)
    {
      continue; // these steps were read before, or there were none
    }
    isNew = true;
    // The steps of the last move, unless it came without its event.
    const int taken = this->Shorten(axis, unread == steps[line] ? steps[line] : unread);
    this->MoveCross(axis, taken);
    this->MovePlane(axis, taken);
  }
  if (isNew)
  {
    this->ShowCross();
  }
  return isNew;
}

bool zvViewLink::TakeTurn(int view)
{
  const Vector before = this->Directions[At(view)];
  const Vector now = this->GetDirection(view);
  double across[3];
  vtkMath::Cross(before.data(), now.data(), across);
  const Vector normal = this->GetNormal(view);
  const double angle =
    std::atan2(vtkMath::Dot(across, normal.data()), vtkMath::Dot(before.data(), now.data()));
  if (std::fabs(angle) < LeastTurn)
  {
    return false;
  }
  this->SetResolutionOfOthers(view, TurningResolution);
  this->TurnOthers(view, vtkMath::DegreesFromRadians(angle));
  this->RememberDirections();
  return true;
}

void zvViewLink::TurnOthers(int view, double degrees)
{
  Vector normal = this->GetNormal(view);
  this->CountObliqueSlices(view);
  for (int axis : LineAxes[view])
  {
    this->Viewers[At(axis)]->Rotate(degrees, normal.data(), this->Cross.data());
    TurnVector(degrees, normal.data(), this->Ups[At(axis)].data());
    this->CountObliqueSlices(axis);
    this->VolumeView->TurnPlane(axis, degrees, normal, this->Cross);
  }
  this->VolumeView->TellSlices();
}

void zvViewLink::HandlePlaneDragged(int axis, int steps)
{
  if (!this->IsStarted())
  {
    return;
  }
  zvImageViewerWidget* viewer = this->Viewers[At(axis)];
  viewer->SetSliceIndex(viewer->GetSliceIndex() + steps);
  this->MoveCross(axis, steps);
  this->ShowCross();
  emit moved();
}

void zvViewLink::Step(int axis, int steps)
{
  if (!this->IsStarted())
  {
    return;
  }
  steps = this->Shorten(axis, steps);
  if (steps == 0)
  {
    return;
  }
  this->MovePlane(axis, steps);
  this->MoveCross(axis, steps);
  this->ShowCross();
  emit moved();
}

void zvViewLink::GoTo(int axis, int slice)
{
  this->Step(axis, slice - this->VolumeView->GetSlice(axis));
}

void zvViewLink::Turn(double degrees, const Vector& direction)
{
  if (!this->IsStarted())
  {
    return;
  }
  for (int view = 0; view < 3; ++view)
  {
    Vector axis = direction;
    this->Viewers[At(view)]->Rotate(degrees, axis.data(), this->Cross.data());
    TurnVector(degrees, direction.data(), this->Ups[At(view)].data());
    this->CountObliqueSlices(view);
  }
  this->VolumeView->TurnPlanes(degrees, direction, this->Cross);
  this->RememberDirections();
  emit moved();
}

void zvViewLink::Straighten()
{
  if (!this->IsStarted())
  {
    return;
  }
  const Vector place = this->Cross;
  this->VolumeView->StraightenPlanes();
  for (int axis = 0; axis < 3; ++axis)
  {
    const double low = this->Image->GetBounds()[2 * axis];
    const double slice = (place[At(axis)] - low) / this->GetStepLength(axis);
    this->VolumeView->SetSlice(axis, static_cast<int>(std::lround(slice)));
  }
  this->PutPlanesUpright();
  this->VolumeView->TellSlices();
  emit moved();
}

void zvViewLink::Center()
{
  if (!this->IsStarted())
  {
    return;
  }
  this->VolumeView->StraightenPlanes();
  this->PutPlanesUpright();
  emit moved();
}

void zvViewLink::MovePlane(int axis, int steps)
{
  if (steps == 0)
  {
    return;
  }
  zvImageViewerWidget* viewer = this->Viewers[At(axis)];
  viewer->SetSliceIndex(viewer->GetSliceIndex() + steps);
  // Near the end of its count an oblique plane of the 3D view may stand beyond it.
  const int last = this->VolumeView->GetSliceCount(axis) - 1;
  this->VolumeView->SetSlice(axis, std::min(this->VolumeView->GetSlice(axis), last) + steps);
  this->VolumeView->TellSlices();
}

void zvViewLink::MoveCross(int axis, int steps)
{
  const Vector normal = this->GetNormal(axis);
  for (int i = 0; i < 3; ++i)
  {
    this->Cross[At(i)] += steps * this->GetStepLength(axis) * normal[At(i)];
  }
  this->CrossSteps[At(axis)] += steps;
}

// In the viewer that it was dragged in too: there it may have gone further than the planes can.
void zvViewLink::ShowCross()
{
  for (int view = 0; view < 3; ++view)
  {
    int index[2] = { this->CrossSteps[At(LineAxes[view][0])],
      this->CrossSteps[At(LineAxes[view][1])] };
    this->Viewers[At(view)]->SetRotationCenter(this->Cross.data());
    this->Viewers[At(view)]->SetCrossIndex(index);
  }
}

// How far, in steps, a plane may go down and up so that all views can show it.
int zvViewLink::Shorten(int axis, int steps) const
{
  constexpr double rounding = 1.0e-6; // a part of a step
  const Vector normal = this->GetNormal(axis);
  const double place = vtkMath::Dot(normal.data(), this->Cross.data());
  const std::array<double, 2> reach = this->GetReach(axis);
  const double length = this->GetStepLength(axis);
  const int down = -static_cast<int>(std::floor((place - reach[0]) / length + rounding));
  int up = static_cast<int>(std::floor((reach[1] - place) / length + rounding));
  const int left = this->VolumeView->GetSliceCount(axis) - 1 - this->VolumeView->GetSlice(axis);
  up = std::min(up, std::max(left, 0));
  return std::max(std::min(steps, std::max(up, 0)), std::min(down, 0));
}

// The lowest and the highest place of the volume along a plane's normal.
std::array<double, 2> zvViewLink::GetReach(int axis) const
{
  const Vector normal = this->GetNormal(axis);
  const double* bounds = this->Image->GetBounds();
  std::array<double, 2> reach{ { 0.0, 0.0 } };
  for (int i = 0; i < 3; ++i)
  {
    const double low = normal[At(i)] * bounds[2 * i], high = normal[At(i)] * bounds[2 * i + 1];
    reach[0] += std::min(low, high);
    reach[1] += std::max(low, high);
  }
  return reach;
}

// The viewer leaves the count of an oblique plane to its host: two more than fit into the volume,
// as it counts the first place outside and begins with 1.
void zvViewLink::CountObliqueSlices(int view)
{
  const std::array<double, 2> reach = this->GetReach(view);
  const double fit = std::floor((reach[1] - reach[0]) / this->GetStepLength(view));
  this->Viewers[At(view)]->SetNumberOfSlices(static_cast<int>(fit) + 3);
}

void zvViewLink::SetResolutionOfOthers(int view, int factor)
{
  for (int axis : LineAxes[view])
  {
    zvImageViewerWidget* viewer = this->Viewers[At(axis)];
    if (viewer->GetImageResolutionFactor() != factor)
    {
      viewer->SetImageResolutionFactor(factor);
      viewer->UpdatePlane();
      emit moved();
    }
  }
}

void zvViewLink::RememberDirections()
{
  for (int view = 0; view < 3; ++view)
  {
    this->Directions[At(view)] = this->GetDirection(view);
  }
}

zvViewLink::Vector zvViewLink::GetDirection(int view) const
{
  Vector direction;
  this->Viewers[At(view)]->GetVector1(direction.data());
  vtkMath::Normalize(direction.data());
  return direction;
}

zvViewLink::Vector zvViewLink::GetNormal(int view) const
{
  Vector normal;
  this->Viewers[At(view)]->GetNormal(normal.data());
  return normal;
}

zvViewLink::Vector zvViewLink::GetUprightUp(int view)
{
  constexpr int axial = 2;
  return view == axial ? Vector{ { 0.0, -1.0, 0.0 } } : Vector{ { 0.0, 0.0, 1.0 } };
}

double zvViewLink::GetStepLength(int axis) const
{
  return this->Image->GetSpacing()[axis];
}
