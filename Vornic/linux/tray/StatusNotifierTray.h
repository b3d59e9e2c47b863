#pragma once

#include "Vornic/ports/TrayIcon.h"

#include <QByteArray>
#include <QDBusArgument>
#include <QDBusServiceWatcher>
#include <QList>
#include <QObject>
#include <QString>

namespace vornic {

/// One picture of an icon as the tray protocol takes it: ARGB, most significant byte first.
struct TrayPixmap {
    int width = 0;
    int height = 0;
    QByteArray argb;
};
using TrayPixmaps = QList<TrayPixmap>;

QDBusArgument& operator<<(QDBusArgument& argument, const TrayPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, TrayPixmap& pixmap);

/// An icon in the tray by the StatusNotifierItem protocol. Registers again whenever a tray appears,
/// since panels start later than programs of the session, and come and go.
class StatusNotifierTray : public QObject, public TrayIcon {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category CONSTANT)
    Q_PROPERTY(QString Id READ id CONSTANT)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(QString IconName READ iconName CONSTANT)
    Q_PROPERTY(vornic::TrayPixmaps IconPixmap READ iconPixmap)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu CONSTANT)

  public:
    StatusNotifierTray();
    ~StatusNotifierTray() override;

    bool visible() const override { return visible_; }
    void show(const Picture& picture, const std::string& line) override;

    static QString category() { return "ApplicationStatus"; }
    static QString id() { return "vornic"; }
    QString title() const { return line_; }
    static QString status() { return "Active"; }
    static QString iconName() { return {}; }
    TrayPixmaps iconPixmap() const;
    static bool itemIsMenu() { return false; }

  public Q_SLOTS:
    // Called by the tray.
    void Activate(int x, int y) { onActivate(x, y); }
    void SecondaryActivate(int x, int y) { onActivate(x, y); }
    void ContextMenu(int x, int y) { onActivate(x, y); }

  Q_SIGNALS:
    void NewIcon();
    void NewTitle();

  private:
    void registerItem();
    void setVisible(bool visible);

    QString service_;
    QDBusServiceWatcher watcher_;
    Picture picture_;
    QString line_ = "Vornic";
    bool visible_ = false;
};

} // namespace vornic

Q_DECLARE_METATYPE(vornic::TrayPixmap)
