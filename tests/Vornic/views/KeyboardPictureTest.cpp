// The drawn keyboard follows the keys, costs no frames while nothing moves, and next to nothing of
// the main thread.

#include "Vornic/views/keyboard/KeyboardPicture.h"

#include "Vornic/views/theme/ThemeObject.h"
#include "tests/Vornic/views/ViewsFixture.h"

#include <QAccessible>
#include <QSignalSpy>
#include <algorithm>
#include <ctime>
#include <set>

namespace vornic {
namespace {

constexpr int keyA = 0;
constexpr int keySpace = 49;

class KeyboardPictureTest : public ViewsFixture {
  protected:
    void SetUp() override {
        ViewsFixture::SetUp();
        window = views->make("simple/SimpleView.qml", "");
        showActive(*window);
        window->grabWindow();
        picture = window->rootObject()->findChild<KeyboardPicture*>();
        ASSERT_NE(picture, nullptr);
        ASSERT_GT(picture->unit(), 10.0);
    }
    void TearDown() override {
        window.reset();
        ViewsFixture::TearDown();
    }

    LitKey* lit(int code) const {
        for (QQuickItem* const child : picture->childItems()) {
            auto* const key = dynamic_cast<LitKey*>(child);
            if (key != nullptr && key->code() == code) {
                return key;
            }
        }
        return nullptr;
    }
    void strike(int code, bool down, float loudness = 0.8F, float pan = 0.0F) {
        views->adapters().strike(code, down, {.loudness = loudness, .pan = pan});
    }
    bool comesToRest() {
        return QTest::qWaitFor([&] { return !picture->moving(); });
    }

