#pragma once

#include "object/Observable.h"
#include "object/Observer.h"

#include <iosfwd>
#include <memory>
#include <string>

namespace tesseralis {
class ArchiveElement;
class Box;
class Color;
class Handle;
class Matrix;
class Quaternion;
class VariantValue;
class Vector;

namespace detail {
class VariantJsonReader;

/// Where the names of elements come from: those of a document must not make an array much larger than the document.
enum class Origin
{
    Program,
    Document
};
} // namespace detail

/// A value of one of fifteen types, as properties, messages and the results of evaluation carry it: a box round one
/// payload, which decides what it accepts, what it converts to and what its text is. Whoever observes a variant hears
/// of each change in it, also of one deep inside a nested array or map.
///
/// There are two kinds of assignment. Assigning a Variant replaces everything, type and limits included. Assigning a
/// plain value, and assign(), convert into the variant's own type and limits, and throw Exception where the value
/// doesn't fit. Only an undefined variant takes its type from what it is assigned. Whatever throws leaves the value,
/// its limits and open brackets as they were.
///
/// Texts are the same in every locale. Not for sharing between threads.
class TESSERALIS_API Variant : public Observable, public Observer
{
public:
    enum class Type
    {
        Undefined = 0,
        Array = 1,
        Map = 2,
        Option = 3,
        String = 4,
        Boolean = 5,
        Integer = 6,
        Float = 7,
        Vector = 8,
        Quaternion = 9,
        Box = 10,
        Matrix = 11,
        Color = 12,
        Handle = 13,
        Filename = 14
    };

    Variant();
    /// A clone of the source, limits included.
    Variant(Variant const & source);
    Variant(std::string const & value);
    Variant(char const * value);
    Variant(bool value);
    Variant(int value);
    /// Throws Exception if the value is out of the limits.
    Variant(int value, int minimum, int maximum);
    Variant(float value);
    /// Throws Exception if the value is out of the limits.
    Variant(float value, float minimum, float maximum);
    Variant(Vector const & value);
    Variant(Quaternion const & value);
    Variant(Box const & value);
    Variant(Matrix const & value);
    Variant(Color const & value);
    /// The default of a type; undefined for a number that is no type.
    explicit Variant(Type type);
    ~Variant() override;

    static Variant TypeArray() { return Variant(Type::Array); }
    static Variant TypeMap() { return Variant(Type::Map); }
    static Variant TypeOption() { return Variant(Type::Option); }
    static Variant TypeString() { return Variant(Type::String); }
    static Variant TypeString(std::string const & value) { return Variant(value); }
    static Variant TypeBoolean() { return Variant(Type::Boolean); }
    static Variant TypeBoolean(bool value) { return Variant(value); }
    static Variant TypeInteger() { return Variant(Type::Integer); }
    static Variant TypeInteger(int value) { return Variant(value); }
    /// The value is 0: throws Exception if that is out of the limits.
    static Variant TypeInteger(int minimum, int maximum) { return Variant(0, minimum, maximum); }
    static Variant TypeInteger(int value, int minimum, int maximum) { return Variant(value, minimum, maximum); }
    static Variant TypeFloat() { return Variant(Type::Float); }
    static Variant TypeFloat(float value) { return Variant(value); }
    /// The value is 0: throws Exception if that is out of the limits.
    static Variant TypeFloat(float minimum, float maximum) { return Variant(0.0f, minimum, maximum); }
    static Variant TypeFloat(float value, float minimum, float maximum) { return Variant(value, minimum, maximum); }
    static Variant TypeVector() { return Variant(Type::Vector); }
    static Variant TypeVector(Vector const & value) { return Variant(value); }
    static Variant TypeQuaternion() { return Variant(Type::Quaternion); }
    static Variant TypeQuaternion(Quaternion const & value) { return Variant(value); }
    static Variant TypeBox() { return Variant(Type::Box); }
    static Variant TypeBox(Box const & value) { return Variant(value); }
    static Variant TypeMatrix() { return Variant(Type::Matrix); }
    static Variant TypeMatrix(Matrix const & value) { return Variant(value); }
    static Variant TypeColor() { return Variant(Type::Color); }
    static Variant TypeColor(Color const & value) { return Variant(value); }
    static Variant TypeFilename() { return Variant(Type::Filename); }
    /// One or several file names with ";" between them.
    static Variant TypeFilename(std::string const & value);
    static Variant TypeFilename(std::string const & value, std::string const & filter);

