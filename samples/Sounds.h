// The demo's sounds: tones that are synthesised and written as VAG files.
#pragma once

#include <string_view>
#include <vector>

#include "common/Bytes.h"

namespace kelvane::sample {

inline constexpr int kSampleRate = 22050;

// A tone that fades away, added to the samples (-1 to 1) from `start` seconds on.
struct Tone {
  float start = 0;
  float frequency = 440;  // Hz
  float seconds = 0.2F;
  float loudness = 0.5F;
};

[[nodiscard]] std::vector<float> Synthesise(const std::vector<Tone>& tones, float seconds);

// 48 bytes of head ('VAGp', big-endian numbers) and frames of 16 bytes, each of 28 samples as 4-bit differences: an
// empty one first, one that ends the sound last.
[[nodiscard]] Bytes VagFile(const std::vector<float>& samples, std::string_view name);

}  // namespace kelvane::sample
