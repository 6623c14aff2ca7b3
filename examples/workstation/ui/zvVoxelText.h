#ifndef zvVoxelText_h
#define zvVoxelText_h

#include <QString>

struct zvVoxel;

/// What the status bar says.
namespace zvVoxelText
{
/// A voxel in words: the view that it was seen in, its index, its place, its value and its
/// region. With a known orientation the place has the
/// letters of the sides that it lies on, from the frame's origin.
QString Describe(const zvVoxel& voxel, bool isOrientationKnown);

/// What to say before a voxel has been read.
QString Hint();
}

#endif
