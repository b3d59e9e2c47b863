#include "Vornic/views/theme/ThemeObject.h"

#include <QQmlComponent>
#include <QUrl>
#include <memory>

// Generated; named so that the linker keeps it.
void qml_register_types_Vornic();

namespace vornic {

QObject* themeOf(QQmlEngine& engine) {
    [[maybe_unused]] static void (*volatile const keep)() = qml_register_types_Vornic;
    engine.addImportPath("qrc:/qt/qml");
    QQmlComponent component(&engine);
    component.setData("import QtQml; import Vornic; QtObject { property QtObject theme: Theme }",
                      QUrl());
    const std::unique_ptr<QObject> holder(component.create());
    if (!holder) {
        qFatal("the theme cannot be loaded: %s", qPrintable(component.errorString()));
    }
    return holder->property("theme").value<QObject*>();
}

} // namespace vornic
