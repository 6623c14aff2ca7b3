#include "zvAreaWidget.h"

#include "zvCurveParts.h"
#include "zvDispatch.h"
#include "zvDrag.h"
#include "zvEvents.h"
#include "zvHandleCurve.h"
#include "zvLengthLabel.h"
#include "zvMessages.h"
#include "zvUtils.h"
#include "zvViewLookup.h"

#include "vtkCallbackCommand.h"
#include "vtkCellPicker.h"
#include "vtkFollower.h"
#include "vtkObjectFactory.h"
#include "vtkParametricFunctionSource.h"
#include "vtkPolyData.h"
#include "vtkProperty.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkVectorText.h"

namespace
{
constexpr double LabelScale = 1.7; // of a letter, in sizes of a handle
}

vtkObjectFactoryNewMacro(zvAreaWidget);

vtkObject* vtkInstantiatorzvAreaWidgetNew()
{
  return zvAreaWidget::New();
}

zvAreaWidget::zvAreaWidget()
{
  this->EventCallbackCommand->SetCallback(zvAreaWidget::ProcessEvents);
  zvLengthLabel::Build(this->AreaText, this->AreaActor);
  this->AreaActor->GetProperty()->SetColor(1.0, 1.0, 0.0);
  this->SizeLabel();
}

zvAreaWidget::~zvAreaWidget()
{
  if (this->Interactor)
  {
    this->zvAreaWidget::SetEnabled(0);
  }
}

void zvAreaWidget::PrintSelf(ostream& os, vtkIndent indent)
{
  this->Superclass::PrintSelf(os, indent);
  os << indent << "Area: " << this->Area << "\n";
}

void zvAreaWidget::CollectRevisions(ostream& os)
{
  this->Superclass::CollectRevisions(os);
  os << "zvAreaWidget $Revision: 1.2 $\n";
}

void zvAreaWidget::SetEnabled(int enabling)
{
  if (!this->Interactor)
  {
    vtkErrorMacro("The interactor must be set prior to enabling/disabling widget");
    return;
  }
  // An observer may release the widget. In the destructor there is nothing to hold any more.
  const vtkSmartPointer<zvAreaWidget> self = this->GetReferenceCount() > 0 ? this : nullptr;
  if (enabling && !this->Enabled && this->TakePokedRenderer())
  {
    // Deliberate: the parent attaches the same observers once more. Hosts count on the events that
    // are not aborted coming twice.
    this->AddObservers();
    zvLengthLabel::Show(this->AreaActor, this->CurrentRenderer);
    this->Superclass::SetEnabled(1);
    zvViewLookup::Render(this->Interactor);
  }
  else if (!enabling && this->Enabled)
  {
    zvViewLookup::TakeOut(this->AreaActor); // the current renderer may have been taken away
    this->Superclass::SetEnabled(0);
    zvViewLookup::Render(this->Interactor);
  }
}

double zvAreaWidget::GetArea()
{
  return this->Area;
}

void zvAreaWidget::CalculateArea()
{
  vtkPolyData* line = this->ParametricFunctionSource->GetOutput();
  // A handle of an open curve can be dragged, too: that it encloses nothing is worth no warning.
  const bool closed = zvHandleCurve::TestClosure(line) == zvHandleCurve::Closure::Closed;
  this->Area = closed ? zvUtils::CalculateArea(line) : 0.0;
  this->UpdateAreaLabel();
}

void zvAreaWidget::UpdateAreaLabel()
{
  this->AreaText->SetText(zvLengthLabel::OfArea(this->Area).c_str());
  this->SizeLabel();
  this->CalculateCentroid();
  this->AreaActor->SetPosition(this->Centroid);
}

