#ifndef zvImagePlaneWidget_h
#define zvImagePlaneWidget_h

#include "zvWidgetsExport.h"

#include "vtkPolyDataSourceWidget.h"
#include "vtkSmartPointer.h"
#include "vtkWeakPointer.h"

class vtkAbstractPropPicker;
class vtkActor;
class vtkCubeSource;
class vtkCutter;
class vtkImageData;
class vtkImageMapToColors;
class vtkImageReslice;
class vtkLookupTable;
class vtkMatrix4x4;
class vtkPlane;
class vtkPoints;
class vtkPolyData;
class vtkPolyDataMapper;
class vtkProperty;
class vtkTextActor;
class vtkTextProperty;
class vtkTexture;
class vtkTransform;
class zvPlaneSource;

/// One textured slice of a 3D image, drawn as a plane in a 3D view, which the user drags through
/// the image.
///
/// What the user sees: the slice, drawn only inside the image however large the plane is; around
/// it the outline where the plane cuts the image's bounding box; and, while a value is read or
/// window and level are dragged and DisplayText is on, a line of text at the bottom left.
///
/// Set-up, in this order: SetInteractor, SetInput or SetInputConnection, SetPlaneOrientation (or
/// PlaceWidget), SetEnabled(1). The plane starts at the far bound of the image; SetSliceIndex moves
/// it. SetInput alone does not place the plane.
///
/// The class has no New: make it with a plain new, release it with Delete or delete. It reports the
/// class name of its base, "vtkPolyDataSourceWidget", and so do its errors.
///
/// Frames and units: points and distances are world millimetres, X and Y of events are display
/// pixels with the origin at the bottom left, slice indices count from 0.
///
/// A reslice happens in UpdatePlane, which does nothing until the widget's Modified has been called
/// since the last one. Every operation below says whether it calls Modified and UpdatePlane.
///
/// State            event                     next                         tells observers
/// any              left press on the plane,  Pushing, Spinning, Rotating, StartInteractionEvent
///                  no modifier               (auto modifier: Moving, Scaling)
/// any              left press with Shift or  Cursoring                    StartInteractionEvent
///                  Control on the plane
/// any              right press on the plane  by RightButtonAction, as     StartInteractionEvent,
///                                            set: WindowLevelling         StartWindowLevelEvent
/// any              press beside the plane    Outside                      nothing
/// Start, Outside   mouse move, release       no change                    nothing
/// WindowLevelling  mouse move                no change                    WindowLevelEvent
/// other states     mouse move                no change                    InteractionEvent
/// other states     left or right release     Start                        EndInteractionEvent, or
///                                                                         EndWindowLevelEvent
/// any              "r", "R" with Shift or    no change                    ResetWindowLevelEvent
///                  Control
/// any              any other key             no change                    the interactor style
/// any              middle button             none, it is not observed: hosts have it for the
/// camera
///
/// A move in Pushing pushes the plane, in Cursoring it reads the value under the mouse. Deliberate:
/// in Spinning, Rotating, Moving and Scaling it moves nothing and only tells InteractionEvent; a
/// host that wants these drags calls Spin, Rotate, Translate or Scale from it. Each of these events
/// renders once after its observers have run.
///
/// Call data: the four window/level events carry double[2], the window and level in force; the
/// others carry null. SetEnabled invokes EnableEvent and DisableEvent, with null.
///
/// Lifetime: a widget may be deleted at any moment, enabled, in mid-drag or from its own observer
/// (there by Delete), before or after its interactor, window and renderers. It disables itself
/// first. It keeps the connection to its input, and with SetInput a reference to the image.
class ZVWIDGETS_EXPORT zvImagePlaneWidget : public vtkPolyDataSourceWidget
{
public:
  /// Interaction states, the values of GetState.
  enum WidgetState
  {
    Start = 0,           ///< idle
    Cursoring = 1,       ///< reading values under the mouse
    WindowLevelling = 2, ///< dragging window and level
    Pushing = 3,         ///< dragging the plane through the image
    Spinning = 4,        ///< pressed in a corner of the plane
    Rotating = 5,        ///< pressed at an edge of the plane
    Moving = 6,          ///< pressed with Control or its auto modifier
    Scaling = 7,         ///< pressed with Shift or its auto modifier
    Outside = 8          ///< the press missed the plane or the viewport
  };

