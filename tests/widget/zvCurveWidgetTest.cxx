// What the widgets that draw a curve through handles have in common: settings, placing, projecting,
// handles, closure and motions.
#include "zvCurveKinds.h"

#include "zvEvents.h"
#include "zvParametricSpline.h"

#include "vtkObjectFactory.h"
#include "vtkParametricFunctionSource.h"
#include "vtkPlaneSource.h"
#include "vtkVersion.h"
#include "vtkWeakPointer.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zvtest::World;

namespace
{
using Names = std::vector<std::string>;

template <class Widget>
class CurveWidget : public zvtest::CurveWidgetTest<Widget>
{
};

TYPED_TEST_SUITE(CurveWidget, zvtest::AllCurves, );

template <class Widget>
class Replaced : public Widget
{
public:
  static Replaced* New() { return new Replaced; }
  vtkTypeMacro(Replaced, Widget)
};

template <class Widget>
class Factory : public vtkObjectFactory
{
public:
  static Factory* New() { return new Factory; }
  vtkTypeMacro(Factory, vtkObjectFactory)
  const char* GetVTKSourceVersion() override { return VTK_SOURCE_VERSION; }
  const char* GetDescription() override { return "replaces one class"; }

private:
  static vtkObject* Make() { return Replaced<Widget>::New(); }
  Factory()
  {
    this->RegisterOverride(
      zvtest::CurveKind<Widget>::Name, "Replaced", "for the test", 1, &Factory::Make);
  }
};
}

// ---- What it is

TYPED_TEST(CurveWidget, ReportsItsOwnNameAndItsAncestors)
{
  vtkNew<TypeParam> widget;
  EXPECT_STREQ(widget->GetClassName(), TestFixture::Kind::Name);
  std::vector<const char*> ancestors = TestFixture::Kind::Ancestors();
  ancestors.insert(ancestors.end(), { "vtk3DWidget", "vtkInteractorObserver", "vtkObject" });
  EXPECT_EQ(widget->IsA(TestFixture::Kind::Name), 1);
  for (const char* name : ancestors)
  {
    EXPECT_EQ(widget->IsA(name), 1) << name;
  }
  for (const char* name : { "zvWidgets", "zvSplineWidget", "zvAreaWidget", "zvLassoWidget" })
  {
    const bool isOne = std::string(name) == TestFixture::Kind::Name ||
      std::count(ancestors.begin(), ancestors.end(), std::string(name)) > 0;
    EXPECT_EQ(widget->IsA(name), isOne ? 1 : 0) << name;
  }
  auto other = vtkSmartPointer<TypeParam>::Take(widget->NewInstance());
  EXPECT_STREQ(other->GetClassName(), TestFixture::Kind::Name);
}

TYPED_TEST(CurveWidget, IsMadeByTheObjectFactoryWhenThatKnowsTheClass)
{
  vtkNew<Factory<TypeParam>> factory;
  vtkObjectFactory::RegisterFactory(factory);
  vtkNew<TypeParam> replaced;
  vtkObjectFactory::UnRegisterFactory(factory);
  vtkNew<TypeParam> plain;
  EXPECT_STREQ(replaced->GetClassName(), "Replaced");
  EXPECT_STREQ(plain->GetClassName(), TestFixture::Kind::Name);
}

TYPED_TEST(CurveWidget, TheInstantiatorMakesOneWithOneReference)
{
  auto made = vtkSmartPointer<vtkObject>::Take(TestFixture::Kind::Instantiate());
  EXPECT_STREQ(made->GetClassName(), TestFixture::Kind::Name);
  EXPECT_EQ(made->GetReferenceCount(), 1);
}

// ---- Settings, placing and handles

TYPED_TEST(CurveWidget, WorksWithoutProperties)
{
  this->Curve->SetHandleProperty(nullptr);
  this->Curve->SetLineProperty(nullptr);
  this->Curve->SetSelectedLineProperty(nullptr);
  this->Show(this->Square(), true);
  const World corner = this->HandleAt(1);
  this->Pointer.Drag(zvtest::Middle, this->Pointer.At(corner), { { 210, 200 } });
  EXPECT_EQ(this->Curve->GetState(), TypeParam::Start);
}

TYPED_TEST(CurveWidget, ProjectionSettingsMoveNothingByThemselves)
{
  this->Show(this->Square());
  vtkMTimeType before = this->Curve->GetMTime();
  this->Curve->SetProjectToPlane(1);
  EXPECT_GT(this->Curve->GetMTime(), before);
  before = this->Curve->GetMTime();
  this->Curve->SetProjectionNormal(1);
  EXPECT_GT(this->Curve->GetMTime(), before);
  before = this->Curve->GetMTime();
  this->Curve->SetProjectionNormal(1);
  EXPECT_EQ(this->Curve->GetMTime(), before);
  this->ExpectHandles(this->Square());
}

