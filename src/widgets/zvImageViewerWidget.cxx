#include "zvImageViewerWidget.h"

#include "zvBoxCut.h"
#include "zvBoxCutter.h"
#include "zvCollections.h"
#include "zvEvents.h"
#include "zvFloodFill.h"
#include "zvImageGrid.h"
#include "zvSliceColorMap.h"
#include "zvSliceMapper.h"
#include "zvSliceReslice.h"
#include "zvSliceTexture.h"
#include "zvViewLookup.h"
#include "zvWindowLevel.h"

#include "vtkActor.h"
#include "vtkAlgorithmOutput.h"
#include "vtkCallbackCommand.h"
#include "vtkCellPicker.h"
#include "vtkCollection.h"
#include "vtkCubeSource.h"
#include "vtkCutter.h"
#include "vtkFloatArray.h"
#include "vtkImageData.h"
#include "vtkLineSource.h"
#include "vtkLookupTable.h"
#include "vtkObjectFactory.h"
#include "vtkPlane.h"
#include "vtkPlaneSource.h"
#include "vtkPlanes.h"
#include "vtkPoints.h"
#include "vtkPolyDataMapper.h"
#include "vtkProperty.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkTextActor.h"
#include "vtkTexture.h"

#include <algorithm>
#include <cmath>

vtkObjectFactoryNewMacro(zvImageViewerWidget);

vtkObject* vtkInstantiatorzvImageViewerWidgetNew()
{
  return zvImageViewerWidget::New();
}

namespace
{
// A tool that is enabled may take others out of the list.
void SetAllEnabled(vtkCollection* tools, int enabling)
{
  for (const auto& tool : zvCollections::ItemsOf<vtkInteractorObserver>(tools))
  {
    // A tool that waits to be placed has no interactor yet and would complain of that.
    const bool hasNothingToDisable = !enabling && !tool->GetEnabled() && !tool->GetInteractor();
    if (tools->IsItemPresent(tool) && !hasNothingToDisable)
    {
      tool->SetEnabled(enabling);
    }
  }
}
}

//------------------------------------------------------------------------------
zvImageViewerWidget::zvImageViewerWidget()
  : BoxCutter(vtkSmartPointer<zvBoxCutter>::New())
{
  this->EventCallbackCommand->SetCallback(zvImageViewerWidget::ProcessEvents);
  zvEvents::HoldDuringKeys(this->KeyPressCallbackCommand);
  this->ReplacePipeline();
  this->MakePropertiesPlain();
  this->BuildLine(this->SliceLine1Source, this->SliceLine1Mapper, this->SliceLine1Actor,
    this->SliceLine1Picker, this->SliceLine1Property);
  this->BuildLine(this->SliceLine2Source, this->SliceLine2Mapper, this->SliceLine2Actor,
    this->SliceLine2Picker, this->SliceLine2Property);
  this->FilledPoints->SetDataTypeToDouble();
  this->MaskReslice = vtkSmartPointer<zvSliceReslice>::New();
}

zvImageViewerWidget::~zvImageViewerWidget()
{
  if (this->Enabled)
  {
    this->SetEnabled(0);
  }
  // In this order.
  zvCollections::ReleaseAll(this->RulerWidgets);
  zvCollections::ReleaseAll(this->AreaWidgets);
  zvCollections::ReleaseAll(this->LassoWidgets);
  zvCollections::ReleaseAll(this->TextNoteWidgets);
}

// The stock filters, mapper and texture give way to those that are quick for a slice.
void zvImageViewerWidget::ReplacePipeline()
{
  this->Reslice->Delete();
  this->Reslice = zvSliceReslice::New();
  this->Reslice->TransformInputSamplingOff();
  this->ColorMap->Delete();
  this->ColorMap = zvSliceColorMap::New();
  this->ColorMap->SetLookupTable(this->LookupTable);
  this->ColorMap->SetOutputFormatToRGBA();
  this->ColorMap->PassAlphaToOutputOn();
  this->Texture->Delete();
  this->Texture = zvSliceTexture::New();
  this->Texture->SetQualityTo32Bit();
  this->Texture->SetColorMode(VTK_COLOR_MODE_DEFAULT);
  this->Texture->SetInterpolate(this->TextureInterpolate);
  this->Texture->RepeatOff();
  this->Texture->SetLookupTable(this->LookupTable);
  vtkNew<zvSliceMapper> mapper;
  mapper->SetInputConnection(this->PlaneSource->GetOutputPort());
  this->TexturePlaneActor->SetMapper(mapper);
  this->TexturePlaneActor->SetTexture(this->Texture);
  // A textured actor whose texture has no input does not survive a render.
  this->TexturePlaneActor->VisibilityOff();
}

