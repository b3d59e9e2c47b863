#include "VornicCore/base/JsonCodec.h"

#include <gtest/gtest.h>

namespace vornic {

namespace {

struct Thing {
    std::int64_t first = 0;
    double added = 2.5;

    bool operator==(const Thing&) const = default;
};

} // namespace

template <>
struct JsonRecord<Thing> {
    static constexpr auto members =
        std::tuple{JsonMember{"first", &Thing::first}, AddedJsonMember{"added", &Thing::added}};
};

namespace {

TEST(JsonRecord, anAddedMemberIsOptionalForEverAndOthersAreNot) {
    EXPECT_EQ(decodeJson<Thing>(R"({"first": 1})"), (Thing{1, 2.5}));
    EXPECT_EQ(decodeJson<Thing>(R"({"first": 1, "added": null})"), (Thing{1, 2.5}));
    EXPECT_THROW(decodeJson<Thing>(R"({"added": 1})"), DecodeError);
}

TEST(JsonRecord, anAddedMemberThatIsThereIsReadAsStrictlyAsAnyAndWritten) {
    EXPECT_EQ(decodeJson<Thing>(R"({"first": 1, "added": 7})"), (Thing{1, 7}));
    EXPECT_THROW(decodeJson<Thing>(R"({"first": 1, "added": "7"})"), DecodeError);
    EXPECT_EQ(decodeJson<Thing>(encodeJson(Thing{3, 4})), (Thing{3, 4}));
}

TEST(JsonRecord, anAddedMemberAtItsDefaultIsNotWritten) {
    EXPECT_EQ(encodeJson(Thing{3, 2.5}).find("added"), std::string::npos);
    EXPECT_NE(encodeJson(Thing{3, 0}).find("added"), std::string::npos);
}

} // namespace
} // namespace vornic