TYPED_TEST(CurveWidget, TheProjectionNormalIsClamped)
{
  this->Curve->SetProjectionNormal(7);
  EXPECT_EQ(this->Curve->GetProjectionNormal(), 3);
  this->Curve->SetProjectionNormal(-1);
  EXPECT_EQ(this->Curve->GetProjectionNormal(), 0);
  EXPECT_EQ(this->Curve->GetProjectionNormalMinValue(), 0);
  EXPECT_EQ(this->Curve->GetProjectionNormalMaxValue(), 3);
}

TYPED_TEST(CurveWidget, ProjectToPlaneIsStoredAsGivenAndSwitched)
{
  this->Curve->SetProjectToPlane(5);
  EXPECT_EQ(this->Curve->GetProjectToPlane(), 5);
  this->Curve->ProjectToPlaneOff();
  EXPECT_EQ(this->Curve->GetProjectToPlane(), 0);
  this->Curve->ProjectToPlaneOn();
  EXPECT_EQ(this->Curve->GetProjectToPlane(), 1);
}

TYPED_TEST(CurveWidget, TheProjectionPositionMovesTheHandlesOnlyWhileProjecting)
{
  this->Show(this->Square());
  this->Curve->SetProjectionNormal(2);
  const vtkMTimeType before = this->Curve->GetMTime();
  const vtkMTimeType spline = this->Curve->GetParametricSpline()->GetMTime();
  this->Curve->SetProjectionPosition(3.0);
  this->ExpectHandles(this->Square());
  EXPECT_GT(this->Curve->GetParametricSpline()->GetMTime(), spline);
  EXPECT_EQ(this->Curve->GetMTime(), before);
  this->Curve->ProjectToPlaneOn();
  this->Curve->SetProjectionPosition(3.0);
  for (int i = 0; i < 4; ++i)
  {
    EXPECT_EQ(this->HandleAt(i)[2], 3.0);
  }
}

TYPED_TEST(CurveWidget, ThePlaneSourceIsOnlyReferredTo)
{
  const vtkMTimeType before = this->Curve->GetMTime();
  {
    vtkNew<vtkPlaneSource> plane;
    const int references = plane->GetReferenceCount();
    this->Curve->SetPlaneSource(plane);
    EXPECT_EQ(plane->GetReferenceCount(), references);
  }
  EXPECT_EQ(this->Curve->GetMTime(), before);
  this->Show(this->Square());
  this->Curve->SetProjectionNormal(3);
  this->Curve->ProjectPointsToPlane(); // the plane is gone
  this->ExpectGenericWarning(TestFixture::Kind::File, this->PlaneWarning);
  this->ExpectHandles(this->Square());
}

TYPED_TEST(CurveWidget, TheResolutionIsNeverBelowTheSpansBetweenHandles)
{
  this->Curve->InitializeHandles(this->PointsOf(std::vector<World>(6)));
  this->Curve->SetResolution(2);
  EXPECT_EQ(this->Curve->GetResolution(), 500);
  this->Curve->InitializeHandles(this->PointsOf(std::vector<World>(3)));
  const vtkMTimeType before = this->Curve->ParametricFunctionSource->GetMTime();
  this->Curve->SetResolution(2);
  EXPECT_EQ(this->Curve->GetResolution(), 2);
  EXPECT_EQ(this->Curve->ParametricFunctionSource->GetUResolution(), 2);
  EXPECT_GT(this->Curve->ParametricFunctionSource->GetMTime(), before);
}

TYPED_TEST(CurveWidget, AResolutionThatDrawsNothingIsBorne)
{
  for (int resolution : { 0, -1 })
  {
    this->Curve->InitializeHandles(this->PointsOf({}));
    this->Curve->SetResolution(resolution);
    EXPECT_EQ(this->Curve->GetResolution(), resolution);
    this->Show(this->Square(), true);
    this->Scene.Render();
    this->Pointer.Drag(zvtest::Left, this->Pointer.At({ { 6, 6, 0 } }), { { 200, 200 } });
    this->Pointer.Drag(zvtest::Left, this->Pointer.At({ { 0, -6, 0 } }), { { 200, 200 } });
    EXPECT_GE(this->Curve->GetNumberOfHandles(), 4);
    this->Curve->SetEnabled(0);
  }
}

