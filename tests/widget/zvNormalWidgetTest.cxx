// What a normal widget is made of, its operations, its views and its life.

#include "zvNormalFixture.h"

#include "vtkObjectFactory.h"
#include "vtkVersion.h"
#include "vtkWeakPointer.h"

#include <gmock/gmock.h>

#include <functional>
#include <limits>
#include <sstream>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zvtest::World;

namespace
{
constexpr char NoInteractor[] = "The interactor must be set prior to enabling/disabling widget";
constexpr char NoHandle[] = "there is no current handle";
constexpr char NoPosition[] = "give the handle a finite position...";
constexpr char NoCurrent[] =
  "set a viewer whose renderer is in a window with an interactor for ViewerWidgetCurrent...";

class NormalWidget : public NormalWidgetTest
{
protected:
  vtkRenderWindowInteractor* Interactor() { return this->Z->Scene.Interactor(); }

  /// Make the Z viewer the current one and enable the widget.
  void Enable()
  {
    this->Normal->SetViewerWidgetCurrent(this->Z->Viewer);
    this->Normal->SetEnabled(1);
  }

  void ExpectNothingShown()
  {
    for (vtkProp* prop : { this->Normal->LineActor.Get(), this->Normal->Cone1Actor.Get(),
           this->Normal->Cone2Actor.Get() })
    {
      EXPECT_EQ(this->CountViewsWith(prop), 0);
    }
  }
};

class ReplacedNormal : public zvNormalWidget
{
public:
  static ReplacedNormal* New() { return new ReplacedNormal; }
  vtkTypeMacro(ReplacedNormal, zvNormalWidget)
};

class Factory : public vtkObjectFactory
{
public:
  static Factory* New() { return new Factory; }
  vtkTypeMacro(Factory, vtkObjectFactory)
  const char* GetVTKSourceVersion() override { return VTK_SOURCE_VERSION; }
  const char* GetDescription() override { return "replaces zvNormalWidget"; }

private:
  static vtkObject* Make() { return ReplacedNormal::New(); }
  Factory()
  {
    this->RegisterOverride("zvNormalWidget", "ReplacedNormal", "for the test", 1, &Factory::Make);
  }
};

// Notes which handler an event reaches.
class NotingNormal : public zvNormalWidget
{
public:
  static NotingNormal* New() { return new NotingNormal; }
  void OnMouseMove() override { this->Calls.emplace_back("move"); }
  void OnLeftButtonDown() override { this->Calls.emplace_back("press"); }
  void OnLeftButtonUp() override { this->Calls.emplace_back("release"); }
  std::vector<std::string> Calls;
};
}

//------------------------------------------------------------------------------
TEST_F(NormalWidgetAlone, HasItsNameAndItsPlaceAmongTheClasses)
{
  vtkNew<zvNormalWidget> widget;
  EXPECT_STREQ(widget->GetClassName(), "zvNormalWidget");
  EXPECT_EQ(widget->IsA("zvWidgets"), 1);
  EXPECT_EQ(widget->IsA("vtk3DWidget"), 1);
  const auto another = vtkSmartPointer<vtkObjectBase>::Take(widget->NewInstance());
  EXPECT_STREQ(another->GetClassName(), "zvNormalWidget");
  const auto instance = vtkSmartPointer<vtkObject>::Take(vtkInstantiatorzvNormalWidgetNew());
  EXPECT_STREQ(instance->GetClassName(), "zvNormalWidget");
}

TEST_F(NormalWidgetAlone, IsMadeByTheObjectFactoryWhenThatKnowsTheClass)
{
  vtkNew<Factory> factory;
  vtkObjectFactory::RegisterFactory(factory);
  vtkNew<zvNormalWidget> widget;
  vtkObjectFactory::UnRegisterFactory(factory);
  EXPECT_STREQ(widget->GetClassName(), "ReplacedNormal");
}

TEST_F(NormalWidgetAlone, WritesARevisionWithoutANumberByDesign)
{
  std::ostringstream text;
  this->Normal->CollectRevisions(text);
  EXPECT_EQ(text.str(), "zvWidgets $Revision: 1.2 $\nzvNormalWidget $Revision:$\n");
}

TEST_F(NormalWidgetAlone, PrintsWhatItsParentPrints)
{
  std::ostringstream text;
  this->Normal->Print(text);
  EXPECT_NE(text.str().find("Interaction: Off\n"), std::string::npos);
  EXPECT_NE(text.str().find("DebugMode: Off\n"), std::string::npos);
}

TEST_F(NormalWidgetAlone, StatesHaveTheirNumbers)
{
  EXPECT_EQ(zvNormalWidget::Start, 0);
  EXPECT_EQ(zvNormalWidget::Adding, 1);
  EXPECT_EQ(zvNormalWidget::MovingHandle, 2);
  EXPECT_EQ(zvNormalWidget::Translating, 3);
  EXPECT_EQ(zvNormalWidget::Outside, 4);
}

TEST_F(NormalWidgetAlone, StartsWithoutPointsAndReadyToPlaceThem)
{
  const auto fresh = vtkSmartPointer<OpenNormal>::Take(OpenNormal::New());
  EXPECT_EQ(fresh->GetState(), zvNormalWidget::Adding);
  EXPECT_EQ(fresh->CurrentHandle, nullptr);
  EXPECT_EQ(fresh->GetViewerWidgetX(), nullptr);
  EXPECT_EQ(fresh->GetViewerWidgetY(), nullptr);
  EXPECT_EQ(fresh->GetViewerWidgetZ(), nullptr);
  EXPECT_EQ(fresh->GetViewerWidgetCurrent(), nullptr);
  EXPECT_EQ(fresh->GetRenderer3D(), nullptr);
  EXPECT_EQ(fresh->GetEnabled(), 0);
  EXPECT_FALSE(fresh->GetInteraction());
  EXPECT_FALSE(fresh->DebugMode);
  EXPECT_DOUBLE_EQ(fresh->InitialLength, 1.0);
  EXPECT_DOUBLE_EQ(fresh->HandleSize, 1.0);
  EXPECT_TRUE(IsPoint(fresh->LastPickPosition, { { 0, 0, 0 } }));
}

