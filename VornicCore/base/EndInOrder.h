#pragma once

namespace vornic {

/// Lets the program that is called `name` end with a message and status 1 where the system gives it
/// too little: an error that nobody expected, such as memory that is not there, does not abort it,
/// and a file that grows beyond what it may is an error of the writing instead of the end. To be
/// called first in `main`; `name` lives as long as the program. Thread: main.
void endInOrder(const char* name);

/// Ends it so. Thread: any.
[[noreturn]] void endWith(const char* message);

/// Ends it so unless it may open some dozens of files more and, with `windows`, has address space
/// for the libraries that draw them: those abort it themselves. Thread: main.
void requireRoom(bool windows);

} // namespace vornic
