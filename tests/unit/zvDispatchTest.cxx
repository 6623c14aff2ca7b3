#include "zvDispatch.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace
{
struct Listener
{
  std::string Heard;
  void OnLeftButtonDown() { this->Heard += "left down,"; }
  void OnLeftButtonUp() { this->Heard += "left up,"; }
  void OnMiddleButtonDown() { this->Heard += "middle down,"; }
  void OnMiddleButtonUp() { this->Heard += "middle up,"; }
  void OnRightButtonDown() { this->Heard += "right down,"; }
  void OnRightButtonUp() { this->Heard += "right up,"; }
  void OnMouseMove() { this->Heard += "move,"; }
  void OnMouseWheelForward() { this->Heard += "forward,"; }
  void OnMouseWheelBackward() { this->Heard += "backward,"; }
};

const std::vector<std::pair<unsigned long, std::string>> MouseRows = {
  { vtkCommand::LeftButtonPressEvent, "left down," },
  { vtkCommand::LeftButtonReleaseEvent, "left up," },
  { vtkCommand::MiddleButtonPressEvent, "middle down," },
  { vtkCommand::MiddleButtonReleaseEvent, "middle up," },
  { vtkCommand::RightButtonPressEvent, "right down," },
  { vtkCommand::RightButtonReleaseEvent, "right up," },
  { vtkCommand::MouseMoveEvent, "move," },
};
const std::vector<std::pair<unsigned long, std::string>> WheelRows = {
  { vtkCommand::MouseWheelForwardEvent, "forward," },
  { vtkCommand::MouseWheelBackwardEvent, "backward," },
};
}

TEST(Dispatch, EachEventReachesItsHandlerAndNoOther)
{
  for (const auto& rows : { MouseRows, WheelRows })
  {
    for (const auto& [event, expected] : rows)
    {
      Listener listener;
      zvDispatch::ToHandler(&listener, event);
      EXPECT_EQ(listener.Heard, expected);
    }
  }
}

TEST(Dispatch, MouseHandlersLeaveTheWheelAlone)
{
  for (const auto& [event, expected] : MouseRows)
  {
    Listener listener;
    zvDispatch::ToMouseHandler(&listener, event);
    EXPECT_EQ(listener.Heard, expected);
  }
  for (const auto& row : WheelRows)
  {
    Listener listener;
    zvDispatch::ToMouseHandler(&listener, row.first);
    EXPECT_EQ(listener.Heard, "");
  }
}

TEST(Dispatch, OtherEventsAreIgnored)
{
  Listener listener;
  for (unsigned long event : { vtkCommand::CharEvent, vtkCommand::TimerEvent,
         vtkCommand::LeftButtonDoubleClickEvent, vtkCommand::NoEvent })
  {
    zvDispatch::ToHandler(&listener, event);
  }
  EXPECT_EQ(listener.Heard, "");
}
