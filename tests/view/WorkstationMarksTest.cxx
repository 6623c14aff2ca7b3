// The marks that the tools of the workstation make: notes, what belongs to which slice, deleting,
// and what the brush and the picture do beside them.

#include "zvToolsFixture.h"

#include "zvEditBar.h"
#include "zvTextNoteWidget.h"
#include "zvTurnPanel.h"

#include "zvDice.h"
#include "zvQtTest.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QMessageBox>
#include <QSlider>
#include <QSpinBox>

#include "vtkCamera.h"

#include <algorithm>
#include <memory>
#include <set>

using zvtest::WaitFor;

class WorkstationMarks : public zvtest::ToolsFixture
{
protected:
  // A ring of 777 in the axial slice, with 5 inside, and that value in hand.
  void WriteRing()
  {
    for (int i = 10; i <= 20; ++i)
    {
      for (int j = 10; j <= 20; ++j)
      {
        const bool isRing = i == 10 || i == 20 || j == 10 || j == 20;
        this->Image()->SetScalarComponentFromDouble(i, j, 14, 0, isRing ? 777.0 : 5.0);
      }
    }
    this->Window.GetEditBar()->GetValueBox()->setValue(777);
  }
  double InRing() { return this->Image()->GetScalarComponentAsDouble(15, 15, 14, 0); }
  QPoint SeenInRing() { return this->Seen(2, { { 15, 15, 14 } }); }
};

// ---- notes

TEST_F(WorkstationMarks, AClickAsksForANoteInEveryView)
{
  this->Key(Qt::Key_T);
  for (int axis = 0; axis < 3; ++axis)
  {
    SCOPED_TRACE(ViewNames[static_cast<std::size_t>(axis)]);
    const QPoint place = this->Hand(axis).Part(-0.2, 0.1);
    this->Click(axis, place);
    ASSERT_NE(this->Dialog(), nullptr);
    this->Dialog()->GetColorBox()->setCurrentIndex(this->Dialog()->GetColorBox()->findText("Red"));
    this->Dialog()->GetSizeBox()->setValue(8.0);
    this->Answer("here it is");
    ASSERT_EQ(this->Rows(), axis + 1);
    this->ExpectRow(axis, "Note", axis);
    EXPECT_EQ(this->Cell(axis, zvMeasurementList::ValueColumn), "here it is");
    EXPECT_GT(this->CountNear(axis, { 255, 90, 90 }, place + QPoint(60, -10), 60), 60);
    EXPECT_GT(this->CountNear(axis, { 5, 5, 5 }, place + QPoint(60, -10), 60), 60)
      << "with a dark outline";
  }
}

TEST_F(WorkstationMarks, ANoteThatIsCancelledIsNotMade)
{
  this->Key(Qt::Key_T);
  this->Click(2, this->Hand(2).Part(-0.2, 0.1));
  ASSERT_NE(this->Dialog(), nullptr);
  QTest::keyClick(this->Dialog()->GetTextField(), Qt::Key_Escape);
  ASSERT_TRUE(WaitFor([this] { return this->Dialog() == nullptr; }));
  EXPECT_EQ(this->Rows(), 0);
}

TEST_F(WorkstationMarks, ATextThatNotesDoNotTakeCannotBeAccepted)
{
  const int most = zvTextNoteWidget::GetMaximumTextLength();
  this->Key(Qt::Key_T);
  this->Click(2, this->Hand(2).Part(-0.2, 0.1));
  zvNoteDialog* dialog = this->Dialog();
  ASSERT_NE(dialog, nullptr);
  EXPECT_FALSE(dialog->GetAcceptButton()->isEnabled()) << "no text";
  dialog->GetTextField()->setText("   ");
  EXPECT_FALSE(dialog->GetAcceptButton()->isEnabled()) << "blanks";
  dialog->GetTextField()->setText(QString(most + 1, 'a'));
  EXPECT_FALSE(dialog->GetAcceptButton()->isEnabled()) << "too long";
  dialog->GetTextField()->setText(QString::fromUtf8("gro\u00df"));
  EXPECT_FALSE(dialog->GetAcceptButton()->isEnabled()) << "a letter that cannot be drawn";
  dialog->GetTextField()->setText(QString(most, 'a'));
  EXPECT_TRUE(dialog->GetAcceptButton()->isEnabled()) << "the longest";
  QTest::mouseClick(dialog->GetAcceptButton(), Qt::LeftButton);
  ASSERT_TRUE(WaitFor([this] { return this->Dialog() == nullptr; }));
  EXPECT_EQ(this->Cell(0, zvMeasurementList::ValueColumn), QString(most, 'a'));
  // Nor by the way that a program goes.
  EXPECT_EQ(this->Marks(2)->AddNote(QString(most + 1, 'a'), Qt::red, 5.0), 0);
  this->Marks(2)->ChangeNote(1, QString(most + 1, 'b'), Qt::red, 5.0);
  EXPECT_EQ(this->Rows(), 1);
  EXPECT_EQ(this->Cell(0, zvMeasurementList::ValueColumn), QString(most, 'a'));
}

