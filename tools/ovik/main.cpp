// The command-line tool: copies, compares, describes and shows model files, and their structure.
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "arguments.h"
#include "check.h"
#include "common/modelfile.h"
#include "common/samefile.h"
#include "ovik/api.h"
#include "show.h"
#include "tree.h"

namespace {

namespace api = Ovik::IfcApi;
namespace fs = std::filesystem;
using tools::Arguments;
using tools::Command;

constexpr std::string_view kUsage =
    "usage: ovik copy IN OUT [--log FILE] [--renumber] [--lossless]\n"
    "       ovik copy IN OUT [--log FILE] --plain [--strict]\n"
    "           loads IN and saves what it holds to OUT, value by value and with the numbers of "
    "IN,\n"
    "           or with --renumber with numbers from 1; with --lossless only if all of IN is "
    "kept;\n"
    "           with --plain what is wrong in IN is repaired or removed, and numbers are from 1\n"
    "       ovik compare A B [--tolerance T] [--ignore-header] [--log FILE] [--plain]\n"
    "           compares two files item by item; reals are equal if they are the same or differ "
    "by\n"
    "           less than T; with --plain only the latter, so without a T no two reals are\n"
    "       ovik info FILE [--log FILE]\n"
    "           schema, header, number of entities, classes by count\n"
    "       ovik check FILE [--json]\n"
    "           what is wrong in FILE, by cause\n"
    "       ovik tree FILE [--html OUT] [--log FILE]\n"
    "           what is part of what and stands in what, indented, or as a page to fold in OUT\n"
    "       ovik show FILE NUMBER... [--log FILE]\n"
    "           the attributes of the instances with these numbers, by name\n"
    "The log has a line for whatever of a file is not kept.\n"
    "Exit status: copy: 0 written, 1 IN gives no model, 3 --lossless and not all is kept\n"
    "             compare: 0 equal, 1 different, 2 also a file that is not valid\n"
    "             info, tree: 0, 1 FILE gives no model\n"
    "             check: 0 clean, 1 FILE gives no model, 3 something is wrong\n"
    "             show: 0, 1 FILE gives no model or has no such number\n"
    "             any: 2 bad usage, or something can't be written\n";

constexpr int kBadUsage = 2;

/// A bar of the part that is done, redrawn on standard error when it has grown by a percent.
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

/// The log of a load, if one is asked for. It is opened at its first line.
class Log {
 public:
    explicit Log(const Arguments& arguments) {
        if (arguments.log) log_.emplace(fs::path(*arguments.log));
    }
    Ovik::ErrLog* get() { return log_ ? &*log_ : nullptr; }

    /// False, after an error message, if lines of it could not be written.
    bool isComplete() {
        if (!log_ || !log_->isInitialized() || log_->log().flush()) return true;
        tools::complain(log_->fileName(), "the log can't be written");
        return false;
    }

