#include "zvCurveParts.h"

#include "zvListPicker.h"
#include "zvParametricSpline.h"

#include "vtkActor.h"
#include "vtkDataArray.h"
#include "vtkParametricFunctionSource.h"
#include "vtkPoints.h"
#include "vtkPolyDataMapper.h"
#include "vtkProperty.h"

#include <ostream>

namespace
{
constexpr double PickTolerance = 0.005;

// Without lighting, ambient and diffuse light are added up: full ambient light leaves no room.
vtkSmartPointer<vtkProperty> MakeEvenlyLitProperty()
{
  auto property = vtkSmartPointer<vtkProperty>::New();
  property->SetAmbient(1.0);
  property->SetDiffuse(0.0);
  return property;
}
}

namespace zvCurveParts
{
vtkSmartPointer<vtkPolyDataMapper> MakeMapper()
{
  auto mapper = vtkSmartPointer<vtkPolyDataMapper>::New();
  mapper->SetResolveCoincidentTopologyToPolygonOffset();
  return mapper;
}

vtkSmartPointer<vtkCellPicker> MakePicker()
{
  auto picker = vtkSmartPointer<zvListPicker>::New();
  picker->SetTolerance(PickTolerance);
  picker->PickFromListOn();
  return picker;
}

void BuildLine(
  zvParametricSpline* spline, vtkParametricFunctionSource* source, vtkActor* line, int resolution)
{
  spline->SetPoints(zvHandleCurve::MakePoints({}));
  source->SetParametricFunction(spline);
  source->SetScalarModeToNone();
  source->GenerateTextureCoordinatesOff();
  source->SetUResolution(resolution);
  auto mapper = MakeMapper();
  mapper->SetInputConnection(source->GetOutputPort());
  line->SetMapper(mapper);
}

void FollowHandles(
  const zvHandleCurve::Positions& handles, zvParametricSpline* spline, vtkActor* line)
{
  if (!spline)
  {
    return;
  }
  const auto count = static_cast<vtkIdType>(handles.size());
  line->SetVisibility(count > 0 ? 1 : 0);
  vtkPoints* points = spline->GetPoints();
  if (!points)
  {
    spline->SetPoints(zvHandleCurve::MakePoints(handles));
  }
  else
  {
    if (points->GetNumberOfPoints() != count)
    {
      points->GetData()->SetNumberOfComponents(3);
      points->GetData()->SetNumberOfTuples(count);
    }
    zvHandleCurve::Write(handles, points);
  }
  spline->Modified();
}

void Print(std::ostream& os, vtkIndent indent, const Printed& printed)
{
  for (const auto& [label, object] : printed.Objects)
  {
    os << indent << label << ": ";
    object ? os << object << "\n" : os << "(none)\n";
  }
  os << indent << "Project To Plane: " << (printed.ProjectToPlane ? "On\n" : "Off\n");
  os << indent << "Projection Normal: " << printed.ProjectionNormal << "\n";
  os << indent << "Projection Position: " << printed.ProjectionPosition << "\n";
  os << indent << "Resolution: " << printed.Resolution << "\n";
  os << indent << "Number Of Handles: " << printed.NumberOfHandles << "\n";
  os << indent << "Closed: " << (printed.Closed ? "On\n" : "Off\n");
}

zvHandleCurve::Position MotionBetween(const double* from, const double* to)
{
  return { { to[0] - from[0], to[1] - from[1], to[2] - from[2] } };
}

vtkSmartPointer<vtkProperty> MakeSelectedHandleProperty()
{
  auto property = MakeEvenlyLitProperty();
  property->SetColor(1.0, 0.0, 0.0);
  return property;
}

vtkSmartPointer<vtkProperty> MakeLineProperty()
{
  auto property = MakeEvenlyLitProperty();
  property->SetRepresentationToWireframe();
  property->SetColor(0.0, 1.0, 1.0);
  property->SetLineWidth(2.0);
  property->SetPointSize(5.5);
  return property;
}

vtkSmartPointer<vtkProperty> MakeSelectedLineProperty()
{
  auto property = MakeEvenlyLitProperty();
  property->SetRepresentationToWireframe();
  property->SetAmbientColor(0.0, 1.0, 0.0);
  property->SetLineWidth(2.0);
  return property;
}
}