TEST_F(WorkstationMarks, ANoteIsEditedByAClickWithItsToolAndByADoubleClickWithoutIt)
{
  const QPoint place = this->MakeNote(2, "MMMM") + QPoint(12, -6);
  this->Click(2, place);
  ASSERT_NE(this->Dialog(), nullptr);
  EXPECT_EQ(this->Dialog()->GetText(), "MMMM");
  this->Dialog()->GetSizeBox()->setValue(9.0);
  this->Answer("HHHH");
  EXPECT_EQ(this->Rows(), 1);
  EXPECT_EQ(this->Cell(0, zvMeasurementList::ValueColumn), "HHHH");
  EXPECT_EQ(this->Marks(2)->GetNoteSize(1), 9.0);
  this->Tools()->Leave();
  this->Hand(2).MoveTo(place);
  this->Hand(2).DoubleClick(place);
  ASSERT_NE(this->Dialog(), nullptr);
  EXPECT_EQ(this->Views()->GetMaximised(), nullptr);
  this->Answer("again");
  EXPECT_EQ(this->Cell(0, zvMeasurementList::ValueColumn), "again");
}

TEST_F(WorkstationMarks, ANoteIsDraggedAlsoOnATiltedSlice)
{
  const zvtest::Color color{ 255, 217, 74 }; // of a new note
  for (int tilt : { 0, 25 })
  {
    this->Window.GetTurnPanel()->GetSlider(0)->setValue(tilt);
    const QPoint place = this->MakeNote(2, "MMMM"), grip = place + QPoint(12, -6);
    EXPECT_GT(this->CountNear(2, color, place + QPoint(25, -8), 25), 30) << tilt;
    this->Tools()->Leave();
    this->DragLeft(2, grip, grip + QPoint(30, 90));
    EXPECT_GT(this->CountNear(2, color, grip + QPoint(30, 90) + QPoint(25, -8), 25), 30) << tilt;
    EXPECT_LT(this->CountNear(2, color, place + QPoint(25, -8), 20), 10) << tilt;
    EXPECT_EQ(this->Rows(), 1);
    this->List()->RemoveAll();
  }
}

// ---- marks and slices

TEST_F(WorkstationMarks, AMarkIsSeenOnItsSliceOnly)
{
  const zvtest::Color noteColor{ 255, 217, 74 };
  const QPoint note = this->MakeNote(2, "MMMM"), area = this->MakeArea(2);
  Points lasso;
  for (const QPoint& corner : this->Square(2, 20))
  {
    lasso.push_back(corner + QPoint(120, 100));
  }
  this->Tools()->Choose("lasso");
  this->ClickAll(2, lasso);
  this->Click(2, lasso.front());
  this->Tools()->Choose("ruler"); // which hides the cross
  const QPoint from = area + QPoint(90, -20), to = from + QPoint(60, 0);
  this->DragLeft(2, from, to);
  ASSERT_EQ(this->Rows(), 4);
  for (int steps : { 1, -2, 1 })
  {
    this->Hand(2).Turn(steps, QPoint(100, 100));
    const bool isBack = this->Viewer(2)->GetSliceIndex() == 14;
    EXPECT_EQ(this->CountNear(2, noteColor, note + QPoint(25, -8), 25) > 30, isBack);
    EXPECT_EQ(this->Has(2, Red, area, 5), isBack);
    EXPECT_EQ(this->Has(2, Red, (lasso[1] + lasso[2]) / 2 + QPoint(8, 0), 6), isBack);
    EXPECT_EQ(this->Has(2, Red, (from + to) / 2), isBack);
  }
  EXPECT_EQ(this->Rows(), 4) << "the list has them all";
}

