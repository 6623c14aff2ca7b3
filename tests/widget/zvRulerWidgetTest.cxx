#include "zvRulerWidget.h"

#include "zvEvents.h"
#include "zvPointWidget.h"
#include "zvTestKit.h"

#include "vtkActor.h"
#include "vtkCallbackCommand.h"
#include "vtkCamera.h"
#include "vtkCellPicker.h"
#include "vtkCursor3D.h"
#include "vtkFollower.h"
#include "vtkLineSource.h"
#include "vtkNew.h"
#include "vtkObjectFactory.h"
#include "vtkPolyData.h"
#include "vtkPolyDataMapper.h"
#include "vtkPropCollection.h"
#include "vtkProperty.h"
#include "vtkRenderWindow.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"
#include "vtkSmartPointer.h"
#include "vtkSphereSource.h"
#include "vtkVectorText.h"
#include "vtkVersion.h"
#include "vtkWeakPointer.h"

#include <gmock/gmock.h>

#include <cmath>
#include <functional>
#include <limits>
#include <sstream>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zvtest::Display;
using zvtest::World;

namespace
{
const zvtest::Color Red{ 255, 0, 0 };
constexpr char NoInteractor[] = "The interactor must be set prior to enabling/disabling widget";

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

class ReplacedRuler : public zvRulerWidget
{
public:
  static ReplacedRuler* New() { return new ReplacedRuler; }
  vtkTypeMacro(ReplacedRuler, zvRulerWidget)
};

class Factory : public vtkObjectFactory
{
public:
  static Factory* New() { return new Factory; }
  vtkTypeMacro(Factory, vtkObjectFactory)
  const char* GetVTKSourceVersion() override { return VTK_SOURCE_VERSION; }
  const char* GetDescription() override { return "replaces zvRulerWidget"; }

private:
  static vtkObject* Make() { return ReplacedRuler::New(); }
  Factory()
  {
    this->RegisterOverride("zvRulerWidget", "ReplacedRuler", "for the test", 1, &Factory::Make);
  }
};

// A ruler from (-5, 0, 0) to (5, 0, 0), seen from above.
class RulerWidget : public zvtest::QuietTest
{
protected:
  RulerWidget()
    : Pointer(Scene)
    , Ruler(vtkSmartPointer<OpenRuler>::New())
  {
    this->Scene.LookAlong(2);
    const double view[6] = { -10, 10, -10, 10, -10, 10 };
    this->Scene.ResetCamera(view);
    this->Scene.Render();
    this->Ruler->SetInteractor(this->Scene.Interactor());
    this->Ruler->SetPoint1(-5, 0, 0);
    this->Ruler->SetPoint2(5, 0, 0);
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
    this->Behind.Watch(this->Scene.Interactor(),
      { vtkCommand::MouseMoveEvent, vtkCommand::LeftButtonPressEvent,
        vtkCommand::LeftButtonReleaseEvent, vtkCommand::MiddleButtonPressEvent,
        vtkCommand::MiddleButtonReleaseEvent, vtkCommand::RightButtonPressEvent,
        vtkCommand::RightButtonReleaseEvent, vtkCommand::MouseWheelForwardEvent,
        vtkCommand::MouseWheelBackwardEvent },
      0.1f);
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

std::vector<double> ColorOf(const double* color)
{
  return { color, color + 3 };
}
}

TEST_F(RulerWidget, ReportsItsOwnNameAndItsAncestors)
{
  vtkNew<zvRulerWidget> ruler;
  EXPECT_STREQ(ruler->GetClassName(), "zvRulerWidget");
  for (const char* name : { "zvRulerWidget", "vtk3DWidget", "vtkInteractorObserver", "vtkObject" })
  {
    EXPECT_EQ(ruler->IsA(name), 1) << name;
  }
  EXPECT_EQ(ruler->IsA("zvWidgets"), 0);
  auto other = vtkSmartPointer<zvRulerWidget>::Take(ruler->NewInstance());
  EXPECT_STREQ(other->GetClassName(), "zvRulerWidget");
}

TEST_F(RulerWidget, IsMadeByTheObjectFactoryWhenThatKnowsTheClass)
{
  vtkNew<Factory> factory;
  vtkObjectFactory::RegisterFactory(factory);
  vtkNew<zvRulerWidget> replaced;
  vtkObjectFactory::UnRegisterFactory(factory);
  vtkNew<zvRulerWidget> plain;
  EXPECT_STREQ(replaced->GetClassName(), "ReplacedRuler");
  EXPECT_STREQ(plain->GetClassName(), "zvRulerWidget");
}

TEST_F(RulerWidget, TheInstantiatorMakesOneWithOneReference)
{
  auto made = vtkSmartPointer<vtkObject>::Take(vtkInstantiatorzvRulerWidgetNew());
  EXPECT_STREQ(made->GetClassName(), "zvRulerWidget");
  EXPECT_EQ(made->GetReferenceCount(), 1);
}

TEST_F(RulerWidget, WritesItsRevisionLine)
{
  std::ostringstream text;
  this->Ruler->CollectRevisions(text);
  EXPECT_EQ(text.str(), "zvRulerWidget $Revision:$\n");
}

TEST_F(RulerWidget, StatesAndAxesHaveTheirNumbers)
{
  EXPECT_EQ(zvRulerWidget::Start, 0);
  EXPECT_EQ(zvRulerWidget::MovingHandle, 1);
  EXPECT_EQ(zvRulerWidget::MovingLine, 2);
  EXPECT_EQ(zvRulerWidget::Scaling, 3);
  EXPECT_EQ(zvRulerWidget::Outside, 4);
  EXPECT_EQ(zvRulerWidget::XAxis, 0);
  EXPECT_EQ(zvRulerWidget::YAxis, 1);
  EXPECT_EQ(zvRulerWidget::ZAxis, 2);
  EXPECT_EQ(zvRulerWidget::None, 3);
}

TEST_F(RulerWidget, StartsAtRestOneMillimetreLongWithABlankLabel)
{
  vtkNew<OpenRuler> fresh;
  EXPECT_EQ(fresh->State, zvRulerWidget::Start);
  EXPECT_EQ(fresh->GetAlign(), zvRulerWidget::None);
  EXPECT_EQ(fresh->GetClampToBounds(), 0);
  EXPECT_EQ(fresh->GetEnabled(), 0);
  EXPECT_EQ(fresh->CurrentHandle, nullptr);
  EXPECT_EQ(fresh->CurrentPointWidget, nullptr);
  EXPECT_DOUBLE_EQ(fresh->PlaceFactor, 1.0);
  EXPECT_DOUBLE_EQ(fresh->LabelScale, 1.0);
  EXPECT_DOUBLE_EQ(fresh->InitialLength, std::sqrt(3.0));
  EXPECT_THAT(std::vector<double>(fresh->InitialBounds, fresh->InitialBounds + 6),
    ElementsAre(-0.5, 0.5, -0.5, 0.5, -0.5, 0.5));
  EXPECT_THAT(ColorOf(fresh->LineSource->GetPoint1()), ElementsAre(-0.5, 0, 0));
  EXPECT_THAT(ColorOf(fresh->LineSource->GetPoint2()), ElementsAre(0.5, 0, 0));
  EXPECT_STREQ(fresh->ScaleText->GetText(), " ");
  const double size = static_cast<float>(0.01 * std::sqrt(3.0));
  EXPECT_THAT(ColorOf(fresh->ScaleFollower->GetScale()), ElementsAre(size, size, size));
  EXPECT_THAT(ColorOf(fresh->ScaleFollower->GetProperty()->GetColor()), ElementsAre(1, 0, 0));
  EXPECT_EQ(fresh->ScaleFollower->GetMapper()->GetInputAlgorithm(), fresh->ScaleText.Get());
}

TEST_F(RulerWidget, DrawsALineOfFiveSegmentsAndCatchesItsEndsInSpheres)
{
  EXPECT_EQ(this->Ruler->LineActor->GetMapper(), this->Ruler->LineMapper.Get());
  EXPECT_EQ(this->Ruler->LineMapper->GetInputAlgorithm(), this->Ruler->LineSource.Get());
  EXPECT_EQ(this->Ruler->LineSource->GetResolution(), 5);
  vtkCellPicker* handlePicker = this->Ruler->HandlePicker;
  vtkCellPicker* linePicker = this->Ruler->LinePicker;
  for (int end = 0; end < 2; ++end)
  {
    EXPECT_EQ(this->Ruler->Handle[end]->GetMapper(), this->Ruler->HandleMapper[end].Get());
    EXPECT_EQ(
      this->Ruler->HandleMapper[end]->GetInputAlgorithm(), this->Ruler->HandleGeometry[end].Get());
    EXPECT_EQ(this->Ruler->HandleGeometry[end]->GetThetaResolution(), 16);
    EXPECT_EQ(this->Ruler->HandleGeometry[end]->GetPhiResolution(), 8);
    EXPECT_NE(handlePicker->GetPickList()->IsItemPresent(this->Ruler->Handle[end]), 0);
  }
  EXPECT_EQ(handlePicker->GetPickList()->GetNumberOfItems(), 2);
  EXPECT_EQ(handlePicker->GetPickFromList(), 1);
  EXPECT_DOUBLE_EQ(handlePicker->GetTolerance(), 0.02);
  EXPECT_EQ(linePicker->GetPickList()->GetNumberOfItems(), 1);
  EXPECT_NE(linePicker->GetPickList()->IsItemPresent(this->Ruler->LineActor), 0);
  EXPECT_EQ(linePicker->GetPickFromList(), 1);
  EXPECT_DOUBLE_EQ(linePicker->GetTolerance(), 0.005);
}

TEST_F(RulerWidget, HasItsFourLooks)
{
  EXPECT_THAT(ColorOf(this->Ruler->GetHandleProperty()->GetColor()), ElementsAre(1, 0.5, 0));
  EXPECT_THAT(ColorOf(this->Ruler->GetSelectedHandleProperty()->GetColor()), ElementsAre(1, 0, 0));
  vtkProperty* line = this->Ruler->GetLineProperty();
  EXPECT_EQ(line->GetRepresentation(), VTK_WIREFRAME);
  EXPECT_THAT(ColorOf(line->GetColor()), ElementsAre(1, 0, 0));
  EXPECT_FLOAT_EQ(line->GetLineWidth(), 2.0f);
  vtkProperty* selected = this->Ruler->GetSelectedLineProperty();
  EXPECT_EQ(selected->GetRepresentation(), VTK_WIREFRAME);
  EXPECT_DOUBLE_EQ(selected->GetAmbient(), 1.0);
  EXPECT_DOUBLE_EQ(selected->GetDiffuse(), 0.0);
  EXPECT_THAT(ColorOf(selected->GetAmbientColor()), ElementsAre(1, 0, 0));
  EXPECT_FLOAT_EQ(selected->GetLineWidth(), 2.0f);
}

TEST_F(RulerWidget, HasThreeCrossesOfAxesAloneThatReportToIt)
{
  const std::vector<std::pair<zvPointWidget*, zvRulerCallback*>> crosses = {
    { this->Ruler->PointWidget, this->Ruler->PWCallback },
    { this->Ruler->PointWidget1, this->Ruler->PW1Callback },
    { this->Ruler->PointWidget2, this->Ruler->PW2Callback }
  };
  for (const auto& [cross, callback] : crosses)
  {
    vtkCursor3D* cursor = cross->GetCursor3D();
    EXPECT_EQ(cursor->GetAxes(), 1);
    EXPECT_EQ(cursor->GetOutline(), 0);
    EXPECT_EQ(cursor->GetXShadows(), 0);
    EXPECT_EQ(cursor->GetYShadows(), 0);
    EXPECT_EQ(cursor->GetZShadows(), 0);
    EXPECT_DOUBLE_EQ(cross->GetHotSpotSize(), 0.5);
    EXPECT_TRUE(cross->HasObserver(vtkCommand::InteractionEvent, callback));
    EXPECT_EQ(callback->Ruler, this->Ruler);
    EXPECT_EQ(callback->PointWidget, cross);
  }
}

TEST_F(RulerWidget, AlignIsKeptBetweenTheXAxisAndNone)
{
  EXPECT_EQ(this->Ruler->GetAlignMinValue(), 0);
  EXPECT_EQ(this->Ruler->GetAlignMaxValue(), 3);
  this->Ruler->SetAlign(-1);
  EXPECT_EQ(this->Ruler->GetAlign(), 0);
  const vtkMTimeType before = this->Ruler->GetMTime();
  this->Ruler->SetAlign(0);
  EXPECT_EQ(this->Ruler->GetMTime(), before);
  this->Ruler->SetAlign(7);
  EXPECT_EQ(this->Ruler->GetAlign(), 3);
  EXPECT_GT(this->Ruler->GetMTime(), before);
}

TEST_F(RulerWidget, ClampToBoundsIsSwitched)
{
  const vtkMTimeType before = this->Ruler->GetMTime();
  this->Ruler->ClampToBoundsOff();
  EXPECT_EQ(this->Ruler->GetMTime(), before);
  this->Ruler->ClampToBoundsOn();
  EXPECT_EQ(this->Ruler->GetClampToBounds(), 1);
  EXPECT_GT(this->Ruler->GetMTime(), before);
  this->Ruler->SetClampToBounds(5);
  EXPECT_EQ(this->Ruler->GetClampToBounds(), 5);
  this->Ruler->ClampToBoundsOff();
  EXPECT_EQ(this->Ruler->GetClampToBounds(), 0);
}

TEST_F(RulerWidget, PlacingLaysTheLineAlongItsAxisOrLeavesIt)
{
  struct Row
  {
    int Align;
    World End1, End2;
  };
  const Row rows[] = { { zvRulerWidget::None, { { -5, 0, 0 } }, { { 5, 0, 0 } } },
    { zvRulerWidget::XAxis, { { 0, 5, 8 } }, { { 4, 5, 8 } } },
    { zvRulerWidget::YAxis, { { 2, 4, 8 } }, { { 2, 6, 8 } } },
    { zvRulerWidget::ZAxis, { { 2, 5, 7 } }, { { 2, 5, 9 } } } };
  for (const Row& row : rows)
  {
    SCOPED_TRACE(row.Align);
    double bounds[6] = { 0, 4, 4, 6, 7, 9 };
    this->Ruler->SetAlign(row.Align);
    this->Ruler->PlaceWidget(bounds);
    this->ExpectEnds(row.End1, row.End2);
    EXPECT_THAT(std::vector<double>(this->Ruler->InitialBounds, this->Ruler->InitialBounds + 6),
      ElementsAre(0, 4, 4, 6, 7, 9));
    EXPECT_DOUBLE_EQ(this->Ruler->InitialLength, std::sqrt(24.0));
    EXPECT_DOUBLE_EQ(this->Ruler->HandleGeometry[0]->GetRadius(), 0.01 * std::sqrt(24.0));
  }
  this->Ruler->SetAlign(zvRulerWidget::XAxis);
  this->Ruler->PlaceWidget(-1, 1, -1, 1, -1, 1);
  this->ExpectEnds({ { -1, 0, 0 } }, { { 1, 0, 0 } });
}

TEST_F(RulerWidget, PlacingWithoutBoundsGoesThroughTheParent)
{
  this->Ruler->PlaceWidget();
  const std::vector<std::string> messages = this->TakeMessages();
  ASSERT_EQ(messages.size(), 1u); // the parent's complaint about neither input nor prop
  EXPECT_NE(messages.front().find("zvRulerWidget"), std::string::npos);
  EXPECT_DOUBLE_EQ(this->Ruler->InitialLength, std::sqrt(12.0));
}

TEST_F(RulerWidget, SetEndsMoveTheLineItsCrossesAndItsSpheresButNotTheLabel)
{
  this->Enable();
  this->Watch();
  const vtkMTimeType before = this->Ruler->GetMTime();
  this->Ruler->SetPoint1(1, 2, 3);
  this->Ruler->SetPoint2(-4, 5, 6);
  this->ExpectEnds({ { 1, 2, 3 } }, { { -4, 5, 6 } });
  EXPECT_EQ(this->Label(), " ");
  EXPECT_THAT(ColorOf(this->Ruler->ScaleFollower->GetPosition()), ElementsAre(0, 0, 0));
  EXPECT_THAT(this->Renders.Events(), IsEmpty());
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  EXPECT_EQ(this->Ruler->GetMTime(), before);
}

TEST_F(RulerWidget, ACrossIsAtItsEndFromTheBeginning)
{
  this->Enable();
  const zvtest::Picture picture = this->Scene.Look();
  for (const World& end : { this->End1(), this->End2() })
  {
    EXPECT_TRUE(picture.HasNear(Red, this->Pointer.At({ { end[0], 0.7, 0 } }), 1));
    EXPECT_TRUE(picture.HasNear(Red, this->Pointer.At({ { end[0], -0.7, 0 } }), 1));
  }
}

TEST_F(RulerWidget, GivesItsLine)
{
  vtkNew<vtkPolyData> line;
  this->Ruler->GetPolyData(line);
  ASSERT_EQ(line->GetNumberOfPoints(), 6);
  World point;
  line->GetPoint(0, point.data());
  ExpectNear(point, { { -5, 0, 0 } });
  line->GetPoint(1, point.data());
  ExpectNear(point, { { -3, 0, 0 } }, 1e-6);
  line->GetPoint(5, point.data());
  ExpectNear(point, { { 5, 0, 0 } });
  EXPECT_EQ(line->GetPoints(), this->Ruler->LineSource->GetOutput()->GetPoints());
  this->Ruler->GetPolyData(nullptr);
}

TEST_F(RulerWidget, PositionsAreClampedToThePlacedBoundsLowerFirst)
{
  this->Ruler->PlaceWidget(0, 4, 4, 6, 7, 9);
  World x{ { -1, 5, 10 } };
  this->Ruler->ClampPosition(x.data());
  ExpectNear(x, { { 0, 5, 9 } }, 0.0);
  EXPECT_EQ(this->Ruler->InBounds(x.data()), 1);
  for (const World& outside :
    { World{ { -0.01, 5, 8 } }, World{ { 4.01, 5, 8 } }, World{ { 2, 3.99, 8 } },
      World{ { 2, 5, 9.01 } }, World{ { 2, std::numeric_limits<double>::quiet_NaN(), 8 } } })
  {
    World copy = outside;
    EXPECT_EQ(this->Ruler->InBounds(copy.data()), 0);
  }
  // Bounds that are the wrong way round, as a flipped axis gives them: the upper has the last word.
  std::swap(this->Ruler->InitialBounds[0], this->Ruler->InitialBounds[1]);
  World between{ { 2, 5, 8 } };
  this->Ruler->ClampPosition(between.data());
  EXPECT_DOUBLE_EQ(between[0], 0.0);
}

TEST_F(RulerWidget, EnablingWithoutAnInteractorIsAnError)
{
  this->Ruler->SetInteractor(nullptr);
  this->Ruler->SetEnabled(1);
  this->ExpectVtkError("zvRulerWidget", "zvRulerWidget", this->Ruler, NoInteractor);
  this->Ruler->SetEnabled(0);
  this->ExpectVtkError("zvRulerWidget", "zvRulerWidget", this->Ruler, NoInteractor);
  EXPECT_EQ(this->Ruler->GetEnabled(), 0);
}

TEST_F(RulerWidget, EnablingShowsTheLineTheEndCrossesAndTheLabel)
{
  this->Watch();
  this->Enable();
  vtkRenderer* renderer = this->Scene.Renderer();
  EXPECT_EQ(this->Ruler->GetEnabled(), 1);
  EXPECT_EQ(this->Ruler->GetCurrentRenderer(), renderer);
  EXPECT_TRUE(renderer->HasViewProp(this->Ruler->LineActor));
  EXPECT_EQ(this->Ruler->LineActor->GetProperty(), this->Ruler->GetLineProperty());
  EXPECT_TRUE(renderer->HasViewProp(this->Ruler->ScaleFollower));
  EXPECT_EQ(this->Ruler->ScaleFollower->GetCamera(), renderer->GetActiveCamera());
  EXPECT_FALSE(renderer->HasViewProp(this->Ruler->Handle[0]));
  EXPECT_FALSE(renderer->HasViewProp(this->Ruler->Handle[1]));
  EXPECT_EQ(this->PropsInView(), 4);
  EXPECT_EQ(this->Ruler->PointWidget->GetEnabled(), 0);
  EXPECT_EQ(this->Ruler->PointWidget1->GetEnabled(), 1);
  EXPECT_EQ(this->Ruler->PointWidget2->GetEnabled(), 1);
  EXPECT_EQ(this->Ruler->PointWidget->GetCurrentRenderer(), renderer);
  EXPECT_EQ(this->Ruler->PointWidget->GetInteractor(), this->Scene.Interactor());
  EXPECT_THAT(this->Told.Names(), ElementsAre("EnableEvent"));
  EXPECT_FALSE(this->Told.Events().front().HasData);
  EXPECT_EQ(this->Renders.Events().size(), 3u); // each cross and the ruler
  this->ExpectTheScreenIsCurrent();
}

TEST_F(RulerWidget, EnablingAttachesTheNineEventsBeforeThoseOfItsCrosses)
{
  this->Ruler->SetPriority(0.3f);
  this->Enable();
  for (unsigned long event : zvEvents::Handle)
  {
    EXPECT_TRUE(this->Scene.Interactor()->HasObserver(event, this->Ruler->EventCallbackCommand))
      << vtkCommand::GetStringFromEventId(event);
  }
  EXPECT_FALSE(this->Scene.Interactor()->HasObserver(
    vtkCommand::CharEvent, this->Ruler->EventCallbackCommand));
  this->Pointer.Press(zvtest::Left, this->OnEnd1());
  EXPECT_EQ(this->Ruler->State, zvRulerWidget::MovingHandle);
}

TEST_F(RulerWidget, ObserversAreNotAddedWithoutAnInteractor)
{
  vtkNew<zvRulerWidget> ruler;
  zvtest::EventRecorder told;
  told.Watch(ruler, zvtest::WidgetEvents);
  ruler->AddObservers();
  EXPECT_THAT(told.Events(), IsEmpty());
}

TEST_F(RulerWidget, EnablingOrDisablingTwiceDoesNothingMore)
{
  this->Enable();
  this->Watch();
  this->Enable();
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  EXPECT_THAT(this->Renders.Events(), IsEmpty());
  this->Ruler->SetEnabled(0);
  this->Ruler->SetEnabled(0);
  EXPECT_THAT(this->Told.Names(), ElementsAre("DisableEvent"));
}

TEST_F(RulerWidget, DisablingTakesEverythingAway)
{
  this->Enable();
  this->Pointer.Press(zvtest::Left, this->OnLine());
  this->Pointer.MoveTo(Plus(this->OnLine(), 5, 5));
  EXPECT_EQ(this->PropsInView(), 5);
  this->Watch();
  this->Ruler->SetEnabled(0);
  EXPECT_EQ(this->PropsInView(), 0);
  EXPECT_EQ(this->Ruler->PointWidget->GetEnabled(), 0);
  EXPECT_EQ(this->Ruler->PointWidget1->GetEnabled(), 0);
  EXPECT_EQ(this->Ruler->PointWidget2->GetEnabled(), 0);
  EXPECT_EQ(this->Ruler->CurrentHandle, nullptr);
  EXPECT_EQ(this->Ruler->GetCurrentRenderer(), nullptr);
  EXPECT_FALSE(this->Scene.Interactor()->HasObserver(
    vtkCommand::LeftButtonPressEvent, this->Ruler->EventCallbackCommand));
  EXPECT_THAT(this->Told.Names(), ElementsAre("DisableEvent"));
  EXPECT_EQ(this->Scene.Look().Count(Red), 0);
}

TEST_F(RulerWidget, WithoutARendererInTheWindowItStaysDisabled)
{
  this->Watch();
  this->Scene.DropRenderers();
  this->Enable();
  EXPECT_EQ(this->Ruler->GetEnabled(), 0);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
}

TEST_F(RulerWidget, TheActivationKeySwitchesTheRulerWithItsCrosses)
{
  this->Enable();
  this->Pointer.Type('i');
  EXPECT_EQ(this->Ruler->GetEnabled(), 0);
  EXPECT_EQ(this->PropsInView(), 0);
  this->Pointer.Type('i');
  EXPECT_EQ(this->Ruler->GetEnabled(), 1);
  EXPECT_EQ(this->PropsInView(), 4);
}

TEST_F(RulerWidget, IsClickedOnAnEndThatNoRendererHoldsAndOnTheLine)
{
  this->Enable();
  const struct
  {
    Display Position;
    bool Clicked;
  } rows[] = { { this->OnEnd1(), true }, { Plus(this->OnEnd2(), 8, 0), true },
    { this->OnLine(), true }, { this->Beside(), false }, { Plus(this->OnLine(), 0, 10), false } };
  for (const auto& row : rows)
  {
    this->Scene.Interactor()->SetEventInformation(row.Position[0], row.Position[1]);
    EXPECT_EQ(this->Ruler->IsClicked(), row.Clicked) << row.Position[0] << " " << row.Position[1];
  }
  EXPECT_EQ(this->Ruler->State, zvRulerWidget::Start);
  EXPECT_EQ(this->Ruler->CurrentHandle, nullptr);
  EXPECT_EQ(this->Ruler->ValidPick, 0);
}

TEST_F(RulerWidget, IsNotClickedWithoutAnInteractorOrARenderer)
{
  vtkNew<zvRulerWidget> lone;
  EXPECT_FALSE(lone->IsClicked());
  lone->SetInteractor(this->Scene.Interactor());
  EXPECT_FALSE(lone->IsClicked());
}

TEST_F(RulerWidget, IsClickedOutsideTheViewportThatAPressMustBeIn)
{
  this->Scene.Renderer()->SetViewport(0.0, 0.0, 0.5, 1.0);
  this->Scene.Render();
  this->Ruler->SetPoint2(30, 0, 0);
  this->Enable();
  const Display onLine = this->Pointer.At({ { 20, 0, 0 } });
  ASSERT_GT(onLine[0], 200);
  this->Scene.Interactor()->SetEventInformation(onLine[0], onLine[1]);
  EXPECT_TRUE(this->Ruler->IsClicked());
  this->Watch();
  this->Pointer.Press(zvtest::Left, onLine);
  EXPECT_EQ(this->Ruler->State, zvRulerWidget::Outside);
  this->Ruler->State = zvRulerWidget::Start;
  this->Pointer.Press(zvtest::Middle, onLine);
  EXPECT_EQ(this->Ruler->State, zvRulerWidget::Outside);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  EXPECT_EQ(this->Behind.Events().size(), 2u);
}

namespace
{
enum class Place
{
  End1,
  End2,
  Line,
  Beside
};

struct PressRow
{
  const char* Name;
  zvtest::Button Button;
  Place Where;
  int State;
};

class RulerWidgetPress
  : public RulerWidget
  , public ::testing::WithParamInterface<PressRow>
{
protected:
  Display At() const
  {
    switch (GetParam().Where)
    {
      case Place::End1:
        return this->OnEnd1();
      case Place::End2:
        return this->OnEnd2();
      case Place::Line:
        return this->OnLine();
      default:
        return this->Beside();
    }
  }
  bool IsHit() const { return GetParam().State != zvRulerWidget::Outside; }
};
}

INSTANTIATE_TEST_SUITE_P(RulerWidget, RulerWidgetPress,
  ::testing::Values(
    PressRow{ "LeftOnEnd1", zvtest::Left, Place::End1, zvRulerWidget::MovingHandle },
    PressRow{ "LeftOnEnd2", zvtest::Left, Place::End2, zvRulerWidget::MovingHandle },
    PressRow{ "LeftOnTheLine", zvtest::Left, Place::Line, zvRulerWidget::MovingLine },
    PressRow{ "LeftBeside", zvtest::Left, Place::Beside, zvRulerWidget::Outside },
    PressRow{ "MiddleOnEnd1", zvtest::Middle, Place::End1, zvRulerWidget::MovingLine },
    PressRow{ "MiddleOnEnd2", zvtest::Middle, Place::End2, zvRulerWidget::MovingLine },
    PressRow{ "MiddleOnTheLine", zvtest::Middle, Place::Line, zvRulerWidget::MovingLine },
    PressRow{ "MiddleBeside", zvtest::Middle, Place::Beside, zvRulerWidget::Outside }),
  [](const auto& row) { return row.param.Name; });

TEST_P(RulerWidgetPress, TakesTheEventOnTheRulerAndPassesItOnBeside)
{
  this->Enable();
  this->Watch();
  this->Pointer.Press(GetParam().Button, this->At());
  EXPECT_EQ(this->Ruler->State, GetParam().State);
  if (this->IsHit())
  {
    EXPECT_THAT(this->Told.Names(), ElementsAre("StartInteractionEvent"));
    EXPECT_FALSE(this->Told.Events().front().HasData);
    EXPECT_THAT(this->Behind.Events(), IsEmpty());
    EXPECT_EQ(this->Ruler->ValidPick, 1);
  }
  else
  {
    EXPECT_THAT(this->Told.Events(), IsEmpty());
    EXPECT_EQ(this->Behind.Events().size(), 1u);
    EXPECT_THAT(this->Renders.Events(), IsEmpty());
  }
}

TEST_P(RulerWidgetPress, MoveTellsRendersOnceAndShowsWhatItDid)
{
  this->Ruler->SetHandleSize(0.02); // a label to look at
  this->Enable();
  this->Pointer.Press(GetParam().Button, this->At());
  this->Watch();
  for (int step = 1; step <= 3; ++step)
  {
    this->ForgetWhatWasTold();
    this->Pointer.MoveTo(Plus(this->At(), 9 * step, -13 * step));
    EXPECT_EQ(this->Ruler->State, GetParam().State);
    if (this->IsHit())
    {
      EXPECT_THAT(this->Told.Names(), ElementsAre("InteractionEvent"));
      EXPECT_FALSE(this->Told.Events().front().HasData);
      EXPECT_THAT(this->Behind.Events(), IsEmpty());
      EXPECT_EQ(this->Renders.Events().size(), 1u);
      this->ExpectTheScreenIsCurrent();
    }
    else
    {
      EXPECT_THAT(this->Told.Events(), IsEmpty());
      EXPECT_EQ(this->Behind.Events().size(), 1u);
      EXPECT_THAT(this->Renders.Events(), IsEmpty());
    }
  }
}

TEST_P(RulerWidgetPress, ReleaseEndsTheDragOrLeavesOutsideInPlace)
{
  for (zvtest::Button released : { zvtest::Left, zvtest::Middle })
  {
    SCOPED_TRACE(released);
    this->Ruler->SetEnabled(0);
    this->Enable();
    this->Pointer.Press(GetParam().Button, this->At());
    zvtest::EventRecorder told;
    zvtest::EventRecorder behind;
    told.Watch(this->Ruler, zvtest::WidgetEvents);
    behind.WatchAll(this->Scene.Interactor(), 0.1f);
    this->Pointer.Release(released);
    if (this->IsHit())
    {
      EXPECT_EQ(this->Ruler->State, zvRulerWidget::Start);
      EXPECT_THAT(told.Names(), ElementsAre("EndInteractionEvent"));
      EXPECT_EQ(behind.Count(vtkCommand::LeftButtonReleaseEvent), 0);
      EXPECT_EQ(behind.Count(vtkCommand::MiddleButtonReleaseEvent), 0);
      EXPECT_EQ(this->Ruler->LineActor->GetProperty(), this->Ruler->GetLineProperty());
      EXPECT_EQ(this->Ruler->PointWidget->GetEnabled(), 0);
      EXPECT_EQ(this->Ruler->PointWidget1->GetEnabled(), 1);
      EXPECT_EQ(this->Ruler->PointWidget2->GetEnabled(), 1);
      EXPECT_EQ(this->Ruler->CurrentPointWidget, nullptr);
      this->ExpectTheScreenIsCurrent();
    }
    else
    {
      EXPECT_EQ(this->Ruler->State, zvRulerWidget::Outside);
      EXPECT_THAT(told.Events(), IsEmpty());
      EXPECT_EQ(behind.Count(vtkCommand::LeftButtonReleaseEvent) +
          behind.Count(vtkCommand::MiddleButtonReleaseEvent),
        1);
    }
  }
}

TEST_F(RulerWidget, AMissWithTheLeftButtonLetsAnEndGoAndWithTheMiddleKeepsItByDesign)
{
  this->Enable();
  this->Pointer.Press(zvtest::Left, this->OnEnd1());
  this->Pointer.Press(zvtest::Middle, this->Beside());
  EXPECT_EQ(this->Ruler->State, zvRulerWidget::Outside);
  EXPECT_EQ(this->Ruler->CurrentHandle, this->Ruler->Handle[0].Get());
  EXPECT_EQ(this->Ruler->Handle[0]->GetProperty(), this->Ruler->GetSelectedHandleProperty());
  this->Pointer.Press(zvtest::Left, this->Beside());
  EXPECT_EQ(this->Ruler->CurrentHandle, nullptr);
  EXPECT_EQ(this->Ruler->Handle[0]->GetProperty(), this->Ruler->GetHandleProperty());
}

TEST_F(RulerWidget, MovesAndReleasesAtRestDoNothing)
{
  this->Enable();
  this->Watch();
  this->Pointer.MoveTo(this->OnEnd1());
  this->Pointer.Release(zvtest::Left);
  this->Pointer.Release(zvtest::Middle);
  EXPECT_EQ(this->Ruler->State, zvRulerWidget::Start);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  EXPECT_EQ(this->Behind.Events().size(), 3u);
  EXPECT_THAT(this->Renders.Events(), IsEmpty());
}

TEST_F(RulerWidget, ThePressIsToldBeforeTheStateChangesAndTheCrossIsGrabbed)
{
  this->Enable();
  std::vector<std::string> order;
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Ruler, { vtkCommand::StartInteractionEvent },
    [&](const auto&) { order.push_back("ruler in state " + std::to_string(this->Ruler->State)); });
  recorder.Watch(this->Ruler->PointWidget2, { vtkCommand::StartInteractionEvent },
    [&](const auto&)
    { order.push_back("cross, ruler in state " + std::to_string(this->Ruler->State)); });
  recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent },
    [&](const auto&) { order.emplace_back("render"); });
  this->Pointer.Press(zvtest::Left, this->OnEnd2());
  EXPECT_THAT(order, ElementsAre("ruler in state 0", "cross, ruler in state 1", "render"));
}

