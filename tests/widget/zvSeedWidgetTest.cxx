// What the widget is, its views, enabling and life; its seeds and the mouse have files of their
// own.
#include "zvSeedFixture.h"

#include "vtkCamera.h"
#include "vtkNew.h"
#include "vtkObjectFactory.h"
#include "vtkPropCollection.h"
#include "vtkVersion.h"

#include <gmock/gmock.h>

#include <cmath>
#include <functional>
#include <sstream>

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zvtest::OpenSeeds;
using zvtest::ThreeD;
using zvtest::World;
using zvtest::X;
using zvtest::Y;
using zvtest::Z;

namespace
{
class ReplacedSeeds : public zvSeedWidget
{
public:
  static ReplacedSeeds* New() { return new ReplacedSeeds; }
  vtkTypeMacro(ReplacedSeeds, zvSeedWidget)
};

class Factory : public vtkObjectFactory
{
public:
  static Factory* New() { return new Factory; }
  vtkTypeMacro(Factory, vtkObjectFactory)
  const char* GetVTKSourceVersion() override { return VTK_SOURCE_VERSION; }
  const char* GetDescription() override { return "replaces zvSeedWidget"; }

private:
  static vtkObject* Make() { return ReplacedSeeds::New(); }
  Factory()
  {
    this->RegisterOverride("zvSeedWidget", "ReplacedSeeds", "for the test", 1, &Factory::Make);
  }
};

class SeedWidget : public zvtest::Seeds
{
};
}

// ---- What it is, and how it starts

TEST_F(SeedWidget, ReportsItsOwnNameAndItsAncestors)
{
  vtkNew<zvSeedWidget> widget;
  EXPECT_STREQ(widget->GetClassName(), "zvSeedWidget");
  for (const char* name : { "zvSeedWidget", "vtk3DWidget", "vtkInteractorObserver", "vtkObject" })
  {
    EXPECT_EQ(widget->IsA(name), 1) << name;
  }
  EXPECT_EQ(widget->IsA("zvWidgets"), 0);
  auto other = vtkSmartPointer<zvSeedWidget>::Take(widget->NewInstance());
  EXPECT_STREQ(other->GetClassName(), "zvSeedWidget");
}

TEST_F(SeedWidget, IsMadeByTheObjectFactoryWhenThatKnowsTheClass)
{
  vtkNew<Factory> factory;
  vtkObjectFactory::RegisterFactory(factory);
  vtkNew<zvSeedWidget> replaced;
  vtkObjectFactory::UnRegisterFactory(factory);
  vtkNew<zvSeedWidget> plain;
  EXPECT_STREQ(replaced->GetClassName(), "ReplacedSeeds");
  EXPECT_STREQ(plain->GetClassName(), "zvSeedWidget");
}

TEST_F(SeedWidget, TheInstantiatorMakesOneWithOneReference)
{
  auto made = vtkSmartPointer<vtkObject>::Take(vtkInstantiatorzvSeedWidgetNew());
  EXPECT_STREQ(made->GetClassName(), "zvSeedWidget");
  EXPECT_EQ(made->GetReferenceCount(), 1);
}

TEST_F(SeedWidget, WritesOneRevision)
{
  std::ostringstream revision;
  this->Widget->CollectRevisions(revision);
  EXPECT_EQ(revision.str(), "zvSeedWidget $Revision: 1.2 $\n");
}

TEST_F(SeedWidget, PrintsTheParentAndFiveLines)
{
  std::ostringstream parents;
  this->Widget->vtk3DWidget::PrintSelf(parents, vtkIndent(2));
  std::ostringstream expected;
  expected << parents.str() << "  Handle Property: " << this->Widget->GetHandleProperty() << "\n"
           << "  Selected Handle Property: " << this->Widget->GetSelectedHandleProperty() << "\n"
           << "  Project To Plane: Off\n  Projection Normal: 0\n  Projection Position: 0\n";
  std::ostringstream own;
  this->Widget->PrintSelf(own, vtkIndent(2));
  EXPECT_EQ(own.str(), expected.str());
}

TEST_F(SeedWidget, PrintsPropertiesThatAreMissingAndAProjectionThatIsOn)
{
  this->Widget->SetHandleProperty(nullptr);
  this->Widget->SetSelectedHandleProperty(nullptr);
  this->Widget->ProjectToPlaneOn();
  this->Widget->SetProjectionPosition(2.5);
  std::ostringstream parents;
  this->Widget->vtk3DWidget::PrintSelf(parents, vtkIndent());
  std::ostringstream own;
  this->Widget->PrintSelf(own, vtkIndent());
  EXPECT_EQ(own.str(),
    parents.str() +
      "Handle Property: (none)\nSelected Handle Property: (none)\n"
      "Project To Plane: On\nProjection Normal: 0\nProjection Position: 2.5\n");
}

