#pragma once

#include <lua.hpp>

namespace tesseralis::lua {
/// Adds the libraries that reach nothing outside of the state, in a form in which every call comes to an end: what runs
/// for long in one call is charged as instructions or refused, and nothing catches the end of an evaluation that has
/// passed its limits.
void openSandbox(lua_State * lua);
} // namespace tesseralis::lua
