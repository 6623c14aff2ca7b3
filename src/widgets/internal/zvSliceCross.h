#ifndef zvSliceCross_h
#define zvSliceCross_h

/// The cross of a slice view as numbers: how many whole voxel steps a line moves and which index it
/// has then. One line at a time; both lines follow the same rules.
namespace zvSliceCross
{
/// What a move of one line comes to.
struct Move
{
  int Steps = 0; ///< signed voxel steps actually taken
  int Index = 0; ///< voxel index after them
};

/// Whole steps between two distances from the plane's origin, in millimetres, truncated toward
/// zero. 0 where the spacing is 0 or a value is not a number; never beyond what an int holds.
int WholeSteps(double targetDistance, double currentDistance, double spacing);

/// A move by dragging: stops at index 0 and at \a last, and tells only the steps taken.
Move Drag(int index, int steps, int last);

/// The move that a host asks for. Deliberate: beyond \a last it takes the overshoot instead of the
/// room that is left, so index last - 2 moved by 5 ends at last + 1. Hosts count on it.
Move Shift(int index, int steps, int last);

/// The parameter of the foot of point \a q on the line from \a origin along \a axis: 0 at the
/// origin, 1 at its end. 0 for an axis of no length.
double FootParameter(const double q[3], const double origin[3], const double axis[3]);
}

#endif
