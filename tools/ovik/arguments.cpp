// Sorting the words of a command line.
#include "arguments.h"

#include <algorithm>
#include <charconv>

namespace tools {
namespace {

/// The whole of `text` as a number.
template <class Number>
bool parse(std::string_view text, Number& value) {
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stop == end;
}

/// An instance number, with or without its `#`.
bool parseInstance(std::string_view text, std::int64_t& value) {
    if (text.starts_with('#')) text.remove_prefix(1);
    return parse(text, value) && value > 0;
}

struct Flag {
    std::string_view option;
    bool Arguments::*member;
};
constexpr Flag kFlags[] = {
    {"--ignore-header", &Arguments::ignoreHeader}, {"--json", &Arguments::json},
    {"--lossless", &Arguments::lossless},          {"--plain", &Arguments::plain},
    {"--renumber", &Arguments::renumber},          {"--strict", &Arguments::strict},
};

/// Takes an option with a value. Gives what is wrong with it, or an empty text.
std::string takeValue(const std::string& option, const std::string& value, Arguments& arguments) {
    if (option == "--log") {
        arguments.log = value;
    } else if (option == "--html") {
        arguments.html = value;
    } else {
        double tolerance = 0;
        if (!parse(value, tolerance) || !(tolerance >= 0))
            return "the tolerance is a number not below 0, not " + value;
        arguments.tolerance = tolerance;
    }
    return {};
}

/// What is wrong with the arguments as a whole, or an empty text.
std::string checkTogether(const Command& command, const Arguments& arguments) {
    if (arguments.files.size() != command.numFiles)
        return std::string(command.name) + " takes " + std::to_string(command.numFiles) +
               (command.numFiles == 1 ? " file" : " files");
    if (command.takesNumbers && arguments.numbers.empty()) return "an instance number is missing";
    if (arguments.strict && !arguments.plain) return "--strict goes with --plain";
    // The plain road gives new numbers always, and repairs what it reads.
    if (arguments.plain && arguments.renumber) return "--renumber does not go with --plain";
    if (arguments.plain && arguments.lossless) return "--lossless does not go with --plain";
    return {};
}

}  // namespace

std::string parseArguments(const Command& command, const std::vector<std::string>& words,
                           Arguments& arguments) {
    for (auto word = words.begin(); word != words.end(); ++word) {
        const std::string& option = *word;
        if (option.size() < 2 || option.front() != '-') {
            if (!command.takesNumbers || arguments.files.size() < command.numFiles)
                arguments.files.push_back(option);
            else if (!parseInstance(option, arguments.numbers.emplace_back()))
                return "not an instance number: " + option;
            continue;
        }
        if (std::find(command.options.begin(), command.options.end(), option) ==
            command.options.end())
            return "unknown option " + option;
        const auto* flag = std::find_if(std::begin(kFlags), std::end(kFlags),
                                        [&](const Flag& f) { return f.option == option; });
        if (flag != std::end(kFlags)) {
            arguments.*flag->member = true;
        } else if (++word == words.end()) {
            return option + " needs a value";
        } else if (std::string fault = takeValue(option, *word, arguments); !fault.empty()) {
            return fault;
        }
    }
    return checkTogether(command, arguments);
}

}  // namespace tools
