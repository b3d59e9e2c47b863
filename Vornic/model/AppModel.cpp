#include "Vornic/model/AppModel.h"

#include "Vornic/keystroke/DeskReflection.h"
#include "Vornic/library/BoardChoice.h"
#include "VornicCore/recordings/BuiltInBoards.h"
#include "VornicCore/recordings/SoundPack.h"

#include <algorithm>
#include <random>
#include <stdexcept>
#include <utility>

namespace vornic {

using namespace std::chrono_literals;

namespace {

std::uint64_t systemSeed() {
    std::random_device device;
    return (static_cast<std::uint64_t>(device()) << 32) | device();
}

} // namespace

AppModel::AppModel(Platform platform, Options options)
    : platform_(platform), options_(std::move(options)), stage_(options_.stage) {}

AppModel::~AppModel() {
    timers_.clear();
    stopKeys();
}

void AppModel::start() {
    keyThread_ = std::make_unique<KeyThread>();
    sound_ = std::make_unique<SoundEngine>(
        platform_.output, platform_.clock,
        [this](std::function<void()> work) { keyThread_->post(std::move(work)); });
    sound_->onOutputChange = [this] { refreshState(); };
    sound_->setVolume(options_.volume);
    renderer_ = std::make_unique<RenderService>(platform_.clock, platform_.scheduler);
    driver_ = std::make_unique<KeystrokeDriver>(
        *sound_, platform_.clock, systemSeed(),
        [this](const std::string& problem) { platform_.log.warning(problem); });
    loadBoards();
    setStage(stage_);
    startKeys();
    timers_.push_back(platform_.scheduler.every(1000ms, [this] {
        sound_->tick();
        refreshState();
    }));
    timers_.push_back(
        platform_.scheduler.every(200ms, [this] { activity_.refresh(platform_.clock.seconds()); }));
    refreshState();
}

void AppModel::loadBoards() {
    const auto packs = SoundPack::all(options_.packs);
    library_ = std::make_shared<const SampleLibrary>(packs);
    boards_ = BuiltInBoards::make(packs);
    try {
        makeCurrent(chooseBoard(options_.board, packs));
    } catch (const std::runtime_error& problem) {
        platform_.log.warning(problem.what());
        if (!boards_.empty()) {
            makeCurrent(boards_.front());
        }
    }
}

bool AppModel::selectBoard(const std::string& id) {
    const auto found = std::ranges::find(boards_, id, &Board::id);
    if (found == boards_.end()) {
        return false;
    }
    makeCurrent(*found);
    return true;
}

void AppModel::makeCurrent(const Board& board) {
    board_ = std::make_shared<const Board>(board);
    render(0ms);
}

void AppModel::render(std::chrono::milliseconds delay) {
    renderer_->render(*board_, library_, delay,
                      [this, board = board_](const RenderedBoard& rendered, double seconds) {
                          play(board, rendered, seconds);
                      });
}

void AppModel::play(std::shared_ptr<const Board> board, const RenderedBoard& rendered,
                    double seconds) {
    for (const std::string& message : rendered.messages) {
        platform_.log.warning(message);
    }
    // Board and bank change together: a key of the one finds no sound in the other.
    playing_ = std::move(board);
    lastRenderSeconds_ = seconds;
    sound_->setBank(rendered.bank);
    publish();
}

void AppModel::setSoundsOn(bool on) {
    if (soundsOn_ == on) {
        return;
    }
    soundsOn_ = on;
    platform_.log.info(on ? "Sounds are on" : "Off · keys are silent");
    publish();
}

void AppModel::setStage(const StageSpec& stage) {
    stage_ = stage;
    sound_->setRoom(stage.room);
    const DeskReflection reflection = deskReflection(stage);
    sound_->setReflection(reflection.level, reflection.damp);
    publish();
}

void AppModel::setVolume(double volume) {
    sound_->setVolume(volume);
}

void AppModel::publish() {
    auto settings = std::make_shared<PlaySettings>();
    settings->board = playing_;
    settings->stage = stage_;
    settings->binaural = wantsBinaural(stage_.placement, options_.outputKind, headphones_);
    settings->silenced = !soundsOn_;
    keyThread_->post([this, settings = std::move(settings)] { driver_->apply(settings); });
}

void AppModel::postToMain(std::function<void()> work) {
    platform_.scheduler.post([alive = std::weak_ptr<int>(alive_), work = std::move(work)] {
        if (!alive.expired()) {
            work();
        }
    });
}

void AppModel::startKeys() {
    keyThread_->post([this, &keys = *keyThread_] {
        platform_.tap.onKey = [this](std::int64_t keyCode, bool down, std::uint64_t nanos) {
            driver_->key(keyCode, down, nanos);
            if (down) {
                postToMain(
                    [this, keyCode] { activity_.keyDown(keyCode, platform_.clock.seconds()); });
            }
        };
        platform_.hotKey.onPress = [this] { postToMain([this] { setSoundsOn(!soundsOn_); }); };
        keys.watch(platform_.tap);
        keys.watch(platform_.hotKey);
        if (!platform_.hotKey.registered()) {
            postToMain([this] {
                platform_.log.warning("Another program holds Alt+Super+K, so that shortcut does "
                                      "not switch the sounds.");
            });
        }
    });
}

void AppModel::stopKeys() {
    if (!keyThread_) {
        return;
    }
    // By reference: the pointer is empty already while the thread runs its last work.
    keyThread_->post([this, &keys = *keyThread_] {
        keys.unwatch(platform_.tap);
        keys.unwatch(platform_.hotKey);
        platform_.tap.stop();
        platform_.tap.onKey = [](std::int64_t, bool, std::uint64_t) {};
        platform_.hotKey.onPress = [] {};
    });
    keyThread_.reset();
}

void AppModel::refreshTap() {
    const TapState state = platform_.tap.refresh();
    postToMain([this, state, source = platform_.tap.description()] { setTapState(state, source); });
}

void AppModel::setTapState(TapState state, const std::string& source) {
    keySource_ = source;
    tapState_ = state;
    announce();
}

std::string AppModel::voiceReport() const {
    const SamplerCore& core = sound_->core();
    return "Voices started: " + std::to_string(core.keysStarted()) +
           ", stolen: " + std::to_string(core.voicesStolen()) +
           ", dropped: " + std::to_string(core.eventsDropped());
}

void AppModel::refreshState() {
    keyThread_->post([this] { refreshTap(); });
    const OutputDeviceFacts device = platform_.output.device();
    onBluetooth_ = device.isBluetooth;
    if (device.isHeadphones != headphones_) {
        headphones_ = device.isHeadphones;
        publish();
    }
    announce();
}

void AppModel::announce() {
    std::string line;
    const std::string problem = platform_.output.problem();
    if (tapState_ != TapState::listening) {
        line = "Can't hear your keys";
    } else if (!problem.empty()) {
        line = problem;
    } else {
        line = "Vornic is listening: board " + (board_ ? board_->name : std::string("none")) +
               ", output " + platform_.output.device().name + ", keys from " + keySource_;
    }
    // The tap answers a moment after the start: until then there is nothing to say.
    if (line == announced_ || keySource_.empty()) {
        return;
    }
    announced_ = line;
    if (tapState_ == TapState::listening && problem.empty()) {
        platform_.log.info(line);
    } else {
        platform_.log.warning(line);
    }
}

} // namespace vornic
