#include "Vornic/views/adapters/ShapeAdapter.h"

#include "Vornic/views/adapters/Knob.h"

namespace vornic {

namespace {

constexpr std::array chainKnobs{
    Knob<ChainParams>{"attack", QT_TRANSLATE_NOOP("Studio", "Attack"), "dB", -12, 12, 0,
                      &ChainParams::attackDb},
    Knob<ChainParams>{"sustain", QT_TRANSLATE_NOOP("Studio", "Sustain"), "dB", -12, 12, 0,
                      &ChainParams::sustainDb},
    Knob<ChainParams>{"body", QT_TRANSLATE_NOOP("Studio", "Body"), "", 0, 1, 0,
                      &ChainParams::bodyMix},
    Knob<ChainParams>{"damping", QT_TRANSLATE_NOOP("Studio", "Damping"), "", 0, 1, 0,
                      &ChainParams::damping},
    Knob<ChainParams>{"drive", QT_TRANSLATE_NOOP("Studio", "Drive"), "", 0, 1, 0,
                      &ChainParams::drive},
    Knob<ChainParams>{"pitch", QT_TRANSLATE_NOOP("Studio", "Pitch"), "st", -12, 12, 0,
                      &ChainParams::pitch},
    Knob<ChainParams>{"highPass", QT_TRANSLATE_NOOP("Studio", "Low cut"), "Hz", 20, 1000, 20,
                      &ChainParams::highPassHz},
    Knob<ChainParams>{"lowPass", QT_TRANSLATE_NOOP("Studio", "High cut"), "Hz", 1000, 20000, 20000,
                      &ChainParams::lowPassHz},
};

constexpr std::array characterKnobs{
    Knob<Character>{"depth", QT_TRANSLATE_NOOP("Studio", "Depth"), "", -1, 1, 0, &Character::depth},
    Knob<Character>{"snap", QT_TRANSLATE_NOOP("Studio", "Snap"), "", -1, 1, 0, &Character::snap},
    Knob<Character>{"ring", QT_TRANSLATE_NOOP("Studio", "Ring"), "", -1, 1, 0, &Character::ring},
    Knob<Character>{"size", QT_TRANSLATE_NOOP("Studio", "Size"), "", -1, 1, 0, &Character::size},
};

constexpr std::array feelKnobs{
    Knob<TypingFeel>{"speedSensitivity", QT_TRANSLATE_NOOP("Studio", "Follows speed"), "", 0, 1, 0,
                     &TypingFeel::speedSensitivity},
    Knob<TypingFeel>{"variation", QT_TRANSLATE_NOOP("Studio", "Variation"), "", 0, 1, 0,
                     &TypingFeel::variation},
};

} // namespace

ShapeAdapter::ShapeAdapter(AppModel& model, QObject* parent)
    : QObject(parent), model_(model), edit_(model) {}

void ShapeAdapter::refresh() {
    const StrokeSpec* const stroke = edit_.stroke();
    const SoundSpec* const sound = edit_.sound();
    const Board* const board = model_.board();
    chain_.show(knobRows(chainKnobs, stroke != nullptr ? stroke->chain : ChainParams::neutral()));
    character_.show(knobRows(characterKnobs, sound != nullptr ? sound->character : Character()));
    boardCharacter_.show(
        knobRows(characterKnobs, board != nullptr ? board->character : Character()));
    feel_.show(knobRows(feelKnobs, board != nullptr ? board->feel : TypingFeel()));
}

void ShapeAdapter::setChain(const QString& field, double value) {
    edit_.changeStroke(
        [&](StrokeSpec& stroke) { turnKnob(chainKnobs, field, value, stroke.chain); });
}

void ShapeAdapter::setCharacter(const QString& field, double value) {
    edit_.changeSound(
        [&](SoundSpec& sound) { turnKnob(characterKnobs, field, value, sound.character); });
}

void ShapeAdapter::setBoardCharacter(const QString& field, double value) {
    model_.edit([&](Board& board) { turnKnob(characterKnobs, field, value, board.character); });
}

void ShapeAdapter::setFeel(const QString& field, double value) {
    model_.edit([&](Board& board) { turnKnob(feelKnobs, field, value, board.feel); });
}

} // namespace vornic
