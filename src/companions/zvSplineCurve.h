#ifndef zvSplineCurve_h
#define zvSplineCurve_h

#include "vtkNew.h"

#include <vector>

class vtkParametricSpline;
class vtkPoints;

/// The curve behind zvParametricSpline: the cardinal spline of VTK through a list of handles, safe
/// for every list, with its length. Not installed.
///
/// Its parameter runs from 0 to 1 in proportion to the chords between the handles. Handles that do
/// not advance along the chords (coincident neighbours, and when closed, last ones on the first)
/// and handles without a finite position take no part in the curve.
class zvSplineCurve
{
public:
  zvSplineCurve();
  ~zvSplineCurve();
  zvSplineCurve(const zvSplineCurve&) = delete;
  zvSplineCurve& operator=(const zvSplineCurve&) = delete;

  /// Lay the curve through the handles, which are read now and not kept. Null counts as none.
  void Fit(vtkPoints* handles, bool closed);

  /// The point at parameter \a u. The first handle where u is not positive or not a number, and
  /// from 1 on when closed, so that both ends of a closed curve are equal to the last bit. Without
  /// a handle it is (0, 0, 0).
  void Evaluate(double u, double point[3]);

  /// The length along the curve.
  double Length();

  /// The index of the handle at or before the place \a length along the curve, the last one of
  /// coincident handles; the last segment includes its end. -1 where there is no such place.
  int HandleBefore(double length);

private:
  void ReadHandles(vtkPoints* handles);
  void AddKnot(const double point[3], int handle);
  void DropKnotsAtTheStart();
  void FitSpline();
  void MeasureSegments();
  void EvaluateSpline(double u, double point[3]);

  vtkNew<vtkParametricSpline> Spline;
  vtkNew<vtkPoints> Knots;       // the handles that take part
  std::vector<int> HandleOfKnot; // the last of the handles that coincide at a knot
  std::vector<double>
    ChordsToKnot;                  // summed; when closed, the way back to the first knot at the end
  std::vector<double> LengthToEnd; // of each segment, along the curve; empty until somebody asks
  double First[3] = { 0.0, 0.0, 0.0 };
  bool Closed = false;
};

#endif