    /// The type of that name; undefined for any other text.
    static Type GetTypeFromName(std::string const & name);
    /// Empty for a number that is no type.
    static std::string GetNameFromType(Type type);

    bool IsDefined() const { return m_value != nullptr; }
    Type GetType() const;
    std::string GetTypeName() const;
    /// The limits and the filter are undefined where the type has none.
    Variant GetMinimum() const;
    Variant GetMaximum() const;
    Variant GetFilter() const;
    /// A limit that doesn't convert to the own type is ignored, a value outside is moved to the nearest limit. Nobody
    /// is told.
    void SetMinimum(Variant const & minimum);
    void SetMaximum(Variant const & maximum);
    void SetFilter(Variant const & filter);

    /// Whether the right value, converted to the type of the left one, is equal to it. Limits play no part. An array is
    /// equal to arrays only, a map to maps.
    bool operator==(Variant const & other) const;
    bool operator!=(Variant const & other) const { return !(*this == other); }

    /// The value converted. Throw Exception where the value has no such form or there is no value.
    operator std::string() const;
    operator bool() const;
    operator int() const;
    operator float() const;
    operator Vector() const;
    operator Quaternion() const;
    operator Box() const;
    operator Matrix() const;
    operator Color() const;

    /// Replaces value, type and limits, by nothing if the source is undefined. The source may be inside this variant.
    Variant & operator=(Variant const & source);
    /// Converts the value to the own type; an undefined variant takes its type.
    Variant & operator=(std::string const & value);
    Variant & operator=(char const * value);
    Variant & operator=(bool value);
    Variant & operator=(int value);
    Variant & operator=(float value);
    Variant & operator=(Vector const & value);
    Variant & operator=(Quaternion const & value);
    Variant & operator=(Box const & value);
    Variant & operator=(Matrix const & value);
    Variant & operator=(Color const & value);
    /// Converts the source to the own type; an undefined variant becomes a clone. Nothing happens, and no event is
    /// sent, where the source is undefined or equal. The source may be inside this variant.
    void assign(Variant const & source);
    /// Makes this variant one that the requirement could be assigned from: if it isn't, it takes over the type and
    /// limits of the requirement, and the own value if that fits, else the value of the requirement.
    Variant & require(Variant const & requirement);
    /// Exchanges the values. Only this variant sends an event. Neither may be inside the other.
    void swap(Variant & other);
    /// Sets the default of the own type. Throws Exception if that is out of the limits.
    void clear();
    /// Appends a copy of the element to an array, which an undefined variant becomes.
    Variant & operator,(Variant const & element);

    /// Whether assign() would succeed.
    bool IsAssignable(Variant const & source) const;
    /// The value in another type; a copy for the undefined type. Throws Exception if it doesn't convert.
    Variant GetConverted(Type type) const;
    bool IsConvertable(Type type) const;

