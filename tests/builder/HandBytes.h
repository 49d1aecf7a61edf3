// Files written down by hand, to be compared with built ones. Offsets and values are bare numbers here on purpose: they
// are worked out from the format, not taken from what builds the files.
#pragma once

#include <cstdint>
#include <gtest/gtest.h>
#include <initializer_list>
#include <utility>
#include <vector>

#include "common/Bytes.h"

namespace kelvane::test {

inline constexpr std::uint32_t kNo = 0xFFFFFFFF;

// Little-endian words.
inline Bytes Words(const std::vector<std::uint32_t>& words) {
  Bytes bytes;
  for (const std::uint32_t word : words) {
    for (int shift = 0; shift < 32; shift += 8) {
      bytes.push_back(static_cast<std::uint8_t>(word >> shift));
    }
  }
  return bytes;
}

// The header of a file without any table, with the given longs (by offset) in place of what it has.
inline Bytes Header(std::initializer_list<std::pair<std::size_t, std::uint32_t>> longs) {
  std::vector<std::uint32_t> words = {
      0x46525000, 113, 0,   0,                          // 0: magic, version
      164,        0,   kNo, kNo, kNo, kNo, 0,   0,      // 16: main head, -, text, VAG, GMO, image, -, -
      kNo,        kNo,                                  // 48: page, animation
      kNo,        0,   204, 0,   kNo, 0,                // 56: text data, labels, events
      kNo,        0,   kNo, 0,   kNo, 0,   kNo, 0,      // 80: pointers of text, image, VAG, GMO
      kNo,        0,   kNo, 0,                          // 112: pointers of page, animation
      kNo,        0,   kNo, 0,   kNo, 0,   0,   0, 0};  // 128: data of image, VAG, GMO
  for (const auto& [offset, value] : longs) {
    words.at(offset / 4) = value;
  }
  return Words(words);
}

inline Bytes Joined(std::initializer_list<Bytes> parts) {
  Bytes bytes;
  for (const Bytes& part : parts) {
    bytes.insert(bytes.end(), part.begin(), part.end());
  }
  return bytes;
}

// Tells the first offset at which two files differ.
inline void ExpectSameFile(const Bytes& actual, const Bytes& expected) {
  for (std::size_t i = 0; i < actual.size() && i < expected.size(); ++i) {
    ASSERT_EQ(int{actual[i]}, int{expected[i]}) << "first difference at offset " << i;
  }
  EXPECT_EQ(actual.size(), expected.size());
}

}  // namespace kelvane::test
