#ifndef zvFileFacts_h
#define zvFileFacts_h

#include <array>
#include <cstdint>
#include <string>

/// What can be known of a file before a reader gets it.
namespace zvFileFacts
{
/// \throws zvLoadRefusal unless the path is a file that can be opened and is not empty.
void RequireReadableFile(const std::string& path);

/// \throws zvLoadRefusal unless the path is a folder that can be listed.
void RequireReadableFolder(const std::string& path);

/// The size in bytes, 0 if there is no such file.
std::uintmax_t SizeOf(const std::string& path);

/// The first bytes, fewer if the file is shorter.
std::string FirstBytes(const std::string& path, std::size_t count);

/// The last component of a path, also of one that ends in a slash.
std::string NameOf(const std::string& path);

/// Whether a name ends in an ending, letter case aside.
bool EndsWith(const std::string& name, const std::string& ending);

/// \throws zvLoadRefusal unless there are at least two voxels along every axis and the volume fits
/// into half of this computer's memory.
void RequireReasonableSize(const std::array<double, 3>& dimensions, double bytesPerVoxel);

/// \param available  bytes of voxels in the file.
/// \param compressed  whether they are deflated, which shrinks at most by a factor of 1032.
/// \throws zvLoadRefusal if they cannot hold the volume.
void RequireEnoughBytes(double needed, double available, bool compressed);
}

#endif
