#pragma once

#include "VornicCore/audiofiles/AudioStream.h"

#include <memory>

namespace vornic {

/// The first good audio stream of the regular file `descriptor`, which stays the caller's, decoded
/// by libavformat and libavcodec; channels are averaged. None for a file that is none of the
/// formats phones and recorders write. Only reads and seeks. Thread: any.
std::unique_ptr<AudioStream> openAvFile(int descriptor);

} // namespace vornic