TYPED_TEST(CurveWidget, TheSameResolutionChangesNothing)
{
  const vtkMTimeType before = this->Curve->ParametricFunctionSource->GetMTime();
  this->Curve->SetResolution(500);
  EXPECT_EQ(this->Curve->ParametricFunctionSource->GetMTime(), before);
}

TYPED_TEST(CurveWidget, ASplineIsReplacedWithAReference)
{
  this->Show(this->Square());
  vtkWeakPointer<zvParametricSpline> first = this->Curve->GetParametricSpline();
  vtkNew<zvParametricSpline> spline;
  this->Curve->SetParametricSpline(spline);
  EXPECT_EQ(this->Curve->GetParametricSpline(), spline);
  EXPECT_EQ(this->Curve->ParametricFunctionSource->GetParametricFunction(), spline);
  EXPECT_EQ(spline->GetReferenceCount(), 3); // ours, the widget's, the source's
  EXPECT_EQ(first, nullptr);
  EXPECT_EQ(spline->GetPoints(), nullptr);
  this->Curve->BuildRepresentation();
  ASSERT_NE(spline->GetPoints(), nullptr);
  EXPECT_EQ(spline->GetPoints()->GetNumberOfPoints(), 4);
  this->Curve->SetParametricSpline(spline);
  EXPECT_EQ(spline->GetReferenceCount(), 3);
}

TYPED_TEST(CurveWidget, WithoutASplineTheLineStaysAndNothingBreaks)
{
  this->Show(this->Square());
  const World onLine = this->OnLine(0.5);
  this->Curve->SetParametricSpline(nullptr);
  EXPECT_EQ(this->Curve->GetParametricSpline(), nullptr);
  this->Curve->SetHandlePosition(0, -5.0, -5.0, 0.0);
  this->Curve->ClosedOn();
  this->Curve->ClosedOff();
  this->Pointer.Drag(zvtest::Left, this->Pointer.At(onLine), { { 200, 200 } });
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 5);
  this->Scene.Render();
  EXPECT_EQ(this->OnLine(0.5), onLine);
}

TYPED_TEST(CurveWidget, ClosingIsPassedOnToTheSpline)
{
  this->Show(this->Square());
  zvParametricSpline* spline = this->Curve->GetParametricSpline();
  const vtkMTimeType before = spline->GetMTime();
  this->Curve->SetClosed(0);
  EXPECT_EQ(spline->GetMTime(), before);
  this->Curve->ClosedOn();
  EXPECT_EQ(this->Curve->GetClosed(), 1);
  EXPECT_EQ(spline->GetClosed(), 1);
  EXPECT_GT(spline->GetMTime(), before);
  this->Curve->ClosedOff();
  EXPECT_EQ(this->Curve->GetClosed(), 0);
  EXPECT_EQ(spline->GetClosed(), 0);
}

TYPED_TEST(CurveWidget, ClosedIsStoredAsGiven)
{
  this->Curve->SetClosed(5);
  EXPECT_EQ(this->Curve->GetClosed(), 5);
}

TYPED_TEST(CurveWidget, TheStateIsStoredAsGiven)
{
  this->Curve->SetState(5);
  EXPECT_EQ(this->Curve->GetState(), 5);
}

TYPED_TEST(CurveWidget, CannotBeEnabledOrDisabledWithoutAnInteractor)
{
  vtkNew<TypeParam> widget;
  for (int enabling : { 1, 0 })
  {
    widget->SetEnabled(enabling);
    this->ExpectVtkError(
      TestFixture::Kind::EnablingFile, TestFixture::Kind::Name, widget, this->InteractorError);
    EXPECT_EQ(widget->GetEnabled(), 0);
  }
}

TYPED_TEST(CurveWidget, WithoutARendererEnablingGivesUpSilently)
{
  this->Scene.DropRenderers();
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  this->Curve->SetEnabled(1);
  EXPECT_EQ(this->Curve->GetEnabled(), 0);
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TYPED_TEST(CurveWidget, EnablingTakesTheRendererUnderTheLastEvent)
{
  zvtest::SceneOptions options;
  options.Viewports = 2;
  class zvtest::Scene scene(options);
  zvtest::Mouse mouse(scene);
  mouse.MoveTo({ { 300, 200 } });
  mouse.MoveTo({ { 310, 200 } }); // the last position is now in the right viewport, too
  this->Curve->SetInteractor(scene.Interactor());
  this->Curve->SetEnabled(1);
  EXPECT_EQ(this->Curve->GetCurrentRenderer(), scene.Renderer(1));
  this->Curve->SetEnabled(0);
  this->Curve->SetInteractor(nullptr);
}

TYPED_TEST(CurveWidget, AddObserversAttachesTheNineEventsAndTellsNothing)
{
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Curve, zvtest::WidgetEvents);
  this->Curve->AddObservers();
  for (unsigned long event : zvEvents::Handle)
  {
    EXPECT_TRUE(this->Scene.Interactor()->HasObserver(event, this->Curve->EventCallbackCommand));
  }
  EXPECT_THAT(recorder.Names(), IsEmpty());
  vtkNew<TypeParam> lonely;
  lonely->AddObservers();
  this->ExpectNoMessage();
}

