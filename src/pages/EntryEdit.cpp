#include "pages/EntryEdit.h"

#include <bit>

#include "common/Bytes.h"
#include "common/Numbers.h"
#include "container/FileBracket.h"
#include "container/RcoFile.h"
#include "container/RcoFormat.h"
#include "pages/EntryDisplay.h"
#include "pages/PlainFloat.h"

namespace kelvane {

namespace {

// A new value for a word, and the text of the list's row that it was chosen by.
struct NewValue {
  std::int32_t word = 0;
  std::string cEditText;
};

std::int32_t WordPosition(const EntryRec& record, std::int32_t index) {
  return CheckedInt32(std::int64_t{record.recPos} + rco::kEntryHeadSize + std::int64_t{index} * rco::kWordSize);
}

// The index of the word of a row of lstPageData; of a reference that of its value.
Int16 WordOfRow(const RcoDocument& document, int row) {
  Int16 sum;
  for (int r = 0; r <= row; ++r) {
    sum += document.lstPageData.Text(r).starts_with('[') ? 2 : 1;
  }
  return document.entries.pageDataStart + sum - Int16(1);
}

std::int32_t SelectedPageWord(const RcoDocument& document) {
  return WordPosition(At(document.pageRecs, document.lstPage.Selected()),
                      WordOfRow(document, document.lstPageData.Selected()).Int());
}

std::int32_t WordOfText(std::string_view text) {
  return std::bit_cast<std::int32_t>(SingleOf(LeadingNumber(text)));
}

void TellBlank(Prompts& prompts) {
  Tell(prompts, "Not much can be done with a blank entry... :S", Icon::Information);
}

std::optional<NewValue> AskForFloat(Prompts& prompts, const std::string& rowText) {
  const std::string answer = prompts.AskText("输入新数值", rowText);
  if (answer.empty()) {
    return std::nullopt;
  }
  return NewValue{WordOfText(answer), {}};
}

// `digits` is where the row's digits begin.
std::optional<NewValue> AskForHex(Prompts& prompts, const std::string& rowText, std::size_t digits) {
  std::int32_t value = HexToValue(std::string_view(rowText).substr(digits), true);
  if (!EditHexValue(prompts, value)) {
    return std::nullopt;
  }
  return NewValue{value, {}};
}

std::optional<NewValue> AskForChoice(Prompts& prompts, const EditChoices& choices) {
  const std::optional<int> row = prompts.ShowEditList(choices.lines, choices.selected);
  if (!row.has_value()) {
    return std::nullopt;
  }
  return NewValue{At(choices.values, *row), At(choices.lines, *row)};
}

std::optional<NewValue> AskForPlain(Prompts& prompts, const std::string& rowText, RowKind kind) {
  constexpr std::size_t kDigits = 2;  // "0x00000000"
  return kind == RowKind::Float ? AskForFloat(prompts, rowText) : AskForHex(prompts, rowText, kDigits);
}

std::optional<NewValue> AskForReference(Prompts& prompts, const std::string& rowText, std::int32_t type, RcoFile& file,
                                        const RcoDocument& document, std::int32_t curValue) {
  constexpr std::size_t kDigits = 10;  // "[0x40C] 0x00000000"
  return HasChoices(type) ? AskForChoice(prompts, ListChoices(file, document, type, curValue))
                          : AskForHex(prompts, rowText, kDigits);
}

// The bracket around the write: the words from number `index` on of the entry of a line, if it has a body. The line and
// the place are looked at inside the bracket: a wrong one leaves what any failure of the write leaves, the backup made
// and the watcher stopped.
void WriteWords(Mod& mod, Watch& watch, const std::vector<EntryRec>& recs, int line, std::int32_t index,
                std::span<const std::int32_t> words) {
  BackupOnce(mod, watch);
  RcoFile file(mod.cCurFile);
  const EntryRec& record = At(recs, line);
  if (record.recSize >= rco::kSmallestWithBody) {
    file.WriteLongsAt(WordPosition(record, index), words);
  }
  file.Close();
  RecordFileDate(mod, watch);
}

std::string PlainRowText(RowKind kind, std::int32_t word) {
  return kind == RowKind::Float ? FloatText(std::bit_cast<float>(word)) : HexWordText(word);
}

std::string ReferenceRowText(std::int32_t type, const NewValue& value) {
  if (type == rco::kRefEvent || type == rco::kRefText || type == rco::kRefImage) {
    return std::string(ReferencePrefix(type)) + value.cEditText;
  }
  // Types have three digits, so this is always failure 5, after the word was written: the row keeps its old text, and
  // users know that the file has the new value.
  return "[0x" + PadLeft(HexOf(type), 2, '0') + "] " + HexWordText(value.word);
}

void RewriteRow(ListLines& list, std::string text) {
  const int row = list.Selected();
  list.Set(row, std::move(text));
  if (row < list.Count() - 1) {
    list.Select(row + 1);
  }
}

}  // namespace

Row RowOf(std::string_view text) {
  struct Start {
    std::string_view text;
    std::int32_t type;
  };
  constexpr std::array<Start, 6> kStarts = {{{"[eve", rco::kRefEvent},
                                             {"[tex", rco::kRefText},
                                             {"[ima", rco::kRefImage},
                                             {"[mod", rco::kRefModel},
                                             {"[ani", rco::kRefAnim},
                                             {"[pag", rco::kRefPage}}};
  for (const Start& start : kStarts) {
    if (text.starts_with(start.text)) {
      return {RowKind::Reference, start.type};
    }
  }
  if (text.starts_with("[0x4")) {
    return {RowKind::Reference, HexToValue(text.substr(3, 3), false)};
  }
  if (text.starts_with("[bla")) {
    return {RowKind::Blank};
  }
  return {text.starts_with("0x") ? RowKind::Hexadecimal : RowKind::Float};
}

bool EditHexValue(Prompts& prompts, std::int32_t& value) {
  const std::optional<std::string> txt = prompts.ShowEditVal(PadLeft(HexOf(value), 8, '0'));
  if (!txt.has_value()) {
    return false;
  }
  value = HexToValue(*txt, true);
  return true;
}

bool cmdPageChange(Mod& mod, RcoDocument& document, Prompts& prompts, Watch& watch) {
  if (document.lstPage.Selected() < 0 || document.lstPageData.Selected() < 0) {
    return false;
  }
  const std::string rowText = document.lstPageData.Text(document.lstPageData.Selected());
  const Row row = RowOf(rowText);
  if (row.kind == RowKind::Blank) {
    TellBlank(prompts);
    return false;
  }

  const std::int32_t position = SelectedPageWord(document);
  RcoFile file(mod.cCurFile);
  const std::int32_t curValue = file.ReadI32At(position);
  // The file counts as open during the question, also after an empty answer; that holds nothing on disk.
  const std::optional<NewValue> value = row.kind == RowKind::Reference
                                            ? AskForReference(prompts, rowText, row.type, file, document, curValue)
                                            : AskForPlain(prompts, rowText, row.kind);
  if (!value.has_value()) {
    return false;
  }
  file.Close();

  const std::array<std::int32_t, 1> words = {value->word};
  WriteWords(mod, watch, document.pageRecs, document.lstPage.Selected(),
             WordOfRow(document, document.lstPageData.Selected()).Int(), words);
  RewriteRow(document.lstPageData,
             row.kind == RowKind::Reference ? ReferenceRowText(row.type, *value) : PlainRowText(row.kind, value->word));
  return true;
}

bool cmdAnimChange(Mod& mod, RcoDocument& document, Prompts& prompts, Watch& watch) {
  if (document.lstAnim.Selected() < 0 || document.lstAnimData.Selected() < 0) {
    return false;
  }
  const int row = document.lstAnimData.Selected();
  const std::string& rowText = document.lstAnimData.Text(row);
  const RowKind kind = rowText.starts_with("0x") ? RowKind::Hexadecimal : RowKind::Float;
  const std::optional<NewValue> value = AskForPlain(prompts, rowText, kind);
  if (!value.has_value()) {
    return false;
  }
  const std::array<std::int32_t, 1> words = {value->word};
  WriteWords(mod, watch, document.animRecs, document.lstAnim.Selected(), row, words);
  RewriteRow(document.lstAnimData, PlainRowText(kind, value->word));
  return true;
}

void cmdPagePosChange(Mod& mod, RcoDocument& document, Watch& watch, const std::array<std::string, 13>& txtPageOpt) {
  std::array<std::int32_t, rco::kPositionWords> words{};
  for (std::size_t i = 0; i < words.size(); ++i) {
    words[i] = WordOfText(txtPageOpt[i]);
  }
  WriteWords(mod, watch, document.pageRecs, document.lstPage.Selected(), 0, words);
  document.entries.txtPageOpt = txtPageOpt;
}

std::optional<EditChoices> ChoicesOfSelectedRow(const Mod& mod, const RcoDocument& document, Prompts& prompts) {
  if (document.lstPage.Selected() < 0 || document.lstPageData.Selected() < 0) {
    return std::nullopt;
  }
  const Row row = RowOf(document.lstPageData.Text(document.lstPageData.Selected()));
  if (row.kind == RowKind::Blank) {
    TellBlank(prompts);
  }
  if (row.kind != RowKind::Reference || !HasChoices(row.type)) {
    return std::nullopt;
  }
  RcoFile file(mod.cCurFile);
  const std::int32_t curValue = file.ReadI32At(SelectedPageWord(document));
  return ListChoices(file, document, row.type, curValue);
}

}  // namespace kelvane
