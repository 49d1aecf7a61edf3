#include "editor/OpenRcoFile.h"

#include <array>

#include "common/Encoding.h"
#include "common/Statements.h"
#include "container/FileBracket.h"
#include "container/GenScan.h"
#include "container/RcoFile.h"
#include "container/RcoFormat.h"
#include "editor/DeflatedHead.h"
#include "pages/EntryScan.h"
#include "text/TextScan.h"

namespace kelvane {

namespace {

void ClearLists(RcoDocument& document) {
  document.lst.Clear();
  document.lstText.Clear();
  document.cboTextLang.Clear();
  document.lstPage.Clear();
  document.lstAnim.Clear();
  document.lstPageData.Clear();
  document.lstAnimData.Clear();
  document.entries.picPagePosVisible = false;
  document.entries.cmdPageChangeEnabled = false;
}

void ResetDisplay(RcoDocument& document, const Ports& ports) {
  document.text.txt.clear();
  ++document.text.txtRevision;
  document.text.lblTxtIdx.clear();
  document.text.enabled = false;
  document.lst.Select(-1);
  document.lstText.Select(-1);
  document.general = GeneralDisplay();
  for (Surface* surface : {ports.picPreview, ports.frmPreview}) {
    if (surface != nullptr) {
      surface->Clear();
    }
  }
}

void CloseDocument(Mod& mod, RcoDocument& document, const Ports& ports) {
  mod.cCurFile.clear();
  document.caption = "Kelvane Editor MOD";
  // The counters keep their values: every user of them asks for an open document first.
  document.textRsc.clear();
  document.genRsc.clear();
  ClearLists(document);
  ports.watch.Stop();
  ResetDisplay(document, ports);
}

// The signature and version of the open file. False if the file is refused; it is closed then.
bool AcceptFile(RcoFile& file, Statements& run, const Mod& mod, Prompts& prompts) {
  std::int32_t magic = 0;
  run([&] { magic = file.ReadI32At(rco::hdrMagic); });
  if (magic != rco::kMagic) {
    Tell(prompts, "Not a valid RCO!", Icon::Exclamation);
    file.Close();
    return false;
  }

  std::int32_t version = 0;
  run([&] { version = file.ReadI32(); });
  switch (version) {
    case rco::kVersionDeflated: {
      if (!Ask(prompts, "This appears to have a deflated (FW2.60) header - do you want to convert it to a 2.50 RCO?",
               Icon::Exclamation)) {
        file.Close();
        return false;
      }
      bool converted = true;
      run([&] { converted = ConvertDeflatedHeader(file, mod, prompts); });
      return converted;
    }
    case rco::kVersionPlain:
    case rco::kVersionOlder:
    case rco::kVersionNone:
      return true;
    default:
      Tell(
          prompts,
          "Invalid RCO - you must use a decompressed (FW 2.60 or lower) RCO!  (Mirrel's Flaxpress should be able to do "
          "the job for you :P)",
          Icon::Exclamation);
      file.Close();
      return false;
  }
}

// Where the entry tables end: at the first pointer table that is there, else at the text data or the labels.
std::int32_t EndOfEntryTables(const std::array<std::int32_t, rco::kPointerLongs>& pairs, const RcoDocument& document) {
  for (std::size_t table = 0; table < pairs.size(); table += 2) {
    if (pairs[table] > 0) {
      return pairs[table];
    }
  }
  return document.textDataBase > 0 ? document.textDataBase : document.labelBase;
}

void ScanEntryTables(RcoFile& file, Statements& run, const Mod& mod, RcoDocument& document) {
  std::array<std::int32_t, rco::kPointerLongs> pairs{};
  run([&] { file.ReadLongsAt(rco::kPointerLongsAt, pairs); });
  const std::int32_t tableEnd = EndOfEntryTables(pairs, document);

  std::int32_t pageRoot = 0;
  std::int32_t animRoot = 0;
  run([&] { pageRoot = file.ReadI32At(rco::hdrPageRoot); });
  run([&] { animRoot = file.ReadI32At(rco::hdrAnimRoot); });
  if (pageRoot > 0) {
    run([&] { file.Seek(rco::hdrPagePtrs); });
    run([&] { ScanEntryTable(file, animRoot > 0 ? animRoot : tableEnd, document, true, mod.cExpert); });
  }
  if (animRoot > 0) {
    run([&] { file.Seek(rco::hdrAnimPtrs); });
    run([&] { ScanEntryTable(file, tableEnd, document, false, mod.cExpert); });
  }
}

void OpenDocument(const std::filesystem::path& path, Mod& mod, RcoDocument& document, const Ports& ports) {
  RcoFile file;
  const auto body = [&](Statements& run) {
    run([&] { file.Open(path); });
    if (!AcceptFile(file, run, mod, ports.prompts)) {
      return;
    }
    ClearLists(document);

    run([&] { document.labelBase = file.ReadI32At(rco::hdrLabelOffset); });
    run([&] { file.ReadLongsAt(rco::kDataAreaLongsAt, document.dataAreas); });
    run([&] { ScanGenRsc(file, document); });
    run([&] { ScanTextRsc(file, document); });
    ScanEntryTables(file, run, mod, document);

    run([&] { file.Close(); });
    mod.cCurFile = path;
    document.caption = "Kelvane Editor [" + PathToUtf8(mod.cCurFile.filename()) + "] (by Orrelin)";
    run([&] { RecordFileDate(mod, ports.watch); });
    ResetDisplay(document, ports);
  };
  RunStatements(ports.prompts, body, [&] { file.Close(); });
}

}  // namespace

void OpenRcoFile(const std::filesystem::path& path, Mod& mod, RcoDocument& document, const Ports& ports) {
  if (path.empty()) {
    CloseDocument(mod, document, ports);
  } else {
    OpenDocument(path, mod, document, ports);
  }
}

}  // namespace kelvane
