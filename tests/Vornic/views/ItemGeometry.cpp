#include "tests/Vornic/views/ItemGeometry.h"

#include <QQuickItem>
#include <algorithm>

namespace vornic {

namespace {

/// What is seen: its place in the window, and whether one can scroll to it.
struct Seen {
    const QQuickItem* item;
    QRectF place;
    const QQuickItem* scroller; // null where nothing scrolls around it
    bool control;
};

bool isText(const QQuickItem& item) {
    return item.inherits("QQuickText") && !item.property("text").toString().isEmpty();
}

std::string named(const QQuickItem& item) {
    const QString text = item.property("text").toString();
    return std::string(item.metaObject()->className()) + " \"" + text.toStdString() + "\"";
}

void collect(const QQuickItem* item, const QQuickItem* scroller, std::vector<Seen>& all) {
    if (!item->isVisible() || item->opacity() <= 0.0) {
        return;
    }
    const bool control = item->activeFocusOnTab() && item->isEnabled();
    if (control || isText(*item)) {
        QRectF place(0, 0, item->width(), item->height());
        if (!control) {
            // What is written, not the room for it.
            place.setHeight(std::min(place.height(), item->property("contentHeight").toDouble()));
        }
        all.push_back({item, item->mapRectToScene(place), scroller, control});
    }
    const QQuickItem* const inside = item->inherits("QQuickFlickable") ? item : scroller;
    for (const QQuickItem* const child : item->childItems()) {
        collect(child, inside, all);
    }
}

bool contains(const QQuickItem* outer, const QQuickItem* inner) {
    for (; inner != nullptr; inner = inner->parentItem()) {
        if (inner == outer) {
            return true;
        }
    }
    return false;
}

/// The part of a window that an item can be seen in.
QRectF view(const Seen& seen, const QQuickView& window) {
    const QRectF all(QPointF(), QSizeF(window.size()));
    return seen.scroller == nullptr
               ? all
               : seen.scroller->mapRectToScene(seen.scroller->boundingRect()) & all;
}

void lookAtText(const Seen& text, std::vector<std::string>& complaints) {
    const QQuickItem& item = *text.item;
    if (item.property("truncated").toBool()) {
        complaints.push_back(named(item) + " is elided");
    }
    constexpr double slack = 1.5;
    if (item.property("contentWidth").toDouble() > item.width() + slack &&
        item.property("wrapMode").toInt() == 0 && item.property("elide").toInt() == 3) {
        complaints.push_back(named(item) + " is wider than its place");
    }
    if (item.property("contentHeight").toDouble() > item.height() + slack) {
        complaints.push_back(named(item) + " is higher than its place");
    }
}

void lookAtPlace(const Seen& seen, const QQuickView& window, std::vector<std::string>& complaints) {
    constexpr double slack = 1.0;
    const QRectF where = view(seen, window).adjusted(-slack, -slack, slack, slack);
    const bool across = seen.place.left() >= where.left() && seen.place.right() <= where.right();
    const bool along = seen.place.top() >= where.top() && seen.place.bottom() <= where.bottom();
    // One scrolls up and down here, never sideways.
    if (!across || (!along && seen.scroller == nullptr)) {
        complaints.push_back(named(*seen.item) + " is cut off");
    }
}

void lookAtNeighbours(const std::vector<Seen>& all, const QQuickView& window,
                      std::vector<std::string>& complaints) {
    for (std::size_t one = 0; one < all.size(); ++one) {
        for (std::size_t other = one + 1; other < all.size(); ++other) {
            const Seen& a = all[one];
            const Seen& b = all[other];
            if (contains(a.item, b.item) || contains(b.item, a.item)) {
                continue;
            }
            const QRectF both = a.place & b.place & view(a, window) & view(b, window);
            constexpr double touch = 2.0;
            if (both.width() > touch && both.height() > touch) {
                complaints.push_back(named(*a.item) + " overlaps " + named(*b.item));
            }
        }
    }
}

} // namespace

std::vector<std::string> complaintsAbout(QQuickView& window) {
    window.grabWindow(); // lays it out
    std::vector<Seen> all;
    collect(window.contentItem(), nullptr, all);
    std::vector<std::string> complaints;
    constexpr double least = 24.0;
    for (const Seen& seen : all) {
        if (!seen.control) {
            lookAtText(seen, complaints);
        } else if (std::min(seen.place.width(), seen.place.height()) < least) {
            complaints.push_back(named(*seen.item) + " is too small to hit");
        }
        lookAtPlace(seen, window, complaints);
    }
    lookAtNeighbours(all, window, complaints);
    return complaints;
}

} // namespace vornic
