#ifndef zvSliceSampling_h
#define zvSliceSampling_h

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <vector>

// A loop made for wider registers must be part of the function that is allowed to use them.
#if defined(__GNUC__)
#  define ZV_SLICE_INLINE inline __attribute__((always_inline))
#else
#  define ZV_SLICE_INLINE inline
#endif
#if defined(__GNUC__) && defined(__x86_64__)
#  define ZV_SLICE_WIDE __attribute__((target("avx2")))
#endif

/// The loops of zvSliceReslice: nearest and linear samples of one slice, with the stock filter's
/// order of operations, so that the results have the same bytes. Fill in a SliceJob and use
/// AlignedSlice for a slice along the grid of the volume, WriteObliqueSlice for any other.
namespace zvSliceSampling
{
/// VTK rounds voxel coordinates to multiples of 1/65536 by adding a number so large that a double
/// has no finer digits left. Doing the very same is what keeps ties and borders equal.
constexpr double FixedPointBias = 103079215104.0; // 1.5 * 2^36
constexpr double FractionUnit = 1.0 / 65536.0;

/// Further out a double has too few digits left for sums in another order to round alike.
constexpr double LargestCoordinate = 1e6;

/// A coordinate in 1/65536 of a voxel, good in its lower 48 bits.
ZV_SLICE_INLINE std::uint64_t ToFixedPoint(double coordinate)
{
  const double biased = coordinate + FixedPointBias;
  std::uint64_t bits;
  std::memcpy(&bits, &biased, sizeof(bits));
  return bits;
}

inline int WholePart(std::uint64_t fixedPoint)
{
  return static_cast<int>(static_cast<std::uint32_t>(fixedPoint >> 16));
}

inline double FractionPart(std::uint64_t fixedPoint)
{
  return static_cast<double>(static_cast<int>(fixedPoint & 0xFFFF)) * FractionUnit;
}

inline int RoundToVoxel(double coordinate)
{
  return WholePart(ToFixedPoint(coordinate + 0.5));
}

/// The nearest value of the scalar type. The sum is taken in one step, for it rounds.
template <typename T>
ZV_SLICE_INLINE T RoundToScalar(double value)
{
  const double biased = value + (FixedPointBias + 0.5);
  std::uint64_t bits;
  std::memcpy(&bits, &biased, sizeof(bits));
  return static_cast<T>(bits >> 16);
}

/// Indices from First to Last, none if First exceeds Last.
struct Span
{
  int First;
  int Last;

  bool IsEmpty() const { return this->First > this->Last; }
};

/// What the loops must know of the volume, the slice and the way between them.
template <typename T>
struct SliceJob
{
  const T* Input = nullptr; // the voxel at the lower corner of InputExtent
  int InputExtent[6] = {};
  std::ptrdiff_t InputStep[3] = {}; // in voxels; neighbours along x lie side by side
  T* Output = nullptr;              // the pixel at the lower corner of OutputExtent
  int OutputExtent[6] = {};
  std::ptrdiff_t OutputRowStep = 0;
  double AlongX[3] = {}; // change of the voxel coordinate for one pixel to the right
  double AlongY[3] = {}; // and for one pixel up
  double Origin[3] = {}; // voxel coordinate of pixel (0, 0)
  double Border = 0.5;   // how far beyond the outermost voxel centres the volume reaches
  T Background = 0;

