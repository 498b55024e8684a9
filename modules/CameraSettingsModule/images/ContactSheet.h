#ifndef CONTACTSHEET_H
#define CONTACTSHEET_H

#include "PictureCatalog.h"

#include <QImage>

#include <vector>

// All pictures side by side, doubled in size on a checkerboard so that transparency
// and antialiasing can be judged at a glance.
QImage contactSheet(const std::vector<PictureEntry>& entries);

#endif // CONTACTSHEET_H
