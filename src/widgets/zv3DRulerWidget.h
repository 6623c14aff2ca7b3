#ifndef zv3DRulerWidget_h
#define zv3DRulerWidget_h

#include "zvWidgetsExport.h"

#include "vtk3DWidget.h"
#include "vtkNew.h"
#include "vtkSmartPointer.h"
#include "vtkWeakPointer.h"

#include <memory>
#include <string>
#include <vector>

class vtkActor;
class vtkCellPicker;
class vtkCollection;
class vtkFollower;
class vtkLineSource;
class vtkPlaneSource;
class vtkProp;
class vtkProperty;
class vtkRenderWindowInteractor;
class vtkRenderer;
class vtkSphereSource;
class vtkVectorText;
class zvRawView;

/// A ruler along a chain of points, shown in four views at once: the slice views X, Y and Z and a
/// 3D view. Each point is a small sphere, consecutive ones are joined by a segment, and one label
/// shows the length of the segment that ends in the selected point ("%10.2lf mm"; for point 0 that
/// of segment 0). In all views it faces the camera of the view that was the current one when a
/// point was last added or inserted. Points and segments can be hit in all four views. All
/// positions are world positions in millimetres.
///
/// A host gives it the four views (SetRendererX, SetRendererY, SetRendererZ, SetRenderer3D), each a
/// renderer in a window of its own with an interactor, then the current one (SetCurrentRender), and
/// calls SetEnabled(1). zvInstanceManager holds the image whose bounds limit a drag. The current
/// renderer is the one whose presses count, in which is picked, whose camera turns the motion of
/// the mouse into one in the world, before whose viewer the label is placed, and for which spheres
/// and label are sized; a host sets it again when the mouse comes into another view.
///
/// Points are numbered along the chain from 0; segment i joins the points i and i + 1. There is one
/// selected point and one selected segment, and they are independent; what was selected last is the
/// one that RemovePointSelected is about. Looks: a point (1, 0, 0), selected (0, 1, 1); a segment
/// (1, 1, 0), selected (0, 1, 0.2), both 2 pixels wide. A sphere's radius is 0.7 of the size that
/// vtk3DWidget gives handles, the label's letters have the whole size.
///
/// State   event                                           next      tells observers
/// any     left press on a point: selects it and the       Moving    StartInteractionEvent
///         segment that ends in it
/// any     left press on a segment: selects it             the same  StartInteractionEvent
/// any     left press beside all: selects nothing          Outside   -
/// any     left or middle press outside the view           Outside   -
/// any     middle press in the view, also beside all       Moving    StartInteractionEvent
/// any     the same with the control key                   the same  StartInteractionEvent
/// Moving  mouse move: the selected point follows, in      Moving    InteractionEvent
///         the image, with its segments and the label
/// Moving  left or middle release                          Start     EndInteractionEvent
/// any     right release, wheel: sizes the spheres         the same  -
/// any     right press                                     the same  - (deliberate: the host's)
/// Start,  mouse move, release                             the same  -
/// Outside
///
/// Each row with an event sets the abort flag, so that observers behind the widget do not see the
/// mouse event, and ends in a render of the four views in the order X, Y, Z, 3D; so do the right
/// release and the wheel, without the flag. A press on a segment from Start or Outside has no end
/// event: a segment cannot be dragged. AddHandle goes to Start. A state that SetState wrote and
/// that is none of the above counts as one of dragging that moves nothing.
///
/// Other events: EnableEvent and DisableEvent by SetEnabled. No event has call data.
///
/// Errors: an operation that needs a view, an interactor, an image, a point or a segment that is
/// not there, or that is given null for a position or bounds, writes one generic warning that says
/// which, and changes nothing, unless it says otherwise.
///
/// Lifetime: the widget may be deleted at any moment, enabled, in mid-drag or from its own
/// observer, before or after its views. It only refers to the views; one that dies counts as not
/// set, and what can be done without it is done. Deleted, the ruler is taken out of all views.
class ZVWIDGETS_EXPORT zv3DRulerWidget : public vtk3DWidget
{
public:
  vtkTypeMacro(zv3DRulerWidget, vtk3DWidget)

  /// A new widget with one reference, from the object factory if that knows the class.
  static zv3DRulerWidget* New();

  /// The values of State; the numbers are fixed.
  enum WidgetState
  {
    Start = 0,
    Moving = 1,
    Outside = 4
  };

