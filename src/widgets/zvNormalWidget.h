#ifndef zvNormalWidget_h
#define zvNormalWidget_h

#include "zvWidgetsExport.h"

#include "zvWidgets.h"

#include "vtkCallbackCommand.h"
#include "vtkNew.h"
#include "vtkSmartPointer.h"
#include "vtkWeakPointer.h"

#include <array>
#include <vector>

class vtkActor;
class vtkCellPicker;
class vtkConeSource;
class vtkLineSource;
class vtkPolyDataMapper;
class vtkProp;
class vtkProperty;
class vtkRenderer;
class zvImageViewerWidget;
class zvViewerWidgetCallback;

/// A direction in space: a line between two points with a cone at each end, in three slice viewers
/// and a 3D view. The user places the two points by clicks on the slices, drags a cone to move its
/// end, or the line to move the whole; GetNormal tells the unit direction from point 1 to point 2.
/// All positions are world positions in millimetres. Both cones point along the direction.
///
/// What a host sets: the three viewers (SetViewerWidgetX, SetViewerWidgetY, SetViewerWidgetZ) and
/// the 3D view (SetRenderer3D), each viewer with its renderer. Then the widget works: it observes
/// the viewers, not their interactors, and the viewer that tells an event becomes the current one,
/// with its interactor and renderer. It need not be enabled, for it shows itself as it is placed.
/// To have it placed anew, make another.
///
/// SetEnabled shows and hides the parts at once, placed or not. Going from viewer to viewer leaves
/// an enabled widget enabled, also where each viewer has an interactor of its own; SetInteractor
/// disables it as it does every widget.
///
/// State          event of a viewer                next          tells observers
/// any            press outside the viewport       Outside       -
/// Adding         press: places a point            Adding, then  -
///                                                 Start
/// any other      press on a cone                  MovingHandle  StartInteractionEvent
/// any other      press on the line                Translating   StartInteractionEvent
/// any other      press elsewhere                  Start         StartInteractionEvent
/// MovingHandle,  mouse move: moves that end, or   the same      InteractionEvent
/// Translating    both ends
/// Start, Adding, mouse move                       the same      -
/// Outside
/// Adding         release                          Adding        EndInteractionEvent
/// any other      release                          Start         EndInteractionEvent
///
/// A press that places a point or takes hold of a part is taken away from the viewer, whose State
/// becomes Start; any other leaves the viewer its own action. Presses and releases render the four
/// views. Deliberate: moves do not, observers of InteractionEvent render (RenderesUpdate). A press
/// outside the viewport while points are placed ends the placing by clicks; AddHandle still places
/// the others. Parts are hit only in views that show them. Before the second point a click hits
/// whatever the view shows, and on nothing the depth of the camera's focal point.
///
/// Other events: EnableEvent and DisableEvent by SetEnabled. No event has call data. A viewer's
/// event reaches its other observers in any case.
///
/// Missing views: an operation that shows something or renders, while a view is not set or a viewer
/// is without a current renderer, writes one generic warning: "set ViewerWidgetX before placing a
/// handle...", "set the renderer of ViewerWidgetX before rendering the views..." and so on. Nothing
/// is placed or shown then. A view that was set and has been deleted is left out silently.
///
/// Lifetime: the widget may be deleted at any moment, enabled, in mid-drag or from its own
/// observer, before or after its viewers, interactors, windows and renderers. It keeps neither
/// viewers nor the 3D view alive. Deliberate: deleting it takes its parts out of the views, but
/// tells nothing and renders nothing.
class ZVWIDGETS_EXPORT zvNormalWidget : public zvWidgets
{
public:
  vtkTypeMacro(zvNormalWidget, zvWidgets)

  /// A new widget with one reference, from the object factory if that knows the class.
  static zvNormalWidget* New();

  /// The values of State.
  enum WidgetState
  {
    Start = 0,
    Adding = 1, ///< the initial one
    MovingHandle = 2,
    Translating = 3,
    Outside = 4
  };

  /// Write the parent's revision line and "zvNormalWidget $Revision:$".
  void CollectRevisions(ostream& os) override;

  /// Show line and cones in the four views (1), or take them out (0). The value it has changes
  /// nothing. Neither touches the observers of the viewers. Without an interactor, which the
  /// current viewer or SetInteractor gives: the error "The interactor must be set prior to
  /// enabling/disabling widget". Without a renderer in the window it stays disabled, silently; with
  /// a view missing, with the warning. Invokes EnableEvent or DisableEvent and renders the
  /// interactor's window. With Interaction on, AddObservers runs first, with an EnableEvent of its
  /// own.
  void SetEnabled(int enabling) override;

