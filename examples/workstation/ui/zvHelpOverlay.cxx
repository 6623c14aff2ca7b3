#include "zvHelpOverlay.h"

#include "zvHelpText.h"

#include <QAction>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>

namespace
{
constexpr int Margin = 36;
constexpr int LinesPerColumn = 24;

QString WithoutMnemonic(const QString& text)
{
  QString plain = text;
  plain.remove('&');
  plain.remove("...");
  return plain;
}

// The name of an action and what the mouse does once it is chosen.
QString Tell(const QAction* action)
{
  const QString name = WithoutMnemonic(action->text()).toHtmlEscaped();
  return action->statusTip().isEmpty() ? name
                                       : QString("%1: <span style='color:#aeb6c2'>%2</span>")
                                           .arg(name, action->statusTip().toHtmlEscaped());
}

// The lines of a menu and of the menus in it.
QString KeysOf(const QMenu* menu)
{
  QString rows;
  for (const QAction* action : menu->actions())
  {
    if (action->menu() != nullptr)
    {
      rows += KeysOf(action->menu());
    }
    else if (!action->shortcut().isEmpty())
    {
      rows += zvHelpText::Row(
        action->shortcut().toString(QKeySequence::NativeText).toHtmlEscaped(), Tell(action));
    }
  }
  return rows;
}

QLabel* MakeText()
{
  auto* label = new QLabel;
  label->setTextFormat(Qt::RichText);
  label->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  label->setWordWrap(true);
  label->setAttribute(Qt::WA_TransparentForMouseEvents);
  return label;
}
}

zvHelpOverlay::zvHelpOverlay(QWidget* window, const QMenuBar* menus)
  : QWidget(window)
  , Menus(menus)
  , Mouse(MakeText())
  , Keys{ { MakeText(), MakeText() } }
{
  this->setObjectName("help");
  this->setFocusPolicy(Qt::StrongFocus);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(2 * Margin, 2 * Margin, Margin, Margin);
  layout->setSpacing(Margin);
  layout->addWidget(this->Mouse, 5);
  // The tools, whose lines are long, are in the last column.
  for (std::size_t i = 0; i < Columns; ++i)
  {
    layout->addWidget(this->Keys[i], i + 1 < Columns ? 3 : 6);
  }
  window->installEventFilter(this);
  this->hide();
}

void zvHelpOverlay::Toggle()
{
  if (this->isVisible())
  {
    this->hide();
    return;
  }
  this->Write();
  this->Cover();
  this->show();
  this->raise();
  this->setFocus();
}

void zvHelpOverlay::Write()
{
  this->Mouse->setText(zvHelpText::Mouse());
  // From the top of one column to its end, then on in the next.
  std::array<QString, Columns> columns;
  std::size_t column = 0;
  for (const QAction* action : this->Menus->actions())
  {
    const QString rows = action->menu() != nullptr ? KeysOf(action->menu()) : QString();
    if (rows.isEmpty())
    {
      continue;
    }
    const int height = columns[column].count("<tr>") + rows.count("<tr>");
    if (!columns[column].isEmpty() && height > LinesPerColumn && column + 1 < columns.size())
    {
      ++column;
    }
    columns[column] += zvHelpText::Table(WithoutMnemonic(action->text()), rows);
  }
  for (std::size_t i = 0; i < columns.size(); ++i)
  {
    this->Keys[i]->setText(columns[i]);
  }
}

QString zvHelpOverlay::GetText() const
{
  QString text = this->Mouse->text();
  for (const QLabel* keys : this->Keys)
  {
    text += keys->text();
  }
  return text;
}

void zvHelpOverlay::Cover()
{
  this->setGeometry(this->parentWidget()->rect());
}

bool zvHelpOverlay::eventFilter(QObject* watched, QEvent* event)
{
  if (event->type() == QEvent::Resize)
  {
    this->Cover();
  }
  return this->QWidget::eventFilter(watched, event);
}

// Keys are its own while it is there: what they do otherwise can only be read.
bool zvHelpOverlay::event(QEvent* event)
{
  if (event->type() == QEvent::ShortcutOverride)
  {
    event->accept();
    return true;
  }
  return this->QWidget::event(event);
}

void zvHelpOverlay::mousePressEvent(QMouseEvent*)
{
  this->hide();
}

void zvHelpOverlay::keyPressEvent(QKeyEvent*)
{
  this->hide();
}

void zvHelpOverlay::paintEvent(QPaintEvent*)
{
  QPainter painter(this);
  painter.fillRect(this->rect(), QColor(16, 18, 22, 235));
}
