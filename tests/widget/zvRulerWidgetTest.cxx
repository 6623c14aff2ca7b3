#include "zvRulerFixture.h"

#include "zvEvents.h"

#include "vtkNew.h"
#include "vtkObjectFactory.h"
#include "vtkPolyData.h"
#include "vtkVersion.h"

#include <cmath>
#include <functional>
#include <limits>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zvtest::ColorOf;
using zvtest::Display;
using zvtest::OpenRuler;
using zvtest::World;

namespace
{
const zvtest::Color Red{ 255, 0, 0 };
constexpr char NoInteractor[] = "The interactor must be set prior to enabling/disabling widget";

class RulerWidget : public zvtest::RulerTest
{
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

TEST_F(RulerWidget, GrabbingTakesTheDepthOfThePickOfWhatIsGrabbed)
{
  this->Enable();
  const auto pickAt = [this](vtkCellPicker* picker, const World& place)
  {
    const Display at = this->Pointer.At(place);
    picker->Pick(at[0], at[1], 0.0, this->Scene.Renderer());
  };
  const auto expectDepthOf = [this](vtkCellPicker* picker)
  {
    EXPECT_EQ(this->Ruler->ValidPick, 1);
    for (int axis = 0; axis < 3; ++axis)
    {
      EXPECT_EQ(this->Ruler->LastPickPosition[axis], picker->GetPickPosition()[axis]);
    }
    this->Ruler->ValidPick = 0;
  };
  vtkCellPicker* onEnds = this->Ruler->HandlePicker;
  vtkCellPicker* onLine = this->Ruler->LinePicker;
  pickAt(onEnds, { { -5, 0, 0 } });
  pickAt(onLine, { { 1, 0, 0 } });
  ASSERT_GT(onLine->GetPickPosition()[0], onEnds->GetPickPosition()[0] + 5.0);
  this->Ruler->HighlightHandles(1);
  expectDepthOf(onEnds);
  this->Ruler->HighlightLine(1);
  expectDepthOf(onLine);
  this->Ruler->HighlightHandle(this->Ruler->Handle[1]);
  expectDepthOf(onEnds);
  // Letting go takes nothing.
  pickAt(onEnds, { { 5, 0, 0 } });
  const double before = this->Ruler->LastPickPosition[0];
  this->Ruler->HighlightHandle(nullptr);
  this->Ruler->HighlightHandles(0);
  this->Ruler->HighlightLine(0);
  EXPECT_EQ(this->Ruler->ValidPick, 0);
  EXPECT_EQ(this->Ruler->LastPickPosition[0], before);
}

TEST_F(RulerWidget, WithoutAnArrayNothingChanges)
{
  this->Ruler->PlaceWidget(-6, 6, -6, 6, -6, 6);
  World x{ { 1, 2, 3 } };
  const char* const noMotion = "give both ends of the motion before scaling the ruler...";
  const std::vector<std::pair<const char*, std::function<void()>>> rows = {
    { "give bounds to place the ruler in...", [&] { this->Ruler->PlaceWidget(nullptr); } },
    { "give the ruler a position...", [&] { this->Ruler->ClampPosition(nullptr); } },
    { "give the ruler a position...", [&] { EXPECT_EQ(this->Ruler->InBounds(nullptr), 0); } },
    { "give the ruler a position...", [&] { this->Ruler->SetLinePosition(nullptr); } },
    { noMotion, [&] { this->Ruler->Scale(nullptr, x.data(), 0, 9); } },
    { noMotion, [&] { this->Ruler->Scale(x.data(), nullptr, 0, 9); } },
  };
  for (const auto& [message, call] : rows)
  {
    call();
    this->ExpectGenericWarning("zvRulerWidget", message);
    this->ExpectEnds({ { -5, 0, 0 } }, { { 5, 0, 0 } }, 0.0);
    EXPECT_THAT(std::vector<double>(this->Ruler->InitialBounds, this->Ruler->InitialBounds + 6),
      ElementsAre(-6, 6, -6, 6, -6, 6));
  }
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

TEST_F(RulerWidget, BoundsThatAreNotNumbersAreBorneUntilThereAreOthers)
{
  const double nan = std::numeric_limits<double>::quiet_NaN();
  this->Enable();
  this->Pointer.Press(zvtest::Left, this->OnEnd2());
  this->Pointer.MoveTo(this->OnEnd2()); // the label is there
  this->Pointer.Release(zvtest::Left);
  this->Ruler->ValidPick = 0; // sizes come from the bounds
  this->Ruler->PlaceWidget(nan, nan, nan, nan, nan, nan);
  this->Ruler->UpdateScaleLabel();
  this->Scene.Render();
  this->ExpectNoMessage();
  this->Ruler->PlaceWidget(-6, 6, -6, 6, -6, 6);
  this->Ruler->UpdateScaleLabel();
  EXPECT_NEAR(this->Ruler->ScaleFollower->GetScale()[0], 0.12 * std::sqrt(3.0), 1e-9);
  EXPECT_TRUE(this->Scene.Look().HasNear(Red, this->OnLine(), 1));
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
