#pragma once

#include "value/Variant.h"

#include <lua.hpp>

#include <chrono>
#include <cstddef>
#include <functional>
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>

namespace tesseralis {
class Object;
}

namespace tesseralis::lua {
/// What one evaluation may use.
struct Limits
{
    long long instructions = 100'000'000;
    std::size_t bytes = 64 * 1024 * 1024; ///< of all that the state holds
    double seconds = 10;
};

/// A Lua state that evaluates texts within limits, without files, processes and modules. Globals stay from one
/// evaluation to the next. An evaluation may lead to another one, as when a script changes a value that triggers an
/// expression; the inner one then uses up the limits of the outer.
class LuaState
{
public:
    using Print = std::function<void(std::string const &)>;

    /// Throws Exception if there is no memory for it. What scripts print goes to the function.
    explicit LuaState(Print print);
    ~LuaState();
    LuaState(LuaState const &) = delete;
    LuaState & operator=(LuaState const &) = delete;

    /// The state that a piece of Lua runs in.
    static LuaState & Get(lua_State * lua);

    /// The value of an expression or of what a sequence of statements returns. The script knows the object, which may
    /// be null, as `self`. Throws Exception with the line for what a script does wrong, and for limits that it passes.
    Variant evaluate(std::string const & text, Object * self, Limits const & limits);

    /// The object of the innermost evaluation.
    Object * GetSelf() const { return m_self; }
    /// Whether a script may use an object: it is registered, or what the innermost evaluation was called for without
    /// being registered.
    bool HasObject(Object * object) const;
    void print(std::string const & text) const { m_print(text); }

    /// Raises a Lua error that tells where the script is.
    [[noreturn]] static void raise(lua_State * lua, std::string const & text);

    /// Takes work that isn't counted by itself from the instructions that are left; raises a Lua error if none are.
    void charge(lua_State * lua, unsigned long long instructions);
    /// The same for a value that leaves Lua, which holds no memory within the limit from then on.
    void chargeBytes(lua_State * lua, std::size_t bytes);
    /// Whether the evaluation has passed a limit and must end, whatever the script catches.
    bool IsExhausted() const { return m_exhausted; }

private:
    struct Evaluation;
    class Running;

    static void * allocate(void * state, void * block, std::size_t oldSize, std::size_t newSize);
    static void countInstructions(lua_State * lua, lua_Debug * debug);
    static int runProtected(lua_State * lua);
    static int describeError(lua_State * lua);
    /// Pushes where the script is, as errors begin.
    static void pushPlace(lua_State * lua);

    void pushChunk(std::string const & text);
    void compile(std::string const & text);
    [[noreturn]] void stop(lua_State * lua, char const * limit);

    Print m_print;
    lua_State * m_lua = nullptr;
    Object * m_self = nullptr;
    bool m_isSelfRegistered = false;
    Limits m_limits;
    std::size_t m_bytes = 0;
    long long m_instructionsLeft = 0;
    std::chrono::steady_clock::time_point m_deadline;
    int m_depth = 0; // of evaluations within evaluations
    bool m_exhausted = false;

    // The functions of the texts evaluated last, by their places in Lua's registry, the one used last in front.
    struct Chunk
    {
        std::string text;
        int reference;
    };
    std::list<Chunk> m_chunks;
    std::unordered_map<std::string_view, std::list<Chunk>::iterator> m_chunkIndex;
};
} // namespace tesseralis::lua
