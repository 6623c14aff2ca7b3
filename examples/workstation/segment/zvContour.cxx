#include "zvContour.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
constexpr double FullCircle = 6.283185307179586;

zvContourPoint Subtract(const zvContourPoint& a, const zvContourPoint& b)
{
  return { { a[0] - b[0], a[1] - b[1] } };
}

double Cross(const zvContourPoint& a, const zvContourPoint& b)
{
  return a[0] * b[1] - a[1] * b[0];
}

double GetDistance(const zvContourPoint& a, const zvContourPoint& b)
{
  return std::hypot(a[0] - b[0], a[1] - b[1]);
}

zvContourPoint Blend(const zvContourPoint& a, const zvContourPoint& b, double part)
{
  return { { a[0] + part * (b[0] - a[0]), a[1] + part * (b[1] - a[1]) } };
}

double GetDistanceFromSegment(
  const zvContourPoint& point, const zvContourPoint& from, const zvContourPoint& to)
{
  const zvContourPoint way = Subtract(to, from);
  const zvContourPoint place = Subtract(point, from);
  const double square = way[0] * way[0] + way[1] * way[1];
  const double part = square > 0.0 ? (place[0] * way[0] + place[1] * way[1]) / square : 0.0;
  return GetDistance(point, Blend(from, to, std::min(std::max(part, 0.0), 1.0)));
}

double GetDistanceFromLine(const zvContourPoint& point, const zvContour& line)
{
  double nearest = std::numeric_limits<double>::max();
  for (std::size_t i = 0; i < line.size(); ++i)
  {
    nearest =
      std::min(nearest, GetDistanceFromSegment(point, line[i], line[(i + 1) % line.size()]));
  }
  return nearest;
}

struct Box
{
  zvContourPoint Low, High;
};

Box BoxOf(const zvContourPoint& a, const zvContourPoint& b)
{
  return { { { std::min(a[0], b[0]), std::min(a[1], b[1]) } },
    { { std::max(a[0], b[0]), std::max(a[1], b[1]) } } };
}

bool AreApart(const Box& a, const Box& b)
{
  return a.High[0] < b.Low[0] || b.High[0] < a.Low[0] || a.High[1] < b.Low[1] ||
    b.High[1] < a.Low[1];
}

// Where two segments cross inside both; touching ends do not count.
bool FindCrossing(const zvContourPoint& a, const zvContourPoint& b, const zvContourPoint& c,
  const zvContourPoint& d, zvContourPoint& place)
{
  const zvContourPoint ab = Subtract(b, a), cd = Subtract(d, c);
  const double ofC = Cross(ab, Subtract(c, a)), ofD = Cross(ab, Subtract(d, a));
  const double ofA = Cross(cd, Subtract(a, c)), ofB = Cross(cd, Subtract(b, c));
  if (!(ofC * ofD < 0.0) || !(ofA * ofB < 0.0))
  {
    return false;
  }
  place = Blend(a, b, ofA / (ofA - ofB));
  return true;
}

struct Crossing
{
  std::size_t First = 0; // the segments that cross, by their first points
  std::size_t Second = 0;
  zvContourPoint Place{ { 0.0, 0.0 } };
};

bool FindCrossing(const zvContour& contour, Crossing& crossing)
{
  const std::size_t count = contour.size();
  std::vector<Box> boxes(count);
  for (std::size_t i = 0; i < count; ++i)
  {
    boxes[i] = BoxOf(contour[i], contour[(i + 1) % count]);
  }
  for (std::size_t i = 0; i + 2 < count; ++i)
  {
    // The last segment is a neighbour of the first.
    const std::size_t end = i == 0 ? count - 1 : count;
    for (std::size_t j = i + 2; j < end; ++j)
    {
      if (!AreApart(boxes[i], boxes[j]) &&
        FindCrossing(
          contour[i], contour[i + 1], contour[j], contour[(j + 1) % count], crossing.Place))
      {
        crossing.First = i;
        crossing.Second = j;
        return true;
      }
    }
  }
  return false;
}
}

