#include "Vornic/commands/FileOutput.h"

#include "VornicCore/base/SampleRate.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace vornic {

FileOutput::FileOutput(std::filesystem::path file) : file_(std::move(file)) {}

void FileOutput::open(Source& source) {
    source_ = &source;
    wav_.create(file_);
}

void FileOutput::close() {
    running_ = false;
    source_ = nullptr;
    wav_.discard();
}

bool FileOutput::requestStart() {
    running_ = source_ != nullptr && wav_.error().empty();
    return running_;
}

OutputDeviceFacts FileOutput::device() const {
    return {.name = file_.string(),
            .isBluetooth = false,
            .isHeadphones = false,
            .latencyMillis = std::nullopt,
            .bufferFrames = static_cast<std::uint32_t>(blockFrames)};
}

std::string FileOutput::problem() const {
    return wav_.error().empty() ? std::string()
                                : "Couldn't write " + file_.string() + ": " + wav_.error();
}

std::uint64_t FileOutput::nanos() const {
    return startNanos + static_cast<std::uint64_t>(frames_) * 1'000'000'000 /
                            static_cast<std::uint64_t>(DSP::sampleRate);
}

bool FileOutput::renderBlock() {
    std::array<float, blockFrames> left{};
    std::array<float, blockFrames> right{};
    if (running_) {
        source_->render(blockFrames, left.data(), right.data(), nanos());
    }
    blockPeak_ = 0.0F;
    for (std::size_t i = 0; i < left.size(); ++i) {
        blockPeak_ = std::max({blockPeak_, std::abs(left[i]), std::abs(right[i])});
    }
    peak_ = std::max(peak_, blockPeak_);
    frames_ += blockFrames;
    return wav_.append(left, right);
}

bool FileOutput::finish() {
    return wav_.finish();
}

} // namespace vornic
