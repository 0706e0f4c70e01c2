#include "math/EigenSolver.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <functional>
#include <numeric>
#include <tuple>
#include <utility>

namespace tesseralis {
namespace {
/// A plane rotation of two neighbouring columns.
struct Rotation
{
    float sine;
    float cosine;
};

/// N neighbouring floats that stay in registers over a loop.
template <std::size_t N>
struct Strip
{
    static constexpr std::size_t c_laneWidth = N < 4 ? N : 4;
    static constexpr std::size_t c_laneCount = N / c_laneWidth;
    using Lane __attribute__((vector_size(c_laneWidth * sizeof(float)))) = float;

    static Strip load(float const * source)
    {
        Strip result;
        for (std::size_t i = 0; i < c_laneCount; ++i) {
            std::memcpy(&result.lanes[i], source + i * c_laneWidth, sizeof(Lane));
        }
        return result;
    }
    void store(float * target) const
    {
        for (std::size_t i = 0; i < c_laneCount; ++i) {
            std::memcpy(target + i * c_laneWidth, &lanes[i], sizeof(Lane));
        }
    }
    friend Strip operator+(Strip const & a, Strip const & b)
    {
        Strip result;
        for (std::size_t i = 0; i < c_laneCount; ++i) {
            result.lanes[i] = a.lanes[i] + b.lanes[i];
        }
        return result;
    }
    friend Strip operator-(Strip const & a, Strip const & b)
    {
        Strip result;
        for (std::size_t i = 0; i < c_laneCount; ++i) {
            result.lanes[i] = a.lanes[i] - b.lanes[i];
        }
        return result;
    }
    friend Strip operator*(Strip const & a, float factor)
    {
        Strip result;
        for (std::size_t i = 0; i < c_laneCount; ++i) {
            result.lanes[i] = a.lanes[i] * factor;
        }
        return result;
    }

    Lane lanes[c_laneCount];
};

/// Calls visit(start, strip) for strips of neighbours that cover 0 to count; strip only tells their type.
template <class Visit>
void forEachStrip(std::size_t count, Visit const & visit)
{
    std::size_t start = 0;
    for (; start + 16 <= count; start += 16) {
        visit(start, Strip<16>());
    }
    for (; start + 4 <= count; start += 4) {
        visit(start, Strip<4>());
    }
    for (; start < count; ++start) {
        visit(start, Strip<1>());
    }
}

/// The sum of a strip of each row, weighted by row and added from the first row on.
template <class Floats>
Floats sumRows(float const * row, std::size_t stride, float const * weights, std::size_t count)
{
    Floats sums = {};
    for (std::size_t k = 0; k < count; ++k, row += stride) {
        sums = sums + Floats::load(row) * weights[k];
    }
    return sums;
}

/// Applies a sequence of rotations to a strip of rows: the first to the column here and the one before, the next to
/// that one and its predecessor, and so on. Columns are contiguous.
template <class Floats>
void rotateColumns(float * column, std::size_t stride, Rotation const * rotations, std::size_t count)
{
    Floats carried = Floats::load(column);
    for (std::size_t i = 0; i < count; ++i, column -= stride) {
        auto const [sine, cosine] = rotations[i];
        Floats const value = Floats::load(column - stride);
        (value * sine + carried * cosine).store(column);
        carried = value * cosine - carried * sine;
    }
    carried.store(column);
}

/// The rotation that takes (g, f) to the first axis, and the length that it has there.
std::pair<Rotation, float> makeRotation(float g, float f)
{
    if (std::abs(f) >= std::abs(g)) {
        float const cotangent = g / f;
        float const root = std::sqrt(cotangent * cotangent + 1.0f);
        float const sine = 1.0f / root;
        return {{sine, cotangent * sine}, f * root};
    }
    float const tangent = f / g;
    float const root = std::sqrt(tangent * tangent + 1.0f);
    float const cosine = 1.0f / root;
    return {{tangent * cosine, cosine}, g * root};
}
} // namespace

EigenSolver::EigenSolver(unsigned int size)
    : m_size(size), m_matrix(static_cast<std::size_t>(size) * size), m_eigenvalues(size), m_offDiagonal(size)
{
}

void EigenSolver::solve()
{
    if (m_size == 0) {
        return;
    }
    tridiagonal();
    // From here on whole columns are worked on, which the transposed matrix keeps together.
    transposeMatrix();
    decompose();
    sort();
    rotation();
    transposeMatrix();
}

std::vector<float> EigenSolver::GetEigenvector(unsigned int i) const
{
    std::vector<float> result(m_size);
    for (std::size_t k = 0; k < m_size; ++k) {
        result[k] = m_matrix[GetIndex(k, i)];
    }
    return result;
}

void EigenSolver::tridiagonal()
{
    // Both triangles are kept, so that whole rows can be worked on.
    for (std::size_t i = 1; i < m_size; ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            m_matrix[GetIndex(j, i)] = m_matrix[GetIndex(i, j)];
        }
    }
    for (std::size_t i = m_size - 1; i > 0; --i) {
        reduceRow(i);
    }
    m_eigenvalues[0] = 0.0f;
    m_offDiagonal[0] = 0.0f;
    for (std::size_t i = 0; i < m_size; ++i) {
        gatherRow(i);
    }
    std::shift_left(m_offDiagonal.begin(), m_offDiagonal.end(), 1);
    m_offDiagonal[m_size - 1] = 0.0f;
    m_isRotation = m_size % 2 == 0;
}

