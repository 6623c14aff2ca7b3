#ifndef zvContourStations_h
#define zvContourStations_h

#include <vector>

class zvMainWindow;

/// The active contour on the tour: a ring in the axial view, in the brain of a head that was loaded
/// or round the built-in one, that moves to the outline and on through the volume.
namespace zvContourStations
{
struct Station
{
  const char* Name;
  void (*Visit)(zvMainWindow& window);
};

/// To be visited in this order.
const std::vector<Station>& GetAll();

/// No contours, no mask, and the panels as before.
void Tidy(zvMainWindow& window);
}

#endif
