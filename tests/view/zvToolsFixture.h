#ifndef zvToolsFixture_h
#define zvToolsFixture_h

#include "zvNoteDialog.h"
#include "zvWorkstationFixture.h"

#include <QLineEdit>
#include <QPushButton>
#include <QToolBar>

#include <algorithm>
#include <vector>

namespace zvtest
{
/// The running workstation and hands that draw with its tools.
class ToolsFixture : public WorkstationFixture
{
protected:
  const Color Red{ 255, 0, 0 };
  const Color Yellow{ 255, 255, 0 };
  const Color Cyan{ 0, 255, 255 };

  using Points = std::vector<QPoint>;

  int CountActive()
  {
    const auto actions = this->Tools()->GetActions();
    return static_cast<int>(std::count_if(
      actions.begin(), actions.end(), [](QAction* action) { return action->isChecked(); }));
  }
  void ExpectActive(const QString& id)
  {
    EXPECT_EQ(this->Tools()->GetActive(), id);
    EXPECT_EQ(this->CountActive(), 1);
    EXPECT_TRUE(this->Tool(id.toLatin1())->isChecked());
    EXPECT_TRUE(
      this->Window.GetHintText().startsWith(this->Tool(id.toLatin1())->text().remove('&') + ": "));
  }
  QToolBar* Bar(const char* name) { return this->Window.findChild<QToolBar*>(name); }

  // Moves, presses and releases, as a hand does.
  void Click(int axis, const QPoint& position)
  {
    this->Hand(axis).MoveTo(position);
    this->Hand(axis).Click(Qt::LeftButton, position);
  }
  void DragLeft(int axis, const QPoint& from, const QPoint& to)
  {
    this->Hand(axis).MoveTo(from);
    this->Hand(axis).Drag(Qt::LeftButton, from, to);
  }
  // A square about the middle of a view, in its own pixels.
  Points Square(int axis, int half)
  {
    const QPoint middle = this->Hand(axis).Part(-0.15, 0.15);
    return { middle + QPoint(-half, -half), middle + QPoint(half, -half),
      middle + QPoint(half, half), middle + QPoint(-half, half) };
  }
  void ClickAll(int axis, const Points& points)
  {
    for (const QPoint& point : points)
    {
      this->Click(axis, point);
    }
  }
  QPoint MakeRuler(int axis)
  {
    this->Tools()->Choose("ruler");
    const QPoint from = this->Hand(axis).Part(-0.2, -0.2), to = this->Hand(axis).Part(0.15, 0.1);
    this->DragLeft(axis, from, to);
    return to;
  }
  QPoint MakeArea(int axis)
  {
    this->Tools()->Choose("area");
    const Points square = this->Square(axis, 50);
    this->ClickAll(axis, square);
    this->Click(axis, square.front());
    return square[1];
  }
  QPoint MakeLasso(int axis)
  {
    this->Tools()->Choose("lasso");
    const Points square = this->Square(axis, 40);
    this->ClickAll(axis, square);
    this->Click(axis, square.front());
    return square[2];
  }
  QPoint MakeNote(int axis, const QString& text)
  {
    this->Tools()->Choose("note");
    const QPoint place = this->Hand(axis).Part(-0.1, 0.3);
    this->Click(axis, place);
    this->Answer(text);
    return place;
  }
  zvNoteDialog* Dialog() { return this->Window.findChild<zvNoteDialog*>(); }
  // Types a text into the dialog and accepts it.
  void Answer(const QString& text)
  {
    zvNoteDialog* dialog = this->Dialog();
    ASSERT_NE(dialog, nullptr);
    dialog->GetTextField()->clear();
    QTest::keyClicks(dialog->GetTextField(), text);
    QTest::mouseClick(dialog->GetAcceptButton(), Qt::LeftButton);
    ASSERT_TRUE(WaitFor([this] { return this->Dialog() == nullptr; }));
  }
  void ExpectRow(int row, const QString& kind, int axis)
  {
    EXPECT_EQ(this->Cell(row, zvMeasurementList::KindColumn), kind);
    EXPECT_EQ(
      this->Cell(row, zvMeasurementList::ViewColumn), ViewNames[static_cast<std::size_t>(axis)]);
    EXPECT_EQ(this->Cell(row, zvMeasurementList::SliceColumn),
      QString::number(this->Viewer(axis)->GetSliceIndex()));
  }
};
}

#endif
