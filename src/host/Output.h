#pragma once

#include <iosfwd>
#include <memory>
#include <streambuf>

namespace tesseralis::host {
/// What this program has to say, on standard output.
std::ostream & GetOutput();
/// Throws Exception if it can't be written.
void flushOutput();

/// Turns what the library logs on std::cout into warnings on standard error, one line for each entry, for its own life.
/// Only GetOutput() reaches standard output meanwhile.
class LogRedirection
{
public:
    LogRedirection();
    ~LogRedirection();
    LogRedirection(LogRedirection const &) = delete;
    LogRedirection & operator=(LogRedirection const &) = delete;

private:
    std::unique_ptr<std::streambuf> m_log;
    std::streambuf * m_output;
};
} // namespace tesseralis::host
