#ifndef CAMERAPAINTER_H
#define CAMERAPAINTER_H

#include "CameraLook.h"

#include <QColor>
#include <QImage>

class QPainter;

// Draws one camera model, as described by a CameraLook, into a transparent picture of
// the size of the camera page's model label.
class CameraPainter
{
public:
    static constexpr int kWidth = 120;
    static constexpr int kHeight = 90;

    explicit CameraPainter(const CameraLook& look);

    QImage paint() const;

private:
    void paintCamera(QPainter& p) const;
    void paintShadow(QPainter& p) const;
    void paintBody(QPainter& p) const;
    void paintStripe(QPainter& p) const;
    void paintLensUnit(QPainter& p, const QPointF& centre, bool dimmed) const;
    void paintHighlight(QPainter& p, const QPointF& centre) const;
    void paintDisplay(QPainter& p) const;
    void paintLabel(QPainter& p) const;
    void paintQuestionMark(QPainter& p) const;

    QPointF frontPoint(const QPointF& fraction) const;
    QRectF frontPart(const QRectF& fraction) const;
    QRectF stripeRect() const;

    const CameraLook& m_look;
    QColor m_body;
    QColor m_accent;
};

#endif // CAMERAPAINTER_H