  int GetWidth() const { return this->OutputExtent[1] - this->OutputExtent[0] + 1; }
};

/// The first index of range from which on the test no longer holds, one past the range if it holds
/// throughout. The test may change from true to false once; the guess need not be exact.
template <typename Test>
int FindFirstNot(Span range, double guess, const Test& test)
{
  int index = static_cast<int>(std::min(std::max(guess, range.First + 0.0), range.Last + 1.0));
  while (index > range.First && !test(index - 1))
  {
    --index;
  }
  while (index <= range.Last && test(index))
  {
    ++index;
  }
  return index;
}

/// The indices of range for which start + i * step is neither below nor above, by two tests of a
/// coordinate that hold, roughly, under low and over high.
template <typename Below, typename Above>
Span FindStretch(Span range, double start, double step, double low, double high, const Below& below,
  const Above& above)
{
  const auto isBelow = [&](int i) { return below(start + i * step); };
  const auto isAbove = [&](int i) { return above(start + i * step); };
  if (range.IsEmpty() || step == 0.0)
  {
    return range.IsEmpty() || below(start) || above(start) ? Span{ 0, -1 } : range;
  }
  const double toLow = (low - start) / step;
  const double toHigh = (high - start) / step;
  if (step > 0.0)
  {
    return { FindFirstNot(range, toLow, isBelow),
      FindFirstNot(range, toHigh, [&](int i) { return !isAbove(i); }) - 1 };
  }
  return { FindFirstNot(range, toHigh, isAbove),
    FindFirstNot(range, toLow, [&](int i) { return !isBelow(i); }) - 1 };
}

/// The indices whose coordinates lie from low to high, ends included.
inline Span FindBetween(Span range, double start, double step, double low, double high)
{
  return FindStretch(
    range, start, step, low, high, [low](double c) { return c < low; },
    [high](double c) { return c > high; });
}

/// The indices whose nearest voxels lie from first to last.
inline Span FindNearestBetween(Span range, double start, double step, int first, int last)
{
  return FindStretch(
    range, start, step, first - 0.5, last + 0.5,
    [first](double c) { return RoundToVoxel(c) < first; },
    [last](double c) { return RoundToVoxel(c) > last; });
}

template <typename T>
void FillOutside(const SliceJob<T>& job, T* row, Span inside)
{
  const int width = job.GetWidth();
  if (inside.IsEmpty())
  {
    std::fill(row, row + width, job.Background);
    return;
  }
  std::fill(row, row + (inside.First - job.OutputExtent[0]), job.Background);
  std::fill(row + (inside.Last + 1 - job.OutputExtent[0]), row + width, job.Background);
}

// ---------------------------------------------------------------------------------------------
// Slices along the grid of the volume: what belongs to a column or a row is computed once.

/// The axis of the volume along which a direction runs, -1 if it is not exactly one.
inline int FindOnlyAxis(const double direction[3])
{
  int only = -1;
  for (int axis = 0; axis < 3; ++axis)
  {
    if (direction[axis] != 0.0)
    {
      if (only >= 0)
      {
        return -1;
      }
      only = axis;
    }
  }
  return only;
}

/// Whether each column of a matrix runs along an axis of its own.
inline bool RunsAlongThreeAxes(const double matrix[16])
{
  bool taken[3] = {};
  for (int column = 0; column < 3; ++column)
  {
    const double direction[3] = { matrix[column], matrix[4 + column], matrix[8 + column] };
    const int axis = FindOnlyAxis(direction);
    if (axis >= 0)
    {
      taken[axis] = true;
    }
  }
  return taken[0] && taken[1] && taken[2];
}

/// Whether a volume has more than one but fewer voxels than a cubic sample needs along an axis on
/// which it does not start at 0.
inline bool IsThinAndOffset(const int extent[6])
{
  for (int axis = 0; axis < 3; ++axis)
  {
    const int voxels = extent[2 * axis + 1] - extent[2 * axis] + 1;
    if (extent[2 * axis] != 0 && voxels > 1 && voxels < 4)
    {
      return true;
    }
  }
  return false;
}

/// The voxels that a row, a column or the depth of pixels needs, along one axis of the volume and
/// counted from its first voxel.
struct AxisSamples
{
  Span Inside{ 0, -1 };           // the pixels that lie in the volume
  std::vector<int> Lower;         // by pixel, from Inside.First on
  std::vector<int> Upper;         // likewise; the neighbour towards which the fraction leads
  std::vector<double> Fraction;   // how far on the way from lower to upper
  std::vector<double> Complement; // 1 - Fraction
};

/// Whether pixels step from voxel centre to voxel centre as far as 1/65536 of a voxel can tell. The
/// stock filter then blends none, not even where the steps add up to more.
inline bool StepsOnVoxels(double origin, double step)
{
  return FractionPart(ToFixedPoint(step)) == 0.0 && FractionPart(ToFixedPoint(origin)) == 0.0;
}

template <typename T>
AxisSamples SampleAxis(const SliceJob<T>& job, int axis, Span pixels, double step, bool linear)
{
  const int first = job.InputExtent[2 * axis];
  const int last = job.InputExtent[2 * axis + 1];
  const double origin = job.Origin[axis];
  const bool blends = linear && !StepsOnVoxels(origin, step);
  AxisSamples samples;
  samples.Inside = FindBetween(pixels, origin, step, first - job.Border, last + job.Border);
  const int count = std::max(samples.Inside.Last - samples.Inside.First + 1, 0);
  samples.Lower.resize(count);
  samples.Upper.resize(count);
  samples.Fraction.resize(count);
  samples.Complement.resize(count);
  for (int i = 0; i < count; ++i)
  {
    const int pixel = samples.Inside.First + i;
    const std::uint64_t position = ToFixedPoint(origin + pixel * step + (linear ? 0.0 : 0.5));
    const double fraction = blends ? FractionPart(position) : 0.0;
    const int lower = WholePart(position);
    const int upper = fraction > 0.0 ? lower + 1 : lower;
    samples.Lower[i] = std::clamp(lower, first, last) - first;
    samples.Upper[i] = std::clamp(upper, first, last) - first;
    samples.Fraction[i] = fraction;
    samples.Complement[i] = 1.0 - fraction;
  }
  return samples;
}

/// List the voxels in use and let lower and upper count in that list, so that each is blended once
/// and a coarse slice does not blend those between its pixels.
inline std::vector<int> ListColumns(AxisSamples& samples, int numberOfVoxels)
{
  std::vector<int> place(numberOfVoxels, -1);
  for (std::size_t i = 0; i < samples.Lower.size(); ++i)
  {
    place[samples.Lower[i]] = 0;
    place[samples.Upper[i]] = 0;
  }
  std::vector<int> columns;
  for (int voxel = 0; voxel < numberOfVoxels; ++voxel)
  {
    if (place[voxel] >= 0)
    {
      place[voxel] = static_cast<int>(columns.size());
      columns.push_back(voxel);
    }
  }
  for (std::size_t i = 0; i < samples.Lower.size(); ++i)
  {
    samples.Lower[i] = place[samples.Lower[i]];
    samples.Upper[i] = place[samples.Upper[i]];
  }
  return columns;
}

/// Whether so few of the voxels between the first and the last column are in use that it pays to
/// gather them; otherwise blending all between is quicker.
inline bool IsSparse(const std::vector<int>& columns)
{
  const int worthwhile = 4;
  return !columns.empty() &&
    columns.back() - columns.front() + 1 > worthwhile * static_cast<int>(columns.size());
}

/// Let all voxels from the first to the last column be columns.
inline void FillGaps(std::vector<int>& columns, AxisSamples& samples)
{
  if (columns.empty() || columns.back() - columns.front() + 1 == static_cast<int>(columns.size()))
  {
    return;
  }
  const int first = columns.front();
  for (std::size_t i = 0; i < samples.Lower.size(); ++i)
  {
    samples.Lower[i] = columns[samples.Lower[i]] - first;
    samples.Upper[i] = columns[samples.Upper[i]] - first;
  }
  const int last = columns.back();
  columns.resize(last - first + 1);
  std::iota(columns.begin(), columns.end(), first);
}

/// The up to four lines of voxels that surround a row of pixels, with their weights.
template <typename T>
struct LineBlend
{
  const T* Lines[4] = {};
  double Weights[4] = {};
  int Count = 0;

