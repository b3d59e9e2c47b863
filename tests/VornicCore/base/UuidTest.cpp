#include "VornicCore/base/Uuid.h"

#include <gtest/gtest.h>

#include <set>

namespace vornic {
namespace {

TEST(Uuid, isWrittenInUpperCaseAndReadInAny) {
    const std::string_view upper = "01234567-89AB-CDEF-FEDC-BA9876543210";
    for (const std::string_view text :
         {upper, std::string_view("01234567-89ab-cdef-fedc-ba9876543210"),
          std::string_view("01234567-89Ab-CdeF-feDc-Ba9876543210")}) {
        const auto parsed = Uuid::parse(text);
        ASSERT_TRUE(parsed.has_value()) << text;
        EXPECT_EQ(parsed->text(), upper);
    }
}

TEST(Uuid, hasOneFormOnly) {
    for (const std::string_view text :
         {"", "01234567-89AB-CDEF-FEDC-BA987654321", "01234567-89AB-CDEF-FEDC-BA98765432100",
          "{01234567-89AB-CDEF-FEDC-BA9876543210}", "0123456789ABCDEFFEDCBA9876543210",
          "01234567-89AB-CDEF-FEDCB-A9876543210", "01234567-89AB-CDEF-FEDC-BA987654321G",
          "01234567-89AB-CDEF-FEDC-BA98765432-1", "01234567 89AB CDEF FEDC BA9876543210",
          "0x234567-89AB-CDEF-FEDC-BA9876543210", "+1234567-89AB-CDEF-FEDC-BA9876543210"}) {
        EXPECT_FALSE(Uuid::parse(text).has_value()) << text;
    }
}

TEST(Uuid, aFreshOneIsOfVersionFour) {
    std::set<Uuid> seen;
    for (int i = 0; i < 1000; ++i) {
        const Uuid fresh = Uuid::random();
        const std::string text = fresh.text();
        EXPECT_EQ(text[14], '4') << text;
        EXPECT_NE(std::string("89AB").find(text[19]), std::string::npos) << text;
        EXPECT_EQ(Uuid::parse(text), fresh);
        EXPECT_TRUE(seen.insert(fresh).second);
    }
    EXPECT_EQ(Uuid().text(), "00000000-0000-0000-0000-000000000000");
}

} // namespace
} // namespace vornic
