#ifndef zvImageViewerWidget_h
#define zvImageViewerWidget_h

#include "zvWidgetsExport.h"

#include "vtkImagePlaneWidget.h"
#include "vtkNew.h"
#include "vtkSmartPointer.h"
#include "vtkWeakPointer.h"

#include <vector>

class vtkActor;
class vtkAlgorithmOutput;
class vtkCellPicker;
class vtkCollection;
class vtkCubeSource;
class vtkCutter;
class vtkDataSet;
class vtkImageData;
class vtkImageMapToColors;
class vtkImageReslice;
class vtkLineSource;
class vtkLookupTable;
class vtkPlane;
class vtkPoints;
class vtkPolyDataMapper;
class vtkProperty;
class vtkTexture;
class vtkTransform;
class zvAreaWidget;
class zvLassoWidget;
class zvNormalWidget;
class zvRulerWidget;
class zvTextNoteWidget;

namespace zvFloodFill
{
struct Region;
struct Slice;
}
namespace zvReslicePlane
{
struct Corners;
}

/// The two-dimensional view of one slice of a volume: the slice on a plane that faces the camera, a
/// cross of two coloured lines where two other views cut it, the outline of the volume's box, and a
/// translucent mask over it. Voxels of the slice can be painted and filled.
///
/// What the host sets, in this order: SetInteractor; SetCurrentRenderer where the window has more
/// than one renderer; SetInput or SetInputConnection; SetPlaneOrientation; SetSliceIndex;
/// SetEnabled(1). The camera is the host's: it looks along the plane's normal, in parallel
/// projection, at the side that the normal points to.
///
/// \code
/// orientation  normal  line 1 moves along  line 2 moves along  line 1  line 2
/// 2 (XY)       z       x (FirstAxis 0)     y (SecondAxis 1)    red     green
/// 0 (YZ)       x       y (FirstAxis 1)     z (SecondAxis 2)    green   blue
/// 1 (XZ)       y       z (FirstAxis 2)     x (SecondAxis 0)    blue    red
/// \endcode
///
/// So a line that marks a constant x is red in every view, a constant y green, a constant z blue.
/// After a rotation the plane is oblique: GetPlaneOrientation answers 3, GetViewOrientation keeps
/// the orientation that it started from.
///
/// \code
/// State            event                               next             tells observers
/// any              left press outside the viewport     Outside          nothing
/// any              in a point mode: on the slice       Start            nothing
/// any              on a ruler, closed contour or note  Cursoring        nothing
/// any              on a line                           Rotating         LeftButtonPressEvent,
///                                                                       StartInteractionEvent
/// any              on a line with Shift                Pushing          the same two
/// any              on the slice in a mode              Cursoring        nothing
///                  (the one that closes a lasso)       Start            nothing
/// any              on the slice, to paint or fill      Cursoring        StartInteractionEvent
/// any              on the slice in no mode             Pushing          LeftButtonPressEvent,
///                                                                       StartInteractionEvent
/// any              beside the slice                    no change        nothing
/// any              left release in the viewport        Start            LeftButtonReleaseEvent
/// any              left release outside                Outside          LeftButtonReleaseEvent
/// any              right press on the slice            WindowLevelling  StartWindowLevelEvent
///                  (with the button's action 2, which
///                  Shift sets)
/// any              right press beside it               Outside          nothing
/// WindowLevelling  right release                       Start            EndWindowLevelEvent
/// any              mouse move                          no change        MouseMoveEvent
/// WindowLevelling  mouse move                          no change        that, WindowLevelEvent
/// \endcode
///
/// The values are those of the base class: Start 0, Cursoring 1, WindowLevelling 2, Pushing 3,
/// Rotating 5, Outside 8. Pushing drags the cross, Rotating turns the plane about it. The right
/// button's actions 0 and 1 read values and move the slice as the base class does.
///
/// Call data: the window/level events carry double[2], the window and level in force; the others
/// carry null. SetEnabled invokes EnableEvent and DisableEvent, with null. Deliberate: a left press
/// is not followed by InteractionEvent or EndInteractionEvent.
///
/// Views are not linked here. A host observes LeftButtonPressEvent, LeftButtonReleaseEvent and
/// MouseMoveEvent of a view, reads GetSlicesMovement, and moves the others by SetSliceIndex,
/// SetSliceCross, SetRotationCenter and SetCrossIndex. Press and move are told before the cross
/// moves, so their observers read the steps of the move before.
///
/// SetPlaneOrientation, UpdatePlane, UpdateCursor, Rotate, GetSliceIndex and SetSliceIndex hide
/// plain operations of the base class: call them through a pointer to this class.
///
/// Units: world coordinates in millimetres, X and Y in display pixels, voxel indices within the
/// image's extent. The image's direction matrix must be the identity (see SetInput).
///
/// Voxels are written in place into the host's image, without a copy. A host that goes on using the
/// image calls Modified() of its scalars and of the image.
///
/// Lifetime: a widget may be deleted at any moment, enabled, in mid-drag or from its own observer,
/// before or after its interactor, window and renderers. The image is kept alive while it is the
/// input.
class ZVWIDGETS_EXPORT zvImageViewerWidget : public vtkImagePlaneWidget
{
public:
  vtkTypeMacro(zvImageViewerWidget, vtkImagePlaneWidget)

