#include "zvBoxWidget.h"

#include "zvEvents.h"
#include "zvPick.h"
#include "zvViewLookup.h"

#include "vtkCallbackCommand.h"
#include "vtkCellPicker.h"
#include "vtkNew.h"
#include "vtkPolyData.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

#include <utility>

// The stock class goes on with itself and its interactor after it has told its observers, whatever
// these have done. While one of these lives, the box and the interactor live too, and a new
// interactor waits.
class zvBoxWidget::StockCode
{
public:
  explicit StockCode(zvBoxWidget* box)
    : Box(box)
    , HeldBox(zvEvents::Hold(box))
    , HeldInteractor(box->Interactor)
  {
    ++box->StockDepth;
  }

  ~StockCode()
  {
    --this->Box->StockDepth;
    if (this->Box->StockDepth == 0 && this->Box->HasNextInteractor)
    {
      this->Box->HasNextInteractor = false;
      const auto next = std::move(this->Box->NextInteractor);
      this->Box->SetInteractor(next);
    }
  }

  StockCode(const StockCode&) = delete;
  StockCode& operator=(const StockCode&) = delete;

private:
  zvBoxWidget* Box;
  vtkSmartPointer<vtkObject> HeldBox;
  vtkSmartPointer<vtkRenderWindowInteractor> HeldInteractor;
};

//------------------------------------------------------------------------------
zvBoxWidget::zvBoxWidget()
{
  this->EventCallbackCommand->SetCallback(zvBoxWidget::ProcessEvents);
  zvEvents::HoldDuringKeys(this->KeyPressCallbackCommand);
}

zvBoxWidget::~zvBoxWidget()
{
  if (this->Interactor)
  {
    this->zvBoxWidget::SetEnabled(0);
  }
  // Whoever made the object with new may delete it, which the count of 1 would make an error of.
  this->SetReferenceCount(0);
}

void zvBoxWidget::SetEnabled(int enabling)
{
  const StockCode running(this);
  if (!enabling && this->Enabled)
  {
    this->EndDrag(); // the release would not arrive any more
    this->Clicked = 0;
  }
  this->vtkBoxWidget::SetEnabled(enabling);
}

void zvBoxWidget::SetInteractor(vtkRenderWindowInteractor* interactor)
{
  if (this->StockDepth > 0)
  {
    this->HasNextInteractor = true;
    this->NextInteractor = interactor;
    return;
  }
  const StockCode running(this);
  this->vtkBoxWidget::SetInteractor(interactor);
}

void zvBoxWidget::SetCurrentRenderer(vtkRenderer* renderer)
{
  const StockCode running(this);
  if (!renderer && this->Enabled)
  {
    this->SetEnabled(0);
  }
  if (renderer || !this->Enabled) // an observer may have enabled it again
  {
    this->vtkBoxWidget::SetCurrentRenderer(renderer);
  }
}

//------------------------------------------------------------------------------
double zvBoxWidget::GetBound0()
{
  return this->BoundNow(0);
}

double zvBoxWidget::GetBound1()
{
  return this->BoundNow(1);
}

double zvBoxWidget::GetBound2()
{
  return this->BoundNow(2);
}

double zvBoxWidget::GetBound3()
{
  return this->BoundNow(3);
}

double zvBoxWidget::GetBound4()
{
  return this->BoundNow(4);
}

double zvBoxWidget::GetBound5()
{
  return this->BoundNow(5);
}

double zvBoxWidget::BoundNow(int index)
{
  this->CalculateBounds();
  return this->Bounds[index];
}

void zvBoxWidget::CalculateBounds()
{
  vtkNew<vtkPolyData> box;
  this->GetPolyData(box);
  box->GetBounds(this->Bounds);
}

//------------------------------------------------------------------------------
void zvBoxWidget::OnMouseMove()
{
  const StockCode running(this);
  if (this->Clicked)
  {
    this->CalculateBounds();
  }
  if (this->HasView())
  {
    this->vtkBoxWidget::OnMouseMove();
  }
}

void zvBoxWidget::OnLeftButtonDown()
{
  const StockCode running(this);
  if (!this->HasView() || !zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor))
  {
    this->State = Outside;
    return;
  }
  const int* position = this->Interactor->GetEventPosition();
  zvPick::At(this->HandlePicker, position[0], position[1], this->CurrentRenderer);
  if (!this->HandlePicker->GetPath() && !this->HasShift())
  {
    return;
  }
  this->AcceptPress();
  this->vtkBoxWidget::OnLeftButtonDown();
}

void zvBoxWidget::OnLeftButtonUp()
{
  const StockCode running(this);
  this->CalculateBounds();
  if (this->HasView())
  {
    this->vtkBoxWidget::OnLeftButtonUp();
  }
  else
  {
    this->EndDrag();
  }
  this->Clicked = 0;
}

void zvBoxWidget::OnMiddleButtonDown()
{
  const StockCode running(this);
  if (!this->HasShift())
  {
    return;
  }
  this->AcceptPress();
  if (this->HasView())
  {
    this->vtkBoxWidget::OnMiddleButtonDown();
  }
}

void zvBoxWidget::OnMiddleButtonUp()
{
  const StockCode running(this);
  this->CalculateBounds();
  if (this->HasView())
  {
    this->vtkBoxWidget::OnMiddleButtonUp();
  }
  else
  {
    this->EndDrag();
  }
  this->Clicked = 0;
}

void zvBoxWidget::OnRightButtonDown()
{
  const StockCode running(this);
  if (!this->HasShift())
  {
    return;
  }
  this->AcceptPress();
  if (this->HasView())
  {
    this->vtkBoxWidget::OnRightButtonDown();
  }
}

// Deliberate: unlike the other two releases this one asks for Shift.
void zvBoxWidget::OnRightButtonUp()
{
  const StockCode running(this);
  if (!this->HasShift())
  {
    return;
  }
  this->CalculateBounds();
  if (this->HasView())
  {
    this->vtkBoxWidget::OnRightButtonUp();
  }
  else
  {
    this->EndDrag();
  }
  this->Clicked = 0;
}

void zvBoxWidget::ProcessEvents(
  vtkObject* object, unsigned long event, void* clientdata, void* calldata)
{
  // An observer may release the widget while its handler runs.
  const vtkSmartPointer<zvBoxWidget> self = static_cast<zvBoxWidget*>(clientdata);
  vtkBoxWidget::ProcessEvents(object, event, static_cast<vtkBoxWidget*>(self), calldata);
}

//------------------------------------------------------------------------------
// Whether there is all that the stock handlers use without a question.
bool zvBoxWidget::HasView()
{
  return this->Interactor && this->Interactor->GetRenderWindow() &&
    zvViewLookup::IsShown(this->CurrentRenderer);
}

bool zvBoxWidget::HasShift()
{
  return this->Interactor && this->Interactor->GetShiftKey();
}

void zvBoxWidget::AcceptPress()
{
  this->Clicked = 1;
  this->CalculateBounds();
}

void zvBoxWidget::EndDrag()
{
  this->State = Start;
  this->HighlightFace(this->HighlightHandle(nullptr));
  this->HighlightOutline(0);
}