  void Add(const T* line, double weight)
  {
    this->Lines[this->Count] = line;
    this->Weights[this->Count] = weight;
    ++this->Count;
  }
};

/// The weighted sums of the lines by column. Values of 16 and weights of 32 binary digits leave
/// nothing to round, so neither the order of the sum nor a left out zero can be seen in the result.
template <int Count, typename T>
ZV_SLICE_INLINE void SumLines(const LineBlend<T>& blend, int numberOfColumns, double* sums)
{
  for (int column = 0; column < numberOfColumns; ++column)
  {
    double sum = blend.Weights[0] * blend.Lines[0][column];
    for (int line = 1; line < Count; ++line)
    {
      sum += blend.Weights[line] * blend.Lines[line][column];
    }
    sums[column] = sum;
  }
}

/// Consecutive pixels between consecutive columns: pixel i lies between columns i + Shift and
/// i + Shift + 1.
struct Stretch
{
  int First;
  int End; // one past the last pixel
  int Shift;
};

/// Cut a row into stretches. A pixel on the last column, which has no further neighbour to give no
/// weight to, is in none, and nor is one whose neighbours are the same column at a face. A row of
/// short stretches, as of a coarse slice, has none: they would not pay.
inline std::vector<Stretch> ListStretches(const AxisSamples& across, int numberOfColumns)
{
  const std::size_t worthwhileLength = 4;
  const std::size_t mostStretches = across.Lower.size() / worthwhileLength;
  std::vector<Stretch> stretches;
  const int count = static_cast<int>(across.Lower.size());
  for (int i = 0; i < count; ++i)
  {
    const int lower = across.Lower[i];
    const bool fits =
      lower + 1 < numberOfColumns && (across.Upper[i] == lower + 1 || across.Fraction[i] == 0.0);
    if (!fits)
    {
      continue;
    }
    if (!stretches.empty() && stretches.back().End == i && stretches.back().Shift == lower - i)
    {
      ++stretches.back().End;
    }
    else if (stretches.size() == mostStretches)
    {
      return {};
    }
    else
    {
      stretches.push_back({ i, i + 1, lower - i });
    }
  }
  return stretches;
}

/// What a row of blended pixels is made from.
struct RowWeights
{
  const int* Lower;
  const int* Upper;
  const double* Fraction;
  const double* Complement;
  const double* Sums; // by column

  template <typename T>
  ZV_SLICE_INLINE void WriteSingly(int first, int end, T* row) const
  {
    for (int i = first; i < end; ++i)
    {
      row[i] = RoundToScalar<T>(this->Complement[i] * this->Sums[this->Lower[i]] +
        this->Fraction[i] * this->Sums[this->Upper[i]]);
    }
  }

