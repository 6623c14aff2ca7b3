#ifndef zvViewLink_h
#define zvViewLink_h

#include "zvImageViewerWidget.h"
#include "zvPlanePlace.h"

#include <QObject>

#include "vtkSmartPointer.h"
#include "vtkWeakPointer.h"

#include <array>

class vtkImageData;
class vtkObject;
class zvVolumeView;

/// Links three slice viewers and the 3D planes: all show the same three planes, square to each
/// other, which meet in one point, the cross. The library's views know nothing of each other.
///
/// what happens                       what follows
/// a cross is dragged in a viewer     the planes that its lines stand for move by those steps, and
///                                    the other viewers show the new cross
/// a line is turned in a viewer       the planes that its lines stand for turn about the viewer's
///                                    normal through the cross; its own plane turns in itself
/// a plane is dragged in 3D           the viewer of that plane follows, and all show the new cross
/// Step, GoTo, Turn, Straighten       all views follow
///
/// A viewer tells LeftButtonPressEvent and MouseMoveEvent before it takes the step of that press
/// or move. So a step is read at the next of its events or by Settle, whichever is first: call
/// Settle after every event that a viewer has had, and the others never lag behind. What has been
/// read is known by the viewer's cross index and by the direction of its plane, so each step is
/// taken once.
///
/// A cross that is dragged stays in the volume: a step that would take it out is shortened, in the
/// view that it was made in too. A plane that is stepped stays in touch with the volume; if it is
/// tilted it reaches the far corners, and the cross may be beside them. Nothing here renders except
/// the 3D view; moved tells who has to.
class zvViewLink : public QObject
{
  Q_OBJECT

public:
  using Vector = std::array<double, 3>;

  /// \param viewers  sagittal, coronal, axial. \param volumeView  outlives this object.
  zvViewLink(const std::array<zvImageViewerWidget*, 3>& viewers, zvVolumeView* volumeView);
  ~zvViewLink() override;

  /// Bring the viewers to the slices of the 3D view, after all have been given an image.
  void Start(vtkImageData* image);
  bool IsStarted() const { return this->Image != nullptr; }

  /// Take what a viewer has done that was not read yet.
  void Settle(int view);

  /// Move the plane of an axis by slices along its normal.
  void Step(int axis, int steps);
  /// Move it to a slice as the 3D view counts them.
  void GoTo(int axis, int slice);
  /// Bring the planes back to where one of them was, and the others as they stood to it. Of a
  /// tilted plane to within half a step, as its slices are told apart.
  void GoTo(const zvPlanePlace& place);
  /// Turn all planes about a direction through the cross.
  void Turn(double degrees, const Vector& direction);
  /// The planes along the axes again, through the voxel that is nearest to the cross.
  void Straighten();
  /// That, and all in the middle.
  void Center();

  /// Where the three planes meet, in millimetres.
  const Vector& GetCross() const { return this->Cross; }
  /// Where the plane of an axis stands.
  zvPlanePlace GetPlace(int axis) const;
  /// The normal of a view's plane, and what is up in its picture. Up turns with the plane, except
  /// where the view's own lines are turned: there the picture stays and the lines turn.
  Vector GetNormal(int view) const;
  const Vector& GetUp(int view) const { return this->Ups[static_cast<std::size_t>(view)]; }

  /// What is up in an upright view: the patient's head, and in the axial view the front.
  static Vector GetUprightUp(int view);

signals:
  /// After planes have moved or turned.
  void moved();
  /// After the planes have come back to stand along the axes.
  void straightened();

private:
  void HandleViewer(vtkObject* caller, unsigned long event, void* data);
  void HandlePlaneDragged(int axis, int steps);
  int FindView(vtkObject* viewer) const;
  bool TakeSteps(int view);
  bool TakeTurn(int view);
  void TurnOthers(int view, double degrees);
  void MovePlane(int axis, int steps);
  void MoveCross(int axis, int steps);
  void MoveViewer(int axis, int steps);
  int ShortenPlane(int axis, int steps) const;
  int ShortenCross(int axis, int steps) const;
  bool IsInVolume(const Vector& point) const;
  void PullCrossIn();
  int Shorten3D(int axis, int steps);
  void ShowCross();
  void PutPlanesUpright();
  void TurnTo(const std::array<Vector, 3>& normals);
  void RememberDirections();
  void FreeObliqueSlices(int view);
  void SetResolutionOfOthers(int view, int factor);
  Vector GetDirection(int view) const;
  double GetStepLength(int axis) const;

  std::array<vtkWeakPointer<zvImageViewerWidget>, 3> Viewers;
  zvVolumeView* VolumeView;
  vtkSmartPointer<vtkImageData> Image;
  Vector Cross{ { 0.0, 0.0, 0.0 } };
  std::array<int, 3> CrossSteps{ { 0, 0, 0 } }; // along each axis, as the viewers count them
  std::array<Vector, 3> Ups{};
  std::array<Vector, 3> Directions{}; // of each viewer's plane, when it was last read
};

#endif
