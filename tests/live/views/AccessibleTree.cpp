#include "tests/live/views/AccessibleTree.h"

#include <QDBusArgument>
#include <QDBusInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <stdexcept>
#include <utility>

namespace vornic {

namespace {

const QString busName = "vornic-test-accessibility";
const QString rootService = "org.a11y.atspi.Registry";
const QString rootPath = "/org/a11y/atspi/accessible/root";
const QString accessible = "org.a11y.atspi.Accessible";
constexpr int deepest = 40;
// Places in the set of states (AtspiStateType).
constexpr unsigned focusableState = 11;
constexpr unsigned showingState = 25;

using Reference = std::pair<QString, QString>; // service and path

QDBusConnection accessibilityBus() {
    const QDBusReply<QString> address =
        QDBusInterface("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus").call("GetAddress");
    if (!address.isValid()) {
        throw std::runtime_error("there is no accessibility bus");
    }
    return QDBusConnection::connectToBus(address.value(), busName);
}

QDBusMessage ask(const QDBusConnection& bus, const QString& service, const QString& path,
                 const QString& interface, const QString& method, const QVariantList& arguments) {
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, method);
    call.setArguments(arguments);
    return bus.call(call, QDBus::Block, 5000);
}

std::vector<Reference> childrenOf(const QDBusMessage& answer) {
    std::vector<Reference> children;
    if (answer.type() != QDBusMessage::ReplyMessage) {
        return children; // gone meanwhile
    }
    const auto list = answer.arguments().first().value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        QString service;
        QDBusObjectPath path;
        list.beginStructure();
        list >> service >> path;
        list.endStructure();
        children.emplace_back(service, path.path());
    }
    list.endArray();
    return children;
}

} // namespace

AccessibleTree::AccessibleTree() : bus_(accessibilityBus()) {}

AccessibleTree::~AccessibleTree() {
    QDBusConnection::disconnectFromBus(busName);
}

AccessibleTree::Node AccessibleTree::node(const QString& service, const QString& path) const {
    Node node{.service = service, .path = path, .name = {}, .place = {}};
    const auto property =
        ask(bus_, service, path, "org.freedesktop.DBus.Properties", "Get", {accessible, "Name"});
    if (property.type() == QDBusMessage::ReplyMessage) {
        node.name = property.arguments().first().value<QDBusVariant>().variant().toString();
    }
    const auto role = ask(bus_, service, path, accessible, "GetRole", {});
    if (role.type() == QDBusMessage::ReplyMessage) {
        node.role = role.arguments().first().toUInt();
    }
    const auto state = ask(bus_, service, path, accessible, "GetState", {});
    if (state.type() == QDBusMessage::ReplyMessage) {
        const auto words = qdbus_cast<QList<quint32>>(state.arguments().first());
        const auto has = [&](unsigned bit) {
            return !words.isEmpty() && ((words.first() >> bit) & 1U) != 0;
        };
        node.showing = has(showingState);
        node.focusable = has(focusableState);
    }
    const auto extents =
        ask(bus_, service, path, "org.a11y.atspi.Component", "GetExtents", {quint32{0}});
    if (extents.type() == QDBusMessage::ReplyMessage) {
        const auto place = extents.arguments().first().value<QDBusArgument>();
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
        place.beginStructure();
        place >> x >> y >> width >> height;
        place.endStructure();
        node.place = QRect(x, y, width, height);
    }
    return node;
}

void AccessibleTree::walk(const QString& service, const QString& path,
                          const std::function<void(const Node&)>& visit, int depth) const {
    if (depth > deepest) {
        return;
    }
    for (const auto& [childService, childPath] :
         childrenOf(ask(bus_, service, path, accessible, "GetChildren", {}))) {
        visit(node(childService, childPath));
        walk(childService, childPath, visit, depth + 1);
    }
}

std::vector<AccessibleTree::Node>
AccessibleTree::all(const QString& application,
                    const std::function<bool(const Node&)>& wanted) const {
    std::vector<Node> found;
    for (const auto& [service, path] :
         childrenOf(ask(bus_, rootService, rootPath, accessible, "GetChildren", {}))) {
        if (node(service, path).name != application) {
            continue;
        }
        walk(
            service, path,
            [&](const Node& each) {
                if (wanted(each)) {
                    found.push_back(each);
                }
            },
            0);
    }
    return found;
}

std::optional<AccessibleTree::Node> AccessibleTree::showing(const QString& application,
                                                            const QString& name) const {
    const std::vector<Node> found = all(application, [&](const Node& each) {
        return each.showing && each.name == name && !each.place.isEmpty();
    });
    return found.empty() ? std::nullopt : std::optional(found.back());
}

} // namespace vornic
