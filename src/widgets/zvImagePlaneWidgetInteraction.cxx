// How the image plane answers the mouse and the keys.

#include "zvImagePlaneWidget.h"

#include "zvDrag.h"
#include "zvEvents.h"
#include "zvImageGrid.h"
#include "zvPick.h"
#include "zvPlaneMargins.h"
#include "zvPlaneSource.h"
#include "zvWindowLevel.h"

#include "vtkActor.h"
#include "vtkAlgorithmOutput.h"
#include "vtkCallbackCommand.h"
#include "vtkCell.h"
#include "vtkCellPicker.h"
#include "vtkDataArray.h"
#include "vtkImageData.h"
#include "vtkImageReslice.h"
#include "vtkMath.h"
#include "vtkNew.h"
#include "vtkPointData.h"
#include "vtkProperty.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkTextActor.h"

#include <algorithm>
#include <cstdio>

namespace
{
constexpr double NoValue = 1e299;

enum PressedButton
{
  NoButton = 0,
  LeftButton = 1,
  MiddleButton = 2,
  RightButton = 3
};
}

//------------------------------------------------------------------------------
// Events

void zvImagePlaneWidget::ProcessEvents(
  vtkObject* vtkNotUsed(object), unsigned long event, void* clientdata, void* vtkNotUsed(calldata))
{
  // Held, as an observer of what follows may release the widget.
  const vtkSmartPointer<zvImagePlaneWidget> self = static_cast<zvImagePlaneWidget*>(clientdata);
  self->LastButtonPressed = NoButton;
  switch (event)
  {
    case vtkCommand::LeftButtonPressEvent:
      self->LastButtonPressed = LeftButton;
      self->OnLeftButtonDown();
      break;
    case vtkCommand::LeftButtonReleaseEvent:
      self->LastButtonPressed = LeftButton;
      self->OnLeftButtonUp();
      break;
    case vtkCommand::RightButtonPressEvent:
      self->LastButtonPressed = RightButton;
      self->OnRightButtonDown();
      break;
    case vtkCommand::RightButtonReleaseEvent:
      self->LastButtonPressed = RightButton;
      self->OnRightButtonUp();
      break;
    case vtkCommand::CharEvent:
      self->OnChar();
      break;
    case vtkCommand::MouseMoveEvent:
      self->OnMouseMove();
      break;
    default:
      break;
  }
}

void zvImagePlaneWidget::RunStart(int action)
{
  switch (action)
  {
    case CursorAction:
      this->StartCursor();
      break;
    case SliceMotionAction:
      this->StartSliceMotion();
      break;
    case WindowLevelAction:
      this->StartWindowLevel();
      break;
    default:
      break;
  }
}

void zvImagePlaneWidget::RunStop(int action)
{
  switch (action)
  {
    case CursorAction:
      this->StopCursor();
      break;
    case SliceMotionAction:
      this->StopSliceMotion();
      break;
    case WindowLevelAction:
      this->StopWindowLevel();
      break;
    default:
      break;
  }
}

void zvImagePlaneWidget::OnLeftButtonDown()
{
  if (!this->Interactor)
  {
    return;
  }
  const bool modified = this->Interactor->GetShiftKey() || this->Interactor->GetControlKey();
  this->SetLeftButtonAction(modified ? CursorAction : SliceMotionAction);
  // Deliberate: this press has picked nothing yet, hosts get the place of the pick before it.
  if (auto* picker = vtkCellPicker::SafeDownCast(this->PlanePicker))
  {
    picker->GetPCoords(this->LastPointClicked);
  }
  this->RunStart(this->LeftButtonAction);
}

void zvImagePlaneWidget::OnLeftButtonUp()
{
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  this->RunStop(this->LeftButtonAction);
  this->Clicked = 0;
  std::fill_n(this->PointClicked, 3, 0.0);
}

void zvImagePlaneWidget::OnMiddleButtonDown()
{
  this->RunStart(this->MiddleButtonAction);
}