  /// A new viewer with one reference, from the object factory if that knows the class.
  static zvImageViewerWidget* New();

  /// \name Input and orientation
  ///@{

  /// Show or hide the view. Enabling takes the renderer under the last event position if there is
  /// no current one and stops silently if there is none either; it shows the slice, both lines, the
  /// box outline and the mask, invokes EnableEvent and renders. Disabling invokes DisableEvent,
  /// forgets the current renderer and renders. The tools of the view are enabled or disabled first,
  /// text notes excepted, even when the error "The interactor must be set prior to
  /// enabling/disabling widget" follows.
  void SetEnabled(int enabling) override;

  /// Go to another interactor, or to none. An enabled widget is disabled first.
  void SetInteractor(vtkRenderWindowInteractor* interactor) override;

  /// Show an image: window and level become those of its scalar range (a magnitude below 0.001
  /// becomes 0.001 with its sign), the table follows unless it is controlled by the user. Places
  /// nothing: go on with SetPlaneOrientation. Null, or a data set that is no image, detaches the
  /// input. An image whose direction matrix is not the identity detaches it too, with an error that
  /// says so and what to do; one that is turned later on, at the next update. An image without
  /// voxels shows nothing. Renders when the window or level changes while the view is enabled.
  virtual void SetInput(vtkDataSet* input);

  /// The same for the output of a filter, which is brought up to date now and at each update of the
  /// picture. Null detaches.
  void SetInputConnection(vtkAlgorithmOutput* port) override;

  /// Put the plane square to an axis (0 x, 1 y, 2 z, any other as 1), at the far bound of the
  /// image, with the cross in its middle. Shows nothing new until the next UpdatePlane. Without an
  /// image: the error "SetInput() before setting plane orientation.", with the orientation already
  /// stored.
  void SetPlaneOrientation(int i);

  /// 0, 1 or 2, also when the plane has become oblique (default 2).
  int GetViewOrientation() { return this->ViewOrientation; }

  /// Bring the plane's pipeline up to date after a change from outside.
  void UpdatePlacement() override;

  /// Sample the image through the plane, centre the plane on its cut through the volume's box and
  /// fit the lines to it. Costs nothing until Modified has been called. Does not render.
  void UpdatePlane();

  ///@}
  /// \name Slices and rotation
  ///@{

  /// The index of the slice, counted from the lower bound. An oblique plane tells how many steps
  /// back along its normal leave the volume, plus one. A plane pushed out of the volume is pushed
  /// back by reading, and the index told is still the one outside. 0 without an image.
  int GetSliceIndex();

  /// Go to a slice, clamped to 0 .. GetNumberOfSlices() - 1; the cross goes along. The index it has
  /// changes nothing. Updates the plane; does not render.
  void SetSliceIndex(int index);

  ///@{
  /// Slices along the normal (default 0). The setter is a plain store for hosts that count the
  /// slices of an oblique plane themselves.
  int GetNumberOfSlices() { return this->NumberOfSlices; }
  void SetNumberOfSlices(int n) { this->NumberOfSlices = n; }
  ///@}

  /// Turn the plane and its lines by \a angle degrees about \a axis through \a center, which
  /// becomes the rotation centre. The first rotation enlarges the plane so that it still cuts the
  /// whole volume, unless an upper end of the extent is 1000 or more. Updates the plane; does not
  /// render.
  void Rotate(double angle, double axis[3], double center[3]);