TEST_F(SeedWidget, StartsWithTheseDefaults)
{
  vtkNew<OpenSeeds> fresh;
  EXPECT_EQ(fresh->GetState(), zvSeedWidget::Start);
  EXPECT_EQ(fresh->GetEnabled(), 0);
  EXPECT_FALSE(fresh->DebugMode);
  EXPECT_EQ(fresh->ProjectionNormal, 0);
  EXPECT_EQ(fresh->ProjectionPosition, 0.0);
  EXPECT_EQ(fresh->ProjectToPlane, 0);
  EXPECT_EQ(fresh->PlaneSource, nullptr);
  EXPECT_EQ(fresh->CurrentHandle, nullptr);
  EXPECT_EQ(fresh->CurrentActorIndex, -1);
  EXPECT_EQ(fresh->GetPlaceFactor(), 1.0);
  EXPECT_THAT(fresh->InitialBounds, ElementsAre(-0.5, 0.5, -0.5, 0.5, -0.5, 0.5));
  EXPECT_DOUBLE_EQ(fresh->InitialLength, std::sqrt(3.0));
  EXPECT_THAT(fresh->LastPickPosition, ElementsAre(0.0, 0.0, 0.0));
  EXPECT_EQ(fresh->ValidPick, 0);
  EXPECT_EQ(fresh->HandlePicker->GetTolerance(), 0.005);
  EXPECT_EQ(fresh->HandlePicker->GetPickFromList(), 1);
  EXPECT_EQ(fresh->HandlePicker->GetPickList()->GetNumberOfItems(), 0);
  for (vtkCollection* collection : { fresh->HandleActors.Get(), fresh->HandleSources.Get(),
         fresh->HandleActors3D.Get(), fresh->HandleSources3D.Get() })
  {
    EXPECT_EQ(collection->GetNumberOfItems(), 0);
  }
  for (vtkRenderer* view : { fresh->Renderer3D.GetPointer(), fresh->RendererX.GetPointer(),
         fresh->RendererY.GetPointer(), fresh->RendererZ.GetPointer(), fresh->CurrentRenderer })
  {
    EXPECT_EQ(view, nullptr);
  }
  EXPECT_EQ(fresh->Interactor3D, nullptr);
  EXPECT_EQ(fresh->InteractorX, nullptr);
  EXPECT_EQ(fresh->InteractorY, nullptr);
  EXPECT_EQ(fresh->InteractorZ, nullptr);
}

TEST_F(SeedWidget, ItsNumbersOfStatesAreFixed)
{
  EXPECT_EQ(zvSeedWidget::Start, 0);
  EXPECT_EQ(zvSeedWidget::Moving, 1);
  EXPECT_EQ(zvSeedWidget::Outside, 4);
}

TEST_F(SeedWidget, AStateIsReadAndWrittenPlainly)
{
  for (int state : { 1, 4, 7, -3, 0 })
  {
    this->Widget->SetState(state);
    EXPECT_EQ(this->Widget->GetState(), state);
  }
}

// ---- Looks

TEST_F(SeedWidget, ADefaultSeedIsRedAndTheSelectedOneCyan)
{
  EXPECT_THAT(std::vector<double>(this->Widget->GetHandleProperty()->GetColor(),
                this->Widget->GetHandleProperty()->GetColor() + 3),
    ElementsAre(1, 0, 0));
  EXPECT_THAT(std::vector<double>(this->Widget->GetSelectedHandleProperty()->GetColor(),
                this->Widget->GetSelectedHandleProperty()->GetColor() + 3),
    ElementsAre(0, 1, 1));
}

TEST_F(SeedWidget, DefaultPropertiesAreMadeOnlyWhereOneIsMissing)
{
  vtkSmartPointer<vtkProperty> kept = this->Widget->GetHandleProperty();
  this->Widget->SetSelectedHandleProperty(nullptr);
  this->Widget->CreateDefaultProperties();
  EXPECT_EQ(this->Widget->GetHandleProperty(), kept);
  ASSERT_NE(this->Widget->GetSelectedHandleProperty(), nullptr);
  EXPECT_EQ(this->Widget->GetSelectedHandleProperty()->GetColor()[1], 1.0);
}

TEST_F(SeedWidget, PropertiesAreHeldAndAChangeIsToldOnce)
{
  vtkNew<vtkProperty> property;
  const int references = property->GetReferenceCount();
  vtkMTimeType before = this->Widget->GetMTime();
  this->Widget->SetHandleProperty(property);
  this->Widget->SetSelectedHandleProperty(property);
  EXPECT_EQ(property->GetReferenceCount(), references + 2);
  EXPECT_GT(this->Widget->GetMTime(), before);
  before = this->Widget->GetMTime();
  this->Widget->SetHandleProperty(property);
  this->Widget->SetSelectedHandleProperty(property);
  EXPECT_EQ(this->Widget->GetMTime(), before);
  this->Widget->SetHandleProperty(nullptr);
  this->Widget->SetSelectedHandleProperty(nullptr);
  EXPECT_EQ(property->GetReferenceCount(), references);
}

