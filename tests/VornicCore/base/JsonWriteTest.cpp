#include "VornicCore/base/JsonDocument.h"
#include "VornicCore/base/JsonError.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdint>
#include <limits>

namespace vornic {
namespace {

using nlohmann::json;

std::string failure(const json& document) {
    try {
        writeJson(document);
        return {};
    } catch (const EncodeError& error) {
        return error.what();
    }
}

TEST(JsonWrite, sortsMembersAndIndentsByTwo) {
    EXPECT_EQ(writeJson({{"b", {1, 2.5, "x"}},
                         {"a", {{"z", true}, {"B", nullptr}}},
                         {"empty", json::array()},
                         {"none", json::object()}}),
              R"({
  "a": {
    "B": null,
    "z": true
  },
  "b": [
    1,
    2.5,
    "x"
  ],
  "empty": [],
  "none": {}
})");
}

TEST(JsonWrite, writesNumbersInTheirShortestForm) {
    EXPECT_EQ(writeJson(json(5.0)), "5");
    EXPECT_EQ(writeJson(json(-0.0)), "-0.0");
    EXPECT_EQ(writeJson(json(std::numeric_limits<std::int64_t>::min())), "-9223372036854775808");
    EXPECT_EQ(writeJson(json(std::numeric_limits<std::uint64_t>::max())), "18446744073709551615");
}

TEST(JsonWrite, escapesText) {
    EXPECT_EQ(writeJson(json(std::string("\"\\\n\0é⏻", 9))), R"("\"\\\n\u0000é⏻")");
}

TEST(JsonWrite, namesTheNumberThatIsNotFinite) {
    for (const double value :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
          -std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(failure({{"a", json::array({1, {{"b", value}}})}}),
                  "a[1].b: not a finite number");
        EXPECT_EQ(failure(json(value)), "the document: not a finite number");
    }
}

TEST(JsonWrite, namesTheTextThatIsNotUtf8) {
    EXPECT_EQ(failure({{"a", json::array({"x", "\xFF"})}}), "a[1]: not valid UTF-8");
    EXPECT_EQ(failure({{"\xC3", 1}}), "\"?\": not valid UTF-8");
}

} // namespace
} // namespace vornic
