#include "zvMainWindow.h"

#include "zvContourPanel.h"
#include "zvContourTool.h"
#include "zvEditBar.h"
#include "zvHandTools.h"
#include "zvHeadPhantom.h"
#include "zvHelpOverlay.h"
#include "zvHelpText.h"
#include "zvLoadBar.h"
#include "zvLoadProgress.h"
#include "zvMarkerTools.h"
#include "zvMaskControl.h"
#include "zvMeasurementList.h"
#include "zvMeasurementPanel.h"
#include "zvNoteDesk.h"
#include "zvNoticeBar.h"
#include "zvPresetMenu.h"
#include "zvSliceMarks.h"
#include "zvSlicePanel.h"
#include "zvToolSet.h"
#include "zvTurnPanel.h"
#include "zvViewGrid.h"
#include "zvVolumeView.h"
#include "zvVoxelText.h"
#include "zvWindowMenus.h"
#include "zvWindowPanel.h"

#include <QAbstractSpinBox>
#include <QAction>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QSpinBox>
#include <QStatusBar>
#include <QVBoxLayout>

#include "vtkImageData.h"

#include <algorithm>

namespace
{
constexpr int PanelWidth = 400;
const char* const ProgramName = "Workstation";

// A field would take the half of a number for one as soon as it is left.
void ForgetTyped(QAbstractSpinBox* field)
{
  if (auto* whole = qobject_cast<QSpinBox*>(field))
  {
    whole->setValue(whole->value());
  }
  else if (auto* number = qobject_cast<QDoubleSpinBox*>(field))
  {
    number->setValue(number->value());
  }
}
}

zvMainWindow::zvMainWindow()
  : Tools(new zvToolSet(this))
  , Measurements(new zvMeasurementList(this))
  , Views(new zvViewGrid)
  , Slices(new zvSlicePanel)
  , Window(new zvWindowPanel)
  , Turns(new zvTurnPanel)
  , Notices(new zvNoticeBar)
  , LoadBar(new zvLoadBar)
  , Edit(new zvEditBar)
  , MeasurementPanel(new zvMeasurementPanel(this->Measurements))
  , ContourPanel(new zvContourPanel)
  , Contour(new zvContourTool(this->Views, this->ContourPanel, this->Edit))
  , Presets(new zvPresetMenu(this))
  , Status(new QLabel)
  , Hint(new QLabel)
  , Mask(std::make_unique<zvMaskControl>(this->Edit, this->Views))
  , Notes(std::make_unique<zvNoteDesk>(this, this->Views))
{
  this->setWindowTitle(ProgramName);
  this->resize(1600, 1000);
  this->BuildLayout();
  this->BuildDocks();
  this->BuildStatusBar();
  zvWindowMenus::Build(*this);
  this->Help = new zvHelpOverlay(this, this->menuBar());
  this->ConnectLoaders();
  this->ConnectViews();
  this->ConnectPanels();
  this->ConnectTools();
}

// The views are taken down while all that listens to them is alive; the markers take themselves
// out of the views before.
zvMainWindow::~zvMainWindow()
{
  this->Markers.reset();
  delete this->takeCentralWidget();
}

void zvMainWindow::BuildLayout()
{
  auto* centre = new QWidget;
  auto* layout = new QVBoxLayout(centre);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(this->Notices);
  layout->addWidget(this->Views, 1);
  this->setCentralWidget(centre);
}

void zvMainWindow::BuildDocks()
{
  auto* panels = new QWidget;
  panels->setMinimumWidth(PanelWidth);
  panels->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum); // the rest is the table's
  auto* layout = new QVBoxLayout(panels);
  layout->setContentsMargins(6, 0, 6, 6);
  layout->addWidget(this->Slices);
  layout->addWidget(this->Window);
  layout->addWidget(this->Turns);
  panels->setEnabled(false);
  connect(this, &zvMainWindow::shown, panels, [panels] { panels->setEnabled(true); });
  auto* dock = new QDockWidget(tr("Planes and window"));
  dock->setObjectName("planes");
  dock->setWidget(panels);
  this->addDockWidget(Qt::RightDockWidgetArea, dock);
  this->addDockWidget(Qt::RightDockWidgetArea, this->MeasurementPanel);
  this->tabifyDockWidget(dock, this->ContourPanel);
  dock->raise();
}

void zvMainWindow::BuildStatusBar()
{
  this->Status->setContentsMargins(8, 0, 0, 0);
  this->Hint->setContentsMargins(0, 0, 8, 0);
  this->Hint->setStyleSheet("color:#aeb6c2;");
  this->statusBar()->addWidget(this->Status, 1);
  this->statusBar()->addPermanentWidget(this->Hint);
  this->statusBar()->addPermanentWidget(this->LoadBar);
  this->statusBar()->setSizeGripEnabled(false);
}

