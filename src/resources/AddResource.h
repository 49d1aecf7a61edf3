// The dialog that adds a general resource.
#pragma once

#include <string>

#include "container/Inserts.h"

namespace kelvane {

// What the dialog's fields hold.
struct AddGenFields {
  std::string txtFile;
  std::string txtPos;
  std::string txtLabel;
};

// cmdOK of the dialog: prepares the data and inserts the resource in front of the row that txtPos names. A bitmap
// becomes a GIM; images and models are stored deflated whatever the settings say; a sound enters as mono. False if the
// input was refused; that was told, nothing was changed, and the dialog stays. Failures: 6 for a position beyond 16
// bits, and those of reading the file.
bool AddGenRsc(const AddGenFields& fields, const WriteContext& context, const AfterInsert& after);

}  // namespace kelvane
