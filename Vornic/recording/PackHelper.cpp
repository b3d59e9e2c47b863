#include "Vornic/recording/PackHelper.h"

#include "VornicCore/foreign/PackBytes.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <span>
#include <string>

namespace vornic {

namespace {

constexpr std::uint32_t mostFrame = 1U << 20U;

[[noreturn]] void failDamaged() {
    throw ForeignPackError("It is damaged, or no sound pack that Vornic knows.");
}

/// A file in memory.
class MemoryFile {
  public:
    explicit MemoryFile(std::span<const std::byte> bytes)
        : descriptor_(::memfd_create("pack", MFD_CLOEXEC)) {
        while (descriptor_ >= 0 && !bytes.empty()) {
            const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
            if (written <= 0) {
                ::close(descriptor_);
                descriptor_ = -1;
                break;
            }
            bytes = bytes.subspan(static_cast<std::size_t>(written));
        }
        if (descriptor_ < 0) {
            throw ForeignPackError("There is not enough memory.");
        }
    }
    ~MemoryFile() { ::close(descriptor_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    int descriptor() const { return descriptor_; }

  private:
    int descriptor_;
};

} // namespace

HelperProcess& PackHelper::give(HelperDuty duty, int descriptor) {
    if (program_.empty()) {
        throw ForeignPackError(
            "Sound packs are read by the helper vornic-decode, which is not installed.");
    }
    if (!helper_ || !helper_->isFree()) {
        helper_ = std::make_unique<HelperProcess>(program_);
    }
    if (!helper_->give(duty, descriptor)) {
        throw ForeignPackError("The helper vornic-decode could not be started.");
    }
    return *helper_;
}

void PackHelper::readArchive(const FileToRead& file, ArchiveSink& sink) {
    readFrames(give(HelperDuty::archive, file.descriptor()), sink);
}

void PackHelper::readFrames(HelperProcess& helper, ArchiveSink& sink) {
    std::string bytes;
    bool inFile = false;
    for (;;) {
        ArchiveFrame frame;
        if (!helper.readValue(frame, stop_) || frame.size > mostFrame) {
            failDamaged();
        }
        bytes.resize(frame.size);
        const auto into = std::as_writable_bytes(std::span(bytes));
        if (helper.read(into, stop_) != into.size()) {
            failDamaged();
        }
        const bool ofFile = frame.kind == ArchiveFrame::Kind::content ||
                            frame.kind == ArchiveFrame::Kind::whole ||
                            frame.kind == ArchiveFrame::Kind::damaged;
        if (inFile != ofFile) {
            failDamaged();
        }
        switch (frame.kind) {
        case ArchiveFrame::Kind::file:
            inFile = true;
            sink.entry(ArchiveSink::Entry::file, bytes);
            break;
        case ArchiveFrame::Kind::special:
            sink.entry(ArchiveSink::Entry::special, bytes);
            break;
        case ArchiveFrame::Kind::locked:
            sink.entry(ArchiveSink::Entry::locked, bytes);
            break;
        case ArchiveFrame::Kind::content:
            sink.content(into);
            break;
        case ArchiveFrame::Kind::whole:
        case ArchiveFrame::Kind::damaged:
            inFile = false;
            sink.endFile(frame.kind == ArchiveFrame::Kind::whole);
            break;
        case ArchiveFrame::Kind::cutShort:
            sink.cutShort();
            break;
        case ArchiveFrame::Kind::end:
            helper.setFree();
            return;
        case ArchiveFrame::Kind::failure:
            helper.setFree();
            throw ForeignPackError(plainLine(bytes));
        default:
            failDamaged();
        }
    }
}

std::vector<FoundPack> PackHelper::findPacks(const PackFiles& files, const FindOptions& options) {
    const std::string folder = bytesOfFolder(files, options);
    const MemoryFile sent(std::as_bytes(std::span(folder)));
    HelperProcess& helper = give(HelperDuty::descriptions, sent.descriptor());
    PacksHeader header;
    if (!helper.readValue(header, stop_) || header.size > mostPackBytes) {
        failDamaged();
    }
    std::string bytes(header.size, '\0');
    if (helper.read(std::as_writable_bytes(std::span(bytes)), stop_) != bytes.size()) {
        failDamaged();
    }
    helper.setFree();
    return packsOfBytes(bytes, files);
}

} // namespace vornic
