#include "zvPointWidget.h"

#include "zvEvents.h"
#include "zvTestKit.h"

#include "vtkActor.h"
#include "vtkCallbackCommand.h"
#include "vtkCellPicker.h"
#include "vtkCursor3D.h"
#include "vtkNew.h"
#include "vtkPolyData.h"
#include "vtkPolyDataMapper.h"
#include "vtkPropCollection.h"
#include "vtkProperty.h"
#include "vtkRenderWindow.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkSmartPointer.h"
#include "vtkWeakPointer.h"

#include <gmock/gmock.h>

#include <cmath>
#include <functional>
#include <limits>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zvtest::Display;
using zvtest::World;

namespace
{
const zvtest::Color Red{ 255, 0, 0 };
constexpr char NoInteractor[] = "The interactor must be set prior to enabling/disabling widget";

class OpenPoint : public zvPointWidget
{
public:
  using zvPointWidget::Actor;
  using zvPointWidget::ConstraintAxis;
  using zvPointWidget::Cursor3D;
  using zvPointWidget::CursorPicker;
  using zvPointWidget::EventCallbackCommand;
  using zvPointWidget::InitialBounds;
  using zvPointWidget::InitialLength;
  using zvPointWidget::LastPickPosition;
  using zvPointWidget::Mapper;
  using zvPointWidget::PlaceFactor;
  using zvPointWidget::State;
  using zvPointWidget::ValidPick;
  using zvPointWidget::WaitCount;
  using zvPointWidget::WaitingForMotion;
};

// Notes which handler an event reaches.
class NotingPoint : public zvPointWidget
{
public:
  void OnMouseMove() override { this->Calls.emplace_back("move"); }
  void OnLeftButtonDown() override { this->Calls.emplace_back("left press"); }
  void OnLeftButtonUp() override { this->Calls.emplace_back("left release"); }
  void OnMiddleButtonDown() override { this->Calls.emplace_back("middle press"); }
  void OnMiddleButtonUp() override { this->Calls.emplace_back("middle release"); }
  void OnRightButtonDown() override { this->Calls.emplace_back("right press"); }
  void OnRightButtonUp() override { this->Calls.emplace_back("right release"); }
  std::vector<std::string> Calls;
};

const std::initializer_list<unsigned long> MouseEvents = { vtkCommand::MouseMoveEvent,
  vtkCommand::LeftButtonPressEvent, vtkCommand::LeftButtonReleaseEvent,
  vtkCommand::MiddleButtonPressEvent, vtkCommand::MiddleButtonReleaseEvent,
  vtkCommand::RightButtonPressEvent, vtkCommand::RightButtonReleaseEvent };

// A cross of 2 mm to each side at (1, 2, 3), seen from above.
class PointWidget : public zvtest::QuietTest
{
protected:
  PointWidget()
    : Pointer(Scene)
    , Point(vtkSmartPointer<OpenPoint>::Take(new OpenPoint))
  {
    this->Scene.LookAlong(2);
    const double view[6] = { -10, 10, -10, 10, -10, 10 };
    this->Scene.ResetCamera(view);
    this->Scene.Render();
    this->Point->GetCursor3D()->AllOff();
    this->Point->GetCursor3D()->AxesOn();
    this->Point->SetInteractor(this->Scene.Interactor());
    this->Point->SetPlaceFactor(2.0);
    this->Point->PlaceWidget(0.5, 1.5, 1.5, 2.5, 2.5, 3.5);
  }

  void Enable() { this->Point->SetEnabled(1); }

  // Note what the widget tells.
  void Watch() { this->Told.Watch(this->Point, zvtest::WidgetEvents); }

  // Note what comes to an observer behind the widget, and the renders.
  void WatchBehind()
  {
    this->Behind.Watch(this->Scene.Interactor(), MouseEvents, 0.1f);
    this->Renders.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  }

  World Position() const
  {
    World position;
    this->Point->Cursor3D->GetFocalPoint(position.data());
    return position;
  }

  std::vector<double> Bounds() const
  {
    const double* bounds = this->Point->Cursor3D->GetModelBounds();
    return { bounds, bounds + 6 };
  }

  // The way of the mouse in the world.
  World MotionOf(const Display& from, const Display& to) const
  {
    const World start = this->Scene.WorldAt(from, Center);
    const World end = this->Scene.WorldAt(to, Center);
    return { { end[0] - start[0], end[1] - start[1], end[2] - start[2] } };
  }

  static void ExpectNear(const World& actual, const World& expected, double tolerance = 1e-9)
  {
    for (int axis = 0; axis < 3; ++axis)
    {
      EXPECT_NEAR(actual[axis], expected[axis], tolerance) << "axis " << axis;
    }
  }

  static Display Plus(const Display& position, int x, int y)
  {
    return { { position[0] + x, position[1] + y } };
  }

  Display OnCross() const { return this->Pointer.At(Center); }
  Display Beside() const { return this->Pointer.At({ { -5, -5, 3 } }); }

  static constexpr World Center{ { 1, 2, 3 } };
  zvtest::Scene Scene;
  zvtest::Mouse Pointer;
  vtkSmartPointer<OpenPoint> Point;
  zvtest::EventRecorder Told;
  zvtest::EventRecorder Behind;
  zvtest::EventRecorder Renders;
};

struct ButtonRow
{
  const char* Name;
  zvtest::Button Button;
  int State;
};

class PointWidgetButtons
  : public PointWidget
  , public ::testing::WithParamInterface<ButtonRow>
{
};
}

INSTANTIATE_TEST_SUITE_P(PointWidget, PointWidgetButtons,
  ::testing::Values(ButtonRow{ "Left", zvtest::Left, zvPointWidget::Moving },
    ButtonRow{ "Middle", zvtest::Middle, zvPointWidget::Translating },
    ButtonRow{ "Right", zvtest::Right, zvPointWidget::Scaling }),
  [](const auto& row) { return row.param.Name; });

TEST_F(PointWidget, ReportsTheNameOfItsBaseByDesign)
{
  EXPECT_STREQ(this->Point->GetClassName(), "vtk3DWidget");
  EXPECT_EQ(this->Point->IsA("zvPointWidget"), 0);
  EXPECT_EQ(this->Point->IsA("vtk3DWidget"), 1);
  EXPECT_EQ(this->Point->IsA("vtkInteractorObserver"), 1);
}

TEST_F(PointWidget, IsMadeWithNewAndGoesSilentlyByDeleteOrRelease)
{
  auto* deleted = new zvPointWidget;
  EXPECT_EQ(deleted->GetReferenceCount(), 1);
  delete deleted;
  auto* released = new zvPointWidget;
  released->Delete();
  this->ExpectNoMessage();
}

