#include "zvContourPanel.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

namespace
{
constexpr int ProgressSteps = 1000;
constexpr double DefaultRadius = 15.0;
constexpr int DefaultPoints = 100;

// A parameter, and where it is kept.
struct Row
{
  const char* Id;
  const char* Name;
  const char* ToolTip;
  double Low;
  double High;
  double Step;
  int Decimals;
  double& (*In)(zvWalkParameters&);
};

constexpr Row Rows[] = {
  { "balloon", QT_TRANSLATE_NOOP("zvContourPanel", "Balloon"),
    QT_TRANSLATE_NOOP("zvContourPanel", "Pressure: above 0 the contour grows, below 0 it shrinks"),
    -2.0, 2.0, 0.1, 2, [](zvWalkParameters& all) -> double& { return all.Contour.Balloon; } },
  { "tissue", QT_TRANSLATE_NOOP("zvContourPanel", "Tissue"),
    QT_TRANSLATE_NOOP("zvContourPanel",
      "How far values may lie from those that the contour begins in, in spreads of these; beyond, "
      "the balloon drives back. 0: all values are alike"),
    0.0, 20.0, 0.25, 2, [](zvWalkParameters& all) -> double& { return all.Contour.TissueRange; } },
  { "edges", QT_TRANSLATE_NOOP("zvContourPanel", "Edge pull"),
    QT_TRANSLATE_NOOP("zvContourPanel", "How strongly edges attract the contour"), 0.0, 10.0, 0.1,
    2, [](zvWalkParameters& all) -> double& { return all.Contour.EdgePull; } },
  { "contrast", QT_TRANSLATE_NOOP("zvContourPanel", "Edge contrast"),
    QT_TRANSLATE_NOOP(
      "zvContourPanel", "From which part of the strongest gradient on there is an edge"),
    0.01, 1.0, 0.05, 2,
    [](zvWalkParameters& all) -> double& { return all.Contour.Forces.EdgeContrast; } },
  { "smoothing", QT_TRANSLATE_NOOP("zvContourPanel", "Smoothing"),
    QT_TRANSLATE_NOOP("zvContourPanel", "Of the slice before its gradient is taken, in voxels"),
    0.0, 10.0, 0.25, 2,
    [](zvWalkParameters& all) -> double& { return all.Contour.Forces.Smoothing; } },
  { "elasticity", QT_TRANSLATE_NOOP("zvContourPanel", "Elasticity"),
    QT_TRANSLATE_NOOP("zvContourPanel", "How strongly the points draw together"), 0.0, 10.0, 0.05,
    2, [](zvWalkParameters& all) -> double& { return all.Contour.Elasticity; } },
  { "stiffness", QT_TRANSLATE_NOOP("zvContourPanel", "Stiffness"),
    QT_TRANSLATE_NOOP("zvContourPanel", "How strongly the contour resists bending"), 0.0, 100.0,
    0.25, 2, [](zvWalkParameters& all) -> double& { return all.Contour.Stiffness; } },
  { "step", QT_TRANSLATE_NOOP("zvContourPanel", "Step"),
    QT_TRANSLATE_NOOP("zvContourPanel", "The furthest that a point moves in a step, in voxels"),
    0.05, 2.0, 0.05, 2, [](zvWalkParameters& all) -> double& { return all.Contour.StepLength; } },
  { "growth", QT_TRANSLATE_NOOP("zvContourPanel", "Growth limit"),
    QT_TRANSLATE_NOOP("zvContourPanel",
      "From a slice to the next the area may grow by this factor; more is a leak and ends that "
      "direction. 0: any"),
    0.0, 100.0, 0.5, 1, [](zvWalkParameters& all) -> double& { return all.MostGrowth; } },
};

QDoubleSpinBox* MakeBox(double low, double high, double step, int decimals, const QString& toolTip)
{
  auto* box = new QDoubleSpinBox;
  box->setRange(low, high);
  box->setSingleStep(step);
  box->setDecimals(decimals);
  box->setToolTip(toolTip);
  box->setKeyboardTracking(false);
  return box;
}

// Name and value, two of them beside each other.
void AddCell(QGridLayout* grid, int place, const QString& name, QWidget* value)
{
  auto* label = new QLabel(name);
  label->setToolTip(value->toolTip());
  const int column = 2 * (place % 2);
  grid->addWidget(label, place / 2, column);
  grid->addWidget(value, place / 2, column + 1);
}
}

