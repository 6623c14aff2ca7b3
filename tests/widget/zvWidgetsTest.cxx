#include "zvWidgets.h"

#include "zvEvents.h"
#include "zvTestKit.h"

#include "vtkCallbackCommand.h"
#include "vtkNew.h"
#include "vtkObjectFactory.h"
#include "vtkSmartPointer.h"
#include "vtkVersion.h"
#include "vtkWeakPointer.h"

#include <gtest/gtest.h>

#include <sstream>

namespace
{
// A widget that a host could enable, with the switches that only a subclass reaches.
class EnabledWidget : public zvWidgets
{
public:
  static EnabledWidget* New();
  vtkTypeMacro(EnabledWidget, zvWidgets)

  void SetEnabled(int enabling) override { this->Enabled = enabling; }
  void Trace() { this->DebugMode = true; }
  bool IsTracing() const { return this->DebugMode; }
  vtkCommand* GetCommand() { return this->EventCallbackCommand; }
};
vtkStandardNewMacro(EnabledWidget);

class ReplacedWidget : public zvWidgets
{
public:
  static ReplacedWidget* New() { return new ReplacedWidget; }
  vtkTypeMacro(ReplacedWidget, zvWidgets)
};

// A factory that makes a ReplacedWidget where a zvWidgets is asked for.
class Factory : public vtkObjectFactory
{
public:
  static Factory* New() { return new Factory; }
  vtkTypeMacro(Factory, vtkObjectFactory)
  const char* GetVTKSourceVersion() override { return VTK_SOURCE_VERSION; }
  const char* GetDescription() override { return "replaces zvWidgets"; }

private:
  static vtkObject* Make() { return ReplacedWidget::New(); }
  Factory()
  {
    this->RegisterOverride("zvWidgets", "ReplacedWidget", "for the test", 1, &Factory::Make);
  }
};

class ZvWidgets : public zvtest::QuietTest
{
protected:
  vtkSmartPointer<EnabledWidget> MakeEnabled()
  {
    auto widget = vtkSmartPointer<EnabledWidget>::New();
    widget->SetInteractor(this->Scene.Interactor());
    widget->SetEnabled(1);
    return widget;
  }

  bool IsAttached(EnabledWidget* widget)
  {
    for (unsigned long event : zvEvents::Handle)
    {
      if (!this->Scene.Interactor()->HasObserver(event, widget->GetCommand()))
      {
        return false;
      }
    }
    return true;
  }

  zvtest::Scene Scene;
};
}

TEST_F(ZvWidgets, ReportsItsOwnNameAndItsAncestors)
{
  vtkNew<zvWidgets> widget;
  EXPECT_STREQ(widget->GetClassName(), "zvWidgets");
  for (const char* name : { "zvWidgets", "vtk3DWidget", "vtkInteractorObserver", "vtkObject" })
  {
    EXPECT_EQ(widget->IsA(name), 1) << name;
  }
  EXPECT_EQ(widget->IsA("vtkImagePlaneWidget"), 0);
}

TEST_F(ZvWidgets, IsMadeByTheObjectFactoryWhenThatKnowsTheClass)
{
  vtkNew<Factory> factory;
  vtkObjectFactory::RegisterFactory(factory);
  vtkNew<zvWidgets> replaced;
  vtkObjectFactory::UnRegisterFactory(factory);
  vtkNew<zvWidgets> plain;
  EXPECT_STREQ(replaced->GetClassName(), "ReplacedWidget");
  EXPECT_STREQ(plain->GetClassName(), "zvWidgets");
}

TEST_F(ZvWidgets, TheInstantiatorMakesOneWithOneReference)
{
  auto made = vtkSmartPointer<vtkObject>::Take(vtkInstantiatorzvWidgetsNew());
  EXPECT_STREQ(made->GetClassName(), "zvWidgets");
  EXPECT_EQ(made->GetReferenceCount(), 1);
}

TEST_F(ZvWidgets, ANewInstanceIsOfTheSameClass)
{
  vtkNew<zvWidgets> widget;
  auto other = vtkSmartPointer<zvWidgets>::Take(widget->NewInstance());
  EXPECT_STREQ(other->GetClassName(), "zvWidgets");
}

TEST_F(ZvWidgets, WritesItsRevisionLine)
{
  vtkNew<zvWidgets> widget;
  std::ostringstream text;
  widget->CollectRevisions(text);
  EXPECT_EQ(text.str(), "zvWidgets $Revision: 1.2 $\n");
}

