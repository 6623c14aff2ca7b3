#include "zvBoxMarker.h"

#include "zvBoxWidget.h"
#include "zvImageViewerWidget.h"

#include "vtkActor.h"
#include "vtkCommand.h"
#include "vtkImageData.h"
#include "vtkOutlineSource.h"
#include "vtkPolyData.h"
#include "vtkPolyDataMapper.h"
#include "vtkProperty.h"
#include "vtkRenderWindow.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

#include "zvInstanceManager.h"

zvBoxMarker::zvBoxMarker(zvViewGrid* views)
  : zvMarker(views)
{
  this->Mapper->SetInputData(this->Edges);
  this->Actor->SetMapper(this->Mapper);
  this->Actor->GetProperty()->SetColor(1.0, 0.75, 0.2);
  this->Actor->GetProperty()->LightingOff();
  this->Actor->GetProperty()->SetLineWidth(2.0f);
  this->Actor->PickableOff();
}

zvBoxMarker::~zvBoxMarker()
{
  this->ShowEdges(false);
  if (this->Box)
  {
    this->Box->RemoveAllObservers();
    this->Box->SetEnabled(0);
  }
}

void zvBoxMarker::Begin()
{
  vtkImageData* image =
    vtkImageData::SafeDownCast(zvInstanceManager::Instance()->GetCurrentOutput());
  if (this->Box || image == nullptr)
  {
    return;
  }
  this->Box = vtkSmartPointer<zvBoxWidget>::Take(new zvBoxWidget);
  this->Box->SetInteractor(this->GetRenderer3D()->GetRenderWindow()->GetInteractor());
  this->Box->SetCurrentRenderer(this->GetRenderer3D());
  LetComeFirst(this->Box);
  this->Box->SetRotationEnabled(0); // its bounds would be those of a larger box
  this->Box->SetPlaceFactor(0.5);
  this->Box->PlaceWidget(image->GetBounds());
  this->Box->SetEnabled(1);
  this->Box->AddObserver(vtkCommand::InteractionEvent, this, &zvBoxMarker::HandleMoved);
  this->Box->AddObserver(vtkCommand::EndInteractionEvent, this, &zvBoxMarker::HandleMoved);
  ++this->Id;
  this->ShowEdges(true);
  this->FollowBox();
}

zvBoxWidget* zvBoxMarker::GetWidget() const
{
  return this->Box;
}

void zvBoxMarker::Enter(vtkRenderer*) {}

std::array<double, 6> zvBoxMarker::GetBounds() const
{
  return { { this->Box->GetBound0(), this->Box->GetBound1(), this->Box->GetBound2(),
    this->Box->GetBound3(), this->Box->GetBound4(), this->Box->GetBound5() } };
}

void zvBoxMarker::FollowBox()
{
  vtkNew<vtkOutlineSource> outline;
  outline->SetBounds(this->GetBounds().data());
  outline->Update();
  this->Edges->ShallowCopy(outline->GetOutput());
  for (int axis = 0; axis < 3; ++axis)
  {
    this->GetSliceRenderer(axis)->GetRenderWindow()->GetInteractor()->Render();
  }
  emit this->changed();
}

void zvBoxMarker::ShowEdges(bool shown)
{
  for (int axis = 0; axis < 3; ++axis)
  {
    vtkRenderer* renderer = this->GetSliceRenderer(axis);
    shown ? renderer->AddActor(this->Actor) : renderer->RemoveActor(this->Actor);
  }
}

std::vector<zvMeasurement> zvBoxMarker::Read() const
{
  if (!this->Box)
  {
    return {};
  }
  zvMeasurement line;
  line.Id = this->Id;
  line.Kind = tr("Box");
  line.Unit = "mm";
  line.IsHidden = this->Box->GetEnabled() == 0;
  QStringList numbers;
  for (const double bound : this->GetBounds())
  {
    numbers += Number(bound);
  }
  line.Value = numbers.join(' ');
  return { line };
}

zvMarker::Vector zvBoxMarker::GetPlace(int) const
{
  Vector centre{};
  if (this->Box)
  {
    const std::array<double, 6> bounds = this->GetBounds();
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
      centre[axis] = 0.5 * (bounds[2 * axis] + bounds[2 * axis + 1]);
    }
  }
  return centre;
}

void zvBoxMarker::SetHidden(int id, bool hidden)
{
  if (this->IsKnown(id))
  {
    this->Box->SetEnabled(hidden ? 0 : 1);
    this->ShowEdges(!hidden);
    this->FollowBox();
  }
}

void zvBoxMarker::Remove(int id)
{
  if (id == this->Id)
  {
    this->RemoveAll();
  }
}

void zvBoxMarker::RemoveAll()
{
  if (!this->Box)
  {
    return;
  }
  this->Box->RemoveAllObservers();
  this->Box->SetEnabled(0);
  this->ShowEdges(false);
  this->FollowBox();
  this->Box = nullptr;
  emit this->changed();
}

void zvBoxMarker::HandleMoved(vtkObject*, unsigned long, void*)
{
  this->FollowBox();
}