TEST_F(PointWidget, StatesHaveTheirNumbers)
{
  EXPECT_EQ(zvPointWidget::Start, 0);
  EXPECT_EQ(zvPointWidget::Moving, 1);
  EXPECT_EQ(zvPointWidget::Scaling, 2);
  EXPECT_EQ(zvPointWidget::Translating, 3);
  EXPECT_EQ(zvPointWidget::Outside, 4);
}

TEST_F(PointWidget, StartsFreeAtTheOriginOneMillimetreToEachSide)
{
  auto fresh = vtkSmartPointer<OpenPoint>::Take(new OpenPoint);
  EXPECT_EQ(fresh->State, zvPointWidget::Start);
  EXPECT_EQ(fresh->ConstraintAxis, -1);
  EXPECT_EQ(fresh->WaitingForMotion, 0);
  EXPECT_EQ(fresh->WaitCount, 0);
  EXPECT_EQ(fresh->GetEnabled(), 0);
  EXPECT_DOUBLE_EQ(fresh->PlaceFactor, 1.0);
  EXPECT_DOUBLE_EQ(fresh->GetHotSpotSize(), 0.05);
  const double* focus = fresh->Cursor3D->GetFocalPoint();
  EXPECT_THAT(std::vector<double>(focus, focus + 3), ElementsAre(0, 0, 0));
  const double* bounds = fresh->Cursor3D->GetModelBounds();
  EXPECT_THAT(std::vector<double>(bounds, bounds + 6), ElementsAre(-1, 1, -1, 1, -1, 1));
  EXPECT_THAT(std::vector<double>(fresh->InitialBounds, fresh->InitialBounds + 6),
    ElementsAre(-1, 1, -1, 1, -1, 1));
  EXPECT_DOUBLE_EQ(fresh->InitialLength, std::sqrt(12.0));
}

TEST_F(PointWidget, DrawsAndPicksItsCursorAlone)
{
  EXPECT_EQ(this->Point->Actor->GetMapper(), this->Point->Mapper.Get());
  EXPECT_EQ(this->Point->Mapper->GetInputAlgorithm(), this->Point->Cursor3D.Get());
  EXPECT_EQ(this->Point->GetCursor3D(), this->Point->Cursor3D.Get());
  EXPECT_EQ(this->Point->CursorPicker->GetPickFromList(), 1);
  EXPECT_EQ(this->Point->CursorPicker->GetPickList()->GetNumberOfItems(), 1);
  EXPECT_NE(this->Point->CursorPicker->GetPickList()->IsItemPresent(this->Point->Actor), 0);
  EXPECT_DOUBLE_EQ(this->Point->CursorPicker->GetTolerance(), 0.005);
}

TEST_F(PointWidget, LooksRedAtRestAndWhenGrabbed)
{
  vtkProperty* property = this->Point->GetProperty();
  const double* color = property->GetColor();
  EXPECT_THAT(std::vector<double>(color, color + 3), ElementsAre(1, 0, 0));
  EXPECT_FLOAT_EQ(property->GetLineWidth(), 2.0f);
  vtkProperty* selected = this->Point->GetSelectedProperty();
  EXPECT_DOUBLE_EQ(selected->GetAmbient(), 1.0);
  EXPECT_DOUBLE_EQ(selected->GetDiffuse(), 0.0);
  const double* ambient = selected->GetAmbientColor();
  EXPECT_THAT(std::vector<double>(ambient, ambient + 3), ElementsAre(1, 0, 0));
  EXPECT_FLOAT_EQ(selected->GetLineWidth(), 2.0f);
}

TEST_F(PointWidget, ThePlaceFactorIsStoredAsItIs)
{
  const vtkMTimeType before = this->Point->GetMTime();
  for (double factor : { 5.0, 0.001, 0.0, -1.0, 1e6 })
  {
    this->Point->SetPlaceFactor(factor);
    EXPECT_DOUBLE_EQ(this->Point->GetPlaceFactor(), factor);
  }
  EXPECT_EQ(this->Point->GetMTime(), before);
}

TEST_F(PointWidget, TheHotSpotIsKeptBetweenNothingAndEverything)
{
  EXPECT_DOUBLE_EQ(this->Point->GetHotSpotSizeMinValue(), 0.0);
  EXPECT_DOUBLE_EQ(this->Point->GetHotSpotSizeMaxValue(), 1.0);
  const vtkMTimeType before = this->Point->GetMTime();
  this->Point->SetHotSpotSize(0.05);
  EXPECT_EQ(this->Point->GetMTime(), before);
  this->Point->SetHotSpotSize(2.0);
  EXPECT_DOUBLE_EQ(this->Point->GetHotSpotSize(), 1.0);
  EXPECT_GT(this->Point->GetMTime(), before);
  this->Point->SetHotSpotSize(-0.5);
  EXPECT_DOUBLE_EQ(this->Point->GetHotSpotSize(), 0.0);
}

TEST_F(PointWidget, BoundsReachThePlaceFactorAroundTheMiddle)
{
  double in[6] = { 0, 10, -4, 4, 7, 8 };
  double out[6];
  double center[3];
  this->Point->SetPlaceFactor(0.25);
  this->Point->AdjustBounds(in, out, center);
  EXPECT_THAT(std::vector<double>(center, center + 3), ElementsAre(5, 0, 7.5));
  EXPECT_THAT(std::vector<double>(out, out + 6), ElementsAre(4.75, 5.25, -0.25, 0.25, 7.25, 7.75));
}

TEST_F(PointWidget, PlacingMovesTheCrossAndItsBoundsWithoutModified)
{
  const vtkMTimeType before = this->Point->GetMTime();
  this->WatchBehind();
  double bounds[6] = { 4, 6, 4, 6, 4, 6 };
  this->Point->PlaceWidget(bounds);
  ExpectNear(this->Position(), { { 5, 5, 5 } });
  EXPECT_THAT(this->Bounds(), ElementsAre(3, 7, 3, 7, 3, 7));
  EXPECT_THAT(std::vector<double>(this->Point->InitialBounds, this->Point->InitialBounds + 6),
    ElementsAre(3, 7, 3, 7, 3, 7));
  EXPECT_DOUBLE_EQ(this->Point->InitialLength, std::sqrt(48.0));
  EXPECT_EQ(this->Point->GetMTime(), before);
  EXPECT_THAT(this->Renders.Events(), IsEmpty());
}

TEST_F(PointWidget, PlacingIsExactInTranslationModeToo)
{
  this->Point->Cursor3D->TranslationModeOn();
  this->Point->PlaceWidget(7, 9, -9, -7, 7, 9);
  ExpectNear(this->Position(), { { 8, -8, 8 } });
  EXPECT_THAT(this->Bounds(), ElementsAre(6, 10, -10, -6, 6, 10));
}