  template <typename T>
  ZV_SLICE_INLINE void WriteStretch(const Stretch& stretch, T* row) const
  {
    const double* const sums = this->Sums + stretch.Shift;
    for (int i = stretch.First; i < stretch.End; ++i)
    {
      row[i] = RoundToScalar<T>(this->Complement[i] * sums[i] + this->Fraction[i] * sums[i + 1]);
    }
  }
};

/// The work of a row, put into each of the functions made for a kind of processor.
template <typename T>
ZV_SLICE_INLINE void BlendRow(const LineBlend<T>& blend, int numberOfColumns, double* sums,
  const RowWeights& weights, const Stretch* stretches, int numberOfStretches, int width, T* row)
{
  switch (blend.Count)
  {
    case 1:
      SumLines<1>(blend, numberOfColumns, sums);
      break;
    case 2:
      SumLines<2>(blend, numberOfColumns, sums);
      break;
    default:
      SumLines<4>(blend, numberOfColumns, sums);
      break;
  }
  int done = 0;
  for (int i = 0; i < numberOfStretches; ++i)
  {
    weights.WriteSingly(done, stretches[i].First, row);
    weights.WriteStretch(stretches[i], row);
    done = stretches[i].End;
  }
  weights.WriteSingly(done, width, row);
}

template <typename T>
void BlendRowAnywhere(const LineBlend<T>& blend, int numberOfColumns, double* sums,
  const RowWeights& weights, const Stretch* stretches, int numberOfStretches, int width, T* row)
{
  BlendRow(blend, numberOfColumns, sums, weights, stretches, numberOfStretches, width, row);
}

#ifdef ZV_SLICE_WIDE
// Multiplications and additions stay apart, so that the bytes are those of any other processor.
template <typename T>
ZV_SLICE_WIDE void BlendRowWidely(const LineBlend<T>& blend, int numberOfColumns, double* sums,
  const RowWeights& weights, const Stretch* stretches, int numberOfStretches, int width, T* row)
{
  BlendRow(blend, numberOfColumns, sums, weights, stretches, numberOfStretches, width, row);
}
#endif

template <typename T>
using RowBlender = void (*)(
  const LineBlend<T>&, int, double*, const RowWeights&, const Stretch*, int, int, T*);

/// Whether this processor has the registers for which the wide loops are made.
inline bool HasWideRegisters()
{
#ifdef ZV_SLICE_WIDE
  return __builtin_cpu_supports("avx2") != 0;
#else
  return false;
#endif
}

/// False lets all processors run the portable loops. Read by several threads.
inline std::atomic<bool> AreWideLoopsAllowed{ true };

inline bool MayRunWideLoops()
{
  return AreWideLoopsAllowed && HasWideRegisters();
}

/// The quickest way that is allowed on the processor at hand.
template <typename T>
RowBlender<T> ChooseRowBlender()
{
#ifdef ZV_SLICE_WIDE
  if (MayRunWideLoops())
  {
    return &BlendRowWidely<T>;
  }
#endif
  return &BlendRowAnywhere<T>;
}

/// The voxels that a few rows of pixels need, copied so that those of a line lie side by side. A
/// plane along which no voxels are neighbours in memory would otherwise fetch a cache line for
/// every voxel of every row.
template <typename T>
class LineTile
{
public:
  static constexpr int RowsPerTile = 32;

  /// Copy the lines \a ups, counted along the axis with the step \a upStep, of what starts at
  /// \a plane.
  void Fill(const T* plane, const std::vector<int>& columns, std::ptrdiff_t columnStep,
    const std::vector<int>& ups, std::ptrdiff_t upStep)
  {
    const int width = static_cast<int>(columns.size());
    const int height = static_cast<int>(ups.size());
    // Lines a power of two apart would fight for the same places in the cache.
    this->Pitch = width + 64 / sizeof(T);
    this->Voxels.resize(this->Pitch * height);
    if (upStep == 1)
    {
      for (int column = 0; column < width; ++column)
      {
        const T* const from = plane + columns[column] * columnStep;
        T* const to = this->Voxels.data() + column;
        for (int line = 0; line < height; ++line)
        {
          to[line * this->Pitch] = from[ups[line]];
        }
      }
      return;
    }
    for (int line = 0; line < height; ++line)
    {
      const T* const from = plane + ups[line] * upStep;
      T* const to = this->Voxels.data() + line * this->Pitch;
      for (int column = 0; column < width; ++column)
      {
        to[column] = from[columns[column] * columnStep];
      }
    }
  }