TEST_F(RulerWidget, AnEndIsDraggedWithTheMouse)
{
  this->Enable();
  const Display to = Plus(this->OnEnd1(), 30, 60);
  this->Pointer.Press(zvtest::Left, this->OnEnd1());
  EXPECT_EQ(this->Ruler->CurrentHandle, this->Ruler->Handle[0].Get());
  EXPECT_EQ(this->Ruler->CurrentPointWidget, this->Ruler->PointWidget1);
  EXPECT_EQ(this->Ruler->Handle[0]->GetProperty(), this->Ruler->GetSelectedHandleProperty());
  EXPECT_EQ(this->Ruler->PointWidget->GetEnabled(), 0);
  const Display from = this->Pointer.Position();
  this->Pointer.MoveTo(to);
  this->ExpectEnds(Sum({ { -5, 0, 0 } }, this->MotionOf(from, to)), { { 5, 0, 0 } });
  this->Pointer.Release(zvtest::Left);
  EXPECT_EQ(this->Ruler->CurrentHandle, nullptr);
  EXPECT_EQ(this->Ruler->Handle[0]->GetProperty(), this->Ruler->GetHandleProperty());
}

TEST_F(RulerWidget, ADraggedEndItsLineAndItsLabelAreOnScreenInTheNewPlace)
{
  this->Ruler->SetHandleSize(0.02);
  this->Enable();
  this->Pointer.Press(zvtest::Left, this->OnEnd2());
  const Display to = this->Pointer.At({ { 2, 6, 0 } });
  this->Pointer.MoveTo(to);
  const zvtest::Picture picture = this->Scene.Look();
  const World end = this->End2();
  const double half = WidthOf(this->Ruler->PointWidget2) / 2.0;
  EXPECT_TRUE(picture.HasNear(Red, this->Pointer.At({ { end[0], end[1] + 0.8 * half, 0 } }), 1));
  EXPECT_TRUE(picture.HasNear(Red, this->Pointer.At({ { end[0] + 0.8 * half, end[1], 0 } }), 1));
  EXPECT_TRUE(picture.HasNear(Red, this->Pointer.At({ { (end[0] - 5) / 2, end[1] / 2, 0 } }), 1));
  EXPECT_EQ(picture.Count(Red, zvtest::Region::Around(this->OnEnd2(), 15)), 0);
  // The first digit is some blanks away from the end.
  const Display label = this->Pointer.At(end);
  EXPECT_GT(picture.Count(Red, { Plus(label, 22, 0), Plus(label, 90, 14) }), 40);
}

