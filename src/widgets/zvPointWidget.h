#ifndef zvPointWidget_h
#define zvPointWidget_h

#include "zvWidgetsExport.h"

#include "vtk3DWidget.h"
#include "vtkNew.h"

class vtkActor;
class vtkCellPicker;
class vtkCursor3D;
class vtkPolyData;
class vtkPolyDataMapper;
class vtkProperty;

/// A small cross that the user drags: the handle of which a ruler has one at each end. The position
/// is the focal point of its cursor, in world millimetres; the cross reaches to the cursor's model
/// bounds. The cursor can also draw an outline and shadows (all on at first, see GetCursor3D).
///
/// A host sets the interactor (SetInteractor), says where the cross is and how large
/// (SetPlaceFactor, then PlaceWidget) and enables the widget (SetEnabled(1) or On()). The renderer
/// is the current one if that was set, else the one under the last event position.
///
/// State                  event                                  next         tells observers
/// any                    press of any button outside the view   Outside      -
///                        or beside the cross
/// any                    left press on the cross                Moving       StartInteractionEvent
/// any                    middle press on the cross              Translating  StartInteractionEvent
/// any                    right press on the cross               Scaling      StartInteractionEvent
/// Moving, Translating,   mouse move                             the same     InteractionEvent
/// Scaling
/// Moving, Translating,   release of any button                  Start        EndInteractionEvent
/// Scaling
/// Start, Outside         mouse move or release                  the same     -
///
/// Each row with an event sets the abort flag, so that observers behind the widget do not see the
/// mouse event, and ends in a render. Outside is left by the next press on the cross only. Moving
/// moves the position, Translating the position and the bounds, Scaling the bounds about the
/// position: they grow while the mouse goes up and shrink otherwise. Shift held at the press and
/// the first moves keeps the first two on one axis: the first four moves do nothing and tell
/// nothing, the fifth takes the axis with the largest motion since the press.
///
/// Other events: EnableEvent and DisableEvent by SetEnabled. No event has call data.
///
/// The class has no New: make it with a plain new, release it with Delete or delete. It reports the
/// class name of its base, "vtk3DWidget", and so do its errors.
///
/// Lifetime: the widget may be deleted at any moment, enabled, in mid-drag or from its own observer
/// (there by Delete), before or after its interactor, window and renderers. An observer may disable
/// it or take its interactor away. A drag that is cut off by disabling is over.
class ZVWIDGETS_EXPORT zvPointWidget : public vtk3DWidget
{
public:
  zvPointWidget();
  ~zvPointWidget() override;

  /// The values of State.
  enum WidgetState
  {
    Start = 0,
    Moving = 1,
    Scaling = 2,
    Translating = 3,
    Outside = 4
  };

  /// Show the cross and let it answer the mouse (1), or take it out of the view and off the
  /// interactor (0). The value it has changes nothing. Without an interactor: the error "The
  /// interactor must be set prior to enabling/disabling widget". Without a renderer in the window
  /// it stays disabled, silently. Invokes EnableEvent or DisableEvent and renders.
  void SetEnabled(int enabling) override;

  /// Go to another interactor, or to none. An enabled widget is disabled first.
  void SetInteractor(vtkRenderWindowInteractor* interactor) override;

  ///@{
  /// Put the position into the middle of \a bounds (xmin, xmax, ymin, ymax, zmin, zmax) and the
  /// cursor's bounds PlaceFactor around it: only the middle of the given bounds counts. Renders
  /// nothing and does not call Modified. Null only gives a generic warning. The other forms work
  /// out bounds as vtk3DWidget does.
  void PlaceWidget(double bounds[6]) override;
  void PlaceWidget() override;
  void PlaceWidget(
    double xmin, double xmax, double ymin, double ymax, double zmin, double zmax) override;
  ///@}

  /// Half the width of the cross after the next PlaceWidget, in world millimetres (default 1.0).
  /// Stored as it is, without limits; does not call Modified.
  void SetPlaceFactor(double factor) override;

  ///@{
  /// The look of the cross at rest and while grabbed. Never null; the widget keeps its reference.
  virtual vtkProperty* GetProperty();
  virtual vtkProperty* GetSelectedProperty();
  ///@}

