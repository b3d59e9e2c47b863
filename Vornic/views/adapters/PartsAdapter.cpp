#include "Vornic/views/adapters/PartsAdapter.h"

#include "Vornic/views/adapters/PartNotes.h"
#include "Vornic/views/adapters/QmlText.h"

namespace vornic {

namespace {

QVariantMap noted(const QString& part, QVariantMap option) {
    option["note"] = partNote(part, option["value"].toString());
    return option;
}

QVariantMap part(const QString& id, const QString& name, const QVariantList& options,
                 const QString& now) {
    QVariantList all;
    for (const QVariant& option : options) {
        all.append(noted(id, option.toMap()));
    }
    return {{"value", id}, {"text", name}, {"options", all}, {"now", now}};
}

template <NamedEnum Enum>
QVariantMap part(const QString& id, const QString& name, Enum now) {
    return part(id, name, qmlOptions<Enum>(), qmlText(rawString(now)));
}

template <NamedEnum Enum>
void choose(const QString& value, Enum& part) {
    part = caseFromRawString<Enum>(value.toStdString()).value_or(part);
}

} // namespace

PartsAdapter::PartsAdapter(AppModel& model, QObject* parent)
    : QObject(parent), model_(model), edit_(model) {}

void PartsAdapter::refresh() {
    const SoundSpec* const sound = edit_.sound();
    const SwitchParts parts = sound != nullptr ? sound->switchParts : SwitchParts();
    const Board* const board = model_.board();
    const BuildParts build = board != nullptr ? board->build : BuildParts();
    const StabParts stabs = board != nullptr ? board->stabs : StabParts();
    switchParts_.show({
        part("type", tr("Switch"), parts.type),
        part("housing", tr("Housing"), parts.housing),
        part("lube", tr("Lube"), parts.lube),
        part("spring", tr("Spring"), parts.spring),
        part("films", tr("Films"), {qmlOption("no", tr("Without")), qmlOption("yes", tr("With"))},
             parts.films ? "yes" : "no"),
    });
    buildParts_.show({
        part("case", tr("Case"), build.caseMaterial),
        part("plate", tr("Plate"), build.plate),
        part("mount", tr("Mount"), build.mount),
        part("keycaps", tr("Keycaps"), build.keycapMaterial),
        part("profile", tr("Profile"), build.keycapProfile),
        part("stabs", tr("Stabilisers"), stabs.tuning),
    });
    QVariantList foams;
    for (const Foam foam : allCases<Foam>()) {
        QVariantMap row = noted("foams", qmlOption(qmlText(rawString(foam)), qmlText(label(foam))));
        row["now"] = build.foams.contains(foam);
        foams.append(row);
    }
    foams_.show(foams);
    Q_EMIT changed();
}

void PartsAdapter::setSwitchPart(const QString& part, const QString& value) {
    edit_.changeSound([&](SoundSpec& sound) {
        SwitchParts& parts = sound.switchParts;
        if (part == "type") {
            choose(value, parts.type);
        } else if (part == "housing") {
            choose(value, parts.housing);
        } else if (part == "lube") {
            choose(value, parts.lube);
        } else if (part == "spring") {
            choose(value, parts.spring);
        } else if (part == "films") {
            parts.films = value == "yes";
        }
    });
}

void PartsAdapter::setBuildPart(const QString& part, const QString& value) {
    model_.edit([&](Board& board) {
        BuildParts& build = board.build;
        if (part == "case") {
            choose(value, build.caseMaterial);
        } else if (part == "plate") {
            choose(value, build.plate);
        } else if (part == "mount") {
            choose(value, build.mount);
        } else if (part == "keycaps") {
            choose(value, build.keycapMaterial);
        } else if (part == "profile") {
            choose(value, build.keycapProfile);
        } else if (part == "stabs") {
            choose(value, board.stabs.tuning);
        }
    });
}

void PartsAdapter::setFoam(const QString& foam, bool on) {
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

double PartsAdapter::rattle() const {
    return model_.board() != nullptr ? model_.board()->stabs.rattle : 0.0;
}

void PartsAdapter::setRattle(double value) {
    model_.edit([=](Board& board) { board.stabs.rattle = value; });
}

bool PartsAdapter::releaseByDefault() const {
    return model_.board() != nullptr && model_.board()->releaseByDefault;
}

void PartsAdapter::setReleaseByDefault(bool on) {
    model_.edit([=](Board& board) { board.releaseByDefault = on; });
}

} // namespace vornic
