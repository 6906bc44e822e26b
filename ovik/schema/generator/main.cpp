// ovik-schema-generator SCHEMA FOLDER SHARDS: makes the classes of a schema and the
// facade's constants for it from its table.
#include <cstdlib>
#include <exception>
#include <iostream>

#include "apiwriter.h"
#include "writer.h"

int main(int argc, char** argv) {
    if (argc != 4) {
        std::cerr << "usage: ovik-schema-generator SCHEMA FOLDER SHARDS\n";
        return 2;
    }
    try {
        using namespace Ovik::Generator;
        const auto schema = Schema::read(argv[1]);
        writeSchema(*schema, argv[2], static_cast<unsigned>(std::strtoul(argv[3], nullptr, 10)));
        writeApi(*schema, argv[2]);
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << argv[1] << ": " << failure.what() << '\n';
        return 1;
    }
}
