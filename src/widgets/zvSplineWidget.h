#ifndef zvSplineWidget_h
#define zvSplineWidget_h

#include "zvWidgets.h"
#include "zvWidgetsExport.h"

#include "vtkNew.h"
#include "vtkSmartPointer.h"
#include "vtkWeakPointer.h"

#include <array>
#include <vector>

class vtkActor;
class vtkCellPicker;
class vtkParametricFunctionSource;
class vtkPlaneSource;
class vtkPoints;
class vtkPolyData;
class vtkProperty;
class vtkTransform;
class zvParametricSpline;

/// An editable curve on a slice or in a 3D scene: handles, drawn as fat points, and a spline
/// through them, drawn as a line of Resolution segments. The user drags a handle, clicks the line
/// to insert a handle there, clicks empty space to append one, and clicks the first handle to close
/// the curve. The curve can be kept on a plane along an axis or on an oblique plane.
///
/// A host sets the interactor (SetInteractor), gives handles (SetNumberOfHandles and PlaceWidget,
/// InitializeHandles, or AddHandle) and enables the widget (SetEnabled(1) or On()). The renderer is
/// the current one if that was set, else the one under the last event position. All positions are
/// world positions in millimetres.
///
/// State    event                                        next      tells observers
/// any      left press outside the view                  Outside   -
/// any      left press on a handle (the first of an      Moving    StartInteractionEvent
///          open curve: closes it)
/// any      left press on the line: a handle is inserted Moving    StartInteractionEvent
///          (not found again under the mouse: unchanged)
/// any      left press on nothing, closed curve          Outside   -
/// any      left press on nothing, open curve: appends   Placing   StartInteractionEvent
/// any      middle press on a handle or the line         Moving    StartInteractionEvent
/// any      middle press on nothing or outside the view  Outside   -
/// Moving, Scaling, Spinning, Placing   mouse move       the same  InteractionEvent
/// any but Start, Outside   left or middle release       Start     EndInteractionEvent
/// any      right press and release, wheel               the same  - (the wheel renders)
///
/// Each row with an event sets the abort flag, so that observers behind the widget do not see the
/// mouse event, and ends in a render. Scaling and Spinning are entered by SetState only. Outside is
/// left by the next press, a release does not clear it. A middle drag moves the whole curve, or the
/// handle that the last left press grabbed: that press is remembered.
///
/// Other events: EnableEvent and DisableEvent by SetEnabled. No event has call data.
///
/// Lifetime: the widget may be deleted at any moment, enabled, in mid-drag or from its own
/// observer, before or after its interactor, window and renderers. An observer may disable it, take
/// its interactor away or release it. Deleted, it takes its line and handles out of the view. The
/// plane source is referred to without a reference and counts as not set once it is gone.
class ZVWIDGETS_EXPORT zvSplineWidget : public zvWidgets
{
public:
  vtkTypeMacro(zvSplineWidget, zvWidgets)

  /// A new widget with one reference, from the object factory if that knows the class.
  static zvSplineWidget* New();

  /// The values of State; 5 is not used. Hosts read and write them, so the numbers are fixed.
  enum WidgetState
  {
    Start = 0,
    Moving = 1,
    Scaling = 2,
    Spinning = 3,
    Placing = 4,
    Outside = 6
  };

  /// Write the fields of the parent, then those of this class, a line each.
  void PrintSelf(ostream& os, vtkIndent indent) override;

  /// The parent's line, then "zvSplineWidget $Revision: 1.2 $".
  void CollectRevisions(ostream& os) override;

  /// Show the curve and let it answer the mouse (1), or take it out of the view and off the
  /// interactor (0). The value it has changes nothing. Without an interactor: the error "The
  /// interactor must be set prior to enabling/disabling widget". Without a renderer in the window
  /// it stays disabled, silently. Invokes EnableEvent or DisableEvent and renders.
  void SetEnabled(int enabling) override;

  ///@{
  /// Spread the handles on the diagonal of \a bounds (xmin, xmax, ymin, ymax, zmin, zmax), or with
  /// ProjectToPlane on move them to the plane. The line follows at the next BuildRepresentation,
  /// not before; renders nothing. Null only gives a generic warning. The other forms work out
  /// bounds as vtk3DWidget does.
  void PlaceWidget(double bounds[6]) override;
  void PlaceWidget() override;
  void PlaceWidget(
    double xmin, double xmax, double ymin, double ymax, double zmin, double zmax) override;
  ///@}

