#include "math/EigenSolver.h"

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

using namespace tesseralis;

namespace {
/// A full symmetric matrix, filled in and solved in an object that is used again.
void solve(benchmark::State & state)
{
    auto const size = static_cast<unsigned int>(state.range(0));
    std::mt19937 random(1);
    std::uniform_real_distribution<float> distribution(-1.0f, 1.0f);
    std::vector<float> matrix(size * size);
    for (unsigned int i = 0; i < size; ++i) {
        for (unsigned int j = 0; j <= i; ++j) {
            matrix[i * size + j] = matrix[j * size + i] = distribution(random);
        }
    }

    EigenSolver solver(size);
    for (auto _ : state) {
        for (unsigned int i = 0; i < size; ++i) {
            for (unsigned int j = 0; j < size; ++j) {
                solver(i, j) = matrix[i * size + j];
            }
        }
        solver.solve();
        benchmark::DoNotOptimize(solver.GetEigenvalue(0));
    }
}
BENCHMARK(solve)->Arg(3)->Arg(16)->Arg(128);
} // namespace
