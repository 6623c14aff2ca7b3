#ifndef zvParametricSpline_h
#define zvParametricSpline_h

#include "vtkParametricFunction.h"
#include "vtkSmartPointer.h"
#include "vtkTimeStamp.h"
#include "zvGraphicsExport.h"

#include <memory>

class vtkPoints;
class zvSplineCurve;

/// A smooth curve through a list of handles, open or closed, for a vtkParametricFunctionSource.
///
/// It is the curve of vtkParametricSpline (cardinal splines, the parameter in proportion to the
/// chords between the handles), with three differences: it is defined for every list of handles, it
/// is exactly closed when closed, and it can be measured.
///
/// - No handle: every point is (0, 0, 0). One handle, or all at one place: every point is there.
/// - Neighbours at one place count once, as does a last handle on the first one of a closed curve.
/// - A handle with a coordinate that is not finite takes no part; if there is no other, every point
///   of the curve is the first handle as it is.
///
/// None of these says a word. The handles are read at the first evaluation or measure after
/// Modified(): whoever writes into the points calls Modified() on the spline.
class ZVGRAPHICS_EXPORT zvParametricSpline : public vtkParametricFunction
{
public:
  static zvParametricSpline* New();
  vtkTypeMacro(zvParametricSpline, vtkParametricFunction)
  void PrintSelf(ostream& os, vtkIndent indent) override;

  /// The handles in order, of any data type (default null: none). A reference is held. Calls
  /// Modified() if the object is another one.
  void SetPoints(vtkPoints* points);

  /// The object that was given to SetPoints(), or null; owned by the spline.
  vtkPoints* GetPoints();

  /// Open (0, default) or closed (any other value, kept as 1). Calls Modified() on a change.
  void SetClosed(int closed);
  int GetClosed();
  void ClosedOn() { this->SetClosed(1); }
  void ClosedOff() { this->SetClosed(0); }

  /// 1: a curve.
  int GetDimension() override { return 1; }

  /// The point of the curve at the parameter \a uvw[0], from 0 to 1, into \a pt. The first handle
  /// for 0, for less and for NaN; from 1 on the first handle again on a closed curve, the last one
  /// on an open curve. \a uvw and \a duvw are not written to, and \a duvw may be null: derivatives
  /// are not supplied.
  void Evaluate(double uvw[3], double pt[3], double duvw[9]) override;

  /// The parameter itself.
  double EvaluateScalar(double uvw[3], double pt[3], double duvw[9]) override;

  /// The length of the closed curve through the handles, along the curve, also while it is open.
  /// 0 for fewer than two places.
  double GetClosedLength();

  /// The handle after which a new one belongs that is put \a length along the curve: the index of
  /// the segment, counted by its first handle, into which that length falls. A length at a handle
  /// belongs to the segment that begins there.
  /// \param n  the number of handles plus one.
  /// \param length  from 0 to GetClosedLength(). On an open curve it is taken in proportion: the
  /// same fraction of the open curve's length.
  /// \return -1 if the length is outside that range or not a number, if there is no segment, or if
  /// the segment begins at a handle beyond the n - 1 that the caller has.
  int GetIndex(int n, double length);

protected:
  zvParametricSpline();
  ~zvParametricSpline() override;

private:
  zvParametricSpline(const zvParametricSpline&) = delete;
  void operator=(const zvParametricSpline&) = delete;

  zvSplineCurve& FittedCurve();
  zvSplineCurve& FittedClosedCurve();

  vtkSmartPointer<vtkPoints> Points;
  bool Closed = false;
  std::unique_ptr<zvSplineCurve> Curve;
  std::unique_ptr<zvSplineCurve> ClosedCurve; // only measured, while the spline is open
  vtkTimeStamp CurveTime;
  vtkTimeStamp ClosedCurveTime;
};

#endif