void EigenSolver::reduceRow(std::size_t i)
{
    float * const row = &m_matrix[GetIndex(i, 0)];
    float * const e = m_offDiagonal.data();
    float scale = 0.0f;
    if (i > 1) {
        scale = std::accumulate(row, row + i, 0.0f, [](float sum, float value) { return sum + std::abs(value); });
    }
    m_eigenvalues[i] = 0.0f;
    if (scale == 0.0f) {
        e[i] = row[i - 1];
        return;
    }

    // The Householder vector, in the row's place.
    float const inverseScale = 1.0f / scale;
    float h = 0.0f;
    for (std::size_t k = 0; k < i; ++k) {
        row[k] *= inverseScale;
        h += row[k] * row[k];
    }
    float const last = row[i - 1];
    float const g = last > 0.0f ? -std::sqrt(h) : std::sqrt(h);
    e[i] = scale * g;
    h -= last * g;
    row[i - 1] = last - g;
    m_eigenvalues[i] = h;
    reflectRows(i);
}

void EigenSolver::reflectRows(std::size_t i)
{
    float const * const row = &m_matrix[GetIndex(i, 0)];
    float * const e = m_offDiagonal.data();
    float const h = m_eigenvalues[i];

    // The product of these rows with the Householder vector.
    forEachStrip(i, [&]<class Floats>(std::size_t start, Floats) {
        sumRows<Floats>(&m_matrix[start], m_size, row, i).store(e + start);
    });
    float f = 0.0f;
    for (std::size_t j = 0; j < i; ++j) {
        m_matrix[GetIndex(j, i)] = row[j] / h;
        e[j] /= h;
        f += e[j] * row[j];
    }

    // Their reflection from both sides.
    float const hh = f * 0.5f * (1.0f / h);
    for (std::size_t j = 0; j < i; ++j) {
        e[j] -= hh * row[j];
    }
    forEachStrip(i, [&]<class Floats>(std::size_t start, Floats) {
        float * target = &m_matrix[start];
        Floats const left = Floats::load(row + start);
        Floats const right = Floats::load(e + start);
        for (std::size_t j = 0; j < i; ++j, target += m_size) {
            (Floats::load(target) - (right * row[j] + left * e[j])).store(target);
        }
    });
}

