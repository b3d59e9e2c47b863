#include "Vornic/views/recording/RecordingAdapter.h"

#include "VornicCore/audiofiles/WriteWav.h"
#include "tests/support/ModelFixture.h"
#include "tests/support/TypingNoise.h"

namespace vornic {
namespace {

using Phase = RecordingAdapter::Phase;

using namespace std::chrono_literals;

class RecordingAdapterTest : public ModelFixture {
  protected:
    void SetUp() override {
        ASSERT_TRUE(startToPlay());
        adapter = std::make_unique<RecordingAdapter>(*model);
        model->onChange = [this] { adapter->refresh(); };
    }
    void TearDown() override {
        model->onChange = [] {};
        adapter.reset();
    }

    /// Three presses, the middle one with its release.
    static std::vector<float> typing() {
        return TypingNoise(2, 48000, 1e-4F)
            .hit(0.3, 0.2F)
            .hit(0.8, 0.8F)
            .hit(0.95, 0.2F)
            .hit(1.4, 0.4F)
            .samples();
    }
    void pass(int tenths) {
        for (int i = 0; i < tenths; ++i) {
            clock.advance(0.1);
            scheduler.advance(100ms);
            scheduler.run();
        }
    }
    QVariant at(int row, StrokeListModel::Role role) const {
        const auto* const rows = qobject_cast<QAbstractItemModel*>(adapter->strokes());
        return rows->data(rows->index(row, 0), role);
    }