TEST_F(PointWidget, PlacingWithoutBoundsGoesThroughTheParent)
{
  this->Point->PlaceWidget();
  const std::vector<std::string> messages = this->TakeMessages();
  ASSERT_EQ(messages.size(), 1u); // the parent's complaint about neither input nor prop
  EXPECT_NE(messages.front().find("vtk3DWidget"), std::string::npos);
  ExpectNear(this->Position(), { { 0, 0, 0 } });
}

TEST_F(PointWidget, GivesItsPositionAsACopy)
{
  vtkNew<vtkPolyData> focus;
  this->Point->Cursor3D->SetFocalPoint(1.5, 2.5, 3.5);
  this->Point->GetPolyData(focus);
  ASSERT_EQ(focus->GetNumberOfPoints(), 1);
  World point;
  focus->GetPoint(0, point.data());
  ExpectNear(point, { { 1.5, 2.5, 3.5 } }, 1e-6);
  EXPECT_NE(focus->GetPoints(), this->Point->Cursor3D->GetFocus()->GetPoints());
  this->Point->GetPolyData(nullptr);
}

TEST_F(PointWidget, EnablingWithoutAnInteractorIsAnError)
{
  this->Point->SetInteractor(nullptr);
  this->Point->SetEnabled(1);
  this->ExpectVtkError("zvPointWidget", "vtk3DWidget", this->Point, NoInteractor);
  this->Point->SetEnabled(0);
  this->ExpectVtkError("zvPointWidget", "vtk3DWidget", this->Point, NoInteractor);
  EXPECT_EQ(this->Point->GetEnabled(), 0);
}

TEST_F(PointWidget, EnablingShowsTheCrossTellsAndRenders)
{
  this->Watch();
  this->WatchBehind();
  this->Enable();
  EXPECT_EQ(this->Point->GetEnabled(), 1);
  EXPECT_EQ(this->Point->GetCurrentRenderer(), this->Scene.Renderer());
  EXPECT_TRUE(this->Scene.Renderer()->HasViewProp(this->Point->Actor));
  EXPECT_EQ(this->Point->Actor->GetProperty(), this->Point->GetProperty());
  EXPECT_THAT(this->Told.Names(), ElementsAre("EnableEvent"));
  EXPECT_FALSE(this->Told.Events().front().HasData);
  EXPECT_EQ(this->Renders.Events().size(), 1u);
  EXPECT_TRUE(this->Scene.Look().HasNear(Red, this->OnCross(), 1));
}

TEST_F(PointWidget, EnablingAttachesTheSevenEventsAtItsPriority)
{
  this->Point->SetPriority(0.7f);
  this->Enable();
  for (unsigned long event : zvEvents::Point)
  {
    EXPECT_TRUE(this->Scene.Interactor()->HasObserver(event, this->Point->EventCallbackCommand))
      << vtkCommand::GetStringFromEventId(event);
  }
  for (unsigned long event : { vtkCommand::MouseWheelForwardEvent,
         vtkCommand::MouseWheelBackwardEvent, vtkCommand::CharEvent })
  {
    EXPECT_FALSE(this->Scene.Interactor()->HasObserver(event, this->Point->EventCallbackCommand))
      << vtkCommand::GetStringFromEventId(event);
  }
  zvtest::EventRecorder before;
  zvtest::EventRecorder after;
  before.Watch(this->Scene.Interactor(), MouseEvents, 0.8f);
  after.Watch(this->Scene.Interactor(), MouseEvents, 0.6f);
  this->Pointer.Press(zvtest::Left, this->OnCross());
  EXPECT_EQ(before.Events().size(), 1u);
  EXPECT_THAT(after.Events(), IsEmpty());
}

TEST_F(PointWidget, EnablingTwiceOrDisablingTwiceDoesNothingMore)
{
  this->Enable();
  this->Watch();
  this->WatchBehind();
  this->Enable();
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  this->Point->SetEnabled(0);
  this->Point->SetEnabled(0);
  EXPECT_THAT(this->Told.Names(), ElementsAre("DisableEvent"));
  EXPECT_EQ(this->Renders.Events().size(), 1u);
}

TEST_F(PointWidget, DisablingTakesItOutOfTheViewAndOffTheInteractor)
{
  this->Enable();
  this->Watch();
  this->Point->SetEnabled(0);
  EXPECT_EQ(this->Point->GetEnabled(), 0);
  EXPECT_EQ(this->Point->GetCurrentRenderer(), nullptr);
  EXPECT_FALSE(this->Scene.Renderer()->HasViewProp(this->Point->Actor));
  EXPECT_THAT(this->Told.Names(), ElementsAre("DisableEvent"));
  EXPECT_FALSE(this->Told.Events().front().HasData);
  EXPECT_FALSE(this->Scene.Interactor()->HasObserver(
    vtkCommand::LeftButtonPressEvent, this->Point->EventCallbackCommand));
  EXPECT_EQ(this->Scene.Look().Count(Red), 0);
}

TEST_F(PointWidget, WithoutARendererInTheWindowItStaysDisabled)
{
  this->Watch();
  this->Scene.DropRenderers();
  this->Enable();
  EXPECT_EQ(this->Point->GetEnabled(), 0);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
}

TEST_F(PointWidget, ShowsItselfInTheRendererThatItWasGiven)
{
  vtkNew<vtkRenderer> other;
  other->SetViewport(0.5, 0.0, 1.0, 1.0);
  this->Scene.Window()->AddRenderer(other);
  this->Point->SetCurrentRenderer(other);
  this->Enable();
  EXPECT_TRUE(other->HasViewProp(this->Point->Actor));
  EXPECT_FALSE(this->Scene.Renderer()->HasViewProp(this->Point->Actor));
}

TEST_P(PointWidgetButtons, APressOnTheCrossGrabsIt)
{
  this->Enable();
  this->Watch();
  this->WatchBehind();
  this->Pointer.Press(GetParam().Button, this->OnCross());
  EXPECT_EQ(this->Point->State, GetParam().State);
  EXPECT_EQ(this->Point->Actor->GetProperty(), this->Point->GetSelectedProperty());
  EXPECT_EQ(this->Point->ValidPick, 1);
  ExpectNear({ { this->Point->LastPickPosition[0], this->Point->LastPickPosition[1], 0 } },
    { { Center[0], Center[1], 0 } }, 0.1);
  EXPECT_THAT(this->Told.Names(), ElementsAre("StartInteractionEvent"));
  EXPECT_FALSE(this->Told.Events().front().HasData);
  EXPECT_THAT(this->Behind.Events(), IsEmpty());
  EXPECT_EQ(this->Renders.Events().size(), 1u);
  EXPECT_TRUE(this->Scene.Look().HasNear(Red, this->OnCross(), 1));
}