TEST_F(NormalWidgetAlone, DrawsALineAndTwoConesOfTwelveSides)
{
  OpenNormal* n = this->Normal;
  EXPECT_EQ(n->LineActor->GetMapper(), n->LineMapper.Get());
  EXPECT_EQ(n->LineMapper->GetInputAlgorithm(), n->LineSource.Get());
  EXPECT_EQ(n->LineSource->GetResolution(), 1);
  EXPECT_EQ(n->Cone1Actor->GetMapper(), n->Cone1Mapper.Get());
  EXPECT_EQ(n->Cone1Mapper->GetInputAlgorithm(), n->Cone1Source.Get());
  EXPECT_EQ(n->Cone2Actor->GetMapper(), n->Cone2Mapper.Get());
  EXPECT_EQ(n->Cone2Mapper->GetInputAlgorithm(), n->Cone2Source.Get());
  for (vtkConeSource* cone : { n->Cone1Source.Get(), n->Cone2Source.Get() })
  {
    EXPECT_EQ(cone->GetResolution(), 12);
    EXPECT_NEAR(cone->GetAngle(), 25.0, 1e-9);
  }
}

TEST_F(NormalWidgetAlone, PicksWhateverThereIsUntilItIsPlaced)
{
  vtkCellPicker* picker = this->Normal->HandlePicker;
  EXPECT_DOUBLE_EQ(picker->GetTolerance(), 0.005);
  EXPECT_EQ(picker->GetPickFromList(), 0);
  EXPECT_EQ(this->Items(), 1);
  EXPECT_NE(picker->GetPickList()->IsItemPresent(this->Normal->LineActor), 0);
}

TEST_F(NormalWidgetAlone, LooksWhiteAtRestAndRedWhenGrabbed)
{
  const double* white = this->Normal->NormalProperty->GetColor();
  EXPECT_THAT(std::vector<double>(white, white + 3), ElementsAre(1, 1, 1));
  EXPECT_FLOAT_EQ(this->Normal->NormalProperty->GetLineWidth(), 2.0f);
  const double* red = this->Normal->SelectedNormalProperty->GetColor();
  EXPECT_THAT(std::vector<double>(red, red + 3), ElementsAre(1, 0, 0));
  EXPECT_FLOAT_EQ(this->Normal->SelectedNormalProperty->GetLineWidth(), 2.0f);
  // Nothing has them before the first release.
  for (vtkActor* actor : { this->Normal->LineActor.Get(), this->Normal->Cone1Actor.Get(),
         this->Normal->Cone2Actor.Get() })
  {
    EXPECT_NE(actor->GetProperty(), this->Normal->NormalProperty.Get());
    EXPECT_NE(actor->GetProperty(), this->Normal->SelectedNormalProperty.Get());
  }
}

TEST_F(NormalWidget, TheInteractorsEventsFindNoCallbackByDesign)
{
  EXPECT_EQ(this->Normal->ViewerCallback->GetClientData(), this->Normal.Get());
  this->Enable();
  this->Normal->SetInteraction(true);
  this->Watch();
  // Nothing of a viewer is under the mouse: only the interactor tells this press.
  this->X->Viewer->SetEnabled(0);
  this->Y->Viewer->SetEnabled(0);
  this->Z->Viewer->SetEnabled(0);
  this->Z->Mouse.Drag(zvtest::Left, { { 200, 200 } }, { { 220, 220 } });
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  EXPECT_EQ(this->Items(), 1);
}

//------------------------------------------------------------------------------
TEST_F(NormalWidget, ObservesPressReleaseAndMoveOfEachViewer)
{
  for (OpenViewer* viewer : { this->X->Viewer.Get(), this->Y->Viewer.Get(), this->Z->Viewer.Get() })
  {
    for (unsigned long event : { vtkCommand::LeftButtonPressEvent,
           vtkCommand::LeftButtonReleaseEvent, vtkCommand::MouseMoveEvent })
    {
      EXPECT_TRUE(viewer->HasObserver(event, this->Normal->ViewerCallback))
        << vtkCommand::GetStringFromEventId(event);
    }
    for (unsigned long event :
      { vtkCommand::MiddleButtonPressEvent, vtkCommand::RightButtonPressEvent,
        vtkCommand::MouseWheelForwardEvent, vtkCommand::StartInteractionEvent })
    {
      EXPECT_FALSE(viewer->HasObserver(event, this->Normal->ViewerCallback))
        << vtkCommand::GetStringFromEventId(event);
    }
    EXPECT_FALSE(viewer->GetInteractor()->HasObserver(
      vtkCommand::LeftButtonPressEvent, this->Normal->ViewerCallback));
  }
}

TEST_F(NormalWidgetAlone, CallsTheHandlerOfEachEventAndIgnoresOthers)
{
  vtkNew<NotingNormal> noting;
  zvNormalWidget::ProcessEvents(nullptr, vtkCommand::LeftButtonPressEvent, noting.Get(), nullptr);
  zvNormalWidget::ProcessEvents(nullptr, vtkCommand::MouseMoveEvent, noting.Get(), nullptr);
  zvNormalWidget::ProcessEvents(nullptr, vtkCommand::LeftButtonReleaseEvent, noting.Get(), nullptr);
  for (unsigned long event : { vtkCommand::MiddleButtonPressEvent,
         vtkCommand::RightButtonPressEvent, vtkCommand::CharEvent, vtkCommand::AnyEvent })
  {
    zvNormalWidget::ProcessEvents(nullptr, event, noting.Get(), nullptr);
  }
  EXPECT_THAT(noting->Calls, ElementsAre("press", "move", "release"));
}

TEST_F(NormalWidget, AViewerThatIsSetTwiceOrInTwoPlacesIsObservedOnce)
{
  vtkNew<NotingNormal> noting;
  noting->SetViewerWidgetX(this->Z->Viewer);
  noting->SetViewerWidgetX(this->Z->Viewer);
  noting->SetViewerWidgetY(this->Z->Viewer);
  noting->AddObserversToViewer(this->Z->Viewer);
  this->Click(*this->Z, First);
  EXPECT_THAT(noting->Calls, ElementsAre("press", "release"));
}

TEST_F(NormalWidget, AViewerThatIsReplacedIsObservedNoMore)
{
  vtkNew<NotingNormal> noting;
  noting->SetViewerWidgetX(this->X->Viewer);
  noting->SetViewerWidgetY(this->Z->Viewer);
  noting->SetViewerWidgetZ(this->Z->Viewer);
  noting->SetViewerWidgetX(this->Y->Viewer);
  this->Click(*this->X, { { 40, 12, 12 } });
  EXPECT_THAT(noting->Calls, IsEmpty());
  noting->SetViewerWidgetZ(nullptr);
  EXPECT_EQ(noting->GetViewerWidgetZ(), nullptr);
  this->Click(*this->Z, First); // it is the Y viewer still
  EXPECT_THAT(noting->Calls, ElementsAre("press", "release"));
  noting->SetViewerWidgetY(nullptr);
  this->Click(*this->Z, First);
  EXPECT_EQ(noting->Calls.size(), 2u);
}