void zvImagePlaneWidget::OnMiddleButtonUp()
{
  this->RunStop(this->MiddleButtonAction);
}

void zvImagePlaneWidget::OnRightButtonDown()
{
  // Deliberate: it is the left action that changes, until the next left press.
  if (this->Interactor && this->Interactor->GetShiftKey())
  {
    this->SetLeftButtonAction(WindowLevelAction);
  }
  this->RunStart(this->RightButtonAction);
}

void zvImagePlaneWidget::OnRightButtonUp()
{
  this->RunStop(this->RightButtonAction);
}

void zvImagePlaneWidget::OnChar()
{
  if (!this->Interactor)
  {
    return;
  }
  const char key = this->Interactor->GetKeyCode();
  const bool modified = this->Interactor->GetShiftKey() || this->Interactor->GetControlKey();
  if ((key == 'r' || key == 'R') && modified)
  {
    const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
    this->SetWindowLevel(this->OriginalWindow, this->OriginalLevel, 0);
    double wl[2] = { this->CurrentWindow, this->CurrentLevel };
    this->EventCallbackCommand->SetAbortFlag(1);
    this->InvokeEvent(vtkCommand::ResetWindowLevelEvent, wl);
  }
  else if (vtkInteractorObserver* style = this->Interactor->GetInteractorStyle())
  {
    style->OnChar();
  }
}

//------------------------------------------------------------------------------
// Drags

bool zvImagePlaneWidget::IsInViewport(int X, int Y)
{
  return this->CurrentRenderer && this->CurrentRenderer->IsInViewport(X, Y);
}

bool zvImagePlaneWidget::IsPlaneAt(int X, int Y)
{
  return zvPick::Hits(this->PlanePicker, X, Y, this->CurrentRenderer, this->TexturePlaneActor);
}

bool zvImagePlaneWidget::FindPress(int& X, int& Y)
{
  if (!this->Interactor)
  {
    this->State = Outside;
    return false;
  }
  X = this->Interactor->GetEventPosition()[0];
  Y = this->Interactor->GetEventPosition()[1];
  if (!this->IsInViewport(X, Y))
  {
    this->State = Outside;
    return false;
  }
  return true;
}

void zvImagePlaneWidget::TellDragStart(unsigned long event, void* calldata)
{
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  this->EventCallbackCommand->SetAbortFlag(1);
  if (this->Interactor && this->Interactor->GetRenderWindow())
  {
    this->StartInteraction();
  }
  this->InvokeEvent(event, calldata);
  this->Render();
}

void zvImagePlaneWidget::TellDragEnd(unsigned long event, void* calldata)
{
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  this->EventCallbackCommand->SetAbortFlag(1);
  if (this->Interactor && this->Interactor->GetRenderWindow())
  {
    this->EndInteraction();
  }
  this->InvokeEvent(event, calldata);
  this->Render();
}

void zvImagePlaneWidget::StartCursor()
{
  int X, Y;
  if (!this->FindPress(X, Y))
  {
    return;
  }
  if (!this->IsPlaneAt(X, Y))
  {
    this->State = Outside;
    this->HighlightPlane(0);
    this->ActivateCursor(0);
    this->ActivateText(0);
    return;
  }
  this->State = Cursoring;
  this->HighlightPlane(1);
  this->ActivateCursor(1);
  this->ActivateText(1);
  this->UpdateCursor(X, Y);
  this->ManageTextDisplay();
  this->TellDragStart(vtkCommand::StartInteractionEvent, nullptr);
}

void zvImagePlaneWidget::StopCursor()
{
  if (this->EndDrag())
  {
    this->ActivateCursor(0);
    this->ActivateText(0);
    this->TellDragEnd(vtkCommand::EndInteractionEvent, nullptr);
  }
}

void zvImagePlaneWidget::StartSliceMotion()
{
  int X, Y;
  if (!this->FindPress(X, Y))
  {
    return;
  }
  if (!this->IsPlaneAt(X, Y))
  {
    this->State = Outside;
    this->HighlightPlane(0);
    this->ActivateMargins(0);
    return;
  }
  this->State = Pushing;
  this->HighlightPlane(1);
  this->ActivateMargins(1);
  this->AdjustState();
  this->UpdateMargins();
  this->TellDragStart(vtkCommand::StartInteractionEvent, nullptr);
}

