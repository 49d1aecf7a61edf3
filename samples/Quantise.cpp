#include "samples/Quantise.h"

#include <algorithm>
#include <map>

namespace kelvane::sample {

namespace {

constexpr std::size_t kChannels = 4;

struct Sample {
  Rgba8 colour{};
  std::size_t count = 0;
};

struct Group {
  std::size_t begin = 0;
  std::size_t end = 0;
};

Rgba8 PixelAt(ByteView rgba, std::size_t pixel) {
  const std::size_t at = pixel * kChannels;
  return {rgba[at], rgba[at + 1], rgba[at + 2], rgba[at + 3]};
}

std::vector<Sample> CountColours(ByteView rgba) {
  std::map<Rgba8, std::size_t> counts;
  for (std::size_t pixel = 0; pixel < rgba.size() / kChannels; ++pixel) {
    ++counts[PixelAt(rgba, pixel)];
  }
  std::vector<Sample> samples;
  samples.reserve(counts.size());
  for (const auto& [colour, count] : counts) {
    samples.push_back({colour, count});
  }
  return samples;
}

// The channel in which a group's colours differ most, and by how much.
std::pair<std::size_t, int> WidestChannel(const std::vector<Sample>& samples, const Group& group) {
  std::pair<std::size_t, int> widest = {0, -1};
  for (std::size_t channel = 0; channel < kChannels; ++channel) {
    int low = 255;
    int high = 0;
    for (std::size_t i = group.begin; i < group.end; ++i) {
      low = std::min<int>(low, samples[i].colour[channel]);
      high = std::max<int>(high, samples[i].colour[channel]);
    }
    if (high - low > widest.second) {
      widest = {channel, high - low};
    }
  }
  return widest;
}

// Sorts a group along its widest channel and cuts it where half of its pixels lie to either side.
std::size_t CutPlace(std::vector<Sample>& samples, const Group& group) {
  const std::size_t channel = WidestChannel(samples, group).first;
  const auto at = [&samples](std::size_t index) { return samples.begin() + static_cast<std::ptrdiff_t>(index); };
  std::sort(at(group.begin), at(group.end), [channel](const Sample& a, const Sample& b) {
    return a.colour[channel] != b.colour[channel] ? a.colour[channel] < b.colour[channel] : a.colour < b.colour;
  });
  std::size_t total = 0;
  for (std::size_t i = group.begin; i < group.end; ++i) {
    total += samples[i].count;
  }
  std::size_t below = 0;
  std::size_t cut = group.begin;
  while (cut + 1 < group.end && (below < total / 2 || cut == group.begin)) {
    below += samples[cut].count;
    ++cut;
  }
  return cut;
}

Rgba8 Average(const std::vector<Sample>& samples, const Group& group) {
  std::array<std::size_t, kChannels> sums{};
  std::size_t total = 0;
  for (std::size_t i = group.begin; i < group.end; ++i) {
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
      sums[channel] += samples[i].colour[channel] * samples[i].count;
    }
    total += samples[i].count;
  }
  Rgba8 average{};
  for (std::size_t channel = 0; channel < kChannels; ++channel) {
    average[channel] = static_cast<std::uint8_t>((sums[channel] + total / 2) / total);
  }
  return average;
}

std::vector<Rgba8> MedianCut(std::vector<Sample>& samples, std::size_t maxColours) {
  std::vector<Group> groups = {{0, samples.size()}};
  while (groups.size() < maxColours) {
    const auto widest = std::max_element(groups.begin(), groups.end(), [&samples](const Group& a, const Group& b) {
      return WidestChannel(samples, a).second < WidestChannel(samples, b).second;
    });
    if (widest->end - widest->begin < 2) {
      break;
    }
    const std::size_t cut = CutPlace(samples, *widest);
    const Group upper = {cut, widest->end};
    widest->end = cut;
    groups.push_back(upper);
  }
  std::vector<Rgba8> colours;
  colours.reserve(groups.size());
  for (const Group& group : groups) {
    colours.push_back(Average(samples, group));
  }
  return colours;
}

std::uint8_t Nearest(const std::vector<Rgba8>& colours, const Rgba8& wanted) {
  std::size_t best = 0;
  int bestDistance = INT32_MAX;
  for (std::size_t i = 0; i < colours.size(); ++i) {
    int distance = 0;
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
      const int difference = colours[i][channel] - wanted[channel];
      distance += difference * difference;
    }
    if (distance < bestDistance) {
      bestDistance = distance;
      best = i;
    }
  }
  return static_cast<std::uint8_t>(best);
}

// Hands an error on to the pixels that are still to come: 7, 3, 5 and 1 sixteenths.
void Spread(std::vector<int>& row, std::vector<int>& below, std::size_t x, std::size_t channel, int error) {
  const std::size_t at = (x + 1) * kChannels + channel;  // both rows have a pixel to spare at each end
  row[at + kChannels] += error * 7 / 16;
  below[at - kChannels] += error * 3 / 16;
  below[at] += error * 5 / 16;
  below[at + kChannels] += error / 16;
}

std::vector<std::uint8_t> MapPixels(ByteView rgba, int width, const std::vector<Rgba8>& colours, bool dither) {
  const auto columns = static_cast<std::size_t>(width);
  std::vector<std::uint8_t> indexes;
  indexes.reserve(rgba.size() / kChannels);
  std::map<Rgba8, std::uint8_t> known;
  std::vector<int> row((columns + 2) * kChannels);
  std::vector<int> below(row.size());
  for (std::size_t pixel = 0; pixel < rgba.size() / kChannels; ++pixel) {
    const std::size_t x = pixel % columns;
    if (x == 0) {
      row.swap(below);
      std::fill(below.begin(), below.end(), 0);
    }
    Rgba8 wanted = PixelAt(rgba, pixel);
    for (std::size_t channel = 0; dither && channel < kChannels; ++channel) {
      wanted[channel] =
          static_cast<std::uint8_t>(std::clamp(wanted[channel] + row[(x + 1) * kChannels + channel], 0, 255));
    }
    const auto [place, isNew] = known.try_emplace(wanted);
    if (isNew) {
      place->second = Nearest(colours, wanted);
    }
    indexes.push_back(place->second);
    for (std::size_t channel = 0; dither && channel < kChannels; ++channel) {
      Spread(row, below, x, channel, wanted[channel] - colours[place->second][channel]);
    }
  }
  return indexes;
}

}  // namespace

IndexedPixels Quantise(ByteView rgba, int width, std::size_t maxColours, bool dither) {
  std::vector<Sample> samples = CountColours(rgba);
  IndexedPixels result;
  if (samples.size() <= maxColours) {
    for (const Sample& sample : samples) {
      result.colours.push_back(sample.colour);
    }
    result.indexes = MapPixels(rgba, width, result.colours, false);
  } else {
    result.colours = MedianCut(samples, maxColours);
    result.indexes = MapPixels(rgba, width, result.colours, dither);
  }
  return result;
}

}  // namespace kelvane::sample