TEST_F(RulerWidget, TheLabelShowsTheLengthFromTheFirstMoveOn)
{
  this->Enable();
  EXPECT_EQ(this->Label(), " ");
  this->Pointer.Press(zvtest::Left, this->OnEnd2());
  EXPECT_EQ(this->Label(), " ");
  this->Pointer.MoveTo(this->OnEnd2()); // where it is
  EXPECT_EQ(this->Label(), "     10.00 mm");
  EXPECT_THAT(ColorOf(this->Ruler->ScaleFollower->GetPosition()), ElementsAre(5, 0, 0));
  this->Pointer.MoveTo(Plus(this->OnEnd2(), -40, 7));
  const World end = this->End2();
  char text[32];
  std::snprintf(text, sizeof(text), "%10.2f mm", std::hypot(end[0] + 5, end[1]));
  EXPECT_EQ(this->Label(), text);
  EXPECT_NE(this->Label(), "     10.00 mm");
  EXPECT_THAT(
    ColorOf(this->Ruler->ScaleFollower->GetPosition()), ElementsAre(end[0], end[1], end[2]));
  this->Pointer.Release(zvtest::Left);
  this->Ruler->SetPoint1(0, 0, 0);
  EXPECT_EQ(this->Label(), text);
}

TEST_F(RulerWidget, TheLabelRoundsToHundredthsInTenColumns)
{
  struct Row
  {
    World End2;
    const char* Text;
  };
  const Row rows[] = { { { { 7.3456, 0, 0 } }, "     12.35 mm" },
    { { { -5, 0, 0 } }, "      0.00 mm" }, { { { 12345673.5, 0, 0 } }, "12345678.50 mm" } };
  for (const Row& row : rows)
  {
    this->Ruler->SetEnabled(0);
    this->Ruler->SetPoint2(row.End2[0], row.End2[1], row.End2[2]);
    this->Enable();
    this->Pointer.Press(zvtest::Left, this->OnEnd1());
    this->Pointer.MoveTo(this->OnEnd1());
    this->Pointer.Release(zvtest::Left);
    EXPECT_EQ(this->Label(), row.Text);
  }
}

