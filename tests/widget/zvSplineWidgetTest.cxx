#include "zvSplineWidget.h"

#include "zvCurveFixture.h"
#include "zvEvents.h"
#include "zvParametricSpline.h"

#include "vtkMapper.h"
#include "vtkObjectFactory.h"
#include "vtkParametricFunctionSource.h"
#include "vtkPlaneSource.h"
#include "vtkPropCollection.h"
#include "vtkProperty.h"
#include "vtkVersion.h"
#include "vtkWeakPointer.h"

#include <gmock/gmock.h>

#include <cmath>
#include <sstream>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zvtest::World;

namespace
{
class SplineWidget : public zvtest::CurveTest<zvSplineWidget>
{
};

class ReplacedSpline : public zvSplineWidget
{
public:
  static ReplacedSpline* New() { return new ReplacedSpline; }
  vtkTypeMacro(ReplacedSpline, zvSplineWidget)
};

class Factory : public vtkObjectFactory
{
public:
  static Factory* New() { return new Factory; }
  vtkTypeMacro(Factory, vtkObjectFactory)
  const char* GetVTKSourceVersion() override { return VTK_SOURCE_VERSION; }
  const char* GetDescription() override { return "replaces zvSplineWidget"; }

private:
  static vtkObject* Make() { return ReplacedSpline::New(); }
  Factory()
  {
    this->RegisterOverride("zvSplineWidget", "ReplacedSpline", "for the test", 1, &Factory::Make);
  }
};

constexpr char PlaneWarning[] = "Set the plane source for oblique projections...";
constexpr char InteractorError[] = "The interactor must be set prior to enabling/disabling widget";
}

// ---- What it is, and how it starts

TEST_F(SplineWidget, ReportsItsOwnNameAndItsAncestors)
{
  vtkNew<zvSplineWidget> widget;
  EXPECT_STREQ(widget->GetClassName(), "zvSplineWidget");
  for (const char* name :
    { "zvSplineWidget", "zvWidgets", "vtk3DWidget", "vtkInteractorObserver", "vtkObject" })
  {
    EXPECT_EQ(widget->IsA(name), 1) << name;
  }
  EXPECT_EQ(widget->IsA("zvAreaWidget"), 0);
  auto other = vtkSmartPointer<zvSplineWidget>::Take(widget->NewInstance());
  EXPECT_STREQ(other->GetClassName(), "zvSplineWidget");
}

TEST_F(SplineWidget, IsMadeByTheObjectFactoryWhenThatKnowsTheClass)
{
  vtkNew<Factory> factory;
  vtkObjectFactory::RegisterFactory(factory);
  vtkNew<zvSplineWidget> replaced;
  vtkObjectFactory::UnRegisterFactory(factory);
  vtkNew<zvSplineWidget> plain;
  EXPECT_STREQ(replaced->GetClassName(), "ReplacedSpline");
  EXPECT_STREQ(plain->GetClassName(), "zvSplineWidget");
}

TEST_F(SplineWidget, TheInstantiatorMakesOneWithOneReference)
{
  auto made = vtkSmartPointer<vtkObject>::Take(vtkInstantiatorzvSplineWidgetNew());
  EXPECT_STREQ(made->GetClassName(), "zvSplineWidget");
  EXPECT_EQ(made->GetReferenceCount(), 1);
}

TEST_F(SplineWidget, WritesItsRevisionAfterTheParents)
{
  vtkNew<zvSplineWidget> widget;
  std::ostringstream text;
  widget->CollectRevisions(text);
  EXPECT_EQ(text.str(), "zvWidgets $Revision: 1.2 $\nzvSplineWidget $Revision: 1.2 $\n");
}

