#include "tests/Vornic/views/StudioFixture.h"

#include <cmath>

namespace vornic {
namespace {

using Band = Equalizer::Band;

class StudioSoundsTest : public StudioFixture {
  protected:
    StudioAdapter::Tab tab() const override { return StudioAdapter::Tab::Sounds; }

    const ChainParams& chain() const { return board().sounds.front().press.chain; }
    float gain(Band band) const { return chain().eq.gain(band); }

    /// Where a band's handle is while its gain is `db`.
    static QPoint handle(const QQuickItem* band, double db) {
        const double perDb = band->property("perDb").toDouble();
        return at(band, band->width() / 2, (band->property("shown").toDouble() - db) * perDb);
    }
};

TEST_F(StudioSoundsTest, aBandIsDraggedAndItsCurveFollows) {
    const QQuickItem* const clack = named("Clack");
    ASSERT_NE(clack, nullptr);
    const QList<double> before = views->adapters().studio()->equalizer()->curve();
    drag(handle(clack, 0), handle(clack, 6));
    EXPECT_NEAR(gain(Band::clack), 6.0F, 0.2F);
    EXPECT_EQ(gain(Band::body), 0.0F);
    EXPECT_NE(views->adapters().studio()->equalizer()->curve(), before);
    EXPECT_TRUE(views->adapters().board()->mine())
        << "nothing moves under the mouse when it becomes a copy";
    // One drag is one step, and the handle is where the next drag takes it up.
    drag(handle(clack, 6), handle(clack, -20));
    EXPECT_EQ(gain(Band::clack), -12.0F);
    EXPECT_TRUE(model->undo());
    EXPECT_EQ(gain(Band::clack), 0.0F);
}

TEST_F(StudioSoundsTest, aPressBesideAHandleMovesNothing) {
    const QQuickItem* const air = named("Air");
    ASSERT_NE(air, nullptr);
    QTest::mouseClick(window.get(), Qt::LeftButton, {}, handle(air, 9));
    draw();
    EXPECT_EQ(gain(Band::air), 0.0F);
}

TEST_F(StudioSoundsTest, aDoubleClickPutsABandBack) {
    model->edit([](Board& edited) { edited.sounds.front().press.chain.eq.setGain(Band::body, 7); });
    draw();
    const QQuickItem* const body = named("Body");
    ASSERT_NE(body, nullptr);
    QTest::mouseClick(window.get(), Qt::LeftButton, {}, handle(body, 7));
    QTest::mouseDClick(window.get(), Qt::LeftButton, {}, handle(body, 7));
    draw();
    EXPECT_EQ(gain(Band::body), 0.0F);
}

TEST_F(StudioSoundsTest, arrowKeysMoveABand) {
    QQuickItem* const bass = named("Bass");
    ASSERT_NE(bass, nullptr);
    bass->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Up);
    key(Qt::Key_Up);
    EXPECT_FLOAT_EQ(gain(Band::bass), 1.0F);
    key(Qt::Key_Down);
    EXPECT_FLOAT_EQ(gain(Band::bass), 0.5F);
    key(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_FLOAT_EQ(gain(Band::bass), 0.6F);
    key(Qt::Key_Delete);
    EXPECT_EQ(gain(Band::bass), 0.0F);
    key(Qt::Key_Tab);
    EXPECT_TRUE(named("Body")->hasActiveFocus());
}

TEST_F(StudioSoundsTest, aSliderKeepsTheMouseWhileItsValueComesBack) {
    const QQuickItem* const attack = named("Attack");
    ASSERT_NE(attack, nullptr);
    drag(middle(attack), at(attack, attack->width(), attack->height() / 2));
    EXPECT_EQ(chain().attackDb, 12.0);
}

TEST_F(StudioSoundsTest, theStrokeIsDrawnAnewWhenItsRenderLands) {
    const auto* const rows = qobject_cast<RowsModel*>(views->adapters().studio()->stroke()->rows());
    ASSERT_NE(rows, nullptr);
    ASSERT_EQ(rows->count(), 3);
    const QVariantList before = rows->rows();
    EXPECT_FALSE(rows->at(0)["strips"].toList().isEmpty());
    EXPECT_NE(rows->at(0)["strips"], rows->at(2)["strips"]) << "harder is louder";
    model->edit([](Board& edited) { edited.sounds.front().press.chain.pitch = -12; });
    settle();
    EXPECT_EQ(rows->rows(), before) << "it is not rendered yet";
    scheduler.advance(std::chrono::seconds(1));
    EXPECT_TRUE(eventually([&] {
        settle();
        return rows->rows() != before;
    }));
}

TEST_F(StudioSoundsTest, aClickOnAWavePlaysIt) {
    QQuickItem* const hard = named("Play: Hard");
    ASSERT_NE(hard, nullptr);
    click(hard);
    EXPECT_TRUE(eventually([&] { return heard(); }));
}

TEST_F(StudioSoundsTest, arrowKeysGoThroughTheSounds) {
    ASSERT_GT(board().sounds.size(), 2U);
    QQuickItem* const list = named("Sounds of the board");
    ASSERT_NE(list, nullptr);
    list->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    EXPECT_EQ(model->studio().editingSoundID, board().sounds[2].id);
    key(Qt::Key_Up);
    EXPECT_EQ(model->studio().editingSoundID, board().sounds[1].id);
    EXPECT_EQ(named("Name of the sound")->property("text").toString().toStdString(),
              board().sounds[1].name);
}

TEST_F(StudioSoundsTest, soundsAreAddedCopiedRenamedAndDeleted) {
    const std::size_t before = board().sounds.size();
    click(named("New sound"));
    draw();
    ASSERT_EQ(board().sounds.size(), before + 1);
    EXPECT_EQ(board().sounds[1].name, "New sound");
    EXPECT_EQ(model->studio().editingSoundID, board().sounds[1].id);
    QQuickItem* const name = named("Name of the sound");
    click(name);
    name->setProperty("text", "Mine");
    key(Qt::Key_Return);
    EXPECT_EQ(board().sounds[1].name, "Mine");
    click(named("Duplicate sound"));
    draw();
    EXPECT_EQ(board().sounds[2].name, "Mine copy");
    EXPECT_NE(board().sounds[2].id, board().sounds[1].id);
    click(named("Delete sound"));
    draw();
    click(named("Use for every key"));
    draw();
    EXPECT_FALSE(named("Use for every key")->isEnabled());
    ASSERT_EQ(board().sounds.size(), before + 1);
}

class StudioCompareTest : public StudioSoundsTest {
  protected:
    void SetUp() override {
        StudioSoundsTest::SetUp();
        model->edit([](Board& edited) { edited.sounds.front().press.chain.pitch = -12; });
        draw();
        compare = named("A / B");
        ASSERT_NE(compare, nullptr);
    }
    void waitUntilHeld() const {
        ASSERT_TRUE(QTest::qWaitFor([&] { return compare->property("held").toBool(); }));
    }

