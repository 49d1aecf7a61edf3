// The program's texts: UTF-8 for what is shown, Latin-1 for what stands in files, UTF-16 for the texts of resources.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include "common/Bytes.h"

namespace kelvane {

// Latin-1 bytes as UTF-8: byte n is character n.
[[nodiscard]] std::string Latin1ToUtf8(ByteView bytes);
// UTF-8 as Latin-1 bytes; a character beyond U+00FF becomes '?', and so does each byte that is no UTF-8.
[[nodiscard]] Bytes Utf8ToLatin1(std::string_view text);

// UTF-16 as UTF-8 and back. What is ill-formed becomes U+FFFD.
[[nodiscard]] std::string Utf16ToUtf8(std::u16string_view text);
[[nodiscard]] std::u16string Utf8ToUtf16(std::string_view text);

// Paths are UTF-8 in texts.
[[nodiscard]] std::filesystem::path PathFromUtf8(std::string_view text);
[[nodiscard]] std::string PathToUtf8(const std::filesystem::path& path);

// The number of characters of a UTF-8 text, and the text without its last `count` characters.
[[nodiscard]] std::size_t Utf8Length(std::string_view text);
[[nodiscard]] std::string_view Utf8DropLast(std::string_view text, std::size_t count);

}  // namespace kelvane
