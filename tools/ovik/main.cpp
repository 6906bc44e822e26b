// The command-line tool: copies, compares, describes and shows model files, and their structure.
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "common/modelfile.h"
#include "ovik/api.h"
#include "show.h"
#include "tree.h"

namespace {

namespace api = Ovik::IfcApi;
namespace fs = std::filesystem;

constexpr std::string_view kUsage =
    "usage: ovik copy IN OUT [--log FILE] [--strict]\n"
    "           loads IN and writes what it holds to OUT\n"
    "       ovik compare A B [--tolerance T] [--ignore-header] [--log FILE]\n"
    "           compares two files item by item; reals are equal if they differ by less than T,\n"
    "           so with the T of 0 that is taken if none is given no two reals are equal\n"
    "       ovik info FILE\n"
    "           schema, header, number of entities, classes by count\n"
    "       ovik tree FILE [--html OUT]\n"
    "           what is part of what and stands in what, indented, or as a page to fold in OUT\n"
    "       ovik show FILE NUMBER...\n"
    "           the attributes of the instances with these numbers, by name\n"
    "Exit status: copy: 0 written, 1 IN gives no model, 2 bad usage or OUT can't be written\n"
    "             compare: 0 equal, 1 different, 2 bad usage or a file is not valid\n"
    "             info: 0, 1 FILE gives no model, 2 bad usage\n"
    "             tree: 0, 1 FILE gives no model, 2 bad usage or OUT can't be written\n"
    "             show: 0, 1 FILE gives no model or has no such number, 2 bad usage\n";

constexpr int kBadUsage = 2;

struct Arguments {
    std::vector<std::string> files;
    std::vector<std::int64_t> numbers;
    std::optional<std::string> log;
    std::optional<std::string> html;
    double tolerance = 0;
    bool ignoreHeader = false;
    bool strict = false;
};

struct Command {
    std::string_view name;
    std::size_t numFiles;
    bool takesNumbers;  ///< instance numbers behind the files, at least one
    std::vector<std::string_view> options;
    int (*run)(const Arguments&);
};

/// A progress bar on standard error, redrawn when it has grown by a percent.
class ProgressBar final : public Ovik::ProgressMeter {
 public:
    void start(std::uint64_t total) override {
        total_ = total;
        draw(0);
    }
    void progress(std::uint64_t position) override {
        const int percent = total_ ? static_cast<int>(position * 100 / total_) : 100;
        if (percent != percent_) draw(percent);
    }
    void finish() override { std::cerr << "\r\033[K" << std::flush; }

 private:
    void draw(int percent) {
        percent_ = percent;
        const auto done = static_cast<std::size_t>(std::min(percent, 100)) / 2;
        std::cerr << '\r' << '[' << std::string(done, '#') << std::string(50 - done, ' ') << "] "
                  << percent << " %" << std::flush;
    }

