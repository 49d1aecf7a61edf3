#include "samples/Glyphs.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace kelvane::sample {

namespace {

constexpr Point kMiddle = {32, 32};

// An ellipse drawn as a line; near enough to a true distance for thin ones.
Shape EllipseRing(Point centre, float halfWidth, float halfHeight, float thickness) {
  return [=](Point p) {
    const float radius = std::hypot((p.x - centre.x) / halfWidth, (p.y - centre.y) / halfHeight);
    return std::abs(radius - 1) * std::min(halfWidth, halfHeight) - thickness / 2;
  };
}

// Lines from each point to the next.
Shape Stroke(const std::vector<Point>& points, float thickness) {
  std::vector<Shape> lines;
  for (std::size_t i = 1; i < points.size(); ++i) {
    lines.push_back(Line(points[i - 1], points[i], thickness));
  }
  return Join(std::move(lines));
}

}  // namespace

Shape GearGlyph() {
  std::vector<Shape> parts = {Circle(kMiddle, 11.5F)};
  for (int tooth = 0; tooth < 8; ++tooth) {
    parts.push_back(Line(kMiddle, OnCircle(kMiddle, 14.5F, static_cast<float>(tooth) / 8), 6.5F));
  }
  return Cut(Join(std::move(parts)), Circle(kMiddle, 5));
}

Shape PhotoGlyph() {
  const Shape frame = Cut(Box(kMiddle, 18, 14, 4), Box(kMiddle, 15, 11, 1.5F));
  const Shape hills = Swell(Polygon({{19, 41}, {27, 30}, {32.5F, 37}, {38, 31.5F}, {45, 41}}), 0.8F);
  return Join({frame, hills, Circle({38.5F, 26}, 3)});
}

Shape MusicGlyph() {
  const Shape beam = Polygon({{24.5F, 19}, {46, 14.5F}, {46, 21.5F}, {24.5F, 26}});
  return Join({Circle({21.5F, 44}, 5.2F), Circle({41, 40}, 5.2F), Line({25.5F, 44}, {25.5F, 21}, 3),
               Line({45, 40}, {45, 17}, 3), Swell(beam, 0.8F)});
}

Shape VideoGlyph() {
  std::vector<Shape> holes = {Swell(Polygon({{28, 26.5F}, {38, 32}, {28, 37.5F}}), 1)};
  for (int i = 0; i < 5; ++i) {
    const float x = 19 + 6.5F * static_cast<float>(i);
    holes.push_back(Box({x, 21.8F}, 1.7F, 1.5F, 0.6F));
    holes.push_back(Box({x, 42.2F}, 1.7F, 1.5F, 0.6F));
  }
  return Cut(Box(kMiddle, 18, 14, 3), Join(std::move(holes)));
}

Shape GameGlyph() {
  const Shape cross = Join({Line({20, 32}, {27, 32}, 3), Line({23.5F, 28.5F}, {23.5F, 35.5F}, 3)});
  const Shape buttons = Join({Circle({38, 34.5F}, 2.4F), Circle({43.5F, 29.5F}, 2.4F)});
  return Cut(Box(kMiddle, 20, 11.5F, 11), Join({cross, buttons}));
}

Shape GlobeGlyph() {
  const Shape inside = Circle(kMiddle, 16.5F);
  const Shape lines = Join({EllipseRing(kMiddle, 7.5F, 16.5F, 2.6F), Line({10, 32}, {54, 32}, 2.6F),
                            Line({10, 23.5F}, {54, 23.5F}, 2.4F), Line({10, 40.5F}, {54, 40.5F}, 2.4F)});
  return Join({Ring(kMiddle, 16.5F, 3), Common(inside, lines)});
}

Shape MailGlyph() {
  return Cut(Box(kMiddle, 18, 13, 3), Stroke({{15, 21.5F}, {32, 35}, {49, 21.5F}}, 2.6F));
}

