#ifndef zvRulerWidget_h
#define zvRulerWidget_h

#include "zvWidgetsExport.h"

#include "vtk3DWidget.h"
#include "vtkCommand.h"
#include "vtkNew.h"
#include "vtkSmartPointer.h"
#include "vtkWeakPointer.h"

class vtkActor;
class vtkCellPicker;
class vtkFollower;
class vtkLineSource;
class vtkPolyData;
class vtkPolyDataMapper;
class vtkProp;
class vtkProperty;
class vtkSphereSource;
class vtkVectorText;
class zvPointWidget;
class zvPWCallback;
class zvPW1Callback;
class zvPW2Callback;

/// A ruler on a slice: a line with a cross at each end and a label at its second end that shows its
/// length in millimetres ("%10.2lf mm") and turns to the camera. The user drags an end, or the line
/// by its body.
///
/// A host sets the interactor (SetInteractor), gives the ends (SetPoint1, SetPoint2) and enables
/// the widget (SetEnabled(1) or On()). The renderer is the current one if that was set, else the
/// one under the last event position. All positions are world positions in millimetres.
///
/// The crosses are point widgets. They are HandleSize (vtk3DWidget, default 0.01) of the diagonal
/// of the view to each side once the ruler was pressed, and keep that size on the screen when
/// UpdateScaleLabel follows each zoom; before, 1 mm, and HandleSize of the placed diagonal from the
/// first UpdateScaleLabel on. An end is caught in a sphere of the same radius that is never drawn.
/// The label's letters have the same height. Its text is a blank until the first drag, and changes
/// in drags only.
///
/// State          event                            next          tells observers
/// any            left or middle press outside     Outside       -
///                the view, or beside the ruler
/// any            left press on an end             MovingHandle  StartInteractionEvent
/// any            left press on the line           MovingLine    StartInteractionEvent
/// any            middle press on an end or the    MovingLine    StartInteractionEvent
///                line
/// MovingHandle,  mouse move: moves that end, or   the same      InteractionEvent
/// MovingLine     the line as it is
/// MovingHandle,  left or middle release           Start         EndInteractionEvent
/// MovingLine
/// Start, Outside mouse move or release            the same      -
/// any            right press and release          the same      - (deliberate: the host's menu)
/// any            wheel: sizes crosses and label   the same      -
///
/// Each row with an event sets the abort flag, so that observers behind the widget do not see the
/// mouse event, and ends in a render or has one within. The wheel renders and sets no abort flag;
/// the zoom itself is the host's. Outside is left by the next press on the ruler only. Scaling is
/// entered by no handler, subclasses may. A press that catches an end but is farther from its cross
/// than the cross can be picked tells its events and moves nothing. An arm of a cross that reaches
/// out of its sphere, as before the first UpdateScaleLabel in a view that is zoomed in, moves its
/// end without the ruler: it tells nothing, and the label stays. Shift held at the press keeps a
/// drag on one axis, see zvPointWidget.
///
/// Other events: EnableEvent and DisableEvent by SetEnabled. No event has call data.
///
/// Lifetime: the widget may be deleted at any moment, enabled, in mid-drag or from its own
/// observer, before or after its interactor, window and renderers. An observer may disable it, take
/// its interactor away or release it. A drag that is cut off by disabling is over. The ruler owns
/// its point widgets and their callbacks.
class ZVWIDGETS_EXPORT zvRulerWidget : public vtk3DWidget
{
public:
  vtkTypeMacro(zvRulerWidget, vtk3DWidget)

  /// A new widget with one reference, from the object factory if that knows the class.
  static zvRulerWidget* New();

  /// The values of State.
  enum WidgetState
  {
    Start = 0,
    MovingHandle = 1,
    MovingLine = 2,
    Scaling = 3,
    Outside = 4
  };

  /// The values of Align.
  enum AlignAxis
  {
    XAxis = 0,
    YAxis = 1,
    ZAxis = 2,
    None = 3
  };

  /// Write the revision line "zvRulerWidget $Revision:$".
  virtual void CollectRevisions(ostream& os);

  /// Show the ruler and let it answer the mouse (1), or take it out of the view and off the
  /// interactor (0). The value it has changes nothing. Without an interactor: the error "The
  /// interactor must be set prior to enabling/disabling widget". Without a renderer in the window
  /// it stays disabled, silently. Invokes EnableEvent or DisableEvent and renders.
  void SetEnabled(int enabling) override;

  /// Go to another interactor, or to none. An enabled widget is disabled first.
  void SetInteractor(vtkRenderWindowInteractor* interactor) override;

