// Writing generated files.
#include "output.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace Ovik::Generator {

Output::Output(std::filesystem::path folder, const Schema& schema, unsigned shards)
    : folder_(std::move(folder)),
      firstLine_("// Do not edit. Made by: ovik-schema-generator " + schema.file + " FOLDER " +
                 std::to_string(shards) + "\n") {}

void Output::write(const std::filesystem::path& path, const std::string& text) const {
    const std::filesystem::path target = folder_ / path;
    const std::string content = firstLine_ + text;
    {
        std::ifstream file(target, std::ios::binary);
        std::ostringstream old;
        old << file.rdbuf();
        if (file && old.str() == content) return;
    }
    std::filesystem::create_directories(target.parent_path());
    std::ofstream file(target, std::ios::binary);
    file << content;
    file.close();
    if (!file) throw std::runtime_error(target.string() + ": can't be written");
}

}  // namespace Ovik::Generator
