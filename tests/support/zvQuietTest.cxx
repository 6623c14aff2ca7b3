#include "zvQuietTest.h"

#include "zvLeakCheck.h"
#include "zvLoadedDrivers.h"

#include "vtkObject.h"

namespace
{
const bool LeaksAreChecked = (zvtest::CheckLeaksAfterTheLastTest(), true);

void Report(const ::testing::AssertionResult& result, const char* file, int line)
{
  if (!result)
  {
    ADD_FAILURE_AT(file, line) << result.message();
  }
}
}

namespace zvtest
{
QuietTest::QuietTest()
{
  KeepDriversLoaded();
  vtkObject::GlobalWarningDisplayOn();
}

QuietTest::~QuietTest()
{
  this->FailOnLeftovers("while the fixture's members went");
}

void QuietTest::TearDown()
{
  this->FailOnLeftovers("during the test");
}

void QuietTest::FailOnLeftovers(const char* when)
{
  for (const std::string& message : this->MessagesHeard.Take())
  {
    ADD_FAILURE() << "a VTK message " << when << " that nobody claimed:\n" << message;
  }
  const std::string output = this->OutputHeard.Take();
  if (!output.empty())
  {
    ADD_FAILURE() << "a standard output " << when << " that nobody claimed:\n" << output;
  }
}

void QuietTest::ExpectVtkError(const std::string& file, const std::string& className,
  const void* object, const std::string& message, const char* testFile, int testLine)
{
  const std::string text = this->MessagesHeard.TakeFirst();
  Report(IsVtkError(text, file, className, object, message), testFile, testLine);
}

void QuietTest::ExpectVtkWarning(const std::string& file, const std::string& className,
  const void* object, const std::string& message, const char* testFile, int testLine)
{
  const std::string text = this->MessagesHeard.TakeFirst();
  Report(IsVtkWarning(text, file, className, object, message), testFile, testLine);
}

void QuietTest::ExpectGenericWarning(
  const std::string& file, const std::string& message, const char* testFile, int testLine)
{
  Report(IsGenericWarning(this->MessagesHeard.TakeFirst(), file, message), testFile, testLine);
}

void QuietTest::ExpectTrace(const std::string& file, const void* object,
  const std::string& signature, const char* testFile, int testLine)
{
  Report(IsTrace(this->OutputHeard.Take(), file, object, signature), testFile, testLine);
}

void QuietTest::ExpectPlainWarning(const std::string& file, const void* object,
  const std::string& message, const char* testFile, int testLine)
{
  Report(IsPlainWarning(this->OutputHeard.Take(), file, object, message), testFile, testLine);
}

void QuietTest::ExpectPlainError(const std::string& file, const void* object,
  const std::string& message, const char* testFile, int testLine)
{
  Report(IsPlainError(this->OutputHeard.Take(), file, object, message), testFile, testLine);
}

void QuietTest::ExpectNoMessage(const char* testFile, int testLine)
{
  for (const std::string& message : this->MessagesHeard.Take())
  {
    ADD_FAILURE_AT(testFile, testLine) << "an unexpected VTK message:\n" << message;
  }
  const std::string output = this->OutputHeard.Take();
  if (!output.empty())
  {
    ADD_FAILURE_AT(testFile, testLine) << "an unexpected standard output:\n" << output;
  }
}
}
