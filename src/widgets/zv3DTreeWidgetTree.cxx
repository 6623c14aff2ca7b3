// The tree itself: growing, loading, selecting and moving it, and its label.

#include "zv3DTreeWidget.h"

#include "zvEvents.h"
#include "zvFourViews.h"
#include "zvInstanceManager.h"
#include "zvLengthLabel.h"
#include "zvMessages.h"
#include "zvPointTree.h"

#include "vtkActor.h"
#include "vtkCamera.h"
#include "vtkCellPicker.h"
#include "vtkFollower.h"
#include "vtkImageData.h"
#include "vtkLineSource.h"
#include "vtkMath.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"
#include "vtkRenderer.h"
#include "vtkSphereSource.h"
#include "vtkVectorText.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double LabelSize = 1.0; // millimetres
}

void zv3DTreeWidget::AddHandle(double* x, int vtkNotUsed(index))
{
  zvTraceMacro("zv3DTreeWidget::AddHandle(double x[3])");
  if (!this->CanAdd(x))
  {
    return;
  }
  const auto self = zvEvents::Hold(this); // the label renders in between
  const double position[3] = { x[0], x[1], x[2] };
  this->State = Start;
  const vtkIdType id = zvPointTree::AppendPoint(this->TreePoints, position);
  this->TreeLines->GetPoints()->InsertNextPoint(position);
  zvPointTree::Finish(this->TreePoints);
  this->SelectedPointSource->SetCenter(position[0], position[1], position[2]);
  if (id > 0)
  {
    this->JoinToSelection(static_cast<int>(id), position);
  }
  this->CurrentPoint = static_cast<int>(this->TreePoints->GetNumberOfPoints()) - 1;
  this->CurrentLine = static_cast<int>(this->TreeLines->GetNumberOfLines()) - 1;
  this->RenderViews();
}

void zv3DTreeWidget::LoadTree(vtkPolyData* tree)
{
  // Deliberate: hosts know the text as it is.
  zvTraceMacro("zv3DTreeWidget::LoadTree(double x[3])");
  if (!this->CanLoad(tree))
  {
    return;
  }
  const auto self = zvEvents::Hold(this);
  this->State = Start;
  zvPointTree::CopySegments(tree, this->TreeLines);
  zvPointTree::ReplaceVertices(this->TreePoints, this->TreeLines);
  this->CurrentPoint = static_cast<int>(this->TreePoints->GetNumberOfPoints()) - 1;
  this->CurrentLine = static_cast<int>(this->TreeLines->GetNumberOfLines()) - 1;
  const bool hasSegment = this->CurrentLine >= 0;
  // Deliberate: the label comes first, with the length of the selection before.
  this->SetTextToActorPosition(hasSegment ? this->CurrentPoint : 0);
  hasSegment ? this->MoveSelectionToSegment(this->CurrentLine) : this->MoveSelectionToRoot();
  this->RenderViews();
}

void zv3DTreeWidget::GetTree(vtkPolyData* tree)
{
  zvTraceMacro("zv3DTreeWidget::GetTree(vtkPolyData *tree)");
  if (!tree)
  {
    vtkGenericWarningMacro("give data to copy the tree to...");
    return;
  }
  zvPointTree::CopySegments(this->TreeLines, tree);
}

void zv3DTreeWidget::Clear()
{
  zvTraceMacro("zv3DTreeWidget::Clear(void)");
  const auto self = zvEvents::Hold(this);
  if (this->Interactor && this->TakePokedRenderer())
  {
    this->SetEnabled(0);
    this->TakeOutOfAllViews(); // what is replaced here could not be taken out any more
    this->PointPicker->InitializePickList();
    this->LinePicker->InitializePickList();
    this->BuildPoints();
    this->BuildLines();
    this->TextActor->VisibilityOff();
  }
  this->RenderViews();
}

int zv3DTreeWidget::HighlightHandle(int index)
{
  zvTraceMacro("zv3DTreeWidget::HighlightHandle(int index)");
  if (index == -1)
  {
    this->Deselect();
    this->HideInViews(this->TextActor);
    return 0;
  }
  if (!this->HasPoint(index) || !this->HasViews("selecting a point"))
  {
    return 0;
  }
  if (index == 0)
  {
    this->ShowRoot();
    return 1;
  }
  if (!this->HasSegment(index - 1) || !this->HasCurrentView("selecting a point"))
  {
    return 0;
  }
  this->ShowSegment(index - 1);
  this->ShowLabel();
  return 1;
}

