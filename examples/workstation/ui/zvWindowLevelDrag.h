#ifndef zvWindowLevelDrag_h
#define zvWindowLevelDrag_h

#include "zvWindowPresets.h"

#include <QPoint>
#include <QSize>

/// A drag that changes window and level: to the right widens the window, down brightens the picture
/// by lowering the level. Numbers only; who owns it feeds it the mouse.
class zvWindowLevelDrag
{
public:
  /// \param fullWindow  the volume's whole range, which a drag across the view is worth.
  void Begin(const QPoint& position, const zvWindowValues& value, double fullWindow);

  /// \return window and level with the mouse at a position of a view of a size. The window stays
  /// at a thousandth of the full one at least.
  zvWindowValues MoveTo(const QPoint& position, const QSize& view) const;

  void End() { this->Running = false; }
  bool IsRunning() const { return this->Running; }

private:
  bool Running = false;
  QPoint Start;
  zvWindowValues StartValue;
  double FullWindow = 1.0;
};

#endif
