#include "zvUtils.h"

#include "vtkCellArray.h"
#include "vtkCellArrayIterator.h"
#include "vtkMath.h"
#include "vtkObject.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"
#include "vtkSmartPointer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <vector>

namespace
{
using Point = std::array<double, 3>;

// One line cell. Line ends meet at a node: those that share a point do, and where an odd number of
// them shares a point, one would be left over, so they are joined with their like at the same
// place. Other points at one place are not joined: the area of a curve that crosses itself would
// jump whenever two of its points happen to meet at the crossing.
struct Chain
{
  std::vector<vtkIdType> Points; // along one line cell, two or more
  int Nodes[2] = { -1, -1 };     // where it begins and ends
};

struct Step
{
  int Chain;
  bool Forward;
};

struct Contour
{
  vtkPoints* Points = nullptr;
  std::vector<Chain> Chains;
  int NumberOfNodes = 0;
};

Point PointAt(vtkPoints* points, vtkIdType id)
{
  Point point;
  points->GetPoint(id, point.data());
  return point;
}

std::vector<Chain> ReadChains(vtkCellArray* lines)
{
  std::vector<Chain> chains;
  chains.reserve(lines->GetNumberOfCells());
  auto cell = vtk::TakeSmartPointer(lines->NewIterator());
  for (cell->GoToFirstCell(); !cell->IsDoneWithTraversal(); cell->GoToNextCell())
  {
    vtkIdType count;
    const vtkIdType* ids;
    cell->GetCurrentCell(count, ids);
    if (count >= 2)
    {
      chains.emplace_back();
      chains.back().Points.assign(ids, ids + count);
    }
  }
  return chains;
}

// Why the chains cannot be measured, or null.
const char* FindFault(const Contour& contour)
{
  const vtkIdType count = contour.Points->GetNumberOfPoints();
  for (const Chain& chain : contour.Chains)
  {
    for (const vtkIdType id : chain.Points)
    {
      if (id < 0 || id >= count)
      {
        return "CalculateArea: a line of the contour refers to a missing point";
      }
      const Point point = PointAt(contour.Points, id);
      if (!std::all_of(point.begin(), point.end(), [](double x) { return std::isfinite(x); }))
      {
        return "CalculateArea: a point of the contour is not finite";
      }
    }
  }
  return nullptr;
}

// Give every chain its two nodes.
void FindNodes(Contour& contour)
{
  std::vector<int> ends(contour.Points->GetNumberOfPoints(), 0);
  for (const Chain& chain : contour.Chains)
  {
    ++ends[chain.Points.front()];
    ++ends[chain.Points.back()];
  }
  std::vector<int> nodeOfPoint(ends.size(), -1);
  std::map<Point, int> nodeOfPlace;
  for (Chain& chain : contour.Chains)
  {
    const vtkIdType ids[2] = { chain.Points.front(), chain.Points.back() };
    for (int side = 0; side < 2; ++side)
    {
      int& node = nodeOfPoint[ids[side]];
      if (node < 0 && ends[ids[side]] % 2 != 0)
      {
        const Point place = PointAt(contour.Points, ids[side]);
        const auto found = nodeOfPlace.emplace(place, contour.NumberOfNodes);
        contour.NumberOfNodes += found.second ? 1 : 0;
        node = found.first->second;
      }
      else if (node < 0)
      {
        node = contour.NumberOfNodes++;
      }
      chain.Nodes[side] = node;
    }
  }
}

// The chains that begin or end at each node, those that do both twice.
std::vector<std::vector<int>> ChainsAtNodes(const Contour& contour)
{
  std::vector<std::vector<int>> chains(contour.NumberOfNodes);
  for (int i = 0; i < static_cast<int>(contour.Chains.size()); ++i)
  {
    chains[contour.Chains[i].Nodes[0]].push_back(i);
    chains[contour.Chains[i].Nodes[1]].push_back(i);
  }
  return chains;
}

// Half the sum of the cross products round a ring: its length is the area, its direction the
// normal. Taken about a point of the ring, or places far from the origin would cost digits.
double AreaOfRing(const Contour& contour, const Step* first, const Step* last)
{
  const Chain& start = contour.Chains[first->Chain];
  const Point origin =
    PointAt(contour.Points, first->Forward ? start.Points.front() : start.Points.back());
  double previous[3] = { 0.0, 0.0, 0.0 };
  double sum[3] = { 0.0, 0.0, 0.0 };
  const auto visit = [&](vtkIdType id)
  {
    const Point point = PointAt(contour.Points, id);
    double arm[3], cross[3];
    vtkMath::Subtract(point, origin, arm);
    vtkMath::Cross(previous, arm, cross);
    vtkMath::Add(sum, cross, sum);
    std::copy_n(arm, 3, previous);
  };
  for (const Step* step = first; step != last; ++step)
  {
    const std::vector<vtkIdType>& ids = contour.Chains[step->Chain].Points;
    step->Forward ? std::for_each(ids.begin(), ids.end(), visit)
                  : std::for_each(ids.rbegin(), ids.rend(), visit);
  }
  return 0.5 * vtkMath::Norm(sum);
}

// Walks from node to node along unused chains, and measures and drops a ring each time it comes
// back to a node of its path. Where all nodes join an even number of ends, that uses every chain.
class RingWalk
{
public:
  explicit RingWalk(const Contour& contour)
    : Rings(contour)
    , Open(ChainsAtNodes(contour))
    , Used(contour.Chains.size(), false)
    , PathLengthAt(contour.NumberOfNodes, -1)
  {
  }

