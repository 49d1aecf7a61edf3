// The one image object: a block of 32 bits per pixel pixels that four parsers can fill, that draws itself on a surface
// and writes itself out as a plain 32-bit BMP.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <span>
#include <string_view>

#include "common/Bytes.h"
#include "imaging/PictureLoader.h"
#include "imaging/Surface.h"

namespace kelvane {

// Where the pixels came from.
enum class ImageKind : std::int32_t {
  None = 0,  // nothing has set it yet
  BitmapWithoutAlpha = 1,
  Metafile = 2,
  Icon = 3,  // without an alpha channel
  EnhancedMetafile = 4,
  Cursor = 5,               // without an alpha channel
  BitmapWithAlpha = 6,      // was not premultiplied in the source
  PremultipliedBitmap = 7,  // also a bitmap whose alpha bytes are all 255
  IconWithAlpha = 8,
  Gif = 9,
  Png = 10,
  CursorWithAlpha = 11,
};

// The name of a kind as users read it.
[[nodiscard]] std::string_view NameOf(ImageKind kind);

// What the platform says of itself. Only members of the 9x family draw differently; this platform is none.
struct SystemVersion {
  bool is9xFamily = false;
  std::int32_t minorVersion = 0;
  std::int32_t build = 0;  // the low 16 bits count, as a signed number
};

class cBMPparser;
class cGIFparser;
class cICOparser;
class cPNGparser;

// The right to use the setters that are kept for the parsers.
class ParserKey {
  friend class cBMPparser;
  friend class cGIFparser;
  friend class cICOparser;
  friend class cPNGparser;
  ParserKey() {}  // NOLINT(modernize-use-equals-default): an aggregate could be made by anybody
};

// Pixels: 4 bytes each in the order blue, green, red, alpha; rows bottom first, without padding. With Alpha true
// colours are premultiplied; with Alpha false the alpha bytes mean nothing.
//
// The object is empty (handle null) or holds a bitmap. An object serves one caller at a time.
class c32bppDIB {
 public:
  // `pictures` reads what the parsers can't read themselves; null: such images don't load. It must outlive the object.
  explicit c32bppDIB(PictureLoader* pictures = nullptr, SystemVersion version = {});
  c32bppDIB(const c32bppDIB&) = delete;
  c32bppDIB& operator=(const c32bppDIB&) = delete;
  ~c32bppDIB() = default;

  // Replaces the content by the first image in the file, whatever its extension; `iconCx` and `iconCy` are the wanted
  // size of an icon, 0 for any. False: nothing usable was loaded, and the object is empty or, after a broken icon, a
  // bitmap without meaning; a file that isn't there or has less than 57 bytes leaves it as it was. Never throws.
  bool LoadPicture_File(const std::filesystem::path& FileName, std::int32_t iconCx, std::int32_t iconCy);
  // The same from bytes in memory, of any number. Headers inside an icon are repaired in place, so `stream` may change.
  bool LoadPicture_Stream(std::span<std::uint8_t> stream, std::int32_t iconCx, std::int32_t iconCy);

  [[nodiscard]] bool Alpha() const { return hasAlpha_; }
  [[nodiscard]] ImageKind ImageType() const { return imageKind_; }
  [[nodiscard]] std::int32_t Width() const { return dibWidth_; }
  [[nodiscard]] std::int32_t Height() const { return dibHeight_; }
  // The first stored byte of the pixels: blue of the bottom left one. Null when empty.
  [[nodiscard]] std::uint8_t* BitsPointer() { return bits_.get(); }
  [[nodiscard]] const std::uint8_t* BitsPointer() const { return bits_.get(); }
  // All pixels in stored order.
  [[nodiscard]] std::span<std::uint8_t> Pixels() { return {bits_.get(), PixelBytes()}; }
  [[nodiscard]] ByteView Pixels() const { return {bits_.get(), PixelBytes()}; }
  // Bytes in a row: 4 times the width.
  [[nodiscard]] std::int32_t ScanWidth() const { return dibWidth_ * 4; }
  // Null means that the object is empty.
  [[nodiscard]] const void* handle() const { return bits_.get(); }