  /// What a button does.
  enum ButtonAction
  {
    CursorAction = 0,
    SliceMotionAction = 1,
    WindowLevelAction = 2
  };

  /// Modifier keys that are taken as held while a button is pressed.
  enum AutoModifier
  {
    NoModifier = 0,
    ShiftModifier = 1,
    ControlModifier = 2
  };

  /// A disabled widget without input; see the fields for what it starts with. PlaceFactor is 1.
  zvImagePlaneWidget();

  zvImagePlaneWidget(const zvImagePlaneWidget&) = delete;
  zvImagePlaneWidget& operator=(const zvImagePlaneWidget&) = delete;

  /// Write the fields of vtk3DWidget, then those of the widget.
  void PrintSelf(ostream& os, vtkIndent indent) override;

  /// Disables the widget if it is enabled, which renders once more.
  ~zvImagePlaneWidget() override;

  /// Show (1) or hide (0) the widget and attach it to the interactor's events.
  ///
  /// Without an interactor: VTK error "The interactor must be set prior to enabling/disabling
  /// widget", nothing changes. Enabling takes CurrentRenderer or else the renderer at the last
  /// event position; without one nothing changes. The value it already has changes nothing. Invokes
  /// EnableEvent or DisableEvent, then renders. Disabling lets go of CurrentRenderer.
  void SetEnabled(int enabling) override;

  /// Go to another interactor, or to none. An enabled widget is disabled first.
  void SetInteractor(vtkRenderWindowInteractor* interactor) override;

  /// A key was typed. "r" or "R" with Shift or Control brings back the original window and level,
  /// takes the event away from later observers and invokes ResetWindowLevelEvent with the two. Any
  /// other key goes on to the interactor style.
  void OnChar() override;

  ///@{
  /// Put the plane in the middle of bounds (xmin, xmax, ymin, ymax, zmin, zmax), scaled by
  /// PlaceFactor about their centre, with the normal along x, or y, z for PlaneOrientation 1, 2.
  /// The last two forms work out bounds as vtk3DWidget does and end in the first.
  /// Calls UpdatePlane and not Modified, so the slice follows with the next change.
  void PlaceWidget(double bounds[6]) override;
  void PlaceWidget() override;
  void PlaceWidget(
    double xmin, double xmax, double ymin, double ymax, double zmin, double zmax) override;
  ///@}

  /// Show an image. The widget keeps a reference to it and shows later changes of it.
  ///
  /// Null or a data set that is no vtkImageData detaches the input: nothing is shown until the next
  /// image, silently. So does an image whose direction matrix is not the identity, as a slice in
  /// the wrong place is worse than none, with the VTK error "The image's direction matrix is not
  /// the identity, so the image is not shown. Reorient it first: permute and flip its axes exactly,
  /// or resample it."
  ///
  /// Sets the table range (unless UserControlledLookupTable), the original and current window and
  /// level from the scalar range; a range that is empty or not finite counts as 0 to 1. Integers of
  /// 64 bits are sampled as doubles, and an image without voxels shows nothing. The plane stays
  /// where it is: go on with SetPlaneOrientation, PlaceWidget or UpdatePlacement. Calls Modified.
  /// Renders when the window or level changes while the widget is enabled.
  virtual void SetInput(vtkDataSet* input);

  /// The same for the output of a pipeline, which drives the widget from then on. The producer is
  /// updated at once. Null detaches.
  void SetInputConnection(vtkAlgorithmOutput* port) override;

