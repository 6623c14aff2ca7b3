#include "zvTextNoteWidget.h"

#include "zvDispatch.h"
#include "zvDrag.h"
#include "zvEvents.h"
#include "zvInteraction.h"
#include "zvMessages.h"
#include "zvNumbers.h"
#include "zvObservedSubjects.h"
#include "zvPick.h"
#include "zvRawView.h"
#include "zvViewLookup.h"

#include "vtkCallbackCommand.h"
#include "vtkFollower.h"
#include "vtkObjectFactory.h"
#include "vtkPicker.h"
#include "vtkPolyData.h"
#include "vtkPolyDataMapper.h"
#include "vtkProperty.h"
#include "vtkRenderWindow.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkVectorText.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace
{
constexpr double PickTolerance = 0.001; // of the window's diagonal
constexpr int MaximumTextLength = 99;
}

vtkObjectFactoryNewMacro(zvTextNoteWidget);

vtkObject* vtkInstantiatorzvTextNoteWidgetNew()
{
  return zvTextNoteWidget::New();
}

zvTextNoteWidget::zvTextNoteWidget()
  : RawView(std::make_unique<zvRawView>(this,
      zvRawView::Fields{
        this->CurrentRenderer, this->Interactor, this->CharObserverTag, this->DeleteObserverTag }))
{
  this->EventCallbackCommand->SetCallback(zvTextNoteWidget::ProcessEvents);
  zvEvents::HoldDuringKeys(this->KeyPressCallbackCommand);
  std::fill_n(this->LastPickPosition, 3, 0.0); // the depth of a drag
  std::fill_n(this->InitialBounds, 6, 0.0);    // a note is never placed
  this->InitialLength = 1.0;
  this->TextPicker->SetTolerance(PickTolerance);
  this->TextPicker->AddPickList(this->TextActor);
  this->TextPicker->PickFromListOn();
}

zvTextNoteWidget::~zvTextNoteWidget()
{
  this->zvTextNoteWidget::SetEnabled(0);
  zvObservedSubjects::Release(this->Observed, this->EventCallbackCommand);
  if (this->ShownIn)
  {
    this->ShownIn->RemoveActor(this->TextActor);
  }
}

void zvTextNoteWidget::PrintSelf(ostream& os, vtkIndent indent)
{
  this->Superclass::PrintSelf(os, indent);
}

void zvTextNoteWidget::CollectRevisions(ostream& os)
{
  os << "zvTextNoteWidget $Revision: 1.2 $\n";
}

void zvTextNoteWidget::SetEnabled(int enabling)
{
  zvTraceMacro("void zvTextNoteWidget::SetEnabled(int enabling)");
  // An observer may release the widget. In the destructor there is nothing to hold any more.
  const vtkSmartPointer<zvTextNoteWidget> self = this->GetReferenceCount() > 0 ? this : nullptr;
  if (!enabling)
  {
    this->Hide();
  }
  else if (this->Enabled)
  {
    // Deliberate: said whether or not traces are on, hosts watch for a note that is shown twice.
    zvMessages::WriteTrace(__FILE__, __LINE__, this, "Return in method SetEnabled())");
  }
  else
  {
    this->Show();
  }
}

void zvTextNoteWidget::SetInteractor(vtkRenderWindowInteractor* interactor)
{
  // An observer may release the widget or change its interactor, too.
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  if (this->Interactor && this->Enabled && interactor != this->Interactor)
  {
    this->SetEnabled(0);
  }
  this->vtk3DWidget::SetInteractor(interactor);
}

// Deliberately empty: a note is where SetLocation puts it.
void zvTextNoteWidget::PlaceWidget(double vtkNotUsed(bounds)[6]) {}

void zvTextNoteWidget::PlaceWidget()
{
  this->Superclass::PlaceWidget();
}

void zvTextNoteWidget::PlaceWidget(
  double xmin, double xmax, double ymin, double ymax, double zmin, double zmax)
{
  this->Superclass::PlaceWidget(xmin, xmax, ymin, ymax, zmin, zmax);
}

