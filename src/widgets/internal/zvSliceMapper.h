#ifndef zvSliceMapper_h
#define zvSliceMapper_h

#include "vtkNew.h"
#include "vtkPolyDataMapper.h"

#include <vector>

class vtkPolyData;

/// The mapper of a textured plane that its clipping planes cut off at a box.
///
/// A stock mapper has every fragment of the plane ask every clipping plane, which takes about as
/// long as all else that is drawn, and shades what it then drops. This one cuts the polygon before
/// it is drawn. The picture is the same but for the pixels that the cut goes through.
///
/// It is picked, measured and modified as a stock mapper is: input and clipping planes stay as they
/// were set. Where the input is not one polygon with texture coordinates, or the actor is moved by
/// a matrix, the stock way is taken.
class zvSliceMapper : public vtkPolyDataMapper
{
public:
  static zvSliceMapper* New();
  vtkTypeMacro(zvSliceMapper, vtkPolyDataMapper)

  void RenderPiece(vtkRenderer* renderer, vtkActor* actor) override;
  void ReleaseGraphicsResources(vtkWindow* window) override;

  bool GetSupportsSelection() override { return true; }
  void ProcessSelectorPixelBuffers(
    vtkHardwareSelector* selector, std::vector<unsigned int>& pixelOffsets, vtkProp* prop) override;

  zvSliceMapper(const zvSliceMapper&) = delete;
  zvSliceMapper& operator=(const zvSliceMapper&) = delete;

protected:
  zvSliceMapper() = default;
  ~zvSliceMapper() override = default;

private:
  /// When what is drawn was last changed from outside.
  vtkMTimeType GetTimeOfChange(vtkPolyData* input);
  /// Give the drawing mapper the settings of now and what is left of the input.
  void Prepare(vtkPolyData* input, bool isCutHere);
  bool CutInto(vtkPolyData* input, vtkPolyData* cut);

  vtkNew<vtkPolyDataMapper> Drawn;
  vtkMTimeType PreparedFor = 0;
  bool WasCutHere = false;
};

#endif
