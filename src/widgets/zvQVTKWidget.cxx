#include "zvQVTKWidget.h"

#include "vtkCommand.h"
#include "vtkGenericOpenGLRenderWindow.h"
#include "vtkObjectFactory.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkSmartPointer.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QOpenGLContext>
#include <QPointer>
#include <QSurface>
#include <QWheelEvent>

#include <utility>
#include <vector>

namespace
{
// The stock window leaves its own context current when it was made so in passing, for instance to
// release what an actor holds in it. With an actor in two views the other view would then go on
// drawing into the wrong one, and both stay black.
class zvViewRenderWindow : public vtkGenericOpenGLRenderWindow
{
public:
  static zvViewRenderWindow* New();
  vtkTypeMacro(zvViewRenderWindow, vtkGenericOpenGLRenderWindow)

  void PushContext() override
  {
    QOpenGLContext* context = QOpenGLContext::currentContext();
    this->Saved.emplace_back(context, context ? context->surface() : nullptr);
    this->MakeCurrent();
  }

  void PopContext() override
  {
    if (this->Saved.empty())
    {
      return;
    }
    const auto before = this->Saved.back();
    this->Saved.pop_back();
    if (before.first && before.first != QOpenGLContext::currentContext())
    {
      before.first->makeCurrent(before.second);
    }
  }

private:
  std::vector<std::pair<QOpenGLContext*, QSurface*>> Saved;
};
vtkStandardNewMacro(zvViewRenderWindow);

// The second word never carries the bit; the keyboard modifiers decide.
template <typename Event>
bool IsShiftHeld(const Event* e, int mouseState)
{
  return ((static_cast<int>(e->modifiers()) | mouseState) & Qt::ShiftModifier) != 0;
}

unsigned long PressEventOf(Qt::MouseButton button)
{
  switch (button)
  {
    case Qt::LeftButton:
      return vtkCommand::LeftButtonPressEvent;
    case Qt::MiddleButton:
      return vtkCommand::MiddleButtonPressEvent;
    case Qt::RightButton:
      return vtkCommand::RightButtonPressEvent;
    default:
      return vtkCommand::NoEvent;
  }
}
}

zvQVTKWidget::zvQVTKWidget()
  : QVTKOpenGLNativeWidget(vtkSmartPointer<zvViewRenderWindow>::New(), nullptr, Qt::WindowFlags())
{
  // A grabbed gesture would keep the mouse from a touch screen's user.
  for (Qt::GestureType gesture :
    { Qt::PinchGesture, Qt::PanGesture, Qt::TapGesture, Qt::TapAndHoldGesture, Qt::SwipeGesture })
  {
    this->ungrabGesture(gesture);
  }
}

zvQVTKWidget::~zvQVTKWidget() = default;

void zvQVTKWidget::setMode3D(bool mode)
{
  this->Mode3D = mode;
}

void zvQVTKWidget::setVTKMoveMode(bool mode)
{
  this->VTKMoveMode = mode;
}

void zvQVTKWidget::setQTMoveMode(bool mode)
{
  this->QTMoveMode = mode;
}

void zvQVTKWidget::SetActived(bool actived)
{
  this->Actived = actived;
}

bool zvQVTKWidget::GetActived()
{
  return this->Actived;
}

// The base hands every event to the interactor before Qt's handlers see it, so what is decided
// here, or never goes on, has to pass it by.
bool zvQVTKWidget::event(QEvent* e)
{
  switch (e->type())
  {
    case QEvent::KeyPress:
      // Straight to the handler, or Qt would take Tab to move the focus.
      this->keyPressEvent(static_cast<QKeyEvent*>(e));
      return e->isAccepted();
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::HoverEnter:
    case QEvent::HoverLeave:
    case QEvent::HoverMove:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
    case QEvent::Gesture:
    case QEvent::GestureOverride:
    case QEvent::NativeGesture:
      return this->QOpenGLWidget::event(e);
    default:
      return this->QVTKOpenGLNativeWidget::event(e);
  }
}

// A double click comes here too: Qt's own handler for it calls this one.
void zvQVTKWidget::mousePressEvent(QMouseEvent* e)
{
  const QPointer<zvQVTKWidget> self(this);
  const bool shift = IsShiftHeld(e, static_cast<int>(e->buttons()));
  if (e->button() == Qt::RightButton ? shift : this->IsPressForwarded(e))
  {
    this->Forward(e);
  }
  if (self && this->QTMoveMode)
  {
    Q_EMIT this->mouseEvent(e);
  }
}

