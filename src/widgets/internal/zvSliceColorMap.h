#ifndef zvSliceColorMap_h
#define zvSliceColorMap_h

#include <vtkImageMapToColors.h>

/// A colour map that is quick where a slice view needs it.
///
/// Short or unsigned char scalars of one component are turned into RGBA by a table with one colour
/// for each value. The output has the same bytes as that of the stock class. Everything else is
/// left to the stock class.
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
};

#endif
