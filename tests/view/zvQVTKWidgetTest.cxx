#include "zvQVTKWidget.h"

#include "zvImage3DPlanes.h"
#include "zvQtTest.h"
#include "zvTestKit.h"

#include "vtkActor.h"
#include "vtkCamera.h"
#include "vtkGenericOpenGLRenderWindow.h"
#include "vtkImageData.h"
#include "vtkInteractorStyleUser.h"
#include "vtkNew.h"
#include "vtkPlaneSource.h"
#include "vtkPolyDataMapper.h"
#include "vtkProperty.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkRendererCollection.h"
#include "vtkSmartPointer.h"

#include <QApplication>
#include <QGestureEvent>
#include <QHBoxLayout>
#include <QImage>
#include <QMetaMethod>
#include <QMouseEvent>
#include <QPointer>
#include <QTest>
#include <QTouchDevice>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace
{
using Log = std::vector<std::string>;

// Everything that a user can do to an interactor.
const std::initializer_list<unsigned long> UserEvents = { vtkCommand::MouseMoveEvent,
  vtkCommand::LeftButtonPressEvent, vtkCommand::LeftButtonReleaseEvent,
  vtkCommand::LeftButtonDoubleClickEvent, vtkCommand::MiddleButtonPressEvent,
  vtkCommand::MiddleButtonReleaseEvent, vtkCommand::MiddleButtonDoubleClickEvent,
  vtkCommand::RightButtonPressEvent, vtkCommand::RightButtonReleaseEvent,
  vtkCommand::RightButtonDoubleClickEvent, vtkCommand::MouseWheelForwardEvent,
  vtkCommand::MouseWheelBackwardEvent, vtkCommand::MouseWheelLeftEvent,
  vtkCommand::MouseWheelRightEvent, vtkCommand::FourthButtonPressEvent,
  vtkCommand::FourthButtonReleaseEvent, vtkCommand::FifthButtonPressEvent,
  vtkCommand::FifthButtonReleaseEvent, vtkCommand::KeyPressEvent, vtkCommand::KeyReleaseEvent,
  vtkCommand::CharEvent, vtkCommand::EnterEvent, vtkCommand::LeaveEvent, vtkCommand::PinchEvent,
  vtkCommand::StartPinchEvent, vtkCommand::EndPinchEvent, vtkCommand::RotateEvent,
  vtkCommand::StartRotateEvent, vtkCommand::EndRotateEvent, vtkCommand::PanEvent,
  vtkCommand::StartPanEvent, vtkCommand::EndPanEvent, vtkCommand::TapEvent,
  vtkCommand::LongTapEvent, vtkCommand::SwipeEvent, vtkCommand::StartSwipeEvent,
  vtkCommand::EndSwipeEvent };

QMouseEvent MakeMouseEvent(QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held,
  Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QPoint& at = QPoint(12, 34))
{
  return QMouseEvent(type, at, button, held, modifiers);
}

QWheelEvent MakeWheelEvent(
  int angle, Qt::KeyboardModifiers modifiers = Qt::NoModifier, Qt::MouseButtons held = Qt::NoButton)
{
  return QWheelEvent(QPointF(12, 34), QPointF(12, 34), QPoint(), QPoint(0, angle), held, modifiers,
    Qt::NoScrollPhase, false);
}

// A view, painted once, that notes what reaches the interactor ("MouseMoveEvent") and which signals
// the host gets ("mouseEvent"), in their order.
class QtView : public zvtest::QuietTest
{
protected:
  QtView()
  {
    this->View->resize(200, 100);
    this->Listen(this->View.get());
  }

  void SetUp() override { this->ShowAndWait(this->View.get()); }

  static void ShowAndWait(QWidget* widget)
  {
    widget->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(widget));
    const auto views = widget->findChildren<zvQVTKWidget*>();
    auto* self = qobject_cast<zvQVTKWidget*>(widget);
    for (zvQVTKWidget* view : self ? QList<zvQVTKWidget*>{ self } : views)
    {
      auto* window = vtkGenericOpenGLRenderWindow::SafeDownCast(view->renderWindow());
      ASSERT_TRUE(QTest::qWaitFor([window] { return window->GetReadyForRendering(); }));
    }
  }

  void Listen(zvQVTKWidget* view)
  {
    this->Events.Watch(
      view->renderWindow()->GetInteractor(), UserEvents,
      [this](const zvtest::RecordedEvent& event) { this->Notes.push_back(event.Name); }, 1.0f);
    QObject::connect(view, &zvQVTKWidget::mouseEvent,
      [this](QMouseEvent* e) { this->NoteSignal("mouseEvent", e); });
    QObject::connect(view, &zvQVTKWidget::mouseWheelEvent,
      [this](QWheelEvent* e) { this->NoteSignal("mouseWheelEvent", e); });
    QObject::connect(
      view, &zvQVTKWidget::keyEvent, [this](QKeyEvent* e) { this->NoteSignal("keyEvent", e); });
  }

  void NoteSignal(const char* name, QEvent* e)
  {
    this->Notes.emplace_back(name);
    this->Signalled = e;
  }

  // What came of an event, the toolkit's share and the host's.
  Log Send(QEvent& e)
  {
    this->Notes.clear();
    this->Signalled = nullptr;
    QApplication::sendEvent(this->View.get(), &e);
    return this->Notes;
  }

  // Past the application, which keeps some kinds of events to itself.
  Log Deliver(QEvent& e)
  {
    this->Notes.clear();
    static_cast<QObject*>(this->View.get())->event(&e);
    return this->Notes;
  }

  vtkRenderWindowInteractor* Interactor() { return this->View->renderWindow()->GetInteractor(); }

  // Where the toolkit should see a position of the view.
  static zvtest::Display InDevicePixels(zvQVTKWidget* view, const QPoint& at, double ratio)
  {
    const int height = static_cast<int>(view->height() * ratio);
    return { { static_cast<int>(at.x() * ratio), height - 1 - static_cast<int>(at.y() * ratio) } };
  }

  zvtest::Display EventPosition()
  {
    const int* position = this->Interactor()->GetEventPosition();
    return { { position[0], position[1] } };
  }

  zvtest::EventRecorder Events;
  Log Notes;
  QEvent* Signalled = nullptr;
  std::unique_ptr<zvQVTKWidget> View = std::make_unique<zvQVTKWidget>();
};