// The stock properties have an ambient part of 1, to which a diffuse part would be added.
void zvImageViewerWidget::MakePropertiesPlain()
{
  for (vtkProperty* property : { this->PlaneProperty, this->SelectedPlaneProperty,
         this->CursorProperty, this->MarginProperty, this->TexturePlaneProperty })
  {
    property->SetDiffuse(0.0);
  }
  // There is nothing to light, and a frame takes less without it.
  this->TexturePlaneProperty->LightingOff();
}

void zvImageViewerWidget::BuildLine(vtkLineSource* source, vtkPolyDataMapper* mapper,
  vtkActor* actor, vtkCellPicker* picker, vtkProperty* property)
{
  source->SetResolution(1);
  mapper->SetInputConnection(source->GetOutputPort());
  // The usual lead over a coplanar slice is too small where that is seen at a slant.
  mapper->SetRelativeCoincidentTopologyLineOffsetParameters(0.0, -128.0);
  actor->SetMapper(mapper);
  picker->SetTolerance(0.005);
  picker->AddPickList(actor);
  picker->PickFromListOn();
  property->SetColor(1.0, 1.0, 1.0);
}

void zvImageViewerWidget::ProcessEvents(
  vtkObject* object, unsigned long event, void* clientdata, void* calldata)
{
  // An observer of the widget's events may let go of the last reference.
  vtkSmartPointer<zvImageViewerWidget> self = static_cast<zvImageViewerWidget*>(clientdata);
  vtkImagePlaneWidget::ProcessEvents(
    object, event, static_cast<vtkImagePlaneWidget*>(self), calldata);
}

//------------------------------------------------------------------------------
// True if there is a renderer to be shown in: the current one, or that under the mouse.
bool zvImageViewerWidget::HasRenderer()
{
  vtkRenderer* renderer = zvViewLookup::Choose(this->CurrentRenderer, this->Interactor);
  this->SetCurrentRenderer(renderer);
  return renderer != nullptr;
}

void zvImageViewerWidget::ShowActor(vtkActor* actor, vtkProperty* property)
{
  if (this->CurrentRenderer)
  {
    this->CurrentRenderer->AddViewProp(actor);
    actor->SetProperty(property);
  }
}

void zvImageViewerWidget::SetEnabled(int enabling)
{
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  for (vtkCollection* tools :
    { this->RulerWidgets.Get(), this->AreaWidgets.Get(), this->LassoWidgets.Get() })
  {
    SetAllEnabled(tools, enabling);
  }
  if (!this->Interactor)
  {
    vtkErrorMacro(<< "The interactor must be set prior to enabling/disabling widget");
    return;
  }
  if (enabling)
  {
    this->Enable();
  }
  else
  {
    this->Disable();
  }
}

void zvImageViewerWidget::SetInteractor(vtkRenderWindowInteractor* interactor)
{
  // An observer may release the widget or change its interactor, too.
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  if (this->Interactor && this->Enabled && interactor != this->Interactor)
  {
    this->SetEnabled(0);
  }
  this->vtkImagePlaneWidget::SetInteractor(interactor);
}