zvContourPanel::zvContourPanel(QWidget* parent)
  : QDockWidget(tr("Active contour"), parent)
  , Extent(new QComboBox)
  , GradientBox(new QComboBox)
  , First(new QSpinBox)
  , Last(new QSpinBox)
  , Points(new QSpinBox)
  , Radius(MakeBox(0.1, 1000.0, 1.0, 1, tr("Of the ring that a click places, in millimetres")))
  , Place(new QLabel)
  , Message(new QLabel)
  , Progress(new QProgressBar)
  , Start(new QPushButton(tr("Start")))
  , Step(new QPushButton(tr("Step")))
  , Stop(new QPushButton(tr("Stop")))
  , Reset(new QPushButton(tr("Reset")))
  , Clear(new QPushButton(tr("Clear")))
  , Defaults(new QPushButton(tr("Defaults")))
  , Mask(new QCheckBox(tr("Show what is inside as a mask")))
  , Values(new QWidget)
{
  this->setObjectName("contour");
  auto* inside = new QWidget;
  auto* layout = new QVBoxLayout(inside);
  layout->setContentsMargins(6, 0, 6, 6);
  auto* values = new QVBoxLayout(this->Values);
  values->setContentsMargins(0, 0, 0, 0);
  values->addWidget(this->BuildWhere());
  values->addWidget(this->BuildParameters());
  layout->addWidget(this->Values);
  layout->addWidget(this->BuildRun());
  this->BuildActions();
  layout->addStretch(1);
  this->setWidget(inside);
  this->ResetParameters();
  this->Radius->setValue(DefaultRadius);
  this->Points->setValue(DefaultPoints);
  this->GradientBox->setCurrentIndex(static_cast<int>(zvContourView::Gradient::OfSlice));
  this->Connect();
  this->ShowState(State::Away, false);
}

QWidget* zvContourPanel::BuildWhere()
{
  this->Extent->addItems({ tr("In this slice"), tr("Through the volume") });
  this->Extent->setToolTip(tr("Whether the contour stays in its slice, or goes on to the others"));
  this->GradientBox->addItems({ tr("Hidden"), tr("At the contour"), tr("Of the slice") });
  this->GradientBox->setToolTip(
    tr("Which edges are shown; at the contour only where it goes through the volume"));
  this->First->setToolTip(tr("The first slice that the contour may enter"));
  this->Last->setToolTip(tr("The last slice that the contour may enter"));
  this->Points->setRange(8, 1000);
  this->Points->setToolTip(tr("How many points a new contour has"));
  this->Points->setKeyboardTracking(false);
  auto* box = new QGroupBox(tr("Contour"));
  auto* grid = new QGridLayout(box);
  grid->addWidget(this->Place, 0, 0, 1, 4);
  grid->addWidget(new QLabel(tr("Moves")), 1, 0);
  grid->addWidget(this->Extent, 1, 1, 1, 3);
  grid->addWidget(new QLabel(tr("Edges")), 2, 0);
  grid->addWidget(this->GradientBox, 2, 1, 1, 3);
  AddCell(grid, 6, tr("From slice"), this->First);
  AddCell(grid, 7, tr("to slice"), this->Last);
  AddCell(grid, 8, tr("Ring radius"), this->Radius);
  AddCell(grid, 9, tr("Points"), this->Points);
  return box;
}

