#pragma once

#include <string>

namespace tesseralis::detail {
/// The text forms of values. They are those of a default stream in the classic locale: a float has six significant
/// digits, a class value is what its stream operator writes.
std::string toText(bool value);
std::string toText(int value);
std::string toText(float value);
template <class T>
std::string toText(T const & value);
void appendText(std::string & text, int value);
void appendText(std::string & text, float value);

/// Reads a text that holds one value and nothing else but white space round it, as a default stream in the classic
/// locale does. Returns whether it does; the value changes only then.
bool parseText(std::string const & text, int & value);
bool parseText(std::string const & text, float & value);
template <class T>
bool parseText(std::string const & text, T & value);

/// The same for the index of an element, a whole number that isn't negative.
bool parseIndex(std::string const & text, unsigned int & index);

/// Whether a text is that of an infinite float or of one that is no number, which a stream writes but doesn't read.
bool parseNonFinite(std::string const & text, float & value);

/// Whether an index that comes from outside is so near to a number of elements that the gap may be filled: a short text
/// must not ask for a large array.
constexpr bool IsNear(unsigned int index, unsigned int count)
{
    return index / 2 < count;
}

/// The int or float that a text begins with: as much of it as a stream takes. A number out of range gives the limit
/// that it is beyond, no number gives 0.
template <class Number>
Number readNumber(std::string const & text);

/// The value that a text has when it is assigned to a payload of type T: for booleans and numbers, "true" and "false"
/// in any case too. Throws Exception if the text is no such value.
template <class T>
T readText(std::string const & text);

/// Whether a float is a whole number in the range of an integer, which is then stored.
bool IsWhole(float value, int & whole);
} // namespace tesseralis::detail