enum Mode
{
  Defaults = 0,
  ThreeD = 1,
  VtkMove = 2,
  NoQtMove = 4
};

struct Row
{
  const char* Name;
  int Modes;
  Qt::MouseButton Button;
  Qt::MouseButtons Held;
  Qt::KeyboardModifiers Modifiers;
  Log Expected;
};

class QtViewTable : public QtView
{
protected:
  template <std::size_t Count>
  void ExpectRows(QEvent::Type type, const Row (&rows)[Count])
  {
    for (const Row& row : rows)
    {
      SCOPED_TRACE(row.Name);
      this->View->setMode3D((row.Modes & ThreeD) != 0);
      this->View->setVTKMoveMode((row.Modes & VtkMove) != 0);
      this->View->setQTMoveMode((row.Modes & NoQtMove) == 0);
      QMouseEvent e = MakeMouseEvent(type, row.Button, row.Held, row.Modifiers);
      EXPECT_EQ(this->Send(e), row.Expected);
      EXPECT_TRUE(e.isAccepted());
      const bool told = !row.Expected.empty() && row.Expected.back() == "mouseEvent";
      EXPECT_EQ(this->Signalled, told ? &e : nullptr);
    }
  }
};

const Row Presses[] = {
  { "Left", Defaults, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier, { "mouseEvent" } },
  { "LeftWithShift", Defaults, Qt::LeftButton, Qt::LeftButton, Qt::ShiftModifier,
    { "mouseEvent" } },
  { "LeftIn3D", ThreeD, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier,
    { "LeftButtonPressEvent", "mouseEvent" } },
  { "LeftInVTKMove", VtkMove, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier,
    { "LeftButtonPressEvent", "mouseEvent" } },
  { "LeftInBoth", ThreeD | VtkMove, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier,
    { "LeftButtonPressEvent", "mouseEvent" } },
  { "LeftIn3DWithoutSignals", ThreeD | NoQtMove, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier,
    { "LeftButtonPressEvent" } },
  { "LeftWithoutSignals", NoQtMove, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier, {} },
  { "Middle", Defaults, Qt::MiddleButton, Qt::MiddleButton, Qt::NoModifier,
    { "MiddleButtonPressEvent", "mouseEvent" } },
  { "MiddleInBoth", ThreeD | VtkMove, Qt::MiddleButton, Qt::MiddleButton, Qt::NoModifier,
    { "MiddleButtonPressEvent", "mouseEvent" } },
  { "MiddleWithoutSignals", NoQtMove, Qt::MiddleButton, Qt::MiddleButton, Qt::NoModifier,
    { "MiddleButtonPressEvent" } },
  { "Right", Defaults, Qt::RightButton, Qt::RightButton, Qt::NoModifier, { "mouseEvent" } },
  { "RightInBoth", ThreeD | VtkMove, Qt::RightButton, Qt::RightButton, Qt::NoModifier,
    { "mouseEvent" } },
  { "RightWithControl", Defaults, Qt::RightButton, Qt::RightButton, Qt::ControlModifier,
    { "mouseEvent" } },
  { "RightWithShift", Defaults, Qt::RightButton, Qt::RightButton, Qt::ShiftModifier,
    { "RightButtonPressEvent", "mouseEvent" } },
  { "RightWithShiftAndControl", Defaults, Qt::RightButton, Qt::RightButton,
    Qt::ShiftModifier | Qt::ControlModifier, { "RightButtonPressEvent", "mouseEvent" } },
  { "RightWithShiftWithoutSignals", NoQtMove, Qt::RightButton, Qt::RightButton, Qt::ShiftModifier,
    { "RightButtonPressEvent" } },
  { "BackInBoth", ThreeD | VtkMove, Qt::BackButton, Qt::BackButton, Qt::ShiftModifier,
    { "mouseEvent" } },
  { "ForwardInBoth", ThreeD | VtkMove, Qt::ForwardButton, Qt::ForwardButton, Qt::ShiftModifier,
    { "mouseEvent" } },
  { "BackWithoutSignals", NoQtMove, Qt::BackButton, Qt::BackButton, Qt::NoModifier, {} },
};

