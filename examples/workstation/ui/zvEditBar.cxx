#include "zvEditBar.h"

#include "zvLabelAtlas.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>

zvEditBar::zvEditBar(QWidget* parent)
  : QToolBar(parent)
  , Value(new QSpinBox)
  , Regions(new QComboBox)
  , Opacity(new QSlider(Qt::Horizontal))
{
  this->setMovable(false);
  this->BuildTools();
  this->addSeparator();
  this->BuildMask();
}

void zvEditBar::BuildTools()
{
  this->Paint = this->addAction(tr("Paint"));
  this->Paint->setCheckable(true);
  this->Paint->setShortcut(QKeySequence("P"));
  this->Paint->setToolTip(tr("Draw voxels with the left button in a slice view (P)"));
  this->Fill = this->addAction(tr("Fill"));
  this->Fill->setCheckable(true);
  this->Fill->setShortcut(QKeySequence("F"));
  this->Fill->setToolTip(
    tr("Fill a slice from the voxel that is clicked, up to voxels of this value (F)"));
  this->Undo = this->addAction(tr("Undo fill"), this, &zvEditBar::undoChosen);
  this->Undo->setShortcut(QKeySequence::Undo);
  this->Undo->setToolTip(tr("Take back the last fill (Ctrl+Z)"));
  this->Undo->setEnabled(false);
  this->addWidget(new QLabel(tr("  Value ")));
  this->Value->setToolTip(tr("What paint and fill write"));
  this->Value->setKeyboardTracking(false);
  this->addWidget(this->Value);
  connect(this->Paint, &QAction::toggled, this, [this] { this->Choose(this->Paint, this->Fill); });
  connect(this->Fill, &QAction::toggled, this, [this] { this->Choose(this->Fill, this->Paint); });
  connect(this->Value, QOverload<int>::of(&QSpinBox::valueChanged), this, &zvEditBar::handChosen);
}

void zvEditBar::BuildMask()
{
  this->Mask = this->addAction(tr("Mask"));
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

// One tool at most.
void zvEditBar::Choose(QAction* tool, QAction* other)
{
  if (tool->isChecked())
  {
    const QSignalBlocker quiet(other);
    other->setChecked(false);
  }
  emit handChosen();
}

void zvEditBar::Begin(int value, int lowest, int highest)
{
  this->Paint->setChecked(false);
  this->Fill->setChecked(false);
  this->Mask->setChecked(false);
  const QSignalBlocker quiet(this->Value);
  this->Value->setRange(lowest, highest);
  this->Value->setValue(value);
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

zvSliceView::Hand zvEditBar::GetHand() const
{
  if (this->Paint->isChecked())
  {
    return zvSliceView::Hand::Paint;
  }
  return this->Fill->isChecked() ? zvSliceView::Hand::Fill : zvSliceView::Hand::Cross;
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
