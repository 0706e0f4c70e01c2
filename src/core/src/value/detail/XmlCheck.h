#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tesseralis::detail {
/// Why a document can't be read or written, and where: lines and columns count from 1, and 0 stands for no place.
struct XmlError
{
    std::string cause;
    int line = 0;
    int column = 0;
};

constexpr std::size_t c_deepestXml = 512;
constexpr std::size_t c_mostXmlAttributes = 1024;
constexpr std::size_t c_mostXmlElements = 4'000'000; // which take some hundred bytes of memory each
/// The most that the depths of all elements and, for each attribute, the number of those before it may come to: some
/// seconds of the parser's time. Documents that are not made to be slow stay far below.
std::size_t mostXmlSteps(std::size_t sizeLimit);

std::string tooManyElementsCause();
inline constexpr char const * c_nulCause = "NUL byte";
inline constexpr char const * c_tooManyStepsCause = "too many deeply nested elements or attributes";
std::string tooLargeCause(std::size_t sizeLimit);
std::string tooDeepCause();
std::string tooManyAttributesCause();

/// How the parser takes a document: its bytes as they are, or as UTF-8 for a byte order mark or a declaration.
enum class XmlEncoding
{
    Bytes,
    Utf8
};

/// Stands between a document from anywhere and the parser, which trusts its input too much: it recurses as deep as
/// elements nest, reads past a buffer that ends within a character, and takes quadratic time over attributes and
/// nested elements. Throws XmlError for what it mustn't see, and leaves ordinary mistakes to its own messages. Takes
/// linear time and constant memory.
///
/// Returns the encoding that the parser must be told, since the check holds for that one only.
XmlEncoding checkXml(std::string_view text, std::size_t sizeLimit);

/// Whether the parser reads this back as the name of an element or attribute.
bool isXmlName(std::string_view name);
} // namespace tesseralis::detail