const Row Releases[] = {
  { "Left", Defaults, Qt::LeftButton, Qt::NoButton, Qt::NoModifier, { "mouseEvent" } },
  { "LeftWithShift", Defaults, Qt::LeftButton, Qt::NoButton, Qt::ShiftModifier, { "mouseEvent" } },
  { "LeftIn3D", ThreeD, Qt::LeftButton, Qt::NoButton, Qt::NoModifier,
    { "LeftButtonReleaseEvent", "mouseEvent" } },
  { "LeftInVTKMove", VtkMove, Qt::LeftButton, Qt::NoButton, Qt::NoModifier,
    { "LeftButtonReleaseEvent", "mouseEvent" } },
  { "LeftInVTKMoveWithoutSignals", VtkMove | NoQtMove, Qt::LeftButton, Qt::NoButton, Qt::NoModifier,
    { "LeftButtonReleaseEvent" } },
  { "LeftWithoutSignals", NoQtMove, Qt::LeftButton, Qt::NoButton, Qt::NoModifier, {} },
  { "Middle", Defaults, Qt::MiddleButton, Qt::NoButton, Qt::NoModifier,
    { "MiddleButtonReleaseEvent", "mouseEvent" } },
  { "MiddleWithoutSignals", NoQtMove, Qt::MiddleButton, Qt::NoButton, Qt::NoModifier,
    { "MiddleButtonReleaseEvent" } },
  { "RightWithoutShiftByDesign", Defaults, Qt::RightButton, Qt::NoButton, Qt::NoModifier,
    { "RightButtonReleaseEvent", "mouseEvent" } },
  { "RightWithShift", Defaults, Qt::RightButton, Qt::NoButton, Qt::ShiftModifier,
    { "RightButtonReleaseEvent", "mouseEvent" } },
  { "RightWithoutSignals", NoQtMove, Qt::RightButton, Qt::NoButton, Qt::NoModifier,
    { "RightButtonReleaseEvent" } },
  { "BackInBoth", ThreeD | VtkMove, Qt::BackButton, Qt::NoButton, Qt::ShiftModifier,
    { "mouseEvent" } },
  { "ForwardWithoutSignals", NoQtMove, Qt::ForwardButton, Qt::NoButton, Qt::NoModifier, {} },
};

const Row Moves[] = {
  { "NothingHeld", Defaults, Qt::NoButton, Qt::NoButton, Qt::NoModifier, { "mouseEvent" } },
  { "NothingHeldIn3D", ThreeD, Qt::NoButton, Qt::NoButton, Qt::ShiftModifier, { "mouseEvent" } },
  { "NothingHeldInVTKMove", VtkMove, Qt::NoButton, Qt::NoButton, Qt::NoModifier,
    { "MouseMoveEvent", "mouseEvent" } },
  { "NothingHeldInVTKMoveWithoutSignals", VtkMove | NoQtMove, Qt::NoButton, Qt::NoButton,
    Qt::NoModifier, { "MouseMoveEvent" } },
  { "NothingHeldWithoutSignals", NoQtMove, Qt::NoButton, Qt::NoButton, Qt::NoModifier, {} },
  { "Left", Defaults, Qt::NoButton, Qt::LeftButton, Qt::NoModifier, { "mouseEvent" } },
  { "LeftWithShift", Defaults, Qt::NoButton, Qt::LeftButton, Qt::ShiftModifier, { "mouseEvent" } },
  { "LeftIn3D", ThreeD, Qt::NoButton, Qt::LeftButton, Qt::NoModifier,
    { "MouseMoveEvent", "mouseEvent" } },
  { "LeftInVTKMoveOnce", VtkMove, Qt::NoButton, Qt::LeftButton, Qt::NoModifier,
    { "MouseMoveEvent", "mouseEvent" } },
  { "LeftInBothTwiceByDesign", ThreeD | VtkMove, Qt::NoButton, Qt::LeftButton, Qt::NoModifier,
    { "MouseMoveEvent", "MouseMoveEvent", "mouseEvent" } },
  { "LeftIn3DWithoutSignals", ThreeD | NoQtMove, Qt::NoButton, Qt::LeftButton, Qt::NoModifier,
    { "MouseMoveEvent" } },
  { "Middle", Defaults, Qt::NoButton, Qt::MiddleButton, Qt::NoModifier,
    { "MouseMoveEvent", "mouseEvent" } },
  { "MiddleInVTKMoveTwiceByDesign", VtkMove, Qt::NoButton, Qt::MiddleButton, Qt::NoModifier,
    { "MouseMoveEvent", "MouseMoveEvent", "mouseEvent" } },
  { "MiddleWithoutSignals", NoQtMove, Qt::NoButton, Qt::MiddleButton, Qt::NoModifier,
    { "MouseMoveEvent" } },
  { "Right", Defaults, Qt::NoButton, Qt::RightButton, Qt::NoModifier, { "mouseEvent" } },
  { "RightIn3D", ThreeD, Qt::NoButton, Qt::RightButton, Qt::NoModifier, { "mouseEvent" } },
  { "RightWithShift", Defaults, Qt::NoButton, Qt::RightButton, Qt::ShiftModifier,
    { "MouseMoveEvent", "mouseEvent" } },
  { "RightInVTKMoveOnce", VtkMove, Qt::NoButton, Qt::RightButton, Qt::NoModifier,
    { "MouseMoveEvent", "mouseEvent" } },
  { "RightWithShiftInVTKMoveTwiceByDesign", VtkMove, Qt::NoButton, Qt::RightButton,
    Qt::ShiftModifier, { "MouseMoveEvent", "MouseMoveEvent", "mouseEvent" } },
  { "RightWithoutSignals", NoQtMove, Qt::NoButton, Qt::RightButton, Qt::NoModifier, {} },
  { "LeftAndMiddleIn3D", ThreeD, Qt::NoButton, Qt::LeftButton | Qt::MiddleButton, Qt::NoModifier,
    { "mouseEvent" } },
  { "LeftAndRightWithShiftIn3D", ThreeD, Qt::NoButton, Qt::LeftButton | Qt::RightButton,
    Qt::ShiftModifier, { "mouseEvent" } },
  { "MiddleAndRightWithShift", Defaults, Qt::NoButton, Qt::MiddleButton | Qt::RightButton,
    Qt::ShiftModifier, { "mouseEvent" } },
  { "TwoHeldInVTKMoveOnce", ThreeD | VtkMove, Qt::NoButton, Qt::LeftButton | Qt::MiddleButton,
    Qt::NoModifier, { "MouseMoveEvent", "mouseEvent" } },
  { "Back", ThreeD, Qt::NoButton, Qt::BackButton, Qt::ShiftModifier, { "mouseEvent" } },
};
}