TEST_F(RulerWidget, ALabelThatWasTakenOutComesBackWithTheDrag)
{
  this->Enable();
  this->Scene.Renderer()->RemoveActor(this->Ruler->ScaleFollower);
  this->Pointer.Press(zvtest::Left, this->OnEnd2());
  this->Pointer.MoveTo(Plus(this->OnEnd2(), 3, 3));
  EXPECT_TRUE(this->Scene.Renderer()->HasViewProp(this->Ruler->ScaleFollower));
  this->ExpectTheScreenIsCurrent();
}

TEST_F(RulerWidget, TheBodyMovesBothEnds)
{
  for (zvtest::Button button : { zvtest::Left, zvtest::Middle })
  {
    SCOPED_TRACE(button);
    this->Ruler->SetPoint1(-5, 0, 0);
    this->Ruler->SetPoint2(5, 0, 0);
    this->Enable();
    const Display from = this->OnLine();
    const Display to = Plus(from, -20, 45);
    this->Pointer.Press(button, from);
    EXPECT_EQ(this->Ruler->LineActor->GetProperty(), this->Ruler->GetSelectedLineProperty());
    EXPECT_EQ(this->Ruler->CurrentPointWidget, this->Ruler->PointWidget);
    EXPECT_EQ(this->Ruler->PointWidget->GetEnabled(), 1);
    EXPECT_EQ(this->PropsInView(), 5);
    this->Pointer.MoveTo(to);
    const World motion = this->MotionOf(from, to);
    this->ExpectEnds(Sum({ { -5, 0, 0 } }, motion), Sum({ { 5, 0, 0 } }, motion));
    ExpectNear(PositionOf(this->Ruler->PointWidget),
      { { this->Ruler->LastPosition[0], this->Ruler->LastPosition[1],
        this->Ruler->LastPosition[2] } });
    this->Pointer.Release(button);
    EXPECT_EQ(this->PropsInView(), 4);
  }
}