TEST_F(WorkstationMarks, MarksKeepTheirSizeOnTheScreenThroughAZoom)
{
  const QPoint end = this->MakeRuler(2);
  this->Tools()->Leave();
  const Vector world = this->WorldAt(2, end);
  const auto height = [this](const QPoint& at)
  {
    // Of the figures: the rows with their colour to the right of the end.
    const zvtest::Picture picture = this->PictureOf(2);
    int rows = 0;
    for (int y = -60; y <= 60; ++y)
    {
      const zvtest::Display one = this->In(2, at + QPoint(0, y));
      bool isText = false;
      for (int x = 5; x < 160 && one[0] + x < picture.Width(); ++x)
      {
        isText = isText ||
          (one[1] >= 0 && one[1] < picture.Height() &&
            picture.At({ { one[0] + x, one[1] } }).IsNear(Yellow, 60));
      }
      rows += isText;
    }
    return rows;
  };
  const int before = height(end);
  EXPECT_GT(before, 8) << "large enough to be read";
  this->Hand(2).Turn(4, QPoint(100, 100), Qt::ControlModifier);
  EXPECT_NEAR(height(this->Hand(2).At(world)), before, 3);
}

TEST_F(WorkstationMarks, AMarkOnATiltedSliceComesBackWithItsLine)
{
  this->Window.GetTurnPanel()->GetSlider(0)->setValue(25);
  this->Window.GetTurnPanel()->GetSlider(1)->setValue(10);
  this->Hand(2).Turn(2, QPoint(100, 100));
  const QPoint end = this->MakeRuler(2);
  const QPoint line = (end + this->Hand(2).Part(-0.2, -0.2)) / 2;
  this->Tools()->Leave();
  EXPECT_TRUE(this->Cell(0, zvMeasurementList::SliceColumn).startsWith("oblique "));
  EXPECT_TRUE(this->Has(2, Red, line));
  this->Views()->ResetAll();
  EXPECT_FALSE(this->Marks(2)->IsMovedByMiddle());
  EXPECT_LT(this->CountNear(2, Yellow, end + QPoint(60, -6), 45), 5) << "not its slice";
  this->List()->GoTo(0);
  EXPECT_EQ(this->Viewer(2)->GetPlaneOrientation(), 3);
  EXPECT_GT(this->CountNear(2, Yellow, end + QPoint(60, -6), 60), 20);
  // And from there to one on a straight slice.
  this->Views()->ResetAll();
  this->MakeRuler(1);
  this->List()->GoTo(0);
  this->List()->GoTo(1);
  EXPECT_EQ(this->Viewer(1)->GetPlaneOrientation(), 1);
  EXPECT_EQ(this->Viewer(1)->GetSliceIndex(), 24);
  EXPECT_EQ(this->Window.GetTurnPanel()->GetSlider(0)->value(), 0);
}

TEST_F(WorkstationMarks, EveryPictureStandsAgainAsItDidWhenTheMarkWasMade)
{
  const auto ups = [this]
  {
    std::array<Vector, 3> all;
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
      this->Slice(static_cast<int>(axis))
        ->GetRenderer()
        ->GetActiveCamera()
        ->GetViewUp(all[axis].data());
    }
    return all;
  };
  // By a line, which turns the other planes and leaves the picture that it is dragged in.
  const QPoint grip = this->Seen(2, { { this->Viewer(0)->GetSliceIndex(), 6, 0 } });
  this->DragLeft(2, grip, grip + QPoint(50, 10));
  ASSERT_EQ(this->Viewer(0)->GetPlaneOrientation(), 3);
  this->MakeRuler(0);
  const std::array<Vector, 3> then = ups();
  this->Views()->ResetAll();
  this->List()->GoTo(0);
  ASSERT_EQ(this->Viewer(0)->GetPlaneOrientation(), 3);
  const std::array<Vector, 3> now = ups();
  for (std::size_t axis = 0; axis < 3; ++axis)
  {
    for (std::size_t i = 0; i < 3; ++i)
    {
      EXPECT_NEAR(now[axis][i], then[axis][i], 1.0e-9) << axis;
    }
  }
}

