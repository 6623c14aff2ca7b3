#ifndef zvMeasurementCsv_h
#define zvMeasurementCsv_h

#include <string>
#include <vector>

/// A measurement as a line of a table; texts in UTF-8.
struct zvMeasurementRow
{
  std::string Kind;
  std::string Name;
  std::string View;
  std::string Slice;
  std::string Value;
  std::string Unit;
};

/// The table as comma-separated values.
namespace zvMeasurementCsv
{
/// A field as it stands in a line: in double quotes if it holds a comma, a double quote or an end
/// of line, with each double quote of its own doubled; otherwise as it is.
std::string Quote(const std::string& field);

/// A text as no program takes it for a formula: with an apostrophe before it if it begins with =,
/// +, -, @, a tab or the end of a line, unless it is a number or numbers with blanks between.
std::string Tame(const std::string& text);

/// The header "Kind,Name,View,Slice,Value,Unit" and a line a row, each ended by CR LF; all fields
/// are tamed and quoted.
std::string Write(const std::vector<zvMeasurementRow>& rows);
}

#endif
