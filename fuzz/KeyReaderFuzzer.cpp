#include "Vornic/reader/Admission.h"
#include "Vornic/reader/ReaderMessages.h"
#include "VornicCore/realtime/Fatal.h"

#include "fuzz/FuzzFolder.h"
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <span>
#include <string_view>

namespace {

/// A process that tells of its memory what it likes.
bool isLetIn(const std::uint8_t* memory, std::size_t size) {
    namespace fs = std::filesystem;
    static const vornic::FuzzFolder folder;
    const fs::path about = folder.put("maps", memory, size).parent_path();
    const fs::path program = about / "vornic";
    std::ofstream(program) << "code";
    fs::permissions(program, fs::perms(0755));
    fs::create_directory(about / "ns");
    fs::create_symlink(program, about / "exe");
    fs::create_symlink("/proc/self/ns/user", about / "ns/user");
    return vornic::whyRefused(about, program, ::getuid()).empty();
}

} // namespace

/// What comes over the socket, on either side of it, and what a process says of itself: a packet
/// that is taken for a message is the one that would be written for it, and nobody is let in who
/// has code of which no file is told.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span<const std::uint8_t> input(data, size);
    if (const auto message = vornic::messageOf(input)) {
        const auto packet = vornic::packetOf(*message);
        vornic::require(std::ranges::equal(packet, input), "one packet for each message");
        vornic::require(size <= vornic::longestReaderPacket, "no packet is longer");
    }
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    vornic::require(!isLetIn(data, size) || text.find("/usr/") != text.npos ||
                        text.find("/vornic") != text.npos,
                    "who is let in runs code of the system's");
    return 0;
}
