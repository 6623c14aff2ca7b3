#ifndef zvCurveFixture_h
#define zvCurveFixture_h

#include "zvTestKit.h"

#include "vtkActor.h"
#include "vtkCallbackCommand.h"
#include "vtkCamera.h"
#include "vtkCellPicker.h"
#include "vtkNew.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"
#include "vtkRenderWindow.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkSmartPointer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// What the tests of the spline and of the widgets that build on it share: the fields that only a
/// subclass reaches, and a square of handles in a view from above.
namespace zvtest
{
/// \a Widget with its protected fields open to a test.
template <class Widget>
class Open : public Widget
{
public:
  static Open* New() { return new Open; }

  using Widget::Centroid;
  using Widget::CurrentHandleIndex;
  using Widget::CurveGrabbed;
  using Widget::DebugMode;
  using Widget::EventCallbackCommand;
  using Widget::HandleActor;
  using Widget::HandlePicker;
  using Widget::HandlePolyData;
  using Widget::InitialBounds;
  using Widget::InitialLength;
  using Widget::LastPickPosition;
  using Widget::LineActor;
  using Widget::LinePicker;
  using Widget::ParametricFunctionSource;
  using Widget::PlaceFactor;
  using Widget::ValidPick;
};

/// The mouse events as they come to whoever stands behind the widget.
const std::initializer_list<unsigned long> MouseEvents = { vtkCommand::MouseMoveEvent,
  vtkCommand::LeftButtonPressEvent, vtkCommand::LeftButtonReleaseEvent,
  vtkCommand::MiddleButtonPressEvent, vtkCommand::MiddleButtonReleaseEvent,
  vtkCommand::RightButtonPressEvent, vtkCommand::RightButtonReleaseEvent,
  vtkCommand::MouseWheelForwardEvent, vtkCommand::MouseWheelBackwardEvent };

template <class Widget, class Opened = Open<Widget>>
class CurveTest : public QuietTest
{
protected:
  using Names = std::vector<std::string>;
  using OpenWidget = Opened;

  CurveTest()
    : Pointer(Scene)
  {
    this->Scene.LookAlong(2);
    const double bounds[6] = { -10, 10, -10, 10, -10, 10 };
    this->Scene.ResetCamera(bounds);
    this->Scene.Render();
    this->Curve = vtkSmartPointer<OpenWidget>::Take(OpenWidget::New());
    this->Curve->SetInteractor(this->Scene.Interactor());
  }

  /// Give the widget these handles and show it.
  void Show(const std::vector<World>& handles, bool closed = false)
  {
    this->Curve->InitializeHandles(PointsOf(handles));
    this->Curve->SetClosed(closed ? 1 : 0);
    this->Curve->SetEnabled(1);
  }

  /// Draw the curve as a host does, handle by handle, and show it. Handles that keep their size on
  /// the screen have it after that.
  void Draw(const std::vector<World>& handles, bool closed = false)
  {
    this->Scene.Interactor()->SetEventPosition(10, 10); // on no handle
    for (World handle : handles)
    {
      this->Curve->AddHandle(handle.data());
    }
    this->Curve->SetClosed(closed ? 1 : 0);
    this->Curve->SetEnabled(1);
    this->Scene.Render();
  }

  /// Four corners in the plane z = 0, first low left, then round against the clock.
  static std::vector<World> Square()
  {
    return { { { -6, -6, 0 } }, { { 6, -6, 0 } }, { { 6, 6, 0 } }, { { -6, 6, 0 } } };
  }

  static vtkSmartPointer<vtkPoints> PointsOf(const std::vector<World>& handles)
  {
    auto points = vtkSmartPointer<vtkPoints>::New();
    points->SetDataTypeToDouble();
    for (const World& handle : handles)
    {
      points->InsertNextPoint(handle.data());
    }
    return points;
  }

  World HandleAt(int handle)
  {
    World position{ { 0, 0, 0 } };
    this->Curve->GetHandlePosition(handle, position.data());
    return position;
  }

  std::vector<World> Handles()
  {
    std::vector<World> handles;
    for (int i = 0; i < this->Curve->GetNumberOfHandles(); ++i)
    {
      handles.push_back(this->HandleAt(i));
    }
    return handles;
  }

  void ExpectHandles(const std::vector<World>& expected, double tolerance = 1e-9)
  {
    const std::vector<World> handles = this->Handles();
    ASSERT_EQ(handles.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
    {
      for (int axis = 0; axis < 3; ++axis)
      {
        EXPECT_NEAR(handles[i][axis], expected[i][axis], tolerance)
          << "handle " << i << " axis " << axis;
      }
    }
  }

  /// A point of the line where no handle is: in the middle of a segment, as last sampled.
  World OnLine(double fraction)
  {
    vtkNew<vtkPolyData> line;
    this->Curve->GetPolyData(line);
    World position;
    line->GetPoint(
      static_cast<vtkIdType>(fraction * (line->GetNumberOfPoints() - 1)), position.data());
    return position;
  }

  /// What the widget tells its observers, and the renders of the view, in one order.
  void RecordWithRenders(EventRecorder& recorder)
  {
    recorder.Watch(this->Curve, WidgetEvents);
    recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  }

  /// How many world millimetres a pixel is wide.
  double PixelSize() const
  {
    return this->Scene.WorldAt({ { 201, 200 } }, { { 0, 0, 0 } })[0] -
      this->Scene.WorldAt({ { 200, 200 } }, { { 0, 0, 0 } })[0];
  }

  bool IsShown(vtkProp* prop) { return this->Scene.Renderer()->HasViewProp(prop) != 0; }

  static constexpr Color Red{ 255, 0, 0 };
  static constexpr Color Cyan{ 0, 255, 255 };
  static constexpr Color Green{ 0, 255, 0 };
  static constexpr Color Yellow{ 255, 255, 0 };

  class Scene Scene;
  Mouse Pointer;
  vtkSmartPointer<OpenWidget> Curve;
};
}

#endif
