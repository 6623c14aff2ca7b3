// What the markers in four views promise alike.
#include "zv3DRulerFixture.h"
#include "zvSeedFixture.h"

#include "vtkNew.h"
#include "vtkPropCollection.h"

#include <gmock/gmock.h>

#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zvtest::ThreeD;
using zvtest::X;
using zvtest::Y;
using zvtest::Z;

namespace
{
template <typename Fixture>
class Markers : public Fixture
{
protected:
  static std::string Name() { return Fixture::ClassName; }

  std::vector<int> CountReferences()
  {
    std::vector<int> counts;
    for (zvtest::View view : zvtest::AllViews)
    {
      counts.push_back(this->Renderer(view)->GetReferenceCount());
      counts.push_back(this->Interactor(view)->GetReferenceCount());
    }
    return counts;
  }

  /// How often each view's wheel is answered; it sets no abort flag.
  std::vector<int> CountAnswers()
  {
    std::vector<int> counts;
    for (zvtest::View view : zvtest::AllViews)
    {
      zvtest::EventRecorder recorder;
      recorder.Watch(this->Interactor(X), { vtkCommand::RenderEvent });
      this->PointerIn(view).WheelForward({ { 3, 3 } });
      counts.push_back(recorder.Count(vtkCommand::RenderEvent));
    }
    return counts;
  }

  void ExpectSelected(vtkProperty* property, const zvtest::World& color)
  {
    for (int i = 0; i < 3; ++i)
    {
      EXPECT_EQ(property->GetColor()[i], color[i]) << i;
    }
  }

  std::string PrintAfterParent()
  {
    std::ostringstream parents;
    this->Widget->vtk3DWidget::PrintSelf(parents, vtkIndent(2));
    std::ostringstream own;
    this->Widget->PrintSelf(own, vtkIndent(2));
    EXPECT_EQ(own.str().compare(0, parents.str().size(), parents.str()), 0);
    return own.str().substr(parents.str().size());
  }
};

// A part of a view that is taken away, as the warning calls it.
struct MissingPart
{
  const char* Name;
  zvtest::View View;
  bool IsRenderer;
};
const MissingPart MissingParts[] = { { "RendererX", X, true }, { "RendererY", Y, true },
  { "RendererZ", Z, true }, { "Renderer3D", ThreeD, true }, { "InteractorX", X, false },
  { "InteractorY", Y, false }, { "InteractorZ", Z, false }, { "Interactor3D", ThreeD, false } };

void Drop(zvtest::Scene& scene, const MissingPart& part)
{
  part.IsRenderer ? scene.DropRenderers() : scene.DropInteractor();
}

using Fixtures = ::testing::Types<zvtest::Seeds, zvtest::Ruler3D>;
TYPED_TEST_SUITE(Markers, Fixtures, );
}

// ---- What they are

TYPED_TEST(Markers, ReportTheirOwnNameAndTheirAncestors)
{
  auto widget = vtkSmartPointer<typename TestFixture::Class>::New();
  EXPECT_EQ(widget->GetClassName(), this->Name());
  for (const char* name : { "vtk3DWidget", "vtkInteractorObserver", "vtkObject" })
  {
    EXPECT_EQ(widget->IsA(name), 1) << name;
  }
  EXPECT_EQ(widget->IsA(this->Name().c_str()), 1);
  EXPECT_EQ(widget->IsA("zvWidgets"), 0);
  auto other = vtkSmartPointer<typename TestFixture::Class>::Take(widget->NewInstance());
  EXPECT_EQ(other->GetClassName(), this->Name());
}

TYPED_TEST(Markers, TheirInstantiatorsMakeOneWithOneReference)
{
  auto made = vtkSmartPointer<vtkObject>::Take(TestFixture::Instantiate());
  EXPECT_EQ(made->GetClassName(), this->Name());
  EXPECT_EQ(made->GetReferenceCount(), 1);
}

TYPED_TEST(Markers, WriteOneRevision)
{
  std::ostringstream revision;
  this->Widget->CollectRevisions(revision);
  EXPECT_EQ(revision.str(), this->Name() + " $Revision: 1.2 $\n");
}

