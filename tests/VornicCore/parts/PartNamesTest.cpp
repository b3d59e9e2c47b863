#include "VornicCore/parts/BuildParts.h"
#include "VornicCore/parts/StabParts.h"
#include "VornicCore/parts/SwitchParts.h"

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

TEST(PartNames, ofSwitches) {
    EXPECT_EQ(names<SwitchType>(), (Names{{"linear", "Linear"},
                                          {"tactile", "Tactile"},
                                          {"clicky", "Clicky"},
                                          {"topre", "Topre"},
                                          {"silent", "Silent"}}));
    EXPECT_EQ(names<Housing>(), (Names{{"nylon", "Nylon"},
                                       {"polycarbonate", "Polycarbonate"},
                                       {"pom", "POM"},
                                       {"uhmwpe", "UHMWPE"}}));
    EXPECT_EQ(names<Lube>(), (Names{{"none", "None"}, {"light", "Light"}, {"thick", "Thick"}}));
    EXPECT_EQ(names<Spring>(), (Names{{"standard", "Standard"}, {"long", "Long"}}));
}

TEST(PartNames, ofBuilds) {
    EXPECT_EQ(names<CaseMaterial>(), (Names{{"plastic", "Plastic"},
                                            {"aluminium", "Aluminium"},
                                            {"wood", "Wood"},
                                            {"acrylic", "Acrylic"}}));
    EXPECT_EQ(names<Plate>(), (Names{{"polycarbonate", "Polycarbonate"},
                                     {"fr4", "FR4"},
                                     {"pom", "POM"},
                                     {"aluminium", "Aluminium"},
                                     {"brass", "Brass"},
                                     {"carbon", "Carbon fibre"},
                                     {"none", "None (plateless)"}}));
    EXPECT_EQ(names<Mount>(), (Names{{"gasket", "Gasket"},
                                     {"top", "Top mount"},
                                     {"tray", "Tray mount"},
                                     {"leafSpring", "Leaf spring"}}));
    EXPECT_EQ(names<Foam>(), (Names{{"caseFoam", "Case foam"},
                                    {"peFoam", "PE foam"},
                                    {"tapeMod", "Tape mod"},
                                    {"plateFoam", "Plate foam"},
                                    {"switchPads", "Switch pads"}}));
    EXPECT_EQ(names<KeycapMaterial>(), (Names{{"pbt", "PBT"}, {"abs", "ABS"}}));
    EXPECT_EQ(names<KeycapProfile>(), (Names{{"cherry", "Cherry"},
                                             {"oem", "OEM"},
                                             {"sa", "SA"},
                                             {"xda", "XDA"},
                                             {"lowProfile", "Low profile"}}));
}

TEST(PartNames, ofStabilisers) {
    EXPECT_EQ(names<StabTuning>(),
              (Names{{"stock", "Stock"}, {"lubed", "Lubed"}, {"tuned", "Tuned"}}));
}

} // namespace
} // namespace vornic
