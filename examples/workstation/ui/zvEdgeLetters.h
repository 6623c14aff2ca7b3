#ifndef zvEdgeLetters_h
#define zvEdgeLetters_h

#include "vtkNew.h"
#include "vtkTextActor.h"

#include <array>
#include <string>

class vtkRenderer;

/// The letters of the patient's sides (R, L, A, P, I, S) in the middles of a slice view's edges,
/// and a title in its corner.
class zvEdgeLetters
{
public:
  zvEdgeLetters();

  /// Show them in a renderer, which holds them from then on. Renders nothing.
  void AddTo(vtkRenderer* renderer);

  /// The title in the upper left corner. Renders nothing.
  void SetTitle(const std::string& text, const double color[3]);

  /// Name the four edges of a picture. Renders nothing.
  /// \param right, up  where the picture's right and upper edges lie, as unit vectors of the
  /// patient's frame (LPS).
  void Point(const double right[3], const double up[3]);

  /// Whether the sides are marked; the title stays. Renders nothing.
  void SetSidesVisible(bool visible);

  /// What the edges say, in the order right, left, up, down.
  std::array<std::string, 4> GetTexts() const;

  /// The letters of a direction, the side that it leads to most first: "L", or "LA" for one that
  /// leads to the left and, less so, to the front. Parts below 0.2 are left out.
  static std::string Name(const double direction[3]);

private:
  std::array<vtkNew<vtkTextActor>, 4> Edges; // right, left, up, down
  vtkNew<vtkTextActor> Title;
};

#endif
