#include "Vornic/app/AppModel.h"

#include "Vornic/library/BoardChoice.h"
#include "VornicCore/realtime/Forget.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace vornic {

using namespace std::chrono_literals;

AppModel::AppModel(Platform platform, Options options)
    : platform_(std::move(platform)), options_(std::move(options)),
      watches_{{Silence::microphone, &platform_.microphone},
               {Silence::password, &platform_.secureInput}} {
    watches_.insert(watches_.end(), platform_.quiet.begin(), platform_.quiet.end());
}

AppModel::~AppModel() {
    if (files_) {
        writeFiles();
        if (const std::string problem = files_->finish(); !problem.empty()) {
            platform_.log.warning(problem);
        }
    }
    for (const WatchedReason& watched : watches_) {
        watched.watch->onChange = [] {};
    }
}

void AppModel::start() {
    loadFiles();
    chooseFirstBoard();
    keys_ = std::make_unique<LiveKeys>(platform_.tap, platform_.hotKey, platform_.clock,
                                       platform_.scheduler);
    sound_ = std::make_unique<SoundEngine>(
        platform_.output, platform_.clock,
        [this](std::function<void()> work) { keys_->post(std::move(work)); });
    player_ = std::make_unique<BoardPlayer>(platform_.clock, platform_.scheduler, library_,
                                            options_.builder);
    makeRecorder();
    connect();
    refreshState();
    applySettings(nullptr);
    boardChanged(BoardEditor::Change::selected);
}

void AppModel::loadFiles() {
    files_ = std::make_unique<FileWriter>(platform_.scheduler,
                                          [this](const std::string& problem) { fail(problem); });
    settingsFile_ = std::make_unique<SettingsFile>(options_.settingsFile);
    settings_ = settingsFile_->settings();
    firstStart_ = settingsFile_->fresh();
    settings_.volume = options_.volume.value_or(settings_.volume);
    settings_.outputKind = options_.outputKind.value_or(settings_.outputKind);
    options_.stage(settings_.stage);
    packs_ = SoundPack::all(options_.packs);
    library_ = std::make_shared<SampleLibrary>(
        packs_, options_.samples, [this](const std::string& problem) {
            platform_.scheduler.post([&log = platform_.log, problem] { log.warning(problem); });
        });
    store_ = std::make_unique<BoardStore>(
        packs_, options_.boards, [this](FileChange change) { return follow(std::move(change)); });
    makeBoardFiles();
    for (const auto& problems : {settingsFile_->problems(), store_->problems()}) {
        for (const std::string& problem : problems) {
            fail(problem);
        }
    }
}

void AppModel::chooseFirstBoard() {
    editor_ = std::make_unique<BoardEditor>(*store_, platform_.clock, settings_.tweaks);
    editor_->onError = [this](const std::string& message) { fail(message); };
    const std::string wanted = options_.board.value_or(settings_.board);
    if (!editor_->select(wanted)) {
        try {
            // A file, the default board, or the first one there is.
            Board board = chooseBoard(options_.board, *store_, *library_);
            if (options_.board) {
                editor_->selectGuest(std::move(board));
            } else {
                editor_->select(board.id);
            }
        } catch (const std::runtime_error& problem) {
            platform_.log.warning(problem.what());
            const std::vector<Board> all = store_->all();
            if (!all.empty()) {
                editor_->select(all.front().id);
            }
        }
    }
    editor_->onChange = [this](BoardEditor::Change change) {
        chosenByUser_ = true;
        boardChanged(change);
    };
}

void AppModel::connect() {
    sound_->onOutputChange = [this] { refreshState(); };
    player_->onPlay = [this](const PlayedBoard& played) {
        const bool otherSounds = played.bank != played_.bank;
        played_ = played;
        publish();
        if (otherSounds) {
            ++renderRevision_;
            onChange();
        }
    };
    player_->onMessage = [this](const std::string& line) { platform_.log.warning(line); };
    keys_->onKeyDown = [this](std::int64_t keyCode) {
        activity_.keyDown(keyCode, platform_.clock.seconds());
        onActivity();
    };
    keys_->onKeyUp = [this](std::int64_t keyCode) {
        activity_.keyUp(keyCode);
        onActivity();
    };
    keys_->onHotKey = [this] { setSoundsOn(!soundsOn()); };
    keys_->onTapState = [this](TapState state, const std::string& source) {
        setTapState(state, source);
    };
    keys_->onProblem = [this](const std::string& problem) { platform_.log.warning(problem); };
    keys_->start(*sound_);
    for (const WatchedReason& watched : watches_) {
        watched.watch->onChange = [this] { refreshQuiet(); };
        watched.watch->start();
    }
    timers_.push_back(platform_.scheduler.every(1000ms, [this] {
        sound_->tick();
        refreshState();
    }));
    timers_.push_back(platform_.scheduler.every(200ms, [this] {
        if (activity_.refresh(platform_.clock.seconds())) {
            onActivity();
            // Keys came by here to be shown.
            forgetStack();
        }
    }));
}

// Boards.

bool AppModel::selectBoard(const std::string& id) {
    return editor_->select(id);
}

bool AppModel::selectNeighbour(int places) {
    if (boards_.empty()) {
        return false;
    }
    const auto count = static_cast<std::ptrdiff_t>(boards_.size());
    std::ptrdiff_t at = 0;
    if (const Board* const current = board()) {
        const auto found = std::ranges::find(boards_, current->id, &Board::id);
        at = found == boards_.end() ? 0 : std::distance(boards_.begin(), found);
    }
    at = ((at + places) % count + count) % count;
    return selectBoard(boards_[static_cast<std::size_t>(at)].id);
}

void AppModel::boardChanged(BoardEditor::Change change) {
    boards_ = store_->all();
    ++boardRevision_;
    rememberBoard();
    if (board() != nullptr) {
        const Board heard = editor_->heardBoard();
        switch (change) {
        case BoardEditor::Change::selected:
            player_->setReference(heard);
            player_->choose(heard);
            break;
        case BoardEditor::Change::edited:
            player_->compare(false);
            player_->edit(heard, 150ms);
            break;
        case BoardEditor::Change::stepped:
            player_->compare(false);
            player_->edit(heard, 0ms);
            break;
        case BoardEditor::Change::tweaked:
            player_->compare(false);
            player_->edit(heard, 120ms);
            break;
        }
    } else {
        played_ = {};
        publish();
    }
    if (change == BoardEditor::Change::selected) {
        writeFiles();
    }
    onChange();
}

void AppModel::rememberBoard() {
    // A board that the command line asked for counts for this run, until the user does something.
    if (!chosenByUser_) {
        return;
    }
    change([this](Settings& settings) {
        settings.tweaks = editor_->allTweaks();
        if (board() != nullptr && store_->board(board()->id) != nullptr) {
            settings.board = board()->id;
        }
    });
}

void AppModel::setComparing(bool on) {
    if (player_->comparing() != on) {
        player_->compare(on);
        onChange();
    }
}

void AppModel::publish() {
    auto settings = std::make_shared<PlaySettings>();
    settings->played = played_;
    settings->stage = stage();
    settings->binaural = wantsBinaural(stage().placement, outputKind(), headphones());
    settings->silenced = silence().has_value();
    sound_->setBank(played_.bank);
    keys_->apply(std::move(settings));
}

void AppModel::fail(const std::string& message) {
    platform_.log.warning(message);
    showError(message);
}

void AppModel::showError(const std::string& message) {
    lastError_ = message;
    onChange();
}

void AppModel::dismissError() {
    if (lastError_) {
        lastError_.reset();
        onChange();
    }
}

} // namespace vornic
