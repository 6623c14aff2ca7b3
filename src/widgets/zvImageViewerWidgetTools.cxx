// The tools of the slice view: who makes them, owns them and lets go of them.

#include "zvImageViewerWidget.h"

#include "zvAreaWidget.h"
#include "zvCollections.h"
#include "zvEvents.h"
#include "zvLassoWidget.h"
#include "zvNumbers.h"
#include "zvRulerWidget.h"
#include "zvTextNoteWidget.h"
#include "zvViewLookup.h"

#include "vtkProperty.h"
#include "vtkRenderWindowInteractor.h"

namespace
{
// The colours of successive lassos, used in rotation.
constexpr double PaintColor[5][3] = { { 1.0, 0.0, 0.0 }, { 0.0, 1.0, 0.4 }, { 0.0, 0.0, 1.0 },
  { 1.0, 1.0, 0.0 }, { 0.35, 0.12, 0.0 } };

// A new tool at the end of a collection; the reference from New stays with the view.
template <typename Tool>
Tool* AddTool(vtkCollection* tools)
{
  Tool* tool = Tool::New();
  tools->AddItem(tool);
  return tool;
}

// Taken off another view a tool renders there, where an observer may release it.
void Attach(vtkInteractorObserver* tool, vtkRenderWindowInteractor* interactor)
{
  const vtkSmartPointer<vtkInteractorObserver> hold = tool;
  if (tool)
  {
    tool->SetInteractor(interactor);
  }
}
}

void zvImageViewerWidget::AddRulerWidget(double*)
{
  if (this->AddRulerMode || this->AddAreaMode || this->AddLassoMode)
  {
    return;
  }
  this->CurrentRulerWidget = AddTool<zvRulerWidget>(this->RulerWidgets);
  this->AddRulerMode = true;
}

void zvImageViewerWidget::AddAreaWidget(double*)
{
  this->CurrentAreaWidget = AddTool<zvAreaWidget>(this->AreaWidgets);
  this->CurrentAreaWidget->SetInteractor(this->Interactor);
  this->AddAreaMode = true;
}

void zvImageViewerWidget::AddLassoWidget(double*)
{
  zvLassoWidget* lasso = AddTool<zvLassoWidget>(this->LassoWidgets);
  this->CurrentLassoWidget = lasso;
  const double* color = PaintColor[this->LassoCount % 5];
  lasso->GetLineProperty()->SetColor(color[0], color[1], color[2]);
  this->LassoCount += 1;
  lasso->SetInteractor(this->Interactor);
}

void zvImageViewerWidget::AddTextNoteWidget(const char* text, int plane, double* color, double size)
{
  if (this->CurrentTextNoteWidget)
  {
    this->CurrentTextNoteWidget->SetText(text, color, size);
    return;
  }
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  const vtkSmartPointer<zvTextNoteWidget> note = AddTool<zvTextNoteWidget>(this->TextNoteWidgets);
  this->CurrentTextNoteWidget = note;
  note->SetText(text, color, size);
  note->SetPlane(plane);
  note->SetInteractor(this->Interactor);
  note->SetLocation(
    this->PointClicked[0] + 1.0, this->PointClicked[1] + 1.0, this->PointClicked[2] + 1.0);
  note->AddObservers();
  note->SetEnabled(1);
  zvViewLookup::Render(this->Interactor);
}

void zvImageViewerWidget::EnableRulerWidget()
{
  this->LockLassos();
  const vtkSmartPointer<vtkRenderWindowInteractor> interactor = this->Interactor;
  if (const vtkSmartPointer<zvRulerWidget> ruler = this->CurrentRulerWidget.Get())
  {
    Attach(ruler, interactor);
    ruler->SetEnabled(1);
  }
}

void zvImageViewerWidget::EnableAreaWidget()
{
  this->AddAreaMode = true;
  Attach(this->CurrentAreaWidget, this->Interactor);
}

void zvImageViewerWidget::EnableLassoWidget(bool on)
{
  if (!this->CurrentLassoWidget)
  {
    vtkGenericWarningMacro("there is no current lasso");
    return;
  }
  Attach(this->CurrentLassoWidget, on ? this->Interactor : nullptr);
}

void zvImageViewerWidget::DeleteWidget()
{
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  zvCollections::ReleaseAll(this->RulerWidgets);
  // Deliberate: a contour that is being drawn is enabled once more before it goes.
  if (this->CurrentAreaWidget && this->CurrentAreaWidget->GetInteractor())
  {
    this->CurrentAreaWidget->SetEnabled(1);
  }
  zvCollections::ReleaseAll(this->AreaWidgets);
  zvCollections::ReleaseAll(this->LassoWidgets);
  this->LassoCount = 0;
  this->CurrentRulerWidget = nullptr;
  this->CurrentAreaWidget = nullptr;
  this->CurrentLassoWidget = nullptr;
  this->AddRulerMode = this->AddAreaMode = this->AddLassoMode = false;
  zvViewLookup::Render(this->Interactor);
}

bool zvImageViewerWidget::TextSelected()
{
  for (const auto& note : zvCollections::ItemsOf<zvTextNoteWidget>(this->TextNoteWidgets))
  {
    if (note->IsClicked())
    {
      return true;
    }
  }
  return false;
}

const char* zvImageViewerWidget::GetCurrentSelectedText()
{
  return this->CurrentTextNoteWidget ? this->CurrentTextNoteWidget->GetText() : nullptr;
}

double* zvImageViewerWidget::GetCurrentTextColor()
{
  return this->CurrentTextNoteWidget ? this->CurrentTextNoteWidget->GetColor() : nullptr;
}

int zvImageViewerWidget::GetCurrentTextSize()
{
  return this->CurrentTextNoteWidget
    ? zvNumbers::Truncate(this->CurrentTextNoteWidget->GetFontSize())
    : 0;
}

void zvImageViewerWidget::DeleteCurrentTextNoteWidget()
{
  const vtkSmartPointer<zvTextNoteWidget> note = this->CurrentTextNoteWidget.Get();
  if (!note)
  {
    vtkGenericWarningMacro("there is no current text note");
    return;
  }
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  note->SetEnabled(0);
  this->CurrentTextNoteWidget = nullptr;
  // An observer may have deleted it already.
  if (this->TextNoteWidgets->IsItemPresent(note))
  {
    this->TextNoteWidgets->RemoveItem(note);
    note->Delete();
  }
}

void zvImageViewerWidget::DeleteAllTextNoteWidgets()
{
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  for (const auto& note : zvCollections::ItemsOf<zvTextNoteWidget>(this->TextNoteWidgets))
  {
    note->SetEnabled(0);
  }
  zvCollections::ReleaseAll(this->TextNoteWidgets);
}

void zvImageViewerWidget::ResetMode()
{
  for (bool* flag : { &this->AddRulerMode, &this->AddAreaMode, &this->AddLassoMode,
         &this->PickPointModeA, &this->PickPointModeB, &this->QuickApply, &this->AddText,
         &this->PickPointModeC, &this->PickPointModeD, &this->PickPointBoundMode, &this->PaintMode,
         &this->LeftButtonHeld, &this->FillMode })
  {
    *flag = false;
  }
  this->ModeResetMarker = true;
}