TEST_F(RulerWidget, TheMiddleButtonMovesTheWholeLineByAnEndToo)
{
  this->Enable();
  for (int round = 0; round < 2; ++round)
  {
    const World end1 = this->End1();
    const World end2 = this->End2();
    const Display from = this->Pointer.At(end2);
    const Display to = Plus(from, -25, 30);
    this->Pointer.Press(zvtest::Middle, from);
    EXPECT_EQ(this->Ruler->CurrentHandle, nullptr);
    EXPECT_EQ(this->Ruler->Handle[0]->GetProperty(), this->Ruler->GetSelectedHandleProperty());
    EXPECT_EQ(this->Ruler->Handle[1]->GetProperty(), this->Ruler->GetSelectedHandleProperty());
    this->Pointer.MoveTo(to);
    const World motion = this->MotionOf(from, to);
    this->ExpectEnds(Sum(end1, motion), Sum(end2, motion), 1e-6);
    this->Pointer.Release(zvtest::Middle);
    EXPECT_EQ(this->Ruler->Handle[0]->GetProperty(), this->Ruler->GetHandleProperty());
    EXPECT_EQ(this->Ruler->Handle[1]->GetProperty(), this->Ruler->GetHandleProperty());
  }
}

TEST_F(RulerWidget, TheMiddlePressReachesTheCrossAsALeftOneByDesign)
{
  class NotingCross : public zvPointWidget
  {
  public:
    void OnLeftButtonDown() override { ++this->LeftPresses; }
    void OnMiddleButtonDown() override { ++this->MiddlePresses; }
    void OnLeftButtonUp() override { ++this->LeftReleases; }
    void OnMiddleButtonUp() override { ++this->MiddleReleases; }
    int LeftPresses = 0;
    int MiddlePresses = 0;
    int LeftReleases = 0;
    int MiddleReleases = 0;
  };
  auto cross = vtkSmartPointer<NotingCross>::Take(new NotingCross);
  this->Ruler->PointWidget->RemoveObserver(this->Ruler->PWCallback);
  this->Ruler->PointWidget = cross;
  this->Ruler->PWCallback->PointWidget = cross;
  this->Enable();
  this->Watch();
  this->Pointer.Press(zvtest::Middle, this->OnLine());
  EXPECT_EQ(cross->LeftPresses, 1);
  // The cross shows itself once and would render once more; the ruler renders in any case.
  EXPECT_EQ(this->Renders.Events().size(), 2u);
  this->Pointer.Release(zvtest::Middle);
  EXPECT_EQ(cross->LeftReleases, 1);
  EXPECT_EQ(cross->MiddlePresses + cross->MiddleReleases, 0);
}

TEST_F(RulerWidget, TheRightButtonIsLeftToTheHost)
{
  this->Enable();
  this->Watch();
  for (const Display& position : { this->OnEnd1(), this->OnEnd2(), this->OnLine() })
  {
    this->ForgetWhatWasTold();
    this->Pointer.Press(zvtest::Right, position);
    this->Pointer.MoveTo(Plus(position, 20, 20));
    this->Pointer.Release(zvtest::Right);
    EXPECT_EQ(this->Ruler->State, zvRulerWidget::Start);
    EXPECT_THAT(this->Told.Events(), IsEmpty());
    EXPECT_EQ(this->Behind.Events().size(), 3u);
    EXPECT_THAT(this->Renders.Events(), IsEmpty());
  }
  this->ExpectEnds({ { -5, 0, 0 } }, { { 5, 0, 0 } });
}

TEST_F(RulerWidget, TheRightButtonDoesNotDisturbADrag)
{
  this->Enable();
  this->Pointer.Press(zvtest::Left, this->OnEnd2());
  const Display from = this->Pointer.Position();
  this->Pointer.Press(zvtest::Right, from);
  this->Pointer.Release(zvtest::Right);
  this->Pointer.MoveTo(Plus(from, 10, 30));
  this->ExpectEnds(
    { { -5, 0, 0 } }, Sum({ { 5, 0, 0 } }, this->MotionOf(from, Plus(from, 10, 30))));
}

TEST_F(RulerWidget, TheWheelSizesTheRulerAndIsLeftToTheHost)
{
  this->EnableAndClick();
  this->Watch();
  const double width = WidthOf(this->Ruler->PointWidget1);
  for (bool forward : { true, false })
  {
    this->ForgetWhatWasTold();
    this->Scene.Renderer()->GetActiveCamera()->Zoom(2.0);
    forward ? this->Pointer.WheelForward(this->Beside())
            : this->Pointer.WheelBackward(this->Beside());
    EXPECT_THAT(this->Told.Events(), IsEmpty());
    EXPECT_EQ(this->Behind.Events().size(), 1u);
    EXPECT_EQ(this->Renders.Events().size(), 2u);
    this->ExpectTheScreenIsCurrent();
  }
  EXPECT_NEAR(WidthOf(this->Ruler->PointWidget1), width / 4, 1e-9);
  EXPECT_NEAR(WidthOf(this->Ruler->PointWidget2), width / 4, 1e-9);
  EXPECT_NEAR(this->Ruler->HandleGeometry[0]->GetRadius(), width / 8, 1e-9);
  EXPECT_NEAR(this->Ruler->HandleGeometry[1]->GetRadius(), width / 8, 1e-9);
}

