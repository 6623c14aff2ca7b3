#include "zvSliceMapper.h"

#include "zvPolygonCut.h"

#include "vtkActor.h"
#include "vtkCellArray.h"
#include "vtkFloatArray.h"
#include "vtkObjectFactory.h"
#include "vtkPlane.h"
#include "vtkPlaneCollection.h"
#include "vtkPointData.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"

#include <algorithm>

vtkStandardNewMacro(zvSliceMapper);

namespace
{
// Nothing but one polygon with texture coordinates.
bool IsTexturedPolygon(vtkPolyData* input)
{
  vtkDataArray* const texturePoints = input->GetPointData()->GetTCoords();
  return input->GetNumberOfCells() == 1 && input->GetNumberOfPolys() == 1 && texturePoints &&
    texturePoints->GetNumberOfComponents() == 2;
}

zvPolygonCut::Polygon ReadPolygon(vtkPolyData* input)
{
  vtkIdType count;
  const vtkIdType* ids;
  input->GetPolys()->GetCellAtId(0, count, ids);
  zvPolygonCut::Polygon polygon(static_cast<std::size_t>(count));
  for (vtkIdType i = 0; i < count; ++i)
  {
    zvPolygonCut::Corner& corner = polygon[static_cast<std::size_t>(i)];
    input->GetPoint(ids[i], corner.Point.data());
    input->GetPointData()->GetTCoords()->GetTuple(ids[i], corner.TexturePoint.data());
  }
  return polygon;
}

// With the one normal that all points of a plane have.
void WritePolygon(
  const zvPolygonCut::Polygon& polygon, vtkDataArray* normalsOfPlane, vtkPolyData* output)
{
  vtkNew<vtkPoints> points;
  vtkNew<vtkFloatArray> texturePoints;
  texturePoints->SetNumberOfComponents(2);
  vtkNew<vtkFloatArray> normals;
  normals->SetNumberOfComponents(3);
  vtkNew<vtkCellArray> cells;
  cells->InsertNextCell(static_cast<int>(polygon.size()));
  for (const zvPolygonCut::Corner& corner : polygon)
  {
    cells->InsertCellPoint(points->InsertNextPoint(corner.Point.data()));
    texturePoints->InsertNextTuple(corner.TexturePoint.data());
    if (normalsOfPlane)
    {
      normals->InsertNextTuple(0, normalsOfPlane);
    }
  }
  output->SetPoints(points);
  output->SetPolys(cells);
  output->GetPointData()->SetTCoords(texturePoints);
  output->GetPointData()->SetNormals(normalsOfPlane ? normals.Get() : nullptr);
}
}

//------------------------------------------------------------------------------
vtkMTimeType zvSliceMapper::GetTimeOfChange(vtkPolyData* input)
{
  vtkMTimeType time = std::max(this->GetMTime(), input->GetMTime());
  if (vtkPlaneCollection* const planes = this->GetClippingPlanes())
  {
    vtkCollectionSimpleIterator at;
    planes->InitTraversal(at);
    while (vtkPlane* const plane = planes->GetNextPlane(at))
    {
      time = std::max(time, plane->GetMTime());
    }
  }
  return time;
}

// False if there is nothing to cut: then the input is drawn as it is.
bool zvSliceMapper::CutInto(vtkPolyData* input, vtkPolyData* cut)
{
  const zvPolygonCut::Polygon polygon = ReadPolygon(input);
  const zvPolygonCut::Polygon kept = zvPolygonCut::Keep(polygon, this->GetClippingPlanes());
  if (kept.size() >= 3)
  {
    WritePolygon(kept, input->GetPointData()->GetNormals(), cut);
  }
  return kept.size() != polygon.size() ||
    !std::equal(kept.begin(), kept.end(), polygon.begin(),
      [](const zvPolygonCut::Corner& one, const zvPolygonCut::Corner& other)
      { return one.Point == other.Point; });
}

void zvSliceMapper::Prepare(vtkPolyData* input, bool isCutHere)
{
  this->Drawn->ShallowCopy(this);
  // Never by the connection: a second consumer that goes while the first is going keeps the source
  // from being collected.
  this->Drawn->SetInputData(input);
  if (isCutHere)
  {
    this->Drawn->SetClippingPlanes(static_cast<vtkPlaneCollection*>(nullptr));
    vtkNew<vtkPolyData> cut;
    if (this->CutInto(input, cut))
    {
      this->Drawn->SetInputData(cut);
    }
  }
}

void zvSliceMapper::RenderPiece(vtkRenderer* renderer, vtkActor* actor)
{
  vtkPolyData* const input = this->GetInput();
  if (!input)
  {
    return;
  }
  this->GetInputAlgorithm()->Update();
  const bool isCutHere =
    this->GetClippingPlanes() && actor->GetIsIdentity() && IsTexturedPolygon(input);
  const vtkMTimeType time = this->GetTimeOfChange(input);
  if (time != this->PreparedFor || isCutHere != this->WasCutHere)
  {
    this->Prepare(input, isCutHere);
    this->PreparedFor = time;
    this->WasCutHere = isCutHere;
  }
  this->Drawn->Render(renderer, actor);
  this->TimeToDraw = this->Drawn->GetTimeToDraw();
}

void zvSliceMapper::ReleaseGraphicsResources(vtkWindow* window)
{
  this->Drawn->ReleaseGraphicsResources(window);
  this->Superclass::ReleaseGraphicsResources(window);
}

void zvSliceMapper::ProcessSelectorPixelBuffers(
  vtkHardwareSelector* selector, std::vector<unsigned int>& pixelOffsets, vtkProp* prop)
{
  this->Drawn->ProcessSelectorPixelBuffers(selector, pixelOffsets, prop);
}
