#include "LuaSandbox.h"

#include "LuaState.h"
#include "LuaValue.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace tesseralis::lua {
namespace {
/// Calls the function that one of ours stands for, with all arguments.
int callOriginal(lua_State * lua)
{
    int const arguments = lua_gettop(lua);
    lua_pushvalue(lua, lua_upvalueindex(1));
    lua_insert(lua, 1);
    lua_call(lua, arguments, LUA_MULTRET);
    return lua_gettop(lua);
}

/// Puts a function of ours in the place of a field of the table at the top of the stack; the old one becomes its
/// upvalue.
void replace(lua_State * lua, char const * name, lua_CFunction function)
{
    lua_getfield(lua, -1, name);
    lua_pushcclosure(lua, function, 1);
    lua_setfield(lua, -2, name);
}

void remove(lua_State * lua, std::initializer_list<char const *> names)
{
    for (char const * const name : names) {
        lua_pushnil(lua);
        lua_setfield(lua, -2, name);
    }
}

int print(lua_State * lua)
{
    std::string text;
    for (int i = 1; i <= lua_gettop(lua); ++i) {
        std::size_t length = 0;
        char const * const word = luaL_tolstring(lua, i, &length);
        text += (i > 1 ? "\t" : "") + std::string(word, length);
        lua_pop(lua, 1);
    }
    LuaState::Get(lua).chargeBytes(lua, text.size());
    callGuarded(lua, [&] { LuaState::Get(lua).print(text); });
    return 0;
}

void endIfExhausted(lua_State * lua, int status)
{
    if (status != LUA_OK && LuaState::Get(lua).IsExhausted()) {
        lua_error(lua);
    }
}

int protectedCall(lua_State * lua)
{
    luaL_checkany(lua, 1);
    int const status = lua_pcall(lua, lua_gettop(lua) - 1, LUA_MULTRET, 0);
    endIfExhausted(lua, status);
    lua_pushboolean(lua, status == LUA_OK);
    lua_insert(lua, 1);
    return lua_gettop(lua);
}

/// The message handler of a script isn't asked about the end of an evaluation: nothing would count what it does there.
int handleMessage(lua_State * lua)
{
    return LuaState::Get(lua).IsExhausted() ? 1 : callOriginal(lua);
}

int protectedCallWithHandler(lua_State * lua)
{
    luaL_checktype(lua, 2, LUA_TFUNCTION);
    lua_pushvalue(lua, 2);
    lua_pushcclosure(lua, handleMessage, 1);
    lua_replace(lua, 2);
    lua_pushvalue(lua, 1); // handler under function under arguments
    lua_copy(lua, 2, 1);
    lua_replace(lua, 2);
    int const status = lua_pcall(lua, lua_gettop(lua) - 2, LUA_MULTRET, 1);
    endIfExhausted(lua, status);
    lua_pushboolean(lua, status == LUA_OK);
    lua_replace(lua, 1);
    return lua_gettop(lua);
}

/// Finalizers run where nothing counts their instructions.
int setMetatable(lua_State * lua)
{
    if (lua_type(lua, 2) == LUA_TTABLE) {
        lua_pushliteral(lua, "__gc");
        if (lua_rawget(lua, 2) != LUA_TNIL) {
            luaL_error(lua, "finalizers are not available");
        }
        lua_pop(lua, 1);
    }
    return callOriginal(lua);
}

int repeat(lua_State * lua)
{
    lua_Integer const count = luaL_checkinteger(lua, 2);
    LuaState::Get(lua).charge(lua, count > 0 ? static_cast<unsigned long long>(count) : 0);
    return callOriginal(lua);
}

/// The length decides how long such a function takes, so it must be the one that is counted.
void checkPlainTable(lua_State * lua)
{
    luaL_checktype(lua, 1, LUA_TTABLE);
    if (luaL_getmetafield(lua, 1, "__len") != LUA_TNIL) {
        luaL_error(lua, "a table with a length of its own can't be used here");
    }
}

/// For the functions that walk a table from one element to another in one call: places of these two arguments.
template <int From, int To>
int walkTable(lua_State * lua)
{
    checkPlainTable(lua);
    lua_Integer const from = luaL_optinteger(lua, From, 1);
    lua_Integer const to = luaL_optinteger(lua, To, static_cast<lua_Integer>(lua_rawlen(lua, 1)));
    if (to >= from) {
        LuaState::Get(lua).charge(lua, static_cast<unsigned long long>(to) - static_cast<unsigned long long>(from));
    }
    return callOriginal(lua);
}

/// The same for those that move or compare the elements up to the last one.
int walkWholeTable(lua_State * lua)
{
    constexpr lua_Unsigned c_elementsPerInstruction = 8;
    checkPlainTable(lua);
    LuaState::Get(lua).charge(lua, lua_rawlen(lua, 1) / c_elementsPerInstruction);
    return callOriginal(lua);
}

/// How often a piece of a pattern can be tried at most for each way to match the pieces in front of it. Positions never
/// go back, so these make up combinations.
double worstSteps(std::string_view text, std::string_view pattern)
{
    double const length = static_cast<double>(text.size()) + 1;
    int walks = pattern.substr(0, 1) == "^" ? 0 : 1; // along the text
    double steps = static_cast<double>(pattern.size()) + 1;
    bool isWalkLast = false; // what nothing follows is never tried again
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        bool const isEscape = pattern[i] == '%' && i + 1 < pattern.size();
        char const piece = isEscape ? pattern[++i] : pattern[i];
        bool const isWalk =
            isEscape ? piece == 'b' || (piece >= '1' && piece <= '9') : piece == '*' || piece == '+' || piece == '-';
        steps *= !isEscape && piece == '?' ? 2 : 1;
        walks += isWalk ? 1 : 0;
        isWalkLast = isWalk ? piece != '-' : isWalkLast && piece == ')';
    }
    walks -= isWalkLast && walks > 0 ? 1 : 0;
    for (int i = 1; i <= walks; ++i) {
        steps *= (length + i) / i;
    }
    return steps;
}

