#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "common/Files.h"
#include "resources/Codec.h"
#include "support/ChildProcess.h"
#include "support/Deflate.h"
#include "support/DeflateBits.h"
#include "support/Failures.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;
using test::DeflateBits;
using test::NumberOf;
using test::RawDeflate;
using test::TempFolder;

constexpr std::size_t kChunk = 65536;
const Int16 kLevel = 9;

Bytes Joined(std::initializer_list<ByteView> parts) {
  Bytes all;
  for (const ByteView part : parts) {
    Append(all, part);
  }
  return all;
}

Bytes TextBytes(std::string_view text) {
  return {text.begin(), text.end()};
}

// Bytes that look alike nowhere for long and yet shrink a little, as no byte has its high bit set.
Bytes Varied(std::size_t count) {
  Bytes bytes(count);
  std::uint32_t state = 1;
  for (std::uint8_t& byte : bytes) {
    state = state * 1664525 + 1013904223;
    byte = static_cast<std::uint8_t>(state >> 25);
  }
  return bytes;
}

// Bytes that no compressor makes shorter.
Bytes Noise(std::size_t count) {
  Bytes bytes(count);
  std::uint32_t state = 7;
  for (std::uint8_t& byte : bytes) {
    state = state * 1664525 + 1013904223;
    byte = static_cast<std::uint8_t>(state >> 24);
  }
  return bytes;
}

const Bytes kHead = {0x78, 0xDA};
const Bytes kEmptyStream = {0x03, 0x00};
// A block of the type 3, which doesn't exist.
const Bytes kBadBlock = {0x07};

// A stream without the head that it is written behind.
Bytes Headless(const Bytes& wrapper) {
  return {wrapper.begin() + 2, wrapper.end()};
}

// A block that stores bytes as they are; it begins on a byte and ends on one.
Bytes StoredBlock(ByteView data, bool last) {
  return Headless(DeflateBits().Block(last, 0).Stored(data).Take());
}

// Runs DecompressFile on a source and tells its result and what it left.
struct Decompressed {
  bool result = false;
  Bytes left;
};
Decompressed Decompress(ByteView source) {
  const TempFolder folder;
  const fs::path from = folder.Write("source", source);
  const fs::path to = folder.Write("destination", TextBytes("what stood here before"));
  const bool result = DecompressFile(from, to);
  EXPECT_EQ(ReadWholeFile(from), Bytes(source.begin(), source.end()));
  return {result, ReadWholeFile(to)};
}

TEST(DecompressFile, APlainGimComesOutByteForByteEqual) {
  const Bytes gim = Joined({TextBytes("MIG.00.1PSP"), Bytes{0}, Noise(300)});
  const Decompressed out = Decompress(gim);
  EXPECT_TRUE(out.result);
  EXPECT_EQ(out.left, gim);
}

TEST(DecompressFile, SoDoesAFileThatBeginsWithOm) {
  const Bytes model = Joined({TextBytes("OMG.00.1PSP"), Bytes{0}, Noise(70000)});
  const Decompressed out = Decompress(model);
  EXPECT_TRUE(out.result);
  EXPECT_EQ(out.left, model);
}

TEST(DecompressFile, TwoBytesThatArePlainPassThrough) {
  for (const char* text : {"MI", "OM"}) {
    const Decompressed out = Decompress(TextBytes(text));
    EXPECT_TRUE(out.result) << text;
    EXPECT_EQ(out.left, TextBytes(text));
  }
}

TEST(DecompressFile, OnlyTheFirstTwoBytesInTheirOrderTellPlainData) {
  for (const char* text : {"IM", "MO", "mi", "Mi", "xMI"}) {
    EXPECT_FALSE(IsPlainData(TextBytes(text))) << text;
  }
  EXPECT_FALSE(IsPlainData(TextBytes("M")));
  EXPECT_FALSE(IsPlainData({}));
  EXPECT_TRUE(IsPlainData(TextBytes("MIxyz")));
  EXPECT_TRUE(IsPlainData(TextBytes("OMxyz")));
}