TEST_F(QtViewTable, PressesGoWhereTheyShould)
{
  this->ExpectRows(QEvent::MouseButtonPress, Presses);
}

TEST_F(QtViewTable, DoubleClicksGoTheWayOfPresses)
{
  this->ExpectRows(QEvent::MouseButtonDblClick, Presses);
}

TEST_F(QtViewTable, ReleasesGoWhereTheyShould)
{
  this->ExpectRows(QEvent::MouseButtonRelease, Releases);
}

TEST_F(QtViewTable, MovesGoWhereTheyShould)
{
  this->ExpectRows(QEvent::MouseMove, Moves);
}

// ---- what a user does ----

TEST_F(QtView, ByDefaultALeftClickStaysInQt)
{
  QTest::mouseClick(this->View.get(), Qt::LeftButton, Qt::NoModifier, QPoint(30, 30));
  EXPECT_EQ(this->Notes, (Log{ "mouseEvent", "mouseEvent" }));
}

TEST_F(QtView, ByDefaultAMiddleClickReachesTheToolkitToo)
{
  QTest::mouseClick(this->View.get(), Qt::MiddleButton, Qt::NoModifier, QPoint(30, 30));
  EXPECT_EQ(this->Notes,
    (Log{ "MiddleButtonPressEvent", "mouseEvent", "MiddleButtonReleaseEvent", "mouseEvent" }));
}

TEST_F(QtView, ARightDragWithoutShiftReachesTheToolkitWithItsReleaseOnly)
{
  QTest::mousePress(this->View.get(), Qt::RightButton, Qt::NoModifier, QPoint(30, 30));
  QMouseEvent move = MakeMouseEvent(QEvent::MouseMove, Qt::NoButton, Qt::RightButton);
  QApplication::sendEvent(this->View.get(), &move);
  QTest::mouseRelease(this->View.get(), Qt::RightButton, Qt::NoModifier, QPoint(12, 34));
  EXPECT_EQ(
    this->Notes, (Log{ "mouseEvent", "mouseEvent", "RightButtonReleaseEvent", "mouseEvent" }));
}

TEST_F(QtView, ARightDragWithShiftReachesTheToolkitWhole)
{
  QTest::mousePress(this->View.get(), Qt::RightButton, Qt::ShiftModifier, QPoint(30, 30));
  EXPECT_EQ(this->Interactor()->GetShiftKey(), 1);
  QMouseEvent move =
    MakeMouseEvent(QEvent::MouseMove, Qt::NoButton, Qt::RightButton, Qt::ShiftModifier);
  QApplication::sendEvent(this->View.get(), &move);
  QTest::mouseRelease(this->View.get(), Qt::RightButton, Qt::ShiftModifier, QPoint(12, 34));
  EXPECT_EQ(this->Notes,
    (Log{ "RightButtonPressEvent", "mouseEvent", "MouseMoveEvent", "mouseEvent",
      "RightButtonReleaseEvent", "mouseEvent" }));
}

TEST_F(QtView, ADoubleClickIsAPressWithARepetitionAtTheSamePlace)
{
  this->View->setMode3D(true);
  QTest::mousePress(
    this->View.get(), Qt::LeftButton, Qt::ControlModifier | Qt::AltModifier, QPoint(33, 21));
  const zvtest::Display first = this->EventPosition();
  EXPECT_EQ(this->Interactor()->GetRepeatCount(), 0);
  EXPECT_EQ(this->Interactor()->GetControlKey(), 1);
  QTest::mouseRelease(this->View.get(), Qt::LeftButton, Qt::NoModifier, QPoint(33, 21));
  QTest::mouseDClick(
    this->View.get(), Qt::LeftButton, Qt::ControlModifier | Qt::AltModifier, QPoint(33, 21));
  EXPECT_EQ(this->EventPosition(), first);
  EXPECT_EQ(this->Interactor()->GetRepeatCount(), 1);
  EXPECT_EQ(this->Interactor()->GetControlKey(), 1);
  EXPECT_EQ(this->Interactor()->GetShiftKey(), 0);
  EXPECT_EQ(this->Interactor()->GetAltKey(), 1);
  EXPECT_EQ(this->Events.Count(vtkCommand::LeftButtonPressEvent), 2);
  EXPECT_EQ(this->Events.Count(vtkCommand::LeftButtonDoubleClickEvent), 0);
}

