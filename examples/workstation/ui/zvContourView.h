#ifndef zvContourView_h
#define zvContourView_h

#include "zvContour.h"
#include "zvContourPlane.h"

#include "vtkSmartPointer.h"

#include <QObject>

class QMouseEvent;
class vtkPolyData;
class vtkRenderer;
class zvSliceView;
class zvSnakeWidget;
class zvVolumeSnakeWidget;
class zvWidgets;

/// The contour in one slice view: a zvSnakeWidget where it is to stay in its slice, or a
/// zvVolumeSnakeWidget where it is to go through the volume. The one in use is enabled, the other
/// one is not; their contours are the same.
///
/// The widgets make their rings in planes of constant z. This puts them into the view's own plane.
///
/// Operations do not render unless they say so.
class zvContourView : public QObject
{
  Q_OBJECT

public:
  enum class Gradient
  {
    None,
    AtContour, // only where the contour goes through the volume; elsewhere as None
    OfSlice
  };

  /// Both outlive this object.
  zvContourView(zvSliceView* view, vtkRenderer* renderer3D);
  ~zvContourView() override;

  zvSliceView* GetView() const { return this->View; }
  zvSnakeWidget* GetSliceWidget() const;
  zvVolumeSnakeWidget* GetVolumeWidget() const;

  /// Which of the two widgets is used. Renders.
  void SetInVolume(bool isInVolume);
  bool IsInVolume() const { return this->InVolume; }

  /// Whether the contour is seen. Renders where that changes.
  void SetVisible(bool isVisible);
  bool IsVisible() const { return this->Visible; }
  /// Whether the mouse moves it, and makes one where there is none (default not).
  void SetInHand(bool isInHand);

  /// The slice that the view shows, where contours are from now on.
  void SetPlane(const zvContourPlane& plane) { this->Plane = plane; }
  const zvContourPlane& GetPlane() const { return this->Plane; }

  /// The ring with which a contour begins: radius in millimetres, number of points.
  void SetRing(double radius, int count);

  /// How many points the widget's contour is to have.
  std::size_t GetResolution() const;
  /// As the widget has it; empty if there is none.
  zvContour ReadContour() const;
  /// Show a contour, or none if it is empty.
  void ShowContour(const zvContour& contour);
  /// The contour of the slice before; empty for none. Only where it goes through the volume.
  void ShowPrevious(const zvContour& contour);
  /// The places of strong gradient: of the slice, and at the contour with 0 to 1 as scalars.
  void ShowEdges(vtkPolyData* ofSlice);
  void ShowEdgesAtContour(vtkPolyData* atContour);
  void SetGradient(Gradient gradient);
  /// All contours, in the 3D view.
  void ShowStack(vtkPolyData* rings);
  /// Nothing at all any more.
  void Clear();

  /// Off the slice to the viewer's side, along the axis: in front of the picture, the edges behind
  /// the contour.
  double GetLift(double millimetres) const;

signals:
  /// The user has placed or moved the contour.
  void changed();

private:
  void Prepare(zvWidgets* widget);
  zvWidgets* GetWidget() const;
  void ApplyState();
  void HandleMoved();
  void HandleMouse(QMouseEvent* event);
  zvContourPoint GetPointUnderMouse() const;
  bool IsInSlice(const zvContourPoint& point) const;
  void PlaceRing(const zvContourPoint& centre);
  void PutIntoPlane();
  void PassMeasures(const zvContour& contour);

  zvSliceView* View;
  vtkSmartPointer<zvSnakeWidget> SliceWidget;
  vtkSmartPointer<zvVolumeSnakeWidget> VolumeWidget;
  vtkSmartPointer<vtkPolyData> Edges;
  zvContourPlane Plane;
  Gradient ShownGradient = Gradient::OfSlice;
  double RingRadius = 10.0;
  int RingCount = 100;
  bool InVolume = false;
  bool Visible = false;
  bool InHand = false;
  bool HasContour = false;
};

#endif
