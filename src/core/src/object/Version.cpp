#include "object/Version.h"

#include "object/eatable.h"

#include <charconv>
#include <sstream>
#include <string_view>
#include <system_error>
#include <tuple>

namespace tesseralis {
namespace {
// The stream's own reader would take a sign, and the thousands separators of its locale.
void readNumber(std::istream & stream, unsigned int & number)
{
    std::string digits;
    stream >> std::ws;
    for (int next = stream.peek(); '0' <= next && next <= '9'; next = stream.peek()) {
        digits += static_cast<char>(stream.get());
    }
    if (std::from_chars(digits.data(), digits.data() + digits.size(), number).ec != std::errc()) {
        stream.setstate(std::ios_base::failbit);
    }
}

// Reads a word, with the white space behind it, if it comes next. Otherwise the text stays in the stream.
bool readOptional(std::istream & stream, std::string_view word)
{
    if (!stream.good()) {
        return false;
    }

    std::size_t count = 0;
    while (count < word.size() && stream.peek() == word[count]) {
        stream.get();
        ++count;
    }
    if (count == word.size()) {
        stream >> std::ws;
        return true;
    }

    for (; count > 0; --count) {
        stream.unget();
    }
    stream.clear(); // still usable where the text couldn't be put back
    return false;
}
} // namespace

Version::Version(unsigned int majorNumber, unsigned int minorNumber, unsigned int revisionNumber,
                 unsigned int sourceRevisionNumber, unsigned int buildDate, bool experimental, bool debug)
    : m_majorNumber(majorNumber),
      m_minorNumber(minorNumber),
      m_revisionNumber(revisionNumber),
      m_sourceRevisionNumber(sourceRevisionNumber),
      m_buildDate(buildDate),
      m_experimental(experimental),
      m_debug(debug)
{
}

Version::Version(char const * text) : Version(std::string(text != nullptr ? text : "")) {}

Version::Version(std::string const & text)
{
    std::istringstream stream(text);
    stream >> *this;
}

std::string Version::GetString() const
{
    std::string text = std::to_string(m_majorNumber) + "." + std::to_string(m_minorNumber) + "." +
                       std::to_string(m_revisionNumber) + "-" + std::to_string(m_sourceRevisionNumber) + " (" +
                       std::to_string(m_buildDate) + ")";
    if (m_experimental) {
        text += " experimental";
    }
    if (m_debug) {
        text += " debug";
    }
    return text;
}

bool Version::operator<(Version const & other) const
{
    auto const numbers = [](Version const & version) {
        return std::tie(version.m_majorNumber, version.m_minorNumber, version.m_revisionNumber,
                        version.m_sourceRevisionNumber, version.m_buildDate);
    };
    return numbers(*this) < numbers(other);
}

std::ostream & operator<<(std::ostream & stream, Version const & version)
{
    return stream << version.GetString();
}

std::istream & operator>>(std::istream & stream, Version & version)
{
    unsigned int numbers[5] = {};
    readNumber(stream, numbers[0]);
    stream >> eatable(".");
    readNumber(stream, numbers[1]);
    stream >> eatable(".");
    readNumber(stream, numbers[2]);
    stream >> eatable("-");
    readNumber(stream, numbers[3]);
    stream >> eatable("(");
    readNumber(stream, numbers[4]);
    stream >> eatable(")");
    if (stream.fail()) {
        return stream;
    }

    bool const experimental = readOptional(stream, "experimental");
    bool const debug = readOptional(stream, "debug");
    version = Version(numbers[0], numbers[1], numbers[2], numbers[3], numbers[4], experimental, debug);
    return stream;
}
} // namespace tesseralis
