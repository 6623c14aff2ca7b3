#ifndef zvNrrdFile_h
#define zvNrrdFile_h

#include "zvVolume.h"

#include <string>

class zvLoadProgress;

/// NRRD files: .nrrd, and .nhdr with a file of voxels beside it.
namespace zvNrrdFile
{
/// Whether a name ends like one of these, or a file begins like one.
bool HasName(const std::string& path);
bool HasMagic(const std::string& path);

/// Read one. The voxels come from VTK's reader, their place from the header's space directions and
/// origin, which that reader does not wholly keep. The spaces RAS, LAS and LPS are understood; with
/// another one, or none, the axes are taken as those of LPS and the orientation is unknown.
/// \throws zvLoadRefusal, zvLoadCancelled
zvRawVolume Read(const std::string& path, zvLoadProgress& progress);
}

#endif
