#include "Vornic/commands/KeyFile.h"
#include "VornicCore/realtime/Fatal.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// Whatever the bytes are, they make events in order within the hour, or the declared error.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        const auto events = vornic::parseKeyFile({reinterpret_cast<const char*>(data), size});
        vornic::require(std::ranges::is_sorted(events, {}, &vornic::KeyEvent::millis),
                        "events come in order");
        for (const vornic::KeyEvent& event : events) {
            vornic::require(event.millis >= 0 && event.millis <= vornic::longestKeyFileMillis,
                            "events are within the hour");
        }
    } catch (const vornic::KeyFileError&) {
    }
    return 0;
}
