#ifndef zvDrag_h
#define zvDrag_h

class vtkRenderer;
class vtkRenderWindowInteractor;

/// The motion of the mouse in the world.
namespace zvDrag
{
/// The world points under the last and the current event position, both at the depth of the world
/// point \a depthPoint. False, with nothing written, without an interactor, a renderer, its window
/// or its camera.
bool GetMotion(vtkRenderWindowInteractor* interactor, vtkRenderer* renderer,
  const double depthPoint[3], double previous[3], double current[3]);

/// The same at a display depth, from 0 on the camera's near plane to 1 on its far plane.
bool GetMotionAtDepth(vtkRenderWindowInteractor* interactor, vtkRenderer* renderer, double depth,
  double previous[3], double current[3]);
}

#endif