void zvMainWindow::ConnectLoaders()
{
  this->ConnectLoader(&this->Loader);
  this->ConnectLoader(this->Mask->GetLoader());
  connect(&this->Loader, &zvVolumeLoader::loaded, this, &zvMainWindow::ShowVolume);
  connect(&this->Loader, &zvVolumeLoader::cancelled, this, &zvMainWindow::cancelled);
  connect(this->Mask.get(), &zvMaskControl::opened, this,
    [this]
    {
      this->EndLoad();
      emit maskOpened();
    });
}

void zvMainWindow::ConnectLoader(zvVolumeLoader* loader)
{
  connect(loader, &zvVolumeLoader::started, this->LoadBar, &zvLoadBar::Begin);
  connect(loader, &zvVolumeLoader::progressed, this->LoadBar, &zvLoadBar::ShowProgress);
  connect(this->LoadBar, &zvLoadBar::cancelled, loader, &zvVolumeLoader::Cancel);
  connect(loader, &zvVolumeLoader::cancelled, this, &zvMainWindow::EndLoad);
  connect(loader, &zvVolumeLoader::refused, this,
    [this](const QString& path, const QString& reason)
    {
      this->EndLoad();
      this->Tell(path, tr("%1 is not shown:\n%2."), reason);
      emit refused(path, reason);
    });
}

// The other loader may still be at work.
void zvMainWindow::EndLoad()
{
  if (!this->Loader.IsLoading() && !this->Mask->GetLoader()->IsLoading())
  {
    this->LoadBar->End();
  }
}

void zvMainWindow::ConnectViews()
{
  zvVolumeView* view = this->GetView();
  connect(view, &zvVolumeView::slicesChanged, this, &zvMainWindow::ShowSlices);
  connect(view, &zvVolumeView::windowLevelChanged, this,
    [this, view] { this->Window->ShowValue(view->GetWindowLevel()); });
  connect(this->Views, &zvViewGrid::voxelSeen, this, &zvMainWindow::ShowVoxel);
  connect(this->Views, &zvViewGrid::nothingSeen, this,
    [this] { this->Status->setText(zvVoxelText::Hint()); });
  connect(
    this->Views->GetLink(), &zvViewLink::straightened, this->Turns, &zvTurnPanel::ShowStraight);
  connect(this->Views, &zvViewGrid::fillChanged, this->Edit, &zvEditBar::ShowFill);
}

void zvMainWindow::ConnectPanels()
{
  connect(this->Slices, &zvSlicePanel::chosen, this->Views, &zvViewGrid::GoTo);
  connect(this->Window, &zvWindowPanel::chosen, this->Views, &zvViewGrid::SetWindowLevel);
  connect(this->Presets, &zvPresetMenu::chosen, this->Views, &zvViewGrid::SetWindowLevel);
  connect(this->Turns, &zvTurnPanel::turned, this->Views, &zvViewGrid::Turn);
  connect(this->Turns, &zvTurnPanel::straightened, this->Views, &zvViewGrid::Straighten);
  connect(this->Edit, &zvEditBar::undoChosen, this->Views, &zvViewGrid::UndoFill);
  connect(this->MeasurementPanel, &zvMeasurementPanel::exported, this,
    [this](const QString& path)
    { this->statusBar()->showMessage(tr("Written: %1").arg(path), 8000); });
  connect(this->MeasurementPanel, &zvMeasurementPanel::failed, this,
    [this](const QString& path, const QString& reason)
    { this->Tell(path, tr("%1 is not written:\n%2."), reason); });
}

void zvMainWindow::ConnectTools()
{
  this->Edit->setEnabled(false);
  connect(this, &zvMainWindow::shown, this->Edit,
    [this]
    {
      this->Edit->setEnabled(true);
      this->Tools->SetEnabled(true);
    });
  zvHandTools::AddTo(this->Tools, this->Views, this->Edit);
  for (int axis : { 2, 0, 1 }) // as the views stand
  {
    this->Measurements->AddSource(this->Views->GetSliceView(axis)->GetMarks());
  }
  this->Markers = std::make_unique<zvMarkerTools>(this->Views, this->Tools, this->Measurements);
  this->Contour->setParent(this);
  this->Contour->AddTo(this->Tools);
  connect(this, &zvMainWindow::shown, this->Contour, &zvContourTool::Begin);
  const auto showHint = [this] { this->Hint->setText(this->GetHintText()); };
  connect(this->Tools, &zvToolSet::chosen, this, showHint);
  showHint();
}

