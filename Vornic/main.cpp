// Wires the program: reads the command line, makes this platform's services and hands them to the
// model.

#include "Vornic/app/AppModel.h"
#include "Vornic/app/Control.h"
#include "Vornic/app/FallbackTray.h"
#include "Vornic/commands/CommandLine.h"
#include "Vornic/library/AppFolders.h"
#include "Vornic/library/PackFolders.h"
#include "Vornic/linux/desktop/AutostartEntry.h"
#include "Vornic/linux/desktop/DBusRunningCopy.h"
#include "Vornic/linux/desktop/DesktopMotion.h"
#include "Vornic/linux/desktop/DesktopServices.h"
#include "Vornic/linux/desktop/JournalLog.h"
#include "Vornic/linux/desktop/MonotonicClock.h"
#include "Vornic/linux/desktop/ThisProgram.h"
#include "Vornic/linux/hotkey/GlobalShortcut.h"
#include "Vornic/linux/microphone/PipeWireMicrophone.h"
#include "Vornic/linux/permission/InputMonitoringRequest.h"
#include "Vornic/linux/permission/KeyGrant.h"
#include "Vornic/linux/quiet/LinuxSecureInput.h"
#include "Vornic/linux/quiet/PipeWireMicrophoneUse.h"
#include "Vornic/linux/sound/PipeWireOutput.h"
#include "Vornic/linux/tray/StatusNotifierTray.h"
#include "Vornic/linux/tray/XEmbedTray.h"
#include "Vornic/qt/QtProgram.h"
#include "Vornic/qt/QtScheduler.h"
#include "Vornic/qt/QuietKeys.h"
#include "Vornic/qt/QuitSignals.h"
#include "Vornic/recording/DecoderProcess.h"
#include "Vornic/runKeys.h"
#include "Vornic/runModes.h"
#include "Vornic/runSelfTest.h"
#include "Vornic/typing/KeySource.h"
#include "Vornic/views/Presence.h"
#include "VornicCore/base/EndInOrder.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vornic {
namespace {

AppModel::Options modelOptions(const RunRequest& request) {
    AppModel::Options options;
    options.packs = request.packs;
    options.settingsFile = AppFolders::settingsFile();
    options.boards = AppFolders::folder("Boards");
    options.samples = AppFolders::folder("Samples");
    options.decoder = findDecoder(programPath());
    options.board = request.board;
    options.volume = request.volume;
    options.outputKind = request.outputKind;
    options.stage = [choice = request.stage](StageSpec& stage) { choice.applyTo(stage); };
    return options;
}

/// Tells the running copy of this start; how that went. The self-test and the pictures are of this
/// process, whatever else runs: then there is nothing to tell, and the result is absent.
std::optional<int> leaveToRunningCopy(RunningCopy& copy, const RunRequest& request) {
    if (request.selfTest || request.snapshot) {
        return std::nullopt;
    }
    const ControlAnswer answer =
        copy.ask(request.open ? RunningCopy::Words{"open", request.open->string()}
                              : RunningCopy::Words{"activate"});
    std::fprintf(stderr, "vornic: Vornic is running already. %s\n", answer.text.c_str());
    return answer.status;
}

/// Whether no window is to open by itself. Hidden there has to be a way back: a second start, which
/// finds this one by its name. Without that there is no tray either, which needs the same bus.
bool startsHidden(const RunRequest& request, RunningCopy::Claim claim, Log& log) {
    if (request.selfTest || request.snapshot) {
        return true;
    }
    if (request.hidden && claim != RunningCopy::Claim::claimed) {
        log.warning("Nobody could reach a hidden Vornic without a D-Bus session, so it opens its "
                    "panel");
        return false;
    }
    return request.hidden;
}

/// Pictures the views once they have settled, and ends the program.
void takePictures(Views& views, const RunRequest& request, Log& log,
                  QCoreApplication& application) {
    constexpr int settleMillis = 1500;
    QTimer::singleShot(settleMillis, &views, [&views, &request, &log, &application] {
        views.snapshot(*request.snapshot, request.snapshotAll);
        log.info("Vornic snapshot: saved to " + request.snapshot->string());
        application.quit();
    });
}

/// Has the desktop match the hot key, where it can. It may ask the user, who is to have been
/// welcomed before.
void askForShortcut(const SessionKeys& keys, Views& views, const RunRequest& request, bool first) {
    if (!keys.shortcut || request.snapshot) {
        return;
    }
    GlobalShortcut& shortcut = *keys.shortcut;
    if (first && !request.hidden && !request.selfTest) {
        QObject::connect(&views, &Views::welcomed, &shortcut, [&shortcut] { shortcut.start(); });
    } else {
        shortcut.start();
    }
}

struct RunEnd {
    int status = EXIT_SUCCESS;
    /// The program is to take its own place.
    bool relaunch = false;
};

RunEnd run(const RunRequest& request, QCoreApplication& application) {
    JournalLog log;
    // Not `quit`, which closes the windows: closing the welcome would count as having seen it.
    QuitSignals quit([] { QCoreApplication::exit(); });
    MonotonicClock clock;
    QtScheduler scheduler;

    KeySource source = chooseKeySource(sessionEnvironment());
    if (request.snapshot) {
        // Pictures need no display, and nobody types while they are taken.
        source = {.kind = KeySourceKind::none, .problem = {}};
    }
    if (!source.problem.empty()) {
        return {playDemo(request, source.problem, log)};
    }
    DBusRunningCopy copy;
    const RunningCopy::Claim claim = copy.claim();
    if (claim == RunningCopy::Claim::taken) {
        if (const std::optional<int> status = leaveToRunningCopy(copy, request)) {
            return {*status};
        }
    }
    SoundServer server;
    PipeWireOutput output(scheduler, server);
    const SessionKeys keys = makeSessionKeys(source.kind, clock);
    PipeWireMicrophoneUse microphone(scheduler, server);
    PipeWireMicrophone microphoneInput(scheduler, server);
    LinuxSecureInput secureInput;
    const Platform platform{output,      *keys.tap, *keys.hotKey, microphone, microphoneInput,
                            secureInput, clock,     scheduler,    log};
    QuietKeys quietKeys;
    quietKeys.install();
    AppModel model(platform, modelOptions(request));
    model.start();
    if (const std::string problem = output.problem(); !problem.empty() && !request.snapshot) {
        return {playDemo(request, problem, log)};
    }
    InputMonitoringRequest permission(InputMonitoringRequest::helperOf(programPath()), startProgram,
                                      {});
    permission.hasPasswordAgent = [] { return hasPasswordAgent(); };
    StatusNotifierTray statusNotifier;
    XEmbedTray olderTray;
    const bool mayDock =
        source.kind == KeySourceKind::x11 && !request.selfTest && !request.snapshot;
    FallbackTray tray(statusNotifier, olderTray, [&olderTray, mayDock](bool wanted) {
        olderTray.setWanted(wanted && mayDock);
    });
    AutostartEntry autostart(AppFolders::autostartEntry(), programPath());
    Presence presence(model, tray, startsHidden(request, claim, log));
    presence.views().adapters().permission()->setHint(
        QCoreApplication::translate("Presence", "Run \"vornic doctor\": it says what to do."));
    presence.views().offerPermission(permission, source.kind == KeySourceKind::evdev);
    Adapters& adapters = presence.views().adapters();
    const auto legends =
        showLegends(keys, request.keymap, log, std::bind_front(&Adapters::setLegends, &adapters));
    presence.views().onQuit = [&application] { application.quit(); };
    adapters.settings()->setAutostart(&autostart);
    if (!request.snapshot) {
        presence.views().rememberIn(AppFolders::settingsFile().parent_path() / "windows.json");
    }
    DesktopMotion motion;
    motion.onReduced = [&presence](bool reduced) { presence.views().followMotion(reduced); };
    motion.start();
    askForShortcut(keys, presence.views(), request, model.firstStart());
    bool again = false;
    const auto relaunch = [&again, &application] {
        again = true;
        application.quit();
    };
    adapters.permission()->onRelaunch = relaunch;
    Control control(model, scheduler, [&presence, &log] {
        log.info("Another start was sent here");
        presence.comeForward();
    });
    copy.answer(
        [&control, relaunch](const RunningCopy::Words& words, const RunningCopy::Reply& reply) {
            if (words == RunningCopy::Words{"relaunch"}) {
                reply({0, "Vornic starts again."});
                relaunch();
                return;
            }
            control.run(words, reply);
        });
    if (request.open) {
        model.files().open({*request.open}, [&model, &presence, &log](const std::string&) {
            if (model.files().preview() != nullptr) {
                log.info("Looking at the board " + model.files().preview()->opened.board.name);
            }
            presence.comeForward();
        });
    }
    if (request.gallery) {
        presence.views().openGallery();
    }
    std::optional<RunningSelfTest> selfTest;
    if (request.selfTest) {
        selfTest.emplace(model, platform, server, quietKeys, request.selfTestMicrophone);
    }
    if (request.snapshot) {
        takePictures(presence.views(), request, log, application);
    }
    const int status = QCoreApplication::exec();
    copy.answer([](const RunningCopy::Words&, const RunningCopy::Reply& reply) {
        reply({1, "Vornic is ending."});
    });
    log.info(model.voiceReport());
    return {status, again};
}

/// Starts the program anew in its own place; returns when that failed.
void relaunch(const std::filesystem::path& program, const std::vector<std::string>& arguments) {
    if (KeyGrant::lacksGroup()) {
        replaceProcess(relaunchCommand(program, arguments, KeyGrant::group));
    }
    replaceProcess(relaunchCommand(program, arguments, ""));
    std::perror("vornic: Couldn't start again");
}

/// Windows need a display: without one, and for commands, there are none. Those of the self-test
/// and of pictures are not seen.
std::unique_ptr<QCoreApplication> makeApplication(int& argc, char** argv, const RunRequest* run) {
    QCoreApplication::setApplicationName("Vornic");
    const bool shown = run != nullptr && (run->snapshot.has_value() ||
                                          chooseKeySource(sessionEnvironment()).problem.empty());
    if (!shown) {
        return std::make_unique<QCoreApplication>(argc, argv);
    }
    if (run->selfTest || run->snapshot) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    } else if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        // The last one always works: keys are to sound even where no window can be opened.
        qputenv("QT_QPA_PLATFORM", qEnvironmentVariableIsSet("WAYLAND_DISPLAY")
                                       ? "wayland;xcb;offscreen"
                                       : "xcb;offscreen");
    }
    // The views are small and still: drawn by the processor they start sooner, need no driver, and
    // leave the graphics card asleep.
    if (!qEnvironmentVariableIsSet("QT_QUICK_BACKEND")) {
        qputenv("QT_QUICK_BACKEND", "software");
    }
    // The toolkit's threads start with it.
    QuitSignals::block();
    auto application = std::make_unique<QGuiApplication>(argc, argv);
    // Desktops find the name and the icon of a window by it.
    QGuiApplication::setDesktopFileName("org.vornic.Vornic");
    QGuiApplication::setQuitOnLastWindowClosed(false);
    return application;
}

} // namespace
} // namespace vornic

int main(int argc, char** argv) {
    vornic::endInOrder("vornic");
    vornic::writeNoCore();
    vornic::keepOutForeignPlugins(vornic::programPath());
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const auto request = vornic::readCommandLine(
        arguments, vornic::findPackFolder(vornic::programPath()).value_or(""));
    const auto* const run = std::get_if<vornic::RunRequest>(&request);
    vornic::requireRoom(run != nullptr);
    auto application = vornic::makeApplication(argc, argv, run);
    if (run != nullptr) {
        // Asked for now: an upgrade may take the file away while the program runs.
        const std::filesystem::path program = vornic::programPath();
        const vornic::RunEnd end = vornic::run(*run, *application);
        if (end.relaunch) {
            application.reset();
            vornic::relaunch(program,
                             run->open ? vornic::without(arguments, *run->open) : arguments);
        }
        return end.status;
    }
    return vornic::runCommand(request);
}