  /// The source of the plane, a zvPlaneSource.
  vtkPolyDataAlgorithm* GetPolyDataAlgorithm() override;

  /// Follow a change of the plane made from outside: source, cut, reslice, margins and outline.
  /// Calls Modified.
  void UpdatePlacement() override;

  /// 0 nearest, 1 linear (default), anything else cubic; see SetResliceInterpolate.
  vtkGetMacro(ResliceInterpolate, int);

  ///@{
  /// Kept for hosts that set it (default 1); the widget does not act on it.
  vtkSetMacro(RestrictPlaneToVolume, int);
  vtkGetMacro(RestrictPlaneToVolume, int);
  vtkBooleanMacro(RestrictPlaneToVolume, int);
  ///@}

  ///@{
  /// While on (default 0), the widget never changes the lookup table's range or order; window and
  /// level are still kept.
  vtkSetMacro(UserControlledLookupTable, int);
  vtkGetMacro(UserControlledLookupTable, int);
  vtkBooleanMacro(UserControlledLookupTable, int);
  ///@}

  ///@{
  /// Whether the texture is interpolated when drawn (default 1). Takes effect with the next
  /// SetResliceInterpolate or input.
  vtkSetMacro(TextureInterpolate, int);
  vtkGetMacro(TextureInterpolate, int);
  vtkBooleanMacro(TextureInterpolate, int);
  ///@}

  ///@{
  /// Whether the slice is in the renderer (default 1). Takes effect at once while the widget is
  /// enabled; does not render.
  virtual void SetTextureVisibility(int vis);
  vtkGetMacro(TextureVisibility, int);
  vtkBooleanMacro(TextureVisibility, int);
  ///@}

  ///@{
  /// The filter that maps the slice through the lookup table. A reference is kept; null is allowed
  /// and means that an input changes no colour map. Another map takes its place in the pipeline
  /// with the next input. The setter calls Modified.
  virtual vtkImageMapToColors* GetColorMap();
  virtual void SetColorMap(vtkImageMapToColors* map);
  ///@}

  ///@{
  /// Property of the outline (white, default) and the one that stands for it while the plane is
  /// held (green). A reference is kept. The first draws the visible outline from the next
  /// SetEnabled on; the second colours nothing that is shown. The setters call Modified.
  virtual void SetPlaneProperty(vtkProperty* property);
  virtual vtkProperty* GetPlaneProperty();
  virtual void SetSelectedPlaneProperty(vtkProperty* property);
  virtual vtkProperty* GetSelectedPlaneProperty();
  ///@}

  /// 0, 1, 2 a plane with its normal along x, y, z; 3 oblique. Default 0.
  vtkGetMacro(PlaneOrientation, int);

  ///@{
  /// The table of colours. A reference is kept; null makes a new default table. With an image, and
  /// unless UserControlledLookupTable is on, the table gets the image's range, also when it is the
  /// current one, and the original window and level come into force (which may render).
  virtual void SetLookupTable(vtkLookupTable* table);
  virtual vtkLookupTable* GetLookupTable();
  ///@}

  ///@{
  /// Whether a line of text is shown during a drag (default 0).
  vtkSetMacro(DisplayText, int);
  vtkGetMacro(DisplayText, int);
  vtkBooleanMacro(DisplayText, int);
  ///@}

  ///@{
  /// Properties of the cursor (red) and the margins (blue), which no renderer shows, and of the
  /// slice itself (unlit, used from the next SetEnabled on). A reference is kept, the setters call
  /// Modified.
  virtual void SetCursorProperty(vtkProperty* property);
  virtual vtkProperty* GetCursorProperty();
  virtual void SetMarginProperty(vtkProperty* property);
  virtual vtkProperty* GetMarginProperty();
  ///@}

