#ifndef zvWindowPanel_h
#define zvWindowPanel_h

#include "zvWindowPresets.h"

#include <QGroupBox>

class QComboBox;
class QDoubleSpinBox;

/// Window and level as numbers, and the presets of the volume.
class zvWindowPanel : public QGroupBox
{
  Q_OBJECT

public:
  explicit zvWindowPanel(QWidget* parent = nullptr);

  /// Offer a volume's presets. Emits nothing.
  /// \param isWhole  whether the volume's values are whole numbers.
  void ShowPresets(const std::vector<zvWindowPreset>& presets, bool isWhole);

  /// Show the present value; the preset that it is, or none, is marked. Emits nothing.
  void ShowValue(const zvWindowValues& value);

  QComboBox* GetPresetBox() const { return this->Presets; }
  QDoubleSpinBox* GetWindowBox() const { return this->Window; }
  QDoubleSpinBox* GetLevelBox() const { return this->Level; }

signals:
  /// The user has chosen a preset or given numbers.
  void chosen(const zvWindowValues& value);

private:
  int FindPreset(const zvWindowValues& value) const; // -1 for none
  void ChoosePreset(int index);
  void ChooseNumbers();

  std::vector<zvWindowPreset> Offered;
  QComboBox* Presets; // the three are owned by Qt's tree of widgets
  QDoubleSpinBox* Window;
  QDoubleSpinBox* Level;
};

#endif
