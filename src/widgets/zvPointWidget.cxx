#include "zvPointWidget.h"

#include "zvDispatch.h"
#include "zvDrag.h"
#include "zvEvents.h"
#include "zvMessages.h"
#include "zvPick.h"
#include "zvViewLookup.h"

#include "vtkActor.h"
#include "vtkCallbackCommand.h"
#include "vtkCellPicker.h"
#include "vtkCursor3D.h"
#include "vtkMath.h"
#include "vtkPolyData.h"
#include "vtkPolyDataMapper.h"
#include "vtkProperty.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkSmartPointer.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{
constexpr double PickTolerance = 0.005; // of the window's diagonal
constexpr int MovesToWait = 4;          // before a motion is long enough to tell its axis

constexpr char NoBounds[] = "give bounds to place the cross in...";
constexpr char NoMotion[] = "give both ends of the motion before moving the cross...";

bool IsAxis(vtkIdType number)
{
  return number >= 0 && number <= 2;
}

double DiagonalOf(const double bounds[6])
{
  const double low[3] = { bounds[0], bounds[2], bounds[4] };
  const double high[3] = { bounds[1], bounds[3], bounds[5] };
  return std::sqrt(vtkMath::Distance2BetweenPoints(low, high));
}

// Of equal values the later axis wins.
int AxisOfLargest(const double motion[3])
{
  int axis = 0;
  for (int i = 1; i < 3; ++i)
  {
    axis = std::abs(motion[i]) >= std::abs(motion[axis]) ? i : axis;
  }
  return axis;
}
}

zvPointWidget::zvPointWidget()
{
  this->EventCallbackCommand->SetCallback(zvPointWidget::ProcessEvents);
  zvEvents::HoldDuringKeys(this->KeyPressCallbackCommand);
  std::fill_n(this->LastPickPosition, 3, 0.0);

  this->Mapper->SetInputConnection(this->Cursor3D->GetOutputPort());
  this->Actor->SetMapper(this->Mapper);
  this->CursorPicker->PickFromListOn();
  this->CursorPicker->AddPickList(this->Actor);
  this->CursorPicker->SetTolerance(PickTolerance);
  this->CreateDefaultProperties();

  this->PlaceFactor = 1.0;
  double bounds[6] = { -0.5, 0.5, -0.5, 0.5, -0.5, 0.5 };
  this->zvPointWidget::PlaceWidget(bounds);
}

zvPointWidget::~zvPointWidget()
{
  if (this->Interactor)
  {
    this->zvPointWidget::SetEnabled(0);
  }
  // Whoever made the object with new may delete it, which the count of 1 would make an error of.
  this->SetReferenceCount(0);
}

void zvPointWidget::SetEnabled(int enabling)
{
  if (!this->Interactor)
  {
    vtkErrorMacro("The interactor must be set prior to enabling/disabling widget");
    return;
  }
  // An observer may release the widget. In the destructor there may be nothing to hold any more.
  const vtkSmartPointer<zvPointWidget> self = this->GetReferenceCount() > 0 ? this : nullptr;
  if (enabling && !this->Enabled)
  {
    this->SetCurrentRenderer(zvViewLookup::Choose(this->CurrentRenderer, this->Interactor));
    if (!this->CurrentRenderer)
    {
      return;
    }
    this->Enabled = 1;
    zvEvents::Observe(
      this->Interactor, zvEvents::Point, this->EventCallbackCommand, this->Priority);
    this->CurrentRenderer->AddActor(this->Actor);
    this->Actor->SetProperty(this->Property);
    this->Cursor3D->Update();
    this->InvokeEvent(vtkCommand::EnableEvent, nullptr);
    zvViewLookup::Render(this->Interactor);
  }
  else if (!enabling && this->Enabled)
  {
    this->Enabled = 0;
    this->State = Start; // the release would not arrive any more
    this->Interactor->RemoveObserver(this->EventCallbackCommand);
    zvViewLookup::TakeOut(this->Actor); // the current renderer may have been taken away
    this->InvokeEvent(vtkCommand::DisableEvent, nullptr);
    if (!this->Enabled) // an observer may have enabled it again
    {
      this->SetCurrentRenderer(nullptr);
    }
    zvViewLookup::Render(this->Interactor);
  }
}

