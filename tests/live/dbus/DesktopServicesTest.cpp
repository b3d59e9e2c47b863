// Who asks for an administrator's password in this session, as an authority of the test's knows it.

#include "Vornic/linux/desktop/DesktopServices.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QThread>
#include <atomic>
#include <semaphore>

namespace vornic {
namespace {

/// The authority, with a thread of its own: those who ask it wait for its answer.
class FakeAuthority final : public QThread {
  public:
    FakeAuthority() {
        start();
        ready_.acquire();
    }
    ~FakeAuthority() override {
        quit();
        wait();
    }

    /// Whether another program has registered as agent.
    std::atomic<bool> taken{false};
    /// How many agents were registered, less those that have left.
    std::atomic<int> agents{0};

  protected:
    void run() override {
        Object object(*this);
        QDBusConnection bus =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, "fake authority");
        bus.registerVirtualObject("/org/freedesktop/PolicyKit1/Authority", &object);
        bus.registerService("org.freedesktop.PolicyKit1");
        ready_.release();
        exec();
        bus.unregisterService("org.freedesktop.PolicyKit1");
        QDBusConnection::disconnectFromBus("fake authority");
    }

  private:
    class Object final : public QDBusVirtualObject {
      public:
        explicit Object(FakeAuthority& authority) : authority_(authority) {}
        bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override {
            if (authority_.taken) {
                return bus.send(call.createErrorReply(
                    "org.freedesktop.PolicyKit1.Error.Failed",
                    "An authentication agent already exists for the given subject"));
            }
            authority_.agents += call.member() == "RegisterAuthenticationAgent" ? 1 : -1;
            return bus.send(call.createReply());
        }
        QString introspect(const QString&) const override { return {}; }

      private:
        FakeAuthority& authority_;
    };

    std::binary_semaphore ready_{0};
};

class DesktopServicesTest : public ::testing::Test {
  protected:
    DesktopServicesTest() { qputenv("XDG_SESSION_ID", "7"); }
    ~DesktopServicesTest() override { qunsetenv("XDG_SESSION_ID"); }

    static std::optional<bool> agent() { return hasPasswordAgent(QDBusConnection::sessionBus()); }

    int count_ = 1;
    char name_[5] = "test";
    char* arguments_[2] = {name_, nullptr};
    QCoreApplication application_{count_, arguments_};
};

TEST_F(DesktopServicesTest, thePlaceOfThePasswordAgentIsTakenOrFreeAndLeftAsItWas) {
    FakeAuthority authority;
    EXPECT_EQ(agent(), false);
    EXPECT_EQ(authority.agents, 0) << "the place is free again";
    authority.taken = true;
    EXPECT_EQ(agent(), true);
}

TEST_F(DesktopServicesTest, withoutAnAuthorityOrASessionNobodyCanTell) {
    EXPECT_EQ(agent(), std::nullopt);
    FakeAuthority authority;
    qunsetenv("XDG_SESSION_ID");
    EXPECT_EQ(agent(), std::nullopt);
}

} // namespace
} // namespace vornic
