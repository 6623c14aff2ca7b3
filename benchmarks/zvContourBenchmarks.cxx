// The workstation's active contour: one step of the deformation, and beside it what a slice costs
// once, its edges, with the two stock filters that begin the same work.
#include "zvActiveContour.h"
#include "zvContourForces.h"
#include "zvContourPlane.h"

#include "vtkImageData.h"
#include "vtkImageGaussianSmooth.h"
#include "vtkImageGradientMagnitude.h"
#include "vtkNew.h"
#include "vtkSmartPointer.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <string>

namespace
{
constexpr int Side = 512;

/// A slice of a millimetre a voxel with an ellipse that waves a little.
vtkSmartPointer<vtkImageData> MakeSlice(int side)
{
  auto slice = vtkSmartPointer<vtkImageData>::New();
  slice->SetDimensions(side, side, 1);
  slice->AllocateScalars(VTK_FLOAT, 1);
  auto* value = static_cast<float*>(slice->GetScalarPointer());
  for (int j = 0; j < side; ++j)
  {
    for (int i = 0; i < side; ++i)
    {
      const double x = 2.0 * i / side - 1.0, y = 2.0 * j / side - 1.0;
      const double reach = 0.7 + 0.03 * std::cos(5.0 * std::atan2(y, x));
      const bool isInside = std::hypot(x, 1.3 * y) < reach;
      *value++ = static_cast<float>((isInside ? 300.0 : 100.0) + (7 * i + 5 * j) % 13);
    }
  }
  return slice;
}

void Step(benchmark::State& state, std::size_t count)
{
  const auto forces = std::make_shared<const zvContourForces>(MakeSlice(Side), zvForceParameters());
  const zvContour ring = zvContourMath::MakeRing({ { 0.5 * Side, 0.5 * Side } }, 20.0, count);
  zvActiveContour contour;
  contour.Begin(forces, ring);
  for (auto _ : state)
  {
    if (contour.Step() != zvActiveContour::State::Moving)
    {
      state.PauseTiming();
      contour.Begin(forces, ring);
      state.ResumeTiming();
    }
  }
}

void FindEdges(benchmark::State& state, int side)
{
  const auto slice = MakeSlice(side);
  for (auto _ : state)
  {
    const zvContourForces forces(slice, zvForceParameters());
    benchmark::DoNotOptimize(forces.HasEdges());
  }
}

void FindGradient(benchmark::State& state, int side)
{
  const auto slice = MakeSlice(side);
  vtkNew<vtkImageGaussianSmooth> smooth;
  smooth->SetInputData(slice);
  smooth->SetDimensionality(2);
  smooth->SetStandardDeviations(1.0, 1.0);
  smooth->SetRadiusFactors(3.0, 3.0);
  vtkNew<vtkImageGradientMagnitude> gradient;
  gradient->SetInputConnection(smooth->GetOutputPort());
  gradient->SetDimensionality(2);
  for (auto _ : state)
  {
    smooth->Modified();
    gradient->Update();
  }
}

const bool Registered = []
{
  const auto add = [](const std::string& name, auto work, auto size)
  {
    benchmark::RegisterBenchmark((name + "/" + std::to_string(size)).c_str(),
      [work, size](benchmark::State& state) { work(state, size); })
      ->Unit(benchmark::kMillisecond)
      ->UseRealTime();
  };
  for (const std::size_t count : { std::size_t(50), std::size_t(100), std::size_t(500) })
  {
    add("zv/contour_step/zvActiveContour", Step, count);
  }
  for (const int side : { 256, 512 })
  {
    add("zv/contour_edges/zvContourForces", FindEdges, side);
    add("plain/contour_edges/vtkImageGradientMagnitude", FindGradient, side);
  }
  return true;
}();
}
