#include "tests/live/evdev/MockKeyboards.h"

#include <linux/input.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace vornic {

namespace {

std::string hexOf(const std::vector<unsigned char>& bytes) {
    constexpr const char* digits = "0123456789ABCDEF";
    std::string text;
    for (const unsigned char byte : bytes) {
        text += {digits[byte >> 4], digits[byte & 15]};
    }
    return text;
}

/// One answer of the kernel's, with the number that the call returns.
std::string answer(const std::string& call, const std::vector<unsigned char>& bytes) {
    return call + " " + std::to_string(bytes.size()) + " " + hexOf(bytes) + "\n";
}

/// What a keyboard with all ordinary keys answers to those who ask what it is. Each answer is as
/// long as the library asks for.
std::string answersOf(const std::string& device) {
    std::vector<unsigned char> kinds(8);
    kinds[0] = 1U << EV_SYN | 1U << EV_KEY | 1U << EV_MSC;
    std::vector<unsigned char> keys(KEY_CNT / 8);
    for (unsigned code = KEY_ESC; code < 128; ++code) {
        keys[code / 8] = static_cast<unsigned char>(keys[code / 8] | 1U << code % 8);
    }
    std::vector<unsigned char> name(255);
    name[0] = 'k';
    std::string text = "@DEV " + device + "\n";
    text += "EVIOCGVERSION 0 01000100\nEVIOCGID 0 1100010001004100\n";
    text += answer("EVIOCGNAME", name) + answer("EVIOCGPROP", std::vector<unsigned char>(8));
    text += answer("EVIOCGBIT(0)", kinds) + answer("EVIOCGBIT(1)", keys);
    for (const int kind : {EV_REL, EV_ABS, EV_MSC, EV_SW, EV_LED, EV_SND}) {
        text += answer("EVIOCGBIT(" + std::to_string(kind) + ")", std::vector<unsigned char>(8));
    }
    text += answer("EVIOCGBIT(" + std::to_string(EV_FF) + ")", std::vector<unsigned char>(16));
    for (const char* const state : {"EVIOCGLED", "EVIOCGSW"}) {
        text += answer(state, std::vector<unsigned char>(8));
    }
    return text + answer("EVIOCGKEY", std::vector<unsigned char>(KEY_CNT / 8));
}

void check(GError* error) {
    if (error != nullptr) {
        const std::string message = error->message;
        g_error_free(error);
        throw std::runtime_error(message);
    }
}

} // namespace

MockKeyboards::MockKeyboards() {
    const char* const preloaded = std::getenv("LD_PRELOAD");
    if (preloaded == nullptr || std::string_view(preloaded).find("umockdev") == std::string::npos) {
        throw std::runtime_error("run this test by ctest, which preloads umockdev's library");
    }
    testbed_.reset(umockdev_testbed_new());
}

std::string MockKeyboards::node(int number) {
    return "/dev/input/event" + std::to_string(number);
}

std::string MockKeyboards::systemPath(int number) const {
    const bool isVirtual = (virtualNumbers_ >> number & 1) != 0;
    return std::string(isVirtual ? "/devices/virtual/input" : "/devices/platform/i8042/serio0") +
           "/input" + std::to_string(number);
}

void MockKeyboards::plug(int number, bool isVirtual) {
    virtualNumbers_ = isVirtual ? virtualNumbers_ | std::uint64_t{1} << number
                                : virtualNumbers_ & ~(std::uint64_t{1} << number);
    const std::string parent = systemPath(number);
    const std::string child = parent + "/event" + std::to_string(number);
    const std::string properties = "E: SUBSYSTEM=input\nE: ID_INPUT=1\nE: ID_INPUT_KEYBOARD=1\n";
    const std::string description =
        "P: " + parent + "\n" + properties + "A: name=keyboard\n\nP: " + child +
        "\nN: input/event" + std::to_string(number) + "\nE: DEVNAME=" + node(number) +
        "\nE: MAJOR=13\nE: MINOR=" + std::to_string(64 + number) + "\n" + properties;
    GError* error = nullptr;
    umockdev_testbed_add_from_string(testbed_.get(), description.c_str(), &error);
    check(error);
    const std::string answers = folder_ / ("answers-" + std::to_string(number));
    std::ofstream(answers) << answersOf(node(number));
    umockdev_testbed_load_ioctl(testbed_.get(), node(number).c_str(), answers.c_str(), &error);
    check(error);
    umockdev_testbed_uevent(testbed_.get(), ("/sys" + child).c_str(), "add");
}

void MockKeyboards::unplug(int number) {
    const std::string child = "/sys" + systemPath(number) + "/event" + std::to_string(number);
    umockdev_testbed_uevent(testbed_.get(), child.c_str(), "remove");
    umockdev_testbed_remove_device(testbed_.get(), child.c_str());
}

std::filesystem::path MockKeyboards::folder() const {
    gchar* const root = umockdev_testbed_get_root_dir(testbed_.get());
    std::filesystem::path folder = root;
    g_free(root);
    return folder;
}

std::filesystem::path MockKeyboards::place(int number) const {
    return std::filesystem::canonical(folder() / ("dev/input/event" + std::to_string(number)));
}

void MockKeyboards::setReadable(int number, bool readable) {
    const std::filesystem::path folder = this->folder();
    namespace fs = std::filesystem;
    // What stands for the kernel is the testbed's alone at first, and the node may be a link.
    fs::permissions(folder, fs::perms(0755));
    for (const auto& entry : fs::recursive_directory_iterator(folder / "ioctl")) {
        fs::permissions(entry.path(), fs::perms::all);
    }
    fs::permissions(folder / "ioctl", fs::perms(0755));
    fs::permissions(place(number), fs::perms(readable ? 0666 : 0600));
}

namespace {

input_event eventAt(std::uint64_t nanos, int type, int code, std::int32_t value) {
    input_event event{};
    event.input_event_sec = static_cast<decltype(event.input_event_sec)>(nanos / 1'000'000'000);
    event.input_event_usec =
        static_cast<decltype(event.input_event_usec)>(nanos % 1'000'000'000 / 1000);
    event.type = static_cast<decltype(event.type)>(type);
    event.code = static_cast<decltype(event.code)>(code);
    event.value = value;
    return event;
}

} // namespace

void MockKeyboards::send(int number, std::uint16_t code, std::int32_t value, std::uint64_t nanos) {
    write(number,
          std::array{eventAt(nanos, EV_KEY, code, value), eventAt(nanos, EV_SYN, SYN_REPORT, 0)});
}

void MockKeyboards::overrun(int number, std::uint16_t code, std::uint64_t nanos) {
    write(number,
          std::array{eventAt(nanos, EV_SYN, SYN_DROPPED, 0), eventAt(nanos, EV_KEY, code, 1),
                     eventAt(nanos, EV_SYN, SYN_REPORT, 0)});
}

void MockKeyboards::write(int number, std::span<const input_event> events) {
    const int descriptor = umockdev_testbed_get_dev_fd(testbed_.get(), node(number).c_str());
    if (::write(descriptor, events.data(), events.size_bytes()) !=
        static_cast<ssize_t>(events.size_bytes())) {
        throw std::runtime_error("the keyboard takes no events");
    }
}

} // namespace vornic
