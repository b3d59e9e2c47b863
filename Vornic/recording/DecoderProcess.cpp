#include "Vornic/recording/DecoderProcess.h"

#include "Vornic/recording/DecodedHeader.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstring>
#include <span>
#include <string>
#include <utility>

namespace vornic {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr std::size_t blockSamples = 4096;
constexpr int pipeBytes = 1 << 20; // as much as everybody may have
constexpr double lowestRate = 1000;
constexpr double highestRate = 768000;
/// How often a wait looks whether it is to stop, and how long the helper may think in silence.
constexpr auto lookInterval = 50ms;
constexpr auto longestSilence = 20s;

/// A regular file, open for reading; -1 for anything else. Opening a pipe or a device could wait
/// for ever.
int openRegularFile(const fs::path& file) {
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    struct stat status{};
    if (descriptor >= 0 && (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))) {
        ::close(descriptor);
        return -1;
    }
    return descriptor;
}

/// Starts `program` with `input` and `output` as its standard input and output, and nothing else of
/// this process: no environment, no signals blocked. -1 where that fails.
pid_t spawn(std::string program, int input, int output) {
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawnattr_t attributes{};
    posix_spawnattr_init(&attributes);
    sigset_t signals;
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes, &signals);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
    std::array<char*, 2> arguments{program.data(), nullptr};
    std::array<char*, 1> environment{nullptr};
    pid_t process = -1;
    if (posix_spawn(&process, program.c_str(), &actions, &attributes, arguments.data(),
                    environment.data()) != 0) {
        process = -1;
    }
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return process;
}

/// The helper and the pipe that it writes to.
class Helper {
  public:
    Helper(const fs::path& program, const fs::path& file) {
        const int input = openRegularFile(file);
        std::array<int, 2> pipe{-1, -1};
        if (input >= 0 && ::pipe2(pipe.data(), O_CLOEXEC) == 0) {
            // Where many wait for the processor, few long turns are sooner done than many short
            // ones.
            ::fcntl(pipe[1], F_SETPIPE_SZ, pipeBytes);
            process_ = spawn(program.string(), input, pipe[1]);
            ::close(pipe[1]);
            output_ = pipe[0];
        }
        ::close(input);
    }

    ~Helper() {
        if (output_ >= 0) {
            ::close(output_);
        }
        if (process_ > 0) {
            ::kill(process_, SIGKILL);
            wait();
        }
    }
    Helper(const Helper&) = delete;
    Helper& operator=(const Helper&) = delete;

    /// Fills `bytes` as far as there is anything; how much that was. Less than asked for at the
    /// end, after an error and when stopped.
    std::size_t read(std::span<char> bytes, const std::stop_token& stop) {
        std::size_t got = 0;
        while (got < bytes.size() && process_ > 0 && waitForOutput(stop)) {
            const ssize_t count = ::read(output_, bytes.data() + got, bytes.size() - got);
            if (count > 0) {
                got += static_cast<std::size_t>(count);
            } else if (count == 0 || errno != EINTR) {
                break;
            }
        }
        return got;
    }

    /// After the end of the output: whether the helper has decoded everything.
    bool hasSucceeded() { return process_ > 0 && wait() == 0; }

  private:
    bool waitForOutput(const std::stop_token& stop) const {
        for (auto silence = 0ms; silence < longestSilence; silence += lookInterval) {
            if (stop.stop_requested()) {
                return false;
            }
            pollfd ready{output_, POLLIN, 0};
            if (::poll(&ready, 1, static_cast<int>(lookInterval.count())) > 0) {
                return true;
            }
        }
        return false;
    }

    int wait() {
        int status = -1;
        while (::waitpid(process_, &status, 0) < 0 && errno == EINTR) {
        }
        process_ = -1;
        return status;
    }

    pid_t process_ = -1;
    int output_ = -1;
};

class DecodedFile final : public AudioStream {
  public:
    DecodedFile(std::unique_ptr<Helper> helper, const DecodedHeader& header, std::stop_token stop)
        : helper_(std::move(helper)), header_(header), stop_(std::move(stop)) {}

    double rate() const override { return header_.rate; }

    std::optional<double> seconds() const override {
        return header_.seconds > 0.0 ? std::optional(header_.seconds) : std::nullopt;
    }

    Next read(std::vector<float>& mono) override {
        mono.clear();
        if (helper_ == nullptr) {
            return last_;
        }
        std::array<char, blockSamples * sizeof(float)> bytes{};
        const std::size_t count = helper_->read(bytes, stop_) / sizeof(float);
        if (count == 0 || stop_.stop_requested()) {
            last_ = !stop_.stop_requested() && helper_->hasSucceeded() ? Next::end : Next::error;
            helper_.reset();
            return last_;
        }
        mono.resize(count);
        std::memcpy(mono.data(), bytes.data(), count * sizeof(float));
        for (float& x : mono) {
            x = std::isfinite(x) ? x : 0.0F;
        }
        return Next::block;
    }

  private:
    std::unique_ptr<Helper> helper_; // none after the end
    DecodedHeader header_;
    std::stop_token stop_;
    Next last_ = Next::end;
};

} // namespace

fs::path findDecoder(const fs::path& program) {
    constexpr const char* name = "vornic-decode";
    const fs::path folder = program.parent_path();
    std::error_code ignored;
    for (const fs::path& file : {folder / name, folder / "../lib/vornic" / name}) {
        if (fs::is_regular_file(file, ignored)) {
            return file;
        }
    }
    return {};
}

std::unique_ptr<AudioStream> openWithDecoder(const fs::path& decoder, const fs::path& file,
                                             std::stop_token stop) {
    if (decoder.empty()) {
        return nullptr;
    }
    auto helper = std::make_unique<Helper>(decoder, file);
    std::array<char, sizeof(DecodedHeader)> bytes{};
    if (helper->read(bytes, stop) != bytes.size()) {
        return nullptr;
    }
    DecodedHeader header;
    std::memcpy(&header, bytes.data(), bytes.size());
    if (header.mark != DecodedHeader::expectedMark ||
        !(header.rate >= lowestRate && header.rate <= highestRate)) {
        return nullptr;
    }
    return std::make_unique<DecodedFile>(std::move(helper), header, std::move(stop));
}

} // namespace vornic
