#include "zvSliceGaps.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

std::string zvSliceGaps::Describe(const std::vector<double>& positions)
{
  if (positions.size() < 3)
  {
    return std::string();
  }
  std::vector<double> steps;
  for (std::size_t i = 1; i < positions.size(); ++i)
  {
    steps.push_back(std::fabs(positions[i] - positions[i - 1]));
  }
  std::vector<double> sorted = steps;
  std::sort(sorted.begin(), sorted.end());
  // The lower middle one: of two steps the shorter is more likely the whole one.
  const double usual = sorted[(sorted.size() - 1) / 2];
  const auto isUneven = [usual](double step) { return std::fabs(step - usual) > 0.01 * usual; };
  const auto first = std::find_if(steps.begin(), steps.end(), isUneven);
  if (first == steps.end())
  {
    return std::string();
  }
  const auto count = std::count_if(steps.begin(), steps.end(), isUneven);
  const std::size_t slice = static_cast<std::size_t>(first - steps.begin()) + 1;
  const double mean =
    std::fabs(positions.back() - positions.front()) / static_cast<double>(steps.size());
  char text[256];
  std::snprintf(text, sizeof(text),
    "The slices are not evenly spaced: %.4g mm as a rule, but %.4g mm between slices %zu and %zu"
    "%s. They are shown %.4g mm apart, so lengths across them are not exact.",
    usual, *first, slice, slice + 1, count > 1 ? " and elsewhere" : "", mean);
  return text;
}
