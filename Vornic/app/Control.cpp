#include "Vornic/app/Control.h"

#include <nlohmann/json.hpp>

#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>

namespace vornic {

namespace {

using Words = RunningCopy::Words;

std::string number(double value) {
    return nlohmann::json(value).dump();
}

std::string boardLine(const Board& board) {
    return board.id + " " + board.name;
}

ControlAnswer switchSounds(AppModel& model, bool on) {
    model.setSoundsOn(on);
    return {0, model.statusLine()};
}

std::string idsOf(const std::vector<Board>& boards) {
    std::string ids;
    for (const Board& board : boards) {
        ids += (ids.empty() ? "" : ", ") + board.id;
    }
    return ids;
}

ControlAnswer chooseBoard(AppModel& model, const Words& words) {
    if (words.size() == 2) {
        const std::string& which = words[1];
        const bool found = which == "next"       ? model.selectNeighbour(1)
                           : which == "previous" ? model.selectNeighbour(-1)
                                                 : model.selectBoard(which);
        if (!found) {
            return {1,
                    "There is no board \"" + which + "\". Boards: " + idsOf(model.boards()) + "."};
        }
    }
    if (model.board() == nullptr) {
        return {1, "There is no board."};
    }
    return {0, boardLine(*model.board())};
}

std::optional<double> volumeFrom(const std::string& text) {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    // Written so that what is no number is refused too.
    return whole && value >= 0 && value <= 1 ? std::optional(value) : std::nullopt;
}

ControlAnswer setVolume(AppModel& model, const Words& words) {
    if (words.size() == 2) {
        const std::optional<double> volume = volumeFrom(words[1]);
        if (!volume) {
            return {1, "The volume is a number from 0 to 1."};
        }
        model.setVolume(*volume);
    }
    return {0, number(model.volume())};
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
        {"lastRenderMillis", orNull(measured.lastRenderMillis)}};
    return status.dump(2, ' ', false, nlohmann::json::error_handler_t::replace);
}

ControlAnswer control(AppModel& model, const Words& words, const std::function<void()>& activate) {
    const std::string command = words.empty() ? "" : words[0];
    if (words.size() == 1 && (command == "on" || command == "off")) {
        return switchSounds(model, command == "on");
    }
    if (words.size() == 1 && command == "toggle") {
        return switchSounds(model, !model.soundsOn());
    }
    if (words.size() <= 2 && command == "board") {
        return chooseBoard(model, words);
    }
    if (words.size() <= 2 && command == "volume") {
        return setVolume(model, words);
    }
    if (words == Words{"status"}) {
        return {0, statusAsText(model)};
    }
    if (words == Words{"status", "--json"}) {
        return {0, statusAsJson(model)};
    }
    if (words == Words{"activate"}) {
        activate();
        return {};
    }
    if (words.size() == 2 && command == "open") {
        const bool opened = model.previewBoard(words[1]);
        activate();
        return opened ? ControlAnswer{} : ControlAnswer{1, model.lastError().value_or("")};
    }
    return {1, "The running Vornic does not know that command."};
}

} // namespace vornic
