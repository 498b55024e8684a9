#ifndef SNAPSHOTDIFFDIALOG_H
#define SNAPSHOTDIFFDIALOG_H

#include <QDialog>
#include <QStringList>

class SnapshotDiff;

// The differences between a snapshot and the controller as a table, one row per
// setting that differs: before a restore, with a "Restore" button the operator must
// press for anything to be written.
class SnapshotDiffDialog : public QDialog
{
    Q_OBJECT

public:
    // notes: what a restore cannot bring back; offerRestore: Restore and Cancel instead of Close.
    SnapshotDiffDialog(const SnapshotDiff& diff, const QString& snapshotName, const QStringList& notes,
                       bool offerRestore, QWidget* parent = nullptr);
};

#endif // SNAPSHOTDIFFDIALOG_H