  ///@{
  /// Width and height of the margin as fractions of the plane's, clamped to 0 .. 0.5 (default 0.1).
  vtkSetClampMacro(MarginSizeX, double, 0.0, 0.5);
  vtkGetMacro(MarginSizeX, double);
  vtkSetClampMacro(MarginSizeY, double, 0.0, 0.5);
  vtkGetMacro(MarginSizeY, double);
  ///@}

  ///@{
  /// See SetCursorProperty.
  virtual void SetTexturePlaneProperty(vtkProperty* property);
  virtual vtkProperty* GetTexturePlaneProperty();
  ///@}

  ///@{
  /// Where the cursor last was: a world point with UseContinuousCursor, otherwise voxel indices.
  virtual double* GetCurrentCursorPosition();
  virtual void GetCurrentCursorPosition(double position[3]);
  ///@}

  /// The value under the cursor; 1e299 stands for none.
  vtkGetMacro(CurrentImageValue, double);

  ///@{
  /// Whether the cursor interpolates between voxels (default 0: it snaps to the nearest one).
  vtkSetMacro(UseContinuousCursor, int);
  vtkGetMacro(UseContinuousCursor, int);
  vtkBooleanMacro(UseContinuousCursor, int);
  ///@}

  /// Attach (1) or detach (0) an enabled widget from the interactor's events. On a widget that is
  /// not enabled or has no interactor it is ignored, silently. Invokes nothing, calls no Modified.
  void SetInteraction(int interact);

  ///@{
  /// Whether the widget is attached while it is enabled (default 1).
  vtkGetMacro(Interaction, int);
  vtkBooleanMacro(Interaction, int);
  ///@}

  ///@{
  /// What a button does, a ButtonAction (defaults 0, 1, 2), clamped to 0 .. 2. Each left press sets
  /// the left one anew: CursorAction with Shift or Control, otherwise SliceMotionAction.
  vtkSetClampMacro(LeftButtonAction, int, CursorAction, WindowLevelAction);
  vtkGetMacro(LeftButtonAction, int);
  vtkSetClampMacro(MiddleButtonAction, int, CursorAction, WindowLevelAction);
  vtkGetMacro(MiddleButtonAction, int);
  vtkSetClampMacro(RightButtonAction, int, CursorAction, WindowLevelAction);
  vtkGetMacro(RightButtonAction, int);
  ///@}

  ///@{
  /// Modifier taken as held when a slice motion starts, an AutoModifier (default 0), clamped to
  /// 0 .. 2.
  vtkSetClampMacro(LeftButtonAutoModifier, int, NoModifier, ControlModifier);
  vtkGetMacro(LeftButtonAutoModifier, int);
  vtkSetClampMacro(MiddleButtonAutoModifier, int, NoModifier, ControlModifier);
  vtkGetMacro(MiddleButtonAutoModifier, int);
  vtkSetClampMacro(RightButtonAutoModifier, int, NoModifier, ControlModifier);
  vtkGetMacro(RightButtonAutoModifier, int);
  ///@}

  ///@{
  /// Handlers of the interactor's events, see the table above. The two of the middle button are
  /// never called by the widget itself: they start and stop MiddleButtonAction for a caller.
  virtual void OnMouseMove();
  virtual void OnLeftButtonDown();
  virtual void OnLeftButtonUp();
  virtual void OnMiddleButtonDown();
  virtual void OnMiddleButtonUp();
  virtual void OnRightButtonDown();
  virtual void OnRightButtonUp();
  ///@}

  ///@{
  /// Begin and end of the three actions at the interactor's event position. A start that misses the
  /// plane or the viewport leaves State at Outside; a stop does nothing in Start and Outside and
  /// ends any other state, whatever began it. Otherwise both take the event away from later
  /// observers, invoke their event and render.
  virtual void StartCursor();
  virtual void StopCursor();
  virtual void StartSliceMotion();
  virtual void StopSliceMotion();
  virtual void StartWindowLevel();
  virtual void StopWindowLevel();
  ///@}

