#pragma once

#include <cstdint>
#include <filesystem>
#include <set>
#include <string_view>

namespace vornic {

/// How many keys stand in a keyboard's lowest letter row: an ISO one has one more, beside the left
/// Shift, and its key left of 1 is another than an ANSI one's.
enum class KeyboardForm : std::uint8_t { ansi, iso };

/// The form of the keyboards that are sold for an XKB layout; of several ("de,us") the first one
/// counts. Thread: any.
KeyboardForm formOfLayout(std::string_view layouts);

/// The form of the layout that this computer is set up for; ANSI where nothing says. `file` is the
/// one in which Debian keeps it. Thread: any.
KeyboardForm configuredForm(const std::filesystem::path& file = "/etc/default/keyboard");

/// Virtual key codes by the form of each keyboard. No keyboard tells its form, and most claim every
/// key there is; so it has the form that is usual here, until the key is pressed that only an ISO
/// one has. Thread: key.
class KeyboardForms {
  public:
    explicit KeyboardForms(KeyboardForm usual) : usual_(usual) {}

    /// The virtual key code of a key that moves on `keyboard`, in the kernel's numbers.
    std::int64_t keyCode(std::uint32_t keyboard, std::uint32_t evdevCode);

  private:
    KeyboardForm usual_;
    std::set<std::uint32_t> iso_; // keyboards that have shown it
};

} // namespace vornic
