// A client of the key reader's that stands for the installed program: "hear SOCKET" answers what it
// is asked and prints how it stands, "sleep" does nothing.

#include "Vornic/reader/ReaderMessages.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <string_view>

int main(int argc, char** argv) {
    using namespace vornic;
    if (argc < 3 || std::string_view(argv[1]) != "hear") {
        return ::pause();
    }
    const std::string_view path = argv[2];
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::ranges::copy(path, address.sun_path);
    const int socket = ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
    if (::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        return 2;
    }
    std::array<std::uint8_t, longestReaderPacket> packet{};
    for (;;) {
        const ssize_t got = ::recv(socket, packet.data(), packet.size(), 0);
        const auto message =
            messageOf({packet.data(), got > 0 ? static_cast<std::size_t>(got) : 0});
        if (!message) {
            std::puts("refused");
            return 0;
        }
        if (const auto* const standing = std::get_if<ReaderStanding>(&*message)) {
            std::puts(*standing == ReaderStanding::hearing ? "hearing" : "not hearing");
            return 0;
        }
        const auto answer = packetOf(*message);
        if (::send(socket, answer.data(), answer.size(), 0) < 0) {
            return 2;
        }
    }
}
