// Uses the whole program hard for a while: keys without a pause, and meanwhile everything that may
// happen to it. Ends with a table of what became of the keys and of what the program holds; with 1
// when a key was lost without a reason, a voice is stuck, or the program has grown.
//
//   vornic_soak [MINUTES [SEED]]

#include "tests/live/PrivateSoundServer.h"
#include "tests/live/QtLoop.h"
#include "tests/live/SinkCapture.h"
#include "tests/live/soak/SoakedProgram.h"
#include "tests/live/soak/SteadyHands.h"
#include "tests/live/views/AccessibleTree.h"
#include "tests/live/views/Pointer.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace vornic {
namespace {

using namespace std::chrono_literals;

/// Everything else on the machine may be busy too.
constexpr auto patience = 60s;

void expect(bool condition, const std::string& what) {
    if (!condition) {
        throw std::runtime_error("it did not happen: " + what);
    }
}

/// The desk on which the program is used.
class Soak {
  public:
    explicit Soak(std::uint32_t seed) : seed_(seed) {
        startServer();
        const std::filesystem::path remote = server_.remote();
        program_ = std::make_unique<SoakedProgram>(
            ChildProcess::Environment{{"PIPEWIRE_RUNTIME_DIR", remote.parent_path()},
                                      {"PIPEWIRE_REMOTE", remote.filename()}});
        expect(loop_.waitFor([&] { return says("Vornic is listening"); }, patience), "it listens");
        file_ = program_->exported("deep");
        // Not earlier: what nobody listens for cannot be lost.
        hands_.emplace(seed_);
        openStudio();
    }

    /// All that may happen, each time between at least so many keys.
    void goRound() {
        static const std::vector<std::function<void(Soak&)>> acts{
            &Soak::edit,         &Soak::compare,     &Soak::chooseBoards, &Soak::changeVolume,
            &Soak::switchOff,    &Soak::chooseSinks, &Soak::takeSinkAway, &Soak::killServer,
            &Soak::previewBoard, &Soak::restartBus};
        for (const auto& act : acts) {
            act(*this);
            constexpr std::int64_t keysBetween = 40;
            const std::int64_t enough = hands_->pressed() + keysBetween;
            expect(loop_.waitFor([&] { return hands_->pressed() >= enough; }, patience),
                   "keys are typed");
            expect(program_->lives(), "the program lives:\n" + program_->log());
        }
        // Every round ends as the first one began.
        program_->say({"board", "deep"});
        playing();
    }

    void rest() {
        hands_->rest();
        sent_ = hands_->pressed();
        // The last keys may still be on their way to the program, and from there to the sound.
        KeyCounts last = program_->counts();
        loop_.waitFor(
            [&] {
                last = program_->counts();
                return last.pressed >= sent_ && last.withoutReason() == 0;
            },
            patience);
        counts_ = last;
    }

    ProcessFacts facts() const { return program_->facts(); }
    std::int64_t sent() const { return sent_; }
    const KeyCounts& counts() const { return counts_; }

    /// Whether something still sounds long after the last key.
    bool isStuck() {
        SinkCapture capture({.sink = sink_, .remote = server_.remote(), .quantum = 128});
        constexpr float audible = 1e-4F;
        return !loop_.waitFor([&] {
            const std::size_t from = capture.frames();
            return !capture.waitFor(from, audible, 500ms).has_value();
        });
    }

    int end() { return program_->end(); }

  private:
    void startServer() {
        server_.startServer();
        server_.addSink("first");
        server_.addSink("second");
        server_.startSessionManager();
        server_.chooseSink(sink_);
        expect(server_.waitForDefaultSink(sink_), "a default sink");
    }

    bool says(const std::string& text) const {
        return program_->log().find(text) != std::string::npos;
    }

    void playing() {
        const std::int64_t before = program_->counts().started;
        expect(loop_.waitFor([&] { return program_->counts().started > before; }, patience),
               "keys sound");
    }

    /// Nobody moves the windows: what was found once is there, also when a restart of its bus has
    /// blinded the screen reader.
    void click(const QString& name) {
        if (const auto known = places_.find(name); known != places_.end()) {
            pointer_.click(known->second);
            return;
        }
        std::optional<AccessibleTree::Node> node;
        expect(loop_.waitFor([&] { return (node = tree_->showing("Vornic", name)).has_value(); },
                             patience),
               name.toStdString() + " is to be seen");
        places_[name] = node->place.center();
        pointer_.click(places_[name]);
    }

    void openStudio() {
        tree_.emplace();
        click("Settings");
        click("Show the advanced editor");
        click("Open Studio");
    }

