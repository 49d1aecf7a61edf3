// An open file of every kind of resource, with all that a replacement is handed.
#pragma once

#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "common/Files.h"
#include "resources/OpenedRco.h"
#include "resources/Replacement.h"
#include "support/Deflate.h"
#include "support/RcoBuilder.h"

namespace kelvane::test {

// The general resources of a file, by row.
struct Screen {
  std::vector<ImageSpec> images = {};
  std::vector<VagSpec> vags = {};
  std::vector<GmoSpec> gmos = {};

  [[nodiscard]] RcoBuilder Builder() const {
    RcoBuilder builder;
    for (const ImageSpec& image : images) {
      builder.AddImage(image);
    }
    for (const VagSpec& vag : vags) {
      builder.AddVag(vag);
    }
    for (const GmoSpec& gmo : gmos) {
      builder.AddGmo(gmo);
    }
    return builder;
  }
  [[nodiscard]] Bytes Built() const { return Builder().Build().bytes; }
};

// The rows of FullScreen. The entries of kLastGim, kStereo and kLastModel are the last of their tables.
enum FullRow : int { kPng, kJpg, kTif, kGif, kBmp, kGim, kPlainGim, kLastGim, kMono, kStereo, kModel, kLastModel };

inline Screen FullScreen() {
  Screen screen;
  screen.images = {{.label = "png", .format = 0, .data = SomeBytes(21, 1), .unpackedSize = 21},
                   {.label = "jpg", .format = 1, .data = SomeBytes(22, 2)},
                   {.label = "tif", .format = 2, .data = SomeBytes(23, 3)},
                   {.label = "gif", .format = 3, .data = SomeBytes(24, 4)},
                   {.label = "bmp", .format = 4, .data = SomeBytes(25, 5), .unpackedSize = 25},
                   {.label = "gim", .compression = 1, .data = SomeBytes(26, 6), .unpackedSize = 1006},
                   {.label = "plain", .data = SomeBytes(27, 7), .unpackedSize = 1007},
                   {.label = "last", .compression = 1, .data = SomeBytes(28, 8), .unpackedSize = 1008}};
  screen.vags = {{.label = "mono", .channel1 = SomeBytes(29, 9)},
                 {.label = "stereo", .channel1 = SomeBytes(30, 10), .channel2 = SomeBytes(31, 11)}};
  screen.gmos = {{.label = "model", .compression = 1, .data = SomeBytes(32, 12), .unpackedSize = 1012},
                 {.label = "lastmodel", .compression = 1, .data = SomeBytes(33, 13), .unpackedSize = 1013}};
  return screen;
}

class ReplaceFixture : public ::testing::Test, protected OpenedRco {
 protected:
  // Opens a file of these resources; `screen` keeps them.
  void OpenScreen(const Screen& described) {
    screen = described;
    builder = screen.Builder();
    Open();
  }

  [[nodiscard]] WriteContext Writing() { return {mod, document, prompts, watch}; }
  [[nodiscard]] ReplaceContext Context() {
    return {.write = Writing(), .pictures = nullptr, .progress = progress, .refresh = [this] {
              ++refreshed;
              if (onRefresh) {
                onRefresh();
              }
            }};
  }

  [[nodiscard]] Bytes Content() const { return ReadWholeFile(mod.cCurFile); }
  [[nodiscard]] std::filesystem::path Backup() const { return home / "page.rco.bak"; }

  // Neither the file nor the records were touched, and there is no backup.
  void ExpectNothingChanged() {
    EXPECT_TRUE(Content() == built.bytes);
    EXPECT_FALSE(FileExists(Backup()));
    EXPECT_TRUE(watch.Calls().empty());
    ExpectRecordsAreTheFiles();
  }

  // The file is what would have been built of `expected`, and the records are the file's.
  void ExpectFileOf(const Screen& expected) {
    EXPECT_TRUE(Content() == expected.Built());
    ExpectRecordsAreTheFiles();
  }

  // Of a sound, the scan reads fields of the channels that the records don't follow.
  void ExpectRecordsAreTheFiles() {
    const RcoDocument scanned = ScannedResources(mod.cCurFile);
    ASSERT_EQ(document.genRsc.size(), scanned.genRsc.size());
    for (std::size_t i = 0; i < scanned.genRsc.size(); ++i) {
      GenRsc expected = scanned.genRsc[i];
      if (expected.rscKind == Int16(2)) {
        expected.rscCompression = document.genRsc[i].rscCompression;
        expected.unpackedSize = document.genRsc[i].unpackedSize;
      }
      EXPECT_TRUE(document.genRsc[i] == expected) << "record " << i;
    }
    EXPECT_EQ(document.dataAreas, scanned.dataAreas);
  }

  Screen screen;
  ScriptedWatch watch;
  ScriptedProgress progress;
  int refreshed = 0;
  std::function<void()> onRefresh;
};

// A stereo sound as it is stored, without what pads its end.
inline Bytes Merged(Bytes left, const Bytes& right) {
  left.resize((left.size() + 3) / 4 * 4);
  Append(left, right);
  return left;
}

}  // namespace kelvane::test
