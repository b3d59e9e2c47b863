#pragma once

#include <cstdlib>
#include <string>

namespace vornic {

/// A variable of the environment, which gets back what it had at the end.
class Environment {
  public:
    explicit Environment(const char* name) : name_(name) {
        if (const char* const value = std::getenv(name)) {
            former_ = value;
            was_ = true;
        }
    }
    ~Environment() {
        if (was_) {
            setenv(name_, former_.c_str(), 1);
        } else {
            unsetenv(name_);
        }
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

    void set(const std::string& value) const { setenv(name_, value.c_str(), 1); }
    void unset() const { unsetenv(name_); }

  private:
    const char* name_;
    std::string former_;
    bool was_ = false;
};

} // namespace vornic
