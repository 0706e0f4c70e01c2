#pragma once

#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace tesseralis::test {
inline std::string contentOf(std::filesystem::path const & path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

inline void write(std::filesystem::path const & path, std::string const & text)
{
    std::ofstream(path, std::ios::binary) << text;
}

inline std::string quoted(std::string const & word)
{
    std::string result = "'";
    for (char const character : word) {
        result += character == '\'' ? "'\\''" : std::string(1, character);
    }
    return result + "'";
}

inline bool contains(std::string const & text, std::string const & part)
{
    return text.find(part) != std::string::npos;
}

/// A line for the shell that runs the program, which HOST names.
inline std::string commandOf(std::vector<std::string> const & arguments)
{
    std::string command = quoted(HOST);
    for (std::string const & argument : arguments) {
        command += " " + quoted(argument);
    }
    return command;
}

/// A test that runs the program in a process of its own.
class HostProgram : public testing::Test
{
protected:
    struct Result
    {
        int status;
        std::string out;
        std::string error;
    };

    std::string pathOf(std::string const & name) const { return directory.GetPath(name); }

    Result run(std::vector<std::string> const & arguments) const
    {
        std::string const command =
            commandOf(arguments) + " >" + quoted(pathOf("out")) + " 2>" + quoted(pathOf("error"));
        int const status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(pathOf("out")), contentOf(pathOf("error"))};
    }

    TemporaryDirectory directory;
    std::string const session = std::string(DATA) + "/session.xml";
};
} // namespace tesseralis::test
