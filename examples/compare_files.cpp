// compare_files A B: compares two files item by item, headers aside, and tells the first
// difference. The exit status is 0 if there is none.
#include <filesystem>
#include <iostream>
#include <string>

#include "ovik/ovik.h"

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: compare_files A B\n";
        return 2;
    }
    Ovik::IfcParsedStream streams[2];
    for (int i = 0; i < 2; ++i) {
        const char* file = argv[i + 1];
        try {
            if (streams[i].read(std::filesystem::path(file), nullptr, nullptr)) continue;
            std::cerr << file << ": is not a valid file\n";
        } catch (const std::string& cause) {
            std::cerr << file << ": " << cause << '\n';
        }
        return 2;
    }
    constexpr double kTolerance = 1e-9;
    constexpr bool kIgnoreHeader = true;
    if (streams[0].isEqualTo(streams[1], &std::cout, kTolerance, kIgnoreHeader)) {
        std::cout << "equal\n";
        return 0;
    }
    std::cout << '\n';
    return 1;
}
