#include "zvSplineCurve.h"

#include "vtkMath.h"
#include "vtkPoints.h"
#include "zvKnotSlopes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>

namespace
{
// Beyond this the squares in a length overflow; no coordinate in millimetres comes near it.
constexpr double LargestCoordinate = 1e100;

// Of the whole length; far below what a host can tell apart, and reached by a few evaluations.
constexpr double LengthTolerance = 1e-10;

// Enough halvings to isolate a cusp, where the speed is 0, to the last digit.
constexpr int MostHalvings = 40;

bool HasPlace(const std::array<double, 3>& point)
{
  // A NaN fails the comparison.
  return std::all_of(
    point.begin(), point.end(), [](double x) { return std::abs(x) <= LargestCoordinate; });
}

double Distance(const std::array<double, 3>& a, const std::array<double, 3>& b)
{
  return std::sqrt(vtkMath::Distance2BetweenPoints(a.data(), b.data()));
}

// The velocity of a cubic segment, with the time running from 0 to 1: A t^2 + B t + C.
struct Velocity
{
  std::array<double, 3> A;
  std::array<double, 3> B;
  std::array<double, 3> C;

  // From four points of the segment at equal steps of time.
  explicit Velocity(const double (&p)[4][3])
  {
    for (int i = 0; i < 3; ++i)
    {
      const double d1 = p[1][i] - p[0][i];
      const double d2 = p[2][i] - p[0][i];
      const double d3 = p[3][i] - p[0][i];
      this->A[i] = 13.5 * d3 - 40.5 * d2 + 40.5 * d1;
      this->B[i] = -9.0 * d3 + 36.0 * d2 - 45.0 * d1;
      this->C[i] = d3 - 4.5 * d2 + 9.0 * d1;
    }
  }

  double Speed(double t) const
  {
    double v[3];
    for (int i = 0; i < 3; ++i)
    {
      v[i] = (this->A[i] * t + this->B[i]) * t + this->C[i];
    }
    return vtkMath::Norm(v);
  }

  // Five-point Gauss rule.
  double Estimate(double from, double to) const
  {
    const double middle = 0.5 * (from + to);
    const double half = 0.5 * (to - from);
    const double near = 0.53846931010568309 * half;
    const double far = 0.90617984593866399 * half;
    return half *
      (0.56888888888888889 * this->Speed(middle) +
        0.47862867049936647 * (this->Speed(middle - near) + this->Speed(middle + near)) +
        0.23692688505618909 * (this->Speed(middle - far) + this->Speed(middle + far)));
  }

  double Length(double from, double to, double estimate, double tolerance, int halvings) const
  {
    const double middle = 0.5 * (from + to);
    const double left = this->Estimate(from, middle);
    const double right = this->Estimate(middle, to);
    if (halvings == 0 || std::abs(left + right - estimate) <= tolerance)
    {
      return left + right;
    }
    return this->Length(from, middle, left, tolerance, halvings - 1) +
      this->Length(middle, to, right, tolerance, halvings - 1);
  }
};
}

void zvSplineCurve::Fit(vtkPoints* handles, bool closed)
{
  this->Closed = closed;
  this->LengthToEnd.clear();
  this->Slopes.clear();
  this->ReadHandles(handles);
  if (closed)
  {
    this->DropKnotsAtTheStart();
  }
  if (this->HandleOfKnot.size() > 1)
  {
    this->FitSpline();
  }
}

void zvSplineCurve::ReadHandles(vtkPoints* handles)
{
  this->Knots.clear();
  this->HandleOfKnot.clear();
  this->ChordsToKnot.clear();
  this->First = {};
  const vtkIdType count = handles ? handles->GetNumberOfPoints() : 0;
  for (vtkIdType i = 0; i < count; ++i)
  {
    Point point;
    handles->GetPoint(i, point.data());
    // Should no handle have a place, the curve has none either, and nothing is drawn at the origin.
    if (i == 0)
    {
      this->First = point;
    }
    if (HasPlace(point))
    {
      this->AddKnot(point, static_cast<int>(i));
    }
  }
}

void zvSplineCurve::AddKnot(const Point& point, int handle)
{
  if (this->Knots.empty())
  {
    this->First = point;
    this->Knots.push_back(point);
    this->HandleOfKnot.push_back(handle);
    this->ChordsToKnot.push_back(0.0);
    return;
  }
  const double chords = this->ChordsToKnot.back() + Distance(this->Knots.back(), point);
  if (chords > this->ChordsToKnot.back())
  {
    this->Knots.push_back(point);
    this->HandleOfKnot.push_back(handle);
    this->ChordsToKnot.push_back(chords);
  }
  else
  {
    this->HandleOfKnot.back() = handle;
  }
}

