// How the slice view answers the mouse: who takes a press, and what a move does.

#include "zvImageViewerWidget.h"

#include "zvAreaWidget.h"
#include "zvCollections.h"
#include "zvDrag.h"
#include "zvLassoWidget.h"
#include "zvPick.h"
#include "zvRulerWidget.h"
#include "zvTextNoteWidget.h"
#include "zvViewLookup.h"

#include "vtkCallbackCommand.h"
#include "vtkCamera.h"
#include "vtkCellPicker.h"
#include "vtkMath.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

#include <algorithm>

namespace
{
// Whether the last pick of a picker hit something.
bool HasPath(vtkAbstractPropPicker* picker)
{
  return picker->GetPath() != nullptr;
}

template <typename Tool>
vtkSmartPointer<Tool> FirstClicked(vtkCollection* tools)
{
  for (const auto& tool : zvCollections::ItemsOf<Tool>(tools))
  {
    if (tool->IsClicked())
    {
      return tool;
    }
  }
  return nullptr;
}
}

// A mode that takes a press on the slice, and what it does with it.
struct zvImageViewerWidget::PlaneMode
{
  bool zvImageViewerWidget::*Flag;
  Claim (zvImageViewerWidget::*Take)(int X, int Y);
};

// The first mode that is on takes the press. The third and fourth point modes have taken it before
// the slice is asked; they stand here as a second guard.
const zvImageViewerWidget::PlaneMode zvImageViewerWidget::PlaneModes[] = {
  { &zvImageViewerWidget::AddRulerMode, &zvImageViewerWidget::PlaceRuler },
  { &zvImageViewerWidget::AddAreaMode, &zvImageViewerWidget::ExtendArea },
  { &zvImageViewerWidget::AddLassoMode, &zvImageViewerWidget::ExtendLasso },
  { &zvImageViewerWidget::PickPointBoundMode, &zvImageViewerWidget::RecordAtBound },
  { &zvImageViewerWidget::PickPointModeC, &zvImageViewerWidget::RecordPoint },
  { &zvImageViewerWidget::PickPointModeD, &zvImageViewerWidget::RecordPoint },
  { &zvImageViewerWidget::AddText, &zvImageViewerWidget::RecordText },
  { &zvImageViewerWidget::PaintMode, &zvImageViewerWidget::StartPainting },
  { &zvImageViewerWidget::FillMode, &zvImageViewerWidget::StartPainting },
};

//------------------------------------------------------------------------------
void zvImageViewerWidget::OnLeftButtonDown()
{
  const int X = this->Interactor->GetEventPosition()[0];
  const int Y = this->Interactor->GetEventPosition()[1];
  this->LeftButtonHeld = true;
  this->ForgetFill();
  if (this->FillMode)
  {
    this->FillAtCursor();
  }
  // The order in which they may claim a press.
  using Claimant = Claim (zvImageViewerWidget::*)(int, int);
  constexpr Claimant claimants[] = { &zvImageViewerWidget::ClaimOutside,
    &zvImageViewerWidget::ClaimPickedPoint, &zvImageViewerWidget::ClaimTool,
    &zvImageViewerWidget::ClaimSliceLine, &zvImageViewerWidget::ClaimPlane };
  Claim claim = Claim::None;
  for (Claimant claimant : claimants)
  {
    claim = (this->*claimant)(X, Y);
    if (claim != Claim::None)
    {
      break;
    }
  }
  if (claim == Claim::Interaction)
  {
    this->TellDragStart(vtkCommand::StartInteractionEvent);
  }
  else if (claim != Claim::Ignored)
  {
    zvViewLookup::Render(this->Interactor);
  }
}

zvImageViewerWidget::Claim zvImageViewerWidget::ClaimOutside(int, int)
{
  if (zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor))
  {
    return Claim::None;
  }
  this->State = Outside;
  return Claim::Ignored;
}

// The four point modes record where the press was, on the slice or beside it, and nothing else.
zvImageViewerWidget::Claim zvImageViewerWidget::ClaimPickedPoint(int X, int Y)
{
  if (!this->PickPointModeA && !this->PickPointModeB && !this->PickPointModeC &&
    !this->PickPointModeD)
  {
    return Claim::None;
  }
  this->PickPlanePoint(X, Y);
  if (HasPath(this->PlanePicker))
  {
    std::copy_n(this->PointClicked, 3, this->LastPickPosition);
    this->State = Start;
  }
  return Claim::Taken;
}

