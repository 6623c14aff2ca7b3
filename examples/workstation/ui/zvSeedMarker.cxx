#include "zvSeedMarker.h"

#include "zvSeedWidget.h"

#include "vtkCommand.h"
#include "vtkRenderer.h"

#include <algorithm>

zvSeedMarker::zvSeedMarker(zvViewGrid* views)
  : zvMarker(views)
  , Seeds(vtkSmartPointer<zvSeedWidget>::Take(zvSeedWidget::New()))
{
  this->SetUp(this->Seeds.Get());
  this->Seeds->Set3DRender(this->GetRenderer3D());
  this->Seeds->AddObserver(vtkCommand::InteractionEvent, this, &zvSeedMarker::HandleMoved);
}

zvSeedMarker::~zvSeedMarker()
{
  this->Seeds->RemoveObservers(vtkCommand::InteractionEvent);
  this->Seeds->SetEnabled(0);
}

zvSeedWidget* zvSeedMarker::GetWidget() const
{
  return this->Seeds;
}

void zvSeedMarker::Enter(vtkRenderer* renderer)
{
  this->Seeds->SetCurrentRender(renderer);
}

// Spheres are sized for the volume until a pick tells their depth.
void zvSeedMarker::Measure(double bounds[6])
{
  this->Seeds->PlaceWidget(bounds);
}

bool zvSeedMarker::IsHeld()
{
  return this->Seeds->GetState() == zvSeedWidget::Moving;
}

void zvSeedMarker::Place(const Vector& point, bool)
{
  Vector place = point;
  this->Seeds->SetEnabled(1);
  this->Seeds->AddHandle(place.data(), 0);
  this->Numbers.Append();
  emit this->changed();
}

zvMarker::Vector zvSeedMarker::GetPoint(int index) const
{
  Vector point{};
  this->Seeds->GetHandlePosition(index, point.data());
  return point;
}

// A drag of what goes is over.
void zvSeedMarker::RemovePoint(int index)
{
  this->Seeds->SetState(zvSeedWidget::Start);
  this->Seeds->SetCurrentActorIndex(index);
  this->Seeds->EraseHandle();
  this->Numbers.RemoveAt(index);
  emit this->changed();
}

std::vector<zvMeasurement> zvSeedMarker::Read() const
{
  std::vector<zvMeasurement> lines;
  for (int i = 0; i < this->GetPointCount(); ++i)
  {
    zvMeasurement line;
    line.Id = this->Numbers.GetId(i);
    line.Kind = tr("Seed");
    line.Value = Describe(this->GetPoint(i));
    line.Unit = "mm";
    line.IsHidden = this->Seeds->GetEnabled() == 0;
    lines.push_back(line);
  }
  return lines;
}

zvMarker::Vector zvSeedMarker::GetPlace(int id) const
{
  return this->GetPoint(std::max(this->Numbers.Find(id), 0));
}

void zvSeedMarker::SetHidden(int id, bool hidden)
{
  if (!this->IsKnown(id))
  {
    return;
  }
  this->Seeds->SetCurrentRender(this->GetRenderer3D());
  this->Seeds->SetEnabled(hidden ? 0 : 1);
  emit this->changed();
}

void zvSeedMarker::Remove(int id)
{
  const int index = this->Numbers.Find(id);
  if (index >= 0)
  {
    this->RemovePoint(index);
  }
}

void zvSeedMarker::RemoveAll()
{
  this->Seeds->SetState(zvSeedWidget::Start);
  this->Seeds->Clear();
  this->Numbers.Clear();
  emit this->changed();
}

void zvSeedMarker::HandleMoved(vtkObject*, unsigned long, void*)
{
  emit this->changed();
}