TYPED_TEST(CurveWidget, PlacingSpreadsTheHandlesOnTheDiagonal)
{
  this->Curve->SetNumberOfHandles(5);
  this->Curve->PlaceWidget(0, 4, -2, 2, 10, 30);
  this->ExpectHandles(
    { { { 0, -2, 10 } }, { { 1, -1, 15 } }, { { 2, 0, 20 } }, { { 3, 1, 25 } }, { { 4, 2, 30 } } });
  EXPECT_THAT(this->Curve->InitialBounds, ElementsAre(0, 4, -2, 2, 10, 30));
  EXPECT_DOUBLE_EQ(this->Curve->InitialLength, std::sqrt(16.0 + 16.0 + 400.0));
}

TYPED_TEST(CurveWidget, PlacingASingleHandlePutsItInTheLowCorner)
{
  this->Curve->SetNumberOfHandles(1);
  double bounds[6] = { 0, 4, -2, 2, 10, 30 };
  this->Curve->PlaceWidget(bounds);
  this->ExpectHandles({ { { 0, -2, 10 } } });
}

TYPED_TEST(CurveWidget, PlacingScalesTheBoundsByThePlaceFactor)
{
  this->Curve->SetNumberOfHandles(2);
  this->Curve->SetPlaceFactor(0.5);
  double bounds[6] = { 0, 4, -2, 2, 10, 30 };
  this->Curve->PlaceWidget(bounds);
  this->ExpectHandles({ { { 1, -1, 15 } }, { { 3, 1, 25 } } });
}

TYPED_TEST(CurveWidget, PlacingWhileProjectingMovesTheHandlesToThePlaneOnly)
{
  this->Curve->InitializeHandles(this->PointsOf(this->Square()));
  this->Curve->SetProjectionNormal(1);
  this->Curve->ProjectToPlaneOn();
  double bounds[6] = { 0, 4, -2, 2, 10, 30 };
  this->Curve->PlaceWidget(bounds);
  this->ExpectHandles({ { { -6, 0, 0 } }, { { 6, 0, 0 } }, { { 6, 0, 0 } }, { { -6, 0, 0 } } });
}

TYPED_TEST(CurveWidget, PlacingLeavesTheLineForTheNextRebuild)
{
  this->Show(this->Square());
  const vtkMTimeType spline = this->Curve->GetParametricSpline()->GetMTime();
  double bounds[6] = { 0, 4, -2, 2, 0, 3 };
  this->Curve->PlaceWidget(bounds);
  EXPECT_EQ(this->Curve->GetParametricSpline()->GetMTime(), spline);
  this->Curve->BuildRepresentation();
  World last;
  this->Curve->GetParametricSpline()->GetPoints()->GetPoint(3, last.data());
  EXPECT_EQ(last, (World{ { 4, 2, 3 } }));
}

TYPED_TEST(CurveWidget, ProjectsAlongEachAxis)
{
  for (int axis = 0; axis < 3; ++axis)
  {
    this->Curve->ProjectToPlaneOff();
    this->Curve->InitializeHandles(this->PointsOf(this->Square()));
    this->Curve->SetProjectionNormal(axis);
    this->Curve->SetProjectionPosition(2.5);
    this->Curve->ProjectPointsToPlane();
    std::vector<World> expected = this->Square();
    for (World& handle : expected)
    {
      handle[axis] = 2.5;
    }
    this->ExpectHandles(expected);
  }
}

TYPED_TEST(CurveWidget, ProjectsToAnObliquePlane)
{
  vtkNew<vtkPlaneSource> plane;
  plane->SetOrigin(1.0, 0.0, 1.0);
  plane->SetPoint1(4.0, 0.0, 4.0);
  plane->SetPoint2(1.0, 7.0, 1.0);
  this->Curve->SetPlaneSource(plane);
  this->Curve->SetProjectionNormal(3);
  this->Curve->ProjectToPlaneOn();
  this->Curve->InitializeHandles(this->PointsOf({ { { 2, 3, 0 } }, { { 5, -1, 5 } } }));
  this->ExpectHandles({ { { 1, 3, 1 } }, { { 5, -1, 5 } } });
}

