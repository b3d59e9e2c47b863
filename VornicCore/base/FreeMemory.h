#pragma once

namespace vornic {

/// Gives the system back what was freed and lies between what is in use. Allocators keep it for the
/// next request, which for a bank of sounds may never come; it takes some milliseconds.
/// Thread: any.
void returnFreeMemory();

} // namespace vornic