TEST_F(SeedWidget, ANewPropertyShowsWhenTheSelectionChanges)
{
  this->AddThree();
  vtkNew<vtkProperty> property;
  this->Widget->SetHandleProperty(property);
  EXPECT_EQ(this->Looks(), "??*");
  this->Widget->SetCurrentActorIndex(1);
  EXPECT_EQ(this->Looks(), ".*.");
}

TEST_F(SeedWidget, WithoutPropertiesSeedsAreDrawnInTheDefaultLook)
{
  this->Widget->SetHandleProperty(nullptr);
  this->Widget->SetSelectedHandleProperty(nullptr);
  this->AddThree();
  this->Widget->SetEnabled(1);
  this->Widget->SetCurrentActorIndex(0);
  const zvtest::Picture picture = this->In(Z).Look();
  EXPECT_GT(picture.CountOther({ 0, 0, 0 }, { { { 0, 0 } }, { { 199, 199 } } }), 5);
}

// ---- Views

TEST_F(SeedWidget, StoresTheViewsAndTheirInteractorsWithoutReferences)
{
  vtkNew<OpenSeeds> fresh;
  std::vector<int> before;
  for (zvtest::View view : zvtest::AllViews)
  {
    before.push_back(this->Renderer(view)->GetReferenceCount());
    before.push_back(this->Interactor(view)->GetReferenceCount());
  }
  const vtkMTimeType time = fresh->GetMTime();
  this->SetViews(fresh.Get(), X);
  EXPECT_EQ(fresh->GetMTime(), time);
  EXPECT_EQ(fresh->RendererX, this->Renderer(X));
  EXPECT_EQ(fresh->RendererY, this->Renderer(Y));
  EXPECT_EQ(fresh->RendererZ, this->Renderer(Z));
  EXPECT_EQ(fresh->Renderer3D, this->Renderer(ThreeD));
  EXPECT_EQ(fresh->InteractorX, this->Interactor(X));
  EXPECT_EQ(fresh->InteractorY, this->Interactor(Y));
  EXPECT_EQ(fresh->InteractorZ, this->Interactor(Z));
  EXPECT_EQ(fresh->Interactor3D, this->Interactor(ThreeD));
  EXPECT_EQ(fresh->GetCurrentRenderer(), this->Renderer(X));
  EXPECT_EQ(fresh->GetInteractor(), this->Interactor(X));
  std::vector<int> after;
  for (zvtest::View view : zvtest::AllViews)
  {
    after.push_back(this->Renderer(view)->GetReferenceCount());
    after.push_back(this->Interactor(view)->GetReferenceCount());
  }
  EXPECT_EQ(after, before);
}

TEST_F(SeedWidget, RefusesAViewThatIsNoneOrInNoWindow)
{
  vtkNew<vtkRenderer> alone;
  for (vtkRenderer* none : { static_cast<vtkRenderer*>(nullptr), alone.Get() })
  {
    const auto expect = [this](const char* name)
    {
      this->ExpectGenericWarning("zvSeedWidget",
        std::string("set a renderer that is in a render window for ") + name + "...");
    };
    this->Widget->SetRendererX(none);
    expect("RendererX");
    this->Widget->SetRendererY(none);
    expect("RendererY");
    this->Widget->SetRendererZ(none);
    expect("RendererZ");
    this->Widget->Set3DRender(none);
    expect("Renderer3D");
    this->Widget->SetCurrentRender(none);
    expect("CurrentRenderer");
  }
  EXPECT_EQ(this->Widget->RendererX, this->Renderer(X));
  EXPECT_EQ(this->Widget->RendererY, this->Renderer(Y));
  EXPECT_EQ(this->Widget->RendererZ, this->Renderer(Z));
  EXPECT_EQ(this->Widget->Renderer3D, this->Renderer(ThreeD));
  EXPECT_EQ(this->Widget->GetCurrentRenderer(), this->Renderer(Z));
}

