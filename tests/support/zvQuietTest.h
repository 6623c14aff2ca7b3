#ifndef zvQuietTest_h
#define zvQuietTest_h

#include "zvMessageText.h"
#include "zvRecorders.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zvtest
{
/// The fixture of every test: a VTK message or a standard output (std::cout) that nobody claimed
/// fails the test, when it ends and again when the fixture's members are gone.
///
/// \code
/// class RulerWidget : public zvtest::QuietTest { protected: zvtest::Scene Scene; };
///
/// widget->SetInteraction(true);
/// ExpectGenericWarning("zvWidgets", "set interactor and Enabled before changing interaction...");
/// \endcode
///
/// Each Expect call claims one message, the oldest, and compares it whole (see zvMessageText.h for
/// the arguments); it fails at the caller's line.
class QuietTest : public ::testing::Test
{
protected:
  QuietTest();
  ~QuietTest() override;
  void TearDown() override;

  void ExpectVtkError(const std::string& file, const std::string& className, const void* object,
    const std::string& message, const char* testFile = __builtin_FILE(),
    int testLine = __builtin_LINE());
  void ExpectVtkWarning(const std::string& file, const std::string& className, const void* object,
    const std::string& message, const char* testFile = __builtin_FILE(),
    int testLine = __builtin_LINE());
  void ExpectGenericWarning(const std::string& file, const std::string& message,
    const char* testFile = __builtin_FILE(), int testLine = __builtin_LINE());

  /// These claim the whole standard output since the last claim.
  void ExpectTrace(const std::string& file, const void* object, const std::string& signature,
    const char* testFile = __builtin_FILE(), int testLine = __builtin_LINE());
  void ExpectPlainWarning(const std::string& file, const void* object, const std::string& message,
    const char* testFile = __builtin_FILE(), int testLine = __builtin_LINE());
  void ExpectPlainError(const std::string& file, const void* object, const std::string& message,
    const char* testFile = __builtin_FILE(), int testLine = __builtin_LINE());

  /// Nothing was said since the last claim.
  void ExpectNoMessage(const char* testFile = __builtin_FILE(), int testLine = __builtin_LINE());

  /// Claim all messages, or the standard output, and get them.
  std::vector<std::string> TakeMessages() { return this->MessagesHeard.Take(); }
  std::string TakeOutput() { return this->OutputHeard.Take(); }

private:
  void FailOnLeftovers(const char* when);
  MessageRecorder MessagesHeard;
  OutputRecorder OutputHeard;
};
}

#endif
