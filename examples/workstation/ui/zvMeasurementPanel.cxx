#include "zvMeasurementPanel.h"

#include "zvIcons.h"
#include "zvMeasurementList.h"

#include <QAction>
#include <QFile>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QToolBar>
#include <QVBoxLayout>

#include <algorithm>

namespace
{
constexpr int NameWidth = 104;
}

zvMeasurementPanel::zvMeasurementPanel(zvMeasurementList* list, QWidget* parent)
  : QDockWidget(tr("Measurements"), parent)
  , List(list)
  , Table(new QTableView)
  , Empty(new QLabel(tr("Nothing measured yet.\nChoose a tool and draw in a view.")))
  , Bar(new QToolBar)
{
  this->setObjectName("measurements");
  this->setAllowedAreas(Qt::AllDockWidgetAreas);
  this->BuildTable();
  this->BuildActions();
  this->BuildLayout();
  const auto show = [this] { this->ShowState(); };
  connect(list, &QAbstractItemModel::rowsInserted, this, show);
  connect(list, &QAbstractItemModel::rowsRemoved, this, show);
  connect(list, &QAbstractItemModel::dataChanged, this, show);
  connect(this->Table->selectionModel(), &QItemSelectionModel::selectionChanged, this, show);
  this->ShowState();
}

void zvMeasurementPanel::BuildTable()
{
  this->Table->setModel(this->List);
  this->Table->setSelectionBehavior(QAbstractItemView::SelectRows);
  this->Table->setEditTriggers(QAbstractItemView::DoubleClicked);
  this->Table->setContextMenuPolicy(Qt::ActionsContextMenu);
  this->Table->setAlternatingRowColors(true);
  this->Table->setShowGrid(false);
  this->Table->setWordWrap(false);
  this->Table->setTabKeyNavigation(false);
  this->Table->verticalHeader()->hide();
  this->Table->verticalHeader()->setDefaultSectionSize(24);
  QHeaderView* header = this->Table->horizontalHeader();
  header->setHighlightSections(false);
  header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  header->setSectionResizeMode(zvMeasurementList::ValueColumn, QHeaderView::Stretch);
  header->resizeSection(zvMeasurementList::NameColumn, NameWidth);
  connect(this->Table, &QTableView::clicked, this,
    [this](const QModelIndex& index) { this->List->GoTo(index.row()); });
  connect(this->Table, &QTableView::doubleClicked, this,
    [this](const QModelIndex& index)
    {
      if (index.column() != zvMeasurementList::NameColumn)
      {
        this->List->Edit(index.row());
      }
    });
}

QAction* zvMeasurementPanel::MakeAction(const QString& icon, const QString& text,
  const QString& toolTip, const QKeySequence& key, void (zvMeasurementPanel::*what)())
{
  auto* action = new QAction(zvIcons::Make(icon), text, this);
  action->setShortcut(key);
  action->setToolTip(QString("%1 (%2)").arg(toolTip, key.toString(QKeySequence::NativeText)));
  connect(action, &QAction::triggered, this, what);
  return action;
}

void zvMeasurementPanel::BuildActions()
{
  this->GoTo = this->MakeAction("goto", tr("&Go to the slice"),
    tr("Go to where the selected mark is"), QKeySequence("G"), &zvMeasurementPanel::GoToCurrent);
  this->Hide =
    this->MakeAction("hide", tr("&Hide or show"), tr("Hide the selected marks, or show them"),
      QKeySequence("H"), &zvMeasurementPanel::HideSelected);
  this->Rename =
    this->MakeAction("rename", tr("&Rename"), tr("Give the selected mark another name"),
      QKeySequence("F2"), &zvMeasurementPanel::RenameCurrent);
  this->Remove = this->MakeAction("delete", tr("&Delete"),
    tr("Delete the mark under the mouse, or the selected ones"), QKeySequence(Qt::Key_Delete),
    &zvMeasurementPanel::RemoveOne);
  this->RemoveAll =
    this->MakeAction("delete-all", tr("Delete &all..."), tr("Delete all marks of all views"),
      QKeySequence("Shift+Del"), &zvMeasurementPanel::AskToRemoveAll);
  this->Export = this->MakeAction("export", tr("&Export..."), tr("Write the table to a CSV file"),
    QKeySequence("Ctrl+E"), &zvMeasurementPanel::AskForFile);
}

