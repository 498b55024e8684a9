#include "ContactSheet.h"

#include "PictureCanvas.h"

#include <QFont>
#include <QPainter>

namespace {

constexpr int kColumns = 4;
constexpr int kScale = 2;
constexpr int kCellWidth = 120 * kScale + 16;
constexpr int kCellHeight = 90 * kScale + 28;

QBrush checkerboard()
{
    QImage tile(16, 16, QImage::Format_RGB32);
    QPainter p(&tile);
    p.fillRect(0, 0, 16, 16, QColor(0xe8, 0xe8, 0xe8));
    p.fillRect(0, 0, 8, 8, QColor(0xc8, 0xc8, 0xc8));
    p.fillRect(8, 8, 8, 8, QColor(0xc8, 0xc8, 0xc8));
    p.end();
    return QBrush(tile);
}

} // namespace

QImage contactSheet(const std::vector<PictureEntry>& entries)
{
    const int count = int(entries.size());
    const int rows = (count + kColumns - 1) / kColumns;
    QImage sheet = transparentCanvas(kColumns * kCellWidth, qMax(1, rows) * kCellHeight);
    sheet.fill(Qt::white);
    QPainter p(&sheet);
    prepareSmoothPainting(p);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(11);
    p.setFont(font);
    const QBrush board = checkerboard();

    for (int i = 0; i < count; ++i) {
        const QImage picture = entries[size_t(i)].draw();
        const QPoint cell((i % kColumns) * kCellWidth, (i / kColumns) * kCellHeight);
        const QRect target(cell + QPoint(8, 4), picture.size() * kScale);
        p.fillRect(target, board);
        p.drawImage(target, picture);
        p.setPen(Qt::black);
        p.drawText(QRect(cell.x(), target.bottom() + 2, kCellWidth, 20), Qt::AlignCenter,
                   entries[size_t(i)].fileName);
    }
    p.end();
    return sheet;
}
