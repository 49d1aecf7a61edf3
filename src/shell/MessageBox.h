// Message boxes of the core as boxes of the toolkit.
#pragma once

#include "common/Prompts.h"

class QWidget;

namespace kelvane {

// Shows the box, modal to all windows, and returns the button that closed it. Esc is No where there is one.
Answer ShowMessageBox(QWidget* owner, const Message& message);

}  // namespace kelvane
