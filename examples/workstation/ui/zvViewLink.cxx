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

constexpr double Rounding = 1.0e-6; // a part of a step

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
  int index[2], unread[2];
  viewer->GetCrossIndex(index);
  const int known[2] = { this->CrossSteps[At(axes[0])], this->CrossSteps[At(axes[1])] };
  if (index[0] == known[0] && index[1] == known[1])
  {
    return false; // the movement that the viewer tells was read before
  }
  viewer->GetSlicesMovement(unread);
  for (int line = 0; line < 2; ++line)
  {
    const int missed = index[line] - known[line] - unread[line]; // in moves without their event
    unread[line] += missed;
  }
  Vector target = this->Cross;
  for (int line = 0; line < 2; ++line)
  {
    const Vector normal = this->GetNormal(axes[line]);
    for (std::size_t i = 0; i < 3; ++i)
    {
      target[i] += unread[line] * this->GetStepLength(axes[line]) * normal[i];
    }
  }
  const bool isWhole = this->IsInVolume(target);
  // Twice, as one line may have to make room for the other.
  for (int line : { 0, 1, 0 })
  {
    const int taken = isWhole ? unread[line] : this->ShortenCross(axes[line], unread[line]);
    unread[line] -= taken;
    this->MoveCross(axes[line], taken);
    this->MovePlane(axes[line], taken);
  }
  this->ShowCross();
  return true;
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
  this->FreeObliqueSlices(view);
  for (int axis : LineAxes[view])
  {
    this->Viewers[At(axis)]->Rotate(degrees, normal.data(), this->Cross.data());
    TurnVector(degrees, normal.data(), this->Ups[At(axis)].data());
    this->FreeObliqueSlices(axis);
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
  const int taken = this->Shorten3D(axis, steps);
  this->MoveViewer(axis, taken);
  this->MoveCross(axis, taken);
  this->ShowCross();
  emit moved();
}

// The 3D view lets a plane be dragged out of the volume; it is brought back as far.
int zvViewLink::Shorten3D(int axis, int steps)
{
  const int taken = this->ShortenPlane(axis, steps);
  if (taken != steps)
  {
    this->VolumeView->MovePlane(axis, (taken - steps) * this->GetStepLength(axis));
  }
  return taken;
}