  /// Bring the outline's four corners to the plane. Updates the plane's source.
  virtual void BuildRepresentation();

  ///@{
  /// The plane: its origin, the end of its first and of its second axis, world points. The setters
  /// move one point only and call Modified of the widget; call UpdatePlacement when all are set.
  void SetOrigin(double x, double y, double z);
  void SetOrigin(double xyz[3]);
  double* GetOrigin();
  void GetOrigin(double xyz[3]);
  void SetPoint1(double x, double y, double z);
  void SetPoint1(double xyz[3]);
  double* GetPoint1();
  void GetPoint1(double xyz[3]);
  void SetPoint2(double x, double y, double z);
  void SetPoint2(double xyz[3]);
  double* GetPoint2();
  void GetPoint2(double xyz[3]);
  ///@}

  ///@{
  /// The plane's centre and unit normal.
  double* GetCenter();
  void GetCenter(double xyz[3]);
  double* GetNormal();
  void GetNormal(double xyz[3]);
  ///@}

  ///@{
  /// The plane's axes, point 1 and point 2 minus the origin.
  void GetVector1(double v1[3]);
  void GetVector2(double v2[3]);
  ///@}

  /// Make \a pd a shallow copy of the plane, a quad. Null is ignored.
  void GetPolyData(vtkPolyData* pd);

  ///@{
  /// The picker of the plane. A reference is kept; it is made to pick from a list that holds the
  /// slice. Null makes a new vtkCellPicker of tolerance 0.005.
  void SetPicker(vtkAbstractPropPicker* picker);
  ///@}

  /// A new grey table of 256 colours. The caller owns the one reference.
  vtkLookupTable* CreateDefaultLookupTable();

  /// Interpolation of the reslice: 0 nearest, 1 linear, any other value cubic. The value is kept as
  /// given. Hands TextureInterpolate to the texture. Calls Modified if it changes.
  void SetResliceInterpolate(int i);

  ///@{
  /// Window and level. With \a copy the two are only stored. Otherwise, unless
  /// UserControlledLookupTable is on, the table gets the range level -+ |window| / 2 and is
  /// reversed when the window changes its sign; an enabled widget renders. The values in force
  /// change nothing. A value that is not finite is refused with the generic warning "window and
  /// level must be finite numbers".
  void SetWindowLevel(double window, double level, int copy = 0);
  void GetWindowLevel(double wl[2]);
  ///@}

  /// Reverse the order of the table's colours.
  void InvertTable();

  ///@{
  /// Show (1) or hide (0) the cursor, the margins, the text. Nothing happens without a
  /// CurrentRenderer, and on the text only with DisplayText.
  void ActivateCursor(int i);
  void ActivateMargins(int i);
  void ActivateText(int i);
  ///@}

  /// The slice as an image, resliced at once with the image's x and y spacing. That spacing stays
  /// until the next full UpdatePlane. Null without an image. The widget owns the result.
  vtkImageData* GetResliceOutput();

  vtkTexture* GetTexture();

  ///@{
  /// How the text is drawn. Null is ignored.
  void SetTextProperty(vtkTextProperty* property);
  vtkTextProperty* GetTextProperty();
  ///@}

  /// Reslice the image through the plane, after centring the plane on its cut through the image's
  /// bounding box. Does nothing, in some nanoseconds, unless the widget's Modified was called since
  /// the last one. A change of the plane alone does not count.
  ///
  /// VTK errors: "Invalid extent [...]. Perhaps the input data is empty?" for an image without
  /// voxels, and it goes on; "Invalid X extent: " or "Invalid Y extent: " and the number for a
  /// plane of more than 1073741823 voxels across (or of a size that is no number), which then shows
  /// nothing; "The plane is too large to be shown: " and the samples along both axes for more than
  /// 2^28 in all, which shows nothing either; and the one of SetInput for a direction that changed
  /// upstream.
  void UpdatePlane();

  /// The interaction state, a WidgetState.
  int GetState() { return this->State; }

