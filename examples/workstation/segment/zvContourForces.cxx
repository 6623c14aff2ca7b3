#include "zvContourForces.h"

#include "vtkAlgorithmOutput.h"
#include "vtkCellArray.h"
#include "vtkDataArray.h"
#include "vtkExtractVOI.h"
#include "vtkFloatArray.h"
#include "vtkImageAppendComponents.h"
#include "vtkImageCast.h"
#include "vtkImageData.h"
#include "vtkImageGaussianSmooth.h"
#include "vtkImageGradient.h"
#include "vtkImageGradientMagnitude.h"
#include "vtkImageInterpolator.h"
#include "vtkImageMathematics.h"
#include "vtkImageNonMaximumSuppression.h"
#include "vtkImagePermute.h"
#include "vtkNew.h"
#include "vtkPointData.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"
#include "vtkThresholdPoints.h"
#include "vtkTrivialProducer.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

namespace
{
constexpr double LeastReach = 0.7;         // of the pull, in voxels: that of the gradient itself
constexpr double LeastEdgeContrast = 1e-3; // below it, rounding would be an edge
constexpr double NoticeablePart = 1e-3;    // of the strongest gradient
constexpr double RoundingPart = 1e-5;      // of the largest value

enum Component
{
  ValueComponent,
  GradientComponent,
  FirstPullComponent,
  SecondPullComponent,
  ComponentCount
};

float* ValuesOf(vtkImageData* image)
{
  return static_cast<float*>(image->GetScalarPointer());
}

// The value below which a part of all lies.
float FindQuantile(std::vector<float>& values, double part)
{
  const auto place = static_cast<std::ptrdiff_t>(part * static_cast<double>(values.size() - 1));
  std::nth_element(values.begin(), values.begin() + place, values.end());
  return values[static_cast<std::size_t>(place)];
}

// What so many of the values reach; fewer than there are.
double FindLeast(vtkDataArray* values, vtkIdType most)
{
  std::vector<double> sorted;
  for (vtkIdType i = 0; i < values->GetNumberOfTuples(); ++i)
  {
    sorted.push_back(values->GetComponent(i, 0));
  }
  std::nth_element(sorted.begin(), sorted.begin() + most, sorted.end(), std::greater<double>());
  return sorted[static_cast<std::size_t>(most)];
}

// The gradient of an image in its plane, as floats, since the filters take only one sort together.
vtkSmartPointer<vtkImageData> MakeSlope(vtkAlgorithmOutput* image)
{
  vtkNew<vtkImageGradient> gradient;
  gradient->SetInputConnection(image);
  gradient->SetDimensionality(2);
  gradient->HandleBoundariesOn();
  vtkNew<vtkImageCast> narrow;
  narrow->SetInputConnection(gradient->GetOutputPort());
  narrow->SetOutputScalarTypeToFloat();
  narrow->Update();
  return narrow->GetOutput();
}

// Fills the voxels that have no finite value from their neighbours, ring by ring from the edge of
// each hole inwards. A filter would smear the hole over all that its kernel reaches.
class HoleFiller
{
public:
  HoleFiller(float* values, int width, int height)
    : Values(values)
    , Width(width)
    , Height(height)
    , IsListed(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), false)
  {
  }

  /// \return how many there were; they stay if that is all of them.
  int Fill()
  {
    int count = 0;
    std::vector<int> ring;
    for (int i = 0; i < this->Width * this->Height; ++i)
    {
      if (!std::isfinite(this->Values[i]))
      {
        ++count;
        if (std::isfinite(this->GetMeanAround(i)))
        {
          this->IsListed[static_cast<std::size_t>(i)] = true;
          ring.push_back(i);
        }
      }
    }
    while (!ring.empty())
    {
      this->FillRing(ring);
      ring = this->FindNextRing(ring);
    }
    return count;
  }

private:
  void FillRing(const std::vector<int>& ring)
  {
    std::vector<float> means;
    for (const int hole : ring)
    {
      means.push_back(this->GetMeanAround(hole));
    }
    for (std::size_t i = 0; i < ring.size(); ++i)
    {
      this->Values[ring[i]] = means[i];
    }
  }

  std::vector<int> FindNextRing(const std::vector<int>& ring)
  {
    std::vector<int> next;
    for (const int index : ring)
    {
      this->VisitAround(index,
        [&](int neighbour)
        {
          const auto place = static_cast<std::size_t>(neighbour);
          if (!std::isfinite(this->Values[neighbour]) && !this->IsListed[place])
          {
            this->IsListed[place] = true;
            next.push_back(neighbour);
          }
        });
    }
    return next;
  }

  float GetMeanAround(int index) const
  {
    double sum = 0.0;
    int count = 0;
    this->VisitAround(index,
      [&](int neighbour)
      {
        if (std::isfinite(this->Values[neighbour]))
        {
          sum += this->Values[neighbour];
          ++count;
        }
      });
    return static_cast<float>(count > 0 ? sum / count : std::nan(""));
  }

