#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace vornic {

/// How a request for the right to hear keys ended.
enum class PermissionAnswer : std::uint8_t {
    /// It was carried out; the tap notices by itself.
    granted,
    /// The user, or who may decide for them, said no. Asking again is fine.
    declined,
    /// It could not be asked for or carried out.
    failed,
};

/// "Turn on Input Monitoring…": asks the system for the right to hear keys.
/// Thread: main, as everything here.
class PermissionRequest {
  public:
    /// What came of it, and a sentence that says what to do, empty when granted.
    using Done = std::function<void(PermissionAnswer, const std::string& message)>;

    /// One point of the explanation, with its heading; the first one has none.
    struct Point {
        std::string heading;
        std::string text;
    };

    PermissionRequest() = default;
    PermissionRequest(const PermissionRequest&) = delete;
    PermissionRequest& operator=(const PermissionRequest&) = delete;
    virtual ~PermissionRequest() = default;

    /// What is read, what never happens, who else gains access, which file is made and how to take
    /// it back, in plain words: to be shown before `request`.
    virtual std::vector<Point> explanation() const = 0;

    /// Whether there is anything to ask.
    virtual bool possible() const = 0;

    /// Whether the user's agreement is in force, so that it can be taken back.
    virtual bool granted() const = 0;

    /// Asks, and calls `done` once; while an earlier request is not answered yet, its answer counts
    /// for both.
    virtual void request(Done done) = 0;

    /// Gives the right back, in the same way.
    virtual void revoke(Done done) = 0;
};

} // namespace vornic
