// What the program holds beside the open document: its folder, the open file's path and date, and the settings.
#pragma once

#include <cstdint>
#include <filesystem>

#include "common/Files.h"
#include "common/Int16.h"

namespace kelvane {

struct Mod {
  // Folder of the program, always ending in a separator. All temporary files lie here.
  std::filesystem::path cAppPath;
  // The open file; empty when none is open.
  std::filesystem::path cCurFile;
  // Date of the open file when it was last recorded.
  FileDate cFileDate = 0;
  // Shows the add buttons, cmdOther and the offset labels, and the entries' types in the page lists.
  bool cExpert = false;

  // Settings.
  bool cFirstColTrans = false;  // import of 4 and 8 bit bitmaps: the first colour becomes transparent
  Int16 cImpt32bitMode;         // import of 32 bit bitmaps: 0 ask, 1 decide by size, 2 always 32 bits
  bool cNoUpdatBak = false;     // make no .bak
  bool cNoUpdatChk = false;     // don't compare the file's date
  bool cNoCompression = false;  // store images and models uncompressed

  // The shape of the sound that is about to be stored, from its dialog to the write engine.
  Int16 vagChannels;              // 1 or 2
  std::int32_t vagSize1 = 0;      // bytes of the left channel's file
  std::int32_t vagSize2 = 0;      // bytes of the right channel's file, 0 in mono
  std::filesystem::path vagPath;  // the file that holds the data; empty: cancelled

  // The path of a temporary file, all of which lie beside the program under fixed names.
  [[nodiscard]] std::filesystem::path TempPath(const char* name) const { return cAppPath / name; }
};

}  // namespace kelvane
