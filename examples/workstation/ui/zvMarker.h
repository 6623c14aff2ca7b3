#ifndef zvMarker_h
#define zvMarker_h

#include "zvMeasurementSource.h"

#include <array>
#include <vector>

class vtkInteractorObserver;
class vtkRenderer;
class zvImageViewerWidget;
class zvViewGrid;

/// A marker of the library that stands in all four views, as a tool and as lines of the list. It
/// has points, which are made by clicks on a slice and dragged in any view.
///
/// Nothing here renders except through the library's own operations.
class zvMarker : public zvMeasurementSource
{
  Q_OBJECT

public:
  using Vector = std::array<double, 3>;

  /// What a press of the left button does while the tool is chosen.
  enum class Clicks
  {
    Place,  // it is a click of the tool: see Place
    Viewer, // it goes on to the viewer, which the marker observes
    None    // marks are made otherwise
  };

  /// \param views  outlive this object.
  explicit zvMarker(zvViewGrid* views);

  virtual Clicks GetClicks() const { return Clicks::Place; }
  /// A volume has come, while there are no marks. \param bounds  in millimetres, as VTK has them.
  virtual void Measure(double bounds[6]) { static_cast<void>(bounds); }
  /// The tool was chosen.
  virtual void Begin() {}
  /// Another tool was chosen.
  virtual void End() {}
  /// The mouse has come into a view, or is in none (null).
  void Hover(vtkRenderer* renderer);
  /// Whether the last press took hold of something, or can do without a new point.
  virtual bool IsHeld() { return false; }
  /// A click beside all marks. \param isControlled  with the control key.
  virtual void Place(const Vector& point, bool isControlled);

  /// \name Points, numbered from 0
  ///@{
  virtual int GetPointCount() const = 0;
  virtual Vector GetPoint(int index) const = 0;
  virtual void RemovePoint(int index) = 0;
  ///@}

  /// What is hidden is under no mouse.
  bool RemoveUnderMouse() override;
  void GoTo(int id) override;

signals:
  /// The planes have to meet in a point.
  void goToWanted(const zvMarker::Vector& point);

protected:
  /// Make a view the one that the library's marker works in.
  virtual void Enter(vtkRenderer* renderer) = 0;
  /// Where a line of the list is.
  virtual Vector GetPlace(int id) const = 0;

  /// Whether a line of the list has this id.
  bool IsKnown(int id) const;

  static QString Describe(const Vector& point);
  vtkRenderer* GetSliceRenderer(int axis) const;
  zvImageViewerWidget* GetViewer(int axis) const;
  vtkRenderer* GetRenderer3D() const;

  /// Give a widget its views and let it come before the slices in what the mouse does.
  template <typename Widget>
  void SetUp(Widget* widget) const
  {
    widget->SetRendererX(this->GetSliceRenderer(0));
    widget->SetRendererY(this->GetSliceRenderer(1));
    widget->SetRendererZ(this->GetSliceRenderer(2));
    // Observed is the current view beside the slice views: so this one is, too.
    widget->SetCurrentRender(this->GetRenderer3D());
    this->LetComeFirst(widget);
  }

  /// Before the slices in what the mouse does; keys are the program's.
  static void LetComeFirst(vtkInteractorObserver* widget);

private:
  zvViewGrid* Views;
  vtkRenderer* Hovered = nullptr; // one of the views'
};

#endif
