#include "zvPlainSlice.h"

#include "zvSliceColorMap.h"
#include "zvSliceReslice.h"
#include "zvSliceTexture.h"

#include <vtkImageData.h>
#include <vtkMath.h>
#include <vtkMergePoints.h>
#include <vtkPolyData.h>
#include <vtkProperty.h>

#include <algorithm>
#include <cmath>

namespace
{
/// How many pixels a side of the plane gets: a power of two, not fewer than voxel steps.
int FindPixels(double length, const double direction[3], const double spacing[3])
{
  const double step = std::abs(direction[0] * spacing[0]) + std::abs(direction[1] * spacing[1]) +
    std::abs(direction[2] * spacing[2]);
  int pixels = 1;
  while (pixels < length / step)
  {
    pixels *= 2;
  }
  return pixels;
}
}

//------------------------------------------------------------------------------
zvPlainSlice::zvPlainSlice(Filters filters, vtkImageData* volume, bool linear)
  : Volume(volume)
{
  if (filters == Filters::Quick)
  {
    this->Reslice = vtkSmartPointer<zvSliceReslice>::New();
    this->ColorMap = vtkSmartPointer<zvSliceColorMap>::New();
    this->Texture = vtkSmartPointer<zvSliceTexture>::New();
  }
  else
  {
    this->Reslice = vtkSmartPointer<vtkImageReslice>::New();
    this->ColorMap = vtkSmartPointer<vtkImageMapToColors>::New();
    this->Texture = vtkSmartPointer<vtkTexture>::New();
  }
  this->Table->SetHueRange(0.0, 0.0);
  this->Table->SetSaturationRange(0.0, 0.0);
  this->Table->SetValueRange(0.0, 1.0);
  this->Table->SetAlphaRange(1.0, 1.0);
  this->Table->SetTableRange(volume->GetScalarRange());
  this->Table->Build();
  this->Reslice->TransformInputSamplingOff();
  this->Reslice->SetInterpolationMode(linear ? VTK_RESLICE_LINEAR : VTK_RESLICE_NEAREST);
  this->Reslice->SetInputData(volume);
  this->ColorMap->SetLookupTable(this->Table);
  this->ColorMap->SetOutputFormatToRGBA();
  this->ColorMap->PassAlphaToOutputOn();
  this->ColorMap->SetInputConnection(this->Reslice->GetOutputPort());
  this->BuildDisplay(filters, volume);
}

//------------------------------------------------------------------------------
void zvPlainSlice::BuildDisplay(Filters filters, vtkImageData* volume)
{
  this->Texture->SetQualityTo32Bit();
  this->Texture->InterpolateOn();
  this->Texture->RepeatOff();
  this->Texture->SetInputConnection(this->ColorMap->GetOutputPort());
  this->Mapper->SetInputConnection(this->PlaneSource->GetOutputPort());
  this->Actor->SetMapper(this->Mapper);
  this->Actor->SetTexture(this->Texture);
  this->Actor->GetProperty()->SetAmbient(1.0);
  this->Actor->GetProperty()->SetDiffuse(0.0);
  this->Actor->GetProperty()->SetInterpolationToFlat();
  this->Box->SetBounds(volume->GetBounds());
  this->Cutter->SetInputConnection(this->Box->GetOutputPort());
  this->Cutter->SetCutFunction(this->CutPlane);
  if (filters == Filters::Quick)
  {
    // Clearing the default locator's buckets takes four times as long as the cut.
    vtkNew<vtkMergePoints> fewBuckets;
    fewBuckets->AutomaticOff();
    fewBuckets->SetDivisions(2, 2, 2);
    this->Cutter->SetLocator(fewBuckets);
  }
  this->CutMapper->SetInputConnection(this->Cutter->GetOutputPort());
  this->CutActor->SetMapper(this->CutMapper);
}

//------------------------------------------------------------------------------
void zvPlainSlice::SetPlane(const double origin[3], const double point1[3], const double point2[3])
{
  this->PlaneSource->SetOrigin(origin[0], origin[1], origin[2]);
  this->PlaneSource->SetPoint1(point1[0], point1[1], point1[2]);
  this->PlaneSource->SetPoint2(point2[0], point2[1], point2[2]);
}

//------------------------------------------------------------------------------
void zvPlainSlice::CentreOnCut()
{
  this->CutPlane->SetOrigin(this->PlaneSource->GetCenter());
  this->CutPlane->SetNormal(this->PlaneSource->GetNormal());
  this->Cutter->Update();
  vtkPolyData* const cut = this->Cutter->GetOutput();
  const vtkIdType count = cut->GetNumberOfPoints();
  if (count == 0)
  {
    return;
  }
  double mean[3] = {};
  for (vtkIdType i = 0; i < count; ++i)
  {
    vtkMath::Add(mean, cut->GetPoint(i), mean);
  }
  vtkMath::MultiplyScalar(mean, 1.0 / static_cast<double>(count));
  this->PlaneSource->SetCenter(mean);
}

//------------------------------------------------------------------------------
void zvPlainSlice::UpdateAxes(const double axis1[3], const double axis2[3], const double normal[3])
{
  double origin[3];
  this->PlaneSource->GetOrigin(origin);
  for (int row = 0; row < 3; ++row)
  {
    this->Axes->SetElement(row, 0, axis1[row]);
    this->Axes->SetElement(row, 1, axis2[row]);
    this->Axes->SetElement(row, 2, normal[row]);
    this->Axes->SetElement(row, 3, origin[row]);
  }
  this->Axes->Modified();
  this->Reslice->SetResliceAxes(this->Axes);
}

//------------------------------------------------------------------------------
void zvPlainSlice::UpdatePlane()
{
  this->CentreOnCut();
  double axis1[3];
  double axis2[3];
  double normal[3];
  vtkMath::Subtract(this->PlaneSource->GetPoint1(), this->PlaneSource->GetOrigin(), axis1);
  vtkMath::Subtract(this->PlaneSource->GetPoint2(), this->PlaneSource->GetOrigin(), axis2);
  this->PlaneSource->GetNormal(normal);
  const double width = vtkMath::Normalize(axis1);
  const double height = vtkMath::Normalize(axis2);
  this->UpdateAxes(axis1, axis2, normal);
  const int pixelsX = FindPixels(width, axis1, this->Volume->GetSpacing());
  const int pixelsY = FindPixels(height, axis2, this->Volume->GetSpacing());
  this->Reslice->SetOutputSpacing(width / pixelsX, height / pixelsY, 1.0);
  this->Reslice->SetOutputOrigin(0.0, 0.0, 0.0);
  this->Reslice->SetOutputExtent(0, pixelsX - 1, 0, pixelsY - 1, 0, 0);
}
