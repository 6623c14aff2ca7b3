#include "zvSliceColorMap.h"

#include <vtkCommand.h>
#include <vtkDataArray.h>
#include <vtkImageData.h>
#include <vtkLookupTable.h>
#include <vtkObjectFactory.h>
#include <vtkPointData.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <numeric>
#include <vector>

vtkObjectFactoryNewMacro(zvSliceColorMap);

namespace
{
/// The four bytes of a colour, moved as one.
using Rgba = std::uint32_t;

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

template <typename T>
struct ValueRange
{
  T Low;
  T High;

  int GetCount() const { return this->High - this->Low + 1; }
};

template <typename T>
ValueRange<T> FindValues(const PixelRows<T>& pixels)
{
  T low = std::numeric_limits<T>::max();
  T high = std::numeric_limits<T>::min();
  for (int i = 0; i < pixels.GetNumberOfRows(); ++i)
  {
    const T* const row = pixels.GetRow(i);
    for (int x = 0; x < pixels.GetWidth(); ++x)
    {
      low = std::min(low, row[x]);
      high = std::max(high, row[x]);
    }
  }
  return { low, high };
}

/// The colours of all values of a range, lowest first.
template <typename T>
std::vector<Rgba> ListColors(vtkScalarsToColors* table, ValueRange<T> range, int scalarType)
{
  std::vector<T> values(range.GetCount());
  std::iota(values.begin(), values.end(), range.Low);
  std::vector<Rgba> colors(values.size());
  table->MapScalarsThroughTable2(values.data(), reinterpret_cast<unsigned char*>(colors.data()),
    scalarType, static_cast<int>(values.size()), 1, VTK_RGBA);
  return colors;
}
}

//------------------------------------------------------------------------------
bool zvSliceColorMap::IsQuickFor(
  vtkInformationVector** inputs, vtkImageData* input, vtkImageData* output)
{
  auto* const table = vtkLookupTable::SafeDownCast(this->LookupTable);
  vtkDataArray* const scalars = input->GetPointData()->GetScalars();
  return table && !table->GetIndexedLookup() && this->OutputFormat == VTK_RGBA &&
    this->ActiveComponent == 0 && !this->HasObserver(vtkCommand::ProgressEvent) && scalars &&
    scalars == this->GetInputArrayToProcess(0, inputs) && scalars->HasStandardMemoryLayout() &&
    scalars->GetNumberOfComponents() == 1 &&
    scalars->GetNumberOfTuples() == input->GetNumberOfPoints() &&
    output->GetScalarType() == VTK_UNSIGNED_CHAR && output->GetNumberOfScalarComponents() == 4;
}

//------------------------------------------------------------------------------
template <typename T>
bool zvSliceColorMap::MapByList(vtkImageData* input, vtkImageData* output, int extent[6])
{
  const PixelRows<T> pixels(input, extent);
  const PixelRows<Rgba> colored(output, extent);
  const ValueRange<T> range = FindValues(pixels);
  // Looking a colour up in the list costs about half of asking the table.
  if (2 * static_cast<vtkIdType>(range.GetCount()) >
    static_cast<vtkIdType>(pixels.GetWidth()) * pixels.GetNumberOfRows())
  {
    return false;
  }
  const std::vector<Rgba> colors = ListColors(this->LookupTable, range, input->GetScalarType());
  for (int i = 0; i < pixels.GetNumberOfRows(); ++i)
  {
    const T* const from = pixels.GetRow(i);
    Rgba* const to = colored.GetRow(i);
    for (int x = 0; x < pixels.GetWidth(); ++x)
    {
      to[x] = colors[from[x] - range.Low];
    }
  }
  return true;
}

//------------------------------------------------------------------------------
void zvSliceColorMap::ThreadedRequestData(vtkInformation* request, vtkInformationVector** inputs,
  vtkInformationVector* outputs, vtkImageData*** inData, vtkImageData** outData, int extent[6],
  int threadId)
{
  vtkImageData* const input = inData[0][0];
  bool done = false;
  if (this->IsQuickFor(inputs, input, outData[0]))
  {
    switch (input->GetScalarType())
    {
      case VTK_SHORT:
        done = this->MapByList<short>(input, outData[0], extent);
        break;
      case VTK_UNSIGNED_CHAR:
        done = this->MapByList<unsigned char>(input, outData[0], extent);
        break;
    }
  }
  if (!done)
  {
    this->Superclass::ThreadedRequestData(
      request, inputs, outputs, inData, outData, extent, threadId);
  }
}