  ///@{
  /// Deliberate: nothing is placed. The other forms work out bounds as vtk3DWidget does.
  void PlaceWidget(double bounds[6]) override;
  void PlaceWidget() override;
  void PlaceWidget(
    double xmin, double xmax, double ymin, double ymax, double zmin, double zmax) override;
  ///@}

  ///@{
  /// The slice viewers (default none). Each is observed from then on, once however often it is set;
  /// one that is replaced, or taken away by null, is observed no more. Parts that are shown in a
  /// replaced one stay there until they are taken out of all views.
  void SetViewerWidgetX(zvImageViewerWidget* viewer);
  void SetViewerWidgetY(zvImageViewerWidget* viewer);
  void SetViewerWidgetZ(zvImageViewerWidget* viewer);
  zvImageViewerWidget* GetViewerWidgetX();
  zvImageViewerWidget* GetViewerWidgetY();
  zvImageViewerWidget* GetViewerWidgetZ();
  ///@}

  ///@{
  /// The 3D view (default none), in which nothing can be dragged.
  void SetRenderer3D(vtkRenderer* renderer);
  vtkRenderer* GetRenderer3D();
  ///@}

  /// Observe presses and releases of the left button and moves that \a viewer tells, at priority 0,
  /// unless it is observed already. Null is ignored.
  void AddObserversToViewer(zvImageViewerWidget* viewer);

  ///@{
  /// The viewer that told the last event. Setting it takes over its interactor and its renderer; an
  /// enabled widget stays enabled. Invokes and renders nothing.
  /// Null, or a viewer that is not in a window with an interactor, is refused with the generic
  /// warning "set a viewer whose renderer is in a window with an interactor for
  /// ViewerWidgetCurrent...".
  void SetViewerWidgetCurrent(zvImageViewerWidget* viewer);
  zvImageViewerWidget* GetViewerWidgetCurrent();
  ///@}

  /// Render the windows of the X, Y and Z viewers by their interactors, and that of the 3D view.
  /// With a view missing, those that are there, and the warning. (The spelling is the name.)
  void RenderesUpdate();

  ///@{
  /// Put a prop into the four views, or take it out of them; line and cones are taken out of any
  /// other view, too. Null is ignored. They render nothing. With a view missing, adding does
  /// nothing but warn, removing warns and takes the prop out of the others.
  void AddActorInRenderers(vtkProp* prop);
  void RemoveActorOfRenderers(vtkProp* prop);
  void RemoveAllActorsOfRenderers();
  ///@}

  /// Place the next point at \a x and show what is complete: the first cone, then line and both
  /// cones; render the four views. After the second point it does nothing. Null or a position that
  /// is not finite is refused with the generic warning "give the handle a finite position...".
  void AddHandle(double* x);

  /// The unit vector from point 1 to point 2, zero if they are equal. Null is ignored.
  void GetNormal(double* normal);

  ///@{
  /// Move one end and turn both cones (default -0.5, 0, 0 and 0.5, 0, 0). Without limits. They
  /// render nothing and do not call Modified. Reading an end into null does nothing.
  void SetPoint1(double x, double y, double z);
  void SetPoint2(double x, double y, double z);
  void GetPoint1(double point[3]);
  void GetPoint2(double point[3]);
  ///@}

  /// Move the end whose cone is dragged by the way from \a p1 to \a p2. Without one: the generic
  /// warning "there is no current handle"; with null "give both ends of the motion before moving a
  /// handle...". Renders nothing.
  void MoveHandle(double* p1, double* p2);

  /// Move both ends by the way from \a p1 to \a p2. Null: the generic warning "give both ends of
  /// the motion before moving the normal...". Renders nothing.
  void Translate(double* p1, double* p2);

  /// Show line and cones as grabbed (not 0) or at rest (0), and let go of the cone that is dragged
  /// (0). Renders nothing.
  void HighlightNormal(int highlight);

  /// Size the cones: radius 3 HandleSize, height twice that, in millimetres (HandleSize of
  /// vtk3DWidget is 1.0 here until it is set). Renders nothing.
  void SizeHandles() override;

  /// See WidgetState.
  int GetState() { return this->State; }

