#include "zvPlaneSource.h"

#include "vtkCellArray.h"
#include "vtkFloatArray.h"
#include "vtkInformation.h"
#include "vtkInformationVector.h"
#include "vtkMath.h"
#include "vtkNew.h"
#include "vtkObjectFactory.h"
#include "vtkPointData.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"
#include "vtkSmartPointer.h"

#include <algorithm>
#include <cmath>

namespace
{
bool IsAt(const double* point, double x, double y, double z)
{
  return point[0] == x && point[1] == y && point[2] == z;
}

void Copy(const double* from, double* to)
{
  std::copy_n(from, 3, to);
}

vtkSmartPointer<vtkFloatArray> NewArray(const char* name, int components, vtkIdType tuples)
{
  auto array = vtkSmartPointer<vtkFloatArray>::New();
  array->SetName(name);
  array->SetNumberOfComponents(components);
  array->SetNumberOfTuples(tuples);
  return array;
}

// The quads of a grid of points that lie row by row.
vtkSmartPointer<vtkCellArray> NewQuads(vtkIdType columns, vtkIdType rows)
{
  auto quads = vtkSmartPointer<vtkCellArray>::New();
  quads->AllocateExact(columns * rows, 4 * columns * rows);
  for (vtkIdType row = 0; row < rows; ++row)
  {
    for (vtkIdType column = 0; column < columns; ++column)
    {
      const vtkIdType below = row * (columns + 1) + column;
      const vtkIdType above = below + columns + 1;
      const vtkIdType corners[4] = { below, below + 1, above + 1, above };
      quads->InsertNextCell(4, corners);
    }
  }
  return quads;
}
}

vtkObjectFactoryNewMacro(zvPlaneSource)

  zvPlaneSource::zvPlaneSource()
{
  this->SetNumberOfInputPorts(0);
}

void zvPlaneSource::SetXResolution(int resolution)
{
  this->SetResolution(resolution, this->YResolution);
}

int zvPlaneSource::GetXResolution()
{
  return this->XResolution;
}

void zvPlaneSource::SetYResolution(int resolution)
{
  this->SetResolution(this->XResolution, resolution);
}

int zvPlaneSource::GetYResolution()
{
  return this->YResolution;
}

void zvPlaneSource::SetOrigin(double x, double y, double z)
{
  this->ChangePoint(this->Origin, x, y, z);
}

void zvPlaneSource::SetOrigin(double* point)
{
  this->SetOrigin(point[0], point[1], point[2]);
}

double* zvPlaneSource::GetOrigin()
{
  return this->Origin;
}

void zvPlaneSource::GetOrigin(double* point)
{
  Copy(this->Origin, point);
}

double* zvPlaneSource::GetPoint1()
{
  return this->Point1;
}

void zvPlaneSource::GetPoint1(double* point)
{
  Copy(this->Point1, point);
}

double* zvPlaneSource::GetPoint2()
{
  return this->Point2;
}

void zvPlaneSource::GetPoint2(double* point)
{
  Copy(this->Point2, point);
}

double* zvPlaneSource::GetCenter()
{
  return this->Center;
}

void zvPlaneSource::GetCenter(double* center)
{
  Copy(this->Center, center);
}

double* zvPlaneSource::GetNormal()
{
  return this->Normal;
}

void zvPlaneSource::GetNormal(double* normal)
{
  Copy(this->Normal, normal);
}

void zvPlaneSource::SetPoint1(double x, double y, double z)
{
  this->ChangePoint(this->Point1, x, y, z);
}

void zvPlaneSource::SetPoint1(double* point)
{
  this->SetPoint1(point[0], point[1], point[2]);
}

void zvPlaneSource::SetPoint2(double x, double y, double z)
{
  this->ChangePoint(this->Point2, x, y, z);
}

void zvPlaneSource::SetPoint2(double* point)
{
  this->SetPoint2(point[0], point[1], point[2]);
}

void zvPlaneSource::SetResolution(int xResolution, int yResolution)
{
  xResolution = std::max(xResolution, 1);
  yResolution = std::max(yResolution, 1);
  if (xResolution != this->XResolution || yResolution != this->YResolution)
  {
    this->XResolution = xResolution;
    this->YResolution = yResolution;
    this->Modified();
  }
}

void zvPlaneSource::GetResolution(int& xResolution, int& yResolution)
{
  xResolution = this->XResolution;
  yResolution = this->YResolution;
}

void zvPlaneSource::GetAxis1(double* axis)
{
  vtkMath::Subtract(this->Point1, this->Origin, axis);
}

void zvPlaneSource::GetAxis2(double* axis)
{
  vtkMath::Subtract(this->Point2, this->Origin, axis);
}

void zvPlaneSource::SetCenter(double x, double y, double z)
{
  if (IsAt(this->Center, x, y, z))
  {
    return;
  }
  const double shift[3] = { x - this->Center[0], y - this->Center[1], z - this->Center[2] };
  this->Translate(shift);
  // Not computed from the points again, which could miss the wish by a rounding error and would
  // make each repetition of the same centre a change.
  this->Center[0] = x;
  this->Center[1] = y;
  this->Center[2] = z;
  this->Modified();
}

void zvPlaneSource::SetCenter(double* center)
{
  this->SetCenter(center[0], center[1], center[2]);
}

void zvPlaneSource::SetNormal(double x, double y, double z)
{
  double wish[3] = { x, y, z };
  if (vtkMath::Normalize(wish) == 0.0)
  {
    vtkErrorMacro("A plane cannot be turned to a normal of no length");
    return;
  }
  if (IsAt(this->Normal, 0.0, 0.0, 0.0))
  {
    vtkErrorMacro("A plane that spans no area cannot be turned to a normal");
    return;
  }
  double axis[3];
  vtkMath::Cross(this->Normal, wish, axis);
  const double sine = vtkMath::Normalize(axis);
  const double cosine = vtkMath::Dot(this->Normal, wish);
  if (sine == 0.0)
  {
    if (cosine > 0.0)
    {
      return;
    }
    // Straight over: any axis in the plane will do.
    this->GetAxis1(axis);
    vtkMath::Normalize(axis);
  }
  this->Turn(std::atan2(sine, cosine), axis);
}

