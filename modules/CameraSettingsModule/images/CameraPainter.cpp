#include "CameraPainter.h"

#include "PictureCanvas.h"

#include <QFont>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <QRadialGradient>
#include <QtMath>

namespace {

// The side and top faces recede up and to the right; this is their rise per unit depth.
constexpr qreal kDepthRise = 0.6;
// Plate around the lens that carries the LED ring, beyond the lens radius.
constexpr qreal kPlateMargin = 6.5;
constexpr qreal kLedRadius = 1.5;
constexpr qreal kStripeHeight = 9;

QFont pixelFont(int pixelSize, bool bold)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixelSize);
    font.setBold(bold);
    return font;
}

// Dark print on light bodies, light print on dark ones.
QColor labelColour(const QColor& background)
{
    return background.lightness() > 140 ? QColor(0x20, 0x20, 0x22) : QColor(0xf2, 0xf2, 0xf2);
}

} // namespace

CameraPainter::CameraPainter(const CameraLook& look)
    : m_look(look), m_body(QColor::fromRgb(look.body)), m_accent(QColor::fromRgb(look.accent))
{
}

QImage CameraPainter::paint() const
{
    QImage image = transparentCanvas(kWidth, kHeight);
    QPainter p(&image);
    prepareSmoothPainting(p);
    paintCamera(p);
    p.end();
    return image;
}

void CameraPainter::paintCamera(QPainter& p) const
{
    paintShadow(p);
    paintBody(p);
    if (m_look.silhouette) {
        // An unknown model shows only its outline: no lens ring, maker's colours or name.
        for (const QPointF& lens : m_look.lenses) {
            p.setPen(Qt::NoPen);
            p.setBrush(m_body.darker(125));
            p.drawEllipse(frontPoint(lens), m_look.lensRadius, m_look.lensRadius);
        }
        paintQuestionMark(p);
        return;
    }
    paintStripe(p);
    for (size_t i = 0; i < m_look.lenses.size(); ++i) {
        const bool isLeft = i == 0;
        const bool highlighted = (m_look.highlight == CameraLook::Highlight::Left && isLeft)
                                 || (m_look.highlight == CameraLook::Highlight::Right && !isLeft);
        const QPointF centre = frontPoint(m_look.lenses[i]);
        if (highlighted)
            paintHighlight(p, centre);
        paintLensUnit(p, centre, m_look.highlight != CameraLook::Highlight::None && !highlighted);
    }
    paintDisplay(p);
    paintLabel(p);
}

void CameraPainter::paintShadow(QPainter& p) const
{
    const QRectF& f = m_look.front;
    const QRectF shadow(f.left() + 2, f.bottom() - 3, f.width() + m_look.depth * 0.8, 7);
    QRadialGradient g(shadow.center(), shadow.width() / 2);
    g.setColorAt(0, QColor(0, 0, 0, 70));
    g.setColorAt(1, QColor(0, 0, 0, 0));
    p.save();
    p.setPen(Qt::NoPen);
    p.setBrush(g);
    p.translate(shadow.center());
    p.scale(1, shadow.height() / shadow.width());
    p.drawEllipse(QPointF(0, 0), shadow.width() / 2, shadow.width() / 2);
    p.restore();
}

void CameraPainter::paintBody(QPainter& p) const
{
    const QRectF& f = m_look.front;
    const QPointF back(m_look.depth, -m_look.depth * kDepthRise);
    const QColor outline = m_body.darker(m_look.silhouette ? 130 : 220);
    p.setPen(QPen(outline, 0.8));

    if (m_look.depth > 0) {
        // The faces behind the front are plain parallelograms; the front's rounded
        // corners cover their joints.
        const qreal r = m_look.cornerRadius;
        const QPolygonF top({f.topLeft() + QPointF(r, 0), f.topLeft() + QPointF(r, 0) + back,
                             f.topRight() + back, f.topRight()});
        const QPolygonF side({f.topRight(), f.topRight() + back,
                              f.bottomRight() + back - QPointF(0, r), f.bottomRight() - QPointF(0, r)});
        p.setBrush(m_look.silhouette ? m_body : m_body.lighter(125));
        p.drawPolygon(top);
        p.setBrush(m_look.silhouette ? m_body : m_body.darker(135));
        p.drawPolygon(side);
        // Behind the front's rounded top right corner the box's edge is seen.
        p.save();
        p.setPen(Qt::NoPen);
        p.drawRect(QRectF(f.right() - r, f.top(), r, r));
        p.restore();
    }

    if (m_look.silhouette) {
        p.setBrush(m_body);
    } else {
        QLinearGradient g(f.topLeft(), f.bottomLeft());
        g.setColorAt(0, m_body.lighter(112));
        g.setColorAt(1, m_body.darker(112));
        p.setBrush(g);
    }
    p.drawRoundedRect(f, m_look.cornerRadius, m_look.cornerRadius);
}

void CameraPainter::paintStripe(QPainter& p) const
{
    if (m_look.accentStyle != CameraLook::Accent::Stripe)
        return;
    // Clipped to the front so that the stripe follows its rounded lower corners.
    QPainterPath frontPath;
    frontPath.addRoundedRect(m_look.front, m_look.cornerRadius, m_look.cornerRadius);
    p.save();
    p.setClipPath(frontPath);
    p.fillRect(stripeRect(), m_accent);
    p.restore();
}

