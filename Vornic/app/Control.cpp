#include "Vornic/app/Control.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string_view>
#include <utility>

namespace vornic {

namespace {

std::string number(double value) {
    return nlohmann::json(value).dump();
}

std::string boardLine(const Board& board) {
    return board.id + " " + board.name;
}

std::string idsOf(const std::vector<Board>& boards) {
    std::string ids;
    for (const Board& board : boards) {
        ids += (ids.empty() ? "" : ", ") + board.id;
    }
    return ids;
}

std::optional<double> volumeFrom(const std::string& text) {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    // Written so that what is no number is refused too.
    return whole && value >= 0 && value <= 1 ? std::optional(value) : std::nullopt;
}

std::string_view tapWord(TapState state) {
    switch (state) {
    case TapState::needsPermission:
        return "needsPermission";
    case TapState::needsRelaunch:
        return "needsRelaunch";
    case TapState::listening:
        return "listening";
    }
    return "";
}

std::string_view fieldsWord(PasswordFields told) {
    switch (told) {
    case PasswordFields::unknown:
        return "unknown";
    case PasswordFields::someTell:
        return "someTell";
    case PasswordFields::allThatCanTell:
        return "allThatCanTell";
    }
    return "";
}

template <typename T>
nlohmann::json orNull(const std::optional<T>& value) {
    return value ? nlohmann::json(*value) : nlohmann::json();
}

std::string statusAsText(const AppModel& model) {
    std::string text = model.statusLine();
    text += "\nVolume " + number(model.volume());
    if (model.tapState() != TapState::listening) {
        text += "\nCan't hear your keys";
    }
    return text;
}

} // namespace

std::string statusAsJson(const AppModel& model) {
    const QuietRule* const silence = model.quietRule();
    nlohmann::json board;
    if (model.board() != nullptr) {
        board = {{"id", model.board()->id}, {"name", model.board()->name}};
    }
    const Diagnostics& measured = model.diagnostics();
    const KeyCounts counts = model.keyCounts();
    const nlohmann::json dropped{
        {"quiet", counts.dropped.quiet},         {"noSound", counts.dropped.noSound},
        {"noOutput", counts.dropped.noOutput},   {"notPlayable", counts.dropped.notPlayable},
        {"queueFull", counts.dropped.queueFull}, {"noVoice", counts.dropped.noVoice},
        {"stalled", counts.dropped.stalled},     {"streamEnded", counts.dropped.streamEnded}};
    const nlohmann::json status{
        {"soundsOn", model.soundsOn()},
        {"silence", silence != nullptr ? nlohmann::json(silence->word) : nlohmann::json()},
        {"status", model.statusLine()},
        {"board", board},
        {"volume", model.volume()},
        {"outputKind", rawString(model.outputKind())},
        {"bluetooth", model.onBluetooth()},
        {"headphones", model.headphones()},
        {"passwordFields", fieldsWord(model.passwordFields())},
        {"keys", tapWord(model.tapState())},
        {"keyToSoundMillis", measured.keyToAppMillis},
        {"keyToSoundMaxMillis", measured.keyToAppMaxMillis},
        {"keysMeasured", measured.keys},
        {"pressed", counts.pressed},
        {"released", counts.released},
        {"auditions", counts.auditions},
        {"started", counts.started},
        {"stolen", counts.stolen},
        {"dropped", dropped},
        {"deviceMillis", orNull(measured.deviceMillis)},
        {"deviceBuffer", orNull(measured.deviceBuffer)},
        {"engineRunning", measured.engineRunning},
        {"realTimeLost", measured.realTimeLost},
        {"lastRenderMillis", orNull(measured.lastRenderMillis)}};
    return status.dump(2, ' ', false, nlohmann::json::error_handler_t::replace);
}

Control::Control(AppModel& model, Scheduler& scheduler, std::function<void()> activate)
    : model_(model), scheduler_(scheduler), activate_(std::move(activate)) {}

void Control::run(const Words& words, const RunningCopy::Reply& reply) {
    const bool isBoard = words.size() == 2 && words[0] == "board";
    if (!isBoard) {
        settle();
    }
    if (words.size() == 2 && words[0] == "open") {
        open(words[1], reply);
        return;
    }
    const ControlAnswer said = answer(words);
    const bool changes = isBoard || (words.size() == 2 && words[0] == "volume") ||
                         words == Words{"on"} || words == Words{"off"} || words == Words{"toggle"};
    if (said.status != 0 || !changes) {
        reply(said);
        return;
    }
    if (waiting_.empty()) {
        // Behind what has arrived already, so that one turn answers all of it.
        scheduler_.post(lifetime_.guard([this] { answerWhenWritten(); }));
    }
    waiting_.push_back({said, reply});
}

void Control::settle() {
    if (const auto chosen = std::exchange(chosen_, std::nullopt)) {
        model_.selectBoard(*chosen);
    }
}

void Control::answerWhenWritten() {
    settle();
    model_.whenWritten([waiting = std::exchange(waiting_, {})](const std::string& problem) {
        for (const Waiting& each : waiting) {
            each.reply(problem.empty() ? each.answer : ControlAnswer{1, problem});
        }
    });
}

ControlAnswer Control::answer(const Words& words) {
    const std::string command = words.empty() ? "" : words[0];
    if (words.size() == 1 && (command == "on" || command == "off")) {
        return switchSounds(command == "on");
    }
    if (words.size() == 1 && command == "toggle") {
        return switchSounds(!model_.soundsOn());
    }
    if (words.size() <= 2 && command == "board") {
        return chooseBoard(words);
    }
    if (words.size() <= 2 && command == "volume") {
        return setVolume(words);
    }
    if (words == Words{"status"}) {
        return {0, statusAsText(model_)};
    }
    if (words == Words{"status", "--json"}) {
        return {0, statusAsJson(model_)};
    }
    if (words == Words{"activate"}) {
        activate_();
        return {};
    }
    return {1, "The running Vornic does not know that command."};
}

ControlAnswer Control::switchSounds(bool on) {
    model_.setSoundsOn(on);
    return {0, model_.statusLine()};
}

const Board* Control::wanted(const std::string& word) const {
    const std::vector<Board>& boards = model_.boards();
    if (word != "next" && word != "previous") {
        const auto found = std::ranges::find(boards, word, &Board::id);
        return found == boards.end() ? nullptr : &*found;
    }
    if (boards.empty()) {
        return nullptr;
    }
    const std::string current =
        chosen_.value_or(model_.board() != nullptr ? model_.board()->id : "");
    const auto found = std::ranges::find(boards, current, &Board::id);
    const auto at = found == boards.end()
                        ? std::size_t{0}
                        : static_cast<std::size_t>(std::distance(boards.begin(), found));
    return &boards[(at + (word == "next" ? 1 : boards.size() - 1)) % boards.size()];
}

ControlAnswer Control::chooseBoard(const Words& words) {
    if (words.size() == 2) {
        const Board* const found = wanted(words[1]);
        if (found == nullptr) {
            return {1, "There is no board \"" + words[1] + "\". Boards: " + idsOf(model_.boards()) +
                           "."};
        }
        chosen_ = found->id;
        return {0, boardLine(*found)};
    }
    if (model_.board() == nullptr) {
        return {1, "There is no board."};
    }
    return {0, boardLine(*model_.board())};
}

ControlAnswer Control::setVolume(const Words& words) {
    if (words.size() == 2) {
        const std::optional<double> volume = volumeFrom(words[1]);
        if (!volume) {
            return {1, "The volume is a number from 0 to 1."};
        }
        model_.setVolume(*volume);
    }
    return {0, number(model_.volume())};
}

void Control::open(const std::string& file, const RunningCopy::Reply& reply) {
    model_.files().open({file}, lifetime_.guard([this, reply](const std::string& problem) {
        activate_();
        reply(problem.empty() ? ControlAnswer{} : ControlAnswer{1, problem});
    }));
}

} // namespace vornic
