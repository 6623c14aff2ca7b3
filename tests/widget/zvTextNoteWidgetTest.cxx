#include "zvTextNoteWidget.h"

#include "zvEvents.h"
#include "zvTestKit.h"

#include "vtkCallbackCommand.h"
#include "vtkCamera.h"
#include "vtkFollower.h"
#include "vtkMapper.h"
#include "vtkNew.h"
#include "vtkObjectFactory.h"
#include "vtkPicker.h"
#include "vtkPropCollection.h"
#include "vtkProperty.h"
#include "vtkVectorText.h"
#include "vtkVersion.h"
#include "vtkWeakPointer.h"

#include <gmock/gmock.h>

#include <csignal>
#include <functional>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zvtest::World;

namespace
{
class OpenNote : public zvTextNoteWidget
{
public:
  static OpenNote* New() { return new OpenNote; }

  using zvTextNoteWidget::DebugMode;
  using zvTextNoteWidget::EventCallbackCommand;
  using zvTextNoteWidget::LastPickPosition;
  using zvTextNoteWidget::Plane;
  using zvTextNoteWidget::State;
  using zvTextNoteWidget::TextActor;
  using zvTextNoteWidget::TextPicker;
  using zvTextNoteWidget::TextSource;
};

class ReplacedNote : public zvTextNoteWidget
{
public:
  static ReplacedNote* New() { return new ReplacedNote; }
  vtkTypeMacro(ReplacedNote, zvTextNoteWidget)
};

class Factory : public vtkObjectFactory
{
public:
  static Factory* New() { return new Factory; }
  vtkTypeMacro(Factory, vtkObjectFactory)
  const char* GetVTKSourceVersion() override { return VTK_SOURCE_VERSION; }
  const char* GetDescription() override { return "replaces zvTextNoteWidget"; }

private:
  static vtkObject* Make() { return ReplacedNote::New(); }
  Factory()
  {
    this->RegisterOverride("zvTextNoteWidget", "ReplacedNote", "for the test", 1, &Factory::Make);
  }
};

const std::initializer_list<unsigned long> MouseEvents = { vtkCommand::MouseMoveEvent,
  vtkCommand::LeftButtonPressEvent, vtkCommand::LeftButtonReleaseEvent,
  vtkCommand::MiddleButtonPressEvent, vtkCommand::MiddleButtonReleaseEvent,
  vtkCommand::RightButtonPressEvent, vtkCommand::RightButtonReleaseEvent,
  vtkCommand::MouseWheelForwardEvent, vtkCommand::MouseWheelBackwardEvent };

class TextNoteWidget : public zvtest::QuietTest
{
protected:
  using Names = std::vector<std::string>;

  TextNoteWidget()
    : Pointer(Scene)
  {
    this->Scene.LookAlong(2);
    const double bounds[6] = { -10, 10, -10, 10, -10, 10 };
    this->Scene.ResetCamera(bounds);
    this->Scene.Render();
    this->MakeNote();
  }

  void MakeNote()
  {
    this->Note = vtkSmartPointer<OpenNote>::Take(OpenNote::New());
    this->Note->SetInteractor(this->Scene.Interactor());
  }

  /// A green note whose lower left corner is at the origin, in the way of a host.
  void Show(const char* text = "HHH")
  {
    double green[3] = { 0.0, 1.0, 0.0 };
    this->Note->SetText(text, green, 2.0);
    this->Note->SetPlane(2);
    this->Note->AddObservers();
    this->Note->SetEnabled(1);
  }

  /// A pixel on the upright of the first letter, and one far beside the note.
  zvtest::Display OnNote() { return this->OnNoteOf({ { 0, 0, 0 } }); }
  zvtest::Display OnNoteOf(const World& location)
  {
    return this->Pointer.At({ { location[0] + 0.65, location[1] + 1.0, location[2] } });
  }
  static zvtest::Display BesideNote() { return { { 60, 340 } }; }

  World Location()
  {
    World location;
    this->Note->TextActor->GetPosition(location.data());
    return location;
  }

  void ExpectLocation(const World& expected, double tolerance = 1e-6)
  {
    for (int axis = 0; axis < 3; ++axis)
    {
      EXPECT_NEAR(this->Location()[axis], expected[axis], tolerance) << axis;
    }
  }

  /// Where the pointer is in the world, at the depth that drags have.
  World Under(const zvtest::Display& at) { return this->Scene.WorldAt(at, { { 0.0, 0.0, 0.0 } }); }

  void Record(zvtest::EventRecorder& recorder)
  {
    recorder.Watch(this->Note, zvtest::WidgetEvents);
    recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
    recorder.Watch(this->Scene.Interactor(), MouseEvents);
  }

  bool IsShown() { return this->Scene.Renderer()->HasViewProp(this->Note->TextActor) != 0; }

  static constexpr zvtest::Color Green{ 0, 255, 0 };
  class zvtest::Scene Scene;
  zvtest::Mouse Pointer;
  vtkSmartPointer<OpenNote> Note;
};
}

// ---- What it is, and how it starts

TEST_F(TextNoteWidget, ReportsItsOwnNameAndItsAncestors)
{
  vtkNew<zvTextNoteWidget> widget;
  EXPECT_STREQ(widget->GetClassName(), "zvTextNoteWidget");
  for (const char* name :
    { "zvTextNoteWidget", "vtk3DWidget", "vtkInteractorObserver", "vtkObject" })
  {
    EXPECT_EQ(widget->IsA(name), 1) << name;
  }
  EXPECT_EQ(widget->IsA("zvWidgets"), 0);
  auto other = vtkSmartPointer<zvTextNoteWidget>::Take(widget->NewInstance());
  EXPECT_STREQ(other->GetClassName(), "zvTextNoteWidget");
}

