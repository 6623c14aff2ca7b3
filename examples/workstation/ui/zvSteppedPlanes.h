#ifndef zvSteppedPlanes_h
#define zvSteppedPlanes_h

#include "zvImage3DPlanes.h"

/// The library's three planes, which can be moved by a distance too: to each place where a tilted
/// plane still cuts the volume. By its slices' numbers the last two of them cannot be reached.
class zvSteppedPlanes : public zvImage3DPlanes
{
public:
  /// Move a plane (0, 1, 2 for x, y, z) along its normal, by millimetres. Renders nothing.
  void MovePlane(int axis, double distance);

  /// How many numbers the slices of a plane have, 0 for the first: those of a tilted plane lie
  /// between 2 and the last.
  int CountSlices(int axis);

private:
  zvImagePlaneWidget* GetPlane(int axis) const;
};

#endif
