#include "cli/Table.h"

#include <nlohmann/json.hpp>

namespace kelvane::cli {

std::string Escaped(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (const char character : text) {
    switch (character) {
      case '\\':
        out += "\\\\";
        break;
      case '\t':
        out += "\\t";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\0':
        out += "\\0";
        break;
      default:
        out.push_back(character);
    }
  }
  return out;
}

void Table::PrintLines(std::ostream& out) const {
  for (const std::vector<Field>& record : records_) {
    for (std::size_t i = 0; i < record.size(); ++i) {
      out << (i > 0 ? "\t" : "");
      if (const auto* number = std::get_if<std::int64_t>(&record[i])) {
        out << *number;
      } else {
        out << Escaped(std::get<std::string>(record[i]));
      }
    }
    out << '\n';
  }
}

void Table::PrintJson(std::ostream& out) const {
  nlohmann::ordered_json document = nlohmann::ordered_json::array();
  for (const std::vector<Field>& record : records_) {
    nlohmann::ordered_json object = nlohmann::ordered_json::object();
    for (std::size_t i = 0; i < record.size(); ++i) {
      std::visit([&](const auto& field) { object[columns_[i]] = field; }, record[i]);
    }
    document.push_back(std::move(object));
  }
  out << document.dump(2) << '\n';
}

}  // namespace kelvane::cli
