#ifndef zvTemporaryFolder_h
#define zvTemporaryFolder_h

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace zvtest
{
/// A new empty folder that goes with everything in it when the object does.
class TemporaryFolder
{
public:
  TemporaryFolder()
  {
    std::string pattern = (std::filesystem::temp_directory_path() / "zvtest-XXXXXX").string();
    if (::mkdtemp(&pattern[0]) == nullptr)
    {
      throw std::runtime_error("no temporary folder can be made");
    }
    this->Path = pattern;
  }
  ~TemporaryFolder()
  {
    std::error_code error;
    std::filesystem::remove_all(this->Path, error);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  /// The path of the folder, or of a name in it.
  std::string At(const std::string& name = std::string()) const
  {
    return name.empty() ? this->Path.string() : (this->Path / name).string();
  }

  /// Write a file. \return its path.
  std::string Write(const std::string& name, const std::string& bytes) const
  {
    std::ofstream(this->At(name), std::ios::binary) << bytes;
    return this->At(name);
  }

private:
  std::filesystem::path Path;
};
}

#endif