TEST_F(NormalWidget, ObservesAFurtherViewerWhenAskedAndNone)
{
  vtkNew<NotingNormal> noting;
  noting->AddObserversToViewer(nullptr);
  noting->AddObserversToViewer(this->Z->Viewer);
  EXPECT_EQ(noting->GetViewerWidgetZ(), nullptr);
  this->Click(*this->Z, First);
  EXPECT_THAT(noting->Calls, ElementsAre("press", "release"));
  EXPECT_EQ(noting->GetViewerWidgetCurrent(), this->Z->Viewer.Get());
}

TEST_F(NormalWidget, TheCurrentViewerGivesItsInteractorAndRenderer)
{
  this->Normal->SetViewerWidgetCurrent(this->Y->Viewer);
  EXPECT_EQ(this->Normal->GetViewerWidgetCurrent(), this->Y->Viewer.Get());
  EXPECT_EQ(this->Normal->GetInteractor(), this->Y->Scene.Interactor());
  EXPECT_EQ(this->Normal->GetCurrentRenderer(), this->Y->Scene.Renderer());
}

TEST_F(NormalWidget, RefusesACurrentViewerWithoutAView)
{
  this->Normal->SetViewerWidgetCurrent(this->Y->Viewer);
  const auto refuse = [this](zvImageViewerWidget* viewer)
  {
    this->Normal->SetViewerWidgetCurrent(viewer);
    this->ExpectGenericWarning("zvNormalWidget", NoCurrent);
    EXPECT_EQ(this->Normal->GetViewerWidgetCurrent(), this->Y->Viewer.Get());
    EXPECT_EQ(this->Normal->GetInteractor(), this->Y->Scene.Interactor());
    EXPECT_EQ(this->Normal->GetCurrentRenderer(), this->Y->Scene.Renderer());
  };
  refuse(nullptr);
  vtkNew<zvImageViewerWidget> fresh;
  refuse(fresh);
  this->X->Scene.Window()->RemoveRenderer(this->X->Scene.Renderer());
  refuse(this->X->Viewer);
  vtkNew<vtkRenderWindow> window;
  vtkNew<vtkRenderer> renderer;
  window->AddRenderer(renderer);
  fresh->SetCurrentRenderer(renderer);
  refuse(fresh);
}

TEST_F(NormalWidget, UpdatesTheViewersAndThenTheThirdDimension)
{
  zvtest::EventRecorder interactors;
  for (ViewerInWindow* view : { this->X.get(), this->Y.get(), this->Z.get() })
  {
    interactors.Watch(view->Scene.Interactor(), { vtkCommand::RenderEvent });
  }
  this->WatchRenders();
  this->Normal->RenderesUpdate();
  std::vector<vtkObject*> drawn;
  for (const auto& event : this->Renders.Events())
  {
    drawn.push_back(event.Caller);
  }
  EXPECT_THAT(drawn,
    ElementsAre(this->X->Scene.Renderer(), this->Y->Scene.Renderer(), this->Z->Scene.Renderer(),
      this->Depth->Renderer()));
  ASSERT_EQ(interactors.Events().size(), 3u);
  EXPECT_EQ(interactors.Events()[0].Caller, this->X->Scene.Interactor());
  EXPECT_EQ(interactors.Events()[2].Caller, this->Z->Scene.Interactor());
}

TEST_F(NormalWidget, PutsAPropIntoTheFourViewsAndTakesItOut)
{
  this->WatchRenders();
  vtkNew<vtkActor> prop;
  this->Normal->AddActorInRenderers(prop);
  this->Normal->AddActorInRenderers(prop);
  EXPECT_EQ(this->CountViewsWith(prop), 4);
  this->Normal->RemoveActorOfRenderers(prop);
  EXPECT_EQ(this->CountViewsWith(prop), 0);
  this->Normal->RemoveActorOfRenderers(prop);
  this->Normal->AddActorInRenderers(nullptr);
  this->Normal->RemoveActorOfRenderers(nullptr);
  EXPECT_THAT(this->Renders.Events(), IsEmpty());
}

TEST_F(NormalWidget, TakesAllItsPartsOutAndNothingElse)
{
  vtkNew<vtkActor> other;
  this->Normal->AddActorInRenderers(other);
  this->Place();
  this->Normal->RemoveAllActorsOfRenderers();
  this->ExpectNothingShown();
  EXPECT_EQ(this->CountViewsWith(other), 4);
}

TEST_F(NormalWidget, TakesItsPartsOutOfViewsThatItHasNoMore)
{
  this->Place();
  this->X->Viewer->SetEnabled(0); // lets go of its renderer, in which the parts still are
  this->Normal->SetViewerWidgetY(this->Z->Viewer);
  this->Normal->SetRenderer3D(this->Z->Scene.Renderer());
  EXPECT_EQ(this->CountViewsWith(this->Normal->LineActor), 4);
  this->Normal->RemoveAllActorsOfRenderers();
  this->ExpectGenericWarning(
    "zvNormalWidget", "set the renderer of ViewerWidgetX before hiding the parts...");
  this->ExpectNothingShown();
}

//------------------------------------------------------------------------------
TEST_F(NormalWidget, TheFirstHandleShowsOneConeOnly)
{
  this->WatchRenders();
  World at = First;
  this->Normal->AddHandle(at.data());
  EXPECT_TRUE(IsPoint(this->Normal->Cone1Source->GetCenter(), First));
  EXPECT_EQ(this->Point1(), First);
  EXPECT_EQ(this->Point2(), First);
  EXPECT_EQ(this->CountViewsWith(this->Normal->Cone1Actor), 4);
  EXPECT_EQ(this->CountViewsWith(this->Normal->Cone2Actor), 0);
  EXPECT_EQ(this->CountViewsWith(this->Normal->LineActor), 0);
  EXPECT_EQ(this->Items(), 2);
  EXPECT_EQ(this->Normal->HandlePicker->GetPickFromList(), 0);
  EXPECT_EQ(this->Normal->GetState(), zvNormalWidget::Adding);
  EXPECT_DOUBLE_EQ(this->Normal->Cone1Source->GetRadius(), 3.0);
  EXPECT_EQ(this->Renders.Events().size(), 4u);
}

