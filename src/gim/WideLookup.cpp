#include "gim/WideLookup.h"

#include <utility>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace kelvane {

#if defined(__x86_64__)
namespace {

#define KELVANE_VBMI [[gnu::target("avx512f,avx512bw,avx512vl,avx512vbmi")]]
#define KELVANE_VBMI_INLINE [[gnu::target("avx512f,avx512bw,avx512vl,avx512vbmi"), gnu::always_inline]] inline

constexpr std::size_t kPixels = 64;
constexpr std::size_t kPixelsOfRegister = 16;

// One byte of all 256 colours.
struct Plane {
  __m512i quarters[4];
};

KELVANE_VBMI_INLINE Plane LoadPlane(const std::array<std::uint8_t, 256>& bytes) {
  Plane plane;
  for (std::size_t i = 0; i < 4; ++i) {
    plane.quarters[i] = _mm512_load_si512(bytes.data() + i * 64);
  }
  return plane;
}

// That byte of 64 colours. A register pair holds 128 of them, so the index's highest bit chooses between two.
KELVANE_VBMI_INLINE __m512i LookUp(const Plane& plane, __m512i indexes) {
  const __m512i lower = _mm512_permutex2var_epi8(plane.quarters[0], indexes, plane.quarters[1]);
  const __m512i upper = _mm512_permutex2var_epi8(plane.quarters[2], indexes, plane.quarters[3]);
  return _mm512_mask_blend_epi8(_mm512_movepi8_mask(indexes), lower, upper);
}

struct Planes {
  Plane planes[4];
};

KELVANE_VBMI_INLINE Planes LoadPlanes(const SplitPalette& palette) {
  return {{LoadPlane(palette.bytes[0]), LoadPlane(palette.bytes[1]), LoadPlane(palette.bytes[2]),
           LoadPlane(palette.bytes[3])}};
}

// The colours of 64 indexes, in four registers of 16.
struct Colours {
  __m512i parts[4];
};

KELVANE_VBMI_INLINE Colours ColoursOf(const Planes& palette, __m512i indexes) {
  // Bytes are put together within each quarter of a register; this order makes the parts come out in theirs.
  const __m512i order = _mm512_setr_epi32(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15);
  indexes = _mm512_permutexvar_epi32(order, indexes);
  const __m512i first = LookUp(palette.planes[0], indexes);
  const __m512i second = LookUp(palette.planes[1], indexes);
  const __m512i third = LookUp(palette.planes[2], indexes);
  const __m512i fourth = LookUp(palette.planes[3], indexes);
  const __m512i lowHalves = _mm512_unpacklo_epi8(first, second);
  const __m512i lowHalvesBehind = _mm512_unpackhi_epi8(first, second);
  const __m512i highHalves = _mm512_unpacklo_epi8(third, fourth);
  const __m512i highHalvesBehind = _mm512_unpackhi_epi8(third, fourth);
  return {{_mm512_unpacklo_epi16(lowHalves, highHalves), _mm512_unpackhi_epi16(lowHalves, highHalves),
           _mm512_unpacklo_epi16(lowHalvesBehind, highHalvesBehind),
           _mm512_unpackhi_epi16(lowHalvesBehind, highHalvesBehind)}};
}

KELVANE_VBMI void Expand(const SplitPalette& palette, const std::uint8_t* indexes, std::size_t count,
                         std::uint8_t* target) {
  const Planes planes = LoadPlanes(palette);
  for (; count >= kPixels; count -= kPixels, indexes += kPixels) {
    const Colours colours = ColoursOf(planes, _mm512_loadu_si512(indexes));
    for (const __m512i& part : colours.parts) {
      _mm512_storeu_si512(target, part);
      target += kPixelsOfRegister * 4;
    }
  }
  if (count == 0) {
    return;
  }
  const Colours colours = ColoursOf(planes, _mm512_maskz_loadu_epi8((std::uint64_t{1} << count) - 1, indexes));
  for (const __m512i& part : colours.parts) {
    const std::size_t here = count < kPixelsOfRegister ? count : kPixelsOfRegister;
    _mm512_mask_storeu_epi32(target, static_cast<__mmask16>((1U << here) - 1), part);
    target += here * 4;
    count -= here;
  }
}

// How many pixels, from the first on, have the colours that their indexes tell, in steps of kPixels.
KELVANE_VBMI_INLINE std::size_t CountRight(const Planes& planes, const std::uint8_t* indexes,
                                           const std::uint8_t* pixels, std::size_t count) {
  for (std::size_t done = 0; done < count; done += kPixels) {
    const Colours colours = ColoursOf(planes, _mm512_loadu_si512(indexes + done));
    unsigned wrong = 0;
    for (const __m512i& part : colours.parts) {
      wrong |= _mm512_cmpneq_epi32_mask(part, _mm512_loadu_si512(pixels));
      pixels += kPixelsOfRegister * 4;
    }
    if (wrong != 0) {
      return done;
    }
  }
  return count;
}

// The upper halves of the pixels' products with `factor`.
KELVANE_VBMI_INLINE void Multiply(const std::uint8_t* pixels, std::size_t count, std::uint32_t factor,
                                  std::uint16_t* products) {
  const __m512i factors = _mm512_set1_epi32(static_cast<int>(factor));
  for (std::size_t i = 0; i < count; i += kPixelsOfRegister) {
    const __m512i all = _mm512_mullo_epi32(_mm512_loadu_si512(pixels + i * 4), factors);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(products + i), _mm512_cvtepi32_epi16(_mm512_srli_epi32(all, 16)));
  }
}