  /// Place the plane at the far bound of the image, with its normal along axis \a i (0 x, 2 z, any
  /// other value y). Without an image: VTK error "SetInput() before setting plane orientation.",
  /// and only the orientation is stored. Calls UpdatePlane, then Modified: where nothing had
  /// changed before, the slice follows with the next update.
  void SetPlaneOrientation(int i);

  /// Which slice the plane stands on; on an oblique plane, how many planes fit behind it. 0 without
  /// an image. A plane beyond the bounds is moved back to them, and the answer still is the index
  /// outside.
  int GetSliceIndex();

  /// Go to a slice, clamped to 0 .. GetNumberOfSlices() - 1. Calls Modified and UpdatePlane if that
  /// moves the plane. Nothing happens without an image.
  void SetSliceIndex(int index);

  ///@{
  /// Coordinate of the plane along its normal axis. On an oblique plane the generic warning "only
  /// works for ortho planes: set plane orientation first"; nothing is done and the answer is 0.
  /// The setter calls UpdatePlane, then Modified.
  double GetSlicePosition();
  void SetSlicePosition(double position);
  ///@}

  /// Move the plane along its positive normal by |distance| + 1 slices, while it stays in the
  /// image's box. Deliberate: hosts rely on the sign not being used, and on the missing Modified.
  void Push(int distance);

  /// Move the plane along its normal as a drag from \a p1 to \a p2 (world) asks: a step per
  /// millimetre, rounded away from zero, and not beyond the first and last slice.
  void Push(double* p1, double* p2);

  /// Turn the plane about its normal by a motion from \a p1 to \a p2 (world). It counts as oblique
  /// from then on. No Modified, no update.
  void Spin(double* p1, double* p2);

  /// Turn the plane by \a angle degrees about the direction \a axis through the world point
  /// \a center. It is oblique from then on; the first time it is enlarged to cover the image's
  /// diagonal, unless an upper end of the extent is above 999. Calls Modified and UpdatePlane.
  void Rotate(double angle, double* axis, double* center);

  /// Turn the plane by a motion from \a p1 to \a p2 (world), a degree per millimetre along the
  /// radius that the press has set. \a vpn is not used. Calls Modified and not UpdatePlane.
  void Rotate(double* p1, double* p2, double* vpn);

  /// Move the plane, or the edge or corner that was pressed, by a motion (world). No Modified.
  void Translate(double* p1, double* p2);

  /// Scale the plane about its centre by a motion (world): larger when \a Y (display) is above the
  /// last event position, otherwise smaller. No Modified.
  void Scale(double* p1, double* p2, int X, int Y);

  /// Work out from the last pick which region of the plane was pressed, and from it and the
  /// modifiers the state of the drag.
  void AdjustState();

  /// Bring the margin lines to the plane.
  void UpdateMargins();

  /// Count the slices of the current orientation. An oblique plane beside the image leaves the
  /// count as it was. Nothing happens without an image.
  void UpdateNumberOfSlices();

  int GetNumberOfSlices() { return this->NumberOfSlices; }

  ///@{
  /// Grow or shrink the plane about its centre for a new number of voxel steps along its axes, by
  /// whole millimetres. Nothing happens without an image. Calls Modified and UpdatePlacement.
  void SetDimensions(int x, int y);
  void SetDimensions(int* xy);
  ///@}

  ///@{
  /// The point (world) about which the plane was turned last. It starts at the plane's centre and
  /// follows SetSliceIndex. The widget turns about the points that it is given; this is kept for
  /// the host. No Modified.
  void SetRotationCenter(double* center);
  void GetRotationCenter(double* center);
  ///@}

  /// The turn of the last rotation by motion, by axis, in degrees.
  void GetDegree(double* degree);

  /// Window and level by a drag to a display position, relative to where it started: across the
  /// whole viewport it is four times the initial value.
  void WindowLevel(int X, int Y);

