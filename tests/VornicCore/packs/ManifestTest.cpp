#include "VornicCore/packs/Manifest.h"

#include "tests/support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

constexpr const char* complete =
    R"({"id": "spring", "name": "Buckling Spring", "character": "Loud", "credit": "Somebody"})";

TEST(Manifest, readsItsFourStrings) {
    const ScratchFolder folder;
    const auto manifest = Manifest::read(folder.write("pack.json", complete));
    EXPECT_EQ(
        *manifest,
        (Manifest{
            .id = "spring", .name = "Buckling Spring", .character = "Loud", .credit = "Somebody"}));
}

TEST(Manifest, isNoneWithoutAFile) {
    const ScratchFolder folder;
    EXPECT_FALSE(Manifest::read(folder / "pack.json"));
    EXPECT_FALSE(Manifest::read(folder.path()));
}

TEST(Manifest, needsEveryMember) {
    const ScratchFolder folder;
    for (const char* text : {
             R"({"name": "n", "character": "c", "credit": "d"})",
             R"({"id": "i", "character": "c", "credit": "d"})",
             R"({"id": "i", "name": "n", "credit": "d"})",
             R"({"id": "i", "name": "n", "character": "c"})",
         }) {
        EXPECT_FALSE(Manifest::read(folder.write("pack.json", text))) << text;
    }
}

TEST(Manifest, refusesMembersOfAnotherType) {
    const ScratchFolder folder;
    for (const char* text : {
             R"({"id": 7, "name": "n", "character": "c", "credit": "d"})",
             R"({"id": "i", "name": null, "character": "c", "credit": "d"})",
             R"({"id": "i", "name": "n", "character": ["c"], "credit": "d"})",
             R"({"id": "i", "name": "n", "character": "c", "credit": true})",
         }) {
        EXPECT_FALSE(Manifest::read(folder.write("pack.json", text))) << text;
    }
}

TEST(Manifest, refusesAMemberGivenTwice) {
    const ScratchFolder folder;
    EXPECT_FALSE(Manifest::read(folder.write(
        "pack.json", R"({"id": "i", "id": "j", "name": "n", "character": "c", "credit": "d"})")));
}

TEST(Manifest, refusesWhatIsNoJsonObject) {
    const ScratchFolder folder;
    for (const std::string& text :
         {std::string(), std::string("{"), std::string("[]"), std::string("\"id\""),
          std::string(complete) + "x", std::string(60000, '[')}) {
        EXPECT_FALSE(Manifest::read(folder.write("pack.json", text))) << text.substr(0, 20);
    }
}

TEST(Manifest, ignoresMembersItDoesNotKnow) {
    const ScratchFolder folder;
    EXPECT_TRUE(Manifest::read(folder.write(
        "pack.json", R"({"id": "i", "name": "n", "character": "c", "credit": "d", "more": [1]})")));
}

TEST(Manifest, refusesAFileFarTooLarge) {
    const ScratchFolder folder;
    EXPECT_TRUE(Manifest::read(folder.write("pack.json", complete + std::string(1000, ' '))));
    EXPECT_FALSE(Manifest::read(folder.write("pack.json", complete + std::string(70000, ' '))));
}

} // namespace
} // namespace vornic
