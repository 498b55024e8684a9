#ifndef PICTURECANVAS_H
#define PICTURECANVAS_H

#include <QImage>

class QPainter;

// Every picture starts as a fully transparent ARGB image so that it sits on any
// dialog background, and is painted antialiased.
QImage transparentCanvas(int width, int height);
void prepareSmoothPainting(QPainter& painter);

#endif // PICTURECANVAS_H
