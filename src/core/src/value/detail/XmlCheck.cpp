#include "value/detail/XmlCheck.h"

#include <algorithm>
#include <cctype>

namespace tesseralis::detail {
namespace {
constexpr std::string_view c_byteOrderMark = "\xef\xbb\xbf";

// The parser's own notions of characters, which follow the C locale.
bool isSpace(char c)
{
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

bool isNameStart(char c)
{
    auto const byte = static_cast<unsigned char>(c);
    return byte >= 127 || std::isalpha(byte) != 0 || c == '_';
}

bool isNameCharacter(char c)
{
    return isNameStart(c) || std::isdigit(static_cast<unsigned char>(c)) != 0 || c == '-' || c == '.' || c == ':';
}

bool startsWithWord(std::string_view text, std::string_view lowerCase)
{
    return text.size() >= lowerCase.size() &&
           std::equal(lowerCase.begin(), lowerCase.end(), text.begin(),
                      [](char wanted, char c) { return wanted == std::tolower(static_cast<unsigned char>(c)); });
}

/// Counts lines and columns as the parser does: any kind of line break, tabs to the next multiple of four, and in UTF-8
/// a column for a character.
XmlError errorAt(std::string_view text, std::size_t position, XmlEncoding encoding, std::string const & cause)
{
    constexpr int c_tab = 4;
    XmlError error{cause, 1, 0};
    for (std::size_t i = encoding == XmlEncoding::Utf8 && text.starts_with(c_byteOrderMark) ? 3 : 0; i < position;
         ++i) {
        char const c = text[i];
        if (c == '\r' || c == '\n') {
            char const other = c == '\r' ? '\n' : '\r';
            i += i + 1 < position && text[i + 1] == other ? 1 : 0;
            ++error.line;
            error.column = 0;
        } else if (c == '\t') {
            error.column = (error.column / c_tab + 1) * c_tab;
        } else if (encoding == XmlEncoding::Bytes || (c & 0xc0) != 0x80) {
            ++error.column;
        }
    }
    ++error.column;
    return error;
}

/// The length of the UTF-8 character beyond ASCII that the text begins with; 0 if it isn't a valid one.
std::size_t characterLength(std::string_view text)
{
    auto const byte = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u; };
    auto const follows = [&](std::size_t i, unsigned int from = 0x80, unsigned int to = 0xbf) {
        return byte(i) >= from && byte(i) <= to;
    };
    unsigned int const lead = byte(0);
    if (lead >= 0xc2 && lead <= 0xdf) {
        return follows(1) ? 2 : 0;
    }
    if (lead >= 0xe0 && lead <= 0xef) {
        return follows(1, lead == 0xe0 ? 0xa0 : 0x80, lead == 0xed ? 0x9f : 0xbf) && follows(2) ? 3 : 0;
    }
    if (lead >= 0xf0 && lead <= 0xf4) {
        return follows(1, lead == 0xf0 ? 0x90 : 0x80, lead == 0xf4 ? 0x8f : 0xbf) && follows(2) && follows(3) ? 4 : 0;
    }
    return 0;
}

void checkUtf8(std::string_view text)
{
    auto const isPlain = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    auto rest = std::find_if_not(text.begin(), text.end(), isPlain);
    while (rest != text.end()) {
        auto const position = static_cast<std::size_t>(rest - text.begin());
        std::size_t const length = characterLength(text.substr(position));
        if (length == 0) {
            throw errorAt(text, position, XmlEncoding::Utf8, "invalid UTF-8");
        }
        rest = std::find_if_not(rest + static_cast<std::ptrdiff_t>(length), text.end(), isPlain);
    }
}

/// Goes over a document exactly as the parser does, without recursion. Each skip function stands at what its name says
/// and moves behind it; it is false where the parser gives up, so that what follows is of no matter.
class Scanner
{
public:
    Scanner(std::string_view text, XmlEncoding encoding, std::size_t mostSteps)
        : m_text(text), m_encoding(encoding), m_mostSteps(mostSteps)
    {
    }

    void scan()
    {
        while (skipToMarkup() && skipMarkup()) {
        }
    }

