#ifndef zvEditBar_h
#define zvEditBar_h

#include "zvSliceView.h"

#include <QToolBar>

class QAction;
class QComboBox;
class QSlider;
class QSpinBox;
class zvLabelAtlas;

/// The tools of the slice views: the brush, the fill and what they write, and the mask with its
/// region and opacity.
class zvEditBar : public QToolBar
{
  Q_OBJECT

public:
  explicit zvEditBar(QWidget* parent = nullptr);

  /// Begin anew with a volume: the left button moves the cross, no mask is shown. Emits handChosen
  /// and maskChosen where they change.
  /// \param value  to offer for writing; \param lowest, highest  what the voxels can hold.
  void Begin(int value, int lowest, int highest);

  /// Whether there is a mask to be shown, and its regions. Emits nothing.
  void ShowAtlas(bool isThere, const zvLabelAtlas& atlas);
  void ShowFill(bool canUndo);

  zvSliceView::Hand GetHand() const;
  int GetValue() const;
  bool IsMaskWanted() const;
  /// The number of the region chosen, zvLabelAtlas::AllNumbers for all.
  int GetRegion() const;
  double GetOpacity() const;

  QAction* GetPaintAction() const { return this->Paint; }
  QAction* GetFillAction() const { return this->Fill; }
  QAction* GetUndoAction() const { return this->Undo; }
  QAction* GetMaskAction() const { return this->Mask; }
  QSpinBox* GetValueBox() const { return this->Value; }
  QComboBox* GetRegionBox() const { return this->Regions; }
  QSlider* GetOpacitySlider() const { return this->Opacity; }

signals:
  void handChosen();
  void undoChosen();
  void maskChosen();
  void opacityChosen();

private:
  void BuildTools();
  void BuildMask();
  void Choose(QAction* tool, QAction* other);

  QAction* Paint; // owned by Qt's tree of objects, as all of these
  QAction* Fill;
  QAction* Undo;
  QAction* Mask;
  QSpinBox* Value;
  QComboBox* Regions;
  QSlider* Opacity;
};

#endif