TEST(DecompressFile, AStoredEntryThatWasNeverCompressedIsFedToInflateAndFails) {
  // Behind the two bytes passed over stands 4E: a block of the type 3.
  const Bytes png = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A, 0, 0, 0, 13};
  const Decompressed out = Decompress(png);
  EXPECT_FALSE(out.result);
  EXPECT_EQ(out.left, Bytes());
}

TEST(DecompressFile, AWrapperUnpacks) {
  const Bytes data = Varied(5000);
  const Decompressed out = Decompress(Joined({kHead, RawDeflate(data)}));
  EXPECT_TRUE(out.result);
  EXPECT_EQ(out.left, data);
}

TEST(DecompressFile, AWrapperWithOtherHeadBytesIsReadAllTheSame) {
  const Bytes data = Varied(1000);
  for (const Bytes& head : {Bytes{0x78, 0x9C}, Bytes{0, 0}, Bytes{0xFF, 0xFF}, Bytes{'P', 'K'}}) {
    const Decompressed out = Decompress(Joined({head, RawDeflate(data)}));
    EXPECT_TRUE(out.result);
    EXPECT_EQ(out.left, data);
  }
}

TEST(DecompressFile, AnAdler32BehindTheStreamChangesNothing) {
  const Bytes data = Varied(1000);
  const Bytes wrong = {0xDE, 0xAD, 0xBE, 0xEF};
  const Decompressed out = Decompress(Joined({kHead, RawDeflate(data), wrong}));
  EXPECT_TRUE(out.result);
  EXPECT_EQ(out.left, data);
}

TEST(DecompressFile, ExactlyOneChunkOfDataTakesTwoPassesAndIsTrue) {
  const Bytes data = Varied(kChunk);
  const Decompressed out = Decompress(Joined({kHead, RawDeflate(data)}));
  EXPECT_TRUE(out.result);
  EXPECT_EQ(out.left, data);
}

TEST(DecompressFile, DataOfEverySizeAroundAChunkUnpackWhole) {
  for (const std::size_t size : {std::size_t{1}, kChunk - 1, kChunk + 1, 2 * kChunk - 1, 2 * kChunk, 3 * kChunk + 77}) {
    const Bytes data = Varied(size);
    const Decompressed out = Decompress(Joined({kHead, RawDeflate(data)}));
    EXPECT_TRUE(out.result) << size;
    EXPECT_EQ(out.left, data) << size;
  }
}

TEST(DecompressFile, BadDataAtOnceAreFalseAndLeaveAnEmptyFile) {
  const Decompressed out = Decompress(Joined({kHead, kBadBlock}));
  EXPECT_FALSE(out.result);
  EXPECT_EQ(out.left, Bytes());
}

TEST(DecompressFile, WhatCameOutInTheSameChunkAsBadDataIsLost) {
  const Decompressed out = Decompress(Joined({kHead, StoredBlock(Varied(100), false), kBadBlock}));
  EXPECT_FALSE(out.result);
  EXPECT_EQ(out.left, Bytes());
}

TEST(DecompressFile, BadDataBehindAChunkAreTrueAndLeaveTheChunksSoFar) {
  const Bytes first = Varied(60000);
  const Bytes second = Noise(5600);
  const Bytes source = Joined({kHead, StoredBlock(first, false), StoredBlock(second, false), kBadBlock});
  Bytes chunk = Joined({first, second});
  chunk.resize(kChunk);  // 64 bytes of the second chunk were unpacked too, and are dropped
  const Decompressed out = Decompress(source);
  EXPECT_TRUE(out.result);
  EXPECT_EQ(out.left, chunk);
}

