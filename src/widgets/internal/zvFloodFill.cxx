#include "zvFloodFill.h"

#include "zvNumbers.h"

#include "vtkDataArray.h"
#include "vtkDoubleArray.h"
#include "vtkImageData.h"
#include "vtkPointData.h"
#include "vtkPoints.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <type_traits>

namespace
{
using Word = std::uint64_t;
constexpr int WordBits = 64;
constexpr Word AllBits = ~Word(0);

int LowestBit(Word word)
{
  return __builtin_ctzll(word);
}

int HighestBit(Word word)
{
  return WordBits - 1 - __builtin_clzll(word);
}

// Bits first to last of a word, both included.
Word BitsFrom(int first, int last)
{
  return (AllBits << first) & (AllBits >> (WordBits - 1 - last));
}

bool Test(const Word* row, int x)
{
  return (row[x / WordBits] >> (x % WordBits)) & 1;
}

// Call change(word, bits) for each word of a row that the bits first to last touch.
template <typename Change>
void ForWords(int first, int last, Change change)
{
  const int firstWord = first / WordBits;
  const int lastWord = last / WordBits;
  for (int w = firstWord; w <= lastWord; ++w)
  {
    change(
      w, BitsFrom(w == firstWord ? first % WordBits : 0, w == lastWord ? last % WordBits : 63));
  }
}

// Component 0 of the voxels of one slice, within what slice and image extent have in common.
struct Grid
{
  void* First = nullptr; // voxel (MinimumX, MinimumY)
  int ScalarType = VTK_VOID;
  vtkIdType StepX = 0; // in scalars
  vtkIdType StepY = 0;
  int MinimumX = 0;
  int MinimumY = 0;
  int Columns = 0;
  int Rows = 0;

