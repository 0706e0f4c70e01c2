// The JSON form of variants: a writer of both forms and a reader that takes both.

#include "value/Variant.h"

#include "object/Exception.h"
#include "value/VariantArrayValue.h"
#include "value/VariantBooleanValue.h"
#include "value/VariantMapValue.h"
#include "value/VariantNumberValue.h"
#include "value/VariantStringValue.h"
#include "value/detail/NumberText.h"
#include "value/detail/VariantFields.h"

#include <cmath>
#include <sstream>
#include <string_view>
#include <utility>

namespace tesseralis {
namespace {
constexpr char c_digits[] = "0123456789abcdef";

/// What stands behind the backslash of an escape; "u" for characters without one of their own, 0 for those that need
/// none.
char GetEscape(char character)
{
    switch (character) {
    case '"':
    case '\\':
        return character;
    case '\b':
        return 'b';
    case '\f':
        return 'f';
    case '\n':
        return 'n';
    case '\r':
        return 'r';
    case '\t':
        return 't';
    default:
        return static_cast<unsigned char>(character) < ' ' ? 'u' : '\0';
    }
}

class JsonWriter
{
public:
    std::string & GetText() { return m_text; }

    void writePlain(Variant const & value);
    void writeTyped(Variant const & value);

private:
    using Write = void (JsonWriter::*)(Variant const &);

    static constexpr unsigned int c_deepestOption = 8;

    void writeString(std::string const & text);
    void writeNumber(float number);
    void writeOption(Variant const & option);
    void writeMap(Variant const & map, Write write);
    void writeArray(Variant const & array, Write write);
    template <class T>
    void writeFields(T const & value);
    void writeFields(Matrix const & value);
    void writeLimit(char const * name, Variant const & limit);
    /// Puts the bracket that ends a list in the place of the last comma.
    void close(char bracket);

