#include "Vornic/app/BoardFiles.h"

#include "Vornic/app/FileRead.h"

#include <atomic>
#include <utility>

namespace vornic {

namespace {

constexpr const char* cancelled = "Another file was asked for, or none any more.";
constexpr const char* busy = "Vornic is just keeping another board. Try again in a moment.";

std::string nameOf(const std::filesystem::path& file) {
    const std::filesystem::path plain = file.lexically_normal();
    return (plain.has_filename() ? plain : plain.parent_path()).filename().string();
}

} // namespace

BoardFiles::BoardFiles(Services services, Events events)
    : services_(std::move(services)), events_(std::move(events)), background_(services_.scheduler) {
}

void BoardFiles::start(Work what, Job job, Done done) {
    cancel();
    work_ = std::move(what);
    done_ = std::move(done);
    background_.start([job = std::move(job), progress = progress()](const std::stop_token& stop) {
        return job(stop, progress);
    });
    events_.changed();
}

/// Tells the main thread, once for each hundredth.
BoardFiles::Progress BoardFiles::progress() {
    workLifetime_.renew();
    return [&scheduler = services_.scheduler, told = std::make_shared<std::atomic<int>>(-1),
            tell = workLifetime_.guard([this](double share) {
                if (work_) {
                    work_->share = share;
                    events_.changed();
                }
            })](double share) {
        const auto hundredth = static_cast<int>(share * 100);
        if (told->exchange(hundredth) != hundredth) {
            scheduler.post([tell, share] { tell(share); });
        }
    };
}

void BoardFiles::end(const Problem& problem) {
    work_.reset();
    if (problem) {
        events_.failed(problem->what(), problem->whole());
    }
    events_.changed();
    if (const Done done = std::exchange(done_, {})) {
        done(problem ? problem->what() : "");
    }
}

void BoardFiles::cancel() {
    if (!background_.running() || keeping_) {
        return;
    }
    background_.cancel();
    work_.reset();
    endAdding();
    events_.changed();
    if (const Done done = std::exchange(done_, {})) {
        done(cancelled);
    }
}

/// Nothing is begun while something is being kept, which takes a moment.
bool BoardFiles::refuses(const Done& done) const {
    if (keeping_ && done) {
        done(busy);
    }
    return keeping_;
}

void BoardFiles::write(const Board& board, const std::filesystem::path& to, Done done) {
    if (refuses(done)) {
        return;
    }
    start(
        {Work::Kind::writing, nameOf(to), std::nullopt},
        [this, board, unknown = services_.store.unknown(board.id), library = services_.library,
         to](const std::stop_token&, const Progress&) {
            auto problem = problemOf([&] { exportBoard(board, *library, to, unknown); });
            return [this, problem = std::move(problem)] { end(problem); };
        },
        std::move(done));
}

void BoardFiles::import(const std::filesystem::path& from, Done done) {
    if (refuses(done)) {
        return;
    }
    start(
        {Work::Kind::reading, nameOf(from), std::nullopt},
        [this, from](const std::stop_token& stop, const Progress&) {
            auto read = std::make_shared<ReadBoard>();
            auto problem = problemOf([&] { *read = readBoardFile(from, stop); });
            return [this, read, problem = std::move(problem), from] {
                if (problem) {
                    end(problem);
                    return;
                }
                const OpenedBoard opened = openBoard(std::move(*read), *services_.library);
                save(opened, {Work::Kind::adding, nameOf(from), std::nullopt},
                     [this, opened](const Board* kept, const Problem& failed) {
                         if (kept == nullptr) {
                             forget(opened);
                         } else {
                             events_.kept(*kept);
                         }
                         end(failed);
                     });
            };
        },
        std::move(done));
}

void BoardFiles::open(const std::vector<std::filesystem::path>& from, Done done) {
    if (from.empty() || refuses(done)) {
        return;
    }
    const std::string name = from.size() == 1 ? nameOf(from[0]) : nameOf(from[0].parent_path());
    start(
        {Work::Kind::reading, name, std::nullopt},
        [this, from, decoder = services_.decoder](const std::stop_token& stop,
                                                  const Progress& progress) {
            auto read = std::make_shared<FileRead>();
            auto problem =
                problemOf([&] { *read = readFiles(from, {decoder, {}, progress, stop}); });
            return [this, read, problem = std::move(problem)] {
                if (problem) {
                    end(problem);
                    return;
                }
                hide();
                list(read->packs);
                if (read->board) {
                    show(openBoard(std::move(*read->board), *services_.library),
                         std::move(read->report));
                }
                end({});
            };
        },
        std::move(done));
}

void BoardFiles::show(OpenedBoard opened, std::optional<PackReport> report) {
    const std::optional<Preview> before =
        std::exchange(preview_, Preview{.opened = std::move(opened), .report = std::move(report)});
    shownPack_.reset();
    ++previews_;
    events_.tried(&preview_->opened.board);
    if (before) {
        forget(before->opened);
    }
}

void BoardFiles::save(const OpenedBoard& opened, Work what,
                      const std::function<void(const Board*, const Problem&)>& ended) {
    Done done = std::exchange(done_, {});
    start(
        std::move(what),
        [this, opened, library = services_.library, ended](const std::stop_token&,
                                                           const Progress&) {
            auto problem = problemOf([&] { keepSamples(opened, *library); });
            return [this, opened, problem = std::move(problem), ended] {
                keeping_ = false;
                if (problem) {
                    ended(nullptr, problem);
                    return;
                }
                const Board board = adopted(opened, services_.store);
                if (const std::error_code error = services_.store.save(board, opened.unknown)) {
                    const std::string text = "Couldn't save the board: " + error.message();
                    events_.failed(text, text);
                }
                ended(&board, {});
            };
        },
        std::move(done));
    keeping_ = true;
}

void BoardFiles::keep(Done done) {
    if (!preview_ || refuses(done)) {
        return;
    }
    cancel();
    done_ = std::move(done);
    save(preview_->opened, {Work::Kind::adding, preview_->opened.board.name, std::nullopt},
         [this](const Board* kept, const Problem& problem) {
             if (kept != nullptr) {
                 const Board board = *kept;
                 // What it brought is the user's now.
                 preview_->opened.samples.clear();
                 if (shownPack_) {
                     packs_[*shownPack_].added = true;
                 }
                 events_.kept(board);
                 if (packs_.empty()) {
                     drop();
                 } else {
                     hide();
                 }
             }
             end(problem);
         });
}

/// Keys play the user's board again; a list stays.
void BoardFiles::hide() {
    if (preview_) {
        events_.tried(nullptr);
        forget(preview_->opened);
        preview_.reset();
        shownPack_.reset();
        ++previews_;
    }
}

void BoardFiles::drop() {
    if (keeping_ && adding_) {
        // The one that is being kept is the last, and then nothing is looked at any more.
        adding_->places.clear();
        adding_->next = 0;
    }
    if (keeping_ || (!preview_ && packs_.empty())) {
        return;
    }
    if (!packs_.empty()) {
        // What is being read is one of them.
        cancel();
        list(nullptr);
    }
    hide();
    events_.changed();
}

void BoardFiles::forget(const OpenedBoard& opened) {
    for (const std::string& id : opened.samples) {
        services_.library->removeUser(id);
    }
}

} // namespace vornic
