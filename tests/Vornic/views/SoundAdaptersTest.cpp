// What the Studio's adapters for sounds do to the board, without a window.

#include "tests/Vornic/views/ViewsFixture.h"

#include <algorithm>

namespace vornic {
namespace {

class SoundAdaptersTest : public ViewsFixture {
  protected:
    void SetUp() override {
        ViewsFixture::SetUp();
        model->onChange();
        settle();
    }
    const Board& board() const { return *model->board(); }
    const SoundSpec& edited() const {
        look();
        return *board().sound(sounds().current().toStdString());
    }
    const std::vector<LayerSpec>& layerSpecs() const { return edited().press.layers; }
    QVariantMap layerRow(int place) const { return layers().list().value(place).toMap(); }
    static void look() {
        // Rows follow with the next turn of the loop.
        QCoreApplication::processEvents();
    }

    SoundListAdapter& sounds() const { return *views->adapters().studio()->sounds(); }
    LayersAdapter& layers() const { return *views->adapters().studio()->layers(); }
    PartsAdapter& parts() const { return *views->adapters().studio()->parts(); }
    EqualizerAdapter& equalizer() const { return *views->adapters().studio()->equalizer(); }
};

TEST_F(SoundAdaptersTest, aNewSoundHasTheRecordingsOfTheEditedOneAndNothingElse) {
    equalizer().setBand(static_cast<int>(Equalizer::Band::bass), 6);
    const auto recordings = edited().press.layers.front().samples;
    sounds().add();
    EXPECT_EQ(edited().name, "New sound");
    ASSERT_EQ(layerSpecs().size(), 1U);
    EXPECT_EQ(layerSpecs().front().samples, recordings);
    EXPECT_EQ(edited().press.chain, ChainParams::neutral());
    EXPECT_EQ(edited().switchParts, edited().recordedAs);
}

TEST_F(SoundAdaptersTest, aDeletedSoundLeavesNoKeyWithoutOne) {
    sounds().duplicate();
    const std::string copy = edited().id;
    sounds().useForAllKeys();
    model->edit([&](Board& changed) { changed.keys["0"].sound = copy; });
    look();
    EXPECT_TRUE(sounds().everywhere());
    sounds().remove();
    EXPECT_EQ(board().sound(copy), nullptr);
    EXPECT_TRUE(board().keys.empty());
    EXPECT_EQ(board().resolve(0)->sound, &board().sounds.front());
    for (const auto& [group, assignment] : board().groups) {
        EXPECT_FALSE(assignment.sound);
    }
}

TEST_F(SoundAdaptersTest, theLastSoundStays) {
    model->edit([](Board& changed) { changed.sounds.resize(1); });
    look();
    EXPECT_FALSE(sounds().canRemove());
    sounds().remove();
    EXPECT_EQ(board().sounds.size(), 1U);
}

TEST_F(SoundAdaptersTest, aSoundThatEveryKeyPlaysTakesTheirOthersAway) {
    model->edit([](Board& changed) {
        changed.keys["0"] = {.sound = changed.sounds.back().id, .gainDb = 2};
    });
    sounds().setCurrent(QString::fromStdString(board().sounds.front().id));
    sounds().useForAllKeys();
    EXPECT_EQ(board().resolve(0)->sound, &board().sounds.front());
    EXPECT_EQ(board().resolve(49)->sound, &board().sounds.front());
    EXPECT_EQ(board().keys.at("0").gainDb, 2) << "what else a key has is its own";
}

TEST_F(SoundAdaptersTest, aReleaseIsGivenEditedAndTakenAway) {
    EXPECT_FALSE(sounds().hasRelease());
    sounds().setHasRelease(true);
    look();
    EXPECT_TRUE(sounds().hasRelease());
    sounds().setEditingRelease(true);
    equalizer().setBand(static_cast<int>(Equalizer::Band::air), -6);
    EXPECT_EQ(edited().release->chain.eq.gain(Equalizer::Band::air), -6.0F);
    EXPECT_EQ(edited().press.chain.eq.gain(Equalizer::Band::air), 0.0F);
    sounds().setHasRelease(false);
    look();
    EXPECT_FALSE(sounds().editingRelease());
    EXPECT_FALSE(edited().release);
}

TEST_F(SoundAdaptersTest, layersAreAddedMovedAndDeleted) {
    layers().add();
    layers().setPart(1, static_cast<int>(LayerPart::click));
    layers().add();
    layers().setPart(2, static_cast<int>(LayerPart::spring));
    const auto order = [&] {
        std::vector<LayerPart> found;
        std::ranges::transform(layerSpecs(), std::back_inserter(found), &LayerSpec::part);
        return found;
    };
    using enum LayerPart;
    EXPECT_EQ(order(), (std::vector{bottomOut, click, spring}));
    layers().move(2, 0);
    EXPECT_EQ(order(), (std::vector{spring, bottomOut, click}));
    layers().move(0, 1);
    EXPECT_EQ(order(), (std::vector{bottomOut, spring, click}));
    layers().move(0, -1);
    layers().move(2, 3);
    EXPECT_EQ(order(), (std::vector{bottomOut, spring, click}));
    layers().remove(1);
    layers().remove(7);
    EXPECT_EQ(order(), (std::vector{bottomOut, click}));
}

TEST_F(SoundAdaptersTest, theNumbersOfALayerAreItsOwn) {
    layers().setNumber(0, LayersAdapter::Number::Offset, 3.5);
    layers().setNumber(0, LayersAdapter::Number::Gain, -6);
    layers().setNumber(0, LayersAdapter::Number::Pitch, 2);
    layers().setFlag(0, LayersAdapter::Flag::Invert, true);
    EXPECT_EQ(layerSpecs()[0].offsetMs, 3.5);
    EXPECT_EQ(layerSpecs()[0].gainDb, -6);
    EXPECT_EQ(layerSpecs()[0].pitch, 2);
    EXPECT_TRUE(layerSpecs()[0].invert);
    look();
    EXPECT_EQ(layerRow(0)["gain"].toDouble(), -6.0);
}

TEST_F(SoundAdaptersTest, whatMuteAndSoloLeaveOutIsShown) {
    layers().add();
    layers().add();
    const auto heard = [&] {
        look();
        std::vector<bool> found;
        for (int place = 0; place < 3; ++place) {
            found.push_back(layerRow(place)["heard"].toBool());
        }
        return found;
    };
    EXPECT_EQ(heard(), (std::vector{true, true, true}));
    layers().setFlag(0, LayersAdapter::Flag::Mute, true);
    EXPECT_EQ(heard(), (std::vector{false, true, true}));
    layers().setFlag(2, LayersAdapter::Flag::Solo, true);
    EXPECT_EQ(heard(), (std::vector{false, false, true}));
    layers().setFlag(0, LayersAdapter::Flag::Solo, true);
    EXPECT_EQ(heard(), (std::vector{false, false, true})) << "a muted layer is silent";
}

TEST_F(SoundAdaptersTest, recordingsAreChosenFromTheLibrary) {
    QStringList names;
    for (const QVariant& set : layers().recordings()) {
        names.append(set.toMap()["text"].toString());
    }
    EXPECT_TRUE(names.contains("Click · regular"));
    EXPECT_TRUE(names.contains("Click · space"));
    EXPECT_FALSE(names.contains("Click · releases")) << "the pack has none";
    EXPECT_TRUE(names.contains("Parts"));
    layers().choose(0, {"spring/space-01", "spring/enter-01"}, true);
    EXPECT_EQ(layerSpecs()[0].samples.size(), 3U);
    layers().choose(0, {"spring/regular-01", "spring/enter-01"}, false);
    EXPECT_EQ(layerSpecs()[0].samples, std::vector<std::string>{"spring/space-01"});
    look();
    EXPECT_EQ(layerRow(0)["summary"].toString(), "spring/space-01");
}

TEST_F(SoundAdaptersTest, everyPartIsToldAndChanged) {
    enum Row : std::uint8_t { type = 0, films = 4, plate = 1, stabs = 5 };
    parts().setSwitchPart(type, static_cast<int>(SwitchType::topre));
    parts().setSwitchPart(films, 1);
    parts().setBuildPart(plate, static_cast<int>(Plate::brass));
    parts().setBuildPart(stabs, static_cast<int>(StabTuning::stock));
    parts().setFoam(static_cast<int>(Foam::tapeMod), true);
    parts().setBuildPart(plate, 99);
    parts().setBuildPart(99, 0);
    parts().setSwitchPart(-1, 0);
    EXPECT_EQ(edited().switchParts.type, SwitchType::topre);
    EXPECT_TRUE(edited().switchParts.films);
    EXPECT_EQ(board().build.plate, Plate::brass);
    EXPECT_EQ(board().stabs.tuning, StabTuning::stock);
    EXPECT_TRUE(board().build.foams.contains(Foam::tapeMod));
    look();
    for (const RowsModel* const list : {parts().switchParts(), parts().buildParts()}) {
        for (const QVariant& row : list->rows()) {
            EXPECT_FALSE(row.toMap()["text"].toString().isEmpty());
            for (const QVariant& option : row.toMap()["options"].toList()) {
                EXPECT_FALSE(option.toMap()["note"].toString().isEmpty())
                    << option.toMap()["text"].toString().toStdString();
            }
        }
    }
}

TEST_F(SoundAdaptersTest, partsBendTheHeardCurveOnly) {
    EXPECT_EQ(equalizer().curve(), equalizer().heardCurve());
    parts().setSwitchPart(0, static_cast<int>(SwitchType::silent));
    look();
    EXPECT_NE(equalizer().curve(), equalizer().heardCurve());
    EXPECT_EQ(equalizer().preset(), presetCalled("natural"));
    equalizer().applyPreset(presetCalled("thocky"));
    look();
    EXPECT_EQ(equalizer().preset(), presetCalled("thocky"));
    equalizer().setBand(static_cast<int>(Equalizer::Band::air), 1);
    look();
    EXPECT_EQ(equalizer().preset(), -1);
}

} // namespace
} // namespace vornic
