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

bool zvImageGrid::HasIdentityDirection(vtkImageData* image)
{
  return IsIdentity(image->GetDirectionMatrix()->GetData());
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
