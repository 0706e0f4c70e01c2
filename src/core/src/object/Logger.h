#pragma once

#include "object/Export.h"

#include <cstdint>
#include <iosfwd>
#include <string>

namespace tesseralis {
class Exception;

/// Standard output in colours that stand for levels: `Logger::Get().warning() << "..." << std::endl`. A colour stays
/// until the next call and appears only where standard output is a terminal. Takes no lock: lines of two threads can
/// interleave.
class TESSERALIS_API Logger
{
public:
    /// The one instance, made at first use and never destroyed.
    static Logger & Get();

    Logger(Logger const &) = delete;
    Logger & operator=(Logger const &) = delete;
    /// Sets the colour back to what it was when the logger was made.
    ~Logger();

    std::ostream & error();
    std::ostream & warning();
    std::ostream & information();
    std::ostream & debug();

    std::ostream & red(bool bright);
    std::ostream & green(bool bright);
    std::ostream & blue(bool bright);
    std::ostream & yellow(bool bright);
    std::ostream & magenta(bool bright);
    std::ostream & cyan(bool bright);
    std::ostream & white(bool bright);

    /// Reports, as an error, what came out of a function of a class; the source says whose class it is, such as the
    /// file name of a module.
    void exception(std::string const & source, std::string const & className, std::string const & function,
                   std::string const & message);
    void exception(std::string const & source, std::string const & className, std::string const & function,
                   Exception const & exception);
    /// For something thrown that carries no message: "Unknown error.".
    void exception(std::string const & source, std::string const & className, std::string const & function);

private:
    Logger();

    std::uint16_t m_attribute; // of the console, as found
};
} // namespace tesseralis