TEST(DecompressFile, AStreamCutOffBehindAChunkIsTrueAndLeavesAllThatCameOut) {
  const Bytes first = Varied(60000);
  const Bytes second = Noise(6000);
  const Bytes whole = Joined({kHead, StoredBlock(first, false), StoredBlock(second, true)});
  const Decompressed out = Decompress(ByteView(whole).first(whole.size() - 100));
  EXPECT_TRUE(out.result);
  EXPECT_EQ(out.left, Joined({first, ByteView(second).first(5900)}));
}

TEST(DecompressFile, AStreamCutOffInTheFirstChunkIsTrueToo) {
  const Bytes whole = Joined({kHead, StoredBlock(Varied(100), true)});
  const Decompressed out = Decompress(ByteView(whole).first(whole.size() - 1));
  EXPECT_TRUE(out.result);
  Bytes expected = Varied(100);
  expected.pop_back();
  EXPECT_EQ(out.left, expected);
}

TEST(DecompressFile, AStreamCutOffBeforeItsFirstByteIsFalse) {
  const Bytes whole = Joined({kHead, StoredBlock(Varied(100), true)});
  const Decompressed out = Decompress(ByteView(whole).first(kHead.size() + 5));
  EXPECT_FALSE(out.result);
  EXPECT_EQ(out.left, Bytes());
}

TEST(DecompressFile, AnEmptyStreamIsFalseAndLeavesAnEmptyFile) {
  const Decompressed out = Decompress(Joined({kHead, kEmptyStream}));
  EXPECT_FALSE(out.result);
  EXPECT_EQ(out.left, Bytes());
}

TEST(DecompressFile, ASourceBelow3BytesIsFailure9WithAnEmptyFileLeft) {
  for (const Bytes& source : {Bytes{}, Bytes{'M'}, Bytes{0x78, 0xDA}}) {
    const TempFolder folder;
    folder.Write("source", source);
    folder.Write("destination", Noise(10));
    EXPECT_EQ(NumberOf([&] { DecompressFile(folder / "source", folder / "destination"); }), 9) << source.size();
    EXPECT_EQ(ReadWholeFile(folder / "destination"), Bytes());
  }
}

TEST(DecompressFile, FailuresOfFilesGoToTheCaller) {
  const TempFolder folder;
  folder.Write("source", Joined({kHead, RawDeflate(Varied(100))}));
  fs::create_directory(folder / "folder");
  EXPECT_EQ(NumberOf([&] { DecompressFile(folder / "none", folder / "out"); }), 53);
  EXPECT_EQ(NumberOf([&] { DecompressFile(folder / "source", folder / "none/out"); }), 76);
  EXPECT_EQ(NumberOf([&] { DecompressFile(folder / "source", folder / "folder"); }), 75);
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"folder", "source"}));
}

TEST(InflateChunks, AFullDiskUnderTheSinkIsFailure61) {
  ASSERT_TRUE(fs::exists("/dev/full")) << "this test needs /dev/full";
  EXPECT_EQ(NumberOf([&] {
              InflateChunks(Joined({kHead, RawDeflate(Varied(100))}),
                            [](ByteView chunk) { WriteWholeFile("/dev/full", chunk); });
            }),
            61);
}

TEST(DecompressFile, ASourceThatIsTheDestinationTooIsFailure70AndStaysAsItWas) {
  const TempFolder folder;
  for (const Bytes& source :
       {Joined({kHead, RawDeflate(Varied(100))}), Joined({kHead, kBadBlock}), TextBytes("MIG.")}) {
    folder.Write("file", source);
    EXPECT_EQ(NumberOf([&] { DecompressFile(folder / "file", folder / "." / "file"); }), 70);
    EXPECT_EQ(ReadWholeFile(folder / "file"), source);
  }
}

