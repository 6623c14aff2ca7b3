#include "zvViewHand.h"

#include "zvScreenPlace.h"
#include "zvSliceView.h"
#include "zvVolumeView.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include "vtkImageData.h"
#include "vtkRenderer.h"

#include <cmath>

zvViewHand::zvViewHand(zvVolumeView* view)
  : View(view)
  , Renderer(view->GetRenderer())
  , VolumeView(view)
{
}

zvViewHand::zvViewHand(zvSliceView* view)
  : View(view)
  , Renderer(view->GetRenderer())
{
}

QPoint zvViewHand::Part(double right, double up) const
{
  return QPoint(static_cast<int>(std::lround(0.5 * (1.0 + right) * this->View->width())),
    static_cast<int>(std::lround(0.5 * (1.0 - up) * this->View->height())));
}

QPoint zvViewHand::At(const std::array<double, 3>& world) const
{
  return zvScreenPlace::Of(world.data(), this->View, this->Renderer);
}

std::array<double, 3> zvViewHand::OnAxialPlane(double x, double y) const
{
  vtkImageData* image = this->VolumeView->GetVolume().Image;
  double bounds[6];
  image->GetBounds(bounds);
  return { { 0.5 * (bounds[0] + bounds[1]) + 0.5 * x * (bounds[1] - bounds[0]),
    0.5 * (bounds[2] + bounds[3]) + 0.5 * y * (bounds[3] - bounds[2]),
    image->GetOrigin()[2] + this->VolumeView->GetSlice(2) * image->GetSpacing()[2] } };
}

void zvViewHand::Send(int type, Qt::MouseButton button, Qt::MouseButtons held)
{
  QMouseEvent event(static_cast<QEvent::Type>(type), this->Position,
    this->View->mapToGlobal(this->Position), button, held, this->Modifiers);
  QApplication::sendEvent(this->View, &event);
}

void zvViewHand::Press(
  Qt::MouseButton button, const QPoint& position, Qt::KeyboardModifiers modifiers)
{
  this->Position = position;
  this->Held = button;
  this->Modifiers = modifiers;
  this->Send(QEvent::MouseButtonPress, button, button);
}

void zvViewHand::MoveTo(const QPoint& position)
{
  this->Position = position;
  this->Send(QEvent::MouseMove, Qt::NoButton, this->Held);
}

void zvViewHand::Release()
{
  this->Send(QEvent::MouseButtonRelease, this->Held, Qt::NoButton);
  this->Held = Qt::NoButton;
  this->Modifiers = Qt::NoModifier;
}

void zvViewHand::Click(
  Qt::MouseButton button, const QPoint& position, Qt::KeyboardModifiers modifiers)
{
  this->Press(button, position, modifiers);
  this->Release();
}

void zvViewHand::Drag(Qt::MouseButton button, const QPoint& from, const QPoint& to, int steps,
  Qt::KeyboardModifiers modifiers)
{
  this->Press(button, from, modifiers);
  for (int step = 1; step <= steps; ++step)
  {
    this->MoveTo(from + (to - from) * step / steps);
  }
  this->Release();
}

void zvViewHand::DoubleClick(const QPoint& position)
{
  this->Click(Qt::LeftButton, position);
  this->Held = Qt::LeftButton;
  this->Send(QEvent::MouseButtonDblClick, Qt::LeftButton, Qt::LeftButton);
  this->Release();
}

void zvViewHand::Turn(int notches, const QPoint& position, Qt::KeyboardModifiers modifiers)
{
  constexpr int unitsPerNotch = 120;
  QWheelEvent event(position, this->View->mapToGlobal(position), QPoint(),
    QPoint(0, notches * unitsPerNotch), Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
  QApplication::sendEvent(this->View, &event);
}

void zvViewHand::Type(Qt::Key key)
{
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
  QApplication::sendEvent(this->View, &press);
  QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
  QApplication::sendEvent(this->View, &release);
}
