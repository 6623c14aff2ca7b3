#ifndef zvHandTools_h
#define zvHandTools_h

class zvEditBar;
class zvToolSet;
class zvViewGrid;

/// The tools of the slice views' left button: the cross, what is measured and drawn with, and what
/// writes voxels.
namespace zvHandTools
{
/// Add them to a set, the cross first. All outlive the tools.
void AddTo(zvToolSet* tools, zvViewGrid* views, const zvEditBar* bar);
}

#endif
