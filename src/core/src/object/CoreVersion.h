#pragma once

namespace tesseralis {
/// The version of the headers as text. A module keeps the text of those that it was compiled against.
constexpr char c_coreVersion[] = "0.8.0-3801 (20121004)";
} // namespace tesseralis
