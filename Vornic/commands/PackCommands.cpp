#include "Vornic/commands/BoardCommands.h"
#include "Vornic/library/BoardChoice.h"
#include "Vornic/library/BoardTransfer.h"
#include "Vornic/recording/ReadPacks.h"
#include "VornicCore/base/ReadableText.h"
#include "VornicCore/render/BuildBoard.h"

#include <nlohmann/json.hpp>

#include <stdexcept>
#include <thread>
#include <utility>

namespace vornic {

namespace {

/// What is said about the packs of one command.
class Account {
  public:
    explicit Account(const ImportBoard& request) : request_(request) {}

    void add(const PackReport& report, const std::string& boardId) {
        ++read_;
        if (request_.json) {
            auto entry = nlohmann::ordered_json::parse(reportAsJson(report));
            entry["board"] = nullptr;
            if (!boardId.empty()) {
                entry["board"] = boardId;
            }
            list_.push_back(std::move(entry));
            return;
        }
        text_ += reportAsText(report);
        if (!boardId.empty()) {
            text_ += "Imported \"" + readable(report.name) + "\" as " + boardId + "\n";
        }
    }

    void addError(const std::string& place, const std::string& error) {
        const std::string whole =
            (place.empty() ? request_.file.string() : readable(place, 200)) + ": " + error;
        problems_.push_back(whole);
        if (request_.json) {
            list_.push_back({{"place", readable(place, 200)}, {"error", error}});
        }
    }

    CommandOutcome outcome() {
        if (read_ == 0) {
            throw std::runtime_error(problems_.empty() ? "There is nothing to import."
                                                       : problems_[0]);
        }
        return {.text = request_.json ? list_.dump() + "\n" : text_, .remarks = problems_};
    }

  private:
    const ImportBoard& request_;
    std::size_t read_ = 0;
    std::string text_;
    nlohmann::ordered_json list_ = nlohmann::ordered_json::array();
    std::vector<std::string> problems_;
};

} // namespace

CommandOutcome importPacks(const ImportBoard& request, BoardShelf& shelf) {
    PackReadOptions options;
    options.decoder = request.decoder;
    options.find.firstNote = request.firstNote;
    Account account(request);
    try {
        FoundPacks packs({request.file}, options);
        for (std::size_t entry = 0; entry < packs.entries().size(); ++entry) {
            PackRead read = packs.read(entry, options);
            if (!read.pack) {
                account.addError(packs.entries()[entry].place, read.error);
                continue;
            }
            const PackReport report = std::move(read.pack->report);
            std::string id;
            if (!request.dryRun) {
                id = importBoard(readContents(std::move(read.pack->contents)), shelf.store,
                                 shelf.library)
                         .id;
            }
            account.add(report, id);
        }
    } catch (const ForeignPackError& error) {
        throw std::runtime_error(request.file.string() + ": " + error.what());
    }
    return account.outcome();
}

CommandOutcome exportForOthers(const ExportBoard& request, BoardShelf& shelf) {
    const Board board = chooseBoard(request.board, shelf.store, shelf.library);
    RenderedBoard rendered = buildBoard(board, shelf.library, std::thread::hardware_concurrency());
    const ExportedPack exported =
        exportPack(board, *rendered.bank, request.format.value(), request.file);
    std::vector<std::string> remarks = std::move(rendered.messages);
    remarks.insert(remarks.end(), exported.lost.begin(), exported.lost.end());
    return {.text = "Wrote " + std::to_string(exported.keys) + " keys and " +
                    std::to_string(exported.files) + " recordings for " +
                    std::string(label(request.format.value())) + "\n",
            .remarks = std::move(remarks)};
}

} // namespace vornic
