#include "Vornic/qt/QtWatch.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <array>
#include <functional>

namespace vornic {
namespace {

/// What is written into a pipe, a byte an event; -1 for a descriptor once a 0 has come.
class PipeSource final : public EventSource {
  public:
    PipeSource() { EXPECT_EQ(pipe(ends.data()), 0); }
    ~PipeSource() override {
        close(ends[0]);
        close(ends[1]);
    }

    int fileDescriptor() const override { return gone ? -1 : ends[0]; }
    void dispatch() override {
        ++dispatched;
        if (char byte = 1; waiting > 0 && read(ends[0], &byte, 1) == 1) {
            --waiting;
            ++events;
            gone = byte == 0;
        }
    }
    void send(char byte) {
        ++waiting;
        EXPECT_EQ(write(ends[1], &byte, 1), 1);
    }

    std::array<int, 2> ends{};
    int waiting = 0;
    int events = 0;
    int dispatched = 0;
    bool gone = false;
};

class QtWatchTest : public testing::Test {
  protected:
    bool loopUntil(const std::function<bool()>& condition) const {
        const QDeadlineTimer limit(10000);
        while (!condition() && !limit.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
        }
        return condition();
    }

    int argc = 1;
    std::array<char, 5> name{'t', 'e', 's', 't', '\0'};
    char* argv = name.data();
    QCoreApplication application{argc, &argv};
    PipeSource source;
};

TEST_F(QtWatchTest, whatWaitsIsDeliveredAtOnce) {
    source.send(1);
    const QtWatch watch(source);
    EXPECT_EQ(source.events, 1);
}

TEST_F(QtWatchTest, whatComesIsDelivered) {
    const QtWatch watch(source);
    source.send(1);
    EXPECT_TRUE(loopUntil([&] { return source.events == 1; }));
    source.send(1);
    EXPECT_TRUE(loopUntil([&] { return source.events == 2; }));
}

TEST_F(QtWatchTest, aSourceThatIsGoneIsLeftAlone) {
    const QtWatch watch(source);
    source.send(0);
    EXPECT_TRUE(loopUntil([&] { return source.gone; }));
    const int before = source.dispatched;
    source.send(1);
    QCoreApplication::processEvents();
    EXPECT_EQ(source.dispatched, before);
}

} // namespace
} // namespace vornic
