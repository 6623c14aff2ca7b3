#ifndef zv3DTreeWidget_h
#define zv3DTreeWidget_h

#include "zvWidgetsExport.h"

#include "vtk3DWidget.h"
#include "vtkNew.h"
#include "vtkSmartPointer.h"
#include "vtkWeakPointer.h"

#include <memory>
#include <vector>

class vtkActor;
class vtkCellPicker;
class vtkFollower;
class vtkLineSource;
class vtkPlaneSource;
class vtkPolyData;
class vtkProp;
class vtkProperty;
class vtkRenderWindowInteractor;
class vtkRenderer;
class vtkSphereSource;
class vtkVectorText;
class zvRawView;

/// A tree of connected points in four views at once: the slice views X, Y and Z and a 3D view. Each
/// point that is added is joined by a segment to the point that is selected at that moment, so that
/// adding from an earlier point makes a branch. The user selects and drags points and whole
/// segments in any of the views. The selected segment shows its length in millimetres, beside the
/// point in which it ends. All positions are world positions in millimetres.
///
/// A host sets the four views (SetRendererX, SetRendererY, SetRendererZ, SetRenderer3D), which must
/// be in windows with interactors, and the one that the user works in (SetCurrentRender, again
/// whenever the mouse enters another one), then calls SetEnabled(1) and adds points. Drags need a
/// current image (zvInstanceManager::SetCurrentOutput): they end at its bounds.
///
/// Ids: a point's id counts from 0, the root, in the order of adding. Point i but the root has one
/// segment that ends in it, i - 1, so that both are one selection. Nothing can be deleted but the
/// whole tree.
///
/// Two actors show the tree and two more the selection, the same in all four views. The latter are
/// seen from SetEnabled(1) on: the sphere and the line of a selection that was never made lie at
/// the world's origin. While a point or segment is dragged the selection follows the mouse.
/// Deliberate: a drag does not mark the tree as changed, so that the tree may follow no sooner than
/// with the next point that is added, and what was dragged out of the box that the tree had cannot
/// be hit until then.
///
/// State     event                                          next        tells observers
/// Inactive  any                                            Inactive    -
/// any other state:
///           left press outside the current view            Outside     -
///           left press on a point: selected                Moving      StartInteractionEvent
///           left press on a segment: selected              MovingLine  StartInteractionEvent
///           left press on nothing                          Outside     -
///           middle press in the current view               the same    StartInteractionEvent
///           middle press outside it                        Outside     -
///           right press                                    the same    -
///           right release, wheel                           the same    - (renders)
/// Moving, MovingLine
///           mouse move: drags the point or segment         the same    InteractionEvent
///           left release                                   Start       EndInteractionEvent
///           middle release                                 the same    EndInteractionEvent
///
/// Each row with an event sets the abort flag, so that observers behind the widget do not see the
/// mouse event, and renders all four views, X, Y, Z, 3D. A point wins over a segment under the
/// mouse. Only what the current view shows can be hit.
///
/// Other events: EnableEvent and DisableEvent by SetEnabled. No event has call data.
///
/// Where a view, its interactor, the current renderer or the current image is missing that an
/// operation needs, or an id is out of range, a generic warning says which, and nothing changes.
///
/// Lifetime: the widget may be deleted at any moment, enabled, in mid-drag or from its own
/// observer, before or after its views. It keeps none of them alive, and those that die count as
/// not set. Deleted, it takes its props out of all views, those that were replaced by others, too.
class ZVWIDGETS_EXPORT zv3DTreeWidget : public vtk3DWidget
{
public:
  vtkTypeMacro(zv3DTreeWidget, vtk3DWidget)

  /// A new widget with one reference, from the object factory if that knows the class.
  static zv3DTreeWidget* New();

  /// The values of State; 3 and 4 are not used. Hosts read and write them, so the numbers are
  /// fixed.
  enum WidgetState
  {
    Start = 0,
    Moving = 1,
    MovingLine = 2,
    Outside = 5,
    Inactive = 6
  };

  /// Write the fields of the parent, then those of this class, a line each.
  void PrintSelf(ostream& os, vtkIndent indent) override;

  /// "zv3DTreeWidget $Revision: 1.2 $".
  virtual void CollectRevisions(ostream& os);

  /// Show the tree and let it answer the mouse (1), or take it out of the views and off their
  /// interactors (0). The value that it has changes nothing, nor does any without an interactor,
  /// silently. The observers are those of the current view and of X, Y and Z: a 3D view is heard
  /// only if it is the current one when the widget is enabled, and an interactor that is named
  /// twice is observed twice. Invokes EnableEvent or DisableEvent and renders.
  void SetEnabled(int enabling) override;

