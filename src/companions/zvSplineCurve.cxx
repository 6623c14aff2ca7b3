#include "zvSplineCurve.h"

#include "vtkMath.h"
#include "vtkParametricSpline.h"
#include "vtkPoints.h"

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

bool HasPlace(const double point[3])
{
  // A NaN fails the comparison.
  return std::all_of(point, point + 3, [](double x) { return std::abs(x) <= LargestCoordinate; });
}

double Distance(const double a[3], const double b[3])
{
  return std::sqrt(vtkMath::Distance2BetweenPoints(a, b));
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

zvSplineCurve::zvSplineCurve()
{
  this->Knots->SetDataTypeToDouble();
  this->Spline->SetPoints(this->Knots);
}

zvSplineCurve::~zvSplineCurve() = default;

void zvSplineCurve::Fit(vtkPoints* handles, bool closed)
{
  this->Closed = closed;
  this->LengthToEnd.clear();
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
  this->Knots->Reset();
  this->HandleOfKnot.clear();
  this->ChordsToKnot.clear();
  std::fill_n(this->First, 3, 0.0);
  const vtkIdType count = handles ? handles->GetNumberOfPoints() : 0;
  for (vtkIdType i = 0; i < count; ++i)
  {
    double point[3];
    handles->GetPoint(i, point);
    // Should no handle have a place, the curve has none either, and nothing is drawn at the origin.
    if (i == 0)
    {
      std::copy_n(point, 3, this->First);
    }
    if (HasPlace(point))
    {
      this->AddKnot(point, static_cast<int>(i));
    }
  }
}

void zvSplineCurve::AddKnot(const double point[3], int handle)
{
  if (this->HandleOfKnot.empty())
  {
    std::copy_n(point, 3, this->First);
    this->Knots->InsertNextPoint(point);
    this->HandleOfKnot.push_back(handle);
    this->ChordsToKnot.push_back(0.0);
    return;
  }
  double last[3];
  this->Knots->GetPoint(this->Knots->GetNumberOfPoints() - 1, last);
  const double chords = this->ChordsToKnot.back() + Distance(last, point);
  if (chords > this->ChordsToKnot.back())
  {
    this->Knots->InsertNextPoint(point);
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
  while (this->HandleOfKnot.size() > 1)
  {
    double last[3];
    this->Knots->GetPoint(this->Knots->GetNumberOfPoints() - 1, last);
    const double chords = this->ChordsToKnot.back() + Distance(last, this->First);
    if (chords > this->ChordsToKnot.back())
    {
      this->ChordsToKnot.push_back(chords);
      return;
    }
    this->Knots->SetNumberOfPoints(this->Knots->GetNumberOfPoints() - 1);
    this->HandleOfKnot.pop_back();
    this->ChordsToKnot.pop_back();
  }
}

void zvSplineCurve::FitSpline()
{
  this->Spline->SetClosed(this->Closed ? 1 : 0);
  this->Spline->Modified();
}

void zvSplineCurve::Evaluate(double u, double point[3])
{
  const bool isInside = u > 0.0 && (u < 1.0 || !this->Closed);
  if (isInside && this->HandleOfKnot.size() > 1)
  {
    this->EvaluateSpline(u, point);
  }
  else
  {
    std::copy_n(this->First, 3, point);
  }
}

void zvSplineCurve::EvaluateSpline(double u, double point[3])
{
  double parameters[3] = { u, 0.0, 0.0 };
  double derivatives[9];
  this->Spline->Evaluate(parameters, point, derivatives);
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
