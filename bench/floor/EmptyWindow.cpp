// The least window that follows the mouse: as large as the Studio, empty but for one rectangle that
// is where the pressed mouse is. What it costs to draw is the floor for every slider.

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQuickView>
#include <cstdio>

int main(int argc, char** argv) {
    // As the program has its views drawn.
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    QQuickView view;
    QQmlComponent component(view.engine());
    component.setData("import QtQuick\n"
                      "Rectangle {\n"
                      "    width: 820; height: 800; color: '#F4F4F6'\n"
                      "    Rectangle { x: mouse.mouseX - 9; y: 391; width: 18; height: 18 }\n"
                      "    MouseArea { id: mouse; anchors.fill: parent }\n"
                      "}\n",
                      QUrl());
    view.setContent(QUrl(), &component, component.create());
    view.setPosition(0, 0);
    view.show();
    std::fputs("ready\n", stderr);
    return QGuiApplication::exec();
}