void zvImageViewerWidget::Enable()
{
  if (this->Enabled || !this->HasRenderer())
  {
    return;
  }
  this->Enabled = 1;
  this->RegisterPickers();
  if (this->Interaction)
  {
    this->AddObservers();
  }
  if (this->TextureVisibility)
  {
    this->CurrentRenderer->AddViewProp(this->TexturePlaneActor);
    this->TexturePlaneActor->SetProperty(this->TexturePlaneProperty);
  }
  // Deliberate: outline, cursor and margins stay unseen; a slice view shows only the slice.
  this->CurrentRenderer->AddViewProp(this->TextActor);
  this->TexturePlaneActor->PickableOn();
  this->ShowActor(this->SliceLine1Actor, this->SliceLine1Property);
  this->ShowActor(this->SliceLine2Actor, this->SliceLine2Property);
  this->ShowActor(this->BoxOutlineActor, this->PlaneProperty);
  this->SetEnableImageMask(1);
  this->InvokeEvent(vtkCommand::EnableEvent, nullptr);
  zvViewLookup::Render(this->Interactor);
}

void zvImageViewerWidget::Disable()
{
  if (!this->Enabled)
  {
    return;
  }
  this->Enabled = 0;
  this->UnRegisterPickers();
  this->Interactor->RemoveObserver(this->EventCallbackCommand);
  if (this->CurrentRenderer)
  {
    for (vtkActor* actor :
      { this->PlaneOutlineActor, this->TexturePlaneActor, this->CursorActor, this->MarginActor })
    {
      this->CurrentRenderer->RemoveViewProp(actor);
    }
    this->CurrentRenderer->RemoveViewProp(this->TextActor);
    for (vtkActor* actor :
      { this->SliceLine1Actor.Get(), this->SliceLine2Actor.Get(), this->BoxOutlineActor.Get() })
    {
      this->CurrentRenderer->RemoveViewProp(actor);
    }
  }
  this->TexturePlaneActor->PickableOff();
  this->SetEnableImageMask(0);
  this->InvokeEvent(vtkCommand::DisableEvent, nullptr);
  if (!this->Enabled) // an observer may have enabled it again
  {
    this->SetCurrentRenderer(nullptr);
  }
  zvViewLookup::Render(this->Interactor);
}

//------------------------------------------------------------------------------
void zvImageViewerWidget::SetInput(vtkDataSet* input)
{
  if (vtkImageData* image = vtkImageData::SafeDownCast(input))
  {
    this->SetInputData(image); // ends in SetInputConnection
  }
  else
  {
    this->SetInputConnection(nullptr);
  }
}

void zvImageViewerWidget::SetInputConnection(vtkAlgorithmOutput* port)
{
  // Its voxel indices mean nothing in another image.
  this->ForgetFill();
  // Held, as the old connection may be all that keeps the port's producer.
  const vtkSmartPointer<vtkAlgorithmOutput> holdPort = port;
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
  // The stock class would move the plane here.
  this->vtk3DWidget::SetInputConnection(port);
  vtkImageData* image = this->UpdatedInput(port);
  if (!image)
  {
    this->DetachInput();
    return;
  }
  this->ImageData = image;
  this->AdoptScalarRange();
  if (this->ImageData != image)
  {
    return; // an observer of the render thought otherwise
  }
  this->Reslice->SetInputConnection(port);
  const int interpolate = this->ResliceInterpolate;
  this->ResliceInterpolate = -1; // so that the setter takes effect
  this->SetResliceInterpolate(interpolate);
  this->ColorMap->SetInputConnection(this->Reslice->GetOutputPort());
  this->Texture->SetInputConnection(this->ColorMap->GetOutputPort());
  this->Texture->SetInterpolate(this->TextureInterpolate);
  this->ShowSlice(true);
  this->ImageData->GetBounds(this->Bounds);
  this->ClipToBounds();
  this->OutlineBounds();
}

// The image behind a port, brought up to date; null if there is none that can be shown.
vtkImageData* zvImageViewerWidget::UpdatedInput(vtkAlgorithmOutput* port)
{
  if (!port)
  {
    return nullptr;
  }
  port->GetProducer()->Update(port->GetIndex());
  vtkImageData* image = vtkImageData::SafeDownCast(this->GetInput());
  const bool canBeShown = image &&
    this->IsUpright(zvImageGrid::HasIdentityDirection(image), "image", "the image is not shown");
  return canBeShown ? image : nullptr;
}

bool zvImageViewerWidget::IsUpright(
  bool hasIdentityDirection, const char* what, const char* consequence)
{
  if (!hasIdentityDirection)
  {
    vtkErrorMacro(<< zvImageGrid::DirectionText(what, consequence));
  }
  return hasIdentityDirection;
}

