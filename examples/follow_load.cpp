// follow_load FILE LOG: loads a file, prints its progress, and writes what was wrong with the file
// to a log.
#include <filesystem>
#include <iostream>

#include "ovik/ovik.h"

namespace {

/// Prints a number at each tenth of the file.
class Tenths final : public Ovik::ProgressMeter {
 public:
    void start(std::uint64_t total) override {
        total_ = total;
        std::cout << total << " bytes:";
    }
    void progress(std::uint64_t position) override {
        for (; next_ <= 10 && position * 10 >= total_ * next_; ++next_)
            std::cout << ' ' << next_ * 10 << '%';
    }
    void finish() override { std::cout << " done\n"; }

 private:
    std::uint64_t total_ = 0;
    std::uint64_t next_ = 1;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: follow_load FILE LOG\n";
        return 2;
    }
    Tenths meter;
    Ovik::ErrLog log(std::filesystem::path{argv[2]});
    const Ovik::IfcModelPtr model(
        Ovik::IfcModel::read(std::filesystem::path(argv[1]), &log, &meter));
    // The log file is created with its first line.
    if (log.isInitialized()) std::cout << "what was wrong is in " << argv[2] << '\n';
    if (!model) {
        std::cerr << argv[1] << ": no model of IFC2X3 or IFC4\n";
        return 1;
    }
    std::cout << model->getNumEntities() << " entities\n";
}
