#ifndef zvImage3DPlanes_h
#define zvImage3DPlanes_h

#include "zvWidgetsExport.h"

#include "vtk3DWidget.h"
#include "vtkSmartPointer.h"
#include "vtkWeakPointer.h"

#include <array>

class vtkImageData;
class vtkLODActor;
class vtkOutlineFilter;
class vtkPolyDataMapper;
class vtkRenderWindow;
class vtkRenderer;
class zvImagePlaneWidget;

/// A 3D image cut by three planes, one across each axis, inside the outline of its bounding box.
///
/// What the user sees: three slices with a red (x), green (y) and blue (z) border, which the left
/// button drags through the image; with Shift or Control it reads the voxel under the mouse, and so
/// does the right button. Where planes overlap, the one nearest to the camera takes a left press.
///
/// Set-up, in this order: SetImage or SetImageConnection, SetRender, Create, Show. The planes start
/// in the middle of the image and the camera looks along z with y downwards.
///
/// The class has no New: make it with a plain new, release it with Delete or delete. It reports the
/// class name of its base, "vtk3DWidget", and so do its errors. SetEnabled does nothing; see
/// Enable3DPlanes.
///
/// Frames and units: points and distances are world millimetres, voxels and slices are indices that
/// count from 0.
///
/// Event            what happens                                       tells observers
/// left press on a  PlaneSelected is the nearest plane under the       nothing; the plane starts
/// plane            mouse, and it alone gets events until the release  its drag
/// left press on    PlaneSelected is 0, the planes stay as they are    nothing
/// none
/// mouse move       the slice counts are refreshed                     nothing
/// left release     all planes get events again; the voxel that was    StartInteractionEvent, no
///                  read, if any, is the last clicked one              call data
/// right release    nothing                                            nothing
///
/// Deliberate: it is the release that tells StartInteractionEvent. Hosts read the last clicked
/// voxel from its observer.
///
/// The states of GetState are those of zvImagePlaneWidget.
///
/// An image whose direction matrix is not the identity is not shown, as planes in the wrong place
/// are worse than none: Create and the updates raise one VTK error, "The image's direction matrix
/// is not the identity, so the planes do not show it. Reorient it first: permute and flip its axes
/// exactly, or resample it.", and show nothing until they are called with another image.
///
/// Lifetime: the object may be deleted at any moment, shown, in mid-drag or from its own observer
/// (there by Delete), before or after its interactor, window, renderer and image. It takes the
/// planes and the outline out of the view first. It keeps no reference to the image of SetImage
/// until Create, nor to the renderer, the window and the interactor; the planes keep what they
/// show.
class ZVWIDGETS_EXPORT zvImage3DPlanes : public vtk3DWidget
{
public:
  /// The values of GetPlaneSelected.
  enum SelectedPlane
  {
    NoPlane = 0,
    XPlane = 1,
    YPlane = 2,
    ZPlane = 3
  };

  zvImage3DPlanes();
  ~zvImage3DPlanes() override;

  zvImage3DPlanes(const zvImage3DPlanes&) = delete;
  zvImage3DPlanes& operator=(const zvImage3DPlanes&) = delete;

  /// The image, and its dimensions, spacing and extent as they are now. Nothing changes on screen
  /// before Create, or Update once it is created. No reference is kept. Null is allowed: Create
  /// then refuses, Update empties the view. Takes the place of a connection.
  void SetImage(vtkImageData* image);

  ///@{
  /// The same for the output of a pipeline, whose producer is updated at once. The planes and the
  /// outline stay connected to it, so that a change upstream is seen at the next render; call
  /// Update when it changed the size, the bounds or the range of the image. A reference is kept to
  /// the producer. Null, or an output that is no image, is no image. Both names do the same.
  void SetImageConnection(vtkAlgorithmOutput* port);
  void SetInputConnection(vtkAlgorithmOutput* port) override;
  ///@}

  /// The renderer of the view; its window and the window's interactor are taken with it, so it has
  /// to be in its window already, and the window to have its interactor. Attaches to the
  /// interactor's events (once). Another renderer than before: what is shown leaves the old one,
  /// and Show brings it into the new one. Null lets go of the view. No reference is kept.
  void SetRender(vtkRenderer* renderer);

  /// Give the planes the image, the interactor, their colours and orientations, with the planes at
  /// the far bounds of the image. Renders nothing.
  /// \return true if the planes are created, also when they were before; then nothing is done.
  /// False, with nothing changed, without an interactor (plain warning on the standard output
  /// "zvImage3DPlanes::Create -> Interactor not set"), without an image (generic warning "set image
  /// before creating the planes...") and for a turned image (see above).
  bool Create();
  bool isCreated();

  /// Enable the interactor, point the camera at the image (see ResetPlanes), put each plane on
  /// slice dimension / 2 - 1 and show planes and outline. Renders. Without a renderer and its
  /// interactor: a generic warning "set render before showing the planes...", nothing is done.
  void Show();

  /// Bring back the camera (from -z, y downwards, the image in full view), the three orientations
  /// and the middle slices. Renders before the planes move and not after. Before Create or without
  /// an image: a generic warning "create the planes before resetting them...", nothing is done.
  void ResetPlanes();

  /// Follow an image that was set anew, or has changed: planes, slice counts, plane sizes and
  /// outline. Window, level and slices stay, the slices clamped to the new image. Renders.
  void Update();

  ///@{
  /// Show or hide all planes with the outline, or one plane (the outline is shown then, whatever it
  /// was before). Renders. Nothing happens without a renderer. To show a plane that has no
  /// interactor yet is the plane's VTK error.
  void Enable3DPlanes(bool on);
  void EnableXPlane(bool on);
  void EnableYPlane(bool on);
  void EnableZPlane(bool on);
  ///@}