void zvViewLink::Step(int axis, int steps)
{
  if (!this->IsStarted())
  {
    return;
  }
  steps = this->ShortenPlane(axis, steps);
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

void zvViewLink::GoTo(const zvPlanePlace& place)
{
  if (!this->IsStarted())
  {
    return;
  }
  if (place.IsUpright && !this->GetPlace(place.Axis).IsUpright)
  {
    this->Straighten();
  }
  this->TurnTo(place.Normals);
  // That turns a plane also where its picture had stayed as it was, as it does while its own lines
  // are dragged.
  if (this->Ups != place.Ups)
  {
    this->Ups = place.Ups;
    emit moved();
  }
  const double way = place.Offset - this->GetPlace(place.Axis).Offset;
  this->Step(place.Axis, static_cast<int>(std::lround(way / place.Step)));
}

// The one rotation that leads from the present directions to others.
void zvViewLink::TurnTo(const std::array<Vector, 3>& normals)
{
  double now[3][3], then[3][3], rotation[3][3], quaternion[4];
  for (int axis = 0; axis < 3; ++axis)
  {
    const Vector normal = this->GetNormal(axis);
    std::copy_n(normal.data(), 3, now[axis]);
    std::copy_n(normals[At(axis)].data(), 3, then[axis]);
  }
  vtkMath::Transpose3x3(then, then);
  vtkMath::Multiply3x3(then, now, rotation);
  vtkMath::Matrix3x3ToQuaternion(rotation, quaternion);
  const double angle = 2.0 * std::atan2(vtkMath::Norm(quaternion + 1), quaternion[0]);
  if (std::fabs(angle) > LeastTurn)
  {
    this->Turn(
      vtkMath::DegreesFromRadians(angle), { { quaternion[1], quaternion[2], quaternion[3] } });
  }
}

void zvViewLink::Turn(double degrees, const Vector& direction)
{
  if (!this->IsStarted())
  {
    return;
  }
  this->PullCrossIn();
  for (int view = 0; view < 3; ++view)
  {
    Vector axis = direction;
    this->Viewers[At(view)]->Rotate(degrees, axis.data(), this->Cross.data());
    TurnVector(degrees, direction.data(), this->Ups[At(view)].data());
    this->FreeObliqueSlices(view);
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
  emit straightened();
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
  emit straightened();
}

void zvViewLink::MovePlane(int axis, int steps)
{
  if (steps == 0)
  {
    return;
  }
  this->MoveViewer(axis, steps);
  this->VolumeView->MovePlane(axis, steps * this->GetStepLength(axis));
  this->VolumeView->TellSlices();
}

void zvViewLink::MoveViewer(int axis, int steps)
{
  // What the viewer counts for a tilted plane that misses the volume, as one through a corner may
  // by rounding. From there it can go down by one at a time only.
  constexpr int beside = 1;
  zvImageViewerWidget* viewer = this->Viewers[At(axis)];
  while (steps < 0 && viewer->GetPlaneOrientation() == 3 && viewer->GetSliceIndex() == beside)
  {
    viewer->SetSliceIndex(0);
    ++steps;
  }
  viewer->SetSliceIndex(viewer->GetSliceIndex() + steps);
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

// As many of these steps as keep the plane in touch with the volume, or bring it nearer: on a
// tilted plane the cross may leave the volume where the plane has a corner left.
int zvViewLink::ShortenPlane(int axis, int steps) const
{
  const Vector normal = this->GetNormal(axis);
  const double length = this->GetStepLength(axis);
  const double* bounds = this->Image->GetBounds();
  double reach = 0.0, offset = 0.0;
  for (int i = 0; i < 3; ++i)
  {
    const double along = normal[At(i)];
    reach += std::fabs(along) * 0.5 * (bounds[2 * i + 1] - bounds[2 * i]);
    offset += along * (this->Cross[At(i)] - 0.5 * (bounds[2 * i] + bounds[2 * i + 1]));
  }
  const int up = static_cast<int>(std::floor((reach - offset) / length + Rounding));
  const int down = static_cast<int>(std::ceil((-reach - offset) / length - Rounding));
  return steps > 0 ? std::max(std::min(steps, up), 0) : std::min(std::max(steps, down), 0);
}

bool zvViewLink::IsInVolume(const Vector& point) const
{
  const double* bounds = this->Image->GetBounds();
  for (int i = 0; i < 3; ++i)
  {
    const double room = Rounding * this->GetStepLength(i);
    if (point[At(i)] < bounds[2 * i] - room || point[At(i)] > bounds[2 * i + 1] + room)
    {
      return false;
    }
  }
  return true;
}

// As many of these steps as keep the cross in the volume, for a cross that the user drags.
int zvViewLink::ShortenCross(int axis, int steps) const
{
  constexpr double square = 1.0e-6; // less is no way towards a face
  const Vector normal = this->GetNormal(axis);
  const double length = this->GetStepLength(axis);
  const double* bounds = this->Image->GetBounds();
  int down = steps, up = steps;
  for (int i = 0; i < 3; ++i)
  {
    const double way = normal[At(i)] * length;
    if (std::fabs(normal[At(i)]) > square)
    {
      const double one = (bounds[2 * i] - this->Cross[At(i)]) / way;
      const double other = (bounds[2 * i + 1] - this->Cross[At(i)]) / way;
      down = std::max(down, static_cast<int>(std::ceil(std::min(one, other) - Rounding)));
      up = std::min(up, static_cast<int>(std::floor(std::max(one, other) + Rounding)));
    }
  }
  return steps > 0 ? std::max(up, 0) : std::min(down, 0);
}

// The planes turn about the cross: where it stands beside the volume, they move with it to the
// nearest place inside first, so that none of them is turned away from the volume.
void zvViewLink::PullCrossIn()
{
  if (this->IsInVolume(this->Cross))
  {
    return;
  }
  const double* bounds = this->Image->GetBounds();
  Vector way;
  for (int i = 0; i < 3; ++i)
  {
    const double room =
      std::min(2.0 * this->GetStepLength(i), 0.5 * (bounds[2 * i + 1] - bounds[2 * i]));
    const double low = bounds[2 * i] + room, high = bounds[2 * i + 1] - room;
    way[At(i)] = std::min(std::max(this->Cross[At(i)], low), high) - this->Cross[At(i)];
  }
  for (int axis = 0; axis < 3; ++axis)
  {
    const double along = vtkMath::Dot(way.data(), this->GetNormal(axis).data());
    const int steps = static_cast<int>(std::lround(along / this->GetStepLength(axis)));
    this->MovePlane(axis, steps);
    this->MoveCross(axis, steps);
  }
  this->ShowCross();
}

// The viewer leaves the count of an oblique plane to its host, and clamps to it. Here Shorten sees
// to the ends of the volume, so the viewer is given more than any plane can have: its own way of
// counting may take some places beyond the volume for places in it.
void zvViewLink::FreeObliqueSlices(int view)
{
  constexpr int plenty = 1 << 20;
  this->Viewers[At(view)]->SetNumberOfSlices(plenty);
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

zvPlanePlace zvViewLink::GetPlace(int axis) const
{
  zvPlanePlace place;
  place.Axis = axis;
  for (int view = 0; view < 3; ++view)
  {
    place.Normals[At(view)] = this->GetNormal(view);
  }
  place.Ups = this->Ups;
  place.Offset = vtkMath::Dot(place.GetNormal().data(), this->Cross.data());
  place.Step = this->GetStepLength(axis);
  place.IsUpright = this->Viewers[At(axis)]->GetPlaneOrientation() != 3;
  place.Slice = this->VolumeView->GetSlice(axis);
  return place;
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