void zvAreaWidget::AddHandle(double* pos)
{
  if (!zvRequireMacro(pos, zvCurveParts::NoPosition))
  {
    return;
  }
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  if (this->NumberOfHandles > 1 && this->Pick(this->HandlePicker))
  {
    this->CurrentHandleIndex = this->HighlightHandle();
    if (this->CurrentHandleIndex == 0)
    {
      this->CloseCurve();
    }
    this->CurrentHandleIndex = -1;
    return;
  }
  zvHandleCurve::Positions handles = this->ReadHandles();
  handles.push_back({ { pos[0], pos[1], pos[2] } });
  this->SetHandlePoints(handles);
  this->InitializeHandles(this->HandlePolyData->GetPoints());
  this->TakePokedRenderer();
  this->ShowActor(this->HandleActor, this->HandleProperty);
  this->ShowActor(this->LineActor, this->LineProperty);
  this->HighlightHandle();
  zvViewLookup::Render(this->Interactor);
}

void zvAreaWidget::OnLeftButtonDown()
{
  this->CurveGrabbed = false;
  if (!zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor))
  {
    this->State = Outside;
    return;
  }
  const bool onHandle = this->Pick(this->HandlePicker);
  this->CurrentHandleIndex = this->HighlightHandle();
  if (onHandle)
  {
    this->State = Moving;
  }
  else if (this->Pick(this->LinePicker))
  {
    this->InsertHandleUnderPointer();
  }
  else
  {
    this->State = Outside;
    return;
  }
  this->BeginInteraction();
}

void zvAreaWidget::OnLeftButtonUp()
{
  if (this->State == Start || this->State == Outside)
  {
    return;
  }
  this->State = Start;
  this->HighlightLine(0);
  this->CurveGrabbed = false;
  this->HighlightHandle();
  this->CurrentHandleIndex = -1;
  this->FinishInteraction();
}

void zvAreaWidget::OnMouseMove()
{
  double previous[3];
  double current[3];
  if (this->State == Start || this->State == Outside ||
    !zvDrag::GetMotion(
      this->Interactor, this->CurrentRenderer, this->LastPickPosition, previous, current))
  {
    return;
  }
  this->MoveWithPointer(previous, current);
  if (this->State == Moving && this->CurrentHandleIndex != -1)
  {
    // Deliberate: before the line follows, so the area is that of the curve as it was last drawn.
    this->CalculateArea();
  }
  this->FollowMotion();
  this->UpdateAreaLabel();
  this->TellMotion();
}

void zvAreaWidget::OnMouseWheelForward()
{
  this->RefreshLabelAfterZoom();
}

void zvAreaWidget::OnMouseWheelBackward()
{
  this->RefreshLabelAfterZoom();
}

void zvAreaWidget::ProcessEvents(
  vtkObject* vtkNotUsed(object), unsigned long event, void* clientdata, void* vtkNotUsed(calldata))
{
  // An observer may release the widget while its handler runs.
  const vtkSmartPointer<zvAreaWidget> self = static_cast<zvAreaWidget*>(clientdata);
  zvDispatch::ToHandler(self.GetPointer(), event);
}

void zvAreaWidget::CloseCurve()
{
  this->ClosedOn();
  this->State = Start;
  this->Closed = 1;
  this->SetEnabled(1);
  // Enabling drew the closed line. Of a widget that was enabled before, the open one was drawn
  // last.
  this->ParametricFunctionSource->Update();
  this->CalculateArea();
}

void zvAreaWidget::SizeLabel()
{
  // A renderer that has left its window has no size to fit the label to.
  const bool canFit = !this->CurrentRenderer || zvViewLookup::IsShown(this->CurrentRenderer);
  const double size =
    canFit ? this->vtk3DWidget::SizeHandles(1.0) : this->HandleSize * this->InitialLength;
  zvLengthLabel::SetSize(this->AreaActor, size * LabelScale);
}

void zvAreaWidget::RefreshLabelAfterZoom()
{
  this->UpdateAreaLabel();
  this->SizeHandles();
  zvViewLookup::Render(this->Interactor);
}
