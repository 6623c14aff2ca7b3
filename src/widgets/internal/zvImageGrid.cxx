#include "zvImageGrid.h"

#include "zvNumbers.h"

#include "vtkAlgorithm.h"
#include "vtkAlgorithmOutput.h"
#include "vtkDataArray.h"
#include "vtkImageData.h"
#include "vtkInformation.h"
#include "vtkMatrix3x3.h"
#include "vtkPointData.h"
#include "vtkStreamingDemandDrivenPipeline.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

namespace
{
const double IdentityMatrix[9] = { 1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0 };

bool IsIdentity(const double direction[9])
{
  return std::equal(std::begin(IdentityMatrix), std::end(IdentityMatrix), direction);
}
}

zvImageGrid::Grid zvImageGrid::Read(vtkAlgorithm* consumer)
{
  Grid grid;
  vtkAlgorithm* producer =
    consumer->GetNumberOfInputConnections(0) > 0 ? consumer->GetInputAlgorithm(0, 0) : nullptr;
  if (!producer)
  {
    return grid;
  }
  producer->UpdateInformation();
  vtkInformation* information =
    producer->GetOutputInformation(consumer->GetInputConnection(0, 0)->GetIndex());
  if (information->Has(vtkStreamingDemandDrivenPipeline::WHOLE_EXTENT()))
  {
    information->Get(vtkStreamingDemandDrivenPipeline::WHOLE_EXTENT(), grid.Extent);
  }
  if (information->Has(vtkDataObject::ORIGIN()))
  {
    information->Get(vtkDataObject::ORIGIN(), grid.Origin);
  }
  if (information->Has(vtkDataObject::SPACING()))
  {
    information->Get(vtkDataObject::SPACING(), grid.Spacing);
  }
  if (information->Has(vtkDataObject::DIRECTION()))
  {
    grid.IdentityDirection = IsIdentity(information->Get(vtkDataObject::DIRECTION()));
  }
  return grid;
}

void zvImageGrid::Span(const Grid& grid, double low[3], double high[3])
{
  for (int axis = 0; axis < 3; ++axis)
  {
    low[axis] = grid.Origin[axis] + grid.Spacing[axis] * grid.Extent[2 * axis];
    high[axis] = grid.Origin[axis] + grid.Spacing[axis] * grid.Extent[2 * axis + 1];
    if (grid.Spacing[axis] < 0.0)
    {
      std::swap(low[axis], high[axis]);
    }
  }
}

bool zvImageGrid::HasIdentityDirection(vtkImageData* image)
{
  return IsIdentity(image->GetDirectionMatrix()->GetData());
}

std::string zvImageGrid::DirectionText(const std::string& what, const std::string& consequence)
{
  return "The " + what + "'s direction matrix is not the identity, so " + consequence +
    ". Reorient it first: permute and flip its axes exactly, or resample it.";
}

bool zvImageGrid::IsEmpty(const int extent[6])
{
  return extent[0] > extent[1] || extent[2] > extent[3] || extent[4] > extent[5];
}

std::string zvImageGrid::EmptyExtentText(const int extent[6])
{
  std::string text = "Invalid extent [" + std::to_string(extent[0]);
  for (int i = 1; i < 6; ++i)
  {
    text += ", " + std::to_string(extent[i]);
  }
  return text + "]. Perhaps the input data is empty?";
}

int zvImageGrid::StepsAlong(const int extent[6], int axis)
{
  const long long steps = static_cast<long long>(extent[2 * axis + 1]) - extent[2 * axis];
  return static_cast<int>(std::clamp<long long>(
    steps, std::numeric_limits<int>::min(), std::numeric_limits<int>::max() - 1));
}

bool zvImageGrid::HasVoxels(vtkImageData* image)
{
  vtkDataArray* const scalars = image->GetPointData()->GetScalars();
  return scalars && scalars->GetNumberOfTuples() > 0 &&
    scalars->GetNumberOfTuples() == image->GetNumberOfPoints();
}

int zvImageGrid::NearestIndex(double coordinate, double origin, double spacing)
{
  return spacing == 0.0 ? 0 : zvNumbers::Round((coordinate - origin) / spacing);
}