TEST_F(SplineWidget, StartsWithTheseDefaults)
{
  EXPECT_EQ(this->Curve->GetState(), zvSplineWidget::Start);
  EXPECT_EQ(this->Curve->GetProjectionNormal(), 0);
  EXPECT_EQ(this->Curve->GetProjectionPosition(), 0.0);
  EXPECT_EQ(this->Curve->GetProjectToPlane(), 0);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 0);
  EXPECT_EQ(this->Curve->GetClosed(), 0);
  EXPECT_EQ(this->Curve->GetResolution(), 500);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, -1);
  EXPECT_FALSE(this->Curve->CurveGrabbed);
  EXPECT_EQ(this->Curve->GetEnabled(), 0);
  EXPECT_FALSE(this->Curve->GetInteraction());
  EXPECT_THAT(this->Curve->Centroid, ElementsAre(0.0, 0.0, 0.0));
  EXPECT_THAT(this->Curve->LastPickPosition, ElementsAre(0.0, 0.0, 0.0));
  EXPECT_THAT(this->Curve->InitialBounds, ElementsAre(-0.5, 0.5, -0.5, 0.5, -0.5, 0.5));
  EXPECT_DOUBLE_EQ(this->Curve->InitialLength, std::sqrt(3.0));
  EXPECT_EQ(this->Curve->PlaceFactor, 1.0);
  EXPECT_EQ(this->Curve->HandlePolyData->GetNumberOfPoints(), 0);
  EXPECT_EQ(this->Curve->ParametricFunctionSource->GetUResolution(), 500);
  EXPECT_EQ(this->Curve->ParametricFunctionSource->GetGenerateTextureCoordinates(), 0);
  EXPECT_EQ(this->Curve->ParametricFunctionSource->GetScalarMode(),
    vtkParametricFunctionSource::SCALAR_NONE);
  EXPECT_EQ(this->Curve->GetParametricSpline()->GetPoints()->GetDataType(), VTK_DOUBLE);
  EXPECT_EQ(vtkMapper::GetResolveCoincidentTopology(), VTK_RESOLVE_POLYGON_OFFSET);
}

TEST_F(SplineWidget, ItsNumbersOfStatesAreFixed)
{
  EXPECT_EQ(zvSplineWidget::Start, 0);
  EXPECT_EQ(zvSplineWidget::Moving, 1);
  EXPECT_EQ(zvSplineWidget::Scaling, 2);
  EXPECT_EQ(zvSplineWidget::Spinning, 3);
  EXPECT_EQ(zvSplineWidget::Placing, 4);
  EXPECT_EQ(zvSplineWidget::Outside, 6);
}

TEST_F(SplineWidget, PicksOnlyItsOwnActors)
{
  for (vtkCellPicker* picker : { this->Curve->HandlePicker.Get(), this->Curve->LinePicker.Get() })
  {
    EXPECT_EQ(picker->GetTolerance(), 0.005);
    EXPECT_EQ(picker->GetPickFromList(), 1);
    ASSERT_EQ(picker->GetPickList()->GetNumberOfItems(), 1);
  }
  EXPECT_EQ(this->Curve->HandlePicker->GetPickList()->GetLastProp(), this->Curve->HandleActor);
  EXPECT_EQ(this->Curve->LinePicker->GetPickList()->GetLastProp(), this->Curve->LineActor);
}

TEST_F(SplineWidget, HasTheseProperties)
{
  vtkProperty* handle = this->Curve->GetHandleProperty();
  EXPECT_THAT(
    std::vector<double>(handle->GetColor(), handle->GetColor() + 3), ElementsAre(1.0, 0.0, 0.0));
  EXPECT_EQ(handle->GetPointSize(), 7.5f);
  EXPECT_EQ(handle->GetAmbient(), 0.0);

  vtkProperty* selectedHandle = this->Curve->GetSelectedHandleProperty();
  EXPECT_THAT(std::vector<double>(selectedHandle->GetColor(), selectedHandle->GetColor() + 3),
    ElementsAre(1.0, 0.0, 0.0));
  EXPECT_EQ(selectedHandle->GetAmbient(), 1.0);
  EXPECT_EQ(selectedHandle->GetDiffuse(), 0.0);

  vtkProperty* line = this->Curve->GetLineProperty();
  EXPECT_EQ(line->GetRepresentation(), VTK_WIREFRAME);
  EXPECT_THAT(
    std::vector<double>(line->GetColor(), line->GetColor() + 3), ElementsAre(0.0, 1.0, 1.0));
  EXPECT_EQ(line->GetAmbient(), 1.0);
  EXPECT_EQ(line->GetDiffuse(), 0.0);
  EXPECT_EQ(line->GetLineWidth(), 2.0f);
  EXPECT_EQ(line->GetPointSize(), 5.5f);

  vtkProperty* selectedLine = this->Curve->GetSelectedLineProperty();
  EXPECT_EQ(selectedLine->GetRepresentation(), VTK_WIREFRAME);
  EXPECT_THAT(
    std::vector<double>(selectedLine->GetAmbientColor(), selectedLine->GetAmbientColor() + 3),
    ElementsAre(0.0, 1.0, 0.0));
  EXPECT_EQ(selectedLine->GetAmbient(), 1.0);
  EXPECT_EQ(selectedLine->GetDiffuse(), 0.0);
  EXPECT_EQ(selectedLine->GetLineWidth(), 2.0f);
}

