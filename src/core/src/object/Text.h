#pragma once

#include "object/Export.h"

#include <string>

namespace tesseralis {
/// The text without its leading characters that occur in the second one; empty if all do.
TESSERALIS_API std::string trimLeft(std::string const & text, std::string const & characters);
/// The text without its trailing characters that occur in the second one; but the whole text if all do.
TESSERALIS_API std::string trimRight(std::string const & text, std::string const & characters);
/// Both, the left side first; empty if all characters occur in the second text.
TESSERALIS_API std::string trim(std::string const & text, std::string const & characters);
} // namespace tesseralis
