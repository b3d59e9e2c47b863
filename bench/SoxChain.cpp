#include "bench/SoxChain.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace vornic {

namespace {

std::filesystem::path temporary(const std::string& name) {
    return std::filesystem::temp_directory_path() /
           ("vornic-bench-" + std::to_string(getpid()) + name);
}

/// Processor time of all programs started and ended so far.
double childSeconds() {
    rusage used{};
    getrusage(RUSAGE_CHILDREN, &used);
    return static_cast<double>(used.ru_utime.tv_sec) +
           static_cast<double>(used.ru_utime.tv_usec) / 1e6;
}

std::optional<double> run(std::span<const std::vector<float>> strokes) {
    const auto input = temporary("-in.raw");
    const auto output = temporary("-out.raw");
    {
        std::ofstream file(input, std::ios::binary);
        for (const std::vector<float>& stroke : strokes) {
            file.write(reinterpret_cast<const char*>(stroke.data()),
                       static_cast<std::streamsize>(stroke.size() * sizeof(float)));
        }
    }
    const std::string format = " -t raw -r 48000 -e floating-point -b 32 -c 1 ";
    const std::string command =
        "sox -V0" + format + input.string() + format + output.string() +
        " highpass 30 0.707q bass 5 100 0.707q equalizer 250 1.1q 2 equalizer 1200 1.1q 1"
        " equalizer 3500 1.1q -2 treble -3 9000 0.707q lowpass 15000 0.707q"
        " compand 0.0005,0.02 6:-70,-60,-20 gain -3 overdrive 5 20 speed 0.97 rate -q 48000"
        " gain -3 >/dev/null 2>&1";
    const double before = childSeconds();
    const int status = std::system(command.c_str());
    const double took = childSeconds() - before;
    std::filesystem::remove(input);
    std::filesystem::remove(output);
    return status == 0 ? std::optional(took) : std::nullopt;
}

} // namespace

std::optional<double> soxSeconds(std::span<const std::vector<float>> strokes) {
    const std::vector<std::vector<float>> nothing(1, std::vector<float>(48));
    const auto idle = run(nothing);
    const auto full = run(strokes);
    if (!idle || !full) {
        return std::nullopt;
    }
    return std::max(*full - *idle, 0.0);
}

} // namespace vornic
