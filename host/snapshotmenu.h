#ifndef SNAPSHOTMENU_H
#define SNAPSHOTMENU_H

#include <QMenu>

class ControllerSession;
struct SystemSnapshot;

// The host's "Snapshots" menu, the stand-in frontend's face of quarvo2-snapshot: save
// the camera settings of the whole system to a file, compare a snapshot with the
// controller as a table of differences, and restore one after the operator has seen
// the differences and confirmed.
class SnapshotMenu : public QMenu
{
    Q_OBJECT

public:
    SnapshotMenu(ControllerSession* session, QWidget* parent);

public slots:
    void saveSnapshot(const QString& fileName);
    void compareWithSnapshot(const QString& fileName);
    void restoreSnapshot(const QString& fileName);

private:
    // An entry that asks for a file (to write or to read) and hands it to handle.
    void addFileAction(const QString& text, const char* name, const QString& tip, bool forSaving,
                       void (SnapshotMenu::*handle)(const QString&));
    // The snapshot in the file and the controller's state now; false after telling the operator why not.
    bool readBoth(const QString& fileName, SystemSnapshot* saved, SystemSnapshot* live);
    bool readLive(SystemSnapshot* live, QStringList* problems);
    void refuse(const QString& text);

    ControllerSession* m_session;
};

#endif // SNAPSHOTMENU_H
