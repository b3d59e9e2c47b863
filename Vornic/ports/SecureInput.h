#pragma once

#include "Vornic/ports/QuietWatch.h"

#include <cstdint>

namespace vornic {

/// Which programs tell that their field with the focus takes a password.
enum class PasswordFields : std::uint8_t { unknown, someTell, allThatCanTell };

/// Whether what is typed now is meant for nobody's ears: a password field has the focus, or the
/// screen is locked. Thread: main.
class SecureInput : public QuietWatch {
  public:
    /// Asks every program of the session to tell of its password fields, at the price that
    /// programs started from then on do a little more; `false` takes that back.
    virtual void noticeEverywhere(bool on) = 0;

    virtual PasswordFields told() const = 0;
};

} // namespace vornic