    /// What a declaration ahead of the first element says about the encoding.
    XmlEncoding FindDeclaredEncoding()
    {
        while (skipToMarkup() && !AtElement()) {
            if (!startsWithWord(Rest(), "<?xml")) {
                skipMarkup();
                continue;
            }
            std::string_view name;
            bool const isUtf8 = skipDeclaration(&name) &&
                                (name.empty() || startsWithWord(name, "utf-8") || startsWithWord(name, "utf8"));
            return isUtf8 ? XmlEncoding::Utf8 : XmlEncoding::Bytes;
        }
        return XmlEncoding::Bytes;
    }

private:
    bool IsAtEnd() const { return m_position >= m_text.size(); }
    char Get() const { return m_text[m_position]; }
    bool IsAt(char c) const { return !IsAtEnd() && Get() == c; }
    std::string_view Rest() const { return m_text.substr(m_position); }
    bool AtElement() const { return m_position + 1 < m_text.size() && isNameStart(m_text[m_position + 1]); }

    bool skipBehind(std::string_view end, std::size_t ahead)
    {
        std::size_t const found = m_text.find(end, m_position + ahead);
        m_position = found == std::string_view::npos ? m_text.size() : found + end.size();
        return !IsAtEnd();
    }

    void skipSpace()
    {
        while (!IsAtEnd()) {
            if (isSpace(Get())) {
                ++m_position;
            } else if (m_encoding == XmlEncoding::Utf8 && IsAtInvisible()) {
                m_position += c_byteOrderMark.size();
            } else {
                return;
            }
        }
    }

    /// At a byte order mark or one of the two characters that the parser takes for such.
    bool IsAtInvisible() const
    {
        std::string_view const start = m_text.substr(m_position, c_byteOrderMark.size());
        return start == c_byteOrderMark || start == "\xef\xbf\xbe" || start == "\xef\xbf\xbf";
    }

    bool skipName()
    {
        if (IsAtEnd() || !isNameStart(Get())) {
            return false;
        }
        while (!IsAtEnd() && isNameCharacter(Get())) {
            ++m_position;
        }
        return !IsAtEnd();
    }

    bool skipToMarkup()
    {
        skipSpace();
        return (m_depth == 0 || skipTextTo('<')) && IsAt('<');
    }

    bool skipTextTo(char end)
    {
        char const stops[] = {end, '&'};
        while (true) {
            m_position = std::min(m_text.find_first_of(stops, m_position, 2), m_text.size());
            if (!IsAt('&')) {
                return !IsAtEnd();
            }
            if (!skipReference()) {
                return false;
            }
        }
    }

    /// For a number the parser looks for the next semicolon first and reads backwards from there to the nearest mark,
    /// whatever else lies between, be it markup.
    bool skipReference()
    {
        std::string_view const start = m_text.substr(m_position, 3);
        if (start.size() < 3 || start[1] != '#') {
            ++m_position;
            return true;
        }

        bool const isHexadecimal = start[2] == 'x';
        std::size_t const end = m_text.find(';', m_position + (isHexadecimal ? 3 : 2));
        if (end == std::string_view::npos) {
            return false;
        }
        for (std::size_t i = end - 1; m_text[i] != (isHexadecimal ? 'x' : '#'); --i) {
            auto const byte = static_cast<unsigned char>(m_text[i]);
            if (!(isHexadecimal ? std::isxdigit(byte) : std::isdigit(byte))) {
                return false;
            }
        }
        m_position = end + 1;
        return !IsAtEnd();
    }

    bool skipMarkup()
    {
        countSteps(m_depth, m_position);
        std::string_view const rest = Rest();
        if (startsWithWord(rest, "<?xml")) {
            return skipDeclaration();
        }
        if (rest.starts_with("<!--")) {
            return skipBehind("-->", 4);
        }
        if (rest.starts_with("<![CDATA[")) {
            return skipBehind("]]>", 9);
        }
        if (AtElement()) {
            return skipTag();
        }
        if (m_depth > 0 && rest.starts_with("</")) {
            --m_depth;
        }
        return skipBehind(">", 1);
    }

    /// The parser walks up to the root for each node, and along all attributes for each new one.
    void countSteps(std::size_t steps, std::size_t position)
    {
        m_steps += steps;
        if (m_steps > m_mostSteps) {
            throw errorAt(m_text, position, m_encoding, c_tooManyStepsCause);
        }
    }

    bool skipDeclaration(std::string_view * encoding = nullptr)
    {
        m_position += 5;
        while (!IsAtEnd() && Get() != '>') {
            skipSpace();
            bool const isEncoding = startsWithWord(Rest(), "encoding");
            if (isEncoding || startsWithWord(Rest(), "version") || startsWithWord(Rest(), "standalone")) {
                if (!skipAttribute(isEncoding ? encoding : nullptr)) {
                    return false;
                }
                continue;
            }
            while (!IsAtEnd() && Get() != '>' && !isSpace(Get())) {
                ++m_position;
            }
        }
        return skipBehind(">", 0);
    }