TEST_F(TextNoteWidget, IsMadeByTheObjectFactoryWhenThatKnowsTheClass)
{
  vtkNew<Factory> factory;
  vtkObjectFactory::RegisterFactory(factory);
  vtkNew<zvTextNoteWidget> replaced;
  vtkObjectFactory::UnRegisterFactory(factory);
  vtkNew<zvTextNoteWidget> plain;
  EXPECT_STREQ(replaced->GetClassName(), "ReplacedNote");
  EXPECT_STREQ(plain->GetClassName(), "zvTextNoteWidget");
}

TEST_F(TextNoteWidget, TheInstantiatorMakesOneWithOneReference)
{
  auto made = vtkSmartPointer<vtkObject>::Take(vtkInstantiatorzvTextNoteWidgetNew());
  EXPECT_STREQ(made->GetClassName(), "zvTextNoteWidget");
  EXPECT_EQ(made->GetReferenceCount(), 1);
}

TEST_F(TextNoteWidget, WritesOneRevisionAndPrintsTheParentOnly)
{
  std::ostringstream revision;
  this->Note->CollectRevisions(revision);
  EXPECT_EQ(revision.str(), "zvTextNoteWidget $Revision: 1.2 $\n");
  std::ostringstream own;
  std::ostringstream parents;
  this->Note->PrintSelf(own, vtkIndent(2));
  this->Note->vtk3DWidget::PrintSelf(parents, vtkIndent(2));
  EXPECT_EQ(own.str(), parents.str());
}

TEST_F(TextNoteWidget, StartsWithTheseDefaults)
{
  EXPECT_EQ(this->Note->State, zvTextNoteWidget::Start);
  EXPECT_FALSE(this->Note->DebugMode);
  EXPECT_EQ(this->Note->Plane, 2);
  EXPECT_EQ(this->Note->GetEnabled(), 0);
  EXPECT_EQ(this->Note->GetText(), nullptr);
  EXPECT_EQ(this->Note->GetFontSize(), 1.0);
  EXPECT_EQ(this->Note->TextActor->GetMapper(), nullptr);
  EXPECT_THAT(this->Note->LastPickPosition, ElementsAre(0.0, 0.0, 0.0));
  EXPECT_EQ(this->Note->TextPicker->GetTolerance(), 0.001);
  EXPECT_EQ(this->Note->TextPicker->GetPickFromList(), 1);
  ASSERT_EQ(this->Note->TextPicker->GetPickList()->GetNumberOfItems(), 1);
  EXPECT_EQ(this->Note->TextPicker->GetPickList()->GetLastProp(), this->Note->TextActor);
}

TEST_F(TextNoteWidget, ItsNumbersOfStatesAreFixed)
{
  EXPECT_EQ(zvTextNoteWidget::Start, 0);
  EXPECT_EQ(zvTextNoteWidget::Moving, 1);
  EXPECT_EQ(zvTextNoteWidget::Outside, 4);
}

TEST_F(TextNoteWidget, PlacingAndOrientingMoveNothing)
{
  this->Show();
  this->Note->SetLocation(1.0, 2.0, 3.0);
  double bounds[6] = { 0, 9, 0, 9, 0, 9 };
  this->Note->PlaceWidget(bounds);
  this->Note->PlaceWidget(0, 9, 0, 9, 0, 9);
  this->Note->SetProp3D(this->Note->TextActor);
  this->Note->PlaceWidget();
  this->Note->SetOrientation();
  this->ExpectLocation({ { 1, 2, 3 } }, 0.0);
}

// ---- The text

TEST_F(TextNoteWidget, TheLastTextColourAndSizeCount)
{
  double red[3] = { 1.0, 0.0, 0.0 };
  double blue[3] = { 0.0, 0.25, 1.0 };
  this->Note->SetText("first", red, 1.0);
  vtkWeakPointer<vtkMapper> mapper = this->Note->TextActor->GetMapper();
  ASSERT_NE(mapper, nullptr);
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Note->SetText("second", blue, 2.5);
  EXPECT_EQ(mapper, nullptr); // another one is in its place
  EXPECT_NE(this->Note->TextActor->GetMapper(), nullptr);
  EXPECT_STREQ(this->Note->GetText(), "second");
  EXPECT_EQ(this->Note->GetFontSize(), 2.5);
  const double* color = this->Note->GetColor();
  EXPECT_EQ(color[0], 0.0);
  EXPECT_EQ(color[1], 0.25);
  EXPECT_EQ(color[2], 1.0);
  EXPECT_THAT(this->Note->TextActor->GetScale()[2], 2.5);
  EXPECT_THAT(recorder.Names(), IsEmpty()); // the host renders
}

TEST_F(TextNoteWidget, TakesATextOfTheGreatestLength)
{
  double red[3] = { 1.0, 0.0, 0.0 };
  EXPECT_EQ(zvTextNoteWidget::GetMaximumTextLength(), 99);
  const std::string longest(zvTextNoteWidget::GetMaximumTextLength(), 'x');
  this->Note->SetText(longest.c_str(), red, 1.0);
  EXPECT_EQ(this->Note->GetText(), longest);
  this->Note->SetText("", red, 1.0);
  EXPECT_STREQ(this->Note->GetText(), "");
}

using TextNoteWidgetDeathTest = TextNoteWidget;