TEST_F(RulerWidget, CrossesKeepTheirSizeOnScreenThroughZoom)
{
  this->Ruler->SetHandleSize(0.03);
  this->Ruler->SetPoint1(-3, 0, 0);
  this->Ruler->SetPoint2(3, 0, 0);
  this->Enable();
  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { -3, 0, 0 } }));
  this->Pointer.Release(zvtest::Left);
  const auto heightOfCross = [this]()
  {
    const zvtest::Picture picture = this->Scene.Look();
    const Display center = this->Pointer.At({ { 3, 0, 0 } });
    int height = 0;
    for (int y = -40; y <= 40; ++y)
    {
      height += picture.HasNear(Red, Plus(center, 0, y), 1) ? 1 : 0;
    }
    return height;
  };
  const int height = heightOfCross();
  EXPECT_NEAR(height, 2 * 0.03 * std::sqrt(2.0) * 400, 5);
  for (double factor : { 1.5, 1.2, 0.5, 0.4 })
  {
    this->Scene.Renderer()->GetActiveCamera()->Zoom(factor);
    this->Ruler->UpdateScaleLabel();
    EXPECT_NEAR(heightOfCross(), height, 2) << factor;
  }
}

TEST_F(RulerWidget, UpdatingTheScaleLeavesTextAndEndsAndRendersOnce)
{
  this->EnableAndClick();
  this->Pointer.Press(zvtest::Left, this->OnEnd2());
  this->Pointer.MoveTo(this->OnEnd2());
  this->Pointer.Release(zvtest::Left);
  this->Ruler->SetPoint2(4, 0, 0);
  this->Watch();
  this->Scene.Renderer()->GetActiveCamera()->Zoom(3.0);
  this->Ruler->UpdateScaleLabel();
  EXPECT_EQ(this->Renders.Events().size(), 1u);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  EXPECT_EQ(this->Label(), "     10.00 mm");
  EXPECT_THAT(ColorOf(this->Ruler->ScaleFollower->GetPosition()), ElementsAre(5, 0, 0));
  // A hundredth of the diagonal of 565.7 pixels at 11.5 * 3 pixels a millimetre.
  const double size = 5.657 / (3 * 400 / (2 * std::sqrt(300.0)));
  EXPECT_NEAR(this->Ruler->LabelScale, size, 1e-4);
  EXPECT_DOUBLE_EQ(this->Ruler->ScaleFollower->GetScale()[0], this->Ruler->LabelScale);
  EXPECT_NEAR(WidthOf(this->Ruler->PointWidget2), 2 * size, 2e-4);
  this->ExpectEnds({ { -5, 0, 0 } }, { { 4, 0, 0 } });
}

TEST_F(RulerWidget, BeforeTheFirstPressSizesComeFromThePlacedBounds)
{
  this->Ruler->PlaceWidget(-50, 50, -50, 50, -50, 50);
  this->Enable();
  this->Ruler->UpdateScaleLabel();
  EXPECT_NEAR(this->Ruler->LabelScale, 0.01 * std::sqrt(30000.0), 1e-9);
  EXPECT_NEAR(WidthOf(this->Ruler->PointWidget1), 0.02 * std::sqrt(30000.0), 1e-9);
}

TEST_F(RulerWidget, TheScaleIsUpdatedWithoutAnInteractor)
{
  vtkNew<OpenRuler> lone;
  lone->SetPoint1(30, 40, 50);
  lone->UpdateScaleLabel();
  EXPECT_NEAR(lone->LabelScale, 0.01 * std::sqrt(3.0), 1e-12);
  ExpectNear(PositionOf(lone->PointWidget1), { { 30, 40, 50 } });
  EXPECT_NEAR(WidthOf(lone->PointWidget1), 0.02 * std::sqrt(3.0), 1e-12);
}

TEST_F(RulerWidget, AClampedBodyDragLeavesTheLineAndSnapsItsCrossBack)
{
  this->Ruler->PlaceWidget(-6, 6, -6, 6, -6, 6);
  this->Ruler->ClampToBoundsOn();
  this->Enable();
  const Display from = this->OnLine();
  this->Pointer.Press(zvtest::Left, from);
  const World start = PositionOf(this->Ruler->PointWidget);
  this->Pointer.MoveTo(Plus(from, 20, 0)); // 1.7 mm, one too far
  this->ExpectEnds({ { -5, 0, 0 } }, { { 5, 0, 0 } });
  ExpectNear(PositionOf(this->Ruler->PointWidget), start);
  this->ExpectTheScreenIsCurrent();
  this->Pointer.MoveTo(Plus(from, 15, 5)); // from there back and up
  const World motion = this->MotionOf(Plus(from, 20, 0), Plus(from, 15, 5));
  this->ExpectEnds(Sum({ { -5, 0, 0 } }, motion), Sum({ { 5, 0, 0 } }, motion));
  this->Ruler->ClampToBoundsOff();
  this->Pointer.MoveTo(Plus(from, 100, 5));
  EXPECT_GT(this->End2()[0], 6.0);
}

TEST_F(RulerWidget, EndsAreNeverClamped)
{
  this->Ruler->PlaceWidget(-6, 6, -6, 6, -6, 6);
  this->Ruler->ClampToBoundsOn();
  this->Enable();
  this->Pointer.Drag(zvtest::Left, this->OnEnd2(), Plus(this->OnEnd2(), 40, 0));
  EXPECT_GT(this->End2()[0], 8.0);
}

TEST_F(RulerWidget, SetLinePositionCountsFromTheLastOne)
{
  World x{ { 1, 2, 3 } };
  this->Ruler->SetLinePosition(x.data());
  this->ExpectEnds({ { -4, 2, 3 } }, { { 6, 2, 3 } });
  x = { { 1, 0, 3 } };
  this->Ruler->SetLinePosition(x.data());
  this->ExpectEnds({ { -4, 0, 3 } }, { { 6, 0, 3 } });
  ExpectNear({ { this->Ruler->LastPosition[0], this->Ruler->LastPosition[1],
               this->Ruler->LastPosition[2] } },
    x);
}

TEST_F(RulerWidget, APressInTheSphereButOffTheCrossTellsAndMovesNothing)
{
  this->EnableAndClick();
  const Display off = Plus(this->OnEnd2(), 10, 10);
  this->Watch();
  this->Pointer.Press(zvtest::Left, off);
  EXPECT_EQ(this->Ruler->State, zvRulerWidget::MovingHandle);
  this->Pointer.MoveTo(Plus(off, 20, 20));
  EXPECT_THAT(this->Told.Names(), ElementsAre("StartInteractionEvent", "InteractionEvent"));
  EXPECT_THAT(this->Renders.Events(), IsEmpty());
  EXPECT_EQ(this->Label(), "     10.00 mm");
  this->ExpectEnds({ { -5, 0, 0 } }, { { 5, 0, 0 } });
  this->Pointer.Release(zvtest::Left);
  EXPECT_EQ(this->Ruler->State, zvRulerWidget::Start);
}

TEST_F(RulerWidget, ShiftKeepsADragOnOneAxis)
{
  this->Enable();
  this->Pointer.Press(zvtest::Left, this->OnEnd2(), zvtest::Shift);
  for (int step = 1; step <= 8; ++step)
  {
    this->Pointer.MoveTo(Plus(this->OnEnd2(), step * 2, step * 6), zvtest::Shift);
    if (step <= 4)
    {
      this->ExpectEnds({ { -5, 0, 0 } }, { { 5, 0, 0 } });
    }
  }
  EXPECT_DOUBLE_EQ(this->End2()[0], 5.0);
  EXPECT_GT(this->End2()[1], 1.5);
}

TEST_F(RulerWidget, ScalingIsForSubclasses)
{
  this->Enable();
  this->Ruler->State = zvRulerWidget::Scaling;
  this->Pointer.MoveTo({ { 200, 200 } });
  this->Ruler->SetPoint1(-5, 0, 0);
  this->Ruler->SetPoint2(5, 0, 0);
  this->Watch();
  const Display from = this->Pointer.Position();
  const Display up = Plus(from, 0, 20);
  this->Pointer.MoveTo(up);
  const double grown = 5 * (1 + this->MotionOf(from, up)[1] / 10);
  this->ExpectEnds({ { -grown, 0, 0 } }, { { grown, 0, 0 } });
  EXPECT_THAT(this->Told.Names(), ElementsAre("InteractionEvent"));
  EXPECT_THAT(this->Behind.Events(), IsEmpty());
  EXPECT_EQ(this->Renders.Events().size(), 1u);
  this->ExpectTheScreenIsCurrent();
  const Display down = Plus(up, 15, 0);
  this->Pointer.MoveTo(down);
  const double shrunk = grown * (1 - this->MotionOf(up, down)[0] / (2 * grown));
  this->ExpectEnds({ { -shrunk, 0, 0 } }, { { shrunk, 0, 0 } });
}

TEST_F(RulerWidget, ALineWithoutLengthIsNotScaled)
{
  this->Ruler->SetPoint2(-5, 0, 0);
  World from{ { 0, 0, 0 } };
  World to{ { 1, 0, 0 } };
  this->Ruler->Scale(from.data(), to.data(), 0, 100);
  this->ExpectEnds({ { -5, 0, 0 } }, { { -5, 0, 0 } });
}

