#include "zvSliceReslice.h"
#include "zvSliceSampling.h"

#include <vtkCommand.h>
#include <vtkDataArray.h>
#include <vtkDataSetAttributes.h>
#include <vtkDoubleArray.h>
#include <vtkImageData.h>
#include <vtkImageInterpolator.h>
#include <vtkInformation.h>
#include <vtkInformationVector.h>
#include <vtkMatrix4x4.h>
#include <vtkNew.h>
#include <vtkObjectFactory.h>
#include <vtkPointData.h>
#include <vtkStreamingDemandDrivenPipeline.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

vtkObjectFactoryNewMacro(zvSliceReslice);

namespace
{
/// Make a slice of zeros.
int WriteBackground(vtkInformationVector* outputs)
{
  vtkInformation* const information = outputs->GetInformationObject(0);
  vtkImageData* const slice = vtkImageData::GetData(outputs);
  int extent[6];
  information->Get(vtkStreamingDemandDrivenPipeline::UPDATE_EXTENT(), extent);
  slice->SetExtent(extent);
  slice->AllocateScalars(information);
  slice->GetPointData()->GetScalars()->Fill(0.0);
  return 1;
}

/// Whether the stock class has no samplers for a scalar type: the integers of 64 bits.
bool IsWide(int scalarType)
{
  switch (scalarType)
  {
    case VTK_LONG:
    case VTK_UNSIGNED_LONG:
    case VTK_LONG_LONG:
    case VTK_UNSIGNED_LONG_LONG:
    case VTK_ID_TYPE:
      return true;
    default:
      return false;
  }
}
}

//------------------------------------------------------------------------------
int zvSliceReslice::RequestInformation(
  vtkInformation* request, vtkInformationVector** inputs, vtkInformationVector* outputs)
{
  const int done = this->Superclass::RequestInformation(request, inputs, outputs);
  vtkInformation* const output = outputs->GetInformationObject(0);
  vtkInformation* const scalars = vtkDataObject::GetActiveFieldInformation(
    output, vtkDataObject::FIELD_ASSOCIATION_POINTS, vtkDataSetAttributes::SCALARS);
  if (scalars && IsWide(scalars->Get(vtkDataObject::FIELD_ARRAY_TYPE())))
  {
    // Minus one leaves the number of components as it is.
    vtkDataObject::SetPointDataActiveScalarInfo(output, VTK_DOUBLE, -1);
  }
  if (IsTooLarge(this->OutputExtent))
  {
    const int empty[6] = { 0, -1, 0, -1, 0, 0 };
    output->Set(vtkStreamingDemandDrivenPipeline::WHOLE_EXTENT(), empty, 6);
  }
  return done;
}

//------------------------------------------------------------------------------
bool zvSliceReslice::IsTooLarge(const int extent[6])
{
  double pixels = 1.0;
  for (int axis = 0; axis < 3; ++axis)
  {
    pixels *= std::max(static_cast<double>(extent[2 * axis + 1]) - extent[2 * axis] + 1.0, 0.0);
  }
  return pixels > 268435456.0;
}

//------------------------------------------------------------------------------
void zvSliceReslice::AllowWideLoops(bool allowed)
{
  zvSliceSampling::AreWideLoopsAllowed = allowed;
}

//------------------------------------------------------------------------------
int zvSliceReslice::RequestData(
  vtkInformation* request, vtkInformationVector** inputs, vtkInformationVector* outputs)
{
  // The stock way along the axes reads from nowhere in two cases with which its other way copes:
  // an axis of length zero, as of a plane without extent, and cubic samples of a thin volume.
  vtkImageData* const input = vtkImageData::GetData(inputs[0]);
  if (this->UsePermuteExecute && input &&
    (!zvSliceSampling::RunsAlongThreeAxes(*this->IndexMatrix->Element) ||
      (this->InterpolationMode == VTK_RESLICE_CUBIC &&
        zvSliceSampling::IsThinAndOffset(input->GetExtent()))))
  {
    this->UsePermuteExecute = 0;
  }
  vtkDataArray* const scalars = input ? input->GetPointData()->GetScalars() : nullptr;
  if (!scalars || scalars->GetNumberOfTuples() == 0)
  {
    return WriteBackground(outputs);
  }
  return IsWide(scalars->GetDataType()) ? this->RequestDataAsDoubles(request, inputs, outputs)
                                        : this->Superclass::RequestData(request, inputs, outputs);
}

//------------------------------------------------------------------------------
int zvSliceReslice::RequestDataAsDoubles(
  vtkInformation* request, vtkInformationVector** inputs, vtkInformationVector* outputs)
{
  vtkImageData* const image = vtkImageData::GetData(inputs[0]);
  vtkNew<vtkDoubleArray> doubles;
  doubles->DeepCopy(image->GetPointData()->GetScalars());
  vtkNew<vtkImageData> narrowed;
  narrowed->CopyStructure(image);
  narrowed->GetPointData()->SetScalars(doubles);
  // In information of its own: that of the input belongs to the producer.
  vtkNew<vtkInformation> information;
  information->Copy(inputs[0]->GetInformationObject(0));
  information->Set(vtkDataObject::DATA_OBJECT(), narrowed);
  vtkNew<vtkInformationVector> images;
  images->Append(information);
  vtkInformationVector* narrowedInputs[] = { images, inputs[1] };
  return this->Superclass::RequestData(request, narrowedInputs, outputs);
}

