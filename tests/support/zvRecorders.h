#ifndef zvRecorders_h
#define zvRecorders_h

#include "vtkCommand.h"
#include "vtkNew.h"
#include "vtkSmartPointer.h"

#include <functional>
#include <initializer_list>
#include <sstream>
#include <string>
#include <vector>

class vtkObject;
class vtkOutputWindow;

namespace zvtest
{
/// Keeps every message that goes to VTK's output window while it lives (errors, warnings, generic
/// warnings, debug and plain text) in VTK's classic wording, and keeps the console quiet meanwhile.
class MessageRecorder
{
public:
  MessageRecorder();
  ~MessageRecorder();
  MessageRecorder(const MessageRecorder&) = delete;
  MessageRecorder& operator=(const MessageRecorder&) = delete;

  /// The messages so far, oldest first.
  const std::vector<std::string>& Messages() const { return this->Texts; }

  /// Take the messages out: they are claimed.
  std::vector<std::string> Take();

  /// Take the oldest message out; an empty text if there is none.
  std::string TakeFirst();

private:
  class Command;
  std::vector<std::string> Texts;
  vtkSmartPointer<vtkOutputWindow> Window;
  vtkSmartPointer<Command> Observer;
  int DisplayMode = 0;
  int LogVerbosity = 0;
};

/// Keeps what is written to std::cout while it lives; nothing of it reaches the console.
class OutputRecorder
{
public:
  OutputRecorder();
  ~OutputRecorder();
  OutputRecorder(const OutputRecorder&) = delete;
  OutputRecorder& operator=(const OutputRecorder&) = delete;

  /// What was written since the last call.
  std::string Take();

private:
  std::ostringstream Text;
  std::streambuf* Console = nullptr;
};

/// One event as an observer saw it.
struct RecordedEvent
{
  unsigned long Id = 0;
  std::string Name;            ///< "InteractionEvent" and so on
  vtkObject* Caller = nullptr; ///< for comparison only: it may be gone by now
  bool HasData = false;        ///< whether the call data was not null
  void* Data = nullptr;        ///< the call data, for comparison only
  std::vector<double> Values;  ///< the two numbers of a window/level event with data, else empty
};

/// Notes events of any number of objects, in the order in which they happen. The objects may die
/// before the recorder and the other way round.
class EventRecorder
{
public:
  using Action = std::function<void(const RecordedEvent&)>;

  EventRecorder() = default;
  ~EventRecorder();
  EventRecorder(const EventRecorder&) = delete;
  EventRecorder& operator=(const EventRecorder&) = delete;

  /// Note every event that \a subject invokes. ModifiedEvent and, for renderers and windows, the
  /// events of each render are among them: name the events where these are in the way.
  void WatchAll(vtkObject* subject, float priority = 0.0f);

  /// Note the given events of \a subject.
  void Watch(
    vtkObject* subject, std::initializer_list<unsigned long> events, float priority = 0.0f);

  /// Note the given events, and run \a action in the observer, after the note is taken. It may
  /// change, disable or delete whatever it likes.
  void Watch(vtkObject* subject, std::initializer_list<unsigned long> events, Action action,
    float priority = 0.0f);

  /// As they came, oldest first.
  const std::vector<RecordedEvent>& Events() const { return this->Notes; }

  /// Only their ids, or only their names.
  std::vector<unsigned long> Ids() const;
  std::vector<std::string> Names() const;

  /// How often an event came.
  int Count(unsigned long event) const;

  void Clear() { this->Notes.clear(); }

private:
  class Command;
  void Attach(
    vtkObject* subject, std::initializer_list<unsigned long> events, Action action, float priority);
  std::vector<RecordedEvent> Notes;
  std::vector<vtkSmartPointer<Command>> Commands;
};

/// Every event that an image plane or a handle widget may invoke to its host.
extern const std::initializer_list<unsigned long> WidgetEvents;
}

#endif
