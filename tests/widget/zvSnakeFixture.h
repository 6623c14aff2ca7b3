#ifndef zvSnakeFixture_h
#define zvSnakeFixture_h

#include "zvInstanceManager.h"
#include "zvSnakeWidget.h"
#include "zvTestKit.h"

#include "vtkActor.h"
#include "vtkCallbackCommand.h"
#include "vtkCamera.h"
#include "vtkCellArray.h"
#include "vtkFloatArray.h"
#include "vtkImageData.h"
#include "vtkInteractorObserver.h"
#include "vtkNew.h"
#include "vtkPointData.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"
#include "vtkSmartPointer.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>
#include <vector>

/// What the tests of the two snake widgets share: a slice view and a 3D view side by side, seen
/// from above in millimetres of ten pixels, and the image in which the contours lie.
namespace zvtest
{
/// The mouse events as they come to whoever stands behind the widget.
const std::initializer_list<unsigned long> ButtonEvents = { vtkCommand::MouseMoveEvent,
  vtkCommand::LeftButtonPressEvent, vtkCommand::LeftButtonReleaseEvent,
  vtkCommand::MiddleButtonPressEvent, vtkCommand::MiddleButtonReleaseEvent,
  vtkCommand::RightButtonPressEvent, vtkCommand::RightButtonReleaseEvent,
  vtkCommand::MouseWheelForwardEvent, vtkCommand::MouseWheelBackwardEvent };

/// The widget with its protected fields open to a test.
class OpenSnake : public zvSnakeWidget
{
public:
  static OpenSnake* New() { return new OpenSnake; }
  using zvSnakeWidget::Area;
  using zvSnakeWidget::AreaActor;
  using zvSnakeWidget::AreaText;
  using zvSnakeWidget::Color;
  using zvSnakeWidget::DebugMode;
  using zvSnakeWidget::EventCallbackCommand;
  using zvSnakeWidget::GradientActor;
  using zvSnakeWidget::HandleSize;
  using zvSnakeWidget::LastPickPosition;
  using zvSnakeWidget::MotionMode;
  using zvSnakeWidget::SnakeActor;
  using zvSnakeWidget::SnakePicker;
  using zvSnakeWidget::Snakes3DActor;
  using zvSnakeWidget::State;
  using zvSnakeWidget::ViewArea;
};

template <class Opened>
class SnakeTest : public QuietTest
{
protected:
  using Names = std::vector<std::string>;
  using OpenWidget = Opened;

  SnakeTest()
    : Scene(TwoViews())
    , Pointer(Scene)
  {
    VolumeOptions options;
    options.Dimensions = { { 41, 31, 3 } };
    options.Origin = { { -20, -15, -1 } };
    this->Image = MakeConstantVolume(0.0, options);
    zvInstanceManager::Instance()->SetCurrentOutput(this->Image);
    for (int view : { 0, 1 })
    {
      this->Scene.LookAlong(2, view);
      const double bounds[6] = { -20, 20, -20, 20, -20, 20 };
      this->Scene.ResetCamera(bounds, view);
      this->Scene.Renderer(view)->GetActiveCamera()->SetParallelScale(20.0);
    }
    this->Scene.Render();
    this->MakeSnake();
  }

  ~SnakeTest() override { zvInstanceManager::Instance()->SetCurrentOutput(nullptr); }

  static SceneOptions TwoViews()
  {
    SceneOptions options;
    options.Width = 800;
    options.Viewports = 2;
    return options;
  }

  void MakeSnake()
  {
    this->Snake = vtkSmartPointer<Opened>::Take(Opened::New());
    this->Snake->SetInteractor(this->Scene.Interactor());
    this->Snake->SetCurrentRenderer(this->Scene.Renderer(0));
    this->Snake->SetRenderer3D(this->Scene.Renderer(1));
  }

  /// A ring about a place, shown.
  void Show(World center = { { 0, 0, 0 } }, double radius = 5.0)
  {
    this->Snake->SetCenter(center.data());
    this->Snake->SetRadius(radius);
    this->Snake->CreateInitialSnake();
    this->Snake->SetEnabled(1);
  }

