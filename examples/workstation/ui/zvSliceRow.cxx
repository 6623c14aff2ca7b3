#include "zvSliceRow.h"

#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>

#include <algorithm>

zvSliceRow::zvSliceRow(
  const QString& name, const QColor& color, const QString& toolTip, QWidget* parent)
  : QWidget(parent)
  , Slider(new QSlider(Qt::Horizontal))
  , Number(new QSpinBox)
  , Count(new QLabel)
{
  auto* chip = new QLabel;
  chip->setFixedSize(10, 10);
  chip->setStyleSheet(QString("background:%1; border-radius:5px;").arg(color.name()));
  this->Number->setKeyboardTracking(false);
  this->Number->setMinimumWidth(64);
  this->Count->setMinimumWidth(44);

  auto* layout = new QGridLayout(this);
  layout->setContentsMargins(0, 2, 0, 6);
  layout->setVerticalSpacing(4);
  layout->addWidget(chip, 0, 0);
  layout->addWidget(new QLabel(name), 0, 1);
  layout->setColumnStretch(1, 1);
  layout->addWidget(this->Number, 0, 2);
  layout->addWidget(this->Count, 0, 3);
  layout->addWidget(this->Slider, 1, 0, 1, 4);
  this->setToolTip(toolTip);
  this->ShowSlice(0, 0);

  connect(this->Slider, &QSlider::valueChanged, this, &zvSliceRow::Choose);
  connect(this->Number, QOverload<int>::of(&QSpinBox::valueChanged), this, &zvSliceRow::Choose);
}

void zvSliceRow::ShowSlice(int index, int count)
{
  const QSignalBlocker quietSlider(this->Slider);
  const QSignalBlocker quietNumber(this->Number);
  const int last = std::max(count - 1, 0);
  this->Slider->setRange(0, last);
  this->Slider->setPageStep(std::max(1, count / 10));
  this->Slider->setValue(index);
  this->Number->setRange(0, last);
  this->Number->setValue(index);
  this->Count->setText(QString("/ %1").arg(last));
}

int zvSliceRow::GetSlice() const
{
  return this->Slider->value();
}

void zvSliceRow::Choose(int index)
{
  const QSignalBlocker quietSlider(this->Slider);
  const QSignalBlocker quietNumber(this->Number);
  this->Slider->setValue(index);
  this->Number->setValue(index);
  emit chosen(index);
}
