#include "zvContourWalk.h"

#include "vtkImageData.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <new>

namespace
{
std::shared_ptr<const zvContourForces> MakeForces(
  const vtkSmartPointer<vtkImageData>& slice, const zvForceParameters& parameters)
{
  return std::make_shared<const zvContourForces>(slice, parameters);
}
}

void zvContourWalk::Clear()
{
  this->IsWalking = false;
  this->HasEntered = false;
  this->HasTissue = false;
  this->Volume = nullptr;
  this->Contour.clear();
  this->Previous.clear();
  this->Forces = nullptr;
  this->NextForces = {};
  this->NextSlice = -1;
  this->Passed = this->Restless = this->Holes = 0;
  this->Ends.clear();
}

void zvContourWalk::Begin(vtkImageData* volume, const zvContourPlane& start,
  const zvContour& contour, const zvWalkParameters& parameters)
{
  this->Clear();
  this->Stack = zvContourStack(start.GetAxis());
  this->Volume = volume;
  this->Parameters = parameters;
  int extent[6];
  volume->GetExtent(extent);
  const int *range = extent + 2 * start.GetAxis(), slice = start.GetSlice();
  this->Parameters.First = std::min(std::max(parameters.First, range[0]), slice);
  this->Parameters.Last = std::max(std::min(parameters.Last, range[1]), slice);
  this->StartSlice = slice;
  this->Direction = 1;
  this->Plane = start;
  this->Contour = contour;
  this->IsWalking = true;
  this->Prepare(slice);
}

void zvContourWalk::Resume(const zvContour& contour, const zvWalkParameters& parameters)
{
  this->Parameters.Contour = parameters.Contour;
  this->Parameters.MostGrowth = parameters.MostGrowth;
  if (this->HasEntered)
  {
    this->Active.SetParameters(parameters.Contour);
    if (contour != this->Contour)
    {
      this->Active.Take(contour);
    }
  }
  this->Contour = contour;
}

void zvContourWalk::Prepare(int slice)
{
  const zvContourPlane plane(this->Volume, this->Plane.GetAxis(), slice);
  this->NextSlice = slice;
  this->NextForces = std::async(this->IsInBackground ? std::launch::async : std::launch::deferred,
    MakeForces, zvContourForces::CutSlice(this->Volume, plane), this->Parameters.Contour.Forces);
}

// What is left to be done on the caller's own thread is as good as ready.
bool zvContourWalk::IsReady(int slice)
{
  if (this->NextSlice != slice || !this->NextForces.valid())
  {
    this->Prepare(slice);
  }
  return this->NextForces.wait_for(std::chrono::seconds(0)) != std::future_status::timeout;
}

zvContourWalk::Event zvContourWalk::Step()
{
  if (!this->IsWalking)
  {
    return Event::Idle;
  }
  if (!this->HasEntered)
  {
    return this->IsReady(this->GetSlice()) ? this->Enter() : Event::Waiting;
  }
  const bool isMoving = this->Active.Step() == zvActiveContour::State::Moving;
  this->Contour = this->Active.GetContour();
  return isMoving ? Event::Moved : this->Finish();
}

zvContourWalk::Event zvContourWalk::Enter()
{
  try
  {
    this->Forces = this->NextForces.get();
  }
  catch (const std::bad_alloc&)
  {
    return this->Leave("There is not enough memory.");
  }
  this->HasEntered = true;
  this->Holes += this->Forces->GetHoleCount();
  this->Active.SetParameters(this->Parameters.Contour);
  const auto state =
    this->Active.Begin(this->Forces, this->Contour, this->HasTissue ? &this->Tissue : nullptr);
  if (state == zvActiveContour::State::Refused)
  {
    return this->Leave(this->Active.GetMessage());
  }
  this->Tissue = this->Active.GetTissue();
  this->HasTissue = true;
  const int next = this->GetSlice() + this->Direction;
  if (this->IsInBackground && next >= this->Parameters.First && next <= this->Parameters.Last)
  {
    this->Prepare(next);
  }
  return Event::Entered;
}