TEST_F(ZvWidgets, PrintsItsTwoFieldsAfterThoseOfTheParent)
{
  auto widget = this->MakeEnabled();
  std::ostringstream off;
  widget->PrintSelf(off, vtkIndent(4));
  const std::string end = "    Interaction: Off\n    DebugMode: Off\n";
  ASSERT_GE(off.str().size(), end.size());
  EXPECT_EQ(off.str().substr(off.str().size() - end.size()), end);
  EXPECT_NE(off.str().find("Place Factor: "), std::string::npos);

  widget->SetInteraction(true);
  widget->Trace();
  std::ostringstream on;
  widget->PrintSelf(on, vtkIndent(0));
  EXPECT_NE(on.str().find("\nInteraction: On\nDebugMode: On\n"), std::string::npos);
}

TEST_F(ZvWidgets, StartsOffAndSilent)
{
  vtkNew<EnabledWidget> widget;
  EXPECT_FALSE(widget->GetInteraction());
  EXPECT_FALSE(widget->IsTracing());
  this->ExpectNoMessage();
}

TEST_F(ZvWidgets, CannotBeEnabledByItself)
{
  vtkNew<zvWidgets> widget;
  widget->SetInteractor(this->Scene.Interactor());
  zvtest::EventRecorder events;
  events.Watch(widget, zvtest::WidgetEvents);
  widget->SetEnabled(1);
  EXPECT_EQ(widget->GetEnabled(), 0);
  EXPECT_TRUE(events.Events().empty());
}

TEST_F(ZvWidgets, InteractionBeforeTheInteractorIsRefused)
{
  vtkNew<EnabledWidget> widget;
  widget->SetInteraction(true);
  this->ExpectGenericWarning(
    "zvWidgets", "set interactor and Enabled before changing interaction...");
  EXPECT_FALSE(widget->GetInteraction());
}

TEST_F(ZvWidgets, InteractionOfADisabledWidgetIsRefused)
{
  auto widget = this->MakeEnabled();
  widget->SetEnabled(0);
  widget->SetInteraction(true);
  this->ExpectGenericWarning(
    "zvWidgets", "set interactor and Enabled before changing interaction...");
  EXPECT_FALSE(widget->GetInteraction());
  EXPECT_FALSE(this->IsAttached(widget));
}

TEST_F(ZvWidgets, TheRefusalKeepsAnInteractionThatIsOn)
{
  auto widget = this->MakeEnabled();
  widget->SetInteraction(true);
  widget->SetEnabled(0);
  widget->SetInteraction(false);
  this->ExpectGenericWarning(
    "zvWidgets", "set interactor and Enabled before changing interaction...");
  EXPECT_TRUE(widget->GetInteraction());
}

TEST_F(ZvWidgets, InteractionAttachesTheNineEventsAndTellsOnce)
{
  auto widget = this->MakeEnabled();
  zvtest::EventRecorder events;
  events.Watch(widget, zvtest::WidgetEvents);
  widget->SetInteraction(true);
  EXPECT_TRUE(this->IsAttached(widget));
  EXPECT_TRUE(widget->GetInteraction());
  EXPECT_EQ(events.Names(), (std::vector<std::string>{ "EnableEvent" }));
  EXPECT_FALSE(events.Events().front().HasData);
}

TEST_F(ZvWidgets, TheValueItHasChangesNothing)
{
  auto widget = this->MakeEnabled();
  zvtest::EventRecorder events;
  events.Watch(widget, zvtest::WidgetEvents);
  widget->SetInteraction(false);
  EXPECT_FALSE(this->IsAttached(widget));
  widget->SetInteraction(true);
  events.Clear();
  widget->SetInteraction(true);
  EXPECT_TRUE(events.Events().empty());
}

TEST_F(ZvWidgets, InteractionOffDetachesWithoutAWordAndOnAttachesAgain)
{
  auto widget = this->MakeEnabled();
  widget->SetInteraction(true);
  zvtest::EventRecorder events;
  events.Watch(widget, zvtest::WidgetEvents);
  widget->SetInteraction(false);
  EXPECT_FALSE(
    this->Scene.Interactor()->HasObserver(vtkCommand::MouseMoveEvent, widget->GetCommand()));
  EXPECT_TRUE(events.Events().empty());
  widget->SetInteraction(true);
  EXPECT_TRUE(this->IsAttached(widget));
  EXPECT_EQ(events.Count(vtkCommand::EnableEvent), 1);
}

TEST_F(ZvWidgets, AnObserverMayReleaseItWhileItIsAttached)
{
  for (bool byHand : { false, true })
  {
    EnabledWidget* widget = EnabledWidget::New();
    widget->SetInteractor(this->Scene.Interactor());
    widget->SetEnabled(1);
    const vtkWeakPointer<EnabledWidget> watch = widget;
    const vtkSmartPointer<vtkCommand> command = widget->GetCommand();
    zvtest::EventRecorder events;
    events.Watch(widget, { vtkCommand::EnableEvent },
      [widget](const zvtest::RecordedEvent&) { widget->Delete(); });
    byHand ? widget->AddObservers() : widget->SetInteraction(true);
    EXPECT_EQ(events.Count(vtkCommand::EnableEvent), 1);
    EXPECT_EQ(watch, nullptr);
    EXPECT_FALSE(this->Scene.Interactor()->HasObserver(vtkCommand::MouseMoveEvent, command));
  }
}

