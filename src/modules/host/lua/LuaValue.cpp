#include "LuaValue.h"

#include "LuaObjects.h"
#include "LuaState.h"

#include "math/Color.h"
#include "math/Vector.h"
#include "value/Variant.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace tesseralis::lua {
namespace {
constexpr int c_deepestTable = 64;

/// The number that a person would write for a float: 0.1 and not 0.10000000149012.
double toNumber(float value)
{
    char text[32];
    auto const written = std::to_chars(text, text + sizeof(text), value);
    double number = value;
    std::from_chars(text, written.ptr, number);
    return number;
}

void pushElements(lua_State * lua, Variant const & value, bool byPosition)
{
    int const size = static_cast<int>(value.GetSize());
    LuaState::Get(lua).charge(lua, static_cast<unsigned long long>(size));
    lua_createtable(lua, byPosition ? size : 0, byPosition ? 0 : size);
    for (int i = 0; i < size; ++i) {
        if (byPosition) {
            pushValue(lua, value[i]);
            lua_rawseti(lua, -2, i + 1);
        } else {
            std::string const name = value.GetElementName(static_cast<unsigned int>(i));
            lua_pushlstring(lua, name.data(), name.size());
            pushValue(lua, value[i]);
            lua_rawset(lua, -3);
        }
    }
}

/// Whether the table at the top of the stack has numbers under all the keys and nothing else.
bool HasExactly(lua_State * lua, char const * keys)
{
    int count = 0;
    for (char const * key = keys; *key != '\0'; ++key, ++count) {
        char const name[] = {*key, '\0'};
        lua_pushstring(lua, name);
        bool const isNumber = lua_rawget(lua, -2) == LUA_TNUMBER;
        lua_pop(lua, 1);
        if (!isNumber) {
            return false;
        }
    }
    for (lua_pushnil(lua); lua_next(lua, -2) != 0; lua_pop(lua, 1)) {
        --count;
    }
    return count == 0;
}

Variant numberToVariant(lua_State * lua, int index)
{
    if (!lua_isinteger(lua, index)) {
        return Variant(static_cast<float>(lua_tonumber(lua, index)));
    }
    lua_Integer const number = lua_tointeger(lua, index);
    if (number < std::numeric_limits<int>::min() || number > std::numeric_limits<int>::max()) {
        throw Exception("The integer %lld is too large for a value!", static_cast<long long>(number));
    }
    return Variant(static_cast<int>(number));
}

/// The part of a colour, from 0 to 255.
Variant channelToVariant(lua_State * lua, int index)
{
    return Variant(static_cast<int>(std::lround(std::clamp(lua_tonumber(lua, index), 0.0, 255.0))));
}

/// The fields of the table at the top of the stack, each as the function makes it of a place of the stack.
template <class ToVariant>
Variant fieldsToVariant(lua_State * lua, ToVariant const & convert)
{
    Variant fields = Variant::TypeMap();
    for (lua_pushnil(lua); lua_next(lua, -2) != 0; lua_pop(lua, 1)) {
        if (lua_type(lua, -2) != LUA_TSTRING) {
            throw Exception("Only texts can be keys of a map!");
        }
        fields[lua_tostring(lua, -2)] = convert(lua, -1);
    }
    return fields;
}

Variant toVariant(lua_State * lua, int index, int depth);

/// The table at the top of the stack.
Variant tableToVariant(lua_State * lua, int depth)
{
    if (depth > c_deepestTable || lua_checkstack(lua, LUA_MINSTACK) == 0) {
        throw Exception("A table is nested deeper than %d!", c_deepestTable);
    }
    if (HasExactly(lua, "xyz")) {
        return Variant(fieldsToVariant(lua, numberToVariant).operator Vector());
    }
    if (HasExactly(lua, "rgba")) {
        return Variant(fieldsToVariant(lua, channelToVariant).operator Color());
    }
    auto const length = static_cast<int>(lua_rawlen(lua, -1));
    if (length == 0) {
        return fieldsToVariant(lua,
                               [depth](lua_State * state, int index) { return toVariant(state, index, depth + 1); });
    }
    Variant value = Variant::TypeArray();
    for (int i = 0; i < length; ++i) {
        lua_rawgeti(lua, -1, i + 1);
        value[i] = toVariant(lua, -1, depth + 1);
        lua_pop(lua, 1);
    }
    return value;
}

Variant toVariant(lua_State * lua, int index, int depth)
{
    LuaState::Get(lua).chargeBytes(lua, lua_type(lua, index) == LUA_TSTRING ? lua_rawlen(lua, index) : 0);
    switch (lua_type(lua, index)) {
    case LUA_TNIL:
        return Variant();
    case LUA_TBOOLEAN:
        return Variant(lua_toboolean(lua, index) != 0);
    case LUA_TNUMBER:
        return numberToVariant(lua, index);
    case LUA_TSTRING: {
        std::size_t length = 0;
        char const * const text = lua_tolstring(lua, index, &length);
        return Variant(std::string(text, length));
    }
    case LUA_TTABLE: {
        lua_pushvalue(lua, index);
        Variant value = tableToVariant(lua, depth);
        lua_pop(lua, 1);
        return value;
    }
    case LUA_TUSERDATA:
        return Variant(nameOfObject(lua, index));
    default:
        throw Exception("A %s is no value!", luaL_typename(lua, index));
    }
}
} // namespace

void pushValue(lua_State * lua, Variant const & value)
{
    luaL_checkstack(lua, LUA_MINSTACK, "a value is nested too deeply");
    switch (value.GetType()) {
    case Variant::Type::Undefined:
        lua_pushnil(lua);
        break;
    case Variant::Type::Boolean:
        lua_pushboolean(lua, static_cast<bool>(value));
        break;
    case Variant::Type::Integer:
        lua_pushinteger(lua, static_cast<int>(value));
        break;
    case Variant::Type::Float:
        lua_pushnumber(lua, toNumber(value));
        break;
    case Variant::Type::Array:
        pushElements(lua, value, true);
        break;
    case Variant::Type::Map:
        pushElements(lua, value, false);
        break;
    case Variant::Type::Matrix:
        pushValue(lua, value.GetConverted(Variant::Type::Array));
        break;
    case Variant::Type::Vector:
    case Variant::Type::Quaternion:
    case Variant::Type::Box:
    case Variant::Type::Color:
        pushValue(lua, value.GetConverted(Variant::Type::Map));
        break;
    case Variant::Type::Option: {
        Variant map = Variant::TypeMap();
        map.assign(value);
        pushValue(lua, map["selection"]);
        break;
    }
    default: {
        std::string const text = value;
        lua_pushlstring(lua, text.data(), text.size());
    }
    }
}

Variant toVariant(lua_State * lua, int index)
{
    return toVariant(lua, index, 0);
}
} // namespace tesseralis::lua
