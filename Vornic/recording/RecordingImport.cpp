#include "Vornic/recording/RecordingImport.h"

#include "Vornic/recording/ReadRecording.h"

#include <memory>
#include <span>

namespace vornic {

namespace {

using Outcome = RecordingImport::Outcome;

Outcome cut(const RecordingRead& read, std::string name, std::span<const Gap> gaps) {
    if (!read.samples) {
        return {std::nullopt, std::nullopt, ImportMessages::unreadableFile, read.remark};
    }
    SessionOutcome outcome = makeSession(*read.samples, std::move(name), gaps);
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
    round_.renew();
    const auto tell = round_.guard([progress = std::move(progress)](double share) {
        if (progress) {
            progress(share);
        }
    });
    work_.start([file, &scheduler = scheduler_, decoder = decoder_, tell,
                 done = std::move(done)](const std::stop_token& stop) {
        ReadOptions options;
        options.decoder = decoder;
        options.stop = stop;
        options.progress =
            byHundredths([&](double share) { scheduler.post([tell, share] { tell(share); }); });
        return handOver(cut(readRecording(file, options), file.stem().string(), {}), done);
    });
}

void RecordingImport::start(std::vector<float> samples, std::string name, std::vector<Gap> gaps,
                            std::function<void(Outcome)> done) {
    round_.renew();
    RecordingRead recorded{std::move(samples), noticeOf(gaps)};
    work_.start([read = std::move(recorded), name = std::move(name), gaps = std::move(gaps),
                 done = std::move(done)](const std::stop_token&) {
        return handOver(cut(read, name, gaps), done);
    });
}

void RecordingImport::cancel() {
    round_.renew();
    work_.cancel();
}

} // namespace vornic