TEST_F(NormalWidget, TheSecondHandleShowsLineAndConesInTheirDirection)
{
  World at = First;
  this->Normal->AddHandle(at.data());
  this->WatchRenders();
  at = { { 10, 13, 44 } };
  this->Normal->AddHandle(at.data());
  EXPECT_TRUE(IsPoint(this->Normal->Cone1Source->GetCenter(), First));
  EXPECT_TRUE(IsPoint(this->Normal->Cone2Source->GetCenter(), at));
  EXPECT_EQ(this->Point1(), First);
  EXPECT_EQ(this->Point2(), at);
  EXPECT_TRUE(IsPoint(this->Normal->Cone1Source->GetDirection(), { { 0, 0.6, 0.8 } }));
  EXPECT_TRUE(IsPoint(this->Normal->Cone2Source->GetDirection(), { { 0, 0.6, 0.8 } }));
  EXPECT_EQ(this->CountViewsWith(this->Normal->Cone1Actor), 4);
  EXPECT_EQ(this->CountViewsWith(this->Normal->Cone2Actor), 4);
  EXPECT_EQ(this->CountViewsWith(this->Normal->LineActor), 4);
  EXPECT_EQ(this->Items(), 3);
  EXPECT_EQ(this->Normal->HandlePicker->GetPickFromList(), 1);
  EXPECT_EQ(this->Normal->GetState(), zvNormalWidget::Start);
  EXPECT_EQ(this->Renders.Events().size(), 4u);
}

TEST_F(NormalWidget, AThirdHandleDoesNothing)
{
  World at = First;
  this->Normal->AddHandle(at.data());
  at = Second;
  this->Normal->AddHandle(at.data());
  this->WatchRenders();
  at = { { 1, 2, 3 } };
  this->Normal->AddHandle(at.data());
  EXPECT_EQ(this->Point1(), First);
  EXPECT_EQ(this->Point2(), Second);
  EXPECT_EQ(this->Items(), 3);
  EXPECT_THAT(this->Renders.Events(), IsEmpty());
}

TEST_F(NormalWidget, TwoHandlesInOnePlaceGiveTheConesNoDirection)
{
  World at = First;
  this->Normal->AddHandle(at.data());
  this->Normal->AddHandle(at.data());
  EXPECT_TRUE(IsPoint(this->Normal->Cone1Source->GetDirection(), { { 0, 0, 0 } }));
  EXPECT_TRUE(IsPoint(this->Normal->Cone2Source->GetDirection(), { { 0, 0, 0 } }));
  EXPECT_EQ(this->Direction(), (World{ { 0, 0, 0 } }));
  this->Depth->Render();
}

TEST_F(NormalWidgetAlone, RefusesAHandleWithoutAFinitePosition)
{
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  World nowhere{ { 1, nan, 2 } };
  World far{ { infinity, 0, 0 } };
  for (double* at : { nowhere.data(), far.data(), static_cast<double*>(nullptr) })
  {
    this->Normal->AddHandle(at);
    this->ExpectGenericWarning("zvNormalWidget", NoPosition);
    EXPECT_EQ(this->Items(), 1);
  }
}

TEST_F(NormalWidgetAlone, TheNormalIsTheUnitVectorFromPointOneToPointTwo)
{
  this->Normal->SetPoint1(1, 1, 1);
  this->Normal->SetPoint2(1, 5, -2);
  EXPECT_TRUE(IsPoint(this->Direction().data(), { { 0, 0.8, -0.6 } }));
  this->Normal->SetPoint2(1, 1, 1);
  EXPECT_EQ(this->Direction(), (World{ { 0, 0, 0 } }));
  this->Normal->GetNormal(nullptr);
  this->Normal->GetPoint1(nullptr);
  this->Normal->GetPoint2(nullptr);
}

TEST_F(NormalWidget, SettingAPointMovesItsEndAndTurnsBothCones)
{
  this->Place();
  this->WatchRenders();
  const vtkMTimeType before = this->Normal->GetMTime();
  this->Normal->SetPoint1(100, 25, 43); // far outside the volume
  EXPECT_EQ(this->Point1(), (World{ { 100, 25, 43 } }));
  EXPECT_TRUE(IsPoint(this->Normal->Cone1Source->GetCenter(), { { 100, 25, 43 } }));
  EXPECT_TRUE(IsPoint(this->Normal->Cone2Source->GetCenter(), this->Point2()));
  const World first = this->Direction();
  EXPECT_TRUE(IsPoint(this->Normal->Cone1Source->GetDirection(), first));
  EXPECT_TRUE(IsPoint(this->Normal->Cone2Source->GetDirection(), first));
  this->Normal->SetPoint2(100, 22, 39);
  EXPECT_EQ(this->Point2(), (World{ { 100, 22, 39 } }));
  EXPECT_TRUE(IsPoint(this->Normal->Cone2Source->GetCenter(), { { 100, 22, 39 } }));
  EXPECT_TRUE(IsPoint(this->Normal->Cone1Source->GetDirection(), { { 0, -0.6, -0.8 } }));
  EXPECT_TRUE(IsPoint(this->Normal->Cone2Source->GetDirection(), { { 0, -0.6, -0.8 } }));
  EXPECT_EQ(this->Normal->GetMTime(), before);
  EXPECT_THAT(this->Renders.Events(), IsEmpty());
}

TEST_F(NormalWidget, APointThatIsNoNumberIsSurvivedAndCanBeSetAgain)
{
  this->Place();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  this->Normal->SetPoint1(nan, nan, nan);
  this->Normal->RenderesUpdate();
  this->Normal->SetPoint1(30, 25, 30);
  this->Normal->SetPoint2(30, 25, 40);
  EXPECT_EQ(this->Direction(), (World{ { 0, 0, 1 } }));
  EXPECT_TRUE(IsPoint(this->Normal->Cone1Source->GetDirection(), { { 0, 0, 1 } }));
}