zvImageViewerWidget::Claim zvImageViewerWidget::ClaimTool(int, int)
{
  this->CurrentTextNoteWidget = nullptr;
  bool isSelected = this->SelectRuler();
  // Deliberate: a ruler that was clicked before keeps contours from being selected.
  if (!this->CurrentRulerWidget)
  {
    isSelected = this->SelectArea();
  }
  if (this->SelectTextNote() || isSelected)
  {
    // A ruler or a contour has observers of its own and acts on the same press.
    return Claim::Taken;
  }
  this->CurrentTextNoteWidget = nullptr;
  return Claim::None;
}

bool zvImageViewerWidget::SelectRuler()
{
  const auto ruler = FirstClicked<zvRulerWidget>(this->RulerWidgets);
  if (!ruler)
  {
    return false;
  }
  this->CurrentRulerWidget = ruler;
  this->State = Cursoring;
  return true;
}

bool zvImageViewerWidget::SelectArea()
{
  for (const auto& area : zvCollections::ItemsOf<zvAreaWidget>(this->AreaWidgets))
  {
    if (area->IsClicked() && area->IsClosed())
    {
      this->CurrentAreaWidget = area;
      this->State = Cursoring;
      return true;
    }
  }
  return false;
}

bool zvImageViewerWidget::SelectTextNote()
{
  const auto note = FirstClicked<zvTextNoteWidget>(this->TextNoteWidgets);
  if (!note)
  {
    return false;
  }
  this->CurrentTextNoteWidget = note;
  this->State = Cursoring;
  return true;
}

// A press on a line turns the plane, with Shift it moves the cross.
zvImageViewerWidget::Claim zvImageViewerWidget::ClaimSliceLine(int X, int Y)
{
  if (!this->PickLine(this->SliceLine1Picker, X, Y) &&
    !this->PickLine(this->SliceLine2Picker, X, Y))
  {
    return Claim::None;
  }
  std::copy_n(this->PointClicked, 3, this->LastPickPosition);
  this->State = Rotating;
  this->InvokeEvent(vtkCommand::LeftButtonPressEvent, nullptr);
  if (!this->IsIdle())
  {
    this->State = this->HasShift() ? Pushing : Rotating;
    if (this->State == Pushing)
    {
      this->AdjustCross(X, Y);
    }
  }
  this->LastDegree = 0.0;
  return Claim::Interaction;
}

zvImageViewerWidget::Claim zvImageViewerWidget::ClaimPlane(int X, int Y)
{
  this->LastDegree = 0.0;
  this->PickPlanePoint(X, Y);
  if (!HasPath(this->PlanePicker))
  {
    return Claim::Taken;
  }
  std::copy_n(this->PointClicked, 3, this->LastPickPosition);
  this->State = Pushing;
  for (const PlaneMode& mode : PlaneModes)
  {
    if (this->*mode.Flag)
    {
      this->State = Cursoring;
      return (this->*mode.Take)(X, Y);
    }
  }
  return this->MoveCross(X, Y);
}

zvImageViewerWidget::Claim zvImageViewerWidget::PlaceRuler(int, int)
{
  this->LiftPointClicked();
  if (zvRulerWidget* ruler = this->CurrentRulerWidget)
  {
    const double* at = this->PointClicked;
    ruler->SetPoint1(at[0], at[1], at[2]);
    ruler->SetPoint2(at[0], at[1], at[2]);
  }
  this->AddRulerMode = false;
  return Claim::Taken;
}

zvImageViewerWidget::Claim zvImageViewerWidget::ExtendArea(int, int)
{
  this->LiftPointClicked();
  if (!this->CurrentAreaWidget)
  {
    this->AddAreaWidget(nullptr);
  }
  const vtkSmartPointer<zvAreaWidget> area = this->CurrentAreaWidget.Get();
  if (this->ViewOrientation >= 0 && this->ViewOrientation <= 2)
  {
    area->SetProjectionNormal(this->ViewOrientation);
  }
  area->AddHandle(this->PointClicked);
  if (area->IsClosed())
  {
    this->CurrentAreaWidget = nullptr;
  }
  return Claim::Taken;
}