TEST_F(SeedWidget, TheCurrentViewHasNoSayInWhereSeedsAre)
{
  zvtest::Scene elsewhere;
  this->Widget->SetCurrentRender(elsewhere.Renderer());
  this->AddThree();
  EXPECT_THAT(this->Where(), ElementsAre("XYZ 3", "XYZ 3", "XYZ 3"));
  EXPECT_EQ(elsewhere.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
}

TEST_F(SeedWidget, ChangingTheCurrentViewMovesNoObserver)
{
  this->Widget->SetCurrentRender(this->Renderer(ThreeD));
  this->Widget->SetEnabled(1);
  this->Widget->SetCurrentRender(this->Renderer(X));
  vtkSmartPointer<vtkCommand> command = this->Widget->EventCallbackCommand;
  EXPECT_TRUE(this->Interactor(ThreeD)->HasObserver(vtkCommand::MouseMoveEvent, command));
  this->Widget->SetEnabled(0); // Deliberate: only of the interactors of now
  EXPECT_TRUE(this->Interactor(ThreeD)->HasObserver(vtkCommand::MouseMoveEvent, command));
  EXPECT_FALSE(this->Interactor(X)->HasObserver(vtkCommand::MouseMoveEvent, command));
  this->Widget = nullptr;
  EXPECT_FALSE(this->Interactor(ThreeD)->HasObserver(vtkCommand::MouseMoveEvent, command));
}

// ---- Enabling

TEST_F(SeedWidget, EnablingTellsAndRendersOnce)
{
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Widget->SetEnabled(1);
  EXPECT_EQ(this->Widget->GetEnabled(), 1);
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("EnableEvent", "X", "Y", "Z", "3"));
  EXPECT_FALSE(recorder.Events().front().HasData);
  recorder.Clear();
  this->AddThree();
  recorder.Clear();
  this->Widget->SetEnabled(1);
  EXPECT_THAT(recorder.Names(), IsEmpty());
  EXPECT_THAT(this->Where(), ElementsAre("XYZ 3", "XYZ 3", "XYZ 3"));
  EXPECT_EQ(this->Looks(), "..*");
}

TEST_F(SeedWidget, DisablingTakesAllOutAndTellsOnce)
{
  this->Widget->SetEnabled(1);
  this->AddThree();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Widget->SetEnabled(0);
  EXPECT_EQ(this->Widget->GetEnabled(), 0);
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("DisableEvent", "X", "Y", "Z", "3"));
  EXPECT_FALSE(recorder.Events().front().HasData);
  EXPECT_THAT(this->Where(), ElementsAre(" ", " ", " "));
  EXPECT_EQ(this->Widget->CurrentHandle, nullptr);
  EXPECT_EQ(this->Widget->CurrentActorIndex, 2);
  EXPECT_EQ(this->Widget->GetCurrentRenderer(), this->Renderer(Z));
  recorder.Clear();
  this->Widget->SetEnabled(0);
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(SeedWidget, EnabledAgainAllSeedsAreBackAndNoneLooksSelected)
{
  this->Widget->SetEnabled(1);
  this->AddThree();
  this->Widget->SetEnabled(0);
  this->Widget->SetEnabled(1);
  EXPECT_THAT(this->Where(), ElementsAre("XYZ 3", "XYZ 3", "XYZ 3"));
  EXPECT_EQ(this->Looks(), "...");
  EXPECT_EQ(this->Widget->CurrentActorIndex, 2);
  EXPECT_EQ(this->Widget->CurrentHandle, nullptr);
}

TEST_F(SeedWidget, EnablingSizesTheSpheres)
{
  this->AddThree();
  this->SliceSource(0)->SetRadius(5);
  this->Widget->SetEnabled(1);
  EXPECT_LT(this->SliceSource(0)->GetRadius(), 1);
}

TEST_F(SeedWidget, SeedsAreShownWhetherOrNotTheWidgetIsEnabled)
{
  this->AddThree();
  EXPECT_EQ(this->Widget->GetEnabled(), 0);
  EXPECT_THAT(this->Where(), Each(std::string("XYZ 3")));
}

TEST_F(SeedWidget, WithoutACurrentViewTheOneUnderThePointerIsTaken)
{
  this->Widget->SetCurrentRenderer(nullptr);
  this->Widget->SetEnabled(1);
  EXPECT_EQ(this->Widget->GetCurrentRenderer(), this->Renderer(Z));
  EXPECT_EQ(this->Widget->GetEnabled(), 1);
}

TEST_F(SeedWidget, WithoutACurrentViewAndItsInteractorItStaysDisabled)
{
  this->Widget->SetCurrentRenderer(nullptr);
  this->Widget->SetInteractor(nullptr);
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Widget->SetEnabled(1);
  this->ExpectGenericWarning("zvSeedWidget", "set CurrentRenderer before enabling the widget...");
  EXPECT_EQ(this->Widget->GetEnabled(), 0);
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(SeedWidget, WithoutAnInteractorTheSliceViewsAreObserved)
{
  this->Widget->SetInteractor(nullptr);
  this->Widget->SetEnabled(1);
  EXPECT_EQ(this->Widget->GetEnabled(), 1);
  EXPECT_TRUE(this->Interactor(X)->HasObserver(
    vtkCommand::MouseMoveEvent, this->Widget->EventCallbackCommand));
  this->PointerIn(X).Drag(zvtest::Left, { { 10, 10 } }, { { 50, 50 } });
  this->PointerIn(X).WheelForward({ { 50, 50 } });
  EXPECT_EQ(this->Widget->IsClicked(), 0);
}

TEST_F(SeedWidget, AnObserverOfTheEnablingMayDisableAgain)
{
  this->AddThree();
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Widget, { vtkCommand::EnableEvent },
    [this](const zvtest::RecordedEvent&) { this->Widget->SetEnabled(0); });
  this->Widget->SetEnabled(1);
  EXPECT_EQ(this->Widget->GetEnabled(), 0);
  EXPECT_THAT(this->Where(), Each(std::string(" ")));
}

