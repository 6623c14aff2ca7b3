#include "zvToolSet.h"

#include <QAction>

#include <algorithm>

zvToolSet::zvToolSet(QObject* parent)
  : QObject(parent)
{
}

zvToolSet::~zvToolSet() = default;

QAction* zvToolSet::Add(const zvTool& tool)
{
  const std::size_t index = this->Entries.size();
  const bool startsGroup = index > 0 && this->Entries.back().Tool.Group != tool.Group;
  auto* action = new QAction(tool.Icon, tool.Name, this);
  action->setObjectName(tool.Id);
  action->setCheckable(true);
  action->setChecked(index == this->Active);
  action->setEnabled(this->Enabled);
  action->setShortcut(tool.Key);
  action->setStatusTip(tool.Hint);
  action->setToolTip(tool.Key.isEmpty()
      ? tool.ToolTip
      : QString("%1 (%2)").arg(tool.ToolTip, tool.Key.toString(QKeySequence::NativeText)));
  this->Entries.push_back({ tool, action });
  connect(
    action, &QAction::toggled, this, [this, index](bool checked) { this->Take(index, checked); });
  emit added(action, startsGroup);
  return action;
}

// An action that is switched off gives way to the first tool, so that one is always on.
void zvToolSet::Take(std::size_t index, bool checked)
{
  if (!this->Switching)
  {
    this->MakeActive(checked ? index : 0);
  }
}

void zvToolSet::MakeActive(std::size_t index)
{
  const std::size_t before = this->Active;
  this->Active = index;
  this->Switching = true;
  for (std::size_t i = 0; i < this->Entries.size(); ++i)
  {
    this->Entries[i].Action->setChecked(i == index);
  }
  this->Switching = false;
  if (before == index)
  {
    return;
  }
  // Copies: what they do may take further tools in.
  const auto deactivate = this->Entries[before].Tool.Deactivate;
  const auto activate = this->Entries[index].Tool.Activate;
  if (deactivate)
  {
    deactivate();
  }
  if (activate)
  {
    activate();
  }
  emit chosen(this->GetActive());
}

int zvToolSet::Find(const QString& id) const
{
  const auto found = std::find_if(this->Entries.begin(), this->Entries.end(),
    [&id](const Entry& entry) { return entry.Tool.Id == id; });
  return found == this->Entries.end() ? -1 : static_cast<int>(found - this->Entries.begin());
}

void zvToolSet::Choose(const QString& id)
{
  const int index = this->Find(id);
  if (index >= 0)
  {
    this->MakeActive(static_cast<std::size_t>(index));
  }
}

bool zvToolSet::Leave()
{
  if (this->Active == 0)
  {
    return false;
  }
  this->MakeActive(0);
  return true;
}

QString zvToolSet::GetActive() const
{
  return this->Entries.empty() ? QString() : this->Entries[this->Active].Tool.Id;
}

QString zvToolSet::GetHint() const
{
  return this->Entries.empty() ? QString() : this->Entries[this->Active].Tool.Hint;
}

QAction* zvToolSet::GetAction(const QString& id) const
{
  const int index = this->Find(id);
  return index < 0 ? nullptr : this->Entries[static_cast<std::size_t>(index)].Action;
}

std::vector<QAction*> zvToolSet::GetActions() const
{
  std::vector<QAction*> actions;
  for (const Entry& entry : this->Entries)
  {
    actions.push_back(entry.Action);
  }
  return actions;
}

void zvToolSet::SetEnabled(bool enabled)
{
  this->Enabled = enabled;
  for (const Entry& entry : this->Entries)
  {
    entry.Action->setEnabled(enabled);
  }
}
