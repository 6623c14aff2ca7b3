#ifndef zvRulerFixture_h
#define zvRulerFixture_h

#include "zvRulerWidget.h"

#include "zvPointWidget.h"
#include "zvTestKit.h"

#include "vtkActor.h"
#include "vtkCallbackCommand.h"
#include "vtkCamera.h"
#include "vtkCellPicker.h"
#include "vtkCursor3D.h"
#include "vtkFollower.h"
#include "vtkLineSource.h"
#include "vtkPolyDataMapper.h"
#include "vtkPropCollection.h"
#include "vtkProperty.h"
#include "vtkRenderWindow.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkSmartPointer.h"
#include "vtkSphereSource.h"
#include "vtkVectorText.h"

#include <gmock/gmock.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace zvtest
{
/// A ruler whose parts can be looked at.
class OpenRuler : public zvRulerWidget
{
public:
  static OpenRuler* New() { return new OpenRuler; }

  using zvRulerWidget::CurrentHandle;
  using zvRulerWidget::CurrentPointWidget;
  using zvRulerWidget::EventCallbackCommand;
  using zvRulerWidget::Handle;
  using zvRulerWidget::HandleGeometry;
  using zvRulerWidget::HandleMapper;
  using zvRulerWidget::HandlePicker;
  using zvRulerWidget::InitialBounds;
  using zvRulerWidget::InitialLength;
  using zvRulerWidget::LabelScale;
  using zvRulerWidget::LastPickPosition;
  using zvRulerWidget::LastPosition;
  using zvRulerWidget::LineActor;
  using zvRulerWidget::LineMapper;
  using zvRulerWidget::LinePicker;
  using zvRulerWidget::LineSource;
  using zvRulerWidget::PlaceFactor;
  using zvRulerWidget::PointWidget;
  using zvRulerWidget::PointWidget1;
  using zvRulerWidget::PointWidget2;
  using zvRulerWidget::PW1Callback;
  using zvRulerWidget::PW2Callback;
  using zvRulerWidget::PWCallback;
  using zvRulerWidget::ScaleFollower;
  using zvRulerWidget::ScaleText;
  using zvRulerWidget::State;
  using zvRulerWidget::ValidPick;
};

/// The mouse events as they come to whoever stands behind the widget.
const std::initializer_list<unsigned long> MouseEvents = { vtkCommand::MouseMoveEvent,
  vtkCommand::LeftButtonPressEvent, vtkCommand::LeftButtonReleaseEvent,
  vtkCommand::MiddleButtonPressEvent, vtkCommand::MiddleButtonReleaseEvent,
  vtkCommand::RightButtonPressEvent, vtkCommand::RightButtonReleaseEvent,
  vtkCommand::MouseWheelForwardEvent, vtkCommand::MouseWheelBackwardEvent };

/// A ruler from (-5, 0, 0) to (5, 0, 0), seen from above.
class RulerTest : public QuietTest
{
protected:
  RulerTest()
    : Pointer(Scene)
    , Ruler(vtkSmartPointer<OpenRuler>::New())
  {
    this->PutInto(this->Scene);
    this->Ruler->SetPoint1(-5, 0, 0);
    this->Ruler->SetPoint2(5, 0, 0);
  }

  // Seen from above, ten millimetres on each side.
  void PutInto(zvtest::Scene& scene)
  {
    scene.LookAlong(2);
    const double view[6] = { -10, 10, -10, 10, -10, 10 };
    scene.ResetCamera(view);
    scene.Render();
    this->Ruler->SetInteractor(scene.Interactor());
  }

  void Enable() { this->Ruler->SetEnabled(1); }

  // As after a first click on the ruler: from then on sizes follow the view.
  void EnableAndClick()
  {
    this->Enable();
    this->Pointer.Press(zvtest::Left, this->OnEnd1());
    this->Pointer.Release(zvtest::Left);
  }

  void Watch()
  {
    this->Told.Watch(this->Ruler, zvtest::WidgetEvents);
    this->Behind.Watch(this->Scene.Interactor(), MouseEvents, 0.1f);
    this->Renders.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  }

  void ForgetWhatWasTold()
  {
    this->Told.Clear();
    this->Behind.Clear();
    this->Renders.Clear();
  }

  static World PositionOf(zvPointWidget* cross)
  {
    World position;
    cross->GetCursor3D()->GetFocalPoint(position.data());
    return position;
  }

  static double WidthOf(zvPointWidget* cross)
  {
    const double* bounds = cross->GetCursor3D()->GetModelBounds();
    return bounds[1] - bounds[0];
  }

  World End1() const
  {
    World end;
    this->Ruler->LineSource->GetPoint1(end.data());
    return end;
  }

  World End2() const
  {
    World end;
    this->Ruler->LineSource->GetPoint2(end.data());
    return end;
  }

  std::string Label() const { return this->Ruler->ScaleText->GetText(); }

  // The line, the crosses and the spheres agree on where the ends are.
  void ExpectEnds(const World& end1, const World& end2, double tolerance = 1e-9)
  {
    ExpectNear(this->End1(), end1, tolerance);
    ExpectNear(this->End2(), end2, tolerance);
    ExpectNear(PositionOf(this->Ruler->PointWidget1), end1, tolerance);
    ExpectNear(PositionOf(this->Ruler->PointWidget2), end2, tolerance);
    World center;
    this->Ruler->HandleGeometry[0]->GetCenter(center.data());
    ExpectNear(center, end1, tolerance);
    this->Ruler->HandleGeometry[1]->GetCenter(center.data());
    ExpectNear(center, end2, tolerance);
  }

  static void ExpectNear(const World& actual, const World& expected, double tolerance = 1e-9)
  {
    for (int axis = 0; axis < 3; ++axis)
    {
      EXPECT_NEAR(actual[axis], expected[axis], tolerance) << "axis " << axis;
    }
  }

  // What the last event drew is all there is to be drawn.
  void ExpectTheScreenIsCurrent()
  {
    const zvtest::Picture drawn = this->Scene.Look();
    EXPECT_EQ(drawn.CountDifferent(this->Scene.RenderAndLook()), 0);
  }

  World MotionOf(const Display& from, const Display& to) const
  {
    const World start = this->Scene.WorldAt(from, { { 0, 0, 0 } });
    const World end = this->Scene.WorldAt(to, { { 0, 0, 0 } });
    return { { end[0] - start[0], end[1] - start[1], end[2] - start[2] } };
  }

  static World Sum(const World& a, const World& b)
  {
    return { { a[0] + b[0], a[1] + b[1], a[2] + b[2] } };
  }

  static Display Plus(const Display& position, int x, int y)
  {
    return { { position[0] + x, position[1] + y } };
  }

  Display OnEnd1() const { return this->Pointer.At({ { -5, 0, 0 } }); }
  Display OnEnd2() const { return this->Pointer.At({ { 5, 0, 0 } }); }
  Display OnLine() const { return this->Pointer.At({ { 1, 0, 0 } }); }
  Display Beside() const { return this->Pointer.At({ { 0, 8, 0 } }); }

  int PropsInView() const { return this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(); }

  zvtest::Scene Scene;
  zvtest::Mouse Pointer;
  vtkSmartPointer<OpenRuler> Ruler;
  zvtest::EventRecorder Told;
  zvtest::EventRecorder Behind;
  zvtest::EventRecorder Renders;
};

inline std::vector<double> ColorOf(const double* color)
{
  return { color, color + 3 };
}
}

#endif
