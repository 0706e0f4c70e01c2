#include "Output.h"

#include "Text.h"

#include "object/Exception.h"

#include <iostream>
#include <string>

namespace tesseralis::host {
namespace {
/// Collects an entry of the log, up to its blank line.
class LogBuffer : public std::streambuf
{
public:
    ~LogBuffer() override { endEntry(); }

protected:
    int overflow(int character) override
    {
        if (character == '\n') {
            endLine();
        } else if (character != traits_type::eof()) {
            m_line += static_cast<char>(character);
        }
        return 0;
    }

private:
    void endLine()
    {
        removeColours();
        if (m_line.empty()) {
            endEntry();
        }
        m_entry += m_line;
        m_line.clear();
    }

    void endEntry()
    {
        m_entry += m_line;
        m_line.clear();
        if (!m_entry.empty()) {
            std::cerr << "tesseralis: warning: " << asMessage(m_entry) << '\n';
        }
        m_entry.clear();
    }

    /// The log's own, which begin its lines.
    void removeColours()
    {
        while (m_line.starts_with("\x1b[")) {
            m_line.erase(0, std::min(m_line.find('m'), m_line.size() - 1) + 1);
        }
    }

    std::string m_line;
    std::string m_entry;
};
} // namespace

std::ostream & GetOutput()
{
    static std::ostream s_output(std::cout.rdbuf());
    return s_output;
}

void flushOutput()
{
    GetOutput() << std::flush;
    if (!GetOutput()) {
        throw Exception("The output can't be written.");
    }
}

LogRedirection::LogRedirection() : m_log(std::make_unique<LogBuffer>())
{
    GetOutput(); // which keeps standard output
    m_output = std::cout.rdbuf(m_log.get());
}

LogRedirection::~LogRedirection()
{
    std::cout.rdbuf(m_output);
}
} // namespace tesseralis::host
