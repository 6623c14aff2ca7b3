#ifndef zvScreenPlace_h
#define zvScreenPlace_h

#include <QPoint>

class QWidget;
class vtkRenderer;

/// Between the world and a view's own pixels, which count from its upper left corner and are not
/// those of the screen where that has several to a pixel of a program.
namespace zvScreenPlace
{
/// Where a point of the world (millimetres) is seen.
QPoint Of(const double world[3], const QWidget* view, vtkRenderer* renderer);
}

#endif
