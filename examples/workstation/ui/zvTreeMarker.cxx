#include "zvTreeMarker.h"

#include "zv3DTreeWidget.h"
#include "zvTreeBranch.h"

#include <QTimer>

#include "vtkCommand.h"
#include "vtkPolyData.h"
#include "vtkRenderer.h"

#include <algorithm>

zvTreeMarker::zvTreeMarker(zvViewGrid* views)
  : zvMarker(views)
  , Tree(vtkSmartPointer<zv3DTreeWidget>::Take(zv3DTreeWidget::New()))
{
  this->SetUp(this->Tree.Get());
  this->Tree->SetRenderer3D(this->GetRenderer3D());
  this->Tree->AddObserver(vtkCommand::InteractionEvent, this, &zvTreeMarker::HandleMoved);
  this->Tree->AddObserver(vtkCommand::EndInteractionEvent, this, &zvTreeMarker::HandleReleased);
}

zvTreeMarker::~zvTreeMarker()
{
  this->Tree->RemoveObservers(vtkCommand::InteractionEvent);
  this->Tree->RemoveObservers(vtkCommand::EndInteractionEvent);
  this->Tree->SetEnabled(0);
}

zv3DTreeWidget* zvTreeMarker::GetWidget() const
{
  return this->Tree;
}

void zvTreeMarker::Enter(vtkRenderer* renderer)
{
  this->Tree->SetCurrentRender(renderer);
}

bool zvTreeMarker::IsHeld()
{
  const int state = this->Tree->GetState();
  return state == zv3DTreeWidget::Moving || state == zv3DTreeWidget::MovingLine;
}

void zvTreeMarker::Place(const Vector& point, bool)
{
  Vector place = point;
  this->Tree->AddHandle(place.data(), 0);
  this->Tree->GetTree(this->Copy);
  this->Numbers.Append();
  this->Show();
  emit this->changed();
}

// The parts that show the selection stand in the views from the beginning, wherever they are: so a
// tree without points is not shown, and one with a root alone without the selected line.
void zvTreeMarker::Show()
{
  if (this->GetPointCount() > 0)
  {
    this->Tree->SetEnabled(1);
    this->Tree->HighlightHandle(this->GetPointCount() - 1);
  }
}

zvMarker::Vector zvTreeMarker::GetPoint(int index) const
{
  Vector point{};
  this->Copy->GetPoint(index, point.data());
  return point;
}

void zvTreeMarker::RemovePoint(int index)
{
  const std::vector<int> left = zvTreeBranch::ListWithout(this->Copy, index);
  this->Copy->DeepCopy(zvTreeBranch::Keep(this->Copy, left));
  this->Numbers.Keep(left);
  this->Reload();
  emit this->changed();
}

void zvTreeMarker::Reload()
{
  const bool isShown = this->Tree->IsEnabled();
  this->Tree->SetCurrentRender(this->GetRenderer3D());
  this->Tree->SetEnabled(0);
  this->Tree->Clear();
  if (this->GetPointCount() > 0)
  {
    this->Tree->LoadTree(this->Copy);
  }
  if (isShown)
  {
    this->Show();
  }
}

std::vector<zvMeasurement> zvTreeMarker::Read() const
{
  std::vector<zvMeasurement> lines;
  double total = 0.0;
  for (int i = 0; i < this->GetPointCount(); ++i)
  {
    zvMeasurement line;
    line.Id = this->Numbers.GetId(i);
    line.Kind = i == 0 ? tr("Tree") : tr("Tree segment");
    line.Unit = "mm";
    line.IsHidden = !this->Tree->IsEnabled();
    const double length = zvTreeBranch::GetLength(this->Copy, i);
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

zvMarker::Vector zvTreeMarker::GetPlace(int id) const
{
  return this->GetPoint(std::max(this->Numbers.Find(id), 0));
}

void zvTreeMarker::SetHidden(int id, bool hidden)
{
  if (!this->IsKnown(id))
  {
    return;
  }
  this->Tree->SetCurrentRender(this->GetRenderer3D());
  this->Tree->SetEnabled(hidden ? 0 : 1);
  emit this->changed();
}

void zvTreeMarker::Remove(int id)
{
  const int index = this->Numbers.Find(id);
  if (index >= 0)
  {
    this->RemovePoint(index);
  }
}

void zvTreeMarker::RemoveAll()
{
  this->Copy->Initialize();
  this->Numbers.Clear();
  this->Reload();
  emit this->changed();
}

void zvTreeMarker::HandleMoved(vtkObject*, unsigned long, void*)
{
  this->Tree->GetTree(this->Copy);
  emit this->changed();
}

// During a drag only the selection follows the mouse; the tree is brought there afterwards. Not in
// the event: the widget is still at work.
void zvTreeMarker::HandleReleased(vtkObject*, unsigned long, void*)
{
  QTimer::singleShot(0, this,
    [this]
    {
      if (this->Tree->IsEnabled())
      {
        this->Reload();
      }
    });
}