//------------------------------------------------------------------------------
bool zvSliceReslice::SamplesPlainly()
{
  if (!this->IndexMatrix || this->OptimizedTransform || !this->HitInputExtent ||
    !this->Optimization || this->Wrap || this->Mirror || !this->Border ||
    this->BorderThickness != 0.5 || this->ScalarShift != 0.0 || this->ScalarScale != 1.0 ||
    this->SlabNumberOfSlices > 1 || std::isnan(this->BackgroundColor[0]) ||
    this->GenerateStencilOutput || this->GetStencil() || this->HasConvertScalars ||
    this->HasObserver(vtkCommand::ProgressEvent))
  {
    return false;
  }
  // A subclass of the interpolator may do as it likes.
  vtkAbstractImageInterpolator* const interpolator = this->Interpolator;
  return interpolator && std::strcmp(interpolator->GetClassName(), "vtkImageInterpolator") == 0 &&
    static_cast<vtkImageInterpolator*>(interpolator)->GetInterpolationMode() ==
    this->InterpolationMode &&
    this->InterpolationMode <= VTK_RESLICE_LINEAR && interpolator->GetTolerance() == 0.5 &&
    interpolator->GetBorderMode() == VTK_IMAGE_BORDER_CLAMP &&
    interpolator->GetComponentOffset() == 0 && interpolator->GetComponentCount() == -1 &&
    !interpolator->GetSlidingWindow();
}

//------------------------------------------------------------------------------
bool zvSliceReslice::HasPlainMatrix(const int extent[6])
{
  const double* const matrix = *this->IndexMatrix->Element;
  const double lastRow[4] = { 0.0, 0.0, 0.0, 1.0 };
  if (!std::equal(lastRow, lastRow + 4, matrix + 12))
  {
    return false;
  }
  for (int axis = 0; axis < 3; ++axis)
  {
    const double* const row = matrix + 4 * axis;
    const double reach = std::abs(row[0]) * std::max(std::abs(extent[0]), std::abs(extent[1])) +
      std::abs(row[1]) * std::max(std::abs(extent[2]), std::abs(extent[3])) +
      std::abs(row[2]) * std::abs(extent[4]) + std::abs(row[3]);
    if (!(reach < zvSliceSampling::LargestCoordinate))
    {
      return false;
    }
  }
  return true;
}

//------------------------------------------------------------------------------
bool zvSliceReslice::IsQuickFor(vtkDataArray* scalars, vtkImageData* input, vtkImageData* output)
{
  const int type = scalars ? scalars->GetDataType() : VTK_VOID;
  return (type == VTK_SHORT || type == VTK_UNSIGNED_CHAR) && scalars->HasStandardMemoryLayout() &&
    scalars->GetNumberOfComponents() == 1 &&
    scalars->GetNumberOfTuples() == input->GetNumberOfPoints() && output->GetScalarType() == type &&
    output->GetNumberOfScalarComponents() == 1;
}

//------------------------------------------------------------------------------
template <typename T>
void zvSliceReslice::WriteSlice(
  vtkDataArray* scalars, vtkImageData* input, vtkImageData* output, const int extent[6])
{
  zvSliceSampling::SliceJob<T> job;
  job.Input = static_cast<const T*>(scalars->GetVoidPointer(0));
  input->GetExtent(job.InputExtent);
  std::copy_n(input->GetIncrements(scalars), 3, job.InputStep);
  std::copy_n(extent, 6, job.OutputExtent);
  job.Output = static_cast<T*>(output->GetScalarPointer(extent[0], extent[2], extent[4]));
  job.OutputRowStep = output->GetIncrements()[1];
  for (int axis = 0; axis < 3; ++axis)
  {
    job.AlongX[axis] = this->IndexMatrix->GetElement(axis, 0);
    job.AlongY[axis] = this->IndexMatrix->GetElement(axis, 1);
    job.Origin[axis] =
      this->IndexMatrix->GetElement(axis, 3) + extent[4] * this->IndexMatrix->GetElement(axis, 2);
  }
  job.Background = zvSliceSampling::RoundToScalar<T>(std::clamp<double>(
    this->BackgroundColor[0], std::numeric_limits<T>::min(), std::numeric_limits<T>::max()));
  const bool linear = this->InterpolationMode != VTK_RESLICE_NEAREST;
  if (this->UsePermuteExecute)
  {
    zvSliceSampling::AlignedSlice<T>(job, linear).Write();
  }
  else
  {
    zvSliceSampling::WriteObliqueSlice(job, linear);
  }
}

//------------------------------------------------------------------------------
void zvSliceReslice::ThreadedRequestData(vtkInformation* request, vtkInformationVector** inputs,
  vtkInformationVector* outputs, vtkImageData*** inData, vtkImageData** outData, int extent[6],
  int threadId)
{
  vtkDataArray* const scalars = this->GetInputArrayToProcess(0, inputs);
  if (extent[4] != extent[5] || !this->SamplesPlainly() || !this->HasPlainMatrix(extent) ||
    !this->IsQuickFor(scalars, inData[0][0], outData[0]))
  {
    this->Superclass::ThreadedRequestData(
      request, inputs, outputs, inData, outData, extent, threadId);
  }
  else if (scalars->GetDataType() == VTK_SHORT)
  {
    this->WriteSlice<short>(scalars, inData[0][0], outData[0], extent);
  }
  else
  {
    this->WriteSlice<unsigned char>(scalars, inData[0][0], outData[0], extent);
  }
}
