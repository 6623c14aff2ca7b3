#include "zvContourRing.h"

#include "zvNumbers.h"

#include "vtkCellArray.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"

#include <cmath>

namespace
{
constexpr double DoublePi = 3.141592653589793;
constexpr float SinglePi = 3.1415927f;

struct Direction
{
  double Cosine;
  double Sine;
};

Direction DirectionOf(float degrees, zvContourRing::Trigonometry trigonometry)
{
  if (trigonometry == zvContourRing::Trigonometry::Single)
  {
    const float radians = degrees * SinglePi / 180.0f;
    return { std::cos(radians), std::sin(radians) };
  }
  const double radians = degrees * DoublePi / 180.0;
  return { std::cos(radians), std::sin(radians) };
}

float Offset(double center, double distance)
{
  return static_cast<float>(center + zvNumbers::ToSinglePrecision(distance));
}
}

namespace zvContourRing
{
std::vector<std::array<float, 3>> Points(
  const double center[3], double radius, int resolution, Trigonometry trigonometry)
{
  std::vector<std::array<float, 3>> points;
  if (resolution < 1 || resolution > LargestResolution)
  {
    return points;
  }
  points.reserve(resolution);
  const float step = static_cast<float>(360.0 / resolution);
  const float z = static_cast<float>(center[2]);
  float angle = 0.0f;
  for (int i = 0; i < resolution; ++i)
  {
    const Direction direction = DirectionOf(angle, trigonometry);
    points.push_back({ { Offset(center[0], radius * direction.Cosine),
      Offset(center[1], radius * direction.Sine), z } });
    angle += step;
  }
  return points;
}

vtkSmartPointer<vtkPolyData> Make(
  const double center[3], double radius, int resolution, Trigonometry trigonometry)
{
  if (resolution < 2 || resolution > LargestResolution)
  {
    return nullptr;
  }
  auto points = vtkSmartPointer<vtkPoints>::New(); // single precision
  points->Allocate(resolution);
  auto lines = vtkSmartPointer<vtkCellArray>::New();
  lines->AllocateEstimate(resolution, 2);
  for (const auto& point : Points(center, radius, resolution, trigonometry))
  {
    const vtkIdType id = points->InsertNextPoint(point.data());
    const vtkIdType ids[2] = { id, id + 1 < resolution ? id + 1 : 0 };
    lines->InsertNextCell(2, ids);
  }
  auto ring = vtkSmartPointer<vtkPolyData>::New();
  ring->SetPoints(points);
  ring->SetLines(lines);
  return ring;
}
}
