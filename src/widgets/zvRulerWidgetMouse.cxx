// How the ruler answers the mouse: it keeps the drags, its crosses move what is dragged.

#include "zvRulerWidget.h"

#include "zvDispatch.h"
#include "zvDrag.h"
#include "zvPick.h"
#include "zvPointWidget.h"
#include "zvViewLookup.h"

#include "vtkAssemblyNode.h"
#include "vtkAssemblyPath.h"
#include "vtkCallbackCommand.h"
#include "vtkCellPicker.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

bool zvRulerWidget::IsClicked()
{
  return this->Pick(this->HandlePicker) || this->Pick(this->LinePicker);
}

int zvRulerWidget::ForwardEvent(unsigned long event)
{
  if (!this->CurrentPointWidget)
  {
    return 0;
  }
  zvPointWidget::ProcessEvents(this, event, this->CurrentPointWidget, nullptr);
  return 1;
}

void zvRulerWidget::OnLeftButtonDown()
{
  if (!zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor))
  {
    this->State = Outside;
    return;
  }
  if (this->Pick(this->HandlePicker))
  {
    // Before the observers, who may pick, too.
    vtkProp* handle = this->HandlePicker->GetPath()->GetFirstNode()->GetViewProp();
    if (!this->BeginInteraction())
    {
      return;
    }
    this->State = MovingHandle;
    this->HighlightHandle(handle);
  }
  else if (this->Pick(this->LinePicker))
  {
    if (!this->BeginInteraction())
    {
      return;
    }
    this->State = MovingLine;
    this->HighlightLine(1);
  }
  else
  {
    this->State = Outside;
    this->HighlightHandle(nullptr);
    return;
  }
  this->EnablePointWidget();
  if (!this->ForwardEvent(vtkCommand::LeftButtonPressEvent))
  {
    zvViewLookup::Render(this->Interactor);
  }
}

void zvRulerWidget::OnLeftButtonUp()
{
  if (this->State == Start || this->State == Outside)
  {
    return;
  }
  this->State = Start;
  this->HighlightHandle(nullptr);
  this->HighlightLine(0);
  this->FinishInteraction();
}

void zvRulerWidget::OnMiddleButtonDown()
{
  if (!zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor))
  {
    this->State = Outside;
    return;
  }
  const bool onHandle = this->Pick(this->HandlePicker);
  // Also after a hit on an end: the body's cross is put where the line was picked last.
  const bool onLine = this->Pick(this->LinePicker);
  if (!onHandle && !onLine)
  {
    this->State = Outside;
    return;
  }
  if (!this->BeginInteraction())
  {
    return;
  }
  this->State = MovingLine;
  this->HighlightHandles(1);
  this->HighlightLine(1);
  this->EnablePointWidget();
  // Deliberate: handed on as a left press, with which a point widget moves without its bounds.
  this->ForwardEvent(vtkCommand::LeftButtonPressEvent);
  zvViewLookup::Render(this->Interactor);
}

void zvRulerWidget::OnMiddleButtonUp()
{
  if (this->State == Start || this->State == Outside)
  {
    return;
  }
  this->State = Start;
  this->HighlightLine(0);
  this->HighlightHandles(0);
  this->FinishInteraction();
}

// Deliberately empty: the right button is the host's, for its menu.
void zvRulerWidget::OnRightButtonDown() {}
void zvRulerWidget::OnRightButtonUp() {}

void zvRulerWidget::OnMouseMove()
{
  double previous[3];
  double current[3];
  if (this->State == Start || this->State == Outside ||
    !zvDrag::GetMotion(
      this->Interactor, this->CurrentRenderer, this->LastPickPosition, previous, current))
  {
    return;
  }
  int rendered = 0;
  if (this->State == Scaling)
  {
    const int* position = this->Interactor->GetEventPosition();
    this->Scale(previous, current, position[0], position[1]);
  }
  else
  {
    this->LabelFollowsEnds = true;
    this->UpdateLengthLabel(); // the point widget renders, too, when the ends have to stay
    rendered = this->ForwardEvent(vtkCommand::MouseMoveEvent);
    this->LabelFollowsEnds = false;
  }
  this->UpdateLengthLabel();
  this->EventCallbackCommand->SetAbortFlag(1);
  this->InvokeEvent(vtkCommand::InteractionEvent, nullptr);
  if (!rendered)
  {
    zvViewLookup::Render(this->Interactor);
  }
}

void zvRulerWidget::OnMouseWheelForward()
{
  this->UpdateScaleLabel();
  this->SizeHandles();
  zvViewLookup::Render(this->Interactor);
}

void zvRulerWidget::OnMouseWheelBackward()
{
  this->UpdateScaleLabel();
  this->SizeHandles();
  zvViewLookup::Render(this->Interactor);
}

void zvRulerWidget::ProcessEvents(
  vtkObject* vtkNotUsed(object), unsigned long event, void* clientdata, void* vtkNotUsed(calldata))
{
  // An observer may release the widget while its handler runs.
  const vtkSmartPointer<zvRulerWidget> self = static_cast<zvRulerWidget*>(clientdata);
  zvDispatch::ToHandler(self.GetPointer(), event);
}

bool zvRulerWidget::Pick(vtkCellPicker* picker)
{
  if (!this->Interactor)
  {
    return false;
  }
  const int* position = this->Interactor->GetEventPosition();
  return zvPick::At(picker, position[0], position[1], this->CurrentRenderer) != 0 &&
    picker->GetPath() != nullptr;
}

// False if an observer has disabled the widget.
bool zvRulerWidget::BeginInteraction()
{
  this->EventCallbackCommand->SetAbortFlag(1);
  if (this->Interactor->GetRenderWindow())
  {
    this->StartInteraction();
  }
  this->InvokeEvent(vtkCommand::StartInteractionEvent, nullptr);
  return this->Enabled != 0;
}

void zvRulerWidget::FinishInteraction()
{
  this->SizeHandles();
  const int rendered = this->ForwardEvent(vtkCommand::LeftButtonReleaseEvent);
  this->DisablePointWidget();
  this->EventCallbackCommand->SetAbortFlag(1);
  if (this->Interactor && this->Interactor->GetRenderWindow())
  {
    this->EndInteraction();
  }
  this->InvokeEvent(vtkCommand::EndInteractionEvent, nullptr);
  if (!rendered)
  {
    zvViewLookup::Render(this->Interactor);
  }
}
