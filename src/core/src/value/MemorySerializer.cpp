#include "value/MemorySerializer.h"

namespace tesseralis {
MemorySerializer::MemorySerializer() = default;

MemorySerializer::MemorySerializer(MemorySerializer const & source) = default;

MemorySerializer::~MemorySerializer() = default;

void MemorySerializer::load(Archive & archive, std::string const & text)
{
    loadText(archive, text, "buffer");
}

void MemorySerializer::load(Archive & archive, char const * text)
{
    load(archive, std::string(text == nullptr ? "" : text));
}

void MemorySerializer::save(std::string & text, Archive & archive)
{
    text = saveText(archive, Layout::Compact, "buffer");
}
} // namespace tesseralis