  ///@{
  /// Take \a bounds (xmin, xmax, ymin, ymax, zmin, zmax), scaled by PlaceFactor (default 1.0), as
  /// those of ClampToBounds, and lay the line through their middle along Align. With None the ends
  /// stay. Renders nothing. Null only gives a generic warning. The other forms work out bounds as
  /// vtk3DWidget does.
  void PlaceWidget(double bounds[6]) override;
  void PlaceWidget() override;
  void PlaceWidget(
    double xmin, double xmax, double ymin, double ymax, double zmin, double zmax) override;
  ///@}

  /// Give the spheres that catch the ends the radius of the crosses. Renders nothing.
  void SizeHandles() override;

  ///@{
  /// The axis along which PlaceWidget lays the line (default None, so that placing never moves a
  /// measured line). Clamped to XAxis to None; calls Modified if it changes.
  virtual void SetAlign(int align);
  virtual int GetAlignMinValue();
  virtual int GetAlignMaxValue();
  virtual int GetAlign();
  ///@}

  ///@{
  /// Whether dragging the body must keep both ends in the placed bounds (default 0). A motion that
  /// would not is dropped, and the body's cross goes back. Dragged ends are never kept. Calls
  /// Modified if it changes.
  virtual void SetClampToBounds(int clamp);
  virtual int GetClampToBounds();
  virtual void ClampToBoundsOn();
  virtual void ClampToBoundsOff();
  ///@}

  ///@{
  /// The look of the line at rest and while grabbed, and of the spheres, which are never drawn.
  /// Never null; the widget keeps its reference.
  virtual vtkProperty* GetHandleProperty();
  virtual vtkProperty* GetSelectedHandleProperty();
  virtual vtkProperty* GetLineProperty();
  virtual vtkProperty* GetSelectedLineProperty();
  ///@}

  ///@{
  /// Move one end with its cross (default -0.5, 0, 0 and 0.5, 0, 0). The label keeps its text and
  /// place until the next drag. Renders nothing, does not call Modified.
  void SetPoint1(double x, double y, double z);
  void SetPoint2(double x, double y, double z);
  ///@}

  /// Let the spheres that catch the ends follow them.
  void BuildRepresentation();

  /// Give \a pd a shallow copy of the line, five segments from end 1 to end 2. Null is ignored.
  void GetPolyData(vtkPolyData* pd);

  /// Whether an end or the line is at the interactor's event position. Changes no state and does
  /// not test the viewport; false without an interactor or a renderer.
  bool IsClicked();

  /// Move each coordinate of \a x that is out of the placed bounds onto them. Null only gives a
  /// generic warning.
  void ClampPosition(double* x);

  /// Whether \a x is in the placed bounds or on them: 1 or 0. Null gives a generic warning and 0.
  int InBounds(double* x);

  /// Size the crosses and the label for the view as it now is, and render. Hosts call it when the
  /// user zooms. The text stays. Works without an interactor, but renders nothing then.
  void UpdateScaleLabel();

  ///@{
  /// Choose the point widget that is dragged, by the end that is highlighted: that end's, or
  /// without one the body's, which is put where the line was last picked. Show it and the crosses
  /// of both ends, in their size. Does nothing without an interactor or a renderer.
  /// DisablePointWidget hides the body's alone and chooses none. Showing and hiding render.
  void EnablePointWidget();
  void DisablePointWidget();
  ///@}

  /// Hand an interactor event to the point widget that is dragged. \return 0 if there is none, else
  /// 1; the point widget renders what it does.
  int ForwardEvent(unsigned long event);

  /// Choose the end that is dragged by its sphere, and take the depth of later motions and the size
  /// of the handles from the last pick of an end. Null or any other prop than an actor chooses
  /// none. \return 0 for end 1, 1 for another actor, -1 for none.
  int HighlightHandle(vtkProp* prop);

  ///@{
  /// Show both ends or the line as grabbed (not 0) or at rest (0). Grabbing takes the depth of
  /// later motions and the size of the handles from the last pick of an end, or of the line.
  void HighlightHandles(int highlight);
  void HighlightLine(int highlight);
  ///@}

  /// Move the line by the way of the body's cross from its last position to \a x, see
  /// ClampToBounds. Renders nothing. Null only gives a generic warning.
  void SetLinePosition(double* x);

  /// Shrink the line about its middle, or let it grow if \a Y is above the last event, by the
  /// length from \a p1 to \a p2 as a part of its own. A line without length stays. Renders nothing.
  /// Null for one end only gives a generic warning.
  void Scale(double* p1, double* p2, int X, int Y);

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

