#include "zvScene.h"

#include "vtkCamera.h"
#include "vtkInteractorStyleUser.h"
#include "vtkNew.h"
#include "vtkRenderWindow.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

#include <cmath>

namespace zvtest
{
Scene::Scene(const SceneOptions& options)
  : RenderWindow(vtkSmartPointer<vtkRenderWindow>::New())
  , WindowInteractor(vtkSmartPointer<vtkRenderWindowInteractor>::New())
{
  this->RenderWindow->SetOffScreenRendering(1);
  this->RenderWindow->SetMultiSamples(0); // sharp colours for the probes
  this->RenderWindow->SetSize(options.Width, options.Height);
  for (int i = 0; i < options.Viewports; ++i)
  {
    auto renderer = vtkSmartPointer<vtkRenderer>::New();
    const double width = 1.0 / options.Viewports;
    renderer->SetViewport(i * width, 0.0, (i + 1) * width, 1.0);
    renderer->GetActiveCamera()->SetParallelProjection(options.ParallelProjection ? 1 : 0);
    this->RenderWindow->AddRenderer(renderer);
    this->Renderers.push_back(renderer);
  }
  this->WindowInteractor->SetRenderWindow(this->RenderWindow);
  vtkNew<vtkInteractorStyleUser> style;
  this->WindowInteractor->SetInteractorStyle(style);
  this->WindowInteractor->Initialize();
}

Scene::~Scene() = default;

void Scene::Render()
{
  this->RenderWindow->Render();
}

Picture Scene::Look() const
{
  return Picture(this->RenderWindow);
}

Picture Scene::RenderAndLook()
{
  this->Render();
  return this->Look();
}

void Scene::ResetCamera(int viewport)
{
  this->Renderer(viewport)->ResetCamera();
}

void Scene::ResetCamera(const double bounds[6], int viewport)
{
  this->Renderer(viewport)->ResetCamera(bounds);
}

void Scene::LookAlong(int axis, int viewport)
{
  static const World directions[3] = { { { -1, 0, 0 } }, { { 0, 1, 0 } }, { { 0, 0, -1 } } };
  static const World ups[3] = { { { 0, 0, 1 } }, { { 0, 0, 1 } }, { { 0, 1, 0 } } };
  this->LookAlong(directions[axis], ups[axis], viewport);
}

void Scene::LookAlong(const World& direction, const World& up, int viewport)
{
  vtkCamera* camera = this->Renderer(viewport)->GetActiveCamera();
  camera->SetFocalPoint(0.0, 0.0, 0.0);
  camera->SetPosition(-direction[0], -direction[1], -direction[2]);
  camera->SetViewUp(up.data());
  this->ResetCamera(viewport);
}

Display Scene::At(const World& position, int viewport) const
{
  vtkRenderer* renderer = this->Renderer(viewport);
  renderer->SetWorldPoint(position[0], position[1], position[2], 1.0);
  renderer->WorldToDisplay();
  const double* display = renderer->GetDisplayPoint();
  return { { static_cast<int>(std::floor(display[0])), static_cast<int>(std::floor(display[1])) } };
}

World Scene::WorldAt(const Display& position, const World& depthOf, int viewport) const
{
  vtkRenderer* renderer = this->Renderer(viewport);
  renderer->SetWorldPoint(depthOf[0], depthOf[1], depthOf[2], 1.0);
  renderer->WorldToDisplay();
  const double depth = renderer->GetDisplayPoint()[2];
  renderer->SetDisplayPoint(position[0], position[1], depth);
  renderer->DisplayToWorld();
  const double* world = renderer->GetWorldPoint();
  return { { world[0] / world[3], world[1] / world[3], world[2] / world[3] } };
}

Color Scene::ColorAt(const World& position, int viewport) const
{
  return this->Look().At(this->At(position, viewport));
}

void Scene::DropInteractor()
{
  // Window and interactor hold each other.
  if (this->RenderWindow)
  {
    this->RenderWindow->SetInteractor(nullptr);
  }
  this->WindowInteractor = nullptr;
}

void Scene::DropRenderers()
{
  for (const auto& renderer : this->Renderers)
  {
    if (this->RenderWindow)
    {
      this->RenderWindow->RemoveRenderer(renderer);
    }
  }
  this->Renderers.clear();
}

void Scene::DropWindow()
{
  if (this->WindowInteractor)
  {
    this->RenderWindow->SetInteractor(nullptr);
    this->WindowInteractor->SetRenderWindow(nullptr);
  }
  this->RenderWindow = nullptr;
}
}