TEST_P(PointWidgetButtons, APressBesideTheCrossGoesToOthers)
{
  this->Enable();
  this->Point->ConstraintAxis = 1;
  this->Watch();
  this->WatchBehind();
  this->Pointer.Press(GetParam().Button, this->Beside());
  EXPECT_EQ(this->Point->State, zvPointWidget::Outside);
  EXPECT_EQ(this->Point->ConstraintAxis, -1);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  EXPECT_EQ(this->Behind.Events().size(), 1u);
  EXPECT_THAT(this->Renders.Events(), IsEmpty());
}

TEST_P(PointWidgetButtons, APressOutsideTheViewGoesToOthersAndForgetsNoAxis)
{
  this->Scene.Renderer()->SetViewport(0.0, 0.0, 0.5, 1.0);
  this->Enable();
  this->Point->ConstraintAxis = 1;
  this->Watch();
  this->WatchBehind();
  this->Pointer.Press(GetParam().Button, { { 300, 200 } });
  EXPECT_EQ(this->Point->State, zvPointWidget::Outside);
  EXPECT_EQ(this->Point->ConstraintAxis, 1);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  EXPECT_EQ(this->Behind.Events().size(), 1u);
}

TEST_P(PointWidgetButtons, AnyReleaseEndsTheDrag)
{
  for (zvtest::Button released : { zvtest::Left, zvtest::Middle, zvtest::Right })
  {
    SCOPED_TRACE(released);
    this->Point->SetEnabled(0);
    this->Enable();
    this->Pointer.Press(GetParam().Button, this->OnCross());
    zvtest::EventRecorder told;
    zvtest::EventRecorder behind;
    zvtest::EventRecorder renders;
    told.Watch(this->Point, zvtest::WidgetEvents);
    behind.Watch(this->Scene.Interactor(), MouseEvents, 0.1f);
    renders.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
    this->Pointer.Release(released);
    EXPECT_EQ(this->Point->State, zvPointWidget::Start);
    EXPECT_EQ(this->Point->Actor->GetProperty(), this->Point->GetProperty());
    EXPECT_THAT(told.Names(), ElementsAre("EndInteractionEvent"));
    EXPECT_THAT(behind.Events(), IsEmpty());
    EXPECT_EQ(renders.Events().size(), 1u);
  }
}

TEST_P(PointWidgetButtons, AReleaseAfterAMissLeavesOutsideInPlace)
{
  this->Enable();
  this->Pointer.Press(GetParam().Button, this->Beside());
  this->Watch();
  this->WatchBehind();
  this->Pointer.Release(GetParam().Button);
  EXPECT_EQ(this->Point->State, zvPointWidget::Outside);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  EXPECT_EQ(this->Behind.Events().size(), 1u);
  EXPECT_THAT(this->Renders.Events(), IsEmpty());
}

TEST_P(PointWidgetButtons, AReleaseAtRestDoesNothing)
{
  this->Enable();
  this->Watch();
  this->WatchBehind();
  this->Pointer.Release(GetParam().Button, this->OnCross());
  EXPECT_EQ(this->Point->State, zvPointWidget::Start);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  EXPECT_EQ(this->Behind.Events().size(), 1u);
}

TEST_P(PointWidgetButtons, AMoveOfADragTellsAndRendersOnce)
{
  this->Enable();
  this->Pointer.Press(GetParam().Button, this->OnCross());
  this->Watch();
  this->WatchBehind();
  this->Pointer.MoveTo(Plus(this->OnCross(), 20, 10));
  EXPECT_EQ(this->Point->State, GetParam().State);
  EXPECT_THAT(this->Told.Names(), ElementsAre("InteractionEvent"));
  EXPECT_FALSE(this->Told.Events().front().HasData);
  EXPECT_THAT(this->Behind.Events(), IsEmpty());
  EXPECT_EQ(this->Renders.Events().size(), 1u);
}

TEST_P(PointWidgetButtons, AMoveAfterAMissDoesNothing)
{
  this->Enable();
  this->Pointer.Press(GetParam().Button, this->Beside());
  this->Watch();
  this->WatchBehind();
  this->Pointer.MoveTo(this->OnCross());
  ExpectNear(this->Position(), Center);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  EXPECT_EQ(this->Behind.Events().size(), 1u);
  EXPECT_THAT(this->Renders.Events(), IsEmpty());
}

TEST_P(PointWidgetButtons, ADragAsksForQuickPictures)
{
  vtkRenderWindowInteractor* interactor = this->Scene.Interactor();
  ASSERT_NE(interactor->GetDesiredUpdateRate(), interactor->GetStillUpdateRate());
  this->Enable();
  this->Pointer.Press(GetParam().Button, this->OnCross());
  EXPECT_EQ(this->Scene.Window()->GetDesiredUpdateRate(), interactor->GetDesiredUpdateRate());
  this->Pointer.Release(GetParam().Button);
  EXPECT_EQ(this->Scene.Window()->GetDesiredUpdateRate(), interactor->GetStillUpdateRate());
}

