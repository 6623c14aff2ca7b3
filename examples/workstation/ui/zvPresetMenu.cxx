#include "zvPresetMenu.h"

zvPresetMenu::zvPresetMenu(QWidget* parent)
  : QMenu(tr("&Window"), parent)
{
  this->setToolTipsVisible(true);
}

void zvPresetMenu::ShowPresets(const std::vector<zvWindowPreset>& presets)
{
  constexpr int keys = 9;
  this->clear();
  int number = 0;
  for (const zvWindowPreset& preset : presets)
  {
    const zvWindowValues value = preset.Value;
    QAction* action = this->addAction(
      QString::fromStdString(preset.Name), this, [this, value] { emit this->chosen(value); });
    action->setToolTip(tr("Window %1, level %2").arg(value.Window).arg(value.Level));
    if (++number <= keys)
    {
      action->setShortcut(QKeySequence(QString::number(number)));
    }
  }
}
