#ifndef zvPointTree_h
#define zvPointTree_h

#include "vtkType.h"

class vtkPolyData;

/// A tree of points as two sets of cells. The first has a vertex cell for each point, the second a
/// line cell for each segment, over its own copy of the points under the same ids. Point 0 is the
/// root. Every later point i has one segment that ends in it, line i - 1, whose two ids are those
/// of the point's parent and of the point itself. Nothing else tells how the tree branches.
namespace zvPointTree
{
/// A line cell.
struct Segment
{
  vtkIdType Parent = -1;
  vtkIdType Child = -1;
};

///@{
/// Give \a data no points and room for vertex cells, or for line cells.
void MakePoints(vtkPolyData* data);
void MakeSegments(vtkPolyData* data);
///@}

/// Append a point and its vertex. \return its id. Finish is to follow.
vtkIdType AppendPoint(vtkPolyData* points, const double position[3]);

/// Append a line cell between two points, which must be there. Finish is to follow.
void AppendSegment(vtkPolyData* segments, const Segment& segment);

/// Make changed points or cells known: build the cells and links, and mark the points as modified,
/// too, for mappers follow nothing else.
void Finish(vtkPolyData* data);

/// Whether \a data has a point of this id.
bool HasPoint(vtkPolyData* data, vtkIdType id);

/// The two ids of line cell \a index. False, with nothing written, if there is no such cell, it is
/// longer, or one of its points is not there.
bool FindSegment(vtkPolyData* segments, vtkIdType index, Segment& segment);

/// The positions of the two ends of line cell \a index. False, with nothing written, as above.
bool FindEnds(vtkPolyData* segments, vtkIdType index, double parent[3], double child[3]);

/// Whether the line cells of \a data and its points are a tree in this encoding, in which a parent
/// comes before its children. Nothing at all is an empty tree. Other cells do not count.
bool IsTree(vtkPolyData* data);

/// Replace the points and cells of \a copy by a copy of the points and lines of \a tree, sharing
/// nothing. Other cells and all attributes stay behind.
void CopySegments(vtkPolyData* tree, vtkPolyData* copy);

/// Replace the vertices of \a points by one for each point of \a tree. Deliberate: points that are
/// there stay, without a vertex, and the new ones are appended behind them.
void ReplaceVertices(vtkPolyData* points, vtkPolyData* tree);
}

#endif
