#include "Vornic/views/WindowMemory.h"

#include <QFile>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QSaveFile>
#include <QScreen>
#include <algorithm>

namespace vornic {

namespace {

/// What is kept is small; a larger file is none of ours.
constexpr qint64 most = 65536;

const QScreen* screenOf(QPoint place) {
    for (const QScreen* const screen : QGuiApplication::screens()) {
        if (screen->availableGeometry().contains(place)) {
            return screen;
        }
    }
    return nullptr;
}

} // namespace

void WindowMemory::keepIn(const std::filesystem::path& file) {
    file_ = file;
    QFile kept(QString::fromStdString(file.string()));
    if (kept.open(QIODevice::ReadOnly) && kept.size() <= most) {
        kept_ = QJsonDocument::fromJson(kept.readAll()).object();
    }
}

void WindowMemory::restore(const QString& name, QWindow& window) const {
    const QJsonObject place = kept_.value(name).toObject();
    const QRect wanted(place.value("x").toInt(), place.value("y").toInt(),
                       place.value("width").toInt(), place.value("height").toInt());
    if (wanted.width() < window.minimumWidth() || wanted.height() < window.minimumHeight()) {
        return;
    }
    // By its title, which the user has to reach.
    constexpr QPoint title{40, 10};
    const QScreen* const screen = screenOf(wanted.topLeft() + title);
    const QScreen* const onto = screen != nullptr ? screen : QGuiApplication::primaryScreen();
    window.resize(wanted.size().boundedTo(onto->availableSize()));
    if (screen != nullptr) {
        window.setPosition(wanted.topLeft());
    }
}

void WindowMemory::note(const QString& name, const QWindow& window) {
    const QJsonObject place{{"x", window.x()},
                            {"y", window.y()},
                            {"width", window.width()},
                            {"height", window.height()}};
    if (kept_.value(name) != place) {
        kept_[name] = place;
        write();
    }
}

std::optional<bool> WindowMemory::reducedMotion() const {
    const QJsonValue value = kept_.value("reduceMotion");
    return value.isBool() ? std::optional(value.toBool()) : std::nullopt;
}

void WindowMemory::setReducedMotion(std::optional<bool> reduced) {
    if (reduced == reducedMotion()) {
        return;
    }
    if (reduced) {
        kept_["reduceMotion"] = *reduced;
    } else {
        kept_.remove("reduceMotion");
    }
    write();
}

void WindowMemory::write() const {
    if (file_.empty()) {
        return;
    }
    // Lost, a window opens as it did the first time: nothing to trouble the user with.
    QSaveFile kept(QString::fromStdString(file_.string()));
    if (kept.open(QIODevice::WriteOnly)) {
        kept.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
        kept.write(QJsonDocument(kept_).toJson());
        kept.commit();
    }
}

} // namespace vornic