void zvImagePlaneWidget::StopSliceMotion()
{
  if (this->EndDrag())
  {
    this->ActivateMargins(0);
    this->TellDragEnd(vtkCommand::EndInteractionEvent, nullptr);
  }
}

void zvImagePlaneWidget::StartWindowLevel()
{
  int X, Y;
  if (!this->FindPress(X, Y))
  {
    return;
  }
  const bool hit = this->IsPlaneAt(X, Y);
  this->InitialWindow = this->CurrentWindow;
  this->InitialLevel = this->CurrentLevel;
  if (!hit)
  {
    this->State = Outside;
    this->HighlightPlane(0);
    this->ActivateText(0);
    return;
  }
  this->State = WindowLevelling;
  this->HighlightPlane(1);
  this->ActivateText(1);
  this->StartWindowLevelPositionX = X;
  this->StartWindowLevelPositionY = Y;
  this->ManageTextDisplay();
  double wl[2] = { this->CurrentWindow, this->CurrentLevel };
  this->TellDragStart(vtkCommand::StartWindowLevelEvent, wl);
}

void zvImagePlaneWidget::StopWindowLevel()
{
  if (this->EndDrag())
  {
    this->ActivateText(0);
    double wl[2] = { this->CurrentWindow, this->CurrentLevel };
    this->TellDragEnd(vtkCommand::EndWindowLevelEvent, wl);
  }
}

bool zvImagePlaneWidget::EndDrag()
{
  if (this->State == Start || this->State == Outside)
  {
    return false;
  }
  this->State = Start;
  this->HighlightPlane(0);
  return true;
}

void zvImagePlaneWidget::OnMouseMove()
{
  if (this->State == Start || this->State == Outside)
  {
    return;
  }
  double previous[3];
  double current[3];
  if (!zvDrag::GetMotion(
        this->Interactor, this->CurrentRenderer, this->LastPickPosition, previous, current))
  {
    return;
  }
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  this->MoveDrag(previous, current);
  this->EventCallbackCommand->SetAbortFlag(1);
  if (this->State == WindowLevelling)
  {
    double wl[2] = { this->CurrentWindow, this->CurrentLevel };
    this->InvokeEvent(vtkCommand::WindowLevelEvent, wl);
  }
  else
  {
    this->InvokeEvent(vtkCommand::InteractionEvent, nullptr);
  }
  this->Render();
}

void zvImagePlaneWidget::MoveDrag(double previous[3], double current[3])
{
  const int X = this->Interactor->GetEventPosition()[0];
  const int Y = this->Interactor->GetEventPosition()[1];
  switch (this->State)
  {
    case WindowLevelling:
      this->WindowLevel(X, Y);
      this->ManageTextDisplay();
      break;
    case Pushing:
      this->Push(previous, current);
      this->UpdatePlane();
      this->UpdateMargins();
      this->BuildRepresentation();
      break;
    case Cursoring:
      this->UpdateCursor(X, Y);
      this->ManageTextDisplay();
      break;
    default:
      // Deliberate: turning, moving and scaling are the host's to do, who is told of the motion.
      break;
  }
}