  /// Read the image under a display position.
  void UpdateCursor(int X, int Y);

  ///@{
  /// Read the image at the world point \a q; the discrete form moves \a q to its voxel. 1 if there
  /// is a value, otherwise 0.
  int UpdateContinuousCursor(double* q);
  int UpdateDiscreteCursor(double* q);
  ///@}

  /// Cursor position and value. 0, with \a xyzv untouched, unless the state is Cursoring and the
  /// cursor is on the image.
  int GetCursorData(double xyzv[4]);

  /// Whether GetCursorData would give data.
  int GetCursorDataStatus();

  /// Write the text for the current state. Nothing happens unless DisplayText is on.
  void ManageTextDisplay();

  /// Mark the plane as held (1), which takes the pick position for the drag, or not (0).
  void HighlightPlane(int highlight);

  /// Pick at the event position, for a host that arbitrates between planes: result in GetClicked,
  /// world point in GetPointClicked. Outside the viewport only the state becomes Outside.
  void UpdatePointClicked();

  ///@{
  /// Whether the last UpdatePointClicked hit the plane; each left release sets it to 0.
  int GetClicked() { return this->Clicked; }
  void SetClicked(int clicked) { this->Clicked = clicked; }
  ///@}

  ///@{
  /// Parametric position on the plane of the pick before the last left press; world point of the
  /// last UpdatePointClicked, (0, 0, 0) after each left release.
  double* GetLastPointClicked() { return this->LastPointClicked; }
  double* GetPointClicked() { return this->PointClicked; }
  ///@}

protected:
  /// Dispatch of the interactor's events; \a clientdata is the widget.
  static void ProcessEvents(
    vtkObject* object, unsigned long event, void* clientdata, void* calldata);

  void AddObservers();

  ///@{
  /// Steps of the constructor.
  void GeneratePlaneOutline();
  void GenerateTexturePlane();
  void GenerateCursor();
  void GenerateMargins();
  void GenerateText();
  void CreateDefaultProperties();
  ///@}

  int TextureVisibility = 1;
  int LeftButtonAction = CursorAction;
  int MiddleButtonAction = SliceMotionAction;
  int RightButtonAction = WindowLevelAction;
  int LeftButtonAutoModifier = NoModifier;
  int MiddleButtonAutoModifier = NoModifier;
  int RightButtonAutoModifier = NoModifier;
  int LastButtonPressed = 0; ///< 0 none, 1 left, 2 middle, 3 right; known during a press only
  int State = Start;
  int Interaction = 1;
  int PlaneOrientation = 0;
  int RestrictPlaneToVolume = 1;
  double OriginalWindow = 1.0; ///< from the image's scalar range
  double OriginalLevel = 0.5;
  double CurrentWindow = 1.0;
  double CurrentLevel = 0.5;
  double InitialWindow = 1.0; ///< at the start of a window/level drag
  double InitialLevel = 0.5;
  int StartWindowLevelPositionX = 0;
  int StartWindowLevelPositionY = 0;
  int ResliceInterpolate = 1;
  int TextureInterpolate = 1;
  int UserControlledLookupTable = 0;
  int DisplayText = 0;

