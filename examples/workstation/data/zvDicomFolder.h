#ifndef zvDicomFolder_h
#define zvDicomFolder_h

#include "zvVolume.h"

#include <string>

class zvLoadProgress;

/// Folders of DICOM files.
namespace zvDicomFolder
{
/// Whether a file begins like a DICOM file.
bool HasMagic(const std::string& path);

/// Read a volume from a folder and its subfolders, or from the folder of one DICOM file. The files
/// are sorted into series, and the series with the most files is read, or that of the given file.
/// Notices tell of other series, of files that could not be understood, of slices at uneven
/// distances (the volume then has their mean), of several times and stacks (the first is read).
/// Values are those of the modality, such as Hounsfield units.
/// \param path  a folder, or a file of one.
/// \throws zvLoadRefusal, zvLoadCancelled
zvRawVolume Read(const std::string& path, zvLoadProgress& progress);
}

#endif
