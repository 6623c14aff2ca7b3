#ifndef zvEditBar_h
#define zvEditBar_h

#include <QToolBar>

class QAction;
class QComboBox;
class QSlider;
class QSpinBox;
class zvLabelAtlas;

/// Beside the tools: what paint and fill write, the way back from a fill, and the mask with its
/// region and opacity.
class zvEditBar : public QToolBar
{
  Q_OBJECT

public:
  explicit zvEditBar(QWidget* parent = nullptr);

  /// Begin anew with a volume: no mask is shown. Emits valueChosen, and maskChosen where that
  /// changes. \param value  to offer for writing; \param lowest, highest  what the voxels can hold.
  void Begin(int value, int lowest, int highest);

  /// Whether there is a mask to be shown, and its regions. Emits nothing.
  void ShowAtlas(bool isThere, const zvLabelAtlas& atlas);
  void ShowFill(bool canUndo);

  int GetValue() const;
  bool IsMaskWanted() const;
  /// The number of the region chosen, zvLabelAtlas::AllNumbers for all.
  int GetRegion() const;
  double GetOpacity() const;

  QAction* GetUndoAction() const { return this->Undo; }
  QAction* GetMaskAction() const { return this->Mask; }
  QSpinBox* GetValueBox() const { return this->Value; }
  QComboBox* GetRegionBox() const { return this->Regions; }
  QSlider* GetOpacitySlider() const { return this->Opacity; }

signals:
  void valueChosen();
  void undoChosen();
  void maskChosen();
  void opacityChosen();

private:
  void BuildWriting();
  void BuildMask();

  QAction* Undo; // owned by Qt's tree of objects, as all of these
  QAction* Mask;
  QSpinBox* Value;
  QComboBox* Regions;
  QSlider* Opacity;
};

#endif
