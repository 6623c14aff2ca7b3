#include "zvContourStack.h"

#include "zvContourPlane.h"

#include "vtkCellArray.h"
#include "vtkImageData.h"
#include "vtkImageStencilToImage.h"
#include "vtkLassoStencilSource.h"
#include "vtkNew.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"

const zvContour* zvContourStack::Find(int slice) const
{
  const auto found = this->Contours.find(slice);
  return found != this->Contours.end() ? &found->second : nullptr;
}

void zvContourStack::Set(int slice, const zvContour& contour)
{
  if (contour.empty())
  {
    this->Contours.erase(slice);
    return;
  }
  this->Contours[slice] = contour;
}

vtkSmartPointer<vtkPolyData> zvContourStack::ToPolyData(vtkImageData* volume) const
{
  vtkNew<vtkPoints> points;
  points->SetDataTypeToDouble();
  vtkNew<vtkCellArray> lines;
  for (const auto& [slice, contour] : this->Contours)
  {
    const zvContourPlane plane(volume, this->Axis, slice);
    const vtkIdType first = points->GetNumberOfPoints();
    const auto count = static_cast<vtkIdType>(contour.size());
    for (vtkIdType i = 0; i < count; ++i)
    {
      points->InsertNextPoint(plane.ToWorld(contour[static_cast<std::size_t>(i)]).data());
      lines->InsertNextCell({ first + i, first + (i + 1) % count });
    }
  }
  auto rings = vtkSmartPointer<vtkPolyData>::New();
  rings->SetPoints(points);
  rings->SetLines(lines);
  return rings;
}

vtkSmartPointer<vtkImageData> zvContourStack::MakeMask(vtkImageData* volume) const
{
  if (this->IsEmpty())
  {
    return nullptr;
  }
  vtkNew<vtkLassoStencilSource> lasso;
  lasso->SetInformationInput(volume);
  lasso->SetSliceOrientation(this->Axis);
  for (const auto& [slice, contour] : this->Contours)
  {
    const zvContourPlane plane(volume, this->Axis, slice);
    vtkNew<vtkPoints> points;
    points->SetDataTypeToDouble();
    for (const zvContourPoint& point : contour)
    {
      points->InsertNextPoint(plane.ToWorld(point).data());
    }
    lasso->SetSlicePoints(slice, points);
  }
  vtkNew<vtkImageStencilToImage> image;
  image->SetInputConnection(lasso->GetOutputPort());
  image->SetOutputScalarTypeToUnsignedChar();
  image->SetInsideValue(0.0);
  image->SetOutsideValue(1.0);
  image->Update();
  return image->GetOutput();
}
