#ifndef zvSliceView_h
#define zvSliceView_h

#include "zvEdgeLetters.h"
#include "zvImageViewerWidget.h"
#include "zvQVTKWidget.h"
#include "zvRenderGroup.h"
#include "zvVolume.h"
#include "zvWindowLevelDrag.h"
#include "zvWindowPresets.h"

#include "vtkNew.h"
#include "vtkSmartPointer.h"

#include <array>
#include <memory>

class vtkRenderer;
struct zvVoxel;

/// The view of one slice: sagittal (axis 0), coronal (1) or axial (2), with the cross of the two
/// others.
///
/// left drag on the slice           moves the cross (Shift: also on a line)
/// left drag on a line              turns both lines
/// left with paint or fill          writes voxels
/// double click                     asks for the whole window
/// right drag                       changes window and level (Shift: the viewer's own way)
/// wheel, up and down, right, left  one slice
/// PgUp, PgDn, Home, End            ten slices, the first, the last
/// Ctrl + wheel                     nearer, further
///
/// Radiological: the axial slice is seen from the feet and the coronal one from the front, so that
/// the patient's right is on the left; the sagittal one from the patient's left, the front on the
/// left. The camera turns with the plane, the edges tell the sides.
///
/// Operations do not render unless they say so.
class zvSliceView : public zvQVTKWidget
{
  Q_OBJECT

public:
  using Vector = std::array<double, 3>;
  enum class Hand
  {
    Cross,
    Paint,
    Fill
  };

  zvSliceView(int axis, std::shared_ptr<zvRenderGroup> group);
  ~zvSliceView() override;

  int GetAxis() const { return this->Axis; }
  zvImageViewerWidget* GetViewer() const { return this->Viewer; }
  vtkRenderer* GetRenderer() const { return this->Renderer; }
  const zvEdgeLetters& GetLetters() const { return this->Letters; }
  QString GetName() const;
  /// From where it is seen, in words.
  QString GetConvention() const;

  /// Show a volume in place of the one before.
  void ShowVolume(const zvVolume& volume);
  bool HasVolume() const { return this->Volume.Image != nullptr; }

  /// Bring camera, letters, title and mask to where the plane is now.
  /// \param normal  of the plane. \param up  in the picture, a unit vector in the plane.
  /// \param slice, count  for the title.
  void Follow(const Vector& normal, const Vector& up, int slice, int count);

  /// The whole slice in the view again.
  void ResetCamera();

  /// What the left button does.
  void SetHand(Hand hand);

  void SetWindowLevel(const zvWindowValues& value);

  /// A mask as the viewer takes it; null shows none.
  void SetMask(vtkImageData* mask, double opacity);
  void SetMaskOpacity(double opacity);

signals:
  /// After the toolkit has had an event of the mouse.
  void used();
  /// Go on by so many slices.
  void stepped(int axis, int steps);
  /// The whole window for this view, or back.
  void maximised();
  /// The mouse is over a voxel, or over none.
  void voxelSeen(const zvVoxel& voxel);
  void nothingSeen();
  void windowLevelDragged(const zvWindowValues& value);
  /// Voxels of the image have been written, by a fill or by the brush.
  void voxelsWritten(bool byFill);

protected:
  bool event(QEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

private:
  void HandleMouse(QMouseEvent* event);
  void HandleWheel(QWheelEvent* event);
  void HandleKey(QKeyEvent* event);
  void HandleWindowLevel(vtkObject* caller, unsigned long event, void* windowLevel);
  void DragWindowLevel(QMouseEvent* event);
  void TellWrites(QMouseEvent* event);
  void TellVoxel();
  void Zoom(int units);
  bool IsOverSlice(const QPoint& position);
  void PlaceCamera(const Vector& normal, const Vector& up);
  void FitScale();
  void RefreshMask();

  int Axis;
  std::shared_ptr<zvRenderGroup> Group;
  zvVolume Volume;
  zvWindowValues Value;
  zvWindowLevelDrag Drag;
  Hand LeftHand = Hand::Cross;
  double Nearness = 1.0; // how many times nearer than the whole slice
  int WheelUnits = 0;    // of a notch that has not been turned to its end
  vtkSmartPointer<vtkImageData> Mask;
  double MaskOpacity = 0.3;
  std::array<double, 10> MaskPlane{}; // where the mask was cut last
  zvEdgeLetters Letters;
  vtkNew<vtkRenderer> Renderer;
  vtkSmartPointer<zvImageViewerWidget> Viewer;
};

#endif
