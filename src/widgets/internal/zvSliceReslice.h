#ifndef zvSliceReslice_h
#define zvSliceReslice_h

#include <vtkImageReslice.h>

/// A reslice filter that is quick where a slice view needs it.
///
/// Nearest and linear sampling of one slice of short or unsigned char voxels, one component, runs
/// in loops made for it. The output has the same bytes as that of the stock class. Everything
/// else is left to the stock class.
class zvSliceReslice : public vtkImageReslice
{
public:
  static zvSliceReslice* New();
  vtkTypeMacro(zvSliceReslice, vtkImageReslice)

  zvSliceReslice(const zvSliceReslice&) = delete;
  zvSliceReslice& operator=(const zvSliceReslice&) = delete;

protected:
  zvSliceReslice() = default;
  ~zvSliceReslice() override = default;
};

#endif