TEST_F(WorkstationMarks, ANewVolumeBeginsWithoutMarksAndWithTheCross)
{
  this->MakeRuler(2);
  this->MakeArea(1);
  this->Tools()->Choose("lasso");
  this->Window.OpenPhantom(24);
  ASSERT_TRUE(WaitFor([this] { return this->Shown == 2; }));
  EXPECT_EQ(this->Rows(), 0);
  EXPECT_EQ(this->Marks(2)->GetCount(), 0);
  this->ExpectActive("cross");
  this->MakeRuler(2);
  EXPECT_EQ(this->Cell(0, zvMeasurementList::NameColumn), "Ruler 1");
}

TEST_F(WorkstationMarks, ANoteThatIsStillAskedForIsNotMadeInAnotherVolume)
{
  for (const bool isNew : { true, false })
  {
    if (!isNew)
    {
      this->MakeNote(2, "MMMM");
    }
    const int before = this->Shown;
    this->Tools()->Choose("note");
    this->Click(2, this->Hand(2).Part(-0.1, 0.3) + QPoint(12, -6));
    ASSERT_NE(this->Dialog(), nullptr);
    this->Dialog()->GetTextField()->setText("too late");
    this->Window.OpenPhantom(24);
    ASSERT_TRUE(WaitFor([&] { return this->Shown > before; }));
    ASSERT_TRUE(WaitFor([this] { return this->Dialog() == nullptr; }));
    EXPECT_EQ(this->Rows(), 0);
  }
}

TEST_F(WorkstationMarks, ANewVolumeInMidDragLeavesNothingBehind)
{
  for (const char* id : { "ruler", "area", "lasso", "paint", "cross" })
  {
    SCOPED_TRACE(id);
    const int before = this->Shown;
    this->Tools()->Choose(id);
    const Points square = this->Square(2, 50);
    this->Hand(2).MoveTo(square[0]);
    this->Hand(2).Press(Qt::LeftButton, square[0]);
    this->Hand(2).MoveTo(square[1]);
    this->Window.OpenPhantom(24);
    ASSERT_TRUE(WaitFor([&] { return this->Shown > before; }));
    this->Hand(2).MoveTo(square[2]);
    this->Hand(2).Release();
    EXPECT_EQ(this->Rows(), 0);
    EXPECT_FALSE(this->Marks(2)->IsDrawing());
    this->ExpectActive("cross");
    this->MakeRuler(2);
    EXPECT_EQ(this->Rows(), 1);
  }
}

TEST_F(WorkstationMarks, ARefusedFileKeepsMarksToolAndFill)
{
  this->Window.SetTellsRefusals(false);
  this->MakeRuler(1);
  this->MakeArea(0);
  this->List()->Rename(0, "mine");
  this->Window.GetEditBar()->GetValueBox()->setValue(777);
  this->Tools()->Choose("fill");
  this->Click(2, this->Hand(2).Part(0.1, 0.1));
  ASSERT_TRUE(this->Window.GetEditBar()->GetUndoAction()->isEnabled());
  this->Tools()->Choose("area");
  this->ClickAll(1, { this->Square(1, 50)[0], this->Square(1, 50)[1] });
  const QString title = this->Window.windowTitle();
  QString reason;
  QObject::connect(&this->Window, &zvMainWindow::refused,
    [&reason](const QString&, const QString& why) { reason = why; });
  this->Window.Open(QString::fromStdString(this->Folder.Write("broken.nii", "no image")));
  ASSERT_TRUE(WaitFor([&reason] { return !reason.isEmpty(); }));
  EXPECT_EQ(this->Rows(), 2);
  EXPECT_EQ(this->Cell(0, zvMeasurementList::NameColumn), "mine");
  EXPECT_TRUE(this->Marks(1)->IsDrawing()) << "what is being drawn too";
  EXPECT_TRUE(this->Window.GetEditBar()->GetUndoAction()->isEnabled());
  EXPECT_EQ(this->Window.windowTitle(), title);
  this->ExpectActive("area");
}

// ---- deleting

