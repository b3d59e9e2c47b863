#include "tests/VornicCore/effects/ImpulseResponse.h"

#include "VornicCore/effects/ReverbNetwork.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <numeric>

namespace vornic {

StereoSignal impulseResponse(Room room, float left, float right, std::size_t frames) {
    constexpr std::size_t chunk = ReverbNetwork::chunk;
    ReverbNetwork network;
    network.load(room);
    StereoSignal result;
    std::array<float, chunk> leftIn{left};
    std::array<float, chunk> rightIn{right};
    std::array<float, chunk> leftOut{};
    std::array<float, chunk> rightOut{};
    while (result.left.size() < frames) {
        network.process(chunk, leftIn.data(), rightIn.data(), leftOut.data(), rightOut.data());
        result.left.insert(result.left.end(), leftOut.begin(), leftOut.end());
        result.right.insert(result.right.end(), rightOut.begin(), rightOut.end());
        leftIn[0] = rightIn[0] = 0.0F;
    }
    return result;
}

double energy(const Signal& signal) {
    return std::inner_product(signal.begin(), signal.end(), signal.begin(), 0.0);
}

double correlation(const Signal& a, const Signal& b, std::size_t from, std::size_t to) {
    double both = 0.0;
    double aa = 0.0;
    double bb = 0.0;
    for (std::size_t i = from; i < to; ++i) {
        both += a[i] * b[i];
        aa += a[i] * a[i];
        bb += b[i] * b[i];
    }
    return both / std::sqrt(aa * bb);
}

Signal octaveBand(Signal signal, double hz) {
    const double w = 2.0 * std::numbers::pi * hz / 48000.0;
    const double alpha = std::sin(w) / (2.0 * std::numbers::sqrt2);
    const double scale = 1.0 / (1.0 + alpha);
    for (int pass = 0; pass < 2; ++pass) {
        double z1 = 0.0;
        double z2 = 0.0;
        for (double& x : signal) {
            const double y = alpha * scale * x + z1;
            z1 = z2 + 2.0 * std::cos(w) * scale * y;
            z2 = -alpha * scale * x - (1.0 - alpha) * scale * y;
            x = y;
        }
    }
    return signal;
}

double reverberationTime(const Signal& response) {
    Signal remaining(response.size());
    double sum = 0.0;
    for (std::size_t i = response.size(); i-- > 0;) {
        sum += response[i] * response[i];
        remaining[i] = sum;
    }
    const auto secondsUntil = [&](double db) {
        const double threshold = sum * std::pow(10.0, db / 10.0);
        const auto below = std::find_if(remaining.begin(), remaining.end(),
                                        [&](double left) { return left < threshold; });
        return static_cast<double>(below - remaining.begin()) / 48000.0;
    };
    return 2.0 * (secondsUntil(-35.0) - secondsUntil(-5.0));
}

double echoDensity(const Signal& response, std::size_t from, std::size_t to) {
    double sum = 0.0;
    for (std::size_t i = from; i < to; ++i) {
        sum += response[i] * response[i];
    }
    const auto count = static_cast<double>(to - from);
    const double deviation = std::sqrt(sum / count);
    double outside = 0.0;
    for (std::size_t i = from; i < to; ++i) {
        outside += std::abs(response[i]) > deviation ? 1.0 : 0.0;
    }
    return outside / count / std::erfc(1.0 / std::numbers::sqrt2);
}

} // namespace vornic
