// quarvo2-snapshot: saves the camera settings of a whole tracking system to a file,
// compares snapshots with each other or with the controller, restores one with proof,
// and finds the odd camera out.
#include "snapshottool.h"

#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("quarvo2-snapshot"));
    QTextStream out(stdout);
    QTextStream err(stderr);
    SnapshotTool tool(&out, &err);
    return tool.run(QCoreApplication::arguments().mid(1));
}