TYPED_TEST(CurveWidget, ObliqueWithoutAPlaneWarnsAndMovesNothing)
{
  this->Curve->InitializeHandles(this->PointsOf(this->Square()));
  this->Curve->SetProjectionNormal(3);
  this->Curve->ProjectPointsToPlane();
  this->ExpectGenericWarning(TestFixture::Kind::File, this->PlaneWarning);
  this->Curve->ProjectPointsToObliquePlane();
  this->ExpectGenericWarning(TestFixture::Kind::File, this->PlaneWarning);
  this->Curve->ProjectPointsToOrthoPlane(); // no axis to project along
  this->ExpectHandles(this->Square());
}

TYPED_TEST(CurveWidget, InitializingTakesAListOfAnyPrecision)
{
  vtkNew<vtkPoints> single;
  single->InsertNextPoint(0.5, 1.5, 2.5);
  single->InsertNextPoint(-0.5, -1.5, -2.5);
  this->Curve->InitializeHandles(single);
  this->ExpectHandles({ { { 0.5, 1.5, 2.5 } }, { { -0.5, -1.5, -2.5 } } });
  this->Curve->InitializeHandles(nullptr);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 2);
  vtkNew<vtkPoints> none;
  this->Curve->InitializeHandles(none);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 0);
}

TYPED_TEST(CurveWidget, ThePositionsOfTwoHandlesCanBeHeldAtOnce)
{
  this->Show(this->Square());
  const double* first = this->Curve->GetHandlePosition(0);
  const double* third = this->Curve->GetHandlePosition(2);
  EXPECT_EQ(first[0], -6.0);
  EXPECT_EQ(third[0], 6.0);
}

TYPED_TEST(CurveWidget, AHandleOutOfRangeIsAnErrorAndChangesNothing)
{
  this->Show(this->Square());
  for (int handle : { -1, 4, 1000 })
  {
    this->Curve->SetHandlePosition(handle, 1.0, 2.0, 3.0);
    this->ExpectVtkError(
      TestFixture::Kind::File, TestFixture::Kind::Name, this->Curve, TestFixture::Kind::IndexError);
    double position[3] = { 7, 8, 9 };
    this->Curve->SetHandlePosition(handle, position);
    this->ExpectVtkError(
      TestFixture::Kind::File, TestFixture::Kind::Name, this->Curve, TestFixture::Kind::IndexError);
    this->Curve->GetHandlePosition(handle, position);
    this->ExpectVtkError(
      TestFixture::Kind::File, TestFixture::Kind::Name, this->Curve, TestFixture::Kind::IndexError);
    EXPECT_THAT(position, ElementsAre(7, 8, 9));
    EXPECT_EQ(this->Curve->GetHandlePosition(handle), nullptr);
    this->ExpectVtkError(
      TestFixture::Kind::File, TestFixture::Kind::Name, this->Curve, TestFixture::Kind::IndexError);
  }
  this->ExpectHandles(this->Square());
}

TYPED_TEST(CurveWidget, AHandleIsMovedToThreeCoordinatesInEitherForm)
{
  this->Show(this->Square());
  double position[3] = { 1, 2, 3 };
  this->Curve->SetHandlePosition(1, position);
  this->Curve->SetHandlePosition(3, 4.0, 5.0, 6.0);
  this->ExpectHandles({ { { -6, -6, 0 } }, { { 1, 2, 3 } }, { { 6, 6, 0 } }, { { 4, 5, 6 } } });
  World inSpline;
  this->Curve->GetParametricSpline()->GetPoints()->GetPoint(1, inSpline.data());
  EXPECT_EQ(inSpline, (World{ { 1, 2, 3 } }));
}

