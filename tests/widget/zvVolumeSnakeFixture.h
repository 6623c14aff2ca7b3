#ifndef zvVolumeSnakeFixture_h
#define zvVolumeSnakeFixture_h

#include "zvSnakeFixture.h"
#include "zvVolumeSnakeWidget.h"

#include "vtkCellPicker.h"
#include "vtkParametricFunctionSource.h"

/// What the tests of the volume's snake share.
namespace zvtest
{
/// The widget with its protected fields open to a test.
class OpenVolumeSnake : public zvVolumeSnakeWidget
{
public:
  static OpenVolumeSnake* New() { return new OpenVolumeSnake; }
  using zvVolumeSnakeWidget::Color;
  using zvVolumeSnakeWidget::CurrentHandleIndex;
  using zvVolumeSnakeWidget::CurveGrabbed;
  using zvVolumeSnakeWidget::DebugMode;
  using zvVolumeSnakeWidget::EventCallbackCommand;
  using zvVolumeSnakeWidget::FreezeGradientActor;
  using zvVolumeSnakeWidget::GradientActor;
  using zvVolumeSnakeWidget::HandleActor;
  using zvVolumeSnakeWidget::HandlePicker;
  using zvVolumeSnakeWidget::HandlePolyData;
  using zvVolumeSnakeWidget::LastPickPosition;
  using zvVolumeSnakeWidget::LineActor;
  using zvVolumeSnakeWidget::LinePicker;
  using zvVolumeSnakeWidget::MotionMode;
  using zvVolumeSnakeWidget::ParametricFunctionSource;
  using zvVolumeSnakeWidget::PrevSnakeActor;
  using zvVolumeSnakeWidget::SnakeActor;
  using zvVolumeSnakeWidget::Snakes3D;
  using zvVolumeSnakeWidget::Snakes3DActor;
  using zvVolumeSnakeWidget::SphereHandleVisibility;
};

class VolumeSnakeTest : public SnakeTest<OpenVolumeSnake>
{
protected:
  /// Points of the contour as they are.
  std::vector<World> Points()
  {
    std::vector<World> points;
    for (vtkIdType i = 0; i < this->Snake->GetSnake()->GetNumberOfPoints(); ++i)
    {
      points.push_back(PointOf(this->Snake->GetSnake(), i));
    }
    return points;
  }

  void ExpectPoints(const std::vector<World>& expected, double tolerance = 1e-9)
  {
    const std::vector<World> points = this->Points();
    ASSERT_EQ(points.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
    {
      SCOPED_TRACE(i);
      ExpectNear(points[i], expected[i], tolerance);
    }
  }

  static std::vector<World> SquarePlaces()
  {
    return { { { -5, -5, 0 } }, { { 5, -5, 0 } }, { { 5, 5, 0 } }, { { -5, 5, 0 } } };
  }

  static std::vector<World> Moved(std::vector<World> places, const World& motion)
  {
    for (World& place : places)
    {
      for (int axis = 0; axis < 3; ++axis)
      {
        place[axis] += motion[axis];
      }
    }
    return places;
  }

  static std::vector<World> Scaled(std::vector<World> places, double factor)
  {
    for (World& place : places)
    {
      for (double& coordinate : place)
      {
        coordinate *= factor;
      }
    }
    return places;
  }

  /// The square of side 10 about the origin as a contour of four points, shown.
  void ShowSquare()
  {
    this->Snake->SetResolution(4);
    this->Snake->SetSnake(Square());
    this->Snake->SetEnabled(1);
  }
};
}

#endif