  // Makes the object a bitmap of that size whose bytes are all 0, which parsers rely on; a negative height counts as
  // its absolute value. False, the object being empty then, for a width below 1, a height of 0, more than
  // kMaxArrayBytes, and where memory is short.
  bool InitializeDIB(std::int32_t width, std::int32_t height);
  // Makes the object empty. ImageType and ManageOwnDC keep their values.
  void DestroyDIB();

  // With `bLoad` the context through which a picture paints into the pixels, null when empty; without, takes the bitmap
  // out of its context again and returns null.
  const Canvas* LoadDIBinDC(bool bLoad);
  // Whether the context is kept when the bitmap is taken out of it.
  [[nodiscard]] bool ManageOwnDC() const { return manageDC_; }
  void ManageOwnDC(bool manage);

  // 0 and 1: drawn with its alpha. 3: drawn without.
  [[nodiscard]] std::int32_t systemClass() const { return systemClass_; }
  // Whether Render would lose transparency.
  [[nodiscard]] bool isWin95Alpha() const { return hasAlpha_ && systemClass_ == 3; }

  // Draws the whole bitmap stretched to the rectangle. A `destWidth` below 1 becomes the bitmap's width, in the
  // caller's variable too; a `destHeight` below 1 counts as its height. `blendPct` is the opacity: other than 100 it
  // counts as its absolute value modulo 100, and nothing is drawn at 0. False without a bitmap or a target, and where
  // the target couldn't draw.
  bool Render(Surface* destDC, std::int32_t destX, std::int32_t destY, std::int32_t& destWidth, std::int32_t destHeight,
              std::int32_t blendPct) const;

  // The bitmap as a BMP of 32 bits: 54 bytes of header, then the pixels as they are, premultiplied or not. Failures: 9
  // when empty, 6 and 7 for an image too large for such a file.
  [[nodiscard]] Bytes BmpBytes() const;
  // Writes that BMP. An existing longer file isn't truncated: the bytes beyond the new end stay. False, never a
  // failure, when empty and where the file can't be written. The second argument is ignored.
  bool SaveToFile(const std::filesystem::path& FileName, bool ignored = false) const;

  [[nodiscard]] PictureLoader* Pictures() const { return pictures_; }

  void Alpha(bool hasAlpha, ParserKey) { hasAlpha_ = hasAlpha; }
  void ImageType(ImageKind kind, ParserKey) { imageKind_ = kind; }
  // Takes the bitmap of `from`, which is empty then, in place of this object's own: for a parser that knows only at the
  // end whether its host is to be touched. Alpha becomes false, as after InitializeDIB.
  void TakeBitmap(c32bppDIB& from, ParserKey);

 private:
  struct Free {
    void operator()(std::uint8_t* block) const { std::free(block); }
  };

  // With a non-empty `FileName` the stream is read from it, and the arguments about it don't count.
  bool LoadPictureFromSource(const std::filesystem::path& FileName, std::span<std::uint8_t> stream, std::int32_t iconCx,
                             std::int32_t iconCy, std::int32_t streamStart, std::int32_t streamLength);

  [[nodiscard]] std::size_t PixelBytes() const {
    return static_cast<std::size_t>(dibWidth_) * 4 * static_cast<std::size_t>(dibHeight_);
  }

  PictureLoader* pictures_;
  std::unique_ptr<std::uint8_t[], Free> bits_;
  std::int32_t dibWidth_ = 0;
  std::int32_t dibHeight_ = 0;
  std::unique_ptr<Canvas> ownDC_;
  bool inDC_ = false;
  std::int32_t systemClass_;
  ImageKind imageKind_ = ImageKind::None;
  bool manageDC_ = false;
  bool hasAlpha_ = false;
};

}  // namespace kelvane
