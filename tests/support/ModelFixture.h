#pragma once

#include "Vornic/app/AppModel.h"
#include "tests/support/ClickPack.h"
#include "tests/support/FakeMicrophone.h"
#include "tests/support/FakeOutput.h"
#include "tests/support/ManualClock.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vornic {

/// A tap that hears what the test lets it hear, on the thread that watches it.
class FakeTap final : public KeyTap {
  public:
    explicit FakeTap(const Clock& clock) : clock_(clock), descriptor_(eventfd(0, EFD_NONBLOCK)) {}
    FakeTap(const FakeTap&) = delete;
    FakeTap& operator=(const FakeTap&) = delete;
    ~FakeTap() override { close(descriptor_); }

    bool start() override { return allowed; }
    void stop() override {}
    TapState refresh() override {
        return allowed ? TapState::listening : TapState::needsPermission;
    }
    int fileDescriptor() const override { return descriptor_; }
    void dispatch() override {
        eventfd_t moves = 0;
        if (eventfd_read(descriptor_, &moves) == 0) {
            onKey(key, down_, clock_.nanos());
        }
    }
    std::string description() const override { return "the test"; }

    /// The key goes down. Test thread.
    void press() { move(true); }
    /// It comes up. Wait until the press was heard.
    void release() { move(false); }

    static constexpr std::int64_t key = 49;
    std::atomic<bool> allowed{true};

  private:
    void move(bool down) {
        down_ = down;
        eventfd_write(descriptor_, 1);
    }

    const Clock& clock_;
    std::atomic<bool> down_{true};
    int descriptor_;
};

class FakeHotKey final : public HotKey {
  public:
    bool registered() const override { return true; }
    int fileDescriptor() const override { return -1; }
    void dispatch() override {}
};

class CollectingLog final : public Log {
  public:
    void info(const std::string& line) override { add(line); }
    void warning(const std::string& line) override { add("! " + line); }

    std::string all() const {
        const std::scoped_lock lock(mutex_);
        return text_;
    }

  private:
    void add(const std::string& line) {
        const std::scoped_lock lock(mutex_);
        text_ += line + "\n";
    }
    mutable std::mutex mutex_;
    std::string text_;
};

/// A microphone that another program takes into use when the test says so.
class FakeMicrophoneUse final : public MicrophoneUse {
  public:
    void start() override { ++starts; }
    bool inUse() const override { return used; }
    bool inUseByAnybody() const override { return used; }
    bool canCheck() const override { return true; }

    int starts = 0;
    bool used = false;
};

/// A password field that the test gives the focus.
class FakeSecureInput final : public SecureInput {
  public:
    void start() override { ++starts; }
    bool active() const override { return focused; }
    void noticeEverywhere(bool on) override { everywhere = on; }
    PasswordFields told() const override {
        return everywhere ? PasswordFields::allThatCanTell : PasswordFields::someTell;
    }

    int starts = 0;
    bool focused = false;
    bool everywhere = false;
};

/// The model on a platform that a test drives by hand, with a board of clicks.
class ModelFixture : public ::testing::Test {
  protected:
    ModelFixture() {
        writeClickPack(scratch / "Packs");
        output.facts.name = "Test sink";
    }

    AppModel::Options options() const {
        AppModel::Options options;
        options.packs = scratch / "Packs";
        options.settingsFile = scratch / "config/settings.json";
        options.boards = scratch / "data/Boards";
        options.samples = scratch / "data/Samples";
        options.decoder = VORNIC_DECODER;
        return options;
    }
    Platform platform() {
        return {output,      tap,   hotKey,    microphone, microphoneInput,
                secureInput, clock, scheduler, log,        {{Silence::password, &furtherReason}}};
    }

    void start() { model->start(); }

    /// Ends the program and starts it again.
    void restart() {
        model.reset();
        model = std::make_unique<AppModel>(platform(), options());
        model->start();
    }

    /// Starts and waits until keys are heard and the first board is rendered.
    bool startToPlay() {
        start();
        scheduler.advance(std::chrono::milliseconds(0));
        return eventually(
            [&] { return model->tapState() == TapState::listening && model->lastRenderSeconds(); });
    }

    /// Runs what the key thread has posted until `condition` holds.
    bool eventually(const std::function<bool()>& condition) {
        return waitFor([&] {
            scheduler.run();
            return condition();
        });
    }

    /// Waits until the key thread has taken over what the model told it: a key that is there at
    /// the same time goes first.
    bool keysFollow() {
        const auto done = std::make_shared<std::atomic<bool>>(false);
        model->keys().post([done] { *done = true; });
        return eventually([&] { return done->load(); });
    }

    // Work with board files, to its end; whether it went well.

    bool exportBoard(const std::filesystem::path& to) {
        return wellDone([&](const BoardFiles::Done& done) { model->exportBoard(to, done); });
    }
    bool importBoard(const std::filesystem::path& from) {
        return wellDone([&](const BoardFiles::Done& done) { model->importBoard(from, done); });
    }
    bool previewBoard(const std::filesystem::path& from) {
        return wellDone([&](const BoardFiles::Done& done) { model->files().open({from}, done); });
    }
    bool keepPreview() {
        return wellDone([&](const BoardFiles::Done& done) { model->files().keep(done); });
    }
    bool wellDone(const std::function<void(const BoardFiles::Done&)>& begin) {
        std::optional<std::string> problem;
        begin([&](const std::string& said) { problem = said; });
        EXPECT_TRUE(eventually([&] { return problem.has_value(); }));
        return problem == "";
    }

    /// Cuts a recording and opens what it brings; false where nothing came of it.
    bool openSession(std::vector<float> samples, const std::string& name) {
        model->startSession(std::move(samples), name);
        return eventually([&] { return !model->recorder().importProgress(); }) &&
               model->importSession().has_value();
    }

    bool heard() {
        const auto block = output.render(128, clock.nanos());
        const auto loud = [](float sample) { return std::abs(sample) > 0.02f; };
        return std::ranges::any_of(block.left, loud) && std::ranges::any_of(block.right, loud);
    }

    ScratchFolder scratch;
    FakeOutput output;
    ManualClock clock;
    FakeTap tap{clock};
    FakeHotKey hotKey;
    FakeMicrophoneUse microphone;
    FakeMicrophone microphoneInput;
    FakeSecureInput secureInput;
    FakeSecureInput furtherReason; // one that the platform brings along beside those it must have
    ManualScheduler scheduler;
    CollectingLog log;
    std::unique_ptr<AppModel> model = std::make_unique<AppModel>(platform(), options());
};

} // namespace vornic
