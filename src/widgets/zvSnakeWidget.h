#ifndef zvSnakeWidget_h
#define zvSnakeWidget_h

#include "zvWidgets.h"
#include "zvWidgetsExport.h"

#include "vtkNew.h"
#include "vtkWeakPointer.h"

#include <memory>
#include <vector>

class vtkActor;
class vtkFollower;
class vtkPicker;
class vtkPolyData;
class vtkRenderer;
class vtkVectorText;
class zvRawView;

/// A closed contour on a slice that a host deforms step by step, with the points of the image
/// gradient behind it and a stack of contours in a second, 3D view. The widget makes the ring with
/// which the contour begins, draws it, computes its area, and lets the user move the ring with the
/// left button and resize it with the middle one. The deformation is the host's: after each step it
/// passes the contour to SetSnake, and to SetSnakes3D what it has gathered, and renders when it
/// wants to.
///
/// A host calls SetCurrentRender (or SetInteractor), SetRenderer3D, SetCenter, SetRadius,
/// SetResolution and CreateInitialSnake, sets the current image (zvInstanceManager), and enables
/// the widget (SetEnabled(1) or On()). All positions are world positions in millimetres; the ring
/// lies in a plane of constant z.
///
/// State    event                                        next      tells observers
/// any      left press outside the view or off the       Outside   -
///          contour
/// any      left press in the contour's bounding box     Moving    StartInteractionEvent
/// any      middle press in the view, anywhere           Scaling   StartInteractionEvent
/// any      middle press outside the view                Outside   -
/// Moving   mouse move: the ring follows, within the     Moving    InteractionEvent
///          image
/// Scaling  mouse move: upwards grows, downwards shrinks Scaling   InteractionEvent
/// Moving, Scaling   left or middle release              Start     EndInteractionEvent
/// Start, Outside    mouse move, release                 the same  -
/// any      right press and release, wheel               the same  -
///
/// Each row with an event sets the abort flag, so that observers behind the widget do not see the
/// mouse event, renders, and refreshes the label after that. The wheel refreshes the label and
/// renders nothing. While Interaction is off, events that still arrive only refresh the label.
///
/// Other events: EnableEvent by AddObservers, so twice by SetEnabled(1), and DisableEvent by
/// SetEnabled(0). No event has call data.
///
/// Lifetime: the widget may be deleted at any moment, enabled, in mid-drag or from its own
/// observer, before or after its interactor, window and renderers. An observer may disable it, take
/// its interactor away or release it. The 3D renderer and what SetCurrentRender wrote are referred
/// to without a reference and count as not set once they are gone. Deleted, the widget takes all it
/// drew out of the views.
class ZVWIDGETS_EXPORT zvSnakeWidget : public zvWidgets
{
public:
  vtkTypeMacro(zvSnakeWidget, zvWidgets)

  /// A new widget with one reference, from the object factory if that knows the class.
  static zvSnakeWidget* New();

  /// The values of State; the numbers are fixed, 2 and 3 are not used.
  enum WidgetState
  {
    Start = 0,
    Moving = 1,
    Scaling = 4,
    Outside = 5
  };

  /// Write the fields of vtk3DWidget; deliberate: none of this class or of zvWidgets.
  void PrintSelf(ostream& os, vtkIndent indent) override;

  /// "zvSnakeWidget $Revision: 1.2 $", deliberately without the parent's line.
  void CollectRevisions(ostream& os) override;

  /// Show contour, gradient, label and the 3D contours and let the widget answer the mouse (1), or
  /// take them out of the views and the widget off the interactor (0). The value it has changes
  /// nothing. Without an interactor: the error "The interactor must be set prior to
  /// enabling/disabling widget". Without a renderer that was set, the one under the last event
  /// position is taken; if there is none, the widget stays disabled, silently. Without a 3D
  /// renderer it stays disabled with the generic warning "set the 3D renderer before enabling...".
  /// Disabling keeps the renderer. Invokes EnableEvent (after AddObservers has) or DisableEvent and
  /// renders.
  void SetEnabled(int enabling) override;

