#ifndef zvPresetMenu_h
#define zvPresetMenu_h

#include "zvWindowPresets.h"

#include <QMenu>

/// The presets of window and level as actions with the number keys 1 to 9, in the order in which
/// they are offered.
class zvPresetMenu : public QMenu
{
  Q_OBJECT

public:
  explicit zvPresetMenu(QWidget* parent = nullptr);

  /// Offer a volume's presets in place of those before.
  void ShowPresets(const std::vector<zvWindowPreset>& presets);

signals:
  void chosen(const zvWindowValues& value);
};

#endif