TYPED_TEST(CurveWidget, WithoutAnArrayNothingChanges)
{
  struct Row
  {
    const char* File;
    const char* Message;
    std::function<void()> Call;
  };
  const char* const own = TestFixture::Kind::Name; // adding is each class's own
  const char* const file = TestFixture::Kind::File;
  const char* const noPosition = "give the handle a position...";
  const char* const noMotion = "give both ends of the motion before moving the handles...";
  double xyz[3] = { 1, 2, 3 };
  const auto pointTo = [this](const World& place)
  {
    const zvtest::Display at = this->Pointer.At(place);
    this->Scene.Interactor()->SetEventPosition(at[0], at[1]);
  };
  const std::vector<Row> rows = {
    { own, noPosition, [&] { this->Curve->AddHandle(nullptr); } },
    { own, noPosition,
      [&]
      {
        pointTo(this->Square()[0]); // there it would close
        this->Curve->AddHandle(nullptr);
      } },
    { file, noPosition,
      [&]
      {
        pointTo(this->OnLine(0.5));
        ASSERT_EQ(this->Curve->IsClicked(), 1); // the line is hit
        this->Curve->InsertHandleOnLine(nullptr);
      } },
    { file, noPosition, [&] { this->Curve->SetHandlePosition(1, nullptr); } },
    { file, "give room for the position of the handle...",
      [&] { this->Curve->GetHandlePosition(1, nullptr); } },
    { file, noMotion, [&] { this->Curve->MovePoint(nullptr, xyz); } },
    { file, noMotion, [&] { this->Curve->MovePoint(xyz, nullptr); } },
    { file, noMotion, [&] { this->Curve->Translate(nullptr, xyz); } },
    { file, noMotion, [&] { this->Curve->Translate(xyz, nullptr); } },
    { file, noMotion, [&] { this->Curve->Scale(nullptr, xyz, 0, 9); } },
    { file, noMotion, [&] { this->Curve->Scale(xyz, nullptr, 0, 9); } },
    { file, noMotion, [&] { this->Curve->Spin(nullptr, xyz, xyz); } },
    { file, noMotion, [&] { this->Curve->Spin(xyz, nullptr, xyz); } },
    { file, "give the normal of the view before turning the handles...",
      [&] { this->Curve->Spin(xyz, xyz, nullptr); } },
    { file, "give bounds to place the handles in...", [&] { this->Curve->PlaceWidget(nullptr); } },
  };
  this->Show(this->Square());
  this->Curve->SetState(TypeParam::Outside);
  this->Curve->CurrentHandleIndex = 2;
  const double length = this->Curve->InitialLength;
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  for (const Row& row : rows)
  {
    row.Call();
    this->ExpectGenericWarning(row.File, row.Message);
    this->ExpectNoMessage();
    this->ExpectHandles(this->Square(), 0.0);
    EXPECT_EQ(this->Curve->GetClosed(), 0);
    EXPECT_EQ(this->Curve->GetState(), TypeParam::Outside);
    EXPECT_EQ(this->Curve->CurrentHandleIndex, 2);
    EXPECT_EQ(this->Curve->InitialLength, length);
    EXPECT_THAT(recorder.Names(), IsEmpty());
  }
}

TYPED_TEST(CurveWidget, TheCentroidIsTheMeanOfTheHandles)
{
  this->Curve->InitializeHandles(this->PointsOf({ { { 1, 2, 3 } }, { { 3, 6, -3 } } }));
  this->Curve->CalculateCentroid();
  EXPECT_THAT(this->Curve->Centroid, ElementsAre(2.0, 4.0, 0.0));
}

TYPED_TEST(CurveWidget, ErasingOutOfRangeOrBelowThreeDoesNothing)
{
  this->Show(this->Square());
  for (int index : { -1, 4, 5 })
  {
    this->Curve->EraseHandle(index);
  }
  this->ExpectHandles(this->Square());
  this->Curve->InitializeHandles(this->PointsOf({ { { 1, 0, 0 } }, { { 2, 0, 0 } } }));
  this->Curve->EraseHandle(0);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 2);
}

TYPED_TEST(CurveWidget, InsertingNeedsALineThatWasHitAndTwoHandles)
{
  double position[3] = { 0, 0, 0 };
  this->Show(this->Square());
  this->Curve->InsertHandleOnLine(position);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 4);
  this->Curve->InitializeHandles(this->PointsOf({ { { 0, 0, 0 } } }));
  this->Scene.Render();
  this->Pointer.MoveTo(this->Pointer.At({ { 0, 0, 0 } }));
  EXPECT_EQ(this->Curve->IsClicked(), 1);
  this->Curve->InsertHandleOnLine(position);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 1);
}

TYPED_TEST(CurveWidget, InsertsInEachSegmentOfAClosedCurve)
{
  for (int segment = 0; segment < 4; ++segment)
  {
    this->Show(this->Square(), true);
    this->Scene.Render();
    const World clicked = this->OnLine((segment + 0.5) / 4.0);
    this->Pointer.Press(zvtest::Left, this->Pointer.At(clicked));
    this->Pointer.Release(zvtest::Left);
    ASSERT_EQ(this->Curve->GetNumberOfHandles(), 5);
    std::vector<World> expected = this->Square();
    expected.insert(expected.begin() + segment + 1, clicked);
    this->ExpectHandles(expected, 3.0 * this->PixelSize());
  }
}