  bool IsClosed() const
  {
    return !this->Open.empty() &&
      std::all_of(this->Open.begin(), this->Open.end(),
        [](const std::vector<int>& chains) { return chains.size() % 2 == 0; });
  }

  double Area()
  {
    double area = 0.0;
    for (int node = 0; node < this->Rings.NumberOfNodes; ++node)
    {
      area += this->AreaFrom(node);
    }
    return area;
  }

private:
  double AreaFrom(int node)
  {
    double area = 0.0;
    this->PathLengthAt[node] = 0;
    for (int chain = this->TakeChain(node); chain >= 0; chain = this->TakeChain(node))
    {
      node = this->Follow(chain, node);
      const int begin = this->PathLengthAt[node];
      if (begin >= 0)
      {
        area +=
          AreaOfRing(this->Rings, this->Path.data() + begin, this->Path.data() + this->Path.size());
        this->DropPath(begin);
      }
      this->PathLengthAt[node] = static_cast<int>(this->Path.size());
    }
    this->PathLengthAt[node] = -1;
    return area;
  }

  int TakeChain(int node)
  {
    std::vector<int>& chains = this->Open[node];
    while (!chains.empty())
    {
      const int chain = chains.back();
      chains.pop_back();
      if (!this->Used[chain])
      {
        this->Used[chain] = true;
        return chain;
      }
    }
    return -1;
  }

  int Follow(int chain, int node)
  {
    const int* nodes = this->Rings.Chains[chain].Nodes;
    const bool forward = nodes[0] == node;
    this->Path.push_back({ chain, forward });
    return nodes[forward ? 1 : 0];
  }

  void DropPath(int length)
  {
    while (static_cast<int>(this->Path.size()) > length)
    {
      const Step step = this->Path.back();
      this->Path.pop_back();
      const int* nodes = this->Rings.Chains[step.Chain].Nodes;
      this->PathLengthAt[nodes[step.Forward ? 0 : 1]] = -1;
    }
  }

  const Contour& Rings;
  std::vector<std::vector<int>> Open; // chains that may be unused yet, by node
  std::vector<bool> Used;
  std::vector<Step> Path;
  std::vector<int> PathLengthAt; // when the path was at the node; -1 off the path
};
}

double zvUtils::CalculateArea(vtkPolyData* polydata)
{
  if (!polydata)
  {
    vtkGenericWarningMacro("CalculateArea: there is no contour");
    return 0.0;
  }
  if (polydata->GetNumberOfPoints() < 3)
  {
    vtkGenericWarningMacro("CalculateArea: a contour needs three points");
    return 0.0;
  }
  Contour contour;
  contour.Points = polydata->GetPoints();
  contour.Chains = ReadChains(polydata->GetLines());
  if (const char* fault = FindFault(contour))
  {
    vtkGenericWarningMacro(<< fault);
    return 0.0;
  }
  FindNodes(contour);
  RingWalk walk(contour);
  if (!walk.IsClosed())
  {
    vtkGenericWarningMacro("CalculateArea: the contour is not closed");
    return 0.0;
  }
  return walk.Area();
}

void zvUtils::CalculateCentroid(vtkPolyData* polydata, double* centroid)
{
  if (!centroid)
  {
    return;
  }
  std::fill_n(centroid, 3, 0.0);
  const vtkIdType count = polydata ? polydata->GetNumberOfPoints() : 0;
  if (count == 0)
  {
    vtkGenericWarningMacro("CalculateCentroid: there are no points");
    return;
  }
  for (vtkIdType id = 0; id < count; ++id)
  {
    const Point point = PointAt(polydata->GetPoints(), id);
    vtkMath::Add(centroid, point.data(), centroid);
  }
  vtkMath::MultiplyScalar(centroid, 1.0 / count);
}
