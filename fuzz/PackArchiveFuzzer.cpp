#include "VornicCore/foreign/PackFiles.h"
#include "VornicCore/realtime/Fatal.h"

#include <sys/mman.h>
#include <unistd.h>

#include <string>

/// Whatever an archive is, its files have plain names and lie in one folder of their own.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace vornic;
    static const int file = ::memfd_create("archive", MFD_CLOEXEC);
    require(::ftruncate(file, 0) == 0 && ::pwrite(file, data, size, 0) >= 0, "memory for a file");
    try {
        const auto files = openArchive("/proc/self/fd/" + std::to_string(file),
                                       [](const FileToRead& opened, ArchiveSink& sink) {
                                           readArchive(opened.descriptor(), sink);
                                       });
        for (const std::string& name : files->names()) {
            require(plainName(name) == name, "no name leads elsewhere");
            require(files->path(name).parent_path() == files->path(files->names()[0]).parent_path(),
                    "all lie in one folder");
        }
    } catch (const ForeignPackError&) {
        return 0;
    }
    return 0;
}