  ///@{
  /// The handlers of the viewers' events, see the table above. Harmless without a viewer.
  virtual void OnMouseMove();
  virtual void OnLeftButtonDown();
  virtual void OnLeftButtonUp();
  ///@}

  /// Calls the handler for an event of a viewer; \a clientdata is the widget.
  static void ProcessEvents(
    vtkObject* object, unsigned long event, void* clientdata, void* calldata);

  zvNormalWidget(const zvNormalWidget&) = delete;
  zvNormalWidget& operator=(const zvNormalWidget&) = delete;

protected:
  zvNormalWidget();
  ~zvNormalWidget() override;

  int State = Adding;

  vtkNew<vtkConeSource> Cone1Source;
  vtkNew<vtkPolyDataMapper> Cone1Mapper;
  vtkNew<vtkActor> Cone1Actor;

  /// Its two points are the truth of the widget.
  vtkNew<vtkLineSource> LineSource;
  vtkNew<vtkPolyDataMapper> LineMapper;
  vtkNew<vtkActor> LineActor;

  vtkNew<vtkConeSource> Cone2Source;
  vtkNew<vtkPolyDataMapper> Cone2Mapper;
  vtkNew<vtkActor> Cone2Actor;

  /// The cone that is dragged: one of the two, or null.
  vtkConeSource* CurrentHandle = nullptr;

  /// The number of props in its list tells how far the placing has come: the line, the first cone,
  /// the second. It keeps to the list from then on only.
  vtkSmartPointer<vtkCellPicker> HandlePicker;

  vtkNew<vtkProperty> NormalProperty;
  vtkNew<vtkProperty> SelectedNormalProperty;

  vtkWeakPointer<zvImageViewerWidget> ViewerWidgetX;
  vtkWeakPointer<zvImageViewerWidget> ViewerWidgetY;
  vtkWeakPointer<zvImageViewerWidget> ViewerWidgetZ;
  vtkWeakPointer<zvImageViewerWidget> ViewerWidgetCurrent;
  vtkWeakPointer<vtkRenderer> Renderer3D;

  vtkNew<zvViewerWidgetCallback> ViewerCallback;

private:
  enum View
  {
    ViewX,
    ViewY,
    ViewZ,
    View3D
  };
  using Viewer = vtkWeakPointer<zvImageViewerWidget> zvNormalWidget::*;
  static const std::array<Viewer, 3> Viewers;

  void BuildCone(vtkConeSource* source, vtkPolyDataMapper* mapper, vtkActor* actor);
  void BuildLine();

  void Show();
  void Hide();

  void MoveTo(vtkRenderWindowInteractor* interactor);
  void SetViewer(View view, zvImageViewerWidget* viewer);
  std::array<vtkRenderer*, 4> GetViews();
  bool WarnOfMissingView(const char* before);
  void TakeOutAll();
  std::array<vtkActor*, 3> GetParts();

  void PlaceFirst(double* x);
  void PlaceSecond(double* x);
  void SetDirections(vtkConeSource* first, vtkConeSource* second);
  vtkProp* PickPart();
  void GrabCone(vtkConeSource* source, vtkActor* actor);
  void TakePressFromViewer();

  /// The views that the host has set: one that is null all the same has been deleted.
  std::array<bool, 4> IsSet{};

  std::vector<vtkWeakPointer<vtkObject>> ObservedViewers;
};

/// What a normal widget observes its viewers with: makes the viewer that tells an event the current
/// one of the widget, which is its client data, and then runs its callback. Without client data it
/// does nothing. A viewer that has lost its view does not become current; the callback runs all the
/// same, so that a release still ends a drag.
class ZVWIDGETS_EXPORT zvViewerWidgetCallback : public vtkCallbackCommand
{
public:
  vtkTypeMacro(zvViewerWidgetCallback, vtkCallbackCommand)

  static zvViewerWidgetCallback* New();

  void Execute(vtkObject* caller, unsigned long event, void* callData) override;

  zvViewerWidgetCallback(const zvViewerWidgetCallback&) = delete;
  zvViewerWidgetCallback& operator=(const zvViewerWidgetCallback&) = delete;

protected:
  zvViewerWidgetCallback() = default;
  ~zvViewerWidgetCallback() override = default;
};

/// For an application's table of instantiators; the library itself never calls it.
ZVWIDGETS_EXPORT vtkObject* vtkInstantiatorzvNormalWidgetNew();

#endif
