#include "math/Gaussian.h"

#include "math/Vector.h"
#include "object/Exception.h"

#include <cstddef>

namespace tesseralis {
Gaussian::Gaussian(unsigned int size) : m_size(size)
{
    // Two factors cannot overflow, but three can.
    std::size_t const slice = static_cast<std::size_t>(size) * size;
    if (size > 0 && slice > m_values.max_size() / size) {
        throw Exception("Unable to hold a gaussian of size %u.", size);
    }
    m_values.reserve(slice * size);

    float const sigma = static_cast<float>(size) / 6.0f;
    float const variance = sigma * sigma;
    float const center = static_cast<float>(size) * 0.5f;
    for (unsigned int z = 0; z < size; ++z) {
        for (unsigned int y = 0; y < size; ++y) {
            for (unsigned int x = 0; x < size; ++x) {
                Vector const offset = Vector(static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)) -
                                      Vector(center, center, center);
                m_values.push_back(std::exp(-offset.GetDot(offset) / (2.0f * variance)));
            }
        }
    }
}

float Gaussian::Get(int x, int y, int z) const
{
    // A negative index wraps to one that is too large.
    std::size_t const half = m_size / 2;
    std::size_t const i = half + static_cast<std::size_t>(x);
    std::size_t const j = half + static_cast<std::size_t>(y);
    std::size_t const k = half + static_cast<std::size_t>(z);
    bool const isInside = i < m_size && j < m_size && k < m_size;
    return isInside ? m_values[(k * m_size + j) * m_size + i] : 0.0f;
}
} // namespace tesseralis