  ///@{
  /// Do nothing: the ring is where SetCenter and SetRadius put it.
  void PlaceWidget(double bounds[6]) override;
  void PlaceWidget() override;
  void PlaceWidget(
    double xmin, double xmax, double ymin, double ymax, double zmin, double zmax) override;
  ///@}

  /// Attach the widget to the interactor's mouse events at Priority and invoke EnableEvent. Called
  /// by SetEnabled(1). Without an interactor: the generic warning "set interactor before adding
  /// observers...", and nothing is attached.
  void AddObservers() override;

  ///@{
  /// The renderer of the slice. Setting it writes the renderer and the interactor of its window
  /// into the widget: no reference is taken, and what is attached or shown elsewhere stays there
  /// until the widget is disabled. Null or a renderer without a window: the generic warning "set a
  /// renderer that is in a render window...", and nothing changes.
  void SetCurrentRender(vtkRenderer* render);
  vtkRenderer* GetCurrentRender();
  ///@}

  /// Set the renderer with a reference, as SetEnabled does.
  void SetCurrentRenderer(vtkRenderer* renderer) override;

  ///@{
  /// The renderer of the 3D contours (default null), stored without a reference. Null is allowed;
  /// a change is seen when the widget is enabled next.
  void SetRenderer3D(vtkRenderer* render);
  vtkRenderer* GetRenderer3D();
  ///@}

  ///@{
  /// Center (default 0, 0, 0), radius in millimetres (default 0.5) and number of points (default
  /// 100) of the ring, stored as they are; the next CreateInitialSnake takes them. None calls
  /// Modified. GetCenter gives the widget's own values. A null center: the generic warning "set a
  /// center of three values...", and nothing changes.
  void SetCenter(double* center);
  double* GetCenter();
  void SetRadius(double radius);
  double GetRadius();
  void SetResolution(int resolution);
  int GetResolution();
  ///@}

  /// The interaction state, a value of WidgetState.
  int GetState();

  /// Make the ring of Resolution points of single precision about Center and pass it to SetSnake.
  /// It begins on the +x side and runs counter-clockwise in the plane of x and y; line cells of two
  /// points each close it. Does nothing while Interaction is off. A resolution below 2 or above
  /// 8388608: the generic warning "set a resolution from 2 to 8388608 points...", and the contour
  /// stays.
  void CreateInitialSnake();

  ///@{
  /// The contour. It is copied; the getter gives the widget's own object, which stays the same.
  /// Setting gives it the present colour and refreshes the label; renders nothing. Null: the
  /// generic warning "set poly data for the contour...", and nothing changes.
  void SetSnake(vtkPolyData* snake);
  vtkPolyData* GetSnake();
  ///@}

  ///@{
  /// The points of the gradient, drawn in blue and in the present point size whatever values they
  /// carry: vertex cells show, bare points do not. Copied as the contour is. Renders nothing. Null:
  /// the generic warning "set poly data for the gradient...", and nothing changes.
  void SetGradient(vtkPolyData* gradient);
  vtkPolyData* GetGradient();
  ///@}

  ///@{
  /// The contours in the 3D view. Copied as the contour is, in the present colour. Renders nothing.
  /// Null: the generic warning "set poly data for the 3D contours...", and nothing changes.
  void SetSnakes3D(vtkPolyData* snakes);
  vtkPolyData* GetSnakes3D();
  ///@}

  ///@{
  /// The colour of the contour, red, green, blue (default 0, 255, 0). Stored as given; what is
  /// above 1 is drawn as 1. The 3D contours and the label take it when they are next set or
  /// refreshed. Null: the generic warning "set a color of three values...", and nothing changes;
  /// GetColor ignores it.
  void SetColor(double* color);
  void SetColor(double red, double green, double blue);
  void GetColor(double* color);
  ///@}