    std::unique_ptr<QQuickView> window;
    KeyboardPicture* picture = nullptr;
};

TEST_F(KeyboardPictureTest, aKeyThatIsHeardGoesDownGlowsOutAndComesUp) {
    tap.press();
    ASSERT_TRUE(eventually([&] {
        settle();
        return lit(keySpace) != nullptr;
    }));
    EXPECT_TRUE(lit(keySpace)->pressed());
    EXPECT_GT(lit(keySpace)->glow(), 0.3) << "it sounds";
    ASSERT_TRUE(comesToRest());
    ASSERT_NE(lit(keySpace), nullptr) << "it is still held";
    EXPECT_EQ(lit(keySpace)->depth(), 1.0);
    EXPECT_EQ(lit(keySpace)->glow(), 0.0);
    tap.release();
    EXPECT_TRUE(eventually([&] {
        settle();
        return lit(keySpace) == nullptr;
    }));
    EXPECT_TRUE(comesToRest());
}

TEST_F(KeyboardPictureTest, aKeyThatIsSilentGoesDownWithoutLight) {
    model->setSoundsOn(false);
    settle();
    tap.press();
    ASSERT_TRUE(eventually([&] {
        settle();
        return lit(keySpace) != nullptr;
    }));
    EXPECT_EQ(lit(keySpace)->glow(), 0.0);
}

TEST_F(KeyboardPictureTest, louderKeysAreBrighter) {
    strike(keyA, true, 0.3F);
    strike(keySpace, true, 1.0F);
    ASSERT_NE(lit(keyA), nullptr);
    ASSERT_NE(lit(keySpace), nullptr);
    EXPECT_LT(lit(keyA)->glow(), lit(keySpace)->glow() - 0.1);
}

TEST_F(KeyboardPictureTest, theWayDownTakes30MillisecondsAndTheGlow180) {
    LitKey key(picture);
    const DrawnCap& cap = *picture->source()->scene().find(keyA);
    CapPainter::Look look;
    look.light = QColor(Qt::red);
    key.show(cap, {10, 10, 40, 40}, 40, picture->source()->scene().palette, look);
    key.press(1.0, false);
    EXPECT_EQ(key.depth(), 0.0);
    EXPECT_TRUE(key.advance(15));
    EXPECT_NEAR(key.depth(), 0.5, 1e-9);
    EXPECT_TRUE(key.advance(15));
    EXPECT_EQ(key.depth(), 1.0);
    EXPECT_TRUE(key.advance(149));
    EXPECT_GT(key.glow(), 0.0);
    EXPECT_FALSE(key.advance(1)) << "held, and dark";
    EXPECT_EQ(key.glow(), 0.0);
}

TEST_F(KeyboardPictureTest, drawsOnlyWhereSomethingMoves) {
    strike(keyA, true);
    const QImage with = window->grabWindow();
    ASSERT_NE(lit(keyA), nullptr);
    const QRectF place = lit(keyA)->mapRectToScene(lit(keyA)->boundingRect());
    strike(keyA, false);
    ASSERT_TRUE(QTest::qWaitFor([&] { return lit(keyA) == nullptr; }));
    const QImage without = window->grabWindow();
    QRect changed;
    for (int y = 0; y < with.height(); ++y) {
        for (int x = 0; x < with.width(); ++x) {
            if (with.pixel(x, y) != without.pixel(x, y)) {
                changed |= QRect(x, y, 1, 1);
            }
        }
    }
    EXPECT_FALSE(changed.isEmpty()) << "a lit key is seen";
    EXPECT_TRUE(place.toAlignedRect().contains(changed));
}

TEST_F(KeyboardPictureTest, takesNoFramesWhileNothingMovesOrNobodySees) {
    ASSERT_TRUE(comesToRest());
    QSignalSpy frames(window.get(), &QQuickWindow::frameSwapped);
    strike(keyA, true);
    strike(keyA, false);
    EXPECT_TRUE(picture->moving());
    ASSERT_TRUE(comesToRest());
    EXPECT_EQ(lit(keyA), nullptr);
    window->hide();
    strike(keyA, true);
    EXPECT_EQ(lit(keyA), nullptr);
    EXPECT_FALSE(picture->moving());
}

TEST_F(KeyboardPictureTest, withReducedMotionAKeyIsLitWhileItIsHeldAndNothingMoves) {
    themeOf(views->engine())->setProperty("still", true);
    strike(keyA, true);
    ASSERT_NE(lit(keyA), nullptr);
    EXPECT_EQ(lit(keyA)->depth(), 1.0);
    EXPECT_GT(lit(keyA)->glow(), 0.3);
    EXPECT_FALSE(picture->moving());
    strike(keyA, false);
    EXPECT_EQ(lit(keyA), nullptr);
    EXPECT_FALSE(picture->moving());
}

TEST_F(KeyboardPictureTest, onHeadphonesItShowsWhereAKeyIsHeard) {
    const auto ears = [&] {
        std::vector<EarLight*> all;
        for (QQuickItem* const child : picture->childItems()) {
            if (auto* const ear = dynamic_cast<EarLight*>(child)) {
                all.push_back(ear);
            }
        }
        return all;
    };
    ASSERT_EQ(ears().size(), 3U);
    strike(keyA, true, 1.0F, -1.0F);
    EXPECT_TRUE(std::ranges::none_of(ears(), &QQuickItem::isVisible)) << "not on speakers";
    output.facts.isHeadphones = true;
    scheduler.advance(std::chrono::seconds(1));
    settle();
    ASSERT_TRUE(views->adapters().keyboard()->headphones());
    strike(keyA, true, 1.0F, -1.0F);
    EXPECT_TRUE(ears()[0]->isVisible());
    EXPECT_FALSE(ears()[1]->isVisible()) << "all of it is left";
    ASSERT_TRUE(comesToRest());
    EXPECT_TRUE(std::ranges::none_of(ears(), &QQuickItem::isVisible));
}

TEST_F(KeyboardPictureTest, itShowsWhatStandsOnTheUsersKeys) {
    const LiveKeyboard& drawn = *picture->source();
    EXPECT_EQ(drawn.scene().find(keyA)->legend, "A");
    constexpr std::uint32_t placeOfA = 30;
    views->adapters().setLegends({{placeOfA, "Q"}});
    EXPECT_EQ(drawn.scene().find(keyA)->legend, "Q");
    EXPECT_EQ(drawn.scene().find(keyA)->said, "Q");
    views->adapters().setLegends({});
    EXPECT_EQ(drawn.scene().find(keyA)->legend, "A");
}

TEST_F(KeyboardPictureTest, aPressOnThePicturePlaysTheKeyAndAScreenReadersDoesToo) {
    QSignalSpy struck(views->adapters().keyboard(), &LiveKeyboard::struck);
    const DrawnCap& cap = *picture->source()->scene().find(keyA);
    const QPointF middle =
        QPointF(picture->bezel(), picture->bezel()) + cap.place.center() * picture->unit();
    QTest::mouseClick(window.get(), Qt::LeftButton, Qt::NoModifier,
                      picture->mapToScene(middle).toPoint());
    scheduler.advance(std::chrono::milliseconds(100));
    ASSERT_TRUE(eventually([&] {
        settle();
        return struck.count() >= 2;
    }));
    EXPECT_EQ(struck.at(0).at(0).toInt(), keyA);
    EXPECT_FALSE(model->activity().lastKey()) << "nobody has typed";

    QQuickItem* pressable = nullptr;
    std::set<QString> said;
    for (QQuickItem* const each : picture->parentItem()->childItems()) {
        QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(each);
        if (accessible != nullptr && accessible->role() == QAccessible::Button) {
            said.insert(accessible->text(QAccessible::Name));
            if (accessible->text(QAccessible::Name) == "S") {
                pressable = each;
            }
        }
    }
    EXPECT_GT(said.size(), 60U);
    ASSERT_NE(pressable, nullptr);
    QAccessible::queryAccessibleInterface(pressable)->actionInterface()->doAction(
        QAccessibleActionInterface::pressAction());
    scheduler.advance(std::chrono::milliseconds(100));
    EXPECT_TRUE(eventually([&] {
        settle();
        return struck.count() >= 4;
    }));
    EXPECT_EQ(struck.at(2).at(0).toInt(), 1);
}

double threadMillis() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

TEST_F(KeyboardPictureTest, aKeyTakesTheMainThreadLessThanAMillisecond) {
    const auto studio = views->make("studio/StudioView.qml", "");
    showActive(*studio);
    std::vector<double> taken;
    const std::vector<DrawnCap>& caps = picture->source()->scene().caps;
    for (int round = 0; round < 4; ++round) {
        for (const DrawnCap& cap : caps) {
            const double before = threadMillis();
            strike(cap.code, true);
            strike(cap.code, false);
            taken.push_back(threadMillis() - before);
        }
    }
    std::ranges::sort(taken);
    RecordProperty("median_us", std::to_string(taken[taken.size() / 2] * 1e3));
    RecordProperty("p99_us", std::to_string(taken[taken.size() * 99 / 100] * 1e3));
    EXPECT_LT(taken[taken.size() * 99 / 100], 1.0);
}

} // namespace
} // namespace vornic
