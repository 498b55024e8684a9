// Whatever a snapshot file holds, reading it ends in a snapshot or in a message with the
// file's name and a line; a snapshot that was read writes back to the same snapshot,
// shows no difference from itself, restores onto itself with nothing to write, and
// gives an outlier table without crashing.
#include <outlierfinder.h>
#include <snapshotdiff.h>
#include <snapshotrestore.h>
#include <systemsnapshot.h>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray text(reinterpret_cast<const char*>(data), int(qMin<size_t>(size, SystemSnapshot::MaximumFileSize)));
    SystemSnapshot snapshot;
    QString error;
    if (!SystemSnapshot::fromJson(text, QStringLiteral("input"), &snapshot, &error)) {
        if (!error.startsWith(QStringLiteral("input:")))
            abort();
        return 0;
    }
    SystemSnapshot again;
    if (!SystemSnapshot::fromJson(snapshot.toJson(), QStringLiteral("again"), &again, &error))
        abort();
    if (SnapshotDiff(snapshot, again).differ())
        abort();
    const SnapshotRestore restore(again, snapshot);
    if (!restore.writes().isEmpty() || !restore.problems().isEmpty())
        abort();
    OutlierFinder(snapshot).table();
    return 0;
}
