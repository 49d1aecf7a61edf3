#include "samples/Canvas.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

namespace kelvane::sample {

namespace {

constexpr float kTurn = 2.0F * std::numbers::pi_v<float>;
constexpr float kByte = 255.0F;

float Length(Point p) {
  return std::hypot(p.x, p.y);
}
Point Minus(Point a, Point b) {
  return {a.x - b.x, a.y - b.y};
}
float Dot(Point a, Point b) {
  return a.x * b.x + a.y * b.y;
}

// The distance of a point to a line without thickness.
float ToSegment(Point p, Point from, Point to) {
  const Point along = Minus(to, from);
  const Point offset = Minus(p, from);
  const float length = Dot(along, along);
  const float part = length > 0 ? std::clamp(Dot(offset, along) / length, 0.0F, 1.0F) : 0.0F;
  return Length({offset.x - along.x * part, offset.y - along.y * part});
}

std::uint8_t ToByte(float value) {
  return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0F, 1.0F) * kByte));
}

}  // namespace

Colour Rgb(std::uint32_t rgb, float alpha) {
  const auto channel = [rgb](int shift) { return static_cast<float>(rgb >> shift & 0xFFU) / kByte; };
  return {channel(16), channel(8), channel(0), alpha};
}

Colour Mix(const Colour& a, const Colour& b, float part) {
  const float t = std::clamp(part, 0.0F, 1.0F);
  const auto mix = [t](float from, float to) { return from + (to - from) * t; };
  return {mix(a.red, b.red), mix(a.green, b.green), mix(a.blue, b.blue), mix(a.alpha, b.alpha)};
}

Shape Circle(Point centre, float radius) {
  return [=](Point p) { return Length(Minus(p, centre)) - radius; };
}

Shape Box(Point centre, float halfWidth, float halfHeight, float corner) {
  return [=](Point p) {
    const float x = std::abs(p.x - centre.x) - halfWidth + corner;
    const float y = std::abs(p.y - centre.y) - halfHeight + corner;
    return Length({std::max(x, 0.0F), std::max(y, 0.0F)}) + std::min(std::max(x, y), 0.0F) - corner;
  };
}

Shape Line(Point from, Point to, float thickness) {
  return [=](Point p) { return ToSegment(p, from, to) - thickness / 2; };
}

Shape Ring(Point centre, float radius, float thickness) {
  return [=](Point p) { return std::abs(Length(Minus(p, centre)) - radius) - thickness / 2; };
}

Point OnCircle(Point centre, float radius, float turn) {
  return {centre.x + radius * std::sin(turn * kTurn), centre.y - radius * std::cos(turn * kTurn)};
}

Shape Arc(Point centre, float radius, float thickness, float fromTurn, float turns) {
  const Point start = OnCircle(centre, radius, fromTurn);
  const Point end = OnCircle(centre, radius, fromTurn + turns);
  return [=](Point p) {
    const Point offset = Minus(p, centre);
    float turn = std::atan2(offset.x, -offset.y) / kTurn - fromTurn;
    turn -= std::floor(turn);
    const float distance =
        turn <= turns ? std::abs(Length(offset) - radius) : std::min(Length(Minus(p, start)), Length(Minus(p, end)));
    return distance - thickness / 2;
  };
}

Shape Polygon(std::vector<Point> points) {
  return [points = std::move(points)](Point p) {
    float distance = std::numeric_limits<float>::max();
    bool inside = false;
    for (std::size_t i = 0, j = points.size() - 1; i < points.size(); j = i++) {
      const Point a = points[i];
      const Point b = points[j];
      distance = std::min(distance, ToSegment(p, a, b));
      if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x) {
        inside = !inside;
      }
    }
    return inside ? -distance : distance;
  };
}

Shape Star(Point centre, float outer, float inner, int points) {
  std::vector<Point> corners;
  for (int i = 0; i < points * 2; ++i) {
    const float turn = static_cast<float>(i) / static_cast<float>(points * 2);
    corners.push_back(OnCircle(centre, i % 2 == 0 ? outer : inner, turn));
  }
  return Polygon(std::move(corners));
}

Shape Join(std::vector<Shape> shapes) {
  return [shapes = std::move(shapes)](Point p) {
    float distance = std::numeric_limits<float>::max();
    for (const Shape& shape : shapes) {
      distance = std::min(distance, shape(p));
    }
    return distance;
  };
}

Shape Cut(Shape shape, Shape hole) {
  return [shape = std::move(shape), hole = std::move(hole)](Point p) { return std::max(shape(p), -hole(p)); };
}

Shape Common(Shape a, Shape b) {
  return [a = std::move(a), b = std::move(b)](Point p) { return std::max(a(p), b(p)); };
}

Shape Swell(Shape shape, float by) {
  return [shape = std::move(shape), by](Point p) { return shape(p) - by; };
}

Shape Moved(Shape shape, float dx, float dy) {
  return [shape = std::move(shape), dx, dy](Point p) { return shape({p.x - dx, p.y - dy}); };
}

Shape Scaled(Shape shape, float by) {
  return [shape = std::move(shape), by](Point p) { return shape({p.x / by, p.y / by}) * by; };
}

Paint Plain(const Colour& colour) {
  return [colour](Point /*p*/) { return colour; };
}

Paint Downwards(const Colour& top, const Colour& bottom, float fromY, float toY) {
  return [=](Point p) { return Mix(top, bottom, (p.y - fromY) / (toY - fromY)); };
}

Paint Outwards(const Colour& inner, const Colour& outer, Point centre, float radius) {
  return [=](Point p) { return Mix(inner, outer, Length(Minus(p, centre)) / radius); };
}

Canvas::Canvas(int width, int height, const Colour& ground)
    : width_(width),
      height_(height),
      pixels_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), ground) {}

void Canvas::Fill(const Shape& shape, const Paint& paint, float blur) {
  std::size_t index = 0;
  for (int y = 0; y < height_; ++y) {
    for (int x = 0; x < width_; ++x, ++index) {
      const Point p = {static_cast<float>(x) + 0.5F, static_cast<float>(y) + 0.5F};
      const float coverage = std::clamp(0.5F - shape(p) / (1 + 2 * blur), 0.0F, 1.0F);
      if (coverage > 0) {
        // A soft edge eases in and out; a sharp one is the share of the pixel that is covered.
        Blend(index, paint(p), blur > 0 ? coverage * coverage * (3 - 2 * coverage) : coverage);
      }
    }
  }
}

void Canvas::FillAll(const Paint& paint) {
  Fill([](Point /*p*/) { return -1.0F; }, paint);
}

void Canvas::Blend(std::size_t index, const Colour& over, float coverage) {
  Colour& pixel = pixels_[index];
  const float part = over.alpha * coverage;
  const float alpha = part + pixel.alpha * (1 - part);
  if (alpha <= 0) {
    return;
  }
  const auto blend = [&](float above, float below) {
    return (above * part + below * pixel.alpha * (1 - part)) / alpha;
  };
  pixel = {blend(over.red, pixel.red), blend(over.green, pixel.green), blend(over.blue, pixel.blue), alpha};
}

Bytes Canvas::Pixels() const {
  Bytes bytes;
  bytes.reserve(pixels_.size() * 4);
  for (const Colour& pixel : pixels_) {
    const std::uint8_t alpha = ToByte(pixel.alpha);
    const bool seen = alpha > 0;
    for (const float channel : {pixel.red, pixel.green, pixel.blue}) {
      bytes.push_back(seen ? ToByte(channel) : std::uint8_t{0});
    }
    bytes.push_back(alpha);
  }
  return bytes;
}

}  // namespace kelvane::sample
