#include <gtest/gtest.h>

#include "imaging/Fakes.h"
#include "imaging/cGIFparser.h"
#include "support/GifBuilder.h"

namespace kelvane {
namespace {

using test::GifApplication;
using test::GifColour;
using test::GifComment;
using test::GifControl;
using test::GifFrame;
using test::GifHeader;
using test::GifImage;
using test::GifLzwEncode;
using test::GifTrailer;
using test::Join;
using test::PixelsOf;

const std::vector<GifColour> kGlobal = {{10, 11, 12}, {20, 21, 22}, {30, 31, 32}, {40, 41, 42}};
const std::vector<GifColour> kLocal = {{110, 111, 112}, {120, 121, 122}, {130, 131, 132}, {140, 141, 142}};

// 2 by 2 pixels: 0 1 over 2 3.
GifFrame Frame() {
  return {.width = 2, .height = 2, .lzw = GifLzwEncode(2, {0, 1, 2, 3})};
}

bool Load(c32bppDIB& image, const Bytes& file) {
  return cGIFparser().LoadStream(file, image, 0, static_cast<std::int32_t>(file.size()));
}

// The pixels of a file that loads; empty otherwise.
Bytes PixelsOfFile(const Bytes& file) {
  c32bppDIB image;
  return Load(image, file) ? PixelsOf(image.Pixels()) : Bytes();
}

// The rows 2 3 and 0 1 in the colours of the global table.
const Bytes kPainted = {32, 31, 30, 0, 42, 41, 40, 0, 12, 11, 10, 0, 22, 21, 20, 0};

TEST(cGIFparser, AGifWithoutTransparencyLeavesAlphaAsPaintingDoes) {
  c32bppDIB image;
  ASSERT_TRUE(Load(image, Join({GifHeader(2, 2, kGlobal), GifImage(Frame()), GifTrailer()})));
  EXPECT_EQ(image.Width(), 2);
  EXPECT_EQ(image.Height(), 2);
  EXPECT_FALSE(image.Alpha());
  EXPECT_EQ(image.ImageType(), ImageKind::Gif);
  EXPECT_EQ(PixelsOf(image.Pixels()), kPainted);
}

TEST(cGIFparser, OnlyTheFirstFrameOfAnAnimationAtItsOwnSize) {
  GifFrame first = Frame();
  first.left = 5;
  first.top = 7;
  GifFrame second = Frame();
  second.width = 4;
  second.height = 1;
  const Bytes file = Join({GifHeader(30, 20, kGlobal), GifApplication("NETSCAPE2.0", {1, 0, 0}), GifControl(-1),
                           GifImage(first), GifControl(2), GifImage(second), GifTrailer()});
  c32bppDIB image;
  ASSERT_TRUE(Load(image, file));
  EXPECT_EQ(image.Width(), 2);
  EXPECT_EQ(image.Height(), 2);
  EXPECT_FALSE(image.Alpha());
  EXPECT_EQ(PixelsOf(image.Pixels()), kPainted);
}

TEST(cGIFparser, TheSignatureIsComparedWithoutCase) {
  for (const char* signature : {"GIF89a", "GIF87a", "GIF87A", "GIF89A", "gif89a", "gIf87A"}) {
    EXPECT_EQ(PixelsOfFile(Join({GifHeader(2, 2, kGlobal, signature), GifImage(Frame())})), kPainted) << signature;
  }
  for (const char* signature : {"GIF88a", "GIF89b", "JIF89a", "GIF 9a"}) {
    EXPECT_EQ(PixelsOfFile(Join({GifHeader(2, 2, kGlobal, signature), GifImage(Frame())})), Bytes()) << signature;
  }
}

TEST(cGIFparser, ACommentBeforeTheFirstFrameIsSteppedOver) {
  const std::string longText(700, ',');
  EXPECT_EQ(PixelsOfFile(Join({GifHeader(2, 2, kGlobal), GifComment(longText), GifImage(Frame())})), kPainted);
}

TEST(cGIFparser, OtherExtensionsAndZeroBytesAreSteppedOver) {
  const Bytes plainText = {0x21, 0x01, 3, 0x2C, 0x2C, 0x2C, 1, 0x3B, 0};
  const Bytes zeros(5);
  EXPECT_EQ(PixelsOfFile(Join({GifHeader(2, 2, kGlobal), zeros, plainText, zeros, GifImage(Frame())})), kPainted);
}

TEST(cGIFparser, AnApplicationBlocksFirstLengthIsNoEndOfItsBlocks) {
  // A name of no bytes, then a block of 2 and the end. Read as blocks it would end at the name's length.
  const Bytes nameless = {0x21, 0xFF, 0, 2, 0x2C, 0x2C, 0};
  EXPECT_EQ(PixelsOfFile(Join({GifHeader(2, 2, kGlobal), nameless, GifImage(Frame())})), kPainted);
  // Of any other extension it is that end.
  Bytes comment = nameless;
  comment[1] = 0xFE;
  EXPECT_EQ(PixelsOfFile(Join({GifHeader(2, 2, kGlobal), comment, GifImage(Frame())})), Bytes());
}

TEST(cGIFparser, AGraphicControlTakes8BytesWhateverLengthItTells) {
  for (const std::uint8_t length : {std::uint8_t{0}, std::uint8_t{9}, std::uint8_t{255}}) {
    Bytes control = GifControl(1);
    control[2] = length;
    EXPECT_EQ(PixelsOfFile(Join({GifHeader(2, 2, kGlobal), control, GifImage(Frame())})),
              (Bytes{32, 31, 30, 255, 42, 41, 40, 255, 12, 11, 10, 255, 0, 0, 0, 0}));
  }
}

TEST(cGIFparser, AGraphicControlWithoutTheBitIsNoTransparency) {
  // The index byte is there all the same.
  const Bytes control = {0x21, 0xF9, 4, 0, 0, 0, 1, 0};
  c32bppDIB image;
  ASSERT_TRUE(Load(image, Join({GifHeader(2, 2, kGlobal), control, GifImage(Frame())})));
  EXPECT_FALSE(image.Alpha());
  EXPECT_EQ(PixelsOf(image.Pixels()), kPainted);
}

TEST(cGIFparser, TransparentIndexZeroWithAGlobalTable) {
  c32bppDIB image;
  ASSERT_TRUE(Load(image, Join({GifHeader(2, 2, kGlobal), GifControl(0), GifImage(Frame())})));
  EXPECT_TRUE(image.Alpha());
  EXPECT_EQ(image.ImageType(), ImageKind::Gif);
  EXPECT_EQ(PixelsOf(image.Pixels()), (Bytes{32, 31, 30, 255, 42, 41, 40, 255, 0, 0, 0, 0, 22, 21, 20, 255}));
}

TEST(cGIFparser, ALocalTableGivesTheColoursOfATransparentFrame) {
  GifFrame frame = Frame();
  frame.table = kLocal;
  for (const auto& global : {std::vector<GifColour>(), kGlobal}) {
    c32bppDIB image;
    ASSERT_TRUE(Load(image, Join({GifHeader(2, 2, global), GifControl(3), GifImage(frame)})));
    EXPECT_TRUE(image.Alpha());
    EXPECT_EQ(PixelsOf(image.Pixels()),
              (Bytes{132, 131, 130, 255, 0, 0, 0, 0, 112, 111, 110, 255, 122, 121, 120, 255}));
  }
}

TEST(cGIFparser, ALocalTableGivesTheColoursOfAnOpaqueFrame) {
  GifFrame frame = Frame();
  frame.table = kLocal;
  for (const auto& global : {std::vector<GifColour>(), kGlobal}) {
    EXPECT_EQ(PixelsOfFile(Join({GifHeader(2, 2, global), GifImage(frame)})),
              (Bytes{132, 131, 130, 0, 142, 141, 140, 0, 112, 111, 110, 0, 122, 121, 120, 0}));
  }
}

TEST(cGIFparser, TheLastControlBeforeTheFrameCountsHoweverFarAway) {
  const Bytes far = Join({GifHeader(2, 2, kGlobal), GifControl(1), GifComment("between"),
                          GifApplication("AAAAAAAAAAA", {1, 2}), GifImage(Frame())});
  EXPECT_EQ(PixelsOfFile(far), (Bytes{32, 31, 30, 255, 42, 41, 40, 255, 12, 11, 10, 255, 0, 0, 0, 0}));
  const Bytes two = Join({GifHeader(2, 2, kGlobal), GifControl(1), GifControl(2), GifImage(Frame())});
  EXPECT_EQ(PixelsOfFile(two), (Bytes{0, 0, 0, 0, 42, 41, 40, 255, 12, 11, 10, 255, 22, 21, 20, 255}));
  const Bytes taken = Join({GifHeader(2, 2, kGlobal), GifControl(1), GifControl(-1), GifImage(Frame())});
  EXPECT_EQ(PixelsOfFile(taken), kPainted);
}

TEST(cGIFparser, AControlBehindTheFrameIsNeverSeen) {
  EXPECT_EQ(PixelsOfFile(Join({GifHeader(2, 2, kGlobal), GifImage(Frame()), GifControl(1), GifTrailer()})), kPainted);
}

TEST(cGIFparser, InterlacedRowsComeInFourPasses) {
  // Row y holds colour y modulo 4 in 11 rows of one pixel; the file has rows 0 8, 4, 2 6 10, 1 3 5 7 9.
  GifFrame frame{.width = 1, .height = 11, .interlaced = true};
  frame.lzw = GifLzwEncode(2, {0, 0, 0, 2, 2, 2, 1, 3, 1, 3, 1});
  const Bytes pixels = PixelsOfFile(Join({GifHeader(1, 11, kGlobal), GifImage(frame)}));
  Bytes expected;
  for (int y = 10; y >= 0; --y) {
    const GifColour& colour = kGlobal[static_cast<std::size_t>(y % 4)];
    Append(expected, Bytes{colour.blue, colour.green, colour.red, 0});
  }
  EXPECT_EQ(pixels, expected);
}

TEST(cGIFparser, InterlacedPicturesOfEveryHeightHaveEveryRow) {
  // The rows of each pass by the passes' own rule; every row has its number as index.
  std::vector<GifColour> table(256);
  for (std::size_t i = 0; i < table.size(); ++i) {
    table[i].red = static_cast<std::uint8_t>(i);
  }
  for (std::uint16_t height = 1; height <= 20; ++height) {
    Bytes indexes;
    for (const auto& [first, step] : {std::pair{0, 8}, {4, 8}, {2, 4}, {1, 2}}) {
      for (int y = first; y < height; y += step) {
        indexes.push_back(static_cast<std::uint8_t>(y));
      }
    }
    GifFrame frame{.width = 1, .height = height, .interlaced = true, .codeSize = 8};
    frame.lzw = GifLzwEncode(8, indexes);
    const Bytes pixels = PixelsOfFile(Join({GifHeader(1, height, table), GifImage(frame)}));
    ASSERT_EQ(pixels.size(), height * 4U);
    for (std::size_t row = 0; row < height; ++row) {
      EXPECT_EQ(pixels[4 * row + 2], height - 1 - row) << height;
    }
  }
}

TEST(cGIFparser, AStreamOfTheSignatureOnlyIsNoImage) {
  c32bppDIB image;
  EXPECT_FALSE(Load(image, {'g', 'i', 'f', '8', '9', 'a'}));
  EXPECT_FALSE(Load(image, {'g', 'i', 'f', '8', '9'}));
  EXPECT_FALSE(Load(image, {}));
  EXPECT_EQ(image.handle(), nullptr);
}

TEST(cGIFparser, WithoutAnyTableItIsRefused) {
  EXPECT_EQ(PixelsOfFile(Join({GifHeader(2, 2, {}), GifImage(Frame())})), Bytes());
}

TEST(cGIFparser, AnUnknownBlockIsRefused) {
  EXPECT_EQ(PixelsOfFile(Join({GifHeader(2, 2, kGlobal), {0x55}, GifImage(Frame())})), Bytes());
  EXPECT_EQ(PixelsOfFile(Join({GifHeader(2, 2, kGlobal), GifTrailer(), GifImage(Frame())})), Bytes());
}

TEST(cGIFparser, CutOffAnywhereItIsRefusedAndTheHostEmpty) {
  GifFrame frame = Frame();
  frame.table = kLocal;
  const Bytes file = Join({GifHeader(2, 2, kGlobal), GifComment("c"), GifControl(1), GifImage(frame)});
  for (std::size_t length = 0; length < file.size(); ++length) {
    c32bppDIB image;
    EXPECT_FALSE(Load(image, Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length)))) << length;
    EXPECT_EQ(image.handle(), nullptr) << length;
  }
  EXPECT_NE(PixelsOfFile(file), Bytes());
}

