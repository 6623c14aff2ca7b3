// The tools of the workstation, used as a user does: from key, toolbar and menu to the mark on the
// screen and its line in the list.

#include "zvToolsFixture.h"

#include "zvEditBar.h"
#include "zvHelpOverlay.h"
#include "zvLoadBar.h"
#include "zvPresetMenu.h"
#include "zvSlicePanel.h"
#include "zvTurnPanel.h"
#include "zvWindowPanel.h"

#include "zvQtTest.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QMenuBar>
#include <QSlider>
#include <QSpinBox>
#include <QToolButton>

#include "vtkCamera.h"

#include <algorithm>
#include <memory>
#include <set>

namespace
{
using zvtest::WaitFor;

struct KeyOfTool
{
  const char* Id;
  Qt::Key Key;
};

constexpr KeyOfTool SliceTools[] = { { "ruler", Qt::Key_D }, { "area", Qt::Key_A },
  { "lasso", Qt::Key_L }, { "note", Qt::Key_T }, { "paint", Qt::Key_P }, { "fill", Qt::Key_F } };
}

class WorkstationTools : public zvtest::ToolsFixture
{
protected:
  static QAction* ActionOf(const zvMainWindow& window, const QString& text)
  {
    for (QAction* action : window.findChildren<QAction*>())
    {
      if (action->text() == text)
      {
        return action;
      }
    }
    return nullptr;
  }
};

// ---- choosing

TEST_F(WorkstationTools, BeginWithTheCrossAndEachKeyChoosesItsTool)
{
  this->ExpectActive("cross");
  for (const KeyOfTool& tool : SliceTools)
  {
    this->Key(tool.Key);
    this->ExpectActive(tool.Id);
  }
  this->Key(Qt::Key_C);
  this->ExpectActive("cross");
}

TEST_F(WorkstationTools, EscLeavesTheToolAndTheSameKeyOnceMoreToo)
{
  for (const KeyOfTool& tool : SliceTools)
  {
    this->Key(tool.Key);
    this->ExpectActive(tool.Id);
    this->Key(Qt::Key_Escape);
    this->ExpectActive("cross");
    this->Key(tool.Key);
    this->Key(tool.Key);
    this->ExpectActive("cross");
  }
  this->Key(Qt::Key_Escape);
  this->ExpectActive("cross");
  this->Key(Qt::Key_C);
  this->ExpectActive("cross");
}

TEST_F(WorkstationTools, EachHasAButtonThatIsDownWhileItIsActive)
{
  QToolBar* bar = this->Bar("tools");
  for (QAction* action : this->Tools()->GetActions())
  {
    auto* button = qobject_cast<QToolButton*>(bar->widgetForAction(action));
    ASSERT_NE(button, nullptr) << action->objectName().toStdString();
    EXPECT_TRUE(button->isVisible());
    EXPECT_FALSE(action->icon().isNull());
    QTest::mouseClick(button, Qt::LeftButton);
    this->ExpectActive(action->objectName());
    EXPECT_TRUE(button->isChecked());
  }
}

TEST_F(WorkstationTools, EachIsInTheMenu)
{
  QMenu* menu = nullptr;
  for (QAction* action : this->Window.menuBar()->actions())
  {
    menu = action->text() == "&Tools" ? action->menu() : menu;
  }
  ASSERT_NE(menu, nullptr);
  for (QAction* action : this->Tools()->GetActions())
  {
    ASSERT_TRUE(menu->actions().contains(action)) << action->objectName().toStdString();
    menu->popup(QPoint(10, 10));
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(action).center());
    this->ExpectActive(action->objectName());
    menu->hide();
  }
}

TEST_F(WorkstationTools, EveryActionOfABarIsInAMenuAndTellsWhatItIsForAndItsKey)
{
  QList<QAction*> inMenus;
  for (QAction* action : this->Window.menuBar()->actions())
  {
    inMenus += action->menu()->actions();
  }
  int seen = 0;
  for (QToolBar* bar : this->Window.findChildren<QToolBar*>())
  {
    for (QAction* action : bar->actions())
    {
      if (action->isSeparator() || action->text().isEmpty())
      {
        continue;
      }
      ++seen;
      const std::string name = action->text().toStdString();
      EXPECT_TRUE(inMenus.contains(action)) << name;
      EXPECT_FALSE(action->icon().isNull()) << name;
      const QString key = action->shortcut().toString(QKeySequence::NativeText);
      EXPECT_FALSE(key.isEmpty()) << name;
      EXPECT_TRUE(action->toolTip().endsWith("(" + key + ")")) << action->toolTip().toStdString();
    }
  }
  EXPECT_GE(seen, 20);
}

