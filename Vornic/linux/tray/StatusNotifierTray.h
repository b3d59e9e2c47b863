#pragma once

#include "Vornic/linux/tray/DBusMenu.h"
#include "Vornic/ports/TrayIcon.h"

#include <QByteArray>
#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <chrono>
#include <string>
#include <vector>

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
/// since panels start later than programs of the session, and come and go. A tray may take an icon
/// and drop it a moment later: it counts as visible only once the tray still lists it after a
/// while, and only while somebody shows what is listed. Thread: main.
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
    Q_PROPERTY(QDBusObjectPath Menu READ menu CONSTANT)

  public:
    /// How long a tray has to keep the icon until it is believed.
    static constexpr std::chrono::milliseconds probation{2000};

    explicit StatusNotifierTray(std::chrono::milliseconds believedAfter = probation);
    ~StatusNotifierTray() override;

    bool visible() const override { return visible_; }
    bool undecided() const override { return undecided_; }
    void setMenu(const std::vector<TrayMenuEntry>& entries) override { menu_.setEntries(entries); }
    void show(const Picture& picture, const std::string& line) override;

    static QString category() { return "ApplicationStatus"; }
    static QString id() { return "vornic"; }
    QString title() const { return line_; }
    static QString status() { return "Active"; }
    static QString iconName() { return {}; }
    TrayPixmaps iconPixmap() const;
    static bool itemIsMenu() { return false; }
    static QDBusObjectPath menu();

    /// Whether an item of the process `pid`, which is `owner` on the bus, is among those that a
    /// tray lists: some list it by its owner and path, others by its name.
    static bool isAmong(const QStringList& items, const QString& owner, uint pid);

  public Q_SLOTS:
    // Called by the tray.
    void Activate(int x, int y) { onActivate(x, y); }
    void SecondaryActivate(int x, int y) { onActivate(x, y); }
    void ContextMenu(int x, int y) { onActivate(x, y); }
    void Scroll(int delta, const QString& orientation);

  Q_SIGNALS:
    void NewIcon();
    void NewTitle();

  private Q_SLOTS:
    void listChanged();

  private:
    void registerItem();
    void look();
    void decide(bool visible);

    QString service_;
    QDBusServiceWatcher watcher_;
    Picture picture_;
    QString line_ = "Vornic";
    DBusMenu menu_;
    QTimer probation_;
    bool visible_ = false;
    bool undecided_ = false;
};

} // namespace vornic

Q_DECLARE_METATYPE(vornic::TrayPixmap)
