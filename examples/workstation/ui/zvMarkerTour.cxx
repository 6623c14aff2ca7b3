#include "zvMarkerTour.h"

#include "zvMainWindow.h"
#include "zvMeasurementList.h"
#include "zvToolSet.h"
#include "zvViewGrid.h"
#include "zvViewHand.h"

namespace
{
struct Click
{
  int Axis; // of the view
  double Right;
  double Up;
};

void ClickAt(zvMainWindow& window, const Click& click)
{
  zvViewHand hand(window.GetViews()->GetSliceView(click.Axis));
  const QPoint place = hand.Part(click.Right, click.Up);
  hand.MoveTo(place);
  hand.Click(Qt::LeftButton, place);
}

template <std::size_t Count>
void Use(zvMainWindow& window, const char* tool, const Click (&clicks)[Count])
{
  window.GetTools()->Choose(tool);
  for (const Click& click : clicks)
  {
    ClickAt(window, click);
  }
}
}

namespace zvMarkerTour
{
// Near the planes of the other views, so that it is seen in more than one.
void PlacePoints(zvMainWindow& window)
{
  const Click seeds[] = { { 2, -0.22, 0.3 }, { 2, 0.02, 0.42 }, { 2, 0.24, 0.3 } };
  const Click chain[] = { { 1, -0.3, 0.1 }, { 1, -0.1, 0.34 }, { 1, 0.12, 0.3 },
    { 1, 0.28, 0.02 } };
  const Click trunk[] = { { 0, 0.05, -0.5 }, { 0, 0.02, -0.1 }, { 0, -0.2, 0.25 } };
  const Click branch[] = { { 0, 0.02, -0.1 }, { 0, 0.25, 0.2 }, { 0, 0.3, 0.4 } };
  Use(window, "seed", seeds);
  Use(window, "chain", chain);
  Use(window, "tree", trunk);
  Use(window, "tree", branch); // the first click selects where it begins
}

void PlaceNormalAndBox(zvMainWindow& window)
{
  window.GetMeasurements()->RemoveAll();
  const Click normal[] = { { 2, -0.2, -0.3 }, { 2, 0.18, 0.28 } };
  Use(window, "normal", normal);
  window.GetTools()->Choose("box");
}

void Remove(zvMainWindow& window)
{
  window.GetMeasurements()->RemoveAll();
  window.GetTools()->Leave();
}
}
