// Wires the program: reads the command line, makes this platform's services and hands them to the
// model.

#include "Vornic/commands/BoardCommands.h"
#include "Vornic/commands/CommandLine.h"
#include "Vornic/commands/SliceCommand.h"
#include "Vornic/commands/TypeCommand.h"
#include "Vornic/keystroke/PreviewPhrase.h"
#include "Vornic/library/AppFolders.h"
#include "Vornic/library/PackFolders.h"
#include "Vornic/model/AppModel.h"
#include "Vornic/platform/KeySource.h"
#include "Vornic/platform/NoSecureInput.h"
#include "Vornic/platform/linux/pipewire/PipeWireMicrophoneUse.h"
#include "Vornic/platform/linux/pipewire/PipeWireOutput.h"
#include "Vornic/platform/linux/system/JournalLog.h"
#include "Vornic/platform/linux/system/MonotonicClock.h"
#include "Vornic/platform/linux/system/ProgramPath.h"
#include "Vornic/platform/qt/QtScheduler.h"
#include "Vornic/platform/qt/QuitSignals.h"
#include "Vornic/runKeys.h"

#include <QCoreApplication>
#include <QStandardPaths>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <variant>
#include <vector>

namespace vornic {
namespace {

/// Where the program is started but cannot be heard or cannot hear, it shows at least what it
/// sounds like: `problem` says why, and the phrase goes through the same path into a file.
int playDemo(const RunRequest& request, const std::string& problem, Log& log) {
    TypeRequest demo;
    demo.board = request.board;
    request.stage.applyTo(demo.stage);
    demo.outputKind = request.outputKind.value_or(demo.outputKind);
    demo.volume = request.volume.value_or(demo.volume);
    demo.packs = request.packs;
    const std::filesystem::path folder =
        QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation).toStdString();
    demo.out = folder / "Vornic" / "demo.wav";
    log.warning(problem);
    try {
        std::filesystem::create_directories(demo.out.parent_path());
        playIntoFile(demo, previewPhrase());
        log.info("Until then, hear what it sounds like: " + demo.out.string());
    } catch (const std::exception& error) {
        log.warning(std::string("There is nothing to hear yet: ") + error.what());
    }
    return EXIT_SUCCESS;
}

AppModel::Options modelOptions(const RunRequest& request) {
    AppModel::Options options;
    options.packs = request.packs;
    options.settingsFile = AppFolders::settingsFile();
    options.boards = AppFolders::folder("Boards");
    options.samples = AppFolders::folder("Samples");
    options.board = request.board;
    options.volume = request.volume;
    options.outputKind = request.outputKind;
    options.stage = [choice = request.stage](StageSpec& stage) { choice.applyTo(stage); };
    return options;
}

int run(const RunRequest& request, QCoreApplication& application) {
    JournalLog log;
    QuitSignals quit([&application] { application.quit(); });
    MonotonicClock clock;
    QtScheduler scheduler;

    const KeySource source = chooseKeySource(sessionEnvironment());
    if (!source.problem.empty()) {
        return playDemo(request, source.problem, log);
    }
    PipeWireOutput output(scheduler);
    const SessionKeys keys = makeSessionKeys(source.kind, clock);
    PipeWireMicrophoneUse microphone(scheduler);
    NoSecureInput secureInput;
    AppModel model(
        {output, *keys.tap, *keys.hotKey, microphone, secureInput, clock, scheduler, log},
        modelOptions(request));
    model.start();
    if (const std::string problem = output.problem(); !problem.empty()) {
        return playDemo(request, problem, log);
    }
    const int status = QCoreApplication::exec();
    log.info(model.voiceReport());
    return status;
}

int type(const TypeCommandRequest& request) {
    try {
        const TypeOutcome outcome = typeIntoFile(request.type);
        for (const std::string& remark : outcome.remarks) {
            std::fprintf(stderr, "vornic: %s\n", remark.c_str());
        }
        if (request.json) {
            std::puts(reportAsJson(outcome.report).c_str());
        }
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "vornic: %s\n", error.what());
        return EXIT_FAILURE;
    }
}

int slice(const SliceCommandRequest& request) {
    try {
        const SliceReport report = sliceFile(request.slice);
        for (const std::string& remark : report.remarks) {
            std::fprintf(stderr, "vornic: %s\n", remark.c_str());
        }
        if (request.json) {
            std::puts(reportAsJson(report).c_str());
        } else {
            std::fputs(reportAsText(report).c_str(), stdout);
        }
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "vornic: %s\n", error.what());
        return EXIT_FAILURE;
    }
}

int runBoards(const BoardRequest& request) {
    try {
        const CommandOutcome outcome = runBoardCommand(request);
        for (const std::string& remark : outcome.remarks) {
            std::fprintf(stderr, "vornic: %s\n", remark.c_str());
        }
        std::fputs(outcome.text.c_str(), stdout);
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "vornic: %s\n", error.what());
        return EXIT_FAILURE;
    }
}

int print(const PrintRequest& request) {
    std::fputs(request.text.c_str(), request.status == 0 ? stdout : stderr);
    return request.status;
}

} // namespace
} // namespace vornic

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName("Vornic");
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const auto request = vornic::readCommandLine(
        arguments, vornic::findPackFolder(vornic::programPath()).value_or(""));
    if (const auto* const run = std::get_if<vornic::RunRequest>(&request)) {
        return vornic::run(*run, application);
    }
    if (const auto* const type = std::get_if<vornic::TypeCommandRequest>(&request)) {
        return vornic::type(*type);
    }
    if (const auto* const slice = std::get_if<vornic::SliceCommandRequest>(&request)) {
        return vornic::slice(*slice);
    }
    if (const auto* const boards = std::get_if<vornic::BoardRequest>(&request)) {
        return vornic::runBoards(*boards);
    }
    return vornic::print(std::get<vornic::PrintRequest>(request));
}
