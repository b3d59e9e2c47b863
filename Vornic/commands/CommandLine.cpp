#include "Vornic/commands/CommandLine.h"

#include "Vornic/commands/AutostartCommandLine.h"
#include "Vornic/commands/BoardCommandLine.h"
#include "Vornic/commands/ControlCommandLine.h"
#include "VornicCore/board/StageSpec.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>

namespace vornic {

namespace {

const std::map<std::string, Placement> placements{{"desk", Placement::desk},
                                                  {"close", Placement::close}};
const std::map<std::string, OutputKind> outputKinds{{"auto", OutputKind::automatic},
                                                    {"headphones", OutputKind::headphones},
                                                    {"speakers", OutputKind::speakers}};
const std::map<std::string, Room> rooms{
    {"dry", Room::dry}, {"desk", Room::desk}, {"studio", Room::studio}, {"wood", Room::wood}};

/// An option that takes one of the names in `choices`.
template <typename Choice>
void addChoice(CLI::App& command, const std::string& name, std::optional<Choice>& target,
               const std::map<std::string, Choice>& choices, const std::string& help) {
    command
        .add_option_function<std::string>(
            name, [&target, &choices](const std::string& word) { target = choices.at(word); }, help)
        ->check(CLI::IsMember(choices))
        ->type_name("");
}

/// The options that a live and an offline run share.
struct SoundOptions {
    std::string board;
    StageChoice stage;
    std::optional<OutputKind> outputKind;
    std::optional<double> volume;
    std::filesystem::path packs;

    void addTo(CLI::App& command) {
        command.add_option("--board", board, "Board to play: its id or a board's file");
        addChoice(command, "--placement", stage.placement, placements, "Where the keyboard stands");
        addChoice(command, "--output", outputKind, outputKinds, "What you listen with");
        addChoice(command, "--room", stage.room, rooms, "The room around the keyboard");
        command.add_option("--width", stage.width, "Stereo width")->check(CLI::Range(0.0, 1.0));
        command
            .add_option("--distance", stage.distance, "Distance: 0 at the keyboard, 1 a step back")
            ->check(CLI::Range(0.0, 1.0));
        command.add_flag("--desk-mat", stage.deskMat, "A mat lies on the desk");
        command.add_option("--volume", volume, "Volume")->check(CLI::Range(0.0, 1.0));
        command.add_option("--packs", packs, "Folder of the sound packs")
            ->check(CLI::ExistingDirectory);
    }

