#include "zvActiveContour.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{
constexpr std::size_t LeastPoints = 8;
constexpr double LeastVoxels = 4.0;          // that a contour encloses
constexpr double LeastSpread = 0.02;         // of a tissue, as a part of the slice's contrast
constexpr double TissuePart = 0.8;           // of the values where a contour begins
constexpr double SpreadsInTissuePart = 2.56; // as in a bell curve
constexpr double TissueSharpness = 3.0;      // how suddenly the balloon turns at the tissue's end
constexpr int StepsBetweenLooks = 10;
constexpr double StillDistance = 0.05;  // voxels between two looks
constexpr double BorderDistance = 1e-3; // voxels

double Clamp(double value, double low, double high)
{
  return std::min(std::max(value, low), high);
}

// The contour drawn together towards its centre.
zvContour Scale(const zvContour& contour, double factor)
{
  const zvContourPoint centre = zvContourMath::GetCentre(contour);
  zvContour scaled = contour;
  for (zvContourPoint& point : scaled)
  {
    for (std::size_t a = 0; a < 2; ++a)
    {
      point[a] = centre[a] + factor * (point[a] - centre[a]);
    }
  }
  return scaled;
}
}

void zvActiveContour::SetParameters(const zvContourParameters& parameters)
{
  this->Parameters = parameters;
  this->MakeSmoother();
}

void zvActiveContour::MakeSmoother()
{
  this->Smoother = zvContourSmoother(
    this->Contour.size(), this->Parameters.Elasticity, this->Parameters.Stiffness);
}

zvActiveContour::State zvActiveContour::End(State state, const std::string& message)
{
  this->Now = state;
  this->Message = message;
  return state;
}

zvActiveContour::State zvActiveContour::Begin(
  std::shared_ptr<const zvContourForces> forces, const zvContour& contour, const zvTissue* tissue)
{
  this->Forces = std::move(forces);
  this->Contour = contour;
  if (!this->Forces || this->Forces->IsEmpty())
  {
    return this->End(State::Refused, "The slice has no values.");
  }
  if (!this->Forces->HasEdges())
  {
    return this->End(State::Refused, "The slice is even: there is no edge to go to.");
  }
  if (this->Take(contour) == State::Moving)
  {
    this->MeasureTissue();
    this->Tissue = tissue != nullptr ? *tissue : this->Tissue;
  }
  return this->Now;
}

zvActiveContour::State zvActiveContour::Take(const zvContour& contour)
{
  if (!this->Forces || contour.size() < LeastPoints || !zvContourMath::IsFinite(contour))
  {
    return this->End(State::Refused, "There is no contour to begin with.");
  }
  zvContour clean = contour;
  for (zvContourPoint& point : clean)
  {
    point = this->Clamp(point);
  }
  if (zvContourMath::GetArea(clean) < 0.0)
  {
    std::reverse(clean.begin() + 1, clean.end());
  }
  zvContourMath::CutLoops(clean);
  if (zvContourMath::GetArea(clean) < this->GetLeastArea())
  {
    return this->End(State::Refused, "The contour is too small, or lies beside the slice.");
  }
  this->Contour = zvContourMath::Resample(clean, contour.size());
  this->Start = this->Marker = this->Contour;
  this->StepCount = 0;
  this->MakeSmoother();
  return this->End(State::Moving, "");
}

// A contour that grows knows its tissue from what it encloses; one that shrinks is led by what lies
// under it.
void zvActiveContour::MeasureTissue()
{
  const bool grows = this->Parameters.Balloon >= 0.0;
  std::vector<double> values;
  for (const double factor : { 0.25, 0.5, 0.75, 1.0 })
  {
    for (const zvContourPoint& point : Scale(this->Contour, grows ? factor : 1.0))
    {
      values.push_back(this->Forces->At(point).Value);
    }
  }
  // The shortest range that holds most of them: it stays with the tissue that they belong to,
  // whatever the rest is.
  std::sort(values.begin(), values.end());
  const auto most = static_cast<std::size_t>(TissuePart * static_cast<double>(values.size() - 1));
  std::size_t first = 0;
  for (std::size_t i = 1; i + most < values.size(); ++i)
  {
    first = values[i + most] - values[i] < values[first + most] - values[first] ? i : first;
  }
  this->Tissue.Middle = 0.5 * (values[first] + values[first + most]);
  const double spread = (values[first + most] - values[first]) / SpreadsInTissuePart;
  this->Tissue.Reach = std::max(this->Parameters.TissueRange, 0.0) *
    std::max(spread, LeastSpread * this->Forces->GetContrast());
}

