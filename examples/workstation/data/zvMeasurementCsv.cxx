#include "zvMeasurementCsv.h"

namespace
{
constexpr const char* EndOfLine = "\r\n";

std::string Line(const zvMeasurementRow& row)
{
  std::string line = zvMeasurementCsv::Quote(row.Kind);
  for (const std::string* field : { &row.Name, &row.View, &row.Slice, &row.Value, &row.Unit })
  {
    line += "," + zvMeasurementCsv::Quote(*field);
  }
  return line + EndOfLine;
}
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
