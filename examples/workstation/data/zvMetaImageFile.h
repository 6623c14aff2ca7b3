#ifndef zvMetaImageFile_h
#define zvMetaImageFile_h

#include "zvVolume.h"

#include <string>

class zvLoadProgress;

/// MetaImage files: .mha, and .mhd with a file of voxels beside it.
namespace zvMetaImageFile
{
/// Whether a name ends like one of these.
bool HasName(const std::string& path);

/// Read one. The voxels come from VTK's reader, their place from the header, which that reader does
/// not wholly keep: the offset is where the first voxel lies in LPS, and each three numbers of the
/// transform matrix are the direction of one voxel axis. Without a matrix the axes are taken as
/// those of the frame, and the orientation is unknown.
/// \throws zvLoadRefusal, zvLoadCancelled
zvRawVolume Read(const std::string& path, zvLoadProgress& progress);
}

#endif