TEST_F(NormalWidgetAlone, MovesTheEndWhoseConeIsHeld)
{
  this->Normal->SetPoint1(10, 10, 40);
  this->Normal->SetPoint2(30, 25, 40);
  const World second = this->Point2();
  World from{ { 1, 1, 1 } };
  World to{ { 2, 4, 0 } };
  const World first = this->Point1();
  this->Normal->CurrentHandle = this->Normal->Cone1Source;
  this->Normal->MoveHandle(from.data(), to.data());
  EXPECT_TRUE(IsPoint(this->Point1().data(), first + World{ { 1, 3, -1 } }));
  EXPECT_EQ(this->Point2(), second);
  const World moved = this->Point1();
  this->Normal->CurrentHandle = this->Normal->Cone2Source;
  this->Normal->MoveHandle(to.data(), from.data());
  EXPECT_EQ(this->Point1(), moved);
  EXPECT_TRUE(IsPoint(this->Point2().data(), second + World{ { -1, -3, 1 } }));
}

TEST_F(NormalWidgetAlone, MovesNothingWithoutAHeldCone)
{
  this->Normal->SetPoint1(10, 10, 40);
  this->Normal->SetPoint2(30, 25, 40);
  const World first = this->Point1();
  World from{ { 1, 1, 1 } };
  World to{ { 2, 4, 0 } };
  this->Normal->MoveHandle(from.data(), to.data());
  this->ExpectGenericWarning("zvNormalWidget", NoHandle);
  EXPECT_EQ(this->Point1(), first);
}

TEST_F(NormalWidgetAlone, MovesNothingWithoutBothEndsOfTheMotion)
{
  this->Normal->SetPoint1(10, 10, 40);
  this->Normal->SetPoint2(30, 25, 40);
  const World first = this->Point1();
  const World second = this->Point2();
  World end{ { 1, 1, 1 } };
  this->Normal->CurrentHandle = this->Normal->Cone1Source;
  for (bool isFirst : { true, false })
  {
    double* p1 = isFirst ? nullptr : end.data();
    double* p2 = isFirst ? end.data() : nullptr;
    this->Normal->MoveHandle(p1, p2);
    this->ExpectGenericWarning(
      "zvNormalWidget", "give both ends of the motion before moving a handle...");
    this->Normal->Translate(p1, p2);
    this->ExpectGenericWarning(
      "zvNormalWidget", "give both ends of the motion before moving the normal...");
    EXPECT_EQ(this->Point1(), first);
    EXPECT_EQ(this->Point2(), second);
  }
}

TEST_F(NormalWidgetAlone, TranslationKeepsTheDirection)
{
  this->Normal->SetPoint1(10, 10, 40);
  this->Normal->SetPoint2(30, 25, 40);
  const World first = this->Point1();
  const World second = this->Point2();
  const World direction = this->Direction();
  World from{ { 0, 0, 0 } };
  World to{ { 5, -4, 3 } };
  this->Normal->Translate(from.data(), to.data());
  EXPECT_TRUE(IsPoint(this->Point1().data(), first + to));
  EXPECT_TRUE(IsPoint(this->Point2().data(), second + to));
  EXPECT_TRUE(IsPoint(this->Normal->Cone1Source->GetCenter(), first + to));
  EXPECT_TRUE(IsPoint(this->Normal->Cone2Source->GetCenter(), second + to));
  EXPECT_TRUE(IsPoint(this->Direction().data(), direction));
  EXPECT_TRUE(IsPoint(this->Normal->Cone1Source->GetDirection(), direction));
}

TEST_F(NormalWidgetAlone, HighlightingChangesAllPartsAndLettingGoForgetsTheCone)
{
  this->Normal->CurrentHandle = this->Normal->Cone2Source;
  this->Normal->HighlightNormal(1);
  EXPECT_EQ(this->Normal->CurrentHandle, this->Normal->Cone2Source.Get());
  for (vtkActor* actor : { this->Normal->LineActor.Get(), this->Normal->Cone1Actor.Get(),
         this->Normal->Cone2Actor.Get() })
  {
    EXPECT_EQ(actor->GetProperty(), this->Normal->SelectedNormalProperty.Get());
  }
  this->Normal->HighlightNormal(0);
  EXPECT_EQ(this->Normal->CurrentHandle, nullptr);
  for (vtkActor* actor : { this->Normal->LineActor.Get(), this->Normal->Cone1Actor.Get(),
         this->Normal->Cone2Actor.Get() })
  {
    EXPECT_EQ(actor->GetProperty(), this->Normal->NormalProperty.Get());
  }
}

TEST_F(NormalWidgetAlone, ConesAreTwiceAsHighAsTheirRadius)
{
  this->Normal->SizeHandles();
  for (vtkConeSource* cone : { this->Normal->Cone1Source.Get(), this->Normal->Cone2Source.Get() })
  {
    EXPECT_DOUBLE_EQ(cone->GetRadius(), 3.0);
    EXPECT_DOUBLE_EQ(cone->GetHeight(), 6.0);
  }
  this->Normal->SetHandleSize(0.25);
  this->Normal->SizeHandles();
  EXPECT_DOUBLE_EQ(this->Normal->Cone1Source->GetRadius(), 0.75);
  EXPECT_DOUBLE_EQ(this->Normal->Cone2Source->GetHeight(), 1.5);
}

TEST_F(NormalWidgetAlone, PlacingItPlacesNothingByDesign)
{
  this->Normal->SetPoint1(10, 10, 40);
  this->Normal->SetPoint2(30, 25, 40);
  const World first = this->Point1();
  double bounds[6] = { -100, 100, -50, 50, 0, 20 };
  this->Normal->PlaceWidget(bounds);
  this->Normal->PlaceWidget(-100, 100, -50, 50, 0, 20);
  this->Normal->PlaceWidget(nullptr);
  EXPECT_EQ(this->Point1(), first);
  EXPECT_DOUBLE_EQ(this->Normal->InitialLength, 1.0);
  this->ExpectNoMessage();
  this->Normal->PlaceWidget();
  EXPECT_EQ(this->TakeMessages().size(), 1u); // the parent's complaint about neither input nor prop
  EXPECT_EQ(this->Point1(), first);
}

//------------------------------------------------------------------------------
TEST_F(NormalWidgetAlone, NeedsAnInteractorToBeEnabledOrDisabled)
{
  this->Normal->SetEnabled(1);
  this->ExpectVtkError("zvNormalWidget", "zvNormalWidget", this->Normal, NoInteractor);
  this->Normal->SetEnabled(0);
  this->ExpectVtkError("zvNormalWidget", "zvNormalWidget", this->Normal, NoInteractor);
  EXPECT_EQ(this->Normal->GetEnabled(), 0);
}

