#ifndef zvVolumeSnakeWidget_h
#define zvVolumeSnakeWidget_h

#include "zvSplineWidget.h"
#include "zvWidgetsExport.h"

#include "vtkNew.h"
#include "vtkSmartPointer.h"
#include "vtkWeakPointer.h"

class vtkActor;
class vtkPolyData;
class vtkRenderer;

/// A contour with which a host segments a volume slice by slice. The first left press on the data
/// puts a small ring there; the user then moves and resizes the contour, which keeps its shape, and
/// the host deforms it. Beside it are the contour of the previous step, one of two displays of the
/// gradient, and a stack of contours in a second, 3D view. The deformation is the host's: it reads
/// GetSnake, passes SetSnake, SetPrevSnake, SetGradient, SetFreezeGradient and SetSnakes3D, and
/// renders when it wants to. For closed rings with an area see zvSnakeWidget.
///
/// A host sets the interactor (SetInteractor), SetRenderer3D and the current image
/// (zvInstanceManager), and enables the widget (SetEnabled(1) or On()). The renderer is the current
/// one if that was set, else the one under the last event position. All positions are world
/// positions in millimetres; the ring lies in a plane of constant z. The handles and the line of
/// zvSplineWidget are there, too, but no press edits them.
///
/// State    event                                        next      tells observers
/// any      left press while the contour is empty: makes Start     -
///          a ring at the picked position
/// any      left press on the contour                    Moving    StartInteractionEvent
/// any      left press off it or outside the view        Outside   -
/// any      middle press on the contour                  Scaling   StartInteractionEvent
/// any      middle press off it or outside the view      Outside   -
/// any      right press in the view, anywhere            Scaling   StartInteractionEvent
/// any      right press outside the view                 Outside   -
/// Moving, Scaling, Spinning, Placing   mouse move       the same  InteractionEvent
/// any but Start, Outside   left or middle release       Start     EndInteractionEvent
/// any      right release, wheel                         the same  - (the wheel renders)
///
/// Each row with an event sets the abort flag, so that observers behind the widget do not see the
/// mouse event, and ends in a render. A ring that a press makes is not rendered: the host does.
/// Deliberate: the right release does not end the scaling, a left or middle release does. Moving up
/// grows, moving down or sideways shrinks. While Interaction is off, presses and moves that still
/// arrive do nothing at all; releases still return to Start. Spinning and Placing are entered by
/// SetState only; Spinning turns the handles, not the contour.
///
/// Other events: EnableEvent and DisableEvent by SetEnabled. No event has call data.
///
/// Lifetime: as zvSplineWidget. The 3D renderer is referred to without a reference and counts as
/// not set once it is gone. Deleted, the widget takes all it drew out of the views.
class ZVWIDGETS_EXPORT zvVolumeSnakeWidget : public zvSplineWidget
{
public:
  vtkTypeMacro(zvVolumeSnakeWidget, zvSplineWidget)

  /// A new widget with one reference, from the object factory if that knows the class.
  static zvVolumeSnakeWidget* New();

  /// Write the fields of the parent; this class adds none.
  void PrintSelf(ostream& os, vtkIndent indent) override;

  /// The parent's lines, then "zvVolumeSnakeWidget $Revision: 1.2 $".
  void CollectRevisions(ostream& os) override;

  /// Show the contours, the gradient, the line and, by SphereHandleVisibility, the handles, and let
  /// the widget answer the mouse with Interaction on (1), or take contours and gradient out of the
  /// views and the widget off the interactor (0). Deliberate: disabling leaves line and handles in
  /// the view. The value it has changes nothing. Without an interactor: the error "The interactor
  /// must be set prior to enabling/disabling widget". Without a renderer in the window it stays
  /// disabled, silently; without a 3D renderer with the generic warning "set the 3D renderer before
  /// enabling...". Invokes EnableEvent or DisableEvent and renders.
  void SetEnabled(int enabling) override;

