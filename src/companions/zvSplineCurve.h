#ifndef zvSplineCurve_h
#define zvSplineCurve_h

#include <array>
#include <cstddef>
#include <vector>

class vtkPoints;

/// The curve behind zvParametricSpline: the cardinal spline of VTK through a list of handles, safe
/// for every list, with its length. Not installed.
///
/// Its parameter runs from 0 to 1 in proportion to the chords between the handles. Handles that do
/// not advance along the chords (coincident neighbours, and when closed, last ones on the first)
/// and handles without a finite position take no part in the curve.
///
/// The stock spline of VTK would search and move its list for every handle that is given to it, and
/// would search again, three times, for every evaluation.
class zvSplineCurve
{
public:
  zvSplineCurve() = default;
  ~zvSplineCurve() = default;
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
  using Point = std::array<double, 3>;

  void ReadHandles(vtkPoints* handles);
  void AddKnot(const Point& point, int handle);
  void DropKnotsAtTheStart();
  void FitSpline();
  void MeasureSegments();
  void EvaluateSpline(double u, double point[3]);
  std::size_t FindSegment(double chords) const;
  void EnterSegment(std::size_t index);

  /// One cubic: the sum of Terms[n] times the n-th power of the fraction of the chord that is done.
  struct Segment
  {
    std::size_t Index = 0;
    double Begin = 0.0; // in summed chords
    double End = 0.0;
    double PerChord = 0.0; // 1 / (End - Begin)
    std::array<Point, 4> Terms = {};
  };

  std::vector<Point> Knots;         // the handles that take part; when closed, the first again
  std::vector<double> ChordsToKnot; // summed
  std::vector<Point> Slopes;        // at the knots, per chord; empty without a segment
  std::vector<int> HandleOfKnot;    // the last of the handles that coincide at a knot
  std::vector<double> LengthToEnd;  // of each segment, along the curve; empty until somebody asks
  Segment Kept; // the last one that was evaluated: the next point is mostly in it
  Point First = {};
  bool Closed = false;
};

#endif
