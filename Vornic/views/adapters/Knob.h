#pragma once

#include <QCoreApplication>
#include <QString>
#include <QVariantList>
#include <algorithm>
#include <array>
#include <cstddef>

namespace vornic {

/// One slider: a number of a record, its name (in the translations' context "Studio"), its unit
/// and its range.
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

/// Rows { value, text, unit, from, to, origin, now } of what the knobs stand at in `record`.
template <typename Record, std::size_t count>
QVariantList knobRows(const std::array<Knob<Record>, count>& knobs, const Record& record) {
    QVariantList rows;
    for (const Knob<Record>& knob : knobs) {
        rows.append(QVariantMap{
            {"value", knob.id},
            {"text", QCoreApplication::translate("Studio", knob.name)},
            {"unit", knob.unit},
            {"from", knob.from},
            {"to", knob.to},
            {"origin", knob.origin},
            {"now", record.*knob.member},
        });
    }
    return rows;
}

/// Turns the knob of that id; nothing happens where there is none.
template <typename Record, std::size_t count>
void turnKnob(const std::array<Knob<Record>, count>& knobs, const QString& id, double value,
              Record& record) {
    for (const Knob<Record>& knob : knobs) {
        if (id == knob.id) {
            record.*knob.member = std::clamp(value, knob.from, knob.to);
        }
    }
}

} // namespace vornic