  ///@{
  /// How near, as a part of the diagonal of the placed bounds, a press must be to the last picked
  /// position for the axis to be chosen by the motion (default 0.05). Clamped to 0.0 to 1.0; calls
  /// Modified if it changes.
  virtual void SetHotSpotSize(double size);
  virtual double GetHotSpotSizeMinValue();
  virtual double GetHotSpotSizeMaxValue();
  virtual double GetHotSpotSize();
  ///@}

  ///@{
  /// The handlers of the mouse events, see the table above. Harmless without an interactor or a
  /// renderer.
  virtual void OnMouseMove();
  virtual void OnLeftButtonDown();
  virtual void OnLeftButtonUp();
  virtual void OnMiddleButtonDown();
  virtual void OnMiddleButtonUp();
  virtual void OnRightButtonDown();
  virtual void OnRightButtonUp();
  ///@}

  /// Calls the handler for an interactor event; \a clientdata is the widget. An owner may call it
  /// to hand an event on.
  static void ProcessEvents(
    vtkObject* object, unsigned long event, void* clientdata, void* calldata);

  /// The source of the cross: its focal point is the position. Never null; the widget keeps its
  /// reference.
  vtkCursor3D* GetCursor3D();

  /// Update the cursor and give \a pd a deep copy of its focus, one point at the position. Null is
  /// ignored.
  void GetPolyData(vtkPolyData* pd);

  /// The bounds that PlaceWidget makes of \a in: \a center is its middle, \a out reaches
  /// PlaceFactor to each side of it. Hides the margin rule of the base. Null for any of them only
  /// gives a generic warning.
  void AdjustBounds(double* in, double* out, double* center);

  /// Show the cross as grabbed (not 0) or at rest (0). Grabbing takes the depth of later motions
  /// from the last pick.
  void Highlight(int highlight);

  /// The axis (0, 1, 2) to which a drag that so far had \a constraint is kept, -1 for none. Without
  /// shift it is none. Else a constraint that there is stays; else, near the last picked position,
  /// it is the axis with the largest motion from there to \a x, once the widget has waited for a
  /// motion (\a x null at the press).
  int DetermineConstraintAxis(int constraint, double* x);

  ///@{
  /// Move by the world motion from \a p1 to \a p2: the position alone, the position and the bounds,
  /// or the size, which grows if \a Y is above the last event. The first two on the constraint axis
  /// alone if there is one. They render nothing. Null for one end only gives a generic warning.
  void MoveFocus(double* p1, double* p2);
  void Translate(double* p1, double* p2);
  void Scale(double* p1, double* p2, int X, int Y);
  ///@}

  zvPointWidget(const zvPointWidget&) = delete;
  zvPointWidget& operator=(const zvPointWidget&) = delete;

protected:
  ///@{
  /// Steps that the handlers share. None minds that an observer has disabled the widget or taken
  /// its interactor.
  void CreateDefaultProperties();
  void SetCursor(const double bounds[6], double position[3]);
  bool PickCross();
  void BeginInteraction();
  void FinishInteraction();
  bool MoveWithPointer(double* previous, double* current);
  bool IsStillWaiting();
  void GetConstrainedMotion(const double* p1, const double* p2, double motion[3]);
  ///@}

  int State = Start;

  vtkNew<vtkActor> Actor;
  vtkNew<vtkPolyDataMapper> Mapper;
  vtkNew<vtkCursor3D> Cursor3D;

  /// Its list holds Actor: nothing else can be hit.
  vtkNew<vtkCellPicker> CursorPicker;

  /// The axis that a drag is kept to, -1 for none.
  int ConstraintAxis = -1;

  vtkNew<vtkProperty> Property;
  vtkNew<vtkProperty> SelectedProperty;

  double HotSpotSize = 0.05;

  /// Whether the choice of the axis waits for a motion, and how many moves have passed meanwhile. A
  /// wait that a release cuts short goes on in the next drag.
  int WaitingForMotion = 0;
  int WaitCount = 0;
};

#endif
