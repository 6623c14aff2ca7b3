#include "zvMouse.h"

#include "vtkCommand.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkSmartPointer.h"

namespace
{
struct ButtonEvents
{
  unsigned long Press;
  unsigned long Release;
  unsigned long DoubleClick;
};

ButtonEvents EventsOf(zvtest::Button button)
{
  static const ButtonEvents events[3] = {
    { vtkCommand::LeftButtonPressEvent, vtkCommand::LeftButtonReleaseEvent,
      vtkCommand::LeftButtonDoubleClickEvent },
    { vtkCommand::MiddleButtonPressEvent, vtkCommand::MiddleButtonReleaseEvent,
      vtkCommand::MiddleButtonDoubleClickEvent },
    { vtkCommand::RightButtonPressEvent, vtkCommand::RightButtonReleaseEvent,
      vtkCommand::RightButtonDoubleClickEvent },
  };
  return events[button];
}
}

namespace zvtest
{
Mouse::Mouse(Scene& scene, int viewport)
  : Stage(&scene)
  , Viewport(viewport)
{
}

Display Mouse::At(const World& position) const
{
  return this->Stage->At(position, this->Viewport);
}

void Mouse::Send(unsigned long event, const Display& position, int modifiers, char key)
{
  // The interactor may lose its last owner in an observer.
  vtkSmartPointer<vtkRenderWindowInteractor> interactor = this->Stage->Interactor();
  this->Last = position;
  const std::string symbol(1, key);
  interactor->SetEventInformation(position[0], position[1], modifiers & Control ? 1 : 0,
    modifiers & Shift ? 1 : 0, key, 0, key ? symbol.c_str() : nullptr);
  interactor->InvokeEvent(event);
}

void Mouse::MoveTo(const Display& position, int modifiers)
{
  this->Send(vtkCommand::MouseMoveEvent, position, modifiers);
}

void Mouse::Press(Button button, const Display& position, int modifiers)
{
  this->Send(EventsOf(button).Press, position, modifiers);
}

void Mouse::Release(Button button, const Display& position, int modifiers)
{
  this->Send(EventsOf(button).Release, position, modifiers);
}

void Mouse::Release(Button button, int modifiers)
{
  this->Release(button, this->Last, modifiers);
}

void Mouse::Drag(Button button, const Display& from, const Display& to, int modifiers, int steps)
{
  this->Press(button, from, modifiers);
  for (int step = 1; step <= steps; ++step)
  {
    this->MoveTo({ { from[0] + (to[0] - from[0]) * step / steps,
                   from[1] + (to[1] - from[1]) * step / steps } },
      modifiers);
  }
  this->Release(button, to, modifiers);
}

void Mouse::DoubleClick(Button button, const Display& position, int modifiers)
{
  this->Send(EventsOf(button).DoubleClick, position, modifiers);
}

void Mouse::WheelForward(const Display& position, int modifiers)
{
  this->Send(vtkCommand::MouseWheelForwardEvent, position, modifiers);
}

void Mouse::WheelBackward(const Display& position, int modifiers)
{
  this->Send(vtkCommand::MouseWheelBackwardEvent, position, modifiers);
}

void Mouse::Type(char key, int modifiers)
{
  this->Send(vtkCommand::CharEvent, this->Last, modifiers, key);
}
}
