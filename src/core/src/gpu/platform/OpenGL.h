#pragma once

// The one place that includes the headers of OpenGL. What declares extensions has to come before gl.h.
#include <GL/gl.h>