void zvImagePlaneWidget::AdjustState()
{
  if (!this->Interactor)
  {
    return;
  }
  int modifier = NoModifier;
  switch (this->LastButtonPressed)
  {
    case LeftButton:
      modifier = this->LeftButtonAutoModifier;
      break;
    case MiddleButton:
      modifier = this->MiddleButtonAutoModifier;
      break;
    case RightButton:
      modifier = this->RightButtonAutoModifier;
      break;
    default:
      break;
  }
  if (this->Interactor->GetShiftKey() || (modifier & ShiftModifier))
  {
    this->State = Scaling;
    return;
  }
  double axis1[3];
  double axis2[3];
  this->FindPressedRegion(axis1, axis2);
  const bool moving = this->Interactor->GetControlKey() || (modifier & ControlModifier);
  if (!moving && zvPlaneMargins::IsCorner(this->MarginSelectMode))
  {
    this->State = Spinning;
    return;
  }
  if (!moving && this->MarginSelectMode == zvPlaneMargins::Centre)
  {
    this->State = Pushing;
    return;
  }
  this->State = moving ? Moving : Rotating;
  zvPlaneMargins::GetDragAxes(
    this->MarginSelectMode, axis1, axis2, this->RotateAxis, this->RadiusVector);
}

void zvImagePlaneWidget::FindPressedRegion(double axis1[3], double axis2[3])
{
  this->GetVector1(axis1);
  this->GetVector2(axis2);
  const double width = vtkMath::Normalize(axis1);
  const double height = vtkMath::Normalize(axis2);
  double pressed[3];
  vtkMath::Subtract(this->LastPickPosition, this->PlaneSource->GetOrigin(), pressed);
  const double x = std::min(std::max(vtkMath::Dot(pressed, axis1), 0.0), width);
  const double y = std::min(std::max(vtkMath::Dot(pressed, axis2), 0.0), height);
  this->MarginSelectMode =
    zvPlaneMargins::RegionAt(x, y, width, height, this->MarginSizeX, this->MarginSizeY);
}

void zvImagePlaneWidget::HighlightPlane(int highlight)
{
  if (highlight)
  {
    this->PlaneOutlineActor->SetProperty(this->SelectedPlaneProperty);
    this->PlanePicker->GetPickPosition(this->LastPickPosition);
  }
  else
  {
    this->PlaneOutlineActor->SetProperty(this->PlaneProperty);
  }
}

void zvImagePlaneWidget::UpdatePointClicked()
{
  int X, Y;
  if (!this->FindPress(X, Y))
  {
    return;
  }
  this->Clicked = zvPick::At(this->PlanePicker, X, Y, this->CurrentRenderer);
  this->PlanePicker->GetPickPosition(this->PointClicked);
}

//------------------------------------------------------------------------------
// Cursor, window and level, text

void zvImagePlaneWidget::WindowLevel(int X, int Y)
{
  if (!this->CurrentRenderer)
  {
    return;
  }
  const int* size = this->CurrentRenderer->GetSize();
  const double x =
    size[0] > 0 ? static_cast<double>(X - this->StartWindowLevelPositionX) / size[0] : 0.0;
  const double y =
    size[1] > 0 ? static_cast<double>(Y - this->StartWindowLevelPositionY) / size[1] : 0.0;
  const zvWindowLevel::Values dragged =
    zvWindowLevel::Dragged({ this->InitialWindow, this->InitialLevel }, x, y);
  this->ApplyToTable(dragged.Window, dragged.Level);
  this->CurrentWindow = dragged.Window;
  this->CurrentLevel = dragged.Level;
}

void zvImagePlaneWidget::UpdateCursor(int X, int Y)
{
  if (!this->TakeImage())
  {
    return;
  }
  vtkAlgorithmOutput* port = this->Reslice->GetInputConnection(0, 0);
  port->GetProducer()->Update(port->GetIndex());
  zvPick::At(this->PlanePicker, X, Y, this->CurrentRenderer);
  this->CurrentImageValue = NoValue;
  this->CursorActor->VisibilityOn();
  double q[3];
  this->PlanePicker->GetPickPosition(q);
  if (this->UseContinuousCursor)
  {
    this->UpdateContinuousCursor(q);
  }
  else
  {
    this->UpdateDiscreteCursor(q);
  }
  this->PlaceCursor(q);
}