TEST(cGIFparser, BrokenImageDataIsRefusedAndTheHostEmpty) {
  const Bytes broken[] = {
      GifLzwEncode(2, {0, 1, 2}),  // a pixel too few
      {},                          // none
      {0xFF, 0xFF, 0xFF, 0xFF},    // a code that wasn't given out
  };
  for (const Bytes& lzw : broken) {
    for (const int transIndex : {-1, 0}) {
      GifFrame frame = Frame();
      frame.lzw = lzw;
      c32bppDIB image;
      EXPECT_FALSE(Load(image, Join({GifHeader(2, 2, kGlobal), GifControl(transIndex), GifImage(frame)})));
      EXPECT_EQ(image.handle(), nullptr);
    }
  }
  GifFrame frame = Frame();
  frame.codeSize = 9;
  EXPECT_EQ(PixelsOfFile(Join({GifHeader(2, 2, kGlobal), GifImage(frame)})), Bytes());
}

TEST(cGIFparser, AFrameWithoutPixelsIsRefused) {
  GifFrame frame = Frame();
  frame.width = 0;
  EXPECT_EQ(PixelsOfFile(Join({GifHeader(2, 2, kGlobal), GifImage(frame)})), Bytes());
  frame = Frame();
  frame.height = 0;
  EXPECT_EQ(PixelsOfFile(Join({GifHeader(2, 2, kGlobal), GifImage(frame)})), Bytes());
}

