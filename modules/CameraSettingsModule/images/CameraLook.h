#ifndef CAMERALOOK_H
#define CAMERALOOK_H

#include <QPointF>
#include <QRectF>
#include <QRgb>
#include <QString>

#include <vector>

// The few numbers that make one camera model recognisable in its 120 x 90 picture.
// Every camera picture is one of these handed to CameraPainter, so a new model is a
// new table row, not new drawing code.
struct CameraLook
{
    // How the accent colour shows on the body.
    enum class Accent { None, Stripe, Ring };
    // Which end camera of an all-in-one bar is the one this picture stands for.
    enum class Highlight { None, Left, Right };

    QString fileName;
    QRectF front;               // front face, in picture pixels
    qreal depth = 0;            // oblique depth of top and side; 0 shows the face straight on
    qreal cornerRadius = 2;
    QRgb body = 0;
    QRgb accent = 0;
    Accent accentStyle = Accent::None;
    std::vector<QPointF> lenses; // lens centres as fractions of the front face
    qreal lensRadius = 10;
    int ledCount = 0;           // IR flash LEDs in the ring around each lens
    QRectF display;             // x, y, width, height as fractions of the front face; empty for none
    QString label;              // model name printed on the body
    Highlight highlight = Highlight::None;
    bool silhouette = false;    // unknown model: flat grey shape with a question mark
};

#endif // CAMERALOOK_H
