#ifndef zvDispatch_h
#define zvDispatch_h

#include "vtkCommand.h"

/// Which handler of a widget belongs to an event. The widgets share the names of their handlers,
/// not a base class that declares them.
namespace zvDispatch
{
/// Call the handler of a mouse move, or of the press or release of a button. Other events are
/// ignored.
template <typename Widget>
void ToMouseHandler(Widget* widget, unsigned long event)
{
  switch (event)
  {
    case vtkCommand::LeftButtonPressEvent:
      widget->OnLeftButtonDown();
      break;
    case vtkCommand::LeftButtonReleaseEvent:
      widget->OnLeftButtonUp();
      break;
    case vtkCommand::MiddleButtonPressEvent:
      widget->OnMiddleButtonDown();
      break;
    case vtkCommand::MiddleButtonReleaseEvent:
      widget->OnMiddleButtonUp();
      break;
    case vtkCommand::RightButtonPressEvent:
      widget->OnRightButtonDown();
      break;
    case vtkCommand::RightButtonReleaseEvent:
      widget->OnRightButtonUp();
      break;
    case vtkCommand::MouseMoveEvent:
      widget->OnMouseMove();
      break;
    default:
      break;
  }
}

/// The same, and the two directions of the wheel.
template <typename Widget>
void ToHandler(Widget* widget, unsigned long event)
{
  switch (event)
  {
    case vtkCommand::MouseWheelForwardEvent:
      widget->OnMouseWheelForward();
      break;
    case vtkCommand::MouseWheelBackwardEvent:
      widget->OnMouseWheelBackward();
      break;
    default:
      ToMouseHandler(widget, event);
      break;
  }
}
}

#endif