void EigenSolver::gatherRow(std::size_t i)
{
    float * const row = &m_matrix[GetIndex(i, 0)];
    if (m_eigenvalues[i] != 0.0f) {
        forEachStrip(i, [&]<class Floats>(std::size_t start, Floats) {
            Floats const sums = sumRows<Floats>(&m_matrix[start], m_size, row, i);
            float * target = &m_matrix[start];
            for (std::size_t k = 0; k < i; ++k, target += m_size) {
                (Floats::load(target) - sums * m_matrix[GetIndex(k, i)]).store(target);
            }
        });
    }

    m_eigenvalues[i] = row[i];
    row[i] = 1.0f;
    for (std::size_t j = 0; j < i; ++j) {
        row[j] = 0.0f;
        m_matrix[GetIndex(j, i)] = 0.0f;
    }
}

bool EigenSolver::decompose()
{
    for (std::size_t l = 0; l < m_size; ++l) {
        if (!isolateEigenvalue(l)) {
            return false;
        }
    }
    return true;
}

bool EigenSolver::isolateEigenvalue(std::size_t l)
{
    for (unsigned int i = 0; i < c_maximumIterations; ++i) {
        std::size_t const m = findSplit(l);
        if (m == l) {
            return true;
        }
        sweep(l, m);
    }
    return false;
}

std::size_t EigenSolver::findSplit(std::size_t l) const
{
    for (std::size_t m = l; m + 1 < m_size; ++m) {
        float const sum = std::abs(m_eigenvalues[m]) + std::abs(m_eigenvalues[m + 1]);
        if (sum + std::abs(m_offDiagonal[m]) == sum) {
            return m;
        }
    }
    return m_size - 1;
}

void EigenSolver::sweep(std::size_t l, std::size_t m)
{
    float * const d = m_eigenvalues.data();
    float * const e = m_offDiagonal.data();
    float const ratio = (d[l + 1] - d[l]) / (2.0f * e[l]);
    float const root = std::sqrt(ratio * ratio + 1.0f);
    float g = d[m] - d[l] + e[l] / (ratio >= 0.0f ? ratio + root : ratio - root);
    Rotation turn = {1.0f, 1.0f};
    float p = 0.0f;

    // The columns follow in batches of rotations, each of which passes over the matrix only once.
    std::array<Rotation, 32> batch;
    std::size_t count = 0;
    for (std::size_t i = m; i-- > l;) {
        float const b = turn.cosine * e[i];
        std::tie(turn, e[i + 1]) = makeRotation(g, turn.sine * e[i]);
        g = d[i + 1] - p;
        float const r = (d[i] - g) * turn.sine + 2.0f * b * turn.cosine;
        p = turn.sine * r;
        d[i + 1] = g + p;
        g = turn.cosine * r - b;

        batch[count++] = turn;
        if (count == batch.size() || i == l) {
            float * const column = &m_matrix[GetIndex(i + count, 0)];
            forEachStrip(m_size, [&]<class Floats>(std::size_t start, Floats) {
                rotateColumns<Floats>(column + start, m_size, batch.data(), count);
            });
            count = 0;
        }
    }
    d[l] -= p;
    e[l] = g;
    e[m] = 0.0f;
}

void EigenSolver::sort()
{
    for (std::size_t i = 0; i + 1 < m_size; ++i) {
        float * const d = m_eigenvalues.data();
        auto const k = static_cast<std::size_t>(std::min_element(d + i, d + m_size) - d);
        if (k == i) {
            continue;
        }
        std::swap(d[i], d[k]);
        std::swap_ranges(&m_matrix[GetIndex(i, 0)], &m_matrix[GetIndex(i, 0)] + m_size, &m_matrix[GetIndex(k, 0)]);
        // Counted once for each element of the columns.
        m_isRotation = m_isRotation != (m_size % 2 == 1);
    }
}

void EigenSolver::rotation()
{
    if (!m_isRotation) {
        std::transform(m_matrix.begin(), m_matrix.begin() + m_size, m_matrix.begin(), std::negate<>());
    }
}

void EigenSolver::transposeMatrix()
{
    for (std::size_t i = 1; i < m_size; ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            std::swap(m_matrix[GetIndex(i, j)], m_matrix[GetIndex(j, i)]);
        }
    }
}
} // namespace tesseralis