  /// A closed contour of these points, of double precision.
  static vtkSmartPointer<vtkPolyData> Contour(const std::vector<World>& places)
  {
    auto contour = Cloud(places);
    const auto count = static_cast<vtkIdType>(places.size());
    vtkNew<vtkCellArray> lines;
    for (vtkIdType i = 0; i < count; ++i)
    {
      const vtkIdType ids[2] = { i, (i + 1) % count };
      lines->InsertNextCell(2, ids);
    }
    contour->SetVerts(nullptr);
    contour->SetLines(lines);
    return contour;
  }

  /// Vertices at these points.
  static vtkSmartPointer<vtkPolyData> Cloud(const std::vector<World>& places)
  {
    vtkNew<vtkPoints> points;
    points->SetDataTypeToDouble();
    vtkNew<vtkCellArray> vertices;
    for (const World& place : places)
    {
      const vtkIdType id = points->InsertNextPoint(place.data());
      vertices->InsertNextCell(1, &id);
    }
    auto cloud = vtkSmartPointer<vtkPolyData>::New();
    cloud->SetPoints(points);
    cloud->SetVerts(vertices);
    return cloud;
  }

  /// The same with a value at each point.
  static vtkSmartPointer<vtkPolyData> CloudOfValues(
    const std::vector<World>& places, const std::vector<float>& values)
  {
    auto cloud = Cloud(places);
    vtkNew<vtkFloatArray> scalars;
    for (float value : values)
    {
      scalars->InsertNextValue(value);
    }
    cloud->GetPointData()->SetScalars(scalars);
    return cloud;
  }

  /// A square of side 10 about the origin.
  static vtkSmartPointer<vtkPolyData> Square()
  {
    return Contour({ { { -5, -5, 0 } }, { { 5, -5, 0 } }, { { 5, 5, 0 } }, { { -5, 5, 0 } } });
  }

  static World PointOf(vtkPolyData* data, vtkIdType id)
  {
    World point;
    data->GetPoint(id, point.data());
    return point;
  }

  static void ExpectNear(const World& actual, const World& expected, double tolerance = 1e-6)
  {
    for (int axis = 0; axis < 3; ++axis)
    {
      EXPECT_NEAR(actual[axis], expected[axis], tolerance) << "axis " << axis;
    }
  }

  World Center()
  {
    const double* center = this->Snake->GetCenter();
    return { { center[0], center[1], center[2] } };
  }

  /// Whether the contour is a circle about a place.
  void ExpectCircle(const World& center, double radius, double tolerance = 1e-5)
  {
    vtkPolyData* contour = this->Snake->GetSnake();
    ASSERT_EQ(contour->GetNumberOfPoints(), this->Snake->GetResolution());
    for (vtkIdType i = 0; i < contour->GetNumberOfPoints(); ++i)
    {
      const World point = PointOf(contour, i);
      EXPECT_NEAR(std::hypot(point[0] - center[0], point[1] - center[1]), radius, tolerance) << i;
      EXPECT_NEAR(point[2], center[2], tolerance);
    }
  }

  /// What the widget tells its observers, the renders of the view and the mouse events that nobody
  /// kept, in one order.
  void Record(EventRecorder& recorder)
  {
    recorder.Watch(this->Snake, WidgetEvents);
    recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
    recorder.Watch(this->Scene.Interactor(), ButtonEvents);
  }

  /// The display position of a world position in the slice view.
  Display At(const World& position) const { return this->Pointer.At(position); }

  bool IsShown(vtkProp* prop, int view = 0)
  {
    return this->Scene.Renderer(view)->HasViewProp(prop) != 0;
  }

  bool IsObserved()
  {
    for (unsigned long event : ButtonEvents)
    {
      if (!this->Scene.Interactor()->HasObserver(event, this->Snake->EventCallbackCommand))
      {
        return false;
      }
    }
    return true;
  }

  static constexpr Color Green{ 0, 255, 0 };
  static constexpr Color Blue{ 0, 0, 255 };
  static constexpr Color Red{ 255, 0, 0 };
  static constexpr Color Yellow{ 255, 255, 0 };
  static constexpr Color Magenta{ 255, 0, 255 };
  static constexpr Color Black{ 0, 0, 0 };

  /// Ten pixels are a millimetre.
  static constexpr double Pixel = 0.1;

  class Scene Scene;
  Mouse Pointer;
  vtkSmartPointer<vtkImageData> Image;
  vtkSmartPointer<Opened> Snake;
};
}

#endif