  /// Go to another interactor, or to none. An enabled widget is disabled first.
  void SetInteractor(vtkRenderWindowInteractor* interactor) override;

  ///@{
  /// The first form does nothing: a tree is where its points are. The others work out bounds as
  /// vtk3DWidget does and end there, too.
  void PlaceWidget(double bounds[6]) override;
  void PlaceWidget() override;
  void PlaceWidget(
    double xmin, double xmax, double ymin, double ymax, double zmin, double zmax) override;
  ///@}

  ///@{
  /// One of the four views: stores the renderer and the interactor of its window, and takes no
  /// reference. What the widget shows stays where it is until it is enabled again. Null or a
  /// renderer without a window: a generic warning, and nothing changes.
  void SetRendererX(vtkRenderer* render);
  void SetRendererY(vtkRenderer* render);
  void SetRendererZ(vtkRenderer* render);
  void SetRenderer3D(vtkRenderer* render);
  ///@}

  /// The view that the user works in: presses must fall into it, picks and drags are made in it,
  /// and the label faces its camera. Writes the renderer and the interactor of its window into the
  /// widget: no reference is taken and no observer is moved. Null or a renderer without a window: a
  /// generic warning, and nothing changes.
  void SetCurrentRender(vtkRenderer* render);

  /// Set the renderer with a reference, as Clear does.
  void SetCurrentRenderer(vtkRenderer* renderer) override;

  /// Attach the widget to the mouse events of the current interactor and of X, Y and Z, at
  /// Priority. Called by SetEnabled(1); called once more, each event is answered twice.
  void AddObservers();

  /// Add a point at \a x (three coordinates) under the selected point, and select it; the first
  /// point is the root. \a index is ignored. State becomes Start. Renders. Without a selected
  /// point, or after a tree was loaded over another one: a generic warning, and nothing changes.
  void AddHandle(double* x, int index);

  /// Replace the tree by \a tree: its points, and its lines, of which line i - 1 must join another
  /// point, of a lower id, to point i. They are copied; other cells and all attributes are ignored.
  /// The last point is selected, and the label keeps the length of the selection before. State
  /// becomes Start. Renders. Null or data that are no such tree: a generic warning, and nothing
  /// changes.
  ///
  /// Call Clear first. Otherwise the points that are there stay, unseen, before the new ones; no
  /// point can be added then.
  void LoadTree(vtkPolyData* tree);

  /// Replace the contents of \a tree by a copy of the points and lines, for saving; LoadTree reads
  /// it back to the same tree. Null: a generic warning. Renders nothing.
  void GetTree(vtkPolyData* tree);

  /// Disable the widget and start with an empty tree, which SetEnabled(1) shows. Without an
  /// interactor and a renderer under the last event position nothing is emptied. What is selected
  /// stays selected by its number. Renders.
  void Clear();

  /// Select point \a index and the segment that ends in it. -1 deselects both, takes the selection
  /// and the label out of the views, and gives 0; else 1, or 0 out of range, with a generic
  /// warning. Deliberate: 0, the root, only shows the sphere there, without line and label. The
  /// selection for AddHandle and drags stays the one before. Renders nothing.
  int HighlightHandle(int index);

  /// Select segment \a index and the point in which it ends, with the same results; the label is
  /// left alone, also by -1. Renders nothing.
  int HighlightLine(int index);

  ///@{
  /// Move the selected point or segment by the way from \a p1 to \a p2, at most to the bounds of
  /// the current image; each end of a segment is limited by itself. Refreshes the label and
  /// renders. A point is moved to where the sphere of the selection then is.
  void MovePoint(double* p1, double* p2);
  void MoveLine(double* p1, double* p2);
  ///@}

  /// Let the label show the length of the selected segment at its end, one millimetre toward the
  /// viewer; 0 for \a index takes the label out of the views. Other values do not matter. Renders.
  void SetTextToActorPosition(int index);

  /// Whether a point or a segment is at the current interactor's event position: 1 or 0. Its number
  /// becomes the selected one (that of a point, or of a segment alone), but nothing is shown.
  int IsClicked();

  /// Always 0.
  int IsLine();

  ///@{
  /// The interaction state, a value of WidgetState. Stored as it is.
  int GetState();
  void SetState(int state);
  ///@}

