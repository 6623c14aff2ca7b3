#include "zvWindowMenus.h"

#include "zvContourPanel.h"
#include "zvEditBar.h"
#include "zvHelpOverlay.h"
#include "zvIcons.h"
#include "zvMainWindow.h"
#include "zvMeasurementPanel.h"
#include "zvPresetMenu.h"
#include "zvToolSet.h"
#include "zvViewGrid.h"

#include <QAction>
#include <QCoreApplication>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

namespace
{
constexpr int IconSide = 22;

QToolBar* AddBar(zvMainWindow& window, const char* id, const QString& title)
{
  auto* bar = window.addToolBar(title);
  bar->setObjectName(id);
  bar->setMovable(false);
  bar->setIconSize(QSize(IconSide, IconSide));
  return bar;
}

QMenu* AddMenu(zvMainWindow& window, const QString& title)
{
  QMenu* menu = window.menuBar()->addMenu(title);
  menu->setToolTipsVisible(true);
  return menu;
}

// An action of a menu; its tooltip tells the key.
template <class Receiver, class What>
QAction* Add(QMenu* menu, const char* icon, const QString& text, const QString& toolTip,
  const QKeySequence& key, Receiver* receiver, What what)
{
  QAction* action = menu->addAction(zvIcons::Make(icon), text, receiver, what, key);
  action->setToolTip(key.isEmpty()
      ? toolTip
      : QString("%1 (%2)").arg(toolTip, key.toString(QKeySequence::NativeText)));
  return action;
}

QString Tr(const char* text)
{
  return QCoreApplication::translate("zvWindowMenus", text);
}

void AddFileMenu(zvMainWindow& window, QToolBar* bar)
{
  QMenu* menu = AddMenu(window, Tr("&File"));
  bar->addAction(
    Add(menu, "open", Tr("&Open file..."), Tr("Open a NIfTI, MetaImage, NRRD or DICOM file"),
      QKeySequence::Open, &window, &zvMainWindow::AskForFile));
  bar->addAction(
    Add(menu, "folder", Tr("Open DICOM &folder..."), Tr("Open a series of DICOM files"),
      QKeySequence("Ctrl+Shift+O"), &window, &zvMainWindow::AskForFolder));
  QAction* mask = Add(menu, "mask", Tr("Open &mask..."), Tr("Open a volume of labels as the mask"),
    QKeySequence("Ctrl+M"), &window, &zvMainWindow::AskForMask);
  bar->addAction(mask);
  mask->setEnabled(false); // there is nothing that it could lie over
  QObject::connect(&window, &zvMainWindow::shown, mask, [mask] { mask->setEnabled(true); });
  menu->addSeparator();
  Add(menu, "", Tr("Example &volume"), Tr("The brain MRI of the system"), QKeySequence("Ctrl+1"),
    &window, &zvMainWindow::OpenExample);
  Add(menu, "", Tr("Head &phantom"), Tr("The built-in head"), QKeySequence("Ctrl+2"), &window,
    [&window] { window.OpenPhantom(); });
  menu->addSeparator();
  Add(menu, "", Tr("&Quit"), Tr("Close the window"), QKeySequence::Quit, &window, &QWidget::close);
}

void AddViewMenu(zvMainWindow& window, QToolBar* bar)
{
  QMenu* menu = AddMenu(window, Tr("&View"));
  bar->addSeparator();
  bar->addAction(
    Add(menu, "reset", Tr("&Reset view"), Tr("The whole volume in the active view again"),
      QKeySequence("R"), window.GetViews(), &zvViewGrid::ResetActiveView));
  bar->addAction(Add(menu, "orthogonal", Tr("Planes &orthogonal"),
    Tr("The planes along the axes again, through the cross"), QKeySequence("O"), window.GetViews(),
    &zvViewGrid::Straighten));
  bar->addAction(Add(menu, "reset-all", Tr("Reset &all"),
    Tr("All planes in the middle, all views as in the beginning"), QKeySequence("Shift+R"),
    window.GetViews(), &zvViewGrid::ResetAll));
  bar->addAction(Add(menu, "maximise", Tr("&Fill the window"),
    Tr("The whole window for the active view, or back"), QKeySequence("V"), window.GetViews(),
    &zvViewGrid::ToggleActiveView));
  menu->addSeparator();
  int number = 0;
  for (auto* dock : window.findChildren<QDockWidget*>())
  {
    QAction* toggle = dock->toggleViewAction();
    const QString key = QString("F%1").arg(7 + number++);
    toggle->setShortcut(QKeySequence(key));
    toggle->setToolTip(Tr("Show or hide this panel (%1)").arg(key));
    menu->addAction(toggle);
  }
}

void AddPresets(zvMainWindow& window, QToolBar* bar)
{
  window.menuBar()->addMenu(window.GetPresetMenu());
  bar->addSeparator();
  auto* button = new QToolButton;
  button->setIcon(zvIcons::Make("window"));
  button->setText(Tr("Window presets") + QString(" \u25be"));
  button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  button->setToolTip(Tr("Windows that suit this volume (1 to 9)"));
  button->setMenu(window.GetPresetMenu());
  button->setPopupMode(QToolButton::InstantPopup);
  bar->addWidget(button);
}

void AddTools(zvMainWindow& window)
{
  QMenu* menu = AddMenu(window, Tr("&Tools"));
  window.addToolBarBreak();
  QToolBar* bar = AddBar(window, "tools", Tr("Tools"));
  bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  // What comes behind the tools stays there.
  QAction* end = menu->addSeparator();
  QObject::connect(window.GetTools(), &zvToolSet::added, menu,
    [menu, bar, end](QAction* action, bool startsGroup)
    {
      if (startsGroup)
      {
        menu->insertSeparator(end);
        bar->addSeparator();
      }
      menu->insertAction(end, action);
      bar->addAction(action);
    });
  zvEditBar* edit = window.GetEditBar();
  window.addToolBar(edit);
  menu->addActions({ edit->GetUndoAction(), edit->GetMaskAction() });
  menu->addSeparator();
  QAction* back = menu->addAction(
    Tr("&Leave the tool, cancel"), &window, &zvMainWindow::GoBack, QKeySequence(Qt::Key_Escape));
  back->setToolTip(Tr("Close the help, cancel loading, or leave the tool (Esc)"));
}

void AddMeasurementMenu(zvMainWindow& window)
{
  AddMenu(window, Tr("&Measurements"))->addActions(window.GetMeasurementPanel()->GetActions());
}

void AddContourMenu(zvMainWindow& window)
{
  AddMenu(window, Tr("&Contour"))->addActions(window.GetContourPanel()->GetActions());
}

void AddHelpMenu(zvMainWindow& window, QToolBar* bar)
{
  QMenu* menu = AddMenu(window, Tr("&Help"));
  bar->addSeparator();
  bar->addAction(Add(menu, "help", Tr("&Mouse and keys"), Tr("What the mouse and the keys do"),
    QKeySequence::HelpContents, &window, [&window] { window.GetHelp()->Toggle(); }));
  Add(menu, "", Tr("&About"), Tr("What this program is"), QKeySequence(), &window,
    &zvMainWindow::ShowAbout);
}
}

void zvWindowMenus::Build(zvMainWindow& window)
{
  QToolBar* bar = AddBar(window, "file", Tr("File and view"));
  bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  AddFileMenu(window, bar);
  AddViewMenu(window, bar);
  AddPresets(window, bar);
  AddTools(window);
  AddMeasurementMenu(window);
  AddContourMenu(window);
  AddHelpMenu(window, bar);
}
