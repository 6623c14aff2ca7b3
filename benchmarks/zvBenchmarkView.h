#ifndef zvBenchmarkView_h
#define zvBenchmarkView_h

#include "zvBenchmarkDisplay.h"

#include "vtkCamera.h"
#include "vtkInteractorStyleUser.h"
#include "vtkNew.h"
#include "vtkRenderWindow.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

/// A small window without multi-sampling, so that the frame does not hide the work. It looks along
/// -z at x and y from -60 to 60 mm, and leaves the mouse to the widgets.
struct zvBenchmarkView
{
  zvBenchmarkView()
  {
    this->Window->SetDisplayId(zvGetBenchmarkDisplay());
    this->Window->SetOffScreenRendering(1);
    this->Window->SetMultiSamples(0);
    this->Window->SetSize(300, 300);
    this->Window->AddRenderer(this->Renderer);
    this->Interactor->SetRenderWindow(this->Window);
    vtkNew<vtkInteractorStyleUser> style;
    this->Interactor->SetInteractorStyle(style);
    this->Interactor->Initialize();
    this->Renderer->GetActiveCamera()->ParallelProjectionOn();
    const double bounds[6] = { -60, 60, -60, 60, -1, 1 };
    this->Renderer->ResetCamera(bounds);
    this->Window->Render();
  }
  vtkNew<vtkRenderWindow> Window;
  vtkNew<vtkRenderer> Renderer;
  vtkNew<vtkRenderWindowInteractor> Interactor;
};

#endif