TEST_F(PointWidget, AnswersEachEventInEachStateAsTheTableSays)
{
  using Names = std::vector<std::string>;
  struct Answer
  {
    int Next;
    Names Heard; // told by the widget, rendered, or come to whoever stands behind it
  };
  struct Row
  {
    std::string Event;
    std::function<void()> Do;
    Answer InADrag;
    Answer Otherwise;
  };
  struct ButtonNames
  {
    zvtest::Button Button;
    const char* Press;
    const char* Release;
    int Next;
  };
  constexpr int AsBefore = -1;
  this->Scene.Renderer()->SetViewport(0.0, 0.0, 0.9, 1.0);
  this->Scene.Render();
  const Display out{ { 380, 200 } };
  const Answer ends{ zvPointWidget::Start, { "EndInteractionEvent", "RenderEvent" } };
  std::vector<Row> rows = { { "move",
    [this] { this->Pointer.MoveTo(Plus(this->OnCross(), 15, -9)); },
    { AsBefore, { "InteractionEvent", "RenderEvent" } }, { AsBefore, { "MouseMoveEvent" } } } };
  for (const ButtonNames& button : { ButtonNames{ zvtest::Left, "LeftButtonPressEvent",
                                       "LeftButtonReleaseEvent", zvPointWidget::Moving },
         ButtonNames{ zvtest::Middle, "MiddleButtonPressEvent", "MiddleButtonReleaseEvent",
           zvPointWidget::Translating },
         ButtonNames{ zvtest::Right, "RightButtonPressEvent", "RightButtonReleaseEvent",
           zvPointWidget::Scaling } })
  {
    const Answer grabs{ button.Next, { "StartInteractionEvent", "RenderEvent" } };
    const Answer misses{ zvPointWidget::Outside, { button.Press } };
    rows.push_back({ std::string(button.Press) + " on the cross",
      [this, button] { this->Pointer.Press(button.Button, this->OnCross()); }, grabs, grabs });
    rows.push_back({ std::string(button.Press) + " beside it",
      [this, button] { this->Pointer.Press(button.Button, this->Beside()); }, misses, misses });
    rows.push_back({ std::string(button.Press) + " outside the view",
      [this, button, out] { this->Pointer.Press(button.Button, out); }, misses, misses });
    rows.push_back(
      { button.Release, [this, button] { this->Pointer.Release(button.Button, this->OnCross()); },
        ends, { AsBefore, { button.Release } } });
  }
  this->Enable();
  for (int state : { zvPointWidget::Start, zvPointWidget::Moving, zvPointWidget::Scaling,
         zvPointWidget::Translating, zvPointWidget::Outside })
  {
    for (const Row& row : rows)
    {
      SCOPED_TRACE(row.Event + " in state " + std::to_string(state));
      this->Point->PlaceWidget(0.5, 1.5, 1.5, 2.5, 2.5, 3.5);
      this->Point->State = state;
      zvtest::EventRecorder recorder;
      recorder.Watch(this->Point, zvtest::WidgetEvents);
      recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
      recorder.Watch(this->Scene.Interactor(), MouseEvents, 0.1f);
      row.Do();
      const bool isDrag = state != zvPointWidget::Start && state != zvPointWidget::Outside;
      const Answer& answer = isDrag ? row.InADrag : row.Otherwise;
      EXPECT_EQ(this->Point->State, answer.Next == AsBefore ? state : answer.Next);
      EXPECT_EQ(recorder.Names(), answer.Heard);
    }
  }
}

TEST_F(PointWidget, AMoveAtRestDoesNothing)
{
  this->Enable();
  this->Watch();
  this->WatchBehind();
  this->Pointer.MoveTo(this->OnCross());
  EXPECT_EQ(this->Point->State, zvPointWidget::Start);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  EXPECT_EQ(this->Behind.Events().size(), 1u);
  EXPECT_THAT(this->Renders.Events(), IsEmpty());
}

TEST_F(PointWidget, AMissWithTheLeftButtonPutsTheLookBackAndWithTheMiddleLeavesItByDesign)
{
  this->Enable();
  this->Pointer.Press(zvtest::Left, this->OnCross());
  this->Pointer.Press(zvtest::Middle, this->Beside());
  EXPECT_EQ(this->Point->Actor->GetProperty(), this->Point->GetSelectedProperty());
  this->Pointer.Press(zvtest::Right, this->Beside());
  EXPECT_EQ(this->Point->Actor->GetProperty(), this->Point->GetSelectedProperty());
  this->Pointer.Press(zvtest::Left, this->Beside());
  EXPECT_EQ(this->Point->Actor->GetProperty(), this->Point->GetProperty());
}

TEST_F(PointWidget, ALeftDragMovesThePositionAndNotTheBounds)
{
  this->Enable();
  const std::vector<double> bounds = this->Bounds();
  const Display from = this->OnCross();
  const Display to = Plus(from, 10, -15);
  this->Pointer.Press(zvtest::Left, from);
  this->Pointer.MoveTo(to);
  const World motion = this->MotionOf(from, to);
  ExpectNear(this->Position(), { { 1 + motion[0], 2 + motion[1], 3 } });
  EXPECT_EQ(this->Bounds(), bounds);
}

TEST_F(PointWidget, AMiddleDragTakesTheBoundsAlong)
{
  for (int translationMode : { 0, 1 })
  {
    SCOPED_TRACE(translationMode);
    this->Point->Cursor3D->SetTranslationMode(0);
    this->Point->PlaceWidget(0.5, 1.5, 1.5, 2.5, 2.5, 3.5);
    this->Point->Cursor3D->SetTranslationMode(translationMode);
    this->Enable();
    const Display from = this->OnCross();
    const Display to = Plus(from, 30, 20);
    this->Pointer.Drag(zvtest::Middle, from, to);
    const World motion = this->MotionOf(from, to);
    const World moved{ { 1 + motion[0], 2 + motion[1], 3 } };
    ExpectNear(this->Position(), moved);
    for (int i = 0; i < 6; ++i)
    {
      EXPECT_NEAR(this->Bounds()[i], moved[i / 2] + (i % 2 ? 2 : -2), 1e-9) << i;
    }
  }
}

TEST_F(PointWidget, ARightDragUpGrowsTheCrossAboutItsPosition)
{
  this->Enable();
  const Display from = this->OnCross();
  const Display to = Plus(from, 5, 12);
  const World motion = this->MotionOf(from, to);
  this->Pointer.Press(zvtest::Right, from);
  this->Pointer.MoveTo(to);
  const double factor = 1.0 + std::hypot(motion[0], motion[1]) / std::sqrt(48.0);
  ExpectNear(this->Position(), Center);
  for (int i = 0; i < 6; ++i)
  {
    EXPECT_NEAR(this->Bounds()[i], Center[i / 2] + (i % 2 ? 2 : -2) * factor, 1e-9) << i;
  }
}

TEST_F(PointWidget, ARightDragDownOrLevelShrinksTheCross)
{
  this->Enable();
  const Display from = this->OnCross();
  const Display down = Plus(from, 0, -6);
  const Display level = Plus(down, 6, 0);
  this->Pointer.Press(zvtest::Right, from);
  this->Pointer.MoveTo(down);
  const double once = 2.0 * (1.0 - std::abs(this->MotionOf(from, down)[1]) / std::sqrt(48.0));
  EXPECT_NEAR(this->Bounds()[1], 1.0 + once, 1e-9);
  this->Pointer.MoveTo(level);
  const double diagonal = std::sqrt(12.0) * once;
  const double twice = once * (1.0 - std::abs(this->MotionOf(down, level)[0]) / diagonal);
  EXPECT_NEAR(this->Bounds()[1], 1.0 + twice, 1e-9);
}

TEST_F(PointWidget, ACrossShrunkByMoreThanItsSizeStaysAboutItsPosition)
{
  this->Enable();
  const Display from = this->OnCross();
  const Display to = Plus(from, 0, -190);
  this->Pointer.Press(zvtest::Right, from);
  this->Pointer.MoveTo(to);
  const double factor = 1.0 - std::abs(this->MotionOf(from, to)[1]) / std::sqrt(48.0);
  ASSERT_LT(factor, -1.0);
  ExpectNear(this->Position(), Center);
  for (int i = 0; i < 6; ++i)
  {
    EXPECT_NEAR(this->Bounds()[i], Center[i / 2] + (i % 2 ? -2 : 2) * factor, 1e-9) << i;
  }
}

