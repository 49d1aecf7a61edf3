#include <gtest/gtest.h>
#include <zlib.h>

#include "builder/HandBytes.h"
#include "support/RcoBuilder.h"

namespace kelvane::test {
namespace {

RcoBuilder SmallFile() {
  RcoBuilder b;
  b.AddImage({.label = "tex_background_of_the_first_screen", .data = {1, 2, 3, 4, 5}});
  b.AddVag({.label = "snd", .channel1 = {6, 7, 8}});
  return b;
}

// What zlib itself makes of a raw deflate stream.
Bytes Inflated(ByteView stream, std::size_t length) {
  Bytes input(stream.begin(), stream.end());
  Bytes output(length + 1);
  z_stream state{};
  EXPECT_EQ(inflateInit2(&state, -15), Z_OK);
  state.next_in = input.data();
  state.avail_in = static_cast<uInt>(input.size());
  state.next_out = output.data();
  state.avail_out = static_cast<uInt>(output.size());
  EXPECT_EQ(inflate(&state, Z_FINISH), Z_STREAM_END);
  output.resize(state.total_out);
  inflateEnd(&state);
  return output;
}

TEST(PackedHead, TheHeadIsDeflatedAndTheDataAreasMove) {
  RcoBuilder b = SmallFile();
  const BuiltRco plain = b.Build();
  b.Options().deflatedHead = true;
  const BuiltRco packed = b.Build();
  // The plain file: image root 204, entry 244, VAG root 296, entry 336, pointers 404, labels 412 (36 + 4), data 452.
  ASSERT_EQ(plain.layout.headEnd, 452);
  const std::uint32_t packedLength = ReadU32(packed.bytes, 164);
  EXPECT_EQ(packedLength % 4, 0U);
  EXPECT_EQ(ReadU32(packed.bytes, 168), 452U - 164U);
  EXPECT_EQ(packed.bytes.size(), 176 + packedLength + 12);

  Bytes header(plain.bytes.begin(), plain.bytes.begin() + 164);
  WriteU32(header, 4, 144);
  WriteU32(header, 12, 1);
  WriteU32(header, 128, 176 + packedLength);
  WriteU32(header, 136, 176 + packedLength + 8);
  EXPECT_EQ(Bytes(packed.bytes.begin(), packed.bytes.begin() + 164), header);
  EXPECT_EQ(ReadU32(packed.bytes, 144), kNo);

  EXPECT_EQ(ReadU16(packed.bytes, 176), 0xDA78);
  EXPECT_EQ(Inflated(ByteView(packed.bytes).subspan(178), 288),
            Bytes(plain.bytes.begin() + 164, plain.bytes.begin() + 452));
  EXPECT_EQ(Bytes(packed.bytes.end() - 12, packed.bytes.end()), (Bytes{1, 2, 3, 4, 5, 0, 0, 0, 6, 7, 8, 0}));
  ASSERT_TRUE(packed.layout.packed);
  EXPECT_EQ(packed.layout.packed->dataShift, static_cast<std::int32_t>(176 + packedLength) - 452);
}

TEST(PackedHead, WithoutPaddingTheBlockIsAsLongAsItsStream) {
  RcoBuilder b = SmallFile();
  b.Options().deflatedHead = true;
  b.Options().padPackedBlock = false;
  const Bytes packed = b.Build().bytes;
  const std::uint32_t packedLength = ReadU32(packed, 164);
  const ByteView stream = ByteView(packed).subspan(178, packedLength - 2);
  EXPECT_EQ(Inflated(stream, 288).size(), 288U);
  EXPECT_EQ(RawDeflate(Inflated(stream, 288)).size(), stream.size());
  EXPECT_EQ(packed.size(), 176 + packedLength + 12);
}

TEST(Deflate, WrappersBeginWith78DAAndEndAsTold) {
  const Bytes text(300, 'a');
  const Bytes raw = RawDeflate(text);
  EXPECT_EQ(Inflated(raw, 300), text);
  EXPECT_EQ(DeflateWrapped(text), Joined({{0x78, 0xDA}, raw}));
  // Adler-32 of 300 times 'a' (97): a = 1 + 300 * 97 = 29101; b = the sum of 1 + 97n for n = 1..300 modulo 65521.
  // 300 + 97 * 45150 = 4379850 = 66 * 65521 + 55464, that is D8A8.
  EXPECT_EQ(DeflateWrappedWithAdler(text), Joined({{0x78, 0xDA}, raw, {0xD8, 0xA8, 0x71, 0xAD}}));
}

}  // namespace
}  // namespace kelvane::test
