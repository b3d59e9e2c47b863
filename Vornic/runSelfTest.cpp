#include "Vornic/runSelfTest.h"

#include "Vornic/library/AppFolders.h"
#include "Vornic/linux/microphone/PipeWireMicrophone.h"
#include "Vornic/qt/QuietKeys.h"
#include "Vornic/recording/Recorder.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QWindow>
#include <filesystem>
#include <utility>

namespace vornic {

struct RunningSelfTest::Parts {
    Parts(Scheduler& scheduler, SoundServer& server)
        : microphone(scheduler, server), recorder(microphone) {}

    PipeWireMicrophone microphone;
    Recorder recorder;
    std::unique_ptr<SelfTest> test;
};

namespace {

/// Four keys that no window wants, into a window that is never shown.
SelfTest::OwnKeys typeIntoOwnWindow(QuietKeys& quietKeys) {
    QWindow window;
    quietKeys.attach(window);
    const std::int64_t before = quietKeys.taken();
    for (const int key : {Qt::Key_A, Qt::Key_S, Qt::Key_D, Qt::Key_F}) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &press);
    }
    const QObject* const focus = window.focusObject();
    return {quietKeys.taken() - before,
            focus != nullptr ? focus->metaObject()->className() : std::string()};
}

} // namespace

RunningSelfTest::RunningSelfTest(AppModel& model, const Platform& platform, SoundServer& server,
                                 QuietKeys& quietKeys, bool withMicrophone)
    : parts_(std::make_unique<Parts>(platform.scheduler, server)) {
    SelfTest::Environment environment;
    environment.ownKeys = [&quietKeys] { return typeIntoOwnWindow(quietKeys); };
    environment.sandboxed = std::filesystem::exists("/.flatpak-info");
    environment.folder = AppFolders::support();
    environment.withMicrophone = withMicrophone;
    environment.microphone = {
        .requestAccess =
            [this](std::function<void(bool)> answer) {
                parts_->recorder.requestAccess(std::move(answer));
            },
        .start = [this](double seconds) { return parts_->recorder.start(seconds); },
        .stop = [this] { return parts_->recorder.stop(); }};
    parts_->test = std::make_unique<SelfTest>(model, platform, std::move(environment));
    parts_->test->start();
}

RunningSelfTest::~RunningSelfTest() = default;

} // namespace vornic