  const T* GetLine(int line) const { return this->Voxels.data() + line * this->Pitch; }

private:
  std::vector<T> Voxels;
  std::ptrdiff_t Pitch = 0;
};

/// The place of a voxel in a list, appended if it is not among the latest; what lies further back
/// may come twice.
inline int PlaceAmongLatest(std::vector<int>& list, int voxel)
{
  const int count = static_cast<int>(list.size());
  for (int i = count - 1; i >= std::max(count - 4, 0); --i)
  {
    if (list[i] == voxel)
    {
      return i;
    }
  }
  list.push_back(voxel);
  return count;
}

/// Consecutive pixels that show consecutive voxels of a line.
struct Run
{
  std::ptrdiff_t Offset; // of the first voxel
  int Length;
};

inline std::vector<Run> ListRuns(const std::vector<int>& voxels, std::ptrdiff_t step)
{
  std::vector<Run> runs;
  for (const int voxel : voxels)
  {
    const std::ptrdiff_t offset = voxel * step;
    if (!runs.empty() && offset == runs.back().Offset + runs.back().Length)
    {
      ++runs.back().Length;
    }
    else
    {
      runs.push_back({ offset, 1 });
    }
  }
  return runs;
}

/// Copy voxels of a line to a row of pixels, run by run where the runs are worth it.
template <typename T>
void CopyVoxels(const T* line, const std::vector<int>& voxels, std::ptrdiff_t step,
  const std::vector<Run>& runs, T* row)
{
  const std::size_t worthwhileLength = 8;
  const std::size_t count = voxels.size();
  if (runs.size() * worthwhileLength > count)
  {
    for (std::size_t i = 0; i < count; ++i)
    {
      row[i] = line[voxels[i] * step];
    }
    return;
  }
  for (const Run& run : runs)
  {
    row = std::copy_n(line + run.Offset, run.Length, row);
  }
}

/// A slice whose pixel rows and columns run along axes of the volume.
template <typename T>
class AlignedSlice
{
public:
  AlignedSlice(const SliceJob<T>& job, bool linear)
    : Job(job)
    , Linear(linear)
    , AxisAcross(FindOnlyAxis(job.AlongX))
    , AxisUp(FindOnlyAxis(job.AlongY))
    , AxisDepth(3 - AxisAcross - AxisUp)
  {
    this->Across = SampleAxis(job, this->AxisAcross, { job.OutputExtent[0], job.OutputExtent[1] },
      job.AlongX[this->AxisAcross], linear);
    this->Up = SampleAxis(job, this->AxisUp, { job.OutputExtent[2], job.OutputExtent[3] },
      job.AlongY[this->AxisUp], linear);
    this->Depth = SampleAxis(job, this->AxisDepth, { 0, 0 }, 0.0, linear);
    if (!linear)
    {
      this->Runs = ListRuns(this->Across.Lower, job.InputStep[this->AxisAcross]);
      return;
    }
    this->Columns = ListColumns(this->Across, this->GetNumberOfVoxels(this->AxisAcross));
    if (job.InputStep[this->AxisAcross] == 1 && !IsSparse(this->Columns))
    {
      FillGaps(this->Columns, this->Across);
    }
    this->Sums.resize(this->Columns.size());
    this->Stretches = ListStretches(this->Across, static_cast<int>(this->Columns.size()));
    this->Blender = ChooseRowBlender<T>();
    this->HasTiles = job.InputStep[this->AxisAcross] != 1 || IsSparse(this->Columns);
  }

  void Write()
  {
    const SliceJob<T>& job = this->Job;
    const bool hit = !this->Across.Inside.IsEmpty() && !this->Depth.Inside.IsEmpty();
    for (int y = job.OutputExtent[2]; y <= job.OutputExtent[3]; ++y)
    {
      T* const row = job.Output + (y - job.OutputExtent[2]) * job.OutputRowStep;
      const bool inside = hit && y >= this->Up.Inside.First && y <= this->Up.Inside.Last;
      FillOutside(job, row, inside ? this->Across.Inside : Span{ 0, -1 });
      if (inside)
      {
        this->WriteRow(
          y - this->Up.Inside.First, row + (this->Across.Inside.First - job.OutputExtent[0]));
      }
    }
  }

private:
  int GetNumberOfVoxels(int axis) const
  {
    return this->Job.InputExtent[2 * axis + 1] - this->Job.InputExtent[2 * axis] + 1;
  }

  void WriteRow(int y, T* row)
  {
    if (this->Linear)
    {
      this->WriteLinearRow(y, row);
    }
    else if (y > 0 && this->Up.Lower[y] == this->Up.Lower[y - 1])
    {
      std::copy_n(row - this->Job.OutputRowStep, this->Across.Lower.size(), row);
    }
    else
    {
      CopyVoxels(this->GetLine(this->Up.Lower[y], this->Depth.Lower[0]), this->Across.Lower,
        this->Job.InputStep[this->AxisAcross], this->Runs, row);
    }
  }

  const T* GetLine(int up, int depth) const
  {
    return this->Job.Input + up * this->Job.InputStep[this->AxisUp] +
      depth * this->Job.InputStep[this->AxisDepth];
  }