void zvPointWidget::SetInteractor(vtkRenderWindowInteractor* interactor)
{
  // An observer may release the widget or change its interactor, too.
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  if (this->Interactor && this->Enabled && interactor != this->Interactor)
  {
    this->SetEnabled(0);
  }
  this->vtk3DWidget::SetInteractor(interactor);
}

void zvPointWidget::PlaceWidget(double bounds[6])
{
  if (!zvRequireMacro(bounds, NoBounds))
  {
    return;
  }
  double placed[6];
  double center[3];
  this->AdjustBounds(bounds, placed, center);
  this->SetCursor(placed, center);
  this->Cursor3D->Update();
  std::copy_n(placed, 6, this->InitialBounds);
  this->InitialLength = DiagonalOf(placed);
}

void zvPointWidget::PlaceWidget()
{
  this->vtk3DWidget::PlaceWidget();
}

void zvPointWidget::PlaceWidget(
  double xmin, double xmax, double ymin, double ymax, double zmin, double zmax)
{
  this->vtk3DWidget::PlaceWidget(xmin, xmax, ymin, ymax, zmin, zmax);
}

// Deliberate: no limit and no Modified. An owner that follows the zoom stores a new size each time.
void zvPointWidget::SetPlaceFactor(double factor)
{
  this->PlaceFactor = factor;
}

vtkProperty* zvPointWidget::GetProperty()
{
  return this->Property;
}

vtkProperty* zvPointWidget::GetSelectedProperty()
{
  return this->SelectedProperty;
}

void zvPointWidget::SetHotSpotSize(double size)
{
  const double clamped =
    std::max(this->GetHotSpotSizeMinValue(), std::min(size, this->GetHotSpotSizeMaxValue()));
  if (clamped != this->HotSpotSize)
  {
    this->HotSpotSize = clamped;
    this->Modified();
  }
}

double zvPointWidget::GetHotSpotSizeMinValue()
{
  return 0.0;
}

double zvPointWidget::GetHotSpotSizeMaxValue()
{
  return 1.0;
}

double zvPointWidget::GetHotSpotSize()
{
  return this->HotSpotSize;
}

void zvPointWidget::OnMouseMove()
{
  double previous[3];
  double current[3];
  if (this->State == Start || this->State == Outside ||
    !zvDrag::GetMotion(
      this->Interactor, this->CurrentRenderer, this->LastPickPosition, previous, current) ||
    !this->MoveWithPointer(previous, current))
  {
    return;
  }
  this->EventCallbackCommand->SetAbortFlag(1);
  this->InvokeEvent(vtkCommand::InteractionEvent, nullptr);
  zvViewLookup::Render(this->Interactor);
}

void zvPointWidget::OnLeftButtonDown()
{
  if (!zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor))
  {
    this->State = Outside;
    return;
  }
  if (!this->PickCross())
  {
    this->State = Outside;
    this->Highlight(0);
    this->ConstraintAxis = -1;
    return;
  }
  this->State = Moving;
  this->Highlight(1);
  this->ConstraintAxis = this->DetermineConstraintAxis(-1, nullptr);
  this->BeginInteraction();
}

void zvPointWidget::OnLeftButtonUp()
{
  this->FinishInteraction();
}

void zvPointWidget::OnMiddleButtonDown()
{
  if (!zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor))
  {
    this->State = Outside;
    return;
  }
  if (!this->PickCross())
  {
    // Deliberate: unlike the left button's miss this one leaves the look alone.
    this->State = Outside;
    this->ConstraintAxis = -1;
    return;
  }
  this->State = Translating;
  this->Highlight(1);
  this->ConstraintAxis = this->DetermineConstraintAxis(-1, nullptr);
  this->BeginInteraction();
}

void zvPointWidget::OnMiddleButtonUp()
{
  this->FinishInteraction();
}

