#pragma once

#include <QString>
#include <string_view>

// The first 100 characters of a text in UTF-8, for a message.
QString excerpt(std::string_view text);
