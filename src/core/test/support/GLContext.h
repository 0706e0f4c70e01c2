#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace tesseralis::test {
/// A GL context of the compatibility profile, current while it lives, with a surface in memory that has 8 bits for each
/// of red, green, blue and alpha, a depth and a stencil buffer. It needs no display. One at a time.
class GLContext
{
public:
    GLContext(int width, int height);
    GLContext(GLContext const &) = delete;
    GLContext & operator=(GLContext const &) = delete;
    ~GLContext();

    /// What there is none of, so that there is no context; empty if there is one.
    std::string const & GetMissing() const { return m_missing; }

private:
    std::string make(int width, int height);

    void * m_display = nullptr;
    void * m_surface = nullptr;
    void * m_context = nullptr;
    std::string m_missing;
};

/// What of GL's state is to be the same after a frame as before.
std::map<unsigned int, std::vector<int>> currentState();

/// A test with a context and a surface of 64 by 48 pixels. Where there can't be one the test is skipped, or fails if
/// the environment variable TESSERALIS_REQUIRE_GL is set.
class GLTest : public testing::Test
{
public:
    static constexpr int c_width = 64;
    static constexpr int c_height = 48;

protected:
    void SetUp() override;

private:
    GLContext m_context{c_width, c_height};
};
} // namespace tesseralis::test