  /// Attach the widget to the interactor's mouse events at Priority, without EnableEvent. Called by
  /// SetEnabled(1). Does nothing without an interactor.
  void AddObservers() override;

  ///@{
  /// Whether every change of a handle ends in a projection of all of them (default 0). Setting it
  /// calls Modified and moves nothing: the next change does.
  virtual void SetProjectToPlane(int project);
  virtual int GetProjectToPlane();
  virtual void ProjectToPlaneOn();
  virtual void ProjectToPlaneOff();
  ///@}

  ///@{
  /// The direction of the plane: 0 along x, 1 along y, 2 along z, 3 that of the plane source
  /// (default 0). Clamped to that range; calls Modified if it changes, moves nothing.
  virtual void SetProjectionNormal(int normal);
  virtual int GetProjectionNormalMinValue();
  virtual int GetProjectionNormalMaxValue();
  virtual int GetProjectionNormal();
  ///@}

  ///@{
  /// The coordinate of the plane on its axis, in millimetres (default 0.0). With ProjectToPlane on
  /// the handles move there at once. Rebuilds the line, does not call Modified or render.
  void SetProjectionPosition(double position);
  virtual double GetProjectionPosition();
  ///@}

  /// The oblique plane (default null). No reference is taken; moves nothing.
  void SetPlaneSource(vtkPlaneSource* plane);

  ///@{
  /// The look of the handles and of the line at rest and while grabbed. A reference is taken, null
  /// is allowed, Modified is called on a change. A property that is set while the widget shows is
  /// applied when the widget next changes what it shows. The selected handle's is never applied.
  virtual void SetHandleProperty(vtkProperty* property);
  virtual vtkProperty* GetHandleProperty();
  virtual void SetSelectedHandleProperty(vtkProperty* property);
  virtual vtkProperty* GetSelectedHandleProperty();
  virtual void SetLineProperty(vtkProperty* property);
  virtual vtkProperty* GetLineProperty();
  virtual void SetSelectedLineProperty(vtkProperty* property);
  virtual vtkProperty* GetSelectedLineProperty();
  ///@}

  ///@{
  /// The number of handles (default 0; below 0 counts as 0). Setting changes the count alone, give
  /// positions afterwards: a handle without a position has no part in the curve. Points that are
  /// beyond a smaller count stay drawn and can be picked until a handle is added or inserted.
  virtual void SetNumberOfHandles(int count);
  virtual int GetNumberOfHandles();
  ///@}

  ///@{
  /// The number of segments in which the line is drawn (default 500). Fewer than the spans between
  /// the handles are ignored.
  void SetResolution(int resolution);
  virtual int GetResolution();
  ///@}

  ///@{
  /// The function that runs through the handles. A reference is taken. It is not told Closed and
  /// takes the handles at the next rebuild. With null the line stays as it was last built.
  virtual void SetParametricSpline(zvParametricSpline* spline);
  virtual zvParametricSpline* GetParametricSpline();
  ///@}

  ///@{
  /// Whether the line runs on from the last handle to the first (default 0). Rebuilds the line.
  void SetClosed(int closed);
  virtual int GetClosed();
  virtual void ClosedOn();
  virtual void ClosedOff();
  ///@}

  ///@{
  /// Move one handle; with ProjectToPlane on all are projected. Rebuilds the line, renders nothing.
  /// Out of range: the error "zvSplineWidget: handle index out of range.", and nothing changes;
  /// null gives a generic warning, and nothing changes.
  void SetHandlePosition(int handle, double x, double y, double z);
  void SetHandlePosition(int handle, double xyz[3]);
  ///@}

  ///@{
  /// Where a handle is. Out of range, or for a handle that has no position yet: the error
  /// "zvSplineWidget: handle index out of range.", \a xyz stays as it was and the second form gives
  /// null. Its pointer is good until the number of handles changes. Null for \a xyz only gives a
  /// generic warning.
  void GetHandlePosition(int handle, double xyz[3]);
  double* GetHandlePosition(int handle);
  ///@}

