#include "zvRecorders.h"

#include "vtkLogger.h"
#include "vtkOutputWindow.h"

#include <iostream>
#include <utility>

namespace zvtest
{
class MessageRecorder::Command : public vtkCommand
{
public:
  static Command* New() { return new Command; }
  void Execute(vtkObject*, unsigned long, void* callData) override
  {
    this->Texts->push_back(static_cast<const char*>(callData));
    this->AbortFlagOn(); // the youngest recorder alone hears
  }
  std::vector<std::string>* Texts = nullptr;
};

namespace
{
int NumberOfMessageRecorders = 0;
}

MessageRecorder::MessageRecorder()
  : Window(vtkOutputWindow::GetInstance())
  , Observer(vtkSmartPointer<Command>::New())
{
  this->Observer->Texts = &this->Texts;
  const auto priority = static_cast<float>(++NumberOfMessageRecorders);
  for (unsigned long event :
    { vtkCommand::ErrorEvent, vtkCommand::WarningEvent, vtkCommand::TextEvent })
  {
    this->Window->AddObserver(event, this->Observer, priority);
  }
  this->DisplayMode = this->Window->GetDisplayMode();
  this->Window->SetDisplayModeToNever();
  // The logger writes a line of its own for each message of the output window.
  this->LogVerbosity = vtkLogger::GetCurrentVerbosityCutoff();
  vtkLogger::SetStderrVerbosity(vtkLogger::VERBOSITY_OFF);
}

MessageRecorder::~MessageRecorder()
{
  --NumberOfMessageRecorders;
  this->Window->RemoveObserver(this->Observer);
  this->Window->SetDisplayMode(this->DisplayMode);
  vtkLogger::SetStderrVerbosity(static_cast<vtkLogger::Verbosity>(this->LogVerbosity));
}

std::vector<std::string> MessageRecorder::Take()
{
  return std::exchange(this->Texts, {});
}

std::string MessageRecorder::TakeFirst()
{
  if (this->Texts.empty())
  {
    return {};
  }
  std::string first = this->Texts.front();
  this->Texts.erase(this->Texts.begin());
  return first;
}

OutputRecorder::OutputRecorder()
  : Console(std::cout.rdbuf(this->Text.rdbuf()))
{
}

OutputRecorder::~OutputRecorder()
{
  std::cout.rdbuf(this->Console);
}

std::string OutputRecorder::Take()
{
  std::string text = this->Text.str();
  this->Text.str({});
  return text;
}

class EventRecorder::Command : public vtkCommand
{
public:
  static Command* New() { return new Command; }
  void Execute(vtkObject* caller, unsigned long event, void* callData) override;
  EventRecorder* Recorder = nullptr;
  Action Act;
};

namespace
{
bool CarriesWindowAndLevel(unsigned long event)
{
  return event == vtkCommand::StartWindowLevelEvent || event == vtkCommand::WindowLevelEvent ||
    event == vtkCommand::EndWindowLevelEvent || event == vtkCommand::ResetWindowLevelEvent;
}
}

void EventRecorder::Command::Execute(vtkObject* caller, unsigned long event, void* callData)
{
  if (!this->Recorder)
  {
    return;
  }
  RecordedEvent note;
  note.Id = event;
  note.Name = vtkCommand::GetStringFromEventId(event);
  note.Caller = caller;
  note.HasData = callData != nullptr;
  note.Data = callData;
  if (callData && CarriesWindowAndLevel(event))
  {
    const auto* values = static_cast<const double*>(callData);
    note.Values.assign(values, values + 2);
  }
  this->Recorder->Notes.push_back(note);
  if (this->Act)
  {
    this->Act(note);
  }
}

EventRecorder::~EventRecorder()
{
  // The subjects may be gone: the commands are left to them, without a recorder to tell.
  for (const auto& command : this->Commands)
  {
    command->Recorder = nullptr;
    command->Act = nullptr;
  }
}

void EventRecorder::WatchAll(vtkObject* subject, float priority)
{
  this->Attach(subject, { vtkCommand::AnyEvent }, nullptr, priority);
}

void EventRecorder::Watch(
  vtkObject* subject, std::initializer_list<unsigned long> events, float priority)
{
  this->Attach(subject, events, nullptr, priority);
}

void EventRecorder::Watch(
  vtkObject* subject, std::initializer_list<unsigned long> events, Action action, float priority)
{
  this->Attach(subject, events, std::move(action), priority);
}

void EventRecorder::Attach(
  vtkObject* subject, std::initializer_list<unsigned long> events, Action action, float priority)
{
  auto command = vtkSmartPointer<Command>::New();
  command->Recorder = this;
  command->Act = std::move(action);
  for (unsigned long event : events)
  {
    subject->AddObserver(event, command, priority);
  }
  this->Commands.push_back(command);
}

std::vector<unsigned long> EventRecorder::Ids() const
{
  std::vector<unsigned long> ids;
  for (const RecordedEvent& event : this->Notes)
  {
    ids.push_back(event.Id);
  }
  return ids;
}

std::vector<std::string> EventRecorder::Names() const
{
  std::vector<std::string> names;
  for (const RecordedEvent& event : this->Notes)
  {
    names.push_back(event.Name);
  }
  return names;
}

int EventRecorder::Count(unsigned long event) const
{
  int count = 0;
  for (const RecordedEvent& note : this->Notes)
  {
    count += note.Id == event ? 1 : 0;
  }
  return count;
}

const std::initializer_list<unsigned long> WidgetEvents = { vtkCommand::EnableEvent,
  vtkCommand::DisableEvent, vtkCommand::StartInteractionEvent, vtkCommand::InteractionEvent,
  vtkCommand::EndInteractionEvent, vtkCommand::StartWindowLevelEvent, vtkCommand::WindowLevelEvent,
  vtkCommand::EndWindowLevelEvent, vtkCommand::ResetWindowLevelEvent };
}
