// The folder that the generated files go to.
#pragma once

#include <filesystem>
#include <string>

#include "schema.h"

namespace Ovik::Generator {

class Output {
 public:
    /// What is written to `folder` with this many shards says so in its first line.
    Output(std::filesystem::path folder, const Schema& schema, unsigned shards);

    /// Writes `text`, below a first line that is the same for all, to the file `path` in the
    /// folder. Leaves a file that would not change alone, so that what depends on it is not built
    /// again. Throws `std::runtime_error` if it can't be written.
    void write(const std::filesystem::path& path, const std::string& text) const;

 private:
    std::filesystem::path folder_;
    std::string firstLine_;
};

}  // namespace Ovik::Generator
