#ifndef zvMeasureTour_h
#define zvMeasureTour_h

class zvMainWindow;

/// The stations of the tour at which the slices are measured. Each adds to what the one before has
/// made, until Remove.
namespace zvMeasureTour
{
/// A ruler in each view.
void DrawRulers(zvMainWindow& window);
/// An area, a lasso, and an area that is not closed yet.
void DrawContours(zvMainWindow& window);
/// Notes at two places.
void WriteNotes(zvMainWindow& window);
/// Names for two of the marks, and one of them hidden.
void UseList(zvMainWindow& window);
void ShowHelp(zvMainWindow& window);
/// A window without marks and with the cross again.
void Remove(zvMainWindow& window);
}

#endif
