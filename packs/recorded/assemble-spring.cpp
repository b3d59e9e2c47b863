// Makes the pack "spring" from a folder of key recordings, as part of the build.

#include "packs/analysis/TypicalFirst.h"
#include "packs/recorded/SpringPack.h"

#include <exception>
#include <iostream>

int main(int count, char** arguments) {
    if (count != 3) {
        std::cerr << "usage: assemble-spring RECORDINGS PACK\n";
        return 2;
    }
    try {
        const auto assembly = vornic::packs::assembleSpringPack(arguments[1], arguments[2],
                                                                vornic::packs::typicalFirst);
        for (const std::string& note : assembly.notes) {
            std::cout << "left out " << note << "\n";
        }
        if (!assembly.error.empty()) {
            std::cerr << "assemble-spring: " << assembly.error << "\n";
            return 1;
        }
        std::cout << "pack \"spring\": " << assembly.written << " strokes\n";
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "assemble-spring: " << error.what() << "\n";
        return 1;
    }
}