int zv3DTreeWidget::HighlightLine(int index)
{
  zvTraceMacro("zv3DTreeWidget::HighlightLine(int index)");
  if (index == -1)
  {
    // Deliberate: the label stays where it is.
    this->Deselect();
    return 0;
  }
  if (!this->HasSegment(index) || !this->HasViews("selecting a segment"))
  {
    return 0;
  }
  this->ShowSegment(index);
  return 1;
}

void zv3DTreeWidget::MovePoint(double* p1, double* p2)
{
  zvTraceMacro("zv3DTreeWidget::MovePoint(double *p1, double *p2)");
  const int point = this->CurrentPoint;
  double bounds[6];
  if (!this->HasPoint(point) || !this->FindDragBounds("moving a point", p1, p2, bounds))
  {
    return;
  }
  const auto self = zvEvents::Hold(this); // the label renders in between
  double position[3];
  this->SelectedPointSource->GetCenter(position);
  zvFourViews::MoveWithin(bounds, p1, p2, position);
  this->SelectedPointSource->SetCenter(position);
  this->WritePoint(point, position);
  if (point > 0)
  {
    this->SelectedLineSource->SetPoint2(position);
  }
  this->SetTextToActorPosition(point);
  this->SelectedPointSource->Update();
  this->SelectedLineSource->Update();
}

void zv3DTreeWidget::MoveLine(double* p1, double* p2)
{
  // Deliberate: both moves have one text.
  zvTraceMacro("zv3DTreeWidget::MovePoint(double *p1, double *p2)");
  double bounds[6];
  if (!this->HasSegment(this->CurrentLine) ||
    !this->FindDragBounds("moving a segment", p1, p2, bounds))
  {
    return;
  }
  zvPointTree::Segment segment;
  zvPointTree::FindSegment(this->TreeLines, this->CurrentLine, segment);
  const auto self = zvEvents::Hold(this);
  // From the segment's own points: in a tree that was loaded over another the others differ.
  double parent[3];
  double child[3];
  zvPointTree::FindEnds(this->TreeLines, this->CurrentLine, parent, child);
  // Deliberate: each end by itself, so that a segment pressed against a face changes its length.
  zvFourViews::MoveWithin(bounds, p1, p2, parent);
  zvFourViews::MoveWithin(bounds, p1, p2, child);
  this->MoveSelectionTo(parent, child);
  this->WritePoint(segment.Parent, parent);
  this->WritePoint(segment.Child, child);
  this->SetTextToActorPosition(this->CurrentPoint);
  this->SelectedPointSource->Update();
  this->SelectedLineSource->Update();
}

void zv3DTreeWidget::SetTextToActorPosition(int index)
{
  // Deliberate: hosts know the text as it is.
  zvTraceMacro("zv3DTreeWidget::SetTextToActorPosition(vtkProp *prop)");
  if (!this->HasViews("refreshing the label") || !this->HasCurrentView("refreshing the label"))
  {
    return;
  }
  vtkCamera* camera = this->CurrentRenderer->GetActiveCamera();
  this->TextActor->SetCamera(camera);
  this->HideInViews(this->TextActor);
  if (index != 0)
  {
    const double* first = this->SelectedLineSource->GetPoint1();
    const double* second = this->SelectedLineSource->GetPoint2();
    const double length = std::sqrt(vtkMath::Distance2BetweenPoints(first, second));
    this->ShowLabel();
    this->TextSource->SetText(zvLengthLabel::OfLength(length).c_str());
    zvLengthLabel::SetSize(this->TextActor, LabelSize);
    double position[3];
    vtkMath::Subtract(second, camera->GetDirectionOfProjection(), position);
    this->TextActor->SetPosition(position);
  }
  this->RenderViews();
}

bool zv3DTreeWidget::HasPoint(int index)
{
  const bool isThere =
    zvPointTree::HasPoint(this->TreePoints, index) && zvPointTree::HasPoint(this->TreeLines, index);
  if (!isThere)
  {
    vtkGenericWarningMacro("there is no point of index " << index << "...");
  }
  return isThere;
}

bool zv3DTreeWidget::HasSegment(int index)
{
  zvPointTree::Segment segment;
  const bool isThere = zvPointTree::FindSegment(this->TreeLines, index, segment) &&
    zvPointTree::HasPoint(this->TreePoints, std::max(segment.Parent, segment.Child));
  if (!isThere)
  {
    vtkGenericWarningMacro("there is no segment of index " << index << "...");
  }
  return isThere;
}

