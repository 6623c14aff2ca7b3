#ifndef zvSliceGaps_h
#define zvSliceGaps_h

#include <string>
#include <vector>

/// Tells whether the slices of a series lie at even distances.
namespace zvSliceGaps
{
/// \param positions  where the slices lie along the stack, in millimetres, in their order.
/// \return a sentence that says what is uneven, empty if nothing is. Distances that differ from the
/// usual one, the median, by less than a hundredth of it count as even.
std::string Describe(const std::vector<double>& positions);
}

#endif