double zvActiveContour::GetLeastArea() const
{
  return LeastVoxels * this->Forces->GetFineSpacing() * this->Forces->GetCoarseSpacing();
}

zvActiveContour::State zvActiveContour::Step()
{
  if (this->Now != State::Moving)
  {
    return this->Now;
  }
  zvContour moved = this->Smoother.Smooth(this->MoveAlongNormals());
  if (!zvContourMath::IsFinite(moved))
  {
    return this->End(State::Broken, "The contour could not be moved any further.");
  }
  for (zvContourPoint& point : moved)
  {
    point = this->Clamp(point);
  }
  zvContourMath::CutLoops(moved);
  if (zvContourMath::GetArea(moved) < this->GetLeastArea())
  {
    this->Contour = this->Start;
    return this->End(State::Vanished, "The contour shrank to nothing.");
  }
  this->Contour = zvContourMath::Resample(moved, this->Contour.size());
  ++this->StepCount;
  if (this->HasSettled())
  {
    return this->IsMostlyAtBorder()
      ? this->End(State::AtBorder, "The contour ran to the border of the slice.")
      : this->End(State::Settled, "");
  }
  if (this->StepCount >= this->Parameters.MostSteps)
  {
    return this->End(State::OutOfSteps, "The contour has not come to rest.");
  }
  return this->Now;
}

zvContour zvActiveContour::MoveAlongNormals() const
{
  const std::size_t count = this->Contour.size();
  const double furthest = this->Parameters.StepLength * this->Forces->GetFineSpacing();
  zvContour moved = this->Contour;
  for (std::size_t i = 0; i < count; ++i)
  {
    const zvContourPoint& before = this->Contour[(i + count - 1) % count];
    const zvContourPoint& after = this->Contour[(i + 1) % count];
    const double length = std::hypot(after[0] - before[0], after[1] - before[1]);
    if (!(length > 0.0))
    {
      continue;
    }
    const zvContourPoint normal{ { (after[1] - before[1]) / length,
      (before[0] - after[0]) / length } };
    const double push = furthest * this->GetPush(this->Contour[i], normal);
    moved[i][0] += push * normal[0];
    moved[i][1] += push * normal[1];
  }
  return moved;
}

// Outwards, -1 to 1. On an edge the balloon holds its breath, so that the edge alone decides.
double zvActiveContour::GetPush(const zvContourPoint& point, const zvContourPoint& normal) const
{
  const zvContourForces::Sample sample = this->Forces->At(point);
  double balloon = this->Parameters.Balloon * (1.0 - sample.Edge);
  if (this->Tissue.Reach > 0.0)
  {
    const double away = std::abs(sample.Value - this->Tissue.Middle) / this->Tissue.Reach;
    balloon *= ::Clamp(TissueSharpness * (1.0 - away), -1.0, 1.0);
  }
  const double pull = sample.Pull[0] * normal[0] + sample.Pull[1] * normal[1];
  return ::Clamp(balloon + this->Parameters.EdgePull * pull, -1.0, 1.0);
}

zvContourPoint zvActiveContour::Clamp(const zvContourPoint& point) const
{
  const zvContourPoint &low = this->Forces->GetLow(), &high = this->Forces->GetHigh();
  return { { ::Clamp(point[0], low[0], high[0]), ::Clamp(point[1], low[1], high[1]) } };
}

bool zvActiveContour::IsMostlyAtBorder() const
{
  const zvContourPoint &low = this->Forces->GetLow(), &high = this->Forces->GetHigh();
  const double near = BorderDistance * this->Forces->GetFineSpacing();
  const auto count = std::count_if(this->Contour.begin(), this->Contour.end(),
    [&](const zvContourPoint& point)
    {
      return point[0] - low[0] < near || high[0] - point[0] < near || point[1] - low[1] < near ||
        high[1] - point[1] < near;
    });
  return 2 * static_cast<std::size_t>(count) > this->Contour.size();
}

// Some steps apart, since points that tremble about their place come back to it every other step.
bool zvActiveContour::HasSettled()
{
  if (this->StepCount % StepsBetweenLooks != 0)
  {
    return false;
  }
  const double distance = zvContourMath::GetMeanDistance(this->Contour, this->Marker);
  this->Marker = this->Contour;
  return distance < StillDistance * this->Forces->GetFineSpacing();
}
