#include "value/Serializer.h"

#include "object/Exception.h"
#include "object/platform/AtomicFile.h"

namespace tesseralis {
namespace {
/// For failures that have no place in the document.
Exception failure(char const * what, std::string const & filename, std::string const & cause)
{
    return Exception("Error %s '%s' (line 0, column 0: %s)!", what, filename.c_str(), cause.c_str());
}
} // namespace

Serializer::Serializer(std::string const & filename) : m_filename(filename) {}

Serializer::Serializer(Serializer const & source) = default;

Serializer::~Serializer() = default;

void Serializer::load(Archive & archive)
{
    std::optional<std::string> text;
    try {
        text = detail::readFile(m_filename, GetSizeLimit());
    } catch (Exception const & exception) {
        throw failure("loading from", m_filename, exception.GetMessage());
    }
    if (!text.has_value()) {
        throw failure("loading from", m_filename, "Failed to open file");
    }
    loadText(archive, *text, "'" + m_filename + "'");
}

void Serializer::save(Archive & archive)
{
    std::string const text = saveText(archive, Layout::Indented, "'" + m_filename + "'");
    try {
        detail::replaceFile(m_filename, text);
    } catch (Exception const & exception) {
        throw failure("saving to", m_filename, exception.GetMessage());
    }
}
} // namespace tesseralis
