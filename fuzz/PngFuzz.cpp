// Any bytes as a PNG, with and without CRCs, from memory and from a file, beside a reader as plain as can be.
#include <algorithm>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

#include "FuzzTarget.h"
#include "imaging/cPNGparser.h"
#include "support/PlainPng.h"

namespace kelvane {
namespace {

using fuzz::Require;
using test::PlainPngResult;

// Pictures of more pixels take too long to look for anything in them.
constexpr std::uint64_t kMostPixels = 1 << 18;

std::uint64_t BigEndian(ByteView bytes, std::size_t at) {
  return std::uint64_t{bytes[at]} << 24 | std::uint64_t{bytes[at + 1]} << 16 | std::uint64_t{bytes[at + 2]} << 8 |
         bytes[at + 3];
}

// Whether some bytes that may serve as a header promise a large picture.
bool PromisesMuch(ByteView file) {
  const std::string_view text(reinterpret_cast<const char*>(file.data()), file.size());
  for (std::size_t at = text.find("IHDR"); at != std::string_view::npos; at = text.find("IHDR", at + 1)) {
    if (at + 12 <= file.size() && BigEndian(file, at + 4) * BigEndian(file, at + 8) > kMostPixels) {
      return true;
    }
  }
  return false;
}

struct Host {
  c32bppDIB image;
  bool loaded = false;

  Host() { (void)image.InitializeDIB(3, 2); }
  [[nodiscard]] bool Untouched() const { return image.Width() == 3 && image.Height() == 2; }
};

void CheckPixels(const c32bppDIB& image) {
  const ByteView pixels = image.Pixels();
  for (std::size_t i = 0; i < pixels.size(); i += 4) {
    Require(std::max({pixels[i], pixels[i + 1], pixels[i + 2]}) <= pixels[i + 3], "colours are premultiplied");
  }
}

void CheckStream(ByteView file, bool checkCrcs) {
  const PlainPngResult plain = test::PlainPng(file, checkCrcs);
  Host host;
  cPNGparser parser([checkCrcs](std::string_view, std::string_view) { return checkCrcs; });
  host.loaded = parser.LoadStream(file, host.image, 0, static_cast<std::int32_t>(file.size()));
  Require(host.loaded == (plain.end == PlainPngResult::End::Loaded), "what loads is the same");
  Require(plain.end != PlainPngResult::End::Refused || host.Untouched(), "a refusal leaves the host as it was");
  Require(plain.end != PlainPngResult::End::Emptied || host.image.handle() == nullptr, "the host is emptied");
  if (host.loaded) {
    Require(host.image.Width() == plain.width && host.image.Height() == plain.height, "the size is the same");
    Require(std::ranges::equal(host.image.Pixels(), plain.pixels), "the pixels are the same");
    Require(host.image.Alpha() == plain.alpha, "Alpha is the same");
    Require(host.image.ImageType() == ImageKind::Png, "the kind is a PNG's");
    CheckPixels(host.image);
  }
}

// A file is read with other counters, by which it is never taken more easily.
void CheckFile(ByteView file) {
  const int descriptor = memfd_create("png", 0);
  Require(descriptor >= 0 && write(descriptor, file.data(), file.size()) == static_cast<ssize_t>(file.size()),
          "the file can be written");
  Host fromFile;
  fromFile.loaded = cPNGparser().LoadFile("/proc/self/fd/" + std::to_string(descriptor), fromFile.image);
  close(descriptor);
  Host fromMemory;
  fromMemory.loaded = cPNGparser().LoadStream(file, fromMemory.image, 0, static_cast<std::int32_t>(file.size()));
  if (fromFile.loaded && fromMemory.loaded) {
    Require(std::ranges::equal(fromFile.image.Pixels(), fromMemory.image.Pixels()), "both modes load the same");
  }
}

}  // namespace
}  // namespace kelvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const kelvane::ByteView file(data, size);
  if (kelvane::PromisesMuch(file)) {
    return 0;
  }
  kelvane::CheckStream(file, true);
  kelvane::CheckStream(file, false);
  kelvane::CheckFile(file);
  return 0;
}