TEST_F(QtView, ASecondForwardingOfAMoveHasNoMotion)
{
  this->View->setVTKMoveMode(true);
  std::vector<zvtest::Display> motions;
  zvtest::EventRecorder moves;
  moves.Watch(this->Interactor(), { vtkCommand::MouseMoveEvent },
    [&](const zvtest::RecordedEvent&)
    {
      const int* now = this->Interactor()->GetEventPosition();
      const int* last = this->Interactor()->GetLastEventPosition();
      motions.push_back({ { now[0] - last[0], now[1] - last[1] } });
    });
  QMouseEvent press = MakeMouseEvent(QEvent::MouseButtonPress, Qt::MiddleButton, Qt::MiddleButton);
  this->Send(press);
  QMouseEvent move = MakeMouseEvent(
    QEvent::MouseMove, Qt::NoButton, Qt::MiddleButton, Qt::NoModifier, QPoint(17, 31));
  this->Send(move);
  const int ratio = qRound(this->View->devicePixelRatioF());
  EXPECT_EQ(motions, (std::vector<zvtest::Display>{ { { 5 * ratio, 3 * ratio } }, { { 0, 0 } } }));
}

TEST_F(QtView, ADisabledInteractorGetsNoPressAndNoDoubleClick)
{
  this->Interactor()->Disable();
  for (QEvent::Type type : { QEvent::MouseButtonPress, QEvent::MouseButtonDblClick })
  {
    QMouseEvent e = MakeMouseEvent(type, Qt::MiddleButton, Qt::MiddleButton);
    EXPECT_EQ(this->Send(e), (Log{ "mouseEvent" }));
  }
}

// ---- wheel ----

TEST_F(QtView, TheWheelWithoutShiftIsOnlyTold)
{
  for (Qt::KeyboardModifiers modifiers :
    { Qt::KeyboardModifiers(Qt::NoModifier), Qt::KeyboardModifiers(Qt::ControlModifier) })
  {
    QWheelEvent e = MakeWheelEvent(120, modifiers);
    EXPECT_EQ(this->Send(e), (Log{ "mouseWheelEvent" }));
    EXPECT_EQ(this->Signalled, &e);
  }
}

TEST_F(QtView, TheWheelWithShiftReachesTheToolkitOnly)
{
  QWheelEvent forward = MakeWheelEvent(120, Qt::ShiftModifier);
  EXPECT_EQ(this->Send(forward), (Log{ "MouseWheelForwardEvent" }));
  QWheelEvent backward = MakeWheelEvent(-120, Qt::ShiftModifier | Qt::ControlModifier);
  EXPECT_EQ(this->Send(backward), (Log{ "MouseWheelBackwardEvent" }));
}

TEST_F(QtView, NoModeChangesTheWheel)
{
  this->View->setMode3D(true);
  this->View->setVTKMoveMode(true);
  this->View->setQTMoveMode(false);
  QWheelEvent plain = MakeWheelEvent(-120, Qt::NoModifier, Qt::LeftButton);
  EXPECT_EQ(this->Send(plain), (Log{ "mouseWheelEvent" }));
  QWheelEvent withShift = MakeWheelEvent(-120, Qt::ShiftModifier, Qt::LeftButton);
  EXPECT_EQ(this->Send(withShift), (Log{ "MouseWheelBackwardEvent" }));
}

TEST_F(QtView, SmallTurnsOfTheWheelAddUpAndPlainOnesDoNotCount)
{
  QWheelEvent half = MakeWheelEvent(60, Qt::ShiftModifier);
  QWheelEvent plain = MakeWheelEvent(60);
  EXPECT_EQ(this->Send(half), Log{});
  EXPECT_EQ(this->Send(plain), (Log{ "mouseWheelEvent" }));
  EXPECT_EQ(this->Send(half), (Log{ "MouseWheelForwardEvent" }));
}

// ---- keys ----

TEST_F(QtView, AKeyPressIsOnlyTold)
{
  for (bool on : { false, true })
  {
    this->View->setMode3D(on);
    this->View->setVTKMoveMode(on);
    this->View->setQTMoveMode(!on);
    this->Notes.clear();
    QTest::keyPress(this->View.get(), Qt::Key_R);
    EXPECT_EQ(this->Notes, (Log{ "keyEvent" }));
  }
}

TEST_F(QtView, TabIsAKeyLikeAnyOther)
{
  for (int key : { Qt::Key_Tab, Qt::Key_Backtab })
  {
    QKeyEvent e(QEvent::KeyPress, key, Qt::NoModifier);
    EXPECT_EQ(this->Send(e), (Log{ "keyEvent" }));
    EXPECT_EQ(this->Signalled, &e);
    EXPECT_TRUE(e.isAccepted());
  }
}

TEST_F(QtView, AKeyReleaseReachesTheToolkitAndIsNotTold)
{
  QTest::keyRelease(this->View.get(), Qt::Key_R, Qt::NoModifier);
  EXPECT_EQ(this->Notes, (Log{ "KeyReleaseEvent" }));
  EXPECT_EQ(this->Interactor()->GetKeyCode(), 'r');
}

// ---- what else may come ----

TEST_F(QtView, EnteringAndLeavingStayTheBases)
{
  QEnterEvent enter(QPointF(12, 34), QPointF(12, 34), QPointF(12, 34));
  EXPECT_EQ(this->Deliver(enter), (Log{ "EnterEvent" }));
  QEvent leave(QEvent::Leave);
  EXPECT_EQ(this->Deliver(leave), (Log{ "LeaveEvent" }));
}

TEST_F(QtView, ResizingStaysTheBases)
{
  this->View->resize(160, 120);
  const int ratio = qRound(this->View->devicePixelRatioF());
  ASSERT_TRUE(
    QTest::qWaitFor([&] { return this->View->renderWindow()->GetSize()[0] == 160 * ratio; }));
  EXPECT_EQ(this->View->renderWindow()->GetSize()[1], 120 * ratio);
}

