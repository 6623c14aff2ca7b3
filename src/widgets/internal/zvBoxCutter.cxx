#include "zvBoxCutter.h"

#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkCommand.h>
#include <vtkCubeSource.h>
#include <vtkInformation.h>
#include <vtkInformationVector.h>
#include <vtkNew.h>
#include <vtkObjectFactory.h>
#include <vtkPlane.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

vtkObjectFactoryNewMacro(zvBoxCutter);

namespace
{
using Point = std::array<double, 3>;

struct Corner
{
  vtkIdType Id;
  Point Place;
  double Height; // above the plane
};

using Quad = std::array<Corner, 4>;

/// Where an edge meets the plane: a share of the way from its lower end to its upper one.
struct Meeting
{
  vtkIdType Lower;
  vtkIdType Upper;
  double Share;
  Point Place;
};

/// More quads than a box has are not worth a linear search for each point.
const vtkIdType LargestNumberOfQuads = 6;

/// The edges of a quad in the order in which the stock cut visits them, by the corners that are in
/// or above the plane (corner i counts 2^i); -1 ends a row.
const int EdgesByCase[16][4] = { { -1, -1, -1, -1 }, { 0, 3, -1, -1 }, { 1, 0, -1, -1 },
  { 1, 3, -1, -1 }, { 2, 1, -1, -1 }, { 0, 3, 2, 1 }, { 2, 0, -1, -1 }, { 2, 3, -1, -1 },
  { 3, 2, -1, -1 }, { 0, 2, -1, -1 }, { 1, 0, 3, 2 }, { 1, 2, -1, -1 }, { 3, 1, -1, -1 },
  { 0, 1, -1, -1 }, { 3, 0, -1, -1 }, { -1, -1, -1, -1 } };
const int EdgeEnds[4][2] = { { 0, 1 }, { 1, 2 }, { 3, 2 }, { 0, 3 } };

/// The other way round would round differently.
Meeting MeetPlane(const Corner& a, const Corner& b)
{
  const Corner& lower = b.Height > a.Height ? a : b;
  const Corner& upper = b.Height > a.Height ? b : a;
  const double rise = upper.Height - lower.Height;
  Meeting meeting{ lower.Id, upper.Id, rise == 0.0 ? 0.0 : (0.0 - lower.Height) / rise, {} };
  for (int i = 0; i < 3; ++i)
  {
    meeting.Place[i] = lower.Place[i] + meeting.Share * (upper.Place[i] - lower.Place[i]);
  }
  return meeting;
}

/// Read the quads with the heights of their corners; false if one is not a quad or is nowhere.
bool ReadQuads(vtkPolyData* input, vtkPlane* plane, std::vector<Quad>& quads)
{
  vtkCellArray* const cells = input->GetPolys();
  for (vtkIdType cell = 0; cell < cells->GetNumberOfCells(); ++cell)
  {
    vtkIdType size = 0;
    const vtkIdType* ids = nullptr;
    cells->GetCellAtId(cell, size, ids);
    if (size != 4)
    {
      return false;
    }
    Quad quad;
    for (int i = 0; i < 4; ++i)
    {
      quad[i].Id = ids[i];
      input->GetPoint(ids[i], quad[i].Place.data());
      quad[i].Height = plane->EvaluateFunction(quad[i].Place.data());
      if (!std::isfinite(quad[i].Height))
      {
        return false;
      }
    }
    quads.push_back(quad);
  }
  return true;
}

/// Collects the points of a cut, each once, and its lines.
class Cut
{
public:
  explicit Cut(vtkPolyData* input)
  {
    this->Points->SetDataTypeToDouble();
    this->Data->InterpolateAllocate(input->GetPointData());
  }

  void Add(const Quad& quad, vtkPointData* inputData)
  {
    int above = 0;
    for (int i = 0; i < 4; ++i)
    {
      above |= quad[i].Height >= 0.0 ? 1 << i : 0;
    }
    const int* const edges = EdgesByCase[above];
    for (int i = 0; i < 4 && edges[i] >= 0; i += 2)
    {
      const vtkIdType ends[2] = { this->Place(quad, edges[i], inputData),
        this->Place(quad, edges[i + 1], inputData) };
      if (ends[0] != ends[1])
      {
        this->Lines->InsertNextCell(2, ends);
      }
    }
  }