TEST_F(WorkstationTools, NoKeyIsUsedTwice)
{
  std::set<QString> keys;
  int count = 0;
  for (QAction* action : this->Window.findChildren<QAction*>())
  {
    if (!action->shortcut().isEmpty())
    {
      keys.insert(action->shortcut().toString());
      ++count;
    }
  }
  EXPECT_EQ(static_cast<int>(keys.size()), count);
}

TEST_F(WorkstationTools, AreAvailableOnlyWithAVolume)
{
  zvMainWindow window;
  for (QAction* action : window.GetTools()->GetActions())
  {
    EXPECT_FALSE(action->isEnabled());
  }
  for (QAction* action : this->Tools()->GetActions())
  {
    EXPECT_TRUE(action->isEnabled());
  }
  EXPECT_FALSE(ActionOf(window, "Open &mask...")->isEnabled());
  EXPECT_TRUE(ActionOf(this->Window, "Open &mask...")->isEnabled());
}

TEST_F(WorkstationTools, EveryEntryOfAMenuTellsWhatItIsForAndItsKey)
{
  int seen = 0;
  for (QAction* menu : this->Window.menuBar()->actions())
  {
    EXPECT_TRUE(menu->menu()->toolTipsVisible()) << menu->text().toStdString();
    for (QAction* action : menu->menu()->actions())
    {
      if (action->isSeparator())
      {
        continue;
      }
      ++seen;
      const std::string name = action->text().toStdString();
      // Qt makes a tooltip of the text where nobody has given one.
      EXPECT_NE(action->toolTip(), action->text().remove('&').remove("...")) << name;
      const bool isPreset = menu->menu() == this->Window.GetPresetMenu();
      const bool isAbout = name == "&About";
      EXPECT_EQ(action->shortcut().isEmpty(), isAbout) << name;
      const QString key = "(" + action->shortcut().toString(QKeySequence::NativeText) + ")";
      EXPECT_TRUE(isPreset || isAbout || action->toolTip().endsWith(key)) << name;
    }
  }
  EXPECT_GE(seen, 40);
}

TEST_F(WorkstationTools, AKeyPutsThePlanesUprightAndOneBringsAllBack)
{
  this->Hand(2).Turn(4, QPoint(100, 100));
  this->Window.GetTurnPanel()->GetSlider(0)->setValue(25);
  EXPECT_EQ(this->Viewer(2)->GetPlaneOrientation(), 3);
  this->Key(Qt::Key_O);
  EXPECT_EQ(this->Viewer(2)->GetPlaneOrientation(), 2);
  EXPECT_EQ(this->Viewer(2)->GetSliceIndex(), 18) << "through the cross";
  this->Window.GetTurnPanel()->GetSlider(0)->setValue(25);
  this->Key(Qt::Key_R, Qt::ShiftModifier);
  EXPECT_EQ(this->Viewer(2)->GetPlaneOrientation(), 2);
  EXPECT_EQ(this->Viewer(2)->GetSliceIndex(), 14);
}

TEST_F(WorkstationTools, AKeyFillsTheWindowWithTheActiveViewAndBack)
{
  this->Key(Qt::Key_V, Qt::NoModifier, 1);
  EXPECT_EQ(this->Views()->GetMaximised(), this->Slice(1));
  EXPECT_FALSE(this->Slice(2)->isVisible());
  this->Key(Qt::Key_V, Qt::NoModifier, 1);
  EXPECT_EQ(this->Views()->GetMaximised(), nullptr);
  EXPECT_TRUE(this->Slice(2)->isVisible());
}

// ---- the ruler

TEST_F(WorkstationTools, ADragMakesARulerInEveryView)
{
  this->Key(Qt::Key_D);
  for (int axis = 0; axis < 3; ++axis)
  {
    SCOPED_TRACE(ViewNames[static_cast<std::size_t>(axis)]);
    const QPoint from = this->Hand(axis).Part(-0.2, 0.2), to = this->Hand(axis).Part(0.1, -0.05);
    this->DragLeft(axis, from, to);
    ASSERT_EQ(this->Rows(), axis + 1);
    this->ExpectRow(axis, "Ruler", axis);
    EXPECT_NEAR(
      this->Number(axis), this->Distance(axis, from, to), this->MillimetresPerPixel(axis));
    EXPECT_TRUE(this->Cell(axis, zvMeasurementList::ValueColumn).endsWith(" mm"));
    EXPECT_TRUE(this->Has(axis, Red, (from + to) / 2)) << "the line";
    EXPECT_GT(this->CountNear(axis, Yellow, to + QPoint(70, -6), 45), 20)
      << "its length, at the end";
    this->ExpectActive("ruler");
  }
}

