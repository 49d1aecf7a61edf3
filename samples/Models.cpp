#include "samples/Models.h"

#include <bit>
#include <cmath>
#include <numbers>

#include "samples/ByteWriter.h"

namespace kelvane::sample {

namespace {

constexpr std::uint32_t kHead = 16;

void AddBlock(Bytes& bytes, std::uint32_t id, const Bytes& content) {
  const auto size = static_cast<std::uint32_t>(content.size()) + kHead;
  AddLittle(bytes, id, 4);
  AddLittle(bytes, size, 4);
  AddLittle(bytes, size, 4);
  AddLittle(bytes, kHead, 4);
  Append(bytes, content);
}

}  // namespace

Mesh Cube() {
  Mesh mesh;
  for (unsigned corner = 0; corner < 8; ++corner) {
    const auto side = [corner](unsigned bit) { return (corner >> bit & 1U) != 0 ? 1.0F : -1.0F; };
    mesh.corners.push_back({side(0), side(1), side(2)});
  }
  mesh.triangles = {{0, 2, 1}, {1, 2, 3}, {4, 5, 6}, {5, 7, 6}, {0, 1, 4}, {1, 5, 4},
                    {2, 6, 3}, {3, 6, 7}, {0, 4, 2}, {2, 4, 6}, {1, 3, 5}, {3, 7, 5}};
  return mesh;
}

Mesh Torus(int rings, int sides) {
  constexpr float kTurn = 2 * std::numbers::pi_v<float>;
  Mesh mesh;
  const auto corner = [sides, rings](int ring, int side) {
    return static_cast<std::uint16_t>(ring % rings * sides + side % sides);
  };
  for (int ring = 0; ring < rings; ++ring) {
    const float around = kTurn * static_cast<float>(ring) / static_cast<float>(rings);
    for (int side = 0; side < sides; ++side) {
      const float across = kTurn * static_cast<float>(side) / static_cast<float>(sides);
      const float radius = 2 + 0.6F * std::cos(across);
      mesh.corners.push_back({radius * std::cos(around), radius * std::sin(around), 0.6F * std::sin(across)});
      mesh.triangles.push_back({corner(ring, side), corner(ring + 1, side), corner(ring, side + 1)});
      mesh.triangles.push_back({corner(ring, side + 1), corner(ring + 1, side), corner(ring + 1, side + 1)});
    }
  }
  return mesh;
}

Bytes ModelFile(const Mesh& mesh) {
  Bytes corners;
  for (const auto& corner : mesh.corners) {
    for (const float place : corner) {
      AddLittle(corners, std::bit_cast<std::uint32_t>(place), 4);
    }
  }
  Bytes triangles;
  for (const auto& triangle : mesh.triangles) {
    for (const std::uint16_t corner : triangle) {
      AddLittle(triangles, corner, 2);
    }
  }
  Bytes bytes;
  AddText(bytes, "OMG.00.1PSP");
  bytes.resize(kHead);
  AddBlock(bytes, 6, corners);
  AddBlock(bytes, 7, triangles);
  return bytes;
}

}  // namespace kelvane::sample
