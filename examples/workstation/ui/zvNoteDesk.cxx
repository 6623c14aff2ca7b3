#include "zvNoteDesk.h"

#include "zvSliceMarks.h"
#include "zvViewGrid.h"

#include <algorithm>
#include <cmath>

zvNoteDesk::zvNoteDesk(QWidget* window, zvViewGrid* views)
  : Window(window)
{
  for (int axis = 0; axis < 3; ++axis)
  {
    zvSliceMarks* marks = views->GetSliceView(axis)->GetMarks();
    connect(marks, &zvSliceMarks::noteWanted, this, [this, marks] { this->AskForNew(marks); });
    connect(marks, &zvSliceMarks::editWanted, this,
      [this, marks](int id) { this->AskForChange(marks, id); });
  }
}

void zvNoteDesk::Begin(double sizeOfVolume)
{
  constexpr double part = 0.018; // of the volume's diagonal, rounded to half millimetres
  this->Size = std::max(std::round(2.0 * part * sizeOfVolume) / 2.0, 0.5);
  if (this->Asking)
  {
    this->Asking->reject();
  }
}

zvNoteDialog* zvNoteDesk::MakeDialog(const QString& title)
{
  auto* dialog = new zvNoteDialog(this->Window);
  dialog->setWindowTitle(title);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  this->Asking = dialog;
  return dialog;
}

void zvNoteDesk::Remember(const zvNoteDialog* dialog)
{
  this->Color = dialog->GetColor();
  this->Size = dialog->GetSize();
}

void zvNoteDesk::AskForNew(zvSliceMarks* marks)
{
  zvNoteDialog* dialog = this->MakeDialog(tr("New note"));
  dialog->Show(QString(), this->Color, this->Size);
  connect(dialog, &QDialog::accepted, this,
    [this, dialog, view = QPointer<zvSliceMarks>(marks)]
    {
      this->Remember(dialog);
      if (view)
      {
        view->AddNote(dialog->GetText(), this->Color, this->Size);
      }
    });
  dialog->open();
}

void zvNoteDesk::AskForChange(zvSliceMarks* marks, int id)
{
  zvNoteDialog* dialog = this->MakeDialog(tr("Edit the note"));
  dialog->Show(marks->GetNoteText(id), marks->GetNoteColor(id), marks->GetNoteSize(id));
  connect(dialog, &QDialog::accepted, this,
    [dialog, id, view = QPointer<zvSliceMarks>(marks)]
    {
      if (view)
      {
        view->ChangeNote(id, dialog->GetText(), dialog->GetColor(), dialog->GetSize());
      }
    });
  dialog->open();
}
