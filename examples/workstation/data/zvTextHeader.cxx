#include "zvTextHeader.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <sstream>

namespace
{
// A file that is no header at all must not be read as one endless line.
constexpr std::size_t LongestHeader = 1 << 20;

std::string Trimmed(const std::string& text)
{
  const char* const blanks = " \t\r\n";
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string::npos)
  {
    return std::string();
  }
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string Lowered(std::string text)
{
  std::transform(text.begin(), text.end(), text.begin(),
    [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  return text;
}

// A whole line without its end; false at the end of the file or of what a header may take.
bool ReadLine(std::istream& file, std::string& line, std::uintmax_t& length)
{
  line.clear();
  for (int letter = file.get(); letter != EOF && length < LongestHeader; letter = file.get())
  {
    ++length;
    if (letter == '\n')
    {
      return true;
    }
    line.push_back(static_cast<char>(letter));
  }
  return !line.empty() && length < LongestHeader;
}
}

zvTextHeader::zvTextHeader(const std::string& path, char separator, const std::string& last)
{
  std::ifstream file(path, std::ios::binary);
  for (std::string line; ReadLine(file, line, this->Length);)
  {
    if (Trimmed(line).empty())
    {
      return;
    }
    const std::size_t at = line.find(separator);
    if (line[0] == '#' || at == std::string::npos)
    {
      continue;
    }
    const std::string name = Lowered(Trimmed(line.substr(0, at)));
    this->Fields[name] = Trimmed(line.substr(at + 1));
    if (name == last)
    {
      return;
    }
  }
}

bool zvTextHeader::Has(const std::vector<std::string>& names) const
{
  return std::any_of(names.begin(), names.end(),
    [this](const std::string& name) { return this->Fields.count(name) > 0; });
}

std::string zvTextHeader::Get(const std::vector<std::string>& names) const
{
  for (const std::string& name : names)
  {
    const auto field = this->Fields.find(name);
    if (field != this->Fields.end())
    {
      return field->second;
    }
  }
  return std::string();
}

std::vector<double> zvTextHeader::GetNumbers(const std::vector<std::string>& names) const
{
  std::string value = this->Get(names);
  std::replace_if(
    value.begin(), value.end(), [](char c) { return c == '(' || c == ')' || c == ','; }, ' ');
  std::vector<double> numbers;
  std::istringstream words(value);
  for (std::string word; words >> word;)
  {
    char* end = nullptr;
    const double number = std::strtod(word.c_str(), &end);
    const bool isNumber = end == word.c_str() + word.size();
    numbers.push_back(isNumber ? number : std::numeric_limits<double>::quiet_NaN());
  }
  return numbers;
}