    std::uint64_t total_ = 0;
    int percent_ = 0;
};

std::optional<Ovik::ErrLog> makeLog(const Arguments& arguments) {
    if (!arguments.log) return std::nullopt;
    return Ovik::ErrLog(fs::path(*arguments.log));
}

/// A log is opened at its first line, and one that can't be opened loses its lines silently.
void checkLog(std::optional<Ovik::ErrLog>& log) {
    if (log && log->isInitialized() && !log->log())
        tools::complain(log->fileName(), "the log can't be written");
}

int copy(const Arguments& arguments) {
    const std::string& in = arguments.files[0];
    const std::string& out = arguments.files[1];
    std::optional<Ovik::ErrLog> log = makeLog(arguments);
    ProgressBar bar;
    Ovik::IfcHeader header;
    const Ovik::IfcModelPtr model =
        tools::loadModel(in, header,
                         {.log = log ? &*log : nullptr,
                          .meter = isatty(STDERR_FILENO) ? &bar : nullptr,
                          .strict = arguments.strict});
    checkLog(log);
    if (!model) return 1;
    if (!tools::writeModel(*model, header, out)) return 2;
    std::cout << out << ": " << model->getNumEntities() << " entities of "
              << Ovik::toUtf8(Ovik::schemaName(model->schemaId())) << " written\n";
    return 0;
}

int compare(const Arguments& arguments) {
    std::optional<Ovik::ErrLog> log = makeLog(arguments);
    Ovik::ErrLog* const logger = log ? &*log : nullptr;
    Ovik::IfcParsedStream first;
    Ovik::IfcParsedStream second;
    // The second file is read even if the first is not valid: its faults are told too.
    const bool isFirstValid = tools::readItems(arguments.files[0], first, logger);
    const bool isSecondValid = tools::readItems(arguments.files[1], second, logger);
    checkLog(log);
    if (!isFirstValid || !isSecondValid) return 2;
    std::ostringstream report;
    const bool equal =
        first.isEqualTo(second, &report, arguments.tolerance, arguments.ignoreHeader);
    // Each line of the report begins with its line end.
    if (const std::string text = report.str(); !text.empty())
        std::cout << std::string_view(text).substr(1) << '\n';
    return equal ? 0 : 1;
}

int info(const Arguments& arguments) {
    Ovik::IfcHeader header;
    const Ovik::IfcModelPtr model = tools::loadModel(arguments.files[0], header);
    if (!model) return 1;
    tools::printInfo(std::cout, *model, header);
    return 0;
}

int tree(const Arguments& arguments) {
    const std::string& file = arguments.files[0];
    Ovik::IfcHeader header;
    const Ovik::IfcModelPtr model = tools::loadModel(file, header);
    if (!model) return 1;
    const tools::Tree tree(*model);
    if (tree.numLeftOut())
        tools::complain(file, std::to_string(tree.numLeftOut()) + tools::Tree::kLeftOutCause);
    else if (tree.numObjects() == 0)
        tools::complain(file, "no object is part of another");
    if (!arguments.html) {
        std::cout << tree.asText();
        return 0;
    }
    std::error_code error;
    if (fs::equivalent(file, *arguments.html, error)) {
        tools::complain(*arguments.html, "is the input itself");
        return 2;
    }
    if (!tools::writeText(tree.asHtml(fs::path(file).filename().string()), *arguments.html))
        return 2;
    std::cout << *arguments.html << ": a tree of " << tree.numObjects() << " objects written\n";
    return 0;
}

/// The entity with instance number `number`, by bisection; a null one if there is none.
api::Entity findEntity(const api::Model& model, std::int64_t number) {
    std::size_t first = 0;
    for (std::size_t count = model.getNumEntities(); count > 0;) {
        const std::size_t half = count / 2;
        if (model.get(first + half).ifcId() < number) {
            first += half + 1;
            count -= half + 1;
        } else {
            count = half;
        }
    }
    if (first == model.getNumEntities() || model.get(first).ifcId() != number) return {};
    return model.get(first);
}

int show(const Arguments& arguments) {
    const std::string& file = arguments.files[0];
    if (const std::string cause = tools::whyUnreadable(file); !cause.empty()) {
        tools::complain(file, cause);
        return 1;
    }
    api::initOvikApi();
    api::Header header;
    Ovik::IfcLoadReport report;
    api::Model* const model = api::Model::read(fs::path(file), &header, nullptr, &report);
    int status = 0;
    if (model->isNull()) {
        tools::complain(file, tools::whyNoModel(report));
        status = 1;
    } else {
        for (const std::int64_t number : arguments.numbers) {
            const api::Entity entity = findEntity(*model, number);
            if (entity.isNull()) {
                tools::complain(file, "has no instance #" + std::to_string(number));
                status = 1;
            } else {
                tools::showEntity(std::cout, entity);
            }
        }
    }
    model->release();
    return status;
}

const std::vector<Command>& commands() {
    static const std::vector<Command> kCommands = {
        {"copy", 2, false, {"--log", "--strict"}, copy},
        {"compare", 2, false, {"--tolerance", "--ignore-header", "--log"}, compare},
        {"info", 1, false, {}, info},
        {"tree", 1, false, {"--html"}, tree},
        {"show", 1, true, {}, show},
    };
    return kCommands;
}

bool parseTolerance(std::string_view text, double& value) {
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stop == end && value >= 0;
}

/// An instance number, with or without its `#`.
bool parseNumber(std::string_view text, std::int64_t& value) {
    if (text.starts_with('#')) text.remove_prefix(1);
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stop == end && value > 0;
}

/// Sorts the words behind the subcommand into files, numbers and options, in any order. Returns
/// what is wrong with them, or an empty text.
std::string parseArguments(const Command& command, const std::vector<std::string>& words,
                           Arguments& arguments) {
    for (auto word = words.begin(); word != words.end(); ++word) {
        if (word->size() < 2 || word->front() != '-') {
            if (!command.takesNumbers || arguments.files.size() < command.numFiles)
                arguments.files.push_back(*word);
            else if (!parseNumber(*word, arguments.numbers.emplace_back()))
                return "not an instance number: " + *word;
            continue;
        }
        const std::string& option = *word;
        if (std::find(command.options.begin(), command.options.end(), option) ==
            command.options.end())
            return "unknown option " + option;
        if (option == "--strict") {
            arguments.strict = true;
        } else if (option == "--ignore-header") {
            arguments.ignoreHeader = true;
        } else if (++word == words.end()) {
            return option + " needs a value";
        } else if (option == "--log") {
            arguments.log = *word;
        } else if (option == "--html") {
            arguments.html = *word;
        } else if (!parseTolerance(*word, arguments.tolerance)) {
            return "the tolerance is a number not below 0, not " + *word;
        }
    }
    if (arguments.files.size() != command.numFiles)
        return std::string(command.name) + " takes " + std::to_string(command.numFiles) +
               (command.numFiles == 1 ? " file" : " files");
    if (command.takesNumbers && arguments.numbers.empty()) return "an instance number is missing";
    return {};
}

bool isHelp(const std::string& word) {
    return word == "--help" || word == "-h";
}

int giveHelp() {
    std::cout << kUsage;
    return 0;
}

int run(const std::vector<std::string>& words) {
    if (words.size() == 1 && isHelp(words[0])) return giveHelp();
    std::string fault = "a subcommand is missing";
    if (!words.empty()) {
        fault = "unknown subcommand " + words[0];
        for (const Command& command : commands()) {
            if (command.name != words[0]) continue;
            if (std::any_of(words.begin() + 1, words.end(), isHelp)) return giveHelp();
            Arguments arguments;
            fault = parseArguments(command, {words.begin() + 1, words.end()}, arguments);
            if (fault.empty()) return command.run(arguments);
        }
    }
    std::cerr << "ovik: " << fault << '\n' << kUsage;
    return kBadUsage;
}

}  // namespace

int main(int argc, char** argv) {
    return run({argv + 1, argv + argc});
}