zvContour zvContourMath::MakeRing(const zvContourPoint& center, double radius, std::size_t count)
{
  zvContour ring(count);
  for (std::size_t i = 0; i < count; ++i)
  {
    const double angle = FullCircle * static_cast<double>(i) / static_cast<double>(count);
    ring[i] = { { center[0] + radius * std::cos(angle), center[1] + radius * std::sin(angle) } };
  }
  return ring;
}

double zvContourMath::GetArea(const zvContour& contour)
{
  double twice = 0.0;
  for (std::size_t i = 0; i < contour.size(); ++i)
  {
    // From the first point on, so that a contour far from the origin loses no digits.
    twice += Cross(
      Subtract(contour[i], contour[0]), Subtract(contour[(i + 1) % contour.size()], contour[0]));
  }
  return 0.5 * twice;
}

double zvContourMath::GetLength(const zvContour& contour)
{
  double length = 0.0;
  for (std::size_t i = 0; i < contour.size(); ++i)
  {
    length += GetDistance(contour[i], contour[(i + 1) % contour.size()]);
  }
  return length;
}

zvContourPoint zvContourMath::GetCentre(const zvContour& contour)
{
  zvContourPoint centre{ { 0.0, 0.0 } };
  for (const zvContourPoint& point : contour)
  {
    centre[0] += point[0] / static_cast<double>(contour.size());
    centre[1] += point[1] / static_cast<double>(contour.size());
  }
  return centre;
}

bool zvContourMath::IsFinite(const zvContour& contour)
{
  return std::all_of(contour.begin(), contour.end(),
    [](const zvContourPoint& point) { return std::isfinite(point[0]) && std::isfinite(point[1]); });
}

zvContour zvContourMath::Resample(const zvContour& contour, std::size_t count)
{
  const double length = GetLength(contour);
  if (!(length > 0.0) || !std::isfinite(length))
  {
    return {};
  }
  zvContour even;
  even.reserve(count);
  double walked = 0.0; // up to the segment's first point
  std::size_t segment = 0;
  double side = GetDistance(contour[0], contour[1]);
  for (std::size_t i = 0; i < count; ++i)
  {
    const double place = length * static_cast<double>(i) / static_cast<double>(count);
    while (walked + side < place && segment + 1 < contour.size())
    {
      walked += side;
      ++segment;
      side = GetDistance(contour[segment], contour[(segment + 1) % contour.size()]);
    }
    const double part = side > 0.0 ? std::min((place - walked) / side, 1.0) : 0.0;
    even.push_back(Blend(contour[segment], contour[(segment + 1) % contour.size()], part));
  }
  return even;
}

double zvContourMath::GetMeanDistance(const zvContour& contour, const zvContour& line)
{
  double sum = 0.0;
  for (const zvContourPoint& point : contour)
  {
    sum += line.empty() ? 0.0 : GetDistanceFromLine(point, line);
  }
  return contour.empty() ? 0.0 : sum / static_cast<double>(contour.size());
}

// At a crossing the contour falls into two rings. The one that runs the right way round, or else
// the larger one of them, is what the other is a loop of.
int zvContourMath::CutLoops(zvContour& contour)
{
  int cuts = 0;
  Crossing crossing;
  while (FindCrossing(contour, crossing))
  {
    const auto at = [&contour](std::size_t i)
    { return contour.begin() + static_cast<std::ptrdiff_t>(i); };
    zvContour between{ crossing.Place };
    between.insert(between.end(), at(crossing.First + 1), at(crossing.Second + 1));
    zvContour around{ crossing.Place };
    around.insert(around.end(), at(crossing.Second + 1), contour.end());
    around.insert(around.end(), contour.begin(), at(crossing.First + 1));
    contour = GetArea(around) >= GetArea(between) ? std::move(around) : std::move(between);
    ++cuts;
  }
  return cuts;
}

bool zvContourMath::Contains(const zvContour& contour, const zvContourPoint& point)
{
  bool isInside = false;
  for (std::size_t i = 0; i < contour.size(); ++i)
  {
    const zvContourPoint& a = contour[i];
    const zvContourPoint& b = contour[(i + 1) % contour.size()];
    if ((a[1] > point[1]) != (b[1] > point[1]) &&
      point[0] < a[0] + (b[0] - a[0]) * (point[1] - a[1]) / (b[1] - a[1]))
    {
      isInside = !isInside;
    }
  }
  return isInside;
}