int zvTextNoteWidget::GetMaximumTextLength()
{
  return MaximumTextLength;
}

void zvTextNoteWidget::SetText(const char* text, double* color, double size)
{
  if (!text || !color)
  {
    vtkGenericWarningMacro("set a text and a colour for the note...");
    return;
  }
  if (std::strlen(text) > static_cast<std::size_t>(MaximumTextLength))
  {
    // Deliberate: a host that does not check the length does not know what it shows.
    std::abort();
  }
  this->TextSource->SetText(text);
  vtkNew<vtkPolyDataMapper> mapper;
  mapper->SetInputConnection(this->TextSource->GetOutputPort());
  this->TextActor->SetMapper(mapper);
  this->TextActor->GetProperty()->SetColor(color[0], color[1], color[2]);
  this->TextActor->SetScale(size, size, size);
}

const char* zvTextNoteWidget::GetText()
{
  return this->TextSource->GetText();
}

double* zvTextNoteWidget::GetColor()
{
  return this->TextActor->GetProperty()->GetColor();
}

double zvTextNoteWidget::GetFontSize()
{
  return this->TextActor->GetScale()[0];
}

void zvTextNoteWidget::SetLocation(double x, double y, double z)
{
  this->TextActor->SetPosition(x, y, z);
}

void zvTextNoteWidget::SetPlane(int plane)
{
  this->Plane = plane;
}

// Deliberately empty: a follower faces the camera by itself.
void zvTextNoteWidget::SetOrientation() {}

int zvTextNoteWidget::IsClicked()
{
  return this->PickText() ? 1 : 0;
}

void zvTextNoteWidget::SetCurrentRender(vtkRenderer* render)
{
  if (!this->RawView->Write(render))
  {
    vtkGenericWarningMacro("set a renderer that is in a render window...");
  }
}

vtkRenderer* zvTextNoteWidget::GetCurrentRender()
{
  return this->CurrentRenderer;
}

void zvTextNoteWidget::SetCurrentRenderer(vtkRenderer* renderer)
{
  this->RawView->ReleaseRenderer();
  this->Superclass::SetCurrentRenderer(renderer);
}

void zvTextNoteWidget::AddObservers()
{
  zvTraceMacro("zvTextNoteWidget::AddObservers(void)");
  if (!this->Interactor)
  {
    vtkGenericWarningMacro("set interactor before adding observers...");
    return;
  }
  zvEvents::Observe(this->Interactor, zvEvents::Handle, this->EventCallbackCommand, this->Priority);
  zvObservedSubjects::Add(this->Observed, this->Interactor);
  this->InvokeEvent(vtkCommand::EnableEvent, nullptr);
}

void zvTextNoteWidget::OnLeftButtonDown()
{
  if (!zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor) || !this->PickText())
  {
    this->State = Outside;
    return;
  }
  this->State = Moving;
  this->BeginInteraction();
}

void zvTextNoteWidget::OnLeftButtonUp()
{
  this->FinishDrag();
}

void zvTextNoteWidget::OnMiddleButtonDown()
{
  this->State = Start;
  if (!zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor))
  {
    this->State = Outside;
    return;
  }
  if (!this->Interactor->GetControlKey())
  {
    this->State = Moving;
  }
  // Deliberate: whether the note was hit does not matter, this button fetches it from anywhere.
  this->PickText();
  this->BeginInteraction();
}

void zvTextNoteWidget::OnMiddleButtonUp()
{
  this->FinishDrag();
}

// Deliberately empty but for the trace: the right button is the host's, for its menu.
void zvTextNoteWidget::OnRightButtonDown()
{
  zvTraceMacro("void zvTextNoteWidget::OnRightButtonDown()");
}

void zvTextNoteWidget::OnRightButtonUp()
{
  zvViewLookup::Render(this->Interactor);
}