TEST_F(WorkstationTools, TwoClicksMakeARulerWhoseEndFollowsTheMouseBetweenThem)
{
  this->Key(Qt::Key_D);
  const QPoint from = this->Hand(2).Part(-0.2, 0.2);
  this->Click(2, from);
  ASSERT_EQ(this->Rows(), 1);
  for (const QPoint& way : { QPoint(40, 10), QPoint(90, -20), QPoint(120, 60) })
  {
    this->Hand(2).MoveTo(from + way);
    EXPECT_NEAR(this->Number(0), this->Distance(2, from, from + way), this->MillimetresPerPixel(2))
      << "live in the list";
    EXPECT_TRUE(this->Has(2, Red, from + way / 2)) << "and on the screen";
  }
  this->Click(2, from + QPoint(120, 60));
  const double length = this->Number(0);
  this->Hand(2).MoveTo(from);
  EXPECT_EQ(this->Number(0), length) << "the second click has set it";
  EXPECT_FALSE(this->Marks(2)->IsDrawing());
}

TEST_F(WorkstationTools, AQuickSecondClickSetsTheEndTooAndOneAtTheSamePlaceMakesNothing)
{
  this->Key(Qt::Key_D);
  const QPoint from = this->Hand(2).Part(-0.2, 0.2);
  this->Hand(2).MoveTo(from);
  this->Hand(2).DoubleClick(from);
  EXPECT_EQ(this->Rows(), 0);
  EXPECT_FALSE(this->Marks(2)->IsDrawing());
  this->DragLeft(2, from, from + QPoint(60, 0));
  EXPECT_EQ(this->Rows(), 1) << "the tool goes on";
}

TEST_F(WorkstationTools, EscDropsARulerThatIsNotDone)
{
  this->Key(Qt::Key_D);
  this->Click(2, this->Hand(2).Part(-0.2, 0.2));
  this->Hand(2).MoveTo(this->Hand(2).Part(0.1, 0.1));
  EXPECT_EQ(this->Rows(), 1);
  this->Key(Qt::Key_Escape);
  EXPECT_EQ(this->Rows(), 0);
  this->ExpectActive("cross");
  this->Hand(2).MoveTo(this->Hand(2).Part(0.0, 0.0));
  EXPECT_FALSE(this->Has(2, Yellow, this->Hand(2).Part(0.2, 0.1), 60));
}

TEST_F(WorkstationTools, ARulerThatIsDeletedBeforeItIsDoneLeavesTheToolReady)
{
  this->Key(Qt::Key_D);
  const QPoint from = this->Hand(2).Part(-0.2, 0.2), to = this->Hand(2).Part(0.1, 0.1);
  // By the mouse that is at its end, and by its line.
  for (const bool isByMouse : { true, false })
  {
    this->Click(2, from);
    this->Hand(2).MoveTo(to);
    ASSERT_EQ(this->Rows(), 1);
    isByMouse ? this->Key(Qt::Key_Delete) : this->List()->Remove(0);
    EXPECT_EQ(this->Rows(), 0);
    EXPECT_FALSE(this->Marks(2)->IsDrawing());
    this->Click(2, from);
    ASSERT_EQ(this->Rows(), 1) << "the first of two clicks again";
    EXPECT_TRUE(this->Marks(2)->IsDrawing());
    this->Click(2, to);
    EXPECT_NEAR(this->Number(0), this->Distance(2, from, to), this->MillimetresPerPixel(2));
    this->List()->RemoveAll();
  }
  // And in the middle of a drag.
  this->Hand(2).MoveTo(from);
  this->Hand(2).Press(Qt::LeftButton, from);
  this->Hand(2).MoveTo(to);
  this->Key(Qt::Key_Delete);
  this->Hand(2).MoveTo(from);
  this->Hand(2).Release();
  EXPECT_EQ(this->Rows(), 0);
  this->DragLeft(2, from, to);
  EXPECT_EQ(this->Rows(), 1);
}