TYPED_TEST(Markers, PrintTheParentAndFiveLines)
{
  std::ostringstream expected;
  expected << "  Handle Property: " << this->Widget->GetHandleProperty() << "\n"
           << "  Selected Handle Property: " << this->Widget->GetSelectedHandleProperty() << "\n"
           << "  Project To Plane: Off\n  Projection Normal: 0\n  Projection Position: 0\n";
  EXPECT_EQ(this->PrintAfterParent(), expected.str());
  this->Widget->SetHandleProperty(nullptr);
  this->Widget->SetSelectedHandleProperty(nullptr);
  this->Widget->ProjectToPlaneOn();
  this->Widget->SetProjectionPosition(2.5);
  EXPECT_EQ(this->PrintAfterParent(),
    "  Handle Property: (none)\n  Selected Handle Property: (none)\n"
    "  Project To Plane: On\n  Projection Normal: 0\n  Projection Position: 2.5\n");
}

TYPED_TEST(Markers, StatesHaveFixedNumbersAndAreReadAndWrittenPlainly)
{
  EXPECT_EQ(TestFixture::Class::Start, 0);
  EXPECT_EQ(TestFixture::Class::Moving, 1);
  EXPECT_EQ(TestFixture::Class::Outside, 4);
  EXPECT_EQ(this->Widget->GetState(), 0);
  for (int state : { 1, 4, 7, -3, 0 })
  {
    this->Widget->SetState(state);
    EXPECT_EQ(this->Widget->GetState(), state);
  }
}

// ---- Properties

TYPED_TEST(Markers, ArePaintedRedAndTheSelectedOneCyan)
{
  this->ExpectSelected(this->Widget->GetHandleProperty(), { { 1, 0, 0 } });
  this->ExpectSelected(this->Widget->GetSelectedHandleProperty(), { { 0, 1, 1 } });
}

TYPED_TEST(Markers, DefaultPropertiesAreMadeOnlyWhereOneIsMissing)
{
  vtkSmartPointer<vtkProperty> kept = this->Widget->GetHandleProperty();
  this->Widget->SetSelectedHandleProperty(nullptr);
  this->Widget->CreateDefaultProperties();
  EXPECT_EQ(this->Widget->GetHandleProperty(), kept);
  ASSERT_NE(this->Widget->GetSelectedHandleProperty(), nullptr);
  this->ExpectSelected(this->Widget->GetSelectedHandleProperty(), { { 0, 1, 1 } });
  this->Widget->SetHandleProperty(nullptr);
  this->Widget->CreateDefaultProperties();
  this->ExpectSelected(this->Widget->GetHandleProperty(), { { 1, 0, 0 } });
}

TYPED_TEST(Markers, HoldTheirPropertiesAndTellAChangeOnce)
{
  vtkNew<vtkProperty> property;
  const int references = property->GetReferenceCount();
  vtkMTimeType before = this->Widget->GetMTime();
  this->Widget->SetHandleProperty(property);
  EXPECT_GT(this->Widget->GetMTime(), before);
  before = this->Widget->GetMTime();
  this->Widget->SetSelectedHandleProperty(property);
  EXPECT_GT(this->Widget->GetMTime(), before);
  EXPECT_EQ(property->GetReferenceCount(), references + 2);
  before = this->Widget->GetMTime();
  this->Widget->SetHandleProperty(property);
  this->Widget->SetSelectedHandleProperty(property);
  EXPECT_EQ(this->Widget->GetMTime(), before);
  this->Widget->SetHandleProperty(nullptr);
  this->Widget->SetSelectedHandleProperty(nullptr);
  EXPECT_EQ(property->GetReferenceCount(), references);
}

// ---- Projection, which does nothing

