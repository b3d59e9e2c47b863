#include "bench/FrameLog.h"

#include <algorithm>
#include <fstream>
#include <string>

namespace vornic {

void FrameLog::begin() {
    std::ifstream file(log_, std::ios::ate);
    from_ = static_cast<std::size_t>(file.tellg());
}

std::vector<double> FrameLog::deltas() const {
    std::ifstream file(log_);
    file.seekg(static_cast<std::streamoff>(from_));
    std::vector<double> all;
    const std::string mark = "frameDelta=";
    for (std::string line; std::getline(file, line);) {
        if (const auto at = line.find(mark); at != std::string::npos) {
            all.push_back(std::stod(line.substr(at + mark.size())));
        }
    }
    if (!all.empty()) {
        all.erase(all.begin());
    }
    return all;
}

double percentile(std::vector<double> values, double share) {
    if (values.empty()) {
        return 0.0;
    }
    std::ranges::sort(values);
    return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
}

} // namespace vornic
