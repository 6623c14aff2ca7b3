#ifndef zvAreaWidget_h
#define zvAreaWidget_h

#include "zvSplineWidget.h"
#include "zvWidgetsExport.h"

#include "vtkNew.h"

class vtkFollower;
class vtkVectorText;

/// A closed curve drawn on a slice, with the area that it encloses in a label at the middle of its
/// handles. It is a zvSplineWidget but for who adds handles: here no press does. The host calls
/// AddHandle at each placing click; a click on the first handle closes the curve, enables the
/// widget and computes the area.
///
/// A host sets the interactor (SetInteractor), calls AddHandle in its own left-press handler, which
/// shows the curve as it grows, and leaves the rest to the widget. The label is in square
/// millimetres and faces the camera that the renderer has when the widget is enabled.
///
/// State    event                                        next      tells observers
/// any      left press outside the view or on nothing    Outside   -
/// any      left press on a handle, the first one too    Moving    StartInteractionEvent
/// any      left press on the line: a handle is inserted Moving    StartInteractionEvent
///          (not found again under the mouse: unchanged)
/// any      middle press on a handle or the line         Moving    StartInteractionEvent
/// any      middle press on nothing or outside the view  Outside   -
/// Moving, Scaling, Spinning   mouse move                the same  InteractionEvent
/// any but Start, Outside   left or middle release       Start     EndInteractionEvent
/// any      right press and release                      the same  -
/// any      wheel: the label is refreshed                the same  - (renders)
///
/// Each row with an event sets the abort flag and ends in a render. After a left drag no handle is
/// remembered, so a middle drag always moves the whole curve.
///
/// Deliberate: while enabled, the widget observes each mouse event twice. What its handler aborts
/// reaches it once, all else twice.
///
/// Lifetime: as zvSplineWidget; deleted, it takes the label out of the view, too.
class ZVWIDGETS_EXPORT zvAreaWidget : public zvSplineWidget
{
public:
  vtkTypeMacro(zvAreaWidget, zvSplineWidget)

  /// A new widget with one reference, from the object factory if that knows the class.
  static zvAreaWidget* New();

  /// Write the fields of the parent, then a line "Area: ".
  void PrintSelf(ostream& os, vtkIndent indent) override;

  /// The parent's lines, then "zvAreaWidget $Revision: 1.2 $".
  void CollectRevisions(ostream& os) override;

  /// As the parent's, with the label.
  void SetEnabled(int enabling) override;

  /// The area in mm^2 as it was last computed (default 0.0): when the curve was closed, and at each
  /// motion of a handle, then one motion behind. 0.0 while the curve is open.
  virtual double GetArea();

  /// Compute the area of the line as it was last sampled, that is drawn, and refresh the label. An
  /// open line has the area 0. Renders nothing.
  void CalculateArea();

  /// Write the area into the label, fit its size to the view and put it at the mean of the handles.
  /// Renders nothing.
  void UpdateAreaLabel();

  /// Append a handle at \a pos (world millimetres) and show the curve, or, if there are two handles
  /// or more and the event position is on a handle, add none: on the first handle the curve is
  /// closed, the widget enabled and the area computed. Takes the renderer under the last event
  /// position if there is none yet. State becomes Start on closing, else it is left alone. Renders
  /// after appending. Null only gives a generic warning.
  void AddHandle(double* pos);

  ///@{
  /// The handlers that differ from the parent's, see the table above.
  void OnLeftButtonDown();
  void OnLeftButtonUp();
  void OnMouseMove();
  void OnMouseWheelForward();
  void OnMouseWheelBackward();
  ///@}

  /// Calls the handler for an interactor event; \a clientdata is the widget.
  static void ProcessEvents(
    vtkObject* object, unsigned long event, void* clientdata, void* calldata);

  zvAreaWidget(const zvAreaWidget&) = delete;
  zvAreaWidget& operator=(const zvAreaWidget&) = delete;

protected:
  zvAreaWidget();
  ~zvAreaWidget() override;

  /// Close the curve, enable the widget and compute the area.
  void CloseCurve();

  /// Let the label be as high on screen as it is to be at the present zoom.
  void SizeLabel();

  /// What the wheel does.
  void RefreshLabelAfterZoom();

  vtkNew<vtkVectorText> AreaText;
  vtkNew<vtkFollower> AreaActor;
  double Area = 0.0;
};

/// For an application's table of instantiators; the library itself never calls it.
ZVWIDGETS_EXPORT vtkObject* vtkInstantiatorzvAreaWidgetNew();

#endif
