#ifndef zvContourWalk_h
#define zvContourWalk_h

#include "zvActiveContour.h"
#include "zvContourStack.h"

#include <future>
#include <limits>
#include <memory>
#include <string>
#include <vector>

/// Where a contour walks.
struct zvWalkParameters
{
  zvContourParameters Contour;
  /// The slices that it may enter, both included, beside the one where it begins; by themselves
  /// none.
  int First = std::numeric_limits<int>::max();
  int Last = std::numeric_limits<int>::min();
  /// By which factor the area may grow from a slice to the next; more is a leak, and the walk ends
  /// before it. 0 for any.
  double MostGrowth = 2.0;
};

/// A contour on its way through a volume: it comes to rest in the slice where it begins, goes on
/// from there slice by slice to the last one, each time from the contour of the slice before, and
/// then from the beginning to the first one. With one slice to enter it stays there.
///
/// A direction ends early where the contour vanishes, leaks, or the slice is no good. What was
/// found so far stays.
///
/// The caller gives it its time, a small step each. The edges of a slice, the only part that takes
/// long, can be sought in the background.
class zvContourWalk
{
public:
  enum class Event
  {
    Idle,    // nothing to do
    Waiting, // for the edges of a slice, in the background
    Entered, // a slice: there is its contour to begin with
    Moved,   // the contour, by one step
    Kept,    // the contour of a slice, which is at its end
    Left,    // a slice without one
    Ended
  };

  zvContourWalk() = default;
  /// Waits for what is being done in the background, a fraction of a second.
  ~zvContourWalk() = default;
  zvContourWalk(const zvContourWalk&) = delete;
  void operator=(const zvContourWalk&) = delete;

  void SetInBackground(bool isInBackground) { this->IsInBackground = isInBackground; }

  /// \param volume  kept until the next beginning. \param start  the slice to begin in.
  void Begin(vtkImageData* volume, const zvContourPlane& start, const zvContour& contour,
    const zvWalkParameters& parameters);

  /// Go on with the present slice's contour as it is or was changed meanwhile, which begins the
  /// count of steps anew, and with other parameters. Edges are sought by them from the next slice
  /// on.
  void Resume(const zvContour& contour, const zvWalkParameters& parameters);

  /// Forget everything.
  void Clear();

  /// A small piece of the work.
  Event Step();

  bool IsUnderWay() const { return this->IsWalking; }
  const zvContourPlane& GetPlane() const { return this->Plane; }
  /// In the present slice.
  const zvContour& GetContour() const { return this->Contour; }
  /// In the slice before, empty in the first one.
  const zvContour& GetPrevious() const { return this->Previous; }
  const zvContourStack& GetStack() const { return this->Stack; }
  /// Of the present slice, null while they are sought.
  const zvContourForces* GetForces() const { return this->Forces.get(); }
  int GetStepCount() const { return this->Active.GetStepCount(); }
  /// 0 to 1.
  double GetProgress() const;
  /// What there is to say of the walk so far, one sentence each.
  std::vector<std::string> GetNotes() const;

private:
  Event Enter();
  Event Finish();
  Event Keep();
  Event Leave(const std::string& reason);
  bool GoOn(int slice);
  bool HasLeaked() const;
  void Prepare(int slice);
  bool IsReady(int slice);
  int GetSlice() const { return this->Plane.GetSlice(); }

  vtkSmartPointer<vtkImageData> Volume;
  zvWalkParameters Parameters;
  zvContourPlane Plane;
  int StartSlice = 0;
  int Direction = 1;
  bool IsWalking = false;
  bool IsInBackground = false;
  bool HasEntered = false; // the present slice
  zvActiveContour Active;
  zvContour Contour;
  zvContour Previous;
  zvContourStack Stack;
  zvTissue Tissue;
  bool HasTissue = false;
  std::shared_ptr<const zvContourForces> Forces;
  std::future<std::shared_ptr<const zvContourForces>> NextForces;
  int NextSlice = -1; // that they are for
  int Passed = 0;
  int Restless = 0; // slices in which it did not come to rest
  int Holes = 0;
  std::vector<std::string> Ends;
};

#endif
