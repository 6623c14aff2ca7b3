#include "zvImagePlaneWidget.h"

#include "zvBoxCutter.h"
#include "zvEvents.h"
#include "zvPlaneSource.h"
#include "zvSliceColorMap.h"
#include "zvSliceReslice.h"
#include "zvSliceTexture.h"
#include "zvViewLookup.h"

#include "vtkActor.h"
#include "vtkCallbackCommand.h"
#include "vtkCellArray.h"
#include "vtkCellPicker.h"
#include "vtkCubeSource.h"
#include "vtkImageData.h"
#include "vtkLookupTable.h"
#include "vtkMatrix4x4.h"
#include "vtkNew.h"
#include "vtkPlane.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"
#include "vtkPolyDataMapper.h"
#include "vtkProperty.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkTextActor.h"
#include "vtkTextProperty.h"
#include "vtkTransform.h"

#include <algorithm>
#include <cstdio>

namespace
{
constexpr double PickTolerance = 0.005;

struct Line
{
  vtkIdType Begin;
  vtkIdType End;
};

// Lines between points that are set later, in an actor that cannot be picked.
template <std::size_t Count>
void BuildLines(
  vtkIdType numberOfPoints, const Line (&lines)[Count], vtkPolyData* polyData, vtkActor* actor)
{
  vtkNew<vtkPoints> points;
  points->SetDataTypeToDouble();
  points->SetNumberOfPoints(numberOfPoints);
  points->GetData()->Fill(0.0);
  vtkNew<vtkCellArray> cells;
  for (const Line& line : lines)
  {
    const vtkIdType ids[2] = { line.Begin, line.End };
    cells->InsertNextCell(2, ids);
  }
  polyData->SetPoints(points);
  polyData->SetLines(cells);
  vtkNew<vtkPolyDataMapper> mapper;
  mapper->SetInputData(polyData);
  // Lines that lie in the plane would flicker with it.
  vtkMapper::SetResolveCoincidentTopology(1);
  actor->SetMapper(mapper);
  actor->PickableOff();
}

// Fully ambient, which is drawn as its plain colour only without a diffuse part.
vtkSmartPointer<vtkProperty> NewPlainProperty()
{
  auto property = vtkSmartPointer<vtkProperty>::New();
  property->SetAmbient(1.0);
  property->SetDiffuse(0.0);
  property->SetInterpolationToFlat();
  return property;
}

vtkSmartPointer<vtkProperty> NewWireProperty(double red, double green, double blue)
{
  vtkSmartPointer<vtkProperty> property = NewPlainProperty();
  property->SetColor(red, green, blue);
  property->SetRepresentationToWireframe();
  return property;
}

void PrintObject(ostream& os, vtkIndent indent, const char* label, vtkObject* object)
{
  if (object)
  {
    os << indent << label << ":\n";
    object->PrintSelf(os, indent.GetNextIndent());
  }
  else
  {
    os << indent << label << ": (none)\n";
  }
}

void PrintPoint(ostream& os, vtkIndent indent, const char* label, const double* xyz)
{
  os << indent << label << ": (" << xyz[0] << ", " << xyz[1] << ", " << xyz[2] << ")\n";
}

void PrintSwitch(ostream& os, vtkIndent indent, const char* label, int on)
{
  os << indent << label << ": " << (on ? "On\n" : "Off\n");
}
}

//------------------------------------------------------------------------------
// Making and printing

