#include <array>
#include <memory>

#include "cli/Commands.h"
#include "pages/RandomInfo.h"

namespace kelvane::cli {

namespace {

enum class EntryTable { Page, Anim };

struct Arguments {
  std::string file;
  EntryTable table = EntryTable::Page;
  int row = 0;
  int dataRow = 0;
  bool records = false;
  std::string value;
  std::vector<std::string> position;
  AddPageFields page;
};

const ListLines& Entries(const Session& session, EntryTable table) {
  return table == EntryTable::Page ? session.Document().lstPage : session.Document().lstAnim;
}

const ListLines& Words(const Session& session, EntryTable table) {
  return table == EntryTable::Page ? session.Document().lstPageData : session.Document().lstAnimData;
}

// Selects an entry, as a click on it does.
void ChooseEntry(Session& session, EntryTable table, int row) {
  session.RequireRow(Entries(session, table), row, "ROW");
  if (table == EntryTable::Page) {
    session.App().lstPage_Click(row);
  } else {
    session.App().lstAnim_Click(row);
  }
}

void ChooseWord(Session& session, EntryTable table, int row, int dataRow) {
  ChooseEntry(session, table, row);
  session.RequireRow(Words(session, table), dataRow, "DATAROW");
  if (table == EntryTable::Page) {
    session.App().lstPageData_Click(dataRow);
  } else {
    session.App().lstAnimData_Click(dataRow);
  }
}

void PrintEntries(Session& session, const Arguments& arguments, EntryTable table) {
  if (!arguments.records) {
    Table lines({"row", "line"});
    const ListLines& list = Entries(session, table);
    for (int row = 0; row < list.Count(); ++row) {
      lines.Add({std::int64_t{row}, list.Text(row)});
    }
    session.Print(lines);
    return;
  }
  Table records({"row", "recLabel", "recSize", "recPos", "recType", "recDepth"});
  const RcoDocument& document = session.Document();
  std::int64_t row = 0;
  for (const EntryRec& record : table == EntryTable::Page ? document.pageRecs : document.animRecs) {
    records.Add({row++, std::int64_t{record.recLabel}, std::int64_t{record.recSize}, std::int64_t{record.recPos},
                 std::int64_t{record.recType}, std::int64_t{record.recDepth}});
  }
  session.Print(records);
}

void PrintEntry(Session& session, const Arguments& arguments) {
  ChooseEntry(session, arguments.table, arguments.row);
  Table table({"part", "index", "text"});
  const EntryDisplay& display = session.Document().entries;
  if (arguments.table == EntryTable::Page && display.picPagePosVisible) {
    for (std::size_t i = 0; i < display.txtPageOpt.size(); ++i) {
      table.Add({std::string("pos"), static_cast<std::int64_t>(i), display.txtPageOpt[i]});
    }
  }
  const ListLines& words = Words(session, arguments.table);
  for (int row = 0; row < words.Count(); ++row) {
    table.Add({std::string("row"), std::int64_t{row}, words.Text(row)});
  }
  session.Print(table);
}

void PrintChoices(Session& session, const Arguments& arguments) {
  ChooseWord(session, EntryTable::Page, arguments.row, arguments.dataRow);
  const std::optional<EditChoices> choices = session.App().ChoicesOfSelectedRow();
  if (!choices.has_value()) {
    throw Refusal(session.Prompts().Refused() ? "" : "this row has no list of values");
  }
  Table table({"row", "value", "label", "selected"});
  for (std::size_t row = 0; row < choices->lines.size(); ++row) {
    table.Add({static_cast<std::int64_t>(row), std::int64_t{choices->values[row]}, choices->lines[row],
               std::string(static_cast<int>(row) == choices->selected ? "*" : "")});
  }
  session.Print(table);
}

void PrintAreas(Session& session) {
  const std::optional<RandomInfo> info = session.App().cmdOther();
  if (!info.has_value()) {
    throw Refusal();
  }
  Table table({"list", "index", "text"});
  const auto add = [&table](const char* name, const ListLines& list) {
    for (int row = 0; row < list.Count(); ++row) {
      table.Add({std::string(name), std::int64_t{row}, list.Text(row)});
    }
  };
  add("page", info->lstPage);
  add("anim", info->lstAnim);
  add("label", info->lstLabel);
  add("native", info->lstNative);
  session.Print(table);
}

void SetWord(Session& session, const Arguments& arguments) {
  ChooseWord(session, arguments.table, arguments.row, arguments.dataRow);
  session.Prompts().AnswerValue(arguments.value);
  if (!(arguments.table == EntryTable::Page ? session.App().cmdPageChange() : session.App().cmdAnimChange())) {
    throw Refusal();
  }
}

void SetPosition(Session& session, const Arguments& arguments) {
  ChooseEntry(session, EntryTable::Page, arguments.row);
  if (!session.Document().entries.picPagePosVisible) {
    throw Refusal("this entry has no position block");
  }
  std::array<std::string, 13> texts;
  std::copy(arguments.position.begin(), arguments.position.end(), texts.begin());
  session.App().cmdPagePosChange(texts);
}

void AddPage(Session& session, const Arguments& arguments) {
  AddPageFields fields = arguments.page;
  if (fields.cboID < 1 || fields.cboID > static_cast<int>(kPageKinds.size())) {
    throw UsageError("--class: 1 to " + std::to_string(kPageKinds.size()));
  }
  --fields.cboID;  // the class counts from 1, the list from 0
  if (!session.App().frmAddPage_cmdOK(fields)) {
    throw Refusal();
  }
}

}  // namespace

void AddPageCommands(CLI::App& app, Action& action) {
  const auto arguments = std::make_shared<Arguments>();
  const auto add = [&](CLI::App& parent, const char* name, const char* description, auto run) {
    CLI::App* command = parent.add_subcommand(name, description);
    command->add_option("FILE", arguments->file, "The RCO file")->required();
    command->callback([arguments, &action, run] {
      action = [arguments, run](Session& session) {
        session.Open(arguments->file);
        run(session, *arguments);
      };
    });
    return command;
  };
  const auto withTable = [&](CLI::App* command) {
    command
        ->add_option_function<std::string>(
            "TABLE",
            [arguments](const std::string& name) {
              arguments->table = name == "page" ? EntryTable::Page : EntryTable::Anim;
            },
            "page or anim")
        ->required()
        ->check(CLI::IsMember({"page", "anim"}));
    return command;
  };
  const auto withRow = [&](CLI::App* command) {
    command->add_option("ROW", arguments->row, "The entry's row, counted from 0")->required();
    return command;
  };
  const auto withDataRow = [&](CLI::App* command) {
    command->add_option("DATAROW", arguments->dataRow, "The word's row, counted from 0")->required();
    return command;
  };
  const auto withRecords = [&](CLI::App* command) {
    command->add_flag("--records", arguments->records, "Lists the records instead, all fields in decimal");
  };

  withRecords(add(app, "pages", "Lists the entries of the page table",
                  [](Session& session, const Arguments& given) { PrintEntries(session, given, EntryTable::Page); }));
  withRecords(add(app, "anims", "Lists the entries of the animation table",
                  [](Session& session, const Arguments& given) { PrintEntries(session, given, EntryTable::Anim); }));
  withRow(withTable(add(app, "entry", "Prints the words of an entry", PrintEntry)));
  withDataRow(withRow(add(app, "choices", "Lists the values that a reference can be given", PrintChoices)));
  add(app, "areas", "Lists the pointer tables as stored, and all labels and event strings",
      [](Session& session, const Arguments&) { PrintAreas(session); });
  withDataRow(withRow(withTable(add(app, "set-word", "Changes one word of an entry", SetWord))))
      ->add_option(
          "VALUE", arguments->value,
          "A number, 8 hexadecimal digits, or a row of the list, as the word asks for; behind -- what begins with "
          "a minus and no digit")
      ->required();
  withRow(add(app, "set-position", "Changes the position block of a page entry", SetPosition))
      ->add_option("VALUES", arguments->position, "The 13 values; behind -- what begins with a minus and no digit")
      ->required()
      ->expected(13)
      ->allow_extra_args(false);  // else "[1,2]" would be two values

  CLI::App* page = app.add_subcommand("page", "Page entries");
  page->require_subcommand(1);
  CLI::App* addPage = add(*page, "add", "Adds an entry to the page table", AddPage);
  addPage->add_option("--at", arguments->page.txtPos, "The row that it is put before")->required();
  addPage->add_option("--depth", arguments->page.txtDepth, "Its depth, 0 for a child of the root")->required();
  addPage->add_option("--class", arguments->page.cboID, "Its class, 1 to 25")->required();
  addPage->add_option("--label", arguments->page.txtLabel, "Its name")->required();
}

}  // namespace kelvane::cli
