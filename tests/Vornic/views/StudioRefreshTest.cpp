// What happens to the model is told to the views once, and only where it shows: a key press costs
// the Studio next to nothing, a slider what it changes.

#include "tests/Vornic/views/ViewsFixture.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QSignalSpy>
#include <string>
#include <vector>

namespace vornic {
namespace {

class StudioRefreshTest : public ViewsFixture {
  protected:
    void SetUp() override {
        ViewsFixture::SetUp();
        // Everything is read once.
        model->onChange();
        settle();
        watch(&views->adapters());
    }

    /// Listens to every signal of an adapter's properties, and of the adapters and lists in them.
    void watch(QObject* object) {
        const QMetaObject* const type = object->metaObject();
        for (int at = QObject::staticMetaObject.propertyCount(); at < type->propertyCount(); ++at) {
            const QMetaProperty property = type->property(at);
            if (property.hasNotifySignal()) {
                listen(object, property.notifySignal());
            }
            if (auto* const inner = property.read(object).value<QObject*>()) {
                if (inner->inherits("QAbstractItemModel")) {
                    for (const char* const signal :
                         {"dataChanged(QModelIndex,QModelIndex,QList<int>)",
                          "rowsInserted(QModelIndex,int,int)", "rowsRemoved(QModelIndex,int,int)",
                          "modelReset()"}) {
                        const int index = inner->metaObject()->indexOfSignal(signal);
                        ASSERT_GE(index, 0) << signal;
                        listen(inner, inner->metaObject()->method(index));
                    }
                } else {
                    watch(inner);
                }
            }
        }
    }
    void listen(QObject* object, const QMetaMethod& signal) {
        spies.push_back(std::make_unique<QSignalSpy>(object, signal));
        names.push_back(std::string(object->metaObject()->className()) +
                        "::" + signal.name().toStdString());
    }

    /// What was told since the last time.
    std::vector<std::string> told() {
        std::vector<std::string> all;
        for (std::size_t at = 0; at < spies.size(); ++at) {
            for (; !spies[at]->isEmpty(); spies[at]->removeFirst()) {
                all.push_back(names[at]);
            }
        }
        return all;
    }

    std::vector<std::unique_ptr<QSignalSpy>> spies;
    std::vector<std::string> names;
};

using ::std::vector;

TEST_F(StudioRefreshTest, everySignalIsListenedTo) {
    EXPECT_GT(spies.size(), 80U);
    EXPECT_EQ(told(), vector<std::string>());
}

TEST_F(StudioRefreshTest, aHundredKeysTellOfKeysOnly) {
    QSignalSpy struck(views->adapters().keyboard(), &LiveKeyboard::struck);
    for (int key = 0; key < 100; ++key) {
        tap.press();
        ASSERT_TRUE(eventually([&] {
            settle();
            return model->activity().pressed().contains(FakeTap::key);
        }));
        settle();
        tap.release();
        ASSERT_TRUE(eventually([&] {
            settle();
            return model->activity().pressed().empty();
        }));
        settle();
    }
    EXPECT_EQ(struck.count(), 200) << "each key shows, down and up";
    for (const std::string& signal : told()) {
        EXPECT_TRUE(signal.ends_with("StatusAdapter::keyHeardChanged") ||
                    signal.ends_with("StatusAdapter::typingChanged"))
            << signal;
    }
}

TEST_F(StudioRefreshTest, theLampFollowsTypingByItself) {
    QSignalSpy typing(views->adapters().status(), &StatusAdapter::typingChanged);
    tap.press();
    ASSERT_TRUE(eventually([&] { return model->activity().lastCode() == FakeTap::key; }));
    scheduler.advance(std::chrono::milliseconds(200));
    settle();
    EXPECT_EQ(typing.count(), 1);
    EXPECT_TRUE(views->adapters().status()->typing());
    clock.advance(1.0);
    scheduler.advance(std::chrono::milliseconds(200));
    settle();
    EXPECT_EQ(typing.count(), 2);
    EXPECT_FALSE(views->adapters().status()->typing());
}

TEST_F(StudioRefreshTest, aSettingTellsOfItselfOnly) {
    model->setVolume(0.5);
    settle();
    EXPECT_EQ(told(), vector<std::string>{"vornic::SettingsAdapter::volumeChanged"});
    model->setVolume(0.5);
    settle();
    EXPECT_EQ(told(), vector<std::string>()) << "nothing has changed";
}

TEST_F(StudioRefreshTest, aSliderTellsOfItsRowOnly) {
    // The first edit makes a copy of a built-in board: from now on it is the same board.
    model->edit([](Board& board) { board.sounds.front().press.chain.attackDb = 3; });
    scheduler.advance(std::chrono::seconds(1));
    ASSERT_TRUE(eventually([&] { return !model->rendering(); }));
    settle();
    told();
    model->edit([](Board& board) { board.sounds.front().press.chain.attackDb = 4; });
    settle();
    EXPECT_EQ(views->adapters().studio()->shape()->chain()->at(0)["now"].toDouble(), 4.0);
    for (const std::string& signal : told()) {
        EXPECT_TRUE(signal == "vornic::RowsModel::dataChanged" ||
                    signal == "vornic::StrokeAdapter::renderingChanged")
            << signal;
    }
}

TEST_F(StudioRefreshTest, whatIsNotSeenIsNotComputed) {
    StudioAdapter& studio = *views->adapters().studio();
    EqualizerAdapter& equalizer = *studio.equalizer();
    equalizer.setSeen(false);
    const QList<double> before = equalizer.curve();
    equalizer.setBand(static_cast<int>(Equalizer::Band::air), 6);
    settle();
    EXPECT_EQ(equalizer.curve(), before);
    equalizer.setSeen(true);
    EXPECT_NE(equalizer.curve(), before) << "shown again, it is true again";
}

TEST_F(StudioRefreshTest, theSectionsThatAreHiddenAreNotSeen) {
    StudioAdapter& studio = *views->adapters().studio();
    studio.setTab(StudioAdapter::Tab::Keys);
    const auto window = views->make("studio/StudioView.qml", "");
    window->show();
    settle();
    EXPECT_TRUE(studio.keyboard()->seen());
    EXPECT_FALSE(studio.equalizer()->seen());
    EXPECT_FALSE(studio.stroke()->seen());
    EXPECT_FALSE(studio.layers()->seen());
    studio.setTab(StudioAdapter::Tab::Sounds);
    settle();
    EXPECT_FALSE(studio.keyboard()->seen());
    EXPECT_FALSE(studio.inspector()->seen());
    EXPECT_TRUE(studio.equalizer()->seen());
    EXPECT_TRUE(studio.stroke()->seen());
}

} // namespace
} // namespace vornic
