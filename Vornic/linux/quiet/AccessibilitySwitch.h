#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QVariantMap>
#include <optional>

namespace vornic {

/// The session's switch for accessibility: while it is on, programs that start tell more of what
/// they show, such as which field has the focus. Thread: main.
class AccessibilitySwitch final : public QObject {
    Q_OBJECT

  public:
    explicit AccessibilitySwitch(const QDBusConnection& session);

    /// Turns back what was turned on, unless a screen reader needs it by now.
    ~AccessibilitySwitch() override;

    /// Begins to follow the switch; returns at once.
    void start();

    /// Turns it on, or back to what it was. What somebody else turned on stays on.
    void wish(bool on);

    /// Whether it is on, by whomever; absent as long as nobody has said.
    std::optional<bool> on() const { return on_; }

  private Q_SLOTS:
    void changed(const QString& interface, const QVariantMap& values);

  private:
    void read();
    void take(const QVariantMap& values);
    void apply();
    QDBusMessage call(const QString& method) const;
    QDBusMessage turn(bool on) const;

    QDBusConnection session_;
    bool wished_ = false;
    std::optional<bool> on_;
    bool turnedOn_ = false;
    bool screenReader_ = false;
};

} // namespace vornic
