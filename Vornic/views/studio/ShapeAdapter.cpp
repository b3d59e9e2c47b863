#include "Vornic/views/studio/ShapeAdapter.h"

#include "Vornic/views/studio/Knob.h"

namespace vornic {

namespace {

constexpr std::array chainKnobs{
    Knob<ChainParams>{QT_TRANSLATE_NOOP("Studio", "Attack"), "dB", -12, 12, 0,
                      &ChainParams::attackDb},
    Knob<ChainParams>{QT_TRANSLATE_NOOP("Studio", "Sustain"), "dB", -12, 12, 0,
                      &ChainParams::sustainDb},
    Knob<ChainParams>{QT_TRANSLATE_NOOP("Studio", "Body"), "", 0, 1, 0, &ChainParams::bodyMix},
    Knob<ChainParams>{QT_TRANSLATE_NOOP("Studio", "Damping"), "", 0, 1, 0, &ChainParams::damping},
    Knob<ChainParams>{QT_TRANSLATE_NOOP("Studio", "Drive"), "", 0, 1, 0, &ChainParams::drive},
    Knob<ChainParams>{QT_TRANSLATE_NOOP("Studio", "Pitch"), "st", -12, 12, 0, &ChainParams::pitch},
    Knob<ChainParams>{QT_TRANSLATE_NOOP("Studio", "Low cut"), "Hz", 20, 1000, 20,
                      &ChainParams::highPassHz},
    Knob<ChainParams>{QT_TRANSLATE_NOOP("Studio", "High cut"), "Hz", 1000, 20000, 20000,
                      &ChainParams::lowPassHz},
};

constexpr std::array characterKnobs{
    Knob<Character>{QT_TRANSLATE_NOOP("Studio", "Depth"), "", -1, 1, 0, &Character::depth},
    Knob<Character>{QT_TRANSLATE_NOOP("Studio", "Snap"), "", -1, 1, 0, &Character::snap},
    Knob<Character>{QT_TRANSLATE_NOOP("Studio", "Ring"), "", -1, 1, 0, &Character::ring},
    Knob<Character>{QT_TRANSLATE_NOOP("Studio", "Size"), "", -1, 1, 0, &Character::size},
};

constexpr std::array feelKnobs{
    Knob<TypingFeel>{QT_TRANSLATE_NOOP("Studio", "Follows speed"), "", 0, 1, 0,
                     &TypingFeel::speedSensitivity},
    Knob<TypingFeel>{QT_TRANSLATE_NOOP("Studio", "Variation"), "", 0, 1, 0, &TypingFeel::variation},
    Knob<TypingFeel>{QT_TRANSLATE_NOOP("Studio", "Keys differ"), "", 0, 1, 0,
                     &TypingFeel::keysDiffer},
};

} // namespace

ShapeAdapter::ShapeAdapter(AppModel& model, QObject* parent)
    : StudioPart(parent), model_(model), edit_(model) {}

void ShapeAdapter::read() {
    const StrokeSpec* const stroke = edit_.stroke();
    const SoundSpec* const sound = edit_.sound();
    const Board* const board = model_.board();
    chain_.show(knobRows(chainKnobs, stroke != nullptr ? stroke->chain : ChainParams::neutral()));
    character_.show(knobRows(characterKnobs, sound != nullptr ? sound->character : Character()));
    boardCharacter_.show(
        knobRows(characterKnobs, board != nullptr ? board->character : Character()));
    feel_.show(knobRows(feelKnobs, board != nullptr ? board->feel : TypingFeel()));
}

void ShapeAdapter::setChain(int row, double value) {
    edit_.changeStroke([&](StrokeSpec& stroke) { turnKnob(chainKnobs, row, value, stroke.chain); });
}

void ShapeAdapter::setCharacter(int row, double value) {
    edit_.changeSound(
        [&](SoundSpec& sound) { turnKnob(characterKnobs, row, value, sound.character); });
}

void ShapeAdapter::setBoardCharacter(int row, double value) {
    model_.edit([&](Board& board) { turnKnob(characterKnobs, row, value, board.character); });
}

void ShapeAdapter::setFeel(int row, double value) {
    model_.edit([&](Board& board) { turnKnob(feelKnobs, row, value, board.feel); });
}

} // namespace vornic