TEST_F(SplineWidget, PrintsItsFieldsAfterThoseOfTheParent)
{
  const auto text = [this]
  {
    std::ostringstream stream;
    this->Curve->PrintSelf(stream, vtkIndent(2));
    return stream.str().substr(stream.str().find("  DebugMode: Off\n"));
  };
  const auto pointer = [](const void* object)
  {
    std::ostringstream stream;
    stream << object;
    return stream.str();
  };
  EXPECT_EQ(text(),
    "  DebugMode: Off\n"
    "  Handle Property: " +
      pointer(this->Curve->GetHandleProperty()) +
      "\n"
      "  Selected Handle Property: " +
      pointer(this->Curve->GetSelectedHandleProperty()) +
      "\n"
      "  Line Property: " +
      pointer(this->Curve->GetLineProperty()) +
      "\n"
      "  Selected Line Property: " +
      pointer(this->Curve->GetSelectedLineProperty()) +
      "\n"
      "  ParametricSpline: " +
      pointer(this->Curve->GetParametricSpline()) +
      "\n"
      "  Project To Plane: Off\n"
      "  Projection Normal: 0\n"
      "  Projection Position: 0\n"
      "  Resolution: 500\n"
      "  Number Of Handles: 0\n"
      "  Closed: Off\n");

  this->Show(Square(), true);
  this->Curve->SetHandleProperty(nullptr);
  this->Curve->SetSelectedHandleProperty(nullptr);
  this->Curve->SetLineProperty(nullptr);
  this->Curve->SetSelectedLineProperty(nullptr);
  this->Curve->SetParametricSpline(nullptr);
  this->Curve->SetProjectionNormal(2);
  this->Curve->SetProjectionPosition(1.5);
  this->Curve->ProjectToPlaneOn();
  this->Curve->SetResolution(40);
  EXPECT_EQ(text(),
    "  DebugMode: Off\n"
    "  Handle Property: (none)\n"
    "  Selected Handle Property: (none)\n"
    "  Line Property: (none)\n"
    "  Selected Line Property: (none)\n"
    "  ParametricSpline: (none)\n"
    "  Project To Plane: On\n"
    "  Projection Normal: 2\n"
    "  Projection Position: 1.5\n"
    "  Resolution: 40\n"
    "  Number Of Handles: 4\n"
    "  Closed: On\n");
}

// ---- Setters

TEST_F(SplineWidget, PropertiesAreReplacedWithAReference)
{
  struct Row
  {
    void (zvSplineWidget::*Set)(vtkProperty*);
    vtkProperty* (zvSplineWidget::*Get)();
  };
  const Row rows[] = {
    { &zvSplineWidget::SetHandleProperty, &zvSplineWidget::GetHandleProperty },
    { &zvSplineWidget::SetSelectedHandleProperty, &zvSplineWidget::GetSelectedHandleProperty },
    { &zvSplineWidget::SetLineProperty, &zvSplineWidget::GetLineProperty },
    { &zvSplineWidget::SetSelectedLineProperty, &zvSplineWidget::GetSelectedLineProperty },
  };
  for (const Row& row : rows)
  {
    vtkNew<vtkProperty> property;
    vtkMTimeType before = this->Curve->GetMTime();
    (this->Curve->*row.Set)(property);
    EXPECT_EQ((this->Curve->*row.Get)(), property);
    EXPECT_EQ(property->GetReferenceCount(), 2);
    EXPECT_GT(this->Curve->GetMTime(), before);
    before = this->Curve->GetMTime();
    (this->Curve->*row.Set)(property);
    EXPECT_EQ(this->Curve->GetMTime(), before);
    (this->Curve->*row.Set)(nullptr);
    EXPECT_EQ((this->Curve->*row.Get)(), nullptr);
    EXPECT_EQ(property->GetReferenceCount(), 1);
  }
}

