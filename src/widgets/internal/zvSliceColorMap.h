#ifndef zvSliceColorMap_h
#define zvSliceColorMap_h

#include <vtkImageMapToColors.h>

#include <cstdint>
#include <vector>

/// A colour map that is quick where a slice view needs it.
///
/// Short or unsigned char scalars of one component are turned into RGBA through a list with one
/// colour for each value that the slice holds. The list is filled by the lookup table itself, so
/// the output has the same bytes as that of the stock class whatever the table's range, scale,
/// opacity and special colours. Everything else is left to the stock class, and so is a slice that
/// has hardly more pixels than values, for which the list would not pay. The list is kept until the
/// table changes or a slice holds values beyond it.
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

  int RequestData(
    vtkInformation* request, vtkInformationVector** inputs, vtkInformationVector* outputs) override;
  void ThreadedRequestData(vtkInformation* request, vtkInformationVector** inputs,
    vtkInformationVector* outputs, vtkImageData*** inData, vtkImageData** outData, int extent[6],
    int threadId) override;

private:
  /// The four bytes of a colour, moved as one.
  using Rgba = std::uint32_t;

  /// Whether the filter is set for RGBA from a lookup table and the loops are made for the input.
  bool IsQuickFor(vtkInformationVector** inputs, vtkImageData* input);

  /// Let the list hold the colours of all values of an input; false if that would not pay.
  template <typename T>
  bool ListColorsOf(vtkImageData* input);

  /// Make the list anew, for the values from \a low to \a high.
  template <typename T>
  void ListColors(T low, T high, vtkImageData* input);

  /// Colour an extent by the list.
  template <typename T>
  void MapByList(vtkImageData* input, vtkImageData* output, int extent[6]) const;

  /// Whether the list holds colours of scalars of this type by the table as it is.
  bool IsListFresh(int scalarType) const;

  std::vector<Rgba> Colors; // of the values from Lowest on
  int Lowest = 0;
  int ListedType = VTK_VOID;
  vtkMTimeType ListedTime = 0; // that of the table that filled the list
  // What can be changed in the table without a trace in its time.
  double ListedAlpha = 1.0;
  std::vector<unsigned char> ListedTable;
  bool UsesList = false; // for the request at hand
};

#endif
