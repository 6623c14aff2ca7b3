#ifndef zvFloodFill_h
#define zvFloodFill_h

#include "vtkType.h"

#include <cstdint>
#include <vector>

class vtkImageData;
class vtkPoints;

/// The fill of one slice of an image: four-connected, bounded only by voxels that already hold the
/// value and by the slice's limits.
///
/// The order of visits is that of the plain recursion "write, then +x, -x, +y, -y", to the voxel:
/// what is recorded and which old value comes last depend on it. It is reached without recursion.
/// Each voxel remembers how the fill came to it (that is the way back), runs along x are visited in
/// one piece, and on the way back the rows above and below are searched 64 voxels at a time.
namespace zvFloodFill
{
/// The part of an image that a fill may touch, in absolute voxel indices.
struct Slice
{
  vtkImageData* Image = nullptr; ///< not owned; its scalars are read and written in place
  int XAxis = 0;                 ///< image axis (0, 1, 2) along which x counts
  int YAxis = 1;                 ///< image axis along which y counts
  int NormalAxis = 2;            ///< the remaining one
  int Index = 0;                 ///< voxel index along NormalAxis
  int Width = 0;                 ///< x runs from 0 to Width - 1, whatever the extent's minimum
  int Height = 0;                ///< y likewise
  double RecordedIndex = 0.0;    ///< what the record holds along NormalAxis
};

/// The voxels that a fill has written, a bit each: what taking it back needs.
struct Region
{
  Slice Where; ///< its Image is the one that was filled, and may be gone
  int MinimumX = 0;
  int MinimumY = 0;
  int WordsPerRow = 0;
  std::vector<std::uint64_t> Bits; ///< row after row, bit b of word w is x = MinimumX + 64 w + b
  vtkIdType Count = 0;             ///< bits that are set
};

/// Fill from voxel (x, y) with \a value, written as C casts it to the scalar type, into component
/// 0.
/// \param record    each voxel written is appended as (i, j, k) in the order of visits; its points
///                  must be double. Room for the whole slice is reserved meanwhile, which takes
///                  memory only where it is used. Untouched when nothing is written.
/// \param oldValue  receives the former value of the voxel visited last, as an int.
/// \return the voxels written; Count 0 when the start is outside, holds the value already, or the
/// image has no scalars of a type that can be filled.
///
/// Voxels outside the image's extent end a branch. A value that the scalar type cannot hold ends
/// the fill like any other: each voxel is visited once. Sets no modification time.
Region Fill(const Slice& slice, int x, int y, int value, vtkPoints* record, int& oldValue);

/// Write \a value, as C casts it, to every voxel of \a region in \a image, which is asked for again
/// since a region does not keep its image alive. Nothing is written if the slice no longer has the
/// region's size. Sets no modification time.
void Restore(const Region& region, vtkImageData* image, int value);
}

#endif
