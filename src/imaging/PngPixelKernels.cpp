#include "imaging/PngPixels.h"

#if defined(__x86_64__)
#include <tmmintrin.h>
#endif

namespace kelvane {
namespace {

constexpr std::size_t kPixelBytes = 4;

inline void StorePixel(std::uint8_t* pixel, unsigned red, unsigned green, unsigned blue, unsigned alpha) {
  pixel[0] = static_cast<std::uint8_t>(blue * alpha / 255);
  pixel[1] = static_cast<std::uint8_t>(green * alpha / 255);
  pixel[2] = static_cast<std::uint8_t>(red * alpha / 255);
  pixel[3] = static_cast<std::uint8_t>(alpha);
}

void Grey8(const std::uint8_t* samples, std::uint8_t* pixels, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i, samples += 1, pixels += kPixelBytes) {
    StorePixel(pixels, samples[0], samples[0], samples[0], 255);
  }
}

// `Bytes` is 1 or 2, the size of a sample; its first byte is the high one.
template <std::size_t Bytes>
void GreyAlpha(const std::uint8_t* samples, std::uint8_t* pixels, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i, samples += 2 * Bytes, pixels += kPixelBytes) {
    StorePixel(pixels, samples[0], samples[0], samples[0], samples[Bytes]);
  }
}

template <std::size_t Bytes>
void Rgb(const std::uint8_t* samples, std::uint8_t* pixels, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i, samples += 3 * Bytes, pixels += kPixelBytes) {
    StorePixel(pixels, samples[0], samples[Bytes], samples[2 * Bytes], 255);
  }
}

template <std::size_t Bytes>
void Rgba(const std::uint8_t* samples, std::uint8_t* pixels, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i, samples += 4 * Bytes, pixels += kPixelBytes) {
    StorePixel(pixels, samples[0], samples[Bytes], samples[2 * Bytes], samples[3 * Bytes]);
  }
}

constexpr PngPixelKernels kPortable = {Grey8, GreyAlpha<1>, GreyAlpha<2>, Rgb<1>, Rgb<2>, Rgba<1>, Rgba<2>};

#if defined(__x86_64__)
#define KELVANE_SSSE3 [[gnu::target("ssse3")]]

// Four pixels at a time: a shuffle brings the samples of a pixel to their places (-1: a zero byte), and what the colour
// type lacks is added. The last pixels are left to the portable kernels.

inline __m128i LoadSamples(const std::uint8_t* samples) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(samples));
}

inline void StorePixels(std::uint8_t* pixels, __m128i four) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(pixels), four);
}

// Multiplies two pixels, widened to 16 bits, by alpha / 255. The alpha itself is multiplied by 255 / 255.
inline __m128i PremultiplyTwo(__m128i pixels) {
  __m128i alpha = _mm_shufflehi_epi16(_mm_shufflelo_epi16(pixels, 0xFF), 0xFF);
  alpha = _mm_or_si128(alpha, _mm_set1_epi64x(std::int64_t{255} << 48));
  // 32897 / 2^23 is just above 1 / 255: for any 16-bit product this is the quotient, truncated.
  return _mm_srli_epi16(_mm_mulhi_epu16(_mm_mullo_epi16(pixels, alpha), _mm_set1_epi16(-32639)), 7);
}

inline __m128i PremultiplyFour(__m128i pixels) {
  const __m128i zero = _mm_setzero_si128();
  return _mm_packus_epi16(PremultiplyTwo(_mm_unpacklo_epi8(pixels, zero)),
                          PremultiplyTwo(_mm_unpackhi_epi8(pixels, zero)));
}

inline __m128i Opaque() {
  return _mm_set1_epi32(-16777216);
}

KELVANE_SSSE3 void Grey8Ssse3(const std::uint8_t* samples, std::uint8_t* pixels, std::size_t count) {
  const __m128i places = _mm_setr_epi8(0, 0, 0, -1, 1, 1, 1, -1, 2, 2, 2, -1, 3, 3, 3, -1);
  for (; count >= 4; count -= 4, samples += 4, pixels += 4 * kPixelBytes) {
    StorePixels(pixels, _mm_or_si128(_mm_shuffle_epi8(LoadSamples(samples), places), Opaque()));
  }
  Grey8(samples, pixels, count);
}

KELVANE_SSSE3 void GreyAlpha8Ssse3(const std::uint8_t* samples, std::uint8_t* pixels, std::size_t count) {
  const __m128i places = _mm_setr_epi8(0, 0, 0, 1, 2, 2, 2, 3, 4, 4, 4, 5, 6, 6, 6, 7);
  for (; count >= 4; count -= 4, samples += 8, pixels += 4 * kPixelBytes) {
    StorePixels(pixels, PremultiplyFour(_mm_shuffle_epi8(LoadSamples(samples), places)));
  }
  GreyAlpha<1>(samples, pixels, count);
}

