#include "VornicCore/keys/KeySet.h"
#include "VornicCore/keys/KeyboardLayout.h"
#include "tests/Vornic/views/StudioFixture.h"

#include <set>
#include <variant>

namespace vornic {
namespace {

constexpr int keyA = 0;
constexpr int keyS = 1;
constexpr int keyD = 2;

class StudioKeysTest : public StudioFixture {
  protected:
    StudioAdapter::Tab tab() const override { return StudioAdapter::Tab::Keys; }

    QQuickItem* keyboard() const {
        return findItem(window->contentItem(), [](const QQuickItem& item) {
            return item.property("unit").isValid() && item.property("cursor").isValid();
        });
    }
    /// The drawn keys by their place in the layout.
    std::vector<QQuickItem*> caps() const {
        std::vector<QQuickItem*> all;
        for (QQuickItem* const child : keyboard()->childItems()) {
            if (child->property("said").isValid()) {
                all.push_back(child);
            }
        }
        return all;
    }
    QQuickItem* cap(int code) const {
        for (QQuickItem* const each : caps()) {
            if (each->property("row").toMap()["code"].toInt() == code) {
                return each;
            }
        }
        return nullptr;
    }
    std::set<std::int64_t> selected() const {
        std::set<std::int64_t> codes;
        for (const QQuickItem* const each : caps()) {
            const QVariantMap row = each->property("row").toMap();
            if (row["selected"].toBool()) {
                codes.insert(row["code"].toInt());
            }
        }
        return codes;
    }
    void clickKey(int code, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::mouseClick(window.get(), Qt::LeftButton, modifiers, middle(cap(code)));
        draw();
    }
    using Codes = std::set<std::int64_t>;
};

TEST_F(StudioKeysTest, aClickSelectsAKeyAndAnotherWithControlAddsOne) {
    clickKey(keyA);
    EXPECT_EQ(selected(), Codes({keyA}));
    clickKey(keyD, Qt::ControlModifier);
    EXPECT_EQ(selected(), Codes({keyA, keyD}));
    clickKey(keyA, Qt::ControlModifier);
    EXPECT_EQ(selected(), Codes({keyD}));
    clickKey(keyS);
    EXPECT_EQ(selected(), Codes({keyS}));
}

TEST_F(StudioKeysTest, aClickOnAKeyPlaysIt) {
    clickKey(keyA);
    scheduler.advance(std::chrono::milliseconds(0));
    EXPECT_TRUE(eventually([&] { return heard(); }));
}

TEST_F(StudioKeysTest, aRubberBandSelectsWhatItTouches) {
    const QPoint from = middle(cap(keyA)) - QPoint(4, 4);
    drag(from, middle(cap(keyD)) + QPoint(4, 4));
    EXPECT_EQ(selected(), Codes({keyA, keyS, keyD}));
    constexpr int keyP = 35;
    drag(middle(cap(keyP)) - QPoint(5, 5), middle(cap(keyP)) + QPoint(5, 5), Qt::ShiftModifier);
    EXPECT_EQ(selected(), Codes({keyA, keyS, keyD, keyP}));
}

TEST_F(StudioKeysTest, arrowKeysMoveAndSpaceSelects) {
    keyboard()->forceActiveFocus(Qt::TabFocusReason);
    clickKey(keyA);
    EXPECT_TRUE(cap(keyA)->hasActiveFocus());
    key(Qt::Key_Right);
    EXPECT_TRUE(cap(keyS)->hasActiveFocus());
    EXPECT_EQ(selected(), Codes({keyA})) << "moving selects nothing";
    key(Qt::Key_Right);
    key(Qt::Key_Space);
    EXPECT_EQ(selected(), Codes({keyA, keyD}));
    key(Qt::Key_Space);
    EXPECT_EQ(selected(), Codes({keyA}));
    key(Qt::Key_Return);
    EXPECT_EQ(selected(), Codes({keyD}));
    key(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(selected(), Codes({keyS, keyD}));
    key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_TRUE(std::holds_alternative<KeySelection::All>(model->studio().selection));
}

TEST_F(StudioKeysTest, whatIsTypedAfterAClickSelectsNothing) {
    clickKey(keyA);
    for (const auto each : {Qt::Key_Space, Qt::Key_Right, Qt::Key_Return, Qt::Key_B}) {
        key(each);
        EXPECT_EQ(selected(), Codes({keyA})) << each;
    }
}

TEST_F(StudioKeysTest, theKeyboardIsReachedByTab) {
    window->rootObject()->forceActiveFocus();
    bool reached = false;
    for (int tabs = 0; tabs < 40 && !reached; ++tabs) {
        key(Qt::Key_Tab);
        reached = keyboard()->hasActiveFocus();
    }
    EXPECT_TRUE(reached);
    // One more leaves it: its keys are gone through by arrow keys.
    key(Qt::Key_Tab);
    EXPECT_FALSE(keyboard()->hasActiveFocus());
}

TEST_F(StudioKeysTest, groupsStabilisersAndSoundsAreSelected) {
    KeyboardAdapter& adapter = *views->adapters().studio()->keyboard();
    adapter.selectGroup(static_cast<int>(KeyGroup::arrows));
    draw();
    EXPECT_EQ(selected(), Codes({123, 124, 125, 126}));
    click(named("Stabilised keys"));
    draw();
    for (const std::int64_t code : selected()) {
        EXPECT_TRUE(KeySet::isStabilised(code)) << code;
    }
    EXPECT_EQ(selected().size(), 5U) << "this keyboard has no keypad";
    click(named("Select the keys with Space bar"));
    draw();
    EXPECT_EQ(selected(), Codes({49}));
    click(named("All keys"));
    draw();
    EXPECT_EQ(selected(), Codes());
    EXPECT_EQ(adapter.selection(), "All keys");
}

TEST_F(StudioKeysTest, whatAKeyInheritsIsShownAndComesBack) {
    InspectorAdapter& inspector = *views->adapters().studio()->inspector();
    views->adapters().studio()->keyboard()->selectGroup(static_cast<int>(KeyGroup::alphas));
    inspector.setGainDb(-3);
    clickKey(keyA);
    EXPECT_EQ(inspector.gainDb(), 0.0);
    EXPECT_EQ(inspector.gainNote(), "Group −3.0 dB, together −3.0 dB");
    inspector.setGainDb(2);
    draw();
    EXPECT_EQ(inspector.gainNote(), "Group −3.0 dB, together −1.0 dB");
    EXPECT_NE(find(window->contentItem(), "Group −3.0 dB, together −1.0 dB"), nullptr);
    EXPECT_EQ(board().resolve(keyA)->assignment.gainDb, -1.0);
    EXPECT_TRUE(cap(keyA)->property("row").toMap()["own"].toBool());
    click(named("Reset to the group"));
    draw();
    EXPECT_EQ(board().resolve(keyA)->assignment.gainDb, -3.0);
    EXPECT_TRUE(board().keys.empty());
}

TEST_F(StudioKeysTest, theSoundOfAKeyIsItsGroupsUnlessItHasOne) {
    InspectorAdapter& inspector = *views->adapters().studio()->inspector();
    clickKey(keyA);
    EXPECT_EQ(inspector.sound(), "");
    EXPECT_EQ(inspector.sounds().front().toMap()["text"].toString().toStdString(),
              "As the group: " + board().resolve(keyA)->sound->name);
    const std::string other = board().sounds.back().id;
    inspector.setSound(QString::fromStdString(other));
    EXPECT_EQ(board().resolve(keyA)->sound->id, other);
    inspector.setSound("");
    EXPECT_TRUE(board().keys.empty()) << "what overrides nothing is no override";
}

TEST_F(StudioKeysTest, theReleaseOfAKeyIsWhatGroupAndBoardSay) {
    InspectorAdapter& inspector = *views->adapters().studio()->inspector();
    clickKey(keyA);
    EXPECT_EQ(inspector.releaseNote(), "The board: off");
    views->adapters().studio()->parts()->setReleaseByDefault(true);
    draw();
    EXPECT_EQ(inspector.releaseNote(), "The board: on");
    model->edit([](Board& edited) { edited.groups[KeyGroup::alphas].release = ReleaseMode::off; });
    draw();
    EXPECT_EQ(inspector.releaseNote(), "The group: off");
    inspector.setRelease(static_cast<int>(ReleaseMode::on));
    draw();
    EXPECT_EQ(inspector.releaseNote(), "");
    EXPECT_EQ(board().resolve(keyA)->assignment.release, ReleaseMode::on);
}

TEST_F(StudioKeysTest, onePanIsTheKeysPlaceUntilItIsMoved) {
    InspectorAdapter& inspector = *views->adapters().studio()->inspector();
    clickKey(keyA);
    EXPECT_EQ(inspector.pan(), layout(board().layout).position(keyA));
    EXPECT_EQ(inspector.panNote(), "Where the key is");
    inspector.setPan(0.5);
    draw();
    EXPECT_EQ(inspector.pan(), 0.5);
    EXPECT_EQ(board().resolve(keyA)->assignment.pan, 0.5);
    inspector.resetPan();
    EXPECT_FALSE(board().resolve(keyA)->assignment.pan);
}

TEST_F(StudioKeysTest, everyLayoutIsDrawnToScale) {
    for (const LayoutID id : allCases<LayoutID>()) {
        views->adapters().studio()->keyboard()->setLayout(static_cast<int>(id));
        draw();
        const KeyboardLayout& wanted = layout(id);
        const double unit = keyboard()->property("unit").toDouble();
        const double bezel = keyboard()->property("bezel").toDouble();
        const auto drawn = caps();
        ASSERT_EQ(drawn.size(), wanted.keys.size()) << rawString(id);
        for (std::size_t place = 0; place < drawn.size(); ++place) {
            EXPECT_NEAR(drawn[place]->x(), bezel + wanted.keys[place].x * unit, 0.01);
            EXPECT_NEAR(drawn[place]->y(), bezel + wanted.keys[place].y * unit, 0.01);
            EXPECT_NEAR(drawn[place]->width(), wanted.keys[place].w * unit, 0.01);
            EXPECT_NEAR(drawn[place]->height(), wanted.keys[place].h * unit, 0.01);
        }
        EXPECT_NEAR(keyboard()->height(), wanted.height * unit + 2 * bezel, 1.0) << rawString(id);
        EXPECT_LE(keyboard()->mapToScene({keyboard()->width(), 0}).x(), window->width());
    }
}

TEST_F(StudioKeysTest, arrowKeysReachEveryKeyOfEveryLayout) {
    KeyboardAdapter& adapter = *views->adapters().studio()->keyboard();
    for (const LayoutID id : allCases<LayoutID>()) {
        adapter.setLayout(static_cast<int>(id));
        std::set<int> wanted;
        for (const LayoutKey& key : layout(id).keys) {
            if (key.code) {
                wanted.insert(static_cast<int>(*key.code));
            }
        }
        std::set<int> reached{adapter.neighbour(-1, 0, 0)};
        for (std::size_t before = 0; before != reached.size();) {
            before = reached.size();
            for (const int code : std::set(reached)) {
                for (const auto& [dx, dy] : {std::pair(1, 0), {-1, 0}, {0, 1}, {0, -1}}) {
                    reached.insert(adapter.neighbour(code, dx, dy));
                }
            }
        }
        EXPECT_EQ(reached, wanted) << rawString(id);
    }
}

TEST_F(StudioKeysTest, whatDiffersInASelectionIsSaid) {
    InspectorAdapter& inspector = *views->adapters().studio()->inspector();
    clickKey(keyA);
    inspector.setGainDb(3);
    clickKey(keyS, Qt::ControlModifier);
    EXPECT_EQ(inspector.several(), InspectorAdapter::Gain);
    EXPECT_NE(find(window->contentItem(), "Several"), nullptr);
    inspector.setGainDb(2);
    draw();
    EXPECT_EQ(inspector.several(), InspectorAdapter::Values());
    EXPECT_EQ(find(window->contentItem(), "Several"), nullptr);
}

TEST_F(StudioKeysTest, soundsHaveLetters) {
    EXPECT_EQ(soundLetter(-1), "");
    EXPECT_EQ(soundLetter(0), "A");
    EXPECT_EQ(soundLetter(25), "Z");
    EXPECT_EQ(soundLetter(26), "AA");
    EXPECT_EQ(soundLetter(57), "BF");
    EXPECT_EQ(views->adapters().studio()->sounds()->rows()->at(1)["letter"], "B");
}

} // namespace
} // namespace vornic