void zvMeasurementPanel::BuildLayout()
{
  this->Empty->setAlignment(Qt::AlignCenter);
  this->Empty->setStyleSheet("color:#8f97a4;");
  this->Bar->setIconSize(QSize(18, 18));
  auto* inside = new QWidget;
  auto* layout = new QVBoxLayout(inside);
  layout->setContentsMargins(4, 4, 4, 0);
  layout->setSpacing(0);
  layout->addWidget(this->Table, 1);
  layout->addWidget(this->Empty, 1);
  layout->addWidget(this->Bar);
  this->setWidget(inside);
  this->Table->addActions({ this->GoTo, this->Hide, this->Rename, this->Remove });
  this->Bar->addActions(this->GetActions());
}

QList<QAction*> zvMeasurementPanel::GetActions() const
{
  return { this->GoTo, this->Hide, this->Rename, this->Remove, this->RemoveAll, this->Export };
}

void zvMeasurementPanel::ShowState()
{
  const bool isAny = this->List->rowCount() > 0;
  const bool isSelected = !this->GetSelectedRows().empty();
  this->Table->setVisible(isAny);
  this->Empty->setVisible(!isAny);
  for (int column : { zvMeasurementList::KindColumn, zvMeasurementList::ViewColumn,
         zvMeasurementList::SliceColumn })
  {
    this->Table->resizeColumnToContents(column);
  }
  for (QAction* action : { this->GoTo, this->Hide, this->Rename })
  {
    action->setEnabled(isSelected);
  }
  for (QAction* action : { this->RemoveAll, this->Export })
  {
    action->setEnabled(isAny);
  }
}

std::vector<int> zvMeasurementPanel::GetSelectedRows() const
{
  std::vector<int> rows;
  for (const QModelIndex& index : this->Table->selectionModel()->selectedRows())
  {
    rows.push_back(index.row());
  }
  std::sort(rows.begin(), rows.end());
  return rows;
}

void zvMeasurementPanel::GoToCurrent()
{
  this->List->GoTo(this->Table->currentIndex().row());
}

// All hidden, or if they are all hidden shown.
void zvMeasurementPanel::HideSelected()
{
  const std::vector<int> rows = this->GetSelectedRows();
  const bool isAnyShown =
    std::any_of(rows.begin(), rows.end(), [this](int row) { return !this->List->IsHidden(row); });
  for (int row : rows)
  {
    this->List->SetHidden(row, isAnyShown);
  }
}

void zvMeasurementPanel::RenameCurrent()
{
  const int row = this->Table->currentIndex().row();
  this->show();
  this->Table->setFocus();
  this->Table->edit(this->List->index(row, zvMeasurementList::NameColumn));
}

void zvMeasurementPanel::RemoveOne()
{
  if (this->List->RemoveUnderMouse())
  {
    return;
  }
  const std::vector<int> rows = this->GetSelectedRows();
  for (auto row = rows.rbegin(); row != rows.rend(); ++row)
  {
    this->List->Remove(*row);
  }
}

void zvMeasurementPanel::AskToRemoveAll()
{
  auto* box = new QMessageBox(QMessageBox::Question, tr("Delete all"),
    this->List->rowCount() == 1 ? tr("Delete the mark?")
                                : tr("Delete all %1 marks?").arg(this->List->rowCount()),
    QMessageBox::Yes | QMessageBox::Cancel, this);
  box->button(QMessageBox::Yes)->setText(tr("Delete all"));
  box->setDefaultButton(QMessageBox::Yes);
  box->setAttribute(Qt::WA_DeleteOnClose);
  connect(box, &QMessageBox::finished, this,
    [this](int answer)
    {
      if (answer == QMessageBox::Yes)
      {
        this->List->RemoveAll();
      }
    });
  box->open();
}

void zvMeasurementPanel::AskForFile()
{
  auto* dialog =
    new QFileDialog(this, tr("Export the measurements"), QString(), tr("Tables (*.csv)"));
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setDefaultSuffix("csv");
  dialog->selectFile("measurements.csv");
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  connect(dialog, &QFileDialog::fileSelected, this, &zvMeasurementPanel::ExportTo);
  dialog->open();
}

bool zvMeasurementPanel::ExportTo(const QString& path)
{
  const QByteArray text = QByteArray::fromStdString(zvMeasurementCsv::Write(this->List->GetRows()));
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.flush())
  {
    emit failed(path, file.errorString());
    return false;
  }
  emit exported(path);
  return true;
}