TEST_F(PointWidget, ACrossWithoutSizeStaysWhenScaled)
{
  this->Enable();
  this->Point->Cursor3D->SetModelBounds(1, 1, 2, 2, 3, 3);
  double from[3] = { 0, 0, 0 };
  double to[3] = { 1, 1, 1 };
  this->Point->Scale(from, to, 10, 10);
  EXPECT_THAT(this->Bounds(), ElementsAre(1, 1, 2, 2, 3, 3));
}

TEST_F(PointWidget, ARightPressTakesTheAxisThatItHits)
{
  this->Enable();
  this->Pointer.Press(zvtest::Right, this->Pointer.At({ { 2.5, 2, 3 } }));
  EXPECT_EQ(this->Point->ConstraintAxis, 0);
  this->Pointer.Release(zvtest::Right);
  this->Pointer.Press(zvtest::Right, this->Pointer.At({ { 1, 3.5, 3 } }));
  EXPECT_EQ(this->Point->ConstraintAxis, 1);
}

TEST_F(PointWidget, ARightPressOnTheOutlineKeepsTheAxis)
{
  this->Point->Cursor3D->OutlineOn();
  this->Enable();
  this->Point->ConstraintAxis = 1;
  this->Pointer.Press(zvtest::Right, this->Pointer.At({ { 3, 3, 3 } }));
  EXPECT_EQ(this->Point->State, zvPointWidget::Scaling);
  EXPECT_GT(this->Point->CursorPicker->GetCellId(), 2);
  EXPECT_EQ(this->Point->ConstraintAxis, 1);
}

TEST_F(PointWidget, FourMovesWithShiftDoNothingAndTheFifthTakesTheAxisOfTheLargestMotion)
{
  this->Enable();
  const Display from = this->OnCross();
  this->Pointer.Press(zvtest::Left, from, zvtest::Shift);
  EXPECT_EQ(this->Point->WaitingForMotion, 1);
  this->Watch();
  this->WatchBehind();
  for (int step = 1; step <= 4; ++step)
  {
    this->Pointer.MoveTo(Plus(from, step * 5, step * 2), zvtest::Shift);
    EXPECT_EQ(this->Point->WaitCount, step);
  }
  ExpectNear(this->Position(), Center);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  EXPECT_THAT(this->Renders.Events(), IsEmpty());
  EXPECT_EQ(this->Behind.Events().size(), 4u);

  const Display fourth = this->Pointer.Position();
  const Display fifth = Plus(from, 26, 14);
  this->Pointer.MoveTo(fifth, zvtest::Shift);
  EXPECT_EQ(this->Point->ConstraintAxis, 0);
  EXPECT_EQ(this->Point->WaitingForMotion, 0);
  ExpectNear(this->Position(), { { 1 + this->MotionOf(fourth, fifth)[0], 2, 3 } });
  EXPECT_THAT(this->Told.Names(), ElementsAre("InteractionEvent"));
  EXPECT_EQ(this->Renders.Events().size(), 1u);
}

TEST_F(PointWidget, TheAxisIsKeptWhileShiftIsHeldAndFreedWithIt)
{
  this->Enable();
  const Display from = this->OnCross();
  this->Pointer.Press(zvtest::Middle, from, zvtest::Shift);
  for (int step = 1; step <= 5; ++step)
  {
    this->Pointer.MoveTo(Plus(from, step, step * 3), zvtest::Shift);
  }
  EXPECT_EQ(this->Point->ConstraintAxis, 1);
  const World before = this->Position();
  this->Pointer.MoveTo(Plus(from, 40, 20), zvtest::Shift);
  EXPECT_EQ(this->Point->ConstraintAxis, 1);
  EXPECT_DOUBLE_EQ(this->Position()[0], before[0]);
  EXPECT_GT(this->Position()[1], before[1]);
  this->Pointer.MoveTo(Plus(from, 45, 20));
  EXPECT_EQ(this->Point->ConstraintAxis, -1);
  EXPECT_GT(this->Position()[0], before[0]);
}

TEST_F(PointWidget, WithoutShiftADragIsFreeFromTheFirstMove)
{
  this->Enable();
  this->Pointer.Press(zvtest::Left, this->OnCross());
  EXPECT_EQ(this->Point->WaitingForMotion, 0);
  EXPECT_EQ(this->Point->ConstraintAxis, -1);
  this->Pointer.MoveTo(Plus(this->OnCross(), 3, 3));
  EXPECT_GT(this->Position()[0], 1.0);
  EXPECT_GT(this->Position()[1], 2.0);
}

TEST_F(PointWidget, AWaitThatIsCutShortGoesOnInTheNextDragByDesign)
{
  this->Enable();
  const Display from = this->OnCross();
  this->Pointer.Press(zvtest::Left, from, zvtest::Shift);
  this->Pointer.MoveTo(Plus(from, 1, 0), zvtest::Shift);
  this->Pointer.Release(zvtest::Left);
  EXPECT_EQ(this->Point->WaitingForMotion, 1);
  this->Pointer.Press(zvtest::Left, from);
  for (int step = 1; step <= 3; ++step)
  {
    this->Pointer.MoveTo(Plus(from, step, 0));
    ExpectNear(this->Position(), Center);
  }
  this->Pointer.MoveTo(Plus(from, 4, 0));
  EXPECT_GT(this->Position()[0], 1.0);
}

TEST_F(PointWidget, AWaitForAnAxisDoesNotHoldUpScaling)
{
  this->Enable();
  this->Pointer.Press(zvtest::Left, this->OnCross(), zvtest::Shift);
  this->Pointer.Release(zvtest::Left, zvtest::Shift);
  ASSERT_EQ(this->Point->WaitingForMotion, 1);
  const std::vector<double> bounds = this->Bounds();
  this->Pointer.Press(zvtest::Right, this->OnCross());
  this->Watch();
  this->Pointer.MoveTo(Plus(this->OnCross(), 0, 12));
  EXPECT_THAT(this->Told.Names(), ElementsAre("InteractionEvent"));
  EXPECT_GT(this->Bounds()[1], bounds[1]);
}

