#pragma once

#include <iosfwd>

namespace tesseralis::detail {
/// Reads a float as a stream does, and besides what a stream writes but doesn't read: "inf" and "nan" with or without a
/// minus sign. On a failure the component keeps its value.
std::istream & readComponent(std::istream & stream, float & component);
} // namespace tesseralis::detail
