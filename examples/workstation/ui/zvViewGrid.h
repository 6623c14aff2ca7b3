#ifndef zvViewGrid_h
#define zvViewGrid_h

#include "zvRenderGroup.h"
#include "zvSliceView.h"
#include "zvViewLink.h"

#include <QWidget>

#include <array>
#include <memory>

class QFrame;
class zvVolumeView;

/// The four views of a volume, linked: axial, sagittal, coronal and the 3D planes. One of them may
/// fill the place of all. The view that was pressed or typed in last is the active one.
///
/// Every operation renders what it changed, each view once.
class zvViewGrid : public QWidget
{
  Q_OBJECT

public:
  explicit zvViewGrid(QWidget* parent = nullptr);
  ~zvViewGrid() override;

  zvVolumeView* GetVolumeView() const { return this->VolumeView; }
  /// \param axis  0 sagittal, 1 coronal, 2 axial.
  zvSliceView* GetSliceView(int axis) const
  {
    return this->SliceViews[static_cast<std::size_t>(axis)];
  }
  zvViewLink* GetLink() const { return this->Link.get(); }
  std::array<zvQVTKWidget*, 4> GetViews() const;

  void ShowVolume(const zvVolume& volume, const zvWindowValues& value);
  void SetWindowLevel(const zvWindowValues& value);

  /// Let one view fill the place of all, or give the others theirs again.
  void ToggleMaximised(zvQVTKWidget* view);
  void ToggleActiveView() { this->ToggleMaximised(this->Active); }
  zvQVTKWidget* GetMaximised() const { return this->Maximised; }

  zvQVTKWidget* GetActiveView() const { return this->Active; }
  /// The whole volume in the active view again.
  void ResetActiveView();
  /// All planes along the axes and in the middle, every view as in the beginning.
  void ResetAll();
  void GoTo(int axis, int slice);
  /// Bring a view to where its plane was.
  void GoToPlace(zvSliceView* view, const zvPlanePlace& place);
  void Turn(int axis, double degrees);
  void Straighten();

  /// What the left button does in the slice views.
  void SetHand(zvSliceView::Hand hand);
  /// What paint and fill write.
  void SetFillValue(int value);
  /// Take back the fill of the last press.
  void UndoFill();

  /// A mask over the slices; null for none.
  void SetMask(vtkImageData* mask, double opacity);
  void SetMaskOpacity(double opacity);

signals:
  void voxelSeen(const zvVoxel& voxel);
  void nothingSeen();
  /// Whether there is a fill to take back.
  void fillChanged(bool isThere);

private:
  void BuildLayout();
  void ConnectSlices();
  void ConnectVolumeView();
  bool eventFilter(QObject* watched, QEvent* event) override;
  void Activate(zvQVTKWidget* view);
  void FollowPlanes();
  void TakeWindowLevel(const zvWindowValues& value);
  void TakeWrites(zvSliceView* view, bool byFill);
  void ForgetFill();
  void TellVoxelsChanged();
  void RenderAll();
  QFrame* FrameOf(zvQVTKWidget* view) const;

  std::shared_ptr<zvRenderGroup> Group = std::make_shared<zvRenderGroup>();
  zvVolumeView* VolumeView; // the views are owned by Qt's tree of widgets
  std::array<zvSliceView*, 3> SliceViews{};
  zvQVTKWidget* Active = nullptr;
  zvQVTKWidget* Maximised = nullptr;
  zvSliceView* Filled = nullptr; // where the last fill was, null if it cannot be taken back
  std::unique_ptr<zvViewLink> Link;
};

#endif