TEST_F(TextNoteWidgetDeathTest, ATextThatIsTooLongStopsTheProgramByDesign)
{
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  double red[3] = { 1.0, 0.0, 0.0 };
  const std::string tooLong(100, 'x');
  EXPECT_EXIT(
    this->Note->SetText(tooLong.c_str(), red, 1.0), ::testing::KilledBySignal(SIGABRT), "");
}

TEST_F(TextNoteWidget, WithoutATextOrAColourNothingChanges)
{
  double red[3] = { 1.0, 0.0, 0.0 };
  this->Note->SetText("kept", red, 2.0);
  this->Note->SetText(nullptr, red, 3.0);
  this->ExpectGenericWarning("zvTextNoteWidget", "set a text and a colour for the note...");
  this->Note->SetText("other", nullptr, 3.0);
  this->ExpectGenericWarning("zvTextNoteWidget", "set a text and a colour for the note...");
  EXPECT_STREQ(this->Note->GetText(), "kept");
  EXPECT_EQ(this->Note->GetFontSize(), 2.0);
}

// ---- Enabling

TEST_F(TextNoteWidget, EnablingShowsItAndLeavesTheMouseAlone)
{
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Note->SetEnabled(1);
  EXPECT_EQ(this->Note->GetEnabled(), 1);
  EXPECT_EQ(recorder.Names(), (Names{ "EnableEvent", "RenderEvent" }));
  EXPECT_FALSE(recorder.Events().front().HasData);
  EXPECT_TRUE(this->IsShown());
  EXPECT_EQ(this->Note->GetCurrentRender(), this->Scene.Renderer());
  EXPECT_EQ(this->Note->TextActor->GetCamera(), this->Scene.Renderer()->GetActiveCamera());
  for (unsigned long event : zvEvents::Handle)
  {
    EXPECT_FALSE(this->Scene.Interactor()->HasObserver(event, this->Note->EventCallbackCommand));
  }
}

