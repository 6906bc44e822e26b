// Measures each stage of a file's road in bytes of file text per second, and the memory it takes in
// bytes per byte of file, beside a plain read of the same file in the same run.
//   ovik_bench [FILE] [--benchmark_...]   without FILE, a synthetic IFC4 model of 50 MB
// The stage `validate` is the part of `load` from the last record to the end: the second pass, the
// validation of the entities and their hand-over to the model.
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "bench/synthetic.h"
#include "ovik/parser.h"

namespace {

namespace fs = std::filesystem;
namespace parser = Ovik::IfcParser;

constexpr std::uint64_t kModelBytes = 50'000'000;

constexpr char kRate[] = "MB/s";
constexpr char kHeld[] = "held B/B";
constexpr char kPeak[] = "peak B/B";

/// What a stage makes, kept until its memory has been measured.
using Kept = std::shared_ptr<void>;
using Stage = std::function<Kept()>;

std::size_t allocatedBytes() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// The field of /proc/self/status, which is in kB.
std::size_t statusBytes(const std::string& field) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(field)) return std::stoul(line.substr(field.size())) * 1024;
    return 0;
}

/// Measures memory from its construction on: what is allocated at `note` and was not before, and
/// the highest in between. A decrease counts as 0.
class Scale {
 public:
    Scale() {
        malloc_trim(0);
        std::ofstream("/proc/self/clear_refs") << "5";  // the peak starts anew from here
        resident_ = statusBytes("VmRSS:");
        allocated_ = allocatedBytes();
    }
    void note(benchmark::State& state, std::uint64_t fileBytes) const {
        const auto perByte = [&](std::size_t now, std::size_t before) {
            return now < before
                       ? 0.0
                       : static_cast<double>(now - before) / static_cast<double>(fileBytes);
        };
        state.counters[kHeld] = perByte(allocatedBytes(), allocated_);
        state.counters[kPeak] = perByte(statusBytes("VmHWM:"), resident_);
    }

 private:
    std::size_t resident_;
    std::size_t allocated_;
};

/// Runs a stage once and notes the memory that it takes.
void weigh(benchmark::State& state, const Stage& stage, std::uint64_t fileBytes) {
    stage();  // whatever it prepares at its first run is not its own memory
    const Scale scale;
    const Kept kept = stage();
    scale.note(state, fileBytes);
}

void setRate(benchmark::State& state, std::uint64_t fileBytes) {
    state.counters[kRate] = benchmark::Counter(static_cast<double>(fileBytes) / 1e6,
                                               benchmark::Counter::kIsIterationInvariantRate);
}

/// Registers a stage; giving back what it has made is not part of its time.
void addStage(const char* name, std::uint64_t fileBytes, const Stage& stage) {
    benchmark::RegisterBenchmark(name,
                                 [=](benchmark::State& state) {
                                     weigh(state, stage, fileBytes);
                                     for ([[maybe_unused]] auto _ : state) {
                                         Kept kept = stage();
                                         state.PauseTiming();
                                         kept.reset();
                                         state.ResumeTiming();
                                     }
                                     setRate(state, fileBytes);
                                 })
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
}

/// Prints a line per stage, in units that can be compared at a glance.
class Table final : public benchmark::BenchmarkReporter {
 public:
    bool ReportContext(const Context&) override {
        std::printf("%-10s %10s %10s %10s %10s\n", "stage", "ms", kRate, kHeld, kPeak);
        return true;
    }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            std::printf("%-10s %10.1f", run.run_name.function_name.c_str(),
                        run.GetAdjustedRealTime());
            for (const char* counter : {kRate, kHeld, kPeak}) {
                const auto found = run.counters.find(counter);
                if (found == run.counters.end())
                    std::printf(" %10s", "-");
                else
                    std::printf(" %10.2f", found->second.value);
            }
            std::printf("\n");
        }
        std::fflush(stdout);
    }
};

Kept plainRead(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::string chunk(1 << 16, '\0');
    std::uint64_t total = 0;
    while (stream.read(chunk.data(), static_cast<std::streamsize>(chunk.size())) ||
           stream.gcount() > 0)
        total += static_cast<std::uint64_t>(stream.gcount());
    benchmark::DoNotOptimize(total);
    return nullptr;
}

/// Drops everything that the parser hands over.
class NullOutput final : public parser::Output {
 public:
    bool setHeader(parser::ParsedHeader*& header) override {
        delete std::exchange(header, nullptr);
        return true;
    }
    void addData(int, parser::PooledName*, parser::ItemList* items, double) override {
        items->release();
    }
    void endOfFile() override {}
};

Kept scan(const fs::path& file) {
    std::ifstream stream(file);
    NullOutput output;
    parser::Scanner scanner(&stream, nullptr, &output);
    parser::TokenValue value;
    parser::Location location;
    scanner.setTarget(&value, &location);
    while (const int token = scanner.yylex())
        if (token == parser::Token::IFCTYPE || token == parser::Token::ENUM) value.name->release();
    return nullptr;
}

Kept parse(const fs::path& file) {
    std::ifstream stream(file);
    NullOutput output;
    parser::parseStream(stream, nullptr, &output);
    return nullptr;
}

Kept load(const fs::path& file, Ovik::ProgressMeter* meter = nullptr) {
    Ovik::IfcModelPtr model(Ovik::IfcModel::read(file, nullptr, meter));
    if (!model) throw std::runtime_error(file.string() + " gives no model");
    return model;
}

void write(const Ovik::IfcModel& model, const fs::path& file) {
    if (!model.write(file, Ovik::IfcHeader()))
        throw std::runtime_error(file.string() + " can't be written");
}