TEST(cGIFparser, AFrameOfGigabytesIsRefused) {
  GifFrame frame = Frame();
  frame.width = 65535;
  frame.height = 65535;
  EXPECT_EQ(PixelsOfFile(Join({GifHeader(2, 2, kGlobal), GifImage(frame)})), Bytes());
}

TEST(cGIFparser, IndexesBeyondTheTableOfAnOpaqueFrameAreBlack) {
  GifFrame frame{.width = 2, .height = 1, .codeSize = 3, .lzw = GifLzwEncode(3, {1, 5})};
  EXPECT_EQ(PixelsOfFile(Join({GifHeader(2, 1, kGlobal), GifImage(frame)})), (Bytes{22, 21, 20, 0, 0, 0, 0, 0}));
}

TEST(cGIFparser, IndexesBeyondTheTableOfATransparentFrameReadOnInTheSource) {
  // The table ends at 25; index 5 is at 28, in the control block 21 F9 04 01 0A 00 00 00.
  GifFrame frame{.width = 2, .height = 1, .codeSize = 3, .lzw = GifLzwEncode(3, {1, 5})};
  EXPECT_EQ(PixelsOfFile(Join({GifHeader(2, 1, kGlobal), GifControl(0), GifImage(frame)})),
            (Bytes{22, 21, 20, 255, 0, 10, 1, 255}));
  // Index 200 is behind the end of the source.
  frame.codeSize = 8;
  frame.lzw = GifLzwEncode(8, {1, 200});
  c32bppDIB image;
  EXPECT_FALSE(Load(image, Join({GifHeader(2, 1, kGlobal), GifControl(0), GifImage(frame)})));
  EXPECT_EQ(image.handle(), nullptr);
  // Unless it is the transparent one.
  EXPECT_EQ(PixelsOfFile(Join({GifHeader(2, 1, kGlobal), GifControl(200), GifImage(frame)})),
            (Bytes{22, 21, 20, 255, 0, 0, 0, 0}));
}

