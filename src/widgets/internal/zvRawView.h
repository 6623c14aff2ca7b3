#ifndef zvRawView_h
#define zvRawView_h

#include "vtkNew.h"
#include "vtkWeakPointer.h"

class vtkCallbackCommand;
class vtkObject;
class vtkRenderWindowInteractor;
class vtkRenderer;

/// The view of a widget whose host writes its renderer and interactor directly: no reference to the
/// renderer is taken and no observer of mouse events is moved. This keeps the account that the
/// base of all widgets would get wrong: the reference that it holds on a renderer that was set the
/// usual way, its observers of keys and deletion on the interactor that is left, and views that
/// die before the widget, which VTK does not watch when they are written directly.
///
/// The widget keeps one as long as it lives, overrides SetCurrentRenderer to call ReleaseRenderer
/// first, and tests its interactor and renderer for null at each use:
///
/// \code
/// void SetCurrentRender(vtkRenderer* r) { this->View->Write(r); }
/// void SetCurrentRenderer(vtkRenderer* r) override
/// {
///   this->View->ReleaseRenderer();
///   this->Superclass::SetCurrentRenderer(r);
/// }
/// \endcode
class zvRawView
{
public:
  /// The protected fields of the widget that are written here.
  struct Fields
  {
    vtkRenderer*& Renderer;
    vtkRenderWindowInteractor*& Interactor;
    unsigned long& CharObserverTag;
    unsigned long& DeleteObserverTag;
  };

  /// \a owner is the widget, \a fields are its own.
  zvRawView(vtkObject* owner, const Fields& fields);

  /// Leaves the widget without a renderer if that was written, so that the base gives no reference
  /// back that was never taken.
  ~zvRawView();

  zvRawView(const zvRawView&) = delete;
  zvRawView& operator=(const zvRawView&) = delete;

  /// Write the renderer and the interactor of its window into the widget. False, with nothing
  /// written, for null or a renderer that is in no window.
  bool Write(vtkRenderer* renderer);

  /// Forget a renderer that was written; one that the base holds stays.
  void ReleaseRenderer();

private:
  static void OnDelete(vtkObject* caller, unsigned long event, void* clientData, void* callData);
  void LeaveInteractor(vtkRenderWindowInteractor* next);
  void Watch(vtkWeakPointer<vtkObject>& watched, vtkObject* object);

  vtkObject* Owner; // it owns this
  Fields Widget;
  bool RendererIsRaw = false;
  vtkNew<vtkCallbackCommand> DeleteCommand;
  vtkWeakPointer<vtkObject> WatchedRenderer;
  vtkWeakPointer<vtkObject> WatchedInteractor;
};

#endif
