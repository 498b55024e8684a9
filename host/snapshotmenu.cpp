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
    addFileAction(tr("&Save snapshot..."), "actionSaveSnapshot", tr("Save the settings of every camera to a file"),
                  true, &SnapshotMenu::saveSnapshot);
    addFileAction(tr("&Compare with snapshot..."), "actionCompareSnapshot",
                  tr("Show what differs between a snapshot and the controller"), false,
                  &SnapshotMenu::compareWithSnapshot);
    addFileAction(tr("&Restore snapshot..."), "actionRestoreSnapshot",
                  tr("Write a snapshot's settings back to the controller after showing what changes"), false,
                  &SnapshotMenu::restoreSnapshot);
}

void SnapshotMenu::addFileAction(const QString& text, const char* name, const QString& tip, bool forSaving,
                                 void (SnapshotMenu::*handle)(const QString&))
{
    QAction* action = addAction(text, this, [this, text, forSaving, handle] {
        const QString title = QString(text).remove(QLatin1Char('&')).remove(QStringLiteral("..."));
        const QString file = forSaving ? QFileDialog::getSaveFileName(parentWidget(), title, QString(), kFilter)
                                       : QFileDialog::getOpenFileName(parentWidget(), title, QString(), kFilter);
        if (!file.isEmpty())
            (this->*handle)(file);
    });
    action->setObjectName(QLatin1String(name));
    action->setStatusTip(tip);
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

void SnapshotMenu::saveSnapshot(const QString& fileName)
{
    SystemSnapshot live;
    QStringList problems;
    if (!readLive(&live, &problems))
        return;
    QString error;
    if (!live.save(fileName, &error)) {
        refuse(tr("Cannot write %1").arg(error));
        return;
    }
    const QString text = tr("Saved %1 of %2 to %3.")
                             .arg(SnapshotRestore::count(live.cameras.size(), tr("camera")), live.systemModel, fileName);
    if (problems.isEmpty())
        QMessageBox::information(parentWidget(), tr("Snapshot"), text);
    else
        QMessageBox::warning(parentWidget(), tr("Snapshot"),
                             text + QLatin1Char('\n') + tr("Left out:") + QLatin1Char('\n') + problems.join(QLatin1Char('\n')));
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
