#include "GenDocument.h"

#include <stdexcept>

#include "container/GenScan.h"
#include "container/RcoFile.h"
#include "container/RcoFormat.h"

namespace kelvane::bench {

Answer AnswerOf(const Message& message) {
  if (message.buttons != Buttons::Ok) {
    throw std::runtime_error(message.text);
  }
  return Answer::Ok;
}

void OpenGenRsc(const Mod& mod, RcoDocument& document) {
  RcoFile file(mod.cCurFile);
  document.labelBase = file.ReadI32At(rco::hdrLabelOffset);
  file.ReadLongsAt(rco::kDataAreaLongsAt, document.dataAreas);
  ScanGenRsc(file, document);
}

}  // namespace kelvane::bench
