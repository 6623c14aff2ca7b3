#include "zvMainWindow.h"

#include "zvEditBar.h"
#include "zvHeadPhantom.h"
#include "zvHelpText.h"
#include "zvLoadBar.h"
#include "zvLoadProgress.h"
#include "zvNoticeBar.h"
#include "zvSlicePanel.h"
#include "zvTurnPanel.h"
#include "zvViewGrid.h"
#include "zvVolumeView.h"
#include "zvVoxelText.h"
#include "zvWindowPanel.h"

#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

#include "vtkImageData.h"

#include <algorithm>

namespace
{
constexpr int PanelWidth = 280;
const char* const ProgramName = "Workstation";
}

zvMainWindow::zvMainWindow()
  : Views(new zvViewGrid)
  , Slices(new zvSlicePanel)
  , Window(new zvWindowPanel)
  , Turns(new zvTurnPanel)
  , Notices(new zvNoticeBar)
  , LoadBar(new zvLoadBar)
  , Edit(new zvEditBar)
  , Status(new QLabel)
{
  this->setWindowTitle(ProgramName);
  this->resize(1400, 900);
  this->BuildLayout();
  this->BuildMenus();
  this->ConnectLoader();
  this->ConnectPanels();
  this->ConnectEditBar();
}

zvMainWindow::~zvMainWindow() = default;

void zvMainWindow::BuildLayout()
{
  auto* left = new QVBoxLayout;
  left->setSpacing(0);
  left->addWidget(this->Notices);
  left->addWidget(this->Views, 1);

  auto* panels = new QWidget;
  panels->setFixedWidth(PanelWidth);
  auto* right = new QVBoxLayout(panels);
  right->addWidget(this->Slices);
  right->addWidget(this->Window);
  right->addWidget(this->Turns);
  right->addStretch(1);
  auto* legend = new QLabel(zvHelpText::Legend());
  legend->setStyleSheet("color:#8f97a4;");
  right->addWidget(legend);
  panels->setEnabled(false);
  connect(this, &zvMainWindow::shown, panels, [panels] { panels->setEnabled(true); });

  auto* centre = new QWidget;
  auto* whole = new QHBoxLayout(centre);
  whole->setContentsMargins(0, 0, 0, 0);
  whole->setSpacing(0);
  whole->addLayout(left, 1);
  whole->addWidget(panels);
  this->setCentralWidget(centre);

  this->Status->setContentsMargins(8, 0, 0, 0);
  this->statusBar()->addWidget(this->Status, 1);
  this->statusBar()->addPermanentWidget(this->LoadBar);
  this->statusBar()->setSizeGripEnabled(false);
}

void zvMainWindow::BuildMenus()
{
  this->AddFileActions();
  this->AddViewActions();
  this->AddHelpActions();
}

void zvMainWindow::AddFileActions()
{
  QMenu* menu = this->menuBar()->addMenu(tr("&File"));
  auto* bar = this->addToolBar(tr("File"));
  bar->setObjectName("file");
  bar->setMovable(false);
  QAction* file =
    menu->addAction(tr("&Open file..."), this, &zvMainWindow::AskForFile, QKeySequence::Open);
  file->setToolTip(tr("Open a NIfTI, MetaImage, NRRD or DICOM file (Ctrl+O)"));
  QAction* folder = menu->addAction(
    tr("Open DICOM &folder..."), this, &zvMainWindow::AskForFolder, QKeySequence("Ctrl+Shift+O"));
  folder->setToolTip(tr("Open a series of DICOM files (Ctrl+Shift+O)"));
  bar->addAction(file);
  bar->addAction(folder);
  menu->addAction(tr("Open &mask..."), this, &zvMainWindow::AskForMask);
  menu->addSeparator();
  menu->addAction(tr("Example &volume"), this, &zvMainWindow::OpenExample);
  menu->addAction(tr("Head &phantom"), this, [this] { this->OpenPhantom(); });
  menu->addSeparator();
  menu->addAction(
    tr("&Cancel loading"), &this->Loader, &zvVolumeLoader::Cancel, QKeySequence("Esc"));
  menu->addAction(tr("&Quit"), this, &QWidget::close, QKeySequence::Quit);
}

void zvMainWindow::AddViewActions()
{
  QMenu* menu = this->menuBar()->addMenu(tr("&View"));
  auto* bar = this->findChild<QToolBar*>("file");
  QAction* reset = menu->addAction(
    tr("&Reset view"), this->Views, &zvViewGrid::ResetActiveView, QKeySequence("R"));
  reset->setToolTip(tr("The whole volume in the active view again (R)"));
  QAction* straighten = menu->addAction(
    tr("Planes &orthogonal"), this->Views, &zvViewGrid::Straighten, QKeySequence("O"));
  straighten->setToolTip(tr("The planes along the axes again, through the cross (O)"));
  QAction* all =
    menu->addAction(tr("Reset &all"), this->Views, &zvViewGrid::ResetAll, QKeySequence("Shift+R"));
  all->setToolTip(tr("All planes in the middle, all views as in the beginning (Shift+R)"));
  bar->addSeparator();
  bar->addActions({ reset, straighten, all });
  // Whoever straightens the planes, the sliders go back with them.
  for (QAction* action : { all, straighten })
  {
    connect(action, &QAction::triggered, this->Turns, &zvTurnPanel::ShowStraight);
  }
}

