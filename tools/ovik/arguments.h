// The words of a command line: subcommands, their files, numbers and options.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tools {

/// What stands behind a subcommand.
struct Arguments {
    std::vector<std::string> files;
    std::vector<std::int64_t> numbers;
    std::optional<std::string> log;
    std::optional<std::string> html;
    std::optional<double> tolerance;
    bool ignoreHeader = false;
    bool plain = false;     ///< the plain road in place of the exact one
    bool strict = false;    ///< on the plain road
    bool renumber = false;  ///< instance numbers from 1
    bool lossless = false;  ///< all or nothing
    bool json = false;
};

struct Command {
    std::string_view name;
    std::size_t numFiles;
    /// Of the files, these many stand first and are read; the others are written.
    std::size_t numInputs;
    bool takesNumbers;  ///< instance numbers behind the files, at least one
    std::vector<std::string_view> options;
    int (*run)(const Arguments&);
};

/// Sorts the words behind the subcommand into files, numbers and options, in any order. Gives what
/// is wrong with them, or an empty text.
std::string parseArguments(const Command& command, const std::vector<std::string>& words,
                           Arguments& arguments);

}  // namespace tools