QWidget* zvContourPanel::BuildParameters()
{
  auto* box = new QGroupBox(tr("Forces"));
  auto* grid = new QGridLayout(box);
  for (const Row& row : Rows)
  {
    QDoubleSpinBox* value = MakeBox(row.Low, row.High, row.Step, row.Decimals, tr(row.ToolTip));
    value->setObjectName(row.Id);
    AddCell(grid, static_cast<int>(this->Boxes.size()), tr(row.Name), value);
    this->Boxes.push_back(value);
  }
  this->Defaults->setToolTip(tr("The forces as in the beginning"));
  grid->addWidget(this->Defaults, static_cast<int>(this->Boxes.size()) / 2, 2, 1, 2);
  return box;
}

QWidget* zvContourPanel::BuildRun()
{
  this->Start->setToolTip(tr("Let the contour move, or go on"));
  this->Step->setToolTip(tr("One step"));
  this->Stop->setToolTip(tr("Let it pause; start goes on"));
  this->Reset->setToolTip(tr("Back to where it began to move"));
  this->Clear->setToolTip(tr("Remove all contours of this plane"));
  this->Mask->setToolTip(tr("Show what the contours at rest enclose in red over the slices"));
  this->Progress->setRange(0, ProgressSteps);
  this->Progress->setTextVisible(false);
  this->Progress->setFixedHeight(8);
  this->Message->setWordWrap(true);
  this->Message->setMinimumHeight(3 * this->Message->fontMetrics().height());
  this->Message->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  auto* run = new QWidget;
  auto* grid = new QGridLayout(run);
  grid->setContentsMargins(0, 0, 0, 0);
  int column = 0;
  for (QPushButton* button : { this->Start, this->Step, this->Stop, this->Reset, this->Clear })
  {
    button->setMinimumWidth(40);
    grid->addWidget(button, 0, column++);
  }
  grid->addWidget(this->Progress, 1, 0, 1, column);
  grid->addWidget(this->Message, 2, 0, 1, column);
  grid->addWidget(this->Mask, 3, 0, 1, column);
  return run;
}

void zvContourPanel::BuildActions()
{
  struct Row
  {
    QPushButton* Button;
    QString Text;
    const char* Key;
  };
  const Row rows[] = { { this->Start, tr("&Start"), "F5" }, { this->Step, tr("S&tep"), "F6" },
    { this->Stop, tr("Sto&p"), "Shift+F5" }, { this->Reset, tr("&Reset"), "Ctrl+F5" },
    { this->Clear, tr("&Clear"), "Ctrl+F6" } };
  const auto make = [this](QWidget* control, const QString& text, const char* key)
  {
    auto* action = new QAction(text, this);
    action->setShortcut(QKeySequence(key));
    control->setToolTip(QString("%1 (%2)").arg(
      control->toolTip(), action->shortcut().toString(QKeySequence::NativeText)));
    action->setToolTip(control->toolTip());
    return action;
  };
  for (const Row& row : rows)
  {
    this->Commands.push_back({ row.Button, make(row.Button, row.Text, row.Key) });
    connect(this->Commands.back().Action, &QAction::triggered, row.Button, &QPushButton::click);
  }
  this->MaskAction = make(this->Mask, tr("What is inside as a &mask"), "Shift+M");
  this->MaskAction->setCheckable(true);
  connect(this->MaskAction, &QAction::triggered, this->Mask, &QCheckBox::setChecked);
  connect(this->Mask, &QCheckBox::toggled, this->MaskAction, &QAction::setChecked);
}

QList<QAction*> zvContourPanel::GetActions() const
{
  QList<QAction*> actions;
  for (const Command& command : this->Commands)
  {
    actions += command.Action;
  }
  return actions += this->MaskAction;
}

