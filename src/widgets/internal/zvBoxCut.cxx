#include "zvBoxCut.h"

#include "zvBoxCutter.h"

#include "vtkAlgorithm.h"
#include "vtkCubeSource.h"
#include "vtkCutter.h"
#include "vtkImplicitFunction.h"
#include "vtkMath.h"
#include "vtkMergePoints.h"
#include "vtkNew.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"

void zvBoxCut::Connect(
  const double bounds[6], vtkCubeSource* cube, vtkImplicitFunction* plane, vtkCutter* cutter)
{
  cube->SetBounds(bounds);
  // In single precision a cut at the far face of a box is empty in about half of all cases.
  cube->SetOutputPointsPrecision(vtkAlgorithm::DOUBLE_PRECISION);
  cutter->SetInputConnection(cube->GetOutputPort());
  cutter->SetCutFunction(plane);
  ExpectFewPoints(cutter);
}

void zvBoxCut::ExpectFewPoints(vtkCutter* cutter)
{
  vtkNew<vtkMergePoints> fewBuckets;
  fewBuckets->AutomaticOff();
  fewBuckets->SetDivisions(2, 2, 2);
  cutter->SetLocator(fewBuckets);
}

bool zvBoxCut::Update(vtkCutter* cutter)
{
  if (cutter->GetNumberOfInputConnections(0) == 0)
  {
    return false;
  }
  auto* const boxCutter = zvBoxCutter::SafeDownCast(cutter);
  if (!boxCutter || !boxCutter->CutCube())
  {
    cutter->Update();
  }
  return cutter->GetOutput()->GetNumberOfPoints() > 0;
}

bool zvBoxCut::Mean(vtkCutter* cutter, double mean[3])
{
  if (!Update(cutter))
  {
    return false;
  }
  vtkPoints* points = cutter->GetOutput()->GetPoints();
  const vtkIdType count = points->GetNumberOfPoints();
  double sum[3] = { 0.0, 0.0, 0.0 };
  for (vtkIdType i = 0; i < count; ++i)
  {
    double point[3];
    points->GetPoint(i, point);
    vtkMath::Add(sum, point, sum);
  }
  for (int i = 0; i < 3; ++i)
  {
    mean[i] = sum[i] * (1.0 / static_cast<double>(count));
  }
  return true;
}