bool zv3DTreeWidget::CanAdd(const double* x)
{
  if (!x)
  {
    vtkGenericWarningMacro("give the point a position...");
    return false;
  }
  const vtkIdType count = this->TreePoints->GetNumberOfPoints();
  if (count != this->TreeLines->GetNumberOfPoints())
  {
    vtkGenericWarningMacro("clear a tree that was loaded over another before adding a point...");
    return false;
  }
  return this->HasViews("adding a point") &&
    (count == 0 || (this->HasPoint(this->CurrentPoint) && this->HasCurrentView("adding a point")));
}

bool zv3DTreeWidget::CanLoad(vtkPolyData* tree)
{
  if (!tree || !zvPointTree::IsTree(tree))
  {
    vtkGenericWarningMacro(
      "give a tree to load: line i - 1 joins a point of a lower index to point i...");
    return false;
  }
  return this->HasViews("loading a tree") && this->HasCurrentView("loading a tree");
}

void zv3DTreeWidget::JoinToSelection(int id, const double x[3])
{
  const vtkIdType parent = this->CurrentPoint;
  double position[3];
  this->TreePoints->GetPoint(parent, position);
  zvPointTree::AppendSegment(this->TreeLines, { parent, id });
  zvPointTree::Finish(this->TreeLines);
  this->SelectedLineSource->SetPoint1(position);
  this->SelectedLineSource->SetPoint2(x[0], x[1], x[2]);
  this->SetTextToActorPosition(id);
}

void zv3DTreeWidget::MoveSelectionTo(const double parent[3], const double child[3])
{
  this->SelectedLineSource->SetPoint1(parent[0], parent[1], parent[2]);
  this->SelectedLineSource->SetPoint2(child[0], child[1], child[2]);
  this->SelectedPointSource->SetCenter(child[0], child[1], child[2]);
}

void zv3DTreeWidget::MoveSelectionToSegment(int index)
{
  double parent[3];
  double child[3];
  if (zvPointTree::FindEnds(this->TreeLines, index, parent, child))
  {
    this->MoveSelectionTo(parent, child);
  }
}

void zv3DTreeWidget::MoveSelectionToRoot()
{
  if (zvPointTree::HasPoint(this->TreePoints, 0))
  {
    double root[3];
    this->TreePoints->GetPoint(0, root);
    this->SelectedPointSource->SetCenter(root);
  }
}

// Deliberate: the selection of AddHandle and of drags stays the one before.
void zv3DTreeWidget::ShowRoot()
{
  this->MoveSelectionToRoot();
  this->ShowInViews(this->SelectedPointActor);
  this->HideInViews(this->SelectedLineActor);
  this->HideInViews(this->TextActor);
}

void zv3DTreeWidget::ShowSegment(int index)
{
  this->MoveSelectionToSegment(index);
  this->ShowInViews(this->SelectedLineActor);
  this->ShowInViews(this->SelectedPointActor);
  this->CurrentLine = index;
  this->CurrentPoint = index + 1;
}

void zv3DTreeWidget::ShowLabel()
{
  this->TextActor->SetCamera(this->CurrentRenderer->GetActiveCamera());
  this->ShowInViews(this->TextActor);
}

void zv3DTreeWidget::Deselect()
{
  this->HideInViews(this->SelectedLineActor);
  this->HideInViews(this->SelectedPointActor);
  this->CurrentPoint = -1;
  this->CurrentLine = -1;
}

bool zv3DTreeWidget::FindDragBounds(
  const char* before, const double* p1, const double* p2, double bounds[6])
{
  if (!p1 || !p2)
  {
    vtkGenericWarningMacro("give both ends of the motion before " << before << "...");
    return false;
  }
  if (!this->HasViews(before) || !this->HasCurrentView(before))
  {
    return false;
  }
  const bool isThere =
    zvFourViews::GetBounds(zvInstanceManager::Instance()->GetCurrentOutput(), bounds);
  if (!isThere)
  {
    vtkGenericWarningMacro("set the current image before " << before << "...");
  }
  return isThere;
}

void zv3DTreeWidget::WritePoint(vtkIdType id, const double position[3])
{
  this->TreePoints->GetPoints()->SetPoint(id, position);
  this->TreeLines->GetPoints()->SetPoint(id, position);
}
