#ifndef zvLabelOutlines_h
#define zvLabelOutlines_h

#include "vtkNew.h"
#include "vtkSmartPointer.h"

#include <array>
#include <map>

class vtkFollower;
class vtkRenderer;

/// Dark outlines around the texts that the tools draw in a renderer, so that they can be read on
/// bright tissue too; of markers that stand in several views, in the one that their text faces. The
/// tools know nothing of it: the texts are looked for before each picture.
class zvLabelOutlines
{
public:
  /// \param renderer  outlives this object.
  explicit zvLabelOutlines(vtkRenderer* renderer);
  ~zvLabelOutlines();
  zvLabelOutlines(const zvLabelOutlines&) = delete;
  void operator=(const zvLabelOutlines&) = delete;

private:
  static constexpr std::size_t Sides = 4;
  using Outline = std::array<vtkNew<vtkFollower>, Sides>;

  void Update();
  void RemoveStale();
  void Put(vtkFollower* text, Outline& outline);

  vtkRenderer* Renderer;
  unsigned long Observer;
  std::map<vtkSmartPointer<vtkFollower>, Outline> Outlines; // by the text
};

#endif
