// Any bytes are loaded or refused in words. What has been loaded can be saved, and comes back equal.

#include "object/Exception.h"
#include "object/Tesseralis.h"
#include "value/Archive.h"
#include "value/MemorySerializer.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

using namespace tesseralis;

namespace {
void require(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

bool isLoaded(Archive & archive, std::string const & text)
{
    try {
        MemorySerializer().load(archive, text);
        return true;
    } catch (Exception const & exception) {
        require(exception.GetMessage().starts_with("Error loading from buffer") && archive.IsEmpty());
        return false;
    }
}

/// Consumes the archive.
std::string save(Archive & archive)
{
    std::string text;
    MemorySerializer().save(text, archive);
    return text;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    Archive archive;
    if (!isLoaded(archive, std::string(reinterpret_cast<char const *>(data), size))) {
        return 0;
    }

    Archive copy(archive);
    std::string const text = save(copy);
    Archive again;
    require(isLoaded(again, text));
    require(ArchiveElement(again) == ArchiveElement(archive));
    require(save(again) == text);

    archive.retrieve(0);
    require(archive.IsEmpty() && Tesseralis::Get().GetNextObject(nullptr) == nullptr);
    return 0;
}
