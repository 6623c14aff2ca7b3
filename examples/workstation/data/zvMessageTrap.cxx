#include "zvMessageTrap.h"

#include "vtkLogger.h"
#include "vtkObjectFactory.h"
#include "vtkOutputWindow.h"
#include "vtkSmartPointer.h"

#include <iostream>
#include <mutex>
#include <sstream>
#include <streambuf>

namespace
{
thread_local zvMessageTrap::Listener* CurrentListener = nullptr;

// Stands in for VTK's output window and passes on what no listener takes.
class TrapWindow : public vtkOutputWindow
{
public:
  static TrapWindow* New();
  vtkTypeMacro(TrapWindow, vtkOutputWindow)

  vtkSmartPointer<vtkOutputWindow> Previous;

  void DisplayText(const char* text) override { this->Pass(text, &vtkOutputWindow::DisplayText); }
  void DisplayErrorText(const char* text) override
  {
    this->Pass(text, &vtkOutputWindow::DisplayErrorText);
  }
  void DisplayWarningText(const char* text) override
  {
    this->Pass(text, &vtkOutputWindow::DisplayWarningText);
  }
  void DisplayGenericWarningText(const char* text) override
  {
    this->Pass(text, &vtkOutputWindow::DisplayGenericWarningText);
  }
  void DisplayDebugText(const char* text) override
  {
    this->Pass(text, &vtkOutputWindow::DisplayDebugText);
  }

protected:
  TrapWindow() = default;

private:
  void Pass(const char* text, void (vtkOutputWindow::*display)(const char*))
  {
    if (CurrentListener != nullptr)
    {
      CurrentListener->AddMessage(text);
    }
    else if (this->Previous)
    {
      (this->Previous->*display)(text);
    }
  }
};

vtkStandardNewMacro(TrapWindow);

// Stands in for std::cerr's buffer and passes on what no listener takes.
class TrapBuffer : public std::streambuf
{
public:
  std::streambuf* Previous = nullptr;

protected:
  int_type overflow(int_type c) override
  {
    if (traits_type::eq_int_type(c, traits_type::eof()))
    {
      return traits_type::not_eof(c);
    }
    const char letter = traits_type::to_char_type(c);
    return this->xsputn(&letter, 1) == 1 ? c : traits_type::eof();
  }

  std::streamsize xsputn(const char* text, std::streamsize length) override
  {
    if (CurrentListener != nullptr)
    {
      CurrentListener->AddText(text, static_cast<std::size_t>(length));
      return length;
    }
    return this->Previous->sputn(text, length);
  }

  int sync() override { return CurrentListener != nullptr ? 0 : this->Previous->pubsync(); }
};

// What is in place while any trap exists.
struct Installation
{
  std::mutex Mutex;
  int Traps = 0;
  TrapBuffer Buffer;
  vtkSmartPointer<TrapWindow> Window;
  vtkLogger::Verbosity Verbosity = vtkLogger::VERBOSITY_OFF;
};

Installation& GetInstallation()
{
  static Installation installation;
  return installation;
}

// Where the text begins behind "ERROR: In <file>, line <n>\n<class> (<address>): ", 0 if there is
// no such beginning.
std::size_t LengthOfOrigin(const std::string& text)
{
  const std::size_t place = text.find(": In ");
  const std::size_t line = text.find('\n');
  if (place == std::string::npos || line == std::string::npos || line < place)
  {
    return 0;
  }
  const std::string kind = text.substr(0, place);
  if (kind != "ERROR" && kind != "Warning" && kind != "Generic Warning")
  {
    return 0;
  }
  const std::size_t address = text.find(" (0x", line);
  const std::size_t colon = text.find("): ", line);
  const bool namesObject = address != std::string::npos && colon != std::string::npos &&
    address < colon && text.find_first_of(" \n", line + 1) == address;
  return namesObject ? colon + 3 : line + 1;
}

// An object that relays another's message adds an origin of its own, hence the loop.
std::string WithoutOrigin(const std::string& message)
{
  std::string text = message;
  for (std::size_t length = LengthOfOrigin(text); length > 0; length = LengthOfOrigin(text))
  {
    text.erase(0, length);
  }
  const std::size_t end = text.find_last_not_of(" \n\r\t");
  return end == std::string::npos ? std::string() : text.substr(0, end + 1);
}
}

zvMessageTrap::zvMessageTrap()
{
  Installation& in = GetInstallation();
  const std::lock_guard<std::mutex> lock(in.Mutex);
  if (in.Traps++ > 0)
  {
    return;
  }
  in.Window = vtkSmartPointer<TrapWindow>::New();
  in.Window->Previous = vtkOutputWindow::GetInstance();
  vtkOutputWindow::SetInstance(in.Window);
  in.Buffer.Previous = std::cerr.rdbuf(&in.Buffer);
  in.Verbosity = vtkLogger::GetCurrentVerbosityCutoff();
  vtkLogger::SetStderrVerbosity(vtkLogger::VERBOSITY_OFF);
}

zvMessageTrap::~zvMessageTrap()
{
  Installation& in = GetInstallation();
  const std::lock_guard<std::mutex> lock(in.Mutex);
  if (--in.Traps > 0)
  {
    return;
  }
  vtkLogger::SetStderrVerbosity(in.Verbosity);
  std::cerr.rdbuf(in.Buffer.Previous);
  vtkOutputWindow::SetInstance(in.Window->Previous);
  in.Window = nullptr;
}

zvMessageTrap::Listener::Listener()
  : Outer(CurrentListener)
{
  CurrentListener = this;
}

zvMessageTrap::Listener::~Listener()
{
  CurrentListener = this->Outer;
}

std::vector<std::string> zvMessageTrap::Listener::GetMessages() const
{
  std::vector<std::string> messages = this->Messages;
  std::istringstream lines(this->Text);
  for (std::string line; std::getline(lines, line);)
  {
    if (!line.empty())
    {
      messages.push_back(line);
    }
  }
  return messages;
}

void zvMessageTrap::Listener::Clear()
{
  this->Messages.clear();
  this->Text.clear();
}

void zvMessageTrap::Listener::AddMessage(const char* text)
{
  this->Messages.push_back(WithoutOrigin(text));
}

void zvMessageTrap::Listener::AddText(const char* text, std::size_t length)
{
  this->Text.append(text, length);
}