    std::string m_text;
    unsigned int m_optionDepth = 0;
};

void JsonWriter::writePlain(Variant const & value)
{
    switch (value.GetType()) {
    case Variant::Type::Undefined:
        m_text += "null";
        return;
    case Variant::Type::String:
    case Variant::Type::Handle:
    case Variant::Type::Filename:
        writeString(value);
        return;
    case Variant::Type::Boolean:
    case Variant::Type::Integer:
        m_text += value.operator std::string();
        return;
    case Variant::Type::Float:
        writeNumber(value);
        return;
    case Variant::Type::Map:
        writeMap(value, &JsonWriter::writePlain);
        return;
    case Variant::Type::Array:
        writeArray(value, &JsonWriter::writePlain);
        return;
    case Variant::Type::Option:
        writeOption(value);
        return;
    default:
        detail::withClassType(value.GetType(), [&](auto fields) {
            decltype(fields) const converted = value;
            writeFields(converted);
        });
    }
}

void JsonWriter::writeTyped(Variant const & value)
{
    if (!value.IsDefined()) {
        writePlain(value);
        return;
    }

    m_text += "{\"_type\":\"";
    m_text += value.GetTypeName();
    m_text += '"';
    writeLimit("_minimum", value.GetMinimum());
    writeLimit("_maximum", value.GetMaximum());
    writeLimit("_filter", value.GetFilter());
    m_text += ",\"_value\":";
    if (value.GetType() == Variant::Type::Map) {
        writeMap(value, &JsonWriter::writeTyped);
    } else if (value.GetType() == Variant::Type::Array) {
        writeArray(value, &JsonWriter::writeTyped);
    } else {
        writePlain(value);
    }
    m_text += '}';
}

void JsonWriter::writeString(std::string const & text)
{
    m_text += '"';
    std::size_t written = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char const escape = GetEscape(text[i]);
        if (escape == '\0') {
            continue;
        }
        m_text.append(text, written, i - written);
        written = i + 1;
        m_text += '\\';
        m_text += escape;
        if (escape == 'u') {
            m_text += "00";
            m_text += c_digits[text[i] / 16];
            m_text += c_digits[text[i] % 16];
        }
    }
    m_text.append(text, written);
    m_text += '"';
}

void JsonWriter::writeNumber(float number)
{
    if (!std::isfinite(number)) {
        m_text += "null";
        return;
    }

    std::string text = detail::toText(number);
    // The reader takes a number without a point for an integer.
    std::size_t const exponent = text.find('e');
    if (exponent != std::string::npos && text.find('.') == std::string::npos) {
        text.insert(exponent, ".0");
    }
    m_text += text;
}

void JsonWriter::writeOption(Variant const & option)
{
    // The selected option stands in the text twice, and so all that is in it.
    if (m_optionDepth == c_deepestOption) {
        throw Exception("Unable to write options that nest deeper than %u levels as JSON!", c_deepestOption);
    }

    ++m_optionDepth;
    Variant map = Variant::TypeMap();
    map.assign(option);
    writeMap(map, &JsonWriter::writePlain);
    --m_optionDepth;
}

void JsonWriter::writeMap(Variant const & map, Write write)
{
    m_text += '{';
    for (unsigned int i = 0; i < map.GetSize(); ++i) {
        writeString(map.GetElementName(i));
        m_text += ':';
        (this->*write)(map.GetElement(i));
        m_text += ',';
    }
    close('}');
}

void JsonWriter::writeArray(Variant const & array, Write write)
{
    m_text += '[';
    for (unsigned int i = 0; i < array.GetSize(); ++i) {
        (this->*write)(array.GetElement(i));
        m_text += ',';
    }
    close(']');
}

template <class T>
void JsonWriter::writeFields(T const & value)
{
    m_text += '{';
    for (unsigned int i = 0; i < std::size(detail::Fields<T>::c_names); ++i) {
        writeString(detail::Fields<T>::c_names[i]);
        m_text += ':';
        writePlain(detail::Fields<T>::Get(value, i));
        m_text += ',';
    }
    close('}');
}

void JsonWriter::writeFields(Matrix const & value)
{
    Variant array = Variant::TypeArray();
    array = value;
    writeArray(array, &JsonWriter::writePlain);
}

void JsonWriter::writeLimit(char const * name, Variant const & limit)
{
    if (limit.IsDefined()) {
        m_text += ',';
        writeString(name);
        m_text += ':';
        writePlain(limit);
    }
}

void JsonWriter::close(char bracket)
{
    if (m_text.back() == ',') {
        m_text.back() = bracket;
    } else {
        m_text += bracket;
    }
}
} // namespace

/// The reader. Values are payloads, null for an undefined one, so that they go into their containers without being
/// copied.
class detail::VariantJsonReader
{
public:
    using Value = std::unique_ptr<VariantValue>;

    VariantJsonReader(std::stringstream & stream, bool & error)
        : m_stream(stream), m_buffer(*stream.rdbuf()), m_error(error)
    {
    }

    Value parseValue();
    Value parseObject();
    Value parseArray();
    Value parseString() { return std::make_unique<VariantStringValue>(parseText()); }
    Value parseLiteral();

    static Variant GetVariant(Value value) { return Variant(std::move(value)); }

private:
    static constexpr int c_end = std::char_traits<char>::eof();
    static constexpr unsigned int c_deepest = 1024;
    static constexpr unsigned int c_mostValues = 4000000;

    int read();
    void skip(unsigned int count);
    void skipSpace();
    Value parseValue(int first);
    Value parseMembers();
    void parseMember(VariantMapValue & map, std::string const & key, int first);
    Value parseElements();
    Value parseNumber(int first);
    std::string parseText();
    char parseEscape();
    char parseCode();
    static bool readType(VariantMapValue & map, std::string & type);
    Value GetTyped(std::unique_ptr<VariantMapValue> map);
    Value GetConverted(Value value, Variant & source);

    std::stringstream & m_stream;
    std::stringbuf & m_buffer;
    bool & m_error;
    unsigned int m_depth = 0;
    unsigned int m_values = 0;
};

