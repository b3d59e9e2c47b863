// Reads the files that its standard input, a socket, brings as descriptors, and writes what is in
// them to its standard output; HelperTalk.h says how. All files that others made come through here:
// a process of its own that can do nothing else, so that a hostile one harms nothing.

#ifdef VORNIC_LIBAV
#include "Vornic/decode/AvFile.h"
#endif
#include "Vornic/decode/Sandbox.h"
#include "Vornic/recording/HelperTalk.h"
#include "VornicCore/audiofiles/SoundFile.h"
#include "VornicCore/foreign/ForeignPack.h"
#include "VornicCore/foreign/PackBytes.h"
#include "VornicCore/foreign/ReadArchive.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vornic {
namespace {

/// Without the standard library's streams, which ask about what they write to.
bool write(std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(STDOUT_FILENO, bytes.data(), bytes.size());
        if (written <= 0) {
            return false;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return true;
}

template <typename Value>
bool writeValue(const Value& value) {
    return write(std::as_bytes(std::span(&value, 1)));
}

/// Waits for the next file, which is then open as `receivedFile`; nothing at the end.
std::optional<HelperDuty> receive() {
    char letter = 0;
    iovec content{&letter, sizeof(letter)};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> control{};
    msghdr message{};
    message.msg_iov = &content;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    if (::recvmsg(STDIN_FILENO, &message, 0) != 1) {
        return std::nullopt;
    }
    const cmsghdr* const head = CMSG_FIRSTHDR(&message);
    int descriptor = -1;
    if (head == nullptr || head->cmsg_type != SCM_RIGHTS ||
        head->cmsg_len != CMSG_LEN(sizeof(int))) {
        return std::nullopt;
    }
    std::memcpy(&descriptor, CMSG_DATA(head), sizeof(int));
    return descriptor == receivedFile ? std::optional(static_cast<HelperDuty>(letter))
                                      : std::nullopt;
}

std::unique_ptr<AudioStream> openSound() {
    std::unique_ptr<AudioStream> stream = openSoundFile(receivedFile);
#ifdef VORNIC_LIBAV
    if (stream == nullptr) {
        stream = openAvFile(receivedFile);
    }
#endif
    return stream;
}

/// False where nobody reads what it writes.
bool decode() {
    const std::unique_ptr<AudioStream> stream = openSound();
    DecodedHeader header;
    if (stream == nullptr) {
        return writeValue(header);
    }
    header.rate = stream->rate();
    header.seconds = stream->seconds().value_or(header.seconds);
    if (!writeValue(header)) {
        return false;
    }
    std::vector<float> mono;
    AudioStream::Next next = AudioStream::Next::end;
    while ((next = stream->read(mono)) == AudioStream::Next::block) {
        const DecodedBlock block{DecodedBlock::Kind::samples,
                                 static_cast<std::uint32_t>(mono.size())};
        if (!writeValue(block) || !write(std::as_bytes(std::span(mono)))) {
            return false;
        }
    }
    return writeValue(DecodedBlock{
        next == AudioStream::Next::end ? DecodedBlock::Kind::end : DecodedBlock::Kind::error, 0});
}

/// Nobody reads what is written.
struct NoReader {};

/// Tells the program of an archive. Throws NoReader.
class FrameWriter final : public ArchiveSink {
  public:
    void entry(Entry kind, const std::string& name) override {
        put(kind == Entry::file      ? ArchiveFrame::Kind::file
            : kind == Entry::special ? ArchiveFrame::Kind::special
                                     : ArchiveFrame::Kind::locked,
            bytesOf(name));
    }
    void content(std::span<const std::byte> bytes) override {
        put(ArchiveFrame::Kind::content, bytes);
    }
    void endFile(bool whole) override {
        put(whole ? ArchiveFrame::Kind::whole : ArchiveFrame::Kind::damaged, {});
    }
    void cutShort() override { put(ArchiveFrame::Kind::cutShort, {}); }
    void end() { put(ArchiveFrame::Kind::end, {}); }
    void fail(const std::string& sentence) { put(ArchiveFrame::Kind::failure, bytesOf(sentence)); }

  private:
    static std::span<const std::byte> bytesOf(const std::string& text) {
        constexpr std::size_t longest = 65536;
        return std::as_bytes(std::span(text)).first(std::min(text.size(), longest));
    }
    static void put(ArchiveFrame::Kind kind, std::span<const std::byte> bytes) {
        if (!writeValue(ArchiveFrame{kind, static_cast<std::uint32_t>(bytes.size())}) ||
            !write(bytes)) {
            throw NoReader();
        }
    }
};

bool unpack() {
    FrameWriter writer;
    try {
        readArchive(receivedFile, writer);
        writer.end();
    } catch (const ForeignPackError& error) {
        writer.fail(error.what());
    }
    return true;
}

/// Everything in the file that was received.
std::string content() {
    const off_t size = ::lseek(receivedFile, 0, SEEK_END);
    if (size < 0 || ::lseek(receivedFile, 0, SEEK_SET) != 0) {
        return {};
    }
    std::string bytes(static_cast<std::size_t>(size), '\0');
    std::size_t got = 0;
    while (got < bytes.size()) {
        const ssize_t count = ::read(receivedFile, bytes.data() + got, bytes.size() - got);
        if (count <= 0) {
            break;
        }
        got += static_cast<std::size_t>(count);
    }
    bytes.resize(got);
    return bytes;
}

bool lookForPacks() {
    const std::string packs = bytesOfPacksIn(content());
    return writeValue(PacksHeader{packs.size()}) && write(std::as_bytes(std::span(packs)));
}

bool fulfil(HelperDuty duty) {
    switch (duty) {
    case HelperDuty::sound:
        return decode();
    case HelperDuty::archive:
        return unpack();
    case HelperDuty::descriptions:
        return lookForPacks();
    }
    return false;
}

/// One file after the other, until there is none any more.
bool serve() {
    try {
        while (const std::optional<HelperDuty> duty = receive()) {
            if (!fulfil(*duty)) {
                return false;
            }
            ::close(receivedFile);
        }
        return true;
    } catch (const NoReader&) {
        return false;
    } catch (const std::exception&) {
        // Too large for the memory there is, or nothing that the program sends.
        return false;
    }
}

bool isSocket(int descriptor) {
    struct stat status{};
    return ::fstat(descriptor, &status) == 0 && S_ISSOCK(status.st_mode);
}

} // namespace
} // namespace vornic

int main(int argc, char** /*argv*/) {
    if (argc != 1 || !vornic::isSocket(STDIN_FILENO)) {
        std::fputs("vornic-decode is started by vornic.\n", stderr);
        return EXIT_FAILURE;
    }
    const bool succeeded = vornic::enterSandbox() && vornic::serve();
    // Nothing of the libraries' own endings, which may ask for more than is allowed.
    _exit(succeeded ? EXIT_SUCCESS : EXIT_FAILURE);
}
