#ifndef zvPlacedNormal_h
#define zvPlacedNormal_h

#include "zvNormalWidget.h"

/// The library's normal widget with what its host wants to know and do beside: whether both points
/// are placed, to hide it with its points and observers in place, and cones that suit the volume.
class zvPlacedNormal : public zvNormalWidget
{
public:
  static zvPlacedNormal* New();
  vtkTypeMacro(zvPlacedNormal, zvNormalWidget)

  bool IsPlaced();
  /// The radius of the cones in millimetres, before points are placed.
  void SetConeSize(double size);
  /// Renders nothing.
  void SetVisible(bool visible);

protected:
  zvPlacedNormal() = default;
  ~zvPlacedNormal() override = default;
};

#endif
