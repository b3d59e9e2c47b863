#pragma once

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QUrl>
#include <QWindow>

namespace vornic {

/// What a window asks of the program: another window, or its own end. Thread: main.
class WindowRequests : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

  public:
    using QObject::QObject;

  Q_SIGNALS:
    void closeWindow(QWindow* window);
    void openVornic();
    void openSettings();
    void openStudio();
    void openPermission();
    /// The user is done with the welcome.
    void endWelcome();
    void closePreview();
    /// A board file is taken in; packs are looked at first.
    void openFile(const QUrl& file);
    void dismissPanel();
    void quit();
};

} // namespace vornic
