#include "VornicCore/board/BoardJson.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <functional>
#include <limits>

namespace vornic {
namespace {

using nlohmann::json;
using Pointer = json::json_pointer;

/// A board in which no list, map or optional is empty.
Board completeBoard() {
    ChainParams chain;
    chain.eq.setGain(Equalizer::Band::click, 3.3F);
    chain.bodyModes = {{480, 40, -2}};
    LayerSpec layer(LayerPart::topOut, {"deep/one", "user/two"}, 1.5, -2, 0.25);
    layer.id = *Uuid::parse("0123abcd-89ab-cdef-fedc-ba9876543210");
    const StrokeSpec stroke({layer}, chain);
    const SwitchParts parts{SwitchType::clicky, Housing::pom, Lube::thick, Spring::long_, true};
    BuildParts build;
    build.foams = {Foam::switchPads, Foam::caseFoam};
    Board board("id", "Name", "Detail", "#5E5CE6", build,
                {SoundSpec("keys", "Keys", "#000000", stroke, stroke, parts, {0.1, 0.2, 0.3, 0.4})},
                {{KeyGroup::space, {.sound = "keys", .pan = -0.5}}});
    board.keys["49"] = {.sound = "keys", .gainDb = 1, .pan = 1, .release = ReleaseMode::on};
    board.credits = {"Somebody"};
    return board;
}

json completeDocument() {
    return json::parse(encodeBoard(completeBoard()));
}

/// The message with which reading the board fails; empty if it succeeds.
std::string failure(const json& document) {
    try {
        decodeBoard(document.dump());
        return {};
    } catch (const DecodeError& error) {
        return error.what();
    }
}

std::string failureWith(const std::string& pointer, const json& value) {
    json document = completeDocument();
    document[Pointer(pointer)] = value;
    return failure(document);
}

/// Calls `visit` with the pointer and the path of every value below `value`.
void visitValues(const json& value, const Pointer& pointer, const std::string& path,
                 const std::function<void(const Pointer&, const std::string&)>& visit) {
    if (!value.is_structured()) {
        return;
    }
    for (const auto& [name, member] : value.items()) {
        const Pointer at = value.is_array() ? pointer / std::stoul(name) : pointer / name;
        const std::string step = value.is_array() ? path + "[" + name + "]"
                                 : path.empty()   ? name
                                                  : path + "." + name;
        visit(at, step);
        visitValues(member, at, step, visit);
    }
}

TEST(BoardJson, writesTheFieldNamesTheRawStringsAndTheShortestNumbers) {
    EXPECT_EQ(completeDocument(), json::parse(R"({
        "schema": 1, "id": "id", "name": "Name", "detail": "Detail", "colorHex": "#5E5CE6",
        "layout": "macANSI",
        "build": {"caseMaterial": "plastic", "plate": "fr4", "mount": "tray",
                  "foams": ["caseFoam", "switchPads"],
                  "keycapMaterial": "pbt", "keycapProfile": "cherry"},
        "recordedBuild": {"caseMaterial": "plastic", "plate": "fr4", "mount": "tray",
                          "foams": ["caseFoam", "switchPads"],
                          "keycapMaterial": "pbt", "keycapProfile": "cherry"},
        "stabs": {"tuning": "tuned", "rattle": 0.15},
        "character": {"depth": 0, "snap": 0, "ring": 0, "size": 0},
        "sounds": [{
            "id": "keys", "name": "Keys", "colorHex": "#000000",
            "press": {"layers": [{"id": "0123ABCD-89AB-CDEF-FEDC-BA9876543210", "part": "topOut",
                                  "samples": ["deep/one", "user/two"], "offsetMs": 1.5,
                                  "gainDb": -2, "pitch": 0.25, "invert": false, "muted": false,
                                  "solo": false}],
                      "alignAttacks": true,
                      "chain": {"eq": {"gains": ["bass", 0, "body", 0, "clack", 0, "click", 3.3,
                                                 "air", 0]},
                                "highPassHz": 30, "lowPassHz": 20000, "attackDb": 0,
                                "sustainDb": 0,
                                "bodyModes": [{"frequency": 480, "decayMs": 40, "gainDb": -2}],
                                "bodyMix": 0, "damping": 0, "dampingStartMs": 12, "drive": 0,
                                "pitch": 0}},
            "release": {"layers": [{"id": "0123ABCD-89AB-CDEF-FEDC-BA9876543210", "part": "topOut",
                                  "samples": ["deep/one", "user/two"], "offsetMs": 1.5,
                                  "gainDb": -2, "pitch": 0.25, "invert": false, "muted": false,
                                  "solo": false}],
                      "alignAttacks": true,
                      "chain": {"eq": {"gains": ["bass", 0, "body", 0, "clack", 0, "click", 3.3,
                                                 "air", 0]},
                                "highPassHz": 30, "lowPassHz": 20000, "attackDb": 0,
                                "sustainDb": 0,
                                "bodyModes": [{"frequency": 480, "decayMs": 40, "gainDb": -2}],
                                "bodyMix": 0, "damping": 0, "dampingStartMs": 12, "drive": 0,
                                "pitch": 0}},
            "switchParts": {"type": "clicky", "housing": "pom", "lube": "thick", "spring": "long",
                            "films": true},
            "recordedAs": {"type": "clicky", "housing": "pom", "lube": "thick", "spring": "long",
                           "films": true},
            "character": {"depth": 0.1, "snap": 0.2, "ring": 0.3, "size": 0.4},
            "variations": 12}],
        "groups": {"space": {"sound": "keys", "gainDb": 0, "pitch": 0, "pan": -0.5,
                             "release": "inherit"}},
        "keys": {"49": {"sound": "keys", "gainDb": 1, "pitch": 0, "pan": 1, "release": "on"}},
        "feel": {"speedSensitivity": 0.6, "variation": 0.5},
        "releaseByDefault": false, "builtIn": false, "credits": ["Somebody"]
    })"));
}

TEST(BoardJson, isWrittenSortedAndReadable) {
    EXPECT_THAT(encodeBoard(Board()), testing::StartsWith("{\n"
                                                          "  \"build\": {\n"
                                                          "    \"caseMaterial\": \"plastic\",\n"
                                                          "    \"foams\": [],\n"));
}

TEST(BoardJson, everyOtherMemberIsRequired) {
    const json complete = completeDocument();
    int required = 0;
    visitValues(complete, Pointer(), "", [&](const Pointer& at, const std::string& path) {
        if (!complete[at.parent_pointer()].is_object()) {
            return;
        }
        json document = complete;
        document[at.parent_pointer()].erase(at.back());
        const bool optional =
            path == "sounds[0].release" || at.back() == "sound" || at.back() == "pan";
        const bool entry = path == "groups.space" || path == "keys.49";
        EXPECT_EQ(failure(document), optional || entry ? "" : path + ": missing");
        required += optional || entry ? 0 : 1;
    });
    EXPECT_EQ(required, 119);
}

TEST(BoardJson, everyWrongTypeIsNamed) {
    const json complete = completeDocument();
    int visited = 0;
    visitValues(complete, Pointer(), "", [&](const Pointer& at, const std::string& path) {
        for (const json& wrong :
             {json(true), json("?"), json(1.5), json::array(), json::object()}) {
            json document = complete;
            if (document[at].type() == wrong.type() ||
                (document[at].is_number() && wrong.is_number())) {
                continue;
            }
            document[at] = wrong;
            EXPECT_THAT(failure(document), testing::StartsWith(path)) << wrong;
            ++visited;
        }
    });
    EXPECT_GT(visited, 500);
}

TEST(BoardJson, everyUnknownRawStringIsNamed) {
    EXPECT_EQ(failureWith("/layout", "macansi"), R"(layout: unknown value "macansi")");
    EXPECT_EQ(failureWith("/build/plate", "gold"), R"(build.plate: unknown value "gold")");
    EXPECT_EQ(failureWith("/build/foams/1", "foam"), R"(build.foams[1]: unknown value "foam")");
    EXPECT_EQ(failureWith("/stabs/tuning", ""), R"(stabs.tuning: unknown value "")");
    EXPECT_EQ(failureWith("/keys/49/release", "On"), R"(keys.49.release: unknown value "On")");
    EXPECT_EQ(failureWith("/sounds/0/press/layers/0/part", "top"),
              R"(sounds[0].press.layers[0].part: unknown value "top")");
    EXPECT_EQ(failureWith("/sounds/0/switchParts/spring", "long_"),
              R"(sounds[0].switchParts.spring: unknown value "long_")");
    EXPECT_EQ(failureWith("/groups/spaces", json::object()),
              R"(groups.spaces: unknown value "spaces")");
}

TEST(BoardJson, namesTheExactPlace) {
    json document = completeDocument();
    document["sounds"].push_back(document["sounds"][0]);
    document["sounds"].push_back(document["sounds"][0]);
    document["sounds"][2]["press"]["layers"][0]["gainDb"] = "loud";
    EXPECT_EQ(failure(document),
              "sounds[2].press.layers[0].gainDb: expected a number, found a string");
    EXPECT_EQ(failure(json::array()), "the document: expected an object, found an array");
}

TEST(BoardJson, wholeNumbersMayBeWrittenAsDecimals) {
    EXPECT_EQ(failureWith("/schema", 1.5), "schema: expected an integer, found 1.5");
    EXPECT_EQ(failureWith("/sounds/0/variations", 1e30),
              "sounds[0].variations: 1e+30 is too large for an integer");
    json document = completeDocument();
    document["sounds"][0]["variations"] = 24.0;
    EXPECT_EQ(decodeBoard(document.dump()).sounds[0].variations, 24);
}

TEST(BoardJson, optionalMembersMayBeMissingOrNullAndAreNotWrittenWhenAbsent) {
    json document = completeDocument();
    document["sounds"][0]["release"] = nullptr;
    document["groups"]["space"]["sound"] = nullptr;
    document["groups"]["space"]["pan"] = nullptr;
    const Board withNulls = decodeBoard(document.dump());
    EXPECT_FALSE(withNulls.sounds[0].release.has_value());
    EXPECT_FALSE(withNulls.groups.at(KeyGroup::space).sound.has_value());
    EXPECT_FALSE(withNulls.groups.at(KeyGroup::space).pan.has_value());
    document["sounds"][0].erase("release");
    document["groups"]["space"].erase("sound");
    document["groups"]["space"].erase("pan");
    EXPECT_EQ(decodeBoard(document.dump()), withNulls);
    EXPECT_EQ(json::parse(encodeBoard(withNulls)), document);
}

TEST(BoardJson, noOtherMemberMayBeNull) {
    EXPECT_EQ(failureWith("/credits", nullptr), "credits: expected an array, found null");
    EXPECT_EQ(failureWith("/sounds/0/press", nullptr),
              "sounds[0].press: expected an object, found null");
}

TEST(BoardJson, unknownMembersAreIgnored) {
    json document = completeDocument();
    document["extra"] = {1, 2, {{"x", nullptr}}};
    document["sounds"][0]["press"]["chain"]["eq"]["range"] = 3;
    document["keys"]["49"]["colour"] = "red";
    EXPECT_EQ(decodeBoard(document.dump()), completeBoard());
}

TEST(BoardJson, membersThatOccurTwiceFail) {
    std::string text = encodeBoard(completeBoard());
    text.insert(text.find("\"49\""), R"("49": {}, )");
    EXPECT_THROW(decodeBoard(text), DecodeError);
    try {
        decodeBoard(text);
    } catch (const DecodeError& error) {
        EXPECT_STREQ(error.what(), "keys.49: this member occurs twice");
        EXPECT_EQ(error.path(), "keys.49");
    }
}

TEST(BoardJson, casesThatOccurTwiceInASetCountOnce) {
    json document = completeDocument();
    document["build"]["foams"] = {"tapeMod", "peFoam", "tapeMod"};
    const Board board = decodeBoard(document.dump());
    EXPECT_EQ(board.build.foams, (std::set{Foam::peFoam, Foam::tapeMod}));
    EXPECT_EQ(json::parse(encodeBoard(board))["build"]["foams"], (json{"peFoam", "tapeMod"}));
}

TEST(BoardJson, idsOfLayersAreReadInAnyCase) {
    json document = completeDocument();
    document["sounds"][0]["press"]["layers"][0]["id"] = "0123abcd-89ab-CDEF-fedc-ba9876543210";
    EXPECT_EQ(decodeBoard(document.dump()), completeBoard());
    EXPECT_EQ(failureWith("/sounds/0/press/layers/0/id", "0123abcd"),
              R"(sounds[0].press.layers[0].id: expected a UUID, found "0123abcd")");
}

TEST(BoardJson, valuesAreNotClamped) {
    json document = completeDocument();
    document["feel"]["speedSensitivity"] = 40;
    document["keys"]["49"]["pan"] = -7.5;
    document["schema"] = -3;
    const Board board = decodeBoard(document.dump());
    EXPECT_EQ(board.feel.speedSensitivity, 40);
    EXPECT_EQ(board.keys.find("49")->second.pan, -7.5);
    EXPECT_EQ(board.schema, -3);
}

TEST(BoardJson, thatKeysDifferIsWrittenOnlyWhereTheyDo) {
    Board board = completeBoard();
    EXPECT_EQ(board.feel.keysDiffer, 0);
    EXPECT_FALSE(json::parse(encodeBoard(board))["feel"].contains("keysDiffer"));
    board.feel.keysDiffer = 0.25;
    EXPECT_EQ(json::parse(encodeBoard(board))["feel"]["keysDiffer"], 0.25);
    EXPECT_EQ(decodeBoard(encodeBoard(board)), board);
}

class EqualizerJson : public testing::Test {
  protected:
    static constexpr const char* at = "/sounds/0/press/chain/eq/gains";

