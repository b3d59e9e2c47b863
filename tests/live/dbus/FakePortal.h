#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <QString>
#include <QVariantMap>

namespace vornic {

/// The desktop portal as far as global shortcuts go, on a connection of its own.
class FakePortal final : public QDBusVirtualObject {
  public:
    /// Takes the portal's name on the session's bus.
    FakePortal();
    ~FakePortal() override;

    /// What it answers to a program that wants combinations: 0 yes, 1 the user refuses.
    uint answer = 0;
    /// False leaves every combination out of the answer.
    bool grants = true;

    /// How often combinations were asked for, and what was asked last.
    int asked = 0;
    QString preferredTrigger;
    QString registeredAs;

    /// The user presses the combination with this name, in the session of whoever asked last or in
    /// `otherSession`.
    void press(const QString& id, const QString& otherSession = {});

    /// Ends the session of whoever asked last.
    void closeSession();

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
    QString introspect(const QString&) const override { return {}; }

  private:
    void respond(const QDBusMessage& call, const QVariantMap& options, uint response,
                 const QVariantMap& results);

    QDBusConnection bus_;
    QString session_;
};

} // namespace vornic
