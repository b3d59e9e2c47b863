// Views need an application; they are drawn without any display. What the toolkit warns of in them,
// a name that does not exist or a binding that cannot be computed, fails the test that caused it.

#include <gtest/gtest.h>

#include <QGuiApplication>

namespace {

QtMessageHandler plain = nullptr;

void failOnViews(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type != QtDebugMsg && type != QtInfoMsg && message.contains("qrc:/qt/qml/Vornic/")) {
        ADD_FAILURE() << message.toStdString();
    }
    plain(type, context, message);
}

} // namespace

int main(int argc, char** argv) {
    // A tour chooses the screen.
    if (!qgetenv("QT_QPA_PLATFORM").startsWith("offscreen")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QGuiApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    plain = qInstallMessageHandler(failOnViews);
    return RUN_ALL_TESTS();
}
