#include "Vornic/views/theme/ThemeObject.h"
#include "tests/Vornic/views/ViewsFixture.h"

#include <QAccessible>
#include <QFileInfo>
#include <QImage>
#include <QQmlComponent>
#include <QStandardPaths>
#include <QWindow>
#include <algorithm>
#include <string>

namespace vornic {
namespace {

using ViewsTest = ViewsFixture;

TEST_F(ViewsTest, picturesEveryViewLightAndDark) {
    const auto folder = scratch / "a" / "pictures";
    views->snapshot(folder);
    for (const char* const view : {"menu-", "simple-", "studio-keys-", "studio-sounds-"}) {
        QImage pictures[2];
        for (const bool dark : {false, true}) {
            const auto file = folder / (std::string(view) + (dark ? "dark" : "light") + ".png");
            ASSERT_TRUE(pictures[dark].load(QString::fromStdString(file.string()))) << file;
            const bool brightGround = pictures[dark].pixelColor(2, 2).lightness() > 128;
            EXPECT_NE(brightGround, dark) << file;
            const QPoint end = pictures[dark].rect().bottomRight() - QPoint(2, 2);
            EXPECT_EQ(pictures[dark].pixelColor(end), pictures[dark].pixelColor(2, 2))
                << file << " is not filled";
        }
        EXPECT_EQ(pictures[0].size(), pictures[1].size());
    }
    const auto width = [&](const char* name) {
        return QImage(QString::fromStdString((folder / name).string())).width();
    };
    EXPECT_EQ(width("simple-light.png"), 640);
    EXPECT_EQ(width("studio-keys-light.png"), 820);
    EXPECT_EQ(width("studio-sounds-light.png"), 820);
    const auto count = [&] {
        return std::distance(std::filesystem::directory_iterator(folder), {});
    };
    EXPECT_EQ(count(), 8);
    views->snapshot(folder, true);
    EXPECT_EQ(count(), 12);
}

TEST_F(ViewsTest, theDiagnosticsTellOfRealTimeThatWasLost) {
    const auto tells = [&] {
        const QVariantList rows = views->adapters().diagnostics()->rows();
        return std::ranges::any_of(
            rows, [](const QVariant& row) { return row.toMap()["name"] == "Sound in real time"; });
    };
    EXPECT_FALSE(tells());
    output.lostRealTime = true;
    model->refreshState();
    settle();
    EXPECT_TRUE(tells());
}

TEST_F(ViewsTest, theSwitchOfThePanelTurnsTheSoundsOff) {
    const auto panel = views->make("panel/Panel.qml", "");
    showActive(*panel);
    ASSERT_TRUE(model->soundsOn());
    // Typed to be heard, a key presses nothing; Tab comes to the switch first.
    QTest::keyClick(panel.get(), Qt::Key_Space);
    EXPECT_TRUE(model->soundsOn());
    QTest::keyClick(panel.get(), Qt::Key_Tab);
    QTest::keyClick(panel.get(), Qt::Key_Space);
    EXPECT_FALSE(model->soundsOn());
    settle();
    EXPECT_NE(find(panel->rootObject(), "Off · keys are silent"), nullptr);
}

TEST_F(ViewsTest, thePanelTellsWhereTheKeyboardSitsAndChangesIt) {
    const auto panel = views->make("panel/Panel.qml", "");
    panel->show();
    settle();
    EXPECT_NE(find(panel->rootObject(), "Buckling Spring · On the desk"), nullptr);
    click(find(panel->rootObject(), "Close"));
    settle();
    EXPECT_EQ(model->stage().placement, Placement::close);
    EXPECT_NE(find(panel->rootObject(), "Buckling Spring · Close"), nullptr);
}

TEST_F(ViewsTest, thePanelSaysWhenKeysCannotBeHeard) {
    const auto panel = views->make("panel/Panel.qml", "");
    panel->show();
    settle();
    EXPECT_NE(find(panel->rootObject(), "Listening"), nullptr);
    tap.allowed = false;
    scheduler.advance(std::chrono::seconds(1));
    EXPECT_TRUE(eventually([&] {
        settle();
        return find(panel->rootObject(), "Can't hear your keys") != nullptr;
    }));
    EXPECT_EQ(find(panel->rootObject(), "Listening"), nullptr);
}

TEST_F(ViewsTest, theStudioWritesAndReadsBoardFiles) {
    const auto file = QUrl::fromLocalFile(QString::fromStdString((scratch / "my.vornic").string()));
    views->adapters().board()->exportTo(file);
    ASSERT_TRUE(eventually([&] { return !model->files().work(); }));
    ASSERT_TRUE(std::filesystem::exists(scratch / "my.vornic"));
    const std::size_t before = model->boards().size();
    Q_EMIT views->adapters().windows()->openFile(file);
    EXPECT_TRUE(eventually([&] { return model->boards().size() == before + 1; }));
    settle();
    EXPECT_TRUE(views->adapters().board()->mine());
}

TEST_F(ViewsTest, theStudiosButtonsOpenTheFileDialog) {
    const auto studio = views->make("studio/StudioView.qml", "");
    studio->show();
    settle();
    click(find(studio->rootObject(), "Export…"));
    settle();
    auto* const loader = studio->rootObject()->findChild<QObject*>("files");
    ASSERT_NE(loader, nullptr);
    auto* const dialog = loader->property("item").value<QObject*>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(dialog->property("visible").toBool());
    EXPECT_EQ(dialog->property("acceptLabel"), "Save");
    EXPECT_TRUE(
        dialog->property("selectedFile").toUrl().toLocalFile().endsWith("/Buckling Spring.vornic"))
        << dialog->property("selectedFile").toString().toStdString();
}

TEST_F(ViewsTest, aBoardsNameLeadsNoFileAstray) {
    BoardAdapter& board = *views->adapters().board();
    const auto suggested = [&](const std::string& name) {
        model->renameBoard(name);
        settle();
        const QString file = board.exportSuggestion().toLocalFile();
        EXPECT_EQ(QFileInfo(file).path(),
                  QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
        return QFileInfo(file).fileName().toStdString();
    };
    model->newBoard();
    EXPECT_EQ(suggested("Mine & yours"), "Mine & yours.vornic");
    EXPECT_EQ(suggested("../../etc/passwd"), "-..-etc-passwd.vornic");
    EXPECT_EQ(suggested("..."), "Board.vornic");
}

TEST_F(ViewsTest, theTraysPanelGoesAwayWithTheKeyboard) {
    views->togglePanel({300, 20});
    auto* const panel = const_cast<QQuickView*>(views->panel());
    ASSERT_TRUE(QTest::qWaitForWindowActive(panel));
    QWindow other;
    other.show();
    other.requestActivate();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !panel->isVisible(); }));
    // The press on the icon that took the keyboard from it does not open it again.
    views->togglePanel({300, 20});
    EXPECT_FALSE(panel->isVisible());
    views->togglePanel({300, 20});
    EXPECT_TRUE(panel->isVisible());
    ASSERT_TRUE(QTest::qWaitForWindowActive(panel));
    QTest::keyClick(panel, Qt::Key_Escape);
    EXPECT_FALSE(panel->isVisible());
}

