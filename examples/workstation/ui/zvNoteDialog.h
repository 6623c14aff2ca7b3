#ifndef zvNoteDialog_h
#define zvNoteDialog_h

#include <QColor>
#include <QDialog>

class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QLineEdit;
class QPushButton;

/// Asks for a note: its text, colour and size. It cannot be accepted with a text that the library's
/// notes do not take: an empty one, a longer one, or one with letters that they cannot draw.
class zvNoteDialog : public QDialog
{
  Q_OBJECT

public:
  explicit zvNoteDialog(QWidget* parent = nullptr);

  /// \param size  the height of a capital in millimetres.
  void Show(const QString& text, const QColor& color, double size);

  QString GetText() const;
  QColor GetColor() const;
  double GetSize() const;

  QLineEdit* GetTextField() const { return this->Text; }
  QComboBox* GetColorBox() const { return this->Colors; }
  QDoubleSpinBox* GetSizeBox() const { return this->Size; }
  QPushButton* GetAcceptButton() const { return this->Accept; }

  /// Whether notes can show a text.
  static bool IsPossible(const QString& text);

private:
  void Check();

  QLineEdit* Text; // owned by Qt's tree of widgets, as all of these
  QLabel* Left;
  QComboBox* Colors;
  QDoubleSpinBox* Size;
  QPushButton* Accept;
};

#endif
