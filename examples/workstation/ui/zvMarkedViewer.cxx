#include "zvMarkedViewer.h"

#include "zvAreaWidget.h"
#include "zvLabelAtlas.h"
#include "zvLassoWidget.h"
#include "zvRulerWidget.h"
#include "zvTextNoteWidget.h"

#include "vtkCollection.h"
#include "vtkImageData.h"
#include "vtkNew.h"
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

void zvMarkedViewer::KeepSlice()
{
  const int axis = this->GetViewOrientation();
  const auto index = static_cast<int>(this->GetCurrentCursorPosition()[axis]);
  this->KeptSlice = zvLabelAtlas::CutLayer(this->ImageData, axis, index);
}

void zvMarkedViewer::TakeBackFill()
{
  vtkNew<vtkPoints> filled;
  filled->DeepCopy(this->FilledPoints);
  this->UndoFill();
  if (!this->KeptSlice)
  {
    return;
  }
  const int* kept = this->KeptSlice->GetExtent();
  for (vtkIdType i = 0; i < filled->GetNumberOfPoints(); ++i)
  {
    double point[3];
    filled->GetPoint(i, point);
    int voxel[3];
    bool isKept = true;
    for (int axis = 0; axis < 3; ++axis)
    {
      voxel[axis] = static_cast<int>(point[axis]);
      isKept = isKept && voxel[axis] >= kept[2 * axis] && voxel[axis] <= kept[2 * axis + 1];
    }
    if (isKept)
    {
      const double value =
        this->KeptSlice->GetScalarComponentAsDouble(voxel[0], voxel[1], voxel[2], 0);
      this->ImageData->SetScalarComponentFromDouble(voxel[0], voxel[1], voxel[2], 0, value);
    }
  }
  this->KeptSlice = nullptr;
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
