#include "zvTurnPanel.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>

namespace
{
constexpr int Furthest = 90; // degrees

constexpr const char* Names[3] = { QT_TRANSLATE_NOOP("zvTurnPanel", "about x"),
  QT_TRANSLATE_NOOP("zvTurnPanel", "about y"), QT_TRANSLATE_NOOP("zvTurnPanel", "about z") };

QString DegreesText(int degrees)
{
  return QString("%1\u00b0").arg(degrees);
}
}

zvTurnPanel::zvTurnPanel(QWidget* parent)
  : QGroupBox(tr("Turn the planes"), parent)
{
  auto* layout = new QGridLayout(this);
  for (int axis = 0; axis < 3; ++axis)
  {
    auto* slider = new QSlider(Qt::Horizontal);
    slider->setRange(-Furthest, Furthest);
    slider->setToolTip(tr("Turn the three planes together about the cross"));
    auto* number = new QLabel(DegreesText(0));
    number->setMinimumWidth(36);
    number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    layout->addWidget(new QLabel(tr(Names[axis])), axis, 0);
    layout->addWidget(slider, axis, 1);
    layout->addWidget(number, axis, 2);
    this->Sliders[static_cast<std::size_t>(axis)] = slider;
    connect(slider, &QSlider::valueChanged, this,
      [this, axis, number](int degrees)
      {
        number->setText(DegreesText(degrees));
        this->Turn(axis, degrees);
      });
  }
  auto* straighten = new QPushButton(tr("Make them orthogonal"));
  straighten->setToolTip(tr("The planes along the axes again, through the cross (O)"));
  layout->addWidget(straighten, 3, 0, 1, 3);
  connect(straighten, &QPushButton::clicked, this, &zvTurnPanel::straightened);
}

void zvTurnPanel::ShowStraight()
{
  const QSignalBlocker quiet(this);
  for (QSlider* slider : this->Sliders)
  {
    slider->setValue(0);
  }
}

void zvTurnPanel::Turn(int axis, int degrees)
{
  int& known = this->Degrees[static_cast<std::size_t>(axis)];
  const int more = degrees - known;
  known = degrees;
  if (more != 0)
  {
    emit turned(axis, more);
  }
}
