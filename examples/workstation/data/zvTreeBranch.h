#ifndef zvTreeBranch_h
#define zvTreeBranch_h

#include "vtkSmartPointer.h"

#include <vector>

class vtkPolyData;

/// Trees of points as the 3D tree widget saves them: point 0 is the root, and line i - 1 joins the
/// parent of point i to it, so that a parent has a lower number than its children.
namespace zvTreeBranch
{
/// The points that are left when one is cut off with all that grows from it, in their order. All
/// for a number that no point has.
std::vector<int> ListWithout(vtkPolyData* tree, int point);

/// The tree of these points, which are a tree with their root in front, or none.
vtkSmartPointer<vtkPolyData> Keep(vtkPolyData* tree, const std::vector<int>& points);

/// The number of a point's parent, -1 for the root and for a number that no point has.
int FindParent(vtkPolyData* tree, int point);

/// How long the segment to a point is, in millimetres; 0 for the root.
double GetLength(vtkPolyData* tree, int point);
}

#endif