  void MoveTo(vtkPolyData* output)
  {
    output->SetPoints(this->Points);
    if (this->Lines->GetNumberOfCells() > 0)
    {
      output->SetLines(this->Lines);
    }
    output->GetPointData()->ShallowCopy(this->Data);
    output->Squeeze();
  }

private:
  /// The number of the point at which an edge meets the plane.
  vtkIdType Place(const Quad& quad, int edge, vtkPointData* inputData)
  {
    const Meeting meeting = MeetPlane(quad[EdgeEnds[edge][0]], quad[EdgeEnds[edge][1]]);
    const auto found = std::find(this->Places.begin(), this->Places.end(), meeting.Place);
    const auto id = static_cast<vtkIdType>(found - this->Places.begin());
    if (found == this->Places.end())
    {
      this->Places.push_back(meeting.Place);
      this->Points->InsertNextPoint(meeting.Place.data());
      this->Data->InterpolateEdge(inputData, id, meeting.Lower, meeting.Upper, meeting.Share);
    }
    return id;
  }

  vtkNew<vtkPoints> Points;
  vtkNew<vtkCellArray> Lines;
  vtkNew<vtkPointData> Data;
  std::vector<Point> Places;
};

bool IsUpToDate(vtkAlgorithm* source, vtkDataObject* output)
{
  return output->GetUpdateTime() > source->GetMTime();
}
}

//------------------------------------------------------------------------------
vtkPlane* zvBoxCutter::FindPlainPlane(vtkPolyData* input)
{
  if (!input || !input->GetPoints() || input->GetPoints()->GetDataType() != VTK_DOUBLE ||
    this->GetNumberOfContours() != 1 || this->GetValue(0) != 0.0 || this->GenerateCutScalars ||
    this->SortBy != VTK_SORT_BY_VALUE || this->OutputPointsPrecision != DEFAULT_PRECISION ||
    this->HasObserver(vtkCommand::ProgressEvent))
  {
    return nullptr;
  }
  const vtkIdType quads = input->GetPolys()->GetNumberOfCells();
  auto* const plane = vtkPlane::SafeDownCast(this->CutFunction);
  return plane && !plane->GetTransform() && quads <= LargestNumberOfQuads &&
      input->GetNumberOfCells() == quads && input->GetCellData()->GetNumberOfArrays() == 0
    ? plane
    : nullptr;
}

//------------------------------------------------------------------------------
bool zvBoxCutter::WritePlainCut(vtkPolyData* input, vtkPolyData* output)
{
  vtkPlane* const plane = this->FindPlainPlane(input);
  std::vector<Quad> quads;
  quads.reserve(LargestNumberOfQuads);
  if (!plane || !ReadQuads(input, plane, quads) || quads.empty())
  {
    return false;
  }
  Cut cut(input);
  for (const Quad& quad : quads)
  {
    cut.Add(quad, input->GetPointData());
  }
  output->Initialize();
  cut.MoveTo(output);
  return true;
}

//------------------------------------------------------------------------------
int zvBoxCutter::RequestData(
  vtkInformation* request, vtkInformationVector** inputs, vtkInformationVector* outputs)
{
  return this->WritePlainCut(vtkPolyData::GetData(inputs[0]), vtkPolyData::GetData(outputs))
    ? 1
    : this->Superclass::RequestData(request, inputs, outputs);
}

//------------------------------------------------------------------------------
bool zvBoxCutter::CutCube()
{
  if (this->GetNumberOfInputConnections(0) != 1)
  {
    return false;
  }
  // Only of a source is it plain to see whether it is up to date.
  auto* const cube = vtkCubeSource::SafeDownCast(this->GetInputAlgorithm());
  if (!cube)
  {
    return false;
  }
  vtkPolyData* const box = cube->GetOutput();
  if (!IsUpToDate(cube, box))
  {
    cube->Update();
  }
  return this->WritePlainCut(box, this->GetOutput());
}
