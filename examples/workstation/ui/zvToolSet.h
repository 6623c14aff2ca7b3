#ifndef zvToolSet_h
#define zvToolSet_h

#include <QIcon>
#include <QKeySequence>
#include <QObject>
#include <QString>

#include <functional>
#include <vector>

class QAction;

/// A tool as data: how it is called and reached, and what begins and ends its use.
struct zvTool
{
  QString Id;      // "ruler"; for programs, never shown
  QString Group;   // tools of one group stand together, between separators
  QString Name;    // as in a menu, with its mnemonic: "&Ruler"
  QString ToolTip; // what it is for; the key is added
  QString Hint;    // what the mouse does while it is active, for the status bar
  QKeySequence Key;
  QIcon Icon;
  std::function<void()> Activate;   // may be empty
  std::function<void()> Deactivate; // may be empty; is called before the next tool's Activate
};

/// The tools of the window, of which exactly one is active from the first Add on. The first tool is
/// the one to go back to: by Leave (the key Esc), by choosing the active tool once more, and with a
/// new volume.
///
/// Each tool has an action, checked while the tool is active, for menus, toolbars and its key; it
/// is in an action's own state that the user sees which tool is active.
class zvToolSet : public QObject
{
  Q_OBJECT

public:
  explicit zvToolSet(QObject* parent = nullptr);
  ~zvToolSet() override;

  /// Take a tool in. The first one becomes active, but its Activate is not called.
  /// \return its action, owned by the set.
  QAction* Add(const zvTool& tool);

  /// Make a tool the active one. An id that is not known changes nothing.
  void Choose(const QString& id);
  /// Go back to the first tool. \return false if it was active.
  bool Leave();

  /// The id of the active tool, empty without tools.
  QString GetActive() const;
  bool IsActive(const QString& id) const { return this->GetActive() == id; }
  /// What the mouse does with the active tool.
  QString GetHint() const;
  /// Null for an id that is not known.
  QAction* GetAction(const QString& id) const;
  /// In the order of Add.
  std::vector<QAction*> GetActions() const;

  /// Whether tools can be chosen (default false: there is no volume yet).
  void SetEnabled(bool enabled);

signals:
  /// A tool was taken in.
  /// \param startsGroup  whether its group is another than that of the tool before.
  void added(QAction* action, bool startsGroup);
  /// Another tool is active.
  void chosen(const QString& id);

private:
  struct Entry
  {
    zvTool Tool;
    QAction* Action; // owned by Qt's tree of objects
  };
  int Find(const QString& id) const; // -1 for none
  void Take(std::size_t index, bool checked);
  void MakeActive(std::size_t index);

  std::vector<Entry> Entries;
  std::size_t Active = 0;
  bool Enabled = false;
  bool Switching = false;
};

#endif