TEST_F(PointWidget, TheAxisIsChosenByStateOfTheKeysTheWaitAndTheMotion)
{
  struct Row
  {
    const char* Name;
    int Shift, Constraint, Waiting;
    World Motion;
    int Axis;
  };
  const Row rows[] = {
    { "no shift", 0, 1, 0, { { 9, 0, 0 } }, -1 },
    { "kept", 1, 2, 0, { { 9, 0, 0 } }, 2 },
    { "x largest", 1, -1, 1, { { 3, 1, 2 } }, 0 },
    { "y largest backwards", 1, -1, 1, { { 1, -3, 2 } }, 1 },
    { "z largest", 1, -1, 1, { { 1, 1, 4 } }, 2 },
    { "x and y equal", 1, -1, 1, { { 2, 2, 1 } }, 1 },
    { "x and z equal", 1, -1, 1, { { -2, 1, 2 } }, 2 },
    { "all equal", 1, -1, 1, { { 1, 1, 1 } }, 2 },
    { "out of range", 1, 3, 1, { { 3, 1, 2 } }, 0 },
  };
  for (const Row& row : rows)
  {
    SCOPED_TRACE(row.Name);
    this->Scene.Interactor()->SetShiftKey(row.Shift);
    this->Point->WaitingForMotion = row.Waiting;
    World x = Center;
    for (int axis = 0; axis < 3; ++axis)
    {
      this->Point->LastPickPosition[axis] = Center[axis];
      x[axis] += row.Motion[axis];
    }
    EXPECT_EQ(this->Point->DetermineConstraintAxis(row.Constraint, x.data()), row.Axis);
  }
}

TEST_F(PointWidget, FarFromTheLastPickTheAxisIsTheOneThatWasHit)
{
  this->Enable();
  this->Pointer.Press(zvtest::Right, this->Pointer.At({ { 1, 3.5, 3 } }));
  this->Scene.Interactor()->SetShiftKey(1);
  this->Point->SetHotSpotSize(0.05); // of a diagonal of 6.93
  this->Point->LastPickPosition[1] += 0.4;
  EXPECT_EQ(this->Point->DetermineConstraintAxis(-1, nullptr), 1);
  EXPECT_EQ(this->Point->WaitingForMotion, 0);
  this->Point->LastPickPosition[1] -= 0.1;
  EXPECT_EQ(this->Point->DetermineConstraintAxis(-1, nullptr), -1);
  EXPECT_EQ(this->Point->WaitingForMotion, 1);
  EXPECT_EQ(this->Point->DetermineConstraintAxis(-1, nullptr), -1);
}

TEST_F(PointWidget, AConstraintThatIsNoAxisIsNone)
{
  double from[3] = { 0, 0, 0 };
  double to[3] = { 0.5, 0.25, 0.125 };
  this->Point->ConstraintAxis = 7;
  this->Point->MoveFocus(from, to);
  ExpectNear(this->Position(), { { 1.5, 2.25, 3.125 } });
}

TEST_F(PointWidget, TheCrossIsOnScreenInItsNewPlaceAfterEachMove)
{
  this->Point->Cursor3D->TranslationModeOn();
  this->Enable();
  const Display from = this->OnCross();
  const World start = this->Scene.WorldAt(from, Center);
  this->Pointer.Press(zvtest::Left, from);
  for (int step = 1; step <= 4; ++step)
  {
    const Display to = Plus(from, -step * 20, -step * 25);
    this->Pointer.MoveTo(to);
    const World position = this->Position();
    const zvtest::Picture picture = this->Scene.Look();
    EXPECT_TRUE(picture.HasNear(Red, this->Pointer.At(position), 1)) << step;
    EXPECT_TRUE(picture.HasNear(
      Red, this->Pointer.At({ { position[0] + 1.8, position[1], position[2] } }), 1))
      << step;
    EXPECT_EQ(picture.Count(Red, zvtest::Region::Around(Plus(from, 24, 0), 3)), 0) << step;
  }
  EXPECT_NEAR(
    this->Position()[0] - 1.0, this->Scene.WorldAt(Plus(from, -80, 0), Center)[0] - start[0], 1e-9);
}

TEST_F(PointWidget, EventsReachTheVirtualHandlers)
{
  auto noting = vtkSmartPointer<NotingPoint>::Take(new NotingPoint);
  for (unsigned long event : zvEvents::Point)
  {
    zvPointWidget::ProcessEvents(nullptr, event, noting.Get(), nullptr);
  }
  EXPECT_THAT(noting->Calls,
    ElementsAre("move", "left press", "left release", "middle press", "middle release",
      "right press", "right release"));
  noting->Calls.clear();
  for (unsigned long event :
    { vtkCommand::MouseWheelForwardEvent, vtkCommand::MouseWheelBackwardEvent,
      vtkCommand::CharEvent, vtkCommand::LeftButtonDoubleClickEvent, vtkCommand::EnableEvent })
  {
    zvPointWidget::ProcessEvents(nullptr, event, noting.Get(), nullptr);
  }
  EXPECT_THAT(noting->Calls, IsEmpty());
}

TEST_F(PointWidget, HandlersAreHarmlessWithoutAnInteractorOrARenderer)
{
  auto lone = vtkSmartPointer<OpenPoint>::Take(new OpenPoint);
  double from[3] = { 0, 0, 0 };
  double to[3] = { 1, 1, 1 };
  for (int i = 0; i < 2; ++i)
  {
    for (unsigned long event : zvEvents::Point)
    {
      for (int state : { zvPointWidget::Moving, zvPointWidget::Scaling, zvPointWidget::Outside })
      {
        lone->State = state;
        zvPointWidget::ProcessEvents(nullptr, event, lone.Get(), nullptr);
      }
    }
    EXPECT_EQ(lone->DetermineConstraintAxis(0, to), -1);
    lone->Scale(from, to, 0, 0);
    lone->SetInteractor(this->Scene.Interactor());
  }
  EXPECT_EQ(lone->State, zvPointWidget::Outside);
}

TEST_F(PointWidget, ADragThatDisablingCutsOffIsOver)
{
  this->Enable();
  this->Pointer.Press(zvtest::Left, this->OnCross());
  this->Point->SetEnabled(0);
  this->Enable();
  this->Pointer.MoveTo(this->Beside());
  ExpectNear(this->Position(), Center);
}