void zvPlaneSource::SetNormal(double* normal)
{
  this->SetNormal(normal[0], normal[1], normal[2]);
}

void zvPlaneSource::Push(double distance)
{
  const double shift[3] = { distance * this->Normal[0], distance * this->Normal[1],
    distance * this->Normal[2] };
  if (IsAt(shift, 0.0, 0.0, 0.0))
  {
    return;
  }
  // The normal is not computed again: pushed to and fro, a plane must not turn by rounding.
  this->Translate(shift);
  this->UpdateCenter();
  this->Modified();
}

void zvPlaneSource::Rotate(double angle, double* rotationAxis)
{
  double axis[3] = { rotationAxis[0], rotationAxis[1], rotationAxis[2] };
  if (angle != 0.0 && vtkMath::Normalize(axis) != 0.0)
  {
    this->Turn(vtkMath::RadiansFromDegrees(angle), axis);
  }
}

void zvPlaneSource::SetOutputPointsPrecision(int precision)
{
  if (precision != this->OutputPointsPrecision)
  {
    this->OutputPointsPrecision = precision;
    this->Modified();
  }
}

int zvPlaneSource::GetOutputPointsPrecision()
{
  return this->OutputPointsPrecision;
}

void zvPlaneSource::ChangePoint(double* point, double x, double y, double z)
{
  if (IsAt(point, x, y, z))
  {
    return;
  }
  point[0] = x;
  point[1] = y;
  point[2] = z;
  this->UpdateNormal();
  this->UpdateCenter();
  this->Modified();
}

void zvPlaneSource::Translate(const double* shift)
{
  vtkMath::Add(this->Origin, shift, this->Origin);
  vtkMath::Add(this->Point1, shift, this->Point1);
  vtkMath::Add(this->Point2, shift, this->Point2);
}

void zvPlaneSource::Turn(double radians, const double* unitAxis)
{
  const double rotation[4] = { radians, unitAxis[0], unitAxis[1], unitAxis[2] };
  for (double* point : { this->Origin, this->Point1, this->Point2 })
  {
    double arm[3], turned[3];
    vtkMath::Subtract(point, this->Center, arm);
    vtkMath::RotateVectorByWXYZ(arm, rotation, turned);
    vtkMath::Add(this->Center, turned, point);
  }
  this->UpdateNormal();
  this->Modified();
}

void zvPlaneSource::UpdateNormal()
{
  double axis1[3], axis2[3];
  this->GetAxis1(axis1);
  this->GetAxis2(axis2);
  vtkMath::Cross(axis1, axis2, this->Normal);
  vtkMath::Normalize(this->Normal);
}

void zvPlaneSource::UpdateCenter()
{
  double axis1[3], axis2[3];
  this->GetAxis1(axis1);
  this->GetAxis2(axis2);
  for (int i = 0; i < 3; ++i)
  {
    this->Center[i] = this->Origin[i] + 0.5 * (axis1[i] + axis2[i]);
  }
}

int zvPlaneSource::RequestData(
  vtkInformation*, vtkInformationVector**, vtkInformationVector* outputs)
{
  const vtkIdType columns = this->XResolution;
  const vtkIdType rows = this->YResolution;
  const vtkIdType count = (columns + 1) * (rows + 1);
  double axis1[3], axis2[3];
  this->GetAxis1(axis1);
  this->GetAxis2(axis2);

  vtkNew<vtkPoints> points;
  const bool inDouble = this->OutputPointsPrecision == vtkAlgorithm::DOUBLE_PRECISION;
  points->SetDataType(inDouble ? VTK_DOUBLE : VTK_FLOAT);
  points->SetNumberOfPoints(count);
  auto normals = NewArray("Normals", 3, count);
  auto textureCoordinates = NewArray("TextureCoordinates", 2, count);
  for (vtkIdType id = 0; id < count; ++id)
  {
    const double s = static_cast<double>(id % (columns + 1)) / columns;
    const double t = static_cast<double>(id / (columns + 1)) / rows;
    points->SetPoint(id, this->Origin[0] + s * axis1[0] + t * axis2[0],
      this->Origin[1] + s * axis1[1] + t * axis2[1], this->Origin[2] + s * axis1[2] + t * axis2[2]);
    normals->SetTuple(id, this->Normal);
    textureCoordinates->SetTuple2(id, s, t);
  }

  vtkPolyData* output = vtkPolyData::GetData(outputs);
  output->SetPoints(points);
  output->SetPolys(NewQuads(columns, rows));
  output->GetPointData()->SetNormals(normals);
  output->GetPointData()->SetTCoords(textureCoordinates);
  return 1;
}

void zvPlaneSource::PrintSelf(ostream& os, vtkIndent indent)
{
  this->Superclass::PrintSelf(os, indent);
  const auto print = [&](const char* label, const double* v)
  { os << indent << label << ": (" << v[0] << ", " << v[1] << ", " << v[2] << ")\n"; };
  os << indent << "X Resolution: " << this->XResolution << "\n";
  os << indent << "Y Resolution: " << this->YResolution << "\n";
  print("Origin", this->Origin);
  print("Point 1", this->Point1);
  print("Point 2", this->Point2);
  print("Normal", this->Normal);
  print("Center", this->Center);
  os << indent << "Output Points Precision: " << this->OutputPointsPrecision << "\n";
}