  void WriteLinearRow(int y, T* row)
  {
    if (this->HasTiles && y >= this->TileEnd)
    {
      this->FillTiles(y);
    }
    const RowWeights weights{ this->Across.Lower.data(), this->Across.Upper.data(),
      this->Across.Fraction.data(), this->Across.Complement.data(), this->Sums.data() };
    this->Blender(this->GetBlend(y), static_cast<int>(this->Columns.size()), this->Sums.data(),
      weights, this->Stretches.data(), static_cast<int>(this->Stretches.size()),
      static_cast<int>(this->Across.Lower.size()), row);
  }

  /// Copy the voxels of the rows from y on.
  void FillTiles(int y)
  {
    this->TileFirst = y;
    this->TileEnd = std::min(y + LineTile<T>::RowsPerTile, static_cast<int>(this->Up.Lower.size()));
    this->TileLines.clear();
    for (int i = y; i < this->TileEnd; ++i)
    {
      this->TileLower[i - y] = PlaceAmongLatest(this->TileLines, this->Up.Lower[i]);
      this->TileUpper[i - y] = PlaceAmongLatest(this->TileLines, this->Up.Upper[i]);
    }
    const std::ptrdiff_t columnStep = this->Job.InputStep[this->AxisAcross];
    const std::ptrdiff_t upStep = this->Job.InputStep[this->AxisUp];
    this->LowerTile.Fill(
      this->GetLine(0, this->Depth.Lower[0]), this->Columns, columnStep, this->TileLines, upStep);
    if (this->Depth.Fraction[0] > 0.0)
    {
      this->UpperTile.Fill(
        this->GetLine(0, this->Depth.Upper[0]), this->Columns, columnStep, this->TileLines, upStep);
    }
  }

  /// The line of columns below or above a row of pixels, in the nearer or further plane.
  const T* GetColumnLine(int y, bool upper, bool further) const
  {
    if (this->HasTiles)
    {
      const int* const lines = upper ? this->TileUpper : this->TileLower;
      return (further ? this->UpperTile : this->LowerTile).GetLine(lines[y - this->TileFirst]);
    }
    const int up = upper ? this->Up.Upper[y] : this->Up.Lower[y];
    return this->GetLine(up, further ? this->Depth.Upper[0] : this->Depth.Lower[0]) +
      this->Columns.front();
  }

  LineBlend<T> GetBlend(int y) const
  {
    LineBlend<T> blend;
    for (const bool upper : { false, true })
    {
      const double weight = upper ? this->Up.Fraction[y] : this->Up.Complement[y];
      for (const bool further : { false, true })
      {
        const double share = further ? this->Depth.Fraction[0] : this->Depth.Complement[0];
        if (weight * share > 0.0)
        {
          blend.Add(this->GetColumnLine(y, upper, further), weight * share);
        }
      }
    }
    return blend;
  }

  const SliceJob<T>& Job;
  const bool Linear;
  const int AxisAcross;
  const int AxisUp;
  const int AxisDepth;
  AxisSamples Across;
  AxisSamples Up;
  AxisSamples Depth;
  std::vector<int> Columns; // the voxels across that a linear slice needs
  std::vector<double> Sums; // by column, for the row being written
  std::vector<Stretch> Stretches;
  RowBlender<T> Blender = nullptr;
  bool HasTiles = false; // whether the voxels of a line lie apart
  LineTile<T> LowerTile;
  LineTile<T> UpperTile;
  std::vector<int> TileLines;              // the voxels up whose lines the tiles hold
  int TileLower[LineTile<T>::RowsPerTile]; // by row of the tile, the line below it
  int TileUpper[LineTile<T>::RowsPerTile]; // and above it
  int TileFirst = 0;
  int TileEnd = 0;
  std::vector<Run> Runs; // of a nearest slice
};

// ---------------------------------------------------------------------------------------------
// Oblique slices: every pixel lies in a cell of its own.

/// The coordinates of one row of pixels, added up in the order in which the stock filter does.
struct RowLine
{
  double Start[3];
  double Step[3];

  template <typename T>
  RowLine(const SliceJob<T>& job, int y)
  {
    for (int axis = 0; axis < 3; ++axis)
    {
      this->Start[axis] = job.Origin[axis] + y * job.AlongY[axis];
      this->Step[axis] = job.AlongX[axis];
    }
  }

