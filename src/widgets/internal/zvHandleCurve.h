#ifndef zvHandleCurve_h
#define zvHandleCurve_h

#include "vtkSmartPointer.h"
#include "vtkType.h"

#include <array>
#include <vector>

class vtkCellArray;
class vtkPlaneSource;
class vtkPoints;
class vtkPolyData;
class vtkTransform;
class zvParametricSpline;

/// What can be done with the handles of a curve wherever they are kept: a list of world positions
/// in millimetres, in the order in which the curve runs through them. No operation minds an empty
/// list, equal positions or positions that are not numbers.
namespace zvHandleCurve
{
using Position = std::array<double, 3>;
using Positions = std::vector<Position>;

///@{
/// The positions in \a points, or at most the first \a limit of them. None for null.
Positions Read(vtkPoints* points);
Positions Read(vtkPoints* points, vtkIdType limit);
///@}

/// Store the positions in the first points of \a points, which must be there, and mark the points
/// as modified: mappers and bounds follow nothing else.
void Write(const Positions& positions, vtkPoints* points);

/// New points of type double.
vtkSmartPointer<vtkPoints> MakePoints(const Positions& positions);

/// One vertex cell for each of \a count points.
vtkSmartPointer<vtkCellArray> MakeVertices(vtkIdType count);

/// \a count positions at equal steps from the low to the high corner of \a bounds (xmin, xmax,
/// ymin, ymax, zmin, zmax); a single one at the low corner.
Positions OnDiagonal(const double bounds[6], int count);

/// The plane on which a curve is kept.
enum PlaneNormal
{
  AlongX = 0,
  AlongY = 1,
  AlongZ = 2,
  Oblique = 3
};

/// Set the coordinate \a axis (AlongX, AlongY or AlongZ) of every position.
void ProjectToOrthoPlane(Positions& positions, int axis, double coordinate);

/// Move every position to the plane: origin + s U + t V, with U and V the plane's two axes divided
/// by their lengths and s, t the distances along them. U and V are taken to be perpendicular.
void ProjectToObliquePlane(Positions& positions, vtkPlaneSource* plane);

/// Add \a motion to every position.
void Translate(Positions& positions, const Position& motion);

/// Replace every position by factor * (position - center) + center.
void ScaleAbout(Positions& positions, const Position& center, double factor);

/// Scale about the centroid by 1 - f (\a shrink) or 1 + f, where f is \a distance over the summed
/// length per position. Where that is no number, as with equal positions, nothing moves.
void Scale(Positions& positions, double distance, bool shrink);

/// The axis about which a motion in the view turns the curve: normal to the motion and to
/// \a viewPlaneNormal. False if there is none.
bool FindFreeSpinAxis(const Position& motion, const double viewPlaneNormal[3], Position& axis);

/// The axis about which a curve turns that stays on its plane: the unit axis \a normal, or with
/// Oblique the normal of \a plane. False without a plane.
bool FindPlanarSpinAxis(int normal, vtkPlaneSource* plane, Position& axis);

/// Turn the positions about \a axis through \a center, by 360 degrees for a motion round the circle
/// through its end \a to as long as the radius. A motion that ends in the center turns nothing.
/// \a scratch takes the transform.
void Spin(Positions& positions, const Position& from, const Position& to, const Position& center,
  const Position& axis, vtkTransform* scratch);

/// The mean; the origin for none.
Position Centroid(const Positions& positions);

/// The sum of the distances of consecutive positions, not of the last from the first.
double SummedLength(const Positions& positions);

/// Whether a sampled line comes back to its beginning.
enum class Closure
{
  NoLine, ///< no points object to look at
  Open,
  Closed ///< the first point equals the last exactly, or is repeated by the line cell
};
Closure TestClosure(vtkPolyData* line);

/// After which of \a count handles one is inserted that was clicked at \a sample of a line sampled
/// in \a resolution segments: by length along the curve, not by the number of handles. From -1,
/// before the first one, to count - 1.
int FindInsertion(zvParametricSpline* spline, int count, vtkIdType sample, int resolution);

/// The positions with \a added after index \a after (-1: in front).
Positions Inserted(const Positions& positions, int after, const Position& added);

/// The positions without index \a erased, which must be in range.
Positions Erased(const Positions& positions, int erased);
}

#endif
