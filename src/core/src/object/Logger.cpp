#include "object/Logger.h"

#include "object/Exception.h"
#include "object/platform/Console.h"

#include <iostream>

namespace tesseralis {
namespace {
constexpr std::uint16_t c_blue = 1;
constexpr std::uint16_t c_green = 2;
constexpr std::uint16_t c_cyan = 3;
constexpr std::uint16_t c_red = 4;
constexpr std::uint16_t c_magenta = 5;
constexpr std::uint16_t c_yellow = 6;
constexpr std::uint16_t c_white = 7;
constexpr std::uint16_t c_bright = 8;

std::ostream & coloured(std::uint16_t color, bool bright)
{
    detail::setTextAttribute(bright ? color | c_bright : color);
    return std::cout;
}
} // namespace

Logger & Logger::Get()
{
    static Logger * const s_logger = new Logger;
    return *s_logger;
}

Logger::Logger() : m_attribute(detail::textAttribute()) {}

Logger::~Logger()
{
    detail::setTextAttribute(m_attribute);
}

std::ostream & Logger::error()
{
    return red(true);
}

std::ostream & Logger::warning()
{
    return yellow(true);
}

std::ostream & Logger::information()
{
    return white(true);
}

std::ostream & Logger::debug()
{
    return white(false);
}

std::ostream & Logger::red(bool bright)
{
    return coloured(c_red, bright);
}

std::ostream & Logger::green(bool bright)
{
    return coloured(c_green, bright);
}

std::ostream & Logger::blue(bool bright)
{
    return coloured(c_blue, bright);
}

std::ostream & Logger::yellow(bool bright)
{
    return coloured(c_yellow, bright);
}

std::ostream & Logger::magenta(bool bright)
{
    return coloured(c_magenta, bright);
}

std::ostream & Logger::cyan(bool bright)
{
    return coloured(c_cyan, bright);
}

std::ostream & Logger::white(bool bright)
{
    return coloured(c_white, bright);
}

void Logger::exception(std::string const & source, std::string const & className, std::string const & function,
                       std::string const & message)
{
    error() << "[" << source << "] " << className << "::" << function << "(): \n" << message << "\n" << std::endl;
}

void Logger::exception(std::string const & source, std::string const & className, std::string const & function,
                       Exception const & exception)
{
    this->exception(source, className, function, exception.GetMessage());
}

void Logger::exception(std::string const & source, std::string const & className, std::string const & function)
{
    exception(source, className, function, "Unknown error.");
}
} // namespace tesseralis