TEST_F(ViewsTest, everyWindowKnowsTheKeysOfWindows) {
    int quits = 0;
    views->onQuit = [&] { ++quits; };
    model->setAdvanced(true);
    views->openStudio();
    auto* const studio = const_cast<QQuickView*>(views->studio());
    ASSERT_TRUE(QTest::qWaitForWindowActive(studio));
    QTest::keyClick(studio, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(studio->isVisible());
    views->openStudio();
    ASSERT_TRUE(QTest::qWaitForWindowActive(studio));
    QTest::keyClick(studio, Qt::Key_Escape);
    EXPECT_FALSE(studio->isVisible());
    views->openStudio();
    ASSERT_TRUE(QTest::qWaitForWindowActive(studio));
    EXPECT_EQ(views->settings(), nullptr);
    QTest::keyClick(studio, Qt::Key_Comma, Qt::ControlModifier);
    ASSERT_NE(views->settings(), nullptr);
    EXPECT_TRUE(views->settings()->isVisible());
    EXPECT_EQ(quits, 0);
    QTest::keyClick(studio, Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(quits, 1);
}

TEST_F(ViewsTest, wordsWhatOnlyAnotherSystemHasForThisOne) {
    const auto settings = views->make("settings/SettingsView.qml", "");
    EXPECT_NE(find(settings->rootObject(), "Alt+Super+K"), nullptr);
    EXPECT_EQ(find(settings->rootObject(), "⌥⌘K"), nullptr);
}

TEST_F(ViewsTest, theAdvancedEditorDecidesWhatOpens) {
    views->openVornic();
    EXPECT_NE(views->simple(), nullptr);
    EXPECT_EQ(views->studio(), nullptr);
    model->setAdvanced(true);
    views->openVornic();
    EXPECT_NE(views->studio(), nullptr);
}

TEST_F(ViewsTest, aNameThatWasOnlyLookedAtRenamesNothing) {
    model->newBoard();
    const std::string first = model->board()->id;
    const auto studio = views->make("studio/StudioView.qml", "");
    showActive(*studio);
    QQuickItem* const name = view(studio->rootObject(), "EditableText");
    ASSERT_NE(name, nullptr);
    name->forceActiveFocus();
    // Meanwhile a command makes another board current.
    model->selectBoard("spring");
    settle();
    studio->rootObject()->forceActiveFocus();
    settle();
    EXPECT_EQ(model->board()->id, "spring");
    EXPECT_EQ(model->board()->name, "Buckling Spring");
    EXPECT_EQ(model->boards().size(), 2U);
}

TEST_F(ViewsTest, aBoardIsDeletedOnlyAfterAQuestion) {
    model->newBoard();
    settle();
    const auto studio = views->make("studio/StudioView.qml", "");
    showActive(*studio);
    auto* const sheet = studio->rootObject()->findChild<QObject*>("deleteBoard");
    ASSERT_NE(sheet, nullptr);
    QMetaObject::invokeMethod(sheet, "open");
    settle();
    EXPECT_EQ(model->boards().size(), 2U);
    click(find(studio->contentItem(), "Delete"));
    settle();
    EXPECT_EQ(model->boards().size(), 1U);
}

TEST_F(ViewsTest, aDropdownKeepsItsChoiceWhenItsEntriesChange) {
    QQmlComponent component(&views->engine());
    component.setData("import QtQuick; import Vornic; Dropdown { value: 'b'; options: [{ value: "
                      "'a', text: 'A' }, { value: 'b', text: 'B' }] }",
                      QUrl());
    const std::unique_ptr<QObject> box(component.create());
    ASSERT_TRUE(box) << component.errorString().toStdString();
    EXPECT_EQ(box->property("currentIndex"), 1);
    box->setProperty("options", QVariantList{QVariantMap{{"value", "c"}, {"text", "C"}},
                                             QVariantMap{{"value", "d"}, {"text", "D"}},
                                             QVariantMap{{"value", "b"}, {"text", "B"}}});
    EXPECT_EQ(box->property("currentIndex"), 2);
}

TEST_F(ViewsTest, aScreenReadersActionsReachTheModel) {
    const auto panel = views->make("panel/Panel.qml", "");
    panel->show();
    settle();
    QAccessibleInterface* const toggle =
        QAccessible::queryAccessibleInterface(view(panel->rootObject(), "SoundsSwitch"));
    ASSERT_NE(toggle, nullptr);
    ASSERT_TRUE(model->soundsOn());
    toggle->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_FALSE(model->soundsOn());

    const auto simple = views->make("simple/SimpleView.qml", "");
    simple->show();
    settle();
    QQuickItem* const slider = view(simple->rootObject(), "ValueSlider");
    const double before = model->tweaks().deeper;
    QAccessible::queryAccessibleInterface(slider)->actionInterface()->doAction(
        QAccessibleActionInterface::increaseAction());
    EXPECT_GT(model->tweaks().deeper, before);
}

TEST_F(ViewsTest, theTraysPanelGoesAwayWhenItHasOpenedAWindow) {
    views->togglePanel({300, 20});
    ASSERT_TRUE(views->panel()->isVisible());
    views->openSettings();
    EXPECT_FALSE(views->panel()->isVisible());
    views->showPanelAsWindow();
    views->openSettings();
    EXPECT_TRUE(views->panel()->isVisible()) << "as a window of its own it stays";
}

TEST_F(ViewsTest, theStudioSaysWhoseTheBoardIs) {
    const auto studio = views->make("studio/StudioView.qml", "");
    studio->show();
    settle();
    EXPECT_NE(find(studio->rootObject(), "Built in · editing makes your own copy"), nullptr);
    EXPECT_EQ(find(studio->rootObject(), "Yours"), nullptr);
    model->edit([](Board& board) { board.stabs.rattle = 0.5; });
    settle();
    EXPECT_EQ(find(studio->rootObject(), "Built in · editing makes your own copy"), nullptr);
    EXPECT_NE(find(studio->rootObject(), "Yours"), nullptr);
}

TEST_F(ViewsTest, thePanelSaysWhyItIsSilentAndWhatToDo) {
    const auto panel = views->make("panel/Panel.qml", "");
    panel->show();
    model->setSoundsOn(false);
    settle();
    EXPECT_NE(find(panel->rootObject(), "Your keys are heard, but the sounds are off."), nullptr);
    click(find(panel->rootObject(), "Switch on"));
    settle();
    EXPECT_TRUE(model->soundsOn());
    EXPECT_EQ(find(panel->rootObject(), "Switch on"), nullptr);
    output.facts.name = "";
    scheduler.advance(std::chrono::seconds(1));
    settle();
    EXPECT_EQ(views->adapters().status()->symbol(), "warning");
    EXPECT_TRUE(views->adapters().status()->why().startsWith("Nothing sounds"));
}

TEST_F(ViewsTest, thePanelIsNeverTallerThanItsWindowAndItsFooterStays) {
    for (int number = 0; number < 12; ++number) {
        model->newBoard();
    }
    settle();
    const auto panel = views->make("panel/Panel.qml", "");
    panel->resize(panel->width(), 420);
    showActive(*panel);
    panel->grabWindow();
    settle();
    const QRectF window(QPointF(), QSizeF(panel->size()));
    for (const char* const button : {"Open Vornic…", "Settings", "Quit"}) {
        const QQuickItem* const item = find(panel->rootObject(), button);
        ASSERT_NE(item, nullptr) << button;
        EXPECT_TRUE(window.contains(item->mapRectToScene(item->boundingRect()))) << button;
    }
}

TEST_F(ViewsTest, windowsComeBackWhereTheyWere) {
    const auto file = scratch / "windows.json";
    views->rememberIn(file);
    views->openSettings();
    auto* const first = const_cast<QQuickView*>(views->settings());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(first));
    first->setGeometry(60, 50, 480, 400);
    QTest::keyClick(first, Qt::Key_W, Qt::ControlModifier);
    ASSERT_FALSE(first->isVisible());
    ASSERT_TRUE(std::filesystem::exists(file));
    const QPoint place = first->position();

    views.reset();
    views = std::make_unique<Views>(*model);
    views->rememberIn(file);
    views->openSettings();
    EXPECT_EQ(views->settings()->size(), QSize(480, 400));
    EXPECT_EQ(views->settings()->position(), place);
}

TEST_F(ViewsTest, reducedMotionFollowsTheDesktopUntilTheUserSaysOtherwise) {
    SettingsAdapter& settings = *views->adapters().settings();
    views->rememberIn(scratch / "windows.json");
    views->followMotion(true);
    EXPECT_TRUE(settings.reduceMotion());
    EXPECT_TRUE(themeOf(views->engine())->property("still").toBool());
    settings.setReduceMotion(false);

    views.reset();
    views = std::make_unique<Views>(*model);
    views->rememberIn(scratch / "windows.json");
    views->followMotion(true);
    EXPECT_FALSE(views->adapters().settings()->reduceMotion()) << "the user's word is kept";
    views->followMotion(false);
    views->followMotion(true);
    EXPECT_TRUE(views->adapters().settings()->reduceMotion()) << "until the desktop changes";
}

TEST_F(ViewsTest, aDoubleClickTakesATweakBack) {
    SimpleTweaks tweaks;
    tweaks.deeper = 0.6;
    model->setTweaks(tweaks);
    settle();
    const auto simple = views->make("simple/SimpleView.qml", "");
    showActive(*simple);
    simple->grabWindow();
    QQuickItem* const row = view(simple->rootObject(), "TweakRow");
    ASSERT_NE(row, nullptr);
    QQuickItem* const slider = view(row, "ValueSlider");
    const QPoint place =
        slider->mapToScene({slider->width() * 0.8, slider->height() / 2}).toPoint();
    QTest::mouseDClick(simple.get(), Qt::LeftButton, Qt::NoModifier, place);
    EXPECT_TRUE(QTest::qWaitFor([&] { return model->tweaks().deeper == 0.0; }));
    EXPECT_FALSE(slider->hasActiveFocus());
}

} // namespace
} // namespace vornic