  bool IsEmpty() const { return !this->First || this->Columns <= 0 || this->Rows <= 0; }
};

Grid MakeGrid(const zvFloodFill::Slice& slice)
{
  Grid grid;
  vtkDataArray* scalars = slice.Image ? slice.Image->GetPointData()->GetScalars() : nullptr;
  if (!scalars || scalars->GetNumberOfTuples() == 0)
  {
    return grid;
  }
  const int* extent = slice.Image->GetExtent();
  if (slice.Index < extent[2 * slice.NormalAxis] || slice.Index > extent[2 * slice.NormalAxis + 1])
  {
    return grid;
  }
  grid.MinimumX = std::max(0, extent[2 * slice.XAxis]);
  grid.MinimumY = std::max(0, extent[2 * slice.YAxis]);
  // A slice may be told to have any size, also one below nothing.
  const int lastX = std::max(slice.Width, 0) - 1;
  const int lastY = std::max(slice.Height, 0) - 1;
  grid.Columns = std::min(lastX, extent[2 * slice.XAxis + 1]) - grid.MinimumX + 1;
  grid.Rows = std::min(lastY, extent[2 * slice.YAxis + 1]) - grid.MinimumY + 1;
  if (grid.Columns <= 0 || grid.Rows <= 0)
  {
    return grid;
  }
  int voxel[3];
  voxel[slice.XAxis] = grid.MinimumX;
  voxel[slice.YAxis] = grid.MinimumY;
  voxel[slice.NormalAxis] = slice.Index;
  grid.First = slice.Image->GetScalarPointer(voxel);
  grid.ScalarType = slice.Image->GetScalarType();
  const vtkIdType* steps = slice.Image->GetIncrements();
  grid.StepX = steps[slice.XAxis];
  grid.StepY = steps[slice.YAxis];
  return grid;
}

// The C cast of an int to the scalar type, which wraps where the type is too small.
template <typename T>
T CastLikeC(int value)
{
  return static_cast<T>(value);
}

// The bits of a word from 64 bytes that are 0 or 1. The product brings those of eight bytes
// together in its highest byte.
Word PackFlags(const unsigned char* flags)
{
  Word word = 0;
  for (int first = 0; first < WordBits; first += 8)
  {
    Word eight = 0;
    for (int b = 0; b < 8; ++b)
    {
      eight |= static_cast<Word>(flags[first + b]) << (8 * b);
    }
    word |= ((eight * Word(0x0102040810204080)) >> 56) << first;
  }
  return word;
}

// One bit a voxel of a row: set where the voxel does not hold the value.
template <typename T>
void MarkOthers(const T* voxel, vtkIdType step, int columns, int value, Word* bits)
{
  const T target = CastLikeC<T>(value);
  // A value that the type cannot hold equals no voxel.
  const bool isHeld = static_cast<double>(target) == static_cast<double>(value);
  unsigned char flags[WordBits] = {};
  for (int first = 0; first < columns; first += WordBits, voxel += step * WordBits)
  {
    const int count = std::min(WordBits, columns - first);
    if (!isHeld)
    {
      std::fill_n(flags, count, static_cast<unsigned char>(1));
    }
    else if (step == 1 && count == WordBits) // a loop of its own, as it is the one that is quick
    {
      for (int b = 0; b < WordBits; ++b)
      {
        flags[b] = voxel[b] != target;
      }
    }
    else
    {
      for (int b = 0; b < count; ++b)
      {
        flags[b] = voxel[b * step] != target;
      }
    }
    std::fill(flags + count, flags + WordBits, static_cast<unsigned char>(0));
    *bits++ = PackFlags(flags);
  }
}

template <typename T>
void WriteMarked(T* voxel, vtkIdType step, int words, const Word* bits, T value)
{
  for (int w = 0; w < words; ++w, voxel += step * WordBits)
  {
    Word word = bits[w];
    if (word == AllBits && step == 1)
    {
      std::fill_n(voxel, WordBits, value);
      continue;
    }
    for (; word != 0; word &= word - 1)
    {
      voxel[LowestBit(word) * step] = value;
    }
  }
}

double ValueAt(const Grid& grid, int column, int row)
{
  const vtkIdType offset = column * grid.StepX + row * grid.StepY;
  switch (grid.ScalarType)
  {
    vtkTemplateMacro(return static_cast<double>(static_cast<const VTK_TT*>(grid.First)[offset]));
    default:
      return 0.0;
  }
}

bool CanBeFilled(int scalarType)
{
  switch (scalarType)
  {
    vtkTemplateMacro(return true);
    default:
      return false;
  }
}

void WriteRegion(const Grid& grid, const zvFloodFill::Region& region, int value)
{
  for (int row = 0; row < grid.Rows; ++row)
  {
    const Word* bits = region.Bits.data() + static_cast<std::size_t>(row) * region.WordsPerRow;
    switch (grid.ScalarType)
    {
      vtkTemplateMacro(WriteMarked(static_cast<VTK_TT*>(grid.First) + row * grid.StepY, grid.StepX,
        region.WordsPerRow, bits, CastLikeC<VTK_TT>(value)));
    }
  }
}

// Ask for large pages, which come much more quickly, for memory that is not in use yet. Its first
// part is left alone: most fills are small, and one large page would cost them more than it saves.
void PreferLargePages(double* memory, vtkIdType values)
{
#ifdef MADV_HUGEPAGE
  constexpr std::uintptr_t spared = std::uintptr_t(1) << 21;
  constexpr std::uintptr_t least = std::uintptr_t(1) << 24;
  const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
  const auto from = (reinterpret_cast<std::uintptr_t>(memory) + spared + page - 1) / page * page;
  const auto to = reinterpret_cast<std::uintptr_t>(memory + values) / page * page;
  if (to > from && to - from >= least)
  {
    // Nothing depends on it, so its answer does not matter.
    madvise(reinterpret_cast<void*>(from), to - from, MADV_HUGEPAGE);
  }
#else
  (void)memory;
  (void)values;
#endif
}

// count points from (x, y) on, each a step along x from the one before; x and y are written to the
// axes of these numbers, index to the third. The axes are known here so that it becomes a tight
// loop.
template <int XAxis, int YAxis>
void WritePoints(double* to, int x, int y, double index, int count, int step)
{
  for (int n = 0; n < count; ++n)
  {
    to[3 * n + XAxis] = x + n * step;
    to[3 * n + YAxis] = y;
    to[3 * n + (3 - XAxis - YAxis)] = index;
  }
}

using PointWriter = void (*)(double*, int, int, double, int, int);

constexpr PointWriter PointWriters[3][3] = { { nullptr, WritePoints<0, 1>, WritePoints<0, 2> },
  { WritePoints<1, 0>, nullptr, WritePoints<1, 2> },
  { WritePoints<2, 0>, WritePoints<2, 1>, nullptr } };

// Appends voxels to a vtkPoints of doubles, a run at a time, between Begin and End.
class Recorder
{
public:
  Recorder(vtkPoints* points, const zvFloodFill::Slice& slice)
    : Data(vtkDoubleArray::SafeDownCast(points->GetData()))
    , Write(PointWriters[slice.XAxis][slice.YAxis])
    , Index(slice.RecordedIndex)
  {
  }

