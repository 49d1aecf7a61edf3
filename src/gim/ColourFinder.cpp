#include "gim/ColourFinder.h"

#include <algorithm>
#include <cstring>

namespace kelvane {

namespace {

std::uint32_t PixelAt(const std::uint8_t* bytes) {
  std::uint32_t pixel = 0;
  std::memcpy(&pixel, bytes, 4);
  return pixel;
}

}  // namespace

std::array<std::uint8_t, kMissingPixels * 4> MissingPixels(ByteView bytes, std::size_t whole) {
  std::array<std::uint8_t, kMissingPixels * 4> pixels{};
  const ByteView rest = bytes.subspan(whole * 4);
  std::copy_n(rest.begin(), std::min<std::size_t>(rest.size(), 4), pixels.begin());
  return pixels;
}

ColourFinder::ColourFinder(std::vector<std::uint32_t>& palette, Int16& count, const WideLookup* wide)
    : palette_(palette), count_(count), wide_(wide) {
  const std::int32_t known = std::min<std::int32_t>({count.Int(), kPaletteColours, static_cast<int>(palette.size())});
  for (std::int32_t i = 0; i < known; ++i) {
    Remember(palette[static_cast<std::size_t>(i)], i);
  }
}

Int16 ColourFinder::FindOrAdd(std::uint32_t colour) {
  if (count_ > kPaletteColours) {
    return FindOrAddColour(colour, palette_, count_);
  }
  const std::int32_t known = SlotOf(colour).index;
  if (known >= 0) {
    return count_ < kPaletteColours ? known : 0;
  }
  const Int16 index = AddColour(colour, palette_, count_);
  if (count_ <= kPaletteColours) {
    Remember(colour, index.Int());
  }
  return index;
}

bool ColourFinder::FindOrAddAll(ByteView pixels, Int16 most, std::span<std::uint8_t> indexes) {
  const std::size_t count = pixels.size() / 4;
  std::size_t done = 0;
  while (done < count) {
    if (count_ >= 1 && count_ <= most) {  // guesses are of colours that are there
      done += Guess(pixels.data() + done * 4, count - done, indexes.data() + done);
    }
    for (const std::size_t end = std::min(done + kStride, count); done < end; ++done) {
      indexes[done] = IndexOf(PixelAt(pixels.data() + done * 4));
      if (count_ > most) {
        return false;
      }
    }
  }
  return true;
}

std::uint8_t ColourFinder::IndexOf(std::uint32_t colour) {
  const Slot& slot = SlotOf(colour);
  if (slot.index < 0) {
    return static_cast<std::uint8_t>(FindOrAdd(colour).Int());
  }
  const auto index = static_cast<std::uint8_t>(slot.index);
  std::uint8_t& guess = guesses_[GuessOf(colour)];
  if (guess != index) {
    guess = index;
    if (++clashes_ == kClashesBorne) {
      GuessOtherwise();
    }
  }
  return index;
}

void ColourFinder::GuessOtherwise() {
  clashes_ = 0;
  guessFactor_ = guessFactor_ * kFactorStep + 2;  // odd for ever
  guesses_.fill(0);
  for (const Slot& slot : slots_) {
    if (slot.index >= 0) {
      guesses_[GuessOf(slot.colour)] = static_cast<std::uint8_t>(slot.index);
    }
  }
}

std::size_t ColourFinder::Guess(const std::uint8_t* pixels, std::size_t count, std::uint8_t* indexes) const {
  static_assert(kGuessBits == 16, "wide guesses go by the upper 16 bits of a product");
  const std::size_t narrow = wide_ == nullptr ? count : std::min(count, kNarrowPixels);
  const std::size_t done = GuessStrides(pixels, narrow, indexes);
  if (wide_ == nullptr || done < narrow) {
    return done;
  }
  return done + wide_->guess(split_, guesses_.data(), guessFactor_, pixels + done * 4, count - done, indexes + done);
}

std::size_t ColourFinder::GuessStrides(const std::uint8_t* pixels, std::size_t count, std::uint8_t* indexes) const {
  const std::uint32_t* palette = palette_.data();
  const std::uint32_t factor = guessFactor_;
  std::size_t done = 0;
  for (; done + kStride <= count; done += kStride) {
    std::uint32_t wrong = 0;
    for (std::size_t i = done; i < done + kStride; ++i) {
      const std::uint32_t colour = PixelAt(pixels + i * 4);
      const std::uint8_t index = guesses_[colour * factor >> (32 - kGuessBits)];
      wrong |= palette[index] ^ colour;
      indexes[i] = index;
    }
    if (wrong != 0) {
      break;
    }
  }
  return done;
}

ColourFinder::Slot& ColourFinder::SlotOf(std::uint32_t colour) {
  std::size_t slot = colour * kFactor >> (32 - kSlotBits);
  while (slots_[slot].index >= 0 && slots_[slot].colour != colour) {
    slot = (slot + 1) % slots_.size();
  }
  return slots_[slot];
}

void ColourFinder::Remember(std::uint32_t colour, std::int32_t index) {
  Slot& slot = SlotOf(colour);
  if (slot.index < 0) {  // of like entries the first counts
    slot = {.colour = colour, .index = index};
    split_.Set(static_cast<std::size_t>(index), colour);
    guesses_[GuessOf(colour)] = static_cast<std::uint8_t>(index);
  }
}

}  // namespace kelvane
