#ifndef zvLoadProgress_h
#define zvLoadProgress_h

#include <atomic>
#include <functional>

class vtkAlgorithm;

/// What a running load tells its caller, and how the caller stops it. Report and Watch belong to
/// the thread that loads, Cancel and IsCancelled to any.
class zvLoadProgress
{
public:
  /// \param report  called from the thread that loads with the part done, 0 to 1; may be empty.
  explicit zvLoadProgress(std::function<void(double)> report = {});

  /// Tell the caller. \throws zvLoadCancelled once Cancel has been called.
  void Report(double fraction);

  /// Run an algorithm (vtkAlgorithm::Update) so that it fills the part of the whole between two
  /// fractions, and is aborted by Cancel where it looks for that.
  /// \throws zvLoadCancelled once Cancel has been called.
  void Run(vtkAlgorithm* algorithm, double from, double to);

  /// Ask the load to stop. It ends when it next looks, without a result.
  void Cancel() { this->Cancelled = true; }
  bool IsCancelled() const { return this->Cancelled; }

private:
  std::function<void(double)> Callback;
  std::atomic<bool> Cancelled{ false };
};

#endif
