#pragma once

#include "Vornic/ports/SecureInput.h"

namespace vornic {

/// For where nothing tells about password fields: none ever seems to have the focus.
class NoSecureInput final : public SecureInput {
  public:
    void start() override {}
    bool active() const override { return false; }
};

} // namespace vornic