  /// Turn the plane about its own normal through the rotation centre, by the motion from world
  /// point \a p1 to \a p2. X, Y and \a vpn are not used.
  void Rotate(int X, int Y, double p1[3], double p2[3], double vpn[3]);

  ///@{
  /// Where the lines cross (default 0, 0, 0). The setter moves nothing else.
  void SetRotationCenter(double center[3]);
  void GetRotationCenter(double center[3]);
  ///@}

  /// The axis of the last rotation by a motion.
  void GetRotateAxis(double axis[3]);

  /// The angle of the last rotation by a motion in degrees (default 0), and that angle times each
  /// component of the axis.
  double GetLastDegree() { return this->LastDegree; }
  void GetDegree(double degree[3]);

  /// Resize the plane about its centre to a number of voxel steps along its two axes, in whole
  /// millimetres. Nothing else is updated.
  void SetDimensions(int width, int height);
  void SetDimensions(int dimensions[2]);

  ///@}
  /// \name Cross
  ///@{

  /// Look for the voxel under display position (X, Y): its indices come to
  /// GetCurrentCursorPosition, its value to GetCurrentImageValue (1e299 beside the image). Shows
  /// nothing, renders nothing.
  void UpdateCursor(int X, int Y);

  /// Move the cross to display position (X, Y), in whole voxel steps that stay inside the slice.
  /// The steps taken come to GetSlicesMovement. Neither renders nor marks the widget modified.
  void AdjustCross(int X, int Y);

  /// Move the cross by \a n slices along the plane's normal, as a slice step does.
  void PushCross(int n);

  /// Move the cross by index steps along its two axes. Deliberate: a move beyond the far end takes
  /// the overshoot, not the room left. Neither renders nor marks the widget modified.
  void SetSliceCross(int dx, int dy);

  /// The steps of the last AdjustCross, by axis.
  void GetSlicesMovement(int movement[2]);

  ///@{
  /// The voxel index of the cross along its two axes. The setter stores the index as it is and lays
  /// the lines through the rotation centre: set that first.
  void GetCrossIndex(int index[2]);
  void SetCrossIndex(int index[2]);
  ///@}

  /// How many segments each line is drawn in.
  void SetCrossResolution(int resolution[2]);

  /// Show or hide the lines; hidden lines cannot be grabbed. Renders.
  void SetLinesEnabled(int enabled);

  /// Whether the segments p1 p2 and a1 a2 meet, within \a tol. \a t and \a u become the parameters
  /// of the crossing of their carriers, \a x the point on the first where both lie within.
  int Intersection(double p1[3], double p2[3], double a1[3], double a2[3], double x[3], double& tol,
    double& t, double& u);

  ///@}
  /// \name Paint, fill and mask
  ///@{

  /// Write \a value to the voxels of the current slice that can be reached from (x, y), voxel
  /// indices along the slice's two axes, up to voxels that hold the value already. The slice is
  /// that of the last cursor position. Shows nothing until the next update. An image with a
  /// direction matrix is refused with an error.
  void floodFill(int x, int y, int value);

  /// Write the old value of the voxel filled last to all that was filled since the last press, then
  /// forget it. Updates and renders.
  void UndoFill();

  /// Show \a mask over the slice: red where it is 0 or below, nothing elsewhere. It is copied, lies
  /// where its own origin and spacing put it, and keeps the slice of this moment: call it again
  /// when the plane has moved. Null hides the mask. A mask without scalars of one component, or
  /// with a direction matrix, is refused with an error, and what is shown stays.
  void SetImageMask(vtkImageData* mask);

  /// Add the mask to the view or take it off. Nothing without a mask.
  void SetEnableImageMask(int enabled);

  ///@{
  /// The mask's opacity, clamped to 0 .. 1 (default 0.3).
  void SetOpacityMask(double opacity);
  double GetOpacityMask() { return this->OpacityMask; }
  ///@}

