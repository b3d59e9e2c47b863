#include "Vornic/commands/DoctorReport.h"
#include "Vornic/linux/desktop/DesktopServices.h"
#include "Vornic/linux/desktop/MonotonicClock.h"
#include "Vornic/linux/desktop/ThisProgram.h"
#include "Vornic/linux/keys/ReaderKeyboards.h"
#include "Vornic/linux/permission/InputMonitoringRequest.h"
#include "Vornic/linux/permission/KeyGrant.h"
#include "Vornic/linux/quiet/PipeWireMicrophoneUse.h"
#include "Vornic/linux/sound/PipeWireOutput.h"
#include "Vornic/linux/tray/XEmbedTray.h"
#include "Vornic/qt/QtScheduler.h"
#include "Vornic/runKeys.h"
#include "Vornic/runModes.h"
#include "VornicCore/packs/SoundPack.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <system_error>
#include <thread>

namespace vornic {

namespace {

using namespace std::chrono_literals;

/// Opened only to learn whether it can be.
class Silence final : public AudioOutput::Source {
  public:
    void render(std::int64_t frames, float* left, float* right,
                std::uint64_t /*nowNanos*/) VORNIC_REALTIME override {
        std::fill(left, left + frames, 0.0f);
        std::fill(right, right + frames, 0.0f);
    }
    void streamEnded() override {}
};

bool exists(const std::filesystem::path& path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

void lookAtKeys(DoctorFacts& facts) {
    const KeySource source = chooseKeySource(sessionEnvironment());
    facts.keySource = source.kind;
    facts.keyProblem = source.problem;
    if (source.kind == KeySourceKind::none) {
        return;
    }
    const MonotonicClock clock;
    const SessionKeys keys = makeSessionKeys(source.kind, clock);
    facts.tapState = keys.tap->refresh();
    facts.tap = keys.tap->description();
    // A running copy that has the key reader's keys notices the hot key too.
    facts.hotKeyRegistered = keys.hotKey->registered() || (keys.reader && keys.reader->taken());
    keys.tap->stop();
}

void lookAtSound(DoctorFacts& facts) {
    QtScheduler scheduler;
    SoundServer server;
    // Asks while the output is found out about.
    PipeWireMicrophoneUse microphone(scheduler, server);
    microphone.start();
    Silence silence;
    PipeWireOutput output(scheduler, server);
    output.open(silence);
    facts.soundProblem = output.problem();
    facts.soundDevice = output.device().name;
    output.close();
    // The server tells every object it has within a few milliseconds; half a second is for a
    // loaded machine.
    const auto deadline = std::chrono::steady_clock::now() + 500ms;
    while (facts.soundProblem.empty() && !microphone.canCheck() &&
           std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(5ms);
    }
    facts.microphone = microphone.canCheck();
}

} // namespace

int runDoctor(const DoctorRequest& request) {
    DoctorFacts facts;
    lookAtKeys(facts);
    lookAtSound(facts);
    facts.packs = SoundPack::all(request.packs).size();
    facts.packFolder = request.packs.string();
    const bool reader = exists(InputMonitoringFiles::readerSocket);
    facts.ruleInstalled =
        reader || std::ranges::any_of(InputMonitoringFiles::rules,
                                      [](const char* rule) { return exists(rule); });
    facts.agreed =
        exists(reader ? InputMonitoringFiles::readerAgreement : InputMonitoringFiles::agreement);
    const DesktopServices services = DesktopServices::look();
    facts.sessionBus = services.sessionBus;
    facts.tray = services.tray || (facts.keySource == KeySourceKind::x11 && XEmbedTray::offered());
    facts.trayHasVornic = services.trayHasVornic;
    facts.accessibility = services.accessibility;
    facts.globalShortcuts = services.globalShortcuts;
    facts.turnOnCommand = InputMonitoringRequest::helperOf(programPath()).string() + " enable";
    if (facts.keySource == KeySourceKind::evdev && facts.tapState == TapState::needsPermission) {
        facts.passwordAgent = hasPasswordAgent();
    }
    const std::vector<DoctorFinding> findings = examine(facts);
    std::fputs((request.json ? asJson(findings) : asText(findings)).c_str(), stdout);
    return works(findings) ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace vornic
