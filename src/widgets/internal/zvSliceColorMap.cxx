#include "zvSliceColorMap.h"

#include <vtkCommand.h>
#include <vtkDataArray.h>
#include <vtkImageData.h>
#include <vtkLookupTable.h>
#include <vtkObjectFactory.h>
#include <vtkPointData.h>
#include <vtkUnsignedCharArray.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <numeric>
#include <utility>
#include <vector>

vtkObjectFactoryNewMacro(zvSliceColorMap);

namespace
{
/// The pixels of an extent of an image, row by row.
template <typename T>
class PixelRows
{
public:
  PixelRows(vtkImageData* image, int extent[6])
    : First(static_cast<T*>(image->GetScalarPointerForExtent(extent)))
    , Width(extent[1] - extent[0] + 1)
    , Height(extent[3] - extent[2] + 1)
    , Depth(extent[5] - extent[4] + 1)
  {
    vtkIdType steps[3];
    image->GetIncrements(steps);
    const vtkIdType stepsPerPixel = steps[0];
    this->RowStep = steps[1] / stepsPerPixel;
    this->SliceStep = steps[2] / stepsPerPixel;
  }

  int GetWidth() const { return this->Width; }
  int GetNumberOfRows() const { return this->Height * this->Depth; }
  T* GetRow(int i) const
  {
    return this->First + (i % this->Height) * this->RowStep + (i / this->Height) * this->SliceStep;
  }

private:
  T* const First;
  const int Width;
  const int Height;
  const int Depth;
  vtkIdType RowStep = 0;
  vtkIdType SliceStep = 0;
};

/// The lowest and the highest value of some scalars.
template <typename T>
std::pair<T, T> FindRange(const T* values, vtkIdType count)
{
  T low = std::numeric_limits<T>::max();
  T high = std::numeric_limits<T>::min();
  for (vtkIdType i = 0; i < count; ++i)
  {
    low = std::min(low, values[i]);
    high = std::max(high, values[i]);
  }
  return { low, high };
}
}

//------------------------------------------------------------------------------
bool zvSliceColorMap::IsQuickFor(vtkInformationVector** inputs, vtkImageData* input)
{
  auto* const table = vtkLookupTable::SafeDownCast(this->LookupTable);
  vtkDataArray* const scalars = input ? input->GetPointData()->GetScalars() : nullptr;
  return table && !table->GetIndexedLookup() && this->OutputFormat == VTK_RGBA &&
    this->ActiveComponent == 0 && !this->HasObserver(vtkCommand::ProgressEvent) && scalars &&
    scalars == this->GetInputArrayToProcess(0, inputs) && scalars->HasStandardMemoryLayout() &&
    scalars->GetNumberOfComponents() == 1 &&
    scalars->GetNumberOfTuples() == input->GetNumberOfPoints();
}

//------------------------------------------------------------------------------
bool zvSliceColorMap::IsListFresh(int scalarType) const
{
  auto* const table = static_cast<vtkLookupTable*>(this->LookupTable)->GetTable();
  return this->ListedType == scalarType && this->ListedTime == this->LookupTable->GetMTime() &&
    this->ListedAlpha == this->LookupTable->GetAlpha() &&
    table->GetNumberOfValues() == static_cast<vtkIdType>(this->ListedTable.size()) &&
    std::equal(this->ListedTable.begin(), this->ListedTable.end(), table->GetPointer(0));
}