Shape ClockGlyph() {
  std::vector<Shape> parts = {Ring(kMiddle, 16, 3.4F), Stroke({{32, 22}, {32, 32}, {39, 36}}, 3.2F)};
  for (int hour = 0; hour < 12; hour += 3) {
    parts.push_back(Circle(OnCircle(kMiddle, 11.5F, static_cast<float>(hour) / 12), 1.3F));
  }
  return Join(std::move(parts));
}

Shape CalendarGlyph() {
  std::vector<Shape> holes = {Box({32, 25.4F}, 14, 1)};
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 4; ++column) {
      if (row + column > 0) {
        holes.push_back(
            Box({21.5F + 7 * static_cast<float>(column), 30.6F + 5.2F * static_cast<float>(row)}, 2, 1.4F, 0.5F));
      }
    }
  }
  const Shape sheet = Cut(Box({32, 32.5F}, 17, 14.5F, 3), Join(std::move(holes)));
  return Join({sheet, Line({23, 15}, {23, 21}, 3), Line({41, 15}, {41, 21}, 3)});
}

Shape FolderGlyph() {
  const Shape back = Join({Box({24, 22.5F}, 9, 4.5F, 2.5F), Box({32, 33}, 18, 11.5F, 3)});
  return Cut(back, Box({32, 27}, 15.5F, 0.9F, 0.4F));
}

Shape MemoryCardGlyph() {
  const Shape card = Swell(Polygon({{22, 17}, {37, 17}, {43, 23}, {43, 47}, {22, 47}}), 2);
  std::vector<Shape> holes = {Box({32.5F, 40}, 7, 4, 1)};
  for (int i = 0; i < 4; ++i) {
    holes.push_back(Box({24 + 4.6F * static_cast<float>(i), 22.5F}, 1.2F, 3.4F, 0.6F));
  }
  return Cut(card, Join(std::move(holes)));
}

Shape DiscGlyph() {
  const Shape disc = Cut(Circle(kMiddle, 18), Circle(kMiddle, 3.4F));
  const Shape shine = Join({Arc(kMiddle, 13, 2, 0.03F, 0.18F), Arc(kMiddle, 13, 2, 0.53F, 0.18F)});
  return Cut(Cut(disc, Ring(kMiddle, 7.5F, 1.6F)), shine);
}

Shape SearchGlyph() {
  return Join({Ring({28, 28}, 10.5F, 4.4F), Line({37, 37}, {46, 46}, 6)});
}

Shape QuestionGlyph() {
  const Point centre = {32, 25};
  const Shape hook = Arc(centre, 8, 5, -0.25F, 0.63F);
  return Join({hook, Stroke({OnCircle(centre, 8, 0.38F), {32, 35}, {32, 38}}, 5), Circle({32, 46.5F}, 3.2F)});
}

Shape InfoGlyph() {
  return Join({Circle({32, 18.5F}, 3.8F), Stroke({{28.5F, 28}, {32, 28}, {32, 45}}, 5.4F),
               Line({27.5F, 46}, {36.5F, 46}, 4.6F)});
}

Shape WarningGlyph() {
  const Shape sign = Swell(Polygon({{32, 18}, {48, 45}, {16, 45}}), 3);
  return Cut(sign, Join({Line({32, 26}, {32, 35.5F}, 4), Circle({32, 41.5F}, 2.3F)}));
}

Shape CrossGlyph() {
  return Join({Line({21, 21}, {43, 43}, 7), Line({43, 21}, {21, 43}, 7)});
}

Shape CheckGlyph() {
  return Stroke({{18.5F, 33.5F}, {28, 43}, {46, 22}}, 7);
}

Shape StarGlyph() {
  return Swell(Star({32, 33}, 17, 7.5F, 5), 1.2F);
}

Shape HeartGlyph() {
  const Shape point = Polygon({{17.6F, 31.5F}, {32, 25}, {46.4F, 31.5F}, {32, 47.5F}});
  return Join({Circle({24.4F, 26}, 8.6F), Circle({39.6F, 26}, 8.6F), point});
}