  /// Let the mouse alone (not 0), or listen again (0): State becomes Inactive or Start.
  void StopInteraction(int stop);

  /// Whether State is Inactive.
  bool IsInactive();

  /// Whether the widget is enabled.
  bool IsEnabled();

  /// Where the sphere of the selection is, whatever \a handle is. Below 0: the error
  /// "zv3DTreeWidget: handle index out of range.", and null.
  double* GetHandlePosition(int handle);

  /// Deliberate: writes nothing into \a xyz. Below 0: the same error.
  void GetHandlePosition(int handle, double xyz[3]);

  ///@{
  /// Deliberate: move nothing. Below 0: the same error.
  void SetHandlePosition(int handle, double x, double y, double z);
  void SetHandlePosition(int handle, double xyz[3]);
  ///@}

  ///@{
  /// Do nothing: a tree has no delete, its segments are not split and its label keeps its size.
  void RemovePointSelected();
  void InsertHandleOnLine(double* coord);
  void UpdateScaleLabel();
  ///@}

  ///@{
  /// Whether points are to be projected (default 0). Calls Modified on a change; moves nothing.
  virtual void SetProjectToPlane(int project);
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
  /// A position in millimetres (default 0.0), stored and printed. Does not call Modified.
  void SetProjectionPosition(double position);
  virtual double GetProjectionPosition();
  ///@}

  /// Stored without a reference, and without effect (default null).
  void SetPlaneSource(vtkPlaneSource* plane);

  ///@{
  /// Do nothing.
  void ProjectPointsToPlane();
  void ProjectPointsToOrthoPlane();
  ///@}

  ///@{
  /// The look of the points and of the sphere of the selection, applied when the widget is next
  /// enabled. A reference is taken, null is allowed, Modified is called on a change.
  virtual void SetHandleProperty(vtkProperty* property);
  virtual vtkProperty* GetHandleProperty();
  virtual void SetSelectedHandleProperty(vtkProperty* property);
  virtual vtkProperty* GetSelectedHandleProperty();
  ///@}

  /// Make those properties that are null, in their default colours: points (1, 0, 0), the selected
  /// one (0, 1, 1), segments (1, 1, 0), the selected one (0, 1, 0.2).
  void CreateDefaultProperties();

  /// Does nothing: points are drawn in pixels, the sphere of the selection has a fixed radius.
  void SizeHandles() override;

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

  zv3DTreeWidget(const zv3DTreeWidget&) = delete;
  zv3DTreeWidget& operator=(const zv3DTreeWidget&) = delete;

protected:
  zv3DTreeWidget();
  ~zv3DTreeWidget() override;

  /// Take a reference to another property and call Modified.
  void ReplaceProperty(vtkSmartPointer<vtkProperty>& field, vtkProperty* property);

  ///@{
  /// Make an empty tree, in new data and actors, and new parts of the selection.
  void BuildPoints();
  void BuildLines();
  ///@}

  /// Store one of the four views, or say that it cannot be the one of this name.
  void StoreView(const char* name, vtkRenderer* render, vtkWeakPointer<vtkRenderer>& renderer,
    vtkWeakPointer<vtkRenderWindowInteractor>& interactor);

  ///@{
  /// Whether the four views, or the current one, are there; if not, say which is missing \a before.
  bool HasViews(const char* before);
  bool HasCurrentView(const char* before);
  ///@}

  ///@{
  /// Whether there is such a point or segment; if not, say so.
  bool HasPoint(int index);
  bool HasSegment(int index);
  ///@}

  /// Whether a handle has a number that is allowed; an error says if not.
  bool AcceptsHandle(int handle);

  ///@{
  /// Whether a point can be added, or \a tree be loaded, now; a generic warning says why not.
  bool CanAdd(const double* x);
  bool CanLoad(vtkPolyData* tree);
  ///@}

  /// Make the renderer under the last event position the current one, if there is none yet.
  /// \return whether there is one now.
  bool TakePokedRenderer();

  ///@{
  /// Put a prop into the four views, or take it out, or the whole tree with its selection, in the
  /// last form also out of views that the host has replaced. Views that are missing are skipped.
  void ShowInViews(vtkProp* prop);
  void HideInViews(vtkProp* prop);
  void HideTree();
  void TakeOutOfAllViews();
  void RenderViews();
  ///@}

  ///@{
  /// What SetEnabled is made of.
  void Show();
  void Hide();
  ///@}

