#include "IconPainter.h"

#include "PictureCanvas.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace {

// Check mark and cross are the same thick round stroke: a dark edge under a
// coloured core keeps them readable on light and dark window decorations.
QImage strokedIcon(const QPainterPath& path, const QColor& colour)
{
    QImage image = transparentCanvas(IconPainter::kSize, IconPainter::kSize);
    QPainter p(&image);
    prepareSmoothPainting(p);
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(colour.darker(170), 7.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawPath(path);
    p.setPen(QPen(colour, 5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawPath(path);
    p.setPen(QPen(colour.lighter(150), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawPath(path.translated(-0.8, -0.8));
    p.end();
    return image;
}

} // namespace

namespace IconPainter {

QImage lock()
{
    QImage image = transparentCanvas(kSize, kSize);
    QPainter p(&image);
    prepareSmoothPainting(p);

    // Steel shackle first, so the body covers its feet.
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(QColor(0x4a, 0x4d, 0x52), 5, Qt::SolidLine, Qt::FlatCap));
    QPainterPath shackle;
    shackle.moveTo(9.5, 16);
    shackle.lineTo(9.5, 11);
    shackle.arcTo(QRectF(9.5, 3.5, 13, 15), 180, -180);
    shackle.lineTo(22.5, 16);
    p.drawPath(shackle);
    p.setPen(QPen(QColor(0xb8, 0xbc, 0xc2), 2.5, Qt::SolidLine, Qt::FlatCap));
    p.drawPath(shackle);

    const QRectF body(5, 14.5, 22, 15.5);
    QLinearGradient brass(body.topLeft(), body.bottomLeft());
    brass.setColorAt(0, QColor(0xf7, 0xd0, 0x5a));
    brass.setColorAt(1, QColor(0xc0, 0x86, 0x10));
    p.setPen(QPen(QColor(0x7a, 0x52, 0x08), 1));
    p.setBrush(brass);
    p.drawRoundedRect(body, 3, 3);

    QPainterPath keyhole;
    keyhole.addEllipse(QPointF(16, 20.5), 2.4, 2.4);
    keyhole.addRect(QRectF(15, 21.5, 2, 5));
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x3a, 0x28, 0x08));
    p.drawPath(keyhole.simplified());
    p.end();
    return image;
}

QImage greenHook()
{
    QPainterPath hook;
    hook.moveTo(6, 17);
    hook.lineTo(13, 24);
    hook.lineTo(26, 8);
    return strokedIcon(hook, QColor(0x2e, 0xa8, 0x44));
}

QImage redCross()
{
    QPainterPath cross;
    cross.moveTo(8, 8);
    cross.lineTo(24, 24);
    cross.moveTo(24, 8);
    cross.lineTo(8, 24);
    return strokedIcon(cross, QColor(0xd6, 0x2a, 0x24));
}

} // namespace IconPainter
