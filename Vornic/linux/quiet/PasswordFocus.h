#pragma once

#include <optional>
#include <string>

namespace vornic {

/// An object of a program's interface, as the accessibility bus names it.
struct AccessibleObject {
    /// The program's name on the bus.
    std::string program;
    std::string path;

    bool operator==(const AccessibleObject&) const = default;
};

/// Keeps what the accessibility bus says about the keyboard's focus, and decides from it whether a
/// password is being typed. The bus tells moves of the focus but not what moved it, programs die
/// without a word, and answers come late: an answer about what has lost the focus meanwhile counts
/// for nothing. Thread: main.
class PasswordFocus {
  public:
    /// `object` has the focus now; its role is to be asked for.
    void focused(AccessibleObject object);

    /// `object` has it no more.
    void unfocused(const AccessibleObject& object);

    /// A window of `program` is no longer the active one, or the program is gone.
    void left(const std::string& program);

    /// The answer to what `object` is.
    void answered(const AccessibleObject& object, bool isPassword);

    /// Whether what has the focus takes a password.
    bool active() const { return isPassword_; }

    /// What to ask from time to time whether it still has the focus; absent while no password is
    /// typed.
    std::optional<AccessibleObject> toWatch() const { return isPassword_ ? object_ : std::nullopt; }

  private:
    void forget();

    std::optional<AccessibleObject> object_;
    bool isPassword_ = false;
};

} // namespace vornic
