#ifndef zvContourSmoother_h
#define zvContourSmoother_h

#include "zvContour.h"

/// The internal forces of a contour, taken implicitly: one call moves the points as far as the pull
/// between neighbours (elasticity) and the resistance against bending (stiffness) bring them within
/// a step, however strong these are, without overshooting.
///
/// Both are differences of evenly spaced points, so the matrix to invert is a circulant. Its
/// inverse is one too: a row of weights, made once, with which each point becomes a mean of all.
class zvContourSmoother
{
public:
  zvContourSmoother() = default;
  /// Negative strengths are taken as 0.
  zvContourSmoother(std::size_t count, double elasticity, double stiffness);

  std::size_t GetCount() const { return this->Weights.size(); }
  /// \param contour  of GetCount points.
  zvContour Smooth(const zvContour& contour) const;

private:
  std::vector<double> Weights; // of the neighbour so many points on
};

#endif