TEST_F(RulerWidget, ARulerJustPlacedByAClickIsPulledOutByItsEnd1)
{
  this->Ruler->SetPoint1(2, 3, 0);
  this->Ruler->SetPoint2(2, 3, 0);
  this->Enable();
  const Display from = this->Pointer.At({ { 2, 3, 0 } });
  this->Pointer.Drag(zvtest::Left, from, Plus(from, 50, 0));
  ExpectNear(this->End2(), { { 2, 3, 0 } });
  EXPECT_GT(this->End1()[0], 6.0);
  EXPECT_NE(this->Label(), " ");
}

TEST_F(RulerWidget, HighlightingAnEndChoosesIt)
{
  this->Enable();
  EXPECT_EQ(this->Ruler->HighlightHandle(this->Ruler->Handle[0]), 0);
  EXPECT_EQ(this->Ruler->ValidPick, 1);
  EXPECT_EQ(this->Ruler->HighlightHandle(this->Ruler->Handle[1]), 1);
  EXPECT_EQ(this->Ruler->Handle[0]->GetProperty(), this->Ruler->GetHandleProperty());
  EXPECT_EQ(this->Ruler->Handle[1]->GetProperty(), this->Ruler->GetSelectedHandleProperty());
  EXPECT_EQ(this->Ruler->CurrentHandle, this->Ruler->Handle[1].Get());
  EXPECT_EQ(this->Ruler->HighlightHandle(nullptr), -1);
  EXPECT_EQ(this->Ruler->CurrentHandle, nullptr);
  EXPECT_EQ(this->Ruler->Handle[1]->GetProperty(), this->Ruler->GetHandleProperty());
  {
    vtkNew<vtkActor> foreign;
    EXPECT_EQ(this->Ruler->HighlightHandle(foreign), 1);
  }
  EXPECT_EQ(this->Ruler->CurrentHandle, nullptr);
}

TEST_F(RulerWidget, EventsAreForwardedToTheChosenCrossAlone)
{
  EXPECT_EQ(this->Ruler->ForwardEvent(vtkCommand::MouseMoveEvent), 0);
  this->Enable();
  this->Pointer.Press(zvtest::Left, this->OnEnd2());
  EXPECT_EQ(this->Ruler->ForwardEvent(vtkCommand::MouseMoveEvent), 1);
  this->Ruler->DisablePointWidget();
  EXPECT_EQ(this->Ruler->ForwardEvent(vtkCommand::MouseMoveEvent), 0);
  EXPECT_EQ(this->Ruler->PointWidget2->GetEnabled(), 1);
}

TEST_F(RulerWidget, AChosenEndIsTheCrossThatIsEnabled)
{
  this->Ruler->EnablePointWidget(); // no renderer: nothing
  EXPECT_EQ(this->Ruler->CurrentPointWidget, nullptr);
  this->Ruler->DisablePointWidget();
  this->Enable();
  this->Ruler->HighlightHandle(this->Ruler->Handle[1]);
  this->Ruler->EnablePointWidget();
  EXPECT_EQ(this->Ruler->CurrentPointWidget, this->Ruler->PointWidget2);
  EXPECT_EQ(this->Ruler->PointWidget->GetEnabled(), 0);
  this->Ruler->HighlightHandle(nullptr);
  this->Ruler->EnablePointWidget();
  EXPECT_EQ(this->Ruler->CurrentPointWidget, this->Ruler->PointWidget);
  EXPECT_EQ(this->Ruler->PointWidget->GetEnabled(), 1);
  this->Ruler->DisablePointWidget();
  EXPECT_EQ(this->Ruler->PointWidget->GetEnabled(), 0);
}

TEST_F(RulerWidget, CallbacksPassThePositionOfTheirCross)
{
  auto cross = vtkSmartPointer<zvPointWidget>::Take(new zvPointWidget);
  cross->PlaceWidget(6, 8, 7, 9, 8, 10);
  const auto run = [&](zvRulerCallback* callback)
  {
    callback->Execute(nullptr, vtkCommand::InteractionEvent, nullptr); // without a ruler: nothing
    callback->Ruler = this->Ruler;
    callback->Execute(nullptr, vtkCommand::InteractionEvent, nullptr); // without a cross: nothing
    this->ExpectEnds({ { -5, 0, 0 } }, { { 5, 0, 0 } });
    callback->PointWidget = cross;
    callback->Execute(nullptr, vtkCommand::InteractionEvent, nullptr);
    callback->Delete();
  };
  run(new zvPW1Callback);
  this->ExpectEnds({ { 7, 8, 9 } }, { { 5, 0, 0 } });
  this->Ruler->SetPoint1(-5, 0, 0);
  run(new zvPW2Callback);
  this->ExpectEnds({ { -5, 0, 0 } }, { { 7, 8, 9 } });
  this->Ruler->SetPoint2(5, 0, 0);
  run(new zvPWCallback);
  this->ExpectEnds({ { 2, 8, 9 } }, { { 12, 8, 9 } });
}

TEST_F(RulerWidget, WorksInPerspective)
{
  this->Scene.Renderer()->GetActiveCamera()->ParallelProjectionOff();
  this->Scene.Render();
  this->Enable();
  const Display from = this->OnEnd1();
  const Display to = Plus(from, -10, 40);
  this->Pointer.Press(zvtest::Left, from);
  this->Pointer.MoveTo(to);
  EXPECT_LT(std::abs(this->Pointer.At(this->End1())[1] - to[1]), 3);
  this->ExpectTheScreenIsCurrent();
  this->Pointer.Release(zvtest::Left);
}

TEST_F(RulerWidget, EndsThatAreNotNumbersAreDrawnNowhere)
{
  const double nan = std::numeric_limits<double>::quiet_NaN();
  this->Enable();
  this->Ruler->SetPoint1(nan, nan, nan);
  this->Ruler->SetPoint2(nan, nan, nan);
  this->Ruler->UpdateScaleLabel();
  EXPECT_EQ(this->Scene.Look().Count(Red), 0);
  this->Pointer.Press(zvtest::Left, this->OnEnd2());
  EXPECT_EQ(this->Ruler->State, zvRulerWidget::Outside);
  this->Ruler->SetPoint1(-5, 0, 0);
  this->Ruler->SetPoint2(5, 0, 0);
  this->Ruler->UpdateScaleLabel();
  EXPECT_TRUE(this->Scene.Look().HasNear(Red, this->OnLine(), 1));
  this->ExpectEnds({ { -5, 0, 0 } }, { { 5, 0, 0 } });
}

TEST_F(RulerWidget, OtherEventsAreIgnored)
{
  this->Enable();
  this->Watch();
  for (unsigned long event : { vtkCommand::CharEvent, vtkCommand::LeftButtonDoubleClickEvent,
         vtkCommand::EnterEvent, vtkCommand::EnableEvent })
  {
    zvRulerWidget::ProcessEvents(nullptr, event, this->Ruler.Get(), nullptr);
  }
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  EXPECT_THAT(this->Renders.Events(), IsEmpty());
  EXPECT_EQ(this->Ruler->State, zvRulerWidget::Start);
}

TEST_F(RulerWidget, HandlersAreHarmlessWithoutAnInteractorOrARenderer)
{
  vtkNew<OpenRuler> lone;
  World x{ { 1, 2, 3 } };
  for (int i = 0; i < 2; ++i)
  {
    for (unsigned long event : zvEvents::Handle)
    {
      for (int state : { zvRulerWidget::MovingHandle, zvRulerWidget::MovingLine,
             zvRulerWidget::Scaling, zvRulerWidget::Outside })
      {
        lone->State = state;
        zvRulerWidget::ProcessEvents(nullptr, event, lone.Get(), nullptr);
      }
    }
    lone->EnablePointWidget();
    lone->DisablePointWidget();
    lone->HighlightLine(1);
    lone->HighlightHandles(1);
    lone->Scale(x.data(), x.data(), 0, 0);
    lone->SetInteractor(this->Scene.Interactor());
  }
  EXPECT_EQ(lone->CurrentPointWidget, nullptr);
  EXPECT_EQ(lone->GetEnabled(), 0);
}

TEST_F(RulerWidget, ADragThatDisablingCutsOffIsOver)
{
  for (const Display& position : { this->OnEnd1(), this->OnLine() })
  {
    this->Enable();
    this->Pointer.Press(zvtest::Left, position);
    this->Ruler->SetEnabled(0);
    this->Enable();
    this->Pointer.MoveTo(this->Beside());
    this->ExpectEnds({ { -5, 0, 0 } }, { { 5, 0, 0 } });
    EXPECT_EQ(this->Ruler->State, zvRulerWidget::Start);
  }
}

TEST_F(RulerWidget, MovesToAnotherInteractorWithItsCrosses)
{
  zvtest::Scene other;
  this->Enable();
  this->Ruler->SetInteractor(other.Interactor());
  EXPECT_EQ(this->Ruler->GetEnabled(), 0);
  EXPECT_EQ(this->PropsInView(), 0);
  this->Enable();
  EXPECT_EQ(other.Renderer()->GetViewProps()->GetNumberOfItems(), 4);
  EXPECT_EQ(this->Ruler->PointWidget1->GetInteractor(), other.Interactor());
  this->Ruler->SetEnabled(0);
}

namespace
{
const std::initializer_list<unsigned long> AllOfADrag = { vtkCommand::EnableEvent,
  vtkCommand::StartInteractionEvent, vtkCommand::InteractionEvent, vtkCommand::EndInteractionEvent,
  vtkCommand::DisableEvent };
}