  // Make room for as many voxels as there can be. What is not written takes no memory.
  void Begin(vtkIdType most)
  {
    const vtkIdType used = this->Data->GetNumberOfTuples();
    this->HasGrown = this->Data->GetSize() < 3 * (used + most);
    if (this->HasGrown)
    {
      this->Data->Resize(used + most);
      PreferLargePages(this->Data->GetPointer(3 * used), 3 * most);
    }
    this->To = this->Data->GetPointer(3 * used);
  }

  // count voxels from (x, y) on, each one step along x from the one before.
  void Append(int x, int y, int count, int step)
  {
    this->Write(this->To, x, y, this->Index, count, step);
    this->To += 3 * static_cast<vtkIdType>(count);
  }

  // The voxels become part of the record, and the room that they did not need is given back.
  void End(vtkIdType count)
  {
    const vtkIdType used = this->Data->GetNumberOfTuples();
    if (this->HasGrown)
    {
      this->Data->Resize(used + count);
    }
    this->Data->WritePointer(3 * used, 3 * count);
  }

  bool IsUsable() const { return this->Data && this->Write; }

private:
  vtkDoubleArray* Data;
  PointWriter Write;
  double Index;
  double* To = nullptr;
  bool HasGrown = false;
};

// A walk over the slice. Positions are columns and rows of the grid.
class Walk
{
public:
  Walk(const Grid& grid, int value, Recorder& recorder)
    : Voxels(grid)
    , Value(value)
    , Record(recorder)
    , WordsPerRow((grid.Columns + WordBits - 1) / WordBits)
    , NoRow(this->WordsPerRow, 0)
    , IsBuilt(grid.Rows, 0)
  {
    const std::size_t words = static_cast<std::size_t>(this->WordsPerRow) * grid.Rows;
    for (std::vector<Word>* plane : { &this->ToVisit, &this->CameByPlusX, &this->CameByMinusX,
           &this->CameByPlusY, &this->Visited })
    {
      plane->assign(words, 0);
    }
  }

  // Visit everything that can be reached from a position. False if it holds the value already.
  bool From(int column, int row)
  {
    if (!Test(this->RowToVisit(row), column))
    {
      return false;
    }
    this->SeedX = column;
    this->SeedY = row;
    this->Record.Begin(static_cast<vtkIdType>(this->Voxels.Columns) * this->Voxels.Rows);
    this->EnterRight(column, row);
    while (!this->IsDone)
    {
      this->Continue();
    }
    this->Record.End(this->Count);
    return true;
  }

  int LastX = 0;
  int LastY = 0;
  vtkIdType Count = 0;
  std::vector<Word> Visited;

private:
  // What is left to try at the position of the walk.
  enum class Next
  {
    MinusX,
    PlusY,
    MinusY,
    Back
  };

  Word* Row(std::vector<Word>& plane, int row)
  {
    return plane.data() + static_cast<std::size_t>(row) * this->WordsPerRow;
  }

  // The voxels of a row that are still to visit, read from the image when first asked for.
  Word* RowToVisit(int row)
  {
    if (row < 0 || row >= this->Voxels.Rows)
    {
      return this->NoRow.data();
    }
    Word* bits = this->Row(this->ToVisit, row);
    if (!this->IsBuilt[row])
    {
      this->IsBuilt[row] = 1;
      switch (this->Voxels.ScalarType)
      {
        vtkTemplateMacro(
          MarkOthers(static_cast<const VTK_TT*>(this->Voxels.First) + row * this->Voxels.StepY,
            this->Voxels.StepX, this->Voxels.Columns, this->Value, bits));
      }
    }
    return bits;
  }

  void MarkVisited(int first, int last, int row)
  {
    Word* toVisit = this->Row(this->ToVisit, row);
    Word* visited = this->Row(this->Visited, row);
    ForWords(first, last,
      [&](int w, Word bits)
      {
        toVisit[w] &= ~bits;
        visited[w] |= bits;
      });
    this->Count += last - first + 1;
  }

