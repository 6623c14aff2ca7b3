#ifndef zvPlainSlice_h
#define zvPlainSlice_h

#include <vtkActor.h>
#include <vtkCubeSource.h>
#include <vtkCutter.h>
#include <vtkImageMapToColors.h>
#include <vtkImageReslice.h>
#include <vtkLookupTable.h>
#include <vtkMatrix4x4.h>
#include <vtkNew.h>
#include <vtkPlane.h>
#include <vtkPlaneSource.h>
#include <vtkPolyDataMapper.h>
#include <vtkSmartPointer.h>
#include <vtkTexture.h>

class vtkImageData;

/// The image plane's pipeline without the widget: a plane that is cut with the box of the volume
/// and centred on the cut, a reslice of a power of two in size, a grey table and a texture.
class zvPlainSlice
{
public:
  /// With stock filters, or with the quick ones of the library.
  enum class Filters
  {
    Stock,
    Quick
  };

  zvPlainSlice(Filters filters, vtkImageData* volume, bool linear);

  /// Place the plane by its lower left corner and the two corners beside it, in world units.
  void SetPlane(const double origin[3], const double point1[3], const double point2[3]);

  /// Let the reslice follow the plane.
  void UpdatePlane();

  vtkLookupTable* GetTable() { return this->Table; }
  vtkImageMapToColors* GetColorMap() { return this->ColorMap; }
  vtkActor* GetActor() { return this->Actor; }
  vtkActor* GetCutActor() { return this->CutActor; }

private:
  void BuildDisplay(Filters filters, vtkImageData* volume);
  void CentreOnCut();
  void UpdateAxes(const double axis1[3], const double axis2[3], const double normal[3]);

  vtkImageData* const Volume; // not owned: the benchmarks keep their volumes
  vtkSmartPointer<vtkImageReslice> Reslice;
  vtkSmartPointer<vtkImageMapToColors> ColorMap;
  vtkSmartPointer<vtkTexture> Texture;
  vtkNew<vtkMatrix4x4> Axes;
  vtkNew<vtkLookupTable> Table;
  vtkNew<vtkPlaneSource> PlaneSource;
  vtkNew<vtkPlane> CutPlane;
  vtkNew<vtkCubeSource> Box;
  vtkNew<vtkCutter> Cutter;
  vtkNew<vtkPolyDataMapper> Mapper;
  vtkNew<vtkPolyDataMapper> CutMapper;
  vtkNew<vtkActor> Actor;
  vtkNew<vtkActor> CutActor;
};

#endif
