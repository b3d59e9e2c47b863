#include "VornicCore/realtime/Fatal.h"

#include <unistd.h>

#include <cstdlib>
#include <cstring>

namespace vornic {

namespace {

void writeToStandardError(const char* text) noexcept {
    // The program is ending: a failed write leaves nothing better to do.
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, text, std::strlen(text));
}

} // namespace

void fatal(const char* check) noexcept {
    writeToStandardError("Vornic stopped: ");
    writeToStandardError(check);
    writeToStandardError("\n");
    std::abort();
}

} // namespace vornic
