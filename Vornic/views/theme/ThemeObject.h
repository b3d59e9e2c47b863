#pragma once

#include <QObject>
#include <QQmlEngine>

namespace vornic {

/// The theme that all views of `engine` share, from Theme.qml; lives as long as the engine. Makes
/// the views' types known to the engine. Thread: main.
QObject* themeOf(QQmlEngine& engine);

} // namespace vornic
