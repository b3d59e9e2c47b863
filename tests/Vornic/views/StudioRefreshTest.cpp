// What a key press costs the Studio: next to nothing, or typing fast would stutter.

#include "tests/Vornic/views/ViewsFixture.h"

#include <QSignalSpy>
#include <vector>

namespace vornic {
namespace {

/// Counts whatever a list of rows tells its views.
class RowsSpy {
  public:
    explicit RowsSpy(QObject* rows)
        : changed_(rows, SIGNAL(dataChanged(QModelIndex, QModelIndex, QList<int>))),
          inserted_(rows, SIGNAL(rowsInserted(QModelIndex, int, int))),
          removed_(rows, SIGNAL(rowsRemoved(QModelIndex, int, int))),
          reset_(rows, SIGNAL(modelReset())) {}

    qsizetype count() const {
        return changed_.count() + inserted_.count() + removed_.count() + reset_.count();
    }

  private:
    QSignalSpy changed_, inserted_, removed_, reset_;
};

class StudioRefreshTest : public ViewsFixture {
  protected:
    void SetUp() override {
        ViewsFixture::SetUp();
        // Everything is read once.
        model->onChange();
        settle();
        StudioAdapter& studio = views->studioAdapter();
        for (QObject* const rows :
             {studio.keyboard()->rows(), studio.sounds()->rows(), studio.stroke()->rows(),
              studio.equalizer()->bands(), studio.shape()->chain(), studio.shape()->character(),
              studio.layers()->rows(), studio.parts()->switchParts(), studio.parts()->buildParts(),
              studio.parts()->foams(), views->adapter().boards()}) {
            lists.push_back(std::make_unique<RowsSpy>(rows));
        }
        for (QObject* const adapter :
             {static_cast<QObject*>(studio.keyboard()), static_cast<QObject*>(studio.inspector()),
              static_cast<QObject*>(studio.sounds()), static_cast<QObject*>(studio.equalizer()),
              static_cast<QObject*>(studio.layers()), static_cast<QObject*>(studio.parts())}) {
            signals_.push_back(std::make_unique<QSignalSpy>(adapter, SIGNAL(changed())));
        }
    }

    qsizetype notifications() const {
        qsizetype count = 0;
        for (const auto& list : lists) {
            count += list->count();
        }
        for (const auto& spy : signals_) {
            count += spy->count();
        }
        return count;
    }

    std::vector<std::unique_ptr<RowsSpy>> lists;
    std::vector<std::unique_ptr<QSignalSpy>> signals_;
};

TEST_F(StudioRefreshTest, aHundredKeysRebuildNothingOfTheBoard) {
    QSignalSpy pressed(views->studioAdapter().keyboard(), SIGNAL(pressedChanged()));
    QSignalSpy all(&views->adapter(), SIGNAL(changed()));
    for (int key = 0; key < 100; ++key) {
        tap.press();
        ASSERT_TRUE(eventually([&] {
            settle();
            return model->activity().pressed().contains(FakeTap::key);
        }));
        settle();
        EXPECT_EQ(views->studioAdapter().keyboard()->pressed(),
                  QVariantList{static_cast<int>(FakeTap::key)});
        tap.release();
        ASSERT_TRUE(eventually([&] {
            settle();
            return model->activity().pressed().empty();
        }));
        settle();
    }
    EXPECT_EQ(pressed.count(), 200) << "each key shows, down and up";
    EXPECT_EQ(notifications(), 0);
    EXPECT_EQ(all.count(), 0);
}

TEST_F(StudioRefreshTest, theLampFollowsTypingByItself) {
    QSignalSpy typing(&views->adapter(), SIGNAL(typingChanged()));
    QSignalSpy all(&views->adapter(), SIGNAL(changed()));
    tap.press();
    ASSERT_TRUE(eventually([&] { return model->activity().lastCode() == FakeTap::key; }));
    scheduler.advance(std::chrono::milliseconds(200));
    settle();
    EXPECT_EQ(typing.count(), 1);
    EXPECT_TRUE(views->adapter().typing());
    clock.advance(1.0);
    scheduler.advance(std::chrono::milliseconds(200));
    settle();
    EXPECT_EQ(typing.count(), 2);
    EXPECT_FALSE(views->adapter().typing());
    EXPECT_EQ(all.count(), 0);
}

TEST_F(StudioRefreshTest, factsThatAreNotOfTheBoardLeaveItAlone) {
    model->setVolume(0.5);
    settle();
    EXPECT_EQ(notifications(), 0);
}

TEST_F(StudioRefreshTest, anEditChangesOnlyTheRowsThatShowIt) {
    model->edit([](Board& board) { board.sounds.front().press.chain.attackDb = 3; });
    settle();
    StudioAdapter& studio = views->studioAdapter();
    const auto* const chain = qobject_cast<RowsModel*>(studio.shape()->chain());
    ASSERT_NE(chain, nullptr);
    EXPECT_EQ(chain->at(0)["now"].toDouble(), 3.0);
    // The first edit makes a copy of a built-in board: from now on it is the same board.
    RowsSpy rows(studio.shape()->chain());
    QSignalSpy reset(studio.shape()->chain(), SIGNAL(modelReset()));
    model->edit([](Board& board) { board.sounds.front().press.chain.attackDb = 4; });
    settle();
    EXPECT_EQ(rows.count(), 1);
    EXPECT_EQ(reset.count(), 0);
}

} // namespace
} // namespace vornic
