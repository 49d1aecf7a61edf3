#include "imaging/PngFilters.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

#if defined(__x86_64__)
#include <smmintrin.h>
#endif

namespace kelvane {
namespace {

// Each filter adds to a byte what it predicts from the byte to the left in the pixel before, the one above, and the one
// above to the left; before the first pixel there are zeros. What the next pixel waits for stays in registers.

// Walks over pixels of Step bytes. `predict(left, above, aboveLeft)` gives what is added to the byte at hand.
template <std::size_t Step, class Predict>
[[gnu::always_inline]] inline void UnfilterBy(const std::uint8_t* raw, const std::uint8_t* above, std::uint8_t* row,
                                              std::size_t length, Predict&& predict) {
  std::array<int, Step> left{};
  std::array<int, Step> aboveLeft{};
  for (std::size_t pixel = 0; pixel < length; pixel += Step) {
    for (std::size_t i = 0; i < Step; ++i) {
      const int up = above[pixel + i];
      left[i] = static_cast<std::uint8_t>(raw[pixel + i] + predict(left[i], up, aboveLeft[i]));
      aboveLeft[i] = up;
      row[pixel + i] = static_cast<std::uint8_t>(left[i]);
    }
  }
}

// The same choice as the standard's, ties included, in few steps that no branch decides. With
// t = 3 * aboveLeft - left - above the higher of left and above is nearest if t <= lower, else the lower one if
// t >= higher, else aboveLeft.
inline int NearestToGradient(int left, int above, int aboveLeft) {
  const int t = 3 * aboveLeft - above - left;
  const int lower = std::min(left, above);
  const int higher = std::max(left, above);
  const int notHigher = higher > t ? aboveLeft : lower;
  return t > lower ? notHigher : higher;
}

template <std::size_t Step>
void UnfilterSub(const std::uint8_t* raw, const std::uint8_t* above, std::uint8_t* row, std::size_t length) {
  UnfilterBy<Step>(raw, above, row, length, [](int left, int, int) { return left; });
}

void UnfilterUp(const std::uint8_t* raw, const std::uint8_t* above, std::uint8_t* row, std::size_t length) {
  for (std::size_t i = 0; i < length; ++i) {
    row[i] = static_cast<std::uint8_t>(raw[i] + above[i]);
  }
}

template <std::size_t Step>
void UnfilterAverage(const std::uint8_t* raw, const std::uint8_t* above, std::uint8_t* row, std::size_t length) {
  UnfilterBy<Step>(raw, above, row, length, [](int left, int up, int) { return (left + up) / 2; });
}

template <std::size_t Step>
void UnfilterPaeth(const std::uint8_t* raw, const std::uint8_t* above, std::uint8_t* row, std::size_t length) {
  UnfilterBy<Step>(raw, above, row, length, NearestToGradient);
}

template <std::size_t Step>
constexpr PngFilters kPortable = {UnfilterSub<Step>, UnfilterUp, UnfilterAverage<Step>, UnfilterPaeth<Step>};

#if defined(__x86_64__)
#define KELVANE_SSE41 [[gnu::target("sse4.1")]]

// A pixel of Step bytes in the low half of a register, each byte widened to 16 bits. Reads and writes whole steps of 4
// or 8 bytes: what is too much is overwritten by the next pixel or lies in the row's slack.
template <std::size_t Step>
inline __m128i LoadPixel(const std::uint8_t* from) {
  if constexpr (Step <= 4) {
    std::int32_t bytes;
    std::memcpy(&bytes, from, 4);
    return _mm_unpacklo_epi8(_mm_cvtsi32_si128(bytes), _mm_setzero_si128());
  } else {
    return _mm_unpacklo_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(from)), _mm_setzero_si128());
  }
}

template <std::size_t Step>
inline void StorePixel(std::uint8_t* to, __m128i pixel) {
  const __m128i packed = _mm_packus_epi16(pixel, pixel);
  if constexpr (Step <= 4) {
    const std::int32_t bytes = _mm_cvtsi128_si32(packed);
    std::memcpy(to, &bytes, 4);
  } else {
    _mm_storel_epi64(reinterpret_cast<__m128i*>(to), packed);
  }
}

template <std::size_t Step>
void UnfilterSubSse2(const std::uint8_t* raw, const std::uint8_t* /*above*/, std::uint8_t* row, std::size_t length) {
  __m128i left = _mm_setzero_si128();
  for (std::size_t i = 0; i < length; i += Step) {
    left = _mm_add_epi8(LoadPixel<Step>(raw + i), left);
    StorePixel<Step>(row + i, left);
  }
}

