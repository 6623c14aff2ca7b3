#include "zvHelpText.h"

#include <QCoreApplication>

#include <vector>

namespace
{
struct Gesture
{
  const char* Hand;
  const char* Effect;
};

struct Place
{
  const char* Title;
  std::vector<Gesture> Gestures;
};

const std::vector<Place>& Places()
{
  static const std::vector<Place> places = {
    { "In a slice",
      {
        { "Left drag", "move the cross; the other views follow" },
        { "Left drag on a line", "turn the planes that the lines stand for" },
        { "Shift + left drag on a line", "move the cross" },
        { "Left drag on a mark", "move its end or handle, or a note" },
        { "Middle drag", "move the picture; on a mark, the whole mark" },
        { "Right drag", "window (across) and level (up and down)" },
        { "Wheel, arrow keys", "next or previous slice" },
        { "PgUp, PgDn; Home, End", "ten slices on or back; the first or last one" },
        { "Ctrl + wheel", "go nearer or further" },
        { "Double click", "fill the window with one view, and back" },
      } },
    { "In the 3D view",
      {
        { "Left drag on a plane", "move it through the volume; its border does not" },
        { "Shift + left on a plane", "read the voxel under the mouse" },
        { "Left drag beside, middle drag", "turn the view" },
        { "Shift + middle drag", "move the view" },
        { "Ctrl + middle drag, wheel", "go nearer or further" },
      } },
  };
  return places;
}

QString Translate(const char* text)
{
  return QCoreApplication::translate("zvHelpText", text);
}
}

QString zvHelpText::Row(const QString& hand, const QString& effect)
{
  return QString("<tr><td style='padding-right:14px; white-space:nowrap'><b>%1</b></td><td>%2</td>"
                 "</tr>")
    .arg(hand, effect);
}

QString zvHelpText::Table(const QString& title, const QString& rows)
{
  return QString("<p style='color:#7aa7ff; font-weight:600; margin-bottom:2px'>%1</p>"
                 "<table cellspacing='1'>%2</table>")
    .arg(title, rows);
}

QString zvHelpText::Mouse()
{
  QString text;
  for (const Place& place : Places())
  {
    QString rows;
    for (const Gesture& gesture : place.Gestures)
    {
      rows += Row(Translate(gesture.Hand), Translate(gesture.Effect));
    }
    text += Table(Translate(place.Title), rows);
  }
  return text +
    QString("<p style='color:#aeb6c2'>%1</p>")
      .arg(Translate("Axial slices are seen from the feet, coronal ones from the front: the "
                     "patient's right is on the left. Sagittal slices are seen from the "
                     "patient's left. Voxels count from the patient's right, front and feet. R, "
                     "L, A, P, I and S are the right, left, front, back, lower and upper side."));
}

QString zvHelpText::About()
{
  return QCoreApplication::translate("zvHelpText",
    "<h3>Workstation</h3><p>The example host of libzvWidgets: three slices of a volume and their "
    "planes in space.</p>"
    "<p>Not a medical device: not for diagnosis.</p>");
}
