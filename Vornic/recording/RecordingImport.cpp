#include "Vornic/recording/RecordingImport.h"

#include "Vornic/recording/ReadRecording.h"

namespace vornic {

namespace {

using Outcome = RecordingImport::Outcome;

Outcome cut(const RecordingRead& read, std::string name) {
    if (!read.samples) {
        return {std::nullopt, std::nullopt, ImportMessages::unreadableFile, read.remark};
    }
    SessionOutcome outcome = makeSession(*read.samples, std::move(name));
    return {std::move(outcome.session), std::move(outcome.cuts), std::move(outcome.error),
            read.remark};
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

BackgroundWork::Finish handOver(Outcome outcome, const std::function<void(Outcome)>& done) {
    return [outcome = std::make_shared<Outcome>(std::move(outcome)), done] {
        done(std::move(*outcome));
    };
}

} // namespace

void RecordingImport::start(const std::filesystem::path& file, std::function<void(double)> progress,
                            std::function<void(Outcome)> done) {
    progress_ = std::make_shared<std::function<void(double)>>(std::move(progress));
    work_.start([file, &scheduler = scheduler_, decoder = decoder_, told = std::weak_ptr(progress_),
                 done = std::move(done)](const std::stop_token& stop) {
        ReadOptions options;
        options.decoder = decoder;
        options.stop = stop;
        options.progress = byHundredths([&](double share) {
            scheduler.post([told, share] {
                if (const auto tell = told.lock(); tell && *tell) {
                    (*tell)(share);
                }
            });
        });
        return handOver(cut(readRecording(file, options), file.stem().string()), done);
    });
}

void RecordingImport::start(std::vector<float> samples, std::string name,
                            std::function<void(Outcome)> done) {
    progress_.reset();
    work_.start([read = RecordingRead{std::move(samples), {}}, name = std::move(name),
                 done = std::move(done)](const std::stop_token&) {
        return handOver(cut(read, name), done);
    });
}

void RecordingImport::cancel() {
    progress_.reset();
    work_.cancel();
}

} // namespace vornic
