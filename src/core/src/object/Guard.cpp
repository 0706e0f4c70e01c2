#include "object/Guard.h"

#include "object/Exception.h"
#include "object/Logger.h"

#include <exception>
#include <ostream>

namespace tesseralis::detail {
void logCaughtException() noexcept
{
    try {
        throw;
    } catch (Exception const & exception) {
        Logger::Get().error() << exception.GetMessage() << "\n\n";
    } catch (std::exception const & exception) {
        Logger::Get().error() << exception.what() << "\n\n";
    } catch (...) {
        Logger::Get().error() << "Unknown error.\n\n";
    }
}
} // namespace tesseralis::detail