TEST_F(WorkstationMarks, DeleteRemovesTheMarkUnderTheMouse)
{
  const QPoint note = this->MakeNote(0, "MMMM") + QPoint(12, -6);
  const QPoint lasso = this->MakeLasso(1), area = this->MakeArea(2), ruler = this->MakeRuler(0);
  this->Tools()->Leave();
  ASSERT_EQ(this->Rows(), 4);
  this->Hand(2).MoveTo(this->Hand(2).Part(0.6, 0.6));
  this->Key(Qt::Key_Delete);
  EXPECT_EQ(this->Rows(), 4) << "nothing is under the mouse";
  struct Place
  {
    int Axis;
    QPoint At;
    const char* Kind;
  };
  for (const Place& place : { Place{ 1, lasso, "Lasso" }, Place{ 0, note, "Note" },
         Place{ 2, area, "Area" }, Place{ 0, ruler, "Ruler" } })
  {
    this->Hand(place.Axis).MoveTo(place.At);
    const int before = this->Rows();
    this->Key(Qt::Key_Delete, Qt::NoModifier, place.Axis);
    EXPECT_EQ(this->Rows(), before - 1) << place.Kind;
    for (int row = 0; row < this->Rows(); ++row)
    {
      EXPECT_NE(this->Cell(row, zvMeasurementList::KindColumn), place.Kind);
    }
  }
  EXPECT_EQ(this->Rows(), 0);
  EXPECT_FALSE(this->Has(2, Red, area, 5)) << "it is gone from the screen";
}

TEST_F(WorkstationMarks, DeleteDoesNothingOnceTheMouseHasLeftTheView)
{
  const QPoint end = this->MakeRuler(2);
  this->Hand(2).MoveTo(end);
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(this->Slice(2), &leave);
  this->Key(Qt::Key_Delete);
  EXPECT_EQ(this->Rows(), 1);
  this->Hand(2).MoveTo(end);
  this->Key(Qt::Key_Delete);
  EXPECT_EQ(this->Rows(), 0);
}

TEST_F(WorkstationMarks, DeleteAllAsksAndThenEmptiesEveryView)
{
  const QPoint area = this->MakeArea(2);
  this->MakeRuler(0);
  this->MakeNote(1, "note");
  const auto ask = [this]
  {
    this->Key(Qt::Key_Delete, Qt::ShiftModifier);
    return this->Window.findChild<QMessageBox*>();
  };
  QMessageBox* box = ask();
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(box->text(), "Delete all 3 marks?");
  QTest::mouseClick(box->button(QMessageBox::Cancel), Qt::LeftButton);
  ASSERT_TRUE(WaitFor([this] { return this->Window.findChild<QMessageBox*>() == nullptr; }));
  EXPECT_EQ(this->Rows(), 3);
  box = ask();
  ASSERT_NE(box, nullptr);
  QTest::mouseClick(box->button(QMessageBox::Yes), Qt::LeftButton);
  ASSERT_TRUE(WaitFor([this] { return this->Window.findChild<QMessageBox*>() == nullptr; }));
  EXPECT_EQ(this->Rows(), 0);
  EXPECT_FALSE(this->Has(2, Red, area, 5));
  EXPECT_FALSE(this->Panel()->GetRemoveAllAction()->isEnabled());
  this->MakeRuler(2);
  EXPECT_EQ(this->Rows(), 1) << "the tools go on";
}

TEST_F(WorkstationMarks, DeleteAllWithAToolInHandLeavesItReady)
{
  for (const char* id : { "ruler", "area", "lasso" })
  {
    SCOPED_TRACE(id);
    this->Tools()->Choose(id);
    this->ClickAll(2, { this->Square(2, 50)[0] }); // open
    this->List()->RemoveAll();
    EXPECT_FALSE(this->Marks(2)->IsDrawing());
    this->ExpectActive(id);
    const Points square = this->Square(2, 50);
    if (QString(id) == "ruler")
    {
      this->DragLeft(2, square[0], square[2]);
    }
    else
    {
      this->ClickAll(2, square);
      this->Click(2, square[0]);
    }
    EXPECT_EQ(this->Rows(), 1);
    this->List()->RemoveAll();
  }
}

// ---- voxels

TEST_F(WorkstationMarks, AClickOfTheBrushPaintsTheVoxelUnderIt)
{
  this->Window.GetEditBar()->GetValueBox()->setValue(1234);
  this->Key(Qt::Key_P);
  for (int axis = 0; axis < 3; ++axis)
  {
    std::array<int, 3> voxel{ { 12, 17, 9 } };
    const QPoint at = this->Seen(axis, voxel);
    voxel[static_cast<std::size_t>(axis)] = this->Viewer(axis)->GetSliceIndex();
    const zvtest::Picture before = this->PictureOf(axis);
    this->Hand(axis).Click(Qt::LeftButton, at); // with no motion before
    EXPECT_EQ(this->Image()->GetScalarComponentAsDouble(voxel[0], voxel[1], voxel[2], 0), 1234.0)
      << axis;
    EXPECT_GT(this->PictureOf(axis).CountDifferent(before), 3) << "it is seen";
  }
  this->Hand(2).Click(Qt::LeftButton, QPoint(3, 3));
}

