#pragma once

#include "LuaState.h"

#include "object/Exception.h"

#include <lua.hpp>

#include <exception>
#include <utility>

namespace tesseralis {
class Variant;
}

namespace tesseralis::lua {
/// Runs C++ code within Lua: what it throws becomes a Lua error with the line of the script. Lua's own errors, which
/// are exceptions too, pass through.
template <class Callable>
void callGuarded(lua_State * lua, Callable && callable)
{
    try {
        std::forward<Callable>(callable)();
    } catch (Exception const & exception) {
        LuaState::raise(lua, exception.GetMessage());
    } catch (std::exception const & exception) {
        LuaState::raise(lua, exception.what());
    }
}

/// Pushes a value. Vectors become tables with x, y and z, colours with r, g, b and a, quaternions with vector and
/// scalar, boxes with minimum and maximum, matrices four tables of four numbers; arrays and maps become tables, options
/// their selection, file names a text.
void pushValue(lua_State * lua, Variant const & value);

/// The value at a place of the stack. Tables with exactly x, y, z or r, g, b, a become vectors or colours, sequences
/// arrays, other tables maps. Throws Exception for functions and the like, and for tables nested deeper than 64.
Variant toVariant(lua_State * lua, int index);
} // namespace tesseralis::lua
