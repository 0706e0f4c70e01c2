#pragma once

#include "object/Export.h"

#include <vector>

namespace tesseralis {
/// A cubic table of a Gaussian, for use as the kernel of a filter. Its standard deviation is a sixth of the size; it is
/// not normalised, its peak of 1 lies at half the size on each axis: on the central entry of an even size, half a cell
/// beyond that of an odd one.
class TESSERALIS_API Gaussian
{
public:
    /// Computes size * size * size entries. Throws Exception or std::bad_alloc if there are too many to hold.
    explicit Gaussian(unsigned int size);

    unsigned int GetSize() const { return m_size; }
    /// The entry at an offset from entry size / 2 on each axis; 0 outside the table.
    float Get(int x, int y, int z) const;

private:
    std::vector<float> m_values;
    unsigned int m_size;
};
} // namespace tesseralis