TEST_F(NormalWidget, EnablingShowsAllPartsTellsAndRendersItsWindow)
{
  this->Watch();
  this->Normal->SetViewerWidgetCurrent(this->Z->Viewer);
  this->WatchRenders();
  this->Normal->SetEnabled(1);
  EXPECT_EQ(this->Normal->GetEnabled(), 1);
  EXPECT_EQ(this->CountViewsWith(this->Normal->LineActor), 4);
  EXPECT_EQ(this->CountViewsWith(this->Normal->Cone1Actor), 4);
  EXPECT_EQ(this->CountViewsWith(this->Normal->Cone2Actor), 4);
  EXPECT_DOUBLE_EQ(this->Normal->Cone1Source->GetRadius(), 3.0);
  EXPECT_THAT(this->Told.Names(), ElementsAre("EnableEvent"));
  EXPECT_FALSE(this->Told.Events().front().HasData);
  ASSERT_EQ(this->Renders.Events().size(), 1u);
  EXPECT_EQ(this->Renders.Events().front().Caller, this->Z->Scene.Renderer());
  EXPECT_FALSE(this->Interactor()->HasObserver(
    vtkCommand::LeftButtonPressEvent, this->Normal->EventCallbackCommand));
}

TEST_F(NormalWidget, EnablingTakesTheRendererUnderTheMouse)
{
  this->Normal->SetInteractor(this->Interactor());
  this->Normal->SetEnabled(1);
  EXPECT_EQ(this->Normal->GetCurrentRenderer(), this->Z->Scene.Renderer());
}

TEST_F(NormalWidget, StaysDisabledInAWindowWithoutRenderers)
{
  zvtest::Scene empty;
  empty.DropRenderers();
  this->Normal->SetInteractor(empty.Interactor());
  this->Watch();
  this->Normal->SetEnabled(1);
  EXPECT_EQ(this->Normal->GetEnabled(), 0);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
}

TEST_F(NormalWidget, EnablingWithInteractionTellsTwiceAndAttachesItsCommand)
{
  this->Normal->SetViewerWidgetCurrent(this->Z->Viewer);
  this->Normal->Interaction = true;
  this->Watch();
  this->Normal->SetEnabled(1);
  EXPECT_THAT(this->Told.Names(), ElementsAre("EnableEvent", "EnableEvent"));
  EXPECT_TRUE(this->Interactor()->HasObserver(
    vtkCommand::LeftButtonPressEvent, this->Normal->EventCallbackCommand));
  this->Normal->SetEnabled(0);
  EXPECT_FALSE(this->Interactor()->HasObserver(
    vtkCommand::LeftButtonPressEvent, this->Normal->EventCallbackCommand));
}

TEST_F(NormalWidget, DisablingTakesAllPartsOutTellsAndRenders)
{
  this->Enable();
  this->Watch();
  this->WatchRenders();
  this->Normal->SetEnabled(0);
  EXPECT_EQ(this->Normal->GetEnabled(), 0);
  this->ExpectNothingShown();
  EXPECT_THAT(this->Told.Names(), ElementsAre("DisableEvent"));
  EXPECT_FALSE(this->Told.Events().front().HasData);
  EXPECT_EQ(this->Normal->GetCurrentRenderer(), nullptr);
  EXPECT_EQ(this->Renders.Events().size(), 1u);
}

TEST_F(NormalWidget, EnablingOrDisablingTwiceDoesNothingMore)
{
  this->Enable();
  this->Watch();
  this->WatchRenders();
  this->Normal->SetEnabled(1);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  this->Normal->SetEnabled(0);
  this->Normal->SetEnabled(0);
  EXPECT_THAT(this->Told.Names(), ElementsAre("DisableEvent"));
  EXPECT_EQ(this->Renders.Events().size(), 1u);
}

TEST_F(NormalWidget, DisablingKeepsThePointsAndTheState)
{
  this->Enable();
  World at = First;
  this->Normal->AddHandle(at.data());
  this->Normal->SetEnabled(0);
  EXPECT_EQ(this->Normal->GetState(), zvNormalWidget::Adding);
  EXPECT_EQ(this->Point1(), First);
  EXPECT_EQ(this->Items(), 2);
}

TEST_F(NormalWidget, AnObserverOfEnablingMayDisableItAtOnce)
{
  this->Normal->SetViewerWidgetCurrent(this->Z->Viewer);
  this->Normal->Interaction = true;
  bool isDone = false;
  this->Told.Watch(this->Normal, { vtkCommand::EnableEvent },
    [this, &isDone](const zvtest::RecordedEvent&)
    {
      if (!isDone)
      {
        isDone = true;
        this->Normal->SetEnabled(0);
      }
    });
  this->Normal->SetEnabled(1);
  EXPECT_EQ(this->Normal->GetEnabled(), 0);
  EXPECT_EQ(this->Told.Events().size(), 1u);
  this->ExpectNothingShown();
}

TEST_F(NormalWidget, GoingToAnotherViewerLeavesItEnabledAndShown)
{
  this->Normal->SetViewerWidgetCurrent(this->Z->Viewer);
  this->Normal->Interaction = true;
  this->Normal->SetEnabled(1);
  this->Watch();
  this->WatchRenders();
  this->X->Mouse.MoveTo({ { 200, 200 } });
  EXPECT_EQ(this->Normal->GetEnabled(), 1);
  EXPECT_EQ(this->Normal->GetViewerWidgetCurrent(), this->X->Viewer.Get());
  EXPECT_EQ(this->Normal->GetInteractor(), this->X->Scene.Interactor());
  EXPECT_EQ(this->Normal->GetCurrentRenderer(), this->X->Scene.Renderer());
  EXPECT_EQ(this->CountViewsWith(this->Normal->LineActor), 4);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  EXPECT_THAT(this->Renders.Events(), IsEmpty());
  vtkCommand* command = this->Normal->EventCallbackCommand;
  EXPECT_FALSE(this->Interactor()->HasObserver(vtkCommand::MouseMoveEvent, command));
  EXPECT_TRUE(this->X->Scene.Interactor()->HasObserver(vtkCommand::MouseMoveEvent, command));
}

TEST_F(NormalWidget, GoingToAnotherViewerLeavesADisabledOneDisabled)
{
  this->Normal->SetViewerWidgetCurrent(this->Z->Viewer);
  this->Normal->Interaction = true;
  this->X->Mouse.MoveTo({ { 200, 200 } });
  EXPECT_EQ(this->Normal->GetEnabled(), 0);
  EXPECT_FALSE(this->X->Scene.Interactor()->HasObserver(
    vtkCommand::MouseMoveEvent, this->Normal->EventCallbackCommand));
}

