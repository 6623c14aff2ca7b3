#ifndef zvScene_h
#define zvScene_h

#include "zvPicture.h"
#include "zvVolumes.h"

#include "vtkRenderWindow.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkSmartPointer.h"

#include <vector>

namespace zvtest
{
struct SceneOptions
{
  int Width = 400;
  int Height = 400;
  bool ParallelProjection = true;
  int Viewports = 1; ///< side by side, of equal width, the first on the left
};

/// A real view: a render window off screen, the interactor that the toolkit makes for it (enabled,
/// with the style that does nothing of its own) and its renderers, black.
class Scene
{
public:
  explicit Scene(const SceneOptions& options = {});
  ~Scene();
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  vtkRenderWindow* Window() const { return this->RenderWindow; }
  vtkRenderWindowInteractor* Interactor() const { return this->WindowInteractor; }
  vtkRenderer* Renderer(int viewport = 0) const { return this->Renderers.at(viewport); }

  /// Render the window.
  void Render();

  /// What the window last rendered. Does not render, so that it tells what an event handler drew.
  Picture Look() const;

  /// Render, then Look().
  Picture RenderAndLook();

  /// Let the camera see all props, or the box xmin, xmax, ymin, ymax, zmin, zmax; does not render.
  void ResetCamera(int viewport = 0);
  void ResetCamera(const double bounds[6], int viewport = 0);

  /// Put the camera so that the viewer looks along an axis and sees everything; does not render.
  /// 0: from +x toward -x, y to the right, z up. 1: from -y toward +y, x to the right, z up.
  /// 2: from +z toward -z, x to the right, y up.
  void LookAlong(int axis, int viewport = 0);

  /// The same for any direction of view and direction up.
  void LookAlong(const World& direction, const World& up, int viewport = 0);

  /// The display pixel in which a world position is seen.
  Display At(const World& position, int viewport = 0) const;

  /// The world position seen in a display pixel, at the depth of \a depthOf.
  World WorldAt(const Display& position, const World& depthOf, int viewport = 0) const;

  /// What the window last rendered at a world position.
  Color ColorAt(const World& position, int viewport = 0) const;

  /// Destroy one part (unless somebody else holds it), as a host may do while widgets live. Its
  /// getter gives null afterwards (the renderers' throws), and the operations that need it must not
  /// be called any more.
  void DropInteractor();
  void DropRenderers();
  void DropWindow();

private:
  vtkSmartPointer<vtkRenderWindow> RenderWindow;
  vtkSmartPointer<vtkRenderWindowInteractor> WindowInteractor;
  std::vector<vtkSmartPointer<vtkRenderer>> Renderers;
};
}

#endif