int matchPattern(lua_State * lua)
{
    constexpr double c_mostSteps = 1e9;
    constexpr double c_stepsPerInstruction = 16;
    std::size_t textLength = 0;
    std::size_t patternLength = 0;
    char const * const text = luaL_checklstring(lua, 1, &textLength);
    char const * const pattern = luaL_checklstring(lua, 2, &patternLength);
    double const steps = worstSteps({text, textLength}, {pattern, patternLength});
    if (!(steps <= c_mostSteps)) {
        luaL_error(lua, "the pattern has too many repetitions for a text of this length");
    }
    LuaState::Get(lua).charge(lua, static_cast<unsigned long long>(steps / c_stepsPerInstruction));
    return callOriginal(lua);
}

void openBase(lua_State * lua)
{
    luaL_requiref(lua, LUA_GNAME, luaopen_base, 1);
    remove(lua, {"collectgarbage", "dofile", "load", "loadfile", "warn"});
    replace(lua, "pcall", protectedCall);
    replace(lua, "print", print);
    replace(lua, "setmetatable", setMetatable);
    replace(lua, "xpcall", protectedCallWithHandler);
    lua_pop(lua, 1);
}

void openStrings(lua_State * lua)
{
    luaL_requiref(lua, LUA_STRLIBNAME, luaopen_string, 1);
    remove(lua, {"dump"});
    replace(lua, "rep", repeat);
    for (char const * const name : {"find", "gmatch", "gsub", "match"}) {
        replace(lua, name, matchPattern);
    }
    lua_pop(lua, 1);
}

void openTables(lua_State * lua)
{
    luaL_requiref(lua, LUA_TABLIBNAME, luaopen_table, 1);
    replace(lua, "concat", walkTable<3, 4>);
    replace(lua, "move", walkTable<2, 3>);
    replace(lua, "unpack", walkTable<2, 3>);
    for (char const * const name : {"insert", "remove", "sort"}) {
        replace(lua, name, walkWholeTable);
    }
    lua_pop(lua, 1);
}

/// Of the functions of the system only those that tell the time.
void openTimes(lua_State * lua)
{
    luaL_requiref(lua, LUA_OSLIBNAME, luaopen_os, 0);
    lua_newtable(lua);
    for (char const * const name : {"clock", "date", "difftime", "time"}) {
        lua_getfield(lua, -2, name);
        lua_setfield(lua, -2, name);
    }
    lua_setglobal(lua, LUA_OSLIBNAME);
    lua_pushnil(lua); // the whole library isn't kept for later either
    lua_setfield(lua, LUA_REGISTRYINDEX, LUA_LOADED_TABLE);
    lua_pop(lua, 1);
}
} // namespace

void openSandbox(lua_State * lua)
{
    openBase(lua);
    openStrings(lua);
    openTables(lua);
    luaL_requiref(lua, LUA_MATHLIBNAME, luaopen_math, 1);
    luaL_requiref(lua, LUA_UTF8LIBNAME, luaopen_utf8, 1);
    lua_pop(lua, 2);
    openTimes(lua);
}
} // namespace tesseralis::lua
