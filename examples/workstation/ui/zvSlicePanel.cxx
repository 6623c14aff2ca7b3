#include "zvSlicePanel.h"

#include <QVBoxLayout>

namespace
{
struct RowText
{
  const char* Name;
  const char* Color; // as the plane's edge in the view
  const char* ToolTip;
};

constexpr RowText Texts[3] = {
  { QT_TRANSLATE_NOOP("zvSlicePanel", "Sagittal (x)"), "#ff4d4d",
    QT_TRANSLATE_NOOP("zvSlicePanel", "The red plane, from right to left") },
  { QT_TRANSLATE_NOOP("zvSlicePanel", "Coronal (y)"), "#3ddc61",
    QT_TRANSLATE_NOOP("zvSlicePanel", "The green plane, from front to back") },
  { QT_TRANSLATE_NOOP("zvSlicePanel", "Axial (z)"), "#5b8cff",
    QT_TRANSLATE_NOOP("zvSlicePanel", "The blue plane, from below to above") },
};
}

zvSlicePanel::zvSlicePanel(QWidget* parent)
  : QGroupBox(tr("Slices"), parent)
{
  auto* layout = new QVBoxLayout(this);
  for (int axis = 0; axis < 3; ++axis)
  {
    const RowText& text = Texts[axis];
    auto* row = new zvSliceRow(tr(text.Name), QColor(text.Color), tr(text.ToolTip));
    this->Rows[static_cast<std::size_t>(axis)] = row;
    layout->addWidget(row);
    connect(row, &zvSliceRow::chosen, this, [this, axis](int index) { emit chosen(axis, index); });
  }
}

void zvSlicePanel::ShowSlice(int axis, int index, int count)
{
  this->GetRow(axis)->ShowSlice(index, count);
}
