#ifndef zvTextHeader_h
#define zvTextHeader_h

#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// A header of lines that name a field and give its value, as MetaImage and NRRD files begin with.
class zvTextHeader
{
public:
  /// Read lines "name<separator>value" until an empty line, the end of the file, or the line of the
  /// field `last`. Names are kept in lower case, blanks around names and values are dropped, lines
  /// that begin with # and lines without the separator are passed over.
  /// \param last  the lower-case name of the field that ends the header, empty for none.
  zvTextHeader(const std::string& path, char separator, const std::string& last);

  /// Whether any of the names (lower case) is there, and its value; the first one that is.
  bool Has(const std::vector<std::string>& names) const;
  std::string Get(const std::vector<std::string>& names) const;

  /// All the numbers in a value, whatever stands between them; not-a-number for a word.
  std::vector<double> GetNumbers(const std::vector<std::string>& names) const;

  /// Where the voxels begin if they follow the header in the same file, in bytes.
  std::uintmax_t GetLength() const { return this->Length; }

private:
  std::map<std::string, std::string> Fields;
  std::uintmax_t Length = 0;
};

#endif