void zvContourPanel::Connect()
{
  connect(this->Start, &QPushButton::clicked, this, &zvContourPanel::startChosen);
  connect(this->Step, &QPushButton::clicked, this, &zvContourPanel::stepChosen);
  connect(this->Stop, &QPushButton::clicked, this, &zvContourPanel::stopChosen);
  connect(this->Reset, &QPushButton::clicked, this, &zvContourPanel::resetChosen);
  connect(this->Clear, &QPushButton::clicked, this, &zvContourPanel::clearChosen);
  connect(this->Defaults, &QPushButton::clicked, this, &zvContourPanel::ResetParameters);
  connect(this->Mask, &QCheckBox::toggled, this, &zvContourPanel::maskChosen);
  const auto changed = QOverload<int>::of(&QComboBox::currentIndexChanged);
  connect(this->Extent, changed, this,
    [this]
    {
      this->First->setEnabled(this->IsInVolume());
      this->Last->setEnabled(this->IsInVolume());
      emit extentChosen();
    });
  connect(this->GradientBox, changed, this, &zvContourPanel::gradientChosen);
  connect(this->Radius, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
    &zvContourPanel::ringChosen);
  connect(
    this->Points, QOverload<int>::of(&QSpinBox::valueChanged), this, &zvContourPanel::ringChosen);
}

void zvContourPanel::ResetParameters()
{
  zvWalkParameters parameters;
  for (std::size_t i = 0; i < this->Boxes.size(); ++i)
  {
    this->Boxes[i]->setValue(Rows[i].In(parameters));
  }
}

zvWalkParameters zvContourPanel::GetParameters() const
{
  zvWalkParameters parameters;
  for (std::size_t i = 0; i < this->Boxes.size(); ++i)
  {
    Rows[i].In(parameters) = this->Boxes[i]->value();
  }
  if (this->IsInVolume())
  {
    parameters.First = this->First->value();
    parameters.Last = this->Last->value();
  }
  return parameters;
}

bool zvContourPanel::IsInVolume() const
{
  return this->Extent->currentIndex() == 1;
}

zvContourView::Gradient zvContourPanel::GetGradient() const
{
  return static_cast<zvContourView::Gradient>(this->GradientBox->currentIndex());
}

double zvContourPanel::GetRingRadius() const
{
  return this->Radius->value();
}

int zvContourPanel::GetPointCount() const
{
  return this->Points->value();
}

bool zvContourPanel::IsMaskWanted() const
{
  return this->Mask->isChecked();
}

QDoubleSpinBox* zvContourPanel::GetBox(const QString& name) const
{
  return this->findChild<QDoubleSpinBox*>(name);
}

void zvContourPanel::ShowState(State state, bool canReset)
{
  const bool isRunning = state == State::Running;
  const bool canMove = state == State::Ready || state == State::Paused;
  this->widget()->setEnabled(state != State::Away);
  this->Values->setEnabled(!isRunning);
  this->Start->setEnabled(canMove);
  this->Step->setEnabled(canMove);
  this->Stop->setEnabled(isRunning);
  this->Reset->setEnabled(!isRunning && canReset);
  this->Clear->setEnabled(!isRunning);
  this->First->setEnabled(this->IsInVolume());
  this->Last->setEnabled(this->IsInVolume());
  for (const Command& command : this->Commands)
  {
    command.Action->setEnabled(command.Button->isEnabled());
  }
  this->MaskAction->setEnabled(this->Mask->isEnabled());
}

void zvContourPanel::ShowPlace(const QString& place)
{
  this->Place->setText(place);
}

void zvContourPanel::ShowMessage(const QString& message)
{
  this->Message->setText(message);
}

QString zvContourPanel::GetMessage() const
{
  return this->Message->text();
}

void zvContourPanel::ShowProgress(double fraction)
{
  this->Progress->setValue(static_cast<int>(fraction * ProgressSteps));
}

void zvContourPanel::ShowSlices(int count, bool chooseAll)
{
  for (QSpinBox* box : { this->First, this->Last })
  {
    const QSignalBlocker quiet(box);
    box->setRange(0, count - 1);
  }
  if (chooseAll)
  {
    this->First->setValue(0);
    this->Last->setValue(count - 1);
  }
}

void zvContourPanel::ShowMaskWanted(bool isWanted)
{
  const QSignalBlocker quiet(this->Mask);
  this->Mask->setChecked(isWanted);
  this->MaskAction->setChecked(isWanted);
}