TEST_F(WorkstationMarks, AMarkIsNotPaintedOverAndNotFilledFrom)
{
  const QPoint end = this->MakeRuler(2);
  this->Window.GetEditBar()->GetValueBox()->setValue(1234);
  const auto written = [this]
  {
    const auto* voxels = static_cast<const short*>(this->Image()->GetScalarPointer());
    return std::count(voxels, voxels + this->Image()->GetNumberOfPoints(), short(1234));
  };
  const auto before = written();
  this->Tools()->Choose("paint");
  this->DragLeft(2, end, end + QPoint(20, 10));
  EXPECT_EQ(written(), before);
  this->Tools()->Choose("fill");
  this->DragLeft(2, end + QPoint(20, 10), end);
  EXPECT_EQ(written(), before);
  EXPECT_FALSE(this->Window.GetEditBar()->GetUndoAction()->isEnabled());
  this->Tools()->Choose("paint");
  this->Click(2, end + QPoint(60, 60));
  EXPECT_EQ(written(), before + 1) << "beside it the brush goes on";
}

TEST_F(WorkstationMarks, AFillIsTakenBackByItsKey)
{
  this->WriteRing();
  this->Key(Qt::Key_F);
  this->Click(2, this->SeenInRing());
  EXPECT_EQ(this->InRing(), 777.0);
  this->Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(this->InRing(), 5.0);
}

TEST_F(WorkstationMarks, AFillIsTakenBackAlsoAfterAMarkWasDeleted)
{
  const QPoint end = this->MakeRuler(2);
  this->WriteRing();
  this->Tools()->Choose("fill");
  this->Click(2, this->SeenInRing());
  ASSERT_EQ(this->InRing(), 777.0);
  this->Hand(2).MoveTo(end);
  this->Key(Qt::Key_Delete);
  EXPECT_EQ(this->Rows(), 0);
  this->Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(this->InRing(), 5.0);
}

TEST_F(WorkstationMarks, OnlyAFillThatHasWrittenCanBeTakenBack)
{
  const QAction* undo = this->Window.GetEditBar()->GetUndoAction();
  const QPoint at = this->SeenInRing();
  this->WriteRing();
  this->Tools()->Choose("fill");
  this->Hand(2).MoveTo(at);
  this->Hand(2).DoubleClick(at);
  EXPECT_EQ(this->InRing(), 777.0);
  ASSERT_TRUE(undo->isEnabled()) << "a double click is one fill";
  this->Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(this->InRing(), 5.0);
  this->Click(2, at);
  EXPECT_TRUE(undo->isEnabled());
  this->Click(2, at);
  EXPECT_FALSE(undo->isEnabled()) << "all is filled already";
}

// ---- pictures

TEST_F(WorkstationMarks, TheMiddleButtonMovesThePictureAndResetBringsItBack)
{
  for (int axis = 0; axis < 3; ++axis)
  {
    SCOPED_TRACE(ViewNames[static_cast<std::size_t>(axis)]);
    const std::array<int, 3> voxel{ { 12, 17, 9 } };
    const QPoint before = this->Seen(axis, voxel), way(40, -25);
    const int other = this->Viewer((axis + 1) % 3)->GetSliceIndex();
    this->Hand(axis).Drag(Qt::MiddleButton, QPoint(100, 100), QPoint(100, 100) + way);
    EXPECT_LE((this->Seen(axis, voxel) - before - way).manhattanLength(), 2);
    this->Hand(axis).MoveTo(QPoint(200, 200));
    EXPECT_LE((this->Seen(axis, voxel) - before - way).manhattanLength(), 2) << "it was let go";
    this->Hand(axis).Turn(1, QPoint(100, 100));
    EXPECT_LE((this->Seen(axis, voxel) - before - way).manhattanLength(), 2)
      << "and stays through the slices";
    EXPECT_EQ(this->Viewer((axis + 1) % 3)->GetSliceIndex(), other);
    this->Key(Qt::Key_R, Qt::NoModifier, axis);
    EXPECT_LE((this->Seen(axis, voxel) - before).manhattanLength(), 2);
  }
}

