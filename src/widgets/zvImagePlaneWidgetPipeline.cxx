// The way from the image to the textured plane: input, reslice, colours and texture.

#include "zvImagePlaneWidget.h"

#include "zvBoxCut.h"
#include "zvEvents.h"
#include "zvImageGrid.h"
#include "zvPlaneSource.h"
#include "zvReslicePlane.h"
#include "zvSliceMapper.h"
#include "zvSliceReslice.h"
#include "zvWindowLevel.h"

#include "vtkActor.h"
#include "vtkAlgorithmOutput.h"
#include "vtkCubeSource.h"
#include "vtkCutter.h"
#include "vtkDoubleArray.h"
#include "vtkImageData.h"
#include "vtkImageMapToColors.h"
#include "vtkLookupTable.h"
#include "vtkMath.h"
#include "vtkMatrix4x4.h"
#include "vtkNew.h"
#include "vtkPlane.h"
#include "vtkPlanes.h"
#include "vtkPoints.h"
#include "vtkPolyDataMapper.h"
#include "vtkRenderer.h"
#include "vtkTexture.h"

namespace
{
void ConfigureTexture(vtkTexture* texture, int interpolate, vtkLookupTable* table)
{
  texture->SetQualityTo32Bit();
  texture->SetColorMode(VTK_COLOR_MODE_DEFAULT);
  texture->SetInterpolate(interpolate);
  texture->RepeatOff();
  texture->SetLookupTable(table);
}
}

//------------------------------------------------------------------------------
// Input

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
  const vtkSmartPointer<vtkObject> hold = zvEvents::Hold(this);
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
  if (this->ImageData != image)
  {
    return; // an observer of the render thought otherwise
  }
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
  const zvWindowLevel::Values original = zvWindowLevel::Adopt(
    this->ImageData, this->UserControlledLookupTable ? nullptr : this->LookupTable.Get());
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
  auto mapper = vtkSmartPointer<zvSliceMapper>::New();
  mapper->SetInputConnection(this->PlaneSource->GetOutputPort());
  mapper->SetClippingPlanes(planes);
  // Set back a little in depth (in the toolkit's units, some tenths of a millimetre), or the
  // outline around it is dotted where it is seen at an angle.
  mapper->SetRelativeCoincidentTopologyPolygonOffsetParameters(0.0, 40.0);
  return mapper;
}

//------------------------------------------------------------------------------
// Colours

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

//------------------------------------------------------------------------------
// Reslice

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