  /// Attach the widget to the interactor's mouse events at Priority. Called by SetEnabled(1). Does
  /// nothing without an interactor.
  void AddObservers();

  /// Calls the handler for an interactor event; \a clientdata is the widget.
  static void ProcessEvents(
    vtkObject* object, unsigned long event, void* clientdata, void* calldata);

  zvRulerWidget(const zvRulerWidget&) = delete;
  zvRulerWidget& operator=(const zvRulerWidget&) = delete;

protected:
  zvRulerWidget();
  ~zvRulerWidget() override;

  ///@{
  /// Steps that the constructor and the handlers share. None minds that an observer has disabled
  /// the widget or taken its interactor.
  void BuildLineAndHandles();
  void CreateDefaultProperties();
  void BuildPointWidgets();
  void Show();
  void Hide();
  bool Pick(vtkCellPicker* picker);
  bool BeginInteraction();
  void FinishInteraction();
  double GetCrossSize();
  void SizeCross(zvPointWidget* cross, const double position[3]);
  void PlaceCross(zvPointWidget* cross, const double position[3]);
  void ShowCross(zvPointWidget* cross);
  void MoveCrossesToEnds();
  void UpdateLengthLabel();
  ///@}

  int State = Start;
  int Align = None;

  vtkNew<vtkActor> LineActor;
  vtkNew<vtkPolyDataMapper> LineMapper;
  vtkNew<vtkLineSource> LineSource;

  /// The spheres that catch the ends. No renderer ever holds them.
  vtkNew<vtkActor> Handle[2];
  vtkNew<vtkPolyDataMapper> HandleMapper[2];
  vtkNew<vtkSphereSource> HandleGeometry[2];

  /// Their lists hold the spheres and LineActor: nothing else can be hit.
  vtkNew<vtkCellPicker> HandlePicker;
  vtkNew<vtkCellPicker> LinePicker;

  /// The sphere of the end that is dragged.
  vtkWeakPointer<vtkActor> CurrentHandle;

  /// Where the body's cross last was when the line followed it.
  double LastPosition[3] = { 0.0, 0.0, 0.0 };

  int ClampToBounds = 0;

  vtkNew<vtkProperty> HandleProperty;
  vtkNew<vtkProperty> SelectedHandleProperty;
  vtkNew<vtkProperty> LineProperty;
  vtkNew<vtkProperty> SelectedLineProperty;

  /// The crosses of the body, of end 1 and of end 2.
  vtkSmartPointer<zvPointWidget> PointWidget;
  vtkSmartPointer<zvPointWidget> PointWidget1;
  vtkSmartPointer<zvPointWidget> PointWidget2;
  vtkSmartPointer<zvPWCallback> PWCallback;
  vtkSmartPointer<zvPW1Callback> PW1Callback;
  vtkSmartPointer<zvPW2Callback> PW2Callback;

  /// The one of the three that events are handed to. Not owned here.
  zvPointWidget* CurrentPointWidget = nullptr;

  vtkNew<vtkVectorText> ScaleText;
  vtkNew<vtkFollower> ScaleFollower;

  /// The size that UpdateScaleLabel last gave the label.
  double LabelScale = 1.0;

  /// True while a point widget handles a move: the label must follow before that widget renders.
  bool LabelFollowsEnds = false;
};

/// What tells a ruler that one of its point widgets was dragged. Made with a plain new, released
/// with Delete. Without a ruler or a point widget they do nothing; both must outlive the callback's
/// time as an observer.
class ZVWIDGETS_EXPORT zvRulerCallback : public vtkCommand
{
public:
  zvRulerWidget* Ruler = nullptr;       ///< not owned
  zvPointWidget* PointWidget = nullptr; ///< not owned

protected:
  /// The position of the point widget's cross. False, with nothing written, if a field is not set.
  bool ReadPosition(double position[3]) const;
};

/// Passes the position to SetLinePosition.
class ZVWIDGETS_EXPORT zvPWCallback : public zvRulerCallback
{
public:
  void Execute(vtkObject* caller, unsigned long event, void* calldata) override;
};

/// Passes the position to SetPoint1.
class ZVWIDGETS_EXPORT zvPW1Callback : public zvRulerCallback
{
public:
  void Execute(vtkObject* caller, unsigned long event, void* calldata) override;
};

/// Passes the position to SetPoint2.
class ZVWIDGETS_EXPORT zvPW2Callback : public zvRulerCallback
{
public:
  void Execute(vtkObject* caller, unsigned long event, void* calldata) override;
};

/// For an application's table of instantiators; the library itself never calls it.
ZVWIDGETS_EXPORT vtkObject* vtkInstantiatorzvRulerWidgetNew();

#endif
