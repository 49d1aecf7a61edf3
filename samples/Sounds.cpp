#include "samples/Sounds.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

#include "samples/ByteWriter.h"

namespace kelvane::sample {

namespace {

constexpr std::size_t kFrameSamples = 28;
constexpr std::size_t kFrameBytes = 16;
constexpr std::size_t kNameBytes = 16;
constexpr int kFullShift = 12;  // a difference of 1 stands for 1 << (kFullShift - shift)

// The share of the last two samples, in 64ths, that each filter foretells.
struct Filter {
  int last;
  int beforeLast;
};
constexpr std::array<Filter, 5> kFilters = {{{0, 0}, {60, 0}, {115, -52}, {98, -55}, {122, -60}}};

struct History {
  int last = 0;
  int beforeLast = 0;
};

struct Frame {
  std::array<int, kFrameSamples> differences{};
  History history;
  double error = 0;
};

using FrameSamples = std::array<int, kFrameSamples>;

Frame Encode(const FrameSamples& samples, const Filter& filter, int shift, History history) {
  Frame frame;
  const int step = 1 << (kFullShift - shift);
  for (std::size_t i = 0; i < kFrameSamples; ++i) {
    const int foretold = (history.last * filter.last + history.beforeLast * filter.beforeLast + 32) >> 6;
    const auto wanted = std::lround(static_cast<double>(samples.at(i) - foretold) / step);
    const int difference = static_cast<int>(std::clamp(wanted, -8L, 7L));
    const int heard = std::clamp(foretold + difference * step, -32768, 32767);
    const double off = heard - samples.at(i);
    frame.error += off * off;
    frame.differences.at(i) = difference;
    history = {heard, history.last};
  }
  frame.history = history;
  return frame;
}

// Adds the frame that comes nearest to the samples, of all filters and shifts.
void AddFrame(Bytes& bytes, const FrameSamples& samples, History& history, std::uint8_t flags) {
  Frame best;
  best.error = std::numeric_limits<double>::max();
  std::uint8_t bestHead = 0;
  for (std::size_t filter = 0; filter < kFilters.size(); ++filter) {
    for (int shift = 0; shift <= kFullShift; ++shift) {
      const Frame frame = Encode(samples, kFilters.at(filter), shift, history);
      if (frame.error < best.error) {
        best = frame;
        bestHead = static_cast<std::uint8_t>(filter << 4 | static_cast<std::size_t>(shift));
      }
    }
  }
  history = best.history;
  bytes.insert(bytes.end(), {bestHead, flags});
  for (std::size_t i = 0; i < kFrameSamples; i += 2) {
    const auto low = static_cast<unsigned>(best.differences.at(i)) & 0xFU;
    const auto high = static_cast<unsigned>(best.differences.at(i + 1)) & 0xFU;
    bytes.push_back(static_cast<std::uint8_t>(low | high << 4));
  }
}

}  // namespace

std::vector<float> Synthesise(const std::vector<Tone>& tones, float seconds) {
  std::vector<float> samples(static_cast<std::size_t>(seconds * kSampleRate));
  for (const Tone& tone : tones) {
    const auto start = static_cast<std::size_t>(tone.start * kSampleRate);
    const auto count = static_cast<std::size_t>(tone.seconds * kSampleRate);
    for (std::size_t i = 0; i < count && start + i < samples.size(); ++i) {
      const float time = static_cast<float>(i) / kSampleRate;
      const float angle = 2 * std::numbers::pi_v<float> * tone.frequency * time;
      const float attack = std::min(1.0F, time / 0.005F);
      const float fade = std::exp(-5 * time / tone.seconds);
      samples[start + i] += tone.loudness * attack * fade * (std::sin(angle) + 0.3F * std::sin(2 * angle));
    }
  }
  return samples;
}

Bytes VagFile(const std::vector<float>& samples, std::string_view name) {
  Bytes frames(kFrameBytes);
  History history;
  for (std::size_t at = 0; at < samples.size(); at += kFrameSamples) {
    FrameSamples block{};
    for (std::size_t i = 0; i < kFrameSamples && at + i < samples.size(); ++i) {
      block.at(i) = static_cast<int>(std::lround(std::clamp(samples[at + i], -1.0F, 1.0F) * 32000));
    }
    const bool last = at + kFrameSamples >= samples.size();
    AddFrame(frames, block, history, last ? 1 : 0);
  }
  frames.insert(frames.end(), {0, 7});
  frames.insert(frames.end(), kFrameBytes - 2, 0x77);

  Bytes bytes;
  AddText(bytes, "VAGp");
  AddBig(bytes, 0x20, 4);
  AddBig(bytes, 0, 4);
  AddBig(bytes, static_cast<std::uint32_t>(frames.size()), 4);
  AddBig(bytes, kSampleRate, 4);
  bytes.insert(bytes.end(), 12, 0);
  AddText(bytes, name.substr(0, kNameBytes));
  bytes.resize(48);
  Append(bytes, frames);
  return bytes;
}

}  // namespace kelvane::sample
