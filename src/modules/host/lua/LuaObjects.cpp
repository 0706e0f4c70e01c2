#include "LuaObjects.h"

#include "LuaState.h"
#include "LuaValue.h"

#include "object/Exception.h"
#include "object/Tesseralis.h"
#include "value/PropertyContainer.h"

#include <string_view>
#include <vector>

namespace tesseralis::lua {
namespace {
constexpr char const * c_objectType = "tesseralis.object";

std::string textAt(lua_State * lua, int index)
{
    std::size_t length = 0;
    char const * const text = luaL_checklstring(lua, index, &length);
    return std::string(text, length);
}

void pushObject(lua_State * lua, Object * object)
{
    if (object == nullptr) {
        lua_pushnil(lua);
        return;
    }
    *static_cast<Object **>(lua_newuserdatauv(lua, sizeof(Object *), 0)) = object;
    luaL_setmetatable(lua, c_objectType);
}

/// A script may keep an object that has died meanwhile. So it is looked up before each use, and one that isn't
/// registered can be used during its own evaluation only.
Object & objectAt(lua_State * lua, int index)
{
    auto * const * const place = static_cast<Object **>(luaL_testudata(lua, index, c_objectType));
    if (place == nullptr) {
        throw Exception("A %s is no object!", luaL_typename(lua, index));
    }
    if (!LuaState::Get(lua).HasObject(*place)) {
        throw Exception("The object does not exist any more!");
    }
    return **place;
}

PropertyContainer & containerAt(lua_State * lua, int index)
{
    auto * const container = dynamic_cast<PropertyContainer *>(&objectAt(lua, index));
    if (container == nullptr) {
        throw Exception("The object has no properties!");
    }
    return *container;
}

void getProperty(lua_State * lua)
{
    Variant const missing;
    PropertyContainer const & container = containerAt(lua, 1);
    pushValue(lua, container.GetProperty(textAt(lua, 2), missing));
}

void setProperty(lua_State * lua)
{
    PropertyContainer & container = containerAt(lua, 1);
    std::string const name = textAt(lua, 2);
    Variant const value = toVariant(lua, 3);
    if (!value.IsDefined()) {
        throw Exception("The property '%s' can't be set to nothing!", name.c_str());
    }
    container.GetProperty(name).assign(value);
}

void getObject(lua_State * lua)
{
    pushObject(lua, Tesseralis::Get().GetObject(textAt(lua, 2)));
}

/// Stands for `self`, which changes from one evaluation to the next.
void getGlobal(lua_State * lua)
{
    if (lua_type(lua, 2) == LUA_TSTRING && std::string_view(lua_tostring(lua, 2)) == "self") {
        pushObject(lua, LuaState::Get(lua).GetSelf());
    } else {
        lua_pushnil(lua);
    }
}

/// A global of that name would stand before the objects of all evaluations to come.
void setGlobal(lua_State * lua)
{
    if (lua_type(lua, 2) == LUA_TSTRING && std::string_view(lua_tostring(lua, 2)) == "self") {
        throw Exception("'self' can't be set!");
    }
    lua_rawset(lua, 1);
}

/// The next pair of what pushPairs() has collected: name and value after name and value in one table.
int nextPair(lua_State * lua)
{
    lua_Integer const place = lua_tointeger(lua, lua_upvalueindex(2));
    lua_pushinteger(lua, place + 2);
    lua_replace(lua, lua_upvalueindex(2));
    lua_rawgeti(lua, lua_upvalueindex(1), place);
    lua_rawgeti(lua, lua_upvalueindex(1), place + 1);
    return 2;
}

/// Pushes a function that gives the names in their order, each with what a function pushes for it.
template <class PushValue>
void pushPairs(lua_State * lua, std::vector<std::string> const & names, PushValue && push)
{
    lua_createtable(lua, static_cast<int>(2 * names.size()), 0);
    lua_Integer place = 1;
    for (std::string const & name : names) {
        lua_pushlstring(lua, name.data(), name.size());
        lua_rawseti(lua, -2, place++);
        push(name);
        lua_rawseti(lua, -2, place++);
    }
    lua_pushinteger(lua, 1);
    lua_pushcclosure(lua, nextPair, 2);
}

void objectPairs(lua_State * lua)
{
    std::vector<std::string> names;
    for (TesseralisIterator i(Tesseralis::Get()); !i.IsAtEnd(); ++i) {
        names.push_back(i.GetName());
    }
    pushPairs(lua, names, [&](std::string const & name) { pushObject(lua, Tesseralis::Get().GetObject(name)); });
}

void propertyPairs(lua_State * lua)
{
    PropertyContainer & container = containerAt(lua, 1);
    std::vector<std::string> names;
    for (PropertyContainerIterator i(container); !i.IsAtEnd(); ++i) {
        names.push_back(i.GetName());
    }
    pushPairs(lua, names, [&](std::string const & name) { pushValue(lua, container.GetProperty(name)); });
}

/// A Lua function from a function that leaves its results on the stack.
template <auto Function, int Results>
int guarded(lua_State * lua)
{
    callGuarded(lua, [&] { Function(lua); });
    return Results;
}

int objectToText(lua_State * lua)
{
    callGuarded(lua, [&] {
        std::string const name = nameOfObject(lua, 1);
        lua_pushlstring(lua, name.data(), name.size());
    });
    return 1;
}

int objectsEqual(lua_State * lua)
{
    auto const * const first = luaL_testudata(lua, 1, c_objectType);
    auto const * const second = luaL_testudata(lua, 2, c_objectType);
    lua_pushboolean(lua, first != nullptr && second != nullptr &&
                             *static_cast<Object * const *>(first) == *static_cast<Object * const *>(second));
    return 1;
}

void refuse(lua_State *)
{
    throw Exception("Objects can't be set!");
}
} // namespace

std::string nameOfObject(lua_State * lua, int index)
{
    return objectAt(lua, index).GetObjectName();
}

void openObjects(lua_State * lua)
{
    luaL_Reg const objectFunctions[] = {{"__index", guarded<getProperty, 1>},
                                        {"__newindex", guarded<setProperty, 0>},
                                        {"__pairs", guarded<propertyPairs, 1>},
                                        {"__tostring", objectToText},
                                        {"__eq", objectsEqual},
                                        {nullptr, nullptr}};
    luaL_Reg const registryFunctions[] = {{"__index", guarded<getObject, 1>},
                                          {"__newindex", guarded<refuse, 0>},
                                          {"__pairs", guarded<objectPairs, 1>},
                                          {nullptr, nullptr}};
    luaL_newmetatable(lua, c_objectType);
    luaL_setfuncs(lua, objectFunctions, 0);
    lua_pushboolean(lua, 0); // what scripts see of the metatable
    lua_setfield(lua, -2, "__metatable");
    lua_pop(lua, 1);

    lua_newtable(lua);
    lua_newtable(lua);
    luaL_setfuncs(lua, registryFunctions, 0);
    lua_pushboolean(lua, 0);
    lua_setfield(lua, -2, "__metatable");
    lua_setmetatable(lua, -2);
    lua_setglobal(lua, "objects");

    lua_pushglobaltable(lua);
    lua_newtable(lua);
    lua_pushcfunction(lua, (guarded<getGlobal, 1>));
    lua_setfield(lua, -2, "__index");
    lua_pushcfunction(lua, (guarded<setGlobal, 0>));
    lua_setfield(lua, -2, "__newindex");
    lua_pushboolean(lua, 0);
    lua_setfield(lua, -2, "__metatable");
    lua_setmetatable(lua, -2);
    lua_pop(lua, 1);
}
} // namespace tesseralis::lua
