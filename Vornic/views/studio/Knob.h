#pragma once

#include <QCoreApplication>
#include <QString>
#include <QVariantList>
#include <algorithm>
#include <array>
#include <cstddef>

namespace vornic {

/// One slider: a number of a record, its name (in the translations' context "Studio"), its unit
/// and its range. Thread: any, as everything here.
template <typename Record>
struct Knob {
    const char* name;
    const char* unit;
    double from;
    double to;
    double origin;
    double Record::* member;
};

/// Rows { text, unit, from, to, origin, now } of what the knobs stand at in `record`.
template <typename Record, std::size_t count>
QVariantList knobRows(const std::array<Knob<Record>, count>& knobs, const Record& record) {
    QVariantList rows;
    for (const Knob<Record>& knob : knobs) {
        rows.append(QVariantMap{
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

/// Turns the knob of that row; nothing happens where there is none.
template <typename Record, std::size_t count>
void turnKnob(const std::array<Knob<Record>, count>& knobs, int row, double value, Record& record) {
    if (row >= 0 && row < static_cast<int>(count)) {
        const Knob<Record>& knob = knobs.at(static_cast<std::size_t>(row));
        record.*knob.member = std::clamp(value, knob.from, knob.to);
    }
}

} // namespace vornic
