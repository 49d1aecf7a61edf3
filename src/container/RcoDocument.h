// The state of the open file: its records, and the lines and texts that the window and the command line show.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "common/Int16.h"

namespace kelvane {

// One general resource.
struct GenRsc {
  std::int32_t dataOffset = 0;    // inside its data area
  std::int32_t dataSize = 0;      // as stored, without padding
  Int16 rscKind;                  // 1 image, 2 VAG, 3 GMO
  Int16 rscFormat;                // images: 0 PNG, 1 JPG, 2 TIF, 3 GIF, 4 BMP, 5 GIM
  Int16 rscCompression;           // 0 none, 1 zlib, 2 RLZ; of a VAG the number of channels
  std::int32_t unpackedSize = 0;  // -1: the entry has no such field
  std::int32_t entryPos = 0;      // file offset of the entry's label field: the entry's start + 4
  std::int32_t labelOffset = 0;   // relative to labelBase

  bool operator==(const GenRsc&) const = default;
};

// One text in one language, in the file's own order of fields.
struct TextRec {
  std::int32_t textLabel = 0;   // relative to labelBase
  std::int32_t textLength = 0;  // bytes, NULs included; 0 or less: empty
  std::int32_t textOffset = 0;  // relative to textDataBase

  bool operator==(const TextRec&) const = default;
};

// One line of lstPage or lstAnim.
struct EntryRec {
  std::int32_t recLabel = 0;
  std::int32_t recSize = 0;  // whole length of the entry in bytes
  std::int32_t recPos = 0;   // file offset
  std::int32_t recType = 0;  // the word at the entry's start
  std::int32_t recDepth = 0;

  bool operator==(const EntryRec&) const = default;
};

// The lines of a list or combo box and which of them is selected.
class ListLines {
 public:
  [[nodiscard]] const std::vector<std::string>& Lines() const { return lines_; }
  [[nodiscard]] int Count() const { return static_cast<int>(lines_.size()); }
  // -1: none.
  [[nodiscard]] int Selected() const { return selected_; }
  // The text of a line; empty for a row that the list doesn't have.
  [[nodiscard]] const std::string& Text(int row) const;
  // Changes with every change of a line, so that a view knows when to read them anew.
  [[nodiscard]] unsigned Revision() const { return revision_; }

  void Clear();
  void Add(std::string line);
  // Replaces a line; failure 9 for a row that the list doesn't have.
  void Set(int row, std::string line);
  // Failure 5 for a row that the list doesn't have; -1 takes the selection away.
  void Select(int row);

 private:
  std::vector<std::string> lines_;
  int selected_ = -1;
  unsigned revision_ = 0;
};

// What tab 0 shows beside its list.
struct GeneralDisplay {
  std::string lblGenItemNo;
  std::string lblDim = "尺寸:未知";
  std::string lblGenCompr;
  std::string lblGenOffsetEntry;
  std::string lblGenOffsetData;
  bool lblPreviewFailVisible = false;
  int shpResWidth = 0;  // pixels
  int shpResHeight = 0;
};

// What tab 1 shows beside its lists.
struct TextDisplay {
  std::string lblTxtIdx;
  std::u16string txt;        // up to its first NUL, with CR LF line breaks
  bool enabled = false;      // txt, cmdTextChange and cmdTextReset
  unsigned txtRevision = 0;  // changes whenever txt is set, also to the same text
  // Changes whenever the whole of txt is to be selected and txt is to get the focus.
  unsigned selectAllRevision = 0;
};

// What tab 2 and tab 3 show beside their lists.
struct EntryDisplay {
  bool picPagePosVisible = false;
  std::array<std::string, 13> txtPageOpt;
  unsigned txtPageOptRevision = 0;  // changes whenever txtPageOpt is set
  Int16 pageDataStart;              // index of the first word shown in lstPageData
  bool lstPageDataEnabled = false;
  bool cmdPageChangeEnabled = false;
  bool lstAnimDataEnabled = false;
  bool cmdAnimChangeEnabled = false;
};

struct RcoDocument {
  // The main form's caption.
  std::string caption = "Kelvane Editor MOD(by Orrelin)";

  // Images first, then sounds, then models.
  std::vector<GenRsc> genRsc;
  Int16 genCount;
  // By language, then by text.
  std::vector<std::vector<TextRec>> textRsc;
  Int16 textCount;
  std::uint16_t langCount = 0;
  std::vector<std::int32_t> langPos;  // file offset of each language record
  std::int32_t labelBase = 0;
  std::int32_t textDataBase = 0;
  // Image offset and length, VAG offset and length, GMO offset and length.
  std::array<std::int32_t, 6> dataAreas{};
  std::vector<EntryRec> pageRecs;
  Int16 pageCount;
  std::vector<EntryRec> animRecs;
  Int16 animCount;  // top-level animations only

  ListLines lst;
  ListLines lstText;
  ListLines cboTextLang;
  ListLines lstPage;
  ListLines lstAnim;
  ListLines lstPageData;
  ListLines lstAnimData;

  GeneralDisplay general;
  TextDisplay text;
  EntryDisplay entries;
  std::string lastSearch;  // the last pattern of the text search, lower-cased
};

}  // namespace kelvane
