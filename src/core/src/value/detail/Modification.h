#pragma once

#include "object/Observable.h"

namespace tesseralis::detail {
/// Runs a change of an observable in a bracket, which is aborted where the change throws.
template <class Change>
void modify(Observable & observable, Change const & change)
{
    observable.beginModification();
    try {
        change();
    } catch (...) {
        observable.abortModification();
        throw;
    }
    observable.endModification();
}
} // namespace tesseralis::detail