TEST_F(ZvWidgets, RemoveObserversDetachesWithoutAWord)
{
  auto widget = this->MakeEnabled();
  widget->AddObservers();
  zvtest::EventRecorder events;
  events.Watch(widget, zvtest::WidgetEvents);
  widget->RemoveObservers();
  EXPECT_FALSE(
    this->Scene.Interactor()->HasObserver(vtkCommand::MouseMoveEvent, widget->GetCommand()));
  EXPECT_TRUE(events.Events().empty());
}

TEST_F(ZvWidgets, WithoutAnInteractorObserversAreNeitherAddedNorRemoved)
{
  vtkNew<zvWidgets> widget;
  zvtest::EventRecorder events;
  events.Watch(widget, zvtest::WidgetEvents);
  widget->AddObservers();
  this->ExpectGenericWarning("zvWidgets", "set interactor before adding observers...");
  widget->RemoveObservers();
  EXPECT_TRUE(events.Events().empty());
}

TEST_F(ZvWidgets, PlacingAPlainOneDoesNothing)
{
  vtkNew<zvWidgets> widget;
  double bounds[6] = { -1, 1, -2, 2, -3, 3 };
  const vtkMTimeType before = widget->GetMTime();
  widget->PlaceWidget(bounds);
  widget->PlaceWidget(-1, 1, -2, 2, -3, 3);
  EXPECT_EQ(widget->GetMTime(), before);
}

TEST_F(ZvWidgets, PlacingWithoutBoundsGoesThroughTheParent)
{
  vtkNew<zvWidgets> widget;
  widget->PlaceWidget();
  const std::vector<std::string> messages = this->TakeMessages();
  ASSERT_EQ(messages.size(), 1u); // the parent's complaint about neither input nor prop
  EXPECT_NE(messages.front().find("zvWidgets"), std::string::npos);
}

TEST_F(ZvWidgets, TracesItsOperationsWhenToldTo)
{
  auto widget = this->MakeEnabled();
  widget->Trace();
  widget->AddObservers();
  this->ExpectTrace("zvWidgets", widget, "zvWidgets::AddObservers(void)");
  widget->SetInteraction(false);
  this->ExpectTrace("zvWidgets", widget, "void zvWidgets::SetInteraction(bool arg)");
  widget->GetInteraction();
  this->ExpectTrace("zvWidgets", widget, "bool zvWidgets::GetInteraction()");
  widget->RemoveObservers();
  EXPECT_EQ(this->TakeOutput(), "");
}

TEST_F(ZvWidgets, SaysNothingOnTheStandardOutputByDefault)
{
  auto widget = this->MakeEnabled();
  widget->SetInteraction(true);
  widget->GetInteraction();
  widget->SetInteraction(false);
  EXPECT_EQ(this->TakeOutput(), "");
}

TEST_F(ZvWidgets, DeletedWhileAttachedLeavesNothingOnTheInteractor)
{
  auto widget = this->MakeEnabled();
  widget->SetInteraction(true);
  vtkSmartPointer<vtkCommand> command = widget->GetCommand();
  widget = nullptr;
  for (unsigned long event : zvEvents::Handle)
  {
    EXPECT_FALSE(this->Scene.Interactor()->HasObserver(event, command));
  }
  zvtest::Mouse(this->Scene).Press(zvtest::Left, { { 10, 10 } });
}

TEST_F(ZvWidgets, LeavesAnInteractorForAnotherWithNothingAttached)
{
  auto widget = vtkSmartPointer<EnabledWidget>::New();
  widget->SetInteractor(this->Scene.Interactor());
  widget->AddObservers();
  ASSERT_TRUE(this->IsAttached(widget));
  zvtest::Scene other;
  widget->SetInteractor(other.Interactor());
  vtkSmartPointer<vtkCommand> command = widget->GetCommand();
  EXPECT_FALSE(this->Scene.Interactor()->HasObserver(vtkCommand::MouseMoveEvent, command));
  widget = nullptr;
  zvtest::Mouse(this->Scene).Press(zvtest::Left, { { 10, 10 } });
}

TEST_F(ZvWidgets, OutlivesItsInteractor)
{
  auto widget = this->MakeEnabled();
  widget->SetInteraction(true);
  this->Scene.DropRenderers();
  this->Scene.DropInteractor();
  this->Scene.DropWindow();
  EXPECT_EQ(widget->GetInteractor(), nullptr);
}
