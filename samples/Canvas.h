// A small painter: shapes are signed distances, so that every edge comes out smooth at any size.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "common/Bytes.h"

namespace kelvane::sample {

// Straight alpha, 0 to 1.
struct Colour {
  float red = 0;
  float green = 0;
  float blue = 0;
  float alpha = 0;
};

// 0xRRGGBB.
[[nodiscard]] Colour Rgb(std::uint32_t rgb, float alpha = 1);
[[nodiscard]] Colour Mix(const Colour& a, const Colour& b, float part);

struct Point {
  float x = 0;
  float y = 0;
};

// The distance of a point to a shape's edge in pixels, negative inside.
using Shape = std::function<float(Point)>;
// The colour of a point.
using Paint = std::function<Colour(Point)>;

[[nodiscard]] Shape Circle(Point centre, float radius);
[[nodiscard]] Shape Box(Point centre, float halfWidth, float halfHeight, float corner = 0);
// A line with round ends.
[[nodiscard]] Shape Line(Point from, Point to, float thickness);
[[nodiscard]] Shape Ring(Point centre, float radius, float thickness);
// A part of a ring with round ends: from an angle clockwise on; 0 is up, in turns.
[[nodiscard]] Shape Arc(Point centre, float radius, float thickness, float fromTurn, float turns);
[[nodiscard]] Shape Polygon(std::vector<Point> points);
[[nodiscard]] Shape Star(Point centre, float outer, float inner, int points);
[[nodiscard]] Shape Join(std::vector<Shape> shapes);
[[nodiscard]] Shape Cut(Shape shape, Shape hole);
[[nodiscard]] Shape Common(Shape a, Shape b);
[[nodiscard]] Shape Swell(Shape shape, float by);
[[nodiscard]] Shape Moved(Shape shape, float dx, float dy);
// Scaled about the origin.
[[nodiscard]] Shape Scaled(Shape shape, float by);
// The point at an angle of a circle; 0 is up, clockwise, in turns.
[[nodiscard]] Point OnCircle(Point centre, float radius, float turn);

[[nodiscard]] Paint Plain(const Colour& colour);
[[nodiscard]] Paint Downwards(const Colour& top, const Colour& bottom, float fromY, float toY);
[[nodiscard]] Paint Outwards(const Colour& inner, const Colour& outer, Point centre, float radius);

class Canvas {
 public:
  Canvas(int width, int height, const Colour& ground = {});

  [[nodiscard]] int Width() const { return width_; }
  [[nodiscard]] int Height() const { return height_; }
  // Paints over what is there. `blur` softens the edge by that many pixels to either side.
  void Fill(const Shape& shape, const Paint& paint, float blur = 0);
  // Paints every pixel.
  void FillAll(const Paint& paint);
  // Top row first, 4 bytes a pixel: red, green, blue, alpha. What can't be seen is 0 in all four.
  [[nodiscard]] Bytes Pixels() const;

 private:
  void Blend(std::size_t index, const Colour& over, float coverage);

  int width_;
  int height_;
  std::vector<Colour> pixels_;
};

}  // namespace kelvane::sample
