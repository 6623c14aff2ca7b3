#include "zvScreenPlace.h"

#include <QWidget>

#include "vtkRenderer.h"

#include <cmath>

QPoint zvScreenPlace::Of(const double world[3], const QWidget* view, vtkRenderer* renderer)
{
  renderer->SetWorldPoint(world[0], world[1], world[2], 1.0);
  renderer->WorldToDisplay();
  const double* pixel = renderer->GetDisplayPoint();
  const double ratio = view->devicePixelRatioF();
  return QPoint(static_cast<int>(std::lround(pixel[0] / ratio)),
    view->height() - 1 - static_cast<int>(std::lround(pixel[1] / ratio)));
}
