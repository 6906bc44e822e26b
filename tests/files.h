// Files of the tests: the frame of a model file, files that are gone at the end, and the real files
// in the folder that the environment variable OVIK_CORPUS names.
#pragma once

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "ovik/base/ascii.h"

namespace OvikTest {

/// What stands before and behind the records of a file.
inline const std::string kHead =
    "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\nFILE_NAME('n');\n"
    "FILE_SCHEMA(('IFC4'));\nENDSEC;\nDATA;\n";
inline const std::string kTail = "ENDSEC;\nEND-ISO-10303-21;\n";

/// A whole file of `schema` with these records.
inline std::string fileOf(std::string_view records, std::string_view schema = "IFC4") {
    std::string text = kHead + std::string(records) + kTail;
    return text.replace(text.find("IFC4"), 4, schema);
}

inline std::string textOf(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// A file name of this process, gone at the end.
class TempFile {
 public:
    TempFile() {
        static int count = 0;
        path = std::filesystem::temp_directory_path() /
               ("ovik-test-" + std::to_string(::getpid()) + "-" + std::to_string(++count));
    }
    explicit TempFile(std::string_view text) : TempFile() {
        std::ofstream(path, std::ios::binary) << text;
    }
    ~TempFile() { std::filesystem::remove_all(path); }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;

    std::string text() const { return textOf(path); }

    std::filesystem::path path;
};

/// The model files in a folder of the corpus, in order; none without a corpus.
inline std::vector<std::filesystem::path> corpusFiles(const std::string& folder) {
    std::vector<std::filesystem::path> files;
    const char* const corpus = std::getenv("OVIK_CORPUS");
    std::error_code none;
    if (corpus) {
        for (const auto& entry :
             std::filesystem::directory_iterator(std::filesystem::path(corpus) / folder, none)) {
            if (entry.path().extension() == ".ifc") files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}
/// Why a test skips that finds none.
inline constexpr char kNoCorpus[] = "no real files: set OVIK_CORPUS to their folder";

inline std::string capitals(std::string text) {
    for (char& c : text) c = Ovik::toUpperAscii(c);
    return text;
}

}  // namespace OvikTest