  ///@{
  /// The number of points of the ring (default 100), taken by the next CreateInitialSnake, and of
  /// those points of the contour that Translate and Scale move. The line keeps its own number of
  /// segments, which is 100 here.
  void SetResolution(int resolution);
  int GetResolution() override;
  ///@}

  ///@{
  /// Radius in millimetres (default 0.5) and center (default 0, 0, 0) of the ring, stored as they
  /// are; the next CreateInitialSnake takes them. Neither calls Modified. GetCenter gives the
  /// widget's own values. A null center: the generic warning "set a center of three values...", and
  /// nothing changes.
  void SetRadius(double radius);
  double GetRadius();
  void SetCenter(double* center);
  double* GetCenter();
  ///@}

  ///@{
  /// The colour of the contour, red, green, blue (default 0, 255, 0). Stored as given; what is
  /// above 1 is drawn as 1. The 3D contours take it when they are next set. Null: the generic
  /// warning "set a color of three values...", and nothing changes; GetColor ignores it.
  void SetColor(double* color);
  void SetColor(double red, double green, double blue);
  void GetColor(double* color);
  ///@}

  ///@{
  /// The size in pixels of the frozen gradient's points (default 1.0); taken by the next
  /// SetFreezeGradient.
  void SetGradientPointSize(double size);
  double GetGradientPointSize();
  ///@}

  ///@{
  /// The live gradient, coloured by its scalars, 0 in blue to 1 in red. It is copied; the getter
  /// gives the widget's own object, which Reset replaces. Renders nothing. Null: the generic
  /// warning "set poly data for the gradient...", and nothing changes.
  void SetGradient(vtkPolyData* gradient);
  vtkPolyData* GetGradient();
  ///@}

  ///@{
  /// The frozen gradient, a cloud in blue and in the present point size. Copied as the live one is.
  /// Null: the generic warning "set poly data for the frozen gradient...", and nothing changes.
  void SetFreezeGradient(vtkPolyData* gradient);
  vtkPolyData* GetFreezeGradient();
  ///@}

  ///@{
  /// The contour, in the present colour, and the one of the previous step, in yellow. Copied as the
  /// gradient is. Render nothing. Null: the generic warning "set poly data for the contour..." or
  /// "set poly data for the previous contour...", and nothing changes.
  void SetSnake(vtkPolyData* snake);
  vtkPolyData* GetSnake();
  void SetPrevSnake(vtkPolyData* snake);
  vtkPolyData* GetPrevSnake();
  ///@}

  ///@{
  /// The renderer of the 3D contours (default null), stored without a reference. Null is allowed;
  /// a change is seen when the widget is enabled next.
  void SetRenderer3D(vtkRenderer* render);
  vtkRenderer* GetRenderer3D();
  ///@}

  /// The contours in the 3D view, in the present colour. Copied as the gradient is. Renders
  /// nothing. Null: the generic warning "set poly data for the 3D contours...", and nothing
  /// changes.
  void SetSnakes3D(vtkPolyData* snakes);

  /// Make the ring about Center and pass it to SetSnake and SetPrevSnake. It is that of
  /// zvSnakeWidget, computed by an angle of single precision. A resolution below 2 or above
  /// 8388608: the generic warning "set a resolution from 2 to 8388608 points...", and the contours
  /// stay.
  void CreateInitialSnake();

  /// Disable the widget and replace all it holds by new, empty poly data: what the getters gave is
  /// released. Without an interactor, the error of SetEnabled is written and the rest is done.
  void Reset();

  ///@{
  /// Which gradient is shown: 1 the live one, 2 the frozen one (default), any other value none.
  /// Applied to the current renderer at once, whether or not the widget is enabled; renders
  /// nothing. EnableViewGradient applies the stored value, or with false shows none and keeps it.
  void SetViewGradient(int view);
  virtual int GetViewGradient();
  void EnableViewGradient(bool enable);
  ///@}

