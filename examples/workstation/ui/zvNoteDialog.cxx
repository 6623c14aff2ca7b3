#include "zvNoteDialog.h"

#include "zvTextNoteWidget.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>

#include <algorithm>

namespace
{
struct NamedColor
{
  const char* Name;
  const char* Color;
};

constexpr NamedColor NoteColors[] = {
  { QT_TRANSLATE_NOOP("zvNoteDialog", "Yellow"), "#ffd94a" },
  { QT_TRANSLATE_NOOP("zvNoteDialog", "White"), "#ffffff" },
  { QT_TRANSLATE_NOOP("zvNoteDialog", "Orange"), "#ff9a3c" },
  { QT_TRANSLATE_NOOP("zvNoteDialog", "Red"), "#ff5a5a" },
  { QT_TRANSLATE_NOOP("zvNoteDialog", "Green"), "#5ee07a" },
  { QT_TRANSLATE_NOOP("zvNoteDialog", "Cyan"), "#4ad8e8" },
  { QT_TRANSLATE_NOOP("zvNoteDialog", "Pink"), "#ff8ad8" },
};

QIcon Swatch(const QColor& color)
{
  constexpr int side = 14;
  QPixmap picture(side, side);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawEllipse(1, 1, side - 2, side - 2);
  return picture;
}

// The letters of the notes are drawn from lines, and these are the ones there are.
bool CanBeDrawn(QChar letter)
{
  return letter.unicode() >= 0x20 && letter.unicode() <= 0x7e;
}
}

zvNoteDialog::zvNoteDialog(QWidget* parent)
  : QDialog(parent)
  , Text(new QLineEdit)
  , Left(new QLabel)
  , Colors(new QComboBox)
  , Size(new QDoubleSpinBox)
{
  this->setWindowTitle(tr("Note"));
  this->setModal(true);
  this->Text->setMinimumWidth(340);
  this->Text->setPlaceholderText(tr("What is to be seen here"));
  for (const NamedColor& one : NoteColors)
  {
    this->Colors->addItem(Swatch(QColor(one.Color)), tr(one.Name), QColor(one.Color));
  }
  this->Size->setRange(0.1, 200.0);
  this->Size->setDecimals(1);
  this->Size->setSuffix(tr(" mm"));
  this->Size->setToolTip(tr("The height of a capital letter"));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  this->Accept = buttons->button(QDialogButtonBox::Ok);
  auto* layout = new QFormLayout(this);
  layout->addRow(tr("Text"), this->Text);
  layout->addRow(QString(), this->Left);
  layout->addRow(tr("Colour"), this->Colors);
  layout->addRow(tr("Size"), this->Size);
  layout->addRow(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(this->Text, &QLineEdit::textChanged, this, &zvNoteDialog::Check);
  this->Check();
}

void zvNoteDialog::Show(const QString& text, const QColor& color, double size)
{
  this->Text->setText(text);
  this->Text->selectAll();
  int known = this->Colors->findData(color);
  if (known < 0)
  {
    this->Colors->addItem(Swatch(color), tr("As it is"), color);
    known = this->Colors->count() - 1;
  }
  this->Colors->setCurrentIndex(known);
  this->Size->setValue(size);
  this->Text->setFocus();
}

QString zvNoteDialog::GetText() const
{
  return this->Text->text().simplified();
}

QColor zvNoteDialog::GetColor() const
{
  return this->Colors->currentData().value<QColor>();
}

double zvNoteDialog::GetSize() const
{
  return this->Size->value();
}

bool zvNoteDialog::IsPossible(const QString& text)
{
  return !text.isEmpty() && text.toUtf8().size() <= zvTextNoteWidget::GetMaximumTextLength() &&
    std::all_of(text.begin(), text.end(), CanBeDrawn);
}

void zvNoteDialog::Check()
{
  const QString text = this->GetText();
  const int left = zvTextNoteWidget::GetMaximumTextLength() - text.toUtf8().size();
  const bool isDrawable = std::all_of(text.begin(), text.end(), CanBeDrawn);
  QString hint =
    left >= 0 ? tr("%1 characters left").arg(left) : tr("%1 characters too many").arg(-left);
  if (!isDrawable)
  {
    hint = tr("Only letters without accents, digits and signs can be drawn");
  }
  this->Left->setText(hint);
  this->Left->setStyleSheet(left >= 0 && isDrawable ? "color:#8f97a4;" : "color:#ff9a9a;");
  this->Accept->setEnabled(IsPossible(text));
}
