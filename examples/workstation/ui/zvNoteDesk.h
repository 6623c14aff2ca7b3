#ifndef zvNoteDesk_h
#define zvNoteDesk_h

#include "zvNoteDialog.h"

#include <QColor>
#include <QObject>
#include <QPointer>

class QWidget;
class zvSliceMarks;
class zvViewGrid;

/// Asks for the text of notes, where the user wants a new one or another text, and gives it to the
/// view. A new note begins in the colour and size of the last one.
class zvNoteDesk : public QObject
{
  Q_OBJECT

public:
  /// \param window  what the dialogs belong to; both outlive this object.
  zvNoteDesk(QWidget* window, zvViewGrid* views);

  /// Begin with a volume: a size that suits it. A dialog that still asks about the one before is
  /// closed, and no note comes of it.
  void Begin(double sizeOfVolume);

private:
  void AskForNew(zvSliceMarks* marks);
  void AskForChange(zvSliceMarks* marks, int id);
  zvNoteDialog* MakeDialog(const QString& title);
  void Remember(const zvNoteDialog* dialog);

  QWidget* Window;
  QPointer<zvNoteDialog> Asking; // the dialog that was opened last
  QColor Color{ "#ffd94a" };
  double Size = 6.0; // millimetres
};

#endif
