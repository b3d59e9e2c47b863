#include "Vornic/views/adapters/PartNotes.h"

#include <QCoreApplication>
#include <array>

namespace vornic {

namespace {

struct Note {
    const char* part;
    const char* value;
    const char* text;
};

constexpr std::array notes{
    Note{"type", "linear", QT_TRANSLATE_NOOP("Studio", "Smooth, no bump")},
    Note{"type", "tactile", QT_TRANSLATE_NOOP("Studio", "A bump, more clack")},
    Note{"type", "clicky", QT_TRANSLATE_NOOP("Studio", "A click on every press")},
    Note{"type", "topre", QT_TRANSLATE_NOOP("Studio", "A dome: deep and soft")},
    Note{"type", "silent", QT_TRANSLATE_NOOP("Studio", "Damped at both ends")},
    Note{"housing", "nylon", QT_TRANSLATE_NOOP("Studio", "Deeper, softer top")},
    Note{"housing", "polycarbonate", QT_TRANSLATE_NOOP("Studio", "Bright and clear")},
    Note{"housing", "pom", QT_TRANSLATE_NOOP("Studio", "Warm, a little lower")},
    Note{"housing", "uhmwpe", QT_TRANSLATE_NOOP("Studio", "Muted and dry")},
    Note{"lube", "none", QT_TRANSLATE_NOOP("Studio", "Raw, springs ping")},
    Note{"lube", "light", QT_TRANSLATE_NOOP("Studio", "A touch smoother")},
    Note{"lube", "thick", QT_TRANSLATE_NOOP("Studio", "Dark and hushed")},
    Note{"spring", "standard", QT_TRANSLATE_NOOP("Studio", "As usual")},
    Note{"spring", "long", QT_TRANSLATE_NOOP("Studio", "A softer ping")},
    Note{"films", "no", QT_TRANSLATE_NOOP("Studio", "As it is built")},
    Note{"films", "yes", QT_TRANSLATE_NOOP("Studio", "Tighter, drier")},
    Note{"case", "plastic", QT_TRANSLATE_NOOP("Studio", "Warm, rings a little")},
    Note{"case", "aluminium", QT_TRANSLATE_NOOP("Studio", "Tight and clean")},
    Note{"case", "wood", QT_TRANSLATE_NOOP("Studio", "Full and woody")},
    Note{"case", "acrylic", QT_TRANSLATE_NOOP("Studio", "Bright and open")},
    Note{"plate", "polycarbonate", QT_TRANSLATE_NOOP("Studio", "Soft and low")},
    Note{"plate", "fr4", QT_TRANSLATE_NOOP("Studio", "The neutral one")},
    Note{"plate", "pom", QT_TRANSLATE_NOOP("Studio", "Deep and muted")},
    Note{"plate", "aluminium", QT_TRANSLATE_NOOP("Studio", "Bright, some ring")},
    Note{"plate", "brass", QT_TRANSLATE_NOOP("Studio", "Rings long")},
    Note{"plate", "carbon", QT_TRANSLATE_NOOP("Studio", "Crisp and dry")},
    Note{"plate", "none", QT_TRANSLATE_NOOP("Studio", "Deepest, softest")},
    Note{"mount", "gasket", QT_TRANSLATE_NOOP("Studio", "Cushioned")},
    Note{"mount", "top", QT_TRANSLATE_NOOP("Studio", "Firm and even")},
    Note{"mount", "tray", QT_TRANSLATE_NOOP("Studio", "Lively, rings")},
    Note{"mount", "leafSpring", QT_TRANSLATE_NOOP("Studio", "Bouncy and low")},
    Note{"foams", "caseFoam", QT_TRANSLATE_NOOP("Studio", "Less hollow, no ring")},
    Note{"foams", "peFoam", QT_TRANSLATE_NOOP("Studio", "A poppy clack")},
    Note{"foams", "tapeMod", QT_TRANSLATE_NOOP("Studio", "Fuller and rounder")},
    Note{"foams", "plateFoam", QT_TRANSLATE_NOOP("Studio", "Less ring")},
    Note{"foams", "switchPads", QT_TRANSLATE_NOOP("Studio", "Shorter, drier")},
    Note{"keycaps", "pbt", QT_TRANSLATE_NOOP("Studio", "Lower and softer")},
    Note{"keycaps", "abs", QT_TRANSLATE_NOOP("Studio", "Higher and brighter")},
    Note{"profile", "cherry", QT_TRANSLATE_NOOP("Studio", "Low and neutral")},
    Note{"profile", "oem", QT_TRANSLATE_NOOP("Studio", "A little deeper")},
    Note{"profile", "sa", QT_TRANSLATE_NOOP("Studio", "Tall and deep")},
    Note{"profile", "xda", QT_TRANSLATE_NOOP("Studio", "Flat, brighter")},
    Note{"profile", "lowProfile", QT_TRANSLATE_NOOP("Studio", "Thin and short")},
    Note{"stabs", "stock", QT_TRANSLATE_NOOP("Studio", "Loose, rattles")},
    Note{"stabs", "lubed", QT_TRANSLATE_NOOP("Studio", "Calmer")},
    Note{"stabs", "tuned", QT_TRANSLATE_NOOP("Studio", "Hardly rattles")},
};

} // namespace

QString partNote(const QString& part, const QString& value) {
    for (const Note& note : notes) {
        if (part == note.part && value == note.value) {
            return QCoreApplication::translate("Studio", note.text);
        }
    }
    return {};
}

} // namespace vornic
