#include "zvEvents.h"

#include "vtkCallbackCommand.h"
#include "vtkInteractorObserver.h"
#include "vtkNew.h"
#include "vtkObject.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkSmartPointer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{
template <std::size_t Count>
std::vector<unsigned long> ListOf(const std::array<unsigned long, Count>& events)
{
  return { events.begin(), events.end() };
}

const std::vector<unsigned long> SixButtons = { vtkCommand::LeftButtonPressEvent,
  vtkCommand::LeftButtonReleaseEvent, vtkCommand::MiddleButtonPressEvent,
  vtkCommand::MiddleButtonReleaseEvent, vtkCommand::RightButtonPressEvent,
  vtkCommand::RightButtonReleaseEvent };

// Lets go of itself when it is told of a key, and notes what it still gets to do.
class Fickle : public vtkInteractorObserver
{
public:
  static Fickle* New() { return new Fickle; }
  vtkTypeMacro(Fickle, vtkInteractorObserver)

  void OnChar() override
  {
    *this->Owner = nullptr;
    this->Notes->emplace_back("goes on");
  }

  vtkSmartPointer<Fickle>* Owner = nullptr;
  std::vector<std::string>* Notes = nullptr;

protected:
  Fickle() { zvEvents::HoldDuringKeys(this->KeyPressCallbackCommand); }
  ~Fickle() override { this->Notes->emplace_back("is gone"); }
};
}

TEST(Events, HandleWidgetsWantTheMoveTheButtonsAndTheWheel)
{
  std::vector<unsigned long> wanted = { vtkCommand::MouseMoveEvent };
  wanted.insert(wanted.end(), SixButtons.begin(), SixButtons.end());
  wanted.push_back(vtkCommand::MouseWheelForwardEvent);
  wanted.push_back(vtkCommand::MouseWheelBackwardEvent);
  EXPECT_EQ(ListOf(zvEvents::Handle), wanted);
}

TEST(Events, ThePointHandleLeavesTheWheelAlone)
{
  std::vector<unsigned long> wanted = { vtkCommand::MouseMoveEvent };
  wanted.insert(wanted.end(), SixButtons.begin(), SixButtons.end());
  EXPECT_EQ(ListOf(zvEvents::Point), wanted);
}

TEST(Events, TheImagePlaneLeavesTheMiddleButtonAloneAndReadsKeys)
{
  const std::vector<unsigned long> wanted = { vtkCommand::MouseMoveEvent,
    vtkCommand::LeftButtonPressEvent, vtkCommand::LeftButtonReleaseEvent,
    vtkCommand::RightButtonPressEvent, vtkCommand::RightButtonReleaseEvent, vtkCommand::CharEvent };
  EXPECT_EQ(ListOf(zvEvents::ImagePlane), wanted);
}

TEST(Events, TheThreePlanesWantNoRightPress)
{
  const std::vector<unsigned long> wanted = { vtkCommand::MouseMoveEvent,
    vtkCommand::LeftButtonPressEvent, vtkCommand::LeftButtonReleaseEvent,
    vtkCommand::RightButtonReleaseEvent };
  EXPECT_EQ(ListOf(zvEvents::ThreePlanes), wanted);
}

TEST(Events, ObserveAttachesEachEventOfTheListAndNoOther)
{
  vtkNew<vtkObject> subject;
  vtkNew<vtkCallbackCommand> command;
  zvEvents::Observe(subject, zvEvents::Point, command, 0.5f);
  for (unsigned long event : zvEvents::Point)
  {
    EXPECT_TRUE(subject->HasObserver(event, command)) << vtkCommand::GetStringFromEventId(event);
  }
  EXPECT_FALSE(subject->HasObserver(vtkCommand::MouseWheelForwardEvent));
}

TEST(Events, OneRemovalTakesTheWholeListOff)
{
  vtkNew<vtkObject> subject;
  vtkNew<vtkCallbackCommand> command;
  zvEvents::Observe(subject, zvEvents::Handle, command, 0.0f);
  subject->RemoveObserver(command);
  for (unsigned long event : zvEvents::Handle)
  {
    EXPECT_FALSE(subject->HasObserver(event)) << vtkCommand::GetStringFromEventId(event);
  }
}

TEST(Events, AnObserverOfHigherPriorityIsCalledFirst)
{
  vtkNew<vtkObject> subject;
  std::vector<int> calls;
  struct Entry
  {
    std::vector<int>* calls;
    int number;
  };
  Entry low{ &calls, 1 }, high{ &calls, 2 };
  const auto note = [](vtkObject*, unsigned long, void* data, void*)
  {
    auto* entry = static_cast<Entry*>(data);
    entry->calls->push_back(entry->number);
  };
  vtkNew<vtkCallbackCommand> lowCommand, highCommand;
  lowCommand->SetCallback(note);
  lowCommand->SetClientData(&low);
  highCommand->SetCallback(note);
  highCommand->SetClientData(&high);
  zvEvents::Observe(subject, zvEvents::ThreePlanes, lowCommand, 0.0f);
  zvEvents::Observe(subject, zvEvents::ThreePlanes, highCommand, 0.5f);
  subject->InvokeEvent(vtkCommand::MouseMoveEvent);
  EXPECT_EQ(calls, (std::vector<int>{ 2, 1 }));
}

TEST(Events, AWidgetThatAKeyMakesGoLivesUntilTheKeyIsDone)
{
  std::vector<std::string> notes;
  vtkNew<vtkRenderWindowInteractor> interactor;
  auto fickle = vtkSmartPointer<Fickle>::New();
  fickle->Owner = &fickle;
  fickle->Notes = &notes;
  fickle->SetInteractor(interactor);
  interactor->InvokeEvent(vtkCommand::CharEvent);
  EXPECT_EQ(notes, (std::vector<std::string>{ "goes on", "is gone" }));
}