    static Equalizer decoded(const json& gains) {
        json document = completeDocument();
        document[Pointer(at)] = gains;
        return decodeBoard(document.dump()).sounds[0].press.chain.eq;
    }
};

TEST_F(EqualizerJson, keepsGainsOutOfRangeAndMissingBandsAsTheyAre) {
    const Equalizer eq = decoded({"air", 99.5, "bass", -40});
    EXPECT_EQ(eq.gains, (std::map<Equalizer::Band, float>{{Equalizer::Band::bass, -40.0F},
                                                          {Equalizer::Band::air, 99.5F}}));
    EXPECT_TRUE(decoded(json::array()).gains.empty());
}

TEST_F(EqualizerJson, gainsAreSingles) {
    EXPECT_EQ(decoded({"air", 0.1}).gain(Equalizer::Band::air), 0.1F);
    EXPECT_EQ(failureWith(at, {"air", 1e300}),
              "sounds[0].press.chain.eq.gains[1]: 1e+300 is too large for a single");
}

TEST_F(EqualizerJson, refusesOtherArrays) {
    const std::string path = "sounds[0].press.chain.eq.gains";
    EXPECT_EQ(failureWith(at, {"air", 1, "bass"}),
              path + ": expected pairs of a band and a number, found an odd number of elements");
    EXPECT_EQ(failureWith(at, {"air", 1, "treble", 2}), path + "[2]: unknown value \"treble\"");
    EXPECT_EQ(failureWith(at, {1, "air"}), path + "[0]: expected a string, found a number");
    EXPECT_EQ(failureWith(at, {"air", "1"}), path + "[1]: expected a number, found a string");
    EXPECT_EQ(failureWith(at, {"air", 1, "air", 1}), path + "[2]: this band occurs twice");
    EXPECT_EQ(failureWith(at, json::array({json::array({"air", 1}), 1})),
              path + "[0]: expected a string, found an array");
    EXPECT_EQ(failureWith(at, json::object()), path + ": expected an array, found an object");
}

TEST(BoardJson, aNumberThatIsNotFiniteCannotBeWritten) {
    const auto failureOf = [](const Board& board) -> std::string {
        try {
            encodeBoard(board);
            return {};
        } catch (const EncodeError& error) {
            return error.what();
        }
    };
    Board board = completeBoard();
    board.keys["49"].pan = std::numeric_limits<double>::infinity();
    EXPECT_EQ(failureOf(board), "keys.49.pan: not a finite number");
    board = completeBoard();
    board.sounds[0].press.chain.eq.gains[Equalizer::Band::body] =
        std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(failureOf(board), "sounds[0].press.chain.eq.gains[3]: not a finite number");
    board = completeBoard();
    board.credits = {"fine", "\xFF"};
    EXPECT_EQ(failureOf(board), "credits[1]: not valid UTF-8");
}

TEST(StageJson, readsAndWritesEveryField) {
    const StageSpec stage{Placement::close, 0.25, 0.5, Room::wood, true};
    EXPECT_EQ(json::parse(encodeStage(stage)), (json{{"placement", "close"},
                                                     {"distance", 0.25},
                                                     {"width", 0.5},
                                                     {"room", "wood"},
                                                     {"deskMat", true}}));
    EXPECT_EQ(decodeStage(encodeStage(stage)), stage);
}

TEST(StageJson, everyFieldIsRequired) {
    const json complete = json::parse(encodeStage({}));
    EXPECT_EQ(complete.size(), 5U);
    for (const auto& [name, value] : complete.items()) {
        json document = complete;
        document.erase(name);
        EXPECT_THROW(decodeStage(document.dump()), DecodeError) << name;
    }
}

} // namespace
} // namespace vornic
