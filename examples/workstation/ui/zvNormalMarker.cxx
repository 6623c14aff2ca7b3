#include "zvNormalMarker.h"

#include "zvImageViewerWidget.h"
#include "zvPlacedNormal.h"

#include "vtkBoundingBox.h"
#include "vtkCommand.h"
#include "vtkRenderer.h"

zvNormalMarker::zvNormalMarker(zvViewGrid* views)
  : zvMarker(views)
{
}

zvNormalMarker::~zvNormalMarker()
{
  if (this->Normal)
  {
    this->Normal->RemoveAllObservers();
  }
}

void zvNormalMarker::Measure(double bounds[6])
{
  constexpr double conesToDiagonal = 70.0;
  this->ConeSize = vtkBoundingBox(bounds).GetDiagonalLength() / conesToDiagonal;
}

void zvNormalMarker::Begin()
{
  this->IsChosen = true;
  if (!this->Normal)
  {
    this->Make();
  }
}

void zvNormalMarker::Make()
{
  this->Normal = vtkSmartPointer<zvPlacedNormal>::New();
  this->Normal->KeyPressActivationOff();
  this->Normal->SetConeSize(this->ConeSize);
  this->Normal->SetRenderer3D(this->GetRenderer3D());
  this->Normal->SetViewerWidgetX(this->GetViewer(0));
  this->Normal->SetViewerWidgetY(this->GetViewer(1));
  this->Normal->SetViewerWidgetZ(this->GetViewer(2));
  this->Normal->AddObserver(vtkCommand::InteractionEvent, this, &zvNormalMarker::HandleChanged);
  this->Normal->AddObserver(vtkCommand::EndInteractionEvent, this, &zvNormalMarker::HandleChanged);
  ++this->Id;
  this->IsHidden = false;
}

void zvNormalMarker::End()
{
  this->IsChosen = false;
  if (this->Normal && !this->Normal->IsPlaced())
  {
    this->RemoveAll();
  }
}

// The viewer that tells an event makes itself the current one.
zvPlacedNormal* zvNormalMarker::GetWidget() const
{
  return this->Normal;
}

void zvNormalMarker::Enter(vtkRenderer*) {}

int zvNormalMarker::GetPointCount() const
{
  return this->Normal && this->Normal->IsPlaced() ? 2 : 0;
}

zvMarker::Vector zvNormalMarker::GetPoint(int index) const
{
  Vector point{};
  index == 0 ? this->Normal->GetPoint1(point.data()) : this->Normal->GetPoint2(point.data());
  return point;
}

void zvNormalMarker::RemovePoint(int)
{
  this->RemoveAll();
}

std::vector<zvMeasurement> zvNormalMarker::Read() const
{
  if (this->GetPointCount() == 0)
  {
    return {};
  }
  zvMeasurement line;
  line.Id = this->Id;
  line.Kind = tr("Normal");
  line.IsHidden = this->IsHidden;
  Vector normal{};
  this->Normal->GetNormal(normal.data());
  line.Value = QString("%1 %2 %3")
                 .arg(normal[0], 0, 'f', 4)
                 .arg(normal[1], 0, 'f', 4)
                 .arg(normal[2], 0, 'f', 4);
  return { line };
}

zvMarker::Vector zvNormalMarker::GetPlace(int) const
{
  return this->GetPointCount() > 0 ? this->GetPoint(0) : Vector{};
}

void zvNormalMarker::SetHidden(int id, bool hidden)
{
  if (!this->IsKnown(id))
  {
    return;
  }
  this->IsHidden = hidden;
  this->Normal->SetVisible(!hidden);
  this->Normal->RenderesUpdate();
  emit this->changed();
}

void zvNormalMarker::Remove(int id)
{
  if (id == this->Id)
  {
    this->RemoveAll();
  }
}

void zvNormalMarker::RemoveAll()
{
  if (!this->Normal)
  {
    return;
  }
  const vtkSmartPointer<zvPlacedNormal> normal = this->Normal;
  this->Normal = nullptr;
  normal->RemoveAllObservers();
  normal->RemoveAllActorsOfRenderers();
  normal->RenderesUpdate();
  if (this->IsChosen) // the next clicks place another
  {
    this->Make();
  }
  emit this->changed();
}

// Moves are not rendered by the widget itself.
void zvNormalMarker::HandleChanged(vtkObject*, unsigned long event, void*)
{
  if (event == vtkCommand::InteractionEvent)
  {
    this->Normal->RenderesUpdate();
  }
  emit this->changed();
}