TEST_F(WorkstationTools, AnEndAndTheLineAreDraggedLiveWithTheCrossTool)
{
  const QPoint to = this->MakeRuler(2);
  const QPoint from = this->Hand(2).Part(-0.2, -0.2);
  this->Tools()->Leave();
  this->Hand(2).MoveTo(to);
  this->Hand(2).Press(Qt::LeftButton, to);
  for (int step = 1; step <= 4; ++step)
  {
    const QPoint at = to + QPoint(10 * step, -8 * step);
    this->Hand(2).MoveTo(at);
    EXPECT_NEAR(this->Number(0), this->Distance(2, from, at), 2.0 * this->MillimetresPerPixel(2));
  }
  this->Hand(2).Release();
  const double length = this->Number(0);
  const QPoint end = to + QPoint(40, -32), middle = (from + end) / 2;
  this->DragLeft(2, middle, middle + QPoint(30, 40));
  EXPECT_NEAR(this->Number(0), length, 0.011) << "the whole line has moved";
  EXPECT_TRUE(this->Has(2, Red, middle + QPoint(30, 40)));
  EXPECT_EQ(this->Rows(), 1);
}

TEST_F(WorkstationTools, TheMiddleButtonMovesAMarkAsAWhole)
{
  const QPoint to = this->MakeRuler(2);
  const QPoint from = this->Hand(2).Part(-0.2, -0.2), middle = (from + to) / 2;
  const double length = this->Number(0);
  const vtkCamera* camera = this->Slice(2)->GetRenderer()->GetActiveCamera();
  Vector focus, after;
  const_cast<vtkCamera*>(camera)->GetFocalPoint(focus.data());
  this->Hand(2).MoveTo(middle);
  this->Hand(2).Drag(Qt::MiddleButton, middle, middle + QPoint(40, 20));
  EXPECT_NEAR(this->Number(0), length, 0.011);
  EXPECT_TRUE(this->Has(2, Red, middle + QPoint(40, 20)));
  const_cast<vtkCamera*>(camera)->GetFocalPoint(after.data());
  EXPECT_EQ(focus, after) << "the picture stays";
}

TEST_F(WorkstationTools, TheLeftButtonReachesTheToolkitThroughTheViewsMode)
{
  this->Key(Qt::Key_D);
  const QPoint from = this->Hand(2).Part(-0.2, 0.2), to = this->Hand(2).Part(0.1, -0.05);
  this->Slice(2)->setVTKMoveMode(false);
  this->DragLeft(2, from, to);
  EXPECT_EQ(this->Rows(), 0);
  this->Slice(2)->setVTKMoveMode(true);
  this->DragLeft(2, from, to);
  EXPECT_EQ(this->Rows(), 1);
}

TEST_F(WorkstationTools, APressBesideTheSliceMakesNothing)
{
  const QPoint beside(3, 40);
  for (const char* id : { "ruler", "area", "lasso", "note" })
  {
    this->Tools()->Choose(id);
    this->DragLeft(2, beside, beside + QPoint(1, 60));
    this->Click(2, beside);
    EXPECT_EQ(this->Rows(), 0) << id;
    EXPECT_FALSE(this->Marks(2)->IsDrawing()) << id;
    EXPECT_EQ(this->Dialog(), nullptr) << id;
  }
  this->Tools()->Choose("ruler");
  this->DragLeft(2, this->Hand(2).Part(-0.2, 0.2), this->Hand(2).Part(0.1, -0.05));
  EXPECT_EQ(this->Rows(), 1) << "the tool goes on";
}

// ---- contours

