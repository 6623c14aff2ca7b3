#include "zvEditBar.h"

#include "zvIcons.h"
#include "zvLabelAtlas.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>

namespace
{
constexpr int IconSide = 22;
}

zvEditBar::zvEditBar(QWidget* parent)
  : QToolBar(parent)
  , Value(new QSpinBox)
  , Regions(new QComboBox)
  , Opacity(new QSlider(Qt::Horizontal))
{
  this->setObjectName("edit");
  this->setWindowTitle(tr("Voxels and mask"));
  this->setMovable(false);
  this->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  this->setIconSize(QSize(IconSide, IconSide));
  this->BuildWriting();
  this->addSeparator();
  this->BuildMask();
}

void zvEditBar::BuildWriting()
{
  this->addWidget(new QLabel(tr("Value ")));
  this->Value->setToolTip(tr("What paint and fill write"));
  this->Value->setKeyboardTracking(false);
  this->addWidget(this->Value);
  this->Undo =
    this->addAction(zvIcons::Make("undo"), tr("Undo fill"), this, &zvEditBar::undoChosen);
  this->Undo->setShortcut(QKeySequence::Undo);
  this->Undo->setToolTip(tr("Take back the last fill (Ctrl+Z)"));
  this->Undo->setEnabled(false);
  connect(this->Value, QOverload<int>::of(&QSpinBox::valueChanged), this, &zvEditBar::valueChosen);
}

void zvEditBar::BuildMask()
{
  this->Mask = this->addAction(zvIcons::Make("mask"), tr("Mask"));
  this->Mask->setCheckable(true);
  this->Mask->setShortcut(QKeySequence("M"));
  this->Mask->setToolTip(tr("Show the labelled regions in red over the slices (M)"));
  this->Regions->setToolTip(tr("The region that is shown"));
  this->Regions->setMinimumContentsLength(16);
  this->Regions->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  this->addWidget(this->Regions);
  this->addWidget(new QLabel(tr("  Opacity ")));
  this->Opacity->setRange(0, 100);
  this->Opacity->setValue(30);
  this->Opacity->setFixedWidth(100);
  this->Opacity->setToolTip(tr("How much the mask covers"));
  this->addWidget(this->Opacity);
  this->ShowAtlas(false, zvLabelAtlas());
  connect(this->Mask, &QAction::toggled, this, &zvEditBar::maskChosen);
  connect(this->Regions, QOverload<int>::of(&QComboBox::activated), this, &zvEditBar::maskChosen);
  connect(this->Opacity, &QSlider::valueChanged, this, &zvEditBar::opacityChosen);
}

void zvEditBar::Begin(int value, int lowest, int highest)
{
  this->Mask->setChecked(false);
  {
    const QSignalBlocker quiet(this->Value);
    this->Value->setRange(lowest, highest);
    this->Value->setValue(value);
  }
  emit valueChosen();
}

void zvEditBar::ShowAtlas(bool isThere, const zvLabelAtlas& atlas)
{
  this->Mask->setEnabled(isThere);
  this->Opacity->setEnabled(isThere);
  const QSignalBlocker quiet(this->Regions);
  this->Regions->clear();
  this->Regions->addItem(tr("All regions"), zvLabelAtlas::AllNumbers);
  for (int number : atlas.GetNumbers())
  {
    this->Regions->addItem(QString::fromStdString(atlas.GetName(number)), number);
  }
  this->Regions->setEnabled(isThere && !atlas.IsEmpty());
}

void zvEditBar::ShowFill(bool canUndo)
{
  this->Undo->setEnabled(canUndo);
}

int zvEditBar::GetValue() const
{
  return this->Value->value();
}

bool zvEditBar::IsMaskWanted() const
{
  return this->Mask->isChecked();
}

int zvEditBar::GetRegion() const
{
  return this->Regions->currentData().toInt();
}

double zvEditBar::GetOpacity() const
{
  return this->Opacity->value() / 100.0;
}