zvImagePlaneWidget::zvImagePlaneWidget()
  : PlaneSource(vtkSmartPointer<zvPlaneSource>::New())
  , PlaneOutlinePolyData(vtkSmartPointer<vtkPolyData>::New())
  , PlaneOutlineActor(vtkSmartPointer<vtkActor>::New())
  , Reslice(vtkSmartPointer<zvSliceReslice>::New())
  , ResliceAxes(vtkSmartPointer<vtkMatrix4x4>::New())
  , Transform(vtkSmartPointer<vtkTransform>::New())
  , TexturePlaneActor(vtkSmartPointer<vtkActor>::New())
  , ColorMap(vtkSmartPointer<zvSliceColorMap>::New())
  , Texture(vtkSmartPointer<zvSliceTexture>::New())
  , CursorPolyData(vtkSmartPointer<vtkPolyData>::New())
  , CursorActor(vtkSmartPointer<vtkActor>::New())
  , TextActor(vtkSmartPointer<vtkTextActor>::New())
  , MarginPolyData(vtkSmartPointer<vtkPolyData>::New())
  , MarginActor(vtkSmartPointer<vtkActor>::New())
  , CutPlane(vtkSmartPointer<vtkPlane>::New())
  , Cutter(vtkSmartPointer<zvBoxCutter>::New())
  , BoundsCube(vtkSmartPointer<vtkCubeSource>::New())
  , CutActor(vtkSmartPointer<vtkActor>::New())
{
  this->EventCallbackCommand->SetCallback(zvImagePlaneWidget::ProcessEvents);
  zvEvents::HoldDuringKeys(this->KeyPressCallbackCommand);
  this->PlaceFactor = 1.0;
  this->InitialLength = 1.0;
  std::fill_n(this->LastPickPosition, 3, 0.0);

  this->PlaneSource->SetXResolution(1);
  this->PlaneSource->SetYResolution(1);
  this->Reslice->TransformInputSamplingOff();

  this->GeneratePlaneOutline();
  this->GenerateTexturePlane();
  this->GenerateCursor();
  this->GenerateMargins();
  this->GenerateText();
  this->SetPicker(nullptr);
  this->CreateDefaultProperties();
  this->ActivateMargins(1);
}

zvImagePlaneWidget::~zvImagePlaneWidget()
{
  if (this->Enabled)
  {
    this->Disable();
  }
  if (this->Interactor)
  {
    this->Interactor->RemoveObserver(this->EventCallbackCommand);
  }
  // The class is released by delete as well as by Delete.
  this->SetReferenceCount(0);
}

void zvImagePlaneWidget::PrintSelf(ostream& os, vtkIndent indent)
{
  this->vtk3DWidget::PrintSelf(os, indent);

  PrintObject(os, indent, "Plane Property", this->PlaneProperty);
  PrintObject(os, indent, "Selected Plane Property", this->SelectedPlaneProperty);
  PrintObject(os, indent, "LookupTable", this->LookupTable);
  PrintObject(os, indent, "Cursor Property", this->CursorProperty);
  PrintObject(os, indent, "Margin Property", this->MarginProperty);
  PrintObject(os, indent, "TexturePlane Property", this->TexturePlaneProperty);
  PrintObject(os, indent, "ColorMap", this->ColorMap);
  PrintPoint(os, indent, "Origin", this->GetOrigin());
  PrintPoint(os, indent, "Point 1", this->GetPoint1());
  PrintPoint(os, indent, "Point 2", this->GetPoint2());
  PrintPoint(os, indent, "Current Cursor Position", this->CurrentCursorPosition);
  os << indent << "Current Image Value: " << this->CurrentImageValue << "\n";
  os << indent << "Plane Orientation: " << this->PlaneOrientation << "\n";
  os << indent << "Reslice Interpolate: " << this->ResliceInterpolate << "\n";
  PrintSwitch(os, indent, "Texture Interpolate", this->TextureInterpolate);
  PrintSwitch(os, indent, "Texture Visibility", this->TextureVisibility);
  PrintSwitch(os, indent, "Restrict Plane To Volume", this->RestrictPlaneToVolume);
  PrintSwitch(os, indent, "Display Text", this->DisplayText);
  PrintSwitch(os, indent, "Interaction", this->Interaction);
  PrintSwitch(os, indent, "User Controlled Lookup Table", this->UserControlledLookupTable);
  os << indent << "LeftButtonAction: " << this->LeftButtonAction << "\n";
  os << indent << "MiddleButtonAction: " << this->MiddleButtonAction << "\n";
  os << indent << "RightButtonAction: " << this->RightButtonAction << "\n";
  os << indent << "LeftButtonAutoModifier: " << this->LeftButtonAutoModifier << "\n";
  os << indent << "MiddleButtonAutoModifier: " << this->MiddleButtonAutoModifier << "\n";
  os << indent << "RightButtonAutoModifier: " << this->RightButtonAutoModifier << "\n";
  PrintSwitch(os, indent, "UseContinuousCursor", this->UseContinuousCursor);
  os << indent << "MarginSizeX: " << this->MarginSizeX << "\n";
  os << indent << "MarginSizeY: " << this->MarginSizeY << "\n";
}