TEST_F(WorkstationTools, AnAreaIsClosedOnItsFirstPointInEveryView)
{
  this->Key(Qt::Key_A);
  for (int axis = 0; axis < 3; ++axis)
  {
    SCOPED_TRACE(ViewNames[static_cast<std::size_t>(axis)]);
    const Points square = this->Square(axis, 50);
    this->ClickAll(axis, square);
    EXPECT_EQ(this->Rows(), axis) << "it is open yet";
    EXPECT_TRUE(this->Marks(axis)->IsDrawing());
    this->Click(axis, square.front());
    ASSERT_EQ(this->Rows(), axis + 1);
    this->ExpectRow(axis, "Area", axis);
    const double side = 100.0 * this->MillimetresPerPixel(axis);
    // The curve through the corners of a square is nearly the circle around it.
    EXPECT_NEAR(this->Number(axis), 0.5 * vtkMath::Pi() * side * side, 0.1 * side * side);
    EXPECT_TRUE(this->Cell(axis, zvMeasurementList::ValueColumn).endsWith(" mm^2"));
    EXPECT_TRUE(this->Has(axis, Red, square[1], 5)) << "a handle";
    EXPECT_GT(this->CountNear(axis, Cyan, (square[0] + square[1]) / 2 - QPoint(0, 20), 12), 5)
      << "the curve";
    EXPECT_GT(this->CountNear(axis, Yellow, (square[0] + square[2]) / 2 + QPoint(50, -6), 50), 20)
      << "its area, in the middle";
    EXPECT_FALSE(this->Marks(axis)->IsDrawing());
  }
}

TEST_F(WorkstationTools, ADoubleClickAndEnterCloseAContourOfThreePointsOrMore)
{
  for (const char* id : { "area", "lasso" })
  {
    SCOPED_TRACE(id);
    this->Tools()->Choose(id);
    const int before = this->Rows();
    const Points square = this->Square(2, 50);
    this->ClickAll(2, { square[0], square[1] });
    this->Key(Qt::Key_Return);
    EXPECT_TRUE(this->Marks(2)->IsDrawing()) << "two points enclose nothing";
    this->Click(2, square[2]);
    this->Key(Qt::Key_Return);
    EXPECT_EQ(this->Rows(), before + 1);
    this->ClickAll(2, { square[0] + QPoint(90, 90), square[1] + QPoint(90, 90) });
    this->Hand(2).MoveTo(square[2] + QPoint(90, 90));
    this->Hand(2).DoubleClick(square[2] + QPoint(90, 90));
    EXPECT_EQ(this->Rows(), before + 2);
    EXPECT_FALSE(this->Marks(2)->IsDrawing());
    EXPECT_EQ(this->Views()->GetMaximised(), nullptr);
    this->List()->RemoveAll();
  }
}

TEST_F(WorkstationTools, AHandleOfAnAreaIsDraggedLive)
{
  const QPoint corner = this->MakeArea(2);
  const double before = this->Number(0);
  this->Tools()->Leave();
  this->Hand(2).MoveTo(corner);
  this->Hand(2).Press(Qt::LeftButton, corner);
  double last = before;
  for (int step = 1; step <= 4; ++step)
  {
    this->Hand(2).MoveTo(corner + QPoint(15 * step, -15 * step));
    if (step > 1)
    {
      EXPECT_GT(this->Number(0), last) << "live, one motion behind as the label is";
    }
    last = this->Number(0);
  }
  this->Hand(2).Release();
  EXPECT_GT(this->Number(0), last) << "and exact in the end";
  EXPECT_TRUE(this->Has(2, Red, corner + QPoint(60, -60), 5));
}

TEST_F(WorkstationTools, AnAreaCanBeDraggedAlsoAfterARulerWasUsed)
{
  const QPoint corner = this->MakeArea(2);
  const double before = this->Number(0);
  const QPoint end = this->MakeRuler(2);
  this->Tools()->Leave();
  this->DragLeft(2, end, end + QPoint(10, 10));
  this->DragLeft(2, corner, corner + QPoint(60, -60));
  EXPECT_GT(this->Number(0), 1.2 * before);
}

TEST_F(WorkstationTools, ADragDrawsALassoAndTheReleaseClosesIt)
{
  this->Key(Qt::Key_L);
  for (int axis = 0; axis < 3; ++axis)
  {
    SCOPED_TRACE(ViewNames[static_cast<std::size_t>(axis)]);
    const QPoint middle = this->Hand(axis).Part(0.0, 0.0);
    constexpr int radius = 60, steps = 48;
    const auto at = [&](int step)
    {
      const double angle = 2.0 * vtkMath::Pi() * step / steps;
      return middle +
        QPoint(static_cast<int>(std::lround(radius * std::cos(angle))),
          static_cast<int>(std::lround(radius * std::sin(angle))));
    };
    this->Hand(axis).MoveTo(at(0));
    this->Hand(axis).Press(Qt::LeftButton, at(0));
    for (int step = 1; step < steps; ++step)
    {
      this->Hand(axis).MoveTo(at(step));
    }
    EXPECT_EQ(this->Rows(), axis) << "open until the release";
    this->Hand(axis).Release();
    ASSERT_EQ(this->Rows(), axis + 1);
    this->ExpectRow(axis, "Lasso", axis);
    const double millimetres = radius * this->MillimetresPerPixel(axis);
    EXPECT_NEAR(this->Number(axis), vtkMath::Pi() * millimetres * millimetres,
      0.03 * vtkMath::Pi() * millimetres * millimetres);
    EXPECT_TRUE(this->Has(axis, Red, at(9), 4)) << "the first lasso of a view is red";
  }
}

