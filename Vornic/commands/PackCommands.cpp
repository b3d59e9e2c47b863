#include "Vornic/commands/PackCommands.h"

#include "Vornic/library/KeepBoard.h"
#include "Vornic/recording/ReadPacks.h"
#include "VornicCore/base/ReadableText.h"

#include <nlohmann/json.hpp>

#include <array>
#include <fstream>
#include <stdexcept>
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

bool isBoardFile(const std::filesystem::path& file) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) {
        return !std::filesystem::is_directory(file, error);
    }
    if (file.extension() == ".vornic") {
        return true;
    }
    // Its members are sorted, so these come first.
    std::array<char, 64> head{};
    std::ifstream stream(file, std::ios::binary);
    stream.read(head.data(), head.size());
    std::string text(head.data(), static_cast<std::size_t>(stream.gcount()));
    std::erase_if(text, [](char letter) {
        return letter == ' ' || letter == '\n' || letter == '\r' || letter == '\t';
    });
    return text.starts_with("{\"board\":") || text.starts_with("{\"format\":");
}

CommandOutcome importPacks(const ImportBoard& request, BoardShelf& shelf) {
    PackReadOptions options;
    options.decoder = request.decoder;
    options.find.firstNote = request.firstNote;
    Account account(request);
    try {
        readPacks(request.file, options, [&](PackRead read) {
            if (!read.pack) {
                account.addError(read.place, read.error);
                return;
            }
            const PackReport report = std::move(read.pack->report);
            std::string id;
            if (!request.dryRun) {
                id = keepBoard(std::move(read.pack->contents), shelf.store, shelf.library).id;
            }
            account.add(report, id);
        });
    } catch (const ForeignPackError& error) {
        throw std::runtime_error(request.file.string() + ": " + error.what());
    }
    return account.outcome();
}

} // namespace vornic
