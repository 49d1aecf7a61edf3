#include "imaging/c32bppDIB.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <utility>

#if defined(__linux__)
#include <sys/mman.h>
#endif

#include "common/Files.h"
#include "common/Int16.h"
#include "common/RuntimeFailure.h"
#include "imaging/cBMPparser.h"
#include "imaging/cGIFparser.h"
#include "imaging/cICOparser.h"
#include "imaging/cPNGparser.h"

namespace kelvane {

namespace {

constexpr std::int32_t kBmpHeaderBytes = 54;
// No image file is shorter.
constexpr std::int64_t kLeastFileBytes = 57;

// Asks for pages of 2 MiB under a large block, which come in a fraction of the time when it is first written. Only a
// hint: where the system doesn't take it, nothing changes.
void PreferLargePages([[maybe_unused]] void* block, [[maybe_unused]] std::size_t size) {
#if defined(__linux__)
  constexpr std::size_t kWorthIt = std::size_t{8} << 20;
  constexpr std::size_t kPage = 4096;
  void* start = block;
  if (size >= kWorthIt && std::align(kPage, size - kPage, start, size) != nullptr) {
    (void)madvise(start, size / kPage * kPage, MADV_HUGEPAGE);
  }
#endif
}

// What `load` gives; false where it fails.
template <class Load>
bool Swallowed(Load load) {
  try {
    return load();
  } catch (const std::exception&) {
    return false;
  }
}

std::int32_t SystemClassOf(const SystemVersion& version) {
  if (!version.is9xFamily) {
    return 0;
  }
  const auto build = static_cast<std::int16_t>(version.build & 0xFFFF);
  return version.minorVersion < 10 && build < 3000 ? 1 : 3;
}

}  // namespace

std::string_view NameOf(ImageKind kind) {
  switch (kind) {
    case ImageKind::None:
      return "none";
    case ImageKind::BitmapWithoutAlpha:
      return "bitmap without alpha";
    case ImageKind::Metafile:
      return "metafile";
    case ImageKind::Icon:
      return "icon";
    case ImageKind::EnhancedMetafile:
      return "enhanced metafile";
    case ImageKind::Cursor:
      return "cursor";
    case ImageKind::BitmapWithAlpha:
      return "bitmap with alpha";
    case ImageKind::PremultipliedBitmap:
      return "premultiplied bitmap";
    case ImageKind::IconWithAlpha:
      return "icon with alpha";
    case ImageKind::Gif:
      return "GIF";
    case ImageKind::Png:
      return "PNG";
    case ImageKind::CursorWithAlpha:
      return "cursor with alpha";
  }
  return "unknown";
}

c32bppDIB::c32bppDIB(PictureLoader* pictures, SystemVersion version)
    : pictures_(pictures), systemClass_(SystemClassOf(version)) {}

bool c32bppDIB::LoadPicture_File(const std::filesystem::path& FileName, std::int32_t iconCx, std::int32_t iconCy) {
  return Swallowed([&] {
    return FileExists(FileName) && FileLength(FileName) >= kLeastFileBytes &&
           LoadPictureFromSource(FileName, {}, iconCx, iconCy, 0, 0);
  });
}

bool c32bppDIB::LoadPicture_Stream(std::span<std::uint8_t> stream, std::int32_t iconCx, std::int32_t iconCy) {
  return Swallowed([&] {
    return LoadPictureFromSource({}, stream, iconCx, iconCy, 0, CheckedInt32(static_cast<std::int64_t>(stream.size())));
  });
}

bool c32bppDIB::LoadPictureFromSource(const std::filesystem::path& FileName, std::span<std::uint8_t> stream,
                                      std::int32_t iconCx, std::int32_t iconCy, std::int32_t streamStart,
                                      std::int32_t streamLength) {
  DestroyDIB();
  iconCx = std::max(iconCx, 0);
  iconCy = std::max(iconCy, 0);
  // The PNG parser reads a file on its own, so that it never needs more of it than it has to; the others share all of
  // it.
  Bytes file;
  if (FileName.empty()) {
    if (Swallowed([&] { return cPNGparser().LoadStream(stream, *this, streamStart, streamLength); })) {
      return true;
    }
  } else {
    if (Swallowed([&] { return cPNGparser().LoadFile(FileName, *this); })) {
      return true;
    }
    file = ReadWholeFile(FileName);
    stream = file;
    streamStart = 0;
    streamLength = CheckedInt32(static_cast<std::int64_t>(file.size()));
  }
  return Swallowed([&] { return cICOparser().LoadStream(stream, iconCx, iconCy, *this, streamStart, streamLength); }) ||
         Swallowed([&] { return cGIFparser().LoadStream(stream, *this, streamStart, streamLength); }) ||
         cBMPparser().LoadStream(stream, *this, streamStart, streamLength);
}

bool c32bppDIB::Render(Surface* destDC, std::int32_t destX, std::int32_t destY, std::int32_t& destWidth,
                       std::int32_t destHeight, std::int32_t blendPct) const {
  if (!bits_ || destDC == nullptr) {
    return false;
  }
  if (blendPct != 100) {
    blendPct = std::abs(blendPct % 100);
    if (blendPct == 0) {
      return true;
    }
  }
  if (destWidth < 1) {
    destWidth = dibWidth_;
  }
  if (destHeight < 1) {
    destHeight = dibHeight_;
  }
  const PixelView source = {Pixels(), dibWidth_, dibHeight_};
  if (systemClass_ == 3) {
    return destDC->Blend(source, destX, destY, destWidth, destHeight, 255, false);
  }
  const auto constantAlpha = static_cast<std::uint8_t>(RoundToInt32(blendPct / 100.0 * 255));
  return destDC->Blend(source, destX, destY, destWidth, destHeight, constantAlpha, hasAlpha_);
}

Bytes c32bppDIB::BmpBytes() const {
  const std::int32_t imageBytes = static_cast<std::int32_t>(PixelBytes());
  const std::int32_t fileBytes = AddInt32(imageBytes, kBmpHeaderBytes);
  if (!bits_) {
    throw RuntimeFailure(FailureCode::SubscriptOutOfRange);
  }
  Bytes file(static_cast<std::size_t>(fileBytes));
  WriteU16(file, 0, 19778);  // "BM"
  WriteI32(file, 2, fileBytes);
  WriteI32(file, 10, kBmpHeaderBytes);
  WriteI32(file, 14, 40);  // size of the header from here on
  WriteI32(file, 18, dibWidth_);
  WriteI32(file, 22, dibHeight_);
  WriteU16(file, 26, 1);   // planes
  WriteU16(file, 28, 32);  // bits a pixel
  WriteI32(file, 34, imageBytes);
  CopyInto(file, kBmpHeaderBytes, Pixels());
  return file;
}

bool c32bppDIB::SaveToFile(const std::filesystem::path& FileName, bool /*ignored*/) const {
  if (FileName.empty() || !bits_) {
    return false;
  }
  return Swallowed([&] {
    OverwriteFile(FileName, BmpBytes());
    return true;
  });
}

bool c32bppDIB::InitializeDIB(std::int32_t width, std::int32_t height) {
  DestroyDIB();
  if (width < 1 || height == 0) {
    return false;
  }
  const std::int64_t rows = height < 0 ? -std::int64_t{height} : std::int64_t{height};
  if (rows > kMaxArrayBytes / 4 / width) {
    return false;
  }
  // calloc takes large blocks from the system as pages that are zero until they are written: an image of which little
  // is drawn costs little.
  bits_.reset(static_cast<std::uint8_t*>(std::calloc(static_cast<std::size_t>(rows * width), 4)));
  if (!bits_) {
    return false;
  }
  dibWidth_ = width;
  dibHeight_ = static_cast<std::int32_t>(rows);
  PreferLargePages(bits_.get(), PixelBytes());
  return true;
}

void c32bppDIB::DestroyDIB() {
  inDC_ = false;
  ownDC_.reset();
  bits_.reset();
  dibWidth_ = 0;
  dibHeight_ = 0;
  hasAlpha_ = false;
}

void c32bppDIB::TakeBitmap(c32bppDIB& from, ParserKey) {
  DestroyDIB();
  bits_ = std::move(from.bits_);
  dibWidth_ = from.dibWidth_;
  dibHeight_ = from.dibHeight_;
  from.DestroyDIB();
}

const Canvas* c32bppDIB::LoadDIBinDC(bool bLoad) {
  if (bLoad && bits_) {
    if (!ownDC_) {
      ownDC_ = std::make_unique<Canvas>();
    }
    *ownDC_ = {Pixels(), dibWidth_, dibHeight_};
    inDC_ = true;
    return ownDC_.get();
  }
  if (!bLoad && inDC_) {
    *ownDC_ = {};
    if (!manageDC_) {
      ownDC_.reset();
    }
    inDC_ = false;
  }
  return nullptr;
}

void c32bppDIB::ManageOwnDC(bool manage) {
  if (!manage) {
    (void)LoadDIBinDC(false);
    ownDC_.reset();
  } else if (!ownDC_ && bits_) {
    ownDC_ = std::make_unique<Canvas>();
  }
  manageDC_ = manage;
}

}  // namespace kelvane
