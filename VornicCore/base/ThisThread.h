#pragma once

/// What a thread says of itself to the system. Thread: any.
namespace vornic::ThisThread {

/// Names the calling thread, and threads that it starts from then on, in the system's lists; at
/// most 15 characters.
void setName(const char* name);

/// Lets every ordinary thread of the program go before the calling one, and before those that it
/// starts from then on. It cannot be taken back.
void stepBack();

} // namespace vornic::ThisThread