void zvPointWidget::OnRightButtonDown()
{
  if (!zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor))
  {
    this->State = Outside;
    return;
  }
  if (!this->PickCross())
  {
    this->State = Outside;
    this->ConstraintAxis = -1;
    return;
  }
  this->State = Scaling;
  // The first three cells of the cursor are its axes. A hit on another keeps the axis there was.
  const vtkIdType cell = this->CursorPicker->GetCellId();
  this->ConstraintAxis = IsAxis(cell) ? static_cast<int>(cell) : this->ConstraintAxis;
  this->Highlight(1);
  this->BeginInteraction();
}

void zvPointWidget::OnRightButtonUp()
{
  this->FinishInteraction();
}

void zvPointWidget::ProcessEvents(
  vtkObject* vtkNotUsed(object), unsigned long event, void* clientdata, void* vtkNotUsed(calldata))
{
  // An observer may release the widget while its handler runs.
  const vtkSmartPointer<zvPointWidget> self = static_cast<zvPointWidget*>(clientdata);
  zvDispatch::ToMouseHandler(self.GetPointer(), event);
}

vtkCursor3D* zvPointWidget::GetCursor3D()
{
  return this->Cursor3D;
}

void zvPointWidget::GetPolyData(vtkPolyData* pd)
{
  this->Cursor3D->Update();
  if (pd)
  {
    pd->DeepCopy(this->Cursor3D->GetFocus());
  }
}

void zvPointWidget::AdjustBounds(double* in, double* out, double* center)
{
  if (!zvRequireMacro(in && out && center, NoBounds))
  {
    return;
  }
  for (int axis = 0; axis < 3; ++axis)
  {
    center[axis] = (in[2 * axis] + in[2 * axis + 1]) / 2.0;
    out[2 * axis] = center[axis] - this->PlaceFactor;
    out[2 * axis + 1] = center[axis] + this->PlaceFactor;
  }
}

void zvPointWidget::Highlight(int highlight)
{
  if (highlight)
  {
    this->Actor->SetProperty(this->SelectedProperty);
    this->CursorPicker->GetPickPosition(this->LastPickPosition);
    this->ValidPick = 1;
  }
  else
  {
    this->Actor->SetProperty(this->Property);
  }
}

int zvPointWidget::DetermineConstraintAxis(int constraint, double* x)
{
  if (!this->Interactor || !this->Interactor->GetShiftKey())
  {
    return -1;
  }
  if (IsAxis(constraint))
  {
    return constraint;
  }
  if (!this->WaitingForMotion)
  {
    const double distance2 = vtkMath::Distance2BetweenPoints(
      this->CursorPicker->GetPickPosition(), this->LastPickPosition);
    const double reach = this->HotSpotSize * this->InitialLength;
    if (distance2 > reach * reach)
    {
      return static_cast<int>(this->CursorPicker->GetCellId());
    }
    this->WaitingForMotion = 1;
    this->WaitCount = 0;
    return -1;
  }
  if (!x)
  {
    return -1;
  }
  this->WaitingForMotion = 0;
  double motion[3];
  vtkMath::Subtract(x, this->LastPickPosition, motion);
  return AxisOfLargest(motion);
}

void zvPointWidget::MoveFocus(double* p1, double* p2)
{
  if (!zvRequireMacro(p1 && p2, NoMotion))
  {
    return;
  }
  double position[3];
  double motion[3];
  this->GetConstrainedMotion(p1, p2, motion);
  vtkMath::Add(this->Cursor3D->GetFocalPoint(), motion, position);
  this->Cursor3D->SetFocalPoint(position);
}

void zvPointWidget::Translate(double* p1, double* p2)
{
  if (!zvRequireMacro(p1 && p2, NoMotion))
  {
    return;
  }
  double position[3];
  double bounds[6];
  double motion[3];
  this->GetConstrainedMotion(p1, p2, motion);
  vtkMath::Add(this->Cursor3D->GetFocalPoint(), motion, position);
  for (int i = 0; i < 6; ++i)
  {
    bounds[i] = this->Cursor3D->GetModelBounds()[i] + motion[i / 2];
  }
  this->SetCursor(bounds, position);
}

