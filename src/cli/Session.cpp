#include "cli/Session.h"

#include <cstdlib>
#include <system_error>

#include "common/Encoding.h"
#include "common/RuntimeFailure.h"

namespace kelvane::cli {

ProcessFolder::ProcessFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "kelvane-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) {
    throw RuntimeFailure(FailureCode::PathAccessError);
  }
  path_ = name;
}

ProcessFolder::~ProcessFolder() {
  std::error_code error;
  std::filesystem::remove_all(path_, error);
}

void ProgressBar::Show(int done, int total) {
  if (!visible_ || total < 1) {
    return;
  }
  constexpr int kWidth = 40;
  const int filled = static_cast<int>(static_cast<long long>(kWidth) * done / total);
  err_ << "\r[" << std::string(static_cast<std::size_t>(filled), '#')
       << std::string(static_cast<std::size_t>(kWidth - filled), ' ') << "] " << done << '/' << total;
  if (done >= total) {
    err_ << '\n';
  }
  err_ << std::flush;
}

namespace {

Answering AnsweringOf(const Options& options, const Streams& streams) {
  if (options.yes || options.no) {
    return options.yes ? Answering::Yes : Answering::No;
  }
  return streams.inIsTerminal ? Answering::Ask : Answering::No;
}

}  // namespace

Session::Session(const Options& options, const Streams& streams)
    : options_(options),
      streams_(streams),
      prompts_(AnsweringOf(options, streams), streams.in, streams.err),
      progress_(streams.err, streams.errIsTerminal),
      editor_(folder_.Path(),
              Ports{.prompts = prompts_, .watch = watch_, .progress = progress_, .pictures = &pictures_}) {
  Mod& mod = editor_.State();
  mod.cNoUpdatBak = options.noBackup;
  mod.cNoCompression = options.noCompression;
  mod.cFirstColTrans = options.firstColourTransparent;
  mod.cImpt32bitMode = options.import32;
  mod.cExpert = options.expert;
}

void Session::Open(const std::string& file) {
  editor_.OpenRcoFile(PathFromUtf8(file));
  if (editor_.State().cCurFile.empty()) {
    throw Refusal("");
  }
}

void Session::RequireRow(const ListLines& list, int row, const char* name) const {
  if (row < 0 || row >= list.Count()) {
    throw Refusal(std::string(name) + " " + std::to_string(row) + " is not there: the file has " +
                  std::to_string(list.Count()));
  }
}

void Session::Print(const Table& table) const {
  if (options_.json) {
    table.PrintJson(streams_.out);
  } else {
    table.PrintLines(streams_.out);
  }
}

void Session::TellFailure(const std::string& text) {
  Tell(prompts_, text, Icon::Critical);
}

}  // namespace kelvane::cli
