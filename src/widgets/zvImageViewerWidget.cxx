#include "zvImageViewerWidget.h"

#include "zvBoxCut.h"
#include "zvBoxCutter.h"
#include "zvCollections.h"
#include "zvEvents.h"
#include "zvFloodFill.h"
#include "zvImageGrid.h"
#include "zvNumbers.h"
#include "zvObliqueSlices.h"
#include "zvOutlineCut.h"
#include "zvPick.h"
#include "zvReslicePlane.h"
#include "zvSliceColorMap.h"
#include "zvSliceCross.h"
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
#include "vtkImageMapToColors.h"
#include "vtkImageReslice.h"
#include "vtkLine.h"
#include "vtkLineSource.h"
#include "vtkLookupTable.h"
#include "vtkMath.h"
#include "vtkMatrix4x4.h"
#include "vtkObjectFactory.h"
#include "vtkPlane.h"
#include "vtkPlaneSource.h"
#include "vtkPlanes.h"
#include "vtkPointData.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"
#include "vtkPolyDataMapper.h"
#include "vtkProperty.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkTextActor.h"
#include "vtkTexture.h"
#include "vtkTransform.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

vtkObjectFactoryNewMacro(zvImageViewerWidget);

vtkObject* vtkInstantiatorzvImageViewerWidgetNew()
{
  return zvImageViewerWidget::New();
}

namespace
{
void LineEnds(vtkLineSource* line, double p1[3], double p2[3])
{
  line->GetPoint1(p1);
  line->GetPoint2(p2);
}

void UnitAlong(vtkLineSource* line, double unit[3])
{
  double p1[3], p2[3];
  LineEnds(line, p1, p2);
  vtkMath::Subtract(p2, p1, unit);
  vtkMath::Normalize(unit);
}

void MoveLine(vtkLineSource* line, const double delta[3])
{
  double p1[3], p2[3];
  LineEnds(line, p1, p2);
  vtkMath::Add(p1, delta, p1);
  vtkMath::Add(p2, delta, p2);
  line->SetPoint1(p1);
  line->SetPoint2(p2);
}

void TurnLine(vtkLineSource* line, vtkTransform* transform, double direction[3])
{
  double p1[3], p2[3];
  LineEnds(line, p1, p2);
  transform->TransformPoint(p1, p1);
  transform->TransformPoint(p2, p2);
  line->SetPoint1(p1);
  line->SetPoint2(p2);
  vtkMath::Subtract(p2, p1, direction);
  vtkMath::Normalize(direction);
}

// Lay a line along an edge of the plane, at a coordinate on the axis on which it moves.
void LayLine(vtkLineSource* line, const double from[3], const double to[3], int axis, double at)
{
  double p1[3], p2[3];
  std::copy(from, from + 3, p1);
  std::copy(to, to + 3, p2);
  p1[axis] = p2[axis] = at;
  line->SetPoint1(p1);
  line->SetPoint2(p2);
}

// Lay a line along an edge of the plane, moved into the plane.
void LayLine(vtkLineSource* line, const double from[3], const double to[3], const double shift[3])
{
  double p1[3], p2[3];
  vtkMath::Add(from, shift, p1);
  vtkMath::Add(to, shift, p2);
  line->SetPoint1(p1);
  line->SetPoint2(p2);
}

// Take the ends of a line from two points of a cut, if the cut has any.
void FitLine(const std::vector<std::array<double, 3>>& cut, vtkLineSource* line, std::size_t first,
  std::size_t second)
{
  if (cut.size() >= 2)
  {
    line->SetPoint1(cut[first].data());
    line->SetPoint2(cut[second].data());
  }
}

zvReslicePlane::Corners CornersOf(vtkPlaneSource* source)
{
  zvReslicePlane::Corners corners;
  source->GetOrigin(corners.Origin);
  source->GetPoint1(corners.Point1);
  source->GetPoint2(corners.Point2);
  return corners;
}

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

// The foot of a point on the line from an origin along an axis.
void FootOn(const double q[3], const double origin[3], const double axis[3], double foot[3])
{
  const double along = zvSliceCross::FootParameter(q, origin, axis);
  for (int i = 0; i < 3; ++i)
  {
    foot[i] = origin[i] + along * axis[i];
  }
}

// The parameters at which the carriers of two segments come closest; 0 for parallel ones.
void SolveCrossing(const double p1[3], const double p2[3], const double a1[3], const double a2[3],
  double& t, double& u)
{
  double d1[3], d2[3], c[3];
  vtkMath::Subtract(p2, p1, d1);
  vtkMath::Subtract(a2, a1, d2);
  vtkMath::Subtract(a1, p1, c);
  double row0[2] = { vtkMath::Dot(d1, d1), -vtkMath::Dot(d1, d2) };
  double row1[2] = { -vtkMath::Dot(d1, d2), vtkMath::Dot(d2, d2) };
  double* rows[2] = { row0, row1 };
  double right[2] = { vtkMath::Dot(d1, c), -vtkMath::Dot(d2, c) };
  const bool isSolved = vtkMath::SolveLinearSystem(rows, right, 2) != 0;
  t = isSolved ? right[0] : 0.0;
  u = isSolved ? right[1] : 0.0;
}

double Distance(const double a[3], const double b[3])
{
  return std::sqrt(vtkMath::Distance2BetweenPoints(a, b));
}

}