    std::unique_ptr<RecordingAdapter> adapter;
};

TEST_F(RecordingAdapterTest, goesFromIdleOverRecordingToChoosingAndBack) {
    microphoneInput.answersAtOnce = false;
    EXPECT_EQ(adapter->phase(), Phase::Idle);
    adapter->startRecording();
    EXPECT_EQ(adapter->phase(), Phase::Starting);
    microphoneInput.answer();
    EXPECT_EQ(adapter->phase(), Phase::Recording);
    microphoneInput.hear(typing());
    adapter->stopRecording(true);
    EXPECT_EQ(adapter->phase(), Phase::Reading) << "it is being cut";
    EXPECT_TRUE(eventually([&] { return adapter->phase() == Phase::Choosing; }));
    EXPECT_EQ(adapter->name(), "My keyboard");
    adapter->cancel();
    EXPECT_EQ(adapter->phase(), Phase::Idle);
    EXPECT_EQ(adapter->offered(), 0);
}

TEST_F(RecordingAdapterTest, saysHowTheRecordingGoes) {
    adapter->startRecording();
    EXPECT_EQ(adapter->level(), 0.0);
    EXPECT_EQ(adapter->verdict(), "");
    EXPECT_EQ(adapter->secondsLeft(), 20);
    microphoneInput.hear(typing());
    microphoneInput.hear(std::vector<float>(480, 0.1F));
    pass(10);
    EXPECT_NEAR(adapter->level(), 40.0 / 60.0, 1e-6);
    EXPECT_FALSE(adapter->clipping());
    EXPECT_EQ(adapter->secondsLeft(), 19);
    EXPECT_EQ(adapter->good(), 3);
    EXPECT_EQ(adapter->verdict(), "Good.");
    EXPECT_TRUE(adapter->lastIsGood());
    microphoneInput.hear({1.0F});
    pass(1);
    EXPECT_EQ(adapter->level(), 1.0);
    EXPECT_TRUE(adapter->clipping());
}

TEST_F(RecordingAdapterTest, saysWhatToDoAboutAMicrophoneThatDoesNotStart) {
    microphoneInput.format.reset();
    adapter->startRecording();
    EXPECT_EQ(adapter->phase(), Phase::Idle);
    EXPECT_EQ(adapter->failure(), "Couldn't start the microphone.");
    EXPECT_EQ(adapter->advice(), "No microphone.");
    microphoneInput.format = MicrophoneInput::Format{48000, 1};
    adapter->startRecording();
    EXPECT_EQ(adapter->failure(), "");
    EXPECT_EQ(adapter->advice(), "");
}

TEST_F(RecordingAdapterTest, saysWhyARecordingEndedByItself) {
    adapter->startRecording();
    microphoneInput.hear(typing());
    pass(201);
    ASSERT_TRUE(eventually([&] { return adapter->phase() == Phase::Choosing; }));
    EXPECT_EQ(adapter->notice(), "The 20 seconds are up.");
    adapter->cancel();
    adapter->startRecording();
    microphoneInput.hear(typing());
    microphoneInput.lose();
    ASSERT_TRUE(eventually([&] { return adapter->phase() == Phase::Choosing; }));
    EXPECT_EQ(adapter->notice(), "The microphone is gone. What it heard until then has been kept.");
    adapter->cancel();
    EXPECT_EQ(adapter->notice(), "");
}

TEST_F(RecordingAdapterTest, showsTheStrokesTheBestFirst) {
    openSession(typing(), "x");
    EXPECT_EQ(adapter->offered(), 3);
    EXPECT_EQ(adapter->found(), 3);
    EXPECT_EQ(adapter->ticked(), 3);
    EXPECT_EQ(adapter->releases(), 1);
    for (int row = 0; row < 3; ++row) {
        EXPECT_EQ(at(row, StrokeListModel::rank), row + 1);
        EXPECT_TRUE(at(row, StrokeListModel::ticked).toBool());
        EXPECT_FALSE(at(row, StrokeListModel::moved).toBool());
        EXPECT_GT(at(row, StrokeListModel::snr).toDouble(), 30.0);
        EXPECT_EQ(at(row, StrokeListModel::wave).toList().size(), 400);
        EXPECT_NEAR(at(row, StrokeListModel::cutBegin).toDouble(), 30.0 / 400.0, 0.002);
    }
    EXPECT_NEAR(at(0, StrokeListModel::seconds).toDouble(), 0.8, 0.005);
    // 150 ms after its press, less what a cut keeps before it.
    EXPECT_NEAR(at(0, StrokeListModel::releaseBegin).toDouble(), (33.0 + 147.0) / 400.0, 0.01);
    EXPECT_EQ(at(1, StrokeListModel::releaseEnd).toDouble(), 0.0);
}

TEST_F(RecordingAdapterTest, movesTheCutsOfAStrokeAndTakesThemBack) {
    openSession(typing(), "x");
    const double end = at(1, StrokeListModel::cutEnd).toDouble();
    const double millis = at(1, StrokeListModel::millis).toDouble();
    int reset = 0;
    int changed = 0;
    auto* const rows = qobject_cast<QAbstractItemModel*>(adapter->strokes());
    QObject::connect(rows, &QAbstractItemModel::modelReset, rows, [&] { ++reset; });
    QObject::connect(rows, &QAbstractItemModel::dataChanged, rows, [&] { ++changed; });
    adapter->moveEnd(1, 0.9);
    EXPECT_NEAR(at(1, StrokeListModel::cutEnd).toDouble(), 0.9, 1e-4);
    EXPECT_TRUE(at(1, StrokeListModel::moved).toBool());
    adapter->nudgeEnd(1, -10);
    EXPECT_NEAR(at(1, StrokeListModel::cutEnd).toDouble(), 0.9 - 10.0 / 400.0, 1e-4);
    // The onset stays inside.
    adapter->moveBegin(1, 0.9);
    EXPECT_NEAR(at(1, StrokeListModel::cutBegin).toDouble(), 33.0 / 400.0, 1e-4);
    adapter->nudgeBegin(1, -1);
    EXPECT_NEAR(at(1, StrokeListModel::cutBegin).toDouble(), 32.0 / 400.0, 1e-4);
    // Rows stay, so that a handle can be held while its row changes.
    EXPECT_EQ(reset, 0);
    EXPECT_EQ(changed, 4);
    adapter->resetCut(1);
    EXPECT_EQ(at(1, StrokeListModel::cutEnd).toDouble(), end);
    EXPECT_EQ(at(1, StrokeListModel::millis).toDouble(), millis);
    EXPECT_FALSE(at(1, StrokeListModel::moved).toBool());
    adapter->moveEnd(7, 0.5);
    adapter->play(-1);
}

TEST_F(RecordingAdapterTest, playsAStroke) {
    openSession(typing(), "x");
    (void)output.render(4800, clock.nanos());
    EXPECT_FALSE(heard());
    adapter->play(0);
    EXPECT_TRUE(eventually([&] { return heard(); }));
}

TEST_F(RecordingAdapterTest, keepsWhatIsTickedAndOffersItForAllKeys) {
    openSession(typing(), "x");
    adapter->setName("  Old one ");
    adapter->tick(2, false);
    EXPECT_EQ(adapter->ticked(), 2);
    adapter->setKeepsReleases(true);
    adapter->keep();
    EXPECT_EQ(adapter->phase(), Phase::Idle);
    EXPECT_EQ(adapter->justMade(), "Old one");
    const SoundSpec sound = model->board()->sounds.back();
    EXPECT_EQ(sound.name, "Old one");
    EXPECT_EQ(sound.press.layers.front().samples.size(), 2U);
    EXPECT_EQ(sound.release->layers.front().samples.size(), 1U);
    // It is what the Studio shows next.
    EXPECT_EQ(model->studio().studioTab, StudioTab::sounds);
    EXPECT_EQ(model->studio().editingSoundID, sound.id);
    adapter->useForAllKeys();
    EXPECT_EQ(model->board()->resolve(FakeTap::key)->sound->id, sound.id);
    EXPECT_EQ(adapter->justMade(), "");
}

TEST_F(RecordingAdapterTest, theOfferGoesWithTheBoardAndWhenItIsTurnedDown) {
    openSession(typing(), "x");
    adapter->keep();
    EXPECT_EQ(adapter->justMade(), "x");
    model->undo();
    EXPECT_EQ(adapter->justMade(), "");
    model->redo();
    EXPECT_EQ(adapter->justMade(), "x");
    adapter->dismissOffer();
    EXPECT_EQ(adapter->justMade(), "");
    adapter->useForAllKeys();
    EXPECT_NE(model->board()->resolve(FakeTap::key)->sound->name, "x");
}

TEST_F(RecordingAdapterTest, readsAFileAndOneAtATime) {
    writeWAV(typing(), scratch / "Old board.wav");
    const auto file =
        QUrl::fromLocalFile(QString::fromStdString((scratch / "Old board.wav").string()));
    adapter->importRecording(file);
    EXPECT_EQ(adapter->phase(), Phase::Reading);
    EXPECT_EQ(adapter->fileName(), "Old board.wav");
    adapter->startRecording();
    EXPECT_EQ(adapter->phase(), Phase::Reading);
    EXPECT_TRUE(eventually([&] { return adapter->phase() == Phase::Choosing; }));
    EXPECT_EQ(adapter->name(), "Old board");
    EXPECT_EQ(adapter->notice(), "");
    adapter->importRecording(file);
    EXPECT_EQ(adapter->phase(), Phase::Choosing);
    adapter->cancel();
    adapter->importRecording(file);
    adapter->cancelReading();
    EXPECT_EQ(adapter->phase(), Phase::Idle);
}

} // namespace
} // namespace vornic
