// A sanitizer maps terabytes, looks up symbols in files and writes reports: nobody can be locked in
// together with one. What is built with one only lets go of what it does not need.

#include "Vornic/decode/Sandbox.h"

#include <linux/close_range.h>
#include <unistd.h>

#include <climits>

namespace vornic {

bool enterSandbox() {
    return close_range(STDERR_FILENO + 1, UINT_MAX, 0) == 0;
}

} // namespace vornic
