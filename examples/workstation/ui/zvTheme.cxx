#include "zvTheme.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QStyleFactory>

namespace
{
struct Role
{
  QPalette::ColorRole Place;
  const char* Color;
};

constexpr Role Roles[] = {
  { QPalette::Window, "#23262c" },
  { QPalette::WindowText, "#e4e7ec" },
  { QPalette::Base, "#181a1f" },
  { QPalette::AlternateBase, "#23262c" },
  { QPalette::Text, "#e4e7ec" },
  { QPalette::Button, "#31353d" },
  { QPalette::ButtonText, "#e4e7ec" },
  { QPalette::BrightText, "#ffffff" },
  { QPalette::Highlight, "#3d6fd1" },
  { QPalette::HighlightedText, "#ffffff" },
  { QPalette::ToolTipBase, "#31353d" },
  { QPalette::ToolTipText, "#e4e7ec" },
  { QPalette::PlaceholderText, "#9aa1ad" },
  { QPalette::Link, "#7aa7ff" },
};

constexpr const char* Sheet =
  "QGroupBox { font-weight:600; border:1px solid #3a3f48; border-radius:6px; margin-top:10px;"
  " padding-top:8px; }"
  "QGroupBox::title { subcontrol-origin:margin; left:10px; padding:0 4px; color:#aeb6c2; }"
  "QGroupBox * { font-weight:400; }"
  "QStatusBar::item { border:none; }"
  "QTableView::indicator { width:11px; height:11px; border:1px solid #9aa1ad; border-radius:3px; }"
  "QTableView::indicator:checked { background:#7aa7ff; }"
  "QToolButton::menu-indicator { image:none; }"
  "QToolBar { border:none; spacing:6px; padding:4px; }";
}

void zvTheme::Apply(QApplication& application)
{
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  QPalette palette;
  for (const Role& role : Roles)
  {
    palette.setColor(role.Place, QColor(role.Color));
  }
  for (const auto place : { QPalette::WindowText, QPalette::Text, QPalette::ButtonText })
  {
    palette.setColor(QPalette::Disabled, place, QColor("#6c7380"));
  }
  QApplication::setPalette(palette);
  QFont font("DejaVu Sans");
  font.setPointSizeF(9.5);
  QApplication::setFont(font);
  application.setStyleSheet(Sheet);
}