TEST_F(NormalWidget, AnotherInteractorFromTheHostDisablesIt)
{
  this->Enable();
  this->Watch();
  this->Normal->SetInteractor(this->X->Scene.Interactor());
  EXPECT_EQ(this->Normal->GetEnabled(), 0);
  EXPECT_THAT(this->Told.Names(), ElementsAre("DisableEvent"));
  this->ExpectNothingShown();
}

//------------------------------------------------------------------------------
namespace
{
struct MissingRow
{
  const char* Name;
  const char* Missing;
  std::function<void(zvNormalWidget*, OpenViewer*)> Unset;
};

class NormalWidgetWithout
  : public NormalWidget
  , public ::testing::WithParamInterface<MissingRow>
{
protected:
  void Unset() { GetParam().Unset(this->Normal, this->Y->Viewer); }
  void ExpectTheWarning(const std::string& before)
  {
    this->ExpectGenericWarning(
      "zvNormalWidget", "set " + std::string(GetParam().Missing) + " before " + before + "...");
  }
};
}

INSTANTIATE_TEST_SUITE_P(NormalWidget, NormalWidgetWithout,
  ::testing::Values(MissingRow{ "ViewerX", "ViewerWidgetX",
                      [](zvNormalWidget* n, OpenViewer*) { n->SetViewerWidgetX(nullptr); } },
    MissingRow{ "ViewerY", "ViewerWidgetY",
      [](zvNormalWidget* n, OpenViewer*) { n->SetViewerWidgetY(nullptr); } },
    MissingRow{ "ViewerZ", "ViewerWidgetZ",
      [](zvNormalWidget* n, OpenViewer*)
      {
        n->SetViewerWidgetZ(nullptr);
        n->SetRenderer3D(nullptr); // the first that is missing is told
      } },
    MissingRow{ "Renderer3D", "Renderer3D",
      [](zvNormalWidget* n, OpenViewer*) { n->SetRenderer3D(nullptr); } },
    MissingRow{ "RendererOfAViewer", "the renderer of ViewerWidgetY",
      [](zvNormalWidget*, OpenViewer* viewer) { viewer->SetEnabled(0); } }),
  [](const auto& row) { return row.param.Name; });

TEST_P(NormalWidgetWithout, WarnsOnceAndRendersTheOthers)
{
  this->Unset();
  this->WatchRenders();
  this->Normal->RenderesUpdate();
  this->ExpectTheWarning("rendering the views");
  EXPECT_GE(this->Renders.Events().size(), 2u);
  EXPECT_LT(this->Renders.Events().size(), 4u);
}

TEST_P(NormalWidgetWithout, WarnsOnceAndAddsNoProp)
{
  this->Unset();
  vtkNew<vtkActor> prop;
  this->Normal->AddActorInRenderers(prop);
  this->ExpectTheWarning("showing a prop");
  EXPECT_EQ(this->CountViewsWith(prop), 0);
}

TEST_P(NormalWidgetWithout, WarnsOnceAndTakesPropsOutAllTheSame)
{
  this->Place();
  this->Unset();
  this->Normal->RemoveActorOfRenderers(this->Normal->LineActor);
  this->ExpectTheWarning("hiding a prop");
  EXPECT_EQ(this->CountViewsWith(this->Normal->LineActor), 0);
  EXPECT_EQ(this->CountViewsWith(this->Normal->Cone1Actor), 4);
  this->Normal->RemoveAllActorsOfRenderers();
  this->ExpectTheWarning("hiding the parts");
  this->ExpectNothingShown();
}

TEST_P(NormalWidgetWithout, WarnsOnceAndPlacesNoHandle)
{
  this->Unset();
  World at = First;
  this->Normal->AddHandle(at.data());
  this->ExpectTheWarning("placing a handle");
  EXPECT_EQ(this->Items(), 1);
  EXPECT_EQ(this->Normal->GetState(), zvNormalWidget::Adding);
  this->ExpectNothingShown();
}

TEST_P(NormalWidgetWithout, WarnsOnceAndStaysDisabled)
{
  this->Normal->SetInteractor(this->Interactor());
  this->Unset();
  this->Watch();
  this->Normal->SetEnabled(1);
  this->ExpectTheWarning("enabling the widget");
  EXPECT_EQ(this->Normal->GetEnabled(), 0);
  EXPECT_EQ(this->Normal->GetCurrentRenderer(), nullptr);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
}

TEST_P(NormalWidgetWithout, IsDisabledSilently)
{
  this->Enable();
  this->Unset();
  this->Normal->SetEnabled(0);
  EXPECT_EQ(this->Normal->GetEnabled(), 0);
  this->ExpectNothingShown();
  this->ExpectNoMessage();
}

//------------------------------------------------------------------------------
TEST_F(NormalWidget, AViewThatIsDeletedIsLeftOutSilently)
{
  this->Click(*this->Z, First);
  this->X.reset();
  this->Depth.reset();
  this->Click(*this->Z, Second);
  EXPECT_EQ(this->Normal->GetState(), zvNormalWidget::Start);
  for (ViewerInWindow* view : { this->Y.get(), this->Z.get() })
  {
    EXPECT_TRUE(view->Scene.Renderer()->HasViewProp(this->Normal->LineActor));
  }
  EXPECT_EQ(this->Normal->GetViewerWidgetX(), nullptr);
  EXPECT_EQ(this->Normal->GetRenderer3D(), nullptr);
  this->Normal->RenderesUpdate();
  this->Normal->RemoveAllActorsOfRenderers();
  this->ExpectNoMessage();
}

TEST_F(NormalWidget, DeletingItTakesItsPartsAlongButTellsAndRendersNothingByDesign)
{
  this->Enable();
  this->Place();
  ASSERT_EQ(this->Normal->GetEnabled(), 1);
  const vtkSmartPointer<vtkActor> line = this->Normal->LineActor.Get();
  const vtkSmartPointer<zvViewerWidgetCallback> callback = this->Normal->ViewerCallback.Get();
  this->Watch();
  this->WatchRenders();
  this->Normal = nullptr;
  EXPECT_EQ(this->CountViewsWith(line), 0);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  EXPECT_THAT(this->Renders.Events(), IsEmpty());
  for (ViewerInWindow* view : { this->X.get(), this->Y.get(), this->Z.get() })
  {
    EXPECT_FALSE(view->Viewer->HasObserver(vtkCommand::LeftButtonPressEvent, callback));
    this->Click(*view, { { 12, 12, 12 } });
  }
  callback->Execute(this->Z->Viewer, vtkCommand::LeftButtonPressEvent, nullptr);
}

