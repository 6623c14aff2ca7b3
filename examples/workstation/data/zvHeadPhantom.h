#ifndef zvHeadPhantom_h
#define zvHeadPhantom_h

#include "zvVolume.h"

class zvLoadProgress;

/// The Shepp-Logan head in three dimensions: ten ellipsoids, drawn with the stronger contrast that
/// suits a screen. It needs no file.
namespace zvHeadPhantom
{
/// Voxels along each axis.
constexpr int UsualSide = 256;

/// Make the head as short values: 0 outside, 1000 in the skull, 200 in the brain, 0 in the
/// ventricles, 300 and 400 in the lesions. It lies upright in a cube of 256 mm around the origin.
/// \param side  voxels along each axis, at least 2.
/// \throws zvLoadCancelled
zvVolume Make(int side, zvLoadProgress& progress);
}

#endif
