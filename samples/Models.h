// The demo's models. The editor never looks inside one: what counts is how it begins.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "common/Bytes.h"

namespace kelvane::sample {

struct Mesh {
  std::vector<std::array<float, 3>> corners;
  std::vector<std::array<std::uint16_t, 3>> triangles;
};

[[nodiscard]] Mesh Cube();
// Rings of `sides` corners around a ring.
[[nodiscard]] Mesh Torus(int rings, int sides);

// "OMG.00.1PSP", then a block of corners and a block of triangles, each behind a head of 16 bytes.
[[nodiscard]] Bytes ModelFile(const Mesh& mesh);

}  // namespace kelvane::sample
