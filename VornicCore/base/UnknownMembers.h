#pragma once

#include <nlohmann/json_fwd.hpp>

#include <cstddef>
#include <map>
#include <memory>
#include <string>

namespace vornic {

/// The members of a document that this version does not know, to be written again with the values
/// that it does know: a newer version may have put them there. Thread: any.
class UnknownMembers {
  public:
    /// The bytes that are kept of one document; what comes after is dropped.
    static constexpr std::size_t largest = 65536;

    UnknownMembers() = default;

    /// What stands in `document` and not in `understood`, which is what has been read from it,
    /// written again. Elements of arrays are told apart by their "id", or else by their place.
    static UnknownMembers in(const nlohmann::json& document, const nlohmann::json& understood);

    /// Puts them into a document of the same kind, as far as the objects that had them are still
    /// there; what stands in the document already stays.
    void addTo(nlohmann::json& document) const;

    bool empty() const { return root_ == nullptr; }

  private:
    struct Node;
    std::shared_ptr<const Node> root_; // null: none
};

} // namespace vornic
