#include "Vornic/linux/tray/DBusMenu.h"

#include <QDBusMetaType>
#include <cstddef>
#include <utility>

namespace vornic {

namespace {

/// Those of `properties` that were asked for; no names ask for all.
QVariantMap among(const QVariantMap& properties, const QStringList& names) {
    if (names.isEmpty()) {
        return properties;
    }
    QVariantMap asked;
    for (const QString& name : names) {
        if (properties.contains(name)) {
            asked.insert(name, properties.value(name));
        }
    }
    return asked;
}

QVariantMap propertiesOf(const TrayMenuEntry& entry) {
    if (entry.text.empty()) {
        return {{"type", "separator"}};
    }
    // One underscore would underline the letter behind it.
    QVariantMap properties{{"label", QString::fromStdString(entry.text).replace('_', "__")}};
    if (entry.mark != TrayMenuEntry::Mark::none) {
        properties.insert("toggle-type",
                          entry.mark == TrayMenuEntry::Mark::ticked ? "checkmark" : "radio");
        properties.insert("toggle-state", entry.marked ? 1 : 0);
    }
    if (!entry.children.empty()) {
        properties.insert("children-display", "submenu");
    }
    return properties;
}

} // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const MenuProperties& entry) {
    argument.beginStructure();
    argument << entry.id << entry.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuProperties& entry) {
    argument.beginStructure();
    argument >> entry.id >> entry.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const MenuLayout& entry) {
    argument.beginStructure();
    argument << entry.id << entry.properties << entry.children;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuLayout& entry) {
    argument.beginStructure();
    argument >> entry.id >> entry.properties >> entry.children;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const MenuEvent& event) {
    argument.beginStructure();
    argument << event.id << event.name << event.data << event.time;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEvent& event) {
    argument.beginStructure();
    argument >> event.id >> event.name >> event.data >> event.time;
    argument.endStructure();
    return argument;
}

DBusMenu::DBusMenu() {
    qDBusRegisterMetaType<MenuProperties>();
    qDBusRegisterMetaType<QList<MenuProperties>>();
    qDBusRegisterMetaType<MenuLayout>();
    qDBusRegisterMetaType<MenuEvent>();
    qDBusRegisterMetaType<QList<MenuEvent>>();
    qDBusRegisterMetaType<QList<QDBusVariant>>();
    setEntries({});
}

void DBusMenu::setEntries(std::vector<TrayMenuEntry> entries) {
    nodes_.clear();
    add({.text = "Vornic", .children = std::move(entries)});
    // The menu itself is always one, also while nothing is in it.
    nodes_.front().properties = {{"children-display", "submenu"}};
    Q_EMIT LayoutUpdated(++revision_, 0);
}

int DBusMenu::add(const TrayMenuEntry& entry) {
    const std::size_t id = nodes_.size();
    nodes_.push_back({.properties = propertiesOf(entry), .choose = entry.choose, .children = {}});
    for (const TrayMenuEntry& child : entry.children) {
        const int number = add(child);
        nodes_[id].children.push_back(number);
    }
    return static_cast<int>(id);
}

bool DBusMenu::known(int id) const {
    return id >= 0 && static_cast<std::size_t>(id) < nodes_.size();
}

MenuLayout DBusMenu::layoutOf(int id, int depth, const QStringList& names) const {
    const Node& node = nodes_[static_cast<std::size_t>(id)];
    MenuLayout layout{.id = id, .properties = among(node.properties, names), .children = {}};
    // A negative depth is the whole tree.
    if (depth != 0) {
        for (const int child : node.children) {
            layout.children.append(
                QDBusVariant(QVariant::fromValue(layoutOf(child, depth - 1, names))));
        }
    }
    return layout;
}

uint DBusMenu::GetLayout(int parent, int depth, const QStringList& names, MenuLayout& layout) {
    layout = known(parent) ? layoutOf(parent, depth, names) : MenuLayout{.id = parent};
    return revision_;
}

QList<MenuProperties> DBusMenu::GetGroupProperties(const QList<int>& ids,
                                                   const QStringList& names) {
    QList<MenuProperties> found;
    const auto append = [&](int id) {
        found.append({.id = id,
                      .properties = among(nodes_[static_cast<std::size_t>(id)].properties, names)});
    };
    if (ids.isEmpty()) {
        for (int id = 0; known(id); ++id) {
            append(id);
        }
    }
    for (const int id : ids) {
        if (known(id)) {
            append(id);
        }
    }
    return found;
}

QDBusVariant DBusMenu::GetProperty(int id, const QString& name) {
    return QDBusVariant(known(id) ? nodes_[static_cast<std::size_t>(id)].properties.value(name, "")
                                  : QVariant(""));
}

void DBusMenu::Event(int id, const QString& event, const QDBusVariant& /*data*/, uint /*time*/) {
    if (event == "clicked" && known(id)) {
        // What was chosen may change the menu under it.
        const std::function<void()> choose = nodes_[static_cast<std::size_t>(id)].choose;
        choose();
    }
}

QList<int> DBusMenu::EventGroup(const QList<MenuEvent>& events) {
    QList<int> unknown;
    for (const MenuEvent& event : events) {
        known(event.id) ? Event(event.id, event.name, event.data, event.time)
                        : unknown.append(event.id);
    }
    return unknown;
}

bool DBusMenu::AboutToShow(int /*id*/) {
    // Every change was told when it came.
    return false;
}

QList<int> DBusMenu::AboutToShowGroup(const QList<int>& ids, QList<int>& unknown) {
    for (const int id : ids) {
        if (!known(id)) {
            unknown.append(id);
        }
    }
    return {};
}

} // namespace vornic
