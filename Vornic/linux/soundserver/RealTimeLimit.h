#pragma once

namespace vornic {

/// What becomes of an audio thread that the system lets run before all others, and that does not
/// sleep for longer than the system allows such threads: without this, the kernel ends the whole
/// program without a word. With it the thread becomes an ordinary one and the sound goes on.
namespace RealTimeLimit {

/// Sees to that from now on. Cheap, and repeated when the limits may have changed: the library sets
/// them when it asks for the right. Thread: any but real-time.
void soften();

/// Whether a thread has lost the right since the program's start. Thread: any.
bool wasExceeded();

} // namespace RealTimeLimit

} // namespace vornic