  /// Write the fields of the parent, the properties of points and the three fields of the
  /// projection.
  void PrintSelf(ostream& os, vtkIndent indent) override;

  /// "zv3DRulerWidget $Revision: 1.2 $".
  virtual void CollectRevisions(ostream& os);

  /// Show the ruler and let it answer the mouse (1), or take points and segments out of the views,
  /// hide the label and leave the interactors (0). Does nothing without an interactor, and for the
  /// value it has. Enabling needs the four views. Enabled again, nothing looks selected. Invokes
  /// EnableEvent or DisableEvent and renders the four views.
  void SetEnabled(int enabling) override;

  /// Go to another interactor, or to none. An enabled widget is disabled first.
  void SetInteractor(vtkRenderWindowInteractor* interactor) override;

  ///@{
  /// Spread the points along the diagonal of \a bds (xmin, xmax, ymin, ymax, zmin, zmax), scaled by
  /// PlaceFactor (default 1.0), from its low to its high corner, unless ProjectToPlane is on.
  /// Deliberate: segments and label stay, and a single point goes to a position that is not a
  /// number. The diagonal also gives the sizes before the first selection. The other forms work out
  /// bounds as vtk3DWidget does. Renders nothing.
  void PlaceWidget(double* bds) override;
  void PlaceWidget() override;
  void PlaceWidget(
    double xmin, double xmax, double ymin, double ymax, double zmin, double zmax) override;
  ///@}

  /// Size all spheres for the current renderer at the depth of the last pick; the label keeps its
  /// size until it is refreshed. Renders nothing.
  void SizeHandles() override;

  ///@{
  /// Kept for hosts that share code with other widgets: points are never projected.
  virtual void SetProjectToPlane(int on);
  virtual int GetProjectToPlane();
  virtual void ProjectToPlaneOn();
  virtual void ProjectToPlaneOff();
  ///@}

  ///@{
  /// Always 0, whatever is set.
  virtual void SetProjectionNormal(int normal);
  virtual int GetProjectionNormalMinValue();
  virtual int GetProjectionNormalMaxValue();
  virtual int GetProjectionNormal();
  ///@}

  ///@{
  /// Stored and printed, without further effect (default 0.0).
  void SetProjectionPosition(double position);
  virtual double GetProjectionPosition();
  ///@}

  ///@{
  /// The looks of a point at rest and of the selected one. Points take a new one when the selection
  /// changes. With null they take VTK's default look.
  virtual void SetHandleProperty(vtkProperty* property);
  virtual vtkProperty* GetHandleProperty();
  virtual void SetSelectedHandleProperty(vtkProperty* property);
  virtual vtkProperty* GetSelectedHandleProperty();
  ///@}

  /// Stored, not owned and without effect. Does not call Modified.
  void SetPlaneSource(vtkPlaneSource* plane);

  ///@{
  /// The views. No reference is taken. Null or a renderer that is in no window: a generic warning,
  /// and nothing changes. What is shown stays in the view that is left.
  void SetRendererX(vtkRenderer* render);
  void SetRendererY(vtkRenderer* render);
  void SetRendererZ(vtkRenderer* render);
  void SetRenderer3D(vtkRenderer* render);
  ///@}

  /// The current renderer, one of the four or another. It and the interactor of its window are
  /// written into the widget: no reference is taken, no observer is moved, Modified is not called.
  /// The same errors.
  void SetCurrentRender(vtkRenderer* render);

  /// Set the current renderer with a reference, as Clear does.
  void SetCurrentRenderer(vtkRenderer* renderer) override;

  /// Append a point at \a x (three coordinates), with the segment to it and the label, show them,
  /// whether or not the widget is enabled, and select them. State becomes Start. The int is
  /// ignored. Renders the four views, which must be set, from the second point on with the current
  /// one.
  void AddHandle(double* x, int);

  /// Split the selected segment at \a coord and select the new point. The selected segment keeps
  /// its index and ends in the new point. Renders the four views, which must be set, with the
  /// current one.
  void InsertHandleOnLine(double* coord);

  /// Remove the selected point. The chain closes over an inner one, and gets shorter by the first
  /// or last; the label goes with the second last point. Then no point is selected, while the index
  /// of the selected point stays, and the segment two before that index is selected. Nothing is
  /// removed while a segment is what was selected last. Without a selection: the line "No 3D Ruler
  /// selected to delete!" on the standard output. Renders the four views.
  void RemovePointSelected();