TEST_F(WorkstationMarks, WithShiftTheMiddleButtonMovesThePictureOnAMarkToo)
{
  const QPoint end = this->MakeRuler(2);
  const Vector world = this->WorldAt(2, end);
  this->Hand(2).Drag(Qt::MiddleButton, end, end + QPoint(30, 30), 4, Qt::ShiftModifier);
  EXPECT_LE((this->Hand(2).At(world) - end - QPoint(30, 30)).manhattanLength(), 2);
  EXPECT_TRUE(this->Has(2, Red, end + QPoint(30, 30), 5)) << "the mark goes along";
}

// ---- everything at once

TEST_F(WorkstationMarks, StayInOrderThroughRandomUse)
{
  zvtest::Dice dice(5);
  // Those of the slices; the others have tests of their own.
  const char* const tools[] = { "cross", "ruler", "area", "lasso", "note", "paint", "fill" };
  for (int round = 0; round < 150; ++round)
  {
    const int axis = dice.Int(0, 2);
    zvViewHand& hand = this->Hand(axis);
    const QPoint from = hand.Part(dice.Real(-0.7, 0.7), dice.Real(-0.7, 0.7));
    const QPoint to = hand.Part(dice.Real(-0.7, 0.7), dice.Real(-0.7, 0.7));
    switch (dice.Int(0, 9))
    {
      case 0:
        this->Tools()->Choose(tools[dice.Int(0, 6)]);
        break;
      case 1:
        hand.Turn(dice.Int(-2, 2), from);
        break;
      case 2:
        hand.Drag(Qt::MiddleButton, from, to, 3);
        break;
      case 3:
        hand.MoveTo(from);
        hand.DoubleClick(from);
        break;
      case 4:
        if (this->Rows() > 0)
        {
          const int row = dice.Int(0, this->Rows() - 1);
          dice.Int(0, 1) == 0 ? this->List()->GoTo(row)
                              : this->List()->SetHidden(row, !this->List()->IsHidden(row));
        }
        break;
      case 5:
        hand.MoveTo(from);
        this->Panel()->GetRemoveAction()->trigger();
        break;
      case 6:
        this->Window.GetTurnPanel()->GetSlider(dice.Int(0, 2))->setValue(dice.Int(-30, 30));
        break;
      default:
        hand.MoveTo(from);
        hand.Drag(Qt::LeftButton, from, to, 6);
        break;
    }
    if (this->Dialog() != nullptr)
    {
      dice.Int(0, 1) == 0 ? this->Dialog()->reject() : this->Answer("a note");
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    ASSERT_EQ(this->CountActive(), 1) << round;
    int marks = 0;
    for (int view = 0; view < 3; ++view)
    {
      marks += this->Marks(view)->GetCount();
    }
    // The markers of all views are listed, too, without the name of one.
    int rows = 0;
    for (int row = 0; row < this->Rows(); ++row)
    {
      const QModelIndex view = this->List()->index(row, zvMeasurementList::ViewColumn);
      rows += this->List()->data(view, Qt::DisplayRole).toString().isEmpty() ? 0 : 1;
    }
    ASSERT_EQ(rows, marks) << round;
  }
  this->List()->RemoveAll();
  EXPECT_EQ(this->Rows(), 0);
}

TEST_F(WorkstationMarks, AWindowMayBeDeletedWithMarksAndInMidDrag)
{
  auto window = zvtest::OpenPhantomWindow(24);
  zvViewHand hand(window->GetViews()->GetSliceView(2));
  for (const char* id : { "ruler", "lasso", "area" })
  {
    window->GetTools()->Choose(id);
    hand.MoveTo(hand.Part(-0.2, 0.2));
    hand.Drag(Qt::LeftButton, hand.Part(-0.2, 0.2), hand.Part(0.2, 0.3), 30);
  }
  window->GetTools()->Choose("ruler");
  hand.Press(Qt::LeftButton, hand.Part(0.2, -0.3));
  hand.MoveTo(hand.Part(0.3, -0.2));
  window.reset();
  QCoreApplication::processEvents();
  ExpectNoMessage();
}

int main(int argc, char** argv)
{
  return zvtest::RunQtTests(argc, argv);
}