TYPED_TEST(CurveWidget, SumsTheLengthOfTheLineAsItWasDrawn)
{
  EXPECT_EQ(this->Curve->GetSummedLength(), 0.0);
  this->Show({ { { -3, 0, 0 } }, { { 3, 8, 0 } } });
  EXPECT_NEAR(this->Curve->GetSummedLength(), 10.0, 1e-4);
  this->Curve->SetHandlePosition(1, -3.0, 5.0, 0.0);
  EXPECT_NEAR(this->Curve->GetSummedLength(), 10.0, 1e-4);
  this->Scene.Render();
  EXPECT_NEAR(this->Curve->GetSummedLength(), 5.0, 1e-4);
}

TYPED_TEST(CurveWidget, GivesACopyOfTheLineAsItWasDrawn)
{
  vtkNew<vtkPolyData> line;
  this->Curve->GetPolyData(line);
  EXPECT_EQ(line->GetNumberOfPoints(), 0);
  this->Show(this->Square());
  this->Curve->GetPolyData(line);
  EXPECT_EQ(line->GetNumberOfPoints(), 501);
  EXPECT_EQ(line->GetNumberOfLines(), 1);
  this->Curve->GetPolyData(nullptr);
}

TYPED_TEST(CurveWidget, IsClosedTellsOfTheLineThatWasDrawn)
{
  this->Curve->InitializeHandles(this->PointsOf(this->Square()));
  this->Curve->ClosedOn();
  EXPECT_EQ(this->Curve->IsClosed(), 0);
  this->ExpectVtkError(TestFixture::Kind::File, TestFixture::Kind::Name, this->Curve,
    "No line data to query geometric closure");
  this->Curve->SetEnabled(1);
  EXPECT_EQ(this->Curve->IsClosed(), 1);
  this->Curve->ClosedOff();
  EXPECT_EQ(this->Curve->IsClosed(), 0);
}

TYPED_TEST(CurveWidget, AnOpenCurveIsNotClosedEvenIfItsEndsMeet)
{
  this->Show(std::vector<World>(3, { { 1, 2, 0 } }));
  EXPECT_EQ(this->OnLine(0.0), this->OnLine(1.0));
  EXPECT_EQ(this->Curve->IsClosed(), 0);
  this->Curve->ClosedOn();
  EXPECT_EQ(this->Curve->IsClosed(), 1);
}

TYPED_TEST(CurveWidget, OneHandleIsNotClosed)
{
  this->Show({ { { 1, 1, 0 } } }, true);
  EXPECT_EQ(this->Curve->IsClosed(), 0);
}

TYPED_TEST(CurveWidget, MovePointMovesTheCurrentHandle)
{
  this->Show(this->Square());
  double from[3] = { 1, 1, 1 };
  double to[3] = { 2, 0, 4 };
  this->Curve->CurrentHandleIndex = 2;
  this->Curve->MovePoint(from, to);
  std::vector<World> expected = this->Square();
  expected[2] = { { 7, 5, 3 } };
  this->ExpectHandles(expected);
  for (int index : { -1, 4 })
  {
    this->Curve->CurrentHandleIndex = index;
    this->Curve->MovePoint(from, to);
    this->ExpectGenericWarning(TestFixture::Kind::File, this->IndexWarning);
  }
  this->ExpectHandles(expected);
}

TYPED_TEST(CurveWidget, TranslateMovesAllHandles)
{
  this->Show(this->Square());
  double from[3] = { 1, 1, 1 };
  double to[3] = { 2, 0, 4 };
  this->Curve->Translate(from, to);
  this->ExpectHandles({ { { -5, -7, 3 } }, { { 7, -7, 3 } }, { { 7, 5, 3 } }, { { -5, 5, 3 } } });
}

TYPED_TEST(CurveWidget, ScaleShrinksOnAMotionDownOrAcrossAndGrowsOnOneUp)
{
  // Length 36 over 4 handles is 9; a motion of 3 is a third.
  double from[3] = { 0, 0, 0 };
  double to[3] = { 0, 3, 0 };
  this->Scene.Interactor()->SetEventPosition(100, 100);
  this->Scene.Interactor()->SetEventPosition(100, 100); // the last position, too
  struct Row
  {
    int Y;
    double Corner;
  };
  for (const Row& row : { Row{ 101, 8.0 }, Row{ 100, 4.0 }, Row{ 99, 4.0 } })
  {
    this->Curve->InitializeHandles(this->PointsOf(this->Square()));
    this->Curve->Scale(from, to, 0, row.Y);
    this->ExpectHandles({ { { -row.Corner, -row.Corner, 0 } }, { { row.Corner, -row.Corner, 0 } },
      { { row.Corner, row.Corner, 0 } }, { { -row.Corner, row.Corner, 0 } } });
  }
  vtkNew<TypeParam> lonely;
  lonely->Scale(from, to, 0, 0);
}

