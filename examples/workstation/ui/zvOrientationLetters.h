#ifndef zvOrientationLetters_h
#define zvOrientationLetters_h

#include "vtkBillboardTextActor3D.h"
#include "vtkNew.h"

#include <array>

class vtkRenderer;

/// The letters of the patient's sides (R, L, A, P, I, S) around a volume, always facing the viewer.
class zvOrientationLetters
{
public:
  zvOrientationLetters();

  /// Put them a little outside the middles of a box's faces: xmin, xmax, ymin and so on, in
  /// millimetres along the patient's axes. Renders nothing.
  void Place(const double bounds[6]);

  /// Show them in a renderer, which holds them from then on. Renders nothing.
  void AddTo(vtkRenderer* renderer);

  /// Renders nothing.
  void SetVisible(bool visible);

private:
  std::array<vtkNew<vtkBillboardTextActor3D>, 6> Letters;
};

#endif
