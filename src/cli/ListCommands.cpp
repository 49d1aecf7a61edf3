#include <memory>

#include "cli/Commands.h"
#include "container/RcoFile.h"
#include "container/RcoFormat.h"

namespace kelvane::cli {

namespace {

void PrintLines(Session& session, const ListLines& list) {
  Table table({"row", "line"});
  for (int row = 0; row < list.Count(); ++row) {
    table.Add({std::int64_t{row}, list.Text(row)});
  }
  session.Print(table);
}

void PrintRecords(Session& session) {
  Table table({"index", "rscKind", "rscFormat", "rscCompression", "dataOffset", "dataSize", "unpackedSize", "entryPos",
               "labelOffset"});
  const RcoDocument& document = session.Document();
  for (int i = 0; i < document.genCount.Int() && i < static_cast<int>(document.genRsc.size()); ++i) {
    const GenRsc& record = document.genRsc[static_cast<std::size_t>(i)];
    table.Add({std::int64_t{i}, std::int64_t{record.rscKind.Int()}, std::int64_t{record.rscFormat.Int()},
               std::int64_t{record.rscCompression.Int()}, std::int64_t{record.dataOffset},
               std::int64_t{record.dataSize}, std::int64_t{record.unpackedSize}, std::int64_t{record.entryPos},
               std::int64_t{record.labelOffset}});
  }
  session.Print(table);
}

void PrintInfo(Session& session) {
  const RcoDocument& document = session.Document();
  RcoFile file(session.State().cCurFile);
  Table table({"name", "value"});
  const auto add = [&table](const std::string& name, std::int64_t value) { table.Add({name, value}); };
  add("version", file.ReadI32At(rco::hdrVersion));
  add("genCount", document.genCount.Int());
  add("textCount", document.textCount.Int());
  add("langCount", document.langCount);
  add("pageCount", document.pageCount.Int());
  add("animCount", document.animCount.Int());
  add("labelBase", document.labelBase);
  add("textDataBase", document.textDataBase);
  for (std::size_t i = 0; i < document.dataAreas.size(); ++i) {
    add("dataAreas(" + std::to_string(i) + ")", document.dataAreas[i]);
  }
  session.Print(table);
}

}  // namespace

void AddListCommands(CLI::App& app, Action& action) {
  struct Arguments {
    std::string file;
    bool records = false;
  };
  const auto arguments = std::make_shared<Arguments>();

  CLI::App* list = app.add_subcommand("list", "Lists the general resources: row and line");
  list->add_option("FILE", arguments->file, "The RCO file")->required();
  list->add_flag("--records", arguments->records, "Lists the records instead, all fields in decimal");
  list->callback([arguments, &action] {
    action = [arguments](Session& session) {
      session.Open(arguments->file);
      if (arguments->records) {
        PrintRecords(session);
      } else {
        PrintLines(session, session.Document().lst);
      }
    };
  });

  CLI::App* info = app.add_subcommand("info", "Prints the version, the counts and the places of the areas");
  info->add_option("FILE", arguments->file, "The RCO file")->required();
  info->callback([arguments, &action] {
    action = [arguments](Session& session) {
      session.Open(arguments->file);
      PrintInfo(session);
    };
  });
}

}  // namespace kelvane::cli