std::shared_ptr<Ovik::IfcParsedStream> readItems(const fs::path& file) {
    auto items = std::make_shared<Ovik::IfcParsedStream>();
    if (!items->read(file, nullptr, nullptr))
        throw std::runtime_error(file.string() + " is not complete");
    return items;
}

/// Separates the end of a load from its parse, for the stage `validate`.
class EndMeter final : public Ovik::ProgressMeter {
 public:
    /// Measures memory too, if it is given the number of records.
    explicit EndMeter(std::uint64_t numRecords = 0) : last_(numRecords) {}

    void start(std::uint64_t) override { begin_ = Clock::now(); }
    void progress(std::uint64_t) override {
        if (++count_ == last_) scale_.emplace();
        begin_ = Clock::now();
    }
    void finish() override { seconds_ = Clock::now() - begin_; }

    std::uint64_t numRecords() const { return count_; }
    double seconds() const { return seconds_.count(); }
    const std::optional<Scale>& scale() const { return scale_; }

 private:
    using Clock = std::chrono::steady_clock;
    const std::uint64_t last_;
    std::uint64_t count_ = 0;
    Clock::time_point begin_;
    std::chrono::duration<double> seconds_{};
    std::optional<Scale> scale_;
};

void addValidate(const fs::path& file, std::uint64_t fileBytes) {
    benchmark::RegisterBenchmark("validate",
                                 [=](benchmark::State& state) {
                                     EndMeter counting;
                                     load(file, &counting);
                                     EndMeter weighing(counting.numRecords());
                                     Kept model = load(file, &weighing);
                                     if (weighing.scale()) weighing.scale()->note(state, fileBytes);
                                     model.reset();
                                     for ([[maybe_unused]] auto _ : state) {
                                         EndMeter meter;
                                         load(file, &meter);
                                         state.SetIterationTime(meter.seconds());
                                     }
                                     setRate(state, fileBytes);
                                 })
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime();
}

/// Back references and structure of many relations: four times as many must take about four times
/// as long.
void addManyParts(const char* name, unsigned numRelations) {
    benchmark::RegisterBenchmark(
        name,
        [=](benchmark::State& state) {
            for ([[maybe_unused]] auto _ : state) {
                state.PauseTiming();
                Ovik::IfcModelPtr model = bench::makeManyParts(numRelations);
                state.ResumeTiming();
                model->buildBackRefs();
                Ovik::IfcStructurePtr(Ovik::IfcSpatialStructure::create(*model));
                state.PauseTiming();
                model.reset();
                state.ResumeTiming();
            }
        })
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
}

void addStages(const fs::path& file, const fs::path& copy) {
    const std::uint64_t bytes = fs::file_size(file);
    addStage("read", bytes, [=] { return plainRead(file); });
    addStage("scan", bytes, [=] { return scan(file); });
    addStage("parse", bytes, [=] { return parse(file); });
    addStage("load", bytes, [=] { return load(file); });
    addValidate(file, bytes);

    // Made at the first use, so that a filter that leaves a stage out leaves out its cost too.
    addStage("write", bytes, [=, model = Kept()]() mutable -> Kept {
        if (!model) model = load(file);
        write(*static_cast<Ovik::IfcModel*>(model.get()), copy);
        return nullptr;
    });
    addStage("backrefs", bytes, [=, model = Kept()]() mutable -> Kept {
        if (!model) model = load(file);
        auto* const inner = static_cast<Ovik::IfcModel*>(model.get());
        inner->buildBackRefs();
        // The next round would add to them.
        return {inner, [model](Ovik::IfcModel* m) {
                    for (std::uint64_t i = 0; i < m->getNumEntities(); ++i) {
                        // A buffer comes with every assignment, even of an empty array.
                        Ovik::IfcEntityPtrArray& refs = m->get(i)->backRefs();
                        std::destroy_at(&refs);
                        std::construct_at(&refs);
                    }
                }};
    });
    addStage("structure", bytes, [=, model = Kept()]() mutable -> Kept {
        if (!model) model = load(file);
        return Ovik::IfcStructurePtr(
            Ovik::IfcSpatialStructure::create(*static_cast<Ovik::IfcModel*>(model.get())));
    });
    addStage("compare", bytes,
             [=, a = std::shared_ptr<Ovik::IfcParsedStream>(),
              b = std::shared_ptr<Ovik::IfcParsedStream>()]() mutable -> Kept {
                 if (!a) a = readItems(file);
                 if (!b) b = readItems(file);
                 benchmark::DoNotOptimize(a->isEqualTo(*b, nullptr, 1e-9, false));
                 return nullptr;
             });
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (argc > 2) {
        std::cerr << "usage: ovik_bench [FILE] [--benchmark_...]\n";
        return 2;
    }
    fs::path folder;
    int status = 0;
    try {
        folder = fs::temp_directory_path() / ("ovik-bench-" + std::to_string(getpid()));
        fs::create_directories(folder);
        const fs::path file = argc == 2 ? fs::path(argv[1]) : folder / "synthetic.ifc";
        if (argc == 1) {
            write(*bench::makeModel(Ovik::eIFC4, kModelBytes), file);
        }
        addStages(file, folder / "copy.ifc");
        addManyParts("parts50k", 50'000);
        addManyParts("parts200k", 200'000);
        std::cout << file.string() << ", " << fs::file_size(file) << " bytes\n";
        Table table;
        benchmark::RunSpecifiedBenchmarks(&table);
    } catch (const std::exception& error) {
        std::cerr << "ovik_bench: " << error.what() << '\n';
        status = 1;
    }
    std::error_code ignored;
    fs::remove_all(folder, ignored);
    return status;
}