  /// Remove everything and render the four views. Without an interactor or a renderer it stays to
  /// be seen. Deliberate: the widget counts as disabled, but its observers stay, so that enabled
  /// again it answers twice what sets no abort flag; the selected indices stay, too.
  void Clear();

  ///@{
  /// Move the sphere of a point to any position: the image is no limit, and segments and label stay
  /// where they were. Renders nothing. A negative index: the error "zv3DRulerWidget: handle index
  /// out of range."; one that is too large a generic warning.
  void SetHandlePosition(int handle, double x, double y, double z);
  void SetHandlePosition(int handle, double xyz[3]);
  ///@}

  ///@{
  /// Where a point is. With the errors of SetHandlePosition \a xyz stays as it is, and null is
  /// returned. What is returned belongs to the widget, until the point goes.
  void GetHandlePosition(int handle, double xyz[3]);
  double* GetHandlePosition(int handle);
  ///@}

  ///@{
  /// Let a point look selected and all others not, and make it what was selected last. \return its
  /// index, or -1 if there is no such point: then all look unselected. Changes no index, renders
  /// nothing.
  int HighlightHandle(vtkProp* prop);
  int HighlightHandle(int index);
  ///@}

  ///@{
  /// The same for segments.
  int HighlightLine(vtkProp* prop);
  int HighlightLine(int index);
  ///@}

  /// Select the point at \a index, refresh the label for it and render the four views; an index
  /// that no point has leaves none selected and takes the label out of the views. Deliberate: -1
  /// does nothing at all.
  void SetCurrentActorIndex(int index);

  /// Let the label tell the length of the segment that ends in the point at \a index, at its end,
  /// one millimetre towards the viewer; for 0 that of segment 0, which is highlighted. Highlights
  /// the point. Without such a segment the label is taken out of the views; for 0 nothing changes.
  /// Renders nothing.
  void SetTextToActorPosition(int index);

  /// The same for the point with an actor, but nothing is highlighted: \a prop only becomes what
  /// was selected last. Without such a point or segment the label stays.
  void SetTextToActorPosition(vtkProp* prop);

  /// Deliberately empty.
  void UpdateScaleLabel();

  /// The chain in one line: a blank; for each point its x, y and z, the distance to the point
  /// before and that along the chain, in millimetres with two decimals and each followed by a
  /// blank; and the index of the selected point.
  std::string GetStringCoordinate();

  /// Whether any point is at the interactor's event position in the current renderer: 1 or 0.
  /// Deliberate: 0 as long as no point was selected. Changes nothing.
  int IsClicked();

  /// The same for segments.
  int IsLine();

  ///@{
  /// The state, any number. Writing it changes nothing else.
  int GetState();
  void SetState(int state);
  ///@}

  /// Move the point of the selected index by the way from \a p1 to \a p2, with its segments and the
  /// label. At the faces of the current image it stops, and slides along. Renders nothing. Without
  /// a current renderer only the label stays.
  void MovePoint(double* p1, double* p2);

  ///@{
  /// Deliberately empty.
  void ProjectPointsToPlane();
  void ProjectPointsToOrthoPlane();
  ///@}

  /// Attach the widget to the mouse events of Interactor, InteractorX, InteractorY and InteractorZ
  /// at Priority. Deliberate: the interactor of the current renderer, when that is a slice view, is
  /// observed twice, and those of its events that set no abort flag are answered twice. The 3D view
  /// is observed only if it is the current one.
  void AddObservers();

  /// Make those properties that are null, with their default looks.
  void CreateDefaultProperties();

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

  zv3DRulerWidget(const zv3DRulerWidget&) = delete;
  zv3DRulerWidget& operator=(const zv3DRulerWidget&) = delete;

protected:
  zv3DRulerWidget();
  ~zv3DRulerWidget() override;

  ///@{
  /// What SetEnabled is made of.
  void Show();
  void Hide();
  ///@}

  ///@{
  /// In the order in which props are put into the views, and in which they are taken out.
  void AddToViews(vtkProp* prop);
  void RemoveFromViews(vtkProp* prop);
  ///@}

  /// Take a reference to another property and call Modified.
  void ReplaceProperty(vtkSmartPointer<vtkProperty>& field, vtkProperty* property);

