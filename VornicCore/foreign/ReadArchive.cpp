#include "VornicCore/foreign/ReadArchive.h"

#include "VornicCore/foreign/ForeignPack.h"

#include <archive.h>
#include <archive_entry.h>
#include <unistd.h>

#include <array>
#include <memory>

namespace vornic {

namespace {

constexpr const char* noPack = "It is no sound pack that Vornic knows.";

struct CloseArchive {
    void operator()(archive* reader) const { archive_read_free(reader); }
};
using Reader = std::unique_ptr<archive, CloseArchive>;

/// What the library reads through: its own ways ask the system for more than a closely watched
/// process may.
struct Source {
    int descriptor;
    std::array<char, 65536> block{};
};

la_ssize_t readSome(archive* /*reader*/, void* user, const void** block) {
    auto& source = *static_cast<Source*>(user);
    *block = source.block.data();
    return ::read(source.descriptor, source.block.data(), source.block.size());
}

la_int64_t seek(archive* /*reader*/, void* user, la_int64_t offset, int whence) {
    const off_t place = ::lseek(static_cast<Source*>(user)->descriptor, offset, whence);
    return place >= 0 ? place : ARCHIVE_FATAL;
}

Reader open(Source& source) {
    Reader reader(archive_read_new());
    if (!reader) {
        throw ForeignPackError("There is not enough memory.");
    }
    // What packs come in. The library knows many more, which nobody has asked for and whose
    // readers would be open to whoever sends a file.
    archive_read_support_format_zip(reader.get());
    archive_read_support_format_tar(reader.get());
    archive_read_support_filter_gzip(reader.get());
    archive_read_support_filter_bzip2(reader.get());
    archive_read_support_filter_xz(reader.get());
    archive_read_support_filter_zstd(reader.get());
    archive_read_set_callback_data(reader.get(), &source);
    archive_read_set_read_callback(reader.get(), readSome);
    archive_read_set_seek_callback(reader.get(), seek);
    if (::lseek(source.descriptor, 0, SEEK_SET) != 0 ||
        archive_read_open1(reader.get()) != ARCHIVE_OK) {
        throw ForeignPackError(noPack);
    }
    return reader;
}

void readContent(archive* reader, ArchiveSink& sink) {
    std::array<std::byte, 65536> piece{};
    for (;;) {
        const la_ssize_t got = archive_read_data(reader, piece.data(), piece.size());
        if (got <= 0) {
            sink.endFile(got == 0);
            return;
        }
        sink.content(std::span(piece).first(static_cast<std::size_t>(got)));
    }
}

void readEntry(archive* reader, archive_entry* entry, ArchiveSink& sink) {
    if (archive_entry_filetype(entry) == AE_IFDIR) {
        return;
    }
    const char* raw = archive_entry_pathname_utf8(entry);
    raw = raw != nullptr ? raw : archive_entry_pathname(entry);
    const std::string name = raw != nullptr ? raw : "";
    if (archive_entry_filetype(entry) != AE_IFREG || archive_entry_hardlink(entry) != nullptr ||
        archive_entry_symlink(entry) != nullptr) {
        sink.entry(ArchiveSink::Entry::special, name);
    } else if (archive_entry_is_encrypted(entry) != 0) {
        sink.entry(ArchiveSink::Entry::locked, name);
    } else {
        sink.entry(ArchiveSink::Entry::file, name);
        readContent(reader, sink);
    }
}

} // namespace

void readArchive(int descriptor, ArchiveSink& sink) {
    Source source{descriptor};
    const Reader reader = open(source);
    archive_entry* entry = nullptr;
    std::size_t seen = 0;
    for (;; ++seen) {
        const int state = archive_read_next_header(reader.get(), &entry);
        if (state == ARCHIVE_EOF) {
            break;
        }
        if (state < ARCHIVE_WARN) {
            if (seen == 0) {
                throw ForeignPackError(noPack);
            }
            sink.cutShort();
            break;
        }
        if (seen >= PackLimits::mostFiles) {
            throw ForeignPackError("The archive has more than " +
                                   std::to_string(PackLimits::mostFiles) + " entries.");
        }
        readEntry(reader.get(), entry, sink);
    }
    if (seen == 0) {
        throw ForeignPackError("The archive is empty.");
    }
}

} // namespace vornic
