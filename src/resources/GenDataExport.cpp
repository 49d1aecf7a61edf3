#include "resources/GenDataExport.h"

#include <array>
#include <system_error>

#include "common/Encoding.h"
#include "common/Files.h"
#include "common/RuntimeFailure.h"
#include "container/GenScan.h"
#include "container/RcoFormat.h"

namespace kelvane {

namespace fs = std::filesystem;

namespace {

constexpr std::int16_t kStereo = 2;
constexpr std::size_t kExtensionLength = 4;  // ".vag"

// The file offset of a field of the record's entry.
std::int32_t FieldPos(const GenRsc& record, std::int32_t field) {
  return AddInt32(record.entryPos, field - rco::entryLabel);
}

void RequireNotOpenFile(const Mod& mod, const fs::path& path) {
  if (IsOpenFile(mod, path)) {
    throw RuntimeFailure(FailureCode::PermissionDenied);
  }
}

void DeleteTarget(const Mod& mod, const fs::path& path) {
  RequireNotOpenFile(mod, path);
  DeleteFileIfThere(path);
}

void OpenTarget(const Mod& mod, FileWriter& target, const fs::path& path) {
  if (!target.IsOpen()) {
    RequireNotOpenFile(mod, path);
    target.Open(path);
  }
}

fs::path WithSuffix(fs::path path, const char* suffix) {
  path += suffix;
  return path;
}

}  // namespace

bool IsOpenFile(const Mod& mod, const fs::path& path) {
  std::error_code error;
  return fs::exists(path, error) && fs::equivalent(path, mod.cCurFile, error);
}

bool ExportGenData(const Mod& mod, const RcoDocument& document, fs::path& path, Int16 index, Prompts& prompts) {
  return GenDataExporter(mod, document, prompts).Export(path, index);
}

const GenRsc& GenDataExporter::Record(Int16 index) const {
  return At(document_.genRsc, index.Int());
}

bool GenDataExporter::HasData(Int16 index) const {
  return Record(index).dataSize >= 1 && GetGenDataPos(document_, index) >= 1;
}

void GenDataExporter::OpenSource() {
  if (!source_.IsOpen()) {
    source_.Open(mod_.cCurFile);
  }
}

bool GenDataExporter::IsStereo(Int16 index) {
  const GenRsc& record = Record(index);
  return record.rscKind == Int16(rco::kKindVag) && source_.ReadI16At(FieldPos(record, rco::bodyChannels)) == kStereo;
}

bool GenDataExporter::Export(fs::path& path, Int16 index) {
  bool result = false;
  whole_ = false;
  RunStatements(
      prompts_,
      [&](Statements& run) {
        bool hasData = true;
        run([&] { hasData = HasData(index); });
        if (!hasData) {
          return;
        }
        run([&] { OpenSource(); });
        bool stereo = false;
        run([&] { stereo = IsStereo(index); });
        if (stereo) {
          ExportChannels(run, path, index);
        } else {
          ExportWhole(run, path, index);
          whole_ = !run.Failed();
        }
        result = true;
      },
      [&] { source_.Close(); });
  return result;
}

template <class Position>
void GenDataExporter::CopyToTarget(Statements& run, FileWriter& target, std::int32_t size, Position position) {
  data_.clear();
  run([&] { data_ = AllocateBytes(size); });
  run([&] {
    source_.Seek(position());
    source_.Read(data_);
  });
  run([&] { target.Write(data_); });
  run([&] { target.Close(); });
}

void GenDataExporter::ExportWhole(Statements& run, const fs::path& path, Int16 index) {
  FileWriter target;
  std::int32_t size = 0;
  run([&] {
    // Where nothing has the name there is nothing to delete, and the file is made at once.
    if (!target.OpenNew(path)) {
      DeleteTarget(mod_, path);
    }
  });
  run([&] { OpenTarget(mod_, target, path); });
  run([&] { size = Record(index).dataSize; });
  CopyToTarget(run, target, size, [&] { return GetGenDataPos(document_, index); });
}

void GenDataExporter::ExportChannels(Statements& run, fs::path& path, Int16 index) {
  if (const std::string text = PathToUtf8(path); Utf8Length(text) > kExtensionLength) {
    path = PathFromUtf8(Utf8DropLast(text, kExtensionLength));
  }
  const fs::path path1 = WithSuffix(path, ".ch1.vag");
  const fs::path path2 = WithSuffix(path, ".ch2.vag");
  run([&] { DeleteTarget(mod_, path1); });
  run([&] { DeleteTarget(mod_, path2); });

  FileWriter target;
  std::int32_t size1 = 0;
  run([&] { OpenTarget(mod_, target, path1); });
  run([&] { size1 = source_.ReadI32At(FieldPos(Record(index), rco::bodyChannel1Size)); });
  CopyToTarget(run, target, size1, [&] { return GetGenDataPos(document_, index); });

  std::array<std::int32_t, 3> fields{};  // offset of channel 1, size of channel 2, offset of channel 2
  run([&] { OpenTarget(mod_, target, path2); });
  run([&] { source_.ReadLongsAt(FieldPos(Record(index), rco::bodyChannel1Offset), fields); });
  CopyToTarget(run, target, fields[1], [&] {
    const std::int32_t distance = CheckedInt32(std::int64_t{fields[2]} - fields[0]);
    return AddInt32(GetGenDataPos(document_, index), distance);
  });
}

}  // namespace kelvane
