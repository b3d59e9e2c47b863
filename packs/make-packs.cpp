// Makes modelled sound packs from their tables, as part of the build.

#include "packs/model/ModelledPack.h"

#include <exception>
#include <filesystem>
#include <iostream>

namespace {

bool make(const std::filesystem::path& file, const std::filesystem::path& folder) {
    std::string error;
    const auto table = vornic::packs::readPackTable(file, error);
    if (!table) {
        std::cerr << "make-packs: " << error << "\n";
        return false;
    }
    const auto pack = vornic::packs::makePack(*table, folder / table->id);
    if (!pack.error.empty()) {
        std::cerr << "make-packs: " << pack.error << "\n";
        return false;
    }
    std::cout << "pack \"" << table->id << "\": " << pack.written << " strokes\n";
    return true;
}

} // namespace

int main(int count, char** arguments) {
    if (count < 3) {
        std::cerr << "usage: make-packs FOLDER TABLE...\n";
        return 2;
    }
    try {
        bool isMade = true;
        for (int i = 2; i < count; ++i) {
            isMade = make(arguments[i], arguments[1]) && isMade;
        }
        return isMade ? 0 : 1;
    } catch (const std::exception& error) {
        std::cerr << "make-packs: " << error.what() << "\n";
        return 1;
    }
}
