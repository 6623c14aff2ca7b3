#ifndef zvCurveParts_h
#define zvCurveParts_h

#include "zvHandleCurve.h"

#include "vtkIndent.h"
#include "vtkSmartPointer.h"

#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

class vtkActor;
class vtkCellPicker;
class vtkParametricFunctionSource;
class vtkPolyDataMapper;
class vtkProperty;
class zvParametricSpline;

/// What the widgets that draw a spline through handles are made of, however they draw the handles.
namespace zvCurveParts
{
///@{
/// What a caller is asked for who leaves out an argument.
constexpr char NoBounds[] = "give bounds to place the handles in...";
constexpr char NoPosition[] = "give the handle a position...";
constexpr char NoRoom[] = "give room for the position of the handle...";
constexpr char NoMotion[] = "give both ends of the motion before moving the handles...";
constexpr char NoViewNormal[] = "give the normal of the view before turning the handles...";
///@}

/// A mapper that lets its lines win over a coplanar slice.
vtkSmartPointer<vtkPolyDataMapper> MakeMapper();

/// A picker of the props in its list, which is empty, within 0.005 of the window's diagonal. A prop
/// may be listed many times.
vtkSmartPointer<vtkCellPicker> MakePicker();

/// Give \a spline an empty list of points, let \a source sample it in \a resolution segments, with
/// points alone, and \a line draw that.
void BuildLine(
  zvParametricSpline* spline, vtkParametricFunctionSource* source, vtkActor* line, int resolution);

/// Copy the handles into the points of \a spline, and hide \a line if there are none: the spline of
/// no handles is sampled at the origin, where it must not be hit. Nothing without a spline.
void FollowHandles(
  const zvHandleCurve::Positions& handles, zvParametricSpline* spline, vtkActor* line);

/// What a curve prints of itself: objects, which may be null, each with its label, then settings.
struct Printed
{
  std::vector<std::pair<std::string, const void*>> Objects;
  int ProjectToPlane;
  int ProjectionNormal;
  double ProjectionPosition;
  int Resolution;
  int NumberOfHandles;
  int Closed;
};

/// Write a line for each, with the address of an object or "(none)".
void Print(std::ostream& os, vtkIndent indent, const Printed& printed);

/// The motion from one world point to another.
zvHandleCurve::Position MotionBetween(const double* from, const double* to);

///@{
/// The default looks: a grabbed handle, the line at rest and the grabbed line.
vtkSmartPointer<vtkProperty> MakeSelectedHandleProperty();
vtkSmartPointer<vtkProperty> MakeLineProperty();
vtkSmartPointer<vtkProperty> MakeSelectedLineProperty();
///@}
}

#endif
