#include "Vornic/linux/quiet/PasswordFocus.h"

#include <utility>

namespace vornic {

void PasswordFocus::focused(AccessibleObject object) {
    // A field that says so twice is still what it was.
    if (object_ != object) {
        object_ = std::move(object);
        isPassword_ = false;
    }
}

void PasswordFocus::unfocused(const AccessibleObject& object) {
    if (object_ == object) {
        forget();
    }
}

void PasswordFocus::left(const std::string& program) {
    if (object_ && object_->program == program) {
        forget();
    }
}

void PasswordFocus::answered(const AccessibleObject& object, bool isPassword) {
    if (object_ == object) {
        isPassword_ = isPassword;
    }
}

void PasswordFocus::forget() {
    object_.reset();
    isPassword_ = false;
}

} // namespace vornic