void zvMainWindow::AddHelpActions()
{
  QMenu* menu = this->menuBar()->addMenu(tr("&Help"));
  QAction* mouse = menu->addAction(
    tr("&Mouse and keys"), this,
    [this] { QMessageBox::information(this, tr("Mouse and keys"), zvHelpText::Mouse()); },
    QKeySequence::HelpContents);
  mouse->setToolTip(tr("What the mouse and the keys do (F1)"));
  menu->addAction(tr("&About"), this,
    [this] { QMessageBox::about(this, tr("About %1").arg(ProgramName), zvHelpText::About()); });
  auto* bar = this->findChild<QToolBar*>("file");
  bar->addSeparator();
  bar->addAction(mouse);
}

void zvMainWindow::ConnectLoader()
{
  connect(&this->Loader, &zvVolumeLoader::started, this->LoadBar, &zvLoadBar::Begin);
  connect(&this->Loader, &zvVolumeLoader::progressed, this->LoadBar, &zvLoadBar::ShowProgress);
  connect(this->LoadBar, &zvLoadBar::cancelled, &this->Loader, &zvVolumeLoader::Cancel);
  connect(&this->Loader, &zvVolumeLoader::loaded, this, &zvMainWindow::ShowVolume);
  connect(&this->Loader, &zvVolumeLoader::refused, this, &zvMainWindow::ShowRefusal);
  connect(&this->Loader, &zvVolumeLoader::cancelled, this,
    [this]
    {
      this->LoadBar->End();
      emit cancelled();
    });
}

void zvMainWindow::ConnectPanels()
{
  zvVolumeView* view = this->GetView();
  connect(view, &zvVolumeView::slicesChanged, this, &zvMainWindow::ShowSlices);
  connect(view, &zvVolumeView::windowLevelChanged, this,
    [this, view] { this->Window->ShowValue(view->GetWindowLevel()); });
  connect(this->Views, &zvViewGrid::voxelSeen, this, &zvMainWindow::ShowVoxel);
  connect(this->Views, &zvViewGrid::nothingSeen, this,
    [this] { this->Status->setText(zvVoxelText::Hint()); });
  connect(this->Slices, &zvSlicePanel::chosen, this->Views, &zvViewGrid::GoTo);
  connect(this->Window, &zvWindowPanel::chosen, this->Views, &zvViewGrid::SetWindowLevel);
  connect(this->Turns, &zvTurnPanel::turned, this->Views, &zvViewGrid::Turn);
  connect(this->Turns, &zvTurnPanel::straightened, this->Views, &zvViewGrid::Straighten);
  connect(this->Turns, &zvTurnPanel::straightened, this->Turns, &zvTurnPanel::ShowStraight);
}

void zvMainWindow::ConnectEditBar()
{
  this->addToolBarBreak();
  this->addToolBar(this->Edit);
  this->Edit->setEnabled(false);
  connect(this, &zvMainWindow::shown, this->Edit, [this] { this->Edit->setEnabled(true); });
  connect(this->Edit, &zvEditBar::handChosen, this,
    [this] { this->Views->SetHand(this->Edit->GetHand(), this->Edit->GetValue()); });
  connect(this->Edit, &zvEditBar::undoChosen, this->Views, &zvViewGrid::UndoFill);
  connect(this->Views, &zvViewGrid::fillChanged, this->Edit, &zvEditBar::ShowFill);
  connect(this->Edit, &zvEditBar::maskChosen, this, &zvMainWindow::ShowMask);
  connect(this->Edit, &zvEditBar::opacityChosen, this,
    [this] { this->Views->SetMaskOpacity(this->Edit->GetOpacity()); });
}

zvVolumeView* zvMainWindow::GetView() const
{
  return this->Views->GetVolumeView();
}

void zvMainWindow::ShowVoxel(const zvVoxel& voxel)
{
  zvVoxel known = voxel;
  const int number = this->Atlas.GetNumberAt(voxel.Position.data());
  known.Label = QString::fromStdString(this->Atlas.GetName(number));
  this->Status->setText(
    zvVoxelText::Describe(known, this->GetView()->GetVolume().IsOrientationKnown));
}

void zvMainWindow::AskForMask()
{
  const QString path = QFileDialog::getOpenFileName(this, tr("Open a mask"), QString(),
    tr("Labels (*.nii *.nii.gz *.mha *.mhd *.nrrd *.nhdr);;All files (*)"));
  if (!path.isEmpty() && this->OpenMask(path))
  {
    this->Edit->GetMaskAction()->setChecked(true);
  }
}