  /// Give \a pd a shallow copy of the line as it was last sampled, that is drawn. Null is ignored.
  void GetPolyData(vtkPolyData* pd);

  /// The length in millimetres of the line as it was last sampled; 0.0 if it never was.
  double GetSummedLength();

  /// Store the mean of the handles in Centroid; the origin if there are none.
  void CalculateCentroid();

  /// Replace the handles by \a points. Null does nothing. Renders nothing.
  void InitializeHandles(vtkPoints* points);

  /// Take a handle out. Does nothing with fewer than three handles or out of range. The last point
  /// that was drawn before stays drawn and can be picked until a handle is added or inserted.
  void EraseHandle(const int& index);

  /// Insert a handle at \a pos where the last pick hit the line: the segment is found by length
  /// along the curve. Does nothing if that pick missed or with fewer than two handles. Null only
  /// gives a generic warning.
  void InsertHandleOnLine(double* pos);

  /// Whether the line as it was last sampled comes back to its first point: 1 or 0. Always 0 with
  /// fewer than two handles or Closed off. Never sampled: the error "No line data to query
  /// geometric closure", and 0.
  int IsClosed();

  /// Whether a handle or the line is at the interactor's event position: 1 or 0. Changes no state;
  /// 0 without an interactor or a renderer.
  int IsClicked();

  ///@{
  /// The interaction state, a value of WidgetState. Stored as it is.
  int GetState();
  void SetState(int state);
  ///@}

  /// Append a handle at \a pos and show the line, or, if there are two handles or more and the
  /// event position is on a handle, add none: on the first handle the curve is closed and the
  /// widget enabled. State becomes Placing or Start. Takes the renderer under the last event
  /// position if there is none yet. Renders. Null only gives a generic warning.
  void AddHandle(double* pos);

  /// Let the spline run through the handles as they are. The line is sampled when it is next drawn.
  void BuildRepresentation();

  /// Set the number of handles to 0, nothing else.
  void Initialize();

  ///@{
  /// Move all handles to the plane, whether or not ProjectToPlane is on. Oblique without a plane
  /// source: the generic warning "Set the plane source for oblique projections...", and nothing
  /// moves. The line is not rebuilt.
  void ProjectPointsToPlane();
  void ProjectPointsToOrthoPlane();
  void ProjectPointsToObliquePlane();
  ///@}

  ///@{
  /// Move handles by the world motion from \a p1 to \a p2, without projecting or rebuilding.
  /// MovePoint moves the handle that was grabbed; if there is none, the generic warning "Spline
  /// handle index out of range." Scale shrinks the curve about its mean if the last event was not
  /// below \a Y, and lets it grow otherwise. Spin turns it about Centroid, which it does not
  /// refresh: about the plane's normal with ProjectToPlane on, else about the axis that the motion
  /// and the view plane normal \a vpn give; without a plane source for an oblique plane nothing
  /// turns. Null for one of them, or for a normal that counts, only gives a generic warning.
  void MovePoint(double* p1, double* p2);
  void Translate(double* p1, double* p2);
  void Scale(double* p1, double* p2, int X, int Y);
  void Spin(double* p1, double* p2, double* vpn);
  ///@}

  /// The index of the handle that the last pick of handles hit, or -1. Highlights nothing.
  int HighlightHandle();

  /// Show the line as grabbed (not 0) or at rest (0). Grabbing takes the depth of later motions
  /// from the last pick of the line.
  void HighlightLine(int highlight);

  ///@{
  /// The handlers of the mouse events, see the table above. Harmless without an interactor or a
  /// renderer.
  void OnLeftButtonDown();
  void OnLeftButtonUp();
  void OnMiddleButtonDown();
  void OnMiddleButtonUp();
  void OnRightButtonDown();
  void OnRightButtonUp();
  void OnMouseMove();
  void OnMouseWheelForward();
  void OnMouseWheelBackward();
  ///@}

  /// Calls the handler for an interactor event; \a clientdata is the widget.
  static void ProcessEvents(
    vtkObject* object, unsigned long event, void* clientdata, void* calldata);

  zvSplineWidget(const zvSplineWidget&) = delete;
  zvSplineWidget& operator=(const zvSplineWidget&) = delete;

protected:
  zvSplineWidget();
  ~zvSplineWidget() override;