Shape LockGlyph() {
  const Shape shackle =
      Join({Arc({32, 26}, 8, 4.4F, -0.25F, 0.5F), Line({24, 26}, {24, 34}, 4.4F), Line({40, 26}, {40, 34}, 4.4F)});
  const Shape hole = Join({Circle({32, 38}, 2.8F), Line({32, 38}, {32, 43}, 2.4F)});
  return Join({shackle, Cut(Box({32, 39.5F}, 13, 9.5F, 3), hole)});
}

Shape KeyGlyph() {
  return Join({Ring({23, 32}, 7.4F, 4.6F), Line({30, 32}, {49, 32}, 4.4F), Line({42, 32}, {42, 39}, 3.8F),
               Line({48.5F, 32}, {48.5F, 37.5F}, 3.8F)});
}

Shape UserGlyph() {
  const Shape shoulders = Common(Circle({32, 54}, 18.5F), Box({32, 30}, 40, 16.5F));
  return Join({Circle({32, 23.5F}, 8), Cut(shoulders, Circle({32, 23.5F}, 10.6F))});
}

Shape TrashGlyph() {
  const Shape can = Swell(Polygon({{22.5F, 27.5F}, {41.5F, 27.5F}, {40, 46.5F}, {24, 46.5F}}), 1.5F);
  const Shape ribs =
      Join({Line({28, 31}, {28.5F, 43}, 2), Line({32, 31}, {32, 43}, 2), Line({36, 31}, {35.5F, 43}, 2)});
  const Shape handle = Cut(Box({32, 19}, 5.5F, 4, 1.5F), Box({32, 20}, 3, 3));
  return Join({Cut(can, ribs), Line({20, 22}, {44, 22}, 3.4F), handle});
}

Shape CloudGlyph() {
  return Join({Circle({22.5F, 37}, 8), Circle({32, 30}, 10.5F), Circle({42, 36.5F}, 8.5F), Box({32, 41}, 14, 4.2F, 2)});
}

Shape MoonGlyph() {
  return Cut(Circle({31, 32}, 16), Circle({38, 26}, 13.5F));
}

Shape SunGlyph() {
  std::vector<Shape> parts = {Circle(kMiddle, 9)};
  for (int ray = 0; ray < 8; ++ray) {
    const float turn = static_cast<float>(ray) / 8;
    parts.push_back(Line(OnCircle(kMiddle, 13.5F, turn), OnCircle(kMiddle, 18, turn), 3.4F));
  }
  return Join(std::move(parts));
}

Shape ArrowGlyph(float turn) {
  const Point tip = OnCircle(kMiddle, 20, turn);
  const Point left = OnCircle(kMiddle, 20, turn + 0.375F);
  const Point right = OnCircle(kMiddle, 20, turn - 0.375F);
  const Point notch = OnCircle(kMiddle, 5, turn + 0.5F);
  return Swell(Polygon({tip, left, notch, right}), 2.5F);
}

Shape LetterGlyph(char letter, float thickness) {
  switch (letter) {
    case 'A':
      return Join({Stroke({{18, 48}, {32, 16}, {46, 48}}, thickness), Line({23.5F, 38}, {40.5F, 38}, thickness)});
    case 'E':
      return Join({Stroke({{43, 16}, {22, 16}, {22, 48}, {43, 48}}, thickness), Line({22, 32}, {39, 32}, thickness)});
    case 'K':
      return Join({Line({22, 16}, {22, 48}, thickness), Stroke({{43, 16}, {25, 33}, {43, 48}}, thickness)});
    case 'L':
      return Stroke({{23, 16}, {23, 48}, {43, 48}}, thickness);
    case 'N':
      return Stroke({{20, 48}, {20, 16}, {44, 48}, {44, 16}}, thickness);
    case 'V':
      return Stroke({{18, 16}, {32, 48}, {46, 16}}, thickness);
    default:
      throw std::invalid_argument("no such letter");
  }
}

}  // namespace kelvane::sample