  /// Join point \a index, which is at \a x, to the selected one, and move the selection there.
  void JoinToSelection(int index, const double x[3]);

  ///@{
  /// Move the sphere and the line of the selection.
  void MoveSelectionTo(const double parent[3], const double child[3]);
  void MoveSelectionToSegment(int index);
  void MoveSelectionToRoot();
  ///@}

  ///@{
  /// What selecting is made of; the views must be there, and for a label the current one.
  void ShowRoot();
  void ShowSegment(int index);
  void ShowLabel();
  void Deselect();
  ///@}

  /// The bounds for a motion from \a p1 to \a p2, if everything is there that it needs; if not, say
  /// what is missing \a before.
  bool FindDragBounds(const char* before, const double* p1, const double* p2, double bounds[6]);

  /// Write a point to both sets of points. Deliberate: neither is marked as modified.
  void WritePoint(vtkIdType id, const double position[3]);

  /// Whether moves and releases are none of ours.
  bool IsIdle() const;

  ///@{
  /// What handlers are made of. Each step bears that an observer has disabled the widget or taken
  /// its interactor in the step before.
  bool Pick(vtkCellPicker* picker); ///< at the event position; \return whether it hit
  bool GrabUnderPointer();          ///< \return false if the press is not ours
  void FollowWheel();
  void BeginInteraction();  ///< abort, StartInteractionEvent, render
  void TellMotion();        ///< abort, InteractionEvent, render
  void FinishInteraction(); ///< abort, EndInteractionEvent, render
  ///@}

  int State = Start;
  int ProjectionNormal = 0;
  double ProjectionPosition = 0.0;
  int ProjectToPlane = 0;
  vtkWeakPointer<vtkPlaneSource> PlaneSource;

  ///@{
  /// The tree: a vertex for each point, and a line for each segment over its own copy of the points
  /// under the same ids.
  vtkSmartPointer<vtkPolyData> TreePoints;
  vtkSmartPointer<vtkPolyData> TreeLines;
  vtkSmartPointer<vtkActor> LinesActor;
  vtkSmartPointer<vtkActor> PointsActor;
  ///@}

  ///@{
  /// Their lists hold PointsActor and LinesActor: nothing else can be hit.
  vtkSmartPointer<vtkCellPicker> PointPicker;
  vtkSmartPointer<vtkCellPicker> LinePicker;
  ///@}

  /// Only ever cleared; not owned.
  vtkProp* CurrentHandle = nullptr;

  ///@{
  /// What shows the selection.
  vtkSmartPointer<vtkActor> SelectedPointActor;
  vtkSmartPointer<vtkSphereSource> SelectedPointSource;
  vtkSmartPointer<vtkActor> SelectedLineActor;
  vtkSmartPointer<vtkLineSource> SelectedLineSource;
  ///@}

  ///@{
  /// The selected point and segment, -1 for none.
  int CurrentPoint = -1;
  int CurrentLine = -1;
  ///@}

  vtkSmartPointer<vtkProperty> HandleProperty;
  vtkSmartPointer<vtkProperty> SelectedHandleProperty;
  vtkSmartPointer<vtkProperty> LineProperty;
  vtkSmartPointer<vtkProperty> SelectedLineProperty;

  /// Whether operations write a trace; nothing but a subclass raises it.
  bool DebugMode = false;

  ///@{
  /// The views; not kept alive.
  vtkWeakPointer<vtkRenderer> Renderer3D;
  vtkWeakPointer<vtkRenderer> RendererX;
  vtkWeakPointer<vtkRenderer> RendererY;
  vtkWeakPointer<vtkRenderer> RendererZ;
  vtkWeakPointer<vtkRenderWindowInteractor> Interactor3D;
  vtkWeakPointer<vtkRenderWindowInteractor> InteractorX;
  vtkWeakPointer<vtkRenderWindowInteractor> InteractorY;
  vtkWeakPointer<vtkRenderWindowInteractor> InteractorZ;
  ///@}

  ///@{
  /// The label.
  vtkNew<vtkVectorText> TextSource;
  vtkNew<vtkFollower> TextActor;
  ///@}

private:
  /// The account of what SetCurrentRender wrote.
  std::unique_ptr<zvRawView> RawView;

  /// Every interactor that the event command was attached to.
  std::vector<vtkWeakPointer<vtkObject>> Observed;
};

/// For an application's table of instantiators; the library itself never calls it.
ZVWIDGETS_EXPORT vtkObject* vtkInstantiatorzv3DTreeWidgetNew();

#endif