void zvImagePlaneWidget::GeneratePlaneOutline()
{
  const Line lines[] = { { 3, 2 }, { 0, 1 }, { 0, 3 }, { 1, 2 } };
  BuildLines(4, lines, this->PlaneOutlinePolyData, this->PlaneOutlineActor);
}

void zvImagePlaneWidget::GenerateMargins()
{
  const Line lines[] = { { 0, 1 }, { 2, 3 }, { 4, 5 }, { 6, 7 } };
  BuildLines(8, lines, this->MarginPolyData, this->MarginActor);
  this->MarginActor->VisibilityOff();
}

void zvImagePlaneWidget::GenerateCursor()
{
  const Line lines[] = { { 0, 1 }, { 2, 3 } };
  BuildLines(4, lines, this->CursorPolyData, this->CursorActor);
  this->CursorActor->VisibilityOff();
}

void zvImagePlaneWidget::GenerateText()
{
  std::snprintf(this->TextBuff, sizeof(this->TextBuff), "NA");
  this->TextActor->SetInput(this->TextBuff);
  this->TextActor->SetTextScaleModeToNone();
  vtkTextProperty* property = this->TextActor->GetTextProperty();
  property->SetColor(1.0, 1.0, 1.0);
  property->SetFontFamilyToArial();
  property->SetFontSize(18);
  property->BoldOff();
  property->ItalicOff();
  property->ShadowOff();
  property->SetJustificationToLeft();
  property->SetVerticalJustificationToBottom();
  vtkCoordinate* position = this->TextActor->GetPositionCoordinate();
  position->SetCoordinateSystemToNormalizedViewport();
  position->SetValue(0.01, 0.01);
  this->TextActor->VisibilityOff();
}

void zvImagePlaneWidget::CreateDefaultProperties()
{
  if (!this->PlaneProperty)
  {
    this->PlaneProperty = NewWireProperty(1.0, 1.0, 1.0);
  }
  if (!this->SelectedPlaneProperty)
  {
    this->SelectedPlaneProperty = NewWireProperty(0.0, 1.0, 0.0);
  }
  if (!this->CursorProperty)
  {
    this->CursorProperty = NewWireProperty(1.0, 0.0, 0.0);
  }
  if (!this->MarginProperty)
  {
    this->MarginProperty = NewWireProperty(0.0, 0.0, 1.0);
  }
  if (!this->TexturePlaneProperty)
  {
    this->TexturePlaneProperty = NewPlainProperty();
    // There is nothing to light, and a frame takes less without it.
    this->TexturePlaneProperty->LightingOff();
  }
}

//------------------------------------------------------------------------------
// Enabling

void zvImagePlaneWidget::SetEnabled(int enabling)
{
  if (!this->Interactor)
  {
    vtkErrorMacro("The interactor must be set prior to enabling/disabling widget");
    return;
  }
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  if (enabling)
  {
    this->Enable();
  }
  else
  {
    this->Disable();
  }
}

void zvImagePlaneWidget::SetInteractor(vtkRenderWindowInteractor* interactor)
{
  // An observer may release the widget or change its interactor, too.
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  if (this->Interactor && this->Enabled && interactor != this->Interactor)
  {
    this->SetEnabled(0);
  }
  this->vtkPolyDataSourceWidget::SetInteractor(interactor);
}

void zvImagePlaneWidget::Enable()
{
  if (this->Enabled)
  {
    return;
  }
  if (!this->CurrentRenderer)
  {
    const int* position = this->Interactor->GetLastEventPosition();
    this->SetCurrentRenderer(this->Interactor->FindPokedRenderer(position[0], position[1]));
    if (!this->CurrentRenderer)
    {
      return;
    }
  }
  this->Enabled = 1;
  if (this->Interaction)
  {
    this->AddObservers();
  }
  if (this->TextureVisibility)
  {
    this->CurrentRenderer->AddViewProp(this->TexturePlaneActor);
  }
  this->TexturePlaneActor->SetProperty(this->TexturePlaneProperty);
  // Deliberate: outline, cursor and margins are not added. The cut through the image's box stands
  // for the outline, and keeps its colour while the plane is held.
  this->CurrentRenderer->AddViewProp(this->TextActor);
  this->CurrentRenderer->AddViewProp(this->CutActor);
  this->CutActor->SetProperty(this->PlaneProperty);
  this->TexturePlaneActor->PickableOn();
  this->InvokeEvent(vtkCommand::EnableEvent, nullptr);
  this->Render();
}

