#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QVariantMap>
#include <functional>

namespace vornic {

/// The combination that switches the sounds, asked of the desktop portal: the desktop matches it,
/// whatever window is in front, and the user may choose another one. Thread: main.
class GlobalShortcut final : public QObject {
    Q_OBJECT

  public:
    explicit GlobalShortcut(const QDBusConnection& session = QDBusConnection::sessionBus());

    /// Called at each press.
    std::function<void()> onPress = [] {};

    /// Called when the desktop has taken over the combination (true), has refused to, or does so no
    /// longer.
    std::function<void(bool bound)> onBound = [](bool) {};

    /// Asks for the combination, now and whenever the portal starts anew; returns at once. The
    /// desktop may ask the user, who may refuse: then nothing is bound.
    void start();

    bool bound() const { return bound_; }

  private Q_SLOTS:
    void created(uint response, const QVariantMap& results);
    void answered(uint response, const QVariantMap& results);
    void activated(const QDBusMessage& signal);
    void closed();

  private:
    void introduce();
    void createSession();
    void bind();
    QString expectAnswer(const char* slot);

    QDBusConnection bus_;
    QString session_;
    int requests_ = 0;
    bool bound_ = false;
};

} // namespace vornic
