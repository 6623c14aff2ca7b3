// The user's hand.
#include "zv3DRulerWidget.h"

#include "zvDrag.h"
#include "zvMessages.h"
#include "zvViewLookup.h"
#include "zvViewPicker.h"

#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

int zv3DRulerWidget::IsClicked()
{
  zvTraceMacro("zv3DRulerWidget::IsClicked()");
  return this->CurrentPoint != -1 && this->Pick(this->PointPicker) ? 1 : 0;
}

int zv3DRulerWidget::IsLine()
{
  zvTraceMacro("zv3DRulerWidget::IsLine()");
  return this->CurrentLine != -1 && this->Pick(this->LinePicker) ? 1 : 0;
}

void zv3DRulerWidget::OnLeftButtonDown()
{
  zvTraceMacro("zv3DRulerWidget::OnLeftButtonDown()");
  if (!zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor))
  {
    this->State = Outside;
    return;
  }
  if (vtkProp* const point = this->Pick(this->PointPicker))
  {
    this->CurrentPoint = this->HighlightHandle(point);
    this->State = Moving;
    this->CurrentLine = this->HighlightLine(this->CurrentPoint - 1);
    this->SetTextToActorPosition(this->CurrentPoint);
    this->HighlightHandle(this->CurrentPoint);
  }
  else if (vtkProp* const segment = this->Pick(this->LinePicker))
  {
    this->CurrentLine = this->HighlightLine(segment); // Deliberate: nothing to drag
  }
  else
  {
    this->CurrentPoint = this->HighlightHandle(-1);
    this->CurrentLine = this->HighlightLine(-1);
    this->State = Outside;
    return;
  }
  this->BeginInteraction();
}

void zv3DRulerWidget::OnLeftButtonUp()
{
  zvTraceMacro("zv3DRulerWidget::OnLeftButtonUp()");
  if (this->State == Start || this->State == Outside)
  {
    return;
  }
  this->State = Start;
  this->HighlightHandle(this->CurrentHandle);
  this->SizeHandles();
  this->FinishInteraction();
}

void zv3DRulerWidget::OnMiddleButtonDown()
{
  zvTraceMacro("zv3DRulerWidget::OnMiddleButtonDown()");
  if (!zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor))
  {
    this->State = Outside;
    return;
  }
  if (!this->Interactor->GetControlKey())
  {
    this->State = Moving;
  }
  // Deliberate: what is hit does not matter, this button fetches the selected point from anywhere.
  // The position that is picked becomes the depth of the drag.
  this->Pick(this->PointPicker);
  this->BeginInteraction();
}

void zv3DRulerWidget::OnMiddleButtonUp()
{
  zvTraceMacro("zv3DRulerWidget::OnMiddleButtonUp()");
  if (this->State == Start || this->State == Outside)
  {
    return;
  }
  this->State = Start;
  this->SizeHandles();
  this->FinishInteraction();
}

// Deliberately empty but for the trace: the right button is the host's, for its menu.
void zv3DRulerWidget::OnRightButtonDown()
{
  zvTraceMacro("zv3DRulerWidget::OnRightButtonDown()");
}

void zv3DRulerWidget::OnRightButtonUp()
{
  zvTraceMacro("zv3DRulerWidget::OnRightButtonUp()");
  this->SizeHandles();
  this->RenderViews();
}

void zv3DRulerWidget::OnMouseMove()
{
  double previous[3];
  double pick[3];
  if (this->State == Start || this->State == Outside ||
    !zvDrag::GetMotion(
      this->Interactor, this->CurrentRenderer, this->LastPickPosition, previous, pick))
  {
    return;
  }
  if (this->State == Moving && this->CurrentHandle)
  {
    this->MovePoint(previous, pick);
  }
  if (this->ProjectToPlane)
  {
    this->ProjectPointsToPlane();
  }
  this->TellMotion();
}

void zv3DRulerWidget::OnMouseWheelForward()
{
  zvTraceMacro("zv3DRulerWidget::OnMouseWheelForward()");
  this->UpdateScaleLabel();
  this->SizeHandles();
  this->RenderViews();
}

void zv3DRulerWidget::OnMouseWheelBackward()
{
  zvTraceMacro("zv3DRulerWidget::OnMouseWheelBackward()");
  this->UpdateScaleLabel();
  this->SizeHandles();
  this->RenderViews();
}

vtkProp* zv3DRulerWidget::Pick(vtkCellPicker* picker)
{
  if (!this->Interactor)
  {
    return nullptr;
  }
  const int* position = this->Interactor->GetEventPosition();
  return zvViewPicker::PickProp(picker, position[0], position[1], this->CurrentRenderer);
}