TEST_F(NormalWidget, KeepsNoViewAlive)
{
  const int viewers = this->X->Viewer->GetReferenceCount();
  const int renderers = this->Depth->Renderer()->GetReferenceCount();
  vtkNew<zvNormalWidget> another;
  another->SetViewerWidgetX(this->X->Viewer);
  another->SetRenderer3D(this->Depth->Renderer());
  EXPECT_EQ(this->X->Viewer->GetReferenceCount(), viewers);
  EXPECT_EQ(this->Depth->Renderer()->GetReferenceCount(), renderers);
}

TEST_F(NormalWidget, MayBeReleasedFromAnyOfItsEvents)
{
  for (unsigned long event : { vtkCommand::EnableEvent, vtkCommand::StartInteractionEvent,
         vtkCommand::InteractionEvent, vtkCommand::EndInteractionEvent, vtkCommand::DisableEvent })
  {
    SCOPED_TRACE(vtkCommand::GetStringFromEventId(event));
    vtkWeakPointer<OpenNormal> alive = this->Normal.Get();
    this->Enable();
    this->Place();
    zvtest::EventRecorder told;
    told.Watch(
      this->Normal, { event }, [this](const zvtest::RecordedEvent&) { this->Normal = nullptr; });
    this->Normal->SetEnabled(0);
    if (alive)
    {
      this->Normal->SetViewerWidgetCurrent(this->Z->Viewer);
      this->Normal->SetEnabled(1);
    }
    if (alive)
    {
      const zvtest::Display at = this->Z->Mouse.At(this->Middle());
      this->Z->Mouse.Drag(zvtest::Left, at, { { at[0] + 20, at[1] } });
    }
    EXPECT_EQ(alive, nullptr);
    this->Normal = vtkSmartPointer<OpenNormal>::Take(OpenNormal::New());
    this->Normal->SetViewerWidgetX(this->X->Viewer);
    this->Normal->SetViewerWidgetY(this->Y->Viewer);
    this->Normal->SetViewerWidgetZ(this->Z->Viewer);
    this->Normal->SetRenderer3D(this->Depth->Renderer());
  }
}

TEST_F(NormalWidget, MayBeReleasedInAHandlerThatAHostCalls)
{
  struct Row
  {
    int State;
    std::function<void(OpenNormal*)> Handler;
  };
  const Row rows[] = {
    { zvNormalWidget::Start, [](OpenNormal* normal) { normal->OnLeftButtonDown(); } },
    { zvNormalWidget::Translating, [](OpenNormal* normal) { normal->OnMouseMove(); } },
    { zvNormalWidget::Translating, [](OpenNormal* normal) { normal->OnLeftButtonUp(); } },
  };
  this->Interactor()->SetEventInformation(200, 200);
  for (const Row& row : rows)
  {
    auto normal = vtkSmartPointer<OpenNormal>::Take(OpenNormal::New());
    normal->SetViewerWidgetX(this->X->Viewer);
    normal->SetViewerWidgetY(this->Y->Viewer);
    normal->SetViewerWidgetZ(this->Z->Viewer);
    normal->SetRenderer3D(this->Depth->Renderer());
    normal->SetViewerWidgetCurrent(this->Z->Viewer);
    normal->State = row.State;
    const vtkWeakPointer<OpenNormal> alive = normal.Get();
    zvtest::EventRecorder told;
    told.Watch(
      normal, zvtest::WidgetEvents, [&normal](const zvtest::RecordedEvent&) { normal = nullptr; });
    row.Handler(alive);
    EXPECT_EQ(told.Events().size(), 1u);
    EXPECT_EQ(alive, nullptr);
  }
}

TEST_F(NormalWidget, ViewersMayBeReleasedFromItsEvents)
{
  this->Place();
  this->Told.Watch(this->Normal, { vtkCommand::StartInteractionEvent },
    [this](const zvtest::RecordedEvent&)
    {
      this->Z->Viewer = nullptr;
      this->X.reset();
      this->Depth.reset();
    });
  this->Z->Mouse.Press(zvtest::Left, this->Z->Mouse.At(this->Middle()));
  EXPECT_EQ(this->Told.Events().size(), 1u);
  EXPECT_EQ(this->Normal->GetViewerWidgetZ(), nullptr);
  this->ExpectNoMessage();
}

TEST_F(NormalWidget, OutlivesItsViewersInMidDrag)
{
  this->Place();
  this->Z->Mouse.Press(zvtest::Left, this->Z->Mouse.At(this->Middle()));
  ASSERT_EQ(this->Normal->GetState(), zvNormalWidget::Translating);
  this->X.reset();
  this->Y.reset();
  this->Z.reset();
  this->Depth.reset();
  this->Normal->OnMouseMove();
  this->Normal->OnLeftButtonUp();
  EXPECT_EQ(this->Normal->GetState(), zvNormalWidget::Start);
  this->Normal->OnLeftButtonDown();
  EXPECT_EQ(this->Normal->GetState(), zvNormalWidget::Outside);
  this->Normal = nullptr;
  this->ExpectNoMessage();
}

TEST_F(NormalWidget, AReleaseInAViewerThatLostItsViewEndsTheDrag)
{
  this->Place();
  this->Z->Mouse.Press(zvtest::Left, this->Z->Mouse.At(this->Middle()));
  this->Z->Scene.Window()->RemoveRenderer(this->Z->Scene.Renderer());
  this->Z->Mouse.Release(zvtest::Left);
  EXPECT_EQ(this->Normal->GetState(), zvNormalWidget::Start);
  this->ExpectNoMessage();
}

TEST_F(NormalWidgetAlone, ItsHandlersAreHarmlessWithoutViewers)
{
  const auto bare = vtkSmartPointer<OpenNormal>::Take(OpenNormal::New());
  bare->OnMouseMove();
  bare->OnLeftButtonDown();
  EXPECT_EQ(bare->GetState(), zvNormalWidget::Outside);
  bare->OnMouseMove();
  this->ExpectNoMessage();
  bare->OnLeftButtonUp();
  EXPECT_EQ(bare->GetState(), zvNormalWidget::Start);
  this->ExpectGenericWarning("zvNormalWidget", "set ViewerWidgetX before rendering the views...");
}
