// The demo: a model goes through the library and back, with each step named and timed.
//   demo FOLDER        makes a small building in both schemas; its files go to FOLDER
//   demo FOLDER FILE   loads FILE, writes it, loads that and compares
#include <chrono>
#include <iomanip>
#include <iostream>
#include <sstream>

#include "common/modelfile.h"
#include "common/samefile.h"
#include "demo/building.h"

namespace {

namespace fs = std::filesystem;

/// Runs a step and prints how long it took.
template <class Step>
auto timed(const std::string& what, Step&& step) {
    const auto begin = std::chrono::steady_clock::now();
    auto result = step();
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - begin;
    std::cout << std::left << std::setw(60) << what << std::right << std::setw(10) << std::fixed
              << std::setprecision(2) << time.count() << " ms\n";
    return result;
}

bool save(const Ovik::IfcModel& model, const Ovik::IfcHeader& header, const fs::path& file) {
    return timed("save " + file.filename().string(),
                 [&] { return tools::saveModel(model, header, file); });
}

Ovik::IfcModelPtr load(const fs::path& file, Ovik::IfcHeader& header) {
    return timed("load " + file.filename().string(),
                 [&] { return tools::loadModel(file, header); });
}

/// Compares two files that the library has saved, and tells the first difference.
bool compare(const fs::path& a, const fs::path& b) {
    std::ostringstream report;
    bool areRead = false;
    const bool equal = timed("compare the two", [&] {
        Ovik::IfcParsedStream first;
        Ovik::IfcParsedStream second;
        areRead =
            tools::readItems(a, first, nullptr, true) && tools::readItems(b, second, nullptr, true);
        return areRead && first.isEqualTo(second, &report, 0, true);
    });
    if (!areRead) return false;
    std::cout << (equal ? "they are equal" : "they differ:") << report.str() << '\n';
    return equal;
}

bool setByName(Ovik::IfcEntity& entity, const char* name, const Ovik::XString& value) {
    return entity.setAttribute(name, Ovik::IfcVariant(value)) == Ovik::ResultOk;
}

/// Makes, saves, loads, changes and saves the demo's building in one schema.
bool runBuilding(Ovik::EIfcSchemaId schema, const fs::path& folder) {
    const std::string name = Ovik::toUtf8(Ovik::schemaName(schema));
    const fs::path made = folder / (name + "-made.ifc");
    const fs::path changed = folder / (name + "-changed.ifc");
    const fs::path again = folder / (name + "-again.ifc");
    std::cout << "--- a small building in " << name << '\n';

    const Ovik::IfcModelPtr model =
        timed("make it with the typed classes", [&] { return demo::makeBuilding(schema); });
    Ovik::IfcHeader header;
    header.setFileName(u"demo.ifc");
    header.setOriginatingSystem(u"Ovik demo");
    if (!save(*model, header, made)) return false;

    const Ovik::IfcModelPtr loaded = load(made, header);
    Ovik::IfcEntity* wall = loaded ? demo::findWall(*loaded) : nullptr;
    if (!wall || loaded->getNumEntities() != model->getNumEntities()) {
        std::cout << "what was saved did not come back whole\n";
        return false;
    }
    std::cout << loaded->getNumEntities() << " entities; the first wall is \""
              << Ovik::toUtf8(demo::wallName(*wall)) << "\"\n";
    demo::renameWall(*wall, u"Garden wall, 2\u00bd m");
    if (!setByName(*wall, "Description", u"Set by name")) return false;
    std::cout << "its name, by accessor, is now \"" << Ovik::toUtf8(demo::wallName(*wall))
              << "\", and it has a description, by name\n";
    if (!save(*loaded, header, changed)) return false;

    const Ovik::IfcModelPtr last = load(changed, header);
    if (!last || !save(*last, header, again)) return false;
    return compare(changed, again);
}

/// Loads and describes `file`, saves it, loads that and compares what both models are saved as.
bool runFile(const fs::path& file, const fs::path& folder) {
    const std::string stem = file.stem().string();
    const fs::path copy = folder / (stem + "-copy.ifc");
    const fs::path again = folder / (stem + "-copy-of-copy.ifc");
    for (const fs::path& output : {copy, again}) {
        if (!tools::isSameFile(file, output)) continue;
        tools::complain(output, "is the input itself");
        return false;
    }
    Ovik::IfcHeader header;
    const Ovik::IfcModelPtr model = load(file, header);
    if (!model) return false;
    tools::printInfo(std::cout, *model, header);
    if (!save(*model, header, copy)) return false;
    const Ovik::IfcModelPtr loaded = load(copy, header);
    if (!loaded || !save(*loaded, header, again)) return false;
    return compare(copy, again);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2 || argc > 3) {
        std::cerr << "usage: demo FOLDER [FILE]\n";
        return 2;
    }
    const fs::path folder = argv[1];
    std::error_code error;
    fs::create_directories(folder, error);
    const bool good = argc == 3
                          ? runFile(argv[2], folder)
                          : runBuilding(Ovik::eIFC2X3, folder) && runBuilding(Ovik::eIFC4, folder);
    std::cout << "the files are in " << folder.string() << '\n';
    return good ? 0 : 1;
}
