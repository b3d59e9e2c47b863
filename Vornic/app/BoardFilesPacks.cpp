// Several packs that were opened together: one of them is heard, or many are taken in.

#include "Vornic/app/BoardFiles.h"
#include "Vornic/app/FileRead.h"

#include <algorithm>
#include <utility>

namespace vornic {

/// Null: there are not several any more.
void BoardFiles::list(const std::shared_ptr<FoundPacks>& found) {
    previews_ += packs_.empty() && !found ? 0U : 1U;
    found_ = found;
    packs_.clear();
    if (found) {
        for (const FoundPacks::Entry& entry : found->entries()) {
            packs_.push_back({entry});
        }
    }
}

void BoardFiles::openPack(std::size_t place, Done done) {
    if (place >= packs_.size() || refuses(done)) {
        return;
    }
    start(
        {Work::Kind::reading, packs_[place].pack.name, std::nullopt},
        [this, place, found = found_, decoder = services_.decoder](const std::stop_token& stop,
                                                                   const Progress& progress) {
            auto read = std::make_shared<FileRead>();
            auto problem =
                problemOf([&] { *read = readPack(*found, place, {decoder, {}, progress, stop}); });
            return [this, read, place, problem = std::move(problem)] {
                if (!problem) {
                    show(openBoard(std::move(*read->board), *services_.library),
                         std::move(read->report));
                    shownPack_ = place;
                }
                end(problem);
            };
        },
        std::move(done));
}

void BoardFiles::addPacks(std::vector<std::size_t> places, Done done) {
    std::erase_if(places, [this](std::size_t place) { return place >= packs_.size(); });
    if (places.empty() || refuses(done)) {
        return;
    }
    cancel();
    hide();
    done_ = std::move(done);
    adding_ = Adding{std::move(places), 0, std::nullopt};
    addNext();
}

void BoardFiles::endAdding() {
    if (adding_ && adding_->last) {
        events_.kept(*adding_->last);
    }
    adding_.reset();
}

void BoardFiles::addNext() {
    if (adding_->next == adding_->places.size()) {
        const bool dropped = adding_->places.empty();
        endAdding();
        end({});
        if (dropped) {
            drop();
        }
        return;
    }
    const auto count = static_cast<double>(adding_->places.size());
    const auto before = static_cast<double>(adding_->next);
    const std::size_t place = adding_->places[adding_->next++];
    const Work what{Work::Kind::adding, packs_[place].pack.name, before / count};
    const auto failed = [this, place](const Problem& problem) {
        packs_[place].pack.error = problem->what();
        ++previews_;
        events_.failed(problem->what(), problem->whole());
        addNext();
    };
    const auto saved = [this, place, failed](const OpenedBoard& opened, const Board* kept,
                                             const Problem& problem) {
        if (kept == nullptr) {
            forget(opened);
            failed(problem);
            return;
        }
        packs_[place].added = true;
        ++previews_;
        adding_->last = *kept;
        addNext();
    };
    const auto job = [this, place, what, before, count, found = found_, failed, saved,
                      decoder = services_.decoder](const std::stop_token& stop,
                                                   const Progress& progress) {
        auto read = std::make_shared<FileRead>();
        const auto part = [&](double share) { progress((before + share) / count); };
        auto problem =
            problemOf([&] { *read = readPack(*found, place, {decoder, {}, part, stop}); });
        return BackgroundWork::Finish(
            [this, read, what, before, count, failed, saved, problem = std::move(problem)] {
                if (problem) {
                    failed(problem);
                    return;
                }
                const OpenedBoard opened = openBoard(std::move(*read->board), *services_.library);
                save(opened, {what.kind, what.name, (before + 1) / count},
                     [opened, saved](const Board* kept, const Problem& unsaved) {
                         saved(opened, kept, unsaved);
                     });
            });
    };
    start(what, job, std::exchange(done_, {}));
}

} // namespace vornic
