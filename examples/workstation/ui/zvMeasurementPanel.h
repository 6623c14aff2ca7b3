#ifndef zvMeasurementPanel_h
#define zvMeasurementPanel_h

#include <QDockWidget>
#include <QList>

#include <vector>

class QAction;
class QLabel;
class QTableView;
class QToolBar;
class zvMeasurementList;

/// The list of measurements, and what can be done with its lines.
///
/// click on a line          goes to the mark
/// click on a check mark    hides the mark, or shows it
/// double click             on a name: names it anew; elsewhere: edits it where that is possible
/// the actions              are in the bar below, in the line's menu and in the window's menu
///
/// The list is not owned and outlives the panel.
class zvMeasurementPanel : public QDockWidget
{
  Q_OBJECT

public:
  explicit zvMeasurementPanel(zvMeasurementList* list, QWidget* parent = nullptr);

  /// The actions in the order of a menu, all owned by the panel.
  QList<QAction*> GetActions() const;
  QAction* GetGoToAction() const { return this->GoTo; }
  QAction* GetHideAction() const { return this->Hide; }
  QAction* GetRenameAction() const { return this->Rename; }
  /// Removes the mark under the mouse, or if there is none the lines that are selected.
  QAction* GetRemoveAction() const { return this->Remove; }
  /// Removes all marks after a question.
  QAction* GetRemoveAllAction() const { return this->RemoveAll; }
  /// Asks for a file and writes the table into it.
  QAction* GetExportAction() const { return this->Export; }
  QTableView* GetTable() const { return this->Table; }

  /// Write the table as comma-separated values. \return false, with failed, if that is not
  /// possible.
  bool ExportTo(const QString& path);

signals:
  void exported(const QString& path);
  void failed(const QString& path, const QString& reason);

private:
  void BuildActions();
  void BuildTable();
  void BuildLayout();
  QAction* MakeAction(const QString& icon, const QString& text, const QString& toolTip,
    const QKeySequence& key, void (zvMeasurementPanel::*what)());
  void GoToCurrent();
  void HideSelected();
  void RenameCurrent();
  void RemoveOne();
  void AskToRemoveAll();
  void AskForFile();
  void ShowState();
  std::vector<int> GetSelectedRows() const;

  zvMeasurementList* List;
  QTableView* Table; // owned by Qt's tree of objects, as all of these
  QLabel* Empty;
  QToolBar* Bar;
  QAction* GoTo = nullptr;
  QAction* Hide = nullptr;
  QAction* Rename = nullptr;
  QAction* Remove = nullptr;
  QAction* RemoveAll = nullptr;
  QAction* Export = nullptr;
};

#endif