TEST_F(QtView, TouchNeverReachesTheToolkit)
{
  this->View->setMode3D(true);
  this->View->setVTKMoveMode(true);
  const zvtest::Display before = this->EventPosition();
  QTouchDevice screen;
  screen.setType(QTouchDevice::TouchScreen);
  QTouchEvent::TouchPoint finger(1), thumb(2);
  finger.setPos(QPointF(40, 40));
  thumb.setPos(QPointF(80, 60));
  for (QEvent::Type type :
    { QEvent::TouchBegin, QEvent::TouchUpdate, QEvent::TouchEnd, QEvent::TouchCancel })
  {
    QTouchEvent e(type, &screen, Qt::ShiftModifier, Qt::TouchPointPressed, { finger, thumb });
    EXPECT_EQ(this->Deliver(e), Log{}) << type;
  }
  EXPECT_EQ(this->EventPosition(), before);
}

TEST_F(QtView, GesturesNeverReachTheToolkit)
{
  this->View->setMode3D(true);
  this->View->setVTKMoveMode(true);
  const zvtest::Display before = this->EventPosition();
  QPinchGesture pinch;
  QPanGesture pan;
  QTapGesture tap;
  QTapAndHoldGesture hold;
  QSwipeGesture swipe;
  pinch.setScaleFactor(2.0);
  for (QGesture* gesture : std::initializer_list<QGesture*>{ &pinch, &pan, &tap, &hold, &swipe })
  {
    gesture->setHotSpot(QPointF(40, 40));
    QGestureEvent e({ gesture });
    EXPECT_EQ(this->Deliver(e), Log{}) << gesture->metaObject()->className();
  }
  QNativeGestureEvent native(Qt::ZoomNativeGesture, QTouchDevice::devices().value(0),
    QPointF(40, 40), QPointF(40, 40), QPointF(40, 40), 2.0, 0, 0);
  EXPECT_EQ(this->Deliver(native), Log{});
  EXPECT_EQ(this->EventPosition(), before);
}

TEST_F(QtView, HoverNeverReachesTheToolkit)
{
  this->View->setMode3D(true);
  this->View->setVTKMoveMode(true);
  const zvtest::Display before = this->EventPosition();
  for (QEvent::Type type : { QEvent::HoverEnter, QEvent::HoverMove, QEvent::HoverLeave })
  {
    QHoverEvent e(type, QPointF(40, 40), QPointF(20, 20));
    EXPECT_EQ(this->Deliver(e), Log{}) << type;
  }
  EXPECT_EQ(this->EventPosition(), before);
}

TEST_F(QtView, MovesComeWithoutAButtonHeld)
{
  EXPECT_TRUE(this->View->hasMouseTracking());
}

// ---- positions ----

TEST_F(QtView, TheScreenHasTheRatioThatTheRunAsksFor)
{
  const QByteArray asked = qgetenv("QT_SCALE_FACTOR");
  EXPECT_EQ(this->View->devicePixelRatioF(), asked.isEmpty() ? 1.0 : asked.toDouble());
}

TEST_F(QtView, PositionsAreInDevicePixelsFromTheLowerLeft)
{
  this->View->setMode3D(true);
  const double ratio = this->View->devicePixelRatioF();
  for (const QPoint& at : { QPoint(0, 0), QPoint(12, 34), QPoint(199, 99) })
  {
    for (QEvent::Type type :
      { QEvent::MouseButtonPress, QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease })
    {
      QMouseEvent e = MakeMouseEvent(type, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier, at);
      this->Send(e);
      EXPECT_EQ(this->EventPosition(), this->InDevicePixels(this->View.get(), at, ratio)) << type;
    }
    QMouseEvent move =
      MakeMouseEvent(QEvent::MouseMove, Qt::NoButton, Qt::LeftButton, Qt::NoModifier, at);
    this->Send(move);
    EXPECT_EQ(this->EventPosition(), this->InDevicePixels(this->View.get(), at, ratio));
  }
  QWheelEvent wheel = MakeWheelEvent(120, Qt::ShiftModifier);
  this->Send(wheel);
  EXPECT_EQ(this->EventPosition(), this->InDevicePixels(this->View.get(), QPoint(12, 34), ratio));
}

TEST_F(QtView, PositionsFollowARatioThatTheHostSets)
{
  this->View->setMode3D(true);
  this->View->setCustomDevicePixelRatio(1.5);
  this->View->resize(220, 120);
  ASSERT_TRUE(QTest::qWaitFor([&] { return this->View->renderWindow()->GetSize()[0] == 330; }));
  for (QEvent::Type type : { QEvent::MouseButtonPress, QEvent::MouseButtonDblClick })
  {
    QMouseEvent e =
      MakeMouseEvent(type, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier, QPoint(13, 35));
    this->Send(e);
    EXPECT_EQ(this->EventPosition(), this->InDevicePixels(this->View.get(), QPoint(13, 35), 1.5))
      << type;
  }
}

// ---- the class ----

TEST_F(QtView, TheSignalsHaveTheirOrder)
{
  const QMetaObject& meta = zvQVTKWidget::staticMetaObject;
  EXPECT_STREQ(meta.className(), "zvQVTKWidget");
  EXPECT_EQ(meta.superClass(), &QVTKOpenGLNativeWidget::staticMetaObject);
  const char* const signatures[] = { "mouseEvent(QMouseEvent*)", "mouseWheelEvent(QWheelEvent*)",
    "keyEvent(QKeyEvent*)" };
  ASSERT_EQ(meta.methodCount() - meta.methodOffset(), 3);
  for (int i = 0; i < 3; ++i)
  {
    const QMetaMethod method = meta.method(meta.methodOffset() + i);
    EXPECT_EQ(method.methodSignature().toStdString(), signatures[i]);
    EXPECT_EQ(method.methodType(), QMetaMethod::Signal);
  }
  EXPECT_EQ(meta.propertyCount(), meta.propertyOffset());
  EXPECT_EQ(meta.enumeratorCount(), meta.enumeratorOffset());
}

