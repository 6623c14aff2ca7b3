#include "zvWindowPanel.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QSignalBlocker>

#include <algorithm>
#include <cmath>

namespace
{
constexpr double LargestNumber = 1.0e9;

QDoubleSpinBox* MakeBox(double lowest, const QString& toolTip)
{
  auto* box = new QDoubleSpinBox;
  box->setRange(lowest, LargestNumber);
  box->setStepType(QAbstractSpinBox::AdaptiveDecimalStepType);
  box->setKeyboardTracking(false);
  box->setToolTip(toolTip);
  return box;
}

bool AreEqual(const zvWindowValues& one, const zvWindowValues& other)
{
  const double tolerance = 1.0e-6 * std::fabs(one.Window);
  return std::fabs(one.Window - other.Window) <= tolerance &&
    std::fabs(one.Level - other.Level) <= tolerance;
}
}

zvWindowPanel::zvWindowPanel(QWidget* parent)
  : QGroupBox(tr("Window and level"), parent)
  , Presets(new QComboBox)
  , Window(MakeBox(1.0e-6, tr("How many values lie between black and white")))
  , Level(MakeBox(-LargestNumber, tr("The value of middle grey")))
{
  this->Presets->setToolTip(tr("Windows that suit this volume"));
  this->Presets->setPlaceholderText(tr("Own values"));
  auto* layout = new QFormLayout(this);
  layout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  layout->addRow(tr("Preset"), this->Presets);
  layout->addRow(tr("Window"), this->Window);
  layout->addRow(tr("Level"), this->Level);
  connect(
    this->Presets, QOverload<int>::of(&QComboBox::activated), this, &zvWindowPanel::ChoosePreset);
  for (QDoubleSpinBox* box : { this->Window, this->Level })
  {
    connect(box, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
      &zvWindowPanel::ChooseNumbers);
  }
}

void zvWindowPanel::ShowPresets(const std::vector<zvWindowPreset>& presets, bool isWhole)
{
  const QSignalBlocker quiet(this->Presets);
  this->Offered = presets;
  this->Presets->clear();
  for (const zvWindowPreset& preset : presets)
  {
    this->Presets->addItem(QString::fromStdString(preset.Name));
  }
  this->Window->setDecimals(isWhole ? 1 : 4);
  this->Level->setDecimals(isWhole ? 1 : 4);
}

void zvWindowPanel::ShowValue(const zvWindowValues& value)
{
  const QSignalBlocker quietPresets(this->Presets);
  const QSignalBlocker quietWindow(this->Window);
  const QSignalBlocker quietLevel(this->Level);
  this->Window->setValue(value.Window);
  this->Level->setValue(value.Level);
  // Two presets may be the same for a volume; then the one that was chosen stays.
  int known = this->Presets->currentIndex();
  if (known < 0 || !AreEqual(this->Offered[static_cast<std::size_t>(known)].Value, value))
  {
    known = this->FindPreset(value);
  }
  this->Presets->setCurrentIndex(known);
}

int zvWindowPanel::FindPreset(const zvWindowValues& value) const
{
  const auto found = std::find_if(this->Offered.begin(), this->Offered.end(),
    [&value](const zvWindowPreset& preset) { return AreEqual(preset.Value, value); });
  return found == this->Offered.end() ? -1 : static_cast<int>(found - this->Offered.begin());
}

void zvWindowPanel::ChoosePreset(int index)
{
  if (index >= 0 && index < static_cast<int>(this->Offered.size()))
  {
    emit chosen(this->Offered[static_cast<std::size_t>(index)].Value);
  }
}

void zvWindowPanel::ChooseNumbers()
{
  emit chosen({ this->Window->value(), this->Level->value() });
}