  template <typename Visit>
  void VisitAround(int index, Visit visit) const
  {
    const int x = index % this->Width, y = index / this->Width;
    for (int j = std::max(y - 1, 0); j <= std::min(y + 1, this->Height - 1); ++j)
    {
      for (int i = std::max(x - 1, 0); i <= std::min(x + 1, this->Width - 1); ++i)
      {
        visit(j * this->Width + i);
      }
    }
  }

  float* Values;
  int Width;
  int Height;
  std::vector<bool> IsListed;
};
}

zvContourForces::~zvContourForces() = default;

vtkSmartPointer<vtkImageData> zvContourForces::CutSlice(
  vtkImageData* volume, const zvContourPlane& plane)
{
  vtkNew<vtkExtractVOI> cut;
  int extent[6];
  volume->GetExtent(extent);
  extent[2 * plane.GetAxis()] = extent[2 * plane.GetAxis() + 1] = plane.GetSlice();
  cut->SetInputData(volume);
  cut->SetVOI(extent);
  // First, since the permutation does not know every sort of scalars.
  vtkNew<vtkImageCast> cast;
  cast->SetInputConnection(cut->GetOutputPort());
  cast->SetOutputScalarTypeToFloat();
  vtkNew<vtkImagePermute> permute;
  permute->SetInputConnection(cast->GetOutputPort());
  permute->SetFilteredAxes(plane.GetFirstAxis(), plane.GetSecondAxis(), plane.GetAxis());
  permute->Update();
  auto slice = vtkSmartPointer<vtkImageData>::New();
  slice->DeepCopy(permute->GetOutput());
  // Whatever its place in the volume, its voxels count from 0.
  const double* bounds = slice->GetBounds();
  slice->SetOrigin(bounds[0], bounds[2], bounds[4]);
  const int* size = slice->GetDimensions();
  slice->SetExtent(0, size[0] - 1, 0, size[1] - 1, 0, 0);
  return slice;
}

zvContourForces::zvContourForces(vtkImageData* slice, const zvForceParameters& parameters)
  : Edges(vtkSmartPointer<vtkPolyData>::New())
{
  this->ReadGrid(slice);
  const int* size = slice->GetDimensions();
  this->VoxelCount = size[0] * size[1];
  this->HoleCount = HoleFiller(ValuesOf(slice), size[0], size[1]).Fill();
  if (!this->IsEmpty())
  {
    slice->Modified();
    this->FindEdges(slice, parameters);
  }
}

void zvContourForces::ReadGrid(vtkImageData* slice)
{
  const double* bounds = slice->GetBounds();
  const double* spacing = slice->GetSpacing();
  this->Low = { { bounds[0], bounds[2] } };
  this->High = { { bounds[1], bounds[3] } };
  this->Spacing = { { spacing[0], spacing[1] } };
  this->FineSpacing = std::min(spacing[0], spacing[1]);
  this->CoarseSpacing = std::max(spacing[0], spacing[1]);
}

void zvContourForces::FindEdges(vtkImageData* slice, const zvForceParameters& parameters)
{
  vtkNew<vtkImageGaussianSmooth> smooth;
  smooth->SetInputData(slice);
  smooth->SetDimensionality(2);
  const double deviation = std::max(parameters.Smoothing, 0.0) * this->CoarseSpacing;
  smooth->SetStandardDeviations(deviation / this->Spacing[0], deviation / this->Spacing[1]);
  smooth->SetRadiusFactors(3.0, 3.0);
  vtkNew<vtkImageGradientMagnitude> magnitude;
  magnitude->SetInputConnection(smooth->GetOutputPort());
  magnitude->SetDimensionality(2);
  magnitude->HandleBoundariesOn();
  magnitude->Update();
  this->MeasureEdges(smooth->GetOutput(), magnitude->GetOutput(), parameters.EdgeContrast);
  this->CollectEdges(smooth->GetOutput(), magnitude->GetOutput());

  // The gradient falls off from an edge as a bell does, so that its logarithm pulls in proportion
  // to the distance, weak edges as strongly as strong ones.
  vtkNew<vtkImageMathematics> offset;
  offset->SetInputConnection(magnitude->GetOutputPort());
  offset->SetOperationToAddConstant();
  offset->SetConstantC(this->HasEdges() ? this->Threshold : 1.0);
  vtkNew<vtkImageMathematics> logarithm;
  logarithm->SetInputConnection(offset->GetOutputPort());
  logarithm->SetOperationToLog();
  vtkNew<vtkImageMathematics> pull;
  pull->SetInputData(MakeSlope(logarithm->GetOutputPort()));
  pull->SetOperationToMultiplyByK();
  pull->SetConstantK(std::max(deviation, LeastReach * this->CoarseSpacing));

  vtkNew<vtkImageAppendComponents> together;
  together->AddInputConnection(smooth->GetOutputPort());
  together->AddInputConnection(magnitude->GetOutputPort());
  together->AddInputConnection(pull->GetOutputPort());
  together->Update();
  this->Interpolator = vtkSmartPointer<vtkImageInterpolator>::New();
  this->Interpolator->SetInterpolationModeToLinear();
  this->Interpolator->SetBorderModeToClamp();
  this->Interpolator->Initialize(together->GetOutput());
}

