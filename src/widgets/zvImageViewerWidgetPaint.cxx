// Painting and filling the voxels of the slice, and the mask over it.

#include "zvImageViewerWidget.h"

#include "zvFloodFill.h"
#include "zvImageGrid.h"
#include "zvNumbers.h"
#include "zvReslicePlane.h"
#include "zvViewLookup.h"

#include "vtkActor.h"
#include "vtkDataArray.h"
#include "vtkImageData.h"
#include "vtkImageMapToColors.h"
#include "vtkImageReslice.h"
#include "vtkLookupTable.h"
#include "vtkMatrix4x4.h"
#include "vtkPlaneSource.h"
#include "vtkPointData.h"
#include "vtkPoints.h"
#include "vtkPolyDataMapper.h"
#include "vtkRenderer.h"
#include "vtkTexture.h"

#include <algorithm>

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

void zvImageViewerWidget::FillAtCursor()
{
  const int normal = zvReslicePlane::NormalAxis(this->ViewOrientation);
  const double* cursor = this->CurrentCursorPosition;
  const int x = zvNumbers::Truncate(cursor[normal == 0 ? 1 : 0]);
  const int y = zvNumbers::Truncate(cursor[normal == 2 ? 1 : 2]);
  this->floodFill(x, y, this->FillValue);
}

void zvImageViewerWidget::PaintAtCursor()
{
  if (!this->CanWriteVoxels())
  {
    return;
  }
  int voxel[3];
  const int* extent = this->ImageData->GetExtent();
  for (int axis = 0; axis < 3; ++axis)
  {
    voxel[axis] = zvNumbers::Truncate(this->CurrentCursorPosition[axis]);
    if (voxel[axis] < extent[2 * axis] || voxel[axis] > extent[2 * axis + 1])
    {
      return; // the cursor has not been on the slice yet
    }
  }
  this->ImageData->SetScalarComponentFromDouble(
    voxel[0], voxel[1], voxel[2], 0, static_cast<double>(this->FillValue));
  this->Modified();
  this->UpdatePlane();
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
