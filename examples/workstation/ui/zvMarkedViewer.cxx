#include "zvMarkedViewer.h"

#include "zvAreaWidget.h"
#include "zvLassoWidget.h"
#include "zvRulerWidget.h"
#include "zvTextNoteWidget.h"

#include "vtkCollection.h"
#include "vtkObjectFactory.h"
#include "vtkPoints.h"
#include "vtkRenderWindowInteractor.h"

vtkStandardNewMacro(zvMarkedViewer);

namespace
{
template <class Tool>
std::vector<vtkSmartPointer<Tool>> ToolsIn(vtkCollection* collection)
{
  std::vector<vtkSmartPointer<Tool>> tools;
  for (int i = 0; i < collection->GetNumberOfItems(); ++i)
  {
    tools.push_back(static_cast<Tool*>(collection->GetItemAsObject(i)));
  }
  return tools;
}
}

std::vector<vtkSmartPointer<zvRulerWidget>> zvMarkedViewer::GetRulers()
{
  return ToolsIn<zvRulerWidget>(this->RulerWidgets);
}

std::vector<vtkSmartPointer<zvAreaWidget>> zvMarkedViewer::GetAreas()
{
  return ToolsIn<zvAreaWidget>(this->AreaWidgets);
}

std::vector<vtkSmartPointer<zvLassoWidget>> zvMarkedViewer::GetLassos()
{
  return ToolsIn<zvLassoWidget>(this->LassoWidgets);
}

std::vector<vtkSmartPointer<zvTextNoteWidget>> zvMarkedViewer::GetNotes()
{
  return ToolsIn<zvTextNoteWidget>(this->TextNoteWidgets);
}

zvRulerWidget* zvMarkedViewer::GetCurrentRuler()
{
  return this->CurrentRulerWidget;
}

void zvMarkedViewer::SetCurrentRuler(zvRulerWidget* ruler)
{
  this->CurrentRulerWidget = ruler;
}

zvAreaWidget* zvMarkedViewer::GetCurrentArea()
{
  return this->CurrentAreaWidget;
}

void zvMarkedViewer::SetCurrentArea(zvAreaWidget* area)
{
  this->CurrentAreaWidget = area;
}

zvLassoWidget* zvMarkedViewer::GetCurrentLasso()
{
  return this->CurrentLassoWidget;
}

void zvMarkedViewer::SetCurrentLasso(zvLassoWidget* lasso)
{
  this->CurrentLassoWidget = lasso;
}

zvTextNoteWidget* zvMarkedViewer::GetCurrentNote()
{
  return this->CurrentTextNoteWidget;
}

void zvMarkedViewer::SetCurrentNote(zvTextNoteWidget* note)
{
  this->CurrentTextNoteWidget = note;
}

// Nothing else becomes the current ruler while one waits.
void zvMarkedViewer::StopWaiting()
{
  if (this->AddRulerMode)
  {
    this->AddRulerMode = false;
    this->Remove(this->CurrentRulerWidget);
  }
}

bool zvMarkedViewer::HasFill()
{
  return this->FilledPoints->GetNumberOfPoints() > 0;
}

// A tool has two references from the view: that of its making and that of the collection.
void zvMarkedViewer::Remove(vtk3DWidget* tool)
{
  for (vtkCollection* tools : { this->RulerWidgets.Get(), this->AreaWidgets.Get(),
         this->LassoWidgets.Get(), this->TextNoteWidgets.Get() })
  {
    if (tools->IsItemPresent(tool) == 0)
    {
      continue;
    }
    if (tool->GetInteractor() != nullptr)
    {
      tool->SetEnabled(0);
    }
    tools->RemoveItem(tool);
    tool->Delete();
    return;
  }
}
