#ifndef zvFourViews_h
#define zvFourViews_h

#include "vtkWeakPointer.h"

#include <array>
#include <vector>

class vtkCommand;
class vtkDataSet;
class vtkObject;
class vtkProp;
class vtkRenderWindowInteractor;
class vtkRenderer;

/// The views of the markers: three slice views X, Y and Z and a 3D view, each with a window and an
/// interactor of its own. A widget keeps them in weak pointers and hands them over at each use, in
/// the order in which they are to be served; null stands for one that is missing and is skipped.
///
/// \code
/// zvFourViews::Add({ this->RendererX, this->RendererY, this->RendererZ }, sliceActor);
/// zvFourViews::Render(
///   { this->InteractorX, this->InteractorY, this->InteractorZ, this->Interactor3D });
/// \endcode
namespace zvFourViews
{
/// Up to four; what is not named is null.
using Renderers = std::array<vtkRenderer*, 4>;
using Interactors = std::array<vtkRenderWindowInteractor*, 4>;

/// Store a view and the interactor of its window, which may be null. False, with nothing stored,
/// for null or a renderer that is in no window.
bool Set(vtkRenderer* view, vtkWeakPointer<vtkRenderer>& renderer,
  vtkWeakPointer<vtkRenderWindowInteractor>& interactor);

/// What a message calls the first part that is missing, of views in the order X, Y, Z, 3D:
/// "RendererX", "InteractorX", "RendererY" and so on. Null if the four are complete.
const char* FindMissing(const Renderers& renderers, const Interactors& interactors);

/// Put a prop into the views; one that has it already keeps it once.
void Add(const Renderers& renderers, vtkProp* prop);

/// Take a prop out of the views.
void Remove(const Renderers& renderers, vtkProp* prop);

/// Render the window of each interactor. An observer of a render may do away with the others.
void Render(const Interactors& interactors);

/// Attach \a command for all events of handles, and note that in \a observed. Deliberate: an
/// interactor that is named twice is observed twice.
void Observe(const Interactors& interactors, vtkCommand* command, float priority,
  std::vector<vtkWeakPointer<vtkObject>>& observed);

/// Take \a command off the interactors, however often it was attached.
void Unobserve(const Interactors& interactors, vtkCommand* command);

/// The box xmin, xmax, ymin, ymax, zmin, zmax of the data, in millimetres. False, with nothing
/// written, without data or if it has no points.
bool GetBounds(vtkDataSet* data, double bounds[6]);

/// Limit each coordinate to the box; beyond the upper face comes first.
void Clamp(const double bounds[6], double position[3]);

/// Move \a position by the way from \a from to \a to and limit it to the box. Pressed against a
/// face it slides along that.
void MoveWithin(
  const double bounds[6], const double from[3], const double to[3], double position[3]);
}

#endif