// Deliberate: the point is not lifted here, unlike for rulers and contours.
zvImageViewerWidget::Claim zvImageViewerWidget::ExtendLasso(int, int)
{
  const bool hadLassos = this->LassoWidgets->GetNumberOfItems() > 0;
  if (!hadLassos)
  {
    this->AddLassoWidget(nullptr);
  }
  const vtkSmartPointer<zvLassoWidget> last =
    zvCollections::LastOf<zvLassoWidget>(this->LassoWidgets);
  this->LockLassos();
  if (this->ChooseLasso(last))
  {
    return Claim::Taken;
  }
  if (last->IsClosed() && hadLassos)
  {
    this->LockLassos();
    this->AddLassoWidget(nullptr);
  }
  const vtkSmartPointer<zvLassoWidget> current = this->CurrentLassoWidget.Get();
  if (current)
  {
    current->AddHandle(this->PointClicked);
    if (current->IsClosed())
    {
      this->FinishLassos();
    }
  }
  return Claim::Taken;
}

// Give a lasso that was clicked its way: true if it is to be moved, and the press ends there.
bool zvImageViewerWidget::ChooseLasso(zvLassoWidget* last)
{
  for (const auto& lasso : zvCollections::ItemsOf<zvLassoWidget>(this->LassoWidgets))
  {
    if (!lasso->IsClicked())
    {
      continue;
    }
    if (last->IsClosed())
    {
      this->CurrentLassoWidget = lasso;
      lasso->SetState(zvLassoWidget::Moving);
      return true;
    }
    this->CurrentLassoWidget = last;
    last->SetState(zvLassoWidget::Outside);
  }
  return false;
}

void zvImageViewerWidget::LockLassos()
{
  for (const auto& lasso : zvCollections::ItemsOf<zvLassoWidget>(this->LassoWidgets))
  {
    lasso->SetState(zvLassoWidget::Locked);
  }
}

void zvImageViewerWidget::FinishLassos()
{
  for (const auto& lasso : zvCollections::ItemsOf<zvLassoWidget>(this->LassoWidgets))
  {
    lasso->SetHandleVisibility(0);
    lasso->SetState(zvLassoWidget::Locked);
  }
  this->State = Start;
  this->CurrentLassoWidget = nullptr;
}

zvImageViewerWidget::Claim zvImageViewerWidget::RecordAtBound(int, int)
{
  if (this->GetPlaneOrientation() == 2)
  {
    this->PointClicked[2] = this->Bounds[4];
  }
  return Claim::Taken;
}

zvImageViewerWidget::Claim zvImageViewerWidget::RecordPoint(int, int)
{
  return Claim::Taken;
}

// Deliberate: the depths of a note differ by view, so that it is seen in front of each slice.
zvImageViewerWidget::Claim zvImageViewerWidget::RecordText(int, int)
{
  switch (this->GetPlaneOrientation())
  {
    case 0:
      this->PointClicked[0] = this->Bounds[1];
      break;
    case 1:
      this->PointClicked[1] = this->Bounds[2] - 1.0;
      break;
    case 2:
      this->PointClicked[2] = this->Bounds[4];
      break;
    default:
      break;
  }
  return Claim::Taken;
}

zvImageViewerWidget::Claim zvImageViewerWidget::StartPainting(int, int)
{
  return Claim::Interaction;
}

zvImageViewerWidget::Claim zvImageViewerWidget::MoveCross(int X, int Y)
{
  this->InvokeEvent(vtkCommand::LeftButtonPressEvent, nullptr);
  // An observer cancels the move by leaving the view idle.
  if (!this->IsIdle())
  {
    this->AdjustCross(X, Y);
    this->State = Pushing;
  }
  return Claim::Interaction;
}

//------------------------------------------------------------------------------
void zvImageViewerWidget::OnLeftButtonUp()
{
  this->LeftButtonHeld = false;
  // The full resolution comes back after a drag.
  this->ImageResolutionFactor = 1;
  this->Modified();
  this->UpdatePlane();
  this->InvokeEvent(vtkCommand::LeftButtonReleaseEvent, nullptr);
  if (!zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor))
  {
    this->State = Outside;
    return;
  }
  if (this->CurrentAreaWidget && this->CurrentAreaWidget->IsClosed())
  {
    this->CurrentAreaWidget = nullptr;
  }
  this->State = Start;
  zvViewLookup::Render(this->Interactor);
}

void zvImageViewerWidget::OnRightButtonDown()
{
  if (this->HasShift())
  {
    this->SetRightButtonAction(VTK_WINDOW_LEVEL_ACTION);
  }
  switch (this->RightButtonAction)
  {
    case VTK_CURSOR_ACTION:
      this->StartCursor();
      break;
    case VTK_SLICE_MOTION_ACTION:
      this->StartSliceMotion();
      break;
    case VTK_WINDOW_LEVEL_ACTION:
      this->StartWindowLevel();
      break;
    default:
      break;
  }
}