zvContourWalk::Event zvContourWalk::Finish()
{
  switch (this->Active.GetState())
  {
    case zvActiveContour::State::Vanished:
    case zvActiveContour::State::Refused:
      return this->Leave(this->Active.GetMessage());
    case zvActiveContour::State::Settled:
      break;
    default:
      ++this->Restless;
      break;
  }
  return this->HasLeaked() ? this->Leave("The contour leaked into its surroundings.")
                           : this->Keep();
}

bool zvContourWalk::HasLeaked() const
{
  return this->Parameters.MostGrowth > 0.0 && !this->Previous.empty() &&
    zvContourMath::GetArea(this->Contour) >
    this->Parameters.MostGrowth * zvContourMath::GetArea(this->Previous);
}

zvContourWalk::Event zvContourWalk::Keep()
{
  ++this->Passed;
  this->Stack.Set(this->GetSlice(), this->Contour);
  if (this->Parameters.First == this->Parameters.Last)
  {
    // There is nowhere else to tell it.
    if (!this->Active.GetMessage().empty())
    {
      this->Ends.push_back(this->Active.GetMessage());
    }
    this->IsWalking = false;
    return Event::Ended;
  }
  return this->GoOn(this->GetSlice() + this->Direction) ? Event::Kept : Event::Ended;
}

zvContourWalk::Event zvContourWalk::Leave(const std::string& reason)
{
  const int slice = this->GetSlice();
  const bool isAlone = this->Parameters.First == this->Parameters.Last;
  this->Ends.push_back(isAlone ? reason : "Slice " + std::to_string(slice) + ": " + reason);
  // The rest of this direction is as good as passed.
  this->Passed +=
    this->Direction > 0 ? this->Parameters.Last - slice + 1 : slice - this->Parameters.First + 1;
  const int beyond = this->Direction > 0 ? this->Parameters.Last + 1 : this->Parameters.First - 1;
  return this->GoOn(beyond) ? Event::Left : Event::Ended;
}

// To a slice, or, where that is out of the range, from the beginning the other way. False if there
// is no way any more; then the place and the contour stay.
bool zvContourWalk::GoOn(int slice)
{
  const zvContour* start = this->Stack.Find(this->StartSlice);
  if (this->Direction > 0 && slice > this->Parameters.Last)
  {
    this->Direction = -1;
    slice = this->StartSlice - 1;
    this->Contour = start != nullptr && slice >= this->Parameters.First ? *start : this->Contour;
  }
  this->IsWalking = start != nullptr && slice >= this->Parameters.First;
  if (!this->IsWalking)
  {
    return false;
  }
  this->Previous = this->Contour;
  this->Plane = zvContourPlane(this->Volume, this->Plane.GetAxis(), slice);
  this->HasEntered = false;
  return true;
}

double zvContourWalk::GetProgress() const
{
  const int count = this->Parameters.Last - this->Parameters.First + 1;
  if (!this->IsWalking)
  {
    return this->Passed > 0 ? 1.0 : 0.0;
  }
  const double inSlice =
    static_cast<double>(this->GetStepCount()) / std::max(this->Parameters.Contour.MostSteps, 1);
  return std::min((this->Passed + (this->HasEntered ? inSlice : 0.0)) / count, 1.0);
}

std::vector<std::string> zvContourWalk::GetNotes() const
{
  std::vector<std::string> notes = this->Ends;
  if (this->Restless > 0 && this->Parameters.First != this->Parameters.Last)
  {
    notes.push_back(
      "Slices in which the contour did not come to rest: " + std::to_string(this->Restless) + ".");
  }
  if (this->Holes > 0)
  {
    notes.push_back(
      "Voxels without a value, taken as their neighbours: " + std::to_string(this->Holes) + ".");
  }
  return notes;
}
