#ifndef zvContourTool_h
#define zvContourTool_h

#include "zvContourPanel.h"
#include "zvContourStack.h"
#include "zvContourView.h"
#include "zvContourWalk.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <array>
#include <memory>

class zvEditBar;
class zvSliceView;
class zvToolSet;
class zvViewGrid;

/// The active contour at work: the user places a ring in a slice view, and it moves to the outline
/// of what it lies in, there or on through the volume.
///
/// It reads the contour from the view's widget, lets it walk (zvContourWalk) a little at a time,
/// and gives it back after each little, so that the window goes on between. Every slice of every
/// plane may have a contour of its own; those that came to rest make up the mask. A contour is
/// never lost to another slice, a stop, or a walk that came to nothing; Reset takes back the last
/// walk.
class zvContourTool : public QObject
{
  Q_OBJECT

public:
  /// All outlive this object. \param bar  for the mask that it shows, and its opacity.
  zvContourTool(zvViewGrid* views, zvContourPanel* panel, zvEditBar* bar);
  ~zvContourTool() override;

  /// Take the contour into a set of tools, by the name "contour".
  void AddTo(zvToolSet* tools);

  /// Begin anew with the volume that the views show. Call it after every change of it.
  void Begin();

  zvContourView* GetContourView(int axis) const
  {
    return this->Contours[static_cast<std::size_t>(axis)].get();
  }
  /// The contours of an axis that came to rest.
  const zvContourStack& GetKept(int axis) const
  {
    return this->Kept[static_cast<std::size_t>(axis)];
  }
  /// In the slice that the contour moves in.
  int GetStepCount() const { return this->Walk.GetStepCount(); }
  bool IsRunning() const { return this->Timer.isActive(); }
  /// Of the plane that is worked in: 0 sagittal, 1 coronal, 2 axial.
  int GetAxis() const { return this->Axis; }

public slots:
  /// Let the contour of the present slice move until it rests; go on if it paused there.
  void Start();
  /// One step.
  void Step();
  void Stop();
  /// The contours as they were before the last start.
  void Reset();
  /// No contours of this plane any more.
  void Clear();

signals:
  /// The contour rests, or cannot go on.
  void ended();

private:
  void Connect();
  void Activate();
  void Deactivate();
  void TakeChange(int axis);
  void WorkIn(int axis);
  void FollowSlices();
  void FollowSlice(int axis);
  void ApplyExtent();
  void ApplyRing();
  void ApplyGradient();
  void Run(int steps);
  bool BeginWalk();
  void Tick();
  void Take(zvContourWalk::Event event, int slice);
  void TakeSlice(int slice);
  void VisitSlice(bool isDue);
  void EnterSlice();
  void ShowWalk();
  void ShowStack(bool isDue);
  void ShowSlice();
  void ShowAgain(const QString& message);
  void End();
  QString Describe() const;
  void ShowState();
  void ShowMask();
  void ShowMaskAgain();
  bool IsUpright(int axis) const;
  int GetSlice(int axis) const;
  bool IsPausedHere() const;
  vtkImageData* GetImage() const;
  zvContourView& GetContour() const { return *this->GetContourView(this->Axis); }
  zvContourStack& KeptHere() { return this->Kept[static_cast<std::size_t>(this->Axis)]; }
  zvContourStack& ShownHere() { return this->Shown[static_cast<std::size_t>(this->Axis)]; }

  struct Backup
  {
    int Axis = -1; // -1 for none
    int Slice = 0;
    zvContourStack Kept;
    zvContourStack Shown;
  };

  zvViewGrid* Views;
  zvContourPanel* Panel;
  zvEditBar* Bar;
  std::array<std::unique_ptr<zvContourView>, 3> Contours;
  std::array<zvContourStack, 3> Kept;  // that came to rest
  std::array<zvContourStack, 3> Shown; // as they are seen, whatever became of them
  zvContourWalk Walk;
  Backup Before; // the last walk
  QTimer Timer;
  QElapsedTimer Visited;         // since the view went to a slice on the way
  QElapsedTimer Stacked;         // since the 3D view was rendered on the way
  vtkImageData* Image = nullptr; // that all this belongs to; not owned
  int Axis = 2;
  int StepsLeft = 0; // negative for as many as it takes
  int StartSlice = 0;
  bool IsActive = false;
};

#endif
