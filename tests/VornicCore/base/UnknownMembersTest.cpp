#include "VornicCore/base/UnknownMembers.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace vornic {
namespace {

using nlohmann::json;

/// What `document` becomes: read as `understood`, changed into `changed` and written again.
json rewritten(const json& document, const json& understood, json changed) {
    UnknownMembers::in(document, understood).addTo(changed);
    return changed;
}

TEST(UnknownMembers, areKeptAtEveryDepth) {
    const json document =
        json::parse(R"({"new": {"deep": [1]}, "name": "a", "chain": {"later": null, "drive": 1}})");
    const json understood = json::parse(R"({"name": "a", "chain": {"drive": 1}})");
    EXPECT_EQ(rewritten(document, understood, understood), document);
    EXPECT_TRUE(UnknownMembers::in(understood, understood).empty());
}

TEST(UnknownMembers, whatIsKnownIsWrittenAsItIsNow) {
    const json document = json::parse(R"({"new": 1, "name": "a"})");
    const json understood = json::parse(R"({"name": "a"})");
    EXPECT_EQ(rewritten(document, understood, json::parse(R"({"name": "b", "new": 2})")),
              json::parse(R"({"name": "b", "new": 2})"));
}

TEST(UnknownMembers, followTheElementsOfAnArrayByTheirIds) {
    const json document =
        json::parse(R"({"sounds": [{"id": "a", "new": 1}, {"id": "b", "new": 2}]})");
    const json understood = json::parse(R"({"sounds": [{"id": "a"}, {"id": "b"}]})");
    EXPECT_EQ(
        rewritten(document, understood,
                  json::parse(R"({"sounds": [{"id": "c"}, {"id": "b"}, {"id": "a"}]})")),
        json::parse(R"({"sounds": [{"id": "c"}, {"id": "b", "new": 2}, {"id": "a", "new": 1}]})"));
}

TEST(UnknownMembers, withoutIdsFollowThePlace) {
    const json document = json::parse(R"({"modes": [{"f": 1}, {"f": 2, "new": 3}]})");
    const json understood = json::parse(R"({"modes": [{"f": 1}, {"f": 2}]})");
    EXPECT_EQ(rewritten(document, understood, json::parse(R"({"modes": [{"f": 5}, {"f": 6}]})")),
              json::parse(R"({"modes": [{"f": 5}, {"f": 6, "new": 3}]})"));
}

TEST(UnknownMembers, neverBringBackWhatIsGone) {
    const json document = json::parse(R"({"keys": {"49": {"gainDb": 1, "new": 2}}})");
    const json understood = json::parse(R"({"keys": {"49": {"gainDb": 1}}})");
    EXPECT_EQ(rewritten(document, understood, json::parse(R"({"keys": {}})")),
              json::parse(R"({"keys": {}})"));
}

TEST(UnknownMembers, areKeptUpTo64KiBOfADocument) {
    const std::string half(40'000, 'x');
    json document = json::object();
    document["a"] = half;
    document["b"] = half;
    document["c"] = 1;
    const json kept = rewritten(document, json::object(), json::object());
    EXPECT_TRUE(kept.contains("a"));
    EXPECT_FALSE(kept.contains("b"));
    EXPECT_TRUE(kept.contains("c"));
}

} // namespace
} // namespace vornic