  // The last position of the unbroken run of positions to visit that begins at column.
  int EndOfRun(const Word* toVisit, int column) const
  {
    for (int w = column / WordBits; w < this->WordsPerRow; ++w)
    {
      Word stops = ~toVisit[w];
      if (w == column / WordBits)
      {
        stops &= AllBits << (column % WordBits);
      }
      if (stops != 0)
      {
        return w * WordBits + LowestBit(stops) - 1;
      }
    }
    return this->Voxels.Columns - 1;
  }

  int StartOfRun(const Word* toVisit, int column) const
  {
    for (int w = column / WordBits; w >= 0; --w)
    {
      Word stops = ~toVisit[w];
      if (w == column / WordBits)
      {
        stops &= AllBits >> (WordBits - 1 - column % WordBits);
      }
      if (stops != 0)
      {
        return w * WordBits + HighestBit(stops) + 1;
      }
    }
    return 0;
  }

  // Arrive from above, from below or at the seed: +x comes first, so the whole run to the right.
  void EnterRight(int column, int row)
  {
    const int last = this->EndOfRun(this->RowToVisit(row), column);
    this->MarkVisited(column, last, row);
    if (last > column)
    {
      Word* came = this->Row(this->CameByPlusX, row);
      ForWords(column + 1, last, [came](int w, Word bits) { came[w] |= bits; });
    }
    this->Record.Append(
      column + this->Voxels.MinimumX, row + this->Voxels.MinimumY, last - column + 1, 1);
    this->MoveTo(last, row, Next::MinusX);
    this->LastX = last;
    this->LastY = row;
  }

  // Arrive from the right: what is to the right is visited, so the whole run to the left.
  void EnterLeft(int column, int row)
  {
    const int first = this->StartOfRun(this->RowToVisit(row), column);
    this->MarkVisited(first, column, row);
    Word* came = this->Row(this->CameByMinusX, row);
    ForWords(first, column, [came](int w, Word bits) { came[w] |= bits; });
    this->Record.Append(
      column + this->Voxels.MinimumX, row + this->Voxels.MinimumY, column - first + 1, -1);
    this->MoveTo(first, row, Next::PlusY);
    this->LastX = first;
    this->LastY = row;
  }

  void MoveTo(int column, int row, Next next)
  {
    this->X = column;
    this->Y = row;
    this->ToTry = next;
  }

  void Continue()
  {
    switch (this->ToTry)
    {
      case Next::MinusX:
        this->TryMinusX();
        break;
      case Next::PlusY:
        this->TryPlusY();
        break;
      case Next::MinusY:
        this->TryMinusY();
        break;
      case Next::Back:
        this->GoBack();
        break;
    }
  }

  void TryMinusX()
  {
    this->ToTry = Next::PlusY;
    if (this->X > 0 && Test(this->RowToVisit(this->Y), this->X - 1))
    {
      this->EnterLeft(this->X - 1, this->Y);
    }
  }

  void TryPlusY()
  {
    this->SkipToOpening();
    if (this->ToTry != Next::PlusY)
    {
      return;
    }
    this->ToTry = Next::MinusY;
    if (Test(this->RowToVisit(this->Y + 1), this->X))
    {
      Word* came = this->Row(this->CameByPlusY, this->Y + 1);
      came[this->X / WordBits] |= Word(1) << (this->X % WordBits);
      this->EnterRight(this->X, this->Y + 1);
    }
  }

  void TryMinusY()
  {
    this->ToTry = Next::Back;
    if (Test(this->RowToVisit(this->Y - 1), this->X))
    {
      this->EnterRight(this->X, this->Y - 1);
    }
  }

  // Inside a run nothing happens on the way back until there is something to visit above or below,
  // or the run's start is reached: go there at once.
  void SkipToOpening()
  {
    const Word* above = this->RowToVisit(this->Y + 1);
    const Word* below = this->RowToVisit(this->Y - 1);
    if (Test(this->Row(this->CameByPlusX, this->Y), this->X))
    {
      this->SkipLeft(above, below, this->Row(this->CameByPlusX, this->Y));
    }
    else if (Test(this->Row(this->CameByMinusX, this->Y), this->X))
    {
      this->SkipRight(above, below, this->Row(this->CameByMinusX, this->Y));
    }
  }

