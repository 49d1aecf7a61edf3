// A text of the file as the toolkit's text document holds it, and back.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace kelvane {

// The document takes CR, LF, U+2029 and two noncharacters of its own for ends of paragraphs. Here only CR LF is one, so
// that each of the others is carried through the document by a noncharacter of its own. All other code units pass as
// they are, unpaired surrogates too.
[[nodiscard]] QString ToDocument(std::u16string_view text);
// `raw` is the document's raw text, with U+2029 between its paragraphs; they become CR LF.
[[nodiscard]] std::u16string FromDocument(const QString& raw);

}  // namespace kelvane
