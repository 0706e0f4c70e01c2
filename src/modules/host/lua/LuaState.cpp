#include "LuaState.h"

#include "LuaObjects.h"
#include "LuaSandbox.h"
#include "LuaValue.h"

#include "object/Exception.h"
#include "object/Tesseralis.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>

namespace tesseralis::lua {
namespace {
constexpr int c_instructionsPerCount = 256;
constexpr std::size_t c_mostChunks = 256;
constexpr char const * c_chunkName = "=script";
} // namespace

struct LuaState::Evaluation
{
    LuaState & state;
    std::string const & text;
    Variant result;
};

/// Holds what belongs to one evaluation, and what belonged to the outer one meanwhile.
class LuaState::Running
{
public:
    Running(LuaState & state, Object * self, Limits const & limits)
        : m_state(state), m_outerSelf(state.m_self), m_isOuterSelfRegistered(state.m_isSelfRegistered)
    {
        state.m_self = self;
        state.m_isSelfRegistered = Tesseralis::Get().HasObject(self);
        if (state.m_depth++ > 0) {
            return;
        }
        state.m_limits = limits;
        state.m_instructionsLeft = limits.instructions;
        state.m_exhausted = false;
        state.m_deadline =
            std::chrono::steady_clock::now() + std::chrono::duration_cast<std::chrono::steady_clock::duration>(
                                                   std::chrono::duration<double>(limits.seconds));
    }
    ~Running()
    {
        --m_state.m_depth;
        m_state.m_self = m_outerSelf;
        m_state.m_isSelfRegistered = m_isOuterSelfRegistered;
    }
    Running(Running const &) = delete;
    Running & operator=(Running const &) = delete;

private:
    LuaState & m_state;
    Object * m_outerSelf;
    bool m_isOuterSelfRegistered;
};

LuaState::LuaState(Print print) : m_print(std::move(print))
{
    m_lua = lua_newstate(&LuaState::allocate, this);
    if (m_lua == nullptr) {
        throw Exception("There is no memory for a Lua state!");
    }
    *static_cast<LuaState **>(lua_getextraspace(m_lua)) = this;

    lua_pushcfunction(m_lua, [](lua_State * lua) {
        openSandbox(lua);
        openObjects(lua);
        return 0;
    });
    if (lua_pcall(m_lua, 0, 0, 0) != LUA_OK) {
        lua_close(m_lua);
        throw Exception("There is no memory for a Lua state!");
    }
    lua_sethook(m_lua, &LuaState::countInstructions, LUA_MASKCOUNT, c_instructionsPerCount);
}

LuaState::~LuaState()
{
    lua_close(m_lua);
}

LuaState & LuaState::Get(lua_State * lua)
{
    return **static_cast<LuaState **>(lua_getextraspace(lua));
}

bool LuaState::HasObject(Object * object) const
{
    return Tesseralis::Get().HasObject(object) || (object == m_self && !m_isSelfRegistered);
}

Variant LuaState::evaluate(std::string const & text, Object * self, Limits const & limits)
{
    Running const running(*this, self, limits);
    Evaluation evaluation{*this, text, Variant()};
    int const top = lua_gettop(m_lua);
    if (lua_checkstack(m_lua, LUA_MINSTACK) == 0) {
        throw Exception("The evaluations are nested too deeply!");
    }
    lua_pushcfunction(m_lua, &LuaState::describeError);
    lua_pushcfunction(m_lua, &LuaState::runProtected);
    lua_pushlightuserdata(m_lua, &evaluation);
    int const status = lua_pcall(m_lua, 1, 0, top + 1);
    if (status == LUA_OK) {
        lua_settop(m_lua, top);
        return evaluation.result;
    }
    if (status == LUA_ERRMEM) {
        lua_settop(m_lua, top);
        throw Exception("script: the script was stopped at its limit of memory");
    }

    // Only a text can be read here without a chance of failing.
    std::string const message =
        lua_type(m_lua, -1) == LUA_TSTRING ? lua_tostring(m_lua, -1) : "script: an error without a text";
    lua_settop(m_lua, top);
    throw Exception(message);
}

int LuaState::runProtected(lua_State * lua)
{
    auto & evaluation = *static_cast<Evaluation *>(lua_touserdata(lua, 1));
    evaluation.state.pushChunk(evaluation.text);
    lua_call(lua, 0, 1);
    callGuarded(lua, [&] { evaluation.result = toVariant(lua, -1); });
    return 0;
}

int LuaState::describeError(lua_State * lua)
{
    if (lua_type(lua, 1) == LUA_TSTRING) {
        return 1;
    }
    pushPlace(lua);
    if (lua_type(lua, 1) == LUA_TNUMBER) {
        lua_pushvalue(lua, 1);
    } else {
        lua_pushfstring(lua, "an error that is no text but a %s", luaL_typename(lua, 1));
    }
    lua_concat(lua, 2);
    return 1;
}

void LuaState::pushChunk(std::string const & text)
{
    auto const found = m_chunkIndex.find(text);
    if (found != m_chunkIndex.end()) {
        m_chunks.splice(m_chunks.begin(), m_chunks, found->second);
        lua_rawgeti(m_lua, LUA_REGISTRYINDEX, found->second->reference);
        return;
    }

    compile(text);
    lua_pushvalue(m_lua, -1);
    int const reference = luaL_ref(m_lua, LUA_REGISTRYINDEX);
    m_chunks.push_front({text, reference});
    m_chunkIndex.emplace(m_chunks.front().text, m_chunks.begin());
    if (m_chunks.size() > c_mostChunks) {
        luaL_unref(m_lua, LUA_REGISTRYINDEX, m_chunks.back().reference);
        m_chunkIndex.erase(m_chunks.back().text);
        m_chunks.pop_back();
    }
}

void LuaState::compile(std::string const & text)
{
    std::string const expression = "return " + text;
    if (luaL_loadbufferx(m_lua, expression.data(), expression.size(), c_chunkName, "t") == LUA_OK) {
        return;
    }
    lua_pop(m_lua, 1);
    if (luaL_loadbufferx(m_lua, text.data(), text.size(), c_chunkName, "t") != LUA_OK) {
        lua_error(m_lua);
    }
}

void LuaState::charge(lua_State * lua, unsigned long long instructions)
{
    auto const most = static_cast<unsigned long long>(std::numeric_limits<long long>::max());
    if (std::min(instructions, most) >= static_cast<unsigned long long>(std::max(m_instructionsLeft, 0LL))) {
        stop(lua, "instructions");
    }
    m_instructionsLeft -= static_cast<long long>(instructions);
}

void LuaState::chargeBytes(lua_State * lua, std::size_t bytes)
{
    constexpr unsigned long long c_instructionsPerValue = 64; // which is larger than in Lua
    constexpr unsigned long long c_bytesPerInstruction = 4;
    charge(lua, c_instructionsPerValue + bytes / c_bytesPerInstruction);
}

void LuaState::countInstructions(lua_State * lua, lua_Debug *)
{
    LuaState & state = Get(lua);
    state.charge(lua, c_instructionsPerCount);
    if (std::chrono::steady_clock::now() > state.m_deadline) {
        state.stop(lua, "time");
    }
}

void LuaState::stop(lua_State * lua, char const * limit)
{
    m_exhausted = true;
    raise(lua, std::string("the script was stopped at its limit of ") + limit);
}

void LuaState::pushPlace(lua_State * lua)
{
    int level = 0; // of the innermost function that is the script's and not one of ours
    lua_Debug debug;
    while (lua_getstack(lua, level, &debug) != 0 && lua_getinfo(lua, "l", &debug) != 0 && debug.currentline < 0) {
        ++level;
    }
    luaL_where(lua, level);
}

void LuaState::raise(lua_State * lua, std::string const & text)
{
    pushPlace(lua);
    lua_pushlstring(lua, text.data(), text.size());
    lua_concat(lua, 2);
    lua_error(lua);
    std::abort(); // lua_error doesn't return
}

void * LuaState::allocate(void * state, void * block, std::size_t oldSize, std::size_t newSize)
{
    auto & self = *static_cast<LuaState *>(state);
    std::size_t const held = block == nullptr ? 0 : oldSize; // for a new block the old size is a type
    if (newSize > held && newSize - held > self.m_limits.bytes - std::min(self.m_limits.bytes, self.m_bytes)) {
        return nullptr;
    }
    self.m_bytes += newSize - held;
    if (newSize == 0) {
        std::free(block);
        return nullptr;
    }
    void * const result = std::realloc(block, newSize);
    if (result == nullptr) {
        self.m_bytes -= newSize - held;
    }
    return result;
}
} // namespace tesseralis::lua