    /// The number of elements; 0 for anything but an array, a map, an option or a filename.
    unsigned int GetSize() const;
    bool HasElement(unsigned int index) const;
    bool HasElement(std::string const & name) const;
    /// The key in a map, else the index as text; empty behind the last element.
    std::string GetElementName(unsigned int index) const;
    /// The element, which is made where it is missing and the type can make it, also through a constant variant. An
    /// undefined variant becomes an array by an index and a map by a name, unless it is constant. Throws Exception
    /// where there is no such element, for a negative index and for one that is more than a million behind the last.
    /// The reference is good until the variant is given another value or loses the element.
    Variant & GetElement(unsigned int index);
    Variant & GetElement(std::string const & name);
    Variant const & GetElement(unsigned int index) const;
    Variant const & GetElement(std::string const & name) const;
    Variant & operator[](int index);
    Variant & operator[](std::string const & name) { return GetElement(name); }
    Variant & operator[](char const * const name) { return GetElement(std::string(name == nullptr ? "" : name)); }
    Variant const & operator[](int index) const;
    Variant const & operator[](std::string const & name) const { return GetElement(name); }
    Variant const & operator[](char const * const name) const
    {
        return GetElement(std::string(name == nullptr ? "" : name));
    }

    /// The value as JSON, bare, or with its type and limits so that it can be read back. An infinite number and one
    /// that is none are null. Throws Exception where a value has no text, such as an option without a selection, and
    /// for options that nest deeper than 8 levels, as each is written twice.
    std::string GetJSON(bool plain) const { return toJSON(*this, plain); }
    /// Assigns what fromJSON() makes of the text.
    void SetJSON(std::string const & text) { assign(fromJSON(text)); }
    static std::string toJSON(Variant const & value, bool plain);
    /// Reads the first value of a text, by looser rules than those of JSON; an object with the key "_type" is a value
    /// of that type. Undefined if the text ends too early, holds a key that is no string, nests deeper than 1,024
    /// levels or has more than 4,000,000 values. A number out of range becomes the limit that it is beyond, one that is
    /// none becomes 0. Throws Exception where the value of a typed object doesn't fit its type or limits.
    static Variant fromJSON(std::string const & text);

    /// Writes type, limits and value; nothing if undefined. A value without a text, such as an empty option, gets an
    /// empty one.
    virtual void store(ArchiveElement & element);
    /// Replaces everything by what store() wrote; undefined if the type is missing or unknown. Throws Exception where
    /// the text is no such value, and for an index that isn't below twice the number of stored elements: a short
    /// document can't ask for a large array. An option keeps its first selection where none has the text.
    virtual void retrieve(ArchiveElement & element);

protected:
    /// Converts a payload to the own type like assign(), but also where both are equal. Null changes nothing.
    void SetValue(VariantValue const * value);
    /// Null while undefined.
    VariantValue const * GetValue() const { return m_value.get(); }

    /// The steps of fromJSON(). Each begins behind the character that chose it, and sets the flag for a bad text.
    static Variant parseJSONValue(std::stringstream & stream, bool & error);
    static Variant parseJSONObject(std::stringstream & stream, bool & error);
    static Variant parseJSONArray(std::stringstream & stream, bool & error);
    static Variant parseJSONString(std::stringstream & stream, bool & error);
    static Variant parseJSONLiteral(std::stringstream & stream, bool & error);

    /// Passes an event of the payload on.
    void modified(Observable const & observable, ObservableEvent const & event) override;

private:
    friend class VariantValue;
    friend class detail::VariantJsonReader;

    explicit Variant(std::unique_ptr<VariantValue> value);

    /// The default payload of a type; null where there is none.
    static std::unique_ptr<VariantValue> makeValue(Type type);

    template <class T>
    T Convert(char const * type) const;
    template <class T>
    Variant & assignPlain(T const & value);
    template <class Payload, class Key>
    Variant & makeElement(Key const & key);
    /// The same as assign(), but the source need not keep its value, and half of it may be done where it throws.
    void take(Variant & source, detail::Origin origin);
    /// Exchanges the payload in a bracket.
    void replace(std::unique_ptr<VariantValue> value);
    std::unique_ptr<VariantValue> release();
    void install(std::unique_ptr<VariantValue> value);

    std::unique_ptr<VariantValue> m_value; // observed by this variant
};

/// Writes the value's text. Throws Exception if there is none.
TESSERALIS_API std::ostream & operator<<(std::ostream & stream, Variant const & variant);
} // namespace tesseralis
