#ifndef zvMessageText_h
#define zvMessageText_h

#include <gtest/gtest.h>

#include <string>

/// Comparing a message text whole. Two parts of it cannot be known by a test: the source line, and
/// the address of an object that the test does not hold. They are taken out of the actual text,
/// must be a positive decimal number and a hexadecimal number, and everything around them must be
/// equal.
///
/// \a file is the class whose source speaks ("zvImagePlaneWidget"); the text names it with the
/// folder src/widgets. Companion sources are named with their folder ("src/companions/zvUtils").
/// \a object is the speaker, or null for any address. \a message is without line ends.
///
/// Use: EXPECT_TRUE(zvtest::IsGenericWarning(text, "zvWidgets", "set interactor and ..."));
namespace zvtest
{
/// "ERROR: In src/widgets/<file>, line <n>\n<className> (<object>): <message>\n\n".
/// \a className is what the object's GetClassName() answers.
::testing::AssertionResult IsVtkError(const std::string& text, const std::string& file,
  const std::string& className, const void* object, const std::string& message);

/// "Warning: In src/widgets/<file>, line <n>\n<className> (<object>): <message>\n\n".
::testing::AssertionResult IsVtkWarning(const std::string& text, const std::string& file,
  const std::string& className, const void* object, const std::string& message);

/// "Generic Warning: In src/widgets/<file>, line <n>\n<message>\n\n".
::testing::AssertionResult IsGenericWarning(
  const std::string& text, const std::string& file, const std::string& message);

/// "Info: In src/widgets/<file>, line <n>\n (<object>):   >> "<signature>"\n\n", whole output.
::testing::AssertionResult IsTrace(const std::string& text, const std::string& file,
  const void* object, const std::string& signature);

/// "Warning: In src/widgets/<file>, line <n>\n (<object>): <message>\n\n", whole output.
::testing::AssertionResult IsPlainWarning(
  const std::string& text, const std::string& file, const void* object, const std::string& message);

/// "Error: In src/widgets/<file>, line <n>\n (<object>): <message>\n\n", whole output.
::testing::AssertionResult IsPlainError(
  const std::string& text, const std::string& file, const void* object, const std::string& message);
}

#endif
