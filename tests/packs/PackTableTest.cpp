#include "packs/model/PackTable.h"

#include "tests/support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace vornic::packs {
namespace {

const std::filesystem::path tables = VORNIC_PACK_TABLES;

TEST(PackTable, everyPackHasOne) {
    for (const char* id : {"deep", "soft", "plastic", "metal", "clicky", "spring"}) {
        std::string error;
        const auto table = readPackTable(tables / (std::string(id) + ".json"), error);
        ASSERT_TRUE(table) << error;
        EXPECT_EQ(table->id, id);
        for (const char* keyClass :
             {"regular", "space", "enter", "backspace", "modifier", "release"}) {
            const StrokeTable* const strokes = table->find(keyClass);
            ASSERT_NE(strokes, nullptr) << id << keyClass;
            EXPECT_GE(strokes->modes.size(), 10U) << id << keyClass;
            EXPECT_LE(strokes->modes.size(), 30U) << id << keyClass;
            EXPECT_GE(strokes->strokes, 1U) << id << keyClass;
        }
    }
}

TEST(PackTable, isReadAsItWasWritten) {
    const ScratchFolder folder;
    std::string error;
    const auto table = readPackTable(tables / "clicky.json", error);
    ASSERT_TRUE(table);
    ASSERT_TRUE(writePackTable(*table, folder / "once.json"));
    const auto again = readPackTable(folder / "once.json", error);
    ASSERT_TRUE(again) << error;
    ASSERT_EQ(again->classes.size(), table->classes.size());
    EXPECT_EQ(again->seed, table->seed);
    EXPECT_EQ(again->find("regular")->levels, table->find("regular")->levels);
    EXPECT_EQ(again->find("release")->decayMs, table->find("release")->decayMs);
    EXPECT_EQ(again->find("space")->events.size(), table->find("space")->events.size());
}

TEST(PackTable, saysWhatIsWrongWithAFile) {
    const ScratchFolder folder;
    folder.write("none.json", "{");
    folder.write("short.json", R"({"id": "x"})");
    std::string error;
    EXPECT_FALSE(readPackTable(folder / "none.json", error));
    EXPECT_NE(error.find("none.json"), std::string::npos);
    error.clear();
    EXPECT_FALSE(readPackTable(folder / "short.json", error));
    EXPECT_NE(error.find("name"), std::string::npos);
}

} // namespace
} // namespace vornic::packs