  ZV_SLICE_INLINE double At(int axis, int x) const
  {
    return this->Start[axis] + x * this->Step[axis];
  }
};

template <typename T>
Span FindPixelsBetween(
  const SliceJob<T>& job, const RowLine& line, Span pixels, double belowFirst, double beyondLast)
{
  for (int axis = 0; axis < 3; ++axis)
  {
    pixels = FindBetween(pixels, line.Start[axis], line.Step[axis],
      job.InputExtent[2 * axis] - belowFirst, job.InputExtent[2 * axis + 1] + beyondLast);
  }
  return pixels;
}

template <typename T>
void WriteNearestPixels(const SliceJob<T>& job, const RowLine& line, Span pixels, T* row)
{
  const T* const input = job.Input - job.InputExtent[0] * job.InputStep[0] -
    job.InputExtent[2] * job.InputStep[1] - job.InputExtent[4] * job.InputStep[2];
  for (int x = pixels.First; x <= pixels.Last; ++x)
  {
    row[x - job.OutputExtent[0]] = input[RoundToVoxel(line.At(0, x)) * job.InputStep[0] +
      RoundToVoxel(line.At(1, x)) * job.InputStep[1] +
      RoundToVoxel(line.At(2, x)) * job.InputStep[2]];
  }
}

/// One pixel of which some neighbours may lie outside the volume: they are those at its face.
template <typename T>
T SampleAtFace(const SliceJob<T>& job, const RowLine& line, int x)
{
  std::ptrdiff_t offset[3][2];
  double weight[3][2];
  for (int axis = 0; axis < 3; ++axis)
  {
    const int first = job.InputExtent[2 * axis];
    const int last = job.InputExtent[2 * axis + 1];
    const std::uint64_t position = ToFixedPoint(line.At(axis, x));
    const int lower = WholePart(position);
    weight[axis][1] = FractionPart(position);
    weight[axis][0] = 1.0 - weight[axis][1];
    offset[axis][0] = (std::clamp(lower, first, last) - first) * job.InputStep[axis];
    offset[axis][1] = (std::clamp(lower + 1, first, last) - first) * job.InputStep[axis];
  }
  double sums[2] = {};
  for (int corner = 0; corner < 8; ++corner)
  {
    const int i = corner & 1;
    const int j = (corner >> 1) & 1;
    const int k = corner >> 2;
    sums[i] += weight[1][j] * weight[2][k] * job.Input[offset[0][i] + offset[1][j] + offset[2][k]];
  }
  return RoundToScalar<T>(weight[0][0] * sums[0] + weight[0][1] * sums[1]);
}

/// The bits of a number of type From as one of type To.
template <typename To, typename From>
ZV_SLICE_INLINE To CopyBits(From from)
{
  static_assert(sizeof(To) == sizeof(From), "bits would be lost or made up");
  To to;
  std::memcpy(&to, &from, sizeof(to));
  return to;
}

/// A few consecutive pixels all of whose eight neighbours lie in the volume. Where they lie, which
/// voxels surround them and what these blend to is computed in a loop each, for the fetching of
/// voxels from all over the memory is all that keeps a compiler from computing several pixels at
/// once.
template <typename T>
class PixelBlock
{
public:
  static constexpr int Capacity = 64;

  /// Find the cells of the pixels from \a first on.
  ZV_SLICE_INLINE void Place(const SliceJob<T>& job, const RowLine& line, int first, int count)
  {
    // Whole numbers that are added to one of this size lie in its lower digits.
    const double digits = 6755399441055744.0; // 1.5 * 2^52
    const auto digitsBits = CopyBits<std::int64_t>(digits);
    const double stepY = static_cast<double>(job.InputStep[1]);
    const double stepZ = static_cast<double>(job.InputStep[2]);
    const double firstX = job.InputExtent[0];
    const double firstY = job.InputExtent[2];
    const double firstZ = job.InputExtent[4];
    for (int i = 0; i < count; ++i)
    {
      const double x = Split(line.At(0, first + i), this->Fractions[0][i]) - firstX;
      const double y = Split(line.At(1, first + i), this->Fractions[1][i]) - firstY;
      const double z = Split(line.At(2, first + i), this->Fractions[2][i]) - firstZ;
      const double offset = x + y * stepY + z * stepZ;
      this->Offsets[i] = CopyBits<std::int64_t>(digits + offset) - digitsBits;
    }
  }

  /// Copy the voxels around the pixels.
  ZV_SLICE_INLINE void Fetch(const SliceJob<T>& job, int count)
  {
    const std::ptrdiff_t stepY = job.InputStep[1];
    const std::ptrdiff_t stepZ = job.InputStep[2];
    for (int i = 0; i < count; ++i)
    {
      const T* const voxel = job.Input + this->Offsets[i];
      std::memcpy(this->Pairs[0][i], voxel, sizeof(T[2]));
      std::memcpy(this->Pairs[1][i], voxel + stepY, sizeof(T[2]));
      std::memcpy(this->Pairs[2][i], voxel + stepZ, sizeof(T[2]));
      std::memcpy(this->Pairs[3][i], voxel + stepY + stepZ, sizeof(T[2]));
    }
  }

