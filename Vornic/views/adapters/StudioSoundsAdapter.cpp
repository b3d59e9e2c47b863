#include "Vornic/views/adapters/StudioSoundsAdapter.h"

#include "Vornic/views/adapters/QmlText.h"
#include "VornicCore/dsp/EQPreset.h"
#include "VornicCore/dsp/SampleRate.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

namespace vornic {

namespace {

constexpr std::size_t wavePieces = 240;

/// One slider: a number of a record, its name and its range.
template <typename Record>
struct Knob {
    const char* id;
    const char* name;
    const char* unit;
    double from;
    double to;
    double origin;
    double Record::* member;
};

constexpr std::array chainKnobs{
    Knob<ChainParams>{"attack", QT_TRANSLATE_NOOP("StudioSounds", "Attack"), "dB", -12, 12, 0,
                      &ChainParams::attackDb},
    Knob<ChainParams>{"sustain", QT_TRANSLATE_NOOP("StudioSounds", "Sustain"), "dB", -12, 12, 0,
                      &ChainParams::sustainDb},
    Knob<ChainParams>{"body", QT_TRANSLATE_NOOP("StudioSounds", "Body"), "", 0, 1, 0,
                      &ChainParams::bodyMix},
    Knob<ChainParams>{"damping", QT_TRANSLATE_NOOP("StudioSounds", "Damping"), "", 0, 1, 0,
                      &ChainParams::damping},
    Knob<ChainParams>{"drive", QT_TRANSLATE_NOOP("StudioSounds", "Drive"), "", 0, 1, 0,
                      &ChainParams::drive},
    Knob<ChainParams>{"pitch", QT_TRANSLATE_NOOP("StudioSounds", "Pitch"), "st", -12, 12, 0,
                      &ChainParams::pitch},
    Knob<ChainParams>{"highPass", QT_TRANSLATE_NOOP("StudioSounds", "Low cut"), "Hz", 20, 1000, 20,
                      &ChainParams::highPassHz},
    Knob<ChainParams>{"lowPass", QT_TRANSLATE_NOOP("StudioSounds", "High cut"), "Hz", 1000, 20000,
                      20000, &ChainParams::lowPassHz},
};

constexpr std::array characterKnobs{
    Knob<Character>{"depth", QT_TRANSLATE_NOOP("StudioSounds", "Depth"), "", -1, 1, 0,
                    &Character::depth},
    Knob<Character>{"snap", QT_TRANSLATE_NOOP("StudioSounds", "Snap"), "", -1, 1, 0,
                    &Character::snap},
    Knob<Character>{"ring", QT_TRANSLATE_NOOP("StudioSounds", "Ring"), "", -1, 1, 0,
                    &Character::ring},
    Knob<Character>{"size", QT_TRANSLATE_NOOP("StudioSounds", "Size"), "", -1, 1, 0,
                    &Character::size},
};

template <typename Record, std::size_t count>
QVariantList sliders(const std::array<Knob<Record>, count>& knobs, const Record& record) {
    QVariantList list;
    for (const Knob<Record>& knob : knobs) {
        list.append(QVariantMap{
            {"value", knob.id},
            {"text", QCoreApplication::translate("StudioSounds", knob.name)},
            {"unit", knob.unit},
            {"from", knob.from},
            {"to", knob.to},
            {"origin", knob.origin},
            {"now", record.*knob.member},
        });
    }
    return list;
}

template <typename Record, std::size_t count>
void setKnob(const std::array<Knob<Record>, count>& knobs, const QString& id, double value,
             Record& record) {
    for (const Knob<Record>& knob : knobs) {
        if (id == knob.id) {
            record.*knob.member = std::clamp(value, knob.from, knob.to);
        }
    }
}

template <NamedEnum Enum>
QVariantMap choice(const char* id, const QString& name, Enum now) {
    return {{"value", id},
            {"text", name},
            {"options", qmlOptions<Enum>()},
            {"now", qmlText(rawString(now))}};
}

template <NamedEnum Enum>
void setChoice(const QString& value, Enum& part) {
    part = caseFromRawString<Enum>(value.toStdString()).value_or(part);
}

} // namespace

StudioSoundsAdapter::StudioSoundsAdapter(AppModel& model, QObject* parent)
    : QObject(parent), model_(model) {}

const SoundSpec* StudioSoundsAdapter::edited() const {
    const Board* const board = model_.board();
    if (!board || board->sounds.empty()) {
        return nullptr;
    }
    const SoundSpec* const chosen = board->sound(model_.studio().editingSoundID);
    return chosen ? chosen : &board->sounds.front();
}

const StrokeSpec* StudioSoundsAdapter::stroke() const {
    const SoundSpec* const sound = edited();
    if (!sound) {
        return nullptr;
    }
    return editingRelease() ? &sound->release.value() : &sound->press;
}

void StudioSoundsAdapter::changeSound(const std::function<void(SoundSpec&)>& what) {
    if (const SoundSpec* const sound = edited()) {
        model_.edit([&, id = sound->id](Board& board) {
            const auto found = std::ranges::find(board.sounds, id, &SoundSpec::id);
            if (found != board.sounds.end()) {
                what(*found);
            }
        });
    }
}

void StudioSoundsAdapter::changeStroke(const std::function<void(StrokeSpec&)>& what) {
    changeSound([&, release = editingRelease()](SoundSpec& sound) {
        what(release && sound.release ? *sound.release : sound.press);
    });
}

QVariantList StudioSoundsAdapter::sounds() const {
    QVariantList sounds;
    if (const Board* const board = model_.board()) {
        for (const SoundSpec& sound : board->sounds) {
            sounds.append(
                qmlOption(QString::fromStdString(sound.id), QString::fromStdString(sound.name)));
        }
    }
    return sounds;
}

QVariantList StudioSoundsAdapter::presets() {
    QVariantList presets;
    for (const EQPreset& preset : EQPreset::all()) {
        QVariantMap option = qmlOption(qmlText(preset.id), qmlText(preset.name));
        option["summary"] = qmlText(preset.summary);
        presets.append(option);
    }
    return presets;
}

QString StudioSoundsAdapter::sound() const {
    return edited() ? QString::fromStdString(edited()->id) : QString();
}

void StudioSoundsAdapter::setSound(const QString& id) {
    StudioState state = model_.studio();
    state.editingSoundID = id.toStdString();
    model_.setStudio(state);
}

QString StudioSoundsAdapter::soundName() const {
    return edited() ? QString::fromStdString(edited()->name) : QString();
}

void StudioSoundsAdapter::setSoundName(const QString& name) {
    changeSound([&](SoundSpec& sound) { sound.name = name.toStdString(); });
}

bool StudioSoundsAdapter::hasRelease() const {
    return edited() && edited()->release;
}

bool StudioSoundsAdapter::editingRelease() const {
    return model_.studio().editingRelease && hasRelease();
}

void StudioSoundsAdapter::setEditingRelease(bool on) {
    StudioState state = model_.studio();
    state.editingRelease = on;
    model_.setStudio(state);
}

QString StudioSoundsAdapter::preset() const {
    const EQPreset* const preset = stroke() ? EQPreset::matching(stroke()->chain.eq) : nullptr;
    return preset ? qmlText(preset->id) : QString();
}

void StudioSoundsAdapter::applyPreset(const QString& id) {
    if (const EQPreset* const preset = EQPreset::named(id.toStdString())) {
        changeStroke([&](StrokeSpec& stroke) { stroke.chain.eq = preset->eq; });
    }
}

QVariantList StudioSoundsAdapter::bands() const {
    QVariantList bands;
    for (const auto band : allCases<Equalizer::Band>()) {
        QVariantMap one = qmlOption(qmlText(rawString(band)), qmlText(label(band)));
        one["hint"] = qmlText(hint(band));
        one["hz"] = static_cast<double>(frequency(band));
        one["gain"] = stroke() ? static_cast<double>(stroke()->chain.eq.gain(band)) : 0.0;
        bands.append(one);
    }
    return bands;
}

void StudioSoundsAdapter::setBand(const QString& band, double gain) {
    if (const auto wanted = caseFromRawString<Equalizer::Band>(band.toStdString())) {
        changeStroke([&](StrokeSpec& stroke) {
            stroke.chain.eq.setGain(*wanted, static_cast<float>(gain));
        });
    }
}

QVariantList StudioSoundsAdapter::chain() const {
    return sliders(chainKnobs, stroke() ? stroke()->chain : ChainParams::neutral());
}

void StudioSoundsAdapter::setChain(const QString& field, double value) {
    changeStroke([&](StrokeSpec& stroke) { setKnob(chainKnobs, field, value, stroke.chain); });
}

QVariantList StudioSoundsAdapter::character() const {
    return sliders(characterKnobs, edited() ? edited()->character : Character());
}

void StudioSoundsAdapter::setCharacter(const QString& field, double value) {
    changeSound([&](SoundSpec& sound) { setKnob(characterKnobs, field, value, sound.character); });
}

QVariantList StudioSoundsAdapter::switchParts() const {
    const SwitchParts parts = edited() ? edited()->switchParts : SwitchParts();
    QVariantMap films = qmlOption("films", tr("Films"));
    films["options"] = QVariantList{qmlOption("no", tr("No")), qmlOption("yes", tr("Yes"))};
    films["now"] = parts.films ? "yes" : "no";
    return {choice("type", tr("Switch"), parts.type),
            choice("housing", tr("Housing"), parts.housing), choice("lube", tr("Lube"), parts.lube),
            choice("spring", tr("Spring"), parts.spring), films};
}

void StudioSoundsAdapter::setSwitchPart(const QString& part, const QString& value) {
    changeSound([&](SoundSpec& sound) {
        SwitchParts& parts = sound.switchParts;
        if (part == "type") {
            setChoice(value, parts.type);
        } else if (part == "housing") {
            setChoice(value, parts.housing);
        } else if (part == "lube") {
            setChoice(value, parts.lube);
        } else if (part == "spring") {
            setChoice(value, parts.spring);
        } else if (part == "films") {
            parts.films = value == "yes";
        }
    });
}

QVariantList StudioSoundsAdapter::buildParts() const {
    const BuildParts build = model_.board() ? model_.board()->build : BuildParts();
    return {choice("case", tr("Case"), build.caseMaterial),
            choice("plate", tr("Plate"), build.plate), choice("mount", tr("Mount"), build.mount),
            choice("keycaps", tr("Keycaps"), build.keycapMaterial),
            choice("profile", tr("Profile"), build.keycapProfile)};
}

void StudioSoundsAdapter::setBuildPart(const QString& part, const QString& value) {
    model_.edit([&](Board& board) {
        BuildParts& build = board.build;
        if (part == "case") {
            setChoice(value, build.caseMaterial);
        } else if (part == "plate") {
            setChoice(value, build.plate);
        } else if (part == "mount") {
            setChoice(value, build.mount);
        } else if (part == "keycaps") {
            setChoice(value, build.keycapMaterial);
        } else if (part == "profile") {
            setChoice(value, build.keycapProfile);
        }
    });
}

QVariantList StudioSoundsAdapter::foams() const {
    QVariantList foams;
    for (const Foam foam : allCases<Foam>()) {
        QVariantMap one = qmlOption(qmlText(rawString(foam)), qmlText(label(foam)));
        one["now"] = model_.board() && model_.board()->build.foams.contains(foam);
        foams.append(one);
    }
    return foams;
}

void StudioSoundsAdapter::setFoam(const QString& foam, bool on) {
    if (const auto wanted = caseFromRawString<Foam>(foam.toStdString())) {
        model_.edit([&](Board& board) {
            if (on) {
                board.build.foams.insert(*wanted);
            } else {
                board.build.foams.erase(*wanted);
            }
        });
    }
}

QVariantList StudioSoundsAdapter::wave() const {
    const std::vector<float>& samples = model_.editorWave();
    QVariantList pieces;
    const std::size_t count = std::min(wavePieces, samples.size());
    for (std::size_t piece = 0; piece < count; ++piece) {
        const auto begin =
            samples.begin() + static_cast<std::ptrdiff_t>(piece * samples.size() / count);
        const auto end =
            samples.begin() + static_cast<std::ptrdiff_t>((piece + 1) * samples.size() / count);
        float loudest = 0.0F;
        for (auto sample = begin; sample != end; ++sample) {
            loudest = std::max(loudest, std::abs(*sample));
        }
        pieces.append(static_cast<double>(loudest));
    }
    return pieces;
}

double StudioSoundsAdapter::waveMillis() const {
    return static_cast<double>(model_.editorWave().size()) * 1000.0 / DSP::sampleRate;
}

void StudioSoundsAdapter::audition() {
    model_.sound().audition(model_.editorWave(), 1.0F);
}

} // namespace vornic
