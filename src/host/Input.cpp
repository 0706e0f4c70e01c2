#include "Input.h"

#include "HostViewer.h"

#include "math/Vector.h"
#include "object/Exception.h"

#include <charconv>
#include <cmath>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>

namespace tesseralis::host {
namespace {
using Words = std::vector<std::string>;
using Event = std::function<void(HostViewer &)>;

Words wordsOf(std::string const & line)
{
    std::istringstream stream(line.substr(0, line.find('#')));
    return {std::istream_iterator<std::string>(stream), std::istream_iterator<std::string>()};
}

std::optional<float> numberOf(std::string const & word)
{
    float number = 0.0f;
    auto const [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    bool const isNumber = error == std::errc() && end == word.data() + word.size() && std::isfinite(number);
    return isNumber ? std::optional(number) : std::nullopt;
}

/// Empty for words that are no event.
Event cursorEvent(Words const & words)
{
    std::optional<float> const x = numberOf(words[2]);
    std::optional<float> const y = numberOf(words[3]);
    if (!x || !y) {
        return {};
    }
    return [device = words[1], position = Vector(*x, *y, 0.0f)](HostViewer & viewer) {
        viewer.cursor(device, position, 0.0f, 0.0f);
    };
}

Event buttonEvent(Words const & words)
{
    std::string const & device = words[1];
    std::string const & state = words[2];
    bool const isDown = state == "1" || state == "true";
    if (isDown || state == "0" || state == "false") {
        return [device, isDown](HostViewer & viewer) { viewer.button(device, isDown); };
    }
    std::optional<float> const pressure = numberOf(state);
    if (!pressure) {
        return {};
    }
    return [device, force = *pressure](HostViewer & viewer) { viewer.button(device, force); };
}

Event eventOf(Words const & words)
{
    if (words.front() == "cursor" && words.size() == 4) {
        return cursorEvent(words);
    }
    if (words.front() == "button" && words.size() == 3) {
        return buttonEvent(words);
    }
    if (words.front() == "frame" && words.size() == 1) {
        return [](HostViewer & viewer) { viewer.advance(); };
    }
    return {};
}
} // namespace

Input::Input(std::string const & filename)
{
    std::ifstream file(filename, std::ios::binary);
    std::string line;
    for (int number = 1; std::getline(file, line); ++number) {
        Words const words = wordsOf(line);
        if (words.empty()) {
            continue;
        }
        Event const event = eventOf(words);
        if (!event) {
            throw Exception("Error loading from '%s' (line %d: '%s' is none of 'cursor DEVICE X Y', 'button DEVICE "
                            "STATE' and 'frame')!",
                            filename.c_str(), number, line.c_str());
        }
        m_events.push_back(event);
    }
    if (!file.eof()) {
        throw Exception("Error loading from '%s' (it can't be read)!", filename.c_str());
    }
}

void Input::replay(HostViewer & viewer) const
{
    for (Event const & event : m_events) {
        event(viewer);
    }
}
} // namespace tesseralis::host
