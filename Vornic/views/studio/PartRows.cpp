#include "Vornic/views/studio/PartRows.h"

#include "Vornic/views/shared/QmlText.h"

#include <QCoreApplication>
#include <QVariantMap>
#include <array>

namespace vornic {

namespace {

const char* noteOf(SwitchType part) {
    switch (part) {
    case SwitchType::linear:
        return QT_TRANSLATE_NOOP("Studio", "Smooth, no bump");
    case SwitchType::tactile:
        return QT_TRANSLATE_NOOP("Studio", "A bump, more clack");
    case SwitchType::clicky:
        return QT_TRANSLATE_NOOP("Studio", "A click on every press");
    case SwitchType::topre:
        return QT_TRANSLATE_NOOP("Studio", "A dome: deep and soft");
    case SwitchType::silent:
        return QT_TRANSLATE_NOOP("Studio", "Damped at both ends");
    }
    return "";
}

const char* noteOf(Housing part) {
    switch (part) {
    case Housing::nylon:
        return QT_TRANSLATE_NOOP("Studio", "Deeper, softer top");
    case Housing::polycarbonate:
        return QT_TRANSLATE_NOOP("Studio", "Bright and clear");
    case Housing::pom:
        return QT_TRANSLATE_NOOP("Studio", "Warm, a little lower");
    case Housing::uhmwpe:
        return QT_TRANSLATE_NOOP("Studio", "Muted and dry");
    }
    return "";
}

const char* noteOf(Lube part) {
    switch (part) {
    case Lube::none:
        return QT_TRANSLATE_NOOP("Studio", "Raw, springs ping");
    case Lube::light:
        return QT_TRANSLATE_NOOP("Studio", "A touch smoother");
    case Lube::thick:
        return QT_TRANSLATE_NOOP("Studio", "Dark and hushed");
    }
    return "";
}

const char* noteOf(Spring part) {
    switch (part) {
    case Spring::standard:
        return QT_TRANSLATE_NOOP("Studio", "As usual");
    case Spring::long_:
        return QT_TRANSLATE_NOOP("Studio", "A softer ping");
    }
    return "";
}

const char* noteOf(CaseMaterial part) {
    switch (part) {
    case CaseMaterial::plastic:
        return QT_TRANSLATE_NOOP("Studio", "Warm, rings a little");
    case CaseMaterial::aluminium:
        return QT_TRANSLATE_NOOP("Studio", "Tight and clean");
    case CaseMaterial::wood:
        return QT_TRANSLATE_NOOP("Studio", "Full and woody");
    case CaseMaterial::acrylic:
        return QT_TRANSLATE_NOOP("Studio", "Bright and open");
    }
    return "";
}

const char* noteOf(Plate part) {
    switch (part) {
    case Plate::polycarbonate:
        return QT_TRANSLATE_NOOP("Studio", "Soft and low");
    case Plate::fr4:
        return QT_TRANSLATE_NOOP("Studio", "The neutral one");
    case Plate::pom:
        return QT_TRANSLATE_NOOP("Studio", "Deep and muted");
    case Plate::aluminium:
        return QT_TRANSLATE_NOOP("Studio", "Bright, some ring");
    case Plate::brass:
        return QT_TRANSLATE_NOOP("Studio", "Rings long");
    case Plate::carbon:
        return QT_TRANSLATE_NOOP("Studio", "Crisp and dry");
    case Plate::none:
        return QT_TRANSLATE_NOOP("Studio", "Deepest, softest");
    }
    return "";
}

const char* noteOf(Mount part) {
    switch (part) {
    case Mount::gasket:
        return QT_TRANSLATE_NOOP("Studio", "Cushioned");
    case Mount::top:
        return QT_TRANSLATE_NOOP("Studio", "Firm and even");
    case Mount::tray:
        return QT_TRANSLATE_NOOP("Studio", "Lively, rings");
    case Mount::leafSpring:
        return QT_TRANSLATE_NOOP("Studio", "Bouncy and low");
    }
    return "";
}

const char* noteOf(Foam part) {
    switch (part) {
    case Foam::caseFoam:
        return QT_TRANSLATE_NOOP("Studio", "Less hollow, no ring");
    case Foam::peFoam:
        return QT_TRANSLATE_NOOP("Studio", "A poppy clack");
    case Foam::tapeMod:
        return QT_TRANSLATE_NOOP("Studio", "Fuller and rounder");
    case Foam::plateFoam:
        return QT_TRANSLATE_NOOP("Studio", "Less ring");
    case Foam::switchPads:
        return QT_TRANSLATE_NOOP("Studio", "Shorter, drier");
    }
    return "";
}

const char* noteOf(KeycapMaterial part) {
    switch (part) {
    case KeycapMaterial::pbt:
        return QT_TRANSLATE_NOOP("Studio", "Lower and softer");
    case KeycapMaterial::abs:
        return QT_TRANSLATE_NOOP("Studio", "Higher and brighter");
    }
    return "";
}

const char* noteOf(KeycapProfile part) {
    switch (part) {
    case KeycapProfile::cherry:
        return QT_TRANSLATE_NOOP("Studio", "Low and neutral");
    case KeycapProfile::oem:
        return QT_TRANSLATE_NOOP("Studio", "A little deeper");
    case KeycapProfile::sa:
        return QT_TRANSLATE_NOOP("Studio", "Tall and deep");
    case KeycapProfile::xda:
        return QT_TRANSLATE_NOOP("Studio", "Flat, brighter");
    case KeycapProfile::lowProfile:
        return QT_TRANSLATE_NOOP("Studio", "Thin and short");
    }
    return "";
}

const char* noteOf(StabTuning part) {
    switch (part) {
    case StabTuning::stock:
        return QT_TRANSLATE_NOOP("Studio", "Loose, rattles");
    case StabTuning::lubed:
        return QT_TRANSLATE_NOOP("Studio", "Calmer");
    case StabTuning::tuned:
        return QT_TRANSLATE_NOOP("Studio", "Hardly rattles");
    }
    return "";
}

const char* noteOfFilms(bool films) {
    return films ? QT_TRANSLATE_NOOP("Studio", "Tighter, drier")
                 : QT_TRANSLATE_NOOP("Studio", "As it is built");
}

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

template <auto member, typename Record, NamedEnum Enum>
constexpr PartRow<Record> partOf(const char* name, Enum Record::* /*type*/) {
    return {name, &optionsOf<Enum>,
            [](const Record& record) { return static_cast<int>(record.*member); },
            [](Record& record, int value) {
                record.*member = qmlCase<Enum>(value).value_or(record.*member);
            }};
}

const QVariantList& filmOptions() {
    static const QVariantList all{
        QVariantMap{{"value", 0},
                    {"text", QCoreApplication::translate("PartsAdapter", "Without")},
                    {"note", noted(noteOfFilms(false))}},
        QVariantMap{{"value", 1},
                    {"text", QCoreApplication::translate("PartsAdapter", "With")},
                    {"note", noted(noteOfFilms(true))}}};
    return all;
}

constexpr std::array allSwitchRows{
    partOf<&SwitchParts::type>(QT_TRANSLATE_NOOP("PartsAdapter", "Switch"), &SwitchParts::type),
    partOf<&SwitchParts::housing>(QT_TRANSLATE_NOOP("PartsAdapter", "Housing"),
                                  &SwitchParts::housing),
    partOf<&SwitchParts::lube>(QT_TRANSLATE_NOOP("PartsAdapter", "Lube"), &SwitchParts::lube),
    partOf<&SwitchParts::spring>(QT_TRANSLATE_NOOP("PartsAdapter", "Spring"), &SwitchParts::spring),
    PartRow<SwitchParts>{QT_TRANSLATE_NOOP("PartsAdapter", "Films"), &filmOptions,
                         [](const SwitchParts& parts) { return parts.films ? 1 : 0; },
                         [](SwitchParts& parts, int value) { parts.films = value == 1; }},
};

constexpr std::array allBuildRows{
    partOf<&BuildParts::caseMaterial>(QT_TRANSLATE_NOOP("PartsAdapter", "Case"),
                                      &BuildParts::caseMaterial),
    partOf<&BuildParts::plate>(QT_TRANSLATE_NOOP("PartsAdapter", "Plate"), &BuildParts::plate),
    partOf<&BuildParts::mount>(QT_TRANSLATE_NOOP("PartsAdapter", "Mount"), &BuildParts::mount),
    partOf<&BuildParts::keycapMaterial>(QT_TRANSLATE_NOOP("PartsAdapter", "Keycaps"),
                                        &BuildParts::keycapMaterial),
    partOf<&BuildParts::keycapProfile>(QT_TRANSLATE_NOOP("PartsAdapter", "Profile"),
                                       &BuildParts::keycapProfile),
};

constexpr std::array allStabRows{
    partOf<&StabParts::tuning>(QT_TRANSLATE_NOOP("PartsAdapter", "Stabilisers"),
                               &StabParts::tuning),
};

} // namespace

std::span<const PartRow<SwitchParts>> switchRows() {
    return allSwitchRows;
}

std::span<const PartRow<BuildParts>> buildRows() {
    return allBuildRows;
}

std::span<const PartRow<StabParts>> stabRows() {
    return allStabRows;
}

const QVariantList& foamOptions() {
    return optionsOf<Foam>();
}

} // namespace vornic
