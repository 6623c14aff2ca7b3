#ifndef zvViewPicker_h
#define zvViewPicker_h

#include "vtkCellPicker.h"

/// A cell picker that hits what is seen: of the props in its list, those that are in the renderer
/// that is picked in. vtkCellPicker takes every prop of its list for being there, also one that is
/// shown in other views only or was taken out, and that would hide what is behind it.
class zvViewPicker : public vtkCellPicker
{
public:
  static zvViewPicker* New();
  vtkTypeMacro(zvViewPicker, vtkCellPicker)

  /// The first prop on the path of a pick at the display position (x, y), or null: nothing was hit,
  /// or the renderer or its window is missing.
  static vtkProp* PickProp(vtkCellPicker* picker, int x, int y, vtkRenderer* renderer);

  zvViewPicker(const zvViewPicker&) = delete;
  zvViewPicker& operator=(const zvViewPicker&) = delete;

protected:
  zvViewPicker();
  ~zvViewPicker() override;

  double IntersectWithLine(const double p1[3], const double p2[3], double tol,
    vtkAssemblyPath* path, vtkProp3D* prop, vtkAbstractMapper3D* mapper) override;
};

#endif
