// BMP pixels whose colours are told by masks. The toolkit's reader takes them too, but it leaves colours of fewer than
// 8 bits short of full and loses those of more.
#pragma once

#include <QImage>
#include <QSize>

#include "common/Bytes.h"

namespace kelvane {

// `file` holds `size` pixels of 16 or 32 bits without compression, their masks among the header's, stored from the top
// down or from the bottom up. A colour's lower bits are cut off above 8 and repeated below; other bits are ignored.
// Null where there is no memory; failure 9 where `file` is too short.
[[nodiscard]] QImage ReadMaskedBmp(ByteView file, QSize size, bool isTopDown);

}  // namespace kelvane
