#include "VornicCore/base/JsonReader.h"

#include "VornicCore/base/JsonDocument.h"
#include "VornicCore/base/JsonError.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <functional>
#include <limits>

namespace vornic {
namespace {

using nlohmann::json;

std::string failure(const std::function<void()>& read) {
    try {
        read();
        return {};
    } catch (const DecodeError& error) {
        return error.what();
    }
}

std::string integerFailure(std::string_view text) {
    const json document = parseJson(text);
    return failure([&] { static_cast<void>(JsonReader(document, "n").integer()); });
}

std::int64_t integer(std::string_view text) {
    const json document = parseJson(text);
    return JsonReader(document).integer();
}

TEST(JsonReader, readsWholeNumbersHoweverTheyAreWritten) {
    EXPECT_EQ(integer("12"), 12);
    EXPECT_EQ(integer("12.0"), 12);
    EXPECT_EQ(integer("1.2e1"), 12);
    EXPECT_EQ(integer("-0"), 0);
    EXPECT_EQ(integer("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(integer("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
}

TEST(JsonReader, refusesAnythingElseAsAnInteger) {
    EXPECT_EQ(integerFailure("1.5"), "n: expected an integer, found 1.5");
    EXPECT_EQ(integerFailure("9223372036854775808"),
              "n: 9223372036854775808 is too large for an integer");
    EXPECT_EQ(integerFailure("-9223372036854775809"),
              "n: -9223372036854775808 is too large for an integer");
    EXPECT_EQ(integerFailure("1e300"), "n: 1e+300 is too large for an integer");
    EXPECT_EQ(integerFailure("\"12\""), "n: expected an integer, found a string");
    EXPECT_EQ(integerFailure("true"), "n: expected an integer, found a boolean");
    EXPECT_EQ(integerFailure("null"), "n: expected an integer, found null");
}

TEST(JsonReader, refusesASingleThatIsTooLarge) {
    const json document{{"a", 1e300}, {"b", 0.1}, {"c", "x"}};
    const JsonReader in(document);
    EXPECT_EQ(in.member("b").single(), 0.1F);
    EXPECT_EQ(failure([&] { static_cast<void>(in.member("a").single()); }),
              "a: 1e+300 is too large for a single");
    EXPECT_EQ(failure([&] { static_cast<void>(in.member("c").single()); }),
              "c: expected a number, found a string");
}

TEST(JsonReader, namesWhatItExpectedAndWhatItFound) {
    const json document{{"list", {1, "x", nullptr, json::object(), json::array(), true}}};
    const std::vector<JsonReader> elements = JsonReader(document).member("list").elements();
    const auto message = [&](std::size_t index, auto read) {
        return failure([&] { static_cast<void>((elements.at(index).*read)()); });
    };
    EXPECT_EQ(message(0, &JsonReader::string), "list[0]: expected a string, found a number");
    EXPECT_EQ(message(1, &JsonReader::number), "list[1]: expected a number, found a string");
    EXPECT_EQ(message(2, &JsonReader::boolean), "list[2]: expected a boolean, found null");
    EXPECT_EQ(message(3, &JsonReader::elements), "list[3]: expected an array, found an object");
    EXPECT_EQ(message(4, &JsonReader::members), "list[4]: expected an object, found an array");
    EXPECT_EQ(message(5, &JsonReader::integer), "list[5]: expected an integer, found a boolean");
}

TEST(JsonReader, tellsMissingFromNull) {
    const json document{{"a", nullptr}, {"b", 1}};
    const JsonReader in(document, "root");
    EXPECT_TRUE(in.member("a").isNull());
    EXPECT_FALSE(in.optionalMember("a").has_value());
    EXPECT_FALSE(in.optionalMember("c").has_value());
    EXPECT_EQ(in.optionalMember("b")->integer(), 1);
    EXPECT_EQ(failure([&] { static_cast<void>(in.member("c")); }), "root.c: missing");
}

TEST(JsonReader, quotesStrangeNamesInPaths) {
    const json document{{"a.b", 1}, {std::string(100, 'x'), 1}, {"\xC3\xA9", 1}};
    std::string paths;
    for (const auto& [name, member] : JsonReader(document).members()) {
        paths += member.path() + " ";
    }
    EXPECT_EQ(paths, "\"a.b\" \"" + std::string(40, 'x') + "...\" \"??\" ");
}

} // namespace
} // namespace vornic