void CameraPainter::paintLensUnit(QPainter& p, const QPointF& centre, bool dimmed) const
{
    const qreal r = m_look.lensRadius;
    const qreal plate = r + kPlateMargin;

    p.setPen(QPen(m_body.darker(250), 0.8));
    p.setBrush(QColor(0x26, 0x28, 0x2c));
    p.drawEllipse(centre, plate, plate);
    if (m_look.accentStyle == CameraLook::Accent::Ring) {
        p.setPen(QPen(m_accent, 1.6));
        p.setBrush(Qt::NoBrush);
        p.drawEllipse(centre, plate + 1.2, plate + 1.2);
    }

    // The IR flash LEDs sit evenly on a ring between lens and plate edge.
    const qreal ledRing = r + kPlateMargin / 2;
    for (int i = 0; i < m_look.ledCount; ++i) {
        const qreal angle = 2 * M_PI * i / m_look.ledCount - M_PI / 2;
        const QPointF led = centre + QPointF(qCos(angle), qSin(angle)) * ledRing;
        QRadialGradient g(led - QPointF(0.4, 0.4), kLedRadius);
        g.setColorAt(0, QColor(0xff, 0x6a, 0x5a));
        g.setColorAt(1, QColor(0x8a, 0x10, 0x10));
        p.setPen(Qt::NoPen);
        p.setBrush(g);
        p.drawEllipse(led, kLedRadius, kLedRadius);
    }

    // Lens barrel, then the glass with a soft blue depth and one reflection.
    p.setPen(QPen(QColor(0x9a, 0x9c, 0xa0), 0.9));
    p.setBrush(QColor(0x12, 0x12, 0x14));
    p.drawEllipse(centre, r, r);
    const qreal glass = r * 0.68;
    QRadialGradient g(centre - QPointF(glass * 0.3, glass * 0.3), glass * 1.3);
    g.setColorAt(0, QColor(0x4a, 0x62, 0x9a));
    g.setColorAt(0.6, QColor(0x10, 0x18, 0x30));
    g.setColorAt(1, QColor(0x02, 0x03, 0x06));
    p.setPen(Qt::NoPen);
    p.setBrush(g);
    p.drawEllipse(centre, glass, glass);
    p.setBrush(QColor(255, 255, 255, 170));
    p.drawEllipse(centre - QPointF(glass * 0.38, glass * 0.4), glass * 0.22, glass * 0.15);

    if (dimmed) {
        p.setBrush(QColor(m_body.red(), m_body.green(), m_body.blue(), 150));
        p.drawEllipse(centre, plate + 0.5, plate + 0.5);
    }
}

void CameraPainter::paintHighlight(QPainter& p, const QPointF& centre) const
{
    const qreal plate = m_look.lensRadius + kPlateMargin;
    QRadialGradient glow(centre, plate + 6);
    QColor edge = m_accent;
    edge.setAlpha(0);
    glow.setColorAt(0.7, m_accent);
    glow.setColorAt(1, edge);
    p.setPen(Qt::NoPen);
    p.setBrush(glow);
    p.drawEllipse(centre, plate + 6, plate + 6);

    // An arrow under the bar points at the camera this page is about.
    const qreal tipY = m_look.front.bottom() + 2;
    const QPolygonF arrow({QPointF(centre.x(), tipY), QPointF(centre.x() - 6, tipY + 8),
                           QPointF(centre.x() + 6, tipY + 8)});
    p.setPen(QPen(m_accent.darker(160), 0.8));
    p.setBrush(m_accent);
    p.drawPolygon(arrow);
}

void CameraPainter::paintDisplay(QPainter& p) const
{
    if (m_look.display.isEmpty())
        return;
    const QRectF d = frontPart(m_look.display);
    p.setPen(QPen(QColor(0x5a, 0x5e, 0x64), 0.8));
    p.setBrush(QColor(0x08, 0x16, 0x10));
    p.drawRoundedRect(d, 1.5, 1.5);
    // The camera shows its number on its display; "1" stands for any.
    p.setPen(QColor(0x6c, 0xff, 0x96));
    p.setFont(pixelFont(qBound(6, int(d.height() * 0.75), 10), true));
    p.drawText(d, Qt::AlignCenter, QStringLiteral("01"));
}

void CameraPainter::paintLabel(QPainter& p) const
{
    if (m_look.label.isEmpty())
        return;
    const bool onStripe = m_look.accentStyle == CameraLook::Accent::Stripe;
    const QRectF& f = m_look.front;
    // Keep the print clear of a strongly rounded corner.
    const qreal inset = qMax<qreal>(3, m_look.cornerRadius * 0.6);
    const QRectF area = onStripe ? stripeRect().adjusted(3, 0, -3, 0)
                                 : QRectF(f.left() + inset, f.bottom() - kStripeHeight - 1,
                                          f.width() - 2 * inset, kStripeHeight);
    p.setPen(labelColour(onStripe ? m_accent : m_body));
    p.setFont(pixelFont(7, true));
    p.drawText(area, Qt::AlignVCenter | (onStripe ? Qt::AlignHCenter : Qt::AlignLeft), m_look.label);
}

void CameraPainter::paintQuestionMark(QPainter& p) const
{
    p.setFont(pixelFont(int(m_look.front.height() * 0.8), true));
    p.setPen(QColor(0xf4, 0xf4, 0xf4));
    p.drawText(m_look.front, Qt::AlignCenter, QStringLiteral("?"));
}

QPointF CameraPainter::frontPoint(const QPointF& fraction) const
{
    const QRectF& f = m_look.front;
    return QPointF(f.left() + fraction.x() * f.width(), f.top() + fraction.y() * f.height());
}

QRectF CameraPainter::frontPart(const QRectF& fraction) const
{
    const QRectF& f = m_look.front;
    return QRectF(frontPoint(fraction.topLeft()),
                  QSizeF(fraction.width() * f.width(), fraction.height() * f.height()));
}

QRectF CameraPainter::stripeRect() const
{
    const QRectF& f = m_look.front;
    return QRectF(f.left(), f.bottom() - kStripeHeight, f.width(), kStripeHeight);
}
