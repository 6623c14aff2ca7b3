#include "zvChainMarker.h"

#include "zv3DRulerWidget.h"

#include "vtkCommand.h"
#include "vtkMath.h"
#include "vtkRenderer.h"

#include <algorithm>
#include <cmath>

zvChainMarker::zvChainMarker(zvViewGrid* views)
  : zvMarker(views)
  , Chain(vtkSmartPointer<zv3DRulerWidget>::Take(zv3DRulerWidget::New()))
{
  this->SetUp(this->Chain.Get());
  this->Chain->SetRenderer3D(this->GetRenderer3D());
  this->Chain->AddObserver(vtkCommand::InteractionEvent, this, &zvChainMarker::HandleMoved);
}

zvChainMarker::~zvChainMarker()
{
  this->Chain->RemoveObservers(vtkCommand::InteractionEvent);
  this->Chain->SetEnabled(0);
}

zv3DRulerWidget* zvChainMarker::GetWidget() const
{
  return this->Chain;
}

void zvChainMarker::Enter(vtkRenderer* renderer)
{
  this->Chain->SetCurrentRender(renderer);
}

// Spheres are sized for the volume until a pick tells their depth.
void zvChainMarker::Measure(double bounds[6])
{
  this->Chain->PlaceWidget(bounds);
}

bool zvChainMarker::IsHeld()
{
  return this->Chain->GetState() == zv3DRulerWidget::Moving;
}

void zvChainMarker::Place(const Vector& point, bool isControlled)
{
  Vector place = point;
  this->Chain->SetEnabled(1);
  const bool isOnSegment = this->Chain->IsLine() != 0;
  if (isOnSegment && isControlled)
  {
    this->Chain->InsertHandleOnLine(place.data());
    this->Numbers.InsertAt(this->FindInserted(point));
  }
  else if (!isOnSegment)
  {
    this->Chain->AddHandle(place.data(), 0);
    this->Numbers.Append();
  }
  emit this->changed();
}

// The widget splits the segment that the press has selected, and does not tell which that is.
int zvChainMarker::FindInserted(const Vector& point) const
{
  int index = 1;
  while (index < this->GetPointCount() && this->GetPoint(index) != point)
  {
    ++index;
  }
  return index;
}

zvMarker::Vector zvChainMarker::GetPoint(int index) const
{
  Vector point{};
  this->Chain->GetHandlePosition(index, point.data());
  return point;
}

// A drag of what goes is over. The label would stay that of a segment which is no more: it goes to
// the one that has closed the gap, or to the last.
void zvChainMarker::RemovePoint(int index)
{
  this->Chain->SetState(zv3DRulerWidget::Start);
  this->Chain->SetCurrentActorIndex(index);
  this->Chain->RemovePointSelected();
  this->Numbers.RemoveAt(index);
  if (this->GetPointCount() > 1)
  {
    this->Chain->SetCurrentActorIndex(std::min(index, this->GetPointCount() - 1));
  }
  emit this->changed();
}

double zvChainMarker::GetSegmentLength(int end) const
{
  const Vector from = this->GetPoint(end - 1);
  const Vector to = this->GetPoint(end);
  return std::sqrt(vtkMath::Distance2BetweenPoints(from.data(), to.data()));
}

std::vector<zvMeasurement> zvChainMarker::Read() const
{
  std::vector<zvMeasurement> lines;
  double total = 0.0;
  for (int i = 0; i < this->GetPointCount(); ++i)
  {
    zvMeasurement line;
    line.Id = this->Numbers.GetId(i);
    line.Kind = i == 0 ? tr("Chain") : tr("Chain segment");
    line.Unit = "mm";
    line.IsHidden = this->Chain->GetEnabled() == 0;
    const double length = i == 0 ? 0.0 : this->GetSegmentLength(i);
    total += length;
    line.Value = Number(length);
    lines.push_back(line);
  }
  if (!lines.empty())
  {
    lines.front().Value = Number(total);
  }
  return lines;
}

zvMarker::Vector zvChainMarker::GetPlace(int id) const
{
  return this->GetPoint(std::max(this->Numbers.Find(id), 0));
}

void zvChainMarker::SetHidden(int id, bool hidden)
{
  if (!this->IsKnown(id))
  {
    return;
  }
  this->Chain->SetCurrentRender(this->GetRenderer3D());
  this->Chain->SetEnabled(hidden ? 0 : 1);
  emit this->changed();
}

// The first point's line is that of the whole chain.
void zvChainMarker::Remove(int id)
{
  const int index = this->Numbers.Find(id);
  if (index == 0)
  {
    this->RemoveAll();
  }
  else if (index > 0)
  {
    this->RemovePoint(index);
  }
}

// Disabled first: the widget would keep its observers and be answered twice later.
void zvChainMarker::RemoveAll()
{
  this->Chain->SetEnabled(0);
  this->Chain->Clear();
  this->Numbers.Clear();
  emit this->changed();
}

void zvChainMarker::HandleMoved(vtkObject*, unsigned long, void*)
{
  emit this->changed();
}
