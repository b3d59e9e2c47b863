// Puts the pictures of a folder onto one sheet: tour_sheet FOLDER SHEET.

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cstdlib>

namespace {

constexpr int columns = 8;
constexpr int cell = 360;
constexpr int caption = 22;
constexpr int gap = 12;

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    if (argc != 3) {
        return EXIT_FAILURE;
    }
    const QDir folder(argv[1]);
    const QStringList names = folder.entryList({"*.png"}, QDir::Files, QDir::Name);
    const auto rows = static_cast<int>((names.size() + columns - 1) / columns);
    if (rows == 0) {
        return EXIT_FAILURE;
    }
    QImage sheet(columns * (cell + gap) + gap, rows * (cell + caption + gap) + gap,
                 QImage::Format_RGB32);
    sheet.fill(QColor("#777780"));
    QPainter painter(&sheet);
    QFont font = painter.font();
    font.setPixelSize(12);
    painter.setFont(font);
    painter.setPen(Qt::white);
    for (qsizetype at = 0; at < names.size(); ++at) {
        const int x = gap + static_cast<int>(at % columns) * (cell + gap);
        const int y = gap + static_cast<int>(at / columns) * (cell + caption + gap);
        const QImage picture(folder.filePath(names.at(at)));
        painter.drawText(QRect(x, y, cell, caption), Qt::AlignVCenter, names.at(at));
        const QImage small =
            picture.scaled(cell, cell, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        painter.drawImage(x, y + caption, small);
    }
    painter.end();
    return sheet.save(argv[2]) ? EXIT_SUCCESS : EXIT_FAILURE;
}
