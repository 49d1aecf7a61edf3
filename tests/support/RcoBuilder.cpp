#include "support/RcoBuilder.h"

#include <stdexcept>

#include "support/RcoWriter.h"

namespace kelvane::test {

namespace {

// Adds to a list and returns the number of what was added.
template <class Spec>
int AddTo(std::vector<Spec>& list, Spec spec) {
  list.push_back(std::move(spec));
  return static_cast<int>(list.size()) - 1;
}

void CheckEntryLength(std::int32_t length) {
  if (length != 0 && length < rco::kShortEntrySize) {
    throw std::invalid_argument("a general entry has at least 52 bytes");
  }
}

}  // namespace

int RcoBuilder::AddImage(ImageSpec spec) {
  CheckEntryLength(spec.entryLength);
  return AddTo(description_.images, std::move(spec));
}

int RcoBuilder::AddVag(VagSpec spec) {
  CheckEntryLength(spec.entryLength);
  return AddTo(description_.vags, std::move(spec));
}

int RcoBuilder::AddGmo(GmoSpec spec) {
  CheckEntryLength(spec.entryLength);
  return AddTo(description_.gmos, std::move(spec));
}

int RcoBuilder::AddLanguage(std::uint32_t code, int extraRecords) {
  return AddTo(description_.languages, LanguageSpec{code, extraRecords});
}

int RcoBuilder::AddText(TextSpec spec) {
  return AddTo(description_.texts, std::move(spec));
}
int RcoBuilder::AddPage(EntrySpec spec) {
  return AddTo(description_.pages, std::move(spec));
}
int RcoBuilder::AddAnimation(EntrySpec spec) {
  return AddTo(description_.animations, std::move(spec));
}
int RcoBuilder::AddEvent(std::string event) {
  return AddTo(description_.events, std::move(event));
}
void RcoBuilder::AddEmptyTable(RcoTable table) {
  description_.emptyTables.insert(table);
}

void RcoBuilder::SetPointers(RcoTable table, std::vector<int> order) {
  description_.pointerOrders[table] = std::move(order);
}

BuiltRco RcoBuilder::Build() const {
  BuiltRco built;
  built.layout = LayOut(description_);
  built.bytes = WriteRco(description_, built.layout);
  if (description_.options.deflatedHead) {
    built.bytes = PackHead(description_, built.bytes, built.layout);
  }
  return built;
}

}  // namespace kelvane::test
