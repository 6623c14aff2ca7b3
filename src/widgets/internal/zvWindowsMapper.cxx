#include "zvWindowsMapper.h"

#include "vtkHardwareSelector.h"
#include "vtkObjectFactory.h"
#include "vtkRenderWindow.h"
#include "vtkRenderer.h"

#include <algorithm>
#include <iterator>

vtkStandardNewMacro(zvWindowsMapper);

zvWindowsMapper::zvWindowsMapper() = default;

zvWindowsMapper::~zvWindowsMapper() = default;

void zvWindowsMapper::Render(vtkRenderer* renderer, vtkActor* actor)
{
  if (vtkPolyDataMapper* const mapper = this->MapperFor(renderer))
  {
    mapper->Render(renderer, actor);
    this->TimeToDraw = mapper->GetTimeToDraw();
  }
}

void zvWindowsMapper::RenderPiece(vtkRenderer* renderer, vtkActor* actor)
{
  if (vtkPolyDataMapper* const mapper = this->MapperFor(renderer))
  {
    mapper->RenderPiece(renderer, actor);
    this->TimeToDraw = mapper->GetTimeToDraw();
  }
}

void zvWindowsMapper::ReleaseGraphicsResources(vtkWindow* window)
{
  // Taken out first: what a release sets off may come back here.
  std::vector<Part> released;
  const auto kept = std::stable_partition(this->Parts.begin(), this->Parts.end(),
    [window](const Part& part) { return window && part.Window && part.Window != window; });
  std::move(kept, this->Parts.end(), std::back_inserter(released));
  this->Parts.erase(kept, this->Parts.end());
  for (const Part& part : released)
  {
    part.Mapper->ReleaseGraphicsResources(part.Window);
  }
}

void zvWindowsMapper::ProcessSelectorPixelBuffers(
  vtkHardwareSelector* selector, std::vector<unsigned int>& pixelOffsets, vtkProp* prop)
{
  if (vtkPolyDataMapper* const mapper = this->MapperFor(selector->GetRenderer()))
  {
    mapper->ProcessSelectorPixelBuffers(selector, pixelOffsets, prop);
  }
}

vtkPolyDataMapper* zvWindowsMapper::MapperFor(vtkRenderer* renderer)
{
  vtkWindow* const window = renderer ? renderer->GetRenderWindow() : nullptr;
  if (!window)
  {
    return nullptr;
  }
  auto part = std::find_if(this->Parts.begin(), this->Parts.end(),
    [window](const Part& candidate) { return candidate.Window == window; });
  if (part == this->Parts.end())
  {
    this->DropDeadParts();
    this->Parts.push_back({ window, vtkSmartPointer<vtkPolyDataMapper>::New(), 0 });
    part = this->Parts.end() - 1;
  }
  const vtkMTimeType now = this->GetMTime();
  if (part->CopiedAt != now)
  {
    part->CopiedAt = now;
    part->Mapper->ShallowCopy(this);
  }
  return part->Mapper;
}

void zvWindowsMapper::DropDeadParts()
{
  this->Parts.erase(std::remove_if(this->Parts.begin(), this->Parts.end(),
                      [](const Part& part) { return !part.Window; }),
    this->Parts.end());
}
