#ifndef zvSliceReslice_h
#define zvSliceReslice_h

#include <vtkImageReslice.h>

class vtkDataArray;

/// A reslice filter that is quick where a slice view needs it.
///
/// Nearest and linear sampling of one slice of short or unsigned char voxels, one component, runs
/// in loops made for it. The output has the same bytes as that of the stock class. Everything
/// else is left to the stock class. That has no samplers for integers of 64 bits and would call a
/// null function, so these are sampled as doubles, and the output is double. A volume without
/// scalars, which it does not survive either, gives a slice of zeros. Two cases which the
/// stock class does not survive are sampled as any others: axes one of which is zero, and cubic
/// samples of a volume of two or three voxels along an axis on which its extent does not start at
/// 0. A slice that is too large for any view stays empty, without a word: its memory would be asked
/// for all the same, and the process would end.
class zvSliceReslice : public vtkImageReslice
{
public:
  static zvSliceReslice* New();
  vtkTypeMacro(zvSliceReslice, vtkImageReslice)

  /// Whether an output extent has more pixels than a texture can (2^28, 16384 by 16384).
  static bool IsTooLarge(const int extent[6]);

  /// Let all reslices of the process run the loops that are made for wide registers where the
  /// processor has them (true, the default), or the portable ones (false). The bytes are the same;
  /// this is there so that tests can run both on one machine.
  static void AllowWideLoops(bool allowed);

  zvSliceReslice(const zvSliceReslice&) = delete;
  zvSliceReslice& operator=(const zvSliceReslice&) = delete;

protected:
  zvSliceReslice() = default;
  ~zvSliceReslice() override = default;

  int RequestInformation(
    vtkInformation* request, vtkInformationVector** inputs, vtkInformationVector* outputs) override;
  int RequestData(
    vtkInformation* request, vtkInformationVector** inputs, vtkInformationVector* outputs) override;
  void ThreadedRequestData(vtkInformation* request, vtkInformationVector** inputs,
    vtkInformationVector* outputs, vtkImageData*** inData, vtkImageData** outData, int extent[6],
    int threadId) override;

private:
  /// Let the stock class sample the input with its scalars as doubles.
  int RequestDataAsDoubles(
    vtkInformation* request, vtkInformationVector** inputs, vtkInformationVector* outputs);

  /// Whether the filter is set for nearest or linear samples of a plane and for nothing else.
  bool SamplesPlainly();

  /// Whether the pixels of an extent are taken to voxels by an affine matrix and not absurdly far
  /// away.
  bool HasPlainMatrix(const int extent[6]);

  /// Whether the loops are made for these voxels and this output.
  static bool IsQuickFor(vtkDataArray* scalars, vtkImageData* input, vtkImageData* output);

  /// Write the part of the slice that lies in an extent one pixel deep.
  template <typename T>
  void WriteSlice(
    vtkDataArray* scalars, vtkImageData* input, vtkImageData* output, const int extent[6]);
};

#endif