  ZV_SLICE_INLINE void Blend(int count, T* pixels) const
  {
    for (int i = 0; i < count; ++i)
    {
      const double fx = this->Fractions[0][i];
      const double fy = this->Fractions[1][i];
      const double fz = this->Fractions[2][i];
      const double weights[4] = { (1.0 - fy) * (1.0 - fz), fy * (1.0 - fz), (1.0 - fy) * fz,
        fy * fz };
      double lower = 0.0;
      double upper = 0.0;
      for (int pair = 0; pair < 4; ++pair)
      {
        lower += weights[pair] * this->Pairs[pair][i][0];
        upper += weights[pair] * this->Pairs[pair][i][1];
      }
      pixels[i] = RoundToScalar<T>((1.0 - fx) * lower + fx * upper);
    }
  }

private:
  /// Split a coordinate into a whole number, which is returned, and a fraction.
  static ZV_SLICE_INLINE double Split(double coordinate, double& fraction)
  {
    // The last sixteen digits of numbers of this size are a fraction.
    const double digits = 68719476736.0; // 2^36
    const double biased = coordinate + FixedPointBias;
    const std::uint64_t bits = CopyBits<std::uint64_t>(biased) & 0xFFFF;
    fraction = CopyBits<double>(CopyBits<std::uint64_t>(digits) | bits) - digits;
    return biased - FixedPointBias - fraction;
  }

  double Fractions[3][Capacity];
  std::int64_t Offsets[Capacity]; // of the lowest neighbour, from the first voxel of the volume
  T Pairs[4][Capacity][2];        // neighbours along x, of the four lines around a pixel
};

/// Pixels all of whose eight neighbours lie in the volume.
template <typename T>
ZV_SLICE_INLINE void WriteInnerPixels(
  const SliceJob<T>& job, const RowLine& line, Span pixels, T* row)
{
  PixelBlock<T> block;
  for (int first = pixels.First; first <= pixels.Last; first += PixelBlock<T>::Capacity)
  {
    const int count = std::min(pixels.Last - first + 1, PixelBlock<T>::Capacity);
    block.Place(job, line, first, count);
    block.Fetch(job, count);
    block.Blend(count, row + (first - job.OutputExtent[0]));
  }
}

template <typename T>
void WriteInnerPixelsAnywhere(const SliceJob<T>& job, const RowLine& line, Span pixels, T* row)
{
  WriteInnerPixels(job, line, pixels, row);
}

#ifdef ZV_SLICE_WIDE
template <typename T>
ZV_SLICE_WIDE void WriteInnerPixelsWidely(
  const SliceJob<T>& job, const RowLine& line, Span pixels, T* row)
{
  WriteInnerPixels(job, line, pixels, row);
}
#endif

template <typename T>
using InnerPixelsWriter = void (*)(const SliceJob<T>&, const RowLine&, Span, T*);

/// The quickest way that is allowed on the processor at hand.
template <typename T>
InnerPixelsWriter<T> ChooseInnerPixelsWriter()
{
#ifdef ZV_SLICE_WIDE
  if (MayRunWideLoops())
  {
    return &WriteInnerPixelsWidely<T>;
  }
#endif
  return &WriteInnerPixelsAnywhere<T>;
}

template <typename T>
void WriteObliqueRow(
  const SliceJob<T>& job, int y, bool linear, InnerPixelsWriter<T> writeInnerPixels, T* row)
{
  const RowLine line(job, y);
  Span inside{ job.OutputExtent[0], job.OutputExtent[1] };
  if (!linear)
  {
    for (int axis = 0; axis < 3; ++axis)
    {
      inside = FindNearestBetween(inside, line.Start[axis], line.Step[axis],
        job.InputExtent[2 * axis], job.InputExtent[2 * axis + 1]);
    }
    FillOutside(job, row, inside);
    return WriteNearestPixels(job, line, inside, row);
  }
  inside = FindPixelsBetween(job, line, inside, job.Border, job.Border);
  FillOutside(job, row, inside);
  Span inner = FindPixelsBetween(job, line, inside, 0.0, -FractionUnit);
  if (inner.IsEmpty())
  {
    inner = { inside.Last + 1, inside.Last };
  }
  for (int x = inside.First; x < inner.First; ++x)
  {
    row[x - job.OutputExtent[0]] = SampleAtFace(job, line, x);
  }
  writeInnerPixels(job, line, inner, row);
  for (int x = inner.Last + 1; x <= inside.Last; ++x)
  {
    row[x - job.OutputExtent[0]] = SampleAtFace(job, line, x);
  }
}

template <typename T>
void WriteObliqueSlice(const SliceJob<T>& job, bool linear)
{
  const InnerPixelsWriter<T> writeInnerPixels = ChooseInnerPixelsWriter<T>();
  for (int y = job.OutputExtent[2]; y <= job.OutputExtent[3]; ++y)
  {
    WriteObliqueRow(
      job, y, linear, writeInnerPixels, job.Output + (y - job.OutputExtent[2]) * job.OutputRowStep);
  }
}
}

#endif
