#include "zvMessageText.h"

#include <cstddef>
#include <sstream>

namespace
{
// Reads a text from the front, piece by piece, and remembers whether all pieces were there.
class Reader
{
public:
  explicit Reader(const std::string& text)
    : Text(text)
  {
  }

  void Literal(const std::string& wanted)
  {
    if (this->Good && this->Text.compare(this->Position, wanted.size(), wanted) == 0)
    {
      this->Position += wanted.size();
      this->Wanted << wanted;
      return;
    }
    this->Wanted << wanted;
    this->Good = false;
  }

  void LineNumber() { this->Digits("123456789", "0123456789", "<line>"); }

  void Address(const void* object)
  {
    if (object)
    {
      std::ostringstream address;
      address << object;
      this->Literal(address.str());
      return;
    }
    this->Literal("0x");
    this->Digits("123456789abcdef", "0123456789abcdef", "<address>");
  }

  ::testing::AssertionResult Result() const
  {
    if (this->Good && this->Position == this->Text.size())
    {
      return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure()
      << "the text is\n[" << this->Text << "]\nand should be\n[" << this->Wanted.str() << "]";
  }

private:
  void Digits(const char* first, const char* others, const char* name)
  {
    const std::size_t end = this->Text.find_first_not_of(others, this->Position);
    const bool here = this->Good && this->Position < this->Text.size() &&
      std::string(first).find(this->Text[this->Position]) != std::string::npos;
    if (!here)
    {
      this->Wanted << name;
      this->Good = false;
      return;
    }
    this->Wanted << this->Text.substr(this->Position, end - this->Position);
    this->Position = end == std::string::npos ? this->Text.size() : end;
  }

  std::string Text;
  std::size_t Position = 0;
  bool Good = true;
  std::ostringstream Wanted;
};

std::string Source(const std::string& file)
{
  return file.find('/') == std::string::npos ? "src/widgets/" + file : file;
}

::testing::AssertionResult Compare(const std::string& text, const std::string& kind,
  const std::string& file, const std::string& beforeAddress, const void* object,
  const std::string& afterAddress)
{
  Reader reader(text);
  reader.Literal(kind + ": In " + Source(file) + ", line ");
  reader.LineNumber();
  reader.Literal("\n" + beforeAddress + " (");
  reader.Address(object);
  reader.Literal("): " + afterAddress + "\n\n");
  return reader.Result();
}
}

namespace zvtest
{
::testing::AssertionResult IsVtkError(const std::string& text, const std::string& file,
  const std::string& className, const void* object, const std::string& message)
{
  return Compare(text, "ERROR", file, className, object, message);
}

::testing::AssertionResult IsVtkWarning(const std::string& text, const std::string& file,
  const std::string& className, const void* object, const std::string& message)
{
  return Compare(text, "Warning", file, className, object, message);
}

::testing::AssertionResult IsGenericWarning(
  const std::string& text, const std::string& file, const std::string& message)
{
  Reader reader(text);
  reader.Literal("Generic Warning: In " + Source(file) + ", line ");
  reader.LineNumber();
  reader.Literal("\n" + message + "\n\n");
  return reader.Result();
}

::testing::AssertionResult IsTrace(const std::string& text, const std::string& file,
  const void* object, const std::string& signature)
{
  return Compare(text, "Info", file, "", object, "  >> \"" + signature + "\"");
}

::testing::AssertionResult IsPlainWarning(
  const std::string& text, const std::string& file, const void* object, const std::string& message)
{
  return Compare(text, "Warning", file, "", object, message);
}

::testing::AssertionResult IsPlainError(
  const std::string& text, const std::string& file, const void* object, const std::string& message)
{
  return Compare(text, "Error", file, "", object, message);
}
}
