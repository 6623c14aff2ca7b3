#include "zvMeasureTour.h"

#include "zvHelpOverlay.h"
#include "zvMainWindow.h"
#include "zvMeasurementList.h"
#include "zvMeasurementPanel.h"
#include "zvNoteDialog.h"
#include "zvToolSet.h"
#include "zvViewGrid.h"
#include "zvViewHand.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

#include <cmath>

namespace
{
// Parts of the way from the view's middle to its edges, as zvViewHand::Part has them.
struct Place
{
  double Right;
  double Up;
};

zvViewHand HandOf(zvMainWindow& window, int axis)
{
  return zvViewHand(window.GetViews()->GetSliceView(axis));
}

void Drag(zvMainWindow& window, int axis, const Place& from, const Place& to)
{
  zvViewHand hand = HandOf(window, axis);
  hand.MoveTo(hand.Part(from.Right, from.Up));
  hand.Drag(Qt::LeftButton, hand.Part(from.Right, from.Up), hand.Part(to.Right, to.Up));
}

void Click(zvMainWindow& window, int axis, const Place& place)
{
  zvViewHand hand = HandOf(window, axis);
  hand.MoveTo(hand.Part(place.Right, place.Up));
  hand.Click(Qt::LeftButton, hand.Part(place.Right, place.Up));
}

// Freehand around an ellipse.
void Circle(zvMainWindow& window, int axis, const Place& middle, double right, double up)
{
  constexpr int steps = 60;
  constexpr double fullCircle = 6.283185307179586;
  zvViewHand hand = HandOf(window, axis);
  const auto at = [&](int step)
  {
    const double angle = fullCircle * step / steps;
    return hand.Part(middle.Right + right * std::cos(angle), middle.Up + up * std::sin(angle));
  };
  hand.MoveTo(at(0));
  hand.Press(Qt::LeftButton, at(0));
  for (int step = 1; step < steps; ++step)
  {
    hand.MoveTo(at(step));
  }
  hand.Release();
}

void Write(zvMainWindow& window, int axis, const Place& place, const QString& text)
{
  Click(window, axis, place);
  if (auto* dialog = window.findChild<zvNoteDialog*>())
  {
    dialog->GetTextField()->setText(text);
    dialog->GetAcceptButton()->click();
    delete dialog;
  }
}
}

void zvMeasureTour::DrawRulers(zvMainWindow& window)
{
  window.GetTools()->Choose("ruler");
  Drag(window, 2, { -0.14, 0.36 }, { 0.12, 0.36 });
  Drag(window, 0, { -0.32, -0.08 }, { 0.1, 0.13 });
  Drag(window, 1, { -0.4, 0.28 }, { 0.3, 0.28 });
}

void zvMeasureTour::DrawContours(zvMainWindow& window)
{
  window.GetTools()->Choose("lasso");
  Circle(window, 1, { 0.0, -0.1 }, 0.2, 0.24);
  window.GetTools()->Choose("area");
  const Place cerebellum[] = { { 0.24, -0.3 }, { 0.4, -0.2 }, { 0.48, -0.4 }, { 0.36, -0.58 },
    { 0.24, -0.5 } };
  for (const Place& place : cerebellum)
  {
    Click(window, 0, place);
  }
  Click(window, 0, cerebellum[0]);
  for (const Place& place :
    { Place{ -0.3, 0.0 }, Place{ -0.16, 0.08 }, Place{ -0.12, -0.2 }, Place{ -0.26, -0.32 } })
  {
    Click(window, 2, place);
  }
}

void zvMeasureTour::WriteNotes(zvMainWindow& window)
{
  window.GetTools()->Choose("note");
  Write(window, 0, { -0.1, 0.5 }, "corpus callosum");
  Write(window, 1, { -0.3, 0.62 }, "follow up in May");
}

void zvMeasureTour::UseList(zvMainWindow& window)
{
  window.GetTools()->Leave();
  zvMeasurementList* list = window.GetMeasurements();
  list->Rename(0, "front horns");
  list->Rename(4, "cerebellum");
  list->SetHidden(2, true);
  window.GetMeasurementPanel()->GetTable()->selectRow(4);
}

void zvMeasureTour::ShowHelp(zvMainWindow& window)
{
  window.GetHelp()->Toggle();
}

void zvMeasureTour::Remove(zvMainWindow& window)
{
  if (window.GetHelp()->isVisible())
  {
    window.GetHelp()->Toggle();
  }
  window.GetTools()->Leave();
  window.GetMeasurements()->RemoveAll();
}
