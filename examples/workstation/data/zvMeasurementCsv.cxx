#include "zvMeasurementCsv.h"

#include <algorithm>

namespace
{
constexpr const char* EndOfLine = "\r\n";

std::string Field(const std::string& text)
{
  return zvMeasurementCsv::Quote(zvMeasurementCsv::Tame(text));
}

std::string Line(const zvMeasurementRow& row)
{
  std::string line = Field(row.Kind);
  for (const std::string* field : { &row.Name, &row.View, &row.Slice, &row.Value, &row.Unit })
  {
    line += "," + Field(*field);
  }
  return line + EndOfLine;
}

bool IsSign(char character)
{
  return character == '-' || character == '+';
}

bool IsDigit(char character)
{
  return character >= '0' && character <= '9';
}

// As numbers are written here: an optional sign, digits, and perhaps a point with digits.
bool IsNumber(const std::string& word)
{
  const std::size_t start = !word.empty() && IsSign(word[0]) ? 1 : 0;
  const std::size_t point = std::min(word.find('.'), word.size());
  const auto areDigits = [&word](std::size_t from, std::size_t to)
  {
    const auto begin = word.begin();
    return from < to &&
      std::all_of(begin + static_cast<std::ptrdiff_t>(from),
        begin + static_cast<std::ptrdiff_t>(to), IsDigit);
  };
  return areDigits(start, point) && (point == word.size() || areDigits(point + 1, word.size()));
}

bool AreNumbers(const std::string& text)
{
  std::size_t from = 0;
  while (true)
  {
    const std::size_t blank = std::min(text.find(' ', from), text.size());
    if (!IsNumber(text.substr(from, blank - from)))
    {
      return false;
    }
    if (blank == text.size())
    {
      return true;
    }
    from = blank + 1;
  }
}
}

std::string zvMeasurementCsv::Tame(const std::string& text)
{
  constexpr const char* beginnings = "=+-@\t\r\n";
  return text.find_first_of(beginnings) == 0 && !AreNumbers(text) ? "'" + text : text;
}

std::string zvMeasurementCsv::Quote(const std::string& field)
{
  if (field.find_first_of(",\"\r\n") == std::string::npos)
  {
    return field;
  }
  std::string quoted = "\"";
  for (const char character : field)
  {
    quoted += character == '"' ? std::string("\"\"") : std::string(1, character);
  }
  return quoted + "\"";
}

std::string zvMeasurementCsv::Write(const std::vector<zvMeasurementRow>& rows)
{
  std::string text = Line({ "Kind", "Name", "View", "Slice", "Value", "Unit" });
  for (const zvMeasurementRow& row : rows)
  {
    text += Line(row);
  }
  return text;
}
