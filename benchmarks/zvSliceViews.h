#ifndef zvSliceViews_h
#define zvSliceViews_h

#include <vtkNew.h>
#include <vtkRenderWindow.h>
#include <vtkRenderWindowInteractor.h>
#include <vtkRenderer.h>

#include <memory>

class vtkImageData;

/// How a benchmark cuts a volume.
struct zvCut
{
  int Orientation; // 0 to 2: the normal is along x, y or z; 3: oblique
  bool Linear;     // or nearest
};

/// The corners of the oblique plane that all sides use, at a fraction of the way through a volume:
/// as large as a face of the volume and turned by some twenty degrees about x and y.
struct zvObliquePlane
{
  double Origin[3];
  double Point1[3];
  double Point2[3];

  zvObliquePlane(vtkImageData* volume, double fraction);
};

/// A window of 512 x 512 pixels that looks straight at a cut.
class zvBenchmarkWindow
{
public:
  zvBenchmarkWindow(vtkImageData* volume, const zvCut& cut);

  vtkRenderer* GetRenderer() { return this->Renderer; }
  vtkRenderWindowInteractor* GetInteractor() { return this->Interactor; }

  /// Render and wait until the picture is there.
  void Render();

  /// Wait for a picture that somebody else has asked for.
  void Finish() { this->Window->WaitForCompletion(); }

private:
  vtkNew<vtkRenderer> Renderer;
  vtkNew<vtkRenderWindow> Window;
  vtkNew<vtkRenderWindowInteractor> Interactor;
};

/// One way of showing a cut of a volume.
class zvSliceView
{
public:
  virtual ~zvSliceView() = default;

  /// Come into view. The window must live longer than this object.
  virtual void Show(zvBenchmarkWindow& window) = 0;

  /// Go to a slice, or for an oblique cut to that fraction of as many steps. Draws nothing.
  virtual void GoTo(int slice) = 0;

  /// Compute what a frame would ask for: the coloured slice.
  virtual void UpdateColors() = 0;

  /// Set window and level and draw, as a drag does. Only after Show.
  virtual void DrawWindowLevel(double window, double level) = 0;

  /// Ask for the slice where nothing has changed.
  virtual void UpdateAgain() = 0;
};

/// Which of them.
enum class zvSliceSide
{
  StockWidget,  // vtkImagePlaneWidget
  OurWidget,    // zvImagePlaneWidget
  StockFilters, // the image plane's pipeline without a widget, of stock filters
  OurFilters    // the same of our quick ones
};

std::unique_ptr<zvSliceView> zvMakeSliceView(
  zvSliceSide side, vtkImageData* volume, const zvCut& cut);

#endif
