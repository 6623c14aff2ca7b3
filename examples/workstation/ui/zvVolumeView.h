#ifndef zvVolumeView_h
#define zvVolumeView_h

#include "zvOrientationLetters.h"
#include "zvQVTKWidget.h"
#include "zvRenderGroup.h"
#include "zvVolume.h"
#include "zvWindowLevelDrag.h"
#include "zvWindowPresets.h"

#include "vtkNew.h"

#include <QString>

#include <array>
#include <memory>
#include <string>

class vtkRenderer;
class zvImage3DPlanes;
class zvSteppedPlanes;

/// A voxel that the user has asked for.
struct zvVoxel
{
  std::array<int, 3> Index{ { 0, 0, 0 } };
  std::array<double, 3> Position{ { 0.0, 0.0, 0.0 } }; // millimetres in LPS
  double Value = 0.0;
  QString View;  // the view that it was seen in
  QString Label; // the region that it belongs to, empty for none
};

/// The 3D view: the three planes of a volume, and what the mouse does there.
///
/// left drag on a plane             moves the plane through the volume
/// left with Shift on a plane       reads the voxel under the mouse
/// left drag beside the planes,
///   middle drag                    turns the camera (see zvCameraStyle)
/// right drag                       changes window and level
/// wheel                            goes nearer and further
/// double click                     asks for the whole window
///
/// Axes are 0, 1 and 2 for x, y and z everywhere. All operations that change the picture render it.
/// Without a volume they do nothing.
class zvVolumeView : public zvQVTKWidget
{
  Q_OBJECT

public:
  using Vector = std::array<double, 3>;

  explicit zvVolumeView(std::shared_ptr<zvRenderGroup> group);
  ~zvVolumeView() override;

  /// Show a volume in place of the one before, with its planes in the middle.
  void ShowVolume(const zvVolume& volume, const zvWindowValues& value);
  bool HasVolume() const { return this->Planes != nullptr; }
  const zvVolume& GetVolume() const { return this->Volume; }

  /// The slices of an axis' plane, counted from 0. On a plane that has been turned they count the
  /// positions that it can take along its normal.
  int GetSlice(int axis) const;
  int GetSliceCount(int axis) const;
  void SetSlice(int axis, int index);
  /// Move a plane along its normal, by millimetres. Tells nothing, as SetSlice.
  void MovePlane(int axis, double distance);

  zvWindowValues GetWindowLevel() const { return this->Value; }
  void SetWindowLevel(const zvWindowValues& value);
  /// The range of all values of the volume; 1 without one.
  double GetFullWindow() const;

  /// Turn the three planes together about a direction through a point.
  void TurnPlanes(double degrees, const Vector& direction, const Vector& center);
  /// Turn one of them. Tells nothing: call TellSlices after the last one.
  void TurnPlane(int axis, double degrees, const Vector& direction, const Vector& center);
  /// Make them orthogonal again and put them in the middle, without moving the camera.
  void StraightenPlanes();
  /// The camera as in the beginning.
  void ResetCamera();

  /// Emit slicesChanged if it was not told of the present slices yet.
  void TellSlices();

  /// The widget, null without a volume; owned by the view.
  zvImage3DPlanes* GetPlanes() const;
  vtkRenderer* GetRenderer() const { return this->Renderer; }

signals:
  /// The whole window for this view, or back.
  void maximised();
  /// A plane has moved by so many slices, by the mouse.
  void planeDragged(int axis, int steps);
  /// After a plane has moved by the mouse, or the planes have been turned or straightened.
  void slicesChanged();
  /// After window or level have changed, by the mouse or by SetWindowLevel.
  void windowLevelChanged();
  /// After the user has read a voxel.
  void voxelRead(const zvVoxel& voxel);

protected:
  bool event(QEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
  void HandleMouse(QMouseEvent* event);
  void HandleWheel(QWheelEvent* event);
  void HandleVoxel();
  void DragWindowLevel(QMouseEvent* event);
  void ReleasePlanes();
  void PlaceCamera();
  void FitClippingRange();
  std::array<int, 3> GetSlices() const;

  std::shared_ptr<zvRenderGroup> Group;
  zvVolume Volume;
  zvWindowValues Value;
  zvSteppedPlanes* Planes = nullptr;
  bool IsFitting = false;
  std::array<int, 3> KnownSlices{ { -1, -1, -1 } };            // when the mouse was used last
  std::array<int, 6> ToldSlices{ { -1, -1, -1, -1, -1, -1 } }; // with their counts
  zvWindowLevelDrag Drag;
  zvOrientationLetters Letters;
  vtkNew<vtkRenderer> Renderer;
};

#endif