// Sixteen bytes at a time: each sums up those before it.
void UnfilterSubBytesSse2(const std::uint8_t* raw, const std::uint8_t* /*above*/, std::uint8_t* row,
                          std::size_t length) {
  __m128i left = _mm_setzero_si128();
  for (std::size_t i = 0; i < length; i += 16) {
    __m128i sums = _mm_loadu_si128(reinterpret_cast<const __m128i*>(raw + i));
    sums = _mm_add_epi8(sums, _mm_slli_si128(sums, 1));
    sums = _mm_add_epi8(sums, _mm_slli_si128(sums, 2));
    sums = _mm_add_epi8(sums, _mm_slli_si128(sums, 4));
    sums = _mm_add_epi8(_mm_add_epi8(sums, _mm_slli_si128(sums, 8)), left);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(row + i), sums);
    const __m128i last = _mm_unpackhi_epi8(sums, sums);
    left = _mm_shuffle_epi32(_mm_shufflehi_epi16(last, 0xFF), 0xFF);
  }
}

template <std::size_t Step>
void UnfilterAverageSse2(const std::uint8_t* raw, const std::uint8_t* above, std::uint8_t* row, std::size_t length) {
  __m128i left = _mm_setzero_si128();
  for (std::size_t i = 0; i < length; i += Step) {
    const __m128i average = _mm_srli_epi16(_mm_add_epi16(left, LoadPixel<Step>(above + i)), 1);
    left = _mm_add_epi8(LoadPixel<Step>(raw + i), average);
    StorePixel<Step>(row + i, left);
  }
}

// As NearestToGradient.
template <std::size_t Step>
KELVANE_SSE41 void UnfilterPaethSse41(const std::uint8_t* raw, const std::uint8_t* above, std::uint8_t* row,
                                      std::size_t length) {
  __m128i left = _mm_setzero_si128();
  __m128i aboveLeft = _mm_setzero_si128();
  for (std::size_t i = 0; i < length; i += Step) {
    const __m128i aboveIt = LoadPixel<Step>(above + i);
    // What doesn't wait for `left` comes first.
    const __m128i tripleLessAbove =
        _mm_sub_epi16(_mm_add_epi16(aboveLeft, _mm_add_epi16(aboveLeft, aboveLeft)), aboveIt);
    const __m128i t = _mm_sub_epi16(tripleLessAbove, left);
    const __m128i lower = _mm_min_epi16(left, aboveIt);
    const __m128i higher = _mm_max_epi16(left, aboveIt);
    const __m128i notHigher = _mm_blendv_epi8(lower, aboveLeft, _mm_cmpgt_epi16(higher, t));
    const __m128i nearest = _mm_blendv_epi8(higher, notHigher, _mm_cmpgt_epi16(t, lower));
    left = _mm_add_epi8(LoadPixel<Step>(raw + i), nearest);
    aboveLeft = aboveIt;
    StorePixel<Step>(row + i, left);
  }
}

#undef KELVANE_SSE41
#endif

template <std::size_t Step>
PngFilters Best() {
  PngFilters filters = kPortable<Step>;
#if defined(__x86_64__)
  if constexpr (Step == 1) {
    filters.sub = UnfilterSubBytesSse2;
  } else {
    filters.sub = UnfilterSubSse2<Step>;
  }
  // Pixels of fewer bytes are soonest predicted in the general registers, all bytes of one side by side.
  if constexpr (Step >= 4) {
    static const bool hasSse41 = __builtin_cpu_supports("sse4.1") != 0;
    filters.average = UnfilterAverageSse2<Step>;
    filters.paeth = hasSse41 ? UnfilterPaethSse41<Step> : UnfilterPaeth<Step>;
  }
#endif
  return filters;
}

}  // namespace

std::uint8_t PaethPredictor(std::uint8_t left, std::uint8_t above, std::uint8_t aboveLeft) {
  const int toLeft = std::abs(above - aboveLeft);
  const int toAbove = std::abs(left - aboveLeft);
  const int toAboveLeft = std::abs(left + above - 2 * aboveLeft);
  if (toLeft <= toAbove && toLeft <= toAboveLeft) {
    return left;
  }
  return toAbove <= toAboveLeft ? above : aboveLeft;
}

PngFilters PortablePngFiltersFor(std::int32_t sourceStep) {
  switch (sourceStep) {
    case 2:
      return kPortable<2>;
    case 3:
      return kPortable<3>;
    case 4:
      return kPortable<4>;
    case 6:
      return kPortable<6>;
    case 8:
      return kPortable<8>;
    default:
      return kPortable<1>;
  }
}

PngFilters PngFiltersFor(std::int32_t sourceStep) {
  switch (sourceStep) {
    case 2:
      return Best<2>();
    case 3:
      return Best<3>();
    case 4:
      return Best<4>();
    case 6:
      return Best<6>();
    case 8:
      return Best<8>();
    default:
      return Best<1>();
  }
}

}  // namespace kelvane
