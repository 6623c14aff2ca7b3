#ifndef zvSeedWidget_h
#define zvSeedWidget_h

#include "zvWidgetsExport.h"

#include "vtk3DWidget.h"
#include "vtkNew.h"
#include "vtkSmartPointer.h"
#include "vtkWeakPointer.h"

#include <memory>
#include <vector>

class vtkCellPicker;
class vtkCollection;
class vtkPlaneSource;
class vtkProp;
class vtkProperty;
class vtkRenderWindowInteractor;
class vtkRenderer;
class vtkSphereSource;
class zvRawView;

/// An ordered set of seed points, each a small sphere in four views at once: the slice views X, Y
/// and Z and a 3D view. The user selects a seed in a slice view and drags it there; the host adds,
/// erases and lists seeds. All positions are world positions in millimetres.
///
/// A host gives it the four views (SetRendererX, SetRendererY, SetRendererZ, Set3DRender), each a
/// renderer in a window of its own with an interactor, then the current one (SetCurrentRender), and
/// calls SetEnabled(1). zvInstanceManager holds the image whose bounds limit a drag. The current
/// renderer is the one whose presses count, in which is picked, whose camera turns the motion of
/// the mouse into one in the world, and for which the spheres are sized; a host sets it again when
/// the mouse comes into another view. It has no say in where seeds are shown.
///
/// The index of a seed is its place in the order of adding; behind an erased one they move down by
/// one. A seed has two actors: one in all three slice views, which alone can be hit, and one in the
/// 3D view. The selected seed has the selected look (default (0, 1, 1)), all others the normal one
/// (default (1, 0, 0)). A sphere's radius is 0.7 of the size that vtk3DWidget gives handles.
///
/// State   event                                          next      tells observers
/// any     left press on a seed, which selects it         Moving    StartInteractionEvent
/// any     left press beside all or outside the view      Outside   -
/// Moving  mouse move: the seed follows, in the image     Moving    InteractionEvent
/// Moving  left release                                   Start     EndInteractionEvent
/// any     right release, wheel: sizes the spheres        the same  -
/// any     middle press and release, right press          the same  - (deliberate: the host's)
/// Start,  mouse move, left release                       the same  -
/// Outside
///
/// Each row with an event sets the abort flag, so that observers behind the widget do not see the
/// mouse event, and ends in a render of the four views in the order X, Y, Z, 3D; so do the right
/// release and the wheel, without the flag. Outside is left by the next press on a seed, and by
/// AddHandle. A state that SetState wrote and that is none of the above counts as one of dragging
/// that moves nothing.
///
/// Other events: EnableEvent and DisableEvent by SetEnabled. No event has call data.
///
/// Errors: an operation that needs a view, an interactor, an image or a seed that is not there, or
/// that is given null for a position or bounds, writes one generic warning that says which, and
/// changes nothing.
///
/// Lifetime: the widget may be deleted at any moment, enabled, in mid-drag or from its own
/// observer, before or after its views. It only refers to the views; one that dies counts as not
/// set, and what can be done without it is done. Deleted, the seeds are taken out of all views.
class ZVWIDGETS_EXPORT zvSeedWidget : public vtk3DWidget
{
public:
  vtkTypeMacro(zvSeedWidget, vtk3DWidget)

  /// A new widget with one reference, from the object factory if that knows the class.
  static zvSeedWidget* New();

  /// The values of State; the numbers are fixed.
  enum WidgetState
  {
    Start = 0,
    Moving = 1,
    Outside = 4
  };

  /// Write the fields of the parent, both properties and the three fields of the projection.
  void PrintSelf(ostream& os, vtkIndent indent) override;

  /// "zvSeedWidget $Revision: 1.2 $".
  virtual void CollectRevisions(ostream& os);

  /// Show the seeds and let them answer the mouse (1), or take them out of the views and off the
  /// interactors (0). The value it has changes nothing. Enabling needs the four views; without a
  /// current renderer the one under the last event position is taken. Enabled again, no seed looks
  /// selected, while the index that IsClicked and MovePoint go by stays. Invokes EnableEvent or
  /// DisableEvent and renders the four views.
  void SetEnabled(int enabling) override;

  /// Go to another interactor, or to none. An enabled widget is disabled first.
  void SetInteractor(vtkRenderWindowInteractor* interactor) override;

  ///@{
  /// Spread the seeds along the diagonal of \a bds (xmin, xmax, ymin, ymax, zmin, zmax), scaled by
  /// PlaceFactor (default 1.0), from its low to its high corner, unless ProjectToPlane is on.
  /// Deliberate: the spheres of the 3D view stay, and a single seed goes to a position that is not
  /// a number. The diagonal also gives the size of spheres before the first selection. The other
  /// forms work out bounds as vtk3DWidget does. Renders nothing.
  void PlaceWidget(double* bds) override;
  void PlaceWidget() override;
  void PlaceWidget(
    double xmin, double xmax, double ymin, double ymax, double zmin, double zmax) override;
  ///@}

  /// Size all spheres for the current renderer at the depth of the last pick. Renders nothing.
  void SizeHandles() override;

  ///@{
  /// Kept for hosts that share code with other widgets: seeds are never projected.
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
  /// The looks of a seed at rest and of the selected one. Seeds take a new one when the selection
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
  /// and nothing changes. Seeds that are shown stay in the view that is left.
  void SetRendererX(vtkRenderer* render);
  void SetRendererY(vtkRenderer* render);
  void SetRendererZ(vtkRenderer* render);
  void Set3DRender(vtkRenderer* render);
  ///@}

