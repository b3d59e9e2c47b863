#include "Vornic/reader/ReaderMessages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vornic {
namespace {

using ::testing::ElementsAre;

std::vector<ReaderMessage> oneOfEach() {
    ReaderKeyboard keyboard{.number = 7,
                            .bus = 3,
                            .vendor = 0x04d9,
                            .product = 0xa096,
                            .name = "A keyboard",
                            .port = "/devices/usb1/1-2",
                            .keys = {}};
    keyboard.keys[3] = 0x40;
    return {ReaderChallenge{0x0123456789abcdef}, ReaderStanding::taken, keyboard,
            ReaderKeyboardGone{7},
            ReaderKey{.keyboard = 7, .code = 30, .down = true, .nanos = 123'456'789'012'345}};
}

TEST(ReaderMessages, everyMessageComesBackAsItWas) {
    for (const ReaderMessage& message : oneOfEach()) {
        const auto packet = packetOf(message);
        EXPECT_LE(packet.size(), longestReaderPacket);
        EXPECT_EQ(messageOf(packet), message) << message.index();
    }
}

TEST(ReaderMessages, aKeyIsWrittenSo) {
    EXPECT_THAT(packetOf(ReaderKey{.keyboard = 2, .code = 0x101, .down = true, .nanos = 0x0304}),
                ElementsAre(4, 2, 0, 0, 0, 1, 1, 1, 4, 3, 0, 0, 0, 0, 0, 0));
}

TEST(ReaderMessages, whatIsCutShortOrTooLongIsNone) {
    for (const ReaderMessage& message : oneOfEach()) {
        auto packet = packetOf(message);
        for (std::size_t length = 0; length < packet.size(); ++length) {
            EXPECT_EQ(messageOf(std::span(packet).first(length)), std::nullopt);
        }
        packet.push_back(0);
        EXPECT_EQ(messageOf(packet), std::nullopt);
    }
}

TEST(ReaderMessages, unknownKindsAndValuesAreNone) {
    EXPECT_EQ(messageOf(std::array<std::uint8_t, 1>{5}), std::nullopt);
    EXPECT_EQ(messageOf(std::array<std::uint8_t, 2>{1, 4}), std::nullopt);
    auto key = packetOf(ReaderKey{});
    key[7] = 2;
    EXPECT_EQ(messageOf(key), std::nullopt) << "neither down nor up";
}

TEST(ReaderMessages, longTextsAreCut) {
    ReaderKeyboard keyboard;
    keyboard.name.assign(1000, 'n');
    keyboard.port.assign(1000, 'p');
    const auto packet = packetOf(keyboard);
    EXPECT_LE(packet.size(), longestReaderPacket);
    const auto message = messageOf(packet);
    ASSERT_TRUE(message);
    EXPECT_EQ(std::get<ReaderKeyboard>(*message).name, std::string(255, 'n'));
    EXPECT_EQ(std::get<ReaderKeyboard>(*message).port, std::string(255, 'p'));
}

} // namespace
} // namespace vornic