void zvTextNoteWidget::OnMouseMove()
{
  double previous[3];
  double pick[3];
  if (this->State == Start || this->State == Outside ||
    !zvDrag::GetMotion(
      this->Interactor, this->CurrentRenderer, this->LastPickPosition, previous, pick))
  {
    return;
  }
  if (this->State == Moving && this->Plane >= 0 && this->Plane <= 2)
  {
    // Deliberate: the corner of the text jumps to the pointer, it does not keep the grip.
    pick[this->Plane] = this->TextActor->GetPosition()[this->Plane];
    this->TextActor->SetPosition(pick);
  }
  this->TellMotion();
}

void zvTextNoteWidget::OnMouseWheelForward()
{
  this->SizeHandles();
  zvViewLookup::Render(this->Interactor);
}

void zvTextNoteWidget::OnMouseWheelBackward()
{
  this->SizeHandles();
  zvViewLookup::Render(this->Interactor);
}

void zvTextNoteWidget::ProcessEvents(
  vtkObject* vtkNotUsed(object), unsigned long event, void* clientdata, void* vtkNotUsed(calldata))
{
  // An observer may release the widget while its handler runs.
  const vtkSmartPointer<zvTextNoteWidget> self = static_cast<zvTextNoteWidget*>(clientdata);
  zvDispatch::ToHandler(self.GetPointer(), event);
}

bool zvTextNoteWidget::PickText()
{
  // At a place or of a size that is no number the picker finds nothing, and complains.
  if (!this->Interactor || !this->TextActor->GetMapper() ||
    !zvNumbers::AreFinite(this->TextActor->GetPosition()) ||
    !zvNumbers::AreFinite(this->TextActor->GetScale()))
  {
    return false;
  }
  // A text that is blank has no points, and its picker would take the origin for a hit.
  this->TextSource->Update();
  if (this->TextSource->GetOutput()->GetNumberOfPoints() == 0)
  {
    return false;
  }
  const int* position = this->Interactor->GetEventPosition();
  return zvPick::Hits(
    this->TextPicker, position[0], position[1], this->CurrentRenderer, this->TextActor);
}

void zvTextNoteWidget::Show()
{
  if (!this->CurrentRenderer)
  {
    this->SetCurrentRenderer(zvViewLookup::Choose(nullptr, this->Interactor));
  }
  if (!this->CurrentRenderer)
  {
    return;
  }
  this->Enabled = 1;
  this->TextActor->SetCamera(this->CurrentRenderer->GetActiveCamera());
  this->CurrentRenderer->AddViewProp(this->TextActor);
  this->ShownIn = this->CurrentRenderer;
  this->InvokeEvent(vtkCommand::EnableEvent, nullptr);
  zvViewLookup::Render(this->Interactor);
}

void zvTextNoteWidget::Hide()
{
  if (!this->Enabled)
  {
    return;
  }
  this->Enabled = 0;
  if (this->Interactor)
  {
    this->Interactor->RemoveObserver(this->EventCallbackCommand);
  }
  // The renderer may have been taken away meanwhile, the note is in it all the same.
  if (vtkRenderer* renderer = this->CurrentRenderer ? this->CurrentRenderer : this->ShownIn.Get())
  {
    renderer->RemoveActor(this->TextActor);
  }
  this->SetCurrentRenderer(nullptr);
  this->InvokeEvent(vtkCommand::DisableEvent, nullptr);
  zvViewLookup::Render(this->Interactor);
}

void zvTextNoteWidget::FinishDrag()
{
  if (this->State == Start || this->State == Outside)
  {
    return;
  }
  this->State = Start;
  this->SizeHandles();
  this->FinishInteraction();
}

void zvTextNoteWidget::BeginInteraction()
{
  zvInteraction::Tell(this, this->EventCallbackCommand, this->Interactor,
    vtkCommand::StartInteractionEvent, [this] { this->StartInteraction(); });
}

void zvTextNoteWidget::TellMotion()
{
  zvInteraction::Tell(
    this, this->EventCallbackCommand, this->Interactor, vtkCommand::InteractionEvent);
}

void zvTextNoteWidget::FinishInteraction()
{
  zvInteraction::Tell(this, this->EventCallbackCommand, this->Interactor,
    vtkCommand::EndInteractionEvent, [this] { this->EndInteraction(); });
}
