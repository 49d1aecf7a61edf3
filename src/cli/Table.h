// What listing commands print: records of fields, as lines or as a JSON document.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kelvane::cli {

// A number, or a UTF-8 text.
using Field = std::variant<std::int64_t, std::string>;

// `\` as `\\`, TAB as `\t`, line feed as `\n`, carriage return as `\r`, NUL as `\0`.
[[nodiscard]] std::string Escaped(std::string_view text);

class Table {
 public:
  // The names of the columns, which JSON uses.
  explicit Table(std::vector<std::string> columns) : columns_(std::move(columns)) {}

  // As many fields as there are columns, or fewer: a record ends where its last field does.
  void Add(std::vector<Field> record) { records_.push_back(std::move(record)); }

  // One record a line, its fields escaped and separated by TABs.
  void PrintLines(std::ostream& out) const;
  // An array with one object a record.
  void PrintJson(std::ostream& out) const;

 private:
  std::vector<std::string> columns_;
  std::vector<std::vector<Field>> records_;
};

}  // namespace kelvane::cli
