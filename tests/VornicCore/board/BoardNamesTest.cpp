#include "VornicCore/board/Board.h"
#include "VornicCore/board/OutputKind.h"
#include "VornicCore/board/StageSpec.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace vornic {
namespace {

using Names = std::vector<std::pair<std::string_view, std::string_view>>;

/// The raw strings and labels of an enumeration, checked to be in case order.
template <NamedEnum Enum>
Names names() {
    Names found;
    for (const Enum value : allCases<Enum>()) {
        EXPECT_EQ(static_cast<std::size_t>(value), found.size());
        EXPECT_EQ(caseFromRawString<Enum>(rawString(value)), value);
        found.emplace_back(rawString(value), label(value));
    }
    return found;
}

TEST(BoardNames, ofTheStage) {
    EXPECT_EQ(names<Placement>(), (Names{{"desk", "On the desk"}, {"close", "Close"}}));
    EXPECT_EQ(
        names<Room>(),
        (Names{
            {"dry", "Dry"}, {"desk", "Desk"}, {"studio", "Small studio"}, {"wood", "Wood room"}}));
    EXPECT_EQ(
        names<OutputKind>(),
        (Names{{"auto", "Automatic"}, {"headphones", "Headphones"}, {"speakers", "Speakers"}}));
}

TEST(BoardNames, ofLayersAndReleases) {
    EXPECT_EQ(names<LayerPart>(), (Names{{"bottomOut", "Bottom-out"},
                                         {"topOut", "Top-out"},
                                         {"spring", "Spring ping"},
                                         {"click", "Click"},
                                         {"rattle", "Stabiliser rattle"},
                                         {"caseKnock", "Case knock"}}));
    EXPECT_EQ(names<ReleaseMode>(), (Names{{"off", "Off"}, {"on", "On"}, {"inherit", "Inherit"}}));
}

} // namespace
} // namespace vornic
