// Every section of the Studio's sounds: whole, named, reached by the keyboard, in light and dark.

#include "Vornic/views/theme/ThemeObject.h"
#include "tests/Vornic/views/StudioFixture.h"

#include <QDir>
#include <QImage>

namespace vornic {
namespace {

const std::string longSoundName =
    "A sound with an exceedingly long name that nobody shortens, whatever the window is like";

class StudioSectionsTest : public StudioFixture {
  protected:
    StudioAdapter::Tab tab() const override { return StudioAdapter::Tab::Sounds; }

    void go(const QString& section) {
        click(named(section));
        draw();
    }
    /// Kept where the environment names a folder for pictures.
    void picture(const QString& name) {
        const QString folder = qEnvironmentVariable("VORNIC_PICTURES");
        if (!folder.isEmpty()) {
            QDir().mkpath(folder);
            QTest::qWait(200);
            EXPECT_TRUE(window->grabWindow().save(QDir(folder).filePath(name + ".png")));
        }
    }
    void everyControlHasAName(QQuickItem* root) {
        if (!root->isVisible()) {
            return;
        }
        if (root->activeFocusOnTab()) {
            QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(root);
            ASSERT_NE(accessible, nullptr) << root->metaObject()->className();
            EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty())
                << root->metaObject()->className();
            ++controls;
        }
        for (QQuickItem* const child : root->childItems()) {
            everyControlHasAName(child);
        }
    }
    int controls = 0;
};

TEST_F(StudioSectionsTest, eachIsThereAndNamed) {
    views->adapters().studio()->layers()->add();
    views->adapters().studio()->layers()->setFlag(1, LayersAdapter::Flag::Mute, true);
    views->adapters().studio()->parts()->setSwitchPart(0, static_cast<int>(SwitchType::silent));
    views->adapters().studio()->equalizer()->applyPreset(presetCalled("thocky"));
    QObject* const theme = themeOf(views->engine());
    for (const bool dark : {false, true}) {
        theme->setProperty("dark", dark);
        for (const char* const section : {"Tone", "Layers", "Switch", "Board"}) {
            go(section);
            controls = 0;
            everyControlHasAName(window->contentItem());
            EXPECT_GT(controls, 20) << section;
            picture(QString("studio-sounds-%1-%2")
                        .arg(QString(section).toLower(), dark ? "dark" : "light"));
        }
    }
    theme->setProperty("dark", false);
}

TEST_F(StudioSectionsTest, longNamesAreCutAndNotRunOver) {
    model->edit([](Board& edited) {
        for (SoundSpec& sound : edited.sounds) {
            sound.name = longSoundName;
        }
    });
    draw();
    int cut = 0;
    const std::function<void(QQuickItem*)> look = [&](QQuickItem* item) {
        const QString text = item->property("text").toString();
        if (item->isVisible() && item->property("truncated").isValid() &&
            text.contains("exceedingly")) {
            EXPECT_TRUE(item->property("truncated").toBool());
            EXPECT_LE(item->width(), 190.0);
            ++cut;
        }
        for (QQuickItem* const child : item->childItems()) {
            look(child);
        }
    };
    look(window->contentItem());
    EXPECT_EQ(cut, static_cast<int>(board().sounds.size()));
    picture("studio-sounds-long-names");
    views->adapters().studio()->setTab(StudioAdapter::Tab::Keys);
    draw();
    picture("studio-keys-long-names");
}

TEST_F(StudioSectionsTest, theKeyboardBringsWhatItComesToIntoView) {
    go("Board");
    QQuickItem* const last = named("Variation");
    ASSERT_NE(last, nullptr);
    const auto inView = [&] {
        const QPoint place = middle(last);
        return place.y() > 0 && place.y() < window->height();
    };
    EXPECT_FALSE(inView());
    last->forceActiveFocus(Qt::TabFocusReason);
    draw();
    EXPECT_TRUE(inView());
}

TEST_F(StudioSectionsTest, aPartIsChosenByClickAndByKeyboard) {
    go("Switch");
    click(named("Topre"));
    draw();
    EXPECT_EQ(board().sounds.front().switchParts.type, SwitchType::topre);
    EXPECT_TRUE(named("Topre")->property("chosen").toBool());
    EXPECT_FALSE(named("Linear")->property("chosen").toBool());
    named("Silent")->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Space);
    EXPECT_EQ(board().sounds.front().switchParts.type, SwitchType::silent);
    go("Board");
    // Brings it into view.
    named("Tape mod")->forceActiveFocus(Qt::TabFocusReason);
    draw();
    click(named("Tape mod"));
    draw();
    EXPECT_TRUE(board().build.foams.contains(Foam::tapeMod));
    click(named("Tape mod"));
    draw();
    EXPECT_FALSE(board().build.foams.contains(Foam::tapeMod));
    named("Hear keys come up")->forceActiveFocus(Qt::TabFocusReason);
    draw();
    click(named("Hear keys come up"));
    draw();
    EXPECT_TRUE(board().releaseByDefault);
}

TEST_F(StudioSectionsTest, layersAreMixedByMouse) {
    go("Layers");
    click(named("Add a layer"));
    draw();
    ASSERT_EQ(board().sounds.front().press.layers.size(), 2U);
    click(named("Solo"));
    draw();
    EXPECT_TRUE(board().sounds.front().press.layers[0].solo);
    click(named("Delete layer 1"));
    draw();
    ASSERT_EQ(board().sounds.front().press.layers.size(), 1U);
    EXPECT_FALSE(board().sounds.front().press.layers[0].solo);
}

TEST_F(StudioSectionsTest, recordingsAreChosenInASheet) {
    go("Layers");
    click(named("Recordings of layer 1: spring/regular-01"));
    draw();
    QTest::qWait(50);
    QQuickItem* const space = named("Click · space");
    ASSERT_NE(space, nullptr);
    picture("studio-sounds-recordings");
    click(space);
    draw();
    EXPECT_EQ(board().sounds.front().press.layers[0].samples.size(), 2U);
    EXPECT_TRUE(space->property("chosen").toBool());
    key(Qt::Key_Escape);
    EXPECT_EQ(named("Click · space"), nullptr);
}

} // namespace
} // namespace vornic
