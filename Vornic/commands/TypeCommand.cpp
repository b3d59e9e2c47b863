#include "Vornic/commands/TypeCommand.h"

#include "Vornic/commands/BoardCommands.h"
#include "Vornic/commands/KeyFile.h"
#include "Vornic/commands/TypedText.h"
#include "Vornic/library/BoardChoice.h"
#include "Vornic/sound/RenderService.h"
#include "VornicCore/base/ReadFile.h"

#include <nlohmann/json.hpp>

#include <array>
#include <charconv>
#include <memory>
#include <stdexcept>
#include <utility>

namespace vornic {

namespace {

/// Far more than anybody types in the hour that a key file may last.
constexpr std::uintmax_t largestKeyFile = 64u << 20u;

std::vector<KeyEvent> requestedEvents(const TypeRequest& request,
                                      std::vector<std::string>& remarks) {
    if (request.keys) {
        try {
            return parseKeyFile(readTextFile(*request.keys, largestKeyFile));
        } catch (const KeyFileError& error) {
            throw std::runtime_error(request.keys->string() + ", " + error.what());
        }
    }
    TypedText typed = typeText(request.text.value_or(""), request.seed);
    if (typed.untypable > 0) {
        remarks.push_back("Left out " + std::to_string(typed.untypable) +
                          " characters that a US keyboard has no key for.");
    }
    return std::move(typed.events);
}

/// The double that prints as the shortest text which reads back as `value`.
double shortestDouble(float value) {
    std::array<char, 32> text{};
    const auto written = std::to_chars(text.data(), text.data() + text.size(), value);
    double result = 0.0;
    std::from_chars(text.data(), written.ptr, result);
    return result;
}

} // namespace

TypeOutcome typeIntoFile(const TypeRequest& request) {
    std::vector<std::string> remarks;
    const auto events = requestedEvents(request, remarks);
    TypeOutcome outcome = playIntoFile(request, events);
    outcome.remarks.insert(outcome.remarks.begin(), remarks.begin(), remarks.end());
    return outcome;
}

TypeOutcome playIntoFile(const TypeRequest& request, const std::vector<KeyEvent>& events) {
    BoardShelf shelf(request.packs);

    auto settings = std::make_shared<PlaySettings>();
    const auto board =
        std::make_shared<const Board>(chooseBoard(request.board, shelf.store, shelf.library));
    settings->stage = request.stage;
    settings->binaural = wantsBinaural(request.stage.placement, request.outputKind, false);
    RenderedBoard rendered = RenderService::build(*board, shelf.library);
    settings->played = {.board = board, .rendered = board, .bank = rendered.bank};

    TypeOutcome outcome;
    outcome.remarks = std::move(rendered.messages);
    if (rendered.bank->pools().empty()) {
        outcome.remarks.push_back("None of this board's recordings is there, so it is silent.");
    }
    FileOutput output(request.out);
    const OfflinePlayer player({request.seed, request.raw, request.volume});
    outcome.report =
        player.play(events, std::move(settings), output,
                    [&outcome](const std::string& problem) { outcome.remarks.push_back(problem); });
    return outcome;
}

std::string reportAsJson(const OfflineReport& report) {
    nlohmann::ordered_json json;
    json["keys"] = report.keys;
    json["started"] = report.started;
    json["dropped"] = report.dropped;
    json["stolen"] = report.stolen;
    json["peak"] = shortestDouble(report.peak);
    json["frames"] = report.frames;
    return json.dump();
}

} // namespace vornic
