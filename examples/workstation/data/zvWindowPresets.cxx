#include "zvWindowPresets.h"

#include "zvVolume.h"

#include "vtkDataArray.h"
#include "vtkImageData.h"
#include "vtkPointData.h"
#include "vtkSetGet.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace
{
constexpr int Bins = 65536;

// How many voxels lie in each of the equal bins of the scalar range.
struct Histogram
{
  double Low = 0.0;
  double BinWidth = 1.0;
  std::vector<std::int64_t> Counts;

  double PercentileAbove(double low, double part) const;
};

template <class T>
void Count(const T* voxel, vtkIdType count, Histogram& histogram)
{
  const double scale = 1.0 / histogram.BinWidth;
  for (const T* const end = voxel + count; voxel != end; ++voxel)
  {
    const double bin = (static_cast<double>(*voxel) - histogram.Low) * scale;
    if (bin >= 0.0 && bin < Bins)
    {
      ++histogram.Counts[static_cast<std::size_t>(bin)];
    }
  }
}

Histogram MakeHistogram(vtkImageData* image)
{
  Histogram histogram;
  const double* range = image->GetPointData()->GetScalars()->GetFiniteRange(0);
  histogram.Low = range[0];
  // Whole numbers fall into bins of their own where there are enough bins.
  const double span = std::max(range[1] - range[0], 0.0);
  const bool isWhole = image->GetScalarType() != VTK_FLOAT && image->GetScalarType() != VTK_DOUBLE;
  histogram.BinWidth =
    isWhole ? std::max(1.0, std::ceil((span + 1.0) / Bins)) : std::max(span, 1.0e-30) / (Bins - 1);
  histogram.Counts.assign(Bins, 0);
  switch (image->GetScalarType())
  {
    vtkTemplateMacro(Count(static_cast<const VTK_TT*>(image->GetScalarPointer()),
      image->GetNumberOfPoints(), histogram));
  }
  return histogram;
}

// The percentile of the voxels that are not below a value.
double Histogram::PercentileAbove(double low, double part) const
{
  const double firstBin = std::ceil((low - this->Low) / this->BinWidth);
  const std::size_t first = static_cast<std::size_t>(std::min(std::max(firstBin, 0.0), Bins - 1.0));
  std::int64_t all = 0;
  for (std::size_t bin = first; bin < this->Counts.size(); ++bin)
  {
    all += this->Counts[bin];
  }
  const auto wanted = static_cast<std::int64_t>(std::ceil(part * static_cast<double>(all)));
  std::int64_t seen = 0;
  for (std::size_t bin = first; bin < this->Counts.size(); ++bin)
  {
    seen += this->Counts[bin];
    if (seen >= wanted && seen > 0)
    {
      return this->Low + static_cast<double>(bin) * this->BinWidth;
    }
  }
  return this->Low;
}

double MeanOf(const Histogram& histogram)
{
  double sum = 0.0, count = 0.0;
  for (std::size_t bin = 0; bin < histogram.Counts.size(); ++bin)
  {
    sum += static_cast<double>(histogram.Counts[bin]) * static_cast<double>(bin);
    count += static_cast<double>(histogram.Counts[bin]);
  }
  return histogram.Low + (count > 0.0 ? sum / count : 0.0) * histogram.BinWidth;
}

// A volume of one value alone still needs a window that is not empty.
zvWindowValues Between(double low, double high)
{
  return { high > low ? high - low : 1.0, 0.5 * (low + high) };
}

const std::vector<zvWindowPreset>& CtPresets()
{
  static const std::vector<zvWindowPreset> presets = { { "Soft tissue", { 400.0, 40.0 } },
    { "Brain", { 80.0, 40.0 } }, { "Bone", { 2000.0, 500.0 } }, { "Lung", { 1500.0, -600.0 } },
    { "Liver", { 150.0, 60.0 } }, { "Vessels", { 600.0, 200.0 } } };
  return presets;
}
}

std::vector<double> zvWindowPresets::Percentiles(
  vtkImageData* image, const std::vector<double>& parts)
{
  const Histogram histogram = MakeHistogram(image);
  std::vector<double> values;
  for (const double part : parts)
  {
    values.push_back(histogram.PercentileAbove(histogram.Low, part));
  }
  return values;
}

bool zvWindowPresets::LooksLikeCt(const zvVolume& volume)
{
  if (!volume.Modality.empty())
  {
    return volume.Modality == "CT";
  }
  constexpr double air = -900.0, bone = 300.0, highest = 32767.0;
  const double* range = volume.Image->GetScalarRange();
  return range[0] <= air && range[0] >= -4096.0 && range[1] >= bone && range[1] <= highest;
}

std::vector<zvWindowPreset> zvWindowPresets::For(const zvVolume& volume)
{
  const Histogram histogram = MakeHistogram(volume.Image);
  const double* range = volume.Image->GetPointData()->GetScalars()->GetFiniteRange(0);
  const zvWindowPreset usual = { "1 to 99 %",
    Between(histogram.PercentileAbove(histogram.Low, 0.01),
      histogram.PercentileAbove(histogram.Low, 0.99)) };
  const zvWindowPreset full = { "Full range", Between(range[0], range[1]) };
  if (LooksLikeCt(volume))
  {
    std::vector<zvWindowPreset> presets = { usual };
    presets.insert(presets.end(), CtPresets().begin(), CtPresets().end());
    presets.push_back(full);
    return presets;
  }
  // What is brighter than the mean is tissue; bone's and fat's ends of it are left out.
  const double tissue = MeanOf(histogram);
  return { usual, full,
    { "Brain",
      Between(histogram.PercentileAbove(tissue, 0.01), histogram.PercentileAbove(tissue, 0.97)) } };
}
