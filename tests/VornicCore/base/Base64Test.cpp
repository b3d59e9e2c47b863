#include "VornicCore/base/Base64.h"

#include <gtest/gtest.h>

#include <random>

namespace vornic {
namespace {

std::span<const std::byte> bytesOf(std::string_view text) {
    return std::as_bytes(std::span(text));
}

std::optional<std::string> decodedText(std::string_view text) {
    const auto bytes = base64Decoded(text);
    if (!bytes) {
        return std::nullopt;
    }
    std::string result;
    for (const std::byte each : *bytes) {
        result.push_back(static_cast<char>(each));
    }
    return result;
}

// The examples of RFC 4648.
const std::vector<std::pair<std::string, std::string>> examples{{"", ""},
                                                                {"f", "Zg=="},
                                                                {"fo", "Zm8="},
                                                                {"foo", "Zm9v"},
                                                                {"foob", "Zm9vYg=="},
                                                                {"fooba", "Zm9vYmE="},
                                                                {"foobar", "Zm9vYmFy"},
                                                                {"\xfb\xff\xbf", "+/+/"}};

TEST(Base64, writesAndReadsTheStandardsExamples) {
    for (const auto& [plain, text] : examples) {
        EXPECT_EQ(base64Encoded(bytesOf(plain)), text);
        EXPECT_EQ(decodedText(text), plain) << text;
    }
}

TEST(Base64, refusesWhatIsNotBase64) {
    for (const std::string text : {"Z",          "Zg",         "Zg=",   "Zm8",    "=",
                                   "==",         "====",       "Zg===", "Zm8==",  "Zm9v=",
                                   "Zg==Zg==",   "Zg= =",      " Zg==", "Zg==\n", "Zm9v\r\nYmFy",
                                   "Zm9v\tYmFy", "Zm\v9v",     "Zm9\f", "Zm-_",   "Zm9*",
                                   "Z=g=",       "\xc3\xa4mm", "Zh==",  "Zm9="}) {
        EXPECT_EQ(decodedText(text), std::nullopt) << text;
    }
    EXPECT_EQ(decodedText(std::string_view("Zm\0v", 4)), std::nullopt);
}

TEST(Base64, readsBackWhateverItWrote) {
    std::mt19937 random(1);
    for (std::size_t size = 0; size < 300; ++size) {
        std::vector<std::byte> bytes(size);
        for (std::byte& each : bytes) {
            each = static_cast<std::byte>(random() & 0xffU);
        }
        EXPECT_EQ(base64Decoded(base64Encoded(bytes)), bytes) << size;
    }
}

} // namespace
} // namespace vornic