 private:
    std::optional<Ovik::ErrLog> log_;
};

/// Loads the first file as the arguments ask for. `report` may be null.
Ovik::IfcModelPtr load(const Arguments& arguments, Log& log, Ovik::IfcHeader& header,
                       Ovik::IfcLoadReport* report = nullptr) {
    ProgressBar bar;
    return tools::loadModel(arguments.files[0], header,
                            {.log = log.get(),
                             .meter = isatty(STDERR_FILENO) ? &bar : nullptr,
                             .plain = arguments.plain,
                             .strict = arguments.strict},
                            report);
}

int copy(const Arguments& arguments) {
    const std::string& out = arguments.files[1];
    Log log(arguments);
    Ovik::IfcHeader header;
    Ovik::IfcLoadReport report;
    const Ovik::IfcModelPtr model = load(arguments, log, header, &report);
    const bool isLogged = log.isComplete();
    if (!model) return 1;
    if (arguments.lossless && !report.isComplete()) return 3;
    const bool isWritten = arguments.plain ? tools::writeModel(*model, header, out)
                                           : tools::saveModel(*model, header, out,
                                                              {.keepNumbers = !arguments.renumber});
    if (!isWritten) return 2;
    std::cout << out << ": " << model->getNumEntities() << " entities of "
              << Ovik::toUtf8(Ovik::schemaName(model->schemaId())) << " written\n";
    return isLogged ? 0 : 2;
}

int compare(const Arguments& arguments) {
    Log log(arguments);
    Ovik::IfcParsedStream first;
    Ovik::IfcParsedStream second;
    // The second file is read even if the first is not valid: its faults are told too.
    const bool exact = !arguments.plain;
    const bool isFirstValid = tools::readItems(arguments.files[0], first, log.get(), exact);
    const bool isSecondValid = tools::readItems(arguments.files[1], second, log.get(), exact);
    if (!log.isComplete() || !isFirstValid || !isSecondValid) return 2;
    std::ostringstream report;
    const bool equal =
        first.isEqualTo(second, &report, arguments.tolerance.value_or(0), arguments.ignoreHeader);
    // Each line of the report begins with its line end.
    if (const std::string text = report.str(); !text.empty())
        std::cout << std::string_view(text).substr(1) << '\n';
    return equal ? 0 : 1;
}

int info(const Arguments& arguments) {
    Log log(arguments);
    Ovik::IfcHeader header;
    const Ovik::IfcModelPtr model = load(arguments, log, header);
    const bool isLogged = log.isComplete();
    if (!model) return 1;
    tools::printInfo(std::cout, *model, header);
    return isLogged ? 0 : 2;
}

int check(const Arguments& arguments) {
    return tools::checkFile(arguments.files[0], arguments.json, std::cout);
}

int tree(const Arguments& arguments) {
    const std::string& file = arguments.files[0];
    Log log(arguments);
    Ovik::IfcHeader header;
    const Ovik::IfcModelPtr model = load(arguments, log, header);
    const bool isLogged = log.isComplete();
    if (!model) return 1;
    const tools::Tree tree(*model);
    if (tree.numLeftOut())
        tools::complain(file, std::to_string(tree.numLeftOut()) + tools::Tree::kLeftOutCause);
    else if (tree.numObjects() == 0)
        tools::complain(file, "no object is part of another");
    if (!arguments.html) {
        std::cout << tree.asText();
        return isLogged ? 0 : 2;
    }
    if (!tools::writeText(tree.asHtml(fs::path(file).filename().string()), *arguments.html))
        return 2;
    std::cout << *arguments.html << ": a tree of " << tree.numObjects() << " objects written\n";
    return isLogged ? 0 : 2;
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
    Log log(arguments);
    Ovik::IfcReadOptions options;
    options.exact = true;
    Ovik::IfcLoadReport report;
    api::Model* const model =
        api::Model::read(fs::path(file), &header, &options, &report, log.get());
    int status = log.isComplete() ? 0 : kBadUsage;
    if (model->isNull()) {
        tools::complain(file, tools::whyNoModel(report));
        status = 1;
    } else {
        tools::tellLosses(file, report, arguments.log.has_value());
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
        {"copy", 2, 1, false, {"--log", "--plain", "--strict", "--renumber", "--lossless"}, copy},
        {"compare", 2, 2, false, {"--tolerance", "--ignore-header", "--log", "--plain"}, compare},
        {"info", 1, 1, false, {"--log"}, info},
        {"check", 1, 1, false, {"--json"}, check},
        {"tree", 1, 1, false, {"--html", "--log"}, tree},
        {"show", 1, 1, true, {"--log"}, show},
    };
    return kCommands;
}

/// Refuses a command line on which a file that is written is named twice, whatever its names are.
std::string checkFiles(const Command& command, const Arguments& arguments) {
    std::vector<std::string> files = arguments.files;
    std::size_t numInputs = command.numInputs;
    for (const auto* written : {&arguments.log, &arguments.html}) {
        if (*written) files.push_back(**written);
    }
    for (std::size_t i = numInputs; i < files.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            if (tools::isSameFile(files[j], files[i]))
                return files[i] + (files[i] == files[j] ? " is named twice"
                                                        : " and " + files[j] + " are one file");
        }
    }
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
            if (!fault.empty()) break;
            fault = checkFiles(command, arguments);
            if (fault.empty()) return command.run(arguments);
            std::cerr << "ovik: " << fault << '\n';
            return kBadUsage;
        }
    }
    std::cerr << "ovik: " << fault << '\n' << kUsage;
    return kBadUsage;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const int status = run({argv + 1, argv + argc});
        if (std::cout.flush()) return status;
        std::cerr << "ovik: standard output can't be written\n";
    } catch (const std::exception& fault) {
        std::cerr << "ovik: " << fault.what() << '\n';
    }
    return kBadUsage;
}
