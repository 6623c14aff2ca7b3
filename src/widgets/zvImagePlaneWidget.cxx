#include "zvImagePlaneWidget.h"

#include "zvBoxCut.h"
#include "zvBoxCutter.h"
#include "zvDrag.h"
#include "zvEvents.h"
#include "zvImageGrid.h"
#include "zvNumbers.h"
#include "zvObliqueSlices.h"
#include "zvPick.h"
#include "zvPlaneMargins.h"
#include "zvPlaneSource.h"
#include "zvReslicePlane.h"
#include "zvSliceColorMap.h"
#include "zvSliceReslice.h"
#include "zvSliceTexture.h"
#include "zvWindowLevel.h"

#include "vtkActor.h"
#include "vtkAlgorithmOutput.h"
#include "vtkCallbackCommand.h"
#include "vtkCell.h"
#include "vtkCellArray.h"
#include "vtkCellPicker.h"
#include "vtkCubeSource.h"
#include "vtkCutter.h"
#include "vtkDataArray.h"
#include "vtkDoubleArray.h"
#include "vtkImageData.h"
#include "vtkLookupTable.h"
#include "vtkMath.h"
#include "vtkMatrix4x4.h"
#include "vtkNew.h"
#include "vtkPlane.h"
#include "vtkPlanes.h"
#include "vtkPointData.h"
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
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace
{
const double NoValue = 1e299;
const double PickTolerance = 0.005;
const int Oblique = 3;

// Planes of larger images are not enlarged before they turn, so that the slice stays affordable.
const int LargestEnlargedExtent = 999;

enum PressedButton
{
  NoButton = 0,
  LeftButton = 1,
  MiddleButton = 2,
  RightButton = 3
};

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

// The points are told as well, as mappers look at nothing else.
void TellPointsMoved(vtkPolyData* polyData)
{
  polyData->GetPoints()->GetData()->Modified();
  polyData->GetPoints()->Modified();
  polyData->Modified();
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

void ConfigureTexture(vtkTexture* texture, int interpolate, vtkLookupTable* table)
{
  texture->SetQualityTo32Bit();
  texture->SetColorMode(VTK_COLOR_MODE_DEFAULT);
  texture->SetInterpolate(interpolate);
  texture->RepeatOff();
  texture->SetLookupTable(table);
}

zvReslicePlane::Corners GetCorners(zvPlaneSource* source)
{
  zvReslicePlane::Corners plane;
  source->GetOrigin(plane.Origin);
  source->GetPoint1(plane.Point1);
  source->GetPoint2(plane.Point2);
  return plane;
}

void SetCorners(zvPlaneSource* source, zvReslicePlane::Corners plane)
{
  source->SetOrigin(plane.Origin);
  source->SetPoint1(plane.Point1);
  source->SetPoint2(plane.Point2);
}

// The position of a point's foot along an axis, 0 at the origin and 1 at the end.
double FootParameter(const double fromOrigin[3], const double axis[3])
{
  const double length2 = vtkMath::Dot(axis, axis);
  return length2 > 0.0 ? vtkMath::Dot(fromOrigin, axis) / length2 : 0.0;
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

//------------------------------------------------------------------------------------------------
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

void zvImagePlaneWidget::GenerateTexturePlane()
{
  this->SetResliceInterpolate(this->ResliceInterpolate);
  this->LookupTable.TakeReference(this->CreateDefaultLookupTable());
  this->ColorMap->SetLookupTable(this->LookupTable);
  this->ColorMap->SetOutputFormatToRGBA();
  this->ColorMap->PassAlphaToOutputOn();
  ConfigureTexture(this->Texture, this->TextureInterpolate, this->LookupTable);
  this->TexturePlaneActor->SetTexture(this->Texture);
  this->TexturePlaneActor->PickableOn();
  // A texture without an image cannot be drawn.
  this->ShowImage(false);
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

//------------------------------------------------------------------------------------------------
// Enabling and events

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
  if (this->Interactor)
  {
    this->Interactor->Render();
  }
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

//------------------------------------------------------------------------------------------------
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

//------------------------------------------------------------------------------------------------
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

void zvImagePlaneWidget::SetWindowLevel(double window, double level, int copy)
{
  if (!zvWindowLevel::AreFinite({ window, level }))
  {
    vtkGenericWarningMacro("window and level must be finite numbers");
    return;
  }
  if (copy)
  {
    this->CurrentWindow = window;
    this->CurrentLevel = level;
    return;
  }
  if (this->CurrentWindow == window && this->CurrentLevel == level)
  {
    return;
  }
  this->ApplyToTable(window, level);
  this->CurrentWindow = window;
  this->CurrentLevel = level;
  if (this->Enabled)
  {
    this->Render();
  }
}

void zvImagePlaneWidget::ApplyToTable(double window, double level)
{
  if (this->UserControlledLookupTable)
  {
    return;
  }
  if (zvWindowLevel::HaveOppositeSigns(window, this->CurrentWindow))
  {
    this->InvertTable();
  }
  zvWindowLevel::SetTableRange({ window, level }, this->LookupTable);
}

void zvImagePlaneWidget::GetWindowLevel(double wl[2])
{
  wl[0] = this->CurrentWindow;
  wl[1] = this->CurrentLevel;
}

void zvImagePlaneWidget::InvertTable()
{
  zvWindowLevel::Reverse(this->LookupTable);
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

void zvImagePlaneWidget::PlaceCursor(const double q[3])
{
  const zvReslicePlane::Corners plane = GetCorners(this->PlaneSource);
  double vector1[3];
  double vector2[3];
  this->GetVector1(vector1);
  this->GetVector2(vector2);
  double fromOrigin[3];
  vtkMath::Subtract(q, plane.Origin, fromOrigin);
  const double along1 = FootParameter(fromOrigin, vector1);
  const double along2 = FootParameter(fromOrigin, vector2);
  double ends[4][3];
  for (int i = 0; i < 3; ++i)
  {
    ends[0][i] = plane.Origin[i] + along2 * vector2[i];
    ends[1][i] = plane.Point1[i] + along2 * vector2[i];
    ends[2][i] = plane.Origin[i] + along1 * vector1[i];
    ends[3][i] = plane.Point2[i] + along1 * vector1[i];
  }
  for (vtkIdType i = 0; i < 4; ++i)
  {
    this->CursorPolyData->GetPoints()->SetPoint(i, ends[i]);
  }
  TellPointsMoved(this->CursorPolyData);
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

//------------------------------------------------------------------------------------------------
// Input

void zvImagePlaneWidget::SetInput(vtkDataSet* input)
{
  if (vtkImageData::SafeDownCast(input))
  {
    this->SetInputData(input);
  }
  else
  {
    this->DetachInput();
  }
}

void zvImagePlaneWidget::SetInputConnection(vtkAlgorithmOutput* port)
{
  // Held, as the old connection may be all that keeps the port's producer.
  const vtkSmartPointer<vtkAlgorithmOutput> holdPort = port;
  this->vtk3DWidget::SetInputConnection(port);
  if (!port || !vtkImageData::SafeDownCast(this->GetInput()))
  {
    this->DetachInput();
    return;
  }
  port->GetProducer()->Update(port->GetIndex());
  vtkImageData* image = vtkImageData::SafeDownCast(this->GetInput());
  if (!image || this->RefuseTurnedImage(zvImageGrid::HasIdentityDirection(image)))
  {
    this->DetachInput();
    return;
  }
  this->ImageData = image;
  this->UseImageRange();
  this->ConnectPipeline(port);
  this->ShowImage(zvImageGrid::HasVoxels(image));
}

bool zvImagePlaneWidget::RefuseTurnedImage(bool hasIdentityDirection)
{
  if (!hasIdentityDirection)
  {
    vtkErrorMacro(<< zvImageGrid::DirectionText("image", "the image is not shown"));
  }
  return !hasIdentityDirection;
}

void zvImagePlaneWidget::DetachInput()
{
  this->vtk3DWidget::SetInputConnection(nullptr);
  this->ImageData = nullptr;
  if (this->Reslice)
  {
    this->Reslice->SetInputConnection(nullptr);
  }
  this->ShowImage(false);
}

bool zvImagePlaneWidget::TakeImage()
{
  this->ImageData = this->Reslice ? vtkImageData::SafeDownCast(this->Reslice->GetInput()) : nullptr;
  if (!this->ImageData)
  {
    this->ShowImage(false);
  }
  return this->ImageData != nullptr;
}

void zvImagePlaneWidget::ShowImage(bool on)
{
  this->TexturePlaneActor->SetVisibility(on);
  this->CutActor->SetVisibility(on);
}

void zvImagePlaneWidget::UseImageRange()
{
  double range[2];
  zvWindowLevel::GetRange(this->ImageData, range);
  if (!this->UserControlledLookupTable)
  {
    this->LookupTable->SetTableRange(range);
    this->LookupTable->Build();
  }
  const zvWindowLevel::Values original = zvWindowLevel::FromRange(range);
  this->OriginalWindow = original.Window;
  this->OriginalLevel = original.Level;
  this->SetWindowLevel(this->OriginalWindow, this->OriginalLevel, 0);
}

void zvImagePlaneWidget::ConnectPipeline(vtkAlgorithmOutput* port)
{
  this->Reslice->SetInputConnection(port);
  const int interpolate = this->ResliceInterpolate;
  this->ResliceInterpolate = -1; // so that the value counts as a change and is applied
  this->SetResliceInterpolate(interpolate);
  vtkAlgorithm* colored = this->Reslice;
  if (this->ColorMap)
  {
    this->ColorMap->SetInputConnection(this->Reslice->GetOutputPort());
    colored = this->ColorMap;
  }
  this->Texture->SetInputConnection(colored->GetOutputPort());

  double bounds[6];
  this->ImageData->GetBounds(bounds);
  zvBoxCut::Connect(bounds, this->BoundsCube, this->CutPlane, this->Cutter);
  ConfigureTexture(this->Texture, this->TextureInterpolate, this->LookupTable);
  this->TexturePlaneActor->SetMapper(this->NewTexturePlaneMapper(bounds));
  vtkNew<vtkPolyDataMapper> cutMapper;
  cutMapper->SetInputConnection(this->Cutter->GetOutputPort());
  this->CutActor->SetMapper(cutMapper);
}

vtkSmartPointer<vtkPolyDataMapper> zvImagePlaneWidget::NewTexturePlaneMapper(const double bounds[6])
{
  // A plane that has been enlarged is drawn only inside the image, and a little slack keeps one
  // that stands on a face of its box.
  const double slack = 0.5;
  vtkNew<vtkPoints> points;
  vtkNew<vtkDoubleArray> normals;
  normals->SetNumberOfComponents(3);
  for (int axis = 0; axis < 3; ++axis)
  {
    for (int side = 0; side < 2; ++side)
    {
      const double inwards = side == 0 ? 1.0 : -1.0;
      double point[3] = { bounds[side], bounds[2 + side], bounds[4 + side] };
      point[axis] -= slack * inwards;
      double normal[3] = { 0.0, 0.0, 0.0 };
      normal[axis] = inwards;
      points->InsertNextPoint(point);
      normals->InsertNextTuple(normal);
    }
  }
  vtkNew<vtkPlanes> planes;
  planes->SetPoints(points);
  planes->SetNormals(normals);
  auto mapper = vtkSmartPointer<vtkPolyDataMapper>::New();
  mapper->SetInputConnection(this->PlaneSource->GetOutputPort());
  mapper->SetClippingPlanes(planes);
  // Set back a little in depth (in the toolkit's units, some tenths of a millimetre), or the
  // outline around it is dotted where it is seen at an angle.
  mapper->SetRelativeCoincidentTopologyPolygonOffsetParameters(0.0, 40.0);
  return mapper;
}

void zvImagePlaneWidget::SetResliceInterpolate(int i)
{
  if (this->ResliceInterpolate == i)
  {
    return;
  }
  this->ResliceInterpolate = i;
  this->Modified();
  if (!this->Reslice)
  {
    return;
  }
  switch (i)
  {
    case 0:
      this->Reslice->SetInterpolationModeToNearestNeighbor();
      break;
    case 1:
      this->Reslice->SetInterpolationModeToLinear();
      break;
    default:
      this->Reslice->SetInterpolationModeToCubic();
      break;
  }
  this->Texture->SetInterpolate(this->TextureInterpolate);
}

vtkImageData* zvImagePlaneWidget::GetResliceOutput()
{
  if (!this->TakeImage())
  {
    return nullptr;
  }
  const double* spacing = this->ImageData->GetSpacing();
  this->Reslice->SetOutputSpacing(spacing[0], spacing[1], 1.0);
  this->Reslice->SetOutputOrigin(0.0, 0.0, 0.0);
  this->Reslice->Update();
  return this->Reslice->GetOutput();
}

//------------------------------------------------------------------------------------------------
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

vtkLookupTable* zvImagePlaneWidget::CreateDefaultLookupTable()
{
  vtkLookupTable* table = vtkLookupTable::New();
  table->SetNumberOfColors(256);
  table->SetHueRange(0.0, 0.0);
  table->SetSaturationRange(0.0, 0.0);
  table->SetValueRange(0.0, 1.0);
  table->SetAlphaRange(1.0, 1.0);
  table->Build();
  return table;
}

void zvImagePlaneWidget::SetLookupTable(vtkLookupTable* table)
{
  if (this->LookupTable != table)
  {
    this->LookupTable = table;
    if (!table)
    {
      this->LookupTable.TakeReference(this->CreateDefaultLookupTable());
    }
  }
  if (this->ColorMap)
  {
    this->ColorMap->SetLookupTable(this->LookupTable);
  }
  this->Texture->SetLookupTable(this->LookupTable);
  if (this->ImageData && !this->UserControlledLookupTable)
  {
    this->UseImageRange();
  }
}

vtkLookupTable* zvImagePlaneWidget::GetLookupTable()
{
  return this->LookupTable;
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

void zvImagePlaneWidget::SetTextureVisibility(int vis)
{
  if (this->TextureVisibility == vis)
  {
    return;
  }
  this->TextureVisibility = vis;
  if (this->Enabled && this->CurrentRenderer)
  {
    if (vis)
    {
      this->CurrentRenderer->AddViewProp(this->TexturePlaneActor);
    }
    else
    {
      this->CurrentRenderer->RemoveViewProp(this->TexturePlaneActor);
    }
  }
  this->Modified();
}

vtkTexture* zvImagePlaneWidget::GetTexture()
{
  return this->Texture;
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

//------------------------------------------------------------------------------------------------
// The plane and its reslice

vtkPolyDataAlgorithm* zvImagePlaneWidget::GetPolyDataAlgorithm()
{
  return this->PlaneSource;
}

void zvImagePlaneWidget::GetPolyData(vtkPolyData* pd)
{
  if (pd)
  {
    pd->ShallowCopy(this->PlaneSource->GetOutput());
  }
}

void zvImagePlaneWidget::SetOrigin(double x, double y, double z)
{
  this->PlaneSource->SetOrigin(x, y, z);
  this->Modified();
}

void zvImagePlaneWidget::SetOrigin(double xyz[3])
{
  this->PlaneSource->SetOrigin(xyz);
  this->Modified();
}

double* zvImagePlaneWidget::GetOrigin()
{
  return this->PlaneSource->GetOrigin();
}

void zvImagePlaneWidget::GetOrigin(double xyz[3])
{
  this->PlaneSource->GetOrigin(xyz);
}

void zvImagePlaneWidget::SetPoint1(double x, double y, double z)
{
  this->PlaneSource->SetPoint1(x, y, z);
  this->Modified();
}

void zvImagePlaneWidget::SetPoint1(double xyz[3])
{
  this->PlaneSource->SetPoint1(xyz);
  this->Modified();
}

double* zvImagePlaneWidget::GetPoint1()
{
  return this->PlaneSource->GetPoint1();
}

void zvImagePlaneWidget::GetPoint1(double xyz[3])
{
  this->PlaneSource->GetPoint1(xyz);
}

void zvImagePlaneWidget::SetPoint2(double x, double y, double z)
{
  this->PlaneSource->SetPoint2(x, y, z);
  this->Modified();
}

void zvImagePlaneWidget::SetPoint2(double xyz[3])
{
  this->PlaneSource->SetPoint2(xyz);
  this->Modified();
}

double* zvImagePlaneWidget::GetPoint2()
{
  return this->PlaneSource->GetPoint2();
}

void zvImagePlaneWidget::GetPoint2(double xyz[3])
{
  this->PlaneSource->GetPoint2(xyz);
}

double* zvImagePlaneWidget::GetCenter()
{
  return this->PlaneSource->GetCenter();
}

void zvImagePlaneWidget::GetCenter(double xyz[3])
{
  this->PlaneSource->GetCenter(xyz);
}

double* zvImagePlaneWidget::GetNormal()
{
  return this->PlaneSource->GetNormal();
}

void zvImagePlaneWidget::GetNormal(double xyz[3])
{
  this->PlaneSource->GetNormal(xyz);
}

void zvImagePlaneWidget::GetVector1(double v1[3])
{
  vtkMath::Subtract(this->PlaneSource->GetPoint1(), this->PlaneSource->GetOrigin(), v1);
}

void zvImagePlaneWidget::GetVector2(double v2[3])
{
  vtkMath::Subtract(this->PlaneSource->GetPoint2(), this->PlaneSource->GetOrigin(), v2);
}

void zvImagePlaneWidget::BuildRepresentation()
{
  this->PlaneSource->Update();
  const zvReslicePlane::Corners plane = GetCorners(this->PlaneSource);
  double opposite[3];
  for (int i = 0; i < 3; ++i)
  {
    opposite[i] =
      plane.Origin[i] + (plane.Point1[i] - plane.Origin[i]) + (plane.Point2[i] - plane.Origin[i]);
  }
  vtkPoints* points = this->PlaneOutlinePolyData->GetPoints();
  points->SetPoint(0, plane.Origin);
  points->SetPoint(1, plane.Point1);
  points->SetPoint(2, opposite);
  points->SetPoint(3, plane.Point2);
  TellPointsMoved(this->PlaneOutlinePolyData);
}

void zvImagePlaneWidget::UpdateMargins()
{
  const auto lines =
    zvPlaneMargins::Lines(GetCorners(this->PlaneSource), this->MarginSizeX, this->MarginSizeY);
  for (std::size_t i = 0; i < lines.size(); ++i)
  {
    this->MarginPolyData->GetPoints()->SetPoint(static_cast<vtkIdType>(i), lines[i].data());
  }
  TellPointsMoved(this->MarginPolyData);
}

void zvImagePlaneWidget::UpdatePlane()
{
  if (this->LastUpdateMTime == this->GetMTime() || !this->Reslice)
  {
    return;
  }
  if (!this->TakeImage())
  {
    return;
  }
  this->LastUpdateMTime = this->GetMTime();
  const zvImageGrid::Grid grid = zvImageGrid::Read(this->Reslice);
  if (this->RefuseTurnedImage(grid.IdentityDirection))
  {
    this->DetachInput();
    return;
  }
  if (zvImageGrid::IsEmpty(grid.Extent))
  {
    vtkErrorMacro(<< zvImageGrid::EmptyExtentText(grid.Extent));
  }
  this->CutPlane->SetOrigin(this->PlaneSource->GetCenter());
  this->CutPlane->SetNormal(this->PlaneSource->GetNormal());
  // Taken before the plane moves: rounding may not make it a voxel wider, and so twice as fine.
  double vector1[3];
  double vector2[3];
  this->GetVector1(vector1);
  this->GetVector2(vector2);
  this->CenterOnCut();
  this->SampleReslice(vector1, vector2, grid.Spacing);
}

void zvImagePlaneWidget::CenterOnCut()
{
  double mean[3];
  if (zvBoxCut::Mean(this->Cutter, mean))
  {
    this->PlaneSource->SetCenter(mean);
  }
}

void zvImagePlaneWidget::SampleReslice(double axis1[3], double axis2[3], const double spacing[3])
{
  const double width = vtkMath::Normalize(axis1);
  const double height = vtkMath::Normalize(axis2);
  zvReslicePlane::SetResliceAxes(axis1, axis2, this->PlaneSource->GetNormal(),
    this->PlaneSource->GetOrigin(), this->ResliceAxes);
  this->Reslice->SetResliceAxes(this->ResliceAxes);

  const zvReslicePlane::Sampling x = zvReslicePlane::SampleAlong(axis1, width, spacing);
  if (x.Extent == 0)
  {
    vtkErrorMacro("Invalid X extent: " << x.Voxels);
  }
  const zvReslicePlane::Sampling y = zvReslicePlane::SampleAlong(axis2, height, spacing);
  if (y.Extent == 0)
  {
    vtkErrorMacro("Invalid Y extent: " << y.Voxels);
  }
  zvReslicePlane::SetOutput(x, y, 1, this->Reslice);
  if (zvSliceReslice::IsTooLarge(this->Reslice->GetOutputExtent()))
  {
    vtkErrorMacro(
      "The plane is too large to be shown: " << x.Extent << " by " << y.Extent << " samples");
  }
}

void zvImagePlaneWidget::UpdatePlacement()
{
  this->PlaneSource->Modified();
  this->PlaneSource->Update();
  this->Modified();
  zvBoxCut::Update(this->Cutter);
  this->UpdatePlane();
  this->UpdateMargins();
  this->BuildRepresentation();
}

//------------------------------------------------------------------------------------------------
// Placing

void zvImagePlaneWidget::PlaceWidget(double bounds[6])
{
  double box[6];
  double center[3];
  this->AdjustBounds(bounds, box, center);
  // Deliberate: the axes of a plane across y are the other way round than SetPlaneOrientation's.
  const int normal =
    this->PlaneOrientation == 1 || this->PlaneOrientation == 2 ? this->PlaneOrientation : 0;
  const int first = normal == 0 ? 1 : 0;
  const int second = normal == 2 ? 1 : 2;
  zvReslicePlane::Corners plane;
  for (double* point : { plane.Origin, plane.Point1, plane.Point2 })
  {
    point[normal] = center[normal];
    point[first] = box[2 * first];
    point[second] = box[2 * second];
  }
  plane.Point1[first] = box[2 * first + 1];
  plane.Point2[second] = box[2 * second + 1];
  SetCorners(this->PlaneSource, plane);

  const double lower[3] = { box[0], box[2], box[4] };
  const double upper[3] = { box[1], box[3], box[5] };
  this->InitialLength = std::sqrt(vtkMath::Distance2BetweenPoints(lower, upper));
  this->UpdatePlane();
  this->BuildRepresentation();
  this->SizeHandles();
}

void zvImagePlaneWidget::PlaceWidget()
{
  this->vtk3DWidget::PlaceWidget();
}

void zvImagePlaneWidget::PlaceWidget(
  double xmin, double xmax, double ymin, double ymax, double zmin, double zmax)
{
  this->vtk3DWidget::PlaceWidget(xmin, xmax, ymin, ymax, zmin, zmax);
}

void zvImagePlaneWidget::SetPlaneOrientation(int i)
{
  this->PlaneOrientation = i;
  this->SliceAxis = i;
  if (!this->TakeImage())
  {
    vtkErrorMacro("SetInput() before setting plane orientation.");
    return;
  }
  const zvImageGrid::Grid grid = zvImageGrid::Read(this->Reslice);
  double starts[3];
  double stops[3];
  for (int axis = 0; axis < 3; ++axis)
  {
    starts[axis] = grid.Origin[axis] + grid.Extent[2 * axis] * grid.Spacing[axis];
    stops[axis] = grid.Origin[axis] + grid.Extent[2 * axis + 1] * grid.Spacing[axis];
    if (grid.Spacing[axis] < 0.0)
    {
      std::swap(starts[axis], stops[axis]);
    }
  }
  this->CutPlane->SetOrigin(this->ImageData->GetCenter());
  const int normal = zvReslicePlane::NormalAxis(i);
  const int first = zvReslicePlane::FirstAxis(normal);
  const int second = zvReslicePlane::SecondAxis(normal);
  const double farBound = this->ImageData->GetBounds()[2 * normal + 1];
  SetCorners(this->PlaneSource, zvReslicePlane::Across(normal, starts, stops, farBound));
  this->CutPlane->SetNormal(normal == 0, normal == 1, normal == 2);
  this->Dimensions[0] = zvImageGrid::StepsAlong(grid.Extent, first);
  this->Dimensions[1] = zvImageGrid::StepsAlong(grid.Extent, second);
  this->PlaneSource->GetCenter(this->RotationCenter);
  this->UpdatePlane();
  this->BuildRepresentation();
  this->Modified();
  this->UpdateNumberOfSlices();
}

void zvImagePlaneWidget::SetDimensions(int x, int y)
{
  if (!this->ImageData)
  {
    return;
  }
  const int to[2] = { x, y };
  double steps[2] = { 0.0, 0.0 };
  if (this->SliceAxis >= 0 && this->SliceAxis <= 2)
  {
    const double* spacing = this->ImageData->GetSpacing();
    steps[0] = spacing[zvReslicePlane::FirstAxis(this->SliceAxis)];
    steps[1] = spacing[zvReslicePlane::SecondAxis(this->SliceAxis)];
  }
  SetCorners(this->PlaneSource,
    zvReslicePlane::Resized(GetCorners(this->PlaneSource), this->Dimensions, to, steps));
  std::copy_n(to, 2, this->Dimensions);
  this->Modified();
  this->UpdatePlacement();
}

void zvImagePlaneWidget::SetDimensions(int* xy)
{
  this->SetDimensions(xy[0], xy[1]);
}

void zvImagePlaneWidget::SetRotationCenter(double* center)
{
  std::copy_n(center, 3, this->RotationCenter);
}

void zvImagePlaneWidget::GetRotationCenter(double* center)
{
  std::copy_n(this->RotationCenter, 3, center);
}

void zvImagePlaneWidget::GetDegree(double* degree)
{
  std::copy_n(this->Degree, 3, degree);
}

//------------------------------------------------------------------------------------------------
// Slices

double zvImagePlaneWidget::GetStepLength()
{
  // An orientation out of range is placed across y, so a step is one of y.
  return zvImageGrid::Read(this->Reslice).Spacing[zvReslicePlane::NormalAxis(this->SliceAxis)];
}

void zvImagePlaneWidget::GetStep(double length, double step[3])
{
  this->PlaneSource->GetNormal(step);
  vtkMath::MultiplyScalar(step, length);
}

int zvImagePlaneWidget::GetSliceIndex()
{
  if (!this->TakeImage())
  {
    return 0;
  }
  const zvImageGrid::Grid grid = zvImageGrid::Read(this->Reslice);
  const double* bounds = this->ImageData->GetBounds();
  if (this->PlaneOrientation >= 0 && this->PlaneOrientation < Oblique)
  {
    const int axis = this->PlaneOrientation;
    const double position = this->PlaneSource->GetOrigin()[axis];
    if (position > bounds[2 * axis + 1])
    {
      this->PlaneSource->Push(bounds[2 * axis + 1] - position);
    }
    else if (position < bounds[2 * axis])
    {
      this->PlaneSource->Push(bounds[2 * axis] - position);
    }
    // Deliberate: counted from where the plane stood before, so that the caller sees it was
    // outside.
    return zvImageGrid::NearestIndex(position, bounds[2 * axis], grid.Spacing[axis]);
  }
  const auto polygon = zvObliqueSlices::Read(this->PlaneOutlinePolyData->GetPoints());
  if (!zvObliqueSlices::Touches(polygon, bounds))
  {
    return this->ObliqueSliceIndex;
  }
  double step[3];
  this->GetStep(-this->GetStepLength(), step);
  this->ObliqueSliceIndex = 1 + zvObliqueSlices::StepsUntilClear(polygon, step, bounds);
  return this->ObliqueSliceIndex;
}

void zvImagePlaneWidget::SetSliceIndex(int index)
{
  if (!this->TakeImage())
  {
    return;
  }
  const int last = this->NumberOfSlices - 1;
  const int current = std::max(std::min(this->GetSliceIndex(), last), 0);
  index = std::max(std::min(index, last), 0);
  this->ObliqueSliceIndex = index;
  if (index == current)
  {
    return;
  }
  const double distance = (index - current) * this->GetStepLength();
  double delta[3];
  this->GetStep(distance, delta);
  this->PlaneSource->Push(distance);
  vtkMath::Add(this->RotationCenter, delta, this->RotationCenter);
  this->Modified();
  this->UpdatePlane();
  this->UpdateMargins();
  this->BuildRepresentation();
}

double zvImagePlaneWidget::GetSlicePosition()
{
  if (this->PlaneOrientation < 0 || this->PlaneOrientation >= Oblique)
  {
    vtkGenericWarningMacro("only works for ortho planes: set plane orientation first");
    return 0.0;
  }
  return this->PlaneSource->GetOrigin()[this->PlaneOrientation];
}

void zvImagePlaneWidget::SetSlicePosition(double position)
{
  if (this->PlaneOrientation < 0 || this->PlaneOrientation >= Oblique)
  {
    vtkGenericWarningMacro("only works for ortho planes: set plane orientation first");
    return;
  }
  this->PlaneSource->Push(position - this->PlaneSource->GetOrigin()[this->PlaneOrientation]);
  this->UpdatePlane();
  this->BuildRepresentation();
  this->Modified();
}

void zvImagePlaneWidget::UpdateNumberOfSlices()
{
  if (!this->ImageData || !this->Reslice)
  {
    return;
  }
  const zvImageGrid::Grid grid = zvImageGrid::Read(this->Reslice);
  const int axis = this->PlaneOrientation;
  if (axis >= 0 && axis < Oblique)
  {
    this->NumberOfSlices = zvImageGrid::StepsAlong(grid.Extent, axis) + 1;
    return;
  }
  const double* bounds = this->ImageData->GetBounds();
  const auto polygon = zvObliqueSlices::Read(this->PlaneOutlinePolyData->GetPoints());
  if (!zvObliqueSlices::Touches(polygon, bounds))
  {
    return;
  }
  int count = 1;
  for (const double direction : { 1.0, -1.0 })
  {
    double step[3];
    this->GetStep(direction * this->GetStepLength(), step);
    // Deliberate: the place one step away is not tested, hosts have sized their sliders by that.
    count += zvObliqueSlices::StepsUntilClear(zvObliqueSlices::Moved(polygon, step), step, bounds);
  }
  this->NumberOfSlices = count;
}

//------------------------------------------------------------------------------------------------
// Motions

void zvImagePlaneWidget::Push(int distance)
{
  this->GetSliceIndex();
  if (!this->ImageData || distance == 0)
  {
    return;
  }
  const double length = this->GetStepLength();
  double step[3];
  this->GetStep(length, step);
  const double* bounds = this->ImageData->GetBounds();
  auto polygon =
    zvObliqueSlices::Moved(zvObliqueSlices::Read(this->PlaneOutlinePolyData->GetPoints()), step);
  if (!zvObliqueSlices::IsStep(step) || !zvObliqueSlices::Touches(polygon, bounds))
  {
    return;
  }
  const long long steps = std::llabs(distance);
  for (long long i = std::min<long long>(steps, zvObliqueSlices::MaximumSteps); i > 0; --i)
  {
    this->PlaneSource->Push(length);
    polygon = zvObliqueSlices::Moved(polygon, step);
    if (!zvObliqueSlices::Touches(polygon, bounds))
    {
      return;
    }
  }
  // Deliberate: one step more than asked, and no Modified before the update.
  this->PlaneSource->Push(length);
  this->UpdatePlane();
  this->UpdateMargins();
  this->BuildRepresentation();
}

void zvImagePlaneWidget::Push(double* p1, double* p2)
{
  double motion[3];
  vtkMath::Subtract(p2, p1, motion);
  const int steps =
    zvObliqueSlices::StepsOfMotion(vtkMath::Dot(motion, this->PlaneSource->GetNormal()));
  const int index = this->GetSliceIndex();
  // Deliberate: a push that ends at a border leaves the update to the caller.
  if (this->ImageData && steps != 0 && this->PushSteps(steps, index))
  {
    this->Modified();
    this->UpdatePlane();
    this->UpdateMargins();
    this->BuildRepresentation();
  }
}

bool zvImagePlaneWidget::PushSteps(int steps, int index)
{
  const int direction = steps > 0 ? 1 : -1;
  const double length = direction * this->GetStepLength();
  double step[3];
  this->GetStep(length, step);
  const double* bounds = this->ImageData->GetBounds();
  auto polygon =
    zvObliqueSlices::Moved(zvObliqueSlices::Read(this->PlaneOutlinePolyData->GetPoints()), step);
  if (!zvObliqueSlices::IsStep(step) || !zvObliqueSlices::Touches(polygon, bounds))
  {
    return false;
  }
  for (int taken = 0; taken != steps; taken += direction)
  {
    const bool atEnd = direction > 0 ? index >= this->NumberOfSlices - 1 : index < 1;
    if (atEnd)
    {
      return false;
    }
    this->PlaneSource->Push(length);
    polygon = zvObliqueSlices::Moved(polygon, step);
    if (!zvObliqueSlices::Touches(polygon, bounds))
    {
      return false;
    }
    index += direction;
  }
  return true;
}

void zvImagePlaneWidget::EnlargeBeforeTurning()
{
  if (this->PlaneOrientation == Oblique || !this->ImageData)
  {
    return;
  }
  double center[3];
  this->ImageData->GetCenter(center);
  this->CutPlane->SetOrigin(center);
  const zvImageGrid::Grid grid = zvImageGrid::Read(this->Reslice);
  if (std::max({ grid.Extent[1], grid.Extent[3], grid.Extent[5] }) > LargestEnlargedExtent)
  {
    return;
  }
  const double half = 0.5 * this->ImageData->GetLength();
  const double halfWidth[3] = { half, half, half };
  SetCorners(this->PlaneSource,
    zvReslicePlane::Enlarged(GetCorners(this->PlaneSource),
      zvReslicePlane::NormalAxis(this->PlaneOrientation), center, halfWidth));
}

void zvImagePlaneWidget::TurnPlane(const double center[3], double angle, const double axis[3])
{
  zvReslicePlane::SetTurn(center, angle, axis, this->Transform);
  zvReslicePlane::Corners turned =
    zvReslicePlane::Turned(GetCorners(this->PlaneSource), this->Transform);
  this->PlaneSource->SetPoint1(turned.Point1);
  this->PlaneSource->SetPoint2(turned.Point2);
  this->PlaneSource->SetOrigin(turned.Origin);
}

void zvImagePlaneWidget::Rotate(double angle, double* axis, double* center)
{
  // Copied, as a host may pass the plane's own centre and normal, which are about to change.
  const double fixedAxis[3] = { axis[0], axis[1], axis[2] };
  const double fixedCenter[3] = { center[0], center[1], center[2] };
  this->EnlargeBeforeTurning();
  this->PlaneOrientation = Oblique;
  std::copy_n(fixedCenter, 3, this->RotationCenter);
  this->TurnPlane(fixedCenter, angle, fixedAxis);
  this->PlaneSource->Modified();
  this->PlaneSource->Update();
  this->Modified();
  this->UpdatePlane();
  this->UpdateMargins();
  this->BuildRepresentation();
  this->UpdateNumberOfSlices();
}

void zvImagePlaneWidget::Rotate(double* p1, double* p2, double* vtkNotUsed(vpn))
{
  this->EnlargeBeforeTurning();
  this->PlaneOrientation = Oblique;
  double motion[3];
  vtkMath::Subtract(p2, p1, motion);
  const double theta = -vtkMath::Dot(motion, this->RadiusVector);
  for (int i = 0; i < 3; ++i)
  {
    // One turn is taken off, not all of them.
    const double degree = this->RotateAxis[i] * theta;
    this->Degree[i] = degree > 360.0 ? degree - 360.0 : (degree < -360.0 ? degree + 360.0 : degree);
  }
  double center[3];
  this->PlaneSource->GetCenter(center);
  this->TurnPlane(center, theta, this->RotateAxis);
  this->PlaneSource->Modified();
  this->PlaneSource->Update();
  this->Modified();
  this->UpdateNumberOfSlices();
}

void zvImagePlaneWidget::Spin(double* p1, double* p2)
{
  this->PlaneOrientation = Oblique;
  double motion[3];
  double center[3];
  double normal[3];
  double radius[3];
  double tangent[3];
  vtkMath::Subtract(p2, p1, motion);
  this->PlaneSource->GetCenter(center);
  this->PlaneSource->GetNormal(normal);
  vtkMath::Subtract(p2, center, radius);
  const double length = vtkMath::Normalize(radius);
  if (length == 0.0)
  {
    return;
  }
  vtkMath::Cross(normal, radius, tangent);
  this->TurnPlane(
    center, vtkMath::DegreesFromRadians(vtkMath::Dot(tangent, motion) / length), normal);
}

void zvImagePlaneWidget::Translate(double* p1, double* p2)
{
  double motion[3];
  vtkMath::Subtract(p2, p1, motion);
  SetCorners(this->PlaneSource,
    zvPlaneMargins::Moved(GetCorners(this->PlaneSource), this->MarginSelectMode, motion,
      this->RotateAxis, this->RadiusVector));
}

void zvImagePlaneWidget::Scale(double* p1, double* p2, int vtkNotUsed(X), int Y)
{
  zvReslicePlane::Corners plane = GetCorners(this->PlaneSource);
  const double diagonal = std::sqrt(vtkMath::Distance2BetweenPoints(plane.Point1, plane.Point2));
  if (diagonal == 0.0 || !this->Interactor)
  {
    return;
  }
  const double change = std::sqrt(vtkMath::Distance2BetweenPoints(p1, p2)) / diagonal;
  const bool larger = Y > this->Interactor->GetLastEventPosition()[1];
  const double factor = larger ? 1.0 + change : 1.0 - change;
  double center[3];
  this->PlaneSource->GetCenter(center);
  for (double* point : { plane.Origin, plane.Point1, plane.Point2 })
  {
    for (int i = 0; i < 3; ++i)
    {
      point[i] = center[i] + factor * (point[i] - center[i]);
    }
  }
  SetCorners(this->PlaneSource, plane);
}