  vtkSmartPointer<zvPlaneSource> PlaneSource;
  vtkSmartPointer<vtkPolyData> PlaneOutlinePolyData;
  vtkSmartPointer<vtkActor> PlaneOutlineActor; ///< never added to a renderer
  vtkSmartPointer<vtkAbstractPropPicker> PlanePicker;
  vtkWeakPointer<vtkImageData> ImageData; ///< the reslice's input, which the connection keeps
  vtkSmartPointer<vtkImageReslice> Reslice;
  vtkSmartPointer<vtkMatrix4x4> ResliceAxes;
  vtkSmartPointer<vtkTransform> Transform; ///< scratch for rotations
  vtkSmartPointer<vtkActor> TexturePlaneActor;
  vtkSmartPointer<vtkImageMapToColors> ColorMap;
  vtkSmartPointer<vtkTexture> Texture;
  vtkSmartPointer<vtkLookupTable> LookupTable;
  vtkSmartPointer<vtkProperty> PlaneProperty;
  vtkSmartPointer<vtkProperty> SelectedPlaneProperty;
  vtkSmartPointer<vtkProperty> CursorProperty;
  vtkSmartPointer<vtkProperty> MarginProperty;
  vtkSmartPointer<vtkProperty> TexturePlaneProperty;
  vtkSmartPointer<vtkPolyData> CursorPolyData;
  vtkSmartPointer<vtkActor> CursorActor; ///< never added to a renderer
  double CurrentCursorPosition[3] = { 0.0, 0.0, 0.0 };
  double CurrentImageValue = 1e299; ///< 1e299 stands for no value
  int UseContinuousCursor = 0;
  vtkSmartPointer<vtkTextActor> TextActor;
  char TextBuff[128] = "NA";
  double RotateAxis[3] = { 0.0, 0.0, 0.0 }; ///< in the plane, set by AdjustState
  double RadiusVector[3] = { 0.0, 0.0, 0.0 };
  vtkSmartPointer<vtkPolyData> MarginPolyData;
  vtkSmartPointer<vtkActor> MarginActor; ///< never added to a renderer
  int MarginSelectMode = 8;              ///< region pressed: 0 to 3 corners, 4 to 7 edges, 8 centre
  double MarginSizeX = 0.1;
  double MarginSizeY = 0.1;
  int Dimensions[2] = { 0, 0 }; ///< plane size in voxel steps
  int Clicked = 0;
  double LastPointClicked[3] = { 0.0, 0.0, 0.0 };
  double PointClicked[3] = { 0.0, 0.0, 0.0 };
  int NumberOfSlices = 0;
  double Degree[3] = { 0.0, 0.0, 0.0 };
  int SliceAxis = 2; ///< last value given to SetPlaneOrientation; stays when the plane turns
  vtkSmartPointer<vtkPlane> CutPlane;
  vtkSmartPointer<vtkCutter> Cutter;
  vtkSmartPointer<vtkCubeSource> BoundsCube; ///< the image's bounding box
  vtkSmartPointer<vtkActor> CutActor;        ///< the plane's visible outline
  unsigned long LastUpdateMTime = 0;
  int ObliqueSliceIndex = 0;
  double RotationCenter[3] = { 0.0, 0.0, 0.0 };

private:
  void Enable();
  void Disable();
  void Render();
  void RunStart(int action);
  void RunStop(int action);

  bool IsInViewport(int X, int Y);
  bool IsPlaneAt(int X, int Y);
  bool FindPress(int& X, int& Y);
  void FindPressedRegion(double axis1[3], double axis2[3]);
  void TellDragStart(unsigned long event, void* calldata);
  void TellDragEnd(unsigned long event, void* calldata);
  bool EndDrag();
  void MoveDrag(double previous[3], double current[3]);
  void PlaceCursor(const double q[3]);
  void ApplyToTable(double window, double level);

  void DetachInput();
  bool RefuseTurnedImage(bool hasIdentityDirection);
  bool TakeImage();
  void ShowImage(bool on);
  void UseImageRange();
  void ConnectPipeline(vtkAlgorithmOutput* port);
  vtkSmartPointer<vtkPolyDataMapper> NewTexturePlaneMapper(const double bounds[6]);
  template <typename T>
  void SetPart(vtkSmartPointer<T>& part, T* object);

  void CenterOnCut();
  void SampleReslice(double axis1[3], double axis2[3], const double spacing[3]);
  double GetStepLength();
  void GetStep(double length, double step[3]);
  bool PushSteps(int steps, int index);
  void EnlargeBeforeTurning();
  void TurnPlane(const double center[3], double angle, const double axis[3]);
};

#endif
