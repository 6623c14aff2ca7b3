#include "zvNoticeBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

zvNoticeBar::zvNoticeBar(QWidget* parent)
  : QFrame(parent)
  , Text(new QLabel)
{
  this->setStyleSheet("zvNoticeBar { background:#5a4a1c; } QLabel { color:#ffe9b0; }");
  this->Text->setWordWrap(true);
  this->Text->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* close = new QToolButton;
  close->setText("\u2715");
  close->setAutoRaise(true);
  close->setToolTip(tr("Close"));
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(12, 6, 6, 6);
  layout->addWidget(this->Text, 1);
  layout->addWidget(close, 0, Qt::AlignTop);
  connect(close, &QToolButton::clicked, this, &QWidget::hide);
  this->hide();
}

void zvNoticeBar::ShowNotices(const QStringList& notices)
{
  this->Text->setText(notices.join("\n"));
  this->setVisible(!notices.isEmpty());
}

QString zvNoticeBar::GetText() const
{
  return this->Text->text();
}