TEST_F(WorkstationTools, LassosHaveColoursOfTheirOwnAndLoseTheirHandlesWhenTheyAreDone)
{
  this->Key(Qt::Key_L);
  const Points square = this->Square(2, 40);
  this->ClickAll(2, square);
  const auto isLit = [this](const QPoint& at) {
    return this->CountNear(2, { 200, 0, 0 }, at, 3) + this->CountNear(2, Red, at, 3);
  };
  const int withHandle = isLit(square[2]);
  this->Click(2, square.front());
  EXPECT_EQ(this->Rows(), 1);
  EXPECT_LT(isLit(square[2]), withHandle - 5) << "the line alone";
  Points other;
  for (const QPoint& point : this->Square(2, 30))
  {
    other.push_back(point + QPoint(110, 60));
  }
  this->ClickAll(2, other);
  this->Click(2, other.front());
  EXPECT_EQ(this->Rows(), 2);
  const zvtest::Color green = zvtest::Color::FromUnit(0.0, 1.0, 0.4);
  EXPECT_TRUE(this->Has(2, green, other[2], 4));
}

TEST_F(WorkstationTools, ALassoIsChangedWithTheCrossToolAndWithItsOwn)
{
  const QPoint corner = this->MakeLasso(2);
  const double before = this->Number(0);
  const auto slices = this->Viewer(0)->GetSliceIndex();
  this->Tools()->Leave();
  this->DragLeft(2, corner, corner + QPoint(40, 40));
  const double larger = this->Number(0);
  EXPECT_GT(larger, 1.1 * before);
  EXPECT_EQ(this->Viewer(0)->GetSliceIndex(), slices) << "the cross has not moved";
  this->Tools()->Choose("lasso");
  this->DragLeft(2, corner + QPoint(40, 40), corner + QPoint(70, 70));
  EXPECT_GT(this->Number(0), 1.05 * larger);
  EXPECT_EQ(this->Rows(), 1);
}

TEST_F(WorkstationTools, AContourThatIsNotClosedIsDroppedWithTheToolAndWithTheSlice)
{
  for (const char* id : { "area", "lasso" })
  {
    SCOPED_TRACE(id);
    const Points square = this->Square(2, 50);
    this->Tools()->Choose(id);
    this->ClickAll(2, { square[0], square[1], square[2] });
    EXPECT_TRUE(this->Has(2, Red, square[1], 5));
    this->Key(Qt::Key_Escape);
    EXPECT_FALSE(this->Marks(2)->IsDrawing());
    EXPECT_FALSE(this->Has(2, Red, square[1], 5));
    this->Tools()->Choose(id);
    this->ClickAll(2, { square[0], square[1], square[2] });
    this->Hand(2).Turn(1, QPoint(100, 100));
    EXPECT_FALSE(this->Marks(2)->IsDrawing());
    this->Hand(2).Turn(-1, QPoint(100, 100));
    EXPECT_FALSE(this->Has(2, Red, square[1], 5));
    this->ClickAll(2, square);
    this->Click(2, square.front());
    EXPECT_EQ(this->Rows(), 1) << "the tool goes on";
    this->List()->RemoveAll();
  }
}

// ---- window and level

TEST_F(WorkstationTools, NumberKeysChooseTheWindowsOfTheMenu)
{
  const auto actions = this->Window.GetPresetMenu()->actions();
  ASSERT_GE(actions.size(), 3);
  QComboBox* box = this->Window.GetWindowPanel()->GetPresetBox();
  EXPECT_EQ(box->currentIndex(), 0);
  EXPECT_EQ(box->currentText(), "1 to 99 %") << "the start";
  for (int number : { 2, 3, 1 })
  {
    this->Key(static_cast<Qt::Key>(Qt::Key_0 + number));
    EXPECT_EQ(box->currentIndex(), number - 1);
    EXPECT_EQ(box->currentText(), actions[number - 1]->text());
    EXPECT_EQ(this->Viewer(2)->GetWindow(), this->View3D()->GetWindowLevel().Window);
    EXPECT_EQ(actions[number - 1]->shortcut().toString(), QString::number(number));
    EXPECT_TRUE(actions[number - 1]->toolTip().startsWith("Window "));
  }
}

