// The palette builder for pixel after pixel: the results of FindOrAddColour at a constant cost.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "common/Bytes.h"
#include "common/Int16.h"
#include "gim/Palette.h"
#include "gim/WideLookup.h"

namespace kelvane {

// All pixels behind the end of a bitmap are 0; the first of them may have some bytes left.
inline constexpr std::size_t kMissingPixels = 2;

// The pixel that `bytes` break off in, behind `whole` pixels of 4 bytes, and one behind it. What is missing is zero.
[[nodiscard]] std::array<std::uint8_t, kMissingPixels * 4> MissingPixels(ByteView bytes, std::size_t whole);

// Keeps an index beside a palette under construction. While it lives, palette and count are changed through it only.
class ColourFinder {
 public:
  // Without `wide` guesses are checked one by one.
  ColourFinder(std::vector<std::uint32_t>& palette, Int16& count, const WideLookup* wide = BestWideLookup());

  // What FindOrAddColour does.
  Int16 FindOrAdd(std::uint32_t colour);

  // The same for whole pixels of 4 bytes, in their order, with an index of one byte for each in `indexes`. Answers
  // false as soon as the count is above `most`, which is 256 at most. From 256 colours on the indexes are void.
  bool FindOrAddAll(ByteView pixels, Int16 most, std::span<std::uint8_t> indexes);

 private:
  // A colour and its index, -1 in a free slot. There are four times as many slots as colours.
  struct Slot {
    std::uint32_t colour = 0;
    std::int32_t index = -1;
  };
  static constexpr int kSlotBits = 10;
  static constexpr std::uint32_t kFactor = 0x9E3779B1U;

  static constexpr int kGuessBits = 16;
  // How many pixels are guessed in one go.
  static constexpr std::size_t kStride = 16;
  // So many must be right before guessing in wide strides is worth it.
  static constexpr std::size_t kNarrowPixels = 256;
  // So many wrong guesses for known colours, and the places of the guesses are dealt out anew.
  static constexpr int kClashesBorne = 64;
  static constexpr std::uint32_t kFactorStep = 0x2C9277B5U;

  [[nodiscard]] std::size_t GuessOf(std::uint32_t colour) const { return colour * guessFactor_ >> (32 - kGuessBits); }

  // Guesses the indexes of pixels. Gives the number of pixels, from the first on, that are guessed right; it may be
  // less than could be.
  [[nodiscard]] std::size_t Guess(const std::uint8_t* pixels, std::size_t count, std::uint8_t* indexes) const;
  // The same, kStride at a time and without a branch for each, since they come in any order: up to the first stride
  // that isn't right.
  [[nodiscard]] std::size_t GuessStrides(const std::uint8_t* pixels, std::size_t count, std::uint8_t* indexes) const;
  // The index of one pixel, which is added if it is new. Puts its guess right.
  std::uint8_t IndexOf(std::uint32_t colour);
  void GuessOtherwise();
  // The slot that holds `colour`, or the free one where it belongs.
  [[nodiscard]] Slot& SlotOf(std::uint32_t colour);
  void Remember(std::uint32_t colour, std::int32_t index);

  std::vector<std::uint32_t>& palette_;
  Int16& count_;
  std::array<Slot, std::size_t{1} << kSlotBits> slots_;
  // The index of the colour that was met last of those that share a place. There are so many places that hardly any
  // colours do.
  std::array<std::uint8_t, std::size_t{1} << kGuessBits> guesses_{};
  std::uint32_t guessFactor_ = kFactor;
  int clashes_ = 0;
  const WideLookup* wide_;
  SplitPalette split_;
};

}  // namespace kelvane
