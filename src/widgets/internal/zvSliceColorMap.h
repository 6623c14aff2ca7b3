#ifndef zvSliceColorMap_h
#define zvSliceColorMap_h

#include <vtkImageMapToColors.h>

/// A colour map that is quick where a slice view needs it.
///
/// Short or unsigned char scalars of one component are turned into RGBA through a list with one
/// colour for each value that the slice holds. The list is filled by the lookup table itself, so
/// the output has the same bytes as that of the stock class whatever the table's range, scale,
/// opacity and special colours. Everything else is left to the stock class, and so is a slice that
/// has hardly more pixels than values, for which the list would not pay.
class zvSliceColorMap : public vtkImageMapToColors
{
public:
  static zvSliceColorMap* New();
  vtkTypeMacro(zvSliceColorMap, vtkImageMapToColors)

  zvSliceColorMap(const zvSliceColorMap&) = delete;
  zvSliceColorMap& operator=(const zvSliceColorMap&) = delete;

protected:
  zvSliceColorMap() = default;
  ~zvSliceColorMap() override = default;

  void ThreadedRequestData(vtkInformation* request, vtkInformationVector** inputs,
    vtkInformationVector* outputs, vtkImageData*** inData, vtkImageData** outData, int extent[6],
    int threadId) override;

private:
  /// Whether the filter is set for RGBA from a lookup table and the loops are made for the input.
  bool IsQuickFor(vtkInformationVector** inputs, vtkImageData* input, vtkImageData* output);

  /// Colour an extent by a list of colours; false, with nothing written, if that would not pay.
  template <typename T>
  bool MapByList(vtkImageData* input, vtkImageData* output, int extent[6]);
};

#endif
