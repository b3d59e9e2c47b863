#include "Vornic/views/studio/PartsAdapter.h"

#include "Vornic/views/shared/QmlText.h"
#include "Vornic/views/studio/PartNotes.h"

#include <QCoreApplication>
#include <array>
#include <cstddef>

namespace vornic {

namespace {

QString noted(const char* note) {
    return QCoreApplication::translate("Studio", note);
}

/// The entries of a choice of parts; made once, since they never change.
template <NamedEnum Enum>
const QVariantList& optionsOf() {
    static const QVariantList all = [] {
        QVariantList options;
        for (const Enum part : allCases<Enum>()) {
            QVariantMap option = qmlOption(static_cast<int>(part), qmlText(label(part)));
            option["note"] = noted(noteOf(part));
            options.append(option);
        }
        return options;
    }();
    return all;
}

/// One part of a record: its name, what there is to choose from, and where the choice is kept.
template <typename Record>
struct Part {
    const char* name; // in the translations' context "PartsAdapter"
    const QVariantList& (*options)();
    int (*now)(const Record&);
    /// What names none of the options changes nothing.
    void (*choose)(Record&, int);
};

template <auto member, typename Record, NamedEnum Enum>
constexpr Part<Record> partOf(const char* name, Enum Record::* /*type*/) {
    return {name, &optionsOf<Enum>,
            [](const Record& record) { return static_cast<int>(record.*member); },
            [](Record& record, int value) {
                record.*member = qmlCase<Enum>(value).value_or(record.*member);
            }};
}

const QVariantList& filmOptions() {
    static const QVariantList all{QVariantMap{{"value", 0},
                                              {"text", PartsAdapter::tr("Without")},
                                              {"note", noted(noteOfFilms(false))}},
                                  QVariantMap{{"value", 1},
                                              {"text", PartsAdapter::tr("With")},
                                              {"note", noted(noteOfFilms(true))}}};
    return all;
}

constexpr std::array switchRows{
    partOf<&SwitchParts::type>(QT_TRANSLATE_NOOP("PartsAdapter", "Switch"), &SwitchParts::type),
    partOf<&SwitchParts::housing>(QT_TRANSLATE_NOOP("PartsAdapter", "Housing"),
                                  &SwitchParts::housing),
    partOf<&SwitchParts::lube>(QT_TRANSLATE_NOOP("PartsAdapter", "Lube"), &SwitchParts::lube),
    partOf<&SwitchParts::spring>(QT_TRANSLATE_NOOP("PartsAdapter", "Spring"), &SwitchParts::spring),
    Part<SwitchParts>{QT_TRANSLATE_NOOP("PartsAdapter", "Films"), &filmOptions,
                      [](const SwitchParts& parts) { return parts.films ? 1 : 0; },
                      [](SwitchParts& parts, int value) { parts.films = value == 1; }},
};

constexpr std::array buildRows{
    partOf<&BuildParts::caseMaterial>(QT_TRANSLATE_NOOP("PartsAdapter", "Case"),
                                      &BuildParts::caseMaterial),
    partOf<&BuildParts::plate>(QT_TRANSLATE_NOOP("PartsAdapter", "Plate"), &BuildParts::plate),
    partOf<&BuildParts::mount>(QT_TRANSLATE_NOOP("PartsAdapter", "Mount"), &BuildParts::mount),
    partOf<&BuildParts::keycapMaterial>(QT_TRANSLATE_NOOP("PartsAdapter", "Keycaps"),
                                        &BuildParts::keycapMaterial),
    partOf<&BuildParts::keycapProfile>(QT_TRANSLATE_NOOP("PartsAdapter", "Profile"),
                                       &BuildParts::keycapProfile),
};

constexpr std::array stabRows{
    partOf<&StabParts::tuning>(QT_TRANSLATE_NOOP("PartsAdapter", "Stabilisers"),
                               &StabParts::tuning),
};

template <typename Record, std::size_t count>
void append(QVariantList& rows, const std::array<Part<Record>, count>& parts,
            const Record& record) {
    for (const Part<Record>& part : parts) {
        rows.append(QVariantMap{{"text", PartsAdapter::tr(part.name)},
                                {"options", part.options()},
                                {"now", part.now(record)}});
    }
}

template <typename Record, std::size_t count>
void choose(Record& record, const std::array<Part<Record>, count>& parts, int row, int value) {
    if (row >= 0 && row < static_cast<int>(count)) {
        parts.at(static_cast<std::size_t>(row)).choose(record, value);
    }
}

} // namespace

PartsAdapter::PartsAdapter(AppModel& model, QObject* parent)
    : StudioPart(parent), model_(model), edit_(model) {}

void PartsAdapter::read() {
    const SoundSpec* const sound = edit_.sound();
    static const Board none;
    const Board& board = model_.board() != nullptr ? *model_.board() : none;
    QVariantList rows;
    append(rows, switchRows, sound != nullptr ? sound->switchParts : SwitchParts());
    switchParts_.show(rows);
    rows.clear();
    append(rows, buildRows, board.build);
    append(rows, stabRows, board.stabs);
    buildParts_.show(rows);
    rows.clear();
    for (const QVariant& option : optionsOf<Foam>()) {
        QVariantMap row = option.toMap();
        const auto foam = qmlCase<Foam>(row["value"].toInt());
        row["now"] = foam && board.build.foams.contains(*foam);
        rows.append(row);
    }
    foams_.show(rows);
    rattle_ = board.stabs.rattle;
    releaseByDefault_ = board.releaseByDefault;
}

void PartsAdapter::setSwitchPart(int row, int value) {
    edit_.changeSound([&](SoundSpec& sound) { choose(sound.switchParts, switchRows, row, value); });
}

void PartsAdapter::setBuildPart(int row, int value) {
    model_.edit([&](Board& board) {
        choose(board.build, buildRows, row, value);
        choose(board.stabs, stabRows, row - static_cast<int>(buildRows.size()), value);
    });
}

void PartsAdapter::setFoam(int foam, bool on) {
    if (const auto wanted = qmlCase<Foam>(foam)) {
        model_.edit([&](Board& board) {
            if (on) {
                board.build.foams.insert(*wanted);
            } else {
                board.build.foams.erase(*wanted);
            }
        });
    }
}

void PartsAdapter::setRattle(double value) {
    model_.edit([=](Board& board) { board.stabs.rattle = value; });
}

void PartsAdapter::setReleaseByDefault(bool on) {
    model_.edit([=](Board& board) { board.releaseByDefault = on; });
}

} // namespace vornic
