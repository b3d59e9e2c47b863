#include "VornicCore/audiofiles/MonoResampler.h"

#include <soxr.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>

namespace vornic {

struct MonoResampler::Converter {
    soxr_t handle = nullptr;
    std::array<float, 8192> block{};

    Converter() = default;
    ~Converter() { soxr_delete(handle); }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    /// Appends the first `made` of the block. Between samples near the largest number lie some that
    /// are beyond it.
    void give(std::size_t made, std::vector<float>& output) const {
        std::transform(block.data(), block.data() + made, std::back_inserter(output),
                       [](float sample) { return std::isfinite(sample) ? sample : 0.0F; });
    }
};

MonoResampler::MonoResampler(double fromRate, double toRate) {
    if (fromRate == toRate) {
        return;
    }
    converter_ = std::make_unique<Converter>();
    const soxr_io_spec_t io = soxr_io_spec(SOXR_FLOAT32_I, SOXR_FLOAT32_I);
    const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_HQ, 0);
    const soxr_runtime_spec_t runtime = soxr_runtime_spec(1);
    soxr_error_t error = nullptr;
    converter_->handle = soxr_create(fromRate, toRate, 1, &error, &io, &quality, &runtime);
    usable_ = error == nullptr && converter_->handle != nullptr;
}

MonoResampler::~MonoResampler() = default;

bool MonoResampler::process(std::span<const float> samples, std::vector<float>& output) {
    if (!usable_) {
        return false;
    }
    if (!converter_) {
        output.insert(output.end(), samples.begin(), samples.end());
        return true;
    }
    while (!samples.empty()) {
        std::size_t taken = 0;
        std::size_t made = 0;
        const soxr_error_t error =
            soxr_process(converter_->handle, samples.data(), samples.size(), &taken,
                         converter_->block.data(), converter_->block.size(), &made);
        if (error != nullptr || (taken == 0 && made == 0)) {
            usable_ = false;
            return false;
        }
        converter_->give(made, output);
        samples = samples.subspan(taken);
    }
    return true;
}

bool MonoResampler::finish(std::vector<float>& output) {
    if (!usable_ || !converter_) {
        return usable_;
    }
    std::size_t made = 0;
    do {
        if (soxr_process(converter_->handle, nullptr, 0, nullptr, converter_->block.data(),
                         converter_->block.size(), &made) != nullptr) {
            return false;
        }
        converter_->give(made, output);
    } while (made > 0);
    return true;
}

} // namespace vornic