void zvContourForces::MeasureEdges(
  vtkImageData* smooth, vtkImageData* magnitude, double edgeContrast)
{
  const auto count = static_cast<std::size_t>(this->VoxelCount);
  std::vector<float> values(ValuesOf(smooth), ValuesOf(smooth) + count);
  const auto range = std::minmax_element(values.begin(), values.end());
  const double largest = std::max(std::abs(*range.first), std::abs(*range.second));
  const bool isFlat = *range.second - *range.first <= RoundingPart * largest;
  std::vector<float> gradients(ValuesOf(magnitude), ValuesOf(magnitude) + count);
  const double strongest = *std::max_element(gradients.begin(), gradients.end());
  if (isFlat || !(strongest > 0.0))
  {
    return;
  }
  this->Contrast = FindQuantile(values, 0.99) - FindQuantile(values, 0.01);
  // Among the places where there is something, since most of a slice may be even.
  const auto end = std::remove_if(gradients.begin(), gradients.end(),
    [strongest](float gradient) { return gradient < NoticeablePart * strongest; });
  gradients.erase(end, gradients.end());
  this->Threshold = std::max(edgeContrast, LeastEdgeContrast) * FindQuantile(gradients, 0.99);
}

// The crests of the gradient, a voxel wide.
void zvContourForces::CollectEdges(vtkImageData* smooth, vtkImageData* magnitude)
{
  if (!this->HasEdges())
  {
    return;
  }
  vtkNew<vtkTrivialProducer> source;
  source->SetOutput(smooth);
  vtkNew<vtkImageNonMaximumSuppression> crests;
  crests->SetMagnitudeInputData(magnitude);
  crests->SetVectorInputData(MakeSlope(source->GetOutputPort()));
  crests->SetDimensionality(2);
  crests->HandleBoundariesOn();
  vtkNew<vtkThresholdPoints> strong;
  strong->SetInputConnection(crests->GetOutputPort());
  strong->ThresholdByUpper(this->Threshold);
  strong->SetOutputPointsPrecision(vtkAlgorithm::DOUBLE_PRECISION);
  strong->Update();
  this->Edges->DeepCopy(strong->GetOutput());
}

zvContourForces::Sample zvContourForces::At(const zvContourPoint& point) const
{
  Sample sample;
  if (!this->Interpolator)
  {
    return sample;
  }
  // The interpolator clamps to the slice.
  double index[3] = { 0.0, 0.0, 0.0 };
  double values[ComponentCount];
  for (std::size_t a = 0; a < 2; ++a)
  {
    index[a] = (point[a] - this->Low[a]) / this->Spacing[a];
  }
  this->Interpolator->InterpolateIJK(index, values);
  sample.Value = values[ValueComponent];
  sample.Gradient = values[GradientComponent];
  if (this->HasEdges())
  {
    const double part = sample.Gradient / this->Threshold;
    sample.Edge = part * part / (1.0 + part * part);
    sample.Pull = { { values[FirstPullComponent], values[SecondPullComponent] } };
  }
  return sample;
}

vtkSmartPointer<vtkPolyData> zvContourForces::MakeEdgePoints(
  const zvContourPlane& plane, vtkIdType most, double lift) const
{
  vtkNew<vtkPoints> points;
  points->SetDataTypeToDouble();
  vtkNew<vtkCellArray> dots;
  vtkNew<vtkFloatArray> gradients;
  const vtkIdType count = this->Edges->GetNumberOfPoints();
  vtkDataArray* strengths = this->Edges->GetPointData()->GetScalars();
  const double least = count > most ? FindLeast(strengths, most) : 0.0;
  for (vtkIdType i = 0; i < count && points->GetNumberOfPoints() < most; ++i)
  {
    if (strengths->GetComponent(i, 0) < least)
    {
      continue;
    }
    const double* place = this->Edges->GetPoint(i);
    std::array<double, 3> world = plane.ToWorld({ { place[0], place[1] } });
    world[static_cast<std::size_t>(plane.GetAxis())] += lift;
    dots->InsertNextCell({ points->InsertNextPoint(world.data()) });
    gradients->InsertNextValue(static_cast<float>(strengths->GetComponent(i, 0)));
  }
  auto edges = vtkSmartPointer<vtkPolyData>::New();
  edges->SetPoints(points);
  edges->SetVerts(dots);
  edges->GetPointData()->SetScalars(gradients);
  return edges;
}
