#include "zvKnotSlopes.h"

#include <cstddef>

namespace
{
using zvKnotSlopes::Vector;

// What the curvature asks of the slopes at a knot and its neighbours:
// Before * previous + 2 * here + After * next = Right. The weights sum to 1, so that elimination
// needs no pivoting.
struct Row
{
  double Before;
  double After;
  Vector Right;

  Row(double timeBefore, double timeAfter, const Vector& previous, const Vector& here,
    const Vector& next)
    : Before(timeAfter / (timeBefore + timeAfter))
    , After(timeBefore / (timeBefore + timeAfter))
  {
    const double rise = 3.0 * this->Before / timeBefore;
    const double fall = 3.0 * this->After / timeAfter;
    for (int i = 0; i < 3; ++i)
    {
      this->Right[i] = rise * (here[i] - previous[i]) + fall * (next[i] - here[i]);
    }
  }
};

// The slopes between the ends: Slopes while those of both ends are 0, and Shares of any other slope
// that both ends have.
struct InnerSlopes
{
  std::vector<Vector> Slopes;
  std::vector<double> Shares;

  InnerSlopes(const std::vector<double>& times, const std::vector<Vector>& knots)
    : Slopes(knots.size(), Vector{})
    , Shares(knots.size(), 1.0)
  {
    // The band is factored once and serves the three coordinates and the shares.
    std::vector<double> ratios(knots.size(), 0.0);
    const std::size_t last = knots.size() - 1;
    for (std::size_t k = 1; k < last; ++k)
    {
      const Row row(
        times[k] - times[k - 1], times[k + 1] - times[k], knots[k - 1], knots[k], knots[k + 1]);
      const double factor = 1.0 / (2.0 - row.Before * ratios[k - 1]);
      ratios[k] = factor * row.After;
      this->Shares[k] = -factor * row.Before * this->Shares[k - 1];
      for (int i = 0; i < 3; ++i)
      {
        this->Slopes[k][i] = factor * (row.Right[i] - row.Before * this->Slopes[k - 1][i]);
      }
    }
    for (std::size_t k = last; k-- > 1;)
    {
      this->Shares[k] -= ratios[k] * this->Shares[k + 1];
      for (int i = 0; i < 3; ++i)
      {
        this->Slopes[k][i] -= ratios[k] * this->Slopes[k + 1][i];
      }
    }
  }
};
}

std::vector<Vector> zvKnotSlopes::OfOpenCurve(
  const std::vector<double>& times, const std::vector<Vector>& knots)
{
  return InnerSlopes(times, knots).Slopes;
}

std::vector<Vector> zvKnotSlopes::OfClosedCurve(
  const std::vector<double>& times, const std::vector<Vector>& knots)
{
  InnerSlopes inner(times, knots);
  const std::size_t last = knots.size() - 1;
  const Row row(
    times[last] - times[last - 1], times[1] - times[0], knots[last - 1], knots[0], knots[1]);
  const double weight = 2.0 + row.Before * inner.Shares[last - 1] + row.After * inner.Shares[1];
  Vector atTheEnds;
  for (int i = 0; i < 3; ++i)
  {
    atTheEnds[i] =
      (row.Right[i] - row.Before * inner.Slopes[last - 1][i] - row.After * inner.Slopes[1][i]) /
      weight;
  }
  for (std::size_t k = 0; k <= last; ++k)
  {
    for (int i = 0; i < 3; ++i)
    {
      inner.Slopes[k][i] += inner.Shares[k] * atTheEnds[i];
    }
  }
  return inner.Slopes;
}
