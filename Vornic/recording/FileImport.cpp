#include "Vornic/recording/FileImport.h"

#include "Vornic/recording/ReadRecording.h"

namespace vornic {

/// What the main thread is to call; gone, when the import has been cancelled.
struct FileImport::Calls {
    FileImport* owner;
    std::function<void(double)> progress;
    std::function<void(Outcome)> done;
};

namespace {

FileImport::Outcome importFile(const std::filesystem::path& file, const ReadOptions& options) {
    RecordingRead read = readRecording(file, options);
    if (!read.samples) {
        return {std::nullopt, std::nullopt, ImportMessages::unreadableFile, std::move(read.remark)};
    }
    SessionOutcome outcome = makeSession(*read.samples, file.stem().string());
    return {std::move(outcome.session), std::move(outcome.cuts), std::move(outcome.error),
            std::move(read.remark)};
}

/// Passes on only progress that can be seen.
std::function<void(double)> byHundredths(std::function<void(double)> tell) {
    return [tell = std::move(tell), next = 0.0](double share) mutable {
        if (share >= next) {
            next = share + 0.01;
            tell(share);
        }
    };
}

} // namespace

void FileImport::start(const std::filesystem::path& file, std::function<void(double)> progress,
                       std::function<void(Outcome)> done) {
    cancel();
    running_ = std::make_shared<Calls>(Calls{this, std::move(progress), std::move(done)});
    thread_ = std::jthread([file, &scheduler = scheduler_, decoder = decoder_,
                            calls = std::weak_ptr(running_)](std::stop_token stop) {
        ReadOptions options;
        options.decoder = decoder;
        options.stop = std::move(stop);
        options.progress = byHundredths([&](double share) {
            scheduler.post([calls, share] {
                if (const auto call = calls.lock(); call && call->progress) {
                    call->progress(share);
                }
            });
        });
        auto outcome = std::make_shared<Outcome>(importFile(file, options));
        scheduler.post([calls, outcome] {
            if (const auto call = calls.lock()) {
                // What is called may start the next import.
                call->owner->running_.reset();
                call->done(std::move(*outcome));
            }
        });
    });
}

void FileImport::cancel() {
    running_.reset();
    thread_.request_stop();
    if (thread_.joinable()) {
        thread_.join();
    }
}

} // namespace vornic
