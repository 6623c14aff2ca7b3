#ifndef zvNiftiFile_h
#define zvNiftiFile_h

#include "zvVolume.h"

#include <string>

class zvLoadProgress;

/// NIfTI files, and the older pairs of .hdr and .img.
namespace zvNiftiFile
{
/// Whether a name ends like one of these.
bool HasName(const std::string& path);

/// Read one. The voxels are placed by the S matrix where the file has one, otherwise by the Q
/// matrix, otherwise by the voxel sizes alone, the orientation then being unknown. Lengths in
/// metres and micrometres become millimetres. Values are scaled by the header's slope and
/// intercept. \throws zvLoadRefusal, zvLoadCancelled
zvRawVolume Read(const std::string& path, zvLoadProgress& progress);
}

#endif