TEST_F(TextNoteWidget, EnablingAgainSaysSoEachTimeWhateverTheTraces)
{
  this->Note->SetEnabled(1);
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  for (int i = 0; i < 2; ++i)
  {
    this->Note->SetEnabled(1);
    this->ExpectTrace("zvTextNoteWidget", this->Note, "Return in method SetEnabled())");
  }
  // Traces come first.
  this->Note->DebugMode = true;
  this->Note->SetEnabled(1);
  this->Note->DebugMode = false;
  const std::string output = this->TakeOutput();
  const std::size_t second = output.find("Info: ", 1);
  ASSERT_NE(second, std::string::npos) << output;
  EXPECT_TRUE(zvtest::IsTrace(output.substr(0, second), "zvTextNoteWidget", this->Note,
    "void zvTextNoteWidget::SetEnabled(int enabling)"));
  EXPECT_TRUE(zvtest::IsTrace(
    output.substr(second), "zvTextNoteWidget", this->Note, "Return in method SetEnabled())"));
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(TextNoteWidget, DisablingTakesItOutOfTheViewAndOffTheInteractor)
{
  this->Show();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Note->SetEnabled(0);
  EXPECT_EQ(this->Note->GetEnabled(), 0);
  EXPECT_EQ(recorder.Names(), (Names{ "DisableEvent", "RenderEvent" }));
  EXPECT_FALSE(this->IsShown());
  EXPECT_EQ(this->Note->GetCurrentRender(), nullptr);
  for (unsigned long event : zvEvents::Handle)
  {
    EXPECT_FALSE(this->Scene.Interactor()->HasObserver(event, this->Note->EventCallbackCommand));
  }
  recorder.Clear();
  this->Note->SetEnabled(0);
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(TextNoteWidget, WithoutARendererOrAnInteractorEnablingGivesUpSilently)
{
  vtkNew<zvTextNoteWidget> lonely;
  lonely->SetEnabled(1);
  EXPECT_EQ(lonely->GetEnabled(), 0);
  lonely->SetEnabled(0);
  this->Scene.DropRenderers();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Note->SetEnabled(1);
  EXPECT_EQ(this->Note->GetEnabled(), 0);
  EXPECT_THAT(recorder.Names(), IsEmpty());
  this->ExpectNoMessage();
}

TEST_F(TextNoteWidget, EnablingTakesTheRendererUnderTheLastEvent)
{
  zvtest::SceneOptions options;
  options.Viewports = 2;
  class zvtest::Scene scene(options);
  zvtest::Mouse mouse(scene);
  mouse.MoveTo({ { 300, 200 } });
  mouse.MoveTo({ { 310, 200 } }); // the last position is now in the right viewport, too
  this->Note->SetInteractor(scene.Interactor());
  this->Note->SetEnabled(1);
  EXPECT_EQ(this->Note->GetCurrentRender(), scene.Renderer(1));
  this->Note->SetInteractor(nullptr);
}

TEST_F(TextNoteWidget, AddObserversAttachesTheNineEventsAndTells)
{
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Note->AddObservers();
  EXPECT_EQ(recorder.Names(), (Names{ "EnableEvent" }));
  for (unsigned long event : zvEvents::Handle)
  {
    EXPECT_TRUE(this->Scene.Interactor()->HasObserver(event, this->Note->EventCallbackCommand));
  }
  EXPECT_EQ(this->Note->GetEnabled(), 0);
  recorder.Clear();
  this->Note->AddObservers(); // once more: each event is answered twice
  recorder.Clear();
  this->Pointer.WheelForward({ { 100, 100 } });
  EXPECT_EQ(recorder.Count(vtkCommand::RenderEvent), 2);
}

TEST_F(TextNoteWidget, AddObserversWithoutAnInteractorWarns)
{
  vtkNew<zvTextNoteWidget> lonely;
  lonely->AddObservers();
  this->ExpectGenericWarning("zvTextNoteWidget", "set interactor before adding observers...");
}

// ---- A view that is written directly

TEST_F(TextNoteWidget, SetCurrentRenderWritesRendererAndInteractor)
{
  vtkRenderer* renderer = this->Scene.Renderer();
  const int references = renderer->GetReferenceCount();
  vtkNew<OpenNote> note;
  const vtkMTimeType before = note->GetMTime();
  note->SetCurrentRender(renderer);
  EXPECT_EQ(note->GetCurrentRender(), renderer);
  EXPECT_EQ(note->GetInteractor(), this->Scene.Interactor());
  EXPECT_EQ(renderer->GetReferenceCount(), references);
  EXPECT_EQ(note->GetMTime(), before);
  note->SetEnabled(1);
  note->AddObservers();
  EXPECT_EQ(note->GetCurrentRender(), renderer);
  EXPECT_TRUE(renderer->HasViewProp(note->TextActor));
  note->SetEnabled(0);
  EXPECT_EQ(note->GetCurrentRender(), nullptr);
  EXPECT_EQ(renderer->GetReferenceCount(), references);
}

TEST_F(TextNoteWidget, SetCurrentRenderRefusesWhatIsInNoWindow)
{
  this->Show();
  vtkNew<vtkRenderer> alone;
  for (vtkRenderer* renderer : { static_cast<vtkRenderer*>(nullptr), alone.Get() })
  {
    this->Note->SetCurrentRender(renderer);
    this->ExpectGenericWarning("zvTextNoteWidget", "set a renderer that is in a render window...");
    EXPECT_EQ(this->Note->GetCurrentRender(), this->Scene.Renderer());
    EXPECT_EQ(this->Note->GetInteractor(), this->Scene.Interactor());
  }
}

TEST_F(TextNoteWidget, SetCurrentRenderMovesNeitherObserversNorTheNote)
{
  class zvtest::Scene other;
  this->Show();
  this->Note->SetCurrentRender(other.Renderer());
  EXPECT_EQ(this->Note->GetInteractor(), other.Interactor());
  EXPECT_TRUE(this->IsShown());
  EXPECT_FALSE(other.Renderer()->HasViewProp(this->Note->TextActor));
  for (unsigned long event : zvEvents::Handle)
  {
    EXPECT_TRUE(this->Scene.Interactor()->HasObserver(event, this->Note->EventCallbackCommand));
    EXPECT_FALSE(other.Interactor()->HasObserver(event, this->Note->EventCallbackCommand));
  }
  vtkSmartPointer<vtkCommand> command = this->Note->EventCallbackCommand;
  this->Note = nullptr; // off both, and out of the view that still showed it
  EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
  EXPECT_FALSE(this->Scene.Interactor()->HasObserver(vtkCommand::MouseMoveEvent, command));
  this->Pointer.Drag(zvtest::Left, this->OnNoteOf({ { 0, 0, 0 } }), BesideNote());
}

TEST_F(TextNoteWidget, AViewThatWasWrittenMayDieFirst)
{
  vtkNew<OpenNote> note;
  double green[3] = { 0.0, 1.0, 0.0 };
  note->SetText("note", green, 2.0);
  note->SetCurrentRender(this->Scene.Renderer());
  note->AddObservers();
  note->SetEnabled(1);
  this->Note = nullptr;
  this->Scene.DropInteractor();
  EXPECT_EQ(note->GetInteractor(), nullptr);
  this->Scene.DropRenderers();
  EXPECT_EQ(note->GetCurrentRender(), nullptr);
  this->Scene.DropWindow();
  note->State = zvTextNoteWidget::Moving;
  note->OnMouseMove();
  note->OnLeftButtonUp();
  note->OnMiddleButtonDown();
  EXPECT_EQ(note->State, zvTextNoteWidget::Outside);
  EXPECT_EQ(note->IsClicked(), 0);
  note->SetEnabled(0);
  EXPECT_EQ(note->GetEnabled(), 0);
}

// ---- The mouse

TEST_F(TextNoteWidget, IsClickedOnTheNoteAndChangesNoState)
{
  this->Show();
  this->Note->State = zvTextNoteWidget::Outside;
  for (bool on : { true, false })
  {
    const zvtest::Display at = on ? this->OnNote() : BesideNote();
    this->Scene.Interactor()->SetEventPosition(at[0], at[1]);
    EXPECT_EQ(this->Note->IsClicked(), on ? 1 : 0);
  }
  EXPECT_EQ(this->Note->State, zvTextNoteWidget::Outside);
  const zvtest::Display at = this->OnNote();
  this->Scene.Interactor()->SetEventPosition(at[0], at[1]);
  this->Note->SetEnabled(0);
  EXPECT_EQ(this->Note->IsClicked(), 0);
  vtkNew<zvTextNoteWidget> lonely;
  EXPECT_EQ(lonely->IsClicked(), 0);
}

TEST_F(TextNoteWidget, ANoteWithoutAVisibleTextIsNeverHit)
{
  const zvtest::Display origin = this->Pointer.At({ { 0, 0, 0 } });
  this->Scene.Interactor()->SetEventPosition(origin[0], origin[1]);
  this->Note->SetEnabled(1); // no text at all
  EXPECT_EQ(this->Note->IsClicked(), 0);
  double green[3] = { 0.0, 1.0, 0.0 };
  for (const char* text : { "", "   " })
  {
    this->Note->SetText(text, green, 2.0);
    this->Scene.Render();
    EXPECT_EQ(this->Note->IsClicked(), 0);
  }
}

TEST_F(TextNoteWidget, ALeftPressOnTheNoteTakesIt)
{
  this->Show();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Pointer.Press(zvtest::Left, this->OnNote());
  EXPECT_EQ(this->Note->State, zvTextNoteWidget::Moving);
  // The press itself is aborted: nobody behind the note sees it.
  EXPECT_EQ(recorder.Names(), (Names{ "StartInteractionEvent", "RenderEvent" }));
  EXPECT_FALSE(recorder.Events().front().HasData);
  recorder.Clear();
  this->Pointer.MoveTo({ { 230, 250 } });
  EXPECT_EQ(recorder.Names(), (Names{ "InteractionEvent", "RenderEvent" }));
  recorder.Clear();
  this->Pointer.Release(zvtest::Left);
  EXPECT_EQ(this->Note->State, zvTextNoteWidget::Start);
  EXPECT_EQ(recorder.Names(), (Names{ "EndInteractionEvent", "RenderEvent" }));
}

TEST_F(TextNoteWidget, ALeftPressBesideTheNoteMovesNothingUntilTheNextPress)
{
  this->Show();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Pointer.Press(zvtest::Left, BesideNote());
  EXPECT_EQ(this->Note->State, zvTextNoteWidget::Outside);
  this->Pointer.MoveTo({ { 100, 100 } });
  this->Pointer.Release(zvtest::Left);
  this->Pointer.Release(zvtest::Middle);
  EXPECT_EQ(this->Note->State, zvTextNoteWidget::Outside);
  this->ExpectLocation({ { 0, 0, 0 } }, 0.0);
  EXPECT_EQ(recorder.Names(),
    (Names{ "LeftButtonPressEvent", "MouseMoveEvent", "LeftButtonReleaseEvent",
      "MiddleButtonReleaseEvent" }));
  this->Pointer.Press(zvtest::Left, this->OnNote());
  EXPECT_EQ(this->Note->State, zvTextNoteWidget::Moving);
}

TEST_F(TextNoteWidget, APressOutOfTheViewportIsLeftToOthers)
{
  zvtest::SceneOptions options;
  options.Viewports = 2;
  class zvtest::Scene scene(options);
  zvtest::Mouse mouse(scene);
  this->Note->SetInteractor(scene.Interactor());
  this->Note->SetCurrentRenderer(scene.Renderer(0));
  this->Show();
  for (zvtest::Button button : { zvtest::Left, zvtest::Middle })
  {
    this->Note->State = zvTextNoteWidget::Moving;
    zvtest::EventRecorder recorder;
    recorder.Watch(this->Note, zvtest::WidgetEvents);
    recorder.Watch(scene.Interactor(), MouseEvents);
    recorder.Watch(scene.Interactor(), { vtkCommand::RenderEvent });
    mouse.Press(button, { { 300, 100 } });
    EXPECT_EQ(this->Note->State, zvTextNoteWidget::Outside);
    EXPECT_EQ(recorder.Events().size(), 1u); // the press itself
  }
  this->Note->SetInteractor(nullptr);
}

TEST_F(TextNoteWidget, AnswersEachEventInEachStateAsTheTableSays)
{
  constexpr int AsBefore = -1;
  struct Answer
  {
    int Next;
    Names Told;     // to observers of the note
    bool IsAborted; // nobody behind the note sees the event
    int Renders;
  };
  const Answer leftToOthers{ AsBefore, {}, false, 0 };
  const Answer renders{ AsBefore, {}, false, 1 };
  const Answer starts{ zvTextNoteWidget::Moving, { "StartInteractionEvent" }, true, 1 };
  const Answer ends{ zvTextNoteWidget::Start, { "EndInteractionEvent" }, true, 1 };
  const Answer moves{ AsBefore, { "InteractionEvent" }, true, 1 };
  struct Row
  {
    const char* Event;
    std::function<void()> Do;
    Answer WhileMoving;
    Answer Otherwise;
  };
  const Row rows[] = {
    { "left press on it", [&] { this->Pointer.Press(zvtest::Left, this->OnNote()); }, starts,
      starts },
    { "left press beside", [&] { this->Pointer.Press(zvtest::Left, BesideNote()); },
      { zvTextNoteWidget::Outside, {}, false, 0 }, { zvTextNoteWidget::Outside, {}, false, 0 } },
    { "middle press on it", [&] { this->Pointer.Press(zvtest::Middle, this->OnNote()); }, starts,
      starts },
    { "middle press beside", [&] { this->Pointer.Press(zvtest::Middle, BesideNote()); }, starts,
      starts },
    { "middle press with control",
      [&] { this->Pointer.Press(zvtest::Middle, this->OnNote(), zvtest::Control); },
      { zvTextNoteWidget::Start, { "StartInteractionEvent" }, true, 1 },
      { zvTextNoteWidget::Start, { "StartInteractionEvent" }, true, 1 } },
    { "left release", [&] { this->Pointer.Release(zvtest::Left, this->OnNote()); }, ends,
      leftToOthers },
    { "middle release", [&] { this->Pointer.Release(zvtest::Middle, this->OnNote()); }, ends,
      leftToOthers },
    { "right press", [&] { this->Pointer.Press(zvtest::Right, this->OnNote()); }, leftToOthers,
      leftToOthers },
    { "right release", [&] { this->Pointer.Release(zvtest::Right, this->OnNote()); }, renders,
      renders },
    { "wheel forward", [&] { this->Pointer.WheelForward(this->OnNote()); }, renders, renders },
    { "wheel backward", [&] { this->Pointer.WheelBackward(this->OnNote()); }, renders, renders },
    { "move",
      [&] {
        this->Pointer.MoveTo({ { 180, 210 } });
      },
      moves, leftToOthers },
  };
  this->Show();
  for (int state : { zvTextNoteWidget::Start, zvTextNoteWidget::Moving, zvTextNoteWidget::Outside })
  {
    for (const Row& row : rows)
    {
      this->Note->SetLocation(0.0, 0.0, 0.0);
      this->Note->State = state;
      zvtest::EventRecorder told;
      told.Watch(this->Note, zvtest::WidgetEvents);
      zvtest::EventRecorder seenBehind;
      seenBehind.Watch(this->Scene.Interactor(), MouseEvents);
      zvtest::EventRecorder frames;
      frames.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
      row.Do();
      const Answer& answer = state == zvTextNoteWidget::Moving ? row.WhileMoving : row.Otherwise;
      EXPECT_EQ(this->Note->State, answer.Next == AsBefore ? state : answer.Next)
        << row.Event << " in " << state;
      EXPECT_EQ(told.Names(), answer.Told) << row.Event << " in " << state;
      EXPECT_EQ(seenBehind.Events().empty(), answer.IsAborted) << row.Event << " in " << state;
      EXPECT_EQ(static_cast<int>(frames.Events().size()), answer.Renders)
        << row.Event << " in " << state;
    }
  }
}

TEST_F(TextNoteWidget, ADragKeepsTheAxisOfThePlaneAndJumpsToThePointer)
{
  struct Row
  {
    int Plane;
    int LookAlong;
  };
  for (const Row& row : { Row{ 0, 0 }, Row{ 1, 1 }, Row{ 2, 2 } })
  {
    this->MakeNote();
    this->Scene.LookAlong(row.LookAlong);
    this->Show();
    this->Note->SetPlane(row.Plane);
    World start{ { 0, 0, 0 } };
    start[row.Plane] = 1.5;
    this->Note->SetLocation(start[0], start[1], start[2]);
    this->Pointer.Press(zvtest::Middle, { { 200, 200 } });
    for (const zvtest::Display& to : { zvtest::Display{ { 150, 260 } }, { { 230, 170 } } })
    {
      this->Pointer.MoveTo(to);
      World expected = this->Under(to);
      expected[row.Plane] = 1.5;
      this->ExpectLocation(expected);
    }
    this->Pointer.Release(zvtest::Middle);
  }
}

TEST_F(TextNoteWidget, WithAnyOtherPlaneADragTellsButMovesNothing)
{
  this->Show();
  for (int plane : { -1, 3, 7 })
  {
    this->Note->SetPlane(plane);
    this->Pointer.Press(zvtest::Left, this->OnNote());
    zvtest::EventRecorder recorder;
    this->Record(recorder);
    this->Pointer.MoveTo({ { 120, 130 } });
    EXPECT_EQ(recorder.Names(), (Names{ "InteractionEvent", "RenderEvent" }));
    this->ExpectLocation({ { 0, 0, 0 } }, 0.0);
    this->Pointer.Release(zvtest::Left);
  }
}

TEST_F(TextNoteWidget, SettingThePlaneIsNoModification)
{
  const vtkMTimeType before = this->Note->GetMTime();
  this->Note->SetPlane(0);
  EXPECT_EQ(this->Note->Plane, 0);
  EXPECT_EQ(this->Note->GetMTime(), before);
}

TEST_F(TextNoteWidget, AMiddlePressAnywhereFetchesTheNoteByDesign)
{
  this->Show();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Pointer.Press(zvtest::Middle, BesideNote());
  EXPECT_EQ(this->Note->State, zvTextNoteWidget::Moving);
  EXPECT_EQ(recorder.Names(), (Names{ "StartInteractionEvent", "RenderEvent" }));
  this->Pointer.MoveTo({ { 80, 330 } });
  this->ExpectLocation(this->Under({ { 80, 330 } }));
  recorder.Clear();
  this->Pointer.Release(zvtest::Middle);
  EXPECT_EQ(this->Note->State, zvTextNoteWidget::Start);
  EXPECT_EQ(recorder.Names(), (Names{ "EndInteractionEvent", "RenderEvent" }));
}

TEST_F(TextNoteWidget, AMiddlePressWithControlStartsAnInteractionThatMovesNothing)
{
  this->Show();
  this->Note->State = zvTextNoteWidget::Moving;
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Pointer.Press(zvtest::Middle, this->OnNote(), zvtest::Control);
  EXPECT_EQ(this->Note->State, zvTextNoteWidget::Start);
  EXPECT_EQ(recorder.Names(), (Names{ "StartInteractionEvent", "RenderEvent" }));
  recorder.Clear();
  this->Pointer.MoveTo({ { 80, 330 } }, zvtest::Control);
  this->Pointer.Release(zvtest::Middle, zvtest::Control);
  EXPECT_EQ(recorder.Names(), (Names{ "MouseMoveEvent", "MiddleButtonReleaseEvent" }));
  this->ExpectLocation({ { 0, 0, 0 } }, 0.0);
}

TEST_F(TextNoteWidget, ADragAsksForQuickPictures)
{
  vtkRenderWindowInteractor* interactor = this->Scene.Interactor();
  ASSERT_NE(interactor->GetDesiredUpdateRate(), interactor->GetStillUpdateRate());
  this->Show();
  for (zvtest::Button button : { zvtest::Left, zvtest::Middle })
  {
    this->Pointer.Press(button, this->OnNote());
    EXPECT_EQ(this->Scene.Window()->GetDesiredUpdateRate(), interactor->GetDesiredUpdateRate());
    this->Pointer.Release(button);
    EXPECT_EQ(this->Scene.Window()->GetDesiredUpdateRate(), interactor->GetStillUpdateRate());
  }
}

TEST_F(TextNoteWidget, EitherReleaseEndsADrag)
{
  for (zvtest::Button button : { zvtest::Left, zvtest::Middle })
  {
    this->MakeNote();
    this->Show();
    this->Note->State = zvTextNoteWidget::Moving;
    this->Pointer.Release(button);
    EXPECT_EQ(this->Note->State, zvTextNoteWidget::Start);
  }
}

TEST_F(TextNoteWidget, TheRightButtonAndTheWheelAreLeftToOthers)
{
  this->Show();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Pointer.Press(zvtest::Right, this->OnNote());
  EXPECT_EQ(recorder.Names(), (Names{ "RightButtonPressEvent" }));
  this->Pointer.Release(zvtest::Right);
  this->Pointer.WheelForward(this->OnNote());
  this->Pointer.WheelBackward(this->OnNote());
  EXPECT_EQ(recorder.Names(),
    (Names{ "RightButtonPressEvent", "RenderEvent", "RightButtonReleaseEvent", "RenderEvent",
      "MouseWheelForwardEvent", "RenderEvent", "MouseWheelBackwardEvent" }));
  EXPECT_EQ(this->Note->State, zvTextNoteWidget::Start);
}

// ---- What is seen

TEST_F(TextNoteWidget, TheTextIsSeenInItsColourAndFollowsTheDragAtEachMove)
{
  this->Show();
  EXPECT_TRUE(this->Scene.Look().HasNear(Green, this->OnNote(), 3, 30));
  this->Pointer.Press(zvtest::Left, this->OnNote());
  zvtest::Display before = this->OnNote();
  for (const zvtest::Display& to : { zvtest::Display{ { 120, 300 } }, { { 280, 90 } } })
  {
    this->Pointer.MoveTo(to);
    const zvtest::Picture picture = this->Scene.Look(); // what the handler itself drew
    const zvtest::Display letter = this->OnNoteOf(this->Location());
    EXPECT_TRUE(picture.HasNear(Green, letter, 3, 30));
    EXPECT_EQ(picture.Count(Green, zvtest::Region::Around(before, 10), 60), 0);
    before = letter;
  }
}

TEST_F(TextNoteWidget, TheTextFacesTheCameraFromEverySide)
{
  this->Show();
  const int head = this->Scene.Look().Count(Green, 60);
  EXPECT_GT(head, 200);
  for (int axis : { 0, 1 })
  {
    this->Scene.LookAlong(axis);
    const double bounds[6] = { -10, 10, -10, 10, -10, 10 };
    this->Scene.ResetCamera(bounds);
    EXPECT_NEAR(this->Scene.RenderAndLook().Count(Green, 60), head, 0.1 * head) << axis;
  }
}

TEST_F(TextNoteWidget, ANoteAtNoPlaceOrOfNoSizeIsNeitherSeenNorHit)
{
  const double nan = std::numeric_limits<double>::quiet_NaN();
  double green[3] = { 0.0, 1.0, 0.0 };
  const zvtest::Picture empty = this->Scene.RenderAndLook();
  this->Show();
  const zvtest::Display at = this->OnNote();
  for (const double size : { 2.0, 0.0, nan })
  {
    SCOPED_TRACE(size);
    const double place = size == 2.0 ? nan : 0.0;
    this->Note->SetText("HHH", green, size);
    this->Note->SetLocation(place, place, place);
    EXPECT_EQ(this->Scene.RenderAndLook().CountDifferent(empty), 0);
    this->Scene.Interactor()->SetEventPosition(at[0], at[1]);
    EXPECT_EQ(this->Note->IsClicked(), 0);
    this->Pointer.Press(zvtest::Left, at);
    EXPECT_EQ(this->Note->State, zvTextNoteWidget::Outside);
    this->Pointer.Drag(zvtest::Middle, at, { { 120, 130 } });
    EXPECT_EQ(this->Scene.Look().CountDifferent(empty), 0);
  }
  this->Note->SetText("HHH", green, 2.0);
  this->Note->SetLocation(0.0, 0.0, 0.0);
  EXPECT_TRUE(this->Scene.RenderAndLook().HasNear(Green, at, 3, 30));
}

TEST_F(TextNoteWidget, DisabledNothingOfItIsSeen)
{
  const zvtest::Picture empty = this->Scene.RenderAndLook();
  this->Show();
  EXPECT_GT(this->Scene.Look().CountDifferent(empty), 0);
  this->Note->SetEnabled(0);
  EXPECT_EQ(this->Scene.Look().CountDifferent(empty), 0);
}

// ---- Traces

TEST_F(TextNoteWidget, TheseOperationsWriteATrace)
{
  struct Row
  {
    const char* Signature;
    std::function<void()> Call;
  };
  const Row rows[] = {
    { "void zvTextNoteWidget::SetEnabled(int enabling)", [this] { this->Note->SetEnabled(1); } },
    { "zvTextNoteWidget::AddObservers(void)", [this] { this->Note->AddObservers(); } },
    { "void zvTextNoteWidget::OnRightButtonDown()",
      [this] { this->Pointer.Press(zvtest::Right, BesideNote()); } },
    { "void zvTextNoteWidget::SetEnabled(int enabling)", [this] { this->Note->SetEnabled(0); } },
  };
  this->Note->DebugMode = true;
  for (const Row& row : rows)
  {
    row.Call();
    this->ExpectTrace("zvTextNoteWidget", this->Note, row.Signature);
  }
  this->Note->DebugMode = false;
}

// ---- Life and death

TEST_F(TextNoteWidget, DeletedWhileEnabledLeavesNothingBehind)
{
  const zvtest::Picture empty = this->Scene.RenderAndLook();
  this->Show();
  vtkSmartPointer<vtkCommand> command = this->Note->EventCallbackCommand;
  this->Note = nullptr;
  EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
  EXPECT_EQ(this->Scene.Look().CountDifferent(empty), 0);
  for (unsigned long event : zvEvents::Handle)
  {
    EXPECT_FALSE(this->Scene.Interactor()->HasObserver(event, command));
  }
  this->Pointer.Drag(zvtest::Left, { { 200, 200 } }, { { 210, 200 } });
}

TEST_F(TextNoteWidget, DeletedWithoutBeingEnabledItIsOffEveryInteractor)
{
  class zvtest::Scene other;
  this->Note->AddObservers(); // not enabled: a change of the interactor leaves the command there
  this->Note->SetInteractor(other.Interactor());
  this->Note->AddObservers();
  vtkSmartPointer<vtkCommand> command = this->Note->EventCallbackCommand;
  this->Note = nullptr;
  EXPECT_FALSE(this->Scene.Interactor()->HasObserver(vtkCommand::MouseMoveEvent, command));
  EXPECT_FALSE(other.Interactor()->HasObserver(vtkCommand::MouseMoveEvent, command));
  this->Pointer.Drag(zvtest::Left, { { 200, 200 } }, { { 210, 200 } });
}

TEST_F(TextNoteWidget, DeletedInMidDrag)
{
  this->Show();
  this->Pointer.Press(zvtest::Left, this->OnNote());
  this->Note = nullptr;
  this->Pointer.MoveTo({ { 100, 100 } });
  this->Pointer.Release(zvtest::Left);
}

TEST_F(TextNoteWidget, OutlivesWhatItWasShownIn)
{
  this->Show();
  const zvtest::Display on = this->OnNote();
  this->Scene.DropRenderers();
  this->Pointer.Drag(zvtest::Left, on, { { 200, 200 } });
  this->Pointer.Drag(zvtest::Middle, on, { { 200, 200 } });
  this->Note->State = zvTextNoteWidget::Moving;
  this->Pointer.MoveTo({ { 210, 200 } });
  this->Scene.DropInteractor();
  this->Scene.DropWindow();
  EXPECT_EQ(this->Note->GetInteractor(), nullptr);
  EXPECT_EQ(this->Note->GetEnabled(), 0);
  this->Note->OnLeftButtonDown();
  EXPECT_EQ(this->Note->State, zvTextNoteWidget::Outside);
  this->Note->State = zvTextNoteWidget::Moving;
  this->Note->OnMouseMove();
  this->Note->OnMiddleButtonUp();
  EXPECT_EQ(this->Note->State, zvTextNoteWidget::Start);
  this->Note->OnMiddleButtonDown();
  this->Note->OnRightButtonDown();
  this->Note->OnRightButtonUp();
  this->Note->OnMouseWheelForward();
  this->Note->OnMouseWheelBackward();
}

TEST_F(TextNoteWidget, LosesItsRendererAndIsStillTakenOutOfTheView)
{
  for (const bool isDeleted : { false, true })
  {
    this->MakeNote();
    this->Show();
    this->Pointer.Press(zvtest::Left, this->OnNote());
    this->Note->SetCurrentRenderer(nullptr);
    this->Pointer.MoveTo({ { 120, 130 } });
    this->ExpectLocation({ { 0, 0, 0 } }, 0.0);
    if (isDeleted)
    {
      this->Note = nullptr;
    }
    else
    {
      this->Note->SetEnabled(0);
      EXPECT_EQ(this->Note->GetEnabled(), 0);
    }
    EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
  }
}

TEST_F(TextNoteWidget, SurvivesObserversThatDisableOrCutOffOrReleaseIt)
{
  using Action = std::function<void()>;
  const Action actions[] = { [this] { this->Note->SetEnabled(0); },
    [this] { this->Note->SetInteractor(nullptr); }, [this] { this->Note = nullptr; } };
  for (const Action& action : actions)
  {
    for (unsigned long event :
      { vtkCommand::EnableEvent, vtkCommand::DisableEvent, vtkCommand::StartInteractionEvent,
        vtkCommand::InteractionEvent, vtkCommand::EndInteractionEvent })
    {
      this->MakeNote();
      double green[3] = { 0.0, 1.0, 0.0 };
      this->Note->SetText("HHH", green, 2.0);
      this->Note->AddObservers();
      zvtest::EventRecorder recorder;
      recorder.Watch(this->Note, { event }, [&action](const zvtest::RecordedEvent&) { action(); });
      OpenNote* note = this->Note;
      note->SetEnabled(1);
      this->Pointer.Drag(zvtest::Left, this->OnNote(), { { 120, 130 } });
      if (this->Note && this->Note->GetEnabled())
      {
        note->SetEnabled(0);
      }
      EXPECT_EQ(recorder.Count(event), 1) << vtkCommand::GetStringFromEventId(event);
      this->Note = nullptr;
    }
  }
}

TEST_F(TextNoteWidget, MovesToAnotherView)
{
  class zvtest::Scene other;
  this->Show();
  this->Note->SetInteractor(other.Interactor());
  EXPECT_EQ(this->Note->GetEnabled(), 0);
  EXPECT_FALSE(this->IsShown());
  this->Note->SetEnabled(1);
  EXPECT_EQ(this->Note->GetCurrentRender(), other.Renderer());
  this->Note->SetInteractor(nullptr);
}