TEST(cGIFparser, ASpanOfTheArrayIsReadAlone) {
  const Bytes gif = Join({GifHeader(2, 2, kGlobal), GifControl(0), GifImage(Frame())});
  Bytes array(10, 0xEE);
  Append(array, gif);
  c32bppDIB image;
  ASSERT_TRUE(cGIFparser().LoadStream(array, image, 10, static_cast<std::int32_t>(gif.size())));
  EXPECT_EQ(PixelsOf(image.Pixels()), (Bytes{32, 31, 30, 255, 42, 41, 40, 255, 0, 0, 0, 0, 22, 21, 20, 255}));
  EXPECT_FALSE(cGIFparser().LoadStream(array, image, 10, static_cast<std::int32_t>(gif.size()) - 1));
}

TEST(cGIFparser, ALargePictureComesThroughPixelByPixel) {
  std::vector<GifColour> table(256);
  for (std::size_t i = 0; i < table.size(); ++i) {
    table[i] = {.red = static_cast<std::uint8_t>(i), .green = static_cast<std::uint8_t>(255 - i), .blue = 7};
  }
  constexpr std::uint16_t kWidth = 613;
  constexpr std::uint16_t kHeight = 401;
  Bytes indexes;
  for (std::uint32_t y = 0; y < kHeight; ++y) {
    for (std::uint32_t x = 0; x < kWidth; ++x) {
      indexes.push_back(static_cast<std::uint8_t>((x / 3 * y / 5) ^ x));
    }
  }
  GifFrame frame{.width = kWidth, .height = kHeight, .codeSize = 8, .lzw = GifLzwEncode(8, indexes)};
  const Bytes pixels = PixelsOfFile(Join({GifHeader(1, 1, table), GifControl(9), GifImage(frame)}));
  ASSERT_EQ(pixels.size(), indexes.size() * 4);
  for (std::size_t i = 0; i < indexes.size(); ++i) {
    const std::size_t stored = (kHeight - 1 - i / kWidth) * kWidth + i % kWidth;
    const std::uint8_t index = indexes[i];
    const Bytes expected = index == 9 ? Bytes(4) : Bytes{7, static_cast<std::uint8_t>(255 - index), index, 255};
    ASSERT_EQ(PixelsOf(ByteView(pixels).subspan(4 * stored, 4)), expected) << i;
  }
}

}  // namespace
}  // namespace kelvane
