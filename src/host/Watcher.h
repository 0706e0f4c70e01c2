#pragma once

#include "object/Observer.h"

#include <iosfwd>
#include <string>

namespace tesseralis::host {
/// Prints every event of the registry, and with all objects of each of them as well, a line each. It can be added to
/// file monitors too.
class Watcher : public Observer
{
public:
    enum class Scope
    {
        Registry, ///< without the repetitions that several events of one object make
        Objects
    };

    Watcher(std::ostream & stream, Scope scope);

protected:
    void modified(Observable const & observable, ObservableEvent const & event) override;

private:
    void print(std::string const & line);

    std::ostream & m_stream;
    Scope m_scope;
    std::string m_lastLine;
};
} // namespace tesseralis::host
