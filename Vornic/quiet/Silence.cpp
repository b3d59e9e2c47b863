#include "Vornic/quiet/Silence.h"

namespace vornic {

std::optional<Silence> silence(const QuietFacts& facts) {
    if (facts.recording) {
        return Silence::recording;
    }
    if (!facts.soundsOn) {
        return Silence::off;
    }
    if (facts.quietDuringCalls && facts.micInUse) {
        return Silence::microphone;
    }
    if (facts.secureInput) {
        return Silence::password;
    }
    return std::nullopt;
}

std::string statusLine(std::optional<Silence> reason, std::string_view boardName,
                       Placement placement) {
    if (reason) {
        return std::string(label(*reason));
    }
    return std::string(boardName) + " · " +
           (placement == Placement::close ? "Close" : "On the desk");
}

} // namespace vornic