  /// Make each property that is still null.
  void CreateDefaultProperties();

  /// Take a reference to another property and call Modified.
  void ReplaceProperty(vtkSmartPointer<vtkProperty>& field, vtkProperty* property);

  ///@{
  /// What the public operations of like names do, once their arguments are known to be there.
  /// MoveCurrentHandle answers whether there is one.
  void PlaceHandles(double bounds[6]);
  void TakeResolution(int resolution);
  void TakeSpline(zvParametricSpline* spline);
  void TakeClosed(int closed);
  bool MoveCurrentHandle(const double* from, const double* to);
  void TranslateHandles(const double* from, const double* to);
  void ScaleHandles(const double* from, const double* to, int y);
  void SpinHandles(const double* from, const double* to, const double* viewPlaneNormal);
  void ShowLineAs(bool isGrabbed);
  ///@}

  ///@{
  /// The handles that have a position. Storing more than there were gives the new ones a point and
  /// a vertex cell each.
  std::vector<std::array<double, 3>> ReadHandles();
  void WriteHandles(const std::vector<std::array<double, 3>>& positions);
  ///@}

  /// Replace the points of the handles and give each its vertex cell; leaves their number alone.
  void SetHandlePoints(const std::vector<std::array<double, 3>>& positions);

  /// Make the renderer under the last event position the current one, if there is none yet.
  /// \return whether there is one now.
  bool TakePokedRenderer();

  /// Append a handle at \a pos, take the renderer under the last event position if there is none
  /// yet, and show the line.
  void AppendHandle(const double* pos);

  /// Put an actor into the current renderer, if there is one, and give it a property.
  void ShowActor(vtkActor* actor, vtkProperty* property);

  /// Take the line and the handles out of every view.
  void HideCurve();

  ///@{
  /// What handlers are made of. Each step bears that an observer has disabled the widget or taken
  /// its interactor in the step before.
  bool Pick(vtkCellPicker* picker); ///< at the event position; \return whether it hit
  void InsertHandleUnderPointer();  ///< render, insert where the line was hit, take that handle
  void MoveWithPointer(double previous[3], double current[3]); ///< as the state says
  void FollowMotion();                                         ///< project if that is on, rebuild
  void AppendHandleUnderPointer(); ///< render, add one where the pick of the line missed
  bool HoldsHandle();              ///< whether a motion moves one handle, not the whole curve
  void GrabCurve();                ///< what a middle press does
  void LetCurveGo();               ///< what a middle release does
  ///@}

  int State = Start;
  int ProjectionNormal = 0;
  double ProjectionPosition = 0.0;
  int ProjectToPlane = 0;
  vtkWeakPointer<vtkPlaneSource> PlaneSource;
  vtkSmartPointer<zvParametricSpline> ParametricSpline;
  vtkNew<vtkParametricFunctionSource> ParametricFunctionSource;
  int NumberOfHandles = 0;
  int Closed = 0;
  vtkNew<vtkActor> LineActor;
  int Resolution = 500;

  /// Their lists hold HandleActor and LineActor: nothing else can be hit.
  vtkSmartPointer<vtkCellPicker> HandlePicker;
  vtkSmartPointer<vtkCellPicker> LinePicker;

  /// The handle that is moved, -1 for the whole curve.
  int CurrentHandleIndex = -1;

  /// Scratch of Spin.
  vtkNew<vtkTransform> Transform;

  vtkSmartPointer<vtkProperty> HandleProperty;
  vtkSmartPointer<vtkProperty> SelectedHandleProperty;
  vtkSmartPointer<vtkProperty> LineProperty;
  vtkSmartPointer<vtkProperty> SelectedLineProperty;

  /// The mean of the handles when CalculateCentroid last ran.
  double Centroid[3] = { 0.0, 0.0, 0.0 };

  /// True while a middle button's grab lasts; for subclasses.
  bool CurveGrabbed = false;

  /// A point and a vertex cell for each handle.
  vtkNew<vtkPolyData> HandlePolyData;
  vtkNew<vtkActor> HandleActor;
};

/// For an application's table of instantiators; the library itself never calls it.
ZVWIDGETS_EXPORT vtkObject* vtkInstantiatorzvSplineWidgetNew();

#endif
