#ifndef zvMessageTrap_h
#define zvMessageTrap_h

#include <string>
#include <vector>

/// Keeps what the readers would print.
///
/// VTK's readers report through VTK's output window and its log on the standard error stream, and
/// some write to std::cerr themselves. While any trap exists, whatever the thread of a Listener
/// says in one of these ways is kept for that listener; the other threads' messages go where they
/// went before. Traps may be nested. The first is made and the last is destroyed while no other
/// thread writes to std::cerr, that is before a loading thread starts and after it has ended.
class zvMessageTrap
{
public:
  zvMessageTrap();
  ~zvMessageTrap();
  zvMessageTrap(const zvMessageTrap&) = delete;
  void operator=(const zvMessageTrap&) = delete;

  /// Hears what its own thread says, from its construction to its destruction.
  class Listener
  {
  public:
    Listener();
    ~Listener();
    Listener(const Listener&) = delete;
    void operator=(const Listener&) = delete;

    /// The messages so far, each without file, line, class and address, oldest first.
    std::vector<std::string> GetMessages() const;
    /// Forget them.
    void Clear();

    /// For the trap: one message of VTK, or a piece of std::cerr's text.
    void AddMessage(const char* text);
    void AddText(const char* text, std::size_t length);

  private:
    std::vector<std::string> Messages;
    std::string Text; // std::cerr's, not yet cut into lines
    Listener* Outer;
  };
};

#endif
