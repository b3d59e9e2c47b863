#pragma once

#include <stdexcept>
#include <string>

namespace vornic {

/// Says what is wrong with a document, and where: "sounds[2].press.layers[0].gainDb: expected a
/// number, found a string". Thread: any, as everything here.
class JsonError : public std::runtime_error {
  public:
    /// `path` is empty for the document as a whole.
    JsonError(const std::string& path, const std::string& reason)
        : std::runtime_error((path.empty() ? "the document" : path) + ": " + reason), path_(path) {}

    const std::string& path() const { return path_; }

  private:
    std::string path_;
};

/// A document cannot be read.
class DecodeError : public JsonError {
    using JsonError::JsonError;
};

/// A value cannot be written.
class EncodeError : public JsonError {
    using JsonError::JsonError;
};

} // namespace vornic
