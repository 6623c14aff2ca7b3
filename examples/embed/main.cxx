// The smallest host: one view, one volume, one widget.
//
//   zv-embed                 shows a plane that the left button drags through the volume
//   zv-embed --picture FILE  draws it once, writes FILE and ends; fails if nothing was drawn

#include "zvImagePlaneWidget.h"
#include "zvQVTKWidget.h"

#include <QApplication>
#include <QImage>
#include <QSurfaceFormat>

#include "vtkCamera.h"
#include "vtkGenericOpenGLRenderWindow.h"
#include "vtkImageData.h"
#include "vtkInteractorStyleUser.h"
#include "vtkNew.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

#include <iostream>

namespace
{
// A ball that gets brighter towards its centre, in millimetres around the origin.
vtkNew<vtkImageData> MakeVolume()
{
  constexpr int side = 64;
  vtkNew<vtkImageData> volume;
  volume->SetDimensions(side, side, side);
  volume->SetOrigin(-31.5, -31.5, -31.5);
  volume->AllocateScalars(VTK_SHORT, 1);
  auto* voxel = static_cast<short*>(volume->GetScalarPointer());
  for (int k = 0; k < side; ++k)
  {
    for (int j = 0; j < side; ++j)
    {
      for (int i = 0; i < side; ++i)
      {
        const double x = i - 31.5, y = j - 31.5, z = k - 31.5;
        const double depth = 900.0 - (x * x + y * y + z * z);
        *voxel++ = static_cast<short>(depth > 0.0 ? depth : 0.0);
      }
    }
  }
  return volume;
}

// Whether the picture shows more than its background.
bool IsSomethingDrawn(const QImage& picture)
{
  for (int y = 0; y < picture.height(); ++y)
  {
    for (int x = 0; x < picture.width(); ++x)
    {
      if (picture.pixel(x, y) != picture.pixel(0, 0))
      {
        return true;
      }
    }
  }
  return false;
}

int WritePicture(zvQVTKWidget& view, const QString& file)
{
  view.renderWindow()->Render();
  const QImage picture = view.grabFramebuffer();
  if (!IsSomethingDrawn(picture))
  {
    std::cerr << "zv-embed: nothing was drawn\n";
    return EXIT_FAILURE;
  }
  if (!picture.save(file))
  {
    std::cerr << "zv-embed: cannot write " << file.toStdString() << "\n";
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
}

int main(int argc, char** argv)
{
  QSurfaceFormat::setDefaultFormat(QVTKOpenGLNativeWidget::defaultFormat());
  QApplication application(argc, argv);

  zvQVTKWidget view;
  view.setMode3D(true); // the left button belongs to the widgets
  view.resize(600, 600);

  vtkNew<vtkRenderer> renderer;
  renderer->SetBackground(0.1, 0.1, 0.15);
  view.renderWindow()->AddRenderer(renderer);
  vtkNew<vtkInteractorStyleUser> style; // leaves every drag to the widgets
  view.interactor()->SetInteractorStyle(style);
  view.show();

  const auto volume = MakeVolume();
  auto* plane = new zvImagePlaneWidget;
  plane->SetInteractor(view.interactor());
  plane->SetCurrentRenderer(renderer);
  plane->SetInput(volume);
  plane->SetPlaneOrientation(2);
  plane->SetSliceIndex(32);
  plane->SetEnabled(1);

  renderer->GetActiveCamera()->SetPosition(150.0, -200.0, 120.0);
  renderer->GetActiveCamera()->SetViewUp(0.0, 0.0, 1.0);
  renderer->ResetCamera(volume->GetBounds());

  int status = EXIT_SUCCESS;
  const QStringList arguments = application.arguments();
  if (arguments.size() == 3 && arguments[1] == "--picture")
  {
    // The view can draw only once its window is on the screen.
    QObject::connect(&view, &QOpenGLWidget::frameSwapped, &application,
      [&]()
      {
        status = WritePicture(view, arguments[2]);
        QApplication::quit();
      });
  }
  QApplication::exec();

  plane->Delete();
  return status;
}