  ///@{
  /// Give one plane the image anew, with the window and level in force. Its slice stays in place,
  /// its size is not fitted. Renders if the plane is shown and its window or level had to change.
  void UpdatePlaneX();
  void UpdatePlaneY();
  void UpdatePlaneZ();
  ///@}

  ///@{
  /// Turn the planes, or one of them, by \a angle degrees about the direction \a axis through the
  /// world point \a center. They are oblique from then on, until ResetPlanes. The first form fits
  /// the size of each plane to the slice counts of the other two. Renders nothing.
  void Rotate(double angle, double* axis, double* center);
  void RotateX(double angle, double* axis, double* center);
  void RotateY(double angle, double* axis, double* center);
  void RotateZ(double angle, double* axis, double* center);
  ///@}

  ///@{
  /// The slice of a plane, clamped to its slices. Renders nothing. 0 without an image.
  void SetSliceX(int slice);
  void SetSliceY(int slice);
  void SetSliceZ(int slice);
  int GetSliceX();
  int GetSliceY();
  int GetSliceZ();
  ///@}

  ///@{
  /// What a plane shows, resliced at once; null without an image. The plane owns it.
  vtkImageData* GetSliceImageX();
  vtkImageData* GetSliceImageY();
  vtkImageData* GetSliceImageZ();
  ///@}

  /// How many slices each plane has now: three values, 0 before Create.
  void GetDimension(int* dimension);

  /// The spacing (three values, millimetres) and the extent (six indices) that the image had when
  /// it was set. Before: 1, 1, 1 and 0, -1, 0, -1, 0, -1.
  void GetSpacing(double* spacing);
  void GetExtent(int* extent);

  ///@{
  /// The voxel that was read last and its value; all 0 before the first. Deliberate: a reading
  /// whose position and value are all 0 does not count, so voxel (0, 0, 0) of value 0 leaves the
  /// one before in place; at voxel (0, 0, 0) with any other value the intensity is 0.
  double GetXOfLastClickedVoxel();
  double GetYOfLastClickedVoxel();
  double GetZOfLastClickedVoxel();
  double GetIntensityOfLastClickedVoxel();
  ///@}

  /// Window and level of the three planes. Planes that are shown render, each if it changes.
  void SetWindowLevel(double window, double level);

  /// The plane that took the last left press, a SelectedPlane (default 0).
  int GetPlaneSelected();

  /// The state of that plane; 0 if there is none.
  int GetState();

  /// The window of the renderer; null without one.
  vtkRenderWindow* GetRenderWindow();

  ///@{
  /// Place each plane in the middle of bounds (xmin, xmax, ymin, ymax, zmin, zmax).
  void PlaceWidget(double bounds[6]) override;
  using vtk3DWidget::PlaceWidget;
  ///@}

  /// Also takes the object off the events of the interactor that it had. A host calls SetRender.
  void SetInteractor(vtkRenderWindowInteractor* interactor) override;

protected:
  /// Dispatch of the interactor's events; \a clientdata is this object.
  static void ProcessEvents(
    vtkObject* object, unsigned long event, void* clientdata, void* calldata);

  void AddObservers();

  ///@{
  /// Handlers of the interactor's events, see the table above.
  void OnMouseMoveEvent();
  void OnLeftButtonPressEvent();
  void OnLeftButtonReleaseEvent();
  void OnRightButtonReleaseEvent();
  ///@}

  ///@{
  /// Steps of Create and Show.
  void CreateXPlane();
  void CreateYPlane();
  void CreateZPlane();
  void InitializeRenderConfiguration();
  ///@}

  int State = 0; ///< the last value of GetState
  bool Created = false;
  int Dimension[3] = { 0, 0, 0 }; ///< the image's dimensions at first, then the slices per plane
  int Extent[6] = { 0, -1, 0, -1, 0, -1 };
  double Spacing[3] = { 1.0, 1.0, 1.0 };
  vtkWeakPointer<vtkImageData> Image;
  vtkSmartPointer<zvImagePlaneWidget> PlaneX;
  vtkSmartPointer<zvImagePlaneWidget> PlaneY;
  vtkSmartPointer<zvImagePlaneWidget> PlaneZ;
  vtkSmartPointer<vtkLODActor> OutlineActor;
  vtkWeakPointer<vtkRenderWindow> RenderWindow;
  vtkWeakPointer<vtkRenderer> Renderer;
  double LastClickedVoxel[4] = { 0.0, 0.0, 0.0, 0.0 }; ///< x, y, z, intensity
  int PlaneSelected = NoPlane;
  vtkSmartPointer<vtkOutlineFilter> OutlineFilter;
  vtkSmartPointer<vtkPolyDataMapper> OutlineMapper;

private:
  std::array<zvImagePlaneWidget*, 3> GetPlanes();
  void CreatePlane(zvImagePlaneWidget* plane, const double color[3], int orientation);
  void AddOutline(vtkRenderer* renderer);
  void EnablePlane(zvImagePlaneWidget* plane, bool on);
  void EnableOnePlane(zvImagePlaneWidget* plane, bool on);
  void GiveImage(zvImagePlaneWidget* plane, bool shown);
  void UpdatePlane(zvImagePlaneWidget* plane, bool shown);
  void ShowOutline(bool shown);
  void RefreshImage();
  bool CanShowImage();
  void ReadImage();
  void ReadSliceCounts();
  int FindNearestClickedPlane();
  void UseInteractor(vtkRenderWindowInteractor* interactor);
  void RenderView();

  vtkSmartPointer<vtkAlgorithmOutput> ImagePort; ///< null with SetImage
};

#endif
