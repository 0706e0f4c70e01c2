// Whatever reads as a version prints as a text that reads back to the same version.

#include "object/Version.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

using namespace tesseralis;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    Version const untouched(1, 2, 3, 4, 5, true, true);
    Version version = untouched;
    std::istringstream stream(std::string(reinterpret_cast<char const *>(data), size));
    bool const failed = (stream >> version).fail();
    if (failed ? version != untouched : Version(version.GetString()) != version) {
        std::abort();
    }
    return 0;
}