  ///@}
  /// \name Modes: plain flags that the host sets, all off by default
  ///@{
  void SetAddLassoMode(bool on) { this->AddLassoMode = on; }
  bool GetAddLassoMode() { return this->AddLassoMode; }
  void SetPickPointModeA(bool on) { this->PickPointModeA = on; }
  bool GetPickPointModeA() { return this->PickPointModeA; }
  void SetPickPointModeB(bool on) { this->PickPointModeB = on; }
  bool GetPickPointModeB() { return this->PickPointModeB; }
  void SetPickPointModeC(bool on) { this->PickPointModeC = on; }
  bool GetPickPointModeC() { return this->PickPointModeC; }
  void SetPickPointModeD(bool on) { this->PickPointModeD = on; }
  bool GetPickPointModeD() { return this->PickPointModeD; }
  void SetPickPointBoundMode(bool on) { this->PickPointBoundMode = on; }
  bool GetPickPointBoundMode() { return this->PickPointBoundMode; }
  void SetPaintMode(bool on) { this->PaintMode = on; }
  bool GetPaintMode() { return this->PaintMode; }
  void SetFillMode(bool on) { this->FillMode = on; }
  bool GetFillMode() { return this->FillMode; }
  /// What paint and fill write (default 0).
  void SetFillValue(int value) { this->FillValue = value; }
  int GetFillValue() { return this->FillValue; }
  /// A flag for the host; the library only raises it (default true).
  void SetModeResetMarker(bool on) { this->ModeResetMarker = on; }
  bool GetModeResetMarker() { return this->ModeResetMarker; }
  ///@}

  /// \name Tools: made and owned by the view, placed by the user's clicks
  ///@{

  /// Make a ruler that the next click on the slice places. Nothing while a tool waits to be placed.
  /// The ruler takes part in the events once EnableRulerWidget has been called. The argument is not
  /// used, here and in the next two.
  void AddRulerWidget(double position[3]);

  /// Make an area contour and let clicks on the slice add its handles until it is closed.
  void AddAreaWidget(double position[3]);

  /// Make a lasso in the next of five colours. Clicks add its handles while SetAddLassoMode is on.
  void AddLassoWidget(double position[3]);

  /// Put a text at the last clicked point, one millimetre on along each axis; or, while a note is
  /// selected, change its text, colour (3 components, 0 to 1) and size. \a plane is the orientation
  /// of the slice. See zvTextNoteWidget for the longest text. Renders.
  void AddTextNoteWidget(const char* text, int plane, double* color, double size);

  /// Lock every lasso, give the current ruler the interactor and enable it.
  void EnableRulerWidget();

  /// Give the current area contour the interactor and let clicks add handles.
  void EnableAreaWidget();

  /// Give the current lasso the interactor, or take it away. Without a current lasso: the generic
  /// warning "there is no current lasso".
  void EnableLassoWidget(bool on);

  /// Delete every ruler, area contour and lasso, and leave their modes. Text notes stay. Renders.
  void DeleteWidget();

  /// Whether a text note is under the mouse.
  bool TextSelected();

  ///@{
  /// Text, colour and size of the note that was clicked last; null, null and 0 if the last click
  /// was elsewhere.
  const char* GetCurrentSelectedText();
  double* GetCurrentTextColor();
  int GetCurrentTextSize();
  ///@}

  /// Delete the note that was clicked last. Without one: the generic warning "there is no current
  /// text note".
  void DeleteCurrentTextNoteWidget();

  /// Take every text note out of the view and delete it.
  void DeleteAllTextNoteWidgets();

  /// Let the next clicks record the point for a text note (default false).
  void SetAddText(bool on) { this->AddText = on; }
  bool GetAddText() { return this->AddText; }

  /// Leave every mode, and raise the reset marker.
  void ResetMode();

  ///@}

  /// The world point of the last left click, as each mode leaves it.
  double* GetPointClicked() { return this->PointClicked; }

  ///@{
  /// The interaction state of the base class. An observer of LeftButtonPressEvent takes the press
  /// away from the view by setting Start (0) or Outside (8): nothing moves or turns then. Any other
  /// state is overwritten by that of the press.
  int GetState() { return this->State; }
  void SetState(int state) { this->State = state; }
  ///@}

  ///@{
  /// Suspend the tracking of the voxel under the mouse (default false).
  virtual void SetQuickApply(bool on);
  virtual bool GetQuickApply();
  ///@}

  ///@{
  /// Sample every n-th voxel only (default 1): 4 while a drag lasts. Below 1 counts as 1.
  virtual void SetImageResolutionFactor(int factor);
  virtual int GetImageResolutionFactor();
  ///@}

