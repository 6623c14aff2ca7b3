#ifndef zvMarkerParts_h
#define zvMarkerParts_h

#include "vtkIndent.h"
#include "vtkSmartPointer.h"
#include "vtkSystemIncludes.h"

class vtkActor;
class vtkAlgorithm;
class vtkCellPicker;
class vtkCollection;
class vtkProp;
class vtkProperty;
class vtkSphereSource;

/// What markers of points are made of that keep a sphere for each point: seeds and 3D rulers. Items
/// of the same index in the collections belong to the same point. Collections of spheres hold
/// vtkSphereSource and those of actors vtkActor, and nothing else.
namespace zvMarkerParts
{
/// The part of the size that vtk3DWidget gives handles which is a sphere's radius.
constexpr double SphereSize = 0.7;

/// The part of it that is the height of a label's letters.
constexpr double LabelSize = 1.0;

/// A sphere about a world position, of a radius in millimetres.
vtkSmartPointer<vtkSphereSource> MakeSphere(const double center[3], double radius);

/// An actor that draws what \a source makes; it may stand in several views.
vtkSmartPointer<vtkActor> MakeActor(vtkAlgorithm* source, vtkProperty* property);

/// A picker of the props in its list, which is empty, as far as the picked view shows them.
/// \a tolerance is a part of the window's diagonal.
vtkSmartPointer<vtkCellPicker> MakePicker(double tolerance);

/// A property of a colour.
vtkSmartPointer<vtkProperty> MakeProperty(double red, double green, double blue);

/// Give every sphere a radius.
void SetRadius(vtkCollection* spheres, double radius);

/// Put the spheres at equal steps from the low to the high corner of \a bounds (xmin, xmax, ymin,
/// ymax, zmin, zmax). Deliberate: a single one has no step, its center becomes not a number.
void Spread(vtkCollection* spheres, const double bounds[6]);

/// Take the actors out of every view that they are in.
void TakeOut(vtkCollection* actors);

/// Write what all markers print after their parent's fields.
struct PrintedFields
{
  vtkProperty* HandleProperty;
  vtkProperty* SelectedHandleProperty;
  int ProjectToPlane;
  int ProjectionNormal;
  double ProjectionPosition;
};
void Print(ostream& os, vtkIndent indent, const PrintedFields& fields);

/// Give the actor at \a index the look of the selected one and all others the normal look. Without
/// such an index all look normal.
void Highlight(vtkCollection* actors, int index, vtkProperty* normal, vtkProperty* selected);
}

#endif