TEST(DecompressFile, ALinkAtTheDestinationIsReplacedAndNotFollowed) {
  const TempFolder folder;
  folder.Write("source", Joined({kHead, RawDeflate(Varied(100))}));
  folder.Write("precious", Noise(5));
  fs::create_symlink(folder / "precious", folder / "link");
  EXPECT_TRUE(DecompressFile(folder / "source", folder / "link"));
  EXPECT_FALSE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(ReadWholeFile(folder / "precious"), Noise(5));
}

TEST(InflateChunks, EveryChunkButTheLastIsWhole) {
  std::vector<std::size_t> sizes;
  EXPECT_TRUE(InflateChunks(Joined({kHead, RawDeflate(Varied(2 * kChunk + 5))}),
                            [&](ByteView chunk) { sizes.push_back(chunk.size()); }));
  EXPECT_EQ(sizes, (std::vector<std::size_t>{kChunk, kChunk, 5}));
}

TEST(InflateChunks, AStreamThatReachesTwoGibibytesIsFailure6) {
  // A literal and then nothing but repetitions of 258 bytes: 13 bits each, so that the stream repeats every 13 bytes.
  DeflateBits bits;
  bits.Block(true, 1).FixedSymbol(0);
  for (int i = 0; i < 16; ++i) {
    bits.FixedSymbol(285).FixedDistance(0);  // 258 bytes from 1 byte back
  }
  constexpr std::size_t kPeriod = 13;
  constexpr std::int64_t kLimit = std::int64_t{1} << 31;
  Bytes stream = Headless(bits.Take());
  stream.resize(2 + kPeriod);
  while (static_cast<std::int64_t>(stream.size()) < (kLimit / 258 + 258) * 13 / 8) {
    stream.push_back(stream[stream.size() - kPeriod]);
  }
  std::int64_t came = 0;
  EXPECT_EQ(NumberOf([&] {
              InflateChunks(Joined({kHead, stream}),
                            [&](ByteView chunk) { came += static_cast<std::int64_t>(chunk.size()); });
            }),
            6);
  EXPECT_EQ(came, kLimit);
}

// Runs CompressFile on a source and gives what it left at the destination.
Bytes Compress(ByteView source) {
  const TempFolder folder;
  folder.Write("source", source);
  EXPECT_TRUE(CompressFile(folder / "source", folder / "destination", kLevel));
  return ReadWholeFile(folder / "destination");
}

TEST(CompressFile, WritesTheHeadAndARawStreamAndNoChecksum) {
  const Bytes data = Varied(5000);
  EXPECT_EQ(Compress(data), Joined({kHead, RawDeflate(data)}));
}

TEST(CompressFile, DecompressFileReadsItBackByteForByte) {
  for (const std::size_t size : {std::size_t{2000}, kChunk, 3 * kChunk + 1}) {
    const Bytes data = Varied(size);
    const Bytes wrapper = Compress(data);
    ASSERT_LT(wrapper.size(), size);
    const Decompressed out = Decompress(wrapper);
    EXPECT_TRUE(out.result) << size;
    EXPECT_EQ(out.left, data) << size;
  }
}

TEST(CompressFile, ASourceOf9BytesIsRefusedWithoutAnyFileBeingCreated) {
  const TempFolder folder;
  folder.Write("source", Bytes(9));
  EXPECT_FALSE(CompressFile(folder / "source", folder / "destination", kLevel));
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"source"});
}

TEST(CompressFile, ASourceOf10BytesIsTaken) {
  // Ten zeros shrink: a literal and a repetition of nine.
  EXPECT_EQ(Compress(Bytes(10)), Joined({kHead, RawDeflate(Bytes(10))}));
}

TEST(CompressFile, ASourceThatDoesNotShrinkIsCutOffAndCountsAsDone) {
  const Bytes noise = Noise(1000);
  const Bytes whole = RawDeflate(noise);
  ASSERT_GT(whole.size(), noise.size());
  EXPECT_EQ(Compress(noise), Joined({kHead, ByteView(whole).first(noise.size())}));
}

