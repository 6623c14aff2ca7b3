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
  { "Left", "move the cross, turn it" },
  { "Right", "window and level" },
  { "Wheel", "next slice" },
  { "Double click", "one view, all views" },
  { "In 3D", "" },
  { "Left", "move a plane" },
  { "Shift + left", "read a voxel" },
  { "Middle", "turn the view" },
};

constexpr Gesture Gestures[] = {
  { "Left drag on a slice", "move the cross; the other views follow" },
  { "Left drag on a line of the cross", "turn the planes that the lines stand for" },
  { "Shift + left drag on a line", "move the cross" },
  { "Wheel, arrows", "next or previous slice" },
  { "PgUp, PgDn; Home, End", "ten slices on or back; the first or last one" },
  { "Ctrl + wheel", "go nearer or further" },
  { "Right drag, also Shift + right drag", "window (across) and level (up and down)" },
  { "Double click", "fill the window with one view, and back" },
  { "P, F, Ctrl+Z", "paint, fill, take back the last fill" },
  { "M", "show or hide the mask" },
  { "In 3D: left drag on a plane", "move the plane through the volume" },
  { "Shift + left on a plane", "read the voxel under the mouse" },
  { "Left drag beside the planes, or middle drag", "turn the view" },
  { "Shift + middle drag", "move the view" },
  { "Ctrl + middle drag, or wheel", "go nearer or further" },
  { "R", "reset the active view" },
  { "O", "make the planes orthogonal" },
  { "Shift + R", "reset everything" },
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
        "Axial slices are seen from the feet, coronal ones from the front: the patient's right is "
        "on the left. Sagittal slices are seen from the patient's left.<br>"
        "In 3D grab a plane in its inner part: its border, a tenth of its size, does not move "
        "it.<br>"
        "Voxels count from the patient's right, front and feet. R, L, A, P, I and S are the "
        "patient's right, left, front, back, lower and upper side."));
}

QString zvHelpText::About()
{
  return QCoreApplication::translate("zvHelpText",
    "<h3>Workstation</h3><p>The example host of libzvWidgets: three slices of a volume and their "
    "planes in space.</p>"
    "<p>Not a medical device: not for diagnosis.</p>");
}