  ///@{
  /// The size in pixels of the gradient's points (default 1.0); taken by the next SetGradient.
  void SetGradientPointSize(double size);
  double GetGradientPointSize();
  ///@}

  ///@{
  /// Show the area as "%10.4lf mm" beside the contour's center, or show nothing (default). Both
  /// refresh the label; they render nothing.
  void ViewAreaOn();
  void ViewAreaOff();
  ///@}

  /// Compute the area that the contour encloses, in square millimetres. 0.0 for one with fewer than
  /// three points or without lines; see zvUtils::CalculateArea for others that enclose nothing.
  void CalculateArea();

  /// Compute the area and let the label say it, or be blank while it is off. One that is shown
  /// takes the colour of the contour, a size that fits the view and a place 0.5 below Center in z
  /// (in front of the slice for a camera that looks along +z), and is put into the current
  /// renderer, whether or not the widget is enabled. Renders nothing.
  void UpdateAreaLabel();

  ///@{
  /// Move the center by the world motion from \a p1 to \a p2 and keep it, not the ring, within the
  /// x and y bounds of the current image; or let the radius grow or shrink by its length, up if
  /// the last event was below \a Y, to at most half the smaller side of the image in x and y, and
  /// to a thousandth of that side where it would vanish. Both make the ring anew: what a host has
  /// deformed is a circle again; while Interaction is off only center or radius change. Without a
  /// current image, with null, or Scale without an interactor: a generic warning that says which,
  /// and nothing changes. Render nothing.
  void Move(double* p1, double* p2, int X, int Y);
  void Scale(double* p1, double* p2, int X, int Y);
  ///@}

  /// Whether the contour's bounding box is at the interactor's event position: 1 or 0. Changes no
  /// state; 0 without an interactor, a renderer or points.
  int IsClicked();

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

  zvSnakeWidget(const zvSnakeWidget&) = delete;
  zvSnakeWidget& operator=(const zvSnakeWidget&) = delete;

protected:
  zvSnakeWidget();
  ~zvSnakeWidget() override;

  ///@{
  /// What SetEnabled is made of.
  void Show();
  void Hide();
  void LeaveViews();
  ///@}

  /// Pick at the event position; \return whether the contour was hit.
  bool PickSnake();

  /// What a mouse move does before the label follows. \return false if it is not for the widget.
  bool FollowPointer();

  /// What both releases do.
  void FinishDrag();

  /// Refresh the label after an event was told, but not for an observer that has just disabled the
  /// widget: it would come back.
  void UpdateAreaLabelAfterTelling(bool wasEnabled);

  int State = Start;

  /// Its list holds SnakeActor: nothing else can be hit.
  vtkNew<vtkPicker> SnakePicker;
  vtkNew<vtkPolyData> Snake;
  vtkNew<vtkActor> SnakeActor;
  vtkNew<vtkPolyData> Snakes3D;
  vtkNew<vtkActor> Snakes3DActor;
  vtkNew<vtkPolyData> Gradient;
  vtkNew<vtkActor> GradientActor;

  /// A left drag moves the ring while this is 2, which it stays unless a subclass changes it.
  int MotionMode = 2;

  int Resolution = 100;
  double Radius = 0.5;
  double Center[3] = { 0.0, 0.0, 0.0 };
  vtkWeakPointer<vtkRenderer> Renderer3D;
  vtkNew<vtkVectorText> AreaText;
  vtkNew<vtkFollower> AreaActor;
  bool ViewArea = false;
  double Area = 0.0;
  double Color[3] = { 0.0, 255.0, 0.0 };
  double GradientPointSize = 1.0;

private:
  /// The account of what SetCurrentRender wrote.
  std::unique_ptr<zvRawView> RawView;

  /// Every interactor that the event command was attached to.
  std::vector<vtkWeakPointer<vtkObject>> Observed;
};

/// For an application's table of instantiators; the library itself never calls it.
ZVWIDGETS_EXPORT vtkObject* vtkInstantiatorzvSnakeWidgetNew();

#endif