// ---- Observers

namespace
{
// How often each view calls the handlers: counted by the renders of a wheel, which aborts nothing.
using Counts = std::vector<int>;
}

TEST_F(SeedWidget, ObservesTheSliceViewsAndTheCurrentOneOnceMoreByDesign)
{
  const auto countAnswers = [this]()
  {
    Counts counts;
    for (zvtest::View view : zvtest::AllViews)
    {
      zvtest::EventRecorder recorder;
      recorder.Watch(this->Interactor(X), { vtkCommand::RenderEvent });
      this->PointerIn(view).WheelForward({ { 3, 3 } });
      counts.push_back(recorder.Count(vtkCommand::RenderEvent));
    }
    return counts;
  };
  const Counts expected[4] = { { 2, 1, 1, 0 }, { 1, 2, 1, 0 }, { 1, 1, 2, 0 }, { 1, 1, 1, 1 } };
  for (zvtest::View current : zvtest::AllViews)
  {
    this->Widget->SetCurrentRender(this->Renderer(current));
    this->Widget->SetEnabled(1);
    EXPECT_EQ(countAnswers(), expected[current]) << current;
    this->Widget->SetEnabled(0);
    EXPECT_EQ(countAnswers(), (Counts{ 0, 0, 0, 0 })) << current;
  }
}

TEST_F(SeedWidget, AddingObserversByHandDoublesThemAll)
{
  this->Widget->SetEnabled(1);
  this->Widget->AddObservers();
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Interactor(X), { vtkCommand::RenderEvent });
  this->PointerIn(X).WheelForward({ { 3, 3 } });
  EXPECT_EQ(recorder.Count(vtkCommand::RenderEvent), 2);
  this->PointerIn(Z).WheelForward({ { 3, 3 } });
  EXPECT_EQ(recorder.Count(vtkCommand::RenderEvent), 6);
  this->Widget->SetEnabled(0);
  this->PointerIn(Z).WheelForward({ { 3, 3 } });
  EXPECT_EQ(recorder.Count(vtkCommand::RenderEvent), 7); // the one that disabling made
}

TEST_F(SeedWidget, ObservesTheNineEventsAtItsPriority)
{
  this->Widget->SetPriority(0.7f);
  this->Widget->SetEnabled(1);
  vtkCommand* command = this->Widget->EventCallbackCommand;
  for (zvtest::View view : { X, Y, Z })
  {
    for (unsigned long event : zvtest::MouseEvents)
    {
      EXPECT_TRUE(this->Interactor(view)->HasObserver(event, command)) << view << " " << event;
    }
    for (unsigned long event :
      { vtkCommand::KeyPressEvent, vtkCommand::TimerEvent, vtkCommand::LeftButtonDoubleClickEvent })
    {
      EXPECT_FALSE(this->Interactor(view)->HasObserver(event, command)) << view << " " << event;
    }
  }
  std::vector<std::string> order;
  zvtest::EventRecorder recorder;
  const auto note = [&order](const char* name)
  { return [&order, name](const zvtest::RecordedEvent&) { order.emplace_back(name); }; };
  recorder.Watch(this->Interactor(X), { vtkCommand::MouseWheelForwardEvent }, note("above"), 0.8f);
  recorder.Watch(this->Interactor(X), { vtkCommand::MouseWheelForwardEvent }, note("below"), 0.6f);
  recorder.Watch(this->Interactor(X), { vtkCommand::RenderEvent }, note("ours"));
  this->PointerIn(X).WheelForward({ { 3, 3 } });
  EXPECT_THAT(order, ElementsAre("above", "ours", "below"));
}

TEST_F(SeedWidget, WithoutViewsObserversAreAttachedNowhere)
{
  vtkNew<zvSeedWidget> fresh;
  fresh->AddObservers();
  this->ExpectNoMessage();
}

// ---- Traces