TYPED_TEST(Markers, TheProjectionNormalIsAlwaysZero)
{
  const vtkMTimeType before = this->Widget->GetMTime();
  for (int normal : { 2, -1, 0, 1 })
  {
    this->Widget->SetProjectionNormal(normal);
    EXPECT_EQ(this->Widget->GetProjectionNormal(), 0);
  }
  EXPECT_EQ(this->Widget->GetMTime(), before);
  EXPECT_EQ(this->Widget->GetProjectionNormalMinValue(), 0);
  EXPECT_EQ(this->Widget->GetProjectionNormalMaxValue(), 0);
  this->Widget->ProjectionNormal = 2;
  this->Widget->SetProjectionNormal(2);
  EXPECT_EQ(this->Widget->GetProjectionNormal(), 0);
  EXPECT_GT(this->Widget->GetMTime(), before);
}

TYPED_TEST(Markers, TheProjectionSwitchTellsItsChanges)
{
  const vtkMTimeType before = this->Widget->GetMTime();
  this->Widget->ProjectToPlaneOff();
  EXPECT_EQ(this->Widget->GetMTime(), before);
  this->Widget->ProjectToPlaneOn();
  EXPECT_EQ(this->Widget->GetProjectToPlane(), 1);
  const vtkMTimeType on = this->Widget->GetMTime();
  EXPECT_GT(on, before);
  this->Widget->SetProjectToPlane(1);
  EXPECT_EQ(this->Widget->GetMTime(), on);
  this->Widget->SetProjectToPlane(5);
  EXPECT_EQ(this->Widget->GetProjectToPlane(), 5);
  this->Widget->ProjectToPlaneOff();
  EXPECT_EQ(this->Widget->GetProjectToPlane(), 0);
}

TYPED_TEST(Markers, PlaneAndPositionOfTheProjectionAreOnlyStored)
{
  this->AddThree();
  const zvtest::World position = this->PositionOf(0);
  vtkNew<vtkPlaneSource> plane;
  const int references = plane->GetReferenceCount();
  const vtkMTimeType before = this->Widget->GetMTime();
  this->Widget->SetPlaneSource(plane);
  this->Widget->SetProjectionPosition(3.5);
  this->Widget->ProjectPointsToPlane();
  this->Widget->ProjectPointsToOrthoPlane();
  EXPECT_EQ(this->Widget->PlaneSource, plane.Get());
  EXPECT_EQ(plane->GetReferenceCount(), references);
  EXPECT_EQ(this->Widget->GetProjectionPosition(), 3.5);
  EXPECT_EQ(this->Widget->GetMTime(), before);
  EXPECT_EQ(this->PositionOf(0), position);
}

// ---- Views

TYPED_TEST(Markers, StoreTheViewsAndTheirInteractorsWithoutReferences)
{
  auto fresh = vtkSmartPointer<typename TestFixture::Open>::Take(TestFixture::Open::New());
  const std::vector<int> before = this->CountReferences();
  const vtkMTimeType time = fresh->GetMTime();
  this->SetViews(fresh.GetPointer(), X);
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
  EXPECT_EQ(this->CountReferences(), before);
}

