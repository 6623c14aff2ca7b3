#include "zvMarkerParts.h"

#include "zvCollections.h"
#include "zvViewLookup.h"
#include "zvViewPicker.h"
#include "zvWindowsMapper.h"

#include "vtkActor.h"
#include "vtkProperty.h"
#include "vtkSphereSource.h"

namespace
{
constexpr int SphereResolution = 20;
}

vtkSmartPointer<vtkSphereSource> zvMarkerParts::MakeSphere(const double center[3], double radius)
{
  auto sphere = vtkSmartPointer<vtkSphereSource>::New();
  sphere->SetCenter(center[0], center[1], center[2]);
  sphere->SetRadius(radius);
  sphere->SetThetaResolution(SphereResolution);
  sphere->SetPhiResolution(SphereResolution);
  return sphere;
}

vtkSmartPointer<vtkActor> zvMarkerParts::MakeActor(vtkAlgorithm* source, vtkProperty* property)
{
  vtkNew<zvWindowsMapper> mapper;
  mapper->SetInputConnection(source->GetOutputPort());
  auto actor = vtkSmartPointer<vtkActor>::New();
  actor->SetMapper(mapper);
  actor->SetProperty(property);
  return actor;
}

vtkSmartPointer<vtkCellPicker> zvMarkerParts::MakePicker(double tolerance)
{
  auto picker = vtkSmartPointer<zvViewPicker>::New();
  picker->SetTolerance(tolerance);
  picker->PickFromListOn();
  return picker;
}

vtkSmartPointer<vtkProperty> zvMarkerParts::MakeProperty(double red, double green, double blue)
{
  auto property = vtkSmartPointer<vtkProperty>::New();
  property->SetColor(red, green, blue);
  return property;
}

void zvMarkerParts::SetRadius(vtkCollection* spheres, double radius)
{
  zvCollections::ForEachOwn<vtkSphereSource>(
    spheres, [radius](vtkSphereSource* sphere, int) { sphere->SetRadius(radius); });
}

void zvMarkerParts::Spread(vtkCollection* spheres, const double bounds[6])
{
  const double steps = spheres->GetNumberOfItems() - 1.0;
  zvCollections::ForEach<vtkSphereSource>(spheres,
    [steps, bounds](vtkSphereSource* sphere, int index)
    {
      const double u = index / steps;
      double center[3];
      for (int axis = 0; axis < 3; ++axis)
      {
        center[axis] = (1.0 - u) * bounds[2 * axis] + u * bounds[2 * axis + 1];
      }
      sphere->SetCenter(center);
    });
}

void zvMarkerParts::TakeOut(vtkCollection* actors)
{
  for (const auto& actor : zvCollections::ItemsOf<vtkActor>(actors))
  {
    zvViewLookup::TakeOut(actor);
  }
}

void zvMarkerParts::Print(ostream& os, vtkIndent indent, const PrintedFields& fields)
{
  const auto printProperty = [&os, indent](const char* label, vtkProperty* property)
  {
    os << indent << label << ": ";
    property ? os << property << "\n" : os << "(none)\n";
  };
  printProperty("Handle Property", fields.HandleProperty);
  printProperty("Selected Handle Property", fields.SelectedHandleProperty);
  os << indent << "Project To Plane: " << (fields.ProjectToPlane ? "On\n" : "Off\n");
  os << indent << "Projection Normal: " << fields.ProjectionNormal << "\n";
  os << indent << "Projection Position: " << fields.ProjectionPosition << "\n";
}

void zvMarkerParts::Highlight(
  vtkCollection* actors, int index, vtkProperty* normal, vtkProperty* selected)
{
  zvCollections::ForEachOwn<vtkActor>(actors,
    [index, normal, selected](vtkActor* actor, int at)
    { actor->SetProperty(at == index ? selected : normal); });
}