//------------------------------------------------------------------------------
zvImageViewerWidget::zvImageViewerWidget()
  : BoxCutter(vtkSmartPointer<zvBoxCutter>::New())
{
  this->EventCallbackCommand->SetCallback(zvImageViewerWidget::ProcessEvents);
  this->KeyPressCallbackCommand->SetCallback(zvImageViewerWidget::ProcessKeys);
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

// The stock filters and texture give way to those that are quick for a slice.
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

void zvImageViewerWidget::ProcessKeys(
  vtkObject* object, unsigned long event, void* clientdata, void* calldata)
{
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(static_cast<vtkObject*>(clientdata));
  vtkInteractorObserver::ProcessEvents(object, event, clientdata, calldata);
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
  this->SetCurrentRenderer(nullptr);
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
  const vtkSmartPointer<vtkAlgorithmOutput> hold = port;
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
void zvImageViewerWidget::SetPlaneOrientation(int i)
{
  this->PlaneOrientation = i;
  this->ViewOrientation = i;
  if (!this->TakeInput())
  {
    vtkErrorMacro(<< "SetInput() before setting plane orientation.");
    return;
  }
  this->PlacePlaneAtFarBound();
  this->SliceLine1Property->SetColor(this->AxisColors[this->FirstAxis]);
  this->SliceLine2Property->SetColor(this->AxisColors[this->SecondAxis]);
  this->SliceLine1Source->SetResolution(this->Dimensions[0]);
  this->SliceLine2Source->SetResolution(this->Dimensions[1]);
  this->PlaneSource->GetCenter(this->RotationCenter);
  this->CrossIndex[0] = this->Dimensions[0] / 2;
  this->CrossIndex[1] = this->Dimensions[1] / 2;
  if (auto* picker = vtkCellPicker::SafeDownCast(this->PlanePicker))
  {
    picker->SetTolerance(0.001);
  }
  this->SlicesMovement[0] = this->SlicesMovement[1] = 0;
  this->Modified();
}

// The plane at the far bound of the volume, its lines through the middle of the voxels' centres.
void zvImageViewerWidget::PlacePlaneAtFarBound()
{
  const zvImageGrid::Grid grid = zvImageGrid::Read(this->Reslice);
  const int normal = zvReslicePlane::NormalAxis(this->ViewOrientation);
  const int first = this->FirstAxis = zvReslicePlane::FirstAxis(normal);
  const int second = this->SecondAxis = zvReslicePlane::SecondAxis(normal);

  double low[3], high[3];
  for (int axis = 0; axis < 3; ++axis)
  {
    low[axis] = grid.Origin[axis] + grid.Spacing[axis] * grid.Extent[2 * axis];
    high[axis] = grid.Origin[axis] + grid.Spacing[axis] * grid.Extent[2 * axis + 1];
    if (grid.Spacing[axis] < 0.0)
    {
      std::swap(low[axis], high[axis]);
    }
    this->LineNormal1[axis] = axis == first ? 1.0 : 0.0;
    this->LineNormal2[axis] = axis == second ? 1.0 : 0.0;
  }
  double center[3];
  this->ImageData->GetCenter(center);
  this->CutPlane->SetOrigin(center);
  this->CutPlane->SetNormal(normal == 0, normal == 1, normal == 2);

  const zvReslicePlane::Corners plane =
    zvReslicePlane::Across(normal, low, high, this->Bounds[2 * normal + 1]);
  this->SetPlane(plane);
  this->UpdatePlaneSource();
  LayLine(
    this->SliceLine1Source, plane.Origin, plane.Point2, first, 0.5 * (low[first] + high[first]));
  LayLine(
    this->SliceLine2Source, plane.Origin, plane.Point1, second, 0.5 * (low[second] + high[second]));

  this->NumberOfSlices = zvImageGrid::StepsAlong(grid.Extent, normal) + 1;
  this->Dimensions[0] = zvImageGrid::StepsAlong(grid.Extent, first);
  this->Dimensions[1] = zvImageGrid::StepsAlong(grid.Extent, second);
}

void zvImageViewerWidget::UpdatePlacement()
{
  this->PlaneSource->Modified();
  this->UpdatePlaneSource();
  this->Modified();
  zvBoxCut::Update(this->BoxCutter);
  this->UpdatePlane();
  this->UpdateMargins();
}

//------------------------------------------------------------------------------
void zvImageViewerWidget::UpdatePlane()
{
  if (this->LastUpdateMTime == this->GetMTime() || !this->Reslice || !this->TakeInput())
  {
    return;
  }
  this->LastUpdateMTime = this->GetMTime();
  const zvImageGrid::Grid grid = zvImageGrid::Read(this->Reslice);
  if (!this->IsUpright(grid.IdentityDirection, "image", "the image is not shown"))
  {
    this->DetachInput();
    return;
  }
  if (zvImageGrid::IsEmpty(grid.Extent))
  {
    // Deliberate: the update goes on, so that the view shows nothing rather than the last slice.
    vtkErrorMacro(<< zvImageGrid::EmptyExtentText(grid.Extent));
  }
  // Taken before the plane moves: rounding may not make it a voxel wider, and so twice as fine.
  double axis1[3], axis2[3];
  this->GetVector1(axis1);
  this->GetVector2(axis2);
  this->CenterOnCut();
  this->SampleThroughPlane(axis1, axis2, grid.Spacing);
  if (this->HasWidth())
  {
    this->BuildRepresentation();
  }
  this->FitLines();
}

// The plane stays centred on its cut through the volume's box.
void zvImageViewerWidget::CenterOnCut()
{
  this->CutPlane->SetOrigin(this->PlaneSource->GetCenter());
  this->CutPlane->SetNormal(this->PlaneSource->GetNormal());
  double mean[3];
  const bool isCut = zvBoxCut::Mean(this->BoxCutter, mean);
  if (isCut && this->NumberOfSlices > 1)
  {
    this->PlaneSource->SetCenter(mean);
  }
}

void zvImageViewerWidget::SampleThroughPlane(
  double axis1[3], double axis2[3], const double spacing[3])
{
  double normal[3], origin[3];
  this->PlaneSource->GetNormal(normal);
  this->PlaneSource->GetOrigin(origin);
  const double size1 = vtkMath::Normalize(axis1);
  const double size2 = vtkMath::Normalize(axis2);

  zvReslicePlane::SetResliceAxes(axis1, axis2, normal, origin, this->ResliceAxes);
  this->Reslice->SetResliceAxes(this->ResliceAxes);

  const zvReslicePlane::Sampling x = zvReslicePlane::SampleAlong(axis1, size1, spacing);
  const zvReslicePlane::Sampling y = zvReslicePlane::SampleAlong(axis2, size2, spacing);
  if (x.Extent == 0)
  {
    vtkErrorMacro(<< "Invalid X extent: " << x.Voxels);
  }
  if (y.Extent == 0)
  {
    vtkErrorMacro(<< "Invalid Y extent: " << y.Voxels);
  }
  zvReslicePlane::SetOutput(x, y, this->ImageResolutionFactor, this->Reslice);
  this->ShowSlice(x.Extent > 0 && y.Extent > 0);
}

// The ends of the lines follow the plane's outline. Deliberate: the two lines take the points of
// their cuts in opposite order, so that both run the way of the plane's axes.
void zvImageViewerWidget::FitLines()
{
  vtkPolyData* outline = this->PlaneOutlinePolyData;
  FitLine(zvOutlineCut::FindPoints(outline, this->RotationCenter, this->LineNormal1),
    this->SliceLine1Source, 1, 0);
  FitLine(zvOutlineCut::FindPoints(outline, this->RotationCenter, this->LineNormal2),
    this->SliceLine2Source, 0, 1);
}

//------------------------------------------------------------------------------
void zvImageViewerWidget::Rotate(double angle, double axis[3], double center[3])
{
  if (!this->TakeInput())
  {
    return;
  }
  // Copied, as a host may pass the plane's own centre and normal, which are about to change.
  const double fixedAxis[3] = { axis[0], axis[1], axis[2] };
  const double fixedCenter[3] = { center[0], center[1], center[2] };
  this->BecomeOblique();
  std::copy_n(fixedCenter, 3, this->RotationCenter);
  this->TurnPlane(angle, fixedAxis);
  this->PlaneSource->Modified();
  this->UpdatePlaneSource();
  this->TurnLines();
  this->Modified();
  this->UpdatePlane();
  this->UpdateMargins();
}

void zvImageViewerWidget::Rotate(
  int vtkNotUsed(X), int vtkNotUsed(Y), double p1[3], double p2[3], double vtkNotUsed(vpn)[3])
{
  if (!this->TakeInput())
  {
    return;
  }
  this->BecomeOblique();
  double normal[3], arm[3], motion[3];
  this->PlaneSource->GetNormal(normal);
  vtkMath::Subtract(p2, this->RotationCenter, arm);
  const double length = vtkMath::Normalize(arm);
  vtkMath::Cross(normal, arm, this->RotateAxis);
  vtkMath::Subtract(p2, p1, motion);
  // A motion at the centre itself has no angle.
  const double angle =
    length != 0.0 ? vtkMath::Dot(motion, this->RotateAxis) / length * 57.29577951308232 : 0.0;
  this->LastDegree = angle;
  for (int i = 0; i < 3; ++i)
  {
    this->Degree[i] = this->RotateAxis[i] * angle;
  }
  // Deliberate: about the normal. RotateAxis is the direction of the motion, which hosts read.
  this->TurnPlane(angle, normal);
  this->TurnLines();
  this->Modified();
  this->UpdatePlane();
  this->UpdateMargins();
}

// Before its first rotation the plane is enlarged, so that it cuts the whole volume at any angle.
void zvImageViewerWidget::BecomeOblique()
{
  if (this->PlaneOrientation != 3)
  {
    const zvImageGrid::Grid grid = zvImageGrid::Read(this->Reslice);
    double center[3];
    this->ImageData->GetCenter(center);
    this->CutPlane->SetOrigin(center);
    // Deliberate: a larger volume keeps its plane, so that the oblique image does not grow large.
    if (grid.Extent[1] < 1000 && grid.Extent[3] < 1000 && grid.Extent[5] < 1000)
    {
      double half[3];
      for (int axis = 0; axis < 3; ++axis)
      {
        half[axis] = grid.Extent[2 * axis + 1] * grid.Spacing[axis];
      }
      this->SetPlane(zvReslicePlane::Enlarged(CornersOf(this->PlaneSource),
        zvReslicePlane::NormalAxis(this->PlaneOrientation), center, half));
    }
  }
  this->PlaneOrientation = 3;
}

void zvImageViewerWidget::TurnPlane(double angle, const double axis[3])
{
  zvReslicePlane::SetTurn(this->RotationCenter, angle, axis, this->Transform);
  const zvReslicePlane::Corners turned =
    zvReslicePlane::Turned(CornersOf(this->PlaneSource), this->Transform);
  // The origin first: centre and normal follow the other two, and would otherwise be those of a
  // plane that is turned in part, whose normal can point the wrong way after a long step.
  this->SetPlane(turned);
}

// Each line is square to the other, so it runs along the direction in which the other moves.
void zvImageViewerWidget::TurnLines()
{
  TurnLine(this->SliceLine1Source, this->Transform, this->LineNormal2);
  TurnLine(this->SliceLine2Source, this->Transform, this->LineNormal1);
}

// A plane without width, as of a single slice seen edge on, cannot be updated.
bool zvImageViewerWidget::HasWidth()
{
  double axis1[3], axis2[3], normal[3];
  this->GetVector1(axis1);
  this->GetVector2(axis2);
  vtkMath::Cross(axis1, axis2, normal);
  return vtkMath::Norm(normal) > 0.0;
}

void zvImageViewerWidget::UpdatePlaneSource()
{
  if (this->HasWidth())
  {
    this->PlaneSource->Update();
  }
}

void zvImageViewerWidget::SetPlane(const zvReslicePlane::Corners& plane)
{
  this->PlaneSource->SetOrigin(plane.Origin[0], plane.Origin[1], plane.Origin[2]);
  this->PlaneSource->SetPoint1(plane.Point1[0], plane.Point1[1], plane.Point1[2]);
  this->PlaneSource->SetPoint2(plane.Point2[0], plane.Point2[1], plane.Point2[2]);
}

//------------------------------------------------------------------------------
int zvImageViewerWidget::GetSliceIndex()
{
  if (!this->Reslice || !this->TakeInput())
  {
    return 0;
  }
  const zvImageGrid::Grid grid = zvImageGrid::Read(this->Reslice);
  double bounds[6], origin[3];
  this->ImageData->GetBounds(bounds);
  this->PlaneSource->GetOrigin(origin);
  if (this->PlaneOrientation < 0 || this->PlaneOrientation > 2)
  {
    return this->CountObliqueIndex(grid.Spacing, bounds);
  }
  const int axis = this->PlaneOrientation;
  const double low = bounds[2 * axis];
  const double high = bounds[2 * axis + 1];
  if (origin[axis] > high)
  {
    this->PlaneSource->Push(high - origin[axis]);
  }
  else if (origin[axis] < low)
  {
    this->PlaneSource->Push(low - origin[axis]);
  }
  // Deliberate: of the place before that push, so that a host learns that the plane had left.
  return zvImageGrid::NearestIndex(origin[axis], low, grid.Spacing[axis]);
}

// How many steps back along the normal leave the volume, plus one.
int zvImageViewerWidget::CountObliqueIndex(const double spacing[3], const double bounds[6])
{
  const auto polygon = zvObliqueSlices::Read(this->PlaneOutlinePolyData->GetPoints());
  double step[3];
  this->PlaneSource->GetNormal(step);
  vtkMath::MultiplyScalar(step, -this->SliceStep(spacing));
  return zvObliqueSlices::Touches(polygon, bounds)
    ? 1 + zvObliqueSlices::StepsUntilClear(polygon, step, bounds)
    : 1;
}

double zvImageViewerWidget::SliceStep(const double spacing[3]) const
{
  return spacing[zvReslicePlane::NormalAxis(this->ViewOrientation)];
}

void zvImageViewerWidget::SetSliceIndex(int index)
{
  if (!this->Reslice || !this->TakeInput())
  {
    return;
  }
  const int last = this->NumberOfSlices - 1;
  index = std::max(std::min(index, last), 0);
  int current = this->GetSliceIndex();
  if (current == index)
  {
    return;
  }
  current = std::min(std::max(current, 0), last);
  const int delta = index - current;
  if (delta == 0)
  {
    return;
  }
  this->PlaneSource->Push(delta * this->SliceStep(zvImageGrid::Read(this->Reslice).Spacing));
  this->PushCross(delta);
  this->PlaneSource->Modified();
  this->Modified();
  this->UpdatePlane();
  this->UpdateMargins();
}

void zvImageViewerWidget::PushCross(int n)
{
  if (!this->TakeInput())
  {
    return;
  }
  double delta[3];
  this->PlaneSource->GetNormal(delta);
  vtkMath::MultiplyScalar(delta, n * this->SliceStep(zvImageGrid::Read(this->Reslice).Spacing));
  MoveLine(this->SliceLine1Source, delta);
  MoveLine(this->SliceLine2Source, delta);
  vtkMath::Add(this->RotationCenter, delta, this->RotationCenter);
}

void zvImageViewerWidget::SetDimensions(int dimensions[2])
{
  this->SetDimensions(dimensions[0], dimensions[1]);
}

void zvImageViewerWidget::SetDimensions(int width, int height)
{
  if (!this->TakeInput())
  {
    return;
  }
  const zvImageGrid::Grid grid = zvImageGrid::Read(this->Reslice);
  const int to[2] = { width, height };
  const int normal = zvReslicePlane::NormalAxis(this->ViewOrientation);
  const double spacing[2] = { grid.Spacing[zvReslicePlane::FirstAxis(normal)],
    grid.Spacing[zvReslicePlane::SecondAxis(normal)] };
  this->SetPlane(
    zvReslicePlane::Resized(CornersOf(this->PlaneSource), this->Dimensions, to, spacing));
  this->Dimensions[0] = width;
  this->Dimensions[1] = height;
}

//------------------------------------------------------------------------------
void zvImageViewerWidget::UpdateCursor(int X, int Y)
{
  if (!this->TakeUpdatedInput())
  {
    return;
  }
  const bool isOnPlane =
    zvPick::Hits(this->PlanePicker, X, Y, this->CurrentRenderer, this->TexturePlaneActor);
  this->CurrentImageValue = VTK_DOUBLE_MAX;
  this->CursorActor->SetVisibility(isOnPlane);
  if (isOnPlane)
  {
    double position[3];
    this->PlanePicker->GetPickPosition(position);
    this->UseContinuousCursor = 0;
    this->UpdateDiscreteCursor(position);
  }
}

void zvImageViewerWidget::AdjustCross(int X, int Y)
{
  if (!zvViewLookup::IsShown(this->CurrentRenderer) || !this->TakeUpdatedInput())
  {
    return;
  }
  zvPick::At(this->PlanePicker, X, Y, this->CurrentRenderer);
  double q[3];
  this->PlanePicker->GetPickPosition(q);
  this->UpdateDiscreteCursor(q); // q becomes the centre of the nearest voxel

  const zvImageGrid::Grid grid = zvImageGrid::Read(this->Reslice);
  vtkNew<vtkPlane> across;
  across->SetOrigin(q);
  vtkNew<vtkCutter> cutter;
  zvBoxCut::ExpectFewPoints(cutter);
  cutter->SetInputConnection(this->BoundsCube->GetOutputPort());
  cutter->SetCutFunction(across);

  double axis[3], end[3];
  this->GetVector1(axis);
  this->PlaneSource->GetPoint1(end);
  across->SetNormal(this->LineNormal1);
  this->DragLine(0, q, axis, end, !zvBoxCut::Update(cutter), grid.Spacing[this->FirstAxis]);

  this->GetVector2(axis);
  this->PlaneSource->GetPoint2(end);
  across->SetNormal(this->LineNormal2);
  this->DragLine(1, q, axis, end, !zvBoxCut::Update(cutter), grid.Spacing[this->SecondAxis]);
}

// Move one line (0 or 1) to the foot of q on its axis, which runs from the plane's origin to end.
void zvImageViewerWidget::DragLine(int which, const double q[3], const double axis[3],
  const double end[3], bool isOffTheBox, double spacing)
{
  vtkLineSource* line = which == 0 ? this->SliceLine1Source : this->SliceLine2Source;
  double origin[3], foot[3], p1[3];
  this->PlaneSource->GetOrigin(origin);
  FootOn(q, origin, axis, foot);
  line->GetPoint1(p1);

  // Both are measured from the plane's origin, so their difference has the sign of the motion. Off
  // the box on the near side it would lose it.
  const double footDistance = Distance(origin, foot);
  const int steps = isOffTheBox && footDistance < Distance(end, foot)
    ? -this->CrossIndex[which]
    : zvSliceCross::WholeSteps(footDistance, Distance(origin, p1), spacing);
  const zvSliceCross::Move move =
    zvSliceCross::Drag(this->CrossIndex[which], steps, this->Dimensions[which]);
  this->SlicesMovement[which] = move.Steps;
  this->CrossIndex[which] = move.Index;
  this->ShiftLine(which, move.Steps * spacing);
}

// Move one line and the rotation centre by millimetres along the other line.
void zvImageViewerWidget::ShiftLine(int which, double distance)
{
  if (distance == 0.0)
  {
    return;
  }
  vtkLineSource* line = which == 0 ? this->SliceLine1Source : this->SliceLine2Source;
  vtkLineSource* other = which == 0 ? this->SliceLine2Source : this->SliceLine1Source;
  double delta[3];
  UnitAlong(other, delta);
  vtkMath::MultiplyScalar(delta, distance);
  MoveLine(line, delta);
  vtkMath::Add(this->RotationCenter, delta, this->RotationCenter);
}

void zvImageViewerWidget::SetSliceCross(int dx, int dy)
{
  if (!this->TakeInput())
  {
    return;
  }
  const zvImageGrid::Grid grid = zvImageGrid::Read(this->Reslice);
  const zvSliceCross::Move first =
    zvSliceCross::Shift(this->CrossIndex[0], dx, this->Dimensions[0]);
  const zvSliceCross::Move second =
    zvSliceCross::Shift(this->CrossIndex[1], dy, this->Dimensions[1]);
  this->CrossIndex[0] = first.Index;
  this->CrossIndex[1] = second.Index;
  this->ShiftLine(0, first.Steps * grid.Spacing[this->FirstAxis]);
  this->ShiftLine(1, second.Steps * grid.Spacing[this->SecondAxis]);
}

void zvImageViewerWidget::GetSlicesMovement(int movement[2])
{
  std::copy_n(this->SlicesMovement, 2, movement);
}

void zvImageViewerWidget::GetCrossIndex(int index[2])
{
  std::copy_n(this->CrossIndex, 2, index);
}

void zvImageViewerWidget::SetCrossIndex(int index[2])
{
  std::copy_n(index, 2, this->CrossIndex);
  double origin[3], point1[3], point2[3], axis1[3], axis2[3];
  this->PlaneSource->GetOrigin(origin);
  this->PlaneSource->GetPoint1(point1);
  this->PlaneSource->GetPoint2(point2);
  this->GetVector1(axis1);
  this->GetVector2(axis2);
  const double a = zvSliceCross::FootParameter(this->RotationCenter, origin, axis1);
  const double b = zvSliceCross::FootParameter(this->RotationCenter, origin, axis2);
  vtkMath::MultiplyScalar(axis1, a);
  vtkMath::MultiplyScalar(axis2, b);
  LayLine(this->SliceLine2Source, origin, point1, axis2);
  LayLine(this->SliceLine1Source, origin, point2, axis1);
}

void zvImageViewerWidget::SetCrossResolution(int resolution[2])
{
  this->SliceLine1Source->SetResolution(resolution[0]);
  this->SliceLine2Source->SetResolution(resolution[1]);
}

void zvImageViewerWidget::SetLinesEnabled(int enabled)
{
  this->SetLineEnabled(
    enabled, this->SliceLine1Actor, this->SliceLine1Property, this->SliceLine1Picker);
  this->SetLineEnabled(
    enabled, this->SliceLine2Actor, this->SliceLine2Property, this->SliceLine2Picker);
  zvViewLookup::Render(this->Interactor);
}

void zvImageViewerWidget::SetLineEnabled(
  int enabled, vtkActor* actor, vtkProperty* property, vtkCellPicker* picker)
{
  // A line that is in the list twice would stay in it when hidden.
  picker->DeletePickList(actor);
  if (enabled)
  {
    this->ShowActor(actor, property);
    picker->AddPickList(actor);
    picker->PickFromListOn();
  }
  else if (this->CurrentRenderer)
  {
    this->CurrentRenderer->RemoveViewProp(actor);
  }
}

int zvImageViewerWidget::Intersection(double p1[3], double p2[3], double a1[3], double a2[3],
  double x[3], double& tol, double& t, double& u)
{
  SolveCrossing(p1, p2, a1, a2, t, u);
  if (t >= 0.0 && t <= 1.0 && u >= 0.0 && u <= 1.0)
  {
    for (int i = 0; i < 3; ++i)
    {
      x[i] = p1[i] + t * (p2[i] - p1[i]);
    }
    return 1;
  }
  // Deliberate: a tolerance beyond 0 to 1 is asked first, and then an end of the second segment
  // counts instead of one of the first.
  double along = 0.0;
  double distance2 = 0.0;
  if (tol < 0.0 || tol > 1.0)
  {
    distance2 = vtkLine::DistanceToLine(tol < 0.0 ? a1 : a2, p1, p2, along, x);
    tol = tol < 0.0 ? 0.0 : 1.0;
  }
  else if (t < 0.0 || t > 1.0)
  {
    distance2 = vtkLine::DistanceToLine(t < 0.0 ? p1 : p2, a1, a2, along, x);
  }
  else
  {
    return 0;
  }
  return distance2 <= tol * tol ? 1 : 0;
}

//------------------------------------------------------------------------------
void zvImageViewerWidget::floodFill(int x, int y, int value)
{
  if (!this->CanWriteVoxels())
  {
    return;
  }
  this->ForgetResetFills();
  const double cursor =
    this->CurrentCursorPosition[zvReslicePlane::NormalAxis(this->ViewOrientation)];
  this->Fills.push_back(zvFloodFill::Fill(
    this->FillSlice(cursor), x, y, value, this->FilledPoints, this->FillOldValue));
}

bool zvImageViewerWidget::CanWriteVoxels()
{
  return this->TakeInput() &&
    this->IsUpright(
      zvImageGrid::HasIdentityDirection(this->ImageData), "image", "no voxel is written");
}

// Deliberate: x and y are the two axes in the image's order, so in orientation 1 x is limited by
// the steps along z and y by those along x, and the last row and column are never filled.
zvFloodFill::Slice zvImageViewerWidget::FillSlice(double cursor)
{
  const int normal = zvReslicePlane::NormalAxis(this->ViewOrientation);
  zvFloodFill::Slice slice;
  slice.Image = this->ImageData;
  slice.XAxis = normal == 0 ? 1 : 0;
  slice.YAxis = normal == 2 ? 1 : 2;
  slice.NormalAxis = normal;
  slice.Index = zvNumbers::Truncate(cursor);
  slice.Width = this->Dimensions[0];
  slice.Height = this->Dimensions[1];
  slice.RecordedIndex = cursor;
  return slice;
}

void zvImageViewerWidget::UndoFill()
{
  this->ForgetResetFills();
  if (this->CanWriteVoxels())
  {
    for (const zvFloodFill::Region& fill : this->Fills)
    {
      zvFloodFill::Restore(fill, this->ImageData, this->FillOldValue);
    }
  }
  this->ForgetFill();
  this->Modified();
  this->UpdatePlane();
  zvViewLookup::Render(this->Interactor);
}

// The record is what counts: areas of a record that was emptied are no longer to be taken back.
void zvImageViewerWidget::ForgetResetFills()
{
  if (this->FilledPoints->GetNumberOfPoints() == 0)
  {
    this->Fills.clear();
  }
}

void zvImageViewerWidget::ForgetFill()
{
  this->FilledPoints->Reset();
  this->Fills.clear();
}

//------------------------------------------------------------------------------
void zvImageViewerWidget::SetOpacityMask(double opacity)
{
  // Asked this way round, so that a value that is not a number becomes 0.
  this->OpacityMask = opacity > 0.0 ? std::min(opacity, 1.0) : 0.0;
  this->MaskLookupTable->SetTableValue(0, 1.0, 0.0, 0.0, this->OpacityMask);
  if (this->MaskColorMap->GetNumberOfInputConnections(0) > 0)
  {
    this->MaskColorMap->Update();
  }
}

void zvImageViewerWidget::SetEnableImageMask(int enabled)
{
  if (!this->MaskActor || !this->CurrentRenderer)
  {
    return;
  }
  if (enabled)
  {
    this->CurrentRenderer->AddViewProp(this->MaskActor);
  }
  else
  {
    this->CurrentRenderer->RemoveViewProp(this->MaskActor);
  }
}

void zvImageViewerWidget::SetImageMask(vtkImageData* mask)
{
  if (!mask)
  {
    this->SetEnableImageMask(0);
    return;
  }
  vtkDataArray* scalars = mask->GetPointData()->GetScalars();
  if (!scalars || scalars->GetNumberOfComponents() != 1 || scalars->GetNumberOfTuples() == 0)
  {
    vtkErrorMacro(<< "The mask has to be an image with scalars of one component. It is not shown.");
    return;
  }
  if (!this->IsUpright(zvImageGrid::HasIdentityDirection(mask), "mask", "the mask is not shown"))
  {
    return;
  }
  this->CopyMask(mask);
  this->BuildMaskPipeline();
  this->SetEnableImageMask(0);
  vtkNew<vtkPolyDataMapper> mapper;
  mapper->SetInputConnection(this->PlaneSource->GetOutputPort());
  this->MaskActor = vtkSmartPointer<vtkActor>::New();
  this->MaskActor->SetMapper(mapper);
  this->MaskActor->SetTexture(this->MaskTexture);
  this->MaskActor->PickableOn();
  this->MaskActor->SetVisibility(this->TexturePlaneActor->GetVisibility());
  this->SetEnableImageMask(1);
}

// The widget's own copy of the mask: in the voxels of the former one where they fit, as large
// memory is slow to come by.
void zvImageViewerWidget::CopyMask(vtkImageData* mask)
{
  vtkSmartPointer<vtkDataArray> voxels;
  vtkDataArray* scalars = mask->GetPointData()->GetScalars();
  vtkDataArray* former = this->ImageMask ? this->ImageMask->GetPointData()->GetScalars() : nullptr;
  const bool canBeReused = former && former->GetDataType() == scalars->GetDataType() &&
    former->GetNumberOfTuples() == scalars->GetNumberOfTuples() && former != scalars;
  if (canBeReused)
  {
    voxels = former;
  }
  else
  {
    voxels = vtkSmartPointer<vtkDataArray>::Take(scalars->NewInstance());
  }
  voxels->DeepCopy(scalars);
  this->ImageMask = vtkSmartPointer<vtkImageData>::New();
  this->ImageMask->CopyStructure(mask);
  this->ImageMask->GetPointData()->SetScalars(voxels);
}

// The overlay samples the mask exactly as the image was sampled last.
void zvImageViewerWidget::BuildMaskPipeline()
{
  this->MaskReslice->SetInputData(this->ImageMask);
  vtkNew<vtkMatrix4x4> axes; // shared axes would make the mask follow the slice
  axes->DeepCopy(this->ResliceAxes);
  this->MaskReslice->SetResliceAxes(axes);
  this->MaskReslice->SetInterpolationMode(this->Reslice->GetInterpolationMode());
  this->MaskReslice->SetOutputSpacing(this->Reslice->GetOutputSpacing());
  this->MaskReslice->SetOutputOrigin(this->Reslice->GetOutputOrigin());
  this->MaskReslice->SetOutputExtent(this->Reslice->GetOutputExtent());
  this->MaskReslice->SetBackgroundLevel(1.0); // beside the mask nothing is marked

  this->MaskLookupTable->SetNumberOfTableValues(2);
  this->MaskLookupTable->SetRange(0.0, 0.0);
  this->MaskLookupTable->SetTableValue(0, 1.0, 0.0, 0.0, this->OpacityMask);
  this->MaskLookupTable->SetTableValue(1, 0.0, 0.0, 0.0, 0.0);
  this->MaskLookupTable->Build();
  this->MaskColorMap->SetLookupTable(this->MaskLookupTable);
  this->MaskColorMap->PassAlphaToOutputOn();
  this->MaskColorMap->SetInputConnection(this->MaskReslice->GetOutputPort());
  this->MaskColorMap->Update();
  this->MaskTexture->SetInputConnection(this->MaskColorMap->GetOutputPort());
  this->MaskTexture->SetQualityTo32Bit();
  this->MaskTexture->SetInterpolate(this->Texture->GetInterpolate());
  this->MaskTexture->RepeatOff();
  this->MaskTexture->SetLookupTable(this->MaskLookupTable);
}

//------------------------------------------------------------------------------
void zvImageViewerWidget::StartWindowLevel()
{
  if (!zvViewLookup::HasPointer(this->CurrentRenderer, this->Interactor))
  {
    this->State = Outside;
    return;
  }
  const int X = this->Interactor->GetEventPosition()[0];
  const int Y = this->Interactor->GetEventPosition()[1];
  const bool isOnPlane =
    zvPick::Hits(this->PlanePicker, X, Y, this->CurrentRenderer, this->TexturePlaneActor);
  this->InitialWindow = this->CurrentWindow;
  this->InitialLevel = this->CurrentLevel;
  if (!isOnPlane)
  {
    this->State = Outside;
    this->HighlightPlane(0);
    return;
  }
  this->State = WindowLevelling;
  this->HighlightPlane(1);
  this->StartWindowLevelPositionX = X;
  this->StartWindowLevelPositionY = Y;
  this->EventCallbackCommand->SetAbortFlag(1);
  this->SetInteracting(true);
  this->TellWindowLevel(vtkCommand::StartWindowLevelEvent);
  zvViewLookup::Render(this->Interactor);
}

void zvImageViewerWidget::StopWindowLevel()
{
  if (this->State == Start || this->State == Outside)
  {
    return;
  }
  this->State = Start;
  this->HighlightPlane(0);
  this->EventCallbackCommand->SetAbortFlag(1);
  this->SetInteracting(false);
  this->TellWindowLevel(vtkCommand::EndWindowLevelEvent);
  zvViewLookup::Render(this->Interactor);
}

// The update rate of the window, which may be gone.
void zvImageViewerWidget::SetInteracting(bool on)
{
  if (!this->Interactor || !this->Interactor->GetRenderWindow())
  {
    return;
  }
  if (on)
  {
    this->StartInteraction();
  }
  else
  {
    this->EndInteraction();
  }
}

void zvImageViewerWidget::TellWindowLevel(unsigned long event)
{
  double windowLevel[2] = { this->CurrentWindow, this->CurrentLevel };
  this->InvokeEvent(event, windowLevel);
}

//------------------------------------------------------------------------------
void zvImageViewerWidget::SetRotationCenter(double center[3])
{
  std::copy_n(center, 3, this->RotationCenter);
}

void zvImageViewerWidget::GetRotationCenter(double center[3])
{
  std::copy_n(this->RotationCenter, 3, center);
}

void zvImageViewerWidget::GetRotateAxis(double axis[3])
{
  std::copy_n(this->RotateAxis, 3, axis);
}

void zvImageViewerWidget::GetDegree(double degree[3])
{
  std::copy_n(this->Degree, 3, degree);
}

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
