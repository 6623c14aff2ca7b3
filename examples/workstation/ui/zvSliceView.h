#ifndef zvSliceView_h
#define zvSliceView_h

#include "zvEdgeLetters.h"
#include "zvLabelOutlines.h"
#include "zvMarkedViewer.h"
#include "zvPlanePlace.h"
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
class zvSliceMarks;
struct zvVoxel;

/// The view of one slice: sagittal (axis 0), coronal (1) or axial (2), with the cross of the two
/// others.
///
/// left                             what the hand does (see Hand); on a mark moves its end or
/// handle
///   as a cross, on the slice       moves the cross (Shift: also on a line)
///   as a cross, on a line          turns both lines
/// middle drag                      moves the picture; on a mark without Shift the whole mark
/// double click, as a cross         asks for the whole window; on a note for another text
/// double click, as a fill          nothing, the first click has filled
/// double click, Enter              close the contour that is being drawn
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
  /// What the left button does.
  enum class Hand
  {
    Cross,
    Ruler,
    Area,
    Lasso,
    Note,
    Paint,
    Fill,
    Contour // as the cross, but its lines stay, and the middle button without Shift is free
  };

  zvSliceView(int axis, std::shared_ptr<zvRenderGroup> group);
  ~zvSliceView() override;

  int GetAxis() const { return this->Axis; }
  zvImageViewerWidget* GetViewer() const { return this->Viewer; }
  zvSliceMarks* GetMarks() const { return this->Marks.get(); }
  vtkRenderer* GetRenderer() const { return this->Renderer; }
  const zvEdgeLetters& GetLetters() const { return this->Letters; }
  QString GetName() const;
  /// From where it is seen, in words.
  QString GetConvention() const;

  /// Show a volume in place of the one before.
  void ShowVolume(const zvVolume& volume);
  bool HasVolume() const { return this->Volume.Image != nullptr; }

  /// Bring camera, letters, title, mask and marks to where the plane is now.
  /// \param up  in the picture, a unit vector in the plane. \param count  of slices, for the title.
  void Follow(const zvPlanePlace& place, const Vector& up, int count);

  /// The whole slice in the view again.
  void ResetCamera();

  void SetHand(Hand hand);

  /// The voxels as they were before the fill of the last press. The caller renders.
  void TakeBackFill();

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
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

private:
  void HandleMouse(QMouseEvent* event);
  void HandleWheel(QWheelEvent* event);
  void HandleKey(QKeyEvent* event);
  void HandleWindowLevel(vtkObject* caller, unsigned long event, void* windowLevel);
  void DragWindowLevel(QMouseEvent* event);
  void PutPointer(const QPoint& position);
  void PressLeft(QMouseEvent* event);
  void TellMarks(QMouseEvent* event);
  void ClickAt(const QPoint& position);
  void MovePicture(const QPoint& position);
  void TellWrites(QMouseEvent* event);
  void TellVoxel();
  void TellVoxelAgain();
  void Zoom(int units);
  bool IsOverSlice();
  void PlaceCamera();
  void FitScale();
  void RefreshMask();

  int Axis;
  std::shared_ptr<zvRenderGroup> Group;
  zvVolume Volume;
  zvWindowValues Value;
  zvWindowLevelDrag Drag;
  Hand LeftHand = Hand::Cross;
  double Nearness = 1.0;                       // how many times nearer than the whole slice
  std::array<double, 2> Shift{ { 0.0, 0.0 } }; // of the eye to the right and up, in millimetres
  zvPlanePlace Place;
  Vector Up{ { 0.0, 0.0, 1.0 } };
  bool IsMovingPicture = false;
  QPoint PictureGrip; // where the mouse was when the picture was moved last
  int WheelUnits = 0; // of a notch that has not been turned to its end
  vtkSmartPointer<vtkImageData> Mask;
  double MaskOpacity = 0.3;
  std::array<double, 10> MaskPlane{}; // where the mask was cut last
  zvEdgeLetters Letters;
  vtkNew<vtkRenderer> Renderer;
  zvLabelOutlines Outlines;
  vtkSmartPointer<zvMarkedViewer> Viewer;
  std::unique_ptr<zvSliceMarks> Marks;
};

#endif
