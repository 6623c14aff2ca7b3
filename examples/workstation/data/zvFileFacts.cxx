#include "zvFileFacts.h"

#include "zvLoadFailure.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <unistd.h>

namespace fs = std::filesystem;

namespace
{
std::string ReasonOf(int errorNumber)
{
  switch (errorNumber)
  {
    case ENOENT:
    case ENOTDIR:
      return "there is no such file or folder";
    case EACCES:
    case EPERM:
      return "permission to read it is denied";
    default:
      return std::string("it cannot be opened (") + std::strerror(errorNumber) + ")";
  }
}

// Half, since straightening holds a second copy for a while.
double BytesThatFit()
{
  return 0.5 * static_cast<double>(sysconf(_SC_PHYS_PAGES)) *
    static_cast<double>(sysconf(_SC_PAGE_SIZE));
}
}

void zvFileFacts::RequireReadableFile(const std::string& path)
{
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found || error)
  {
    throw zvLoadRefusal(ReasonOf(error ? error.value() : ENOENT));
  }
  if (status.type() != fs::file_type::regular)
  {
    throw zvLoadRefusal("it is not a file");
  }
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(
    std::fopen(path.c_str(), "rb"), std::fclose);
  if (!file)
  {
    throw zvLoadRefusal(ReasonOf(errno));
  }
  if (SizeOf(path) == 0)
  {
    throw zvLoadRefusal("it is empty");
  }
}

void zvFileFacts::RequireReadableFolder(const std::string& path)
{
  std::error_code error;
  const fs::directory_iterator entries(path, error);
  if (error)
  {
    throw zvLoadRefusal(ReasonOf(error.value()));
  }
  if (entries == fs::directory_iterator())
  {
    throw zvLoadRefusal("the folder is empty");
  }
}

std::uintmax_t zvFileFacts::SizeOf(const std::string& path)
{
  std::error_code error;
  const std::uintmax_t size = fs::file_size(path, error);
  return error ? 0 : size;
}

std::string zvFileFacts::FirstBytes(const std::string& path, std::size_t count)
{
  std::ifstream file(path, std::ios::binary);
  std::string bytes(count, '\0');
  file.read(&bytes[0], static_cast<std::streamsize>(count));
  bytes.resize(static_cast<std::size_t>(std::max<std::streamsize>(file.gcount(), 0)));
  return bytes;
}

std::string zvFileFacts::NameOf(const std::string& path)
{
  const fs::path clean = fs::path(path).lexically_normal();
  const fs::path name = clean.has_filename() ? clean.filename() : clean.parent_path().filename();
  return name.empty() ? path : name.string();
}

bool zvFileFacts::EndsWith(const std::string& name, const std::string& ending)
{
  return name.size() >= ending.size() &&
    std::equal(ending.rbegin(), ending.rend(), name.rbegin(),
      [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); });
}

void zvFileFacts::RequireReasonableSize(
  const std::array<double, 3>& dimensions, double bytesPerVoxel)
{
  double voxels = 1.0;
  for (const double dimension : dimensions)
  {
    if (!(dimension >= 1.0) || dimension > 2147483646.0 || dimension != std::floor(dimension))
    {
      throw zvLoadRefusal("its dimensions make no sense");
    }
    if (dimension < 2.0)
    {
      throw zvLoadRefusal("it is a single slice; a volume has at least two along each axis");
    }
    voxels *= dimension;
  }
  const double bytes = voxels * bytesPerVoxel;
  if (bytes > BytesThatFit())
  {
    char text[128];
    std::snprintf(text, sizeof(text),
      "it would need %.3g GB of memory, more than this computer can give", bytes / 1.0e9);
    throw zvLoadRefusal(text);
  }
}

void zvFileFacts::RequireEnoughBytes(double needed, double available, bool compressed)
{
  constexpr double bestDeflation = 1032.0;
  if (needed > available * (compressed ? bestDeflation : 1.0))
  {
    throw zvLoadRefusal("it is cut off: its header promises more voxels than it holds");
  }
}