// What stands at eight places of a table, in the lower half of a register.
template <std::size_t... kIndex>
KELVANE_VBMI_INLINE __m128i Gather(const std::uint8_t* table, const std::uint16_t* places,
                                   std::index_sequence<kIndex...> /*eight*/) {
  __m128i found = _mm_setzero_si128();
  ((found = _mm_insert_epi8(found, table[places[kIndex]], kIndex)), ...);
  return found;
}

KELVANE_VBMI std::size_t Guess(const SplitPalette& palette, const std::uint8_t* guesses, std::uint32_t factor,
                               const std::uint8_t* pixels, std::size_t count, std::uint8_t* indexes) {
  // So many at a time that what one step writes has reached the cache when the next one reads it.
  constexpr std::size_t kStride = 512;
  const Planes planes = LoadPlanes(palette);
  std::uint16_t products[kStride];
  std::size_t done = 0;
  for (; done + kStride <= count; done += kStride) {
    Multiply(pixels + done * 4, kStride, factor, products);
    for (std::size_t i = 0; i < kStride; i += kPixelsOfRegister) {
      const __m128i found = Gather(guesses, products + i, std::make_index_sequence<8>());
      const __m128i behind = Gather(guesses, products + i + 8, std::make_index_sequence<8>());
      _mm_storeu_si128(reinterpret_cast<__m128i*>(indexes + done + i), _mm_unpacklo_epi64(found, behind));
    }
    const std::size_t right = CountRight(planes, indexes + done, pixels + done * 4, kStride);
    if (right < kStride) {
      return done + right;
    }
  }
  return done;
}

#undef KELVANE_VBMI
#undef KELVANE_VBMI_INLINE

constexpr WideLookup kVbmi = {.expand = Expand, .guess = Guess};

}  // namespace
#endif

const WideLookup* BestWideLookup() {
#if defined(__x86_64__)
  static const bool hasVbmi = __builtin_cpu_supports("avx512vbmi") != 0 && __builtin_cpu_supports("avx512bw") != 0 &&
                              __builtin_cpu_supports("avx512vl") != 0;
  if (hasVbmi) {
    return &kVbmi;
  }
#endif
  return nullptr;
}

}  // namespace kelvane