KELVANE_SSSE3 void GreyAlpha16Ssse3(const std::uint8_t* samples, std::uint8_t* pixels, std::size_t count) {
  const __m128i places = _mm_setr_epi8(0, 0, 0, 2, 4, 4, 4, 6, 8, 8, 8, 10, 12, 12, 12, 14);
  for (; count >= 4; count -= 4, samples += 16, pixels += 4 * kPixelBytes) {
    StorePixels(pixels, PremultiplyFour(_mm_shuffle_epi8(LoadSamples(samples), places)));
  }
  GreyAlpha<2>(samples, pixels, count);
}

KELVANE_SSSE3 void Rgb8Ssse3(const std::uint8_t* samples, std::uint8_t* pixels, std::size_t count) {
  const __m128i places = _mm_setr_epi8(2, 1, 0, -1, 5, 4, 3, -1, 8, 7, 6, -1, 11, 10, 9, -1);
  for (; count >= 4; count -= 4, samples += 12, pixels += 4 * kPixelBytes) {
    StorePixels(pixels, _mm_or_si128(_mm_shuffle_epi8(LoadSamples(samples), places), Opaque()));
  }
  Rgb<1>(samples, pixels, count);
}

KELVANE_SSSE3 void Rgb16Ssse3(const std::uint8_t* samples, std::uint8_t* pixels, std::size_t count) {
  const __m128i firstTwo = _mm_setr_epi8(4, 2, 0, -1, 10, 8, 6, -1, -1, -1, -1, -1, -1, -1, -1, -1);
  const __m128i lastTwo = _mm_setr_epi8(-1, -1, -1, -1, -1, -1, -1, -1, 4, 2, 0, -1, 10, 8, 6, -1);
  for (; count >= 4; count -= 4, samples += 24, pixels += 4 * kPixelBytes) {
    const __m128i colours = _mm_or_si128(_mm_shuffle_epi8(LoadSamples(samples), firstTwo),
                                         _mm_shuffle_epi8(LoadSamples(samples + 12), lastTwo));
    StorePixels(pixels, _mm_or_si128(colours, Opaque()));
  }
  Rgb<2>(samples, pixels, count);
}

KELVANE_SSSE3 void Rgba8Ssse3(const std::uint8_t* samples, std::uint8_t* pixels, std::size_t count) {
  const __m128i places = _mm_setr_epi8(2, 1, 0, 3, 6, 5, 4, 7, 10, 9, 8, 11, 14, 13, 12, 15);
  for (; count >= 4; count -= 4, samples += 16, pixels += 4 * kPixelBytes) {
    StorePixels(pixels, PremultiplyFour(_mm_shuffle_epi8(LoadSamples(samples), places)));
  }
  Rgba<1>(samples, pixels, count);
}

KELVANE_SSSE3 void Rgba16Ssse3(const std::uint8_t* samples, std::uint8_t* pixels, std::size_t count) {
  const __m128i firstTwo = _mm_setr_epi8(4, 2, 0, 6, 12, 10, 8, 14, -1, -1, -1, -1, -1, -1, -1, -1);
  const __m128i lastTwo = _mm_setr_epi8(-1, -1, -1, -1, -1, -1, -1, -1, 4, 2, 0, 6, 12, 10, 8, 14);
  for (; count >= 4; count -= 4, samples += 32, pixels += 4 * kPixelBytes) {
    StorePixels(pixels, PremultiplyFour(_mm_or_si128(_mm_shuffle_epi8(LoadSamples(samples), firstTwo),
                                                     _mm_shuffle_epi8(LoadSamples(samples + 16), lastTwo))));
  }
  Rgba<2>(samples, pixels, count);
}

#undef KELVANE_SSSE3

constexpr PngPixelKernels kSsse3 = {Grey8Ssse3, GreyAlpha8Ssse3, GreyAlpha16Ssse3, Rgb8Ssse3,
                                    Rgb16Ssse3, Rgba8Ssse3,      Rgba16Ssse3};
#endif

}  // namespace

const PngPixelKernels& PortablePngPixelKernels() {
  return kPortable;
}

const PngPixelKernels& BestPngPixelKernels() {
#if defined(__x86_64__)
  static const bool hasSsse3 = __builtin_cpu_supports("ssse3") != 0;
  if (hasSsse3) {
    return kSsse3;
  }
#endif
  return kPortable;
}

}  // namespace kelvane
