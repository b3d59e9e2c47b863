#pragma once

#include "Vornic/library/BackgroundWork.h"
#include "Vornic/library/BoardStore.h"
#include "Vornic/library/BoardTransfer.h"
#include "Vornic/library/SampleLibrary.h"
#include "Vornic/ports/Scheduler.h"
#include "Vornic/recording/ReadPacks.h"
#include "VornicCore/base/Lifetime.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vornic {

/// Boards on their way in and out: board files and the sound packs of other programs, one at a
/// time, on a thread of their own. What goes wrong goes to `Events::failed` and to `done`, which
/// otherwise gets an empty text. The model owns one. Thread: main.
class BoardFiles {
  public:
    using Done = std::function<void(const std::string& problem)>;

    /// What it works with; all of it outlives this.
    struct Services {
        Scheduler& scheduler;
        std::shared_ptr<SampleLibrary> library;
        BoardStore& store;
        /// As in ReadOptions.
        std::filesystem::path decoder;
    };
    /// Whom it tells.
    struct Events {
        /// Something that a view shows has changed.
        std::function<void()> changed;
        /// What to tell the user, and with its detail for the log.
        std::function<void(const std::string& shown, const std::string& logged)> failed;
        /// Keys are to play this board, which nobody has kept; null: the user's own again.
        std::function<void(const Board*)> tried;
        /// This board is one of the user's now, and to be the current one.
        std::function<void(const Board&)> kept;
    };
    /// What is being read, written or kept.
    struct Work {
        enum class Kind { reading, writing, adding };

        Kind kind = Kind::reading;
        /// Of the file or pack.
        std::string name;
        /// How much of it is done, 0 to 1; absent where nobody knows.
        std::optional<double> share;
    };
    /// A board that is looked at and heard before it is kept.
    struct Preview {
        OpenedBoard opened;
        /// Of a pack of another program.
        std::optional<PackReport> report;
    };
    /// One of several packs that were opened together.
    struct Listed {
        FoundPacks::Entry pack;
        bool added = false;
    };

    BoardFiles(Services services, Events events);
    BoardFiles(const BoardFiles&) = delete;
    BoardFiles& operator=(const BoardFiles&) = delete;
    ~BoardFiles() = default;

    /// What is under way; absent most of the time.
    const std::optional<Work>& work() const { return work_; }
    /// Ends it, as a further request does. What is being kept is kept; of several packs those that
    /// have been are.
    void cancel();

    /// Writes a board and the user's samples in it into a board file.
    void write(const Board& board, const std::filesystem::path& to, Done done = {});
    /// Makes the board of a board file one of the user's, and current.
    void import(const std::filesystem::path& from, Done done = {});

    /// Looks at the board of a board file, or of a pack: once it is read keys play it, while
    /// nothing of it is kept, until `keep` or `drop`. Several packs are listed.
    void open(const std::vector<std::filesystem::path>& from, Done done = {});
    /// What is looked at; null when there is nothing.
    const Preview* preview() const { return preview_ ? &*preview_ : nullptr; }
    /// Counts the changes from one such board to another, or to none, and those of the list.
    std::size_t previews() const { return previews_; }
    /// Makes the board that is looked at, as it was opened, one of the user's, and current.
    void keep(Done done = {});
    /// Looks at nothing any more. Nothing while it is being kept.
    void drop();

    /// Several packs that were opened together; empty where it was one.
    const std::vector<Listed>& packs() const { return packs_; }
    /// The one of them that is looked at, if any.
    std::optional<std::size_t> shownPack() const { return shownPack_; }
    /// Looks at one of them in place of another.
    void openPack(std::size_t place, Done done = {});
    /// Makes these of them the user's, one after the other; the last one is current then. One that
    /// cannot be read is told of, and the others follow.
    void addPacks(std::vector<std::size_t> places, Done done = {});

  private:
    using Progress = std::function<void(double)>;
    using Job = std::function<BackgroundWork::Finish(const std::stop_token&, const Progress&)>;
    using Problem = std::optional<BoardTransferError>;

    /// Packs on their way to the user's boards.
    struct Adding {
        std::vector<std::size_t> places;
        std::size_t next = 0;
        std::optional<Board> last;
    };

    void start(Work what, Job job, Done done);
    void end(const Problem& problem);
    void endAdding();
    bool refuses(const Done& done) const;
    Progress progress();
    void show(OpenedBoard opened, std::optional<PackReport> report);
    void list(const std::shared_ptr<FoundPacks>& found);
    void save(const OpenedBoard& opened, Work what,
              const std::function<void(const Board*, const Problem&)>& ended);
    void addNext();
    void forget(const OpenedBoard& opened);
    void hide();

    Services services_;
    Events events_;
    std::optional<Work> work_;
    Lifetime workLifetime_; // until the work is another one
    Done done_;
    bool keeping_ = false; // what is running is keeping
    std::optional<Adding> adding_;
    std::optional<Preview> preview_;
    std::size_t previews_ = 0;
    std::shared_ptr<FoundPacks> found_;
    std::vector<Listed> packs_;
    std::optional<std::size_t> shownPack_;
    BackgroundWork background_;
};

} // namespace vornic