    std::optional<std::string> wantedBoard() const {
        return board.empty() ? std::nullopt : std::optional(board);
    }
};

PrintRequest printed(const CLI::App& app, const CLI::ParseError& result) {
    std::ostringstream out;
    std::ostringstream error;
    const int status = app.exit(result, out, error);
    return {out.str() + error.str(), status == 0 ? 0 : 2};
}

} // namespace

void StageChoice::applyTo(StageSpec& stage) const {
    stage.placement = placement.value_or(stage.placement);
    stage.room = room.value_or(stage.room);
    stage.width = width.value_or(stage.width);
    stage.distance = distance.value_or(stage.distance);
    stage.deskMat = deskMat || stage.deskMat;
}

CommandRequest readCommandLine(const std::vector<std::string>& arguments,
                               const std::filesystem::path& defaultPacks) {
    CLI::App app("Plays the sound of a mechanical keyboard for every key you press.", "vornic");
    app.set_version_flag("--version", "Vornic " VORNIC_VERSION);
    SoundOptions live;
    live.packs = defaultPacks;
    live.addTo(app);
    RunRequest run;
    app.add_flag("--selftest", run.selfTest, "Say in the log how well everything works");
    app.add_flag("--selftest-mic", run.selfTestMicrophone,
                 "With --selftest: try the microphone too");
    std::filesystem::path boardFile;
    app.add_option("FILE", boardFile,
                   "Board file or sound pack to look at and hear before it is kept")
        ->check(CLI::ExistingPath);
    std::string snapshot;
    app.add_flag("--hidden", run.hidden, "Open no window; a second start opens the panel");
    app.add_option("--xkb", run.keymap,
                   "Show this keyboard layout on the drawn keys, as in \"de\" or \"us(dvorak)\"");
    app.add_flag("--gallery", run.gallery, "Show every control of the views in every state");
    app.add_option("--snapshot", snapshot, "Write pictures of the windows into a folder and end")
        ->expected(0, 1);
    app.add_flag("--snapshot-all", run.snapshotAll,
                 "With --snapshot: of the settings and of the permission too");

    CLI::App& type = *app.add_subcommand("type", "Plays typing into a WAV file");
    SoundOptions offline;
    offline.packs = defaultPacks;
    offline.addTo(type);
    TypeCommandRequest typed;
    std::string text;
    std::filesystem::path keys;
    CLI::Option_group& source = *type.add_option_group("what to play");
    CLI::Option* const textOption = source.add_option("--text", text, "Text to type");
    CLI::Option* const keysOption =
        source.add_option("--keys", keys, "Key file: milliseconds, down or up, key code on a line");
    source.require_option(1);
    type.add_option("--seed", typed.type.seed, "Starts the random choices");
    type.add_flag("--raw", typed.type.raw, "Leave room, limiter and volume out");
    type.add_flag("--json", typed.json, "Print a report as JSON");
    type.add_option("--out", typed.type.out, "WAV file to write")->required();

    CLI::App& slice = *app.add_subcommand("slice", "Cuts a recording of typing into keystrokes");
    SliceCommandRequest sliced;
    slice.add_option("file", sliced.slice.file, "Recording to cut")->required();
    slice.add_option("--out", sliced.slice.out,
                     "Folder to write the best strokes to, as WAV files");
    slice.add_flag("--all", sliced.slice.all, "Write every stroke");
    slice.add_flag("--json", sliced.json, "Print a report as JSON");
    const ControlCommandLine control(app);
    const AutostartCommandLine autostart(app);

    const BoardCommandLine boards(app, defaultPacks);

    CLI::App& doctor = *app.add_subcommand("doctor", "Says what works here and what does not");
    DoctorRequest examined{.packs = defaultPacks, .json = false};
    doctor.add_option("--packs", examined.packs, "Folder of the sound packs")
        ->check(CLI::ExistingDirectory);
    doctor.add_flag("--json", examined.json, "Print a report as JSON");

    // The parser takes its arguments from the last to the first.
    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
    try {
        app.parse(reversed);
    } catch (const CLI::ParseError& result) {
        return printed(app, result);
    }
    if (type.parsed()) {
        if (textOption->count() > 0) {
            typed.type.text = text;
        }
        if (keysOption->count() > 0) {
            typed.type.keys = keys;
        }
        typed.type.board = offline.wantedBoard();
        offline.stage.applyTo(typed.type.stage);
        typed.type.outputKind = offline.outputKind.value_or(typed.type.outputKind);
        typed.type.volume = offline.volume.value_or(typed.type.volume);
        typed.type.packs = offline.packs;
        return typed;
    }
    if (slice.parsed()) {
        return sliced;
    }
    if (doctor.parsed()) {
        return examined;
    }
    if (std::optional<BoardRequest> request = boards.request()) {
        return *std::move(request);
    }
    if (std::optional<ControlRequest> request = control.request()) {
        return *std::move(request);
    }
    if (const std::optional<AutostartRequest> request = autostart.request()) {
        return *request;
    }
    run.board = live.wantedBoard();
    run.stage = live.stage;
    run.outputKind = live.outputKind;
    run.volume = live.volume;
    run.packs = live.packs;
    if (!snapshot.empty()) {
        run.snapshot = snapshot;
    }
    if (!boardFile.empty()) {
        // Another process may be the one that opens it.
        run.open = std::filesystem::absolute(boardFile);
    }
    return run;
}

} // namespace vornic
