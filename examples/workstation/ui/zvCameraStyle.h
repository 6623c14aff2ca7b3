#ifndef zvCameraStyle_h
#define zvCameraStyle_h

#include "vtkInteractorStyleTrackballCamera.h"

/// What the mouse does to the camera where no widget takes it.
///
/// press                         moves the camera
/// left beside every plane       round the volume
/// middle                        round the volume
/// middle with Shift             sideways
/// middle with Control           nearer and further
/// left with Shift or Control    not: it reads voxels, and has missed
///
/// Unlike its base it does not grab the events of a drag: the widgets would miss the release.
class zvCameraStyle : public vtkInteractorStyleTrackballCamera
{
public:
  static zvCameraStyle* New();
  vtkTypeMacro(zvCameraStyle, vtkInteractorStyleTrackballCamera)

  void OnLeftButtonDown() override;
  void OnLeftButtonUp() override;
  void OnMiddleButtonDown() override;
  void OnMiddleButtonUp() override;

protected:
  zvCameraStyle() = default;

private:
  bool FindRendererUnderMouse();
  void EndMotion();
};

#endif
