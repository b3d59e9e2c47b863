#include "Vornic/app/FileRead.h"

#include "VornicCore/base/ReadableText.h"

#include <string>
#include <utility>

namespace vornic {

std::optional<BoardTransferError> problemOf(const std::function<void()>& work) {
    try {
        work();
        return std::nullopt;
    } catch (const BoardTransferError& problem) {
        return problem;
    } catch (const ForeignPackError& problem) {
        return BoardTransferError(problem.what(), {});
    }
}

FileRead readPack(FoundPacks& packs, std::size_t place, const PackReadOptions& options) {
    PackRead read = packs.read(place, options);
    if (!read.pack) {
        const std::string& where = packs.entries()[place].place;
        throw BoardTransferError(read.error, where.empty() ? "" : "(" + readable(where, 200) + ")");
    }
    return {readContents(std::move(read.pack->contents)), std::move(read.pack->report), nullptr};
}

FileRead readFiles(const std::vector<std::filesystem::path>& from, const PackReadOptions& options) {
    if (from.size() == 1 && isBoardFile(from[0])) {
        return {readBoardFile(from[0], options.stop), std::nullopt, nullptr};
    }
    // Looking for packs and reading one are half of the way each.
    PackReadOptions half = options;
    half.progress = [&](double share) { options.progress(share / 2); };
    auto packs = std::make_shared<FoundPacks>(from, half);
    if (packs->entries().size() > 1) {
        return {std::nullopt, std::nullopt, std::move(packs)};
    }
    half.progress = [&](double share) { options.progress((1 + share) / 2); };
    return readPack(*packs, 0, half);
}

} // namespace vornic