TYPED_TEST(CurveWidget, SpinTurnsAboutTheCentroidThatWasLastCalculated)
{
  // A quarter turn: the motion is a quarter of the radius 4.
  double from[3] = { 4, -1, 0 };
  double to[3] = { 4, 0, 0 };
  double normal[3] = { 0, 0, 1 };
  this->Curve->SetProjectionNormal(2);
  this->Curve->SetProjectToPlane(1);
  this->Curve->InitializeHandles(this->PointsOf({ { { 3, 0, 0 } }, { { 5, 0, 0 } } }));
  this->Curve->Spin(from, to, normal);
  this->ExpectHandles({ { { 0, 3, 0 } }, { { 0, 5, 0 } } });
  this->Curve->CalculateCentroid(); // (0, 4, 0)
  double beside[3] = { 4, 4, 0 };
  double below[3] = { 4, 3, 0 };
  this->Curve->Spin(below, beside, nullptr); // the view's normal does not count on a plane
  this->ExpectHandles({ { { 1, 4, 0 } }, { { -1, 4, 0 } } });
}

TYPED_TEST(CurveWidget, AFreeSpinTurnsAcrossTheView)
{
  // The axis is the view's normal (z) crossed with the motion (x): y.
  double from[3] = { -1, 0, 4 };
  double to[3] = { 0, 0, 4 };
  double normal[3] = { 0, 0, 1 };
  this->Curve->InitializeHandles(this->PointsOf({ { { 0, 0, 2 } }, { { 1, 5, 0 } } }));
  this->Curve->Spin(from, to, normal);
  this->ExpectHandles({ { { 2, 0, 0 } }, { { 0, 5, -1 } } });
  this->Curve->Spin(from, from, normal);
  this->ExpectHandles({ { { 2, 0, 0 } }, { { 0, 5, -1 } } });
}

TYPED_TEST(CurveWidget, SpinOnAnObliquePlaneTurnsAboutItsNormal)
{
  double from[3] = { 4, -1, 0 };
  double to[3] = { 4, 0, 0 };
  double viewNormal[3] = { 1, 0, 0 };
  this->Curve->InitializeHandles(this->PointsOf({ { { 2, 0, 7 } } }));
  this->Curve->SetProjectionNormal(3);
  this->Curve->SetProjectToPlane(1);
  this->Curve->Spin(from, to, viewNormal); // no plane: harmless
  this->ExpectHandles({ { { 2, 0, 7 } } });
  vtkNew<vtkPlaneSource> plane;
  this->Curve->SetPlaneSource(plane); // in x and y
  this->Curve->Spin(from, to, viewNormal);
  this->ExpectHandles({ { { 0, 2, 7 } } });
}

TYPED_TEST(CurveWidget, EachHandleOfAListIsProjectedByItself)
{
  this->Curve->SetProjectionNormal(3);
  this->Curve->ProjectToPlaneOn();
  this->Curve->InitializeHandles(
    this->PointsOf({ { { 1, 0, 0 } }, { { 2, 0, 0 } }, { { 3, 0, 0 } } }));
  for (int i = 0; i < 3; ++i)
  {
    this->ExpectGenericWarning(
      TestFixture::Kind::File, this->PlaneWarning); // one for each: hosts count on it
  }
  this->ExpectNoMessage();
}

TYPED_TEST(CurveWidget, MotionsDoNotProjectByThemselves)
{
  double from[3] = { 0, 0, 0 };
  double to[3] = { 0, 0, 3 };
  double normal[3] = { 0, 1, 0 };
  this->Show(this->Square());
  this->Curve->SetProjectionNormal(2);
  this->Curve->ProjectToPlaneOn();
  this->Curve->Translate(from, to);
  this->ExpectHandles({ { { -6, -6, 3 } }, { { 6, -6, 3 } }, { { 6, 6, 3 } }, { { -6, 6, 3 } } });
  this->Curve->CurrentHandleIndex = 1;
  this->Curve->MovePoint(from, to);
  EXPECT_EQ(this->HandleAt(1)[2], 6.0);
  this->Curve->Scale(from, to, 0, 0);
  this->Curve->SetProjectionNormal(0);
  this->Curve->Spin(from, to, normal);
  EXPECT_NE(this->HandleAt(0)[0], 0.0);
  this->Curve->SetHandlePosition(0, 5.0, 1.0, 2.0); // this does, for all
  for (int i = 0; i < 4; ++i)
  {
    EXPECT_EQ(this->HandleAt(i)[0], 0.0);
  }
}
