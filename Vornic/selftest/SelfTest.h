#pragma once

#include "Vornic/app/AppModel.h"
#include "Vornic/app/Platform.h"
#include "VornicCore/base/Lifetime.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vornic {

/// Tries on this machine what the program needs and says in the log, in one line for each, what it
/// found. It changes nothing of the user's and never fails: what does not work shows as "no" or as
/// a zero. Thread: main.
class SelfTest {
  public:
    /// What keys do in a window of the program's own.
    struct OwnKeys {
        /// Of four that nothing in the window wants, those that were kept quiet.
        std::int64_t taken = 0;
        /// What had the focus; empty for nothing.
        std::string focus;
    };

    /// Records from the microphone; all absent where that is not possible.
    struct Microphone {
        /// Asks for the permission to listen; answers later or at once.
        std::function<void(std::function<void(bool)>)> requestAccess;
        /// Records for so many seconds at most; false when it did not start.
        std::function<bool(double seconds)> start;
        /// Ends the recording; 48 kHz mono.
        std::function<std::vector<float>()> stop;
    };

    /// What the model does not know.
    struct Environment {
        std::function<OwnKeys()> ownKeys = [] { return OwnKeys(); };
        bool sandboxed = false;
        /// The user's folder.
        std::filesystem::path folder;
        /// Whether the part with the microphone is wanted.
        bool withMicrophone = false;
        Microphone microphone;
    };

    /// Both outlive it.
    SelfTest(AppModel& model, Platform platform, Environment environment);

    /// Starts it; to be called once, when the model has started. The last line comes ten seconds
    /// later.
    void start();

  private:
    void run();
    void sayWhatIsThere();
    void render();
    void tryOwnKeys();
    void sayHowItStands();
    void playPhrase();
    void sayWhatWasHeard();
    void countKeys();
    void tryMicrophone();
    void record(bool allowed);
    void endRecording();
    bool folderIsWritable() const;
    void say(const std::string& line);
    void after(std::chrono::milliseconds delay, void (SelfTest::*step)());

    AppModel& model_;
    Platform platform_;
    Environment environment_;
    std::int64_t keysBefore_ = 0;
    bool recordingStarted_ = false;
    std::vector<std::unique_ptr<Scheduler::Timer>> timers_;
    Lifetime lifetime_;
};

} // namespace vornic