void zvQVTKWidget::mouseReleaseEvent(QMouseEvent* e)
{
  const QPointer<zvQVTKWidget> self(this);
  // Deliberate: no test for Shift, a right drag must end even if the key was let go before.
  if (e->button() == Qt::RightButton || this->IsPressForwarded(e))
  {
    this->Forward(e);
  }
  if (self && this->QTMoveMode)
  {
    Q_EMIT this->mouseEvent(e);
  }
}

void zvQVTKWidget::mouseMoveEvent(QMouseEvent* e)
{
  const QPointer<zvQVTKWidget> self(this);
  if (this->IsMoveForwarded(e))
  {
    this->Forward(e);
  }
  // Deliberate: a step of its own, so that such a move may go on twice. Hosts count on every move
  // arriving in this mode, whatever is held.
  if (self && this->VTKMoveMode)
  {
    this->Forward(e);
  }
  if (self && this->QTMoveMode)
  {
    Q_EMIT this->mouseEvent(e);
  }
}

void zvQVTKWidget::wheelEvent(QWheelEvent* e)
{
  if (IsShiftHeld(e, static_cast<int>(e->buttons())))
  {
    this->Forward(e);
    return;
  }
  Q_EMIT this->mouseWheelEvent(e);
}

void zvQVTKWidget::keyPressEvent(QKeyEvent* e)
{
  Q_EMIT this->keyEvent(e);
}

// Hand an event to the toolkit, whether or not the view was painted yet.
void zvQVTKWidget::Forward(QEvent* e)
{
  const vtkSmartPointer<vtkRenderWindowInteractor> interactor =
    this->renderWindow() ? this->renderWindow()->GetInteractor() : nullptr;
  if (!interactor)
  {
    return;
  }
  if (e->type() == QEvent::MouseButtonDblClick)
  {
    this->ForwardDoubleClick(static_cast<QMouseEvent*>(e));
    return;
  }
  this->Adapter.SetDevicePixelRatio(static_cast<float>(this->effectiveDevicePixelRatio()));
  this->Adapter.ProcessEvent(e, interactor);
}

// The adapter would make an event of its own kind of it, which no widget observes: a double click
// is a press that tells its repetition.
void zvQVTKWidget::ForwardDoubleClick(QMouseEvent* e)
{
  vtkRenderWindowInteractor* interactor = this->renderWindow()->GetInteractor();
  if (!interactor->GetEnabled())
  {
    return;
  }
  const QPoint position = this->InDevicePixels(e->pos());
  interactor->SetEventInformationFlipY(position.x(), position.y(),
    e->modifiers().testFlag(Qt::ControlModifier) ? 1 : 0,
    e->modifiers().testFlag(Qt::ShiftModifier) ? 1 : 0, 0, 1);
  interactor->SetAltKey(e->modifiers().testFlag(Qt::AltModifier) ? 1 : 0);
  interactor->InvokeEvent(PressEventOf(e->button()), e);
}

// Rounded as the adapter does, so that both presses of a double click are at one place.
QPoint zvQVTKWidget::InDevicePixels(const QPoint& position) const
{
  constexpr double roundingError = 1e-5;
  const auto ratio = static_cast<float>(this->effectiveDevicePixelRatio());
  return { static_cast<int>(position.x() * ratio + roundingError),
    static_cast<int>(position.y() * ratio + roundingError) };
}

// The buttons whose press and release go the same way.
bool zvQVTKWidget::IsPressForwarded(QMouseEvent* e) const
{
  switch (e->button())
  {
    case Qt::MiddleButton:
      return true;
    case Qt::LeftButton:
      return this->Mode3D || this->VTKMoveMode;
    default:
      return false;
  }
}

bool zvQVTKWidget::IsMoveForwarded(QMouseEvent* e) const
{
  const Qt::MouseButtons held = e->buttons();
  if (held == Qt::RightButton)
  {
    return IsShiftHeld(e, static_cast<int>(e->button()));
  }
  if (held == Qt::MiddleButton)
  {
    return true;
  }
  return held == Qt::LeftButton && this->Mode3D;
}
