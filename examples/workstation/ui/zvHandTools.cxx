#include "zvHandTools.h"

#include "zvEditBar.h"
#include "zvIcons.h"
#include "zvToolSet.h"
#include "zvViewGrid.h"

#include <QCoreApplication>

namespace
{
struct HandTool
{
  zvSliceView::Hand Hand;
  const char* Id;
  const char* Group;
  const char* Name;
  const char* Key;
  const char* ToolTip;
  const char* Hint;
};

constexpr HandTool HandTools[] = {
  { zvSliceView::Hand::Cross, "cross", "browse", QT_TRANSLATE_NOOP("zvHandTools", "&Cross"), "C",
    QT_TRANSLATE_NOOP("zvHandTools", "Move the cross, turn its lines, move marks"),
    QT_TRANSLATE_NOOP("zvHandTools", "drag the cross, its lines or a mark") },
  { zvSliceView::Hand::Ruler, "ruler", "measure", QT_TRANSLATE_NOOP("zvHandTools", "&Ruler"), "D",
    QT_TRANSLATE_NOOP("zvHandTools", "Measure a distance in a slice"),
    QT_TRANSLATE_NOOP("zvHandTools", "drag from end to end, or click both ends") },
  { zvSliceView::Hand::Area, "area", "measure", QT_TRANSLATE_NOOP("zvHandTools", "&Area"), "A",
    QT_TRANSLATE_NOOP("zvHandTools", "Measure the area inside a curve through points"),
    QT_TRANSLATE_NOOP("zvHandTools", "click the points; close on the first one or by Enter") },
  { zvSliceView::Hand::Lasso, "lasso", "measure", QT_TRANSLATE_NOOP("zvHandTools", "&Lasso"), "L",
    QT_TRANSLATE_NOOP("zvHandTools", "Draw a region freehand"),
    QT_TRANSLATE_NOOP("zvHandTools", "drag around the region, or click its points") },
  { zvSliceView::Hand::Note, "note", "measure", QT_TRANSLATE_NOOP("zvHandTools", "&Note"), "T",
    QT_TRANSLATE_NOOP("zvHandTools", "Write a note on a slice, or edit one"),
    QT_TRANSLATE_NOOP("zvHandTools", "click a place for a note, or a note to edit it") },
  { zvSliceView::Hand::Paint, "paint", "write", QT_TRANSLATE_NOOP("zvHandTools", "&Paint"), "P",
    QT_TRANSLATE_NOOP("zvHandTools", "Draw voxels with the left button in a slice view"),
    QT_TRANSLATE_NOOP("zvHandTools", "click or drag over the voxels to write") },
  { zvSliceView::Hand::Fill, "fill", "write", QT_TRANSLATE_NOOP("zvHandTools", "&Fill"), "F",
    QT_TRANSLATE_NOOP(
      "zvHandTools", "Fill a slice from the voxel that is clicked, up to voxels of the value"),
    QT_TRANSLATE_NOOP("zvHandTools", "click into a ring that was painted with the same value") },
};

QString Tr(const char* text)
{
  return QCoreApplication::translate("zvHandTools", text);
}
}

void zvHandTools::AddTo(zvToolSet* tools, zvViewGrid* views, const zvEditBar* bar)
{
  for (const HandTool& one : HandTools)
  {
    zvTool tool;
    tool.Id = one.Id;
    tool.Group = one.Group;
    tool.Name = Tr(one.Name);
    tool.ToolTip = Tr(one.ToolTip);
    tool.Hint = Tr(one.Hint);
    tool.Key = QKeySequence(one.Key);
    tool.Icon = zvIcons::Make(one.Id);
    tool.Activate = [views, hand = one.Hand] { views->SetHand(hand); };
    // Whatever comes next begins with the cross.
    tool.Deactivate = [views] { views->SetHand(zvSliceView::Hand::Cross); };
    tools->Add(tool);
  }
  const auto passValue = [views, bar] { views->SetFillValue(bar->GetValue()); };
  QObject::connect(bar, &zvEditBar::valueChosen, views, passValue);
}