    void edit() {
        click("Hear keys come up");
        click("Undo");
        click("Redo");
        playing();
    }
    void compare() {
        click("A / B");
        playing();
        click("A / B");
    }
    void chooseBoards() {
        for (int i = 0; i < 5; ++i) {
            program_->say({"board", "next"});
        }
        playing();
    }
    void changeVolume() {
        program_->say({"volume", "0.3"});
        program_->say({"volume", "0.7"});
    }
    void switchOff() {
        program_->say({"off"});
        program_->say({"on"});
        playing();
    }
    void chooseSinks() {
        sink_ = sink_ == "first" ? "second" : "first";
        server_.chooseSink(sink_);
        expect(server_.waitForDefaultSink(sink_), sink_);
        playing();
    }
    void takeSinkAway() {
        server_.removeSink(sink_);
        server_.addSink(sink_);
        expect(server_.waitForDefaultSink(sink_), sink_);
        playing();
    }
    void killServer() {
        server_.kill();
        program_->status();
        startServer();
        playing();
    }
    void previewBoard() {
        program_->say({file_.string()});
        playing();
        click("Cancel");
    }
    /// The accessibility bus: it is what a desktop restarts under running programs.
    void restartBus() {
        auto* const session = QDBusConnection::sessionBus().interface();
        session->startService("org.a11y.Bus"); // Nobody may have asked for it since the last time.
        const auto bus = session->servicePid("org.a11y.Bus");
        expect(bus.isValid() && bus.value() > 1, "an accessibility bus");
        ::kill(static_cast<pid_t>(bus.value()), SIGKILL);
        expect(loop_.waitFor([&] { return !session->isServiceRegistered("org.a11y.Bus").value(); },
                             patience),
               "it goes");
        playing();
    }

    std::uint32_t seed_;
    QtLoop loop_;
    std::string sink_ = "first";
    PrivateSoundServer server_;
    std::unique_ptr<SoakedProgram> program_;
    std::filesystem::path file_;
    std::optional<AccessibleTree> tree_;
    std::map<QString, QPoint> places_;
    Pointer pointer_;
    std::optional<SteadyHands> hands_;
    std::int64_t sent_ = 0;
    KeyCounts counts_;
};

bool report(const Soak& soak, bool stuck, const ProcessFacts& start, const ProcessFacts& end,
            int rounds) {
    const KeyCounts& counts = soak.counts();
    std::printf("\nrounds                %10d\n", rounds);
    std::printf("keys sent             %10lld\n", static_cast<long long>(soak.sent()));
    std::printf("heard                 %10lld\n", static_cast<long long>(counts.pressed));
    std::printf("released with a sound %10lld\n", static_cast<long long>(counts.released));
    std::printf("started               %10lld\n", static_cast<long long>(counts.started));
    for (const auto& [reason, keys] : counts.dropped) {
        std::printf("dropped, %-12s %10lld\n", reason.c_str(), static_cast<long long>(keys));
    }
    const std::int64_t lost = soak.sent() - counts.pressed;
    std::printf("lost, not heard       %10lld\n", static_cast<long long>(lost));
    std::printf("lost, no reason       %10lld\n", static_cast<long long>(counts.withoutReason()));
    std::printf("stolen                %10lld\n", static_cast<long long>(counts.stolen));
    std::printf("stuck voices          %10s\n", stuck ? "yes" : "none");
    std::printf("                           start        end\n");
    std::printf("memory, MB            %10.1f %10.1f\n", start.memoryMB, end.memoryMB);
    std::printf("descriptors           %10zu %10zu\n", start.descriptors, end.descriptors);
    std::printf("threads               %10zu %10zu\n", start.threads, end.threads);
    constexpr double mostGrowthMB = 5.0;
    return lost == 0 && counts.withoutReason() == 0 && !stuck &&
           end.memoryMB <= start.memoryMB + mostGrowthMB && end.descriptors <= start.descriptors &&
           end.threads <= start.threads;
}

int soaked(double minutes, std::uint32_t seed) {
    std::printf("seed %u\n", seed);
    Soak soak(seed);
    // What is made once and kept is there after the first round.
    soak.goRound();
    const ProcessFacts start = soak.facts();
    const auto deadline =
        std::chrono::steady_clock::now() + std::chrono::duration<double>(minutes * 60.0);
    int rounds = 0;
    do {
        soak.goRound();
        ++rounds;
    } while (std::chrono::steady_clock::now() < deadline);
    soak.rest();
    const bool stuck = soak.isStuck();
    const ProcessFacts end = soak.facts();
    const bool good = report(soak, stuck, start, end, rounds);
    const int status = soak.end();
    std::printf("ended with            %10d\n", status);
    return good && status == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace
} // namespace vornic

int main(int argc, char** argv) {
    // It types blindly and ends servers: only where nobody else is.
    if (std::getenv("VORNIC_PRIVATE_DESKTOP") == nullptr) {
        std::fputs("vornic_soak: only on a private desktop: ./dev soak\n", stderr);
        return EXIT_FAILURE;
    }
    try {
        return vornic::soaked(argc > 1 ? std::stod(argv[1]) : 10.0,
                              argc > 2 ? static_cast<std::uint32_t>(std::stoul(argv[2])) : 1U);
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "vornic_soak: %s\n", problem.what());
        return EXIT_FAILURE;
    }
}