namespace
{
using Call = std::function<void(OpenSeeds*)>;
struct TraceRow
{
  const char* Name;
  Call Operation;
  std::vector<std::string> Signatures; // without the class
};

double Somewhere[3] = { 1, 2, 3 };
double Bounds[6] = { 0, 1, 0, 1, 0, 1 };

std::vector<TraceRow> MakeTraceRows()
{
  std::ostringstream* const nowhere = new std::ostringstream; // for the whole run
  static const std::unique_ptr<std::ostringstream> owner(nowhere);
  return {
    { "PrintSelf", [nowhere](OpenSeeds* w) { w->PrintSelf(*nowhere, vtkIndent()); },
      { "PrintSelf(ostream& os, vtkIndent indent)" } },
    { "PlaceWidget", [](OpenSeeds* w) { w->PlaceWidget(Bounds); },
      { "PlaceWidget(double bds[6])", "SizeHandles()" } },
    { "PlaceWidgetByNumbers", [](OpenSeeds* w) { w->PlaceWidget(0, 1, 0, 1, 0, 1); },
      { "PlaceWidget(double bds[6])", "SizeHandles()" } },
    { "PlaceWidgetProjected",
      [](OpenSeeds* w)
      {
        w->ProjectToPlane = 1;
        w->PlaceWidget(Bounds);
      },
      { "PlaceWidget(double bds[6])", "ProjectPointsToPlane()", "ProjectPointsToOrthoPlane()",
        "SizeHandles()" } },
    { "SizeHandles", [](OpenSeeds* w) { w->SizeHandles(); }, { "SizeHandles()" } },
    { "SetProjectionPosition", [](OpenSeeds* w) { w->SetProjectionPosition(1); },
      { "SetProjectionPosition(double position))" } },
    { "SetProjectionPositionProjected",
      [](OpenSeeds* w)
      {
        w->ProjectToPlane = 1;
        w->SetProjectionPosition(1);
      },
      { "SetProjectionPosition(double position))", "ProjectPointsToPlane()",
        "ProjectPointsToOrthoPlane()" } },
    { "SetPlaneSource", [](OpenSeeds* w) { w->SetPlaneSource(nullptr); },
      { "SetPlaneSource(vtkPlaneSource *plane)" } },
    { "SetRendererX", [](OpenSeeds* w) { w->SetRendererX(w->RendererX); },
      { "SetRendererX(vtkRenderer *render)" } },
    { "SetRendererY", [](OpenSeeds* w) { w->SetRendererY(w->RendererY); },
      { "SetRendererY(vtkRenderer *render)" } },
    { "SetRendererZ", [](OpenSeeds* w) { w->SetRendererZ(w->RendererZ); },
      { "SetRendererZ(vtkRenderer *render)" } },
    { "Set3DRender", [](OpenSeeds* w) { w->Set3DRender(w->Renderer3D); },
      { "Set3DRender(vtkRenderer *render)" } },
    { "SetCurrentRender", [](OpenSeeds* w) { w->SetCurrentRender(w->RendererX); },
      { "SetCurrentRender(vtkRenderer *render)" } },
    { "AddHandle", [](OpenSeeds* w) { w->AddHandle(Somewhere, 0); },
      { "AddHandle(double x[3])", "HighlightHandle(vtkProp *prop)" } },
    { "EraseHandle", [](OpenSeeds* w) { w->EraseHandle(); }, { "EraseHandle()" } },
    { "Clear", [](OpenSeeds* w) { w->Clear(); }, { "Initialize(void)" } },
    { "SetHandlePosition", [](OpenSeeds* w) { w->SetHandlePosition(0, 1, 2, 3); },
      { "SetHandlePosition(int handle, double x, double y, double z)" } },
    { "SetHandlePositionAsArray", [](OpenSeeds* w) { w->SetHandlePosition(0, Somewhere); },
      { "SetHandlePosition(int handle, double xyz[3])",
        "SetHandlePosition(int handle, double x, double y, double z)" } },
    { "SetHandlePositionProjected",
      [](OpenSeeds* w)
      {
        w->ProjectToPlane = 1;
        w->SetHandlePosition(0, 1, 2, 3);
      },
      { "SetHandlePosition(int handle, double x, double y, double z)", "ProjectPointsToPlane()",
        "ProjectPointsToOrthoPlane()" } },
    { "GetHandlePosition", [](OpenSeeds* w) { w->GetHandlePosition(0); },
      { "GetHandlePosition(int handle)" } },
    { "GetHandlePositionAsArray", [](OpenSeeds* w) { w->GetHandlePosition(0, Somewhere); },
      { "GetHandlePosition(int handle, double xyz[3])", "GetHandlePosition(int handle)" } },
    { "HighlightHandleByProp", [](OpenSeeds* w) { w->HighlightHandle(nullptr); },
      { "HighlightHandle(vtkProp *prop)" } },
    { "HighlightHandleByIndex", [](OpenSeeds* w) { w->HighlightHandle(1); },
      { "HighlightHandle(int index)" } },
    { "SetCurrentActorIndex", [](OpenSeeds* w) { w->SetCurrentActorIndex(0); },
      { "SetCurrentActorIndex(int index)", "HighlightHandle(int index)" } },
    { "SetCurrentActorIndexMinusOne", [](OpenSeeds* w) { w->SetCurrentActorIndex(-1); },
      { "SetCurrentActorIndex(int index)" } },
    { "IsClicked", [](OpenSeeds* w) { w->IsClicked(); }, { "IsClicked()" } },
    { "GetState", [](OpenSeeds* w) { w->GetState(); }, { "GetState()" } },
    { "SetState", [](OpenSeeds* w) { w->SetState(0); }, { "SetState(int state)" } },
    { "MovePoint", [](OpenSeeds* w) { w->MovePoint(Somewhere, Somewhere); },
      { "MovePoint(double *p1, double *p2)" } },
    { "ProjectPointsToPlane", [](OpenSeeds* w) { w->ProjectPointsToPlane(); },
      { "ProjectPointsToPlane()", "ProjectPointsToOrthoPlane()" } },
    { "AddObservers", [](OpenSeeds* w) { w->AddObservers(); }, { "AddObservers(void)" } },
    { "CreateDefaultProperties", [](OpenSeeds* w) { w->CreateDefaultProperties(); },
      { "CreateDefaultProperties()" } },
    { "OnLeftButtonDown", [](OpenSeeds* w) { w->OnLeftButtonDown(); }, { "OnLeftButtonDown()" } },
    { "OnLeftButtonUp", [](OpenSeeds* w) { w->OnLeftButtonUp(); }, { "OnLeftButtonUp()" } },
    { "OnMiddleButtonDown", [](OpenSeeds* w) { w->OnMiddleButtonDown(); },
      { "OnMiddleButtonDown()" } },
    { "OnMiddleButtonUp", [](OpenSeeds* w) { w->OnMiddleButtonUp(); }, { "OnMiddleButtonUp()" } },
    { "OnRightButtonDown", [](OpenSeeds* w) { w->OnRightButtonDown(); },
      { "OnRightButtonDown()" } },
    { "OnRightButtonUp", [](OpenSeeds* w) { w->OnRightButtonUp(); },
      { "OnRightButtonUp()", "SizeHandles()" } },
    { "OnMouseMove", [](OpenSeeds* w) { w->OnMouseMove(); }, {} },
    { "OnMouseWheelForward", [](OpenSeeds* w) { w->OnMouseWheelForward(); },
      { "OnMouseWheelForward()", "SizeHandles()" } },
    { "OnMouseWheelBackward", [](OpenSeeds* w) { w->OnMouseWheelBackward(); },
      { "OnMouseWheelBackward()", "SizeHandles()" } },
    { "Accessors",
      [](OpenSeeds* w)
      {
        w->SetProjectToPlane(1);
        w->ProjectToPlaneOn();
        w->ProjectToPlaneOff();
        w->GetProjectToPlane();
        w->SetProjectionNormal(1);
        w->GetProjectionNormal();
        w->GetProjectionNormalMinValue();
        w->GetProjectionNormalMaxValue();
        w->GetProjectionPosition();
        w->SetHandleProperty(w->GetHandleProperty());
        w->SetSelectedHandleProperty(w->GetSelectedHandleProperty());
      },
      {} },
  };
}

}

