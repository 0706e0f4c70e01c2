#pragma once

#include "object/Observer.h"

#include <iosfwd>

namespace tesseralis::host {
/// Prints every event of the registry and of all objects that are registered when it is made, a line each.
class Watcher : public Observer
{
public:
    explicit Watcher(std::ostream & stream);

protected:
    void modified(Observable const & observable, ObservableEvent const & event) override;

private:
    std::ostream & m_stream;
};
} // namespace tesseralis::host
