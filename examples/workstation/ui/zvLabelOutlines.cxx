#include "zvLabelOutlines.h"

#include "vtkActorCollection.h"
#include "vtkCamera.h"
#include "vtkCommand.h"
#include "vtkFollower.h"
#include "vtkMapper.h"
#include "vtkMath.h"
#include "vtkProperty.h"
#include "vtkRenderer.h"

#include <algorithm>
#include <vector>

namespace
{
constexpr double Width = 1.3;   // pixels
constexpr double Behind = 0.05; // millimetres, so that the text lies before its outline
constexpr double Color[3] = { 0.02, 0.02, 0.02 };
constexpr double Ways[4][2] = { { -1.0, 0.0 }, { 1.0, 0.0 }, { 0.0, -1.0 }, { 0.0, 1.0 } };
}

zvLabelOutlines::zvLabelOutlines(vtkRenderer* renderer)
  : Renderer(renderer)
  , Observer(renderer->AddObserver(vtkCommand::StartEvent, this, &zvLabelOutlines::Update))
{
}

zvLabelOutlines::~zvLabelOutlines()
{
  this->Renderer->RemoveObserver(this->Observer);
  for (const auto& entry : this->Outlines)
  {
    for (const auto& side : entry.second)
    {
      this->Renderer->RemoveActor(side);
    }
  }
}

void zvLabelOutlines::Update()
{
  this->RemoveStale();
  std::vector<vtkFollower*> texts;
  vtkActorCollection* actors = this->Renderer->GetActors();
  vtkCollectionSimpleIterator position;
  actors->InitTraversal(position);
  while (vtkActor* actor = actors->GetNextActor(position))
  {
    auto* follower = vtkFollower::SafeDownCast(actor);
    const bool isOutline = follower != nullptr &&
      std::any_of(this->Outlines.begin(), this->Outlines.end(),
        [follower](const auto& entry)
        {
          return std::any_of(entry.second.begin(), entry.second.end(),
            [follower](const auto& side) { return side.Get() == follower; });
        });
    if (follower != nullptr && !isOutline && follower->GetMapper() != nullptr)
    {
      texts.push_back(follower);
    }
  }
  for (vtkFollower* text : texts)
  {
    this->Put(text, this->Outlines[text]);
  }
}

// Of texts that are not shown any more.
void zvLabelOutlines::RemoveStale()
{
  for (auto entry = this->Outlines.begin(); entry != this->Outlines.end();)
  {
    if (this->Renderer->HasViewProp(entry->first))
    {
      ++entry;
      continue;
    }
    for (const auto& side : entry->second)
    {
      this->Renderer->RemoveActor(side);
    }
    entry = this->Outlines.erase(entry);
  }
}

void zvLabelOutlines::Put(vtkFollower* text, Outline& outline)
{
  vtkCamera* camera = this->Renderer->GetActiveCamera();
  double away[3], up[3], right[3];
  camera->GetDirectionOfProjection(away);
  camera->GetViewUp(up);
  vtkMath::Cross(away, up, right);
  const int height = std::max(this->Renderer->GetSize()[1], 1);
  const double pixel = 2.0 * camera->GetParallelScale() / height;
  const double* at = text->GetPosition();
  for (std::size_t side = 0; side < Sides; ++side)
  {
    vtkFollower* one = outline[side];
    if (!this->Renderer->HasViewProp(one))
    {
      one->PickableOff();
      one->GetProperty()->SetColor(Color[0], Color[1], Color[2]);
      one->GetProperty()->LightingOff();
      this->Renderer->AddActor(one);
    }
    one->SetMapper(text->GetMapper());
    one->SetCamera(camera);
    one->SetScale(text->GetScale());
    // A text that faces the camera of another view is seen from its edge here.
    one->SetVisibility(text->GetVisibility() && text->GetCamera() == camera);
    double place[3];
    for (int i = 0; i < 3; ++i)
    {
      place[i] = at[i] + Behind * away[i] +
        Width * pixel * (Ways[side][0] * right[i] + Ways[side][1] * up[i]);
    }
    one->SetPosition(place);
  }
}