TYPED_TEST(Markers, RefuseAViewThatIsNoneOrInNoWindow)
{
  vtkNew<vtkRenderer> alone;
  for (vtkRenderer* none : { static_cast<vtkRenderer*>(nullptr), alone.Get() })
  {
    const auto expect = [this](const char* name)
    {
      this->ExpectGenericWarning(
        this->Name(), std::string("set a renderer that is in a render window for ") + name + "...");
    };
    this->Widget->SetRendererX(none);
    expect("RendererX");
    this->Widget->SetRendererY(none);
    expect("RendererY");
    this->Widget->SetRendererZ(none);
    expect("RendererZ");
    this->Set3DView(this->Widget.GetPointer(), none, 0);
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

TYPED_TEST(Markers, AreNotInACurrentViewThatIsNoneOfTheFour)
{
  zvtest::Scene elsewhere;
  this->Widget->SetCurrentRender(elsewhere.Renderer());
  this->AddThree();
  EXPECT_EQ(elsewhere.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
  for (int count : this->CountProps())
  {
    EXPECT_GT(count, 2);
  }
}

TYPED_TEST(Markers, AddAndEnableNothingWithoutAPartOfAView)
{
  for (const MissingPart& part : MissingParts)
  {
    SCOPED_TRACE(part.Name);
    this->MakeViews();
    this->MakeWidget();
    // A slice view that is taken away must not be the current one, too.
    this->Widget->SetCurrentRender(this->Renderer(part.View == Z ? X : Z));
    this->AddThree();
    const auto counts = this->CountProps();
    vtkSmartPointer<vtkRenderer> kept = part.IsRenderer ? nullptr : this->Renderer(part.View);
    Drop(this->In(part.View), part);
    this->Widget->SetState(TestFixture::Class::Outside);
    this->Add({ { 4, 5, 6 } });
    this->ExpectGenericWarning(
      this->Name(), std::string("set ") + part.Name + " before adding a " + this->Item + "...");
    EXPECT_EQ(this->Widget->GetState(), TestFixture::Class::Outside);
    EXPECT_EQ(this->Widget->HandleActors->GetNumberOfItems(), 3);
    EXPECT_EQ(this->Renderer(part.View == Y ? X : Y)->GetViewProps()->GetNumberOfItems(),
      counts[part.View == Y ? X : Y]);
    this->Widget->SetEnabled(1);
    this->ExpectGenericWarning(
      this->Name(), std::string("set ") + part.Name + " before enabling the widget...");
    EXPECT_EQ(this->Widget->GetEnabled(), 0);
  }
}

TYPED_TEST(Markers, ServeTheOtherViewsWhenAPartOfOneIsGone)
{
  for (const MissingPart& part : MissingParts)
  {
    SCOPED_TRACE(part.Name);
    this->MakeViews();
    this->MakeWidget();
    this->Widget->SetCurrentRender(this->Renderer(part.View == Z ? X : Z));
    this->AddThree();
    this->Widget->SetEnabled(1);
    Drop(this->In(part.View), part);
    this->Widget->SetCurrentActorIndex(1);
    double p1[3] = { 0, 0, 0 };
    double p2[3] = { 1, 1, 1 };
    this->Widget->MovePoint(p1, p2);
    this->Widget->SizeHandles();
    this->Widget->OnLeftButtonDown();
    this->Widget->OnMiddleButtonDown();
    this->Widget->OnMouseMove();
    this->Widget->OnLeftButtonUp();
    this->Widget->OnMiddleButtonUp();
    this->Widget->OnRightButtonUp();
    this->Widget->OnMouseWheelForward();
    this->Widget->OnMouseWheelBackward();
    this->Widget->IsClicked();
    this->Widget->SetEnabled(0);
    EXPECT_EQ(this->Widget->GetEnabled(), 0);
    this->Widget->Clear();
    EXPECT_EQ(this->Widget->HandleActors->GetNumberOfItems(), 0);
    this->ExpectNoMessage();
  }
}

// ---- Observers

TYPED_TEST(Markers, ObserveTheSliceViewsAndTheCurrentOneOnceMoreByDesign)
{
  const std::vector<int> expected[4] = { { 2, 1, 1, 0 }, { 1, 2, 1, 0 }, { 1, 1, 2, 0 },
    { 1, 1, 1, 1 } };
  for (zvtest::View current : zvtest::AllViews)
  {
    this->Widget->SetCurrentRender(this->Renderer(current));
    this->Widget->SetEnabled(1);
    EXPECT_EQ(this->CountAnswers(), expected[current]) << current;
    this->Widget->SetEnabled(0);
    EXPECT_THAT(this->CountAnswers(), Each(0)) << current;
  }
}

TYPED_TEST(Markers, AddingObserversByHandDoublesThemAll)
{
  this->Widget->SetEnabled(1);
  this->Widget->AddObservers();
  EXPECT_THAT(this->CountAnswers(), ElementsAre(2, 2, 4, 0));
  this->Widget->SetEnabled(0);
  EXPECT_THAT(this->CountAnswers(), Each(0));
}

TYPED_TEST(Markers, ObserveTheNineEventsAtTheirPriority)
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

TYPED_TEST(Markers, ObserveNothingWithoutViews)
{
  auto fresh = vtkSmartPointer<typename TestFixture::Class>::New();
  fresh->AddObservers();
  this->ExpectNoMessage();
}

TYPED_TEST(Markers, ChangingTheCurrentViewMovesNoObserver)
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

TYPED_TEST(Markers, EveryEventCallsItsHandlerAndNoOtherDoes)
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
    TestFixture::Class::ProcessEvents(nullptr, row.first, this->Widget.GetPointer(), nullptr);
    const std::string output = this->TakeOutput();
    EXPECT_NE(output.find("\"" + this->Name() + "::" + row.second), std::string::npos) << output;
  }
  for (unsigned long event : { vtkCommand::MouseMoveEvent, vtkCommand::KeyPressEvent,
         vtkCommand::CharEvent, vtkCommand::EnterEvent, vtkCommand::LeftButtonDoubleClickEvent })
  {
    TestFixture::Class::ProcessEvents(nullptr, event, this->Widget.GetPointer(), nullptr);
    EXPECT_EQ(this->TakeOutput(), "") << event;
  }
  this->Widget->DebugMode = false;
}

TYPED_TEST(Markers, TraceTheEnablingWithItsReturnType)
{
  this->Widget->DebugMode = true;
  this->Widget->SetEnabled(0); // as it is: nothing follows
  this->ExpectTrace(
    this->Name(), this->Widget, "void " + this->Name() + "::SetEnabled(int enabling)");
  this->Widget->DebugMode = false;
}

// ---- Positions

TYPED_TEST(Markers, APositionOfANegativeIndexIsAnError)
{
  this->AddThree();
  const zvtest::World before = this->PositionOf(0);
  double xyz[3] = { 7, 7, 7 };
  const auto expect = [this]()
  {
    this->ExpectVtkError(
      this->Name(), this->Name(), this->Widget, this->Name() + ": handle index out of range.");
  };
  this->Widget->SetHandlePosition(-1, 1, 2, 3);
  expect();
  this->Widget->SetHandlePosition(-5, xyz);
  expect();
  this->Widget->GetHandlePosition(-1, xyz);
  expect();
  EXPECT_THAT(xyz, ElementsAre(7, 7, 7));
  EXPECT_EQ(this->Widget->GetHandlePosition(-1), nullptr);
  expect();
  EXPECT_EQ(this->PositionOf(0), before);
}

TYPED_TEST(Markers, APositionOfAnIndexThatIsTooLargeIsAWarning)
{
  this->AddThree();
  double xyz[3] = { 7, 7, 7 };
  const auto expect = [this](const char* index)
  {
    this->ExpectGenericWarning(
      this->Name(), std::string("there is no ") + this->Item + " of index " + index + "...");
  };
  this->Widget->SetHandlePosition(3, 1, 2, 3);
  expect("3");
  this->Widget->SetHandlePosition(99, xyz);
  expect("99");
  this->Widget->GetHandlePosition(3, xyz);
  expect("3");
  EXPECT_THAT(xyz, ElementsAre(7, 7, 7));
  EXPECT_EQ(this->Widget->GetHandlePosition(3), nullptr);
  expect("3");
}

TYPED_TEST(Markers, AddingNowhereOnlySaysSo)
{
  this->Widget->SetState(TestFixture::Class::Outside);
  this->Widget->AddHandle(nullptr, 0);
  this->ExpectGenericWarning(
    this->Name(), std::string("give the ") + this->Item + " a position...");
  EXPECT_EQ(this->Widget->HandleActors->GetNumberOfItems(), 0);
  EXPECT_EQ(this->Widget->GetState(), TestFixture::Class::Outside);
}

TYPED_TEST(Markers, WithoutAnArrayNothingChanges)
{
  this->AddThree();
  const zvtest::World before = this->PositionOf(2);
  const std::string item = this->Item;
  double xyz[3] = { 1, 1, 1 };
  const auto expect = [this, &before](const std::string& message)
  {
    this->ExpectGenericWarning(this->Name(), message);
    EXPECT_EQ(this->PositionOf(2), before);
  };
  this->Widget->MovePoint(nullptr, xyz);
  expect("give both ends of the motion before moving a " + item + "...");
  this->Widget->MovePoint(xyz, nullptr);
  expect("give both ends of the motion before moving a " + item + "...");
  this->Widget->SetHandlePosition(2, nullptr);
  expect("give the " + item + " a position...");
  this->Widget->GetHandlePosition(2, nullptr);
  expect("give room for the position of the " + item + "...");
  this->Widget->PlaceWidget(nullptr);
  expect("give bounds to place the " + item + "s in...");
}

TYPED_TEST(Markers, MovingWithoutAnImageOnlySaysSo)
{
  this->AddThree();
  const zvtest::World before = this->PositionOf(2);
  double p1[3] = { 0, 0, 0 };
  double p2[3] = { 1, 1, 1 };
  vtkNew<vtkImageData> withoutVoxels;
  for (vtkImageData* image : { static_cast<vtkImageData*>(nullptr), withoutVoxels.Get() })
  {
    zvInstanceManager::Instance()->SetCurrentOutput(image);
    this->Widget->MovePoint(p1, p2);
    this->ExpectGenericWarning(
      this->Name(), std::string("set the current image before moving a ") + this->Item + "...");
    EXPECT_EQ(this->PositionOf(2), before);
  }
}

// ---- Life

TYPED_TEST(Markers, DeletedTheyLeaveNothingBehind)
{
  for (bool isEnabled : { true, false })
  {
    this->MakeWidget();
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

TYPED_TEST(Markers, DeletedTheyAreTakenOutOfViewsThatWereLeftToo)
{
  zvtest::Scene other;
  this->AddThree();
  this->Widget->SetEnabled(1);
  this->Widget->SetRendererX(other.Renderer());
  this->AddThree();
  EXPECT_GT(this->CountProps()[X], 2);
  EXPECT_GT(other.Renderer()->GetViewProps()->GetNumberOfItems(), 2);
  this->Widget = nullptr;
  EXPECT_THAT(this->CountProps(), Each(0));
  EXPECT_EQ(other.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
}

TYPED_TEST(Markers, TraceTheirEnd)
{
  this->Widget->DebugMode = true;
  const void* const address = this->Widget.GetPointer();
  this->Widget = nullptr;
  this->ExpectTraces(this->Name(), address,
    { this->Name() + "::~" + this->Name() + "()",
      "void " + this->Name() + "::SetEnabled(int enabling)" });
}

TYPED_TEST(Markers, OutliveTheirViews)
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
  this->Widget->OnLeftButtonDown();
  EXPECT_EQ(this->Widget->GetState(), TestFixture::Class::Outside);
  this->Widget->SetState(TestFixture::Class::Moving);
  this->Widget->OnMouseMove();
  this->Widget->OnLeftButtonUp();
  EXPECT_EQ(this->Widget->GetState(), TestFixture::Class::Start);
  this->Widget->OnMouseWheelForward();
  EXPECT_EQ(this->Widget->IsClicked(), 0);
  this->Widget->Clear();
  this->Widget->SetEnabled(0);
  this->Widget = nullptr;
  this->ExpectNoMessage();
}

TYPED_TEST(Markers, MayBeDeletedInAnyRenderThatTheyMake)
{
  using Marker = typename TestFixture::Open;
  double x[3] = { 1, 2, 3 };
  const std::vector<std::function<void(Marker*)>> calls = { [](Marker* widget)
    { widget->SetEnabled(0); },
    [](Marker* widget) { widget->Clear(); },
    [](Marker* widget) { widget->SetCurrentActorIndex(0); },
    [&x](Marker* widget) { widget->AddHandle(x, 0); },
    [](Marker* widget) { widget->OnMouseWheelForward(); } };
  for (zvtest::View view : zvtest::AllViews)
  {
    for (const auto& call : calls)
    {
      this->MakeWidget();
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

TYPED_TEST(Markers, MayBeDeletedByTheirOwnObservers)
{
  for (unsigned long event : { vtkCommand::EnableEvent, vtkCommand::StartInteractionEvent,
         vtkCommand::InteractionEvent, vtkCommand::EndInteractionEvent, vtkCommand::DisableEvent })
  {
    this->MakeWidget();
    this->AddThree();
    const zvtest::Display from = this->In(Z).At(this->PositionOf(1));
    zvtest::EventRecorder recorder;
    recorder.Watch(
      this->Widget, { event }, [this](const zvtest::RecordedEvent&) { this->Widget = nullptr; });
    this->Widget->SetEnabled(1);
    this->PointerIn(Z).Drag(zvtest::Left, from, { { 90, 120 } });
    if (this->Widget)
    {
      this->Widget->SetEnabled(0);
    }
    EXPECT_EQ(this->Widget, nullptr) << event;
    EXPECT_THAT(this->CountProps(), Each(0)) << event;
  }
}

TYPED_TEST(Markers, MayBeDeletedInAHandlerThatAHostCalls)
{
  using Marker = typename TestFixture::Open;
  const std::pair<unsigned long, std::function<void(Marker*)>> rows[] = {
    { vtkCommand::StartInteractionEvent, [](Marker* widget) { widget->OnLeftButtonDown(); } },
    { vtkCommand::InteractionEvent, [](Marker* widget) { widget->OnMouseMove(); } },
    { vtkCommand::EndInteractionEvent, [](Marker* widget) { widget->OnLeftButtonUp(); } },
  };
  for (const auto& row : rows)
  {
    this->MakeWidget();
    this->AddThree();
    this->Widget->SetEnabled(1);
    this->Widget->SetCurrentActorIndex(1);
    const zvtest::Display at = this->In(Z).At(this->PositionOf(1));
    this->Interactor(Z)->SetEventInformation(at[0], at[1]);
    this->Widget->SetState(TestFixture::Class::Moving);
    zvtest::EventRecorder recorder;
    recorder.Watch(this->Widget, { row.first },
      [this](const zvtest::RecordedEvent&) { this->Widget = nullptr; });
    row.second(this->Widget);
    EXPECT_EQ(this->Widget, nullptr) << vtkCommand::GetStringFromEventId(row.first);
    EXPECT_THAT(this->CountProps(), Each(0));
  }
}

TYPED_TEST(Markers, TheirObserversMayDisableThemInMidDrag)
{
  this->AddThree();
  this->Widget->SetEnabled(1);
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Widget, { vtkCommand::InteractionEvent },
    [this](const zvtest::RecordedEvent&) { this->Widget->SetEnabled(0); });
  this->PointerIn(Z).Drag(
    zvtest::Left, this->In(Z).At(this->PositionOf(1)), { { 90, 120 } }, zvtest::NoModifier, 3);
  EXPECT_EQ(recorder.Count(vtkCommand::InteractionEvent), 1);
  EXPECT_EQ(this->Widget->GetEnabled(), 0);
}

TYPED_TEST(Markers, TheirObserversMayTakeTheInteractorAway)
{
  this->AddThree();
  this->Widget->SetEnabled(1);
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Widget, { vtkCommand::StartInteractionEvent },
    [this](const zvtest::RecordedEvent&) { this->Widget->SetInteractor(nullptr); });
  this->PointerIn(Z).Drag(zvtest::Left, this->In(Z).At(this->PositionOf(1)), { { 90, 120 } });
  EXPECT_EQ(recorder.Count(vtkCommand::StartInteractionEvent), 1);
  this->Widget->OnMouseMove();
  this->Widget->OnLeftButtonUp();
  EXPECT_EQ(this->Widget->GetState(), TestFixture::Class::Start);
}

TYPED_TEST(Markers, TheCurrentViewMayDieInMidDrag)
{
  this->AddThree();
  this->Widget->SetEnabled(1);
  zvtest::Mouse mouse = this->PointerIn(X);
  this->PointerIn(Z).Press(zvtest::Left, this->In(Z).At(this->PositionOf(1)));
  this->Scenes[Z].reset();
  mouse.MoveTo({ { 90, 120 } });
  mouse.Release(zvtest::Left);
  EXPECT_EQ(this->Widget->GetState(), TestFixture::Class::Start);
  this->ExpectNoMessage();
}