void zvImageViewerWidget::OnRightButtonUp()
{
  switch (this->RightButtonAction)
  {
    case VTK_CURSOR_ACTION:
      this->StopCursor();
      break;
    case VTK_SLICE_MOTION_ACTION:
      this->StopSliceMotion();
      break;
    case VTK_WINDOW_LEVEL_ACTION:
      this->StopWindowLevel();
      break;
    default:
      break;
  }
}

void zvImageViewerWidget::OnMouseMove()
{
  const int X = this->Interactor->GetEventPosition()[0];
  const int Y = this->Interactor->GetEventPosition()[1];
  if (!this->QuickApply)
  {
    this->UpdateCursor(X, Y);
  }
  this->PlanePicker->GetPickPosition(this->LastPickPosition);
  // Each of them renders.
  for (const auto& ruler : zvCollections::ItemsOf<zvRulerWidget>(this->RulerWidgets))
  {
    ruler->UpdateScaleLabel();
  }
  if (!this->CurrentRenderer || !this->CurrentRenderer->IsActiveCameraCreated())
  {
    return;
  }
  vtkCamera* camera = this->CurrentRenderer->GetActiveCamera();
  camera->OrthogonalizeViewUp();
  camera->ComputeViewPlaneNormal();
  camera->OrthogonalizeViewUp();
  double previous[3], current[3];
  const bool hasMotion = zvDrag::GetMotion(
    this->Interactor, this->CurrentRenderer, this->LastPickPosition, previous, current);
  this->InvokeEvent(vtkCommand::MouseMoveEvent, nullptr);
  if (this->IsIdle() || !hasMotion)
  {
    return;
  }
  this->DragBy(X, Y, previous, current);
  if (this->PaintMode && this->LeftButtonHeld)
  {
    this->PaintAtCursor();
  }
  zvViewLookup::Render(this->Interactor);
}

void zvImageViewerWidget::DragBy(int X, int Y, double previous[3], double current[3])
{
  if (this->State == WindowLevelling)
  {
    if (this->CurrentRenderer)
    {
      this->WindowLevel(X, Y);
      this->EventCallbackCommand->SetAbortFlag(1);
      this->TellDrag(vtkCommand::WindowLevelEvent);
    }
    return;
  }
  if (this->State != Rotating && this->State != Pushing)
  {
    return;
  }
  this->ImageResolutionFactor = 4; // quick while it lasts; the release makes it whole again
  if (this->State == Rotating)
  {
    double normal[3] = { 0.0, 0.0, 1.0 };
    if (this->CurrentRenderer)
    {
      this->CurrentRenderer->GetActiveCamera()->GetViewPlaneNormal(normal);
    }
    this->Rotate(X, Y, previous, current, normal);
  }
  else
  {
    this->AdjustCross(X, Y);
  }
  this->UpdatePlane();
  this->UpdateMargins();
}

//------------------------------------------------------------------------------
// Deliberate: the three actions below are those of the stock class, but go on safely after an
// observer has taken interactor or renderer away, which the stock ones do not survive.

// The place of a press in the view; a press that is not in it leaves the view outside.
bool zvImageViewerWidget::FindPress(int& X, int& Y)
{
  if (!zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor))
  {
    this->State = Outside;
    return false;
  }
  X = this->Interactor->GetEventPosition()[0];
  Y = this->Interactor->GetEventPosition()[1];
  return true;
}

// Grab the slice for a drag if it is under the mouse; a press beside it leaves the view outside.
bool zvImageViewerWidget::GrabSlice(int X, int Y, int state)
{
  const bool isOnPlane =
    zvPick::Hits(this->PlanePicker, X, Y, this->CurrentRenderer, this->TexturePlaneActor);
  this->State = isOnPlane ? state : Outside;
  this->HighlightPlane(isOnPlane);
  return isOnPlane;
}

bool zvImageViewerWidget::LetGoOfSlice()
{
  if (this->IsIdle())
  {
    return false;
  }
  this->State = Start;
  this->HighlightPlane(0);
  return true;
}

