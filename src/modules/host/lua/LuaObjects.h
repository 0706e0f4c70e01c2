#pragma once

#include <lua.hpp>

#include <string>

namespace tesseralis::lua {
/// Adds the globals `objects`, the registry by names, and `self`, what the evaluation is for.
/// `objects["name"]["property"]` reads and writes properties; pairs() walks objects and properties.
void openObjects(lua_State * lua);

/// The name of the object at a place of the stack. Throws Exception if there is no object or it has died.
std::string nameOfObject(lua_State * lua, int index);
} // namespace tesseralis::lua