TEST_F(QtView, TheMarkIsKeptAndChangesNothing)
{
  EXPECT_FALSE(this->View->GetActived());
  this->View->SetActived(true);
  EXPECT_TRUE(this->View->GetActived());
  QMouseEvent press = MakeMouseEvent(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton);
  EXPECT_EQ(this->Send(press), (Log{ "mouseEvent" }));
  this->View->SetActived(false);
  EXPECT_FALSE(this->View->GetActived());
}

TEST_F(QtView, ItStartsWithoutAParentAndHidden)
{
  zvQVTKWidget fresh;
  EXPECT_EQ(fresh.parent(), nullptr);
  EXPECT_FALSE(fresh.isVisible());
  EXPECT_NE(fresh.renderWindow(), nullptr);
  EXPECT_NE(fresh.interactor(), nullptr);
}

TEST_F(QtView, InputIsForwardedBeforeTheFirstPaint)
{
  zvQVTKWidget hidden;
  this->Listen(&hidden);
  hidden.setMode3D(true);
  for (QEvent::Type type : { QEvent::MouseButtonPress, QEvent::MouseButtonDblClick })
  {
    this->Notes.clear();
    QMouseEvent e = MakeMouseEvent(type, Qt::LeftButton, Qt::LeftButton);
    QApplication::sendEvent(&hidden, &e);
    EXPECT_EQ(this->Notes, (Log{ "LeftButtonPressEvent", "mouseEvent" }));
  }
  this->Notes.clear();
  QKeyEvent key(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
  QApplication::sendEvent(&hidden, &key);
  EXPECT_EQ(this->Notes, (Log{ "keyEvent" }));
}

TEST_F(QtView, AViewWithoutAWindowTellsAndForwardsNothing)
{
  this->View->setRenderWindow(static_cast<vtkGenericOpenGLRenderWindow*>(nullptr));
  for (QEvent::Type type : { QEvent::MouseButtonPress, QEvent::MouseButtonDblClick })
  {
    QMouseEvent e = MakeMouseEvent(type, Qt::MiddleButton, Qt::MiddleButton);
    EXPECT_EQ(this->Send(e), (Log{ "mouseEvent" }));
  }
}

TEST_F(QtView, ItMayBeDeletedFromAnObserverOfAForwardedEvent)
{
  for (QEvent::Type type : { QEvent::MouseButtonPress, QEvent::MouseButtonDblClick,
         QEvent::MouseButtonRelease, QEvent::MouseMove })
  {
    auto* view = new zvQVTKWidget;
    QPointer<zvQVTKWidget> alive(view);
    this->Listen(view);
    view->setVTKMoveMode(true);
    zvtest::EventRecorder deleter;
    deleter.Watch(view->renderWindow()->GetInteractor(),
      { vtkCommand::MiddleButtonPressEvent, vtkCommand::MiddleButtonReleaseEvent,
        vtkCommand::MouseMoveEvent },
      [view](const zvtest::RecordedEvent&) { delete view; });
    this->Notes.clear();
    QMouseEvent e = MakeMouseEvent(
      type, type == QEvent::MouseMove ? Qt::NoButton : Qt::MiddleButton, Qt::MiddleButton);
    QApplication::sendEvent(view, &e);
    EXPECT_TRUE(alive.isNull());
    EXPECT_EQ(this->Notes.size(), 1u) << type;
  }
}

TEST_F(QtView, ItsWindowMayOutliveIt)
{
  vtkSmartPointer<vtkRenderWindow> window = this->View->renderWindow();
  vtkSmartPointer<vtkRenderWindowInteractor> interactor = this->Interactor();
  vtkNew<vtkRenderer> renderer;
  window->AddRenderer(renderer);
  window->Render();
  this->View.reset();
  interactor->InvokeEvent(vtkCommand::MiddleButtonPressEvent);
  window->Render();
  EXPECT_EQ(window->GetInteractor(), interactor);
}

// ---- with widgets ----

TEST_F(QtView, ALeftDragMovesAPlaneInA3DViewOnly)
{
  vtkNew<vtkInteractorStyleUser> style;
  this->Interactor()->SetInteractorStyle(style);
  vtkNew<vtkRenderer> renderer;
  this->View->renderWindow()->AddRenderer(renderer);
  auto volume = zvtest::MakeIndexVolume();
  auto planes = vtkSmartPointer<zvImage3DPlanes>::Take(new zvImage3DPlanes);
  planes->SetImage(volume);
  planes->SetRender(renderer);
  ASSERT_TRUE(planes->Create());
  planes->Show();
  planes->EnableYPlane(false);
  planes->EnableZPlane(false);
  renderer->GetActiveCamera()->Azimuth(-60.0);
  renderer->ResetCameraClippingRange();
  this->View->renderWindow()->Render();
  const int before = planes->GetSliceX();

  const double ratio = this->View->devicePixelRatioF();
  auto inView = [&](double x)
  {
    renderer->SetWorldPoint(x, 2.5, 2.0, 1.0);
    renderer->WorldToDisplay();
    const double* display = renderer->GetDisplayPoint();
    return QPoint(static_cast<int>(display[0] / ratio),
      this->View->height() - 1 - static_cast<int>(display[1] / ratio));
  };
  const QPoint from = inView(before);
  const QPoint to = inView(before + 2.2);
  for (bool mode3D : { false, true })
  {
    this->View->setMode3D(mode3D);
    QTest::mousePress(this->View.get(), Qt::LeftButton, Qt::NoModifier, from);
    QMouseEvent move =
      MakeMouseEvent(QEvent::MouseMove, Qt::NoButton, Qt::LeftButton, Qt::NoModifier, to);
    QApplication::sendEvent(this->View.get(), &move);
    QTest::mouseRelease(this->View.get(), Qt::LeftButton, Qt::NoModifier, to);
    EXPECT_EQ(planes->GetPlaneSelected(), mode3D ? zvImage3DPlanes::XPlane : 0);
    EXPECT_EQ(planes->GetSliceX() > before, mode3D);
  }
}

// ---- drawing ----

namespace
{
// Two views side by side on the same red square.
class QtViewPair : public QtView
{
protected:
  QtViewPair()
  {
    vtkNew<vtkPlaneSource> square;
    vtkNew<vtkPolyDataMapper> mapper;
    mapper->SetInputConnection(square->GetOutputPort());
    this->Square->SetMapper(mapper);
    this->Square->GetProperty()->LightingOff();
    this->Paint(1.0, 0.0, 0.0);
  }

  zvQVTKWidget* AddView(QWidget* parent = nullptr)
  {
    auto* view = new zvQVTKWidget;
    vtkNew<vtkRenderer> renderer;
    view->renderWindow()->AddRenderer(renderer);
    view->renderWindow()->SetMultiSamples(0);
    renderer->AddActor(this->Square);
    renderer->ResetCamera();
    view->setMinimumSize(120, 120);
    if (parent)
    {
      parent->layout()->addWidget(view);
    }
    return view;
  }

  void Paint(double red, double green, double blue)
  {
    this->Square->GetProperty()->SetColor(red, green, blue);
  }

  // What a user sees in the middle of a view once the toolkit has drawn.
  static QColor Middle(zvQVTKWidget* view)
  {
    view->renderWindow()->Render();
    const QImage picture = view->grabFramebuffer();
    return picture.pixelColor(picture.width() / 2, picture.height() / 2);
  }

  static zvtest::Color WindowMiddle(zvQVTKWidget* view)
  {
    const zvtest::Picture picture(view->renderWindow());
    return picture.At({ { picture.Width() / 2, picture.Height() / 2 } });
  }

  vtkNew<vtkActor> Square;
};
}

TEST_F(QtViewPair, TwoViewsInOneWindowDrawASharedActor)
{
  QWidget host;
  host.setLayout(new QHBoxLayout);
  zvQVTKWidget* left = this->AddView(&host);
  zvQVTKWidget* right = this->AddView(&host);
  this->ShowAndWait(&host);
  EXPECT_EQ(Middle(left), QColor(Qt::red));
  EXPECT_EQ(Middle(right), QColor(Qt::red));
  EXPECT_EQ(Middle(left), QColor(Qt::red));
  EXPECT_EQ(WindowMiddle(left), (zvtest::Color{ 255, 0, 0 }));
  EXPECT_EQ(WindowMiddle(right), (zvtest::Color{ 255, 0, 0 }));

  this->Paint(0.0, 1.0, 0.0);
  this->Square->GetMapper()->Modified();
  EXPECT_EQ(Middle(right), QColor(Qt::green));
  EXPECT_EQ(Middle(left), QColor(Qt::green));
}

TEST_F(QtViewPair, TwoTopLevelViewsDrawASharedActor)
{
  std::unique_ptr<zvQVTKWidget> one(this->AddView());
  std::unique_ptr<zvQVTKWidget> two(this->AddView());
  this->ShowAndWait(one.get());
  this->ShowAndWait(two.get());
  for (int turn = 0; turn < 3; ++turn)
  {
    EXPECT_EQ(Middle(one.get()), QColor(Qt::red));
    EXPECT_EQ(Middle(two.get()), QColor(Qt::red));
  }
}

TEST_F(QtViewPair, AViewGoesOnDrawingWhenTheOtherIsDestroyed)
{
  QWidget host;
  host.setLayout(new QHBoxLayout);
  zvQVTKWidget* left = this->AddView(&host);
  zvQVTKWidget* right = this->AddView(&host);
  this->ShowAndWait(&host);
  EXPECT_EQ(Middle(left), QColor(Qt::red));
  EXPECT_EQ(Middle(right), QColor(Qt::red));
  delete left;
  EXPECT_EQ(Middle(right), QColor(Qt::red));
  this->Paint(0.0, 0.0, 1.0);
  EXPECT_EQ(Middle(right), QColor(Qt::blue));
}

TEST_F(QtViewPair, AnActorTakenFromOneViewStaysInTheOther)
{
  QWidget host;
  host.setLayout(new QHBoxLayout);
  zvQVTKWidget* left = this->AddView(&host);
  zvQVTKWidget* right = this->AddView(&host);
  this->ShowAndWait(&host);
  EXPECT_EQ(Middle(left), QColor(Qt::red));
  EXPECT_EQ(Middle(right), QColor(Qt::red));
  left->renderWindow()->GetRenderers()->GetFirstRenderer()->RemoveActor(this->Square);
  EXPECT_EQ(Middle(left), QColor(Qt::black));
  EXPECT_EQ(Middle(right), QColor(Qt::red));
}

int main(int argc, char** argv)
{
  return zvtest::RunQtTests(argc, argv);
}
