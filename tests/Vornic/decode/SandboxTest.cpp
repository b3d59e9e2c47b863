#include "Vornic/decode/Sandbox.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

namespace vornic {
namespace {

/// Does `work` inside, and ends with 0.
[[noreturn]] void inside(const std::function<void()>& work) {
    if (!enterSandbox()) {
        _exit(3);
    }
    work();
    _exit(0);
}

struct Refused {
    std::string what;
    std::function<void()> attempt;
};

class SandboxTest : public testing::TestWithParam<Refused> {};

TEST_P(SandboxTest, endsWhoAsksForMoreThanItGives) {
    EXPECT_EXIT(inside(GetParam().attempt), testing::KilledBySignal(SIGSYS), "");
}

void execute() {
    std::array<char*, 1> none{nullptr};
    execve("/bin/true", none.data(), none.data());
}

const std::array refused{
    Refused{"removeAFile", [] { (void)::unlink("x"); }},
    Refused{"lookAtAFile", [] { (void)::access("/etc/passwd", R_OK); }},
    Refused{"connect", [] { (void)::socket(AF_UNIX, SOCK_STREAM, 0); }},
    Refused{"connectToTheNetwork", [] { (void)::socket(AF_INET, SOCK_STREAM, 0); }},
    Refused{"startAProgram", execute},
    Refused{"fork", [] { (void)::fork(); }},
    Refused{"signalAnother", [] { (void)::kill(1, 0); }},
    Refused{"readAnotherDescriptor", [] { (void)::read(STDERR_FILENO, nullptr, 0); }},
    Refused{"readItsRequests", [] { (void)!::read(STDIN_FILENO, nullptr, 0); }},
    Refused{"sendADescriptor", [] { (void)!::sendmsg(STDIN_FILENO, nullptr, 0); }},
    Refused{"receiveElsewhere", [] { (void)!::recvmsg(receivedFile, nullptr, 0); }},
    Refused{"writeToItsInput", [] { (void)!::write(STDIN_FILENO, "x", 1); }},
    Refused{"executeMemory",
            [] {
                (void)mmap(nullptr, 4096, PROT_READ | PROT_EXEC, MAP_PRIVATE | MAP_ANONYMOUS, -1,
                           0);
            }},
    Refused{"raiseItsLimits", [] {
                const rlimit more{RLIM_INFINITY, RLIM_INFINITY};
                (void)setrlimit(RLIMIT_AS, &more);
            }}};

INSTANTIATE_TEST_SUITE_P(Attempts, SandboxTest, testing::ValuesIn(refused),
                         [](const auto& refusal) { return refusal.param.what; });

TEST(Sandbox, opensNoFile) {
    for (const char* const file : {"/etc/passwd", "/proc/self/mem", "/dev/null", "."}) {
        for (const int how : {O_RDONLY, O_RDWR, O_CREAT | O_WRONLY}) {
            EXPECT_EXIT(
                inside([=] { _exit(::open(file, how, 0600) == -1 && errno == EACCES ? 7 : 0); }),
                testing::ExitedWithCode(7), "")
                << file << " " << how;
        }
    }
}

TEST(Sandbox, leavesWhatDecodingNeeds) {
    EXPECT_EXIT(inside([] {
                    std::vector<std::vector<char>> memory;
                    for (std::size_t size = 16; size < (std::size_t{1} << 26U); size *= 2) {
                        memory.emplace_back(size, 'x');
                    }
                    (void)::lseek(receivedFile, 0, SEEK_CUR);
                    if (::write(STDOUT_FILENO, "", 0) != 0) {
                        _exit(1);
                    }
                }),
                testing::ExitedWithCode(0), "");
}

TEST(Sandbox, limitsMemory) {
    EXPECT_EXIT(inside([] {
                    constexpr std::size_t tooMuch = std::size_t{2} << 30U;
                    _exit(mmap(nullptr, tooMuch, PROT_READ | PROT_WRITE,
                               MAP_PRIVATE | MAP_ANONYMOUS, -1, 0) == MAP_FAILED
                              ? 7
                              : 0);
                }),
                testing::ExitedWithCode(7), "");
}

} // namespace
} // namespace vornic