  zvImageViewerWidget(const zvImageViewerWidget&) = delete;
  zvImageViewerWidget& operator=(const zvImageViewerWidget&) = delete;

protected:
  /// Takes a press away from a viewer by leaving its State at Start.
  friend class zvNormalWidget;

  zvImageViewerWidget();
  ~zvImageViewerWidget() override;

  /// Keeps the widget alive while the base class dispatches an event to its handlers.
  static void ProcessEvents(
    vtkObject* object, unsigned long event, void* clientdata, void* calldata);

  void OnMouseMove() override;
  void OnLeftButtonDown() override;
  void OnLeftButtonUp() override;

  /// Deliberate: nothing, so that an interactor style behind the view keeps the middle button.
  void OnMiddleButtonDown() override {}
  void OnMiddleButtonUp() override {}

  void OnRightButtonDown() override;
  void OnRightButtonUp() override;
  void StartCursor() override;
  void StopCursor() override;
  void StartSliceMotion() override;
  void StopSliceMotion() override;
  void StartWindowLevel() override;
  void StopWindowLevel() override;

  int Dimensions[2] = { 0, 0 };
  double PointClicked[3] = { 0.0, 0.0, 0.0 };
  double Bounds[6] = { 0.0, 0.0, 0.0, 0.0, 0.0, 0.0 };
  vtkWeakPointer<zvRulerWidget> CurrentRulerWidget;
  vtkNew<vtkCollection> RulerWidgets;
  vtkWeakPointer<zvAreaWidget> CurrentAreaWidget;
  vtkNew<vtkCollection> AreaWidgets;
  vtkWeakPointer<zvLassoWidget> CurrentLassoWidget;
  vtkNew<vtkCollection> LassoWidgets;
  bool AddRulerMode = false;
  bool AddAreaMode = false;
  bool AddLassoMode = false;
  bool AddText = false;
  bool QuickApply = false;
  vtkNew<vtkCollection> TextNoteWidgets;
  vtkWeakPointer<zvTextNoteWidget> CurrentTextNoteWidget;
  bool PickPointModeA = false;
  bool PickPointModeB = false;
  bool PickPointModeC = false;
  bool PickPointModeD = false;
  vtkNew<vtkLineSource> SliceLine1Source;
  vtkNew<vtkPolyDataMapper> SliceLine1Mapper;
  vtkNew<vtkActor> SliceLine1Actor;
  vtkNew<vtkLineSource> SliceLine2Source;
  vtkNew<vtkPolyDataMapper> SliceLine2Mapper;
  vtkNew<vtkActor> SliceLine2Actor;
  vtkNew<vtkCellPicker> SliceLine1Picker;
  vtkNew<vtkCellPicker> SliceLine2Picker;
  vtkNew<vtkProperty> SliceLine1Property;
  vtkNew<vtkProperty> SliceLine2Property;
  double AxisColors[3][3] = { { 1.0, 0.0, 0.0 }, { 0.0, 1.0, 0.0 }, { 0.0, 0.0, 1.0 } };
  double RotationCenter[3] = { 0.0, 0.0, 0.0 };
  double LastDegree = 0.0;
  double Degree[3] = { 0.0, 0.0, 0.0 };
  int NumberOfSlices = 0;
  int LassoCount = 0;
  int CrossIndex[2] = { 0, 0 };
  int ViewOrientation = 2;
  int FirstAxis = 0;
  int SecondAxis = 1;
  int SlicesMovement[2] = { 0, 0 };
  bool ModeResetMarker = true;
  int ImageResolutionFactor = 1;
  vtkNew<vtkPlane> CutPlane;
  vtkSmartPointer<vtkCutter> BoxCutter;
  vtkNew<vtkCubeSource> BoundsCube;
  vtkNew<vtkActor> BoxOutlineActor;
  double LineNormal1[3] = { 0.0, 0.0, 0.0 };
  double LineNormal2[3] = { 0.0, 0.0, 0.0 };
  vtkMTimeType LastUpdateMTime = 0;
  bool PickPointBoundMode = false;
  bool PaintMode = false;
  bool FillMode = false;
  bool LeftButtonHeld = false;
  vtkNew<vtkPoints>
    FilledPoints; ///< voxel indices as doubles, in the order in which they were filled
  int FillValue = 0;
  int FillOldValue = 0;
  vtkSmartPointer<vtkImageData> ImageMask;
  vtkSmartPointer<vtkImageReslice> MaskReslice;
  vtkNew<vtkLookupTable> MaskLookupTable;
  vtkNew<vtkImageMapToColors> MaskColorMap;
  vtkNew<vtkTexture> MaskTexture;
  vtkSmartPointer<vtkActor> MaskActor;
  double OpacityMask = 0.3;

private:
  void ReplacePipeline();
  void MakePropertiesPlain();
  void BuildLine(vtkLineSource* source, vtkPolyDataMapper* mapper, vtkActor* actor,
    vtkCellPicker* picker, vtkProperty* property);

