#ifndef PICTURECATALOG_H
#define PICTURECATALOG_H

#include <QImage>
#include <QString>

#include <functional>
#include <vector>

// Every picture the camera settings module shows, by the file name under which the
// module's resources keep it.
struct PictureEntry
{
    QString fileName;
    std::function<QImage()> draw;
};

std::vector<PictureEntry> pictureCatalog();

#endif // PICTURECATALOG_H
