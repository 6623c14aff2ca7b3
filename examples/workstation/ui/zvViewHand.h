#ifndef zvViewHand_h
#define zvViewHand_h

#include <QPoint>
#include <Qt>

#include <array>

class QEvent;
class vtkRenderer;
class zvQVTKWidget;
class zvSliceView;
class zvVolumeView;

/// A hand that uses a view by real events of mouse and keyboard, for the tour and for tests.
/// Positions are in the view's own pixels, from its upper left corner.
class zvViewHand
{
public:
  explicit zvViewHand(zvVolumeView* view);
  explicit zvViewHand(zvSliceView* view);

  /// Where a point of the world (millimetres) is seen.
  QPoint At(const std::array<double, 3>& world) const;

  /// The world's point at parts of the way (-1 to 1) from the volume's middle to its faces along x
  /// and y, in the present axial plane: with x and y unequal it lies in no other plane. For the 3D
  /// view only.
  std::array<double, 3> OnAxialPlane(double x, double y) const;

  /// Where a part of the way (-1 to 1) from the view's middle to its right and upper edge is.
  QPoint Part(double right, double up) const;

  void Press(Qt::MouseButton button, const QPoint& position,
    Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  void MoveTo(const QPoint& position);
  void Release();
  void Click(Qt::MouseButton button, const QPoint& position,
    Qt::KeyboardModifiers modifiers = Qt::NoModifier);

  /// Press, move in so many equal steps, release.
  void Drag(Qt::MouseButton button, const QPoint& from, const QPoint& to, int steps = 8,
    Qt::KeyboardModifiers modifiers = Qt::NoModifier);

  /// What a user's quick second click sends: press, release, the double click and a release.
  void DoubleClick(const QPoint& position);

  /// \param notches  positive away from the user.
  void Turn(int notches, const QPoint& position, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

  void Type(Qt::Key key);

private:
  void Send(int type, Qt::MouseButton button, Qt::MouseButtons held);

  zvQVTKWidget* View;
  vtkRenderer* Renderer;
  zvVolumeView* VolumeView = nullptr;
  QPoint Position;
  Qt::MouseButton Held = Qt::NoButton;
  Qt::KeyboardModifiers Modifiers = Qt::NoModifier;
};

#endif