    bool skipTag()
    {
        std::size_t const start = m_position++;
        if (++m_elements > c_mostXmlElements) {
            throw errorAt(m_text, start, m_encoding, tooManyElementsCause());
        }
        skipSpace();
        bool isGood = skipName();
        for (std::size_t attributes = 0; isGood; ++attributes) {
            if (attributes > c_mostXmlAttributes) {
                throw errorAt(m_text, start, m_encoding, tooManyAttributesCause());
            }
            countSteps(attributes, start);
            skipSpace();
            if (IsAt('/') || IsAt('>')) {
                return skipTagEnd(start);
            }
            isGood = skipAttribute();
        }
        return false;
    }

    bool skipTagEnd(std::size_t start)
    {
        if (m_depth == c_deepestXml) {
            throw errorAt(m_text, start, m_encoding, tooDeepCause());
        }
        if (Get() == '>') {
            ++m_depth;
        } else if (m_text.substr(++m_position, 1) != ">") {
            return false;
        }
        ++m_position;
        return !IsAtEnd();
    }

    bool skipAttribute(std::string_view * value = nullptr)
    {
        if (!skipName()) {
            return false;
        }
        skipSpace();
        if (!IsAt('=')) {
            return false;
        }
        ++m_position;
        skipSpace();

        bool const isQuoted = IsAt('"') || IsAt('\'');
        std::size_t const start = m_position + (isQuoted ? 1 : 0);
        if (!(isQuoted ? skipQuoted() : skipUnquoted())) {
            return false;
        }
        if (value != nullptr) {
            *value = m_text.substr(start, m_position - start - (isQuoted ? 1 : 0));
        }
        return true;
    }

    bool skipQuoted()
    {
        char const quote = Get();
        ++m_position;
        if (!skipTextTo(quote)) {
            return false;
        }
        ++m_position;
        return !IsAtEnd();
    }

    bool skipUnquoted()
    {
        while (!IsAtEnd() && !isSpace(Get()) && Get() != '/' && Get() != '>') {
            if (Get() == '"' || Get() == '\'') {
                return false;
            }
            ++m_position;
        }
        return !IsAtEnd();
    }

    std::string_view m_text;
    XmlEncoding m_encoding;
    std::size_t m_mostSteps;
    std::size_t m_steps = 0;
    std::size_t m_elements = 0;
    std::size_t m_position = 0;
    std::size_t m_depth = 0;
};
} // namespace

std::size_t mostXmlSteps(std::size_t sizeLimit)
{
    constexpr std::size_t c_fewest = std::size_t(1) << 28;
    return std::max(c_fewest, 4 * sizeLimit);
}

std::string tooLargeCause(std::size_t sizeLimit)
{
    return "more than " + std::to_string(sizeLimit) + " bytes";
}

std::string tooDeepCause()
{
    return "elements nested deeper than " + std::to_string(c_deepestXml);
}

std::string tooManyElementsCause()
{
    return "more than " + std::to_string(c_mostXmlElements) + " elements";
}

std::string tooManyAttributesCause()
{
    return "more than " + std::to_string(c_mostXmlAttributes) + " attributes";
}

XmlEncoding checkXml(std::string_view text, std::size_t sizeLimit)
{
    if (text.size() > sizeLimit) {
        throw XmlError{tooLargeCause(sizeLimit)};
    }
    std::size_t const steps = mostXmlSteps(sizeLimit);
    XmlEncoding const encoding = text.starts_with(c_byteOrderMark)
                                     ? XmlEncoding::Utf8
                                     : Scanner(text, XmlEncoding::Bytes, steps).FindDeclaredEncoding();
    if (std::size_t const nul = text.find('\0'); nul != std::string_view::npos) {
        throw errorAt(text, nul, encoding, c_nulCause);
    }
    if (encoding == XmlEncoding::Utf8) {
        checkUtf8(text);
    }
    Scanner(text, encoding, steps).scan();
    return encoding;
}

bool isXmlName(std::string_view name)
{
    return !name.empty() && isNameStart(name.front()) && std::all_of(name.begin(), name.end(), isNameCharacter);
}
} // namespace tesseralis::detail
