#include "samples/Pictures.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string_view>

#include "samples/Glyphs.h"

namespace kelvane::sample {

namespace {

constexpr float kField = 64;  // signs are drawn for a field of this size
constexpr float kPi = std::numbers::pi_v<float>;

float F(int value) {
  return static_cast<float>(value);
}

Colour White(float alpha = 1) {
  return {1, 1, 1, alpha};
}
Colour Black(float alpha = 1) {
  return {0, 0, 0, alpha};
}

}  // namespace

Canvas Tile(int size, const Shape& glyph, std::uint32_t top, std::uint32_t bottom) {
  Canvas canvas(size, size);
  const float k = F(size) / kField;
  const auto fill = [&](const Shape& shape, const Paint& paint, float blur = 0) {
    canvas.Fill(Scaled(shape, k), paint, blur * k);
  };
  fill(Box({32, 34.5F}, 25, 25, 12), Plain(Black(0.45F)), 3);
  const Shape body = Box({32, 31}, 26, 26, 12);
  fill(body, Downwards(Rgb(top), Rgb(bottom), 5 * k, 57 * k));
  fill(Common(Box({32, 31}, 25, 25, 11), Circle({32, -14}, 46)), Downwards(White(0.30F), White(0.10F), 5 * k, 32 * k));
  fill(Cut(body, Box({32, 31}, 24.8F, 24.8F, 11)), Downwards(White(0.45F), White(0.05F), 5 * k, 57 * k));
  const Shape sign = Moved(glyph, 0, -1);
  fill(Moved(sign, 0, 1.6F), Plain(Black(0.35F)), 1.2F);
  fill(sign, Downwards(White(), Rgb(0xE3E9F2), 14 * k, 48 * k));
  return canvas;
}

Canvas Sign(int size, const Shape& glyph, std::uint32_t rgb) {
  Canvas canvas(size, size);
  canvas.Fill(Scaled(glyph, F(size) / kField), Plain(Rgb(rgb)));
  return canvas;
}

Canvas RoundButton(int size, char symbol, std::uint32_t rgb) {
  Canvas canvas(size, size);
  const float k = F(size) / kField;
  canvas.Fill(Scaled(Circle({32, 32}, 30), k), Downwards(Rgb(0x4A4F5C), Rgb(0x1D2027), 0, F(size)));
  canvas.Fill(Scaled(Ring({32, 32}, 28.5F, 2.5F), k), Downwards(White(0.5F), White(0.08F), 0, F(size)));
  Shape sign = Ring({32, 32}, 14, 5);
  if (symbol == 'x') {
    sign = Join({Line({21, 21}, {43, 43}, 5), Line({43, 21}, {21, 43}, 5)});
  } else if (symbol == 's') {
    sign = Cut(Box({32, 32}, 14.5F, 14.5F, 2), Box({32, 32}, 9.5F, 9.5F));
  } else if (symbol == 't') {
    sign = Join({Line({32, 17}, {46, 41}, 5), Line({46, 41}, {18, 41}, 5), Line({18, 41}, {32, 17}, 5)});
  }
  canvas.Fill(Scaled(sign, k), Plain(Rgb(rgb)));
  return canvas;
}

Canvas Dial(int size, float level, std::uint32_t rgb) {
  Canvas canvas(size, size);
  const float k = F(size) / kField;
  const Point middle = {32, 33};
  constexpr float kFrom = -0.375F;
  constexpr float kTurns = 0.75F;
  const auto fill = [&](const Shape& shape, const Paint& paint, float blur = 0) {
    canvas.Fill(Scaled(shape, k), paint, blur * k);
  };
  fill(Arc(middle, 26, 6, kFrom, kTurns), Plain(Rgb(0x2B303B)));
  fill(Arc(middle, 26, 6, kFrom, kTurns * level), Plain(Rgb(rgb)));
  fill(Circle({32, 35}, 17.5F), Plain(Black(0.5F)), 2.5F);
  fill(Circle(middle, 18), Downwards(Rgb(0xF4F6FA), Rgb(0x9AA3B5), 15 * k, 51 * k));
  fill(Circle(middle, 15), Downwards(Rgb(0xC9D0DC), Rgb(0xEEF1F6), 18 * k, 48 * k));
  const float turn = kFrom + kTurns * level;
  fill(Line(OnCircle(middle, 7, turn), OnCircle(middle, 13, turn), 3.4F), Plain(Rgb(rgb)));
  return canvas;
}

Canvas Battery(float level, std::uint32_t rgb) {
  Canvas canvas(48, 24);
  const Shape body = Box({22, 12}, 19, 9, 3);
  canvas.Fill(Join({Cut(body, Box({22, 12}, 16.8F, 6.8F, 1.5F)), Box({43.2F, 12}, 2, 4, 1)}), Plain(Rgb(0xEDF1F7)));
  const float width = 30.4F * level;
  canvas.Fill(Box({6.8F + width / 2, 12}, width / 2, 5.2F, 1),
              Downwards(Mix(Rgb(rgb), White(), 0.35F), Rgb(rgb), 7, 17));
  return canvas;
}

Canvas Signal(int arcs) {
  Canvas canvas(32, 32);
  const Point source = {16, 26};
  canvas.Fill(Circle(source, 3), Plain(Rgb(0xEDF1F7)));
  for (int arc = 1; arc <= 3; ++arc) {
    canvas.Fill(Arc(source, 1.5F + 6.5F * F(arc), 3.4F, -0.125F, 0.25F),
                Plain(Rgb(0xEDF1F7, arc <= arcs ? 1.0F : 0.27F)));
  }
  return canvas;
}

Canvas ProgressBar(int width, int height, float level) {
  Canvas canvas(width, height);
  const Point middle = {F(width) / 2, F(height) / 2};
  const float half = F(height) / 2 - 2;
  canvas.Fill(Box(middle, middle.x - 2, half, half), Downwards(Rgb(0x11141B), Rgb(0x2C3340), 0, F(height)));
  const float filled = (F(width) - 10) * level;
  canvas.Fill(Box({5 + filled / 2, middle.y}, filled / 2, half - 3, half - 3),
              Downwards(Rgb(0x9BE86B), Rgb(0x2E9E3F), 4, F(height) - 4));
  canvas.Fill(Box({5 + filled / 2, middle.y - half / 2.6F}, filled / 2 - 5, 2, 2), Plain(White(0.4F)));
  return canvas;
}

Canvas AnalogClock(int size, float hour, float minute) {
  Canvas canvas(size, size);
  const float k = F(size) / kField;
  const Point middle = {32, 31.5F};
  const auto fill = [&](const Shape& shape, const Paint& paint, float blur = 0) {
    canvas.Fill(Scaled(shape, k), paint, blur * k);
  };
  fill(Circle({32, 34}, 28), Plain(Black(0.45F)), 3);
  fill(Circle(middle, 29), Downwards(Rgb(0xF1F4F9), Rgb(0x8D97A8), 2 * k, 60 * k));
  fill(Circle(middle, 26), Outwards(Rgb(0xFFFFFF), Rgb(0xDDE3EC), {middle.x * k, middle.y * k}, 26 * k));
  for (int mark = 0; mark < 12; ++mark) {
    const float turn = F(mark) / 12;
    const bool quarter = mark % 3 == 0;
    fill(Line(OnCircle(middle, quarter ? 19.5F : 21.5F, turn), OnCircle(middle, 23.5F, turn), quarter ? 2.4F : 1.2F),
         Plain(Rgb(0x4B5568)));
  }
  fill(Line(middle, OnCircle(middle, 13, (hour + minute / 60) / 12), 3.4F), Plain(Rgb(0x232A37)));
  fill(Line(middle, OnCircle(middle, 19, minute / 60), 2.2F), Plain(Rgb(0x232A37)));
  fill(Line(OnCircle(middle, 5, 0.22F), OnCircle(middle, 20, 0.72F), 1.1F), Plain(Rgb(0xE0483E)));
  fill(Circle(middle, 2.4F), Plain(Rgb(0xE0483E)));
  return canvas;
}

Canvas WeatherSun(int size) {
  Canvas canvas(size, size);
  const float k = F(size) / kField;
  canvas.Fill(Scaled(Circle({32, 32}, 20), k), Plain(Rgb(0xFFD24A, 0.35F)), 8 * k);
  canvas.Fill(Scaled(Swell(SunGlyph(), 1), k), Downwards(Rgb(0xFFE27A), Rgb(0xF59B1E), 8 * k, 56 * k));
  return canvas;
}

Canvas WeatherCloud(int size) {
  Canvas canvas(size, size);
  const float k = F(size) / kField;
  canvas.Fill(Scaled(Moved(Scaled(SunGlyph(), 0.7F), 20, 2), k),
              Downwards(Rgb(0xFFE27A), Rgb(0xF5A62E), 8 * k, 40 * k));
  canvas.Fill(Scaled(Moved(Swell(CloudGlyph(), 3), 0, 4), k), Plain(Black(0.3F)), 2 * k);
  canvas.Fill(Scaled(Moved(Swell(CloudGlyph(), 3), -1, 3), k), Downwards(White(), Rgb(0xB4C3D8), 18 * k, 52 * k));
  return canvas;
}

Canvas WeatherMoon(int size) {
  Canvas canvas(size, size);
  const float k = F(size) / kField;
  canvas.Fill(Scaled(Swell(MoonGlyph(), 4), k), Downwards(Rgb(0xFDF6D8), Rgb(0xD9B95B), 12 * k, 52 * k));
  for (const Point star : {Point{48, 18}, Point{52, 36}, Point{40, 30}}) {
    canvas.Fill(Scaled(Star(star, 4.5F, 1.8F, 4), k), Plain(Rgb(0xFFF9E3)));
  }
  return canvas;
}

Canvas WaveBackground(int width, int height) {
  Canvas canvas(width, height, Rgb(0x102A56));
  canvas.FillAll(Downwards(Rgb(0x0D2350), Rgb(0x2C6FB8), 0, F(height)));
  canvas.Fill(Circle({F(width) * 0.78F, F(height) * 0.2F}, F(height) * 0.25F), Plain(Rgb(0x8FC7FF, 0.35F)),
              F(height) * 0.3F);
  for (int wave = 0; wave < 4; ++wave) {
    const float base = F(height) * (0.52F + 0.11F * F(wave));
    const float swing = F(height) * (0.10F - 0.015F * F(wave));
    const float length = F(width) * (0.95F - 0.12F * F(wave));
    const float shift = F(wave) * 1.7F;
    const Shape water = [=](Point p) { return base + swing * std::sin(p.x / length * 2 * kPi + shift) - p.y; };
    canvas.Fill(water, Downwards(Rgb(0xBFE3FF, 0.34F), Rgb(0x3C8BD6, 0.10F), base - swing, F(height)));
  }
  return canvas;
}

Canvas NightBackground(int width, int height) {
  Canvas canvas(width, height, Rgb(0x060914));
  canvas.FillAll(Downwards(Rgb(0x070A1A), Rgb(0x3A1F57), 0, F(height)));
  std::uint32_t seed = 12345;
  const auto next = [&seed](int range) {
    seed = seed * 1664525U + 1013904223U;
    return F(static_cast<int>((seed >> 8) % static_cast<std::uint32_t>(range)));
  };
  std::vector<Shape> faint;
  constexpr std::size_t kStars = 60;
  faint.reserve(kStars);
  for (std::size_t star = 0; star < kStars; ++star) {
    faint.push_back(Circle({next(width), next(height * 3 / 4)}, 0.5F + next(10) / 14));
  }
  canvas.Fill(Join(std::move(faint)), Plain(White(0.75F)));
  canvas.Fill(Star({F(width) * 0.2F, F(height) * 0.25F}, 8, 1.6F, 4), Plain(White(0.95F)));
  canvas.Fill(Star({F(width) * 0.55F, F(height) * 0.4F}, 6, 1.3F, 4), Plain(White(0.9F)));
  const Point moon = {F(width) * 0.8F, F(height) * 0.28F};
  const float radius = F(height) * 0.11F;
  canvas.Fill(Circle(moon, radius), Plain(Rgb(0xFFF3C9, 0.4F)), radius);
  canvas.Fill(Circle(moon, radius), Outwards(Rgb(0xFFFBE9), Rgb(0xE7D7A2), moon, radius));
  for (int ridge = 0; ridge < 3; ++ridge) {
    const float base = F(height) * (0.72F + 0.09F * F(ridge));
    const Shape hills = [=](Point p) {
      const float x = p.x / F(width) * 2 * kPi;
      return base + F(height) * 0.05F * (std::sin(x * 1.5F + F(ridge) * 2) + 0.4F * std::sin(x * 4 + F(ridge))) - p.y;
    };
    canvas.Fill(hills, Plain(Mix(Rgb(0x2C1B4A), Rgb(0x0B0818), F(ridge) / 2)));
  }
  return canvas;
}

Canvas LineBackground(int width, int height) {
  Canvas canvas(width, height, Rgb(0x20242C));
  const Shape stripes = [](Point p) {
    const float across = (p.x + p.y) / 24;
    return std::abs(across - std::round(across)) * 24 / std::numbers::sqrt2_v<float> - 3;
  };
  canvas.Fill(stripes, Plain(Rgb(0x2B313C)));
  canvas.Fill(Box({F(width) / 2, F(height) - 18}, F(width), 18), Plain(Rgb(0x161920)));
  canvas.Fill(Box({F(width) / 2, F(height) - 36}, F(width), 0.8F), Plain(Rgb(0x5B8DEF)));
  return canvas;
}

Canvas Landscape(int width, int height) {
  Canvas canvas(width, height, Rgb(0xFFFFFF));
  canvas.FillAll(Downwards(Rgb(0x4E9BE6), Rgb(0xFFE2B8), 0, F(height) * 0.72F));
  const Point sun = {F(width) * 0.7F, F(height) * 0.42F};
  canvas.Fill(Circle(sun, F(height) * 0.1F), Plain(Rgb(0xFFF2C4, 0.8F)), F(height) * 0.12F);
  canvas.Fill(Circle(sun, F(height) * 0.09F), Plain(Rgb(0xFFFBE8)));
  const float w = F(width) / 160;
  const float h = F(height) / 120;
  canvas.Fill(Polygon({{0, 84 * h}, {30 * w, 44 * h}, {52 * w, 70 * h}, {78 * w, 36 * h}, {122 * w, 84 * h}}),
              Downwards(Rgb(0x6E7FA8), Rgb(0xA9AFC4), 36 * h, 84 * h));
  canvas.Fill(Polygon({{78 * w, 36 * h}, {88 * w, 47 * h}, {80 * w, 51 * h}, {73 * w, 46 * h}, {70 * w, 47 * h}}),
              Plain(Rgb(0xF7FAFF)));
  for (int ridge = 0; ridge < 3; ++ridge) {
    const float base = F(height) * (0.68F + 0.11F * F(ridge));
    const Shape hills = [=](Point p) {
      return base + F(height) * 0.035F * std::sin(p.x / F(width) * 7 + F(ridge) * 2.4F) - p.y;
    };
    canvas.Fill(hills,
                Downwards(Mix(Rgb(0x6FA85A), Rgb(0x2F6B3A), F(ridge) / 2), Rgb(0x1D4A2A), base, F(height) * 1.1F));
  }
  return canvas;
}

Canvas ColourCard(int width, int height) {
  Canvas canvas(width, height, Rgb(0xF4F4F2));
  constexpr std::array<std::uint32_t, 12> kColours = {0xD9463C, 0xEF8A2C, 0xF6CF45, 0x6BB84C, 0x2E9C8F, 0x3A86D8,
                                                      0x3D50B5, 0x8A4FB8, 0xD9588F, 0x8B6A4E, 0x7D8794, 0x2A2E36};
  const float cell = F(width) / 4;
  const float row = F(height) / 3;
  for (int i = 0; i < 12; ++i) {
    const Point middle = {cell * (F(i % 4) + 0.5F), row * (F(i / 4) + 0.5F)};
    canvas.Fill(Box(middle, cell / 2 - 3, row / 2 - 3, 4), Plain(Rgb(kColours.at(static_cast<std::size_t>(i)))));
  }
  return canvas;
}

Canvas DialogPanel(int width, int height) {
  Canvas canvas(width, height);
  const Point middle = {F(width) / 2, F(height) / 2 - 2};
  const float halfWidth = F(width) / 2 - 8;
  const float halfHeight = F(height) / 2 - 8;
  canvas.Fill(Box({middle.x, middle.y + 3}, halfWidth, halfHeight, 12), Plain(Black(0.6F)), 5);
  const Shape body = Box(middle, halfWidth, halfHeight, 12);
  canvas.Fill(body, Downwards(Rgb(0x3B4A66, 0.88F), Rgb(0x141B2A, 0.88F), 6, F(height) - 10));
  canvas.Fill(Cut(body, Box(middle, halfWidth - 1.4F, halfHeight - 1.4F, 10.6F)),
              Downwards(White(0.7F), White(0.15F), 6, F(height) - 10));
  canvas.Fill(Box({middle.x, 36}, halfWidth - 14, 0.6F), Plain(White(0.35F)));
  return canvas;
}

Canvas Logo(int width, int height) {
  Canvas canvas(width, height);
  constexpr std::string_view kName = "KELVANE";
  const float step = F(width) / F(static_cast<int>(kName.size()));
  const float k = F(height) / kField * 0.85F;
  for (std::size_t i = 0; i < kName.size(); ++i) {
    const Shape letter = Scaled(LetterGlyph(kName[i], 6.5F), k);
    const float x = step * (static_cast<float>(i) + 0.5F) - 32 * k;
    const float y = F(height) / 2 - 32 * k;
    canvas.Fill(Moved(letter, x + 1, y + 2), Plain(Black(0.5F)), 1.5F);
    canvas.Fill(Moved(letter, x, y), Downwards(Rgb(0xFFFFFF), Rgb(0x7FB4F5), y + 14 * k, y + 50 * k));
  }
  return canvas;
}

Canvas Badge(int size) {
  Canvas canvas(size, size);
  const float k = F(size) / kField;
  canvas.Fill(Scaled(Swell(Star({32, 32}, 28, 23, 16), 2), k), Downwards(Rgb(0xFF7A59), Rgb(0xC62F3F), 0, F(size)));
  canvas.Fill(Scaled(Ring({32, 32}, 20.5F, 1.6F), k), Plain(White(0.8F)));
  canvas.Fill(Scaled(Moved(Scaled(StarGlyph(), 0.75F), 8, 7.5F), k), Plain(White()));
  return canvas;
}

Canvas Spinner(int size) {
  Canvas canvas(size, size);
  const float k = F(size) / kField;
  constexpr int kBlades = 12;
  for (int blade = 0; blade < kBlades; ++blade) {
    const float turn = F(blade) / kBlades;
    canvas.Fill(Scaled(Line(OnCircle({32, 32}, 14, turn), OnCircle({32, 32}, 26, turn), 5), k),
                Plain(Mix(Rgb(0xC9D3E0), Rgb(0x2F5FB3), turn)));
  }
  return canvas;
}

Canvas WhitePixel() {
  return {1, 1, White()};
}

}  // namespace kelvane::sample