TEST_F(WorkstationTools, ANumberThatIsTypedIntoAFieldIsTheFields)
{
  QDoubleSpinBox* field = this->Window.GetWindowPanel()->GetWindowBox();
  field->setFocus();
  field->selectAll();
  QTest::keyClicks(field, "321");
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(this->View3D()->GetWindowLevel().Window, 321.0);
  EXPECT_EQ(this->Viewer(0)->GetWindow(), 321.0);
}

TEST_F(WorkstationTools, AfterANumberIsEnteredTheKeysAreTheToolsAgain)
{
  this->Key(Qt::Key_Up);
  const std::array<QAbstractSpinBox*, 3> fields{ { this->Window.GetWindowPanel()->GetLevelBox(),
    this->Window.GetSlicePanel()->findChild<QSpinBox*>(),
    this->Window.GetEditBar()->GetValueBox() } };
  for (QAbstractSpinBox* field : fields)
  {
    this->Tools()->Leave();
    field->setFocus();
    QTest::keyClick(field, Qt::Key_D);
    this->ExpectActive("cross");
    field->selectAll();
    QTest::keyClicks(field, "12");
    EXPECT_EQ(QApplication::focusWidget(), field);
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_TRUE(field->text().startsWith("12"));
    ASSERT_EQ(QApplication::focusWidget(), this->Slice(2)) << "the view that was used last";
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_D);
    this->ExpectActive("ruler");
  }
}

TEST_F(WorkstationTools, EscLeavesAFieldWithTheNumberThatItHadAndThenTheTool)
{
  this->Key(Qt::Key_D);
  const double window = this->View3D()->GetWindowLevel().Window;
  const int slice = this->Viewer(0)->GetSliceIndex();
  const std::array<QAbstractSpinBox*, 2> fields{ { this->Window.GetWindowPanel()->GetWindowBox(),
    this->Window.GetSlicePanel()->findChild<QSpinBox*>() } };
  for (QAbstractSpinBox* field : fields)
  {
    const QString before = field->text();
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, "1");
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_EQ(field->text(), before);
    EXPECT_EQ(QApplication::focusWidget(), this->Slice(2));
    this->ExpectActive("ruler");
  }
  EXPECT_EQ(this->View3D()->GetWindowLevel().Window, window);
  EXPECT_EQ(this->Viewer(0)->GetSliceIndex(), slice);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  this->ExpectActive("cross");
}

// ---- help

TEST_F(WorkstationTools, F1ShowsEveryKeyAndAnyKeyClosesIt)
{
  zvHelpOverlay* help = this->Window.GetHelp();
  EXPECT_FALSE(help->isVisible());
  this->Key(Qt::Key_F1);
  ASSERT_TRUE(help->isVisible());
  EXPECT_EQ(help->geometry(), this->Window.rect());
  const QString text = help->GetText();
  for (QAction* menu : this->Window.menuBar()->actions())
  {
    for (QAction* action : menu->menu()->actions())
    {
      const QString key = action->shortcut().toString(QKeySequence::NativeText);
      if (!key.isEmpty())
      {
        EXPECT_TRUE(text.contains("<b>" + key.toHtmlEscaped() + "</b>")) << key.toStdString();
      }
    }
  }
  EXPECT_TRUE(text.contains(this->Tools()->GetHint().toHtmlEscaped()));
  for (const Qt::Key key : { Qt::Key_Space, Qt::Key_D, Qt::Key_F1, Qt::Key_Escape })
  {
    QTest::keyClick(help, key);
    EXPECT_FALSE(help->isVisible()) << key;
    this->ExpectActive("cross");
    this->Key(Qt::Key_F1);
    ASSERT_TRUE(help->isVisible());
  }
  QTest::mouseClick(help, Qt::LeftButton);
  EXPECT_FALSE(help->isVisible());
}

TEST_F(WorkstationTools, EscClosesTheHelpBeforeItLeavesTheTool)
{
  this->Key(Qt::Key_D);
  this->Key(Qt::Key_F1);
  this->Key(Qt::Key_Escape);
  EXPECT_FALSE(this->Window.GetHelp()->isVisible());
  this->ExpectActive("ruler");
  this->Key(Qt::Key_Escape);
  this->ExpectActive("cross");
}

