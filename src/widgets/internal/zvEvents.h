#ifndef zvEvents_h
#define zvEvents_h

#include "vtkCommand.h"
#include "vtkSmartPointer.h"

#include <array>
#include <cstddef>

class vtkCallbackCommand;
class vtkObject;

/// The events that each family of widgets observes, in the order in which they are attached, and
/// the one way of attaching them. The order shows: observers of equal priority run in it.
namespace zvEvents
{
/// Widgets with handles: everything the mouse can do.
constexpr std::array<unsigned long, 9> Handle = { { vtkCommand::MouseMoveEvent,
  vtkCommand::LeftButtonPressEvent, vtkCommand::LeftButtonReleaseEvent,
  vtkCommand::MiddleButtonPressEvent, vtkCommand::MiddleButtonReleaseEvent,
  vtkCommand::RightButtonPressEvent, vtkCommand::RightButtonReleaseEvent,
  vtkCommand::MouseWheelForwardEvent, vtkCommand::MouseWheelBackwardEvent } };

/// The point handle, which leaves the wheel to whoever owns it.
constexpr std::array<unsigned long, 7> Point = { { vtkCommand::MouseMoveEvent,
  vtkCommand::LeftButtonPressEvent, vtkCommand::LeftButtonReleaseEvent,
  vtkCommand::MiddleButtonPressEvent, vtkCommand::MiddleButtonReleaseEvent,
  vtkCommand::RightButtonPressEvent, vtkCommand::RightButtonReleaseEvent } };

/// The image plane of the 3D view.
constexpr std::array<unsigned long, 6> ImagePlane = { { vtkCommand::MouseMoveEvent,
  vtkCommand::LeftButtonPressEvent, vtkCommand::LeftButtonReleaseEvent,
  vtkCommand::RightButtonPressEvent, vtkCommand::RightButtonReleaseEvent, vtkCommand::CharEvent } };

/// The three planes together: only what decides which plane takes a press.
constexpr std::array<unsigned long, 4> ThreePlanes = { { vtkCommand::MouseMoveEvent,
  vtkCommand::LeftButtonPressEvent, vtkCommand::LeftButtonReleaseEvent,
  vtkCommand::RightButtonReleaseEvent } };

/// Keeps a widget alive while it goes on after an observer that may release it. Null for one that
/// is being destroyed, which must not be taken hold of again.
vtkSmartPointer<vtkObject> Hold(vtkObject* widget);

/// Let a widget's key command, which switches the widget by a key, keep the widget alive meanwhile:
/// whoever is told of the switch may release it.
void HoldDuringKeys(vtkCallbackCommand* keyCommand);

/// Attach \a command to \a subject for \a count events, in their order, at \a priority.
void Observe(vtkObject* subject, const unsigned long* events, std::size_t count,
  vtkCommand* command, float priority);

template <std::size_t Count>
void Observe(vtkObject* subject, const std::array<unsigned long, Count>& events,
  vtkCommand* command, float priority)
{
  Observe(subject, events.data(), Count, command, priority);
}
}

#endif