namespace detail {
int VariantJsonReader::read()
{
    int const character = m_buffer.sbumpc();
    if (character == c_end) {
        m_stream.setstate(std::ios_base::eofbit);
    }
    return character;
}

void VariantJsonReader::skip(unsigned int count)
{
    while (count > 0 && read() != c_end) {
        --count;
    }
}

void VariantJsonReader::skipSpace()
{
    int character = m_buffer.sgetc();
    while (character == ' ' || (character >= '\t' && character <= '\r')) {
        character = m_buffer.snextc();
    }
}

VariantJsonReader::Value VariantJsonReader::parseValue()
{
    skipSpace();
    int const first = read();
    return first == c_end || m_error ? nullptr : parseValue(first);
}

VariantJsonReader::Value VariantJsonReader::parseValue(int first)
{
    if (m_values == c_mostValues) {
        m_error = true;
        return nullptr;
    }

    ++m_values;
    switch (first) {
    case '{':
        return parseObject();
    case '[':
        return parseArray();
    case '"':
        return parseString();
    default:
        return parseLiteral();
    }
}

VariantJsonReader::Value VariantJsonReader::parseObject()
{
    if (m_depth == c_deepest) {
        m_error = true;
        return nullptr;
    }

    ++m_depth;
    Value value = parseMembers();
    --m_depth;
    return value;
}

VariantJsonReader::Value VariantJsonReader::parseArray()
{
    if (m_depth == c_deepest) {
        m_error = true;
        return nullptr;
    }

    ++m_depth;
    Value value = parseElements();
    --m_depth;
    return value;
}

VariantJsonReader::Value VariantJsonReader::parseMembers()
{
    auto map = std::make_unique<VariantMapValue>();
    std::string key;
    bool pending = false;
    while (!m_error) {
        skipSpace();
        int const character = read();
        if (character == c_end) {
            break;
        }
        if (character == '}') {
            return GetTyped(std::move(map));
        }
        if (character == ',' || character == ':') {
            continue;
        }

        if (pending) {
            parseMember(*map, key, character);
            pending = false;
        } else if (character == '"') {
            key = parseText();
            pending = true;
        } else {
            m_error = true;
            return nullptr;
        }
    }
    m_error = true;
    return std::make_unique<VariantMapValue>();
}

void VariantJsonReader::parseMember(VariantMapValue & map, std::string const & key, int first)
{
    Variant & element = map.GetElement(key);
    if (first != '"' || !element.IsDefined()) {
        element.install(parseValue(first));
        return;
    }

    // A repeated key: the text is assigned to the value that the key has.
    std::string const text = parseText();
    try {
        element = text;
    } catch (Exception const &) {
        m_error = true;
    }
}

VariantJsonReader::Value VariantJsonReader::parseElements()
{
    auto array = std::make_unique<VariantArrayValue>();
    while (!m_error) {
        skipSpace();
        int const character = read();
        if (character == c_end) {
            break;
        }
        if (character == ']') {
            return array;
        }
        if (character != ',') {
            Value value = parseValue(character);
            array->GetElement(array->GetSize()).install(std::move(value));
        }
    }
    m_error = true;
    return std::make_unique<VariantArrayValue>();
}

std::string VariantJsonReader::parseText()
{
    std::string text;
    for (int character = read(); character != c_end && !m_error; character = read()) {
        if (character == '"') {
            return text;
        }
        text += character == '\\' ? parseEscape() : static_cast<char>(character);
    }
    m_error = true;
    return text;
}

char VariantJsonReader::parseEscape()
{
    int const character = read();
    switch (character) {
    case 'b':
        return '\b';
    case 'f':
        return '\f';
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    case 'u':
        return parseCode();
    default:
        return static_cast<char>(character);
    }
}

char VariantJsonReader::parseCode()
{
    unsigned int code = 0;
    for (int i = 0; i < 4; ++i) {
        int const character = read();
        std::size_t const digit = std::string_view("0123456789abcdefABCDEF").find(static_cast<char>(character));
        if (character == c_end || digit == std::string_view::npos) {
            m_error = true;
            return '\0';
        }
        code = code * 16 + static_cast<unsigned int>(digit < 16 ? digit : digit - 6);
    }
    return static_cast<char>(code);
}

VariantJsonReader::Value VariantJsonReader::parseLiteral()
{
    m_buffer.sungetc();
    for (int character = read(); character != c_end; character = read()) {
        if (character == 't') {
            skip(3);
            return std::make_unique<VariantBooleanValue>(true);
        }
        if (character == 'f') {
            skip(4);
            return std::make_unique<VariantBooleanValue>(false);
        }
        if (character == 'n') {
            skip(3);
            return nullptr;
        }
        if (character == '-' || (character >= '0' && character <= '9')) {
            return parseNumber(character);
        }
    }
    m_error = true;
    return nullptr;
}

VariantJsonReader::Value VariantJsonReader::parseNumber(int first)
{
    std::string text;
    bool isFloat = false;
    int character = first;
    while ((character >= '0' && character <= '9') || character == '.' || character == 'e' || character == 'E' ||
           character == '-' || character == '+') {
        isFloat = isFloat || character == '.';
        text += static_cast<char>(character);
        character = read();
    }
    if (character != c_end) {
        m_buffer.sungetc();
    }

    if (isFloat) {
        return std::make_unique<VariantFloatValue>(readNumber<float>(text));
    }
    return std::make_unique<VariantIntegerValue>(readNumber<int>(text));
}

bool VariantJsonReader::readType(VariantMapValue & map, std::string & type)
{
    if (!map.HasElement("_type")) {
        return false;
    }
    try {
        type = map.GetElement("_type").operator std::string();
        return true;
    } catch (Exception const &) {
        return false;
    }
}

VariantJsonReader::Value VariantJsonReader::GetTyped(std::unique_ptr<VariantMapValue> map)
{
    std::string type;
    if (!readType(*map, type)) {
        return map;
    }

    Value value = Variant::makeValue(Variant::GetTypeFromName(type));
    if (!value) {
        return nullptr;
    }
    if (map->HasElement("_minimum")) {
        value->SetMinimum(map->GetElement("_minimum"));
    }
    if (map->HasElement("_maximum")) {
        value->SetMaximum(map->GetElement("_maximum"));
    }
    if (map->HasElement("_filter")) {
        value->SetFilter(map->GetElement("_filter"));
    }
    return map->HasElement("_value") ? GetConverted(std::move(value), map->GetElement("_value")) : std::move(value);
}

VariantJsonReader::Value VariantJsonReader::GetConverted(Value value, Variant & source)
{
    if (!source.IsDefined()) {
        return value;
    }

    // What the value shall hold is moved into it, since copies on each level would take too long in a deep text.
    auto * const container = dynamic_cast<VariantContainerValue *>(value.get());
    bool const structured = source.GetType() == Variant::Type::Array || source.GetType() == Variant::Type::Map;
    if (structured && source.GetType() == value->GetType()) {
        return source.release();
    }
    if ((container == nullptr || !container->take(*source.m_value, Origin::Document)) &&
        !value->IsEqual(*source.m_value)) {
        value->Set(*source.m_value);
    }
    return value;
}
} // namespace detail

std::string Variant::toJSON(Variant const & value, bool plain)
{
    JsonWriter writer;
    if (plain) {
        writer.writePlain(value);
    } else {
        writer.writeTyped(value);
    }
    return std::move(writer.GetText());
}

Variant Variant::fromJSON(std::string const & text)
{
    std::stringstream stream(text);
    bool error = false;
    auto value = detail::VariantJsonReader(stream, error).parseValue();
    return Variant(error ? nullptr : std::move(value));
}

#define TESSERALIS_JSON_STEP(Step)                                                                                     \
    Variant Variant::parseJSON##Step(std::stringstream & stream, bool & error)                                         \
    {                                                                                                                  \
        return detail::VariantJsonReader::GetVariant(detail::VariantJsonReader(stream, error).parse##Step());          \
    }
TESSERALIS_JSON_STEP(Value)
TESSERALIS_JSON_STEP(Object)
TESSERALIS_JSON_STEP(Array)
TESSERALIS_JSON_STEP(String)
TESSERALIS_JSON_STEP(Literal)
#undef TESSERALIS_JSON_STEP
} // namespace tesseralis
