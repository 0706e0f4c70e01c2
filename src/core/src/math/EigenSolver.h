#pragma once

#include "object/Export.h"

#include <cstddef>
#include <vector>

namespace tesseralis {
/// Eigenvalues and eigenvectors of a real symmetric matrix: fill it in, call solve(), read the results; then it can be
/// filled again. The lower triangle alone counts. Indices are not checked.
class TESSERALIS_API EigenSolver
{
public:
    /// For a matrix of size * size zeros.
    explicit EigenSolver(unsigned int size);

    float operator()(unsigned int row, unsigned int column) const { return m_matrix[GetIndex(row, column)]; }
    float & operator()(unsigned int row, unsigned int column) { return m_matrix[GetIndex(row, column)]; }

    /// Replaces the matrix by its eigenvectors, one for each column, of unit length and orthogonal to one another.
    /// Takes time in the order of size cubed and no memory. A matrix with values that are not finite gives meaningless
    /// results.
    void solve();

    /// After solve(); in ascending order.
    float GetEigenvalue(unsigned int i) const { return m_eigenvalues[i]; }
    /// After solve(): column i of the matrix.
    std::vector<float> GetEigenvector(unsigned int i) const;

private:
    std::size_t GetIndex(std::size_t row, std::size_t column) const { return row * m_size + column; }

    /// Householder reduction to a tridiagonal matrix, with the transformations gathered in the matrix.
    void tridiagonal();
    /// QL algorithm with implicit shifts; false if an eigenvalue needs too many iterations.
    bool decompose();
    void sort();
    /// Turns a reflection into a rotation, as far as m_isRotation tells the two apart.
    void rotation();

    /// tridiagonal(): takes row i to two elements by a reflection, which it puts into the row; reflects the rows above;
    /// multiplies the reflection into what has been gathered.
    void reduceRow(std::size_t i);
    void reflectRows(std::size_t i);
    void gatherRow(std::size_t i);
    /// decompose(): makes off-diagonal element l negligible; finds the end of the block from l on that no negligible
    /// element divides; takes one step on this block. The matrix is transposed meanwhile.
    bool isolateEigenvalue(std::size_t l);
    std::size_t findSplit(std::size_t l) const;
    void sweep(std::size_t l, std::size_t m);
    void transposeMatrix();

    static constexpr unsigned int c_maximumIterations = 32;

    unsigned int m_size;
    std::vector<float> m_matrix;
    /// The diagonal while solving.
    std::vector<float> m_eigenvalues;
    std::vector<float> m_offDiagonal;
    bool m_isRotation = false;
};
} // namespace tesseralis
