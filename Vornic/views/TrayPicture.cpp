#include "Vornic/views/TrayPicture.h"

#include <QColor>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QPoint>
#include <QSvgRenderer>

namespace vornic {

namespace {

constexpr int side = 48;
constexpr int rim = 2;

QImage drawn(const QByteArray& svg, const QColor& colour) {
    QByteArray coloured = svg;
    coloured.replace("currentColor", colour.name().toLatin1());
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    QSvgRenderer(coloured).render(&painter, QRectF(rim, rim, side - 2 * rim, side - 2 * rim));
    return image;
}

} // namespace

TrayIcon::Picture trayPicture(const QString& symbol) {
    QFile file(":/qt/qml/Vornic/icons/" + symbol + ".svg");
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QByteArray svg = file.readAll();
    const QImage dark = drawn(svg, QColor("#202024"));
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        for (const QPoint& shift : {QPoint(-1, 0), QPoint(1, 0), QPoint(0, -1), QPoint(0, 1)}) {
            painter.drawImage(shift, dark);
        }
        painter.drawImage(0, 0, drawn(svg, QColor("#F4F4F6")));
    }
    const QImage straight = image.convertToFormat(QImage::Format_ARGB32);
    TrayIcon::Picture picture{.size = side, .argb = {}};
    picture.argb.reserve(static_cast<std::size_t>(side) * side * 4);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const QRgb pixel = straight.pixel(x, y);
            for (const int value : {qAlpha(pixel), qRed(pixel), qGreen(pixel), qBlue(pixel)}) {
                picture.argb.push_back(static_cast<std::uint8_t>(value));
            }
        }
    }
    return picture;
}

} // namespace vornic
