#pragma once

// What nearly every test needs.

#include "object/Exception.h"
#include "object/Tesseralis.h"
#include "support/Messages.h"
#include "support/Output.h"
#include "support/Recorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace tesseralis::test {
using Texts = std::vector<std::string>;

inline std::string repeat(std::string const & text, std::size_t count)
{
    std::string result;
    for (; count > 0; --count) {
        result += text;
    }
    return result;
}
} // namespace tesseralis::test

using namespace tesseralis;
using namespace tesseralis::test;
