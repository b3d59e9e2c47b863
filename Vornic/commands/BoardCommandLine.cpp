#include "Vornic/commands/BoardCommandLine.h"

#include <CLI/CLI.hpp>

#include <map>
#include <string>

namespace vornic {

namespace {

const std::map<std::string, Velocity> velocities{
    {"soft", Velocity::soft}, {"medium", Velocity::medium}, {"hard", Velocity::hard}};

const std::map<std::string, ExportFormat> exportFormats = [] {
    std::map<std::string, ExportFormat> formats;
    for (const ExportFormat format : allCases<ExportFormat>()) {
        formats[std::string(rawString(format))] = format;
    }
    return formats;
}();

constexpr const char* boardHelp = "Id of a board, or a board's file";

} // namespace

struct BoardCommandLine::Options {
    std::filesystem::path packs;
    ListBoards list;
    ExportBoard exported;
    std::string format;
    ImportBoard imported;
    WriteStroke stroke;
    std::string strokeBoard;
    std::string velocity = "medium";
    WriteStrokes strokes;
    CLI::App* listCommand = nullptr;
    CLI::App* exportCommand = nullptr;
    CLI::App* importCommand = nullptr;
    CLI::App* strokeCommand = nullptr;
    CLI::App* strokesCommand = nullptr;

    CLI::App* add(CLI::App& app, const std::string& name, const std::string& help) {
        CLI::App* const command = app.add_subcommand(name, help);
        command->add_option("--packs", packs, "Folder of the sound packs")
            ->check(CLI::ExistingDirectory);
        return command;
    }

    void addStroke(CLI::App& app) {
        strokeCommand = add(app, "stroke", "Writes one rendered stroke as a WAV file");
        strokeCommand->add_option("--board", strokeBoard, boardHelp);
        strokeCommand->add_option("--sound", stroke.sound, "Id of a sound of the board")
            ->required();
        strokeCommand->add_option("--velocity", velocity, "How hard the key is struck")
            ->check(CLI::IsMember(velocities))
            ->type_name("");
        strokeCommand->add_option("--variant", stroke.variant, "Which variation, counted from 0");
        CLI::Option* const stabilised = strokeCommand->add_flag(
            "--stabilised", stroke.stabilised, "As on a key that has a stabiliser");
        strokeCommand->add_flag("--release", stroke.release, "The release instead of the press")
            ->excludes(stabilised);
        strokeCommand->add_option("--seed", stroke.seed, "Starts the random choices; 1 is played");
        strokeCommand->add_option("--out", stroke.out, "WAV file to write")->required();
    }
};

BoardCommandLine::BoardCommandLine(CLI::App& app, const std::filesystem::path& defaultPacks)
    : options_(std::make_unique<Options>()) {
    Options& to = *options_;
    to.packs = defaultPacks;

    to.listCommand = to.add(app, "boards", "Lists the boards");
    to.listCommand->add_flag("--json", to.list.json, "As JSON");

    to.exportCommand = to.add(app, "export", "Writes a board and your recordings in it to a file");
    to.exportCommand->add_option("BOARD", to.exported.board, boardHelp)->required();
    to.exportCommand
        ->add_option("FILE", to.exported.file, "Board file (.vornic) to write, or folder to make")
        ->required();
    to.exportCommand
        ->add_option("--format", to.format,
                     "Writes the rendered strokes for other programs instead")
        ->check(CLI::IsMember(exportFormats))
        ->type_name("");

    to.importCommand = to.add(app, "import", "Adds the board of a file, or sound packs, to yours");
    to.importCommand
        ->add_option("FILE", to.imported.file,
                     "Board file (.vornic), or a sound pack: a folder, an archive, or a folder of "
                     "packs")
        ->required();
    to.importCommand->add_flag("--dry-run", to.imported.dryRun, "Only say what a pack holds");
    to.importCommand->add_flag("--json", to.imported.json, "Say it as JSON");
    to.importCommand
        ->add_option("--first-note", to.imported.firstNote,
                     "Of an instrument whose notes name no keys: the MIDI note of Escape")
        ->check(CLI::Range(0, 127));

    to.addStroke(app);

    to.strokesCommand = to.add(app, "render-board", "Writes every stroke of a board as WAV files");
    to.strokesCommand->add_option("BOARD", to.strokes.board, boardHelp)->required();
    to.strokesCommand->add_option("--out", to.strokes.out, "Folder to write to")->required();
    to.strokesCommand->add_flag("--json", to.strokes.json, "Print the report as JSON");
}

BoardCommandLine::~BoardCommandLine() = default;

std::optional<BoardRequest> BoardCommandLine::request() const {
    const Options& from = *options_;
    if (from.listCommand->parsed()) {
        return BoardRequest{from.list, from.packs};
    }
    if (from.exportCommand->parsed()) {
        ExportBoard exported = from.exported;
        if (!from.format.empty()) {
            exported.format = exportFormats.at(from.format);
        }
        return BoardRequest{std::move(exported), from.packs};
    }
    if (from.importCommand->parsed()) {
        return BoardRequest{from.imported, from.packs};
    }
    if (from.strokeCommand->parsed()) {
        WriteStroke stroke = from.stroke;
        stroke.velocity = velocities.at(from.velocity);
        if (!from.strokeBoard.empty()) {
            stroke.board = from.strokeBoard;
        }
        return BoardRequest{std::move(stroke), from.packs};
    }
    if (from.strokesCommand->parsed()) {
        return BoardRequest{from.strokes, from.packs};
    }
    return std::nullopt;
}

} // namespace vornic
