#ifndef zvTurnPanel_h
#define zvTurnPanel_h

#include <QGroupBox>

#include <array>

class QSlider;

/// Turns the three planes together: a slider for each axis, which gives the way from where the
/// planes were before to where they are, and a button that makes them orthogonal again.
class zvTurnPanel : public QGroupBox
{
  Q_OBJECT

public:
  explicit zvTurnPanel(QWidget* parent = nullptr);

  /// All sliders back to 0. Emits nothing.
  void ShowStraight();

  QSlider* GetSlider(int axis) const { return this->Sliders[static_cast<std::size_t>(axis)]; }

signals:
  /// Turn by so many degrees more about an axis (0, 1, 2 for x, y, z).
  void turned(int axis, double degrees);
  void straightened();

private:
  void Turn(int axis, int degrees);

  std::array<QSlider*, 3> Sliders; // owned by Qt's tree of widgets
  std::array<int, 3> Degrees{ { 0, 0, 0 } };
};

#endif
