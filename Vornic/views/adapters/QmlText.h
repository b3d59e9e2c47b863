#pragma once

#include "VornicCore/base/CaseNames.h"

#include <QCoreApplication>
#include <QString>
#include <QVariantList>
#include <QVariantMap>
#include <string_view>

namespace vornic {

/// UTF-8 as the views take it.
inline QString qmlText(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// One entry of a choice.
inline QVariantMap qmlOption(const QString& value, const QString& text) {
    return {{"value", value}, {"text", text}};
}

/// Every case of an enumeration as the entries of a choice: its name in files and its label.
template <NamedEnum Enum>
QVariantList qmlOptions() {
    QVariantList options;
    for (const Enum value : allCases<Enum>()) {
        options.append(qmlOption(qmlText(rawString(value)), qmlText(label(value))));
    }
    return options;
}

} // namespace vornic