TEST_F(RulerWidget, MayBeReleasedFromItsOwnEvents)
{
  this->Ruler = nullptr;
  for (unsigned long event : AllOfADrag)
  {
    for (const Display& position : { this->OnEnd1(), this->OnLine() })
    {
      SCOPED_TRACE(vtkCommand::GetStringFromEventId(event));
      zvRulerWidget* ruler = zvRulerWidget::New();
      vtkWeakPointer<zvRulerWidget> alive = ruler;
      ruler->SetInteractor(this->Scene.Interactor());
      ruler->SetPoint1(-5, 0, 0);
      ruler->SetPoint2(5, 0, 0);
      zvtest::EventRecorder recorder;
      recorder.Watch(ruler, { event }, [&](const zvtest::RecordedEvent&) { ruler->Delete(); });
      ruler->SetEnabled(1);
      this->Pointer.Drag(zvtest::Left, position, Plus(position, 10, 10));
      if (alive)
      {
        ruler->SetEnabled(0);
      }
      EXPECT_EQ(alive, nullptr);
      EXPECT_EQ(this->PropsInView(), 0);
    }
  }
}

TEST_F(RulerWidget, MayBeDisabledOrLoseItsInteractorInItsOwnEvents)
{
  for (unsigned long event : { vtkCommand::EnableEvent, vtkCommand::StartInteractionEvent,
         vtkCommand::InteractionEvent, vtkCommand::EndInteractionEvent })
  {
    for (bool takeInteractor : { false, true })
    {
      for (zvtest::Button button : { zvtest::Left, zvtest::Middle })
      {
        for (const Display& position : { this->OnEnd1(), this->OnLine() })
        {
          SCOPED_TRACE(vtkCommand::GetStringFromEventId(event));
          vtkNew<OpenRuler> ruler;
          ruler->SetInteractor(this->Scene.Interactor());
          ruler->SetPoint1(-5, 0, 0);
          ruler->SetPoint2(5, 0, 0);
          zvtest::EventRecorder recorder;
          recorder.Watch(ruler, { event },
            [&](const zvtest::RecordedEvent&)
            { takeInteractor ? ruler->SetInteractor(nullptr) : ruler->SetEnabled(0); });
          ruler->SetEnabled(1);
          this->Pointer.Drag(button, position, Plus(position, 10, 10));
          EXPECT_EQ(recorder.Count(event), 1);
          EXPECT_EQ(ruler->GetEnabled(), 0);
          EXPECT_EQ(ruler->State, zvRulerWidget::Start);
          EXPECT_EQ(this->PropsInView(), 0);
        }
      }
    }
  }
}

TEST_F(RulerWidget, MayBeDisabledOrReleasedInAnyOfItsRenders)
{
  this->Ruler = nullptr;
  for (bool release : { false, true })
  {
    for (const Display& position : { this->OnEnd1(), this->OnLine() })
    {
      int victim = 0;
      for (bool reached = true; reached; ++victim)
      {
        SCOPED_TRACE(victim);
        zvRulerWidget* ruler = zvRulerWidget::New();
        vtkWeakPointer<zvRulerWidget> alive = ruler;
        ruler->SetInteractor(this->Scene.Interactor());
        ruler->SetPoint1(-5, 0, 0);
        ruler->SetPoint2(5, 0, 0);
        zvtest::EventRecorder recorder;
        int count = 0;
        recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent },
          [&](const zvtest::RecordedEvent&)
          {
            if (count++ == victim)
            {
              release ? ruler->Delete() : ruler->SetEnabled(0);
            }
          });
        ruler->SetEnabled(1);
        this->Pointer.Drag(zvtest::Left, position, Plus(position, 10, 10));
        reached = count > victim;
        count = victim + 1; // nothing more from the observer
        if (reached)
        {
          EXPECT_EQ(this->PropsInView(), 0);
        }
        if (reached && !release)
        {
          EXPECT_EQ(ruler->GetEnabled(), 0);
        }
        if (!reached || !release)
        {
          ruler->Delete();
        }
        EXPECT_EQ(alive, nullptr);
      }
      EXPECT_GE(victim, 6);
    }
  }
}

TEST_F(RulerWidget, MayBeEnabledAgainWhileItIsDisabled)
{
  int victim = -1; // the event at first, then each render
  for (bool reached = true; reached; ++victim)
  {
    SCOPED_TRACE(victim);
    this->Enable();
    this->Pointer.Press(zvtest::Left, this->OnLine());
    zvtest::EventRecorder recorder;
    int renders = 0;
    bool done = false;
    const auto enableAgain = [&](const zvtest::RecordedEvent& event)
    {
      if (!done && (event.Id == vtkCommand::DisableEvent ? victim < 0 : renders++ == victim))
      {
        done = true;
        this->Enable();
      }
    };
    recorder.Watch(this->Ruler, { vtkCommand::DisableEvent }, enableAgain);
    recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent }, enableAgain);
    this->Ruler->SetEnabled(0);
    reached = done;
    EXPECT_EQ(this->Ruler->GetEnabled(), done ? 1 : 0);
    if (done)
    {
      EXPECT_GE(this->PropsInView(), 4);
      EXPECT_EQ(this->Ruler->PointWidget1->GetEnabled(), 1);
      EXPECT_EQ(this->Ruler->PointWidget2->GetEnabled(), 1);
      this->Pointer.Press(zvtest::Left, this->OnEnd2());
      EXPECT_EQ(this->Ruler->State, zvRulerWidget::MovingHandle);
      this->Pointer.Release(zvtest::Left);
    }
    done = true;
    this->Ruler->SetEnabled(0);
    EXPECT_EQ(this->PropsInView(), 0);
  }
  EXPECT_GE(victim, 4);
}

TEST_F(RulerWidget, DeletedWhileGrabbedLeavesNothingBehind)
{
  for (const Display& position : { this->OnEnd1(), this->OnLine() })
  {
    this->Ruler = vtkSmartPointer<OpenRuler>::New();
    this->Ruler->SetInteractor(this->Scene.Interactor());
    this->Ruler->SetPoint1(-5, 0, 0);
    this->Ruler->SetPoint2(5, 0, 0);
    this->Enable();
    this->Pointer.Press(zvtest::Left, position);
    EXPECT_NE(this->Ruler->State, zvRulerWidget::Start);
    vtkSmartPointer<vtkCommand> command = this->Ruler->EventCallbackCommand;
    this->Ruler = nullptr;
    for (unsigned long event : zvEvents::Handle)
    {
      EXPECT_FALSE(this->Scene.Interactor()->HasObserver(event, command));
    }
    EXPECT_EQ(this->PropsInView(), 0);
    this->Pointer.MoveTo(this->Beside());
    this->Pointer.Release(zvtest::Left);
  }
}

TEST_F(RulerWidget, OutlivesItsRenderersInMidDrag)
{
  for (const Display& position : { this->OnEnd1(), this->OnLine() })
  {
    zvtest::Scene scene;
    scene.LookAlong(2);
    const double view[6] = { -10, 10, -10, 10, -10, 10 };
    scene.ResetCamera(view);
    scene.Render();
    this->Ruler->SetInteractor(scene.Interactor());
    this->Enable();
    zvtest::Mouse mouse(scene);
    mouse.Press(zvtest::Left, position);
    EXPECT_NE(this->Ruler->State, zvRulerWidget::Outside);
    scene.DropRenderers();
    mouse.MoveTo({ { 20, 30 } });
    mouse.WheelForward({ { 20, 30 } });
    this->ExpectEnds({ { -5, 0, 0 } }, { { 5, 0, 0 } });
    mouse.Release(zvtest::Left);
    mouse.Press(zvtest::Left, position);
    EXPECT_EQ(this->Ruler->State, zvRulerWidget::Outside);
    EXPECT_FALSE(this->Ruler->IsClicked());
    this->Ruler->SetEnabled(0);
    EXPECT_EQ(this->Ruler->GetEnabled(), 0);
  }
}

TEST_F(RulerWidget, LosesItsRendererAndIsStillDisabledWithoutATrace)
{
  this->Enable();
  this->Pointer.Press(zvtest::Left, this->OnEnd1());
  this->Ruler->SetCurrentRenderer(nullptr);
  this->Pointer.MoveTo(this->Beside());
  this->Pointer.Press(zvtest::Left, this->OnEnd1());
  EXPECT_EQ(this->Ruler->State, zvRulerWidget::Outside);
  this->Ruler->SetEnabled(0);
  EXPECT_EQ(this->Ruler->GetEnabled(), 0);
  EXPECT_EQ(this->PropsInView(), 0);
}

TEST_F(RulerWidget, OutlivesItsView)
{
  for (const Display& position : { this->OnEnd1(), this->OnLine() })
  {
    zvtest::Scene scene;
    scene.LookAlong(2);
    const double view[6] = { -10, 10, -10, 10, -10, 10 };
    scene.ResetCamera(view);
    scene.Render();
    this->Ruler->SetInteractor(scene.Interactor());
    this->Enable();
    zvtest::Mouse(scene).Press(zvtest::Left, position);
    scene.DropRenderers();
    scene.DropInteractor();
    scene.DropWindow();
    EXPECT_EQ(this->Ruler->GetInteractor(), nullptr);
    EXPECT_EQ(this->Ruler->GetEnabled(), 0);
    this->Ruler->UpdateScaleLabel();
  }
}
