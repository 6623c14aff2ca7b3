#ifndef zvViewLookup_h
#define zvViewLookup_h

class vtkProp;
class vtkRenderWindowInteractor;
class vtkRenderer;

/// Which view a widget is in, and whether the mouse is in it. Safe when parts of the view are gone.
namespace zvViewLookup
{
/// The renderer of a widget that is about to show itself: \a current if there is one, else the one
/// under the last event position. Null without an interactor, a window or a renderer in it.
vtkRenderer* Choose(vtkRenderer* current, vtkRenderWindowInteractor* interactor);

/// Whether the renderer is still in a window, so that it can be picked in and measured.
bool IsShown(vtkRenderer* renderer);

/// Whether the event position is in the renderer's viewport. False if one of them is missing or the
/// renderer has no window.
bool HasPointer(vtkRenderer* renderer, vtkRenderWindowInteractor* interactor);

/// Render the interactor's window; nothing without an interactor. In the middle of an event, too:
/// an observer of the render may remove those that the event has still to come to, or release the
/// interactor.
void Render(vtkRenderWindowInteractor* interactor);

/// The distance in world millimetres of the lower left and the upper right corner of the renderer's
/// viewport at the depth of the world point \a depthPoint. 0 if the renderer is in no window.
double DiagonalAt(vtkRenderer* renderer, const double depthPoint[3]);

/// Take \a prop out of every renderer that it is in.
void TakeOut(vtkProp* prop);
}

#endif