TEST_F(SeedWidget, EveryOperationTracesItsSignature)
{
  for (const TraceRow& row : MakeTraceRows())
  {
    SCOPED_TRACE(row.Name);
    this->Widget = vtkSmartPointer<OpenSeeds>::Take(OpenSeeds::New());
    this->SetViews(this->Widget.GetPointer());
    this->AddThree();
    this->ExpectNoMessage(); // quiet by default
    this->Widget->DebugMode = true;
    row.Operation(this->Widget);
    this->Widget->DebugMode = false;
    std::vector<std::string> signatures;
    for (const std::string& signature : row.Signatures)
    {
      signatures.push_back("zvSeedWidget::" + signature);
    }
    this->ExpectTraces("zvSeedWidget", this->Widget, signatures);
  }
}

TEST_F(SeedWidget, TracesTheEnablingWithItsReturnType)
{
  this->Widget->DebugMode = true;
  this->Widget->SetEnabled(0); // as it is: nothing follows
  this->ExpectTrace("zvSeedWidget", this->Widget, "void zvSeedWidget::SetEnabled(int enabling)");
  this->Widget->DebugMode = false;
}

TEST_F(SeedWidget, EveryEventCallsItsHandlerAndNoOtherDoes)
{
  const std::pair<unsigned long, const char*> rows[] = {
    { vtkCommand::LeftButtonPressEvent, "OnLeftButtonDown()" },
    { vtkCommand::LeftButtonReleaseEvent, "OnLeftButtonUp()" },
    { vtkCommand::MiddleButtonPressEvent, "OnMiddleButtonDown()" },
    { vtkCommand::MiddleButtonReleaseEvent, "OnMiddleButtonUp()" },
    { vtkCommand::RightButtonPressEvent, "OnRightButtonDown()" },
    { vtkCommand::RightButtonReleaseEvent, "OnRightButtonUp()" },
    { vtkCommand::MouseWheelForwardEvent, "OnMouseWheelForward()" },
    { vtkCommand::MouseWheelBackwardEvent, "OnMouseWheelBackward()" },
  };
  this->Widget->DebugMode = true;
  for (const auto& row : rows)
  {
    zvSeedWidget::ProcessEvents(nullptr, row.first, this->Widget.GetPointer(), nullptr);
    const std::string output = this->TakeOutput();
    EXPECT_NE(output.find(std::string("\"zvSeedWidget::") + row.second), std::string::npos)
      << output;
  }
  for (unsigned long event : { vtkCommand::KeyPressEvent, vtkCommand::CharEvent,
         vtkCommand::EnterEvent, vtkCommand::LeftButtonDoubleClickEvent })
  {
    zvSeedWidget::ProcessEvents(nullptr, event, this->Widget.GetPointer(), nullptr);
    EXPECT_EQ(this->TakeOutput(), "");
  }
  this->Widget->DebugMode = false;
}