    QQuickItem* compare = nullptr;
};

TEST_F(StudioCompareTest, whileTheButtonIsHeldTheFirstVersionPlays) {
    QTest::mousePress(window.get(), Qt::LeftButton, {}, middle(compare));
    EXPECT_TRUE(model->comparing());
    waitUntilHeld();
    EXPECT_TRUE(model->comparing());
    QTest::mouseRelease(window.get(), Qt::LeftButton, {}, middle(compare));
    EXPECT_FALSE(model->comparing());
}

TEST_F(StudioCompareTest, aClickGoesToAndFro) {
    click(compare);
    EXPECT_TRUE(model->comparing());
    draw();
    click(compare);
    EXPECT_FALSE(model->comparing());
}

TEST_F(StudioCompareTest, noLetterIsAShortcut) {
    click(compare);
    draw();
    click(compare);
    draw();
    ASSERT_FALSE(model->comparing());
    for (const auto each : {Qt::Key_B, Qt::Key_Space, Qt::Key_A, Qt::Key_Return}) {
        key(each);
        EXPECT_FALSE(model->comparing()) << each << ": it is typed to be heard";
    }
}

TEST_F(StudioSoundsTest, whatIsTypedAfterAClickDeletesNothing) {
    click(named("Duplicate sound"));
    draw();
    const Board before = board();
    click(view(window->rootObject(), "SoundRow"));
    draw();
    for (const auto each : {Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Space, Qt::Key_Return}) {
        key(each);
    }
    EXPECT_EQ(board(), before);
}

} // namespace
} // namespace vornic
