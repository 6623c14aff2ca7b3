#include "zvMarker.h"

#include "zvViewGrid.h"
#include "zvVolumeView.h"

#include "vtkInteractorObserver.h"
#include "vtkRenderWindow.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double Reach = 8.0;               // of the mouse, in pixels
constexpr float PriorityOverViewers = 0.6f; // theirs is 0.5

double DistanceOnScreen(const zvMarker::Vector& point, vtkRenderer* renderer)
{
  renderer->SetWorldPoint(point[0], point[1], point[2], 1.0);
  renderer->WorldToDisplay();
  const double* place = renderer->GetDisplayPoint();
  const int* mouse = renderer->GetRenderWindow()->GetInteractor()->GetEventPosition();
  return std::hypot(place[0] - mouse[0], place[1] - mouse[1]);
}
}

zvMarker::zvMarker(zvViewGrid* views)
  : Views(views)
{
}

void zvMarker::Hover(vtkRenderer* renderer)
{
  this->Hovered = renderer;
  if (renderer != nullptr)
  {
    this->Enter(renderer);
  }
}

void zvMarker::Place(const Vector&, bool) {}

vtkRenderer* zvMarker::GetSliceRenderer(int axis) const
{
  return this->Views->GetSliceView(axis)->GetRenderer();
}

zvImageViewerWidget* zvMarker::GetViewer(int axis) const
{
  return this->Views->GetSliceView(axis)->GetViewer();
}

vtkRenderer* zvMarker::GetRenderer3D() const
{
  return this->Views->GetVolumeView()->GetRenderer();
}

void zvMarker::LetComeFirst(vtkInteractorObserver* widget)
{
  widget->SetPriority(PriorityOverViewers);
  widget->KeyPressActivationOff();
}

QString zvMarker::Describe(const Vector& point)
{
  return QString("%1 %2 %3").arg(Number(point[0]), Number(point[1]), Number(point[2]));
}

bool zvMarker::IsKnown(int id) const
{
  const std::vector<zvMeasurement> lines = this->Read();
  return std::any_of(
    lines.begin(), lines.end(), [id](const zvMeasurement& line) { return line.Id == id; });
}

bool zvMarker::RemoveUnderMouse()
{
  const std::vector<zvMeasurement> lines = this->Read();
  if (this->Hovered == nullptr || lines.empty() || lines.front().IsHidden)
  {
    return false;
  }
  int nearest = -1;
  double least = Reach;
  for (int i = 0; i < this->GetPointCount(); ++i)
  {
    const double distance = DistanceOnScreen(this->GetPoint(i), this->Hovered);
    if (distance <= least)
    {
      nearest = i;
      least = distance;
    }
  }
  if (nearest >= 0)
  {
    this->RemovePoint(nearest);
  }
  return nearest >= 0;
}

void zvMarker::GoTo(int id)
{
  if (this->IsKnown(id))
  {
    emit this->goToWanted(this->GetPlace(id));
  }
}
