#include "LuaState.h"

#include "plugin/HostPlugin.h"
#include "plugin/PluginModule.h"

#include <algorithm>
#include <limits>
#include <memory>

namespace tesseralis::lua {
namespace {
constexpr char const * c_instructions = "Instruction limit";
constexpr char const * c_bytes = "Memory limit";
constexpr char const * c_seconds = "Time limit";

/// Evaluates texts in Lua 5.4. Its limits are properties of the plug-in: instructions, bytes and seconds.
class LuaHost : public Host, public PluginInstance<HostPlugin>
{
public:
    explicit LuaHost(Plugin & plugin)
        : PluginInstance(plugin),
          m_state(std::make_unique<LuaState>([this](std::string const & text) { GetPlugin().message(text); }))
    {
        constexpr int c_most = std::numeric_limits<int>::max();
        Limits const defaults;
        requireProperty(c_instructions, Variant(static_cast<int>(defaults.instructions), 1000, c_most),
                        "The most instructions that one evaluation may take");
        requireProperty(c_bytes, Variant(static_cast<int>(defaults.bytes), 1 << 20, c_most),
                        "The most memory that all scripts together may hold, in bytes");
        requireProperty(c_seconds, Variant(static_cast<float>(defaults.seconds), 0.001f, 86400.0f),
                        "The longest that one evaluation may take, in seconds");
    }

    Variant evaluate(std::string const & text, Object * object) const override
    {
        HostPlugin const & plugin = GetPlugin();
        Limits limits;
        limits.instructions = static_cast<int>(plugin.GetProperty(c_instructions));
        limits.bytes = static_cast<std::size_t>(static_cast<int>(plugin.GetProperty(c_bytes)));
        limits.seconds = static_cast<float>(plugin.GetProperty(c_seconds));
        return m_state->evaluate(text, object, limits);
    }

private:
    void requireProperty(std::string const & name, Variant const & requirement, std::string const & description)
    {
        GetPlugin().GetProperty(name).require(requirement);
        GetPlugin().SetPropertyDescription(name, description);
    }

    std::unique_ptr<LuaState> m_state;
};
} // namespace
} // namespace tesseralis::lua

TESSERALIS_PLUGIN_MODULE(Host, "Lua",
                         "Evaluates texts in Lua 5.4, within limits and without files, processes and modules.",
                         "1.0.0-1 (20261122)", nullptr, tesseralis::lua::LuaHost)
