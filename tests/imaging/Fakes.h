// The ports of the image object as tests see them.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <vector>

#include "common/Bytes.h"
#include "imaging/PictureLoader.h"
#include "imaging/Surface.h"

namespace kelvane::test {

// A picture that paints given bytes over the canvas, pixel by pixel as they will be stored. Those of `undrawn` pixels
// stay as they are.
struct FakePicture : Picture {
  PictureType type = PictureType::Bitmap;
  std::int32_t width = 1;
  std::int32_t height = 1;
  Bytes painted;
  std::vector<std::size_t> undrawn;
  bool fails = false;

  [[nodiscard]] PictureType Type() const override { return type; }
  [[nodiscard]] std::int32_t Width() const override { return width; }
  [[nodiscard]] std::int32_t Height() const override { return height; }
  void Paint(const Canvas& canvas) const override {
    if (fails) {
      throw std::runtime_error("can't paint");
    }
    for (std::size_t pixel = 0; pixel < painted.size() / 4; ++pixel) {
      if (std::find(undrawn.begin(), undrawn.end(), pixel) == undrawn.end()) {
        CopyInto(canvas.pixels, static_cast<std::int64_t>(4 * pixel), ByteView(painted).subspan(4 * pixel, 4));
      }
    }
  }
};

// Hands out copies of one picture and takes note of the bytes that it was asked to read.
struct FakePictures : PictureLoader {
  // Null: nothing is read.
  std::unique_ptr<FakePicture> picture;
  bool throws = false;
  std::vector<Bytes> asked;

  std::unique_ptr<Picture> Load(ByteView stream) override {
    asked.emplace_back(stream.begin(), stream.end());
    if (throws) {
      throw std::runtime_error("can't load");
    }
    return picture ? std::make_unique<FakePicture>(*picture) : nullptr;
  }
};

// Takes note of what is drawn.
struct RecordingSurface : Surface {
  struct Drawing {
    Bytes pixels;
    std::int32_t sourceWidth = 0;
    std::int32_t sourceHeight = 0;
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    int constantAlpha = 0;
    bool perPixelAlpha = false;

    bool operator==(const Drawing&) const = default;
  };
  std::vector<Drawing> drawings;
  // How often it was cleared, which takes the drawings away.
  int cleared = 0;
  bool succeeds = true;

  void Clear() override {
    drawings.clear();
    ++cleared;
  }
  bool Blend(const PixelView& source, std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
             std::uint8_t constantAlpha, bool perPixelAlpha) override {
    drawings.push_back({.pixels = Bytes(source.pixels.begin(), source.pixels.end()),
                        .sourceWidth = source.width,
                        .sourceHeight = source.height,
                        .x = x,
                        .y = y,
                        .width = width,
                        .height = height,
                        .constantAlpha = constantAlpha,
                        .perPixelAlpha = perPixelAlpha});
    return succeeds;
  }
};

// The pixels of an image as bytes.
inline Bytes PixelsOf(ByteView pixels) {
  return {pixels.begin(), pixels.end()};
}

}  // namespace kelvane::test
