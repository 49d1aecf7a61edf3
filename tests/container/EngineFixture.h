// An open file with all its tables, and the arithmetic of expected files.
#pragma once

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "common/Files.h"
#include "container/GenScan.h"
#include "container/GenWrite.h"
#include "container/RcoFormat.h"
#include "pages/EntryScan.h"
#include "support/RcoBuilder.h"
#include "support/ScriptedPrompts.h"
#include "support/TempFolder.h"
#include "text/TextScan.h"

namespace kelvane::test {

// What the file at `path` says, scanned from nothing.
inline RcoDocument Scanned(const std::filesystem::path& path) {
  RcoDocument document;
  RcoFile file(path);
  document.labelBase = file.ReadI32At(rco::hdrLabelOffset);
  file.ReadLongsAt(rco::kDataAreaLongsAt, document.dataAreas);
  ScanGenRsc(file, document);
  ScanTextRsc(file, document);
  const std::int32_t tablesEnd = file.ReadI32At(rco::hdrImagePtrs);
  file.Seek(rco::hdrPagePtrs);
  ScanEntryTable(file, tablesEnd, document, true, false);
  file.Seek(rco::hdrAnimPtrs);
  ScanEntryTable(file, tablesEnd, document, false, false);
  return document;
}

// A file in which fields are patched where they stand and bytes put in between; positions are of the file as it is.
struct Expected {
  Bytes bytes;

  [[nodiscard]] std::int32_t Long(std::int64_t at) const { return ReadI32(bytes, at); }
  void Set(std::int64_t at, std::int32_t value) { WriteI32(bytes, at, value); }
  void SetShort(std::int64_t at, std::int16_t value) { WriteI16(bytes, at, value); }
  void Add(std::int64_t at, std::int32_t delta) { Set(at, Long(at) + delta); }
  void Insert(std::int64_t at, const Bytes& inserted) {
    bytes.insert(bytes.begin() + at, inserted.begin(), inserted.end());
  }
};

// The little-endian bytes of 32-bit words.
inline Bytes Longs(const std::vector<std::int32_t>& values) {
  Bytes bytes(values.size() * 4);
  for (std::size_t i = 0; i < values.size(); ++i) {
    WriteI32(bytes, static_cast<std::int64_t>(i) * 4, values[i]);
  }
  return bytes;
}

// `size` bytes that tell `seed`.
inline Bytes Filled(int size, int seed) {
  Bytes bytes(static_cast<std::size_t>(size));
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    bytes[i] = static_cast<std::uint8_t>(seed * 16 + static_cast<int>(i % 13) + 1);
  }
  return bytes;
}

class EngineFixture : public ::testing::Test {
 protected:
  void Open(const Bytes& content) {
    mod.cCurFile = folder.Write("screen.rco", content);
    document = Scanned(mod.cCurFile);
    original = content;
  }

  [[nodiscard]] Bytes Content() const { return ReadWholeFile(mod.cCurFile); }
  [[nodiscard]] WriteContext Context() { return {mod, document, prompts, watch}; }

  // The records in memory are those of the file. Of a sound, what the scan reads at E+42 and E+52 belongs to the
  // channels, which the records don't follow.
  void ExpectRecordsAreTheFiles() const {
    RcoDocument scanned = Scanned(mod.cCurFile);
    ASSERT_EQ(scanned.genRsc.size(), document.genRsc.size());
    for (std::size_t i = 0; i < scanned.genRsc.size(); ++i) {
      GenRsc expected = scanned.genRsc[i];
      if (expected.rscKind == Int16(rco::kKindVag)) {
        expected.rscCompression = document.genRsc[i].rscCompression;
        expected.unpackedSize = document.genRsc[i].unpackedSize;
      }
      EXPECT_TRUE(document.genRsc[i] == expected) << "record " << i;
    }
    EXPECT_EQ(document.dataAreas, scanned.dataAreas);
    EXPECT_EQ(document.textRsc, scanned.textRsc);
    EXPECT_TRUE(document.pageRecs == scanned.pageRecs);
    EXPECT_TRUE(document.animRecs == scanned.animRecs);
  }

  TempFolder folder;
  Mod mod;
  RcoDocument document;
  ScriptedPrompts prompts;
  ScriptedWatch watch;
  Bytes original;
};

}  // namespace kelvane::test