//------------------------------------------------------------------------------
template <typename T>
bool zvSliceColorMap::ListColorsOf(vtkImageData* input)
{
  const vtkIdType count = input->GetNumberOfPoints();
  if (count == 0)
  {
    // The range of no value is the wrong way round: no list has its length.
    return false;
  }
  const auto range = FindRange(static_cast<const T*>(input->GetScalarPointer()), count);
  int low = range.first;
  int high = range.second;
  const bool isListed = this->IsListFresh(input->GetScalarType());
  const int highestListed = this->Lowest + static_cast<int>(this->Colors.size()) - 1;
  if (isListed && this->Lowest <= low && high <= highestListed)
  {
    return true;
  }
  // Looking a colour up in the list costs about half of asking the table.
  const auto pays = [count](int lowest, int highest)
  { return 2 * (static_cast<vtkIdType>(highest) - lowest + 1) <= count; };
  if (!pays(low, high))
  {
    return false;
  }
  // Neighbouring slices hold about the same values: with those of both it need not be made again.
  if (isListed && pays(std::min(low, this->Lowest), std::max(high, highestListed)))
  {
    low = std::min(low, this->Lowest);
    high = std::max(high, highestListed);
  }
  this->ListColors(static_cast<T>(low), static_cast<T>(high), input);
  return true;
}

//------------------------------------------------------------------------------
template <typename T>
void zvSliceColorMap::ListColors(T low, T high, vtkImageData* input)
{
  std::vector<T> values(static_cast<std::size_t>(high - low + 1));
  std::iota(values.begin(), values.end(), low);
  this->Colors.resize(values.size());
  this->LookupTable->MapScalarsThroughTable2(values.data(),
    reinterpret_cast<unsigned char*>(this->Colors.data()), input->GetScalarType(),
    static_cast<int>(values.size()), 1, VTK_RGBA);
  this->Lowest = low;
  this->ListedType = input->GetScalarType();
  this->ListedTime = this->LookupTable->GetMTime();
  this->ListedAlpha = this->LookupTable->GetAlpha();
  auto* const table = static_cast<vtkLookupTable*>(this->LookupTable)->GetTable();
  this->ListedTable.assign(table->GetPointer(0), table->GetPointer(0) + table->GetNumberOfValues());
}

//------------------------------------------------------------------------------
template <typename T>
void zvSliceColorMap::MapByList(vtkImageData* input, vtkImageData* output, int extent[6]) const
{
  const PixelRows<T> pixels(input, extent);
  const PixelRows<Rgba> colored(output, extent);
  const Rgba* const colors = this->Colors.data();
  const int lowest = this->Lowest;
  for (int i = 0; i < pixels.GetNumberOfRows(); ++i)
  {
    const T* const from = pixels.GetRow(i);
    Rgba* const to = colored.GetRow(i);
    for (int x = 0; x < pixels.GetWidth(); ++x)
    {
      to[x] = colors[from[x] - lowest];
    }
  }
}

//------------------------------------------------------------------------------
int zvSliceColorMap::RequestData(
  vtkInformation* request, vtkInformationVector** inputs, vtkInformationVector* outputs)
{
  // Once for all threads, each of which colours a part.
  vtkImageData* const input = vtkImageData::GetData(inputs[0]);
  this->UsesList = false;
  if (this->IsQuickFor(inputs, input))
  {
    this->LookupTable->Build();
    switch (input->GetScalarType())
    {
      case VTK_SHORT:
        this->UsesList = this->ListColorsOf<short>(input);
        break;
      case VTK_UNSIGNED_CHAR:
        this->UsesList = this->ListColorsOf<unsigned char>(input);
        break;
    }
  }
  return this->Superclass::RequestData(request, inputs, outputs);
}

//------------------------------------------------------------------------------
void zvSliceColorMap::ThreadedRequestData(vtkInformation* request, vtkInformationVector** inputs,
  vtkInformationVector* outputs, vtkImageData*** inData, vtkImageData** outData, int extent[6],
  int threadId)
{
  vtkImageData* const input = inData[0][0];
  const bool isRgba = outData[0]->GetScalarType() == VTK_UNSIGNED_CHAR &&
    outData[0]->GetNumberOfScalarComponents() == 4;
  if (!this->UsesList || !isRgba)
  {
    this->Superclass::ThreadedRequestData(
      request, inputs, outputs, inData, outData, extent, threadId);
  }
  else if (input->GetScalarType() == VTK_SHORT)
  {
    this->MapByList<short>(input, outData[0], extent);
  }
  else
  {
    this->MapByList<unsigned char>(input, outData[0], extent);
  }
}
