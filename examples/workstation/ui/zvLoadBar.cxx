#include "zvLoadBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

namespace
{
constexpr int Steps = 1000;
}

zvLoadBar::zvLoadBar(QWidget* parent)
  : QWidget(parent)
  , Name(new QLabel)
  , Bar(new QProgressBar)
  , Cancel(new QPushButton(tr("Cancel")))
{
  this->Bar->setRange(0, Steps);
  this->Bar->setFixedWidth(200);
  this->Cancel->setToolTip(tr("Stop loading; the volume on the screen stays (Esc)"));
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(this->Name);
  layout->addWidget(this->Bar);
  layout->addWidget(this->Cancel);
  connect(this->Cancel, &QPushButton::clicked, this, &zvLoadBar::cancelled);
  this->hide();
}

void zvLoadBar::Begin(const QString& name)
{
  this->Name->setText(tr("Loading %1").arg(name));
  this->Bar->setValue(0);
  this->show();
}

void zvLoadBar::ShowProgress(double fraction)
{
  this->Bar->setValue(static_cast<int>(fraction * Steps));
}

void zvLoadBar::End()
{
  this->hide();
}
