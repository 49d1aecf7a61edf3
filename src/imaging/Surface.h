// What an image object draws on. The shell answers it with a picture box, tests with a buffer.
#pragma once

#include <cstdint>
#include <span>

namespace kelvane {

// 4 bytes a pixel in the order blue, green, red, alpha; rows bottom first, without padding.
struct PixelView {
  std::span<const std::uint8_t> pixels;
  std::int32_t width = 0;
  std::int32_t height = 0;
};

class Surface {
 public:
  virtual ~Surface() = default;

  // Fills the surface with its background colour.
  virtual void Clear() = 0;
  // Stretches the whole of `source` to the rectangle, in pixels, from the top left corner down. `constantAlpha`, 0 to
  // 255, weighs every pixel; with `perPixelAlpha` the source's alpha does too and its colours are premultiplied,
  // otherwise the alpha bytes count as 255. False if nothing could be drawn.
  virtual bool Blend(const PixelView& source, std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                     std::uint8_t constantAlpha, bool perPixelAlpha) = 0;
};

}  // namespace kelvane
