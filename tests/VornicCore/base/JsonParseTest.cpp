#include "VornicCore/base/JsonDocument.h"
#include "VornicCore/base/JsonError.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace vornic {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

/// The message with which reading fails; empty if it succeeds.
std::string failure(std::string_view text, const JsonLimits& limits = {}) {
    try {
        parseJson(text, limits);
        return {};
    } catch (const DecodeError& error) {
        return error.what();
    }
}

TEST(JsonParse, readsEveryKindOfValue) {
    const nlohmann::json document = parseJson(
        R"( {"a": [1, -2, 3.5, true, false, null, "text é \u00e9 \ud83c\udfb9"], "b": {}} )");
    EXPECT_EQ(document, (nlohmann::json{
                            {"a", {1, -2, 3.5, true, false, nullptr, "text é é \xF0\x9F\x8E\xB9"}},
                            {"b", nlohmann::json::object()}}));
    EXPECT_EQ(parseJson("17"), 17);
}

TEST(JsonParse, refusesWhatIsNotJson) {
    for (const std::string_view text :
         {" ",          "{",         "[1, 2",       "[1,]",  "{\"a\":1,}", "{a:1}",
          "{'a':1}",    "[01]",      "[+1]",        "[.5]",  "[1.]",       "NaN",
          "[Infinity]", "tru",       "[1] []",      "[1] x", "// a\n[1]",  "\"a",
          "\"\t\"",     "\"\\x41\"", "\"\\ud800\"", "[-]",   "{\"a\" 1}",  "{1:2}"}) {
        EXPECT_THAT(failure(text), HasSubstr(": not valid JSON, parse error")) << text;
    }
    EXPECT_EQ(failure(""), "the document: it is empty");
}

TEST(JsonParse, saysWhereTheErrorIs) {
    EXPECT_THAT(failure("{\n  \"a\": 1 x\n}"), HasSubstr("line 2, column 10"));
    EXPECT_THAT(failure(R"({"a": {"b": [1, NaN]}})"), StartsWith("a.b[1]: not valid JSON"));
    EXPECT_THAT(failure(R"({"a": {"b": NaN}})"), StartsWith("a.b: not valid JSON"));
    EXPECT_THAT(failure(R"({"a": {b: 1}})"), StartsWith("a: not valid JSON"));
    EXPECT_THAT(failure("{"), StartsWith("the document: not valid JSON"));
    EXPECT_THAT(failure("[1] x"), StartsWith("the document: not valid JSON"));
}

TEST(JsonParse, refusesBytesThatAreNotUtf8) {
    for (const std::string_view bytes : {"\"\x80\"", "\"\xC3\"", "\"\xC0\xAF\"", "\"\xED\xA0\x80\"",
                                         "\"\xF5\x80\x80\x80\"", "\xFF\xFE[", "\xFE\xFF"}) {
        EXPECT_THAT(failure(bytes), HasSubstr(": not valid JSON"));
    }
}

TEST(JsonParse, refusesAByteOrderMark) {
    EXPECT_EQ(failure("\xEF\xBB\xBF[1]"), "the document: it begins with a byte order mark");
}

TEST(JsonParse, refusesAZeroByteWhereverItStands) {
    // The parser takes one for the end of the text, and would ignore what follows.
    EXPECT_EQ(failure(std::string("[1]\0 garbage", 12)), "the document: a zero byte at offset 3");
    EXPECT_EQ(failure(std::string("\0", 1)), "the document: a zero byte at offset 0");
    EXPECT_EQ(failure("[\"\\u0000\"]"), "");
}

TEST(JsonParse, messagesStayShortAndPrintable) {
    for (const std::string& text : std::vector<std::string>{
             "\"" + std::string(1'000'000, 'x'), "[" + std::string(1'000'000, '9') + "x]",
             "\"\x01\xFF\n", std::string(1'000'000, '\xFF')}) {
        const std::string message = failure(text);
        EXPECT_LT(message.size(), 250U);
        EXPECT_GT(message.size(), 20U);
        for (const char c : message) {
            EXPECT_TRUE(c >= ' ' && c <= '~');
        }
    }
}

TEST(JsonParse, refusesAMemberThatOccursTwice) {
    EXPECT_EQ(failure(R"({"a": 1, "a": 1})"), "a: this member occurs twice");
    EXPECT_EQ(failure(R"({"a": [0, {"b": {"c": 1, "d": 2, "c": 3}}]})"),
              "a[1].b.c: this member occurs twice");
    EXPECT_EQ(failure(R"([[{"x": 1}, {"x": 1, "\u0078": 2}]])"),
              "[0][1].x: this member occurs twice");
    EXPECT_EQ(failure(R"({"a": {"a": 1}, "b": {"a": 1}})"), "");
    EXPECT_EQ(failure("{\"\\n\": 1, \"\\n\": 1}"), "\"?\": this member occurs twice");
}

TEST(JsonParse, refusesNumbersBeyondADouble) {
    EXPECT_THAT(failure("[1e400]"), HasSubstr("number overflow"));
    EXPECT_THAT(failure("[-1e999999999999]"), HasSubstr("number overflow"));
    EXPECT_THAT(failure("[" + std::string(100'000, '9') + "]"), HasSubstr("number overflow"));
    EXPECT_EQ(failure("[1e308, 1e-400, 123456789012345678901234567890]"), "");
}

TEST(JsonParse, refusesDeepNesting) {
    for (const std::size_t depth : {std::size_t{65}, std::size_t{100'000}}) {
        EXPECT_THAT(failure(std::string(depth, '[')),
                    EndsWith("[0][0]: nested more than 64 levels deep"));
    }
    EXPECT_EQ(failure(std::string(64, '[') + std::string(64, ']')), "");
    std::string objects;
    for (int i = 0; i < 100'000; ++i) {
        objects += R"({"a":)";
    }
    EXPECT_THAT(failure(objects), HasSubstr("a.a.a.a: nested more than 64 levels deep"));
    EXPECT_EQ(failure("[1, [2, [3]]]", {.depth = 2}), "[1][1]: nested more than 2 levels deep");
}

TEST(JsonParse, refusesMoreValuesThanTheLimit) {
    EXPECT_EQ(failure("[1, 2, 3]", {.values = 4}), "");
    EXPECT_EQ(failure("[1, 2, 3, 4]", {.values = 4}), "the document: more than 4 values");
    EXPECT_EQ(failure(R"({"a": 1, "b": {}})", {.values = 2}), "the document: more than 2 values");
    std::string many = "[";
    for (int i = 0; i < 1'000'000; ++i) {
        many += "[],";
    }
    EXPECT_EQ(failure(many), "the document: more than 1000000 values");
}

} // namespace
} // namespace vornic
