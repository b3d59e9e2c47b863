// How the model reads and writes board files, while everything else goes on.

#include "Vornic/app/AppModel.h"
#include "Vornic/library/BoardTransfer.h"

#include <memory>
#include <utility>

namespace vornic {

namespace {

constexpr const char* cancelled = "Another file was asked for, or none any more.";
constexpr const char* busy = "Vornic is just keeping another board. Try again in a moment.";

/// What work on the other thread has come to: a problem, or whatever else it says itself.
std::optional<BoardTransferError> problemOf(const std::function<void()>& work) {
    try {
        work();
        return std::nullopt;
    } catch (const BoardTransferError& problem) {
        return problem;
    }
}

} // namespace

void AppModel::startFileWork(BackgroundWork::Work work, Done done) {
    cancelFile();
    fileDone_ = std::move(done);
    fileWork_.start(std::move(work));
    onChange();
}

void AppModel::endFileWork(const std::optional<BoardTransferError>& problem) {
    if (problem) {
        platform_.log.warning(problem->whole());
        showError(problem->what());
    }
    onChange();
    if (const Done done = std::exchange(fileDone_, {})) {
        done(problem ? problem->what() : "");
    }
}

void AppModel::cancelFile() {
    if (fileWork_.running() && !keeping_) {
        fileWork_.cancel();
        onChange();
        if (const Done done = std::exchange(fileDone_, {})) {
            done(cancelled);
        }
    }
}

/// Nothing is begun while something is being kept, which takes a moment.
bool AppModel::refusesFiles(const Done& done) const {
    if (keeping_ && done) {
        done(busy);
    }
    return keeping_;
}

void AppModel::exportBoard(const std::filesystem::path& to, Done done) {
    if (board() == nullptr || refusesFiles(done)) {
        return;
    }
    writeFiles();
    startFileWork(
        [this, board = *board(), unknown = store_->unknown(board()->id), library = library_,
         to](const std::stop_token&) {
            auto problem = problemOf([&] { vornic::exportBoard(board, *library, to, unknown); });
            return [this, problem = std::move(problem)] { endFileWork(problem); };
        },
        std::move(done));
}

void AppModel::readFile(const std::filesystem::path& from, std::function<void(OpenedBoard)> opened,
                        Done done) {
    if (refusesFiles(done)) {
        return;
    }
    startFileWork(
        [this, from, opened = std::move(opened)](const std::stop_token& stop) {
            auto read = std::make_shared<ReadBoard>();
            auto problem = problemOf([&] { *read = readBoardFile(from, stop); });
            return [this, read, problem = std::move(problem), opened] {
                if (problem) {
                    endFileWork(problem);
                } else {
                    opened(openBoard(std::move(*read), *library_));
                }
            };
        },
        std::move(done));
}

void AppModel::keep(const OpenedBoard& opened, const std::function<void(bool kept)>& ended) {
    keeping_ = true;
    startFileWork(
        [this, opened, library = library_, ended](const std::stop_token&) {
            auto problem = problemOf([&] { keepSamples(opened, *library); });
            return [this, opened, problem = std::move(problem), ended] {
                keeping_ = false;
                if (!problem) {
                    const Board board = adopted(opened, *store_);
                    if (const std::error_code error = store_->save(board, opened.unknown)) {
                        fail("Couldn't save the board: " + error.message());
                    }
                    selectBoard(board.id);
                }
                ended(!problem);
                endFileWork(problem);
            };
        },
        std::exchange(fileDone_, {}));
}

void AppModel::importBoard(const std::filesystem::path& from, Done done) {
    readFile(
        from,
        [this](const OpenedBoard& opened) {
            keep(opened, [this, opened](bool kept) {
                if (!kept) {
                    forget(opened);
                }
            });
        },
        std::move(done));
}

void AppModel::previewBoard(const std::filesystem::path& from, Done done) {
    readFile(
        from,
        [this](OpenedBoard opened) {
            dropPreview();
            preview_ = std::move(opened);
            ++previews_;
            player_->tryOut(preview_->board);
            endFileWork({});
        },
        std::move(done));
}

void AppModel::keepPreview(Done done) {
    if (!preview_) {
        return;
    }
    if (!refusesFiles(done)) {
        cancelFile();
        fileDone_ = std::move(done);
        keep(*preview_, [this](bool kept) {
            if (kept) {
                // What it brought is the user's now.
                preview_->samples.clear();
                dropPreview();
            }
        });
    }
}

void AppModel::dropPreview() {
    if (preview_ && !keeping_) {
        player_->endTrial();
        if (board() == nullptr) {
            // There is nothing to go back to.
            played_ = {};
            publish();
        }
        forget(*preview_);
        preview_.reset();
        ++previews_;
        onChange();
    }
}

void AppModel::forget(const OpenedBoard& opened) {
    for (const std::string& id : opened.samples) {
        library_->removeUser(id);
    }
}

} // namespace vornic