  bool HasRenderer();
  void Enable();
  void Disable();
  void ShowActor(vtkActor* actor, vtkProperty* property);
  void SetLineEnabled(int enabled, vtkActor* actor, vtkProperty* property, vtkCellPicker* picker);
  void SetInteracting(bool on);
  void TellDragStart(unsigned long event);
  void TellDragEnd(unsigned long event);
  void TellDrag(unsigned long event);
  bool FindPress(int& X, int& Y);
  bool GrabSlice(int X, int Y, int state);
  bool LetGoOfSlice();

  bool TakeInput();
  bool TakeUpdatedInput();
  vtkImageData* UpdatedInput(vtkAlgorithmOutput* port);
  bool IsUpright(bool hasIdentityDirection, const char* what, const char* consequence);
  void DetachInput();
  void ShowSlice(bool on);
  void AdoptScalarRange();
  void ClipToBounds();
  void OutlineBounds();

  void PlacePlaneAtFarBound();
  bool HasWidth();
  void UpdatePlaneSource();
  void CenterOnCut();
  void SampleThroughPlane(double axis1[3], double axis2[3], const double spacing[3]);
  void FitLines();
  void BecomeOblique();
  void TurnPlane(double angle, const double axis[3]);
  void TurnLines();
  double SliceStep(const double spacing[3]) const;
  int CountObliqueIndex(const double spacing[3], const double bounds[6]);

  void DragLine(int which, const double q[3], const double axis[3], const double end[3],
    bool isOffTheBox, double spacing);
  void ShiftLine(int which, double distance);
  void LayLines(const zvReslicePlane::Corners& plane, const double low[3], const double high[3]);

  /// What one of those who may take a left press made of it.
  enum class Claim
  {
    None,       ///< the next in order is asked
    Ignored,    ///< the press ends, unseen
    Taken,      ///< the press ends with a render
    Interaction ///< the press begins an interaction
  };
  struct PlaneMode;
  static const PlaneMode PlaneModes[];

  Claim ClaimOutside(int X, int Y);
  Claim ClaimPickedPoint(int X, int Y);
  Claim ClaimTool(int X, int Y);
  Claim ClaimSliceLine(int X, int Y);
  Claim ClaimPlane(int X, int Y);
  Claim PlaceRuler(int X, int Y);
  Claim ExtendArea(int X, int Y);
  Claim ExtendLasso(int X, int Y);
  Claim RecordAtBound(int X, int Y);
  Claim RecordPoint(int X, int Y);
  Claim RecordText(int X, int Y);
  Claim StartPainting(int X, int Y);
  Claim MoveCross(int X, int Y);
  bool SelectRuler();
  bool SelectArea();
  bool SelectTextNote();
  bool IsIdle() const;
  bool HasShift();
  bool PickLine(vtkCellPicker* picker, int X, int Y);
  void PickPlanePoint(int X, int Y);
  void LiftPointClicked();
  void LockLassos();
  bool ChooseLasso(zvLassoWidget* last);
  void FinishLassos();
  void FillAtCursor();
  void PaintAtCursor();
  void DragBy(int X, int Y, double previous[3], double current[3]);

  bool CanWriteVoxels();
  zvFloodFill::Slice FillSlice(double cursor);
  void ForgetFill();
  void ForgetResetFills();
  void CopyMask(vtkImageData* mask);
  void BuildMaskPipeline();

  /// What FilledPoints lists, as areas: that is quicker to take back.
  std::vector<zvFloodFill::Region> Fills;
};

/// For an application's table of instantiators; the library itself never calls it.
ZVWIDGETS_EXPORT vtkObject* vtkInstantiatorzvImageViewerWidgetNew();

#endif
