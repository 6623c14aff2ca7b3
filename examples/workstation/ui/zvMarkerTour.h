#ifndef zvMarkerTour_h
#define zvMarkerTour_h

class zvMainWindow;

/// The stations of the tour that show the markers of four views, by mouse events.
namespace zvMarkerTour
{
/// Three seeds, a chain with a bend and a tree with a fork.
void PlacePoints(zvMainWindow& window);
/// A normal and a box, in place of them.
void PlaceNormalAndBox(zvMainWindow& window);
/// Nothing of all that, and the first tool.
void Remove(zvMainWindow& window);
}

#endif