TEST_F(SplineWidget, WorksWithoutProperties)
{
  this->Curve->SetHandleProperty(nullptr);
  this->Curve->SetLineProperty(nullptr);
  this->Curve->SetSelectedLineProperty(nullptr);
  this->Show(Square(), true);
  const World corner = this->HandleAt(1);
  this->Pointer.Drag(zvtest::Middle, this->Pointer.At(corner), { { 210, 200 } });
  EXPECT_EQ(this->Curve->GetState(), zvSplineWidget::Start);
}

TEST_F(SplineWidget, ProjectionSettingsMoveNothingByThemselves)
{
  this->Show(Square());
  vtkMTimeType before = this->Curve->GetMTime();
  this->Curve->SetProjectToPlane(1);
  EXPECT_GT(this->Curve->GetMTime(), before);
  before = this->Curve->GetMTime();
  this->Curve->SetProjectionNormal(1);
  EXPECT_GT(this->Curve->GetMTime(), before);
  before = this->Curve->GetMTime();
  this->Curve->SetProjectionNormal(1);
  EXPECT_EQ(this->Curve->GetMTime(), before);
  this->ExpectHandles(Square());
}

TEST_F(SplineWidget, TheProjectionNormalIsClamped)
{
  this->Curve->SetProjectionNormal(7);
  EXPECT_EQ(this->Curve->GetProjectionNormal(), 3);
  this->Curve->SetProjectionNormal(-1);
  EXPECT_EQ(this->Curve->GetProjectionNormal(), 0);
  EXPECT_EQ(this->Curve->GetProjectionNormalMinValue(), 0);
  EXPECT_EQ(this->Curve->GetProjectionNormalMaxValue(), 3);
}

TEST_F(SplineWidget, ProjectToPlaneIsStoredAsGivenAndSwitched)
{
  this->Curve->SetProjectToPlane(5);
  EXPECT_EQ(this->Curve->GetProjectToPlane(), 5);
  this->Curve->ProjectToPlaneOff();
  EXPECT_EQ(this->Curve->GetProjectToPlane(), 0);
  this->Curve->ProjectToPlaneOn();
  EXPECT_EQ(this->Curve->GetProjectToPlane(), 1);
}

TEST_F(SplineWidget, TheProjectionPositionMovesTheHandlesOnlyWhileProjecting)
{
  this->Show(Square());
  this->Curve->SetProjectionNormal(2);
  const vtkMTimeType before = this->Curve->GetMTime();
  const vtkMTimeType spline = this->Curve->GetParametricSpline()->GetMTime();
  this->Curve->SetProjectionPosition(3.0);
  this->ExpectHandles(Square());
  EXPECT_GT(this->Curve->GetParametricSpline()->GetMTime(), spline);
  EXPECT_EQ(this->Curve->GetMTime(), before);
  this->Curve->ProjectToPlaneOn();
  this->Curve->SetProjectionPosition(3.0);
  for (int i = 0; i < 4; ++i)
  {
    EXPECT_EQ(this->HandleAt(i)[2], 3.0);
  }
}

TEST_F(SplineWidget, ThePlaneSourceIsOnlyReferredTo)
{
  const vtkMTimeType before = this->Curve->GetMTime();
  {
    vtkNew<vtkPlaneSource> plane;
    const int references = plane->GetReferenceCount();
    this->Curve->SetPlaneSource(plane);
    EXPECT_EQ(plane->GetReferenceCount(), references);
  }
  EXPECT_EQ(this->Curve->GetMTime(), before);
  this->Show(Square());
  this->Curve->SetProjectionNormal(3);
  this->Curve->ProjectPointsToPlane(); // the plane is gone
  this->ExpectGenericWarning("zvSplineWidget", PlaneWarning);
  this->ExpectHandles(Square());
}

