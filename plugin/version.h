// The version, for everything that tells it. Read by the resource compiler and by CMake, too: macros only.
#pragma once

#define TOLVEX_VERSION_MAJOR 1
#define TOLVEX_VERSION_MINOR 63

#define TOLVEX_QUOTED(text) #text
#define TOLVEX_QUOTED_VALUE(macro) TOLVEX_QUOTED(macro)
// "1.63"; without blanks, since a resource compiler does not join texts.
// clang-format off
#define TOLVEX_VERSION_TEXT TOLVEX_QUOTED_VALUE(TOLVEX_VERSION_MAJOR.TOLVEX_VERSION_MINOR)
// clang-format on