  /// Take all points and segments out of the views.
  void RemoveChainFromViews();

  /// Show the label in all views, turned to the current one.
  void ShowLabel();

  /// Let the label tell the length of a segment, at its end.
  void WriteLabel(vtkLineSource* segment);

  /// Store one of the four views, which a message calls \a name.
  void StoreView(const char* name, vtkRenderer* render, vtkWeakPointer<vtkRenderer>& renderer,
    vtkWeakPointer<vtkRenderWindowInteractor>& interactor);

  ///@{
  /// Whether something is there; if not, say which is missing.
  bool HasViews(const char* before);
  bool HasCurrentView(const char* before);
  bool HasPoint(int index);
  ///@}

  int GetNumberOfPoints();
  vtkSphereSource* PointAt(int index);
  vtkLineSource* SegmentAt(int index);

  /// The actor of a new point at a position, in the collections behind index \a after.
  vtkSmartPointer<vtkActor> InsertPoint(int after, const double position[3]);

  /// The actor of a new segment, likewise.
  vtkSmartPointer<vtkActor> InsertSegment(int after, const double p1[3], const double p2[3]);

  ///@{
  /// Take a point or a segment out of everything.
  void ErasePoint(int index);
  void EraseSegment(int index);
  ///@}

  /// Close the chain over the point at \a index. \return the segment that is not needed any more,
  /// or -1.
  int BypassPoint(int index);

  ///@{
  /// Select what is at the index, or let all look unselected.
  int HighlightPointAt(int index);
  int HighlightSegmentAt(int index);
  ///@}

  /// A part of the size of handles, in millimetres.
  double GetSize(double factor);

  /// The prop under the event position that \a picker hits, or null.
  vtkProp* Pick(vtkCellPicker* picker);

  /// Render X, Y, Z and 3D.
  void RenderViews();

  ///@{
  /// Set the abort flag, tell, render. Each bears that an observer has taken the interactor.
  void BeginInteraction();
  void TellMotion();
  void FinishInteraction();
  ///@}

  int State = Start;
  int ProjectionNormal = 0;
  double ProjectionPosition = 0.0;
  int ProjectToPlane = 0;
  vtkWeakPointer<vtkPlaneSource> PlaneSource;

  ///@{
  /// Their lists hold the actors of the points and of the segments.
  vtkSmartPointer<vtkCellPicker> PointPicker;
  vtkSmartPointer<vtkCellPicker> LinePicker;
  ///@}

  /// The actor that was selected last, of a point or a segment.
  vtkWeakPointer<vtkProp> CurrentHandle;
  int CurrentPoint = -1;
  int CurrentLine = -1;

  vtkSmartPointer<vtkProperty> HandleProperty;
  vtkSmartPointer<vtkProperty> SelectedHandleProperty;
  vtkSmartPointer<vtkProperty> LineProperty;
  vtkSmartPointer<vtkProperty> SelectedLineProperty;

  ///@{
  /// Items of the same index are the same point's, or the same segment's.
  vtkNew<vtkCollection> HandleActors;
  vtkNew<vtkCollection> HandleSources;
  vtkNew<vtkCollection> LineActors;
  vtkNew<vtkCollection> LineSources;
  ///@}

  /// Whether operations write a trace; nothing but a subclass raises it.
  bool DebugMode = false;

  vtkWeakPointer<vtkRenderer> Renderer3D;
  vtkWeakPointer<vtkRenderer> RendererX;
  vtkWeakPointer<vtkRenderer> RendererY;
  vtkWeakPointer<vtkRenderer> RendererZ;
  vtkWeakPointer<vtkRenderWindowInteractor> Interactor3D;
  vtkWeakPointer<vtkRenderWindowInteractor> InteractorX;
  vtkWeakPointer<vtkRenderWindowInteractor> InteractorY;
  vtkWeakPointer<vtkRenderWindowInteractor> InteractorZ;

  vtkNew<vtkVectorText> TextSource;
  vtkNew<vtkFollower> TextActor;

private:
  /// The account of what SetCurrentRender wrote.
  std::unique_ptr<zvRawView> RawView;

  /// Every interactor that the event command was attached to.
  std::vector<vtkWeakPointer<vtkObject>> Observed;
};

/// For an application's table of instantiators; the library itself never calls it.
ZVWIDGETS_EXPORT vtkObject* vtkInstantiatorzv3DRulerWidgetNew();

#endif