zvVolumeView* zvMainWindow::GetView() const
{
  return this->Views->GetVolumeView();
}

QString zvMainWindow::GetStatusText() const
{
  return this->Status->text();
}

QString zvMainWindow::GetHintText() const
{
  const QAction* tool = this->Tools->GetAction(this->Tools->GetActive());
  return QString("%1: %2").arg(tool->text().remove('&'), this->Tools->GetHint());
}

//------------------------------------------------------------------------------
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

void zvMainWindow::OpenMask(const QString& path, bool isWanted)
{
  this->Mask->Open(path, isWanted);
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

void zvMainWindow::AskForMask()
{
  const QString path = QFileDialog::getOpenFileName(this, tr("Open a mask"), QString(),
    tr("Labels (*.nii *.nii.gz *.mha *.mhd *.nrrd *.nhdr);;All files (*)"));
  if (!path.isEmpty())
  {
    this->OpenMask(path, true);
  }
}

void zvMainWindow::ShowAbout()
{
  QMessageBox::about(this, tr("About %1").arg(ProgramName), zvHelpText::About());
}

void zvMainWindow::GoBack()
{
  if (this->Help->isVisible())
  {
    this->Help->Toggle();
  }
  else if (this->LoadBar->isVisible())
  {
    this->Loader.Cancel();
    this->Mask->GetLoader()->Cancel();
  }
  else if (auto* field = qobject_cast<QAbstractSpinBox*>(this->focusWidget()))
  {
    ForgetTyped(field);
    this->Views->GetActiveView()->setFocus();
  }
  else
  {
    this->Tools->Leave();
  }
}

// A number is entered: the keys belong to the tools and the views again, where a field would
// swallow them.
void zvMainWindow::keyPressEvent(QKeyEvent* event)
{
  const bool isEntered = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (isEntered && qobject_cast<QAbstractSpinBox*>(this->focusWidget()) != nullptr)
  {
    this->Views->GetActiveView()->setFocus();
    event->accept();
    return;
  }
  this->QMainWindow::keyPressEvent(event);
}

//------------------------------------------------------------------------------
void zvMainWindow::ShowVolume(const zvVolume& volume)
{
  this->EndLoad();
  this->Tools->Leave();
  this->Measurements->RemoveAll();
  const std::vector<zvWindowPreset> presets = zvWindowPresets::For(volume);
  const int type = volume.Image->GetScalarType();
  this->Window->ShowPresets(presets, type != VTK_FLOAT && type != VTK_DOUBLE);
  this->Presets->ShowPresets(presets);
  this->Turns->ShowStraight();
  this->Status->setText(zvVoxelText::Hint());
  this->ShowNotices(volume);
  this->setWindowTitle(tr("%1 - %2").arg(QString::fromStdString(volume.Name), ProgramName));
  this->BeginEditing(volume);
  this->Notes->Begin(volume.Image->GetLength());
  this->Markers->ShowVolume(volume.Image);
  this->Views->ShowVolume(volume, presets.front().Value);
  emit shown();
}

void zvMainWindow::ShowNotices(const zvVolume& volume)
{
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
}

// Painting begins with the largest value, which is seen best; the mask is the one of the folder.
void zvMainWindow::BeginEditing(const zvVolume& volume)
{
  const double lowest = std::max(volume.Image->GetScalarTypeMin(), -1.0e9);
  const double highest = std::min(volume.Image->GetScalarTypeMax(), 1.0e9);
  const double value = std::min(std::max(volume.Image->GetScalarRange()[1], lowest), highest);
  this->Edit->Begin(static_cast<int>(value), static_cast<int>(lowest), static_cast<int>(highest));
  this->Mask->Begin(volume.File);
}

void zvMainWindow::ShowVoxel(const zvVoxel& voxel)
{
  zvVoxel known = voxel;
  known.Label = this->Mask->GetNameAt(voxel.Position.data());
  this->Status->setText(
    zvVoxelText::Describe(known, this->GetView()->GetVolume().IsOrientationKnown));
}

void zvMainWindow::ShowSlices()
{
  for (int axis = 0; axis < 3; ++axis)
  {
    this->Slices->ShowSlice(
      axis, this->GetView()->GetSlice(axis), this->GetView()->GetSliceCount(axis));
  }
}

// \param what  a sentence with places for the path and the reason.
void zvMainWindow::Tell(const QString& path, const QString& what, const QString& reason)
{
  if (this->TellsRefusals)
  {
    auto* box = new QMessageBox(
      QMessageBox::Warning, ProgramName, what.arg(path, reason), QMessageBox::Ok, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
  }
}