void zvSplineCurve::DropKnotsAtTheStart()
{
  while (this->Knots.size() > 1)
  {
    const double chords = this->ChordsToKnot.back() + Distance(this->Knots.back(), this->First);
    if (chords > this->ChordsToKnot.back())
    {
      this->Knots.push_back(this->First);
      this->ChordsToKnot.push_back(chords);
      return;
    }
    this->Knots.pop_back();
    this->HandleOfKnot.pop_back();
    this->ChordsToKnot.pop_back();
  }
}

void zvSplineCurve::FitSpline()
{
  this->Slopes = this->Closed ? zvKnotSlopes::OfClosedCurve(this->ChordsToKnot, this->Knots)
                              : zvKnotSlopes::OfOpenCurve(this->ChordsToKnot, this->Knots);
  this->EnterSegment(0);
}

void zvSplineCurve::Evaluate(double u, double point[3])
{
  if (!(u > 0.0) || this->Slopes.empty())
  {
    std::copy_n(this->First.data(), 3, point);
  }
  else if (u < 1.0)
  {
    this->EvaluateSpline(u, point);
  }
  else
  {
    std::copy_n(this->Knots.back().data(), 3, point);
  }
}

void zvSplineCurve::EvaluateSpline(double u, double point[3])
{
  const double chords = u * this->ChordsToKnot.back();
  if (!(chords >= this->Kept.Begin && chords < this->Kept.End))
  {
    this->EnterSegment(this->FindSegment(chords));
  }
  const double t = (chords - this->Kept.Begin) * this->Kept.PerChord;
  const std::array<Point, 4>& terms = this->Kept.Terms;
  for (int i = 0; i < 3; ++i)
  {
    point[i] = terms[0][i] + t * (terms[1][i] + t * (terms[2][i] + t * terms[3][i]));
  }
}

std::size_t zvSplineCurve::FindSegment(double chords) const
{
  // Who samples the curve comes to the segment behind the kept one.
  const std::size_t next = this->Kept.Index + 1;
  if (next + 1 < this->ChordsToKnot.size() && chords >= this->ChordsToKnot[next] &&
    chords < this->ChordsToKnot[next + 1])
  {
    return next;
  }
  const auto end = std::prev(this->ChordsToKnot.end());
  const auto knot = std::upper_bound(std::next(this->ChordsToKnot.begin()), end, chords);
  return static_cast<std::size_t>(knot - this->ChordsToKnot.begin()) - 1;
}

void zvSplineCurve::EnterSegment(std::size_t index)
{
  Segment& segment = this->Kept;
  segment.Index = index;
  segment.Begin = this->ChordsToKnot[index];
  segment.End = this->ChordsToKnot[index + 1];
  const double chord = segment.End - segment.Begin;
  segment.PerChord = 1.0 / chord;
  for (int i = 0; i < 3; ++i)
  {
    const double way = this->Knots[index + 1][i] - this->Knots[index][i];
    const double start = chord * this->Slopes[index][i];
    const double stop = chord * this->Slopes[index + 1][i];
    segment.Terms[0][i] = this->Knots[index][i];
    segment.Terms[1][i] = start;
    segment.Terms[2][i] = 3.0 * way - 2.0 * start - stop;
    segment.Terms[3][i] = start + stop - 2.0 * way;
  }
}

double zvSplineCurve::Length()
{
  this->MeasureSegments();
  return this->LengthToEnd.empty() ? 0.0 : this->LengthToEnd.back();
}

int zvSplineCurve::HandleBefore(double length)
{
  if (!(length >= 0.0) || length > this->Length() || this->LengthToEnd.empty())
  {
    return -1;
  }
  const auto end = std::prev(this->LengthToEnd.end());
  const auto segment = std::upper_bound(this->LengthToEnd.begin(), end, length);
  return this->HandleOfKnot[segment - this->LengthToEnd.begin()];
}

void zvSplineCurve::MeasureSegments()
{
  if (!this->LengthToEnd.empty() || this->HandleOfKnot.size() < 2)
  {
    return;
  }
  const std::vector<double>& chords = this->ChordsToKnot;
  const std::size_t segments = chords.size() - 1;
  const double tolerance = LengthTolerance * chords.back() / segments;
  double length = 0.0;
  for (std::size_t i = 0; i < segments; ++i)
  {
    double points[4][3];
    for (int j = 0; j < 4; ++j)
    {
      const double u = (chords[i] + (chords[i + 1] - chords[i]) * j / 3.0) / chords.back();
      this->Evaluate(u, points[j]);
    }
    const Velocity velocity(points);
    length += velocity.Length(0.0, 1.0, velocity.Estimate(0.0, 1.0), tolerance, MostHalvings);
    this->LengthToEnd.push_back(length);
  }
}
