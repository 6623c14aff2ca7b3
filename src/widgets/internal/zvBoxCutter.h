#ifndef zvBoxCutter_h
#define zvBoxCutter_h

#include <vtkCutter.h>

class vtkPlane;
class vtkPolyData;

/// A cutter that is quick where an image widget needs it: at the cut of a plane through a box of
/// quads, once for every step of a slice, for which the stock class takes most of its time to set
/// itself up. The output has the same points, lines and bytes as that of the stock class.
/// Everything else is left to the stock class.
class zvBoxCutter : public vtkCutter
{
public:
  static zvBoxCutter* New();
  vtkTypeMacro(zvBoxCutter, vtkCutter)

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
};

#endif
