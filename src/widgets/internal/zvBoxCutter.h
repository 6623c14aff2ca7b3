#ifndef zvBoxCutter_h
#define zvBoxCutter_h

#include <vtkCutter.h>

class vtkPlane;
class vtkPolyData;

/// A cutter that is quick where an image widget needs it: at the cut of a plane through a box of
/// quads, once for every step of a slice, for which the stock class takes most of its time to set
/// itself up. The output has the same points, lines and bytes as that of the stock class.
/// Everything else is left to the stock class.
///
/// Where the cut of a cube is wanted at once, CutCube makes it without an update of the filter:
/// most of that is spent on the pipeline, not on the cut.
class zvBoxCutter : public vtkCutter
{
public:
  static zvBoxCutter* New();
  vtkTypeMacro(zvBoxCutter, vtkCutter)

  /// Bring the output up to date if the filter is set for the cut of a plane through the box of a
  /// cube source. False, with the output as it was, if it is set for anything else.
  bool CutCube();

  zvBoxCutter(const zvBoxCutter&) = delete;
  zvBoxCutter& operator=(const zvBoxCutter&) = delete;

protected:
  zvBoxCutter() = default;
  ~zvBoxCutter() override = default;

  int RequestData(
    vtkInformation* request, vtkInformationVector** inputs, vtkInformationVector* outputs) override;

private:
  /// The plane, if the filter is set for the cut of a plane through quads and for nothing else.
  vtkPlane* FindPlainPlane(vtkPolyData* input);

  /// Let the output be the cut of the input; false if the filter or the input is not plain.
  bool WritePlainCut(vtkPolyData* input, vtkPolyData* output);
};

#endif
