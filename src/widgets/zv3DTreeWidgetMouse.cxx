// The tree under the mouse: what presses, moves and releases do.

#include "zv3DTreeWidget.h"

#include "zvDrag.h"
#include "zvEvents.h"
#include "zvMessages.h"
#include "zvPick.h"
#include "zvViewLookup.h"

#include "vtkCellPicker.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

void zv3DTreeWidget::OnLeftButtonDown()
{
  zvTraceMacro("zv3DTreeWidget::OnLeftButtonDown()");
  if (this->State == Inactive)
  {
    return;
  }
  if (!zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor) ||
    !this->GrabUnderPointer())
  {
    this->State = Outside;
    return;
  }
  const auto self = zvEvents::Hold(this); // the label renders in between
  this->SetTextToActorPosition(this->CurrentPoint);
  this->BeginInteraction();
}

void zv3DTreeWidget::OnLeftButtonUp()
{
  zvTraceMacro("zv3DTreeWidget::OnLeftButtonUp()");
  if (this->IsIdle())
  {
    return;
  }
  this->State = Start;
  this->FinishInteraction();
}

void zv3DTreeWidget::OnMiddleButtonDown()
{
  zvTraceMacro("zv3DTreeWidget::OnMiddleButtonDown()");
  if (this->State == Inactive)
  {
    return;
  }
  if (!zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor))
  {
    this->State = Outside;
    return;
  }
  // Deliberate: the state stays, a host may move the view with this button.
  this->BeginInteraction();
}

void zv3DTreeWidget::OnMiddleButtonUp()
{
  zvTraceMacro("zv3DTreeWidget::OnMiddleButtonUp()");
  if (!this->IsIdle())
  {
    this->FinishInteraction(); // deliberate: the state stays
  }
}

// Deliberately empty but for the trace: the right button is the host's, for its menu.
void zv3DTreeWidget::OnRightButtonDown()
{
  zvTraceMacro("zv3DTreeWidget::OnRightButtonDown()");
}

void zv3DTreeWidget::OnRightButtonUp()
{
  zvTraceMacro("zv3DTreeWidget::OnRightButtonUp()");
  if (this->State != Inactive)
  {
    this->RenderViews();
  }
}

void zv3DTreeWidget::OnMouseMove()
{
  double previous[3];
  double current[3];
  if (this->IsIdle() ||
    !zvDrag::GetMotion(
      this->Interactor, this->CurrentRenderer, this->LastPickPosition, previous, current))
  {
    return;
  }
  const auto self = zvEvents::Hold(this); // the label renders in between
  if (this->State == Moving)
  {
    this->MovePoint(previous, current);
  }
  else if (this->State == MovingLine)
  {
    this->MoveLine(previous, current);
  }
  this->TellMotion();
}

void zv3DTreeWidget::OnMouseWheelForward()
{
  zvTraceMacro("zv3DTreeWidget::OnMouseWheelForward()");
  this->FollowWheel();
}

void zv3DTreeWidget::OnMouseWheelBackward()
{
  zvTraceMacro("zv3DTreeWidget::OnMouseWheelBackward()");
  this->FollowWheel();
}

int zv3DTreeWidget::IsClicked()
{
  zvTraceMacro("zv3DTreeWidget::IsClicked()");
  if (this->Pick(this->PointPicker))
  {
    this->CurrentPoint = static_cast<int>(this->PointPicker->GetCellId());
    return 1;
  }
  if (this->Pick(this->LinePicker))
  {
    this->CurrentLine = static_cast<int>(this->LinePicker->GetCellId());
    return 1;
  }
  return 0;
}

bool zv3DTreeWidget::IsIdle() const
{
  return this->State == Start || this->State == Outside || this->State == Inactive;
}

bool zv3DTreeWidget::Pick(vtkCellPicker* picker)
{
  if (!this->Interactor)
  {
    return false;
  }
  const int* position = this->Interactor->GetEventPosition();
  return zvPick::At(picker, position[0], position[1], this->CurrentRenderer) != 0;
}

bool zv3DTreeWidget::GrabUnderPointer()
{
  if (this->Pick(this->PointPicker))
  {
    this->PointPicker->GetPickPosition(this->LastPickPosition);
    this->State = Moving;
    return this->HighlightHandle(static_cast<int>(this->PointPicker->GetCellId())) != 0;
  }
  if (this->Pick(this->LinePicker))
  {
    this->LinePicker->GetPickPosition(this->LastPickPosition);
    this->State = MovingLine;
    return this->HighlightLine(static_cast<int>(this->LinePicker->GetCellId())) != 0;
  }
  return false;
}

void zv3DTreeWidget::FollowWheel()
{
  if (this->State != Inactive)
  {
    this->UpdateScaleLabel();
    this->SizeHandles();
    this->RenderViews();
  }
}