TEST_F(PointWidget, WithoutAnArrayNothingChanges)
{
  const std::vector<double> bounds = this->Bounds();
  double box[6] = { 4, 6, 4, 6, 4, 6 };
  double xyz[3] = { 1, 1, 1 };
  const char* const noBounds = "give bounds to place the cross in...";
  const char* const noMotion = "give both ends of the motion before moving the cross...";
  const std::vector<std::pair<const char*, std::function<void()>>> rows = {
    { noBounds, [&] { this->Point->PlaceWidget(nullptr); } },
    { noBounds, [&] { this->Point->AdjustBounds(nullptr, box, xyz); } },
    { noBounds, [&] { this->Point->AdjustBounds(box, nullptr, xyz); } },
    { noBounds, [&] { this->Point->AdjustBounds(box, box, nullptr); } },
    { noMotion, [&] { this->Point->MoveFocus(nullptr, xyz); } },
    { noMotion, [&] { this->Point->MoveFocus(xyz, nullptr); } },
    { noMotion, [&] { this->Point->Translate(nullptr, xyz); } },
    { noMotion, [&] { this->Point->Translate(xyz, nullptr); } },
    { noMotion, [&] { this->Point->Scale(nullptr, xyz, 0, 9); } },
    { noMotion, [&] { this->Point->Scale(xyz, nullptr, 0, 9); } },
  };
  for (const auto& [message, call] : rows)
  {
    call();
    this->ExpectGenericWarning("zvPointWidget", message);
    ExpectNear(this->Position(), Center, 0.0);
    EXPECT_EQ(this->Bounds(), bounds);
  }
  EXPECT_THAT(std::vector<double>(box, box + 6), ElementsAre(4, 6, 4, 6, 4, 6));
  EXPECT_THAT(std::vector<double>(xyz, xyz + 3), ElementsAre(1, 1, 1));
}

TEST_F(PointWidget, NotANumberIsDrawnNowhere)
{
  const double nan = std::numeric_limits<double>::quiet_NaN();
  this->Enable();
  this->Point->PlaceWidget(nan, nan, nan, nan, nan, nan);
  EXPECT_EQ(this->Scene.RenderAndLook().Count(Red), 0);
  this->Pointer.Press(zvtest::Left, this->OnCross());
  EXPECT_EQ(this->Point->State, zvPointWidget::Outside);
}

TEST_F(PointWidget, MayBeReleasedFromItsOwnEvents)
{
  for (unsigned long event : { vtkCommand::EnableEvent, vtkCommand::StartInteractionEvent,
         vtkCommand::InteractionEvent, vtkCommand::EndInteractionEvent, vtkCommand::DisableEvent })
  {
    SCOPED_TRACE(vtkCommand::GetStringFromEventId(event));
    auto* point = new zvPointWidget;
    vtkWeakPointer<vtkObject> alive = point;
    point->SetInteractor(this->Scene.Interactor());
    zvtest::EventRecorder recorder;
    recorder.Watch(point, { event }, [&](const zvtest::RecordedEvent&) { point->Delete(); });
    point->SetEnabled(1);
    const Display origin = this->Pointer.At({ { 0, 0, 0 } });
    this->Pointer.Drag(zvtest::Left, origin, Plus(origin, 10, 10));
    if (alive)
    {
      point->SetEnabled(0);
    }
    EXPECT_EQ(alive, nullptr);
    EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
  }
}

TEST_F(PointWidget, MayBeDisabledOrLoseItsInteractorInItsOwnEvents)
{
  for (unsigned long event : { vtkCommand::StartInteractionEvent, vtkCommand::InteractionEvent,
         vtkCommand::EndInteractionEvent })
  {
    for (bool takeInteractor : { false, true })
    {
      SCOPED_TRACE(vtkCommand::GetStringFromEventId(event));
      this->Point->SetInteractor(this->Scene.Interactor());
      this->Point->PlaceWidget(0.5, 1.5, 1.5, 2.5, 2.5, 3.5);
      this->Enable();
      zvtest::EventRecorder recorder;
      recorder.Watch(this->Point, { event },
        [&](const zvtest::RecordedEvent&)
        { takeInteractor ? this->Point->SetInteractor(nullptr) : this->Point->SetEnabled(0); });
      this->Pointer.Drag(zvtest::Left, this->OnCross(), Plus(this->OnCross(), 10, 10));
      EXPECT_EQ(recorder.Count(event), 1);
      EXPECT_EQ(this->Point->GetEnabled(), 0);
      EXPECT_FALSE(this->Scene.Renderer()->HasViewProp(this->Point->Actor));
    }
  }
}

TEST_F(PointWidget, MayBeEnabledAgainWhenItIsDisabled)
{
  this->Enable();
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Point, { vtkCommand::DisableEvent },
    [&](const zvtest::RecordedEvent&) { this->Enable(); });
  this->Point->SetEnabled(0);
  EXPECT_EQ(this->Point->GetEnabled(), 1);
  this->Pointer.Press(zvtest::Left, this->OnCross());
  EXPECT_EQ(this->Point->State, zvPointWidget::Moving);
}

TEST_F(PointWidget, DeletedWhileGrabbedLeavesNothingBehind)
{
  for (bool plainDelete : { false, true })
  {
    auto* point = new OpenPoint;
    vtkSmartPointer<vtkCommand> command = point->EventCallbackCommand;
    point->SetInteractor(this->Scene.Interactor());
    point->SetEnabled(1);
    this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 0, 0, 0 } }));
    EXPECT_EQ(point->State, zvPointWidget::Moving);
    if (plainDelete)
    {
      delete point;
    }
    else
    {
      point->Delete();
    }
    for (unsigned long event : zvEvents::Point)
    {
      EXPECT_FALSE(this->Scene.Interactor()->HasObserver(event, command));
    }
    EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
    this->Pointer.MoveTo(this->Beside());
    this->Pointer.Release(zvtest::Left);
  }
}

TEST_F(PointWidget, OutlivesItsRenderersInMidDrag)
{
  this->Enable();
  this->Pointer.Press(zvtest::Left, this->OnCross());
  const Display beside = this->Beside();
  this->Scene.DropRenderers();
  this->Pointer.MoveTo(beside);
  ExpectNear(this->Position(), Center);
  this->Pointer.Press(zvtest::Left, beside);
  EXPECT_EQ(this->Point->State, zvPointWidget::Outside);
  this->Point->SetEnabled(0);
  EXPECT_EQ(this->Point->GetEnabled(), 0);
}

TEST_F(PointWidget, LosesItsRendererAndIsStillDisabledWithoutATrace)
{
  this->Enable();
  this->Pointer.Press(zvtest::Left, this->OnCross());
  this->Point->SetCurrentRenderer(nullptr);
  this->Pointer.MoveTo(this->Beside());
  ExpectNear(this->Position(), Center);
  this->Pointer.Press(zvtest::Left, this->OnCross());
  EXPECT_EQ(this->Point->State, zvPointWidget::Outside);
  this->Point->SetEnabled(0);
  EXPECT_EQ(this->Point->GetEnabled(), 0);
  EXPECT_FALSE(this->Scene.Renderer()->HasViewProp(this->Point->Actor));
}

TEST_F(PointWidget, OutlivesItsView)
{
  this->Enable();
  this->Pointer.Press(zvtest::Left, this->OnCross());
  this->Scene.DropRenderers();
  this->Scene.DropInteractor();
  this->Scene.DropWindow();
  EXPECT_EQ(this->Point->GetInteractor(), nullptr);
  EXPECT_EQ(this->Point->GetEnabled(), 0);
}
