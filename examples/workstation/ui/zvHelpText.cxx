#include "zvHelpText.h"

#include <QCoreApplication>

namespace
{
struct Gesture
{
  const char* Hand;
  const char* Effect;
};

constexpr Gesture LegendGestures[] = {
  { "Left", "move a plane" },
  { "Shift + left", "read a voxel" },
  { "Right", "window and level" },
  { "Middle", "turn the view" },
  { "Wheel", "nearer, further" },
};

constexpr Gesture Gestures[] = {
  { "Left drag on a plane", "move the plane through the volume" },
  { "Shift + left on a plane", "read the voxel under the mouse" },
  { "Left drag beside the planes, or middle drag", "turn the view" },
  { "Shift + middle drag", "move the view" },
  { "Ctrl + middle drag, or wheel", "go nearer or further" },
  { "Right drag", "window (across) and level (up and down)" },
  { "R", "reset the view" },
  { "O", "make the planes orthogonal" },
  { "Esc", "cancel loading" },
};
}

QString zvHelpText::Legend()
{
  QString rows;
  for (const Gesture& gesture : LegendGestures)
  {
    rows += QString("<tr><td style='padding-right:10px'>%1</td><td>%2</td></tr>")
              .arg(QCoreApplication::translate("zvHelpText", gesture.Hand),
                QCoreApplication::translate("zvHelpText", gesture.Effect));
  }
  return QString("<table cellspacing='2'>%1</table>").arg(rows);
}

QString zvHelpText::Mouse()
{
  QString rows;
  for (const Gesture& gesture : Gestures)
  {
    rows += QString("<tr><td style='padding-right:18px'><b>%1</b></td><td>%2</td></tr>")
              .arg(QCoreApplication::translate("zvHelpText", gesture.Hand),
                QCoreApplication::translate("zvHelpText", gesture.Effect));
  }
  return QString("<table cellspacing='4'>%1</table><p>%2</p>")
    .arg(rows,
      QCoreApplication::translate("zvHelpText",
        "Grab a plane in its inner part: its border, a tenth of its size, does not move it.<br>"
        "Voxels count from the patient's right, front and feet. R, L, A, P, I and S are the "
        "patient's right, left, front, back, lower and upper side."));
}

QString zvHelpText::About()
{
  return QCoreApplication::translate("zvHelpText",
    "<h3>Workstation</h3><p>The example host of libzvWidgets: three planes through a volume.</p>"
    "<p>Not a medical device: not for diagnosis.</p>");
}
