#pragma once

#include "table_format.h"

// What parts the titles of a table, and what the lines after them, in the order in which it is
// tried.
struct Split {
    Separator header;
    Separator body;
};
inline constexpr Split splits[] = {
    {Separator::Tab, Separator::Tab},
    {Separator::Comma, Separator::Comma},
    {Separator::Semicolon, Separator::Semicolon},
    {Separator::Spaces, Separator::Spaces},
    {Separator::WideSpaces, Separator::WideSpaces},
    {Separator::WhiteSpace, Separator::Tab},
    {Separator::WhiteSpace, Separator::WhiteSpace},
    {Separator::Comma, Separator::Tab},
    {Separator::Comma, Separator::WhiteSpace},
    {Separator::WhiteSpace, Separator::Comma},
};
