#include "bench/AubioOnsets.h"

#include <aubio/aubio.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <stdexcept>

namespace vornic {

namespace {

constexpr uint_t rate = 48000;
constexpr uint_t window = 512;
constexpr uint_t hop = 256;

struct Delete {
    void operator()(aubio_onset_t* onset) const { del_aubio_onset(onset); }
    void operator()(fvec_t* vector) const { del_fvec(vector); }
};

} // namespace

std::vector<double> AubioOnsets::find(std::span<const float> samples) const {
    const std::unique_ptr<aubio_onset_t, Delete> detector(
        new_aubio_onset(method_.c_str(), window, hop, rate));
    const std::unique_ptr<fvec_t, Delete> input(new_fvec(hop));
    const std::unique_ptr<fvec_t, Delete> output(new_fvec(1));
    if (detector == nullptr || input == nullptr || output == nullptr) {
        throw std::runtime_error("aubio has no detector \"" + method_ + "\"");
    }
    std::vector<double> onsets;
    for (std::size_t at = 0; at + hop <= samples.size(); at += hop) {
        std::ranges::copy(samples.subspan(at, hop), input->data);
        aubio_onset_do(detector.get(), input.get(), output.get());
        if (output->data[0] != 0.0F) {
            onsets.push_back(static_cast<double>(aubio_onset_get_last(detector.get())) / rate);
        }
    }
    std::ranges::sort(onsets);
    return onsets;
}

} // namespace vornic