TEST_F(SplineWidget, TheResolutionIsNeverBelowTheSpansBetweenHandles)
{
  this->Curve->InitializeHandles(PointsOf(std::vector<World>(6)));
  this->Curve->SetResolution(2);
  EXPECT_EQ(this->Curve->GetResolution(), 500);
  this->Curve->InitializeHandles(PointsOf(std::vector<World>(3)));
  const vtkMTimeType before = this->Curve->ParametricFunctionSource->GetMTime();
  this->Curve->SetResolution(2);
  EXPECT_EQ(this->Curve->GetResolution(), 2);
  EXPECT_EQ(this->Curve->ParametricFunctionSource->GetUResolution(), 2);
  EXPECT_GT(this->Curve->ParametricFunctionSource->GetMTime(), before);
}

TEST_F(SplineWidget, TheSameResolutionChangesNothing)
{
  const vtkMTimeType before = this->Curve->ParametricFunctionSource->GetMTime();
  this->Curve->SetResolution(500);
  EXPECT_EQ(this->Curve->ParametricFunctionSource->GetMTime(), before);
}

TEST_F(SplineWidget, ASplineIsReplacedWithAReference)
{
  this->Show(Square());
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

TEST_F(SplineWidget, WithoutASplineTheLineStaysAndNothingBreaks)
{
  this->Show(Square());
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

TEST_F(SplineWidget, ClosingIsPassedOnToTheSpline)
{
  this->Show(Square());
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

TEST_F(SplineWidget, TheStateIsStoredAsGiven)
{
  this->Curve->SetState(5);
  EXPECT_EQ(this->Curve->GetState(), 5);
}

// ---- Enabling

TEST_F(SplineWidget, CannotBeEnabledOrDisabledWithoutAnInteractor)
{
  vtkNew<zvSplineWidget> widget;
  for (int enabling : { 1, 0 })
  {
    widget->SetEnabled(enabling);
    this->ExpectVtkError("zvSplineWidget", "zvSplineWidget", widget, InteractorError);
    EXPECT_EQ(widget->GetEnabled(), 0);
  }
}

TEST_F(SplineWidget, EnablingShowsAndAttachesItAndTellsBeforeItRenders)
{
  this->Curve->InitializeHandles(PointsOf(Square()));
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  this->Curve->SetEnabled(1);
  EXPECT_EQ(this->Curve->GetEnabled(), 1);
  EXPECT_EQ(recorder.Names(), (Names{ "EnableEvent", "RenderEvent" }));
  EXPECT_FALSE(recorder.Events().front().HasData);
  EXPECT_EQ(this->Curve->GetCurrentRenderer(), this->Scene.Renderer());
  EXPECT_TRUE(this->IsShown(this->Curve->LineActor));
  EXPECT_TRUE(this->IsShown(this->Curve->HandleActor));
  EXPECT_EQ(this->Curve->LineActor->GetProperty(), this->Curve->GetLineProperty());
  EXPECT_EQ(this->Curve->HandleActor->GetProperty(), this->Curve->GetHandleProperty());
  for (unsigned long event : zvEvents::Handle)
  {
    EXPECT_TRUE(this->Scene.Interactor()->HasObserver(event, this->Curve->EventCallbackCommand));
  }
  recorder.Clear();
  this->Curve->SetEnabled(1);
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(SplineWidget, DisablingTakesItOutAndTellsBeforeItRenders)
{
  this->Show(Square());
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  this->Curve->SetEnabled(0);
  EXPECT_EQ(this->Curve->GetEnabled(), 0);
  EXPECT_EQ(recorder.Names(), (Names{ "DisableEvent", "RenderEvent" }));
  EXPECT_EQ(this->Curve->GetCurrentRenderer(), nullptr);
  EXPECT_FALSE(this->IsShown(this->Curve->LineActor));
  EXPECT_FALSE(this->IsShown(this->Curve->HandleActor));
  for (unsigned long event : zvEvents::Handle)
  {
    EXPECT_FALSE(this->Scene.Interactor()->HasObserver(event, this->Curve->EventCallbackCommand));
  }
  recorder.Clear();
  this->Curve->SetEnabled(0);
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(SplineWidget, WithoutARendererEnablingGivesUpSilently)
{
  this->Scene.DropRenderers();
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  this->Curve->SetEnabled(1);
  EXPECT_EQ(this->Curve->GetEnabled(), 0);
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(SplineWidget, EnablingTakesTheRendererUnderTheLastEvent)
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

TEST_F(SplineWidget, AddObserversAttachesTheNineEventsAndTellsNothing)
{
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Curve, zvtest::WidgetEvents);
  this->Curve->AddObservers();
  for (unsigned long event : zvEvents::Handle)
  {
    EXPECT_TRUE(this->Scene.Interactor()->HasObserver(event, this->Curve->EventCallbackCommand));
  }
  EXPECT_THAT(recorder.Names(), IsEmpty());
  vtkNew<zvSplineWidget> lonely;
  lonely->AddObservers();
  this->ExpectNoMessage();
}

TEST_F(SplineWidget, InteractionOnAttachesOnceMoreAndOffDetachesAllByDesign)
{
  this->Show(Square());
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  EXPECT_FALSE(this->Curve->GetInteraction()); // enabling does not touch it
  this->Curve->SetInteraction(true);
  EXPECT_THAT(recorder.Names(), IsEmpty());
  this->Pointer.WheelForward({ { 100, 100 } });
  EXPECT_EQ(recorder.Count(vtkCommand::RenderEvent), 2);
  this->Curve->SetInteraction(false);
  recorder.Clear();
  this->Pointer.WheelForward({ { 100, 100 } });
  EXPECT_THAT(recorder.Names(), IsEmpty());
  EXPECT_EQ(this->Curve->GetEnabled(), 1);
}

TEST_F(SplineWidget, HasNoTracesOfItsOwn)
{
  this->Curve->DebugMode = true;
  this->Show(Square());
  this->Curve->AddObservers();
  this->Pointer.Drag(zvtest::Left, this->Pointer.At({ { 6, 6, 0 } }), { { 200, 200 } });
  this->Pointer.Drag(zvtest::Middle, this->Pointer.At({ { 6, -6, 0 } }), { { 200, 200 } });
  this->Pointer.WheelForward({ { 100, 100 } });
  this->Curve->EraseHandle(1);
  this->Curve->SetEnabled(0);
  EXPECT_EQ(this->TakeOutput(), "");
}

// ---- Placing and projecting

TEST_F(SplineWidget, PlacingSpreadsTheHandlesOnTheDiagonal)
{
  this->Curve->SetNumberOfHandles(5);
  this->Curve->PlaceWidget(0, 4, -2, 2, 10, 30);
  this->ExpectHandles(
    { { { 0, -2, 10 } }, { { 1, -1, 15 } }, { { 2, 0, 20 } }, { { 3, 1, 25 } }, { { 4, 2, 30 } } });
  EXPECT_THAT(this->Curve->InitialBounds, ElementsAre(0, 4, -2, 2, 10, 30));
  EXPECT_DOUBLE_EQ(this->Curve->InitialLength, std::sqrt(16.0 + 16.0 + 400.0));
}

TEST_F(SplineWidget, PlacingASingleHandlePutsItInTheLowCorner)
{
  this->Curve->SetNumberOfHandles(1);
  double bounds[6] = { 0, 4, -2, 2, 10, 30 };
  this->Curve->PlaceWidget(bounds);
  this->ExpectHandles({ { { 0, -2, 10 } } });
}

TEST_F(SplineWidget, PlacingScalesTheBoundsByThePlaceFactor)
{
  this->Curve->SetNumberOfHandles(2);
  this->Curve->SetPlaceFactor(0.5);
  double bounds[6] = { 0, 4, -2, 2, 10, 30 };
  this->Curve->PlaceWidget(bounds);
  this->ExpectHandles({ { { 1, -1, 15 } }, { { 3, 1, 25 } } });
}

TEST_F(SplineWidget, PlacingWhileProjectingMovesTheHandlesToThePlaneOnly)
{
  this->Curve->InitializeHandles(PointsOf(Square()));
  this->Curve->SetProjectionNormal(1);
  this->Curve->ProjectToPlaneOn();
  double bounds[6] = { 0, 4, -2, 2, 10, 30 };
  this->Curve->PlaceWidget(bounds);
  this->ExpectHandles({ { { -6, 0, 0 } }, { { 6, 0, 0 } }, { { 6, 0, 0 } }, { { -6, 0, 0 } } });
}

TEST_F(SplineWidget, PlacingLeavesTheLineForTheNextRebuild)
{
  this->Show(Square());
  const vtkMTimeType spline = this->Curve->GetParametricSpline()->GetMTime();
  double bounds[6] = { 0, 4, -2, 2, 0, 3 };
  this->Curve->PlaceWidget(bounds);
  EXPECT_EQ(this->Curve->GetParametricSpline()->GetMTime(), spline);
  this->Curve->BuildRepresentation();
  World last;
  this->Curve->GetParametricSpline()->GetPoints()->GetPoint(3, last.data());
  EXPECT_EQ(last, (World{ { 4, 2, 3 } }));
}

TEST_F(SplineWidget, PlacingWithoutBoundsGoesThroughTheParent)
{
  this->Curve->SetNumberOfHandles(2);
  this->Curve->SetProp3D(this->Curve->HandleActor);
  this->Curve->SetHandlePosition(0, 1.0, 1.0, 1.0);
  this->Curve->SetHandlePosition(1, 3.0, 5.0, 7.0);
  this->Curve->SetHandlePosition(0, 3.0, 5.0, 1.0);
  this->Curve->PlaceWidget();
  this->ExpectHandles({ { { 3, 5, 1 } }, { { 3, 5, 7 } } });
  EXPECT_THAT(this->Curve->InitialBounds, ElementsAre(3, 3, 5, 5, 1, 7));
}

TEST_F(SplineWidget, ProjectsAlongEachAxis)
{
  for (int axis = 0; axis < 3; ++axis)
  {
    this->Curve->ProjectToPlaneOff();
    this->Curve->InitializeHandles(PointsOf(Square()));
    this->Curve->SetProjectionNormal(axis);
    this->Curve->SetProjectionPosition(2.5);
    this->Curve->ProjectPointsToPlane();
    std::vector<World> expected = Square();
    for (World& handle : expected)
    {
      handle[axis] = 2.5;
    }
    this->ExpectHandles(expected);
  }
}

TEST_F(SplineWidget, ProjectsToAnObliquePlane)
{
  vtkNew<vtkPlaneSource> plane;
  plane->SetOrigin(1.0, 0.0, 1.0);
  plane->SetPoint1(4.0, 0.0, 4.0);
  plane->SetPoint2(1.0, 7.0, 1.0);
  this->Curve->SetPlaneSource(plane);
  this->Curve->SetProjectionNormal(3);
  this->Curve->ProjectToPlaneOn();
  this->Curve->InitializeHandles(PointsOf({ { { 2, 3, 0 } }, { { 5, -1, 5 } } }));
  this->ExpectHandles({ { { 1, 3, 1 } }, { { 5, -1, 5 } } });
}

TEST_F(SplineWidget, ObliqueWithoutAPlaneWarnsAndMovesNothing)
{
  this->Curve->InitializeHandles(PointsOf(Square()));
  this->Curve->SetProjectionNormal(3);
  this->Curve->ProjectPointsToPlane();
  this->ExpectGenericWarning("zvSplineWidget", PlaneWarning);
  this->Curve->ProjectPointsToObliquePlane();
  this->ExpectGenericWarning("zvSplineWidget", PlaneWarning);
  this->Curve->ProjectPointsToOrthoPlane(); // no axis to project along
  this->ExpectHandles(Square());
}
