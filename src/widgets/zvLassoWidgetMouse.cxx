// How the lasso answers the mouse: what is grabbed, inserted or appended, and what a drag moves.

#include "zvLassoWidget.h"

#include "zvDispatch.h"
#include "zvDrag.h"
#include "zvInteraction.h"
#include "zvMessages.h"
#include "zvViewLookup.h"

#include "vtkActor.h"
#include "vtkAssemblyNode.h"
#include "vtkAssemblyPath.h"
#include "vtkCallbackCommand.h"
#include "vtkCellPicker.h"
#include "vtkProperty.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

int zvLassoWidget::IsClicked()
{
  zvTraceMacro("zvLassoWidget::IsClicked()");
  return this->Pick(this->HandlePicker) || this->Pick(this->LinePicker) ? 1 : 0;
}

void zvLassoWidget::OnLeftButtonDown()
{
  zvTraceMacro("zvLassoWidget::OnLeftButtonDown()");
  if (this->State == Locked)
  {
    return;
  }
  this->CurveGrabbed = false;
  if (!zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor))
  {
    this->State = Outside;
    return;
  }
  if (this->Pick(this->HandlePicker))
  {
    this->ApplyToHandles(this->HandleProperty);
    this->CurrentHandleIndex = this->HighlightHandle(this->PickedHandle());
    if (this->CurrentHandleIndex == 0 && !this->Closed)
    {
      this->ClosedOn();
    }
    this->State = Moving;
  }
  else if (!this->TakeLineOrSpace())
  {
    this->State = Outside;
    return;
  }
  this->BeginInteraction();
}

void zvLassoWidget::OnLeftButtonUp()
{
  zvTraceMacro("zvLassoWidget::OnLeftButtonUp()");
  if (this->State == Start || this->State == Outside || this->State == Locked)
  {
    return;
  }
  this->State = Start;
  this->HighlightLine(0);
  this->CurveGrabbed = false;
  this->HighlightHandle(nullptr);
  this->SizeHandles();
  this->ApplyToHandles(this->ClosedHandleProperty);
  this->FinishInteraction();
}

void zvLassoWidget::OnMiddleButtonDown()
{
  zvTraceMacro("zvLassoWidget::OnMiddleButtonDown()");
  // Deliberate: a locked lasso can be grabbed with this button. Hosts lock all lassos while the
  // left button draws, and the middle one still moves them.
  this->GrabCurve();
}

void zvLassoWidget::OnMiddleButtonUp()
{
  zvTraceMacro("zvLassoWidget::OnMiddleButtonUp()");
  this->LetCurveGo();
}

// Deliberately empty but for the trace: the right button is the host's, for its menu.
void zvLassoWidget::OnRightButtonDown()
{
  zvTraceMacro("zvLassoWidget::OnRightButtonDown()");
}

void zvLassoWidget::OnRightButtonUp()
{
  zvTraceMacro("zvLassoWidget::OnRightButtonUp()");
  this->SizeHandles();
}

void zvLassoWidget::OnMouseMove()
{
  double previous[3];
  double current[3];
  if (this->State == Start || this->State == Outside || this->State == Locked ||
    !zvDrag::GetMotion(
      this->Interactor, this->CurrentRenderer, this->LastPickPosition, previous, current))
  {
    return;
  }
  this->MoveWithPointer(previous, current);
  this->FollowMotion();
  this->TellMotion();
}

void zvLassoWidget::OnMouseWheelForward()
{
  zvTraceMacro("zvLassoWidget::OnMouseWheelForward()");
  this->SizeHandles();
  zvViewLookup::Render(this->Interactor);
}

void zvLassoWidget::OnMouseWheelBackward()
{
  zvTraceMacro("zvLassoWidget::OnMouseWheelBackward()");
  this->SizeHandles();
  zvViewLookup::Render(this->Interactor);
}

void zvLassoWidget::ProcessEvents(
  vtkObject* vtkNotUsed(object), unsigned long event, void* clientdata, void* vtkNotUsed(calldata))
{
  // An observer may release the widget while its handler runs.
  const vtkSmartPointer<zvLassoWidget> self = static_cast<zvLassoWidget*>(clientdata);
  zvDispatch::ToHandler(self.GetPointer(), event);
}

vtkProp* zvLassoWidget::PickedHandle()
{
  vtkAssemblyPath* path = this->HandlePicker->GetPath();
  return path ? path->GetFirstNode()->GetViewProp() : nullptr;
}

bool zvLassoWidget::TakeLineOrSpace()
{
  this->CurrentHandleIndex = this->HighlightHandle(nullptr);
  if (this->Pick(this->LinePicker))
  {
    this->InsertHandleUnderPointer();
    return true;
  }
  if (this->Closed)
  {
    return false;
  }
  this->AppendHandleUnderPointer();
  return true;
}

void zvLassoWidget::InsertHandleUnderPointer()
{
  double position[3];
  this->LinePicker->GetPickPosition(position);
  this->ApplyToHandles(this->HandleProperty);
  zvViewLookup::Render(this->Interactor);
  this->InsertHandleOnLine(position);
  if (this->Pick(this->HandlePicker))
  {
    this->CurrentHandleIndex = this->HighlightHandle(this->PickedHandle());
    this->State = Moving;
  }
}

void zvLassoWidget::BeginInteraction()
{
  zvInteraction::Tell(this, this->EventCallbackCommand, this->Interactor,
    vtkCommand::StartInteractionEvent, [this] { this->StartInteraction(); });
}

void zvLassoWidget::FinishInteraction()
{
  zvInteraction::Tell(this, this->EventCallbackCommand, this->Interactor,
    vtkCommand::EndInteractionEvent, [this] { this->EndInteraction(); });
}

bool zvLassoWidget::HoldsHandle()
{
  return this->CurrentHandle != nullptr;
}

void zvLassoWidget::TellMotion()
{
  zvInteraction::Tell(
    this, this->EventCallbackCommand, this->Interactor, vtkCommand::InteractionEvent);
}