  /// The current renderer, one of the four or another. It and the interactor of its window are
  /// written into the widget: no reference is taken, no observer is moved, Modified is not called.
  /// The same errors.
  void SetCurrentRender(vtkRenderer* render);

  /// Set the current renderer with a reference, as SetEnabled does.
  void SetCurrentRenderer(vtkRenderer* renderer) override;

  /// Add a seed at \a x (three coordinates) behind the others, show it, whether or not the widget
  /// is enabled, and select it. State becomes Start. The int is ignored. Renders the four views,
  /// which must be set.
  void AddHandle(double* x, int);

  /// Erase the selected seed. The index that was selected stays, and then means another seed or
  /// none. Without a selection: the line "No seed selected to delete!" on the standard output.
  /// Renders the four views.
  void EraseHandle();

  /// Remove all seeds and render the four views. Without an interactor or a renderer they stay to
  /// be seen, but are seeds no longer.
  void Clear();

  ///@{
  /// Move a seed, in both kinds of views, to any position: the image is no limit. Renders nothing.
  /// A negative index: the error "zvSeedWidget: handle index out of range."; one that is too large
  /// a generic warning.
  void SetHandlePosition(int handle, double x, double y, double z);
  void SetHandlePosition(int handle, double xyz[3]);
  ///@}

  ///@{
  /// Where a seed is in the slice views. With the errors of SetHandlePosition \a xyz stays as it
  /// is, and null is returned. What is returned belongs to the widget, until the seed goes.
  void GetHandlePosition(int handle, double xyz[3]);
  double* GetHandlePosition(int handle);
  ///@}

  ///@{
  /// Let a seed look selected, and all others not, and make it what EraseHandle and a drag are
  /// about. \return its index, or -1 if there is no such seed. Null or an index that no seed has
  /// leaves the looks as they are. Changes no index, renders nothing.
  int HighlightHandle(vtkProp* prop);
  int HighlightHandle(int index);
  ///@}

  /// Select the seed at \a index and render the four views; an index that no seed has leaves none
  /// selected. Deliberate: -1 does nothing at all.
  void SetCurrentActorIndex(int index);

  /// Whether any seed is at the interactor's event position in the current renderer: 1 or 0.
  /// Deliberate: 0 as long as no seed was selected. Changes nothing.
  int IsClicked();

  ///@{
  /// The state, any number. Writing it changes nothing else.
  int GetState();
  void SetState(int state);
  ///@}

  /// Move the seed of the selected index by the way from \a p1 to \a p2. At the faces of the
  /// current image it stops, and slides along. Renders nothing.
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

  /// Make those properties that are null, in their default colours.
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

  zvSeedWidget(const zvSeedWidget&) = delete;
  zvSeedWidget& operator=(const zvSeedWidget&) = delete;

protected:
  zvSeedWidget();
  ~zvSeedWidget() override;

  ///@{
  /// What SetEnabled is made of.
  void Show();
  void Hide();
  ///@}

  ///@{
  /// Put all seeds into their views, or take them out.
  void AddSeedsToViews();
  void RemoveSeedsFromViews();
  ///@}

  /// Take a reference to another property and call Modified.
  void ReplaceProperty(vtkSmartPointer<vtkProperty>& field, vtkProperty* property);

  /// Take one seed out of everything, by its slice actor.
  void EraseSeed(vtkProp* sliceActor);

  /// Store one of the four views, which a message calls \a name.
  void StoreView(const char* name, vtkRenderer* render, vtkWeakPointer<vtkRenderer>& renderer,
    vtkWeakPointer<vtkRenderWindowInteractor>& interactor);

  /// Whether the four views are there; if not, say which is missing \a before.
  bool HasViews(const char* before);

  /// Whether there is a seed at \a index; if not, say so.
  bool HasSeed(int index);

  /// The spheres of a seed that is there.
  void MoveSeed(int index, const double center[3]);

  /// The radius of spheres, in millimetres.
  double GetRadius();

  /// Select the seed at \a index, or let all look unselected.
  int HighlightSeed(int index);

  /// The prop under the event position, or null.
  vtkProp* PickSeed();

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

  /// Its list holds the slice actors: nothing else can be hit.
  vtkSmartPointer<vtkCellPicker> HandlePicker;

  /// The slice actor of the selected seed.
  vtkWeakPointer<vtkProp> CurrentHandle;
  int CurrentActorIndex = -1;

  vtkSmartPointer<vtkProperty> HandleProperty;
  vtkSmartPointer<vtkProperty> SelectedHandleProperty;

  /// Items of the same index are the same seed's.
  vtkNew<vtkCollection> HandleActors;
  vtkNew<vtkCollection> HandleSources;
  vtkNew<vtkCollection> HandleActors3D;
  vtkNew<vtkCollection> HandleSources3D;

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

private:
  /// The account of what SetCurrentRender wrote.
  std::unique_ptr<zvRawView> RawView;

  /// Every interactor that the event command was attached to.
  std::vector<vtkWeakPointer<vtkObject>> Observed;
};

/// For an application's table of instantiators; the library itself never calls it.
ZVWIDGETS_EXPORT vtkObject* vtkInstantiatorzvSeedWidgetNew();

#endif
