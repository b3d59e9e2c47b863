#include "tests/live/soak/SoakedProgram.h"

#include <csignal>
#include <numeric>
#include <stdexcept>

namespace vornic {

namespace fs = std::filesystem;

std::int64_t KeyCounts::withoutReason() const {
    return std::accumulate(
        dropped.begin(), dropped.end(), pressed + released + auditions - started,
        [](std::int64_t left, const auto& reason) { return left - reason.second; });
}

SoakedProgram::SoakedProgram(ChildProcess::Environment environment)
    : environment_(std::move(environment)) {
    environment_.emplace_back("XDG_CONFIG_HOME", (folder_ / "config").string());
    environment_.emplace_back("XDG_DATA_HOME", (folder_ / "data").string());
    environment_.emplace_back("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    folder_.write("config/Vornic/settings.json", R"({"welcomed": true})");
    process_ = std::make_unique<ChildProcess>(
        std::vector<std::string>{VORNIC_PROGRAM, "--packs", VORNIC_BUILT_PACKS}, environment_,
        (folder_ / "vornic.log").string());
}

std::string SoakedProgram::say(const std::vector<std::string>& words) const {
    const fs::path answer = folder_ / "answer";
    fs::remove(answer);
    std::vector<std::string> command{VORNIC_PROGRAM};
    command.insert(command.end(), words.begin(), words.end());
    if (ChildProcess(command, environment_, answer.string()).wait() != 0) {
        throw std::runtime_error("vornic " + words.front() + ": " + readBytes(answer) + log());
    }
    return readBytes(answer);
}

nlohmann::json SoakedProgram::status() const {
    return nlohmann::json::parse(say({"status", "--json"}));
}

KeyCounts SoakedProgram::counts() const {
    const nlohmann::json now = status();
    return {.pressed = now.at("pressed"),
            .released = now.at("released"),
            .auditions = now.at("auditions"),
            .started = now.at("started"),
            .stolen = now.at("stolen"),
            .dropped = now.at("dropped")};
}

ProcessFacts SoakedProgram::facts() const {
    return factsOf(process_->id());
}

fs::path SoakedProgram::exported(const std::string& board) const {
    const fs::path file = folder_ / (board + ".vornic");
    say({"export", board, file.string(), "--packs", VORNIC_BUILT_PACKS});
    return file;
}

bool SoakedProgram::lives() const {
    return process_->runs();
}

std::string SoakedProgram::log() const {
    return readBytes(folder_ / "vornic.log");
}

int SoakedProgram::end() {
    process_->send(SIGTERM);
    return process_->wait();
}

} // namespace vornic
