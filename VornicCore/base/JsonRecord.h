#pragma once

#include <string_view>
#include <tuple>

namespace vornic {

/// A member of an object in a document and the field of the record that it stands for.
template <typename Record, typename Value>
struct JsonMember {
    std::string_view name;
    Value Record::* field;
};

/// A member that was added after the first version: documents from before do not have it, and then
/// the field keeps its default. At its default it is not written either, so that a document that
/// makes no use of it is the same for every version.
template <typename Record, typename Value>
struct AddedJsonMember {
    std::string_view name;
    Value Record::* field;
};

/// The members of a record, each required unless it was added or its field is a std::optional. A
/// type that is written to documents specialises it with `static constexpr auto members`, a tuple
/// of `JsonMember`s and `AddedJsonMember`s; reading and writing (JsonValue.h) both follow that one
/// list. Thread: any, as everything here.
template <typename Record>
struct JsonRecord;

template <typename Record>
concept HasJsonRecord = requires { std::tuple_size_v<decltype(JsonRecord<Record>::members)>; };

} // namespace vornic
