#include "snapshotmenu.h"

#include "controllersession.h"
#include "snapshotdiffdialog.h"

#include <snapshotdiff.h>
#include <snapshotlink.h>
#include <snapshotreader.h>
#include <snapshotrestore.h>
#include <systemsnapshot.h>

#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

namespace {
const QString kFilter = QStringLiteral("Camera settings snapshots (*.json);;All files (*)");
} // namespace

SnapshotMenu::SnapshotMenu(ControllerSession* session, QWidget* parent)
    : QMenu(tr("S&napshots"), parent), m_session(session)
{
    setObjectName(QStringLiteral("snapshotMenu"));
    QAction* save = addAction(tr("&Save snapshot..."), this, [this] {
        const QString file = QFileDialog::getSaveFileName(parentWidget(), tr("Save snapshot"), QString(), kFilter);
        if (!file.isEmpty())
            saveSnapshot(file);
    });
    save->setObjectName(QStringLiteral("actionSaveSnapshot"));
    save->setStatusTip(tr("Save the settings of every camera to a file"));
    QAction* compare = addAction(tr("&Compare with snapshot..."), this, [this] {
        const QString file = QFileDialog::getOpenFileName(parentWidget(), tr("Compare with snapshot"), QString(), kFilter);
        if (!file.isEmpty())
            compareWithSnapshot(file);
    });
    compare->setObjectName(QStringLiteral("actionCompareSnapshot"));
    compare->setStatusTip(tr("Show what differs between a snapshot and the controller"));
    QAction* restore = addAction(tr("&Restore snapshot..."), this, [this] {
        const QString file = QFileDialog::getOpenFileName(parentWidget(), tr("Restore snapshot"), QString(), kFilter);
        if (!file.isEmpty())
            restoreSnapshot(file);
    });
    restore->setObjectName(QStringLiteral("actionRestoreSnapshot"));
    restore->setStatusTip(tr("Write a snapshot's settings back to the controller after showing what changes"));
}

void SnapshotMenu::refuse(const QString& text)
{
    QMessageBox::warning(parentWidget(), tr("Snapshot"), text);
}

bool SnapshotMenu::readLive(SystemSnapshot* live, QStringList* problems)
{
    SnapshotLink link(m_session->io()->link());
    SnapshotReader reader(&link);
    if (!reader.read(live)) {
        refuse(tr("Cannot read the controller: %1").arg(reader.error()));
        return false;
    }
    *problems = reader.problems();
    return true;
}

bool SnapshotMenu::readBoth(const QString& fileName, SystemSnapshot* saved, SystemSnapshot* live)
{
    QString error;
    if (!SystemSnapshot::load(fileName, saved, &error)) {
        refuse(error);
        return false;
    }
    QStringList problems;
    return readLive(live, &problems);
}

bool SnapshotMenu::saveSnapshot(const QString& fileName)
{
    SystemSnapshot live;
    QStringList problems;
    if (!readLive(&live, &problems))
        return false;
    QString error;
    if (!live.save(fileName, &error)) {
        refuse(tr("Cannot write %1").arg(error));
        return false;
    }
    const QString text = tr("Saved %1 of %2 to %3.")
                             .arg(SnapshotRestore::count(live.cameras.size(), tr("camera")), live.systemModel, fileName);
    if (problems.isEmpty())
        QMessageBox::information(parentWidget(), tr("Snapshot"), text);
    else
        QMessageBox::warning(parentWidget(), tr("Snapshot"),
                             text + QLatin1Char('\n') + tr("Left out:") + QLatin1Char('\n') + problems.join(QLatin1Char('\n')));
    return true;
}

void SnapshotMenu::compareWithSnapshot(const QString& fileName)
{
    SystemSnapshot saved;
    SystemSnapshot live;
    if (!readBoth(fileName, &saved, &live))
        return;
    const SnapshotDiff diff(saved, live);
    if (!diff.differ()) {
        QMessageBox::information(parentWidget(), tr("Snapshot"), tr("The controller matches %1.").arg(fileName));
        return;
    }
    SnapshotDiffDialog(diff, QFileInfo(fileName).fileName(), QStringList(), false, parentWidget()).exec();
}

void SnapshotMenu::restoreSnapshot(const QString& fileName)
{
    SystemSnapshot saved;
    SystemSnapshot live;
    if (!readBoth(fileName, &saved, &live))
        return;
    if (saved.systemModel != live.systemModel) {
        refuse(tr("%1 is a snapshot of a %2 system, the controller is a %3 system; nothing was written.")
                   .arg(fileName, saved.systemModel, live.systemModel));
        return;
    }
    SnapshotRestore restore(saved, live);
    if (restore.writes().isEmpty() && restore.problems().isEmpty()) {
        QMessageBox::information(parentWidget(), tr("Snapshot"), tr("The controller matches %1.").arg(fileName));
        return;
    }
    SnapshotDiffDialog confirm(SnapshotDiff(saved, live), QFileInfo(fileName).fileName(), restore.problems(), true,
                               parentWidget());
    if (confirm.exec() != QDialog::Accepted)
        return;
    SnapshotLink link(m_session->io()->link());
    const bool complete = restore.apply(&link) == SnapshotRestore::Outcome::Restored;
    const QString report = restore.report().join(QLatin1Char('\n'));
    if (complete)
        QMessageBox::information(parentWidget(), tr("Snapshot restored"), report);
    else
        QMessageBox::warning(parentWidget(), tr("Snapshot not fully restored"), report);
}