  ///@{
  /// A coordinate that the host keeps here (default 0.0). Calls Modified if it changes.
  virtual double GetZCoordinate();
  virtual void SetZCoordinate(double z);
  ///@}

  ///@{
  /// Whether enabling shows the handles of the spline (default on).
  void SphereHandleVisibilityOn();
  void SphereHandleVisibilityOff();
  ///@}

  /// As the parent's, but State stays as it is when a handle is added, and after a hit the handle
  /// that was hit is the current one. Null: the generic warning "give the handle a position...".
  void AddHandle(double* pos);

  ///@{
  /// Move by the world motion from \a p1 to \a p2 the first GetResolution() points of the contour,
  /// or all if there are fewer. Translate takes Center along. Scale stores the distance of point 0
  /// from Center as the radius, then lets the contour shrink about the mean of all its points if
  /// the last event was not below \a Y, and grow otherwise, by the length of the motion as a part
  /// of the points' mean distance; Center stays. Where that is no number nothing is scaled. An
  /// empty contour is not scaled; without an interactor: the generic warning "set interactor before
  /// scaling the contour...", and nothing changes. Null: the generic warning "give both ends of the
  /// motion before moving the contour..." or "... scaling the contour...", likewise. Render
  /// nothing.
  void Translate(double* p1, double* p2);
  void Scale(double* p1, double* p2, int X, int Y);
  ///@}

  ///@{
  /// The handlers that differ from the parent's, see the table above. A press that is to make a
  /// ring without a current image: the generic warning "set the current image before starting a
  /// contour...", and no ring.
  void OnLeftButtonDown();
  void OnMiddleButtonDown();
  void OnRightButtonDown();
  void OnMouseMove();
  ///@}

  /// Calls the handler for an interactor event; \a clientdata is the widget.
  static void ProcessEvents(
    vtkObject* object, unsigned long event, void* clientdata, void* calldata);

  zvVolumeSnakeWidget(const zvVolumeSnakeWidget&) = delete;
  zvVolumeSnakeWidget& operator=(const zvVolumeSnakeWidget&) = delete;

protected:
  zvVolumeSnakeWidget();
  ~zvVolumeSnakeWidget() override;

  ///@{
  /// What SetEnabled is made of.
  void Show();
  void Hide();
  void LeaveViews();
  ///@}

  /// Show the gradient that a value of ViewGradient stands for in the current renderer.
  void ShowGradient(int view);

  /// The first press: a ring where the picker was.
  void StartContour();

  /// The points of the contour that move, and storing them.
  std::vector<std::array<double, 3>> ReadMovedPoints();
  void WriteMovedPoints(const std::vector<std::array<double, 3>>& positions);

  bool SphereHandleVisibility = true;
  vtkSmartPointer<vtkPolyData> Snake;
  vtkNew<vtkActor> SnakeActor;
  vtkSmartPointer<vtkPolyData> PrevSnake;
  vtkNew<vtkActor> PrevSnakeActor;
  vtkSmartPointer<vtkPolyData> Snakes3D;
  vtkNew<vtkActor> Snakes3DActor;
  vtkSmartPointer<vtkPolyData> Gradient;
  vtkNew<vtkActor> GradientActor;
  vtkSmartPointer<vtkPolyData> FreezeGradient;
  vtkNew<vtkActor> FreezeGradientActor;

  /// For subclasses; nothing here reads it.
  int MotionMode = 2;

  int SnakeResolution = 100;
  double Radius = 0.5;
  double Center[3] = { 0.0, 0.0, 0.0 };
  vtkWeakPointer<vtkRenderer> Renderer3D;
  double Color[3] = { 0.0, 255.0, 0.0 };
  double GradientPointSize = 1.0;
  double ZCoordinate = 0.0;
  int ViewGradient = 2;
};

/// For an application's table of instantiators; the library itself never calls it.
ZVWIDGETS_EXPORT vtkObject* vtkInstantiatorzvVolumeSnakeWidgetNew();

#endif
