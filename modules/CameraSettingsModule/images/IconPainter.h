#ifndef ICONPAINTER_H
#define ICONPAINTER_H

#include <QImage>

// The camera dialog's three 32 x 32 icons: the configuration lock shown as window
// icon, and the check mark and cross it keeps at hand.
namespace IconPainter {

constexpr int kSize = 32;

QImage lock();
QImage greenHook();
QImage redCross();

} // namespace IconPainter

#endif // ICONPAINTER_H