int zvImagePlaneWidget::UpdateContinuousCursor(double* q)
{
  std::copy_n(q, 3, this->CurrentCursorPosition);
  if (!this->ImageData)
  {
    return 0;
  }
  vtkNew<vtkPointData> interpolated;
  interpolated->InterpolateAllocate(this->ImageData->GetPointData(), 1, 1);
  const double length = this->ImageData->GetLength();
  const double tolerance2 = length != 0.0 ? length * length / 1000.0 : 0.001;
  int subId;
  double pcoords[3];
  double weights[8];
  vtkCell* cell =
    this->ImageData->FindAndGetCell(q, nullptr, -1, tolerance2, subId, pcoords, weights);
  if (!cell)
  {
    return 0;
  }
  interpolated->InterpolatePoint(this->ImageData->GetPointData(), 0, cell->PointIds, weights);
  if (interpolated->GetScalars())
  {
    this->CurrentImageValue = interpolated->GetScalars()->GetComponent(0, 0);
  }
  return 1;
}

int zvImagePlaneWidget::UpdateDiscreteCursor(double* q)
{
  const vtkIdType point = this->ImageData ? this->ImageData->FindPoint(q) : -1;
  if (point < 0)
  {
    return 0;
  }
  double closest[3];
  this->ImageData->GetPoint(point, closest);
  const double* origin = this->ImageData->GetOrigin();
  const double* spacing = this->ImageData->GetSpacing();
  const int* extent = this->ImageData->GetExtent();
  int index[3];
  for (int i = 0; i < 3; ++i)
  {
    index[i] = zvImageGrid::NearestIndex(closest[i], origin[i], spacing[i]);
    index[i] = std::min(std::max(index[i], extent[2 * i]), extent[2 * i + 1]);
    q[i] = origin[i] + spacing[i] * index[i];
    this->CurrentCursorPosition[i] = index[i];
  }
  if (this->ImageData->GetPointData()->GetScalars())
  {
    this->CurrentImageValue =
      this->ImageData->GetScalarComponentAsDouble(index[0], index[1], index[2], 0);
  }
  return 1;
}

double* zvImagePlaneWidget::GetCurrentCursorPosition()
{
  return this->CurrentCursorPosition;
}

void zvImagePlaneWidget::GetCurrentCursorPosition(double position[3])
{
  std::copy_n(this->CurrentCursorPosition, 3, position);
}

int zvImagePlaneWidget::GetCursorData(double xyzv[4])
{
  if (!this->GetCursorDataStatus())
  {
    return 0;
  }
  std::copy_n(this->CurrentCursorPosition, 3, xyzv);
  xyzv[3] = this->CurrentImageValue;
  return 1;
}

int zvImagePlaneWidget::GetCursorDataStatus()
{
  return this->State == Cursoring && this->CurrentImageValue != NoValue ? 1 : 0;
}

void zvImagePlaneWidget::ManageTextDisplay()
{
  if (!this->DisplayText)
  {
    return;
  }
  if (this->State == WindowLevelling)
  {
    std::snprintf(this->TextBuff, sizeof(this->TextBuff), "Window, Level: ( %g, %g )",
      this->CurrentWindow, this->CurrentLevel);
  }
  else if (this->State == Cursoring && this->CurrentImageValue == NoValue)
  {
    std::snprintf(this->TextBuff, sizeof(this->TextBuff), "Off Image");
  }
  else if (this->State == Cursoring)
  {
    const double* position = this->CurrentCursorPosition;
    std::snprintf(this->TextBuff, sizeof(this->TextBuff), "( %g, %g, %g ): %g", position[0],
      position[1], position[2], this->CurrentImageValue);
  }
  this->TextActor->SetInput(this->TextBuff);
  this->TextActor->Modified();
}

void zvImagePlaneWidget::ActivateCursor(int i)
{
  if (this->CurrentRenderer)
  {
    this->CursorActor->SetVisibility(i != 0);
  }
}

void zvImagePlaneWidget::ActivateMargins(int i)
{
  if (this->CurrentRenderer)
  {
    this->MarginActor->SetVisibility(i != 0);
  }
}

void zvImagePlaneWidget::ActivateText(int i)
{
  if (this->CurrentRenderer && this->DisplayText)
  {
    this->TextActor->SetVisibility(i != 0);
  }
}
