#pragma once

#include <memory>
#include <utility>

namespace vornic {

/// Lets work that waits somewhere find out that the object it was meant for has gone, or does not
/// want it any more. A member of that object, which ends it with itself:
///
///     scheduler.post(lifetime_.guard([this] { tell(); }));
///
/// Thread: any for `guard`; what it returns is called, and the lifetime ended, on one thread.
class Lifetime {
  public:
    Lifetime() = default;
    Lifetime(const Lifetime&) = delete;
    Lifetime& operator=(const Lifetime&) = delete;
    ~Lifetime() = default;

    /// `work`, and nothing once this lifetime has ended.
    template <typename Work>
    [[nodiscard]] auto guard(Work work) const {
        return [token = std::weak_ptr(token_), work = std::move(work)](auto&&... values) {
            if (!token.expired()) {
                work(std::forward<decltype(values)>(values)...);
            }
        };
    }

    /// Ends this lifetime and begins another: what was guarded before does nothing any more. Not
    /// while another thread guards something.
    void renew() { token_ = std::make_shared<Token>(); }

  private:
    struct Token {};
    std::shared_ptr<Token> token_ = std::make_shared<Token>();
};

} // namespace vornic