TEST(CompressFile, SourceAndDestinationMayBeTheSameFile) {
  const TempFolder folder;
  const fs::path path = folder.Write("file", Varied(3000));
  EXPECT_TRUE(CompressFile(path, path, kLevel));
  EXPECT_EQ(ReadWholeFile(path), Joined({kHead, RawDeflate(Varied(3000))}));
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"file"});
}

TEST(CompressFile, AFileThatIsSourceAndDestinationIsNotLostToAFullDisk) {
  const TempFolder folder;
  const fs::path path = folder.Write("file", Varied(3000));
  const auto compress = [&] {
    if (!CompressFile(path, folder / "." / "file", kLevel)) {
      throw RuntimeFailure(FailureCode::DiskFull);
    }
  };
  for (const int room : {0, 1, 1000}) {
    EXPECT_EQ(test::FailureWithDiskOf(room, compress), 61) << room;
    EXPECT_EQ(ReadWholeFile(path), Varied(3000)) << room;
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"file"});
  }
  EXPECT_EQ(test::FailureWithDiskOf(3000, compress), 0);
  EXPECT_EQ(ReadWholeFile(path), Joined({kHead, RawDeflate(Varied(3000))}));
}

TEST(CompressFile, ALinkToTheSourceIsReplacedAndTheSourceStays) {
  const TempFolder folder;
  const fs::path path = folder.Write("file", Varied(3000));
  fs::create_symlink(path, folder / "link");
  EXPECT_TRUE(CompressFile(path, folder / "link", kLevel));
  EXPECT_FALSE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(ReadWholeFile(folder / "link"), Joined({kHead, RawDeflate(Varied(3000))}));
  EXPECT_EQ(ReadWholeFile(path), Varied(3000));
}

TEST(CompressFile, ALongerFileAtTheDestinationIsReplacedWhole) {
  const TempFolder folder;
  folder.Write("source", Bytes(100));
  folder.Write("destination", Noise(500));
  EXPECT_TRUE(CompressFile(folder / "source", folder / "destination", kLevel));
  EXPECT_EQ(ReadWholeFile(folder / "destination"), Joined({kHead, RawDeflate(Bytes(100))}));
}

TEST(CompressFile, TheLevelIsTheCallers) {
  const Bytes data = Varied(20000);
  for (const int level : {0, 1, 6, 9}) {
    const std::optional<Bytes> wrapper = DeflateToWrapper(data, level);
    ASSERT_TRUE(wrapper.has_value()) << level;
    Bytes expected = Joined({kHead, RawDeflate(data, level)});
    expected.resize(std::min(expected.size(), data.size() + 2));
    EXPECT_EQ(*wrapper, expected) << level;
  }
}

TEST(CompressFile, ALevelThatZlibRefusesIsFalseWithTheDestinationAsItWas) {
  const TempFolder folder;
  folder.Write("source", Bytes(100));
  folder.Write("destination", Noise(5));
  for (const int level : {10, -2}) {
    EXPECT_FALSE(CompressFile(folder / "source", folder / "destination", level)) << level;
  }
  EXPECT_EQ(ReadWholeFile(folder / "destination"), Noise(5));
}

TEST(CompressFile, AnyOtherFailureIsFalse) {
  const TempFolder folder;
  folder.Write("source", Bytes(100));
  fs::create_directory(folder / "folder");
  EXPECT_FALSE(CompressFile(folder / "none", folder / "destination", kLevel));
  EXPECT_FALSE(CompressFile(folder / "folder", folder / "destination", kLevel));
  EXPECT_FALSE(CompressFile(folder / "source", folder / "none/destination", kLevel));
  EXPECT_FALSE(CompressFile(folder / "source", folder / "folder", kLevel));
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"folder", "source"}));
}

TEST(DeflateToWrapper, NothingCanBeMadeOfNothing) {
  EXPECT_FALSE(DeflateToWrapper({}, kLevel).has_value());
}

}  // namespace
}  // namespace kelvane
