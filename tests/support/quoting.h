// Command lines of programs that are started by one text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velinor {

// `argument` so that a Windows program finds it among its arguments as it is: in quotes, those within it
// escaped, and backslashes doubled where a quote follows them.
inline std::string inQuotes(std::string_view argument) {
    std::string text = "\"";
    std::size_t backslashes = 0;
    for (const char c : argument) {
        if (c == '"') text.append(backslashes + 1, '\\');
        backslashes = c == '\\' ? backslashes + 1 : 0;
        text += c;
    }
    return text.append(backslashes, '\\') + '"';
}

// The command line of a program, its path first.
inline std::string quotedCommandLine(const std::vector<std::string>& arguments) {
    std::string line;
    for (const std::string& argument : arguments)
        line += (line.empty() ? "" : " ") + inQuotes(argument);
    return line;
}

}  // namespace velinor