void zvImagePlaneWidget::Disable()
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
  if (this->CurrentRenderer)
  {
    vtkProp* const props[] = { this->PlaneOutlineActor, this->TexturePlaneActor, this->CursorActor,
      this->MarginActor, this->TextActor, this->CutActor };
    for (vtkProp* prop : props)
    {
      this->CurrentRenderer->RemoveViewProp(prop);
    }
  }
  this->TexturePlaneActor->PickableOff();
  this->InvokeEvent(vtkCommand::DisableEvent, nullptr);
  // An observer may have enabled the widget again, and then it could not leave the view any more.
  if (!this->Enabled)
  {
    this->SetCurrentRenderer(nullptr);
  }
  this->Render();
}

void zvImagePlaneWidget::Render()
{
  // An observer may have taken the interactor away.
  zvViewLookup::Render(this->Interactor);
}

void zvImagePlaneWidget::AddObservers()
{
  if (this->Interactor)
  {
    zvEvents::Observe(
      this->Interactor, zvEvents::ImagePlane, this->EventCallbackCommand, this->Priority);
  }
}

void zvImagePlaneWidget::SetInteraction(int interact)
{
  if (!this->Interactor || !this->Enabled || interact == this->Interaction)
  {
    return;
  }
  if (interact)
  {
    this->AddObservers();
  }
  else
  {
    this->Interactor->RemoveObserver(this->EventCallbackCommand);
  }
  this->Interaction = interact;
}

//------------------------------------------------------------------------------
// Parts and their properties

void zvImagePlaneWidget::SetPicker(vtkAbstractPropPicker* picker)
{
  if (this->PlanePicker && this->PlanePicker == picker)
  {
    return;
  }
  this->PlanePicker = picker;
  if (!picker)
  {
    vtkNew<vtkCellPicker> cellPicker;
    cellPicker->SetTolerance(PickTolerance);
    this->PlanePicker = cellPicker;
  }
  this->PlanePicker->AddPickList(this->TexturePlaneActor);
  this->PlanePicker->PickFromListOn();
}

template <typename T>
void zvImagePlaneWidget::SetPart(vtkSmartPointer<T>& part, T* object)
{
  if (part != object)
  {
    part = object;
    this->Modified();
  }
}

void zvImagePlaneWidget::SetColorMap(vtkImageMapToColors* map)
{
  this->SetPart(this->ColorMap, map);
}

vtkImageMapToColors* zvImagePlaneWidget::GetColorMap()
{
  return this->ColorMap;
}

void zvImagePlaneWidget::SetPlaneProperty(vtkProperty* property)
{
  this->SetPart(this->PlaneProperty, property);
}

vtkProperty* zvImagePlaneWidget::GetPlaneProperty()
{
  return this->PlaneProperty;
}

void zvImagePlaneWidget::SetSelectedPlaneProperty(vtkProperty* property)
{
  this->SetPart(this->SelectedPlaneProperty, property);
}

vtkProperty* zvImagePlaneWidget::GetSelectedPlaneProperty()
{
  return this->SelectedPlaneProperty;
}

void zvImagePlaneWidget::SetCursorProperty(vtkProperty* property)
{
  this->SetPart(this->CursorProperty, property);
}

vtkProperty* zvImagePlaneWidget::GetCursorProperty()
{
  return this->CursorProperty;
}

void zvImagePlaneWidget::SetMarginProperty(vtkProperty* property)
{
  this->SetPart(this->MarginProperty, property);
}

vtkProperty* zvImagePlaneWidget::GetMarginProperty()
{
  return this->MarginProperty;
}

void zvImagePlaneWidget::SetTexturePlaneProperty(vtkProperty* property)
{
  this->SetPart(this->TexturePlaneProperty, property);
}

vtkProperty* zvImagePlaneWidget::GetTexturePlaneProperty()
{
  return this->TexturePlaneProperty;
}

void zvImagePlaneWidget::SetTextProperty(vtkTextProperty* property)
{
  if (property)
  {
    this->TextActor->SetTextProperty(property);
  }
}

vtkTextProperty* zvImagePlaneWidget::GetTextProperty()
{
  return this->TextActor->GetTextProperty();
}