void zvImageViewerWidget::StartCursor()
{
  int X, Y;
  if (!this->FindPress(X, Y))
  {
    return;
  }
  const bool isGrabbed = this->GrabSlice(X, Y, Cursoring);
  this->ActivateCursor(isGrabbed);
  this->ActivateText(isGrabbed);
  if (isGrabbed)
  {
    this->vtkImagePlaneWidget::UpdateCursor(X, Y);
    this->ManageTextDisplay();
    this->TellDragStart(vtkCommand::StartInteractionEvent);
  }
}

void zvImageViewerWidget::StopCursor()
{
  if (this->LetGoOfSlice())
  {
    this->ActivateCursor(0);
    this->ActivateText(0);
    this->TellDragEnd(vtkCommand::EndInteractionEvent);
  }
}

void zvImageViewerWidget::StartSliceMotion()
{
  int X, Y;
  if (!this->FindPress(X, Y))
  {
    return;
  }
  const bool isGrabbed = this->GrabSlice(X, Y, Pushing);
  this->ActivateMargins(isGrabbed);
  if (isGrabbed)
  {
    this->AdjustState();
    this->UpdateMargins();
    this->TellDragStart(vtkCommand::StartInteractionEvent);
  }
}

void zvImageViewerWidget::StopSliceMotion()
{
  if (this->LetGoOfSlice())
  {
    this->ActivateMargins(0);
    this->TellDragEnd(vtkCommand::EndInteractionEvent);
  }
}

void zvImageViewerWidget::StartWindowLevel()
{
  int X, Y;
  if (!this->FindPress(X, Y))
  {
    return;
  }
  const bool isGrabbed = this->GrabSlice(X, Y, WindowLevelling);
  this->InitialWindow = this->CurrentWindow;
  this->InitialLevel = this->CurrentLevel;
  if (isGrabbed)
  {
    this->StartWindowLevelPositionX = X;
    this->StartWindowLevelPositionY = Y;
    this->TellDragStart(vtkCommand::StartWindowLevelEvent);
  }
}

void zvImageViewerWidget::StopWindowLevel()
{
  if (this->LetGoOfSlice())
  {
    this->TellDragEnd(vtkCommand::EndWindowLevelEvent);
  }
}

void zvImageViewerWidget::TellDragStart(unsigned long event)
{
  this->EventCallbackCommand->SetAbortFlag(1);
  this->SetInteracting(true);
  this->TellDrag(event);
  zvViewLookup::Render(this->Interactor);
}

void zvImageViewerWidget::TellDragEnd(unsigned long event)
{
  this->EventCallbackCommand->SetAbortFlag(1);
  this->SetInteracting(false);
  this->TellDrag(event);
  zvViewLookup::Render(this->Interactor);
}

// The update rate of the window, which may be gone.
void zvImageViewerWidget::SetInteracting(bool on)
{
  if (!this->Interactor || !this->Interactor->GetRenderWindow())
  {
    return;
  }
  if (on)
  {
    this->StartInteraction();
  }
  else
  {
    this->EndInteraction();
  }
}

// The events of window and level carry both.
void zvImageViewerWidget::TellDrag(unsigned long event)
{
  double windowLevel[2] = { this->CurrentWindow, this->CurrentLevel };
  const bool isOfInteraction =
    event == vtkCommand::StartInteractionEvent || event == vtkCommand::EndInteractionEvent;
  this->InvokeEvent(event, isOfInteraction ? nullptr : windowLevel);
}

//------------------------------------------------------------------------------
bool zvImageViewerWidget::IsIdle() const
{
  return this->State == Start || this->State == Outside;
}

bool zvImageViewerWidget::HasShift()
{
  return this->Interactor && this->Interactor->GetShiftKey();
}

bool zvImageViewerWidget::PickLine(vtkCellPicker* picker, int X, int Y)
{
  zvPick::At(picker, X, Y, this->CurrentRenderer);
  picker->GetPickPosition(this->PointClicked);
  return HasPath(picker);
}

void zvImageViewerWidget::PickPlanePoint(int X, int Y)
{
  zvPick::At(this->PlanePicker, X, Y, this->CurrentRenderer);
  this->PlanePicker->GetPickPosition(this->PointClicked);
}

// One millimetre toward the viewer, so that a tool is drawn in front of the slice.
void zvImageViewerWidget::LiftPointClicked()
{
  if (!this->CurrentRenderer)
  {
    return; // an observer of the pick has taken it away
  }
  double direction[3];
  this->CurrentRenderer->GetActiveCamera()->GetDirectionOfProjection(direction);
  vtkMath::Subtract(this->PointClicked, direction, this->PointClicked);
}
