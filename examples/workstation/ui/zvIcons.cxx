#include "zvIcons.h"

#include <QPainter>
#include <QPainterPath>
#include <QStringList>

#include <algorithm>

namespace
{
constexpr int Side = 24; // of the field that the lines are given in
constexpr const char* LineColor = "#dfe3ea";
constexpr const char* FaintColor = "#666c78";

// An icon as words: M x y moves, L x y draws a line, C six numbers a curve, O x y r a circle,
// B x y r a filled dot, Z closes.
struct Drawing
{
  const char* Name;
  const char* Words;
};

constexpr Drawing Drawings[] = {
  { "cross",
    "M 12 3 L 12 21 M 3 12 L 21 12 M 9 6 L 12 3 L 15 6 M 9 18 L 12 21 L 15 18 "
    "M 6 9 L 3 12 L 6 15 M 18 9 L 21 12 L 18 15" },
  { "ruler", "M 3 16 L 16 3 L 21 8 L 8 21 Z M 7 12 L 9 14 M 10 9 L 13 12 M 13 6 L 15 8" },
  { "area", "M 12 4 L 20 9 L 18 19 L 7 20 L 4 10 Z B 12 4 2 B 20 9 2 B 18 19 2 B 7 20 2 B 4 10 2" },
  { "lasso",
    "M 9 16 C 1 15 2 4 12 4 C 22 4 23 15 14 16 C 11 16 9 17 9 16 "
    "M 9 16 C 8 18 10 19 8 21" },
  { "note", "M 5 6 L 5 4 L 19 4 L 19 6 M 12 4 L 12 20 M 9 20 L 15 20" },
  { "contour",
    "M 12 4 C 18 2 21 8 18 12 C 16 15 20 18 14 20 C 8 22 3 17 5 12 C 6 9 6 6 12 4 "
    "B 12 4 2 B 18 12 2 B 14 20 2 B 5 12 2" },
  { "paint", "M 20 3 L 10 13 L 12 15 L 21 4 Z M 10 13 C 6 13 7 18 3 19 C 6 22 12 21 12 15" },
  { "fill", "M 11 3 L 20 12 L 11 21 L 2 12 Z M 2 12 L 20 12 M 11 3 L 8 6 B 21 19 2" },
  { "seed", "B 7 8 3 B 16 6 3 B 12 17 3" },
  { "chain", "M 4 18 L 10 8 L 15 15 L 20 5 B 4 18 2 B 10 8 2 B 15 15 2 B 20 5 2" },
  { "tree", "M 12 21 L 12 13 L 6 5 M 12 13 L 19 8 B 12 21 2 B 12 13 2 B 6 5 2 B 19 8 2" },
  { "normal", "M 5 19 L 18 6 M 11 5 L 19 5 L 19 13 M 3 17 L 7 21" },
  { "box",
    "M 3 8 L 14 8 L 14 20 L 3 20 Z M 3 8 L 9 3 L 20 3 L 14 8 M 20 3 L 20 15 L 14 20 "
    "B 9 14 2" },
  { "undo", "M 8 5 L 4 9 L 8 13 M 4 9 L 14 9 C 22 9 22 19 14 19 L 9 19" },
  { "goto", "M 3 5 L 3 19 L 21 19 L 21 5 Z M 12 8 L 12 16 M 8 12 L 16 12" },
  { "hide", "M 2 12 C 7 5 17 5 22 12 C 17 19 7 19 2 12 Z O 12 12 3 M 4 20 L 20 4" },
  { "rename", "M 4 20 L 5 15 L 16 4 L 20 8 L 9 19 Z M 13 7 L 17 11" },
  { "delete",
    "M 5 7 L 19 7 M 9 7 L 9 4 L 15 4 L 15 7 M 7 7 L 8 20 L 16 20 L 17 7 "
    "M 10 10 L 10 17 M 14 10 L 14 17" },
  { "delete-all", "M 4 4 L 20 4 L 20 20 L 4 20 Z M 8 8 L 16 16 M 16 8 L 8 16" },
  { "export", "M 5 12 L 5 20 L 19 20 L 19 12 M 12 15 L 12 3 M 8 7 L 12 3 L 16 7" },
  { "open", "M 6 3 L 14 3 L 18 7 L 18 21 L 6 21 Z M 14 3 L 14 7 L 18 7" },
  { "folder", "M 3 6 L 9 6 L 11 8 L 21 8 L 21 19 L 3 19 Z" },
  { "reset",
    "M 4 9 L 4 4 L 9 4 M 15 4 L 20 4 L 20 9 M 20 15 L 20 20 L 15 20 M 9 20 L 4 20 L 4 15 "
    "B 12 12 2" },
  { "orthogonal", "M 5 3 L 5 19 L 21 19 M 5 13 L 11 13 L 11 19" },
  { "reset-all", "M 19 8 C 15 2 6 4 5 11 C 4 19 14 23 19 16 M 20 3 L 19 8 L 14 8" },
  { "maximise", "M 14 4 L 20 4 L 20 10 M 20 4 L 13 11 M 10 20 L 4 20 L 4 14 M 4 20 L 11 13" },
  { "window",
    "O 12 12 9 M 12 3 L 12 21 M 12 7 L 16 7 M 12 11 L 19 11 M 12 15 L 19 15 "
    "M 12 19 L 15 19" },
  { "mask",
    "M 4 12 C 4 4 20 4 20 12 C 20 20 4 20 4 12 Z M 7 15 L 14 8 M 10 17 L 17 10 "
    "M 6 12 L 10 8" },
  { "help", "O 12 12 9 M 9 10 C 9 6 15 6 15 10 C 15 12 12 12 12 14 B 12 17 1" },
};

// Takes the numbers of a word from the words, one by one.
class Reader
{
public:
  explicit Reader(const char* words)
    : Words(QString(words).split(' ', Qt::SkipEmptyParts))
  {
  }
  bool IsAtEnd() const { return this->Next >= this->Words.size(); }
  QChar TakeLetter() { return this->Words[this->Next++][0]; }
  double TakeNumber() { return this->Words[this->Next++].toDouble(); }
  QPointF TakePoint()
  {
    const double x = this->TakeNumber();
    return { x, this->TakeNumber() };
  }

private:
  QStringList Words;
  int Next = 0;
};

void Draw(const Drawing& drawing, QPainter& painter)
{
  QPainterPath lines, dots;
  for (Reader reader(drawing.Words); !reader.IsAtEnd();)
  {
    const char letter = reader.TakeLetter().toLatin1();
    if (letter == 'Z')
    {
      lines.closeSubpath();
      continue;
    }
    const QPointF point = reader.TakePoint();
    switch (letter)
    {
      case 'M':
        lines.moveTo(point);
        break;
      case 'L':
        lines.lineTo(point);
        break;
      case 'C':
      {
        const QPointF second = reader.TakePoint();
        lines.cubicTo(point, second, reader.TakePoint());
        break;
      }
      default:
      {
        const double radius = reader.TakeNumber();
        (letter == 'B' ? dots : lines).addEllipse(point, radius, radius);
        break;
      }
    }
  }
  painter.setBrush(Qt::NoBrush);
  painter.drawPath(lines);
  painter.fillPath(dots, painter.pen().color());
}

QPixmap Picture(const Drawing& drawing, const QColor& color, int size)
{
  QPixmap picture(size, size);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(static_cast<double>(size) / Side, static_cast<double>(size) / Side);
  painter.setPen(QPen(color, 1.7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  Draw(drawing, painter);
  return picture;
}
}

QIcon zvIcons::Make(const QString& name)
{
  const auto found = std::find_if(std::begin(Drawings), std::end(Drawings),
    [&name](const Drawing& drawing) { return name == drawing.Name; });
  QIcon icon;
  if (found != std::end(Drawings))
  {
    for (const int size : { 16, 18, 24, 36, 48 })
    {
      icon.addPixmap(Picture(*found, QColor(LineColor), size), QIcon::Normal);
      icon.addPixmap(Picture(*found, QColor(FaintColor), size), QIcon::Disabled);
    }
  }
  return icon;
}

QStringList zvIcons::GetNames()
{
  QStringList names;
  for (const Drawing& drawing : Drawings)
  {
    names += drawing.Name;
  }
  return names;
}
