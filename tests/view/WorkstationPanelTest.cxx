// The list of measurements in the window: what its lines tell, and what can be done from them.

#include "zvWorkstationFixture.h"

#include "zvQtTest.h"

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontMetrics>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QStyleOptionViewItem>
#include <QTableView>
#include <QToolBar>
#include <QToolButton>

namespace
{
using zvtest::WaitFor;

const zvtest::Color Red{ 255, 0, 0 };
}

class WorkstationPanel : public zvtest::WorkstationFixture
{
protected:
  QTableView* Table() { return this->Panel()->GetTable(); }
  QPoint PlaceOf(int row, int column)
  {
    return this->Table()->visualRect(this->List()->index(row, column)).center();
  }
  void ClickRow(int row, int column = zvMeasurementList::ValueColumn,
    Qt::KeyboardModifiers modifiers = Qt::NoModifier)
  {
    QTest::mouseClick(
      this->Table()->viewport(), Qt::LeftButton, modifiers, this->PlaceOf(row, column));
  }
  void DoubleClickRow(int row, int column)
  {
    const QPoint place = this->PlaceOf(row, column) + QPoint(10, 0);
    QTest::mouseClick(this->Table()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QTest::mouseDClick(this->Table()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
  }
  // The middle of the check mark.
  void ClickCheck(int row)
  {
    const QRect name =
      this->Table()->visualRect(this->List()->index(row, zvMeasurementList::NameColumn));
    QStyleOptionViewItem option;
    option.initFrom(this->Table());
    option.rect = name;
    option.features = QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
    const QRect box = this->Table()->style()->subElementRect(
      QStyle::SE_ItemViewItemCheckIndicator, &option, this->Table());
    QTest::mouseClick(this->Table()->viewport(), Qt::LeftButton, Qt::NoModifier, box.center());
  }
  // A ruler along a row of voxels of a view's present slice; the middle of its line.
  QPoint MakeRuler(int axis, int length = 10)
  {
    this->Tools()->Choose("ruler");
    std::array<int, 3> from{ { 10, 10, 8 } }, to = from;
    to[axis == 0 ? 1 : 0] += length;
    this->Hand(axis).MoveTo(this->Seen(axis, from));
    this->Hand(axis).Drag(Qt::LeftButton, this->Seen(axis, from), this->Seen(axis, to));
    this->Tools()->Leave();
    return (this->Seen(axis, from) + this->Seen(axis, to)) / 2;
  }
  // The dialog that comes up, once it has.
  template <class Dialog>
  Dialog* Find()
  {
    return this->Window.template findChild<Dialog*>();
  }
};

TEST_F(WorkstationPanel, TellsKindViewSliceAndValueOfEveryMark)
{
  this->Hand(2).Turn(3, QPoint(100, 100));
  this->MakeRuler(2);
  this->MakeRuler(0, 20);
  ASSERT_EQ(this->Rows(), 2);
  const auto text = [this](int row)
  {
    QStringList cells;
    for (int column = 0; column < zvMeasurementList::ValueColumn; ++column)
    {
      cells += this->Cell(row, column);
    }
    return cells.join("|");
  };
  EXPECT_EQ(text(0), "Ruler 1|Ruler|Axial|17");
  EXPECT_EQ(text(1), "Ruler 2|Ruler|Sagittal|19");
  EXPECT_NEAR(this->Number(0), 20.0, this->MillimetresPerPixel(2)) << "ten voxels of 2 mm";
  EXPECT_NEAR(this->Number(1), 30.0, this->MillimetresPerPixel(0)) << "twenty of 1.5 mm";
  EXPECT_TRUE(this->Table()->isVisible());
  for (int column = 0; column < zvMeasurementList::ColumnCount; ++column)
  {
    EXPECT_FALSE(
      this->List()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString().isEmpty());
    const QFontMetrics letters(this->Table()->font());
    for (int row = 0; row < 2; ++row)
    {
      EXPECT_GT(
        this->Table()->columnWidth(column), letters.horizontalAdvance(this->Cell(row, column)))
        << "column " << column << " is cut off";
    }
  }
}

TEST_F(WorkstationPanel, SaysThatItIsEmptyAndOffersNothingThen)
{
  EXPECT_FALSE(this->Table()->isVisible());
  for (QAction* action : this->Panel()->GetActions())
  {
    EXPECT_EQ(action->isEnabled(), action == this->Panel()->GetRemoveAction());
  }
  this->MakeRuler(2);
  EXPECT_TRUE(this->Panel()->GetExportAction()->isEnabled());
  EXPECT_FALSE(this->Panel()->GetRenameAction()->isEnabled()) << "no line is selected";
  this->ClickRow(0);
  EXPECT_TRUE(this->Panel()->GetRenameAction()->isEnabled());
}

TEST_F(WorkstationPanel, AClickOnALineGoesToItsSlice)
{
  const QPoint axial = this->MakeRuler(2);
  this->Hand(2).Turn(5, QPoint(100, 100));
  this->MakeRuler(1);
  this->Hand(1).Turn(-7, QPoint(100, 100));
  EXPECT_FALSE(this->Has(2, Red, axial)) << "another slice";
  this->ClickRow(0);
  EXPECT_EQ(this->Viewer(2)->GetSliceIndex(), 14);
  EXPECT_EQ(this->Viewer(1)->GetSliceIndex(), 17) << "the others stay";
  EXPECT_TRUE(this->Has(2, Red, axial));
  EXPECT_EQ(this->Views()->GetActiveView(), this->Slice(2));
  this->ClickRow(1);
  EXPECT_EQ(this->Viewer(1)->GetSliceIndex(), 24);
  EXPECT_EQ(this->Views()->GetActiveView(), this->Slice(1));
}

TEST_F(WorkstationPanel, TheKeyGGoesToTheSelectedLineToo)
{
  this->MakeRuler(2);
  this->ClickRow(0);
  this->Hand(2).Turn(5, QPoint(100, 100));
  this->Key(Qt::Key_G);
  EXPECT_EQ(this->Viewer(2)->GetSliceIndex(), 14);
}

TEST_F(WorkstationPanel, InAWindowOfOneViewTheLineBringsItsOwn)
{
  this->MakeRuler(0);
  this->Hand(2).DoubleClick(QPoint(5, 40));
  QCoreApplication::processEvents();
  ASSERT_EQ(this->Views()->GetMaximised(), this->Slice(2));
  this->ClickRow(0);
  EXPECT_EQ(this->Views()->GetMaximised(), this->Slice(0));
  EXPECT_TRUE(this->Slice(0)->isVisible());
}

TEST_F(WorkstationPanel, TheCheckMarkHidesAMarkAndShowsItAgain)
{
  const QPoint line = this->MakeRuler(2);
  this->Hand(2).MoveTo(QPoint(5, 5));
  EXPECT_TRUE(this->Has(2, Red, line));
  this->ClickCheck(0);
  EXPECT_TRUE(this->List()->IsHidden(0));
  EXPECT_FALSE(this->Has(2, Red, line));
  this->Hand(2).Turn(1, QPoint(100, 100));
  this->Hand(2).Turn(-1, QPoint(100, 100));
  EXPECT_FALSE(this->Has(2, Red, line)) << "it stays hidden";
  this->ClickCheck(0);
  EXPECT_FALSE(this->List()->IsHidden(0));
  EXPECT_TRUE(this->Has(2, Red, line));
}

TEST_F(WorkstationPanel, TheKeyHHidesAllSelectedLinesOrShowsThem)
{
  const QPoint axial = this->MakeRuler(2), coronal = this->MakeRuler(1);
  this->ClickRow(0);
  this->ClickRow(1, zvMeasurementList::ValueColumn, Qt::ControlModifier);
  this->Key(Qt::Key_H);
  EXPECT_TRUE(this->List()->IsHidden(0) && this->List()->IsHidden(1));
  EXPECT_FALSE(this->Has(2, Red, axial) || this->Has(1, Red, coronal));
  this->Key(Qt::Key_H);
  EXPECT_TRUE(this->Has(2, Red, axial) && this->Has(1, Red, coronal));
}

TEST_F(WorkstationPanel, AHiddenMarkIsNotDraggedAndNotDeletedByTheMouse)
{
  const QPoint line = this->MakeRuler(2);
  const QString value = this->Cell(0, zvMeasurementList::ValueColumn);
  this->List()->SetHidden(0, true);
  this->Hand(2).MoveTo(line);
  this->Hand(2).Drag(Qt::LeftButton, line, line + QPoint(20, 20));
  EXPECT_EQ(this->Cell(0, zvMeasurementList::ValueColumn), value);
  this->Hand(2).MoveTo(line);
  this->Table()->clearSelection();
  this->Key(Qt::Key_Delete);
  EXPECT_EQ(this->Rows(), 1);
}

TEST_F(WorkstationPanel, F2AndADoubleClickNameALineAnew)
{
  this->MakeRuler(2);
  this->MakeRuler(1);
  this->ClickRow(0);
  this->Key(Qt::Key_F2);
  auto* field = this->Table()->findChild<QLineEdit*>();
  ASSERT_NE(field, nullptr);
  QTest::keyClicks(field, "width, left");
  EXPECT_EQ(this->Tools()->GetActive(), "cross") << "letters are the name's, not the tools'";
  QTest::keyClick(field, Qt::Key_Return);
  QCoreApplication::processEvents(); // the table takes a text after its key
  EXPECT_EQ(this->Cell(0, zvMeasurementList::NameColumn), "width, left");
  this->DoubleClickRow(1, zvMeasurementList::NameColumn);
  field = this->Table()->findChild<QLineEdit*>();
  ASSERT_NE(field, nullptr);
  QTest::keyClicks(field, "height");
  QTest::keyClick(field, Qt::Key_Escape);
  QCoreApplication::processEvents();
  EXPECT_EQ(this->Cell(1, zvMeasurementList::NameColumn), "Ruler 2") << "taken back";
}

TEST_F(WorkstationPanel, DeleteRemovesTheSelectedLines)
{
  this->MakeRuler(2);
  const QPoint coronal = this->MakeRuler(1);
  this->MakeRuler(0);
  QEvent leave(QEvent::Leave);
  for (int axis = 0; axis < 3; ++axis)
  {
    QApplication::sendEvent(this->Slice(axis), &leave);
  }
  this->ClickRow(1);
  QTest::keyClick(this->Table(), Qt::Key_Delete);
  ASSERT_EQ(this->Rows(), 2);
  EXPECT_EQ(this->Cell(1, zvMeasurementList::ViewColumn), "Sagittal");
  EXPECT_FALSE(this->Has(1, Red, coronal));
  this->ClickRow(0);
  this->ClickRow(1, zvMeasurementList::ValueColumn, Qt::ControlModifier);
  auto* bar = this->Panel()->findChild<QToolBar*>();
  QTest::mouseClick(bar->widgetForAction(this->Panel()->GetRemoveAction()), Qt::LeftButton);
  EXPECT_EQ(this->Rows(), 0);
}

TEST_F(WorkstationPanel, ANoteIsEditedFromItsLine)
{
  this->Tools()->Choose("note");
  const QPoint place = this->Hand(2).Part(-0.1, 0.2);
  this->Hand(2).MoveTo(place);
  this->Hand(2).Click(Qt::LeftButton, place);
  this->Window.findChild<QDialog*>()->reject();
  this->Marks(2)->AddNote("first", Qt::yellow, 6.0);
  ASSERT_EQ(this->Rows(), 1);
  this->DoubleClickRow(0, zvMeasurementList::ValueColumn);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QLineEdit* field = nullptr;
  for (auto* dialog : this->Window.findChildren<QDialog*>())
  {
    field = dialog->isVisible() ? dialog->findChild<QLineEdit*>() : field;
  }
  ASSERT_NE(field, nullptr);
  EXPECT_EQ(field->text(), "first");
  field->setText("second");
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(this->Cell(0, zvMeasurementList::ValueColumn), "second");
}

TEST_F(WorkstationPanel, TheTableIsExportedAsItIs)
{
  this->MakeRuler(2);
  this->MakeRuler(0, 20);
  this->List()->Rename(0, "left, \"wide\"");
  this->Key(Qt::Key_E, Qt::ControlModifier);
  auto* dialog = this->Find<QFileDialog>();
  ASSERT_NE(dialog, nullptr);
  const QString path = QString::fromStdString(this->Folder.At("table.csv"));
  dialog->selectFile(path.left(path.size() - 4)); // the ending is added
  static_cast<QDialog*>(dialog)->accept();
  ASSERT_TRUE(WaitFor([&] { return QFileInfo::exists(path); }));
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QString first = this->Cell(0, zvMeasurementList::ValueColumn).section(' ', 0, 0);
  const QString second = this->Cell(1, zvMeasurementList::ValueColumn).section(' ', 0, 0);
  EXPECT_EQ(QString::fromUtf8(file.readAll()),
    "Kind,Name,View,Slice,Value,Unit\r\n"
    "Ruler,\"left, \"\"wide\"\"\",Axial,14," +
      first +
      ",mm\r\n"
      "Ruler,Ruler 2,Sagittal,19," +
      second + ",mm\r\n");
}

TEST_F(WorkstationPanel, ANameThatLooksLikeAFormulaIsExportedAsAText)
{
  this->MakeRuler(2);
  this->ClickRow(0);
  this->Key(Qt::Key_F2);
  auto* field = this->Table()->findChild<QLineEdit*>();
  ASSERT_NE(field, nullptr);
  field->clear();
  QTest::keyClicks(field, "=1+\"2\"");
  QTest::keyClick(field, Qt::Key_Return);
  QCoreApplication::processEvents();
  EXPECT_EQ(this->Cell(0, zvMeasurementList::NameColumn), "=1+\"2\"");
  const QString path = QString::fromStdString(this->Folder.At("formula.csv"));
  ASSERT_TRUE(this->Panel()->ExportTo(path));
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_TRUE(file.readAll().contains("\r\nRuler,\"'=1+\"\"2\"\"\",Axial,"));
}

TEST_F(WorkstationPanel, AFileThatCannotBeWrittenIsTold)
{
  this->MakeRuler(2);
  const QString path = QString::fromStdString(this->Folder.At("missing/table.csv"));
  EXPECT_FALSE(this->Panel()->ExportTo(path));
  auto* box = this->Find<QMessageBox>();
  ASSERT_NE(box, nullptr);
  EXPECT_TRUE(box->text().startsWith(path + " is not written:\n"));
  box->close();
}

TEST_F(WorkstationPanel, CanBeHiddenAndBroughtBackByItsKey)
{
  EXPECT_TRUE(this->Panel()->isVisible());
  const QKeySequence key = this->Panel()->toggleViewAction()->shortcut();
  ASSERT_FALSE(key.isEmpty());
  this->Key(static_cast<Qt::Key>(key[0]));
  EXPECT_FALSE(this->Panel()->isVisible());
  this->Key(static_cast<Qt::Key>(key[0]));
  EXPECT_TRUE(this->Panel()->isVisible());
}

int main(int argc, char** argv)
{
  return zvtest::RunQtTests(argc, argv);
}