// ---- Life

TEST_F(SeedWidget, DeletedItTakesItsSeedsAlong)
{
  for (bool isEnabled : { true, false })
  {
    this->Widget = vtkSmartPointer<OpenSeeds>::Take(OpenSeeds::New());
    this->SetViews(this->Widget.GetPointer());
    this->AddThree();
    this->Widget->SetEnabled(isEnabled ? 1 : 0);
    vtkSmartPointer<vtkCommand> command = this->Widget->EventCallbackCommand;
    this->Widget = nullptr;
    EXPECT_THAT(this->CountProps(), Each(0));
    for (zvtest::View view : zvtest::AllViews)
    {
      EXPECT_FALSE(this->Interactor(view)->HasObserver(vtkCommand::MouseMoveEvent, command));
    }
  }
}

TEST_F(SeedWidget, ReleasesAllItsPartsWhenItIsDeleted)
{
  this->AddThree();
  vtkSmartPointer<vtkActor> actor = this->SliceActor(0);
  vtkSmartPointer<vtkActor> actor3D = this->Actor3D(0);
  vtkSmartPointer<vtkProperty> property = this->Widget->GetHandleProperty();
  vtkSmartPointer<vtkCellPicker> picker = this->Widget->HandlePicker.GetPointer();
  this->Widget = nullptr;
  EXPECT_EQ(actor->GetReferenceCount(), 2); // the picker's list, held here
  EXPECT_EQ(actor3D->GetReferenceCount(), 1);
  EXPECT_EQ(picker->GetReferenceCount(), 1);
  picker = nullptr;
  EXPECT_EQ(actor->GetReferenceCount(), 1);
}

TEST_F(SeedWidget, OutlivesItsViews)
{
  this->Widget->SetEnabled(1);
  this->AddThree();
  for (auto& scene : this->Scenes)
  {
    scene.reset();
  }
  EXPECT_EQ(this->Widget->GetInteractor(), nullptr);
  EXPECT_EQ(this->Widget->GetCurrentRenderer(), nullptr);
  EXPECT_EQ(this->Widget->RendererX, nullptr);
  EXPECT_EQ(this->Widget->Interactor3D, nullptr);
  this->Widget->SetCurrentActorIndex(0);
  this->Widget->OnLeftButtonDown();
  EXPECT_EQ(this->Widget->GetState(), zvSeedWidget::Outside);
  this->Widget->SetState(zvSeedWidget::Moving);
  this->Widget->OnMouseMove();
  this->Widget->OnLeftButtonUp();
  EXPECT_EQ(this->Widget->GetState(), zvSeedWidget::Start);
  this->Widget->OnMouseWheelForward();
  EXPECT_EQ(this->Widget->IsClicked(), 0);
  this->Widget->EraseHandle();
  this->Widget->Clear();
  this->Widget->SetEnabled(0);
  this->Widget = nullptr;
  this->ExpectNoMessage();
}

TEST_F(SeedWidget, MayBeDeletedInAnyRenderThatItMakes)
{
  for (zvtest::View view : zvtest::AllViews)
  {
    for (const Call& call : { Call([](OpenSeeds* w) { w->SetEnabled(0); }),
           Call([](OpenSeeds* w) { w->EraseHandle(); }), Call([](OpenSeeds* w) { w->Clear(); }),
           Call([](OpenSeeds* w) { w->SetCurrentActorIndex(0); }),
           Call([](OpenSeeds* w) { w->AddHandle(Somewhere, 0); }) })
    {
      this->Widget = vtkSmartPointer<OpenSeeds>::Take(OpenSeeds::New());
      this->SetViews(this->Widget.GetPointer());
      this->AddThree();
      this->Widget->SetEnabled(1);
      zvtest::EventRecorder recorder;
      recorder.Watch(this->Interactor(view), { vtkCommand::RenderEvent },
        [this](const zvtest::RecordedEvent&) { this->Widget = nullptr; });
      call(this->Widget);
      EXPECT_EQ(this->Widget, nullptr);
      EXPECT_THAT(this->CountProps(), Each(0));
    }
  }
}