bool zvMainWindow::OpenMask(const QString& path)
{
  QApplication::setOverrideCursor(Qt::WaitCursor);
  zvLoadProgress progress;
  const zvLoadResult result = zvVolumeReader::Read(path.toStdString(), progress);
  QApplication::restoreOverrideCursor();
  if (result.Ending != zvLoadResult::Outcome::Loaded)
  {
    this->ShowRefusal(path, QString::fromStdString(result.Reason));
    return false;
  }
  this->AtlasPath = path;
  this->Atlas = zvLabelAtlas(result.Volume.Image, path.toStdString());
  this->Edit->ShowAtlas(true, this->Atlas);
  this->ShowMask();
  return true;
}

// The labels are read when they are first asked for.
void zvMainWindow::ShowMask()
{
  const bool isWanted = this->Edit->IsMaskWanted();
  if (isWanted && this->Atlas.IsEmpty())
  {
    if (!this->OpenMask(this->AtlasPath))
    {
      this->Edit->GetMaskAction()->setChecked(false);
    }
    return;
  }
  const auto mask = isWanted ? this->Atlas.MakeMask(this->Edit->GetRegion()) : nullptr;
  this->Views->SetMask(mask, this->Edit->GetOpacity());
}

void zvMainWindow::AskForFile()
{
  const QString path = QFileDialog::getOpenFileName(this, tr("Open a volume"), QString(),
    tr("Volumes (*.nii *.nii.gz *.hdr *.img *.mha *.mhd *.nrrd *.nhdr *.dcm);;All files (*)"));
  if (!path.isEmpty())
  {
    this->Open(path);
  }
}

void zvMainWindow::AskForFolder()
{
  const QString path = QFileDialog::getExistingDirectory(this, tr("Open a folder of DICOM files"));
  if (!path.isEmpty())
  {
    this->Open(path);
  }
}

void zvMainWindow::Open(const QString& path)
{
  this->Loader.Load(path);
}

void zvMainWindow::OpenExample()
{
  const std::string example = zvVolumeReader::FindExampleVolume();
  if (example.empty())
  {
    this->OpenPhantom();
  }
  else
  {
    this->Open(QString::fromStdString(example));
  }
}

void zvMainWindow::OpenPhantom(int side)
{
  this->Loader.LoadPhantom(side);
}

void zvMainWindow::OpenPhantom()
{
  this->OpenPhantom(zvHeadPhantom::UsualSide);
}

void zvMainWindow::ShowVolume(const zvVolume& volume)
{
  this->LoadBar->End();
  const std::vector<zvWindowPreset> presets = zvWindowPresets::For(volume);
  const int type = volume.Image->GetScalarType();
  this->Window->ShowPresets(presets, type != VTK_FLOAT && type != VTK_DOUBLE);
  this->Turns->ShowStraight();
  this->Status->setText(zvVoxelText::Hint());
  QStringList notices;
  for (const std::string& notice : volume.Notices)
  {
    notices += QString::fromStdString(notice);
  }
  if (!volume.IsOrientationKnown)
  {
    notices += tr("The file does not say how the patient lies: sides are not marked.");
  }
  this->Notices->ShowNotices(notices);
  this->setWindowTitle(tr("%1 - %2").arg(QString::fromStdString(volume.Name), ProgramName));
  this->BeginEditing(volume);
  this->Views->ShowVolume(volume, presets.front().Value);
  emit shown();
}

// Painting begins with the largest value, which is seen best; the mask is the one of the folder.
void zvMainWindow::BeginEditing(const zvVolume& volume)
{
  const double lowest = std::max(volume.Image->GetScalarTypeMin(), -1.0e9);
  const double highest = std::min(volume.Image->GetScalarTypeMax(), 1.0e9);
  const double value = std::min(std::max(volume.Image->GetScalarRange()[1], lowest), highest);
  this->Edit->Begin(static_cast<int>(value), static_cast<int>(lowest), static_cast<int>(highest));
  this->Atlas = zvLabelAtlas();
  this->AtlasPath = QString::fromStdString(zvLabelAtlas::FindBeside(volume.File));
  this->Edit->ShowAtlas(!this->AtlasPath.isEmpty(), this->Atlas);
}

void zvMainWindow::ShowRefusal(const QString& path, const QString& reason)
{
  this->LoadBar->End();
  if (this->TellsRefusals)
  {
    auto* box = new QMessageBox(QMessageBox::Warning, ProgramName,
      tr("%1 is not shown:\n%2.").arg(path, reason), QMessageBox::Ok, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
  }
  emit refused(path, reason);
}

void zvMainWindow::ShowSlices()
{
  for (int axis = 0; axis < 3; ++axis)
  {
    this->Slices->ShowSlice(
      axis, this->GetView()->GetSlice(axis), this->GetView()->GetSliceCount(axis));
  }
}

QString zvMainWindow::GetStatusText() const
{
  return this->Status->text();
}
