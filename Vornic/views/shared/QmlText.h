#pragma once

#include "VornicCore/base/CaseNames.h"
#include "VornicCore/base/ReadableText.h"

#include <QString>
#include <QVariantList>
#include <QVariantMap>
#include <optional>
#include <string_view>

namespace vornic {

/// UTF-8 as the views show it: what is not seen, and what turns the direction of writing, is shown
/// as what it is. Thread: any, as everything here.
inline QString qmlText(std::string_view utf8, Lines lines = Lines::joined) {
    return QString::fromStdString(plainlyVisible(utf8, lines));
}

/// One entry of a choice; `value` is what is picked: an id, or a case of an enumeration as a
/// number.
inline QVariantMap qmlOption(const QVariant& value, const QString& text) {
    return {{"value", value}, {"text", text}};
}

/// Every case of an enumeration as the entries of a choice, with its label.
template <NamedEnum Enum>
QVariantList qmlOptions() {
    QVariantList options;
    for (const Enum value : allCases<Enum>()) {
        options.append(qmlOption(static_cast<int>(value), qmlText(label(value))));
    }
    return options;
}

/// The case that a picked value stands for; none where it stands for none.
template <NamedEnum Enum>
std::optional<Enum> qmlCase(int value) {
    for (const Enum each : allCases<Enum>()) {
        if (static_cast<int>(each) == value) {
            return each;
        }
    }
    return std::nullopt;
}

} // namespace vornic
