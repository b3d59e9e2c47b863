#pragma once

#include "Vornic/ports/TrayIcon.h"

#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <functional>
#include <vector>

namespace vornic {

/// Types of the protocol: an entry with what it shows, and an entry with those below it.
struct MenuProperties {
    int id = 0;
    QVariantMap properties;
};
struct MenuLayout {
    int id = 0;
    QVariantMap properties = {};
    QList<QDBusVariant> children = {}; // each a MenuLayout
};
struct MenuEvent {
    int id = 0;
    QString name;
    QDBusVariant data;
    uint time = 0;
};

QDBusArgument& operator<<(QDBusArgument& argument, const MenuProperties& entry);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuProperties& entry);
QDBusArgument& operator<<(QDBusArgument& argument, const MenuLayout& entry);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuLayout& entry);
QDBusArgument& operator<<(QDBusArgument& argument, const MenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEvent& event);

/// A menu that other programs draw, by the com.canonical.dbusmenu protocol: the desktop asks for
/// its entries, and tells which one was chosen. Thread: main.
class DBusMenu final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version CONSTANT)
    Q_PROPERTY(QString TextDirection READ textDirection CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath CONSTANT)

  public:
    DBusMenu();

    /// What it offers from now on.
    void setEntries(std::vector<TrayMenuEntry> entries);

    static uint version() { return 3; }
    static QString textDirection() { return "ltr"; }
    static QString status() { return "normal"; }
    static QStringList iconThemePath() { return {}; }

  public Q_SLOTS:
    // Called by the desktop.
    uint GetLayout(int parent, int depth, const QStringList& names, vornic::MenuLayout& layout);
    QList<vornic::MenuProperties> GetGroupProperties(const QList<int>& ids,
                                                     const QStringList& names);
    QDBusVariant GetProperty(int id, const QString& name);
    void Event(int id, const QString& event, const QDBusVariant& data, uint time);
    QList<int> EventGroup(const QList<vornic::MenuEvent>& events);
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& unknown);

  Q_SIGNALS:
    void LayoutUpdated(uint revision, int parent);

  private:
    struct Node {
        QVariantMap properties;
        std::function<void()> choose;
        std::vector<int> children;
    };
    int add(const TrayMenuEntry& entry);
    bool known(int id) const;
    MenuLayout layoutOf(int id, int depth, const QStringList& names) const;

    /// By number; the first is the menu itself.
    std::vector<Node> nodes_;
    uint revision_ = 0;
};

} // namespace vornic

Q_DECLARE_METATYPE(vornic::MenuProperties)
Q_DECLARE_METATYPE(vornic::MenuLayout)
Q_DECLARE_METATYPE(vornic::MenuEvent)