// ---- loads

TEST_F(WorkstationTools, AMaskIsLoadedBesideTheWindowAndEscCancelsIt)
{
  int opened = 0;
  QObject::connect(&this->Window, &zvMainWindow::maskOpened, [&opened] { ++opened; });
  std::string bytes(40 * 50 * 30, '\0');
  bytes[(14 * 50 + 25) * 40 + 20] = 3;
  const QString path = QString::fromStdString(this->Folder.Write("labels.mha",
    "ObjectType = Image\nNDims = 3\nDimSize = 40 50 30\nElementType = MET_UCHAR\n"
    "BinaryData = True\nElementSpacing = 2 1.5 3\nOffset = -30 10 5\n"
    "TransformMatrix = 1 0 0 0 1 0 0 0 1\nElementDataFile = LOCAL\n" +
      bytes));
  this->Tools()->Choose("ruler");
  this->Window.OpenMask(path);
  EXPECT_EQ(opened, 0) << "the window does not wait for it";
  EXPECT_TRUE(this->Window.GetLoadBar()->isVisible());
  this->Key(Qt::Key_Escape);
  EXPECT_FALSE(this->Window.GetLoadBar()->isVisible());
  this->ExpectActive("ruler");
  QCoreApplication::processEvents();
  EXPECT_EQ(opened, 0);
  EXPECT_FALSE(this->Window.GetEditBar()->GetMaskAction()->isEnabled());
  this->Window.OpenMask(path);
  ASSERT_TRUE(WaitFor([&opened] { return opened == 1; }));
  EXPECT_FALSE(this->Window.GetLoadBar()->isVisible());
  QAction* mask = this->Window.GetEditBar()->GetMaskAction();
  EXPECT_TRUE(mask->isEnabled());
  EXPECT_FALSE(mask->isChecked()) << "offered";
  this->Window.OpenMask(path, true);
  EXPECT_FALSE(mask->isChecked()) << "not before it is there";
  ASSERT_TRUE(WaitFor([&opened] { return opened == 2; }));
  EXPECT_TRUE(mask->isChecked()) << "asked for";
  this->Key(Qt::Key_M);
  EXPECT_FALSE(mask->isChecked());
  this->Key(Qt::Key_M);
  EXPECT_TRUE(mask->isChecked());
}

TEST_F(WorkstationTools, AMaskThatIsRefusedOrCancelledChangesNothing)
{
  this->Window.SetTellsRefusals(false);
  int opened = 0, refused = 0;
  QObject::connect(&this->Window, &zvMainWindow::maskOpened, [&opened] { ++opened; });
  QObject::connect(&this->Window, &zvMainWindow::refused, [&refused] { ++refused; });
  const QString good = QString::fromStdString(this->Folder.Write("labels.mha",
    "ObjectType = Image\nNDims = 3\nDimSize = 40 50 30\nElementType = MET_UCHAR\n"
    "BinaryData = True\nElementSpacing = 2 1.5 3\nOffset = -30 10 5\n"
    "TransformMatrix = 1 0 0 0 1 0 0 0 1\nElementDataFile = LOCAL\n" +
      std::string(40 * 50 * 30, '\1')));
  const QString bad = QString::fromStdString(this->Folder.Write("bad.mha", "no image"));
  this->Window.OpenMask(good, true);
  ASSERT_TRUE(WaitFor([&opened] { return opened == 1; }));
  QAction* mask = this->Window.GetEditBar()->GetMaskAction();
  for (const bool isOn : { true, false })
  {
    mask->setChecked(isOn);
    const zvtest::Picture before = this->PictureOf(2);
    this->Window.OpenMask(bad, true);
    ASSERT_TRUE(WaitFor([&] { return refused == (isOn ? 1 : 2); }));
    EXPECT_EQ(mask->isChecked(), isOn);
    EXPECT_EQ(this->PictureOf(2).CountDifferent(before), 0);
    this->Window.OpenMask(good, true);
    this->Key(Qt::Key_Escape);
    EXPECT_EQ(mask->isChecked(), isOn);
    EXPECT_EQ(this->PictureOf(2).CountDifferent(before), 0);
  }
  EXPECT_EQ(opened, 1);
}

int main(int argc, char** argv)
{
  return zvtest::RunQtTests(argc, argv);
}
