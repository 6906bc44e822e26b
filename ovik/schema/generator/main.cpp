// ovik-schema-generator SCHEMA FOLDER SHARDS: makes the classes of a schema and the
// facade's constants for it from its table.
#include <charconv>
#include <cstring>
#include <exception>
#include <iostream>

#include "apiwriter.h"
#include "writer.h"

int main(int argc, char** argv) {
    unsigned shards = 0;
    const char* const last = argc == 4 ? argv[3] + std::strlen(argv[3]) : nullptr;
    if (!last || std::from_chars(argv[3], last, shards).ptr != last || shards == 0) {
        std::cerr << "usage: ovik-schema-generator SCHEMA FOLDER SHARDS\n";
        return 2;
    }
    try {
        using namespace Ovik::Generator;
        const auto schema = Schema::read(argv[1]);
        const Output output(argv[2], *schema, shards);
        writeSchema(*schema, output, shards);
        writeApi(*schema, output);
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