bool zvImageViewerWidget::TakeInput()
{
  this->ImageData = vtkImageData::SafeDownCast(this->Reslice->GetInput());
  return this->ImageData != nullptr;
}

bool zvImageViewerWidget::TakeUpdatedInput()
{
  if (!this->TakeInput())
  {
    return false;
  }
  vtkAlgorithmOutput* port = this->Reslice->GetInputConnection(0, 0);
  port->GetProducer()->Update(port->GetIndex());
  return true;
}

void zvImageViewerWidget::AdoptScalarRange()
{
  const zvWindowLevel::Values original = zvWindowLevel::Adopt(
    this->ImageData, this->UserControlledLookupTable ? nullptr : this->LookupTable);
  this->OriginalWindow = original.Window;
  this->OriginalLevel = original.Level;
  this->SetWindowLevel(this->OriginalWindow, this->OriginalLevel, 0);
}

// Slice and lines are drawn inside the volume's box only, however large the plane is.
void zvImageViewerWidget::ClipToBounds()
{
  const double* b = this->Bounds;
  // The plane stands exactly on a face at times, where rounding would blank it.
  const double margin = 1e-6 *
    std::sqrt((b[1] - b[0]) * (b[1] - b[0]) + (b[3] - b[2]) * (b[3] - b[2]) +
      (b[5] - b[4]) * (b[5] - b[4]));
  vtkNew<vtkPoints> points;
  vtkNew<vtkFloatArray> normals;
  normals->SetNumberOfComponents(3);
  for (int face = 0; face < 6; ++face)
  {
    const bool isLow = face % 2 == 0;
    double normal[3] = { 0.0, 0.0, 0.0 };
    normal[face / 2] = isLow ? 1.0 : -1.0;
    normals->InsertNextTuple(normal);
    points->InsertNextPoint(isLow ? b[0] - margin : b[1] + margin,
      isLow ? b[2] - margin : b[3] + margin, isLow ? b[4] - margin : b[5] + margin);
  }
  vtkNew<vtkPlanes> planes;
  planes->SetPoints(points);
  planes->SetNormals(normals);
  for (vtkActor* actor :
    { this->TexturePlaneActor, this->SliceLine1Actor.Get(), this->SliceLine2Actor.Get() })
  {
    actor->GetMapper()->SetClippingPlanes(planes);
  }
}

void zvImageViewerWidget::DetachInput()
{
  this->vtk3DWidget::SetInputConnection(nullptr);
  this->ImageData = nullptr;
  this->Reslice->SetInputData(nullptr);
  this->ShowSlice(false);
}

// Without voxels, or on a plane without width, there is nothing to draw, only errors to be had.
void zvImageViewerWidget::ShowSlice(bool on)
{
  const bool isThere = on && this->ImageData && zvImageGrid::HasVoxels(this->ImageData);
  this->TexturePlaneActor->SetVisibility(isThere);
  if (this->MaskActor)
  {
    this->MaskActor->SetVisibility(isThere);
  }
}

void zvImageViewerWidget::OutlineBounds()
{
  zvBoxCut::Connect(this->Bounds, this->BoundsCube, this->CutPlane, this->BoxCutter);
  vtkNew<vtkPolyDataMapper> mapper;
  mapper->SetInputConnection(this->BoxCutter->GetOutputPort());
  this->BoxOutlineActor->SetMapper(mapper);
}

//------------------------------------------------------------------------------
void zvImageViewerWidget::SetQuickApply(bool on)
{
  if (this->QuickApply != on)
  {
    this->QuickApply = on;
    this->Modified();
  }
}

bool zvImageViewerWidget::GetQuickApply()
{
  return this->QuickApply;
}

void zvImageViewerWidget::SetImageResolutionFactor(int factor)
{
  // A slice cannot be sampled more finely than it is, and a factor of 0 would divide by it.
  factor = std::max(factor, 1);
  if (this->ImageResolutionFactor != factor)
  {
    this->ImageResolutionFactor = factor;
    this->Modified();
  }
}

int zvImageViewerWidget::GetImageResolutionFactor()
{
  return this->ImageResolutionFactor;
}