void zvPointWidget::Scale(double* p1, double* p2, int vtkNotUsed(X), int Y)
{
  if (!zvRequireMacro(p1 && p2, NoMotion))
  {
    return;
  }
  double bounds[6];
  this->Cursor3D->GetModelBounds(bounds);
  const double length = DiagonalOf(bounds);
  if (!this->Interactor || length <= 0.0)
  {
    return;
  }
  const double part = std::sqrt(vtkMath::Distance2BetweenPoints(p1, p2)) / length;
  const bool grow = Y > this->Interactor->GetLastEventPosition()[1];
  const double factor = grow ? 1.0 + part : 1.0 - part;
  const double* position = this->Cursor3D->GetFocalPoint();
  for (int i = 0; i < 6; ++i)
  {
    bounds[i] = (bounds[i] - position[i / 2]) * factor + position[i / 2];
  }
  // A way longer than the diagonal turns the box over. Out of order, it would take the position
  // along.
  for (int axis = 0; axis < 3; ++axis)
  {
    if (bounds[2 * axis] > bounds[2 * axis + 1])
    {
      std::swap(bounds[2 * axis], bounds[2 * axis + 1]);
    }
  }
  this->Cursor3D->SetModelBounds(bounds);
  this->Cursor3D->Update();
}

void zvPointWidget::CreateDefaultProperties()
{
  this->Property->SetColor(1.0, 0.0, 0.0);
  this->Property->SetLineWidth(2.0);
  this->SelectedProperty->SetAmbient(1.0);
  this->SelectedProperty->SetDiffuse(0.0); // lines add both up: full ambient light leaves no room
  this->SelectedProperty->SetAmbientColor(1.0, 0.0, 0.0);
  this->SelectedProperty->SetLineWidth(2.0);
}

// The bounds before the position, which is kept in them, and again after it, since in translation
// mode it takes them along.
void zvPointWidget::SetCursor(const double bounds[6], double position[3])
{
  this->Cursor3D->SetModelBounds(bounds);
  this->Cursor3D->SetFocalPoint(position);
  this->Cursor3D->SetModelBounds(bounds);
}

bool zvPointWidget::PickCross()
{
  const int* position = this->Interactor->GetEventPosition();
  return zvPick::Hits(
    this->CursorPicker, position[0], position[1], this->CurrentRenderer, this->Actor);
}

void zvPointWidget::BeginInteraction()
{
  this->EventCallbackCommand->SetAbortFlag(1);
  if (this->Interactor && this->Interactor->GetRenderWindow())
  {
    this->StartInteraction();
  }
  this->InvokeEvent(vtkCommand::StartInteractionEvent, nullptr);
  zvViewLookup::Render(this->Interactor);
}

void zvPointWidget::FinishInteraction()
{
  if (this->State == Start || this->State == Outside)
  {
    return;
  }
  this->State = Start;
  this->Highlight(0);
  this->EventCallbackCommand->SetAbortFlag(1);
  if (this->Interactor && this->Interactor->GetRenderWindow())
  {
    this->EndInteraction();
  }
  this->InvokeEvent(vtkCommand::EndInteractionEvent, nullptr);
  zvViewLookup::Render(this->Interactor);
}

// False if the move is one of those that the choice of an axis lets pass.
bool zvPointWidget::MoveWithPointer(double* previous, double* current)
{
  if (this->State == Scaling)
  {
    const int* position = this->Interactor->GetEventPosition();
    this->Scale(previous, current, position[0], position[1]);
    return true;
  }
  if (this->IsStillWaiting())
  {
    return false;
  }
  this->ConstraintAxis = this->DetermineConstraintAxis(this->ConstraintAxis, current);
  this->State == Moving ? this->MoveFocus(previous, current) : this->Translate(previous, current);
  return true;
}

bool zvPointWidget::IsStillWaiting()
{
  if (!this->WaitingForMotion || this->WaitCount >= MovesToWait)
  {
    return false;
  }
  ++this->WaitCount;
  return true;
}

void zvPointWidget::GetConstrainedMotion(const double* p1, const double* p2, double motion[3])
{
  vtkMath::Subtract(p2, p1, motion);
  for (int axis = 0; axis < 3; ++axis)
  {
    if (IsAxis(this->ConstraintAxis) && axis != this->ConstraintAxis)
    {
      motion[axis] = 0.0;
    }
  }
}