  void SkipLeft(const Word* above, const Word* below, const Word* inRun)
  {
    for (int w = this->X / WordBits; w >= 0; --w)
    {
      Word stops = above[w] | below[w] | ~inRun[w];
      if (w == this->X / WordBits)
      {
        stops &= AllBits >> (WordBits - 1 - this->X % WordBits);
      }
      if (stops != 0)
      {
        this->X = w * WordBits + HighestBit(stops);
        if (!Test(inRun, this->X))
        {
          this->ToTry = Next::MinusX; // the run's start, back from its +x
        }
        return;
      }
    }
  }

  void SkipRight(const Word* above, const Word* below, const Word* inRun)
  {
    for (int w = this->X / WordBits; w < this->WordsPerRow; ++w)
    {
      Word stops = above[w] | below[w] | ~inRun[w];
      if (w == this->X / WordBits)
      {
        stops &= AllBits << (this->X % WordBits);
      }
      if (stops != 0)
      {
        // The first position beyond the run is the one that it was entered from, back from its -x.
        this->X = w * WordBits + LowestBit(stops);
        return;
      }
    }
  }

  void GoBack()
  {
    if (this->X == this->SeedX && this->Y == this->SeedY)
    {
      this->IsDone = true;
    }
    else if (Test(this->Row(this->CameByPlusX, this->Y), this->X))
    {
      this->MoveTo(this->X - 1, this->Y, Next::MinusX);
    }
    else if (Test(this->Row(this->CameByMinusX, this->Y), this->X))
    {
      this->MoveTo(this->X + 1, this->Y, Next::PlusY);
    }
    else if (Test(this->Row(this->CameByPlusY, this->Y), this->X))
    {
      this->MoveTo(this->X, this->Y - 1, Next::MinusY);
    }
    else
    {
      this->MoveTo(this->X, this->Y + 1, Next::Back);
    }
  }

  Grid Voxels;
  int Value;
  Recorder& Record;
  int WordsPerRow;
  std::vector<Word> NoRow; // stands for the rows beyond the slice
  std::vector<char> IsBuilt;
  std::vector<Word> ToVisit;
  std::vector<Word> CameByPlusX;
  std::vector<Word> CameByMinusX;
  std::vector<Word> CameByPlusY;
  int SeedX = 0;
  int SeedY = 0;
  int X = 0;
  int Y = 0;
  Next ToTry = Next::MinusX;
  bool IsDone = false;
};
}

zvFloodFill::Region zvFloodFill::Fill(
  const Slice& slice, int x, int y, int value, vtkPoints* record, int& oldValue)
{
  Region region;
  region.Where = slice;
  const Grid grid = MakeGrid(slice);
  Recorder recorder(record, slice);
  const long long column = static_cast<long long>(x) - grid.MinimumX;
  const long long row = static_cast<long long>(y) - grid.MinimumY;
  if (grid.IsEmpty() || !CanBeFilled(grid.ScalarType) || !recorder.IsUsable() || column < 0 ||
    column >= grid.Columns || row < 0 || row >= grid.Rows)
  {
    return region;
  }
  Walk walk(grid, value, recorder);
  if (!walk.From(static_cast<int>(column), static_cast<int>(row)))
  {
    return region;
  }
  region.MinimumX = grid.MinimumX;
  region.MinimumY = grid.MinimumY;
  region.WordsPerRow = (grid.Columns + WordBits - 1) / WordBits;
  region.Bits = std::move(walk.Visited);
  region.Count = walk.Count;
  oldValue = zvNumbers::Truncate(ValueAt(grid, walk.LastX, walk.LastY));
  WriteRegion(grid, region, value);
  return region;
}

void zvFloodFill::Restore(const Region& region, vtkImageData* image, int value)
{
  Slice slice = region.Where;
  slice.Image = image;
  const Grid grid = MakeGrid(slice);
  const bool fits = region.Count > 0 && !grid.IsEmpty() && CanBeFilled(grid.ScalarType) &&
    grid.MinimumX == region.MinimumX && grid.MinimumY == region.MinimumY &&
    region.Bits.size() >= static_cast<std::size_t>(region.WordsPerRow) * grid.Rows &&
    region.WordsPerRow == (grid.Columns + WordBits - 1) / WordBits;
  if (fits)
  {
    WriteRegion(grid, region, value);
  }
}
